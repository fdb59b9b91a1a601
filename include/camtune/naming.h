// Dump-file naming: the naming hint, the common prefix and one name per kind of dumped file.
//
// Every name is written into a caller-supplied buffer of `size` bytes with bounded printing; an
// element that does not fit is left out and the next one is written where it would have started.
#pragma once

#include <cstdint>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {
class IMetadata;
class IImageBuffer;
}  // namespace NSCam

namespace NSIspTuning {
// ISP profile of the pass that produced a buffer (the pipeline's enumeration).
enum EIspProfile_T : int32_t {
    EIspProfile_Preview = 0,
    EIspProfile_Video,
    EIspProfile_Capture,
    EIspProfile_NUM
};
}  // namespace NSIspTuning

namespace NSCam {
namespace TuningUtils {

struct FILE_DUMP_NAMING_HINT {
    FILE_DUMP_NAMING_HINT();

    int32_t UniqueKey;
    int32_t FrameNo;
    int32_t RequestNo;
    int32_t ImgWidth;
    int32_t ImgHeight;
    int32_t BufWidth;   // plane-0 stride in pixels ("PW")
    int32_t BufHeight;  // plane-0 rows ("PH")
    int32_t BufStride;  // plane-0 stride in bytes ("BW")
    int32_t ImgFormat;
    int32_t IspProfile;
    int32_t SensorFormatOrder;
    int32_t AuxValue;
    int32_t SensorOpenId;
    int32_t SensorDev;
    int32_t EvValue;
    char UserString[32];
    char ExpString[32];
};

// Port of a raw image dump: -2 none, 0 imgo, 1 rrzo.
enum RAW_PORT : int32_t {
    RAW_PORT_NULL = -2,
    RAW_PORT_IMGO = 0,
    RAW_PORT_RRZO = 1,
};

// Port of a YUV image dump.
enum YUV_PORT : int32_t {
    YUV_PORT_NULL = -2,
    YUV_PORT_UNDEFINED = -1,
    YUV_PORT_IMG2O = 0,
    YUV_PORT_IMG3O = 1,
    YUV_PORT_WROTO = 2,
    YUV_PORT_WDMAO = 3,
    YUV_PORT_TIMGO = 4,
    YUV_PORT_DP0 = 5,
    YUV_PORT_DP1 = 6,
    YUV_PORT_CRZOR1 = 7,
    YUV_PORT_VNRO = 8,
    YUV_PORT_IMGI = 9,
    YUV_PORT_RECSDI = 10,
    YUV_PORT_YUVO = 11,
    YUV_PORT_YUV2O = 12,
    YUV_PORT_YUV3O = 13,
    YUV_PORT_YUV4O = 14,
};

bool extract(FILE_DUMP_NAMING_HINT* hint, const IMetadata* meta);
bool extract(FILE_DUMP_NAMING_HINT* hint, const IImageBuffer* buf);
bool extract_by_SensorDev(FILE_DUMP_NAMING_HINT* hint, int sensorDev);
bool extract_by_SensorOpenId(FILE_DUMP_NAMING_HINT* hint, int openId);

// Readable name of an ISP profile; null for every profile in this build (callers treat null as
// "no name").
const char* getIspProfileName(NSIspTuning::EIspProfile_T profile);

int MakePrefix(char* buf, int size, int uniqueKey, int frameNo, int requestNo, int evValue);

int genFileName_RAW(char* buf, int size, const FILE_DUMP_NAMING_HINT* hint, RAW_PORT port,
                    const char* userString = nullptr);
int genFileName_YUV(char* buf, int size, const FILE_DUMP_NAMING_HINT* hint, YUV_PORT port,
                    const char* userString = nullptr);
int genFileName_JPG(char* buf, int size, const FILE_DUMP_NAMING_HINT* hint,
                    const char* userString = nullptr);

#define CAMTUNE_DATA_FILE_NAME(kind)                                               \
    int genFileName_##kind(char* buf, int size, const FILE_DUMP_NAMING_HINT* hint, \
                           const char* userString = nullptr);
CAMTUNE_DATA_FILE_NAME(HW_AAO)
CAMTUNE_DATA_FILE_NAME(HW_AAHO)
CAMTUNE_DATA_FILE_NAME(LCSO)
CAMTUNE_DATA_FILE_NAME(TSF)
CAMTUNE_DATA_FILE_NAME(Reg)
CAMTUNE_DATA_FILE_NAME(TUNING)
CAMTUNE_DATA_FILE_NAME(VSDOF_BUFFER)
CAMTUNE_DATA_FILE_NAME(YNR_FD_TBL)
CAMTUNE_DATA_FILE_NAME(DCESO)
CAMTUNE_DATA_FILE_NAME(LTM_CURVE)
CAMTUNE_DATA_FILE_NAME(BPC_TBL)
CAMTUNE_DATA_FILE_NAME(face_info)
CAMTUNE_DATA_FILE_NAME(FD_data)
CAMTUNE_DATA_FILE_NAME(LCESHO)
CAMTUNE_DATA_FILE_NAME(MSS_REG)
CAMTUNE_DATA_FILE_NAME(MFB_REG)
CAMTUNE_DATA_FILE_NAME(P2_REG)
CAMTUNE_DATA_FILE_NAME(AISA)
CAMTUNE_DATA_FILE_NAME(AIGA)
#undef CAMTUNE_DATA_FILE_NAME

}  // namespace TuningUtils
}  // namespace NSCam

CAMTUNE_EXPORT_END
