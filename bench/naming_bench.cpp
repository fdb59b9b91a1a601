// Cost of composing dump-file names, with exposure bracketing off and on, next to the same raw
// name printed element by element with snprintf (BM_Baseline_snprintf) and, for scale, one
// snprintf of the whole name.
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

void benchRoot() {
    static BenchRoot sRoot;
}

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

// The baseline: the same name printed element by element with snprintf, each element cut by the
// print when it does not fit and the position moved on only when it did, as names are built.
class SnprintfName {
public:
    SnprintfName(char* buf, int size) : mBuf(buf), mSize(size) {}
    template <typename... Args>
    int add(const char* format, Args... args) {
        const int room = mSize - mLength;
        const int printed =
                room > 0 ? std::snprintf(mBuf + mLength, static_cast<size_t>(room), format, args...)
                         : std::snprintf(nullptr, 0, format, args...);
        if (printed >= 0 && printed < room) mLength += printed;
        return printed;
    }

private:
    char* mBuf;
    int mSize;
    int mLength = 0;
};

int snprintfRawName(char* buf, int size, const FILE_DUMP_NAMING_HINT& hint) {
    SnprintfName name(buf, size);
    name.add("%s/%09d", "/data/vendor/camera_dump", hint.UniqueKey);
    name.add("-%04d", hint.RequestNo);
    name.add("-%04d", hint.FrameNo);
    name.add("-%s", "main");
    name.add("%s", "-imgo");
    name.add("-PW%d-PH%d-BW%d", hint.BufWidth, hint.BufHeight, hint.BufStride);
    name.add("__%dx%d_%s_%s", hint.ImgWidth, hint.ImgHeight, "10", "1");
    return name.add(".%s", "packed_word");
}

void BM_Baseline_snprintf(benchmark::State& state) {
    benchRoot();
    const FILE_DUMP_NAMING_HINT hint = benchHint();
    char buf[256];
    char expected[256];
    // The baseline is only fair while it prints what the library does.
    snprintfRawName(buf, sizeof(buf), hint);
    NSCam::TuningUtils::genFileName_RAW(expected, sizeof(expected), &hint,
                                        NSCam::TuningUtils::RAW_PORT_IMGO, nullptr);
    if (std::string(buf) != expected) {
        state.SkipWithError(("prints " + std::string(buf) + ", not " + expected).c_str());
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(snprintfRawName(buf, sizeof(buf), hint));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_Baseline_snprintf);

// One snprintf of the whole name, for scale: what no element-wise cut rule costs.
void BM_Baseline_one_snprintf(benchmark::State& state) {
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
BENCHMARK(BM_Baseline_one_snprintf);

void BM_genFileName_RAW(benchmark::State& state) {
    benchRoot();
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
    benchRoot();
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
