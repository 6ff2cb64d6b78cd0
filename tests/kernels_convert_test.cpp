// Copies, fills and resampling; datatype conversions and byte swaps against
// exact references in long double.
#include "kernels_sweep.h"  // first: the kernels' target set

namespace {

using sweep::Lim;

// Integer edges of every width with their neighbours, random values of S,
// for floating S the specials and where double to float overflows,
// underflows and ties; and the values whose image scaled by sf is a half,
// with their neighbours, for small integer parts: where the rounding modes
// differ.
template <typename S>
std::vector<S> Edges(int sf = 0)
{
    std::vector<S> v = {Lim<S>::lowest(), Lim<S>::max()};
    const auto fits = [](long double x) { return x >= Lim<S>::lowest() && x <= Lim<S>::max(); };
    for (long double e : {0.0L, 1.0L, 2.0L, 3.0L, 127.0L, 128.0L, 255.0L, 32767.0L, 32768.0L, 65535.0L,
                          2147483647.0L, 2147483648.0L, 9223372036854775807.0L, 9223372036854775808.0L})
        for (long double x : {e - 1, e, e + 1, -e - 1, -e, -e + 1})
            if (fits(x)) v.push_back(S(x));
    std::mt19937_64 rng(7);
    for (int i = 0; i < 300; ++i) {
        const double mag = ldexp(double(rng() % 1000000) / 1000000, int(rng() % 80) - 20);
        v.push_back(Lim<S>::is_integer ? S(rng()) : S(rng() & 1 ? mag : -mag));
    }
    if constexpr (!Lim<S>::is_integer) {
        v.insert(v.end(), {Lim<S>::infinity(), -Lim<S>::infinity(), Lim<S>::quiet_NaN(), S(-0.0),
                           Lim<S>::denorm_min(), Lim<S>::min()});
        const double tiny = ldexp(1.0, -149);
        for (double x : {double(FLT_MAX), nextafter(double(FLT_MAX), HUGE_VAL), 0x1.ffffffp127,
                         nextafter(0x1.ffffffp127, 0.0), -0x1.ffffffp127, tiny / 2, tiny * 0.75, -tiny / 2,
                         1 + 0x1p-24, 1 + 0x1p-23 + 0x1p-24})
            if (fits(x)) v.push_back(S(x));
    }
    for (int k = -6; k <= 6 && abs(sf) <= 60; ++k)
        for (long double f : {0.5L, 0.25L, 0.75L}) {
            const long double x = ldexpl(k + f, sf);
            if constexpr (Lim<S>::is_integer) {
                for (long double y : {x - 1, x, x + 1})
                    if (x == truncl(x) && fits(y)) v.push_back(S(y));
            } else if (fits(x) && S(x) != 0) {
                v.insert(v.end(), {S(x), nextafter(S(x), Lim<S>::infinity()), nextafter(S(x), -Lim<S>::infinity())});
            }
        }
    return v;
}

// x * 2^-sf, exact: long double holds every source value and exponent.
long double Scaled(long double x, int sf) { return ldexpl(x, sf == Lim<int>::min() ? Lim<int>::max() : -sf); }

// v in D: integers saturate (NaN gives 0); floating types round to nearest,
// overflowing to infinity, as the compiler's conversion does.
template <typename D>
D Saturated(long double v)
{
    if constexpr (!Lim<D>::is_integer) return D(v);
    return isnan(v) ? 0 : D(std::clamp<long double>(v, Lim<D>::lowest(), Lim<D>::max()));
}

// nearbyintl: the default environment rounds halves to even.
template <typename D>
D Rounded(long double x, int sf, IppRoundMode mode)
{
    const long double s = Scaled(x, sf);
    return Saturated<D>(mode == ippRndZero ? truncl(s) : mode == ippRndNear ? nearbyintl(s) : roundl(s));
}

const int kScales[] = {0, 1, 2, 7, -1, -3, 15, 16, 31, 32, 33, 63, 64, 65, -31, -40, 126, 127, 150, -150, 1030, -1100,
                       1200, -1200, 5000, -5000, Lim<int>::max(), Lim<int>::min()};

class KernelsConvert : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsConvert);

const auto edges = [](auto t, int) { return Edges<decltype(t)>(); };

