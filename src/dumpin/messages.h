// Log texts of dump-in and reprocess, each written once. "%s" after "[" is the function name.
#pragma once

namespace camtune {
namespace dumpin {
namespace msg {

// List search and tuning lookups.
inline constexpr char kKeyReqNumFail[] =
        "Get str_reqNum fail! pReadInfo->str_reqNum is not assigned!";
inline constexpr char kKeyNullProfile[] = "ispProfile is nullptr! can not convert to string!";
inline constexpr char kReqNumFail[] = "Get str_reqNum fail!";
inline constexpr char kNullProfile[] =
        "[%s] ispProfile is nullptr! str_ispProfile is not assigned!";
inline constexpr char kPathNotFound[] = "[%s] file path not found in config";
inline constexpr char kFilenameFail[] = "Get filename fail!";
inline constexpr char kPathCut[] =
        "[%s] path of %zu characters cut to the %d of the caller's buffer; the name handed back "
        "may be another file's: %s";
inline constexpr char kFileNotFound[] = "[%s] file not found(%s)";
inline constexpr char kFileExist[] = "[%s] file exist(%s)";
inline constexpr char kTuningRequest[] = "[%s] reqNum(%d) ispProfile(%s) pUserString(%s)";
inline constexpr char kNullProfileName[] =
        "strIspProfileName is nullptr! strispProfileName is not assigned!";

// Value lookups.
inline constexpr char kUniqueKeyValue[] = "[%s] DEBUG uniqueKey from %d";
inline constexpr char kRequestNoValue[] = "DEBUG uniqueKey from %d";
inline constexpr char kRawStrideValue[] = "get_raw_stride from %d";

// Image loaders.
inline constexpr char kRawRequest[] = "[%s] reqNum(%d) ispProfile(%s) pbuf(%p) pUserString(%s)";
inline constexpr char kImgoFailFind[] = "[%s] Fail find imgo path in config";
inline constexpr char kImgoLoad[] = "[%s] Load imgo from (%s)";
inline constexpr char kImgoFailLoad[] = "[%s] Fail to load imgo from (%s)";
inline constexpr char kLcsoFailFind[] = "[%s] Fail find LCSO path in config";
inline constexpr char kLcsoLoad[] = "[%s] Load LCSO from (%s)";
inline constexpr char kLcsoFailLoad[] = "[%s] Fail to load LCSO from (%s)";
inline constexpr char kRrzoFailFind[] = "[%s] Fail to find RRZO path in config";
inline constexpr char kRrzoLoad[] = "[%s] Load RRZO from (%s)";
inline constexpr char kRrzoFailLoad[] = "[%s] Fail to load RRZO from (%s)";
inline constexpr char kWarpingRequest[] =
        "[%s] reqNum(%d) ispProfile(%s) pbuf(%p) pUserString(%s), pBufString(%s)";
inline constexpr char kNullUsage[] = "[%s] pUserString is nullptr! str_usage is not assigned!";
inline constexpr char kWarpingFailFind[] = "[%s] Fail find WarpingRaw path in config";
inline constexpr char kWarpingLoad[] = "[%s] Load WarpingRaw from (%s)";
inline constexpr char kWarpingFailLoad[] = "[%s] Fail to load WarpingRaw from (%s)";
inline constexpr char kYnrRequest[] = "[%s] reqNum(%d) ispProfile(%s) pUserString(%s) pbuf(%p)";
inline constexpr char kYnrFailFind[] = "[%s] Fail find YNR_MAP path in config";
inline constexpr char kYnrLoad[] = "[%s] Load YNR_MAP from (%s)";
inline constexpr char kYnrFailLoad[] = "[%s] Fail to load YNR_MAP from (%s)";
inline constexpr char kYuvRequest[] = "[%s] reqNum(%d) ispProfile(%s) pUserString(%s) yuv_port(%d)";
inline constexpr char kYuvLoad[] = "DEBUG load yuv from %s";
inline constexpr char kNullBuffer[] = "[%s] pbuf is nullptr! cannot load (%s)";

// Reprocess.
inline constexpr char kReprocEntry[] = "[%s] Format(%s), ReqNum(%d), IspProfile(%s), File(%s)";
inline constexpr char kReprocValue[] = "[%s] Format(%s), Value(%s)";
inline constexpr char kReprocFrame[] =
        "[%s] ReqNum(%d), IspProfile(%s), NR3D size(%d), File size(%d)";
inline constexpr char kReprocFrameFull[] =
        "[%s] ReqNum(%d), IspProfile(%s), NR3D size(%d), File size(%d), UniqueKey(%s), "
        "Stride(%d)";
inline constexpr char kP1RegLoaded[] = "[%s] pP1regBuffer[%d](0x%p,%d) version(%d)";
inline constexpr char kP1RegShortRead[] = "[%s] read count(%d)";
inline constexpr char kDirOpenError[] = "[%s]Error(%d) opening : %s";
inline constexpr char kCfgNameFail[] = "Get sCfgFileName fail!";
inline constexpr char kCurFrameNameFail[] = "Get sCurFrmFileName fail!";
inline constexpr char kRenamePair[] = "[%s] cfg(%s), curfrm(%s)";
inline constexpr char kRenamed[] = "[%s] Renamed, file[%d] = (%s), new = (%s)";
inline constexpr char kRenameFail[] = "[%s] Fail, file[%d] = (%s), new = (%s)";

// On-device rename and register dumps.
inline constexpr char kRenameNullProfile[] =
        "[%s] ispProfile is nullptr! str_ispProfile is not assigned";
inline constexpr char kConvertReqNumFail[] = "[%s] Convert reqNum to string fail!";
inline constexpr char kDumpPathFail[] = "[%s] Get strDump fail!";
inline constexpr char kDumpOpen[] = "[%s] open file for %s";
inline constexpr char kDumpWriteError[] = "[%s] write config error to %s";
inline constexpr char kDumpBadData[] = "[%s] invalid register data(%p,%d) for %s";

}  // namespace msg
}  // namespace dumpin
}  // namespace camtune
