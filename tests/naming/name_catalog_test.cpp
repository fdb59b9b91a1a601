#include "naming/name_catalog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

#include "naming/naming_fixture.h"
#include "support/log_capture.h"

namespace camtune {
namespace test {
namespace {

using namespace NSCam::TuningUtils;

using NameCatalogTest = NamingTest;

std::string lowered(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

TEST_F(NameCatalogTest, EveryListedKindComposesAName) {
    LogCapture quiet;
    const std::vector<std::string> kinds = naming::nameKindList();
    EXPECT_EQ(kinds.front(), "raw");
    EXPECT_NE(std::find(kinds.begin(), kinds.end(), "face_info"), kinds.end());
    const FILE_DUMP_NAMING_HINT hint;
    for (const std::string& kind : kinds) {
        EXPECT_EQ(kind, lowered(kind));
        char out[256] = "";
        EXPECT_TRUE(naming::composeName(kind, hint, 0, nullptr, out, sizeof(out))) << kind;
        EXPECT_EQ(std::string(out).rfind("/data/vendor/camera_dump/", 0), 0u) << kind;
    }
}

TEST_F(NameCatalogTest, KindsComposeTheirFunctionsNamesInAnyCase) {
    LogCapture quiet;
    FILE_DUMP_NAMING_HINT hint;
    hint.UniqueKey = 5012345;
    hint.RequestNo = 12;
    hint.FrameNo = 34;
    hint.SensorDev = 2;
    hint.SensorFormatOrder = 1;
    std::strcpy(hint.ExpString, "LongExp");
    struct Case {
        const char* kind;
        int port;
        int32_t format;
        const char* userString;
        const char* name;
    } cases[] = {
            {"raw", 0, 0x2201, nullptr,
             "/data/vendor/camera_dump/"
             "005012345-0012-0034-sub-imgo-PW0-PH0-BW0-LongExp__0x0_10_1.packed_word"},
            {"YUV", 11, 17, "u",
             "/data/vendor/camera_dump/005012345-0012-0034-sub-yuvo-u-PW0-PH0-BW0__0x0_8_s0.nv21"},
            {"REG", -2, 0, nullptr,
             "/data/vendor/camera_dump/005012345-0012-0034-sub-profile-LongExp"},
    };
    for (const Case& c : cases) {
        hint.ImgFormat = c.format;
        char out[256];
        ASSERT_TRUE(naming::composeName(c.kind, hint, c.port, c.userString, out, sizeof(out)));
        EXPECT_EQ(std::string(out), c.name) << c.kind;
    }
}

TEST_F(NameCatalogTest, UnknownKindWritesNothing) {
    const FILE_DUMP_NAMING_HINT hint;
    char out[16] = "keep";
    EXPECT_FALSE(naming::composeName("png", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_FALSE(naming::composeName("hw_aao_", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_STREQ(out, "keep");
}

}  // namespace
}  // namespace test
}  // namespace camtune
