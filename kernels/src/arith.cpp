/* Arithmetic: ippsAdd/Sub/Mul/Div with a constant or a second vector,
 * ippsSubCRev, ippsDivCRev_32f and ippsAddProduct.
 *
 * Operand order of the two-vector forms: Sub gives pSrc2 - pSrc1 and Div
 * pSrc2 / pSrc1.
 *
 * Division by zero:
 *   Div, DivCRev  a zero divisor element is a warning (ippStsDivByZero);
 *                 every element is computed, giving the IEEE quotient
 *                 (+-inf, or NaN for 0/0).
 *   Div_64fc      a divisor of 0 + 0i (zeros of either sign) is the same
 *                 warning; that quotient is NaN + NaN i, whatever the
 *                 dividend (a complex zero has no direction to give an
 *                 infinity).
 *   DivC          a zero constant is an error (ippStsDivByZeroErr) and
 *                 nothing is written.
 *
 * Complex products use the plain formula (ac - bd) + (ad + bc)i, which may
 * overflow in an intermediate product. Complex quotients use Smith's
 * method: the smaller part of the divisor is divided by the larger and no
 * squares are formed, so huge and tiny divisors give the quotient wherever
 * it is in range. What remains: a dividend part times that ratio may turn
 * subnormal and lose precision, and dividends within a factor of two of
 * the largest double may overflow.
 * Complex sums and differences of two vectors are lane-wise on the
 * interleaved arrays; everything else splits them into parts.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "arith.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <math.h>

#include "entry.h"
#include "ipps.h"
#include "loops-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

/* ---- With a constant: op holds the constant as a vector. ---- */

#define ORB_CONST_OP(Name, expr)                                                 \
    template <class D>                                                           \
    struct Name {                                                                \
        hn::Vec<D> c;                                                            \
        HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> x) const { return expr; } \
    };
ORB_CONST_OP(AddCOp, hn::Add(x, c))
ORB_CONST_OP(SubCOp, hn::Sub(x, c))
ORB_CONST_OP(SubCRevOp, hn::Sub(c, x))
ORB_CONST_OP(MulCOp, hn::Mul(x, c))
ORB_CONST_OP(DivCOp, hn::Div(x, c))
#undef ORB_CONST_OP

#define ORB_CONST_WORKERS(Name, Op)                                                                         \
    IppStatus Name##_32f(const float *s, float v, float *o, size_t n) { return WithConst<Op>(s, v, o, n); } \
    IppStatus Name##_64f(const double *s, double v, double *o, size_t n) { return WithConst<Op>(s, v, o, n); }
ORB_CONST_WORKERS(AddC, AddCOp)
ORB_CONST_WORKERS(SubC, SubCOp)
ORB_CONST_WORKERS(SubCRev, SubCRevOp)
ORB_CONST_WORKERS(MulC, MulCOp)
ORB_CONST_WORKERS(DivC, DivCOp)
#undef ORB_CONST_WORKERS

/* c / x, remembering lanes with a zero divisor. */
template <class D>
struct DivCRevOp {
    hn::Vec<D> c;
    Faults<D> zero;
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x)
    {
        zero.Note(d, hn::Eq(x, hn::Zero(d)));
        return hn::Div(c, x);
    }
};

IppStatus DivCRev_32f(const float *src, float val, float *dst, size_t len)
{
    const Tag<float> d;
    DivCRevOp<Tag<float>> op{hn::Set(d, val), Faults(d)};
    Map(src, dst, len, op);
    return op.zero.Any(d) ? ippStsDivByZero : ippStsNoErr;
}

/* ---- Complex, on split parts: a + bi by c + di. ---- */

/* (a + bi)(c + di) = (ac - bd) + (bc + ad)i, shared by MulC and Mul so
 * that both round alike. */
template <class V>
HWY_INLINE Cx<V> Product(Cx<V> x, V c, V d)
{
    return {hn::MulSub(x.re, c, hn::Mul(x.im, d)), hn::MulAdd(x.im, c, hn::Mul(x.re, d))};
}

/* Smith's quotient (u + vr) / den, (v - ur) / den: with |c| >= |d|,
 * r = d/c, den = c + dr, u = a, v = b; otherwise r = c/d, den = cr + d,
 * u = b, v = a and the imaginary part changes sign. Shared by DivC and
 * Div so that both round alike. */
