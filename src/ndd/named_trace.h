// A trace section whose name is formatted only when tracing is on.
#pragma once

#include <cstdio>

#include "camtune/platform/trace.h"

namespace NSCam {
namespace TuningUtils {

class NamedTrace {
public:
    NamedTrace(const char* format, const char* argument) : mActive(camtune::trace::isEnabled()) {
        if (!mActive) return;
        char name[128];
        std::snprintf(name, sizeof(name), format, argument);
        camtune::trace::begin(name);
    }
    ~NamedTrace() {
        if (mActive) camtune::trace::end();
    }
    NamedTrace(const NamedTrace&) = delete;
    NamedTrace& operator=(const NamedTrace&) = delete;

private:
    bool mActive;
};

}  // namespace TuningUtils
}  // namespace NSCam
