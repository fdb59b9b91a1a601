// Thread starts that fail on request.
#include <atomic>
#include <mutex>

#include "camtune/platform/testing.h"
#include "platform/host/testing_hooks.h"

namespace camtune {
namespace thread {
namespace testing {
namespace {

// Starts still to let through, then starts to fail; changed under gLock, read without it while
// disarmed.
std::mutex gLock;
std::atomic<bool> gArmed{false};
int gPassingStarts = 0;
int gFailingStarts = 0;

}  // namespace

void failNextStarts(int count, int passes) {
    std::lock_guard<std::mutex> guard(gLock);
    gPassingStarts = count > 0 ? passes : 0;
    gFailingStarts = count > 0 ? count : 0;
    gArmed.store(count > 0, std::memory_order_release);
}

}  // namespace testing
}  // namespace thread
}  // namespace camtune

bool camtune_testing_thread_start_fails() {
    using namespace camtune::thread::testing;
    if (!gArmed.load(std::memory_order_acquire)) return false;
    std::lock_guard<std::mutex> guard(gLock);
    if (gPassingStarts > 0) {
        --gPassingStarts;
        return false;
    }
    if (gFailingStarts == 0) return false;
    if (--gFailingStarts == 0) gArmed.store(false, std::memory_order_release);
    return true;
}
