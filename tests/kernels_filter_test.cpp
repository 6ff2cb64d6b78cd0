// Filter kernels: FIR (direct form and overlap-save) against a long double
// sum, window-method design against its definition and its response, LMS
// on a known system, IIR against the difference equation in long double,
// Butterworth and Chebyshev design against the analogue prototypes'
// responses, and the sliding median against a sort of every window.
#include "kernels_sweep.h"  // first: the kernels' target set

#include <complex>

namespace {

class KernelsFilter : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsFilter);

using LD = long double;
constexpr LD kPi = 3.14159265358979323846264338327950288L;

// Deterministic noise in [-1, 1).
std::vector<double> Noise(size_t n, uint64_t seed)
{
    std::mt19937_64 rng(seed);
    std::uniform_real_distribution<double> u(-1, 1);
    std::vector<double> v(n);
    for (double &x : v) x = u(rng);
    return v;
}

struct Block {
    std::vector<Ipp8u> bytes;
    explicit Block(int size) : bytes(size_t(size > 0 ? size : 1)) {}
    Ipp8u *p() { return bytes.data(); }
};

// Filters x through h by the backend with alg, from the delay line dly
// (empty: none), in place or not; gives the output and the final line.
std::pair<std::vector<double>, std::vector<double>> RunFir(const std::vector<double> &h, std::vector<double> x,
                                                           const std::vector<double> &dly, IppAlgType alg,
                                                           bool inPlace)
{
    const int t = int(h.size());
    int specSize = 0, bufSize = 0;
    EXPECT_EQ(ippsFIRSRGetSize(t, ipp64f, &specSize, &bufSize), ippStsNoErr);
    Block spec(specSize), buf(bufSize);
    auto *s = reinterpret_cast<IppsFIRSpec_64f *>(spec.p());
    EXPECT_EQ(ippsFIRSRInit_64f(h.data(), t, alg, s), ippStsNoErr);
    std::vector<double> y(x.size()), out(size_t(t - 1) + 1);
    double *dst = inPlace ? x.data() : y.data();
    EXPECT_EQ(ippsFIRSR_64f(x.data(), dst, int(x.size()), s, dly.empty() ? nullptr : dly.data(), out.data(), buf.p()),
              ippStsNoErr);
    out.resize(size_t(t - 1));
    return {inPlace ? x : y, out};
}

TEST_P(KernelsFilter, FirMatchesTheDirectSumWithAndWithoutADelayLineByEitherMethod)
{
    for (int t : {1, 2, 16, 39, 40, 64, 257})
        for (size_t n : {size_t(1), size_t(5), size_t(3000)})
            for (IppAlgType alg : {ippAlgDirect, ippAlgFFT, ippAlgAuto})
                for (bool withLine : {false, true}) {
                    SCOPED_TRACE(::testing::Message() << t << " taps, " << n << " samples, alg " << alg
                                                      << (withLine ? ", delay line" : ""));
                    const std::vector<double> h = Noise(size_t(t), uint64_t(t)), x = Noise(n, n + 7);
                    const std::vector<double> dly = withLine ? Noise(size_t(t - 1), 99) : std::vector<double>();
                    // The signal with what came before it.
                    std::vector<double> ext(size_t(t - 1), 0.0);
                    if (withLine) ext = dly;
                    ext.insert(ext.end(), x.begin(), x.end());
                    const auto [y, last] = RunFir(h, x, dly, alg, n == 3000);
                    for (size_t i = 0; i < n; ++i) {
                        LD sum = 0, scale = 0;
                        for (int k = 0; k < t; ++k) {
                            sum += LD(h[size_t(k)]) * ext[i + size_t(t - 1 - k)];
                            scale += fabsl(LD(h[size_t(k)]) * ext[i + size_t(t - 1 - k)]);
                        }
                        ASSERT_LE(fabsl(y[i] - sum), 1e-14L * (scale + 1)) << "output " << i;
                    }
                    EXPECT_EQ(last, std::vector<double>(ext.end() - (t - 1), ext.end()));
                }
}

