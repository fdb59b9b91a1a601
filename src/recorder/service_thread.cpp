// The service thread: decides when a request is complete, writes it out and recycles its
// buffers. It is the only user of the file writers' files.
#define LOG_TAG "ScenarioRecorder"

#include <cstring>

#include "camtune/platform/clock.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"
#include "camtune/platform/thread.h"
#include "platform/property_registry.h"
#include "recorder/scenario_recorder_impl.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

namespace props = camtune::props;

namespace {
// The helpers below are steps of the service loop and log under its name.
constexpr char kServiceFunction[] = "serviceThreadEntry";
}  // namespace

void ScenarioRecorder::setNice(int niceValue) {
    int result = mSetPriority ? mSetPriority(niceValue) : 0;
    // Without the privilege for a negative nice value the thread keeps the priority it has;
    // one line says so, later attempts stay quiet.
    if (result < 0 && !mPriorityFailureLogged) {
        mPriorityFailureLogged = true;
        CAM_LOGW("[%s] Cannot set nice value %d (errno = %d); keeping the current priority",
                 __func__, niceValue, -result);
    }
}

bool ScenarioRecorder::isActive(int64_t key) {
    ActiveShard& shard = shardOf(key);
    std::lock_guard<std::mutex> guard(shard.lock);
    return shard.requests.count(key) != 0;
}

void ScenarioRecorder::collectDueRequests() {
    const timespec now = camtune::clock::realtime();
    std::lock_guard<std::mutex> guard(mLifeCycleLock);
    // Capture requests bound to a file that received no record: once their life is over their
    // writers go, or every such capture would keep a descriptor open for good.
    for (auto it = mLifeCycles.begin(); it != mLifeCycles.end();) {
        const LifeCycleControl& control = *it->second;
        if (now.tv_sec - control.startTime.tv_sec > control.lifeSec && !isActive(it->first)) {
            mIdleCaptures.push_back(it->first);
            it = mLifeCycles.erase(it);
        } else {
            ++it;
        }
    }
    mLifeCycleCount.store(mLifeCycles.size(), std::memory_order_release);
    for (size_t n = mWritingList.size(); n > 0; --n) {
        int64_t key = mWritingList.front();
        mWritingList.pop_front();
        auto control = mLifeCycles.find(key);
        if (control != mLifeCycles.end()) {
            // A capture request stays open while records keep arriving within its life.
            if (now.tv_sec - control->second->startTime.tv_sec <= control->second->lifeSec) {
                mWritingList.push_back(key);
                continue;
            }
            mLifeCycles.erase(control);
            mLifeCycleCount.store(mLifeCycles.size(), std::memory_order_release);
        }
        ActiveShard& shard = shardOf(key);
        std::lock_guard<std::mutex> shardGuard(shard.lock);
        auto active = shard.requests.find(key);
        if (active == shard.requests.end()) continue;  // nothing recorded under this key any more
        if (active->second->isEmpty()) {
            mWritingList.push_back(key);
            continue;
        }
        mToBeFlushed.push_back(std::move(active->second));
        shard.requests.erase(active);
    }
}

void ScenarioRecorder::waitForProducers(std::unique_lock<std::mutex>& lock, Buffer* first) {
    // Every buffer of the chain, not only the last: a producer may still be copying into a
    // sealed one, and its line must be whole before it is read.
    for (Buffer* b = first; b != nullptr; b = b->successor.get()) {
        while (b->pendingWriters.load(std::memory_order_acquire) > 0) {
            ++mProducerWaits;
            mWakeUp.wait_for(lock, std::chrono::milliseconds(kPendingWaitSliceMs));
        }
    }
}

void ScenarioRecorder::writeOut(Buffer* first, bool endOfBatch) {
    std::shared_ptr<FileWriter> writer = getFileWriterFromContainer(first->key);
    // A series whose open failed tries again with each request; the writer logs the failure
    // once. A request bound to no series at all is reported each time.
    if (writer->fd() < 0 && writer->hasSeries()) writer->open(false, nullptr, false);
    if (writer->fd() < 0) {
        if (!writer->hasSeries()) CAM_LOGE(CAMTUNE_RECORDER_NO_FILE_MSG, kServiceFunction);
        return;
    }
    // The headlines of the whole chain form the request's first line.
    LogHeader* headlineRecord = first->headlineRecord();
    char* headline = headlineRecord->text();
    size_t used = 0;
    const size_t room = headlineRecord->textCapacity() - 1;
    for (Buffer* b = first; b != nullptr; b = b->successor.get()) {
        std::lock_guard<std::mutex> guard(b->headlineLock);
        size_t length = std::strlen(b->headline);
        if (length > room - used) length = room - used;
        std::memcpy(headline + used, b->headline, length);
        used += length;
    }
    headline[used] = '\0';

    for (Buffer* b = first; b != nullptr; b = b->successor.get()) {
        char* end = b->cursor;
        for (char* p = b->data; p < end;) {
            LogHeader* header = reinterpret_cast<LogHeader*>(p);
            size_t left = static_cast<size_t>(end - p);
            if (header->size < kRecordHeaderSize || header->size > left) break;
            // The buffer is the service thread's now: bound the text whatever was copied in.
            p[header->size - 1] = '\0';
            const char* text = header->text();
            size_t length = header->textLength;
            // Only a length that ends where the text does is taken as it is.
            if (length == 0 || length >= header->textCapacity() || text[length] != '\0') {
                length = std::strlen(text);
            }
            writer->onWriteLog(text, length);
            p += header->size;
        }
    }
    if (endOfBatch) {
        writer->flush(true);
        // Preview lines may sit in the shared preview writer when a capture request closed
        // the batch; the end of a batch is where they reach the disk.
        std::shared_ptr<FileWriter> preview;
        {
            std::lock_guard<std::mutex> guard(mWriterLock);
            preview = mPreviewWriter;
        }
        if (preview != writer && preview->fd() >= 0) preview->flush(true);
    }
}

