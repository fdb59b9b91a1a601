// Tuning-table lookups: which entry serves which request, and what is logged on the way.
#include <cstring>
#include <string>

#include "camtune/file_read_rule.h"
#include "dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

using NSCam::TuningUtils::ETuningFormat_T;
using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

constexpr char kFirst[] = "/data/tune/first.bin";
constexpr char kSecond[] = "/data/tune/second.bin";

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
    // Runs Extract_File and returns its result, with the path written.
    int extract(int reqNum, const char* profile, ETuningFormat_T format) {
        std::memset(mOut, 0, sizeof(mOut));
        return NSCam::TuningUtils::Extract_File(reqNum, profile, mOut, sizeof(mOut), nullptr,
                                                format);
    }
    char mOut[256] = {};
};

TEST_F(TuningLookupTest, RequestSensitivityDependsOnTheProfileText) {
    struct Case {
        const char* profile;
        int reqNum;
        int found;
        const char* path;
    } cases[] = {
            {"EIspProfile_Capture", 2, 1, kFirst},
            {"EIspProfile_Capture", 3, 1, kFirst},
            {"EIspProfile_MFNR_Before_Blend", 2, 1, kSecond},
            {"EIspProfile_MFNR_Before_Blend", 3, 0, ""},
            {"EIspProfile_AINR_MainYUV", 2, 1, kSecond},
            {"EIspProfile_DSDN_MSF_1", 2, 1, kSecond},
            {"EIspProfile_Preview", 2, 1, kSecond},
            {"EIspProfile_Preview", 1, 1, kFirst},
            {"EIspProfile_preview", 2, 1, kFirst},  // case-sensitive
    };
    for (const Case& c : cases) {
        useTwoEntries("lsc", c.profile);
        EXPECT_EQ(extract(c.reqNum, c.profile, NSCam::TuningUtils::eTuningFormat_LSC), c.found)
                << c.profile << " request " << c.reqNum;
        EXPECT_STREQ(mOut, c.path) << c.profile << " request " << c.reqNum;
    }
}

TEST_F(TuningLookupTest, FormatValueSelectsTheKeyword) {
    struct Case {
        int format;
        const char* keyword;
    } cases[] = {{2, "lsc"},     {3, "tuning"}, {5, "mfb"},        {6, "mfb_tbl"}, {7, "ltm"},
                 {8, "ynr_map"}, {10, "mss"},   {11, "face_info"}, {4, ""},        {9, ""},
                 {0, ""},        {1, ""},       {12, ""},          {-1, ""}};
    for (const Case& c : cases) {
        // A decoy of another keyword comes first; only the entry of the selected keyword
        // (or an empty format field) may match.
        useList(std::string("decoy,0001,P;") + kSecond + "\n" + c.keyword + ",0001,P;" + kFirst +
                "\n");
        EXPECT_EQ(extract(1, "P", static_cast<ETuningFormat_T>(c.format)), 1) << c.format;
        EXPECT_STREQ(mOut, kFirst) << c.format;
    }
}

TEST_F(TuningLookupTest, ProfileAndFormatMustMatchAsWholeText) {
    useList(std::string("lsc,0001,EIspProfile_Capture_X;") + kSecond + "\nlscx,0001,P;" + kSecond +
            "\nlsc,0001,EIspProfile_Capture;" + kFirst + "\n");
    EXPECT_EQ(extract(1, "EIspProfile_Capture", NSCam::TuningUtils::eTuningFormat_LSC), 1);
    EXPECT_STREQ(mOut, kFirst);
}

TEST_F(TuningLookupTest, ResultMessagesTellWhatHappened) {
    struct Case {
        const char* list;
        int result;
        const char* out;
        const char* message;
    } cases[] = {
            {"lsc,0001,P;/data/tune/first.bin\n", 1, kFirst,
             "[Extract_File] file exist(/data/tune/first.bin)"},
            {"lsc,0001,P;/data/tune/missing.bin\n", 0, "/data/tune/missing.bin",
             "[Extract_File] file not found(/data/tune/missing.bin)"},
            {"lsc,0001,P;/data/default/x.raw\n", 0, "",
             "[Extract_File] file path not found in config"},
            {"tuning,0001,P;/data/x\n", 0, "", "[Extract_File] file path not found in config"},
            {"lsc,0001,P;/data/tune/first.bin\r\n", 1, kFirst,
             "[Extract_File] file exist(/data/tune/first.bin)"},
    };
    for (const Case& c : cases) {
        useList(c.list);
        mLog.clear();
        EXPECT_EQ(extract(1, "P", NSCam::TuningUtils::eTuningFormat_LSC), c.result) << c.list;
        EXPECT_STREQ(mOut, c.out) << c.list;
        EXPECT_EQ(countAt(log::Level::Debug, c.message), 1) << c.list;
    }
}

