// The NDD configuration file: the input is the file vendor.debug.ndd.cfgpath names, read by
// stream_on; then one frame asks about up to eight of its items (is_enable_dump,
// query_file_path) and the stream ends. The NDD linter reads it too: its findings must name
// lines of the input, and the line where it says the library stops reading must be the one
// where the library stopped.
#include <cstdint>
#include <cstring>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "camtune/naming_vocabulary.h"
#include "camtune/ndd_tables.h"
#include "fuzz_support.h"
#include "lint/ndd_lint.h"
#include "ndd/config_table.h"
#include "ndd_session.h"

namespace {

using namespace NSCam::TuningUtils;
using camtune::fuzz::check;

constexpr int kSensorId = 0;
constexpr int kFrameNo = 100;
// Items asked about per input: a few lines reach every naming rule, and each query costs.
constexpr size_t kItemsAsked = 8;

Ndd* gNdd = nullptr;

template <size_t N>
int indexOf(const char* const (&names)[N], const std::string& name) {
    for (size_t i = 0; i < N; ++i) {
        if (name == names[i]) return static_cast<int>(i);
    }
    return -1;
}

bool endsWith(const std::string& text, const char* end) {
    const size_t length = std::strlen(end);
    return text.size() >= length && text.compare(text.size() - length, length, end) == 0;
}

// The line at which the linter says the library stops reading, or past the last line. Messages
// quote the input, so only their fixed endings tell.
int lintStopLine(const std::vector<LintFinding>& findings, int lines) {
    for (const LintFinding& finding : findings) {
        if (endsWith(finding.message, "stops reading the file here") ||
            endsWith(finding.message, "stops reading the file at this line")) {
            return finding.line;
        }
    }
    return lines + 1;
}

// What the library keeps of the lines before `stopLine`: the last line of each key. Checks
// that each of them is a configuration line, as the linter said.
std::map<std::string, configInfo> expectedTable(const std::string& text, int stopLine) {
    std::map<std::string, configInfo> table;
    std::istringstream in(text);
    std::string line;
    for (int number = 1; number < stopLine && std::getline(in, line); ++number) {
        configInfo info;
        check(parseConfigLine(line, &info) == ConfigLineStatus::Ok,
              "the linter passes a line the library refuses");
        table[ConfigTable::keyOf(info)] = info;
    }
    if (std::getline(in, line)) {
        configInfo info;
        check(parseConfigLine(line, &info) != ConfigLineStatus::Ok,
              "the linter stops at a line the library reads");
    }
    return table;
}

// Asks about the item a line names, when its names are all in the tables.
void askAbout(const configInfo& info) {
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    // An empty feature or stage is how an index without a name is looked up.
    const int feature =
            info.feature.empty() ? -1 : indexOf(NAMING_PIPE_SCENARIO_CSTR, info.feature);
    const int stage = info.stage.empty() ? -1 : indexOf(NAMING_STAGE_CSTR, info.stage);
    const int module = tables->findModule(info.module);
    int category = -1;
    for (size_t i = 0; i < tables->categoryCount(); ++i) {
        if (info.category == tables->getCategoryName(static_cast<int>(i))) {
            category = static_cast<int>(i);
        }
    }
    if ((feature < 0 && !info.feature.empty()) || (stage < 0 && !info.stage.empty()) ||
        module < 0 || category < 0 || feature > Ndd::kMaxFeature) {
        return;
    }

    NddData data;
    data.sensorId = kSensorId;
    data.frameNo = kFrameNo;
    data.feature = feature;
    data.stage = stage;
    data.action = -1;
    const auto itemCategory = static_cast<eCategory>(category);
    const auto itemModule = static_cast<eModule>(module);
    check(gNdd->is_enable_dump(data, itemCategory, itemModule) == (info.enable != 0),
          "is_enable_dump disagrees with the line's enable field");

    camtune::fuzz::GuardedBuffer out(kNddPathMax);
    const bool named =
            gNdd->query_file_path(itemCategory, itemModule, data, out.data(), __FILE__, __LINE__);
    check(out.guardIntact(), "query_file_path wrote past kNddPathMax");
    if (!named) {
        check(out.untouched(), "query_file_path failed but wrote into the buffer");
        return;
    }
    check(info.enable != 0, "query_file_path named a disabled item");
    check(out.terminated(), "query_file_path left the path unterminated");
    const std::string folder = gNdd->dumpFolder() + "/";
    const char* path = out.data();
    check(std::strncmp(path, folder.c_str(), folder.size()) == 0,
          "the path is not in the dump folder");
    const char* name = path + folder.size();
    check(name[0] != '\0' && std::strchr(name, '/') == nullptr && std::strcmp(name, ".") != 0 &&
                  std::strcmp(name, "..") != 0,
          "the path's name is not a file in the dump folder");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    gNdd = camtune::fuzz::startNdd(false);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::istringstream in(text);
    const std::vector<LintFinding> findings = lintNddConfig(in);
    const int lines = camtune::fuzz::lineCount(data, size);
    check(camtune::fuzz::linesInRange(findings, lines), "lint finding outside the input's lines");
    const std::map<std::string, configInfo> table =
            expectedTable(text, lintStopLine(findings, lines));

    camtune::fuzz::streamOn(gNdd, text, {kSensorId});
    check(gNdd->configEntryCount() == table.size(),
          "the library kept another number of items than the lines before the stop");

    camtune::fuzz::beginAdmittedFrame(gNdd, kSensorId, kFrameNo);
    size_t asked = 0;
    for (const auto& entry : table) {
        if (asked++ == kItemsAsked) break;
        askAbout(entry.second);
    }
    gNdd->frame_end(kSensorId, kFrameNo);
    gNdd->stream_off({kSensorId});
    return 0;
}
