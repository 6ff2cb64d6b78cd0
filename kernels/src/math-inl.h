/* Per-target elementary functions of the kernels, for float and double
 * lanes:
 *
 *   ExpKernel    e^x with IEEE results at NaN, +-inf, overflow (+inf) and
 *                underflow (0 or the rounded subnormal).
 *   LnKernel     natural logarithm of positive normal finite x only; the
 *                caller blends in the domain's special values.
 *   AtanKernel   arctangent over the whole line, atan(+-inf) = +-pi/2,
 *                atan(-0) = -0, NaN in gives NaN out.
 *   ComplexSqrtKernel  principal square root of re + i im (double lanes).
 *
 * Measured against long double over sweeps and random bit patterns, with
 * and without FMA: ExpKernel within 1.02 ulp, LnKernel 0.72, AtanKernel
 * 0.76 (the reductions and polynomials of LnKernel and AtanKernel are
 * fdlibm's), ComplexSqrtKernel 1.8 ulp per component.
 */
#if defined(ORB_KERNELS_MATH_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORB_KERNELS_MATH_INL_H_
#undef ORB_KERNELS_MATH_INL_H_
#else
#define ORB_KERNELS_MATH_INL_H_
#endif

#include <stdint.h>

#include <math.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/* e^x = 2^n e^r with n = round(x / ln2) and |r| <= ln2 / 2; e^r from its
 * Taylor series (degree 13 for double, 7 for float, both well below half an
 * ulp). ln2 is split so that n ln2hi and x - n ln2hi are exact. When every
 * lane has |x| below the normal-result bound, 2^n goes straight into the
 * exponent field; otherwise x is clamped to just past the points where e^x
 * overflows and where it rounds to zero, and 2^n is applied in two exact
 * halves, which rounds subnormal results once. Both paths give the same bits
 * where both apply. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE V ExpKernel(D d, V x)
{
    using T = hn::TFromD<D>;
    constexpr bool kF64 = sizeof(T) == 8;
    constexpr int kMantBits = kF64 ? 52 : 23;
    const hn::RebindToSigned<D> di;
    const bool easy = hn::AllTrue(d, hn::Le(hn::Abs(x), hn::Set(d, T(kF64 ? 708.0 : 87.0))));
    const V xc = easy ? x : hn::Min(hn::Max(x, hn::Set(d, T(kF64 ? -746.0 : -104.0))),
                                    hn::Set(d, T(kF64 ? 710.0 : 89.0)));
    // Adding 1.5 * 2^mantissa-bits rounds to an integer held in the low bits.
    const V shift = hn::Set(d, T(kF64 ? 0x1.8p52 : 0x1.8p23));
    const V t = hn::MulAdd(xc, hn::Set(d, T(1.44269504088896340736)), shift);
    const V n = hn::Sub(t, shift);
    V r = hn::NegMulAdd(n, hn::Set(d, T(kF64 ? 6.93147180369123816490e-01 : 0.693145751953125)), xc);
    r = hn::NegMulAdd(n, hn::Set(d, T(kF64 ? 1.90821492927058770002e-10 : 1.428606765330187045e-06)), r);
    const V r2 = hn::Mul(r, r);
    V q;  // (e^r - 1 - r) / r^2
    if constexpr (kF64) {
        const V r4 = hn::Mul(r2, r2);
        const auto c = [&](double v) { return hn::Set(d, v); };
        const V a0 = hn::MulAdd(c(1.0 / 6), r, c(1.0 / 2));
        const V a1 = hn::MulAdd(c(1.0 / 120), r, c(1.0 / 24));
        const V a2 = hn::MulAdd(c(1.0 / 5040), r, c(1.0 / 720));
        const V a3 = hn::MulAdd(c(1.0 / 362880), r, c(1.0 / 40320));
        const V a4 = hn::MulAdd(c(1.0 / 39916800), r, c(1.0 / 3628800));
        const V a5 = hn::MulAdd(c(1.0 / 6227020800.0), r, c(1.0 / 479001600));
        const V b0 = hn::MulAdd(a1, r2, a0), b1 = hn::MulAdd(a3, r2, a2), b2 = hn::MulAdd(a5, r2, a4);
        q = hn::MulAdd(b2, hn::Mul(r4, r4), hn::MulAdd(b1, r4, b0));
    } else {
        const auto c = [&](float v) { return hn::Set(d, v); };
        const V a0 = hn::MulAdd(c(1.0f / 6), r, c(1.0f / 2));
        const V a1 = hn::MulAdd(c(1.0f / 120), r, c(1.0f / 24));
        const V a2 = hn::MulAdd(c(1.0f / 5040), r, c(1.0f / 720));
        q = hn::MulAdd(hn::MulAdd(a2, r2, a1), r2, a0);
    }
    const V p = hn::Add(hn::MulAdd(r2, q, r), hn::Set(d, T(1)));
    if (easy) return hn::BitCast(d, hn::Add(hn::BitCast(di, p), hn::ShiftLeft<kMantBits>(hn::BitCast(di, t))));
    const auto ni = hn::Sub(hn::BitCast(di, t), hn::BitCast(di, shift));
    const auto n1 = hn::ShiftRight<1>(ni);
    const auto bias = hn::Set(di, kF64 ? 1023 : 127);
    const V s1 = hn::BitCast(d, hn::ShiftLeft<kMantBits>(hn::Add(n1, bias)));
    const V s2 = hn::BitCast(d, hn::ShiftLeft<kMantBits>(hn::Add(hn::Sub(ni, n1), bias)));
    return hn::IfThenElse(hn::IsNaN(x), hn::Add(x, x), hn::Mul(hn::Mul(p, s1), s2));
}

