// The process-wide reprocess list: frames of a replayed capture and the rename of what the
// replay dumped.
#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

#include "camtune/file_read_rule.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/properties.h"
#include "dumpin/dumpin_log.h"
#include "dumpin/line_scanner.h"
#include "dumpin/list_text.h"
#include "dumpin/list_vocabulary.h"
#include "dumpin/messages.h"
#include "dumpin/reprocess_parser.h"
#include "platform/property_registry.h"

namespace camtune {
namespace dumpin {
namespace {

using NSCam::TuningUtils::TUNING_REPROCESS_CFG_T;

// "FILE:LINE: what" for an exception out of the configuration's line LINE.
std::string where(const char* file, int line, const char* what) {
    return std::string(file) + ":" + std::to_string(line) + ": " + what;
}

struct ReprocList {
    std::mutex lock;
    std::vector<TUNING_REPROCESS_CFG_T> frames;
};

ReprocList& reprocList() {
    // Never destroyed: pipeline threads may still read the list while the process exits.
    static ReprocList* sList = new ReprocList();
    return *sList;
}

// Register files start with a header whose byte 4 is the layout version.
constexpr size_t kP1RegVersionOffset = 4;

// Reads the frame's "p1reg" file whole; null when it cannot be opened.
std::shared_ptr<const std::vector<uint8_t>> loadP1Reg(const char* name, size_t index,
                                                      const std::string& path) {
    fs::UniqueFd fd(fs::open(path.c_str(), O_RDONLY));
    fs::FileInfo info;
    if (!fd.isValid() || fs::stat(path.c_str(), &info) != 0 || info.size > SIZE_MAX) return nullptr;
    auto bytes = std::make_shared<std::vector<uint8_t>>(static_cast<size_t>(info.size));
    size_t total = 0;
    while (total < bytes->size()) {
        ssize_t got = fs::read(fd.get(), bytes->data() + total, bytes->size() - total);
        if (got <= 0) break;
        total += static_cast<size_t>(got);
    }
    if (total == bytes->size()) {
        int version = bytes->size() > kP1RegVersionOffset ? (*bytes)[kP1RegVersionOffset] : -1;
        CAM_LOGD(msg::kP1RegLoaded, name, static_cast<int>(index),
                 static_cast<void*>(bytes->data()), static_cast<int>(bytes->size()), version);
    } else {
        CAM_LOGE(msg::kP1RegShortRead, name, static_cast<int>(total));
    }
    return bytes;
}

// Names in `dir`; empty when it cannot be listed. Named as the messages report it.
std::vector<std::string> getdir(const char* dir) {
    std::vector<std::string> names;
    std::unique_ptr<DIR, fs::DirCloser> listing(fs::opendir(dir));
    if (!listing) {
        CAM_LOGE(msg::kDirOpenError, __func__, errno, dir);
        return names;
    }
    while (const char* name = fs::readdirName(listing.get())) names.emplace_back(name);
    return names;
}

// "%s-%04d-%04d" of the configuration's identity: the name the replayed frame's files get.
std::string configName(const TUNING_REPROCESS_CFG_T& frame) {
    char name[kRequestTextSize];
    int length = std::snprintf(name, sizeof(name), "%s-%04d-%04d", frame.uniqueKey.c_str(),
                               frame.reqNum, frame.reqNum);
    if (length < 0 || length >= kRequestTextSize) CAM_LOGE(msg::kCfgNameFail);
    return name;
}

// "%09d-%04d-%04d" of the replay's identity: the prefix the pipeline dumped the frame under.
std::string currentFrameName(const NSCam::TuningUtils::TUNING_CURRENT_INFO_T& info) {
    char name[kRequestTextSize];
    int length = std::snprintf(name, sizeof(name), "%09d-%04d-%04d", static_cast<int>(info.info3),
                               static_cast<int>(info.info2), static_cast<int>(info.info1));
    if (length < 0 || length >= kRequestTextSize) CAM_LOGE(msg::kCurFrameNameFail);
    return name;
}

void renameFrameFiles(const char* name, const std::vector<std::string>& listing,
                      const std::string& from, const std::string& to) {
    for (size_t i = 0; i < listing.size(); ++i) {
        size_t at = listing[i].find(from);
        if (at == std::string::npos) continue;
        std::string renamed = listing[i];
        renamed.replace(at, from.size(), to);
        std::string oldPath = std::string(kReplayDumpDir) + listing[i];
        std::string newPath = std::string(kReplayDumpDir) + renamed;
        if (fs::rename(oldPath.c_str(), newPath.c_str()) == 0) {
            CAM_LOGD(msg::kRenamed, name, static_cast<int>(i), oldPath.c_str(), newPath.c_str());
        } else {
            CAM_LOGE(msg::kRenameFail, name, static_cast<int>(i), oldPath.c_str(), newPath.c_str());
        }
    }
}

}  // namespace
}  // namespace dumpin
}  // namespace camtune

