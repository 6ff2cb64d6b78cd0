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

#include "ipps.h"
#include "loops-inl.h"
#include "math-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

template <typename T>
using Tag = hn::ScalableTag<T>;

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
    hn::Vec<D> neg;
    explicit SqrtOp(D d) : neg(hn::Zero(d)) {}
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x)
    {
        neg = hn::Or(neg, hn::VecFromMask(d, hn::Lt(x, hn::Zero(d))));
        return hn::Sqrt(x);
    }
};

struct ExpOp {
    template <class D, class V>
    HWY_INLINE V operator()(D d, V x) const { return ExpKernel(d, x); }
};

template <class D>
struct LnOp {
    hn::Vec<D> neg, tiny;  // x < 0; x below the smallest normal (negatives too)
    explicit LnOp(D d) : neg(hn::Zero(d)), tiny(hn::Zero(d)) {}
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x)
    {
        using T = hn::TFromD<D>;
        const auto is_neg = hn::Lt(x, hn::Zero(d));
        const auto is_tiny = hn::Lt(x, hn::Set(d, sizeof(T) == 8 ? T(DBL_MIN) : T(FLT_MIN)));
        neg = hn::Or(neg, hn::VecFromMask(d, is_neg));
        tiny = hn::Or(tiny, hn::VecFromMask(d, is_tiny));
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
struct ComplexSqrOp {
    template <class D, class V>
    HWY_INLINE void operator()(D d, V &re, V &im) const
    {
        const V aa = hn::Abs(re), ab = hn::Abs(im);
        const V diff = hn::Sub(aa, ab);
        const V r = hn::IfThenZeroElse(hn::Eq(diff, hn::Zero(d)), hn::Mul(diff, hn::Add(aa, ab)));
        im = hn::Mul(hn::Mul(re, im), hn::Set(d, 2.0));
        re = r;
    }
};

struct ComplexSqrtOp {
    template <class D, class V>
    HWY_INLINE void operator()(D d, V &re, V &im) const { ComplexSqrtKernel(d, re, im); }
};

template <class D>
HWY_INLINE bool AnyLane(D d, hn::Vec<D> flags)
{
    return !hn::AllFalse(d, hn::MaskFromVec(flags));
}

template <typename T, class Op>
HWY_INLINE IppStatus Apply(const T *src, T *dst, size_t len, Op op)
{
    Map(Tag<T>(), src, dst, len, op);
    return ippStsNoErr;
}

IppStatus AbsF32(const float *src, float *dst, size_t len) { return Apply(src, dst, len, AbsOp()); }
IppStatus AbsF64(const double *src, double *dst, size_t len) { return Apply(src, dst, len, AbsOp()); }
IppStatus SqrF32(const float *src, float *dst, size_t len) { return Apply(src, dst, len, SqrOp()); }
IppStatus SqrF64(const double *src, double *dst, size_t len) { return Apply(src, dst, len, SqrOp()); }
IppStatus ExpF32(const float *src, float *dst, size_t len) { return Apply(src, dst, len, ExpOp()); }
IppStatus ExpF64(const double *src, double *dst, size_t len) { return Apply(src, dst, len, ExpOp()); }
IppStatus AtanF32(const float *src, float *dst, size_t len) { return Apply(src, dst, len, AtanOp()); }
IppStatus AtanF64(const double *src, double *dst, size_t len) { return Apply(src, dst, len, AtanOp()); }

template <typename T>
HWY_INLINE IppStatus SqrtT(const T *src, T *dst, size_t len)
{
    const Tag<T> d;
    SqrtOp<Tag<T>> op(d);
    Map(d, src, dst, len, op);
    return AnyLane(d, op.neg) ? ippStsSqrtNegArg : ippStsNoErr;
}
IppStatus SqrtF32(const float *src, float *dst, size_t len) { return SqrtT(src, dst, len); }
IppStatus SqrtF64(const double *src, double *dst, size_t len) { return SqrtT(src, dst, len); }

template <typename T>
HWY_INLINE IppStatus LnT(const T *src, T *dst, size_t len)
{
    const Tag<T> d;
    LnOp<Tag<T>> op(d);
    Map(d, src, dst, len, op);
    if (AnyLane(d, op.neg)) return ippStsLnNegArg;
    return AnyLane(d, op.tiny) ? ippStsLnZeroArg : ippStsNoErr;
}
IppStatus LnF32(const float *src, float *dst, size_t len) { return LnT(src, dst, len); }
IppStatus LnF64(const double *src, double *dst, size_t len) { return LnT(src, dst, len); }

IppStatus NormalizeF64(const double *src, double *dst, size_t len, double sub, double div)
{
    const Tag<double> d;
    NormalizeOp<Tag<double>> op{hn::Set(d, sub), hn::Set(d, div)};
    Map(d, src, dst, len, op);
    return ippStsNoErr;
}

IppStatus SqrC64(const Ipp64fc *src, Ipp64fc *dst, size_t len)
{
    ComplexSqrOp op;
    MapPairs(Tag<double>(), &src->re, &dst->re, len, op);
    return ippStsNoErr;
}

IppStatus SqrtC64(const Ipp64fc *src, Ipp64fc *dst, size_t len)
{
    ComplexSqrtOp op;
    MapPairs(Tag<double>(), &src->re, &dst->re, len, op);
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {

HWY_EXPORT(AbsF32);
HWY_EXPORT(AbsF64);
HWY_EXPORT(SqrF32);
HWY_EXPORT(SqrF64);
HWY_EXPORT(SqrC64);
HWY_EXPORT(SqrtF32);
HWY_EXPORT(SqrtF64);
HWY_EXPORT(SqrtC64);
HWY_EXPORT(ExpF32);
HWY_EXPORT(ExpF64);
HWY_EXPORT(LnF32);
HWY_EXPORT(LnF64);
HWY_EXPORT(AtanF32);
HWY_EXPORT(AtanF64);
HWY_EXPORT(NormalizeF64);

/* The primitives check pointers before the length. */
template <typename S, typename D>
static IppStatus CheckArgs(const S *src, D *dst, int len)
{
    if (src == nullptr || dst == nullptr) return ippStsNullPtrErr;
    if (len < 1) return ippStsSizeErr;
    return ippStsNoErr;
}

}  // namespace orb_kernels

using orb_kernels::CheckArgs;

#define ORB_UNARY(name, type, worker)                                              \
    IppStatus name(const type *pSrc, type *pDst, int len)                          \
    {                                                                              \
        const IppStatus st = CheckArgs(pSrc, pDst, len);                           \
        if (st != ippStsNoErr) return st;                                          \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc, pDst, size_t(len)); \
    }

extern "C" {
ORB_UNARY(ippsAbs_32f, Ipp32f, AbsF32)
ORB_UNARY(ippsAbs_64f, Ipp64f, AbsF64)
ORB_UNARY(ippsSqr_32f, Ipp32f, SqrF32)
ORB_UNARY(ippsSqr_64f, Ipp64f, SqrF64)
ORB_UNARY(ippsSqr_64fc, Ipp64fc, SqrC64)
ORB_UNARY(ippsSqrt_32f, Ipp32f, SqrtF32)
ORB_UNARY(ippsSqrt_64f, Ipp64f, SqrtF64)
ORB_UNARY(ippsSqrt_64fc, Ipp64fc, SqrtC64)
ORB_UNARY(ippsExp_32f, Ipp32f, ExpF32)
ORB_UNARY(ippsExp_64f, Ipp64f, ExpF64)
ORB_UNARY(ippsLn_32f, Ipp32f, LnF32)
ORB_UNARY(ippsLn_64f, Ipp64f, LnF64)
ORB_UNARY(ippsArctan_32f, Ipp32f, AtanF32)
ORB_UNARY(ippsArctan_64f, Ipp64f, AtanF64)

IppStatus ippsNormalize_64f(const Ipp64f *pSrc, Ipp64f *pDst, int len, Ipp64f vSub, Ipp64f vDiv)
{
    const IppStatus st = CheckArgs(pSrc, pDst, len);
    if (st != ippStsNoErr) return st;
    if (fabs(vDiv) < DBL_MIN) return ippStsDivByZeroErr;
    return HWY_DYNAMIC_DISPATCH(orb_kernels::NormalizeF64)(pSrc, pDst, size_t(len), vSub, vDiv);
}
}

#undef ORB_UNARY
#endif  // HWY_ONCE
