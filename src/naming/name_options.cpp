// Command-line options that fill a naming hint.
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "naming/name_catalog.h"

namespace camtune {
namespace naming {
namespace {

using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

enum class Target { HintNumber, HintText, Port, UserString };

struct NameOption {
    const char* name;
    Target target;
    int32_t FILE_DUMP_NAMING_HINT::*number;   // HintNumber
    char (FILE_DUMP_NAMING_HINT::*text)[32];  // HintText
    int base;
    const char* meaning;
};

constexpr NameOption kOptions[] = {
        {"--unique-key", Target::HintNumber, &FILE_DUMP_NAMING_HINT::UniqueKey, nullptr, 10,
         "unique key of the capture run"},
        {"--request", Target::HintNumber, &FILE_DUMP_NAMING_HINT::RequestNo, nullptr, 10,
         "request number"},
        {"--frame", Target::HintNumber, &FILE_DUMP_NAMING_HINT::FrameNo, nullptr, 10,
         "frame number"},
        {"--sensor-dev", Target::HintNumber, &FILE_DUMP_NAMING_HINT::SensorDev, nullptr, 10,
         "sensor device bit (1 main, 2 sub, 4 main2, ...)"},
        {"--port", Target::Port, nullptr, nullptr, 10, "raw or YUV port (-2: none)"},
        {"--format", Target::HintNumber, &FILE_DUMP_NAMING_HINT::ImgFormat, nullptr, 0,
         "image-format code, e.g. 0x2201"},
        {"--width", Target::HintNumber, &FILE_DUMP_NAMING_HINT::ImgWidth, nullptr, 10,
         "image width"},
        {"--height", Target::HintNumber, &FILE_DUMP_NAMING_HINT::ImgHeight, nullptr, 10,
         "image height"},
        {"--buf-width", Target::HintNumber, &FILE_DUMP_NAMING_HINT::BufWidth, nullptr, 10,
         "plane-0 stride in pixels"},
        {"--buf-height", Target::HintNumber, &FILE_DUMP_NAMING_HINT::BufHeight, nullptr, 10,
         "plane-0 rows"},
        {"--stride", Target::HintNumber, &FILE_DUMP_NAMING_HINT::BufStride, nullptr, 10,
         "plane-0 stride in bytes"},
        {"--order", Target::HintNumber, &FILE_DUMP_NAMING_HINT::SensorFormatOrder, nullptr, 10,
         "colour-filter order (0 to 3)"},
        {"--isp-profile", Target::HintNumber, &FILE_DUMP_NAMING_HINT::IspProfile, nullptr, 10,
         "ISP profile"},
        {"--user", Target::UserString, nullptr, nullptr, 0, "caller's free text"},
        {"--hint-user", Target::HintText, nullptr, &FILE_DUMP_NAMING_HINT::UserString, 0,
         "the hint's free text"},
        {"--exp", Target::HintText, nullptr, &FILE_DUMP_NAMING_HINT::ExpString, 0,
         "exposure label (ShtExp, NorExp, LongExp)"},
        {"--ev", Target::HintNumber, &FILE_DUMP_NAMING_HINT::EvValue, nullptr, 10,
         "exposure value, used while bracketing is on"},
};
constexpr const char kListOption[] = "--list";

const NameOption* findOption(const std::string& name) {
    for (const NameOption& option : kOptions) {
        if (name == option.name) return &option;
    }
    return nullptr;
}

bool parseNumber(const std::string& text, int base, int32_t* value) {
    if (text.empty()) return false;
    errno = 0;
    char* end = nullptr;
    const long long parsed = std::strtoll(text.c_str(), &end, base);
    if (errno != 0 || *end != '\0' || parsed < INT32_MIN || parsed > INT32_MAX) return false;
    *value = static_cast<int32_t>(parsed);
    return true;
}

bool apply(const NameOption& option, const std::string& value, NameRequest* request,
           std::string* error) {
    switch (option.target) {
        case Target::HintNumber:
        case Target::Port: {
            int32_t number = 0;
            if (!parseNumber(value, option.base, &number)) {
                *error = std::string("bad number for ") + option.name + ": '" + value + "'";
                return false;
            }
            if (option.target == Target::Port) {
                request->port = number;
            } else {
                request->hint.*option.number = number;
            }
            return true;
        }
        case Target::HintText: {
            char(&text)[32] = request->hint.*option.text;
            if (value.size() >= sizeof(text)) {
                *error = std::string(option.name) + " holds at most " +
                         std::to_string(sizeof(text) - 1) + " characters";
                return false;
            }
            std::memset(text, 0, sizeof(text));
            std::memcpy(text, value.data(), value.size());
            return true;
        }
        case Target::UserString:
            request->hasUserString = true;
            request->userString = value;
            return true;
    }
    return false;
}

}  // namespace

bool parseNameRequest(const std::vector<std::string>& args, NameRequest* request,
                      std::string* error) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == kListOption) {
            request->list = true;
            continue;
        }
        if (arg.rfind("--", 0) != 0) {
            if (!request->kind.empty()) {
                *error = "more than one kind: '" + request->kind + "' and '" + arg + "'";
                return false;
            }
            request->kind = arg;
            continue;
        }
        const NameOption* option = findOption(arg);
        if (option == nullptr) {
            *error = "unknown option '" + arg + "'";
            return false;
        }
        if (i + 1 >= args.size()) {
            *error = "missing value for " + arg;
            return false;
        }
        if (!apply(*option, args[++i], request, error)) return false;
    }
    if (!request->list && request->kind.empty()) {
        *error = "no kind given (see --list)";
        return false;
    }
    return true;
}

std::string nameOptionHelp() {
    std::string help;
    for (const NameOption& option : kOptions) {
        char line[160];
        std::snprintf(line, sizeof(line), "  %-14s %s\n", option.name, option.meaning);
        help += line;
    }
    return help;
}

}  // namespace naming
}  // namespace camtune
