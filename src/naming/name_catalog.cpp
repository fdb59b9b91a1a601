#include "naming/name_catalog.h"

#include <algorithm>
#include <cctype>

#include "naming/data_file_kinds.h"

namespace camtune {
namespace naming {
namespace {

using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

struct ImageKind {
    const char* name;
    int (*compose)(char* buf, int size, const FILE_DUMP_NAMING_HINT& hint, int port,
                   const char* userString);
};

constexpr ImageKind kImageKinds[] = {
        {"raw",
         [](char* buf, int size, const FILE_DUMP_NAMING_HINT& hint, int port, const char* user) {
             return NSCam::TuningUtils::genFileName_RAW(
                     buf, size, &hint, static_cast<NSCam::TuningUtils::RAW_PORT>(port), user);
         }},
        {"yuv",
         [](char* buf, int size, const FILE_DUMP_NAMING_HINT& hint, int port, const char* user) {
             return NSCam::TuningUtils::genFileName_YUV(
                     buf, size, &hint, static_cast<NSCam::TuningUtils::YUV_PORT>(port), user);
         }},
        {"jpg",
         [](char* buf, int size, const FILE_DUMP_NAMING_HINT& hint, int, const char* user) {
             return NSCam::TuningUtils::genFileName_JPG(buf, size, &hint, user);
         }},
};

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

}  // namespace

std::vector<std::string> nameKindList() {
    std::vector<std::string> names;
    for (const ImageKind& kind : kImageKinds) names.emplace_back(kind.name);
    size_t count = 0;
    const DataFileKind* kinds = dataFileKinds(&count);
    for (size_t i = 0; i < count; ++i) names.push_back(lowerCase(kinds[i].name));
    return names;
}

bool composeName(const std::string& kind, const FILE_DUMP_NAMING_HINT& hint, int port,
                 const char* userString, char* buf, int size) {
    const std::string wanted = lowerCase(kind);
    for (const ImageKind& image : kImageKinds) {
        if (wanted == image.name) {
            image.compose(buf, size, hint, port, userString);
            return true;
        }
    }
    const DataFileKind* data = findDataFileKind(kind.c_str());
    if (data == nullptr) return false;
    genDataFileName(*data, buf, size, hint, userString);
    return true;
}

}  // namespace naming
}  // namespace camtune
