#include "camtune/platform/clock.h"

#include <unistd.h>

#include <atomic>
#include <cstdint>

namespace camtune {
namespace clock {
namespace {

// The test clock, in nanoseconds since the epoch; kSystem when unset. One atomic, so readers on
// any thread see a whole value.
constexpr int64_t kSystem = INT64_MIN;
std::atomic<int64_t> gTestNow{kSystem};
constexpr int64_t kNanosPerSecond = 1000000000;

}  // namespace

timespec realtime() {
    const int64_t test = gTestNow.load(std::memory_order_relaxed);
    timespec now{};
    if (test == kSystem) {
        ::clock_gettime(CLOCK_REALTIME, &now);
    } else {
        now.tv_sec = static_cast<time_t>(test / kNanosPerSecond);
        now.tv_nsec = static_cast<long>(test % kNanosPerSecond);
    }
    return now;
}

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

namespace testing {

void setRealtime(timespec now) {
    gTestNow.store(static_cast<int64_t>(now.tv_sec) * kNanosPerSecond + now.tv_nsec);
}

void advance(int seconds) {
    int64_t now = gTestNow.load();
    if (now == kSystem) {
        timespec system{};
        ::clock_gettime(CLOCK_REALTIME, &system);
        now = static_cast<int64_t>(system.tv_sec) * kNanosPerSecond + system.tv_nsec;
    }
    gTestNow.store(now + static_cast<int64_t>(seconds) * kNanosPerSecond);
}

void reset() {
    gTestNow.store(kSystem);
}

}  // namespace testing
}  // namespace clock
}  // namespace camtune
