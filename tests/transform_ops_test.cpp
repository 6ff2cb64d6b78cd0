// Transform exports: option words and their normalisations, the length and
// datatype rules of each form with their messages, split and interleaved
// forms agreeing, and the kept quirks (the split FFT of one element, the
// DCT's required hint, the analytic signal's inverted initialiser test, the
// Haar message naming the third rtable).
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "backend_hooks.h"
#include "support.h"

using namespace orbtest;

namespace {

Z naiveDFT(const Z &x, int sign)
{
    Z y(x.size());
    for (size_t k = 0; k < x.size(); ++k)
        for (size_t j = 0; j < x.size(); ++j)
            y[k] += x[j] * std::polar(1.0, sign * 2 * M_PI * double(j * k % x.size()) / double(x.size()));
    return y;
}

double distance(const Z &a, const Z &b)
{
    double d = 0;
    for (size_t i = 0; i < a.size(); ++i) d = std::max(d, std::abs(a[i] - b[i]));
    return d;
}

Value complexes8(Host &h, const Z &z)
{
    std::vector<Ipp64fc> v;
    for (auto c : z) v.push_back({c.real(), c.imag()});
    return complex8(h, v);
}

const Z kSignal = {{1, 0.5}, {2, -1}, {-3, 0}, {0.25, 4}, {5, 5}, {-1, -2}, {0, 1}, {7, -0.5}};

TEST(TransformOps, OptionWordsChooseTheNormalisation)
{
    Host h;
    Value x = complexes8(h, kSignal), y = h.rtable1(DT_COMPLEX8, 8), back = h.rtable1(DT_COMPLEX8, 8);
    const Z plain = naiveDFT(kSignal, -1);
    written<Ipp64fc>(h, orbFwdFFT, {y, x});
    EXPECT_LT(distance(complexes(h, y), plain), 1e-13);
    // invdivbyn leaves the forward transform as it is and divides the inverse.
    written<Ipp64fc>(h, orbFwdFFT, {y, x, h.string("invdivbyn")});
    EXPECT_LT(distance(complexes(h, y), plain), 1e-13);
    written<Ipp64fc>(h, orbInvFFT, {back, y, h.name("invdivbyn")});
    EXPECT_LT(distance(complexes(h, back), kSignal), 1e-14);
    // Case is ignored; the hint after the option is read too.
    written<Ipp64fc>(h, orbFwdDFT, {y, x, h.string("FwdDivByN"), h.name("becareful")});
    Z scaled = plain;
    for (auto &c : scaled) c /= 8.0;
    EXPECT_LT(distance(complexes(h, y), scaled), 1e-14);
    written<Ipp64fc>(h, orbFwdFFT, {y, x, h.name("SqrtLen"), h.name("gofast"), h.integer(7)});
    for (auto &c : scaled) c *= std::sqrt(8.0);
    EXPECT_LT(distance(complexes(h, y), scaled), 1e-13);

    const std::string before = bytes(h, y);
    EXPECT_EQ(h.call(orbFwdFFT, {y, x, h.name("sqrt")}).error, "unrecognised option name: sqrt");
    EXPECT_EQ(h.call(orbFwdDFT, {y, x, h.integer(3)}).error, "expecting a string, but received 3");
    EXPECT_EQ(h.call(orbInvDFT, {y, x, h.name("none"), h.name("fast")}).error,
              "expecting one of \"none\", \"gofast\" or \"becareful\", but received fast");
    EXPECT_EQ(bytes(h, y), before);  // errors leave the output alone
}

TEST(TransformOps, LengthAndDatatypeRulesOfEachForm)
{
    Host h;
    auto c8 = [&](int64_t n) { return h.rtable1(DT_COMPLEX8, n); };
    auto f8 = [&](int64_t n) { return float8(h, D(size_t(n), 1.0)); };
    const struct { ExportFn fn; std::vector<Value> args; std::string error; } rows[] = {
        {orbFwdFFT, {c8(6), c8(6)}, "rtable sizes must be a positive power of two"},
        {orbFwdDFT, {c8(6), c8(6)}, ""},
        {orbFwdFFT, {c8(1), c8(1)}, "rtables must have at least two elements"},
        {orbInvDFT, {c8(1), c8(1)}, "rtables must have at least two elements"},
        {orbFwdDFT, {c8(4), c8(5)}, "rtables must have the same number of elements"},
        {orbFwdFFTSplit, {f8(1), f8(1), f8(1), f8(1)}, ""},  // order 0
        {orbInvFFTSplit, {f8(3), f8(3), f8(3), f8(3)}, "rtable sizes must be a positive power of two"},
        {orbFwdDFTSplit, {f8(3), f8(3), f8(3), f8(2)}, "rtables must have the same number of elements"},
        {orbFwdDFTSplit, {f8(2), f8(2), float4(h, {1, 2}), f8(2)}, "rtables must have the same datatype"},
        {orbFwdDFTSplit, {h.rtable1(DT_INT4, 2), h.rtable1(DT_INT4, 2), h.rtable1(DT_INT4, 2), h.rtable1(DT_INT4, 2)},
         "datatype not supported"},
        {orbFwdDFTSplit, {f8(0), f8(0), f8(0), f8(0)}, ippError(ippStsSizeErr)},
    };
    for (const auto &r : rows) {
        CallResult got = h.call(r.fn, r.args);
        EXPECT_EQ(got.error, r.error) << h.print(r.args[0]);
    }
    // The split forms return both outputs; one element transforms to itself.
    Value re = f8(1), im = f8(1);
    CallResult got = h.call(orbFwdFFTSplit, {re, im, float8(h, {3}), float8(h, {4})});
    EXPECT_EQ(h.elements(got.result), (std::vector<Value>{re, im}));
    EXPECT_EQ(contents<double>(h, re), D{3});
    EXPECT_EQ(contents<double>(h, im), D{4});
}

TEST(TransformOps, SplitFormsAgreeWithTheInterleavedOnes)
{
    Host h;
    const Z x(kSignal.begin(), kSignal.begin() + 5);
    D re, im;
    std::vector<float> re4, im4;
    for (auto c : x) re.push_back(c.real()), im.push_back(c.imag()), re4.push_back(float(c.real())), im4.push_back(float(c.imag()));
    Value y = h.rtable1(DT_COMPLEX8, 5);
    written<Ipp64fc>(h, orbInvDFT, {y, complexes8(h, x), h.name("invdivbyn")});
    const Z want = complexes(h, y);
    Value r8 = h.rtable1(DT_FLOAT8, 5), i8 = h.rtable1(DT_FLOAT8, 5), r4 = h.rtable1(DT_FLOAT4, 5), i4 = h.rtable1(DT_FLOAT4, 5);
    ASSERT_FALSE(h.call(orbInvDFTSplit, {r8, i8, float8(h, re), float8(h, im), h.name("invdivbyn")}).raised);
    ASSERT_FALSE(h.call(orbInvDFTSplit, {r4, i4, float4(h, re4), float4(h, im4), h.name("invdivbyn")}).raised);
    Z got8, got4;
    for (int k = 0; k < 5; ++k) {
        got8.emplace_back(contents<double>(h, r8)[k], contents<double>(h, i8)[k]);
        got4.emplace_back(contents<float>(h, r4)[k], contents<float>(h, i4)[k]);
    }
    EXPECT_LT(distance(got8, want), 1e-14);
    EXPECT_LT(distance(got4, want), 1e-5);
}

TEST(TransformOps, CosineTransformNeedsItsHintBeforeTheDatatype)
{
    Host h;
    Value i4 = h.rtable1(DT_INT4, 2);
    EXPECT_EQ(h.call(orbFwdDCT, {i4, i4, h.name("quick")}).error,
              "expecting one of \"none\", \"gofast\" or \"becareful\", but received quick");
    EXPECT_EQ(h.call(orbFwdDCT, {i4, i4, h.name("none")}).error, "datatype not supported");
    Value single = float4(h, {1});
    EXPECT_EQ(h.call(orbInvDCT, {float8(h, {1}), single, h.name("none")}).error, wrongType(h, "float[8]", single));

    // A constant has its first coefficient alone; the inverse brings it back.
    Value y = h.rtable1(DT_FLOAT8, 4), back = h.rtable1(DT_FLOAT8, 4);
    EXPECT_EQ(written<double>(h, orbFwdDCT, {y, float8(h, {1, 1, 1, 1}), h.name("none")}), (D{2, 0, 0, 0}));
    written<double>(h, orbInvDCT, {back, y, h.name("gofast")});
    EXPECT_EQ(contents<double>(h, back), (D{1, 1, 1, 1}));
    Value y4 = h.rtable1(DT_FLOAT4, 2);
    EXPECT_EQ(written<float>(h, orbFwdDCT, {y4, float4(h, {3, 1}), h.name("becareful")}),
              (std::vector<float>{float(4 / std::sqrt(2.0)), float(2 / std::sqrt(2.0))}));
}

TEST(TransformOps, AnalyticSignalEndsEverySuccessfulInitialisationWithStatusZero)
{
    Host h;
    int64_t live = orbBackendLiveAllocations();
    Value y = h.rtable1(DT_COMPLEX8, 4);
    const std::string before = bytes(h, y);
    EXPECT_EQ(h.call(orbHilbert, {y, float4(h, {1, 2, 3, 4})}).error, ippError(ippStsNoErr));
    EXPECT_EQ(h.call(orbHilbert, {y, float4(h, {1, 2, 3, 4}), h.name("becareful")}).error,
              ippError(ippStsNoErr));
    EXPECT_EQ(bytes(h, y), before);
    EXPECT_EQ(orbBackendLiveAllocations(), live);  // the temporary array too
    EXPECT_EQ(h.call(orbHilbert, {y, float4(h, {1, 2})}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbHilbert, {h.rtable1(DT_COMPLEX8, 0), h.rtable1(DT_FLOAT4, 0)}).error,
              ippError(ippStsSizeErr));
}

TEST(TransformOps, GoertzelGivesOneComplexBin)
{
    Host h;
    auto bin = [&](Value signal, Value freq) {
        CallResult r = h.call(orbGoertz, {signal, freq});
        EXPECT_FALSE(r.raised) << r.error;
        double re = NAN, im = NAN;
        std::sscanf(h.print(r.result).c_str(), "%lf%lfi", &re, &im);
        return std::complex<double>(re, im);
    };
    // 1 - 2i - 3 + 4i at a quarter turn per sample.
    EXPECT_LT(std::abs(bin(float8(h, {1, 2, 3, 4}), h.float64(0.25)) - std::complex<double>(-2, 2)), 1e-12);
    EXPECT_LT(std::abs(bin(float4(h, {1, 2, 3, 4}), h.float64(0.25)) - std::complex<double>(-2, 2)), 1e-5);
    const Z dft = naiveDFT(kSignal, -1);
    EXPECT_LT(std::abs(bin(complexes8(h, kSignal), h.float64(0.375)) - dft[3]), 1e-12);
    EXPECT_EQ(h.call(orbGoertz, {h.rtable1(DT_INT2, 4), h.float64(0.25)}).error, "datatype not supported");
    EXPECT_EQ(h.call(orbGoertz, {float8(h, {1}), h.float64(1.5)}).error, ippError(ippStsRelFreqErr));
}

TEST(TransformOps, HaarHalvesAndTheThirdRtableMessage)
{
    Host h;
    Value low = h.rtable1(DT_FLOAT8, 4), high = h.rtable1(DT_FLOAT8, 4), x = float8(h, {1, 3, 10, 6, 0, 0, 2, 1});
    written<double>(h, orbFwdHaarWT, {low, high, x});
    EXPECT_EQ(contents<double>(h, low), (D{2, 8, 0, 1.5}));
    EXPECT_EQ(contents<double>(h, high), (D{1, -2, 0, -0.5}));
    Value back = h.rtable1(DT_FLOAT8, 8);
    EXPECT_EQ(written<double>(h, orbInvHaarWT, {back, low, high}), contents<double>(h, x));

    // Integers: halves rounded to even, scale factor 0.
    Value l2 = h.rtable1(DT_INT2, 2), h2 = h.rtable1(DT_INT2, 2);
    written<int16_t>(h, orbFwdHaarWT, {l2, h2, table<int16_t>(h, DT_INT2, {1, 2, 3, 6})});
    EXPECT_EQ(contents<int16_t>(h, l2), (std::vector<int16_t>{2, 4}));
    EXPECT_EQ(contents<int16_t>(h, h2), (std::vector<int16_t>{0, 2}));

    const std::string third = "third rtable must have twice the number of elements as have the first two rtables";
    EXPECT_EQ(h.call(orbFwdHaarWT, {low, high, float8(h, D(9, 1.0))}).error, third);
    EXPECT_EQ(h.call(orbInvHaarWT, {back, low, h.rtable1(DT_FLOAT8, 3)}).error, third);
    EXPECT_EQ(h.call(orbInvHaarWT, {h.rtable1(DT_INT4, 8), low, high}).error, "datatype not supported");
    Value high4 = h.rtable1(DT_FLOAT4, 4);
    EXPECT_EQ(h.call(orbFwdHaarWT, {low, high4, x}).error, wrongType(h, "float[8]", high4));
}

}  // namespace
