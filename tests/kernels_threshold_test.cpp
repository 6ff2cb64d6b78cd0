// Thresholds on every compiled Highway target against scalar rules, at,
// just below and just above the level.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <math.h>
#include <string.h>

#include <complex>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include "ipps.h"

namespace {

template <typename T>
using Lim = std::numeric_limits<T>;

template <typename T>
bool SameValue(T a, T b)
{
    if constexpr (Lim<T>::is_integer) return a == b;
    else return (isnan(a) && isnan(b)) || memcmp(&a, &b, sizeof(T)) == 0;
}

struct StreamAll {
    size_t saved = orb_kernels::StreamThresholdBytes();
    StreamAll() { orb_kernels::StreamThresholdBytes() = 64; }
    ~StreamAll() { orb_kernels::StreamThresholdBytes() = saved; }
};

// Both signs of the level and its neighbours, the type's limits, zeros,
// and for floating types NaN and the infinities, then random values.
template <typename T>
std::vector<T> Around(T level)
{
    std::vector<T> v;
    for (T x : {level, T(-level)}) {
        v.push_back(x);
        if constexpr (Lim<T>::is_integer) {
            if (x > Lim<T>::lowest()) v.push_back(T(x - 1));
            if (x < Lim<T>::max()) v.push_back(T(x + 1));
        } else {
            v.push_back(nextafter(x, -Lim<T>::infinity()));
            v.push_back(nextafter(x, Lim<T>::infinity()));
        }
    }
    for (T x : {T(0), T(1), T(-1), Lim<T>::lowest(), Lim<T>::max()}) v.push_back(x);
    if constexpr (!Lim<T>::is_integer)
        for (T x : {T(-0.0), Lim<T>::quiet_NaN(), Lim<T>::infinity(), -Lim<T>::infinity()}) v.push_back(x);
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> u(-3.0 * double(level) - 5, 3.0 * double(level) + 5);
    for (int i = 0; i < 200; ++i) v.push_back(T(u(rng)));
    return v;
}

// Every prefix up to 2 * 64 + 1 elements and the whole input, out of place
// at two alignments (cached and streaming) and in place, with a sentinel.
template <typename T>
void CheckMap(const char *what, const std::vector<T> &in, const std::function<IppStatus(const T *, T *, int)> &fn,
              const std::function<T(T)> &rule)
{
    std::vector<size_t> lengths;
    for (size_t len = 1; len <= 129 && len < in.size(); ++len) lengths.push_back(len);
    lengths.push_back(in.size());
    for (int streaming = 0; streaming < 2; ++streaming) {
        StreamAll *lower = streaming ? new StreamAll : nullptr;
        for (size_t len : lengths)
            for (int mode = 0; mode < 3; ++mode) {
                const size_t offset = mode == 1;
                std::vector<T> out(len + 2, T(77));
                T *dst = out.data() + offset;
                if (mode == 2) std::copy(in.begin(), in.begin() + len, dst);
                ASSERT_GE(fn(mode == 2 ? dst : in.data(), dst, int(len)), 0) << what;
                for (size_t i = 0; i < len; ++i)
                    ASSERT_TRUE(SameValue(dst[i], rule(in[i])))
                        << what << " at " << i << " of " << len << ": " << +in[i] << " gives " << +dst[i]
                        << ", expected " << +rule(in[i]);
                ASSERT_EQ(dst[len], T(77)) << what << " wrote past " << len;
            }
        delete lower;
    }
}

class KernelsThreshold : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsThreshold);

template <typename T>
T SignedLevel(T x, T level)
{
    if constexpr (Lim<T>::is_integer) return x < 0 ? T(-level) : level;
    else return copysign(level, x);
}

template <typename T>
void CheckReal(IppStatus (*lt)(const T *, T *, int, T), IppStatus (*gt)(const T *, T *, int, T),
               IppStatus (*lt_abs)(const T *, T *, int, T), IppStatus (*gt_abs)(const T *, T *, int, T),
               IppStatus (*band)(const T *, T *, int, T, T, T, T), T level)
{
    const std::vector<T> in = Around(level);
    using namespace std::placeholders;
    CheckMap<T>("LT", in, std::bind(lt, _1, _2, _3, level), [=](T x) { return x < level ? level : x; });
    CheckMap<T>("GT", in, std::bind(gt, _1, _2, _3, level), [=](T x) { return x > level ? level : x; });
    // |x| in a wider type: the most negative integer's magnitude is large.
    CheckMap<T>("LTAbs", in, std::bind(lt_abs, _1, _2, _3, level),
                [=](T x) { return fabsl((long double)x) < level ? SignedLevel(x, level) : x; });
    CheckMap<T>("GTAbs", in, std::bind(gt_abs, _1, _2, _3, level),
                [=](T x) { return fabsl((long double)x) > level ? SignedLevel(x, level) : x; });
    const T lo = T(-level), vlo = T(5), vhi = T(-7);
    CheckMap<T>("LTValGTVal", in, std::bind(band, _1, _2, _3, lo, vlo, level, vhi),
                [=](T x) { return x < lo ? vlo : x > level ? vhi : x; });
    CheckMap<T>("LTValGTVal equal levels", in, std::bind(band, _1, _2, _3, level, vlo, level, vhi),
                [=](T x) { return x < level ? vlo : x > level ? vhi : x; });
}

