// Windows against their definitions in long double, on every compiled
// target, in every element type.
#include "kernels_sweep.h"  // first: the kernels' target set

namespace {

class KernelsWindow : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsWindow);

using LD = long double;
constexpr LD kPi = 3.141592653589793238462643383279503L;

LD I0(LD x)
{
    LD sum = 1, term = 1;
    for (int k = 1; term > sum * 1e-22L; ++k) {
        term *= x * x / (4.0L * k * k);
        sum += term;
    }
    return sum;
}

// The definitions, at n of N, straight from the formulas; taken at the
// nearer end, where they are exact in long double (at the far end 2 pi is
// not).
enum Kind { kBartlett, kHann, kHamming, kStd, kOpt, kBlackman, kKaiser };
LD Window(Kind k, int n, int N, LD alpha)
{
    n = std::min(n, N - 1 - n);
    const LD m = N - 1, x = 2 * kPi * n / m;
    // 1 - cos x and 1 - cos 2x as 2 sin^2 of the half angles: long double
    // cosines near 1 would lose more than double's precision here.
    const LD u = 2 * sinl(x / 2) * sinl(x / 2), u2 = 2 * sinl(x) * sinl(x);
    // (a + 1) / 2 - (1 - u) / 2 - a (1 - u2) / 2, its constants cancelled.
    const auto blackman = [&](LD a) { return 0.5L * u + a / 2 * u2; };
    switch (k) {
    case kBartlett: return 2 * n <= m ? 2 * n / m : 2 - 2 * n / m;
    case kHann: return 0.5L * u;
    case kHamming: return 0.08L + 0.46L * u;
    case kStd: return blackman(-0.16L);
    case kOpt: return blackman(-0.5L / (1 + cosl(2 * kPi / m)));
    case kBlackman: return blackman(alpha);
    case kKaiser: {
        const LD h = m / 2;
        return I0(alpha * sqrtl(h * h - (n - h) * (n - h))) / I0(alpha * h);
    }
    }
    return 0;
}

struct Fns {
    Kind kind;
    int min_len;
    IppStatus (*f16)(const Ipp16s *, Ipp16s *, int, Ipp32f);
    IppStatus (*f32)(const Ipp32f *, Ipp32f *, int, Ipp32f);
    IppStatus (*f64)(const Ipp64f *, Ipp64f *, int, Ipp64f);
    IppStatus (*fc)(const Ipp64fc *, Ipp64fc *, int, Ipp64f);
};

