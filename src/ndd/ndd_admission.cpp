// Which sensors and frames may dump, and whether one item is admitted.
#define LOG_TAG "NDD"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

#include "camtune/odt.h"
#include "camtune/platform/log.h"
#include "camtune/platform/properties.h"
#include "ndd/item_names.h"
#include "ndd/ndd_impl.h"
#include "ndd/ndd_messages.h"
#include "platform/property_registry.h"

namespace NSCam {
namespace TuningUtils {

namespace props = camtune::props;
using NSCam::Utils::Properties::kPropertyValueMax;

namespace {

// A sensor id from vendor.debug.ndd.sensor_dump text ("N" or "-N"); false when it holds none.
bool parseSensorText(const char* text, int* sensorId) {
    errno = 0;
    char* end = nullptr;
    long value = std::strtol(text, &end, 10);
    if (end == text || errno == ERANGE || value < -INT_MAX || value > INT_MAX) return false;
    *sensorId = static_cast<int>(value < 0 ? -value : value);
    return true;
}

}  // namespace

void Ndd::frame_begin(int sensorId, int frameNo) {
    char sensorText[kPropertyValueMax];
    props::getString(props::kNddSensorDump, sensorText);
    int previewReady = props::getInt(props::kNddPreviewReady);

    // What happened, logged once the lock is released.
    bool permissionChanged = false;
    bool permissionIgnored = false;
    bool previewChanged = false;
    int alignedCount = 0;
    int admittedMapSize = -1;
    bool previewReset = false;
    {
        std::lock_guard<std::mutex> guard(mPermissionLock);
        Permissions& p = mPermissions;
        if (p.sensorText != sensorText) {
            p.sensorText = sensorText;
            permissionChanged = true;
            int id = 0;
            if (!parseSensorText(sensorText, &id)) {
                permissionIgnored = true;
            } else if (sensorText[0] != '-') {
                p.sensors.insert(id);
            } else {
                p.sensors.erase(id);
            }
        }
        if (previewReady != mPreviewCount.load()) {
            mPreviewCount.store(previewReady);
            previewChanged = true;
            for (auto& counter : p.previewCounters) counter.second = previewReady;
            for (auto& frames : p.frames) frames.second.clear();
        }
        int& counter = p.previewCounters[sensorId];
        if (counter == 0 && mPreviewCount.load() != 0) {
            int largest = 0;
            for (const auto& other : p.previewCounters) {
                if (other.second > largest) largest = other.second;
            }
            if (largest > 0) {
                counter = largest;
                alignedCount = largest;
            }
        }
        // Below zero the counter admits nothing; it only must not wrap around.
        int count = counter;
        if (count > INT_MIN) counter = count - 1;
        if (count >= 1) {
            std::unordered_set<int>& frames = p.frames[sensorId];
            frames.insert(frameNo);
            admittedMapSize = static_cast<int>(frames.size());
        } else if (p.sensors.count(sensorId) != 0 && mPreviewCount.load() != 0) {
            mPreviewCount.store(0);
            props::set(props::kNddPreviewReady, "0");
            previewReset = true;
        }
    }
    if (permissionChanged) CAM_LOGI(ndd_msg::kSensorPermission, sensorText);
    if (permissionIgnored) CAM_LOGE(ndd_msg::kBadSensorText, sensorText);
    if (previewChanged) CAM_LOGI(ndd_msg::kPreviewCount, previewReady);
    if (alignedCount > 0) CAM_LOGD(ndd_msg::kAlignCount, sensorId, alignedCount);
    if (admittedMapSize >= 0) CAM_LOGD(ndd_msg::kAddFrame, sensorId, frameNo, admittedMapSize);
    if (previewReset) CAM_LOGI(ndd_msg::kResetPreview, sensorId);
}

void Ndd::frame_end(int sensorId, int frameNo) {
    int mapSize = 0;
    {
        std::lock_guard<std::mutex> guard(mPermissionLock);
        auto sensor = mPermissions.frames.find(sensorId);
        if (sensor != mPermissions.frames.end()) {
            mapSize = static_cast<int>(sensor->second.size());
            sensor->second.erase(frameNo);
        }
    }
    CAM_LOGD(ndd_msg::kFindFrame, frameNo, mapSize);
}

bool Ndd::is_filename_valid(eCategory category, eModule module, const NddData& data) const {
    return category >= 0 && static_cast<size_t>(category) < mTables->categoryCount() &&
           module >= 0 && static_cast<size_t>(module) < mTables->moduleCount() &&
           data.feature <= kMaxFeature;
}

bool Ndd::findConfig(const NddData& data, eCategory category, eModule module, ConfigValues* values,
                     std::string* format) {
    if (!is_filename_valid(category, module, data)) return false;
    std::lock_guard<std::mutex> guard(mConfigLock);
    const configInfo* entry =
            mConfig.find(nddFeatureName(data.feature), nddStageName(data.stage),
                         mTables->getCategoryName(category), mTables->getModuleName(module));
    if (entry == nullptr) return false;
    values->enable = entry->enable;
    values->dumpin = entry->dumpin;
    if (format != nullptr) *format = entry->format;
    return true;
}

bool Ndd::is_enable_dump(const NddData& data, eCategory category, eModule module) {
    ConfigValues values;
    findConfig(data, category, module, &values, nullptr);
    return values.enable != 0;
}

bool Ndd::is_enable_dumpin(NddData& data, eCategory category, eModule module) {
    ConfigValues values;
    findConfig(data, category, module, &values, nullptr);
    return values.dumpin != 0;
}

bool Ndd::is_ndd_data_valid(eCategory category, eModule module, const NddData& data) {
    if (mThreadCount.load(std::memory_order_relaxed) == 0) return false;
    if (!is_filename_valid(category, module, data)) return false;
    if (!is_enable_dump(data, category, module)) {
        const char* stage = nddStageName(data.stage);
        if (stage[0] != '\0') {
            CAM_LOGD(ndd_msg::kDumpDisabled4, nddFeatureName(data.feature), stage,
                     mTables->getCategoryName(category), mTables->getModuleName(module));
        } else {
            CAM_LOGD(ndd_msg::kDumpDisabled3, nddFeatureName(data.feature),
                     mTables->getCategoryName(category), mTables->getModuleName(module));
        }
        return false;
    }
    bool sensorPermitted;
    bool framePermitted = true;
    {
        std::lock_guard<std::mutex> guard(mPermissionLock);
        sensorPermitted = mPermissions.sensors.count(data.sensorId) != 0;
        if (sensorPermitted && category == eCategory_Streaming) {
            auto frames = mPermissions.frames.find(data.sensorId);
            framePermitted =
                    frames != mPermissions.frames.end() && frames->second.count(data.frameNo) != 0;
        }
    }
    if (!sensorPermitted) {
        CAM_LOGD(ndd_msg::kSensorDisabled, data.sensorId);
        return false;
    }
    if (!framePermitted) {
        CAM_LOGD(ndd_msg::kFrameNotPermitted, __func__, data.frameNo);
        return false;
    }
    int filter = mActionFilter.load(std::memory_order_relaxed);
    if (filter >= 0 && data.action >= 0 && filter != data.action) {
        CAM_LOGD(ndd_msg::kActionFiltered, __func__, data.action, filter);
        return false;
    }
    return true;
}

void Ndd::applyOdtPrefix(NddData& data) {
    if (data.sensorId < 0) return;
    std::shared_ptr<IOdtUtils> odt =
            IOdtUtils::getInstance(static_cast<unsigned int>(data.sensorId));
    if (!odt) return;
    qel_tuning_cfg_prefix prefix = odt->get_cfg_prefix(static_cast<unsigned int>(data.frameNo));
    if (prefix.status != OdtCfgPrefix_Found) return;
    data.uniqueKey = prefix.unique_key;
    data.requestNo = prefix.request_no;
    data.frameNo = prefix.frame_no;
}

void Ndd::notify_disable(NddData data, eCategory category, eModule module) {
    if (!is_ndd_data_valid(category, module, data)) return;
    applyOdtPrefix(data);
    disabled_info_scenario_recorder(data, module);
}

}  // namespace TuningUtils
}  // namespace NSCam
