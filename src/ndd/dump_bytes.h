// Copies of dumped buffers, and the pool that recycles them.
//
// A queued dump owns a copy of the caller's bytes until a writer has put them on disk. Fresh
// large allocations page-fault on first touch at several times the cost of the copy itself, so
// released copies are kept (within a bound) and handed out again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace NSCam {
namespace TuningUtils {

// A move-only byte buffer: `size()` bytes in use out of `capacity()`.
class DumpBytes {
public:
    DumpBytes() = default;
    DumpBytes(std::unique_ptr<uint8_t[]> bytes, size_t capacity)
        : mBytes(std::move(bytes)), mCapacity(capacity) {}
    DumpBytes(DumpBytes&& other) noexcept { *this = std::move(other); }
    DumpBytes& operator=(DumpBytes&& other) noexcept {
        if (this != &other) {
            mBytes = std::move(other.mBytes);
            mCapacity = other.mCapacity;
            mSize = other.mSize;
            other.mCapacity = other.mSize = 0;
        }
        return *this;
    }
    DumpBytes(const DumpBytes&) = delete;
    DumpBytes& operator=(const DumpBytes&) = delete;

    bool empty() const { return mBytes == nullptr; }
    uint8_t* data() { return mBytes.get(); }
    const uint8_t* data() const { return mBytes.get(); }
    size_t size() const { return mSize; }
    size_t capacity() const { return mCapacity; }
    // `size` must not exceed the capacity.
    void setSize(size_t size) { mSize = size; }

private:
    std::unique_ptr<uint8_t[]> mBytes;
    size_t mCapacity = 0;
    size_t mSize = 0;
};

class BufferPool {
public:
    // Released buffers kept for reuse while dumps keep coming, at most this many and this many
    // bytes in all; trim() gives the memory back once they stop.
    static constexpr size_t kMaxBuffers = 8;
    static constexpr size_t kMaxBytes = 128u << 20;

    // A buffer of at least `size` bytes (its size set to `size`), or an empty one when the memory
    // cannot be obtained. Prefers the smallest kept buffer that fits.
    DumpBytes acquire(size_t size);
    // Keeps `bytes` for reuse, or frees it when the pool is full.
    void release(DumpBytes bytes);
    // Frees every kept buffer but the `keep` released last.
    void trim(size_t keep);
    void clear() { trim(0); }
    size_t keptBytes() const;
    size_t keptCount() const;

    // Test seam: the next `count` acquisitions fail as if memory had run out.
    void failNextAllocations(int count);

private:
    mutable std::mutex mLock;
    std::vector<DumpBytes> mKept;
    size_t mKeptBytes = 0;
    int mFailAllocations = 0;
};

}  // namespace TuningUtils
}  // namespace NSCam
