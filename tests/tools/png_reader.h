// Reads PNG files back for the tests of camtune convert, with libpng.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace camtune {
namespace test {

struct PngImage {
    int width = 0;
    int height = 0;
    int channels = 0;         // 1 grey, 3 RGB
    int depth = 0;            // 8 or 16
    int significantBits = 0;  // from sBIT; the depth without one
    std::vector<uint16_t> samples;

    uint16_t at(int x, int y, int channel = 0) const {
        return samples[(static_cast<size_t>(y) * width + x) * channels + channel];
    }
};

// False with `error` for a file that is missing or not a grey or RGB PNG.
bool readPng(const std::string& path, PngImage* image, std::string* error);

}  // namespace test
}  // namespace camtune
