#include "odt/odt_utils.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "camtune/naming_vocabulary.h"
#include "camtune/ndd_tables.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/properties.h"
#include "odt/odt_line_format.h"
#include "support/log_capture.h"
#include "support/property_scope.h"
#include "support/temp_root.h"

namespace NSCam {
namespace TuningUtils {
namespace {

namespace props = camtune::props;
using camtune::test::LogCapture;
using camtune::test::PropertyScope;
using camtune::test::TempRoot;

constexpr const char* kConfigPath = "/data/vendor/camera_dump/odt/replay.cfg";
constexpr const char* kDumpFolder = "/data/vendor/camera_dump";
constexpr const char* kDumpinPath = "/data/vendor/camera_dump/000005012-0000-0000_dumpin.cfg";

// Three frames of sensor "main" (the last with two items), one line of sensor "sub".
constexpr const char* kThreeFrames =
        "AAO,10,main,1,0;/d/000001234-0001-0010-main-AAO.bin\n"
        "AAO,11,main,1,0;/d/000001234-0002-0011-main-AAO.bin\n"
        "AAO,12,main,1,0;/d/000001234-0003-0012-main-AAO.bin\n"
        "LSC,12,main,1,0;/d/000001234-0003-0012-main-LSC.bin\n"
        "AAO,12,sub,1,0;/d/000001234-0003-0012-sub-AAO.bin\n"
        "AAO,10,main,1,0;/d/000001234-0001-0010-main-AAO-2.bin\n";  // replaces the first item

std::string readProperty(const props::Property& property) {
    char value[NSCam::Utils::Properties::kPropertyValueMax];
    props::getString(property, value);
    return value;
}

class OdtUtilsTest : public ::testing::Test {
protected:
    OdtUtilsTest() { mProps.set(props::kOdtStart, 0); }

    // Replay of `config` into a stream, `repeat` passes.
    void arrangeReplay(const std::string& config, int repeat, bool streaming = true) {
        mRoot.writeFile(kConfigPath, config);
        mProps.set(props::kOdtConfigPath, kConfigPath);
        mProps.set(props::kOdtEnable, 1);
        mProps.set(props::kOdtStreaming, streaming ? 1 : 0);
        mProps.set(props::kOdtStart, repeat);
    }

    void makeDumpFolder() { ASSERT_EQ(0, camtune::fs::makePath(kDumpFolder, 0777)); }

