// Datatype conversions and byte swaps on every compiled Highway target,
// against exact references in long double.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <float.h>
#include <math.h>
#include <string.h>

#include <algorithm>
#include <limits>
#include <random>
#include <vector>

#include "ipps.h"
#include "kernels_sweep.h"

namespace {

template <typename T>
using Lim = std::numeric_limits<T>;

// Integer edges of every width with their neighbours, random values of S,
// and for floating S the specials and where double to float overflows,
// underflows and ties.
template <typename S>
std::vector<S> Edges()
{
    std::vector<S> v = {Lim<S>::lowest(), Lim<S>::max()};
    for (long double e : {0.0L, 1.0L, 2.0L, 3.0L, 127.0L, 128.0L, 255.0L, 32767.0L, 32768.0L, 65535.0L,
                          2147483647.0L, 2147483648.0L, 9223372036854775807.0L, 9223372036854775808.0L})
        for (long double x : {e - 1, e, e + 1, -e - 1, -e, -e + 1})
            if (x >= (long double)Lim<S>::lowest() && x <= (long double)Lim<S>::max()) v.push_back(S(x));
    std::mt19937_64 rng(7);
    for (int i = 0; i < 300; ++i) {
        const double mag = ldexp(double(rng() % 1000000) / 1000000, int(rng() % 80) - 20);
        if constexpr (Lim<S>::is_integer) v.push_back(S(rng()));
        else v.push_back(S(rng() & 1 ? mag : -mag));
    }
    if constexpr (!Lim<S>::is_integer) {
        v.insert(v.end(), {Lim<S>::infinity(), -Lim<S>::infinity(), Lim<S>::quiet_NaN(), S(-0.0),
                           Lim<S>::denorm_min(), Lim<S>::min()});
        const double tiny = ldexp(1.0, -149);
        for (double x : {double(FLT_MAX), nextafter(double(FLT_MAX), HUGE_VAL), 0x1.ffffffp127,
                         nextafter(0x1.ffffffp127, 0.0), -0x1.ffffffp127, tiny / 2, tiny * 0.75, -tiny / 2,
                         1 + 0x1p-24, 1 + 0x1p-23 + 0x1p-24})
            if (fabs(x) <= Lim<S>::max()) v.push_back(S(x));
    }
    return v;
}

// Edges plus the values whose scaled image is a half, and their neighbours,
// for small integer parts: where the rounding modes differ.
template <typename S>
std::vector<S> Halfway(int sf)
{
    std::vector<S> v = Edges<S>();
    if (sf < -60 || sf > 60) sf = 0;
    for (int k = -6; k <= 6; ++k)
        for (long double f : {0.5L, 0.25L, 0.75L}) {
            const long double x = ldexpl(k + f, sf);
            if (!(fabsl(x) <= (long double)Lim<S>::max())) continue;
            if constexpr (Lim<S>::is_integer) {
                if (x == truncl(x))
                    for (long double y : {x - 1, x, x + 1})
                        if (y >= (long double)Lim<S>::lowest() && y <= (long double)Lim<S>::max()) v.push_back(S(y));
            } else if (S(x) != 0) {
                v.insert(v.end(), {S(x), nextafter(S(x), Lim<S>::infinity()), nextafter(S(x), -Lim<S>::infinity())});
            }
        }
    return v;
}

// x * 2^-sf, exact: long double holds every source value and exponent.
long double Scaled(long double x, int sf) { return ldexpl(x, sf == Lim<int>::min() ? Lim<int>::max() : -sf); }

template <typename D>
D ScaleToIntRef(long double x, int sf, IppRoundMode mode)
{
    if (isnan(x)) return 0;
    const long double s = Scaled(x, sf);
    // nearbyintl: the default environment rounds halves to even.
    const long double v = mode == ippRndZero ? truncl(s) : mode == ippRndNear ? nearbyintl(s) : roundl(s);
    return v <= (long double)Lim<D>::lowest() ? Lim<D>::lowest() : v >= (long double)Lim<D>::max() ? Lim<D>::max() : D(v);
}

const int kScales[] = {0, 1, 2, 7, -1, -3, 15, 16, 31, 32, 33, 63, 64, 65, -31, -40, 126, 127, 150, -150, 1030, -1100,
                       1200, -1200, 5000, -5000, Lim<int>::max(), Lim<int>::min()};

class KernelsConvert : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsConvert);

