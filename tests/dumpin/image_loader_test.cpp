// Image loaders: which file fills the buffer, the relock, and the messages of each loader.
#include <cstring>
#include <memory>
#include <string>
#include <tuple>

#include "camtune/file_read_rule.h"
#include "camtune/platform/host_image_buffer.h"
#include "dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

using NSCam::IImageBuffer;
using NSCam::TuningUtils::FileReadRule;

constexpr uint32_t kRelockUsage = 0x60033;
constexpr char kUser[] = "P1Node";

class ImageLoaderTest : public DumpinTest {
protected:
    void SetUp() override {
        makeFile("/data/img/a.raw", "AAAAAAAA");
        makeFile("/data/img/b.raw", "BBBBBBBB");
        reset();
    }
    // A fresh 8-byte buffer locked by kUser, and an empty log.
    void reset() {
        mBuf = NSCam::HostImageBuffer::create(NSCam::eImgFmt_Y8, NSCam::MSize{4, 2});
        ASSERT_NE(mBuf, nullptr);
        ASSERT_TRUE(mBuf->lockBuf(kUser, 0x3));
        mLog.clear();
    }
    std::string content() const {
        return std::string(reinterpret_cast<const char*>(mBuf->getBufVA(0)), 8);
    }

    std::unique_ptr<NSCam::HostImageBuffer> mBuf;
};

struct LoaderCase {
    const char* name;
    int (*call)(FileReadRule&, IImageBuffer*);  // request 1, profile "P", buffer user kUser
    const char* entry;                          // list line up to the path
    const char* word;                           // in the load messages
    const char* notFound;                       // message when no line matches
    const char* unreadable;                     // message when the list cannot be read
};

const LoaderCase kLoaders[] = {
        {"getFile_RAW",
         [](FileReadRule& r, IImageBuffer* b) { return r.getFile_RAW(1, "P", b, kUser); },
         "raw,0001,P;", "imgo", "Fail to load imgo from ()", "Fail find imgo path in config"},
        {"getFile_LCSO",
         [](FileReadRule& r, IImageBuffer* b) { return r.getFile_LCSO(1, "P", b, kUser); },
         "lcso,0001,P;", "LCSO", "Fail to load LCSO from ()", "Fail find LCSO path in config"},
        {"getFile_RRZO",
         [](FileReadRule& r, IImageBuffer* b) { return r.getFile_RRZO(1, "P", b, kUser); },
         "rrzo,0001,P;", "RRZO", "Fail to load RRZO from ()", "Fail to find RRZO path in config"},
        {"getFile_WarpingRaw",
         [](FileReadRule& r, IImageBuffer* b) {
             return r.getFile_WarpingRaw(1, "P", b, "u", kUser);
         },
         "packed_word,0001,u,P;", "WarpingRaw", "Fail find WarpingRaw path in config",
         "Fail find WarpingRaw path in config"},
        {"getFile_YNR_MAP",
         [](FileReadRule& r, IImageBuffer* b) { return r.getFile_YNR_MAP(1, "P", b, kUser); },
         "ynr_map,0001,P;", "YNR_MAP", "Fail to load YNR_MAP from ()",
         "Fail to load YNR_MAP from ()"},
};

TEST_F(ImageLoaderTest, EachLoaderReportsFoundMissingNotFoundAndUnreadable) {
    for (const LoaderCase& c : kLoaders) {
        const std::string word = c.word;
        const std::tuple<std::string, int, std::string> scenarios[] = {
                {c.entry + std::string("/data/img/a.raw\n"), 1,
                 "Load " + word + " from (/data/img/a.raw)"},
                {c.entry + std::string("/data/img/missing.raw\n"), 0,
                 "Fail to load " + word + " from (/data/img/missing.raw)"},
                {"other,0001,u,P;/data/img/a.raw\n", 0, c.notFound},
                {"", 0, c.unreadable},  // no list file
        };
        for (const auto& [list, result, message] : scenarios) {
            SCOPED_TRACE(std::string(c.name) + ": " + message);
            reset();
            useList(list);
            if (list.empty()) mProps.set(props::kDumpinConfigPath, std::string("/data/none.list"));
            EXPECT_EQ(c.call(mRule, mBuf.get()), result);
            EXPECT_EQ(debugs(std::string("[") + c.name + "] " + message), 1);
            // A load attempt gives the buffer back relocked; a failed search leaves it alone.
            bool attempted = message.find("find") == std::string::npos;
            EXPECT_EQ(mBuf->syncCount(), attempted ? 1 : 0);
            EXPECT_EQ(mBuf->lockUsage(kUser), attempted ? kRelockUsage : 0x3u);
            EXPECT_EQ(content(), result ? "AAAAAAAA" : std::string(8, '\0'));
        }
        reset();
        useList(c.entry + std::string("/data/img/a.raw\n"));
        mProps.set(props::kDumpinEnable, 1);
        EXPECT_EQ(c.call(mRule, mBuf.get()), 0) << c.name;
        EXPECT_TRUE(mLog.lines().empty()) << c.name;
    }
}

