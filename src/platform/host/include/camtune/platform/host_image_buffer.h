// HostImageBuffer: the host's image buffer, heap-backed, for running and testing pipeline code
// on a workstation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "camtune/export.h"
#include "camtune/platform/image_buffer.h"
#include "camtune/platform/image_format.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {

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
