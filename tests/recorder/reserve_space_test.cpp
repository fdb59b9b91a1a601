// Pruning the log folder when free space runs low.
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "recorder/file_writer.h"
#include "recorder_test_util.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

using camtune::log::Level;
using camtune::test::kLogFolder;
using camtune::test::LogCapture;
namespace fst = camtune::fs::testing;
using Strings = std::vector<std::string>;

constexpr uint64_t kFloor = 293601280;

class ReserveSpaceTest : public camtune::test::RecorderFixture {
protected:
    void SetUp() override {
        RecorderFixture::SetUp();
        // Oldest first by modification time, whatever the names say; 10 bytes each.
        place("d_newest.txt", 4000);
        place("a_oldest.txt", 1000);
        place("c_other.log", 3000);
        place("b_second.txt", 2000);
        std::filesystem::create_directory(mRoot.hostPath(std::string(kLogFolder) + "/z_dir"));
        std::filesystem::last_write_time(
                mRoot.hostPath(std::string(kLogFolder) + "/z_dir"),
                std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * 365 * 40));
        mWriter.setFolder(kLogFolder);
    }

    void place(const std::string& name, int64_t mtime) {
        std::string path = std::string(kLogFolder) + "/" + name;
        mRoot.writeFile(path, "0123456789");
        // Ages relative to the file's own time, so the order is fixed and no clock is involved.
        auto when = std::filesystem::last_write_time(mRoot.hostPath(path)) -
                    std::chrono::seconds(100000 - mtime);
        std::filesystem::last_write_time(mRoot.hostPath(path), when);
    }

    FileWriter mWriter{1, 2, 3};
};

TEST_F(ReserveSpaceTest, DeletesOldestFirstUntilFreeSpacePassesTheFloor) {
    struct Case {
        const char* name;
        uint64_t freeSpace;
        int unlinkFailures;
        Strings remaining;
    };
    const Case cases[] = {
            {"one byte above the floor",
             kFloor + 1,
             0,
             {"a_oldest.txt", "b_second.txt", "c_other.log", "d_newest.txt"}},
            {"exactly the floor", kFloor, 0, {"b_second.txt", "c_other.log", "d_newest.txt"}},
            {"one file short", kFloor - 10, 0, {"c_other.log", "d_newest.txt"}},
            {"failed unlink adds nothing",
             kFloor,
             1,
             {"a_oldest.txt", "c_other.log", "d_newest.txt"}},
            {"not enough in the folder", 0, 0, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        SetUp();
        fst::setFreeSpace(c.freeSpace);
        if (c.unlinkFailures > 0) fst::failNext(fst::Op::Unlink, c.unlinkFailures, EACCES);
        mWriter.reserveSpace(false);
        EXPECT_EQ(filesIn(kLogFolder), c.remaining);
        EXPECT_TRUE(
                std::filesystem::is_directory(mRoot.hostPath(std::string(kLogFolder) + "/z_dir")));
        for (const auto& name : filesIn(kLogFolder)) {
            std::filesystem::remove(mRoot.hostPath(std::string(kLogFolder) + "/" + name));
        }
    }
}

TEST_F(ReserveSpaceTest, DeletionsAreLoggedAtDebugDetailUnlessQuiet) {
    struct Case {
        bool quiet;
        Level threshold;
        bool logged;
    };
    for (const Case& c : {Case{false, Level::Debug, true}, Case{true, Level::Verbose, false},
                          Case{false, Level::Warn, false}}) {
        SetUp();
        LogCapture log;
        camtune::log::setThreshold(c.threshold);
        fst::setFreeSpace(kFloor - 10);
        mWriter.reserveSpace(c.quiet);
        EXPECT_EQ(filesIn(kLogFolder), (Strings{"c_other.log", "d_newest.txt"}));
        Strings expected;
        for (const char* name : {"a_oldest.txt", "b_second.txt"}) {
            if (c.logged)
                expected.push_back(std::string("[reserveSpace] Storage full. Unlinked: ") +
                                   kLogFolder + "/" + name);
        }
        Strings logged;
        for (const auto& line : log.lines()) {
            EXPECT_EQ(line.level, Level::Warn);
            logged.push_back(line.text);
        }
        EXPECT_EQ(logged, expected);
    }
}

TEST_F(ReserveSpaceTest, FailedQueriesDeleteNothing) {
    LogCapture log;
    fst::setFreeSpace(0);
    fst::failNext(fst::Op::Statvfs, 1, EIO);
    mWriter.reserveSpace(false);
    EXPECT_TRUE(log.lines().empty());

    fst::failNext(fst::Op::Opendir, 1, EACCES);
    mWriter.reserveSpace(false);
    EXPECT_EQ(log.count(Level::Error, "[reserveSpace] Open folder /data/vendor/camera_dump failed"),
              1);
    fst::failNext(fst::Op::Opendir, 1, EACCES);
    mWriter.reserveSpace(true);
    EXPECT_EQ(log.lines().size(), 1u);
    EXPECT_EQ(filesIn(kLogFolder).size(), 4u);
}

TEST_F(ReserveSpaceTest, OpeningAFilePrunesBeforeCreatingIt) {
    fst::setFreeSpace(kFloor);
    ASSERT_TRUE(mWriter.open(true, "p_", true));
    Strings left = filesIn(kLogFolder);
    ASSERT_EQ(left.size(), 4u);
    EXPECT_EQ(left[0], "b_second.txt");
    EXPECT_TRUE(mRoot.exists(mWriter.filePath()));
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