TEST_P(KernelsThreshold, RealFormsReplaceAtTheLevelsOnly)
{
    CheckReal<Ipp16s>(ippsThreshold_LT_16s, ippsThreshold_GT_16s, ippsThreshold_LTAbs_16s, ippsThreshold_GTAbs_16s,
                      ippsThreshold_LTValGTVal_16s, 300);
    CheckReal<Ipp32s>(ippsThreshold_LT_32s, ippsThreshold_GT_32s, ippsThreshold_LTAbs_32s, ippsThreshold_GTAbs_32s,
                      ippsThreshold_LTValGTVal_32s, 100000);
    CheckReal<Ipp32f>(ippsThreshold_LT_32f, ippsThreshold_GT_32f, ippsThreshold_LTAbs_32f, ippsThreshold_GTAbs_32f,
                      ippsThreshold_LTValGTVal_32f, 0.75f);
    CheckReal<Ipp64f>(ippsThreshold_LT_64f, ippsThreshold_GT_64f, ippsThreshold_LTAbs_64f, ippsThreshold_GTAbs_64f,
                      ippsThreshold_LTValGTVal_64f, 1e-3);
    // Level 0 for the Abs forms: only GTAbs changes anything.
    const std::vector<Ipp32s> in = Around<Ipp32s>(1);
    CheckMap<Ipp32s>("GTAbs 0", in, [](const Ipp32s *s, Ipp32s *d, int n) { return ippsThreshold_GTAbs_32s(s, d, n, 0); },
                     [](Ipp32s) { return 0; });
}

template <typename T>
void CheckVal(IppStatus (*lt)(const T *, T *, int, T, T), IppStatus (*gt)(const T *, T *, int, T, T), T level)
{
    const std::vector<T> in = Around(level);
    const T value = T(-3);
    using namespace std::placeholders;
    CheckMap<T>("LTVal", in, std::bind(lt, _1, _2, _3, level, value), [=](T x) { return x < level ? value : x; });
    CheckMap<T>("GTVal", in, std::bind(gt, _1, _2, _3, level, value), [=](T x) { return x > level ? value : x; });
}

TEST_P(KernelsThreshold, ValFormsSubstituteTheValue)
{
    CheckVal<Ipp16s>(ippsThreshold_LTVal_16s, ippsThreshold_GTVal_16s, -20);
    CheckVal<Ipp32f>(ippsThreshold_LTVal_32f, ippsThreshold_GTVal_32f, 2.5f);
    CheckVal<Ipp64f>(ippsThreshold_LTVal_64f, ippsThreshold_GTVal_64f, -1e10);
}

TEST_P(KernelsThreshold, LTInvInvertsTheLimitedValue)
{
    for (double level : {0.5, 1e-300, 0.0}) {
        const std::vector<double> in = Around(level);
        CheckMap<double>("LTInv_64f", in,
                         [=](const double *s, double *d, int n) { return ippsThreshold_LTInv_64f(s, d, n, level); },
                         [=](double x) { return 1 / (fabs(x) < level ? copysign(level, x) : x); });
        const std::vector<float> inf = Around(float(level));
        CheckMap<float>("LTInv_32f", inf,
                        [=](const float *s, float *d, int n) { return ippsThreshold_LTInv_32f(s, d, n, float(level)); },
                        [=](float x) { return 1 / (fabsf(x) < float(level) ? copysignf(float(level), x) : x); });
    }
    // Level 0 meets a zero: infinity and a warning; without a zero, no warning.
    const double z[3] = {2, -0.0, 4};
    double out[3];
    EXPECT_EQ(ippsThreshold_LTInv_64f(z, out, 3, 0), ippStsInvZero);
    EXPECT_EQ(out[0], 0.5);
    EXPECT_EQ(out[1], -HUGE_VAL);
    EXPECT_EQ(ippsThreshold_LTInv_64f(z, out, 1, 0), ippStsNoErr);
    EXPECT_EQ(ippsThreshold_LTInv_64f(z, out, 3, 1), ippStsNoErr);
    EXPECT_EQ(out[1], -1);
}