void ScenarioRecorder::removeCaptureWriter(int64_t key) {
    std::lock_guard<std::mutex> guard(mWriterLock);
    auto it = mCaptureWriters.find(key);
    if (it == mCaptureWriters.end()) return;
    // The capture request is written: its file is closed with the writer.
    mCaptureWriters.erase(it);
    CAM_LOGI("[%s] Remove fileWriter key(%llu)", kServiceFunction,
             static_cast<unsigned long long>(key));
}

void ScenarioRecorder::dropIdleCaptureWriters(const std::vector<int64_t>& keys) {
    for (int64_t key : keys) {
        std::shared_ptr<FileWriter> writer;
        {
            std::lock_guard<std::mutex> guard(mWriterLock);
            auto it = mCaptureWriters.find(key);
            if (it == mCaptureWriters.end()) continue;
            writer = std::move(it->second);
            mCaptureWriters.erase(it);
        }
        // Only the service thread writes to capture writers, and it is not writing this one.
        const bool empty = writer->fileBytes() == 0 && writer->bufferedBytes() == 0;
        const std::string path = writer->filePath();
        writer->close();
        if (empty && !path.empty()) camtune::fs::unlink(path.c_str());
        CAM_LOGI("[%s] Remove idle fileWriter key(%llu)%s", kServiceFunction,
                 static_cast<unsigned long long>(key), empty ? " and its empty file" : "");
    }
}

void ScenarioRecorder::recycle(BufferPtr buffer, std::vector<BufferPtr>* freed) {
    // Only the chain's first buffer is kept: an overlong request must not leave the pool holding
    // its extra buffers. Successors are unchained one by one, not by recursive destruction.
    BufferPtr successor = buffer->clear();
    while (successor) {
        BufferPtr next = std::move(successor->successor);
        freed->push_back(std::move(successor));
        successor = std::move(next);
    }
    if (mEmptyBuffers.size() >= kMaxEmptyBuffers) {
        freed->push_back(std::move(mEmptyBuffers.front()));
        mEmptyBuffers.pop_front();
    }
    mEmptyBuffers.push_back(std::move(buffer));
}

void ScenarioRecorder::serviceThreadEntry() {
    camtune::thread::setName(kThreadName);
    setNice(kNiceByBoostLevel[0]);
    const int flushMs = props::getInt(props::kRecorderFlushMs);
    (void)props::getInt(props::kRecorderRmWriterSec);  // reserved: read, drives nothing yet
    CAM_LOGI("[%s] ScenarioRecorder is running; flushInterval = %d ms", __func__, flushMs);
    int level = 0;

    std::vector<BufferPtr> freed;
    std::unique_lock<std::mutex> lock(mLock);
    for (;;) {
        if (!mToBeFlushed.empty()) {
            size_t waiting = mToBeFlushed.size();
            if (level < 3 && waiting > kBoostLevel3Queue) {
                level = 3;
                setNice(kNiceByBoostLevel[level]);
            } else if (level < 2 && waiting > kBoostLevel2Queue) {
                level = 2;
                setNice(kNiceByBoostLevel[level]);
            }
        } else {
            if (level > 0) {
                --level;
                setNice(kNiceByBoostLevel[level]);
            }
            if (!mRunning.load()) break;
            if (flushMs >= 1) {
                mWakeUp.wait_for(lock, std::chrono::milliseconds(flushMs));
            } else {
                lock.unlock();
                std::this_thread::yield();
                lock.lock();
            }
            if (!mRunning.load() && mToBeFlushed.empty()) break;
            if (mToBeFlushed.empty()) {
                if (!mWritingList.empty() || mLifeCycleCount.load() != 0) {
                    collectDueRequests();
                    mProgress.notify_all();
                }
                if (!mIdleCaptures.empty()) {
                    std::vector<int64_t> idle;
                    idle.swap(mIdleCaptures);
                    lock.unlock();
                    dropIdleCaptureWriters(idle);
                    lock.lock();
                }
                continue;
            }
        }

        Buffer* first = mToBeFlushed.front().get();
        bool onlyOne = mToBeFlushed.size() == 1;
        waitForProducers(lock, first);
        lock.unlock();
        writeOut(first, onlyOne);
        removeCaptureWriter(first->key);
        lock.lock();

        BufferPtr done = std::move(mToBeFlushed.front());
        mToBeFlushed.pop_front();
        recycle(std::move(done), &freed);
        if (!freed.empty()) {
            // Producers waiting for the main lock need not wait for the memory to go back.
            lock.unlock();
            freed.clear();
            lock.lock();
        }
        CAM_LOGV("[%s] mToBeFlushed(%d), mWritingList(%d), mEmptyBuffers(%d)", __func__,
                 static_cast<int>(mToBeFlushed.size()), static_cast<int>(mWritingList.size()),
                 static_cast<int>(mEmptyBuffers.size()));
        mProgress.notify_all();
    }
    lock.unlock();
    CAM_LOGI("[%s] Scenario recorder stopped", __func__);
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
