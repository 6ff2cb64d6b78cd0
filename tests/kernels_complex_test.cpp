// Complex-form kernels on every compiled Highway target: moves and
// conjugates bit for bit; magnitudes, phases and polar conversions against
// long double, at huge, tiny, zero, infinite and NaN parts.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <float.h>
#include <math.h>

#include <cmath>
#include <utility>
#include <vector>

#include "ipps.h"
#include "kernels_sweep.h"

namespace {

using sweep::Is;
using sweep::Same;
using sweep::SameAs;
using sweep::Ulps;

class KernelsComplex : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsComplex);

constexpr int kLen = sweep::MaxLen<double>();  // complex values are split into vectors of doubles

TEST_P(KernelsComplex, MovesAndConjugates)
{
    const size_t span = sweep::Span(kLen);
    const std::vector<Ipp64fc> z = sweep::RandomComplex(span, 1);
    const std::vector<double> re = sweep::Random<double>(span, 2), im = sweep::Random<double>(span, 3);
    using C = Ipp64fc;
    sweep::Run<C>(kLen, ippStsNoErr, [&](int n, C *o, C *) { return ippsConj_64fc(z.data(), o, n); },
                  [&](size_t i, C got, C) { return SameAs(got, C{z[i].re, -z[i].im}); });
    int len = 0;  // ConjFlip reads back from the end of the length it is given
    sweep::Run<C>(kLen, ippStsNoErr, [&](int n, C *o, C *) { return ippsConjFlip_64fc(z.data(), o, len = n); },
                  [&](size_t i, C got, C) { return SameAs(got, C{z[len - 1 - i].re, -z[len - 1 - i].im}); });
    sweep::Run<double>(
        kLen, ippStsNoErr, [&](int n, double *r, double *m) { return ippsCplxToReal_64fc(z.data(), r, m, n); },
        [&](size_t i, double r, double m) { return Is(Same(r, z[i].re) && Same(m, z[i].im), C{r, m}, z[i]); });
    for (auto [fn, part] : {std::pair{&ippsReal_64fc, &C::re}, {&ippsImag_64fc, &C::im}})
        sweep::Run<double>(kLen, ippStsNoErr, [&](int n, double *o, double *) { return fn(z.data(), o, n); },
                           [&](size_t i, double got, double) { return SameAs(got, z[i].*part); });
    for (int absent = 0; absent < 3; ++absent) {  // an absent part reads as zeros
        const double *pr = absent == 1 ? nullptr : re.data(), *pi = absent == 2 ? nullptr : im.data();
        sweep::Run<C>(kLen, ippStsNoErr, [&](int n, C *o, C *) { return ippsRealToCplx_64f(pr, pi, o, n); },
                      [&](size_t i, C got, C) { return SameAs(got, C{pr ? re[i] : 0.0, pi ? im[i] : 0.0}); });
    }
    for (int n : {1, 2, 7, 16, 17}) {  // in place, odd and even lengths
        std::vector<C> x(z.begin(), z.begin() + n);
        ippsConjFlip_64fc(x.data(), x.data(), n);
        ippsConj_64fc(x.data(), x.data(), n);
        for (int i = 0; i < n; ++i) ASSERT_TRUE(SameAs(x[i], z[n - 1 - i])) << n;
    }
}

// Every pair of parts from huge, tiny, zero, infinite and NaN values.
template <typename T>
void SpecialPairs(std::vector<T> &re, std::vector<T> &im)
{
    using L = std::numeric_limits<T>;
    const T v[] = {0, -0.0, L::denorm_min(), L::min(), T(3 * L::min()), T(1e-20), -1, 3, T(4.5e15), T(L::max() / 3),
                   -L::max(), L::infinity(), -L::infinity(), L::quiet_NaN()};
    for (T a : v)
        for (T b : v) re.push_back(a), im.push_back(b);
}

template <typename T>
using SplitFn = IppStatus (*)(const T *, const T *, T *, int);

// The phase in (-pi, pi]: atan2, but +pi where it would be -pi (a zero
// imaginary part of either sign and a real part with its sign bit set).
long double Phase(long double re, long double im)
{
    return im == 0 && signbit(re) && !isnan(re) ? M_PIl : atan2l(im, re);
}

