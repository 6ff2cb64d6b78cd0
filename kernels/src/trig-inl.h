/* Per-target sine and cosine of float and double lanes:
 *
 *   SinCos(d, x, s, c)   both at once (they share the reduction);
 *   Sine(d, x), Cosine(d, x)   one of them (named apart from Highway's
 *                        contrib Sin and Cos, which argument-dependent
 *                        lookup would otherwise also find).
 *
 * x is reduced to r = x - n pi/2, |r| <= pi/4, and the quadrant n mod 4
 * picks +-sin(r) or +-cos(r). The reduction is exact enough for
 * |x| <= kTrigReduceLimit = 2^22 pi/2 (about 6.6e6); lanes beyond it are
 * redone one by one with the C library, which reduces any finite argument
 * correctly. +-inf and NaN give NaN.
 *
 * Double lanes: pi/2 is split into three 30-bit parts and a fourth double,
 * so that n times each of the first three is exact for n < 2^23; the
 * differences are taken with error-free sums, which leaves r as a double-
 * double hi + lo good to about 2^-120 absolute, enough for the arguments
 * that come nearest a multiple of pi/2. The polynomials and their use of
 * lo are fdlibm's (minimax on [-pi/4, pi/4], 2^-58 relative for sin,
 * 2^-60 absolute for cos), with cos(r) = w + ((1 - w) - r^2/2 + ...) where
 * w = 1 - r^2/2 rounded, so that the rounding of the leading terms is
 * carried into the rest.
 * Float lanes are computed in double: reduction with two 30-bit parts and
 * a double, degree-9 sin and degree-8 cos minimax polynomials (2^-37.5
 * relative, 2^-42.9 absolute, fitted here), then one rounding to float.
 *
 * Odd and even symmetry are exact (the work is done on |x| and the sign
 * put back), sin(+-0) = +-0, cos(+-0) = 1, and tiny x gives sin x = x,
 * cos x = 1. Measured against long double over sweeps and random bit
 * patterns on every target, with and without FMA: at most 0.79 ulp for
 * double and 0.501 ulp for float.
 */
#if defined(ORB_KERNELS_TRIG_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORB_KERNELS_TRIG_INL_H_
#undef ORB_KERNELS_TRIG_INL_H_
#else
#define ORB_KERNELS_TRIG_INL_H_
#endif

#include <stdint.h>

#include <math.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

constexpr double kTrigReduceLimit = 0x1p22 * 1.5707963267948966;

