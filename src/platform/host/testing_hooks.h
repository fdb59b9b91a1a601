// Where the host backend meets the camtune_testing library.
//
// Each hook is a weak reference: null unless a program links camtune_testing, which defines it.
// The backend tests the pointer before each use, so a program without the testing library pays
// one comparison, and libcamtune exports nothing for tests.
#pragma once

#include <time.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace NSCam {
class IHalSensorList;
}

#define CAMTUNE_TESTING_HOOK extern "C" __attribute__((weak, visibility("default")))

// True (errno set) when the file operation `op` (a camtune::fs::testing::Op) is to fail now.
CAMTUNE_TESTING_HOOK bool camtune_testing_fs_fails(int op);
// Bytes a write of `size` bytes may write now.
CAMTUNE_TESTING_HOOK size_t camtune_testing_fs_write_limit(size_t size);
// True, with the free space to report, while a test overrides it.
CAMTUNE_TESTING_HOOK bool camtune_testing_fs_free_space(uint64_t* bytes);
// True, with the folder, while a test root is set.
CAMTUNE_TESTING_HOOK bool camtune_testing_fs_root(std::string* root);
// True when the next start of a library thread is to fail.
CAMTUNE_TESTING_HOOK bool camtune_testing_thread_start_fails();
// True, with the time, while a test clock is set.
CAMTUNE_TESTING_HOOK bool camtune_testing_realtime(timespec* now);
// True, with the list (null for none), while a test replaces the sensor list.
CAMTUNE_TESTING_HOOK bool camtune_testing_sensor_list(NSCam::IHalSensorList** list);
