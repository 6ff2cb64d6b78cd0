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

#include "entry.h"
#include "ipps.h"
#include "loops-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

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
    hn::Vec<D> level;
    Faults<D> zeros;
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x)
    {
        zeros.Note(d, hn::Eq(x, hn::Zero(d)));
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
struct ClampPairsOp {
    hn::Vec<D> level;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D d, Cx<hn::Vec<D>> z) const
    {
        hn::Vec<D> mag, ur, ui;
        Polar(d, z.re, z.im, mag, ur, ui);
        const auto hit = kAbove ? hn::Gt(mag, level) : hn::Lt(mag, level);
        return {hn::IfThenElse(hit, hn::Mul(level, ur), z.re), hn::IfThenElse(hit, hn::Mul(level, ui), z.im)};
    }
};

template <bool kAbove, class D>
struct ValPairsOp {
    hn::Vec<D> level, value_re, value_im;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D d, Cx<hn::Vec<D>> z) const
    {
        hn::Vec<D> mag, ur, ui;
        Polar(d, z.re, z.im, mag, ur, ui);
        const auto hit = kAbove ? hn::Gt(mag, level) : hn::Lt(mag, level);
        return {hn::IfThenElse(hit, value_re, z.re), hn::IfThenElse(hit, value_im, z.im)};
    }
};

/* 1/z = conj(u) / |z| with u the direction; the limited value level u has
 * the inverse conj(u) / level, so the divisor is max(|z|, level). */
template <class D>
struct InvPairsOp {
    hn::Vec<D> level;
    Faults<D> zeros;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D d, Cx<hn::Vec<D>> z)
    {
        hn::Vec<D> mag, ur, ui;
        Polar(d, z.re, z.im, mag, ur, ui);
        zeros.Note(d, hn::Eq(mag, hn::Zero(d)));
        const hn::Vec<D> den = hn::IfThenElse(hn::Lt(mag, level), level, mag);
        // A zero imaginary part stays a signed zero when den is 0 too.
        return {hn::Div(ur, den), hn::IfThenElse(hn::Eq(ui, hn::Zero(d)), hn::Neg(ui), hn::Div(hn::Neg(ui), den))};
    }
};

/* LT and GT are the Val forms with value = level. */
template <typename T>
HWY_INLINE IppStatus LTVal(const T *src, T *dst, size_t len, T level, T value)
{
    const Tag<T> d;
    return Map(src, dst, len, LTValOp<Tag<T>>{hn::Set(d, level), hn::Set(d, value)});
}
template <typename T>
HWY_INLINE IppStatus GTVal(const T *src, T *dst, size_t len, T level, T value)
{
    const Tag<T> d;
    return Map(src, dst, len, GTValOp<Tag<T>>{hn::Set(d, level), hn::Set(d, value)});
}
template <template <class> class Op, typename T>
HWY_INLINE IppStatus AbsLevel(const T *src, T *dst, size_t len, T level)
{
    const Tag<T> d;
    return Map(src, dst, len, Op<Tag<T>>{hn::Set(d, level), hn::Set(d, T(-level))});
}
template <typename T>
HWY_INLINE IppStatus LTValGTVal(const T *src, T *dst, size_t len, T level_lt, T value_lt, T level_gt, T value_gt)
{
    const Tag<T> d;
    return Map(src, dst, len,
               LTValGTValOp<Tag<T>>{hn::Set(d, level_lt), hn::Set(d, value_lt), hn::Set(d, level_gt),
                                    hn::Set(d, value_gt)});
}
template <typename T>
HWY_INLINE IppStatus LTInv(const T *src, T *dst, size_t len, T level)
{
    const Tag<T> d;
    LTInvOp<Tag<T>> op{hn::Set(d, level), Faults(d)};
    Map(src, dst, len, op);
    return level == T(0) && op.zeros.Any(d) ? ippStsInvZero : ippStsNoErr;
}

#define ORB_LEVEL_WORKERS(S, T)                                                                                      \
    IppStatus Threshold_LT_##S(const T *s, T *o, size_t n, T level) { return LTVal(s, o, n, level, level); }         \
    IppStatus Threshold_GT_##S(const T *s, T *o, size_t n, T level) { return GTVal(s, o, n, level, level); }         \
    IppStatus Threshold_LTAbs_##S(const T *s, T *o, size_t n, T level) { return AbsLevel<LTAbsOp>(s, o, n, level); } \
    IppStatus Threshold_GTAbs_##S(const T *s, T *o, size_t n, T level) { return AbsLevel<GTAbsOp>(s, o, n, level); } \
    IppStatus Threshold_LTValGTVal_##S(const T *s, T *o, size_t n, T llt, T vlt, T lgt, T vgt)                       \
    {                                                                                                                \
        return LTValGTVal(s, o, n, llt, vlt, lgt, vgt);                                                              \
    }
