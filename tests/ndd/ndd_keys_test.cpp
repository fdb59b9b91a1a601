// NDD keys, request identity in metadata, and buffers carried in metadata.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "camtune/platform/metadata.h"
#include "ndd/carried_record.h"
#include "ndd_fixture.h"

namespace NSCam {
namespace TuningUtils {
namespace testing_ndd {
namespace {

struct Identity {
    int uniqueKey;
    int requestNo;
    int frameNo;
    bool operator==(const Identity& o) const {
        return uniqueKey == o.uniqueKey && requestNo == o.requestNo && frameNo == o.frameNo;
    }
};

std::ostream& operator<<(std::ostream& out, const Identity& id) {
    return out << id.uniqueKey << "-" << id.requestNo << "-" << id.frameNo;
}

TEST(NddKeyTest, ComposesAndDecodes) {
    struct Case {
        Identity in;
        uint64_t key;
        Identity decoded;
    } cases[] = {
            {{5, 3, 2}, 0x0000000500030002ull, {5, 3, 2}},
            // Bit 15 of the request number sign-extends over the unique key.
            {{5, 0x8000, 0}, 0xFFFFFFFF80000000ull, {-1, 0x8000, 0}},
            {{1234, 10005, 0x12345}, 0x000004D227152345ull, {1234, 10005, 0x2345}},
            {{-1, 0, 0}, 0xFFFFFFFF00000000ull, {-1, 0, 0}},
            {{0, 0x7FFF, 0xFFFF}, 0x000000007FFFFFFFull, {0, 0x7FFF, 0xFFFF}},
    };
    Ndd ndd;
    for (const Case& c : cases) {
        const long long key = Ndd::compose_ndd_key(c.in.uniqueKey, c.in.requestNo, c.in.frameNo);
        EXPECT_EQ(static_cast<uint64_t>(key), c.key) << c.in;
        EXPECT_EQ(composeNddKey(c.in.uniqueKey, c.in.requestNo, c.in.frameNo), key);
        Identity out{};
        EXPECT_EQ(ndd.query_uniquekey(key, out.uniqueKey, out.requestNo, out.frameNo), 0);
        EXPECT_EQ(out, c.decoded) << c.in;
    }
}

IMetadata pipelineMeta(int uniqueKey, int requestNo, int frameNo) {
    IMetadata meta;
    IMetadata::setEntry<int32_t>(&meta, kNddTagPipelineUniqueKey, uniqueKey);
    IMetadata::setEntry<int32_t>(&meta, kNddTagPipelineRequestNo, requestNo);
    IMetadata::setEntry<int32_t>(&meta, kNddTagPipelineFrameNo, frameNo);
    return meta;
}

TEST(NddMetadataKeyTest, PrefersTheNddKeyAndFallsBackToPipelineTags) {
    Ndd ndd;
    // Pipeline tags (1, 2, 3) with one tag removed or emptied, or an NDD key set (-1: set as 0).
    struct Case {
        const char* what;
        int64_t nddKey;
        uint32_t removed, emptied;
        int result;
        Identity out;  // starting from {-7, -7, -7}
    } cases[] = {
            {"ndd key first", 0x0000000900080007ll, 0, 0, 0, {9, 8, 7}},
            {"zero ndd key falls back", -1, 0, 0, 0, {1, 2, 3}},
            {"no frame number", 0, kNddTagPipelineFrameNo, 0, 0, {1, 2, -7}},
            {"no request number", 0, kNddTagPipelineRequestNo, 0, -1, {1, -7, -7}},
            {"no unique key", 0, kNddTagPipelineUniqueKey, 0, -1, {-7, -7, -7}},
            {"empty unique key entry", 0, 0, kNddTagPipelineUniqueKey, -1, {-7, -7, -7}},
    };
    for (const Case& c : cases) {
        IMetadata meta = pipelineMeta(1, 2, 3);
        if (c.nddKey != 0) {
            IMetadata::setEntry<int64_t>(&meta, kNddTagKey, std::max<int64_t>(c.nddKey, 0));
        }
        if (c.removed != 0) meta.remove(c.removed);
        if (c.emptied != 0) meta.update(c.emptied, IMetadata::IEntry(c.emptied));
        Identity out{-7, -7, -7};
        EXPECT_EQ(ndd.query_uniquekey(meta, out.uniqueKey, out.requestNo, out.frameNo), c.result)
                << c.what;
        EXPECT_EQ(out, c.out) << c.what;
    }
}

TEST(NddMetadataKeyTest, UpdateAndAlignWriteTheKey) {
    Ndd ndd;
    IMetadata meta;
    EXPECT_EQ(ndd.update_uniquekey(meta, 5, 0x8000, 2), 0);
    int64_t key = 0;
    ASSERT_TRUE(IMetadata::getEntry<int64_t>(&meta, kNddTagKey, key));
    EXPECT_EQ(static_cast<uint64_t>(key), 0xFFFFFFFF80000002ull);
    EXPECT_EQ(meta.entryFor(kNddTagKey).count(), 1u);

    IMetadata in = pipelineMeta(11, 12, 13);
    IMetadata out = pipelineMeta(21, 22, 23);
    EXPECT_EQ(ndd.align_uniquekey(in, out), 0);
    Identity id{};
    ndd.query_uniquekey(out, id.uniqueKey, id.requestNo, id.frameNo);
    EXPECT_EQ(id, (Identity{11, 12, 23}));

    IMetadata empty;
    EXPECT_EQ(ndd.align_uniquekey(empty, out), -1);
    EXPECT_EQ(ndd.align_uniquekey(in, empty), -1);
    EXPECT_FALSE(empty.contains(kNddTagKey));
}

TEST(NddMetadataKeyTest, NddInfoTellsCaptureFromStreaming) {
    Ndd ndd;
    struct Case {
        const char* what;
        bool captureInfo;
        int64_t captureValue;
        bool streamingFeature;
        bool action;
        eCategory category;
        int feature;
        int actionOut;
    } cases[] = {
            {"neither tag", false, 0, false, false, eCategory_Streaming, -1, 42},
            {"streaming feature", false, 0, true, true, eCategory_Streaming, 11, 3},
            {"capture info", true, 0x0000000700000016ll, true, false, eCategory_Capture, 22, 42},
            {"capture info all ones", true, -1, true, false, eCategory_Streaming, 11, 42},
            {"capture info upper -1 only", true, static_cast<int64_t>(0xFFFFFFFF00000005ull), false,
             false, eCategory_Capture, 5, 42},
    };
    for (const Case& c : cases) {
        IMetadata meta = pipelineMeta(1, 2, 3);
        if (c.captureInfo) IMetadata::setEntry<int64_t>(&meta, kNddTagCaptureInfo, c.captureValue);
        if (c.streamingFeature) IMetadata::setEntry<int32_t>(&meta, kNddTagStreamingFeature, 11);
        if (c.action) IMetadata::setEntry<int32_t>(&meta, kNddTagAction, 3);
        NddData data;
        data.action = 42;
        eCategory category = eCategory_Capture;
        EXPECT_EQ(ndd.query_ndd_info(meta, category, data), 0) << c.what;
        EXPECT_EQ(category, c.category) << c.what;
        EXPECT_EQ(data.feature, c.feature) << c.what;
        EXPECT_EQ(data.action, c.actionOut) << c.what;
        EXPECT_EQ(data.version, 6983);
        EXPECT_EQ((Identity{data.uniqueKey, data.requestNo, data.frameNo}), (Identity{1, 2, 3}));
    }
}

NddData fullRecord() {
    NddData data;
    int32_t value = 100;
    for (int32_t* field : {&data.version,     &data.uniqueKey,    &data.requestNo,
                           &data.frameNo,     &data.sensorId,     &data.stage,
                           &data.feature,     &data.action,       &data.sensorFeatureMode,
                           &data.paddedWidth, &data.paddedHeight, &data.bufferWidth,
                           &data.width,       &data.height,       &data.bitDepth,
                           &data.bayerOrder,  &data.sign,         &data.cell,
                           &data.delay,       &data.layer,        &data.sensorExp,
                           &data.expOdr,      &data.dualCamId,    &data.ruleVersion}) {
        *field = value++;
    }
    data.userStr = "carried-user";
    return data;
}

TEST(CarriedRecordTest, LaysOutTwentyFourIntegersAndAStringReference) {
    NddData data = fullRecord();
    uint8_t bytes[kCarriedRecordSize];
    encodeCarriedRecord(data, bytes);
    auto intAt = [&](size_t offset) {
        int32_t v;
        std::memcpy(&v, bytes + offset, 4);
        return v;
    };
    EXPECT_EQ(intAt(0), 100);                       // version
    EXPECT_EQ(intAt(32), 108);                      // sensor feature mode, the ninth integer
    EXPECT_EQ(intAt(36 + 12), 109);                 // padded width, after the string reference
    EXPECT_EQ(intAt(kCarriedRecordSize - 4), 123);  // naming rule version
    uint32_t length;
    std::memcpy(&length, bytes + 36 + 8, 4);
    EXPECT_EQ(length, data.userStr.size());

    NddData back = decodeCarriedRecord(bytes);
    EXPECT_EQ(back.userStr, "carried-user");
    EXPECT_EQ(back.ruleVersion, 123);
    EXPECT_EQ(back.paddedWidth, 109);
    EXPECT_EQ(back.sensorFeatureMode, 108);

    // The record outlives the caller's string: the carried text is the library's own copy.
    data.userStr.assign("changed after push");
    EXPECT_EQ(decodeCarriedRecord(bytes).userStr, "carried-user");

    // A reference the library did not hand out reads back as empty, never as memory.
    const uint64_t bogus = reinterpret_cast<uintptr_t>(bytes);
    std::memcpy(bytes + 36, &bogus, 8);
    EXPECT_EQ(decodeCarriedRecord(bytes).userStr, "");
}

class NddCarryTest : public NddTest {};

TEST_F(NddCarryTest, PushBufferStoresCategoryModuleRecordAndPayload) {
    start("");
    IMetadata meta;
    NddData data = fullRecord();
    char payload[5] = {'a', 'b', 'c', 'd', 'e'};
    mNdd->push_buffer(eCategory_Streaming, eModule_AAO, data, payload, 5, meta, __FILE__, __LINE__);
    IMetadata::IEntry entry = meta.entryFor(0xC0120007u);
    ASSERT_EQ(entry.count(), 116u + 5u);
    int32_t category, module;
    std::memcpy(&category, entry.data(), 4);
    std::memcpy(&module, entry.data() + 4, 4);
    EXPECT_EQ(category, eCategory_Streaming);
    EXPECT_EQ(module, eModule_AAO);
    EXPECT_EQ(std::memcmp(entry.data() + 116, payload, 5), 0);

    // One buffer per module and request: a second push replaces the first.
    mNdd->push_buffer(eCategory_Streaming, eModule_AAO, data, payload, 2, meta, __FILE__, __LINE__);
    EXPECT_EQ(meta.entryFor(0xC0120007u).count(), 118u);

    // Modules without a tag, and NDD switched off, leave the metadata alone.
    IMetadata untouched;
    mNdd->push_buffer(eCategory_Streaming, eModule_ACTSO, data, payload, 5, untouched, __FILE__,
                      __LINE__);
    Ndd off;
    off.push_buffer(eCategory_Streaming, eModule_AAO, data, payload, 5, untouched, __FILE__,
                    __LINE__);
    EXPECT_TRUE(untouched.isEmpty());
}

TEST_F(NddCarryTest, DumpBufferSubmitsInTagOrderUnderTheCarryingRequest) {
    mProps.set(props::kNddDirectWrite, 1);
    start("Preview,Default,[Prefix]-AAO-[UserStr],Capture,AAO,1,0\n"
          "Preview,Default,[Prefix]-CAC-[UserStr],Capture,CAC,1,0\n");
    IMetadata carrier = pipelineMeta(77, 8, 9);
    IMetadata::setEntry<int64_t>(&carrier, kNddTagCaptureInfo, 0);  // capture, feature 0
    NddData sender = item();
    sender.uniqueKey = 1;  // replaced by the carrier's identity
    sender.userStr = "u";
    const char cac[] = "CAC!";
    const char aao[] = "AAO payload";
    mNdd->push_buffer(eCategory_Capture, eModule_CAC, sender, const_cast<char*>(cac), 4, carrier,
                      __FILE__, __LINE__);
    mNdd->push_buffer(eCategory_Capture, eModule_AAO, sender, const_cast<char*>(aao), 11, carrier,
                      __FILE__, __LINE__);
    sender.userStr = "gone";  // the sender's record may be gone by the time of the dump

    camtune::test::LogCapture log;
    mNdd->dump_buffer(carrier);
    EXPECT_EQ(folderFile("000000077-0008-0009-AAO--u"), "AAO payload");
    EXPECT_EQ(folderFile("000000077-0008-0009-CAC--u"), "CAC!");
    std::vector<std::string> written;
    for (const auto& line : log.lines()) {
        if (line.text.find("Upcoming write_name") != std::string::npos)
            written.push_back(line.text);
    }
    ASSERT_EQ(written.size(), 2u);
    EXPECT_NE(written[0].find("-AAO--u"), std::string::npos);  // 0xC0120007 before 0xC012000F
    EXPECT_NE(written[1].find("-CAC--u"), std::string::npos);
}

}  // namespace
}  // namespace testing_ndd
}  // namespace TuningUtils
}  // namespace NSCam
