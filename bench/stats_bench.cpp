// Reductions against plain loops (built without and with vectorisation) and
// sorts against std::sort (the "Plain" rows), at 1,000,000 elements. Bytes
// processed count the elements read (and, for sorts, written once).
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "common.h"
#include "ipp.h"
#include "stats_refs.h"

namespace {

using bench::account;
using bench::inputs;
using bench::Memcpy64;

template <typename T, class F>
void Reduce(benchmark::State &state, int inputsRead, F f)
{
    ippInit();
    const std::vector<T> a = inputs<T>(state.range(0), -100, 100, 1), b = inputs<T>(state.range(0), -100, 100, 2);
    for (auto _ : state) {
        f(a.data(), b.data(), int(a.size()));
        benchmark::ClobberMemory();
    }
    account(state, inputsRead * sizeof(T));
}

void Sum64Backend(benchmark::State &s)
{
    Reduce<double>(s, 1, [](const double *a, const double *, int n) {
        double r;
        ippsSum_64f(a, n, &r);
        benchmark::DoNotOptimize(r);
    });
}
void Sum64Plain(benchmark::State &s)
{
    Reduce<double>(s, 1, [](const double *a, const double *, int n) { benchmark::DoNotOptimize(refs::plainSum64(a, n)); });
}
void Sum64Native(benchmark::State &s)
{
    Reduce<double>(s, 1, [](const double *a, const double *, int n) { benchmark::DoNotOptimize(refs::nativeSum64(a, n)); });
}

template <class F>
void MinMaxIndx32(benchmark::State &s, F f)
{
    Reduce<float>(s, 1, [&](const float *a, const float *, int n) {
        float lo, hi;
        int kl, kh;
        f(a, n, &lo, &kl, &hi, &kh);
        benchmark::DoNotOptimize(kl + kh);
    });
}
void MinMaxIndx32Backend(benchmark::State &s) { MinMaxIndx32(s, ippsMinMaxIndx_32f); }
void MinMaxIndx32Plain(benchmark::State &s) { MinMaxIndx32(s, refs::plainMinMaxIndx32); }
void MinMaxIndx32Native(benchmark::State &s) { MinMaxIndx32(s, refs::nativeMinMaxIndx32); }

template <class F>
void MeanStdDev64(benchmark::State &s, F f)
{
    Reduce<double>(s, 1, [&](const double *a, const double *, int n) {
        double m, d;
        f(a, n, &m, &d);
        benchmark::DoNotOptimize(m + d);
    });
}
void MeanStdDev64Backend(benchmark::State &s) { MeanStdDev64(s, ippsMeanStdDev_64f); }
void MeanStdDev64Plain(benchmark::State &s) { MeanStdDev64(s, refs::plainMeanStdDev64); }
void MeanStdDev64Native(benchmark::State &s) { MeanStdDev64(s, refs::nativeMeanStdDev64); }

void DotProd64Backend(benchmark::State &s)
{
    Reduce<double>(s, 2, [](const double *a, const double *b, int n) {
        double r;
        ippsDotProd_64f(a, b, n, &r);
        benchmark::DoNotOptimize(r);
    });
}
void DotProd64Plain(benchmark::State &s)
{
    Reduce<double>(s, 2, [](const double *a, const double *b, int n) { benchmark::DoNotOptimize(refs::plainDotProd64(a, b, n)); });
}
void DotProd64Native(benchmark::State &s)
{
    Reduce<double>(s, 2, [](const double *a, const double *b, int n) { benchmark::DoNotOptimize(refs::nativeDotProd64(a, b, n)); });
}

// Each iteration sorts a fresh copy of the same random keys; the copy is
// not timed.
template <typename T, class F>
void Sort(benchmark::State &state, F f)
{
    ippInit();
    const std::vector<T> keys = inputs<T>(state.range(0), -1e6, 1e6, 3);
    std::vector<T> work(keys.size());
    for (auto _ : state) {
        state.PauseTiming();
        std::memcpy(work.data(), keys.data(), keys.size() * sizeof(T));
        state.ResumeTiming();
        f(work.data(), int(work.size()));
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(T));
}

void Sort32fBackend(benchmark::State &s) { Sort<float>(s, ippsSortAscend_32f_I); }
void Sort32fPlain(benchmark::State &s) { Sort<float>(s, refs::plainSort32f); }
void Sort32sBackend(benchmark::State &s) { Sort<int32_t>(s, ippsSortAscend_32s_I); }
void Sort32sPlain(benchmark::State &s) { Sort<int32_t>(s, refs::plainSort32s); }
void Sort64fBackend(benchmark::State &s) { Sort<double>(s, ippsSortAscend_64f_I); }
void Sort64fPlain(benchmark::State &s) { Sort<double>(s, refs::plainSort64f); }
void Sort16sBackend(benchmark::State &s) { Sort<int16_t>(s, ippsSortAscend_16s_I); }
void Sort16sPlain(benchmark::State &s) { Sort<int16_t>(s, refs::plainSort16s); }
void Sort8uBackend(benchmark::State &s) { Sort<uint8_t>(s, ippsSortAscend_8u_I); }
void Sort8uPlain(benchmark::State &s) { Sort<uint8_t>(s, refs::plainSort8u); }

#define SIZES ->Arg(1000000)

BENCHMARK(Memcpy64) SIZES;
BENCHMARK(Sum64Backend) SIZES;
BENCHMARK(Sum64Plain) SIZES;
BENCHMARK(Sum64Native) SIZES;
BENCHMARK(MinMaxIndx32Backend) SIZES;
BENCHMARK(MinMaxIndx32Plain) SIZES;
BENCHMARK(MinMaxIndx32Native) SIZES;
BENCHMARK(MeanStdDev64Backend) SIZES;
BENCHMARK(MeanStdDev64Plain) SIZES;
BENCHMARK(MeanStdDev64Native) SIZES;
BENCHMARK(DotProd64Backend)->Arg(10000)->Arg(100000) SIZES;
BENCHMARK(DotProd64Plain)->Arg(10000)->Arg(100000) SIZES;
BENCHMARK(DotProd64Native)->Arg(10000)->Arg(100000) SIZES;
BENCHMARK(Sort32fBackend) SIZES;
BENCHMARK(Sort32fPlain) SIZES;
BENCHMARK(Sort32sBackend) SIZES;
BENCHMARK(Sort32sPlain) SIZES;
BENCHMARK(Sort64fBackend) SIZES;
BENCHMARK(Sort64fPlain) SIZES;
BENCHMARK(Sort16sBackend) SIZES;
BENCHMARK(Sort16sPlain) SIZES;
BENCHMARK(Sort8uBackend) SIZES;
BENCHMARK(Sort8uPlain) SIZES;

}  // namespace

BENCHMARK_MAIN();
