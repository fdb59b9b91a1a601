// The image-format table. Each row: code, name, planes (bits per pixel, width shift, height
// shift), and whether it is a Bayer raw.
#include "camtune/platform/image_format.h"

#include <algorithm>
#include <iterator>

namespace NSCam {
namespace {

constexpr PlaneLayout kFull8{8, 0, 0};
constexpr PlaneLayout kFull10{10, 0, 0};
constexpr PlaneLayout kFull12{12, 0, 0};
constexpr PlaneLayout kFull16{16, 0, 0};

// clang-format off
constexpr ImageFormatInfo kFormats[] = {
    {eImgFmt_NV21,           "NV21",           2, {kFull8, {16, 1, 1}},               false},
    {eImgFmt_YUY2,           "YUY2",           1, {{16, 0, 0}},                       false},
    {eImgFmt_P010_YUV,       "P010_YUV",       2, {kFull16, {32, 1, 1}},              false},
    {eImgFmt_NV12,           "NV12",           2, {kFull8, {16, 1, 1}},               false},
    {eImgFmt_I420,           "I420",           3, {kFull8, {8, 1, 1}, {8, 1, 1}},     false},
    {eImgFmt_I422,           "I422",           3, {kFull8, {8, 1, 0}, {8, 1, 0}},     false},
    {eImgFmt_Y210_YUYV,      "Y210_YUYV",      1, {{32, 0, 0}},                       false},
    {eImgFmt_Y210_YVYU,      "Y210_YVYU",      1, {{32, 0, 0}},                       false},
    {eImgFmt_Y210_UYVY,      "Y210_UYVY",      1, {{32, 0, 0}},                       false},
    {eImgFmt_Y210_VYUY,      "Y210_VYUY",      1, {{32, 0, 0}},                       false},
    {eImgFmt_P210_YUV,       "P210_YUV",       2, {kFull16, {32, 1, 0}},              false},
    {eImgFmt_P210_YVU,       "P210_YVU",       2, {kFull16, {32, 1, 0}},              false},
    {eImgFmt_P210,           "P210",           3, {kFull16, {16, 1, 0}, {16, 1, 0}},  false},
    {eImgFmt_P010_YVU,       "P010_YVU",       2, {kFull16, {32, 1, 1}},              false},
    {eImgFmt_P010,           "P010",           3, {kFull16, {16, 1, 1}, {16, 1, 1}},  false},
    {eImgFmt_NV12_10B,       "NV12_10B",       2, {kFull10, {20, 1, 1}},              false},
    {eImgFmt_NV21_10B,       "NV21_10B",       2, {kFull10, {20, 1, 1}},              false},
    {eImgFmt_NV16_10B,       "NV16_10B",       2, {kFull10, {20, 1, 0}},              false},
    {eImgFmt_NV61_10B,       "NV61_10B",       2, {kFull10, {20, 1, 0}},              false},
    {eImgFmt_YUYV_10B,       "YUYV_10B",       1, {{20, 0, 0}},                       false},
    {eImgFmt_YVYU_10B,       "YVYU_10B",       1, {{20, 0, 0}},                       false},
    {eImgFmt_UYVY_10B,       "UYVY_10B",       1, {{20, 0, 0}},                       false},
    {eImgFmt_VYUY_10B,       "VYUY_10B",       1, {{20, 0, 0}},                       false},
    {eImgFmt_I420_10B,       "I420_10B",       3, {kFull10, {10, 1, 1}, {10, 1, 1}},  false},
    {eImgFmt_YV12_10B,       "YV12_10B",       3, {kFull10, {10, 1, 1}, {10, 1, 1}},  false},
    {eImgFmt_P012_YUV,       "P012_YUV",       2, {kFull16, {32, 1, 1}},              false},
    {eImgFmt_P012_YVU,       "P012_YVU",       2, {kFull16, {32, 1, 1}},              false},
    {eImgFmt_NV12_12B,       "NV12_12B",       2, {kFull12, {24, 1, 1}},              false},
    {eImgFmt_NV21_12B,       "NV21_12B",       2, {kFull12, {24, 1, 1}},              false},
    {eImgFmt_RGB48,          "RGB48",          1, {{48, 0, 0}},                       false},
    {eImgFmt_BAYER8,         "BAYER8",         1, {kFull8},                           true},
    {eImgFmt_BAYER10,        "BAYER10",        1, {kFull10},                          true},
    {eImgFmt_BAYER12,        "BAYER12",        1, {kFull12},                          true},
    {eImgFmt_BAYER14,        "BAYER14",        1, {{14, 0, 0}},                       true},
    {eImgFmt_FG_BAYER8,      "FG_BAYER8",      1, {kFull8},                           true},
    {eImgFmt_FG_BAYER10,     "FG_BAYER10",     1, {kFull10},                          true},
    {eImgFmt_FG_BAYER12,     "FG_BAYER12",     1, {kFull12},                          true},
    {eImgFmt_FG_BAYER14,     "FG_BAYER14",     1, {{14, 0, 0}},                       true},
    {eImgFmt_BAYER10_MIPI,   "BAYER10_MIPI",   1, {kFull10},                          true},
    {eImgFmt_BAYER10_UNPAK,  "BAYER10_UNPAK",  1, {kFull16},                          true},
    {eImgFmt_BAYER12_UNPAK,  "BAYER12_UNPAK",  1, {kFull16},                          true},
    {eImgFmt_BAYER14_UNPAK,  "BAYER14_UNPAK",  1, {kFull16},                          true},
    {eImgFmt_BAYER15_UNPAK,  "BAYER15_UNPAK",  1, {kFull16},                          true},
    {eImgFmt_BAYER16_UNPAK,  "BAYER16_UNPAK",  1, {kFull16},                          true},
    {eImgFmt_BAYER24,        "BAYER24",        1, {{24, 0, 0}},                       true},
    {eImgFmt_NV21_UFBC,      "NV21_UFBC",      2, {kFull8, {16, 1, 1}},               false},
    {eImgFmt_P010_YUV_UFBC,  "P010_YUV_UFBC",  2, {kFull16, {32, 1, 1}},              false},
    {eImgFmt_P010_YVU_UFBC,  "P010_YVU_UFBC",  2, {kFull16, {32, 1, 1}},              false},
    {eImgFmt_NV12_AFBC,      "NV12_AFBC",      2, {kFull8, {16, 1, 1}},               false},
    {eImgFmt_NV21_AFBC,      "NV21_AFBC",      2, {kFull8, {16, 1, 1}},               false},
    {eImgFmt_Y8,             "Y8",             1, {kFull8},                           false},
    {eImgFmt_YV12,           "YV12",           3, {kFull8, {8, 1, 1}, {8, 1, 1}},     false},
};
// clang-format on

constexpr bool isSortedByCode() {
    for (size_t i = 1; i < std::size(kFormats); ++i) {
        if (kFormats[i - 1].code >= kFormats[i].code) return false;
    }
    return true;
}
static_assert(isSortedByCode(), "the format table is searched by binary search");

}  // namespace

const ImageFormatInfo* findImageFormat(int32_t code) {
    auto it = std::lower_bound(std::begin(kFormats), std::end(kFormats), code,
                               [](const ImageFormatInfo& row, int32_t c) { return row.code < c; });
    return it != std::end(kFormats) && it->code == code ? &*it : nullptr;
}

const ImageFormatInfo* imageFormatTable(size_t* count) {
    *count = std::size(kFormats);
    return kFormats;
}

size_t imageBitsPerPixel(int32_t code) {
    const ImageFormatInfo* info = findImageFormat(code);
    if (info == nullptr) return 0;
    size_t bits = 0;
    for (size_t i = 0; i < info->planeCount; ++i) {
        const PlaneLayout& plane = info->planes[i];
        bits += plane.bitsPerPixel >> (plane.widthShift + plane.heightShift);
    }
    return bits;
}

}  // namespace NSCam
