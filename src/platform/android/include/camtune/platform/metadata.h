// On a device, IMetadata are the camera framework's own, from the framework module Android.bp
// names in camtune_framework (docs/device.md lists what the library uses of them).
#pragma once

#include <camtune_framework/metadata.h>
