#include "image_thumbnail.h"

#include "image_decode.h"
#include "image_scale.h"
#include "png_writer.h"

namespace camtune {
namespace cli {
namespace image {
namespace {

constexpr char kBase64Digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string base64(const std::vector<uint8_t>& bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (size_t i = 0; i < bytes.size(); i += 3) {
        const size_t left = bytes.size() - i;
        const uint32_t group =
                bytes[i] << 16 | (left > 1 ? bytes[i + 1] << 8 : 0) | (left > 2 ? bytes[i + 2] : 0);
        text += kBase64Digits[group >> 18];
        text += kBase64Digits[(group >> 12) & 63];
        text += left > 1 ? kBase64Digits[(group >> 6) & 63] : '=';
        text += left > 2 ? kBase64Digits[group & 63] : '=';
    }
    return text;
}

bool thumbnailUri(const std::vector<uint8_t>& bytes, const ImageGeometry& geometry, int maxWidth,
                  std::string* uri, std::string* error) {
    const Picture picture = shrink(decodePicture(bytes.data(), geometry), maxWidth);
    std::vector<uint8_t> png;
    if (!encodePng(picture, &png, error)) return false;
    *uri = "data:image/png;base64," + base64(png);
    return true;
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