template <class V>
HWY_INLINE Cx<V> Quotient(V u, V v, V r, V den)
{
    return {hn::Div(hn::MulAdd(v, r, u), den), hn::Div(hn::NegMulAdd(u, r, v), den)};
}

/* The constant c + di as vectors c and d. */
#define ORB_PAIRS_CONST_OP(Name, expr)                                                   \
    template <class D>                                                                   \
    struct Name {                                                                        \
        hn::Vec<D> c, d;                                                                 \
        HWY_INLINE Cx<hn::Vec<D>> operator()(D, Cx<hn::Vec<D>> x) const { return expr; } \
    };
ORB_PAIRS_CONST_OP(AddCPairsOp, (Cx<hn::Vec<D>>{hn::Add(x.re, c), hn::Add(x.im, d)}))
ORB_PAIRS_CONST_OP(SubCPairsOp, (Cx<hn::Vec<D>>{hn::Sub(x.re, c), hn::Sub(x.im, d)}))
ORB_PAIRS_CONST_OP(SubCRevPairsOp, (Cx<hn::Vec<D>>{hn::Sub(c, x.re), hn::Sub(d, x.im)}))
ORB_PAIRS_CONST_OP(MulCPairsOp, Product(x, c, d))
#undef ORB_PAIRS_CONST_OP

template <template <class> class Op>
HWY_INLINE IppStatus PairsWith(const Ipp64fc *src, Ipp64fc val, Ipp64fc *dst, size_t len)
{
    const Tag<double> d;
    return MapPairs(src, dst, len, Op<Tag<double>>{hn::Set(d, val.re), hn::Set(d, val.im)});
}

IppStatus AddC_64fc(const Ipp64fc *s, Ipp64fc v, Ipp64fc *o, size_t n) { return PairsWith<AddCPairsOp>(s, v, o, n); }
IppStatus SubC_64fc(const Ipp64fc *s, Ipp64fc v, Ipp64fc *o, size_t n) { return PairsWith<SubCPairsOp>(s, v, o, n); }
IppStatus SubCRev_64fc(const Ipp64fc *s, Ipp64fc v, Ipp64fc *o, size_t n)
{
    return PairsWith<SubCRevPairsOp>(s, v, o, n);
}
IppStatus MulC_64fc(const Ipp64fc *s, Ipp64fc v, Ipp64fc *o, size_t n) { return PairsWith<MulCPairsOp>(s, v, o, n); }

/* x / (c + di) with r and den of Quotient fixed. */
template <class D, bool kReLarger>
struct DivCPairsOp {
    hn::Vec<D> r, den;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D, Cx<hn::Vec<D>> x) const
    {
        if constexpr (kReLarger) return Quotient(x.re, x.im, r, den);
        const Cx<hn::Vec<D>> q = Quotient(x.im, x.re, r, den);
        return {q.re, hn::Neg(q.im)};
    }
};

IppStatus DivC_64fc(const Ipp64fc *src, Ipp64fc val, Ipp64fc *dst, size_t len)
{
    // r and den are formed with this target's arithmetic, as in Div.
    using V = hn::Vec<Tag<double>>;
    const Tag<double> d;
    const bool re_larger = fabs(val.re) >= fabs(val.im);
    const V big = hn::Set(d, re_larger ? val.re : val.im), small = hn::Set(d, re_larger ? val.im : val.re);
    const V r = hn::Div(small, big), den = hn::MulAdd(small, r, big);
    if (re_larger) return MapPairs(src, dst, len, DivCPairsOp<Tag<double>, true>{r, den});
    return MapPairs(src, dst, len, DivCPairsOp<Tag<double>, false>{r, den});
}

/* ---- Two vectors: op(a, b) gets pSrc1 as a and pSrc2 as b. ---- */

#define ORB_PAIR_OP(Name, expr)                                     \
    struct Name {                                                   \
        template <class D, class V>                                 \
        HWY_INLINE V operator()(D, V a, V b) const { return expr; } \
    };
ORB_PAIR_OP(AddOp, hn::Add(a, b))
ORB_PAIR_OP(SubOp, hn::Sub(b, a))
ORB_PAIR_OP(MulOp, hn::Mul(a, b))
#undef ORB_PAIR_OP

