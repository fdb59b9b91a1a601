#include "camtune/ndd_tables.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace NSCam {
namespace TuningUtils {
namespace {

using Tables = NddAutoGenExcel2C;

const Tables& tables() {
    return *Tables::getInstance();
}

// The last row of each table, and the values just outside it.
TEST(NddTablesTest, NameTables) {
    struct Case {
        const char* (Tables::*lookup)(int) const;
        size_t (Tables::*count)() const;
        const char* last;
    };
    const Case cases[] = {
            {&Tables::getModuleName, &Tables::moduleCount, "VAINR_PARAM_WRK_RESIDUAL"},
            {&Tables::getCategoryName, &Tables::categoryCount, "Streaming"},
            {&Tables::getSensorIdName, &Tables::sensorIdCount, "sub6"},
            {&Tables::getSensorFeatureModeName, &Tables::sensorFeatureModeCount, "fc_2exp_mqd14"},
            {&Tables::getSensorExpName, &Tables::sensorExpCount, "MidExp_ShtExp"},
            {&Tables::getExpOdrName, &Tables::expOdrCount, "E1_E2_E3"},
            {&Tables::getDualCamIdName, &Tables::dualCamIdCount, "Slave"},
    };
    for (const Case& c : cases) {
        const int count = static_cast<int>((tables().*c.count)());
        EXPECT_STREQ(c.last, (tables().*c.lookup)(count - 1));
        EXPECT_STREQ("", (tables().*c.lookup)(count)) << c.last;
        EXPECT_STREQ("", (tables().*c.lookup)(-1)) << c.last;
    }
    std::set<std::string> distinct;
    for (int i = 0; i < eModule_NUM; ++i) distinct.insert(tables().getModuleName(i));
    EXPECT_EQ(static_cast<size_t>(eModule_NUM), distinct.size());
    EXPECT_EQ(eModule_LTMSO, tables().findModule("LTMSO"));
    EXPECT_EQ(-1, tables().findModule("ltmso"));
    EXPECT_EQ(2, tables().findSensorId("main2"));
    EXPECT_EQ(-1, tables().findSensorId("main7"));
}

// Each rule is exercised under its name below; here, the list of rules and an unknown name.
TEST(NddTablesTest, RulesAreListedAndAnUnknownNameConvertsNothing) {
    for (size_t i = 0; i < tables().ruleCount(); ++i) {
        EXPECT_NE(nullptr, tables().findRule(tables().getRuleName(i))) << i;
    }
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

// The name pieces of `rules`, one after the other.
std::string expand(const NddData& data, std::initializer_list<const char*> rules) {
    std::string name, piece;
    for (const char* rule : rules) {
        EXPECT_TRUE(tables().convert(rule, data, &piece)) << rule;
        name += piece;
    }
    return name;
}

TEST(NddTablesTest, RulesFormatTheirFields) {
    NddData data = sampleRecord();
    EXPECT_EQ("-p6983-3-ut-PW4000-PH3000-BW5000__4000x2992_10_2_s1_c4_delay3-F2-v7",
              expand(data,
                     {"Platform", "Port", "Action", "UserStr", "Padding", "Plane", "Size", "Bit",
                      "BayerOrder", "Sign", "Cell", "Format", "Delay", "Layer", "Version"}));
    data.userStr = std::string(150, 'u');  // rules format into 100 characters
    EXPECT_EQ("-" + std::string(98, 'u'), tables().ConvertNameRule_UserStr(data));
}

// The rules that name a field through a table, on the sample record with the field changed. The
// optional fields add a bare "-" for a value their table does not name.
TEST(NddTablesTest, RulesNameTheirFieldsOrMarkThemInvalid) {
    struct Case {
        const char* rule;
        int32_t NddData::*field;
        int32_t value;
        const char* expected;
    };
    const Case cases[] = {
            {"Prefix", &NddData::requestNo, 10005, "000001234-0005-0067"},
            {"Prefix", &NddData::frameNo, 20007, "000001234-0005-0007"},
            {"SensorId", &NddData::sensorId, 11, "-sub6"},
            {"SensorId", &NddData::sensorId, 12, "-INVALID_SENSORID"},
            {"SensorId", &NddData::sensorId, -1, "-INVALID_SENSORID"},
            {"Stage", &NddData::stage, 190, "-VAINR_CORE"},
            {"Stage", &NddData::stage, 191, "-INVALID_STAGE"},
            {"Stage", &NddData::stage, -1, "-INVALID_STAGE"},
            {"Feature", &NddData::feature, 52, "-AOV"},
            {"Feature", &NddData::feature, 53, "-INVALID_FEATURE"},
            {"Feature", &NddData::feature, -1, "-INVALID_FEATURE"},
            {"SensorFeatureMode", &NddData::sensorFeatureMode, 16, "-fc_2exp_quad"},
            {"SensorFeatureMode", &NddData::sensorFeatureMode, 28, "-"},
            {"SensorExp", &NddData::sensorExp, 6, "-"},
            {"ExpOdr", &NddData::expOdr, -2, "-"},
            {"DualCamId", &NddData::dualCamId, 1, "-Slave"},
    };
    for (const Case& c : cases) {
        NddData data = sampleRecord();
        data.*c.field = c.value;
        EXPECT_EQ(c.expected, expand(data, {c.rule})) << c.rule << " " << c.value;
    }
}

TEST(NddTablesTest, RecordsWithAndWithoutOptionalFields) {
    const auto rules = {"Prefix",    "SensorId", "SensorFeatureMode", "SensorExp", "ExpOdr",
                        "DualCamId", "Padding"};
    NddData full = sampleRecord();
    EXPECT_EQ("000001234-0005-0067-main-PW4000-PH3000-BW5000", expand(full, rules));
    full.sensorFeatureMode = eSensorFeatureMode_stg_2exp_ne_se;
    full.sensorExp = eSensorExp_ShtExp;
    full.expOdr = eExpOdr_E2;
    full.dualCamId = eDualCamId_Master;
    EXPECT_EQ("000001234-0005-0067-main-stg_2exp_ne_se-ShtExp-E2-Master-PW4000-PH3000-BW5000",
              expand(full, rules));
}

}  // namespace
}  // namespace TuningUtils
}  // namespace NSCam
