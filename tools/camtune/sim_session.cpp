#include "sim_session.h"

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <mutex>
#include <sstream>
#include <thread>

#include "camtune/naming_vocabulary.h"
#include "camtune/ndd.h"
#include "camtune/odt.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/host_image_buffer.h"
#include "camtune/platform/metadata.h"
#include "camtune/platform/properties.h"
#include "camtune/scenario_recorder.h"
#include "ndd/ndd_impl.h"
#include "platform/host/root.h"
#include "platform/property_registry.h"
#include "recorder/scenario_recorder_impl.h"
#include "sim_pattern.h"

namespace camtune {
namespace sim {
namespace {

using namespace NSCam;
using namespace NSCam::TuningUtils;
using scenariorecorder::DecisionInput;
using scenariorecorder::ExecResultInput;
using scenariorecorder::IScenarioRecorder;
using scenariorecorder::ScenarioRecorder;
using Clock = std::chrono::steady_clock;

constexpr char kDumpRoot[] = "/data/vendor/camera_dump/";
constexpr char kLogFolder[] = "/data/vendor/camera_dump";
constexpr char kConfigDevicePath[] = "/data/vendor/camera_dump/ndd/ndd.cfg";
constexpr char kOdtDevicePath[] = "/data/vendor/camera_dump/odt/replay.cfg";
constexpr char kDumpinSuffix[] = "_dumpin.cfg";
constexpr char kLogSuffix[] = ".txt";

// Recorder module ids of the simulated nodes.
constexpr uint32_t kIspTuningModule = 0x801005;
constexpr uint32_t kP2StreamingModule = 0x404001;
constexpr uint32_t kP2CaptureModule = 0x402001;

// Sizes of the statistics and tables the simulated nodes dump.
constexpr int kAaoBytes = 64 * 1024;
constexpr int kLtmsoBytes = 32 * 1024;
constexpr int kLscBytes = 16 * 1024;
constexpr int kLtmOutBytes = 8 * 1024;
constexpr int kJpegBytes = 256 * 1024;

// A fixed pool of producer threads, the pipeline's nodes: run() hands out a batch of tasks and
// returns once all of them are done.
class ProducerPool {
public:
    explicit ProducerPool(int threads) {
        for (int i = 0; i < threads; ++i) mThreads.emplace_back([this] { loop(); });
    }
    ~ProducerPool() {
        {
            std::lock_guard<std::mutex> guard(mLock);
            mStopping = true;
        }
        mWork.notify_all();
        for (std::thread& thread : mThreads) thread.join();
    }

    void run(std::vector<std::function<void()>> tasks) {
        std::unique_lock<std::mutex> lock(mLock);
        mPending += tasks.size();
        for (auto& task : tasks) mTasks.push_back(std::move(task));
        mWork.notify_all();
        mDone.wait(lock, [this] { return mPending == 0; });
    }

private:
    void loop() {
        std::unique_lock<std::mutex> lock(mLock);
        for (;;) {
            mWork.wait(lock, [this] { return mStopping || !mTasks.empty(); });
            if (mTasks.empty()) return;
            std::function<void()> task = std::move(mTasks.back());
            mTasks.pop_back();
            lock.unlock();
            task();
            lock.lock();
            if (--mPending == 0) mDone.notify_all();
        }
    }

    std::mutex mLock;
    std::condition_variable mWork;
    std::condition_variable mDone;
    std::vector<std::function<void()>> mTasks;
    size_t mPending = 0;
    bool mStopping = false;
    std::vector<std::thread> mThreads;
};

// What was handed over, and which files must be on disk at the end.
// A long session checks the files already written this often, to keep its ledger short.
constexpr int kSettleEveryFrames = 256;

class Ledger {
public:
    void submitted(bool admitted, int64_t bytes) {
        std::lock_guard<std::mutex> guard(mLock);
        ++mSubmitted;
        if (admitted) {
            ++mAdmitted;
            mBytes += bytes;
        } else {
            ++mRefused;
        }
    }
    void expect(const std::string& path, int64_t size) {
        std::lock_guard<std::mutex> guard(mLock);
        mExpected.emplace_back(path, size);
        ++mExpectedCount;
    }
    void sampleQueue(int64_t queued) {
        std::lock_guard<std::mutex> guard(mLock);
        mHighWater = std::max(mHighWater, queued);
    }
    int64_t items() {
        std::lock_guard<std::mutex> guard(mLock);
        return mSubmitted;
    }
    int64_t bytes() {
        std::lock_guard<std::mutex> guard(mLock);
        return mBytes;
    }

