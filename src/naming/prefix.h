// The common prefix of every dump-file name, for the naming functions.
#pragma once

#include <cstdint>

#include "camtune/naming.h"
#include "naming/name_writer.h"

namespace camtune {
namespace naming {

// Whether exposure values go into names (the exposure-bracketing debug mode).
bool exposureInNames();

// Writes the prefix of `hint` (what MakePrefix writes for it) at the start of `writer`. The
// bracketing property is read once per name.
void writeHintPrefix(NameWriter& writer, const NSCam::TuningUtils::FILE_DUMP_NAMING_HINT& hint);

// Logs a naming call made without a hint and empties the caller's buffer. Returns -1.
int rejectNullHint(char* buf, int size, const char* function);

namespace internal {
// Forgets that the dump root was created, so the next prefix creates it again (tests only).
void forgetDumpRoot();
// Composes names from now on without creating the dump root: for tools that only print names.
void assumeDumpRoot();
}  // namespace internal

}  // namespace naming
}  // namespace camtune
