#include "naming/name_catalog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

#include "naming/naming_fixture.h"

namespace camtune {
namespace test {
namespace {

using namespace NSCam::TuningUtils;

using NameCatalogTest = NamingTest;

TEST_F(NameCatalogTest, ListsEveryKindInLowerCase) {
    const std::vector<std::string> kinds = naming::nameKindList();
    ASSERT_EQ(kinds.size(), 22u);
    EXPECT_EQ(kinds[0], "raw");
    EXPECT_EQ(kinds[1], "yuv");
    EXPECT_EQ(kinds[2], "jpg");
    for (const char* kind : {"hw_aao", "reg", "tuning", "face_info", "fd_data", "aiga"}) {
        EXPECT_NE(std::find(kinds.begin(), kinds.end(), kind), kinds.end()) << kind;
    }
}

TEST_F(NameCatalogTest, ComposesByKindInAnyCase) {
    FILE_DUMP_NAMING_HINT hint;
    hint.SensorDev = 2;
    char expected[128];
    char out[128];
    genFileName_YUV(expected, sizeof(expected), &hint, YUV_PORT_YUV2O, "u");
    ASSERT_TRUE(naming::composeName("YUV", hint, YUV_PORT_YUV2O, "u", out, sizeof(out)));
    EXPECT_STREQ(out, expected);
    genFileName_face_info(expected, sizeof(expected), &hint, nullptr);
    ASSERT_TRUE(naming::composeName("face_info", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_STREQ(out, expected);
}

TEST_F(NameCatalogTest, UnknownKindWritesNothing) {
    const FILE_DUMP_NAMING_HINT hint;
    char out[16] = "keep";
    EXPECT_FALSE(naming::composeName("png", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_FALSE(naming::composeName("", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_FALSE(naming::composeName("hw_aao_", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_STREQ(out, "keep");
}

TEST(NameRequestParsing, OptionsFillTheHint) {
    naming::NameRequest r;
    std::string error;
    ASSERT_TRUE(naming::parseNameRequest({"--unique-key",
                                          "5012345",
                                          "raw",
                                          "--request",
                                          "12",
                                          "--frame",
                                          "34",
                                          "--sensor-dev",
                                          "1",
                                          "--port",
                                          "0",
                                          "--format",
                                          "0x2201",
                                          "--width",
                                          "4000",
                                          "--height",
                                          "3000",
                                          "--buf-width",
                                          "3999",
                                          "--buf-height",
                                          "2999",
                                          "--stride",
                                          "5000",
                                          "--order",
                                          "1",
                                          "--isp-profile",
                                          "2",
                                          "--user",
                                          "u",
                                          "--hint-user",
                                          "h",
                                          "--exp",
                                          "LongExp",
                                          "--ev",
                                          "-2"},
                                         &r, &error))
            << error;
    EXPECT_FALSE(r.list);
    EXPECT_EQ(r.kind, "raw");
    const FILE_DUMP_NAMING_HINT& h = r.hint;
    const int32_t numbers[] = {h.UniqueKey, h.RequestNo, h.FrameNo,           h.SensorDev,
                               h.ImgFormat, h.ImgWidth,  h.ImgHeight,         h.BufWidth,
                               h.BufHeight, h.BufStride, h.SensorFormatOrder, h.IspProfile,
                               h.EvValue,   r.port};
    const int32_t expected[] = {5012345, 12,   34,   1, 0x2201, 4000, 3000,
                                3999,    2999, 5000, 1, 2,      -2,   0};
    for (size_t i = 0; i < std::size(numbers); ++i) EXPECT_EQ(numbers[i], expected[i]) << i;
    EXPECT_TRUE(r.hasUserString);
    EXPECT_EQ(r.userString, "u");
    EXPECT_STREQ(h.UserString, "h");
    EXPECT_STREQ(h.ExpString, "LongExp");
    EXPECT_EQ(h.AuxValue, -1);
}

TEST(NameRequestParsing, BadCommandLinesAreExplained) {
    struct Case {
        std::vector<std::string> args;
        const char* error;
    } cases[] = {
            {{}, "no kind given (see --list)"},
            {{"raw", "yuv"}, "more than one kind: 'raw' and 'yuv'"},
            {{"raw", "--colour", "1"}, "unknown option '--colour'"},
            {{"raw", "--width"}, "missing value for --width"},
            {{"raw", "--width", "12px"}, "bad number for --width: '12px'"},
            {{"raw", "--width", ""}, "bad number for --width: ''"},
            {{"raw", "--frame", "4294967296"}, "bad number for --frame: '4294967296'"},
            {{"raw", "--format", "0xZZ"}, "bad number for --format: '0xZZ'"},
            {{"raw", "--exp", std::string(32, 'e')}, "--exp holds at most 31 characters"},
    };
    for (const Case& c : cases) {
        naming::NameRequest r;
        std::string error;
        EXPECT_FALSE(naming::parseNameRequest(c.args, &r, &error));
        EXPECT_EQ(error, c.error);
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
