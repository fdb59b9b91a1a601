// The on-device rename of dump identities and the register dump layout.
#include <array>
#include <cerrno>
#include <string>
#include <tuple>

#include "camtune/file_read_rule.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/testing.h"
#include "dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

using NSCam::TuningUtils::DumpRegForDP;
using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;
using NSCam::TuningUtils::FileReadRule;

TEST_F(DumpinTest, RenameTakesTheIdentityFromTheList) {
    // list, request, then the frame number, unique key and request number it yields
    const std::tuple<const char*, int, std::array<int, 3>> cases[] = {
            {"uniqueKey;0042\nrequestNo;12\nframeNo,0012,EIspProfile_Capture;37\n",
             5,
             {37, 42, 12}},
            {"frameNo,0001,EIspProfile_MFNR;10\nframeNo,0002,EIspProfile_MFNR;20\n", 2, {20, 0, 0}},
            {"frameNo,0001,EIspProfile_MFNR;10\n", 3, {0, 0, 0}},
            {"frameNox,0001,P;10\n", 1, {0, 0, 0}},
            {"frameNo,0001,P;notanumber\n", 1, {0, 0, 0}},
    };
    for (const auto& [list, reqNum, expected] : cases) {
        useList(list);
        FILE_DUMP_NAMING_HINT hint;
        hint.UniqueKey = hint.FrameNo = hint.RequestNo = -1;
        hint.ImgWidth = 640;
        EXPECT_TRUE(mRule.on_device_dump_file_rename(reqNum, "EIspProfile_Other", hint)) << list;
        EXPECT_EQ((std::array<int, 3>{hint.FrameNo, hint.UniqueKey, hint.RequestNo}), expected)
                << list;
        EXPECT_EQ(hint.ImgWidth, 640);
    }
}

TEST_F(DumpinTest, RenameNeedsTheReadBitAndReportsANullProfile) {
    useList("uniqueKey;5\nframeNo,0001,P;4\n");
    FILE_DUMP_NAMING_HINT hint;
    EXPECT_TRUE(mRule.on_device_dump_file_rename(1, nullptr, hint));
    EXPECT_EQ(hint.FrameNo, 4);
    EXPECT_EQ(errors("[on_device_dump_file_rename] ispProfile is nullptr! "
                     "str_ispProfile is not assigned"),
              1);
    mProps.set(props::kDumpinEnable, 1);
    hint.UniqueKey = hint.FrameNo = 2;
    EXPECT_FALSE(mRule.on_device_dump_file_rename(1, "P", hint));
    EXPECT_EQ(hint.UniqueKey, 2);
    EXPECT_EQ(hint.FrameNo, 2);
}

class RegisterDumpTest : public DumpinTest {
protected:
    static constexpr char kPath[] = "/data/vendor/camera_dump/reg.bin";
    void SetUp() override { ASSERT_EQ(fs::makePath("/data/vendor/camera_dump", 0755), 0); }
};

TEST_F(RegisterDumpTest, WritesCountReservedAndData) {
    std::string data(0x48d0, 'r');
    data.replace(0, 10, "0123456789");
    const std::pair<int, const char*> cases[] = {{10, "\3\0\0\0"},
                                                 {0, "\1\0\0\0"},
                                                 {3, "\1\0\0\0"},
                                                 {4, "\2\0\0\0"},
                                                 {0x48d0, "\x35\x12\0\0"}};
    for (const auto& [size, count] : cases) {
        EXPECT_EQ(DumpRegForDP(kPath, data.data(), size), 1) << size;
        EXPECT_EQ(mRoot.readFile(kPath),
                  std::string(count, 4) + std::string(4, '\0') + data.substr(0, size))
                << size;
    }
    EXPECT_EQ(errors(std::string("[DumpRegForDP] open file for ") + kPath), 5);
}

TEST_F(RegisterDumpTest, FailuresAreReported) {
    fs::testing::failNext(fs::testing::Op::Write, 1, ENOSPC);
    EXPECT_EQ(DumpRegForDP(kPath, "abcdefgh", 8), 0);
    EXPECT_EQ(errors(std::string("[DumpRegForDP] write config error to ") + kPath), 1);
    EXPECT_EQ(mRoot.readFile(kPath), "");  // nothing after the failed word
    EXPECT_EQ(DumpRegForDP("/data/missing/dir/reg.bin", "abcd", 4), 0);
    EXPECT_EQ(errors("[DumpRegForDP] write config error to /data/missing/dir/reg.bin"), 1);
    std::string name = "/data/vendor/camera_dump/" + std::string(600, 'r');
    EXPECT_EQ(DumpRegForDP(name.c_str(), "abcd", 4), 0);
    EXPECT_EQ(errors("[DumpRegForDP] Get strDump fail!"), 1);
}

TEST_F(RegisterDumpTest, InvalidDataAndPerStageDumpsWriteNothing) {
    EXPECT_EQ(DumpRegForDP(kPath, nullptr, 1), 0);
    EXPECT_EQ(DumpRegForDP(kPath, "abcd", -4), 0);
    EXPECT_EQ(mLog.countContaining("[DumpRegForDP] invalid register data("), 2);
    using Member = int (FileReadRule::*)(const char*, const void*, int);
    for (Member member : {&FileReadRule::DumpP1ForDP, &FileReadRule::DumpP2ForDP,
                          &FileReadRule::DumpMfbForDP, &FileReadRule::DumpMssForDP}) {
        EXPECT_EQ((mRule.*member)(kPath, "abcd", 4), 0);
    }
    EXPECT_FALSE(mRoot.exists(kPath));
}

}  // namespace
}  // namespace test
}  // namespace camtune
