/* Windows: ippsWinBartlett, ippsWinHamming, ippsWinHann, ippsWinBlackmanStd,
 * ippsWinBlackmanOpt, ippsWinBlackman and ippsWinKaiser, in _16s, _32f,
 * _64f and _64fc: pDst[n] = pSrc[n] w(n), 0 <= n < N = len.
 *
 * With x = 2 pi n / (N - 1):
 *   Bartlett     2n / (N - 1) up to the middle, 2 - 2n / (N - 1) after it
 *   Hann         0.5 - 0.5 cos x
 *   Hamming      0.54 - 0.46 cos x
 *   Blackman     (alpha + 1) / 2 - 0.5 cos x - (alpha / 2) cos 2x;
 *                Std takes alpha = -0.16, Opt alpha = -0.5 / (1 + cos(2 pi / (N - 1)))
 *   Kaiser       I0(alpha sqrt(((N - 1) / 2)^2 - (n - (N - 1) / 2)^2)) / I0(alpha (N - 1) / 2)
 *                with I0 the modified Bessel function of order 0.
 * Every window is computed at min(n, N - 1 - n), so it is exactly
 * symmetric, and only its first half is computed: each value is applied at
 * n and at N - 1 - n. The cosine forms are rewritten in s = sin(x / 2),
 * c = cos(x / 2): Hann s^2, Hamming 0.08 + 0.92 s^2, Blackman
 * s^2 (1 + 4 alpha c^2), equal to the above but without its cancellation
 * near the ends. Values are computed in double; _32f multiplies by the
 * value rounded to float; _64fc multiplies both parts; _16s rounds the
 * product to the nearest integer (ties to even) and saturates.
 *
 * I0(x): for x <= 20 its power series sum (x^2 / 4)^k / (k!)^2 to k = 44;
 * beyond, e^x / sqrt(2 pi x) times the asymptotic series
 * sum ((2k - 1)!!)^2 / (k! (8x)^k) to k = 29. Both are good to a few ulps
 * there; the window takes the ratio with the exponentials combined, so it
 * stays finite however large alpha (N - 1) / 2 is.
 *
 * Errors: null pointers, then len < 1 (ippStsSizeErr); len < 3 for all but
 * Kaiser, len < 4 for BlackmanOpt (ippStsSizeErr too).
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "window.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <math.h>
#include <stdint.h>

#include "entry.h"
#include "ipps.h"
#include "math-inl.h"
#include "trig-inl.h"

#ifndef ORB_KERNELS_WINDOW_SHARED_
#define ORB_KERNELS_WINDOW_SHARED_
namespace orb_kernels {

enum WinKind { kBartlett, kHann, kHamming, kBlackman, kKaiser };

struct WinParams {
    WinKind kind;
    double nm1;    // N - 1
    double scale;  // pi / (N - 1): x / 2 per step of n
    double alpha;
    double kb_v, kb_e;  // I0(alpha (N - 1) / 2) = kb_v e^kb_e
};

constexpr int kSeriesTerms = 45, kAsymTerms = 30;
constexpr double kI0Switch = 20.0;

struct BesselTables {
    double series[kSeriesTerms];  // 1 / (k!)^2
    double asym[kAsymTerms];      // ((2k - 1)!!)^2 / (k! 8^k)
};

constexpr BesselTables MakeBesselTables()
{
    BesselTables t{};
    t.series[0] = 1.0;
    for (int k = 1; k < kSeriesTerms; ++k) t.series[k] = t.series[k - 1] / (double(k) * double(k));
    t.asym[0] = 1.0;
    for (int k = 1; k < kAsymTerms; ++k)
        t.asym[k] = t.asym[k - 1] * double(2 * k - 1) * double(2 * k - 1) / (8.0 * double(k));
    return t;
}

constexpr BesselTables kBessel = MakeBesselTables();

/* Values per chunk of the first half. */
constexpr size_t kWinChunk = 1024;

}  // namespace orb_kernels
#endif

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

