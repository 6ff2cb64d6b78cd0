// Datatype conversions and byte swaps on every compiled Highway target,
// against exact references in long double.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <float.h>
#include <math.h>
#include <string.h>

#include <functional>
#include <limits>
#include <utility>
#include <random>
#include <vector>

#include "ipps.h"

namespace {

template <typename T>
using Lim = std::numeric_limits<T>;

template <typename T>
bool SameValue(T a, T b)  // bitwise, except that any NaN equals any NaN
{
    if constexpr (Lim<T>::is_integer) return a == b;
    else return (isnan(a) && isnan(b)) || memcmp(&a, &b, sizeof(T)) == 0;
}

// Lowers the streaming threshold for one scope, so short arrays take the
// non-temporal path too.
struct StreamAll {
    size_t saved = orb_kernels::StreamThresholdBytes();
    StreamAll() { orb_kernels::StreamThresholdBytes() = 64; }
    ~StreamAll() { orb_kernels::StreamThresholdBytes() = saved; }
};

// Runs fn on in and compares each element with ref; the element after the
// output must keep its sentinel. A sweep also runs every prefix up to
// 2 * 64 + 1 elements, with the output at two alignments, on the cached and
// the streaming path.
template <typename S, typename D>
void CheckAll(const char *what, const std::vector<S> &in, const std::function<IppStatus(const S *, D *, int)> &fn,
              const std::function<D(S)> &ref, bool sweep = true)
{
    std::vector<D> want(in.size());
    for (size_t i = 0; i < in.size(); ++i) want[i] = ref(in[i]);
    std::vector<size_t> lengths;
    for (size_t len = 1; sweep && len <= 129 && len < in.size(); ++len) lengths.push_back(len);
    lengths.push_back(in.size());
    D sentinel;
    memset(&sentinel, 0x5A, sizeof(D));
    for (int streaming = 0; streaming < (sweep ? 2 : 1); ++streaming) {
        StreamAll *lower = streaming ? new StreamAll : nullptr;
        for (size_t len : lengths)
            for (size_t offset = 0; offset < (sweep ? 2u : 1u); ++offset) {
                std::vector<D> out(len + offset + 1, sentinel);
                D *dst = out.data() + offset;
                ASSERT_EQ(fn(in.data(), dst, int(len)), ippStsNoErr) << what;
                for (size_t i = 0; i < len; ++i)
                    ASSERT_TRUE(SameValue(dst[i], want[i]))
                        << what << " at " << i << " of " << len << ": " << (long double)in[i] << " gives "
                        << (long double)dst[i] << ", expected " << (long double)want[i];
                ASSERT_TRUE(SameValue(dst[len], sentinel)) << what << " wrote past " << len;
            }
        delete lower;
    }
}

// Integer edges of every width, their neighbours, and random values of S.
template <typename S>
std::vector<S> Edges()
{
    std::vector<S> v;
    const long double lim[] = {0, 1, 2, 3, 127, 128, 255, 32767, 32768, 65535, 2147483647.0L, 2147483648.0L,
                               9223372036854775807.0L, 9223372036854775808.0L};
    for (long double e : lim)
        for (long double d : {-1.0L, 0.0L, 1.0L})
            for (long double s : {1.0L, -1.0L}) {
                const long double x = s * e + d;
                if (x >= (long double)Lim<S>::lowest() && x <= (long double)Lim<S>::max()) v.push_back(S(x));
            }
    v.push_back(Lim<S>::lowest());
    v.push_back(Lim<S>::max());
    std::mt19937_64 rng(7);
    for (int i = 0; i < 300; ++i) {
        if constexpr (Lim<S>::is_integer) {
            v.push_back(S(rng()));
        } else {
            const double mag = ldexp(double(rng() % 1000000) / 1000000, int(rng() % 80) - 20);
            v.push_back(S(rng() & 1 ? mag : -mag));
        }
    }
    if constexpr (!Lim<S>::is_integer) {
        for (S x : {Lim<S>::infinity(), -Lim<S>::infinity(), Lim<S>::quiet_NaN(), S(-0.0), Lim<S>::denorm_min(),
                    Lim<S>::min(), -Lim<S>::max()})
            v.push_back(x);
        // Where double to float overflows, underflows and ties.
        const double f_max = FLT_MAX, f_tiny = ldexp(1.0, -149);
        for (double x : {f_max, nextafter(f_max, HUGE_VAL), 0x1.ffffffp127, nextafter(0x1.ffffffp127, 0.0),
                         -0x1.ffffffp127, f_tiny / 2, f_tiny * 0.75, -f_tiny / 2, 1 + 0x1p-24, 1 + 0x1p-23 + 0x1p-24})
            if (fabs(x) <= Lim<S>::max()) v.push_back(S(x));
    }
    return v;
}

// Values whose scaled image is a half, and the neighbours on either side,
// for every small integer part: where the rounding modes differ.
template <typename S>
std::vector<S> Halfway(int sf)
{
    std::vector<S> v = Edges<S>();
    for (int k = -6; k <= 6; ++k)
        for (long double f : {0.5L, 0.25L, 0.75L}) {
            const long double x = ldexpl(k + f, sf);
            if (!(fabsl(x) <= (long double)Lim<S>::max())) continue;
            if constexpr (Lim<S>::is_integer) {
                if (x != truncl(x)) continue;
                for (long double d : {-1.0L, 0.0L, 1.0L})
                    if (x + d >= (long double)Lim<S>::lowest() && x + d <= (long double)Lim<S>::max())
                        v.push_back(S(x + d));
            } else {
                const S s = S(x);
                if (s == 0) continue;
                v.push_back(s);
                v.push_back(nextafter(s, Lim<S>::infinity()));
                v.push_back(nextafter(s, -Lim<S>::infinity()));
            }
        }
    return v;
}

// x * 2^-sf, exact: long double holds every source value and exponent.
long double Scaled(long double x, int sf)
{
    return ldexpl(x, sf == Lim<int>::min() ? Lim<int>::max() : -sf);
}

long double RoundRef(long double v, IppRoundMode mode)
{
    if (mode == ippRndZero) return truncl(v);
    if (mode == ippRndNear) return nearbyintl(v);  // default environment: halves to even
    return roundl(v);                               // halves away from zero
}

template <typename D, typename S>
D ScaleToIntRef(S x, int sf, IppRoundMode mode)
{
    if (isnan((long double)x)) return 0;
    const long double v = RoundRef(Scaled(x, sf), mode);
    if (v <= (long double)Lim<D>::lowest()) return Lim<D>::lowest();
    if (v >= (long double)Lim<D>::max()) return Lim<D>::max();
    return D(v);
}

class KernelsConvert : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsConvert);

