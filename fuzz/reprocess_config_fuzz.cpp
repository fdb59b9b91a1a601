// The reprocess configuration: initReprocInfo and the list accessors on the input as the
// configuration, and the reprocess linter. A request number or "nr3d" value that is not a
// number throws std::invalid_argument or std::out_of_range by design; anything else escaping is
// a finding.
#include <cstdint>
#include <cstdio>
#include <sstream>
#include <stdexcept>
#include <string>

#include "camtune/file_read_rule.h"
#include "fuzz_support.h"
#include "lint/dumpin_lint.h"
#include "platform/host/root.h"
#include "platform/property_registry.h"

namespace {

using NSCam::TuningUtils::FileReadRule;
using NSCam::TuningUtils::TUNING_CURRENT_INFO_T;
using NSCam::TuningUtils::TUNING_REPROCESS_CFG_T;

constexpr char kConfigPath[] = "/data/vendor/camera_dump/reprocess.cfg";
// Files the seeds name, so register files are read too.
constexpr const char* kListedFiles[] = {"/data/dump/105213-0037-0012_p1.reg",
                                        "/data/dump/105213-0037-0012_imgo.raw"};

FILE* gDevNull = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    camtune::fuzz::setUpRoot();
    const uint8_t bytes[16] = {0x10, 0, 0, 0, 3};
    for (const char* file : kListedFiles)
        camtune::fuzz::writeDeviceFile(file, bytes, sizeof(bytes));
    gDevNull = std::fopen("/dev/null", "w");
    camtune::fuzz::check(gDevNull != nullptr, "setup");
    camtune::fuzz::check(
            camtune::props::set(camtune::props::kReprocessEnable, 1) == 0 &&
                    camtune::props::set(camtune::props::kReprocessConfigPath, kConfigPath) == 0,
            "properties");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (camtune::fuzz::mayLeaveRoot(data, size)) return 0;
    camtune::fuzz::writeDeviceFile(kConfigPath, data, size);

    FileReadRule rule;
    bool threw = false;
    try {
        rule.initReprocInfo();
    } catch (const std::invalid_argument&) {
        threw = true;
    } catch (const std::out_of_range&) {
        threw = true;
    }
    // Give every frame a distinct key, as a replay does, and find each again by it.
    unsigned int frames = rule.getReprocInfoSize();
    TUNING_REPROCESS_CFG_T frame;
    for (unsigned int i = 0; i < frames; ++i) {
        camtune::fuzz::check(rule.getReprocInfo(i, frame), "getReprocInfo of a listed frame");
        TUNING_CURRENT_INFO_T info;
        info.key = i + 1;
        info.info1 = i;
        info.info2 = static_cast<uint32_t>(frame.reqNum);
        info.info3 = 4000000000u;
        camtune::fuzz::check(rule.updateReprocInfo(i, info), "updateReprocInfo of a listed frame");
    }
    for (unsigned int i = 0; i < frames; ++i) {
        camtune::fuzz::check(rule.getReprocIndex(i + 1) == static_cast<int>(i),
                             "getReprocIndex does not find a frame by its key");
    }
    camtune::fuzz::check(!rule.getReprocInfo(frames, frame), "getReprocInfo past the end");
    rule.uninitReprocInfo();

    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    std::vector<camtune::dumpin::LintFinding> findings = camtune::dumpin::lintReprocessConfig(in);
    camtune::fuzz::check(
            camtune::fuzz::linesInRange(findings, camtune::fuzz::lineCount(data, size)),
            "lint finding outside the input's lines");
    // The linter reports every line the parser would throw on.
    camtune::fuzz::check(!threw || !findings.empty(), "initReprocInfo threw on a clean file");
    int status = camtune::dumpin::lintFile(camtune::dumpin::LintTarget::ReprocessConfig,
                                           camtune::host::hostPath(kConfigPath).c_str(), gDevNull,
                                           gDevNull);
    // The lint command adds what it finds of the file as a whole (empty, bare CR line ends).
    const bool anything =
            !findings.empty() ||
            !camtune::lintWholeFile(std::string(reinterpret_cast<const char*>(data), size)).empty();
    camtune::fuzz::check(status == (anything ? 1 : 0), "lint status disagrees");
    return 0;
}
