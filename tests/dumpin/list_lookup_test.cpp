// Reading the dump-in list: line splitting, switches, value lines and tuning-table lookups.
#include <cstring>
#include <string>
#include <tuple>

#include "camtune/file_read_rule.h"
#include "dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

using NSCam::TuningUtils::ETuningFormat_T;
using NSCam::TuningUtils::FileReadRule;

constexpr char kFirst[] = "/data/tune/first.bin";
constexpr char kSecond[] = "/data/tune/second.bin";

TEST(ExtractTuningCfg, SplitsFieldsAndLeavesTheRest) {
    // Expected: format|reqNum|ispProfile|file|what is left of the line.
    const std::pair<const char*, const char*> cases[] = {
            {"lsc,0012,EIspProfile_Capture;/a b\r\nmore",
             "lsc|0012|EIspProfile_Capture|/a b|/a b\r\nmore"},
            // A missing separator takes the whole rest and leaves it as it was.
            {"abc;def", "abc;def|abc;def|abc|def|def"},
            {"a,b,c;d;e", "a|b|c|d;e|d;e"},
    };
    for (const auto& [in, expected] : cases) {
        std::string line = in;
        NSCam::TuningUtils::TUNING_CFG_T cfg;
        NSCam::TuningUtils::Extract_Tuning_CFG(line, cfg);
        EXPECT_EQ(cfg.str_format + "|" + cfg.str_reqNum + "|" + cfg.str_ispProfile + "|" +
                          cfg.str_file + "|" + line,
                  expected);
    }
}

TEST(RemoveRedundancy, KeepsThePathOnly) {
    const std::pair<const char*, const char*> cases[] = {{"0001,P;/data/x.raw\r", "/data/x.raw"},
                                                         {"0001,P;/data/x.raw y", "/data/x.raw"},
                                                         {"no separator here", "no"},
                                                         {"a;b;c", "b;c"}};
    NSCam::TuningUtils::FileReadRule rule;
    for (const auto& [in, out] : cases) {
        std::string text = in;
        rule.removeRedundancy(text);
        EXPECT_EQ(text, out) << in;
    }
}

TEST_F(DumpinTest, SwitchesFollowTheirBits) {
    // Property value, then the read and dump switches.
    const std::tuple<const char*, int, int> cases[] = {{"", 0, 0},  {"1", 0, 1}, {"2", 1, 0},
                                                       {"4", 0, 0}, {"6", 1, 0}, {"0x3", 1, 1}};
    for (const auto& [value, read, dump] : cases) {
        mProps.set(props::kDumpinEnable, std::string(value));
        EXPECT_EQ(mRule.isREADEnable("ignored"), read) << value;
        EXPECT_EQ(mRule.isDumpEnable(nullptr), dump) << value;
    }
}

TEST_F(DumpinTest, ValueLookupsReadTheFirstLineWithTheirWord) {
    // List, then the unique key, request number and raw stride read from it.
    const std::tuple<const char*, int, int, int> cases[] = {
            {"uniqueKey;0042\nrequestNo;-3\nraw_stride;4000\n", 42, -3, 4000},
            {"uniqueKey\n", 0, 0, 0},
            {"x uniqueKey;5\nuniqueKey;6\n", 5, 0, 0},
            {"uniqueKey;12 34\r\n", 12, 0, 0},
            {"raw_stride;abc\nraw_stride;9\n", 0, 0, 0},
            {"uniqueKey;99999999999\n", 2147483647, 0, 0},
            {"", 0, 0, 0},
    };
    for (const auto& [list, uniqueKey, requestNo, rawStride] : cases) {
        useList(list);
        EXPECT_EQ(mRule.getFile_uniqueKey(), uniqueKey) << list;
        EXPECT_EQ(mRule.getFile_requestNo("x", 3), requestNo) << list;
        EXPECT_EQ(NSCam::TuningUtils::get_raw_stride(), rawStride) << list;
    }
    EXPECT_EQ(debugs("[getFile_uniqueKey] DEBUG uniqueKey from 42"), 1);
    EXPECT_EQ(debugs("DEBUG uniqueKey from -3"), 1);
    EXPECT_EQ(debugs("get_raw_stride from 4000"), 1);
    for (const LogLine& line : mLog.lines()) EXPECT_EQ(line.tag, "qelcam-aaa-util");
}