template <typename S, typename D, typename L>
void CheckPlain(const char *what, IppStatus (*fn)(const S *, D *, L))
{
    CheckAll<S, D>(what, Edges<S>(), fn, [](S x) -> D {
        if constexpr (Lim<D>::is_integer) return D(x < Lim<D>::lowest() ? Lim<D>::lowest() : x > Lim<D>::max() ? Lim<D>::max() : x);
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

const int kScales[] = {0, 1, 2, 7, -1, -3, 15, 16, 31, 32, 33, 63, 64, 65, -31, -40, 126, 127, 150, -150, 1030, -1100,
                       1200, -1200, 5000, -5000, Lim<int>::max(), Lim<int>::min()};

template <typename S, typename D>
void CheckScaledToFloat(const char *what, IppStatus (*fn)(const S *, D *, int, int))
{
    for (int sf : kScales)
        CheckAll<S, D>(what, Edges<S>(), [&](const S *s, D *d, int n) { return fn(s, d, n, sf); },
                       [&](S x) { return D(Scaled(x, sf)); }, sf == 0);
}

TEST_P(KernelsConvert, ScaledIntegersToFloatingRoundOnce)
{
    CheckScaledToFloat("16s32f_Sfs", ippsConvert_16s32f_Sfs);
    CheckScaledToFloat("32s32f_Sfs", ippsConvert_32s32f_Sfs);
    CheckScaledToFloat("16s64f_Sfs", ippsConvert_16s64f_Sfs);
    CheckScaledToFloat("32s64f_Sfs", ippsConvert_32s64f_Sfs);
}

template <typename S, typename D, typename L>
void CheckRounded(const char *what, IppStatus (*fn)(const S *, D *, L, IppRoundMode, int))
{
    for (IppRoundMode mode : {ippRndZero, ippRndNear, ippRndFinancial})
        for (int sf : kScales)
            CheckAll<S, D>(what, Halfway<S>(sf < -60 || sf > 60 ? 0 : sf),
                           [&](const S *s, D *d, int n) { return fn(s, d, L(n), mode, sf); },
                           [&](S x) { return ScaleToIntRef<D>(x, sf, mode); }, sf == 0 && mode == ippRndNear);
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
    for (int sf : kScales)
        CheckAll<Ipp32s, Ipp16s>("32s16s_Sfs", Halfway<Ipp32s>(sf < -60 || sf > 60 ? 0 : sf),
                                 [&](const Ipp32s *s, Ipp16s *d, int n) { return ippsConvert_32s16s_Sfs(s, d, n, sf); },
                                 [&](Ipp32s x) { return ScaleToIntRef<Ipp16s>(x, sf, ippRndNear); }, false);
}

TEST_P(KernelsConvert, RoundingModesAtHalves)
{
    // Spot values, independent of the reference above.
    const Ipp32f in[] = {2.5f, 3.5f, -2.5f, -3.5f, 0.49999997f, -0.5f, 1.5f};
    const Ipp16s zero[] = {2, 3, -2, -3, 0, 0, 1}, near[] = {2, 4, -2, -4, 0, 0, 2}, fin[] = {3, 4, -3, -4, 0, -1, 2};
    Ipp16s out[7];
    const std::pair<IppRoundMode, const Ipp16s *> cases[] = {{ippRndZero, zero}, {ippRndNear, near}, {ippRndFinancial, fin}};
    for (auto [mode, want] : cases) {
        ASSERT_EQ(ippsConvert_32f16s_Sfs(in, out, 7, mode, 0), ippStsNoErr);
        for (int i = 0; i < 7; ++i) EXPECT_EQ(out[i], want[i]) << "mode " << mode << " at " << in[i];
    }
}

TEST_P(KernelsConvert, SwapBytesReversesEachItem)
{
    std::vector<Ipp16u> a16 = Edges<Ipp16u>();
    std::vector<Ipp32u> a32 = Edges<Ipp32u>();
    std::vector<Ipp64u> a64 = Edges<Ipp64u>();
    CheckAll<Ipp16u, Ipp16u>("16u", a16, ippsSwapBytes_16u, [](Ipp16u x) { return Ipp16u(x << 8 | x >> 8); });
    CheckAll<Ipp32u, Ipp32u>("32u", a32, ippsSwapBytes_32u, [](Ipp32u x) { return __builtin_bswap32(x); });
    CheckAll<Ipp64u, Ipp64u>("64u", a64, ippsSwapBytes_64u, [](Ipp64u x) { return __builtin_bswap64(x); });

    // Three-byte items, and in place.
    Ipp8u b[10] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 0xEE};
    const Ipp8u want[10] = {3, 2, 1, 6, 5, 4, 9, 8, 7, 0xEE};
    ASSERT_EQ(ippsSwapBytes_24u(b, b, 3), ippStsNoErr);
    EXPECT_EQ(memcmp(b, want, 10), 0);
    Ipp32u w[3] = {0x01020304, 0xA0B0C0D0, 0};
    ASSERT_EQ(ippsSwapBytes_32u(w, w, 2), ippStsNoErr);
    EXPECT_EQ(w[0], 0x04030201u);
    EXPECT_EQ(w[1], 0xD0C0B0A0u);
}

TEST(KernelsConvertStatus, PointersBeforeLengthBeforeMode)
{
    Ipp32f f[2] = {1, 2};
    Ipp16s s[2];
    Ipp64s l[2] = {1, 2};
    Ipp32s i[2];
    EXPECT_EQ(ippsConvert_32f16s_Sfs(nullptr, s, 2, ippRndNear, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsConvert_32f16s_Sfs(f, nullptr, 0, ippRndNear, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsConvert_32f16s_Sfs(f, s, 0, IppRoundMode(7), 0), ippStsSizeErr);
    EXPECT_EQ(ippsConvert_32f16s_Sfs(f, s, -1, ippRndNear, 0), ippStsSizeErr);
    EXPECT_EQ(ippsConvert_32f16s_Sfs(f, s, 2, IppRoundMode(7), 0), ippStsRoundModeNotSupportedErr);
    EXPECT_EQ(ippsConvert_64s32s_Sfs(l, i, 2, IppRoundMode(3), 0), ippStsRoundModeNotSupportedErr);
    EXPECT_EQ(ippsConvert_32f16s_Sfs(f, s, 2, IppRoundMode(ippRndNear | ippRndHintAccurate), 0), ippStsNoErr);
    EXPECT_EQ(ippsConvert_16s8s_Sfs(s, nullptr, 2, ippRndNear, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsConvert_16s8s_Sfs(s, reinterpret_cast<Ipp8s *>(i), 0u, ippRndNear, 0), ippStsSizeErr);
    EXPECT_EQ(ippsConvert_64f64s_Sfs(nullptr, l, 1u, ippRndNear, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsConvert_8s32f(nullptr, f, 1), ippStsNullPtrErr);
    EXPECT_EQ(ippsConvert_32s16s_Sfs(i, s, 0, 0), ippStsSizeErr);
    EXPECT_EQ(ippsConvert_16s32f_Sfs(s, nullptr, 1, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsSwapBytes_24u(nullptr, nullptr, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsSwapBytes_64u(reinterpret_cast<Ipp64u *>(l), reinterpret_cast<Ipp64u *>(l), 0), ippStsSizeErr);
}

}  // namespace
