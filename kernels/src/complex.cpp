/* Complex forms: conjugates, parts, magnitude, phase, power spectrum and
 * the Cartesian / polar conversions, for interleaved complex arrays (64fc)
 * and for parts held in two real arrays (32f, 64f).
 *
 *   Magnitude    hypot: parts are scaled by a power of two before squaring,
 *                so huge and tiny parts neither overflow nor underflow; an
 *                infinite part gives +inf even when the other is NaN.
 *   Phase        atan2(im, re) with its signed zeros (atan2(-0, x > 0) = -0),
 *                but in (-pi, pi] as documented: a zero imaginary part of
 *                either sign with a real part whose sign bit is set (x < 0,
 *                -0, -inf) gives +pi, never -pi.
 *   PowerSpectr  re^2 + im^2, plainly (it may overflow or underflow).
 *   PolarToCart  magn * cos(phase) + magn * sin(phase) i (trig-inl.h).
 *   ConjFlip     pDst[n] = conj(pSrc[len - 1 - n]); pSrc == pDst is allowed.
 *   RealToCplx   either source (not both) may be null, read as zeros.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "complex.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <float.h>
#include <math.h>

#include "entry.h"
#include "ipps.h"
#include "loops-inl.h"
#include "math-inl.h"
#include "trig-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

/* sqrt(x^2 + y^2) on x, y scaled by 2^-k, 2^k being the binade of the
 * larger magnitude clamped to the normal range below the top binade, so
 * that the scaled larger part lies in [1, 4) (or below 1 for subnormal
 * parts) and both scalings are exact powers of two. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE V ScaledHypot(D d, V x, V y)
{
    using T = hn::TFromD<D>;
    using TU = hwy::MakeUnsigned<T>;
    constexpr bool kF64 = sizeof(T) == 8;
    const hn::RebindToUnsigned<D> du;
    const V ax = hn::Abs(x), ay = hn::Abs(y);
    const V lo = hn::Set(d, kF64 ? T(DBL_MIN) : T(FLT_MIN));
    const V hi = hn::Set(d, kF64 ? T(0x1p1022) : T(0x1p126f));
    const auto e = hn::And(hn::BitCast(du, hn::Min(hn::Max(hn::Max(ax, ay), lo), hi)),
                           hn::Set(du, kF64 ? TU(0x7ff0000000000000ull) : TU(0x7f800000u)));
    // 2^k has the clamped exponent field; 2^-k has twice the bias minus it.
    const V up = hn::BitCast(d, e);
    const V down = hn::BitCast(d, hn::Sub(hn::Set(du, kF64 ? TU(0x7fe0000000000000ull) : TU(0x7f000000u)), e));
    const V sx = hn::Mul(ax, down), sy = hn::Mul(ay, down);
    const V r = hn::Mul(hn::Sqrt(hn::MulAdd(sx, sx, hn::Mul(sy, sy))), up);
    const V inf = hn::Set(d, T(HUGE_VAL));
    return hn::IfThenElse(hn::Or(hn::Eq(ax, inf), hn::Eq(ay, inf)), inf, r);
}

/* Where x^2 + y^2 neither overflows nor comes near the subnormal range
 * for a whole vector, the scaling is left out: scaling by powers of two
 * does not change the rounded result there. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE V Hypot(D d, V x, V y)
{
    using T = hn::TFromD<D>;
    const V s = hn::MulAdd(x, x, hn::Mul(y, y));
    const V lo = hn::Set(d, sizeof(T) == 8 ? T(0x1p-968) : T(0x1p-100f));
    const V hi = hn::Set(d, sizeof(T) == 8 ? T(DBL_MAX) : T(FLT_MAX));
    if (HWY_LIKELY(hn::AllTrue(d, hn::And(hn::Ge(s, lo), hn::Le(s, hi))))) return hn::Sqrt(s);
    return ScaledHypot(d, x, y);
}

/* atan2(y, x) from a = atan(t), t = min(|x|, |y|) / max(|x|, |y|) in
 * [0, 1]: pi/2 - a when |y| > |x|, then pi - that when x has its sign bit
 * set, with the sign of y unless y is a zero there (+pi, not -pi). 0/0 is
 * taken as 0 and inf/inf as 1; the constants pi/2 and pi are added in two
 * parts. */
