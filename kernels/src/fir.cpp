/* FIR filtering: ippsFIRSR (single rate, 64f), window-method design
 * (ippsFIRGenLowpass/Highpass/Bandpass/Bandstop_64f) and the adaptive LMS
 * filter (ippsFIRLMS_32f), with their size queries and initialisers.
 *
 * FIRSR computes y[n] = sum_k h[k] x[n - k] over tapsLen taps. The samples
 * before the first, x[-tapsLen+1] .. x[-1], are pDlySrc in that order (zeros
 * when it is null); pDlyDst, when given, receives the last tapsLen - 1
 * source samples in the same order, so that a following call continues the
 * signal. Short filters run in direct form, vectorised across outputs; long
 * ones by overlap-save with FFTW (plans from the backend's cache), the taps'
 * spectrum kept in the set-up structure. Both read the source through a staging
 * block in the work buffer, so pDst may be pSrc.
 *
 * Design: the ideal response's coefficients, centred on (tapsLen - 1) / 2,
 * times the window; with doNormal the taps are scaled to unit gain at DC
 * (low-pass, band-stop), at the Nyquist frequency (high-pass; for an even
 * length, whose response vanishes there, at the middle of the pass band)
 * or at the band's centre (band-pass).
 *
 * LMS: for each sample, y = sum_k h[k] x[n - k], then
 * h[k] += 2 mu (ref[n] - y) x[n - k]. The delay line is 2 * tapsLen values,
 * each sample stored twice (at i and i + tapsLen) so that the last tapsLen
 * samples are always contiguous: before sample n they are at
 * dly[index .. index + tapsLen), newest first, with x[n] written at index.
 * An initial line thus gives x[-k] = dly[dlyIndex + k] for 1 <= k < tapsLen.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fir.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <math.h>
#include <stdint.h>
#include <string.h>

#include "entry.h"
#include "fft_plan.h"
#include "ipps.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
namespace {

/* out[i] = sum_j r[j] * s[i + j] for i < count, j < len: the direct form
 * over a staged block, r the taps reversed. Four vectors of outputs at a
 * time keep four independent chains of multiply-adds in flight. */
void DirectBlock_64f(const double *s, const double *r, size_t len, double *out, size_t count)
{
    const hn::ScalableTag<double> d;
    const size_t N = hn::Lanes(d);
    size_t i = 0;
    for (; i + 4 * N <= count; i += 4 * N) {
        auto a0 = hn::Zero(d), a1 = hn::Zero(d), a2 = hn::Zero(d), a3 = hn::Zero(d);
        const double *p = s + i;
        for (size_t j = 0; j < len; ++j) {
            const auto h = hn::Set(d, r[j]);
            a0 = hn::MulAdd(h, hn::LoadU(d, p + j), a0);
            a1 = hn::MulAdd(h, hn::LoadU(d, p + j + N), a1);
            a2 = hn::MulAdd(h, hn::LoadU(d, p + j + 2 * N), a2);
            a3 = hn::MulAdd(h, hn::LoadU(d, p + j + 3 * N), a3);
        }
        hn::StoreU(a0, d, out + i);
        hn::StoreU(a1, d, out + i + N);
        hn::StoreU(a2, d, out + i + 2 * N);
        hn::StoreU(a3, d, out + i + 3 * N);
    }
    for (; i + N <= count; i += N) {
        auto a = hn::Zero(d);
        for (size_t j = 0; j < len; ++j) a = hn::MulAdd(hn::Set(d, r[j]), hn::LoadU(d, s + i + j), a);
        hn::StoreU(a, d, out + i);
    }
    for (; i < count; ++i) {
        double a = 0;
        for (size_t j = 0; j < len; ++j) a = fma(r[j], s[i + j], a);
        out[i] = a;
    }
}