/* I0(x) = v e^e for x >= 0. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE void BesselI0(D d, V x, V &v, V &e)
{
    const auto small = hn::Le(x, hn::Set(d, kI0Switch));
    V vs = hn::Zero(d), va = hn::Zero(d);
    if (!hn::AllFalse(d, small)) {
        const V y = hn::Mul(hn::Mul(x, x), hn::Set(d, 0.25));
        vs = hn::Set(d, kBessel.series[kSeriesTerms - 1]);
        for (int k = kSeriesTerms - 2; k >= 0; --k) vs = hn::MulAdd(vs, y, hn::Set(d, kBessel.series[k]));
    }
    if (!hn::AllTrue(d, small)) {
        // Lanes at or below the switch are computed at the switch, unused.
        const V xa = hn::Max(x, hn::Set(d, kI0Switch));
        const V t = hn::Div(hn::Set(d, 1.0), xa);
        va = hn::Set(d, kBessel.asym[kAsymTerms - 1]);
        for (int k = kAsymTerms - 2; k >= 0; --k) va = hn::MulAdd(va, t, hn::Set(d, kBessel.asym[k]));
        va = hn::Div(va, hn::Sqrt(hn::Mul(xa, hn::Set(d, 6.283185307179586))));
    }
    v = hn::IfThenElse(small, vs, va);
    e = hn::IfThenZeroElse(small, x);
}

/* The window at n = start, start + 1, ... for count values (rounded up to
 * whole vectors) into w. */
template <class D>
HWY_INLINE void Values(D d, const WinParams &p, size_t start, size_t count, double *w)
{
    const size_t lanes = hn::Lanes(d);
    const auto nm1 = hn::Set(d, p.nm1);
    for (size_t k = 0; k < count; k += lanes) {
        const auto n = hn::Iota(d, double(start + k));
        const auto m = hn::Min(n, hn::Sub(nm1, n));
        hn::Vec<D> r;
        if (p.kind == kBartlett) {
            r = hn::Div(hn::Add(m, m), nm1);
        } else if (p.kind == kKaiser) {
            const auto x = hn::Abs(hn::Mul(hn::Set(d, p.alpha), hn::Sqrt(hn::Mul(m, hn::Sub(nm1, m)))));
            hn::Vec<D> v, e;
            BesselI0(d, x, v, e);
            r = hn::Div(v, hn::Set(d, p.kb_v));
            const auto de = hn::Sub(e, hn::Set(d, p.kb_e));
            if (!hn::AllTrue(d, hn::Eq(de, hn::Zero(d)))) r = hn::Mul(r, ExpKernel(d, de));
        } else {
            // With s, c the sine and cosine of x / 2: 1 - cos x = 2 s^2 and
            // cos 2x = 1 - 8 s^2 c^2, which leave no cancellation near the ends.
            hn::Vec<D> s, c;
            SinCos(d, hn::Mul(m, hn::Set(d, p.scale)), s, c);
            const auto s2 = hn::Mul(s, s);
            if (p.kind == kHann) {
                r = s2;
            } else if (p.kind == kHamming) {
                r = hn::MulAdd(hn::Set(d, 0.92), s2, hn::Set(d, 0.08));
            } else {
                // (alpha + 1) / 2 - (1 - 2 s^2) / 2 - alpha / 2 (1 - 8 s^2 c^2)
                //   = s^2 (1 + 4 alpha c^2)
                r = hn::Mul(s2, hn::MulAdd(hn::Set(d, 4.0 * p.alpha), hn::Mul(c, c), hn::Set(d, 1.0)));
            }
        }
        hn::Store(r, d, w + k);
    }
}

