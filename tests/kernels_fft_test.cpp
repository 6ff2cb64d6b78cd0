// The transforms against their defining sums in long double: Fourier
// transforms of many lengths in every layout and normalisation, the cosine
// transforms, the analytic signal, single DFT values and the Haar wavelet;
// statuses for bad arguments; two threads at once.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

#include "ipps.h"

namespace {

using LC = std::complex<long double>;
constexpr long double kPi = 3.141592653589793238462643383279502884L;

std::vector<LC> NaiveDFT(const std::vector<LC> &x, int sign)
{
    const size_t n = x.size();
    std::vector<LC> w(n), y(n);
    for (size_t m = 0; m < n; ++m) w[m] = std::polar(1.0L, sign * 2 * kPi * (long double)m / n);
    for (size_t k = 0; k < n; ++k)
        for (size_t j = 0; j < n; ++j) y[k] += x[j] * w[(j * k) % n];
    return y;
}

std::vector<LC> RandomSignal(size_t n, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> u(-1, 1);
    std::vector<LC> x(n);
    for (LC &v : x) v = LC(u(rng), u(rng));
    return x;
}

// Largest error relative to the largest reference magnitude.
template <typename Get>
double Error(const std::vector<LC> &ref, Get got)
{
    long double worst = 0, top = 1e-30L;
    for (size_t i = 0; i < ref.size(); ++i) {
        worst = std::max(worst, std::abs(got(i) - ref[i]));
        top = std::max(top, std::abs(ref[i]));
    }
    return double(worst / top);
}

struct Layout {
    const char *name;
    bool fft;
    int precision;  // 64fc, 64f (split) or 32f (split)
};

// One transform of x through a whole size / init / run sequence.
std::vector<LC> Transform(const Layout &l, const std::vector<LC> &x, int flag, bool forward, IppStatus *status)
{
    const int n = int(x.size());
    int order = 0;
    while ((1 << order) < n) ++order;
    const int size = l.fft ? order : n;
    int specSize = -1, initSize = -1, workSize = -1;
    IppStatus st = l.precision == 64 ? (l.fft ? ippsFFTGetSize_C_64fc : ippsDFTGetSize_C_64fc)(size, flag, ippAlgHintNone, &specSize, &initSize, &workSize)
                   : l.precision == 0 ? (l.fft ? ippsFFTGetSize_C_64f : ippsDFTGetSize_C_64f)(size, flag, ippAlgHintNone, &specSize, &initSize, &workSize)
                                      : (l.fft ? ippsFFTGetSize_C_32f : ippsDFTGetSize_C_32f)(size, flag, ippAlgHintNone, &specSize, &initSize, &workSize);
    EXPECT_EQ(st, ippStsNoErr);
    EXPECT_GT(specSize, 0);
    std::vector<Ipp8u> spec(size_t(specSize) + 1), init(size_t(std::max(initSize, 1))), work(size_t(std::max(workSize, 1)));
    Ipp8u *mem = spec.data() + 1;  // the structure may start anywhere
    void *p = mem;
    std::vector<LC> y(static_cast<size_t>(n));
    if (l.precision == 64) {
        if (l.fft) st = ippsFFTInit_C_64fc((IppsFFTSpec_C_64fc **)&p, order, flag, ippAlgHintNone, mem, init.data());
        else st = ippsDFTInit_C_64fc(n, flag, ippAlgHintNone, (IppsDFTSpec_C_64fc *)mem, init.data());
        EXPECT_EQ(st, ippStsNoErr);
        std::vector<Ipp64fc> in(x.size()), out(x.size());
        for (int i = 0; i < n; ++i) in[i] = {double(x[i].real()), double(x[i].imag())};
        if (l.fft) st = (forward ? ippsFFTFwd_CToC_64fc : ippsFFTInv_CToC_64fc)(in.data(), out.data(), (IppsFFTSpec_C_64fc *)p, work.data());
        else st = (forward ? ippsDFTFwd_CToC_64fc : ippsDFTInv_CToC_64fc)(in.data(), out.data(), (IppsDFTSpec_C_64fc *)p, work.data());
        for (int i = 0; i < n; ++i) y[i] = LC(out[i].re, out[i].im);
    } else if (l.precision == 0) {
        if (l.fft) st = ippsFFTInit_C_64f((IppsFFTSpec_C_64f **)&p, order, flag, ippAlgHintNone, mem, nullptr);
        else st = ippsDFTInit_C_64f(n, flag, ippAlgHintNone, (IppsDFTSpec_C_64f *)mem, nullptr);
        EXPECT_EQ(st, ippStsNoErr);
        std::vector<double> re(x.size()), im(x.size()), ore(x.size()), oim(x.size());
        for (int i = 0; i < n; ++i) re[i] = double(x[i].real()), im[i] = double(x[i].imag());
        if (l.fft) st = (forward ? ippsFFTFwd_CToC_64f : ippsFFTInv_CToC_64f)(re.data(), im.data(), ore.data(), oim.data(), (IppsFFTSpec_C_64f *)p, nullptr);
        else st = (forward ? ippsDFTFwd_CToC_64f : ippsDFTInv_CToC_64f)(re.data(), im.data(), ore.data(), oim.data(), (IppsDFTSpec_C_64f *)p, nullptr);
        for (int i = 0; i < n; ++i) y[i] = LC(ore[i], oim[i]);
    } else {
        if (l.fft) st = ippsFFTInit_C_32f((IppsFFTSpec_C_32f **)&p, order, flag, ippAlgHintNone, mem, nullptr);
        else st = ippsDFTInit_C_32f(n, flag, ippAlgHintNone, (IppsDFTSpec_C_32f *)mem, nullptr);
        EXPECT_EQ(st, ippStsNoErr);
        std::vector<float> re(x.size()), im(x.size()), ore(x.size()), oim(x.size());
        for (int i = 0; i < n; ++i) re[i] = float(x[i].real()), im[i] = float(x[i].imag());
        if (l.fft) st = (forward ? ippsFFTFwd_CToC_32f : ippsFFTInv_CToC_32f)(re.data(), im.data(), ore.data(), oim.data(), (IppsFFTSpec_C_32f *)p, nullptr);
        else st = (forward ? ippsDFTFwd_CToC_32f : ippsDFTInv_CToC_32f)(re.data(), im.data(), ore.data(), oim.data(), (IppsDFTSpec_C_32f *)p, nullptr);
        for (int i = 0; i < n; ++i) y[i] = LC(ore[i], oim[i]);
    }
    *status = st;
    return y;
}

const Layout kLayouts[] = {{"DFT 64fc", false, 64}, {"DFT 64f", false, 0}, {"DFT 32f", false, 32},
                           {"FFT 64fc", true, 64},  {"FFT 64f", true, 0},   {"FFT 32f", true, 32}};

TEST(Fourier, EveryLayoutMatchesTheDefiningSumWithEachNormalisation)
{
    const struct { int flag; long double fwd, inv; } flags[] = {
        {IPP_FFT_NODIV_BY_ANY, 1, 1}, {IPP_FFT_DIV_FWD_BY_N, -1, 1}, {IPP_FFT_DIV_INV_BY_N, 1, -1},
        {IPP_FFT_DIV_BY_SQRTN, -0.5L, -0.5L}};  // negative: that power of n divides
    for (int n : {1, 2, 3, 6, 7, 16, 64, 97, 256, 1000, 1024}) {
        const std::vector<LC> x = RandomSignal(size_t(n), unsigned(n));
        const std::vector<LC> sums[2] = {NaiveDFT(x, 1), NaiveDFT(x, -1)};
        for (const Layout &l : kLayouts) {
            if (l.fft && (n & (n - 1))) continue;
            const double tol = (l.precision == 32 ? 2e-6 : 4e-15) * std::log2(2.0 * n);
            for (auto f : flags)
                for (bool forward : {true, false}) {
                    IppStatus st;
                    std::vector<LC> got = Transform(l, x, f.flag, forward, &st), want = sums[forward];
                    const long double s = forward ? f.fwd : f.inv;
                    for (LC &w : want) w *= s > 0 ? 1 : std::pow((long double)n, s);
                    EXPECT_EQ(st, ippStsNoErr);
                    EXPECT_LT(Error(want, [&](size_t i) { return got[i]; }), tol)
                        << l.name << " n=" << n << " flag=" << f.flag << (forward ? " forward" : " inverse");
                }
            // Forward then inverse: the input again, times n without division.
            for (auto f : flags) {
                IppStatus st;
                std::vector<LC> back = Transform(l, Transform(l, x, f.flag, true, &st), f.flag, false, &st);
                const long double k = f.flag == IPP_FFT_NODIV_BY_ANY ? n : 1;
                EXPECT_LT(Error(x, [&](size_t i) { return back[i] / k; }), tol) << l.name << " round trip n=" << n;
            }
        }
    }
}

TEST(Fourier, InPlaceSharedAndMisalignedArraysGiveTheSameResult)
{
    const int n = 64;
    std::vector<LC> x = RandomSignal(n, 5), want = NaiveDFT(x, -1);
    Ipp8u spec[64];
    ASSERT_EQ(ippsDFTInit_C_64f(n, IPP_FFT_NODIV_BY_ANY, ippAlgHintNone, (IppsDFTSpec_C_64f *)spec, nullptr), 0);
    // Storage off the usual alignment by one double, and the parts crossed:
    // the outputs overwrite the inputs the other way round.
    std::vector<double> buf(4 * n + 1);
    double *re = buf.data() + 1, *im = re + n;
    for (int i = 0; i < n; ++i) re[i] = double(x[i].real()), im[i] = double(x[i].imag());
    ASSERT_EQ(ippsDFTFwd_CToC_64f(re, im, im, re, (IppsDFTSpec_C_64f *)spec, nullptr), ippStsNoErr);
    EXPECT_LT(Error(want, [&](size_t i) { return LC(im[i], re[i]); }), 1e-14);
    for (int i = 0; i < n; ++i) re[i] = double(x[i].real()), im[i] = double(x[i].imag());
    ASSERT_EQ(ippsDFTFwd_CToC_64f(re, im, re, im, (IppsDFTSpec_C_64f *)spec, nullptr), ippStsNoErr);
    EXPECT_LT(Error(want, [&](size_t i) { return LC(re[i], im[i]); }), 1e-14);

    Ipp8u fspec[64];
    IppsFFTSpec_C_64fc *f = nullptr;
    ASSERT_EQ(ippsFFTInit_C_64fc(&f, 6, IPP_FFT_NODIV_BY_ANY, ippAlgHintNone, fspec, nullptr), 0);
    std::vector<Ipp64fc> z(n + 1);
    for (int shift : {0, 1})
        for (bool inPlace : {false, true}) {
            Ipp64fc *in = z.data() + shift;  // 16-byte steps off a 32-byte boundary
            std::vector<Ipp64fc> out(n);
            for (int i = 0; i < n; ++i) in[i] = {double(x[i].real()), double(x[i].imag())};
            Ipp64fc *dst = inPlace ? in : out.data();
            ASSERT_EQ(ippsFFTFwd_CToC_64fc(in, dst, f, nullptr), ippStsNoErr);
            EXPECT_LT(Error(want, [&](size_t i) { return LC(dst[i].re, dst[i].im); }), 1e-14) << shift << inPlace;
        }
}

TEST(Fourier, StatusesForBadOrdersLengthsFlagsAndStructures)
{
    int a, b, c;
    Ipp8u mem[64];
    IppsFFTSpec_C_64fc *f = nullptr;
    Ipp64fc z[2] = {};
    EXPECT_EQ(ippsFFTGetSize_C_64fc(-1, IPP_FFT_NODIV_BY_ANY, ippAlgHintNone, &a, &b, &c), ippStsFftOrderErr);
    EXPECT_EQ(ippsFFTGetSize_C_32f(31, IPP_FFT_NODIV_BY_ANY, ippAlgHintNone, &a, &b, &c), ippStsFftOrderErr);
    EXPECT_EQ(ippsFFTInit_C_64f((IppsFFTSpec_C_64f **)&f, -1, 8, ippAlgHintNone, mem, nullptr), ippStsFftOrderErr);
    EXPECT_EQ(ippsDFTGetSize_C_64fc(0, IPP_FFT_NODIV_BY_ANY, ippAlgHintNone, &a, &b, &c), ippStsSizeErr);
    EXPECT_EQ(ippsDFTInit_C_32f(0, 8, ippAlgHintNone, (IppsDFTSpec_C_32f *)mem, nullptr), ippStsSizeErr);
    for (int flag : {0, 3, 16})
        EXPECT_EQ(ippsDFTGetSize_C_64f(4, flag, ippAlgHintNone, &a, &b, &c), ippStsFftFlagErr) << flag;
    EXPECT_EQ(ippsDFTGetSize_C_64fc(4, 8, ippAlgHintNone, nullptr, &b, &c), ippStsNullPtrErr);
    EXPECT_EQ(ippsFFTInit_C_64fc(nullptr, 1, 8, ippAlgHintNone, mem, nullptr), ippStsNullPtrErr);
    EXPECT_EQ(ippsFFTInit_C_64fc(&f, 1, 8, ippAlgHintNone, nullptr, nullptr), ippStsNullPtrErr);
    ASSERT_EQ(ippsFFTInit_C_64fc(&f, 1, 8, ippAlgHintNone, mem, nullptr), ippStsNoErr);
    EXPECT_EQ(ippsFFTFwd_CToC_64fc(nullptr, z, f, nullptr), ippStsNullPtrErr);
    EXPECT_EQ(ippsFFTFwd_CToC_64fc(z, z, nullptr, nullptr), ippStsNullPtrErr);
    // A structure made for another transform is refused.
    EXPECT_EQ(ippsDFTFwd_CToC_64fc(z, z, (IppsDFTSpec_C_64fc *)f, nullptr), ippStsContextMatchErr);
    double r[2] = {}, i[2] = {};
    EXPECT_EQ(ippsFFTFwd_CToC_64f(r, i, r, i, (IppsFFTSpec_C_64f *)f, nullptr), ippStsContextMatchErr);
}

TEST(Cosine, BothPrecisionsMatchTheDefiningSumAndInvert)
{
    for (int n : {1, 2, 5, 8, 100, 1024}) {
        std::vector<LC> x = RandomSignal(size_t(n), unsigned(n) + 7);
        std::vector<long double> want(static_cast<size_t>(n));
        for (int k = 0; k < n; ++k) {
            for (int j = 0; j < n; ++j) want[k] += x[j].real() * std::cos(kPi * (2 * j + 1) * k / (2 * n));
            want[k] *= std::sqrt((k ? 2.0L : 1.0L) / n);
        }
        int specSize, initSize, workSize;
        ASSERT_EQ(ippsDCTFwdGetSize_64f(n, ippAlgHintNone, &specSize, &initSize, &workSize), ippStsNoErr);
        std::vector<Ipp8u> m1(static_cast<size_t>(specSize)), m2(static_cast<size_t>(specSize));
        IppsDCTFwdSpec_64f *fwd;
        IppsDCTInvSpec_64f *inv;
        ASSERT_EQ(ippsDCTFwdInit_64f(&fwd, n, ippAlgHintNone, m1.data(), nullptr), ippStsNoErr);
        ASSERT_EQ(ippsDCTInvInit_64f(&inv, n, ippAlgHintNone, m2.data(), nullptr), ippStsNoErr);
        std::vector<double> in(static_cast<size_t>(n)), y(static_cast<size_t>(n)), back(static_cast<size_t>(n));
        for (int j = 0; j < n; ++j) in[j] = double(x[j].real());
        ASSERT_EQ(ippsDCTFwd_64f(in.data(), y.data(), fwd, nullptr), ippStsNoErr);
        ASSERT_EQ(ippsDCTInv_64f(y.data(), back.data(), inv, nullptr), ippStsNoErr);
        EXPECT_EQ(ippsDCTInv_64f(y.data(), back.data(), (IppsDCTInvSpec_64f *)fwd, nullptr), ippStsContextMatchErr);
        std::vector<LC> w(want.begin(), want.end()), xr(in.begin(), in.end());
        EXPECT_LT(Error(w, [&](size_t i) { return LC(y[i]); }), 1e-14 * std::log2(2.0 * n)) << n;
        EXPECT_LT(Error(xr, [&](size_t i) { return LC(back[i]); }), 1e-14 * std::log2(2.0 * n)) << n;

        ASSERT_EQ(ippsDCTFwdGetSize_32f(n, ippAlgHintNone, &specSize, &initSize, &workSize), ippStsNoErr);
        IppsDCTFwdSpec_32f *f32;
        IppsDCTInvSpec_32f *i32;
        ASSERT_EQ(ippsDCTFwdInit_32f(&f32, n, ippAlgHintNone, m1.data(), nullptr), ippStsNoErr);
        ASSERT_EQ(ippsDCTInvInit_32f(&i32, n, ippAlgHintNone, m2.data(), nullptr), ippStsNoErr);
        std::vector<float> s(in.begin(), in.end()), ys(static_cast<size_t>(n));
        ASSERT_EQ(ippsDCTFwd_32f(s.data(), ys.data(), f32, nullptr), ippStsNoErr);
        EXPECT_LT(Error(w, [&](size_t i) { return LC(ys[i]); }), 3e-6 * std::log2(2.0 * n)) << n;
        ASSERT_EQ(ippsDCTInv_32f(ys.data(), ys.data(), i32, nullptr), ippStsNoErr);  // in place
        EXPECT_LT(Error(xr, [&](size_t i) { return LC(ys[i]); }), 3e-6 * std::log2(2.0 * n)) << n;
    }
    int a, b, c;
    EXPECT_EQ(ippsDCTInvGetSize_32f(0, ippAlgHintNone, &a, &b, &c), ippStsSizeErr);
}

TEST(Hilbert, TheAnalyticSignalOfACosineIsTheComplexTone)
{
    for (int n : {1, 2, 15, 16, 1000}) {
        int specSize, bufSize;
        ASSERT_EQ(ippsHilbertGetSize_32f32fc(n, ippAlgHintNone, &specSize, &bufSize), ippStsNoErr);
        std::vector<Ipp8u> spec(static_cast<size_t>(specSize));
        ASSERT_EQ(ippsHilbertInit_32f32fc(n, ippAlgHintNone, (IppsHilbertSpec *)spec.data(), nullptr), ippStsNoErr);
        // A cosine at bin 3 (a constant when n is too short for one), plus 2.
        const int bin = n > 6 ? 3 : 0;
        std::vector<float> x(static_cast<size_t>(n));
        std::vector<LC> want(static_cast<size_t>(n));
        for (int t = 0; t < n; ++t) {
            const long double a = 2 * kPi * bin * t / n;
            x[t] = float(2 + std::cos(a));
            want[t] = bin ? LC(2 + std::cos(a), std::sin(a)) : LC(x[t]);
        }
        std::vector<Ipp32fc> y(static_cast<size_t>(n));
        ASSERT_EQ(ippsHilbert_32f32fc(x.data(), y.data(), (IppsHilbertSpec *)spec.data(), nullptr), ippStsNoErr);
        EXPECT_LT(Error(want, [&](size_t i) { return LC(y[i].re, y[i].im); }), 1e-5) << n;
    }
    int a, b;
    EXPECT_EQ(ippsHilbertGetSize_32f32fc(0, ippAlgHintNone, &a, &b), ippStsSizeErr);
    EXPECT_EQ(ippsHilbertInit_32f32fc(-1, ippAlgHintNone, (IppsHilbertSpec *)&a, nullptr), ippStsSizeErr);
}

TEST(Goertzel, EqualsTheMatchingDFTBinInEachForm)
{
    for (int n : {1, 7, 64, 1000}) {
        std::vector<LC> x = RandomSignal(size_t(n), 11), y = NaiveDFT(x, -1);
        std::vector<double> re(static_cast<size_t>(n));
        std::vector<float> re32(static_cast<size_t>(n));
        std::vector<Ipp64fc> z(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i) re[i] = re32[i] = float(x[i].real()), z[i] = {re[i], double(x[i].imag())};
        for (int i = 0; i < n; ++i) x[i] = LC(z[i].re, z[i].im);
        y = NaiveDFT(x, -1);
        std::vector<LC> realX(re.begin(), re.end()), yr = NaiveDFT(realX, -1);
        for (int k : {0, n / 3, n - 1}) {
            const double f = double(k) / n;
            Ipp64fc v64, vc;
            Ipp32fc v32;
            ASSERT_EQ(ippsGoertz_64f(re.data(), n, &v64, f), ippStsNoErr);
            ASSERT_EQ(ippsGoertz_32f(re32.data(), n, &v32, float(f)), ippStsNoErr);
            ASSERT_EQ(ippsGoertz_64fc(z.data(), n, &vc, f), ippStsNoErr);
            const double scale = std::sqrt(double(n));  // the bins' typical size
            EXPECT_LT(std::abs(LC(v64.re, v64.im) - yr[k]) / scale, 1e-12) << n << " " << k;
            EXPECT_LT(std::abs(LC(vc.re, vc.im) - y[k]) / scale, 1e-12) << n << " " << k;
            // The single-precision frequency is itself rounded.
            EXPECT_LT(std::abs(LC(v32.re, v32.im) - yr[k]) / scale, 1e-4 * n) << n << " " << k;
        }
    }
    double x[2] = {1, 2};
    Ipp64fc v;
    for (double f : {-0.1, 1.0, double(NAN)}) EXPECT_EQ(ippsGoertz_64f(x, 2, &v, f), ippStsRelFreqErr) << f;
    EXPECT_EQ(ippsGoertz_64f(x, 0, &v, 0.5), ippStsSizeErr);
    EXPECT_EQ(ippsGoertz_64f(x, 2, nullptr, 0.5), ippStsNullPtrErr);
}

TEST(Haar, HalfSumsAndHalfDifferencesAndBack)
{
    const double x[] = {1, 3, 10, 6, -1.5, 2.5, 7};
    double low[4], high[3], back[7];
    ASSERT_EQ(ippsWTHaarFwd_64f(x, 7, low, high), ippStsNoErr);
    EXPECT_EQ(std::vector<double>(low, low + 4), (std::vector<double>{2, 8, 0.5, 7}));  // odd: last passes
    EXPECT_EQ(std::vector<double>(high, high + 3), (std::vector<double>{1, -2, 2}));
    ASSERT_EQ(ippsWTHaarInv_64f(low, high, back, 7), ippStsNoErr);
    EXPECT_EQ(std::vector<double>(back, back + 7), std::vector<double>(x, x + 7));
    float xf[] = {1, 2}, lf, hf, bf[2];
    ASSERT_EQ(ippsWTHaarFwd_32f(xf, 2, &lf, &hf), ippStsNoErr);
    EXPECT_EQ(lf, 1.5f);
    EXPECT_EQ(hf, 0.5f);
    ASSERT_EQ(ippsWTHaarInv_32f(&lf, &hf, bf, 2), ippStsNoErr);
    EXPECT_EQ(bf[1], 2.0f);

    // Integers: exact sums, halves rounded to even, then saturated.
    struct { int16_t a, b; int sf; int16_t low, high; } rows[] = {
        {1, 2, 0, 2, 0},            // 1.5 -> 2, 0.5 -> 0
        {3, 4, 0, 4, 0},            // 3.5 -> 4
        {-3, 0, 0, -2, 2},          // -1.5 -> -2, 1.5 -> 2
        {32767, 32767, 0, 32767, 0},
        {32767, -32768, 0, 0, -32768},  // -32767.5 -> -32768
        {100, 40, 1, 35, -15},
        {20000, 20000, -1, 32767, 0},
    };
    for (auto r : rows) {
        int16_t in[2] = {r.a, r.b}, l, h;
        ASSERT_EQ(ippsWTHaarFwd_16s_Sfs(in, 2, &l, &h, r.sf), ippStsNoErr);
        EXPECT_EQ(l, r.low) << r.a << " " << r.b << " sf " << r.sf;
        EXPECT_EQ(h, r.high) << r.a << " " << r.b << " sf " << r.sf;
    }
    int16_t l = 30000, h = -30000, out[2];
    ASSERT_EQ(ippsWTHaarInv_16s_Sfs(&l, &h, out, 2, 0), ippStsNoErr);
    EXPECT_EQ(out[0], 32767);
    EXPECT_EQ(out[1], 0);
    EXPECT_EQ(ippsWTHaarFwd_64f(x, 0, low, high), ippStsSizeErr);
    EXPECT_EQ(ippsWTHaarInv_64f(low, nullptr, back, 2), ippStsNullPtrErr);
}

TEST(Fourier, TwoThreadsGetTheSameResultsAsOne)
{
    auto work = [](std::vector<double> *sums) {
        for (int round = 0; round < 300; ++round) {
            const int n = 8 + round % 37;
            std::vector<LC> x = RandomSignal(size_t(n), unsigned(round));
            IppStatus st;
            std::vector<LC> y = Transform(kLayouts[round % 3], x, IPP_FFT_DIV_FWD_BY_N, true, &st);
            sums->push_back(double(y[1].real()));
        }
    };
    std::vector<double> one, s1, s2;
    work(&one);
    std::thread t1(work, &s1), t2(work, &s2);
    t1.join();
    t2.join();
    EXPECT_EQ(s1, one);
    EXPECT_EQ(s2, one);
}

}  // namespace
