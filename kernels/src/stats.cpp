/* Reductions: sums, means, standard deviations, extremes and their indices,
 * norms, dot products, element-wise extremes of two vectors, zero-crossing
 * measures, counts in a range and the maximum binary order.
 *
 * Floating-point reductions run Fold (below): four independent vector
 * accumulators, so that additions overlap and each accumulator sums only a
 * quarter of the elements; the lanes are added at the end. Single-precision
 * sums accumulate in double under ippAlgHintAccurate (and the dot product of
 * floats always does), in single precision otherwise. Standard deviations
 * take the mean first, then the squares of the deviations from it, divided
 * by len - 1.
 *
 * Extremes pass over NaN elements: an all-NaN vector gives NaN (index 0).
 * Of equal extremes the first gives the index and the value (so -0 and +0
 * are told apart by position only). The absolute extremes of integers are
 * taken as unsigned magnitudes and saturate when stored: |-32768| is 32767.
 *
 * Integer sums and dot products are exact in 64 bits; a scaled sum is then
 * multiplied by 2^-scaleFactor, rounded half to even and saturated.
 *
 * Zero crossings of x[0..len-1], over the neighbours x[n-1], x[n]:
 *   ippZCR    the changes of sign, with s(x) = -1 below zero and +1 from zero
 *             up: (1/2) sum |s(x[n]) - s(x[n-1])|
 *   ippZCXor  the changes of the sign bit (so -0.0 counts as negative):
 *             sum signbit(x[n]) xor signbit(x[n-1])
 *   ippZCC    with a three-way sign (-1, 0, +1): (1/2) sum |sgn(x[n]) -
 *             sgn(x[n-1])|, so a step to or from zero counts a half
 * NaN neighbours count no crossing in ZCR and ZCC.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <math.h>
#include <stdint.h>
#include <string.h>

#include <cmath>
#include <limits>
#include <type_traits>

#include "entry.h"
#include "ipps.h"
#include "loops-inl.h"

#ifndef ORB_STATS_ONCE
#define ORB_STATS_ONCE
namespace orb_kernels {
/* Which extreme a search looks for. */
enum class Ext { kMin, kMax };
}  // namespace orb_kernels
#endif

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

/* An input for Fold: full vectors straight from the array, the partial last
 * one padded with `pad`, a value that leaves the accumulators as they are. */
template <typename T>
struct Src {
    const T *p;
    T pad;
    template <class D>
    HWY_INLINE hn::Vec<hn::Rebind<T, D>> Load(D, size_t i) const
    {
        return hn::LoadU(hn::Rebind<T, D>(), p + i);
    }
    template <class D>
    HWY_INLINE hn::Vec<hn::Rebind<T, D>> LoadTail(D d, size_t i, size_t r) const
    {
        HWY_ALIGN T buf[hn::MaxLanes(hn::Rebind<T, D>())];
        for (size_t k = 0; k < hn::Lanes(d); ++k) buf[k] = k < r ? p[i + k] : pad;
        return hn::Load(hn::Rebind<T, D>(), buf);
    }
};

/* Interleaved complex values, split into parts; padding 0 + 0i. */
struct SrcPairs {
    const double *p;
    template <class D>
    HWY_INLINE Cx<hn::Vec<D>> Load(D d, size_t i) const
    {
        Cx<hn::Vec<D>> c;
        hn::LoadInterleaved2(d, p + 2 * i, c.re, c.im);
        return c;
    }
    template <class D>
    HWY_INLINE Cx<hn::Vec<D>> LoadTail(D d, size_t i, size_t r) const
    {
        HWY_ALIGN double buf[2 * hn::MaxLanes(D())] = {};
        memcpy(buf, p + 2 * i, 2 * r * sizeof(double));
        Cx<hn::Vec<D>> c;
        hn::LoadInterleaved2(d, buf, c.re, c.im);
        return c;
    }
};

/* Runs four accumulator states over count elements, each Add taking one
 * vector of every input, and merges them into the first. */
template <class D, class S, class... I>
HWY_INLINE S Fold(D d, size_t count, S s, const I &...in)
{
    const size_t n = hn::Lanes(d);
    S s1 = s, s2 = s, s3 = s;
    size_t i = 0;
    for (; i + 4 * n <= count; i += 4 * n) {
        s.Add(d, in.Load(d, i)...);
        s1.Add(d, in.Load(d, i + n)...);
        s2.Add(d, in.Load(d, i + 2 * n)...);
        s3.Add(d, in.Load(d, i + 3 * n)...);
    }
    for (; i + n <= count; i += n) s.Add(d, in.Load(d, i)...);
    if (i < count) s1.Add(d, in.LoadTail(d, i, count - i)...);
    s.Merge(d, s1);
    s2.Merge(d, s3);
    s.Merge(d, s2);
    return s;
}

template <class D>
HWY_INLINE hn::TFromD<D> Total(D d, hn::Vec<D> v)
{
    return hn::GetLane(hn::SumOfLanes(d, v));
}

/* ---- Sums ---- */

/* Sum of x (promoted to D's type when narrower). */
template <class D>
struct SumS {
    hn::Vec<D> acc;
    template <class V>
    HWY_INLINE void Add(D d, V x)
    {
        if constexpr (std::is_same_v<V, hn::Vec<D>>) acc = hn::Add(acc, x);
        else acc = hn::Add(acc, hn::PromoteTo(d, x));
    }
    HWY_INLINE void Merge(D, const SumS &o) { acc = hn::Add(acc, o.acc); }
};

/* Sum of (x - c)^2. */
template <class D>
struct DevS {
    hn::Vec<D> acc, c;
    template <class V>
    HWY_INLINE void Add(D d, V x)
    {
        hn::Vec<D> y;
        if constexpr (std::is_same_v<V, hn::Vec<D>>) y = hn::Sub(x, c);
        else y = hn::Sub(hn::PromoteTo(d, x), c);
        acc = hn::MulAdd(y, y, acc);
    }
    HWY_INLINE void Merge(D, const DevS &o) { acc = hn::Add(acc, o.acc); }
};

/* Sum of the elements as A (float or double), from T (float or double). */
template <typename A, typename T>
HWY_INLINE A SumAs(const T *src, size_t len)
{
    const Tag<A> d;
    return Total(d, Fold(d, len, SumS<Tag<A>>{hn::Zero(d)}, Src<T>{src, T(0)}).acc);
}

/* The partial last vector is summed one by one: a padding lane of T may not
 * hold the mean of type A exactly. */
template <typename A, typename T>
HWY_INLINE A DevAs(const T *src, size_t len, A mean)
{
    const Tag<A> d;
    const size_t whole = len - len % hn::Lanes(d);
    A s = Total(d, Fold(d, whole, DevS<Tag<A>>{hn::Zero(d), hn::Set(d, mean)}, Src<T>{src, T(0)}).acc);
    for (size_t i = whole; i < len; ++i) s += (A(src[i]) - mean) * (A(src[i]) - mean);
    return s;
}

IppStatus Sum_64f(const double *src, size_t len, double *sum)
{
    *sum = SumAs<double>(src, len);
    return ippStsNoErr;
}

IppStatus Sum_32f(const float *src, size_t len, float *sum, int accurate)
{
    *sum = accurate ? float(SumAs<double>(src, len)) : SumAs<float>(src, len);
    return ippStsNoErr;
}

template <class D>
struct SumPairsS {
    hn::Vec<D> re, im;
    HWY_INLINE void Add(D, Cx<hn::Vec<D>> x)
    {
        re = hn::Add(re, x.re);
        im = hn::Add(im, x.im);
    }
    HWY_INLINE void Merge(D, const SumPairsS &o)
    {
        re = hn::Add(re, o.re);
        im = hn::Add(im, o.im);
    }
};

