// The service thread: when requests are written, where, and how the thread's priority moves.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <mutex>
#include <regex>
#include <string>
#include <vector>

#include "recorder/scenario_recorder_impl.h"
#include "recorder_test_util.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

using camtune::log::Level;
using camtune::test::eventually;
using camtune::test::kLogFolder;
using camtune::test::LogCapture;
using Strings = std::vector<std::string>;
using namespace std::chrono_literals;

class ServiceThreadTest : public camtune::test::RecorderFixture {
protected:
    void SetUp() override {
        RecorderFixture::SetUp();
        mProps.set(camtune::props::kRecorderFlushMs, 2);
    }
    void TearDown() override {
        if (mRecorder) mRecorder->unInit();
    }

    ScenarioRecorder& start() {
        make().init();
        return *mRecorder;
    }

    // A recorder whose thread is not running yet.
    ScenarioRecorder& make() {
        mRecorder = std::make_unique<ScenarioRecorder>();
        mRecorder->setPrioritySetter([this](int nice) {
            std::lock_guard<std::mutex> guard(mNiceLock);
            mNiceValues.push_back(nice);
            return mNiceResult;
        });
        return *mRecorder;
    }

    // The one file whose name contains `kind`, as a device path.
    std::string fileOf(const std::string& kind) const {
        std::string found;
        for (const auto& name : filesIn(kLogFolder)) {
            if (name.find(kind) != std::string::npos) {
                EXPECT_TRUE(found.empty()) << "two files for " << kind;
                found = std::string(kLogFolder) + "/" + name;
            }
        }
        return found;
    }

    struct Held {
        int uniqueKey, requestNo;
        ScenarioRecorder::Buffer* buffer;
        LogHeader* header;
    };

    // Leaves a record of (uniqueKey, requestNo) unfinished until the service thread has taken
    // its request and waits for it; records made meanwhile are written in the next batch.
    Held hold(ScenarioRecorder& recorder, int uniqueKey, int requestNo) {
        Held held{uniqueKey, requestNo, nullptr, nullptr};
        recorder.allocLogSpace(uniqueKey, requestNo, 64, &held.header, &held.buffer);
        EXPECT_TRUE(camtune::test::eventually([&] { return recorder.stats().toBeFlushed == 1; }));
        return held;
    }

    void release(ScenarioRecorder& recorder, const Held& held) {
        std::snprintf(held.header->text(), held.header->textCapacity(), "held");
        recorder.finishLogSpace(held.uniqueKey, held.requestNo, held.buffer);
    }

    std::vector<int> niceValues() {
        std::lock_guard<std::mutex> guard(mNiceLock);
        return mNiceValues;
    }

    std::unique_ptr<ScenarioRecorder> mRecorder;
    std::mutex mNiceLock;
    std::vector<int> mNiceValues;
    int mNiceResult = 0;
};

TEST_F(ServiceThreadTest, PreviewRequestIsWrittenWithItsHeadlineFirst) {
    LogCapture log;
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(7, 21, 3, false);
    // Both records must reach the same batch, so the thread is kept busy meanwhile.
    Held held = hold(recorder, 7, 20);
    ASSERT_TRUE(recorder.submitRecordText(7, 21, "capture start record", "capture start"));
    ASSERT_TRUE(recorder.submitRecordText(7, 21, "jpeg done record", "jpeg done"));
    release(recorder, held);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));

    std::string file = fileOf("preview");
    EXPECT_TRUE(std::regex_match(file,
                                 std::regex("/data/vendor/camera_dump/000000007_0021_0003_preview__"
                                            "[0-9]{4}_[0-9]{4}_[0-9]{6}_TuningLog_01\\.txt")))
            << file;
    EXPECT_EQ(mRoot.readFile(file),
              "[UKey: 7][ReqNum: 20]\nheld\n"
              "[UKey: 7][ReqNum: 21], capture start, jpeg done\n"
              "capture start record\njpeg done record\n");
    auto stats = recorder.stats();
    EXPECT_EQ(stats.active, 0u);
    EXPECT_EQ(stats.emptyBuffers, 2u);
    EXPECT_EQ(log.count(Level::Info,
                        "[serviceThreadEntry] ScenarioRecorder is running; flushInterval = 2 ms"),
              1);
}

