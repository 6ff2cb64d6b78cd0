// Reduction kernels on every target: sums, moments, norms and dot products
// against long double at every length around the vector and unroll sizes;
// the extremes' first index at every position, NaN passed over; scaled sums
// at their rounding and saturation points; zero crossings, counts, orders.
#include "kernels_sweep.h"  // first: the kernels' target set

using C = Ipp64fc;
using LD = long double;

namespace {

using sweep::Random;

class KernelsStats : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsStats);

// Lengths through the tails of four unrolled 64-byte vectors, and two long ones.
std::vector<int> Lengths()
{
    std::vector<int> v;
    for (int n = 1; n <= 70; ++n) v.push_back(n);
    v.push_back(1000);
    v.push_back(4099);
    return v;
}

// Finite values in [-100, 100].
template <typename T>
std::vector<T> Finite(size_t n, uint64_t seed)
{
    std::vector<T> v = Random<T>(n, seed);
    for (T &x : v)
        if (!std::isfinite(x)) x = T(1.5);
    return v;
}
std::vector<C> FiniteC(size_t n, uint64_t seed)
{
    std::vector<double> p = Finite<double>(2 * n, seed);
    std::vector<C> v(n);
    memcpy(v.data(), p.data(), n * sizeof(C));
    return v;
}