// Magnitude within 1 ulp of hypot, phase within 2 ulps (zeros with their
// signs), power spectrum with or without a fused add.
template <typename T>
void CheckSplitForms(SplitFn<T> magn, SplitFn<T> phase, SplitFn<T> power)
{
    std::vector<T> re = sweep::Random<T>(sweep::Span(sweep::MaxLen<T>()), 4), im = sweep::Random<T>(re.size(), 5);
    SpecialPairs(re, im);
    auto check = [&](auto fn, auto ok) {
        sweep::Run<T>(sweep::MaxLen<T>(), ippStsNoErr, [&](int n, T *o, T *) { return fn(re.data(), im.data(), o, n); },
                      [&](size_t i, T got, T) { return ok(i, got); });
        std::vector<T> all(re.size());
        fn(re.data(), im.data(), all.data(), int(all.size()));
        for (size_t i = 0; i < all.size(); ++i) ASSERT_TRUE(ok(i, all[i])) << re[i] << " + " << im[i] << "i";
    };
    check(magn, [&](size_t i, T got) {
        const long double h = hypotl(re[i], im[i]);
        return Is(Ulps(got, h) <= 1, got, T(h));
    });
    check(phase, [&](size_t i, T got) {
        const long double a = Phase(re[i], im[i]);
        return Is(Ulps(got, a) <= 2, got, T(a));
    });
    check(power, [&](size_t i, T got) {
        const T fused = std::fma(re[i], re[i], T(im[i] * im[i]));
        return Is(Same(got, fused) || Same(got, T(T(re[i] * re[i]) + T(im[i] * im[i]))), got, fused);
    });
}

TEST_P(KernelsComplex, MagnitudePhaseAndPower)
{
    CheckSplitForms<float>(ippsMagnitude_32f, ippsPhase_32f, ippsPowerSpectr_32f);
    CheckSplitForms<double>(ippsMagnitude_64f, ippsPhase_64f, ippsPowerSpectr_64f);

    // The interleaved and two-output forms give the same values.
    std::vector<double> re = sweep::Random<double>(sweep::Span(kLen), 6), im = sweep::Random<double>(re.size(), 7);
    SpecialPairs(re, im);
    const int n = int(re.size());
    std::vector<Ipp64fc> z(n);
    std::vector<double> m(n), p(n), w(n), a(n), b(n);
    ippsRealToCplx_64f(re.data(), im.data(), z.data(), n);
    ippsMagnitude_64f(re.data(), im.data(), m.data(), n);
    ippsPhase_64f(re.data(), im.data(), p.data(), n);
    ippsPowerSpectr_64f(re.data(), im.data(), w.data(), n);
    using Fn = IppStatus (*)(const Ipp64fc *, double *, int);
    for (auto [fn, want] : {std::pair<Fn, double *>{ippsMagnitude_64fc, m.data()}, {ippsPhase_64fc, p.data()},
                            {ippsPowerSpectr_64fc, w.data()}})
        sweep::Run<double>(kLen, ippStsNoErr, [&](int k, double *o, double *) { return fn(z.data(), o, k); },
                           [&](size_t i, double got, double) { return SameAs(got, want[i]); });
    sweep::Run<double>(
        kLen, ippStsNoErr, [&](int k, double *x, double *y) { return ippsCartToPolar_64fc(z.data(), x, y, k); },
        [&](size_t i, double x, double y) {
            return Is(Same(x, m[i]) && Same(y, p[i]), Ipp64fc{x, y}, Ipp64fc{m[i], p[i]});
        });
    ippsCartToPolar_64f(re.data(), im.data(), a.data(), b.data(), n);
    for (int i = 0; i < n; ++i) ASSERT_TRUE(Same(a[i], m[i]) && Same(b[i], p[i])) << re[i] << " + " << im[i] << "i";
}

TEST_P(KernelsComplex, PolarToCartesian)
{
    // Finite magnitudes; phases random, special, exact multiples of pi and
    // beyond the range of the vector sine.
    std::vector<double> m = sweep::Random<double>(sweep::Span(kLen), 8), t = sweep::Random<double>(m.size(), 9);
    for (double &x : m) x = std::isfinite(x) ? x : 2.5;
    const double far[] = {0, -0.0, M_PI, -M_PI / 2, 39000.5, -1e6, 1e22};
    for (size_t i = 0; i < 7; ++i) t[2 * i + 1] = far[i];
    // Within a few eps of the magnitude, NaN where cos or sin is.
    auto near = [&](size_t i, double re, double im) {
        const long double wre = m[i] * cosl(t[i]), wim = m[i] * sinl(t[i]);
        const long double tol = 4 * DBL_EPSILON * fabsl(m[i]) + DBL_TRUE_MIN;
        const bool ok = isnan(wre) ? isnan(re) && isnan(im) : fabsl(re - wre) <= tol && fabsl(im - wim) <= tol;
        return Is(ok, Ipp64fc{re, im}, Ipp64fc{double(wre), double(wim)});
    };
    sweep::Run<Ipp64fc>(
        kLen, ippStsNoErr, [&](int k, Ipp64fc *o, Ipp64fc *) { return ippsPolarToCart_64fc(m.data(), t.data(), o, k); },
        [&](size_t i, Ipp64fc z, Ipp64fc) { return near(i, z.re, z.im); });
    sweep::Run<double>(
        kLen, ippStsNoErr,
        [&](int k, double *x, double *y) { return ippsPolarToCart_64f(m.data(), t.data(), x, y, k); },
        [&](size_t i, double x, double y) { return near(i, x, y); });
}

