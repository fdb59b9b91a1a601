// Sizes, limits and texts shared by the scenario recorder's files.
#pragma once

#include <cstddef>
#include <cstdint>

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

// Log file writer.
constexpr size_t kStagingBufferSize = 0x6000;
constexpr uint32_t kFlushMargin = 1124;
constexpr uint32_t kFileSizeLimit = 0xB400000;
constexpr uint64_t kFreeSpaceFloor = 0x11800000;
constexpr size_t kPathBufferSize = 512;
constexpr size_t kTimeStampSize = 40;
constexpr size_t kNamePrefixSize = 30;
constexpr char kTimeStampFormat[] = "%Y_%m%d_%H%M%S";
constexpr char kContinuedMarker[] = "-- CONTINUED --\n";

// Recorder buffers.
constexpr uint32_t kDataAreaSize = 262144;
constexpr uint32_t kHeadlineSize = 1024;
constexpr uint32_t kRecordHeaderSize = 24;
constexpr uint32_t kHeadlineRecordSize = kRecordHeaderSize + kHeadlineSize;
constexpr size_t kMaxEmptyBuffers = 3;
constexpr int kPendingWaitSliceMs = 40;
// Longest record text the formatted records produce, terminator included.
constexpr size_t kMaxRecordText = 1024;

// Service thread: nice value for boost levels 0 to 3.
constexpr int kNiceByBoostLevel[] = {19, 10, 0, -4};
constexpr size_t kBoostLevel2Queue = 3;
constexpr size_t kBoostLevel3Queue = 10;

// Folders. The recorder falls back to these, in order, when its configured folder cannot be
// created; the writer retries in kLastResortFolder when a file cannot be created.
constexpr char kLastResortFolder[] = "/data/vendor";
constexpr const char* kFolderCandidates[] = {
        "/data/vendor/camera_dump",
        "/data/vendor/scenario_recorder_log",
        "/data/scenario_recorder_log",
};
constexpr unsigned kFolderPathSize = 128;
constexpr unsigned kFolderMode = 0771;
constexpr unsigned kFileMode = 0644;

constexpr char kThreadName[] = "ScenarioRecorder";
constexpr char kPreviewKind[] = "preview";
constexpr char kCaptureKind[] = "capture";

// Logged by the writer and by the service thread when a request has no file to go to.
#define CAMTUNE_RECORDER_NO_FILE_MSG \
    "[%s] Unable to open file. Please disable SELinux and restart camerahalserver. !!!"

// Key of a request or writer: `first` in the upper bits, `second` sign-extended into the low
// ones (so a negative second number covers the upper bits as well).
constexpr int64_t makeKey(int first, int second) {
    return static_cast<int64_t>(static_cast<uint64_t>(static_cast<int64_t>(first)) << 16) |
           static_cast<int64_t>(second);
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
