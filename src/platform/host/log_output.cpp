// Host log output: "level/TAG: message" lines on stderr, threshold from CAMTUNE_LOG.
#include <cstdio>
#include <cstdlib>

#include "platform/backend.h"

namespace camtune {
namespace backend {

void writeLogLine(log::Level level, const char* tag, const char* message, const char* suffix) {
    // One fprintf per line so lines of different threads do not interleave.
    std::fprintf(stderr, "%s/%s: %s%s\n", log::levelLetter(level), tag, message, suffix);
}

log::Level initialLogThreshold() {
    const char* value = std::getenv("CAMTUNE_LOG");
    if (value == nullptr) return log::Level::Warn;
    switch (value[0]) {
        case 'v': case 'V': return log::Level::Verbose;
        case 'd': case 'D': return log::Level::Debug;
        case 'i': case 'I': return log::Level::Info;
        case 'w': case 'W': return log::Level::Warn;
        case 'e': case 'E': return log::Level::Error;
        case 's': case 'S': return log::Level::Silent;
        default: return log::Level::Warn;
    }
}

}  // namespace backend
}  // namespace camtune