// Where the range ends: the negative real axis, from either side of its
// zero, and the four signed zeros, in every phase-producing form; among
// values of the main loop and in the partial vector at the end.
template <typename T>
void CheckPhaseEdges(IppStatus (*phase)(const T *, const T *, T *, int))
{
    const T pi = T(M_PIl), inf = std::numeric_limits<T>::infinity();
    const T in[][3] = {{-1, -0.0, pi},  {-1, 0, pi},      {T(-1e-30), -0.0, pi}, {-inf, -0.0, pi}, {-0.0, -0.0, pi},
                       {-0.0, 0, pi},   {0, -0.0, -0.0},  {0, 0, 0},             {1, -0.0, -0.0},  {5, 0, 0},
                       {-1, T(-1e-30), -pi}};
    std::vector<T> re, im, want;
    for (int rep = 0; rep < 4; ++rep)
        for (const auto &v : in) re.push_back(v[0]), im.push_back(v[1]), want.push_back(v[2]);
    const int n = int(re.size()) - 1;
    std::vector<T> got(n);
    ASSERT_EQ(phase(re.data(), im.data(), got.data(), n), ippStsNoErr);
    for (int i = 0; i < n; ++i)
        ASSERT_TRUE(sweep::SameAs(got[i], want[i])) << sizeof(T) * 8 << "-bit phase of " << re[i] << " + " << im[i] << "i";
}

// The interleaved and two-output forms, on parts given as two arrays.
IppStatus CartToPolarPhase(const double *re, const double *im, double *phase, int n)
{
    std::vector<double> m(n);
    return ippsCartToPolar_64f(re, im, m.data(), phase, n);
}
template <bool kPolar>
IppStatus InterleavedPhase(const double *re, const double *im, double *phase, int n)
{
    std::vector<Ipp64fc> z(n);
    std::vector<double> m(n);
    ippsRealToCplx_64f(re, im, z.data(), n);
    return kPolar ? ippsCartToPolar_64fc(z.data(), m.data(), phase, n) : ippsPhase_64fc(z.data(), phase, n);
}

TEST_P(KernelsComplex, PhaseIsInMinusPiToPi)
{
    CheckPhaseEdges<float>(ippsPhase_32f);
    CheckPhaseEdges<double>(ippsPhase_64f);
    CheckPhaseEdges<double>(CartToPolarPhase);
    CheckPhaseEdges<double>(InterleavedPhase<false>);
    CheckPhaseEdges<double>(InterleavedPhase<true>);
}

TEST(KernelsComplexStatus, NullPointersThenLengths)
{
    ORB_EXPECT_STATUSES(ippsConj_64fc, ippsConjFlip_64fc, ippsReal_64fc, ippsImag_64fc, ippsCplxToReal_64fc,
                        ippsMagnitude_64fc, ippsMagnitude_32f, ippsMagnitude_64f, ippsPhase_64fc, ippsPhase_32f,
                        ippsPhase_64f, ippsPowerSpectr_64fc, ippsPowerSpectr_32f, ippsPowerSpectr_64f,
                        ippsCartToPolar_64fc, ippsCartToPolar_64f, ippsPolarToCart_64fc, ippsPolarToCart_64f);
    // RealToCplx needs a destination and at least one source.
    double r[2] = {1, 2};
    Ipp64fc z[2];
    EXPECT_EQ(ippsRealToCplx_64f(nullptr, nullptr, z, 2), ippStsNullPtrErr);
    EXPECT_EQ(ippsRealToCplx_64f(r, r, nullptr, 2), ippStsNullPtrErr);
    EXPECT_EQ(ippsRealToCplx_64f(nullptr, r, z, 0), ippStsSizeErr);
}

}  // namespace