TEST(KernelsFilterErrors, StatusesOfTheFirFunctions)
{
    int a = 0, b = 0;
    EXPECT_EQ(ippsFIRSRGetSize(0, ipp64f, &a, &b), ippStsSizeErr);
    EXPECT_EQ(ippsFIRSRGetSize(4, ipp32s, &a, &b), ippStsDataTypeErr);
    EXPECT_EQ(ippsFIRSRGetSize(4, ipp64f, nullptr, &b), ippStsNullPtrErr);
    ASSERT_EQ(ippsFIRSRGetSize(4, ipp64f, &a, &b), ippStsNoErr);
    Block spec(a), buf(b);
    auto *s = reinterpret_cast<IppsFIRSpec_64f *>(spec.p());
    const double h[4] = {1, 2, 3, 4};
    double x[4] = {1, 1, 1, 1};
    EXPECT_EQ(ippsFIRSR_64f(x, x, 4, s, nullptr, nullptr, buf.p()), ippStsContextMatchErr);  // not initialised
    EXPECT_EQ(ippsFIRSRInit_64f(h, 4, IppAlgType(7), s), ippStsAlgTypeErr);
    ASSERT_EQ(ippsFIRSRInit_64f(h, 4, ippAlgAuto, s), ippStsNoErr);
    EXPECT_EQ(ippsFIRSR_64f(x, x, 0, s, nullptr, nullptr, buf.p()), ippStsSizeErr);
    EXPECT_EQ(ippsFIRSR_64f(x, x, 4, s, nullptr, nullptr, nullptr), ippStsNullPtrErr);

    EXPECT_EQ(ippsFIRGenGetBufferSize(4, &a), ippStsIIRGenOrderErr);
    ASSERT_EQ(ippsFIRGenGetBufferSize(5, &a), ippStsNoErr);
    Block g(a);
    double taps[5];
    const struct { double lo, hi; IppStatus want; } bands[] = {
        {0, 0.2, ippStsSizeErr}, {0.1, 0.5, ippStsSizeErr}, {0.3, 0.2, ippStsSizeErr}, {0.1, 0.2, ippStsNoErr}};
    for (const auto &c : bands) EXPECT_EQ(ippsFIRGenBandpass_64f(c.lo, c.hi, taps, 5, ippWinHann, ippTrue, g.p()), c.want);
    EXPECT_EQ(ippsFIRGenLowpass_64f(0.5, taps, 5, ippWinHann, ippTrue, g.p()), ippStsSizeErr);
    EXPECT_EQ(ippsFIRGenLowpass_64f(0.2, taps, 4, ippWinHann, ippTrue, g.p()), ippStsSizeErr);
    EXPECT_EQ(ippsFIRGenLowpass_64f(0.2, taps, 5, ippWinHann, ippTrue, nullptr), ippStsNullPtrErr);
}

// The window by its textbook definition over n = 0 .. len - 1.
LD Window(IppWinType w, int i, int len)
{
    const LD x = LD(i) / (len - 1);
    switch (w) {
    case ippWinBartlett: return 1 - fabsl(2 * x - 1);
    case ippWinBlackman: return 0.42L - 0.5L * cosl(2 * kPi * x) + 0.08L * cosl(4 * kPi * x);
    case ippWinHamming: return 0.54L - 0.46L * cosl(2 * kPi * x);
    default: return 0.5L - 0.5L * cosl(2 * kPi * x);
    }
}

LD Gain(const double *h, int len, LD f)
{
    std::complex<LD> s = 0;
    for (int i = 0; i < len; ++i) s += LD(h[i]) * std::polar(1.0L, -2 * kPi * f * i);
    return std::abs(s);
}

