// File names of dumped items, and the geometry an image adds to them.
#define LOG_TAG "NDD"

#include <cstdlib>

#include "camtune/naming_vocabulary.h"
#include "camtune/platform/image_buffer.h"
#include "camtune/platform/image_format.h"
#include "camtune/platform/log.h"
#include "camtune/platform/sensor_list.h"
#include "naming/dump_format_names.h"
#include "ndd/item_names.h"
#include "ndd/ndd_impl.h"
#include "ndd/ndd_messages.h"

namespace NSCam {
namespace TuningUtils {

namespace {

constexpr char kFieldOpen = '[';
constexpr char kFieldClose = ']';
constexpr char kFormatField[] = "Format";
constexpr int kNoValue = -1;

// The colour-filter order of the sensor, or `fallback` when the sensor list does not know it.
int sensorColourOrder(int sensorId, int fallback) {
    IHalSensorList* list = IHalSensorList::get();
    if (list == nullptr || sensorId < 0) return fallback;
    uint32_t device = list->querySensorDevIdx(static_cast<uint32_t>(sensorId));
    if (device == 0) return fallback;
    SensorStaticInfo info;
    info.sensorFormatOrder = fallback;
    list->querySensorStaticInfo(device, &info);
    return info.sensorFormatOrder;
}

// Why `name` cannot be a file in the dump folder, as a log format taking the name; null when
// it can.
const char* unusableName(const std::string& name) {
    if (name.find('/') != std::string::npos) return ndd_msg::kNameWithSlash;
    // A pattern may hold a NUL byte; the file opened would be named only up to it.
    if (name.find('\0') != std::string::npos) return ndd_msg::kNameWithNul;
    if (name == "." || name == "..") return ndd_msg::kNameIsFolder;
    return nullptr;
}

}  // namespace

std::string Ndd::get_filename(eCategory category, eModule module, NddData& data,
                              IImageBuffer* image) {
    ConfigValues values;
    std::string pattern;
    findConfig(data, category, module, &values, &pattern);

    if (static_cast<unsigned int>(data.stage) >= static_cast<unsigned int>(NAMING_STAGE_NUM)) {
        CAM_LOGE(ndd_msg::kInvalidStage, data.stage);
        data.stage = kNoValue;
    }
    if (data.sensorId < 0 || static_cast<size_t>(data.sensorId) >= mTables->sensorIdCount()) {
        CAM_LOGE(ndd_msg::kInvalidSensorId, data.sensorId);
        data.sensorId = kNoValue;
    }

    std::string name;
    std::string piece;
    size_t at = 0;
    while (at < pattern.size()) {
        size_t open = pattern.find(kFieldOpen, at);
        if (open == std::string::npos) {
            name.append(pattern, at, std::string::npos);
            break;
        }
        name.append(pattern, at, open - at);
        size_t close = pattern.find(kFieldClose, open + 1);
        if (close == std::string::npos) {
            CAM_LOGE("%s", ndd_msg::kWrongPattern);
            break;
        }
        const std::string field = pattern.substr(open + 1, close - open - 1);
        if (field == kFormatField) {
            if (image != nullptr) {
                name += camtune::naming::dumpExtension(image->getImgFormat());
            } else {
                CAM_LOGE("%s", ndd_msg::kFormatOnArray);
            }
        } else if (mTables->convert(field, data, &piece)) {
            name += piece;
        } else {
            CAM_LOGE(ndd_msg::kUnknownRule, field.c_str());
        }
        at = close + 1;
    }
    return name;
}

bool Ndd::composePath(eCategory category, eModule module, NddData& data, IImageBuffer* image,
                      std::string* path) {
    const std::string name = get_filename(category, module, data, image);
    if (name.empty()) {
        CAM_LOGE(ndd_msg::kEmptyName, nddFeatureName(data.feature), nddStageName(data.stage),
                 mTables->getCategoryName(category), mTables->getModuleName(module));
        mFailedDumps.fetch_add(1);
        return false;
    }
    if (const char* why = unusableName(name)) {
        CAM_LOGE(why, name.c_str());
        mFailedDumps.fetch_add(1);
        return false;
    }
    *path = dumpFolder();
    *path += '/';
    *path += name;
    return true;
}

void Ndd::handleimgbuf(NddData& data, IImageBuffer* image) {
    if (image == nullptr) {
        CAM_LOGE("%s", ndd_msg::kNullImage);
        return;
    }
    const MSize size = image->getImgSize();
    const int32_t format = image->getImgFormat();
    const size_t stride = image->getBufStridesInBytes(0);
    const size_t planeBits = image->getPlaneBitsPerPixel(0);
    data.bufferWidth = static_cast<int32_t>(stride);
    data.paddedWidth = planeBits != 0 ? static_cast<int32_t>(stride * 8 / planeBits) : size.w;
    data.paddedHeight = static_cast<int32_t>(image->getBufHeight(0));
    data.width = size.w;
    data.height = size.h;
    // The bit depth file names carry; formats without one report their first plane's.
    const int namedBits = std::atoi(camtune::naming::dumpBitDepthName(format));
    data.bitDepth = namedBits > 0 ? namedBits : static_cast<int32_t>(planeBits);
    const ImageFormatInfo* info = findImageFormat(format);
    if (info != nullptr && info->isBayer) {
        data.bayerOrder = sensorColourOrder(data.sensorId, data.bayerOrder);
    }
    CAM_LOGD(ndd_msg::kImageFields, data.paddedWidth, data.paddedHeight, data.bufferWidth,
             data.width, data.height, static_cast<int>(image->getImgBitsPerPixel()),
             camtune::naming::dumpExtension(format), data.bayerOrder);
}

}  // namespace TuningUtils
}  // namespace NSCam
