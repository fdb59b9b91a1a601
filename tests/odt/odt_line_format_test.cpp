#include "odt/odt_line_format.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "odt/odt_config_reader.h"

namespace NSCam {
namespace TuningUtils {
namespace odt {
namespace {

TEST(OdtLineFormatTest, DataLinesReadBackAsWritten) {
    struct Case {
        const char* module;
        uint32_t frameNo;
        const char* sensor;
        int32_t stage;
        int32_t feature;
        const char* file;
        int32_t uniqueKey, requestNo, keyFrameNo;
    };
    const Case cases[] = {
            {"AAO", 10, "main", 1, 0, "000001234-0001-0010-main-AAO.bin", 1234, 1, 10},
            {"LSC", 4294967295u, "sub2", -1, 52,
             "/data/vendor/camera_dump/default_dump/000000007-9999-0000-sub2-LSC_s0", 7, 9999, 0},
            {"stereo_tuning", 0, "main", 190, 53, "/x-y/000000001-0002-0003", 1, 2, 3},
    };
    for (const Case& c : cases) {
        std::string line =
                formatDataLine(c.module, c.frameNo, c.sensor, c.stage, c.feature, c.file);
        ASSERT_EQ('\n', line.back());
        DataLine back = parseDataLine(line.substr(0, line.size() - 1));
        EXPECT_EQ(c.module, back.module);
        EXPECT_EQ(c.frameNo, back.frameNo);
        EXPECT_EQ(c.sensor, back.sensor);
        EXPECT_EQ(c.stage, back.stage);
        EXPECT_EQ(c.feature, back.feature);
        EXPECT_EQ(c.file, back.file);
        EXPECT_EQ(c.uniqueKey, back.uniqueKey) << line;
        EXPECT_EQ(c.requestNo, back.requestNo) << line;
        EXPECT_EQ(c.keyFrameNo, back.keyFrameNo) << line;
    }
}

TEST(OdtLineFormatTest, DataLineLayout) {
    EXPECT_EQ("AAO,12,main,3,-1;000000005-0001-0012-a.bin\n",
              formatDataLine("AAO", 12, "main", 3, -1, "000000005-0001-0012-a.bin"));
    EXPECT_EQ("order:\n", formatOrderLine({}));
    EXPECT_EQ("order: 3 5 7\n", formatOrderLine({3, 5, 7}));
}

TEST(OdtLineFormatTest, FileTextLosesTrailingBlanksAndLineEnds) {
    DataLine data = parseDataLine("AAO,1,main,0,0;000000001-0001-0001-x.bin \t\r");
    EXPECT_EQ("000000001-0001-0001-x.bin", data.file);
}

TEST(OdtLineFormatTest, NumberFieldsThatHoldNoNumberThrow) {
    struct Case {
        const char* line;
        bool outOfRange;
    };
    const Case cases[] = {
            {"AAO,x,main,0,0;000000001-0001-0001", false},
            {"AAO,1,main,stage,0;000000001-0001-0001", false},
            {"AAO,1,main,0,;000000001-0001-0001", false},
            {"AAO,1,main,0,0", false},  // no file, so no key
            {"AAO,1,main,0,0;readme.txt", false},
            {"AAO", false},
            {"AAO,4294967296,main,0,0;000000001-0001-0001", true},
            {"AAO,-1,main,0,0;000000001-0001-0001", true},
            {"AAO,1,main,99999999999,0;000000001-0001-0001", true},
    };
    for (const Case& c : cases) {
        if (c.outOfRange) {
            EXPECT_THROW(parseDataLine(c.line), std::out_of_range) << c.line;
        } else {
            EXPECT_THROW(parseDataLine(c.line), std::invalid_argument) << c.line;
        }
    }
}

TEST(OdtLineFormatTest, OrderLines) {
    EXPECT_TRUE(isOrderLine("order: 1"));
    EXPECT_TRUE(isOrderLine("order:"));
    EXPECT_FALSE(isOrderLine(" order: 1"));
    EXPECT_FALSE(isOrderLine("orde"));
    EXPECT_EQ((std::vector<uint32_t>{12, 10, 4294967295u}),
              parseOrderLine("order: 12  10\t4294967295\r"));
    EXPECT_TRUE(parseOrderLine("order:").empty());
    EXPECT_THROW(parseOrderLine("order: 1 two"), std::invalid_argument);
    EXPECT_THROW(parseOrderLine("order: 4294967296"), std::out_of_range);
    EXPECT_THROW(parseOrderLine("order: -3"), std::out_of_range);
}

TEST(OdtLineFormatTest, ItemKeysFallBackForUnnamedIndices) {
    struct Case {
        int stage;
        int feature;
        const char* fallback;
        const char* expected;
    };
    const Case cases[] = {
            {1, 0, streamingStageFallback(), "Preview,AFBLD_F0,AAO"},
            {0, 52, streamingStageFallback(), "AOV,Default,AAO"},
            {-1, 0, streamingStageFallback(), "Preview,AFBLD_F0,AAO"},
            {191, 53, captureStageFallback(), "Default,AFBLD_F4,AAO"},
            {-5, -1, queryStageFallback(), "Default,P2_MS_F0_H,AAO"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.expected, itemKey("AAO", c.stage, c.feature, c.fallback));
        char buf[kItemKeySize];
        formatItemKey(buf, sizeof(buf), "AAO", c.stage, c.feature, c.fallback);
        EXPECT_STREQ(c.expected, buf);
    }
}

TEST(OdtConfigReaderTest, GroupsLinesIntoFramesByTheirFileKey) {
    std::istringstream in(
            "AAO,10,main,1,0;/d/000001234-0001-0010-main-AAO\n"
            "\n"
            "LSC,10,main,1,0;/d/000001234-0001-0010-main-LSC\n"
            "AAO,11,sub,1,0;/d/000001234-0002-0011-sub-AAO\n"
            "AAO,11,main,1,0;/d/000001234-0002-0011-main-AAO\n"
            "AAO,10,main,1,0;/d/000001234-0001-0010-main-AAO-again\n");
    ReplayConfig config = readReplayConfig(in, 0);
    ASSERT_EQ(2u, config.frames.size());
    EXPECT_EQ((std::vector<std::string>{"main", "sub"}), config.sensors);
    const qel_tuning_cfg_frame& first = config.frames[0];
    EXPECT_EQ(1234, first.unique_key);
    EXPECT_EQ(1, first.request_no);
    EXPECT_EQ(10, first.frame_no);
    ASSERT_EQ(2u, first.items.size());
    EXPECT_EQ("/d/000001234-0001-0010-main-AAO-again", first.items.at("Preview,AFBLD_F0,AAO").file);
    EXPECT_EQ("LSC", first.items.at("Preview,AFBLD_F0,LSC").module);
    EXPECT_EQ(11, config.frames[1].frame_no);
    EXPECT_EQ(1u, config.frames[1].items.size());
}

TEST(OdtConfigReaderTest, OrderArrangesFramesByTheirSourceFrame) {
    std::istringstream in(
            "AAO,10,main,0,0;000000001-0001-0010\n"
            "AAO,11,main,0,0;000000001-0002-0011\n"
            "order: 12 10 99\n"
            "AAO,12,main,0,0;000000001-0003-0012\n"
            "order: 10\n");
    ReplayConfig config = readReplayConfig(in, 0);
    EXPECT_EQ((std::vector<uint32_t>{12, 10, 99, 10}), config.order);
    ASSERT_EQ(3u, config.frames.size());
    EXPECT_EQ(12, config.frames[0].frame_no);
    EXPECT_EQ(10, config.frames[1].frame_no);
    EXPECT_EQ(11, config.frames[2].frame_no);
}

TEST(OdtConfigReaderTest, ConversionErrorsNameTheLine) {
    std::istringstream in("AAO,10,main,0,0;000000001-0001-0010\nAAO,ten,main,0,0;000000001\n");
    try {
        readReplayConfig(in, 0);
        FAIL() << "no exception";
    } catch (const std::invalid_argument& e) {
        EXPECT_NE(std::string::npos, std::string(e.what()).find("line 2")) << e.what();
    }
}

}  // namespace
}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
