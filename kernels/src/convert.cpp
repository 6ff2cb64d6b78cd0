/* Conversion between element datatypes, and byte-order reversal.
 *
 * Plain forms: integer to floating point and float to double are exact or
 * rounded to nearest (IEEE); double to float rounds to nearest and overflows
 * to an infinity; 32s to 16s saturates.
 *
 * Scaled forms (_Sfs) compute value * 2^-scaleFactor exactly, then round to
 * an integer by the mode (ippRndZero toward zero, ippRndNear to nearest with
 * halves to even, ippRndFinancial to nearest with halves away from zero;
 * the forms without a mode use ippRndNear) and saturate to the destination
 * range. NaN converts to 0 and the infinities saturate. Integer-to-floating
 * scaled forms round the exact product once, to nearest.
 *
 * Exactness: every source value is first widened to a floating type that
 * holds it exactly (16s to float, 32s to double), and the scale is applied as
 * two power-of-two factors, the first of which never leaves the normal range
 * while the product could still matter. 64s sources have no such type and
 * go through exact integer arithmetic instead (scalar: not a hot path).
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convert.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <float.h>
#include <math.h>
#include <string.h>

#include <type_traits>

#include "entry.h"
#include "ipps.h"
#include "loops-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

/* Two power-of-two factors whose product is 2^-sf for the scale factors
 * that can still change a result; beyond those the result is 0 or saturated
 * whatever the factor, so sf is clamped. The first factor alone is used
 * while it is normal. */
template <typename F>
struct ScalePair {
    F f1, f2;
    explicit ScalePair(int sf)
    {
        constexpr int kMax = sizeof(F) == 4 ? 252 : 2000;        // beyond any operand's exponent range
        constexpr int kLo = sizeof(F) == 4 ? -127 : -1023;       // 2^127 / 2^1023 still finite
        constexpr int kHi = sizeof(F) == 4 ? 126 : 1022;         // 2^-126 / 2^-1022 still normal
        const int s = sf < -kMax ? -kMax : sf > kMax ? kMax : sf;
        const int s1 = s < kLo ? kLo : s > kHi ? kHi : s;
        f1 = F(ldexp(1.0, -s1));
        f2 = F(ldexp(1.0, -(s - s1)));
    }
};

/* Round to nearest, halves to even. The x86 instruction is exact; the
 * portable fallback's bias trick is not (0.49999997f rounds up), so that
 * target adds and subtracts 2^(mantissa bits) instead. */
template <class D>
HWY_INLINE hn::Vec<D> RoundEven(D d, hn::Vec<D> v)
{
#if HWY_TARGET == HWY_EMU128 || HWY_TARGET == HWY_SCALAR
    using T = hn::TFromD<D>;
    const auto big = hn::Set(d, sizeof(T) == 4 ? T(8388608.0) : T(4503599627370496.0));
    const auto a = hn::Abs(v);
    const auto r = hn::CopySign(hn::Sub(hn::Add(a, big), big), v);
    return hn::IfThenElse(hn::Lt(a, big), r, v);
#else
    (void)d;
    return hn::Round(v);
#endif
}

template <int kMode, class D>
HWY_INLINE hn::Vec<D> RoundBy(D d, hn::Vec<D> v)
{
    if constexpr (kMode == ippRndZero) {
        return hn::Trunc(v);
    } else if constexpr (kMode == ippRndNear) {
        return RoundEven(d, v);
    } else {
        // Halves away from zero: v - trunc(v) is exact, so compare it with 1/2.
        const auto t = hn::Trunc(v);
        const auto up = hn::Ge(hn::Abs(hn::Sub(v, t)), hn::Set(d, 0.5));
        return hn::IfThenElse(up, hn::Add(t, hn::CopySign(hn::Set(d, 1.0), v)), t);
    }
}

/* Double to float rounding to nearest, with overflow to infinity on every
 * target (the portable fallback saturates instead). */
