// Names of dumped statistics, register snapshots, tuning buffers, curves and tables.
#include <cctype>
#include <iterator>

#include "naming/data_file_kinds.h"
#include "naming/name_elements.h"
#include "naming/prefix.h"

namespace camtune {
namespace naming {
namespace {

using S = SensorElement;
using X = DataExtra;

// Bit depth written into LCSO names whatever the buffer's format.
constexpr int kLcsoBitDepth = 12;

// Order matches the genFileName_* definitions below (checked at compile time).
constexpr DataFileKind kKinds[] = {
        {"HW_AAO", S::Always, false, X::HintUserStringTwice, ".hw_aao"},
        {"HW_AAHO", S::Always, false, X::None, ".hw_aaho"},
        {"LCSO", S::WhenSet, false, X::LcsoGeometry, ".lcso"},
        {"TSF", S::Always, true, X::None, ".tsfso"},
        {"Reg", S::Always, true, X::ExposureLabel, nullptr},
        {"TUNING", S::Always, true, X::None, ".tuning"},
        {"VSDOF_BUFFER", S::Always, false, X::None, nullptr},
        {"YNR_FD_TBL", S::Always, false, X::None, "-fd.ynrtbl"},
        {"DCESO", S::Always, false, X::None, ".dceso"},
        {"LTM_CURVE", S::Always, true, X::None, ".ltm"},
        {"BPC_TBL", S::Always, false, X::None, ".bpci"},
        {"face_info", S::Always, true, X::None, ".faceinfo"},
        {"FD_data", S::Always, false, X::None, ".fd_bin"},
        {"LCESHO", S::Always, false, X::None, ".lcesho"},
        {"MSS_REG", S::Always, true, X::None, "_mss.reg"},
        {"MFB_REG", S::Always, true, X::None, "_mfb.reg"},
        {"P2_REG", S::Always, true, X::None, "_p2.reg"},
        {"AISA", S::Always, false, X::None, ".aisa"},
        {"AIGA", S::Always, false, X::None, ".aima"},
};

int appendProfile(NameWriter& writer, int32_t ispProfile) {
    const char* name = NSCam::TuningUtils::getIspProfileName(
            static_cast<NSIspTuning::EIspProfile_T>(ispProfile));
    return name != nullptr ? writer.append("-", name) : writer.append(kNoProfileElement);
}

bool sameNameIgnoringCase(const char* a, const char* b) {
    for (; *a != '\0' && *b != '\0'; ++a, ++b) {
        if (std::tolower(static_cast<unsigned char>(*a)) !=
            std::tolower(static_cast<unsigned char>(*b))) {
            return false;
        }
    }
    return *a == *b;
}

constexpr bool sameName(const char* a, const char* b) {
    for (; *a != '\0' && *a == *b; ++a, ++b) {
    }
    return *a == *b;
}

}  // namespace

const DataFileKind* dataFileKinds(size_t* count) {
    if (count != nullptr) *count = std::size(kKinds);
    return kKinds;
}

const DataFileKind* findDataFileKind(const char* name) {
    if (name == nullptr) return nullptr;
    for (const DataFileKind& kind : kKinds) {
        if (sameNameIgnoringCase(kind.name, name)) return &kind;
    }
    return nullptr;
}

int genDataFileName(const DataFileKind& kind, char* buf, int size,
                    const FILE_DUMP_NAMING_HINT& hint, const char* userString) {
    NameWriter writer(buf, size);
    writeHintPrefix(writer, hint);
    appendSensor(writer, hint, kind.sensor);

    // `last` follows the element the kind ends with; an element left out counts as 0.
    int last = appendHintUserString(writer, hint);
    if (kind.extra == X::HintUserStringTwice) last = appendHintUserString(writer, hint);
    last = appendCallerString(writer, userString);
    if (kind.extra == X::LcsoGeometry) {
        appendBufferGeometry(writer, hint);
        last = writer.append("__", Decimal{hint.ImgWidth}, "x", Decimal{hint.ImgHeight}, "_",
                             Decimal{kLcsoBitDepth}, "_s0");
    }
    if (kind.profile) last = appendProfile(writer, hint.IspProfile);
    if (kind.extra == X::ExposureLabel) last = appendExposureLabel(writer, hint);
    if (kind.suffix != nullptr) last = writer.append(kind.suffix);
    return last;
}

}  // namespace naming
}  // namespace camtune

namespace NSCam {
namespace TuningUtils {

// One definition per kind; each only picks its row.
#define CAMTUNE_DATA_FILE_NAME(index, kind)                                                       \
    static_assert(camtune::naming::sameName(camtune::naming::kKinds[index].name, #kind),          \
                  "kind table out of order");                                                     \
    int genFileName_##kind(char* buf, int size, const FILE_DUMP_NAMING_HINT* hint,                \
                           const char* userString) {                                              \
        if (hint == nullptr) return camtune::naming::rejectNullHint(buf, size, __func__);         \
        return camtune::naming::genDataFileName(camtune::naming::kKinds[index], buf, size, *hint, \
                                                userString);                                      \
    }
CAMTUNE_DATA_FILE_NAME(0, HW_AAO)
CAMTUNE_DATA_FILE_NAME(1, HW_AAHO)
CAMTUNE_DATA_FILE_NAME(2, LCSO)
CAMTUNE_DATA_FILE_NAME(3, TSF)
CAMTUNE_DATA_FILE_NAME(4, Reg)
CAMTUNE_DATA_FILE_NAME(5, TUNING)
CAMTUNE_DATA_FILE_NAME(6, VSDOF_BUFFER)
CAMTUNE_DATA_FILE_NAME(7, YNR_FD_TBL)
CAMTUNE_DATA_FILE_NAME(8, DCESO)
CAMTUNE_DATA_FILE_NAME(9, LTM_CURVE)
CAMTUNE_DATA_FILE_NAME(10, BPC_TBL)
CAMTUNE_DATA_FILE_NAME(11, face_info)
CAMTUNE_DATA_FILE_NAME(12, FD_data)
CAMTUNE_DATA_FILE_NAME(13, LCESHO)
CAMTUNE_DATA_FILE_NAME(14, MSS_REG)
CAMTUNE_DATA_FILE_NAME(15, MFB_REG)
CAMTUNE_DATA_FILE_NAME(16, P2_REG)
CAMTUNE_DATA_FILE_NAME(17, AISA)
CAMTUNE_DATA_FILE_NAME(18, AIGA)
#undef CAMTUNE_DATA_FILE_NAME

}  // namespace TuningUtils
}  // namespace NSCam
