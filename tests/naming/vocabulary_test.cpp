#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "camtune/naming_vocabulary.h"

namespace {

struct VocabularyForms {
    const char* array;
    const std::string* strings;
    const char* const* texts;
    size_t rows;
    size_t expectedRows;
};

#define FORMS(array, expected) \
    { #array, array, array##_CSTR, std::size(array), expected }
const VocabularyForms kVocabularies[] = {
        FORMS(NAMING_SCENARIO, 3),     FORMS(NAMING_APP_TYPE, 45),
        FORMS(NAMING_SIZE_CLASS, 5),   FORMS(NAMING_CAMERA_MODULE, 1),
        FORMS(NAMING_CUSTOM, 10),      FORMS(NAMING_CAPTURE_TYPE, 49),
        FORMS(NAMING_FPS, 8),          FORMS(NAMING_PIPE_SCENARIO, 53),
        FORMS(NAMING_FLASH, 4),        FORMS(NAMING_FLASH_TYPE, 8),
        FORMS(NAMING_LATENCY, 2),      FORMS(NAMING_PROJECT, 1),
        FORMS(NAMING_SENSOR_ID, 6),    FORMS(NAMING_SENSOR_HDR, 28),
        FORMS(NAMING_SENSOR_MODE, 35), FORMS(NAMING_DYNAMIC_RANGE, 2),
        FORMS(NAMING_SIZE_INDEX, 5),   FORMS(NAMING_INDEX_6A, 6),
        FORMS(NAMING_INDEX_10, 10),    FORMS(NAMING_INDEX_3, 3),
        FORMS(NAMING_YES_NO_A, 2),     FORMS(NAMING_INDEX_20, 20),
        FORMS(NAMING_INDEX_6B, 6),     FORMS(NAMING_INDEX_5A, 5),
        FORMS(NAMING_STAGE, 191),      FORMS(NAMING_INDEX_5B, 5),
        FORMS(NAMING_YES_NO_B, 2),
};
#undef FORMS

TEST(NamingVocabulary, BothFormsHoldTheSameRowsAndCount) {
    for (const VocabularyForms& v : kVocabularies) {
        SCOPED_TRACE(v.array);
        EXPECT_EQ(v.rows, v.expectedRows);
        for (size_t i = 0; i < v.rows; ++i) {
            ASSERT_NE(v.texts[i], nullptr) << i;
            EXPECT_EQ(v.strings[i], v.texts[i]) << i;
            EXPECT_FALSE(v.strings[i].empty()) << i;
        }
    }
}

TEST(NamingVocabulary, RowsSitAtTheirIndex) {
    struct Row {
        const char* actual;
        const char* expected;
    } rows[] = {
            {NAMING_SCENARIO_CSTR[2], "Capture"},
            {NAMING_APP_TYPE_CSTR[2], "Normal"},
            {NAMING_APP_TYPE_CSTR[3], "3rd_party"},
            {NAMING_APP_TYPE_CSTR[44], "LOG"},
            {NAMING_SIZE_CLASS_CSTR[4], "SIZE_8K"},
            {NAMING_CUSTOM_CSTR[9], "Custom_09"},
            {NAMING_CAPTURE_TYPE_CSTR[37], "Capture_Test3"},
            {NAMING_CAPTURE_TYPE_CSTR[48], "Capture_RAWNR_SUB"},
            {NAMING_FPS_CSTR[7], "FPS_24"},
            {NAMING_PIPE_SCENARIO_CSTR[45], "NDD_default"},
            {NAMING_PIPE_SCENARIO_CSTR[52], "AOV"},
            {NAMING_FLASH_CSTR[3], "Torch"},
            {NAMING_FLASH_TYPE_CSTR[4], "FLASH_TYPE_REAR_CT_0_PART_1"},
            {NAMING_SENSOR_ID_CSTR[0], "Default"},
            {NAMING_SENSOR_HDR_CSTR[27], "fc_2exp_mqd14"},
            {NAMING_SENSOR_MODE_CSTR[5], "Custom1"},
            {NAMING_SENSOR_MODE_CSTR[34], "Custom30"},
            {NAMING_DYNAMIC_RANGE_CSTR[1], "HDR10P"},
            {NAMING_STAGE_CSTR[7], "AFBLD_F6"},
            {NAMING_STAGE_CSTR[59], "P2_Single"},
            {NAMING_STAGE_CSTR[97], "Camsys_normal"},
            {NAMING_STAGE_CSTR[98], "Camysy_se"},
            {NAMING_STAGE_CSTR[109], "Msf_0"},
            {NAMING_STAGE_CSTR[190], "VAINR_CORE"},
            // enumerators index their rows
            {NAMING_STAGE_CSTR[NAMING_STAGE_Camysy_se], "Camysy_se"},
            {NAMING_APP_TYPE_CSTR[NAMING_APP_TYPE_3rd_party], "3rd_party"},
            {NAMING_PIPE_SCENARIO_CSTR[NAMING_PIPE_SCENARIO_Capture_aishutter2],
             "Capture_aishutter2"},
    };
    for (const Row& row : rows) EXPECT_STREQ(row.actual, row.expected);
}

TEST(NamingVocabulary, GeneratedRowsFollowTheirPattern) {
    struct Generated {
        const char* const* texts;
        size_t rows;
        const char* pattern;
    } generated[] = {
            {NAMING_INDEX_6A_CSTR, NAMING_INDEX_6A_NUM, "IDX_%02zu"},
            {NAMING_INDEX_10_CSTR, NAMING_INDEX_10_NUM, "IDX_%02zu"},
            {NAMING_INDEX_3_CSTR, NAMING_INDEX_3_NUM, "IDX_%02zu"},
            {NAMING_INDEX_20_CSTR, NAMING_INDEX_20_NUM, "IDX_%02zu"},
            {NAMING_INDEX_6B_CSTR, NAMING_INDEX_6B_NUM, "IDX_%02zu"},
            {NAMING_INDEX_5A_CSTR, NAMING_INDEX_5A_NUM, "IDX_%02zu"},
            {NAMING_INDEX_5B_CSTR, NAMING_INDEX_5B_NUM, "IDX_%02zu"},
            {NAMING_SIZE_INDEX_CSTR, NAMING_SIZE_INDEX_NUM, "SIZE_%02zu"},
            {NAMING_CUSTOM_CSTR, NAMING_CUSTOM_NUM, "Custom_%02zu"},
    };
    for (const Generated& g : generated) {
        for (size_t i = 0; i < g.rows; ++i) {
            char expected[32];
            std::snprintf(expected, sizeof(expected), g.pattern, i);
            EXPECT_STREQ(g.texts[i], expected);
        }
    }
    for (size_t i = 1; i < NAMING_SENSOR_ID_NUM; ++i) {
        const std::string& row = NAMING_SENSOR_ID[i];
        ASSERT_GT(row.size(), 10u);
        EXPECT_EQ(row.substr(row.size() - 10), "_SENSOR_ID") << row;
    }
}

}  // namespace