// Complex rules in long double: the magnitude decides, the direction stays.
using C = std::complex<long double>;

C Direction(Ipp64fc z)
{
    if (z.re == 0 && z.im == 0) return 1;
    if (isinf(z.re) || isinf(z.im)) return std::polar(1.0L, atan2l(isinf(z.im) ? copysignl(1, z.im) : 0, isinf(z.re) ? copysignl(1, z.re) : 0));
    const C c(z.re, z.im);
    return c / std::abs(c);
}

void ExpectNear(Ipp64fc got, C want, const char *what, Ipp64fc in)
{
    const long double tol = 8e-16L * std::max(std::abs(want), 1e-300L);
    if (isinf(want.real()) || isnan(want.real())) {
        EXPECT_TRUE(SameValue(got.re, double(want.real()))) << what << " at " << in.re << "+" << in.im << "i";
        return;
    }
    EXPECT_LE(std::abs(C(got.re, got.im) - want), tol) << what << " at " << in.re << "+" << in.im << "i gives "
                                                       << got.re << "+" << got.im << "i, expected " << want;
}

TEST_P(KernelsThreshold, ComplexFormsCompareTheMagnitude)
{
    // Magnitudes at the level are exact (on the axes and 3-4-5); elsewhere
    // they stay clear of it, as the magnitude itself is rounded.
    const long double level = 5;
    const double below = nextafter(5.0, 0.0), above = nextafter(5.0, 9.0);
    std::vector<Ipp64fc> in = {{5, 0}, {0, -5}, {-3, 4}, {3, -4}, {below, 0}, {0, below}, {-above, 0}, {0, above}};
    for (double m : {0.0, 1.0, 4.0, 6.0, 1e300, 1e-300})
        for (double a : {0.0, 0.5, 2.0, -1.0, -2.75})
            in.push_back({m * cos(a), m * sin(a)});
    in.push_back({HUGE_VAL, 1});
    in.push_back({-HUGE_VAL, HUGE_VAL});
    in.push_back({1e308, 1e308});  // the sum of squares overflows
    using Fn = std::function<IppStatus(const Ipp64fc *, Ipp64fc *, int)>;
    using namespace std::placeholders;
    const Ipp64fc value{-1, 5};
    const auto limit = [=](C z, long double mag, Ipp64fc x) { return mag < level ? level * Direction(x) : z; };
    const auto clip = [=](C z, long double mag, Ipp64fc x) { return mag > level ? level * Direction(x) : z; };
    const struct {
        const char *name;
        Fn fn;
        std::function<C(C, long double, Ipp64fc)> rule;
    } cases[] = {
        {"LT", std::bind(ippsThreshold_LT_64fc, _1, _2, _3, level), limit},
        {"GT", std::bind(ippsThreshold_GT_64fc, _1, _2, _3, level), clip},
        {"LTVal", std::bind(ippsThreshold_LTVal_64fc, _1, _2, _3, level, value),
         [=](C z, long double mag, Ipp64fc) { return mag < level ? C(-1, 5) : z; }},
        {"GTVal", std::bind(ippsThreshold_GTVal_64fc, _1, _2, _3, level, value),
         [=](C z, long double mag, Ipp64fc) { return mag > level ? C(-1, 5) : z; }},
        {"LTInv", std::bind(ippsThreshold_LTInv_64fc, _1, _2, _3, level),
         [=](C z, long double mag, Ipp64fc x) { return isinf(mag) ? C(0) : 1.0L / limit(z, mag, x); }},
    };
    std::vector<Ipp64fc> out(in.size());
    for (const auto &c : cases) {
        ASSERT_EQ(c.fn(in.data(), out.data(), int(in.size())), ippStsNoErr) << c.name;
        for (size_t i = 0; i < in.size(); ++i) {
            const C z(in[i].re, in[i].im);
            ExpectNear(out[i], c.rule(z, std::abs(z), in[i]), c.name, in[i]);
        }
    }
    // NaN compares false; zero with level 0 inverts to +infinity with a warning.
    const Ipp64fc odd[2] = {{NAN, 0.1}, {0, 0}};
    Ipp64fc o[2];
    ASSERT_EQ(ippsThreshold_LT_64fc(odd, o, 1, 5), ippStsNoErr);
    EXPECT_TRUE(isnan(o[0].re));
    EXPECT_EQ(o[0].im, 0.1);
    ASSERT_EQ(ippsThreshold_LTInv_64fc(odd, o, 2, 0), ippStsInvZero);
    EXPECT_EQ(o[1].re, HUGE_VAL);
    EXPECT_EQ(o[1].im, 0);
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
