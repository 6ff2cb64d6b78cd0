// Thresholds on every compiled Highway target against the documented rules,
// at, just below and just above the level, at every length and in place.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <math.h>

#include <complex>
#include <limits>
#include <random>
#include <vector>

#include "ipps.h"
#include "kernels_sweep.h"

namespace {

template <typename T>
using Lim = std::numeric_limits<T>;

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

// fn(pSrc, pDst, len) against rule(x): every length, out of place and in place.
template <typename T, class Fn, class Rule>
void CheckMap(const std::vector<T> &in, Fn fn, Rule rule)
{
    sweep::Map<T>(in, fn, rule, true, true);
}

class KernelsThreshold : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsThreshold);

template <typename T>
using Fn1 = IppStatus (*)(const T *, T *, int, T);
template <typename T>
using FnVal = IppStatus (*)(const T *, T *, int, T, T);

// LT, GT, LTAbs, GTAbs, the band and, where the type has them, LTVal and
// GTVal. The Abs forms give the level the sign of x (its sign bit for
// floating x, so -0 gives -level), with |x| taken in a wider type: the
// most negative integer's magnitude does not fit its own.
template <typename T>
void CheckReal(const Fn1<T> (&fns)[4], IppStatus (*band)(const T *, T *, int, T, T, T, T), FnVal<T> lt_val,
               FnVal<T> gt_val, T level)
{
    const std::vector<T> in = Around(level);
    const auto with = [=](Fn1<T> f) { return [=](const T *s, T *d, int n) { return f(s, d, n, level); }; };
    const auto signed_level = [=](T x) {
        if constexpr (Lim<T>::is_integer) return x < 0 ? T(-level) : level;
        else return T(copysign(level, x));
    };
    CheckMap(in, with(fns[0]), [=](T x) { return x < level ? level : x; });
    CheckMap(in, with(fns[1]), [=](T x) { return x > level ? level : x; });
    CheckMap(in, with(fns[2]), [=](T x) { return fabsl((long double)x) < level ? signed_level(x) : x; });
    CheckMap(in, with(fns[3]), [=](T x) { return fabsl((long double)x) > level ? signed_level(x) : x; });
    const T vlo = T(5), vhi = T(-7);
    for (T lo : {T(-level), level})  // a band, and equal levels
        CheckMap(in, [=](const T *s, T *d, int n) { return band(s, d, n, lo, vlo, level, vhi); },
                 [=](T x) { return x < lo ? vlo : x > level ? vhi : x; });
    if (lt_val == nullptr) return;
    CheckMap(in, [=](const T *s, T *d, int n) { return lt_val(s, d, n, level, vhi); },
             [=](T x) { return x < level ? vhi : x; });
    CheckMap(in, [=](const T *s, T *d, int n) { return gt_val(s, d, n, level, vhi); },
             [=](T x) { return x > level ? vhi : x; });
}

TEST_P(KernelsThreshold, RealFormsReplaceAtTheLevelsOnly)
{
    CheckReal<Ipp16s>({ippsThreshold_LT_16s, ippsThreshold_GT_16s, ippsThreshold_LTAbs_16s, ippsThreshold_GTAbs_16s},
                      ippsThreshold_LTValGTVal_16s, ippsThreshold_LTVal_16s, ippsThreshold_GTVal_16s, 300);
    CheckReal<Ipp32s>({ippsThreshold_LT_32s, ippsThreshold_GT_32s, ippsThreshold_LTAbs_32s, ippsThreshold_GTAbs_32s},
                      ippsThreshold_LTValGTVal_32s, nullptr, nullptr, 100000);
    CheckReal<Ipp32f>({ippsThreshold_LT_32f, ippsThreshold_GT_32f, ippsThreshold_LTAbs_32f, ippsThreshold_GTAbs_32f},
                      ippsThreshold_LTValGTVal_32f, ippsThreshold_LTVal_32f, ippsThreshold_GTVal_32f, 0.75f);
    CheckReal<Ipp64f>({ippsThreshold_LT_64f, ippsThreshold_GT_64f, ippsThreshold_LTAbs_64f, ippsThreshold_GTAbs_64f},
                      ippsThreshold_LTValGTVal_64f, ippsThreshold_LTVal_64f, ippsThreshold_GTVal_64f, 1e-3);
    // Level 0 for the Abs forms: only GTAbs changes anything.
    CheckMap(Around<Ipp32s>(1), [](const Ipp32s *s, Ipp32s *d, int n) { return ippsThreshold_GTAbs_32s(s, d, n, 0); },
             [](Ipp32s) { return 0; });
}