template <typename S, typename D, typename L>
void CheckPlain(const char *what, IppStatus (*fn)(const S *, D *, L))
{
    SCOPED_TRACE(what);
    sweep::Map<S, D>(Edges<S>(), [=](const S *s, D *d, int n) { return fn(s, d, L(n)); }, [](S x) {
        if constexpr (Lim<D>::is_integer) return D(std::clamp<long double>(x, Lim<D>::lowest(), Lim<D>::max()));
        else return D(x);  // the compiler's conversion rounds to nearest, overflowing to infinity
    });
}

TEST_P(KernelsConvert, PlainConversionsRoundToNearestAndSaturate)
{
    CheckPlain("8s32f", ippsConvert_8s32f);
    CheckPlain("16s32f", ippsConvert_16s32f);
    CheckPlain("32s32f", ippsConvert_32s32f);
    CheckPlain("64f32f", ippsConvert_64f32f);
    CheckPlain("32f64f", ippsConvert_32f64f);
    CheckPlain("32s64f", ippsConvert_32s64f);
    CheckPlain("64s64f", ippsConvert_64s64f);
    CheckPlain("32s16s", ippsConvert_32s16s);
}

// Every length at scale 0, whole arrays at the others.
template <typename S, typename D>
void CheckScaledToFloat(const char *what, IppStatus (*fn)(const S *, D *, int, int))
{
    for (int sf : kScales) {
        SCOPED_TRACE(::testing::Message() << what << ", scale " << sf);
        sweep::Map<S, D>(Edges<S>(), [=](const S *s, D *d, int n) { return fn(s, d, n, sf); },
                         [=](S x) { return D(Scaled(x, sf)); }, sf == 0);
    }
}

TEST_P(KernelsConvert, ScaledIntegersToFloatingRoundOnce)
{
    CheckScaledToFloat("16s32f_Sfs", ippsConvert_16s32f_Sfs);
    CheckScaledToFloat("32s32f_Sfs", ippsConvert_32s32f_Sfs);
    CheckScaledToFloat("16s64f_Sfs", ippsConvert_16s64f_Sfs);
    CheckScaledToFloat("32s64f_Sfs", ippsConvert_32s64f_Sfs);
}

// Whole arrays at every scale in each mode; every length in ippRndNear at
// scale 0.
template <typename S, typename D, class Fn>
void CheckRoundedBy(const char *what, Fn fn, std::vector<IppRoundMode> modes)
{
    for (IppRoundMode mode : modes)
        for (int sf : kScales) {
            SCOPED_TRACE(::testing::Message() << what << ", mode " << mode << ", scale " << sf);
            sweep::Map<S, D>(Halfway<S>(sf), [=](const S *s, D *d, int n) { return fn(s, d, n, mode, sf); },
                             [=](S x) { return ScaleToIntRef<D>(x, sf, mode); }, sf == 0 && mode == ippRndNear);
        }
}

template <typename S, typename D, typename L>
void CheckRounded(const char *what, IppStatus (*fn)(const S *, D *, L, IppRoundMode, int))
{
    CheckRoundedBy<S, D>(what, [=](const S *s, D *d, int n, IppRoundMode m, int sf) { return fn(s, d, L(n), m, sf); },
                         {ippRndZero, ippRndNear, ippRndFinancial});
}

