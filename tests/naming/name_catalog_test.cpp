#include "naming/name_catalog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
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

TEST_F(NameCatalogTest, ComposesWhatTheNamingFunctionWrites) {
    FILE_DUMP_NAMING_HINT hint;
    hint.UniqueKey = 1;
    hint.SensorDev = 2;
    hint.ImgFormat = 0x2201;
    struct Case {
        const char* kind;
        int port;
        std::string expected;
    } cases[] = {
            {"raw", 1, ""}, {"YUV", 12, ""}, {"jpg", 0, ""}, {"face_info", 0, ""}, {"AIGA", 0, ""},
    };
    char buf[256];
    genFileName_RAW(buf, sizeof(buf), &hint, RAW_PORT_RRZO, "u");
    cases[0].expected = buf;
    genFileName_YUV(buf, sizeof(buf), &hint, YUV_PORT_YUV2O, "u");
    cases[1].expected = buf;
    genFileName_JPG(buf, sizeof(buf), &hint, "u");
    cases[2].expected = buf;
    genFileName_face_info(buf, sizeof(buf), &hint, "u");
    cases[3].expected = buf;
    genFileName_AIGA(buf, sizeof(buf), &hint, "u");
    cases[4].expected = buf;
    for (const Case& c : cases) {
        char out[256];
        ASSERT_TRUE(naming::composeName(c.kind, hint, c.port, "u", out, sizeof(out))) << c.kind;
        EXPECT_EQ(out, c.expected) << c.kind;
    }
}

TEST_F(NameCatalogTest, UnknownKindWritesNothing) {
    const FILE_DUMP_NAMING_HINT hint;
    char out[16] = "keep";
    EXPECT_FALSE(naming::composeName("png", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_FALSE(naming::composeName("", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_FALSE(naming::composeName("hw_aao_", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_STREQ(out, "keep");
}

}  // namespace
}  // namespace test
}  // namespace camtune
