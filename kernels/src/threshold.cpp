/* Thresholds: ippsThreshold_LT, _GT, _LTAbs, _GTAbs, _LTVal, _GTVal,
 * _LTValGTVal and _LTInv.
 *
 * Each element is compared with the level and replaced when the comparison
 * holds; NaN compares false and passes through (LTInv: 1/NaN). Rules:
 *   LT, GT         x < level (x > level) gives level.
 *   LTAbs, GTAbs   |x| < level (|x| > level) gives level with the sign of x
 *                  (the sign bit for floating values, so -0 gives -level).
 *   LTVal, GTVal   x < level (x > level) gives value.
 *   LTValGTVal     x < levelLT gives valueLT, x > levelGT gives valueGT.
 *   LTInv          1/x, after x with |x| < level is replaced by level with
 *                  the sign of x. level 0 and x = 0 give an infinity and the
 *                  warning ippStsInvZero.
 * Complex forms compare the magnitude with the level; LT and GT scale the
 * value to magnitude level keeping its direction (0 has direction +1), LTVal
 * and GTVal substitute the complex value, LTInv inverts the value limited
 * that way.
 * Errors: a negative level for the Abs, complex and LTInv forms
 * (ippStsThreshNegLevelErr); levelLT > levelGT (ippStsThresholdErr).
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "threshold.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <math.h>

#include "ipps.h"
#include "loops-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <typename T>
using Tag = hn::ScalableTag<T>;

template <class D>
struct LTValOp {
    hn::Vec<D> level, value;
    HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> x) const { return hn::IfThenElse(hn::Lt(x, level), value, x); }
};

template <class D>
struct GTValOp {
    hn::Vec<D> level, value;
    HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> x) const { return hn::IfThenElse(hn::Gt(x, level), value, x); }
};

template <class D>
struct LTValGTValOp {
    hn::Vec<D> level_lt, value_lt, level_gt, value_gt;
    HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> x) const
    {
        const hn::Vec<D> y = hn::IfThenElse(hn::Lt(x, level_lt), value_lt, x);
        return hn::IfThenElse(hn::Gt(x, level_gt), value_gt, y);
    }
};

/* |x| < level, level >= 0. Integers compare against -level and level, which
 * also holds for the most negative value, whose magnitude has no type. */
template <class D>
HWY_INLINE auto AbsBelow(D, hn::Vec<D> x, hn::Vec<D> level, hn::Vec<D> neg_level)
{
    if constexpr (hwy::IsFloat<hn::TFromD<D>>()) return hn::Lt(hn::Abs(x), level);
    else return hn::And(hn::Gt(x, neg_level), hn::Lt(x, level));
}

template <class D>
HWY_INLINE auto AbsAbove(D, hn::Vec<D> x, hn::Vec<D> level, hn::Vec<D> neg_level)
{
    if constexpr (hwy::IsFloat<hn::TFromD<D>>()) return hn::Gt(hn::Abs(x), level);
    else return hn::Or(hn::Gt(x, level), hn::Lt(x, neg_level));
}

/* level with the sign of x. */
template <class D>
HWY_INLINE hn::Vec<D> SignedLevel(D d, hn::Vec<D> x, hn::Vec<D> level, hn::Vec<D> neg_level)
{
    if constexpr (hwy::IsFloat<hn::TFromD<D>>()) return hn::CopySign(level, x);
    else return hn::IfThenElse(hn::Lt(x, hn::Zero(d)), neg_level, level);
}

template <class D>
struct LTAbsOp {
    hn::Vec<D> level, neg_level;
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x) const
    {
        return hn::IfThenElse(AbsBelow(d, x, level, neg_level), SignedLevel(d, x, level, neg_level), x);
    }
};

template <class D>
struct GTAbsOp {
    hn::Vec<D> level, neg_level;
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x) const
    {
        return hn::IfThenElse(AbsAbove(d, x, level, neg_level), SignedLevel(d, x, level, neg_level), x);
    }
};