TEST_F(TuningLookupTest, UnreadableListFindsNothing) {
    for (const char* path : {"", "/data/nowhere.list"}) {
        mProps.set(props::kDumpinConfigPath, std::string(path));
        mLog.clear();
        std::strcpy(mOut, "untouched");
        EXPECT_EQ(NSCam::TuningUtils::Extract_File(1, "P", mOut, sizeof(mOut), nullptr,
                                                   NSCam::TuningUtils::eTuningFormat_LSC),
                  0);
        EXPECT_STREQ(mOut, "untouched");
        EXPECT_EQ(countAt(log::Level::Debug, "[Extract_File] file path not found in config"), 1);
    }
}

TEST_F(TuningLookupTest, PathTooLongForTheBufferIsTruncatedAndReported) {
    useList(std::string("lsc,0001,P;") + kFirst + "\n");
    char small[8] = {};
    EXPECT_EQ(NSCam::TuningUtils::Extract_File(1, "P", small, sizeof(small), nullptr,
                                               NSCam::TuningUtils::eTuningFormat_LSC),
              1);
    EXPECT_STREQ(small, "/data/t");
    EXPECT_EQ(countAt(log::Level::Error, "Get filename fail!"), 1);
}

TEST_F(TuningLookupTest, NullProfileIsReportedAndMatchesEmptyProfiles) {
    useList(std::string("lsc,0001,;") + kFirst + "\n");
    EXPECT_EQ(extract(1, nullptr, NSCam::TuningUtils::eTuningFormat_LSC), 1);
    EXPECT_EQ(countAt(log::Level::Error, "ispProfile is nullptr! can not convert to string!"), 1);
    for (const LogLine& line : mLog.lines()) {
        if (line.level == log::Level::Error) {
            EXPECT_NE(line.suffix.find("Extract_readinfo"), std::string::npos) << line.suffix;
        }
    }
}

TEST_F(TuningLookupTest, LongRequestNumbersKeepAllDigits) {
    useList(std::string("lsc,12345,EIspProfile_MFNR;") + kFirst + "\n");
    EXPECT_EQ(extract(12345, "EIspProfile_MFNR", NSCam::TuningUtils::eTuningFormat_LSC), 1);
}

TEST_F(TuningLookupTest, RequestFormMembersUseTheirFormatAndName) {
    using Member =
            int (NSCam::TuningUtils::FileReadRule::*)(int, const char*, char*, int, const char*);
    struct Case {
        Member member;
        const char* name;
        const char* keyword;
    } cases[] = {
            {&NSCam::TuningUtils::FileReadRule::getFile_LSC, "getFile_LSC", "lsc"},
            {&NSCam::TuningUtils::FileReadRule::getFile_P2TUNING, "getFile_P2TUNING", "tuning"},
            {&NSCam::TuningUtils::FileReadRule::getFile_LTMCURVE, "getFile_LTMCURVE", "ltm"},
            {&NSCam::TuningUtils::FileReadRule::getFile_MFB, "getFile_MFB", "mfb"},
            {&NSCam::TuningUtils::FileReadRule::getFile_FD_DATA, "getFile_FD_DATA", "face_info"},
    };
    for (const Case& c : cases) {
        useList(std::string(c.keyword) + ",0004,EIspProfile_Capture;" + kFirst + "\n");
        mLog.clear();
        char out[64] = {};
        EXPECT_EQ((mRule.*c.member)(4, "EIspProfile_Capture", out, sizeof(out), "user"), 1)
                << c.name;
        EXPECT_STREQ(out, kFirst);
        EXPECT_EQ(countAt(log::Level::Debug, std::string("[") + c.name +
                                                     "] reqNum(4) ispProfile(EIspProfile_Capture) "
                                                     "pUserString(user)"),
                  1)
                << c.name;
        // The tuning members do not test the switch themselves.
        mProps.set(props::kDumpinEnable, 0);
        EXPECT_EQ((mRule.*c.member)(4, "EIspProfile_Capture", out, sizeof(out), "user"), 1);
    }
}

