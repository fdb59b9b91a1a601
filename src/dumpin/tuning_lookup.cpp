// Tuning-table lookups: Extract_File and the members built on it, and the LPCNR search.
#include <cstdio>
#include <string>

#include "camtune/file_read_rule.h"
#include "camtune/platform/fs.h"
#include "dumpin/dumpin_log.h"
#include "dumpin/line_scanner.h"
#include "dumpin/list_text.h"
#include "dumpin/list_vocabulary.h"
#include "dumpin/messages.h"

namespace camtune {
namespace dumpin {
namespace {

using NSCam::TuningUtils::ETuningFormat_T;
using NSCam::TuningUtils::TUNING_CFG_T;

// Builds the search key of a request. Named as the messages report it.
TUNING_CFG_T Extract_readinfo(int reqNum, const char* ispProfile, ETuningFormat_T format) {
    TUNING_CFG_T key;
    if (!formatRequestText(reqNum, key.str_reqNum)) CAM_LOGE(msg::kKeyReqNumFail);
    if (ispProfile == nullptr) {
        CAM_LOGE(msg::kKeyNullProfile);
    } else {
        key.str_ispProfile = ispProfile;
    }
    if (const TuningFormatInfo* info = findTuningFormat(format)) {
        key.str_format = info->keyword;
        key.str_usage = info->usage;
    }
    return key;
}

// The path of the first entry matching `key`, or "default".
std::string findTuningEntry(const TUNING_CFG_T& key) {
    std::string path = kDefaultPath;
    std::ifstream list = openListFile(props::kDumpinConfigPath);
    scanLines(list, [&](std::string& line) {
        TUNING_CFG_T entry;
        NSCam::TuningUtils::Extract_Tuning_CFG(line, entry);
        bool perRequest = isRequestSensitive(entry.str_ispProfile);
        if (entry.str_format != key.str_format) return false;
        if (entry.str_ispProfile != key.str_ispProfile) return false;
        if (perRequest && entry.str_reqNum != key.str_reqNum) return false;
        path = entry.str_file;
        return true;
    });
    return path;
}

// The path of the first LPCNR entry of the caller's format, or "default". Only "MFNR" entries
// are chosen per request here.
std::string findLpcnrEntry(const char* name, int reqNum, const char* ispProfile,
                           const char* pUserString) {
    std::string profile;
    if (ispProfile == nullptr) {
        CAM_LOGE(msg::kNullProfile, name);
    } else {
        profile = ispProfile;
    }
    std::string request;
    if (!formatRequestText(reqNum, request)) CAM_LOGE(msg::kReqNumFail);

    std::string path = kDefaultPath;
    std::ifstream list = openListFile(props::kDumpinConfigPath);
    scanLines(list, [&](std::string& line) {
        if (pUserString == nullptr) return false;
        TUNING_CFG_T entry;
        NSCam::TuningUtils::Extract_Tuning_CFG(line, entry);
        if (entry.str_format != pUserString) return false;
        if (entry.str_ispProfile != profile) return false;
        if (contains(entry.str_ispProfile, kMfnrWord) && entry.str_reqNum != request) {
            return false;
        }
        path = entry.str_file;
        return true;
    });
    return path;
}

// Checks a found path and hands it to the caller: 1 when the file can be opened.
int finishLookup(const char* name, const std::string& path, char* outPath, int outSize) {
    if (contains(path, kDefaultPath)) {
        CAM_LOGD(msg::kPathNotFound, name);
        return 0;
    }
    bool exists = fs::openInput(path.c_str()).is_open();
    int written = -1;
    if (outPath != nullptr && outSize > 0) {
        written = std::snprintf(outPath, static_cast<size_t>(outSize), "%s", path.c_str());
    }
    if (written < 0 || written >= outSize) {
        CAM_LOGE(msg::kFilenameFail);
        if (written >= outSize)
            CAM_LOGW(msg::kPathCut, name, path.size(), outSize - 1, path.c_str());
    }
    if (!exists) {
        CAM_LOGD(msg::kFileNotFound, name, path.c_str());
        return 0;
    }
    CAM_LOGD(msg::kFileExist, name, path.c_str());
    return 1;
}

int lookupTuning(const char* name, int reqNum, const char* ispProfile, char* outPath, int outSize,
                 const char* pUserString, ETuningFormat_T format) {
    CAM_LOGD(msg::kTuningRequest, name, reqNum, printable(ispProfile), printable(pUserString));
    return NSCam::TuningUtils::Extract_File(reqNum, ispProfile, outPath, outSize, pUserString,
                                            format);
}

int lookupTuningByHint(const char* name, const NSCam::TuningUtils::FILE_DUMP_NAMING_HINT& hint,
                       char* outPath, int outSize, const char* pUserString,
                       ETuningFormat_T format) {
    std::string profile = kIspProfilePrefix;
    const char* profileName = NSCam::TuningUtils::getIspProfileName(
            static_cast<NSIspTuning::EIspProfile_T>(hint.IspProfile));
    if (profileName == nullptr) {
        CAM_LOGE(msg::kNullProfileName);
    } else {
        profile += profileName;
    }
    CAM_LOGD(msg::kTuningRequest, name, hint.RequestNo, profile.c_str(), printable(pUserString));
    return NSCam::TuningUtils::Extract_File(hint.RequestNo, profile.c_str(), outPath, outSize,
                                            pUserString, format);
}

}  // namespace
}  // namespace dumpin
}  // namespace camtune

