// The sine and cosine kernels of trig-inl.h, compiled here for every
// Highway target, against long double; and the exact values they give to
// PolarToCart.
#include "dispatch.h"  // first: the kernels' target set

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "kernels_trig_test.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "trig-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_trig_test::HWY_NAMESPACE {
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

}  // namespace orb_trig_test::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include <hwy/tests/hwy_gtest.h>

#include <float.h>
#include <math.h>
#include <string.h>

#include <limits>
#include <random>
#include <vector>

#include "ipps.h"
#include "kernels_sweep.h"

namespace orb_trig_test {
HWY_EXPORT(SinCosF32);
HWY_EXPORT(SinCosF64);

namespace {

using orb_kernels::HWY_NAMESPACE::kTrigReduceLimit;  // the same on every target
using sweep::Same;

template <typename T>
using Lim = std::numeric_limits<T>;
template <typename T>
constexpr double kMaxUlp = sizeof(T) == 8 ? 0.85 : 0.501;

template <typename T>
void Compute(std::vector<T> x, std::vector<T> &s, std::vector<T> &c)
{
    const size_t n = x.size();
    x.resize((n + 15) / 16 * 16);
    s.resize(x.size());
    c.resize(x.size());
    if constexpr (sizeof(T) == 4)
        HWY_DYNAMIC_DISPATCH(SinCosF32)(x.data(), s.data(), c.data(), x.size());
    else
        HWY_DYNAMIC_DISPATCH(SinCosF64)(x.data(), s.data(), c.data(), x.size());
    s.resize(n);
    c.resize(n);
}

// Sweeps: linear over two periods, log-spaced up to the limit, uniform
// within it; random bit patterns (mostly tiny or past the limit, with
// infinities and NaNs); the arguments nearest a multiple of pi/2 within the
// limit (r down to 2^-60.5 for doubles, 2^-27.8 for floats), the limit
// itself, and lanes past it among reduced ones.
template <typename T>
std::vector<T> Inputs()
{
    const double lim = kTrigReduceLimit;
    std::vector<T> v;
    if constexpr (sizeof(T) == 8)
        v = {0x1.6c6cbc45dc8dep+5, 0x1.6c6cbc45dc8dep+11, 0x1.39c6fd67805a7p+18, lim, -nextafter(lim, 0)};
    else
        v = {0x1.f9cbe2p+7f, 0x1.2d97c8p+2f, 0x1.9a48dep+15f, 0x1.4ac55cp+21f, std::nextafter(float(lim), 0.0f)};
    for (double far : {nextafter(lim, HUGE_VAL), -1e7, 1e22, -0x1.6c6cbc45dc8dep+797, DBL_MAX})
        v.insert(v.end(), {T(0.5), T(fmin(far, Lim<T>::max())), T(-2), T(3e6)});
    std::mt19937_64 rng(5);
    std::uniform_real_distribution<double> in_range(-lim, lim);
    for (int i = 0; i <= 100000; ++i) {
        const T g = T(1e-30 * pow(lim / 1e-30, i / 1e5));
        v.insert(v.end(), {T(-7 + 14 * (i / 1e5)), g, -g, T(in_range(rng))});
        const uint64_t bits = rng();
        v.emplace_back();
        memcpy(&v.back(), &bits, sizeof(T));
    }
    return v;
}

class KernelsTrig : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsTrig);

// Within the bound against long double; past the limit, the C library's
// double results (rounded, for floats) exactly.
template <typename T>
void CheckAccuracy()
{
    const std::vector<T> x = Inputs<T>();
    std::vector<T> s, c;
    Compute(x, s, c);
    double worst = 0;
    size_t at = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        const double e = fmax(sweep::Ulps(s[i], sinl(x[i])), sweep::Ulps(c[i], cosl(x[i])));
        if (e > worst) worst = e, at = i;
        const double xd = x[i];
        const bool far = isfinite(xd) && fabs(xd) > kTrigReduceLimit;
        ASSERT_TRUE(!far || (Same(s[i], T(sin(xd))) && Same(c[i], T(cos(xd))))) << sweep::Str(x[i]);
    }
    EXPECT_LE(worst, kMaxUlp<T>) << sizeof(T) * 8 << "-bit at " << sweep::Str(x[at]) << ": sin "
                                 << sweep::Str(s[at]) << ", cos " << sweep::Str(c[at]);
}

TEST_P(KernelsTrig, WithinAnUlpAndFarLanesFromTheCLibrary)
{
    CheckAccuracy<float>();
    CheckAccuracy<double>();
}

// Signed zeros, tiny arguments (where sin x = x and cos x = 1 are the
// correctly rounded results), infinities and NaN; sin odd and cos even bit
// for bit.
template <typename T>
void CheckSpecials()
{
    const T tiny = Lim<T>::denorm_min(), small = T(sizeof(T) == 8 ? 0x1p-27 : 0x1p-13f), inf = Lim<T>::infinity();
    const std::vector<T> x = {T(0), T(-0.0), tiny, -tiny, Lim<T>::min(), small, -small, inf, -inf, Lim<T>::quiet_NaN()};
    std::vector<T> s, c;
    Compute(x, s, c);
    for (size_t i = 0; i < x.size(); ++i) {
        const bool ok = isfinite(x[i]) ? Same(s[i], x[i]) && c[i] == 1 : isnan(s[i]) && isnan(c[i]);
        EXPECT_TRUE(ok) << sweep::Str(x[i]) << ": sin " << sweep::Str(s[i]) << ", cos " << sweep::Str(c[i]);
    }
    std::vector<T> pos = Inputs<T>(), neg(pos.size()), ps, pc, ns, nc;
    for (size_t i = 0; i < pos.size(); ++i) neg[i] = -pos[i];
    Compute(pos, ps, pc);
    Compute(neg, ns, nc);
    for (size_t i = 0; i < pos.size(); ++i)
        ASSERT_TRUE(Same(ns[i], T(-ps[i])) && Same(nc[i], pc[i])) << sweep::Str(pos[i]);
}

TEST_P(KernelsTrig, SpecialValuesAndSymmetry)
{
    CheckSpecials<float>();
    CheckSpecials<double>();
}

// Through the public entry points: exact at phase +-0, the zero's sign
// reaching the imaginary part, and correctly rounded near the axes.
TEST_P(KernelsTrig, PolarToCartIsExactWhereItCanBe)
{
    const double m[4] = {2, 2, 3, 0.5}, p[4] = {0, -0.0, M_PI_2, -M_PI};
    const Ipp64fc want[4] = {{2, 0}, {2, -0.0}, {3 * cos(M_PI_2), 3}, {-0.5, 0.5 * sin(-M_PI)}};
    Ipp64fc z[4];
    double re[4], im[4];
    ASSERT_EQ(ippsPolarToCart_64fc(m, p, z, 4), ippStsNoErr);
    ASSERT_EQ(ippsPolarToCart_64f(m, p, re, im, 4), ippStsNoErr);
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(sweep::SameAs(z[i], want[i])) << p[i];
        EXPECT_TRUE(sweep::SameAs(Ipp64fc{re[i], im[i]}, want[i])) << p[i];
    }
}

}  // namespace
}  // namespace orb_trig_test
#endif  // HWY_ONCE
