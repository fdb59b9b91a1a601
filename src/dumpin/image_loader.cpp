// Image loaders: fill a pipeline buffer from the file the dump-in list names for it.
#include <cstdio>
#include <string>

#include "camtune/file_read_rule.h"
#include "camtune/platform/image_buffer.h"
#include "dumpin/dumpin_log.h"
#include "dumpin/line_scanner.h"
#include "dumpin/list_text.h"
#include "dumpin/list_vocabulary.h"
#include "dumpin/messages.h"
#include "dumpin/switches.h"

namespace camtune {
namespace dumpin {
namespace {

using NSCam::IImageBuffer;

// Messages of one loader, the texts that tell the loaders apart.
struct LoaderMessages {
    const char* failFind;
    const char* load;
    const char* failLoad;
};

constexpr LoaderMessages kImgoMessages{msg::kImgoFailFind, msg::kImgoLoad, msg::kImgoFailLoad};
constexpr LoaderMessages kLcsoMessages{msg::kLcsoFailFind, msg::kLcsoLoad, msg::kLcsoFailLoad};
constexpr LoaderMessages kRrzoMessages{msg::kRrzoFailFind, msg::kRrzoLoad, msg::kRrzoFailLoad};
constexpr LoaderMessages kWarpingMessages{msg::kWarpingFailFind, msg::kWarpingLoad,
                                          msg::kWarpingFailLoad};
constexpr LoaderMessages kYnrMessages{msg::kYnrFailFind, msg::kYnrLoad, msg::kYnrFailLoad};

// Logs a loader message that carries the member's name and possibly a path. The texts come
// from the table above, all of the form "[%s] ..." or "[%s] ... (%s)".
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
void logLoader(camtune::log::Level level, const char* text, const char* name,
               const char* path = "") {
    CAMTUNE_LOG_AT(level, text, name, path);
}
#pragma GCC diagnostic pop

// Image entry search of the raw, LCSO and RRZO loaders. It compares the keyword and, for
// MFNR callers only, the request number; the line's profile is not compared. The result is
// what the last read left in the line buffer: "default" when the list could not be read, an
// empty text when it ended without a match.
std::string findImageEntry(const char* name, const char* keyword, int reqNum,
                           const char* ispProfile) {
    std::string working = kDefaultPath;
    std::string request;
    if (!formatRequestText(reqNum, request)) CAM_LOGE(msg::kReqNumFail);
    std::string profile;
    if (ispProfile == nullptr) {
        CAM_LOGE(msg::kNullProfile, name);
    } else {
        profile = ispProfile;
    }
    bool perRequest = contains(profile, kMfnrWord);

    std::ifstream list = openListFile(props::kDumpinConfigPath);
    scanLines(list, working, [&](std::string& line) {
        size_t first = line.find(kFieldSeparator);
        if (line.compare(0, first, keyword) != 0) return false;
        line = first == std::string::npos ? line : line.substr(first + 1);
        // The request field ends at the next "," searched from where the first one stood.
        if (perRequest && line.substr(0, line.find(kFieldSeparator, first)) != request) {
            return false;
        }
        removeRedundancy(line);
        return true;
    });
    return working;
}

// First "packed_word" line for this usage text; request and profile are not compared.
std::string findWarpingEntry(const char* usage) {
    std::string path = kDefaultPath;
    std::ifstream list = openListFile(props::kDumpinConfigPath);
    scanLines(list, [&](std::string& line) {
        WarpingEntry entry = parseWarpingEntry(line);
        if (entry.format != kWarpingKeyword || entry.usage != usage) return false;
        path = entry.file;
        return true;
    });
    return path;
}

// Loads `pbuf` from `path` under `user`, and gives it back locked whatever the load did.
int reloadBuffer(const char* name, const LoaderMessages& text, IImageBuffer* pbuf, const char* user,
                 const std::string& path) {
    if (contains(path, kDefaultPath)) {
        logLoader(camtune::log::Level::Debug, text.failFind, name);
        return 0;
    }
    logLoader(camtune::log::Level::Debug, text.load, name, path.c_str());
    if (pbuf == nullptr) {
        CAM_LOGE(msg::kNullBuffer, name, path.c_str());
        return 0;
    }
    const char* owner = user != nullptr ? user : "";
    pbuf->unlockBuf(owner);
    bool loaded = pbuf->loadFromFile(path.c_str());
    if (!loaded) logLoader(camtune::log::Level::Debug, text.failLoad, name, path.c_str());
    pbuf->lockBuf(owner, kReloadUsage);
    pbuf->syncCache(NSCam::eCACHECTRL_FLUSH);
    return loaded ? 1 : 0;
}

int loadImageEntry(const char* name, const char* keyword, const LoaderMessages& text, int reqNum,
                   const char* ispProfile, IImageBuffer* pbuf, const char* pUserString) {
    std::string path = findImageEntry(name, keyword, reqNum, ispProfile);
    return reloadBuffer(name, text, pbuf, pUserString, path);
}

}  // namespace
}  // namespace dumpin
}  // namespace camtune