template <class DF, class VD>
HWY_INLINE hn::Vec<DF> NarrowToFloat(DF df, VD v)
{
    const hn::Rebind<double, DF> dd;
    const auto y = hn::DemoteTo(df, v);
    // FLT_MAX plus half an ulp: from here on the nearest float is infinite.
    // Masks don't change lane width, so the flag crosses over as 1.0.
    const auto over = hn::IfThenElseZero(hn::Ge(hn::Abs(v), hn::Set(dd, 0x1.ffffffp127)), hn::Set(dd, 1.0));
    const auto is_over = hn::Gt(hn::DemoteTo(df, over), hn::Zero(df));
    return hn::IfThenElse(is_over, hn::CopySign(hn::Set(df, INFINITY), y), y);
}

/* An integral floating value to the integer type of DI, saturating. */
template <class DI, class V>
HWY_INLINE hn::Vec<DI> IntegralToInt(DI di, V v)
{
    using TI = hn::TFromD<DI>;
    using F = hn::TFromV<V>;
    if constexpr (sizeof(F) == 4) {
        const auto i32 = hn::ConvertTo(hn::Rebind<int32_t, DI>(), v);  // saturates
        if constexpr (sizeof(TI) == 4) return i32;
        else return hn::DemoteTo(di, i32);
    } else if constexpr (sizeof(TI) == 8) {
        // 2^63 itself is out of range; not every target's conversion says so,
        // and the portable one's is undefined there, so those lanes convert
        // as zero before they are replaced.
        const hn::Rebind<double, DI> dd;
        const auto bigD = hn::Ge(v, hn::Set(dd, 9223372036854775808.0));
        const auto big = hn::RebindMask(di, bigD);
        return hn::IfThenElse(big, hn::Set(di, INT64_MAX), hn::ConvertTo(di, hn::IfThenZeroElse(bigD, v)));
    } else {
        const auto i32 = hn::DemoteTo(hn::Rebind<int32_t, DI>(), v);  // saturates
        if constexpr (sizeof(TI) == 4) return i32;
        else return hn::DemoteTo(di, i32);
    }
}

/* Widens each lane to the floating type F exactly (integers of at most
 * F's mantissa width, or float to double). */
template <typename F, class V>
HWY_INLINE auto Widen(V v)
{
    using T = hn::TFromV<V>;
    const hn::Rebind<F, hn::DFromV<V>> df;
    if constexpr (hwy::IsSame<T, F>()) {
        return v;
    } else if constexpr (hwy::IsFloat<T>()) {
        return hn::PromoteTo(df, v);
    } else if constexpr (sizeof(T) == sizeof(F)) {
        return hn::ConvertTo(df, v);
    } else if constexpr (sizeof(T) == 4) {
        return hn::PromoteTo(df, v);  // int32 to double
    } else {
        const hn::Rebind<int32_t, decltype(df)> di;
        if constexpr (sizeof(F) == 4) return hn::ConvertTo(df, hn::PromoteTo(di, v));
        else return hn::PromoteTo(df, hn::PromoteTo(di, v));
    }
}

/* ---- Plain conversions ---- */

struct WidenOp {
    template <class DD, class V>
    HWY_INLINE hn::Vec<DD> operator()(DD, V v) const { return Widen<hn::TFromD<DD>>(v); }
};

/* int32 and int64 to their own-size floating type: the hardware rounds to
 * nearest. */
struct IntToFloatOp {
    template <class DD, class V>
    HWY_INLINE hn::Vec<DD> operator()(DD dd, V v) const { return hn::ConvertTo(dd, v); }
};

struct F64ToF32Op {
    template <class DD, class V>
    HWY_INLINE hn::Vec<DD> operator()(DD dd, V v) const { return NarrowToFloat(dd, v); }
};

struct SaturateOp {
    template <class DD, class V>
    HWY_INLINE hn::Vec<DD> operator()(DD dd, V v) const { return hn::DemoteTo(dd, v); }
};

/* ---- Scaled conversions ---- */

/* Integer to floating: widen exactly to F, scale (one rounding, in the
 * second factor), then narrow to the destination if it is float and F is
 * double. */
