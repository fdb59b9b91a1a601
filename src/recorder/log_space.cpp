// The producers' side: reserving a record, filling it and handing it over.
#define LOG_TAG "ScenarioRecorder"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "camtune/platform/clock.h"
#include "camtune/platform/log.h"
#include "platform/property_registry.h"
#include "recorder/scenario_recorder_impl.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

namespace props = camtune::props;

namespace {

// A new request's buffer, and a chained one when the record does not fit after its headline.
constexpr size_t kMaxNewBuffersPerRecord = 2;

// Smallest record: a header and the terminator of an empty text, rounded up.
constexpr uint32_t kMinRecordSize = kRecordHeaderSize + 4;

// Logs `fmt` as an error and stops the process with the same message: the recorder's data
// structures cannot hold what was asked for, and carrying on would lose track of them.
[[noreturn]] __attribute__((format(printf, 2, 3))) void fatal(const char* function, const char* fmt,
                                                              ...) {
    char message[256];
    va_list args;
    va_start(args, fmt);
    std::vsnprintf(message, sizeof(message), fmt, args);
    va_end(args);
    CAM_LOGE("%s", message);
    std::fprintf(stderr, "%s: %s\n", function, message);
    std::abort();
}

}  // namespace

ScenarioRecorder::BufferPtr ScenarioRecorder::takeEmptyBuffer(std::vector<BufferPtr>& spares) {
    BufferPtr buffer;
    if (!spares.empty()) {
        buffer = std::move(spares.back());
        spares.pop_back();
    } else if (!mEmptyBuffers.empty()) {
        buffer = std::move(mEmptyBuffers.back());
        mEmptyBuffers.pop_back();
    } else {
        buffer = newBuffer();  // not reached: allocLogSpace provides enough
        mLiveBuffers.fetch_add(1, std::memory_order_relaxed);
    }
    return buffer;
}

ScenarioRecorder::BufferPtr ScenarioRecorder::newBuffer() {
    BufferPtr buffer = std::make_unique<Buffer>();
    buffer->liveCount = &mLiveBuffers;
    return buffer;
}

void ScenarioRecorder::dropAtBound(int uniqueKey, int requestNo) {
    ++mDroppedRecords;
    mDropping.store(true, std::memory_order_relaxed);
    if (mBurstDrops++ == 0) {
        CAM_LOGW(
                "[%s] record of [UKey: %d][ReqNum: %d] dropped: the recorder holds its bound of "
                "%zu buffers (%s); records are dropped until the writer catches up",
                __func__, uniqueKey, requestNo, mMaxBuffers, props::kRecorderMaxMb.name);
    }
}

void ScenarioRecorder::endDropBurst() {
    if (mBurstDrops == 0) return;
    CAM_LOGW("[%s] recording again after dropping %llu records", __func__,
             static_cast<unsigned long long>(mBurstDrops));
    mBurstDrops = 0;
    mDropping.store(false, std::memory_order_relaxed);
}

size_t ScenarioRecorder::buffersNeeded(const ActiveShard& shard, int64_t key,
                                       uint32_t recordSize) const {
    // A new request takes a fresh buffer, whose headline record comes first.
    size_t needed = 1;
    uint32_t space = kDataAreaSize - kHeadlineRecordSize;
    auto it = shard.requests.find(key);
    if (it != shard.requests.end()) {
        const Buffer* tail = it->second.get();
        while (tail->successor) tail = tail->successor.get();
        const bool headlineDue = tail->isEmpty() && tail->needsHeadlineRecord;
        space = tail->spaceLeft - (headlineDue ? kHeadlineRecordSize : 0);
        needed = 0;
    }
    // A record that does not fit continues the request in a chained buffer.
    return needed + (space < recordSize ? 1 : 0);
}

ScenarioRecorder::ActiveShard& ScenarioRecorder::shardOf(int64_t key) {
    // Multiplicative hashing: requests numbered in steps still land on different shards.
    const uint64_t mixed = static_cast<uint64_t>(key) * 0x9E3779B97F4A7C15ull;
    return mActive[mixed >> (64 - kActiveShardBits)];
}

