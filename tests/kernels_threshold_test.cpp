// Thresholds against the documented rules, at, just below and just above
// the level.
#include "kernels_sweep.h"  // first: the kernels' target set

namespace {

using sweep::Lim;

// Both signs of the level and its neighbours, the type's limits, zeros,
// and for floating types NaN and the infinities, then random values.
template <typename T>
std::vector<T> Around(T level)
{
    std::vector<T> v = {T(0), T(1), T(-1), Lim<T>::lowest(), Lim<T>::max()};
    for (T x : {level, T(-level)}) {
        v.push_back(x);
        if constexpr (Lim<T>::is_integer) {
            if (x > Lim<T>::lowest()) v.push_back(T(x - 1));
            if (x < Lim<T>::max()) v.push_back(T(x + 1));
        } else {
            v.insert(v.end(), {nextafter(x, -Lim<T>::infinity()), nextafter(x, Lim<T>::infinity())});
        }
    }
    if constexpr (!Lim<T>::is_integer)
        v.insert(v.end(), {T(-0.0), Lim<T>::quiet_NaN(), Lim<T>::infinity(), -Lim<T>::infinity()});
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> u(-3.0 * double(level) - 5, 3.0 * double(level) + 5);
    for (int i = 0; i < 200; ++i) v.push_back(T(u(rng)));
    return v;
}

class KernelsThreshold : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsThreshold);

// The Abs forms give the level the sign of x (its sign bit for floating x,
// so -0 gives -level), with |x| taken in a wider type: the most negative
// integer's magnitude does not fit its own.
template <typename T>
T SignedLevel(T x, T level)
{
    if constexpr (Lim<T>::is_integer) return x < 0 ? T(-level) : level;
    else return std::copysign(level, x);
}

// Complex rules in long double: the magnitude decides, the direction stays.
using C = Ipp64fc;
using CL = std::complex<long double>;

CL Z(C x) { return CL(x.re, x.im); }
long double Mag(C x) { return std::abs(Z(x)); }

// x with a magnitude below (or above) level scaled to it; 0 has direction +1,
// infinite parts outweigh finite ones.
CL Limited(C x, long double level, bool below)
{
    const long double m = Mag(x);
    if (below ? !(m < level) : !(m > level)) return Z(x);
    if (x.re == 0 && x.im == 0) return level;
    if (!isinf(m)) return level * Z(x) / m;
    return std::polar(level, atan2l(isinf(x.im) ? copysignl(1, x.im) : 0, isinf(x.re) ? copysignl(1, x.re) : 0));
}

// Within 8e-16 of want; an infinite or NaN want exactly.
bool Close(C got, CL want)
{
    if (!isfinite(want.real())) return sweep::Same(got, C{double(want.real()), double(want.imag())});
    return std::abs(Z(got) - want) <= 8e-16L * std::max(std::abs(want), 1e-300L);
}

