// Transforms as a caller pays for them: the export through the stand-in host
// (Export), the backend's whole size / allocate / initialise / transform /
// free sequence (Backend), and FFTW executing a plan measured once (Native,
// transform_refs.h). Backend and export rows run first, so their plans are
// made without the reference's planning having happened in the process.
#include <benchmark/benchmark.h>

#include <vector>

#include "common.h"
#include "host.h"
#include "ipp.h"
#include "orb/exports.h"
#include "transform_refs.h"

namespace {

using bench::inputs;

void account(benchmark::State &state, int64_t bytesPerElement)
{
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * state.range(0) * bytesPerElement);
}

int orderOf(int64_t n)
{
    int k = 0;
    while ((int64_t(1) << k) < n) ++k;
    return k;
}

// Calls an export over and over with the same ready argument sequence.
void Export(benchmark::State &state, orbhost::ExportFn fn, int32_t datatype, bool hint, int64_t bytesPerElement)
{
    orbhost::Host h;
    const int64_t n = state.range(0);
    std::vector<double> src = inputs<double>(size_t(n) * (datatype == 7 ? 2 : 1), -1, 1);
    std::vector<orbhost::Value> call = {h.rtable1(datatype, n), h.rtable1(datatype, n, src.data())};
    if (hint) call.push_back(h.name("none"));
    orbhost::Value *args = reinterpret_cast<orbhost::Value *>(h.exprseq(call));
    orbhost::CallResult r = h.call(fn, call);
    if (r.raised) state.SkipWithError(r.error.c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(fn(h.callbacks(), args));
        benchmark::ClobberMemory();
    }
    account(state, bytesPerElement);
}

void FFT64cExport(benchmark::State &s) { Export(s, orbFwdFFT, 7, false, 32); }
void DFT64cExport(benchmark::State &s) { Export(s, orbFwdDFT, 7, false, 32); }
void DCT2Export(benchmark::State &s) { Export(s, orbFwdDCT, 6, true, 16); }

// The backend's sequence for one forward FFT or DFT of interleaved doubles.
template <bool kFFT>
void Fourier64cBackend(benchmark::State &state)
{
    ippInit();
    const int n = int(state.range(0)), size = kFFT ? orderOf(n) : n;
    std::vector<double> src = inputs<double>(2 * size_t(n), -1, 1), dst(2 * size_t(n));
    const Ipp64fc *in = reinterpret_cast<const Ipp64fc *>(src.data());
    Ipp64fc *out = reinterpret_cast<Ipp64fc *>(dst.data());
    for (auto _ : state) {
        int specSize = 0, initSize = 0, workSize = 0;
        IppStatus st = kFFT ? ippsFFTGetSize_C_64fc(size, IPP_FFT_NODIV_BY_ANY, ippAlgHintNone, &specSize, &initSize, &workSize)
                            : ippsDFTGetSize_C_64fc(size, IPP_FFT_NODIV_BY_ANY, ippAlgHintNone, &specSize, &initSize, &workSize);
        Ipp8u *spec = specSize > 0 ? ippsMalloc_8u(specSize) : nullptr;
        Ipp8u *init = initSize > 0 ? ippsMalloc_8u(initSize) : nullptr;
        Ipp8u *work = workSize > 0 ? ippsMalloc_8u(workSize) : nullptr;
        if (kFFT) {
            IppsFFTSpec_C_64fc *f = nullptr;
            st |= ippsFFTInit_C_64fc(&f, size, IPP_FFT_NODIV_BY_ANY, ippAlgHintNone, spec, init);
            ippsFree(init);
            st |= ippsFFTFwd_CToC_64fc(in, out, f, work);
        } else {
            st |= ippsDFTInit_C_64fc(size, IPP_FFT_NODIV_BY_ANY, ippAlgHintNone, (IppsDFTSpec_C_64fc *)spec, init);
            ippsFree(init);
            st |= ippsDFTFwd_CToC_64fc(in, out, (const IppsDFTSpec_C_64fc *)spec, work);
        }
        ippsFree(spec);
        ippsFree(work);
        if (st) state.SkipWithError("backend status");
        benchmark::ClobberMemory();
    }
    account(state, 32);
}

