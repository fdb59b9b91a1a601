#include "sim_pattern.h"

#include <cstring>

namespace camtune {
namespace sim {
namespace {

const std::vector<ImageFormat> kFormats = {
        {"nv21", NSCam::eImgFmt_NV21, "YUV 4:2:0, Y plane then interleaved V/U"},
        {"nv12", NSCam::eImgFmt_NV12, "YUV 4:2:0, Y plane then interleaved U/V"},
        {"yuy2", NSCam::eImgFmt_YUY2, "YUV 4:2:2, Y0 U Y1 V"},
        {"bayer10", NSCam::eImgFmt_BAYER10, "packed 10-bit Bayer, 4 samples in 5 bytes"},
        {"raw16", NSCam::eImgFmt_BAYER16_UNPAK,
         "16-bit raw Bayer, one little-endian word a sample"},
};

int barAt(int x, int width) {
    int bar = width > 0 ? x * 8 / width : 0;
    return bar < 0 ? 0 : (bar > 7 ? 7 : bar);
}

// Writes `value` (10 bits) as sample `index` of a packed row. A sample spans two bytes, three
// when it starts past bit 6 of its first, and never a byte beyond the row.
void put10(uint8_t* row, int index, uint16_t value) {
    const size_t bit = static_cast<size_t>(index) * 10;
    uint8_t* at = row + bit / 8;
    const unsigned shift = bit % 8;
    const uint32_t bits = static_cast<uint32_t>(value & 0x3FF) << shift;
    at[0] = static_cast<uint8_t>((at[0] & ((1u << shift) - 1)) | (bits & 0xFF));
    at[1] = static_cast<uint8_t>(bits >> 8);
    if (shift > 6) at[2] = static_cast<uint8_t>(bits >> 16);
}

// Rows at and below kStampRows are the same bar row: each is built once and copied, so a frame
// costs little more than a copy of its bytes. `makeRow(row, line)` writes row `row` into `line`.
template <typename MakeRow>
void fillRows(uint8_t* plane, size_t stride, int rows, int stampRows, MakeRow makeRow) {
    for (int row = 0; row < rows; ++row) {
        uint8_t* line = plane + row * stride;
        if (row <= stampRows || row == 0) {
            makeRow(row, line);
        } else {
            std::memcpy(line, plane + stampRows * stride, stride);
        }
    }
}

void fillYuv420(NSCam::IImageBuffer& image, uint32_t frame, bool vFirst) {
    const NSCam::MSize size = image.getImgSize();
    fillRows(image.getBufVA(0), image.getBufStridesInBytes(0), size.h, kStampRows,
             [&](int row, uint8_t* line) {
                 for (int x = 0; x < size.w; ++x) line[x] = lumaAt(x, row, size.w, frame);
             });
    // Chroma carries no stamp: one row, copied down.
    fillRows(image.getBufVA(1), image.getBufStridesInBytes(1), (size.h + 1) / 2, 0,
             [&](int, uint8_t* line) {
                 for (int x = 0; x < (size.w + 1) / 2; ++x) {
                     const int bar = barAt(x * 2, size.w);
                     line[x * 2] = vFirst ? kBarCr[bar] : kBarCb[bar];
                     line[x * 2 + 1] = vFirst ? kBarCb[bar] : kBarCr[bar];
                 }
             });
}

void fillYuy2(NSCam::IImageBuffer& image, uint32_t frame) {
    const NSCam::MSize size = image.getImgSize();
    fillRows(image.getBufVA(0), image.getBufStridesInBytes(0), size.h, kStampRows,
             [&](int row, uint8_t* line) {
                 for (int x = 0; x < size.w; ++x) {
                     line[x * 2] = lumaAt(x, row, size.w, frame);
                     const int bar = barAt(x & ~1, size.w);
                     line[x * 2 + 1] = (x & 1) == 0 ? kBarCb[bar] : kBarCr[bar];
                 }
             });
}

void fillRaw16(NSCam::IImageBuffer& image, uint32_t frame) {
    const NSCam::MSize size = image.getImgSize();
    fillRows(image.getBufVA(0), image.getBufStridesInBytes(0), size.h, kStampRows,
             [&](int row, uint8_t* line) {
                 for (int x = 0; x < size.w; ++x) {
                     const uint16_t sample =
                             static_cast<uint16_t>(lumaAt(x, row, size.w, frame) << 8);
                     line[x * 2] = static_cast<uint8_t>(sample & 0xFF);
                     line[x * 2 + 1] = static_cast<uint8_t>(sample >> 8);
                 }
             });
}

void fillPacked10(uint8_t* plane, size_t stride, int width, int height, uint32_t frame) {
    fillRows(plane, stride, height, kStampRows, [&](int row, uint8_t* line) {
        std::memset(line, 0, stride);
        for (int x = 0; x < width; ++x) {
            put10(line, x, static_cast<uint16_t>(lumaAt(x, row, width, frame) << 2));
        }
    });
}

}  // namespace

const ImageFormat* findImageFormat(const std::string& name) {
    for (const ImageFormat& format : kFormats) {
        if (name == format.name) return &format;
    }
    return nullptr;
}

const std::vector<ImageFormat>& imageFormats() {
    return kFormats;
}

uint8_t lumaAt(int x, int y, int width, uint32_t frame) {
    const int block = x / kStampBlock;
    if (y < kStampRows && block < 32 && (block + 1) * kStampBlock <= width) {
        return (frame >> block) & 1 ? kBarLuma[0] : kBarLuma[7];
    }
    return kBarLuma[barAt(x, width)];
}

void fillPattern(NSCam::IImageBuffer& image, uint32_t frame) {
    switch (image.getImgFormat()) {
        case NSCam::eImgFmt_NV21:
            fillYuv420(image, frame, true);
            break;
        case NSCam::eImgFmt_NV12:
            fillYuv420(image, frame, false);
            break;
        case NSCam::eImgFmt_YUY2:
            fillYuy2(image, frame);
            break;
        case NSCam::eImgFmt_BAYER10:
            fillPacked10(image.getBufVA(0), image.getBufStridesInBytes(0), image.getImgSize().w,
                         image.getImgSize().h, frame);
            break;
        case NSCam::eImgFmt_BAYER16_UNPAK:
            fillRaw16(image, frame);
            break;
        default:
            break;
    }
}

size_t packed10RowBytes(int width) {
    return (static_cast<size_t>(width) * 10 + 7) / 8;
}

std::vector<uint8_t> packedBayerFrame(int width, int height, uint32_t frame) {
    const size_t stride = packed10RowBytes(width);
    std::vector<uint8_t> bytes(stride * static_cast<size_t>(height), 0);
    fillPacked10(bytes.data(), stride, width, height, frame);
    return bytes;
}

}  // namespace sim
}  // namespace camtune
