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
 *   Div_64fc      a divisor of 0 + 0i is the same warning; that element
 *                 becomes re/0 + (im/0)i taken part by part.
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

#include "binary-inl.h"
#include "ipps.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <typename T>
using Tag = hn::ScalableTag<T>;

/* ---- With a constant: op holds the constant as a vector. ---- */

#define ORB_CONST_OP(Name, expr)                                                    \
    template <class D>                                                              \
    struct Name {                                                                   \
        hn::Vec<D> c;                                                               \
        HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> x) const { return expr; }    \
    };
ORB_CONST_OP(AddCOp, hn::Add(x, c))
ORB_CONST_OP(SubCOp, hn::Sub(x, c))
ORB_CONST_OP(SubCRevOp, hn::Sub(c, x))
ORB_CONST_OP(MulCOp, hn::Mul(x, c))
ORB_CONST_OP(DivCOp, hn::Div(x, c))
#undef ORB_CONST_OP

/* c / x, remembering lanes with a zero divisor. */
template <class D>
struct DivCRevOp {
    hn::Vec<D> c, zero;
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> x)
    {
        zero = hn::Or(zero, hn::VecFromMask(d, hn::Eq(x, hn::Zero(d))));
        return hn::Div(c, x);
    }
};

template <template <class> class Op, typename T>
HWY_INLINE IppStatus WithConst(const T *src, T val, T *dst, size_t len)
{
    const Tag<T> d;
    Op<Tag<T>> op{hn::Set(d, val)};
    Zip(d, len, op, Out<T>{dst}, In<T>{src});
    return ippStsNoErr;
}

#define ORB_CONST_WORKERS(Name, Op)                                                                   \
    IppStatus Name##F32(const float *s, float v, float *o, size_t n) { return WithConst<Op>(s, v, o, n); } \
    IppStatus Name##F64(const double *s, double v, double *o, size_t n) { return WithConst<Op>(s, v, o, n); }
ORB_CONST_WORKERS(AddC, AddCOp)
ORB_CONST_WORKERS(SubC, SubCOp)
ORB_CONST_WORKERS(SubCRev, SubCRevOp)
ORB_CONST_WORKERS(MulC, MulCOp)
ORB_CONST_WORKERS(DivC, DivCOp)
#undef ORB_CONST_WORKERS

IppStatus DivCRevF32(const float *src, float val, float *dst, size_t len)
{
    const Tag<float> d;
    DivCRevOp<Tag<float>> op{hn::Set(d, val), hn::Zero(d)};
    Zip(d, len, op, Out<float>{dst}, In<float>{src});
    return AnySet(d, op.zero) ? ippStsDivByZero : ippStsNoErr;
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

template <class D>
struct CAddCOp {
    hn::Vec<D> c, d;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D, Cx<hn::Vec<D>> x) const { return {hn::Add(x.re, c), hn::Add(x.im, d)}; }
};
template <class D>
struct CSubCOp {
    hn::Vec<D> c, d;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D, Cx<hn::Vec<D>> x) const { return {hn::Sub(x.re, c), hn::Sub(x.im, d)}; }
};
template <class D>
struct CSubCRevOp {
    hn::Vec<D> c, d;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D, Cx<hn::Vec<D>> x) const { return {hn::Sub(c, x.re), hn::Sub(d, x.im)}; }
};
template <class D>
struct CMulCOp {
    hn::Vec<D> c, d;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D, Cx<hn::Vec<D>> x) const { return Product(x, c, d); }
};
template <class D, bool kReLarger>
struct CDivCOp {
    hn::Vec<D> r, den;
    HWY_INLINE Cx<hn::Vec<D>> operator()(D, Cx<hn::Vec<D>> x) const
    {
        if constexpr (kReLarger) return Quotient(x.re, x.im, r, den);
        const Cx<hn::Vec<D>> q = Quotient(x.im, x.re, r, den);
        return {q.re, hn::Neg(q.im)};
    }
};

template <template <class> class Op>
HWY_INLINE IppStatus PairsWith(const Ipp64fc *src, Ipp64fc val, Ipp64fc *dst, size_t len)
{
    const Tag<double> d;
    Op<Tag<double>> op{hn::Set(d, val.re), hn::Set(d, val.im)};
    Zip(d, len, op, OutPairs<double>{Parts(dst)}, InPairs<double>{Parts(src)});
    return ippStsNoErr;
}

