// The reprocess list: parsing a configuration, the accessors, and renaming after a replay.
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "camtune/file_read_rule.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/testing.h"
#include "dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

using NSCam::TuningUtils::TUNING_CURRENT_INFO_T;
using NSCam::TuningUtils::TUNING_REPROCESS_CFG_T;
using Files = std::map<std::string, std::string>;

constexpr char kConfigPath[] = "/data/vendor/camera_dump/reprocess.cfg";
constexpr char kDumpDir[] = "/data/vendor/camera_dump/";
constexpr char kP1Reg[] = "REG\x01\x05rest";

const char kTwoFrames[] =
        "uniqueKey,11\nraw_stride,100\n{\n// first frame\n"
        "raw,0007,P;/data/r/a.raw\nnr3d_weight,0007,P;12\nframeNo,0007,P;37\n"
        "lsc,0007,P;/data/r/lsc1.bin\nlsc,0007,P;/data/r/lsc2.bin\np1reg,0007,P;/data/r/p1.reg\n"
        "<END_OF_FRAME>\n}\n{\nraw,0008,EIspProfile_MFNR;/data/r/b.raw\r\n<END_OF_FRAME>\n}\n"
        "uniqueKey,42\nraw_stride,4000\n";

class ReprocessTest : public DumpinTest {
protected:
    void SetUp() override { load(""); }
    void TearDown() override { load(""); }

    // Replaces the list with the frames of `config` (none for an empty text).
    void load(const std::string& config) {
        mRoot.writeFile(kConfigPath, config);
        mProps.set(props::kReprocessConfigPath, kConfigPath);
        mRule.initReprocInfo();
    }
    TUNING_REPROCESS_CFG_T frame(unsigned int index) {
        TUNING_REPROCESS_CFG_T out;
        EXPECT_TRUE(mRule.getReprocInfo(index, out)) << index;
        return out;
    }
};

TEST_F(ReprocessTest, SwitchIsAnyNonZeroValue) {
    for (auto [value, on] : {std::pair{"", false}, {"0", false}, {"1", true}, {"-1", true}}) {
        mProps.set(props::kReprocessEnable, std::string(value));
        EXPECT_EQ(mRule.enableReproc(), on) << value;
    }
}

TEST_F(ReprocessTest, MultiFrameConfigurationBecomesOneRecordPerFrame) {
    makeFile("/data/r/p1.reg", kP1Reg);
    load(kTwoFrames);
    ASSERT_EQ(mRule.getReprocInfoSize(), 2u);

    TUNING_REPROCESS_CFG_T first = frame(0);
    EXPECT_EQ(first.reqNum, 7);
    EXPECT_EQ(first.ispProfile, "P");
    EXPECT_EQ(first.uniqueKey, "42");  // the last value anywhere applies to every frame
    EXPECT_EQ(first.rawStride, 4000);
    EXPECT_EQ(first.nr3dEntries, (std::map<std::string, int>{{"nr3d_weight", 12}}));
    EXPECT_EQ(first.fileEntries, (Files{{"raw", "/data/r/a.raw"},
                                        {"lsc", "/data/r/lsc1.bin"},
                                        {"p1reg", "/data/r/p1.reg"}}));
    ASSERT_NE(first.p1RegBuffer, nullptr);
    EXPECT_EQ(std::string(first.p1RegBuffer->begin(), first.p1RegBuffer->end()), kP1Reg);

    TUNING_REPROCESS_CFG_T second = frame(1);
    EXPECT_EQ(second.reqNum, 8);
    EXPECT_EQ(second.uniqueKey, "42");
    EXPECT_TRUE(second.nr3dEntries.empty());
    EXPECT_EQ(second.fileEntries, (Files{{"raw", "/data/r/b.raw"}}));
    EXPECT_EQ(second.p1RegBuffer, nullptr);

    EXPECT_EQ(mLog.count("[Extract_Reproc_CFG] Format(uniqueKey), Value(11)"), 1);
    EXPECT_EQ(
            mLog.count("[Extract_Reproc_CFG] Format(frameNo), ReqNum(7), IspProfile(P), File(37)"),
            1);
    EXPECT_EQ(mLog.count("[initReprocInfo] ReqNum(8), IspProfile(EIspProfile_MFNR), NR3D size(0), "
                         "File size(1), UniqueKey(42), Stride(4000)"),
              1);
    EXPECT_EQ(mLog.countContaining("[initReprocInfo] pP1regBuffer[0](0x"), 1);
    EXPECT_EQ(mLog.countContaining(",9) version(5)"), 1);

    mRule.uninitReprocInfo();  // releases the register buffers; copies stay valid
    EXPECT_EQ(frame(0).p1RegBuffer, nullptr);
    EXPECT_EQ(first.p1RegBuffer->size(), 9u);
}

