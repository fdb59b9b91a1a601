// The pieces of image dump-file names for each image format. Each row: code, the bit-depth element
// and the extension. Formats without a row get "imgfmt" and "unknown".
#include "naming/dump_format_names.h"

#include <algorithm>
#include <iterator>

#include "camtune/platform/image_format.h"

namespace camtune {
namespace naming {
namespace {

// clang-format off
constexpr DumpFormatNames kNames[] = {
    {NSCam::eImgFmt_NV21,           "8",       "nv21"},
    {NSCam::eImgFmt_YUY2,           "8",       "yuy2"},
    {NSCam::eImgFmt_P010_YUV,       "16",      "p010yuv"},
    {NSCam::eImgFmt_NV12,           "8",       "nv12"},
    {NSCam::eImgFmt_I420,           "8",       "i420"},
    {NSCam::eImgFmt_I422,           "imgfmt",  "unknown"},
    {NSCam::eImgFmt_Y210_YUYV,      "16",      "y210yuyv"},
    {NSCam::eImgFmt_Y210_YVYU,      "16",      "y210yvyu"},
    {NSCam::eImgFmt_Y210_UYVY,      "16",      "y210uyvy"},
    {NSCam::eImgFmt_Y210_VYUY,      "16",      "y210vyuy"},
    {NSCam::eImgFmt_P210_YUV,       "16",      "p210yuv"},
    {NSCam::eImgFmt_P210_YVU,       "16",      "p210yvu"},
    {NSCam::eImgFmt_P210,           "16",      "p210"},
    {NSCam::eImgFmt_P010_YVU,       "16",      "p010yvu"},
    {NSCam::eImgFmt_P010,           "16",      "p010"},
    {NSCam::eImgFmt_NV12_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_NV21_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_NV16_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_NV61_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_YUYV_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_YVYU_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_UYVY_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_VYUY_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_I420_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_YV12_10B,       "10",      "packed_word"},
    {NSCam::eImgFmt_P012_YUV,       "16",      "p012yuv"},
    {NSCam::eImgFmt_P012_YVU,       "16",      "p012yvu"},
    {NSCam::eImgFmt_NV12_12B,       "12",      "packed_word"},
    {NSCam::eImgFmt_NV21_12B,       "12",      "packed_word"},
    {NSCam::eImgFmt_RGB48,          "imgfmt",  "rgb48"},
    {NSCam::eImgFmt_BAYER8,         "imgfmt",  "unknown"},
    {NSCam::eImgFmt_BAYER10,        "10",      "packed_word"},
    {NSCam::eImgFmt_BAYER12,        "12",      "packed_word"},
    {NSCam::eImgFmt_BAYER14,        "14",      "packed_word"},
    {NSCam::eImgFmt_FG_BAYER8,      "imgfmt",  "unknown"},
    {NSCam::eImgFmt_FG_BAYER10,     "10",      "packed_word"},
    {NSCam::eImgFmt_FG_BAYER12,     "12",      "packed_word"},
    {NSCam::eImgFmt_FG_BAYER14,     "14",      "packed_word"},
    {NSCam::eImgFmt_BAYER10_MIPI,   "10",      "packed_word"},
    {NSCam::eImgFmt_BAYER10_UNPAK,  "10",      "raw"},
    {NSCam::eImgFmt_BAYER12_UNPAK,  "12",      "raw"},
    {NSCam::eImgFmt_BAYER14_UNPAK,  "14",      "raw"},
    {NSCam::eImgFmt_BAYER15_UNPAK,  "15",      "raw"},
    {NSCam::eImgFmt_BAYER16_UNPAK,  "16",      "raw"},
    {NSCam::eImgFmt_BAYER24,        "24",      "packed_word"},
    {NSCam::eImgFmt_NV21_UFBC,      "imgfmt",  "nv21_ufbc"},
    {NSCam::eImgFmt_P010_YUV_UFBC,  "10",      "p010yuv_ufbc"},
    {NSCam::eImgFmt_P010_YVU_UFBC,  "10",      "p010yvu_ufbc"},
    {NSCam::eImgFmt_NV12_AFBC,      "8",       "nv12_afbc"},
    {NSCam::eImgFmt_NV21_AFBC,      "8",       "nv21_afbc"},
    {NSCam::eImgFmt_Y8,             "8",       "y"},
    {NSCam::eImgFmt_YV12,           "8",       "yv12"},
};
// clang-format on

constexpr bool isSortedByCode() {
    for (size_t i = 1; i < std::size(kNames); ++i) {
        if (kNames[i - 1].code >= kNames[i].code) return false;
    }
    return true;
}
static_assert(isSortedByCode(), "the table is searched by binary search");

const DumpFormatNames* find(int32_t code) {
    auto it = std::lower_bound(std::begin(kNames), std::end(kNames), code,
                               [](const DumpFormatNames& row, int32_t c) { return row.code < c; });
    return it != std::end(kNames) && it->code == code ? &*it : nullptr;
}

}  // namespace

const DumpFormatNames* dumpFormatNames(size_t* count) {
    *count = std::size(kNames);
    return kNames;
}

const char* dumpBitDepthName(int32_t code) {
    const DumpFormatNames* row = find(code);
    return row != nullptr ? row->bitDepth : kUnknownDumpBitDepth;
}

const char* dumpExtension(int32_t code) {
    const DumpFormatNames* row = find(code);
    return row != nullptr ? row->extension : kUnknownDumpExtension;
}

}  // namespace naming
}  // namespace camtune
