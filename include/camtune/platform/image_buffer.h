// IImageBuffer: an image in one or more planes, as the pipeline hands it to the library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "camtune/export.h"
#include "camtune/platform/image_format.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {

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

// A heap-backed image buffer for hosts and tests. Planes follow the image-format table; strides
// default to the packed row size and may be widened.
class HostImageBuffer : public IImageBuffer {
public:
    // Null when the format is unknown or the size is not positive. `strides`, when given, holds
    // one row stride in bytes per plane, each at least the packed row size.
    static std::unique_ptr<HostImageBuffer> create(int32_t format, MSize size,
                                                   const std::vector<size_t>& strides = {});

    MSize getImgSize() const override { return mSize; }
    int32_t getImgFormat() const override { return mFormat->code; }
    size_t getPlaneCount() const override { return mFormat->planeCount; }
    size_t getImgBitsPerPixel() const override;
    size_t getPlaneBitsPerPixel(size_t plane) const override;
    size_t getBufStridesInBytes(size_t plane) const override;
    size_t getBufHeight(size_t plane) const override;
    size_t getBufSizeInBytes(size_t plane) const override;
    uint8_t* getBufVA(size_t plane) const override;

    bool lockBuf(const char* user, uint32_t usage) override;
    bool unlockBuf(const char* user) override;
    bool syncCache(int32_t ctrl) override;
    bool saveToFile(const char* path) override;
    bool loadFromFile(const char* path) override;

    // Observation for tests: the usage of `user`'s lock, or 0 when it holds none; and the
    // number of cache synchronisations so far.
    uint32_t lockUsage(const char* user) const;
    int syncCount() const;

private:
    struct Plane {
        size_t stride = 0;
        size_t height = 0;
        std::unique_ptr<uint8_t[]> bytes;
    };
    struct Lock {
        std::string user;
        uint32_t usage;
    };

    HostImageBuffer(const ImageFormatInfo* format, MSize size) : mFormat(format), mSize(size) {}

    const ImageFormatInfo* mFormat;
    MSize mSize;
    Plane mPlanes[kMaxPlanes];
    mutable std::mutex mLock;
    std::vector<Lock> mLocks;
    int mSyncCount = 0;
};

}  // namespace NSCam

CAMTUNE_EXPORT_END
