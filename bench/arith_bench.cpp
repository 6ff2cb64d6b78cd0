// Arithmetic, complex and logic kernels against the same plain loops built
// with and without vectorisation, and against memcpy. Bytes processed count
// everything read and written.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "arith_refs.h"
#include "common.h"
#include "ipp.h"

namespace {

using bench::account;
using bench::inputs;
using bench::Memcpy64;

// dst = f(a, b) over vectors of T: 3 sizeof(T) bytes per element.
template <typename T, class F>
void Binary(benchmark::State &state, F f)
{
    ippInit();
    const std::vector<T> a = inputs<T>(state.range(0), -100, 100, 1), b = inputs<T>(state.range(0), -100, 100, 2);
    std::vector<T> dst(state.range(0));
    for (auto _ : state) {
        f(a.data(), b.data(), dst.data(), int(dst.size()));
        benchmark::ClobberMemory();
    }
    account(state, 3 * sizeof(T));
}

template <class F>
void MulC32(benchmark::State &state, F f)
{
    ippInit();
    const std::vector<float> a = inputs<float>(state.range(0), -100, 100, 1);
    std::vector<float> dst(state.range(0));
    for (auto _ : state) {
        f(a.data(), 1.0001f, dst.data(), int(dst.size()));
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(float));
}

// Interleaved complex in, real out: 16 + 8 bytes per element.
template <class F>
void Magnitude64c(benchmark::State &state, F f)
{
    ippInit();
    const std::vector<double> z = inputs<double>(2 * state.range(0), -100, 100, 1);
    std::vector<double> dst(state.range(0));
    for (auto _ : state) {
        f(z.data(), dst.data(), int(dst.size()));
        benchmark::ClobberMemory();
    }
    account(state, 3 * sizeof(double));
}

void Add64Backend(benchmark::State &s) { Binary<double>(s, ippsAdd_64f); }
void Add64Plain(benchmark::State &s) { Binary<double>(s, refs::plainAdd64); }
void Add64Native(benchmark::State &s) { Binary<double>(s, refs::nativeAdd64); }
void MulC32Backend(benchmark::State &s) { MulC32(s, ippsMulC_32f); }
void MulC32Plain(benchmark::State &s) { MulC32(s, refs::plainMulC32); }
void MulC32Native(benchmark::State &s) { MulC32(s, refs::nativeMulC32); }
void Magnitude64cBackend(benchmark::State &s)
{
    Magnitude64c(s, [](const double *z, double *o, int n) {
        return ippsMagnitude_64fc(reinterpret_cast<const Ipp64fc *>(z), o, n);
    });
}
void Magnitude64cPlain(benchmark::State &s) { Magnitude64c(s, refs::plainMagnitude64c); }
void Magnitude64cNative(benchmark::State &s) { Magnitude64c(s, refs::nativeMagnitude64c); }
void Xor32Backend(benchmark::State &s) { Binary<uint32_t>(s, ippsXor_32u); }
void Xor32Plain(benchmark::State &s) { Binary<uint32_t>(s, refs::plainXor32); }
void Xor32Native(benchmark::State &s) { Binary<uint32_t>(s, refs::nativeXor32); }

#define SIZES ->Arg(1000)->Arg(100000)->Arg(10000000)

BENCHMARK(Memcpy64) SIZES;
BENCHMARK(Add64Backend) SIZES;
BENCHMARK(Add64Plain) SIZES;
BENCHMARK(Add64Native) SIZES;
BENCHMARK(MulC32Backend) SIZES;
BENCHMARK(MulC32Plain) SIZES;
BENCHMARK(MulC32Native) SIZES;
BENCHMARK(Magnitude64cBackend) SIZES;
BENCHMARK(Magnitude64cPlain) SIZES;
BENCHMARK(Magnitude64cNative) SIZES;
BENCHMARK(Xor32Backend) SIZES;
BENCHMARK(Xor32Plain) SIZES;
BENCHMARK(Xor32Native) SIZES;

}  // namespace

BENCHMARK_MAIN();
