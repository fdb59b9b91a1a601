// A pipeline developer's host test: links the installed shared library and camtune::testing,
// and reaches into the library's file operations and sensor list through the seams. Exits
// non-zero when a seam does not take effect inside libcamtune.
#include <camtune/platform/file_cache.h>
#include <camtune/platform/host_image_buffer.h>
#include <camtune/platform/sensor_list.h>
#include <camtune/platform/testing.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

int check(bool ok, const char* what) {
    if (!ok) std::fprintf(stderr, "camtune_consumer_test: %s\n", what);
    return ok ? 0 : 1;
}

}  // namespace

int main() {
    namespace faults = camtune::fs::testing;
    int failures = 0;

    char folder[] = "/tmp/camtune-consumer-XXXXXX";
    if (::mkdtemp(folder) == nullptr) return check(false, "mkdtemp failed");
    faults::setRoot(folder);
    {
        auto file = NSCam::IFileCache::open("/reg.bin");
        failures += check(file->isOpen() && file->write("abc", 3) == 3, "file cache write failed");
    }
    std::ifstream landed(std::string(folder) + "/reg.bin");
    failures += check(landed.good(), "the test root did not reach the library");

    faults::failNext(faults::Op::Open, 1, ENOSPC);
    failures += check(!NSCam::IFileCache::open("/other.bin")->isOpen(),
                      "an armed open fault did not reach the library");
    faults::reset();

    NSCam::host::setSensors({{0, 8, 2}});
    NSCam::IHalSensorList* list = NSCam::IHalSensorList::get();
    failures += check(list != nullptr && list->querySensorDevIdx(0) == 8,
                      "the test sensor list did not reach the library");
    NSCam::host::setSensorListAvailable(false);
    failures += check(NSCam::IHalSensorList::get() == nullptr, "the sensor list was not withdrawn");
    NSCam::host::resetSensors();

    auto buffer = NSCam::HostImageBuffer::create(NSCam::eImgFmt_NV21, {64, 48});
    failures += check(buffer != nullptr && buffer->getPlaneCount() == 2, "host image buffer");

    faults::setRoot(nullptr);
    std::remove((std::string(folder) + "/reg.bin").c_str());
    ::rmdir(folder);
    if (failures == 0) std::printf("camtune_consumer_test: ok\n");
    return failures == 0 ? 0 : 1;
}
