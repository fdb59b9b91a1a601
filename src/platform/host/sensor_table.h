// Lookups in a table of sensors, shared by the host's sensor list and the one a test sets.
#pragma once

#include <cstdint>

#include "camtune/platform/sensor_list.h"

namespace NSCam {
namespace host {

// `Sensors` is a range of rows with openId, sensorDev and formatOrder.
template <typename Sensors>
uint32_t sensorDevOf(const Sensors& sensors, uint32_t openId) {
    for (const auto& sensor : sensors) {
        if (sensor.openId == openId) return sensor.sensorDev;
    }
    return 0;  // unknown id
}

// Fills `info` for `sensorDev`; leaves it alone for an unknown device.
template <typename Sensors>
void staticInfoOf(const Sensors& sensors, uint32_t sensorDev, SensorStaticInfo* info) {
    if (info == nullptr) return;
    for (const auto& sensor : sensors) {
        if (sensor.sensorDev == sensorDev) {
            info->sensorDevIdx = static_cast<int32_t>(sensor.sensorDev);
            info->sensorFormatOrder = sensor.formatOrder;
            return;
        }
    }
}

}  // namespace host
}  // namespace NSCam
