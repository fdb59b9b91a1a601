// Rolling over to the next file of a series at the size limit. Writes the full 180 MiB once.
#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "recorder/file_writer.h"
#include "recorder_test_util.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

using camtune::log::Level;
using camtune::test::kLogFolder;

class FileWriterRolloverTest : public camtune::test::RecorderFixture {};

TEST_F(FileWriterRolloverTest, SeriesContinuesInTheNextFileWithTheSameTimeStamp) {
    FileWriter writer(12345, 1, 2);
    writer.setFolder(kLogFolder);
    ASSERT_TRUE(writer.open(true, "000012345_0001_0002_capture_", false));
    const std::string first = writer.filePath();

    // 1,024-byte lines: the limit is reached exactly, and passed by one more line.
    const std::string line(1023, 'r');
    const uint32_t linesAtLimit = 188743680u / 1024u;
    for (uint32_t i = 0; i < linesAtLimit; ++i) writer.onWriteLog(line.c_str());
    EXPECT_EQ(writer.filePath(), first);
    EXPECT_EQ(writer.fileBytes(), 188743680u);

    camtune::test::LogCapture log;
    writer.onWriteLog(line.c_str());
    const std::string second = writer.filePath();
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(first, parts, std::regex("(.*)_TuningLog_01\\.txt")));
    EXPECT_EQ(second, parts[1].str() + "_TuningLog_02.txt");
    EXPECT_EQ(writer.fileIndex(), 3);
    EXPECT_EQ(writer.fileBytes(), 0u);  // the marker is not counted
    EXPECT_EQ(log.count(Level::Info, "[open] Write log to " + second), 1);

    writer.onWriteLog("tail");
    writer.close();
    EXPECT_EQ(std::filesystem::file_size(mRoot.hostPath(first)), (linesAtLimit + 1) * 1024ull);
    EXPECT_EQ(mRoot.readFile(second), "-- CONTINUED --\ntail\n");
    std::filesystem::remove(mRoot.hostPath(first));
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
