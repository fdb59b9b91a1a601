// The host's sensor list: a configurable table, two sensors by default.
#include "camtune/platform/sensor_list.h"

#include <atomic>
#include <mutex>

namespace NSCam {
namespace {

const std::vector<host::HostSensor> kDefaultSensors = {
        {0, 1, 0},  // open id 0: main, colour order 0
        {1, 2, 1},  // open id 1: sub, colour order 1
};

class HostSensorList : public IHalSensorList {
public:
    uint32_t queryNumberOfSensors() const override {
        std::lock_guard<std::mutex> guard(mLock);
        return static_cast<uint32_t>(mSensors.size());
    }

    uint32_t querySensorDevIdx(uint32_t openId) const override {
        std::lock_guard<std::mutex> guard(mLock);
        for (const auto& sensor : mSensors) {
            if (sensor.openId == openId) return sensor.sensorDev;
        }
        return 0;
    }

    void querySensorStaticInfo(uint32_t sensorDev, SensorStaticInfo* info) const override {
        if (info == nullptr) return;
        std::lock_guard<std::mutex> guard(mLock);
        for (const auto& sensor : mSensors) {
            if (sensor.sensorDev == sensorDev) {
                info->sensorDevIdx = static_cast<int32_t>(sensor.sensorDev);
                info->sensorFormatOrder = sensor.formatOrder;
                return;
            }
        }
    }

    void setSensors(const std::vector<host::HostSensor>& sensors) {
        std::lock_guard<std::mutex> guard(mLock);
        mSensors = sensors;
    }

    std::atomic<bool> mAvailable{true};

private:
    mutable std::mutex mLock;
    std::vector<host::HostSensor> mSensors = kDefaultSensors;
};

HostSensorList& hostList() {
    static HostSensorList* sList = new HostSensorList();
    return *sList;
}

}  // namespace

IHalSensorList* IHalSensorList::get() {
    HostSensorList& list = hostList();
    return list.mAvailable.load(std::memory_order_acquire) ? &list : nullptr;
}

namespace host {

void setSensors(const std::vector<HostSensor>& sensors) {
    hostList().setSensors(sensors);
}

void resetSensors() {
    hostList().setSensors(kDefaultSensors);
    setSensorListAvailable(true);
}

void setSensorListAvailable(bool available) {
    hostList().mAvailable.store(available, std::memory_order_release);
}

}  // namespace host
}  // namespace NSCam