namespace NSCam {
namespace TuningUtils {

using namespace camtune::dumpin;

int FileReadRule::getFile_RAW(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                              const char* pUserString, int /*idx*/) {
    if (!isReadEnabled()) return 0;
    CAM_LOGD(msg::kRawRequest, __func__, reqNum, printable(ispProfile), static_cast<void*>(pbuf),
             printable(pUserString));
    return loadImageEntry(__func__, kRawKeyword, kImgoMessages, reqNum, ispProfile, pbuf,
                          pUserString);
}

int FileReadRule::getFile_LCSO(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                               const char* pUserString, int /*idx*/) {
    if (!isReadEnabled()) return 0;
    return loadImageEntry(__func__, kLcsoKeyword, kLcsoMessages, reqNum, ispProfile, pbuf,
                          pUserString);
}

int FileReadRule::getFile_RRZO(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                               const char* pUserString, int /*idx*/) {
    if (!isReadEnabled()) return 0;
    return loadImageEntry(__func__, kRrzoKeyword, kRrzoMessages, reqNum, ispProfile, pbuf,
                          pUserString);
}

int FileReadRule::getFile_WarpingRaw(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                                     const char* pUserString, const char* pBufString, int /*idx*/) {
    if (!isReadEnabled()) return 0;
    CAM_LOGD(msg::kWarpingRequest, __func__, reqNum, printable(ispProfile),
             static_cast<void*>(pbuf), printable(pUserString), printable(pBufString));
    if (pUserString == nullptr) CAM_LOGE(msg::kNullUsage, __func__);
    std::string path = findWarpingEntry(pUserString != nullptr ? pUserString : "");
    return reloadBuffer(__func__, kWarpingMessages, pbuf, pBufString, path);
}

int FileReadRule::getFile_YNR_MAP(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                                  const char* pUserString, int /*idx*/) {
    if (!isReadEnabled()) return 0;
    CAM_LOGD(msg::kYnrRequest, __func__, reqNum, printable(ispProfile), printable(pUserString),
             static_cast<void*>(pbuf));
    // Left empty when the list names nothing, so the load below fails on an empty path.
    char path[kYnrPathSize] = {};
    TuningUtils::Extract_File(reqNum, ispProfile, path, sizeof(path), pUserString,
                              eTuningFormat_YNRMap);
    return reloadBuffer(__func__, kYnrMessages, pbuf, pUserString, path);
}

int FileReadRule::getFile_YUV(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                              const char* pUserString, YUV_PORT yuv_port, int /*idx*/) {
    if (!isReadEnabled() || yuv_port != YUV_PORT_IMG3O) return 0;
    CAM_LOGD(msg::kYuvRequest, __func__, reqNum, printable(ispProfile), printable(pUserString),
             static_cast<int>(yuv_port));
    std::ifstream list = openListFile(camtune::props::kDumpinConfigPath);
    scanLines(list, [&](std::string& line) {
        if (line.compare(0, line.find(kFieldSeparator), kYuvKeyword) != 0) return false;
        removeRedundancy(line);
        CAM_LOGD(msg::kYuvLoad, line.c_str());
        // The pipeline expects the listed file to receive the buffer, whatever the wording.
        if (pbuf != nullptr) pbuf->saveToFile(line.c_str());
        return true;
    });
    return 1;
}

}  // namespace TuningUtils
}  // namespace NSCam
