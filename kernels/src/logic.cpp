/* Bitwise logic and shifts: ippsAnd/Or/Xor with a constant or a second
 * vector, ippsNot, ippsLShiftC and ippsRShiftC.
 *
 * RShiftC is arithmetic on signed data (16s, 32s) and logical on unsigned
 * data (8u). Shift counts at or beyond the element width shift every bit
 * out: left shifts and the logical right shift give 0, the arithmetic
 * right shift gives 0 or -1 by sign. A negative count is refused with
 * ippStsShiftErr, after the pointer and length checks, and nothing is
 * written.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "logic.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "binary-inl.h"
#include "ipps.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <typename T>
using Tag = hn::ScalableTag<T>;

template <class D>
struct AndCOp {
    hn::Vec<D> c;
    HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> x) const { return hn::And(x, c); }
};
template <class D>
struct OrCOp {
    hn::Vec<D> c;
    HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> x) const { return hn::Or(x, c); }
};
template <class D>
struct XorCOp {
    hn::Vec<D> c;
    HWY_INLINE hn::Vec<D> operator()(D, hn::Vec<D> x) const { return hn::Xor(x, c); }
};

struct AndOp {
    template <class D, class V>
    HWY_INLINE V operator()(D, V a, V b) const { return hn::And(a, b); }
};
struct OrOp {
    template <class D, class V>
    HWY_INLINE V operator()(D, V a, V b) const { return hn::Or(a, b); }
};
struct XorOp {
    template <class D, class V>
    HWY_INLINE V operator()(D, V a, V b) const { return hn::Xor(a, b); }
};
struct NotOp {
    template <class D, class V>
    HWY_INLINE V operator()(D, V x) const { return hn::Not(x); }
};

/* Counts here are below the element width. */
struct LShiftOp {
    int bits;
    template <class D, class V>
    HWY_INLINE V operator()(D, V x) const { return hn::ShiftLeftSame(x, bits); }
};
struct RShiftOp {
    int bits;
    template <class D, class V>
    HWY_INLINE V operator()(D, V x) const { return hn::ShiftRightSame(x, bits); }
};
struct ZeroOp {
    template <class D, class V>
    HWY_INLINE V operator()(D d, V) const { return hn::Zero(d); }
};

template <template <class> class Op, typename T>
HWY_INLINE IppStatus WithConst(const T *src, T val, T *dst, size_t len)
{
    const Tag<T> d;
    Op<Tag<T>> op{hn::Set(d, val)};
    Zip(d, len, op, Out<T>{dst}, In<T>{src});
    return ippStsNoErr;
}

template <typename T, class Op>
HWY_INLINE IppStatus Unary(const T *src, T *dst, size_t len, Op op)
{
    Zip(Tag<T>(), len, op, Out<T>{dst}, In<T>{src});
    return ippStsNoErr;
}

template <typename T, class Op>
HWY_INLINE IppStatus Pairwise(const T *a, const T *b, T *dst, size_t len, Op op)
{
    Zip(Tag<T>(), len, op, Out<T>{dst}, In<T>{a}, In<T>{b});
    return ippStsNoErr;
}

#define ORB_LOGIC_WORKERS(S, T)                                                                     \
    IppStatus AndC##S(const T *s, T v, T *o, size_t n) { return WithConst<AndCOp>(s, v, o, n); }     \
    IppStatus OrC##S(const T *s, T v, T *o, size_t n) { return WithConst<OrCOp>(s, v, o, n); }       \
    IppStatus XorC##S(const T *s, T v, T *o, size_t n) { return WithConst<XorCOp>(s, v, o, n); }     \
    IppStatus And##S(const T *a, const T *b, T *o, size_t n) { return Pairwise(a, b, o, n, AndOp()); } \
    IppStatus Or##S(const T *a, const T *b, T *o, size_t n) { return Pairwise(a, b, o, n, OrOp()); }   \
    IppStatus Xor##S(const T *a, const T *b, T *o, size_t n) { return Pairwise(a, b, o, n, XorOp()); } \
    IppStatus Not##S(const T *s, T *o, size_t n) { return Unary(s, o, n, NotOp()); }
ORB_LOGIC_WORKERS(U8, uint8_t)
ORB_LOGIC_WORKERS(U16, uint16_t)
ORB_LOGIC_WORKERS(U32, uint32_t)
#undef ORB_LOGIC_WORKERS

/* Left shifts and the logical right shift: counts >= width give zeros. */
template <typename T, class Op>
HWY_INLINE IppStatus ShiftOut(const T *src, int bits, T *dst, size_t len)
{
    if (bits >= int(8 * sizeof(T))) return Unary(src, dst, len, ZeroOp());
    return Unary(src, dst, len, Op{bits});
}

IppStatus LShiftU8(const uint8_t *s, int v, uint8_t *o, size_t n) { return ShiftOut<uint8_t, LShiftOp>(s, v, o, n); }
IppStatus LShiftI16(const int16_t *s, int v, int16_t *o, size_t n) { return ShiftOut<int16_t, LShiftOp>(s, v, o, n); }
IppStatus LShiftI32(const int32_t *s, int v, int32_t *o, size_t n) { return ShiftOut<int32_t, LShiftOp>(s, v, o, n); }
IppStatus RShiftU8(const uint8_t *s, int v, uint8_t *o, size_t n) { return ShiftOut<uint8_t, RShiftOp>(s, v, o, n); }

