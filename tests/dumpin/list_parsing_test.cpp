// Splitting list lines: entries, image remainders, and the switches and value lookups.
#include <string>

#include "camtune/file_read_rule.h"
#include "dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

using NSCam::TuningUtils::TUNING_CFG_T;

struct EntryCase {
    const char* line;
    const char* format;
    const char* reqNum;
    const char* ispProfile;
    const char* file;
    const char* rest;
};

class ExtractTuningCfg : public ::testing::TestWithParam<EntryCase> {};

TEST_P(ExtractTuningCfg, SplitsFieldsAndLeavesTheRest) {
    const EntryCase& c = GetParam();
    std::string line = c.line;
    TUNING_CFG_T cfg;
    cfg.str_usage = "kept";
    NSCam::TuningUtils::Extract_Tuning_CFG(line, cfg);
    EXPECT_EQ(cfg.str_format, c.format);
    EXPECT_EQ(cfg.str_reqNum, c.reqNum);
    EXPECT_EQ(cfg.str_ispProfile, c.ispProfile);
    EXPECT_EQ(cfg.str_file, c.file);
    EXPECT_EQ(line, c.rest);
    EXPECT_EQ(cfg.str_usage, "kept");
}

INSTANTIATE_TEST_SUITE_P(
        Lines, ExtractTuningCfg,
        ::testing::Values(
                EntryCase{"lsc,0012,EIspProfile_Capture;/data/dump/0012_lsc.bin", "lsc", "0012",
                          "EIspProfile_Capture", "/data/dump/0012_lsc.bin",
                          "/data/dump/0012_lsc.bin"},
                EntryCase{"lsc,0012,P;/a/b.bin\r", "lsc", "0012", "P", "/a/b.bin", "/a/b.bin\r"},
                EntryCase{"lsc,0012,P;/a b\nmore", "lsc", "0012", "P", "/a b", "/a b\nmore"},
                // A missing separator takes the whole rest and leaves it as it was.
                EntryCase{"abc;def", "abc;def", "abc;def", "abc", "def", "def"},
                EntryCase{"lsc,0001", "lsc", "0001", "0001", "0001", "0001"},
                EntryCase{"", "", "", "", "", ""},
                EntryCase{"a,b,c;d;e", "a", "b", "c", "d;e", "d;e"}));

TEST(RemoveRedundancy, KeepsThePathOnly) {
    struct Case {
        const char* in;
        const char* out;
    } cases[] = {
            {"0001,EIspProfile_Capture;/data/x.raw", "/data/x.raw"},
            {"0001,P;/data/x.raw\r", "/data/x.raw"},
            {"0001,P;/data/x.raw trailing", "/data/x.raw"},
            {"no separator here", "no"},
            {"a;b;c", "b;c"},
            {"uniqueKey;0042", "0042"},
            {";", ""},
    };
    NSCam::TuningUtils::FileReadRule rule;
    for (const Case& c : cases) {
        std::string text = c.in;
        rule.removeRedundancy(text);
        EXPECT_EQ(text, c.out) << c.in;
    }
}

TEST_F(DumpinTest, SwitchesFollowTheirBits) {
    struct Case {
        const char* value;
        int read;
        int dump;
    } cases[] = {{"", 0, 0},  {"0", 0, 0}, {"1", 0, 1}, {"2", 1, 0},
                 {"3", 1, 1}, {"6", 1, 0}, {"4", 0, 0}, {"0x3", 1, 1}};
    for (const Case& c : cases) {
        mProps.set(props::kDumpinEnable, std::string(c.value));
        EXPECT_EQ(mRule.isREADEnable("ignored"), c.read) << c.value;
        EXPECT_EQ(mRule.isDumpEnable(nullptr), c.dump) << c.value;
    }
}

TEST_F(DumpinTest, ValueLookupsReadTheFirstLineWithTheirWord) {
    struct Case {
        const char* list;
        int uniqueKey;
        int requestNo;
        int rawStride;
    } cases[] = {
            {"uniqueKey;0042\nrequestNo;7\nraw_stride;4000\n", 42, 7, 4000},
            {"uniqueKey\n", 0, 0, 0},
            {"x uniqueKey;5\nuniqueKey;6\n", 5, 0, 0},
            {"uniqueKey;12 34\r\n", 12, 0, 0},
            {"requestNo;-3\n", 0, -3, 0},
            {"raw_stride;abc\nraw_stride;9\n", 0, 0, 0},
            {"", 0, 0, 0},
            {"uniqueKey;99999999999\n", 2147483647, 0, 0},
    };
    for (const Case& c : cases) {
        useList(c.list);
        EXPECT_EQ(mRule.getFile_uniqueKey(), c.uniqueKey) << c.list;
        EXPECT_EQ(mRule.getFile_requestNo("x", 3), c.requestNo) << c.list;
        EXPECT_EQ(NSCam::TuningUtils::get_raw_stride(), c.rawStride) << c.list;
    }
}

TEST_F(DumpinTest, ValueLookupsLogWhatTheyFound) {
    useList("uniqueKey;42\nrequestNo;7\nraw_stride;4000\n");
    mRule.getFile_uniqueKey();
    mRule.getFile_requestNo();
    NSCam::TuningUtils::get_raw_stride();
    EXPECT_EQ(countAt(log::Level::Debug, "[getFile_uniqueKey] DEBUG uniqueKey from 42"), 1);
    EXPECT_EQ(countAt(log::Level::Debug, "DEBUG uniqueKey from 7"), 1);
    EXPECT_EQ(countAt(log::Level::Debug, "get_raw_stride from 4000"), 1);
    for (const LogLine& line : mLog.lines()) EXPECT_EQ(line.tag, "qelcam-aaa-util");
}

TEST_F(DumpinTest, ValueLookupsWithoutAListGiveZeroQuietly) {
    mProps.clear(props::kDumpinConfigPath);
    EXPECT_EQ(mRule.getFile_uniqueKey(), 0);
    EXPECT_EQ(mRule.getFile_requestNo(), 0);
    EXPECT_EQ(NSCam::TuningUtils::get_raw_stride(), 0);
    mProps.set(props::kDumpinConfigPath, "/data/none.list");
    EXPECT_EQ(mRule.getFile_uniqueKey(), 0);
    EXPECT_TRUE(mLog.lines().empty());
}

}  // namespace
}  // namespace test
}  // namespace camtune