/* ln(x) = k ln2 + ln(1 + f), 1 + f in [sqrt(2)/2, sqrt(2)), with
 * ln(1 + f) = f - f^2/2 + s (f^2/2 + R(s^2)), s = f / (2 + f) (fdlibm).
 * Only for positive normal finite x. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE V LnKernel(D d, V x)
{
    using T = hn::TFromD<D>;
    const hn::RebindToUnsigned<D> du;
    V dk, f, r;
    if constexpr (sizeof(T) == 8) {
        // Shift the mantissa so that the split lands at sqrt(2)/2.
        const auto bits = hn::Add(hn::BitCast(du, x), hn::Set(du, 0x3ff0000000000000ull - 0x3fe6a09e00000000ull));
        const auto m = hn::Add(hn::And(bits, hn::Set(du, 0x000fffffffffffffull)), hn::Set(du, 0x3fe6a09e00000000ull));
        f = hn::Sub(hn::BitCast(d, m), hn::Set(d, 1.0));
        // Biased exponent to double by the 2^52 trick (it is below 2^11).
        const auto e = hn::Or(hn::ShiftRight<52>(bits), hn::Set(du, 0x4330000000000000ull));
        dk = hn::Sub(hn::BitCast(d, e), hn::Set(d, 4503599627370496.0 + 1023.0));
        const V s = hn::Div(f, hn::Add(hn::Set(d, 2.0), f));
        const V z = hn::Mul(s, s), w = hn::Mul(z, z);
        const V t1 = hn::Mul(w, hn::MulAdd(w, hn::MulAdd(w, hn::Set(d, 1.531383769920937332e-01),
                                                         hn::Set(d, 2.222219843214978396e-01)),
                                           hn::Set(d, 3.999999999940941908e-01)));
        const V t2 = hn::Mul(
            z, hn::MulAdd(w, hn::MulAdd(w, hn::MulAdd(w, hn::Set(d, 1.479819860511658591e-01),
                                                      hn::Set(d, 1.818357216161805012e-01)),
                                        hn::Set(d, 2.857142874366239149e-01)),
                          hn::Set(d, 6.666666666666735130e-01)));
        r = hn::Mul(s, hn::Add(hn::Mul(hn::Set(d, 0.5), hn::Mul(f, f)), hn::Add(t1, t2)));
    } else {
        const auto bits = hn::Add(hn::BitCast(du, x), hn::Set(du, 0x3f800000u - 0x3f3504f3u));
        const auto m = hn::Add(hn::And(bits, hn::Set(du, 0x007fffffu)), hn::Set(du, 0x3f3504f3u));
        f = hn::Sub(hn::BitCast(d, m), hn::Set(d, 1.0f));
        const hn::RebindToSigned<D> di;
        dk = hn::ConvertTo(d, hn::Sub(hn::BitCast(di, hn::ShiftRight<23>(bits)), hn::Set(di, 127)));
        const V s = hn::Div(f, hn::Add(hn::Set(d, 2.0f), f));
        const V z = hn::Mul(s, s), w = hn::Mul(z, z);
        const V t1 = hn::Mul(w, hn::MulAdd(w, hn::Set(d, 2.4279078841e-01f), hn::Set(d, 4.0000972152e-01f)));
        const V t2 = hn::Mul(z, hn::MulAdd(w, hn::Set(d, 2.8498786688e-01f), hn::Set(d, 6.6666662693e-01f)));
        r = hn::Mul(s, hn::Add(hn::Mul(hn::Set(d, 0.5f), hn::Mul(f, f)), hn::Add(t1, t2)));
    }
    // ln2 in two parts, the first with trailing zeros so that k * ln2hi is exact.
    const V ln2hi = hn::Set(d, T(sizeof(T) == 8 ? 6.93147180369123816490e-01 : 6.9313812256e-01));
    const V ln2lo = hn::Set(d, T(sizeof(T) == 8 ? 1.90821492927058770002e-10 : 9.0580006145e-06));
    const V hfsq = hn::Mul(hn::Set(d, T(0.5)), hn::Mul(f, f));
    // k ln2hi - ((hfsq - (s (hfsq + R) + k ln2lo)) - f)
    return hn::MulSub(dk, ln2hi, hn::Sub(hn::Sub(hfsq, hn::MulAdd(dk, ln2lo, r)), f));
}

/* atan(|x|) = atan(c) + atan((|x| - c) / (1 + c |x|)) with c = 0, 1/2, 1,
 * 3/2 or infinity chosen by |x| so that the reduced argument stays within
 * 7/16, where an odd polynomial suffices (fdlibm's breakpoints). The
 * numerators |x| - c are exact. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE V AtanKernel(D d, V x)
{
    using T = hn::TFromD<D>;
    constexpr bool kF64 = sizeof(T) == 8;
    const V ax = hn::Abs(x);
    const V sign = hn::Xor(x, ax);
    const V one = hn::Set(d, T(1));
    const auto m1 = hn::Ge(ax, hn::Set(d, T(0.4375)));
    const auto m2 = hn::Ge(ax, hn::Set(d, T(0.6875)));
    const auto m3 = hn::Ge(ax, hn::Set(d, T(1.1875)));
    const auto m4 = hn::Ge(ax, hn::Set(d, T(2.4375)));
    V c = hn::IfThenElseZero(m1, hn::Set(d, T(0.5)));
    c = hn::IfThenElse(m2, one, c);
    c = hn::IfThenElse(m3, hn::Set(d, T(1.5)), c);
    // atan(c) as hi + lo.
    V hi = hn::IfThenElseZero(m1, hn::Set(d, T(kF64 ? 4.6364760900080609e-01 : 4.6364760398864746e-01)));
    hi = hn::IfThenElse(m2, hn::Set(d, T(kF64 ? 7.8539816339744828e-01 : 7.8539818525314331e-01)), hi);
    hi = hn::IfThenElse(m3, hn::Set(d, T(kF64 ? 9.8279372324732905e-01 : 9.8279374837875366e-01)), hi);
    hi = hn::IfThenElse(m4, hn::Set(d, T(kF64 ? 1.5707963267948966e+00 : 1.5707963705062866e+00)), hi);
    V lo = hn::IfThenElseZero(m1, hn::Set(d, T(kF64 ? 2.2698777452961687e-17 : 5.0121586880891300e-09)));
    lo = hn::IfThenElse(m2, hn::Set(d, T(kF64 ? 3.0616169978683830e-17 : -2.1855694143368964e-08)), lo);
    lo = hn::IfThenElse(m3, hn::Set(d, T(kF64 ? 1.3903311031230998e-17 : -2.5131424052915463e-08)), lo);
    lo = hn::IfThenElse(m4, hn::Set(d, T(kF64 ? 6.1232339957367660e-17 : -4.3711388286737929e-08)), lo);
    // c = infinity: t = -1 / |x|, which also gives t = -0 at |x| = inf.
    const V num = hn::IfThenElse(m4, hn::Set(d, T(-1)), hn::Sub(ax, c));
    const V den = hn::IfThenElse(m4, ax, hn::MulAdd(c, ax, one));
    const V t = hn::Div(num, den);
    const V z = hn::Mul(t, t), w = hn::Mul(z, z);
    V s1, s2;
    if constexpr (kF64) {
        s1 = hn::MulAdd(w, hn::Set(d, 1.62858201153657823623e-02), hn::Set(d, 4.97687799461593236017e-02));
        s1 = hn::MulAdd(w, s1, hn::Set(d, 6.66107313738753120669e-02));
        s1 = hn::MulAdd(w, s1, hn::Set(d, 9.09088713343650656196e-02));
        s1 = hn::MulAdd(w, s1, hn::Set(d, 1.42857142725034663711e-01));
        s1 = hn::Mul(z, hn::MulAdd(w, s1, hn::Set(d, 3.33333333333329318027e-01)));
        s2 = hn::MulAdd(w, hn::Set(d, -3.65315727442169155270e-02), hn::Set(d, -5.83357013379057348645e-02));
        s2 = hn::MulAdd(w, s2, hn::Set(d, -7.69187620504482999495e-02));
        s2 = hn::MulAdd(w, s2, hn::Set(d, -1.11111104054623557880e-01));
        s2 = hn::Mul(w, hn::MulAdd(w, s2, hn::Set(d, -1.99999999998764832476e-01)));
    } else {
        s1 = hn::MulAdd(w, hn::Set(d, 6.1687607318e-02f), hn::Set(d, 1.4253635705e-01f));
        s1 = hn::Mul(z, hn::MulAdd(w, s1, hn::Set(d, 3.3333328366e-01f)));
        s2 = hn::Mul(w, hn::MulAdd(w, hn::Set(d, -1.0648017377e-01f), hn::Set(d, -1.9999158382e-01f)));
    }
    // hi - ((t (s1 + s2) - lo) - t) is non-negative; the sign of x goes back on.
    const V r = hn::Sub(hi, hn::Sub(hn::MulSub(t, hn::Add(s1, s2), lo), t));
    return hn::Or(r, sign);
}

/* Principal square root: t = sqrt((|a| + |z|) / 2); a >= 0 gives
 * (t, b / 2t), a < 0 gives (|b| / 2t, t with the sign of b). Both sums are
 * of non-negative terms, so nothing cancels; |z| and t are formed on inputs
 * scaled by an even power of two, which keeps huge and tiny parts in range.
 * Double lanes only. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE void ComplexSqrtKernel(D d, V &re, V &im)
{
    const V a = re, b = im;
    const V aa = hn::Abs(a), ab = hn::Abs(b);
    const V m = hn::Max(aa, ab);
    const auto big = hn::Gt(m, hn::Set(d, 0x1p500));
    const auto small = hn::Lt(m, hn::Set(d, 0x1p-500));
    const V one = hn::Set(d, 1.0);
    const V sin = hn::IfThenElse(big, hn::Set(d, 0x1p-600), hn::IfThenElse(small, hn::Set(d, 0x1p600), one));
    const V sout = hn::IfThenElse(big, hn::Set(d, 0x1p300), hn::IfThenElse(small, hn::Set(d, 0x1p-300), one));
    const V as = hn::Mul(aa, sin), bs = hn::Mul(ab, sin);
    const V inf = hn::Set(d, HUGE_VAL);
    // |z|, taken as infinite for an infinite real part even when b is NaN.
    const V h = hn::IfThenElse(hn::IsInf(a), inf, hn::Sqrt(hn::MulAdd(as, as, hn::Mul(bs, bs))));
    const V t = hn::Mul(hn::Sqrt(hn::Mul(hn::Add(as, h), hn::Set(d, 0.5))), sout);
    const V q = hn::Div(b, hn::Add(t, t));
    const auto neg = hn::Lt(a, hn::Zero(d));
    V r = hn::IfThenElse(neg, hn::Abs(q), t);
    V i = hn::IfThenElse(neg, hn::CopySign(t, b), q);
    // sqrt(+-0 +- 0i) = +0 +- 0i, and an infinite imaginary part wins over all.
    const auto zero = hn::Eq(t, hn::Zero(d));
    r = hn::IfThenZeroElse(zero, r);
    i = hn::IfThenElse(zero, b, i);
    const auto binf = hn::IsInf(b);
    re = hn::IfThenElse(binf, inf, r);
    im = hn::IfThenElse(binf, b, i);
}

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
