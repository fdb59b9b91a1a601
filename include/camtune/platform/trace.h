// Trace sections around expensive work (dump writes).
//
// On a host, CAMTUNE_TRACE names a file that receives Chrome trace-event JSON (open it in the
// Perfetto UI). When tracing is off a section costs one flag test.
#pragma once

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace camtune {
namespace trace {

bool isEnabled();
void begin(const char* name);
void end();

// Opens a section for the lifetime of the object; does nothing when tracing is off.
class ScopedTrace {
public:
    explicit ScopedTrace(const char* name) : mActive(isEnabled()) {
        if (mActive) begin(name);
    }
    ~ScopedTrace() {
        if (mActive) end();
    }
    ScopedTrace(const ScopedTrace&) = delete;
    ScopedTrace& operator=(const ScopedTrace&) = delete;

private:
    bool mActive;
};

}  // namespace trace
}  // namespace camtune

CAMTUNE_EXPORT_END
