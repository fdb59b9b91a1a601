#include "odt/odt_utils.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <tuple>

#include "camtune/platform/fs.h"
#include "camtune/platform/properties.h"
#include "camtune/platform/testing.h"
#include "odt/odt_line_format.h"
#include "support/log_capture.h"
#include "support/property_scope.h"
#include "support/temp_root.h"

namespace NSCam {
namespace TuningUtils {
namespace {

namespace props = camtune::props;
using camtune::test::LogCapture;

constexpr const char* kConfigPath = "/data/vendor/camera_dump/odt/replay.cfg";
constexpr const char* kDumpinPath = "/data/vendor/camera_dump/000005012-0000-0000_dumpin.cfg";

// Three frames of sensor "main" (the last with three items, one under stage 46 "P2_MS_F0_H"), one
// line of sensor "sub".
constexpr const char* kThreeFrames =
        "AAO,10,main,1,0;/d/000001234-0001-0010-main-AAO.bin\n"
        "AAO,11,main,1,0;/d/000001234-0002-0011-main-AAO.bin\n"
        "AAO,12,main,1,0;/d/000001234-0003-0012-main-AAO.bin\n"
        "LSC,12,main,1,0;/d/000001234-0003-0012-main-LSC.bin\n"
        "LTM_OUT,12,main,46,0;/d/000001234-0003-0012-main-LTM_OUT.bin\n"
        "AAO,12,sub,1,0;/d/000001234-0003-0012-sub-AAO.bin\n"
        "AAO,10,main,1,0;/d/000001234-0001-0010-main-AAO-2.bin\n";  // replaces the first item

std::string repeatProperty() {
    char value[NSCam::Utils::Properties::kPropertyValueMax];
    props::getString(props::kOdtStart, value);
    return value;
}

class OdtUtilsTest : public ::testing::Test {
protected:
    OdtUtilsTest() { mProps.set(props::kOdtStart, 0); }

    // Sets up a replay of `config`, `repeat` passes, and streams sensor 0 on.
    std::unique_ptr<OdtUtils> replay(const std::string& config, int repeat, bool streaming = true,
                                     bool enable = true) {
        mRoot.writeFile(kConfigPath, config);
        mProps.set(props::kOdtConfigPath, kConfigPath);
        mProps.set(props::kOdtEnable, enable ? 1 : 0);
        mProps.set(props::kOdtStreaming, streaming ? 1 : 0);
        mProps.set(props::kOdtStart, repeat);
        auto odt = std::make_unique<OdtUtils>(0);
        odt->stream_on();
        return odt;
    }

    void makeDumpFolder() { ASSERT_EQ(0, camtune::fs::makePath("/data/vendor/camera_dump", 0777)); }

