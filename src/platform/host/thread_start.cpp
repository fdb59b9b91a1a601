// On a host, a test may make the library's thread starts fail.
#include "platform/thread_start.h"

#include <cerrno>
#include <system_error>

#include "platform/host/testing_hooks.h"

namespace camtune {
namespace thread {

void throwIfStartFails() {
    if (camtune_testing_thread_start_fails != nullptr && camtune_testing_thread_start_fails()) {
        throw std::system_error(EAGAIN, std::generic_category(), "thread start");
    }
}

}  // namespace thread
}  // namespace camtune
