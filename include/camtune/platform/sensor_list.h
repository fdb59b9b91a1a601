// IHalSensorList: the sensors of the device.
#pragma once

#include <cstdint>
#include <vector>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {

struct SensorStaticInfo {
    int32_t sensorDevIdx = 0;
    int32_t sensorFormatOrder = 0;  // colour-filter order, 0 to 3
};

class IHalSensorList {
public:
    // The process's sensor list, or null when the camera service has none.
    static IHalSensorList* get();

    virtual ~IHalSensorList() = default;
    virtual uint32_t queryNumberOfSensors() const = 0;
    // Sensor device bit (1, 2, 4, ...) of an open id; 0 for an unknown id.
    virtual uint32_t querySensorDevIdx(uint32_t openId) const = 0;
    // Static information of a sensor device; `info` is left alone for an unknown device.
    virtual void querySensorStaticInfo(uint32_t sensorDev, SensorStaticInfo* info) const = 0;
};

// The host's configurable list. By default two sensors: open id 0 is device 1 ("main", colour
// order 0), open id 1 is device 2 ("sub", colour order 1).
namespace host {

struct HostSensor {
    uint32_t openId;
    uint32_t sensorDev;
    int32_t formatOrder;
};

void setSensors(const std::vector<HostSensor>& sensors);
void resetSensors();
// When false, IHalSensorList::get() returns null.
void setSensorListAvailable(bool available);

}  // namespace host
}  // namespace NSCam

CAMTUNE_EXPORT_END
