#include "naming/prefix.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <thread>
#include <vector>

#include "camtune/platform/fs.h"
#include "camtune/platform/testing.h"
#include "naming/naming_fixture.h"
#include "support/log_capture.h"

namespace camtune {
namespace test {
namespace {

using NSCam::TuningUtils::MakePrefix;

const std::string kRoot = "/data/vendor/camera_dump";

using PrefixTest = NamingTest;

TEST_F(PrefixTest, ElementsForKeyRequestFrameAndExposure) {
    struct Case {
        int uniqueKey, frameNo, requestNo, evValue, bracketing;
        const char* expected;
    } cases[] = {
            {5012345, 10034, 12, -2, 0, "/005012345-0012-0034"},
            {5012345, 10034, 12, -2, 1, "/005012345-0012-0034_-2EV"},
            {0, 0, 0, 0, 1, "/000000000-0000-0000_0EV"},
            {-1, 34, 12345, 0, 0, "/uniquekey-2345-0034"},
            {7, -10000, -1, 0, 0, "/000000007-rqst-0000"},
            {1234567890, -1, -10001, 0, 0, "/1234567890-rqst-frme"},
    };
    LogCapture quiet;
    for (const Case& c : cases) {
        bracketing(c.bracketing);
        char buf[256];
        const int count =
                MakePrefix(buf, sizeof(buf), c.uniqueKey, c.frameNo, c.requestNo, c.evValue);
        const std::string expected = kRoot + c.expected;
        EXPECT_EQ(buf, expected);
        EXPECT_EQ(count, static_cast<int>(expected.size()));
    }
}

TEST_F(PrefixTest, ElementThatDoesNotFitIsOverwrittenByTheNext) {
    LogCapture log;
    char buf[10];
    EXPECT_EQ(MakePrefix(buf, sizeof(buf), 5012345, 34, 12, 0), 5);
    EXPECT_STREQ(buf, "-0012-003");
    EXPECT_EQ(log.count(log::Level::Warn, "[MakePrefix] Add UniqueKey into dump file prefix fail!"),
              1);
    EXPECT_EQ(log.count(log::Level::Warn, "[MakePrefix] Add FrameNo into dump file prefix fail!"),
              1);
    EXPECT_EQ(log.countContaining("RequestNo"), 0);
}

TEST_F(PrefixTest, ExposureThatDoesNotFitIsReported) {
    bracketing(1);
    LogCapture log;
    char buf[46];
    EXPECT_EQ(MakePrefix(buf, sizeof(buf), 5012345, 34, 12, -2), 44);
    EXPECT_EQ(std::string(buf), kRoot + "/005012345-0012-0034_");
    ASSERT_EQ(log.count(log::Level::Error, "vexor : EV(-2)"), 1);
    for (const LogLine& line : log.lines()) {
        EXPECT_TRUE(line.level != log::Level::Error ||
                    line.suffix.find(":MakePrefix}") != std::string::npos);
    }
    EXPECT_EQ(log.count(log::Level::Warn, "[MakePrefix] Add EvValue into dump file prefix fail!"),
              1);
}

TEST_F(PrefixTest, NoRoomAtAll) {
    LogCapture quiet;
    char buf[4] = "abc";
    EXPECT_EQ(MakePrefix(buf, 0, 1, 2, 3, 0), 0);
    EXPECT_STREQ(buf, "abc");
    EXPECT_EQ(MakePrefix(nullptr, 64, 1, 2, 3, 0), 0);
    EXPECT_EQ(MakePrefix(buf, -5, 1, 2, 3, 0), 0);
    EXPECT_STREQ(buf, "abc");
}

TEST_F(PrefixTest, DumpRootIsCreatedOnceAndRetriedAfterAFailure) {
    naming::internal::forgetDumpRoot();
    LogCapture log;
    fs::testing::failNext(fs::testing::Op::Mkdir, 1, EACCES);
    char buf[128];
    EXPECT_EQ(MakePrefix(buf, sizeof(buf), 1, 2, 3, 0), 44);
    EXPECT_EQ(std::string(buf), kRoot + "/000000001-0003-0002");
    EXPECT_EQ(log.count(log::Level::Error, "craete folder <" + kRoot + "> fail"), 1);
    EXPECT_FALSE(mRoot.exists(kRoot));

    MakePrefix(buf, sizeof(buf), 1, 2, 3, 0);
    MakePrefix(buf, sizeof(buf), 1, 2, 3, 0);
    EXPECT_TRUE(mRoot.exists(kRoot));
    EXPECT_EQ(log.count(log::Level::Debug, "create folder <" + kRoot + ">"), 1);
}

TEST_F(PrefixTest, FirstCallsFromManyThreads) {
    naming::internal::forgetDumpRoot();
    constexpr int kThreads = 4;
    std::vector<std::string> names(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([i, &names] {
            char buf[128];
            MakePrefix(buf, sizeof(buf), i, i, i, 0);
            names[i] = buf;
        });
    }
    for (std::thread& t : threads) t.join();
    EXPECT_TRUE(mRoot.exists(kRoot));
    for (int i = 0; i < kThreads; ++i) {
        const std::string n = std::to_string(i);
        EXPECT_EQ(names[i], kRoot + "/00000000" + n + "-000" + n + "-000" + n);
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
