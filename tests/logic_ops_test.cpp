// Bitwise exports: widths, signedness of shifts, the constants' ranges and
// the order in which things are checked.
#include <gtest/gtest.h>

#include "support.h"

using namespace orbtest;

namespace {

using I1 = std::vector<int8_t>;
using I2 = std::vector<int16_t>;
using I4 = std::vector<int32_t>;

TEST(LogicOps, EachWidthComputesItsOperation)
{
    Host h;
    Value o1 = h.rtable1(DT_INT1, 2), o2 = h.rtable1(DT_INT2, 2), o4 = h.rtable1(DT_INT4, 2);
    Value a1 = table<int8_t>(h, DT_INT1, {0x0F, -1}), b1 = table<int8_t>(h, DT_INT1, {0x3C, 0x55});
    Value a2 = table<int16_t>(h, DT_INT2, {0x0F0F, -1}), b2 = table<int16_t>(h, DT_INT2, {0x3C3C, 0x5555});
    Value a4 = table<int32_t>(h, DT_INT4, {0x0F0F0F0F, -1}), b4 = table<int32_t>(h, DT_INT4, {0x3C3C3C3C, 0x55555555});

    EXPECT_EQ(written<int8_t>(h, orbAnd, {o1, a1, b1}), (I1{0x0C, 0x55}));
    EXPECT_EQ(written<int16_t>(h, orbOr, {o2, a2, b2}), (I2{0x3F3F, -1}));
    EXPECT_EQ(written<int32_t>(h, orbXor, {o4, a4, b4}), (I4{0x33333333, (int32_t)0xAAAAAAAA}));
    EXPECT_EQ(written<int16_t>(h, orbNot, {o2, a2}), (I2{(int16_t)0xF0F0, 0}));
    EXPECT_EQ(written<int8_t>(h, orbAndC, {o1, a1, h.integer(0x70)}), (I1{0x00, 0x70}));
    EXPECT_EQ(written<int32_t>(h, orbOrC, {o4, a4, h.integer(0x70000000)}), (I4{0x7F0F0F0F, -1}));
    EXPECT_EQ(written<int16_t>(h, orbXorC, {o2, a2, h.integer(0x7FFF)}), (I2{0x70F0, (int16_t)0x8000}));
}

TEST(LogicOps, ShiftsAreUnsignedForBytesAndSignedOtherwise)
{
    Host h;
    Value o1 = h.rtable1(DT_INT1, 2), o2 = h.rtable1(DT_INT2, 2), o4 = h.rtable1(DT_INT4, 2);
    EXPECT_EQ(written<int8_t>(h, orbRightShift, {o1, table<int8_t>(h, DT_INT1, {-4, 8}), h.integer(1)}), (I1{126, 4}));
    EXPECT_EQ(written<int16_t>(h, orbRightShift, {o2, table<int16_t>(h, DT_INT2, {-4, 8}), h.integer(1)}), (I2{-2, 4}));
    EXPECT_EQ(written<int32_t>(h, orbRightShift, {o4, table<int32_t>(h, DT_INT4, {-1024, 1024}), h.integer(3)}),
              (I4{-128, 128}));
    EXPECT_EQ(written<int8_t>(h, orbLeftShift, {o1, table<int8_t>(h, DT_INT1, {0x41, 1}), h.integer(1)}),
              (I1{(int8_t)0x82, 2}));
    EXPECT_EQ(written<int32_t>(h, orbLeftShift, {o4, table<int32_t>(h, DT_INT4, {-3, 1}), h.integer(31)}),
              (I4{INT32_MIN, INT32_MIN}));
}

TEST(LogicOps, ConstantsMustFitTheWidthAsNonNegativeValues)
{
    Host h;
    Value o1 = h.rtable1(DT_INT1, 1), o2 = h.rtable1(DT_INT2, 1), o4 = h.rtable1(DT_INT4, 1);
    EXPECT_EQ(h.call(orbXorC, {o1, o1, h.integer(128)}).error, "expecting a 16-bit integer, but received 128");
    EXPECT_EQ(h.call(orbXorC, {o1, o1, h.integer(-1)}).error, "expecting a non-negative integer, but received -1");
    EXPECT_EQ(h.call(orbAndC, {o2, o2, h.integer(32768)}).error, "expecting a 16-bit integer, but received 32768");
    EXPECT_EQ(h.call(orbOrC, {o4, o4, h.integer(-5)}).error, "expecting a non-negative integer, but received -5");
    EXPECT_FALSE(h.call(orbOrC, {o4, o4, h.integer(2147483647)}).raised);
}

TEST(LogicOps, OrderOfChecks)
{
    Host h;
    Value o1 = h.rtable1(DT_INT1, 2);
    std::string before = bytes(h, o1);
    // The constant is read before the counts are compared.
    EXPECT_EQ(h.call(orbAndC, {o1, h.rtable1(DT_INT1, 3), h.name("c")}).error,
              "expecting a 16-bit integer, but received c");
    EXPECT_EQ(h.call(orbAndC, {o1, h.rtable1(DT_INT1, 3), h.integer(1)}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbOr, {o1, o1, h.rtable1(DT_INT1, 1)}).error, "rtables must have the same number of elements");
    Value i2 = h.rtable1(DT_INT2, 2);
    EXPECT_EQ(h.call(orbXor, {o1, o1, i2}).error, wrongType(h, "integer[1]", i2));
    // The shift count comes before the datatype.
    Value f8 = h.rtable1(DT_FLOAT8, 2);
    EXPECT_EQ(h.call(orbLeftShift, {f8, f8, h.float64(1.5)}).error,
              "expecting a 32-bit integer, but received 1.5");
    EXPECT_EQ(bytes(h, o1), before);
}

}  // namespace