    TempRoot mRoot;
    PropertyScope mProps;
};

TEST_F(OdtUtilsTest, StreamOnReadsTheSwitchesAndTheSensorsLines) {
    arrangeReplay(kThreeFrames, 4, false);
    mProps.set(props::kOdtEnable, 0);
    mProps.set(props::kOdtSensorId, 2);
    OdtUtils odt(0);
    odt.stream_on();
    EXPECT_FALSE(odt.is_enable());
    EXPECT_TRUE(odt.configFrames().empty());  // disabled: not read

    mProps.set(props::kOdtEnable, 1);
    LogCapture log;
    odt.stream_on();
    EXPECT_TRUE(odt.is_enable());
    ASSERT_EQ(3u, odt.configFrames().size());
    EXPECT_EQ("/d/000001234-0001-0010-main-AAO-2.bin",
              odt.configFrames()[0].items.at("Preview,AFBLD_F0,AAO").file);
    EXPECT_EQ(1, log.count("[readProperty] sensor(2) : enable(1),straming(0),start_count(4)"));
    EXPECT_EQ(1, log.count("[parsingFile] cfg_frames.size(3), camera_count(2)"));
    EXPECT_EQ(1, log.count("[parsingFile] earse sensor_list[1]=sub"));
    EXPECT_EQ(1, log.count("[parsingFile] m_cfg_frames[2].items[Preview,AFBLD_F0,LSC]->module=LSC, "
                           "file=/d/000001234-0003-0012-main-LSC.bin"));

    OdtUtils sub(1);
    sub.stream_on();
    auto frames = sub.configFrames();
    ASSERT_EQ(1u, frames.size());
    EXPECT_EQ("/d/000001234-0003-0012-sub-AAO.bin",
              frames[0].items.at("Preview,AFBLD_F0,AAO").file);
}

TEST_F(OdtUtilsTest, UnreadableConfigurations) {
    arrangeReplay(kThreeFrames, 1);
    OdtUtils odt(0);
    odt.stream_on();
    // A number field without a number throws, names the line and keeps the configuration.
    mRoot.writeFile(kConfigPath, "AAO,10,main,1,0;/d/000000001-0001-0010\nAAO,1O,main,1,0;x\n");
    try {
        odt.parsingFile();
        ADD_FAILURE() << "no exception";
    } catch (const std::invalid_argument& e) {
        EXPECT_NE(std::string::npos, std::string(e.what()).find("line 2")) << e.what();
    }
    mRoot.writeFile(kConfigPath, "order: 1 99999999999\n");
    EXPECT_THROW(odt.stream_on(), std::out_of_range);
    EXPECT_EQ(3u, odt.configFrames().size());
    // A missing one leaves no frames.
    mProps.set(props::kOdtConfigPath, "/data/vendor/camera_dump/odt/missing.cfg");
    LogCapture log;
    odt.parsingFile();
    EXPECT_TRUE(odt.configFrames().empty());
    EXPECT_EQ(1, log.countContaining("missing.cfg"));
}

// Frames 100.. bind to the three configuration frames round-robin; each completed pass counts
// the repeat property down, and at 0 binding stops.
TEST_F(OdtUtilsTest, BindsFramesRoundRobinForTheRepeatCount) {
    arrangeReplay(kThreeFrames, 2);
    OdtUtils odt(0);
    odt.stream_on();
    LogCapture log;
    const char* repeatAfter[] = {"2", "2", "1", "1", "1", "0", "0"};
    for (uint32_t i = 0; i < 7; ++i) {
        odt.frame_begin(100 + i);
        EXPECT_EQ(repeatAfter[i], readProperty(props::kOdtStart)) << "frame " << 100 + i;
    }
    auto frames = odt.configFrames();
    EXPECT_EQ((std::vector<uint32_t>{100, 103}), frames[0].sw_frame_ids);
    EXPECT_EQ((std::vector<uint32_t>{101, 104}), frames[1].sw_frame_ids);
    EXPECT_EQ((std::vector<uint32_t>{102, 105}), frames[2].sw_frame_ids);
    EXPECT_EQ(1, log.count("[frame_begin] repeat count=1"));
    EXPECT_EQ(1, log.count("[frame_begin] repeat count=0"));
    EXPECT_EQ(1, log.count("[frame_begin] cfg_frames[1].sw_frame_ids add (104), size=(2)"));
    EXPECT_EQ(1, log.count("[frame_begin] m_start_count(0)"));

    const std::pair<uint32_t, int32_t> bound[] = {{100, 10}, {104, 11}, {105, 12}};
    for (const auto& [frameNo, frame] : bound) {
        qel_tuning_cfg_prefix prefix = odt.get_cfg_prefix(frameNo);
        EXPECT_EQ(OdtCfgPrefix_Found, prefix.status) << frameNo;
        EXPECT_EQ(1234, prefix.unique_key);
        EXPECT_EQ(frame - 9, prefix.request_no);
        EXPECT_EQ(frame, prefix.frame_no);
    }
    EXPECT_EQ(OdtCfgPrefix_NotFound, odt.get_cfg_prefix(106).status);
    EXPECT_EQ(OdtCfgPrefix_NotFound, odt.get_cfg_prefix(99).status);

    // A new repeat count restarts the replay at the first configuration frame.
    mProps.set(props::kOdtStart, 1);
    odt.frame_begin(200);
    EXPECT_EQ(10, odt.get_cfg_prefix(200).frame_no);
}

TEST_F(OdtUtilsTest, OrderLinesChooseTheBindingOrder) {
    arrangeReplay(std::string(kThreeFrames) + "order: 12 10\n", 1);
    OdtUtils odt(0);
    odt.stream_on();
    EXPECT_EQ((std::vector<uint32_t>{12, 10}), odt.frameOrder());
    for (uint32_t frameNo : {1u, 2u, 3u}) odt.frame_begin(frameNo);
    EXPECT_EQ(12, odt.get_cfg_prefix(1).frame_no);
    EXPECT_EQ(10, odt.get_cfg_prefix(2).frame_no);
    EXPECT_EQ(11, odt.get_cfg_prefix(3).frame_no);
}

TEST_F(OdtUtilsTest, BoundFramesKeepOnlyTheNewestIds) {
    arrangeReplay("AAO,1,main,0,0;000000009-0001-0001\n", 300);
    OdtUtils odt(0);
    odt.stream_on();
    for (uint32_t frameNo = 0; frameNo < 300; ++frameNo) odt.frame_begin(frameNo);
    auto ids = odt.configFrames()[0].sw_frame_ids;
    ASSERT_EQ(OdtUtils::kMaxBoundFrames, ids.size());
    EXPECT_EQ(44u, ids.front());
    EXPECT_EQ(299u, ids.back());
    EXPECT_EQ(OdtCfgPrefix_NotFound, odt.get_cfg_prefix(43).status);
    EXPECT_EQ(OdtCfgPrefix_Found, odt.get_cfg_prefix(44).status);
    EXPECT_EQ("0", readProperty(props::kOdtStart));
}

TEST_F(OdtUtilsTest, CfgPrefixStatuses) {
    struct Case {
        int enable, streaming;
        bool bind;
        uint32_t query;
        int32_t status, uniqueKey;
    };
    const Case cases[] = {
            {0, 1, false, 100, OdtCfgPrefix_Inactive, 0},  // off
            {1, 0, false, 100, OdtCfgPrefix_Inactive, 0},  // capture replay
            {1, 1, false, 100, OdtCfgPrefix_Inactive, 0},  // nothing bound
            {1, 1, true, 101, OdtCfgPrefix_NotFound, 0},
            {1, 1, true, 100, OdtCfgPrefix_Found, 1234},
    };
    for (const Case& c : cases) {
        arrangeReplay(kThreeFrames, 1, c.streaming);
        mProps.set(props::kOdtEnable, c.enable);
        OdtUtils odt(0);
        odt.stream_on();
        if (c.bind) odt.frame_begin(100);
        qel_tuning_cfg_prefix prefix = odt.get_cfg_prefix(c.query);
        EXPECT_EQ(c.status, prefix.status) << &c - cases;
        EXPECT_EQ(c.uniqueKey, prefix.unique_key) << &c - cases;
        EXPECT_EQ(c.uniqueKey ? 10 : 0, prefix.frame_no) << &c - cases;
    }
}

TEST_F(OdtUtilsTest, StreamOffEndsTheReplayButKeepsTheFrames) {
    arrangeReplay(kThreeFrames, 5);
    OdtUtils odt(0);
    odt.stream_on();
    odt.frame_begin(100);
    odt.stream_off();
    EXPECT_FALSE(odt.is_enable());
    EXPECT_EQ(3u, odt.configFrames().size());
    EXPECT_EQ(OdtCfgPrefix_Inactive, odt.get_cfg_prefix(100).status);
    odt.frame_begin(101);  // disabled: binds nothing
    EXPECT_EQ(1u, odt.configFrames()[0].sw_frame_ids.size());
    EXPECT_EQ(0u, odt.configFrames()[1].sw_frame_ids.size());
}

TEST_F(OdtUtilsTest, StreamingLookups) {
    arrangeReplay(kThreeFrames, 1);
    OdtUtils odt(0);
    odt.stream_on();
    for (uint32_t frameNo : {100u, 101u, 102u}) odt.frame_begin(frameNo);
    LogCapture log;
    EXPECT_EQ("/d/000001234-0003-0012-main-LSC.bin", odt.get_cfg_info(102, eModule_LSC, 1, 0, -1));
    EXPECT_EQ(1, log.count("[get_cfg_info] straming:key(Preview,AFBLD_F0,LSC) module(LSC) "
                           "file(/d/000001234-0003-0012-main-LSC.bin)"));
    EXPECT_EQ("/d/000001234-0003-0012-main-AAO.bin", odt.get_cfg_info(102, eModule_AAO, 999, 0, 0));
    EXPECT_EQ("", odt.get_cfg_info(101, eModule_LSC, 1, 0, -1));
    EXPECT_EQ(1,
              log.count("[get_cfg_info] straimg not found:key(Preview,AFBLD_F0,LSC) module(LSC)"));
    EXPECT_EQ("", odt.get_cfg_info(103, eModule_AAO, 1, 0, -1));
    EXPECT_EQ("", odt.get_cfg_info(102, eModule_AAO, 1, 0, 1));  // another sensor's item

    // The is_enable forms look an unnamed stage up as "P2_MS_F0_H".
    const int stage = NAMING_STAGE_P2_MS_F0_H;
    EXPECT_FALSE(odt.is_enable(102u, eModule_LSC, -1, 0, -1));
    mRoot.writeFile(kConfigPath, "LSC,12,main," + std::to_string(stage) +
                                         ",0;/d/000001234-0003-0012-main-LSC.bin\n");
    odt.parsingFile();
    mProps.set(props::kOdtStart, 1);
    odt.frame_begin(102);
    EXPECT_TRUE(odt.is_enable(102u, eModule_LSC, stage, 0, 0));
    EXPECT_TRUE(odt.is_enable(102u, eModule_LSC, -1, 0, -1));
    EXPECT_FALSE(odt.is_enable(102u, eModule_LSC, stage, 0, 3));
    EXPECT_FALSE(odt.is_enable(103u, eModule_LSC, stage, 0, -1));
}

TEST_F(OdtUtilsTest, CaptureLookups) {
    arrangeReplay(
            "AAO,10,main,1,22;/d/000000001-0001-0010-AAO\n"
            "LSC,10,main,5,22;/d/000000001-0001-0010-LSC\n",
            1, false);
    OdtUtils odt(0);
    odt.stream_on();
    LogCapture log;
    EXPECT_EQ("/d/000000001-0001-0010-AAO", odt.get_cfg_info(eModule_AAO, 1, 0u, 22, -1));
    EXPECT_EQ(1, log.count("[get_cfg_info] capture:key(Capture_default,AFBLD_F0,AAO) module(AAO) "
                           "file(/d/000000001-0001-0010-AAO)"));
    // An unnamed stage is looked up as "AFBLD_F4" (stage 5) in capture.
    EXPECT_EQ("/d/000000001-0001-0010-LSC", odt.get_cfg_info(eModule_LSC, -1, 0u, 22, -1));
    EXPECT_EQ("", odt.get_cfg_info(eModule_LSC, 1, 0u, 22, -1));
    EXPECT_EQ(1, log.count("[get_cfg_info] capture not found:key(Capture_default,AFBLD_F0,LSC) "
                           "module(LSC) index(0)"));
    EXPECT_EQ("", odt.get_cfg_info(eModule_AAO, 1, 1u, 22, -1));
    EXPECT_EQ(1, log.count("[get_cfg_info] capture not found:module(AAO) index(1)"));

    EXPECT_TRUE(odt.is_enable(eModule_AAO, 1, 0, 22));
    EXPECT_FALSE(odt.is_enable(eModule_AAO, 1, 1, 22));
    EXPECT_FALSE(odt.is_enable(eModule_AAO, 1, -1, 22));
    EXPECT_FALSE(odt.is_enable(eModule_AAO, 2, 0, 22));
}

TEST_F(OdtUtilsTest, DumpinFileAfterASequenceOfWrites) {
    makeDumpFolder();
    mRoot.writeFile(kDumpinPath, "stale\n");
    OdtUtils odt(0);
    odt.write_frame_data("AAO", 1, "main", 1, 0, "/d/000005012-0001-0001-main-AAO");
    EXPECT_EQ("stale\n", mRoot.readFile(kDumpinPath));  // no file created yet

    LogCapture log;
    odt.create_config_file(5012);
    EXPECT_EQ(kDumpinPath, odt.dumpinPath());
    odt.write_frame_data("AAO", 10, "main", 1, 0, "/d/000005012-0001-0010-main-AAO");
    odt.write_frame_data("LSC", 11, "sub", -1, 52, "000005012-0002-0011-sub-LSC_s0");
    odt.write_frame_order({3, 5, 7});
    odt.write_frame_end(11);
    odt.write_frame_order({});
    odt.write_info("replay of 2 frames");
    EXPECT_EQ(
            "AAO,10,main,1,0;/d/000005012-0001-0010-main-AAO\n"
            "LSC,11,sub,-1,52;000005012-0002-0011-sub-LSC_s0\n"
            "order: 3 5 7\n"
            "order:\n",
            mRoot.readFile(kDumpinPath));
    EXPECT_EQ("replay of 2 frames\n", mRoot.readFile(std::string(kDumpinPath) + "_log"));
    for (const char* line :
         {"[create_config_file] key(5012)", "[create_config_file] dump-in cfg = 5012",
          "[write_frame_data] AAO,10,main,1,0;/d/000005012-0001-0010-main-AAO",
          "[write_frame_order] order: 3 5 7", "[write_frame_order] order:",
          "[write_frame_end] frame(11)", "[write_info] replay of 2 frames"}) {
        EXPECT_EQ(1, log.count(line)) << line;
    }
    odt.create_config_file(5012);  // a new stream with the same key starts the file afresh
    EXPECT_EQ("", mRoot.readFile(kDumpinPath));
}

TEST_F(OdtUtilsTest, LinesThatWouldNotReadBackAreRefused) {
    makeDumpFolder();
    OdtUtils odt(0);
    odt.create_config_file(5012);
    LogCapture log;
    odt.write_frame_data("AAO", 1, "main", 0, 0, "no-key-here");
    odt.write_frame_data("A,O", 1, "main", 0, 0, "000000001-0001-0001");
    odt.write_frame_data("AAO", 1, "ma,in", 0, 0, "000000001-0001-0001");
    odt.write_frame_data("AAO", 1, "main", 0, 0, "000000001-0001-0001 ");
    odt.write_frame_data("AAO", 1, "main", 0, 0, "000000001-0001-0001\nAAO");
    EXPECT_EQ("", mRoot.readFile(kDumpinPath));
    EXPECT_EQ(5, log.countContaining("[write_frame_data] not written"));
}

TEST_F(OdtUtilsTest, FailedCreateMakesWritesNoOps) {
    LogCapture log;
    OdtUtils odt(0);
    odt.create_config_file(5012);  // the dump folder does not exist
    EXPECT_EQ(1,
              log.count(camtune::log::Level::Error, "[create_config_file] fopen fail, errno(2):" +
                                                            std::string(std::strerror(ENOENT))));
    EXPECT_EQ("", odt.dumpinPath());

    makeDumpFolder();
    odt.create_config_file(5012);
    camtune::fs::testing::failNext(camtune::fs::testing::Op::Fopen, 1, EACCES);
    odt.create_config_file(5012);
    EXPECT_EQ("", odt.dumpinPath());
    odt.write_frame_data("AAO", 1, "main", 0, 0, "000000001-0001-0001");
    odt.write_frame_order({1});
    odt.write_info("x");
    EXPECT_EQ("", mRoot.readFile(kDumpinPath));
    EXPECT_EQ(2, log.countContaining("fopen fail"));  // the writes did not even try
}

// Every line the writer produces is read back into the same frame, module and file.
TEST_F(OdtUtilsTest, WrittenLinesParseBackIntoTheSameItems) {
    struct Line {
        const char* module;
        uint32_t frameNo;
        uint32_t sensor;
        int stage;
        int feature;
        const char* file;
        int32_t requestNo;
    };
    const Line lines[] = {
            {"AAO", 10, 0, 1, 0, "/d/000005012-0001-0010-main-AAO", 1},
            {"LSC", 10, 0, 17, 0, "/d/000005012-0001-0010-main-LSC", 1},
            {"AAO", 11, 0, -1, 53, "/d/000005012-0002-0011-main-AAO", 2},
            {"CAC", 12, 1, 2, 3, "/d/000005012-0003-0012-sub-CAC", 3},
            {"stereo_tuning", 13, 0, 190, 52, "/x-y/000005012-0004-0013-tuning", 4},
    };
    makeDumpFolder();
    OdtUtils writer(0);
    writer.create_config_file(5012);
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    for (const Line& l : lines) {
        writer.write_frame_data(l.module, l.frameNo, tables->getSensorIdName(l.sensor), l.stage,
                                l.feature, l.file);
    }
    writer.write_frame_order({13, 10});

    mProps.set(props::kOdtConfigPath, kDumpinPath);
    for (uint32_t sensor : {0u, 1u}) {
        OdtUtils reader(sensor);
        reader.parsingFile();
        EXPECT_EQ((std::vector<uint32_t>{13, 10}), reader.frameOrder());
        size_t items = 0, expected = 0;
        for (const auto& frame : reader.configFrames()) {
            items += frame.items.size();
            EXPECT_EQ(5012, frame.unique_key);
            for (const Line& l : lines) {
                if (l.sensor != sensor || l.requestNo != frame.request_no) continue;
                ++expected;
                EXPECT_EQ(int32_t(l.frameNo), frame.frame_no);
                std::string key =
                        odt::itemKey(l.module, l.stage, l.feature, odt::streamingStageFallback());
                ASSERT_EQ(1u, frame.items.count(key)) << key;
                EXPECT_EQ(l.module, frame.items.at(key).module);
                EXPECT_EQ(l.file, frame.items.at(key).file);
            }
        }
        EXPECT_EQ(sensor == 0 ? 4u : 1u, expected);
        EXPECT_EQ(expected, items);
    }
}

TEST_F(OdtUtilsTest, InstancesPerSensorFromManyThreads) {
    constexpr int kThreads = 8;
    std::vector<std::shared_ptr<IOdtUtils>> seen(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&seen, i] { seen[i] = IOdtUtils::getInstance(100 + i % 2); });
    }
    for (std::thread& t : threads) t.join();
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(seen[i % 2], seen[i]);
        EXPECT_EQ(IOdtUtils::getInstance(100 + i % 2), seen[i]);
    }
    EXPECT_NE(seen[0], seen[1]);
}

