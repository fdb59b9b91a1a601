// Cost of composing dump-file names, with exposure bracketing off and on, next to a single
// snprintf of an equally long name as the baseline.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "bench_support.h"
#include "camtune/naming.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"
#include "platform/property_registry.h"

namespace {

using NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;

FILE_DUMP_NAMING_HINT benchHint() {
    FILE_DUMP_NAMING_HINT hint;
    hint.UniqueKey = 5012345;
    hint.RequestNo = 12;
    hint.FrameNo = 34;
    hint.SensorDev = 1;
    hint.BufWidth = hint.ImgWidth = 4000;
    hint.BufHeight = hint.ImgHeight = 3000;
    hint.BufStride = 5000;
    hint.ImgFormat = 0x2201;
    hint.SensorFormatOrder = 1;
    hint.EvValue = -2;
    return hint;
}

// The first name creates the dump root; keep it out of /data and out of the timings.
struct BenchRoot : camtune::bench::ScratchRoot {
    BenchRoot() {
        char buf[256];
        NSCam::TuningUtils::MakePrefix(buf, sizeof(buf), 0, 0, 0, 0);
    }
};

// Bracketing on logs every exposure value at error level; silence it so the figure is the
// naming, not the console.
struct Bracketing {
    explicit Bracketing(bool on) : mPrevious(camtune::log::threshold()) {
        camtune::props::set(camtune::props::kNormalAeb, on ? 1 : 0);
        camtune::log::setThreshold(camtune::log::Level::Silent);
    }
    ~Bracketing() {
        camtune::props::set(camtune::props::kNormalAeb, 0);
        camtune::log::setThreshold(mPrevious);
    }
    camtune::log::Level mPrevious;
};

void BM_Baseline_snprintf(benchmark::State& state) {
    char buf[256];
    int n = 12;
    for (auto _ : state) {
        std::snprintf(
                buf, sizeof(buf),
                "/data/vendor/camera_dump/%09d-%04d-%04d-%s-%s-PW%d-PH%d-BW%d__%dx%d_%s_%s.%s",
                5012345, n, 34, "main", "imgo", 4000, 3000, 5000, 4000, 3000, "10", "1",
                "packed_word");
        benchmark::DoNotOptimize(buf);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_Baseline_snprintf);

void BM_genFileName_RAW(benchmark::State& state) {
    static BenchRoot root;
    Bracketing bracketing(state.range(0) != 0);
    const FILE_DUMP_NAMING_HINT hint = benchHint();
    char buf[256];
    for (auto _ : state) {
        benchmark::DoNotOptimize(NSCam::TuningUtils::genFileName_RAW(
                buf, sizeof(buf), &hint, NSCam::TuningUtils::RAW_PORT_IMGO, nullptr));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_genFileName_RAW)->ArgName("aeb")->Arg(0)->Arg(1);

void BM_genFileName_TUNING(benchmark::State& state) {
    static BenchRoot root;
    Bracketing bracketing(state.range(0) != 0);
    const FILE_DUMP_NAMING_HINT hint = benchHint();
    char buf[256];
    for (auto _ : state) {
        benchmark::DoNotOptimize(
                NSCam::TuningUtils::genFileName_TUNING(buf, sizeof(buf), &hint, nullptr));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_genFileName_TUNING)->ArgName("aeb")->Arg(0)->Arg(1);

}  // namespace

BENCHMARK_MAIN();