HWY_INLINE double Times(double s, double w) { return s * w; }
HWY_INLINE float Times(float s, double w) { return s * float(w); }
HWY_INLINE Ipp64fc Times(Ipp64fc s, double w) { return {s.re * w, s.im * w}; }
HWY_INLINE Ipp16s Times(Ipp16s s, double w)
{
    const double r = nearbyint(double(s) * w);
    if (!(r == r)) return 0;
    return Ipp16s(r < -32768.0 ? -32768.0 : r > 32767.0 ? 32767.0 : r);
}

template <typename T>
IppStatus Window(const T *src, T *dst, size_t len, const WinParams &p)
{
    const hn::ScalableTag<double> d;
    HWY_ALIGN double w[kWinChunk + hn::MaxLanes(d)];
    const size_t half = (len + 1) / 2, lower = len / 2;
    for (size_t i0 = 0; i0 < half; i0 += kWinChunk) {
        const size_t cnt = HWY_MIN(kWinChunk, half - i0);
        Values(d, p, i0, cnt, w);
        const T *s = src + i0;
        T *o = dst + i0;
        for (size_t k = 0; k < cnt; ++k) o[k] = Times(s[k], w[k]);
        // The mirror images: indices len - 1 - i for i < len / 2.
        const size_t cnt2 = i0 < lower ? HWY_MIN(cnt, lower - i0) : 0;
        const T *sm = src + (len - 1 - i0);
        T *om = dst + (len - 1 - i0);
        for (size_t k = 0; k < cnt2; ++k) *(om - k) = Times(*(sm - k), w[k]);
    }
    return ippStsNoErr;
}

IppStatus Window_16s(const Ipp16s *s, Ipp16s *o, size_t n, const WinParams &p) { return Window(s, o, n, p); }
IppStatus Window_32f(const Ipp32f *s, Ipp32f *o, size_t n, const WinParams &p) { return Window(s, o, n, p); }
IppStatus Window_64f(const Ipp64f *s, Ipp64f *o, size_t n, const WinParams &p) { return Window(s, o, n, p); }
IppStatus Window_64fc(const Ipp64fc *s, Ipp64fc *o, size_t n, const WinParams &p) { return Window(s, o, n, p); }

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
HWY_EXPORT(Window_16s);
HWY_EXPORT(Window_32f);
HWY_EXPORT(Window_64f);
HWY_EXPORT(Window_64fc);

namespace {

/* I0(x) = v e^e, x >= 0, as the vector code computes it. */
void ScalarI0(double x, double &v, double &e)
{
    if (x <= kI0Switch) {
        const double y = x * x * 0.25;
        v = kBessel.series[kSeriesTerms - 1];
        for (int k = kSeriesTerms - 2; k >= 0; --k) v = v * y + kBessel.series[k];
        e = 0;
    } else {
        const double t = 1.0 / x;
        v = kBessel.asym[kAsymTerms - 1];
        for (int k = kAsymTerms - 2; k >= 0; --k) v = v * t + kBessel.asym[k];
        v /= sqrt(x * 6.283185307179586);
        e = x;
    }
}

WinParams Params(WinKind kind, int len, double alpha)
{
    WinParams p{};
    p.kind = kind;
    p.nm1 = double(len) - 1.0;
    p.scale = len > 1 ? 3.141592653589793 / p.nm1 : 0.0;
    p.alpha = alpha;
    if (kind == kKaiser) ScalarI0(fabs(alpha * p.nm1 * 0.5), p.kb_v, p.kb_e);
    return p;
}

template <typename T, class F>
IppStatus Run(F fn, const T *src, T *dst, int len, int min_len, WinKind kind, double alpha)
{
    IppStatus st = CheckArgs(len, src, dst);
    if (st == ippStsNoErr) st = Refuse(len < min_len, ippStsSizeErr);
    if (st != ippStsNoErr) return st;
    return fn(src, dst, size_t(len), Params(kind, len, alpha));
}

double OptAlpha(int len) { return len > 1 ? -0.5 / (1.0 + cos(6.283185307179586 / (double(len) - 1.0))) : 0.0; }

}  // namespace
}  // namespace orb_kernels

