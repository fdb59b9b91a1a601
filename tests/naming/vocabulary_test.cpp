#include <gtest/gtest.h>

#include <string>

#include "camtune/naming_vocabulary.h"

namespace camtune {
namespace test {
const std::string* stageNamesOfAnotherFile();
}  // namespace test
}  // namespace camtune

namespace {

struct VocabularyForms {
    const char* array;
    const std::string* strings;
    const char* const* texts;
    size_t rows;
};

#define FORMS(array, expected) \
    { #array, array, array##_CSTR, std::size(array) }
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
        for (size_t i = 0; i < v.rows; ++i) EXPECT_EQ(v.strings[i], v.texts[i]) << i;
    }
}

TEST(NamingVocabulary, EveryIncludingFileOwnsItsCopy) {
    const std::string* other = camtune::test::stageNamesOfAnotherFile();
    EXPECT_NE(other, NAMING_STAGE);
    for (size_t i = 0; i < std::size(NAMING_STAGE); ++i) EXPECT_EQ(other[i], NAMING_STAGE[i]);
    EXPECT_NE(&NAMING_SCENARIO[0], &NAMING_PIPE_SCENARIO[0]);
    EXPECT_EQ(NAMING_SCENARIO[0], NAMING_PIPE_SCENARIO[0]);
}

}  // namespace