template <class D>
struct DivOp {
    Faults<D> zero;
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> a, hn::Vec<D> b)
    {
        zero.Note(d, hn::Eq(a, hn::Zero(d)));
        return hn::Div(b, a);
    }
};

struct AddProductOp {
    template <class D, class V>
    HWY_INLINE V operator()(D, V a, V b, V acc) const { return hn::MulAdd(a, b, acc); }
};

IppStatus Add_32f(const float *a, const float *b, float *o, size_t n) { return Pairwise(a, b, o, n, AddOp()); }
IppStatus Add_64f(const double *a, const double *b, double *o, size_t n) { return Pairwise(a, b, o, n, AddOp()); }
IppStatus Sub_32f(const float *a, const float *b, float *o, size_t n) { return Pairwise(a, b, o, n, SubOp()); }
IppStatus Sub_64f(const double *a, const double *b, double *o, size_t n) { return Pairwise(a, b, o, n, SubOp()); }
IppStatus Mul_32f(const float *a, const float *b, float *o, size_t n) { return Pairwise(a, b, o, n, MulOp()); }
IppStatus Mul_64f(const double *a, const double *b, double *o, size_t n) { return Pairwise(a, b, o, n, MulOp()); }

template <typename T>
HWY_INLINE IppStatus DivT(const T *a, const T *b, T *dst, size_t len)
{
    const Tag<T> d;
    DivOp<Tag<T>> op{Faults(d)};
    Pairwise(a, b, dst, len, op);
    return op.zero.Any(d) ? ippStsDivByZero : ippStsNoErr;
}
IppStatus Div_32f(const float *a, const float *b, float *o, size_t n) { return DivT(a, b, o, n); }
IppStatus Div_64f(const double *a, const double *b, double *o, size_t n) { return DivT(a, b, o, n); }

template <typename T>
HWY_INLINE IppStatus AddProductT(const T *a, const T *b, T *acc, size_t len)
{
    AddProductOp op;
    Zip(Tag<T>(), len, op, Out<T>{acc}, In<T>{a}, In<T>{b}, In<T>{acc});
    return ippStsNoErr;
}
IppStatus AddProduct_32f(const float *a, const float *b, float *o, size_t n) { return AddProductT(a, b, o, n); }
IppStatus AddProduct_64f(const double *a, const double *b, double *o, size_t n) { return AddProductT(a, b, o, n); }

/* Complex sums are lane-wise sums of the interleaved arrays. */
IppStatus Add_64fc(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    return Add_64f(Parts(a), Parts(b), Parts(o), 2 * n);
}
IppStatus Sub_64fc(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    return Sub_64f(Parts(a), Parts(b), Parts(o), 2 * n);
}

struct MulPairsOp {
    template <class D, class V>
    HWY_INLINE Cx<V> operator()(D, Cx<V> x, Cx<V> y) const { return Product(x, y.re, y.im); }
};

/* acc + x y with the sum fused into the products where the target can. */
struct AddProductPairsOp {
    template <class D, class V>
    HWY_INLINE Cx<V> operator()(D, Cx<V> x, Cx<V> y, Cx<V> acc) const
    {
        return {hn::MulAdd(x.re, y.re, hn::NegMulAdd(x.im, y.im, acc.re)),
                hn::MulAdd(x.im, y.re, hn::MulAdd(x.re, y.im, acc.im))};
    }
};

/* y / x, x = c + di, by Quotient. A zero divisor, whatever the signs of
 * its zeros, gives NaN + NaN i and is remembered. */
template <class D>
struct DivPairsOp {
    Faults<D> zero;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D d, Cx<hn::Vec<D>> x, Cx<hn::Vec<D>> y)
    {
        using V = hn::Vec<D>;
        const auto re_larger = hn::Ge(hn::Abs(x.re), hn::Abs(x.im));
        const V big = hn::IfThenElse(re_larger, x.re, x.im);
        const V small = hn::IfThenElse(re_larger, x.im, x.re);
        const V r = hn::Div(small, big);
        Cx<V> q = Quotient(hn::IfThenElse(re_larger, y.re, y.im), hn::IfThenElse(re_larger, y.im, y.re), r,
                           hn::MulAdd(small, r, big));
        q.im = hn::IfThenElse(re_larger, q.im, hn::Neg(q.im));
        const auto z = hn::And(hn::Eq(x.re, hn::Zero(d)), hn::Eq(x.im, hn::Zero(d)));
        zero.Note(d, z);
        return {hn::IfThenElse(z, hn::NaN(d), q.re), hn::IfThenElse(z, hn::NaN(d), q.im)};
    }
};

