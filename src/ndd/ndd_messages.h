// Log texts of NDD, each written once.
#pragma once

namespace NSCam {
namespace TuningUtils {
namespace ndd_msg {

// Life cycle and settings.
inline constexpr char kEnabled[] = "NDD is enabled with thread_num (%d)";
inline constexpr char kDisabled[] =
        "NDD is initialized as disabled since vendor.debug.ndd.thdnum is set to 0";
inline constexpr char kBadThreadCount[] =
        "vendor.debug.ndd.thdnum (%s) is not a thread count from 0 to %d; NDD stays disabled";
inline constexpr char kThreadCountCapped[] =
        "vendor.debug.ndd.thdnum (%d) is more than %d; %d writer threads are started";
inline constexpr char kAlreadyRunning[] = "NDD is running already with thread_num (%d)";
inline constexpr char kThreadFailed[] = "thread constructor failed";
inline constexpr char kRemaining[] = "Remaining size after joining all thread: %ld";
inline constexpr char kFailedDumps[] = "%lld admitted dump(s) failed since init";
inline constexpr char kSensorList[] = "This config has sensor id list: %s";
inline constexpr char kRemoveSensors[] = "Remove sensor id list %s";

// Configuration file and folder.
inline constexpr char kConfigPath[] = "Config File path: %s";
inline constexpr char kConfigMissing[] = "File doesn't exist: %s";
inline constexpr char kConfigError[] = "Config File Error: %s";
inline constexpr char kConfigEntry[] = "(Rule, Format, Enable, DumpIn): (%s, %s, %d, %d)";
inline constexpr char kFolderPath[] = "file directory path: %s";
inline constexpr char kFolderFailed[] = "Fail to create directory %s : %d[%s]";
inline constexpr char kFolderCreated[] = "Create directory %s and copy config file from %s";
inline constexpr char kConfigNameWrong[] = "cfg_file format might be wrong: %s, use default name";

// Frames and admission.
inline constexpr char kSensorPermission[] = "Sensor Permission Received (%s)";
inline constexpr char kBadSensorText[] =
        "vendor.debug.ndd.sensor_dump (%s) is not a sensor id; ignored";
inline constexpr char kPreviewCount[] = "Preview Dump Request Count Received (%d)";
inline constexpr char kAlignCount[] = "sensor(%d) align count(%d)";
inline constexpr char kAddFrame[] = "sensor(%d) : Add FrameNo %d in map, map size(%d)";
inline constexpr char kResetPreview[] = "sensor(%d) :Reset prv_ready to 0";
inline constexpr char kFindFrame[] = "find frame(%d) map size(%d)";
inline constexpr char kDumpDisabled3[] = "Data Dump disabled under given conditions: (%s, %s, %s)";
inline constexpr char kDumpDisabled4[] =
        "Data Dump disabled under given conditions: (%s, %s, %s, %s)";
inline constexpr char kSensorDisabled[] = "Data Dump of this sensorId (%d) has been disabled!";
inline constexpr char kFrameNotPermitted[] =
        "[%s] Given FrameNo(%d) doesn't exist in permission list";
inline constexpr char kActionFiltered[] = "[%s] action(%d) is not the permitted action(%d)";

// Names.
inline constexpr char kInvalidStage[] = "Invalid Stage(%d), force it to -1";
inline constexpr char kInvalidSensorId[] = "Invalid SensorId(%d), force it to -1";
inline constexpr char kWrongPattern[] = "Wrong string format!";
inline constexpr char kFormatOnArray[] = "FORMAT is not allowed used for simple array!";
inline constexpr char kUnknownRule[] = "Unknown naming rule [%s]; it adds nothing to the name";
inline constexpr char kEmptyName[] =
        "(%s, %s, %s, %s) has no file-name format in the configuration; item not dumped";
inline constexpr char kNameWithSlash[] =
        "file name (%s) holds a \"/\" and would leave the dump folder; item not dumped";
inline constexpr char kNameWithNul[] =
        "file name (%s) holds a NUL byte and would be cut there; item not dumped";
inline constexpr char kNameIsFolder[] =
        "file name (%s) names the dump folder or its parent, not a file; item not dumped";
inline constexpr char kPathTooLong[] = "file path (%s) does not fit %d bytes; item not dumped";
inline constexpr char kQueriedPath[] = "Queried File Path: %s";
inline constexpr char kNullImage[] = "ImgBuf submission is NULL!";
inline constexpr char kImageFields[] = "PW%d-PH%d-BW%d__%dx%d, BITS(%d->%s) Order(%d)";
inline constexpr char kForcedFormat[] = "format(%d) selector(%d)";
inline constexpr char kForceChangeFormat[] = "force change format(%d)";

// Hand-over and writers.
inline constexpr char kBufferHandover[] =
        "(%s/%d,%s/%d,%s/%d) time(%dns) size(%d) heap(%ld) Upcoming write_name: %s";
inline constexpr char kImageHandover[] =
        "(%s/%d,%s/%d,%s/%d) time(%dns) size(%d) Upcoming image buffer: %s";
inline constexpr char kAllocationFailed[] =
        "Allocation failed, hence dump right away, heap size: %ld";
inline constexpr char kDirectOpenFailed[] = "Direct Dump FILE open errorno: %s";
inline constexpr char kOpenFailed[] = "FILE open errorno: %s";
inline constexpr char kWriteFailed[] = "FILE write errorno: %s, %zu of %zu bytes written to %s";
inline constexpr char kDumpFailed[] = "Dump Failed";
inline constexpr char kBadSize[] = "buffer size (%d) of %s is negative or the buffer is null";

// Carried buffers.
inline constexpr char kPushBuffer[] =
        "category(%s/%d) module(%s/%d) ndd(%09d-%04d-%04d) size(%d) entry size(%d)";
inline constexpr char kDumpCarried[] =
        "(%s/%d) (%s/%d) (%09d-%04d-%04d,f:%s/%d) size(%d) entry size(%d)";

// Scenario recorder texts.
inline constexpr char kSkipRecord[] = "skip %s";

}  // namespace ndd_msg
}  // namespace TuningUtils
}  // namespace NSCam