IppStatus AddCC64(const Ipp64fc *s, Ipp64fc v, Ipp64fc *o, size_t n) { return PairsWith<CAddCOp>(s, v, o, n); }
IppStatus SubCC64(const Ipp64fc *s, Ipp64fc v, Ipp64fc *o, size_t n) { return PairsWith<CSubCOp>(s, v, o, n); }
IppStatus SubCRevC64(const Ipp64fc *s, Ipp64fc v, Ipp64fc *o, size_t n) { return PairsWith<CSubCRevOp>(s, v, o, n); }
IppStatus MulCC64(const Ipp64fc *s, Ipp64fc v, Ipp64fc *o, size_t n) { return PairsWith<CMulCOp>(s, v, o, n); }

IppStatus DivCC64(const Ipp64fc *src, Ipp64fc val, Ipp64fc *dst, size_t len)
{
    // r and den are formed with this target's arithmetic, as in Div.
    using V = hn::Vec<Tag<double>>;
    const Tag<double> d;
    const bool re_larger = fabs(val.re) >= fabs(val.im);
    const V big = hn::Set(d, re_larger ? val.re : val.im), small = hn::Set(d, re_larger ? val.im : val.re);
    const V r = hn::Div(small, big), den = hn::MulAdd(small, r, big);
    const OutPairs<double> out{Parts(dst)};
    const InPairs<double> in{Parts(src)};
    if (re_larger) {
        CDivCOp<Tag<double>, true> op{r, den};
        Zip(d, len, op, out, in);
    } else {
        CDivCOp<Tag<double>, false> op{r, den};
        Zip(d, len, op, out, in);
    }
    return ippStsNoErr;
}

/* ---- Two vectors: op(a, b) gets pSrc1 as a and pSrc2 as b. ---- */

#define ORB_PAIR_OP(Name, expr)                                                           \
    struct Name {                                                                         \
        template <class D, class V>                                                       \
        HWY_INLINE V operator()(D, V a, V b) const { return expr; }                       \
    };
ORB_PAIR_OP(AddOp, hn::Add(a, b))
ORB_PAIR_OP(SubOp, hn::Sub(b, a))
ORB_PAIR_OP(MulOp, hn::Mul(a, b))
#undef ORB_PAIR_OP

template <class D>
struct DivOp {
    hn::Vec<D> zero;
    HWY_INLINE hn::Vec<D> operator()(D d, hn::Vec<D> a, hn::Vec<D> b)
    {
        zero = hn::Or(zero, hn::VecFromMask(d, hn::Eq(a, hn::Zero(d))));
        return hn::Div(b, a);
    }
};

struct AddProductOp {
    template <class D, class V>
    HWY_INLINE V operator()(D, V a, V b, V acc) const { return hn::MulAdd(a, b, acc); }
};

template <typename T, class Op>
HWY_INLINE IppStatus Pairwise(const T *a, const T *b, T *dst, size_t len, Op op)
{
    Zip(Tag<T>(), len, op, Out<T>{dst}, In<T>{a}, In<T>{b});
    return ippStsNoErr;
}

IppStatus AddF32(const float *a, const float *b, float *o, size_t n) { return Pairwise(a, b, o, n, AddOp()); }
IppStatus AddF64(const double *a, const double *b, double *o, size_t n) { return Pairwise(a, b, o, n, AddOp()); }
IppStatus SubF32(const float *a, const float *b, float *o, size_t n) { return Pairwise(a, b, o, n, SubOp()); }
IppStatus SubF64(const double *a, const double *b, double *o, size_t n) { return Pairwise(a, b, o, n, SubOp()); }
IppStatus MulF32(const float *a, const float *b, float *o, size_t n) { return Pairwise(a, b, o, n, MulOp()); }
IppStatus MulF64(const double *a, const double *b, double *o, size_t n) { return Pairwise(a, b, o, n, MulOp()); }

template <typename T>
HWY_INLINE IppStatus DivT(const T *a, const T *b, T *dst, size_t len)
{
    const Tag<T> d;
    DivOp<Tag<T>> op{hn::Zero(d)};
    Zip(d, len, op, Out<T>{dst}, In<T>{a}, In<T>{b});
    return AnySet(d, op.zero) ? ippStsDivByZero : ippStsNoErr;
}
IppStatus DivF32(const float *a, const float *b, float *o, size_t n) { return DivT(a, b, o, n); }
IppStatus DivF64(const double *a, const double *b, double *o, size_t n) { return DivT(a, b, o, n); }