TEST(KernelsFilterDesign, FirTapsAreTheWindowedIdealResponseAndMeetTheirBands)
{
    // The ideal low-pass of cut-off f at offset t: sin(2 pi f t) / (pi t).
    const auto low = [](LD f, LD t) { return t == 0 ? 2 * f : sinl(2 * kPi * f * t) / (kPi * t); };
    int size = 0;
    ASSERT_EQ(ippsFIRGenGetBufferSize(101, &size), ippStsNoErr);
    Block buf(size);
    const LD lo = 0.15, hi = 0.3;
    for (int len : {5, 6, 101})
        for (IppWinType w : {ippWinBartlett, ippWinBlackman, ippWinHamming, ippWinHann})
            for (int band = 0; band < 4; ++band) {
                SCOPED_TRACE(::testing::Message() << "length " << len << ", window " << w << ", band " << band);
                std::vector<double> raw(static_cast<size_t>(len)), unit(static_cast<size_t>(len));
                const auto design = [&](double *taps, IppBool norm) {
                    switch (band) {
                    case 0: return ippsFIRGenLowpass_64f(double(lo), taps, len, w, norm, buf.p());
                    case 1: return ippsFIRGenHighpass_64f(double(lo), taps, len, w, norm, buf.p());
                    case 2: return ippsFIRGenBandpass_64f(double(lo), double(hi), taps, len, w, norm, buf.p());
                    default: return ippsFIRGenBandstop_64f(double(lo), double(hi), taps, len, w, norm, buf.p());
                    }
                };
                ASSERT_EQ(design(raw.data(), ippFalse), ippStsNoErr);
                ASSERT_EQ(design(unit.data(), ippTrue), ippStsNoErr);
                for (int i = 0; i < len; ++i) {
                    const LD t = i - (len - 1) / 2.0L;
                    const LD ideal = band == 0   ? low(lo, t)
                                     : band == 1 ? low(0.5L, t) - low(lo, t)
                                     : band == 2 ? low(hi, t) - low(lo, t)
                                                 : low(0.5L, t) - low(hi, t) + low(lo, t);
                    EXPECT_NEAR(raw[size_t(i)], double(ideal * Window(w, i, len)), 1e-14) << "tap " << i;
                    EXPECT_DOUBLE_EQ(unit[size_t(i)], unit[size_t(len - 1 - i)]);  // linear phase
                }
                // Unit gain where each band passes most surely.
                const LD at = band == 0 || band == 3 ? 0 : band == 2 ? (lo + hi) / 2 : len % 2 ? 0.5L : (lo + 0.5L) / 2;
                EXPECT_NEAR(double(Gain(unit.data(), len, at)), 1, 1e-12);
            }
    // A long Hamming low-pass passes below its cut-off and stops above it.
    std::vector<double> h(101);
    ASSERT_EQ(ippsFIRGenLowpass_64f(0.2, h.data(), 101, ippWinHamming, ippTrue, buf.p()), ippStsNoErr);
    for (LD f : {0.0L, 0.05L, 0.15L}) EXPECT_NEAR(double(Gain(h.data(), 101, f)), 1, 0.01) << f;
    EXPECT_NEAR(double(Gain(h.data(), 101, 0.2L)), 0.5, 0.02);
    for (LD f : {0.25L, 0.35L, 0.5L}) EXPECT_LT(double(Gain(h.data(), 101, f)), 0.01) << f;
}

// One LMS run of tapsLen taps from the given taps and delay line.
std::vector<float> RunLms(std::vector<float> taps, const std::vector<float> &dly, int index,
                          const std::vector<float> &x, const std::vector<float> &ref, float mu)
{
    int size = 0;
    const int t = int(taps.size());
    EXPECT_EQ(ippsFIRLMSGetStateSize_32f(t, index, &size), ippStsNoErr);
    Block buf(size);
    IppsFIRLMSState_32f *state = nullptr;
    EXPECT_EQ(ippsFIRLMSInit_32f(&state, taps.data(), t, dly.empty() ? nullptr : dly.data(), index, buf.p()),
              ippStsNoErr);
    std::vector<float> y(x.size());
    EXPECT_EQ(ippsFIRLMS_32f(x.data(), ref.data(), y.data(), int(x.size()), mu, state), ippStsNoErr);
    return y;
}

