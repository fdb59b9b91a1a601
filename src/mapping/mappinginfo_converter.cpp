#define LOG_TAG "MappinginfoConverter"

#include "camtune/mappinginfo_converter.h"

#include <iterator>

#include "camtune/naming_vocabulary.h"
#include "camtune/platform/log.h"
#include "mapping/tuning_module_names.h"
#include "platform/property_registry.h"

namespace {

constexpr const char kNotValid[] = "not valid";

struct Dimension {
    NSIspTuning::EDim_T dim;
    const char* const* names;
    unsigned int size;
};

template <size_t N>
constexpr Dimension dimension(NSIspTuning::EDim_T dim, const char* const (&names)[N]) {
    return {dim, names, static_cast<unsigned int>(N)};
}

constexpr Dimension kDimensions[] = {
        dimension(NSIspTuning::EDim_Scenario, NAMING_SCENARIO_CSTR),
        dimension(NSIspTuning::EDim_SensorMode, NAMING_SENSOR_MODE_CSTR),
        dimension(NSIspTuning::EDim_Flash, NAMING_FLASH_CSTR),
        dimension(NSIspTuning::EDim_CaptureType, NAMING_CAPTURE_TYPE_CSTR),
        dimension(NSIspTuning::EDim_App, NAMING_APP_TYPE_CSTR),
        dimension(NSIspTuning::EDim_SensorHdr, NAMING_SENSOR_HDR_CSTR),
        dimension(NSIspTuning::EDim_PipeScenario, NAMING_PIPE_SCENARIO_CSTR),
        dimension(NSIspTuning::EDim_Stage, NAMING_STAGE_CSTR),
};

const Dimension* findDimension(NSIspTuning::EDim_T dim) {
    for (const Dimension& d : kDimensions) {
        if (d.dim == dim) return &d;
    }
    return nullptr;
}

}  // namespace

MappinginfoConverter* MappinginfoConverter::createInstance() {
    // Never destroyed: pipeline threads may still ask for names while the process exits.
    static MappinginfoConverter* sInstance = new MappinginfoConverter();
    return sInstance;
}

MappinginfoConverter::MappinginfoConverter() : enabled(false) {
    enabled = camtune::props::getInt(camtune::props::kMappingInfoConverterEnable) != 0;
}

MappinginfoConverter::~MappinginfoConverter() = default;

bool MappinginfoConverter::isFactorValid(NSIspTuning::EDim_T dim, unsigned int factor,
                                         unsigned int maxNum) {
    const bool valid = factor < maxNum;
    if (!valid && enabled) {
        CAM_LOGD("[%s] dim(%d) factor(%d) exceeds max num(%d)", __func__, static_cast<int>(dim),
                 static_cast<int>(factor), static_cast<int>(maxNum));
    }
    return valid;
}

const char* MappinginfoConverter::factorToString(NSIspTuning::EDim_T dim, unsigned int factor) {
    if (enabled) {
        CAM_LOGD("[%s] dim(%d) factor(%d)", __func__, static_cast<int>(dim),
                 static_cast<int>(factor));
    }
    const Dimension* d = findDimension(dim);
    if (d == nullptr) {
        if (enabled) CAM_LOGD("[%s] dim(%d) not supported", __func__, static_cast<int>(dim));
        return kNotValid;
    }
    return isFactorValid(dim, factor, d->size) ? d->names[factor] : kNotValid;
}

const char* MappinginfoConverter::factorToStringModule(unsigned int module) {
    if (enabled)
        CAM_LOGD("[%s] [factorToStringModule] module(%d)", __func__, static_cast<int>(module));
    return module < camtune::mapping::kTuningModuleCount
                   ? camtune::mapping::NAMING_TUNING_MODULE[module]
                   : kNotValid;
}
