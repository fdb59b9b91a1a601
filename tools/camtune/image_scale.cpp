#include "image_scale.h"

#include <algorithm>

namespace camtune {
namespace cli {
namespace image {

Picture shrink(const Picture& picture, int maxWidth) {
    if (picture.width <= maxWidth || maxWidth <= 0) return picture;
    Picture small;
    small.channels = picture.channels;
    small.depth = picture.depth;
    small.significantBits = picture.significantBits;
    small.width = maxWidth;
    small.height = std::max(
            1, static_cast<int>(static_cast<int64_t>(picture.height) * maxWidth / picture.width));
    const int channels = picture.channels;
    small.samples.assign(static_cast<size_t>(small.width) * small.height * channels, 0);
    for (int y = 0; y < small.height; ++y) {
        const int y0 = static_cast<int>(static_cast<int64_t>(y) * picture.height / small.height);
        const int y1 = std::max(y0 + 1, static_cast<int>(static_cast<int64_t>(y + 1) *
                                                         picture.height / small.height));
        for (int x = 0; x < small.width; ++x) {
            const int x0 = static_cast<int>(static_cast<int64_t>(x) * picture.width / small.width);
            const int x1 = std::max(x0 + 1, static_cast<int>(static_cast<int64_t>(x + 1) *
                                                             picture.width / small.width));
            for (int c = 0; c < channels; ++c) {
                uint64_t sum = 0;
                for (int sy = y0; sy < y1; ++sy) {
                    const uint16_t* row = picture.samples.data() +
                                          static_cast<size_t>(sy) * picture.width * channels;
                    for (int sx = x0; sx < x1; ++sx) sum += row[sx * channels + c];
                }
                const uint64_t count = static_cast<uint64_t>(y1 - y0) * (x1 - x0);
                small.samples[(static_cast<size_t>(y) * small.width + x) * channels + c] =
                        static_cast<uint16_t>((sum + count / 2) / count);
            }
        }
    }
    return small;
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
