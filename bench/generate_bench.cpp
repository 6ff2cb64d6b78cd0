// Noise generators against std::mt19937 with the standard distributions,
// and windows against plain loops and memcpy of the same bytes. Noise counts
// the bytes written, windows the bytes read and written.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "common.h"
#include "generate_refs.h"
#include "ipp.h"

namespace {

using bench::account;
using bench::inputs;
using bench::Memcpy64;

// Copying the same number of floats: the yardstick of the float window.
void Memcpy32(benchmark::State &state)
{
    std::vector<float> src = inputs<float>(state.range(0), -1, 1), dst(state.range(0));
    for (auto _ : state) {
        std::memcpy(dst.data(), src.data(), src.size() * sizeof(float));
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(float));
}

template <typename T, class F>
void Noise(benchmark::State &state, F f)
{
    ippInit();
    std::vector<T> dst(state.range(0));
    for (auto _ : state) {
        f(dst.data(), int(dst.size()));
        benchmark::ClobberMemory();
    }
    account(state, sizeof(T));
}

// The backend's state is made once; each iteration draws on from it.
void Uniform32Backend(benchmark::State &s)
{
    int size = 0;
    ippsRandUniformGetSize_32f(&size);
    std::vector<Ipp8u> st(size);
    auto *state = reinterpret_cast<IppsRandUniState_32f *>(st.data());
    ippsRandUniformInit_32f(state, -1, 1, 42);
    Noise<float>(s, [&](float *d, int n) { ippsRandUniform_32f(d, n, state); });
}
void Uniform32Plain(benchmark::State &s) { Noise<float>(s, [](float *d, int n) { refs::plainUniform32(d, n, -1, 1); }); }
void Uniform32Native(benchmark::State &s) { Noise<float>(s, [](float *d, int n) { refs::nativeUniform32(d, n, -1, 1); }); }

void Gauss64Backend(benchmark::State &s)
{
    int size = 0;
    ippsRandGaussGetSize_64f(&size);
    std::vector<Ipp8u> st(size);
    auto *state = reinterpret_cast<IppsRandGaussState_64f *>(st.data());
    ippsRandGaussInit_64f(state, 0, 1, 42);
    Noise<double>(s, [&](double *d, int n) { ippsRandGauss_64f(d, n, state); });
}
void Gauss64Plain(benchmark::State &s) { Noise<double>(s, [](double *d, int n) { refs::plainGauss64(d, n, 0, 1); }); }
void Gauss64Native(benchmark::State &s) { Noise<double>(s, [](double *d, int n) { refs::nativeGauss64(d, n, 0, 1); }); }

template <typename T, class F>
void Window(benchmark::State &state, F f)
{
    ippInit();
    const std::vector<T> src = inputs<T>(state.range(0), -100, 100, 1);
    std::vector<T> dst(state.range(0));
    for (auto _ : state) {
        f(src.data(), dst.data(), int(dst.size()));
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(T));
}

void Hann64Backend(benchmark::State &s) { Window<double>(s, ippsWinHann_64f); }
void Hann64Plain(benchmark::State &s) { Window<double>(s, refs::plainHann64); }
void Hann64Native(benchmark::State &s) { Window<double>(s, refs::nativeHann64); }
// Kaiser's alpha (N - 1) / 2 = 5 at every length: the usual shape, between
// a Hamming and a Blackman window.
float KaiserAlpha(int n) { return 10.0f / float(n - 1); }
void Kaiser32Backend(benchmark::State &s)
{
    Window<float>(s, [](const float *a, float *b, int n) { ippsWinKaiser_32f(a, b, n, KaiserAlpha(n)); });
}
void Kaiser32Plain(benchmark::State &s)
{
    Window<float>(s, [](const float *a, float *b, int n) { refs::plainKaiser32(a, b, n, KaiserAlpha(n)); });
}
void Kaiser32Native(benchmark::State &s)
{
    Window<float>(s, [](const float *a, float *b, int n) { refs::nativeKaiser32(a, b, n, KaiserAlpha(n)); });
}

#define SIZES ->Arg(1000)->Arg(1000000)

BENCHMARK(Uniform32Backend)->Arg(1000000);
BENCHMARK(Uniform32Plain)->Arg(1000000);
BENCHMARK(Uniform32Native)->Arg(1000000);
BENCHMARK(Gauss64Backend)->Arg(1000000);
BENCHMARK(Gauss64Plain)->Arg(1000000);
BENCHMARK(Gauss64Native)->Arg(1000000);
BENCHMARK(Memcpy64) SIZES;
BENCHMARK(Hann64Backend) SIZES;
BENCHMARK(Hann64Plain) SIZES;
BENCHMARK(Hann64Native) SIZES;
BENCHMARK(Memcpy32) SIZES;
BENCHMARK(Kaiser32Backend) SIZES;
BENCHMARK(Kaiser32Plain) SIZES;
BENCHMARK(Kaiser32Native) SIZES;

}  // namespace

BENCHMARK_MAIN();
