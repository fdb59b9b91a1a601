#include "odt/odt_config_reader.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <tuple>

#include "camtune/ndd_tables.h"
#include "odt/odt_line_format.h"

namespace NSCam {
namespace TuningUtils {
namespace odt {
namespace {

using FrameIdentity = std::tuple<int32_t, int32_t, int32_t>;

// Puts the frames in the order their source pipeline frames take in `order`.
std::vector<qel_tuning_cfg_frame> arrange(std::vector<qel_tuning_cfg_frame> frames,
                                          const std::vector<uint32_t>& sourceFrames,
                                          const std::vector<uint32_t>& order) {
    if (order.empty()) return frames;
    std::vector<bool> placed(frames.size(), false);
    std::vector<qel_tuning_cfg_frame> arranged;
    arranged.reserve(frames.size());
    for (uint32_t id : order) {
        for (size_t i = 0; i < frames.size(); ++i) {
            if (!placed[i] && sourceFrames[i] == id) {
                placed[i] = true;
                arranged.push_back(std::move(frames[i]));
                break;
            }
        }
    }
    for (size_t i = 0; i < frames.size(); ++i) {
        if (!placed[i]) arranged.push_back(std::move(frames[i]));
    }
    return arranged;
}

// Runs a line parser, naming the line in the conversion error it may throw.
template <typename Parse>
auto convert(int lineNo, const std::string& line, Parse parse) -> decltype(parse(line)) {
    try {
        return parse(line);
    } catch (const std::invalid_argument&) {
        throw std::invalid_argument("line " + std::to_string(lineNo) +
                                    ": a number field holds no number: " + line);
    } catch (const std::out_of_range&) {
        throw std::out_of_range("line " + std::to_string(lineNo) +
                                ": a number field is out of range: " + line);
    }
}

}  // namespace

ReplayConfig readReplayConfig(std::istream& in, uint32_t sensorId) {
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    ReplayConfig config;
    std::map<FrameIdentity, size_t> frameIndex;
    std::vector<uint32_t> sourceFrames;  // pipeline frame of each configuration frame's first line
    std::string line;
    for (int lineNo = 1; std::getline(in, line); ++lineNo) {
        if (isBlankLine(line)) continue;
        if (isOrderLine(line)) {
            std::vector<uint32_t> ids = convert(lineNo, line, parseOrderLine);
            config.order.insert(config.order.end(), ids.begin(), ids.end());
            continue;
        }
        DataLine data = convert(lineNo, line, parseDataLine);
        if (std::find(config.sensors.begin(), config.sensors.end(), data.sensor) ==
            config.sensors.end()) {
            config.sensors.push_back(data.sensor);
        }
        int id = tables->findSensorId(data.sensor);
        if (id < 0 || static_cast<uint32_t>(id) != sensorId) continue;

        FrameIdentity identity{data.uniqueKey, data.requestNo, data.keyFrameNo};
        auto found = frameIndex.find(identity);
        size_t index;
        if (found == frameIndex.end()) {
            index = config.frames.size();
            frameIndex.emplace(identity, index);
            qel_tuning_cfg_frame frame;
            frame.unique_key = data.uniqueKey;
            frame.request_no = data.requestNo;
            frame.frame_no = data.keyFrameNo;
            config.frames.push_back(std::move(frame));
            sourceFrames.push_back(data.frameNo);
        } else {
            index = found->second;
        }
        std::string key = itemKey(data.module, data.stage, data.feature, streamingStageFallback());
        config.frames[index].items[key] = qel_tuning_cfg_item{data.module, data.file};
    }
    config.frames = arrange(std::move(config.frames), sourceFrames, config.order);
    return config;
}

}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
