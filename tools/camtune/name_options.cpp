// Options of camtune name that fill a naming hint.
#include "name_options.h"

#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "camtune/platform/image_format.h"

namespace camtune {
namespace cli {
namespace {

using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

enum class Target { HintNumber, HintText, Port, UserString, Format, IspProfile };

struct NameOption {
    const char* name;
    Target target;
    int32_t FILE_DUMP_NAMING_HINT::*number;   // HintNumber, Format, IspProfile
    char (FILE_DUMP_NAMING_HINT::*text)[32];  // HintText
    const char* meaning;
};

constexpr NameOption kOptions[] = {
        {"--unique-key", Target::HintNumber, &FILE_DUMP_NAMING_HINT::UniqueKey, nullptr,
         "unique key of the capture run"},
        {"--request", Target::HintNumber, &FILE_DUMP_NAMING_HINT::RequestNo, nullptr,
         "request number"},
        {"--frame", Target::HintNumber, &FILE_DUMP_NAMING_HINT::FrameNo, nullptr, "frame number"},
        {"--sensor-dev", Target::HintNumber, &FILE_DUMP_NAMING_HINT::SensorDev, nullptr,
         "sensor device bit (1 main, 2 sub, 4 main2, ...)"},
        {"--port", Target::Port, nullptr, nullptr, "raw or YUV port (-2: none)"},
        {"--format", Target::Format, &FILE_DUMP_NAMING_HINT::ImgFormat, nullptr,
         "image format: a name (bayer10, nv21, ...; see --list-formats) or its code (0x2201)"},
        {"--width", Target::HintNumber, &FILE_DUMP_NAMING_HINT::ImgWidth, nullptr, "image width"},
        {"--height", Target::HintNumber, &FILE_DUMP_NAMING_HINT::ImgHeight, nullptr,
         "image height"},
        {"--buf-width", Target::HintNumber, &FILE_DUMP_NAMING_HINT::BufWidth, nullptr,
         "plane-0 stride in pixels"},
        {"--buf-height", Target::HintNumber, &FILE_DUMP_NAMING_HINT::BufHeight, nullptr,
         "plane-0 rows"},
        {"--stride", Target::HintNumber, &FILE_DUMP_NAMING_HINT::BufStride, nullptr,
         "plane-0 stride in bytes"},
        {"--order", Target::HintNumber, &FILE_DUMP_NAMING_HINT::SensorFormatOrder, nullptr,
         "colour-filter order (0 to 3)"},
        {"--isp-profile", Target::IspProfile, &FILE_DUMP_NAMING_HINT::IspProfile, nullptr,
         "ISP profile: EIspProfile_Preview, EIspProfile_Video, EIspProfile_Capture (the dump-in "
         "list's names, prefix optional) or a number"},
        {"--user", Target::UserString, nullptr, nullptr,
         "caller's free text (no blanks or , ; / : the dump-in list could not read it back)"},
        {"--hint-user", Target::HintText, nullptr, &FILE_DUMP_NAMING_HINT::UserString,
         "the hint's free text"},
        {"--exp", Target::HintText, nullptr, &FILE_DUMP_NAMING_HINT::ExpString,
         "exposure label (ShtExp, NorExp, LongExp)"},
        {"--ev", Target::HintNumber, &FILE_DUMP_NAMING_HINT::EvValue, nullptr,
         "exposure value, used while bracketing is on"},
};
constexpr size_t kOptionCount = sizeof(kOptions) / sizeof(kOptions[0]);

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

bool parseNumber(const std::string& text, int base, int32_t* value) {
    if (text.empty() || std::isspace(static_cast<unsigned char>(text[0]))) return false;
    errno = 0;
    char* end = nullptr;
    const long long parsed = std::strtoll(text.c_str(), &end, base);
    if (errno != 0 || *end != '\0' || parsed < INT32_MIN || parsed > INT32_MAX) return false;
    *value = static_cast<int32_t>(parsed);
    return true;
}

bool applyFormat(const std::string& value, int32_t* code, std::string* error) {
    size_t count = 0;
    const NSCam::ImageFormatInfo* table = NSCam::imageFormatTable(&count);
    for (size_t i = 0; i < count; ++i) {
        if (sameIgnoringCase(value, table[i].name)) {
            *code = table[i].code;
            return true;
        }
    }
    if (parseNumber(value, 0, code) && NSCam::findImageFormat(*code) != nullptr) return true;
    int32_t asHex = 0;
    const bool hexKnown =
            parseNumber(value, 16, &asHex) && NSCam::findImageFormat(asHex) != nullptr;
    *error = "unknown image format '" + value + "'" +
             (hexKnown ? "; did you mean 0x" + value + "?" : "") +
             " (camtune name --list-formats lists them)";
    return false;
}

bool applyIspProfile(const std::string& value, int32_t* profile, std::string* error) {
    for (size_t i = 0; i < sizeof(kIspProfileNames) / sizeof(kIspProfileNames[0]); ++i) {
        const char* name = kIspProfileNames[i];
        if (value == name || value == name + sizeof(kIspProfilePrefix) - 1) {
            *profile = static_cast<int32_t>(i);
            return true;
        }
    }
    if (parseNumber(value, 10, profile)) return true;
    *error = "unknown ISP profile '" + value +
             "' (EIspProfile_Preview, EIspProfile_Video, EIspProfile_Capture or a number)";
    return false;
}

bool applyOne(const NameOption& option, const std::string& value, NameRequest* request,
              std::string* error) {
    switch (option.target) {
        case Target::HintNumber:
        case Target::Port: {
            int32_t number = 0;
            if (!parseNumber(value, 10, &number)) {
                *error = std::string("bad number for ") + option.name + ": '" + value + "'";
                return false;
            }
            (option.target == Target::Port ? request->port : request->hint.*option.number) = number;
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
        case Target::Format:
            return applyFormat(value, &(request->hint.*option.number), error);
        case Target::IspProfile:
            return applyIspProfile(value, &(request->hint.*option.number), error);
    }
    return false;
}

}  // namespace

void NameOptions::addTo(CLI::App& app) {
    mValues.assign(kOptionCount, std::string());
    mOptions.clear();
    for (size_t i = 0; i < kOptionCount; ++i) {
        mOptions.push_back(app.add_option(kOptions[i].name, mValues[i], kOptions[i].meaning));
    }
}

bool NameOptions::apply(NameRequest* request, std::string* error) const {
    for (size_t i = 0; i < mOptions.size(); ++i) {
        if (mOptions[i]->count() == 0) continue;
        if (!applyOne(kOptions[i], mValues[i], request, error)) return false;
    }
    return true;
}

}  // namespace cli
}  // namespace camtune