HWY_INLINE Ipp64fc SumPairs(const Ipp64fc *src, size_t len)
{
    const Tag<double> d;
    const auto s = Fold(d, len, SumPairsS<Tag<double>>{hn::Zero(d), hn::Zero(d)}, SrcPairs{Parts(src)});
    return {Total(d, s.re), Total(d, s.im)};
}

IppStatus Sum_64fc(const Ipp64fc *src, size_t len, Ipp64fc *sum)
{
    *sum = SumPairs(src, len);
    return ippStsNoErr;
}

IppStatus Mean_64f(const double *src, size_t len, double *mean)
{
    *mean = SumAs<double>(src, len) / double(len);
    return ippStsNoErr;
}

IppStatus Mean_32f(const float *src, size_t len, float *mean, int accurate)
{
    *mean = accurate ? float(SumAs<double>(src, len) / double(len)) : SumAs<float>(src, len) / float(len);
    return ippStsNoErr;
}

IppStatus Mean_64fc(const Ipp64fc *src, size_t len, Ipp64fc *mean)
{
    const Ipp64fc s = SumPairs(src, len);
    *mean = {s.re / double(len), s.im / double(len)};
    return ippStsNoErr;
}

IppStatus MeanStdDev_64f(const double *src, size_t len, double *mean, double *dev)
{
    const double m = SumAs<double>(src, len) / double(len);
    if (mean) *mean = m;
    *dev = sqrt(DevAs<double>(src, len, m) / double(len - 1));
    return ippStsNoErr;
}

IppStatus StdDev_64f(const double *src, size_t len, double *dev) { return MeanStdDev_64f(src, len, nullptr, dev); }

IppStatus MeanStdDev_32f(const float *src, size_t len, float *mean, float *dev, int accurate)
{
    if (accurate) {
        const double m = SumAs<double>(src, len) / double(len);
        if (mean) *mean = float(m);
        *dev = float(sqrt(DevAs<double>(src, len, m) / double(len - 1)));
    } else {
        const float m = SumAs<float>(src, len) / float(len);
        if (mean) *mean = m;
        *dev = sqrtf(DevAs<float>(src, len, m) / float(len - 1));
    }
    return ippStsNoErr;
}

IppStatus StdDev_32f(const float *src, size_t len, float *dev, int accurate)
{
    return MeanStdDev_32f(src, len, nullptr, dev, accurate);
}

/* ---- Norms and dot products ---- */

/* |x| (or |a - b|) folded by Max (Inf), Add (L1) or squares by MulAdd (L2).
 * A NaN element makes every norm NaN: sums carry it, and the largest
 * magnitude is kept by a Max that keeps NaN on every target. */
enum class Norm { kInf, kL1, kL2 };

template <class V>
HWY_INLINE V MaxKeepNaN(V acc, V x)
{
    return hn::IfThenElse(hn::Or(hn::Lt(acc, x), hn::IsNaN(x)), x, acc);
}

template <class D, Norm kN>
struct NormS {
    hn::Vec<D> acc;
    HWY_INLINE void Put(hn::Vec<D> x)
    {
        if constexpr (kN == Norm::kInf) acc = MaxKeepNaN(acc, hn::Abs(x));
        else if constexpr (kN == Norm::kL1) acc = hn::Add(acc, hn::Abs(x));
        else acc = hn::MulAdd(x, x, acc);
    }
    HWY_INLINE void Add(D, hn::Vec<D> x) { Put(x); }
    HWY_INLINE void Add(D, hn::Vec<D> a, hn::Vec<D> b) { Put(hn::Sub(a, b)); }
    HWY_INLINE void Merge(D, const NormS &o)
    {
        if constexpr (kN == Norm::kInf) acc = MaxKeepNaN(acc, o.acc);
        else acc = hn::Add(acc, o.acc);
    }
};

/* Complex: |z| = sqrt(re^2 + im^2) for Inf and L1, re^2 + im^2 summed for L2. */
template <class D, Norm kN>
struct NormPairsS {
    hn::Vec<D> acc;
    HWY_INLINE void Put(hn::Vec<D> re, hn::Vec<D> im)
    {
        const hn::Vec<D> m2 = hn::MulAdd(re, re, hn::Mul(im, im));
        if constexpr (kN == Norm::kInf) acc = MaxKeepNaN(acc, m2);
        else if constexpr (kN == Norm::kL1) acc = hn::Add(acc, hn::Sqrt(m2));
        else acc = hn::Add(acc, m2);
    }
    HWY_INLINE void Add(D, Cx<hn::Vec<D>> x) { Put(x.re, x.im); }
    HWY_INLINE void Add(D, Cx<hn::Vec<D>> a, Cx<hn::Vec<D>> b) { Put(hn::Sub(a.re, b.re), hn::Sub(a.im, b.im)); }
    HWY_INLINE void Merge(D, const NormPairsS &o)
    {
        if constexpr (kN == Norm::kInf) acc = MaxKeepNaN(acc, o.acc);
        else acc = hn::Add(acc, o.acc);
    }
};

template <Norm kN, class D>
HWY_INLINE hn::TFromD<D> Finish(D d, hn::Vec<D> acc)
{
    if constexpr (kN == Norm::kInf) {
        HWY_ALIGN hn::TFromD<D> lanes[hn::MaxLanes(d)];
        hn::Store(acc, d, lanes);
        hn::TFromD<D> m = lanes[0];
        for (size_t k = 1; k < hn::Lanes(d); ++k) m = lanes[k] > m || isnan(lanes[k]) ? lanes[k] : m;
        return m;
    } else if constexpr (kN == Norm::kL1) return Total(d, acc);
    else return sqrt(Total(d, acc));
}

template <Norm kN, typename T, class... I>
HWY_INLINE T NormOf(size_t len, const I &...in)
{
    const Tag<T> d;
    return Finish<kN>(d, Fold(d, len, NormS<Tag<T>, kN>{hn::Zero(d)}, in...).acc);
}

template <Norm kN, class... I>
HWY_INLINE double NormOfPairs(size_t len, const I &...in)
{
    const Tag<double> d;
    const auto acc = Fold(d, len, NormPairsS<Tag<double>, kN>{hn::Zero(d)}, in...).acc;
    if constexpr (kN == Norm::kInf) return sqrt(Finish<kN>(d, acc));
    else return Finish<kN>(d, acc);
}

/* 16-bit integers: exact in 64 bits, then one rounding to float. */
template <Norm kN>
HWY_INLINE float NormOf16(const Ipp16s *a, const Ipp16s *b, size_t len)
{
    int64_t acc = 0;
    for (size_t i = 0; i < len; ++i) {
        const int64_t x = int64_t(a[i]) - (b ? int64_t(b[i]) : 0);
        const int64_t ax = x < 0 ? -x : x;
        if constexpr (kN == Norm::kInf) acc = ax > acc ? ax : acc;
        else if constexpr (kN == Norm::kL1) acc += ax;
        else acc += x * x;
    }
    return kN == Norm::kL2 ? float(sqrt(double(acc))) : float(acc);
}

