// Services beside the dump-in readers: the on-device rename of dump identities and the
// register dump for downstream data processing.
#include <cstdio>
#include <memory>
#include <string>

#include "camtune/file_read_rule.h"
#include "camtune/platform/file_cache.h"
#include "dumpin/dumpin_log.h"
#include "dumpin/line_scanner.h"
#include "dumpin/list_text.h"
#include "dumpin/list_vocabulary.h"
#include "dumpin/messages.h"
#include "dumpin/switches.h"

namespace camtune {
namespace dumpin {
namespace {

// Frame number of the first "frameNo" entry for this request; MFNR entries are chosen per
// request. 0 when no entry qualifies.
int findFrameNo(const std::string& request) {
    int frameNo = 0;
    std::ifstream list = openListFile(props::kDumpinConfigPath);
    scanLines(list, [&](std::string& line) {
        NSCam::TuningUtils::TUNING_CFG_T entry;
        NSCam::TuningUtils::Extract_Tuning_CFG(line, entry);
        if (entry.str_format != kFrameNoKeyword) return false;
        if (contains(entry.str_ispProfile, kMfnrWord) && entry.str_reqNum != request) {
            return false;
        }
        frameNo = leadingInt(entry.str_file);
        return true;
    });
    return frameNo;
}

// A 32-bit little-endian word, whatever the host's byte order.
void putWord(uint8_t* out, uint32_t value) {
    for (int i = 0; i < 4; ++i) out[i] = static_cast<uint8_t>(value >> (8 * i));
}

bool writeWhole(NSCam::IFileHandle& file, const void* data, size_t size) {
    return file.write(data, size) == static_cast<ssize_t>(size);
}

}  // namespace
}  // namespace dumpin
}  // namespace camtune

namespace NSCam {
namespace TuningUtils {

using namespace camtune::dumpin;

bool FileReadRule::on_device_dump_file_rename(int reqNum, const char* ispProfile,
                                              FILE_DUMP_NAMING_HINT& hint,
                                              const char* /*pUserString*/) {
    if (!isReadEnabled()) return false;
    // The profile is only checked; entries are chosen by their own profile text.
    if (ispProfile == nullptr) CAM_LOGE(msg::kRenameNullProfile, __func__);
    std::string request;
    int frameNo = 0;
    if (formatRequestText(reqNum, request)) {
        frameNo = findFrameNo(request);
    } else {
        CAM_LOGE(msg::kConvertReqNumFail, __func__);
    }
    hint.FrameNo = frameNo;
    hint.UniqueKey = getFile_uniqueKey();
    hint.RequestNo = getFile_requestNo();
    return true;
}

int FileReadRule::DumpP1ForDP(const char*, const void*, int) {
    return 0;
}

int FileReadRule::DumpP2ForDP(const char*, const void*, int) {
    return 0;
}

int FileReadRule::DumpMfbForDP(const char*, const void*, int) {
    return 0;
}

int FileReadRule::DumpMssForDP(const char*, const void*, int) {
    return 0;
}

int DumpRegForDP(const char* fileName, const void* data, int size) {
    char path[kDumpPathSize];
    int length = std::snprintf(path, sizeof(path), "%s", printable(fileName));
    if (fileName == nullptr) path[0] = '\0';
    if (length < 0 || length >= kDumpPathSize) CAM_LOGE(msg::kDumpPathFail, __func__);
    if (size < 0 || (size > 0 && data == nullptr)) {
        CAM_LOGE(msg::kDumpBadData, __func__, data, size, path);
        return 0;
    }
    std::shared_ptr<IFileHandle> file = IFileCache::open(path);
    // Error level so the line reaches release logs, where the dump's users look for it.
    CAM_LOGE(msg::kDumpOpen, __func__, path);
    uint8_t header[8] = {};
    putWord(header, static_cast<uint32_t>(size / 4 + 1));
    putWord(header + 4, 0);
    bool whole = writeWhole(*file, header, 4) && writeWhole(*file, header + 4, 4) &&
                 (size == 0 || writeWhole(*file, data, static_cast<size_t>(size)));
    if (!whole) {
        CAM_LOGE(msg::kDumpWriteError, __func__, path);
        return 0;
    }
    return 1;
}

}  // namespace TuningUtils
}  // namespace NSCam
