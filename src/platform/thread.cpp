#include "camtune/platform/thread.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <mutex>
#include <system_error>

#include "platform/thread_start.h"

namespace camtune {
namespace thread {
namespace {

// Starts still to let through, then starts to fail; changed under gSeamLock, read without it
// while disarmed.
std::mutex gSeamLock;
std::atomic<bool> gArmed{false};
int gPassingStarts = 0;
int gFailingStarts = 0;

id_t currentThreadId() {
    return static_cast<id_t>(::syscall(SYS_gettid));
}

}  // namespace

int setName(const char* name) {
    return ::prctl(PR_SET_NAME, name, 0, 0, 0) == 0 ? 0 : -errno;
}

// On Linux a nice value set on a thread id applies to that thread alone.
int setPriority(int niceValue) {
    return ::setpriority(PRIO_PROCESS, currentThreadId(), niceValue) == 0 ? 0 : -errno;
}

void throwIfStartFails() {
    if (!gArmed.load(std::memory_order_acquire)) return;
    std::lock_guard<std::mutex> guard(gSeamLock);
    if (gPassingStarts > 0) {
        --gPassingStarts;
        return;
    }
    if (gFailingStarts == 0) return;
    if (--gFailingStarts == 0) gArmed.store(false, std::memory_order_release);
    throw std::system_error(EAGAIN, std::generic_category(), "thread start");
}

namespace testing {

void failNextStarts(int count, int passes) {
    std::lock_guard<std::mutex> guard(gSeamLock);
    gPassingStarts = count > 0 ? passes : 0;
    gFailingStarts = count > 0 ? count : 0;
    gArmed.store(count > 0, std::memory_order_release);
}

}  // namespace testing

int priority() {
    errno = 0;
    return ::getpriority(PRIO_PROCESS, currentThreadId());
}

}  // namespace thread
}  // namespace camtune
