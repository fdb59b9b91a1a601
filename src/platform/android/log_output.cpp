// Device log output: liblog lines under the caller's tag. liblog applies the per-tag log
// control (log.tag.*) itself.
#include <android/log.h>

#include "platform/backend.h"

namespace camtune {
namespace backend {
namespace {

int priorityOf(log::Level level) {
    switch (level) {
        case log::Level::Verbose:
            return ANDROID_LOG_VERBOSE;
        case log::Level::Debug:
            return ANDROID_LOG_DEBUG;
        case log::Level::Info:
            return ANDROID_LOG_INFO;
        case log::Level::Warn:
            return ANDROID_LOG_WARN;
        case log::Level::Error:
            return ANDROID_LOG_ERROR;
        case log::Level::Silent:
            break;
    }
    return ANDROID_LOG_SILENT;
}

}  // namespace

void writeLogLine(log::Level level, const char* tag, const char* message, const char* suffix) {
    int priority = priorityOf(level);
    if (priority == ANDROID_LOG_SILENT) return;
    if (suffix != nullptr && suffix[0] != '\0') {
        __android_log_print(priority, tag, "%s%s", message, suffix);
    } else {
        __android_log_write(priority, tag, message);
    }
}

log::Level initialLogThreshold() {
    // Without a process-wide minimum, let every line reach liblog, which filters per tag;
    // subsystems gate their verbose lines behind their own debug properties.
    switch (__android_log_get_minimum_priority()) {
        case ANDROID_LOG_DEBUG:
            return log::Level::Debug;
        case ANDROID_LOG_INFO:
            return log::Level::Info;
        case ANDROID_LOG_WARN:
            return log::Level::Warn;
        case ANDROID_LOG_ERROR:
        case ANDROID_LOG_FATAL:
            return log::Level::Error;
        case ANDROID_LOG_SILENT:
            return log::Level::Silent;
        default:
            return log::Level::Verbose;
    }
}

}  // namespace backend
}  // namespace camtune
