// Bayer mosaics: unpacking dumped rows into one sample a pixel, the colour-filter pattern of
// each order, and a bilinear demosaic for viewing.
#pragma once

#include <cstdint>
#include <vector>

#include "image_layout.h"

namespace camtune {
namespace cli {
namespace image {

enum CfaColour : uint8_t { kRed = 0, kGreen = 1, kBlue = 2 };

// The four colours of the 2x2 tile of colour-filter order `order` (0 to 3), row by row:
// 0 BGGR, 1 GBRG, 2 GRBG, 3 RGGB (the sensor's first pixel is B, Gb, Gr and R).
const CfaColour* cfaTile(int order);
// "BGGR", ...; "?" for an order outside 0 to 3.
const char* cfaName(int order);

// Sensor pedestal and saturation of `bits`-bit samples. The pedestal is a sixteenth of the range
// (64 at 10 bits), as the sensors this library tunes deliver.
struct Levels {
    uint32_t black;
    uint32_t white;
};
Levels bayerLevels(int bits);

// One sample a pixel, as stored (not scaled), row by row. `bytes` holds geometry.byteSize().
std::vector<uint16_t> unpackMosaic(const uint8_t* bytes, const ImageGeometry& geometry);

// RGB, 8 bits a sample, interleaved: each missing colour is the mean of the 3x3 neighbours of
// that colour, then the black level is removed and white scaled to 255.
std::vector<uint16_t> demosaicBilinear(const std::vector<uint16_t>& mosaic, int width, int height,
                                       int order, Levels levels);

}  // namespace image
}  // namespace cli
}  // namespace camtune
