// Unary math kernels through their public entry points, on every compiled
// Highway target.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <float.h>
#include <math.h>
#include <string.h>

#include <complex>
#include <limits>
#include <random>
#include <vector>

#include "ipps.h"
#include "kernels_sweep.h"

namespace {

template <typename T>
using Unary = IppStatus (*)(const T *, T *, int);
template <typename T>
using Lim = std::numeric_limits<T>;

IppStatus Normalize(const double *s, double *d, int n) { return ippsNormalize_64f(s, d, n, 0.25, -3.0); }

// A real function: its exact value, the error allowed and the interval of
// its accuracy sweep (log-spaced, both signs, when lo > 0).
template <typename T>
struct Fn {
    const char *name;
    Unary<T> fn;
    long double (*exact)(long double);
    double max_ulp, lo, hi;
};

template <typename T>
Unary<T> Pick(Unary<float> f32, Unary<double> f64)
{
    if constexpr (sizeof(T) == 4) return f32; else return f64;
}

template <typename T>
std::vector<Fn<T>> Functions()
{
    constexpr bool f = sizeof(T) == 4;
    const double big = Lim<T>::max();
    std::vector<Fn<T>> fns = {
        {"Abs", Pick<T>(ippsAbs_32f, ippsAbs_64f), [](long double x) { return fabsl(x); }, 0, -big, big},
        {"Sqr", Pick<T>(ippsSqr_32f, ippsSqr_64f), [](long double x) { return x * x; }, 0.501, -big, big},
        {"Sqrt", Pick<T>(ippsSqrt_32f, ippsSqrt_64f), [](long double x) { return x < 0 ? NAN : sqrtl(x); }, 0.501,
         -big, big},
        {"Exp", Pick<T>(ippsExp_32f, ippsExp_64f), [](long double x) { return expl(x); }, 2, f ? -104 : -746,
         f ? 89 : 710},
        // Zeros and subnormals have no logarithm here: -inf, as documented.
        {"Ln", Pick<T>(ippsLn_32f, ippsLn_64f),
         [](long double x) { return x < 0 ? NAN : x < Lim<T>::min() ? -INFINITY : logl(x); }, 2, Lim<T>::min(), big},
        {"Arctan", Pick<T>(ippsArctan_32f, ippsArctan_64f), [](long double x) { return atanl(x); }, 3, 1e-30, big},
    };
    if constexpr (!f)
        fns.push_back({"Normalize", Normalize, [](long double x) { return (x - 0.25L) / -3.0L; }, 1, -big, big});
    return fns;
}

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
        else v.push_back(T(lo + u * (hi - lo)));
    }
    std::mt19937_64 rng(7);
    for (size_t i = 0; i < random; ++i) {
        const uint64_t bits = rng();
        v.emplace_back();
        memcpy(&v.back(), &bits, sizeof(T));
    }
    return v;
}

class KernelsMath : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsMath);

template <typename T>
void CheckAccuracy()
{
    for (const Fn<T> &f : Functions<T>()) {
        const std::vector<T> in = Inputs<T>(f.lo, f.hi, 100000, 100000);
        std::vector<T> out(in.size());
        f.fn(in.data(), out.data(), int(in.size()));
        double worst = 0;
        size_t at = 0;
        for (size_t i = 0; i < in.size(); ++i) {
            const double e = sweep::Ulps(out[i], f.exact(in[i]));
            if (e > worst) worst = e, at = i;
        }
        EXPECT_LE(worst, f.max_ulp) << f.name << sizeof(T) * 8 << "(" << in[at] << ") gave " << out[at];
    }
}

TEST_P(KernelsMath, AccurateOverTheWholeLine)
{
    CheckAccuracy<float>();
    CheckAccuracy<double>();
}

// Every length, cached and streamed, at three alignments, and in place:
// each element must come out as it does within one long array.
template <typename T>
void CheckLengths(const char *name, Unary<T> fn, const std::vector<T> &values)
{
    SCOPED_TRACE(name);
    std::vector<T> in = values;
    while (in.size() < sweep::Span(sweep::MaxLen<T>())) in.insert(in.end(), values.begin(), values.end());
    std::vector<T> whole(in.size()), same = in;
    ASSERT_GE(fn(in.data(), whole.data(), int(in.size())), 0);
    ASSERT_GE(fn(same.data(), same.data(), int(in.size())), 0);
    for (size_t i = 0; i < in.size(); ++i) ASSERT_TRUE(sweep::SameAs(same[i], whole[i])) << "in place, at " << i;
    sweep::Run<T>(sweep::MaxLen<T>(), ippStsNoErr,
                  [&](int len, T *o, T *) { return std::min(fn(in.data(), o, len), IppStatus(ippStsNoErr)); },
                  [&](size_t i, T got, T) { return sweep::SameAs(got, whole[i]); });
}

TEST_P(KernelsMath, EveryLengthAgreesWithLongArrays)
{
    const auto all = [](auto zero) {
        using T = decltype(zero);
        std::vector<T> in = Inputs<T>(-3, 3, 40, 40);  // specials first, so tails see them
        for (size_t i = 0; i < in.size(); i += 7) in[i] = T(i % 2 ? 800 : -800);  // exp's slow path
        for (const Fn<T> &f : Functions<T>()) CheckLengths(f.name, f.fn, in);
    };
    all(0.0f);
    all(0.0);
    const std::vector<double> flat = Inputs<double>(-1e6, 1e6, 0, 100);
    std::vector<Ipp64fc> c(flat.size() / 2);
    memcpy(c.data(), flat.data(), c.size() * sizeof(Ipp64fc));
    CheckLengths("Sqr_64fc", ippsSqr_64fc, c);
    CheckLengths("Sqrt_64fc", ippsSqrt_64fc, c);
}