    camtune::test::TempRoot mRoot;
    camtune::test::PropertyScope mProps;
};

TEST_F(OdtUtilsTest, StreamOnReadsTheSwitchesAndTheSensorsLines) {
    mProps.set(props::kOdtSensorId, 2);
    auto odt = replay(kThreeFrames, 4, false, false);
    EXPECT_FALSE(odt->is_enable());
    EXPECT_TRUE(odt->configFrames().empty());  // disabled: not read

    mProps.set(props::kOdtEnable, 1);
    LogCapture log;
    odt->stream_on();
    EXPECT_TRUE(odt->is_enable());
    ASSERT_EQ(3u, odt->configFrames().size());
    EXPECT_EQ("/d/000001234-0001-0010-main-AAO-2.bin",
              odt->configFrames()[0].items.at("Preview,AFBLD_F0,AAO").file);
    EXPECT_EQ(1, log.count("[readProperty] sensor(2) : enable(1),straming(0),start_count(4)"));
    EXPECT_EQ(1, log.count("[parsingFile] cfg_frames.size(3), camera_count(2)"));

    OdtUtils sub(1);
    sub.stream_on();
    ASSERT_EQ(1u, sub.configFrames().size());
    EXPECT_EQ("/d/000001234-0003-0012-sub-AAO.bin",
              sub.configFrames()[0].items.at("Preview,AFBLD_F0,AAO").file);
}

TEST_F(OdtUtilsTest, UnreadableConfigurations) {
    auto odt = replay(kThreeFrames, 1);
    // A number field without a number throws, names the line and keeps the configuration.
    mRoot.writeFile(kConfigPath, "AAO,10,main,1,0;/d/000000001-0001-0010\nAAO,1O,main,1,0;x\n");
    try {
        odt->parsingFile();
        ADD_FAILURE() << "no exception";
    } catch (const std::invalid_argument& e) {
        EXPECT_NE(std::string::npos, std::string(e.what()).find("line 2")) << e.what();
    }
    mRoot.writeFile(kConfigPath, "order: 1 99999999999\n");
    EXPECT_THROW(odt->stream_on(), std::out_of_range);
    EXPECT_EQ(3u, odt->configFrames().size());
    // A missing one leaves no frames.
    mProps.set(props::kOdtConfigPath, "/data/vendor/camera_dump/odt/missing.cfg");
    LogCapture log;
    odt->parsingFile();
    EXPECT_TRUE(odt->configFrames().empty());
    EXPECT_EQ(1, log.countContaining("missing.cfg"));
}

// Frames 100.. bind to the three configuration frames round-robin; each completed pass counts
// the repeat property down, and at 0 binding stops until a new count is set.
TEST_F(OdtUtilsTest, BindsFramesRoundRobinForTheRepeatCount) {
    auto odt = replay(kThreeFrames, 2);
    LogCapture log;
    const char* repeatAfter[] = {"2", "2", "1", "1", "1", "0", "0"};
    for (uint32_t i = 0; i < 7; ++i) {
        odt->frame_begin(100 + i);
        EXPECT_EQ(repeatAfter[i], repeatProperty()) << "frame " << 100 + i;
    }
    auto frames = odt->configFrames();
    EXPECT_EQ((std::vector<uint32_t>{100, 103}), frames[0].sw_frame_ids);
    EXPECT_EQ((std::vector<uint32_t>{101, 104}), frames[1].sw_frame_ids);
    EXPECT_EQ((std::vector<uint32_t>{102, 105}), frames[2].sw_frame_ids);
    EXPECT_EQ(1, log.count("[frame_begin] repeat count=0"));

    EXPECT_EQ(11, odt->get_cfg_prefix(104).frame_no);
    EXPECT_EQ(3, odt->get_cfg_prefix(105).request_no);
    // A new repeat count restarts the replay at the first configuration frame.
    mProps.set(props::kOdtStart, 1);
    odt->frame_begin(200);
    EXPECT_EQ(10, odt->get_cfg_prefix(200).frame_no);
    // Stopping ends the replay but keeps the frames.
    odt->stream_off();
    EXPECT_FALSE(odt->is_enable());
    EXPECT_EQ(OdtCfgPrefix_Inactive, odt->get_cfg_prefix(200).status);
    odt->frame_begin(201);
    ASSERT_EQ(3u, odt->configFrames().size());
    EXPECT_EQ((std::vector<uint32_t>{100, 103, 200}), odt->configFrames()[0].sw_frame_ids);
}

TEST_F(OdtUtilsTest, BoundFramesKeepOnlyTheNewestIds) {
    auto odt = replay("AAO,1,main,0,0;000000009-0001-0001\n", 300);
    for (uint32_t frameNo = 0; frameNo < 300; ++frameNo) odt->frame_begin(frameNo);
    auto ids = odt->configFrames()[0].sw_frame_ids;
    ASSERT_EQ(OdtUtils::kMaxBoundFrames, ids.size());
    EXPECT_EQ(44u, ids.front());
    EXPECT_EQ(299u, ids.back());
    EXPECT_EQ(OdtCfgPrefix_NotFound, odt->get_cfg_prefix(43).status);
    EXPECT_EQ(OdtCfgPrefix_Found, odt->get_cfg_prefix(44).status);
}

TEST_F(OdtUtilsTest, CfgPrefixStatuses) {
    struct Case {
        bool enable, streaming, bind;
        uint32_t query;
        int32_t status, uniqueKey;
    };
    const Case cases[] = {
            {false, true, false, 100, OdtCfgPrefix_Inactive, 0},  // off
            {true, false, false, 100, OdtCfgPrefix_Inactive, 0},  // capture replay
            {true, true, false, 100, OdtCfgPrefix_Inactive, 0},   // nothing bound
            {true, true, true, 101, OdtCfgPrefix_NotFound, 0},
            {true, true, true, 100, OdtCfgPrefix_Found, 1234},
    };
    for (const Case& c : cases) {
        auto odt = replay(kThreeFrames, 1, c.streaming, c.enable);
        if (c.bind) odt->frame_begin(100);
        qel_tuning_cfg_prefix prefix = odt->get_cfg_prefix(c.query);
        EXPECT_EQ(c.status, prefix.status) << &c - cases;
        EXPECT_EQ(c.uniqueKey, prefix.unique_key) << &c - cases;
        EXPECT_EQ(c.uniqueKey ? 10 : 0, prefix.frame_no) << &c - cases;
    }
}

TEST_F(OdtUtilsTest, StreamingLookups) {
    auto odt = replay(kThreeFrames, 1);
    for (uint32_t frameNo : {100u, 101u, 102u}) odt->frame_begin(frameNo);
    LogCapture log;
    EXPECT_EQ("/d/000001234-0003-0012-main-LSC.bin", odt->get_cfg_info(102, eModule_LSC, 1, 0, -1));
    EXPECT_EQ(1, log.count("[get_cfg_info] straming:key(Preview,AFBLD_F0,LSC) module(LSC) "
                           "file(/d/000001234-0003-0012-main-LSC.bin)"));
    // An unnamed stage is looked up as "AFBLD_F0".
    EXPECT_EQ("/d/000001234-0003-0012-main-AAO.bin",
              odt->get_cfg_info(102, eModule_AAO, 999, 0, 0));
    EXPECT_EQ("", odt->get_cfg_info(101, eModule_LSC, 1, 0, -1));
    EXPECT_EQ(1,
              log.count("[get_cfg_info] straimg not found:key(Preview,AFBLD_F0,LSC) module(LSC)"));
    EXPECT_EQ("", odt->get_cfg_info(103, eModule_AAO, 1, 0, -1));
    EXPECT_EQ("", odt->get_cfg_info(102, eModule_AAO, 1, 0, 1));  // another sensor's item

    // The is_enable form looks an unnamed stage up as "P2_MS_F0_H".
    EXPECT_TRUE(odt->is_enable(102u, eModule_LTM_OUT, -1, 0, -1));
    EXPECT_TRUE(odt->is_enable(102u, eModule_LSC, 1, 0, 0));
    EXPECT_FALSE(odt->is_enable(102u, eModule_LSC, -1, 0, -1));
    EXPECT_FALSE(odt->is_enable(102u, eModule_LTM_OUT, 46, 0, 3));
    EXPECT_FALSE(odt->is_enable(103u, eModule_LTM_OUT, 46, 0, -1));
}

TEST_F(OdtUtilsTest, CaptureLookups) {
    auto odt =
            replay("AAO,10,main,1,22;/d/000000001-0001-0010-AAO\n"
                   "LSC,10,main,5,22;/d/000000001-0001-0010-LSC\n",
                   1, false);
    LogCapture log;
    EXPECT_EQ("/d/000000001-0001-0010-AAO", odt->get_cfg_info(eModule_AAO, 1, 0u, 22, -1));
    EXPECT_EQ(1, log.count("[get_cfg_info] capture:key(Capture_default,AFBLD_F0,AAO) module(AAO) "
                           "file(/d/000000001-0001-0010-AAO)"));
    // An unnamed stage is looked up as "AFBLD_F4" (stage 5) in capture.
    EXPECT_EQ("/d/000000001-0001-0010-LSC", odt->get_cfg_info(eModule_LSC, -1, 0u, 22, -1));
    EXPECT_EQ("", odt->get_cfg_info(eModule_LSC, 1, 0u, 22, -1));
    EXPECT_EQ("", odt->get_cfg_info(eModule_AAO, 1, 1u, 22, -1));
    EXPECT_EQ(1, log.count("[get_cfg_info] capture not found:module(AAO) index(1)"));
    EXPECT_EQ("", odt->get_cfg_info(eModule_AAO, 1, 0u, 22, 1));

    EXPECT_TRUE(odt->is_enable(eModule_AAO, 1, 0, 22));
    EXPECT_FALSE(odt->is_enable(eModule_AAO, 1, 1, 22));
    EXPECT_FALSE(odt->is_enable(eModule_AAO, 1, -1, 22));
    EXPECT_FALSE(odt->is_enable(eModule_AAO, 2, 0, 22));
}

TEST_F(OdtUtilsTest, DumpinFileAfterASequenceOfWrites) {
    makeDumpFolder();
    OdtUtils odt(0);
    LogCapture log;
    odt.create_config_file(5012);
    EXPECT_EQ(kDumpinPath, odt.dumpinPath());
    odt.write_frame_data("AAO", 10, "main", 1, 0, "/d/000005012-0001-0010-main-AAO");
    // Lines that would not read back as written are refused.
    odt.write_frame_data("AAO", 1, "main", 0, 0, "no-key-here");
    odt.write_frame_data("A,O", 1, "main", 0, 0, "000000001-0001-0001");
    odt.write_frame_data("AAO", 1, "ma,in", 0, 0, "000000001-0001-0001");
    odt.write_frame_data("AAO", 1, "main", 0, 0, "000000001-0001-0001 ");
    odt.write_frame_data("AAO", 1, "main", 0, 0, "000000001-0001-0001\nAAO");
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
    EXPECT_EQ(5, log.countContaining("[write_frame_data] not written"));
    EXPECT_EQ(1, log.count("[create_config_file] dump-in cfg = 5012"));
    EXPECT_EQ(1, log.count("[write_frame_data] AAO,10,main,1,0;/d/000005012-0001-0010-main-AAO"));
    odt.create_config_file(5012);  // a new stream with the same key starts the file afresh
    EXPECT_EQ("", mRoot.readFile(kDumpinPath));
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

// Every line the writer produces is read back into the same frame, module and file, and the
// frames are bound in the order written.
TEST_F(OdtUtilsTest, WrittenLinesParseBackIntoTheSameItems) {
    struct Line {
        const char* module;
        uint32_t frameNo;
        const char* sensor;
        int stage, feature;
        const char* file;
        int32_t requestNo;
    };
    const Line lines[] = {
            {"AAO", 10, "main", 1, 0, "/d/000005012-0001-0010-main-AAO", 1},
            {"LSC", 10, "main", 17, 0, "/d/000005012-0001-0010-main-LSC", 1},
            {"AAO", 11, "main", -1, 53, "/d/000005012-0002-0011-main-AAO", 2},
            {"CAC", 12, "main", 2, 3, "/d/000005012-0003-0012-main-CAC", 3},
            {"stereo_tuning", 13, "main", 190, 52, "/x-y/000005012-0004-0013-tuning", 4},
    };
    makeDumpFolder();
    OdtUtils writer(0);
    writer.create_config_file(5012);
    for (const Line& l : lines) {
        writer.write_frame_data(l.module, l.frameNo, l.sensor, l.stage, l.feature, l.file);
    }
    writer.write_frame_order({13, 10});

    mProps.set(props::kOdtConfigPath, kDumpinPath);
    OdtUtils reader(0);
    reader.parsingFile();
    EXPECT_EQ((std::vector<uint32_t>{13, 10}), reader.frameOrder());
    using Item = std::tuple<int32_t, int32_t, int32_t, std::string, std::string, std::string>;
    std::vector<Item> read, written;
    std::vector<int32_t> bindingOrder;
    for (const auto& frame : reader.configFrames()) {
        bindingOrder.push_back(frame.frame_no);
        for (const auto& [key, item] : frame.items) {
            read.emplace_back(frame.unique_key, frame.request_no, frame.frame_no, key, item.module,
                              item.file);
        }
    }
    for (const Line& l : lines) {
        written.emplace_back(
                5012, l.requestNo, static_cast<int32_t>(l.frameNo),
                odt::itemKey(l.module, l.stage, l.feature, odt::streamingStageFallback()), l.module,
                l.file);
    }
    std::sort(read.begin(), read.end());
    std::sort(written.begin(), written.end());
    EXPECT_EQ(written, read);
    EXPECT_EQ((std::vector<int32_t>{13, 10, 11, 12}), bindingOrder);
}

// Frame binding, lookups and writes from several threads: every frame is bound exactly once and
// every written line arrives whole.
TEST_F(OdtUtilsTest, ConcurrentBindingLookupsAndWrites) {
    constexpr int kThreads = 4;
    constexpr int kFrames = 50;
    auto odt = replay(kThreeFrames, 1000);
    makeDumpFolder();
    odt->create_config_file(5012);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&odt, t] {
            for (int i = 0; i < kFrames; ++i) {
                uint32_t frameNo = static_cast<uint32_t>(t * kFrames + i);
                odt->frame_begin(frameNo);
                EXPECT_EQ(OdtCfgPrefix_Found, odt->get_cfg_prefix(frameNo).status);
                odt->get_cfg_info(frameNo, eModule_AAO, 1, 0, -1);
                odt->write_frame_data("AAO", frameNo, "main", 1, 0, "000005012-0001-0001");
                odt->frame_end(frameNo);
            }
        });
    }
    for (std::thread& t : threads) t.join();
    size_t bound = 0;
    for (const auto& frame : odt->configFrames()) bound += frame.sw_frame_ids.size();
    EXPECT_EQ(static_cast<size_t>(kThreads * kFrames), bound);
    std::istringstream file(mRoot.readFile(kDumpinPath));
    int lines = 0;
    for (std::string line; std::getline(file, line); ++lines) {
        EXPECT_NO_THROW(odt::parseDataLine(line)) << line;
    }
    EXPECT_EQ(kThreads * kFrames, lines);
}

}  // namespace
}  // namespace TuningUtils
}  // namespace NSCam
