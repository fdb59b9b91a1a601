#include "camtune/mappinginfo_converter.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
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

class ConverterTest : public ::testing::Test {
protected:
    ConverterTest() { mProps.clear(props::kMappingInfoConverterEnable); }
    PropertyScope mProps;
};

TEST_F(ConverterTest, FactorNamesOfEverySupportedDimension) {
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
}

TEST_F(ConverterTest, KnownNamesAndUnsupportedDimensions) {
    MappinginfoConverter converter;
    struct Case {
        int dim;
        unsigned int factor;
        const char* expected;
    } cases[] = {
            {1, 2, "Capture"},     {1, 3, "not valid"},  {15, 190, "VAINR_CORE"},
            {15, 98, "Camysy_se"}, {11, 52, "AOV"},      {3, 3, "Torch"},
            {6, 0, "not valid"},   {0, 0, "not valid"},  {9, 1, "not valid"},
            {12, 0, "not valid"},  {14, 0, "not valid"}, {16, 0, "not valid"},
            {-1, 0, "not valid"},
    };
    for (const Case& c : cases) {
        EXPECT_STREQ(converter.factorToString(dim(c.dim), c.factor), c.expected)
                << c.dim << "/" << c.factor;
    }
}

TEST_F(ConverterTest, ModuleNamesStopBeforeTheEndMarker) {
    MappinginfoConverter converter;
    struct Case {
        unsigned int module;
        const char* expected;
    } cases[] = {
            {0, "DM"},          {42, "BPC_PDC_R3"}, {60, "MSYUV_MSEE"},
            {84, "LSC_CONFIG"}, {105, "HG"},        {120, "AISHUTTER20_MSTM_TBL5"},
            {121, "not valid"}, {122, "not valid"}, {0xFFFFFFFFu, "not valid"},
    };
    for (const Case& c : cases) EXPECT_STREQ(converter.factorToStringModule(c.module), c.expected);
    EXPECT_FALSE(converter.isFactorValid(NSIspTuning::EDim_Stage, 5, 5));
    EXPECT_TRUE(converter.isFactorValid(NSIspTuning::EDim_Stage, 4, 5));
}

TEST_F(ConverterTest, QuietUnlessEnabled) {
    LogCapture log;
    MappinginfoConverter converter;
    EXPECT_FALSE(converter.isEnabled());
    EXPECT_STREQ(converter.factorToString(dim(1), 3), "not valid");
    EXPECT_STREQ(converter.factorToString(dim(6), 0), "not valid");
    EXPECT_STREQ(converter.factorToStringModule(121), "not valid");
    EXPECT_STREQ(converter.factorToString(dim(1), 1), "Video");
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ConverterTest, EnabledConverterExplainsItself) {
    mProps.set(props::kMappingInfoConverterEnable, 1);
    LogCapture log;
    MappinginfoConverter converter;
    EXPECT_TRUE(converter.isEnabled());
    EXPECT_STREQ(converter.factorToString(dim(1), 3), "not valid");
    EXPECT_STREQ(converter.factorToString(dim(6), 0), "not valid");
    EXPECT_STREQ(converter.factorToStringModule(121), "not valid");
    EXPECT_STREQ(converter.factorToString(dim(1), 1), "Video");

    const std::vector<std::string> expected = {
            "[factorToString] dim(1) factor(3)",
            "[isFactorValid] dim(1) factor(3) exceeds max num(3)",
            "[factorToString] dim(6) factor(0)",
            "[factorToString] dim(6) not supported",
            "[factorToStringModule] [factorToStringModule] module(121)",
            "[factorToString] dim(1) factor(1)",
    };
    const std::vector<LogLine> lines = log.lines();
    ASSERT_EQ(lines.size(), expected.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].text, expected[i]);
        EXPECT_EQ(lines[i].tag, "MappinginfoConverter");
        EXPECT_EQ(lines[i].level, log::Level::Debug);
    }
}

TEST_F(ConverterTest, EnabledButBelowTheDebugLevelStaysQuiet) {
    mProps.set(props::kMappingInfoConverterEnable, 1);
    LogCapture log;
    log::setThreshold(log::Level::Info);
    MappinginfoConverter converter;
    EXPECT_STREQ(converter.factorToString(dim(6), 0), "not valid");
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ConverterTest, OneInstanceForEveryThread) {
    constexpr int kThreads = 4;
    std::vector<MappinginfoConverter*> seen(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([i, &seen] { seen[i] = MappinginfoConverter::createInstance(); });
    }
    for (std::thread& t : threads) t.join();
    for (MappinginfoConverter* p : seen) EXPECT_EQ(p, MappinginfoConverter::createInstance());
    EXPECT_STREQ(seen[0]->factorToString(dim(15), 190), "VAINR_CORE");
}

}  // namespace
}  // namespace test
}  // namespace camtune
