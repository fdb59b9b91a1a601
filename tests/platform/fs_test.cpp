#include "camtune/platform/fs.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "camtune/platform/testing.h"
#include "platform/host/root.h"
#include "support/temp_root.h"

namespace camtune {
namespace {

using fs::testing::Op;

TEST(FsRoot, AbsolutePathsAreResolvedUnderTheRoot) {
    test::TempRoot root;
    EXPECT_EQ(host::hostPath("/data/vendor/x"), root.path() + "/data/vendor/x");
    EXPECT_EQ(host::hostPath("relative/x"), root.path() + "/relative/x");
    EXPECT_EQ(host::hostPath(""), "");
    EXPECT_FALSE(fs::UniqueFd(fs::open("", O_RDONLY)).isValid());
    // A path already inside the root is not prefixed twice.
    EXPECT_EQ(host::hostPath((root.path() + "/a").c_str()), root.path() + "/a");
    fs::testing::setRoot((root.path() + "///").c_str());
    EXPECT_EQ(host::hostPath("/x"), root.path() + "/x");
}

TEST(FsRoot, TheTestRootTakesPrecedenceOverTheBackendsOwn) {
    test::TempRoot root;
    const std::string previous = host::root();
    host::setRoot("/backend/root");
    EXPECT_EQ(host::hostPath("/x"), root.path() + "/x");
    fs::testing::setRoot("");
    EXPECT_EQ(host::hostPath("/x"), "/backend/root/x");
    host::setRoot("/");
    EXPECT_EQ(host::hostPath("/data/vendor/x"), "/data/vendor/x");
    EXPECT_EQ(host::hostPath("relative/x"), "relative/x");
    host::setRoot(previous.c_str());
}

TEST(FsRoot, MakePathCreatesEveryLevelInsideTheRootAndTheRootItself) {
    test::TempRoot root;
    ASSERT_EQ(fs::makePath("/data/vendor/camera_dump", 0660), 0);
    struct ::stat st;
    ASSERT_EQ(::stat(root.hostPath("/data/vendor/camera_dump").c_str(), &st), 0);
    EXPECT_TRUE(S_ISDIR(st.st_mode));
    // The owner can still create files in a folder made with a mode lacking search permission.
    fs::UniqueFd fd(fs::open("/data/vendor/camera_dump/f", O_WRONLY | O_CREAT, 0644));
    EXPECT_TRUE(fd.isValid());
    EXPECT_EQ(fs::makePath("/data/vendor/camera_dump", 0660), 0);  // already there

    root.writeFile("/data/file", "x");
    EXPECT_EQ(fs::makePath("/data/file/sub", 0755), -1);
    EXPECT_EQ(errno, ENOTDIR);

    fs::testing::setRoot((root.path() + "/fresh/root").c_str());
    ASSERT_EQ(fs::makePath("/data/vendor", 0660), 0);
    EXPECT_TRUE(root.exists(root.path() + "/fresh/root/data/vendor"));
}

TEST(FsFaults, ArmedOperationFailsTheGivenNumberOfTimesWithTheGivenErrno) {
    struct Case {
        Op op;
        std::function<bool()> call;  // true on success
    };
    test::TempRoot root;
    root.writeFile("/d/file", "content");
    const Case kCases[] = {
            {Op::Open, [] { return fs::UniqueFd(fs::open("/d/file", O_RDONLY)).isValid(); }},
            {Op::Fopen,
             [] {
                 return std::unique_ptr<FILE, fs::FileCloser>(fs::fopen("/d/file", "r")) != nullptr;
             }},
            {Op::Mkdir, [] { return fs::mkdir("/d/new", 0755) == 0 || errno == EEXIST; }},
            {Op::Stat,
             [] {
                 fs::FileInfo info;
                 return fs::stat("/d/file", &info) == 0;
             }},
            {Op::Statvfs,
             [] {
                 fs::SpaceInfo space;
                 return fs::statvfs("/d", &space) == 0;
             }},
            {Op::Opendir,
             [] { return std::unique_ptr<DIR, fs::DirCloser>(fs::opendir("/d")) != nullptr; }},
            {Op::Rename, [] { return fs::rename("/d/file", "/d/file") == 0; }},
    };
    for (const Case& c : kCases) {
        fs::testing::failNext(c.op, 2, EACCES);
        errno = 0;
        EXPECT_FALSE(c.call()) << static_cast<int>(c.op);
        EXPECT_EQ(errno, EACCES);
        EXPECT_FALSE(c.call()) << static_cast<int>(c.op);
        EXPECT_TRUE(c.call()) << static_cast<int>(c.op);
    }
}

TEST(FsFaults, WriteAndUnlinkFaultsLeaveTheFileAlone) {
    test::TempRoot root;
    root.writeFile("/d/file", "");
    fs::UniqueFd fd(fs::open("/d/file", O_WRONLY));
    ASSERT_TRUE(fd.isValid());
    fs::testing::failNext(Op::Write, 1, ENOSPC);
    EXPECT_EQ(fs::write(fd.get(), "abc", 3), -1);
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_EQ(fs::write(fd.get(), "abc", 3), 3);
    EXPECT_EQ(root.readFile("/d/file"), "abc");

    fs::testing::failNext(Op::Unlink, 1, EBUSY);
    EXPECT_EQ(fs::unlink("/d/file"), -1);
    EXPECT_TRUE(root.exists("/d/file"));
    fs::testing::reset();
    fs::testing::failNext(Op::Unlink, 5, EBUSY);
    fs::testing::reset();
    EXPECT_EQ(fs::unlink("/d/file"), 0);
    EXPECT_FALSE(root.exists("/d/file"));
}

TEST(FsFaults, FaultsCanLetCallsThroughFirst) {
    test::TempRoot root;
    root.writeFile("/d/file", "");
    fs::UniqueFd fd(fs::open("/d/file", O_WRONLY));
    fs::testing::failNext(Op::Write, 1, EIO, 2);
    for (const char* byte : {"a", "b", "c", "d"}) fs::write(fd.get(), byte, 1);
    EXPECT_EQ(root.readFile("/d/file"), "abd");
}

TEST(FsFaults, ChosenFreeSpaceIsReportedUntilCleared) {
    test::TempRoot root;
    ASSERT_EQ(fs::makePath("/d", 0755), 0);
    for (uint64_t bytes :
         {uint64_t{0}, uint64_t{293601280}, uint64_t{293601281}, uint64_t{1} << 40}) {
        fs::testing::setFreeSpace(bytes);
        fs::SpaceInfo space;
        ASSERT_EQ(fs::statvfs("/d/", &space), 0);
        EXPECT_EQ(space.freeBytes, bytes);
        EXPECT_EQ(space.availableBytes, bytes);
    }
    fs::testing::clearFreeSpace();
    fs::SpaceInfo space;
    ASSERT_EQ(fs::statvfs("/d/", &space), 0);
    EXPECT_GT(space.blockSize, 1u);
    EXPECT_GE(space.freeBytes, space.availableBytes);
}

}  // namespace
}  // namespace camtune
