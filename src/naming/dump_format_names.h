// What image dump-file names say of an image format: the bit-depth element and the extension.
#pragma once

#include <cstddef>
#include <cstdint>

namespace camtune {
namespace naming {

struct DumpFormatNames {
    int32_t code;           // platform image-format code
    const char* bitDepth;   // bit-depth element of dump-file names
    const char* extension;  // extension of dump-file names
};

// Pieces of codes the table does not know.
constexpr const char* kUnknownDumpBitDepth = "imgfmt";
constexpr const char* kUnknownDumpExtension = "unknown";

// The whole table, in rising code order.
const DumpFormatNames* dumpFormatNames(size_t* count);

// The pieces of `code` ("imgfmt" / "unknown" for codes the table does not know).
const char* dumpBitDepthName(int32_t code);
const char* dumpExtension(int32_t code);

}  // namespace naming
}  // namespace camtune
