// Where the image of a dump file lies: worked out from the fields camtune parse decodes from its
// name, what the command line adds, and the file's size.
#pragma once

#include <cstdint>
#include <string>

#include "image_layout.h"
#include "parse_kinds.h"

namespace camtune {
namespace cli {
namespace image {

// Values given on the command line; zero (or -1 for the order) leaves the name's.
struct GeometryOverrides {
    int width = 0;
    int height = 0;
    const DecodableFormat* format = nullptr;
    size_t stride = 0;
    int bits = 0;
    int order = -1;
};

// Resolves the geometry of a file of `fileSize` bytes. `decoded` is null when the name did not
// decode. When the name leaves the format open (an NDD ".raw" or ".packed_word"), the formats
// whose size fits the file are kept; unpacked Bayer formats differ only in depth, and the
// deepest is taken. Returns false with `error` naming what is missing or, for a size mismatch,
// both sizes.
bool resolveGeometry(const parse::Decoded* decoded, const GeometryOverrides& overrides,
                     uint64_t fileSize, ImageGeometry* out, std::string* error);

// The sensor ("main") and module ("AAO", "imgo", "tuning") a decoded name belongs to; "" when
// it names none.
std::string sensorOf(const parse::Decoded& decoded);
std::string moduleOf(const parse::Decoded& decoded);

}  // namespace image
}  // namespace cli
}  // namespace camtune