TEST_F(ServiceThreadTest, PreviewRequestsShareAFileUntilTheUniqueKeyChanges) {
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(1, 1, 0, false);
    recorder.submitRecordText(1, 1, "one", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    recorder.recordNddInfo(1, 2, 0, false);  // same unique key: same file
    recorder.submitRecordText(1, 2, "two", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    ASSERT_EQ(filesIn(kLogFolder).size(), 1u);
    std::string firstFile = fileOf("000000001_0001_0000_preview");
    EXPECT_EQ(mRoot.readFile(firstFile), "[UKey: 1][ReqNum: 1]\none\n[UKey: 1][ReqNum: 2]\ntwo\n");

    recorder.recordNddInfo(2, 5, 0, false);
    recorder.submitRecordText(2, 5, "three", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_EQ(mRoot.readFile(fileOf("000000002_0005_0000_preview")),
              "[UKey: 2][ReqNum: 5]\nthree\n");
    EXPECT_EQ(mRoot.readFile(firstFile), "[UKey: 1][ReqNum: 1]\none\n[UKey: 1][ReqNum: 2]\ntwo\n");
}

TEST_F(ServiceThreadTest, CaptureRequestGetsItsOwnFileOnceItsLifeIsOver) {
    LogCapture log;
    mProps.set(camtune::props::kRecorderFlushCapSec, 0);
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(9, 4, 1, true);
    recorder.submitRecordText(9, 4, "shot", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_EQ(mRoot.readFile(fileOf("000000009_0004_0001_capture")),
              "[UKey: 9][ReqNum: 4]\nshot\n");
    EXPECT_EQ(log.count(Level::Info, "[serviceThreadEntry] Remove fileWriter key(589828)"), 1);
}

TEST_F(ServiceThreadTest, CaptureIsKeptWhilePreviewIsWrittenAtOnce) {
    mProps.set(camtune::props::kRecorderFlushCapSec, 3600);
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(3, 1, 0, true);
    recorder.recordNddInfo(3, 2, 0, false);
    recorder.submitRecordText(3, 1, "capture line", nullptr);
    recorder.submitRecordText(3, 2, "preview line", nullptr);
    std::string preview = fileOf("preview");
    ASSERT_TRUE(eventually(
            [&] { return mRoot.readFile(preview) == "[UKey: 3][ReqNum: 2]\npreview line\n"; }));
    auto stats = recorder.stats();
    EXPECT_EQ(stats.active, 1u);
    EXPECT_EQ(stats.writingList, 1u);
    std::string capture = fileOf("capture");
    EXPECT_EQ(mRoot.readFile(capture), "");
    // Stopping discards what is still being recorded.
    recorder.unInit();
    EXPECT_EQ(mRoot.readFile(capture), "");
    EXPECT_EQ(recorder.stats().active, 0u);
    EXPECT_FALSE(recorder.isInitialised());
}

TEST_F(ServiceThreadTest, ChainedBuffersWriteAllHeadlinesOnTheFirstLine) {
    // Recorded before the thread starts, so the whole chain is written in one go.
    ScenarioRecorder& recorder = make();
    recorder.recordNddInfo(1, 2, 0, false);
    auto add = [&](const std::string& text, const char* headline) {
        ScenarioRecorder::Buffer* buffer = nullptr;
        LogHeader* header = nullptr;
        recorder.allocLogSpace(1, 2, static_cast<unsigned>(24 + text.size() + 1), &header, &buffer);
        std::memcpy(header->text(), text.c_str(), text.size() + 1);
        if (headline)
            ScenarioRecorder::writeStringToHeadline(buffer, headline, std::strlen(headline));
        recorder.finishLogSpace(1, 2, buffer);
        return buffer;
    };
    Strings expected{"[UKey: 1][ReqNum: 2], first, second, third", "line 0"};
    ScenarioRecorder::Buffer* first = add(expected.back(), ", first");
    for (int i = 1; i < 1000; ++i) {
        expected.push_back("line " + std::to_string(i) + " " + std::string(995, 'b'));
        if (add(expected.back(), nullptr) != first) break;
    }
    ASSERT_EQ(first->sealed.load(), 1);
    ASSERT_EQ(first->successor->successor, nullptr);
    expected.push_back("in the successor");
    add(expected.back(), ", second");
    // The third buffer of the chain.
    for (int i = 0; first->successor->successor == nullptr; ++i) {
        expected.push_back("more " + std::to_string(i) + " " + std::string(995, 'c'));
        add(expected.back(), nullptr);
    }
    expected.push_back("in the third");
    add(expected.back(), ", third");

    recorder.init();
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_EQ(splitLines(mRoot.readFile(fileOf("preview"))), expected);
    EXPECT_EQ(recorder.stats().emptyBuffers, 3u);
}

TEST_F(ServiceThreadTest, RequestWithoutFileIsDroppedWithAnError) {
    LogCapture log;
    ScenarioRecorder& recorder = start();
    recorder.submitRecordText(4, 4, "no file bound", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_EQ(log.count(Level::Error,
                        "[serviceThreadEntry] Unable to open file. Please disable SELinux and "
                        "restart camerahalserver. !!!"),
              1);
    EXPECT_TRUE(filesIn(kLogFolder).empty());
    EXPECT_EQ(recorder.stats().emptyBuffers, 1u);
}

TEST_F(ServiceThreadTest, LongQueueBoostsTheThreadWhichStepsBackWhenIdle) {
    // A refused priority is logged once and changes nothing else.
    for (int result : {0, -EPERM}) {
        SCOPED_TRACE(result);
        LogCapture log;
        mNiceValues.clear();
        mNiceResult = result;
        ScenarioRecorder& recorder = start();
        recorder.recordNddInfo(5, 0, 0, false);
        // Eleven requests pile up while the thread waits on an unfinished record.
        Held held = hold(recorder, 5, 0);
        for (int request = 1; request <= 11; ++request) {
            recorder.submitRecordText(5, request, "x", nullptr);
        }
        release(recorder, held);
        ASSERT_TRUE(recorder.waitUntilIdle(20s));
        const std::vector<int> expected{19, -4, 0, 10, 19};
        ASSERT_TRUE(eventually([&] { return niceValues().size() >= expected.size(); }));
        EXPECT_EQ(niceValues(), expected);
        EXPECT_EQ(splitLines(mRoot.readFile(fileOf("preview"))).size(), 24u);
        EXPECT_EQ(log.count(Level::Warn,
                            "[setNice] Cannot set nice value 19 (errno = " + std::to_string(EPERM) +
                                    "); keeping the current priority"),
                  result < 0 ? 1 : 0);
        EXPECT_EQ(log.countContaining("Cannot set nice value"), result < 0 ? 1 : 0);
        recorder.unInit();
        std::filesystem::remove(mRoot.hostPath(fileOf("preview")));
    }
}

TEST_F(ServiceThreadTest, StopDiscardsActiveRequestsAndCanRestart) {
    LogCapture log;
    mProps.set(camtune::props::kRecorderFlushMs, 100000);
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(8, 1, 0, false);
    recorder.submitRecordText(8, 1, "never written", nullptr);
    recorder.unInit();
    EXPECT_EQ(mRoot.readFile(fileOf("preview")), "");
    EXPECT_EQ(log.count(Level::Verbose, "[unInit] unInit"), 1);
    EXPECT_EQ(log.count(Level::Info, "[serviceThreadEntry] Scenario recorder stopped"), 1);
    EXPECT_FALSE(recorder.submitRecordText(8, 1, "after stop", nullptr));
    // A stopped recorder starts again.
    mProps.set(camtune::props::kRecorderFlushMs, 2);
    recorder.init();
    recorder.submitRecordText(8, 2, "again", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_EQ(mRoot.readFile(fileOf("preview")), "[UKey: 8][ReqNum: 2]\nagain\n");
}

TEST_F(ServiceThreadTest, StopLeavesABufferValidForAProducerStillCopying) {
    mProps.set(camtune::props::kRecorderFlushMs, 100000);
    ScenarioRecorder& recorder = start();
    ScenarioRecorder::Buffer* buffer = nullptr;
    LogHeader* header = nullptr;
    recorder.allocLogSpace(6, 1, 200, &header, &buffer);
    recorder.unInit();
    EXPECT_EQ(recorder.stats().active, 0u);
    // The producer finishes after the stop; its buffer must still be there (checked by ASan).
    std::memset(header->text(), 'x', header->textCapacity());
    recorder.finishLogSpace(6, 1, buffer);
    EXPECT_EQ(buffer->pendingWriters.load(), 0u);
}

TEST_F(ServiceThreadTest, InitializerStartsTheProcessRecorderOnlyWhenEnabled) {
    ScenarioRecorder* instance = static_cast<ScenarioRecorder*>(IScenarioRecorder::getInstance());
    ASSERT_EQ(instance, IScenarioRecorder::getInstance());
    for (int enable : {0, 2, 1}) {
        camtune::test::PropertyScope props;
        props.set(camtune::props::kRecorderEnable, enable);
        {
            ScenarioRecorderInitializerImpl initializer;
            EXPECT_EQ(initializer.started(), enable == 1);
            EXPECT_EQ(instance->isInitialised(), enable == 1);
        }
        EXPECT_FALSE(instance->isInitialised());
    }
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
