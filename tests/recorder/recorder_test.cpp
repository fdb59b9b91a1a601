// The scenario recorder: its log files, its request buffers and the service thread writing them.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <map>
#include <mutex>
#include <regex>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>
#include <tuple>
#include <vector>

#include "camtune/platform/fs.h"
#include "camtune/platform/testing.h"
#include "recorder_fixture.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

using namespace testing_recorder;

using FileWriterTest = RecorderFixture;

TEST_F(FileWriterTest, BufferIsWrittenOnceLessThanTheFlushMarginIsLeft) {
    // 100-byte lines: 234 of them leave 1,175 bytes free, more than the 1,124-byte margin.
    const std::string line(99, 'x');
    for (int lines : {234, 235}) {
        auto writer = openWriter("m" + std::to_string(lines) + "_");
        for (int i = 0; i < lines; ++i) writer->onWriteLog(line.c_str());
        EXPECT_EQ(mRoot.readFile(writer->filePath()).size(), lines == 235 ? 23500u : 0u);
        writer->close();
        EXPECT_EQ(mRoot.readFile(writer->filePath()).size(), lines * 100u);
    }
}

TEST_F(FileWriterTest, PrefixAndLinesLongerThanTheirBuffersAreCut) {
    auto writer = openWriter(std::string(30, 'p'));
    EXPECT_EQ(std::string(writer->namePrefix()), std::string(29, 'p'));
    writer->onWriteLog("head");
    writer->onWriteLog(std::string(30000, 'z').c_str());
    EXPECT_EQ(writer->bufferedBytes(), 0u);
    EXPECT_EQ(writer->fileBytes(), 5u + 30001u);
    writer->onWriteLog("");
    writer->onWriteLog("after");
    writer->close();
    EXPECT_EQ(mRoot.readFile(writer->filePath()),
              "head\n" + std::string(24569, 'z') + "\n\nafter\n");
}

// Writes the full 180 MiB once.
TEST_F(FileWriterTest, SeriesRollsOverToTheNextFileWithTheSameTimeStamp) {
    LogCapture log;
    auto writer = openWriter("000012345_0001_0002_capture_", false);
    const std::string first = writer->filePath();
    EXPECT_TRUE(std::regex_match(
            first, std::regex("/data/vendor/camera_dump/000012345_0001_0002_capture__[0-9]{4}_"
                              "[0-9]{4}_[0-9]{6}_TuningLog_01\\.txt")))
            << first;
    EXPECT_TRUE(mRoot.exists(first));
    // 1,024-byte lines: the limit is reached exactly, and passed by one more line.
    const std::string line(1023, 'r');
    const uint32_t linesAtLimit = 188743680u / 1024u;
    for (uint32_t i = 0; i < linesAtLimit; ++i) writer->onWriteLog(line.c_str());
    EXPECT_EQ(writer->filePath(), first);
    EXPECT_EQ(writer->fileBytes(), 188743680u);

    writer->onWriteLog(line.c_str());
    const std::string second = writer->filePath();
    EXPECT_NE(second, first);
    EXPECT_EQ(second, nextFile(first));
    EXPECT_EQ(writer->fileIndex(), 3);
    EXPECT_EQ(writer->fileBytes(), 0u);  // the marker is not counted
    EXPECT_EQ(log.count(Level::Info, "[open] Write log to " + first), 1);
    EXPECT_EQ(log.count(Level::Info, "[open] Write log to " + second), 1);

    writer->onWriteLog("tail");
    writer->close();
    EXPECT_EQ(std::filesystem::file_size(mRoot.hostPath(first)), (linesAtLimit + 1) * 1024ull);
    EXPECT_EQ(mRoot.readFile(second), "-- CONTINUED --\ntail\n");
    std::filesystem::remove(mRoot.hostPath(first));
}

