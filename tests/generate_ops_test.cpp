// Generator exports: tone and triangle against their formulas, bit for bit,
// their parameter checks in order, and the backend-driven generators'
// dispatch and precisions. (Arity and datatype messages: the sweep.)
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using namespace orbtest;

namespace {

const double kTwoPi = 6.283185307179586, kPi = 3.141592653589793;

TEST(GenerateOps, ToneIsTheFormulaInThatOrder)
{
    Host h;
    const double m = 1.5, f = 0.123456, ph = 0.75;
    Value f8 = h.rtable1(DT_FLOAT8, 257), f4 = h.rtable1(DT_FLOAT4, 257), c8 = h.rtable1(DT_COMPLEX8, 257);
    auto args = [&](Value out) { return std::vector<Value>{out, h.float64(m), h.float64(f), h.float64(ph)}; };
    const D d = written<double>(h, orbGenerateTone, args(f8));
    const auto s = written<float>(h, orbGenerateTone, args(f4));
    written<Ipp64fc>(h, orbGenerateTone, args(c8));
    const Z z = complexes(h, c8);
    // Single precision: the arguments are read as floats and widened.
    const double m4 = float(m), f4v = float(f), ph4 = float(ph);
    for (int i = 0; i < 257; ++i) {
        const double t = (double(i) * kTwoPi) * f + ph, t4 = (double(i) * kTwoPi) * f4v + ph4;
        ASSERT_EQ(d[i], cos(t) * m) << i;
        ASSERT_EQ(z[i], std::complex<double>(cos(t) * m, sin(t) * m)) << i;
        ASSERT_EQ(s[i], float(cos(t4) * m4)) << i;
    }
    // Frequency and phase 0: the magnitude throughout.
    EXPECT_EQ(written<double>(h, orbGenerateTone, {h.rtable1(DT_FLOAT8, 3), h.float64(2.5), h.integer(0), h.integer(0)}),
              (D{2.5, 2.5, 2.5}));
}

// The literal reduction: subtract the period while above it, then add it
// while below zero.
double Wrap(double x)
{
    while (x > kTwoPi) x -= kTwoPi;
    while (x < 0) x += kTwoPi;
    return x;
}

TEST(GenerateOps, TriangleIsTheFormulaInThatOrder)
{
    Host h;
    // Long enough that t crosses many binades, where each subtraction rounds.
    const int n = 4000;
    const double m = 2.0, f = 0.4321, ph = 1.25, asym = -0.7;
    Value f8 = h.rtable1(DT_FLOAT8, n), c8 = h.rtable1(DT_COMPLEX8, n);
    auto args = [&](Value out) {
        return std::vector<Value>{out, h.float64(m), h.float64(f), h.float64(ph), h.float64(asym)};
    };
    const D d = written<double>(h, orbGenerateTriangle, args(f8));
    written<Ipp64fc>(h, orbGenerateTriangle, args(c8));
    const Z z = complexes(h, c8);
    const double hh = asym + kPi, step = f * kTwoPi;
    for (int i = 0; i < n; ++i) {
        const double x = Wrap(double(i) * step + ph), x2 = 2 * x;
        const double re = x > hh ? (kTwoPi + (hh - 2 * x)) / (hh - kTwoPi) : (hh - 2 * x) / hh;
        const double im = x2 <= kTwoPi - hh   ? x2 / (kTwoPi - hh)
                          : x2 <= kTwoPi + hh ? (kPi - x) * 2 / hh
                                              : -(x - kTwoPi) * 2 / (hh - kTwoPi);
        ASSERT_EQ(d[i], re * m) << i;
        ASSERT_EQ(z[i], std::complex<double>(re * m, im * m)) << i;
    }
    // Symmetric wave: +m at phase 0, -m at phase pi (a quarter period a step).
    Value two = h.rtable1(DT_FLOAT8, 3);
    EXPECT_EQ(written<double>(h, orbGenerateTriangle,
                              {two, h.float64(3), h.float64(0.25), h.integer(0), h.integer(0)}),
              (D{3, 0, -3}));
    // Asymmetry -pi is accepted; the division by zero it brings is unguarded.
    EXPECT_FALSE(h.call(orbGenerateTriangle, {two, h.float64(1), h.float64(0.1), h.integer(0), h.float64(-kPi)}).raised);
}

TEST(GenerateOps, ParameterChecksReportStatusesInOrder)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 4);
    const std::string before = bytes(h, out);
    auto tone = [&](double m, double f, double p) {
        return h.call(orbGenerateTone, {out, h.float64(m), h.float64(f), h.float64(p)}).error;
    };
    auto tri = [&](double m, double f, double p, double a) {
        return h.call(orbGenerateTriangle, {out, h.float64(m), h.float64(f), h.float64(p), h.float64(a)}).error;
    };
    EXPECT_EQ(tone(0, 0.5, kTwoPi), ippError(ippStsToneMagnErr));
    EXPECT_EQ(tone(1, -0.1, kTwoPi), ippError(ippStsToneFreqErr));
    EXPECT_EQ(tone(1, 0.5, -1), ippError(ippStsToneFreqErr));
    EXPECT_EQ(tone(1, 0.49, kTwoPi), ippError(ippStsTonePhaseErr));
    EXPECT_EQ(tone(1, 0.49, -0.1), ippError(ippStsTonePhaseErr));
    EXPECT_EQ(tri(-1, 0.5, kTwoPi, kPi), ippError(ippStsTrnglMagnErr));
    EXPECT_EQ(tri(1, 0.5, kTwoPi, kPi), ippError(ippStsTrnglFreqErr));
    EXPECT_EQ(tri(1, 0.2, kTwoPi, kPi), ippError(ippStsTrnglAsymErr));
    EXPECT_EQ(tri(1, 0.2, kTwoPi, -3.2), ippError(ippStsTrnglAsymErr));
    EXPECT_EQ(tri(1, 0.2, kTwoPi, 0), ippError(ippStsTrnglPhaseErr));
    EXPECT_EQ(bytes(h, out), before);

    // An empty output: no storage, or no elements.
    Value empty = h.rtable1(DT_FLOAT8, 0);
    const std::string e = h.call(orbGenerateTone, {empty, h.float64(0), h.float64(9), h.float64(9)}).error;
    EXPECT_TRUE(e == ippError(ippStsNullPtrErr) || e == ippError(ippStsSizeErr)) << e;
}