bool ScenarioRecorder::reserveInActive(ActiveShard& shard, int64_t key, uint32_t recordSize,
                                       LogHeader** header, Buffer** buffer) {
    std::lock_guard<std::mutex> guard(shard.lock);
    // Stopped, or a drop burst to be closed: the main lock's path sees to those.
    if (mStopped.load(std::memory_order_relaxed) || mDropping.load(std::memory_order_relaxed)) {
        return false;
    }
    auto it = shard.requests.find(key);
    if (it == shard.requests.end()) return false;
    Buffer* tail = it->second.get();
    while (tail->successor) tail = tail->successor.get();
    const bool headlineDue = tail->isEmpty() && tail->needsHeadlineRecord;
    if (tail->spaceLeft < recordSize + (headlineDue ? kHeadlineRecordSize : 0)) return false;
    if (headlineDue) tail->reserve(kHeadlineRecordSize)->text()[0] = '\0';
    *header = tail->reserve(recordSize);
    tail->pendingWriters.fetch_add(1, std::memory_order_relaxed);
    *buffer = tail;
    return true;
}

bool ScenarioRecorder::allocLogSpace(int uniqueKey, int requestNo, unsigned size,
                                     LogHeader** header, Buffer** buffer) {
    uint64_t rounded = (static_cast<uint64_t>(size) + 3) & ~static_cast<uint64_t>(3);
    if (rounded > kDataAreaSize) {
        fatal(__func__, "[%s] Log size too large: %zu", __func__, static_cast<size_t>(rounded));
    }
    uint32_t recordSize =
            rounded < kMinRecordSize ? kMinRecordSize : static_cast<uint32_t>(rounded);

    const int64_t key = makeKey(uniqueKey, requestNo);
    // Most records go to a request that has room left: its shard's lock is all they take.
    ActiveShard& shard = shardOf(key);
    if (reserveInActive(shard, key, recordSize, header, buffer)) return true;

    // A buffer holds 256 KiB: when the pool runs short, they are allocated with the locks
    // released, and whatever is left over is pooled or freed after they are released again.
    std::vector<BufferPtr> spares;
    std::unique_lock<std::mutex> lock(mLock);
    std::unique_lock<std::mutex> shardLock(shard.lock);
    for (;;) {
        if (mStopped.load(std::memory_order_relaxed)) return false;
        // A record takes at most two new buffers: with that many pooled, nothing to count.
        if (mEmptyBuffers.size() + spares.size() >= kMaxNewBuffersPerRecord) break;
        const size_t needed = buffersNeeded(shard, key, recordSize);
        if (needed <= mEmptyBuffers.size() + spares.size()) break;
        const size_t missing = needed - mEmptyBuffers.size() - spares.size();
        // Beyond the memory bound the record is dropped: a producer never waits for the disk.
        const size_t live = mLiveBuffers.load(std::memory_order_relaxed);
        if (mMaxBuffers != 0 && live + missing > mMaxBuffers) {
            dropAtBound(uniqueKey, requestNo);
            return false;
        }
        // Counted before they exist, so producers racing here cannot pass the bound together.
        mLiveBuffers.fetch_add(missing, std::memory_order_relaxed);
        mPeakBuffers = std::max(mPeakBuffers, live + missing);
        shardLock.unlock();
        lock.unlock();
        for (size_t i = 0; i < missing; ++i) spares.push_back(newBuffer());
        lock.lock();
        shardLock.lock();
    }
    endDropBurst();
    Buffer* target = nullptr;
    auto it = shard.requests.find(key);
    if (it == shard.requests.end()) {
        BufferPtr fresh = takeEmptyBuffer(spares);
        fresh->allocTime = camtune::clock::realtime();
        fresh->key = key;
        writeNDDToHeadline(fresh.get(), uniqueKey, requestNo);
        target = fresh.get();
        if (!shard.requests.emplace(key, std::move(fresh)).second) {
            fatal(__func__, "[%s] Emplace log buffer fail", __func__);
        }
        mWritingList.push_back(key);
    } else {
        target = it->second.get();
        while (target->successor) target = target->successor.get();
    }
    if (target->isEmpty() && target->needsHeadlineRecord) {
        target->reserve(kHeadlineRecordSize)->text()[0] = '\0';
    }
    if (target->spaceLeft < recordSize) {
        // Records never straddle buffers: the request continues in a chained one.
        BufferPtr next = takeEmptyBuffer(spares);
        next->key = key;
        next->allocTime = target->allocTime;
        next->needsHeadlineRecord = 0;
        target->sealed.store(1, std::memory_order_release);
        target->hasSuccessor = 1;
        target->successor = std::move(next);
        target = target->successor.get();
    }
    *header = target->reserve(recordSize);
    target->pendingWriters.fetch_add(1, std::memory_order_relaxed);
    *buffer = target;
    while (!spares.empty() && mEmptyBuffers.size() < kMaxEmptyBuffers) {
        mEmptyBuffers.push_back(std::move(spares.back()));
        spares.pop_back();
    }
    return true;
}

