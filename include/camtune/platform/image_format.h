// The image-format table: the one place that knows each platform image-format code.
//
// For every code the library names it gives the plane layout (plane count, bits per pixel and
// sub-sampling of each plane) used by host image buffers.
#pragma once

#include <cstddef>
#include <cstdint>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {

// Platform image-format codes.
enum EImageFormat : int32_t {
    eImgFmt_NV21 = 0x11,
    eImgFmt_YUY2 = 0x14,
    eImgFmt_P010_YUV = 0x36,
    eImgFmt_NV12 = 0x1000,
    eImgFmt_I420 = 0x2007,
    eImgFmt_I422 = 0x2008,
    eImgFmt_Y210_YUYV = 0x2009,
    eImgFmt_Y210_YVYU = 0x200A,
    eImgFmt_Y210_UYVY = 0x200B,
    eImgFmt_Y210_VYUY = 0x200C,
    eImgFmt_P210_YUV = 0x200D,
    eImgFmt_P210_YVU = 0x200E,
    eImgFmt_P210 = 0x200F,
    eImgFmt_P010_YVU = 0x2010,
    eImgFmt_P010 = 0x2011,
    eImgFmt_NV12_10B = 0x2012,
    eImgFmt_NV21_10B = 0x2013,
    eImgFmt_NV16_10B = 0x2014,
    eImgFmt_NV61_10B = 0x2015,
    eImgFmt_YUYV_10B = 0x2016,
    eImgFmt_YVYU_10B = 0x2017,
    eImgFmt_UYVY_10B = 0x2018,
    eImgFmt_VYUY_10B = 0x2019,
    eImgFmt_I420_10B = 0x201A,
    eImgFmt_YV12_10B = 0x201B,
    eImgFmt_P012_YUV = 0x201C,
    eImgFmt_P012_YVU = 0x201D,
    eImgFmt_NV12_12B = 0x201E,
    eImgFmt_NV21_12B = 0x201F,
    eImgFmt_RGB48 = 0x2101,
    eImgFmt_BAYER8 = 0x2200,
    eImgFmt_BAYER10 = 0x2201,
    eImgFmt_BAYER12 = 0x2202,
    eImgFmt_BAYER14 = 0x2203,
    eImgFmt_FG_BAYER8 = 0x2204,
    eImgFmt_FG_BAYER10 = 0x2205,
    eImgFmt_FG_BAYER12 = 0x2206,
    eImgFmt_FG_BAYER14 = 0x2207,
    eImgFmt_BAYER10_MIPI = 0x2211,
    eImgFmt_BAYER10_UNPAK = 0x2213,
    eImgFmt_BAYER12_UNPAK = 0x2214,
    eImgFmt_BAYER14_UNPAK = 0x2215,
    eImgFmt_BAYER15_UNPAK = 0x2216,
    eImgFmt_BAYER16_UNPAK = 0x2217,
    eImgFmt_BAYER24 = 0x2218,
    eImgFmt_NV21_UFBC = 0x2505,
    eImgFmt_P010_YUV_UFBC = 0x2506,
    eImgFmt_P010_YVU_UFBC = 0x2507,
    eImgFmt_NV12_AFBC = 0x250B,
    eImgFmt_NV21_AFBC = 0x250C,
    eImgFmt_Y8 = 0x20203859,    // four-character code "Y8"
    eImgFmt_YV12 = 0x32315659,  // four-character code "YV12"
};

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
