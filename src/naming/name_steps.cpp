#include "naming/name_steps.h"

#include <cstring>

#include "naming/name_elements.h"

namespace camtune {
namespace naming {
namespace {

// The hint's strings are meant to be terminated inside their arrays; a caller that filled one
// to the brim still gets a name, not a read past the array.
template <size_t N>
int appendHintString(NameWriter& writer, const char (&text)[N]) {
    if (text[0] == '\0') return 0;
    const void* end = std::memchr(text, '\0', N);
    const int length = static_cast<int>(end != nullptr ? static_cast<const char*>(end) - text : N);
    return writer.append("-", Span{text, static_cast<size_t>(length)});
}

}  // namespace

void appendSensor(NameWriter& writer, const FILE_DUMP_NAMING_HINT& hint, SensorElement rule) {
    if (rule == SensorElement::WhenSet && hint.SensorDev < 0) return;
    writer.append("-", sensorName(hint.SensorDev));
}

int appendHintUserString(NameWriter& writer, const FILE_DUMP_NAMING_HINT& hint) {
    return appendHintString(writer, hint.UserString);
}

int appendExposureLabel(NameWriter& writer, const FILE_DUMP_NAMING_HINT& hint) {
    return appendHintString(writer, hint.ExpString);
}

int appendCallerString(NameWriter& writer, const char* userString) {
    if (userString == nullptr || userString[0] == '\0') return 0;
    return writer.append("-", userString);
}

void appendBufferGeometry(NameWriter& writer, const FILE_DUMP_NAMING_HINT& hint) {
    writer.append("-PW", Decimal{hint.BufWidth}, "-PH", Decimal{hint.BufHeight}, "-BW",
                  Decimal{hint.BufStride});
}

}  // namespace naming
}  // namespace camtune