template <class D, class V = hn::Vec<D>>
HWY_INLINE V Atan2(D d, V y, V x)
{
    using T = hn::TFromD<D>;
    constexpr bool kF64 = sizeof(T) == 8;
    const hn::RebindToSigned<D> di;
    const V ax = hn::Abs(x), ay = hn::Abs(y);
    const V lo = hn::Min(ax, ay), hi = hn::Max(ax, ay);
    const V inf = hn::Set(d, T(HUGE_VAL));
    V t = hn::IfThenZeroElse(hn::Eq(hi, hn::Zero(d)), hn::Div(lo, hi));
    t = hn::IfThenElse(hn::Eq(lo, inf), hn::Set(d, T(1)), t);
    V a = AtanKernel(d, t);
    const V pio2_hi = hn::Set(d, T(kF64 ? 1.5707963267948966e+00 : 1.5707963705062866e+00));
    const V pio2_lo = hn::Set(d, T(kF64 ? 6.123233995736766e-17 : -4.3711388286737929e-08));
    a = hn::IfThenElse(hn::Gt(ay, ax), hn::Add(hn::Sub(pio2_hi, a), pio2_lo), a);
    const auto x_neg = hn::RebindMask(d, hn::Lt(hn::BitCast(di, x), hn::Zero(di)));
    const V pi_hi = hn::Add(pio2_hi, pio2_hi), pi_lo = hn::Add(pio2_lo, pio2_lo);
    a = hn::IfThenElse(x_neg, hn::Add(hn::Sub(pi_hi, a), pi_lo), a);
    a = hn::IfThenElse(hn::And(x_neg, hn::Eq(y, hn::Zero(d))), a, hn::CopySign(a, y));
    return hn::IfThenElse(hn::Or(hn::IsNaN(x), hn::IsNaN(y)), hn::Add(x, y), a);
}

/* Operations on a complex value given as parts or as a split pair. */
#define ORB_PARTS_OP(Name, expr)                                                           \
    struct Name {                                                                          \
        template <class D, class V>                                                        \
        HWY_INLINE auto operator()(D d, V re, V im) const { return expr; }                 \
        template <class D, class V>                                                        \
        HWY_INLINE auto operator()(D d, Cx<V> z) const { return (*this)(d, z.re, z.im); }  \
    };
ORB_PARTS_OP(MagnitudeOp, Hypot(d, re, im))
ORB_PARTS_OP(PhaseOp, Atan2(d, im, re))
ORB_PARTS_OP(PowerOp, hn::MulAdd(re, re, hn::Mul(im, im)))
ORB_PARTS_OP(PolarOp, (Two<V>{Hypot(d, re, im), Atan2(d, im, re)}))
ORB_PARTS_OP(RealOp, re)
ORB_PARTS_OP(ImagOp, im)
ORB_PARTS_OP(SplitOp, (Two<V>{re, im}))
#undef ORB_PARTS_OP

/* (magnitude, phase) to R{re, im}, R being Cx or Two. */
template <template <class> class R>
struct CartOp {
    template <class D, class V>
    HWY_INLINE R<V> operator()(D d, V m, V phase) const
    {
        V s, c;
        SinCos(d, phase, s, c);
        return {hn::Mul(m, c), hn::Mul(m, s)};
    }
};

struct JoinOp {
    template <class D, class V>
    HWY_INLINE Cx<V> operator()(D, V re, V im) const { return {re, im}; }
};

struct ConjOp {
    template <class D, class V>
    HWY_INLINE Cx<V> operator()(D, Cx<V> z) const { return {z.re, hn::Neg(z.im)}; }
};

/* An interleaved complex array of len values read from its end: element i
 * is pSrc[len - 1 - i]. */
