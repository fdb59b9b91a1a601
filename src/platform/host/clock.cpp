// The host's wall clock: the system's, unless a test has set one.
#include "camtune/platform/clock.h"

#include "platform/host/testing_hooks.h"

namespace camtune {
namespace clock {

timespec realtime() {
    timespec now{};
    if (camtune_testing_realtime != nullptr && camtune_testing_realtime(&now)) return now;
    ::clock_gettime(CLOCK_REALTIME, &now);
    return now;
}

}  // namespace clock
}  // namespace camtune
