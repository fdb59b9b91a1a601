#include "camtune/platform/thread.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace camtune {
namespace thread {
namespace {

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

int priority() {
    errno = 0;
    return ::getpriority(PRIO_PROCESS, currentThreadId());
}

}  // namespace thread
}  // namespace camtune
