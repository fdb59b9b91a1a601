// Behaviour of the Android port backend, run on a host against recording fakes of the liblog,
// libcutils property and atrace functions it calls.
#include "platform/backend.h"

#include <android/log.h>
#include <cutils/properties.h>
#include <cutils/trace.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "camtune/platform/fs.h"
#include "camtune/platform/properties.h"
#include "camtune/platform/trace.h"

namespace {

struct LoggedLine {
    int priority;
    std::string tag;
    std::string text;
};

struct Fakes {
    std::vector<LoggedLine> lines;
    int minimumPriority = ANDROID_LOG_DEFAULT;
    std::map<std::string, std::string> properties;
    int propertySetCalls = 0;
    int propertySetResult = 0;
    std::vector<std::string> traceEvents;
};

Fakes gFakes;

}  // namespace

extern "C" {

int __android_log_write(int priority, const char* tag, const char* text) {
    gFakes.lines.push_back({priority, tag, text});
    return 1;
}

int __android_log_print(int priority, const char* tag, const char* fmt, ...) {
    char text[1024];
    va_list args;
    va_start(args, fmt);
    std::vsnprintf(text, sizeof(text), fmt, args);
    va_end(args);
    gFakes.lines.push_back({priority, tag, text});
    return 1;
}

int __android_log_get_minimum_priority() {
    return gFakes.minimumPriority;
}

int property_get(const char* key, char* value, const char* defaultValue) {
    auto found = gFakes.properties.find(key);
    std::string text = found != gFakes.properties.end() ? found->second : "";
    if (text.empty() && defaultValue != nullptr) text = defaultValue;
    std::snprintf(value, PROP_VALUE_MAX, "%s", text.c_str());
    return static_cast<int>(std::string(value).size());
}

int32_t property_get_int32(const char* key, int32_t defaultValue) {
    auto found = gFakes.properties.find(key);
    return found != gFakes.properties.end() ? std::stoi(found->second) : defaultValue;
}

int property_set(const char* key, const char* value) {
    ++gFakes.propertySetCalls;
    if (gFakes.propertySetResult == 0) gFakes.properties[key] = value;
    return gFakes.propertySetResult;
}

atomic_bool atrace_is_ready(true);
uint64_t atrace_enabled_tags = 0;
void atrace_setup() {}
#if ATRACE_SHMEM
void atrace_init() {}
uint64_t atrace_get_enabled_tags() {
    return atrace_enabled_tags;
}
#endif
void atrace_begin_body(const char* name) {
    gFakes.traceEvents.push_back(std::string("B:") + name);
}
void atrace_end_body() {
    gFakes.traceEvents.push_back("E");
}

}  // extern "C"

namespace {

using camtune::log::Level;
namespace props = NSCam::Utils::Properties;

class AndroidBackendTest : public ::testing::Test {
protected:
    void SetUp() override { gFakes = Fakes(); }
};

TEST_F(AndroidBackendTest, EachLevelReachesLiblogAtItsPriorityWithSuffixOnErrorLines) {
    // Conversions in a message were the caller's to expand; liblog must not see them again.
    const std::string message = "frame(3) 100% %s";
    struct Case {
        Level level;
        const char* suffix;
        int priority;
    };
    const Case cases[] = {
            {Level::Verbose, "", ANDROID_LOG_VERBOSE},
            {Level::Debug, "", ANDROID_LOG_DEBUG},
            {Level::Info, "", ANDROID_LOG_INFO},
            {Level::Warn, "", ANDROID_LOG_WARN},
            {Level::Error, " (a.cpp){#7:run}", ANDROID_LOG_ERROR},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.priority);
        gFakes.lines.clear();
        camtune::backend::writeLogLine(c.level, "NDD", message.c_str(), c.suffix);
        ASSERT_EQ(gFakes.lines.size(), 1u);
        EXPECT_EQ(gFakes.lines[0].priority, c.priority);
        EXPECT_EQ(gFakes.lines[0].tag, "NDD");
        EXPECT_EQ(gFakes.lines[0].text, message + c.suffix);
    }
}

TEST_F(AndroidBackendTest, SilentLinesAreDropped) {
    camtune::backend::writeLogLine(Level::Silent, "NDD", "never", "");
    EXPECT_TRUE(gFakes.lines.empty());
}

TEST_F(AndroidBackendTest, ThresholdFollowsLiblogMinimumPriority) {
    const std::pair<int, Level> cases[] = {
            {ANDROID_LOG_DEFAULT, Level::Verbose}, {ANDROID_LOG_VERBOSE, Level::Verbose},
            {ANDROID_LOG_DEBUG, Level::Debug},     {ANDROID_LOG_INFO, Level::Info},
            {ANDROID_LOG_WARN, Level::Warn},       {ANDROID_LOG_ERROR, Level::Error},
            {ANDROID_LOG_FATAL, Level::Error},     {ANDROID_LOG_SILENT, Level::Silent},
    };
    for (const auto& [priority, level] : cases) {
        gFakes.minimumPriority = priority;
        EXPECT_EQ(camtune::backend::initialLogThreshold(), level) << "priority " << priority;
    }
}

