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

const std::string kPrefix = "/data/vendor/camera_dump/005012345-0012-0034";

FILE_DUMP_NAMING_HINT rawHint() {
    FILE_DUMP_NAMING_HINT hint;
    hint.UniqueKey = 5012345;
    hint.RequestNo = 12;
    hint.FrameNo = 34;
    hint.SensorDev = 1;
    hint.BufWidth = 4000;
    hint.BufHeight = 3000;
    hint.BufStride = 5000;
    hint.ImgWidth = 4000;
    hint.ImgHeight = 3000;
    hint.ImgFormat = 0x2201;
    hint.SensorFormatOrder = 1;
    return hint;
}

FILE_DUMP_NAMING_HINT yuvHint() {
    FILE_DUMP_NAMING_HINT hint = rawHint();
    hint.SensorDev = 2;
    hint.BufWidth = hint.ImgWidth = 1920;
    hint.BufHeight = hint.ImgHeight = 1080;
    hint.BufStride = 1920;
    hint.ImgFormat = 0x11;
    return hint;
}

std::string raw(const FILE_DUMP_NAMING_HINT& hint, int port = RAW_PORT_IMGO,
                const char* user = nullptr, int* result = nullptr) {
    char buf[256];
    const int r = genFileName_RAW(buf, sizeof(buf), &hint, static_cast<RAW_PORT>(port), user);
    if (result != nullptr) *result = r;
    return buf;
}

std::string yuv(const FILE_DUMP_NAMING_HINT& hint, int port = YUV_PORT_IMG2O,
                const char* user = nullptr) {
    char buf[256];
    genFileName_YUV(buf, sizeof(buf), &hint, static_cast<YUV_PORT>(port), user);
    return buf;
}

using ImageNameTest = NamingTest;

TEST_F(ImageNameTest, WorkedExamples) {
    int result = 0;
    EXPECT_EQ(raw(rawHint(), RAW_PORT_IMGO, nullptr, &result),
              kPrefix + "-main-imgo-PW4000-PH3000-BW5000__4000x3000_10_1.packed_word");
    EXPECT_EQ(result, static_cast<int>(std::strlen(".packed_word")));

    char buf[256];
    const FILE_DUMP_NAMING_HINT hint = yuvHint();
    EXPECT_EQ(genFileName_YUV(buf, sizeof(buf), &hint, YUV_PORT_IMG2O, "P2"), 5);
    EXPECT_EQ(std::string(buf),
              kPrefix + "-sub-img2o-P2-PW1920-PH1080-BW1920__1920x1080_8_s0.nv21");

    EXPECT_EQ(genFileName_JPG(buf, sizeof(buf), &hint, "P2"), 4);
    EXPECT_EQ(std::string(buf), kPrefix + "-P2.jpg");
}

TEST_F(ImageNameTest, RawPortElement) {
    struct Case {
        int port;
        const char* piece;
    } cases[] = {{-2, ""},      {0, "-imgo"},   {1, "-rrzo"},
                 {2, "-undef"}, {-1, "-undef"}, {-3, "-undef"}};
    for (const Case& c : cases) {
        EXPECT_EQ(
                raw(rawHint(), c.port),
                kPrefix + "-main" + c.piece + "-PW4000-PH3000-BW5000__4000x3000_10_1.packed_word");
    }
}

TEST_F(ImageNameTest, YuvPortElement) {
    const char* pieces[] = {"-img2o",  "-img3o", "-wroto",  "-wdmao", "-timgo",
                            "-dp0",    "-dp1",   "-crzor1", "-vnro",  "-imgi",
                            "-recsdi", "-yuvo",  "-yuv2o",  "-yuv3o", "-yuv4o"};
    const std::string tail = "-PW1920-PH1080-BW1920__1920x1080_8_s0.nv21";
    for (int port = 0; port < 15; ++port) {
        EXPECT_EQ(yuv(yuvHint(), port), kPrefix + "-sub" + pieces[port] + tail);
    }
    for (int port : {-1, 15, 100, -3})
        EXPECT_EQ(yuv(yuvHint(), port), kPrefix + "-sub-undef" + tail);
    EXPECT_EQ(yuv(yuvHint(), -2), kPrefix + "-sub" + tail);
}

