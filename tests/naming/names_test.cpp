#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "camtune/naming.h"
#include "naming/naming_fixture.h"
#include "support/log_capture.h"

namespace camtune {
namespace test {
namespace {

using namespace NSCam::TuningUtils;

using DataNameFn = int (*)(char*, int, const FILE_DUMP_NAMING_HINT*, const char*);

const std::string kPrefix = "/data/vendor/camera_dump/005012345-0012-0034";
const std::string kRawTail = "-PW4000-PH3000-BW5000__4000x3000_10_1.packed_word";

FILE_DUMP_NAMING_HINT rawHint() {
    FILE_DUMP_NAMING_HINT hint;
    hint.UniqueKey = 5012345;
    hint.RequestNo = 12;
    hint.FrameNo = 34;
    hint.SensorDev = 1;
    hint.BufWidth = hint.ImgWidth = 4000;
    hint.BufHeight = hint.ImgHeight = 3000;
    hint.BufStride = 5000;
    hint.ImgFormat = 0x2201;
    hint.SensorFormatOrder = 1;
    return hint;
}

std::string raw(const FILE_DUMP_NAMING_HINT& hint, int port = RAW_PORT_IMGO,
                const char* user = nullptr) {
    char buf[256];
    genFileName_RAW(buf, sizeof(buf), &hint, static_cast<RAW_PORT>(port), user);
    return buf;
}

std::string yuv(const FILE_DUMP_NAMING_HINT& hint, int port = YUV_PORT_IMG2O) {
    char buf[256];
    genFileName_YUV(buf, sizeof(buf), &hint, static_cast<YUV_PORT>(port), nullptr);
    return buf;
}

using NameTest = NamingTest;

TEST_F(NameTest, WorkedExamples) {
    char buf[256];
    const FILE_DUMP_NAMING_HINT rawExample = rawHint();
    EXPECT_EQ(genFileName_RAW(buf, sizeof(buf), &rawExample, RAW_PORT_IMGO), 12);
    EXPECT_EQ(std::string(buf), kPrefix + "-main-imgo" + kRawTail);

    FILE_DUMP_NAMING_HINT hint = rawHint();
    hint.SensorDev = 2;
    hint.BufWidth = hint.ImgWidth = hint.BufStride = 1920;
    hint.BufHeight = hint.ImgHeight = 1080;
    hint.ImgFormat = 0x11;
    EXPECT_EQ(genFileName_YUV(buf, sizeof(buf), &hint, YUV_PORT_IMG2O, "P2"), 5);
    EXPECT_EQ(std::string(buf),
              kPrefix + "-sub-img2o-P2-PW1920-PH1080-BW1920__1920x1080_8_s0.nv21");
    EXPECT_EQ(genFileName_JPG(buf, sizeof(buf), &hint, "P2"), 4);
    EXPECT_EQ(std::string(buf), kPrefix + "-P2.jpg");
}

TEST_F(NameTest, PortElement) {
    const std::string yuvTail = "-PW4000-PH3000-BW5000__4000x3000_10_s0.packed_word";
    struct Case {
        int port;
        const char* rawPiece;
        const char* yuvPiece;
    } cases[] = {
            // clang-format off
            {-2, "", ""}, {-1, "-undef", "-undef"}, {0, "-imgo", "-img2o"}, {1, "-rrzo", "-img3o"},
            {2, "-undef", "-wroto"}, {7, "-undef", "-crzor1"}, {14, "-undef", "-yuv4o"},
            {15, "-undef", "-undef"},
            // clang-format on
    };
    for (const Case& c : cases) {
        EXPECT_EQ(raw(rawHint(), c.port), kPrefix + "-main" + c.rawPiece + kRawTail);
        EXPECT_EQ(yuv(rawHint(), c.port), kPrefix + "-main" + c.yuvPiece + yuvTail);
    }
}

TEST_F(NameTest, SensorElementOnlyForASetDevice) {
    struct Case {
        int32_t sensorDev;
        const char* element;
    } cases[] = {{-1, ""},       {0, "-sensor"}, {1, "-main"},   {2, "-sub"},
                 {3, "-sensor"}, {8, "-sub2"},   {64, "-main4"}, {128, "-sensor"}};
    for (const Case& c : cases) {
        FILE_DUMP_NAMING_HINT hint = rawHint();
        hint.SensorDev = c.sensorDev;
        EXPECT_EQ(raw(hint, RAW_PORT_NULL), kPrefix + c.element + kRawTail);
    }
}

TEST_F(NameTest, ColourOrderBitDepthAndExtension) {
    struct Case {
        int32_t order, format;
        const char* rawEnd;
        const char* yuvEnd;
    } cases[] = {
            {0, 0x2201, "_10_0.packed_word", "_10_s0.packed_word"},
            {3, 0x11, "_8_3.nv21", "_8_s0.nv21"},
            {-1, 0x2217, "_16_senfmt.raw", "_16_s0.raw"},
            {4, 0x2506, "_10_senfmt.p010yuv_ufbc", "_10_s0.p010yuv_ufbc"},
            {2, 0x2101, "_imgfmt_2.rgb48", "_imgfmt_s0.rgb48"},
            {1, -1, "_imgfmt_1.unknown", "_imgfmt_s0.unknown"},
            {1, 0x2216, "_15_1.raw", "_15_s0.raw"},
            {1, 0x2218, "_24_1.packed_word", "_24_s0.packed_word"},
            {1, 0x20203859, "_8_1.y", "_8_s0.y"},
            {1, 0x2200, "_imgfmt_1.unknown", "_imgfmt_s0.unknown"},
    };
    const std::string geometry = "-PW4000-PH3000-BW5000__4000x3000";
    for (const Case& c : cases) {
        FILE_DUMP_NAMING_HINT hint = rawHint();
        hint.SensorFormatOrder = c.order;
        hint.ImgFormat = c.format;
        EXPECT_EQ(raw(hint), kPrefix + "-main-imgo" + geometry + c.rawEnd);
        EXPECT_EQ(yuv(hint), kPrefix + "-main-img2o" + geometry + c.yuvEnd);
    }
}

TEST_F(NameTest, FreeTextsAndExposureLabelUpToTheirArrays) {
    FILE_DUMP_NAMING_HINT hint = rawHint();
    std::strcpy(hint.UserString, "hint");
    std::strcpy(hint.ExpString, "LongExp");
    const std::string geometry = "-PW4000-PH3000-BW5000";
    EXPECT_EQ(raw(hint, RAW_PORT_RRZO, "call"),
              kPrefix + "-main-rrzo-hint-call" + geometry + "-LongExp__4000x3000_10_1.packed_word");
    EXPECT_EQ(raw(hint, RAW_PORT_RRZO, ""),
              kPrefix + "-main-rrzo-hint" + geometry + "-LongExp__4000x3000_10_1.packed_word");
    EXPECT_EQ(yuv(hint), kPrefix + "-main-img2o-hint" + geometry + "__4000x3000_10_s0.packed_word");

    char buf[128];
    EXPECT_EQ(genFileName_JPG(buf, sizeof(buf), &hint, nullptr), 4);
    EXPECT_EQ(std::string(buf), kPrefix + "-hint.jpg");
    std::memset(hint.UserString, 'u', sizeof(hint.UserString));
    genFileName_JPG(buf, sizeof(buf), &hint, nullptr);
    EXPECT_EQ(std::string(buf), kPrefix + "-" + std::string(32, 'u') + ".jpg");
}

TEST_F(NameTest, ElementThatDoesNotFitLeavesRoomForTheNext) {
    const FILE_DUMP_NAMING_HINT hint = rawHint();
    const std::string head = kPrefix + "-main-imgo";
    const int size = static_cast<int>(head.size()) + 13;  // room for ".packed_word" only
    char buf[256];
    EXPECT_EQ(genFileName_RAW(buf, size, &hint, RAW_PORT_IMGO, nullptr), 12);
    EXPECT_EQ(std::string(buf), head + ".packed_word");

    EXPECT_EQ(genFileName_RAW(buf, size - 1, &hint, RAW_PORT_IMGO, nullptr), 12);
    EXPECT_EQ(std::string(buf), head + ".packed_wor");
}

struct Kind {
    const char* function;
    DataNameFn fn;
    const char* tail;
    int result;
};

#define KIND(kind) #kind, genFileName_##kind
const Kind kKinds[] = {
        {KIND(HW_AAO), "-main-af-af-x.hw_aao", 7},
        {KIND(HW_AAHO), "-main-af-x.hw_aaho", 8},
        {KIND(LCSO), "-main-af-x-PW4000-PH3000-BW5000__4000x3000_12_s0.lcso", 5},
        {KIND(TSF), "-main-af-x-profile.tsfso", 6},
        {KIND(Reg), "-main-af-x-profile", 0},
        {KIND(TUNING), "-main-af-x-profile.tuning", 7},
        {KIND(VSDOF_BUFFER), "-main-af-x", 2},
        {KIND(YNR_FD_TBL), "-main-af-x-fd.ynrtbl", 10},
        {KIND(DCESO), "-main-af-x.dceso", 6},
        {KIND(LTM_CURVE), "-main-af-x-profile.ltm", 4},
        {KIND(BPC_TBL), "-main-af-x.bpci", 5},
        {KIND(face_info), "-main-af-x-profile.faceinfo", 9},
        {KIND(FD_data), "-main-af-x.fd_bin", 7},
        {KIND(LCESHO), "-main-af-x.lcesho", 7},
        {KIND(MSS_REG), "-main-af-x-profile_mss.reg", 8},
        {KIND(MFB_REG), "-main-af-x-profile_mfb.reg", 8},
        {KIND(P2_REG), "-main-af-x-profile_p2.reg", 7},
        {KIND(AISA), "-main-af-x.aisa", 5},
        {KIND(AIGA), "-main-af-x.aima", 5},
};
#undef KIND

std::string name(DataNameFn fn, const FILE_DUMP_NAMING_HINT& hint, const char* user,
                 int* result = nullptr) {
    char buf[256];
    const int r = fn(buf, sizeof(buf), &hint, user);
    if (result != nullptr) *result = r;
    return buf;
}

TEST_F(NameTest, EveryDataKindWithFreeTexts) {
    FILE_DUMP_NAMING_HINT hint = rawHint();
    std::strcpy(hint.UserString, "af");
    for (const Kind& k : kKinds) {
        int result = 0;
        EXPECT_EQ(name(k.fn, hint, "x", &result), kPrefix + k.tail) << k.function;
        EXPECT_EQ(result, k.result) << k.function;
    }
}

TEST_F(NameTest, DataNamesWithoutFreeTexts) {
    FILE_DUMP_NAMING_HINT hint = rawHint();
    int result = 0;
    EXPECT_EQ(name(genFileName_TUNING, hint, nullptr, &result), kPrefix + "-main-profile.tuning");
    EXPECT_EQ(result, 7);
    std::strcpy(hint.ExpString, "ShtExp");
    EXPECT_EQ(name(genFileName_Reg, hint, "", &result), kPrefix + "-main-profile-ShtExp");
    EXPECT_EQ(result, 7);
    std::strcpy(hint.UserString, "af");
    EXPECT_EQ(name(genFileName_VSDOF_BUFFER, hint, "", &result), kPrefix + "-main-af");
    EXPECT_EQ(result, 0);
}

TEST_F(NameTest, DefaultHint) {
    const FILE_DUMP_NAMING_HINT hint;
    const std::string prefix = "/data/vendor/camera_dump/uniquekey-rqst-frme";
    EXPECT_EQ(raw(hint), prefix + "-imgo-PW0-PH0-BW0__0x0_imgfmt_senfmt.unknown");
    EXPECT_EQ(name(genFileName_LCSO, hint, nullptr), prefix + "-PW0-PH0-BW0__0x0_12_s0.lcso");
    EXPECT_EQ(name(genFileName_DCESO, hint, nullptr), prefix + "-sensor.dceso");
}

TEST_F(NameTest, MissingHintGivesAnEmptyName) {
    LogCapture log;
    char buf[16] = "stale";
    EXPECT_EQ(genFileName_RAW(buf, sizeof(buf), nullptr, RAW_PORT_IMGO, nullptr), -1);
    EXPECT_STREQ(buf, "");
    EXPECT_EQ(genFileName_YUV(buf, sizeof(buf), nullptr, YUV_PORT_IMG2O, nullptr), -1);
    EXPECT_EQ(genFileName_JPG(nullptr, 0, nullptr, nullptr), -1);
    EXPECT_EQ(log.count(log::Level::Error, "[genFileName_RAW] no naming hint given"), 1);
    EXPECT_EQ(log.count(log::Level::Error, "[genFileName_JPG] no naming hint given"), 1);
    for (const Kind& k : kKinds) {
        std::strcpy(buf, "stale");
        EXPECT_EQ(k.fn(buf, sizeof(buf), nullptr, "x"), -1) << k.function;
        EXPECT_STREQ(buf, "") << k.function;
        EXPECT_EQ(log.count(log::Level::Error,
                            std::string("[genFileName_") + k.function + "] no naming hint given"),
                  1);
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
