// On a device only the system makes a thread start fail.
#include "platform/thread_start.h"

namespace camtune {
namespace thread {

void throwIfStartFails() {}

}  // namespace thread
}  // namespace camtune
