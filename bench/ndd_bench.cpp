// NDD costs, each next to a baseline measured in the same run.
//
// BM_SubmitQueued: caller-thread cost of submit_request for a raw buffer on the queued path,
// timed per call, against a memcpy of the same bytes into a warm buffer timed in the same
// iteration (memcpy_us; ratio = submit / memcpy, target at most 1.1). Between calls the queue
// drains untimed, as it does between frames. handed_over_memcpy_us is the same copy into a buffer
// that a thread on another core reads after each copy, as a writer on another core reads a
// queued copy; where cores are far apart this dominates (ratio_handed_over = submit / that).
// BM_WritersEndToEnd: 2 writer threads taking 8 queued items of 12 MB, from their release until
// every file is written, against one thread doing plain write() calls of the same files
// (plain_MBps; ratio = NDD rate / plain rate, target at least 0.95).
// BM_Refused*: an item refused because NDD is disabled, or because the item is not configured,
// next to one property read (BM_PropertyReadBaseline); allocs_per_item counts operator new of
// the whole process per refused item (target 0). Disabled, it costs at most that one read.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <pthread.h>
#include <sched.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "bench_support.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/properties.h"
#include "ndd/ndd_impl.h"
#include "platform/property_registry.h"

namespace {

using NSCam::TuningUtils::eCategory_Capture;
using NSCam::TuningUtils::eModule_AAO;
using NSCam::TuningUtils::eModule_IMGO;
using NSCam::TuningUtils::eModule_LSC;
using NSCam::TuningUtils::Ndd;
using NSCam::TuningUtils::NddData;
namespace fs = camtune::fs;
namespace props = camtune::props;
using Clock = std::chrono::steady_clock;

constexpr char kConfigPath[] = "/data/vendor/camera_dump/ndd.cfg";
constexpr char kFolder[] = "/data/vendor/camera_dump/default_dump";
constexpr char kPlainFolder[] = "/data/vendor/camera_dump/plain";

// Dumps go to a scratch root that is removed at exit.
class BenchRoot : public camtune::bench::ScratchRoot {
public:
    BenchRoot() {
        fs::makePath(kPlainFolder, 0777);
        std::FILE* config = fs::fopen(kConfigPath, "w");
        if (config != nullptr) {
            std::fputs(
                    "Preview,Default,[Prefix][UserStr],Capture,IMGO,1,0\n"
                    "Preview,Default,[Prefix][UserStr],Capture,AAO,1,0\n",
                    config);
            std::fclose(config);
        }
        props::set(props::kNddConfigPath, kConfigPath);
        props::set(props::kNddRootPath, "/data/vendor/camera_dump/");
    }
    static void clear(const char* folder) { clearFolder(folder); }
};

BenchRoot& benchRoot() {
    static BenchRoot sRoot;
    return sRoot;
}

// A started NDD with `threads` writers and the bench configuration.
std::unique_ptr<Ndd> startNdd(const char* threads) {
    benchRoot();
    props::set(props::kNddThreadCount, threads);
    auto ndd = std::make_unique<Ndd>();
    ndd->init();
    ndd->stream_on({0}, 1234);
    return ndd;
}

NddData item(const char* userStr) {
    NddData data;
    data.uniqueKey = 1234;
    data.requestNo = 1;
    data.frameNo = 1;
    data.userStr = userStr;
    return data;
}

bool waitDrained(const Ndd& ndd) {
    auto deadline = Clock::now() + std::chrono::minutes(2);
    while (ndd.queuedSize() != 0) {
        if (Clock::now() > deadline) return false;
        // Sleeps rather than spins: on a 2-core machine a spinning waiter would take a core from
        // the writers it waits for.
        std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
    return true;
}

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// A buffer that a thread on another core reads between copies into it, as a writer thread may
// read a queued copy: the copy into it shows what moving cache lines between cores costs on
// this machine.
class HandedOverBuffer {
public:
    explicit HandedOverBuffer(size_t size)
        : mBytes(size, 0), mSink(size, 0), mReader([this] { run(); }) {}
    ~HandedOverBuffer() {
        mTurn.store(kStop);
        mReader.join();
    }
    // Times a copy of `source` into the buffer, then has the other thread read it.
    double copySeconds(const uint8_t* source) {
        auto start = Clock::now();
        std::memcpy(mBytes.data(), source, mBytes.size());
        benchmark::ClobberMemory();
        const double seconds = secondsSince(start);
        mTurn.store(kRead);
        while (mTurn.load() == kRead) {
        }
        return seconds;
    }

private:
    enum Turn { kIdle, kRead, kStop };
    void run() {
        // Read on another core than the copier's, when the machine has one.
        const int copierCpu = mCopierCpu;
        const int cpus = static_cast<int>(std::thread::hardware_concurrency());
        if (copierCpu >= 0 && cpus > 1) {
            cpu_set_t set;
            CPU_ZERO(&set);
            CPU_SET((copierCpu + 1) % cpus, &set);
            pthread_setaffinity_np(pthread_self(), sizeof(set), &set);
        }
        for (int turn; (turn = mTurn.load()) != kStop;) {
            if (turn != kRead) continue;
            std::memcpy(mSink.data(), mBytes.data(), mBytes.size());
            benchmark::ClobberMemory();
            mTurn.store(kIdle);
        }
    }
    std::vector<uint8_t> mBytes;
    std::vector<uint8_t> mSink;
    std::atomic<int> mTurn{kIdle};
    const int mCopierCpu = sched_getcpu();
    std::thread mReader;
};

void BM_SubmitQueued(benchmark::State& state) {
    const size_t size = static_cast<size_t>(state.range(0)) << 20;
    auto ndd = startNdd("2");
    std::vector<uint8_t> source(size, 0x5a);
    std::vector<uint8_t> warm(size, 0);
    double submitSeconds = 0;
    double memcpySeconds = 0;
    double handedOverSeconds = 0;
    int index = 0;
    auto timeMemcpy = [&] {
        auto start = Clock::now();
        std::memcpy(warm.data(), source.data(), size);
        benchmark::ClobberMemory();
        memcpySeconds += secondsSince(start);
    };
    for (auto _ : state) {
        // Every dump has a name of its own, as frames do; the two copies take turns going
        // first, so background write-back after a drain weighs on both alike.
        const bool baselineFirst = index % 2 == 0;
        if (baselineFirst) timeMemcpy();
        NddData data = item(std::to_string(index).c_str());
        auto start = Clock::now();
        ndd->submit_request(eCategory_Capture, eModule_IMGO, data, source.data(),
                            static_cast<int>(size), __FILE__, __LINE__);
        const double seconds = secondsSince(start);
        submitSeconds += seconds;
        state.SetIterationTime(seconds);
        if (!baselineFirst) timeMemcpy();
        if (!waitDrained(*ndd)) state.SkipWithError("queue did not drain");
        if (++index % 64 == 0) BenchRoot::clear(kFolder);
    }
    state.SetBytesProcessed(static_cast<int64_t>(size) * state.iterations());
    state.counters["memcpy_us"] = memcpySeconds * 1e6 / static_cast<double>(state.iterations());
    state.counters["ratio"] = submitSeconds / memcpySeconds;
    {
        HandedOverBuffer handedOver(size);
        for (int64_t i = 0; i < state.iterations(); ++i) {
            handedOverSeconds += handedOver.copySeconds(source.data());
        }
    }
    state.counters["handed_over_memcpy_us"] =
            handedOverSeconds * 1e6 / static_cast<double>(state.iterations());
    state.counters["ratio_handed_over"] = submitSeconds / handedOverSeconds;
    ndd->uninit();
    BenchRoot::clear(kFolder);
}
BENCHMARK(BM_SubmitQueued)
        ->Args({1})
        ->Iterations(2048)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SubmitQueued)
        ->Args({12})
        ->Iterations(256)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);

