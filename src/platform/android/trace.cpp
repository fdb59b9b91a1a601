// Device trace: atrace sections under the camera tag, visible in systrace and Perfetto.
#define ATRACE_TAG ATRACE_TAG_CAMERA

#include "camtune/platform/trace.h"

#include <cutils/trace.h>

namespace camtune {
namespace trace {

bool isEnabled() {
    return atrace_is_tag_enabled(ATRACE_TAG) != 0;
}

void begin(const char* name) {
    atrace_begin(ATRACE_TAG, name);
}

void end() {
    atrace_end(ATRACE_TAG);
}

}  // namespace trace
}  // namespace camtune