template <typename F>
struct ScaleToFloatOp {
    F f1, f2;
    template <class DD, class V>
    HWY_INLINE hn::Vec<DD> operator()(DD dd, V v) const
    {
        const hn::Rebind<F, DD> df;
        const auto y = hn::Mul(hn::Mul(Widen<F>(v), hn::Set(df, f1)), hn::Set(df, f2));
        if constexpr (sizeof(F) == sizeof(hn::TFromD<DD>)) return y;
        else return NarrowToFloat(dd, y);
    }
};

/* Anything to an integer: widen exactly to F, scale, round by the mode,
 * saturate. NaN gives 0. */
template <typename F, int kMode>
struct ScaleToIntOp {
    F f1, f2;
    template <class DD, class V>
    HWY_INLINE hn::Vec<DD> operator()(DD dd, V v) const
    {
        const hn::Rebind<F, DD> df;
        auto y = hn::Mul(Widen<F>(v), hn::Set(df, f1));
        if (f2 != F(1)) y = hn::Mul(y, hn::Set(df, f2));
        y = hn::IfThenZeroElse(hn::IsNaN(y), y);
        return IntegralToInt(dd, RoundBy<kMode>(df, y));
    }
};

/* The work tag: the wider of the element types, or F if wider still, is a
 * full vector and the others are Rebinds of it with the same lane count. */
template <typename S, typename D, typename F>
using WorkTag = Tag<std::conditional_t<(sizeof(S) >= sizeof(D) && sizeof(S) >= sizeof(F)), S,
                                       std::conditional_t<(sizeof(D) >= sizeof(F)), D, F>>>;

template <typename S, typename D, typename F = S, class Op>
HWY_INLINE IppStatus Run(const S *src, D *dst, size_t len, Op &&op)
{
    Zip(hn::Rebind<D, WorkTag<S, D, F>>(), len, op, Out<D>{dst}, In<S>{src});
    return ippStsNoErr;
}

template <typename S, typename D, typename F>
HWY_INLINE IppStatus ScaleToFloat(const S *src, D *dst, size_t len, int sf)
{
    const ScalePair<F> p(sf);
    return Run<S, D, F>(src, dst, len, ScaleToFloatOp<F>{p.f1, p.f2});
}

template <typename S, typename D, typename F>
HWY_INLINE IppStatus ScaleToInt(const S *src, D *dst, size_t len, int mode, int sf)
{
    const ScalePair<F> p(sf);
    if (mode == ippRndZero) return Run<S, D, F>(src, dst, len, ScaleToIntOp<F, ippRndZero>{p.f1, p.f2});
    if (mode == ippRndNear) return Run<S, D, F>(src, dst, len, ScaleToIntOp<F, ippRndNear>{p.f1, p.f2});
    return Run<S, D, F>(src, dst, len, ScaleToIntOp<F, ippRndFinancial>{p.f1, p.f2});
}

IppStatus Convert_8s32f(const Ipp8s *s, Ipp32f *d, size_t n) { return Run(s, d, n, WidenOp()); }
IppStatus Convert_16s32f(const Ipp16s *s, Ipp32f *d, size_t n) { return Run(s, d, n, WidenOp()); }
IppStatus Convert_32s32f(const Ipp32s *s, Ipp32f *d, size_t n) { return Run(s, d, n, IntToFloatOp()); }
IppStatus Convert_64s64f(const Ipp64s *s, Ipp64f *d, size_t n) { return Run(s, d, n, IntToFloatOp()); }
IppStatus Convert_32f64f(const Ipp32f *s, Ipp64f *d, size_t n) { return Run(s, d, n, WidenOp()); }
IppStatus Convert_32s64f(const Ipp32s *s, Ipp64f *d, size_t n) { return Run(s, d, n, WidenOp()); }
IppStatus Convert_64f32f(const Ipp64f *s, Ipp32f *d, size_t n) { return Run(s, d, n, F64ToF32Op()); }
IppStatus Convert_32s16s(const Ipp32s *s, Ipp16s *d, size_t n) { return Run(s, d, n, SaturateOp()); }

/* The float type that holds every source value exactly: F of these. */
#define ORB_TO_FLOAT(S, D, F)                                                    \
    IppStatus Convert_##S##D##_Sfs(const Ipp##S *s, Ipp##D *d, size_t n, int sf) \
    {                                                                            \
        return ScaleToFloat<Ipp##S, Ipp##D, F>(s, d, n, sf);                     \
    }
