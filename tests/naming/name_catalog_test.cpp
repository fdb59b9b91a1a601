#include "naming/name_catalog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "naming/naming_fixture.h"
#include "support/log_capture.h"

namespace camtune {
namespace test {
namespace {

using namespace NSCam::TuningUtils;

std::vector<std::string> words(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> out;
    for (std::string word; in >> word;) out.push_back(word);
    return out;
}

using NameCatalogTest = NamingTest;

TEST_F(NameCatalogTest, ListsEveryKindInLowerCase) {
    naming::NameRequest r;
    std::string error;
    EXPECT_TRUE(naming::parseNameRequest({"--list", "--isp-profile", "2"}, &r, &error));
    EXPECT_TRUE(r.list);
    EXPECT_EQ(r.hint.IspProfile, 2);
    const std::vector<std::string> kinds = naming::nameKindList();
    ASSERT_EQ(kinds.size(), 22u);
    EXPECT_EQ(kinds[0], "raw");
    EXPECT_EQ(kinds[3], "hw_aao");
    EXPECT_EQ(kinds[21], "aiga");
    EXPECT_NE(std::find(kinds.begin(), kinds.end(), "face_info"), kinds.end());
}

TEST_F(NameCatalogTest, CommandLineComposesNames) {
    LogCapture quiet;
    struct Case {
        int bracketing;
        const char* args;
        const char* name;
    } cases[] = {
            {0,
             "raw --unique-key 5012345 --request 12 --frame 34 --sensor-dev 1 --port 0 --format "
             "0x2201 --width 4000 --height 3000 --buf-width 4000 --buf-height 3000 --stride 5000 "
             "--order 1",
             "/data/vendor/camera_dump/005012345-0012-0034-main-imgo-PW4000-PH3000-BW5000__"
             "4000x3000_10_1.packed_word"},
            {2, "YUV --port 11 --format 17 --hint-user h --user u --exp LongExp --ev 3",
             "/data/vendor/camera_dump/"
             "uniquekey-rqst-frme_3EV-yuvo-h-u-PW0-PH0-BW0__0x0_8_s0.nv21"},
            {0, "REG --sensor-dev 2 --exp LongExp",
             "/data/vendor/camera_dump/uniquekey-rqst-frme-sub-profile-LongExp"},
    };
    for (const Case& c : cases) {
        bracketing(c.bracketing);
        naming::NameRequest r;
        std::string error;
        ASSERT_TRUE(naming::parseNameRequest(words(c.args), &r, &error)) << error;
        char out[256];
        ASSERT_TRUE(naming::composeName(r.kind, r.hint, r.port,
                                        r.hasUserString ? r.userString.c_str() : nullptr, out,
                                        sizeof(out)));
        EXPECT_EQ(std::string(out), c.name);
    }
}

TEST_F(NameCatalogTest, UnknownKindWritesNothing) {
    const FILE_DUMP_NAMING_HINT hint;
    char out[16] = "keep";
    EXPECT_FALSE(naming::composeName("png", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_FALSE(naming::composeName("hw_aao_", hint, 0, nullptr, out, sizeof(out)));
    EXPECT_STREQ(out, "keep");
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
