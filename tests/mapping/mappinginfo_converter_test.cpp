#include "camtune/mappinginfo_converter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "camtune/naming_vocabulary.h"
#include "support/log_capture.h"
#include "support/property_scope.h"

namespace camtune {
namespace test {
namespace {

using NSIspTuning::EDim_T;

EDim_T dim(int value) {
    return static_cast<EDim_T>(value);
}

struct ConverterTest : ::testing::Test {
    ConverterTest() { mProps.clear(props::kMappingInfoConverterEnable); }
    PropertyScope mProps;
};

TEST_F(ConverterTest, FactorAndModuleNames) {
    struct Case {
        int dim;
        unsigned int size;
        const char* const* names;
    } cases[] = {
            {1, 3, NAMING_SCENARIO_CSTR},        {2, 35, NAMING_SENSOR_MODE_CSTR},
            {3, 4, NAMING_FLASH_CSTR},           {4, 49, NAMING_CAPTURE_TYPE_CSTR},
            {5, 45, NAMING_APP_TYPE_CSTR},       {10, 28, NAMING_SENSOR_HDR_CSTR},
            {11, 53, NAMING_PIPE_SCENARIO_CSTR}, {15, 191, NAMING_STAGE_CSTR},
    };
    MappinginfoConverter converter;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dim);
        EXPECT_STREQ(converter.factorToString(dim(c.dim), 0), c.names[0]);
        EXPECT_STREQ(converter.factorToString(dim(c.dim), c.size - 1), c.names[c.size - 1]);
        EXPECT_STREQ(converter.factorToString(dim(c.dim), c.size), "not valid");
        EXPECT_STREQ(converter.factorToString(dim(c.dim), 0xFFFFFFFFu), "not valid");
    }
    for (int unsupported : {0, 6, 9, 16}) {
        EXPECT_STREQ(converter.factorToString(dim(unsupported), 0), "not valid") << unsupported;
    }
    EXPECT_STREQ(converter.factorToStringModule(0), "DM");
    EXPECT_STREQ(converter.factorToStringModule(105), "HG");
    EXPECT_STREQ(converter.factorToStringModule(120), "AISHUTTER20_MSTM_TBL5");
    EXPECT_STREQ(converter.factorToStringModule(121), "not valid");
    EXPECT_STREQ(converter.factorToStringModule(0xFFFFFFFFu), "not valid");
    EXPECT_FALSE(converter.isFactorValid(NSIspTuning::EDim_Stage, 5, 5));
    EXPECT_TRUE(converter.isFactorValid(NSIspTuning::EDim_Stage, 4, 5));
}

TEST_F(ConverterTest, DebugLinesOnlyWhenEnabled) {
    const std::vector<std::string> enabledLines = {
            "[factorToString] dim(1) factor(3)",
            "[isFactorValid] dim(1) factor(3) exceeds max num(3)",
            "[factorToString] dim(6) factor(0)",
            "[factorToString] dim(6) not supported",
            "[factorToStringModule] [factorToStringModule] module(121)",
            "[factorToString] dim(1) factor(1)",
    };
    for (int enable : {0, 1}) {
        mProps.set(props::kMappingInfoConverterEnable, enable);
        LogCapture log;
        MappinginfoConverter converter;
        EXPECT_EQ(converter.isEnabled(), enable == 1);
        converter.factorToString(dim(1), 3);
        converter.factorToString(dim(6), 0);
        converter.factorToStringModule(121);
        converter.factorToString(dim(1), 1);
        std::vector<std::string> texts;
        for (const LogLine& line : log.lines()) {
            texts.push_back(line.text);
            EXPECT_EQ(line.tag, "MappinginfoConverter");
            EXPECT_EQ(line.level, log::Level::Debug);
        }
        EXPECT_EQ(texts, enable ? enabledLines : std::vector<std::string>{});
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
