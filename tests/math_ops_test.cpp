// Unary math and normalisation exports: the frame's order of checks, the
// dispatch, and that each export calls its own function.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using namespace orbtest;

namespace {

// Accuracy is the kernel tests' business; these check that each export
// reaches its own function in every datatype it takes.
TEST(MathOps, EachExportCallsItsFunctionForEachDatatype)
{
    const struct {
        const char *name;
        ExportFn fn;
        double (*ref)(double);
        std::complex<double> of34i;  // of 3+4i; NaN for a real-only export
    } cases[] = {
        {"orbAbs", orbAbs, [](double x) { return std::fabs(x); }, NAN},
        {"orbSqr", orbSqr, [](double x) { return x * x; }, {-7, 24}},
        {"orbSqrt", orbSqrt, [](double x) { return std::sqrt(x); }, {2, 1}},
        {"orbExp", orbExp, [](double x) { return std::exp(x); }, NAN},
        {"orbLn", orbLn, [](double x) { return std::log(x); }, NAN},
        {"orbArctan", orbArctan, [](double x) { return std::atan(x); }, NAN},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Host h;
        EXPECT_NEAR(written<double>(h, c.fn, {h.rtable1(DT_FLOAT8, 1), float8(h, {0.5})})[0], c.ref(0.5), 1e-6);
        EXPECT_NEAR(written<float>(h, c.fn, {h.rtable1(DT_FLOAT4, 1), float4(h, {0.5f})})[0], c.ref(0.5), 1e-6);
        Value outz = h.rtable1(DT_COMPLEX8, 1);
        std::string before = bytes(h, outz);
        CallResult r = h.call(c.fn, {outz, complex8(h, {{3, 4}})});
        if (std::isnan(c.of34i.real())) {
            EXPECT_EQ(r.error, "datatype not supported");
            EXPECT_EQ(bytes(h, outz), before);
        } else {
            EXPECT_FALSE(r.raised) << r.error;
            EXPECT_NEAR(std::abs(complexes(h, outz)[0] - c.of34i), 0, 1e-12);
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
    std::string before = bytes(h, out);

    Value in8 = float8(h, {1, 2, 3});
    EXPECT_EQ(h.call(orbSqrt, {out, in8}).error, wrongType(h, "float[4]", in8));
    EXPECT_EQ(h.call(orbSqrt, {out, float4(h, {1, 2})}).error, "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbLn, {h.name("y"), in8}).error, "expecting an rtable, but received y");
    EXPECT_EQ(bytes(h, out), before);

    // Returning raises: the output comes back untouched, without a computation.
    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.call(orbAbs, {out, float4(h, {-1, -2})});
    EXPECT_EQ(r.result, out);
    EXPECT_EQ(r.errors.size(), 1u);
    EXPECT_EQ(bytes(h, out), before);
    r = h.call(orbAbs, {h.rtable1(DT_INT8, 1), h.rtable1(DT_INT8, 1)});
    EXPECT_EQ(r.errors, std::vector<std::string>{"datatype not supported"});
}

TEST(MathOps, BackendStatusesErrorsRaiseAndWarningsPass)
{
    Host h;
    Value e = h.rtable1(DT_FLOAT8, 0);
    EXPECT_EQ(h.call(orbAbs, {e, e}).error, ippError(ippStsSizeErr));
    EXPECT_EQ(h.call(orbNormalise, {e, e, h.integer(0), h.integer(1)}).error, ippError(ippStsSizeErr));
    Value out = h.rtable1(DT_FLOAT8, 2);
    EXPECT_EQ(h.call(orbNormalise, {out, float8(h, {1, 2}), h.integer(0), h.integer(0)}).error,
              ippError(ippStsDivByZeroErr));
    // Domain warnings: the results are written and nothing is raised.
    CallResult r = h.call(orbSqrt, {out, float8(h, {-4, 9})});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_TRUE(std::isnan(contents<double>(h, out)[0]));
    EXPECT_EQ(contents<double>(h, out)[1], 3.0);
    EXPECT_FALSE(h.call(orbLn, {out, float8(h, {0, -1})}).raised);
}

TEST(MathOps, NormaliseSubtractsThenDividesAndKeepsItsOwnOrder)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 3);
    CallResult r = h.call(orbNormalise, {out, float8(h, {1, 5, -3}), h.float64(1.0), h.integer(2)});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(contents<double>(h, out), (std::vector<double>{0.0, 2.0, -2.0}));

    Value in = float8(h, {1, 2});
    // Wrong count: the count is asked for a second time to report it.
    h.resetCallbackCounts();
    EXPECT_EQ(h.call(orbNormalise, {in, in}).error, "expecting four arguments, but received 2");
    EXPECT_EQ(h.callbackCalls(HOSTPOS_NUM_ARGS), 2);
    Value out4 = h.rtable1(DT_FLOAT4, 2);
    EXPECT_EQ(h.call(orbNormalise, {out4, in, h.integer(0), h.integer(1)}).error,
              wrongType(h, "float[8]", out4));
    // Both scalars are read before the lengths are compared.
    EXPECT_EQ(h.call(orbNormalise, {out, in, h.name("a"), h.integer(1)}).error,
              "expecting a numeric value, but received a");
    EXPECT_EQ(h.call(orbNormalise, {out, in, h.integer(0), h.integer(1)}).error,
              "rtables must have the same number of elements");
}

}  // namespace
