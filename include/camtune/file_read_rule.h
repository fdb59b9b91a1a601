// Dump-in and reprocess: reading earlier dumps back into the pipeline.
//
// The dump-in list (a text file named by a property) maps a kind of data, a request number and
// an ISP profile to a file. FileReadRule finds entries in it, loads image buffers from the named
// files and checks tuning-table paths. It also keeps the reprocess list (the frames of a replayed
// capture), renames the files dumped during a replay and writes register dumps.
//
// FileReadRule holds no state: every call reads the properties and the list afresh. The only
// shared state is the reprocess list, guarded by one process-wide mutex.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "camtune/export.h"
#include "camtune/naming.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {
class IImageBuffer;

namespace TuningUtils {

// Kind of tuning data looked up by Extract_File; the value selects the list keyword. Values
// without a keyword (the reserved ones and anything outside 2..11) only match list entries whose
// format field is empty.
enum ETuningFormat_T : int32_t {
    eTuningFormat_None = 0,
    eTuningFormat_Reserved1 = 1,
    eTuningFormat_LSC = 2,
    eTuningFormat_P2Tuning = 3,
    eTuningFormat_Reserved4 = 4,
    eTuningFormat_MFB = 5,
    eTuningFormat_MFBTable = 6,
    eTuningFormat_LTM = 7,
    eTuningFormat_YNRMap = 8,
    eTuningFormat_Reserved9 = 9,
    eTuningFormat_MSS = 10,
    eTuningFormat_FaceInfo = 11,
};

// Keyword of LPCNR tuning entries; callers of getFile_LPCNR_TUNING pass it as pUserString.
inline constexpr char kLpcnrTuningKeyword[] = "lpcnr";

// One dump-in list entry ("format,reqNum,ispProfile;path"), also the key of a search.
struct TUNING_CFG_T {
    std::string str_format;
    std::string str_reqNum;  // "%04d" of the request number
    std::string str_ispProfile;
    std::string str_usage;  // carried, never parsed nor compared
    std::string str_file;
};

// State of the frame being reprocessed: the search key and the identity of its dump prefix
// ("%09d-%04d-%04d" of info3, info2, info1).
struct TUNING_CURRENT_INFO_T {
    uint32_t key = 0;
    uint32_t info1 = 0;
    uint32_t info2 = 0;
    uint32_t info3 = 0;
};

// One frame of the reprocess configuration.
struct TUNING_REPROCESS_CFG_T {
    int32_t reqNum = 0;
    std::string ispProfile;
    std::string uniqueKey;                           // the same for every frame of a configuration
    int32_t rawStride = 0;                           // the same for every frame of a configuration
    std::map<std::string, int> nr3dEntries;          // formats containing "nr3d": format to value
    std::map<std::string, std::string> fileEntries;  // other formats: format to path
    // Content of the frame's "p1reg" file, or null. Shared, so a copy handed out stays valid
    // after the list lets go of it.
    std::shared_ptr<const std::vector<uint8_t>> p1RegBuffer;
    TUNING_CURRENT_INFO_T currentInfo;
};

class FileReadRule {
public:
    FileReadRule() = default;

    // Switches: 1 when the dump-in (read back) or dump bit of the enable property is set.
    int isREADEnable(const char* name = nullptr);
    int isDumpEnable(const char* name = nullptr);

    // Values of the list's "uniqueKey" and "requestNo" lines, 0 when absent. The arguments are
    // not consulted.
    int getFile_uniqueKey(const char* name = nullptr, int idx = 0);
    int getFile_requestNo(const char* name = nullptr, int idx = 0);

    void Extract_Tuning_CFG(std::string& line, TUNING_CFG_T& cfg);
    int Extract_File(int reqNum, const char* ispProfile, char* outPath, int outSize,
                     const char* pUserString, ETuningFormat_T format);
    void removeRedundancy(std::string& text);