namespace NSCam {
namespace TuningUtils {

using namespace camtune::dumpin;

int Extract_File(int reqNum, const char* ispProfile, char* outPath, int outSize,
                 const char* /*pUserString*/, ETuningFormat_T format) {
    TUNING_CFG_T key = Extract_readinfo(reqNum, ispProfile, format);
    return finishLookup(__func__, findTuningEntry(key), outPath, outSize);
}

int FileReadRule::Extract_File(int reqNum, const char* ispProfile, char* outPath, int outSize,
                               const char* pUserString, ETuningFormat_T format) {
    return TuningUtils::Extract_File(reqNum, ispProfile, outPath, outSize, pUserString, format);
}

int FileReadRule::getFile_LSC(int reqNum, const char* ispProfile, char* outPath, int outSize,
                              const char* pUserString) {
    return lookupTuning(__func__, reqNum, ispProfile, outPath, outSize, pUserString,
                        eTuningFormat_LSC);
}

int FileReadRule::getFile_P2TUNING(int reqNum, const char* ispProfile, char* outPath, int outSize,
                                   const char* pUserString) {
    return lookupTuning(__func__, reqNum, ispProfile, outPath, outSize, pUserString,
                        eTuningFormat_P2Tuning);
}

int FileReadRule::getFile_LTMCURVE(int reqNum, const char* ispProfile, char* outPath, int outSize,
                                   const char* pUserString) {
    return lookupTuning(__func__, reqNum, ispProfile, outPath, outSize, pUserString,
                        eTuningFormat_LTM);
}

int FileReadRule::getFile_MFB(int reqNum, const char* ispProfile, char* outPath, int outSize,
                              const char* pUserString) {
    return lookupTuning(__func__, reqNum, ispProfile, outPath, outSize, pUserString,
                        eTuningFormat_MFB);
}

int FileReadRule::getFile_FD_DATA(int reqNum, const char* ispProfile, char* outPath, int outSize,
                                  const char* pUserString) {
    return lookupTuning(__func__, reqNum, ispProfile, outPath, outSize, pUserString,
                        eTuningFormat_FaceInfo);
}

int FileReadRule::getFile_MFB(const FILE_DUMP_NAMING_HINT& hint, char* outPath, int outSize,
                              const char* pUserString) {
    return lookupTuningByHint(__func__, hint, outPath, outSize, pUserString, eTuningFormat_MFB);
}

int FileReadRule::getFile_MFB_TBL(const FILE_DUMP_NAMING_HINT& hint, char* outPath, int outSize,
                                  const char* pUserString) {
    return lookupTuningByHint(__func__, hint, outPath, outSize, pUserString,
                              eTuningFormat_MFBTable);
}

int FileReadRule::getFile_MSS(const FILE_DUMP_NAMING_HINT& hint, char* outPath, int outSize,
                              const char* pUserString) {
    return lookupTuningByHint(__func__, hint, outPath, outSize, pUserString, eTuningFormat_MSS);
}

int FileReadRule::getFile_LPCNR_TUNING(int reqNum, const char* ispProfile, char* outPath,
                                       int outSize, const char* pUserString) {
    CAM_LOGD(msg::kTuningRequest, __func__, reqNum, printable(ispProfile), printable(pUserString));
    std::string path = findLpcnrEntry(__func__, reqNum, ispProfile, pUserString);
    return finishLookup(__func__, path, outPath, outSize);
}

}  // namespace TuningUtils
}  // namespace NSCam
