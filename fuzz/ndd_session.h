// Setup shared by the NDD targets: the process's NDD started with one writer thread, its
// configuration file at a fixed device path, and the helpers that start a stream and admit a
// streaming frame.
#pragma once

#include <string>
#include <vector>

#include "fuzz_support.h"
#include "ndd/ndd_impl.h"
#include "platform/property_registry.h"

namespace camtune {
namespace fuzz {

inline constexpr char kNddRootPath[] = "/data/vendor/camera_dump/";
inline constexpr char kNddConfigPath[] = "/data/vendor/camera_dump/ndd/ndd.cfg";
inline constexpr unsigned int kNddUniqueKey = 1234;

// Starts NDD once per process. With `directWrite` raw buffers are written on the calling
// thread, so a target can look at the file as soon as the call returns.
inline NSCam::TuningUtils::Ndd* startNdd(bool directWrite) {
    setUpRoot();
    check(props::set(props::kNddThreadCount, "1") == 0 &&
                  props::set(props::kNddRootPath, kNddRootPath) == 0 &&
                  props::set(props::kNddConfigPath, kNddConfigPath) == 0 &&
                  props::set(props::kNddDirectWrite, directWrite ? 1 : 0) == 0 &&
                  props::set(props::kNddSensorDump, "0") == 0,
          "properties");
    check(fs::makePath(kNddRootPath, 0777) == 0, "makePath");
    NSCam::TuningUtils::Ndd* ndd = NSCam::TuningUtils::Ndd::getInstance();
    ndd->init();
    check(ndd->is_enable_ndd() == 1, "NDD did not start");
    return ndd;
}

// Writes the configuration file and starts a stream of `sensorIds`, which reads it.
inline void streamOn(NSCam::TuningUtils::Ndd* ndd, const std::string& config,
                     std::vector<int> sensorIds) {
    writeDeviceFile(kNddConfigPath, reinterpret_cast<const uint8_t*>(config.data()), config.size());
    ndd->stream_on(std::move(sensorIds), kNddUniqueKey);
}

// Starts frame `frameNo` of `sensorId` with one streaming frame to dump. NDD takes
// vendor.debug.ndd.prv_ready only when it changes, so each call sets another count.
inline void beginAdmittedFrame(NSCam::TuningUtils::Ndd* ndd, int sensorId, int frameNo) {
    static int sCount = 1;
    sCount = sCount == 1 ? 2 : 1;
    props::set(props::kNddPreviewReady, sCount);
    ndd->frame_begin(sensorId, frameNo);
}

}  // namespace fuzz
}  // namespace camtune