#define ORB_NORM_WORKERS(Kind)                                                                               \
    IppStatus Norm_##Kind##_32f(const float *s, size_t n, float *r)                                          \
    {                                                                                                        \
        return *r = NormOf<Norm::k##Kind, float>(n, Src<float>{s, 0.f}), ippStsNoErr;                        \
    }                                                                                                        \
    IppStatus Norm_##Kind##_64f(const double *s, size_t n, double *r)                                        \
    {                                                                                                        \
        return *r = NormOf<Norm::k##Kind, double>(n, Src<double>{s, 0.0}), ippStsNoErr;                      \
    }                                                                                                        \
    IppStatus Norm_##Kind##_64fc64f(const Ipp64fc *s, size_t n, double *r)                                   \
    {                                                                                                        \
        return *r = NormOfPairs<Norm::k##Kind>(n, SrcPairs{Parts(s)}), ippStsNoErr;                          \
    }                                                                                                        \
    IppStatus Norm_##Kind##_16s32f(const Ipp16s *s, size_t n, float *r)                                      \
    {                                                                                                        \
        return *r = NormOf16<Norm::k##Kind>(s, nullptr, n), ippStsNoErr;                                     \
    }                                                                                                        \
    IppStatus NormDiff_##Kind##_32f(const float *a, const float *b, size_t n, float *r)                      \
    {                                                                                                        \
        return *r = NormOf<Norm::k##Kind, float>(n, Src<float>{a, 0.f}, Src<float>{b, 0.f}), ippStsNoErr;    \
    }                                                                                                        \
    IppStatus NormDiff_##Kind##_64f(const double *a, const double *b, size_t n, double *r)                   \
    {                                                                                                        \
        return *r = NormOf<Norm::k##Kind, double>(n, Src<double>{a, 0.0}, Src<double>{b, 0.0}), ippStsNoErr; \
    }                                                                                                        \
    IppStatus NormDiff_##Kind##_64fc64f(const Ipp64fc *a, const Ipp64fc *b, size_t n, double *r)             \
    {                                                                                                        \
        return *r = NormOfPairs<Norm::k##Kind>(n, SrcPairs{Parts(a)}, SrcPairs{Parts(b)}), ippStsNoErr;      \
    }                                                                                                        \
    IppStatus NormDiff_##Kind##_16s32f(const Ipp16s *a, const Ipp16s *b, size_t n, float *r)                 \
    {                                                                                                        \
        return *r = NormOf16<Norm::k##Kind>(a, b, n), ippStsNoErr;                                           \
    }
ORB_NORM_WORKERS(Inf)
ORB_NORM_WORKERS(L1)
ORB_NORM_WORKERS(L2)
#undef ORB_NORM_WORKERS

/* Sum of a b, with the inputs promoted to D's type when narrower. */
template <class D>
struct DotS {
    hn::Vec<D> acc;
    template <class V>
    HWY_INLINE void Add(D d, V a, V b)
    {
        if constexpr (std::is_same_v<V, hn::Vec<D>>) acc = hn::MulAdd(a, b, acc);
        else acc = hn::MulAdd(hn::PromoteTo(d, a), hn::PromoteTo(d, b), acc);
    }
    HWY_INLINE void Merge(D, const DotS &o) { acc = hn::Add(acc, o.acc); }
};

IppStatus DotProd_64f(const double *a, const double *b, size_t len, double *dp)
{
    const Tag<double> d;
    *dp = Total(d, Fold(d, len, DotS<Tag<double>>{hn::Zero(d)}, Src<double>{a, 0.0}, Src<double>{b, 0.0}).acc);
    return ippStsNoErr;
}

IppStatus DotProd_32f64f(const float *a, const float *b, size_t len, double *dp)
{
    const Tag<double> d;
    *dp = Total(d, Fold(d, len, DotS<Tag<double>>{hn::Zero(d)}, Src<float>{a, 0.f}, Src<float>{b, 0.f}).acc);
    return ippStsNoErr;
}

/* (a.re b.re - a.im b.im) + (a.re b.im + a.im b.re) i, summed part by part;
 * a real a has no imaginary part. */
template <class D>
struct DotPairsS {
    hn::Vec<D> re, im;
    HWY_INLINE void Add(D, Cx<hn::Vec<D>> a, Cx<hn::Vec<D>> b)
    {
        re = hn::NegMulAdd(a.im, b.im, hn::MulAdd(a.re, b.re, re));
        im = hn::MulAdd(a.im, b.re, hn::MulAdd(a.re, b.im, im));
    }
    HWY_INLINE void Add(D, hn::Vec<D> a, Cx<hn::Vec<D>> b)
    {
        re = hn::MulAdd(a, b.re, re);
        im = hn::MulAdd(a, b.im, im);
    }
    HWY_INLINE void Merge(D, const DotPairsS &o)
    {
        re = hn::Add(re, o.re);
        im = hn::Add(im, o.im);
    }
};

IppStatus DotProd_64fc(const Ipp64fc *a, const Ipp64fc *b, size_t len, Ipp64fc *dp)
{
    const Tag<double> d;
    const auto s = Fold(d, len, DotPairsS<Tag<double>>{hn::Zero(d), hn::Zero(d)}, SrcPairs{Parts(a)},
                        SrcPairs{Parts(b)});
    *dp = {Total(d, s.re), Total(d, s.im)};
    return ippStsNoErr;
}

IppStatus DotProd_64f64fc(const double *a, const Ipp64fc *b, size_t len, Ipp64fc *dp)
{
    const Tag<double> d;
    const auto s =
        Fold(d, len, DotPairsS<Tag<double>>{hn::Zero(d), hn::Zero(d)}, Src<double>{a, 0.0}, SrcPairs{Parts(b)});
    *dp = {Total(d, s.re), Total(d, s.im)};
    return ippStsNoErr;
}

/* ---- Extremes of floating-point vectors ---- */

/* One pass keeps, lane by lane, the smallest and largest value seen and the
 * index where each was first seen: a strictly smaller (larger) element
 * replaces them, so NaN, which compares false, never does. Lanes start
 * from the first number of the vector at its index. Two such states run
 * side by side over alternate vectors and merge at the end, value first,
 * then the lower index. */
template <typename T>
struct Scan {
    using DI = hn::RebindToSigned<Tag<T>>;
    hn::Vec<Tag<T>> lo, hi;
    hn::Vec<DI> ilo, ihi;

    HWY_INLINE void Add(hn::Vec<Tag<T>> x, hn::Vec<DI> idx)
    {
        const DI di;
        const auto mlo = hn::Lt(x, lo), mhi = hn::Gt(x, hi);
        lo = hn::IfThenElse(mlo, x, lo);
        hi = hn::IfThenElse(mhi, x, hi);
        ilo = hn::IfThenElse(hn::RebindMask(di, mlo), idx, ilo);
        ihi = hn::IfThenElse(hn::RebindMask(di, mhi), idx, ihi);
    }
};

/* Folds lanes into one (value, index) pair: better value, or the same value
 * at a lower index. */
template <typename T>
struct Best {
    T v;
    int64_t k;
    HWY_INLINE void Put(T x, int64_t i, bool low)
    {
        if ((low ? x < v : x > v) || (x == v && i < k)) v = x, k = i;
    }
};

template <typename T>
HWY_INLINE void FoldLanes(const Scan<T> &s, Best<T> *lo, Best<T> *hi)
{
    using TI = hn::TFromD<typename Scan<T>::DI>;
    const Tag<T> d;
    const typename Scan<T>::DI di;
    HWY_ALIGN T a[hn::MaxLanes(d)], b[hn::MaxLanes(d)];
    HWY_ALIGN TI ia[hn::MaxLanes(di)], ib[hn::MaxLanes(di)];
    hn::Store(s.lo, d, a);
    hn::Store(s.hi, d, b);
    hn::Store(s.ilo, di, ia);
    hn::Store(s.ihi, di, ib);
    for (size_t k = 0; k < hn::Lanes(d); ++k) {
        lo->Put(a[k], int64_t(ia[k]), true);
        hi->Put(b[k], int64_t(ib[k]), false);
    }
}

