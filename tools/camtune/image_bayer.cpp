#include "image_bayer.h"

#include <algorithm>

namespace camtune {
namespace cli {
namespace image {
namespace {

constexpr CfaColour kTiles[4][4] = {
        {kBlue, kGreen, kGreen, kRed},
        {kGreen, kBlue, kRed, kGreen},
        {kGreen, kRed, kBlue, kGreen},
        {kRed, kGreen, kGreen, kBlue},
};
constexpr const char* kTileNames[4] = {"BGGR", "GBRG", "GRBG", "RGGB"};

// Sample `index` of a packed row: `depth` bits from bit index * depth, least significant first.
// Only the bytes the sample covers are read, so the row's last sample stays inside the row.
uint16_t packedSample(const uint8_t* row, size_t index, int depth) {
    const size_t bit = index * depth;
    const uint8_t* at = row + bit / 8;
    const unsigned shift = bit % 8;
    const size_t bytes = (shift + depth + 7) / 8;
    uint32_t value = 0;
    for (size_t i = 0; i < bytes; ++i) value |= static_cast<uint32_t>(at[i]) << (8 * i);
    return static_cast<uint16_t>((value >> shift) & ((1u << depth) - 1));
}

uint16_t wordSample(const uint8_t* row, size_t index) {
    return static_cast<uint16_t>(row[index * 2] | (row[index * 2 + 1] << 8));
}

}  // namespace

const CfaColour* cfaTile(int order) {
    return order >= 0 && order < 4 ? kTiles[order] : nullptr;
}

const char* cfaName(int order) {
    return order >= 0 && order < 4 ? kTileNames[order] : "?";
}

Levels bayerLevels(int bits) {
    return Levels{bits >= 4 ? 1u << (bits - 4) : 0u, (1u << bits) - 1};
}

std::vector<uint16_t> unpackMosaic(const uint8_t* bytes, const ImageGeometry& geometry) {
    const size_t width = geometry.width;
    std::vector<uint16_t> mosaic(width * geometry.height);
    const bool packed = geometry.format->arrangement == Arrangement::BayerPacked;
    for (int y = 0; y < geometry.height; ++y) {
        const uint8_t* row = bytes + y * geometry.stride;
        uint16_t* out = mosaic.data() + y * width;
        for (size_t x = 0; x < width; ++x) {
            out[x] = packed ? packedSample(row, x, geometry.format->depth) : wordSample(row, x);
        }
    }
    return mosaic;
}

std::vector<uint16_t> demosaicBilinear(const std::vector<uint16_t>& mosaic, int width, int height,
                                       int order, Levels levels) {
    const CfaColour* tile = cfaTile(order);
    std::vector<uint16_t> rgb(static_cast<size_t>(width) * height * 3);
    const uint32_t range = levels.white > levels.black ? levels.white - levels.black : 1;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uint32_t sum[3] = {0, 0, 0};
            uint32_t count[3] = {0, 0, 0};
            const CfaColour own = tile[(y & 1) * 2 + (x & 1)];
            for (int dy = -1; dy <= 1; ++dy) {
                const int sy = y + dy;
                if (sy < 0 || sy >= height) continue;
                for (int dx = -1; dx <= 1; ++dx) {
                    const int sx = x + dx;
                    if (sx < 0 || sx >= width) continue;
                    const CfaColour colour = tile[(sy & 1) * 2 + (sx & 1)];
                    // A pixel keeps its own colour as measured.
                    if (colour == own && (dx != 0 || dy != 0)) continue;
                    sum[colour] += mosaic[static_cast<size_t>(sy) * width + sx];
                    ++count[colour];
                }
            }
            uint16_t* out = rgb.data() + (static_cast<size_t>(y) * width + x) * 3;
            for (int c = 0; c < 3; ++c) {
                // Only an image narrower or shorter than a tile misses a colour.
                const uint32_t mean = count[c] == 0 ? 0 : (sum[c] + count[c] / 2) / count[c];
                const uint32_t lifted = mean > levels.black ? mean - levels.black : 0;
                out[c] = static_cast<uint16_t>(std::min<uint32_t>(
                        255, (std::min(lifted, range) * 255 + range / 2) / range));
            }
        }
    }
    return rgb;
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
