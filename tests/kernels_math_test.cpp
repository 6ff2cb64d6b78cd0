// Unary math kernels against long double over the whole line.
#include "kernels_sweep.h"  // first: the kernels' target set

namespace {

using sweep::Lim;

// The special values, a sweep of [lo, hi] and random bit patterns.
template <typename T>
std::vector<T> Inputs(double lo, double hi, size_t sweep, size_t random)
{
    const T inf = Lim<T>::infinity(), tiny = Lim<T>::denorm_min();
    std::vector<T> v = {T(0), T(-0.0), T(1), T(-1), inf, -inf, Lim<T>::quiet_NaN(), tiny, -tiny,
                        Lim<T>::min(), Lim<T>::max(), -Lim<T>::max(), T(1000), T(-1000)};
    for (size_t i = 0; i < sweep; ++i) {
        const double u = double(i) / double(sweep - 1);
        if (lo > 0) v.insert(v.end(), {T(lo * pow(hi / lo, u)), T(-lo * pow(hi / lo, u))});
        else v.push_back(T(lo * (1 - u) + hi * u));
    }
    std::mt19937_64 rng(7);
    for (size_t i = 0; i < random; ++i) {
        const uint64_t bits = rng();
        v.emplace_back();
        memcpy(&v.back(), &bits, sizeof(T));
    }
    return v;
}

// For the lengths the specials, [-3, 3] and exp's slow path (+-800) first;
// then the accuracy sweep of [lo, hi] in each type.
template <class Lo, class Hi>
auto Line(Lo lo, Hi hi)
{
    return [=](auto t, int) {
        using T = decltype(t);
        std::vector<T> in = Inputs<T>(-3, 3, 40, 40), line = Inputs<T>(T(lo), T(hi), 100000, 100000);
        for (size_t i = 0; i < in.size(); i += 7) in[i] = T(i % 2 ? 800 : -800);
        in.insert(in.end(), line.begin(), line.end());
        return in;
    };
}

class KernelsMath : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsMath);

TEST_P(KernelsMath, AccurateOverTheWholeLineAtEveryLengthWarningOnlyOfDomainFaults)
{
    const sweep::ByType big(FLT_MAX, DBL_MAX), low(-FLT_MAX, -DBL_MAX), least(FLT_MIN, DBL_MIN);
    const auto ulp = [](double u) { return sweep::Opt{.status = sweep::kAnyWarning, .ulp = u}; };
    ORB_ROWS(ippsAbs_32f, ippsAbs_64f).From(Line(low, big)).Check([](long double x) { return fabsl(x); }, ulp(0));
    ORB_ROWS(ippsSqr_32f, ippsSqr_64f).From(Line(low, big)).Check([](long double x) { return x * x; }, ulp(0.501));
    ORB_ROWS(ippsSqrt_32f, ippsSqrt_64f).From(Line(low, big))
        .Check([](long double x) { return x < 0 ? NAN : sqrtl(x); }, ulp(0.501));
    ORB_ROWS(ippsExp_32f, ippsExp_64f).From(Line(sweep::ByType(-104.0f, -746.0), sweep::ByType(89.0f, 710.0)))
        .Check([](long double x) { return expl(x); }, ulp(2));
    // Zeros and subnormals have no logarithm here: -inf, as documented.
    ORB_ROWS(ippsLn_32f, ippsLn_64f).From(Line(least, big)).Check([](auto x) {
        return x < 0 ? NAN : x < Lim<decltype(x)>::min() ? -INFINITY : logl(x);
    }, ulp(2));
    ORB_ROWS(ippsArctan_32f, ippsArctan_64f).From(Line(1e-30, big)).Check([](long double x) { return atanl(x); },
                                                                           ulp(3));
    ORB_ROWS(ippsNormalize_64f).With(0.25, -3.0).From(Line(-DBL_MAX, DBL_MAX))
        .Check([](long double x, double sub, double div) { return (x - sub) / div; }, ulp(1));
    // Against long double, with the special cases of the principal root among
    // the inputs (their signed zeros and infinities must match).
    using C = std::complex<long double>;
    std::mt19937_64 rng(11);
    std::uniform_real_distribution<double> mant(-1, 1);
    std::uniform_int_distribution<int> expo(-1074, 1023);
    const double tiny = 5e-324, inf = INFINITY, nan = NAN;
    std::vector<Ipp64fc> in = {{-4, 0},    {-4, -0.0},  {4, -0.0}, {0, 0},         {-0.0, -0.0},      {-1, -1},
                               {nan, inf}, {3, -inf},   {-inf, 1}, {inf, -1},      {inf, nan},        {-tiny, 0},
                               {tiny, tiny}, {-DBL_MAX, tiny}, {tiny, -DBL_MAX}, {DBL_MAX, DBL_MAX}};
    for (int i = 0; i < 100000; ++i) in.push_back({ldexp(mant(rng), expo(rng)), ldexp(mant(rng), expo(rng))});
    ORB_ROWS(ippsSqrt_64fc).From(in).Check([](Ipp64fc z) { return std::sqrt(C(z.re, z.im)); }, {.ulp = 3});
    ORB_ROWS(ippsSqr_64fc).From(in).Check([](Ipp64fc z, Ipp64fc got) {
        return !isfinite(z.re) || !isfinite(z.im) || sweep::Ulps(got, C(z.re, z.im) * C(z.re, z.im)) <= 2;
    });
    // The last, short vector is padded; the padding never counts as a domain
    // fault, so valid inputs give a clean status at every length.
    const auto twos = [](auto t, int) { return std::vector<decltype(t)>{2}; };
    const auto any = [](auto...) { return true; };
    ORB_ROWS(ippsAbs_32f, ippsAbs_64f, ippsSqr_32f, ippsSqr_64f, ippsSqrt_32f, ippsSqrt_64f, ippsExp_32f, ippsExp_64f,
             ippsLn_32f, ippsLn_64f, ippsArctan_32f, ippsArctan_64f).From(twos).Check(any);
    ORB_ROWS(ippsNormalize_64f).With(0.25, -3.0).From(twos).Check(any);
    // Normalize: a zero or too small divisor, after the pointers and length.
    for (double div : {0.0, -0.0, DBL_MIN / 2}) ORB_ROWS(ippsNormalize_64f).With(0.0, div).Refused(ippStsDivByZeroErr);
    double x[2] = {1, 2}, y[2];
    EXPECT_EQ(ippStsNoErr, ippsNormalize_64f(x, y, 2, 1, -DBL_MIN));
    EXPECT_EQ(y[1], -1 / DBL_MIN);
    // Warnings only; the values written are checked for accuracy above.
    const double w[5] = {4, -1, 0, 9, -0.0};
    const float sub = FLT_MIN / 4, large = 200;
    double out[5];
    float fo;
    EXPECT_EQ(ippStsSqrtNegArg, ippsSqrt_64f(w, out, 5));
    EXPECT_EQ(ippStsNoErr, ippsSqrt_64f(w + 2, out, 3));  // -0 is not negative
    EXPECT_EQ(ippStsLnZeroArg, ippsLn_64f(w + 2, out, 3));
    EXPECT_EQ(ippStsLnNegArg, ippsLn_64f(w, out, 5));  // negative outranks zero
    EXPECT_EQ(ippStsLnZeroArg, ippsLn_32f(&sub, &fo, 1));
    EXPECT_EQ(ippStsNoErr, ippsExp_32f(&large, &fo, 1));  // overflow is no fault
    EXPECT_EQ(ippStsNoErr, ippsArctan_64f(w, out, 5));
}

}  // namespace
