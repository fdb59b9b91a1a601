// Host log output: "level/TAG: message" lines on stderr, threshold from CAMTUNE_LOG.
#include <cctype>
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
    struct Choice {
        char letter;
        log::Level level;
    };
    static constexpr Choice kChoices[] = {
            {'v', log::Level::Verbose}, {'d', log::Level::Debug}, {'i', log::Level::Info},
            {'w', log::Level::Warn},    {'e', log::Level::Error}, {'s', log::Level::Silent},
    };
    const char* value = std::getenv("CAMTUNE_LOG");
    if (value != nullptr) {
        char letter = static_cast<char>(std::tolower(static_cast<unsigned char>(value[0])));
        for (const Choice& choice : kChoices) {
            if (choice.letter == letter) return choice.level;
        }
    }
    return log::Level::Warn;
}

}  // namespace backend
}  // namespace camtune
