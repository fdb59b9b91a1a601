#include "camtune/ndd_tables.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace NSCam {
namespace TuningUtils {
namespace {

const NddAutoGenExcel2C& tables() {
    return *NddAutoGenExcel2C::getInstance();
}

TEST(NddTablesTest, ModuleNames) {
    const std::pair<int, const char*> cases[] = {
            {0, "AAHO"},
            {1, "AAO"},
            {136, "CAC"},
            {245, "LTM_OUT"},
            {246, "LTMSO"},
            {312, "stereo_tuning"},
            {408, "YUVO_T5"},
            {409, "FWTNC_DHZ_GTM_STR_TBL"},
            {449, "VAINR_PARAM_WRK_RESIDUAL"},
            {450, ""},
            {-1, ""},
    };
    EXPECT_EQ(450u, tables().moduleCount());
    for (const auto& [module, name] : cases) {
        EXPECT_STREQ(name, tables().getModuleName(module)) << module;
    }
    EXPECT_STREQ("AIMA", tables().getModuleName(eModule_AIMA));
    EXPECT_EQ(eModule_LTMSO, tables().findModule("LTMSO"));
    EXPECT_EQ(-1, tables().findModule("ltmso"));
    std::set<std::string> distinct;
    for (int i = 0; i < eModule_NUM; ++i) distinct.insert(tables().getModuleName(i));
    EXPECT_EQ(450u, distinct.size());
}

TEST(NddTablesTest, ArgumentTables) {
    using Lookup = const char* (NddAutoGenExcel2C::*)(int) const;
    struct Case {
        Lookup lookup;
        size_t count;
        int value;
        const char* name;
    };
    const Case cases[] = {
            {&NddAutoGenExcel2C::getCategoryName, tables().categoryCount(), 1, "Streaming"},
            {&NddAutoGenExcel2C::getSensorIdName, tables().sensorIdCount(), 3, "sub2"},
            {&NddAutoGenExcel2C::getSensorIdName, tables().sensorIdCount(), 11, "sub6"},
            {&NddAutoGenExcel2C::getSensorFeatureModeName, tables().sensorFeatureModeCount(), 3,
             "ms_2exp_ne_se"},
            {&NddAutoGenExcel2C::getSensorFeatureModeName, tables().sensorFeatureModeCount(), 27,
             "fc_2exp_mqd14"},
            {&NddAutoGenExcel2C::getSensorExpName, tables().sensorExpCount(), 5, "MidExp_ShtExp"},
            {&NddAutoGenExcel2C::getExpOdrName, tables().expOdrCount(), 5, "E1_E2_E3"},
            {&NddAutoGenExcel2C::getDualCamIdName, tables().dualCamIdCount(), 0, "Master"},
    };
    const size_t counts[] = {2, 12, 12, 28, 28, 6, 6, 2};
    for (size_t i = 0; i < std::size(cases); ++i) {
        const Case& c = cases[i];
        EXPECT_EQ(counts[i], c.count) << c.name;
        EXPECT_STREQ(c.name, (tables().*c.lookup)(c.value));
        EXPECT_STRNE("", (tables().*c.lookup)(static_cast<int>(c.count) - 1)) << c.name;
        EXPECT_STREQ("", (tables().*c.lookup)(static_cast<int>(c.count))) << c.name;
        EXPECT_STREQ("", (tables().*c.lookup)(-1)) << c.name;
    }
    EXPECT_EQ(2, tables().findSensorId("main2"));
    EXPECT_EQ(-1, tables().findSensorId("main7"));
}

TEST(NddTablesTest, EveryRuleIsRegisteredUnderItsName) {
    std::istringstream names(
            "Platform Prefix SensorId Stage Feature Action SensorFeatureMode UserStr Padding Size "
            "Bit BayerOrder Sign Cell Port Plane Format Delay Layer SensorExp ExpOdr DualCamId "
            "Version");
    std::set<std::string> registered;
    for (size_t i = 0; i < tables().ruleCount(); ++i) registered.insert(tables().getRuleName(i));
    std::set<std::string> expected;
    for (std::string name; names >> name;) {
        expected.insert(name);
        EXPECT_NE(nullptr, tables().findRule(name)) << name;
    }
    EXPECT_EQ(23u, tables().ruleCount());
    EXPECT_EQ(expected, registered);
    std::string untouched = "kept";
    EXPECT_FALSE(tables().convert("prefix", NddData(), &untouched));
    EXPECT_EQ("kept", untouched);
}

NddData sampleRecord() {
    NddData d;
    d.version = 6983;
    d.uniqueKey = 1234;
    d.requestNo = 5;
    d.frameNo = 67;
    d.stage = d.feature = 1;
    d.action = 3;
    d.userStr = "ut";
    d.paddedWidth = d.width = 4000;
    d.paddedHeight = 3000;
    d.bufferWidth = 5000;
    d.height = 2992;
    d.bitDepth = 10;
    d.bayerOrder = d.layer = 2;
    d.sign = 1;
    d.cell = 4;
    d.delay = 3;
    d.ruleVersion = 7;
    return d;
}

// Each rule on the sample record with one field changed (none when `field` is null). The optional
// fields add nothing at -1 and a bare "-" for a value their table does not name.
TEST(NddTablesTest, RulesFormatTheirFields) {
    struct Case {
        const char* rule;
        int32_t NddData::*field;
        int32_t value;
        const char* expected;
    };
    const Case cases[] = {
            {"Platform", nullptr, 0, "-p6983"},
            {"Prefix", nullptr, 0, "000001234-0005-0067"},
            {"Prefix", &NddData::requestNo, 10005, "000001234-0005-0067"},
            {"Prefix", &NddData::frameNo, 20007, "000001234-0005-0007"},
            {"SensorId", nullptr, 0, "-main"},
            {"SensorId", &NddData::sensorId, 2, "-main2"},
            {"SensorId", &NddData::sensorId, 12, "-INVALID_SENSORID"},
            {"SensorId", &NddData::sensorId, -1, "-INVALID_SENSORID"},
            {"Stage", &NddData::stage, 0, "-Default"},
            {"Stage", &NddData::stage, 190, "-VAINR_CORE"},
            {"Stage", &NddData::stage, 191, "-INVALID_STAGE"},
            {"Stage", &NddData::stage, -1, "-INVALID_STAGE"},
            {"Feature", nullptr, 0, "-Preview_eis"},
            {"Feature", &NddData::feature, 52, "-AOV"},
            {"Feature", &NddData::feature, 53, "-INVALID_FEATURE"},
            {"Action", nullptr, 0, "-3"},
            {"UserStr", nullptr, 0, "-ut"},
            {"Padding", nullptr, 0, "-PW4000-PH3000-BW5000"},
            {"Size", nullptr, 0, "__4000x2992"},
            {"Bit", nullptr, 0, "_10"},
            {"BayerOrder", nullptr, 0, "_2"},
            {"Sign", nullptr, 0, "_s1"},
            {"Cell", nullptr, 0, "_c4"},
            {"Port", nullptr, 0, ""},
            {"Plane", nullptr, 0, ""},
            {"Format", nullptr, 0, ""},
            {"Delay", nullptr, 0, "_delay3"},
            {"Layer", nullptr, 0, "-F2"},
            {"Version", nullptr, 0, "-v7"},
            {"SensorFeatureMode", &NddData::sensorFeatureMode, -1, ""},
            {"SensorFeatureMode", &NddData::sensorFeatureMode, 16, "-fc_2exp_quad"},
            {"SensorFeatureMode", &NddData::sensorFeatureMode, 28, "-"},
            {"SensorExp", &NddData::sensorExp, 4, "-NorExp_MidExp_ShtExp"},
            {"SensorExp", &NddData::sensorExp, 6, "-"},
            {"ExpOdr", &NddData::expOdr, 0, "-E1"},
            {"ExpOdr", &NddData::expOdr, -2, "-"},
            {"DualCamId", &NddData::dualCamId, -1, ""},
            {"DualCamId", &NddData::dualCamId, 1, "-Slave"},
    };
    for (const Case& c : cases) {
        NddData data = sampleRecord();
        if (c.field != nullptr) data.*c.field = c.value;
        std::string out;
        ASSERT_TRUE(tables().convert(c.rule, data, &out)) << c.rule;
        EXPECT_EQ(c.expected, out) << c.rule << " " << c.value;
    }
    NddData data = sampleRecord();
    data.uniqueKey = 123;
    data.requestNo = 10005;
    data.frameNo = 7;
    EXPECT_EQ("000000123-0005-0007", tables().ConvertNameRule_Prefix(data));
    data.userStr = std::string(150, 'u');  // rules format into 100 characters
    EXPECT_EQ("-" + std::string(98, 'u'), tables().ConvertNameRule_UserStr(data));
}

TEST(NddTablesTest, RecordsWithAndWithoutOptionalFields) {
    auto expand = [](const NddData& data) {
        std::string name, piece;
        for (const char* rule : {"Prefix", "SensorId", "SensorFeatureMode", "SensorExp", "ExpOdr",
                                 "DualCamId", "Padding"}) {
            EXPECT_TRUE(tables().convert(rule, data, &piece)) << rule;
            name += piece;
        }
        return name;
    };
    NddData full = sampleRecord();
    EXPECT_EQ("000001234-0005-0067-main-PW4000-PH3000-BW5000", expand(full));
    full.sensorFeatureMode = eSensorFeatureMode_stg_2exp_ne_se;
    full.sensorExp = eSensorExp_ShtExp;
    full.expOdr = eExpOdr_E2;
    full.dualCamId = eDualCamId_Master;
    EXPECT_EQ("000001234-0005-0067-main-stg_2exp_ne_se-ShtExp-E2-Master-PW4000-PH3000-BW5000",
              expand(full));
}

TEST(NddTablesTest, OneInstanceForEveryThread) {
    std::vector<NddAutoGenExcel2C*> seen(8, nullptr);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < seen.size(); ++i) {
        threads.emplace_back([&seen, i] { seen[i] = NddAutoGenExcel2C::getInstance(); });
    }
    for (std::thread& t : threads) t.join();
    for (NddAutoGenExcel2C* instance : seen) EXPECT_EQ(NddAutoGenExcel2C::getInstance(), instance);
}

}  // namespace
}  // namespace TuningUtils
}  // namespace NSCam