struct InFlipped {
    const double *p;
    size_t len;
    const void *Base() const { return p; }
    template <class D>
    HWY_INLINE Cx<hn::Vec<D>> Load(D d, size_t i) const
    {
        Cx<hn::Vec<D>> c;
        hn::LoadInterleaved2(d, p + 2 * (len - i - hn::Lanes(d)), c.re, c.im);
        return {hn::Reverse(d, c.re), hn::Reverse(d, c.im)};
    }
    template <class D>
    HWY_INLINE void Prefetch(D d, size_t i) const
    {
        // Downwards: the lines kPrefetchBytes below this load.
        PrefetchAt(p + 2 * (len - i - hn::Lanes(d)), -kPrefetchBytes, 2 * hn::Lanes(d) * sizeof(double));
    }
    template <class D>
    HWY_INLINE Cx<hn::Vec<D>> LoadTail(D d, size_t i, size_t r) const
    {
        HWY_ALIGN double re[hn::MaxLanes(D())], im[hn::MaxLanes(D())];
        for (size_t k = 0; k < hn::Lanes(d); ++k) {
            re[k] = k < r ? p[2 * (len - 1 - i - k)] : 1.0;
            im[k] = k < r ? p[2 * (len - 1 - i - k) + 1] : 0.0;
        }
        return {hn::Load(d, re), hn::Load(d, im)};
    }
};

IppStatus Conj_64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len) { return MapPairs(src, dst, len, ConjOp()); }

IppStatus ConjFlip_64fc(const Ipp64fc *src, Ipp64fc *dst, size_t len)
{
    if (src == dst) {
        // In place: swap from both ends (plain loop; rare, and exact).
        for (size_t i = 0, j = len - 1; i <= j && j < len; ++i, --j) {
            const Ipp64fc a = src[i], b = src[j];
            dst[i] = {b.re, -b.im};
            dst[j] = {a.re, -a.im};
        }
        return ippStsNoErr;
    }
    ConjOp op;
    Zip(Tag<double>(), len, op, OutPairs<double>{Parts(dst)}, InFlipped{Parts(src), len});
    return ippStsNoErr;
}

template <class Op, class O>
HWY_INLINE IppStatus FromPairs(const Ipp64fc *src, const O &out, size_t len)
{
    Op op;
    Zip(Tag<double>(), len, op, out, InPairs<double>{Parts(src)});
    return ippStsNoErr;
}

template <class Op, typename T, class O>
HWY_INLINE IppStatus FromParts(const T *re, const T *im, const O &out, size_t len)
{
    Op op;
    Zip(Tag<T>(), len, op, out, In<T>{re}, In<T>{im});
    return ippStsNoErr;
}

IppStatus Real_64fc(const Ipp64fc *s, double *o, size_t n) { return FromPairs<RealOp>(s, Out<double>{o}, n); }
IppStatus Imag_64fc(const Ipp64fc *s, double *o, size_t n) { return FromPairs<ImagOp>(s, Out<double>{o}, n); }
IppStatus CplxToReal_64fc(const Ipp64fc *s, double *re, double *im, size_t n)
{
    return FromPairs<SplitOp>(s, OutTwo<double>{re, im}, n);
}

/* The interleaved form and the split forms of a parts operation. */
#define ORB_PARTS_WORKERS(Name, Op)                                               \
    IppStatus Name##_64fc(const Ipp64fc *s, double *o, size_t n)                  \
    {                                                                             \
        return FromPairs<Op>(s, Out<double>{o}, n);                               \
    }                                                                             \
    IppStatus Name##_32f(const float *re, const float *im, float *o, size_t n)    \
    {                                                                             \
        return FromParts<Op>(re, im, Out<float>{o}, n);                           \
    }                                                                             \
    IppStatus Name##_64f(const double *re, const double *im, double *o, size_t n) \
    {                                                                             \
        return FromParts<Op>(re, im, Out<double>{o}, n);                          \
    }
ORB_PARTS_WORKERS(Magnitude, MagnitudeOp)
ORB_PARTS_WORKERS(Phase, PhaseOp)
ORB_PARTS_WORKERS(PowerSpectr, PowerOp)
#undef ORB_PARTS_WORKERS

IppStatus CartToPolar_64fc(const Ipp64fc *s, double *magn, double *phase, size_t n)
{
    return FromPairs<PolarOp>(s, OutTwo<double>{magn, phase}, n);
}
IppStatus CartToPolar_64f(const double *re, const double *im, double *magn, double *phase, size_t n)
{
    return FromParts<PolarOp>(re, im, OutTwo<double>{magn, phase}, n);
}

