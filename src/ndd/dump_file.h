// Writing one dump file on the calling thread.
#pragma once

#include <cstddef>
#include <string>

namespace NSCam {
namespace TuningUtils {

struct DumpPiece {
    const void* data;
    size_t size;
};

struct DumpFileResult {
    enum Status { Written, OpenFailed, WriteFailed } status = Written;
    int error = 0;       // errno of a failure
    size_t written = 0;  // bytes written before a write failure
    size_t total = 0;
};

// Creates or truncates `path` and writes the pieces in order. A file that could not be written
// whole is removed, so a dump file that exists always holds every byte.
DumpFileResult writeDumpFile(const std::string& path, const DumpPiece* pieces, size_t count);

}  // namespace TuningUtils
}  // namespace NSCam
