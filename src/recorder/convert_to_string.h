// Names of decisions, recorder modules and stages, as record lines print them.
#pragma once

#include <cstdint>

#include "camtune/scenario_recorder.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

class ConvertToString {
public:
    static ConvertToString* getInstance();

    // "noModuleName" for an id without a name.
    const char* getModuleName(int moduleId) const;
    // "noDecisionName" for a value without a name.
    const char* getDecisionName(DecisionType decision) const;
    // "INVALID_STAGE" above 190 (negative values count as above); otherwise the mapping-info
    // converter's stage name.
    const char* getStageName(int stage) const;

private:
    ConvertToString() = default;
};

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