TEST_P(KernelsThreshold, LTInvInvertsTheLimitedValue)
{
    for (double level : {0.5, 1e-300, 0.0}) {
        CheckMap(Around(level), [=](const double *s, double *d, int n) { return ippsThreshold_LTInv_64f(s, d, n, level); },
                 [=](double x) { return 1 / (fabs(x) < level ? copysign(level, x) : x); });
        const float lf = float(level);
        CheckMap(Around(lf), [=](const float *s, float *d, int n) { return ippsThreshold_LTInv_32f(s, d, n, lf); },
                 [=](float x) { return 1 / (fabsf(x) < lf ? copysignf(lf, x) : x); });
    }
    // Level 0 meets a zero: infinity and a warning; without a zero, no warning.
    const double z[3] = {2, -0.0, 4};
    double out[3];
    EXPECT_EQ(ippsThreshold_LTInv_64f(z, out, 3, 0), ippStsInvZero);
    EXPECT_TRUE(out[0] == 0.5 && out[1] == -HUGE_VAL);
    EXPECT_EQ(ippsThreshold_LTInv_64f(z, out, 1, 0), ippStsNoErr);
    EXPECT_EQ(ippsThreshold_LTInv_64f(z, out, 3, 1), ippStsNoErr);
}

// Complex rules in long double: the magnitude decides, the direction stays.
using C = std::complex<long double>;

C Direction(Ipp64fc z)
{
    if (z.re == 0 && z.im == 0) return 1;
    if (isinf(z.re) || isinf(z.im))
        return std::polar(1.0L, atan2l(isinf(z.im) ? copysignl(1, z.im) : 0, isinf(z.re) ? copysignl(1, z.re) : 0));
    return C(z.re, z.im) / std::abs(C(z.re, z.im));
}