class TuningLookupTest : public DumpinTest {
protected:
    void SetUp() override {
        makeFile(kFirst);
        makeFile(kSecond);
    }
    // Two entries of one format and profile, for requests 1 and 2.
    void useTwoEntries(const std::string& format, const std::string& profile) {
        useList(format + ",0001," + profile + ";" + kFirst + "\n" + format + ",0002," + profile +
                ";" + kSecond + "\n");
    }
    int extract(int reqNum, const char* profile,
                ETuningFormat_T format = NSCam::TuningUtils::eTuningFormat_LSC,
                int size = sizeof(mOut)) {
        std::strcpy(mOut, "untouched");
        return NSCam::TuningUtils::Extract_File(reqNum, profile, mOut, size, nullptr, format);
    }
    char mOut[64] = {};
};

TEST_F(TuningLookupTest, RequestSensitivityDependsOnTheProfileText) {
    const std::tuple<const char*, int, const char*> cases[] = {
            {"EIspProfile_Capture", 2, kFirst},
            {"EIspProfile_MFNR_Before_Blend", 2, kSecond},
            {"EIspProfile_MFNR_Before_Blend", 3, "untouched"},
            {"EIspProfile_AINR_MainYUV", 2, kSecond},
            {"EIspProfile_DSDN_MSF_1", 2, kSecond},
            {"EIspProfile_Preview", 2, kSecond},
            {"EIspProfile_preview", 2, kFirst},
    };
    for (const auto& [profile, reqNum, path] : cases) {
        useTwoEntries("lsc", profile);
        EXPECT_EQ(extract(reqNum, profile), path[0] == '/' ? 1 : 0) << profile << " " << reqNum;
        EXPECT_STREQ(mOut, path) << profile << " " << reqNum;
    }
    useList(std::string("lsc,12345,EIspProfile_MFNR;") + kFirst + "\n");
    EXPECT_EQ(extract(12345, "EIspProfile_MFNR"), 1);
}

TEST_F(TuningLookupTest, FormatAndProfileMustMatchAsWholeText) {
    useList(std::string("lsc,0001,EIspProfile_Capture_X;") + kSecond + "\nlscx,0001,P;" + kSecond +
            "\nlsc,0001,EIspProfile_Capture;" + kFirst + "\n,0001,P;" + kFirst + "\n");
    EXPECT_EQ(extract(1, "EIspProfile_Capture"), 1);
    EXPECT_STREQ(mOut, kFirst);
    // Formats without a keyword match only an empty format field.
    for (int format : {0, 4, 12}) {
        EXPECT_EQ(extract(1, "P", static_cast<ETuningFormat_T>(format)), 1) << format;
        EXPECT_STREQ(mOut, kFirst) << format;
    }
}

TEST_F(TuningLookupTest, ResultMessagesTellWhatHappened) {
    const char* notInConfig = "[Extract_File] file path not found in config";
    const std::tuple<const char*, int, const char*, const char*> cases[] = {
            {"lsc,0001,P;/data/tune/first.bin\r\n", 1, kFirst,
             "[Extract_File] file exist(/data/tune/first.bin)"},
            {"lsc,0001,P;/data/tune/missing.bin\n", 0, "/data/tune/missing.bin",
             "[Extract_File] file not found(/data/tune/missing.bin)"},
            {"lsc,0001,P;/data/default/x.raw\n", 0, "untouched", notInConfig},
            {"tuning,0001,P;/data/x\n", 0, "untouched", notInConfig},
            {nullptr, 0, "untouched", notInConfig},  // the list cannot be read
    };
    for (const auto& [list, result, out, message] : cases) {
        useList(list ? list : "");
        if (!list) mProps.set(props::kDumpinConfigPath, std::string("/data/nowhere.list"));
        mLog.clear();
        EXPECT_EQ(extract(1, "P"), result) << message;
        EXPECT_STREQ(mOut, out) << message;
        EXPECT_EQ(debugs(message), 1) << message;
    }
    useList(std::string("lsc,0001,P;") + kFirst + "\n");
    EXPECT_EQ(extract(1, "P", NSCam::TuningUtils::eTuningFormat_LSC, 20), 1);  // 20 chars
    EXPECT_STREQ(mOut, "/data/tune/first.bi");
    EXPECT_EQ(errors("Get filename fail!"), 1);
    EXPECT_EQ(
            mLog.count(log::Level::Warn,
                       "[Extract_File] path of 20 characters cut to the 19 of the caller's "
                       "buffer; the name handed back may be another file's: /data/tune/first.bin"),
            1);
}

