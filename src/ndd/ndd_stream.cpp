// Stream start and end: settings, the configuration file and the dump folder.
#define LOG_TAG "NDD"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "camtune/odt.h"
#include "camtune/platform/clock.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"
#include "camtune/platform/properties.h"
#include "ndd/ndd_impl.h"
#include "ndd/ndd_messages.h"
#include "platform/property_registry.h"

namespace NSCam {
namespace TuningUtils {

namespace fs = camtune::fs;
namespace props = camtune::props;
using NSCam::Utils::Properties::kPropertyValueMax;

namespace {

constexpr char kSubDirPrefix[] = "UKey";
constexpr char kDefaultFolder[] = "default_dump";
constexpr char kDefaultConfigCopy[] = "default_cfg.cfg";
constexpr size_t kCopyChunk = 64 * 1024;
// A folder found is trusted this long before it is looked at again.
constexpr int64_t kFolderRecheckNs = 1000 * 1000 * 1000;

std::string sensorListText(const std::vector<int>& sensorIds) {
    std::string list;
    for (int id : sensorIds) {
        list += std::to_string(id);
        list += ',';
    }
    if (!list.empty()) list.pop_back();
    return list;
}

bool isDirectory(const std::string& path) {
    fs::FileInfo info;
    return fs::stat(path.c_str(), &info) == 0 && info.isDirectory();
}

bool isRegularFile(const std::string& path) {
    fs::FileInfo info;
    return fs::stat(path.c_str(), &info) == 0 && info.isRegular();
}

// Copies `from` to `to` byte for byte; open failures are not reported.
void copyFile(const std::string& from, const std::string& to) {
    std::unique_ptr<FILE, fs::FileCloser> in(fs::fopen(from.c_str(), "rb"));
    if (!in) return;
    std::unique_ptr<FILE, fs::FileCloser> out(fs::fopen(to.c_str(), "wb"));
    if (!out) return;
    std::unique_ptr<char[]> chunk(new char[kCopyChunk]);
    size_t n;
    while ((n = std::fread(chunk.get(), 1, kCopyChunk, in.get())) > 0) {
        if (std::fwrite(chunk.get(), 1, n, out.get()) != n) return;
    }
}

}  // namespace

void Ndd::stream_on(std::vector<int> sensorIds, unsigned int uniqueKey) {
    if (mThreadCount.load() == 0) return;
    mDebugging.store(props::getInt(props::kNddDebugging) != 0);
    mGenConfig.store(props::getInt(props::kNddGenConfig) != 0);
    mLimitedSize.store(static_cast<int64_t>(props::getInt(props::kNddLimitedSize)));

    {
        std::lock_guard<std::mutex> guard(mPermissionLock);
        for (int id : sensorIds) {
            mPermissions.sensors.insert(id);
            mPermissions.previewCounters.emplace(id, 0);
            mPermissions.frames[id].clear();
        }
    }
    if (mGenConfig.load()) {
        for (int id : sensorIds) {
            if (id < 0) continue;
            if (auto odt = IOdtUtils::getInstance(static_cast<unsigned int>(id))) {
                odt->create_config_file(uniqueKey);
            }
        }
    }
    std::string list = sensorListText(sensorIds);
    props::set(props::kNddSensorList, list.c_str());
    CAM_LOGI(ndd_msg::kSensorList, list.c_str());

    std::lock_guard<std::mutex> guard(mMainLock);
    char text[kPropertyValueMax];
    props::getString(props::kNddConfigPath, text);
    parse_config(text);

    props::getString(props::kNddRootPath, text);
    std::string folder = text;
    mUseSubDir.store(props::getInt(props::kNddSubdir) != 0);
    mDirectWrite.store(props::getInt(props::kNddDirectWrite) != 0);
    mActionFilter.store(props::getInt(props::kNddActionEnable));

    if (mUseSubDir.load()) {
        char name[32];
        std::snprintf(name, sizeof(name), "%s%09u", kSubDirPrefix, uniqueKey);
        folder += name;
    } else {
        folder += kDefaultFolder;
    }
    std::lock_guard<std::mutex> folderGuard(mFolderLock);
    mDumpFolder = std::move(folder);
    mFolderSeenAtNs.store(kFolderNeverSeen);
}

void Ndd::stream_off(std::vector<int> sensorIds) {
    if (mThreadCount.load() == 0) return;
    std::lock_guard<std::mutex> guard(mMainLock);
    CAM_LOGI(ndd_msg::kRemoveSensors, sensorListText(sensorIds).c_str());
    {
        std::lock_guard<std::mutex> configGuard(mConfigLock);
        mConfig.clear();
    }
    mPool.clear();
    std::lock_guard<std::mutex> permissionGuard(mPermissionLock);
    mPermissions.sensors.clear();
    mPermissions.frames.clear();
    mPermissions.previewCounters.clear();
}

void Ndd::parse_config(const std::string& path) {
    CAM_LOGI(ndd_msg::kConfigPath, path.c_str());
    std::lock_guard<std::mutex> guard(mConfigLock);
    std::ifstream in;
    if (isRegularFile(path)) in = fs::openInput(path.c_str());
    if (!in.is_open() || !in) {
        CAM_LOGE(ndd_msg::kConfigMissing, path.c_str());
        return;
    }
    std::string line;
    while (std::getline(in, line)) {
        configInfo info;
        if (parseConfigLine(line, &info) != ConfigLineStatus::Ok) {
            CAM_LOGE(ndd_msg::kConfigError, line.c_str());
            return;
        }
        mConfig.put(std::move(info));
    }
    if (!mDebugging.load()) return;
    for (const auto& [key, info] : mConfig.entries()) {
        CAM_LOGD(ndd_msg::kConfigEntry, key.c_str(), info.format.c_str(), info.enable, info.dumpin);
    }
}

void Ndd::make_ndd_dir() {
    const int64_t now = camtune::clock::monotonicNs();
    const int64_t seen = mFolderSeenAtNs.load(std::memory_order_relaxed);
    if (seen != kFolderNeverSeen && now - seen < kFolderRecheckNs) return;
    std::string folder = dumpFolder();
    if (isDirectory(folder)) {
        mFolderSeenAtNs.store(now, std::memory_order_relaxed);
        return;
    }
    char configPath[kPropertyValueMax];
    props::getString(props::kNddConfigPath, configPath);
    CAM_LOGI(ndd_msg::kFolderPath, folder.c_str());
    if (fs::mkdir(folder.c_str(), 0777) != 0) {
        int error = errno;
        // Another pipeline thread made it first; that thread copies the configuration.
        if (error == EEXIST && isDirectory(folder)) {
            mFolderSeenAtNs.store(now, std::memory_order_relaxed);
            return;
        }
        CAM_LOGE(ndd_msg::kFolderFailed, folder.c_str(), error, std::strerror(error));
        return;
    }
    mFolderSeenAtNs.store(now, std::memory_order_relaxed);
    CAM_LOGI(ndd_msg::kFolderCreated, folder.c_str(), configPath);
    const char* slash = std::strrchr(configPath, '/');
    std::string copyName;
    if (slash == nullptr) {
        CAM_LOGE(ndd_msg::kConfigNameWrong, configPath);
        copyName = kDefaultConfigCopy;
    } else {
        copyName = slash + 1;
    }
    copyFile(configPath, folder + "/" + copyName);
}

std::string Ndd::dumpFolder() const {
    std::lock_guard<std::mutex> guard(mFolderLock);
    return mDumpFolder;
}

size_t Ndd::configEntryCount() const {
    std::lock_guard<std::mutex> guard(mConfigLock);
    return mConfig.size();
}

}  // namespace TuningUtils
}  // namespace NSCam
