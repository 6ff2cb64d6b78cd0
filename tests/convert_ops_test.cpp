// Conversion exports: the table of pairs, the texts, the inverted count test
// of the scaled form, and byte swaps.
#include <gtest/gtest.h>

#include "support.h"

using namespace orbtest;

namespace {

// {-3, 5, -5} in any datatype but complex; scaled by 2^-1 and rounded to
// nearest-even these tell every rounding mode apart.
Value sourceOf(Host &h, int32_t code)
{
    switch (code) {
    case DT_INT1: return table<int8_t>(h, code, {-3, 5, -5});
    case DT_INT2: return table<int16_t>(h, code, {-3, 5, -5});
    case DT_INT4: return table<int32_t>(h, code, {-3, 5, -5});
    case DT_INT8: return table<int64_t>(h, code, {-3, 5, -5});
    case DT_FLOAT8: return float8(h, {-3, 5, -5});
    case DT_FLOAT4: return float4(h, {-3, 5, -5});
    default: return h.rtable1(code, 3);
    }
}

D asDoubles(Host &h, Value rt)
{
    switch (h.rtableInfo(rt).datatype) {
    case DT_INT1: { auto v = contents<int8_t>(h, rt); return D(v.begin(), v.end()); }
    case DT_INT2: { auto v = contents<int16_t>(h, rt); return D(v.begin(), v.end()); }
    case DT_INT4: { auto v = contents<int32_t>(h, rt); return D(v.begin(), v.end()); }
    case DT_INT8: { auto v = contents<int64_t>(h, rt); return D(v.begin(), v.end()); }
    case DT_FLOAT4: { auto v = contents<float>(h, rt); return D(v.begin(), v.end()); }
    default: return contents<double>(h, rt);
    }
}

struct Row {
    int32_t dst;
    std::vector<int32_t> accepted;
    const char *refusal;
    D want;  // for an accepted source
};

// Every source datatype into each destination of the table.
void expectTable(const std::vector<Row> &rows, CallResult (*convert)(Host &, Value, Value))
{
    for (const Row &row : rows)
        for (int32_t src = DT_INT1; src <= DT_FLOAT4; ++src) {
            SCOPED_TRACE(std::to_string(row.dst) + " <- " + std::to_string(src));
            Host h;
            Value out = h.rtable1(row.dst, 3);
            CallResult r = convert(h, out, sourceOf(h, src));
            if (std::find(row.accepted.begin(), row.accepted.end(), src) == row.accepted.end()) {
                EXPECT_EQ(r.error, row.refusal);
                continue;
            }
            ASSERT_FALSE(r.raised) << r.error;
            EXPECT_EQ(r.result, out);
            EXPECT_EQ(asDoubles(h, out), row.want);
        }
}

CallResult plain(Host &h, Value dst, Value src) { return h.call(orbConvert, {dst, src}); }

// The scaled form refuses three arguments; tests reach its body by passing
// three values while the count callback answers two.
CallResult scaled(Host &h, Value dst, Value src, Value scale)
{
    h.forceNumArgs(2);
    CallResult r = h.call(orbConvertScaled, {dst, src, scale});
    h.clearForcedNumArgs();
    return r;
}

TEST(ConvertOps, PlainConversionTable)
{
    const D same = {-3, 5, -5};
    expectTable({{DT_FLOAT4, {DT_INT1, DT_INT2, DT_INT4, DT_FLOAT8, DT_FLOAT4}, "cannot convert to datatype = float[4]", same},
                 {DT_FLOAT8, {DT_FLOAT8, DT_FLOAT4, DT_INT4, DT_INT8}, "cannot convert to datatype = float[8]", same},
                 {DT_INT2, {DT_INT2, DT_INT4}, "cannot convert to datatype = integer[2]", same},
                 {DT_INT4, {}, "datatype not supported", {}}},
                plain);
    Host h;
    EXPECT_EQ(h.call(orbConvert, {h.rtable1(DT_FLOAT4, 3), float8(h, {1, 2})}).error,
              "rtables must have the same number of elements");
}

// -3, 5, -5 scaled by 2^-1: exact in floating destinations, rounded to the
// nearest even integer in integer ones.
TEST(ConvertOps, ScaledConversionTable)
{
    const D halves = {-1.5, 2.5, -2.5}, rounded = {-2, 2, -2};
    expectTable({{DT_FLOAT4, {DT_INT2, DT_INT4}, "cannot convert to datatype = float[4]", halves},
                 {DT_FLOAT8, {DT_INT2, DT_INT4}, "cannot convert to datatype = float[4]", halves},  // sic: float[4]
                 {DT_INT8, {DT_FLOAT8}, "cannot convert to datatype = integer[8]", rounded},
                 {DT_INT4, {DT_FLOAT4, DT_FLOAT8, DT_INT8}, "cannot convert to datatype = integer[4]", rounded},
                 {DT_INT2, {DT_INT4}, "cannot convert to datatype = integer[2]", rounded},
                 {DT_INT1, {DT_FLOAT4, DT_INT2}, "cannot convert to datatype = integer[1]", rounded},
                 {DT_COMPLEX8, {}, "datatype not supported", {}}},
                [](Host &h, Value dst, Value src) { return scaled(h, dst, src, h.integer(1)); });
    // A negative scale factor multiplies.
    Host h;
    Value f8 = h.rtable1(DT_FLOAT8, 2);
    EXPECT_FALSE(scaled(h, f8, table<int32_t>(h, DT_INT4, {-3, 5}), h.integer(-2)).raised);
    EXPECT_EQ(contents<double>(h, f8), (D{-12, 20}));
}

TEST(ConvertOps, ScaledCountTestIsInverted)
{
    Host h;
    Value o = h.rtable1(DT_FLOAT4, 2);
    // With two real arguments the third is missing: the host's null value.
    EXPECT_EQ(h.call(orbConvertScaled, {o, table<int16_t>(h, DT_INT2, {1, 2})}).error,
              "expecting an integer scale factor, but received NULL");
}

TEST(ConvertOps, ScaledChecksAndTheTwoStageIntegerTwo)
{
    Host h;
    // The scale factor is read before the counts are compared.
    EXPECT_EQ(scaled(h, h.rtable1(DT_FLOAT4, 2), h.rtable1(DT_INT2, 3), h.integer(0)).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(scaled(h, h.rtable1(DT_FLOAT4, 2), h.rtable1(DT_INT2, 3), h.float64(0.5)).error,
              "expecting an integer scale factor, but received 0.5");

    // A floating source is converted into integer[2] and then refused.
    Value i2 = h.rtable1(DT_INT2, 3);
    EXPECT_EQ(scaled(h, i2, float4(h, {2.5f, 3.5f, 1e6f}), h.integer(0)).error,
              "cannot convert to datatype = integer[2]");
    EXPECT_EQ(contents<int16_t>(h, i2), (std::vector<int16_t>{2, 4, 32767}));
    EXPECT_EQ(scaled(h, i2, float8(h, {-8, 8, 1}), h.integer(2)).error, "cannot convert to datatype = integer[2]");
    EXPECT_EQ(contents<int16_t>(h, i2), (std::vector<int16_t>{-2, 2, 0}));
}

TEST(ConvertOps, SwapBytesInEveryWidth)
{
    Host h;
    Value o2 = h.rtable1(DT_INT2, 1), o4 = h.rtable1(DT_INT4, 1), o8 = h.rtable1(DT_INT8, 1);
    EXPECT_EQ(written<int16_t>(h, orbSwapBytes, {o2, table<int16_t>(h, DT_INT2, {0x0102})})[0], 0x0201);
    EXPECT_EQ(written<int32_t>(h, orbSwapBytes, {o4, table<int32_t>(h, DT_INT4, {0x01020304})})[0], 0x04030201);
    EXPECT_EQ(written<int64_t>(h, orbSwapBytes, {o8, table<int64_t>(h, DT_INT8, {0x0102030405060708})})[0],
              0x0807060504030201);
    // Bytes go through the 24-bit swap, one three-byte item per element.
    Value o1 = h.rtable1(DT_INT1, 3);
    EXPECT_EQ(written<int8_t>(h, orbSwapBytes, {o1, table<int8_t>(h, DT_INT1, {1, 2, 3})}),
              (std::vector<int8_t>{3, 2, 1}));

    EXPECT_EQ(h.call(orbSwapBytes, {o2, o4}).error, wrongType(h, "integer[2]", o4));
    EXPECT_EQ(h.call(orbSwapBytes, {o2, h.rtable1(DT_INT2, 2)}).error,
              "rtables must have the same number of elements");
}

}  // namespace