/* The extremes and their first indices; an all-NaN vector gives NaN at 0. */
template <typename T>
HWY_INLINE void Extremes(const T *src, size_t len, size_t *kl, size_t *kh)
{
    using DI = typename Scan<T>::DI;
    using TI = hn::TFromD<DI>;
    size_t f = 0;
    while (f < len && isnan(src[f])) ++f;
    if (f == len) {
        *kl = *kh = 0;
        return;
    }
    const Tag<T> d;
    const DI di;
    const size_t n = hn::Lanes(d);
    Best<T> lo{src[f], int64_t(f)}, hi{src[f], int64_t(f)};
    size_t i = f;
    if (len - f >= 2 * n) {
        const auto v0 = hn::Set(d, src[f]);
        const auto i0 = hn::Set(di, TI(f));
        Scan<T> s0{v0, v0, i0, i0}, s1 = s0;
        auto idx = hn::Iota(di, TI(f));
        const auto step = hn::Set(di, TI(n)), step2 = hn::Set(di, TI(2 * n));
        for (; i + 2 * n <= len; i += 2 * n) {
            s0.Add(hn::LoadU(d, src + i), idx);
            s1.Add(hn::LoadU(d, src + i + n), hn::Add(idx, step));
            idx = hn::Add(idx, step2);
        }
        FoldLanes(s0, &lo, &hi);
        FoldLanes(s1, &lo, &hi);
    }
    for (; i < len; ++i) {
        lo.Put(src[i], int64_t(i), true);
        hi.Put(src[i], int64_t(i), false);
    }
    *kl = size_t(lo.k);
    *kh = size_t(hi.k);
}

/* The extreme and its first index. */
template <typename T>
HWY_INLINE IppStatus Extreme(const T *src, size_t len, T *value, int *index, Ext which)
{
    size_t kl, kh;
    Extremes(src, len, &kl, &kh);
    const size_t k = which == Ext::kMin ? kl : kh;
    *value = src[k];
    if (index) *index = int(k);
    return ippStsNoErr;
}

IppStatus Max_32f(const float *s, size_t n, float *v) { return Extreme(s, n, v, nullptr, Ext::kMax); }
IppStatus Max_64f(const double *s, size_t n, double *v) { return Extreme(s, n, v, nullptr, Ext::kMax); }
IppStatus Min_32f(const float *s, size_t n, float *v) { return Extreme(s, n, v, nullptr, Ext::kMin); }
IppStatus Min_64f(const double *s, size_t n, double *v) { return Extreme(s, n, v, nullptr, Ext::kMin); }
IppStatus MaxIndx_32f(const float *s, size_t n, float *v, int *i) { return Extreme(s, n, v, i, Ext::kMax); }
IppStatus MaxIndx_64f(const double *s, size_t n, double *v, int *i) { return Extreme(s, n, v, i, Ext::kMax); }
IppStatus MinIndx_32f(const float *s, size_t n, float *v, int *i) { return Extreme(s, n, v, i, Ext::kMin); }
IppStatus MinIndx_64f(const double *s, size_t n, double *v, int *i) { return Extreme(s, n, v, i, Ext::kMin); }

template <typename T>
HWY_INLINE IppStatus MinMaxOf(const T *src, size_t len, T *pMin, int *iMin, T *pMax, int *iMax)
{
    size_t kl, kh;
    Extremes(src, len, &kl, &kh);
    *pMin = src[kl];
    *pMax = src[kh];
    if (iMin) *iMin = int(kl);
    if (iMax) *iMax = int(kh);
    return ippStsNoErr;
}

IppStatus MinMax_32f(const float *s, size_t n, float *lo, float *hi) { return MinMaxOf(s, n, lo, nullptr, hi, nullptr); }
IppStatus MinMax_64f(const double *s, size_t n, double *lo, double *hi)
{
    return MinMaxOf(s, n, lo, nullptr, hi, nullptr);
}
IppStatus MinMaxIndx_32f(const float *s, size_t n, float *lo, int *il, float *hi, int *ih)
{
    return MinMaxOf(s, n, lo, il, hi, ih);
}
IppStatus MinMaxIndx_64f(const double *s, size_t n, double *lo, int *il, double *hi, int *ih)
{
    return MinMaxOf(s, n, lo, il, hi, ih);
}

/* ---- Integer reductions ---- */

/* The key an integer extreme compares: the value, or its magnitude as an
 * unsigned number (so |-32768| is 32768). */
template <bool kAbs, class D>
HWY_INLINE auto KeyV(D, hn::Vec<D> x)
{
    if constexpr (kAbs) return hn::BitCast(hn::RebindToUnsigned<D>(), hn::Abs(x));
    else return x;
}
template <bool kAbs, typename T>
HWY_INLINE auto KeyS(T x)
{
    using U = std::make_unsigned_t<T>;
    if constexpr (kAbs) return x < 0 ? U(U(0) - U(x)) : U(x);
    else return x;
}

/* The smallest and largest key. */
template <bool kAbs, typename T, typename K>
HWY_INLINE void IntRange(const T *src, size_t len, K *lo, K *hi)
{
    const Tag<T> d;
    using VK = decltype(KeyV<kAbs>(d, hn::Zero(d)));
    const hn::DFromV<VK> dk;
    const size_t n = hn::Lanes(d);
    K l = KeyS<kAbs>(src[0]), h = l;
    size_t i = 0;
    if (len >= 2 * n) {
        VK l0 = hn::Set(dk, l), h0 = l0, l1 = l0, h1 = l0;
        for (; i + 2 * n <= len; i += 2 * n) {
            const VK a = KeyV<kAbs>(d, hn::LoadU(d, src + i)), b = KeyV<kAbs>(d, hn::LoadU(d, src + i + n));
            l0 = hn::Min(l0, a), h0 = hn::Max(h0, a), l1 = hn::Min(l1, b), h1 = hn::Max(h1, b);
        }
        HWY_ALIGN K a[hn::MaxLanes(dk)], b[hn::MaxLanes(dk)];
        hn::Store(hn::Min(l0, l1), dk, a);
        hn::Store(hn::Max(h0, h1), dk, b);
        for (size_t k = 0; k < n; ++k) l = a[k] < l ? a[k] : l, h = b[k] > h ? b[k] : h;
    }
    for (; i < len; ++i) {
        const K x = KeyS<kAbs>(src[i]);
        l = x < l ? x : l, h = x > h ? x : h;
    }
    *lo = l, *hi = h;
}

/* The first indices of the keys a and b (both present). */
template <bool kAbs, typename T, typename K>
HWY_INLINE void IntFirst(const T *src, size_t len, K a, K b, size_t *ka, size_t *kb)
{
    const Tag<T> d;
    using VK = decltype(KeyV<kAbs>(d, hn::Zero(d)));
    const hn::DFromV<VK> dk;
    const size_t n = hn::Lanes(d);
    const VK va = hn::Set(dk, a), vb = hn::Set(dk, b);
    size_t i = 0, fa = len, fb = len;
    for (; i + n <= len && (fa == len || fb == len); i += n) {
        const VK x = KeyV<kAbs>(d, hn::LoadU(d, src + i));
        const intptr_t p = fa == len ? hn::FindFirstTrue(dk, hn::Eq(x, va)) : -1;
        const intptr_t q = fb == len ? hn::FindFirstTrue(dk, hn::Eq(x, vb)) : -1;
        if (p >= 0) fa = i + size_t(p);
        if (q >= 0) fb = i + size_t(q);
    }
    for (; i < len && (fa == len || fb == len); ++i) {
        if (fa == len && KeyS<kAbs>(src[i]) == a) fa = i;
        if (fb == len && KeyS<kAbs>(src[i]) == b) fb = i;
    }
    *ka = fa, *kb = fb;
}