/* Remembers whether a zero was seen (the warning for level 0). */
template <class D>
struct LTInvOp {
    hn::Vec<D> level, zeros;
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x)
    {
        zeros = hn::Or(zeros, hn::VecFromMask(d, hn::Eq(x, hn::Zero(d))));
        const hn::Vec<D> t = hn::IfThenElse(hn::Lt(hn::Abs(x), level), hn::CopySign(level, x), x);
        return hn::Div(hn::Set(d, 1.0), t);
    }
};

/* Magnitude and direction of re + i im without overflow or underflow:
 * |z| = m r with m = max(|re|, |im|) and r = |z / m| in [1, sqrt 2]. Zero
 * has direction (1, 0); infinite parts outweigh finite ones; NaN in either
 * part gives a NaN magnitude. */
template <class D, class V>
HWY_INLINE void Polar(D d, V re, V im, V &mag, V &ur, V &ui)
{
    const V one = hn::Set(d, 1.0);
    const V m = hn::Max(hn::Abs(re), hn::Abs(im));
    V a = hn::Div(re, m), b = hn::Div(im, m);
    const auto inf = hn::IsInf(m);
    a = hn::IfThenElse(inf, hn::CopySign(hn::IfThenElseZero(hn::IsInf(re), one), re), a);
    b = hn::IfThenElse(inf, hn::CopySign(hn::IfThenElseZero(hn::IsInf(im), one), im), b);
    const auto zero = hn::Eq(m, hn::Zero(d));
    a = hn::IfThenElse(zero, one, a);
    b = hn::IfThenZeroElse(zero, b);
    const V r = hn::Sqrt(hn::MulAdd(a, a, hn::Mul(b, b)));
    const auto nan = hn::Or(hn::IsNaN(re), hn::IsNaN(im));
    mag = hn::IfThenElse(nan, hn::Set(d, NAN), hn::Mul(m, r));
    ur = hn::Div(a, r);
    ui = hn::Div(b, r);
}

/* kAbove: |z| > level, else |z| < level. */
template <bool kAbove, class D>
struct ComplexClampOp {
    hn::Vec<D> level;
    HWY_INLINE void operator()(D d, hn::Vec<D> &re, hn::Vec<D> &im) const
    {
        hn::Vec<D> mag, ur, ui;
        Polar(d, re, im, mag, ur, ui);
        const auto hit = kAbove ? hn::Gt(mag, level) : hn::Lt(mag, level);
        re = hn::IfThenElse(hit, hn::Mul(level, ur), re);
        im = hn::IfThenElse(hit, hn::Mul(level, ui), im);
    }
};

template <bool kAbove, class D>
struct ComplexValOp {
    hn::Vec<D> level, value_re, value_im;
    HWY_INLINE void operator()(D d, hn::Vec<D> &re, hn::Vec<D> &im) const
    {
        hn::Vec<D> mag, ur, ui;
        Polar(d, re, im, mag, ur, ui);
        const auto hit = kAbove ? hn::Gt(mag, level) : hn::Lt(mag, level);
        re = hn::IfThenElse(hit, value_re, re);
        im = hn::IfThenElse(hit, value_im, im);
    }
};

/* 1/z = conj(u) / |z| with u the direction; the limited value level u has
 * the inverse conj(u) / level, so the divisor is max(|z|, level). */
template <class D>
struct ComplexInvOp {
    hn::Vec<D> level, zeros;
    HWY_INLINE void operator()(D d, hn::Vec<D> &re, hn::Vec<D> &im)
    {
        hn::Vec<D> mag, ur, ui;
        Polar(d, re, im, mag, ur, ui);
        zeros = hn::Or(zeros, hn::VecFromMask(d, hn::Eq(mag, hn::Zero(d))));
        const hn::Vec<D> den = hn::IfThenElse(hn::Lt(mag, level), level, mag);
        re = hn::Div(ur, den);
        // A zero imaginary part stays a signed zero when den is 0 too.
        im = hn::IfThenElse(hn::Eq(ui, hn::Zero(d)), hn::Neg(ui), hn::Div(hn::Neg(ui), den));
    }
};

