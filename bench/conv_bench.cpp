// The sliding product-sum export against its sequential loop; full
// convolution (automatic algorithm) against two transform references built
// on the same FFTW plans (overlap-save in blocks, and one transform of the
// whole); the auto-correlation at 1,000 lags against direct loops.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <complex>
#include <memory>
#include <vector>

#include "../kernels/src/fft_plan.h"
#include "common.h"
#include "conv_refs.h"
#include "host.h"
#include "ipp.h"
#include "orb/exports.h"

namespace {

using bench::inputs;
using orb_kernels::AcquirePlan;
using orb_kernels::PlanKind;
using orb_kernels::PlanPrecision;
using orb_kernels::ReleasePlan;

constexpr int kKernel = 100;

// orbConv of float[8] rtables, 100 by range(0), as a host calls it. Every
// call makes a new rtable, so the host is renewed now and then, untimed.
void SlideExport(benchmark::State &state)
{
    const std::vector<double> a = inputs<double>(kKernel, -1, 1, 1), b = inputs<double>(state.range(0), -1, 1, 2);
    std::unique_ptr<orbhost::Host> h;
    orbhost::Value *args = nullptr;
    int64_t calls = 0;
    for (auto _ : state) {
        if (calls++ % 32 == 0) {
            state.PauseTiming();
            h.reset();
            h = std::make_unique<orbhost::Host>();
            orbhost::Value ra = h->rtable1(6, kKernel, a.data()), rb = h->rtable1(6, state.range(0), b.data());
            args = reinterpret_cast<orbhost::Value *>(h->exprseq({ra, rb}));
            state.ResumeTiming();
        }
        benchmark::DoNotOptimize(orbConv(h->callbacks(), args));
    }
    state.SetItemsProcessed(state.iterations() * (state.range(0) - kKernel + 1));
}

template <void (*F)(const double *, int, const double *, int, double *)>
void Slide(benchmark::State &state)
{
    const std::vector<double> a = inputs<double>(kKernel, -1, 1, 1), b = inputs<double>(state.range(0), -1, 1, 2);
    std::vector<double> out(b.size() - a.size() + 1);
    for (auto _ : state) {
        F(a.data(), kKernel, b.data(), int(b.size()), out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * int64_t(out.size()));
}

void SlidePlain(benchmark::State &s) { Slide<refs::plainSlide64>(s); }
void SlideNative(benchmark::State &s) { Slide<refs::nativeSlide64>(s); }

// ippsConvolve_64f, automatic algorithm: range(0) by 100,000.
void ConvolveBackend(benchmark::State &state)
{
    ippInit();
    const int la = int(state.range(0)), lb = 100000;
    const std::vector<double> a = inputs<double>(la, -1, 1, 1), b = inputs<double>(lb, -1, 1, 2);
    std::vector<double> dst(static_cast<size_t>(la + lb - 1));
    int size = 0;
    ippsConvolveGetBufferSize(la, lb, ipp64f, ippAlgAuto, &size);
    Ipp8u *buf = ippsMalloc_8u(size);
    for (auto _ : state) {
        ippsConvolve_64f(a.data(), la, b.data(), lb, dst.data(), ippAlgAuto, buf);
        benchmark::ClobberMemory();
    }
    ippsFree(buf);
    state.SetItemsProcessed(state.iterations() * int64_t(dst.size()));
}

// FFTW arrays with its own alignment.
template <typename T>
struct Fftw {
    T *p;
    explicit Fftw(size_t n) : p(static_cast<T *>(fftw_malloc(n * sizeof(T)))) {}
    ~Fftw() { fftw_free(p); }
};

size_t Pow2(size_t n)
{
    size_t p = 1;
    while (p < n) p *= 2;
    return p;
}

// Overlap-save with blocks of 8 times the shorter length (a power of two),
// its spectrum computed once outside the loop.
void ConvolveOverlapSave(benchmark::State &state)
{
    const int m = int(state.range(0)), lb = 100000, len = m + lb - 1;
    const std::vector<double> a = inputs<double>(m, -1, 1, 1), b = inputs<double>(lb, -1, 1, 2);
    std::vector<double> dst(static_cast<size_t>(len));
    const int n = int(Pow2(size_t(8 * m))), step = n - m + 1;
    Fftw<double> r{size_t(n)};
    Fftw<fftw_complex> x{size_t(n / 2 + 1)}, hs{size_t(n / 2 + 1)};
    auto fwd = AcquirePlan(PlanKind::kR2C, PlanPrecision::kDouble, n, r.p, x.p);
    auto inv = AcquirePlan(PlanKind::kC2R, PlanPrecision::kDouble, n, x.p, r.p);
    std::fill(r.p, r.p + n, 0.0);
    std::copy(a.begin(), a.end(), r.p);
    fftw_execute_dft_r2c(orb_kernels::AsPlan64(fwd), r.p, hs.p);
    for (auto _ : state) {
        for (int k = 0; k < len; k += step) {
            for (int t = 0; t < n; ++t) {
                const int at = k - (m - 1) + t;
                r.p[t] = at >= 0 && at < lb ? b[size_t(at)] : 0.0;
            }
            fftw_execute_dft_r2c(orb_kernels::AsPlan64(fwd), r.p, x.p);
            for (int i = 0; i < n / 2 + 1; ++i) {
                const std::complex<double> z = std::complex<double>(x.p[i][0], x.p[i][1]) *
                                               std::complex<double>(hs.p[i][0], hs.p[i][1]) / double(n);
                x.p[i][0] = z.real(), x.p[i][1] = z.imag();
            }
            fftw_execute_dft_c2r(orb_kernels::AsPlan64(inv), x.p, r.p);
            std::copy(r.p + (m - 1), r.p + (m - 1) + std::min(step, len - k), dst.begin() + k);
        }
        benchmark::ClobberMemory();
    }
    ReleasePlan(fwd);
    ReleasePlan(inv);
    state.SetItemsProcessed(state.iterations() * int64_t(len));
}

// One transform of each whole sequence at a power of two.
void ConvolveSingleFft(benchmark::State &state)
{
    const int la = int(state.range(0)), lb = 100000, len = la + lb - 1;
    const std::vector<double> a = inputs<double>(la, -1, 1, 1), b = inputs<double>(lb, -1, 1, 2);
    std::vector<double> dst(static_cast<size_t>(len));
    const int n = int(Pow2(size_t(len)));
    Fftw<double> r{size_t(n)};
    Fftw<fftw_complex> sa{size_t(n / 2 + 1)}, sb{size_t(n / 2 + 1)};
    auto fwd = AcquirePlan(PlanKind::kR2C, PlanPrecision::kDouble, n, r.p, sa.p);
    auto inv = AcquirePlan(PlanKind::kC2R, PlanPrecision::kDouble, n, sa.p, r.p);
    for (auto _ : state) {
        std::fill(std::copy(a.begin(), a.end(), r.p), r.p + n, 0.0);
        fftw_execute_dft_r2c(orb_kernels::AsPlan64(fwd), r.p, sa.p);
        std::fill(std::copy(b.begin(), b.end(), r.p), r.p + n, 0.0);
        fftw_execute_dft_r2c(orb_kernels::AsPlan64(fwd), r.p, sb.p);
        for (int i = 0; i < n / 2 + 1; ++i) {
            const std::complex<double> z = std::complex<double>(sa.p[i][0], sa.p[i][1]) *
                                           std::complex<double>(sb.p[i][0], sb.p[i][1]) / double(n);
            sa.p[i][0] = z.real(), sa.p[i][1] = z.imag();
        }
        fftw_execute_dft_c2r(orb_kernels::AsPlan64(inv), sa.p, r.p);
        std::copy(r.p, r.p + len, dst.begin());
        benchmark::ClobberMemory();
    }
    ReleasePlan(fwd);
    ReleasePlan(inv);
    state.SetItemsProcessed(state.iterations() * int64_t(len));
}

// ippsAutoCorrNorm_64f, 1,000 lags of range(0) values.
constexpr int kLags = 1000;

void AutoCorrBackend(benchmark::State &state)
{
    ippInit();
    const int len = int(state.range(0));
    const std::vector<double> x = inputs<double>(len, -1, 1, 1);
    std::vector<double> dst(kLags);
    int size = 0;
    ippsAutoCorrNormGetBufferSize(len, kLags, ipp64f, ippAlgAuto, &size);
    Ipp8u *buf = ippsMalloc_8u(size);
    for (auto _ : state) {
        ippsAutoCorrNorm_64f(x.data(), len, dst.data(), kLags, ippAlgAuto, buf);
        benchmark::ClobberMemory();
    }
    ippsFree(buf);
    state.SetItemsProcessed(state.iterations() * kLags);
}

template <void (*F)(const double *, int, double *, int)>
void AutoCorr(benchmark::State &state)
{
    const std::vector<double> x = inputs<double>(size_t(state.range(0)), -1, 1, 1);
    std::vector<double> dst(kLags);
    for (auto _ : state) {
        F(x.data(), int(x.size()), dst.data(), kLags);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kLags);
}

void AutoCorrPlain(benchmark::State &s) { AutoCorr<refs::plainAutoCorr64>(s); }
void AutoCorrNative(benchmark::State &s) { AutoCorr<refs::nativeAutoCorr64>(s); }

BENCHMARK(SlideExport)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SlidePlain)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SlideNative)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ConvolveBackend)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ConvolveOverlapSave)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(ConvolveSingleFft)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(AutoCorrBackend)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(AutoCorrPlain)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(AutoCorrNative)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
