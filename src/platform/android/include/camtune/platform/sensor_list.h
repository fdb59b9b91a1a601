// On a device, IHalSensorList and SensorStaticInfo are the camera framework's own, from the
// framework module Android.bp names in camtune_framework (docs/device.md lists what the library
// uses of them).
#pragma once

#include <camtune_framework/sensor_list.h>
