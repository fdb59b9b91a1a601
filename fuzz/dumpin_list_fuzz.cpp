// The dump-in list: every search of FileReadRule and the list linter on the input as the list.
#include <cstdint>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>

#include "camtune/file_read_rule.h"
#include "camtune/platform/host_image_buffer.h"
#include "camtune/platform/properties.h"
#include "fuzz_support.h"
#include "lint/dumpin_lint.h"
#include "platform/host/root.h"
#include "platform/property_registry.h"

namespace {

using namespace NSCam::TuningUtils;

constexpr char kListPath[] = "/data/vendor/camera_dump/dumpin.list";
// Files the seeds name, so the "file exists" and image-load branches run too.
constexpr const char* kListedFiles[] = {
        "/data/dump/105213-0037-0012_imgo.raw", "/data/dump/105213-0037-0012_lsc.bin",
        "/data/dump/105213-0037-0012_p2.tuning", "/data/dump/105213-0037-0012_lpcnr.bin"};

constexpr ETuningFormat_T kFormats[] = {
        eTuningFormat_None,   eTuningFormat_LSC,      eTuningFormat_P2Tuning,
        eTuningFormat_MFB,    eTuningFormat_MFBTable, eTuningFormat_LTM,
        eTuningFormat_YNRMap, eTuningFormat_MSS,      eTuningFormat_FaceInfo};

// Requests and profiles taking each branch of the searches: a plain profile, request-sensitive
// ones, a request number wider than four digits, a negative one and a missing profile.
struct Query {
    int reqNum;
    const char* profile;
};
constexpr Query kQueries[] = {{12, "EIspProfile_Capture"},
                              {12, "EIspProfile_MFNR_Before_Blend"},
                              {123456, "EIspProfile_Preview"},
                              {-3, nullptr}};

std::unique_ptr<NSCam::HostImageBuffer> gBuffer;
FILE* gDevNull = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    camtune::fuzz::setUpRoot();
    const uint8_t bytes[64] = {1, 2, 3, 4, 5, 6, 7, 8};
    for (const char* file : kListedFiles)
        camtune::fuzz::writeDeviceFile(file, bytes, sizeof(bytes));
    gBuffer = NSCam::HostImageBuffer::create(NSCam::eImgFmt_Y8, NSCam::MSize{4, 2});
    gDevNull = std::fopen("/dev/null", "w");
    camtune::fuzz::check(gBuffer != nullptr && gDevNull != nullptr, "setup");
    // Dump (bit 0) and dump-in (bit 1) on.
    camtune::fuzz::check(
            camtune::props::set(camtune::props::kDumpinEnable, 3) == 0 &&
                    camtune::props::set(camtune::props::kDumpinConfigPath, kListPath) == 0,
            "properties");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (camtune::fuzz::mayLeaveRoot(data, size)) return 0;
    camtune::fuzz::writeDeviceFile(kListPath, data, size);

    FileReadRule rule;
    // Shorter than many listed paths, so the truncation branch runs as well.
    char path[48];
    for (const Query& query : kQueries) {
        for (ETuningFormat_T format : kFormats) {
            rule.Extract_File(query.reqNum, query.profile, path, sizeof(path), nullptr, format);
        }
        rule.getFile_LPCNR_TUNING(query.reqNum, query.profile, path, sizeof(path),
                                  kLpcnrTuningKeyword);
        FILE_DUMP_NAMING_HINT hint;
        rule.on_device_dump_file_rename(query.reqNum, query.profile, hint);
        rule.getFile_RAW(query.reqNum, query.profile, gBuffer.get(), "fuzz");
    }
    rule.getFile_uniqueKey();
    rule.getFile_requestNo();
    get_raw_stride();

    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    std::vector<camtune::dumpin::LintFinding> findings = camtune::dumpin::lintDumpinList(in);
    camtune::fuzz::check(
            camtune::fuzz::linesInRange(findings, camtune::fuzz::lineCount(data, size)),
            "lint finding outside the input's lines");
    int status = camtune::dumpin::lintFile(camtune::dumpin::LintTarget::DumpinList,
                                           camtune::host::hostPath(kListPath).c_str(), gDevNull,
                                           gDevNull);
    // The lint command adds what it finds of the file as a whole (empty, bare CR line ends).
    const bool anything =
            !findings.empty() ||
            !camtune::lintWholeFile(std::string(reinterpret_cast<const char*>(data), size)).empty();
    camtune::fuzz::check(status == (anything ? 1 : 0), "lint status disagrees");
    return 0;
}