template <typename T, class Op>
HWY_INLINE IppStatus Apply(const T *src, T *dst, size_t len, Op op)
{
    Map(Tag<T>(), src, dst, len, op);
    return ippStsNoErr;
}

#define ORB_T(T) const T *src, T *dst, size_t len
template <typename T>
HWY_INLINE IppStatus LTValT(ORB_T(T), T level, T value)
{
    const Tag<T> d;
    return Apply(src, dst, len, LTValOp<Tag<T>>{hn::Set(d, level), hn::Set(d, value)});
}
template <typename T>
HWY_INLINE IppStatus GTValT(ORB_T(T), T level, T value)
{
    const Tag<T> d;
    return Apply(src, dst, len, GTValOp<Tag<T>>{hn::Set(d, level), hn::Set(d, value)});
}
template <typename T>
HWY_INLINE IppStatus LTAbsT(ORB_T(T), T level)
{
    const Tag<T> d;
    return Apply(src, dst, len, LTAbsOp<Tag<T>>{hn::Set(d, level), hn::Set(d, T(-level))});
}
template <typename T>
HWY_INLINE IppStatus GTAbsT(ORB_T(T), T level)
{
    const Tag<T> d;
    return Apply(src, dst, len, GTAbsOp<Tag<T>>{hn::Set(d, level), hn::Set(d, T(-level))});
}
template <typename T>
HWY_INLINE IppStatus LTValGTValT(ORB_T(T), T level_lt, T value_lt, T level_gt, T value_gt)
{
    const Tag<T> d;
    return Apply(src, dst, len,
                 LTValGTValOp<Tag<T>>{hn::Set(d, level_lt), hn::Set(d, value_lt), hn::Set(d, level_gt),
                                      hn::Set(d, value_gt)});
}
template <typename T>
HWY_INLINE IppStatus LTInvT(ORB_T(T), T level)
{
    const Tag<T> d;
    LTInvOp<Tag<T>> op{hn::Set(d, level), hn::Zero(d)};
    Map(d, src, dst, len, op);
    const bool zero = !hn::AllFalse(d, hn::MaskFromVec(op.zeros));
    return level == T(0) && zero ? ippStsInvZero : ippStsNoErr;
}

