// Decision and execution records as the log files show them, and the recorder's life cycle.
#include <dirent.h>
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>

#include "camtune/ndd.h"
#include "camtune/platform/metadata.h"
#include "camtune/platform/sensor_list.h"
#include "camtune/platform/testing.h"
#include "recorder_fixture.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

using namespace testing_recorder;

constexpr uint32_t kIspTuning = 0x801005;
constexpr uint32_t kP2Capture = 0x402001;

DecisionInput decision(int sensorIdx, uint32_t moduleId, DecisionType type) {
    DecisionInput input;
    input.sensorIdx = sensorIdx;
    input.moduleId = moduleId;
    input.decisionType = type;
    return input;
}

ExecResultInput execution(int sensorIdx, uint32_t moduleId, DecisionType result, int stage,
                          bool headline = false) {
    ExecResultInput input;
    input.sensorIdx = sensorIdx;
    input.moduleId = moduleId;
    input.result = result;
    input.stage = stage;
    input.appendToHeadline = headline;
    return input;
}

// A running recorder with request (7, 21) bound to a capture file that is written once its
// life is moved past.
class RecordsTest : public RecorderTest {
protected:
    void SetUp() override {
        RecorderTest::SetUp();
        mProps.set(props::kRecorderFlushCapSec, 1);
    }

    // The lines of capture request (uniqueKey, requestNo) after its life is over.
    Strings captureLines(ScenarioRecorder& recorder, int uniqueKey, int requestNo) {
        camtune::clock::testing::advance(5);
        char part[32];
        std::snprintf(part, sizeof(part), "%09d_%04d_", uniqueKey, requestNo);
        EXPECT_TRUE(eventually([&] { return recorder.stats().active == 0; }));
        EXPECT_TRUE(recorder.waitUntilIdle(20s));
        return linesOf(part);
    }
};

TEST_F(RecordsTest, LinesReadAsTheirPartsSayAndExecutionsAppendToTheHeadline) {
    struct Case {
        bool execution;
        int sensorIdx, frameNo;  // frame -1: an execution found by request, without a frame
        uint32_t moduleId;
        int type, stage;
        bool headline;
        const char* text;
        const char* line;
    } cases[] = {
            {false, 0, 12, kIspTuning, DECISION_ISP_FLOW, 0, false, "profile=2",
             "[SensorDevName: main][FrameNum: 12][ModuleName: IspTuning][Decision: ISP_FLOW] "
             "profile=2"},
            {true, -1, -1, kP2Capture, DECISION_TOP_CONTROL, 46, true, "capture start",
             "[ModuleName: P2Capture][P2_MS_F0_H][Result: TOP_CONTROL] capture start"},
            {true, 1, 1, kP2Capture, DECISION_ISP_FLOW, 190, false, "s",
             "[SensorDevName: sub][FrameNum: 1][ModuleName: P2Capture][VAINR_CORE][Result: "
             "ISP_FLOW] s"},
            {true, -1, 1, kP2Capture, DECISION_ISP_FLOW, 191, true, "jpeg done",
             "[FrameNum: 1][ModuleName: P2Capture][INVALID_STAGE][Result: ISP_FLOW] jpeg done"},
            {true, -1, 1, kP2Capture, DECISION_ISP_FLOW, -2, false, "s",
             "[FrameNum: 1][ModuleName: P2Capture][INVALID_STAGE][Result: ISP_FLOW] s"},
            {true, -1, 1, kP2Capture, DECISION_ISP_FLOW, -1, false, "s",
             "[FrameNum: 1][ModuleName: P2Capture][INVALID_STAGE][Result: ISP_FLOW] s"},
            {false, -1, 3, 0x1004007, 9, 0, false, "u",
             "[FrameNum: 3][ModuleName: noModuleName][Decision: noDecisionName] u"},
            {false, 9, 3, 0x40007001, DECISION_TRIGGER_FEATURE, 0, false, "x",
             "[SensorDevName: sensor][FrameNum: 3][ModuleName: Utils][Decision: "
             "TRIGGER_FEATURE] x"},
    };
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(7, 21, 0, true);
    Strings expected{"[UKey: 7][ReqNum: 21], capture start, jpeg done"};
    for (const Case& c : cases) {
        const auto type = static_cast<DecisionType>(c.type);
        const long long key = composeNddKey(7, 21, c.frameNo);
        if (!c.execution) {
            recorder.submitDecisionRecord(key, decision(c.sensorIdx, c.moduleId, type), c.text);
        } else if (c.frameNo < 0) {
            ResultParam param;
            param.uniqueKey = 7;
            param.requestNo = 21;
            param.fill(execution(c.sensorIdx, c.moduleId, type, c.stage, c.headline));
            recorder.submitExecutionRecord(param, c.text);
        } else {
            recorder.submitExecutionRecord(
                    key, execution(c.sensorIdx, c.moduleId, type, c.stage, c.headline), c.text);
        }
        expected.push_back(c.line);
    }
    EXPECT_EQ(captureLines(recorder, 7, 21), expected);
}

