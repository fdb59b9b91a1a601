// Reserving records in request buffers, chaining, headlines. No service thread runs here.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "recorder/scenario_recorder_impl.h"
#include "recorder_test_util.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

using camtune::log::Level;
using camtune::test::LogCapture;

class LogSpaceTest : public camtune::test::RecorderFixture {
protected:
    LogHeader* reserve(int uniqueKey, int requestNo, unsigned size,
                       ScenarioRecorder::Buffer** out) {
        LogHeader* header = nullptr;
        EXPECT_TRUE(mRecorder.allocLogSpace(uniqueKey, requestNo, size, &header, out));
        return header;
    }

    ScenarioRecorder mRecorder;
};

TEST_F(LogSpaceTest, RecordSizesAreRoundedUpToFourBytes) {
    struct Case {
        unsigned asked;
        uint32_t size;
    };
    const Case cases[] = {{0, 28},  {24, 28},     {25, 28},    {28, 28},
                          {29, 32}, {1023, 1024}, {1024, 1024}};
    int requestNo = 0;
    for (const Case& c : cases) {
        ScenarioRecorder::Buffer* buffer = nullptr;
        LogHeader* header = reserve(1, ++requestNo, c.asked, &buffer);
        EXPECT_EQ(header->size, c.size) << c.asked;
        // A request's first record follows its 1,048-byte headline record.
        EXPECT_EQ(reinterpret_cast<char*>(header), buffer->data + 1048);
        EXPECT_EQ(buffer->spaceLeft, 262144u - 1048u - c.size);
        EXPECT_EQ(header->textCapacity(), c.size - 24);
        mRecorder.finishLogSpace(1, requestNo, buffer);
    }
}

TEST_F(LogSpaceTest, FullBufferChainsASuccessorWithoutHeadlineRecord) {
    ScenarioRecorder::Buffer* first = nullptr;
    reserve(1, 1, 1024, &first);
    // After the headline record and 254 records of 1,024 bytes, 1,000 bytes are left.
    for (int i = 0; i < 253; ++i) {
        ScenarioRecorder::Buffer* same = nullptr;
        reserve(1, 1, 1024, &same);
        ASSERT_EQ(same, first);
    }
    ASSERT_EQ(first->spaceLeft, 1000u);
    ScenarioRecorder::Buffer* exact = nullptr;
    reserve(1, 1, 1000, &exact);
    EXPECT_EQ(exact, first);
    EXPECT_EQ(first->spaceLeft, 0u);
    EXPECT_EQ(first->sealed.load(), 0);
    ScenarioRecorder::Buffer* next = nullptr;
    LogHeader* header = reserve(1, 1, 4, &next);
    ASSERT_NE(next, first);
    EXPECT_EQ(first->sealed.load(), 1);
    EXPECT_EQ(first->hasSuccessor, 1);
    EXPECT_EQ(first->successor.get(), next);
    EXPECT_EQ(next->needsHeadlineRecord, 0);
    EXPECT_EQ(reinterpret_cast<char*>(header), next->data);
    EXPECT_EQ(next->key, first->key);
    EXPECT_EQ(mRecorder.stats().writingList, 1u);
}

TEST_F(LogSpaceTest, LargestRecordIsAcceptedInItsOwnBuffer) {
    ScenarioRecorder::Buffer* buffer = nullptr;
    LogHeader* header = reserve(2, 2, 262141, &buffer);
    EXPECT_EQ(header->size, 262144u);
    EXPECT_EQ(reinterpret_cast<char*>(header), buffer->data);
    EXPECT_EQ(buffer->spaceLeft, 0u);
    EXPECT_EQ(buffer->needsHeadlineRecord, 0);
}

TEST_F(LogSpaceTest, OversizedRecordStopsTheProcess) {
    ScenarioRecorder::Buffer* buffer = nullptr;
    LogHeader* header = nullptr;
    EXPECT_DEATH(mRecorder.allocLogSpace(2, 2, 262145, &header, &buffer),
                 "\\[allocLogSpace\\] Log size too large: 262148");
    EXPECT_DEATH(mRecorder.allocLogSpace(2, 2, 0xFFFFFFFFu, &header, &buffer),
                 "Log size too large: ");
}

TEST_F(LogSpaceTest, HeadlineAppendsStopWhenTheyNoLongerFit) {
    ScenarioRecorder::Buffer* buffer = nullptr;
    reserve(7, 21, 64, &buffer);
    const std::string start = "[UKey: 7][ReqNum: 21]";
    ASSERT_EQ(buffer->headlineSpaceLeft, 1024u - start.size());
    struct Case {
        int length;
        bool kept;
    };
    // 1,003 bytes left: an append needs its length plus 2.
    const Case cases[] = {{1002, false}, {1001, true}, {0, true}, {1, false}};
    std::string expected = start;
    for (const Case& c : cases) {
        LogCapture log;
        std::string text(static_cast<size_t>(c.length), 'h');
        ScenarioRecorder::writeStringToHeadline(buffer, text.c_str(), c.length);
        if (c.kept) expected += text;
        EXPECT_EQ(std::string(buffer->headline), expected) << c.length;
        EXPECT_EQ(log.count(Level::Warn, "[writeStringToHeadline] Headline size is not enough"),
                  c.kept ? 0 : 1);
    }
    EXPECT_EQ(std::strlen(buffer->headline), 1022u);
}

TEST_F(LogSpaceTest, TextIsDroppedWhileTheRecorderIsNotInitialised) {
    EXPECT_FALSE(mRecorder.isInitialised());
    EXPECT_FALSE(mRecorder.submitRecordText(1, 1, "nothing", nullptr));
    EXPECT_EQ(mRecorder.stats().active, 0u);
}

TEST_F(LogSpaceTest, EnableSwitchIsReadAtConstruction) {
    struct Case {
        const char* value;
        bool on;
    };
    for (const Case& c : {Case{"", false}, Case{"0", false}, Case{"1", true}, Case{"2", true}}) {
        camtune::test::PropertyScope props;
        props.set(camtune::props::kRecorderEnable, std::string(c.value));
        ScenarioRecorder recorder;
        EXPECT_EQ(recorder.isScenarioRecorderOn(), c.on) << c.value;
    }
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
