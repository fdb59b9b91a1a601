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
    std::unique_ptr<FileWriter> openWriter(const char* prefix = "p_", bool quiet = false) {
        auto writer = std::make_unique<FileWriter>(1, 2, 3);
        writer->setFolder(kLogFolder);
        EXPECT_TRUE(writer->open(true, prefix, quiet));
        return writer;
    }
};

TEST_F(FileWriterTest, ConstructionSetsKeyAndSeries) {
    struct Case {
        int a, b;
        int64_t key;
    };
    const Case cases[] = {
            {0, 0, 0},
            {1, 2, 0x10002},
            {0x12345, 0x7fff, 0x123457fffLL},
            // The second number is sign-extended, so a negative one covers the upper bits.
            {5, -1, -1},
            {-1, 0, -0x10000},
    };
    for (const auto& c : cases) {
        FileWriter writer(c.a, c.b, 9);
        EXPECT_EQ(writer.key(), c.key) << c.a << "," << c.b;
        EXPECT_EQ(writer.seriesId()[0], c.a);
        EXPECT_EQ(writer.seriesId()[2], 9);
        EXPECT_EQ(writer.fd(), -1);
        EXPECT_EQ(writer.fileIndex(), 1);
    }
}

TEST_F(FileWriterTest, FirstFileNameCarriesPrefixTimeStampAndIndex) {
    LogCapture log;
    auto writer = openWriter("000012345_0001_0002_preview_");
    std::regex name(
            "/data/vendor/camera_dump/000012345_0001_0002_preview__[0-9]{4}_[0-9]{4}_[0-9]{6}"
            "_TuningLog_01\\.txt");
    EXPECT_TRUE(std::regex_match(writer->filePath(), name)) << writer->filePath();
    EXPECT_GE(writer->fd(), 0);
    EXPECT_EQ(writer->fileIndex(), 2);
    EXPECT_TRUE(mRoot.exists(writer->filePath()));
    EXPECT_EQ(log.count(Level::Info, "[open] Write log to " + writer->filePath()), 1);
}

TEST_F(FileWriterTest, QuietWriterLogsNothing) {
    LogCapture log;
    fst::failNext(camtune::fs::testing::Op::Open, 2, EACCES);
    FileWriter writer(1, 2, 3);
    writer.setFolder(kLogFolder);
    EXPECT_FALSE(writer.open(true, "p_", true));
    EXPECT_TRUE(writer.open(true, "p_", true));
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(FileWriterTest, PrefixIsCutTo29Characters) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGH";
    for (size_t length : {0u, 1u, 28u, 29u, 30u, 31u, 44u}) {
        FileWriter writer(1, 2, 3);
        writer.setFolder(kLogFolder);
        std::string prefix = letters.substr(0, length);
        ASSERT_TRUE(writer.open(true, prefix.c_str(), true));
        EXPECT_EQ(std::string(writer.namePrefix()), prefix.substr(0, 29)) << length;
    }
}

TEST_F(FileWriterTest, LinesAreStagedUntilFlush) {
    auto writer = openWriter();
    writer->onWriteLog("first");
    writer->onWriteLog("");
    writer->onWriteLog("third line");
    EXPECT_EQ(mRoot.readFile(writer->filePath()), "");
    EXPECT_EQ(writer->bufferedBytes(), 18u);
    writer->flush(true);
    EXPECT_EQ(mRoot.readFile(writer->filePath()), "first\n\nthird line\n");
    EXPECT_EQ(writer->bufferedBytes(), 0u);
    EXPECT_EQ(writer->fileBytes(), 18u);
}

TEST_F(FileWriterTest, BufferIsWrittenOnceTheFlushMarginIsReached) {
    // 100-byte lines: 234 of them leave 1,175 bytes, the margin is 1,124 plus the last byte.
    const std::string line(99, 'x');
    struct Case {
        int lines;
        size_t onDisk;
    };
    for (const Case& c : {Case{234, 0}, Case{235, 23500}, Case{236, 23500}, Case{470, 47000}}) {
        auto writer = openWriter();
        for (int i = 0; i < c.lines; ++i) writer->onWriteLog(line.c_str());
        EXPECT_EQ(mRoot.readFile(writer->filePath()).size(), c.onDisk) << c.lines;
        writer->close();
        EXPECT_EQ(mRoot.readFile(writer->filePath()).size(), c.lines * 100u);
    }
}