TEST_F(FileWriterTest, OpenFailureFallsBackToDataVendorForTheWholeSeries) {
    LogCapture log;
    fst::failNext(fst::Op::Open, 1, EACCES);
    auto writer = openWriter("p_", false);
    EXPECT_EQ(writer->folder(), "/data/vendor");
    std::string name = std::filesystem::path(writer->filePath()).filename();
    EXPECT_EQ(writer->filePath(), "/data/vendor/" + name);
    EXPECT_TRUE(mRoot.exists(writer->filePath()));
    EXPECT_EQ(log.count(Level::Error, "[open] File writer: file open failed " + kLogFolder + "/" +
                                              name + ": Permission denied"),
              1);
    writer->close();
    ASSERT_TRUE(writer->open(false, nullptr, false));
    EXPECT_EQ(writer->filePath(), "/data/vendor/" + nextFile(name));

    for (bool quiet : {false, true}) {
        LogCapture failures;
        fst::failNext(fst::Op::Open, 2, EACCES);
        FileWriter failing(1, 2, 3);
        failing.setFolder(kLogFolder);
        EXPECT_FALSE(failing.open(true, "p_", quiet));
        EXPECT_LT(failing.fd(), 0);
        EXPECT_EQ(failures.count(Level::Error, "[open] " + kNoFile), quiet ? 0 : 1);
        EXPECT_EQ(failures.lines().size(), quiet ? 0u : 2u);
    }
}

TEST_F(FileWriterTest, AFailedOpenIsRetriedAndLoggedOncePerSeries) {
    LogCapture log;
    FileWriter writer(1, 2, 3);
    writer.setFolder(kLogFolder);
    for (int attempt = 0; attempt < 3; ++attempt) {
        fst::failNext(fst::Op::Open, 2, EMFILE);
        EXPECT_FALSE(writer.open(attempt == 0, "p_", false));
    }
    EXPECT_EQ(log.countContaining("file open failed"), 1);
    EXPECT_EQ(log.countContaining("Too many open files"), 1);
    EXPECT_EQ(log.count(Level::Error, "[open] " + kNoFile), 1);
    EXPECT_TRUE(writer.hasSeries());
    ASSERT_TRUE(writer.open(false, nullptr, false));  // the fault is gone
    EXPECT_TRUE(mRoot.exists(writer.filePath()));
    // A new series says it again.
    writer.close();
    fst::failNext(fst::Op::Open, 2, EACCES);
    EXPECT_FALSE(writer.open(true, "p_", false));
    EXPECT_EQ(log.countContaining("file open failed"), 2);
}

TEST_F(FileWriterTest, LinesAFailedWriteLosesAreCountedAndLoggedOnceAtClose) {
    LogCapture log;
    auto writer = openWriter("p_", false);
    std::atomic<uint64_t> lost{0};
    writer->setLossCounter(&lost);
    for (const char* line : {"one", "two", "three"}) writer->onWriteLog(line);
    fst::failNext(fst::Op::Write, 1, ENOSPC);
    writer->flush(false);
    writer->onWriteLog("four");
    fst::failNext(fst::Op::Write, 1, EIO);
    fst::failNext(fst::Op::Fsync, 1, EIO);
    writer->flush(true);
    writer->onWriteLog("five");
    fst::shortenNextWrites(2, 2);  // a short write is finished, not lost
    writer->flush(false);
    EXPECT_EQ(writer->linesLost(), 4u);
    const std::string path = writer->filePath();
    writer->close();
    EXPECT_EQ(mRoot.readFile(path), "five\n");
    EXPECT_EQ(
            log.count(Level::Error,
                      "[close] " + path + ": write failed (No space left on device); 4 lines lost"),
            1);
    EXPECT_EQ(log.countContaining("lines lost"), 1);
    EXPECT_EQ(lost.load(), 4u);
}