TEST_P(KernelsConvert, ScaledToIntegerRoundByModeThenSaturate)
{
    CheckRounded("64f64s_Sfs", ippsConvert_64f64s_Sfs);
    CheckRounded("32f32s_Sfs", ippsConvert_32f32s_Sfs);
    CheckRounded("64f32s_Sfs", ippsConvert_64f32s_Sfs);
    CheckRounded("64s32s_Sfs", ippsConvert_64s32s_Sfs);
    CheckRounded("32f16s_Sfs", ippsConvert_32f16s_Sfs);
    CheckRounded("64f16s_Sfs", ippsConvert_64f16s_Sfs);
    CheckRounded("32f8s_Sfs", ippsConvert_32f8s_Sfs);
    CheckRounded("16s8s_Sfs", ippsConvert_16s8s_Sfs);
    // The form without a mode rounds halves to even.
    CheckRoundedBy<Ipp32s, Ipp16s>("32s16s_Sfs", [](const Ipp32s *s, Ipp16s *d, int n, IppRoundMode, int sf) {
        return ippsConvert_32s16s_Sfs(s, d, n, sf);
    }, {ippRndNear});
}

TEST_P(KernelsConvert, SwapBytesReversesEachItem)
{
    sweep::Map(Edges<Ipp16u>(), ippsSwapBytes_16u, [](Ipp16u x) { return Ipp16u(x << 8 | x >> 8); }, true, true);
    sweep::Map(Edges<Ipp32u>(), ippsSwapBytes_32u, [](Ipp32u x) { return __builtin_bswap32(x); }, true, true);
    sweep::Map(Edges<Ipp64u>(), ippsSwapBytes_64u, [](Ipp64u x) { return __builtin_bswap64(x); }, true, true);
    // Three-byte items, in place.
    Ipp8u b[10] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 0xEE};
    const Ipp8u want[10] = {3, 2, 1, 6, 5, 4, 9, 8, 7, 0xEE};
    ASSERT_EQ(ippsSwapBytes_24u(b, b, 3), ippStsNoErr);
    EXPECT_EQ(memcmp(b, want, 10), 0);
}

TEST(KernelsConvertStatus, PointersBeforeLengthBeforeMode)
{
    ORB_EXPECT_STATUSES(ippsConvert_8s32f, ippsConvert_16s32f, ippsConvert_32s32f, ippsConvert_64f32f,
                        ippsConvert_32f64f, ippsConvert_32s64f, ippsConvert_32s16s, ippsSwapBytes_16u,
                        ippsSwapBytes_24u, ippsSwapBytes_32u, ippsSwapBytes_64u);
    Ipp32f f[2] = {1, 2};
    Ipp16s s[2];
    Ipp64s l[2] = {1, 2};
    Ipp32s i[2];
    const IppRoundMode bad = IppRoundMode(7), near = ippRndNear;
    EXPECT_EQ(ippsConvert_32f16s_Sfs(nullptr, s, 2, near, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsConvert_32f16s_Sfs(f, nullptr, 0, bad, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsConvert_32f16s_Sfs(f, s, 0, bad, 0), ippStsSizeErr);
    EXPECT_EQ(ippsConvert_32f16s_Sfs(f, s, 2, bad, 0), ippStsRoundModeNotSupportedErr);
    EXPECT_EQ(ippsConvert_64s32s_Sfs(l, i, 2, IppRoundMode(3), 0), ippStsRoundModeNotSupportedErr);
    EXPECT_EQ(ippsConvert_64s32s_Sfs(l, i, -1, bad, 0), ippStsSizeErr);
    EXPECT_EQ(ippsConvert_32f16s_Sfs(f, s, 2, IppRoundMode(near | ippRndHintAccurate), 0), ippStsNoErr);
    EXPECT_EQ(ippsConvert_32s16s_Sfs(i, s, 0, 0), ippStsSizeErr);
    EXPECT_EQ(ippsConvert_16s32f_Sfs(s, nullptr, 1, 0), ippStsNullPtrErr);
    // Unsigned lengths: 0 is the size error.
    EXPECT_EQ(ippsConvert_16s8s_Sfs(s, nullptr, 2, near, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsConvert_16s8s_Sfs(s, reinterpret_cast<Ipp8s *>(i), 0u, near, 0), ippStsSizeErr);
    EXPECT_EQ(ippsConvert_64f64s_Sfs(nullptr, l, 1u, near, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsConvert_64s64f(l, reinterpret_cast<Ipp64f *>(i), 0u), ippStsSizeErr);
    EXPECT_EQ(ippsConvert_64s64f(l, nullptr, 1u), ippStsNullPtrErr);
}

}  // namespace
