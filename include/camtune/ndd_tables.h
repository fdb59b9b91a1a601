// The NDD naming tables: the names of modules, categories, sensors, sensor feature modes,
// exposures, exposure orders and dual-camera roles, and the naming rules that a dump-file
// pattern refers to by name ("[Prefix][SensorId][Padding]").
//
// The tables are fixed data built into the library; the instance is read-only and safe to use
// from any thread.
#pragma once

#include <cstddef>
#include <string>

#include "camtune/export.h"
#include "camtune/ndd.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {
namespace TuningUtils {

class NddAutoGenExcel2C {
public:
    // One naming rule: the piece of a file name that one or a few fields of a record make.
    using ConvertNameRule = std::string (NddAutoGenExcel2C::*)(const NddData&) const;

    static NddAutoGenExcel2C* getInstance();

    NddAutoGenExcel2C(const NddAutoGenExcel2C&) = delete;
    NddAutoGenExcel2C& operator=(const NddAutoGenExcel2C&) = delete;

    // Row counts; a value at or beyond the count has no name.
    size_t moduleCount() const;
    size_t categoryCount() const;
    size_t sensorIdCount() const;
    size_t sensorFeatureModeCount() const;
    size_t sensorExpCount() const;
    size_t expOdrCount() const;
    size_t dualCamIdCount() const;

    // Names by value; "" for a value without a name (negative or beyond the count).
    const char* getModuleName(int module) const;
    const char* getCategoryName(int category) const;
    const char* getSensorIdName(int sensorId) const;
    const char* getSensorFeatureModeName(int mode) const;
    const char* getSensorExpName(int exposure) const;
    const char* getExpOdrName(int order) const;
    const char* getDualCamIdName(int role) const;

    // Values by name, the inverse of the above; -1 for a name not in the table.
    int findModule(const std::string& name) const;
    int findSensorId(const std::string& name) const;

    // The rule registered under `name` ("Prefix", "Size", ...), or null.
    ConvertNameRule findRule(const std::string& name) const;
    size_t ruleCount() const;
    // Name of the rule at `index` in registration order, or null beyond ruleCount().
    const char* getRuleName(size_t index) const;
    // Applies the rule called `name` to `data` into `out`; false (and `out` untouched) when no
    // rule has that name.
    bool convert(const std::string& name, const NddData& data, std::string* out) const;

    std::string ConvertNameRule_Platform(const NddData& data) const;
    std::string ConvertNameRule_Prefix(const NddData& data) const;
    std::string ConvertNameRule_SensorId(const NddData& data) const;
    std::string ConvertNameRule_Stage(const NddData& data) const;
    std::string ConvertNameRule_Feature(const NddData& data) const;
    std::string ConvertNameRule_Action(const NddData& data) const;
    std::string ConvertNameRule_SensorFeatureMode(const NddData& data) const;
    std::string ConvertNameRule_UserStr(const NddData& data) const;
    std::string ConvertNameRule_Padding(const NddData& data) const;
    std::string ConvertNameRule_Size(const NddData& data) const;
    std::string ConvertNameRule_Bit(const NddData& data) const;
    std::string ConvertNameRule_BayerOrder(const NddData& data) const;
    std::string ConvertNameRule_Sign(const NddData& data) const;
    std::string ConvertNameRule_Cell(const NddData& data) const;
    std::string ConvertNameRule_Port(const NddData& data) const;
    std::string ConvertNameRule_Plane(const NddData& data) const;
    std::string ConvertNameRule_Format(const NddData& data) const;
    std::string ConvertNameRule_Delay(const NddData& data) const;
    std::string ConvertNameRule_Layer(const NddData& data) const;
    std::string ConvertNameRule_SensorExp(const NddData& data) const;
    std::string ConvertNameRule_ExpOdr(const NddData& data) const;
    std::string ConvertNameRule_DualCamId(const NddData& data) const;
    std::string ConvertNameRule_Version(const NddData& data) const;

private:
    NddAutoGenExcel2C() = default;
    ~NddAutoGenExcel2C() = default;
};

}  // namespace TuningUtils
}  // namespace NSCam

CAMTUNE_EXPORT_END
