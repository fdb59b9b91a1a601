// Scenario recorder costs.
//
// BM_ProducerRecord: 120-byte records reserved, copied and finished in bursts of kBurstRecords by
// 1 and 2 producer threads, each on requests of its own; the service thread writes each burst out
// before the next one. items_per_second is the producers' records per second together;
// cpu_ns_per_record what each record costs its producer in CPU time.
// allocs_per_record counts every operator new of the process (service thread included) per record.
// BM_ProducerMemcpyBaseline: the bare copy of the same text, for scale.
// BM_ServiceWrite: the service thread writing a prepared backlog, in MB/s, next to a plain
// write() of the same bytes to the same folder measured in the same iteration (plain_MBps,
// ratio = service / plain).
// BM_DecisionRecordOff: a record submitted to the process's recorder while it is off, next to one
// property read (BM_PropertyReadBaseline).
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <time.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "bench_support.h"
#include "camtune/ndd.h"
#include "camtune/platform/fs.h"
#include "platform/host/root.h"
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
    // Refused at the memory bound when the service thread falls behind: counted in the stats.
    if (!recorder.allocLogSpace(uniqueKey, requestNo, kReserveSize, &header, &buffer)) return;
    std::memcpy(header->text(), recordText(), kRecordSize);
    header->textLength = kTextLength;  // as the recorder's own producers leave a record
    recorder.finishLogSpace(uniqueKey, requestNo, buffer);
}

// What the producers hand over between two wake-ups of the service thread: the measurement is
// of the producers, and with two of them on a 2-core machine a writing service thread would take
// a core from them.
constexpr int kBurstRecords = 20000;

double threadCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Runs kBurstRecords records on each of `producers` threads started together, each thread on
// requests of its own; returns the time until the last one finished, and adds the CPU time the
// threads spent to `cpuSeconds`.
double producerBurst(ScenarioRecorder& recorder, int producers, int burst, double* cpuSeconds) {
    std::atomic<int> ready{0};
    std::atomic<bool> go{false};
    std::vector<double> seconds(static_cast<size_t>(producers));
    std::vector<double> cpu(static_cast<size_t>(producers));
    std::vector<std::thread> threads;
    for (int p = 0; p < producers; ++p) {
        threads.emplace_back([&, p] {
            ready.fetch_add(1);
            // Waiting threads yield: on a 2-core machine a spinning one would hold the core a
            // producer needs.
            while (!go.load()) std::this_thread::yield();
            const auto start = Clock::now();
            const double cpuStart = threadCpuSeconds();
            int request = (burst * producers + p) * (kBurstRecords / kRecordsPerRequest + 1);
            for (int i = 0; i < kBurstRecords; ++i) {
                addRecord(recorder, 1, request + i / kRecordsPerRequest);
            }
            cpu[static_cast<size_t>(p)] = threadCpuSeconds() - cpuStart;
            seconds[static_cast<size_t>(p)] =
                    std::chrono::duration<double>(Clock::now() - start).count();
        });
    }
    while (ready.load() != producers) std::this_thread::yield();
    go.store(true);
    for (auto& thread : threads) thread.join();
    double slowest = 0;
    for (size_t p = 0; p < seconds.size(); ++p) {
        slowest = seconds[p] > slowest ? seconds[p] : slowest;
        *cpuSeconds += cpu[p];
    }
    return slowest;
}

