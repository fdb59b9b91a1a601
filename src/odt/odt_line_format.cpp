#include "odt/odt_line_format.h"

#include <cstdio>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "camtune/naming_vocabulary.h"

namespace NSCam {
namespace TuningUtils {
namespace odt {
namespace {

constexpr char kFieldSeparator = ',';
constexpr char kFileSeparator = ';';
constexpr char kKeySeparator = '-';
constexpr char kFolderSeparator = '/';
// Trimmed from the end of a file name: blanks and the line ends of files edited elsewhere.
constexpr const char* kTrailingTrim = " \t\r\n";
constexpr const char* kBlanks = " \t\r\n\v\f";

}  // namespace

const char kOrderTag[] = "order:";
const char kFeatureFallback[] = "Default";

const char* streamingStageFallback() {
    return NAMING_STAGE_CSTR[NAMING_STAGE_AFBLD_F0];
}
const char* captureStageFallback() {
    return NAMING_STAGE_CSTR[NAMING_STAGE_AFBLD_F4];
}
const char* queryStageFallback() {
    return NAMING_STAGE_CSTR[NAMING_STAGE_P2_MS_F0_H];
}

bool isOrderLine(const std::string& line) {
    return line.compare(0, sizeof(kOrderTag) - 1, kOrderTag) == 0;
}

bool isBlankLine(const std::string& line) {
    return line.find_first_not_of(kBlanks) == std::string::npos;
}

uint32_t toUint32(const std::string& text) {
    unsigned long long value = std::stoull(text);
    if (value > std::numeric_limits<uint32_t>::max()) {
        throw std::out_of_range("not an unsigned 32-bit number: " + text);
    }
    return static_cast<uint32_t>(value);
}

std::vector<uint32_t> parseOrderLine(const std::string& line) {
    std::istringstream in(line.substr(sizeof(kOrderTag) - 1));
    std::vector<uint32_t> order;
    std::string piece;
    while (in >> piece) order.push_back(toUint32(piece));
    return order;
}

DataLine parseDataLine(const std::string& line) {
    DataLine data;
    std::istringstream in(line);
    std::string frame, stage, feature;
    std::getline(in, data.module, kFieldSeparator);
    std::getline(in, frame, kFieldSeparator);
    std::getline(in, data.sensor, kFieldSeparator);
    std::getline(in, stage, kFieldSeparator);
    std::getline(in, feature, kFileSeparator);
    std::getline(in, data.file);
    data.frameNo = toUint32(frame);
    data.stage = std::stoi(stage);
    data.feature = std::stoi(feature);
    data.file.erase(data.file.find_last_not_of(kTrailingTrim) + 1);

    // The configuration frame is the dump's key, at the start of the file's own name.
    size_t slash = data.file.rfind(kFolderSeparator);
    std::istringstream name(slash == std::string::npos ? data.file : data.file.substr(slash + 1));
    std::string uniqueKey, requestNo, frameNo;
    std::getline(name, uniqueKey, kKeySeparator);
    std::getline(name, requestNo, kKeySeparator);
    std::getline(name, frameNo, kKeySeparator);
    data.uniqueKey = std::stoi(uniqueKey);
    data.requestNo = std::stoi(requestNo);
    data.keyFrameNo = std::stoi(frameNo);
    return data;
}

std::string formatDataLine(const std::string& module, uint32_t frameNo, const std::string& sensor,
                           int32_t stage, int32_t feature, const std::string& file) {
    std::string line;
    line.reserve(module.size() + sensor.size() + file.size() + 40);
    line += module;
    line += kFieldSeparator;
    line += std::to_string(frameNo);
    line += kFieldSeparator;
    line += sensor;
    line += kFieldSeparator;
    line += std::to_string(stage);
    line += kFieldSeparator;
    line += std::to_string(feature);
    line += kFileSeparator;
    line += file;
    line += '\n';
    return line;
}

std::string formatOrderLine(const std::vector<uint32_t>& order) {
    std::string line = kOrderTag;
    for (uint32_t id : order) {
        line += ' ';
        line += std::to_string(id);
    }
    line += '\n';
    return line;
}

const char* stageName(int stage) {
    return stage >= 0 && stage < NAMING_STAGE_NUM ? NAMING_STAGE_CSTR[stage] : nullptr;
}

const char* featureName(int feature) {
    return feature >= 0 && feature < NAMING_PIPE_SCENARIO_NUM ? NAMING_PIPE_SCENARIO_CSTR[feature]
                                                              : nullptr;
}

namespace {

const char* featureOrFallback(int feature) {
    const char* name = featureName(feature);
    return name ? name : kFeatureFallback;
}

const char* stageOrFallback(int stage, const char* fallback) {
    const char* name = stageName(stage);
    return name ? name : fallback;
}

}  // namespace

void formatItemKey(char* buf, size_t size, const char* module, int stage, int feature,
                   const char* stageFallback) {
    std::snprintf(buf, size, "%s%c%s%c%s", featureOrFallback(feature), kFieldSeparator,
                  stageOrFallback(stage, stageFallback), kFieldSeparator, module);
}

std::string itemKey(const std::string& module, int stage, int feature, const char* stageFallback) {
    std::string key = featureOrFallback(feature);
    key += kFieldSeparator;
    key += stageOrFallback(stage, stageFallback);
    key += kFieldSeparator;
    key += module;
    return key;
}

}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