TEST(GenerateOps, ToneHintIsCheckedThenIgnored)
{
    Host h;
    Value a = h.rtable1(DT_FLOAT8, 5), b = h.rtable1(DT_FLOAT8, 5);
    std::vector<Value> base = {a, h.float64(1), h.float64(0.1), h.float64(0.2)};
    const D plain = written<double>(h, orbGenerateTone, base);
    EXPECT_EQ(written<double>(h, orbGenerateTone, {b, base[1], base[2], base[3], h.string("becareful")}), plain);
    EXPECT_EQ(h.call(orbGenerateTone, {b, base[1], base[2], base[3], h.string("GoFast")}).error,
              "expecting one of \"none\", \"gofast\" or \"becareful\", but received GoFast");
    // A sixth argument is not looked at.
    EXPECT_FALSE(h.call(orbGenerateTone, {b, base[1], base[2], base[3], h.name("none"), h.null()}).raised);
}

TEST(GenerateOps, NoiseRepeatsForASeedInEveryDatatype)
{
    Host h;
    for (ExportFn fn : {orbGenerateUniform, orbGenerateGaussian})
        for (int32_t code : {DT_FLOAT8, DT_FLOAT4, DT_INT2}) {
            Value a = h.rtable1(code, 50), b = h.rtable1(code, 50), c = h.rtable1(code, 50);
            ASSERT_FALSE(h.call(fn, {a, h.integer(-20), h.integer(20), h.integer(9)}).raised);
            ASSERT_FALSE(h.call(fn, {b, h.integer(-20), h.integer(20), h.integer(9)}).raised);
            ASSERT_FALSE(h.call(fn, {c, h.integer(-20), h.integer(20), h.integer(10)}).raised);
            EXPECT_EQ(bytes(h, a), bytes(h, b));
            EXPECT_NE(bytes(h, a), bytes(h, c));
        }
    Value u = h.rtable1(DT_INT2, 4);
    EXPECT_EQ(h.call(orbGenerateGaussian, {u, h.integer(0), h.integer(1), h.integer(-1)}).error,
              "expecting a non-negative integer, but received -1");
}

TEST(GenerateOps, JaehneAndSlopeDispatch)
{
    Host h;
    EXPECT_EQ(written<Ipp32s>(h, orbGenerateJaehne, {h.rtable1(DT_INT4, 2), h.integer(1000)}),
              (std::vector<Ipp32s>{0, 707}));  // 1000 sin(pi / 4)
    EXPECT_EQ(written<float>(h, orbGenerateSlope, {h.rtable1(DT_FLOAT4, 3), h.float64(1), h.float64(-0.5)}),
              (std::vector<float>{1, 0.5, 0}));
    EXPECT_EQ(written<Ipp32s>(h, orbGenerateSlope, {h.rtable1(DT_INT4, 3), h.float64(1e9), h.float64(0.5)}),
              (std::vector<Ipp32s>{1000000000, 1000000000, 1000000001}));
    // integer[2] ramps get single-precision parameters: 5 times 0.1f lies
    // above the tie that 5 times 0.1 would round down to even.
    EXPECT_EQ(written<Ipp16s>(h, orbGenerateSlope, {h.rtable1(DT_INT2, 6), h.integer(0), h.float64(0.1)}),
              (std::vector<Ipp16s>{0, 0, 0, 0, 0, 1}));

    EXPECT_EQ(h.call(orbGenerateJaehne, {h.rtable1(DT_FLOAT8, 2), h.float64(-1)}).error, ippError(ippStsJaehneErr));
}

}  // namespace
