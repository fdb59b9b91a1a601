// The naming hint and how the pipeline fills it from metadata, an image buffer and the sensor.
#include <cstdio>
#include <cstring>

#include "camtune/naming.h"
#include "camtune/platform/image_buffer.h"
#include "camtune/platform/metadata.h"
#include "camtune/platform/sensor_list.h"
#include "naming/name_elements.h"

namespace NSCam {
namespace TuningUtils {
namespace {

// Pipeline vendor tags carrying the request's numbering.
constexpr uint32_t kTagPipelineUniqueKey = 0xC00A0000;
constexpr uint32_t kTagPipelineFrameNumber = 0xC00A0001;
constexpr uint32_t kTagPipelineRequestNumber = 0xC00A0002;
constexpr uint32_t kTagPipelineEvValue = 0xC00A0003;
// Multi-exposure sensor mode, and which exposure of it this frame carries.
constexpr uint32_t kTagMultiExposureMode = 0xC0090004;
constexpr uint32_t kTagExposureSelector = 0xC003002A;

// Modes in which a frame is one exposure of several.
constexpr int32_t kFirstMultiExposureMode = 2;
constexpr int32_t kLastMultiExposureMode = 6;

// Bits per pixel assumed when a buffer reports none.
constexpr size_t kFallbackBitsPerPixel = 8;

}  // namespace

FILE_DUMP_NAMING_HINT::FILE_DUMP_NAMING_HINT()
    : UniqueKey(-1),
      FrameNo(-1),
      RequestNo(-1),
      ImgWidth(0),
      ImgHeight(0),
      BufWidth(0),
      BufHeight(0),
      BufStride(0),
      ImgFormat(-1),
      IspProfile(-1),
      SensorFormatOrder(-1),
      AuxValue(-1),
      SensorOpenId(-1),
      SensorDev(-1),
      EvValue(-1),
      UserString{},
      ExpString{} {}

bool extract(FILE_DUMP_NAMING_HINT* hint, const IMetadata* meta) {
    if (hint == nullptr || meta == nullptr) return false;
    IMetadata::getEntry<int32_t>(meta, kTagPipelineUniqueKey, hint->UniqueKey);
    IMetadata::getEntry<int32_t>(meta, kTagPipelineFrameNumber, hint->FrameNo);
    IMetadata::getEntry<int32_t>(meta, kTagPipelineRequestNumber, hint->RequestNo);
    IMetadata::getEntry<int32_t>(meta, kTagPipelineEvValue, hint->EvValue);

    int32_t mode = 0;
    int32_t selector = 0;
    IMetadata::getEntry<int32_t>(meta, kTagMultiExposureMode, mode);
    IMetadata::getEntry<int32_t>(meta, kTagExposureSelector, selector);
    const char* label = camtune::naming::exposureLabel(selector);
    if (mode >= kFirstMultiExposureMode && mode <= kLastMultiExposureMode && label != nullptr) {
        return std::snprintf(hint->ExpString, sizeof(hint->ExpString), "%s", label) >= 0;
    }
    return true;
}

bool extract(FILE_DUMP_NAMING_HINT* hint, const IImageBuffer* buf) {
    if (hint == nullptr || buf == nullptr) return false;
    const MSize size = buf->getImgSize();
    hint->ImgWidth = size.w;
    hint->ImgHeight = size.h;
    hint->ImgFormat = buf->getImgFormat();

    const size_t strideBytes = buf->getBufStridesInBytes(0);
    size_t bpp = buf->getPlaneBitsPerPixel(0);
    if (bpp == 0) bpp = kFallbackBitsPerPixel;
    const size_t strideBits = strideBytes * 8;
    hint->BufWidth = strideBits < bpp ? 1 : static_cast<int32_t>(strideBits / bpp);
    hint->BufHeight = static_cast<int32_t>(buf->getBufHeight(0));
    hint->BufStride = static_cast<int32_t>(strideBytes);
    return true;
}

namespace {

// Colour-filter order of `sensorDev`, or -1 without a sensor list.
bool fillFormatOrder(FILE_DUMP_NAMING_HINT* hint, const IHalSensorList* list) {
    if (list == nullptr) {
        hint->SensorFormatOrder = -1;
        return false;
    }
    SensorStaticInfo info{};
    list->querySensorStaticInfo(static_cast<uint32_t>(hint->SensorDev), &info);
    hint->SensorFormatOrder = info.sensorFormatOrder;
    return true;
}

}  // namespace

bool extract_by_SensorDev(FILE_DUMP_NAMING_HINT* hint, int sensorDev) {
    if (hint == nullptr) return false;
    hint->SensorDev = sensorDev;
    return fillFormatOrder(hint, IHalSensorList::get());
}

bool extract_by_SensorOpenId(FILE_DUMP_NAMING_HINT* hint, int openId) {
    if (hint == nullptr) return false;
    hint->SensorOpenId = openId;
    IHalSensorList* list = IHalSensorList::get();
    if (list != nullptr) {
        hint->SensorDev =
                static_cast<int32_t>(list->querySensorDevIdx(static_cast<uint32_t>(openId)));
    }
    return fillFormatOrder(hint, list);
}

const char* getIspProfileName(NSIspTuning::EIspProfile_T /*profile*/) {
    // This build carries no profile names; every caller spells the profile generically.
    return nullptr;
}

}  // namespace TuningUtils
}  // namespace NSCam
