// Readable names of tuning mapping-info factors and tuning modules, for logs and records.
#pragma once

#include <cstdint>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace NSIspTuning {

// Dimensions of a tuning mapping info. Only those with a name table are listed; the others are
// the tuning framework's and have no names here.
enum EDim_T : int32_t {
    EDim_Scenario = 1,
    EDim_SensorMode = 2,
    EDim_Flash = 3,
    EDim_CaptureType = 4,
    EDim_App = 5,
    EDim_SensorHdr = 10,
    EDim_PipeScenario = 11,
    EDim_Stage = 15,
};

}  // namespace NSIspTuning

class MappinginfoConverter {
public:
    // The process's one converter, created on the first call from any thread.
    static MappinginfoConverter* createInstance();

    MappinginfoConverter();
    ~MappinginfoConverter();
    MappinginfoConverter(const MappinginfoConverter&) = delete;
    MappinginfoConverter& operator=(const MappinginfoConverter&) = delete;

    bool isFactorValid(NSIspTuning::EDim_T dim, unsigned int factor, unsigned int maxNum);
    // Name of `factor` in dimension `dim`, or "not valid". Never null; never to be freed.
    const char* factorToString(NSIspTuning::EDim_T dim, unsigned int factor);
    // Name of tuning module `module`, or "not valid".
    const char* factorToStringModule(unsigned int module);

    // Whether debug messages are on (read once, when the instance was made).
    bool isEnabled() const { return enabled; }

private:
    bool enabled;
};

CAMTUNE_EXPORT_END