    // Image loaders: 1 when the buffer was filled from the listed file. The buffer is unlocked
    // and locked again for the named user around the load.
    int getFile_RAW(int reqNum, const char* ispProfile, IImageBuffer* pbuf, const char* pUserString,
                    int idx = 0);
    int getFile_LCSO(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                     const char* pUserString, int idx = 0);
    int getFile_RRZO(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                     const char* pUserString, int idx = 0);
    int getFile_WarpingRaw(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                           const char* pUserString, const char* pBufString, int idx = 0);
    int getFile_YUV(int reqNum, const char* ispProfile, IImageBuffer* pbuf, const char* pUserString,
                    YUV_PORT yuv_port, int idx = 0);
    int getFile_YNR_MAP(int reqNum, const char* ispProfile, IImageBuffer* pbuf,
                        const char* pUserString, int idx = 0);

    // Tuning tables: 1 when the list names a file for the request and it can be opened; the
    // path is written into outPath whenever an entry was found.
    int getFile_LSC(int reqNum, const char* ispProfile, char* outPath, int outSize,
                    const char* pUserString);
    int getFile_P2TUNING(int reqNum, const char* ispProfile, char* outPath, int outSize,
                         const char* pUserString);
    int getFile_LTMCURVE(int reqNum, const char* ispProfile, char* outPath, int outSize,
                         const char* pUserString);
    int getFile_MFB(int reqNum, const char* ispProfile, char* outPath, int outSize,
                    const char* pUserString);
    int getFile_FD_DATA(int reqNum, const char* ispProfile, char* outPath, int outSize,
                        const char* pUserString);
    int getFile_MFB(const FILE_DUMP_NAMING_HINT& hint, char* outPath, int outSize,
                    const char* pUserString);
    int getFile_MFB_TBL(const FILE_DUMP_NAMING_HINT& hint, char* outPath, int outSize,
                        const char* pUserString);
    int getFile_MSS(const FILE_DUMP_NAMING_HINT& hint, char* outPath, int outSize,
                    const char* pUserString);
    int getFile_LPCNR_TUNING(int reqNum, const char* ispProfile, char* outPath, int outSize,
                             const char* pUserString);

    // Reprocess list. initReprocInfo replaces the list with the configuration's frames; it
    // throws std::invalid_argument (or std::out_of_range) when a request number or an "nr3d"
    // value is not a number.
    bool enableReproc();
    void initReprocInfo();
    unsigned int getReprocInfoSize();
    int getReprocIndex(unsigned int key);
    bool getReprocInfo(unsigned int index, TUNING_REPROCESS_CFG_T& out);
    bool updateReprocInfo(unsigned int index, const TUNING_CURRENT_INFO_T& info);
    void uninitReprocInfo();

    // Rewrites the hint's unique key, frame number and request number from the dump-in list;
    // false (hint unchanged) when dump-in is off.
    bool on_device_dump_file_rename(int reqNum, const char* ispProfile, FILE_DUMP_NAMING_HINT& hint,
                                    const char* pUserString = nullptr);

    // Per-stage register dumps this build does not write: always 0, no file.
    int DumpP1ForDP(const char* fileName, const void* data, int size);
    int DumpP2ForDP(const char* fileName, const void* data, int size);
    int DumpMfbForDP(const char* fileName, const void* data, int size);
    int DumpMssForDP(const char* fileName, const void* data, int size);
};

// Splits one list line into cfg; on return `line` holds what followed the third separator.
void Extract_Tuning_CFG(std::string& line, TUNING_CFG_T& cfg);

int Extract_File(int reqNum, const char* ispProfile, char* outPath, int outSize,
                 const char* pUserString, ETuningFormat_T format);

// Value of the list's "raw_stride" line, 0 when absent. The arguments are not consulted.
int get_raw_stride(const char* name = nullptr, int idx = 0);

// Writes a register block as: word count (size / 4 + 1), a reserved 0, the data; integers are
// 32-bit little-endian. 1 when every byte was written.
int DumpRegForDP(const char* fileName, const void* data, int size);

}  // namespace TuningUtils
}  // namespace NSCam

CAMTUNE_EXPORT_END
