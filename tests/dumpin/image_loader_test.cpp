// Image loaders: which file fills the buffer, the relock, and the messages of each loader.
#include <cstring>
#include <memory>
#include <string>

#include "camtune/file_read_rule.h"
#include "camtune/platform/image_buffer.h"
#include "dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

using NSCam::HostImageBuffer;
using NSCam::IImageBuffer;
using NSCam::TuningUtils::FileReadRule;

constexpr uint32_t kRelockUsage = 0x60033;
constexpr char kUser[] = "P1Node";
// A Y8 image of 4x2 holds 8 bytes in one plane.
constexpr NSCam::MSize kSize{4, 2};

class ImageLoaderTest : public DumpinTest {
protected:
    void SetUp() override {
        mBuf = HostImageBuffer::create(NSCam::eImgFmt_Y8, kSize);
        ASSERT_NE(mBuf, nullptr);
        ASSERT_TRUE(mBuf->lockBuf(kUser, 0x3));
        makeFile("/data/img/a.raw", "AAAAAAAA");
        makeFile("/data/img/b.raw", "BBBBBBBB");
    }
    std::string content() const {
        return std::string(reinterpret_cast<const char*>(mBuf->getBufVA(0)), 8);
    }
    void expectRelocked(int syncs = 1) const {
        EXPECT_EQ(mBuf->lockUsage(kUser), kRelockUsage);
        EXPECT_EQ(mBuf->syncCount(), syncs);
    }

    std::unique_ptr<HostImageBuffer> mBuf;
};

using Loader = int (FileReadRule::*)(int, const char*, IImageBuffer*, const char*, int);

struct LoaderCase {
    Loader loader;
    const char* name;
    const char* keyword;
    const char* word;  // in its messages
    const char* failFind;
};

const LoaderCase kImageLoaders[] = {
        {&FileReadRule::getFile_RAW, "getFile_RAW", "raw", "imgo", "Fail find imgo path"},
        {&FileReadRule::getFile_LCSO, "getFile_LCSO", "lcso", "LCSO", "Fail find LCSO path"},
        {&FileReadRule::getFile_RRZO, "getFile_RRZO", "rrzo", "RRZO", "Fail to find RRZO path"},
};

std::string bracket(const char* name, const std::string& text) {
    return std::string("[") + name + "] " + text;
}

TEST_F(ImageLoaderTest, NonMfnrCallersGetTheFirstEntryOfTheirKeyword) {
    for (const LoaderCase& c : kImageLoaders) {
        // The line's own profile is never compared.
        useList(std::string("other,0001,P;/data/img/b.raw\n") + c.keyword +
                ",0009,EIspProfile_Whatever;/data/img/a.raw\n" + c.keyword +
                ",0002,EIspProfile_Capture;/data/img/b.raw\n");
        for (int reqNum : {2, 3}) {
            mLog.clear();
            std::memset(mBuf->getBufVA(0), 0, 8);
            EXPECT_EQ((mRule.*c.loader)(reqNum, "EIspProfile_Capture", mBuf.get(), kUser, 0), 1)
                    << c.name;
            EXPECT_EQ(content(), "AAAAAAAA") << c.name;
            EXPECT_EQ(
                    countAt(log::Level::Debug, bracket(c.name, std::string("Load ") + c.word +
                                                                       " from (/data/img/a.raw)")),
                    1)
                    << c.name;
        }
        EXPECT_EQ(mBuf->lockUsage(kUser), kRelockUsage);
    }
}

TEST_F(ImageLoaderTest, MfnrCallersGetTheEntryOfTheirRequest) {
    for (const LoaderCase& c : kImageLoaders) {
        useList(std::string(c.keyword) + ",0001,EIspProfile_MFNR;/data/img/a.raw\n" + c.keyword +
                ",0002,EIspProfile_MFNR;/data/img/b.raw\n");
        EXPECT_EQ((mRule.*c.loader)(2, "EIspProfile_MFNR_Single", mBuf.get(), kUser, 0), 1);
        EXPECT_EQ(content(), "BBBBBBBB") << c.name;
        // No entry for request 3: the search ends on an empty path, which fails to load.
        mLog.clear();
        EXPECT_EQ((mRule.*c.loader)(3, "EIspProfile_MFNR_Single", mBuf.get(), kUser, 0), 0);
        EXPECT_EQ(content(), "BBBBBBBB");
        EXPECT_EQ(countAt(log::Level::Debug,
                          bracket(c.name, std::string("Fail to load ") + c.word + " from ()")),
                  1)
                << c.name;
        EXPECT_EQ(mBuf->lockUsage(kUser), kRelockUsage);
    }
}

