// Several producers record at once while the service thread writes: every record lands once
// and whole.
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "recorder/scenario_recorder_impl.h"
#include "recorder_test_util.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

using namespace std::chrono_literals;

constexpr int kProducers = 4;
constexpr int kRecordsEach = 3000;
// Producers share requests, and a request holds more than one buffer's worth of records.
constexpr int kRecordsPerRequest = 400;

std::string recordText(int producer, int seq) {
    size_t payload = 100 + static_cast<size_t>(seq * 37 % 800);
    return "p" + std::to_string(producer) + " n" + std::to_string(seq) + " " +
           std::string(payload, static_cast<char>('a' + producer));
}

class RecorderStressTest : public camtune::test::RecorderFixture {};

TEST_F(RecorderStressTest, EveryRecordLandsExactlyOnceAndWhole) {
    mProps.set(camtune::props::kRecorderFlushMs, 1);
    ScenarioRecorder recorder;
    recorder.setPrioritySetter([](int) { return 0; });
    recorder.init();
    recorder.recordNddInfo(1, 0, 0, false);

    std::vector<std::thread> producers;
    for (int p = 0; p < kProducers; ++p) {
        producers.emplace_back([&recorder, p] {
            for (int seq = 0; seq < kRecordsEach; ++seq) {
                std::string text = recordText(p, seq);
                const char* headline = seq % 97 == 0 ? "mark" : nullptr;
                recorder.submitRecordText(1, seq / kRecordsPerRequest, text.c_str(), headline);
            }
        });
    }
    for (auto& producer : producers) producer.join();
    ASSERT_TRUE(recorder.waitUntilIdle(60s));
    recorder.unInit();

    std::string file;
    for (const auto& name : filesIn(camtune::test::kLogFolder)) {
        file = std::string(camtune::test::kLogFolder) + "/" + name;
    }
    ASSERT_EQ(filesIn(camtune::test::kLogFolder).size(), 1u);
    std::vector<std::vector<int>> seen(kProducers, std::vector<int>(kRecordsEach, 0));
    const std::regex headline("\\[UKey: 1\\]\\[ReqNum: [0-9]+\\](, mark)*");
    const std::regex record("p([0-9]) n([0-9]+) [a-z]+");
    int torn = 0;
    for (const std::string& line : splitLines(mRoot.readFile(file))) {
        if (std::regex_match(line, headline)) continue;
        std::smatch parts;
        if (!std::regex_match(line, parts, record)) {
            ++torn;
            continue;
        }
        int p = std::stoi(parts[1]);
        int seq = std::stoi(parts[2]);
        if (p >= kProducers || seq >= kRecordsEach || line != recordText(p, seq)) {
            ++torn;
            continue;
        }
        ++seen[p][seq];
    }
    EXPECT_EQ(torn, 0);
    for (int p = 0; p < kProducers; ++p) {
        for (int seq = 0; seq < kRecordsEach; ++seq) {
            ASSERT_EQ(seen[p][seq], 1) << "producer " << p << " record " << seq;
        }
    }
}

}  // namespace
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