void FFT64cBackend(benchmark::State &s) { Fourier64cBackend<true>(s); }
void DFT64cBackend(benchmark::State &s) { Fourier64cBackend<false>(s); }

void DCT2Backend(benchmark::State &state)
{
    ippInit();
    const int n = int(state.range(0));
    std::vector<double> src = inputs<double>(size_t(n), -1, 1), dst(static_cast<size_t>(n));
    for (auto _ : state) {
        int specSize = 0, initSize = 0, workSize = 0;
        IppStatus st = ippsDCTFwdGetSize_64f(n, ippAlgHintNone, &specSize, &initSize, &workSize);
        Ipp8u *spec = specSize > 0 ? ippsMalloc_8u(specSize) : nullptr;
        Ipp8u *init = initSize > 0 ? ippsMalloc_8u(initSize) : nullptr;
        IppsDCTFwdSpec_64f *d = nullptr;
        st |= ippsDCTFwdInit_64f(&d, n, ippAlgHintNone, spec, init);
        ippsFree(init);
        Ipp8u *work = workSize > 0 ? ippsMalloc_8u(workSize) : nullptr;
        st |= ippsDCTFwd_64f(src.data(), dst.data(), d, work);
        ippsFree(spec);
        ippsFree(work);
        if (st) state.SkipWithError("backend status");
        benchmark::ClobberMemory();
    }
    account(state, 16);
}

// FFTW's measured plan, made once outside the timing.
void Fourier64cNative(benchmark::State &state)
{
    const int n = int(state.range(0));
    std::vector<double> src = inputs<double>(2 * size_t(n), -1, 1), dst(2 * size_t(n)), keep = src;
    void *plan = refs::nativeMeasuredDFT64c(n, src.data(), dst.data());
    src = keep;  // measuring wrote over the input
    for (auto _ : state) {
        refs::nativeExecuteDFT64c(plan, src.data(), dst.data());
        benchmark::ClobberMemory();
    }
    refs::nativeDestroy(plan);
    account(state, 32);
}

void FFT64cNative(benchmark::State &s) { Fourier64cNative(s); }
void DFT64cNative(benchmark::State &s) { Fourier64cNative(s); }

void DCT2Native(benchmark::State &state)
{
    const int n = int(state.range(0));
    std::vector<double> src = inputs<double>(size_t(n), -1, 1), dst(static_cast<size_t>(n)), keep = src;
    void *plan = refs::nativeMeasuredDCT2(n, src.data(), dst.data());
    src = keep;
    for (auto _ : state) {
        refs::nativeExecuteR2R(plan, src.data(), dst.data());
        benchmark::ClobberMemory();
    }
    refs::nativeDestroy(plan);
    account(state, 16);
}

#define FFT_SIZES ->Arg(64)->Arg(1024)->Arg(65536)->Arg(1048576)
#define DFT_SIZES ->Arg(1000)->Arg(4099)
#define DCT_SIZES ->Arg(1024)->Arg(65536)

BENCHMARK(FFT64cBackend) FFT_SIZES;
BENCHMARK(FFT64cExport) FFT_SIZES;
BENCHMARK(DFT64cBackend) DFT_SIZES;
BENCHMARK(DFT64cExport) DFT_SIZES;
BENCHMARK(DCT2Backend) DCT_SIZES;
BENCHMARK(DCT2Export) DCT_SIZES;
BENCHMARK(FFT64cNative) FFT_SIZES;
BENCHMARK(DFT64cNative) DFT_SIZES;
BENCHMARK(DCT2Native) DCT_SIZES;

}  // namespace

BENCHMARK_MAIN();
