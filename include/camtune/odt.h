// On-device tuning (ODT): replays chosen tuning files into chosen frames of a running stream,
// and writes the dump-in configuration file that such a replay reads.
//
// One instance per sensor. A replay configuration (property vendor.debug.odt.config) lists
// configuration frames; each frame holds items, one file per module, stage and feature. While a
// replay is active, frame_begin binds the configuration frames to consecutive pipeline frames
// round-robin, and the lookups answer which file a module of a pipeline frame reads. The file
// formats are described in docs/odt.md.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "camtune/export.h"
#include "camtune/ndd.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {
namespace TuningUtils {

// One item of a configuration frame: the module and the file it reads.
struct qel_tuning_cfg_item {
    std::string module;
    std::string file;
};

// One configuration frame: its items by item key ("feature,stage,module"), the identity a
// pipeline frame bound to it stands for, and the pipeline frames bound to it so far (oldest
// first, at most 256).
struct qel_tuning_cfg_frame {
    std::map<std::string, qel_tuning_cfg_item, std::less<>> items;
    int32_t unique_key = 0;
    int32_t request_no = 0;
    int32_t frame_no = 0;
    std::vector<uint32_t> sw_frame_ids;
};

// Result of get_cfg_prefix.
enum OdtCfgPrefixStatus : int32_t {
    OdtCfgPrefix_Found = 0,     // the frame is bound; the identity is filled
    OdtCfgPrefix_NotFound = 1,  // frames are bound, but not this one
    OdtCfgPrefix_Inactive = 2,  // replay off, or nothing bound yet
};

struct qel_tuning_cfg_prefix {
    int32_t unique_key = 0;
    int32_t request_no = 0;
    int32_t frame_no = 0;
    int32_t status = OdtCfgPrefix_Inactive;
};

// The lookups take the item's stage and feature indices (the vocabulary's NAMING_STAGE and
// NAMING_PIPE_SCENARIO); an index without a name is looked up under a fallback name. Where a
// form takes a sensor id, a non-negative id other than the instance's sensor finds nothing.
class IOdtUtils {
public:
    // The instance of `sensorId`, created (with its properties read) on first request.
    static std::shared_ptr<IOdtUtils> getInstance(unsigned int sensorId);

    virtual ~IOdtUtils() = default;

    virtual bool is_enable() = 0;
    // Capture: whether configuration frame `index` has an item for the module.
    virtual bool is_enable(eModule module, int stage, int index, int feature) = 0;
    // Streaming: whether the configuration frame bound to `frameNo` has an item for the module.
    virtual bool is_enable(unsigned int frameNo, eModule module, int stage, int feature,
                           int sensorId) = 0;
    // Reads the properties and, when enabled, the replay configuration (parsingFile, whose
    // exceptions pass through).
    virtual void stream_on() = 0;
    // Ends the replay: disabled, cursor and repeat count 0; the configuration frames stay.
    virtual void stream_off() = 0;
    virtual void frame_begin(unsigned int frameNo) = 0;
    virtual void frame_end(unsigned int frameNo) = 0;
    // Identity (unique key, request and frame number) that pipeline frame `frameNo` stands for.
    virtual qel_tuning_cfg_prefix get_cfg_prefix(unsigned int frameNo) = 0;
    // Streaming: the file the module of pipeline frame `frameNo` reads, or "".
    virtual std::string get_cfg_info(unsigned int frameNo, eModule module, int stage, int feature,
                                     int sensorId) = 0;
    // Capture: the file the module of configuration frame `index` reads, or "".
    virtual std::string get_cfg_info(eModule module, int stage, unsigned int index, int feature,
                                     int sensorId) = 0;
    // Creates (or empties) the dump-in configuration file of stream `uniqueKey`.
    virtual void create_config_file(unsigned int uniqueKey) = 0;
    // Appends "module,frameNo,sensor,stage,feature;file" to the dump-in configuration file.
    virtual void write_frame_data(std::string module, unsigned int frameNo, std::string sensor,
                                  int stage, int feature, std::string file) = 0;
    virtual void write_frame_end(unsigned int frameNo) = 0;
    // Appends "order:" and the ids, each after a blank, to the dump-in configuration file.
    virtual void write_frame_order(std::vector<unsigned int> order) = 0;
    virtual void readProperty() = 0;
    // Reads the replay configuration. A number field that is not a number throws
    // std::invalid_argument or std::out_of_range and leaves the configuration as it was.
    virtual void parsingFile() = 0;
    // Appends a line of text to the dump-in configuration file's log ("<path>_log").
    virtual void write_info(std::string text) = 0;
};

}  // namespace TuningUtils
}  // namespace NSCam

CAMTUNE_EXPORT_END