/* LT and GT are the Val forms with value = level. */
IppStatus LT16s(ORB_T(Ipp16s), Ipp16s level) { return LTValT(src, dst, len, level, level); }
IppStatus LT32s(ORB_T(Ipp32s), Ipp32s level) { return LTValT(src, dst, len, level, level); }
IppStatus LT32f(ORB_T(Ipp32f), Ipp32f level) { return LTValT(src, dst, len, level, level); }
IppStatus LT64f(ORB_T(Ipp64f), Ipp64f level) { return LTValT(src, dst, len, level, level); }
IppStatus GT16s(ORB_T(Ipp16s), Ipp16s level) { return GTValT(src, dst, len, level, level); }
IppStatus GT32s(ORB_T(Ipp32s), Ipp32s level) { return GTValT(src, dst, len, level, level); }
IppStatus GT32f(ORB_T(Ipp32f), Ipp32f level) { return GTValT(src, dst, len, level, level); }
IppStatus GT64f(ORB_T(Ipp64f), Ipp64f level) { return GTValT(src, dst, len, level, level); }
IppStatus LTVal16s(ORB_T(Ipp16s), Ipp16s level, Ipp16s value) { return LTValT(src, dst, len, level, value); }
IppStatus LTVal32f(ORB_T(Ipp32f), Ipp32f level, Ipp32f value) { return LTValT(src, dst, len, level, value); }
IppStatus LTVal64f(ORB_T(Ipp64f), Ipp64f level, Ipp64f value) { return LTValT(src, dst, len, level, value); }
IppStatus GTVal16s(ORB_T(Ipp16s), Ipp16s level, Ipp16s value) { return GTValT(src, dst, len, level, value); }
IppStatus GTVal32f(ORB_T(Ipp32f), Ipp32f level, Ipp32f value) { return GTValT(src, dst, len, level, value); }
IppStatus GTVal64f(ORB_T(Ipp64f), Ipp64f level, Ipp64f value) { return GTValT(src, dst, len, level, value); }
IppStatus LTAbs16s(ORB_T(Ipp16s), Ipp16s level) { return LTAbsT(src, dst, len, level); }
IppStatus LTAbs32s(ORB_T(Ipp32s), Ipp32s level) { return LTAbsT(src, dst, len, level); }
IppStatus LTAbs32f(ORB_T(Ipp32f), Ipp32f level) { return LTAbsT(src, dst, len, level); }
IppStatus LTAbs64f(ORB_T(Ipp64f), Ipp64f level) { return LTAbsT(src, dst, len, level); }
IppStatus GTAbs16s(ORB_T(Ipp16s), Ipp16s level) { return GTAbsT(src, dst, len, level); }
IppStatus GTAbs32s(ORB_T(Ipp32s), Ipp32s level) { return GTAbsT(src, dst, len, level); }
IppStatus GTAbs32f(ORB_T(Ipp32f), Ipp32f level) { return GTAbsT(src, dst, len, level); }
IppStatus GTAbs64f(ORB_T(Ipp64f), Ipp64f level) { return GTAbsT(src, dst, len, level); }
IppStatus LTInv32f(ORB_T(Ipp32f), Ipp32f level) { return LTInvT(src, dst, len, level); }
IppStatus LTInv64f(ORB_T(Ipp64f), Ipp64f level) { return LTInvT(src, dst, len, level); }
IppStatus LTValGTVal16s(ORB_T(Ipp16s), Ipp16s llt, Ipp16s vlt, Ipp16s lgt, Ipp16s vgt)
{
    return LTValGTValT(src, dst, len, llt, vlt, lgt, vgt);
}
IppStatus LTValGTVal32s(ORB_T(Ipp32s), Ipp32s llt, Ipp32s vlt, Ipp32s lgt, Ipp32s vgt)
{
    return LTValGTValT(src, dst, len, llt, vlt, lgt, vgt);
}
IppStatus LTValGTVal32f(ORB_T(Ipp32f), Ipp32f llt, Ipp32f vlt, Ipp32f lgt, Ipp32f vgt)
{
    return LTValGTValT(src, dst, len, llt, vlt, lgt, vgt);
}
IppStatus LTValGTVal64f(ORB_T(Ipp64f), Ipp64f llt, Ipp64f vlt, Ipp64f lgt, Ipp64f vgt)
{
    return LTValGTValT(src, dst, len, llt, vlt, lgt, vgt);
}
#undef ORB_T

template <class Op>
HWY_INLINE IppStatus ApplyPairs(const Ipp64fc *src, Ipp64fc *dst, size_t len, Op &op)
{
    MapPairs(Tag<double>(), &src->re, &dst->re, len, op);
    return ippStsNoErr;
}

