// Noise generators against their distributions, and the Jaehne and slope
// signals against their formulas, on every compiled target.
#include "kernels_sweep.h"  // first: the kernels' target set

namespace {

class KernelsGenerate : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsGenerate);

// One generator as a whole: size, init with (a, b, seed), then draws of the
// given lengths, joined.
template <typename T, typename S>
struct Gen {
    IppStatus (*size)(int *);
    IppStatus (*init)(S *, T, T, unsigned);
    IppStatus (*draw)(T *, int, S *);
    std::vector<T> operator()(T a, T b, unsigned seed, std::vector<int> lens) const
    {
        int bytes = 0;
        EXPECT_EQ(size(&bytes), ippStsNoErr);
        std::vector<unsigned char> state(static_cast<size_t>(bytes));
        S *st = reinterpret_cast<S *>(state.data());
        EXPECT_EQ(init(st, a, b, seed), ippStsNoErr);
        std::vector<T> out;
        for (int len : lens) {
            out.resize(out.size() + size_t(len));
            EXPECT_EQ(draw(out.data() + out.size() - len, len, st), ippStsNoErr);
        }
        return out;
    }
};

const Gen<Ipp16s, IppsRandUniState_16s> kUni16{ippsRandUniformGetSize_16s, ippsRandUniformInit_16s, ippsRandUniform_16s};
const Gen<Ipp32f, IppsRandUniState_32f> kUni32{ippsRandUniformGetSize_32f, ippsRandUniformInit_32f, ippsRandUniform_32f};
const Gen<Ipp64f, IppsRandUniState_64f> kUni64{ippsRandUniformGetSize_64f, ippsRandUniformInit_64f, ippsRandUniform_64f};
const Gen<Ipp16s, IppsRandGaussState_16s> kGau16{ippsRandGaussGetSize_16s, ippsRandGaussInit_16s, ippsRandGauss_16s};
const Gen<Ipp32f, IppsRandGaussState_32f> kGau32{ippsRandGaussGetSize_32f, ippsRandGaussInit_32f, ippsRandGauss_32f};
const Gen<Ipp64f, IppsRandGaussState_64f> kGau64{ippsRandGaussGetSize_64f, ippsRandGaussInit_64f, ippsRandGauss_64f};

// Kolmogorov-Smirnov distance of the sample from the distribution cdf.
template <typename T, class F>
double KS(std::vector<T> v, F cdf)
{
    std::sort(v.begin(), v.end());
    double d = 0;
    const double n = double(v.size());
    for (size_t i = 0; i < v.size(); ++i) {
        const double f = cdf(double(v[i]));
        d = std::max({d, f - double(i) / n, double(i + 1) / n - f});
    }
    return d;
}

template <typename T>
void Moments(const std::vector<T> &v, double &mean, double &var)
{
    mean = var = 0;
    for (T x : v) mean += double(x);
    mean /= double(v.size());
    for (T x : v) var += (double(x) - mean) * (double(x) - mean);
    var /= double(v.size() - 1);
}

// Equal seeds repeat, other seeds differ, and a run split over calls is the
// same run: the state carries the leftover samples of a block over.
template <typename T, typename S>
void Repeats(const Gen<T, S> &g, T a, T b)
{
    const auto one = g(a, b, 5, {1000});
    EXPECT_EQ(one, g(a, b, 5, {1000}));
    EXPECT_NE(one, g(a, b, 6, {1000}));
    EXPECT_EQ(one, g(a, b, 5, {1, 7, 8, 9, 15, 17, 31, 912}));
}

TEST_P(KernelsGenerate, SeedsRepeatAndCallsContinueTheRun)
{
    Repeats(kUni16, Ipp16s(-300), Ipp16s(300));
    Repeats(kUni32, -1.0f, 1.0f);
    Repeats(kUni64, -1.0, 1.0);
    Repeats(kGau16, Ipp16s(0), Ipp16s(100));
    Repeats(kGau32, 0.0f, 1.0f);
    Repeats(kGau64, 0.0, 1.0);
}

constexpr int kMillion = 1000000;
// KS distance that a true sample of a million exceeds with probability 1e-4.
constexpr double kKS = 1.95 / 1000.0;

TEST_P(KernelsGenerate, UniformFillsItsRange)
{
    const auto u64 = kUni64(-2.0, 6.0, 11, {kMillion});
    const auto u32 = kUni32(-2.0f, 6.0f, 12, {kMillion});
    for (double x : u64) ASSERT_TRUE(x >= -2.0 && x <= 6.0) << x;
    for (float x : u32) ASSERT_TRUE(x >= -2.0f && x <= 6.0f) << x;
    const auto cdf = [](double x) { return (x + 2.0) / 8.0; };
    EXPECT_LT(KS(u64, cdf), kKS);
    EXPECT_LT(KS(u32, cdf), kKS);
    double m, v;
    Moments(u64, m, v);
    EXPECT_NEAR(m, 2.0, 0.01);
    EXPECT_NEAR(v, 64.0 / 12.0, 0.03);

    // Integers: rounded to the nearest, so the bounds get half the share of
    // the others. Chi-square over 21 cells, 20 degrees of freedom: 52 is
    // passed with probability 1e-4.
    const auto u16 = kUni16(Ipp16s(-10), Ipp16s(10), 13, {kMillion});
    std::vector<double> count(21);
    for (Ipp16s x : u16) {
        ASSERT_TRUE(x >= -10 && x <= 10) << x;
        count[size_t(x + 10)] += 1;
    }
    double chi = 0;
    for (size_t k = 0; k < count.size(); ++k) {
        const double expect = kMillion / 20.0 * (k == 0 || k == 20 ? 0.5 : 1.0);
        chi += (count[k] - expect) * (count[k] - expect) / expect;
    }
    EXPECT_LT(chi, 52.0);
}