#define ORB_INT_RANGE_WORKERS(T, sfx)                                                         \
    IppStatus Range_##sfx(const T *s, size_t n, T *lo, T *hi)                                 \
    {                                                                                         \
        return IntRange<false>(s, n, lo, hi), ippStsNoErr;                                    \
    }                                                                                         \
    IppStatus First_##sfx(const T *s, size_t n, T a, T b, size_t *ka, size_t *kb)             \
    {                                                                                         \
        return IntFirst<false>(s, n, a, b, ka, kb), ippStsNoErr;                              \
    }
ORB_INT_RANGE_WORKERS(Ipp8u, 8u)
ORB_INT_RANGE_WORKERS(Ipp16s, 16s)
ORB_INT_RANGE_WORKERS(Ipp32s, 32s)
#undef ORB_INT_RANGE_WORKERS
#define ORB_ABS_RANGE_WORKERS(T, U, sfx)                                                      \
    IppStatus RangeAbs_##sfx(const T *s, size_t n, U *lo, U *hi)                              \
    {                                                                                         \
        return IntRange<true>(s, n, lo, hi), ippStsNoErr;                                     \
    }                                                                                         \
    IppStatus FirstAbs_##sfx(const T *s, size_t n, U a, U b, size_t *ka, size_t *kb)          \
    {                                                                                         \
        return IntFirst<true>(s, n, a, b, ka, kb), ippStsNoErr;                               \
    }
ORB_ABS_RANGE_WORKERS(Ipp16s, Ipp16u, 16s)
ORB_ABS_RANGE_WORKERS(Ipp32s, Ipp32u, 32s)
#undef ORB_ABS_RANGE_WORKERS

/* Exact sums: 16-bit values in 32-bit lanes, emptied into the total before
 * any lane could overflow; 32-bit values in 64-bit lanes. */
IppStatus WideSum_16s(const Ipp16s *s, size_t len, int64_t *out)
{
    const Tag<int32_t> d32;
    const hn::Rebind<int16_t, Tag<int32_t>> d16;
    const size_t n = hn::Lanes(d32);
    int64_t total = 0;
    size_t i = 0;
    while (i + n <= len) {
        const size_t end = len - i > n * 32768 ? i + n * 32768 : len;
        auto a0 = hn::Zero(d32), a1 = hn::Zero(d32);
        for (; i + 2 * n <= end; i += 2 * n) {
            a0 = hn::Add(a0, hn::PromoteTo(d32, hn::LoadU(d16, s + i)));
            a1 = hn::Add(a1, hn::PromoteTo(d32, hn::LoadU(d16, s + i + n)));
        }
        for (; i + n <= end; i += n) a0 = hn::Add(a0, hn::PromoteTo(d32, hn::LoadU(d16, s + i)));
        HWY_ALIGN int32_t lanes[hn::MaxLanes(d32)];
        hn::Store(hn::Add(a0, a1), d32, lanes);
        for (size_t k = 0; k < n; ++k) total += lanes[k];
    }
    for (; i < len; ++i) total += s[i];
    *out = total;
    return ippStsNoErr;
}

IppStatus WideSum_32s(const Ipp32s *s, size_t len, int64_t *out)
{
    const Tag<int64_t> d64;
    const hn::Rebind<int32_t, Tag<int64_t>> d32;
    const size_t n = hn::Lanes(d64);
    auto a0 = hn::Zero(d64), a1 = hn::Zero(d64);
    size_t i = 0;
    for (; i + 2 * n <= len; i += 2 * n) {
        a0 = hn::Add(a0, hn::PromoteTo(d64, hn::LoadU(d32, s + i)));
        a1 = hn::Add(a1, hn::PromoteTo(d64, hn::LoadU(d32, s + i + n)));
    }
    int64_t total = hn::GetLane(hn::SumOfLanes(d64, hn::Add(a0, a1)));
    for (; i < len; ++i) total += s[i];
    *out = total;
    return ippStsNoErr;
}

/* Products of 16-bit values are exact in 32 bits; their sum in 64. */
IppStatus Dot_16s(const Ipp16s *a, const Ipp16s *b, size_t len, int64_t *out)
{
    const Tag<int64_t> d64;
    const hn::Rebind<int32_t, Tag<int64_t>> d32;
    const hn::Rebind<int16_t, Tag<int64_t>> d16;
    const size_t n = hn::Lanes(d64);
    auto acc = hn::Zero(d64);
    size_t i = 0;
    for (; i + n <= len; i += n) {
        const auto p = hn::Mul(hn::PromoteTo(d32, hn::LoadU(d16, a + i)), hn::PromoteTo(d32, hn::LoadU(d16, b + i)));
        acc = hn::Add(acc, hn::PromoteTo(d64, p));
    }
    int64_t total = hn::GetLane(hn::SumOfLanes(d64, acc));
    for (; i < len; ++i) total += int32_t(a[i]) * int32_t(b[i]);
    *out = total;
    return ippStsNoErr;
}

IppStatus Count_32s(const Ipp32s *s, size_t len, Ipp32s lo, Ipp32s hi, int *out)
{
    const Tag<int32_t> d;
    const size_t n = hn::Lanes(d);
    const auto vlo = hn::Set(d, lo), vhi = hn::Set(d, hi);
    size_t count = 0, i = 0;
    for (; i + n <= len; i += n) {
        const auto x = hn::LoadU(d, s + i);
        count += hn::CountTrue(d, hn::And(hn::Gt(x, vlo), hn::Lt(x, vhi)));
    }
    for (; i < len; ++i) count += s[i] > lo && s[i] < hi;
    *out = int(count);
    return ippStsNoErr;
}

/* ---- Element-wise extremes of two vectors ---- */

template <bool kMax>
struct EveryOp {
    template <class D>
    HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> a, hn::Vec<D> b) const
    {
        const auto r = kMax ? hn::Max(a, b) : hn::Min(a, b);
        if constexpr (hwy::IsFloat<hn::TFromD<D>>()) return hn::IfThenElse(hn::IsNaN(b), b, hn::IfThenElse(hn::IsNaN(a), a, r));
        else return r;
    }
};

#define ORB_EVERY_WORKERS(T, sfx)                                                                              \
    IppStatus MaxEvery_##sfx(const T *a, const T *b, T *o, size_t n) { return Pairwise(a, b, o, n, EveryOp<true>()); } \
    IppStatus MinEvery_##sfx(const T *a, const T *b, T *o, size_t n) { return Pairwise(a, b, o, n, EveryOp<false>()); }
