// Filter kernels over 1,000,000 samples against plain loops built with and
// without vectorisation. The argument is the number of taps (FIR), the
// order (IIR) or the mask (median); set-up structures and states are made
// once, outside the timed loop, as a caller filtering a stream would.
#include <benchmark/benchmark.h>

#include <vector>

#include "common.h"
#include "filter_refs.h"
#include "ipp.h"

namespace {

using bench::inputs;

constexpr int kSamples = 1000000;

void account(benchmark::State &state, int64_t bytesPerSample)
{
    state.SetBytesProcessed(state.iterations() * kSamples * bytesPerSample);
    state.SetItemsProcessed(state.iterations() * kSamples);
}

void Fir64Backend(benchmark::State &state)
{
    ippInit();
    const int taps = int(state.range(0));
    const std::vector<double> h = inputs<double>(taps, -1, 1, 3), x = inputs<double>(kSamples, -1, 1, 1);
    std::vector<double> y(kSamples);
    int specSize = 0, bufSize = 0;
    ippsFIRSRGetSize(taps, ipp64f, &specSize, &bufSize);
    Ipp8u *spec = ippsMalloc_8u(specSize), *buf = ippsMalloc_8u(bufSize);
    ippsFIRSRInit_64f(h.data(), taps, ippAlgAuto, reinterpret_cast<IppsFIRSpec_64f *>(spec));
    for (auto _ : state) {
        ippsFIRSR_64f(x.data(), y.data(), kSamples, reinterpret_cast<IppsFIRSpec_64f *>(spec), nullptr, nullptr, buf);
        benchmark::ClobberMemory();
    }
    ippsFree(spec);
    ippsFree(buf);
    account(state, 2 * sizeof(double));
}

template <class F>
void Fir64Ref(benchmark::State &state, F f)
{
    const int taps = int(state.range(0));
    const std::vector<double> h = inputs<double>(taps, -1, 1, 3), x = inputs<double>(kSamples, -1, 1, 1);
    std::vector<double> y(kSamples);
    for (auto _ : state) {
        f(x.data(), y.data(), kSamples, h.data(), taps);
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(double));
}
void Fir64Plain(benchmark::State &s) { Fir64Ref(s, refs::plainFir64); }
void Fir64Native(benchmark::State &s) { Fir64Ref(s, refs::nativeFir64); }

// A Butterworth low-pass of the given order.
std::vector<double> iirTaps(int order)
{
    int size = 0;
    ippsIIRGenGetBufferSize(order, &size);
    std::vector<Ipp8u> buf(size_t(size) + 1);
    std::vector<double> t(size_t(2 * order + 2));
    ippsIIRGenLowpass_64f(0.1, 0, order, t.data(), ippButterworth, buf.data());
    return t;
}

void Iir64Backend(benchmark::State &state)
{
    ippInit();
    const int order = int(state.range(0));
    const std::vector<double> t = iirTaps(order), x = inputs<double>(kSamples, -1, 1, 1);
    std::vector<double> y(kSamples);
    int size = 0;
    ippsIIRGetStateSize_64f(order, &size);
    Ipp8u *buf = ippsMalloc_8u(size);
    IppsIIRState_64f *s = nullptr;
    ippsIIRInit_64f(&s, t.data(), order, nullptr, buf);
    for (auto _ : state) {
        ippsIIR_64f(x.data(), y.data(), kSamples, s);
        benchmark::ClobberMemory();
    }
    ippsFree(buf);
    account(state, 2 * sizeof(double));
}

template <class F>
void Iir64Ref(benchmark::State &state, F f)
{
    const int order = int(state.range(0));
    const std::vector<double> t = iirTaps(order), x = inputs<double>(kSamples, -1, 1, 1);
    std::vector<double> y(kSamples), z(size_t(order), 0.0);
    for (auto _ : state) {
        f(x.data(), y.data(), kSamples, t.data(), t.data() + order + 1, z.data(), order);
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(double));
}
void Iir64Plain(benchmark::State &s) { Iir64Ref(s, refs::plainIir64); }
void Iir64Native(benchmark::State &s) { Iir64Ref(s, refs::nativeIir64); }

void Median32Backend(benchmark::State &state)
{
    ippInit();
    const int mask = int(state.range(0));
    const std::vector<float> x = inputs<float>(kSamples, -1, 1, 1);
    std::vector<float> y(kSamples);
    int size = 0;
    ippsFilterMedianGetBufferSize(mask, ipp32f, &size);
    Ipp8u *buf = ippsMalloc_8u(size);
    for (auto _ : state) {
        ippsFilterMedian_32f(x.data(), y.data(), kSamples, mask, nullptr, nullptr, buf);
        benchmark::ClobberMemory();
    }
    ippsFree(buf);
    account(state, 2 * sizeof(float));
}

template <class F>
void Median32Ref(benchmark::State &state, F f)
{
    const int mask = int(state.range(0));
    const std::vector<float> x = inputs<float>(kSamples, -1, 1, 1);
    std::vector<float> y(kSamples);
    for (auto _ : state) {
        f(x.data(), y.data(), kSamples, mask);
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(float));
}
void Median32Plain(benchmark::State &s) { Median32Ref(s, refs::plainMedian32); }
void Median32Native(benchmark::State &s) { Median32Ref(s, refs::nativeMedian32); }

#define TAPS ->Arg(16)->Arg(64)->Arg(256)
#define ORDERS ->Arg(2)->Arg(8)
#define MASKS ->Arg(3)->Arg(5)->Arg(31)->Arg(101)

BENCHMARK(Fir64Backend) TAPS;
BENCHMARK(Fir64Plain) TAPS;
BENCHMARK(Fir64Native) TAPS;
BENCHMARK(Iir64Backend) ORDERS;
BENCHMARK(Iir64Plain) ORDERS;
BENCHMARK(Iir64Native) ORDERS;
BENCHMARK(Median32Backend) MASKS;
BENCHMARK(Median32Plain) MASKS;
BENCHMARK(Median32Native) MASKS;

}  // namespace

BENCHMARK_MAIN();
