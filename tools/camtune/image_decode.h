// Turns the bytes of a dumped image into a picture to save or show.
#pragma once

#include <cstdint>
#include <vector>

#include "image_layout.h"

namespace camtune {
namespace cli {
namespace image {

struct Picture {
    int width = 0;
    int height = 0;
    int channels = 3;               // 3: RGB, 1: grey
    int depth = 8;                  // bits a stored sample: 8 or 16
    int significantBits = 8;        // of each sample, counted from its top
    std::vector<uint16_t> samples;  // row by row, channels interleaved
};

// The image as a person looks at it, 8 bits a sample: YUV as RGB (BT.601, limited range), Y8
// as grey, Bayer demosaiced, or as a grey mosaic when its order is unknown. `bytes` holds
// geometry.byteSize() bytes.
Picture decodePicture(const uint8_t* bytes, const ImageGeometry& geometry);

// Plane 0 as grey, without loss: luma at its sample depth, a Bayer mosaic as stored, shifted
// to fill 16 bits (8 for an 8-bit mosaic).
Picture decodePlane(const uint8_t* bytes, const ImageGeometry& geometry);

}  // namespace image
}  // namespace cli
}  // namespace camtune
