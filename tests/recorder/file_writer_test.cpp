#include "recorder/file_writer.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <regex>
#include <string>

#include "recorder_test_util.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

using camtune::log::Level;
using camtune::test::kLogFolder;
using camtune::test::LogCapture;
namespace fst = camtune::fs::testing;

class FileWriterTest : public camtune::test::RecorderFixture {
protected:
    std::unique_ptr<FileWriter> openWriter(const char* prefix = "p_") {
        auto writer = std::make_unique<FileWriter>(1, 2, 3);
        writer->setFolder(kLogFolder);
        EXPECT_TRUE(writer->open(true, prefix, true));
        return writer;
    }
};

TEST_F(FileWriterTest, FirstFileNameCarriesPrefixTimeStampAndIndex) {
    LogCapture log;
    FileWriter writer(12345, 1, 2);
    writer.setFolder(kLogFolder);
    ASSERT_TRUE(writer.open(true, "000012345_0001_0002_preview_", false));
    EXPECT_TRUE(std::regex_match(
            writer.filePath(),
            std::regex("/data/vendor/camera_dump/000012345_0001_0002_preview__[0-9]{4}_[0-9]{4}_"
                       "[0-9]{6}_TuningLog_01\\.txt")))
            << writer.filePath();
    EXPECT_EQ(writer.fileIndex(), 2);
    EXPECT_TRUE(mRoot.exists(writer.filePath()));
    EXPECT_EQ(log.count(Level::Info, "[open] Write log to " + writer.filePath()), 1);
}

TEST_F(FileWriterTest, PrefixIsCutTo29Characters) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGH";
    for (size_t length : {0u, 28u, 29u, 30u, 44u}) {
        std::string prefix = letters.substr(0, length);
        EXPECT_EQ(std::string(openWriter(prefix.c_str())->namePrefix()), prefix.substr(0, 29));
    }
}

TEST_F(FileWriterTest, BufferIsWrittenOnceTheFlushMarginIsReached) {
    // 100-byte lines: 234 of them leave 1,175 bytes free, more than the 1,124-byte margin.
    const std::string line(99, 'x');
    struct Case {
        int lines;
        size_t onDisk;
    };
    for (const Case& c : {Case{1, 0}, Case{234, 0}, Case{235, 23500}, Case{470, 47000}}) {
        // A prefix per case: files of one second would otherwise share a name.
        auto writer = openWriter(("m" + std::to_string(c.lines) + "_").c_str());
        for (int i = 0; i < c.lines; ++i) writer->onWriteLog(line.c_str());
        EXPECT_EQ(mRoot.readFile(writer->filePath()).size(), c.onDisk) << c.lines;
        writer->close();
        EXPECT_EQ(mRoot.readFile(writer->filePath()).size(), c.lines * 100u);
        EXPECT_EQ(writer->fileBytes(), c.lines * 100u);
    }
}

TEST_F(FileWriterTest, FlushWithoutFileDiscardsLines) {
    FileWriter writer(1, 2, 3);
    writer.setFolder(kLogFolder);
    writer.onWriteLog("lost");
    writer.flush(false);
    ASSERT_TRUE(writer.open(true, "p_", true));
    writer.onWriteLog("");
    writer.onWriteLog("kept");
    writer.close();
    EXPECT_EQ(writer.fd(), -1);
    EXPECT_EQ(mRoot.readFile(writer.filePath()), "\nkept\n");
}

TEST_F(FileWriterTest, ExistingFileIsOverwrittenInPlaceWithoutTruncation) {
    auto writer = openWriter();
    writer->close();
    std::string next = std::regex_replace(writer->filePath(), std::regex("_01\\.txt$"), "_02.txt");
    mRoot.writeFile(next, "0123456789abcdef\n");
    ASSERT_TRUE(writer->open(false, nullptr, false));
    EXPECT_EQ(writer->filePath(), next);
    writer->onWriteLog("new");
    writer->close();
    EXPECT_EQ(mRoot.readFile(next), "new\n456789abcdef\n");
}

TEST_F(FileWriterTest, LineLongerThanTheBufferIsCutInsideIt) {
    auto writer = openWriter();
    writer->onWriteLog("head");
    writer->onWriteLog(std::string(30000, 'z').c_str());
    EXPECT_EQ(writer->bufferedBytes(), 0u);  // the cut line filled the buffer and went out
    EXPECT_EQ(writer->fileBytes(), 5u + 30001u);
    writer->onWriteLog("after");
    writer->close();
    EXPECT_EQ(mRoot.readFile(writer->filePath()), "head\n" + std::string(24569, 'z') + "\nafter\n");
}

TEST_F(FileWriterTest, OpenFailuresFallBackToDataVendorForTheWholeSeries) {
    const std::string noFile =
            "[open] Unable to open file. Please disable SELinux and restart camerahalserver. !!!";
    struct Case {
        int failures;
        bool quiet;
        bool opened;
        int logLines;
    };
    for (const Case& c : {Case{1, false, true, 2}, Case{1, true, true, 0}, Case{2, false, false, 2},
                          Case{2, true, false, 0}}) {
        SCOPED_TRACE(std::to_string(c.failures) + (c.quiet ? " quiet" : ""));
        LogCapture log;
        fst::failNext(fst::Op::Open, c.failures, EACCES);
        FileWriter writer(1, 2, 3);
        writer.setFolder(kLogFolder);
        ASSERT_EQ(writer.open(true, "p_", c.quiet), c.opened);
        EXPECT_EQ(writer.folder(), "/data/vendor");
        EXPECT_EQ(log.lines().size(), static_cast<size_t>(c.logLines));
        if (!c.opened) {
            EXPECT_LT(writer.fd(), 0);
            EXPECT_EQ(log.count(Level::Error, noFile), c.quiet ? 0 : 1);
            continue;
        }
        std::string name = writer.filePath().substr(std::string("/data/vendor/").size());
        EXPECT_TRUE(mRoot.exists(writer.filePath()));
        EXPECT_EQ(log.count(Level::Error,
                            "[open] File writer: file open failed "
                            "/data/vendor/camera_dump/" +
                                    name),
                  c.quiet ? 0 : 1);
        // Later files of the series stay in the fallback folder.
        writer.close();
        ASSERT_TRUE(writer.open(false, nullptr, false));
        EXPECT_EQ(writer.filePath(),
                  "/data/vendor/" + std::regex_replace(name, std::regex("_01\\.txt$"), "_02.txt"));
    }
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