/* z[i] *= w[i] over n complex values (interleaved). */
void MulSpectrum_64f(double *z, const double *w, size_t n)
{
    const hn::ScalableTag<double> d;
    const size_t N = hn::Lanes(d);
    size_t i = 0;
    for (; i + N <= n; i += N) {
        hn::Vec<decltype(d)> zr, zi, wr, wi;
        hn::LoadInterleaved2(d, z + 2 * i, zr, zi);
        hn::LoadInterleaved2(d, w + 2 * i, wr, wi);
        const auto re = hn::MulSub(zr, wr, hn::Mul(zi, wi));
        const auto im = hn::MulAdd(zr, wi, hn::Mul(zi, wr));
        hn::StoreInterleaved2(re, im, d, z + 2 * i);
    }
    for (; i < n; ++i) {
        const double a = z[2 * i], b = z[2 * i + 1], c = w[2 * i], e = w[2 * i + 1];
        z[2 * i] = a * c - b * e;
        z[2 * i + 1] = a * e + b * c;
    }
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {

HWY_EXPORT(DirectBlock_64f);
HWY_EXPORT(MulSpectrum_64f);

namespace {

constexpr size_t kAlign = 64;
constexpr size_t Up(size_t bytes) { return (bytes + kAlign - 1) / kAlign * kAlign; }
template <typename T>
T *At(void *base, size_t offset) { return reinterpret_cast<T *>(static_cast<char *>(base) + offset); }

/* ---- Single-rate FIR ---- */

constexpr uint32_t kFirMagic = 0x46495253;  // "FIRS"
/* Outputs per staged block of the direct form. */
constexpr size_t kDirectBlock = 2048;
/* From this many taps ippAlgAuto filters by overlap-save. Measured over a
 * million samples (AVX-512): the direct form costs about 0.04 ms per tap,
 * the transforms about 3 ms whatever the length; they meet near 64 taps. */
constexpr int kFftFromTaps = 64;
constexpr int kMaxFftTaps = 1 << 20;

/* Transform length for tapsLen taps: the power of two at least sixteen
 * times as long (measured: eight times costs a fifth more at 64 taps,
 * thirty-two times a third more at 256), so each transform yields at least
 * fifteen sixteenths of its length; from 2^20 on only twice as long, which
 * keeps the work arrays of the longest filters within tens of megabytes. */
int FftLength(int taps)
{
    int n = 64;
    while (n < 16 * taps && n < (1 << 20)) n *= 2;
    while (n < 2 * taps) n *= 2;
    return n;
}

struct FirSpec {
    uint32_t magic;
    int taps;
    int fft;         // transform length, 0 when the spec runs the direct form
    int fftCapable;  // the spec has room for a spectrum
    size_t reversed; // offsets from the spec of the reversed taps
    size_t spectrum; // and of the taps' spectrum, scaled by 1 / fft
};

struct FirLayout {
    size_t spec, reversed, spectrum;  // spec layout
    size_t buf;                       // work buffer bytes
};

bool FirLayoutOf(int taps, FirLayout *l)
{
    const size_t t = size_t(taps);
    l->reversed = Up(sizeof(FirSpec));
    l->spectrum = l->reversed + Up(t * sizeof(double));
    l->spec = l->spectrum;
    const size_t direct = Up((kDirectBlock + t) * sizeof(double)) + Up(t * sizeof(double));
    size_t fft = 0;
    if (taps <= kMaxFftTaps) {
        const size_t n = size_t(FftLength(taps));
        l->spec += Up((n + 2) * sizeof(double));
        // real block, spectrum, real result, history
        fft = Up(n * sizeof(double)) + Up((n + 2) * sizeof(double)) + Up(n * sizeof(double)) +
              Up(t * sizeof(double));
    }
    l->buf = (direct > fft ? direct : fft) + kAlign;
    return l->spec + kAlign <= size_t(INT32_MAX) && l->buf <= size_t(INT32_MAX);
}

IppStatus FIRSRGetSize(int tapsLen, IppDataType tapsType, int *pSpecSize, int *pBufSize)
{
    if (!pSpecSize || !pBufSize) return ippStsNullPtrErr;
    if (tapsLen < 1) return ippStsSizeErr;
    if (tapsType != ipp64f) return ippStsDataTypeErr;
    FirLayout l;
    if (!FirLayoutOf(tapsLen, &l)) return ippStsSizeErr;
    *pSpecSize = int(l.spec + kAlign);
    *pBufSize = int(l.buf);
    return ippStsNoErr;
}

/* The spec inside the caller's block, aligned up. */
FirSpec *FirSpecIn(void *p)
{
    const uintptr_t a = (reinterpret_cast<uintptr_t>(p) + kAlign - 1) / kAlign * kAlign;
    return reinterpret_cast<FirSpec *>(a);
}

IppStatus FIRSRInit(const double *taps, int tapsLen, IppAlgType alg, IppsFIRSpec_64f *pSpec)
{
    if (!taps || !pSpec) return ippStsNullPtrErr;
    if (tapsLen < 1) return ippStsSizeErr;
    if (alg != ippAlgAuto && alg != ippAlgDirect && alg != ippAlgFFT) return ippStsAlgTypeErr;
    FirLayout l;
    if (!FirLayoutOf(tapsLen, &l)) return ippStsSizeErr;
    FirSpec *s = FirSpecIn(pSpec);
    s->magic = 0;
    s->taps = tapsLen;
    s->reversed = l.reversed;
    s->spectrum = l.spectrum;
    s->fftCapable = tapsLen <= kMaxFftTaps;
    double *r = At<double>(s, l.reversed);
    for (int j = 0; j < tapsLen; ++j) r[j] = taps[tapsLen - 1 - j];
    const bool fft = s->fftCapable && (alg == ippAlgFFT || (alg == ippAlgAuto && tapsLen >= kFftFromTaps));
    s->fft = 0;
    if (fft) {
        const int n = FftLength(tapsLen);
        double *w = At<double>(s, l.spectrum);
        for (int j = 0; j < n + 2; ++j) w[j] = j < tapsLen ? taps[j] / n : 0.0;
        const Lease lease = AcquirePlan(PlanKind::kR2C, PlanPrecision::kDouble, n, w, w);
        if (!lease.plan) return ippStsMemAllocErr;
        fftw_execute_dft_r2c(AsPlan64(lease), w, reinterpret_cast<fftw_complex *>(w));
        ReleasePlan(lease);
        s->fft = n;
    }
    s->magic = kFirMagic;
    return ippStsNoErr;
}

IppStatus FIRSR(const double *src, double *dst, int numIters, IppsFIRSpec_64f *pSpec, const double *dlySrc,
                double *dlyDst, Ipp8u *pBuf)
{
    if (!src || !dst || !pSpec || !pBuf) return ippStsNullPtrErr;
    if (numIters < 1) return ippStsSizeErr;
    FirSpec *s = FirSpecIn(pSpec);
    if (s->magic != kFirMagic) return ippStsContextMatchErr;
    const size_t t = size_t(s->taps), hist = t - 1, total = size_t(numIters);
    void *buf = FirSpecIn(pBuf);
    const double *r = At<double>(s, s->reversed);

    if (s->fft == 0) {
        // stage = [history | block]; the history is the tapsLen - 1 samples
        // before the block.
        double *stage = At<double>(buf, 0);
        double *save = At<double>(buf, Up((kDirectBlock + t) * sizeof(double)));
        if (hist) {
            if (dlySrc) memcpy(stage, dlySrc, hist * sizeof(double));
            else memset(stage, 0, hist * sizeof(double));
        }
        for (size_t at = 0; at < total; at += kDirectBlock) {
            const size_t c = total - at < kDirectBlock ? total - at : kDirectBlock;
            memcpy(stage + hist, src + at, c * sizeof(double));
            memcpy(save, stage + c, hist * sizeof(double));
            HWY_DYNAMIC_DISPATCH(DirectBlock_64f)(stage, r, t, dst + at, c);
            memcpy(stage, save, hist * sizeof(double));
        }
        if (dlyDst && hist) memcpy(dlyDst, stage, hist * sizeof(double));
        return ippStsNoErr;
    }

    // Overlap-save: each transform of n samples (history, then b new ones)
    // gives b outputs after its first tapsLen - 1.
    const size_t n = size_t(s->fft), b = n - hist;
    double *in = At<double>(buf, 0);
    double *spec = At<double>(buf, Up(n * sizeof(double)));
    double *out = At<double>(buf, Up(n * sizeof(double)) + Up((n + 2) * sizeof(double)));
    double *save = At<double>(buf, 2 * Up(n * sizeof(double)) + Up((n + 2) * sizeof(double)));
    const double *w = At<double>(s, s->spectrum);
    const Lease fwd = AcquirePlan(PlanKind::kR2C, PlanPrecision::kDouble, int(n), in, spec);
    if (!fwd.plan) return ippStsMemAllocErr;
    const Lease inv = AcquirePlan(PlanKind::kC2R, PlanPrecision::kDouble, int(n), spec, out);
    if (!inv.plan) {
        ReleasePlan(fwd);
        return ippStsMemAllocErr;
    }
    if (dlySrc) memcpy(save, dlySrc, hist * sizeof(double));
    else memset(save, 0, hist * sizeof(double));
    for (size_t at = 0; at < total; at += b) {
        const size_t c = total - at < b ? total - at : b;
        memcpy(in, save, hist * sizeof(double));
        memcpy(in + hist, src + at, c * sizeof(double));
        if (c < b) memset(in + hist + c, 0, (b - c) * sizeof(double));
        memcpy(save, in + c, hist * sizeof(double));
        fftw_execute_dft_r2c(AsPlan64(fwd), in, reinterpret_cast<fftw_complex *>(spec));
        HWY_DYNAMIC_DISPATCH(MulSpectrum_64f)(spec, w, n / 2 + 1);
        fftw_execute_dft_c2r(AsPlan64(inv), reinterpret_cast<fftw_complex *>(spec), out);
        memcpy(dst + at, out + hist, c * sizeof(double));
    }
    ReleasePlan(fwd);
    ReleasePlan(inv);
    if (dlyDst && hist) memcpy(dlyDst, save, hist * sizeof(double));
    return ippStsNoErr;
}

/* ---- Window-method design ---- */

enum class Band { kLow, kHigh, kPass, kStop };

/* The window's value at i of len (len >= 2), as the window functions
 * define them over i = 0 .. len - 1. */
double WindowAt(IppWinType type, int i, int len)
{
    const double m = len - 1, x = i / m, pi = M_PI;
    switch (type) {
    case ippWinBartlett: return x <= 0.5 ? 2 * x : 2 - 2 * x;
    case ippWinBlackman: return 0.42 - 0.5 * cos(2 * pi * x) + 0.08 * cos(4 * pi * x);
    case ippWinHamming: return 0.54 - 0.46 * cos(2 * pi * x);
    case ippWinHann: return 0.5 - 0.5 * cos(2 * pi * x);
    case ippWinRect: break;
    }
    return 1;
}

/* The ideal low-pass of cut-off f at offset t from the centre: 2f sinc(2ft). */
double IdealLow(double f, double t)
{
    if (t == 0) return 2 * f;
    return sin(2 * M_PI * f * t) / (M_PI * t);
}

/* |sum h[i] e^{-2 pi i f}|. */
double GainAt(const double *h, int len, double f)
{
    double re = 0, im = 0;
    for (int i = 0; i < len; ++i) {
        re += h[i] * cos(2 * M_PI * f * i);
        im -= h[i] * sin(2 * M_PI * f * i);
    }
    return hypot(re, im);
}

bool ValidFreq(double f) { return f > 0 && f < 0.5; }

IppStatus FIRGen(Band band, double lo, double hi, double *taps, int len, IppWinType win, IppBool normal,
                 Ipp8u *buffer)
{
    if (!taps || !buffer) return ippStsNullPtrErr;
    if (len < 5) return ippStsSizeErr;
    if (!ValidFreq(lo) || ((band == Band::kPass || band == Band::kStop) && (!ValidFreq(hi) || lo >= hi)))
        return ippStsSizeErr;
    if (win != ippWinBartlett && win != ippWinBlackman && win != ippWinHamming && win != ippWinHann)
        return ippStsBadArgErr;
    const double centre = (len - 1) / 2.0;
    // The taps are symmetric: each pair is computed once.
    for (int i = 0; i < (len + 1) / 2; ++i) {
        const double t = i - centre;
        double h = 0;
        switch (band) {
        case Band::kLow: h = IdealLow(lo, t); break;
        case Band::kHigh: h = IdealLow(0.5, t) - IdealLow(lo, t); break;
        case Band::kPass: h = IdealLow(hi, t) - IdealLow(lo, t); break;
        case Band::kStop: h = IdealLow(0.5, t) - IdealLow(hi, t) + IdealLow(lo, t); break;
        }
        taps[i] = taps[len - 1 - i] = h * WindowAt(win, i, len);
    }
    if (normal) {
        double f = 0;
        switch (band) {
        case Band::kLow: case Band::kStop: f = 0; break;
        case Band::kHigh: f = len % 2 ? 0.5 : (lo + 0.5) / 2; break;
        case Band::kPass: f = (lo + hi) / 2; break;
        }
        const double g = GainAt(taps, len, f);
        if (g > 0)
            for (int i = 0; i < len; ++i) taps[i] /= g;
    }
    return ippStsNoErr;
}

/* ---- LMS ---- */

constexpr uint32_t kLmsMagic = 0x4C4D5346;  // "LMSF"

struct LmsState {
    uint32_t magic;
    int taps;
    int index;
    size_t tapsAt, lineAt;  // offsets of the taps and the delay line
};

size_t LmsSize(int taps)
{
    return kAlign + Up(sizeof(LmsState)) + Up(size_t(taps) * sizeof(float)) + Up(2 * size_t(taps) * sizeof(float));
}

IppStatus LMSGetStateSize(int tapsLen, int dlyIndex, int *pSize)
{
    if (!pSize) return ippStsNullPtrErr;
    if (tapsLen < 1 || LmsSize(tapsLen) > size_t(INT32_MAX)) return ippStsFIRLenErr;
    if (dlyIndex < 0 || dlyIndex >= tapsLen) return ippStsDlyLineIndexErr;
    *pSize = int(LmsSize(tapsLen));
    return ippStsNoErr;
}

IppStatus LMSInit(IppsFIRLMSState_32f **ppState, const float *taps, int tapsLen, const float *dly, int dlyIndex,
                  Ipp8u *buffer)
{
    if (!ppState || !taps || !buffer) return ippStsNullPtrErr;
    if (tapsLen < 1 || LmsSize(tapsLen) > size_t(INT32_MAX)) return ippStsFIRLenErr;
    if (dlyIndex < 0 || dlyIndex >= tapsLen) return ippStsDlyLineIndexErr;
    LmsState *s = reinterpret_cast<LmsState *>(FirSpecIn(buffer));
    const size_t t = size_t(tapsLen);
    s->taps = tapsLen;
    s->index = dlyIndex;
    s->tapsAt = Up(sizeof(LmsState));
    s->lineAt = s->tapsAt + Up(t * sizeof(float));
    memcpy(At<float>(s, s->tapsAt), taps, t * sizeof(float));
    if (dly) memcpy(At<float>(s, s->lineAt), dly, 2 * t * sizeof(float));
    else memset(At<float>(s, s->lineAt), 0, 2 * t * sizeof(float));
    s->magic = kLmsMagic;
    *ppState = reinterpret_cast<IppsFIRLMSState_32f *>(s);
    return ippStsNoErr;
}

IppStatus LMS(const float *src, const float *ref, float *dst, int len, float mu, IppsFIRLMSState_32f *pState)
{
    if (!src || !ref || !dst || !pState) return ippStsNullPtrErr;
    if (len < 1) return ippStsSizeErr;
    LmsState *s = reinterpret_cast<LmsState *>(pState);
    if (s->magic != kLmsMagic) return ippStsContextMatchErr;
    const size_t t = size_t(s->taps);
    float *h = At<float>(s, s->tapsAt), *line = At<float>(s, s->lineAt);
    size_t idx = size_t(s->index);
    const double step = 2.0 * double(mu);
    for (size_t n = 0; n < size_t(len); ++n) {
        line[idx] = line[idx + t] = src[n];
        const float *x = line + idx;
        double y = 0;
        for (size_t k = 0; k < t; ++k) y += double(h[k]) * x[k];
        const float out = float(y);
        const double e = step * (double(ref[n]) - out);
        for (size_t k = 0; k < t; ++k) h[k] = float(h[k] + e * x[k]);
        dst[n] = out;
        idx = idx == 0 ? t - 1 : idx - 1;
    }
    s->index = int(idx);
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels

using namespace orb_kernels;

extern "C" {
IppStatus ippsFIRSRGetSize(int tapsLen, IppDataType tapsType, int *pSpecSize, int *pBufSize)
{
    return FIRSRGetSize(tapsLen, tapsType, pSpecSize, pBufSize);
}
IppStatus ippsFIRSRInit_64f(const Ipp64f *pTaps, int tapsLen, IppAlgType algType, IppsFIRSpec_64f *pSpec)
{
    return FIRSRInit(pTaps, tapsLen, algType, pSpec);
}
IppStatus ippsFIRSR_64f(const Ipp64f *pSrc, Ipp64f *pDst, int numIters, IppsFIRSpec_64f *pSpec,
                        const Ipp64f *pDlySrc, Ipp64f *pDlyDst, Ipp8u *pBuf)
{
    return FIRSR(pSrc, pDst, numIters, pSpec, pDlySrc, pDlyDst, pBuf);
}

IppStatus ippsFIRGenGetBufferSize(int tapsLen, int *pBufferSize)
{
    if (!pBufferSize) return ippStsNullPtrErr;
    if (tapsLen < 5) return ippStsIIRGenOrderErr;
    *pBufferSize = 64;  // the design works in place in pTaps
    return ippStsNoErr;
}
IppStatus ippsFIRGenLowpass_64f(Ipp64f rFreq, Ipp64f *pTaps, int tapsLen, IppWinType winType, IppBool doNormal,
                                Ipp8u *pBuffer)
{
    return FIRGen(Band::kLow, rFreq, 0, pTaps, tapsLen, winType, doNormal, pBuffer);
}
IppStatus ippsFIRGenHighpass_64f(Ipp64f rFreq, Ipp64f *pTaps, int tapsLen, IppWinType winType, IppBool doNormal,
                                 Ipp8u *pBuffer)
{
    return FIRGen(Band::kHigh, rFreq, 0, pTaps, tapsLen, winType, doNormal, pBuffer);
}
IppStatus ippsFIRGenBandpass_64f(Ipp64f rLowFreq, Ipp64f rHighFreq, Ipp64f *pTaps, int tapsLen, IppWinType winType,
                                 IppBool doNormal, Ipp8u *pBuffer)
{
    return FIRGen(Band::kPass, rLowFreq, rHighFreq, pTaps, tapsLen, winType, doNormal, pBuffer);
}
IppStatus ippsFIRGenBandstop_64f(Ipp64f rLowFreq, Ipp64f rHighFreq, Ipp64f *pTaps, int tapsLen, IppWinType winType,
                                 IppBool doNormal, Ipp8u *pBuffer)
{
    return FIRGen(Band::kStop, rLowFreq, rHighFreq, pTaps, tapsLen, winType, doNormal, pBuffer);
}

IppStatus ippsFIRLMSGetStateSize_32f(int tapsLen, int dlyIndex, int *pBufferSize)
{
    return LMSGetStateSize(tapsLen, dlyIndex, pBufferSize);
}
IppStatus ippsFIRLMSInit_32f(IppsFIRLMSState_32f **ppState, const Ipp32f *pTaps, int tapsLen, const Ipp32f *pDlyLine,
                             int dlyIndex, Ipp8u *pBuffer)
{
    return LMSInit(ppState, pTaps, tapsLen, pDlyLine, dlyIndex, pBuffer);
}
IppStatus ippsFIRLMS_32f(const Ipp32f *pSrc, const Ipp32f *pRef, Ipp32f *pDst, int len, float mu,
                         IppsFIRLMSState_32f *pState)
{
    return LMS(pSrc, pRef, pDst, len, mu, pState);
}
}
#endif  // HWY_ONCE
