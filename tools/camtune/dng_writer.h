// Bayer mosaics as DNG files (libtiff), for raw developers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace camtune {
namespace cli {
namespace image {

struct DngMosaic {
    const std::vector<uint16_t>* samples;  // one a pixel, row by row, as the sensor gave them
    int width;
    int height;
    int order;  // colour-filter order, 0 to 3
    int bits;   // significant bits: sets the black and white levels
};

// Writes `mosaic` to `path` as one uncompressed 16-bit CFA image with the pattern of its order,
// the black and white levels of its depth, and sRGB primaries under D65 as the camera's colour.
bool writeDng(const std::string& path, const DngMosaic& mosaic, std::string* error);

}  // namespace image
}  // namespace cli
}  // namespace camtune
