// The host's sensor list: two sensors, unless a test has set others.
#include "camtune/platform/sensor_list.h"

#include <cstddef>

#include "platform/host/sensor_table.h"
#include "platform/host/testing_hooks.h"

namespace NSCam {
namespace {

struct Sensor {
    uint32_t openId;
    uint32_t sensorDev;
    int32_t formatOrder;
};

constexpr Sensor kSensors[] = {
        {0, 1, 0},  // open id 0: main, colour order 0
        {1, 2, 1},  // open id 1: sub, colour order 1
};

// The built-in two sensors.
class DefaultSensorList : public IHalSensorList {
public:
    uint32_t queryNumberOfSensors() const override {
        return static_cast<uint32_t>(sizeof(kSensors) / sizeof(kSensors[0]));
    }

    uint32_t querySensorDevIdx(uint32_t openId) const override {
        return host::sensorDevOf(kSensors, openId);
    }

    void querySensorStaticInfo(uint32_t sensorDev, SensorStaticInfo* info) const override {
        host::staticInfoOf(kSensors, sensorDev, info);
    }
};

// The list get() hands out, once for the process as a device's is: each query goes to a test's
// list while one is set, so a caller that kept the pointer sees the change.
class HostSensorList : public IHalSensorList {
public:
    uint32_t queryNumberOfSensors() const override { return source()->queryNumberOfSensors(); }
    uint32_t querySensorDevIdx(uint32_t openId) const override {
        return source()->querySensorDevIdx(openId);
    }
    void querySensorStaticInfo(uint32_t sensorDev, SensorStaticInfo* info) const override {
        source()->querySensorStaticInfo(sensorDev, info);
    }

private:
    const IHalSensorList* source() const {
        IHalSensorList* testList = nullptr;
        if (camtune_testing_sensor_list != nullptr && camtune_testing_sensor_list(&testList) &&
            testList != nullptr) {
            return testList;
        }
        return &mDefault;
    }

    DefaultSensorList mDefault;
};

}  // namespace

IHalSensorList* IHalSensorList::get() {
    IHalSensorList* testList = nullptr;
    if (camtune_testing_sensor_list != nullptr && camtune_testing_sensor_list(&testList) &&
        testList == nullptr) {
        return nullptr;  // a test has withdrawn the list
    }
    // Never destroyed: pipeline threads may still ask during exit.
    static HostSensorList* sList = new HostSensorList();
    return sList;
}

}  // namespace NSCam
