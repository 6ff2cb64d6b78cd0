// Arithmetic exports: operand order, the two families' different checks, and
// the dispatch by datatype.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using orbhost::CallResult;
using orbhost::ErrorMode;
using orbhost::Host;
using orbhost::Value;
using orbtest::complex8;
using orbtest::contents;
using orbtest::float4;
using orbtest::float8;

namespace {

using D = std::vector<double>;
using F = std::vector<float>;

D run8(Host &h, HostValue (*fn)(HostCallbacks, ArgSeq), const D &a, Value third)
{
    Value out = h.rtable1(DT_FLOAT8, (int64_t)a.size());
    CallResult r = h.call(fn, {out, float8(h, a), third});
    EXPECT_FALSE(r.raised) << r.error;
    EXPECT_EQ(r.result, out);
    return contents<double>(h, out);
}

TEST(ArithOps, OperandOrderOfTheArrayFamily)
{
    Host h;
    EXPECT_EQ(run8(h, orbAdd, {1, 2}, float8(h, {10, 20})), (D{11, 22}));
    EXPECT_EQ(run8(h, orbSub, {1, 2}, float8(h, {10, 20})), (D{9, 18}));
    EXPECT_EQ(run8(h, orbMul, {3, 2}, float8(h, {10, 20})), (D{30, 40}));
    EXPECT_EQ(run8(h, orbDiv, {2, 4}, float8(h, {10, 20})), (D{5, 5}));

    Value y = float4(h, {1, 1});
    Value a = float4(h, {2, 3}), b = float4(h, {5, 7});
    ASSERT_FALSE(h.call(orbAddProd, {y, a, b}).raised);
    ASSERT_FALSE(h.call(orbAddProd, {y, a, b}).raised);
    EXPECT_EQ(contents<float>(h, y), (F{21, 43}));
}

TEST(ArithOps, OperandOrderOfTheConstantFamily)
{
    Host h;
    EXPECT_EQ(run8(h, orbAddConstant, {1, 2}, h.integer(10)), (D{11, 12}));
    EXPECT_EQ(run8(h, orbSubConstant, {1, 2}, h.integer(10)), (D{-9, -8}));
    EXPECT_EQ(run8(h, orbSubConstantRev, {1, 2}, h.integer(10)), (D{9, 8}));
    EXPECT_EQ(run8(h, orbMulConstant, {1, 2}, h.float64(2.5)), (D{2.5, 5}));
    EXPECT_EQ(run8(h, orbDivConstant, {1, 2}, h.integer(4)), (D{0.25, 0.5}));

    Value out = h.rtable1(DT_FLOAT4, 2);
    ASSERT_FALSE(h.call(orbDivConstantRev, {out, float4(h, {2, 4}), h.integer(1)}).raised);
    EXPECT_EQ(contents<float>(h, out), (F{0.5f, 0.25f}));
}

TEST(ArithOps, ComplexArithmetic)
{
    Host h;
    Value out = h.rtable1(DT_COMPLEX8, 2);
    Value x = complex8(h, {{1, 2}, {-3, 0.5}});
    // A real constant becomes (c, 0): only the real parts move.
    ASSERT_FALSE(h.call(orbAddConstant, {out, x, h.integer(10)}).raised);
    std::vector<Ipp64fc> z = contents<Ipp64fc>(h, out);
    EXPECT_EQ(z[0].re, 11);
    EXPECT_EQ(z[0].im, 2);
    EXPECT_EQ(z[1].im, 0.5);
    ASSERT_FALSE(h.call(orbMulConstant, {out, x, h.complex(0, 1)}).raised);
    z = contents<Ipp64fc>(h, out);
    EXPECT_EQ(z[0].re, -2);
    EXPECT_EQ(z[0].im, 1);
    // (b / a) with a = 1+2i, b = 3+4i: (11 - 2i) / 5
    ASSERT_FALSE(h.call(orbDiv, {out, x, complex8(h, {{3, 4}, {-3, 0.5}})}).raised);
    z = contents<Ipp64fc>(h, out);
    EXPECT_DOUBLE_EQ(z[0].re, 2.2);
    EXPECT_DOUBLE_EQ(z[0].im, -0.4);
    EXPECT_DOUBLE_EQ(z[1].re, 1);
    EXPECT_NEAR(z[1].im, 0, 1e-16);  // the scaled quotient may leave a rounding residue
}

TEST(ArithOps, ChecksOfTheConstantFamily)
{
    Host h;
    Value out8 = h.rtable1(DT_FLOAT8, 2);
    std::string before = orbtest::bytes(h, out8);
    EXPECT_EQ(h.call(orbAddConstant, {out8, float4(h, {1, 2}), h.integer(1)}).error,
              "rtables must have the same datatype");
    EXPECT_EQ(h.call(orbAddConstant, {out8, float8(h, {1, 2, 3}), h.integer(1)}).error,
              "rtables must have the same number of elements");
    // The constant is read only after the rtables have been compared.
    EXPECT_EQ(h.call(orbSubConstant, {out8, float8(h, {1}), h.name("c")}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbSubConstant, {out8, float8(h, {1, 2}), h.name("c")}).error,
              "expecting a numeric value, but received c");
    EXPECT_EQ(h.call(orbDivConstantRev, {out8, float8(h, {1, 2}), h.integer(1)}).error,
              "datatype not supported");
    Value z = h.rtable1(DT_COMPLEX8, 2);
    EXPECT_EQ(h.call(orbDivConstantRev, {z, z, h.integer(1)}).error, "datatype not supported");
    EXPECT_EQ(h.call(orbMulConstant, {z, z, h.string("i")}).error,
              "expecting a complex numeric value, but received i");
    Value i4 = h.rtable1(DT_INT4, 2);
    EXPECT_EQ(h.call(orbMulConstant, {i4, i4, h.integer(1)}).error, "datatype not supported");
    EXPECT_EQ(h.call(orbMulConstant, {out8, out8}).error, "expecting three arguments, but received 2");
    EXPECT_EQ(orbtest::bytes(h, out8), before);

    // With a raise that returns, a count mismatch carries on to the computation
    // over argument 1's length.
    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.call(orbAddConstant, {out8, float8(h, {1, 2, 3}), h.integer(1)});
    EXPECT_EQ(r.errors, std::vector<std::string>{"rtables must have the same number of elements"});
    EXPECT_EQ(contents<double>(h, out8), (D{2, 3}));
}

TEST(ArithOps, ChecksOfTheArrayFamily)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 2);
    std::string before = orbtest::bytes(h, out);
    Value f4 = float4(h, {1, 2});
    EXPECT_EQ(h.call(orbAdd, {out, float8(h, {1, 2}), f4}).error,
              "expecting an rtable with datatype = float[8], but received " + h.print(f4));
    EXPECT_EQ(h.call(orbMul, {out, float8(h, {1, 2}), float8(h, {1})}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbAdd, {out, float8(h, {1, 2})}).error, "expecting three arguments, but received 2");
    Value i2 = h.rtable1(DT_INT2, 2);
    EXPECT_EQ(h.call(orbSub, {i2, i2, i2}).error, "datatype not supported");
    EXPECT_EQ(orbtest::bytes(h, out), before);

    // An empty operand pair reaches the backend, whose size error is raised once.
    h.setErrorMode(ErrorMode::Return);
    Value e = h.rtable1(DT_FLOAT4, 0);
    CallResult r = h.call(orbAdd, {e, e, e});
    ASSERT_GE(r.errors.size(), 1u);
    EXPECT_EQ(r.errors[0], std::string("IPP Error: ") + ippGetStatusString(ippStsSizeErr));
}

TEST(ArithOps, DivisionByZeroFollowsTheBackend)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 2);
    CallResult r = h.call(orbDiv, {out, float8(h, {0, 2}), float8(h, {1, 4})});
    ASSERT_FALSE(r.raised) << r.error;  // a warning passes
    D y = contents<double>(h, out);
    EXPECT_EQ(y[0], HUGE_VAL);
    EXPECT_EQ(y[1], 2);
    // A zero constant is refused by the backend before anything is written.
    std::string before = orbtest::bytes(h, out);
    r = h.call(orbDivConstant, {out, float8(h, {1, 2}), h.integer(0)});
    EXPECT_EQ(r.error, std::string("IPP Error: ") + ippGetStatusString(ippStsDivByZeroErr));
    EXPECT_EQ(orbtest::bytes(h, out), before);
}

}  // namespace
