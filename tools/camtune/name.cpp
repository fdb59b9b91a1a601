// camtune name: the dump-file name the library composes for a hint given as options.
#include <cstdio>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>

#include "camtune/platform/image_format.h"
#include "cli_parse.h"
#include "command.h"
#include "json_text.h"
#include "name_options.h"
#include "naming/name_catalog.h"
#include "naming/prefix.h"
#include "platform/property_registry.h"

namespace camtune {
namespace cli {
namespace {

using Json = nlohmann::ordered_json;

// Room of the pipeline's path buffers.
constexpr int kNameBufferSize = 1024;

std::string description() {
    return std::string(
                   "Prints the dump-file name the library composes for KIND (raw, yuv, jpg or a\n"
                   "data kind such as tuning; --list shows them all). Unset numbers keep the\n"
                   "hint's defaults. The exposure value appears only while ") +
           props::kNormalAeb.name +
           "\nis non-zero. Nothing is written to disk.\n"
           "\n"
           "Exit status: 0 a name was printed, 2 bad usage, an unknown kind or a value the\n"
           "name cannot hold.";
}

int listKinds(bool json) {
    Json out = Json::array();
    for (const std::string& kind : naming::nameKindList()) {
        if (json) {
            out.push_back(kind);
        } else {
            std::printf("%s\n", kind.c_str());
        }
    }
    if (json) std::printf("%s\n", jsonText(out, 2).c_str());
    return 0;
}

int listFormats(bool json) {
    size_t count = 0;
    const NSCam::ImageFormatInfo* table = NSCam::imageFormatTable(&count);
    Json out = Json::array();
    for (size_t i = 0; i < count; ++i) {
        char code[16];
        std::snprintf(code, sizeof(code), "0x%04x", static_cast<unsigned>(table[i].code));
        if (json) {
            out.push_back({{"name", table[i].name}, {"code", code}});
        } else {
            std::printf("%-14s %s\n", table[i].name, code);
        }
    }
    if (json) std::printf("%s\n", jsonText(out, 2).c_str());
    return 0;
}

int fail(const std::string& message) {
    std::fprintf(stderr, "camtune name: %s\n", message.c_str());
    return 2;
}

int runName(const Args& args) {
    CLI::App app(description(), "camtune name");
    NameRequest request;
    NameOptions options;
    bool list = false;
    bool formats = false;
    bool json = false;
    app.add_option("KIND", request.kind, "kind of name (see --list)");
    app.add_flag("--list", list, "list the kinds");
    app.add_flag("--list-formats", formats, "list the image formats --format takes by name");
    app.add_flag("--json", json, "print a JSON object (kind, name) or array");
    options.addTo(app);
    const int status = parseArgs(app, args);
    if (status >= 0) return status;

    std::string error;
    if (!options.apply(&request, &error)) return fail(error);
    if (list) return listKinds(json);
    if (formats) return listFormats(json);
    if (request.kind.empty()) return fail("no kind given (see --list)");

    // Printing a name touches no disk: the dump root is not made here.
    naming::internal::assumeDumpRoot();
    char name[kNameBufferSize];
    const char* userString = request.hasUserString ? request.userString.c_str() : nullptr;
    if (!naming::composeName(request.kind, request.hint, request.port, userString, name,
                             sizeof(name))) {
        return fail("unknown kind '" + request.kind + "' (see --list)");
    }
    // A text too long for the name's buffer is left out of it: say so rather than print a
    // name without it.
    if (userString != nullptr && std::strstr(name, userString) == nullptr) {
        return fail("--user text of " + std::to_string(request.userString.size()) +
                    " characters does not fit in the name");
    }
    if (json) {
        std::printf("%s\n", jsonText(Json({{"kind", request.kind}, {"name", name}}), 2).c_str());
    } else {
        std::printf("%s\n", name);
    }
    return 0;
}

}  // namespace

CAMTUNE_COMMAND("name", "print the dump-file name of a kind and a naming hint", runName);

}  // namespace cli
}  // namespace camtune