TEST_F(AndroidBackendTest, PropertyReadsGoToSystemProperties) {
    gFakes.properties["vendor.x"] = "42";
    char value[props::kPropertyValueMax];
    EXPECT_EQ(props::property_get("vendor.x", value, "7"), 2);
    EXPECT_STREQ(value, "42");
    EXPECT_EQ(props::property_get("vendor.unset", value, "7"), 1);
    EXPECT_STREQ(value, "7");
    EXPECT_EQ(props::property_get_int32("vendor.x", 7), 42);
    EXPECT_EQ(props::property_get_int32("vendor.unset", 7), 7);
}

TEST_F(AndroidBackendTest, MissingKeyReadsAsUnsetWithoutReachingSystemProperties) {
    gFakes.properties[""] = "trap";
    char value[props::kPropertyValueMax] = "junk";
    for (const char* key : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(props::property_get(key, value, "dflt"), 4);
        EXPECT_STREQ(value, "dflt");
        EXPECT_EQ(props::property_get(key, value, nullptr), 0);
        EXPECT_STREQ(value, "");
        EXPECT_EQ(props::property_get_int32(key, -3), -3);
    }
}

TEST_F(AndroidBackendTest, PropertySetResults) {
    const std::string longest(props::kPropertyValueMax - 1, 'v');
    const std::string tooLong(props::kPropertyValueMax, 'v');
    struct Case {
        const char* name;
        const char* key;
        const char* value;
        int systemResult;
        int expected;
        int systemCalls;
    };
    const Case cases[] = {
            {"plain", "vendor.x", "1", 0, 0, 1},
            {"null value sets empty", "vendor.x", nullptr, 0, 0, 1},
            {"longest value", "vendor.x", longest.c_str(), 0, 0, 1},
            {"value too long", "vendor.x", tooLong.c_str(), 0, -1, 0},
            {"null key", nullptr, "1", 0, -1, 0},
            {"empty key", "", "1", 0, -1, 0},
            {"refused by the system", "vendor.x", "1", -13, -1, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        gFakes = Fakes();
        gFakes.propertySetResult = c.systemResult;
        EXPECT_EQ(props::property_set(c.key, c.value), c.expected);
        EXPECT_EQ(gFakes.propertySetCalls, c.systemCalls);
        if (c.expected == 0) EXPECT_EQ(gFakes.properties[c.key], c.value ? c.value : "");
    }
}

TEST_F(AndroidBackendTest, TraceSectionsFollowTheCameraTag) {
    struct Case {
        const char* name;
        uint64_t enabledTags;
        bool enabled;
        std::vector<std::string> events;
    };
    const Case cases[] = {
            {"off", 0, false, {}},
            {"other tags only", ~static_cast<uint64_t>(ATRACE_TAG_CAMERA), false, {}},
            {"camera", ATRACE_TAG_CAMERA, true, {"B:dump", "E"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        gFakes = Fakes();
        atrace_enabled_tags = c.enabledTags;
        EXPECT_EQ(camtune::trace::isEnabled(), c.enabled);
        { camtune::trace::ScopedTrace section("dump"); }
        EXPECT_EQ(gFakes.traceEvents, c.events);
    }
    atrace_enabled_tags = 0;
}

}  // namespace

// A device opens the paths the library names: CAMTUNE_ROOT means nothing there, and makePath
// makes each missing level.
TEST(AndroidFiles, PathsAreUsedAsNamed) {
    char folder[] = "/tmp/camtune-android-XXXXXX";
    ASSERT_NE(::mkdtemp(folder), nullptr);
    ::setenv("CAMTUNE_ROOT", "/nonexistent-root", 1);
    const std::string base = folder;
    ASSERT_EQ(camtune::fs::makePath((base + "/a/b").c_str(), 0660), 0);
    camtune::fs::FileInfo info;
    ASSERT_EQ(camtune::fs::stat((base + "/a/b").c_str(), &info), 0);
    EXPECT_TRUE(info.isDirectory());
    {
        camtune::fs::UniqueFd fd(
                camtune::fs::open((base + "/a/b/f").c_str(), O_WRONLY | O_CREAT, 0644));
        ASSERT_TRUE(fd.isValid());
        EXPECT_EQ(camtune::fs::write(fd.get(), "abc", 3), 3);
    }
    ASSERT_EQ(camtune::fs::stat((base + "/a/b/f").c_str(), &info), 0);
    EXPECT_EQ(info.size, 3u);
    EXPECT_EQ(camtune::fs::rename((base + "/a/b/f").c_str(), (base + "/a/g").c_str()), 0);
    EXPECT_EQ(camtune::fs::unlink((base + "/a/g").c_str()), 0);
    EXPECT_EQ(camtune::fs::makePath((base + "/a/b").c_str(), 0755), 0);  // already there
    ::unsetenv("CAMTUNE_ROOT");
    std::filesystem::remove_all(base);
}
