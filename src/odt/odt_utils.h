// OdtUtils: the per-sensor on-device tuning instance behind IOdtUtils.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "camtune/odt.h"

namespace NSCam {
namespace TuningUtils {

class OdtUtils : public IOdtUtils {
public:
    // A configuration frame keeps at most this many bound pipeline frames, dropping the oldest.
    static constexpr size_t kMaxBoundFrames = 256;

    explicit OdtUtils(uint32_t sensorId);

    bool is_enable() override;
    bool is_enable(eModule module, int stage, int index, int feature) override;
    bool is_enable(unsigned int frameNo, eModule module, int stage, int feature,
                   int sensorId) override;
    void stream_on() override;
    void stream_off() override;
    void frame_begin(unsigned int frameNo) override;
    void frame_end(unsigned int frameNo) override;
    qel_tuning_cfg_prefix get_cfg_prefix(unsigned int frameNo) override;
    std::string get_cfg_info(unsigned int frameNo, eModule module, int stage, int feature,
                             int sensorId) override;
    std::string get_cfg_info(eModule module, int stage, unsigned int index, int feature,
                             int sensorId) override;
    void create_config_file(unsigned int uniqueKey) override;
    void write_frame_data(std::string module, unsigned int frameNo, std::string sensor, int stage,
                          int feature, std::string file) override;
    void write_frame_end(unsigned int frameNo) override;
    void write_frame_order(std::vector<unsigned int> order) override;
    void readProperty() override;
    void parsingFile() override;
    void write_info(std::string text) override;

    // Snapshots for inspection by tests and tools.
    std::vector<qel_tuning_cfg_frame> configFrames() const;
    std::vector<uint32_t> frameOrder() const;
    std::string dumpinPath() const;

private:
    // The configuration frame `frameNo` is bound to, or null. Needs mLock.
    const qel_tuning_cfg_frame* boundFrameLocked(uint32_t frameNo) const;
    // The item under `key` of configuration frame `frame` (null allowed), or null. Needs mLock.
    static const qel_tuning_cfg_item* findItem(const qel_tuning_cfg_frame* frame, const char* key);
    struct AppendResult {
        enum Outcome { Skipped, OpenFailed, WriteFailed, Done } outcome = Skipped;
        int error = 0;  // errno of a failure
    };
    // Appends `text` to `path`. Logs nothing, so it can run under mFileLock.
    static AppendResult append(const std::string& path, const std::string& text);
    // Logs the outcome of an append under `caller`; `line` is what was written.
    static void report(const AppendResult& result, const char* caller, std::string_view line);
    // True when the kept dump-in path names a file. Needs mFileLock.
    bool hasDumpinPathLocked() const;
    // A negative sensor id means "this instance's sensor".
    bool isOwnSensor(int sensorId) const;

    const uint32_t mSensorId;
    // Flags are read without the lock by the disabled fast paths.
    std::atomic<bool> mEnable{false};
    std::atomic<bool> mStreaming{false};

    mutable std::mutex mLock;   // guards the replay state below
    int32_t mRepeatCount = 0;   // passes over the configuration frames still to replay
    uint32_t mFrameCursor = 0;  // configuration frame the next pipeline frame binds to
    uint64_t mPassesDone = 0;   // passes finished, numbering the property writes
    std::string mConfigPath;
    std::vector<qel_tuning_cfg_frame> mFrames;
    std::vector<uint32_t> mFrameOrder;

    std::mutex mPropertyLock;  // orders the repeat-count property writes
    uint64_t mPassWritten = 0;

    mutable std::mutex mFileLock;  // guards the dump-in list and the appends to it
    std::string mDumpinPath;
};

}  // namespace TuningUtils
}  // namespace NSCam
