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
 * Only the first half of each window is computed, and each value is
 * applied at n and at N - 1 - n, so every window is exactly symmetric. The
 * cosine forms are rewritten in s = sin(x / 2), c = cos(x / 2): Hann s^2,
 * Hamming 0.08 + 0.92 s^2, Blackman s^2 (1 + 4 alpha c^2), equal to the
 * above but without its cancellation near the ends; s and c come by angle
 * addition from an exact pair every 64 values. Values are computed in
 * double; _32f multiplies by the value rounded to float; _64fc multiplies
 * both parts; _16s rounds the product to the nearest integer (ties to even)
 * and saturates.
 *
 * I0(x): for x <= 20 its power series sum (x^2 / 4)^k / (k!)^2 to k = 44;
 * beyond, e^x / sqrt(2 pi x) times the asymptotic series
 * sum ((2k - 1)!!)^2 / (k! (8x)^k) to k = 29; fewer terms where the
 * arguments of a vector allow (series 18 and 28 terms up to x = 5 and 10,
 * asymptotic 10 and 6 from x = 100 and 1000). Both are good to a few ulps
 * there. The series is taken in x^2 = alpha^2 m (N - 1 - m), m the nearer
 * end's distance, without a square root. The window takes the ratio with
 * the exponentials combined, so it stays finite however large
 * alpha (N - 1) / 2 is (no "window too big" error), and is exactly 1 in the
 * middle.
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

#include <type_traits>

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
    double kb_inv;      // 1 / kb_v
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

/* Values per chunk of the first half, and per anchor of the cosine
 * windows within it. */
constexpr size_t kWinChunk = 1024;
constexpr size_t kStep = 64;

}  // namespace orb_kernels
#endif

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

/* Terms each branch needs for double accuracy over a vector: the series
 * by the largest argument (given squared), the asymptotic series by the smallest (its k-th
 * term shrinks like k! / (2x)^k). */
HWY_INLINE int SeriesTerms(double x2max) { return x2max <= 25.0 ? 18 : x2max <= 100.0 ? 28 : kSeriesTerms; }
HWY_INLINE int AsymTerms(double xmin) { return xmin >= 1000.0 ? 6 : xmin >= 100.0 ? 10 : kAsymTerms; }

/* sum c[k] y^k for k < terms, y >= 0 and c > 0 (so no cancellation), as
 * four interleaved Horner chains in y^4 that run side by side. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE V Poly(D d, const double *c, int terms, V y)
{
    const V y2 = hn::Mul(y, y), y4 = hn::Mul(y2, y2);
    V q[4];
    for (int r = 0; r < 4; ++r) {
        int k = r + ((terms - 1 - r) / 4) * 4;  // the highest k = r mod 4 below terms
        q[r] = k < terms ? hn::Set(d, c[k]) : hn::Zero(d);
        for (k -= 4; k >= 0; k -= 4) q[r] = hn::MulAdd(q[r], y4, hn::Set(d, c[k]));
    }
    return hn::MulAdd(hn::MulAdd(q[3], y, q[2]), y2, hn::MulAdd(q[1], y, q[0]));
}

/* I0(x) = v e^e for x >= 0, from x^2: the series needs no square root. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE void BesselI0(D d, V x2, V &v, V &e)
{
    const auto small = hn::Le(x2, hn::Set(d, kI0Switch * kI0Switch));
    V vs = hn::Zero(d), va = hn::Zero(d), x = hn::Zero(d);
    if (!hn::AllFalse(d, small)) {
        const V y = hn::Mul(x2, hn::Set(d, 0.25));
        const int terms = SeriesTerms(hn::GetLane(hn::MaxOfLanes(d, hn::IfThenElseZero(small, x2))));
        vs = Poly(d, kBessel.series, terms, y);
    }
    if (!hn::AllTrue(d, small)) {
        // Lanes at or below the switch are computed at the switch, unused.
        x = hn::Sqrt(x2);
        const V xa = hn::Max(x, hn::Set(d, kI0Switch));
        // 1 / x and 1 / sqrt(2 pi x) from one square root and one division.
        const V r = hn::Div(hn::Set(d, 1.0), hn::Sqrt(xa));
        const V t = hn::Mul(r, r);
        const int terms = AsymTerms(hn::GetLane(hn::MinOfLanes(d, xa)));
        va = Poly(d, kBessel.asym, terms, t);
        va = hn::Mul(va, hn::Mul(r, hn::Set(d, 0.3989422804014327)));  // 1 / sqrt(2 pi)
    }
    v = hn::IfThenElse(small, vs, va);
    e = hn::IfThenZeroElse(small, x);
}

/* Sines and cosines of k scale, k < kStep: the steps from an anchor. */
struct StepTable {
    HWY_ALIGN double s[kStep];
    HWY_ALIGN double c[kStep];
};

