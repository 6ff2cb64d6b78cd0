// Arithmetic exports: operand order, the two families' different checks, and
// the dispatch by datatype.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using namespace orbtest;

namespace {

using F = std::vector<float>;

TEST(ArithOps, OperandOrderOfBothFamilies)
{
    Host h;
    // Each export with its third argument, and what it writes for {1, 2} as the second.
    const struct { const char *name; ExportFn fn; Value third; D want; } cases[] = {
        {"orbAdd", orbAdd, float8(h, {10, 20}), {11, 22}},
        {"orbSub", orbSub, float8(h, {10, 20}), {9, 18}},
        {"orbMul", orbMul, float8(h, {10, 20}), {10, 40}},
        {"orbDiv", orbDiv, float8(h, {10, 20}), {10, 10}},
        {"orbAddConstant", orbAddConstant, h.integer(10), {11, 12}},
        {"orbSubConstant", orbSubConstant, h.integer(10), {-9, -8}},
        {"orbSubConstantRev", orbSubConstantRev, h.integer(10), {9, 8}},
        {"orbMulConstant", orbMulConstant, h.float64(2.5), {2.5, 5}},
        {"orbDivConstant", orbDivConstant, h.integer(4), {0.25, 0.5}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(written<double>(h, c.fn, {h.rtable1(DT_FLOAT8, 2), float8(h, {1, 2}), c.third}), c.want);
    }
    // Single precision only: c / x; and y += a * b.
    EXPECT_EQ(written<float>(h, orbDivConstantRev, {h.rtable1(DT_FLOAT4, 2), float4(h, {2, 4}), h.integer(1)}),
              (F{0.5f, 0.25f}));
    Value y = float4(h, {1, 1}), a = float4(h, {2, 3}), b = float4(h, {5, 7});
    written<float>(h, orbAddProd, {y, a, b});
    EXPECT_EQ(written<float>(h, orbAddProd, {y, a, b}), (F{21, 43}));
}

TEST(ArithOps, ComplexArithmetic)
{
    Host h;
    Value out = h.rtable1(DT_COMPLEX8, 2);
    Value x = complex8(h, {{1, 2}, {-3, 0.5}});
    // A real constant becomes (c, 0): only the real parts move.
    ASSERT_FALSE(h.call(orbAddConstant, {out, x, h.integer(10)}).raised);
    EXPECT_EQ(complexes(h, out), (Z{{11, 2}, {7, 0.5}}));
    ASSERT_FALSE(h.call(orbMulConstant, {out, x, h.complex(0, 1)}).raised);
    EXPECT_EQ(complexes(h, out), (Z{{-2, 1}, {-0.5, -3}}));
    // (b / a) with a = 1+2i, b = 3+4i: (11 - 2i) / 5
    Ipp64fc q = written<Ipp64fc>(h, orbDiv, {out, x, complex8(h, {{3, 4}, {-3, 0.5}})})[0];
    EXPECT_DOUBLE_EQ(q.re, 2.2);
    EXPECT_DOUBLE_EQ(q.im, -0.4);
}

TEST(ArithOps, ChecksOfTheConstantFamily)
{
    Host h;
    Value out8 = h.rtable1(DT_FLOAT8, 2);
    std::string before = bytes(h, out8);
    EXPECT_EQ(h.call(orbAddConstant, {out8, float4(h, {1, 2}), h.integer(1)}).error,
              "rtables must have the same datatype");
    EXPECT_EQ(h.call(orbAddConstant, {out8, float8(h, {1, 2, 3}), h.integer(1)}).error,
              "rtables must have the same number of elements");
    // The constant is read only after the rtables have been compared.
    EXPECT_EQ(h.call(orbSubConstant, {out8, float8(h, {1}), h.name("c")}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbSubConstant, {out8, float8(h, {1, 2}), h.name("c")}).error,
              "expecting a numeric value, but received c");
    Value z = h.rtable1(DT_COMPLEX8, 2);
    EXPECT_EQ(h.call(orbMulConstant, {z, z, h.string("i")}).error,
              "expecting a complex numeric value, but received i");
    EXPECT_EQ(bytes(h, out8), before);
}

TEST(ArithOps, ChecksOfTheArrayFamily)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 2);
    std::string before = bytes(h, out);
    Value f4 = float4(h, {1, 2});
    EXPECT_EQ(h.call(orbAdd, {out, float8(h, {1, 2}), f4}).error, wrongType(h, "float[8]", f4));
    EXPECT_EQ(h.call(orbMul, {out, float8(h, {1, 2}), float8(h, {1})}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(bytes(h, out), before);

    // An empty operand pair reaches the backend, whose size error is reported twice.
    h.setErrorMode(ErrorMode::Return);
    Value e = h.rtable1(DT_FLOAT4, 0);
    EXPECT_EQ(h.call(orbAdd, {e, e, e}).errors, std::vector<std::string>(2, ippError(ippStsSizeErr)));
}

TEST(ArithOps, DivisionByZeroFollowsTheBackend)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 2);
    // A warning passes.
    EXPECT_EQ(written<double>(h, orbDiv, {out, float8(h, {0, 2}), float8(h, {1, 4})}), (D{HUGE_VAL, 2}));
    // A zero constant is refused by the backend before anything is written.
    std::string before = bytes(h, out);
    EXPECT_EQ(h.call(orbDivConstant, {out, float8(h, {1, 2}), h.integer(0)}).error, ippError(ippStsDivByZeroErr));
    EXPECT_EQ(bytes(h, out), before);
}

}  // namespace
