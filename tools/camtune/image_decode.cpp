#include "image_decode.h"

#include <algorithm>

#include "image_bayer.h"

namespace camtune {
namespace cli {
namespace image {
namespace {

// Reads the samples of one YUV image; 16-bit samples hold their value in the upper bits.
class YuvReader {
public:
    YuvReader(const uint8_t* bytes, const ImageGeometry& geometry) : mFormat(*geometry.format) {
        for (size_t plane = 0; plane < geometry.planeCount(); ++plane) {
            mPlanes[plane] = bytes + geometry.planeOffset(plane);
            mStrides[plane] = geometry.planeStride(plane);
        }
    }

    // Luma, all bits.
    uint16_t lumaWord(int x, int y) const {
        const size_t index = mFormat.arrangement == Arrangement::Yuyv ? x * 2 : x;
        return sample(0, y, index);
    }
    uint8_t luma(int x, int y) const { return top8(lumaWord(x, y)); }

    void chroma(int x, int y, uint8_t* u, uint8_t* v) const {
        const NSCam::PlaneLayout* planes = mFormat.info->planes;
        const size_t cx =
                mFormat.arrangement == Arrangement::Yuyv ? x >> 1 : x >> planes[1].widthShift;
        const int cy = mFormat.arrangement == Arrangement::Yuyv ? y : y >> planes[1].heightShift;
        uint16_t first = 0, second = 0;
        switch (mFormat.arrangement) {
            case Arrangement::Planar:
            case Arrangement::PlanarVU:
                first = sample(1, cy, cx);
                second = sample(2, cy, cx);
                break;
            case Arrangement::SemiUV:
            case Arrangement::SemiVU:
                first = sample(1, cy, cx * 2);
                second = sample(1, cy, cx * 2 + 1);
                break;
            case Arrangement::Yuyv:
                first = sample(0, cy, cx * 4 + 1);
                second = sample(0, cy, cx * 4 + 3);
                break;
            default:
                *u = *v = 128;
                return;
        }
        const bool vFirst = mFormat.arrangement == Arrangement::PlanarVU ||
                            mFormat.arrangement == Arrangement::SemiVU;
        *u = top8(vFirst ? second : first);
        *v = top8(vFirst ? first : second);
    }

private:
    uint16_t sample(size_t plane, int row, size_t index) const {
        const uint8_t* at = mPlanes[plane] + row * mStrides[plane] + index * mFormat.sampleBytes;
        return mFormat.sampleBytes == 1 ? at[0] : static_cast<uint16_t>(at[0] | at[1] << 8);
    }
    uint8_t top8(uint16_t word) const {
        return static_cast<uint8_t>(mFormat.sampleBytes == 1 ? word : word >> 8);
    }

    const DecodableFormat& mFormat;
    const uint8_t* mPlanes[NSCam::kMaxPlanes] = {};
    size_t mStrides[NSCam::kMaxPlanes] = {};
};

uint16_t clamp8(int value) {
    return static_cast<uint16_t>(std::clamp(value, 0, 255));
}

// BT.601 limited range, in 8.8 fixed point.
void yuvToRgb(int y, int u, int v, uint16_t* rgb) {
    const int c = 298 * (y - 16);
    const int d = u - 128;
    const int e = v - 128;
    rgb[0] = clamp8((c + 409 * e + 128) >> 8);
    rgb[1] = clamp8((c - 100 * d - 208 * e + 128) >> 8);
    rgb[2] = clamp8((c + 516 * d + 128) >> 8);
}

Picture blank(const ImageGeometry& geometry, int channels, int depth, int significantBits) {
    Picture picture;
    picture.width = geometry.width;
    picture.height = geometry.height;
    picture.channels = channels;
    picture.depth = depth;
    picture.significantBits = significantBits;
    picture.samples.resize(static_cast<size_t>(geometry.width) * geometry.height * channels);
    return picture;
}

}  // namespace

Picture decodePicture(const uint8_t* bytes, const ImageGeometry& geometry) {
    const DecodableFormat& format = *geometry.format;
    if (format.isBayer() && cfaTile(geometry.order) == nullptr) {
        // Without its order a mosaic has no colours: its samples show as grey.
        Picture picture = decodePlane(bytes, geometry);
        const int shift = picture.depth - 8;
        for (uint16_t& sample : picture.samples) sample = static_cast<uint16_t>(sample >> shift);
        picture.depth = picture.significantBits = 8;
        return picture;
    }
    if (format.isBayer()) {
        Picture picture = blank(geometry, 3, 8, 8);
        picture.samples =
                demosaicBilinear(unpackMosaic(bytes, geometry), geometry.width, geometry.height,
                                 geometry.order, bayerLevels(geometry.bits));
        return picture;
    }
    const YuvReader reader(bytes, geometry);
    if (format.arrangement == Arrangement::Grey) {
        Picture picture = blank(geometry, 1, 8, 8);
        for (int y = 0; y < geometry.height; ++y) {
            for (int x = 0; x < geometry.width; ++x) {
                picture.samples[static_cast<size_t>(y) * geometry.width + x] = reader.luma(x, y);
            }
        }
        return picture;
    }
    Picture picture = blank(geometry, 3, 8, 8);
    uint16_t* out = picture.samples.data();
    for (int y = 0; y < geometry.height; ++y) {
        for (int x = 0; x < geometry.width; ++x, out += 3) {
            uint8_t u = 0, v = 0;
            reader.chroma(x, y, &u, &v);
            yuvToRgb(reader.luma(x, y), u, v, out);
        }
    }
    return picture;
}

Picture decodePlane(const uint8_t* bytes, const ImageGeometry& geometry) {
    const DecodableFormat& format = *geometry.format;
    if (format.isBayer()) {
        const int depth = geometry.bits <= 8 ? 8 : 16;
        Picture picture = blank(geometry, 1, depth, geometry.bits);
        picture.samples = unpackMosaic(bytes, geometry);
        const int shift = depth - geometry.bits;
        const uint16_t white = static_cast<uint16_t>(bayerLevels(geometry.bits).white);
        for (uint16_t& sample : picture.samples) {
            sample = static_cast<uint16_t>(std::min(sample, white) << shift);
        }
        return picture;
    }
    Picture picture = blank(geometry, 1, format.sampleBytes * 8, format.depth);
    const YuvReader reader(bytes, geometry);
    for (int y = 0; y < geometry.height; ++y) {
        for (int x = 0; x < geometry.width; ++x) {
            picture.samples[static_cast<size_t>(y) * geometry.width + x] = reader.lumaWord(x, y);
        }
    }
    return picture;
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
