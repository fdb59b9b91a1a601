#include <gtest/gtest.h>

#include "camtune/naming.h"
#include "camtune/platform/image_buffer.h"
#include "camtune/platform/metadata.h"
#include "camtune/platform/sensor_list.h"
#include "camtune/platform/testing.h"

namespace {

using NSCam::IMetadata;
using NSCam::TuningUtils::extract;
using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

constexpr uint32_t kUniqueKeyTag = 0xC00A0000;
constexpr uint32_t kFrameTag = 0xC00A0001;
constexpr uint32_t kRequestTag = 0xC00A0002;
constexpr uint32_t kEvTag = 0xC00A0003;
constexpr uint32_t kExposureModeTag = 0xC0090004;
constexpr uint32_t kExposureSelectorTag = 0xC003002A;

TEST(NamingHintFromMetadata, CopiesNumberingTagsAndKeepsMissingOnes) {
    IMetadata meta;
    IMetadata::setEntry<int32_t>(&meta, kUniqueKeyTag, 5012345);
    IMetadata::setEntry<int32_t>(&meta, kRequestTag, 12);
    IMetadata::setEntry<int32_t>(&meta, kEvTag, -2);
    FILE_DUMP_NAMING_HINT hint;
    hint.FrameNo = 77;
    EXPECT_TRUE(extract(&hint, &meta));
    EXPECT_EQ(hint.UniqueKey, 5012345);
    EXPECT_EQ(hint.RequestNo, 12);
    EXPECT_EQ(hint.EvValue, -2);
    EXPECT_EQ(hint.FrameNo, 77);

    IMetadata::setEntry<int32_t>(&meta, kFrameTag, 34);
    EXPECT_TRUE(extract(&hint, &meta));
    EXPECT_EQ(hint.FrameNo, 34);
    EXPECT_FALSE(extract(nullptr, &meta));
    EXPECT_FALSE(extract(&hint, static_cast<const IMetadata*>(nullptr)));
    EXPECT_FALSE(extract(&hint, static_cast<const NSCam::IImageBuffer*>(nullptr)));
}

TEST(NamingHintFromMetadata, ExposureLabelOnlyForMultiExposureModes) {
    struct Case {
        int32_t mode;
        int32_t selector;
        const char* label;
    } cases[] = {
            {2, 3, "ShtExp"}, {4, 4, "NorExp"}, {6, 5, "LongExp"}, {1, 5, ""},
            {7, 3, ""},       {2, 2, ""},       {2, 6, ""},
    };
    for (const Case& c : cases) {
        IMetadata meta;
        IMetadata::setEntry<int32_t>(&meta, kExposureModeTag, c.mode);
        IMetadata::setEntry<int32_t>(&meta, kExposureSelectorTag, c.selector);
        FILE_DUMP_NAMING_HINT hint;
        EXPECT_TRUE(extract(&hint, &meta));
        EXPECT_STREQ(hint.ExpString, c.label) << c.mode << "/" << c.selector;
    }
}

struct ReportingBuffer : NSCam::IImageBuffer {
    ReportingBuffer(size_t stride, size_t bpp) : mStride(stride), mBpp(bpp) {}
    NSCam::MSize getImgSize() const override { return {7, 5}; }
    int32_t getImgFormat() const override { return 0x2201; }
    size_t getPlaneCount() const override { return 1; }
    size_t getImgBitsPerPixel() const override { return mBpp + 4; }
    size_t getPlaneBitsPerPixel(size_t) const override { return mBpp; }
    size_t getBufStridesInBytes(size_t) const override { return mStride; }
    size_t getBufHeight(size_t) const override { return 6; }
    size_t getBufSizeInBytes(size_t) const override { return mStride * 5; }
    uint8_t* getBufVA(size_t) const override { return nullptr; }
    bool lockBuf(const char*, uint32_t) override { return true; }
    bool unlockBuf(const char*) override { return true; }
    bool syncCache(int32_t) override { return true; }
    bool saveToFile(const char*) override { return false; }
    bool loadFromFile(const char*) override { return false; }
    size_t mStride, mBpp;
};

TEST(NamingHintFromBuffer, StrideInPixelsFollowsPlaneZeroBitsPerPixel) {
    struct Case {
        size_t stride, bpp;
        int32_t bufWidth;
    } cases[] = {{5008, 10, 4006}, {100, 0, 100}, {0, 8, 1}, {1, 24, 1}, {3, 24, 1}, {30, 24, 10}};
    for (const Case& c : cases) {
        ReportingBuffer buffer(c.stride, c.bpp);
        FILE_DUMP_NAMING_HINT hint;
        EXPECT_TRUE(extract(&hint, &buffer));
        EXPECT_EQ(hint.BufWidth, c.bufWidth) << c.stride << "/" << c.bpp;
        EXPECT_EQ(hint.BufStride, static_cast<int32_t>(c.stride));
        EXPECT_EQ(hint.ImgWidth, 7);
        EXPECT_EQ(hint.ImgHeight, 5);
        EXPECT_EQ(hint.ImgFormat, 0x2201);
        EXPECT_EQ(hint.BufHeight, 6);
    }
}

TEST(NamingHintFromSensor, DeviceAndColourOrderFromTheSensorList) {
    NSCam::host::setSensors({{0, 1, 0}, {1, 2, 1}, {2, 4, 3}});
    FILE_DUMP_NAMING_HINT byOpenId, byDevice;
    EXPECT_TRUE(NSCam::TuningUtils::extract_by_SensorOpenId(&byOpenId, 2));
    EXPECT_EQ(byOpenId.SensorOpenId, 2);
    EXPECT_EQ(byOpenId.SensorDev, 4);
    EXPECT_EQ(byOpenId.SensorFormatOrder, 3);
    EXPECT_TRUE(NSCam::TuningUtils::extract_by_SensorDev(&byDevice, 2));
    EXPECT_EQ(byDevice.SensorDev, 2);
    EXPECT_EQ(byDevice.SensorFormatOrder, 1);

    NSCam::host::setSensorListAvailable(false);
    EXPECT_FALSE(NSCam::TuningUtils::extract_by_SensorDev(&byDevice, 1));
    EXPECT_EQ(byDevice.SensorDev, 1);
    EXPECT_EQ(byDevice.SensorFormatOrder, -1);
    FILE_DUMP_NAMING_HINT unlisted;
    EXPECT_FALSE(NSCam::TuningUtils::extract_by_SensorOpenId(&unlisted, 1));
    EXPECT_EQ(unlisted.SensorOpenId, 1);
    EXPECT_EQ(unlisted.SensorDev, -1);
    NSCam::host::setSensorListAvailable(true);
    NSCam::host::resetSensors();
}

}  // namespace