TEST_F(TuningLookupTest, NullProfileIsReportedAndMatchesEmptyProfiles) {
    useList(std::string("lsc,0001,;") + kFirst + "\nlpcnr,0001,;" + kFirst + "\n");
    EXPECT_EQ(extract(1, nullptr), 1);
    ASSERT_EQ(errors("ispProfile is nullptr! can not convert to string!"), 1);
    EXPECT_NE(mLog.lines().front().suffix.find("Extract_readinfo"), std::string::npos);
    EXPECT_EQ(mRule.getFile_LPCNR_TUNING(1, nullptr, mOut, sizeof(mOut), "lpcnr"), 1);
    EXPECT_EQ(errors("[getFile_LPCNR_TUNING] ispProfile is nullptr! str_ispProfile is not "
                     "assigned!"),
              1);
}

TEST_F(TuningLookupTest, MembersUseTheirFormatAndName) {
    using Member = int (FileReadRule::*)(int, const char*, char*, int, const char*);
    const std::tuple<Member, const char*, const char*> cases[] = {
            {&FileReadRule::getFile_LSC, "getFile_LSC", "lsc"},
            {&FileReadRule::getFile_P2TUNING, "getFile_P2TUNING", "tuning"},
            {&FileReadRule::getFile_LTMCURVE, "getFile_LTMCURVE", "ltm"},
            {&FileReadRule::getFile_MFB, "getFile_MFB", "mfb"},
            {&FileReadRule::getFile_FD_DATA, "getFile_FD_DATA", "face_info"},
    };
    for (const auto& [member, name, keyword] : cases) {
        useList(std::string(keyword) + ",0004,P;" + kFirst + "\n");
        mProps.set(props::kDumpinEnable, 0);  // not consulted by the tuning members
        mLog.clear();
        EXPECT_EQ((mRule.*member)(4, "P", mOut, sizeof(mOut), "user"), 1) << name;
        EXPECT_STREQ(mOut, kFirst);
        EXPECT_EQ(debugs(std::string("[") + name + "] reqNum(4) ispProfile(P) pUserString(user)"),
                  1)
                << name;
    }
}

TEST_F(TuningLookupTest, HintMembersSearchWithTheProfilePrefixAlone) {
    using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;
    using Member = int (FileReadRule::*)(const FILE_DUMP_NAMING_HINT&, char*, int, const char*);
    const std::tuple<Member, const char*, const char*> cases[] = {
            {&FileReadRule::getFile_MFB, "getFile_MFB", "mfb"},
            {&FileReadRule::getFile_MFB_TBL, "getFile_MFB_TBL", "mfb_tbl"},
            {&FileReadRule::getFile_MSS, "getFile_MSS", "mss"},
    };
    FILE_DUMP_NAMING_HINT hint;
    hint.RequestNo = 9;
    hint.IspProfile = NSIspTuning::EIspProfile_Capture;  // has no name in this build
    for (const auto& [member, name, keyword] : cases) {
        useList(std::string(keyword) + ",0009,EIspProfile_;" + kFirst + "\n");
        mLog.clear();
        EXPECT_EQ((mRule.*member)(hint, mOut, sizeof(mOut), nullptr), 1) << name;
        EXPECT_STREQ(mOut, kFirst) << name;
        EXPECT_EQ(errors("strIspProfileName is nullptr! strispProfileName is not assigned!"), 1);
        EXPECT_EQ(debugs(std::string("[") + name +
                         "] reqNum(9) ispProfile(EIspProfile_) pUserString((null))"),
                  1)
                << name;
    }
}

TEST_F(TuningLookupTest, LpcnrSearchUsesTheCallersFormatAndOnlyMfnrPerRequest) {
    const std::tuple<const char*, int, const char*, const char*> cases[] = {
            {"EIspProfile_Preview", 2, "lpcnr", kFirst},
            {"EIspProfile_MFNR", 2, "lpcnr", kSecond},
            {"EIspProfile_MFNR", 5, "lpcnr", nullptr},
            {"EIspProfile_Capture", 2, "other", nullptr},
            {"EIspProfile_Capture", 2, nullptr, nullptr},
    };
    for (const auto& [profile, reqNum, format, path] : cases) {
        useTwoEntries("lpcnr", profile);
        mLog.clear();
        char out[64] = {};
        EXPECT_EQ(mRule.getFile_LPCNR_TUNING(reqNum, profile, out, sizeof(out), format),
                  path ? 1 : 0)
                << profile << " " << reqNum;
        EXPECT_STREQ(out, path ? path : "");
        EXPECT_EQ(debugs(std::string("[getFile_LPCNR_TUNING] ") +
                         (path ? std::string("file exist(") + path + ")"
                               : "file path not found in config")),
                  1);
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
