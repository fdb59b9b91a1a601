// The lines of the replay configuration: parsing, item keys, and the lint that checks them.
#include "odt/odt_line_format.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <tuple>

#include "odt/odt_config_reader.h"

namespace NSCam {
namespace TuningUtils {
namespace odt {
namespace {

TEST(OdtLineFormatTest, DataLinesAndTheirNumberFields) {
    DataLine data = parseDataLine("AAO,1,main,0,0;/d-1/000000012-0034-0056-x.bin \t\r");
    EXPECT_EQ("/d-1/000000012-0034-0056-x.bin", data.file);
    EXPECT_EQ(std::tuple(12, 34, 56), std::tuple(data.uniqueKey, data.requestNo, data.keyFrameNo));
    for (const char* line :
         {"AAO,x,main,0,0;000000001-0001-0001", "AAO,1,main,st,0;000000001-0001-0001",
          "AAO,1,main,0,;000000001-0001-0001", "AAO,1,main,0,0;readme.txt"}) {
        EXPECT_THROW(parseDataLine(line), std::invalid_argument) << line;
    }
    for (const char* line : {"AAO,4294967296,main,0,0;000000001-0001-0001",
                             "AAO,1,main,99999999999,0;000000001-0001-0001"}) {
        EXPECT_THROW(parseDataLine(line), std::out_of_range) << line;
    }
}

TEST(OdtLineFormatTest, OrderLines) {
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

}  // namespace
}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