TEST_F(RecordsTest, ALineIsCutAt1023Characters) {
    const std::string prefix = "[ModuleName: IspTuning][Decision: ISP_FLOW] ";
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(7, 21, 0, true);
    const size_t lengths[] = {1023 - prefix.size(), 1024 - prefix.size(), 5000};
    for (size_t length : lengths) {
        recorder.submitDecisionRecord(composeNddKey(7, 21, 0) & ~0xFFFFll,
                                      decision(-1, kIspTuning, DECISION_ISP_FLOW),
                                      std::string(length, 't').c_str());
    }
    Strings lines = captureLines(recorder, 7, 21);
    ASSERT_EQ(lines.size(), 4u);
    // Frame 0 is a frame like any other.
    const std::string whole = "[FrameNum: 0]" + prefix;
    for (size_t i = 1; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].size(), std::min<size_t>(1023, whole.size() + lengths[i - 1])) << i;
        EXPECT_EQ(lines[i].compare(0, whole.size(), whole), 0);
    }
}

TEST_F(RecordsTest, RequestsFoundByMetadataOrByNddKey) {
    ScenarioRecorder& recorder = start();
    IMetadata pipeline;
    IMetadata::setEntry<int32_t>(&pipeline, kNddTagPipelineUniqueKey, 11);
    IMetadata::setEntry<int32_t>(&pipeline, kNddTagPipelineRequestNo, 12);
    IMetadata::setEntry<int32_t>(&pipeline, kNddTagPipelineFrameNo, 13);
    IMetadata keyed;
    INdd::getInstance()->update_uniquekey(keyed, 11, 12, 14);
    recorder.recordNddInfo(11, 12, 0, true);
    recorder.recordNddInfo(-1, 0x8000, 0, true);
    recorder.recordNddInfo(-1, -1, 0, true);

    LogCapture log;
    const DecisionInput input = decision(-1, kIspTuning, DECISION_ISP_FLOW);
    recorder.submitDecisionRecord(&pipeline, input, "by pipeline tags");
    recorder.submitDecisionRecord(&keyed, input, "by key tag");
    // Bit 15 of the request number fills the key's upper half: unique key -1.
    recorder.submitDecisionRecord(composeNddKey(5, 0x8000, 2), input, "bit 15");
    recorder.submitExecutionRecord(nullptr, execution(-1, kIspTuning, DECISION_ISP_FLOW, -1),
                                   "no metadata");
    EXPECT_EQ(
            log.count(Level::Error, "[queryNddInfo] input metadata is nullptr, we can't parse key"),
            1);

    EXPECT_EQ(captureLines(recorder, 11, 12),
              (Strings{"[UKey: 11][ReqNum: 12]",
                       "[FrameNum: 13][ModuleName: IspTuning][Decision: ISP_FLOW] by pipeline tags",
                       "[FrameNum: 14][ModuleName: IspTuning][Decision: ISP_FLOW] by key tag"}));
    EXPECT_EQ(linesOf("-00000001_32768_"),
              (Strings{"[UKey: -1][ReqNum: 32768]",
                       "[FrameNum: 2][ModuleName: IspTuning][Decision: ISP_FLOW] bit 15"}));
    EXPECT_EQ(linesOf("-00000001_-001_"),
              (Strings{"[UKey: -1][ReqNum: -1]",
                       "[ModuleName: IspTuning][INVALID_STAGE][Result: ISP_FLOW] no metadata"}));
}