TEST(KernelsFilterLms, StepsDelayLineAndConvergenceOnAKnownSystem)
{
    // y0 = 0; the error 1 moves h by 2 mu e x = [0.5, 0]; y1 = 0.5 * 2.
    EXPECT_EQ(RunLms({0, 0}, {}, 0, {1, 2}, {1, 0}, 0.25f), (std::vector<float>{0, 1}));
    // h = [0, 1] outputs the sample before: from the line, dly[index + 1].
    EXPECT_EQ(RunLms({0, 1}, {3, 7, 9, 5}, 0, {1, 2}, {0, 0}, 0)[0], 7);
    EXPECT_EQ(RunLms({0, 1}, {3, 7, 9, 5}, 1, {1, 2}, {0, 0}, 0)[0], 9);
    // Identifying h = [0.5, -0.3, 0.2, 0.1] from white noise.
    const std::vector<double> h = {0.5, -0.3, 0.2, 0.1};
    const std::vector<double> xd = Noise(4000, 5);
    std::vector<float> x(xd.begin(), xd.end()), ref(x.size());
    for (size_t n = 0; n < x.size(); ++n)
        for (size_t k = 0; k < h.size() && k <= n; ++k) ref[n] += float(h[k] * x[n - k]);
    const std::vector<float> y = RunLms({0, 0, 0, 0}, {}, 0, x, ref, 0.05f);
    double early = 0, late = 0;
    for (size_t n = 0; n < 100; ++n) early += fabs(ref[n] - y[n]), late += fabs(ref[n + 3900] - y[n + 3900]);
    EXPECT_GT(early, 1);
    EXPECT_LT(late, 1e-3);

    int size = 0;
    EXPECT_EQ(ippsFIRLMSGetStateSize_32f(0, 0, &size), ippStsFIRLenErr);
    EXPECT_EQ(ippsFIRLMSGetStateSize_32f(4, 4, &size), ippStsDlyLineIndexErr);
    EXPECT_EQ(ippsFIRLMSGetStateSize_32f(4, -1, &size), ippStsDlyLineIndexErr);
}

// The difference equation in long double, a and b already divided by a0.
template <typename T>
std::vector<T> Difference(const std::vector<T> &b, const std::vector<T> &a, const std::vector<T> &x)
{
    std::vector<T> y(x.size());
    for (size_t n = 0; n < x.size(); ++n) {
        T s = 0;
        for (size_t k = 0; k < b.size() && k <= n; ++k) s += b[k] * x[n - k];
        for (size_t k = 1; k < a.size() && k <= n; ++k) s -= a[k] * y[n - k];
        y[n] = s;
    }
    return y;
}

TEST_P(KernelsFilter, IirOfArbitraryOrderMatchesTheDifferenceEquationInEachType)
{
    for (int order : {1, 2, 5, 8, 12, 13}) {
        SCOPED_TRACE(::testing::Message() << "order " << order);
        // Stable: the feedback coefficients after division sum below 1 in size.
        std::vector<double> taps = Noise(size_t(2 * order + 2), uint64_t(order));
        const double a0 = 2;
        taps[size_t(order + 1)] = a0;
        for (int k = 1; k <= order; ++k) taps[size_t(order + 1 + k)] *= 1.5 / order;
        std::vector<LD> b, a;
        for (int k = 0; k <= order; ++k) b.push_back(LD(taps[size_t(k)]) / a0), a.push_back(LD(taps[size_t(order + 1 + k)]) / a0);
        const std::vector<double> xd = Noise(500, 3);
        const std::vector<LD> want = Difference(b, a, std::vector<LD>(xd.begin(), xd.end()));

        int size = 0;
        ASSERT_EQ(ippsIIRGetStateSize_64f(order, &size), ippStsNoErr);
        Block buf(size);
        IppsIIRState_64f *s = nullptr;
        ASSERT_EQ(ippsIIRInit_64f(&s, taps.data(), order, nullptr, buf.p()), ippStsNoErr);
        // Two calls continue one signal; the second in place.
        std::vector<double> y(xd);
        ASSERT_EQ(ippsIIR_64f(xd.data(), y.data(), 200, s), ippStsNoErr);
        ASSERT_EQ(ippsIIR_64f(y.data() + 200, y.data() + 200, 300, s), ippStsNoErr);
        for (size_t i = 0; i < y.size(); ++i) ASSERT_NEAR(y[i], double(want[i]), 1e-12) << i;

        std::vector<float> xf(xd.begin(), xd.end()), yf(xf.size()), tf(taps.begin(), taps.end());
        ASSERT_EQ(ippsIIRGetStateSize_32f(order, &size), ippStsNoErr);
        Block buf32(size);
        IppsIIRState_32f *s32 = nullptr;
        ASSERT_EQ(ippsIIRInit_32f(&s32, tf.data(), order, nullptr, buf32.p()), ippStsNoErr);
        ASSERT_EQ(ippsIIR_32f(xf.data(), yf.data(), int(xf.size()), s32), ippStsNoErr);
        std::vector<LD> bf, af;
        for (int k = 0; k <= order; ++k) bf.push_back(LD(tf[size_t(k)]) / LD(tf[size_t(order + 1)])),
            af.push_back(LD(tf[size_t(order + 1 + k)]) / LD(tf[size_t(order + 1)]));
        const std::vector<LD> wantf = Difference(bf, af, std::vector<LD>(xf.begin(), xf.end()));
        for (size_t i = 0; i < yf.size(); ++i) ASSERT_NEAR(yf[i], double(wantf[i]), 1e-6) << i;

        // Complex taps and samples: the rotated real filter, then a complex one.
        using CL = std::complex<LD>;
        const std::vector<double> im = Noise(taps.size(), 11);
        std::vector<Ipp64fc> tc(taps.size()), xc(xd.size()), yc(xd.size());
        for (size_t k = 0; k < taps.size(); ++k) tc[k] = {taps[k], k > size_t(order + 1) ? im[k] * 0.5 / order : 0.0};
        for (size_t i = 0; i < xd.size(); ++i) xc[i] = {xd[i], -xd[i] / 2};
        std::vector<CL> bc, ac, xcl;
        for (int k = 0; k <= order; ++k)
            bc.push_back(CL(tc[size_t(k)].re, tc[size_t(k)].im) / CL(a0)),
                ac.push_back(CL(tc[size_t(order + 1 + k)].re, tc[size_t(order + 1 + k)].im) / CL(a0));
        for (const Ipp64fc &v : xc) xcl.emplace_back(v.re, v.im);
        const std::vector<CL> wantc = Difference(bc, ac, xcl);
        ASSERT_EQ(ippsIIRGetStateSize_64fc(order, &size), ippStsNoErr);
        Block bufc(size);
        IppsIIRState_64fc *sc = nullptr;
        ASSERT_EQ(ippsIIRInit_64fc(&sc, tc.data(), order, nullptr, bufc.p()), ippStsNoErr);
        ASSERT_EQ(ippsIIR_64fc(xc.data(), yc.data(), int(xc.size()), sc), ippStsNoErr);
        for (size_t i = 0; i < yc.size(); ++i)
            ASSERT_LT(std::abs(CL(yc[i].re, yc[i].im) - wantc[i]), 1e-12L) << i;
    }
}