IppStatus LT64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level)
{
    ComplexClampOp<false, Tag<double>> op{hn::Set(Tag<double>(), level)};
    return ApplyPairs(src, dst, len, op);
}
IppStatus GT64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level)
{
    ComplexClampOp<true, Tag<double>> op{hn::Set(Tag<double>(), level)};
    return ApplyPairs(src, dst, len, op);
}
IppStatus LTVal64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level, Ipp64fc value)
{
    const Tag<double> d;
    ComplexValOp<false, Tag<double>> op{hn::Set(d, level), hn::Set(d, value.re), hn::Set(d, value.im)};
    return ApplyPairs(src, dst, len, op);
}
IppStatus GTVal64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level, Ipp64fc value)
{
    const Tag<double> d;
    ComplexValOp<true, Tag<double>> op{hn::Set(d, level), hn::Set(d, value.re), hn::Set(d, value.im)};
    return ApplyPairs(src, dst, len, op);
}
IppStatus LTInv64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level)
{
    const Tag<double> d;
    ComplexInvOp<Tag<double>> op{hn::Set(d, level), hn::Zero(d)};
    ApplyPairs(src, dst, len, op);
    const bool zero = !hn::AllFalse(d, hn::MaskFromVec(op.zeros));
    return level == 0 && zero ? ippStsInvZero : ippStsNoErr;
}

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {

HWY_EXPORT(LT16s);
HWY_EXPORT(LT32s);
HWY_EXPORT(LT32f);
HWY_EXPORT(LT64f);
HWY_EXPORT(LT64fc);
HWY_EXPORT(GT16s);
HWY_EXPORT(GT32s);
HWY_EXPORT(GT32f);
HWY_EXPORT(GT64f);
HWY_EXPORT(GT64fc);
HWY_EXPORT(LTAbs16s);
HWY_EXPORT(LTAbs32s);
HWY_EXPORT(LTAbs32f);
HWY_EXPORT(LTAbs64f);
HWY_EXPORT(GTAbs16s);
HWY_EXPORT(GTAbs32s);
HWY_EXPORT(GTAbs32f);
HWY_EXPORT(GTAbs64f);
HWY_EXPORT(LTVal16s);
HWY_EXPORT(LTVal32f);
HWY_EXPORT(LTVal64f);
HWY_EXPORT(LTVal64fc);
HWY_EXPORT(GTVal16s);
HWY_EXPORT(GTVal32f);
HWY_EXPORT(GTVal64f);
HWY_EXPORT(GTVal64fc);
HWY_EXPORT(LTValGTVal16s);
HWY_EXPORT(LTValGTVal32s);
HWY_EXPORT(LTValGTVal32f);
HWY_EXPORT(LTValGTVal64f);
HWY_EXPORT(LTInv32f);
HWY_EXPORT(LTInv64f);
HWY_EXPORT(LTInv64fc);

template <typename T>
static IppStatus CheckArgs(const T *src, T *dst, int len)
{
    if (src == nullptr || dst == nullptr) return ippStsNullPtrErr;
    if (len < 1) return ippStsSizeErr;
    return ippStsNoErr;
}

}  // namespace orb_kernels

using orb_kernels::CheckArgs;

/* refuse_negative: the form refuses a negative level. */
#define ORB_T1(name, T, L, worker, refuse_negative)                                   \
    IppStatus name(const T *pSrc, T *pDst, int len, L level)                          \
    {                                                                                 \
        const IppStatus st = CheckArgs(pSrc, pDst, len);                              \
        if (st != ippStsNoErr) return st;                                             \
        if (refuse_negative && level < 0) return ippStsThreshNegLevelErr;             \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc, pDst, size_t(len), level); \
    }

#define ORB_TV(name, T, L, V, worker, refuse_negative)                                       \
    IppStatus name(const T *pSrc, T *pDst, int len, L level, V value)                        \
    {                                                                                        \
        const IppStatus st = CheckArgs(pSrc, pDst, len);                                     \
        if (st != ippStsNoErr) return st;                                                    \
        if (refuse_negative && level < 0) return ippStsThreshNegLevelErr;                    \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc, pDst, size_t(len), level, value); \
    }

#define ORB_T2(name, T, worker)                                                                  \
    IppStatus name(const T *pSrc, T *pDst, int len, T levelLT, T valueLT, T levelGT, T valueGT)  \
    {                                                                                            \
        const IppStatus st = CheckArgs(pSrc, pDst, len);                                         \
        if (st != ippStsNoErr) return st;                                                        \
        if (levelLT > levelGT) return ippStsThresholdErr;                                        \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc, pDst, size_t(len), levelLT, valueLT, \
                                                         levelGT, valueGT);                      \
    }

