// The image formats camtune can turn into pictures, and where each plane of a dumped image lies
// in its file. Plane sizes come from the platform's image-format table; this table only adds
// how the samples of each format are arranged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "camtune/platform/image_format.h"

namespace camtune {
namespace cli {
namespace image {

enum class Arrangement {
    Grey,         // one luma plane
    Planar,       // Y, U, V planes
    PlanarVU,     // Y, V, U planes
    SemiUV,       // Y plane, then U and V interleaved
    SemiVU,       // Y plane, then V and U interleaved
    Yuyv,         // one plane of Y0 U Y1 V
    BayerPacked,  // a little-endian bit stream per row, sample i at bit i * depth
    BayerWords,   // one little-endian 16-bit word a sample
};

struct DecodableFormat {
    const NSCam::ImageFormatInfo* info;
    Arrangement arrangement;
    int sampleBytes;  // YUV: bytes a sample (2: the value sits in the word's upper bits)
    int depth;        // significant bits a sample
    bool isBayer() const {
        return arrangement == Arrangement::BayerPacked || arrangement == Arrangement::BayerWords;
    }
};

// The format of `code`, or null when camtune cannot decode it.
const DecodableFormat* findDecodable(int32_t code);
// The format named `name` (the table's name, any case), or null.
const DecodableFormat* findDecodable(const std::string& name);
const std::vector<DecodableFormat>& decodableFormats();
// "NV21, NV12, ..." for messages and help.
std::string decodableNames();

// Where an image lies in its file: planes one after another, each stride x rows bytes, as the
// library's image buffers save them.
struct ImageGeometry {
    const DecodableFormat* format = nullptr;
    int width = 0;
    int height = 0;
    size_t stride = 0;  // plane 0, bytes a row
    size_t rows = 0;    // plane 0
    int bits = 0;       // significant bits of a Bayer sample
    int order = -1;     // Bayer colour-filter order 0 to 3; -1 unknown

    size_t planeCount() const { return format->info->planeCount; }
    size_t planeStride(size_t plane) const;
    size_t planeRows(size_t plane) const;
    size_t planeOffset(size_t plane) const;
    size_t byteSize() const;
    // "64x48 NV21, stride 64, 48 rows"
    std::string describe() const;
};

// Bytes of one packed row of plane `plane` of `format` for an image `width` wide.
size_t packedRowBytes(const NSCam::ImageFormatInfo& format, size_t plane, int width);

}  // namespace image
}  // namespace cli
}  // namespace camtune