    // Counts the expected files already on disk whole and forgets them, so a long session's
    // ledger holds only what the writers have not finished. The files are looked at without
    // the lock, which producers take for every item.
    void settle() {
        std::vector<std::pair<std::string, int64_t>> pending;
        {
            std::lock_guard<std::mutex> guard(mLock);
            pending.swap(mExpected);
        }
        int64_t whole = 0;
        auto unfinished = std::remove_if(pending.begin(), pending.end(), [&](const auto& item) {
            const bool done = isWhole(item.first, item.second);
            whole += done;
            return done;
        });
        pending.erase(unfinished, pending.end());
        std::lock_guard<std::mutex> guard(mLock);
        mWritten += whole;
        mExpected.insert(mExpected.end(), std::make_move_iterator(pending.begin()),
                         std::make_move_iterator(pending.end()));
    }

    void fill(SimResult* result) {
        std::lock_guard<std::mutex> guard(mLock);
        result->written = mWritten;
        result->submitted = mSubmitted;
        result->admitted = mAdmitted;
        result->refused = mRefused;
        result->bytes = mBytes;
        result->queueHighWater = mHighWater;
        for (const auto& [path, size] : mExpected) {
            if (isWhole(path, size)) {
                ++result->written;
            } else {
                ++result->failed;
                result->missing.push_back(path);
            }
        }
        // An admitted item NDD could not name has no path to look for.
        result->failed += mAdmitted - mExpectedCount;
    }

private:
    static bool isWhole(const std::string& path, int64_t size) {
        fs::FileInfo info;
        return fs::stat(path.c_str(), &info) == 0 && info.isRegular() &&
               info.size == static_cast<uint64_t>(size);
    }

