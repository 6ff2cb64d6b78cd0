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

#include "entry.h"
#include "ipps.h"
#include "loops-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

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

#define ORB_LOGIC_WORKERS(S, T)                                                                         \
    IppStatus AndC_##S(const T *s, T v, T *o, size_t n) { return WithConst<AndCOp>(s, v, o, n); }       \
    IppStatus OrC_##S(const T *s, T v, T *o, size_t n) { return WithConst<OrCOp>(s, v, o, n); }         \
    IppStatus XorC_##S(const T *s, T v, T *o, size_t n) { return WithConst<XorCOp>(s, v, o, n); }       \
    IppStatus And_##S(const T *a, const T *b, T *o, size_t n) { return Pairwise(a, b, o, n, AndOp()); } \
    IppStatus Or_##S(const T *a, const T *b, T *o, size_t n) { return Pairwise(a, b, o, n, OrOp()); }   \
    IppStatus Xor_##S(const T *a, const T *b, T *o, size_t n) { return Pairwise(a, b, o, n, XorOp()); } \
    IppStatus Not_##S(const T *s, T *o, size_t n) { return Map(s, o, n, NotOp()); }
ORB_LOGIC_WORKERS(8u, uint8_t)
ORB_LOGIC_WORKERS(16u, uint16_t)
ORB_LOGIC_WORKERS(32u, uint32_t)
#undef ORB_LOGIC_WORKERS

/* Left shifts and the logical right shift: counts >= width give zeros. */
template <class Op, typename T>
HWY_INLINE IppStatus ShiftOut(const T *src, int bits, T *dst, size_t len)
{
    if (bits >= int(8 * sizeof(T))) return Map(src, dst, len, ZeroOp());
    return Map(src, dst, len, Op{bits});
}

/* The arithmetic shift saturates at width - 1: only sign bits remain. */
template <typename T>
HWY_INLINE IppStatus ShiftArith(const T *src, int bits, T *dst, size_t len)
{
    return Map(src, dst, len, RShiftOp{HWY_MIN(bits, int(8 * sizeof(T)) - 1)});
}

IppStatus LShiftC_8u(const uint8_t *s, int v, uint8_t *o, size_t n) { return ShiftOut<LShiftOp>(s, v, o, n); }
IppStatus LShiftC_16s(const int16_t *s, int v, int16_t *o, size_t n) { return ShiftOut<LShiftOp>(s, v, o, n); }
IppStatus LShiftC_32s(const int32_t *s, int v, int32_t *o, size_t n) { return ShiftOut<LShiftOp>(s, v, o, n); }
IppStatus RShiftC_8u(const uint8_t *s, int v, uint8_t *o, size_t n) { return ShiftOut<RShiftOp>(s, v, o, n); }
IppStatus RShiftC_16s(const int16_t *s, int v, int16_t *o, size_t n) { return ShiftArith(s, v, o, n); }
IppStatus RShiftC_32s(const int32_t *s, int v, int32_t *o, size_t n) { return ShiftArith(s, v, o, n); }

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#define ORB_LOGIC_ENTRIES(S, T) \
    ORB_WITH_C(AndC_##S, T, T)  \
    ORB_WITH_C(OrC_##S, T, T)   \
    ORB_WITH_C(XorC_##S, T, T)  \
    ORB_PAIRWISE(And_##S, T)    \
    ORB_PAIRWISE(Or_##S, T)     \
    ORB_PAIRWISE(Xor_##S, T)    \
    ORB_MAP(Not_##S, T, T)
ORB_LOGIC_ENTRIES(8u, Ipp8u)
ORB_LOGIC_ENTRIES(16u, Ipp16u)
ORB_LOGIC_ENTRIES(32u, Ipp32u)
#undef ORB_LOGIC_ENTRIES

/* A negative count is refused after the pointer and length checks. */
#define ORB_COUNT orb_kernels::Refuse(val < 0, ippStsShiftErr)
ORB_WITH_C(LShiftC_8u, Ipp8u, int, ORB_COUNT)
ORB_WITH_C(LShiftC_16s, Ipp16s, int, ORB_COUNT)
ORB_WITH_C(LShiftC_32s, Ipp32s, int, ORB_COUNT)
ORB_WITH_C(RShiftC_8u, Ipp8u, int, ORB_COUNT)
ORB_WITH_C(RShiftC_16s, Ipp16s, int, ORB_COUNT)
ORB_WITH_C(RShiftC_32s, Ipp32s, int, ORB_COUNT)
#undef ORB_COUNT
#endif  // HWY_ONCE
