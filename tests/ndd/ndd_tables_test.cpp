#include "camtune/ndd_tables.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace NSCam {
namespace TuningUtils {
namespace {

const NddAutoGenExcel2C& tables() {
    return *NddAutoGenExcel2C::getInstance();
}

TEST(NddTablesTest, ModuleNamesAtChosenIndices) {
    struct Case {
        int module;
        const char* name;
    };
    const Case cases[] = {
            {0, "AAHO"},
            {1, "AAO"},
            {3, "AE_OUT"},
            {69, "AISA"},
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
    for (const Case& c : cases) {
        EXPECT_STREQ(c.name, tables().getModuleName(c.module)) << "module " << c.module;
    }
}

TEST(NddTablesTest, ModuleEnumeratorsNameTheirOwnRow) {
    EXPECT_STREQ("AAO", tables().getModuleName(eModule_AAO));
    EXPECT_STREQ("CAC", tables().getModuleName(eModule_CAC));
    EXPECT_STREQ("AIMA", tables().getModuleName(eModule_AIMA));
    EXPECT_STREQ("VAINR_PARAM_WRK_RESIDUAL", tables().getModuleName(eModule_NUM - 1));
    EXPECT_EQ(eModule_LTMSO, tables().findModule("LTMSO"));
    EXPECT_EQ(-1, tables().findModule("ltmso"));
}

TEST(NddTablesTest, ModuleNamesAreDistinct) {
    std::set<std::string> names;
    for (size_t i = 0; i < tables().moduleCount(); ++i) {
        EXPECT_TRUE(names.insert(tables().getModuleName(static_cast<int>(i))).second)
                << "duplicate at " << i;
    }
}

TEST(NddTablesTest, ArgumentTables) {
    using Lookup = const char* (NddAutoGenExcel2C::*)(int) const;
    struct Case {
        const char* table;
        Lookup lookup;
        size_t count;
        int value;
        const char* name;
    };
    const Case cases[] = {
            {"category", &NddAutoGenExcel2C::getCategoryName, 2, 0, "Capture"},
            {"category", &NddAutoGenExcel2C::getCategoryName, 2, 1, "Streaming"},
            {"sensor id", &NddAutoGenExcel2C::getSensorIdName, 12, 0, "main"},
            {"sensor id", &NddAutoGenExcel2C::getSensorIdName, 12, 3, "sub2"},
            {"sensor id", &NddAutoGenExcel2C::getSensorIdName, 12, 11, "sub6"},
            {"feature mode", &NddAutoGenExcel2C::getSensorFeatureModeName, 28, 0, "Off"},
            {"feature mode", &NddAutoGenExcel2C::getSensorFeatureModeName, 28, 3, "ms_2exp_ne_se"},
            {"feature mode", &NddAutoGenExcel2C::getSensorFeatureModeName, 28, 16, "fc_2exp_quad"},
            {"feature mode", &NddAutoGenExcel2C::getSensorFeatureModeName, 28, 27, "fc_2exp_mqd14"},
            {"exposure", &NddAutoGenExcel2C::getSensorExpName, 6, 0, "NorExp"},
            {"exposure", &NddAutoGenExcel2C::getSensorExpName, 6, 5, "MidExp_ShtExp"},
            {"exposure order", &NddAutoGenExcel2C::getExpOdrName, 6, 3, "E1_E2"},
            {"exposure order", &NddAutoGenExcel2C::getExpOdrName, 6, 5, "E1_E2_E3"},
            {"dual camera", &NddAutoGenExcel2C::getDualCamIdName, 2, 0, "Master"},
            {"dual camera", &NddAutoGenExcel2C::getDualCamIdName, 2, 1, "Slave"},
    };
    const std::pair<const char*, size_t> counts[] = {
            {"category", tables().categoryCount()},
            {"sensor id", tables().sensorIdCount()},
            {"feature mode", tables().sensorFeatureModeCount()},
            {"exposure", tables().sensorExpCount()},
            {"exposure order", tables().expOdrCount()},
            {"dual camera", tables().dualCamIdCount()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.table) + " " + std::to_string(c.value));
        EXPECT_STREQ(c.name, (tables().*c.lookup)(c.value));
        EXPECT_STREQ("", (tables().*c.lookup)(static_cast<int>(c.count)));
        EXPECT_STREQ("", (tables().*c.lookup)(-1));
        for (const auto& [table, count] : counts) {
            if (std::string(table) == c.table) {
                EXPECT_EQ(c.count, count);
            }
        }
    }
}

TEST(NddTablesTest, SensorIdsByName) {
    EXPECT_EQ(0, tables().findSensorId("main"));
    EXPECT_EQ(2, tables().findSensorId("main2"));
    EXPECT_EQ(11, tables().findSensorId("sub6"));
    EXPECT_EQ(-1, tables().findSensorId("main7"));
    EXPECT_EQ(-1, tables().findSensorId(""));
}

TEST(NddTablesTest, EveryRuleIsRegisteredUnderItsName) {
    const char* names[] = {"Platform",
                           "Prefix",
                           "SensorId",
                           "Stage",
                           "Feature",
                           "Action",
                           "SensorFeatureMode",
                           "UserStr",
                           "Padding",
                           "Size",
                           "Bit",
                           "BayerOrder",
                           "Sign",
                           "Cell",
                           "Port",
                           "Plane",
                           "Format",
                           "Delay",
                           "Layer",
                           "SensorExp",
                           "ExpOdr",
                           "DualCamId",
                           "Version"};
    ASSERT_EQ(23u, tables().ruleCount());
    std::set<std::string> registered;
    for (size_t i = 0; i < tables().ruleCount(); ++i) registered.insert(tables().getRuleName(i));
    for (const char* name : names) {
        EXPECT_NE(nullptr, tables().findRule(name)) << name;
        EXPECT_EQ(1u, registered.count(name)) << name;
    }
    EXPECT_EQ(nullptr, tables().getRuleName(23));
    EXPECT_EQ(nullptr, tables().findRule("prefix"));
    std::string untouched = "kept";
    EXPECT_FALSE(tables().convert("Unknown", NddData(), &untouched));
    EXPECT_EQ("kept", untouched);
}

NddData sampleRecord() {
    NddData data;
    data.version = 6983;
    data.uniqueKey = 1234;
    data.requestNo = 5;
    data.frameNo = 67;
    data.sensorId = eSensorId_main;
    data.stage = 1;
    data.feature = 1;
    data.action = 3;
    data.userStr = "ut";
    data.paddedWidth = 4000;
    data.paddedHeight = 3000;
    data.bufferWidth = 5000;
    data.width = 4000;
    data.height = 2992;
    data.bitDepth = 10;
    data.bayerOrder = 2;
    data.sign = 1;
    data.cell = 4;
    data.delay = 3;
    data.layer = 2;
    data.ruleVersion = 7;
    return data;
}

TEST(NddTablesTest, RulesFormatTheirFields) {
    struct Case {
        const char* rule;
        void (*edit)(NddData&);
        const char* expected;
    };
    auto keep = [](NddData&) {};
    const Case cases[] = {
            {"Platform", keep, "-p6983"},
            {"Prefix", keep, "000001234-0005-0067"},
            {"Prefix",
             [](NddData& d) {
                 d.uniqueKey = 123;
                 d.requestNo = 10005;
                 d.frameNo = 7;
             },
             "000000123-0005-0007"},
            {"Prefix", [](NddData& d) { d.frameNo = 20000; }, "000001234-0005-0000"},
            {"SensorId", keep, "-main"},
            {"SensorId", [](NddData& d) { d.sensorId = 2; }, "-main2"},
            {"SensorId", [](NddData& d) { d.sensorId = 12; }, "-INVALID_SENSORID"},
            {"SensorId", [](NddData& d) { d.sensorId = -1; }, "-INVALID_SENSORID"},
            {"Stage", [](NddData& d) { d.stage = 0; }, "-Default"},
            {"Stage", keep, "-AFBLD_F0"},
            {"Stage", [](NddData& d) { d.stage = 190; }, "-VAINR_CORE"},
            {"Stage", [](NddData& d) { d.stage = 191; }, "-INVALID_STAGE"},
            {"Stage", [](NddData& d) { d.stage = -1; }, "-INVALID_STAGE"},
            {"Feature", keep, "-Preview_eis"},
            {"Feature", [](NddData& d) { d.feature = 52; }, "-AOV"},
            {"Feature", [](NddData& d) { d.feature = 53; }, "-INVALID_FEATURE"},
            {"Action", keep, "-3"},
            {"UserStr", keep, "-ut"},
            {"UserStr", [](NddData& d) { d.userStr.clear(); }, "-"},
            {"Padding", keep, "-PW4000-PH3000-BW5000"},
            {"Size", keep, "__4000x2992"},
            {"Bit", keep, "_10"},
            {"BayerOrder", keep, "_2"},
            {"Sign", keep, "_s1"},
            {"Cell", keep, "_c4"},
            {"Port", keep, ""},
            {"Plane", keep, ""},
            {"Format", keep, ""},
            {"Delay", keep, "_delay3"},
            {"Layer", keep, "-F2"},
            {"Version", keep, "-v7"},
    };
    for (const Case& c : cases) {
        NddData data = sampleRecord();
        c.edit(data);
        std::string out;
        ASSERT_TRUE(tables().convert(c.rule, data, &out)) << c.rule;
        EXPECT_EQ(c.expected, out) << c.rule;
    }
}

// The optional fields add nothing at -1, their name when set, and a bare "-" for a value the
// table does not name.
TEST(NddTablesTest, OptionalFieldRules) {
    struct Case {
        const char* rule;
        int32_t NddData::*field;
        int32_t value;
        const char* expected;
    };
    const Case cases[] = {
            {"SensorFeatureMode", &NddData::sensorFeatureMode, -1, ""},
            {"SensorFeatureMode", &NddData::sensorFeatureMode, 0, "-Off"},
            {"SensorFeatureMode", &NddData::sensorFeatureMode, 16, "-fc_2exp_quad"},
            {"SensorFeatureMode", &NddData::sensorFeatureMode, 28, "-"},
            {"SensorExp", &NddData::sensorExp, -1, ""},
            {"SensorExp", &NddData::sensorExp, 4, "-NorExp_MidExp_ShtExp"},
            {"SensorExp", &NddData::sensorExp, 6, "-"},
            {"ExpOdr", &NddData::expOdr, -1, ""},
            {"ExpOdr", &NddData::expOdr, 0, "-E1"},
            {"ExpOdr", &NddData::expOdr, -2, "-"},
            {"DualCamId", &NddData::dualCamId, -1, ""},
            {"DualCamId", &NddData::dualCamId, 1, "-Slave"},
            {"DualCamId", &NddData::dualCamId, 2, "-"},
    };
    for (const Case& c : cases) {
        NddData data = sampleRecord();
        data.*c.field = c.value;
        std::string out;
        ASSERT_TRUE(tables().convert(c.rule, data, &out));
        EXPECT_EQ(c.expected, out) << c.rule << " " << c.value;
    }
}

std::string expand(const std::vector<const char*>& rules, const NddData& data) {
    std::string name;
    for (const char* rule : rules) {
        std::string piece;
        EXPECT_TRUE(tables().convert(rule, data, &piece)) << rule;
        name += piece;
    }
    return name;
}

TEST(NddTablesTest, RecordsWithAndWithoutOptionalFields) {
    const std::vector<const char*> pattern = {"Prefix",    "SensorId", "SensorFeatureMode",
                                              "SensorExp", "ExpOdr",   "DualCamId",
                                              "Padding"};
    NddData plain = sampleRecord();
    EXPECT_EQ("000001234-0005-0067-main-PW4000-PH3000-BW5000", expand(pattern, plain));

    NddData full = sampleRecord();
    full.sensorFeatureMode = eSensorFeatureMode_stg_2exp_ne_se;
    full.sensorExp = eSensorExp_ShtExp;
    full.expOdr = eExpOdr_E2;
    full.dualCamId = eDualCamId_Master;
    EXPECT_EQ("000001234-0005-0067-main-stg_2exp_ne_se-ShtExp-E2-Master-PW4000-PH3000-BW5000",
              expand(pattern, full));
}

TEST(NddTablesTest, LongPiecesAreCutToTheRuleBuffer) {
    NddData data = sampleRecord();
    data.userStr = std::string(150, 'u');
    std::string out = tables().ConvertNameRule_UserStr(data);
    EXPECT_EQ("-" + std::string(98, 'u'), out);
}

TEST(NddTablesTest, OneInstanceForEveryThread) {
    constexpr int kThreads = 8;
    std::vector<NddAutoGenExcel2C*> seen(kThreads, nullptr);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&seen, i] {
            seen[i] = NddAutoGenExcel2C::getInstance();
            EXPECT_EQ("-Slave", seen[i]->ConvertNameRule_DualCamId([] {
                NddData d;
                d.dualCamId = eDualCamId_Slave;
                return d;
            }()));
        });
    }
    for (std::thread& t : threads) t.join();
    for (NddAutoGenExcel2C* instance : seen) EXPECT_EQ(NddAutoGenExcel2C::getInstance(), instance);
}

}  // namespace
}  // namespace TuningUtils
}  // namespace NSCam
