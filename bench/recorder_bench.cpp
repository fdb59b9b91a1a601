// Scenario recorder costs.
//
// BM_ProducerRecord: one 120-byte record reserved, copied and finished, with 1 and 2 producer
// threads while the service thread writes behind them; backlog_end is the number of requests
// still waiting when the producers stop and drain_ms the time the thread then needs to empty it.
// allocs_per_record counts every operator new of the process (service thread included) per record.
// BM_ProducerMemcpyBaseline: the bare copy of the same text, for scale.
// BM_ServiceWrite: the service thread writing a prepared backlog, in MB/s, next to a plain
// write() of the same bytes to the same folder measured in the same iteration (plain_MBps,
// ratio = service / plain).
#include <benchmark/benchmark.h>
#include <fcntl.h>

#include <chrono>
#include <cstring>
#include <string>
#include <vector>

#include "bench_support.h"
#include "camtune/ndd.h"
#include "camtune/platform/fs.h"
#include "platform/property_registry.h"
#include "recorder/scenario_recorder_impl.h"

namespace {

using NSCam::TuningUtils::scenariorecorder::LogHeader;
using NSCam::TuningUtils::scenariorecorder::ScenarioRecorder;
namespace fs = camtune::fs;
namespace props = camtune::props;
using Clock = std::chrono::steady_clock;

constexpr size_t kRecordSize = 120;  // text with its terminator
constexpr size_t kTextLength = kRecordSize - 1;
constexpr unsigned kReserveSize = 24 + kRecordSize;
constexpr int kRecordsPerRequest = 256;
constexpr char kFolder[] = "/data/vendor/camera_dump";

// Log files go to a scratch root that is removed at exit.
class BenchRoot : public camtune::bench::ScratchRoot {
public:
    BenchRoot() {
        fs::makePath(kFolder, 0771);
        props::set(props::kRecorderFlushMs, 1);
    }
    void clearFolder() const { ScratchRoot::clearFolder(kFolder); }
};

BenchRoot& benchRoot() {
    static BenchRoot sRoot;
    return sRoot;
}

const char* recordText() {
    static const std::string sText(kTextLength, 'r');
    return sText.c_str();
}

void addRecord(ScenarioRecorder& recorder, int uniqueKey, int requestNo) {
    LogHeader* header = nullptr;
    ScenarioRecorder::Buffer* buffer = nullptr;
    recorder.allocLogSpace(uniqueKey, requestNo, kReserveSize, &header, &buffer);
    std::memcpy(header->text(), recordText(), kRecordSize);
    recorder.finishLogSpace(uniqueKey, requestNo, buffer);
}

ScenarioRecorder* gRecorder = nullptr;

void BM_ProducerRecord(benchmark::State& state) {
    if (state.thread_index() == 0) {
        benchRoot();
        gRecorder = new ScenarioRecorder();
        gRecorder->init();
        gRecorder->bindRequest(1, 0, 0, false);
    }
    uint64_t allocationsBefore = camtune::bench::allocationCount();
    int request = state.thread_index() * 1000000;
    int inRequest = 0;
    for (auto _ : state) {
        addRecord(*gRecorder, 1, request);
        if (++inRequest == kRecordsPerRequest) {
            inRequest = 0;
            ++request;
        }
    }
    state.SetItemsProcessed(state.iterations());
    if (state.thread_index() == 0) {
        state.counters["allocs_per_record"] = benchmark::Counter(
                static_cast<double>(camtune::bench::allocationCount() - allocationsBefore) /
                static_cast<double>(state.iterations() * state.threads()));
        auto stats = gRecorder->stats();
        auto start = Clock::now();
        gRecorder->waitUntilIdle(std::chrono::minutes(5));
        double drainMs = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        state.counters["backlog_end"] = static_cast<double>(stats.writingList + stats.toBeFlushed);
        state.counters["drain_ms"] = drainMs;
        delete gRecorder;
        gRecorder = nullptr;
        benchRoot().clearFolder();
    }
}
BENCHMARK(BM_ProducerRecord)->Threads(1)->Threads(2)->UseRealTime()->MinTime(0.5);

// One decision or execution record submitted by NDD key, formatting included, on one thread.
// Target: under 400 ns each and no allocation per record (allocs_per_record).
template <bool kExecution>
void BM_RecordByKey(benchmark::State& state) {
    using namespace NSCam::TuningUtils;
    benchRoot();
    ScenarioRecorder recorder;
    recorder.init();
    recorder.bindRequest(1, 0, 0, false);
    scenariorecorder::DecisionInput decision;
    decision.sensorIdx = 0;
    decision.moduleId = 0x801005;
    decision.decisionType = scenariorecorder::DECISION_ISP_FLOW;
    scenariorecorder::ExecResultInput execution;
    execution.sensorIdx = 0;
    execution.moduleId = 0x402001;
    execution.result = scenariorecorder::DECISION_NORMAL_DATA_DUMP;
    execution.stage = 46;
    // About as long as a dump path, the longest text NDD records.
    const std::string text(70, 't');
    const uint64_t allocationsBefore = camtune::bench::allocationCount();
    int request = 0;
    int inRequest = 0;
    for (auto _ : state) {
        const long long key = composeNddKey(1, request, inRequest);
        if (kExecution) {
            recorder.submitExecutionRecord(key, execution, text.c_str());
        } else {
            recorder.submitDecisionRecord(key, decision, text.c_str());
        }
        if (++inRequest == kRecordsPerRequest) {
            inRequest = 0;
            request = (request + 1) & 0x7FFF;
        }
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["allocs_per_record"] = benchmark::Counter(
            static_cast<double>(camtune::bench::allocationCount() - allocationsBefore) /
            static_cast<double>(state.iterations()));
    recorder.waitUntilIdle(std::chrono::minutes(5));
    recorder.unInit();
    benchRoot().clearFolder();
}
BENCHMARK_TEMPLATE(BM_RecordByKey, false)->Name("BM_DecisionRecordByKey")->MinTime(0.5);
BENCHMARK_TEMPLATE(BM_RecordByKey, true)->Name("BM_ExecutionRecordByKey")->MinTime(0.5);

void BM_ProducerMemcpyBaseline(benchmark::State& state) {
    std::vector<char> area(1 << 20);
    size_t offset = 0;
    for (auto _ : state) {
        std::memcpy(area.data() + offset, recordText(), kRecordSize);
        offset = offset + kReserveSize < area.size() - kReserveSize ? offset + kReserveSize : 0;
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ProducerMemcpyBaseline)->Threads(1)->Threads(2)->UseRealTime();

// The same bytes the service thread writes: per request its headline line, then its records.
std::string expectedOutput(int requests, int recordsPerRequest) {
    std::string out;
    std::string line = std::string(recordText()) + "\n";
    for (int r = 0; r < requests; ++r) {
        out += "[UKey: 2][ReqNum: " + std::to_string(r) + "]\n";
        for (int i = 0; i < recordsPerRequest; ++i) out += line;
    }
    return out;
}

double plainWriteSeconds(const std::string& bytes) {
    const char* path = "/data/vendor/camera_dump/plain_write.txt";
    auto start = Clock::now();
    fs::UniqueFd fd(fs::open(path, O_WRONLY | O_CREAT | O_TRUNC, 0644));
    constexpr size_t kChunk = 24576 - 1124;  // what the writer's staging buffer holds at most
    for (size_t at = 0; at < bytes.size(); at += kChunk) {
        size_t n = bytes.size() - at < kChunk ? bytes.size() - at : kChunk;
        (void)fs::write(fd.get(), bytes.data() + at, n);
    }
    fs::fsync(fd.get());
    fd.reset();
    double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    fs::unlink(path);
    return seconds;
}

void BM_ServiceWrite(benchmark::State& state) {
    benchRoot();
    const int requests = static_cast<int>(state.range(0));
    // One request fills most of a buffer, so the backlog is not mostly headline records.
    const int recordsPerRequest = 1800;
    const std::string bytes = expectedOutput(requests, recordsPerRequest);
    double serviceSeconds = 0;
    double plainSeconds = 0;
    for (auto _ : state) {
        ScenarioRecorder recorder;
        recorder.setPrioritySetter([](int) { return 0; });
        recorder.bindRequest(2, 0, 0, false);
        for (int r = 0; r < requests; ++r) {
            for (int i = 0; i < recordsPerRequest; ++i) addRecord(recorder, 2, r);
        }
        auto start = Clock::now();
        recorder.init();
        if (!recorder.waitUntilIdle(std::chrono::minutes(5))) state.SkipWithError("no drain");
        double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        recorder.unInit();
        state.SetIterationTime(seconds);
        serviceSeconds += seconds;
        benchRoot().clearFolder();
        plainSeconds += plainWriteSeconds(bytes);
    }
    double total = static_cast<double>(bytes.size()) * static_cast<double>(state.iterations());
    state.SetBytesProcessed(static_cast<int64_t>(total));
    state.counters["service_MBps"] = total / serviceSeconds / 1e6;
    state.counters["plain_MBps"] = total / plainSeconds / 1e6;
    state.counters["ratio"] = plainSeconds / serviceSeconds;
}
BENCHMARK(BM_ServiceWrite)->Arg(64)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

BENCHMARK_MAIN();
