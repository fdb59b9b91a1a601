// The NDD naming tables and naming rules.
#include "camtune/ndd_tables.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "camtune/naming_vocabulary.h"

namespace NSCam {
namespace TuningUtils {
namespace {

#define CAMTUNE_NDD_TEXT_ROW(row) #row,
constexpr const char* kModuleNames[] = {CAMTUNE_NDD_MODULE_ROWS(CAMTUNE_NDD_TEXT_ROW)};
constexpr const char* kCategoryNames[] = {CAMTUNE_NDD_CATEGORY_ROWS(CAMTUNE_NDD_TEXT_ROW)};
constexpr const char* kSensorIdNames[] = {CAMTUNE_NDD_SENSOR_ID_ROWS(CAMTUNE_NDD_TEXT_ROW)};
constexpr const char* kSensorFeatureModeNames[] = {
        CAMTUNE_NDD_SENSOR_FEATURE_MODE_ROWS(CAMTUNE_NDD_TEXT_ROW)};
constexpr const char* kSensorExpNames[] = {CAMTUNE_NDD_SENSOR_EXP_ROWS(CAMTUNE_NDD_TEXT_ROW)};
constexpr const char* kExpOdrNames[] = {CAMTUNE_NDD_EXP_ODR_ROWS(CAMTUNE_NDD_TEXT_ROW)};
constexpr const char* kDualCamIdNames[] = {CAMTUNE_NDD_DUAL_CAM_ID_ROWS(CAMTUNE_NDD_TEXT_ROW)};
#undef CAMTUNE_NDD_TEXT_ROW

static_assert(sizeof(kModuleNames) / sizeof(kModuleNames[0]) == eModule_NUM);
static_assert(sizeof(kCategoryNames) / sizeof(kCategoryNames[0]) == eCategory_NUM);
static_assert(sizeof(kSensorIdNames) / sizeof(kSensorIdNames[0]) == eSensorId_NUM);

// Every rule, under the name a file-name pattern uses for it.
// clang-format off
#define CAMTUNE_NDD_RULE_ROWS(ROW) \
    ROW(Platform) ROW(Prefix) ROW(SensorId) ROW(Stage) ROW(Feature) ROW(Action) \
    ROW(SensorFeatureMode) ROW(UserStr) ROW(Padding) ROW(Size) ROW(Bit) ROW(BayerOrder) \
    ROW(Sign) ROW(Cell) ROW(Port) ROW(Plane) ROW(Format) ROW(Delay) ROW(Layer) ROW(SensorExp) \
    ROW(ExpOdr) ROW(DualCamId) ROW(Version)
// clang-format on

struct RuleEntry {
    const char* name;
    NddAutoGenExcel2C::ConvertNameRule rule;
};

#define CAMTUNE_NDD_RULE_ENTRY(name) {#name, &NddAutoGenExcel2C::ConvertNameRule_##name},
const RuleEntry kRules[] = {CAMTUNE_NDD_RULE_ROWS(CAMTUNE_NDD_RULE_ENTRY)};
#undef CAMTUNE_NDD_RULE_ENTRY
#undef CAMTUNE_NDD_RULE_ROWS

constexpr size_t kRuleCount = sizeof(kRules) / sizeof(kRules[0]);

// Every rule formats into a buffer of this size, so a longer piece is cut short.
constexpr size_t kRuleBufferSize = 100;

constexpr const char* kInvalidSensorId = "-INVALID_SENSORID";
constexpr const char* kInvalidStage = "-INVALID_STAGE";
constexpr const char* kInvalidFeature = "-INVALID_FEATURE";
constexpr int kNone = -1;

std::string format(const char* fmt, ...) __attribute__((format(printf, 1, 2)));
std::string format(const char* fmt, ...) {
    char buf[kRuleBufferSize];
    va_list args;
    va_start(args, fmt);
    std::vsnprintf(buf, sizeof(buf), fmt, args);
    va_end(args);
    return buf;
}

template <size_t N>
const char* nameAt(const char* const (&table)[N], int value) {
    if (value < 0 || static_cast<size_t>(value) >= N) return "";
    return table[value];
}

template <size_t N>
int indexOf(const char* const (&table)[N], const std::string& name) {
    for (size_t i = 0; i < N; ++i) {
        if (name == table[i]) return static_cast<int>(i);
    }
    return -1;
}

// "-name", or nothing when the field is -1 ("none").
std::string optionalName(const char* name, int value) {
    if (value == kNone) return std::string();
    return format("-%s", name);
}

}  // namespace

NddAutoGenExcel2C* NddAutoGenExcel2C::getInstance() {
    // Never destroyed: writer threads may still name files while the process exits.
    static NddAutoGenExcel2C* sInstance = new NddAutoGenExcel2C();
    return sInstance;
}

size_t NddAutoGenExcel2C::moduleCount() const {
    return eModule_NUM;
}
size_t NddAutoGenExcel2C::categoryCount() const {
    return eCategory_NUM;
}
size_t NddAutoGenExcel2C::sensorIdCount() const {
    return eSensorId_NUM;
}
size_t NddAutoGenExcel2C::sensorFeatureModeCount() const {
    return eSensorFeatureMode_NUM;
}
size_t NddAutoGenExcel2C::sensorExpCount() const {
    return eSensorExp_NUM;
}
size_t NddAutoGenExcel2C::expOdrCount() const {
    return eExpOdr_NUM;
}
size_t NddAutoGenExcel2C::dualCamIdCount() const {
    return eDualCamId_NUM;
}

const char* NddAutoGenExcel2C::getModuleName(int module) const {
    return nameAt(kModuleNames, module);
}
const char* NddAutoGenExcel2C::getCategoryName(int category) const {
    return nameAt(kCategoryNames, category);
}
const char* NddAutoGenExcel2C::getSensorIdName(int sensorId) const {
    return nameAt(kSensorIdNames, sensorId);
}
const char* NddAutoGenExcel2C::getSensorFeatureModeName(int mode) const {
    return nameAt(kSensorFeatureModeNames, mode);
}
const char* NddAutoGenExcel2C::getSensorExpName(int exposure) const {
    return nameAt(kSensorExpNames, exposure);
}
const char* NddAutoGenExcel2C::getExpOdrName(int order) const {
    return nameAt(kExpOdrNames, order);
}
const char* NddAutoGenExcel2C::getDualCamIdName(int role) const {
    return nameAt(kDualCamIdNames, role);
}

int NddAutoGenExcel2C::findModule(const std::string& name) const {
    return indexOf(kModuleNames, name);
}
int NddAutoGenExcel2C::findSensorId(const std::string& name) const {
    return indexOf(kSensorIdNames, name);
}

NddAutoGenExcel2C::ConvertNameRule NddAutoGenExcel2C::findRule(const std::string& name) const {
    for (const RuleEntry& entry : kRules) {
        if (name == entry.name) return entry.rule;
    }
    return nullptr;
}

size_t NddAutoGenExcel2C::ruleCount() const {
    return kRuleCount;
}

const char* NddAutoGenExcel2C::getRuleName(size_t index) const {
    return index < kRuleCount ? kRules[index].name : nullptr;
}

bool NddAutoGenExcel2C::convert(const std::string& name, const NddData& data,
                                std::string* out) const {
    ConvertNameRule rule = findRule(name);
    if (rule == nullptr) return false;
    *out = (this->*rule)(data);
    return true;
}

std::string NddAutoGenExcel2C::ConvertNameRule_Platform(const NddData& data) const {
    return format("-p%d", data.version);
}

std::string NddAutoGenExcel2C::ConvertNameRule_Prefix(const NddData& data) const {
    return format("%09d-%04d-%04d", data.uniqueKey, data.requestNo % 10000, data.frameNo % 10000);
}

std::string NddAutoGenExcel2C::ConvertNameRule_SensorId(const NddData& data) const {
    if (data.sensorId < 0 || data.sensorId >= eSensorId_NUM) return kInvalidSensorId;
    return format("-%s", kSensorIdNames[data.sensorId]);
}

std::string NddAutoGenExcel2C::ConvertNameRule_Stage(const NddData& data) const {
    if (data.stage < 0 || data.stage >= NAMING_STAGE_NUM) return kInvalidStage;
    return format("-%s", NAMING_STAGE_CSTR[data.stage]);
}

std::string NddAutoGenExcel2C::ConvertNameRule_Feature(const NddData& data) const {
    if (data.feature < 0 || data.feature >= NAMING_PIPE_SCENARIO_NUM) return kInvalidFeature;
    return format("-%s", NAMING_PIPE_SCENARIO_CSTR[data.feature]);
}

// Actions have no name table of their own; the pipeline's action number is the name.
std::string NddAutoGenExcel2C::ConvertNameRule_Action(const NddData& data) const {
    return format("-%d", data.action);
}

std::string NddAutoGenExcel2C::ConvertNameRule_SensorFeatureMode(const NddData& data) const {
    return optionalName(getSensorFeatureModeName(data.sensorFeatureMode), data.sensorFeatureMode);
}

std::string NddAutoGenExcel2C::ConvertNameRule_UserStr(const NddData& data) const {
    return format("-%s", data.userStr.c_str());
}

std::string NddAutoGenExcel2C::ConvertNameRule_Padding(const NddData& data) const {
    return format("-PW%d-PH%d-BW%d", data.paddedWidth, data.paddedHeight, data.bufferWidth);
}

std::string NddAutoGenExcel2C::ConvertNameRule_Size(const NddData& data) const {
    return format("__%dx%d", data.width, data.height);
}

std::string NddAutoGenExcel2C::ConvertNameRule_Bit(const NddData& data) const {
    return format("_%d", data.bitDepth);
}

std::string NddAutoGenExcel2C::ConvertNameRule_BayerOrder(const NddData& data) const {
    return format("_%d", data.bayerOrder);
}

std::string NddAutoGenExcel2C::ConvertNameRule_Sign(const NddData& data) const {
    return format("_s%d", data.sign);
}

std::string NddAutoGenExcel2C::ConvertNameRule_Cell(const NddData& data) const {
    return format("_c%d", data.cell);
}

// Port, plane and format add nothing here: the file-name builder inserts the image format itself.
std::string NddAutoGenExcel2C::ConvertNameRule_Port(const NddData&) const {
    return std::string();
}

std::string NddAutoGenExcel2C::ConvertNameRule_Plane(const NddData&) const {
    return std::string();
}

std::string NddAutoGenExcel2C::ConvertNameRule_Format(const NddData&) const {
    return std::string();
}

std::string NddAutoGenExcel2C::ConvertNameRule_Delay(const NddData& data) const {
    return format("_delay%d", data.delay);
}

std::string NddAutoGenExcel2C::ConvertNameRule_Layer(const NddData& data) const {
    return format("-F%d", data.layer);
}

std::string NddAutoGenExcel2C::ConvertNameRule_SensorExp(const NddData& data) const {
    return optionalName(getSensorExpName(data.sensorExp), data.sensorExp);
}

std::string NddAutoGenExcel2C::ConvertNameRule_ExpOdr(const NddData& data) const {
    return optionalName(getExpOdrName(data.expOdr), data.expOdr);
}

std::string NddAutoGenExcel2C::ConvertNameRule_DualCamId(const NddData& data) const {
    return optionalName(getDualCamIdName(data.dualCamId), data.dualCamId);
}

std::string NddAutoGenExcel2C::ConvertNameRule_Version(const NddData& data) const {
    return format("-v%d", data.ruleVersion);
}

}  // namespace TuningUtils
}  // namespace NSCam
