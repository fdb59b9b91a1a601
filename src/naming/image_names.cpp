// Names of dumped raw, YUV and JPEG images.
#include "camtune/naming.h"
#include "camtune/platform/image_format.h"
#include "naming/dump_format_names.h"
#include "naming/name_elements.h"
#include "naming/name_steps.h"
#include "naming/prefix.h"

namespace NSCam {
namespace TuningUtils {

using camtune::naming::Decimal;
using camtune::naming::NameWriter;
using camtune::naming::SensorElement;

int genFileName_RAW(char* buf, int size, const FILE_DUMP_NAMING_HINT* hint, RAW_PORT port,
                    const char* userString) {
    if (hint == nullptr) return camtune::naming::rejectNullHint(buf, size, __func__);
    NameWriter writer(buf, size);
    camtune::naming::writeHintPrefix(writer, *hint);
    camtune::naming::appendSensor(writer, *hint, SensorElement::WhenSet);
    if (port != RAW_PORT_NULL) writer.append(camtune::naming::rawPortPiece(port));
    camtune::naming::appendHintUserString(writer, *hint);
    camtune::naming::appendCallerString(writer, userString);
    camtune::naming::appendBufferGeometry(writer, *hint);
    camtune::naming::appendExposureLabel(writer, *hint);
    writer.append("__", Decimal{hint->ImgWidth}, "x", Decimal{hint->ImgHeight}, "_",
                  camtune::naming::dumpBitDepthName(hint->ImgFormat), "_",
                  camtune::naming::colourOrderName(hint->SensorFormatOrder));
    return writer.append(".", camtune::naming::dumpExtension(hint->ImgFormat));
}

int genFileName_YUV(char* buf, int size, const FILE_DUMP_NAMING_HINT* hint, YUV_PORT port,
                    const char* userString) {
    if (hint == nullptr) return camtune::naming::rejectNullHint(buf, size, __func__);
    NameWriter writer(buf, size);
    camtune::naming::writeHintPrefix(writer, *hint);
    camtune::naming::appendSensor(writer, *hint, SensorElement::WhenSet);
    if (port != YUV_PORT_NULL) writer.append(camtune::naming::yuvPortPiece(port));
    camtune::naming::appendHintUserString(writer, *hint);
    camtune::naming::appendCallerString(writer, userString);
    camtune::naming::appendBufferGeometry(writer, *hint);
    // YUV names never carry the exposure label, and "s0" stands where raw names put the
    // colour-filter order.
    writer.append("__", Decimal{hint->ImgWidth}, "x", Decimal{hint->ImgHeight}, "_",
                  camtune::naming::dumpBitDepthName(hint->ImgFormat), "_s0");
    return writer.append(".", camtune::naming::dumpExtension(hint->ImgFormat));
}

int genFileName_JPG(char* buf, int size, const FILE_DUMP_NAMING_HINT* hint,
                    const char* userString) {
    if (hint == nullptr) return camtune::naming::rejectNullHint(buf, size, __func__);
    NameWriter writer(buf, size);
    camtune::naming::writeHintPrefix(writer, *hint);
    camtune::naming::appendHintUserString(writer, *hint);
    camtune::naming::appendCallerString(writer, userString);
    return writer.append(".jpg");
}

}  // namespace TuningUtils
}  // namespace NSCam
