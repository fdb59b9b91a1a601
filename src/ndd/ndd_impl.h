// Ndd: the one implementation of INdd.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "camtune/ndd.h"
#include "camtune/ndd_tables.h"
#include "ndd/config_table.h"
#include "ndd/dump_bytes.h"

namespace NSCam {
namespace TuningUtils {

// One pending dump: a copy of the bytes (of a raw buffer, or of an image's planes), what it is,
// and where it goes.
struct dumpInfo {
    DumpBytes data;
    eCategory category = eCategory_Capture;
    eModule module = eModule_AAHO;
    NddData ndd;
    std::string path;
};

class Ndd : public INdd {
public:
    // Writer threads beyond this many are not started.
    static constexpr int kMaxThreads = 16;
    // Highest feature index with a name.
    static constexpr int kMaxFeature = 52;

    static Ndd* getInstance();
    Ndd();
    // Stops the writers first (the process-wide instance is never destroyed).
    ~Ndd() override;

    // INdd
    void stream_on(std::vector<int> sensorIds, unsigned int uniqueKey) override;
    void stream_off(std::vector<int> sensorIds) override;
    void frame_begin(int sensorId, int frameNo) override;
    void frame_end(int sensorId, int frameNo) override;
    bool query_file_path(eCategory category, eModule module, NddData& data, char* out,
                         const char* file, int line) override;
    void submit_request(eCategory category, eModule module, NddData& data, const void* buffer,
                        int size, const char* file, int line) override;
    void submit_request(eCategory category, eModule module, NddData& data, IImageBuffer* image,
                        const char* file, int line) override;
    int is_enable_ndd() override;
    bool is_enable_dump(const NddData& data, eCategory category, eModule module) override;
    void notify_disable(NddData data, eCategory category, eModule module) override;
    int align_uniquekey(const IMetadata& in, IMetadata& out) override;
    int update_uniquekey(IMetadata& meta, int uniqueKey, int requestNo, int frameNo) override;
    int query_uniquekey(const IMetadata& meta, int& uniqueKey, int& requestNo,
                        int& frameNo) override;
    int query_uniquekey(long long key, int& uniqueKey, int& requestNo, int& frameNo) override;
    int query_ndd_info(const IMetadata& meta, eCategory& category, NddData& data) override;
    bool force_buffer_format(NddFormat& format) override;
    void force_frame_order(int sensorId, std::vector<unsigned int> order) override;
    void push_buffer(eCategory category, eModule module, NddData& data, void* buffer, int size,
                     IMetadata& meta, const char* file, int line) override;
    void dump_buffer(const IMetadata& meta) override;

    // Starts the writer threads (a no-op while running).
    void init();
    // Stops the writer threads once the queue is empty; NDD is disabled afterwards.
    void uninit();
    void parse_config(const std::string& path);
    void make_ndd_dir();
    bool is_ndd_data_valid(eCategory category, eModule module, const NddData& data);
    bool is_enable_dumpin(NddData& data, eCategory category, eModule module);
    bool is_filename_valid(eCategory category, eModule module, const NddData& data) const;
    std::string get_filename(eCategory category, eModule module, NddData& data,
                             IImageBuffer* image);
    void handleimgbuf(NddData& data, IImageBuffer* image);
    DumpBytes transfer(const void* buffer, int size);
    void consume_request(int index);
    bool dump_to_file(dumpInfo& info);
    void dump_info_scenario_recorder(const dumpInfo& info);
    void disabled_info_scenario_recorder(const NddData& data, eModule module);
    static long long compose_ndd_key(int uniqueKey, int requestNo, int frameNo);
    // The path of an admitted item; false (logged) when its name cannot be used.
    bool composePath(eCategory category, eModule module, NddData& data, IImageBuffer* image,
                     std::string* path);
    // Takes the on-device tuning identity of the item's frame, when a replay binds one.
    void applyOdtPrefix(NddData& data);