template <class Op>
HWY_INLINE void ZipPairs(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *dst, size_t len, Op &op)
{
    Zip(Tag<double>(), len, op, OutPairs<double>{Parts(dst)}, InPairs<double>{Parts(a)}, InPairs<double>{Parts(b)});
}

IppStatus Mul_64fc(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    MulPairsOp op;
    ZipPairs(a, b, o, n, op);
    return ippStsNoErr;
}

IppStatus AddProduct_64fc(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    AddProductPairsOp op;
    Zip(Tag<double>(), n, op, OutPairs<double>{Parts(o)}, InPairs<double>{Parts(a)}, InPairs<double>{Parts(b)},
        InPairs<double>{Parts(o)});
    return ippStsNoErr;
}

IppStatus Div_64fc(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    const Tag<double> d;
    DivPairsOp<Tag<double>> op{Faults(d)};
    ZipPairs(a, b, o, n, op);
    return op.zero.Any(d) ? ippStsDivByZero : ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
namespace {
bool IsZero(Ipp32f v) { return v == 0; }
bool IsZero(Ipp64f v) { return v == 0; }
bool IsZero(Ipp64fc v) { return v.re == 0 && v.im == 0; }
}  // namespace
}  // namespace orb_kernels

/* A zero divisor constant is refused before anything is written. */
#define ORB_NONZERO orb_kernels::Refuse(orb_kernels::IsZero(val), ippStsDivByZeroErr)

ORB_WITH_C(AddC_32f, Ipp32f, Ipp32f)
ORB_WITH_C(AddC_64f, Ipp64f, Ipp64f)
ORB_WITH_C(AddC_64fc, Ipp64fc, Ipp64fc)
ORB_WITH_C(SubC_32f, Ipp32f, Ipp32f)
ORB_WITH_C(SubC_64f, Ipp64f, Ipp64f)
ORB_WITH_C(SubC_64fc, Ipp64fc, Ipp64fc)
ORB_WITH_C(SubCRev_32f, Ipp32f, Ipp32f)
ORB_WITH_C(SubCRev_64f, Ipp64f, Ipp64f)
ORB_WITH_C(SubCRev_64fc, Ipp64fc, Ipp64fc)
ORB_WITH_C(MulC_32f, Ipp32f, Ipp32f)
ORB_WITH_C(MulC_64f, Ipp64f, Ipp64f)
ORB_WITH_C(MulC_64fc, Ipp64fc, Ipp64fc)
ORB_WITH_C(DivC_32f, Ipp32f, Ipp32f, ORB_NONZERO)
ORB_WITH_C(DivC_64f, Ipp64f, Ipp64f, ORB_NONZERO)
ORB_WITH_C(DivC_64fc, Ipp64fc, Ipp64fc, ORB_NONZERO)
ORB_WITH_C(DivCRev_32f, Ipp32f, Ipp32f)
#undef ORB_NONZERO

ORB_PAIRWISE(Add_32f, Ipp32f)
ORB_PAIRWISE(Add_64f, Ipp64f)
ORB_PAIRWISE(Add_64fc, Ipp64fc)
ORB_PAIRWISE(Sub_32f, Ipp32f)
ORB_PAIRWISE(Sub_64f, Ipp64f)
ORB_PAIRWISE(Sub_64fc, Ipp64fc)
ORB_PAIRWISE(Mul_32f, Ipp32f)
ORB_PAIRWISE(Mul_64f, Ipp64f)
ORB_PAIRWISE(Mul_64fc, Ipp64fc)
ORB_PAIRWISE(Div_32f, Ipp32f)
ORB_PAIRWISE(Div_64f, Ipp64f)
ORB_PAIRWISE(Div_64fc, Ipp64fc)
ORB_PAIRWISE(AddProduct_32f, Ipp32f)
ORB_PAIRWISE(AddProduct_64f, Ipp64f)
ORB_PAIRWISE(AddProduct_64fc, Ipp64fc)
#endif  // HWY_ONCE
