// The scenario recorder next to what a pipeline developer would otherwise pick: spdlog's
// synchronous file sink and its asynchronous logger (blocking when full, 8,192 slots, one worker).
//
// Every case writes the same lines, as a decision record formats them (about 110 characters:
// sensor, frame, module and decision names, then the caller's text), from 1 or 2 producer
// threads, to files in one folder, and counts a run as done once every line is in its file.
//   caller_ns       time a producer spends per line, its own formatting included
//   producer_lps    lines per second the producers hand over together (lines / slowest producer)
//   lines_per_s     lines per second end to end: from the first line until the last is written
//   lost            lines submitted but not written (the recorder drops at its memory bound)
#include <benchmark/benchmark.h>
#include <spdlog/async.h>
#include <spdlog/async_logger.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bench_support.h"
#include "camtune/ndd.h"
#include "camtune/platform/fs.h"
#include "camtune/scenario_recorder.h"
#include "platform/host/root.h"
#include "platform/property_registry.h"
#include "recorder/scenario_recorder_impl.h"

namespace {

using NSCam::TuningUtils::composeNddKey;
namespace recorder = NSCam::TuningUtils::scenariorecorder;
namespace fs = camtune::fs;
namespace props = camtune::props;
using Clock = std::chrono::steady_clock;

constexpr char kFolder[] = "/data/vendor/camera_dump";
constexpr int kLinesPerProducer = 100000;
// About what one frame's request gathers; each producer works on requests of its own.
constexpr int kLinesPerRequest = 1000;
constexpr size_t kAsyncSlots = 8192;
constexpr int kUniqueKey = 7;

// The caller's part of a line: with the names a decision record puts before it, 110 characters.
constexpr char kText[] = "lv 113 cct 5012 iso 800 scene 3 ok";
constexpr char kSensor[] = "main";
constexpr char kModule[] = "IspTuning";
constexpr char kDecision[] = "ISP_FLOW";
constexpr uint32_t kModuleId = 0x801005;  // IspTuning

class BenchRoot : public camtune::bench::ScratchRoot {
public:
    BenchRoot() { fs::makePath(kFolder, 0771); }
};

BenchRoot& benchRoot() {
    static BenchRoot sRoot;
    return sRoot;
}

std::string hostFile(const char* name) {
    return camtune::host::hostPath((std::string(kFolder) + "/" + name).c_str());
}

// One producer's line `i`: frame number and request follow the line's request.
struct LineId {
    int requestNo;
    int frameNo;
};
LineId lineId(int producer, int i) {
    const int request =
            producer * (kLinesPerProducer / kLinesPerRequest + 1) + i / kLinesPerRequest;
    return {request, request};
}

struct RunTimes {
    double producerSeconds = 0;  // summed over producers
    double slowestProducer = 0;
    double endToEnd = 0;
};

// Runs `produce(producer)` on `producers` threads started together, then `drain()`; returns the
// producers' times and the time from the start until drain() returned.
template <typename Produce, typename Drain>
RunTimes run(int producers, Produce produce, Drain drain) {
    std::atomic<int> ready{0};
    std::atomic<bool> go{false};
    std::vector<double> seconds(static_cast<size_t>(producers));
    std::vector<std::thread> threads;
    for (int p = 0; p < producers; ++p) {
        threads.emplace_back([&, p] {
            ready.fetch_add(1);
            while (!go.load()) {
            }
            const auto start = Clock::now();
            produce(p);
            seconds[static_cast<size_t>(p)] =
                    std::chrono::duration<double>(Clock::now() - start).count();
        });
    }
    while (ready.load() != producers) {
    }
    const auto start = Clock::now();
    go.store(true);
    for (auto& thread : threads) thread.join();
    drain();
    RunTimes times;
    times.endToEnd = std::chrono::duration<double>(Clock::now() - start).count();
    for (double s : seconds) {
        times.producerSeconds += s;
        if (s > times.slowestProducer) times.slowestProducer = s;
    }
    return times;
}

void report(benchmark::State& state, const RunTimes& total, int64_t lost) {
    const double producers = static_cast<double>(state.range(0));
    const double lines = producers * kLinesPerProducer * static_cast<double>(state.iterations());
    state.counters["caller_ns"] = total.producerSeconds * 1e9 / lines;
    state.counters["producer_lps"] = lines / total.slowestProducer;
    state.counters["lines_per_s"] = lines / total.endToEnd;
    state.counters["lost"] = static_cast<double>(lost);
    state.SetItemsProcessed(static_cast<int64_t>(lines));
}

void accumulate(RunTimes& total, const RunTimes& times) {
    total.producerSeconds += times.producerSeconds;
    total.slowestProducer += times.slowestProducer;
    total.endToEnd += times.endToEnd;
}

// Lines as spdlog writes them: its own formatting of the same fields, nothing else on the line.
void spdlogLines(spdlog::logger& logger, int producer) {
    for (int i = 0; i < kLinesPerProducer; ++i) {
        logger.info("[SensorDevName: {}][FrameNum: {}][ModuleName: {}][Decision: {}] {}", kSensor,
                    lineId(producer, i).frameNo, kModule, kDecision, kText);
    }
}

// Lines of the file at host path `path` that carry the caller's text: the lines that arrived.
size_t countLines(const std::string& path) {
    std::ifstream in(path);
    size_t lines = 0;
    for (std::string line; std::getline(in, line);) {
        lines += line.find(kText) != std::string::npos;
    }
    return lines;
}

size_t countFolderLines() {
    size_t lines = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(camtune::host::hostPath(kFolder))) {
        lines += countLines(entry.path().string());
    }
    return lines;
}

