// Stand-in for the camera framework in the Android.bp check: the host's types, which declare
// exactly what the library uses.
#pragma once

#include "../../../../src/platform/host/include/camtune/platform/sensor_list.h"
