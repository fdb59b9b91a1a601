// The image-format table: the one place that knows each platform image-format code.
//
// For every code the library names it gives the plane layout (plane count, bits per pixel and
// sub-sampling of each plane) used by host image buffers.
#pragma once

#include <cstddef>
#include <cstdint>

#include "camtune/export.h"
#include "camtune/platform/image_buffer.h"  // the image-format codes

CAMTUNE_EXPORT_BEGIN

namespace NSCam {

constexpr size_t kMaxPlanes = 3;

struct PlaneLayout {
    uint8_t bitsPerPixel;  // bits per pixel of this plane, at the plane's own width
    uint8_t widthShift;    // plane width = image width >> widthShift (rounded up)
    uint8_t heightShift;   // plane height = image height >> heightShift (rounded up)
};

struct ImageFormatInfo {
    int32_t code;
    const char* name;  // symbolic name, e.g. "BAYER10"
    size_t planeCount;
    PlaneLayout planes[kMaxPlanes];
    bool isBayer;  // a raw sensor layout
};

// The row of `code`, or null when the table does not know it.
const ImageFormatInfo* findImageFormat(int32_t code);

// The whole table, in rising code order.
const ImageFormatInfo* imageFormatTable(size_t* count);

// Bits per pixel of the whole image (all planes, at image resolution); 0 for unknown codes.
size_t imageBitsPerPixel(int32_t code);

}  // namespace NSCam

CAMTUNE_EXPORT_END