void ScenarioRecorder::finishLogSpace(int uniqueKey, int requestNo, Buffer* buffer) {
    // The buffer may be written out and recycled the moment the count drops, so nothing of it
    // is read afterwards. A seal set after this read only delays the write by one wait slice.
    bool sealed = buffer->sealed.load(std::memory_order_acquire) != 0;
    if (buffer->pendingWriters.fetch_sub(1, std::memory_order_acq_rel) == 1 && sealed) {
        mWakeUp.notify_one();
    }
    updateWriterLifeCycle(uniqueKey, requestNo);
}

bool ScenarioRecorder::submitRecordText(int uniqueKey, int requestNo, const char* text,
                                        const char* headlineText) {
    if (text == nullptr) text = "";
    return submitRecordText(uniqueKey, requestNo, text, std::strlen(text), headlineText);
}

bool ScenarioRecorder::submitRecordText(int uniqueKey, int requestNo, const char* text,
                                        size_t length, const char* headlineText) {
    if (!isInitialised()) return false;
    size_t textSize = length + 1;
    if (textSize > kMaxRecordText) textSize = kMaxRecordText;
    LogHeader* header = nullptr;
    Buffer* buffer = nullptr;
    if (!allocLogSpace(uniqueKey, requestNo, static_cast<unsigned>(textSize + kRecordHeaderSize),
                       &header, &buffer)) {
        return false;  // stopped meanwhile
    }
    char* out = header->text();
    std::memcpy(out, text, textSize - 1);
    out[textSize - 1] = '\0';
    header->textLength = static_cast<uint32_t>(textSize - 1);
    if (headlineText != nullptr) {
        char scratch[kHeadlineSize];
        int n = std::snprintf(scratch, sizeof(scratch), ", %s", headlineText);
        if (n > 0) {
            int length = n < static_cast<int>(sizeof(scratch)) ? n : sizeof(scratch) - 1;
            writeStringToHeadline(buffer, scratch, length);
        }
    }
    finishLogSpace(uniqueKey, requestNo, buffer);
    return true;
}

void ScenarioRecorder::writeNDDToHeadline(Buffer* buffer, int uniqueKey, int requestNo) {
    char scratch[kHeadlineSize];
    int n = std::snprintf(scratch, sizeof(scratch), "[UKey: %d][ReqNum: %d]", uniqueKey, requestNo);
    if (n > 0) writeStringToHeadline(buffer, scratch, n);
}

void ScenarioRecorder::writeStringToHeadline(Buffer* buffer, const char* text, int length) {
    if (buffer == nullptr || text == nullptr || length < 0) return;
    std::lock_guard<std::mutex> guard(buffer->headlineLock);
    if (static_cast<int64_t>(buffer->headlineSpaceLeft) - 1 > length) {
        std::memcpy(buffer->headlineCursor, text, static_cast<size_t>(length));
        buffer->headlineCursor += length;
        *buffer->headlineCursor = '\0';
        buffer->headlineSpaceLeft -= static_cast<uint32_t>(length);
    } else if (camtune::log::isEnabled(camtune::log::Level::Debug)) {
        CAM_LOGW("[%s] Headline size is not enough", __func__);
    }
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