namespace trig {

// pi/2 = kPio2[0] + kPio2[1] + kPio2[2] + kPio2[3] to about 2^-145; the
// first three have 30 significant bits. Floats use the first two and
// kPio2F = the rest rounded.
constexpr double kPio2[4] = {0x1.921fb54p+0, 0x1.10b46118p-30, 0x1.313198ap-61, 0x1.701b839a25205p-92};
constexpr double kPio2F = 0x1.313198a2e0370p-61;
constexpr double kTwoOverPi = 0x1.45f306dc9c883p-1;

/* n = x (2/pi) rounded to an integer, for 0 <= x <= kTrigReduceLimit;
 * adding 1.5 * 2^52 leaves n in the low bits of the sum, from which the
 * quadrant is read. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE V Quadrant(D d, V ax, V &n)
{
    const V shift = hn::Set(d, 0x1.8p52);
    const V t = hn::MulAdd(ax, hn::Set(d, kTwoOverPi), shift);
    n = hn::Sub(t, shift);
    return t;
}

/* From the quadrant bits (in t) and sin(r), cos(r): sin x and cos x for
 * x >= 0, the sine then taking the sign bits in neg. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE void Assemble(D d, V t, V neg, V sr, V cr, V &s, V &c)
{
    const hn::RebindToUnsigned<D> du;
    const auto q = hn::BitCast(du, t);
    const auto odd = hn::RebindMask(d, hn::TestBit(q, hn::Set(du, 1)));
    const auto sign = hn::Set(du, uint64_t(1) << 63);
    // Quadrants 2, 3 negate the sine; 1, 2 the cosine.
    const V sneg = hn::BitCast(d, hn::And(hn::ShiftLeft<62>(q), sign));
    const V cneg = hn::BitCast(d, hn::And(hn::ShiftLeft<62>(hn::Add(q, hn::Set(du, 1))), sign));
    s = hn::Xor(hn::Xor(hn::IfThenElse(odd, cr, sr), sneg), neg);
    c = hn::Xor(hn::IfThenElse(odd, sr, cr), cneg);
}

/* Double lanes with |x| <= kTrigReduceLimit (others give garbage). */
template <class D, class V = hn::Vec<D>>
HWY_INLINE void SinCosF64(D d, V x, V &s, V &c)
{
    const auto k = [&](double v) { return hn::Set(d, v); };
    const V ax = hn::Abs(x);
    V n;
    const V t = Quadrant(d, ax, n);
    // ax - n pi/2: the first difference is exact (n kPio2[0] is within a
    // factor of two of ax); the next two are two-sums r + e.
    const V r1 = hn::NegMulAdd(n, k(kPio2[0]), ax);
    const V w2 = hn::Mul(n, k(kPio2[1])), w3 = hn::Mul(n, k(kPio2[2]));
    const V r2 = hn::Sub(r1, w2);
    V b = hn::Sub(r2, r1);
    const V e2 = hn::Sub(hn::Sub(r1, hn::Sub(r2, b)), hn::Add(w2, b));
    const V r3 = hn::Sub(r2, w3);
    b = hn::Sub(r3, r2);
    const V e3 = hn::Sub(hn::Sub(r2, hn::Sub(r3, b)), hn::Add(w3, b));
    // The tail is tiny next to r3: fast two-sum.
    const V tail = hn::NegMulAdd(n, k(kPio2[3]), hn::Add(e2, e3));
    const V hi = hn::Add(r3, tail);
    const V lo = hn::Add(hn::Sub(r3, hi), tail);

    const V z = hn::Mul(hi, hi), z2 = hn::Mul(z, z), v = hn::Mul(z, hi);
    // sin(hi + lo) = hi + v S1 + v z R(z) + lo (1 - z/2).
    const V sr = hn::MulAdd(hn::Mul(z, z2), hn::MulAdd(z, k(1.58969099521155010221e-10), k(-2.50507602534068634195e-08)),
                            hn::MulAdd(z, hn::MulAdd(z, k(2.75573137070700676789e-06), k(-1.98412698298579493134e-04)),
                                       k(8.33333333332248946124e-03)));
    const V inner = hn::Sub(hn::Mul(z, hn::NegMulAdd(v, sr, hn::Mul(k(0.5), lo))), lo);
    const V ps = hn::Sub(hi, hn::NegMulAdd(v, k(-1.66666666666666324348e-01), inner));
    // cos(hi + lo) = 1 - z/2 + z R(z) - hi lo.
    const V cr = hn::MulAdd(hn::Mul(z2, z2),
                            hn::MulAdd(z, hn::MulAdd(z, k(-1.13596475577881948265e-11), k(2.08757232129817482790e-09)),
                                       k(-2.75573143513906633035e-07)),
                            hn::Mul(z, hn::MulAdd(z, hn::MulAdd(z, k(2.48015872894767294178e-05),
                                                                k(-1.38888888888741095749e-03)),
                                                  k(4.16666666666666019037e-02))));
    const V hz = hn::Mul(k(0.5), z);
    const V w = hn::Sub(k(1.0), hz);
    const V pc = hn::Add(w, hn::Add(hn::Sub(hn::Sub(k(1.0), w), hz), hn::MulSub(z, cr, hn::Mul(hi, lo))));
    Assemble(d, t, hn::Xor(x, ax), ps, pc, s, c);
}

/* Float lanes widened to double (dd), |x| <= kTrigReduceLimit. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE void SinCosF32InF64(D d, V x, V &s, V &c)
{
    const auto k = [&](double v) { return hn::Set(d, v); };
    const V ax = hn::Abs(x);
    V n;
    const V t = Quadrant(d, ax, n);
    // Floats in range come no nearer than 2^-28 to a multiple of pi/2, so
    // rounding r2 - n kPio2F is harmless.
    const V r1 = hn::NegMulAdd(n, k(kPio2[0]), ax);
    const V r2 = hn::NegMulAdd(n, k(kPio2[1]), r1);
    const V r = hn::NegMulAdd(n, k(kPio2F), r2);
    const V z = hn::Mul(r, r);
    const V sp = hn::MulAdd(hn::MulAdd(hn::MulAdd(k(0x1.6cd1f20e3c44fp-19), z, k(-0x1.a00f7f262184fp-13)), z,
                                       k(0x1.1111086a5e223p-7)),
                            z, k(-0x1.5555554c71cccp-3));
    const V ps = hn::MulAdd(hn::Mul(z, r), sp, r);
    const V cp = hn::MulAdd(hn::MulAdd(hn::MulAdd(k(-0x1.241e9bfe4bb71p-22), z, k(0x1.a010decf9a4d4p-16)), z,
                                       k(-0x1.6c16b82a13ed3p-10)),
                            z, k(0x1.5555554ed983ap-5));
    const V pc = hn::MulAdd(z, hn::MulAdd(z, cp, k(-0.5)), k(1.0));
    Assemble(d, t, hn::Xor(x, ax), ps, pc, s, c);
}

template <class D, class V = hn::Vec<D>>
HWY_INLINE void SinCosF32(D d, V x, V &s, V &c)
{
#if HWY_TARGET == HWY_SCALAR
    const hn::Rebind<double, D> dd;
    hn::Vec<decltype(dd)> sd, cd;
    SinCosF32InF64(dd, hn::PromoteTo(dd, x), sd, cd);
    s = hn::DemoteTo(d, sd);
    c = hn::DemoteTo(d, cd);
#else
    const hn::Half<D> dh;
    const hn::Rebind<double, decltype(dh)> dd;
    hn::Vec<decltype(dd)> slo, clo, shi, chi;
    SinCosF32InF64(dd, hn::PromoteTo(dd, hn::LowerHalf(dh, x)), slo, clo);
    SinCosF32InF64(dd, hn::PromoteTo(dd, hn::UpperHalf(dh, x)), shi, chi);
    s = hn::Combine(d, hn::DemoteTo(dh, shi), hn::DemoteTo(dh, slo));
    c = hn::Combine(d, hn::DemoteTo(dh, chi), hn::DemoteTo(dh, clo));
#endif
}

}  // namespace trig

template <class D, class V = hn::Vec<D>>
HWY_INLINE void SinCos(D d, V x, V &s, V &c)
{
    using T = hn::TFromD<D>;
    if constexpr (sizeof(T) == 8)
        trig::SinCosF64(d, x, s, c);
    else
        trig::SinCosF32(d, x, s, c);
    // Beyond the limit, infinities and NaN (rare): lane by lane.
    const auto far = hn::Not(hn::Le(hn::Abs(x), hn::Set(d, T(kTrigReduceLimit))));
    if (HWY_LIKELY(hn::AllFalse(d, far))) return;
    HWY_ALIGN T bx[hn::MaxLanes(D())], bs[hn::MaxLanes(D())], bc[hn::MaxLanes(D())];
    hn::Store(x, d, bx);
    hn::Store(s, d, bs);
    hn::Store(c, d, bc);
    for (size_t i = 0; i < hn::Lanes(d); ++i) {
        const double xi = bx[i];
        if (fabs(xi) <= kTrigReduceLimit) continue;
        const bool finite = isfinite(xi);
        bs[i] = T(finite ? sin(xi) : xi - xi);
        bc[i] = T(finite ? cos(xi) : xi - xi);
    }
    s = hn::Load(d, bs);
    c = hn::Load(d, bc);
}

template <class D, class V = hn::Vec<D>>
HWY_INLINE V Sine(D d, V x)
{
    V s, c;
    SinCos(d, x, s, c);
    return s;
}

template <class D, class V = hn::Vec<D>>
HWY_INLINE V Cosine(D d, V x)
{
    V s, c;
    SinCos(d, x, s, c);
    return c;
}

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