TEST_P(KernelsGenerate, GaussianHasItsMeanDeviationAndShape)
{
    const auto cdf = [](double x) { return 0.5 * erfc(-(x - 3.0) / (2.0 * sqrt(2.0))); };
    const auto g64 = kGau64(3.0, 2.0, 21, {kMillion});
    const auto g32 = kGau32(3.0f, 2.0f, 22, {kMillion});
    EXPECT_LT(KS(g64, cdf), kKS);
    EXPECT_LT(KS(g32, cdf), kKS);
    double m, v;
    Moments(g64, m, v);
    EXPECT_NEAR(m, 3.0, 0.01);
    EXPECT_NEAR(v, 4.0, 0.03);
    // Tails: about 63 of a million beyond 4 deviations.
    const auto far = std::count_if(g64.begin(), g64.end(), [](double x) { return fabs(x - 3.0) > 8.0; });
    EXPECT_GT(far, 20);
    EXPECT_LT(far, 140);

    // Integers round and saturate instead of wrapping.
    const auto g16 = kGau16(Ipp16s(32000), Ipp16s(1000), 23, {100000});
    const auto top = std::count(g16.begin(), g16.end(), Ipp16s(32767));
    EXPECT_NEAR(double(top) / 100000.0, 0.2209, 0.01);  // P(z > 0.767)
    EXPECT_EQ(*std::min_element(g16.begin(), g16.end()) > 25000, true);
}

TEST(KernelsSignals, NoiseRefusesNullAndEmpty)
{
    int size = 0, gauss = 0;
    EXPECT_EQ(ippsRandGaussGetSize_32f(nullptr), ippStsNullPtrErr);
    // The single-precision Gaussian query fits every state.
    ASSERT_EQ(ippsRandUniformGetSize_64f(&size), ippStsNoErr);
    ASSERT_EQ(ippsRandGaussGetSize_32f(&gauss), ippStsNoErr);
    EXPECT_GE(gauss, size);
    std::vector<unsigned char> state(static_cast<size_t>(size));
    auto *st = reinterpret_cast<IppsRandUniState_64f *>(state.data());
    EXPECT_EQ(ippsRandUniformInit_64f(nullptr, 0, 1, 1), ippStsNullPtrErr);
    ASSERT_EQ(ippsRandUniformInit_64f(st, 0, 1, 1), ippStsNoErr);
    double x;
    EXPECT_EQ(ippsRandUniform_64f(&x, 1, nullptr), ippStsNullPtrErr);
    EXPECT_EQ(ippsRandUniform_64f(&x, 0, st), ippStsSizeErr);
}

// Long enough that n^2 / len passes many periods: the reduction must hold.
TEST(KernelsSignals, JaehneFollowsItsFormula)
{
    const int len = 997;
    std::vector<double> d(len);
    std::vector<Ipp16s> s(len);
    ASSERT_EQ(ippsVectorJaehne_64f(d.data(), len, 3.0), ippStsNoErr);
    ASSERT_EQ(ippsVectorJaehne_16s(s.data(), len, 1000), ippStsNoErr);
    for (int n = 0; n < len; ++n) {
        const long double x = sinl(0.5L * 3.14159265358979323846L * n * n / len);
        EXPECT_NEAR(d[n], 3.0L * x, 1e-13) << n;
        EXPECT_NEAR(s[n], 1000.0L * x, 0.5 + 1e-9) << n;
    }
    EXPECT_EQ(ippsVectorJaehne_64f(d.data(), len, -1.0), ippStsJaehneErr);
    EXPECT_EQ(ippsVectorJaehne_64f(d.data(), 0, -1.0), ippStsSizeErr);
}

TEST(KernelsSignals, SlopeRoundsToEvenAndSaturates)
{
    std::vector<Ipp16s> s(5);
    ASSERT_EQ(ippsVectorSlope_16s(s.data(), 5, 0.5f, 1.0f), ippStsNoErr);
    EXPECT_EQ(s, (std::vector<Ipp16s>{0, 2, 2, 4, 4}));
    ASSERT_EQ(ippsVectorSlope_16s(s.data(), 5, 32766.0f, 1.0f), ippStsNoErr);
    EXPECT_EQ(s, (std::vector<Ipp16s>{32766, 32767, 32767, 32767, 32767}));
    std::vector<Ipp32s> w(3);
    ASSERT_EQ(ippsVectorSlope_32s(w.data(), 3, -2147483647.0, -1.0), ippStsNoErr);
    EXPECT_EQ(w, (std::vector<Ipp32s>{-2147483647, INT32_MIN, INT32_MIN}));
}

}  // namespace