TEST_P(KernelsConvert, PlainAndScaledToFloatingRoundOnceAndSaturateAndByteSwaps)
{
    ORB_ROWS(ippsConvert_8s32f, ippsConvert_16s32f, ippsConvert_32s32f, ippsConvert_64f32f, ippsConvert_32f64f,
             ippsConvert_32s64f, ippsConvert_64s64f, ippsConvert_32s16s)
        .From(edges).Check([](auto x, auto got) { return sweep::Same(got, Saturated<decltype(got)>(x)); });
    // Every length at scale 0, whole arrays at the others.
    for (int sf : kScales)
        ORB_ROWS(ippsConvert_16s32f_Sfs, ippsConvert_32s32f_Sfs, ippsConvert_16s64f_Sfs, ippsConvert_32s64f_Sfs)
            .With(sf).From(edges).Check([](auto x, int sf, auto got) {
                return sweep::Same(got, decltype(got)(Scaled(x, sf)));
            }, {.once = sf != 0});
    ORB_ROWS(ippsSwapBytes_16u, ippsSwapBytes_32u, ippsSwapBytes_64u).From(edges).Check([](auto x) {
        std::reverse(reinterpret_cast<char *>(&x), reinterpret_cast<char *>(&x + 1));
        return x;
    });
    // Three-byte items, in place.
    Ipp8u b[10] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 0xEE};
    const Ipp8u want[10] = {3, 2, 1, 6, 5, 4, 9, 8, 7, 0xEE};
    ASSERT_EQ(ippsSwapBytes_24u(b, b, 3), ippStsNoErr);
    EXPECT_EQ(memcmp(b, want, 10), 0);
    EXPECT_EQ(ippsSwapBytes_24u(b, nullptr, 3), ippStsNullPtrErr);
    EXPECT_EQ(ippsSwapBytes_24u(nullptr, b, 0), ippStsNullPtrErr);
    EXPECT_TRUE(ippsSwapBytes_24u(b, b, 0) == ippStsSizeErr && ippsSwapBytes_24u(b, b, -1) == ippStsSizeErr);
}

// Whole arrays at every scale in each mode (the accuracy hint ignored);
// every length in ippRndNear at scale 0. The form without a mode rounds
// halves to even. Other modes are refused.
TEST_P(KernelsConvert, ScaledToIntegerRoundByModeThenSaturate)
{
    const IppRoundMode hinted = IppRoundMode(ippRndFinancial | ippRndHintAccurate);
    for (IppRoundMode mode : {ippRndZero, ippRndNear, ippRndFinancial, hinted})
        for (int sf : kScales) {
            const auto halfway = [=](auto t, int) { return Edges<decltype(t)>(sf); };
            const auto ref = [](auto x, IppRoundMode m, int sf, auto got) {
                return sweep::Same(got, Rounded<decltype(got)>(x, sf, IppRoundMode(m & ~ippRndHintAccurate)));
            };
            const sweep::Opt opt{.once = sf != 0 || mode != ippRndNear};
            ORB_ROWS(ippsConvert_64f64s_Sfs, ippsConvert_32f32s_Sfs, ippsConvert_64f32s_Sfs, ippsConvert_64s32s_Sfs,
                     ippsConvert_32f16s_Sfs, ippsConvert_64f16s_Sfs, ippsConvert_32f8s_Sfs, ippsConvert_16s8s_Sfs)
                .With(mode, sf).From(halfway).Check(ref, opt);
            if (mode == ippRndNear)
                ORB_ROWS(ippsConvert_32s16s_Sfs).With(sf).From(halfway).Check([=](Ipp32s x, int sf, Ipp16s got) {
                    return ref(x, mode, sf, got);
                }, opt);
        }
    for (IppRoundMode bad : {IppRoundMode(3), IppRoundMode(7), IppRoundMode(ippRndHintAccurate | 3)})
        ORB_ROWS(ippsConvert_64f64s_Sfs, ippsConvert_32f32s_Sfs, ippsConvert_64f32s_Sfs, ippsConvert_64s32s_Sfs,
                 ippsConvert_32f16s_Sfs, ippsConvert_64f16s_Sfs, ippsConvert_32f8s_Sfs, ippsConvert_16s8s_Sfs)
            .With(bad, 0).Refused(ippStsRoundModeNotSupportedErr);
}

// Moves overlapping both ways give what the source held before.
template <typename T>
void CheckMove(IppStatus (*move)(const T *, T *, int))
{
    const std::vector<T> src = sweep::Random<T>(300, 1);
    for (int shift : {1, 5, -1, -5}) {
        std::vector<T> buf = src;
        const size_t from = shift < 0 ? -shift : 0, to = shift > 0 ? shift : 0;
        ASSERT_EQ(move(buf.data() + from, buf.data() + to, 290), ippStsNoErr);
        EXPECT_EQ(memcmp(src.data() + from, buf.data() + to, 290 * sizeof(T)), 0) << "shift " << shift;
    }
}