// Frame binding, lookups and writes from several threads: every frame is bound exactly once and
// every written line arrives whole.
TEST_F(OdtUtilsTest, ConcurrentBindingLookupsAndWrites) {
    arrangeReplay(kThreeFrames, 1000);
    makeDumpFolder();
    OdtUtils odt(0);
    odt.stream_on();
    odt.create_config_file(5012);
    constexpr int kThreads = 4;
    constexpr int kFrames = 50;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&odt, t] {
            for (int i = 0; i < kFrames; ++i) {
                uint32_t frameNo = static_cast<uint32_t>(t * kFrames + i);
                odt.frame_begin(frameNo);
                EXPECT_EQ(OdtCfgPrefix_Found, odt.get_cfg_prefix(frameNo).status);
                odt.get_cfg_info(frameNo, eModule_AAO, 1, 0, -1);
                odt.write_frame_data("AAO", frameNo, "main", 1, 0, "000005012-0001-0001");
                odt.frame_end(frameNo);
            }
        });
    }
    for (std::thread& t : threads) t.join();
    size_t bound = 0;
    for (const auto& frame : odt.configFrames()) bound += frame.sw_frame_ids.size();
    EXPECT_EQ(static_cast<size_t>(kThreads * kFrames), bound);
    std::istringstream file(mRoot.readFile(kDumpinPath));
    std::string line;
    int lines = 0;
    while (std::getline(file, line)) {
        EXPECT_NO_THROW(odt::parseDataLine(line)) << line;
        ++lines;
    }
    EXPECT_EQ(kThreads * kFrames, lines);
}

}  // namespace
}  // namespace TuningUtils
}  // namespace NSCam
