// camtune name: the dump-file name the library composes for a hint given as options.
#include <cstdio>
#include <cstring>
#include <string>

#include "camtune/platform/image_format.h"
#include "command.h"
#include "naming/name_catalog.h"
#include "naming/prefix.h"
#include "platform/property_registry.h"

namespace camtune {
namespace cli {
namespace {

// Room of the pipeline's path buffers.
constexpr int kNameBufferSize = 1024;

int runName(const Args& args) {
    naming::NameRequest request;
    std::string error;
    if (!naming::parseNameRequest(args, &request, &error)) {
        std::fprintf(stderr, "camtune name: %s\n", error.c_str());
        return 2;
    }
    if (request.list) {
        for (const std::string& kind : naming::nameKindList()) std::printf("%s\n", kind.c_str());
        return 0;
    }
    if (request.listFormats) {
        size_t count = 0;
        const NSCam::ImageFormatInfo* table = NSCam::imageFormatTable(&count);
        for (size_t i = 0; i < count; ++i) {
            std::printf("%-14s 0x%04x\n", table[i].name, static_cast<unsigned>(table[i].code));
        }
        return 0;
    }
    // Printing a name touches no disk: the dump root is not made here.
    naming::internal::assumeDumpRoot();
    char name[kNameBufferSize];
    const char* userString = request.hasUserString ? request.userString.c_str() : nullptr;
    if (!naming::composeName(request.kind, request.hint, request.port, userString, name,
                             sizeof(name))) {
        std::fprintf(stderr, "camtune name: unknown kind '%s' (see --list)\n",
                     request.kind.c_str());
        return 2;
    }
    // A text too long for the name's buffer is left out of it: say so rather than print a
    // name without it.
    if (userString != nullptr && std::strstr(name, userString) == nullptr) {
        std::fprintf(stderr,
                     "camtune name: --user text of %zu characters does not fit in the name\n",
                     request.userString.size());
        return 2;
    }
    std::printf("%s\n", name);
    return 0;
}

const std::string& usage() {
    static const std::string text =
            "usage: camtune name KIND [options]\n"
            "       camtune name --list\n"
            "       camtune name --list-formats\n"
            "\n"
            "Prints the dump-file name the library composes for KIND (raw, yuv, jpg or a data\n"
            "kind such as tuning; --list shows them all). Unset numbers keep the hint's\n"
            "defaults. The exposure value appears only while " +
            std::string(props::kNormalAeb.name) +
            "\nis non-zero. Nothing is written to disk.\n"
            "\n"
            "options:\n" +
            naming::nameOptionHelp();
    return text;
}

}  // namespace

CAMTUNE_COMMAND("name", "print the dump-file name of a kind and a naming hint", usage().c_str(),
                runName);

}  // namespace cli
}  // namespace camtune