template <typename T>
HWY_INLINE IppStatus AddProductT(const T *a, const T *b, T *acc, size_t len)
{
    AddProductOp op;
    Zip(Tag<T>(), len, op, Out<T>{acc}, In<T>{a}, In<T>{b}, In<T>{acc});
    return ippStsNoErr;
}
IppStatus AddProductF32(const float *a, const float *b, float *o, size_t n) { return AddProductT(a, b, o, n); }
IppStatus AddProductF64(const double *a, const double *b, double *o, size_t n) { return AddProductT(a, b, o, n); }

/* Complex sums are lane-wise sums of the interleaved arrays. */
IppStatus AddC64(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    return AddF64(Parts(a), Parts(b), Parts(o), 2 * n);
}
IppStatus SubC64(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    return SubF64(Parts(a), Parts(b), Parts(o), 2 * n);
}

struct CMulOp {
    template <class D, class V>
    HWY_INLINE Cx<V> operator()(D, Cx<V> x, Cx<V> y) const { return Product(x, y.re, y.im); }
};

/* acc + x y with the sum fused into the products where the target can. */
struct CAddProductOp {
    template <class D, class V>
    HWY_INLINE Cx<V> operator()(D, Cx<V> x, Cx<V> y, Cx<V> acc) const
    {
        return {hn::MulAdd(x.re, y.re, hn::NegMulAdd(x.im, y.im, acc.re)),
                hn::MulAdd(x.im, y.re, hn::MulAdd(x.re, y.im, acc.im))};
    }
};

template <class Op>
HWY_INLINE IppStatus ComplexPairwise(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *dst, size_t len, Op op)
{
    Zip(Tag<double>(), len, op, OutPairs<double>{Parts(dst)}, InPairs<double>{Parts(a)}, InPairs<double>{Parts(b)});
    return ippStsNoErr;
}

IppStatus MulC64(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    return ComplexPairwise(a, b, o, n, CMulOp());
}

IppStatus AddProductC64(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    CAddProductOp op;
    Zip(Tag<double>(), n, op, OutPairs<double>{Parts(o)}, InPairs<double>{Parts(a)}, InPairs<double>{Parts(b)},
        InPairs<double>{Parts(o)});
    return ippStsNoErr;
}

/* y / x, x = c + di, by Quotient. A zero divisor gives each part of y
 * divided by +0 and is remembered. */
template <class D>
struct CDivOp {
    hn::Vec<D> zero;
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
        zero = hn::Or(zero, hn::VecFromMask(d, z));
        q.re = hn::IfThenElse(z, hn::Div(y.re, hn::Zero(d)), q.re);
        q.im = hn::IfThenElse(z, hn::Div(y.im, hn::Zero(d)), q.im);
        return q;
    }
};

IppStatus DivC64(const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *o, size_t n)
{
    const Tag<double> d;
    CDivOp<Tag<double>> op{hn::Zero(d)};
    Zip(d, n, op, OutPairs<double>{Parts(o)}, InPairs<double>{Parts(a)}, InPairs<double>{Parts(b)});
    return AnySet(d, op.zero) ? ippStsDivByZero : ippStsNoErr;
}

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {

HWY_EXPORT(AddCF32);
HWY_EXPORT(AddCF64);
HWY_EXPORT(AddCC64);
HWY_EXPORT(SubCF32);
HWY_EXPORT(SubCF64);
HWY_EXPORT(SubCC64);
HWY_EXPORT(SubCRevF32);
HWY_EXPORT(SubCRevF64);
HWY_EXPORT(SubCRevC64);
HWY_EXPORT(MulCF32);
HWY_EXPORT(MulCF64);
HWY_EXPORT(MulCC64);
HWY_EXPORT(DivCF32);
HWY_EXPORT(DivCF64);
HWY_EXPORT(DivCC64);
HWY_EXPORT(DivCRevF32);
HWY_EXPORT(AddF32);
HWY_EXPORT(AddF64);
HWY_EXPORT(AddC64);
HWY_EXPORT(SubF32);
HWY_EXPORT(SubF64);
HWY_EXPORT(SubC64);
HWY_EXPORT(MulF32);
HWY_EXPORT(MulF64);
HWY_EXPORT(MulC64);
HWY_EXPORT(DivF32);
HWY_EXPORT(DivF64);
HWY_EXPORT(DivC64);
HWY_EXPORT(AddProductF32);
HWY_EXPORT(AddProductF64);
HWY_EXPORT(AddProductC64);

/* Pointers are checked before the length. */
static IppStatus Check(const void *a, const void *b, const void *c, int len)
{
    if (a == nullptr || b == nullptr || c == nullptr) return ippStsNullPtrErr;
    return len < 1 ? ippStsSizeErr : ippStsNoErr;
}

static bool IsZero(Ipp32f v) { return v == 0; }
static bool IsZero(Ipp64f v) { return v == 0; }
static bool IsZero(Ipp64fc v) { return v.re == 0 && v.im == 0; }

}  // namespace orb_kernels

