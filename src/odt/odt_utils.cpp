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

constexpr const char* kDumpinPathFormat = "/data/vendor/camera_dump/%09d-0000-0000_dumpin.cfg";
constexpr size_t kPathSize = 1024;
constexpr const char* kInfoSuffix = "_log";
// A kept path shorter than this names no file.
constexpr size_t kMinPathLength = 2;

#define ODT_FOPEN_FAIL "[%s] fopen fail, errno(%d):%s"

const char* moduleName(eModule module) {
    return NddAutoGenExcel2C::getInstance()->getModuleName(module);
}

// The line without its "\n", for the log.
std::string_view chomp(const std::string& line) {
    std::string_view view(line);
    if (!view.empty() && view.back() == '\n') view.remove_suffix(1);
    return view;
}

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
                props::set(props::kOdtStart, mRepeatCount);
                repeatCount = mRepeatCount;
                passDone = true;
            }
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

qel_tuning_cfg_prefix OdtUtils::get_cfg_prefix(unsigned int frameNo) {
    qel_tuning_cfg_prefix prefix;
    if (!mEnable.load() || !mStreaming.load()) return prefix;
    std::lock_guard<std::mutex> guard(mLock);
    for (const qel_tuning_cfg_frame& frame : mFrames) {
        for (uint32_t id : frame.sw_frame_ids) {
            if (id == frameNo) {
                prefix.unique_key = frame.unique_key;
                prefix.request_no = frame.request_no;
                prefix.frame_no = frame.frame_no;
                prefix.status = OdtCfgPrefix_Found;
                return prefix;
            }
            prefix.status = OdtCfgPrefix_NotFound;
        }
    }
    return prefix;
}

const qel_tuning_cfg_frame* OdtUtils::boundFrameLocked(uint32_t frameNo) const {
    for (const qel_tuning_cfg_frame& frame : mFrames) {
        for (uint32_t id : frame.sw_frame_ids) {
            if (id == frameNo) return &frame;
        }
    }
    return nullptr;
}

const qel_tuning_cfg_item* OdtUtils::findItem(const qel_tuning_cfg_frame* frame, const char* key) {
    if (frame == nullptr) return nullptr;
    auto found = frame->items.find(std::string_view(key));
    return found == frame->items.end() ? nullptr : &found->second;
}

bool OdtUtils::is_enable(eModule module, int stage, int index, int feature) {
    char key[odt::kItemKeySize];
    odt::formatItemKey(key, sizeof(key), moduleName(module), stage, feature,
                       odt::queryStageFallback());
    std::lock_guard<std::mutex> guard(mLock);
    if (index < 0 || static_cast<size_t>(index) >= mFrames.size()) return false;
    return findItem(&mFrames[index], key) != nullptr;
}

bool OdtUtils::is_enable(unsigned int frameNo, eModule module, int stage, int feature,
                         int sensorId) {
    if (!isOwnSensor(sensorId)) return false;
    char key[odt::kItemKeySize];
    odt::formatItemKey(key, sizeof(key), moduleName(module), stage, feature,
                       odt::queryStageFallback());
    std::lock_guard<std::mutex> guard(mLock);
    return findItem(boundFrameLocked(frameNo), key) != nullptr;
}

std::string OdtUtils::get_cfg_info(unsigned int frameNo, eModule module, int stage, int feature,
                                   int sensorId) {
    const char* name = moduleName(module);
    char key[odt::kItemKeySize];
    odt::formatItemKey(key, sizeof(key), name, stage, feature, odt::streamingStageFallback());
    const qel_tuning_cfg_item* item = nullptr;
    std::string file;
    {
        std::lock_guard<std::mutex> guard(mLock);
        if (isOwnSensor(sensorId)) item = findItem(boundFrameLocked(frameNo), key);
        if (item != nullptr) file = item->file;
    }
    if (item == nullptr) {
        CAM_LOGD("[%s] straimg not found:key(%s) module(%s)", __func__, key, name);
        return file;
    }
    CAM_LOGD("[%s] straming:key(%s) module(%s) file(%s)", __func__, key, name, file.c_str());
    return file;
}

