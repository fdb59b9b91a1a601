#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "camtune/naming.h"
#include "camtune/platform/image_buffer.h"
#include "camtune/platform/metadata.h"
#include "camtune/platform/sensor_list.h"

namespace {

using NSCam::IMetadata;
using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

constexpr uint32_t kUniqueKeyTag = 0xC00A0000;
constexpr uint32_t kFrameTag = 0xC00A0001;
constexpr uint32_t kRequestTag = 0xC00A0002;
constexpr uint32_t kEvTag = 0xC00A0003;
constexpr uint32_t kExposureModeTag = 0xC0090004;
constexpr uint32_t kExposureSelectorTag = 0xC003002A;

TEST(NamingHint, DefaultsMarkEveryNumberUnset) {
    FILE_DUMP_NAMING_HINT hint;
    struct Field {
        const char* name;
        int32_t value;
        int32_t expected;
    } fields[] = {
            {"UniqueKey", hint.UniqueKey, -1},
            {"FrameNo", hint.FrameNo, -1},
            {"RequestNo", hint.RequestNo, -1},
            {"ImgWidth", hint.ImgWidth, 0},
            {"ImgHeight", hint.ImgHeight, 0},
            {"BufWidth", hint.BufWidth, 0},
            {"BufHeight", hint.BufHeight, 0},
            {"BufStride", hint.BufStride, 0},
            {"ImgFormat", hint.ImgFormat, -1},
            {"IspProfile", hint.IspProfile, -1},
            {"SensorFormatOrder", hint.SensorFormatOrder, -1},
            {"AuxValue", hint.AuxValue, -1},
            {"SensorOpenId", hint.SensorOpenId, -1},
            {"SensorDev", hint.SensorDev, -1},
            {"EvValue", hint.EvValue, -1},
    };
    for (const Field& f : fields) EXPECT_EQ(f.value, f.expected) << f.name;
    const char zeros[32] = {};
    EXPECT_EQ(std::memcmp(hint.UserString, zeros, sizeof(zeros)), 0);
    EXPECT_EQ(std::memcmp(hint.ExpString, zeros, sizeof(zeros)), 0);
}

TEST(NamingHintFromMetadata, CopiesNumberingTagsAndKeepsMissingOnes) {
    IMetadata meta;
    IMetadata::setEntry<int32_t>(&meta, kUniqueKeyTag, 5012345);
    IMetadata::setEntry<int32_t>(&meta, kRequestTag, 12);
    IMetadata::setEntry<int32_t>(&meta, kEvTag, -2);
    FILE_DUMP_NAMING_HINT hint;
    hint.FrameNo = 77;
    EXPECT_TRUE(NSCam::TuningUtils::extract(&hint, &meta));
    EXPECT_EQ(hint.UniqueKey, 5012345);
    EXPECT_EQ(hint.RequestNo, 12);
    EXPECT_EQ(hint.EvValue, -2);
    EXPECT_EQ(hint.FrameNo, 77);

    IMetadata::setEntry<int32_t>(&meta, kFrameTag, 34);
    EXPECT_TRUE(NSCam::TuningUtils::extract(&hint, &meta));
    EXPECT_EQ(hint.FrameNo, 34);
}

TEST(NamingHintFromMetadata, NullMetadataLeavesTheHintAlone) {
    FILE_DUMP_NAMING_HINT hint;
    hint.UniqueKey = 9;
    EXPECT_FALSE(NSCam::TuningUtils::extract(&hint, static_cast<const IMetadata*>(nullptr)));
    EXPECT_EQ(hint.UniqueKey, 9);
    IMetadata meta;
    EXPECT_FALSE(NSCam::TuningUtils::extract(nullptr, &meta));
}

TEST(NamingHintFromMetadata, ExposureLabelOnlyForMultiExposureModes) {
    struct Case {
        int32_t mode;
        int32_t selector;
        const char* label;
    } cases[] = {
            {2, 3, "ShtExp"}, {4, 4, "NorExp"}, {6, 5, "LongExp"}, {1, 5, ""},
            {7, 3, ""},       {2, 2, ""},       {2, 6, ""},        {0, 0, ""},
    };
    for (const Case& c : cases) {
        IMetadata meta;
        IMetadata::setEntry<int32_t>(&meta, kExposureModeTag, c.mode);
        IMetadata::setEntry<int32_t>(&meta, kExposureSelectorTag, c.selector);
        FILE_DUMP_NAMING_HINT hint;
        EXPECT_TRUE(NSCam::TuningUtils::extract(&hint, &meta));
        EXPECT_STREQ(hint.ExpString, c.label) << c.mode << "/" << c.selector;
    }
}

// A buffer that reports whatever stride and bits per pixel a test needs.
class ReportingBuffer : public NSCam::IImageBuffer {
public:
    ReportingBuffer(size_t stride, size_t bpp) : mStride(stride), mBpp(bpp) {}
    NSCam::MSize getImgSize() const override { return {7, 5}; }
    int32_t getImgFormat() const override { return 0x2201; }
    size_t getPlaneCount() const override { return 1; }
    size_t getImgBitsPerPixel() const override { return mBpp; }
    size_t getPlaneBitsPerPixel(size_t) const override { return mBpp; }
    size_t getBufStridesInBytes(size_t) const override { return mStride; }
    size_t getBufHeight(size_t) const override { return 5; }
    size_t getBufSizeInBytes(size_t) const override { return mStride * 5; }
    uint8_t* getBufVA(size_t) const override { return nullptr; }
    bool lockBuf(const char*, uint32_t) override { return true; }
    bool unlockBuf(const char*) override { return true; }
    bool syncCache(int32_t) override { return true; }
    bool saveToFile(const char*) override { return false; }
    bool loadFromFile(const char*) override { return false; }

private:
    size_t mStride;
    size_t mBpp;
};

TEST(NamingHintFromBuffer, StrideInPixelsFollowsPlaneZeroBitsPerPixel) {
    struct Case {
        int32_t format;
        NSCam::MSize size;
        std::vector<size_t> strides;
        int32_t bufWidth;
    } cases[] = {
            {0x2201, {4000, 3000}, {5000}, 4000},      // 10-bit packed raw
            {0x11, {1920, 1080}, {1920, 1920}, 1920},  // NV21: the luma plane counts
            {0x2217, {640, 480}, {1280}, 640},         // 16-bit unpacked raw
            {0x2201, {4000, 3000}, {5008}, 4006},      // padding rounds down
    };
    for (const Case& c : cases) {
        auto buffer = NSCam::HostImageBuffer::create(c.format, c.size, c.strides);
        ASSERT_NE(buffer, nullptr) << std::hex << c.format;
        FILE_DUMP_NAMING_HINT hint;
        EXPECT_TRUE(NSCam::TuningUtils::extract(&hint, buffer.get()));
        EXPECT_EQ(hint.ImgWidth, c.size.w);
        EXPECT_EQ(hint.ImgHeight, c.size.h);
        EXPECT_EQ(hint.ImgFormat, c.format);
        EXPECT_EQ(hint.BufStride, static_cast<int32_t>(c.strides[0]));
        EXPECT_EQ(hint.BufWidth, c.bufWidth) << std::hex << c.format;
        EXPECT_EQ(hint.BufHeight, static_cast<int32_t>(buffer->getBufHeight(0)));
    }
}

TEST(NamingHintFromBuffer, OddBitsPerPixelReports) {
    struct Case {
        size_t stride;
        size_t bpp;
        int32_t bufWidth;
    } cases[] = {{100, 0, 100}, {0, 8, 1}, {1, 24, 1}, {3, 24, 1}, {30, 24, 10}};
    for (const Case& c : cases) {
        ReportingBuffer buffer(c.stride, c.bpp);
        FILE_DUMP_NAMING_HINT hint;
        EXPECT_TRUE(NSCam::TuningUtils::extract(&hint, &buffer));
        EXPECT_EQ(hint.BufWidth, c.bufWidth) << c.stride << "/" << c.bpp;
        EXPECT_EQ(hint.BufStride, static_cast<int32_t>(c.stride));
    }
    FILE_DUMP_NAMING_HINT hint;
    EXPECT_FALSE(
            NSCam::TuningUtils::extract(&hint, static_cast<const NSCam::IImageBuffer*>(nullptr)));
}

class NamingHintFromSensor : public ::testing::Test {
protected:
    void TearDown() override {
        NSCam::host::setSensorListAvailable(true);
        NSCam::host::resetSensors();
    }
};

TEST_F(NamingHintFromSensor, OpenIdGivesDeviceAndColourOrder) {
    NSCam::host::setSensors({{0, 1, 0}, {1, 2, 1}, {2, 4, 3}});
    FILE_DUMP_NAMING_HINT hint;
    EXPECT_TRUE(NSCam::TuningUtils::extract_by_SensorOpenId(&hint, 2));
    EXPECT_EQ(hint.SensorOpenId, 2);
    EXPECT_EQ(hint.SensorDev, 4);
    EXPECT_EQ(hint.SensorFormatOrder, 3);

    FILE_DUMP_NAMING_HINT byDevice;
    EXPECT_TRUE(NSCam::TuningUtils::extract_by_SensorDev(&byDevice, 2));
    EXPECT_EQ(byDevice.SensorDev, 2);
    EXPECT_EQ(byDevice.SensorFormatOrder, 1);
    EXPECT_EQ(byDevice.SensorOpenId, -1);
}

TEST_F(NamingHintFromSensor, WithoutSensorListOrderIsUnknown) {
    NSCam::host::setSensorListAvailable(false);
    FILE_DUMP_NAMING_HINT hint;
    hint.SensorFormatOrder = 2;
    EXPECT_FALSE(NSCam::TuningUtils::extract_by_SensorDev(&hint, 1));
    EXPECT_EQ(hint.SensorDev, 1);
    EXPECT_EQ(hint.SensorFormatOrder, -1);

    FILE_DUMP_NAMING_HINT byOpenId;
    EXPECT_FALSE(NSCam::TuningUtils::extract_by_SensorOpenId(&byOpenId, 1));
    EXPECT_EQ(byOpenId.SensorOpenId, 1);
    EXPECT_EQ(byOpenId.SensorDev, -1);
    EXPECT_EQ(byOpenId.SensorFormatOrder, -1);
}

TEST(IspProfileName, NoProfileHasAName) {
    for (int32_t p : {-1, 0, 1, 2, 3, 100}) {
        EXPECT_EQ(NSCam::TuningUtils::getIspProfileName(static_cast<NSIspTuning::EIspProfile_T>(p)),
                  nullptr);
    }
}

}  // namespace