TEST_F(ReprocessTest, FramesAreBuiltOnlyInsideBlocksUpToEndOfFrame) {
    load("raw,0001,A;/outside\nuniqueKey 5\n{\nabc\nr,1;\n// mss,0009,A;/c\nraw,0001,A;/x\n}\n"
         "{\nlsc,0002,B;/y\n<END_OF_FRAME>\n}\n{\nmfb,0003,C;/z\n}\n");
    ASSERT_EQ(mRule.getReprocInfoSize(), 1u);
    TUNING_REPROCESS_CFG_T only = frame(0);
    EXPECT_EQ(only.reqNum, 2);
    EXPECT_EQ(only.ispProfile, "B");
    EXPECT_EQ(only.uniqueKey, "");
    EXPECT_EQ(only.fileEntries, (Files{{"raw", "/x"}, {"lsc", "/y"}, {"r", ""}}));
}

TEST_F(ReprocessTest, BadNumbersThrowWithFileAndLineAndReleaseTheLock) {
    struct Case {
        const char* config;
        unsigned int framesKept;
        std::string where;
        bool outOfRange;
    } cases[] = {
            {"{\nraw,abc,P;/x\n<END_OF_FRAME>\n}\n", 0, ":2: stoi", false},
            {"{\nraw,0001,P;/x\n<END_OF_FRAME>\nnr3d_a,0002,P;twelve\n<END_OF_FRAME>\n}\n", 1,
             ":4: stoi", false},
            {"{\nraw,99999999999,P;/x\n<END_OF_FRAME>\n}\n", 0, ":2: stoi", true},
    };
    for (const Case& c : cases) {
        mRoot.writeFile(kConfigPath, c.config);
        const std::string expected = std::string(kConfigPath) + c.where;
        try {
            mRule.initReprocInfo();
            ADD_FAILURE() << "no exception for " << c.config;
        } catch (const std::out_of_range& e) {
            EXPECT_TRUE(c.outOfRange) << e.what();
            EXPECT_EQ(e.what(), expected);
        } catch (const std::invalid_argument& e) {
            EXPECT_FALSE(c.outOfRange) << e.what();
            EXPECT_EQ(e.what(), expected);
        }
        // Would block forever if the exception had left the mutex held.
        EXPECT_EQ(mRule.getReprocInfoSize(), c.framesKept) << c.config;
    }
}

TEST_F(ReprocessTest, RawStrideIsReadAsAtoiWithoutThrowing) {
    const std::pair<const char*, int> cases[] = {
            {"raw_stride,wide\n", 0}, {"raw_stride,12px\n", 12}, {"raw_stride,-8\r\n", -8}};
    for (const auto& [stride, expected] : cases) {
        std::string config = std::string(stride) + "{\nraw,0001,P;/x\n<END_OF_FRAME>\n}\n";
        mRoot.writeFile(kConfigPath, config);
        EXPECT_NO_THROW(mRule.initReprocInfo()) << stride;
        EXPECT_EQ(frame(0).rawStride, expected) << stride;
    }
}

TEST_F(ReprocessTest, AccessorsStayWithinTheList) {
    load(kTwoFrames);
    load(kTwoFrames);
    ASSERT_EQ(mRule.getReprocInfoSize(), 2u);  // a second load replaces the list
    TUNING_REPROCESS_CFG_T out;
    out.reqNum = 99;
    EXPECT_FALSE(mRule.getReprocInfo(2, out));
    EXPECT_EQ(out.reqNum, 99);
    EXPECT_FALSE(mRule.updateReprocInfo(2, TUNING_CURRENT_INFO_T{5, 0, 0, 0}));
    EXPECT_EQ(mRule.getReprocIndex(5), -1);

    EXPECT_TRUE(mRule.updateReprocInfo(1, TUNING_CURRENT_INFO_T{5, 1, 2, 3}));
    EXPECT_EQ(mRule.getReprocIndex(5), 1);
    EXPECT_TRUE(mRule.updateReprocInfo(0, TUNING_CURRENT_INFO_T{5, 4, 5, 6}));
    EXPECT_EQ(mRule.getReprocIndex(5), 0);  // the lower index wins
    EXPECT_EQ(frame(1).currentInfo.info3, 3u);
    mProps.clear(props::kReprocessConfigPath);
    mRule.initReprocInfo();
    EXPECT_EQ(mRule.getReprocInfoSize(), 0u);
    EXPECT_EQ(mRule.getReprocIndex(5), -1);
}

