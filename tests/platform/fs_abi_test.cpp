// A consumer built without _FILE_OFFSET_BITS, as a 32-bit vendor module may be: its off_t and
// struct stat are the 32-bit ones. It calls every fs function; the library, built with 64-bit
// file offsets, must write nothing past the structs it is given.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/types.h>

#include <cstring>
#include <memory>
#include <string>

#include "camtune/platform/fs.h"
#include "support/temp_root.h"

#if defined(_FILE_OFFSET_BITS)
#error "this test must be built without _FILE_OFFSET_BITS"
#endif
#if defined(__arm__)
static_assert(sizeof(off_t) == 4, "a 32-bit build without _FILE_OFFSET_BITS has a 32-bit off_t");
#endif

namespace camtune {
namespace {

constexpr unsigned char kGuard = 0xA5;
constexpr size_t kGuardBytes = 64;

// `T` with guard bytes on both sides, to see whether a call wrote outside it.
template <typename T>
struct Guarded {
    unsigned char before[kGuardBytes];
    T value;
    unsigned char after[kGuardBytes];

    Guarded() {
        std::memset(before, kGuard, sizeof(before));
        std::memset(after, kGuard, sizeof(after));
    }
    bool intact() const {
        for (size_t i = 0; i < kGuardBytes; ++i) {
            if (before[i] != kGuard || after[i] != kGuard) return false;
        }
        return true;
    }
};

TEST(FsAbi, EveryCallStaysInsideTheCallersStructs) {
    test::TempRoot root;
    ASSERT_EQ(fs::makePath("/d/sub", 0755), 0);
    ASSERT_EQ(fs::mkdir("/d/other", 0755), 0);

    const char text[] = "twelve bytes";
    {
        fs::UniqueFd fd(fs::open("/d/file", O_WRONLY | O_CREAT | O_TRUNC, 0644));
        ASSERT_TRUE(fd.isValid());
        EXPECT_EQ(fs::write(fd.get(), text, sizeof(text) - 1), 12);
        EXPECT_EQ(fs::fsync(fd.get()), 0);
    }
    Guarded<char[16]> buffer;
    {
        fs::UniqueFd fd(fs::open("/d/file", O_RDONLY));
        EXPECT_EQ(fs::read(fd.get(), buffer.value, 12), 12);
    }
    EXPECT_TRUE(buffer.intact());
    std::unique_ptr<FILE, fs::FileCloser> stream(fs::fopen("/d/file", "r"));
    EXPECT_NE(stream, nullptr);
    std::string line;
    std::getline(fs::openInput("/d/file"), line);
    EXPECT_EQ(line, text);

    Guarded<fs::FileInfo> file;
    ASSERT_EQ(fs::stat("/d/file", &file.value), 0);
    EXPECT_TRUE(file.intact());
    EXPECT_EQ(file.value.size, 12u);
    EXPECT_TRUE(file.value.isRegular());
    EXPECT_GT(file.value.modifiedSeconds, 0);

    Guarded<fs::SpaceInfo> space;
    ASSERT_EQ(fs::statvfs("/d", &space.value), 0);
    EXPECT_TRUE(space.intact());
    EXPECT_GT(space.value.blockSize, 0u);
    EXPECT_GE(space.value.freeBytes, space.value.availableBytes);

    std::unique_ptr<DIR, fs::DirCloser> dir(fs::opendir("/d"));
    ASSERT_NE(dir, nullptr);
    int entries = 0;
    while (fs::readdirName(dir.get()) != nullptr) ++entries;
    EXPECT_EQ(entries, 5);  // ".", "..", "sub", "other", "file"

    EXPECT_EQ(fs::rename("/d/file", "/d/moved"), 0);
    EXPECT_EQ(fs::unlink("/d/moved"), 0);
    EXPECT_NE(fs::stat("/d/moved", &file.value), 0);
    EXPECT_TRUE(file.intact());
}

}  // namespace
}  // namespace camtune
