// camtune::testing: seams for tests of pipeline code on a host.
//
// Link the camtune_testing library (CMake target camtune::testing) to use these. They make the
// library's file operations fail, its thread starts fail, its wall clock stand still and its
// sensor list change, without filling a disk or revoking permissions. The library itself carries
// none of this: on a device none of it exists, and on a host it costs one pointer test per call
// while the testing library is not linked.
#pragma once

#include <time.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace camtune {
namespace fs {
namespace testing {

enum class Op { Open, Write, Read, Fsync, Fopen, Mkdir, Stat, Statvfs, Opendir, Unlink, Rename };

// After `passes` more calls of `op` succeed, the next `count` calls fail with `err` (errno)
// without touching the file system.
void failNext(Op op, int count, int err, int passes = 0);
// The next `count` writes write at most `bytes` bytes each, as a write to a nearly full disk or
// an interrupted one may; the caller must write the rest.
void shortenNextWrites(int count, size_t bytes);
// statvfs reports `bytes` of free and available space until clearFreeSpace().
void setFreeSpace(uint64_t bytes);
void clearFreeSpace();
// Removes every armed fault and the free-space override.
void reset();

// A folder that absolute device paths are resolved under, in place of CAMTUNE_ROOT ("" or null
// goes back to CAMTUNE_ROOT). A test gives each case a fresh one.
void setRoot(const char* root);
// The test root, "" when none is set. The library opens the device path "/a/b" as root + "/a/b".
std::string root();

}  // namespace testing
}  // namespace fs

namespace thread {
namespace testing {

// After `passes` more starts of the library's own threads succeed, the next `count` fail as
// they would when the process has no threads left (count 0 disarms).
void failNextStarts(int count, int passes = 0);

}  // namespace testing
}  // namespace thread

namespace clock {
namespace testing {

// From now on the library's wall clock reports `now`, moved on only by advance().
void setRealtime(timespec now);
void advance(int seconds);
// Back to the system clock.
void reset();

}  // namespace testing
}  // namespace clock
}  // namespace camtune

namespace NSCam {
namespace host {

// One sensor of the host's list.
struct HostSensor {
    uint32_t openId;
    uint32_t sensorDev;
    int32_t formatOrder;
};

// Replaces the host's sensor list (by default two sensors: open id 0 is device 1, colour order
// 0; open id 1 is device 2, colour order 1).
void setSensors(const std::vector<HostSensor>& sensors);
// Back to the default list, available.
void resetSensors();
// When false, IHalSensorList::get() returns null, as on a device without a camera service.
void setSensorListAvailable(bool available);

}  // namespace host
}  // namespace NSCam
