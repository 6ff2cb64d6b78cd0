// Conversion, threshold, copy and up-sampling kernels against plain loops
// built for this processor and against memcpy. Bytes count what is read
// plus what is written.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "common.h"
#include "convert_refs.h"
#include "ipp.h"

namespace {

using bench::account;
using bench::inputs;
using bench::Memcpy64;

// Saturation matters: a tenth of the inputs lie outside the 16-bit range.
void Cvt32f16sBackend(benchmark::State &state)
{
    ippInit();
    std::vector<float> src = inputs<float>(state.range(0), -36000, 36000);
    std::vector<Ipp16s> dst(state.range(0));
    for (auto _ : state) {
        ippsConvert_32f16s_Sfs(src.data(), dst.data(), (int)src.size(), ippRndNear, 0);
        benchmark::ClobberMemory();
    }
    account(state, 6);
}

void Cvt32f16sNative(benchmark::State &state)
{
    std::vector<float> src = inputs<float>(state.range(0), -36000, 36000);
    std::vector<int16_t> dst(state.range(0));
    for (auto _ : state) {
        refs::nativeCvt32f16s(src.data(), dst.data(), (int)src.size(), 1.0f);
        benchmark::ClobberMemory();
    }
    account(state, 6);
}

void ThresholdLT32fBackend(benchmark::State &state)
{
    ippInit();
    std::vector<float> src = inputs<float>(state.range(0), -1, 1), dst(state.range(0));
    for (auto _ : state) {
        ippsThreshold_LT_32f(src.data(), dst.data(), (int)src.size(), 0.25f);
        benchmark::ClobberMemory();
    }
    account(state, 8);
}

void ThresholdLT32fNative(benchmark::State &state)
{
    std::vector<float> src = inputs<float>(state.range(0), -1, 1), dst(state.range(0));
    for (auto _ : state) {
        refs::nativeThresholdLT32f(src.data(), dst.data(), (int)src.size(), 0.25f);
        benchmark::ClobberMemory();
    }
    account(state, 8);
}

void Copy64fBackend(benchmark::State &state)
{
    ippInit();
    std::vector<double> src = inputs<double>(state.range(0), -1, 1), dst(state.range(0));
    for (auto _ : state) {
        ippsCopy_64f(src.data(), dst.data(), (int)src.size());
        benchmark::ClobberMemory();
    }
    account(state, 16);
}

void Copy64fNative(benchmark::State &state)
{
    std::vector<double> src = inputs<double>(state.range(0), -1, 1), dst(state.range(0));
    for (auto _ : state) {
        refs::nativeCopy64f(src.data(), dst.data(), (int)src.size());
        benchmark::ClobberMemory();
    }
    account(state, 16);
}

void SampleUp32fBackend(benchmark::State &state)
{
    ippInit();
    std::vector<float> src = inputs<float>(state.range(0), -1, 1), dst(2 * state.range(0));
    for (auto _ : state) {
        int len = 0, phase = 0;
        ippsSampleUp_32f(src.data(), (int)src.size(), dst.data(), &len, 2, &phase);
        benchmark::ClobberMemory();
    }
    account(state, 12);
}

void SampleUp32fNative(benchmark::State &state)
{
    std::vector<float> src = inputs<float>(state.range(0), -1, 1), dst(2 * state.range(0));
    for (auto _ : state) {
        refs::nativeSampleUp32f(src.data(), dst.data(), (int)src.size());
        benchmark::ClobberMemory();
    }
    account(state, 12);
}

#define SIZES ->Arg(1000)->Arg(100000)->Arg(10000000)

BENCHMARK(Memcpy64) SIZES;
BENCHMARK(Cvt32f16sBackend) SIZES;
BENCHMARK(Cvt32f16sNative) SIZES;
BENCHMARK(ThresholdLT32fBackend) SIZES;
BENCHMARK(ThresholdLT32fNative) SIZES;
BENCHMARK(Copy64fBackend) SIZES;
BENCHMARK(Copy64fNative) SIZES;
BENCHMARK(SampleUp32fBackend) SIZES;
BENCHMARK(SampleUp32fNative) SIZES;

}  // namespace

BENCHMARK_MAIN();