TEST(KernelsFilterIir, DelayLineIsTheTransposedFormsStateAndStatuses)
{
    // y0 = b0 x0 + z0, z0' = b1 x0 - a1 y0 + z1, ...: order 2, b = [1, 2, 3],
    // a = [1, 0.5, 0.25], z = [10, 20].
    const double taps[6] = {1, 2, 3, 1, 0.5, 0.25}, z[2] = {10, 20}, x[2] = {1, 0};
    int size = 0;
    ASSERT_EQ(ippsIIRGetStateSize_64f(2, &size), ippStsNoErr);
    Block buf(size);
    IppsIIRState_64f *s = nullptr;
    ASSERT_EQ(ippsIIRInit_64f(&s, taps, 2, z, buf.p()), ippStsNoErr);
    double y[2];
    ASSERT_EQ(ippsIIR_64f(x, y, 2, s), ippStsNoErr);
    EXPECT_EQ(y[0], 11);                         // 1 * 1 + 10
    EXPECT_EQ(y[1], 2 * 1 - 0.5 * 11 + 20);      // z0 after the first sample

    const double zeroA0[6] = {1, 2, 3, 0, 1, 1};
    EXPECT_EQ(ippsIIRInit_64f(&s, zeroA0, 2, nullptr, buf.p()), ippStsDivByZeroErr);
    EXPECT_EQ(ippsIIRGetStateSize_64f(0, &size), ippStsIIROrderErr);
    EXPECT_EQ(ippsIIRInit_64f(&s, taps, 0, nullptr, buf.p()), ippStsIIROrderErr);
    EXPECT_EQ(ippsIIR_64f(x, y, 0, s), ippStsSizeErr);
    EXPECT_EQ(ippsIIR_64f(nullptr, y, 2, s), ippStsNullPtrErr);
}

std::complex<LD> Response(const double *taps, int order, LD f)
{
    std::complex<LD> num = 0, den = 0;
    for (int k = 0; k <= order; ++k) {
        const std::complex<LD> e = std::polar(1.0L, -2 * kPi * f * k);
        num += LD(taps[k]) * e;
        den += LD(taps[order + 1 + k]) * e;
    }
    return num / den;
}

