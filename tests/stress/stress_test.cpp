// NDD and the scenario recorder under load, with their switches changing while frames run:
// 2 sensors, 4 producer threads, 3 writer threads. Afterwards every admitted item is a file with
// its bytes, every record is a line of the log exactly once, and memory is back where it was.
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "ndd/ndd_impl.h"
#include "recorder/scenario_recorder_impl.h"
#include "support/property_scope.h"
#include "support/temp_root.h"

namespace NSCam {
namespace TuningUtils {
namespace {

namespace props = camtune::props;
using scenariorecorder::ScenarioRecorder;

constexpr int kSensors[] = {0, 1};
constexpr int kProducers = 4;
constexpr int kFrames = 200;
constexpr int kItemBytes = 4096;
constexpr int kUniqueKey = 1234;
constexpr char kConfigPath[] = "/data/vendor/camera_dump/ndd/ndd.cfg";
constexpr char kConfig[] = "Preview,Default,[Prefix][UserStr],Streaming,AAO,1,0\n";
constexpr char kLogFolder[] = "/data/vendor/camera_dump/log";

// Resident memory of this process in KiB (0 when it cannot be read).
long residentKiB() {
    long pages = 0;
    long resident = 0;
    FILE* statm = std::fopen("/proc/self/statm", "r");
    if (statm == nullptr) return 0;
    const bool read = std::fscanf(statm, "%ld %ld", &pages, &resident) == 2;
    std::fclose(statm);
    return read ? resident * (::sysconf(_SC_PAGESIZE) / 1024) : 0;
}

bool sanitized() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    return true;
#endif
#endif
    return false;
}

std::string itemBytes(int sensor, int producer, int frame) {
    std::string bytes(kItemBytes,
                      static_cast<char>('a' + (sensor * 7 + producer * 3 + frame) % 26));
    std::snprintf(&bytes[0], bytes.size(), "s%d p%d f%d", sensor, producer, frame);
    return bytes;
}

// Lets the frame thread and the producers take turns: one frame at a time.
class FrameGate {
public:
    void open(int frame) {
        std::lock_guard<std::mutex> guard(mLock);
        mFrame = frame;
        mDone = 0;
        mChanged.notify_all();
    }
    // Waits for a frame after `last`; -1 once the run is over.
    int next(int last) {
        std::unique_lock<std::mutex> lock(mLock);
        mChanged.wait(lock, [&] { return mFrame != last; });
        return mFrame;
    }
    void finished() {
        std::lock_guard<std::mutex> guard(mLock);
        ++mDone;
        mChanged.notify_all();
    }
    void waitForProducers() {
        std::unique_lock<std::mutex> lock(mLock);
        mChanged.wait(lock, [&] { return mDone == kProducers; });
    }

private:
    std::mutex mLock;
    std::condition_variable mChanged;
    int mFrame = -2;
    int mDone = 0;
};

struct Expected {
    std::mutex lock;
    std::map<std::string, std::string> files;  // host path -> bytes
    std::vector<std::string> records;
};

TEST(Stress, SwitchesChangingWhileFramesRunLoseNothing) {
    camtune::test::TempRoot root;
    camtune::test::PropertyScope properties;
    properties.set(props::kNddThreadCount, std::string("3"));
    properties.set(props::kNddConfigPath, std::string(kConfigPath));
    properties.set(props::kNddSensorDump, std::string("0"));
    properties.set(props::kNddPreviewReady, 0);
    properties.set(props::kNddLimitedSize, 0);
    properties.set(props::kRecorderFolder, std::string(kLogFolder));
    properties.set(props::kRecorderFlushMs, 1);
    root.writeFile(kConfigPath, kConfig);

    const long before = residentKiB();
    Expected expected;
    {
        auto ndd = std::make_unique<Ndd>();
        auto recorder = std::make_unique<ScenarioRecorder>();
        recorder->init();
        recorder->recordNddInfo(kUniqueKey, 0, 0, false);
        ndd->init();
        ndd->stream_on({0, 1}, kUniqueKey);

        std::atomic<bool> running{true};
        std::thread changer([&] {
            const char* sensorTexts[] = {"0", "1", "-0", "-1", "1", "0"};
            for (int turn = 0; running.load(); ++turn) {
                props::set(props::kNddSensorDump, sensorTexts[turn % 6]);
                props::set(props::kNddPreviewReady, turn % 3 == 0 ? 0 : 2 + turn % 5);
                props::set(props::kNddLimitedSize, turn % 2 == 0 ? 0 : 3 * kItemBytes);
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            }
        });

        FrameGate gate;
        std::vector<std::thread> producers;
        for (int p = 0; p < kProducers; ++p) {
            producers.emplace_back([&, p] {
                for (int frame = gate.next(-2); frame >= 0; frame = gate.next(frame)) {
                    for (int sensor : kSensors) {
                        NddData data;
                        data.uniqueKey = kUniqueKey;
                        data.requestNo = frame;
                        data.frameNo = frame;
                        data.sensorId = sensor;
                        data.userStr = "s" + std::to_string(sensor) + "p" + std::to_string(p);
                        const std::string bytes = itemBytes(sensor, p, frame);
                        char path[kNddPathMax] = {};
                        // Admission is settled by frame_begin, which waits for this frame.
                        const bool admitted =
                                ndd->is_ndd_data_valid(eCategory_Streaming, eModule_AAO, data) &&
                                ndd->query_file_path(eCategory_Streaming, eModule_AAO, data, path,
                                                     __FILE__, __LINE__);
                        ndd->submit_request(eCategory_Streaming, eModule_AAO, data, bytes.data(),
                                            kItemBytes, __FILE__, __LINE__);
                        const std::string record = "record " + std::string(bytes.c_str());
                        recorder->submitRecordText(kUniqueKey, frame, record.c_str(), nullptr);
                        std::lock_guard<std::mutex> guard(expected.lock);
                        if (admitted) expected.files[root.hostPath(path)] = bytes;
                        expected.records.push_back(record);
                    }
                    gate.finished();
                }
            });
        }
        for (int frame = 0; frame < kFrames; ++frame) {
            for (int sensor : kSensors) ndd->frame_begin(sensor, frame);
            gate.open(frame);
            gate.waitForProducers();
            for (int sensor : kSensors) ndd->frame_end(sensor, frame);
        }
        gate.open(-1);
        for (std::thread& producer : producers) producer.join();
        running.store(false);
        changer.join();

        ndd->stream_off({0, 1});
        ndd->uninit();  // every admitted item is on disk once this returns
        ASSERT_TRUE(recorder->waitUntilIdle(std::chrono::seconds(60)));
        recorder->unInit();
        EXPECT_EQ(ndd->failedDumps(), 0);
        EXPECT_EQ(recorder->stats().droppedRecords, 0u);
    }

    EXPECT_GT(expected.files.size(), 0u) << "the switches admitted nothing: the test saw no load";
    for (const auto& [path, bytes] : expected.files) {
        std::ifstream in(path, std::ios::binary);
        std::stringstream content;
        content << in.rdbuf();
        ASSERT_EQ(content.str(), bytes) << path;
    }
    std::map<std::string, int> lines;
    for (const auto& entry : std::filesystem::directory_iterator(root.hostPath(kLogFolder))) {
        std::ifstream in(entry.path());
        for (std::string line; std::getline(in, line);) ++lines[line];
    }
    for (const std::string& record : expected.records) EXPECT_EQ(lines[record], 1) << record;

    // Measured where it means something: sanitizers keep freed memory in quarantine.
    const long after = residentKiB();
    if (!sanitized() && before > 0) {
        EXPECT_LT(after - before, 32 * 1024)
                << "resident " << before << " KiB before, " << after << " KiB after";
    }
}

}  // namespace
}  // namespace TuningUtils
}  // namespace NSCam