ORB_EVERY_WORKERS(Ipp8u, 8u)
ORB_EVERY_WORKERS(Ipp16u, 16u)
ORB_EVERY_WORKERS(Ipp32f, 32f)
ORB_EVERY_WORKERS(Ipp64f, 64f)
#undef ORB_EVERY_WORKERS

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
namespace {

/* ---- Integer reductions: the range first, then where it was first met. ---- */

HWY_EXPORT(Range_8u);
HWY_EXPORT(Range_16s);
HWY_EXPORT(Range_32s);
HWY_EXPORT(First_8u);
HWY_EXPORT(First_16s);
HWY_EXPORT(First_32s);
HWY_EXPORT(RangeAbs_16s);
HWY_EXPORT(RangeAbs_32s);
HWY_EXPORT(FirstAbs_16s);
HWY_EXPORT(FirstAbs_32s);
HWY_EXPORT(WideSum_16s);
HWY_EXPORT(WideSum_32s);
HWY_EXPORT(Dot_16s);
HWY_EXPORT(Count_32s);

inline void RangeOf(const Ipp8u *s, size_t n, Ipp8u *lo, Ipp8u *hi) { HWY_DYNAMIC_DISPATCH(Range_8u)(s, n, lo, hi); }
inline void RangeOf(const Ipp16s *s, size_t n, Ipp16s *lo, Ipp16s *hi) { HWY_DYNAMIC_DISPATCH(Range_16s)(s, n, lo, hi); }
inline void RangeOf(const Ipp32s *s, size_t n, Ipp32s *lo, Ipp32s *hi) { HWY_DYNAMIC_DISPATCH(Range_32s)(s, n, lo, hi); }
inline void FirstOf(const Ipp8u *s, size_t n, Ipp8u a, Ipp8u b, size_t *ka, size_t *kb)
{
    HWY_DYNAMIC_DISPATCH(First_8u)(s, n, a, b, ka, kb);
}
inline void FirstOf(const Ipp16s *s, size_t n, Ipp16s a, Ipp16s b, size_t *ka, size_t *kb)
{
    HWY_DYNAMIC_DISPATCH(First_16s)(s, n, a, b, ka, kb);
}
inline void FirstOf(const Ipp32s *s, size_t n, Ipp32s a, Ipp32s b, size_t *ka, size_t *kb)
{
    HWY_DYNAMIC_DISPATCH(First_32s)(s, n, a, b, ka, kb);
}
inline void RangeOf(const Ipp16s *s, size_t n, Ipp16u *lo, Ipp16u *hi) { HWY_DYNAMIC_DISPATCH(RangeAbs_16s)(s, n, lo, hi); }
inline void RangeOf(const Ipp32s *s, size_t n, Ipp32u *lo, Ipp32u *hi) { HWY_DYNAMIC_DISPATCH(RangeAbs_32s)(s, n, lo, hi); }
inline void FirstOf(const Ipp16s *s, size_t n, Ipp16u a, Ipp16u b, size_t *ka, size_t *kb)
{
    HWY_DYNAMIC_DISPATCH(FirstAbs_16s)(s, n, a, b, ka, kb);
}
inline void FirstOf(const Ipp32s *s, size_t n, Ipp32u a, Ipp32u b, size_t *ka, size_t *kb)
{
    HWY_DYNAMIC_DISPATCH(FirstAbs_32s)(s, n, a, b, ka, kb);
}

template <typename T>
IppStatus IntExtremes(const T *src, int len, T *pMin, int *iMin, T *pMax, int *iMax)
{
    IppStatus st = CheckArgs(len, src);
    if (st != ippStsNoErr) return st;
    T lo, hi;
    RangeOf(src, size_t(len), &lo, &hi);
    if (iMin || iMax) {
        size_t kl, kh;
        FirstOf(src, size_t(len), lo, hi, &kl, &kh);
        if (iMin) *iMin = int(kl);
        if (iMax) *iMax = int(kh);
    }
    if (pMin) *pMin = lo;
    if (pMax) *pMax = hi;
    return ippStsNoErr;
}

/* Magnitudes as unsigned values, saturated when stored: |-32768| is 32767. */
template <typename T>
using Mag = std::make_unsigned_t<T>;
template <typename T>
inline Mag<T> MagOf(T x)
{
    return x < 0 ? Mag<T>(Mag<T>(0) - Mag<T>(x)) : Mag<T>(x);
}

template <typename T>
IppStatus AbsExtreme(const T *src, int len, T *value, int *index, Ext which)
{
    IppStatus st = CheckArgs(len, src, value);
    if (st != ippStsNoErr) return st;
    Mag<T> lo, hi;
    RangeOf(src, size_t(len), &lo, &hi);
    const Mag<T> best = which == Ext::kMax ? hi : lo;
    if (index) {
        size_t k, unused;
        FirstOf(src, size_t(len), best, best, &k, &unused);
        *index = int(k);
    }
    *value = best > Mag<T>(std::numeric_limits<T>::max()) ? std::numeric_limits<T>::max() : T(best);
    return ippStsNoErr;
}

/* v 2^-scaleFactor, rounded half to even, saturated to 32 bits; |v| < 2^62. */
inline Ipp32s Scaled(int64_t v, int sf)
{
    if (sf > 0) {
        if (sf > 62) return 0;
        const int64_t q = v >> sf, r = v - (q << sf), half = int64_t(1) << (sf - 1);
        v = q + (r > half || (r == half && (q & 1)));
    } else if (sf < 0) {
        if (v == 0) return 0;
        if (sf <= -32 || (v < 0 ? -v : v) > (int64_t(1) << (32 + sf))) return v < 0 ? INT32_MIN : INT32_MAX;
        v *= int64_t(1) << -sf;
    }
    return v > INT32_MAX ? INT32_MAX : v < INT32_MIN ? INT32_MIN : Ipp32s(v);
}

template <typename T>
IppStatus ScaledSum(const T *src, int len, Ipp32s *sum, int sf)
{
    IppStatus st = CheckArgs(len, src, sum);
    if (st != ippStsNoErr) return st;
    int64_t s = 0;
    if constexpr (sizeof(T) == 2) HWY_DYNAMIC_DISPATCH(WideSum_16s)(src, size_t(len), &s);
    else HWY_DYNAMIC_DISPATCH(WideSum_32s)(src, size_t(len), &s);
    *sum = Scaled(s, sf);
    return ippStsNoErr;
}

/* The e of m 2^e with 1/2 <= m < 1 for the largest magnitude. */
template <typename T>
IppStatus MaxOrderOf(const T *src, int len, int *order)
{
    IppStatus st = CheckArgs(len, src, order);
    if (st != ippStsNoErr) return st;
    if constexpr (std::is_integral_v<T>) {
        Mag<T> m = 0;
        for (int i = 0; i < len; ++i) m = MagOf(src[i]) > m ? MagOf(src[i]) : m;
        int e = 0;
        while (m) ++e, m >>= 1;
        *order = e;
    } else {
        T m = 0;
        bool nan = false;
        for (int i = 0; i < len; ++i) {
            nan |= isnan(src[i]);
            m = fabs(src[i]) > m ? fabs(src[i]) : m;
        }
        int e = 0;
        if (isinf(m)) e = std::numeric_limits<T>::max_exponent + 1;
        else if (m > 0) frexp(m, &e);
        *order = e;
        if (nan) return ippStsNanArg;
    }
    return ippStsNoErr;
}

/* Neighbour pairs as the header comment says. */
template <typename T>
IppStatus ZeroCross(const T *src, Ipp32u len, Ipp32f *val, IppsZCType type)
{
    IppStatus st = CheckArgs(len, src, val);
    if (st == ippStsNoErr && type != ippZCR && type != ippZCXor && type != ippZCC) st = ippStsRangeErr;
    if (st != ippStsNoErr) return st;
    int64_t twice = 0;  // twice the measure: whole for ZCR and ZCXor, halves for ZCC
    for (Ipp32u n = 1; n < len; ++n) {
        const T a = src[n - 1], b = src[n];
        if (type == ippZCXor) {
            twice += 2 * (std::signbit(a) != std::signbit(b));
        } else if (type == ippZCR) {
            if (a == a && b == b) twice += 2 * ((a < 0) != (b < 0));
        } else if (a == a && b == b) {
            const int sa = (a > 0) - (a < 0), sb = (b > 0) - (b < 0);
            twice += sa > sb ? sa - sb : sb - sa;
        }
    }
    *val = Ipp32f(double(twice) / 2);
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels

using orb_kernels::Ext;

extern "C" {
#define ORB_INT_EXTREMES(T, sfx)                                                                                 \
    IppStatus ippsMax_##sfx(const T *pSrc, int len, T *pMax)                                                     \
    {                                                                                                            \
        IppStatus st = orb_kernels::CheckArgs(len, pSrc, pMax);                                                  \
        return st ? st : orb_kernels::IntExtremes<T>(pSrc, len, nullptr, nullptr, pMax, nullptr);                \
    }                                                                                                            \
    IppStatus ippsMin_##sfx(const T *pSrc, int len, T *pMin)                                                     \
    {                                                                                                            \
        IppStatus st = orb_kernels::CheckArgs(len, pSrc, pMin);                                                  \
        return st ? st : orb_kernels::IntExtremes<T>(pSrc, len, pMin, nullptr, nullptr, nullptr);                \
    }                                                                                                            \
    IppStatus ippsMaxIndx_##sfx(const T *pSrc, int len, T *pMax, int *pIndx)                                     \
    {                                                                                                            \
        IppStatus st = orb_kernels::CheckArgs(len, pSrc, pMax);                                                  \
        return st ? st : orb_kernels::IntExtremes<T>(pSrc, len, nullptr, nullptr, pMax, pIndx);                  \
    }                                                                                                            \
    IppStatus ippsMinIndx_##sfx(const T *pSrc, int len, T *pMin, int *pIndx)                                     \
    {                                                                                                            \
        IppStatus st = orb_kernels::CheckArgs(len, pSrc, pMin);                                                  \
        return st ? st : orb_kernels::IntExtremes<T>(pSrc, len, pMin, pIndx, nullptr, nullptr);                  \
    }                                                                                                            \
    IppStatus ippsMinMax_##sfx(const T *pSrc, int len, T *pMin, T *pMax)                                         \
    {                                                                                                            \
        IppStatus st = orb_kernels::CheckArgs(len, pSrc, pMin, pMax);                                            \
        return st ? st : orb_kernels::IntExtremes<T>(pSrc, len, pMin, nullptr, pMax, nullptr);                   \
    }
ORB_INT_EXTREMES(Ipp16s, 16s)
ORB_INT_EXTREMES(Ipp32s, 32s)
#undef ORB_INT_EXTREMES

IppStatus ippsMinMax_8u(const Ipp8u *pSrc, int len, Ipp8u *pMin, Ipp8u *pMax)
{
    IppStatus st = orb_kernels::CheckArgs(len, pSrc, pMin, pMax);
    return st ? st : orb_kernels::IntExtremes<Ipp8u>(pSrc, len, pMin, nullptr, pMax, nullptr);
}

#define ORB_INT_MINMAXINDX(T, sfx)                                                                      \
    IppStatus ippsMinMaxIndx_##sfx(const T *pSrc, int len, T *pMin, int *pMinIndx, T *pMax, int *pMaxIndx) \
    {                                                                                                   \
        IppStatus st = orb_kernels::CheckArgs(len, pSrc, pMin, pMinIndx, pMax, pMaxIndx);               \
        return st ? st : orb_kernels::IntExtremes<T>(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx);        \
    }
ORB_INT_MINMAXINDX(Ipp16s, 16s)
ORB_INT_MINMAXINDX(Ipp32s, 32s)
#undef ORB_INT_MINMAXINDX

#define ORB_ABS_EXTREMES(T, sfx)                                                                                      \
    IppStatus ippsMaxAbs_##sfx(const T *pSrc, int len, T *pMaxAbs)                                                    \
    {                                                                                                                 \
        return orb_kernels::AbsExtreme(pSrc, len, pMaxAbs, nullptr, Ext::kMax);                                       \
    }                                                                                                                 \
    IppStatus ippsMinAbs_##sfx(const T *pSrc, int len, T *pMinAbs)                                                    \
    {                                                                                                                 \
        return orb_kernels::AbsExtreme(pSrc, len, pMinAbs, nullptr, Ext::kMin);                                       \
    }                                                                                                                 \
    IppStatus ippsMaxAbsIndx_##sfx(const T *pSrc, int len, T *pMaxAbs, int *pIndx)                                    \
    {                                                                                                                 \
        IppStatus st = orb_kernels::CheckArgs(len, pSrc, pMaxAbs, pIndx);                                             \
        return st ? st : orb_kernels::AbsExtreme(pSrc, len, pMaxAbs, pIndx, Ext::kMax);                               \
    }                                                                                                                 \
    IppStatus ippsMinAbsIndx_##sfx(const T *pSrc, int len, T *pMinAbs, int *pIndx)                                    \
    {                                                                                                                 \
        IppStatus st = orb_kernels::CheckArgs(len, pSrc, pMinAbs, pIndx);                                             \
        return st ? st : orb_kernels::AbsExtreme(pSrc, len, pMinAbs, pIndx, Ext::kMin);                               \
    }
ORB_ABS_EXTREMES(Ipp16s, 16s)
ORB_ABS_EXTREMES(Ipp32s, 32s)
#undef ORB_ABS_EXTREMES

IppStatus ippsSum_16s32s_Sfs(const Ipp16s *pSrc, int len, Ipp32s *pSum, int scaleFactor)
{
    return orb_kernels::ScaledSum(pSrc, len, pSum, scaleFactor);
}
IppStatus ippsSum_32s_Sfs(const Ipp32s *pSrc, int len, Ipp32s *pSum, int scaleFactor)
{
    return orb_kernels::ScaledSum(pSrc, len, pSum, scaleFactor);
}

IppStatus ippsDotProd_16s64s(const Ipp16s *pSrc1, const Ipp16s *pSrc2, int len, Ipp64s *pDp)
{
    IppStatus st = orb_kernels::CheckArgs(len, pSrc1, pSrc2, pDp);
    if (st != ippStsNoErr) return st;
    return HWY_DYNAMIC_DISPATCH(orb_kernels::Dot_16s)(pSrc1, pSrc2, size_t(len), pDp);
}

IppStatus ippsCountInRange_32s(const Ipp32s *pSrc, int len, int *pCounts, Ipp32s lowerBound, Ipp32s upperBound)
{
    IppStatus st = orb_kernels::CheckArgs(len, pSrc, pCounts);
    if (st == ippStsNoErr) st = orb_kernels::Refuse(lowerBound > upperBound, ippStsRangeErr);
    if (st != ippStsNoErr) return st;
    return HWY_DYNAMIC_DISPATCH(orb_kernels::Count_32s)(pSrc, size_t(len), lowerBound, upperBound, pCounts);
}

IppStatus ippsMaxOrder_16s(const Ipp16s *pSrc, int len, int *pOrder) { return orb_kernels::MaxOrderOf(pSrc, len, pOrder); }
IppStatus ippsMaxOrder_32s(const Ipp32s *pSrc, int len, int *pOrder) { return orb_kernels::MaxOrderOf(pSrc, len, pOrder); }
IppStatus ippsMaxOrder_32f(const Ipp32f *pSrc, int len, int *pOrder) { return orb_kernels::MaxOrderOf(pSrc, len, pOrder); }
IppStatus ippsMaxOrder_64f(const Ipp64f *pSrc, int len, int *pOrder) { return orb_kernels::MaxOrderOf(pSrc, len, pOrder); }

IppStatus ippsZeroCrossing_16s32f(const Ipp16s *pSrc, Ipp32u len, Ipp32f *pValZCR, IppsZCType zcType)
{
    return orb_kernels::ZeroCross(pSrc, len, pValZCR, zcType);
}
IppStatus ippsZeroCrossing_32f(const Ipp32f *pSrc, Ipp32u len, Ipp32f *pValZCR, IppsZCType zcType)
{
    return orb_kernels::ZeroCross(pSrc, len, pValZCR, zcType);
}
}

/* ---- Vectorised entry points ---- */

#define ORB_REDUCE(worker, T, R)                                                                         \
    ORB_ENTRY(worker, (const T *pSrc, int len, R *pRes), (len, pSrc, pRes), (pSrc, size_t(len), pRes))
#define ORB_REDUCE_HINT(worker, T, R, ...)                                                               \
    ORB_ENTRY(worker, (const T *pSrc, int len, R *pRes, IppHintAlgorithm hint), (len, pSrc, pRes),       \
              (pSrc, size_t(len), pRes, int(hint == ippAlgHintAccurate)) __VA_OPT__(, ) __VA_ARGS__)
#define ORB_REDUCE_TWO(worker, T1, T2, R)                                                                 \
    ORB_ENTRY(worker, (const T1 *pSrc1, const T2 *pSrc2, int len, R *pRes), (len, pSrc1, pSrc2, pRes),     \
              (pSrc1, pSrc2, size_t(len), pRes))
#define ORB_INDX(worker, T)                                                                              \
    ORB_ENTRY(worker, (const T *pSrc, int len, T *pRes, int *pIndx), (len, pSrc, pRes), (pSrc, size_t(len), pRes, pIndx))

ORB_REDUCE(Sum_64f, Ipp64f, Ipp64f)
ORB_REDUCE(Sum_64fc, Ipp64fc, Ipp64fc)
ORB_REDUCE_HINT(Sum_32f, Ipp32f, Ipp32f)
ORB_REDUCE(Mean_64f, Ipp64f, Ipp64f)
ORB_REDUCE(Mean_64fc, Ipp64fc, Ipp64fc)
ORB_REDUCE_HINT(Mean_32f, Ipp32f, Ipp32f)
ORB_ENTRY(StdDev_64f, (const Ipp64f *pSrc, int len, Ipp64f *pRes), (len, pSrc, pRes), (pSrc, size_t(len), pRes),
          orb_kernels::Refuse(len < 2, ippStsSizeErr))
ORB_REDUCE_HINT(StdDev_32f, Ipp32f, Ipp32f, orb_kernels::Refuse(len < 2, ippStsSizeErr))
ORB_ENTRY(MeanStdDev_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMean, Ipp64f *pStdDev), (len, pSrc, pMean, pStdDev),
          (pSrc, size_t(len), pMean, pStdDev), orb_kernels::Refuse(len < 2, ippStsSizeErr))
ORB_ENTRY(MeanStdDev_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMean, Ipp32f *pStdDev, IppHintAlgorithm hint),
          (len, pSrc, pMean, pStdDev), (pSrc, size_t(len), pMean, pStdDev, int(hint == ippAlgHintAccurate)),
          orb_kernels::Refuse(len < 2, ippStsSizeErr))

