// What a platform backend (host/ or android/) provides beyond the port functions it implements
// outright (properties.h, trace.h, the file operations of fs.h, clock::realtime and
// thread::throwIfStartFails). Shared port code calls these.
#pragma once

#include "camtune/platform/log.h"

namespace camtune {
namespace backend {

// Writes one formatted line to the platform log. `suffix` is the unified-logger suffix of an
// error line, "" otherwise.
void writeLogLine(log::Level level, const char* tag, const char* message, const char* suffix);

// Threshold in force before anyone sets one.
log::Level initialLogThreshold();

}  // namespace backend
}  // namespace camtune
