// The on-device rename of dump identities and the register dump layout.
#include <cerrno>
#include <string>

#include "camtune/file_read_rule.h"
#include "camtune/platform/fs.h"
#include "dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

FILE_DUMP_NAMING_HINT hintWith(int uniqueKey, int frameNo, int requestNo) {
    FILE_DUMP_NAMING_HINT hint;
    hint.UniqueKey = uniqueKey;
    hint.FrameNo = frameNo;
    hint.RequestNo = requestNo;
    return hint;
}

TEST_F(DumpinTest, RenameIsOffWithoutTheReadBit) {
    useList("uniqueKey;5\nframeNo,0001,P;9\n");
    mProps.set(props::kDumpinEnable, 1);
    FILE_DUMP_NAMING_HINT hint = hintWith(1, 2, 3);
    EXPECT_FALSE(mRule.on_device_dump_file_rename(1, "P", hint));
    EXPECT_EQ(hint.UniqueKey, 1);
    EXPECT_EQ(hint.FrameNo, 2);
    EXPECT_EQ(hint.RequestNo, 3);
}

TEST_F(DumpinTest, RenameTakesTheIdentityFromTheList) {
    struct Case {
        const char* list;
        int reqNum;
        int frameNo;
        int uniqueKey;
        int requestNo;
    } cases[] = {
            {"uniqueKey;0042\nrequestNo;12\nframeNo,0012,EIspProfile_Capture;37\n", 5, 37, 42, 12},
            // The first frameNo entry serves every request outside MFNR profiles.
            {"frameNo,0001,P;10\nframeNo,0002,P;20\n", 2, 10, 0, 0},
            {"frameNo,0001,EIspProfile_MFNR;10\nframeNo,0002,EIspProfile_MFNR;20\n", 2, 20, 0, 0},
            {"frameNo,0001,EIspProfile_MFNR;10\n", 3, 0, 0, 0},
            {"lsc,0001,P;10\nuniqueKey;7\n", 1, 0, 7, 0},
            {"frameNox,0001,P;10\n", 1, 0, 0, 0},
            {"frameNo,0001,P;notanumber\n", 1, 0, 0, 0},
    };
    for (const Case& c : cases) {
        useList(c.list);
        FILE_DUMP_NAMING_HINT hint = hintWith(-1, -1, -1);
        hint.ImgWidth = 640;
        EXPECT_TRUE(mRule.on_device_dump_file_rename(c.reqNum, "EIspProfile_Other", hint))
                << c.list;
        EXPECT_EQ(hint.FrameNo, c.frameNo) << c.list;
        EXPECT_EQ(hint.UniqueKey, c.uniqueKey) << c.list;
        EXPECT_EQ(hint.RequestNo, c.requestNo) << c.list;
        EXPECT_EQ(hint.ImgWidth, 640);
    }
}

TEST_F(DumpinTest, RenameReportsANullProfileWithoutClosingMark) {
    useList("frameNo,0001,P;4\n");
    FILE_DUMP_NAMING_HINT hint;
    EXPECT_TRUE(mRule.on_device_dump_file_rename(1, nullptr, hint));
    EXPECT_EQ(hint.FrameNo, 4);
    EXPECT_EQ(countAt(log::Level::Error,
                      "[on_device_dump_file_rename] ispProfile is nullptr! "
                      "str_ispProfile is not assigned"),
              1);
}

class RegisterDumpTest : public DumpinTest {
protected:
    static constexpr char kPath[] = "/data/vendor/camera_dump/reg.bin";
    void SetUp() override {
        std::string dir = "/data/vendor/camera_dump";
        ASSERT_EQ(fs::makePath(dir.c_str(), 0755), 0);
    }
    static std::string word(uint32_t v) {
        return std::string{static_cast<char>(v & 0xff), static_cast<char>((v >> 8) & 0xff),
                           static_cast<char>((v >> 16) & 0xff),
                           static_cast<char>((v >> 24) & 0xff)};
    }
};

TEST_F(RegisterDumpTest, WritesCountReservedAndData) {
    const std::string data = "0123456789abcdefghij";
    struct Case {
        int size;
        uint32_t count;
    } cases[] = {{10, 3}, {0, 1}, {4, 2}, {3, 1}, {20, 6}};
    for (const Case& c : cases) {
        EXPECT_EQ(NSCam::TuningUtils::DumpRegForDP(kPath, data.data(), c.size), 1) << c.size;
        EXPECT_EQ(mRoot.readFile(kPath),
                  word(c.count) + word(0) + data.substr(0, static_cast<size_t>(c.size)))
                << c.size;
    }
    EXPECT_EQ(countAt(log::Level::Error, std::string("[DumpRegForDP] open file for ") + kPath), 5);
}

TEST_F(RegisterDumpTest, FailedWriteIsReportedAndStopsWriting) {
    fs::testing::failNext(fs::testing::Op::Write, 1, ENOSPC);
    EXPECT_EQ(NSCam::TuningUtils::DumpRegForDP(kPath, "abcdefgh", 8), 0);
    EXPECT_EQ(countAt(log::Level::Error,
                      std::string("[DumpRegForDP] write config error to ") + kPath),
              1);
    // Nothing after the failed word was written; the file stays behind.
    EXPECT_TRUE(mRoot.exists(kPath));
    EXPECT_EQ(mRoot.readFile(kPath), "");
}

TEST_F(RegisterDumpTest, UnopenablePathFails) {
    EXPECT_EQ(NSCam::TuningUtils::DumpRegForDP("/data/missing/dir/reg.bin", "abcd", 4), 0);
    EXPECT_EQ(countAt(log::Level::Error,
                      "[DumpRegForDP] write config error to /data/missing/dir/reg.bin"),
              1);
}

TEST_F(RegisterDumpTest, OverlongNameIsTruncatedAndReported) {
    std::string name = "/data/vendor/camera_dump/" + std::string(600, 'r');
    EXPECT_EQ(NSCam::TuningUtils::DumpRegForDP(name.c_str(), "abcd", 4), 0);
    EXPECT_EQ(countAt(log::Level::Error, "[DumpRegForDP] Get strDump fail!"), 1);
}

TEST_F(RegisterDumpTest, InvalidDataIsRefusedWithoutAFile) {
    EXPECT_EQ(NSCam::TuningUtils::DumpRegForDP(kPath, nullptr, 8), 0);
    EXPECT_EQ(NSCam::TuningUtils::DumpRegForDP(kPath, "abcd", -4), 0);
    EXPECT_FALSE(mRoot.exists(kPath));
    EXPECT_EQ(mLog.countContaining("[DumpRegForDP] invalid register data("), 2);
}

TEST_F(RegisterDumpTest, PerStagePlaceholdersWriteNothing) {
    using Member = int (NSCam::TuningUtils::FileReadRule::*)(const char*, const void*, int);
    for (Member member : {&NSCam::TuningUtils::FileReadRule::DumpP1ForDP,
                          &NSCam::TuningUtils::FileReadRule::DumpP2ForDP,
                          &NSCam::TuningUtils::FileReadRule::DumpMfbForDP,
                          &NSCam::TuningUtils::FileReadRule::DumpMssForDP}) {
        EXPECT_EQ((mRule.*member)(kPath, "abcd", 4), 0);
    }
    EXPECT_FALSE(mRoot.exists(kPath));
}

}  // namespace
}  // namespace test
}  // namespace camtune
