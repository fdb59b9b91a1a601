#include "naming/dump_format_names.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace camtune {
namespace {

TEST(DumpFormatNames, PiecesOfKnownAndUnknownCodes) {
    struct Case {
        int32_t code;
        const char* bits;
        const char* extension;
    };
    const Case kCases[] = {
            {0x2201, "10", "packed_word"},  {0x2205, "10", "packed_word"},
            {0x2211, "10", "packed_word"},  {0x2207, "14", "packed_word"},
            {0x2213, "10", "raw"},          {0x2216, "15", "raw"},
            {0x2218, "24", "packed_word"},  {0x11, "8", "nv21"},
            {0x36, "16", "p010yuv"},        {0x2012, "10", "packed_word"},
            {0x201B, "10", "packed_word"},  {0x201F, "12", "packed_word"},
            {0x2101, "imgfmt", "rgb48"},    {0x2505, "imgfmt", "nv21_ufbc"},
            {0x2506, "10", "p010yuv_ufbc"}, {0x20203859, "8", "y"},
            {0x32315659, "8", "yv12"},      {0x2200, "imgfmt", "unknown"},
            {0x2204, "imgfmt", "unknown"},  {0x2008, "imgfmt", "unknown"},
            {0x2209, "imgfmt", "unknown"},  {0x2212, "imgfmt", "unknown"},
            {0x2509, "imgfmt", "unknown"},  {-1, "imgfmt", "unknown"},
    };
    for (const Case& c : kCases) {
        EXPECT_STREQ(naming::dumpBitDepthName(c.code), c.bits) << std::hex << c.code;
        EXPECT_STREQ(naming::dumpExtension(c.code), c.extension) << std::hex << c.code;
    }
}

}  // namespace
}  // namespace camtune
