// Every kind of dump-file name by its lower-case name, for tools that compose names on request.
#pragma once

#include <string>
#include <vector>

#include "camtune/naming.h"

namespace camtune {
namespace naming {

// "raw", "yuv", "jpg", then every data-file kind ("hw_aao", ..., "aiga").
std::vector<std::string> nameKindList();

// Writes the name of `kind` (any case) for `hint`. `port` is used by raw and YUV names only.
// Returns false, leaving `buf` alone, when `kind` is not a known kind.
bool composeName(const std::string& kind, const NSCam::TuningUtils::FILE_DUMP_NAMING_HINT& hint,
                 int port, const char* userString, char* buf, int size);

}  // namespace naming
}  // namespace camtune