#define ORB_NORM_ENTRIES(Kind)                                    \
    ORB_REDUCE(Norm_##Kind##_32f, Ipp32f, Ipp32f)                 \
    ORB_REDUCE(Norm_##Kind##_64f, Ipp64f, Ipp64f)                 \
    ORB_REDUCE(Norm_##Kind##_16s32f, Ipp16s, Ipp32f)              \
    ORB_REDUCE(Norm_##Kind##_64fc64f, Ipp64fc, Ipp64f)            \
    ORB_REDUCE_TWO(NormDiff_##Kind##_32f, Ipp32f, Ipp32f, Ipp32f) \
    ORB_REDUCE_TWO(NormDiff_##Kind##_64f, Ipp64f, Ipp64f, Ipp64f) \
    ORB_REDUCE_TWO(NormDiff_##Kind##_16s32f, Ipp16s, Ipp16s, Ipp32f) \
    ORB_REDUCE_TWO(NormDiff_##Kind##_64fc64f, Ipp64fc, Ipp64fc, Ipp64f)
ORB_NORM_ENTRIES(Inf)
ORB_NORM_ENTRIES(L1)
ORB_NORM_ENTRIES(L2)
#undef ORB_NORM_ENTRIES

ORB_REDUCE_TWO(DotProd_32f64f, Ipp32f, Ipp32f, Ipp64f)
ORB_REDUCE_TWO(DotProd_64f, Ipp64f, Ipp64f, Ipp64f)
ORB_REDUCE_TWO(DotProd_64fc, Ipp64fc, Ipp64fc, Ipp64fc)
ORB_REDUCE_TWO(DotProd_64f64fc, Ipp64f, Ipp64fc, Ipp64fc)

ORB_REDUCE(Max_32f, Ipp32f, Ipp32f)
ORB_REDUCE(Max_64f, Ipp64f, Ipp64f)
ORB_REDUCE(Min_32f, Ipp32f, Ipp32f)
ORB_REDUCE(Min_64f, Ipp64f, Ipp64f)
ORB_INDX(MaxIndx_32f, Ipp32f)
ORB_INDX(MaxIndx_64f, Ipp64f)
ORB_INDX(MinIndx_32f, Ipp32f)
ORB_INDX(MinIndx_64f, Ipp64f)
ORB_ENTRY(MinMax_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMin, Ipp32f *pMax), (len, pSrc, pMin, pMax),
          (pSrc, size_t(len), pMin, pMax))
ORB_ENTRY(MinMax_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMin, Ipp64f *pMax), (len, pSrc, pMin, pMax),
          (pSrc, size_t(len), pMin, pMax))
ORB_ENTRY(MinMaxIndx_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMin, int *pMinIndx, Ipp32f *pMax, int *pMaxIndx),
          (len, pSrc, pMin, pMinIndx, pMax, pMaxIndx), (pSrc, size_t(len), pMin, pMinIndx, pMax, pMaxIndx))
ORB_ENTRY(MinMaxIndx_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMin, int *pMinIndx, Ipp64f *pMax, int *pMaxIndx),
          (len, pSrc, pMin, pMinIndx, pMax, pMaxIndx), (pSrc, size_t(len), pMin, pMinIndx, pMax, pMaxIndx))

#define ORB_EVERY_ENTRY(worker, T)                                                                           \
    ORB_ENTRY(worker, (const T *pSrc1, const T *pSrc2, T *pDst, Ipp32u len), (len, pSrc1, pSrc2, pDst), \
              (pSrc1, pSrc2, pDst, size_t(len)))
ORB_EVERY_ENTRY(MaxEvery_8u, Ipp8u)
ORB_EVERY_ENTRY(MaxEvery_16u, Ipp16u)
ORB_EVERY_ENTRY(MaxEvery_32f, Ipp32f)
ORB_EVERY_ENTRY(MaxEvery_64f, Ipp64f)
ORB_EVERY_ENTRY(MinEvery_8u, Ipp8u)
ORB_EVERY_ENTRY(MinEvery_16u, Ipp16u)
ORB_EVERY_ENTRY(MinEvery_32f, Ipp32f)
ORB_EVERY_ENTRY(MinEvery_64f, Ipp64f)
#endif  // HWY_ONCE
