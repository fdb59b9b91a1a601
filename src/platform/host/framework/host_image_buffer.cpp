// Heap-backed image buffer. Planes follow the image-format table; files hold the planes one
// after another, each as stride x height bytes, which is also what loadFromFile expects.
#include "camtune/platform/host_image_buffer.h"

#include <fcntl.h>

#include <algorithm>
#include <cstring>

#include "camtune/platform/fs.h"

namespace NSCam {
namespace {

size_t shiftUp(int32_t value, uint8_t shift) {
    return (static_cast<size_t>(value) + (size_t{1} << shift) - 1) >> shift;
}

size_t packedRowBytes(const PlaneLayout& plane, int32_t width) {
    return (shiftUp(width, plane.widthShift) * plane.bitsPerPixel + 7) / 8;
}

}  // namespace

std::unique_ptr<HostImageBuffer> HostImageBuffer::create(int32_t format, MSize size,
                                                         const std::vector<size_t>& strides) {
    const ImageFormatInfo* info = findImageFormat(format);
    if (info == nullptr || size.w <= 0 || size.h <= 0) return nullptr;
    if (!strides.empty() && strides.size() != info->planeCount) return nullptr;

    std::unique_ptr<HostImageBuffer> buffer(new HostImageBuffer(info, size));
    for (size_t i = 0; i < info->planeCount; ++i) {
        const PlaneLayout& layout = info->planes[i];
        size_t packed = packedRowBytes(layout, size.w);
        size_t stride = strides.empty() ? packed : strides[i];
        if (stride < packed) return nullptr;
        Plane& plane = buffer->mPlanes[i];
        plane.stride = stride;
        plane.height = shiftUp(size.h, layout.heightShift);
        plane.bytes.reset(new uint8_t[stride * plane.height]());
    }
    return buffer;
}

size_t HostImageBuffer::getImgBitsPerPixel() const {
    return imageBitsPerPixel(mFormat->code);
}

size_t HostImageBuffer::getPlaneBitsPerPixel(size_t plane) const {
    return plane < mFormat->planeCount ? mFormat->planes[plane].bitsPerPixel : 0;
}

size_t HostImageBuffer::getBufStridesInBytes(size_t plane) const {
    return plane < mFormat->planeCount ? mPlanes[plane].stride : 0;
}

size_t HostImageBuffer::getBufHeight(size_t plane) const {
    return plane < mFormat->planeCount ? mPlanes[plane].height : 0;
}

size_t HostImageBuffer::getBufSizeInBytes(size_t plane) const {
    return plane < mFormat->planeCount ? mPlanes[plane].stride * mPlanes[plane].height : 0;
}

uint8_t* HostImageBuffer::getBufVA(size_t plane) const {
    return plane < mFormat->planeCount ? mPlanes[plane].bytes.get() : nullptr;
}

bool HostImageBuffer::lockBuf(const char* user, uint32_t usage) {
    std::string name = user != nullptr ? user : "";
    std::lock_guard<std::mutex> guard(mLock);
    auto held = std::find_if(mLocks.begin(), mLocks.end(),
                             [&](const Lock& lock) { return lock.user == name; });
    if (held != mLocks.end()) return false;
    mLocks.push_back({name, usage});
    return true;
}

bool HostImageBuffer::unlockBuf(const char* user) {
    std::string name = user != nullptr ? user : "";
    std::lock_guard<std::mutex> guard(mLock);
    auto held = std::find_if(mLocks.begin(), mLocks.end(),
                             [&](const Lock& lock) { return lock.user == name; });
    if (held == mLocks.end()) return false;
    mLocks.erase(held);
    return true;
}

bool HostImageBuffer::syncCache(int32_t /*ctrl*/) {
    std::lock_guard<std::mutex> guard(mLock);
    ++mSyncCount;
    return true;
}

uint32_t HostImageBuffer::lockUsage(const char* user) const {
    std::string name = user != nullptr ? user : "";
    std::lock_guard<std::mutex> guard(mLock);
    for (const Lock& lock : mLocks) {
        if (lock.user == name) return lock.usage;
    }
    return 0;
}

int HostImageBuffer::syncCount() const {
    std::lock_guard<std::mutex> guard(mLock);
    return mSyncCount;
}

bool HostImageBuffer::saveToFile(const char* path) {
    if (path == nullptr) return false;
    camtune::fs::UniqueFd fd(camtune::fs::open(path, O_WRONLY | O_CREAT | O_TRUNC, 0644));
    if (!fd.isValid()) return false;
    for (size_t i = 0; i < mFormat->planeCount; ++i) {
        size_t size = getBufSizeInBytes(i);
        if (camtune::fs::write(fd.get(), mPlanes[i].bytes.get(), size) !=
            static_cast<ssize_t>(size)) {
            return false;
        }
    }
    return true;
}

bool HostImageBuffer::loadFromFile(const char* path) {
    if (path == nullptr || path[0] == '\0') return false;
    camtune::fs::UniqueFd fd(camtune::fs::open(path, O_RDONLY));
    if (!fd.isValid()) return false;
    for (size_t i = 0; i < mFormat->planeCount; ++i) {
        uint8_t* at = mPlanes[i].bytes.get();
        size_t left = getBufSizeInBytes(i);
        while (left > 0) {
            ssize_t got = camtune::fs::read(fd.get(), at, left);
            if (got <= 0) return false;  // too short: the planes filled so far keep the data
            at += got;
            left -= static_cast<size_t>(got);
        }
    }
    return true;
}

}  // namespace NSCam