// The windows without a parameter, in the shape of those with one.
#define PLAIN(kind, name, min)                                                                        \
    Fns{kind, min, [](const Ipp16s *s, Ipp16s *d, int n, Ipp32f) { return ipps##name##_16s(s, d, n); }, \
        [](const Ipp32f *s, Ipp32f *d, int n, Ipp32f) { return ipps##name##_32f(s, d, n); },           \
        [](const Ipp64f *s, Ipp64f *d, int n, Ipp64f) { return ipps##name##_64f(s, d, n); },           \
        [](const Ipp64fc *s, Ipp64fc *d, int n, Ipp64f) { return ipps##name##_64fc(s, d, n); }}
const Fns kAll[] = {
    PLAIN(kBartlett, WinBartlett, 3),
    PLAIN(kHann, WinHann, 3),
    PLAIN(kHamming, WinHamming, 3),
    PLAIN(kStd, WinBlackmanStd, 3),
    PLAIN(kOpt, WinBlackmanOpt, 4),
    Fns{kBlackman, 3, ippsWinBlackman_16s, ippsWinBlackman_32f, ippsWinBlackman_64f, ippsWinBlackman_64fc},
    Fns{kKaiser, 1, ippsWinKaiser_16s, ippsWinKaiser_32f, ippsWinKaiser_64f, ippsWinKaiser_64fc},
};

// got = x w within tol ulps, or, where the window's terms cancel to near
// zero, within tol rounding errors of those terms (up to 1 + 4 |alpha|;
// the optimal Blackman window's alpha is below 1 in magnitude).
template <typename T>
bool Close(T got, T x, LD w, double tol, double alpha)
{
    const LD ref = LD(x) * w;
    if (!isfinite(x)) return isnan(x) ? isnan(got) : sweep::Same(got, T(ref)) || !isfinite(got);
    const LD eps = sweep::Lim<T>::epsilon();
    return sweep::Ulps(got, ref) <= tol || fabsl(got - ref) <= tol * eps * fabsl(LD(x)) * (1 + 4 * fmax(fabs(alpha), 1));
}

TEST_P(KernelsWindow, EveryWindowMatchesItsDefinition)
{
    // 3001: the first half spans more than one chunk of computed values.
    for (const Fns &f : kAll)
        for (int len : {1, 2, 3, 4, 5, 63, 64, 3001})
            for (double alpha : {0.1, 0.75, 3.0}) {
                SCOPED_TRACE(::testing::Message() << "window " << f.kind << " len " << len << " alpha " << alpha);
                const auto src = sweep::Random<double>(size_t(len), uint64_t(len));
                std::vector<double> d(static_cast<size_t>(len)), in_place = src;
                std::vector<float> s32(src.begin(), src.end()), d32(static_cast<size_t>(len));
                std::vector<Ipp64fc> c(static_cast<size_t>(len)), dc(static_cast<size_t>(len));
                std::vector<Ipp16s> s16(static_cast<size_t>(len)), d16(static_cast<size_t>(len));
                for (int n = 0; n < len; ++n) {
                    c[n] = {src[n], -2 * src[n]};
                    s16[n] = Ipp16s(lrint(isfinite(src[n]) ? src[n] * 300 : 7));
                }
                const IppStatus want = len < f.min_len ? ippStsSizeErr : ippStsNoErr;
                ASSERT_EQ(f.f64(src.data(), d.data(), len, alpha), want);
                ASSERT_EQ(f.f32(s32.data(), d32.data(), len, float(alpha)), want);
                ASSERT_EQ(f.fc(c.data(), dc.data(), len, alpha), want);
                ASSERT_EQ(f.f16(s16.data(), d16.data(), len, float(alpha)), want);
                ASSERT_EQ(f.f64(in_place.data(), in_place.data(), len, alpha), want);
                if (want != ippStsNoErr) continue;
                // Kaiser's I0 arguments carry a relative rounding each, which the
                // window's exponential growth turns into up to x ulps.
                const double tol = 8 + (f.kind == kKaiser ? 2 * alpha * len : 0);
                for (int n = 0; n < len; ++n) {
                    const LD w = Window(f.kind, n, len, alpha), w32 = Window(f.kind, n, len, LD(float(alpha)));
                    EXPECT_TRUE(Close(d[n], src[n], w, tol, alpha)) << n;
                    EXPECT_TRUE(sweep::Same(in_place[n], d[n])) << n;
                    EXPECT_TRUE(Close(d32[n], s32[n], w32, 2, alpha)) << n;
                    EXPECT_TRUE(Close(dc[n].re, src[n], w, tol, alpha)) << n;
                    EXPECT_TRUE(Close(dc[n].im, -2 * src[n], w, tol, alpha)) << n;
                    // Integers: the product rounded and saturated, unless it lies
                    // near a tie.
                    const LD p = std::clamp(LD(s16[n]) * w32, -32768.0L, 32767.0L);
                    if (fabsl(p - floorl(p) - 0.5L) > 1e-9L) EXPECT_EQ(d16[n], lrintl(p)) << n;
                    else EXPECT_LE(fabsl(d16[n] - p), 0.5L + 1e-9L) << n;
                }
                // Exactly symmetric: a constant signal gives a palindrome.
                std::vector<double> ones(size_t(len), 1.0), w(static_cast<size_t>(len));
                ASSERT_EQ(f.f64(ones.data(), w.data(), len, alpha), ippStsNoErr);
                EXPECT_TRUE(std::equal(w.begin(), w.end(), w.rbegin()));
            }
}

// Large alpha (N - 1) / 2 overflows I0 on its own, never the window.
TEST_P(KernelsWindow, KaiserStaysFiniteForLargeArguments)
{
    const int len = 1001;
    std::vector<double> ones(len, 1.0), w(len);
    ASSERT_EQ(ippsWinKaiser_64f(ones.data(), w.data(), len, 2.0), ippStsNoErr);  // I0(1000) ~ 1e432
    EXPECT_EQ(w[500], 1.0);
    for (int n : {0, 100, 400, 499}) EXPECT_LE(sweep::Ulps(w[n], Window(kKaiser, n, len, 2.0L)), 4 * 1000) << n;
}

TEST(KernelsWindowChecks, NullPointers)
{
    double x[4] = {1, 2, 3, 4};
    EXPECT_EQ(ippsWinHann_64f(nullptr, x, 4), ippStsNullPtrErr);
    EXPECT_EQ(ippsWinKaiser_64f(x, nullptr, 4, 1.0), ippStsNullPtrErr);
    EXPECT_EQ(ippsWinKaiser_64f(x, x, 0, 1.0), ippStsSizeErr);
}

}  // namespace
