// Reading a replay configuration into configuration frames.
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "camtune/odt.h"

namespace NSCam {
namespace TuningUtils {
namespace odt {

struct ReplayConfig {
    // Configuration frames of the sensor, in binding order.
    std::vector<qel_tuning_cfg_frame> frames;
    // Every id of every "order:" line, in file order.
    std::vector<uint32_t> order;
    // Distinct sensor names of the data lines, in order of first appearance.
    std::vector<std::string> sensors;
};

// Reads the lines of `in` for sensor `sensorId`; lines of other sensors are dropped. A data line
// adds its item to the configuration frame named by its file's key (a later item with the same
// item key replaces an earlier one). Frames are bound in the order of the "order:" ids, each id
// taking the first remaining frame dumped from that pipeline frame; frames no id names follow in
// file order. Throws as parseDataLine and parseOrderLine do.
ReplayConfig readReplayConfig(std::istream& in, uint32_t sensorId);

}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
