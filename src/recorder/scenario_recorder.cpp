// The recorder's life cycle, request binding and file writers.
#define LOG_TAG "ScenarioRecorder"

#include <algorithm>
#include <cstdio>
#include <system_error>

#include "camtune/platform/clock.h"
#include "camtune/platform/log.h"
#include "camtune/platform/thread.h"
#include "platform/property_registry.h"
#include "platform/thread_start.h"
#include "recorder/scenario_recorder_impl.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

namespace props = camtune::props;

// How long unInit waits for a producer still copying into a discarded buffer.
constexpr int64_t kBusyProducerGraceNs = 100 * 1000 * 1000;

ScenarioRecorder::ScenarioRecorder()
    : mEnabled(props::getInt(props::kRecorderEnable) != 0),
      mPreviewWriter(std::make_shared<FileWriter>(-1, -1, -1)),
      mSetPriority(camtune::thread::setPriority) {}

ScenarioRecorder::~ScenarioRecorder() {
    if (mRunning.load()) unInit();
}

void ScenarioRecorder::init() {
    std::lock_guard<std::mutex> startStop(mStartStopLock);
    if (mServiceThread.joinable()) return;  // already running
    int32_t maxMb = props::getInt(props::kRecorderMaxMb);
    if (maxMb < 0) {
        CAM_LOGW("[%s] %s=%d is negative; the default %d MiB applies", __func__,
                 props::kRecorderMaxMb.name, maxMb, props::defaultInt(props::kRecorderMaxMb));
        maxMb = props::defaultInt(props::kRecorderMaxMb);
    }
    {
        std::lock_guard<std::mutex> guard(mLock);
        mStopped = false;
        // At least one buffer, so a bound below one buffer still records something.
        const uint64_t bytes = static_cast<uint64_t>(maxMb) * 1024 * 1024;
        mMaxBuffers = maxMb == 0 ? 0 : std::max<uint64_t>(1, bytes / sizeof(Buffer));
    }
    {
        std::lock_guard<std::mutex> guard(mWriterLock);
        mBindingClosed = false;
    }
    mRunning.store(true);
    try {
        mServiceThread = camtune::thread::start(&ScenarioRecorder::serviceThreadEntry, this);
    } catch (const std::system_error& error) {
        mRunning.store(false);
        throw std::system_error(error.code(), "thread constructor failed");
    }
    mInitialised.store(true, std::memory_order_release);
}

bool ScenarioRecorder::isBusy(const Buffer* first) {
    for (const Buffer* b = first; b != nullptr; b = b->successor.get()) {
        if (b->pendingWriters.load(std::memory_order_acquire) > 0) return true;
    }
    return false;
}

void ScenarioRecorder::unInit() {
    std::lock_guard<std::mutex> startStop(mStartStopLock);
    CAM_LOGV("[%s] unInit", __func__);
    // Producers that have not reserved yet are refused from here on.
    mInitialised.store(false, std::memory_order_release);
    {
        std::lock_guard<std::mutex> guard(mLock);
        mStopped = true;
        mRunning.store(false);
        mWakeUp.notify_all();
    }
    if (mServiceThread.joinable()) mServiceThread.join();
    // What the thread wrote is on disk once unInit returns.
    std::shared_ptr<FileWriter> preview;
    {
        std::lock_guard<std::mutex> guard(mWriterLock);
        preview = mPreviewWriter;
    }
    if (preview->fd() >= 0) preview->flush(true);
    std::unordered_map<int64_t, BufferPtr> active;
    {
        std::lock_guard<std::mutex> guard(mLock);
        for (ActiveShard& shard : mActive) {
            std::lock_guard<std::mutex> shardGuard(shard.lock);
            for (auto& entry : shard.requests) active.emplace(entry.first, std::move(entry.second));
            shard.requests.clear();
        }
        mWritingList.clear();
        mToBeFlushed.clear();
        mIdleCaptures.clear();
        mProgress.notify_all();
    }
    std::vector<int64_t> captures;
    {
        std::lock_guard<std::mutex> guard(mLifeCycleLock);
        mLifeCycles.clear();
        mLifeCycleCount.store(0, std::memory_order_release);
    }
    {
        std::lock_guard<std::mutex> guard(mWriterLock);
        mBindingClosed = true;
        for (const auto& entry : mCaptureWriters) captures.push_back(entry.first);
    }
    dropIdleCaptureWriters(captures);
    // A producer may still be copying into a discarded buffer: give it a moment, and if it is
    // still busy keep the buffer aside rather than pull the memory from under it.
    const int64_t deadlineNs = camtune::clock::monotonicNs() + kBusyProducerGraceNs;
    for (auto& entry : active) {
        while (isBusy(entry.second.get()) && camtune::clock::monotonicNs() < deadlineNs) {
            std::this_thread::yield();
        }
        if (isBusy(entry.second.get())) mRetired.push_back(std::move(entry.second));
    }
    mRetired.erase(std::remove_if(mRetired.begin(), mRetired.end(),
                                  [](const BufferPtr& b) { return !isBusy(b.get()); }),
                   mRetired.end());
    uint64_t dropped = 0;
    {
        std::lock_guard<std::mutex> guard(mLock);
        dropped = mDroppedRecords;
        mBurstDrops = 0;
        mDropping.store(false, std::memory_order_relaxed);
    }
    if (dropped > 0) {
        CAM_LOGW("[%s] %llu records were dropped at the %s bound in this session", __func__,
                 static_cast<unsigned long long>(dropped), props::kRecorderMaxMb.name);
    }
}

