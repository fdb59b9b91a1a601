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

// A decision record as the recorder formats it; -1 for what is not known.
struct DecisionParam {
    int32_t uniqueKey = -1;
    int32_t requestNo = -1;
    int32_t frameNo = -1;
    int32_t reserved = 0;
    int32_t sensorIdx = -1;
    DecisionType decisionType = DECISION_ATMS_MAPPING;
    uint32_t moduleId = 0;

    void fill(const DecisionInput& input) {
        sensorIdx = input.sensorIdx;
        decisionType = input.decisionType;
        moduleId = input.moduleId;
    }
};

// An execution record as the recorder formats it; -1 for what is not known.
struct ResultParam {
    int32_t uniqueKey = -1;
    int32_t requestNo = -1;
    int32_t frameNo = -1;
    int32_t reserved = 0;
    int32_t sensorIdx = -1;
    DecisionType result = DECISION_ATMS_MAPPING;
    int32_t stage = -1;
    uint32_t moduleId = 0;
    bool appendToHeadline = false;

    void fill(const ExecResultInput& input) {
        sensorIdx = input.sensorIdx;
        moduleId = input.moduleId;
        result = input.result;
        stage = input.stage;
        appendToHeadline = input.appendToHeadline;
    }
};

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
        size_t producerWaits;     // times the service thread waited for a record still being copied
        size_t liveBuffers;       // record buffers allocated now, pooled or in use
        size_t peakBuffers;       // the most there ever were
        uint64_t droppedRecords;  // records refused at the memory bound
        uint64_t linesLost;       // lines of closed files that failed writes lost
    };

    // Sets the calling thread's nice value; returns 0 or a negative errno.
    using PrioritySetter = std::function<int(int niceValue)>;

    // The process uses the one instance of getInstance(); tests and benchmarks make their own.
    ScenarioRecorder();
    ~ScenarioRecorder() override;
    ScenarioRecorder(const ScenarioRecorder&) = delete;
    ScenarioRecorder& operator=(const ScenarioRecorder&) = delete;

    // Starts the service thread (nothing when it runs already); throws std::system_error
    // ("thread constructor failed") when no thread can be started. init and unInit may be called
    // from any thread, at the same time too.
    void init();
    // Stops the service thread after it has written every queued request. Requests still being
    // recorded are discarded, capture files bound to nothing written are closed (and removed
    // when empty), and until the next init every record is dropped.
    void unInit();
    bool isInitialised() const { return mInitialised.load(std::memory_order_acquire); }

    // Binds a request to a file while the recorder runs (nothing while it is stopped).
    void recordNddInfo(int uniqueKey, int requestNo, int third, bool isCapture) override;
    // The binding itself, whatever the state: tests and benchmarks prepare requests with it
    // before the service thread starts.
    void bindRequest(int uniqueKey, int requestNo, int third, bool isCapture);
    bool isScenarioRecorderOn() override { return mEnabled; }
    // Records are formatted and stored only while the recorder is initialised. The metadata
    // forms find the request through the dump framework, the key forms decode an NDD key.
    void submitDecisionRecord(const IMetadata* meta, const DecisionInput& input,
                              const char* text) override;
    void submitDecisionRecord(long long nddKey, const DecisionInput& input,
                              const char* text) override;
    void submitExecutionRecord(const IMetadata* meta, const ExecResultInput& input,
                               const char* text) override;
    void submitExecutionRecord(long long nddKey, const ExecResultInput& input,
                               const char* text) override;
    void submitDecisionRecord(const DecisionParam& param, const char* text);
    void submitExecutionRecord(const ResultParam& param, const char* text);
    // The request of `meta`; 0, or 1 (numbers left as they were) when it cannot be found.
    int queryNddInfo(const IMetadata* meta, int& uniqueKey, int& requestNo, int& frameNo);
    // The sensor device index of a sensor index; 0 when the sensor list is unavailable.
    int querySendorDevIdx(int sensorIndex);

    // Reserves a record of `size` bytes (header included) for request (uniqueKey, requestNo).
    // The caller copies its text to (*header)->text() and then calls finishLogSpace. A size
    // above the data area stops the process. False (nothing reserved) once unInit has run, until
    // the next init.
    bool allocLogSpace(int uniqueKey, int requestNo, unsigned size, LogHeader** header,
                       Buffer** buffer);
    // Ends a producer's work on a reserved record.
    void finishLogSpace(int uniqueKey, int requestNo, Buffer* buffer);
    // Stores one formatted line (cut to kMaxRecordText - 1 characters) for the request, and
    // appends ", <headlineText>" to the request's headline when headlineText is not null.
    // Returns false when the recorder is not initialised.
    bool submitRecordText(int uniqueKey, int requestNo, const char* text, const char* headlineText);
    // The same for a text of `length` characters, no terminator among them.
    bool submitRecordText(int uniqueKey, int requestNo, const char* text, size_t length,
                          const char* headlineText);
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
    // Moves every due request from the writing list to mToBeFlushed, and every capture request
    // whose life ended with nothing recorded to mIdleCaptures. Main lock held.
    void collectDueRequests();
    // Waits, in slices, until no producer is copying into the chain. Main lock held.
    void waitForProducers(std::unique_lock<std::mutex>& lock, Buffer* first);
    void writeOut(Buffer* first, bool endOfBatch);
    void removeCaptureWriter(int64_t key);
    // Closes and drops the capture writers of `keys` (requests whose life ended with nothing
    // recorded), removing their files when nothing was written to them.
    void dropIdleCaptureWriters(const std::vector<int64_t>& keys);
    // Takes a recycled buffer or makes a new one. Main lock held.
    // A fresh buffer counted in mLiveBuffers while it lives (the caller counts it in).
    BufferPtr newBuffer();
    // Counts a record refused at the memory bound, logging the first of a burst. Needs mLock.
    void dropAtBound(int uniqueKey, int requestNo);
    // Logs the end of a burst of drops, if one was going on. Needs mLock.
    void endDropBurst();
    // A buffer from `spares`, else from the pool. Called with mLock held.
    BufferPtr takeEmptyBuffer(std::vector<BufferPtr>& spares);
    // Requests being recorded, spread over shards by key so that producers recording different
    // requests take different locks. Lock order: mLock, then a shard's lock.
    struct alignas(64) ActiveShard {
        mutable std::mutex lock;
        std::unordered_map<int64_t, BufferPtr> requests;
    };
    static constexpr int kActiveShardBits = 4;
    ActiveShard& shardOf(int64_t key);
    // Reserves a record in the last buffer of an active request when it has room, under the
    // shard's lock alone. False when the main lock's path must decide.
    bool reserveInActive(ActiveShard& shard, int64_t key, uint32_t recordSize, LogHeader** header,
                         Buffer** buffer);
    // True while request `key` has a buffer being recorded into. Takes the shard's lock.
    bool isActive(int64_t key);
    // Buffers a record of `recordSize` bytes for request `key` takes that it does not hold yet
    // (0 to 2). Called with mLock and the shard's lock held.
    size_t buffersNeeded(const ActiveShard& shard, int64_t key, uint32_t recordSize) const;
    // Pools a written buffer; what the pool does not keep goes to `freed`, to be let go of
    // outside the main lock (a 256 KiB free may unmap memory). Main lock held.
    void recycle(BufferPtr buffer, std::vector<BufferPtr>* freed);
    // True while a producer is still copying into a buffer of the chain.
    static bool isBusy(const Buffer* first);

    // Guards the queues, the pool and the counters below; producers recording into a request
    // that has room take only its shard's lock (mActive).
    mutable std::mutex mLock;
    // Declared before the buffers so that it outlives them: each buffer counts itself out.
    std::atomic<size_t> mLiveBuffers{0};
    std::deque<BufferPtr> mToBeFlushed;
    std::deque<BufferPtr> mEmptyBuffers;
    ActiveShard mActive[size_t{1} << kActiveShardBits];
    // Discarded by unInit while a producer was still copying into them; freed later.
    std::vector<BufferPtr> mRetired;
    std::deque<int64_t> mWritingList;
    // Set by unInit, cleared by init, under mLock: reservations are refused while set.
    std::atomic<bool> mStopped{false};
    // Whether a drop burst is going on (mBurstDrops != 0), for producers outside mLock.
    std::atomic<bool> mDropping{false};
    // Capture requests found idle by collectDueRequests, for the service thread to drop.
    std::vector<int64_t> mIdleCaptures;
    // Serialises init and unInit as a whole.
    std::mutex mStartStopLock;
    std::mutex mLifeCycleLock;
    std::unordered_map<int64_t, std::unique_ptr<LifeCycleControl>> mLifeCycles;
    // Lets producers skip the life-cycle lock while no capture request is tracked.
    std::atomic<size_t> mLifeCycleCount{0};
    size_t mProducerWaits = 0;     // under mLock
    size_t mPeakBuffers = 0;       // under mLock
    size_t mMaxBuffers = 0;        // 0: no bound; set by init
    uint64_t mDroppedRecords = 0;  // under mLock
    uint64_t mBurstDrops = 0;      // of the burst going on, under mLock
    std::atomic<uint64_t> mLinesLost{0};
    std::atomic<bool> mRunning{false};
    std::condition_variable mWakeUp;
    std::condition_variable mProgress;  // signalled when the queues shrink
    std::mutex mWriterLock;
    std::unordered_map<int64_t, std::shared_ptr<FileWriter>> mCaptureWriters;
    // Set by unInit, cleared by init: a binding that lost the race with unInit opens nothing.
    bool mBindingClosed = false;
    std::atomic<bool> mInitialised{false};
    bool mEnabled;
    std::shared_ptr<FileWriter> mPreviewWriter;
    // Sensor device indices by sensor index, 0 until first asked.
    static constexpr int kCachedSensors = 32;
    std::atomic<int> mSensorDevCache[kCachedSensors] = {};
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
