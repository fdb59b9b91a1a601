// Wall-clock and monotonic time, local calendar time and the process id, as the library sees them.
//
// Everything that stamps or ages data by the wall clock reads it here, so a test can move time
// on instead of sleeping.
#pragma once

#include <time.h>

#include <cstdint>
#include <ctime>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace camtune {
namespace clock {

// CLOCK_REALTIME (on a host, a test clock while one is set).
timespec realtime();
// CLOCK_MONOTONIC in nanoseconds, for intervals and deadlines: never stepped, and not moved by
// the test clock.
int64_t monotonicNs();
// The local calendar time of `seconds`; false (and `out` zeroed) when it cannot be had.
bool localTime(time_t seconds, std::tm* out);
int processId();

}  // namespace clock
}  // namespace camtune

CAMTUNE_EXPORT_END