template <class D>
HWY_INLINE void MakeSteps(D d, const WinParams &p, StepTable &t)
{
    for (size_t k = 0; k < kStep; k += hn::Lanes(d)) {
        hn::Vec<D> s, c;
        SinCos(d, hn::Mul(hn::Iota(d, double(k)), hn::Set(d, p.scale)), s, c);
        hn::Store(s, d, t.s + k);
        hn::Store(c, d, t.c + k);
    }
}

/* The cosine windows from s, c = sin, cos of x / 2: 1 - cos x = 2 s^2 and
 * cos 2x = 1 - 8 s^2 c^2, which leave no cancellation near the ends. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE V CosineWindow(D d, const WinParams &p, V s, V c)
{
    const V s2 = hn::Mul(s, s);
    if (p.kind == kHann) return s2;
    if (p.kind == kHamming) return hn::MulAdd(hn::Set(d, 0.92), s2, hn::Set(d, 0.08));
    // (alpha + 1) / 2 - (1 - 2 s^2) / 2 - alpha / 2 (1 - 8 s^2 c^2)
    //   = s^2 (1 + 4 alpha c^2)
    return hn::Mul(s2, hn::MulAdd(hn::Set(d, 4.0 * p.alpha), hn::Mul(c, c), hn::Set(d, 1.0)));
}

/* The window at n = start, start + 1, ... for count values (rounded up to
 * whole vectors; start a multiple of kStep) into w, for n in the first
 * half. The cosine windows take the sine and cosine of each anchor
 * n0 = start + j kStep once and step from it by angle addition:
 * sin(a + b) = sin a cos b + cos a sin b, all terms non-negative in the
 * first half, so each value keeps a few ulps. */