TEST_F(ImageLoaderTest, LastLineWithoutNewlineStaysInTheWorkingText) {
    // A rejected last line that ends the file without "\n" leaves its remainder behind.
    useList("raw,0001,EIspProfile_MFNR;/data/img/a.raw");
    EXPECT_EQ(mRule.getFile_RAW(3, "EIspProfile_MFNR", mBuf.get(), kUser), 0);
    EXPECT_TRUE(mLog.contains(
            "[getFile_RAW] Fail to load imgo from (0001,EIspProfile_MFNR;/data/img/a.raw)"));
}

TEST_F(ImageLoaderTest, UnreadableListReportsFailFindAndLeavesTheBufferAlone) {
    for (const LoaderCase& c : kImageLoaders) {
        mProps.set(props::kDumpinEnable, 2);
        mProps.set(props::kDumpinConfigPath, std::string("/data/none.list"));
        mLog.clear();
        EXPECT_EQ((mRule.*c.loader)(1, "P", mBuf.get(), kUser, 0), 0);
        EXPECT_EQ(
                countAt(log::Level::Debug, bracket(c.name, std::string(c.failFind) + " in config")),
                1)
                << c.name;
        EXPECT_EQ(mBuf->lockUsage(kUser), 0x3u) << "buffer was touched by " << c.name;
        EXPECT_EQ(mBuf->syncCount(), 0);
    }
}

TEST_F(ImageLoaderTest, MissingFileFailsButTheBufferComesBackLocked) {
    useList("raw,0001,P;/data/img/missing.raw\n");
    EXPECT_EQ(mRule.getFile_RAW(1, "P", mBuf.get(), kUser), 0);
    EXPECT_EQ(countAt(log::Level::Debug,
                      "[getFile_RAW] Fail to load imgo from (/data/img/missing.raw)"),
              1);
    expectRelocked();
}

TEST_F(ImageLoaderTest, PathHoldingDefaultIsNotFound) {
    makeFile("/data/default/a.raw", "CCCCCCCC");
    useList("raw,0001,P;/data/default/a.raw\n");
    EXPECT_EQ(mRule.getFile_RAW(1, "P", mBuf.get(), kUser), 0);
    EXPECT_EQ(countAt(log::Level::Debug, "[getFile_RAW] Fail find imgo path in config"), 1);
    EXPECT_EQ(mBuf->syncCount(), 0);
}

TEST_F(ImageLoaderTest, RawLogsItsRequestAndNullProfile) {
    useList("raw,0001,P;/data/img/a.raw\n");
    EXPECT_EQ(mRule.getFile_RAW(1, nullptr, mBuf.get(), kUser), 1);
    EXPECT_EQ(countAt(log::Level::Error,
                      "[getFile_RAW] ispProfile is nullptr! str_ispProfile is not assigned!"),
              1);
    EXPECT_EQ(mLog.countContaining("[getFile_RAW] reqNum(1) ispProfile((null)) pbuf("), 1);
}

TEST_F(ImageLoaderTest, DumpOnlyDisablesEveryLoader) {
    useList("raw,0001,P;/data/img/a.raw\nlcso,0001,P;/data/img/a.raw\n"
            "rrzo,0001,P;/data/img/a.raw\npacked_word,0001,u,P;/data/img/a.raw\n"
            "ynr_map,0001,P;/data/img/a.raw\nimg3o,0001,P;/data/img/out.yuv\n");
    mProps.set(props::kDumpinEnable, 1);
    for (const LoaderCase& c : kImageLoaders) {
        EXPECT_EQ((mRule.*c.loader)(1, "P", mBuf.get(), kUser, 0), 0);
    }
    EXPECT_EQ(mRule.getFile_WarpingRaw(1, "P", mBuf.get(), "u", kUser), 0);
    EXPECT_EQ(mRule.getFile_YNR_MAP(1, "P", mBuf.get(), kUser), 0);
    EXPECT_EQ(mRule.getFile_YUV(1, "P", mBuf.get(), kUser, NSCam::TuningUtils::YUV_PORT_IMG3O), 0);
    EXPECT_TRUE(mLog.lines().empty());
    EXPECT_EQ(mBuf->syncCount(), 0);
    EXPECT_FALSE(mRoot.exists("/data/img/out.yuv"));
}

TEST_F(ImageLoaderTest, WarpingRawMatchesFormatAndUsageOnly) {
    useList("packed_word,0001,other,P;/data/img/b.raw\n"
            "packed_word,0007,warp,EIspProfile_X;/data/img/a.raw\r\n");
    ASSERT_TRUE(mBuf->unlockBuf(kUser));
    ASSERT_TRUE(mBuf->lockBuf("WarpBuf", 0x3));
    EXPECT_EQ(mRule.getFile_WarpingRaw(1, "P", mBuf.get(), "warp", "WarpBuf"), 1);
    EXPECT_EQ(content(), "AAAAAAAA");
    EXPECT_EQ(mBuf->lockUsage("WarpBuf"), kRelockUsage);
    EXPECT_EQ(countAt(log::Level::Debug,
                      "[getFile_WarpingRaw] Load WarpingRaw from (/data/img/a.raw)"),
              1);
    EXPECT_EQ(mLog.countContaining("pUserString(warp), pBufString(WarpBuf)"), 1);
}

