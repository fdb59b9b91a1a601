// The lines of the ODT configuration files: the one place that knows their layout, so the writer,
// the parser and the linter cannot disagree.
//
//   data line:   module,frameNo,sensor,stage,feature;file
//   order line:  order: id id ...
//
// The file of a data line is a dump file whose name (after the last "/") begins with the NDD key
// "%09d-%04d-%04d": the unique key, request number and frame number of the configuration frame
// the line belongs to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace NSCam {
namespace TuningUtils {
namespace odt {

extern const char kOrderTag[];  // "order:"

// Fallback names of an item key when the stage or feature index has no name.
extern const char kFeatureFallback[];
const char* streamingStageFallback();
const char* captureStageFallback();
const char* queryStageFallback();

struct DataLine {
    std::string module;
    uint32_t frameNo = 0;  // pipeline frame the file was dumped from
    std::string sensor;
    int32_t stage = 0;
    int32_t feature = 0;
    std::string file;  // trailing blanks and line ends trimmed
    // The configuration frame's identity, from the file name.
    int32_t uniqueKey = 0;
    int32_t requestNo = 0;
    int32_t keyFrameNo = 0;
};

bool isOrderLine(const std::string& line);
// True for a line holding nothing but blanks; such lines are skipped.
bool isBlankLine(const std::string& line);

// The number conversions below are the decimal string-to-integer conversions of the format: they
// throw std::invalid_argument for a field without a number and std::out_of_range for a number
// that does not fit.
std::vector<uint32_t> parseOrderLine(const std::string& line);
DataLine parseDataLine(const std::string& line);
uint32_t toUint32(const std::string& text);

// The lines as the writer appends them, "\n" included.
std::string formatDataLine(const std::string& module, uint32_t frameNo, const std::string& sensor,
                           int32_t stage, int32_t feature, const std::string& file);
std::string formatOrderLine(const std::vector<uint32_t>& order);

// Item key "feature,stage,module" into `buf`; an index without a name takes the fallback.
void formatItemKey(char* buf, size_t size, const char* module, int stage, int feature,
                   const char* stageFallback);
constexpr size_t kItemKeySize = 256;
std::string itemKey(const std::string& module, int stage, int feature, const char* stageFallback);

// Names of the vocabulary; null when the index has none.
const char* stageName(int stage);
const char* featureName(int feature);

}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
