#include "camtune/platform/metadata.h"

#include <gtest/gtest.h>

#include <cstring>

namespace NSCam {
namespace {

TEST(Metadata, TypedFirstElementIsReadAndAMissingTagLeavesTheOutputAlone) {
    IMetadata meta;
    IMetadata::setEntry<int32_t>(&meta, 0xC00A0000, 5012345);
    IMetadata::setEntry<int64_t>(&meta, 0xC0120003, int64_t{0x500030002});

    int32_t i32 = -1;
    EXPECT_TRUE(IMetadata::getEntry<int32_t>(&meta, 0xC00A0000, i32));
    EXPECT_EQ(i32, 5012345);
    int64_t i64 = 0;
    EXPECT_TRUE(IMetadata::getEntry<int64_t>(&meta, 0xC0120003, i64));
    EXPECT_EQ(i64, 0x500030002);

    int32_t untouched = 77;
    EXPECT_FALSE(IMetadata::getEntry<int32_t>(&meta, 0xC00A0001, untouched));
    EXPECT_FALSE(IMetadata::getEntry<int32_t>(&meta, 0xC0120003, untouched));  // wrong type
    EXPECT_FALSE(IMetadata::getEntry<int32_t>(nullptr, 0xC00A0000, untouched));
    EXPECT_EQ(untouched, 77);
}

TEST(Metadata, EntriesKeepTheirTypeAndOrder) {
    IMetadata::IEntry entry(0x10);
    EXPECT_TRUE(entry.isEmpty());
    EXPECT_TRUE(entry.push_back<int32_t>(1));
    EXPECT_TRUE(entry.push_back<int32_t>(2));
    EXPECT_FALSE(entry.push_back<int64_t>(3));  // the first element fixed the type
    EXPECT_EQ(entry.count(), 2u);
    EXPECT_EQ(entry.type(), MetaType::Int32);
    int32_t second = 0;
    EXPECT_TRUE(entry.itemAt(1, second));
    EXPECT_EQ(second, 2);
    EXPECT_FALSE(entry.itemAt(2, second));
    entry.clear();
    EXPECT_TRUE(entry.push_back<double>(1.5));
}

TEST(Metadata, ByteArraysCountTheirBytes) {
    IMetadata meta;
    IMetadata::IEntry bytes(0xC0120007);
    const char payload[] = "0123456789";
    ASSERT_TRUE(bytes.pushBytes(payload, 10));
    ASSERT_TRUE(bytes.pushBytes(payload, 6));
    EXPECT_EQ(meta.update(bytes), 0);

    IMetadata::IEntry read = meta.entryFor(0xC0120007);
    EXPECT_EQ(read.tag(), 0xC0120007u);
    EXPECT_EQ(read.count(), 16u);
    EXPECT_EQ(std::memcmp(read.data() + 10, "012345", 6), 0);
}

TEST(Metadata, UpdateReplacesAndRemoveDeletes) {
    IMetadata meta;
    IMetadata::setEntry<int32_t>(&meta, 1, 10);
    IMetadata::setEntry<int32_t>(&meta, 1, 20);
    EXPECT_EQ(meta.count(), 1u);
    EXPECT_EQ(meta.entryFor(1).count(), 1u);

    IMetadata::IEntry missing = meta.entryFor(2);
    EXPECT_EQ(missing.tag(), 2u);
    EXPECT_TRUE(missing.isEmpty());

    EXPECT_EQ(meta.remove(1), 0);
    EXPECT_EQ(meta.remove(1), -1);
    EXPECT_TRUE(meta.isEmpty());

    IMetadata copy;
    IMetadata::setEntry<uint8_t>(&copy, 3, 9);
    IMetadata other = copy;  // metadata is a value type
    IMetadata::setEntry<uint8_t>(&copy, 3, 1);
    uint8_t value = 0;
    ASSERT_TRUE(IMetadata::getEntry<uint8_t>(&other, 3, value));
    EXPECT_EQ(value, 9);
}

}  // namespace
}  // namespace NSCam