TEST_F(FileWriterTest, FolderFallsBackInOrderWhenFoldersCannotBeMade) {
    struct Case {
        const char* configured;  // null: property unset
        int mkdirFailures;
        unsigned size;
        const char* chosen;
        int tooLong;  // "candidatePath size is too long" lines
    };
    const Case cases[] = {
            {nullptr, 0, 128, "/data/vendor/camera_dump", 0},
            {"/data/vendor/my_logs", 0, 128, "/data/vendor/my_logs", 0},
            {"/data/vendor/my_logs", 1, 128, "/data/vendor/camera_dump", 0},
            {nullptr, 2, 128, "/data/vendor/scenario_recorder_log", 0},
            {nullptr, 3, 128, "/data/scenario_recorder_log", 0},
            {nullptr, 4, 128, "/data/vendor", 0},
            // Candidates that do not fit the caller's buffer are passed over.
            {nullptr, 2, 26, "/data/vendor", 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(&c - cases);
        camtune::test::PropertyScope scope;
        if (c.configured) scope.set(props::kRecorderFolder, std::string(c.configured));
        LogCapture log;
        fst::failNext(fst::Op::Mkdir, c.mkdirFailures, EACCES);
        char out[128] = {};
        ScenarioRecorder::getFolderPath(out, c.size);
        EXPECT_EQ(std::string(out), c.chosen);
        EXPECT_TRUE(std::filesystem::is_directory(mRoot.hostPath(c.chosen)));
        std::string first = c.configured ? c.configured : kLogFolder;
        EXPECT_EQ(log.count(Level::Error, "[getFolderPath] mkdir(" + first +
                                                  ") failed, errno = " + std::to_string(EACCES)),
                  c.mkdirFailures > 0 ? 1 : 0);
        EXPECT_EQ(log.count(Level::Error, "[getFolderPath] candidatePath size is too long"),
                  c.tooLong);
    }
    LogCapture log;
    ScenarioRecorder::getFolderPath(nullptr, 128);
    EXPECT_EQ(log.count(Level::Error, "[getFolderPath] folderPath is nullptr"), 1);
}

constexpr uint64_t kFloor = 293601280;

class ReserveSpaceTest : public RecorderFixture {
protected:
    void SetUp() override {
        RecorderFixture::SetUp();
        // Oldest first by modification time, whatever the names say; 10 bytes each.
        for (const auto& [name, age] :
             {std::pair{"d.txt", 4}, {"a.txt", 1}, {"c.log", 3}, {"b.txt", 2}}) {
            std::string path = kLogFolder + "/" + name;
            mRoot.writeFile(path, "0123456789");
            std::filesystem::last_write_time(
                    mRoot.hostPath(path), std::filesystem::last_write_time(mRoot.hostPath(path)) -
                                                  std::chrono::hours(10 - age));
        }
        mWriter.setFolder(kLogFolder);
    }

    FileWriter mWriter{1, 2, 3};
};

TEST_F(ReserveSpaceTest, DeletesOldestFirstUntilFreeSpacePassesTheFloor) {
    const Strings all{"a.txt", "b.txt", "c.log", "d.txt"};
    struct Case {
        uint64_t freeSpace;
        bool unlinkFails, quiet;
        Level threshold;
        Strings remaining, logged;
    };
    const Case cases[] = {
            {kFloor + 1, false, false, Level::Debug, all, {}},
            {kFloor, false, false, Level::Debug, {"b.txt", "c.log", "d.txt"}, {"a.txt"}},
            {kFloor - 10, false, true, Level::Verbose, {"c.log", "d.txt"}, {}},
            {kFloor - 10, false, false, Level::Warn, {"c.log", "d.txt"}, {}},
            // A failed unlink frees nothing.
            {kFloor, true, false, Level::Debug, {"a.txt", "c.log", "d.txt"}, {"b.txt"}},
            {0, false, false, Level::Debug, {}, all},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(&c - cases);
        SetUp();
        LogCapture log;
        camtune::log::setThreshold(c.threshold);
        fst::setFreeSpace(c.freeSpace);
        if (c.unlinkFails) fst::failNext(fst::Op::Unlink, 1, EACCES);
        mWriter.reserveSpace(c.quiet);
        EXPECT_EQ(logFiles(), c.remaining);
        EXPECT_EQ(log.lines().size(), c.logged.size());
        for (const auto& name : c.logged) {
            EXPECT_EQ(log.count(Level::Warn, "[reserveSpace] Storage full. Unlinked: " +
                                                     kLogFolder + "/" + name),
                      1);
        }
    }
}

TEST_F(ReserveSpaceTest, FailedQueriesDeleteNothing) {
    LogCapture log;
    fst::setFreeSpace(0);
    fst::failNext(fst::Op::Statvfs, 1, EIO);
    mWriter.reserveSpace(false);
    fst::failNext(fst::Op::Opendir, 2, EACCES);
    mWriter.reserveSpace(false);
    mWriter.reserveSpace(true);
    EXPECT_EQ(logFiles().size(), 4u);
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_EQ(log.count(Level::Error, "[reserveSpace] Open folder " + kLogFolder + " failed"), 1);
}

TEST_F(ReserveSpaceTest, FilesAWriterHoldsOpenAreNeverPruned) {
    auto open = openWriter("p_");
    fst::setFreeSpace(0);
    mWriter.reserveSpace(true);
    EXPECT_EQ(logFiles(), Strings{std::filesystem::path(open->filePath()).filename()});
    open->close();
    mWriter.reserveSpace(true);
    EXPECT_TRUE(logFiles().empty());
}

TEST_F(ReserveSpaceTest, OpeningAFilePrunesBeforeCreatingIt) {
    fst::setFreeSpace(kFloor);
    ASSERT_TRUE(mWriter.open(true, "p_", true));
    EXPECT_EQ(logFiles().size(), 4u);
    EXPECT_FALSE(mRoot.exists(kLogFolder + "/a.txt"));
    EXPECT_TRUE(mRoot.exists(mWriter.filePath()));
}

TEST_F(RecorderTest, RecordSizesFromSmallestToLargestAndALargerOneStopsTheProcess) {
    make();
    Buffer* buffer = nullptr;
    LogHeader* header = reserve(2, 2, 262141, &buffer);
    EXPECT_EQ(header->size, 262144u);
    EXPECT_EQ(reinterpret_cast<char*>(header), buffer->data);
    EXPECT_EQ(buffer->spaceLeft, 0u);
    EXPECT_EQ(reserve(3, 3, 0, &buffer)->size, 28u);  // the smallest record
    EXPECT_DEATH(reserve(2, 2, 262145, &buffer), "\\[allocLogSpace\\] Log size too large: 262148");
    EXPECT_DEATH(reserve(2, 2, 0xFFFFFFFFu, &buffer), "Log size too large: ");
}

TEST_F(RecorderTest, HeadlineAppendsStopWhenTheyNoLongerFit) {
    make();
    Buffer* buffer = nullptr;
    reserve(7, 21, 64, &buffer);
    std::string expected = "[UKey: 7][ReqNum: 21]";
    ASSERT_EQ(buffer->headlineSpaceLeft, 1024u - expected.size());
    // 1,003 bytes left: an append needs its length plus 2.
    const std::pair<int, bool> cases[] = {{1002, false}, {1001, true}, {0, true}, {1, false}};
    for (auto [length, kept] : cases) {
        LogCapture log;
        std::string text(static_cast<size_t>(length), 'h');
        ScenarioRecorder::writeStringToHeadline(buffer, text.c_str(), length);
        if (kept) expected += text;
        EXPECT_EQ(std::string(buffer->headline), expected) << length;
        EXPECT_EQ(log.count(Level::Warn, "[writeStringToHeadline] Headline size is not enough"),
                  kept ? 0 : 1);
    }
}

TEST_F(RecorderTest, EnableSwitch) {
    auto* instance = static_cast<ScenarioRecorder*>(IScenarioRecorder::getInstance());
    const std::tuple<const char*, bool, bool> cases[] = {
            {"", false, false}, {"0", false, false}, {"2", true, false}, {"1", true, true}};
    for (auto [value, on, started] : cases) {
        camtune::test::PropertyScope scope;
        scope.set(props::kRecorderEnable, std::string(value));
        EXPECT_EQ(ScenarioRecorder().isScenarioRecorderOn(), on) << value;
        {
            ScenarioRecorderInitializerImpl initializer;
            EXPECT_EQ(instance->isInitialised(), started) << value;
        }
        EXPECT_FALSE(instance->isInitialised());
    }
}

TEST_F(RecorderTest, PreviewRequestsShareAFileUntilTheUniqueKeyChanges) {
    LogCapture log;
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(7, 21, 3, false);
    recorder.recordNddInfo(7, 20, 0, false);
    whileHeld(7, 20, [&] {
        recorder.submitRecordText(7, 21, "capture start record", "capture start");
        recorder.submitRecordText(7, 21, "jpeg done record", "jpeg done");
    });
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    recorder.recordNddInfo(8, 1, 0, false);
    recorder.submitRecordText(8, 1, "other stream", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));

    ASSERT_EQ(logFiles().size(), 2u);
    std::string file = fileOf("000000007_0021_0003_preview__");
    EXPECT_EQ(mRoot.readFile(file),
              "[UKey: 7][ReqNum: 20]\nheld\n"
              "[UKey: 7][ReqNum: 21], capture start, jpeg done\n"
              "capture start record\njpeg done record\n");
    EXPECT_EQ(mRoot.readFile(fileOf("000000008_0001_0000_preview")),
              "[UKey: 8][ReqNum: 1]\nother stream\n");
    EXPECT_EQ(recorder.stats().emptyBuffers, 2u);
    EXPECT_EQ(log.count(Level::Info,
                        "[serviceThreadEntry] ScenarioRecorder is running; flushInterval = 2 ms"),
              1);
    EXPECT_EQ(log.countContaining("Cannot set nice value"), 0);
}

