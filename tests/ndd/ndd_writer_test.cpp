// File names, the hand-over at the byte limit, the writer threads and what they report.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>

#include "camtune/odt.h"
#include "camtune/platform/host_image_buffer.h"
#include "camtune/platform/properties.h"
#include "camtune/platform/testing.h"
#include "ndd_fixture.h"
#include "support/log_capture.h"

namespace NSCam {
namespace TuningUtils {
namespace testing_ndd {
namespace {

namespace fs = camtune::fs;

class NddWriterTest : public NddTest {
protected:
    // Submits `bytes` as a capture AAO item named "[Prefix][UserStr]" with `userStr`.
    void submit(const std::string& bytes, const std::string& userStr) {
        NddData data = item();
        data.userStr = userStr;
        mNdd->submit_request(eCategory_Capture, eModule_AAO, data, bytes.data(),
                             static_cast<int>(bytes.size()), __FILE__, __LINE__);
    }
    static std::string nameOf(const std::string& userStr) {
        return "000001234-0005-0001-" + userStr;
    }
    bool drained() const { return mNdd->queuedSize() == 0; }
};

constexpr char kUserStrConfig[] = "Preview,Default,[Prefix][UserStr],Capture,AAO,1,0\n";

TEST_F(NddWriterTest, NamesFollowTheConfiguredPattern) {
    // Each rule's own output is checked by the table tests; here, the name as a whole.
    struct Case {
        const char* what;
        const char* format;
        const char* userStr;
        const char* name;   // "" when the item is refused
        const char* error;  // "" for none
    } cases[] = {
            {"literal text around fields", "dump_[Prefix]_[Feature][Stage].bin", "",
             "dump_000001234-0005-0001_-Preview-Default.bin", ""},
            {"format refused on a raw buffer", "[Prefix][Format]x", "", "000001234-0005-0001x",
             "FORMAT is not allowed used for simple array!"},
            {"unclosed bracket", "[Prefix]-[Size", "", "000001234-0005-0001-",
             "Wrong string format!"},
            {"unknown rule", "[Prefix][Colour]", "", "000001234-0005-0001",
             "Unknown naming rule [Colour]; it adds nothing to the name"},
            {"empty format", "", "", "",
             "(Preview, Default, Capture, AAO) has no file-name format in the configuration; item "
             "not dumped"},
            {"slash from the user string", "[Prefix][UserStr]", "../../x", "",
             "file name (000001234-0005-0001-../../x) holds a \"/\" and would leave the dump "
             "folder; item not dumped"},
    };
    mRoot.writeFile(kConfigPath, "");
    mNdd->init();
    for (const Case& c : cases) {
        mRoot.writeFile(kConfigPath,
                        std::string("Preview,Default,") + c.format + ",Capture,AAO,1,0\n");
        mNdd->stream_on({0}, 1234);
        NddData data = item();
        data.userStr = c.userStr;
        char path[kNddPathMax] = "untouched";
        LogCapture log;
        const bool named = mNdd->query_file_path(eCategory_Capture, eModule_AAO, data, path,
                                                 __FILE__, __LINE__);
        EXPECT_EQ(named, c.name[0] != '\0') << c.what;
        EXPECT_EQ(std::string(path),
                  named ? std::string(kDefaultFolder) + "/" + c.name : std::string("untouched"))
                << c.what;
        EXPECT_EQ(log.count(Level::Error, c.error), c.error[0] != '\0' ? 1 : 0) << c.what;
        mNdd->stream_off({0});
    }
    // Naming makes the folder for the caller's file but writes nothing in it.
    EXPECT_EQ(folderFiles(), std::vector<std::string>{"ndd.cfg"});
}

TEST_F(NddWriterTest, InvalidStageAndSensorAreForcedToMinusOne) {
    start("Preview,,[Prefix][Stage][SensorId],Capture,AAO,1,0\n", {12});
    NddData data = item(1, 12);
    data.stage = 191;
    char path[kNddPathMax];
    LogCapture log;
    ASSERT_TRUE(
            mNdd->query_file_path(eCategory_Capture, eModule_AAO, data, path, __FILE__, __LINE__));
    EXPECT_EQ(std::string(path),
              std::string(kDefaultFolder) + "/000001234-0005-0001-INVALID_STAGE-INVALID_SENSORID");
    EXPECT_EQ(data.stage, -1);
    EXPECT_EQ(data.sensorId, -1);
    EXPECT_EQ(log.count(Level::Error, "Invalid Stage(191), force it to -1"), 1);
    EXPECT_EQ(log.count(Level::Error, "Invalid SensorId(12), force it to -1"), 1);
}

TEST_F(NddWriterTest, QueuedItemsAreWrittenByTheWritersInOrder) {
    start(kUserStrConfig);
    mNdd->setWritersPaused(true);
    submit("first", "a");
    submit("second!", "b");
    EXPECT_EQ(mNdd->queuedSize(), 12);
    EXPECT_FALSE(folderHas(nameOf("a")));           // nothing on disk until a writer takes it
    camtune::fs::testing::shortenNextWrites(3, 4);  // a short write is finished, not failed
    mNdd->setWritersPaused(false);
    ASSERT_TRUE(waitFor([&] { return drained(); }));
    ASSERT_TRUE(waitFor([&] { return propertyText(props::kNddDumpSize) == "0"; }));
    EXPECT_EQ(folderFile(nameOf("a")), "first");
    EXPECT_EQ(folderFile(nameOf("b")), "second!");
    EXPECT_EQ(mNdd->failedDumps(), 0);
}

// A process out of threads: NDD runs with the writers it could start, stays off with none, and
// starts them all once threads can be had again.
TEST_F(NddWriterTest, WritersThatCannotStartAreReportedAndTheOthersWrite) {
    struct Case {
        int failing, passing, writers;
    } cases[] = {{1, 1, 1}, {1, 0, 0}};
    for (const Case& c : cases) {
        camtune::test::LogCapture log;
        camtune::thread::testing::failNextStarts(c.failing, c.passing);
        start(kUserStrConfig);
        EXPECT_EQ(mNdd->writerCount(), c.writers);
        EXPECT_EQ(log.count(camtune::log::Level::Error, "thread constructor failed"), 1);
        const std::string item = "w" + std::to_string(c.writers);
        submit("bytes", item);
        if (c.writers > 0) {
            ASSERT_TRUE(waitFor([&] { return drained(); }));
            EXPECT_EQ(folderFile(nameOf(item)), "bytes");
        } else {
            EXPECT_FALSE(folderHas(nameOf(item)));  // off: nothing admitted, nothing queued
            EXPECT_EQ(mNdd->queuedSize(), 0);
        }
        mNdd->uninit();
        start(kUserStrConfig);
        EXPECT_EQ(mNdd->writerCount(), 2);
        mNdd->uninit();
    }
}

TEST_F(NddWriterTest, OverTheByteLimitTheCallerWritesAtOnce) {
    mProps.set(props::kNddLimitedSize, 1000);
    start(std::string(kUserStrConfig) + "Preview,Default,[Prefix]_[Format],Capture,IMGO,1,0\n");
    mNdd->setWritersPaused(true);
    submit(std::string(1500, 'q'), "queued");
    EXPECT_EQ(mNdd->queuedSize(), 1500);
    submit("direct", "direct");  // 1500 queued > 1000: written on this thread
    EXPECT_EQ(folderFile(nameOf("direct")), "direct");
    EXPECT_FALSE(folderHas(nameOf("queued")));
    EXPECT_EQ(mNdd->queuedSize(), 1500);
    // Image copies count against the same limit.
    auto image = HostImageBuffer::create(eImgFmt_NV21, MSize{4, 2});
    ASSERT_NE(image, nullptr);
    NddData data = item();
    mNdd->submit_request(eCategory_Capture, eModule_IMGO, data, image.get(), __FILE__, __LINE__);
    EXPECT_TRUE(folderHas("000001234-0005-0001_nv21"));
    EXPECT_EQ(mNdd->queuedSize(), 1500);
    mNdd->setWritersPaused(false);
    ASSERT_TRUE(waitFor([&] { return drained(); }));
    EXPECT_EQ(folderFile(nameOf("queued")), std::string(1500, 'q'));
}

TEST_F(NddWriterTest, DirectWriteNeverQueuesRawBuffersButQueuesImages) {
    mProps.set(props::kNddDirectWrite, 1);
    start(std::string(kUserStrConfig) + "Preview,Default,[Prefix]_[Format],Capture,IMGO,1,0\n");
    mNdd->setWritersPaused(true);
    submit("now", "now");
    EXPECT_EQ(folderFile(nameOf("now")), "now");
    EXPECT_EQ(mNdd->queuedSize(), 0);

    auto image = HostImageBuffer::create(eImgFmt_NV21, MSize{4, 2});
    ASSERT_NE(image, nullptr);
    NddData data = item();
    mNdd->submit_request(eCategory_Capture, eModule_IMGO, data, image.get(), __FILE__, __LINE__);
    EXPECT_FALSE(folderHas("000001234-0005-0001_nv21"));
    mNdd->setWritersPaused(false);
    ASSERT_TRUE(waitFor([&] { return folderHas("000001234-0005-0001_nv21"); }));
}

TEST_F(NddWriterTest, UninitWritesEveryQueuedItemFirst) {
    start(kUserStrConfig);
    mNdd->setWritersPaused(true);
    for (int i = 0; i < 10; ++i) submit("item " + std::to_string(i), std::to_string(i));
    LogCapture log;
    mNdd->uninit();
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(folderFile(nameOf(std::to_string(i))), "item " + std::to_string(i));
    EXPECT_EQ(mNdd->queuedSize(), 0);
    EXPECT_EQ(propertyText(props::kNddDumpSize), "0");
    EXPECT_TRUE(log.contains("Remaining size after joining all thread: 0"));
    // Stopped means disabled: a later item is refused.
    submit("late", "late");
    EXPECT_FALSE(folderHas(nameOf("late")));
}

TEST_F(NddWriterTest, ImagesAreCopiedWithTheirGeometry) {
    start("Preview,Default,[Prefix][SensorId][Size][Bit][BayerOrder][Padding].[Format],Capture,"
          "IMGO,1,0\n",
          {0, 1});
    auto image = HostImageBuffer::create(eImgFmt_BAYER10, MSize{8, 2}, {12});
    ASSERT_NE(image, nullptr);
    const size_t planeBytes = image->getBufSizeInBytes(0);
    for (size_t i = 0; i < planeBytes; ++i) image->getBufVA(0)[i] = static_cast<uint8_t>(i + 1);
    const std::string expected(reinterpret_cast<const char*>(image->getBufVA(0)), planeBytes);
    mNdd->setWritersPaused(true);
    NddData data = item(1, 1);
    mNdd->submit_request(eCategory_Capture, eModule_IMGO, data, image.get(), __FILE__, __LINE__);
    // The pipeline reuses the buffer at once; the dump keeps what was submitted.
    std::memset(image->getBufVA(0), 0, planeBytes);
    EXPECT_EQ(image->lockUsage("NDD"), 0u);
    EXPECT_EQ(data.width, 8);
    EXPECT_EQ(data.bitDepth, 10);
    EXPECT_EQ(data.bayerOrder, 1);  // sensor 1's colour order on the host list
    EXPECT_EQ(mNdd->queuedSize(), static_cast<int64_t>(planeBytes));
    mNdd->setWritersPaused(false);
    const std::string name = "000001234-0005-0001-sub__8x2_10_1-PW9-PH2-BW12.packed_word";
    ASSERT_TRUE(waitFor([&] { return folderHas(name); }));
    ASSERT_TRUE(waitFor([&] { return folderFile(name).size() == planeBytes; }));
    EXPECT_EQ(folderFile(name), expected);
    ASSERT_TRUE(waitFor([&] { return drained(); }));
}

TEST_F(NddWriterTest, ANullImageIsRefused) {
    start("Preview,Default,[Prefix],Capture,IMGO,1,0\n");
    NddData data = item();
    LogCapture log;
    mNdd->submit_request(eCategory_Capture, eModule_IMGO, data, static_cast<IImageBuffer*>(nullptr),
                         __FILE__, __LINE__);
    EXPECT_EQ(log.count(Level::Error, "ImgBuf submission is NULL!"), 1);
    EXPECT_EQ(mNdd->failedDumps(), 1);
}

TEST_F(NddWriterTest, FailuresAreLoggedCountedAndLeaveNoPartialFile) {
    struct Case {
        const char* what;
        int directWrite;
        fs::testing::Op op;
        int error;
        const char* message;
    } cases[] = {
            {"queued open", 0, fs::testing::Op::Open, EACCES,
             "FILE open errorno: Permission denied"},
            {"direct open", 1, fs::testing::Op::Open, EACCES,
             "Direct Dump FILE open errorno: Permission denied"},
            {"queued write", 0, fs::testing::Op::Write, ENOSPC,
             "FILE write errorno: No space left on device, 0 of 4 bytes written to "
             "/data/vendor/camera_dump/default_dump/000001234-0005-0001-f"},
    };
    for (const Case& c : cases) {
        mProps.set(props::kNddDirectWrite, c.directWrite);
        auto owner = std::make_unique<Ndd>();
        Ndd& ndd = *owner;
        mRoot.writeFile(kConfigPath, kUserStrConfig);
        ndd.init();
        ndd.stream_on({0}, 1234);
        ndd.make_ndd_dir();
        LogCapture log;
        fs::testing::failNext(c.op, 1, c.error);
        NddData data = item();
        data.userStr = "f";
        ndd.submit_request(eCategory_Capture, eModule_AAO, data, "data", 4, __FILE__, __LINE__);
        // The failed item is counted, and its bytes are released.
        ASSERT_TRUE(waitFor([&] { return ndd.failedDumps() == 1 && ndd.queuedSize() == 0; }))
                << c.what << ": queued " << ndd.queuedSize();
        // Once the fault is gone the next item is written.
        data.userStr = "g";
        ndd.submit_request(eCategory_Capture, eModule_AAO, data, "next", 4, __FILE__, __LINE__);
        ndd.uninit();
        EXPECT_EQ(folderFile(nameOf("g")), "next") << c.what;
        EXPECT_EQ(log.count(Level::Error, c.message), 1) << c.what;
        EXPECT_EQ(log.count(Level::Error, "Dump Failed"), c.directWrite ? 0 : 1) << c.what;
        EXPECT_EQ(ndd.failedDumps(), 1) << c.what;
        EXPECT_TRUE(log.contains("1 admitted dump(s) failed since init")) << c.what;
        EXPECT_FALSE(folderHas(nameOf("f"))) << c.what;
        fs::testing::reset();
    }
}

TEST(BufferPoolTest, ReusesTheSmallestFittingCopyWithinItsBounds) {
    BufferPool pool;
    DumpBytes small = pool.acquire(100);
    DumpBytes large = pool.acquire(1000);
    const uint8_t* smallBytes = small.data();
    const uint8_t* largeBytes = large.data();
    pool.release(std::move(large));
    pool.release(std::move(small));
    DumpBytes fit = pool.acquire(50);
    EXPECT_EQ(fit.data(), smallBytes);
    EXPECT_EQ(fit.size(), 50u);
    EXPECT_EQ(pool.acquire(500).data(), largeBytes);
    EXPECT_EQ(pool.keptCount(), 0u);

    std::vector<DumpBytes> many;
    for (size_t i = 0; i < BufferPool::kMaxBuffers + 2; ++i) many.push_back(pool.acquire(10));
    for (DumpBytes& bytes : many) pool.release(std::move(bytes));
    EXPECT_EQ(pool.keptCount(), BufferPool::kMaxBuffers);
    pool.trim(2);
    EXPECT_EQ(pool.keptCount(), 2u);
    EXPECT_EQ(pool.keptBytes(), 20u);
    pool.release(pool.acquire(BufferPool::kMaxBytes));  // over the byte bound: freed
    EXPECT_EQ(pool.keptCount(), 2u);
}

TEST_F(NddWriterTest, IdleWritersGiveBackKeptCopies) {
    start(kUserStrConfig);
    mNdd->setWritersPaused(true);
    for (int i = 0; i < 6; ++i) submit(std::string(100, 'x'), std::to_string(i));
    mNdd->setWritersPaused(false);
    ASSERT_TRUE(waitFor([&] { return drained(); }));
    EXPECT_TRUE(waitFor([&] { return mNdd->bufferPool().keptCount() <= 2; }));
}

TEST_F(NddWriterTest, AFailedCopyIsWrittenAtOnce) {
    start(kUserStrConfig);
    mNdd->setWritersPaused(true);
    mNdd->bufferPool().failNextAllocations(1);
    LogCapture log;
    submit("fallback", "fallback");
    EXPECT_EQ(folderFile(nameOf("fallback")), "fallback");
    EXPECT_EQ(log.count(Level::Error, "Allocation failed, hence dump right away, heap size: 0"), 1);
}

// Several producers and writers, a limit that forces some direct writes and open failures:
// every admitted item ends as an exact file or a counted failure.
TEST_F(NddWriterTest, NothingAdmittedIsLostUnderLoad) {
    constexpr int kProducers = 4;
    constexpr int kItemsEach = 60;
    constexpr int kOpenFailures = 7;
    mProps.set(props::kNddThreadCount, std::string("3"));
    mProps.set(props::kNddLimitedSize, 256 * 1024);
    start(kUserStrConfig);
    mNdd->make_ndd_dir();
    fs::testing::failNext(fs::testing::Op::Open, kOpenFailures, EIO, 40);
    auto content = [](int producer, int index) {
        std::mt19937 random(static_cast<uint32_t>(producer * 1000 + index));
        std::string bytes(1 + random() % 40000, '\0');
        for (char& b : bytes) b = static_cast<char>(random());
        return bytes;
    };
    std::vector<std::thread> producers;
    for (int p = 0; p < kProducers; ++p) {
        producers.emplace_back([&, p] {
            for (int i = 0; i < kItemsEach; ++i) {
                NddData data = item();
                data.userStr = std::to_string(p) + "_" + std::to_string(i);
                std::string bytes = content(p, i);
                mNdd->submit_request(eCategory_Capture, eModule_AAO, data, bytes.data(),
                                     static_cast<int>(bytes.size()), __FILE__, __LINE__);
            }
        });
    }
    for (std::thread& producer : producers) producer.join();
    mNdd->uninit();
    int written = 0;
    for (int p = 0; p < kProducers; ++p) {
        for (int i = 0; i < kItemsEach; ++i) {
            const std::string name = nameOf(std::to_string(p) + "_" + std::to_string(i));
            if (!folderHas(name)) continue;
            ++written;
            EXPECT_EQ(folderFile(name), content(p, i)) << name;
        }
    }
    EXPECT_EQ(mNdd->failedDumps(), kOpenFailures);
    EXPECT_EQ(written + mNdd->failedDumps(), kProducers * kItemsEach);
    EXPECT_EQ(mNdd->queuedSize(), 0);
    EXPECT_EQ(propertyText(props::kNddDumpSize), "0");
}

TEST_F(NddWriterTest, ForceBufferFormatTakesTheFirstOverrideThenTheBitDepth) {
    struct Case {
        int afterLsc, afterBpc, afterLtm, imgoBit;
        bool result;
        int32_t format, selector;
    } cases[] = {
            {0, 0, 0, 0, false, 0, 0},       {1, 1, 1, 0, true, 0x2217, 5},
            {0, 1, 1, 0, true, 0x2202, 1},   {0, 0, 1, 0, true, 0x2202, 7},
            {0, 0, 0, 10, false, 0x2201, 0}, {1, 0, 0, 12, true, 0x2202, 5},
            {0, 0, 1, 14, true, 0x2203, 7},  {0, 0, 0, 16, false, 0x2217, 0},
            {0, 1, 0, 11, true, 0x2202, 1},  {0, 1, 0, 8, true, 0x2202, 1},
    };
    for (const Case& c : cases) {
        mProps.set(props::kNddAfterLsc, c.afterLsc);
        mProps.set(props::kNddAfterBpc, c.afterBpc);
        mProps.set(props::kNddAfterLtm, c.afterLtm);
        mProps.set(props::kNddImgoBit, c.imgoBit);
        NddFormat format{-1, -1};
        EXPECT_EQ(mNdd->force_buffer_format(format), c.result);
        EXPECT_EQ(format.format, c.format) << c.afterLsc << c.afterBpc << c.afterLtm << c.imgoBit;
        EXPECT_EQ(format.selector, c.selector);
    }
}

TEST_F(NddWriterTest, DumpInFilesAndReplayIdentityGoThroughOnDeviceTuning) {
    // A replay that binds pipeline frame 50 to the configuration frame 4321-7-10.
    mRoot.writeFile("/data/vendor/camera_dump/odt/replay.cfg",
                    "AAO,10,main,0,0;/d/000004321-0007-0010-main-AAO.bin\n");
    mProps.set(props::kOdtConfigPath, std::string("/data/vendor/camera_dump/odt/replay.cfg"));
    mProps.set(props::kOdtEnable, 1);
    mProps.set(props::kOdtStreaming, 1);
    mProps.set(props::kOdtStart, 1);
    mProps.set(props::kNddGenConfig, 1);
    mProps.set(props::kNddDirectWrite, 1);
    std::shared_ptr<IOdtUtils> odt = IOdtUtils::getInstance(0);
    odt->stream_on();
    odt->frame_begin(50);
    start("Preview,Default,[Prefix][SensorId],Capture,AAO,1,1\n", {0}, 5012);
    NddData data = item(50);
    mNdd->submit_request(eCategory_Capture, eModule_AAO, data, "x", 1, __FILE__, __LINE__);
    mNdd->force_frame_order(0, {3, 5});
    odt->stream_off();
    EXPECT_EQ(folderFile("000004321-0007-0010-main"), "x");
    EXPECT_EQ(mRoot.readFile("/data/vendor/camera_dump/000005012-0000-0000_dumpin.cfg"),
              "AAO,10,main,0,0;/data/vendor/camera_dump/default_dump/000004321-0007-0010-main\n"
              "order: 3 5\n");
}

}  // namespace
}  // namespace testing_ndd
}  // namespace TuningUtils
}  // namespace NSCam