TEST_F(RecordsTest, WithoutASensorListTheSensorIsUnnamed) {
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(7, 21, 0, true);
    NSCam::host::setSensorListAvailable(false);
    LogCapture log;
    recorder.submitDecisionRecord(composeNddKey(7, 21, 1),
                                  decision(0, kIspTuning, DECISION_ISP_FLOW), "t");
    NSCam::host::setSensorListAvailable(true);
    EXPECT_EQ(log.count(Level::Error, "[querySendorDevIdx] pIHalSensorList is nullptr"), 1);
    EXPECT_EQ(captureLines(recorder, 7, 21).at(1),
              "[SensorDevName: sensor][FrameNum: 1][ModuleName: IspTuning][Decision: ISP_FLOW] t");
}

TEST_F(RecordsTest, RecordsWhileStoppedAreDropped) {
    ScenarioRecorder& recorder = make();
    const long long key = composeNddKey(7, 21, 1);
    const DecisionInput input = decision(-1, kIspTuning, DECISION_ISP_FLOW);
    recorder.recordNddInfo(7, 21, 0, true);  // not bound: nothing runs to write or close it
    recorder.submitDecisionRecord(key, input, "before init");
    EXPECT_TRUE(logFiles().empty());
    EXPECT_EQ(recorder.stats().active, 0u);

    recorder.init();
    recorder.recordNddInfo(7, 21, 0, true);
    recorder.submitDecisionRecord(key, input, "while running");
    recorder.unInit();
    recorder.submitDecisionRecord(key, input, "after unInit");
    recorder.submitExecutionRecord(nullptr, execution(-1, 0, DECISION_ISP_FLOW, -1), "none");
    EXPECT_FALSE(recorder.submitRecordText(7, 21, "text after unInit", nullptr));
    const ScenarioRecorder::Stats stats = recorder.stats();
    EXPECT_EQ(stats.active + stats.writingList + stats.toBeFlushed, 0u);
    // The request still being recorded was discarded, and its empty file with it.
    EXPECT_TRUE(logFiles().empty());
}

// Threads start and stop the recorder while producers record: no crash, no race, and once
// stopped nothing is held that a later start would write.
TEST_F(RecordsTest, StartAndStopFromManyThreadsWhileProducersRecord) {
    ScenarioRecorder& recorder = start();
    std::atomic<bool> done{false};
    std::vector<std::thread> threads;
    for (int p = 0; p < 3; ++p) {
        threads.emplace_back([&, p] {
            for (int i = 0; !done.load(); ++i) {
                recorder.recordNddInfo(1, 0, 0, false);
                recorder.submitDecisionRecord(composeNddKey(1, i % 50, p),
                                              decision(-1, kIspTuning, DECISION_ISP_FLOW), "r");
            }
        });
    }
    std::vector<std::thread> switchers;
    for (int s = 0; s < 2; ++s) {
        switchers.emplace_back([&] {
            for (int i = 0; i < 100; ++i) {
                recorder.init();
                recorder.unInit();
            }
        });
    }
    for (std::thread& t : switchers) t.join();
    recorder.unInit();
    const ScenarioRecorder::Stats stopped = recorder.stats();
    EXPECT_EQ(stopped.active + stopped.writingList + stopped.toBeFlushed, 0u);
    done.store(true);
    for (std::thread& t : threads) t.join();
    const ScenarioRecorder::Stats after = recorder.stats();
    EXPECT_EQ(after.active + after.writingList + after.toBeFlushed, 0u);

    // After a restart the preview file gains the new request's lines and nothing older.
    const std::string preview = fileOf("preview");
    const std::string before = mRoot.readFile(preview);
    recorder.init();
    recorder.submitDecisionRecord(composeNddKey(2, 0, 0),
                                  decision(-1, kIspTuning, DECISION_ISP_FLOW), "unbound");
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    recorder.unInit();
    EXPECT_EQ(mRoot.readFile(preview),
              before + "[UKey: 2][ReqNum: 0]\n"
                       "[FrameNum: 0][ModuleName: IspTuning][Decision: ISP_FLOW] unbound\n");
}

