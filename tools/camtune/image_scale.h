// Small copies of pictures, for thumbnails.
#pragma once

#include "image_decode.h"

namespace camtune {
namespace cli {
namespace image {

// `picture` reduced to at most `maxWidth` pixels wide, keeping its aspect (at least one row),
// each pixel the mean of the pixels it covers. A picture already that narrow is returned as is.
Picture shrink(const Picture& picture, int maxWidth);

}  // namespace image
}  // namespace cli
}  // namespace camtune
