#include "odt/odt_line_format.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace NSCam {
namespace TuningUtils {
namespace odt {
namespace {

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
            {"AAO,1,main,0,0;readme.txt", false},
            {"AAO,4294967296,main,0,0;000000001-0001-0001", true},
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

}  // namespace
}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