void BM_ProducerRecord(benchmark::State& state) {
    benchRoot();
    const int producers = static_cast<int>(state.range(0));
    // The service thread at its default pace, so that it sleeps through a burst.
    props::set(props::kRecorderFlushMs, props::defaultInt(props::kRecorderFlushMs));
    ScenarioRecorder recorder;
    recorder.init();
    recorder.bindRequest(1, 0, 0, false);
    props::set(props::kRecorderFlushMs, 1);
    const uint64_t allocationsBefore = camtune::bench::allocationCount();
    int burst = 0;
    double cpuSeconds = 0;
    for (auto _ : state) {
        state.SetIterationTime(producerBurst(recorder, producers, burst++, &cpuSeconds));
        // Between bursts the service thread writes them out, as it does between frames.
        if (!recorder.waitUntilIdle(std::chrono::minutes(2))) state.SkipWithError("no drain");
    }
    const double records = static_cast<double>(state.iterations()) * producers * kBurstRecords;
    state.SetItemsProcessed(static_cast<int64_t>(records));
    // Thread starts included: a few per burst of thousands of records.
    state.counters["allocs_per_record"] = benchmark::Counter(
            static_cast<double>(camtune::bench::allocationCount() - allocationsBefore) / records);
    state.counters["dropped"] = static_cast<double>(recorder.stats().droppedRecords);
    // What one record costs a producer in CPU time: it stays put when producers do not contend,
    // whatever else runs on the machine.
    state.counters["cpu_ns_per_record"] = cpuSeconds * 1e9 / records;
    recorder.unInit();
    benchRoot().clearFolder();
}
BENCHMARK(BM_ProducerRecord)->ArgName("producers")->Arg(1)->Arg(2)->UseManualTime()->Iterations(40);

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
            // Written out between bursts, so the memory bound never turns records into drops.
            if (request % (kBurstRecords / kRecordsPerRequest) == 0) {
                state.PauseTiming();
                recorder.waitUntilIdle(std::chrono::minutes(2));
                state.ResumeTiming();
            }
        }
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["dropped"] = static_cast<double>(recorder.stats().droppedRecords);
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

// The one log file of the folder, read whole.
std::string logFileBytes() {
    std::string bytes;
    for (const auto& entry :
         std::filesystem::directory_iterator(camtune::host::hostPath(kFolder))) {
        std::ifstream in(entry.path(), std::ios::binary);
        bytes.append(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return bytes;
}

void BM_ServiceWrite(benchmark::State& state) {
    benchRoot();
    const int requests = static_cast<int>(state.range(0));
    // One request fills most of a buffer, so the backlog is not mostly headline records.
    const int recordsPerRequest = 1800;
    const std::string bytes = expectedOutput(requests, recordsPerRequest);
    double serviceSeconds = 0;
    double plainSeconds = 0;
    int round = 0;
    for (auto _ : state) {
        // The two runs take turns going first, so that the file-system work one leaves behind
        // weighs on both alike.
        const bool plainFirst = round++ % 2 == 1;
        if (plainFirst) plainSeconds += plainWriteSeconds(bytes);
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
        // The baseline is only fair while it writes what the service thread wrote.
        if (round == 1 && logFileBytes() != bytes) state.SkipWithError("log differs from baseline");
        benchRoot().clearFolder();
        if (!plainFirst) plainSeconds += plainWriteSeconds(bytes);
    }
    double total = static_cast<double>(bytes.size()) * static_cast<double>(state.iterations());
    state.SetBytesProcessed(static_cast<int64_t>(total));
    state.counters["service_MBps"] = total / serviceSeconds / 1e6;
    state.counters["plain_MBps"] = total / plainSeconds / 1e6;
    state.counters["ratio"] = plainSeconds / serviceSeconds;
}
// 160 requests: 35 MB, in 160 of the 256 buffers the default memory bound allows.
BENCHMARK(BM_ServiceWrite)->Arg(160)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(6);

// The recorder off, as a pipeline meets it: the process's recorder, never started, asked to
// record. Target: at most one property read (BM_PropertyReadBaseline, a property left unset).
void BM_DecisionRecordOff(benchmark::State& state) {
    using namespace NSCam::TuningUtils;
    scenariorecorder::IScenarioRecorder* recorder =
            scenariorecorder::IScenarioRecorder::getInstance();
    scenariorecorder::DecisionInput decision;
    decision.sensorIdx = 0;
    decision.moduleId = 0x801005;
    decision.decisionType = scenariorecorder::DECISION_ISP_FLOW;
    const long long key = composeNddKey(1, 2, 3);
    const char* text = recordText();
    for (auto _ : state) {
        benchmark::DoNotOptimize(recorder);
        recorder->submitDecisionRecord(key, decision, text);
    }
}
BENCHMARK(BM_DecisionRecordOff);

void BM_PropertyReadBaseline(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(props::getInt(props::kRecorderEnable));
}
BENCHMARK(BM_PropertyReadBaseline);

}  // namespace

BENCHMARK_MAIN();
