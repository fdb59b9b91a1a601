#include "camtune/platform/clock.h"

#include <unistd.h>

#include <cstdint>

namespace camtune {
namespace clock {
namespace {

constexpr int64_t kNanosPerSecond = 1000000000;

}  // namespace

int64_t monotonicNs() {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<int64_t>(now.tv_sec) * kNanosPerSecond + now.tv_nsec;
}

bool localTime(time_t seconds, std::tm* out) {
    if (::localtime_r(&seconds, out) != nullptr) return true;
    *out = std::tm{};
    return false;
}

int processId() {
    return static_cast<int>(::getpid());
}

}  // namespace clock
}  // namespace camtune
