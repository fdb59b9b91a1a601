// Naming and prioritising the calling thread.
#pragma once

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace camtune {
namespace thread {

// Names the calling thread (at most 15 characters are kept, as the kernel does).
// Returns 0 or a negative errno.
int setName(const char* name);

// Sets the calling thread's nice value. Returns 0 or a negative errno (-EACCES or -EPERM when the
// process may not take that priority).
int setPriority(int niceValue);

// Current nice value of the calling thread.
int priority();

}  // namespace thread
}  // namespace camtune

CAMTUNE_EXPORT_END