TEST_F(ImageNameTest, SensorElementOnlyForASetDevice) {
    struct Case {
        int32_t sensorDev;
        const char* element;
    } cases[] = {{-1, ""},       {0, "-sensor"}, {1, "-main"},    {2, "-sub"},
                 {3, "-sensor"}, {4, "-main2"},  {8, "-sub2"},    {16, "-main3"},
                 {32, "-sub3"},  {64, "-main4"}, {128, "-sensor"}};
    for (const Case& c : cases) {
        FILE_DUMP_NAMING_HINT hint = rawHint();
        hint.SensorDev = c.sensorDev;
        EXPECT_EQ(raw(hint, RAW_PORT_NULL).substr(kPrefix.size(), std::strlen(c.element) + 3),
                  std::string(c.element) + "-PW");
    }
}

TEST_F(ImageNameTest, ColourOrderElement) {
    struct Case {
        int32_t order;
        const char* element;
    } cases[] = {{0, "_0"}, {1, "_1"}, {2, "_2"}, {3, "_3"}, {-1, "_senfmt"}, {4, "_senfmt"}};
    for (const Case& c : cases) {
        FILE_DUMP_NAMING_HINT hint = rawHint();
        hint.SensorFormatOrder = c.order;
        EXPECT_EQ(raw(hint), kPrefix + "-main-imgo-PW4000-PH3000-BW5000__4000x3000_10" + c.element +
                                     ".packed_word");
    }
}

// Every row of the image-format naming table, through a raw and a YUV name.
TEST_F(ImageNameTest, BitDepthAndExtensionOfEveryFormat) {
    struct Case {
        int32_t format;
        const char* bitDepth;
        const char* extension;
    } cases[] = {
            // clang-format off
            {0x11, "8", "nv21"}, {0x14, "8", "yuy2"}, {0x36, "16", "p010yuv"},
            {0x1000, "8", "nv12"}, {0x2007, "8", "i420"}, {0x2008, "imgfmt", "unknown"},
            {0x2009, "16", "y210yuyv"}, {0x200A, "16", "y210yvyu"}, {0x200B, "16", "y210uyvy"},
            {0x200C, "16", "y210vyuy"}, {0x200D, "16", "p210yuv"}, {0x200E, "16", "p210yvu"},
            {0x200F, "16", "p210"}, {0x2010, "16", "p010yvu"}, {0x2011, "16", "p010"},
            {0x2012, "10", "packed_word"}, {0x2015, "10", "packed_word"},
            {0x201B, "10", "packed_word"}, {0x201C, "16", "p012yuv"}, {0x201D, "16", "p012yvu"},
            {0x201E, "12", "packed_word"}, {0x201F, "12", "packed_word"},
            {0x2101, "imgfmt", "rgb48"}, {0x2201, "10", "packed_word"},
            {0x2205, "10", "packed_word"}, {0x2211, "10", "packed_word"},
            {0x2202, "12", "packed_word"}, {0x2206, "12", "packed_word"},
            {0x2203, "14", "packed_word"}, {0x2207, "14", "packed_word"}, {0x2213, "10", "raw"},
            {0x2214, "12", "raw"}, {0x2215, "14", "raw"}, {0x2216, "15", "raw"},
            {0x2217, "16", "raw"}, {0x2218, "24", "packed_word"}, {0x2505, "imgfmt", "nv21_ufbc"},
            {0x2506, "10", "p010yuv_ufbc"}, {0x2507, "10", "p010yvu_ufbc"},
            {0x250B, "8", "nv12_afbc"}, {0x250C, "8", "nv21_afbc"}, {0x20203859, "8", "y"},
            {0x32315659, "8", "yv12"}, {0x2200, "imgfmt", "unknown"}, {0x2204, "imgfmt", "unknown"},
            {0x2208, "imgfmt", "unknown"}, {0x2210, "imgfmt", "unknown"},
            {0x2212, "imgfmt", "unknown"}, {0x2508, "imgfmt", "unknown"},
            {0x250A, "imgfmt", "unknown"}, {-1, "imgfmt", "unknown"}, {0, "imgfmt", "unknown"},
            // clang-format on
    };
    for (const Case& c : cases) {
        FILE_DUMP_NAMING_HINT hint = rawHint();
        hint.ImgFormat = c.format;
        SCOPED_TRACE(testing::Message() << std::hex << c.format);
        EXPECT_EQ(raw(hint), kPrefix + "-main-imgo-PW4000-PH3000-BW5000__4000x3000_" + c.bitDepth +
                                     "_1." + c.extension);
        EXPECT_EQ(yuv(hint), kPrefix + "-main-img2o-PW4000-PH3000-BW5000__4000x3000_" + c.bitDepth +
                                     "_s0." + c.extension);
    }
}