ORB_TO_FLOAT(16s, 32f, float)
ORB_TO_FLOAT(32s, 32f, double)
ORB_TO_FLOAT(16s, 64f, double)
ORB_TO_FLOAT(32s, 64f, double)
#undef ORB_TO_FLOAT

#define ORB_TO_INT(S, D, F)                                                             \
    IppStatus Convert_##S##D##_Sfs(const Ipp##S *s, Ipp##D *d, size_t n, int m, int sf) \
    {                                                                                   \
        return ScaleToInt<Ipp##S, Ipp##D, F>(s, d, n, m, sf);                           \
    }
ORB_TO_INT(32s, 16s, double)
ORB_TO_INT(16s, 8s, float)
ORB_TO_INT(64f, 64s, double)
ORB_TO_INT(32f, 32s, float)
ORB_TO_INT(64f, 32s, double)
ORB_TO_INT(32f, 16s, float)
ORB_TO_INT(64f, 16s, double)
ORB_TO_INT(32f, 8s, float)
#undef ORB_TO_INT

/* ---- Byte swaps ---- */

struct Swap16Op {
    template <class D, class V>
    HWY_INLINE V operator()(D, V v) const { return hn::Or(hn::ShiftLeft<8>(v), hn::ShiftRight<8>(v)); }
};

/* Reverses the bytes of each lane with one in-block byte shuffle (the
 * one-lane fallback target has no byte vectors and swaps the lane). */
template <class D>
struct SwapBytesOp {
#if HWY_TARGET == HWY_SCALAR
    explicit SwapBytesOp(D) {}
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> v) const
    {
        const auto x = hn::GetLane(v);
        if constexpr (sizeof(x) == 4) return hn::Set(d, __builtin_bswap32(x));
        else return hn::Set(d, __builtin_bswap64(x));
    }
#else
    hn::Vec<hn::Repartition<uint8_t, D>> index;
    explicit SwapBytesOp(D)
    {
        using T = hn::TFromD<D>;
        alignas(16) uint8_t pattern[16];
        for (size_t k = 0; k < 16; ++k) pattern[k] = uint8_t(k - k % sizeof(T) + sizeof(T) - 1 - k % sizeof(T));
        index = hn::LoadDup128(hn::Repartition<uint8_t, D>(), pattern);
    }
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> v) const
    {
        const hn::Repartition<uint8_t, D> d8;
        return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(d8, v), index));
    }
#endif
};

IppStatus SwapBytes_16u(const Ipp16u *src, Ipp16u *dst, size_t len) { return Map(src, dst, len, Swap16Op()); }
IppStatus SwapBytes_32u(const Ipp32u *src, Ipp32u *dst, size_t len)
{
    return Map(src, dst, len, SwapBytesOp(Tag<uint32_t>()));
}
IppStatus SwapBytes_64u(const Ipp64u *src, Ipp64u *dst, size_t len)
{
    return Map(src, dst, len, SwapBytesOp(Tag<uint64_t>()));
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
namespace {

/* value * 2^-sf rounded by mode and saturated to 32 bits, in exact integer
 * arithmetic. */
Ipp32s ScaleRound64(Ipp64s x, int sf, int mode)
{
    __int128 q;
    if (sf <= 0) {
        const int s = sf < -40 ? 40 : -sf;  // any nonzero x << 33 saturates
        q = __int128(x) * (__int128(1) << s);
    } else if (sf > 65) {
        q = 0;  // |x| / 2^66 < 1/8
    } else {
        const __int128 v = x;
        q = v >> sf;  // floor
        const __int128 r = v - q * (__int128(1) << sf);
        const __int128 half = __int128(1) << (sf - 1);
        bool up;
        if (mode == ippRndZero) up = q < 0 && r != 0;
        else if (mode == ippRndNear) up = r > half || (r == half && (q & 1) != 0);
        else up = r > half || (r == half && v >= 0);
        q += up;
    }
    return q > INT32_MAX ? INT32_MAX : q < INT32_MIN ? INT32_MIN : Ipp32s(q);
}

}  // namespace
}  // namespace orb_kernels

