// PNG encoding of pictures, with libpng.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "image_decode.h"

namespace camtune {
namespace cli {
namespace image {

// Encodes `picture` (grey or RGB, 8 or 16 bits a sample) into `out`. A picture with fewer
// significant bits than its depth gets an sBIT chunk saying so.
bool encodePng(const Picture& picture, std::vector<uint8_t>* out, std::string* error);

}  // namespace image
}  // namespace cli
}  // namespace camtune
