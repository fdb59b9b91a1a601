// One request's records: a data area of back-to-back records plus the request's headline.
#pragma once

#include <time.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

#include "recorder/recorder_constants.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

// Header of one record in a buffer's data area; the NUL-terminated text follows it.
struct LogHeader {
    uint32_t size;        // whole record, header included; a multiple of 4
    uint32_t textOffset;  // from the header's start
    // Length of the text as the recorder's own producers store it, so the service thread reads
    // the text once; 0 where a caller filled the record itself, and the text is measured.
    uint32_t textLength;
    uint32_t reserved[3];

    char* text() { return reinterpret_cast<char*>(this) + textOffset; }
    // Bytes the text may use, terminator included.
    uint32_t textCapacity() const { return size - textOffset; }
};
static_assert(sizeof(LogHeader) == kRecordHeaderSize, "record header layout");

struct LogBuffer {
    LogBuffer();
    ~LogBuffer();
    LogBuffer(const LogBuffer&) = delete;
    LogBuffer& operator=(const LogBuffer&) = delete;

    // Back to the empty state of a chain's first buffer. Returns the successors it dropped.
    std::unique_ptr<LogBuffer> clear();
    // Lays down a record of `size` bytes at the cursor; the caller checked the space.
    LogHeader* reserve(uint32_t size);
    bool isEmpty() const { return spaceLeft == kDataAreaSize; }
    uint32_t usedBytes() const { return kDataAreaSize - spaceLeft; }
    LogHeader* headlineRecord() { return reinterpret_cast<LogHeader*>(data); }

    std::atomic<uint8_t> sealed{0};
    std::atomic<uint32_t> pendingWriters{0};
    char* cursor;
    uint32_t spaceLeft = kDataAreaSize;
    int64_t key = -1;
    alignas(8) char data[kDataAreaSize];
    timespec allocTime{};
    uint8_t hasSuccessor = 0;
    uint8_t needsHeadlineRecord = 1;
    std::unique_ptr<LogBuffer> successor;
    std::mutex headlineLock;
    char* headlineCursor;
    char headline[kHeadlineSize + 1];
    uint32_t headlineSpaceLeft = kHeadlineSize;
    // Count of the recorder's live buffers, taken down when this one goes.
    std::atomic<size_t>* liveCount = nullptr;
};

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