    std::mutex mLock;
    int64_t mSubmitted = 0;
    int64_t mAdmitted = 0;
    int64_t mRefused = 0;
    int64_t mBytes = 0;
    int64_t mHighWater = 0;
    std::vector<std::pair<std::string, int64_t>> mExpected;  // not yet seen whole on disk
    int64_t mExpectedCount = 0;                              // every path NDD named
    int64_t mWritten = 0;                                    // seen whole by settle()
};

size_t imageBytes(const IImageBuffer& image) {
    size_t total = 0;
    for (size_t i = 0; i < image.getPlaneCount(); ++i) total += image.getBufSizeInBytes(i);
    return total;
}

// Copies a file of this machine to a device path under the root.
bool copyIn(const std::string& from, const char* to, std::string* error) {
    std::ifstream in(from, std::ios::binary);
    struct stat st;
    if (::stat(from.c_str(), &st) != 0 || !S_ISREG(st.st_mode) || !in) {
        *error = "cannot read " + from + ": " +
                 (::stat(from.c_str(), &st) == 0 && S_ISDIR(st.st_mode) ? "is a directory"
                                                                        : std::strerror(errno));
        return false;
    }
    std::ostringstream text;
    text << in.rdbuf();
    std::string folder(to);
    folder.erase(folder.rfind('/'));
    fs::makePath(folder.c_str(), 0777);
    std::unique_ptr<FILE, fs::FileCloser> out(fs::fopen(to, "wb"));
    const std::string bytes = text.str();
    if (!out || std::fwrite(bytes.data(), 1, bytes.size(), out.get()) != bytes.size()) {
        *error = std::string("cannot write ") + host::hostPath(to) + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

std::vector<std::string> filesEndingWith(const char* folder, const char* suffix) {
    std::vector<std::string> found;
    std::unique_ptr<DIR, fs::DirCloser> dir(fs::opendir(folder));
    if (!dir) return found;
    const size_t suffixLength = std::strlen(suffix);
    while (const char* name = fs::readdirName(dir.get())) {
        const size_t length = std::strlen(name);
        if (length > suffixLength && std::strcmp(name + length - suffixLength, suffix) == 0) {
            found.push_back(std::string(folder) + "/" + name);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

// One simulated stream.
class Session {
public:
    Session(const SimOptions& options, Ndd* ndd) : mOptions(options), mNdd(ndd) {}

    void runFrame(int frame, ScenarioRecorder* recorder) {
        const int request = frame;
        const bool capture = mOptions.captureEvery > 0 &&
                             frame % mOptions.captureEvery == mOptions.captureEvery - 1;
        recorder->recordNddInfo(static_cast<int>(mOptions.uniqueKey), request, 0, capture);
        const size_t sensors = mOptions.sensors.size();
        std::vector<IMetadata> metas(sensors);
        std::vector<NddData> carried(sensors);
        for (size_t i = 0; i < sensors; ++i) {
            const int sensor = mOptions.sensors[i];
            mNdd->frame_begin(sensor, frame);
            for (const auto& odt : mOdt) odt->frame_begin(static_cast<unsigned int>(frame));
            IMetadata& meta = metas[i];
            IMetadata::setEntry<int32_t>(&meta, kNddTagPipelineUniqueKey,
                                         static_cast<int32_t>(mOptions.uniqueKey));
            IMetadata::setEntry<int32_t>(&meta, kNddTagPipelineRequestNo, request);
            IMetadata::setEntry<int32_t>(&meta, kNddTagPipelineFrameNo, frame);
            IMetadata::setEntry<int32_t>(&meta, kNddTagStreamingFeature,
                                         NAMING_PIPE_SCENARIO_Preview);
            if (capture) {
                IMetadata::setEntry<int64_t>(&meta, kNddTagCaptureInfo,
                                             NAMING_PIPE_SCENARIO_Capture_default);
            }
        }

        // P1 nodes: statistics into the request's metadata, the capture's raw frame.
        std::vector<std::function<void()>> p1;
        for (size_t i = 0; i < sensors; ++i) {
            p1.push_back([this, i, frame, &metas, &carried] {
                NddData data = record(metas[i], mOptions.sensors[i], NAMING_STAGE_AFBLD_F0);
                std::vector<uint8_t> aao(kAaoBytes, static_cast<uint8_t>(frame));
                mNdd->push_buffer(eCategory_Streaming, eModule_AAO, data, aao.data(), kAaoBytes,
                                  metas[i], __FILE__, __LINE__);
                carried[i] = data;
                data.stage = NAMING_STAGE_P1;
                submitBytes(eCategory_Streaming, eModule_LTMSO, data, kLtmsoBytes, frame);
            });
            if (capture) {
                // Read before the tasks run: the statistics task writes this metadata meanwhile.
                NddData captured = record(metas[i], mOptions.sensors[i], NAMING_STAGE_P1);
                p1.push_back([this, frame, captured] {
                    NddData data = captured;
                    // The sensor's frame as the P1 node hands it over: a packed 10-bit image
                    // whose name carries its size, bit depth, Bayer order and padding.
                    auto raw = HostImageBuffer::create(
                            eImgFmt_BAYER10, MSize{mOptions.rawWidth, mOptions.rawHeight});
                    if (raw) {
                        fillPattern(*raw, static_cast<uint32_t>(frame));
                        submitImage(eCategory_Capture, eModule_IMGO, data, raw.get());
                    }
                    // The JPEG node offers its file too; the example configuration declines it.
                    data.stage = NAMING_STAGE_Default;
                    submitBytes(eCategory_Capture, eModule_JPG, data, kJpegBytes, frame);
                });
            }
        }
        mPool->run(std::move(p1));

        // P2 nodes: the carried statistics, tables, the image, the records.
        std::vector<std::function<void()>> p2;
        for (size_t i = 0; i < sensors; ++i) {
            p2.push_back([this, i, &metas, &carried] {
                NddData probe = carried[i];
                eCategory category;
                mNdd->query_ndd_info(metas[i], category, probe);
                expectCarried(probe);
                mNdd->dump_buffer(metas[i]);
            });
            p2.push_back([this, i, frame, &metas] {
                NddData data = record(metas[i], mOptions.sensors[i], NAMING_STAGE_AFBLD_F0);
                submitBytes(eCategory_Streaming, eModule_LSC, data, kLscBytes, frame);
                data.stage = NAMING_STAGE_P2_Single;
                submitBytes(eCategory_Streaming, eModule_LTM_OUT, data, kLtmOutBytes, frame);
            });
            p2.push_back([this, i, frame, capture, &metas] {
                const int sensor = mOptions.sensors[i];
                NddData data = record(metas[i], sensor, NAMING_STAGE_P2_Single);
                IImageBuffer* image = mImages[i].get();
                fillPattern(*image, static_cast<uint32_t>(frame));
                submitImage(capture ? eCategory_Capture : eCategory_Streaming, eModule_YUVO_R1,
                            data, image);
                auto* recorder = IScenarioRecorder::getInstance();
                DecisionInput decision;
                decision.sensorIdx = sensor;
                decision.moduleId = kIspTuningModule;
                decision.decisionType = scenariorecorder::DECISION_ISP_FLOW;
                recorder->submitDecisionRecord(&metas[i], decision,
                                               capture ? "profile=capture" : "profile=preview");
                ExecResultInput result;
                result.sensorIdx = sensor;
                result.moduleId = capture ? kP2CaptureModule : kP2StreamingModule;
                result.result = scenariorecorder::DECISION_ISP_FLOW;
                result.stage = NAMING_STAGE_P2_Single;
                result.appendToHeadline = capture;
                recorder->submitExecutionRecord(&metas[i], result,
                                                capture ? "capture done" : "frame done");
            });
        }
        mPool->run(std::move(p2));
        for (size_t i = 0; i < sensors; ++i) {
            for (const auto& odt : mOdt) odt->frame_end(static_cast<unsigned int>(frame));
            mNdd->frame_end(mOptions.sensors[i], frame);
        }
    }

    bool start(std::string* error) {
        for (int sensor : mOptions.sensors) {
            auto image = HostImageBuffer::create(findImageFormat(mOptions.format)->code,
                                                 MSize{mOptions.width, mOptions.height});
            if (!image) {
                *error = "cannot make a " + mOptions.format + " image of " +
                         std::to_string(mOptions.width) + "x" + std::to_string(mOptions.height);
                return false;
            }
            mImages.push_back(std::move(image));
            if (!mOptions.odtConfig.empty()) {
                auto odt = IOdtUtils::getInstance(static_cast<unsigned int>(sensor));
                odt->stream_on();
                mOdt.push_back(odt);
            }
        }
        mPool = std::make_unique<ProducerPool>(mOptions.producers);
        mNdd->stream_on(mOptions.sensors, mOptions.uniqueKey);
        return true;
    }

    void stop() {
        mPool.reset();
        mNdd->stream_off(mOptions.sensors);
        for (const auto& odt : mOdt) odt->stream_off();
    }

    Ledger& ledger() { return mLedger; }

private:
    NddData record(const IMetadata& meta, int sensor, int stage) {
        NddData data;
        eCategory category;
        mNdd->query_ndd_info(meta, category, data);
        data.sensorId = sensor;
        data.stage = stage;
        data.action = -1;
        return data;
    }

    // The path NDD will write an admitted item to, from the same state NDD decides by.
    bool admit(eCategory category, eModule module, const NddData& data, IImageBuffer* image,
               int64_t bytes) {
        const bool admitted = mNdd->is_ndd_data_valid(category, module, data);
        mLedger.submitted(admitted, bytes);
        if (!admitted) return false;
        NddData probe = data;
        mNdd->applyOdtPrefix(probe);
        if (image != nullptr) mNdd->handleimgbuf(probe, image);
        std::string path;
        if (mNdd->composePath(category, module, probe, image, &path)) {
            mLedger.expect(path, bytes);
        }
        return true;
    }

    void expectCarried(const NddData& data) {
        admit(eCategory_Streaming, eModule_AAO, data, nullptr, kAaoBytes);
    }

    void submit(eCategory category, eModule module, NddData data, const void* bytes, int size) {
        admit(category, module, data, nullptr, size);
        mNdd->submit_request(category, module, data, bytes, size, __FILE__, __LINE__);
        mLedger.sampleQueue(mNdd->queuedSize());
    }

    void submitBytes(eCategory category, eModule module, const NddData& data, int size, int frame) {
        std::vector<uint8_t> bytes(static_cast<size_t>(size), static_cast<uint8_t>(frame + module));
        submit(category, module, data, bytes.data(), size);
    }

    void submitImage(eCategory category, eModule module, NddData data, IImageBuffer* image) {
        admit(category, module, data, image, static_cast<int64_t>(imageBytes(*image)));
        mNdd->submit_request(category, module, data, image, __FILE__, __LINE__);
        mLedger.sampleQueue(mNdd->queuedSize());
    }

    const SimOptions& mOptions;
    Ndd* mNdd;
    Ledger mLedger;
    std::unique_ptr<ProducerPool> mPool;
    std::vector<std::unique_ptr<HostImageBuffer>> mImages;
    std::vector<std::shared_ptr<IOdtUtils>> mOdt;
};

void setProperties(const SimOptions& options) {
    props::set(props::kNddThreadCount, options.writers);
    props::set(props::kNddConfigPath, kConfigDevicePath);
    props::set(props::kNddRootPath, kDumpRoot);
    props::set(props::kNddSubdir, 1);
    props::set(props::kNddLimitedSize, static_cast<int32_t>(options.byteLimit));
    props::set(props::kNddDirectWrite, options.directWrite ? 1 : 0);
    props::set(props::kNddPreviewReady, options.frames);
    props::set(props::kNddGenConfig, 1);
    props::set(props::kRecorderFolder, kLogFolder);
    // Capture logs are written once their request has been quiet for a second.
    props::set(props::kRecorderFlushCapSec, 0);
    if (!options.odtConfig.empty()) {
        props::set(props::kOdtConfigPath, kOdtDevicePath);
        props::set(props::kOdtEnable, 1);
        props::set(props::kOdtStreaming, 1);
        props::set(props::kOdtStart, 1);
    }
    for (const auto& [key, value] : options.properties) {
        NSCam::Utils::Properties::property_set(key.c_str(), value.c_str());
    }
}

}  // namespace

bool runSession(const SimOptions& options, const std::function<void(const SimProgress&)>& progress,
                SimResult* result, std::string* error) {
    host::setRoot(options.root.c_str());
    if (fs::makePath(kLogFolder, 0777) != 0) {
        *error = "cannot make " + host::hostPath(kLogFolder) + ": " + std::strerror(errno);
        return false;
    }
    if (!copyIn(options.config, kConfigDevicePath, error)) return false;
    if (!options.odtConfig.empty() && !copyIn(options.odtConfig, kOdtDevicePath, error)) {
        return false;
    }
    setProperties(options);

    auto* recorder = static_cast<ScenarioRecorder*>(IScenarioRecorder::getInstance());
    recorder->init();
    Ndd* ndd = Ndd::getInstance();
    ndd->init();
    const Clock::time_point start = Clock::now();
    {
        Session session(options, ndd);
        if (!session.start(error)) {
            ndd->uninit();
            recorder->unInit();
            return false;
        }
        for (int frame = 0; frame < options.frames; ++frame) {
            if (options.fps > 0) {
                std::this_thread::sleep_until(
                        start + std::chrono::duration_cast<Clock::duration>(
                                        std::chrono::duration<double>(frame / options.fps)));
            }
            session.runFrame(frame, recorder);
            if ((frame + 1) % kSettleEveryFrames == 0) session.ledger().settle();
            if (progress) {
                const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
                progress(SimProgress{frame + 1, options.frames, session.ledger().items(),
                                     session.ledger().bytes(), seconds});
            }
        }
        session.stop();
        result->dumpFolder = ndd->dumpFolder();
        ndd->uninit();  // every queued item is on disk once this returns
        result->seconds = std::chrono::duration<double>(Clock::now() - start).count();
        result->frames = options.frames;
        session.ledger().fill(result);
    }
    recorder->waitUntilIdle(std::chrono::seconds(10));
    recorder->unInit();
    const ScenarioRecorder::Stats recorderStats = recorder->stats();
    result->recordsDropped = recorderStats.droppedRecords;
    result->linesLost = recorderStats.linesLost;
    result->logFiles = filesEndingWith(kLogFolder, kLogSuffix);
    result->dumpinFiles = filesEndingWith(kLogFolder, kDumpinSuffix);
    return true;
}

}  // namespace sim
}  // namespace camtune