// |got - want| within k eps of scale.
::testing::AssertionResult Near(LD got, LD want, LD scale, LD eps, const char *what, int n)
{
    if (fabsl(got - want) <= 8 * eps * (scale + 1)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << what << " at " << n << ": " << double(got) << " for " << double(want);
}

TEST_P(KernelsStats, SumsMomentsNormsAndDotProducts)
{
    const LD e64 = DBL_EPSILON, e32 = FLT_EPSILON;
    for (int n : Lengths()) {
        const auto a = Finite<double>(n, n), b = Finite<double>(n, n + 1000);
        const auto fa = Finite<float>(n, n), fb = Finite<float>(n, n + 7);
        const auto za = FiniteC(n, n + 3), zb = FiniteC(n, n + 5);
        LD s = 0, sa = 0, dot = 0, l1d = 0, l2d = 0, infd = 0, fs = 0, fsa = 0, fdot = 0, fabsd = 0;
        LD zre = 0, zim = 0, zabs = 0, zl2 = 0, zinf = 0, ddre = 0, ddim = 0, rzre = 0, rzim = 0, rzabs = 0;
        for (int i = 0; i < n; ++i) {
            s += a[i], sa += fabsl(a[i]), dot += LD(a[i]) * b[i];
            const LD d = LD(a[i]) - b[i];
            l1d += fabsl(d), l2d += d * d, infd = fmaxl(infd, fabsl(d));
            fs += fa[i], fsa += fabsl(fa[i]), fdot += LD(fa[i]) * fb[i], fabsd += fabsl(LD(fa[i]) - fb[i]);
            zre += za[i].re, zim += za[i].im;
            const LD m2 = LD(za[i].re) * za[i].re + LD(za[i].im) * za[i].im;
            zabs += sqrtl(m2), zl2 += m2, zinf = fmaxl(zinf, sqrtl(m2));
            ddre += LD(za[i].re) * zb[i].re - LD(za[i].im) * zb[i].im;
            ddim += LD(za[i].re) * zb[i].im + LD(za[i].im) * zb[i].re;
            rzre += LD(a[i]) * zb[i].re, rzim += LD(a[i]) * zb[i].im, rzabs += fabsl(a[i]) * 100;
        }
        LD mean = s / n, dev = 0, fmean = fs / n, fdev = 0;
        for (int i = 0; i < n; ++i) dev += (a[i] - mean) * (a[i] - mean), fdev += (fa[i] - fmean) * (fa[i] - fmean);
        double r = 0, r2 = 0;
        float f = 0, f2 = 0;
        C z{};
        ASSERT_EQ(ippsSum_64f(a.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, s, sa, e64, "Sum_64f", n));
        ASSERT_EQ(ippsMean_64f(a.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, mean, sa / n, e64, "Mean_64f", n));
        for (IppHintAlgorithm hint : {ippAlgHintNone, ippAlgHintAccurate}) {
            const LD eps = hint == ippAlgHintAccurate ? e32 / 4 : e32;
            ASSERT_EQ(ippsSum_32f(fa.data(), n, &f, hint), ippStsNoErr);
            EXPECT_TRUE(Near(f, fs, fsa, eps, "Sum_32f", n));
            ASSERT_EQ(ippsMean_32f(fa.data(), n, &f, hint), ippStsNoErr);
            EXPECT_TRUE(Near(f, fmean, fsa / n, eps, "Mean_32f", n));
            if (n > 1) {
                ASSERT_EQ(ippsMeanStdDev_32f(fa.data(), n, &f, &f2, hint), ippStsNoErr);
                EXPECT_TRUE(Near(f2, sqrtl(fdev / (n - 1)), 100, eps, "StdDev_32f", n));
                ASSERT_EQ(ippsStdDev_32f(fa.data(), n, &f, hint), ippStsNoErr);
                EXPECT_EQ(f, f2);
            }
        }
        if (n > 1) {
            ASSERT_EQ(ippsMeanStdDev_64f(a.data(), n, &r, &r2), ippStsNoErr);
            EXPECT_TRUE(Near(r2, sqrtl(dev / (n - 1)), 100, e64, "StdDev_64f", n));
            EXPECT_TRUE(Near(r, mean, sa / n, e64, "MeanStdDev_64f", n));
        }
        ASSERT_EQ(ippsSum_64fc(za.data(), n, &z), ippStsNoErr);
        EXPECT_TRUE(Near(z.re, zre, 100 * n, e64, "Sum_64fc re", n) && Near(z.im, zim, 100 * n, e64, "im", n));
        ASSERT_EQ(ippsMean_64fc(za.data(), n, &z), ippStsNoErr);
        EXPECT_TRUE(Near(z.re, zre / n, 100, e64, "Mean_64fc re", n) && Near(z.im, zim / n, 100, e64, "im", n));

        // Norms: one-vector forms as differences from zero.
        const std::vector<double> zero(n, 0.0);
        ASSERT_EQ(ippsNorm_L1_64f(a.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, sa, sa, e64, "Norm_L1_64f", n));
        ASSERT_EQ(ippsNormDiff_L1_64f(a.data(), b.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, l1d, l1d, e64, "NormDiff_L1_64f", n));
        ASSERT_EQ(ippsNormDiff_L2_64f(a.data(), b.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, sqrtl(l2d), sqrtl(l2d), e64, "NormDiff_L2_64f", n));
        ASSERT_EQ(ippsNormDiff_Inf_64f(a.data(), b.data(), n, &r), ippStsNoErr);
        EXPECT_EQ(r, double(infd)) << n;
        ASSERT_EQ(ippsNormDiff_L1_32f(fa.data(), fb.data(), n, &f), ippStsNoErr);
        EXPECT_TRUE(Near(f, fabsd, fabsd, e32, "NormDiff_L1_32f", n));
        ASSERT_EQ(ippsNorm_L1_64fc64f(za.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, zabs, zabs, e64, "Norm_L1_64fc64f", n));
        ASSERT_EQ(ippsNorm_L2_64fc64f(za.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, sqrtl(zl2), sqrtl(zl2), e64, "Norm_L2_64fc64f", n));
        ASSERT_EQ(ippsNorm_Inf_64fc64f(za.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, zinf, zinf, e64, "Norm_Inf_64fc64f", n));

        ASSERT_EQ(ippsDotProd_64f(a.data(), b.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, dot, 1e4 * n, e64, "DotProd_64f", n));
        ASSERT_EQ(ippsDotProd_32f64f(fa.data(), fb.data(), n, &r), ippStsNoErr);
        EXPECT_TRUE(Near(r, fdot, 1e4 * n, e64, "DotProd_32f64f", n));
        ASSERT_EQ(ippsDotProd_64fc(za.data(), zb.data(), n, &z), ippStsNoErr);
        EXPECT_TRUE(Near(z.re, ddre, 2e4 * n, e64, "DotProd_64fc re", n) && Near(z.im, ddim, 2e4 * n, e64, "im", n));
        ASSERT_EQ(ippsDotProd_64f64fc(a.data(), zb.data(), n, &z), ippStsNoErr);
        EXPECT_TRUE(Near(z.re, rzre, rzabs, e64, "DotProd_64f64fc re", n) && Near(z.im, rzim, rzabs, e64, "im", n));
    }
}

TEST_P(KernelsStats, SingleSumsWithTheAccurateHintAreDoubleSums)
{
    // 10,000,000 floats: single-precision partial sums would lose digits.
    std::vector<float> v(10000000);
    for (size_t i = 0; i < v.size(); ++i) v[i] = 1.0f + float(i % 1000) / 1024;
    double want = 0;
    for (float x : v) want += x;
    float got = 0;
    ASSERT_EQ(ippsSum_32f(v.data(), int(v.size()), &got, ippAlgHintAccurate), ippStsNoErr);
    EXPECT_EQ(got, float(want));
    ASSERT_EQ(ippsMean_32f(v.data(), int(v.size()), &got, ippAlgHintAccurate), ippStsNoErr);
    EXPECT_EQ(got, float(want / double(v.size())));
}

TEST_P(KernelsStats, ExtremesReportTheFirstIndex)
{
    // Every length and position: a unique extreme, then a tie with a later copy.
    for (int n : {1, 2, 7, 16, 17, 33, 64, 65, 130}) {
        for (int at = 0; at < n; ++at) {
            std::vector<float> f(n, 1.0f);
            std::vector<double> d(n, 1.0);
            std::vector<Ipp16s> s(n, 1);
            f[at] = 9, d[at] = -9, s[at] = -9;
            if (at + 1 < n) f.back() = 9, d.back() = -9, s.back() = -9;
            float fv = 0, fl = 0;
            double dv = 0, dh = 0;
            Ipp16s sv = 0;
            int k = -1, kl = -1, kh = -1;
            ASSERT_EQ(ippsMaxIndx_32f(f.data(), n, &fv, &k), ippStsNoErr);
            EXPECT_TRUE(fv == 9 && k == at) << n << " " << at << ": " << k;
            ASSERT_EQ(ippsMinMaxIndx_32f(f.data(), n, &fl, &kl, &fv, &kh), ippStsNoErr);
            const auto first_min = std::min_element(f.begin(), f.end());
            EXPECT_TRUE(fv == 9 && kh == at && fl == *first_min && kl == first_min - f.begin()) << n << " " << at;
            ASSERT_EQ(ippsMinIndx_64f(d.data(), n, &dv, &k), ippStsNoErr);
            EXPECT_TRUE(dv == -9 && k == at) << n << " " << at;
            ASSERT_EQ(ippsMinMaxIndx_64f(d.data(), n, &dv, &kl, &dh, &kh), ippStsNoErr);
            EXPECT_TRUE(dv == -9 && kl == at) << n << " " << at;
            ASSERT_EQ(ippsMaxAbsIndx_16s(s.data(), n, &sv, &k), ippStsNoErr);
            EXPECT_TRUE(sv == 9 && k == at) << n << " " << at;
            ASSERT_EQ(ippsMinIndx_16s(s.data(), n, &sv, &k), ippStsNoErr);
            EXPECT_TRUE(sv == -9 && k == at) << n << " " << at;
        }
    }
}

TEST_P(KernelsStats, ExtremesPassOverNaN)
{
    const float nan = NAN;
    const struct { std::vector<float> x; float lo, hi; int klo, khi; } cases[] = {
        {{nan, 3, -2, nan}, -2, 3, 2, 1},
        {{nan, nan, nan}, nan, nan, 0, 0},
        {{-INFINITY, nan, INFINITY}, -INFINITY, INFINITY, 0, 2},
        {{0.0f, -0.0f}, 0.0f, 0.0f, 0, 0},
    };
    for (const auto &c : cases) {
        std::vector<float> x = c.x;
        for (int rep = 0; rep < 40; ++rep) x.push_back(c.x[rep % c.x.size()]);  // past one vector
        float lo = 0, hi = 0, m = 0;
        int kl = -1, kh = -1;
        ASSERT_EQ(ippsMinMaxIndx_32f(x.data(), int(x.size()), &lo, &kl, &hi, &kh), ippStsNoErr);
        EXPECT_TRUE(sweep::Same(lo, c.lo) && sweep::Same(hi, c.hi) && kl == c.klo && kh == c.khi)
            << lo << " " << hi << " " << kl << " " << kh;
        ASSERT_EQ(ippsMax_32f(x.data(), int(x.size()), &m), ippStsNoErr);
        EXPECT_TRUE(sweep::Same(m, c.hi));
        double dl = 0, dh = 0;
        std::vector<double> xd(x.begin(), x.end());
        ASSERT_EQ(ippsMinMax_64f(xd.data(), int(xd.size()), &dl, &dh), ippStsNoErr);
        EXPECT_TRUE(sweep::Same(dl, double(c.lo)) && sweep::Same(dh, double(c.hi)));
        // Norms, unlike extremes, are NaN with any NaN element, wherever it is.
        const bool nan = std::any_of(x.begin(), x.end(), [](float v) { return v != v; });
        for (size_t at : {size_t(0), x.size() / 2, x.size() - 1}) {
            std::rotate(xd.begin(), xd.begin() + at, xd.end());
            ASSERT_EQ(ippsNorm_Inf_64f(xd.data(), int(xd.size()), &dh), ippStsNoErr);
            EXPECT_EQ(std::isnan(dh), nan) << at;
            ASSERT_EQ(ippsNormDiff_Inf_64f(xd.data(), xd.data(), int(xd.size()), &dh), ippStsNoErr);
            EXPECT_EQ(std::isnan(dh), nan) << at;
        }
    }
}

TEST_P(KernelsStats, IntegerExtremesAndMagnitudes)
{
    const std::vector<Ipp16s> s = {5, -32768, 7, 0, -32768};
    Ipp16s v = 0;
    int k = -1;
    EXPECT_EQ(ippsMaxAbs_16s(s.data(), 5, &v), ippStsNoErr);
    EXPECT_EQ(v, 32767);  // saturated
    EXPECT_EQ(ippsMaxAbsIndx_16s(s.data(), 5, &v, &k), ippStsNoErr);
    EXPECT_EQ(k, 1);
    EXPECT_EQ(ippsMinAbsIndx_16s(s.data(), 5, &v, &k), ippStsNoErr);
    EXPECT_TRUE(v == 0 && k == 3);
    const std::vector<Ipp32s> w = {-3, INT32_MIN, 3};
    Ipp32s x = 0;
    EXPECT_EQ(ippsMaxAbs_32s(w.data(), 3, &x), ippStsNoErr);
    EXPECT_EQ(x, INT32_MAX);
    EXPECT_EQ(ippsMinAbsIndx_32s(w.data(), 3, &x, &k), ippStsNoErr);
    EXPECT_TRUE(x == 3 && k == 0);
    const std::vector<Ipp8u> b = {7, 255, 0, 255};
    Ipp8u lo = 1, hi = 1;
    EXPECT_EQ(ippsMinMax_8u(b.data(), 4, &lo, &hi), ippStsNoErr);
    EXPECT_TRUE(lo == 0 && hi == 255);
    // Every position of the range in vectors of every length: the first
    // index, as std::min_element and std::max_element give it.
    const auto mag = [](Ipp32s a, Ipp32s b) { return std::abs(a) < std::abs(b); };
    for (int n : {1, 5, 31, 32, 33, 64, 65, 130, 200}) {
        for (int at = 0; at < n; ++at) {
            std::vector<Ipp32s> v(n, 9);
            v[at] = -7;
            if (at + 1 < n) v.back() = -7;
            if (n > 2) v[(at + n / 2) % n] = 11;
            int kl = -1, kh = -1;
            ASSERT_EQ(ippsMinMaxIndx_32s(v.data(), n, &x, &kl, &x, &kh), ippStsNoErr);
            EXPECT_EQ(kl, std::min_element(v.begin(), v.end()) - v.begin()) << n << " " << at;
            EXPECT_EQ(kh, std::max_element(v.begin(), v.end()) - v.begin()) << n << " " << at;
            ASSERT_EQ(ippsMinAbsIndx_32s(v.data(), n, &x, &k), ippStsNoErr);
            EXPECT_EQ(k, std::min_element(v.begin(), v.end(), mag) - v.begin()) << n << " " << at;
            std::vector<Ipp8u> u(v.begin(), v.end());  // -7 is 249
            ASSERT_EQ(ippsMinMax_8u(u.data(), n, &lo, &hi), ippStsNoErr);
            EXPECT_TRUE(lo == *std::min_element(u.begin(), u.end()) && hi == *std::max_element(u.begin(), u.end()));
        }
    }
    // Index outputs of the single-extreme forms may be null.
    EXPECT_EQ(ippsMaxIndx_32s(w.data(), 3, &x, nullptr), ippStsNoErr);
    EXPECT_EQ(ippsMaxIndx_32s(w.data(), 0, &x, nullptr), ippStsSizeErr);
    EXPECT_EQ(ippsMaxIndx_32s(w.data(), 3, nullptr, &k), ippStsNullPtrErr);
}

TEST_P(KernelsStats, ScaledIntegerSumsAndDotProducts)
{
    const struct { std::vector<Ipp32s> x; int sf; Ipp32s want; } cases[] = {
        {{INT32_MAX, 1}, 0, INT32_MAX},
        {{INT32_MIN, -1}, 0, INT32_MIN},
        {{INT32_MAX, INT32_MAX, INT32_MAX}, 2, 1610612735},  // (3 2^31 - 3) / 4 = 1610612735.25
        {{5}, 1, 2},    // 2.5 to even
        {{7}, 1, 4},    // 3.5 to even
        {{-5}, 1, -2},  // -2.5 to even
        {{-7}, 2, -2},  // -1.75
        {{3}, -3, 24},
        {{1 << 20}, -12, INT32_MAX},
        {{-1}, -40, INT32_MIN},
        {{12345}, 80, 0},
    };
    for (const auto &c : cases) {
        Ipp32s got = 0;
        ASSERT_EQ(ippsSum_32s_Sfs(c.x.data(), int(c.x.size()), &got, c.sf), ippStsNoErr);
        EXPECT_EQ(got, c.want) << c.x[0] << " scaled by " << c.sf;
    }
    std::vector<Ipp16s> s(70000, 32767);
    s[69999] = -1;  // past the vector part
    Ipp32s got = 0;
    ASSERT_EQ(ippsSum_16s32s_Sfs(s.data(), int(s.size()), &got, 0), ippStsNoErr);
    EXPECT_EQ(got, INT32_MAX);
    ASSERT_EQ(ippsSum_16s32s_Sfs(s.data(), int(s.size()), &got, 8), ippStsNoErr);
    const long long sum = 69999LL * 32767 - 1;
    EXPECT_EQ(got, Ipp32s((sum >> 8) + ((sum & 255) >= 128)));
    Ipp64s dp = 0;
    ASSERT_EQ(ippsDotProd_16s64s(s.data(), s.data(), int(s.size()), &dp), ippStsNoErr);
    EXPECT_EQ(dp, 69999LL * 32767 * 32767 + 1);
    std::vector<Ipp16s> m(1001, -32768);
    ASSERT_EQ(ippsDotProd_16s64s(m.data(), m.data(), 1001, &dp), ippStsNoErr);
    EXPECT_EQ(dp, 1001LL << 30);
}

TEST(KernelsStatsPlainLoops, ZeroCrossingsCountsAndOrders)
{
    const std::vector<float> x = {1, -1, 0, 2, -0.0f, -3, NAN, 4};
    // ZCR: zero and -0 count as positive; ZCXor: -0 and the negatives have
    // the sign bit; ZCC: steps to or from zero count halves. NaN pairs count
    // nothing but in ZCXor, by their sign bit.
    const struct { IppsZCType type; float want; } kinds[] = {{ippZCR, 3}, {ippZCXor, 4}, {ippZCC, 3}};
    for (const auto &k : kinds) {
        float got = -1;
        ASSERT_EQ(ippsZeroCrossing_32f(x.data(), Ipp32u(x.size()), &got, k.type), ippStsNoErr);
        EXPECT_EQ(got, k.want) << k.type;
    }
    const std::vector<Ipp16s> s = {-5, 5, 0, -1};
    float got = 0;
    ASSERT_EQ(ippsZeroCrossing_16s32f(s.data(), 4, &got, ippZCR), ippStsNoErr);
    EXPECT_EQ(got, 2);
    ASSERT_EQ(ippsZeroCrossing_16s32f(s.data(), 4, &got, ippZCC), ippStsNoErr);
    EXPECT_EQ(got, 2);
    EXPECT_EQ(ippsZeroCrossing_16s32f(s.data(), 4, &got, IppsZCType(3)), ippStsRangeErr);
    EXPECT_EQ(ippsZeroCrossing_16s32f(s.data(), 0, &got, IppsZCType(3)), ippStsSizeErr);

    const std::vector<Ipp32s> v = {INT32_MIN, -1, 0, 5, 6, INT32_MAX};
    int n = -1;
    ASSERT_EQ(ippsCountInRange_32s(v.data(), 6, &n, -1, 6), ippStsNoErr);
    EXPECT_EQ(n, 2);
    ASSERT_EQ(ippsCountInRange_32s(v.data(), 6, &n, INT32_MIN, INT32_MAX), ippStsNoErr);
    EXPECT_EQ(n, 4);
    ASSERT_EQ(ippsCountInRange_32s(v.data(), 6, &n, 3, 3), ippStsNoErr);
    EXPECT_EQ(n, 0);
    EXPECT_EQ(ippsCountInRange_32s(v.data(), 6, &n, 4, 3), ippStsRangeErr);

    int order = 0;
    const std::vector<double> d = {-0.75, NAN, 0.5};
    EXPECT_EQ(ippsMaxOrder_64f(d.data(), 3, &order), ippStsNanArg);
    EXPECT_EQ(order, 0);
    const std::vector<float> tiny = {1e-40f, -INFINITY};
    EXPECT_EQ(ippsMaxOrder_32f(tiny.data(), 1, &order), ippStsNoErr);
    EXPECT_EQ(order, -132);
    EXPECT_EQ(ippsMaxOrder_32f(tiny.data(), 2, &order), ippStsNoErr);
    EXPECT_EQ(order, 129);
    const std::vector<Ipp32s> big = {INT32_MIN, 1};
    EXPECT_EQ(ippsMaxOrder_32s(big.data(), 2, &order), ippStsNoErr);
    EXPECT_EQ(order, 32);
}

TEST_P(KernelsStats, ElementWiseExtremes)
{
    // Unsigned integers; a NaN in either source gives NaN.
    ORB_ROWS(ippsMaxEvery_8u, ippsMaxEvery_16u, ippsMaxEvery_32f, ippsMaxEvery_64f)
        .Check([](auto a, auto b, auto got) {
            return sweep::Same(got, a != a ? a : b != b ? b : std::max(a, b)) || (a == b && got == a);
        });
    ORB_ROWS(ippsMinEvery_8u, ippsMinEvery_16u, ippsMinEvery_32f, ippsMinEvery_64f)
        .Check([](auto a, auto b, auto got) {
            return sweep::Same(got, a != a ? a : b != b ? b : std::min(a, b)) || (a == b && got == a);
        });
}

TEST(KernelsStatsPlainLoops, StatusesOfEmptyAndShortInput)
{
    const double x[2] = {1, 2};
    double r = 0, r2 = 0;
    float f = 0;
    C z{};
    EXPECT_EQ(ippsSum_64f(x, 0, &r), ippStsSizeErr);
    EXPECT_EQ(ippsSum_64f(nullptr, 2, &r), ippStsNullPtrErr);
    EXPECT_EQ(ippsStdDev_64f(x, 1, &r), ippStsSizeErr);
    EXPECT_EQ(ippsMeanStdDev_64f(x, 1, &r, &r2), ippStsSizeErr);
    EXPECT_EQ(ippsStdDev_32f(reinterpret_cast<const float *>(x), 1, &f, ippAlgHintNone), ippStsSizeErr);
    EXPECT_EQ(ippsDotProd_64f64fc(x, nullptr, 1, &z), ippStsNullPtrErr);
    EXPECT_EQ(ippsNorm_L2_64f(x, -1, &r), ippStsSizeErr);
    EXPECT_EQ(ippsMaxEvery_64f(x, x, &r, 0), ippStsSizeErr);
}

}  // namespace