TEST_F(ImageNameTest, ExposureLabelOnlyInRawNames) {
    FILE_DUMP_NAMING_HINT hint = rawHint();
    std::strcpy(hint.ExpString, "LongExp");
    EXPECT_EQ(raw(hint),
              kPrefix + "-main-imgo-PW4000-PH3000-BW5000-LongExp__4000x3000_10_1.packed_word");
    EXPECT_EQ(yuv(hint), kPrefix + "-main-img2o-PW4000-PH3000-BW5000__4000x3000_10_s0.packed_word");
}

TEST_F(ImageNameTest, FreeTextsHintFirstThenCaller) {
    FILE_DUMP_NAMING_HINT hint = rawHint();
    std::strcpy(hint.UserString, "hint");
    const std::string tail = "-PW4000-PH3000-BW5000__4000x3000_10_1.packed_word";
    EXPECT_EQ(raw(hint, RAW_PORT_RRZO, "call"), kPrefix + "-main-rrzo-hint-call" + tail);
    EXPECT_EQ(raw(hint, RAW_PORT_RRZO, ""), kPrefix + "-main-rrzo-hint" + tail);

    char buf[128];
    EXPECT_EQ(genFileName_JPG(buf, sizeof(buf), &hint, nullptr), 4);
    EXPECT_EQ(std::string(buf), kPrefix + "-hint.jpg");
}

TEST_F(ImageNameTest, UnterminatedHintTextStopsAtItsArray) {
    FILE_DUMP_NAMING_HINT hint = rawHint();
    std::memset(hint.UserString, 'u', sizeof(hint.UserString));
    char buf[256];
    genFileName_JPG(buf, sizeof(buf), &hint, nullptr);
    EXPECT_EQ(std::string(buf), kPrefix + "-" + std::string(32, 'u') + ".jpg");
}

TEST_F(ImageNameTest, ExposureValueWhenBracketing) {
    LogCapture quiet;
    FILE_DUMP_NAMING_HINT hint = yuvHint();
    hint.EvValue = -2;
    EXPECT_EQ(yuv(hint).substr(0, kPrefix.size() + 4), kPrefix + "-sub");
    bracketing(2);
    EXPECT_EQ(yuv(hint).substr(0, kPrefix.size() + 9), kPrefix + "_-2EV-sub");
    bracketing(0);
    EXPECT_EQ(yuv(hint).substr(0, kPrefix.size() + 4), kPrefix + "-sub");
    bracketing(1);
    EXPECT_EQ(yuv(hint).substr(0, kPrefix.size() + 9), kPrefix + "_-2EV-sub");
}

TEST_F(ImageNameTest, ElementThatDoesNotFitLeavesRoomForTheNext) {
    const FILE_DUMP_NAMING_HINT hint = rawHint();
    const std::string head = kPrefix + "-main-imgo";
    // Room for the head and the extension, not for the geometry or the size.
    const int size = static_cast<int>(head.size()) + 13;
    char buf[256];
    EXPECT_EQ(genFileName_RAW(buf, size, &hint, RAW_PORT_IMGO, nullptr), 12);
    EXPECT_EQ(std::string(buf), head + ".packed_word");

    // Too small even for the extension: cut, and the print's own length is returned.
    EXPECT_EQ(genFileName_RAW(buf, size - 1, &hint, RAW_PORT_IMGO, nullptr), 12);
    EXPECT_EQ(std::string(buf), head + ".packed_wor");
}

TEST_F(ImageNameTest, MissingHintGivesAnEmptyName) {
    LogCapture log;
    char buf[32] = "stale";
    EXPECT_EQ(genFileName_RAW(buf, sizeof(buf), nullptr, RAW_PORT_IMGO, nullptr), -1);
    EXPECT_STREQ(buf, "");
    EXPECT_EQ(genFileName_YUV(buf, sizeof(buf), nullptr, YUV_PORT_IMG2O, nullptr), -1);
    EXPECT_EQ(genFileName_JPG(nullptr, 0, nullptr, nullptr), -1);
    EXPECT_EQ(log.count(log::Level::Error, "[genFileName_RAW] no naming hint given"), 1);
}

}  // namespace
}  // namespace test
}  // namespace camtune
