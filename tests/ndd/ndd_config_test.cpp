// Settings, the configuration file and the dump folder.
#include <gtest/gtest.h>

#include <filesystem>

#include "camtune/platform/fs.h"
#include "camtune/platform/properties.h"
#include "camtune/platform/testing.h"
#include "ndd/config_table.h"
#include "ndd_fixture.h"

namespace NSCam {
namespace TuningUtils {
namespace testing_ndd {
namespace {

TEST(ConfigLineTest, NeedsSevenFieldsAndTwoNumbers) {
    struct Case {
        const char* line;
        ConfigLineStatus status;
    } cases[] = {
            {"Preview,Default,[Prefix],Streaming,AAO,1,0", ConfigLineStatus::Ok},
            {"Preview,Default,[Prefix],Streaming,AAO,1,0,", ConfigLineStatus::Ok},
            {"Preview,Default,,Streaming,AAO,1,0", ConfigLineStatus::Ok},
            {"Preview,Default,[Prefix],Streaming,AAO,1", ConfigLineStatus::WrongFieldCount},
            {"Preview,Default,[Prefix],Streaming,AAO,1,0,x", ConfigLineStatus::WrongFieldCount},
            {"", ConfigLineStatus::WrongFieldCount},
            {"Preview,Default,[Prefix],Streaming,AAO,yes,0", ConfigLineStatus::BadNumber},
            {"Preview,Default,[Prefix],Streaming,AAO,1,", ConfigLineStatus::WrongFieldCount},
            {"Preview,Default,[Prefix],Streaming,AAO,1,99999999999", ConfigLineStatus::BadNumber},
    };
    for (const Case& c : cases) {
        configInfo info;
        EXPECT_EQ(parseConfigLine(c.line, &info), c.status) << c.line;
    }
    configInfo info;
    ASSERT_EQ(parseConfigLine("Video,AFBLD_F0,[Prefix]x,Capture,LSC,2,3", &info),
              ConfigLineStatus::Ok);
    EXPECT_EQ(info.feature, "Video");
    EXPECT_EQ(info.stage, "AFBLD_F0");
    EXPECT_EQ(info.format, "[Prefix]x");
    EXPECT_EQ(info.category, "Capture");
    EXPECT_EQ(info.module, "LSC");
    EXPECT_EQ(info.enable, 2);
    EXPECT_EQ(info.dumpin, 3);
}

TEST(ConfigTableTest, FindsByTheFourNamesAndLaterLinesWin) {
    ConfigTable table;
    configInfo first;
    ASSERT_EQ(parseConfigLine("Preview,Default,one,Streaming,AAO,1,0", &first),
              ConfigLineStatus::Ok);
    configInfo second;
    ASSERT_EQ(parseConfigLine("Preview,Default,two,Streaming,AAO,0,1", &second),
              ConfigLineStatus::Ok);
    table.put(first);
    table.put(second);
    EXPECT_EQ(table.size(), 1u);
    const configInfo* found = table.find("Preview", "Default", "Streaming", "AAO");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->format, "two");
    EXPECT_EQ(found->enable, 0);
    EXPECT_EQ(found->dumpin, 1);
    EXPECT_EQ(table.find("Preview", "Default", "Capture", "AAO"), nullptr);
    // Names are joined with commas, so shifting a comma between names finds nothing.
    EXPECT_EQ(table.find("Preview,Default", "", "Streaming", "AAO"), nullptr);
    table.clear();
    EXPECT_EQ(table.find("Preview", "Default", "Streaming", "AAO"), nullptr);
}

class NddConfigTest : public NddTest {};

TEST_F(NddConfigTest, ParsingStopsAtAMalformedLineAndKeepsEarlierOnes) {
    LogCapture log;
    start("Preview,Default,[Prefix],Streaming,AAO,1,0\n"
          "Preview,Default,[Prefix],Streaming,AAHO,1,0\n"
          "Preview,Default,[Prefix],Streaming,AFO,1\n"
          "Preview,Default,[Prefix],Streaming,LSC,1,0\n");
    EXPECT_EQ(mNdd->configEntryCount(), 2u);
    EXPECT_TRUE(mNdd->is_enable_dump(item(), eCategory_Streaming, eModule_AAHO));
    EXPECT_FALSE(mNdd->is_enable_dump(item(), eCategory_Streaming, eModule_LSC));
    EXPECT_EQ(log.count(camtune::log::Level::Error,
                        "Config File Error: Preview,Default,[Prefix],Streaming,AFO,1"),
              1);
}

TEST_F(NddConfigTest, DebuggingListsEveryEntry) {
    mProps.set(props::kNddDebugging, 1);
    LogCapture log;
    start("Preview,Default,[Prefix],Streaming,AAO,1,0\n"
          "Preview,Default,[Prefix][SensorId],Streaming,AAO,3,1\n");
    EXPECT_TRUE(
            log.contains("(Rule, Format, Enable, DumpIn): (Preview,Default,Streaming,AAO, "
                         "[Prefix][SensorId], 3, 1)"));
    EXPECT_EQ(log.countContaining("(Rule, Format, Enable, DumpIn)"), 1);
}

TEST_F(NddConfigTest, AMissingOrUnreadableConfigurationEnablesNothing) {
    const char* paths[] = {"/data/vendor/camera_dump/none.cfg", "/data/vendor/camera_dump"};
    for (const char* path : paths) {
        LogCapture log;
        mProps.set(props::kNddConfigPath, std::string(path));
        mNdd->init();
        mNdd->stream_on({0}, 1);
        EXPECT_EQ(mNdd->configEntryCount(), 0u) << path;
        EXPECT_EQ(log.count(camtune::log::Level::Error, std::string("File doesn't exist: ") + path),
                  1);
        mNdd->stream_off({0});
    }
}

TEST_F(NddConfigTest, StreamOnNamesTheFolderAndWritesTheSensorList) {
    struct Case {
        int subdir;
        unsigned int uniqueKey;
        std::vector<int> sensors;
        const char* folder;
        const char* sensorList;
    } cases[] = {
            {0, 1234, {0}, "/data/vendor/camera_dump/default_dump", "0"},
            {1, 1234, {0, 1}, "/data/vendor/camera_dump/UKey000001234", "0,1"},
            {1, 7, {2, 0, 11}, "/data/vendor/camera_dump/UKey000000007", "2,0,11"},
            {1, 4000000000u, {}, "/data/vendor/camera_dump/UKey4000000000", ""},
    };
    mRoot.writeFile(kConfigPath, "");
    mNdd->init();
    for (const Case& c : cases) {
        mProps.set(props::kNddSubdir, c.subdir);
        mProps.set(props::kNddSensorList, std::string("stale"));
        mNdd->stream_on(c.sensors, c.uniqueKey);
        EXPECT_EQ(mNdd->dumpFolder(), c.folder);
        EXPECT_EQ(propertyText(props::kNddSensorList), c.sensorList);
        mNdd->stream_off(c.sensors);
    }
}

TEST_F(NddConfigTest, DisabledNddIgnoresStreamsAndRefusesEverything) {
    for (const char* threads : {"0", "", "abc", "-2"}) {
        auto owner = std::make_unique<Ndd>();
        Ndd& ndd = *owner;
        mProps.set(props::kNddThreadCount, std::string(threads));
        mRoot.writeFile(kConfigPath, "Preview,Default,[Prefix],Capture,AAO,1,0\n");
        LogCapture log;
        ndd.init();
        ndd.stream_on({0}, 1);
        EXPECT_EQ(ndd.is_enable_ndd(), 0) << threads;
        EXPECT_EQ(ndd.configEntryCount(), 0u);
        EXPECT_EQ(propertyText(props::kNddSensorList), "");
        const char data[4] = {};
        NddData record = item();
        ndd.submit_request(eCategory_Capture, eModule_AAO, record, data, 4, __FILE__, __LINE__);
        ndd.uninit();
        EXPECT_FALSE(mRoot.exists(kDefaultFolder));
        const bool number = std::string(threads) == "0" || std::string(threads).empty();
        EXPECT_EQ(log.contains("NDD is initialized as disabled since vendor.debug.ndd.thdnum is "
                               "set to 0"),
                  number)
                << threads;
        EXPECT_EQ(log.countContaining("is not a thread count"), number ? 0 : 1) << threads;
    }
}

TEST_F(NddConfigTest, ThreadCountIsCappedAndInitTwiceStartsOnce) {
    mProps.set(props::kNddThreadCount, std::string("500"));
    LogCapture log;
    mNdd->init();
    mNdd->init();
    EXPECT_EQ(mNdd->is_enable_ndd(), Ndd::kMaxThreads);
    EXPECT_EQ(log.count("NDD is enabled with thread_num (16)"), 1);
    EXPECT_EQ(log.count("vendor.debug.ndd.thdnum (500) is more than 16; 16 writer threads are "
                        "started"),
              1);
    mNdd->uninit();
    EXPECT_EQ(mNdd->is_enable_ndd(), 0);
    EXPECT_TRUE(log.contains("Remaining size after joining all thread: 0"));
    // And it starts again after a stop.
    mProps.set(props::kNddThreadCount, std::string("3"));
    mNdd->init();
    EXPECT_EQ(mNdd->is_enable_ndd(), 3);
}

TEST_F(NddConfigTest, StreamOffForgetsConfigurationAndSensors) {
    start("Preview,Default,[Prefix],Capture,AAO,1,0\n", {0, 1});
    EXPECT_TRUE(mNdd->is_ndd_data_valid(eCategory_Capture, eModule_AAO, item()));
    mNdd->stream_off({1});
    EXPECT_EQ(mNdd->configEntryCount(), 0u);
    EXPECT_FALSE(mNdd->is_ndd_data_valid(eCategory_Capture, eModule_AAO, item()));
    EXPECT_EQ(mNdd->dumpFolder(), kDefaultFolder);
}

TEST_F(NddConfigTest, MakeDirCreatesTheFolderOnceAndCopiesTheConfiguration) {
    struct Case {
        const char* configPath;  // as the property names it
        const char* copyName;
        bool nameWarning;
    } cases[] = {
            {kConfigPath, "ndd.cfg", false},
            {"ndd.cfg", "default_cfg.cfg", true},
    };
    const std::string config = "Preview,Default,[Prefix],Capture,AAO,1,0\n";
    for (const Case& c : cases) {
        mRoot.writeFile(kConfigPath, config);
        mRoot.writeFile("/ndd.cfg", config);  // relative paths are taken from "/"
        mProps.set(props::kNddConfigPath, std::string(c.configPath));
        auto owner = std::make_unique<Ndd>();
        Ndd& ndd = *owner;
        ndd.init();
        ndd.stream_on({0}, 1);
        LogCapture log;
        ndd.make_ndd_dir();
        ndd.make_ndd_dir();
        EXPECT_EQ(mRoot.readFile(std::string(kDefaultFolder) + "/" + c.copyName), config);
        EXPECT_EQ(log.count(std::string("Create directory ") + kDefaultFolder +
                            " and copy config file from " + c.configPath),
                  1);
        EXPECT_EQ(log.count(std::string("cfg_file format might be wrong: ") + c.configPath +
                            ", use default name"),
                  c.nameWarning ? 1 : 0);
        ndd.uninit();
        std::filesystem::remove_all(mRoot.hostPath(kDefaultFolder));
    }
}

TEST_F(NddConfigTest, AFolderThatCannotBeMadeIsMadeAtTheNextDump) {
    start("");
    LogCapture log;
    camtune::fs::testing::failNext(camtune::fs::testing::Op::Mkdir, 1, EACCES);
    mNdd->make_ndd_dir();
    EXPECT_EQ(log.count(camtune::log::Level::Error, std::string("Fail to create directory ") +
                                                            kDefaultFolder +
                                                            " : 13[Permission denied]"),
              1);
    EXPECT_FALSE(mRoot.exists(kDefaultFolder));
    mNdd->make_ndd_dir();  // the fault is gone
    EXPECT_TRUE(mRoot.exists(kDefaultFolder));
}

}  // namespace
}  // namespace testing_ndd
}  // namespace TuningUtils
}  // namespace NSCam