namespace NSCam {
namespace TuningUtils {

using namespace camtune::dumpin;

bool FileReadRule::enableReproc() {
    return camtune::props::getInt(camtune::props::kReprocessEnable) != 0;
}

void FileReadRule::initReprocInfo() {
    ReprocList& list = reprocList();
    std::lock_guard<std::mutex> guard(list.lock);
    // A second initialisation starts a new replay rather than appending to the last one.
    list.frames.clear();
    std::ifstream config = openListFile(camtune::props::kReprocessConfigPath);
    ReprocParser parser(list.frames);
    const char* name = __func__;
    char configPath[NSCam::Utils::Properties::kPropertyValueMax] = {};
    camtune::props::getString(camtune::props::kReprocessConfigPath, configPath);
    int lineNumber = 0;
    scanLines(config, [&](std::string& line) {
        ++lineNumber;
        ReprocLineKind kind;
        // A number that does not convert stops the replay; say where, keeping the type.
        try {
            kind = parser.feed(line);
        } catch (const std::invalid_argument& e) {
            throw std::invalid_argument(where(configPath, lineNumber, e.what()));
        } catch (const std::out_of_range& e) {
            throw std::out_of_range(where(configPath, lineNumber, e.what()));
        }
        if (kind == ReprocLineKind::EndOfFrame) {
            const TUNING_REPROCESS_CFG_T& frame = list.frames.back();
            CAM_LOGD(msg::kReprocFrame, name, frame.reqNum, frame.ispProfile.c_str(),
                     static_cast<int>(frame.nr3dEntries.size()),
                     static_cast<int>(frame.fileEntries.size()));
        }
        return false;
    });
    for (size_t i = 0; i < list.frames.size(); ++i) {
        TUNING_REPROCESS_CFG_T& frame = list.frames[i];
        frame.uniqueKey = parser.uniqueKey();
        frame.rawStride = parser.rawStride();
        frame.p1RegBuffer.reset();
        CAM_LOGD(msg::kReprocFrameFull, __func__, frame.reqNum, frame.ispProfile.c_str(),
                 static_cast<int>(frame.nr3dEntries.size()),
                 static_cast<int>(frame.fileEntries.size()), frame.uniqueKey.c_str(),
                 frame.rawStride);
        auto p1reg = frame.fileEntries.find(kP1RegFormat);
        std::string path = p1reg != frame.fileEntries.end() ? p1reg->second : std::string();
        frame.p1RegBuffer = loadP1Reg(__func__, i, path);
    }
}

unsigned int FileReadRule::getReprocInfoSize() {
    ReprocList& list = reprocList();
    std::lock_guard<std::mutex> guard(list.lock);
    return static_cast<unsigned int>(list.frames.size());
}

int FileReadRule::getReprocIndex(unsigned int key) {
    ReprocList& list = reprocList();
    std::lock_guard<std::mutex> guard(list.lock);
    for (size_t i = 0; i < list.frames.size(); ++i) {
        if (list.frames[i].currentInfo.key == key) return static_cast<int>(i);
    }
    return -1;
}

bool FileReadRule::getReprocInfo(unsigned int index, TUNING_REPROCESS_CFG_T& out) {
    ReprocList& list = reprocList();
    std::lock_guard<std::mutex> guard(list.lock);
    if (index >= list.frames.size()) return false;
    out = list.frames[index];
    return true;
}

bool FileReadRule::updateReprocInfo(unsigned int index, const TUNING_CURRENT_INFO_T& info) {
    ReprocList& list = reprocList();
    std::lock_guard<std::mutex> guard(list.lock);
    if (index >= list.frames.size()) return false;
    list.frames[index].currentInfo = info;
    return true;
}

void FileReadRule::uninitReprocInfo() {
    ReprocList& list = reprocList();
    std::lock_guard<std::mutex> guard(list.lock);
    std::vector<std::string> listing = getdir(kReplayDumpDir);
    for (TUNING_REPROCESS_CFG_T& frame : list.frames) {
        std::string cfg = configName(frame);
        std::string current = currentFrameName(frame.currentInfo);
        CAM_LOGD(msg::kRenamePair, __func__, cfg.c_str(), current.c_str());
        renameFrameFiles(__func__, listing, current, cfg);
        frame.p1RegBuffer.reset();
    }
}

}  // namespace TuningUtils
}  // namespace NSCam
