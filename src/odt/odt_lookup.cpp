// On-device tuning: what the pipeline asks per frame (which item is replayed, from which file).
#define LOG_TAG "OdtUtils"

#include <algorithm>
#include <cstring>

#include "camtune/ndd_tables.h"
#include "camtune/platform/log.h"
#include "odt/odt_line_format.h"
#include "odt/odt_utils.h"

namespace NSCam {
namespace TuningUtils {
namespace {

const char* moduleName(eModule module) {
    return NddAutoGenExcel2C::getInstance()->getModuleName(module);
}

}  // namespace

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

}  // namespace TuningUtils
}  // namespace NSCam