IppStatus PolarToCart_64fc(const double *magn, const double *phase, Ipp64fc *o, size_t n)
{
    return FromParts<CartOp<Cx>>(magn, phase, OutPairs<double>{Parts(o)}, n);
}
IppStatus PolarToCart_64f(const double *magn, const double *phase, double *re, double *im, size_t n)
{
    return FromParts<CartOp<Two>>(magn, phase, OutTwo<double>{re, im}, n);
}

IppStatus RealToCplx_64f(const double *re, const double *im, Ipp64fc *o, size_t n)
{
    const Tag<double> d;
    JoinOp op;
    const OutPairs<double> out{Parts(o)};
    if (re == nullptr)
        Zip(d, n, op, out, InZero<double>(), In<double>{im});
    else if (im == nullptr)
        Zip(d, n, op, out, In<double>{re}, InZero<double>());
    else
        Zip(d, n, op, out, In<double>{re}, In<double>{im});
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
ORB_MAP(Conj_64fc, Ipp64fc, Ipp64fc)
ORB_MAP(ConjFlip_64fc, Ipp64fc, Ipp64fc)
ORB_MAP(Real_64fc, Ipp64fc, Ipp64f)
ORB_MAP(Imag_64fc, Ipp64fc, Ipp64f)
ORB_ENTRY(CplxToReal_64fc, (const Ipp64fc *pSrc, Ipp64f *pDstRe, Ipp64f *pDstIm, int len),
          (len, pSrc, pDstRe, pDstIm), (pSrc, pDstRe, pDstIm, size_t(len)))
ORB_MAP(Magnitude_64fc, Ipp64fc, Ipp64f)
ORB_PAIRWISE(Magnitude_32f, Ipp32f)
ORB_PAIRWISE(Magnitude_64f, Ipp64f)
ORB_MAP(Phase_64fc, Ipp64fc, Ipp64f)
ORB_PAIRWISE(Phase_32f, Ipp32f)
ORB_PAIRWISE(Phase_64f, Ipp64f)
ORB_MAP(PowerSpectr_64fc, Ipp64fc, Ipp64f)
ORB_PAIRWISE(PowerSpectr_32f, Ipp32f)
ORB_PAIRWISE(PowerSpectr_64f, Ipp64f)
ORB_ENTRY(CartToPolar_64fc, (const Ipp64fc *pSrc, Ipp64f *pDstMagn, Ipp64f *pDstPhase, int len),
          (len, pSrc, pDstMagn, pDstPhase), (pSrc, pDstMagn, pDstPhase, size_t(len)))
ORB_ENTRY(CartToPolar_64f,
          (const Ipp64f *pSrcRe, const Ipp64f *pSrcIm, Ipp64f *pDstMagn, Ipp64f *pDstPhase, int len),
          (len, pSrcRe, pSrcIm, pDstMagn, pDstPhase), (pSrcRe, pSrcIm, pDstMagn, pDstPhase, size_t(len)))
ORB_ENTRY(PolarToCart_64fc, (const Ipp64f *pSrcMagn, const Ipp64f *pSrcPhase, Ipp64fc *pDst, int len),
          (len, pSrcMagn, pSrcPhase, pDst), (pSrcMagn, pSrcPhase, pDst, size_t(len)))
ORB_ENTRY(PolarToCart_64f,
          (const Ipp64f *pSrcMagn, const Ipp64f *pSrcPhase, Ipp64f *pDstRe, Ipp64f *pDstIm, int len),
          (len, pSrcMagn, pSrcPhase, pDstRe, pDstIm), (pSrcMagn, pSrcPhase, pDstRe, pDstIm, size_t(len)))
/* One source may be absent (zeros), not both: the one checked is whichever
 * is there. */
ORB_ENTRY(RealToCplx_64f, (const Ipp64f *pSrcRe, const Ipp64f *pSrcIm, Ipp64fc *pDst, int len),
          (len, pDst, pSrcRe != nullptr ? pSrcRe : pSrcIm), (pSrcRe, pSrcIm, pDst, size_t(len)))
#endif  // HWY_ONCE
