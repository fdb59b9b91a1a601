#define LOG_TAG "OdtUtils"

#include "odt/odt_utils.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <map>
#include <memory>
#include <string_view>

#include "camtune/ndd_tables.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"
#include "camtune/platform/properties.h"
#include "odt/odt_config_reader.h"
#include "odt/odt_line_format.h"
#include "platform/property_registry.h"

namespace NSCam {
namespace TuningUtils {
namespace {

namespace fs = camtune::fs;
namespace props = camtune::props;

}  // namespace

OdtUtils::OdtUtils(uint32_t sensorId) : mSensorId(sensorId) {}

bool OdtUtils::isOwnSensor(int sensorId) const {
    return sensorId < 0 || static_cast<uint32_t>(sensorId) == mSensorId;
}

void OdtUtils::readProperty() {
    int32_t sensor = props::getInt(props::kOdtSensorId);
    bool enable = props::getInt(props::kOdtEnable) != 0;
    bool streaming = props::getInt(props::kOdtStreaming) != 0;
    int32_t start = props::getInt(props::kOdtStart);
    {
        std::lock_guard<std::mutex> guard(mLock);
        mRepeatCount = start;
    }
    mEnable.store(enable);
    mStreaming.store(streaming);
    CAM_LOGI("[%s] sensor(%d) : enable(%d),straming(%d),start_count(%d)", __func__, sensor, enable,
             streaming, start);
}

void OdtUtils::parsingFile() {
    char path[NSCam::Utils::Properties::kPropertyValueMax];
    props::getString(props::kOdtConfigPath, path);
    odt::ReplayConfig config;
    std::ifstream in = fs::openInput(path);
    if (!in) {
        CAM_LOGE("[%s] cannot open the replay configuration \"%s\"", __func__, path);
    } else {
        try {
            config = odt::readReplayConfig(in, mSensorId);
        } catch (const std::exception& e) {
            CAM_LOGE("[%s] %s: %s; configuration left as it was", __func__, path, e.what());
            throw;
        }
    }
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    for (const std::string& sensor : config.sensors) {
        int id = tables->findSensorId(sensor);
        if (id < 0 || static_cast<uint32_t>(id) != mSensorId) {
            CAM_LOGD("[%s] earse sensor_list[%d]=%s", __func__, id, sensor.c_str());
        }
    }
    for (size_t i = 0; i < config.frames.size(); ++i) {
        for (const auto& [key, item] : config.frames[i].items) {
            CAM_LOGD("[%s] m_cfg_frames[%d].items[%s]->module=%s, file=%s", __func__,
                     static_cast<int>(i), key.c_str(), item.module.c_str(), item.file.c_str());
        }
    }
    int frameCount = static_cast<int>(config.frames.size());
    {
        std::lock_guard<std::mutex> guard(mLock);
        mConfigPath = path;
        mFrames = std::move(config.frames);
        mFrameOrder = std::move(config.order);
        mFrameCursor = 0;
    }
    CAM_LOGI("[%s] cfg_frames.size(%d), camera_count(%d)", __func__, frameCount,
             static_cast<int>(config.sensors.size()));
}

void OdtUtils::stream_on() {
    readProperty();
    if (mEnable.load()) parsingFile();
}

void OdtUtils::stream_off() {
    if (!mEnable.load()) return;
    std::lock_guard<std::mutex> guard(mLock);
    mFrameCursor = 0;
    mRepeatCount = 0;
    mEnable.store(false);
    mStreaming.store(false);
}

bool OdtUtils::is_enable() {
    return mEnable.load();
}

void OdtUtils::frame_begin(unsigned int frameNo) {
    if (!mEnable.load()) return;
    // What happened, logged once the lock is released.
    bool reread = false;
    int32_t startCount = 0;
    int32_t repeatCount = 0;
    int bound = -1;
    int boundCount = 0;
    bool passDone = false;
    uint64_t pass = 0;
    {
        std::lock_guard<std::mutex> guard(mLock);
        if (mRepeatCount == 0) {
            mRepeatCount = props::getInt(props::kOdtStart, 0);
            reread = true;
            startCount = mRepeatCount;
        }
        repeatCount = mRepeatCount;
        if (mStreaming.load() && mRepeatCount != 0 && !mFrames.empty()) {
            if (mFrameCursor >= mFrames.size()) mFrameCursor = 0;
            qel_tuning_cfg_frame& frame = mFrames[mFrameCursor];
            frame.sw_frame_ids.push_back(frameNo);
            bound = static_cast<int>(mFrameCursor);
            boundCount = static_cast<int>(frame.sw_frame_ids.size());
            mFrameCursor = static_cast<uint32_t>((mFrameCursor + 1) % mFrames.size());
            if (frame.sw_frame_ids.size() > kMaxBoundFrames) {
                frame.sw_frame_ids.erase(frame.sw_frame_ids.begin());
            }
            if (mFrameCursor == 0 && mRepeatCount != 0) {
                --mRepeatCount;
                repeatCount = mRepeatCount;
                passDone = true;
                pass = ++mPassesDone;
            }
        }
    }
    // The property is written with the frame lock released; passes finished on several
    // threads at once still leave it at the latest count.
    if (passDone) {
        std::lock_guard<std::mutex> guard(mPropertyLock);
        if (pass > mPassWritten) {
            props::set(props::kOdtStart, repeatCount);
            mPassWritten = pass;
        }
    }
    if (reread) CAM_LOGD("[%s] m_start_count(%d)", __func__, startCount);
    if (bound >= 0) {
        CAM_LOGD("[%s] cfg_frames[%d].sw_frame_ids add (%d), size=(%d)", __func__, bound,
                 static_cast<int>(frameNo), boundCount);
    }
    if (passDone) {
        char text[16];
        std::snprintf(text, sizeof(text), "%d", repeatCount);
        CAM_LOGD("[%s] repeat count=%s", __func__, text);
    }
}

void OdtUtils::frame_end(unsigned int frameNo) {
    int holder = -1;
    {
        std::lock_guard<std::mutex> guard(mLock);
        for (size_t i = 0; i < mFrames.size() && holder < 0; ++i) {
            const std::vector<uint32_t>& ids = mFrames[i].sw_frame_ids;
            if (std::find(ids.begin(), ids.end(), frameNo) != ids.end()) {
                holder = static_cast<int>(i);
            }
        }
    }
    if (holder >= 0) {
        CAM_LOGD("[%s] cfg_frames[%d].sw_frame_id=%d", __func__, holder, static_cast<int>(frameNo));
    }
}

std::vector<qel_tuning_cfg_frame> OdtUtils::configFrames() const {
    std::lock_guard<std::mutex> guard(mLock);
    return mFrames;
}

std::vector<uint32_t> OdtUtils::frameOrder() const {
    std::lock_guard<std::mutex> guard(mLock);
    return mFrameOrder;
}

std::string OdtUtils::dumpinPath() const {
    std::lock_guard<std::mutex> guard(mFileLock);
    return mDumpinPath;
}

std::shared_ptr<IOdtUtils> IOdtUtils::getInstance(unsigned int sensorId) {
    // Never destroyed, so code running at process exit still finds its instance.
    struct Registry {
        std::mutex lock;
        std::map<unsigned int, std::shared_ptr<OdtUtils>> instances;
    };
    static Registry* sRegistry = new Registry();
    std::lock_guard<std::mutex> guard(sRegistry->lock);
    std::shared_ptr<OdtUtils>& instance = sRegistry->instances[sensorId];
    if (!instance) {
        instance = std::make_shared<OdtUtils>(sensorId);
        instance->readProperty();
    }
    return instance;
}

}  // namespace TuningUtils
}  // namespace NSCam