#define ORB_WITH_CONST(name, T, worker)                                            \
    IppStatus name(const T *pSrc, T val, T *pDst, int len)                         \
    {                                                                              \
        const IppStatus st = orb_kernels::Check(pSrc, pDst, pDst, len);            \
        if (st != ippStsNoErr) return st;                                          \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc, val, pDst, size_t(len)); \
    }

/* A zero divisor constant is refused before anything is written. */
#define ORB_DIV_CONST(name, T, worker)                                             \
    IppStatus name(const T *pSrc, T val, T *pDst, int len)                         \
    {                                                                              \
        const IppStatus st = orb_kernels::Check(pSrc, pDst, pDst, len);            \
        if (st != ippStsNoErr) return st;                                          \
        if (orb_kernels::IsZero(val)) return ippStsDivByZeroErr;                   \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc, val, pDst, size_t(len)); \
    }

#define ORB_TWO(name, T, worker)                                                   \
    IppStatus name(const T *pSrc1, const T *pSrc2, T *pDst, int len)               \
    {                                                                              \
        const IppStatus st = orb_kernels::Check(pSrc1, pSrc2, pDst, len);          \
        if (st != ippStsNoErr) return st;                                          \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc1, pSrc2, pDst, size_t(len)); \
    }

extern "C" {
ORB_WITH_CONST(ippsAddC_32f, Ipp32f, AddCF32)
ORB_WITH_CONST(ippsAddC_64f, Ipp64f, AddCF64)
ORB_WITH_CONST(ippsAddC_64fc, Ipp64fc, AddCC64)
ORB_WITH_CONST(ippsSubC_32f, Ipp32f, SubCF32)
ORB_WITH_CONST(ippsSubC_64f, Ipp64f, SubCF64)
ORB_WITH_CONST(ippsSubC_64fc, Ipp64fc, SubCC64)
ORB_WITH_CONST(ippsSubCRev_32f, Ipp32f, SubCRevF32)
ORB_WITH_CONST(ippsSubCRev_64f, Ipp64f, SubCRevF64)
ORB_WITH_CONST(ippsSubCRev_64fc, Ipp64fc, SubCRevC64)
ORB_WITH_CONST(ippsMulC_32f, Ipp32f, MulCF32)
ORB_WITH_CONST(ippsMulC_64f, Ipp64f, MulCF64)
ORB_WITH_CONST(ippsMulC_64fc, Ipp64fc, MulCC64)
ORB_DIV_CONST(ippsDivC_32f, Ipp32f, DivCF32)
ORB_DIV_CONST(ippsDivC_64f, Ipp64f, DivCF64)
ORB_DIV_CONST(ippsDivC_64fc, Ipp64fc, DivCC64)
ORB_WITH_CONST(ippsDivCRev_32f, Ipp32f, DivCRevF32)

ORB_TWO(ippsAdd_32f, Ipp32f, AddF32)
ORB_TWO(ippsAdd_64f, Ipp64f, AddF64)
ORB_TWO(ippsAdd_64fc, Ipp64fc, AddC64)
ORB_TWO(ippsSub_32f, Ipp32f, SubF32)
ORB_TWO(ippsSub_64f, Ipp64f, SubF64)
ORB_TWO(ippsSub_64fc, Ipp64fc, SubC64)
ORB_TWO(ippsMul_32f, Ipp32f, MulF32)
ORB_TWO(ippsMul_64f, Ipp64f, MulF64)
ORB_TWO(ippsMul_64fc, Ipp64fc, MulC64)
ORB_TWO(ippsDiv_32f, Ipp32f, DivF32)
ORB_TWO(ippsDiv_64f, Ipp64f, DivF64)
ORB_TWO(ippsDiv_64fc, Ipp64fc, DivC64)
ORB_TWO(ippsAddProduct_32f, Ipp32f, AddProductF32)
ORB_TWO(ippsAddProduct_64f, Ipp64f, AddProductF64)
ORB_TWO(ippsAddProduct_64fc, Ipp64fc, AddProductC64)
}

#undef ORB_WITH_CONST
#undef ORB_DIV_CONST
#undef ORB_TWO
#endif  // HWY_ONCE
