// The on-device tuning replay configuration: parsingFile and the streaming and capture lookups
// on the input as the configuration, and the replay linter. A number field that is not a number
// throws std::invalid_argument or std::out_of_range by design; anything else escaping is a
// finding.
#include <cstdint>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "camtune/odt.h"
#include "fuzz_support.h"
#include "lint/odt_lint.h"
#include "platform/property_registry.h"

namespace {

using namespace NSCam::TuningUtils;

constexpr char kConfigPath[] = "/data/vendor/camera_dump/replay.cfg";
// Never created: reading it empties the configuration, so no input sees the one before it.
constexpr char kAbsentPath[] = "/data/vendor/camera_dump/absent.cfg";
// Pipeline frames bound per input: two passes over a short configuration.
constexpr unsigned int kFirstFrame = 500;
constexpr unsigned int kFrameCount = 6;

std::shared_ptr<IOdtUtils> gOdt;

void setConfigPath(const char* path) {
    camtune::fuzz::check(camtune::props::set(camtune::props::kOdtConfigPath, path) == 0,
                         "properties");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    camtune::fuzz::setUpRoot();
    camtune::fuzz::check(camtune::props::set(camtune::props::kOdtEnable, 1) == 0 &&
                                 camtune::props::set(camtune::props::kOdtStreaming, 1) == 0,
                         "properties");
    gOdt = IOdtUtils::getInstance(0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    camtune::fuzz::writeDeviceFile(kConfigPath, data, size);
    setConfigPath(kAbsentPath);
    gOdt->parsingFile();
    setConfigPath(kConfigPath);
    camtune::props::set(camtune::props::kOdtStart, 2);
    gOdt->readProperty();

    bool threw = false;
    try {
        gOdt->parsingFile();
    } catch (const std::invalid_argument&) {
        threw = true;
    } catch (const std::out_of_range&) {
        threw = true;
    }
    for (unsigned int frame = kFirstFrame; frame < kFirstFrame + kFrameCount; ++frame) {
        gOdt->frame_begin(frame);
        gOdt->get_cfg_prefix(frame);
        gOdt->get_cfg_info(frame, eModule_AAO, 1, 0, -1);
        gOdt->get_cfg_info(frame, eModule_LSC, -1, 999, 0);
        gOdt->is_enable(frame, eModule_LTM_OUT, 59, 0, 0);
        gOdt->frame_end(frame);
    }
    for (unsigned int index = 0; index < 3; ++index) {
        gOdt->get_cfg_info(eModule_AAO, 1, index, 0, -1);
        gOdt->is_enable(eModule_LSC, 46, static_cast<int>(index), 0);
    }
    gOdt->stream_off();

    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    std::vector<odt::LintFinding> findings = odt::lintReplayConfig(in);
    camtune::fuzz::check(
            camtune::fuzz::linesInRange(findings, camtune::fuzz::lineCount(data, size)),
            "lint finding outside the input's lines");
    // The linter reports every line parsingFile refuses.
    camtune::fuzz::check(!threw || !findings.empty(), "parsingFile threw on a clean file");
    return 0;
}