double plainWriteSeconds(const std::vector<uint8_t>& bytes, int files) {
    auto start = Clock::now();
    for (int i = 0; i < files; ++i) {
        std::string path = std::string(kPlainFolder) + "/" + std::to_string(i);
        fs::UniqueFd fd(fs::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
        size_t at = 0;
        while (at < bytes.size()) {
            ssize_t n = fs::write(fd.get(), bytes.data() + at, bytes.size() - at);
            if (n <= 0) break;
            at += static_cast<size_t>(n);
        }
    }
    return secondsSince(start);
}

void BM_WritersEndToEnd(benchmark::State& state) {
    constexpr int kItems = 8;
    const std::vector<uint8_t> bytes(12u << 20, 0x3c);
    auto ndd = startNdd("2");
    double nddSeconds = 0;
    double plainSeconds = 0;
    int round = 0;
    for (auto _ : state) {
        // The writers alone: the items are queued first, then timed from release to the last
        // byte written. The two runs take turns going first.
        const bool plainFirst = round++ % 2 == 0;
        if (plainFirst) plainSeconds += plainWriteSeconds(bytes, kItems);
        ndd->setWritersPaused(true);
        for (int i = 0; i < kItems; ++i) {
            NddData data = item(std::to_string(i).c_str());
            ndd->submit_request(eCategory_Capture, eModule_IMGO, data, bytes.data(),
                                static_cast<int>(bytes.size()), __FILE__, __LINE__);
        }
        auto start = Clock::now();
        ndd->setWritersPaused(false);
        if (!waitDrained(*ndd)) state.SkipWithError("queue did not drain");
        const double seconds = secondsSince(start);
        nddSeconds += seconds;
        state.SetIterationTime(seconds);
        if (!plainFirst) plainSeconds += plainWriteSeconds(bytes, kItems);
        BenchRoot::clear(kFolder);
        BenchRoot::clear(kPlainFolder);
    }
    const double total =
            static_cast<double>(bytes.size()) * kItems * static_cast<double>(state.iterations());
    state.SetBytesProcessed(static_cast<int64_t>(total));
    state.counters["ndd_MBps"] = total / nddSeconds / 1e6;
    state.counters["plain_MBps"] = total / plainSeconds / 1e6;
    state.counters["ratio"] = plainSeconds / nddSeconds;
    ndd->uninit();
}
BENCHMARK(BM_WritersEndToEnd)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(12);

void refusedLoop(benchmark::State& state, Ndd& ndd) {
    NddData data = item("");
    const uint64_t before = camtune::bench::allocationCount();
    const char byte = 0;
    for (auto _ : state) {
        ndd.submit_request(eCategory_Capture, eModule_LSC, data, &byte, 1, __FILE__, __LINE__);
    }
    state.counters["allocs_per_item"] =
            static_cast<double>(camtune::bench::allocationCount() - before) /
            static_cast<double>(state.iterations());
}

void BM_RefusedDisabled(benchmark::State& state) {
    auto ndd = startNdd("0");
    refusedLoop(state, *ndd);
}
BENCHMARK(BM_RefusedDisabled);

void BM_RefusedNotConfigured(benchmark::State& state) {
    auto ndd = startNdd("1");
    refusedLoop(state, *ndd);
    ndd->uninit();
}
BENCHMARK(BM_RefusedNotConfigured);

void BM_PropertyReadBaseline(benchmark::State& state) {
    benchRoot();
    for (auto _ : state) {
        benchmark::DoNotOptimize(
                NSCam::Utils::Properties::property_get_int32("vendor.debug.ndd.direct_write", 0));
    }
}
BENCHMARK(BM_PropertyReadBaseline);

}  // namespace

BENCHMARK_MAIN();