// Against long double, with the special cases of the principal root among
// the inputs (their signed zeros and infinities must match).
TEST_P(KernelsMath, ComplexSquareAndRoot)
{
    using C = std::complex<long double>;
    std::mt19937_64 rng(11);
    std::uniform_real_distribution<double> mant(-1, 1);
    std::uniform_int_distribution<int> expo(-1074, 1023);
    const double tiny = 5e-324, inf = INFINITY, nan = NAN;
    std::vector<Ipp64fc> in = {{-4, 0},    {-4, -0.0},  {4, -0.0}, {0, 0},         {-0.0, -0.0},      {-1, -1},
                               {nan, inf}, {3, -inf},   {-inf, 1}, {inf, -1},      {inf, nan},        {-tiny, 0},
                               {tiny, tiny}, {-DBL_MAX, tiny}, {tiny, -DBL_MAX}, {DBL_MAX, DBL_MAX}};
    for (int i = 0; i < 100000; ++i) in.push_back({ldexp(mant(rng), expo(rng)), ldexp(mant(rng), expo(rng))});
    std::vector<Ipp64fc> sq(in.size()), rt(in.size());
    ippsSqr_64fc(in.data(), sq.data(), int(in.size()));
    ippsSqrt_64fc(in.data(), rt.data(), int(in.size()));
    for (size_t i = 0; i < in.size(); ++i) {
        const C z(in[i].re, in[i].im), s = z * z, r = std::sqrt(z);
        EXPECT_LE(fmax(sweep::Ulps(rt[i].re, r.real()), sweep::Ulps(rt[i].im, r.imag())), 3.0)
            << "sqrt" << sweep::Str(in[i]) << " = " << sweep::Str(rt[i]);
        const bool finite = isfinite(in[i].re) && isfinite(in[i].im);
        EXPECT_LE(finite ? fmax(sweep::Ulps(sq[i].re, s.real()), sweep::Ulps(sq[i].im, s.imag())) : 0, 2.0)
            << "sqr" << sweep::Str(in[i]) << " = " << sweep::Str(sq[i]);
    }
}

TEST_P(KernelsMath, ArgumentErrorsComeBeforeWorkAndDomainFaultsWarn)
{
    // Partial vectors are padded; the padding never counts as a domain
    // fault, so valid inputs give a clean status at every length.
    const auto all = [](auto two) {
        using T = decltype(two);
        std::vector<T> in(sweep::MaxLen<T>(), two), out(in.size());
        for (const Fn<T> &f : Functions<T>()) {
            sweep::ExpectStatuses(f.name, f.fn);
            for (int len = 1; len <= int(in.size()); ++len)
                ASSERT_EQ(f.fn(in.data(), out.data(), len), ippStsNoErr) << f.name << ", len " << len;
        }
    };
    all(2.0f);
    all(2.0);
    sweep::ExpectStatuses("Sqr_64fc", ippsSqr_64fc);
    sweep::ExpectStatuses("Sqrt_64fc", ippsSqrt_64fc);
    // Normalize: pointers, then the length, then the divisor; nothing written.
    double x[2] = {1, 2}, y[2] = {5, 5};
    EXPECT_EQ(ippStsNullPtrErr, ippsNormalize_64f(x, nullptr, 0, 0, 0));
    EXPECT_EQ(ippStsSizeErr, ippsNormalize_64f(x, y, -5, 0, 0));
    for (double div : {0.0, -0.0, DBL_MIN / 2}) EXPECT_EQ(ippStsDivByZeroErr, ippsNormalize_64f(x, y, 2, 0, div));
    EXPECT_TRUE(y[0] == 5 && y[1] == 5) << "nothing written";
    EXPECT_EQ(ippStsNoErr, ippsNormalize_64f(x, y, 2, 1, -DBL_MIN));
    EXPECT_EQ(y[1], -1 / DBL_MIN);

    // Warnings only; the values written are checked for accuracy above.
    const double in[5] = {4, -1, 0, 9, -0.0};
    const float sub = FLT_MIN / 4, big = 200;
    double out[5];
    float fo;
    EXPECT_EQ(ippStsSqrtNegArg, ippsSqrt_64f(in, out, 5));
    EXPECT_EQ(ippStsNoErr, ippsSqrt_64f(in + 2, out, 3));  // -0 is not negative
    EXPECT_EQ(ippStsLnZeroArg, ippsLn_64f(in + 2, out, 3));
    EXPECT_EQ(ippStsLnNegArg, ippsLn_64f(in, out, 5));  // negative outranks zero
    EXPECT_EQ(ippStsLnZeroArg, ippsLn_32f(&sub, &fo, 1));
    EXPECT_EQ(ippStsNoErr, ippsExp_32f(&big, &fo, 1));  // overflow is no fault
    EXPECT_EQ(ippStsNoErr, ippsArctan_64f(in, out, 5));
}

}  // namespace
