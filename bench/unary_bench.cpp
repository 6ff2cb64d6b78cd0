// Unary kernels against plain loops and memcpy, and the cost of the export
// frame around them.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "common.h"
#include "host.h"
#include "ipp.h"
#include "orb/exports.h"
#include "refs.h"

namespace {

using bench::account;
using bench::inputs;
using bench::Memcpy64;

template <typename T, IppStatus (*F)(const T *, T *, int)>
void Backend(benchmark::State &state, double lo, double hi)
{
    ippInit();
    std::vector<T> src = inputs<T>(state.range(0), lo, hi), dst(state.range(0));
    for (auto _ : state) {
        F(src.data(), dst.data(), (int)src.size());
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(T));
}

template <typename T, void (*F)(const T *, T *, int)>
void Reference(benchmark::State &state, double lo, double hi)
{
    std::vector<T> src = inputs<T>(state.range(0), lo, hi), dst(state.range(0));
    for (auto _ : state) {
        F(src.data(), dst.data(), (int)src.size());
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(T));
}

// orbAbs on the same data as AbsBackend, called as a host calls it: with the
// callback table and a ready argument sequence. What it adds to the kernel is
// the frame: counting, checking and reading the arguments.
void AbsExport(benchmark::State &state)
{
    orbhost::Host h;
    std::vector<double> src = inputs<double>(state.range(0), -1, 1);
    orbhost::Value in = h.rtable1(6, state.range(0), src.data());
    orbhost::Value out = h.rtable1(6, state.range(0));
    orbhost::Value *args = reinterpret_cast<orbhost::Value *>(h.exprseq({out, in}));
    orbhost::CallResult r = h.call(orbAbs, {out, in});
    if (r.raised)
        state.SkipWithError(r.error.c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(orbAbs(h.callbacks(), args));
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(double));
}

#define SIZES ->Arg(1000)->Arg(100000)->Arg(10000000)

void AbsBackend(benchmark::State &s) { Backend<double, ippsAbs_64f>(s, -1, 1); }
void AbsPlain(benchmark::State &s) { Reference<double, refs::plainAbs64>(s, -1, 1); }
void AbsNative(benchmark::State &s) { Reference<double, refs::nativeAbs64>(s, -1, 1); }
void Exp64Backend(benchmark::State &s) { Backend<double, ippsExp_64f>(s, -20, 20); }
void Exp64Plain(benchmark::State &s) { Reference<double, refs::plainExp64>(s, -20, 20); }
void Exp64Native(benchmark::State &s) { Reference<double, refs::nativeExp64>(s, -20, 20); }
void Exp32Backend(benchmark::State &s) { Backend<float, ippsExp_32f>(s, -20, 20); }
void Exp32Plain(benchmark::State &s) { Reference<float, refs::plainExp32>(s, -20, 20); }
void Exp32Native(benchmark::State &s) { Reference<float, refs::nativeExp32>(s, -20, 20); }

BENCHMARK(Memcpy64) SIZES;
BENCHMARK(AbsBackend) SIZES;
BENCHMARK(AbsPlain) SIZES;
BENCHMARK(AbsNative) SIZES;
BENCHMARK(AbsExport) SIZES;
BENCHMARK(Exp64Backend) SIZES;
BENCHMARK(Exp64Plain) SIZES;
BENCHMARK(Exp64Native) SIZES;
BENCHMARK(Exp32Backend) SIZES;
BENCHMARK(Exp32Plain) SIZES;
BENCHMARK(Exp32Native) SIZES;

}  // namespace

BENCHMARK_MAIN();