// Up by every factor and phase, cached and streamed, at two alignments;
// down-sampling in place undoes it.
template <typename T>
void CheckResample(IppStatus (*up)(const T *, int, T *, int *, int, int *),
                   IppStatus (*down)(const T *, int, T *, int *, int, int *))
{
    const std::vector<T> src = sweep::Random<T>(140, 2);
    T fill;
    memset(&fill, 0xA5, sizeof fill);
    for (int streaming = 0; streaming < 2; ++streaming)
        for (int factor = 1; factor <= 4; ++factor)
            for (int phase = 0; phase < factor; ++phase)
                for (int len = 1; len <= 140; len += len < 20 ? 1 : 17)
                    for (int offset = 0; offset < 2; ++offset) {
                        SCOPED_TRACE(::testing::Message() << "factor " << factor << ", phase " << phase << ", len "
                                                          << len << ", offset " << offset << ", stream " << streaming);
                        std::vector<T> out(factor * len + offset + 1, fill);
                        T *dst = out.data() + offset;
                        int dst_len = -1, p = phase;
                        const sweep::StreamAll scope(streaming);
                        ASSERT_EQ(up(src.data(), len, dst, &dst_len, factor, &p), ippStsNoErr);
                        ASSERT_TRUE(dst_len == factor * len && p == phase && sweep::Same(dst[factor * len], fill));
                        for (int i = 0; i < factor * len; ++i)
                            ASSERT_TRUE(sweep::Same(dst[i], i % factor == phase ? src[i / factor] : T{})) << i;
                        ASSERT_EQ(down(dst, factor * len, dst, &dst_len, factor, &p), ippStsNoErr);
                        ASSERT_TRUE(dst_len == len && p == phase && !memcmp(src.data(), dst, len * sizeof(T)));
                    }
}

TEST_P(KernelsConvert, CopyMoveSetZeroAndSampleExactlyTheRange)
{
    const auto same = [](auto x) { return x; };
    ORB_ROWS(ippsCopy_16s, ippsCopy_32s, ippsCopy_64s, ippsCopy_32f, ippsCopy_64f, ippsCopy_64fc)
        .Check(same, {.in_place = false});
    ORB_ROWS(ippsMove_16s, ippsMove_32s, ippsMove_64s, ippsMove_32f, ippsMove_64f, ippsMove_64fc).Check(same);
    ORB_ROWS(ippsSet_8u, ippsSet_16s, ippsSet_32s, ippsSet_64s, ippsSet_32f, ippsSet_64f).With(-77).Check(same);
    ORB_ROWS(ippsSet_64fc).With(Ipp64fc{1, -0.0}).Check(same);
    ORB_ROWS(ippsZero_8u, ippsZero_16s, ippsZero_32s, ippsZero_64s, ippsZero_32f, ippsZero_64f, ippsZero_64fc)
        .Check([](auto got) { return sweep::Same(got, decltype(got){}); });
    [](auto... fn) { (CheckMove(fn), ...); }(ippsMove_16s, ippsMove_32s, ippsMove_64s, ippsMove_32f, ippsMove_64f,
                                              ippsMove_64fc);
    CheckResample(ippsSampleUp_16s, ippsSampleDown_16s);
    CheckResample(ippsSampleUp_32f, ippsSampleDown_32f);
    CheckResample(ippsSampleUp_64f, ippsSampleDown_64f);
    CheckResample(ippsSampleUp_64fc, ippsSampleDown_64fc);
    // Blocks of 10 and 7 by 3 from phase 1 pick what one pass over 17 picks.
    const std::vector<double> src = sweep::Random<double>(17, 3);
    double out[17];
    int n1 = 0, n2 = 0, phase = 1;
    ASSERT_EQ(ippsSampleDown_64f(src.data(), 10, out, &n1, 3, &phase), ippStsNoErr);
    EXPECT_TRUE(n1 == 3 && phase == 0);
    ASSERT_EQ(ippsSampleDown_64f(src.data() + 10, 7, out + n1, &n2, 3, &phase), ippStsNoErr);
    EXPECT_TRUE(n2 == 3 && phase == 2);
    for (int j = 0; j < n1 + n2; ++j) EXPECT_TRUE(sweep::Same(out[j], src[1 + 3 * j]));
    // A block shorter than the phase produces nothing and moves the phase.
    phase = 3;
    ASSERT_EQ(ippsSampleDown_64f(src.data(), 2, out, &n1, 4, &phase), ippStsNoErr);
    EXPECT_TRUE(n1 == 0 && phase == 1);
    // Pointers, the length, the factor, then the phase.
    float f[4] = {};
    int n = 0, zero = 0, two = 2, minus = -1;
    EXPECT_EQ(ippsSampleUp_32f(nullptr, 4, f, &n, 0, &zero), ippStsNullPtrErr);
    EXPECT_EQ(ippsSampleUp_32f(f, 4, f, nullptr, 2, &zero), ippStsNullPtrErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 4, f, &n, 2, nullptr), ippStsNullPtrErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 0, f, &n, 0, &zero), ippStsSizeErr);
    EXPECT_EQ(ippsSampleUp_32f(f, 2, f, &n, 0, &zero), ippStsSampleFactorErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 4, f, &n, -1, &zero), ippStsSampleFactorErr);
    EXPECT_EQ(ippsSampleUp_32f(f, 2, f, &n, 2, &two), ippStsSamplePhaseErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 4, f, &n, 2, &minus), ippStsSamplePhaseErr);
    // An output longer than an int can count is a size error.
    EXPECT_EQ(ippsSampleUp_32f(f, 1 << 20, f, &n, 1 << 12, &zero), ippStsSizeErr);
    EXPECT_EQ(n, 0);
}

}  // namespace