TEST_P(KernelsThreshold, ComplexFormsCompareTheMagnitude)
{
    // Magnitudes at the level are exact (on the axes and 3-4-5); elsewhere
    // they stay clear of it, as the magnitude itself is rounded.
    const double below = nextafter(5.0, 0.0), above = nextafter(5.0, 9.0);
    std::vector<Ipp64fc> in = {{5, 0}, {0, -5}, {-3, 4}, {3, -4}, {below, 0}, {0, below}, {-above, 0}, {0, above},
                               {HUGE_VAL, 1}, {-HUGE_VAL, HUGE_VAL}, {1e308, 1e308}};  // the sum of squares overflows
    for (double m : {0.0, 1.0, 4.0, 6.0, 1e300, 1e-300})
        for (double a : {0.0, 0.5, 2.0, -1.0, -2.75}) in.push_back({m * cos(a), m * sin(a)});
    const int n = int(in.size());
    std::vector<Ipp64fc> out(n);
    const auto check = [&](const char *name, IppStatus st, C (*rule)(C z, long double mag, Ipp64fc x)) {
        ASSERT_EQ(st, ippStsNoErr) << name;
        for (int i = 0; i < n; ++i) {
            const C want = rule(C(in[i].re, in[i].im), std::abs(C(in[i].re, in[i].im)), in[i]);
            const auto where = ::testing::Message() << name << " at " << sweep::Str(in[i]) << ": " << sweep::Str(out[i]);
            if (isinf(want.real()) || isnan(want.real()))
                EXPECT_TRUE(sweep::Same(out[i].re, double(want.real()))) << where;
            else
                EXPECT_LE(std::abs(C(out[i].re, out[i].im) - want), 8e-16L * std::max(std::abs(want), 1e-300L)) << where;
        }
    };
    check("LT", ippsThreshold_LT_64fc(in.data(), out.data(), n, 5),
          [](C z, long double mag, Ipp64fc x) { return mag < 5 ? 5.0L * Direction(x) : z; });
    check("GT", ippsThreshold_GT_64fc(in.data(), out.data(), n, 5),
          [](C z, long double mag, Ipp64fc x) { return mag > 5 ? 5.0L * Direction(x) : z; });
    check("LTVal", ippsThreshold_LTVal_64fc(in.data(), out.data(), n, 5, Ipp64fc{-1, 5}),
          [](C z, long double mag, Ipp64fc) { return mag < 5 ? C(-1, 5) : z; });
    check("GTVal", ippsThreshold_GTVal_64fc(in.data(), out.data(), n, 5, Ipp64fc{-1, 5}),
          [](C z, long double mag, Ipp64fc) { return mag > 5 ? C(-1, 5) : z; });
    check("LTInv", ippsThreshold_LTInv_64fc(in.data(), out.data(), n, 5),
          [](C z, long double mag, Ipp64fc x) { return isinf(mag) ? C(0) : 1.0L / (mag < 5 ? 5.0L * Direction(x) : z); });
    // NaN compares false; zero with level 0 inverts to +infinity with a warning.
    const Ipp64fc odd[2] = {{NAN, 0.1}, {0, 0}};
    Ipp64fc o[2];
    ASSERT_EQ(ippsThreshold_LT_64fc(odd, o, 1, 5), ippStsNoErr);
    EXPECT_TRUE(isnan(o[0].re) && o[0].im == 0.1);
    ASSERT_EQ(ippsThreshold_LTInv_64fc(odd, o, 2, 0), ippStsInvZero);
    EXPECT_TRUE(o[1].re == HUGE_VAL && o[1].im == 0);
}

TEST(KernelsThresholdStatus, NullsLengthsAndLevels)
{
    double d[2] = {1, 2};
    Ipp64fc c[2] = {};
    Ipp16s s[2] = {};
    EXPECT_EQ(ippsThreshold_LT_64f(nullptr, d, 2, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsThreshold_LT_64f(d, nullptr, 0, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsThreshold_GT_32f(reinterpret_cast<float *>(d), reinterpret_cast<float *>(d), 0, 0), ippStsSizeErr);
    EXPECT_EQ(ippsThreshold_LTVal_16s(s, s, -4, 0, 0), ippStsSizeErr);
    // Negative levels: refused by the Abs, complex and LTInv forms only.
    EXPECT_EQ(ippsThreshold_LT_64f(d, d, 2, -1), ippStsNoErr);
    EXPECT_EQ(ippsThreshold_LTVal_16s(s, s, 2, -1, 0), ippStsNoErr);
    EXPECT_EQ(ippsThreshold_LTAbs_64f(d, d, 2, -1), ippStsThreshNegLevelErr);
    EXPECT_EQ(ippsThreshold_GTAbs_16s(s, s, 2, -1), ippStsThreshNegLevelErr);
    EXPECT_EQ(ippsThreshold_LT_64fc(c, c, 2, -1), ippStsThreshNegLevelErr);
    EXPECT_EQ(ippsThreshold_GTVal_64fc(c, c, 2, -1, Ipp64fc{}), ippStsThreshNegLevelErr);
    EXPECT_EQ(ippsThreshold_LTInv_64f(d, d, 2, -1), ippStsThreshNegLevelErr);
    EXPECT_EQ(ippsThreshold_LTInv_64fc(c, c, 0, -1), ippStsSizeErr);
    // Crossed bands are refused and leave the data alone.
    EXPECT_EQ(ippsThreshold_LTValGTVal_64f(d, d, 2, 3, 0, 2, 0), ippStsThresholdErr);
    EXPECT_EQ(d[0], 1);
    EXPECT_EQ(ippsThreshold_LTValGTVal_16s(s, s, 2, 3, 0, 3, 0), ippStsNoErr);
}

}  // namespace
