// Complex-form kernels: moves and conjugates bit for bit; magnitudes, phases
// and polar forms against long double at special parts; and the sine and
// cosine of trig-inl.h behind PolarToCart, compiled here for every target.
#include "dispatch.h"  // first: the kernels' target set

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "kernels_complex_test.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "trig-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_complex_test::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// s[i], c[i] = sin, cos of x[i]; count is a multiple of the widest vector.
template <typename T>
void SinCosArray(const T *x, T *s, T *c, size_t count)
{
    const hn::ScalableTag<T> d;
    hn::Vec<decltype(d)> vs, vc;
    for (size_t i = 0; i < count; i += hn::Lanes(d)) {
        orb_kernels::HWY_NAMESPACE::SinCos(d, hn::LoadU(d, x + i), vs, vc);
        hn::StoreU(vs, d, s + i);
        hn::StoreU(vc, d, c + i);
    }
}
void SinCosF32(const float *x, float *s, float *c, size_t n) { SinCosArray(x, s, c, n); }
void SinCosF64(const double *x, double *s, double *c, size_t n) { SinCosArray(x, s, c, n); }

}  // namespace orb_complex_test::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "kernels_sweep.h"

namespace orb_complex_test {
HWY_EXPORT(SinCosF32);
HWY_EXPORT(SinCosF64);

namespace {

using C = Ipp64fc;
using sweep::Lim;
using sweep::Same;

class KernelsComplex : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsComplex);

// ConjFlip read back in order; RealToCplx with both parts (one alone is no
// null pointer error) and with either part absent (then one needs the other).
IppStatus Flipped(const C *src, C *dst, int len)
{
    const IppStatus st = ippsConjFlip_64fc(src, dst, len);
    return st ? st : (std::reverse(dst, dst + len), st);
}
IppStatus Both(const double *re, const double *im, C *dst, int len)
{
    return re && im ? ippsRealToCplx_64f(re, im, dst, len) : ippStsNullPtrErr;
}
IppStatus RealOnly(const double *re, C *dst, int len) { return ippsRealToCplx_64f(re, nullptr, dst, len); }
IppStatus ImagOnly(const double *im, C *dst, int len) { return ippsRealToCplx_64f(nullptr, im, dst, len); }

TEST_P(KernelsComplex, MovesAndConjugates)
{
    ORB_ROWS(ippsConj_64fc, Flipped).Check([](C z) { return C{z.re, -z.im}; });
    ORB_ROWS(ippsReal_64fc).Check([](C z) { return z.re; });
    ORB_ROWS(ippsImag_64fc).Check([](C z) { return z.im; });
    ORB_ROWS(ippsCplxToReal_64fc).Check([](C z) { return std::pair{z.re, z.im}; });
    ORB_ROWS(Both).Check([](double re, double im) { return C{re, im}; });
    ORB_ROWS(RealOnly).Check([](double re) { return C{re, 0}; });
    ORB_ROWS(ImagOnly).Check([](double im) { return C{0, im}; });
}

// The real (0) or imaginary (1) parts of every pair from huge, tiny, zero,
// infinite and NaN values, then of random values.
template <typename T>
std::vector<T> Components(int which)
{
    using L = Lim<T>;
    const T v[] = {0,  -0.0, L::denorm_min(), L::min(), T(3 * L::min()), T(1e-20), T(-1e-20), -1, 3, T(4.5e15),
                   T(L::max() / 3), -L::max(), L::infinity(), -L::infinity(), L::quiet_NaN()};
    std::vector<T> out;
    for (T a : v)
        for (T b : v) out.push_back(which ? b : a);
    for (T x : sweep::Random<T>(200, which + 4)) out.push_back(x);
    return out;
}
const auto components = [](auto t, int k) { return Components<decltype(t)>(k); };
const auto pairs = [](C, int) {
    const std::vector<double> re = Components<double>(0), im = Components<double>(1);
    std::vector<C> z(re.size());
    for (size_t i = 0; i < z.size(); ++i) z[i] = {re[i], im[i]};
    return z;
};

// The phase in (-pi, pi]: atan2, but +pi where it would be -pi (a zero
// imaginary part of either sign and a real part with its sign bit set).
long double Phase(long double re, long double im)
{
    return im == 0 && signbit(re) && !isnan(re) ? M_PIl : atan2l(im, re);
}

// Magnitude within 1 ulp of hypot, phase within 2 ulps (zeros with their
// signs, so that the range ends at +pi), power spectrum with or without a
// fused add; the interleaved and two-output forms the same values.
TEST_P(KernelsComplex, MagnitudePhasePowerAndPolarForms)
{
    const auto split = [](auto fn, C z) { double r; return fn(&z.re, &z.im, &r, 1), r; };  // the two-array form
    ORB_ROWS(ippsMagnitude_32f, ippsMagnitude_64f).From(components).Check(hypotl, {.ulp = 1});
    ORB_ROWS(ippsPhase_32f, ippsPhase_64f).From(components).Check(Phase, {.ulp = 2});
    ORB_ROWS(ippsPowerSpectr_32f, ippsPowerSpectr_64f).From(components).Check([](auto re, auto im, auto got) {
        using T = decltype(re);
        return Same(got, std::fma(re, re, T(im * im))) || Same(got, T(T(re * re) + T(im * im)));
    });
    ORB_ROWS(ippsMagnitude_64fc).From(pairs).Check([=](C z) { return split(ippsMagnitude_64f, z); });
    ORB_ROWS(ippsPhase_64fc).From(pairs).Check([=](C z) { return split(ippsPhase_64f, z); });
    ORB_ROWS(ippsPowerSpectr_64fc).From(pairs).Check([=](C z) { return split(ippsPowerSpectr_64f, z); });
    ORB_ROWS(ippsCartToPolar_64fc).From(pairs).Check([=](C z) {
        return std::pair{split(ippsMagnitude_64f, z), split(ippsPhase_64f, z)};
    });
    ORB_ROWS(ippsCartToPolar_64f).From(components).Check([=](double re, double im) {
        return std::pair{split(ippsMagnitude_64f, C{re, im}), split(ippsPhase_64f, C{re, im})};
    });
    // Finite magnitudes; phases random, special, exact multiples of pi and
    // beyond the range of the vector sine.
    std::vector<double> m = sweep::Random<double>(sweep::Span(17), 8), t = sweep::Random<double>(m.size(), 9);
    for (double &x : m) x = std::isfinite(x) ? x : 2.5;
    const double far[] = {0, -0.0, M_PI, -M_PI / 2, 39000.5, -1e6, 1e22};
    for (size_t i = 0; i < 7; ++i) t[2 * i + 1] = far[i];
    // Within a few eps of the magnitude, NaN where cos or sin is.
    const auto near = [](double m, double t, double re, double im) {
        const long double wre = m * cosl(t), wim = m * sinl(t), tol = 4 * DBL_EPSILON * fabsl(m) + DBL_TRUE_MIN;
        return isnan(wre) ? isnan(re) && isnan(im) : fabsl(re - wre) <= tol && fabsl(im - wim) <= tol;
    };
    ORB_ROWS(ippsPolarToCart_64fc).From(m, t).Check([=](double m, double t, C z) { return near(m, t, z.re, z.im); });
    ORB_ROWS(ippsPolarToCart_64f).From(m, t).Check(near);
    // Exact at phase +-0, the zero's sign reaching the imaginary part, and
    // correctly rounded near the axes.
    const std::vector<double> m4 = {2, 2, 3, 0.5}, t4 = {0, -0.0, M_PI_2, -M_PI};
    ORB_ROWS(ippsPolarToCart_64fc).From(m4, t4).Check([](double m, double t) { return C{m * cos(t), m * sin(t)}; });
    ORB_ROWS(ippsPolarToCart_64f).From(m4, t4).Check([](double m, double t) {
        return std::pair{m * cos(t), m * sin(t)};
    });
}

using orb_kernels::HWY_NAMESPACE::kTrigReduceLimit;  // the same on every target

// First kSpecials: signed zeros, tiny arguments (where sin x = x and cos x =
// 1 are correctly rounded), infinities and NaN. Then those nearest a multiple
// of pi/2 within the limit (r down to 2^-60.5 for doubles, 2^-27.8 for
// floats), the limit, lanes past it among reduced ones, sweeps (two periods,
// log-spaced to the limit, uniform within it) and random bit patterns (mostly
// tiny or past the limit); a multiple of the widest vector long.
constexpr size_t kSpecials = 10;
template <typename T>
std::vector<T> Arguments()
{
    const double lim = kTrigReduceLimit;
    const T tiny = Lim<T>::denorm_min(), small = T(sizeof(T) == 8 ? 0x1p-27 : 0x1p-13f), inf = Lim<T>::infinity();
    std::vector<T> v = {T(0), T(-0.0), tiny, -tiny, Lim<T>::min(), small, -small, inf, -inf, Lim<T>::quiet_NaN()};
    v.reserve(500200);
    if constexpr (sizeof(T) == 8)
        v.insert(v.end(), {0x1.6c6cbc45dc8dep+5, 0x1.6c6cbc45dc8dep+11, 0x1.39c6fd67805a7p+18, lim, -lim + 0x1p-30});
    else
        v.insert(v.end(), {0x1.f9cbe2p+7f, 0x1.2d97c8p+2f, 0x1.9a48dep+15f, 0x1.4ac55cp+21f, nextafterf(lim, 0)});
    for (double far : {nextafter(lim, HUGE_VAL), -1e7, 1e22, -0x1.6c6cbc45dc8dep+797, DBL_MAX})
        v.insert(v.end(), {T(0.5), T(fmin(far, Lim<T>::max())), T(-2), T(3e6)});
    std::mt19937_64 rng(5);
    std::uniform_real_distribution<double> in_range(-lim, lim);
    for (int i = 0; i <= 100000; ++i) {
        const T g = T(1e-30 * pow(lim / 1e-30, i / 1e5));
        v.insert(v.end(), {T(-7 + 14 * (i / 1e5)), g, -g, T(in_range(rng)), T()});
        const uint64_t bits = rng();
        memcpy(&v.back(), &bits, sizeof(T));
    }
    v.resize((v.size() + 15) / 16 * 16);
    return v;
}

// Within the bound against long double; past the limit, the C library's
// double results (rounded, for floats) exactly; sin odd and cos even bit for
// bit.
TEST_P(KernelsComplex, SineAndCosineWithinAnUlpOddEvenAndFarLanesFromTheCLibrary)
{
    const auto check = [](auto zero) {
        using T = decltype(zero);
        const std::vector<T> x = Arguments<T>();
        std::vector<T> neg, s(x.size()), c(x.size()), ns(x.size()), nc(x.size());
        for (T v : x) neg.push_back(-v);
        for (auto [a, sa, ca] : {std::tuple(x.data(), s.data(), c.data()), {neg.data(), ns.data(), nc.data()}}) {
            if constexpr (sizeof(T) == 4) HWY_DYNAMIC_DISPATCH(SinCosF32)(a, sa, ca, x.size());
            else HWY_DYNAMIC_DISPATCH(SinCosF64)(a, sa, ca, x.size());
        }
        for (size_t i = 0; i < x.size(); ++i) {
            const auto where = [&] { return sweep::Str(x[i]) + ": " + sweep::Str(s[i]) + ", " + sweep::Str(c[i]); };
            const bool special = isfinite(x[i]) ? Same(s[i], x[i]) && c[i] == 1 : isnan(s[i]) && isnan(c[i]);
            ASSERT_TRUE(i >= kSpecials || special) << where();
            const double e = fmax(sweep::Ulps(s[i], sinl(x[i])), sweep::Ulps(c[i], cosl(x[i]))), xd = x[i];
            ASSERT_LE(e, sizeof(T) == 8 ? 0.85 : 0.501) << where();
            const bool far = isfinite(xd) && fabs(xd) > kTrigReduceLimit;
            ASSERT_TRUE(!far || (Same(s[i], T(sin(xd))) && Same(c[i], T(cos(xd))))) << where();
            ASSERT_TRUE(Same(ns[i], T(-s[i])) && Same(nc[i], c[i])) << where();
        }
    };
    check(0.0f);
    check(0.0);
}

}  // namespace
}  // namespace orb_complex_test
#endif  // HWY_ONCE
