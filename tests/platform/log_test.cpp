#define LOG_TAG "camtune-test"

#include "camtune/platform/log.h"

#include <gtest/gtest.h>

#include <string>

#include "support/log_capture.h"

namespace camtune {
namespace {

using log::Level;

TEST(Log, LinesCarryTagLevelAndTheFormattedText) {
    test::LogCapture capture;
    CAM_LOGD("[%s] frame(%d)", "fn", 7);
    CAM_LOGW("plain");
    auto lines = capture.lines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].level, Level::Debug);
    EXPECT_EQ(lines[0].tag, "camtune-test");
    EXPECT_EQ(lines[0].text, "[fn] frame(7)");
    EXPECT_EQ(lines[0].suffix, "");
    EXPECT_EQ(lines[1].level, Level::Warn);
}

TEST(Log, ErrorLinesCarryFileLineAndFunctionSuffix) {
    test::LogCapture capture;
    const int line = __LINE__ + 1;
    CAM_LOGE("boom %d", 1);
    auto lines = capture.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].text, "boom 1");
    EXPECT_EQ(lines[0].suffix, " (log_test.cpp){#" + std::to_string(line) + ":TestBody}");
}

int gEvaluations = 0;
int countedArgument() {
    return ++gEvaluations;
}

TEST(Log, BelowThresholdNothingIsFormattedOrEvaluated) {
    test::LogCapture capture;
    log::setThreshold(Level::Warn);
    gEvaluations = 0;
    CAM_LOGV("v %d", countedArgument());
    CAM_LOGD("d %d", countedArgument());
    CAM_LOGI("i %d", countedArgument());
    EXPECT_EQ(gEvaluations, 0);
    EXPECT_TRUE(capture.lines().empty());
    CAM_LOGW("w %d", countedArgument());
    EXPECT_EQ(gEvaluations, 1);
    EXPECT_EQ(capture.count(Level::Warn, "w 1"), 1);
}

TEST(Log, LongMessagesAreCutNotOverrun) {
    test::LogCapture capture;
    std::string huge(5000, 'x');
    CAM_LOGI("%s", huge.c_str());
    auto lines = capture.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_GT(lines[0].text.size(), 500u);
    EXPECT_LT(lines[0].text.size(), huge.size());
}

}  // namespace
}  // namespace camtune
