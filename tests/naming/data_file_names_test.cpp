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

using DataNameFn = int (*)(char*, int, const FILE_DUMP_NAMING_HINT*, const char*);

const std::string kPrefix = "/data/vendor/camera_dump/005012345-0012-0034";

FILE_DUMP_NAMING_HINT mainHint() {
    FILE_DUMP_NAMING_HINT hint;
    hint.UniqueKey = 5012345;
    hint.RequestNo = 12;
    hint.FrameNo = 34;
    hint.SensorDev = 1;
    hint.BufWidth = 400;
    hint.BufHeight = 300;
    hint.BufStride = 600;
    hint.ImgWidth = 400;
    hint.ImgHeight = 300;
    return hint;
}

struct Named {
    std::string name;
    int result;
};

Named name(DataNameFn fn, const FILE_DUMP_NAMING_HINT& hint, const char* user = nullptr) {
    char buf[256];
    const int result = fn(buf, sizeof(buf), &hint, user);
    return {buf, result};
}

struct Kind {
    const char* function;
    DataNameFn fn;
    const char* tail;  // after the prefix, for mainHint() with no free text
    int result;
};

#define KIND(kind) #kind, genFileName_##kind
const Kind kKinds[] = {
        {KIND(HW_AAO), "-main.hw_aao", 7},
        {KIND(HW_AAHO), "-main.hw_aaho", 8},
        {KIND(LCSO), "-main-PW400-PH300-BW600__400x300_12_s0.lcso", 5},
        {KIND(TSF), "-main-profile.tsfso", 6},
        {KIND(Reg), "-main-profile", 0},
        {KIND(TUNING), "-main-profile.tuning", 7},
        {KIND(VSDOF_BUFFER), "-main", 0},
        {KIND(YNR_FD_TBL), "-main-fd.ynrtbl", 10},
        {KIND(DCESO), "-main.dceso", 6},
        {KIND(LTM_CURVE), "-main-profile.ltm", 4},
        {KIND(BPC_TBL), "-main.bpci", 5},
        {KIND(face_info), "-main-profile.faceinfo", 9},
        {KIND(FD_data), "-main.fd_bin", 7},
        {KIND(LCESHO), "-main.lcesho", 7},
        {KIND(MSS_REG), "-main-profile_mss.reg", 8},
        {KIND(MFB_REG), "-main-profile_mfb.reg", 8},
        {KIND(P2_REG), "-main-profile_p2.reg", 7},
        {KIND(AISA), "-main.aisa", 5},
        {KIND(AIGA), "-main.aima", 5},
};
#undef KIND

using DataNameTest = NamingTest;

TEST_F(DataNameTest, EveryKindWithAPlainHint) {
    for (const Kind& k : kKinds) {
        const Named n = name(k.fn, mainHint());
        EXPECT_EQ(n.name, kPrefix + k.tail) << k.function;
        EXPECT_EQ(n.result, k.result) << k.function;
    }
}

TEST_F(DataNameTest, FreeTextsComeBeforeProfileAndSuffix) {
    FILE_DUMP_NAMING_HINT hint = mainHint();
    std::strcpy(hint.UserString, "af");
    struct Case {
        DataNameFn fn;
        const char* expected;
        int result;
    } cases[] = {
            {genFileName_HW_AAO, "-main-af-af-x.hw_aao", 7},
            {genFileName_HW_AAHO, "-main-af-x.hw_aaho", 8},
            {genFileName_TUNING, "-main-af-x-profile.tuning", 7},
            {genFileName_LCSO, "-main-af-x-PW400-PH300-BW600__400x300_12_s0.lcso", 5},
            {genFileName_VSDOF_BUFFER, "-main-af-x", 2},
            {genFileName_P2_REG, "-main-af-x-profile_p2.reg", 7},
    };
    for (const Case& c : cases) {
        const Named n = name(c.fn, hint, "x");
        EXPECT_EQ(n.name, kPrefix + c.expected);
        EXPECT_EQ(n.result, c.result) << c.expected;
    }
    // Without the caller's text the buffer dump ends on the hint's, yet reports 0.
    const Named vsdof = name(genFileName_VSDOF_BUFFER, hint, "");
    EXPECT_EQ(vsdof.name, kPrefix + "-main-af");
    EXPECT_EQ(vsdof.result, 0);
}

TEST_F(DataNameTest, SensorElementOfAnUnsetDevice) {
    FILE_DUMP_NAMING_HINT hint = mainHint();
    hint.SensorDev = -1;
    EXPECT_EQ(name(genFileName_LCSO, hint).name,
              kPrefix + "-PW400-PH300-BW600__400x300_12_s0.lcso");
    EXPECT_EQ(name(genFileName_HW_AAHO, hint).name, kPrefix + "-sensor.hw_aaho");
}

TEST_F(DataNameTest, DefaultHint) {
    const FILE_DUMP_NAMING_HINT hint;
    EXPECT_EQ(name(genFileName_DCESO, hint).name,
              "/data/vendor/camera_dump/uniquekey-rqst-frme-sensor.dceso");
}

TEST_F(DataNameTest, RegisterDumpEndsOnTheExposureLabel) {
    FILE_DUMP_NAMING_HINT hint = mainHint();
    std::strcpy(hint.ExpString, "ShtExp");
    const Named reg = name(genFileName_Reg, hint);
    EXPECT_EQ(reg.name, kPrefix + "-main-profile-ShtExp");
    EXPECT_EQ(reg.result, 7);
    // Only the register dump carries the label.
    EXPECT_EQ(name(genFileName_TUNING, hint).name, kPrefix + "-main-profile.tuning");
}

TEST_F(DataNameTest, ExposureValueWhenBracketing) {
    LogCapture quiet;
    bracketing(1);
    FILE_DUMP_NAMING_HINT hint = mainHint();
    hint.EvValue = 3;
    EXPECT_EQ(name(genFileName_TUNING, hint).name, kPrefix + "_3EV-main-profile.tuning");
}

TEST_F(DataNameTest, SuffixThatDoesNotFitIsCut) {
    const FILE_DUMP_NAMING_HINT hint = mainHint();
    const std::string head = kPrefix + "-main-profile";
    char buf[256];
    const int size = static_cast<int>(head.size()) + 5;  // ".tuning" needs 8
    EXPECT_EQ(genFileName_TUNING(buf, size, &hint, nullptr), 7);
    EXPECT_EQ(std::string(buf), head + ".tun");
}

TEST_F(DataNameTest, MissingHintGivesAnEmptyName) {
    LogCapture log;
    for (const Kind& k : kKinds) {
        char buf[16] = "stale";
        EXPECT_EQ(k.fn(buf, sizeof(buf), nullptr, "x"), -1) << k.function;
        EXPECT_STREQ(buf, "") << k.function;
        EXPECT_EQ(log.count(log::Level::Error,
                            std::string("[genFileName_") + k.function + "] no naming hint given"),
                  1);
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
