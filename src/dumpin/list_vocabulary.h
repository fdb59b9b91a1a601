// Words of the dump-in list and the reprocess configuration, each written once.
#pragma once

#include <cstdint>

#include "camtune/file_read_rule.h"
#include "camtune/platform/image_buffer.h"

namespace camtune {
namespace dumpin {

// A search result holding this word anywhere means "nothing found".
inline constexpr char kDefaultPath[] = "default";

// Profiles whose entries are chosen per request (substring, case-sensitive, in this order).
inline constexpr const char* kRequestSensitiveWords[] = {"MFNR", "AINR_MainYUV", "DSDN_MSF",
                                                         "Preview"};
// The one word that makes the image, LPCNR and frame-number searches request-sensitive.
inline constexpr char kMfnrWord[] = "MFNR";

// Value lines.
inline constexpr char kUniqueKeyWord[] = "uniqueKey";
inline constexpr char kRequestNoWord[] = "requestNo";
inline constexpr char kRawStrideWord[] = "raw_stride";

// Image keywords.
inline constexpr char kRawKeyword[] = "raw";
inline constexpr char kLcsoKeyword[] = "lcso";
inline constexpr char kRrzoKeyword[] = "rrzo";
inline constexpr char kYuvKeyword[] = "img3o";
inline constexpr char kWarpingKeyword[] = "packed_word";
inline constexpr char kFrameNoKeyword[] = "frameNo";

// Profile text of a hint: this prefix and the profile's name.
inline constexpr char kIspProfilePrefix[] = "EIspProfile_";

// Separators.
inline constexpr char kFieldSeparator = ',';
inline constexpr char kPathSeparator = ';';
inline constexpr char kLineEnds[] = "\r\n";
inline constexpr char kPathEnds[] = "\r\n ";

// Reprocess configuration.
inline constexpr char kBlockOpen[] = "{";
inline constexpr char kBlockClose[] = "}";
inline constexpr char kCommentMark[] = "//";
inline constexpr char kEndOfFrame[] = "<END_OF_FRAME>";
inline constexpr char kNr3dWord[] = "nr3d";
inline constexpr char kP1RegFormat[] = "p1reg";
// Lines shorter than this inside a frame block carry nothing.
inline constexpr size_t kMinEntryLength = 4;
// Files dumped during a replay; relative, as the pipeline's working folder resolves it.
inline constexpr char kReplayDumpDir[] = "data/vendor/camera_dump/";

// Sizes of the fixed text buffers names are composed in.
inline constexpr int kRequestTextSize = 50;
inline constexpr int kPathBufferSize = 1024;
inline constexpr int kYnrPathSize = 512;
inline constexpr int kDumpPathSize = 512;

// Usage of the relock after a load: software read and write, camera read and write.
inline constexpr uint32_t kReloadUsage =
        NSCam::eBUFFER_USAGE_SW_READ_OFTEN | NSCam::eBUFFER_USAGE_SW_WRITE_OFTEN |
        NSCam::eBUFFER_USAGE_HW_CAMERA_WRITE | NSCam::eBUFFER_USAGE_HW_CAMERA_READ;

// Keyword and usage text of a tuning format.
struct TuningFormatInfo {
    NSCam::TuningUtils::ETuningFormat_T format;
    const char* keyword;
    const char* usage;
};

inline constexpr char kWorkaroundUsage[] = "workaround";

inline constexpr TuningFormatInfo kTuningFormats[] = {
        {NSCam::TuningUtils::eTuningFormat_LSC, "lsc", kWorkaroundUsage},
        {NSCam::TuningUtils::eTuningFormat_P2Tuning, "tuning", kWorkaroundUsage},
        {NSCam::TuningUtils::eTuningFormat_MFB, "mfb", ""},
        {NSCam::TuningUtils::eTuningFormat_MFBTable, "mfb_tbl", ""},
        {NSCam::TuningUtils::eTuningFormat_LTM, "ltm", kWorkaroundUsage},
        {NSCam::TuningUtils::eTuningFormat_YNRMap, "ynr_map", kWorkaroundUsage},
        {NSCam::TuningUtils::eTuningFormat_MSS, "mss", ""},
        {NSCam::TuningUtils::eTuningFormat_FaceInfo, "face_info", ""},
};

// The table row of `format`, or null for a format without a keyword.
const TuningFormatInfo* findTuningFormat(NSCam::TuningUtils::ETuningFormat_T format);

}  // namespace dumpin
}  // namespace camtune