    // Observation for tests, tools and benchmarks.
    int64_t queuedSize() const { return mQueuedSize.load(); }
    // True while the queued copies hold more than `limited_size` bytes (never with no limit):
    // the caller then writes at once instead of queueing another copy.
    bool overByteLimit() const {
        const int64_t limit = mLimitedSize.load(std::memory_order_relaxed);
        return limit != 0 && mQueuedSize.load() > limit;
    }
    int64_t failedDumps() const { return mFailedDumps.load(); }
    // Writer threads running.
    int writerCount() const { return mThreadCount.load(); }
    bool isRunning() const { return mRunning.load(); }
    std::string dumpFolder() const;
    size_t configEntryCount() const;
    BufferPool& bufferPool() { return mPool; }
    // Test seam: paused writers leave queued items alone until resumed or until uninit.
    void setWritersPaused(bool paused);

private:
    // Per-sensor permission state, touched by frame_begin, frame_end, the admission check and
    // the stream calls from several pipeline threads.
    struct Permissions {
        std::unordered_set<int> sensors;
        std::unordered_map<int, std::unordered_set<int>> frames;
        std::unordered_map<int, int> previewCounters;
        std::string sensorText;  // last value taken from vendor.debug.ndd.sensor_dump
    };

    struct ConfigValues {
        int enable = 0;
        int dumpin = 0;
    };
    // The configured values (and, when asked, the format) of an item; false, values untouched,
    // when it has none. Allocates nothing unless a format is asked for.
    bool findConfig(const NddData& data, eCategory category, eModule module, ConfigValues* values,
                    std::string* format);
    // Queues a copied item for the writers, or writes it at once when they have stopped.
    void queueOrWrite(DumpBytes copy, eCategory category, eModule module, const NddData& data,
                      const std::string& path);
    // Sends an execution record for the item's key to the scenario recorder.
    void reportWritten(const NddData& data, const std::string& text);
    // Appends a written item to the sensor's on-device tuning dump-in file, when configured.
    void reportToOdt(eCategory category, eModule module, NddData& data, const std::string& path);
    // Writes `size` bytes to `path` on the calling thread, logging open failures with
    // `openFailedFormat`; counts a failure.
    bool writeNow(const std::string& path, const void* data, size_t size,
                  const char* openFailedFormat);
    bool writeImageNow(const std::string& path, IImageBuffer* image);
    // Copies every plane of `image` into one buffer; empty when the memory cannot be obtained.
    DumpBytes copyImage(IImageBuffer* image);
    void finishQueuedItem(dumpInfo& info);
    void publishQueuedSize();

    NddAutoGenExcel2C* const mTables;
    std::atomic<bool> mRunning{false};
    std::atomic<bool> mUseSubDir{false};
    std::atomic<bool> mDirectWrite{false};
    std::atomic<bool> mDebugging{false};
    std::atomic<bool> mGenConfig{false};
    std::atomic<int64_t> mQueuedSize{0};
    std::atomic<int64_t> mLimitedSize{0};
    std::atomic<int> mThreadCount{0};
    std::atomic<int> mPreviewCount{0};
    std::atomic<int> mActionFilter{-1};
    std::atomic<int64_t> mFailedDumps{0};

    // Serialises init and uninit as a whole, joins included.
    std::mutex mLifecycleLock;
    // Serialises stream_on and stream_off, and guards the queue.
    std::mutex mMainLock;
    std::condition_variable mQueueSignal;
    std::deque<dumpInfo> mQueue;
    bool mWritersPaused = false;
    int mSleepingWriters = 0;  // writers waiting without a time limit
    std::vector<std::thread> mWriters;

    std::mutex mPublishLock;  // orders the writes of vendor.debug.ndd.dump_size

    mutable std::mutex mConfigLock;
    ConfigTable mConfig;

    // Guards the dump folder, read by every submission.
    mutable std::mutex mFolderLock;
    std::string mDumpFolder;
    // When make_ndd_dir last found the folder (steady-clock ns); it looks again after a while,
    // so a folder removed during a stream comes back.
    std::atomic<int64_t> mFolderSeenAtNs{kFolderNeverSeen};
    static constexpr int64_t kFolderNeverSeen = INT64_MIN;

    std::mutex mPermissionLock;
    Permissions mPermissions;

    BufferPool mPool;
};

class NddInitializerImp {
public:
    NddInitializerImp();
    ~NddInitializerImp();
    NddInitializerImp(const NddInitializerImp&) = delete;
    NddInitializerImp& operator=(const NddInitializerImp&) = delete;
};

}  // namespace TuningUtils
}  // namespace NSCam
