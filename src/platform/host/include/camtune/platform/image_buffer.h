// IImageBuffer: an image in one or more planes, as the pipeline hands it to the library, and the
// platform image-format codes. On a device both are the camera framework's own.
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

struct MSize {
    int32_t w = 0;
    int32_t h = 0;
};

// Usage bits of lockBuf (the Android graphics usage bits).
enum BufferUsage : uint32_t {
    eBUFFER_USAGE_SW_READ_OFTEN = 0x3,
    eBUFFER_USAGE_SW_WRITE_OFTEN = 0x30,
    eBUFFER_USAGE_HW_CAMERA_WRITE = 0x20000,
    eBUFFER_USAGE_HW_CAMERA_READ = 0x40000,
};

// Cache synchronisation control values.
enum CacheCtrl : int32_t {
    eCACHECTRL_FLUSH = 0,
    eCACHECTRL_INVALID = 1,
};

class IImageBuffer {
public:
    virtual ~IImageBuffer() = default;

    virtual MSize getImgSize() const = 0;
    virtual int32_t getImgFormat() const = 0;
    virtual size_t getPlaneCount() const = 0;
    // Bits per pixel of the whole image, and of one plane at that plane's width.
    virtual size_t getImgBitsPerPixel() const = 0;
    virtual size_t getPlaneBitsPerPixel(size_t plane) const = 0;
    // Row stride in bytes, rows, and bytes of one plane.
    virtual size_t getBufStridesInBytes(size_t plane) const = 0;
    virtual size_t getBufHeight(size_t plane) const = 0;
    virtual size_t getBufSizeInBytes(size_t plane) const = 0;
    // Address of a plane's first byte; null when the plane does not exist.
    virtual uint8_t* getBufVA(size_t plane) const = 0;

    // Locks the buffer for `user` with a usage mask; false when already locked by that user.
    virtual bool lockBuf(const char* user, uint32_t usage) = 0;
    // Unlocks the buffer for `user`; false when that user did not hold a lock.
    virtual bool unlockBuf(const char* user) = 0;
    virtual bool syncCache(int32_t ctrl) = 0;

    // Writes every plane, in order, to `path` (each plane as stride x height bytes).
    virtual bool saveToFile(const char* path) = 0;
    // Fills every plane, in order, from `path`; false when the file is missing or too short.
    virtual bool loadFromFile(const char* path) = 0;
};

}  // namespace NSCam

CAMTUNE_EXPORT_END