template <class D>
HWY_INLINE void Values(D d, const WinParams &p, const StepTable &t, size_t start, size_t count, double *w)
{
    const size_t lanes = hn::Lanes(d);
    const auto nm1 = hn::Set(d, p.nm1);
    if (p.kind != kBartlett && p.kind != kKaiser) {
        HWY_ALIGN double as[kWinChunk / kStep + hn::MaxLanes(d)], ac[kWinChunk / kStep + hn::MaxLanes(d)];
        const size_t anchors = (count + kStep - 1) / kStep;
        for (size_t j = 0; j < anchors; j += lanes) {
            const auto n0 = hn::MulAdd(hn::Iota(d, double(j)), hn::Set(d, double(kStep)), hn::Set(d, double(start)));
            hn::Vec<D> s, c;
            SinCos(d, hn::Mul(n0, hn::Set(d, p.scale)), s, c);
            hn::Store(s, d, as + j);
            hn::Store(c, d, ac + j);
        }
        for (size_t j = 0; j < anchors; ++j) {
            const auto sa = hn::Set(d, as[j]), ca = hn::Set(d, ac[j]);
            for (size_t k = 0; k < kStep; k += lanes) {
                const auto sk = hn::Load(d, t.s + k), ck = hn::Load(d, t.c + k);
                const auto s = hn::MulAdd(sa, ck, hn::Mul(ca, sk));
                const auto c = hn::MulSub(ca, ck, hn::Mul(sa, sk));
                hn::Store(CosineWindow(d, p, s, c), d, w + j * kStep + k);
            }
        }
        return;
    }
    for (size_t k = 0; k < count; k += lanes) {
        const auto n = hn::Iota(d, double(start + k));
        const auto m = hn::Min(n, hn::Sub(nm1, n));
        hn::Vec<D> r;
        if (p.kind == kBartlett) {
            r = hn::Div(hn::Add(m, m), nm1);
        } else {
            // x^2 = alpha^2 m (N - 1 - m); the integer product is exact
            // below 2^53.
            const auto x2 = hn::Mul(hn::Set(d, p.alpha * p.alpha), hn::Mul(m, hn::Sub(nm1, m)));
            hn::Vec<D> v, e;
            BesselI0(d, x2, v, e);
            // v / I0(middle) as a product, and exactly 1 in the middle.
            const auto one = hn::Set(d, 1.0), kb = hn::Set(d, p.kb_v);
            const auto middle = hn::And(hn::Eq(v, kb), hn::Eq(e, hn::Set(d, p.kb_e)));
            r = hn::IfThenElse(middle, one, hn::Mul(v, hn::Set(d, p.kb_inv)));
            const auto de = hn::Sub(e, hn::Set(d, p.kb_e));
            if (!hn::AllTrue(d, hn::Eq(de, hn::Zero(d)))) r = hn::Mul(r, ExpKernel(d, de));
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

/* Whole vectors of the front values of one chunk and of their mirror
 * images (read and written backwards, reversed in the register); returns
 * how many values it took, the rest being left to the caller. Front and
 * mirror indices never meet, and each element is read before it is
 * written, so the source may be the destination. */
template <typename T>
HWY_INLINE size_t Apply(const T *src, T *dst, size_t len, size_t i0, size_t cnt, size_t cnt2, double *w)
{
    const hn::ScalableTag<T> d;
    const size_t n = hn::Lanes(d);
    const T *wt;
    HWY_ALIGN float wf[kWinChunk + hn::MaxLanes(hn::ScalableTag<float>())];
    if constexpr (std::is_same_v<T, float>) {
        for (size_t k = 0; k < cnt; ++k) wf[k] = float(w[k]);
        wt = wf;
    } else {
        wt = w;
    }
    size_t k = 0;
    for (; k + n <= cnt2; k += n) {
        const auto wv = hn::Load(d, wt + k);
        hn::StoreU(hn::Mul(hn::LoadU(d, src + i0 + k), wv), d, dst + i0 + k);
        const size_t m = len - i0 - k - n;  // the mirror vector's lowest index
        hn::StoreU(hn::Mul(hn::LoadU(d, src + m), hn::Reverse(d, wv)), d, dst + m);
    }
    // Front values past the mirrored ones (the middle).
    if (k < cnt2) return k;
    for (; k + n <= cnt; k += n)
        hn::StoreU(hn::Mul(hn::LoadU(d, src + i0 + k), hn::Load(d, wt + k)), d, dst + i0 + k);
    return k;
}

template <typename T>
IppStatus Window(const T *src, T *dst, size_t len, const WinParams &params)
{
    const hn::ScalableTag<double> d;
    WinParams p = params;
    if (p.kind == kKaiser) {
        // The middle's value, by the same code as every other: 1 there.
        hn::Vec<decltype(d)> v, e;
        const double h = p.nm1 * 0.5;
        BesselI0(d, hn::Mul(hn::Set(d, p.alpha * p.alpha), hn::Set(d, h * h)), v, e);
        p.kb_v = hn::GetLane(v);
        p.kb_inv = 1.0 / p.kb_v;
        p.kb_e = hn::GetLane(e);
    }
    HWY_ALIGN double w[kWinChunk + hn::MaxLanes(d)];
    StepTable t;
    if (p.kind != kBartlett && p.kind != kKaiser) MakeSteps(d, p, t);
    const size_t half = (len + 1) / 2, lower = len / 2;
    for (size_t i0 = 0; i0 < half; i0 += kWinChunk) {
        const size_t cnt = HWY_MIN(kWinChunk, half - i0);
        Values(d, p, t, i0, cnt, w);
        // The mirror images: indices len - 1 - i for i < len / 2.
        const size_t cnt2 = i0 < lower ? HWY_MIN(cnt, lower - i0) : 0;
        size_t k = 0;
        if constexpr (std::is_same_v<T, double> || std::is_same_v<T, float>) k = Apply(src, dst, len, i0, cnt, cnt2, w);
        for (size_t j = k; j < cnt; ++j) dst[i0 + j] = Times(src[i0 + j], w[j]);
        for (size_t j = k; j < cnt2; ++j) dst[len - 1 - i0 - j] = Times(src[len - 1 - i0 - j], w[j]);
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

WinParams Params(WinKind kind, int len, double alpha)
{
    WinParams p{};
    p.kind = kind;
    p.nm1 = double(len) - 1.0;
    p.scale = len > 1 ? 3.141592653589793 / p.nm1 : 0.0;
    p.alpha = alpha;
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
