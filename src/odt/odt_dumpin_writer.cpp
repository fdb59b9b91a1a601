// On-device tuning: the dump-in list a replay writes for the next run, and its log. Files are
// written under their own lock, so the per-frame lookups never wait for a disk.
#define LOG_TAG "OdtUtils"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <string_view>

#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"
#include "odt/odt_line_format.h"
#include "odt/odt_utils.h"

namespace NSCam {
namespace TuningUtils {
namespace {

namespace fs = camtune::fs;

constexpr const char* kDumpinPathFormat = "/data/vendor/camera_dump/%09d-0000-0000_dumpin.cfg";
constexpr size_t kPathSize = 1024;
constexpr const char* kInfoSuffix = "_log";
// A kept path shorter than this names no file.
constexpr size_t kMinPathLength = 2;

#define ODT_FOPEN_FAIL "[%s] fopen fail, errno(%d):%s"

// The line without its "\n", for the log.
std::string_view chomp(const std::string& line) {
    std::string_view view(line);
    if (!view.empty() && view.back() == '\n') view.remove_suffix(1);
    return view;
}

}  // namespace

void OdtUtils::create_config_file(unsigned int uniqueKey) {
    CAM_LOGI("[%s] key(%d)", __func__, static_cast<int>(uniqueKey));
    char path[kPathSize];
    std::snprintf(path, sizeof(path), kDumpinPathFormat, static_cast<int>(uniqueKey));
    int error = 0;
    {
        std::lock_guard<std::mutex> guard(mFileLock);
        std::unique_ptr<FILE, fs::FileCloser> file(fs::fopen(path, "w"));
        if (file) {
            mDumpinPath = path;
        } else {
            error = errno;
            mDumpinPath.clear();
        }
    }
    if (error != 0) {
        CAM_LOGE(ODT_FOPEN_FAIL, __func__, error, std::strerror(error));
        return;
    }
    CAM_LOGI("[%s] dump-in cfg = %d", __func__, static_cast<int>(uniqueKey));
}

bool OdtUtils::hasDumpinPathLocked() const {
    return mDumpinPath.size() >= kMinPathLength;
}

OdtUtils::AppendResult OdtUtils::append(const std::string& path, const std::string& text) {
    std::unique_ptr<FILE, fs::FileCloser> file(fs::fopen(path.c_str(), "a"));
    if (!file) return {AppendResult::OpenFailed, errno};
    if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) {
        return {AppendResult::WriteFailed, errno};
    }
    return {AppendResult::Done, 0};
}

void OdtUtils::report(const AppendResult& result, const char* caller, std::string_view line) {
    switch (result.outcome) {
        case AppendResult::Skipped:
            return;
        case AppendResult::OpenFailed:
            CAM_LOGE(ODT_FOPEN_FAIL, caller, result.error, std::strerror(result.error));
            return;
        case AppendResult::WriteFailed:
            CAM_LOGE("[%s] write fail, errno(%d):%s", caller, result.error,
                     std::strerror(result.error));
            return;
        case AppendResult::Done:
            CAM_LOGD("[%s] %.*s", caller, static_cast<int>(line.size()), line.data());
            return;
    }
}

void OdtUtils::write_frame_data(std::string module, unsigned int frameNo, std::string sensor,
                                int stage, int feature, std::string file) {
    std::string line = odt::formatDataLine(module, frameNo, sensor, stage, feature, file);
    // Only lines that read back as written go in, so a replay never trips over its own file.
    bool readable = false;
    try {
        odt::DataLine back = odt::parseDataLine(std::string(chomp(line)));
        readable = back.module == module && back.frameNo == frameNo && back.sensor == sensor &&
                   back.stage == stage && back.feature == feature && back.file == file;
    } catch (const std::exception&) {
        readable = false;
    }
    AppendResult result;
    {
        std::lock_guard<std::mutex> guard(mFileLock);
        if (!hasDumpinPathLocked()) return;
        if (readable) result = append(mDumpinPath, line);
    }
    if (!readable) {
        CAM_LOGE("[%s] not written, the line would not read back: %.*s", __func__,
                 static_cast<int>(chomp(line).size()), chomp(line).data());
        return;
    }
    report(result, __func__, chomp(line));
}

void OdtUtils::write_frame_end(unsigned int frameNo) {
    CAM_LOGD("[%s] frame(%d)", __func__, static_cast<int>(frameNo));
}

void OdtUtils::write_frame_order(std::vector<unsigned int> order) {
    std::string line = odt::formatOrderLine(std::vector<uint32_t>(order.begin(), order.end()));
    AppendResult result;
    {
        std::lock_guard<std::mutex> guard(mFileLock);
        if (hasDumpinPathLocked()) result = append(mDumpinPath, line);
    }
    report(result, __func__, chomp(line));
}

void OdtUtils::write_info(std::string text) {
    AppendResult result;
    {
        std::lock_guard<std::mutex> guard(mFileLock);
        if (hasDumpinPathLocked()) result = append(mDumpinPath + kInfoSuffix, text + "\n");
    }
    report(result, __func__, text);
}

}  // namespace TuningUtils
}  // namespace NSCam
