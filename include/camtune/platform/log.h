// Logging: CAM_LOGV/D/I/W/E(fmt, ...) under the including file's LOG_TAG.
//
// Define LOG_TAG before including this header. A call below the threshold costs one relaxed
// atomic load and formats nothing. Error lines carry the unified-logger suffix
// " (file){#line:function}".
#pragma once

#include <cstdarg>
#include <functional>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace camtune {
namespace log {

enum class Level { Verbose = 0, Debug = 1, Info = 2, Warn = 3, Error = 4, Silent = 5 };

// Lines below this level are dropped before formatting. On a host the start value comes from
// CAMTUNE_LOG (v, d, i, w, e; default w).
Level threshold();
void setThreshold(Level level);

// True when a line of `level` would be written.
bool isEnabled(Level level);

// Formats and emits one line. Prefer the CAM_LOG* macros.
void write(Level level, const char* tag, const char* file, int line, const char* function,
           const char* fmt, ...) __attribute__((format(printf, 6, 7)));

// A sink receives every emitted line after formatting, instead of the backend's output: the
// message as the caller formatted it, and the unified-logger suffix (empty below Error).
// Used by tests to assert exact messages; pass an empty function to restore the backend.
using Sink =
        std::function<void(Level level, const char* tag, const char* message, const char* suffix)>;
void setSink(Sink sink);

// One-letter name of a level ("V", "D", "I", "W", "E").
const char* levelLetter(Level level);

}  // namespace log
}  // namespace camtune

#define CAMTUNE_LOG_AT(level, fmt, ...)                                              \
    do {                                                                             \
        if (::camtune::log::isEnabled(level))                                        \
            ::camtune::log::write(level, LOG_TAG, __FILE__, __LINE__, __func__, fmt, \
                                  ##__VA_ARGS__);                                    \
    } while (0)

#define CAM_LOGV(fmt, ...) CAMTUNE_LOG_AT(::camtune::log::Level::Verbose, fmt, ##__VA_ARGS__)
#define CAM_LOGD(fmt, ...) CAMTUNE_LOG_AT(::camtune::log::Level::Debug, fmt, ##__VA_ARGS__)
#define CAM_LOGI(fmt, ...) CAMTUNE_LOG_AT(::camtune::log::Level::Info, fmt, ##__VA_ARGS__)
#define CAM_LOGW(fmt, ...) CAMTUNE_LOG_AT(::camtune::log::Level::Warn, fmt, ##__VA_ARGS__)
#define CAM_LOGE(fmt, ...) CAMTUNE_LOG_AT(::camtune::log::Level::Error, fmt, ##__VA_ARGS__)

CAMTUNE_EXPORT_END