/* The arithmetic shift saturates at width - 1: only sign bits remain. */
template <typename T>
HWY_INLINE IppStatus ShiftArith(const T *src, int bits, T *dst, size_t len)
{
    return Unary(src, dst, len, RShiftOp{HWY_MIN(bits, int(8 * sizeof(T)) - 1)});
}
IppStatus RShiftI16(const int16_t *s, int v, int16_t *o, size_t n) { return ShiftArith(s, v, o, n); }
IppStatus RShiftI32(const int32_t *s, int v, int32_t *o, size_t n) { return ShiftArith(s, v, o, n); }

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {

#define ORB_LOGIC_EXPORTS(S) \
    HWY_EXPORT(AndC##S);     \
    HWY_EXPORT(OrC##S);      \
    HWY_EXPORT(XorC##S);     \
    HWY_EXPORT(And##S);      \
    HWY_EXPORT(Or##S);       \
    HWY_EXPORT(Xor##S);      \
    HWY_EXPORT(Not##S);
ORB_LOGIC_EXPORTS(U8)
ORB_LOGIC_EXPORTS(U16)
ORB_LOGIC_EXPORTS(U32)
#undef ORB_LOGIC_EXPORTS
HWY_EXPORT(LShiftU8);
HWY_EXPORT(LShiftI16);
HWY_EXPORT(LShiftI32);
HWY_EXPORT(RShiftU8);
HWY_EXPORT(RShiftI16);
HWY_EXPORT(RShiftI32);

/* Pointers are checked before the length. */
static IppStatus Check(const void *a, const void *b, const void *c, int len)
{
    if (a == nullptr || b == nullptr || c == nullptr) return ippStsNullPtrErr;
    return len < 1 ? ippStsSizeErr : ippStsNoErr;
}

}  // namespace orb_kernels

#define ORB_LOGIC_C(name, T, worker)                                                \
    IppStatus name(const T *pSrc, T val, T *pDst, int len)                          \
    {                                                                               \
        const IppStatus st = orb_kernels::Check(pSrc, pDst, pDst, len);             \
        if (st != ippStsNoErr) return st;                                           \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc, val, pDst, size_t(len)); \
    }

#define ORB_LOGIC_2(name, T, worker)                                                \
    IppStatus name(const T *pSrc1, const T *pSrc2, T *pDst, int len)                \
    {                                                                               \
        const IppStatus st = orb_kernels::Check(pSrc1, pSrc2, pDst, len);           \
        if (st != ippStsNoErr) return st;                                           \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc1, pSrc2, pDst, size_t(len)); \
    }

#define ORB_NOT(name, T, worker)                                                    \
    IppStatus name(const T *pSrc, T *pDst, int len)                                 \
    {                                                                               \
        const IppStatus st = orb_kernels::Check(pSrc, pDst, pDst, len);             \
        if (st != ippStsNoErr) return st;                                           \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc, pDst, size_t(len));  \
    }

#define ORB_SHIFT(name, T, worker)                                                  \
    IppStatus name(const T *pSrc, int val, T *pDst, int len)                        \
    {                                                                               \
        const IppStatus st = orb_kernels::Check(pSrc, pDst, pDst, len);             \
        if (st != ippStsNoErr) return st;                                           \
        if (val < 0) return ippStsShiftErr;                                         \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(pSrc, val, pDst, size_t(len)); \
    }

extern "C" {
ORB_LOGIC_C(ippsAndC_8u, Ipp8u, AndCU8)
ORB_LOGIC_C(ippsAndC_16u, Ipp16u, AndCU16)
ORB_LOGIC_C(ippsAndC_32u, Ipp32u, AndCU32)
ORB_LOGIC_C(ippsOrC_8u, Ipp8u, OrCU8)
ORB_LOGIC_C(ippsOrC_16u, Ipp16u, OrCU16)
ORB_LOGIC_C(ippsOrC_32u, Ipp32u, OrCU32)
ORB_LOGIC_C(ippsXorC_8u, Ipp8u, XorCU8)
ORB_LOGIC_C(ippsXorC_16u, Ipp16u, XorCU16)
ORB_LOGIC_C(ippsXorC_32u, Ipp32u, XorCU32)
ORB_LOGIC_2(ippsAnd_8u, Ipp8u, AndU8)
ORB_LOGIC_2(ippsAnd_16u, Ipp16u, AndU16)
ORB_LOGIC_2(ippsAnd_32u, Ipp32u, AndU32)
ORB_LOGIC_2(ippsOr_8u, Ipp8u, OrU8)
ORB_LOGIC_2(ippsOr_16u, Ipp16u, OrU16)
ORB_LOGIC_2(ippsOr_32u, Ipp32u, OrU32)
ORB_LOGIC_2(ippsXor_8u, Ipp8u, XorU8)
ORB_LOGIC_2(ippsXor_16u, Ipp16u, XorU16)
ORB_LOGIC_2(ippsXor_32u, Ipp32u, XorU32)
ORB_NOT(ippsNot_8u, Ipp8u, NotU8)
ORB_NOT(ippsNot_16u, Ipp16u, NotU16)
ORB_NOT(ippsNot_32u, Ipp32u, NotU32)
ORB_SHIFT(ippsLShiftC_8u, Ipp8u, LShiftU8)
ORB_SHIFT(ippsLShiftC_16s, Ipp16s, LShiftI16)
ORB_SHIFT(ippsLShiftC_32s, Ipp32s, LShiftI32)
ORB_SHIFT(ippsRShiftC_8u, Ipp8u, RShiftU8)
ORB_SHIFT(ippsRShiftC_16s, Ipp16s, RShiftI16)
ORB_SHIFT(ippsRShiftC_32s, Ipp32s, RShiftI32)
}

#undef ORB_LOGIC_C
#undef ORB_LOGIC_2
#undef ORB_NOT
#undef ORB_SHIFT
#endif  // HWY_ONCE
