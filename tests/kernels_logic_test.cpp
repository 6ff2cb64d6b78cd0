// Bitwise logic and shift kernels on every compiled Highway target, against
// the scalar operators; shift counts at and past the element width.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <type_traits>
#include <vector>

#include "ipps.h"
#include "kernels_sweep.h"

namespace {

using sweep::SameAs;

class KernelsLogic : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsLogic);

// AndC, OrC, XorC, And, Or, Xor and Not of one element type.
template <typename T>
void CheckLogic(IppStatus (*const (&consts)[3])(const T *, T, T *, int),
                IppStatus (*const (&twos)[3])(const T *, const T *, T *, int), IppStatus (*not1)(const T *, T *, int))
{
    constexpr int n = sweep::MaxLen<T>();
    const std::vector<T> a = sweep::Random<T>(sweep::Span(n), 1), b = sweep::Random<T>(sweep::Span(n), 2);
    const T c = T(0x5A3C96E1u);
    T (*const refs[])(T, T) = {[](T x, T y) { return T(x & y); }, [](T x, T y) { return T(x | y); },
                               [](T x, T y) { return T(x ^ y); }};
    for (int f = 0; f < 3; ++f) {
        sweep::Run<T>(n, ippStsNoErr, [&](int len, T *o, T *) { return consts[f](a.data(), c, o, len); },
                      [&](size_t i, T got, T) { return SameAs(got, refs[f](a[i], c)); });
        sweep::Run<T>(n, ippStsNoErr, [&](int len, T *o, T *) { return twos[f](a.data(), b.data(), o, len); },
                      [&](size_t i, T got, T) { return SameAs(got, refs[f](a[i], b[i])); });
    }
    sweep::Run<T>(n, ippStsNoErr, [&](int len, T *o, T *) { return not1(a.data(), o, len); },
                  [&](size_t i, T got, T) { return SameAs(got, T(~a[i])); });
    // In place.
    std::vector<T> x = a;
    twos[2](b.data(), x.data(), x.data(), n);
    consts[0](x.data(), c, x.data(), n);
    not1(x.data(), x.data(), n);
    for (int i = 0; i < n; ++i) ASSERT_EQ(x[i], T(~((a[i] ^ b[i]) & c))) << i;
}

TEST_P(KernelsLogic, BitwiseOperatorsOverAllLengths)
{
    CheckLogic<Ipp8u>({ippsAndC_8u, ippsOrC_8u, ippsXorC_8u}, {ippsAnd_8u, ippsOr_8u, ippsXor_8u}, ippsNot_8u);
    CheckLogic<Ipp16u>({ippsAndC_16u, ippsOrC_16u, ippsXorC_16u}, {ippsAnd_16u, ippsOr_16u, ippsXor_16u}, ippsNot_16u);
    CheckLogic<Ipp32u>({ippsAndC_32u, ippsOrC_32u, ippsXorC_32u}, {ippsAnd_32u, ippsOr_32u, ippsXor_32u}, ippsNot_32u);
}

// Shifts by one bit at a time, so that counts past the width shift every
// bit out; right shifts of signed T bring in the sign bit, of unsigned T
// zeros.
template <typename T>
T RefShift(T x, int bits, bool left)
{
    for (int k = 0; k < bits && k <= 64; ++k) x = left ? T(std::make_unsigned_t<T>(x) << 1) : T(x >> 1);
    return x;
}

template <typename T>
void CheckShifts(IppStatus (*lshift)(const T *, int, T *, int), IppStatus (*rshift)(const T *, int, T *, int))
{
    constexpr int n = sweep::MaxLen<T>(), w = 8 * sizeof(T);
    const std::vector<T> a = sweep::Random<T>(sweep::Span(n), 3);
    for (int bits : {0, 1, w / 2 + 1, w - 1, w, w + 1, 1000}) {
        SCOPED_TRACE(::testing::Message() << "shift by " << bits);
        for (bool left : {true, false}) {
            auto fn = left ? lshift : rshift;
            sweep::Run<T>(n, ippStsNoErr, [&](int len, T *o, T *) { return fn(a.data(), bits, o, len); },
                          [&](size_t i, T got, T) { return SameAs(got, RefShift(a[i], bits, left)); });
        }
    }
    // A negative count is refused and nothing is written; in place.
    std::vector<T> o(n, T(7)), x = a;
    EXPECT_EQ(lshift(a.data(), -1, o.data(), n), ippStsShiftErr);
    EXPECT_EQ(rshift(a.data(), -1, o.data(), n), ippStsShiftErr);
    EXPECT_EQ(o, std::vector<T>(n, T(7)));
    rshift(x.data(), 3, x.data(), n);
    for (int i = 0; i < n; ++i) ASSERT_EQ(x[i], RefShift(a[i], 3, false)) << i;
}

TEST_P(KernelsLogic, ShiftsAtAndPastTheWidth)
{
    CheckShifts<Ipp8u>(ippsLShiftC_8u, ippsRShiftC_8u);
    CheckShifts<Ipp16s>(ippsLShiftC_16s, ippsRShiftC_16s);
    CheckShifts<Ipp32s>(ippsLShiftC_32s, ippsRShiftC_32s);
}

TEST(KernelsLogicStatus, NullPointersThenLengthsThenShift)
{
    ORB_EXPECT_STATUSES(ippsAndC_8u, ippsAndC_16u, ippsAndC_32u, ippsOrC_8u, ippsOrC_16u, ippsOrC_32u, ippsXorC_8u,
                        ippsXorC_16u, ippsXorC_32u, ippsAnd_8u, ippsAnd_16u, ippsAnd_32u, ippsOr_8u, ippsOr_16u,
                        ippsOr_32u, ippsXor_8u, ippsXor_16u, ippsXor_32u, ippsNot_8u, ippsNot_16u, ippsNot_32u,
                        ippsLShiftC_8u, ippsLShiftC_16s, ippsLShiftC_32s, ippsRShiftC_8u, ippsRShiftC_16s,
                        ippsRShiftC_32s);
    Ipp16s s[1] = {1};
    EXPECT_EQ(ippsLShiftC_16s(s, -1, nullptr, 1), ippStsNullPtrErr);
    EXPECT_EQ(ippsLShiftC_16s(s, -1, s, 0), ippStsSizeErr);
}

}  // namespace
