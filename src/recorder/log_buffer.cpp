#include "recorder/log_buffer.h"

#include <new>

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

LogBuffer::LogBuffer() : cursor(data), headlineCursor(headline) {
    headline[0] = '\0';
}

LogBuffer::~LogBuffer() {
    if (liveCount != nullptr) liveCount->fetch_sub(1, std::memory_order_relaxed);
}

std::unique_ptr<LogBuffer> LogBuffer::clear() {
    sealed.store(0, std::memory_order_relaxed);
    pendingWriters.store(0, std::memory_order_relaxed);
    cursor = data;
    spaceLeft = kDataAreaSize;
    key = -1;
    allocTime = timespec{};
    hasSuccessor = 0;
    needsHeadlineRecord = 1;
    {
        std::lock_guard<std::mutex> guard(headlineLock);
        headlineCursor = headline;
        headline[0] = '\0';
        headlineSpaceLeft = kHeadlineSize;
    }
    return std::move(successor);
}

LogHeader* LogBuffer::reserve(uint32_t size) {
    LogHeader* header = new (cursor) LogHeader{size, kRecordHeaderSize, 0, {}};
    // A record whose producer never writes reads as an empty line rather than stale bytes.
    header->text()[0] = '\0';
    cursor += size;
    spaceLeft -= size;
    return header;
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
