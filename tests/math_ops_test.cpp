// Unary math and normalisation exports: the frame's order of checks, the
// dispatch, and that each export computes its own function.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using orbhost::CallResult;
using orbhost::ErrorMode;
using orbhost::Host;
using orbhost::Value;
using orbtest::contents;
using orbtest::float4;
using orbtest::float8;

namespace {

using ExportFn = HostValue (*)(HostCallbacks, ArgSeq);

struct Unary {
    const char *name;
    ExportFn fn;
    double (*ref)(double);
    bool complex;
};

double sqr(double x) { return x * x; }

const Unary kUnary[] = {
    {"orbAbs", orbAbs, [](double x) { return std::fabs(x); }, false},
    {"orbSqr", orbSqr, sqr, true},
    {"orbSqrt", orbSqrt, [](double x) { return std::sqrt(x); }, true},
    {"orbExp", orbExp, [](double x) { return std::exp(x); }, false},
    {"orbLn", orbLn, [](double x) { return std::log(x); }, false},
    {"orbArctan", orbArctan, [](double x) { return std::atan(x); }, false},
};

TEST(MathOps, EachExportComputesItsFunctionInBothPrecisions)
{
    const std::vector<double> x = {0.5, 2.0, 3.25, 10.0, 0.125};
    for (const Unary &u : kUnary) {
        SCOPED_TRACE(u.name);
        Host h;
        Value out8 = h.rtable1(DT_FLOAT8, 5), out4 = h.rtable1(DT_FLOAT4, 5);
        CallResult r = h.call(u.fn, {out8, float8(h, x)});
        ASSERT_FALSE(r.raised) << r.error;
        EXPECT_EQ(r.result, out8);
        std::vector<double> got = contents<double>(h, out8);
        std::vector<float> x4(x.begin(), x.end());
        r = h.call(u.fn, {out4, float4(h, x4)});
        ASSERT_FALSE(r.raised) << r.error;
        std::vector<float> got4 = contents<float>(h, out4);
        for (size_t i = 0; i < x.size(); ++i) {
            EXPECT_NEAR(got[i], u.ref(x[i]), 1e-15 * std::fabs(u.ref(x[i])));
            EXPECT_NEAR(got4[i], u.ref(x[i]), 1e-6 * std::fabs(u.ref(x[i])));
        }
    }
}

TEST(MathOps, ComplexOnlyForSquareAndSquareRoot)
{
    for (const Unary &u : kUnary) {
        SCOPED_TRACE(u.name);
        Host h;
        Value out = h.rtable1(DT_COMPLEX8, 2);
        Value in = orbtest::complex8(h, {{3, 4}, {-4, 0}});
        std::string before = orbtest::bytes(h, out);
        CallResult r = h.call(u.fn, {out, in});
        if (!u.complex) {
            EXPECT_EQ(r.error, "datatype not supported");
            EXPECT_EQ(orbtest::bytes(h, out), before);
            continue;
        }
        ASSERT_FALSE(r.raised) << r.error;
        std::vector<Ipp64fc> z = contents<Ipp64fc>(h, out);
        if (u.fn == orbSqr) {
            EXPECT_EQ(z[0].re, -7.0);
            EXPECT_EQ(z[0].im, 24.0);
        } else {
            EXPECT_NEAR(z[0].re, 2.0, 1e-15);
            EXPECT_NEAR(z[0].im, 1.0, 1e-15);
            EXPECT_NEAR(z[1].re, 0.0, 1e-15);
            EXPECT_NEAR(z[1].im, 2.0, 1e-15);
        }
    }
}

TEST(MathOps, ArityComesBeforeAnyArgumentIsLookedAt)
{
    Host h;
    h.resetCallbackCounts();
    CallResult r = h.call(orbExp, {h.integer(1), h.integer(2), h.integer(3)});
    EXPECT_EQ(r.error, "expecting two arguments, but received 3");
    EXPECT_EQ(h.callbackCalls(HOSTPOS_IS_RTABLE), 0);
    h.setErrorMode(ErrorMode::Return);
    r = h.call(orbAbs, {h.integer(1)});
    EXPECT_EQ(r.error, "expecting two arguments, but received 1");
    EXPECT_EQ(r.result, 0u);
}

TEST(MathOps, ChecksOfTheOperands)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT4, 3);
    std::string before = orbtest::bytes(h, out);

    Value in8 = float8(h, {1, 2, 3});
    EXPECT_EQ(h.call(orbSqrt, {out, in8}).error,
              "expecting an rtable with datatype = float[4], but received " + h.print(in8));
    EXPECT_EQ(h.call(orbSqrt, {out, float4(h, {1, 2})}).error, "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbSqrt, {h.rtable1(DT_INT4, 3), in8}).error, "datatype not supported");
    EXPECT_EQ(h.call(orbLn, {h.name("y"), in8}).error, "expecting an rtable, but received y");
    EXPECT_EQ(orbtest::bytes(h, out), before);

    // Returning raises: the output comes back untouched, without a computation.
    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.call(orbAbs, {out, float4(h, {-1, -2})});
    EXPECT_EQ(r.result, out);
    EXPECT_EQ(r.errors.size(), 1u);
    EXPECT_EQ(orbtest::bytes(h, out), before);
    r = h.call(orbAbs, {h.rtable1(DT_INT8, 1), h.rtable1(DT_INT8, 1)});
    EXPECT_EQ(r.errors, std::vector<std::string>{"datatype not supported"});
}

