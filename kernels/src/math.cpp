/* Unary math and normalisation: ippsAbs, ippsSqr, ippsSqrt, ippsExp, ippsLn,
 * ippsArctan and ippsNormalize_64f.
 *
 * Domain faults follow the primitives' documented special cases: they are
 * warnings, and every element is still computed.
 *   Sqrt  x < 0 (including -inf): NaN, ippStsSqrtNegArg. -0 gives -0.
 *   Ln    x < 0: NaN, ippStsLnNegArg; 0 <= x < smallest normal (zeros and
 *         subnormals): -inf, ippStsLnZeroArg. When both occur the status
 *         is ippStsLnNegArg.
 *   Exp   overflow gives +inf and underflow 0 or a subnormal, without a
 *         warning.
 * ippsNormalize_64f refuses a divisor whose magnitude is below the smallest
 * normal (ippStsDivByZeroErr) and then writes nothing.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "math.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <float.h>
#include <math.h>

#include "entry.h"
#include "ipps.h"
#include "loops-inl.h"
#include "math-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

struct AbsOp {
    template <class D, class V>
    HWY_INLINE V operator()(D, V x) const { return hn::Abs(x); }
};

struct SqrOp {
    template <class D, class V>
    HWY_INLINE V operator()(D, V x) const { return hn::Mul(x, x); }
};

/* Remembers which lanes saw a negative argument. */
template <class D>
struct SqrtOp {
    Faults<D> neg;
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x)
    {
        neg.Note(d, hn::Lt(x, hn::Zero(d)));
        return hn::Sqrt(x);
    }
};

struct ExpOp {
    template <class D, class V>
    HWY_INLINE V operator()(D d, V x) const { return ExpKernel(d, x); }
};

template <class D>
struct LnOp {
    Faults<D> neg, tiny;  // x < 0; x below the smallest normal (negatives too)
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x)
    {
        using T = hn::TFromD<D>;
        const auto is_neg = hn::Lt(x, hn::Zero(d));
        const auto is_tiny = hn::Lt(x, hn::Set(d, sizeof(T) == 8 ? T(DBL_MIN) : T(FLT_MIN)));
        neg.Note(d, is_neg);
        tiny.Note(d, is_tiny);
        const hn::Vec<D> inf = hn::Set(d, T(HUGE_VAL));
        hn::Vec<D> y = LnKernel(d, x);
        y = hn::IfThenElse(is_tiny, hn::Neg(inf), y);
        y = hn::IfThenElse(is_neg, hn::Set(d, T(NAN)), y);
        y = hn::IfThenElse(hn::Eq(x, inf), inf, y);
        return hn::IfThenElse(hn::IsNaN(x), hn::Add(x, x), y);
    }
};

struct AtanOp {
    template <class D, class V>
    HWY_INLINE V operator()(D d, V x) const { return AtanKernel(d, x); }
};

template <class D>
struct NormalizeOp {
    hn::Vec<D> sub, div;
    HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> x) const { return hn::Div(hn::Sub(x, sub), div); }
};

/* (a + bi)^2 = (|a| - |b|)(|a| + |b|) + 2ab i. The factored real part has no
 * cancellation; equal magnitudes give +0 even where |a| + |b| overflows. */
struct SqrPairsOp {
    template <class D, class V>
    HWY_INLINE Cx<V> operator()(D d, Cx<V> z) const
    {
        const V aa = hn::Abs(z.re), ab = hn::Abs(z.im);
        const V diff = hn::Sub(aa, ab);
        return {hn::IfThenZeroElse(hn::Eq(diff, hn::Zero(d)), hn::Mul(diff, hn::Add(aa, ab))),
                hn::Mul(hn::Mul(z.re, z.im), hn::Set(d, 2.0))};
    }
};

struct SqrtPairsOp {
    template <class D, class V>
    HWY_INLINE Cx<V> operator()(D d, Cx<V> z) const
    {
        ComplexSqrtKernel(d, z.re, z.im);
        return z;
    }
};

