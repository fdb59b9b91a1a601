// On a device, IImageBuffer, MSize and the image-format codes are the camera framework's own,
// from the framework module Android.bp names in camtune_framework (docs/device.md lists what the
// library uses of them).
#pragma once

#include <camtune_framework/image_buffer.h>