TEST_F(RecorderTest, APreviewSeriesWhoseOpenFailedGetsItsFileAtTheNextRequest) {
    LogCapture log;
    ScenarioRecorder& recorder = start();
    // Two tries (the folder, then /data/vendor) when the request binds, two when it is written.
    fst::failNext(fst::Op::Open, 4, EACCES);
    recorder.recordNddInfo(7, 1, 0, false);
    recorder.submitRecordText(7, 1, "lost while the folder is closed", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_TRUE(logFiles().empty());
    recorder.recordNddInfo(7, 2, 0, false);
    recorder.submitRecordText(7, 2, "written once it opens", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    ASSERT_EQ(logFiles().size(), 1u);
    EXPECT_EQ(mRoot.readFile(fileOf("000000007_0001_0000_preview__")),
              "[UKey: 7][ReqNum: 2]\nwritten once it opens\n");
    EXPECT_EQ(log.countContaining("file open failed"), 1);
    EXPECT_EQ(log.countContaining("Unable to open file"), 1);
}

TEST_F(RecorderTest, CaptureGetsItsOwnFileOnceItsLifeIsOverWhilePreviewIsWrittenAtOnce) {
    LogCapture log;
    ScenarioRecorder& recorder = start();
    mProps.set(props::kRecorderFlushCapSec, 3600);
    recorder.recordNddInfo(3, 1, 0, true);
    mProps.set(props::kRecorderFlushCapSec, 0);
    recorder.recordNddInfo(9, 4, 1, true);
    recorder.recordNddInfo(3, 2, 0, false);
    recorder.submitRecordText(3, 1, "long capture", nullptr);
    recorder.submitRecordText(9, 4, "shot", nullptr);
    recorder.submitRecordText(3, 2, "preview line", nullptr);
    std::string preview = fileOf("preview");
    ASSERT_TRUE(eventually(
            [&] { return mRoot.readFile(preview) == "[UKey: 3][ReqNum: 2]\npreview line\n"; }));
    ASSERT_TRUE(eventually([&] {
        return log.count(Level::Info, "[serviceThreadEntry] Remove fileWriter key(589828)") == 1;
    }));
    EXPECT_EQ(linesOf("000000009_0004_0001_capture"), (Strings{"[UKey: 9][ReqNum: 4]", "shot"}));
    EXPECT_EQ(recorder.stats().active, 1u);
    // Stopping discards what is still being recorded.
    std::string kept = fileOf("000000003_0001_0000_capture");
    recorder.unInit();
    EXPECT_EQ(mRoot.readFile(kept), "");
}

TEST_F(RecorderTest, ChainedBuffersWriteAllHeadlinesOnTheFirstLine) {
    // Recorded before the thread starts, so the whole chain is written in one go.
    ScenarioRecorder& recorder = make();
    recorder.bindRequest(1, 2, 0, false);
    Strings expected{"[UKey: 1][ReqNum: 2], first, second"};
    auto add = [&](const std::string& text, const char* headline) {
        Buffer* buffer = nullptr;
        LogHeader* header = reserve(1, 2, static_cast<unsigned>(24 + text.size() + 1), &buffer);
        std::strcpy(header->text(), text.c_str());
        if (headline)
            ScenarioRecorder::writeStringToHeadline(buffer, headline, std::strlen(headline));
        recorder.finishLogSpace(1, 2, buffer);
        expected.push_back(text);
        return buffer;
    };
    // The headline record and 254 records of 1,024 bytes leave 1,000 bytes, which one more
    // record takes exactly.
    Buffer* first = add(std::string(999, 'a'), ", first");
    for (int i = 1; i < 254; ++i) add(std::to_string(i) + std::string(996, 'b'), nullptr);
    EXPECT_EQ(add(std::string(975, 'c'), nullptr), first);
    EXPECT_EQ(first->spaceLeft, 0u);
    EXPECT_EQ(first->sealed.load(), 0);

    Buffer* second = add("in the successor", ", second");
    ASSERT_EQ(first->successor.get(), second);
    EXPECT_EQ(first->sealed.load(), 1);
    EXPECT_EQ(second->key, first->key);
    EXPECT_EQ(second->spaceLeft, 262144u - 44u);  // no headline record of its own
    EXPECT_EQ(recorder.stats().writingList, 1u);

    // A record still being copied into the successor holds the whole chain back: the service
    // thread waits for it instead of writing the chain without it.
    whileHeld(1, 2,
              [&] { EXPECT_TRUE(eventually([&] { return recorder.stats().producerWaits > 0; })); });
    expected.push_back("held");
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_EQ(linesOf("preview"), expected);
    // The chain's successor is freed, not pooled.
    EXPECT_EQ(recorder.stats().emptyBuffers, 1u);
}

TEST_F(RecorderTest, AServiceThreadThatCannotStartLeavesTheRecorderOffUntilTheNextInit) {
    ScenarioRecorder& recorder = make();
    camtune::thread::testing::failNextStarts(1);
    try {
        recorder.init();
        ADD_FAILURE() << "init did not throw";
    } catch (const std::system_error& error) {
        EXPECT_EQ(std::string(error.what()).rfind("thread constructor failed", 0), 0u)
                << error.what();
    }
    EXPECT_FALSE(recorder.isInitialised());
    EXPECT_FALSE(recorder.submitRecordText(1, 1, "dropped", nullptr));
    EXPECT_EQ(recorder.stats().liveBuffers, 0u);
    recorder.init();
    recorder.recordNddInfo(1, 1, 0, false);
    EXPECT_TRUE(recorder.submitRecordText(1, 1, "recorded", nullptr));
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_EQ(linesOf("preview"), (Strings{"[UKey: 1][ReqNum: 1]", "recorded"}));
}

TEST_F(RecorderTest, RequestWithoutFileIsDroppedWithAnError) {
    LogCapture log;
    ScenarioRecorder& recorder = start();
    recorder.submitRecordText(4, 4, "no file bound", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_EQ(log.count(Level::Error, "[serviceThreadEntry] " + kNoFile), 1);
    EXPECT_TRUE(logFiles().empty());
    EXPECT_EQ(recorder.stats().emptyBuffers, 1u);
}

TEST_F(RecorderTest, LongQueueBoostsTheThreadWhichStepsBackWhenIdle) {
    LogCapture log;
    std::mutex lock;
    std::vector<int> niceValues;
    auto seen = [&] {
        std::lock_guard<std::mutex> guard(lock);
        return niceValues;
    };
    // Every nice value is refused: logged once, and nothing else changes.
    ScenarioRecorder& recorder = start([&](int nice) {
        std::lock_guard<std::mutex> guard(lock);
        niceValues.push_back(nice);
        return -EPERM;
    });
    recorder.recordNddInfo(5, 0, 0, false);
    whileHeld(5, 0, [&] {
        for (int request = 1; request <= 11; ++request) {
            recorder.submitRecordText(5, request, "x", nullptr);
        }
    });
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    const std::vector<int> expected{19, -4, 0, 10, 19};
    EXPECT_TRUE(eventually([&] { return seen().size() >= expected.size(); }));
    recorder.unInit();
    EXPECT_EQ(seen(), expected);
    EXPECT_EQ(linesOf("preview").size(), 24u);
    EXPECT_EQ(log.countContaining("Cannot set nice value"), 1);
    EXPECT_EQ(log.count(Level::Warn,
                        "[setNice] Cannot set nice value 19 (errno = " + std::to_string(EPERM) +
                                "); keeping the current priority"),
              1);
}

TEST_F(RecorderTest, StopDiscardsActiveRequestsAndCanRestart) {
    LogCapture log;
    mProps.set(props::kRecorderFlushMs, 100000);
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(8, 1, 0, false);
    recorder.submitRecordText(8, 1, "never written", nullptr);
    Buffer* buffer = nullptr;
    LogHeader* unfinished = reserve(6, 1, 200, &buffer);
    recorder.unInit();
    EXPECT_FALSE(recorder.isInitialised());
    EXPECT_EQ(recorder.stats().active, 0u);
    EXPECT_EQ(mRoot.readFile(fileOf("preview")), "");
    EXPECT_EQ(log.count(Level::Info, "[serviceThreadEntry] Scenario recorder stopped"), 1);
    EXPECT_FALSE(recorder.submitRecordText(8, 1, "after stop", nullptr));
    // A producer finishing after the stop still has its buffer (checked by ASan).
    std::memset(unfinished->text(), 'x', unfinished->textCapacity());
    recorder.finishLogSpace(6, 1, buffer);

    mProps.set(props::kRecorderFlushMs, 2);
    recorder.init();
    recorder.submitRecordText(8, 2, "again", nullptr);
    ASSERT_TRUE(recorder.waitUntilIdle(20s));
    EXPECT_EQ(mRoot.readFile(fileOf("preview")), "[UKey: 8][ReqNum: 2]\nagain\n");
}

// Producers share requests, each longer than a buffer, while the service thread writes: every
// record lands exactly once and whole.
TEST_F(RecorderTest, ConcurrentProducersRecordEveryLineOnceAndWhole) {
    constexpr int kProducers = 4;
    constexpr int kRecordsEach = 3000;
    auto recordText = [](int producer, int seq) {
        return "p" + std::to_string(producer) + " n" + std::to_string(seq) + " " +
               std::string(100 + seq * 37 % 800, static_cast<char>('a' + producer));
    };
    mProps.set(props::kRecorderFlushMs, 1);
    ScenarioRecorder& recorder = start();
    recorder.recordNddInfo(1, 0, 0, false);
    std::vector<std::thread> producers;
    for (int p = 0; p < kProducers; ++p) {
        producers.emplace_back([&recorder, &recordText, p] {
            for (int seq = 0; seq < kRecordsEach; ++seq) {
                recorder.submitRecordText(1, seq / 400, recordText(p, seq).c_str(),
                                          seq % 97 == 0 ? "mark" : nullptr);
            }
        });
    }
    for (auto& producer : producers) producer.join();
    ASSERT_TRUE(recorder.waitUntilIdle(60s));
    recorder.unInit();

    const std::regex headline("\\[UKey: 1\\]\\[ReqNum: [0-9]+\\](, mark)*");
    std::map<std::string, int> seen;
    for (const std::string& line : linesOf("preview")) {
        if (!std::regex_match(line, headline)) ++seen[line];
    }
    EXPECT_EQ(seen.size(), static_cast<size_t>(kProducers * kRecordsEach));
    for (int p = 0; p < kProducers; ++p) {
        for (int seq = 0; seq < kRecordsEach; ++seq) {
            ASSERT_EQ(seen[recordText(p, seq)], 1) << "producer " << p << " record " << seq;
        }
    }
}

// Eight producers start requests faster than the held writer can take them: the recorder stays
// within its bound and drops records instead, and every drop is a line missing from the file.
TEST_F(RecorderTest, ProducersOutpacingTheWriterStayWithinTheMemoryBound) {
    constexpr int kProducers = 8;
    constexpr int kRequestsEach = 40;
    constexpr int kRecordsEach = 3;
    mProps.set(props::kRecorderMaxMb, 1);
    const size_t bound = (size_t{1} << 20) / sizeof(Buffer);
    LogCapture log;
    ScenarioRecorder& recorder = make();
    std::atomic<int> submitted{0};
    whileHeld(1, 0, [&] {
        recorder.recordNddInfo(1, 0, 0, false);
        std::vector<std::thread> producers;
        for (int p = 0; p < kProducers; ++p) {
            producers.emplace_back([&recorder, &submitted, p] {
                for (int r = 0; r < kRequestsEach; ++r) {
                    const int request = 1 + p * kRequestsEach + r;
                    for (int i = 0; i < kRecordsEach; ++i) {
                        const std::string text =
                                "r" + std::to_string(request) + " #" + std::to_string(i);
                        recorder.submitRecordText(1, request, text.c_str(), nullptr);
                        ++submitted;
                    }
                }
            });
        }
        for (std::thread& producer : producers) producer.join();
    });
    ASSERT_TRUE(recorder.waitUntilIdle(60s));
    const ScenarioRecorder::Stats stats = recorder.stats();
    recorder.unInit();

    int written = 0;
    for (const std::string& line : linesOf("preview")) written += line[0] == 'r';
    EXPECT_LE(stats.peakBuffers, bound);
    EXPECT_GT(stats.droppedRecords, 0u);
    EXPECT_EQ(static_cast<uint64_t>(submitted - written), stats.droppedRecords);
    EXPECT_EQ(log.countContaining("records were dropped at the"), 1);
    EXPECT_GE(log.countContaining("dropped: the recorder holds its bound"), 1);
    // Idle, the pool keeps three buffers and frees the rest.
    EXPECT_LE(recorder.stats().liveBuffers, kMaxEmptyBuffers);
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