extern "C" {
ORB_T1(ippsThreshold_LT_16s, Ipp16s, Ipp16s, LT16s, false)
ORB_T1(ippsThreshold_LT_32s, Ipp32s, Ipp32s, LT32s, false)
ORB_T1(ippsThreshold_LT_32f, Ipp32f, Ipp32f, LT32f, false)
ORB_T1(ippsThreshold_LT_64f, Ipp64f, Ipp64f, LT64f, false)
ORB_T1(ippsThreshold_LT_64fc, Ipp64fc, Ipp64f, LT64fc, true)
ORB_T1(ippsThreshold_GT_16s, Ipp16s, Ipp16s, GT16s, false)
ORB_T1(ippsThreshold_GT_32s, Ipp32s, Ipp32s, GT32s, false)
ORB_T1(ippsThreshold_GT_32f, Ipp32f, Ipp32f, GT32f, false)
ORB_T1(ippsThreshold_GT_64f, Ipp64f, Ipp64f, GT64f, false)
ORB_T1(ippsThreshold_GT_64fc, Ipp64fc, Ipp64f, GT64fc, true)
ORB_T1(ippsThreshold_LTAbs_16s, Ipp16s, Ipp16s, LTAbs16s, true)
ORB_T1(ippsThreshold_LTAbs_32s, Ipp32s, Ipp32s, LTAbs32s, true)
ORB_T1(ippsThreshold_LTAbs_32f, Ipp32f, Ipp32f, LTAbs32f, true)
ORB_T1(ippsThreshold_LTAbs_64f, Ipp64f, Ipp64f, LTAbs64f, true)
ORB_T1(ippsThreshold_GTAbs_16s, Ipp16s, Ipp16s, GTAbs16s, true)
ORB_T1(ippsThreshold_GTAbs_32s, Ipp32s, Ipp32s, GTAbs32s, true)
ORB_T1(ippsThreshold_GTAbs_32f, Ipp32f, Ipp32f, GTAbs32f, true)
ORB_T1(ippsThreshold_GTAbs_64f, Ipp64f, Ipp64f, GTAbs64f, true)
ORB_T1(ippsThreshold_LTInv_32f, Ipp32f, Ipp32f, LTInv32f, true)
ORB_T1(ippsThreshold_LTInv_64f, Ipp64f, Ipp64f, LTInv64f, true)
ORB_T1(ippsThreshold_LTInv_64fc, Ipp64fc, Ipp64f, LTInv64fc, true)
ORB_TV(ippsThreshold_LTVal_16s, Ipp16s, Ipp16s, Ipp16s, LTVal16s, false)
ORB_TV(ippsThreshold_LTVal_32f, Ipp32f, Ipp32f, Ipp32f, LTVal32f, false)
ORB_TV(ippsThreshold_LTVal_64f, Ipp64f, Ipp64f, Ipp64f, LTVal64f, false)
ORB_TV(ippsThreshold_LTVal_64fc, Ipp64fc, Ipp64f, Ipp64fc, LTVal64fc, true)
ORB_TV(ippsThreshold_GTVal_16s, Ipp16s, Ipp16s, Ipp16s, GTVal16s, false)
ORB_TV(ippsThreshold_GTVal_32f, Ipp32f, Ipp32f, Ipp32f, GTVal32f, false)
ORB_TV(ippsThreshold_GTVal_64f, Ipp64f, Ipp64f, Ipp64f, GTVal64f, false)
ORB_TV(ippsThreshold_GTVal_64fc, Ipp64fc, Ipp64f, Ipp64fc, GTVal64fc, true)
ORB_T2(ippsThreshold_LTValGTVal_16s, Ipp16s, LTValGTVal16s)
ORB_T2(ippsThreshold_LTValGTVal_32s, Ipp32s, LTValGTVal32s)
ORB_T2(ippsThreshold_LTValGTVal_32f, Ipp32f, LTValGTVal32f)
ORB_T2(ippsThreshold_LTValGTVal_64f, Ipp64f, LTValGTVal64f)
}

#undef ORB_T1
#undef ORB_TV
#undef ORB_T2
#endif  // HWY_ONCE
