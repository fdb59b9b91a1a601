// Starting the library's own threads, with a seam that makes a start fail as it would when the
// process has no threads left, so tests can see what each component does then.
#pragma once

#include <thread>
#include <utility>

namespace camtune {
namespace thread {

// Throws std::system_error(EAGAIN), as std::thread does, when a host test has armed a failure.
void throwIfStartFails();

// A std::thread running `args...`; throws std::system_error when none can be started.
template <typename... Args>
std::thread start(Args&&... args) {
    throwIfStartFails();
    return std::thread(std::forward<Args>(args)...);
}

}  // namespace thread
}  // namespace camtune
