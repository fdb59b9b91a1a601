#include "recorder/convert_to_string.h"

#include <algorithm>
#include <iterator>

#include "camtune/mappinginfo_converter.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

struct NameRow {
    uint32_t id;
    const char* name;
};

constexpr NameRow kDecisionNames[] = {
        {DECISION_ATMS_MAPPING, "ATMS_MAPPING"},
        {DECISION_TOP_CONTROL, "TOP_CONTROL"},
        {DECISION_NORMAL_DATA_DUMP, "NORMAL_DATA_DUMP"},
        {DECISION_AE_EXPOSURE_PARAM, "AE_EXPOSURE_PARAM"},
        {DECISION_TRIGGER_FEATURE, "TRIGGER_FEATURE"},
        {DECISION_ISP_FLOW, "ISP_FLOW"},
};

// Module ids group by their upper bits; several ids share a name. Sorted by id.
constexpr NameRow kModuleNames[] = {
        {0x202001, "CameraMiddleware"},
        {0x202002, "CameraMiddleware"},
        {0x207001, "CameraMiddleware"},
        {0x207002, "CameraMiddleware"},
        {0x207003, "CameraMiddleware"},
        {0x207004, "CameraMiddleware"},
        {0x207006, "CameraMiddleware"},
        {0x207007, "CameraMiddleware"},
        {0x207008, "CameraMiddleware"},
        {0x207009, "CameraMiddleware"},
        {0x20700a, "CameraMiddleware"},
        {0x20700b, "CameraMiddleware"},
        {0x20700c, "CameraMiddleware"},
        {0x401001, "P1_NODE"},
        {0x401002, "P1_NODE"},
        {0x401003, "P1_NODE"},
        {0x402001, "P2Capture"},
        {0x402002, "JPEG_Node"},
        {0x402003, "RAW16_NODE"},
        {0x404001, "P2Streaming"},
        {0x404002, "FaceDetection"},
        {0x801000, "3A"},
        {0x801005, "IspTuning"},
        {0x1002001, "P2Capture"},
        {0x1002002, "P2Capture"},
        {0x1002003, "P2Capture"},
        {0x1002004, "P2Capture"},
        {0x1002005, "P2Capture"},
        {0x1002006, "P2Capture"},
        {0x1002007, "P2Capture"},
        {0x1002008, "P2Capture"},
        {0x1002009, "P2Capture"},
        {0x100200a, "P2Capture"},
        {0x100200b, "P2Capture"},
        {0x1004001, "P2Streaming"},
        {0x1004002, "P2Streaming"},
        {0x1004003, "P2Streaming"},
        {0x1004004, "P2Streaming"},
        {0x1004005, "P2Streaming"},
        {0x1004006, "P2Streaming"},
        {0x1004008, "P2Streaming"},
        {0x1004009, "P2Streaming"},
        {0x100400a, "P2Streaming"},
        {0x100400c, "P2Streaming"},
        {0x100400d, "P2Streaming"},
        {0x100400e, "P2Streaming"},
        {0x1004010, "P2Streaming"},
        {0x1004011, "P2Streaming"},
        {0x1004012, "P2Streaming"},
        {0x1004013, "P2Streaming"},
        {0x1004014, "P2Streaming"},
        {0x1004015, "P2Streaming"},
        {0x1004016, "P2Streaming"},
        {0x1004017, "P2Streaming"},
        {0x8001001, "PD_HAL"},
        {0x8001002, "LMV_HAL"},
        {0x8001003, "VHDR_HAL"},
        {0x8001004, "CHDR_HAL"},
        {0x8001005, "FaceDetection"},
        {0x8001006, "ASD_HAL"},
        {0x8002001, "MFNR"},
        {0x8002002, "AINR"},
        {0x8002003, "SWNR"},
        {0x8002004, "HDR"},
        {0x8002005, "ZSDHDR"},
        {0x8002006, "DEPTH"},
        {0x8002007, "BOKEH"},
        {0x8002008, "FUSION"},
        {0x8002009, "PUREBOKEH"},
        {0x800200a, "ABF"},
        {0x800200b, "FaceDetection"},
        {0x800200c, "LPNR"},
        {0x8004001, "EIS"},
        {0x8004002, "3DNR"},
        {0x8004003, "FSC"},
        {0x8004004, "RSS"},
        {0x40007001, "Utils"},
};
static_assert(std::size(kModuleNames) == 77, "every module row");

constexpr bool sortedById(const NameRow* rows, size_t count) {
    for (size_t i = 1; i < count; ++i) {
        if (rows[i - 1].id >= rows[i].id) return false;
    }
    return true;
}
static_assert(sortedById(kModuleNames, std::size(kModuleNames)), "searched by binary search");
static_assert(sortedById(kDecisionNames, std::size(kDecisionNames)), "searched by binary search");

template <size_t N>
const char* find(const NameRow (&rows)[N], uint32_t id, const char* missing) {
    auto it = std::lower_bound(std::begin(rows), std::end(rows), id,
                               [](const NameRow& row, uint32_t value) { return row.id < value; });
    return it != std::end(rows) && it->id == id ? it->name : missing;
}

constexpr char kNoModuleName[] = "noModuleName";
constexpr char kNoDecisionName[] = "noDecisionName";
constexpr char kInvalidStage[] = "INVALID_STAGE";
constexpr unsigned int kMaxStage = 190;

}  // namespace

ConvertToString* ConvertToString::getInstance() {
    // Never destroyed: records may still be formatted while the process exits.
    static ConvertToString* sInstance = new ConvertToString();
    return sInstance;
}

const char* ConvertToString::getModuleName(int moduleId) const {
    return find(kModuleNames, static_cast<uint32_t>(moduleId), kNoModuleName);
}

const char* ConvertToString::getDecisionName(DecisionType decision) const {
    return find(kDecisionNames, static_cast<uint32_t>(decision), kNoDecisionName);
}

const char* ConvertToString::getStageName(int stage) const {
    if (static_cast<unsigned int>(stage) > kMaxStage) return kInvalidStage;
    return MappinginfoConverter::createInstance()->factorToString(NSIspTuning::EDim_Stage,
                                                                  static_cast<unsigned int>(stage));
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