TEST_F(ReprocessTest, ShortP1RegReadIsReported) {
    makeFile("/data/r/p1.reg", "REGISTERS");
    fs::testing::failNext(fs::testing::Op::Read, 1, EIO);
    load(kTwoFrames);
    EXPECT_EQ(errors("[initReprocInfo] read count(0)"), 1);
    EXPECT_EQ(mLog.countContaining("pP1regBuffer"), 0);
}

TEST_F(ReprocessTest, ConcurrentUpdatesAndReadsSeeWholeRecords) {
    load(kTwoFrames);
    std::atomic<bool> torn{false};
    std::vector<std::thread> threads;
    for (unsigned int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (unsigned int i = 0; i < 300; ++i) {
                unsigned int v = t * 1000 + i;
                mRule.updateReprocInfo(t % 2, TUNING_CURRENT_INFO_T{v, v, v, v});
                TUNING_REPROCESS_CFG_T out;
                mRule.getReprocInfo(t % 2, out);
                const TUNING_CURRENT_INFO_T& c = out.currentInfo;
                if (c.key != c.info1 || c.key != c.info3) torn = true;
                mRule.getReprocIndex(v);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_FALSE(torn);
}

class ReplayRenameTest : public ReprocessTest {
protected:
    void SetUp() override {
        ReprocessTest::SetUp();
        // The replay dump folder is relative: the port resolves it from "/", inside the root.
        std::filesystem::create_directories(mRoot.hostPath(kDumpDir));
        load(kTwoFrames);
        ASSERT_TRUE(mRule.updateReprocInfo(0, TUNING_CURRENT_INFO_T{1, 9, 5, 123}));
    }
    void dumped(const std::string& name) { makeFile(kDumpDir + name, name); }
    bool present(const std::string& name) { return mRoot.exists(kDumpDir + name); }
};

TEST_F(ReplayRenameTest, DumpedFilesTakeTheConfiguredNames) {
    ASSERT_TRUE(mRule.updateReprocInfo(1, TUNING_CURRENT_INFO_T{2, 10, 5, 123}));
    dumped("000000123-0005-0009-imgo.raw");
    dumped("p2-000000123-0005-0009.reg");
    dumped("000000123-0005-0010.yuv");
    dumped("000000124-0005-0009.raw");
    mRule.uninitReprocInfo();

    EXPECT_TRUE(present("42-0007-0007-imgo.raw"));
    EXPECT_TRUE(present("p2-42-0007-0007.reg"));
    EXPECT_TRUE(present("000000124-0005-0009.raw"));
    EXPECT_EQ(mRoot.readFile(std::string(kDumpDir) + "42-0008-0008.yuv"),
              "000000123-0005-0010.yuv");
    EXPECT_EQ(mLog.count("[uninitReprocInfo] cfg(42-0007-0007), curfrm(000000123-0005-0009)"), 1);
    EXPECT_EQ(mLog.countContaining("= (data/vendor/camera_dump/000000123-0005-0010.yuv), new = "
                                   "(data/vendor/camera_dump/42-0008-0008.yuv)"),
              1);
    EXPECT_EQ(mLog.countContaining("[uninitReprocInfo] Renamed, file["), 3);
}

TEST_F(ReplayRenameTest, FailedRenameIsReportedAndTheOthersGoOn) {
    dumped("000000123-0005-0009-a.raw");
    dumped("000000123-0005-0009-b.raw");
    fs::testing::failNext(fs::testing::Op::Rename, 1, EACCES);
    mRule.uninitReprocInfo();
    EXPECT_EQ(mLog.countContaining("[uninitReprocInfo] Fail, file["), 1);
    EXPECT_EQ(mLog.countContaining("[uninitReprocInfo] Renamed, file["), 1);
    EXPECT_EQ(present("42-0007-0007-a.raw") + present("42-0007-0007-b.raw"), 1);
}

TEST_F(ReplayRenameTest, MissingDumpFolderIsReported) {
    std::filesystem::remove_all(mRoot.hostPath(kDumpDir));
    mRule.uninitReprocInfo();
    EXPECT_EQ(errors("[getdir]Error(2) opening : data/vendor/camera_dump/"), 1);
    EXPECT_EQ(mLog.countContaining("[uninitReprocInfo] cfg("), 2);
}

}  // namespace
}  // namespace test
}  // namespace camtune
