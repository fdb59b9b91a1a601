#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "camtune/platform/fs.h"
#include "camtune/platform/host_image_buffer.h"
#include "camtune/platform/image_format.h"
#include "support/temp_root.h"

namespace NSCam {
namespace {

struct Geometry {
    int32_t format;
    MSize size;
    size_t planes;
    size_t imageBits;
    size_t plane0Bits;
    std::vector<size_t> strides;  // packed row bytes per plane
    std::vector<size_t> heights;
};

TEST(HostImageBuffer, GeometryFollowsTheFormatTable) {
    const Geometry kCases[] = {
            {eImgFmt_BAYER10, {4000, 3000}, 1, 10, 10, {5000}, {3000}},
            {eImgFmt_BAYER12, {4000, 3000}, 1, 12, 12, {6000}, {3000}},
            {eImgFmt_BAYER14, {4000, 3000}, 1, 14, 14, {7000}, {3000}},
            {eImgFmt_BAYER10, {3, 2}, 1, 10, 10, {4}, {2}},  // 30 bits round up to 4 bytes
            {eImgFmt_BAYER16_UNPAK, {4000, 3000}, 1, 16, 16, {8000}, {3000}},
            {eImgFmt_BAYER10_UNPAK, {640, 480}, 1, 16, 16, {1280}, {480}},
            {eImgFmt_NV21, {1920, 1080}, 2, 12, 8, {1920, 1920}, {1080, 540}},
            {eImgFmt_NV12, {7, 5}, 2, 12, 8, {7, 8}, {5, 3}},  // odd sizes round up
            {eImgFmt_YV12, {640, 480}, 3, 12, 8, {640, 320, 320}, {480, 240, 240}},
            {eImgFmt_I420, {640, 480}, 3, 12, 8, {640, 320, 320}, {480, 240, 240}},
            {eImgFmt_YUY2, {640, 480}, 1, 16, 16, {1280}, {480}},
            {eImgFmt_P010_YUV, {640, 480}, 2, 24, 16, {1280, 1280}, {480, 240}},
            {eImgFmt_P210, {640, 480}, 3, 32, 16, {1280, 640, 640}, {480, 480, 480}},
            {eImgFmt_Y210_YUYV, {640, 480}, 1, 32, 32, {2560}, {480}},
            {eImgFmt_NV12_10B, {640, 480}, 2, 15, 10, {800, 800}, {480, 240}},
            {eImgFmt_RGB48, {10, 10}, 1, 48, 48, {60}, {10}},
            {eImgFmt_Y8, {640, 480}, 1, 8, 8, {640}, {480}},
    };
    for (const Geometry& g : kCases) {
        SCOPED_TRACE(findImageFormat(g.format)->name);
        auto buffer = HostImageBuffer::create(g.format, g.size);
        ASSERT_NE(buffer, nullptr);
        EXPECT_EQ(buffer->getImgFormat(), g.format);
        EXPECT_EQ(buffer->getImgSize().w, g.size.w);
        EXPECT_EQ(buffer->getPlaneCount(), g.planes);
        EXPECT_EQ(buffer->getImgBitsPerPixel(), g.imageBits);
        EXPECT_EQ(buffer->getPlaneBitsPerPixel(0), g.plane0Bits);
        for (size_t i = 0; i < g.planes; ++i) {
            EXPECT_EQ(buffer->getBufStridesInBytes(i), g.strides[i]) << "plane " << i;
            EXPECT_EQ(buffer->getBufHeight(i), g.heights[i]) << "plane " << i;
            EXPECT_EQ(buffer->getBufSizeInBytes(i), g.strides[i] * g.heights[i]);
            EXPECT_NE(buffer->getBufVA(i), nullptr);
        }
        EXPECT_EQ(buffer->getBufVA(g.planes), nullptr);
        EXPECT_EQ(buffer->getBufStridesInBytes(g.planes), 0u);
    }
}

TEST(HostImageBuffer, StridesMayWidenButNotNarrowAndUnknownFormatsAreRefused) {
    auto wide = HostImageBuffer::create(eImgFmt_NV21, {100, 10}, {128, 128});
    ASSERT_NE(wide, nullptr);
    EXPECT_EQ(wide->getBufStridesInBytes(1), 128u);
    EXPECT_EQ(HostImageBuffer::create(eImgFmt_NV21, {100, 10}, {64, 128}), nullptr);
    EXPECT_EQ(HostImageBuffer::create(eImgFmt_NV21, {100, 10}, {128}), nullptr);
    EXPECT_EQ(HostImageBuffer::create(0x2208, {100, 10}), nullptr);
    EXPECT_EQ(HostImageBuffer::create(eImgFmt_NV21, {0, 10}), nullptr);
}

TEST(HostImageBuffer, SaveAndLoadRoundTripEveryPlane) {
    camtune::test::TempRoot root;
    auto source = HostImageBuffer::create(eImgFmt_I420, {8, 4});
    ASSERT_NE(source, nullptr);
    size_t total = 0;
    for (size_t p = 0; p < source->getPlaneCount(); ++p) {
        for (size_t i = 0; i < source->getBufSizeInBytes(p); ++i) {
            source->getBufVA(p)[i] = static_cast<uint8_t>(p * 100 + i);
        }
        total += source->getBufSizeInBytes(p);
    }
    EXPECT_FALSE(source->saveToFile("/dump/frame.i420"));  // no folder yet
    ASSERT_EQ(camtune::fs::makePath("/dump", 0755), 0);
    ASSERT_TRUE(source->saveToFile("/dump/frame.i420"));
    EXPECT_EQ(root.readFile("/dump/frame.i420").size(), total);

    auto copy = HostImageBuffer::create(eImgFmt_I420, {8, 4});
    ASSERT_TRUE(copy->loadFromFile("/dump/frame.i420"));
    for (size_t p = 0; p < copy->getPlaneCount(); ++p) {
        EXPECT_EQ(
                std::string(reinterpret_cast<char*>(copy->getBufVA(p)), copy->getBufSizeInBytes(p)),
                std::string(reinterpret_cast<char*>(source->getBufVA(p)),
                            source->getBufSizeInBytes(p)));
    }
}

TEST(HostImageBuffer, LoadFailsOnMissingEmptyPathOrShortFile) {
    camtune::test::TempRoot root;
    auto buffer = HostImageBuffer::create(eImgFmt_BAYER10, {8, 2});
    ASSERT_NE(buffer, nullptr);
    EXPECT_FALSE(buffer->loadFromFile("/dump/missing.raw"));
    EXPECT_FALSE(buffer->loadFromFile(""));
    EXPECT_FALSE(buffer->loadFromFile(nullptr));
    root.writeFile("/dump/short.raw", "abc");
    EXPECT_FALSE(buffer->loadFromFile("/dump/short.raw"));
}

TEST(HostImageBuffer, LocksAreHeldPerUserWithTheirUsage) {
    auto buffer = HostImageBuffer::create(eImgFmt_NV21, {16, 16});
    EXPECT_TRUE(buffer->lockBuf("p1", 0x60033));
    EXPECT_FALSE(buffer->lockBuf("p1", 0x3));
    EXPECT_TRUE(buffer->lockBuf("p2", 0x3));
    EXPECT_EQ(buffer->lockUsage("p1"), 0x60033u);
    EXPECT_TRUE(buffer->unlockBuf("p1"));
    EXPECT_FALSE(buffer->unlockBuf("p1"));
    EXPECT_EQ(buffer->lockUsage("p1"), 0u);
    EXPECT_EQ(buffer->syncCount(), 0);
    buffer->syncCache(eCACHECTRL_FLUSH);
    EXPECT_EQ(buffer->syncCount(), 1);
}

}  // namespace
}  // namespace NSCam