TEST(MathOps, EmptyRTablesEndInTheBackendSizeError)
{
    Host h;
    CallResult r = h.call(orbAbs, {h.rtable1(DT_FLOAT8, 0), h.rtable1(DT_FLOAT8, 0)});
    EXPECT_EQ(r.error, std::string("IPP Error: ") + ippGetStatusString(ippStsSizeErr));
    r = h.call(orbNormalise, {h.rtable1(DT_FLOAT8, 0), h.rtable1(DT_FLOAT8, 0), h.integer(0), h.integer(1)});
    EXPECT_EQ(r.error, std::string("IPP Error: ") + ippGetStatusString(ippStsSizeErr));
}

TEST(MathOps, DomainWarningsPassSilently)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 2);
    CallResult r = h.call(orbSqrt, {out, float8(h, {-4, 9})});
    ASSERT_FALSE(r.raised) << r.error;
    std::vector<double> y = contents<double>(h, out);
    EXPECT_TRUE(std::isnan(y[0]));
    EXPECT_EQ(y[1], 3.0);
    r = h.call(orbLn, {out, float8(h, {0, -1})});
    ASSERT_FALSE(r.raised) << r.error;
    y = contents<double>(h, out);
    EXPECT_EQ(y[0], -HUGE_VAL);
    EXPECT_TRUE(std::isnan(y[1]));
}

TEST(MathOps, NormaliseSubtractsThenDivides)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 3);
    CallResult r = h.call(orbNormalise, {out, float8(h, {1, 5, -3}), h.float64(1.0), h.integer(2)});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(contents<double>(h, out), (std::vector<double>{0.0, 2.0, -2.0}));
}

TEST(MathOps, NormaliseKeepsItsOwnOrder)
{
    Host h;
    Value in = float8(h, {1, 2});
    // Wrong count: the count is asked for a second time to report it.
    h.resetCallbackCounts();
    CallResult r = h.call(orbNormalise, {in, in});
    EXPECT_EQ(r.error, "expecting four arguments, but received 2");
    EXPECT_EQ(h.callbackCalls(HOSTPOS_NUM_ARGS), 2);

    Value out4 = h.rtable1(DT_FLOAT4, 2);
    EXPECT_EQ(h.call(orbNormalise, {out4, in, h.integer(0), h.integer(1)}).error,
              "expecting an rtable with datatype = float[8], but received " + h.print(out4));
    // Both scalars are read before the lengths are compared.
    Value out3 = h.rtable1(DT_FLOAT8, 3);
    EXPECT_EQ(h.call(orbNormalise, {out3, in, h.name("a"), h.integer(1)}).error,
              "expecting a numeric value, but received a");
    EXPECT_EQ(h.call(orbNormalise, {out3, in, h.integer(0), h.integer(1)}).error,
              "rtables must have the same number of elements");
}

TEST(MathOps, NormaliseByZeroIsABackendError)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 2);
    CallResult r = h.call(orbNormalise, {out, float8(h, {1, 2}), h.integer(0), h.integer(0)});
    EXPECT_EQ(r.error, std::string("IPP Error: ") + ippGetStatusString(ippStsDivByZeroErr));
}

}  // namespace