TEST_F(ImageLoaderTest, OnlyMfnrCallersChooseTheEntryByRequest) {
    // The line's profile is never compared; the last line has no newline.
    useList("raw,0001,EIspProfile_MFNR;/data/img/a.raw\nraw,0002,EIspProfile_MFNR;/data/img/b.raw");
    EXPECT_EQ(mRule.getFile_RAW(2, "EIspProfile_Preview", mBuf.get(), kUser), 1);
    EXPECT_EQ(content(), "AAAAAAAA");
    EXPECT_EQ(mRule.getFile_RAW(2, "EIspProfile_MFNR_Single", mBuf.get(), kUser), 1);
    EXPECT_EQ(content(), "BBBBBBBB");
    // A rejected last line without newline leaves its remainder as the path.
    EXPECT_EQ(mRule.getFile_RAW(3, "EIspProfile_MFNR_Single", mBuf.get(), kUser), 0);
    EXPECT_EQ(
            debugs("[getFile_RAW] Fail to load imgo from (0002,EIspProfile_MFNR;/data/img/b.raw)"),
            1);
}

TEST_F(ImageLoaderTest, NullProfileAndBufferAreReportedNotDereferenced) {
    useList("raw,0001,P;/data/img/a.raw\n");
    EXPECT_EQ(mRule.getFile_RAW(1, nullptr, nullptr, kUser), 0);
    EXPECT_EQ(errors("[getFile_RAW] ispProfile is nullptr! str_ispProfile is not assigned!"), 1);
    EXPECT_EQ(errors("[getFile_RAW] pbuf is nullptr! cannot load (/data/img/a.raw)"), 1);
    EXPECT_EQ(mLog.countContaining("[getFile_RAW] reqNum(1) ispProfile((null)) pbuf("), 1);
}

TEST_F(ImageLoaderTest, WarpingRawMatchesFormatAndUsageOnly) {
    useList("packed_word,0001,other,P;/data/img/b.raw\n"
            "packed_word,0007,warp,EIspProfile_X;/data/img/a.raw\r\n"
            "packed_word,0001,,P;/data/img/b.raw\n");
    EXPECT_EQ(mRule.getFile_WarpingRaw(1, "P", mBuf.get(), "warp", kUser), 1);
    EXPECT_EQ(content(), "AAAAAAAA");
    EXPECT_EQ(mLog.countContaining("pUserString(warp), pBufString(P1Node)"), 1);
    EXPECT_EQ(mRule.getFile_WarpingRaw(1, "P", mBuf.get(), nullptr, kUser), 1);
    EXPECT_EQ(content(), "BBBBBBBB");
    EXPECT_EQ(errors("[getFile_WarpingRaw] pUserString is nullptr! str_usage is not assigned!"), 1);
}

TEST_F(ImageLoaderTest, YuvSavesTheBufferToTheListedPathOnPortOneOnly) {
    std::memset(mBuf->getBufVA(0), 'Y', 8);
    useList("raw,0001,P;/data/img/a.raw\n");
    EXPECT_EQ(mRule.getFile_YUV(1, "P", mBuf.get(), kUser, NSCam::TuningUtils::YUV_PORT_IMG3O), 1);
    EXPECT_EQ(mLog.countContaining("DEBUG load yuv"), 0);
    useList("raw,0001,P;/data/img/a.raw\nimg3o,0003,X;/data/img/out.yuv\n");
    EXPECT_EQ(mRule.getFile_YUV(1, "P", mBuf.get(), kUser, NSCam::TuningUtils::YUV_PORT_IMG2O), 0);
    EXPECT_FALSE(mRoot.exists("/data/img/out.yuv"));
    mProps.set(props::kDumpinEnable, 1);
    EXPECT_EQ(mRule.getFile_YUV(1, "P", mBuf.get(), kUser, NSCam::TuningUtils::YUV_PORT_IMG3O), 0);
    EXPECT_FALSE(mRoot.exists("/data/img/out.yuv"));
    mProps.set(props::kDumpinEnable, 2);
    mLog.clear();
    EXPECT_EQ(mRule.getFile_YUV(1, "P", mBuf.get(), kUser, NSCam::TuningUtils::YUV_PORT_IMG3O), 1);
    EXPECT_EQ(mRoot.readFile("/data/img/out.yuv"), "YYYYYYYY");
    EXPECT_EQ(debugs("DEBUG load yuv from /data/img/out.yuv"), 1);
    EXPECT_EQ(debugs("[getFile_YUV] reqNum(1) ispProfile(P) pUserString(P1Node) yuv_port(1)"), 1);
    EXPECT_EQ(mBuf->syncCount(), 0);
}

}  // namespace
}  // namespace test
}  // namespace camtune
