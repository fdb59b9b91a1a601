// The pieces of dump-file names that map a code to a fixed text.
#pragma once

#include <cstdint>

namespace camtune {
namespace naming {

// Where every dump of the pipeline goes; names start with it.
inline constexpr const char kDumpRoot[] = "/data/vendor/camera_dump";

// Name of a sensor device bit ("main", "sub", ...; "sensor" for any other value).
const char* sensorName(int32_t sensorDev);

// Port pieces, hyphen included; "-undef" for a value without a piece. The "none" values
// (RAW_PORT_NULL, YUV_PORT_NULL) are the caller's to leave out.
const char* rawPortPiece(int32_t port);
const char* yuvPortPiece(int32_t port);

// Colour-filter order element of raw names ("0" to "3", else "senfmt").
const char* colourOrderName(int32_t sensorFormatOrder);

// Exposure label of a multi-exposure frame selector (3 to 5), or null.
const char* exposureLabel(int32_t selector);

// Profile element used when the ISP profile has no readable name.
inline constexpr const char kNoProfileElement[] = "-profile";

}  // namespace naming
}  // namespace camtune
