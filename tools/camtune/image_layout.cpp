#include "image_layout.h"

#include <algorithm>
#include <cctype>

namespace camtune {
namespace cli {
namespace image {
namespace {

struct Row {
    int32_t code;
    Arrangement arrangement;
    int sampleBytes;
    int depth;
};

// clang-format off
constexpr Row kRows[] = {
    {NSCam::eImgFmt_NV21,          Arrangement::SemiVU,      1, 8},
    {NSCam::eImgFmt_NV12,          Arrangement::SemiUV,      1, 8},
    {NSCam::eImgFmt_YUY2,          Arrangement::Yuyv,        1, 8},
    {NSCam::eImgFmt_I420,          Arrangement::Planar,      1, 8},
    {NSCam::eImgFmt_YV12,          Arrangement::PlanarVU,    1, 8},
    {NSCam::eImgFmt_Y8,            Arrangement::Grey,        1, 8},
    {NSCam::eImgFmt_P010,          Arrangement::Planar,      2, 10},
    {NSCam::eImgFmt_P010_YUV,      Arrangement::SemiUV,      2, 10},
    {NSCam::eImgFmt_P010_YVU,      Arrangement::SemiVU,      2, 10},
    {NSCam::eImgFmt_BAYER8,        Arrangement::BayerPacked, 1, 8},
    {NSCam::eImgFmt_BAYER10,       Arrangement::BayerPacked, 2, 10},
    {NSCam::eImgFmt_BAYER12,       Arrangement::BayerPacked, 2, 12},
    {NSCam::eImgFmt_BAYER14,       Arrangement::BayerPacked, 2, 14},
    {NSCam::eImgFmt_BAYER10_UNPAK, Arrangement::BayerWords,  2, 10},
    {NSCam::eImgFmt_BAYER12_UNPAK, Arrangement::BayerWords,  2, 12},
    {NSCam::eImgFmt_BAYER14_UNPAK, Arrangement::BayerWords,  2, 14},
    {NSCam::eImgFmt_BAYER15_UNPAK, Arrangement::BayerWords,  2, 15},
    {NSCam::eImgFmt_BAYER16_UNPAK, Arrangement::BayerWords,  2, 16},
};
// clang-format on

bool sameName(const std::string& a, const char* b) {
    size_t i = 0;
    for (; i < a.size() && b[i] != '\0'; ++i) {
        if (std::toupper(static_cast<unsigned char>(a[i])) != b[i]) return false;
    }
    return i == a.size() && b[i] == '\0';
}

size_t divideUp(size_t value, size_t by) {
    return (value + by - 1) / by;
}

}  // namespace

const std::vector<DecodableFormat>& decodableFormats() {
    static const std::vector<DecodableFormat> formats = [] {
        std::vector<DecodableFormat> list;
        for (const Row& row : kRows) {
            const NSCam::ImageFormatInfo* info = NSCam::findImageFormat(row.code);
            if (info != nullptr)
                list.push_back({info, row.arrangement, row.sampleBytes, row.depth});
        }
        return list;
    }();
    return formats;
}

const DecodableFormat* findDecodable(int32_t code) {
    for (const DecodableFormat& format : decodableFormats()) {
        if (format.info->code == code) return &format;
    }
    return nullptr;
}

const DecodableFormat* findDecodable(const std::string& name) {
    for (const DecodableFormat& format : decodableFormats()) {
        if (sameName(name, format.info->name)) return &format;
    }
    return nullptr;
}

std::string decodableNames() {
    std::string names;
    for (const DecodableFormat& format : decodableFormats()) {
        if (!names.empty()) names += ", ";
        names += format.info->name;
    }
    return names;
}

size_t packedRowBytes(const NSCam::ImageFormatInfo& format, size_t plane, int width) {
    const NSCam::PlaneLayout& layout = format.planes[plane];
    const size_t samples = divideUp(static_cast<size_t>(width), size_t{1} << layout.widthShift);
    return divideUp(samples * layout.bitsPerPixel, 8);
}

size_t ImageGeometry::planeStride(size_t plane) const {
    const NSCam::ImageFormatInfo& info = *format->info;
    if (plane == 0) return stride;
    // The name carries plane 0's stride only: the others keep its padding in proportion, and
    // an unpadded plane 0 means unpadded planes (odd widths round as the buffers do).
    if (stride == packedRowBytes(info, 0, width)) return packedRowBytes(info, plane, width);
    const NSCam::PlaneLayout& layout = info.planes[plane];
    const size_t scaled =
            divideUp(stride * layout.bitsPerPixel, static_cast<size_t>(info.planes[0].bitsPerPixel)
                                                           << layout.widthShift);
    // Never narrower than the plane's rows, whatever the rounding.
    return std::max(scaled, packedRowBytes(info, plane, width));
}

size_t ImageGeometry::planeRows(size_t plane) const {
    const size_t shift = format->info->planes[plane].heightShift;
    return divideUp(rows, size_t{1} << shift);
}

size_t ImageGeometry::planeOffset(size_t plane) const {
    size_t offset = 0;
    for (size_t i = 0; i < plane; ++i) offset += planeStride(i) * planeRows(i);
    return offset;
}

size_t ImageGeometry::byteSize() const {
    return planeOffset(planeCount());
}

std::string ImageGeometry::describe() const {
    std::string text = std::to_string(width) + "x" + std::to_string(height) + " " +
                       format->info->name + ", stride " + std::to_string(stride);
    if (rows != static_cast<size_t>(height)) text += ", " + std::to_string(rows) + " rows";
    return text;
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
