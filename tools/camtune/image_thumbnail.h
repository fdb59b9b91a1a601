// Small inline pictures of dumped images, for pages.
#pragma once

#include <string>
#include <vector>

#include "image_layout.h"

namespace camtune {
namespace cli {
namespace image {

// A "data:image/png;base64,..." URI of the image in `bytes` (geometry.byteSize() of them), at
// most `maxWidth` pixels wide, as decodePicture shows it.
bool thumbnailUri(const std::vector<uint8_t>& bytes, const ImageGeometry& geometry, int maxWidth,
                  std::string* uri, std::string* error);

std::string base64(const std::vector<uint8_t>& bytes);

}  // namespace image
}  // namespace cli
}  // namespace camtune