void ScenarioRecorder::recordNddInfo(int uniqueKey, int requestNo, int third, bool isCapture) {
    // A stopped recorder opens no file: nothing would ever write or close it.
    if (!isInitialised()) return;
    bindRequest(uniqueKey, requestNo, third, isCapture);
}

void ScenarioRecorder::bindRequest(int uniqueKey, int requestNo, int third, bool isCapture) {
    int64_t key = makeKey(uniqueKey, requestNo);
    {
        std::lock_guard<std::mutex> guard(mWriterLock);
        if (mBindingClosed) return;
        if (!isCapture) {
            if (mPreviewWriter->seriesId()[0] != uniqueKey) {
                auto writer = std::make_shared<FileWriter>(uniqueKey, requestNo, third);
                openFileWriter(writer.get(), kPreviewKind);
                mPreviewWriter = std::move(writer);
            }
            return;
        }
        if (mCaptureWriters.find(key) == mCaptureWriters.end()) {
            auto writer = std::make_shared<FileWriter>(uniqueKey, requestNo, third);
            openFileWriter(writer.get(), kCaptureKind);
            mCaptureWriters.emplace(key, std::move(writer));
        }
    }
    const timespec now = camtune::clock::realtime();
    int32_t life = props::getInt(props::kRecorderFlushCapSec);
    std::lock_guard<std::mutex> guard(mLifeCycleLock);
    if (mLifeCycles.find(key) == mLifeCycles.end()) {
        mLifeCycles.emplace(key,
                            std::make_unique<LifeCycleControl>(LifeCycleControl{key, now, life}));
        mLifeCycleCount.store(mLifeCycles.size(), std::memory_order_release);
    }
}

void ScenarioRecorder::updateWriterLifeCycle(int uniqueKey, int requestNo) {
    if (mLifeCycleCount.load(std::memory_order_acquire) == 0) return;
    int64_t key = makeKey(uniqueKey, requestNo);
    std::lock_guard<std::mutex> guard(mLifeCycleLock);
    auto it = mLifeCycles.find(key);
    if (it != mLifeCycles.end()) it->second->startTime = camtune::clock::realtime();
}

std::shared_ptr<FileWriter> ScenarioRecorder::getFileWriterFromContainer(long long key) {
    std::lock_guard<std::mutex> guard(mWriterLock);
    auto it = mCaptureWriters.find(key);
    return it != mCaptureWriters.end() ? it->second : mPreviewWriter;
}

void ScenarioRecorder::openFileWriter(FileWriter* writer, const char* kind) {
    char prefix[kNamePrefixSize];
    const int* id = writer->seriesId();
    int n = std::snprintf(prefix, sizeof(prefix), "%09d_%04d_%04d_%s_", id[0], id[1], id[2], kind);
    if (n < 1) {
        CAM_LOGW("[%s] snprintf for file name fail", __func__);
        return;
    }
    char folder[kFolderPathSize];
    getFolderPath(folder, sizeof(folder));
    writer->setFolder(folder);
    writer->setLossCounter(&mLinesLost);
    writer->open(true, prefix, false);
}

ScenarioRecorder::Stats ScenarioRecorder::stats() const {
    std::lock_guard<std::mutex> guard(mLock);
    Stats stats{};
    stats.toBeFlushed = mToBeFlushed.size();
    stats.writingList = mWritingList.size();
    stats.emptyBuffers = mEmptyBuffers.size();
    stats.active = 0;
    for (const ActiveShard& shard : mActive) {
        std::lock_guard<std::mutex> shardGuard(shard.lock);
        stats.active += shard.requests.size();
    }
    stats.producerWaits = mProducerWaits;
    stats.liveBuffers = mLiveBuffers.load();
    stats.peakBuffers = mPeakBuffers;
    stats.droppedRecords = mDroppedRecords;
    stats.linesLost = mLinesLost.load();
    return stats;
}

bool ScenarioRecorder::waitUntilIdle(std::chrono::milliseconds timeout) {
    std::unique_lock<std::mutex> lock(mLock);
    return mProgress.wait_for(lock, timeout,
                              [this] { return mToBeFlushed.empty() && mWritingList.empty(); });
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
