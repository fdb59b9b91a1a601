// The device's wall clock.
#include "camtune/platform/clock.h"

namespace camtune {
namespace clock {

timespec realtime() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return now;
}

}  // namespace clock
}  // namespace camtune
