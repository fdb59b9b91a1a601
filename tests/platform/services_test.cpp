#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/prctl.h>

#include <thread>

#include "camtune/platform/clock.h"
#include "camtune/platform/file_cache.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/sensor_list.h"
#include "camtune/platform/testing.h"
#include "camtune/platform/thread.h"
#include "camtune/platform/trace.h"
#include "support/temp_root.h"

namespace camtune {
namespace {

TEST(SensorList, DefaultListHasMainAndSubAndCanBeReplacedOrWithdrawn) {
    NSCam::host::resetSensors();
    NSCam::IHalSensorList* list = NSCam::IHalSensorList::get();
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->queryNumberOfSensors(), 2u);
    EXPECT_EQ(list->querySensorDevIdx(0), 1u);
    EXPECT_EQ(list->querySensorDevIdx(1), 2u);
    EXPECT_EQ(list->querySensorDevIdx(9), 0u);
    NSCam::SensorStaticInfo info;
    list->querySensorStaticInfo(2, &info);
    EXPECT_EQ(info.sensorFormatOrder, 1);

    NSCam::host::setSensors({{0, 4, 3}});
    EXPECT_EQ(list->querySensorDevIdx(0), 4u);
    NSCam::SensorStaticInfo other;
    other.sensorFormatOrder = -7;
    list->querySensorStaticInfo(1, &other);  // unknown device leaves the record alone
    EXPECT_EQ(other.sensorFormatOrder, -7);

    NSCam::host::setSensorListAvailable(false);
    EXPECT_EQ(NSCam::IHalSensorList::get(), nullptr);
    NSCam::host::resetSensors();
    EXPECT_NE(NSCam::IHalSensorList::get(), nullptr);
}

TEST(FileCache, SharedHandleWritesAndReportsBytes) {
    test::TempRoot root;
    ASSERT_EQ(fs::makePath("/dump", 0755), 0);
    {
        auto handle = NSCam::IFileCache::open("/dump/reg.bin");
        ASSERT_TRUE(handle->isOpen());
        auto second = handle;
        EXPECT_EQ(handle->write("abcd", 4), 4);
        EXPECT_EQ(second->write("ef", 2), 2);
    }
    EXPECT_EQ(root.readFile("/dump/reg.bin"), "abcdef");

    auto failed = NSCam::IFileCache::open("/no/such/folder/reg.bin");
    ASSERT_NE(failed, nullptr);
    EXPECT_FALSE(failed->isOpen());
    EXPECT_EQ(failed->write("abcd", 4), -1);

    fs::testing::failNext(fs::testing::Op::Write, 1, ENOSPC);
    auto handle = NSCam::IFileCache::open("/dump/reg2.bin");
    EXPECT_EQ(handle->write("abcd", 4), -1);
}

TEST(Thread, NameAndPriorityApplyToTheCallingThreadOnly) {
    const int before = thread::priority();
    // Lowering a priority needs no privilege; raising it back would.
    const int lower = before < 19 ? 19 : before;
    std::thread worker([lower] {
        EXPECT_EQ(thread::setName("CamtuneWorkerThreadLongName"), 0);
        char name[32] = {};
        ::prctl(PR_GET_NAME, name, 0, 0, 0);
        EXPECT_STREQ(name, "CamtuneWorkerTh");  // the kernel keeps 15 characters
        EXPECT_EQ(thread::setPriority(lower), 0);
        EXPECT_EQ(thread::priority(), lower);
    });
    worker.join();
    EXPECT_EQ(thread::priority(), before);
}

TEST(Clock, TheTestClockMovesWallTimeButNotMonotonicTime) {
    const int64_t before = clock::monotonicNs();
    clock::testing::setRealtime(timespec{1000, 0});
    clock::testing::advance(3600);
    EXPECT_EQ(clock::realtime().tv_sec, 4600);
    const int64_t after = clock::monotonicNs();
    clock::testing::reset();
    EXPECT_GE(after, before);
    EXPECT_LT(after - before, int64_t{3600} * 1000 * 1000 * 1000);
    EXPECT_GT(clock::realtime().tv_sec, 4600);
}

// The trace file is chosen at first use; ctest runs this test in a process of its own.
TEST(Trace, SectionsAreWrittenAsChromeTraceEvents) {
    test::TempRoot root;
    std::string path = root.path() + "/trace.json";
    ::setenv("CAMTUNE_TRACE", path.c_str(), 1);
    if (!trace::isEnabled()) GTEST_SKIP() << "tracing was initialised earlier in this process";
    { trace::ScopedTrace section("NDD_BUFFER_AAO"); }
    const std::string text = root.readFile(path);
    EXPECT_EQ(text.rfind("[\n", 0), 0u);
    for (const char* part : {"\"name\":\"NDD_BUFFER_AAO\"", "\"ph\":\"B\"", "\"ph\":\"E\""}) {
        EXPECT_NE(text.find(part), std::string::npos) << part;
    }
}

}  // namespace
}  // namespace camtune
