// The simulator's test images: eight colour bars and the frame number, in every format the
// simulator makes, so that any dumped frame can be checked.
//
// The frame number is stamped into rows 0 to 15 as 16-pixel-wide blocks, bit 0 first: a block
// is bar 0's level (white) for a 1 and bar 7's (black) for a 0. Below it, bar k covers columns
// [k * width / 8, (k + 1) * width / 8). Bayer samples are the luma level scaled to the bit depth.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "camtune/platform/image_buffer.h"

namespace camtune {
namespace sim {

struct ImageFormat {
    const char* name;  // as options spell it
    int32_t code;
    const char* description;
};

// The formats the simulator makes; null for a name it does not know.
const ImageFormat* findImageFormat(const std::string& name);
const std::vector<ImageFormat>& imageFormats();

// Levels of the eight bars, white to black.
constexpr uint8_t kBarLuma[8] = {235, 210, 170, 145, 106, 81, 41, 16};
constexpr uint8_t kBarCb[8] = {128, 16, 166, 54, 202, 90, 240, 128};
constexpr uint8_t kBarCr[8] = {128, 146, 16, 34, 222, 240, 110, 128};
constexpr int kStampRows = 16;
constexpr int kStampBlock = 16;

// Luma level of pixel (x, y) of a frame `width` wide.
uint8_t lumaAt(int x, int y, int width, uint32_t frame);

// Fills every plane of `image` (a format of imageFormats()) with the pattern of `frame`.
void fillPattern(NSCam::IImageBuffer& image, uint32_t frame);

// A Bayer frame of `width` x `height` in packed 10-bit samples (a little-endian bit stream, four
// samples in five bytes per row) holding the pattern of `frame`.
std::vector<uint8_t> packedBayerFrame(int width, int height, uint32_t frame);
// Bytes a packed 10-bit row of `width` samples takes.
size_t packed10RowBytes(int width);

}  // namespace sim
}  // namespace camtune
