// A wall clock that stands still until a test moves it.
#include <atomic>
#include <climits>
#include <cstdint>

#include "camtune/platform/testing.h"
#include "platform/host/testing_hooks.h"

namespace camtune {
namespace clock {
namespace testing {
namespace {

// Nanoseconds since the epoch, or kSystem when unset. One atomic, so readers on any thread see a
// whole value.
constexpr int64_t kSystem = INT64_MIN;
constexpr int64_t kNanosPerSecond = 1000000000;
std::atomic<int64_t> gNow{kSystem};

int64_t toNanos(const timespec& t) {
    return static_cast<int64_t>(t.tv_sec) * kNanosPerSecond + t.tv_nsec;
}

}  // namespace

void setRealtime(timespec now) {
    gNow.store(toNanos(now));
}

void advance(int seconds) {
    int64_t now = gNow.load();
    if (now == kSystem) {
        timespec system{};
        ::clock_gettime(CLOCK_REALTIME, &system);
        now = toNanos(system);
    }
    gNow.store(now + static_cast<int64_t>(seconds) * kNanosPerSecond);
}

void reset() {
    gNow.store(kSystem);
}

}  // namespace testing
}  // namespace clock
}  // namespace camtune

bool camtune_testing_realtime(timespec* now) {
    using namespace camtune::clock::testing;
    const int64_t nanos = gNow.load(std::memory_order_relaxed);
    if (nanos == kSystem) return false;
    now->tv_sec = static_cast<time_t>(nanos / kNanosPerSecond);
    now->tv_nsec = static_cast<long>(nanos % kNanosPerSecond);
    return true;
}
