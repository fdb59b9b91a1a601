// Cost of the platform port on the hot paths of a disabled feature: a property read and a log
// call below the threshold. The baseline is an empty call through the same harness.
#define LOG_TAG "camtune-bench"

#include <benchmark/benchmark.h>

#include "camtune/platform/log.h"
#include "camtune/platform/properties.h"

namespace {

using NSCam::Utils::Properties::property_get_int32;
using NSCam::Utils::Properties::property_set;

constexpr const char* kSetKey = "vendor.debug.camtune.bench.set";
constexpr const char* kUnsetKey = "vendor.debug.camtune.bench.unset";

void BM_Baseline(benchmark::State& state) {
    int value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_Baseline)->Threads(1)->Threads(2);

void BM_PropertyGetInt32Set(benchmark::State& state) {
    if (state.thread_index() == 0) property_set(kSetKey, "12345");
    for (auto _ : state) benchmark::DoNotOptimize(property_get_int32(kSetKey, 0));
}
BENCHMARK(BM_PropertyGetInt32Set)->Threads(1)->Threads(2);

void BM_PropertyGetInt32Unset(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(property_get_int32(kUnsetKey, 0));
}
BENCHMARK(BM_PropertyGetInt32Unset)->Threads(1)->Threads(2);

void BM_LogBelowThreshold(benchmark::State& state) {
    camtune::log::setThreshold(camtune::log::Level::Warn);
    int frame = 0;
    for (auto _ : state) {
        ++frame;
        CAM_LOGD("[%s] frame(%d) request(%d) name(%s)", __func__, frame, frame * 3, "main");
    }
    benchmark::DoNotOptimize(frame);
}
BENCHMARK(BM_LogBelowThreshold);

}  // namespace

BENCHMARK_MAIN();