#define ORB_WINDOWS(name, min_len, kind, alpha_expr)                                                    \
    extern "C" IppStatus ipps##name##_16s(const Ipp16s *pSrc, Ipp16s *pDst, int len)                     \
    {                                                                                                   \
        return orb_kernels::Run(HWY_DYNAMIC_DISPATCH(orb_kernels::Window_16s), pSrc, pDst, len, min_len, \
                                orb_kernels::kind, alpha_expr);                                         \
    }                                                                                                   \
    extern "C" IppStatus ipps##name##_32f(const Ipp32f *pSrc, Ipp32f *pDst, int len)                     \
    {                                                                                                   \
        return orb_kernels::Run(HWY_DYNAMIC_DISPATCH(orb_kernels::Window_32f), pSrc, pDst, len, min_len, \
                                orb_kernels::kind, alpha_expr);                                         \
    }                                                                                                   \
    extern "C" IppStatus ipps##name##_64f(const Ipp64f *pSrc, Ipp64f *pDst, int len)                     \
    {                                                                                                   \
        return orb_kernels::Run(HWY_DYNAMIC_DISPATCH(orb_kernels::Window_64f), pSrc, pDst, len, min_len, \
                                orb_kernels::kind, alpha_expr);                                         \
    }                                                                                                   \
    extern "C" IppStatus ipps##name##_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len)                  \
    {                                                                                                   \
        return orb_kernels::Run(HWY_DYNAMIC_DISPATCH(orb_kernels::Window_64fc), pSrc, pDst, len,         \
                                min_len, orb_kernels::kind, alpha_expr);                                \
    }

ORB_WINDOWS(WinBartlett, 3, kBartlett, 0.0)
ORB_WINDOWS(WinHann, 3, kHann, 0.0)
ORB_WINDOWS(WinHamming, 3, kHamming, 0.0)
ORB_WINDOWS(WinBlackmanStd, 3, kBlackman, -0.16)
ORB_WINDOWS(WinBlackmanOpt, 4, kBlackman, orb_kernels::OptAlpha(len))

#define ORB_WINDOWS_A(name, min_len, kind)                                                                 \
    extern "C" IppStatus ipps##name##_16s(const Ipp16s *pSrc, Ipp16s *pDst, int len, Ipp32f alpha)         \
    {                                                                                                     \
        return orb_kernels::Run(HWY_DYNAMIC_DISPATCH(orb_kernels::Window_16s), pSrc, pDst, len, min_len,   \
                                orb_kernels::kind, double(alpha));                                        \
    }                                                                                                     \
    extern "C" IppStatus ipps##name##_32f(const Ipp32f *pSrc, Ipp32f *pDst, int len, Ipp32f alpha)         \
    {                                                                                                     \
        return orb_kernels::Run(HWY_DYNAMIC_DISPATCH(orb_kernels::Window_32f), pSrc, pDst, len, min_len,   \
                                orb_kernels::kind, double(alpha));                                        \
    }                                                                                                     \
    extern "C" IppStatus ipps##name##_64f(const Ipp64f *pSrc, Ipp64f *pDst, int len, Ipp64f alpha)         \
    {                                                                                                     \
        return orb_kernels::Run(HWY_DYNAMIC_DISPATCH(orb_kernels::Window_64f), pSrc, pDst, len, min_len,   \
                                orb_kernels::kind, alpha);                                                \
    }                                                                                                     \
    extern "C" IppStatus ipps##name##_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len, Ipp64f alpha)      \
    {                                                                                                     \
        return orb_kernels::Run(HWY_DYNAMIC_DISPATCH(orb_kernels::Window_64fc), pSrc, pDst, len, min_len,  \
                                orb_kernels::kind, alpha);                                                \
    }

ORB_WINDOWS_A(WinBlackman, 3, kBlackman)
ORB_WINDOWS_A(WinKaiser, 1, kKaiser)
#endif