ORB_LEVEL_WORKERS(16s, Ipp16s)
ORB_LEVEL_WORKERS(32s, Ipp32s)
ORB_LEVEL_WORKERS(32f, Ipp32f)
ORB_LEVEL_WORKERS(64f, Ipp64f)
#undef ORB_LEVEL_WORKERS

#define ORB_VAL_WORKERS(S, T)                                                                                    \
    IppStatus Threshold_LTVal_##S(const T *s, T *o, size_t n, T level, T v) { return LTVal(s, o, n, level, v); } \
    IppStatus Threshold_GTVal_##S(const T *s, T *o, size_t n, T level, T v) { return GTVal(s, o, n, level, v); }
ORB_VAL_WORKERS(16s, Ipp16s)
ORB_VAL_WORKERS(32f, Ipp32f)
ORB_VAL_WORKERS(64f, Ipp64f)
#undef ORB_VAL_WORKERS

IppStatus Threshold_LTInv_32f(const float *s, float *o, size_t n, float level) { return LTInv(s, o, n, level); }
IppStatus Threshold_LTInv_64f(const double *s, double *o, size_t n, double level) { return LTInv(s, o, n, level); }

IppStatus Threshold_LT_64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level)
{
    return MapPairs(src, dst, len, ClampPairsOp<false, Tag<double>>{hn::Set(Tag<double>(), level)});
}
IppStatus Threshold_GT_64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level)
{
    return MapPairs(src, dst, len, ClampPairsOp<true, Tag<double>>{hn::Set(Tag<double>(), level)});
}
template <bool kAbove>
HWY_INLINE IppStatus ValPairs(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level, Ipp64fc value)
{
    const Tag<double> d;
    return MapPairs(src, dst, len,
                    ValPairsOp<kAbove, Tag<double>>{hn::Set(d, level), hn::Set(d, value.re), hn::Set(d, value.im)});
}
IppStatus Threshold_LTVal_64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level, Ipp64fc value)
{
    return ValPairs<false>(src, dst, len, level, value);
}
IppStatus Threshold_GTVal_64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level, Ipp64fc value)
{
    return ValPairs<true>(src, dst, len, level, value);
}
IppStatus Threshold_LTInv_64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len, Ipp64f level)
{
    const Tag<double> d;
    InvPairsOp<Tag<double>> op{hn::Set(d, level), Faults(d)};
    MapPairs(src, dst, len, op);
    return level == 0 && op.zeros.Any(d) ? ippStsInvZero : ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#define ORB_LEVEL_ENTRIES(S, T)                \
    ORB_LEVEL(Threshold_LT_##S, T, T, false)   \
    ORB_LEVEL(Threshold_GT_##S, T, T, false)   \
    ORB_LEVEL(Threshold_LTAbs_##S, T, T, true) \
    ORB_LEVEL(Threshold_GTAbs_##S, T, T, true) \
    ORB_LEVELS(Threshold_LTValGTVal_##S, T)
ORB_LEVEL_ENTRIES(16s, Ipp16s)
ORB_LEVEL_ENTRIES(32s, Ipp32s)
ORB_LEVEL_ENTRIES(32f, Ipp32f)
ORB_LEVEL_ENTRIES(64f, Ipp64f)
#undef ORB_LEVEL_ENTRIES
ORB_LEVEL(Threshold_LTInv_32f, Ipp32f, Ipp32f, true)
ORB_LEVEL(Threshold_LTInv_64f, Ipp64f, Ipp64f, true)
ORB_LEVEL_VAL(Threshold_LTVal_16s, Ipp16s, Ipp16s, Ipp16s, false)
ORB_LEVEL_VAL(Threshold_LTVal_32f, Ipp32f, Ipp32f, Ipp32f, false)
ORB_LEVEL_VAL(Threshold_LTVal_64f, Ipp64f, Ipp64f, Ipp64f, false)
ORB_LEVEL_VAL(Threshold_GTVal_16s, Ipp16s, Ipp16s, Ipp16s, false)
ORB_LEVEL_VAL(Threshold_GTVal_32f, Ipp32f, Ipp32f, Ipp32f, false)
ORB_LEVEL_VAL(Threshold_GTVal_64f, Ipp64f, Ipp64f, Ipp64f, false)
ORB_LEVEL(Threshold_LT_64fc, Ipp64fc, Ipp64f, true)
ORB_LEVEL(Threshold_GT_64fc, Ipp64fc, Ipp64f, true)
ORB_LEVEL(Threshold_LTInv_64fc, Ipp64fc, Ipp64f, true)
ORB_LEVEL_VAL(Threshold_LTVal_64fc, Ipp64fc, Ipp64f, Ipp64fc, true)
ORB_LEVEL_VAL(Threshold_GTVal_64fc, Ipp64fc, Ipp64f, Ipp64fc, true)
#endif  // HWY_ONCE
