// Every kind of dump-file name by its lower-case name, and the options that describe a hint, for
// tools that compose names on request.
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

// A name asked for on a command line: `KIND [--option value]...` or `--list`.
struct NameRequest {
    bool list = false;
    bool listFormats = false;
    std::string kind;
    NSCam::TuningUtils::FILE_DUMP_NAMING_HINT hint;
    int port = -2;  // no port element
    bool hasUserString = false;
    std::string userString;
};

// Parses `args`; on failure returns false with a one-line reason in `error`.
bool parseNameRequest(const std::vector<std::string>& args, NameRequest* request,
                      std::string* error);

// The option list for help texts, one "  --name VALUE  meaning" line each.
std::string nameOptionHelp();

}  // namespace naming
}  // namespace camtune
