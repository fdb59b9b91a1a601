// MakePrefix: dump root, unique key, request number, frame number and, when bracketing, the
// exposure value.
#define LOG_TAG "QelCam/NamingRule"

#include "naming/prefix.h"

#include <atomic>

#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"
#include "naming/name_elements.h"
#include "platform/property_registry.h"

namespace camtune {
namespace naming {
namespace {

// Failure messages name the public entry point, whichever naming function called it.
constexpr const char kPrefixFunction[] = "MakePrefix";
constexpr mode_t kDumpRootMode = 0660;
// Request and frame numbers keep their last four digits.
constexpr int32_t kNumberModulus = 10000;

// Set once the root exists; never cleared. Two threads racing on the first call may both
// create the folder, which is harmless.
std::atomic<bool> sDumpRootReady{false};

// Named after the entry point so that error lines carry its name as their function.
int MakePrefix(NameWriter& writer, int uniqueKey, int frameNo, int requestNo, int evValue,
               bool withExposure) {
    if (!sDumpRootReady.load(std::memory_order_acquire)) {
        if (fs::makePath(kDumpRoot, kDumpRootMode) == 0) {
            sDumpRootReady.store(true, std::memory_order_release);
            CAM_LOGD("create folder <%s>", kDumpRoot);
        } else {
            CAM_LOGE("craete folder <%s> fail", kDumpRoot);
        }
    }

    if (uniqueKey >= 0) {
        writer.append(kDumpRoot, "/", Decimal{uniqueKey, 9});
    } else {
        writer.append(kDumpRoot, "/uniquekey");
    }
    if (!writer.lastFitted())
        CAM_LOGW("[%s] Add UniqueKey into dump file prefix fail!", kPrefixFunction);

    const int request = requestNo % kNumberModulus;
    if (request >= 0) {
        writer.append("-", Decimal{request, 4});
    } else {
        writer.append("-rqst");
    }
    if (!writer.lastFitted())
        CAM_LOGW("[%s] Add RequestNo into dump file prefix fail!", kPrefixFunction);

    const int frame = frameNo % kNumberModulus;
    if (frame >= 0) {
        writer.append("-", Decimal{frame, 4});
    } else {
        writer.append("-frme");
    }
    if (!writer.lastFitted())
        CAM_LOGW("[%s] Add FrameNo into dump file prefix fail!", kPrefixFunction);

    if (withExposure) {
        CAM_LOGE("vexor : EV(%d)", evValue);
        writer.append("_", Decimal{evValue, 1}, "EV");
        if (!writer.lastFitted()) {
            CAM_LOGW("[%s] Add EvValue into dump file prefix fail!", kPrefixFunction);
        }
    }
    return writer.length();
}

}  // namespace

bool exposureInNames() {
    return props::getInt(props::kNormalAeb) != 0;
}

void writeHintPrefix(NameWriter& writer, const NSCam::TuningUtils::FILE_DUMP_NAMING_HINT& hint) {
    const bool withExposure = exposureInNames();
    MakePrefix(writer, hint.UniqueKey, hint.FrameNo, hint.RequestNo,
               withExposure ? hint.EvValue : 0, withExposure);
}

int rejectNullHint(char* buf, int size, const char* function) {
    if (buf != nullptr && size > 0) buf[0] = '\0';
    CAM_LOGE("[%s] no naming hint given", function);
    return -1;
}

namespace internal {
void forgetDumpRoot() {
    sDumpRootReady.store(false, std::memory_order_release);
}

void assumeDumpRoot() {
    sDumpRootReady.store(true, std::memory_order_release);
}
}  // namespace internal

}  // namespace naming
}  // namespace camtune

namespace NSCam {
namespace TuningUtils {

int MakePrefix(char* buf, int size, int uniqueKey, int frameNo, int requestNo, int evValue) {
    camtune::naming::NameWriter writer(buf, size);
    return camtune::naming::MakePrefix(writer, uniqueKey, frameNo, requestNo, evValue,
                                       camtune::naming::exposureInNames());
}

}  // namespace TuningUtils
}  // namespace NSCam