ORB_MAP(Convert_8s32f, Ipp8s, Ipp32f)
ORB_MAP(Convert_16s32f, Ipp16s, Ipp32f)
ORB_MAP(Convert_32s32f, Ipp32s, Ipp32f)
ORB_MAP(Convert_64f32f, Ipp64f, Ipp32f)
ORB_MAP(Convert_32f64f, Ipp32f, Ipp64f)
ORB_MAP(Convert_32s64f, Ipp32s, Ipp64f)
ORB_ENTRY(Convert_64s64f, (const Ipp64s *pSrc, Ipp64f *pDst, Ipp32u len), (len, pSrc, pDst),
          (pSrc, pDst, size_t(len)))
ORB_MAP(Convert_32s16s, Ipp32s, Ipp16s)

ORB_SCALED(Convert_16s32f_Sfs, Ipp16s, Ipp32f)
ORB_SCALED(Convert_32s32f_Sfs, Ipp32s, Ipp32f)
ORB_SCALED(Convert_16s64f_Sfs, Ipp16s, Ipp64f)
ORB_SCALED(Convert_32s64f_Sfs, Ipp32s, Ipp64f)
/* The scaled form without a mode rounds to nearest. */
ORB_ENTRY(Convert_32s16s_Sfs, (const Ipp32s *pSrc, Ipp16s *pDst, int len, int scaleFactor), (len, pSrc, pDst),
          (pSrc, pDst, size_t(len), int(ippRndNear), scaleFactor))

ORB_ROUNDED(Convert_64f64s_Sfs, Ipp64f, Ipp64s, Ipp32u)
ORB_ROUNDED(Convert_32f32s_Sfs, Ipp32f, Ipp32s, int)
ORB_ROUNDED(Convert_64f32s_Sfs, Ipp64f, Ipp32s, int)
ORB_ROUNDED(Convert_32f16s_Sfs, Ipp32f, Ipp16s, int)
ORB_ROUNDED(Convert_64f16s_Sfs, Ipp64f, Ipp16s, int)
ORB_ROUNDED(Convert_32f8s_Sfs, Ipp32f, Ipp8s, int)
ORB_ROUNDED(Convert_16s8s_Sfs, Ipp16s, Ipp8s, Ipp32u)

/* 64-bit integers have no floating type that holds them: a plain loop. */
extern "C" IppStatus ippsConvert_64s32s_Sfs(const Ipp64s *pSrc, Ipp32s *pDst, int len, IppRoundMode rndMode,
                                           int scaleFactor)
{
    IppStatus st = orb_kernels::CheckArgs(len, pSrc, pDst);
    if (st == ippStsNoErr) st = orb_kernels::CheckMode(rndMode);
    if (st != ippStsNoErr) return st;
    const int mode = orb_kernels::ModeOf(rndMode);
    for (int i = 0; i < len; ++i) pDst[i] = orb_kernels::ScaleRound64(pSrc[i], scaleFactor, mode);
    return ippStsNoErr;
}

ORB_MAP(SwapBytes_16u, Ipp16u, Ipp16u)
ORB_MAP(SwapBytes_32u, Ipp32u, Ipp32u)
ORB_MAP(SwapBytes_64u, Ipp64u, Ipp64u)

/* Three-byte items don't fit vector lanes; a plain loop is as fast as the
 * memory here. Reads each item whole before writing it (in-place use). */
extern "C" IppStatus ippsSwapBytes_24u(const Ipp8u *pSrc, Ipp8u *pDst, int len)
{
    const IppStatus st = orb_kernels::CheckArgs(len, pSrc, pDst);
    if (st != ippStsNoErr) return st;
    for (size_t i = 0; i < size_t(len) * 3; i += 3) {
        const Ipp8u a = pSrc[i], b = pSrc[i + 1], c = pSrc[i + 2];
        pDst[i] = c;
        pDst[i + 1] = b;
        pDst[i + 2] = a;
    }
    return ippStsNoErr;
}
#endif  // HWY_ONCE