IppStatus Abs_32f(const float *src, float *dst, size_t len) { return Map(src, dst, len, AbsOp()); }
IppStatus Abs_64f(const double *src, double *dst, size_t len) { return Map(src, dst, len, AbsOp()); }
IppStatus Sqr_32f(const float *src, float *dst, size_t len) { return Map(src, dst, len, SqrOp()); }
IppStatus Sqr_64f(const double *src, double *dst, size_t len) { return Map(src, dst, len, SqrOp()); }
IppStatus Exp_32f(const float *src, float *dst, size_t len) { return Map(src, dst, len, ExpOp()); }
IppStatus Exp_64f(const double *src, double *dst, size_t len) { return Map(src, dst, len, ExpOp()); }
IppStatus Arctan_32f(const float *src, float *dst, size_t len) { return Map(src, dst, len, AtanOp()); }
IppStatus Arctan_64f(const double *src, double *dst, size_t len) { return Map(src, dst, len, AtanOp()); }

template <typename T>
HWY_INLINE IppStatus SqrtT(const T *src, T *dst, size_t len)
{
    const Tag<T> d;
    SqrtOp<Tag<T>> op{Faults(d)};
    Map(src, dst, len, op);
    return op.neg.Any(d) ? ippStsSqrtNegArg : ippStsNoErr;
}
IppStatus Sqrt_32f(const float *src, float *dst, size_t len) { return SqrtT(src, dst, len); }
IppStatus Sqrt_64f(const double *src, double *dst, size_t len) { return SqrtT(src, dst, len); }

template <typename T>
HWY_INLINE IppStatus LnT(const T *src, T *dst, size_t len)
{
    const Tag<T> d;
    LnOp<Tag<T>> op{Faults(d), Faults(d)};
    Map(src, dst, len, op);
    if (op.neg.Any(d)) return ippStsLnNegArg;
    return op.tiny.Any(d) ? ippStsLnZeroArg : ippStsNoErr;
}
IppStatus Ln_32f(const float *src, float *dst, size_t len) { return LnT(src, dst, len); }
IppStatus Ln_64f(const double *src, double *dst, size_t len) { return LnT(src, dst, len); }

IppStatus Normalize_64f(const double *src, double *dst, size_t len, double sub, double div)
{
    const Tag<double> d;
    return Map(src, dst, len, NormalizeOp<Tag<double>>{hn::Set(d, sub), hn::Set(d, div)});
}

IppStatus Sqr_64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len) { return MapPairs(src, dst, len, SqrPairsOp()); }
IppStatus Sqrt_64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len) { return MapPairs(src, dst, len, SqrtPairsOp()); }

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
ORB_MAP(Abs_32f, Ipp32f, Ipp32f)
ORB_MAP(Abs_64f, Ipp64f, Ipp64f)
ORB_MAP(Sqr_32f, Ipp32f, Ipp32f)
ORB_MAP(Sqr_64f, Ipp64f, Ipp64f)
ORB_MAP(Sqr_64fc, Ipp64fc, Ipp64fc)
ORB_MAP(Sqrt_32f, Ipp32f, Ipp32f)
ORB_MAP(Sqrt_64f, Ipp64f, Ipp64f)
ORB_MAP(Sqrt_64fc, Ipp64fc, Ipp64fc)
ORB_MAP(Exp_32f, Ipp32f, Ipp32f)
ORB_MAP(Exp_64f, Ipp64f, Ipp64f)
ORB_MAP(Ln_32f, Ipp32f, Ipp32f)
ORB_MAP(Ln_64f, Ipp64f, Ipp64f)
ORB_MAP(Arctan_32f, Ipp32f, Ipp32f)
ORB_MAP(Arctan_64f, Ipp64f, Ipp64f)
/* A divisor below the smallest normal is refused after the arguments. */
ORB_ENTRY(Normalize_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len, Ipp64f vSub, Ipp64f vDiv), (len, pSrc, pDst),
          (pSrc, pDst, size_t(len), vSub, vDiv), orb_kernels::Refuse(fabs(vDiv) < DBL_MIN, ippStsDivByZeroErr))
#endif  // HWY_ONCE
