// Making room for a new log file: the folder's oldest files go first.
#define LOG_TAG "ScenarioRecorder"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"
#include "recorder/file_writer.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

namespace fs = camtune::fs;
namespace log = camtune::log;

namespace {

struct DeletionCandidate {
    uint32_t size;
    int32_t modifiedSec;
    std::string path;
};

// The "Storage full" line is detail, shown only when the log is at debug detail or finer.
constexpr log::Level kUnlinkDetailLevel = log::Level::Debug;

bool formatFits(int n) {
    return n > 0 && static_cast<size_t>(n) < kPathBufferSize;
}

}  // namespace

void FileWriter::reserveSpace(bool quiet) {
    char path[kPathBufferSize];
    std::snprintf(path, sizeof(path), "%s/", mFolder.c_str());
    fs::SpaceInfo space;
    if (fs::statvfs(path, &space) != 0) return;
    // Free blocks including the superuser's reserve: the log may use them too.
    if (space.freeBytes > kFreeSpaceFloor) return;

    std::vector<std::unique_ptr<DeletionCandidate>> candidates;
    {
        std::unique_ptr<DIR, fs::DirCloser> dir(fs::opendir(mFolder.c_str()));
        if (!dir) {
            if (!quiet) CAM_LOGE("[%s] Open folder %s failed", __func__, mFolder.c_str());
            return;
        }
        while (const char* name = fs::readdirName(dir.get())) {
            int n = std::snprintf(path, sizeof(path), "%s/%s", mFolder.c_str(), name);
            // A cut path could name another file; never delete what was not listed.
            if (!formatFits(n)) continue;
            fs::FileInfo info;
            if (fs::stat(path, &info) != 0 || !info.isRegular()) continue;
            if (isOpenByAWriter(path)) continue;
            candidates.push_back(std::make_unique<DeletionCandidate>(
                    DeletionCandidate{static_cast<uint32_t>(info.size),
                                      static_cast<int32_t>(info.modifiedSeconds), path}));
        }
    }
    std::sort(candidates.begin(), candidates.end(),
              [](const auto& a, const auto& b) { return a->modifiedSec < b->modifiedSec; });

    for (const auto& candidate : candidates) {
        if (fs::unlink(candidate->path.c_str()) != 0) continue;
        if (!quiet && log::isEnabled(kUnlinkDetailLevel)) {
            CAM_LOGW("[%s] Storage full. Unlinked: %s", __func__, candidate->path.c_str());
        }
        space.freeBytes += candidate->size;
        if (space.freeBytes > kFreeSpaceFloor) break;
    }
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
