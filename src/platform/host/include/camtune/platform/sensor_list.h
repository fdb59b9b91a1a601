// IHalSensorList: the sensors of the device. On a host, two sensors: open id 0 is device 1
// ("main", colour order 0) and open id 1 is device 2 ("sub", colour order 1); camtune::testing
// can set others.
#pragma once

#include <cstdint>

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

}  // namespace NSCam

CAMTUNE_EXPORT_END