TEST_F(FileWriterTest, CloseFlushesAndForgetsTheDescriptor) {
    auto writer = openWriter();
    writer->onWriteLog("kept");
    writer->close();
    EXPECT_EQ(writer->fd(), -1);
    EXPECT_EQ(mRoot.readFile(writer->filePath()), "kept\n");
    writer->close();  // no file: nothing happens
    EXPECT_EQ(writer->fd(), -1);
}

TEST_F(FileWriterTest, FlushWithoutFileDiscardsLines) {
    FileWriter writer(1, 2, 3);
    writer.setFolder(kLogFolder);
    writer.onWriteLog("lost");
    writer.flush(false);
    EXPECT_EQ(writer.bufferedBytes(), 0u);
    ASSERT_TRUE(writer.open(true, "p_", true));
    writer.onWriteLog("kept");
    writer.close();
    EXPECT_EQ(mRoot.readFile(writer.filePath()), "kept\n");
}

TEST_F(FileWriterTest, FailedWriteStillEmptiesTheBuffer) {
    auto writer = openWriter();
    writer->onWriteLog("dropped");
    fst::failNext(camtune::fs::testing::Op::Write, 1, EIO);
    writer->flush(true);
    EXPECT_EQ(writer->bufferedBytes(), 0u);
    writer->onWriteLog("written");
    writer->close();
    EXPECT_EQ(mRoot.readFile(writer->filePath()), "written\n");
}

TEST_F(FileWriterTest, ExistingFileIsOverwrittenInPlaceWithoutTruncation) {
    auto writer = openWriter();
    writer->close();
    std::string second =
            std::regex_replace(writer->filePath(), std::regex("_01\\.txt$"), "_02.txt");
    mRoot.writeFile(second, "0123456789abcdef\n");
    ASSERT_TRUE(writer->open(false, nullptr, false));
    EXPECT_EQ(writer->filePath(), second);
    writer->onWriteLog("new");
    writer->close();
    EXPECT_EQ(mRoot.readFile(second), "new\n456789abcdef\n");
}

TEST_F(FileWriterTest, LineLongerThanTheBufferIsCutInsideIt) {
    auto writer = openWriter();
    writer->onWriteLog("head");
    const std::string huge(30000, 'z');
    writer->onWriteLog(huge.c_str());
    EXPECT_EQ(writer->bufferedBytes(), 0u);  // the cut line filled the buffer and went out
    EXPECT_EQ(writer->fileBytes(), 5u + 30001u);
    writer->onWriteLog("after");
    writer->close();
    std::string content = mRoot.readFile(writer->filePath());
    ASSERT_EQ(content.size(), 24575u + 6u);
    EXPECT_EQ(content.substr(0, 5), "head\n");
    EXPECT_EQ(content.substr(5, 24569), std::string(24569, 'z'));
    EXPECT_EQ(content.substr(24574), "\nafter\n");
}

TEST_F(FileWriterTest, UnwritableFolderFallsBackToDataVendorForTheSeries) {
    LogCapture log;
    fst::failNext(camtune::fs::testing::Op::Open, 1, EACCES);
    FileWriter writer(1, 2, 3);
    writer.setFolder(kLogFolder);
    ASSERT_TRUE(writer.open(true, "p_", false));
    std::string name = writer.filePath().substr(std::string("/data/vendor/").size());
    EXPECT_EQ(writer.filePath(), "/data/vendor/" + name);
    EXPECT_EQ(writer.folder(), "/data/vendor");
    EXPECT_TRUE(mRoot.exists(writer.filePath()));
    EXPECT_EQ(log.count(Level::Error,
                        "[open] File writer: file open failed /data/vendor/camera_dump/" + name),
              1);
    // Later files of the series stay in the fallback folder.
    writer.close();
    ASSERT_TRUE(writer.open(false, nullptr, false));
    EXPECT_EQ(writer.filePath(),
              "/data/vendor/" + std::regex_replace(name, std::regex("_01\\.txt$"), "_02.txt"));
}

TEST_F(FileWriterTest, BothOpensFailingLeavesNoFile) {
    LogCapture log;
    fst::failNext(camtune::fs::testing::Op::Open, 2, EACCES);
    FileWriter writer(1, 2, 3);
    writer.setFolder(kLogFolder);
    EXPECT_FALSE(writer.open(true, "p_", false));
    EXPECT_LT(writer.fd(), 0);
    EXPECT_EQ(writer.fileIndex(), 1);
    EXPECT_EQ(log.count(Level::Error,
                        "[open] Unable to open file. Please disable SELinux and restart "
                        "camerahalserver. !!!"),
              1);
    EXPECT_EQ(log.countContaining("File writer: file open failed"), 1);
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