void BM_SpdlogSync(benchmark::State& state) {
    benchRoot();
    const int producers = static_cast<int>(state.range(0));
    const std::string path = hostFile("spdlog_sync.txt");
    RunTimes total;
    int64_t lost = 0;
    for (auto _ : state) {
        auto sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>(path, true);
        auto logger = std::make_shared<spdlog::logger>("sync", sink);
        logger->set_pattern("%v");
        const RunTimes times = run(
                producers, [&](int p) { spdlogLines(*logger, p); }, [&] { logger->flush(); });
        state.SetIterationTime(times.endToEnd);
        accumulate(total, times);
        logger.reset();
        sink.reset();
        lost += static_cast<int64_t>(producers) * kLinesPerProducer -
                static_cast<int64_t>(countLines(path));
    }
    report(state, total, lost);
    camtune::bench::ScratchRoot::clearFolder(kFolder);
}

void BM_SpdlogAsync(benchmark::State& state) {
    benchRoot();
    const int producers = static_cast<int>(state.range(0));
    const std::string path = hostFile("spdlog_async.txt");
    RunTimes total;
    int64_t lost = 0;
    for (auto _ : state) {
        auto pool = std::make_shared<spdlog::details::thread_pool>(kAsyncSlots, 1);
        auto sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>(path, true);
        auto logger = std::make_shared<spdlog::async_logger>("async", sink, pool,
                                                             spdlog::async_overflow_policy::block);
        logger->set_pattern("%v");
        const RunTimes times = run(
                producers, [&](int p) { spdlogLines(*logger, p); },
                [&] {
                    // The worker takes the flush after every line before it; it has written
                    // them all once it has stopped.
                    logger->flush();
                    logger.reset();
                    pool.reset();
                    sink->flush();
                });
        state.SetIterationTime(times.endToEnd);
        accumulate(total, times);
        sink.reset();
        lost += static_cast<int64_t>(producers) * kLinesPerProducer -
                static_cast<int64_t>(countLines(path));
    }
    report(state, total, lost);
    camtune::bench::ScratchRoot::clearFolder(kFolder);
}

void BM_ScenarioRecorder(benchmark::State& state) {
    benchRoot();
    const int producers = static_cast<int>(state.range(0));
    RunTimes total;
    int64_t lost = 0;
    for (auto _ : state) {
        // The recorder as a pipeline gets it: default properties, reached through the interface.
        recorder::ScenarioRecorder instance;
        instance.init();
        instance.recordNddInfo(kUniqueKey, 0, 0, false);
        recorder::IScenarioRecorder& interface = instance;
        recorder::DecisionInput input;
        input.sensorIdx = 0;  // sensor device 1: "main"
        input.moduleId = kModuleId;
        input.decisionType = recorder::DECISION_ISP_FLOW;
        const RunTimes times = run(
                producers,
                [&](int p) {
                    for (int i = 0; i < kLinesPerProducer; ++i) {
                        const LineId id = lineId(p, i);
                        interface.submitDecisionRecord(
                                composeNddKey(kUniqueKey, id.requestNo, id.frameNo), input, kText);
                    }
                },
                [&] {
                    if (!instance.waitUntilIdle(std::chrono::minutes(2))) {
                        state.SkipWithError("the recorder did not drain");
                    }
                });
        state.SetIterationTime(times.endToEnd);
        accumulate(total, times);
        instance.unInit();
        lost += static_cast<int64_t>(producers) * kLinesPerProducer -
                static_cast<int64_t>(countFolderLines());
        camtune::bench::ScratchRoot::clearFolder(kFolder);
    }
    report(state, total, lost);
}

BENCHMARK(BM_SpdlogSync)->ArgName("producers")->Arg(1)->Arg(2)->UseManualTime()->Iterations(4);
BENCHMARK(BM_SpdlogAsync)->ArgName("producers")->Arg(1)->Arg(2)->UseManualTime()->Iterations(4);
BENCHMARK(BM_ScenarioRecorder)
        ->ArgName("producers")
        ->Arg(1)
        ->Arg(2)
        ->UseManualTime()
        ->Iterations(4);

}  // namespace

BENCHMARK_MAIN();