TEST(KernelsFilterIir, DesignsMeetTheirPrototypesCutOffEdgeGainsAndRipple)
{
    int size = 0;
    ASSERT_EQ(ippsIIRGenGetBufferSize(12, &size), ippStsNoErr);
    Block buf(size);
    const double fc = 0.15, ripple = 1;
    const LD eps2 = powl(10, ripple / 10.0L) - 1;
    for (int order : {1, 2, 3, 6, 12})
        for (bool high : {false, true})
            for (IppsIIRFilterType type : {ippButterworth, ippChebyshev1}) {
                SCOPED_TRACE(::testing::Message() << "order " << order << (high ? " high" : " low") << " type " << type);
                std::vector<double> t(size_t(2 * order + 2));
                ASSERT_EQ((high ? ippsIIRGenHighpass_64f : ippsIIRGenLowpass_64f)(fc, ripple, order, t.data(), type,
                                                                                   buf.p()),
                          ippStsNoErr);
                EXPECT_EQ(t[size_t(order + 1)], 1);
                const auto gain = [&](LD f) { return double(std::abs(Response(t.data(), order, f))); };
                const LD pass = high ? 0.5L : 0, stop = high ? 0 : 0.5L;
                const bool cheby = type == ippChebyshev1;
                // At the cut-off: half power, or the ripple band's edge.
                EXPECT_NEAR(gain(fc), double(cheby ? 1 / sqrtl(1 + eps2) : sqrtl(0.5L)), 1e-9);
                // At the pass band's far edge: 1, or the ripple's trough for even orders.
                EXPECT_NEAR(gain(pass), double(cheby && order % 2 == 0 ? 1 / sqrtl(1 + eps2) : 1.0L), 1e-9);
                EXPECT_NEAR(gain(stop), 0, 1e-9);
                // Within the pass band the gain stays inside the ripple.
                for (int i = 0; i <= 40; ++i) {
                    const LD f = high ? fc + (0.5L - fc) * i / 40 : fc * i / 40;
                    EXPECT_LE(gain(f), 1 + 1e-9);
                    EXPECT_GE(gain(f), double(cheby ? 1 / sqrtl(1 + eps2) : sqrtl(0.5L)) - 1e-9);
                }
                // Poles inside the unit circle: the impulse response decays.
                std::vector<double> imp(2000, 0.0), y(2000);
                imp[0] = 1;
                int ss = 0;
                ASSERT_EQ(ippsIIRGetStateSize_64f(order, &ss), ippStsNoErr);
                Block sb(ss);
                IppsIIRState_64f *s = nullptr;
                ASSERT_EQ(ippsIIRInit_64f(&s, t.data(), order, nullptr, sb.p()), ippStsNoErr);
                ASSERT_EQ(ippsIIR_64f(imp.data(), y.data(), 2000, s), ippStsNoErr);
                EXPECT_LT(fabs(y[1999]), 1e-6);
            }
    double t[26];
    const struct { double f, r; int order; IppsIIRFilterType type; IppStatus want; } bad[] = {
        {0.2, 1, 0, ippButterworth, ippStsIIRGenOrderErr},      {0.2, 1, 13, ippButterworth, ippStsIIRGenOrderErr},
        {0, 1, 2, ippButterworth, ippStsFilterFrequencyErr},    {0.5, 1, 2, ippButterworth, ippStsFilterFrequencyErr},
        {0.2, 0, 2, ippChebyshev1, ippStsIIRPassbandRippleErr}, {0.2, 30, 2, ippChebyshev1, ippStsIIRPassbandRippleErr},
        {0.2, 0, 2, ippButterworth, ippStsNoErr},
    };
    for (const auto &c : bad) EXPECT_EQ(ippsIIRGenLowpass_64f(c.f, c.r, c.order, t, c.type, buf.p()), c.want);
    EXPECT_EQ(ippsIIRGenGetBufferSize(13, &size), ippStsIIRGenOrderErr);
}

// The median of the mask samples ending at each, the earlier ones from the
// line, by sorting each window.
template <typename T>
std::vector<T> NaiveMedian(const std::vector<T> &x, int mask, const std::vector<T> &line)
{
    const int m = mask % 2 ? mask : mask - 1;
    std::vector<T> ext = line.empty() ? std::vector<T>(size_t(m - 1), x[0]) : line, y;
    ext.insert(ext.end(), x.begin(), x.end());
    for (size_t i = 0; i < x.size(); ++i) {
        std::vector<T> w(ext.begin() + long(i), ext.begin() + long(i) + m);
        std::sort(w.begin(), w.end());
        y.push_back(w[size_t(m / 2)]);
    }
    return y;
}