std::string OdtUtils::get_cfg_info(eModule module, int stage, unsigned int index, int feature,
                                   int sensorId) {
    const char* name = moduleName(module);
    char key[odt::kItemKeySize];
    odt::formatItemKey(key, sizeof(key), name, stage, feature, odt::captureStageFallback());
    bool indexValid;
    const qel_tuning_cfg_item* item = nullptr;
    std::string file;
    {
        std::lock_guard<std::mutex> guard(mLock);
        indexValid = index < mFrames.size();
        if (indexValid && isOwnSensor(sensorId)) item = findItem(&mFrames[index], key);
        if (item != nullptr) file = item->file;
    }
    if (!indexValid) {
        CAM_LOGD("[%s] capture not found:module(%s) index(%u)", __func__, name, index);
    } else if (item == nullptr) {
        CAM_LOGD("[%s] capture not found:key(%s) module(%s) index(%u)", __func__, key, name, index);
    } else {
        CAM_LOGD("[%s] capture:key(%s) module(%s) file(%s)", __func__, key, name, file.c_str());
    }
    return file;
}

void OdtUtils::create_config_file(unsigned int uniqueKey) {
    CAM_LOGI("[%s] key(%d)", __func__, static_cast<int>(uniqueKey));
    char path[kPathSize];
    std::snprintf(path, sizeof(path), kDumpinPathFormat, static_cast<int>(uniqueKey));
    int error = 0;
    {
        std::lock_guard<std::mutex> guard(mLock);
        std::unique_ptr<FILE, fs::FileCloser> file(fs::fopen(path, "w"));
        if (file) {
            mDumpinPath = path;
        } else {
            error = errno;
            mDumpinPath.clear();
        }
    }
    if (error != 0) {
        CAM_LOGE(ODT_FOPEN_FAIL, __func__, error, std::strerror(error));
        return;
    }
    CAM_LOGI("[%s] dump-in cfg = %d", __func__, static_cast<int>(uniqueKey));
}

bool OdtUtils::hasDumpinPathLocked() const {
    return mDumpinPath.size() >= kMinPathLength;
}

OdtUtils::AppendResult OdtUtils::append(const std::string& path, const std::string& text) {
    std::unique_ptr<FILE, fs::FileCloser> file(fs::fopen(path.c_str(), "a"));
    if (!file) return {AppendResult::OpenFailed, errno};
    if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) {
        return {AppendResult::WriteFailed, errno};
    }
    return {AppendResult::Done, 0};
}

void OdtUtils::report(const AppendResult& result, const char* caller, std::string_view line) {
    switch (result.outcome) {
        case AppendResult::Skipped:
            return;
        case AppendResult::OpenFailed:
            CAM_LOGE(ODT_FOPEN_FAIL, caller, result.error, std::strerror(result.error));
            return;
        case AppendResult::WriteFailed:
            CAM_LOGE("[%s] write fail, errno(%d):%s", caller, result.error,
                     std::strerror(result.error));
            return;
        case AppendResult::Done:
            CAM_LOGD("[%s] %.*s", caller, static_cast<int>(line.size()), line.data());
            return;
    }
}

void OdtUtils::write_frame_data(std::string module, unsigned int frameNo, std::string sensor,
                                int stage, int feature, std::string file) {
    std::string line = odt::formatDataLine(module, frameNo, sensor, stage, feature, file);
    // Only lines that read back as written go in, so a replay never trips over its own file.
    bool readable = false;
    try {
        odt::DataLine back = odt::parseDataLine(std::string(chomp(line)));
        readable = back.module == module && back.frameNo == frameNo && back.sensor == sensor &&
                   back.stage == stage && back.feature == feature && back.file == file;
    } catch (const std::exception&) {
        readable = false;
    }
    AppendResult result;
    {
        std::lock_guard<std::mutex> guard(mLock);
        if (!hasDumpinPathLocked()) return;
        if (readable) result = append(mDumpinPath, line);
    }
    if (!readable) {
        CAM_LOGE("[%s] not written, the line would not read back: %.*s", __func__,
                 static_cast<int>(chomp(line).size()), chomp(line).data());
        return;
    }
    report(result, __func__, chomp(line));
}

void OdtUtils::write_frame_end(unsigned int frameNo) {
    CAM_LOGD("[%s] frame(%d)", __func__, static_cast<int>(frameNo));
}

void OdtUtils::write_frame_order(std::vector<unsigned int> order) {
    std::string line = odt::formatOrderLine(std::vector<uint32_t>(order.begin(), order.end()));
    AppendResult result;
    {
        std::lock_guard<std::mutex> guard(mLock);
        if (hasDumpinPathLocked()) result = append(mDumpinPath, line);
    }
    report(result, __func__, chomp(line));
}

void OdtUtils::write_info(std::string text) {
    AppendResult result;
    {
        std::lock_guard<std::mutex> guard(mLock);
        if (hasDumpinPathLocked()) result = append(mDumpinPath + kInfoSuffix, text + "\n");
    }
    report(result, __func__, text);
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
    std::lock_guard<std::mutex> guard(mLock);
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
