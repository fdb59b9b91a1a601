// The nineteen data-file kinds (statistics, registers, tuning buffers, tables) and the one rule
// that names them all.
#pragma once

#include <cstddef>

#include "camtune/naming.h"
#include "naming/name_steps.h"

namespace camtune {
namespace naming {

// What a kind adds beyond the common elements.
enum class DataExtra {
    None,
    HintUserStringTwice,  // the hint's UserString is written a second time
    LcsoGeometry,         // buffer geometry and a size with a fixed bit depth, after the free texts
    ExposureLabel,        // the hint's ExpString, after the profile element
};

struct DataFileKind {
    const char* name;  // as in genFileName_<name>
    SensorElement sensor;
    bool profile;  // "-<profile name>" (or "-profile") before the suffix
    DataExtra extra;
    const char* suffix;  // last element; null when the caller appends its own extension
};

// Every kind, in declaration order of the genFileName_* functions.
const DataFileKind* dataFileKinds(size_t* count);
// The kind called `name`, compared without case; null when there is none.
const DataFileKind* findDataFileKind(const char* name);

// Writes the name of `kind`. Returns the print result of the kind's last element, or 0 when
// that element is a free text or label that was empty.
int genDataFileName(const DataFileKind& kind, char* buf, int size,
                    const NSCam::TuningUtils::FILE_DUMP_NAMING_HINT& hint, const char* userString);

}  // namespace naming
}  // namespace camtune
