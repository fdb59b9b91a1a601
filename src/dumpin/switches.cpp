// The dump and dump-in switches and the single-value lookups of the dump-in list.
#include "dumpin/switches.h"

#include <string>

#include "camtune/file_read_rule.h"
#include "dumpin/dumpin_log.h"
#include "dumpin/line_scanner.h"
#include "dumpin/list_text.h"
#include "dumpin/list_vocabulary.h"
#include "dumpin/messages.h"
#include "platform/property_registry.h"

namespace camtune {
namespace dumpin {
namespace {

constexpr uint32_t kDumpBit = 0x1;
constexpr uint32_t kReadBit = 0x2;

bool enableBit(uint32_t bit) {
    return (static_cast<uint32_t>(props::getInt(props::kDumpinEnable)) & bit) != 0;
}

}  // namespace

bool isReadEnabled() {
    return enableBit(kReadBit);
}

bool isDumpEnabled() {
    return enableBit(kDumpBit);
}

bool findValueLine(const char* word, int* value) {
    std::ifstream list = openListFile(props::kDumpinConfigPath);
    std::string found;
    bool hit = scanLines(list, [&](std::string& line) {
        if (!contains(line, word)) return false;
        found = line;
        return true;
    });
    if (!hit) return false;
    removeRedundancy(found);
    *value = leadingInt(found);
    return true;
}

}  // namespace dumpin
}  // namespace camtune

namespace NSCam {
namespace TuningUtils {

using namespace camtune::dumpin;

int FileReadRule::isREADEnable(const char* /*name*/) {
    return isReadEnabled() ? 1 : 0;
}

int FileReadRule::isDumpEnable(const char* /*name*/) {
    return isDumpEnabled() ? 1 : 0;
}

int FileReadRule::getFile_uniqueKey(const char* /*name*/, int /*idx*/) {
    int value = 0;
    if (!findValueLine(kUniqueKeyWord, &value)) return 0;
    CAM_LOGD(msg::kUniqueKeyValue, __func__, value);
    return value;
}

int FileReadRule::getFile_requestNo(const char* /*name*/, int /*idx*/) {
    int value = 0;
    if (!findValueLine(kRequestNoWord, &value)) return 0;
    // Shares the unique-key wording; log readers match on it.
    CAM_LOGD(msg::kRequestNoValue, value);
    return value;
}

int get_raw_stride(const char* /*name*/, int /*idx*/) {
    int value = 0;
    if (!findValueLine(kRawStrideWord, &value)) return 0;
    CAM_LOGD(msg::kRawStrideValue, value);
    return value;
}

}  // namespace TuningUtils
}  // namespace NSCam
