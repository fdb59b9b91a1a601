// Names of an item's feature and stage, as configuration keys and log lines spell them.
#pragma once

#include "camtune/naming_vocabulary.h"

namespace NSCam {
namespace TuningUtils {

// "" for an index without a name.
inline const char* nddFeatureName(int feature) {
    return feature >= 0 && feature < NAMING_PIPE_SCENARIO_NUM ? NAMING_PIPE_SCENARIO_CSTR[feature]
                                                              : "";
}

inline const char* nddStageName(int stage) {
    return stage >= 0 && stage < NAMING_STAGE_NUM ? NAMING_STAGE_CSTR[stage] : "";
}

}  // namespace TuningUtils
}  // namespace NSCam