TEST_F(ImageLoaderTest, WarpingRawWithoutUsageMatchesOnlyEmptyUsage) {
    useList("packed_word,0001,warp,P;/data/img/b.raw\npacked_word,0001,,P;/data/img/a.raw\n");
    EXPECT_EQ(mRule.getFile_WarpingRaw(1, "P", mBuf.get(), nullptr, kUser), 1);
    EXPECT_EQ(content(), "AAAAAAAA");
    EXPECT_EQ(countAt(log::Level::Error,
                      "[getFile_WarpingRaw] pUserString is nullptr! str_usage is not assigned!"),
              1);
}

TEST_F(ImageLoaderTest, WarpingRawWithoutMatchReportsFailFind) {
    for (const char* list : {"packed_word,0001,warp,P;/data/img/a.raw\n", ""}) {
        useList(list);
        mLog.clear();
        EXPECT_EQ(mRule.getFile_WarpingRaw(1, "P", mBuf.get(), "other", kUser), 0);
        EXPECT_EQ(countAt(log::Level::Debug,
                          "[getFile_WarpingRaw] Fail find WarpingRaw path in config"),
                  1);
    }
}

TEST_F(ImageLoaderTest, YnrMapLoadsThroughExtractFile) {
    useList("ynr_map,0005,EIspProfile_Capture;/data/img/b.raw\n");
    EXPECT_EQ(mRule.getFile_YNR_MAP(5, "EIspProfile_Capture", mBuf.get(), kUser), 1);
    EXPECT_EQ(content(), "BBBBBBBB");
    EXPECT_EQ(countAt(log::Level::Debug, "[Extract_File] file exist(/data/img/b.raw)"), 1);
    EXPECT_EQ(countAt(log::Level::Debug, "[getFile_YNR_MAP] Load YNR_MAP from (/data/img/b.raw)"),
              1);
    expectRelocked();
}

TEST_F(ImageLoaderTest, YnrMapWithoutEntryLoadsAnEmptyPath) {
    useList("lsc,0005,EIspProfile_Capture;/data/img/b.raw\n");
    EXPECT_EQ(mRule.getFile_YNR_MAP(5, "EIspProfile_Capture", mBuf.get(), kUser), 0);
    EXPECT_EQ(countAt(log::Level::Debug, "[getFile_YNR_MAP] Fail to load YNR_MAP from ()"), 1);
    EXPECT_EQ(mLog.countContaining("Fail find YNR_MAP"), 0);
    expectRelocked();
}

TEST_F(ImageLoaderTest, YuvSavesTheBufferToTheListedPathOnPortOneOnly) {
    std::memset(mBuf->getBufVA(0), 'Y', 8);
    useList("raw,0001,P;/data/img/a.raw\nimg3o,0003,X;/data/img/out.yuv\n");
    EXPECT_EQ(mRule.getFile_YUV(1, "P", mBuf.get(), kUser, NSCam::TuningUtils::YUV_PORT_IMG2O), 0);
    EXPECT_FALSE(mRoot.exists("/data/img/out.yuv"));
    EXPECT_EQ(mRule.getFile_YUV(1, "P", mBuf.get(), kUser, NSCam::TuningUtils::YUV_PORT_IMG3O), 1);
    EXPECT_EQ(mRoot.readFile("/data/img/out.yuv"), "YYYYYYYY");
    EXPECT_EQ(countAt(log::Level::Debug, "DEBUG load yuv from /data/img/out.yuv"), 1);
    EXPECT_EQ(countAt(log::Level::Debug,
                      "[getFile_YUV] reqNum(1) ispProfile(P) pUserString(P1Node) yuv_port(1)"),
              1);
    EXPECT_EQ(mBuf->lockUsage(kUser), 0x3u);
}

TEST_F(ImageLoaderTest, YuvWithoutLineStillSucceedsAndTouchesNothing) {
    useList("raw,0001,P;/data/img/a.raw\n");
    EXPECT_EQ(mRule.getFile_YUV(1, "P", mBuf.get(), kUser, NSCam::TuningUtils::YUV_PORT_IMG3O), 1);
    EXPECT_EQ(mLog.countContaining("DEBUG load yuv"), 0);
    EXPECT_EQ(mBuf->syncCount(), 0);
}

TEST_F(ImageLoaderTest, NullBufferIsReportedNotDereferenced) {
    useList("raw,0001,P;/data/img/a.raw\n");
    EXPECT_EQ(mRule.getFile_RAW(1, "P", nullptr, kUser), 0);
    EXPECT_EQ(countAt(log::Level::Error,
                      "[getFile_RAW] pbuf is nullptr! cannot load (/data/img/a.raw)"),
              1);
}

}  // namespace
}  // namespace test
}  // namespace camtune
