// Elements that several kinds of dump-file name share, in the order names use them.
#pragma once

#include "camtune/naming.h"
#include "naming/name_writer.h"

namespace camtune {
namespace naming {

using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

enum class SensorElement { Always, WhenSet };

// "-<sensor>"; with WhenSet only for a sensor device of 0 or more.
void appendSensor(NameWriter& writer, const FILE_DUMP_NAMING_HINT& hint, SensorElement rule);

// "-<hint UserString>" when it is not empty. Returns the print result, or 0 when left out.
int appendHintUserString(NameWriter& writer, const FILE_DUMP_NAMING_HINT& hint);
// "-<ExpString>" when it is not empty. Returns the print result, or 0 when left out.
int appendExposureLabel(NameWriter& writer, const FILE_DUMP_NAMING_HINT& hint);
// "-<userString>" when it is neither null nor empty. Returns the print result, or 0.
int appendCallerString(NameWriter& writer, const char* userString);

// "-PW<stride in pixels>-PH<rows>-BW<stride in bytes>".
void appendBufferGeometry(NameWriter& writer, const FILE_DUMP_NAMING_HINT& hint);

}  // namespace naming
}  // namespace camtune
