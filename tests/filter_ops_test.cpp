// Filter exports: every message, the option words, the kept quirks, and
// results against direct computations.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using namespace orbtest;

namespace {

using F = std::vector<float>;

// An error raised by a call, through the stand-in host.
std::string raised(Host &h, ExportFn fn, const std::vector<Value> &args) { return h.call(fn, args).error; }

TEST(FilterOps, EveryMessageOfTheFirExports)
{
    Host h;
    Value y = h.rtable1(DT_FLOAT8, 4), x = float8(h, {1, 2, 3, 4}), t = float8(h, {1, 2, 3});
    Value f = h.float64(0.2), hann = h.string("hann"), yes = h.string("true");
    const std::string before = bytes(h, y);
    const struct { ExportFn fn; std::vector<Value> args; std::string want; } cases[] = {
        {orbFIR, {y, x, t, float8(h, {0, 0}), h.integer(4)}, "fourth argument must have 3 elements, but has 2"},
        {orbFIR, {y, float8(h, {1, 2}), t, t, h.integer(4)}, "first two rtables must have the same number of elements"},
        {orbFIR, {y, x, t, t, h.float64(1.5)}, "expecting a 32-bit integer, but received 1.5"},
        {orbFIR, {y, x, t, t, h.integer(0)}, ippError(ippStsSizeErr)},
        {orbFIRGenLowPass, {y, f, hann, yes}, ippError(ippStsIIRGenOrderErr)},  // fewer than five taps
        {orbFIRGenLowPass, {h.rtable1(DT_FLOAT8, 5), h.float64(0.6), hann, yes}, ippError(ippStsSizeErr)},
        {orbFIRGenHighPass, {y, h.name("c"), h.integer(3), h.name("x")}, "expecting a numeric value, but received c"},
        {orbFIRGenBandPass, {y, f, f, h.integer(3), h.name("x")}, "invalid window type: 3"},
        {orbFIRGenBandStop, {y, f, f, hann, h.name("x")}, "expecting a true/false value, but received x"},
    };
    for (const auto &c : cases) EXPECT_EQ(raised(h, c.fn, c.args), c.want);
    EXPECT_EQ(bytes(h, y), before);

    // Window words in any case, as names or strings; the flag a string, exactly.
    Value taps = h.rtable1(DT_FLOAT8, 7);
    for (Value w : {h.name("Hann"), h.string("HAMMING"), h.name("BlackMan"), h.string("bartlett")})
        EXPECT_FALSE(h.call(orbFIRGenLowPass, {taps, f, w, yes}).raised) << h.print(w);
    for (const char *w : {"hanning", "rect"}) {
        Value v = h.string(w);
        EXPECT_EQ(raised(h, orbFIRGenLowPass, {taps, f, v, yes}), std::string("invalid window type: ") + w);
    }
    for (const char *word : {"true", "True", "FALSE"}) {
        Value flag = std::string(word) == "true" ? h.name(word) : h.string(word);
        EXPECT_EQ(raised(h, orbFIRGenLowPass, {taps, f, hann, flag}),
                  std::string("expecting a true/false value, but received ") + word);
    }
}

TEST(FirOps, FiltersFromTheDelayLineAndLeavesItUnchanged)
{
    Host h;
    const D taps = {0.5, -1, 2}, line = {7, 8, 9}, signal = {1, 2, 3, 4, 5};
    Value dly = float8(h, line), y = float8(h, {0, 0, 0, 0, 100});
    // Four samples asked for: the fifth output keeps its value. The earlier
    // samples are the delay line's first tapsLen - 1 values, oldest first.
    EXPECT_EQ(written<double>(h, orbFIR, {y, float8(h, signal), float8(h, taps), dly, h.integer(4)}),
              (D{0.5 * 1 - 8 + 2 * 7, 0.5 * 2 - 1 + 2 * 8, 0.5 * 3 - 2 + 2 * 1, 0.5 * 4 - 3 + 2 * 2, 100}));
    EXPECT_EQ(contents<double>(h, dly), line);
    // More samples than the rtables hold: only theirs are filtered.
    Value z = h.rtable1(DT_FLOAT8, 2);
    EXPECT_EQ(written<double>(h, orbFIR, {z, float8(h, {1, 1}), float8(h, {1, 1}), float8(h, {0, 0}), h.integer(100)}),
              (D{1, 2}));
}

TEST(FirOps, DesignedTapsAreNormalisedOnRequest)
{
    Host h;
    Value taps = h.rtable1(DT_FLOAT8, 21);
    D unit = written<double>(h, orbFIRGenLowPass, {taps, h.float64(0.1), h.name("hamming"), h.string("true")});
    double sum = 0;
    for (double v : unit) sum += v;
    EXPECT_NEAR(sum, 1, 1e-12);
    D raw = written<double>(h, orbFIRGenLowPass, {taps, h.float64(0.1), h.name("hamming"), h.string("false")});
    EXPECT_NEAR(raw[10], 0.2, 1e-15);  // the centre tap: 2 fc times the window's 1
    // Band-pass and band-stop read two frequencies.
    D pass = written<double>(h, orbFIRGenBandPass, {taps, h.float64(0.1), h.float64(0.2), h.name("hann"), h.string("false")});
    D stop = written<double>(h, orbFIRGenBandStop, {taps, h.float64(0.1), h.float64(0.2), h.name("hann"), h.string("false")});
    EXPECT_NEAR(pass[10] + stop[10], 1, 1e-15);
}

TEST(FirOps, LmsChecksReadsTheSeventhPositionAndAdapts)
{
    Host h;
    Value four = h.rtable1(DT_FLOAT4, 2);
    const struct { std::vector<Value> args; std::string want; } cases[] = {
        {{four, float4(h, {1, 2}), float4(h, {1, 0}), float4(h, {0, 0}), float4(h, {0, 0, 0}), h.integer(0), h.float64(0.25)},
         "delay line array must have 4 elements, but has 3"},
        {{four, float4(h, {1, 2}), float4(h, {1, 0}), float4(h, {0}), float4(h, {0, 0}), h.integer(0), h.float64(0.25)},
         "first four rtables must have the same number of elements"},
        {{four, float4(h, {1, 2}), float4(h, {1, 0}), float4(h, {0, 0}), float4(h, {0, 0, 0, 0}), h.integer(2), h.float64(0.25)},
         ippError(ippStsDlyLineIndexErr)},
    };
    for (const auto &c : cases) {
        h.forceNumArgs(6);
        EXPECT_EQ(raised(h, orbFIRLMS, c.args), c.want);
        h.clearForcedNumArgs();
    }
    // Six arguments: the step's position holds nothing numeric.
    Value taps = float4(h, {0, 0}), line = float4(h, {0, 0, 0, 0});
    std::vector<Value> args = {four, float4(h, {1, 2}), float4(h, {1, 0}), taps, line, h.integer(0)};
    EXPECT_EQ(raised(h, orbFIRLMS, args).rfind("expecting a numeric value", 0), 0u);
    // With the step there: y0 = 0, the taps move by 2 mu e x, y1 = 0.5 * 2.
    args.push_back(h.float64(0.25));
    h.forceNumArgs(6);
    EXPECT_EQ(written<float>(h, orbFIRLMS, args), (F{0, 1}));
    h.clearForcedNumArgs();
    EXPECT_EQ(contents<float>(h, taps), (F{0, 0}));  // read only
    EXPECT_EQ(raised(h, orbFIRLMS, {four, four, four, four, line, h.integer(0), h.float64(0.1)}),
              "expecting six arguments, but received 7");
}

TEST(IirOps, FiltersEachDatatypeNormalisedByA0)
{
    Host h;
    // y = x + 0.5 y[n-1], given with a0 = 2.
    EXPECT_EQ(written<double>(h, orbIIR, {h.rtable1(DT_FLOAT8, 3), float8(h, {1, 0, 0}), h.integer(1),
                                          float8(h, {2, 0, 2, -1}), float8(h, {0})}),
              (D{1, 0.5, 0.25}));
    EXPECT_EQ(written<float>(h, orbIIR, {h.rtable1(DT_FLOAT4, 3), float4(h, {1, 0, 0}), h.integer(1),
                                         float4(h, {2, 0, 2, -1}), float4(h, {2})}),
              (F{3, 1.5, 0.75}));  // the delay line adds 2 to the first output
    Value out = h.rtable1(DT_COMPLEX8, 2);
    ASSERT_FALSE(h.call(orbIIR, {out, complex8(h, {{0, 1}, {0, 0}}), h.integer(1),
                                 complex8(h, {{1, 0}, {0, 0}, {1, 0}, {0, -1}}), complex8(h, {{0, 0}})})
                     .raised);
    EXPECT_EQ(complexes(h, out), (Z{{0, 1}, {-1, 0}}));  // y1 = i y0

    Value y = h.rtable1(DT_FLOAT8, 3), x = float8(h, {1, 2, 3});
    const struct { std::vector<Value> args; std::string want; } cases[] = {
        {{y, x, h.integer(2), float8(h, {1, 2, 3, 4, 5, 6, 7}), float8(h, {0, 0})},
         "taps array must have 6 elements, but has 7 elements"},
        {{y, x, h.integer(2), float8(h, {1, 2, 3, 4, 5, 6}), float8(h, {0, 0, 0})},
         "delay line array must have 2 elements, but has 3"},
        {{y, float8(h, {1}), h.integer(2), float8(h, {1, 2, 3, 4, 5, 6}), float8(h, {0, 0})},
         "first two rtables must have the same number of elements"},
        {{y, x, h.integer(1), float8(h, {1, 2, 0, 1}), float8(h, {0})}, ippError(ippStsDivByZeroErr)},
        {{h.rtable1(DT_INT4, 3), x, h.integer(1), x, x}, "datatype not supported"},
    };
    for (const auto &c : cases) EXPECT_EQ(raised(h, orbIIR, c.args), c.want);
}

TEST(IirOps, DesignChecksItsWordsAndWritesOnly2NPlus2Taps)
{
    Host h;
    Value taps = float8(h, {9, 9, 9, 9, 9, 9, 9, 9});
    D t = written<double>(h, orbIIRGenLowPass, {taps, h.float64(0.1), h.float64(0.5), h.integer(2), h.name("butterworth")});
    EXPECT_EQ(t[3], 1);                                          // a0
    EXPECT_NEAR((t[0] + t[1] + t[2]) / (t[3] + t[4] + t[5]), 1, 1e-12);  // unit gain at DC
    EXPECT_EQ(t[6], 9);
    EXPECT_EQ(t[7], 9);
    t = written<double>(h, orbIIRGenHighPass, {taps, h.float64(0.1), h.float64(0.5), h.integer(3), h.string("CHEBYSHEV1")});
    EXPECT_NEAR((t[0] - t[1] + t[2] - t[3]) / (t[4] - t[5] + t[6] - t[7]), 1, 1e-12);  // odd order: 1 at Nyquist

    Value f = h.float64(0.1), r = h.float64(0.5), two = h.integer(2);
    Value cheby2 = h.string("Chebyshev2");
    const struct { std::vector<Value> args; std::string want; } cases[] = {
        {{taps, f, r, two, h.integer(3)}, "expecting a string, but received 3"},
        {{taps, f, r, two, cheby2}, "unexpected filter type name Chebyshev2"},
        {{float8(h, {0, 0, 0, 0, 0}), f, r, two, h.name("Butterworth")}, "taps array must have 6 elements, but has 5 elements"},
        {{taps, f, r, h.integer(-1), h.name("Butterworth")}, "expecting a non-negative integer, but received -1"},
        {{taps, f, h.float64(0), two, h.name("Chebyshev1")}, ippError(ippStsIIRPassbandRippleErr)},
        {{taps, h.float64(0.5), r, two, h.name("Butterworth")}, ippError(ippStsFilterFrequencyErr)},
        {{float8(h, std::vector<double>(30)), f, r, h.integer(13), h.name("Butterworth")}, ippError(ippStsIIRGenOrderErr)},
    };
    for (const auto &c : cases) EXPECT_EQ(raised(h, orbIIRGenLowPass, c.args), c.want);
}

TEST(FilterOps, DifferenceEquationExamplesAndChecks)
{
    Host h;
    const D x = {1, 2, 3, 4};
    const struct { D a, b, want; } cases[] = {
        {{5}, {1}, {1, 2, 3, 4}},          // a[0] is never read
        {{1}, {0, 1}, {0, 1, 2, 3}},       // a delay of one sample
        {{1, -1}, {1}, {1, 3, 6, 10}},     // the running sum
        {{1, 0.5}, {1, 0, 0, 0, 0, 9}, {1, 1.5, 2.25, 2.875}},  // taps beyond the signal are ignored
    };
    for (const auto &c : cases)
        EXPECT_EQ(written<double>(h, orbFilter, {h.rtable1(DT_FLOAT8, 4), float8(h, x), float8(h, c.a), float8(h, c.b)}),
                  c.want);
    Value same = float8(h, x);  // in place
    EXPECT_EQ(written<double>(h, orbFilter, {same, same, float8(h, {1, -1}), float8(h, {1})}), (D{1, 3, 6, 10}));
    EXPECT_EQ(raised(h, orbFilter, {same, float8(h, {1}), float8(h, {1}), float8(h, {1})}),
              "first two arguments must have the same number of elements");
    EXPECT_EQ(raised(h, orbFilter, {same, same, h.rtable1(DT_FLOAT8, 0), float8(h, {1})}),
              "third and fourth arguments must be non-empty rtables");
}

TEST(FilterOps, MedianOrdersSignedBytesAsUnsignedAndChecksItsArguments)
{
    Host h;
    // Trailing windows of three, src[0] repeated before the start: unsigned,
    // -1 is 255 and the last window (1, -1, 2) has the median 2.
    const std::vector<int8_t> bytesIn = {1, 1, -1, 2};
    EXPECT_EQ(written<int8_t>(h, orbMedianFilter, {h.rtable1(DT_INT1, 4), table(h, DT_INT1, bytesIn), h.integer(3)}),
              (std::vector<int8_t>{1, 1, 1, 2}));
    EXPECT_EQ(written<int16_t>(h, orbMedianFilter,
                               {h.rtable1(DT_INT2, 4), table(h, DT_INT2, std::vector<int16_t>{1, 1, -1, 2}), h.integer(3)}),
              (std::vector<int16_t>{1, 1, 1, 1}));
    // An even mask is reduced by one; its warning passes silently.
    EXPECT_EQ(written<double>(h, orbMedianFilter, {h.rtable1(DT_FLOAT8, 4), float8(h, {5, 1, 9, 3}), h.integer(4)}),
              (D{5, 5, 5, 3}));
    Value z = h.rtable1(DT_COMPLEX8, 4);
    EXPECT_EQ(raised(h, orbMedianFilter, {z, h.name("x"), h.integer(3)}), "datatype not supported");
    EXPECT_EQ(raised(h, orbMedianFilter, {h.rtable1(DT_INT8, 4), h.name("x"), h.integer(3)}), "datatype not supported");
    EXPECT_EQ(raised(h, orbMedianFilter, {h.rtable1(DT_FLOAT4, 4), float4(h, {1, 2}), h.integer(3)}),
              "rtables must have the same number of elements");
    EXPECT_EQ(raised(h, orbMedianFilter, {h.rtable1(DT_FLOAT4, 2), float4(h, {1, 2}), h.integer(0)}),
              ippError(ippStsMaskSizeErr));
    EXPECT_EQ(raised(h, orbMedianFilter, {z, z}), "expecting two or three arguments, but received 2");
}

}  // namespace