TEST_P(KernelsThreshold, ReplaceAtTheLevelsOnlyComparingTheMagnitudeOfComplexValues)
{
    const auto level = [](int s) { return sweep::ByType(Ipp16s(300 * s), Ipp32s(100000 * s), 0.75f * s, 1e-3 * s); };
    const auto around = [=](auto t, int) { return Around<decltype(t)>(level(1)); };
    const auto abs_gt = [](auto x, auto l) { return fabsl(x) > l ? SignedLevel(x, l) : x; };
    for (int sign : {1, -1}) {  // negative levels too
        ORB_ROWS(ippsThreshold_LT_16s, ippsThreshold_LT_32s, ippsThreshold_LT_32f, ippsThreshold_LT_64f)
            .With(level(sign)).From(around).Check([](auto x, auto l) { return x < l ? l : x; });
        ORB_ROWS(ippsThreshold_GT_16s, ippsThreshold_GT_32s, ippsThreshold_GT_32f, ippsThreshold_GT_64f)
            .With(level(sign)).From(around).Check([](auto x, auto l) { return x > l ? l : x; });
        ORB_ROWS(ippsThreshold_LTVal_16s, ippsThreshold_LTVal_32f, ippsThreshold_LTVal_64f)
            .With(level(sign), -7).From(around).Check([](auto x, auto l, auto v) { return x < l ? v : x; });
        ORB_ROWS(ippsThreshold_GTVal_16s, ippsThreshold_GTVal_32f, ippsThreshold_GTVal_64f)
            .With(level(sign), -7).From(around).Check([](auto x, auto l, auto v) { return x > l ? v : x; });
    }
    ORB_ROWS(ippsThreshold_LTAbs_16s, ippsThreshold_LTAbs_32s, ippsThreshold_LTAbs_32f, ippsThreshold_LTAbs_64f)
        .With(level(1)).From(around).Check([](auto x, auto l) { return fabsl(x) < l ? SignedLevel(x, l) : x; });
    ORB_ROWS(ippsThreshold_GTAbs_16s, ippsThreshold_GTAbs_32s, ippsThreshold_GTAbs_32f, ippsThreshold_GTAbs_64f)
        .With(level(1)).From(around).Check(abs_gt);
    ORB_ROWS(ippsThreshold_GTAbs_32s).With(0).Check(abs_gt);  // level 0: all to zero
    for (int lo : {-1, 1})  // a band, and equal levels
        ORB_ROWS(ippsThreshold_LTValGTVal_16s, ippsThreshold_LTValGTVal_32s, ippsThreshold_LTValGTVal_32f,
                 ippsThreshold_LTValGTVal_64f)
            .With(level(lo), 5, level(1), -7).From(around)
            .Check([](auto x, auto lo, auto vlo, auto hi, auto vhi) { return x < lo ? vlo : x > hi ? vhi : x; });
    // Crossed levels are refused, and negative levels by the Abs forms.
    ORB_ROWS(ippsThreshold_LTValGTVal_16s, ippsThreshold_LTValGTVal_32s, ippsThreshold_LTValGTVal_32f,
             ippsThreshold_LTValGTVal_64f)
        .With(3, 0, 2, 0).Refused(ippStsThresholdErr);
    ORB_ROWS(ippsThreshold_LTAbs_16s, ippsThreshold_LTAbs_32s, ippsThreshold_LTAbs_32f, ippsThreshold_LTAbs_64f,
             ippsThreshold_GTAbs_16s, ippsThreshold_GTAbs_32s, ippsThreshold_GTAbs_32f, ippsThreshold_GTAbs_64f)
        .With(-1).Refused(ippStsThreshNegLevelErr);
    // Level 0 meets the zero first among the inputs: infinity and a warning at
    // every length (also for floats at 1e-300); without a zero, no warning.
    const auto inv = [](auto x, auto l) { return 1 / (std::fabs(x) < l ? std::copysign(l, x) : x); };
    for (double level : {0.5, 1e-300, 0.0}) {
        const auto around = [=](auto t, int) { return Around<decltype(t)>(level); };
        ORB_ROWS(ippsThreshold_LTInv_32f).With(level).From(around).Check(inv, {float(level) ? 0 : ippStsInvZero});
        ORB_ROWS(ippsThreshold_LTInv_64f).With(level).From(around).Check(inv, {level ? 0 : ippStsInvZero});
    }
    double two = 2;
    EXPECT_EQ(ippsThreshold_LTInv_64f(&two, &two, 1, 0), ippStsNoErr);
    ORB_ROWS(ippsThreshold_LTInv_32f, ippsThreshold_LTInv_64f).With(-1).Refused(ippStsThreshNegLevelErr);
    // Magnitudes at the level are exact (on the axes and 3-4-5); elsewhere
    // they stay clear of it, as the magnitude itself is rounded.
    const double below = nextafter(5.0, 0.0), above = nextafter(5.0, 9.0);
    std::vector<C> in = {{5, 0}, {0, -5}, {-3, 4}, {3, -4}, {below, 0}, {0, below}, {-above, 0}, {0, above},
                         {HUGE_VAL, 1}, {-HUGE_VAL, HUGE_VAL}, {1e308, 1e308}, {NAN, 0.1}};  // NaN compares false
    for (double m : {0.0, 1.0, 4.0, 6.0, 1e300, 1e-300})
        for (double a : {0.0, 0.5, 2.0, -1.0, -2.75}) in.push_back({m * cos(a), m * sin(a)});
    ORB_ROWS(ippsThreshold_LT_64fc).With(5.0).From(in).Check([](C x, double l, C got) {
        return Close(got, Limited(x, l, true));
    });
    ORB_ROWS(ippsThreshold_GT_64fc).With(5.0).From(in).Check([](C x, double l, C got) {
        return Close(got, Limited(x, l, false));
    });
    ORB_ROWS(ippsThreshold_LTInv_64fc).With(5.0).From(in).Check([](C x, double l, C got) {
        return Close(got, isinf(Mag(x)) ? CL(0) : 1.0L / Limited(x, l, true));
    });
    const C v = {-1, 5};
    ORB_ROWS(ippsThreshold_LTVal_64fc).With(5.0, v).From(in).Check([](C x, auto l, C y) { return Mag(x) < l ? y : x; });
    ORB_ROWS(ippsThreshold_GTVal_64fc).With(5.0, v).From(in).Check([](C x, auto l, C y) { return Mag(x) > l ? y : x; });
    ORB_ROWS(ippsThreshold_LT_64fc, ippsThreshold_GT_64fc, ippsThreshold_LTInv_64fc)
        .With(-1).Refused(ippStsThreshNegLevelErr);
    ORB_ROWS(ippsThreshold_LTVal_64fc, ippsThreshold_GTVal_64fc).With(-1, C{}).Refused(ippStsThreshNegLevelErr);
    // Zero with level 0 inverts to +infinity with a warning.
    C z = {0, 0};
    ASSERT_EQ(ippsThreshold_LTInv_64fc(&z, &z, 1, 0), ippStsInvZero);
    EXPECT_TRUE(z.re == HUGE_VAL && z.im == 0);
}

}  // namespace
