#include "ndd/dump_bytes.h"

#include <new>

namespace NSCam {
namespace TuningUtils {

DumpBytes BufferPool::acquire(size_t size) {
    {
        std::lock_guard<std::mutex> guard(mLock);
        if (mFailAllocations > 0) {
            --mFailAllocations;
            return DumpBytes();
        }
        size_t best = mKept.size();
        for (size_t i = 0; i < mKept.size(); ++i) {
            if (mKept[i].capacity() >= size &&
                (best == mKept.size() || mKept[i].capacity() < mKept[best].capacity())) {
                best = i;
            }
        }
        if (best != mKept.size()) {
            DumpBytes bytes = std::move(mKept[best]);
            mKept.erase(mKept.begin() + static_cast<std::ptrdiff_t>(best));
            mKeptBytes -= bytes.capacity();
            bytes.setSize(size);
            return bytes;
        }
    }
    // Default-initialised on purpose: the caller overwrites every byte.
    std::unique_ptr<uint8_t[]> memory(new (std::nothrow) uint8_t[size != 0 ? size : 1]);
    if (memory == nullptr) return DumpBytes();
    DumpBytes bytes(std::move(memory), size != 0 ? size : 1);
    bytes.setSize(size);
    return bytes;
}

void BufferPool::release(DumpBytes bytes) {
    if (bytes.empty()) return;
    std::lock_guard<std::mutex> guard(mLock);
    if (mKept.size() >= kMaxBuffers || mKeptBytes + bytes.capacity() > kMaxBytes) return;
    mKeptBytes += bytes.capacity();
    mKept.push_back(std::move(bytes));
}

void BufferPool::trim(size_t keep) {
    std::vector<DumpBytes> freed;  // freed once the lock is released
    std::lock_guard<std::mutex> guard(mLock);
    while (mKept.size() > keep) {
        mKeptBytes -= mKept.front().capacity();
        freed.push_back(std::move(mKept.front()));
        mKept.erase(mKept.begin());
    }
}

size_t BufferPool::keptBytes() const {
    std::lock_guard<std::mutex> guard(mLock);
    return mKeptBytes;
}

size_t BufferPool::keptCount() const {
    std::lock_guard<std::mutex> guard(mLock);
    return mKept.size();
}

void BufferPool::failNextAllocations(int count) {
    std::lock_guard<std::mutex> guard(mLock);
    mFailAllocations = count;
}

}  // namespace TuningUtils
}  // namespace NSCam