template <typename T, typename F>
void CheckMedian(F filter, IppDataType type)
{
    std::mt19937_64 rng(17);
    for (int mask = 1; mask <= 35; ++mask)
        for (size_t n : {size_t(1), size_t(4), size_t(40), size_t(300)})
            for (int mode = 0; mode < 3; ++mode) {  // 0 plain, 1 with a delay line, 2 in place
                SCOPED_TRACE(::testing::Message() << "mask " << mask << ", " << n << " samples, mode " << mode);
                std::vector<T> x(n), line;
                for (T &v : x) v = T(int(rng() % 200) - (std::is_unsigned_v<T> ? 0 : 100));
                if (mode == 1)
                    for (int k = 0; k + 1 < (mask % 2 ? mask : mask - 1); ++k) line.push_back(T(int(rng() % 50)));
                int size = 0;
                ASSERT_EQ(ippsFilterMedianGetBufferSize(mask, type, &size), ippStsNoErr);
                Block buf(size);
                std::vector<T> y(x), last(size_t(mask), T(0));
                const T *src = mode == 2 ? y.data() : x.data();
                const IppStatus st = filter(src, y.data(), int(n), mask, line.empty() ? nullptr : line.data(),
                                            last.data(), buf.p());
                ASSERT_EQ(st, mask % 2 ? ippStsNoErr : ippStsEvenMedianMaskSize);
                ASSERT_EQ(y, NaiveMedian(x, mask, line));
                const int m = mask % 2 ? mask : mask - 1;
                std::vector<T> ext = line.empty() ? std::vector<T>(size_t(m - 1), x[0]) : line;
                ext.insert(ext.end(), x.begin(), x.end());
                EXPECT_TRUE(std::equal(ext.end() - (m - 1), ext.end(), last.begin()));
            }
    // A mask far beyond the networks: the sorted window.
    std::vector<T> x(5000);
    for (T &v : x) v = T(int(rng() % 120));
    int size = 0;
    ASSERT_EQ(ippsFilterMedianGetBufferSize(101, type, &size), ippStsNoErr);
    Block buf(size);
    std::vector<T> y(x.size());
    ASSERT_EQ(filter(x.data(), y.data(), int(x.size()), 101, nullptr, nullptr, buf.p()), ippStsNoErr);
    EXPECT_EQ(y, NaiveMedian(x, 101, {}));
}

TEST_P(KernelsFilter, MedianMatchesASortOfEveryWindowAtEveryMaskAndType)
{
    CheckMedian<Ipp8u>(ippsFilterMedian_8u, ipp8u);
    CheckMedian<Ipp16s>(ippsFilterMedian_16s, ipp16s);
    CheckMedian<Ipp32s>(ippsFilterMedian_32s, ipp32s);
    CheckMedian<Ipp32f>(ippsFilterMedian_32f, ipp32f);
    CheckMedian<Ipp64f>(ippsFilterMedian_64f, ipp64f);
}

TEST(KernelsFilterErrors, StatusesOfTheMedian)
{
    int size = 0;
    EXPECT_EQ(ippsFilterMedianGetBufferSize(0, ipp32f, &size), ippStsMaskSizeErr);
    EXPECT_EQ(ippsFilterMedianGetBufferSize(3, ipp64s, &size), ippStsDataTypeErr);
    ASSERT_EQ(ippsFilterMedianGetBufferSize(3, ipp32f, &size), ippStsNoErr);
    Block buf(size);
    float x[3] = {3, 1, 2};
    EXPECT_EQ(ippsFilterMedian_32f(x, x, 3, 0, nullptr, nullptr, buf.p()), ippStsMaskSizeErr);
    EXPECT_EQ(ippsFilterMedian_32f(x, x, 0, 3, nullptr, nullptr, buf.p()), ippStsSizeErr);
    EXPECT_EQ(ippsFilterMedian_32f(x, x, 3, 3, nullptr, nullptr, nullptr), ippStsNullPtrErr);
}

}  // namespace