int openDescriptors() {
    int count = 0;
    if (DIR* dir = ::opendir("/proc/self/fd")) {
        while (::readdir(dir) != nullptr) ++count;
        ::closedir(dir);
    }
    return count;
}

TEST_F(RecordsTest, CapturesThatRecordNothingCloseAndRemoveTheirFileAfterTheirLife) {
    ScenarioRecorder& recorder = start();
    const int before = openDescriptors();
    int uniqueKey = 100;
    for (int round = 0; round < 4; ++round) {
        for (int i = 0; i < 500; ++i) recorder.recordNddInfo(uniqueKey++, i, 0, true);
        EXPECT_GE(openDescriptors(), before + 500);
        camtune::clock::testing::advance(2);
        ASSERT_TRUE(eventually([&] { return openDescriptors() <= before; })) << round;
        EXPECT_TRUE(logFiles().empty());
    }
    // A capture that did record keeps its file.
    recorder.recordNddInfo(9, 9, 0, true);
    recorder.submitDecisionRecord(composeNddKey(9, 9, 0),
                                  decision(-1, kIspTuning, DECISION_ISP_FLOW), "kept");
    EXPECT_EQ(captureLines(recorder, 9, 9).size(), 2u);
}

// A dump session: every written file and every skipped item is one execution line in the log of
// the request it belongs to.
TEST_F(RecordsTest, NddDumpsAndSkipsAreRecordedInTheirRequestsLog) {
    auto* recorder = static_cast<ScenarioRecorder*>(IScenarioRecorder::getInstance());
    recorder->init();
    recorder->recordNddInfo(1234, 5, 0, true);
    const std::string config = "/data/vendor/camera_dump/ndd/ndd.cfg";
    mRoot.writeFile(config, "Preview,Default,[Prefix][UserStr],Capture,AAO,1,0\n");
    mProps.set(props::kNddThreadCount, std::string("2"));
    mProps.set(props::kNddConfigPath, config);
    mProps.set(props::kNddRootPath, std::string("/data/vendor/camera_dump/"));
    mProps.set(props::kNddSensorDump, std::string("0"));
    {
        NddInitializer ndd;
        INdd* instance = INdd::getInstance();
        instance->stream_on({0}, 1234);
        NddData data;
        data.uniqueKey = 1234;
        data.requestNo = 5;
        data.action = -1;
        for (int frame = 1; frame <= 3; ++frame) {
            data.frameNo = frame;
            data.userStr = "f" + std::to_string(frame);
            instance->submit_request(eCategory_Capture, eModule_AAO, data, "bytes", 5, __FILE__,
                                     __LINE__);
        }
        data.frameNo = 4;
        instance->notify_disable(data, eCategory_Capture, eModule_AAO);
        instance->stream_off({0});
    }  // NDD stops once every file is written
    Strings lines = captureLines(*recorder, 1234, 5);
    recorder->unInit();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines[0], "[UKey: 1234][ReqNum: 5]");
    const std::string head = "[SensorDevName: main][FrameNum: ";
    const std::string tail = "][ModuleName: Utils][Default][Result: NORMAL_DATA_DUMP] ";
    const std::string folder = "/data/vendor/camera_dump/default_dump/000001234-0005-000";
    EXPECT_EQ(std::multiset<std::string>(lines.begin() + 1, lines.end()),
              (std::multiset<std::string>{
                      head + "1" + tail + folder + "1-f1", head + "2" + tail + folder + "2-f2",
                      head + "3" + tail + folder + "3-f3", head + "4" + tail + "skip AAO"}));
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
