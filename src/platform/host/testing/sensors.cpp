// A sensor list a test sets in place of the host's two sensors.
#include <atomic>
#include <mutex>

#include "camtune/platform/sensor_list.h"
#include "camtune/platform/testing.h"
#include "platform/host/sensor_table.h"
#include "platform/host/testing_hooks.h"

namespace NSCam {
namespace host {
namespace {

class TestSensorList : public IHalSensorList {
public:
    uint32_t queryNumberOfSensors() const override {
        std::lock_guard<std::mutex> guard(mLock);
        return static_cast<uint32_t>(mSensors.size());
    }

    uint32_t querySensorDevIdx(uint32_t openId) const override {
        std::lock_guard<std::mutex> guard(mLock);
        return sensorDevOf(mSensors, openId);
    }

    void querySensorStaticInfo(uint32_t sensorDev, SensorStaticInfo* info) const override {
        std::lock_guard<std::mutex> guard(mLock);
        staticInfoOf(mSensors, sensorDev, info);
    }

    void setSensors(const std::vector<HostSensor>& sensors) {
        std::lock_guard<std::mutex> guard(mLock);
        mSensors = sensors;
    }

private:
    mutable std::mutex mLock;
    std::vector<HostSensor> mSensors;
};

// What the library sees: the host's own list, a test list, or none.
enum class Choice { Host, Test, None };
std::atomic<Choice> gChoice{Choice::Host};
std::atomic<bool> gReplaced{false};  // setSensors() was called since the last reset

TestSensorList& testList() {
    // Never destroyed: library threads may still ask during exit.
    static TestSensorList* sList = new TestSensorList();
    return *sList;
}

}  // namespace

void setSensors(const std::vector<HostSensor>& sensors) {
    testList().setSensors(sensors);
    gReplaced.store(true);
    if (gChoice.load() != Choice::None) gChoice.store(Choice::Test);
}

void resetSensors() {
    gReplaced.store(false);
    gChoice.store(Choice::Host);
}

void setSensorListAvailable(bool available) {
    if (!available) {
        gChoice.store(Choice::None);
    } else {
        gChoice.store(gReplaced.load() ? Choice::Test : Choice::Host);
    }
}

}  // namespace host
}  // namespace NSCam

bool camtune_testing_sensor_list(NSCam::IHalSensorList** list) {
    using namespace NSCam::host;
    switch (gChoice.load(std::memory_order_acquire)) {
        case Choice::Host:
            return false;
        case Choice::Test:
            *list = &testList();
            return true;
        case Choice::None:
            *list = nullptr;
            return true;
    }
    return false;
}
