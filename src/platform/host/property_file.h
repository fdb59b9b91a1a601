// Loading of host property files ("key=value" lines, "#" comments), as CAMTUNE_PROPS names.
#pragma once

namespace camtune {
namespace host {

// Sets every property the file lists. Malformed lines are reported on stderr and skipped.
// Returns false when the file cannot be read.
bool loadPropertyFile(const char* path);

}  // namespace host
}  // namespace camtune
