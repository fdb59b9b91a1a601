// ScenarioRecorder: the process's recorder. Producers reserve records under one short lock and
// copy their text outside it; one service thread writes each request's records to its file.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

#include "camtune/scenario_recorder.h"
#include "recorder/file_writer.h"
#include "recorder/log_buffer.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

class ScenarioRecorder : public IScenarioRecorder {
public:
    using Buffer = LogBuffer;

    struct LifeCycleControl {
        int64_t key;
        timespec startTime;
        int32_t lifeSec;
    };

    // Queue sizes, for tests and benchmarks.
    struct Stats {
        size_t toBeFlushed;
        size_t writingList;
        size_t emptyBuffers;
        size_t active;
    };

    // Sets the calling thread's nice value; returns 0 or a negative errno.
    using PrioritySetter = std::function<int(int niceValue)>;

    // The process uses the one instance of getInstance(); tests and benchmarks make their own.
    ScenarioRecorder();
    ~ScenarioRecorder() override;
    ScenarioRecorder(const ScenarioRecorder&) = delete;
    ScenarioRecorder& operator=(const ScenarioRecorder&) = delete;

    // Starts the service thread; throws std::system_error ("thread constructor failed") when
    // no thread can be started.
    void init();
    // Stops the service thread after it has written every queued request; requests still
    // being recorded are discarded.
    void unInit();
    bool isInitialised() const { return mInitialised.load(std::memory_order_acquire); }

    void recordNddInfo(int uniqueKey, int requestNo, int third, bool isCapture) override;
    bool isScenarioRecorderOn() override { return mEnabled; }
    // Record formatting needs the dump framework's key decoding; until it is wired in these
    // drop the record (see submitRecordText for the storage path they end in).
    void submitDecisionRecord(const IMetadata* meta, const DecisionInput& input,
                              const char* text) override;
    void submitDecisionRecord(long long nddKey, const DecisionInput& input,
                              const char* text) override;
    void submitExecutionRecord(const IMetadata* meta, const ExecResultInput& input,
                               const char* text) override;
    void submitExecutionRecord(long long nddKey, const ExecResultInput& input,
                               const char* text) override;

    // Reserves a record of `size` bytes (header included) for request (uniqueKey, requestNo).
    // The caller copies its text to (*header)->text() and then calls finishLogSpace. A size
    // above the data area stops the process.
    bool allocLogSpace(int uniqueKey, int requestNo, unsigned size, LogHeader** header,
                       Buffer** buffer);
    // Ends a producer's work on a reserved record.
    void finishLogSpace(int uniqueKey, int requestNo, Buffer* buffer);
    // Stores one formatted line (cut to kMaxRecordText - 1 characters) for the request, and
    // appends ", <headlineText>" to the request's headline when headlineText is not null.
    // Returns false when the recorder is not initialised.
    bool submitRecordText(int uniqueKey, int requestNo, const char* text, const char* headlineText);
    void updateWriterLifeCycle(int uniqueKey, int requestNo);

    // The capture writer of `key`, else the preview writer. Shared so that a writer replaced
    // while the service thread writes to it lives until that write is done.
    std::shared_ptr<FileWriter> getFileWriterFromContainer(long long key);
    void openFileWriter(FileWriter* writer, const char* kind);
    static void getFolderPath(char* out, unsigned size);

    static void writeNDDToHeadline(Buffer* buffer, int uniqueKey, int requestNo);
    static void writeStringToHeadline(Buffer* buffer, const char* text, int length);

    // Replaces the nice-value setter (thread::setPriority); call before init().
    void setPrioritySetter(PrioritySetter setter) { mSetPriority = std::move(setter); }
    Stats stats() const;
    // Waits until nothing is queued or being recorded, or the timeout passes.
    bool waitUntilIdle(std::chrono::milliseconds timeout);

private:
    using BufferPtr = std::unique_ptr<Buffer>;

    void serviceThreadEntry();
    void setNice(int niceValue);
    // Moves every due request from the writing list to mToBeFlushed. Main lock held.
    void collectDueRequests();
    // Waits, in slices, until no producer is copying into the chain. Main lock held.
    void waitForProducers(std::unique_lock<std::mutex>& lock, Buffer* first);
    void writeOut(Buffer* first, bool endOfBatch);
    void removeCaptureWriter(int64_t key);
    // Takes a recycled buffer or makes a new one. Main lock held.
    BufferPtr takeEmptyBuffer();
    void recycle(BufferPtr buffer);
    // True while a producer is still copying into a buffer of the chain.
    static bool isBusy(const Buffer* first);

    mutable std::mutex mLock;
    std::deque<BufferPtr> mToBeFlushed;
    std::deque<BufferPtr> mEmptyBuffers;
    std::unordered_map<int64_t, BufferPtr> mActive;
    // Discarded by unInit while a producer was still copying into them; freed later.
    std::vector<BufferPtr> mRetired;
    std::deque<int64_t> mWritingList;
    std::mutex mLifeCycleLock;
    std::unordered_map<int64_t, std::unique_ptr<LifeCycleControl>> mLifeCycles;
    // Lets producers skip the life-cycle lock while no capture request is tracked.
    std::atomic<size_t> mLifeCycleCount{0};
    std::atomic<bool> mRunning{false};
    std::condition_variable mWakeUp;
    std::condition_variable mProgress;  // signalled when the queues shrink
    std::mutex mWriterLock;
    std::unordered_map<int64_t, std::shared_ptr<FileWriter>> mCaptureWriters;
    std::atomic<bool> mInitialised{false};
    bool mEnabled;
    std::shared_ptr<FileWriter> mPreviewWriter;
    std::unordered_map<int, int> mSensorIndexCache;
    std::thread mServiceThread;
    PrioritySetter mSetPriority;
    bool mPriorityFailureLogged = false;
};

class ScenarioRecorderInitializerImpl {
public:
    // Starts the process's recorder when vendor.debug.camera.scenarioRecorder.enable is 1.
    ScenarioRecorderInitializerImpl();
    // Stops it again if this object started it.
    ~ScenarioRecorderInitializerImpl();
    ScenarioRecorderInitializerImpl(const ScenarioRecorderInitializerImpl&) = delete;
    ScenarioRecorderInitializerImpl& operator=(const ScenarioRecorderInitializerImpl&) = delete;

    bool started() const { return mStarted; }

private:
    bool mStarted = false;
};

// Lives as one static object of the library: runs the recorder from load to unload.
class ScenarioRecorderInitializer {
public:
    ScenarioRecorderInitializer();
    ~ScenarioRecorderInitializer();

private:
    std::unique_ptr<ScenarioRecorderInitializerImpl> mImpl;
};

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