TEST_F(TuningLookupTest, HintFormSearchesWithTheProfilePrefixAlone) {
    using Member = int (NSCam::TuningUtils::FileReadRule::*)(const FILE_DUMP_NAMING_HINT&, char*,
                                                             int, const char*);
    struct Case {
        Member member;
        const char* name;
        const char* keyword;
    } cases[] = {
            {&NSCam::TuningUtils::FileReadRule::getFile_MFB, "getFile_MFB", "mfb"},
            {&NSCam::TuningUtils::FileReadRule::getFile_MFB_TBL, "getFile_MFB_TBL", "mfb_tbl"},
            {&NSCam::TuningUtils::FileReadRule::getFile_MSS, "getFile_MSS", "mss"},
    };
    FILE_DUMP_NAMING_HINT hint;
    hint.RequestNo = 9;
    hint.IspProfile = NSIspTuning::EIspProfile_Capture;
    for (const Case& c : cases) {
        // The profile has no name in this build, so only a bare prefix entry can match.
        useList(std::string(c.keyword) + ",0009,EIspProfile_Capture;" + kSecond + "\n" + c.keyword +
                ",0009,EIspProfile_;" + kFirst + "\n");
        mLog.clear();
        char out[64] = {};
        EXPECT_EQ((mRule.*c.member)(hint, out, sizeof(out), nullptr), 1) << c.name;
        EXPECT_STREQ(out, kFirst) << c.name;
        EXPECT_EQ(countAt(log::Level::Error,
                          "strIspProfileName is nullptr! strispProfileName is not assigned!"),
                  1);
        EXPECT_EQ(countAt(log::Level::Debug, std::string("[") + c.name +
                                                     "] reqNum(9) ispProfile(EIspProfile_) "
                                                     "pUserString((null))"),
                  1)
                << c.name;
    }
}

TEST_F(TuningLookupTest, LpcnrSearchUsesTheCallersFormatAndOnlyMfnrPerRequest) {
    struct Case {
        const char* profile;
        int reqNum;
        const char* format;
        int found;
        const char* path;
    } cases[] = {
            {"EIspProfile_Preview", 2, "lpcnr", 1, kFirst},  // unlike Extract_File
            {"EIspProfile_MFNR", 2, "lpcnr", 1, kSecond},
            {"EIspProfile_MFNR", 5, "lpcnr", 0, ""},
            {"EIspProfile_Capture", 2, "other", 0, ""},
            {"EIspProfile_Capture", 2, nullptr, 0, ""},
    };
    for (const Case& c : cases) {
        useTwoEntries("lpcnr", c.profile);
        mLog.clear();
        char out[64] = {};
        EXPECT_EQ(mRule.getFile_LPCNR_TUNING(c.reqNum, c.profile, out, sizeof(out), c.format),
                  c.found)
                << c.profile << " " << c.reqNum;
        EXPECT_STREQ(out, c.path);
        if (c.found == 0) {
            EXPECT_EQ(countAt(log::Level::Debug,
                              "[getFile_LPCNR_TUNING] file path not found in config"),
                      1);
        }
    }
}

TEST_F(TuningLookupTest, LpcnrNullProfileIsReported) {
    useList(std::string("lpcnr,0001,;") + kFirst + "\n");
    char out[64] = {};
    EXPECT_EQ(mRule.getFile_LPCNR_TUNING(1, nullptr, out, sizeof(out), "lpcnr"), 1);
    EXPECT_EQ(countAt(log::Level::Error,
                      "[getFile_LPCNR_TUNING] ispProfile is nullptr! str_ispProfile is not "
                      "assigned!"),
              1);
    EXPECT_EQ(countAt(log::Level::Debug, "[getFile_LPCNR_TUNING] file exist(/data/tune/first.bin)"),
              1);
}

}  // namespace
}  // namespace test
}  // namespace camtune
