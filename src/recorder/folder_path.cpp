// Choosing the folder of the recorder's log files.
#define LOG_TAG "ScenarioRecorder"

#include <cerrno>
#include <cstring>

#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"
#include "camtune/platform/properties.h"
#include "platform/property_registry.h"
#include "recorder/scenario_recorder_impl.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

namespace fs = camtune::fs;
namespace props = camtune::props;

namespace {

// Copies `source` into `out` of `size` bytes, cut if needed; returns false when it was cut.
bool copyBounded(char* out, unsigned size, const char* source) {
    size_t length = std::strlen(source);
    size_t kept = length < size ? length : size - 1;
    std::memcpy(out, source, kept);
    out[kept] = '\0';
    return kept == length;
}

bool makeFolder(const char* path) {
    return fs::mkdir(path, kFolderMode) == 0 || errno == EEXIST;
}

}  // namespace

void ScenarioRecorder::getFolderPath(char* out, unsigned size) {
    if (out == nullptr) {
        CAM_LOGE("[%s] folderPath is nullptr", __func__);
        return;
    }
    if (size == 0) return;
    char configured[NSCam::Utils::Properties::kPropertyValueMax];
    props::getString(props::kRecorderFolder, configured);
    copyBounded(out, size, configured);
    if (makeFolder(out)) return;
    CAM_LOGE("[%s] mkdir(%s) failed, errno = %d", __func__, out, errno);

    for (const char* candidate : kFolderCandidates) {
        if (!copyBounded(out, size, candidate)) {
            CAM_LOGE("[%s] candidatePath size is too long", __func__);
            continue;
        }
        if (makeFolder(out)) {
            CAM_LOGV("[%s] mkdir(%s) OK", __func__, out);
            return;
        }
    }
    copyBounded(out, size, kLastResortFolder);
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
