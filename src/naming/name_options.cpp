// Command-line options that fill a naming hint.
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "camtune/platform/image_format.h"
#include "naming/name_catalog.h"

namespace camtune {
namespace naming {
namespace {

using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

enum class Target { HintNumber, HintText, Port, UserString, Format, IspProfile };

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
        {"--format", Target::Format, &FILE_DUMP_NAMING_HINT::ImgFormat, nullptr, 0,
         "image format: a name (bayer10, nv21, ...; see --list-formats) or its code (0x2201)"},
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
        {"--isp-profile", Target::IspProfile, &FILE_DUMP_NAMING_HINT::IspProfile, nullptr, 10,
         "ISP profile: EIspProfile_Preview, EIspProfile_Video, EIspProfile_Capture (the dump-in "
         "list's names, prefix optional) or a number"},
        {"--user", Target::UserString, nullptr, nullptr, 0,
         "caller's free text (no blanks or , ; / : the dump-in list could not read it back)"},
        {"--hint-user", Target::HintText, nullptr, &FILE_DUMP_NAMING_HINT::UserString, 0,
         "the hint's free text"},
        {"--exp", Target::HintText, nullptr, &FILE_DUMP_NAMING_HINT::ExpString, 0,
         "exposure label (ShtExp, NorExp, LongExp)"},
        {"--ev", Target::HintNumber, &FILE_DUMP_NAMING_HINT::EvValue, nullptr, 10,
         "exposure value, used while bracketing is on"},
};
constexpr const char kListOption[] = "--list";
constexpr const char kListFormatsOption[] = "--list-formats";

// ISP profiles by the names the dump-in list spells them with.
constexpr const char* kIspProfileNames[] = {"EIspProfile_Preview", "EIspProfile_Video",
                                            "EIspProfile_Capture"};
constexpr const char kIspProfilePrefix[] = "EIspProfile_";
// Characters a user text may not hold: blanks end a dump-in list field, the others separate
// fields or folders.
constexpr const char kUserTextForbidden[] = " \t\r\n,;/";

bool sameIgnoringCase(const std::string& a, const char* b) {
    if (a.size() != std::strlen(b)) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i]))) {
            return false;
        }
    }
    return true;
}

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
            if (value.find_first_of(kUserTextForbidden) != std::string::npos) {
                *error = "--user '" + value +
                         "' holds a blank, ',', ';' or '/': a name made with it cannot be read "
                         "back from a dump-in list";
                return false;
            }
            request->hasUserString = true;
            request->userString = value;
            return true;
        case Target::Format: {
            size_t count = 0;
            const NSCam::ImageFormatInfo* table = NSCam::imageFormatTable(&count);
            for (size_t i = 0; i < count; ++i) {
                if (sameIgnoringCase(value, table[i].name)) {
                    request->hint.*option.number = table[i].code;
                    return true;
                }
            }
            int32_t code = 0;
            if (parseNumber(value, 0, &code) && NSCam::findImageFormat(code) != nullptr) {
                request->hint.*option.number = code;
                return true;
            }
            int32_t asHex = 0;
            const bool hexKnown =
                    parseNumber(value, 16, &asHex) && NSCam::findImageFormat(asHex) != nullptr;
            *error = "unknown image format '" + value + "'" +
                     (hexKnown ? "; did you mean 0x" + value + "?" : "") +
                     " (camtune name --list-formats lists them)";
            return false;
        }
        case Target::IspProfile: {
            for (size_t i = 0; i < sizeof(kIspProfileNames) / sizeof(kIspProfileNames[0]); ++i) {
                const char* name = kIspProfileNames[i];
                if (value == name || value == name + sizeof(kIspProfilePrefix) - 1) {
                    request->hint.*option.number = static_cast<int32_t>(i);
                    return true;
                }
            }
            int32_t number = 0;
            if (!parseNumber(value, 10, &number)) {
                *error = "unknown ISP profile '" + value +
                         "' (EIspProfile_Preview, EIspProfile_Video, EIspProfile_Capture or a "
                         "number)";
                return false;
            }
            request->hint.*option.number = number;
            return true;
        }
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
        if (arg == kListFormatsOption) {
            request->listFormats = true;
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
    if (!request->list && !request->listFormats && request->kind.empty()) {
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
