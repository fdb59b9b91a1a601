// Choosing the log folder, with its fallbacks.
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "recorder/scenario_recorder_impl.h"
#include "recorder_test_util.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

using camtune::log::Level;
using camtune::test::LogCapture;
namespace fst = camtune::fs::testing;

class FolderPathTest : public camtune::test::RecorderFixture {};

TEST_F(FolderPathTest, FallsBackInOrderWhenFoldersCannotBeMade) {
    struct Case {
        const char* configured;  // null: property unset
        int mkdirFailures;
        unsigned size;
        const char* chosen;
        int tooLong;  // "candidatePath size is too long" lines
    };
    const Case cases[] = {
            {nullptr, 0, 128, "/data/vendor/camera_dump", 0},
            {"/data/vendor/my_logs", 0, 128, "/data/vendor/my_logs", 0},
            {"/data/vendor/my_logs", 1, 128, "/data/vendor/camera_dump", 0},
            {nullptr, 2, 128, "/data/vendor/scenario_recorder_log", 0},
            {nullptr, 3, 128, "/data/scenario_recorder_log", 0},
            {nullptr, 4, 128, "/data/vendor", 0},
            // Candidates that do not fit the caller's buffer are passed over.
            {nullptr, 2, 26, "/data/vendor", 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.configured ? c.configured : "(unset)") + " failures " +
                     std::to_string(c.mkdirFailures));
        camtune::test::PropertyScope props;
        if (c.configured) props.set(camtune::props::kRecorderFolder, std::string(c.configured));
        LogCapture log;
        fst::failNext(fst::Op::Mkdir, c.mkdirFailures, EACCES);
        char out[128] = {};
        ScenarioRecorder::getFolderPath(out, c.size);
        EXPECT_EQ(std::string(out), c.chosen);
        EXPECT_TRUE(std::filesystem::is_directory(mRoot.hostPath(c.chosen)));
        std::string first = c.configured ? c.configured : "/data/vendor/camera_dump";
        EXPECT_EQ(log.count(Level::Error, "[getFolderPath] mkdir(" + first +
                                                  ") failed, errno = " + std::to_string(EACCES)),
                  c.mkdirFailures > 0 ? 1 : 0);
        EXPECT_EQ(log.count(Level::Error, "[getFolderPath] candidatePath size is too long"),
                  c.tooLong);
        bool viaCandidate = c.mkdirFailures > 0 && std::string(c.chosen) != "/data/vendor";
        EXPECT_EQ(log.count(Level::Verbose,
                            "[getFolderPath] mkdir(" + std::string(c.chosen) + ") OK"),
                  viaCandidate ? 1 : 0);
    }
}

TEST_F(FolderPathTest, NullOutputIsReported) {
    LogCapture log;
    ScenarioRecorder::getFolderPath(nullptr, 128);
    EXPECT_EQ(log.count(Level::Error, "[getFolderPath] folderPath is nullptr"), 1);
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
