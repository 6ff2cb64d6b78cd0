// Conversion exports: the table of pairs, the texts, the inverted count test
// of the scaled form, and byte swaps.
#include <gtest/gtest.h>

#include "support.h"

using orbhost::CallResult;
using orbhost::Host;
using orbhost::Value;
using orbtest::contents;
using orbtest::float4;
using orbtest::float8;

namespace {

template <typename T>
Value table(Host &h, int32_t code, const std::vector<T> &v)
{
    return h.rtable1(code, (int64_t)v.size(), v.data());
}

// Byte patterns of the sources used below, per datatype code.
Value sourceOf(Host &h, int32_t code)
{
    switch (code) {
    case DT_INT1: return table<int8_t>(h, code, {-3, 100});
    case DT_INT2: return table<int16_t>(h, code, {-3, 1000});
    case DT_INT4: return table<int32_t>(h, code, {-3, 100000});
    case DT_INT8: return table<int64_t>(h, code, {-3, 1 << 20});
    case DT_FLOAT8: return float8(h, {-3, 2.5});
    case DT_FLOAT4: return float4(h, {-3, 2.5f});
    case DT_COMPLEX8: return orbtest::complex8(h, {{1, 2}, {3, 4}});
    default: return h.rtable1(code, 2);
    }
}

TEST(ConvertOps, PlainConversionTable)
{
    struct Row {
        int32_t dst;
        std::vector<int32_t> accepted;
        const char *refusal;
    };
    const Row rows[] = {
        {DT_FLOAT4, {DT_INT1, DT_INT2, DT_INT4, DT_FLOAT8, DT_FLOAT4}, "cannot convert to datatype = float[4]"},
        {DT_FLOAT8, {DT_FLOAT8, DT_FLOAT4, DT_INT4, DT_INT8}, "cannot convert to datatype = float[8]"},
        {DT_INT2, {DT_INT2, DT_INT4}, "cannot convert to datatype = integer[2]"},
    };
    for (const Row &row : rows) {
        for (int32_t src = DT_INT1; src <= DT_FLOAT4; ++src) {
            SCOPED_TRACE(std::to_string(row.dst) + " <- " + std::to_string(src));
            Host h;
            Value out = h.rtable1(row.dst, 2);
            CallResult r = h.call(orbConvert, {out, sourceOf(h, src)});
            bool ok = std::find(row.accepted.begin(), row.accepted.end(), src) != row.accepted.end();
            if (!ok) {
                EXPECT_EQ(r.error, row.refusal);
                continue;
            }
            ASSERT_FALSE(r.raised) << r.error;
            if (row.dst == DT_INT2) {
                EXPECT_EQ(contents<int16_t>(h, out)[0], -3);
            } else if (row.dst == DT_FLOAT4) {
                EXPECT_EQ(contents<float>(h, out)[0], -3.0f);
            } else {
                EXPECT_EQ(contents<double>(h, out)[0], -3.0);
            }
        }
    }
    Host h;
    EXPECT_EQ(h.call(orbConvert, {h.rtable1(DT_INT4, 2), float8(h, {1, 2})}).error, "datatype not supported");
    EXPECT_EQ(h.call(orbConvert, {h.rtable1(DT_FLOAT4, 2), table<int64_t>(h, DT_INT8, {1, 2})}).error,
              "cannot convert to datatype = float[4]");
    EXPECT_EQ(h.call(orbConvert, {h.rtable1(DT_FLOAT4, 3), float8(h, {1, 2})}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbConvert, {h.rtable1(DT_FLOAT4, 3)}).error, "expecting two arguments, but received 1");
    // Saturation of the narrowing integer conversion.
    Value o = h.rtable1(DT_INT2, 2);
    ASSERT_FALSE(h.call(orbConvert, {o, table<int32_t>(h, DT_INT4, {70000, -70000})}).raised);
    EXPECT_EQ(contents<int16_t>(h, o), (std::vector<int16_t>{32767, -32768}));
}

// The scaled form refuses three arguments; tests reach its body by passing
// three values while the count callback answers two.
CallResult scaled(Host &h, Value dst, Value src, Value scale)
{
    h.forceNumArgs(2);
    CallResult r = h.call(orbConvertScaled, {dst, src, scale});
    h.clearForcedNumArgs();
    return r;
}

TEST(ConvertOps, ScaledCountTestIsInverted)
{
    Host h;
    Value o = h.rtable1(DT_FLOAT4, 2);
    EXPECT_EQ(h.call(orbConvertScaled, {o, o, h.integer(0)}).error, "expecting three arguments, but received 3");
    EXPECT_EQ(h.call(orbConvertScaled, {o, o, h.integer(0), h.integer(0)}).error,
              "expecting three arguments, but received 4");
    // With two real arguments the third is missing: the host's null value.
    EXPECT_EQ(h.call(orbConvertScaled, {o, table<int16_t>(h, DT_INT2, {1, 2})}).error,
              "expecting an integer scale factor, but received NULL");
}

TEST(ConvertOps, ScaledConversionsRoundToNearestAndScale)
{
    Host h;
    Value f4 = h.rtable1(DT_FLOAT4, 2);
    ASSERT_FALSE(scaled(h, f4, table<int16_t>(h, DT_INT2, {-3, 1000}), h.integer(1)).raised);
    EXPECT_EQ(contents<float>(h, f4), (std::vector<float>{-1.5f, 500.0f}));
    Value f8 = h.rtable1(DT_FLOAT8, 2);
    ASSERT_FALSE(scaled(h, f8, table<int32_t>(h, DT_INT4, {-3, 5}), h.integer(-2)).raised);
    EXPECT_EQ(contents<double>(h, f8), (std::vector<double>{-12, 20}));
    Value i4 = h.rtable1(DT_INT4, 4);
    ASSERT_FALSE(scaled(h, i4, float8(h, {2.5, 3.5, -2.5, 1e20}), h.integer(0)).raised);
    EXPECT_EQ(contents<int32_t>(h, i4), (std::vector<int32_t>{2, 4, -2, INT32_MAX}));
    Value i8 = h.rtable1(DT_INT8, 1);
    ASSERT_FALSE(scaled(h, i8, float8(h, {6.0}), h.integer(2)).raised);
    EXPECT_EQ(contents<int64_t>(h, i8), (std::vector<int64_t>{2}));  // 1.5 rounds to 2
    Value i1 = h.rtable1(DT_INT1, 2);
    ASSERT_FALSE(scaled(h, i1, table<int16_t>(h, DT_INT2, {1000, -7}), h.integer(1)).raised);
    EXPECT_EQ(contents<int8_t>(h, i1), (std::vector<int8_t>{127, -4}));
}

// Every pair of the scaled table, with -3 scaled by 2^-1: -1.5 in floating
// destinations, rounded to the nearest even integer (-2) in integer ones.
TEST(ConvertOps, ScaledConversionTable)
{
    struct Row {
        int32_t dst;
        std::vector<int32_t> accepted;
        const char *refusal;
    };
    const Row rows[] = {
        {DT_FLOAT4, {DT_INT2, DT_INT4}, "cannot convert to datatype = float[4]"},
        {DT_FLOAT8, {DT_INT2, DT_INT4}, "cannot convert to datatype = float[4]"},  // sic: the float[4] text
        {DT_INT8, {DT_FLOAT8}, "cannot convert to datatype = integer[8]"},
        {DT_INT4, {DT_FLOAT4, DT_FLOAT8, DT_INT8}, "cannot convert to datatype = integer[4]"},
        {DT_INT2, {DT_INT4}, "cannot convert to datatype = integer[2]"},
        {DT_INT1, {DT_FLOAT4, DT_INT2}, "cannot convert to datatype = integer[1]"},
        {DT_COMPLEX8, {}, "datatype not supported"},
    };
    for (const Row &row : rows) {
        for (int32_t src = DT_INT1; src <= DT_FLOAT4; ++src) {
            SCOPED_TRACE(std::to_string(row.dst) + " <- " + std::to_string(src));
            Host h;
            Value out = h.rtable1(row.dst, 2);
            CallResult r = scaled(h, out, sourceOf(h, src), h.integer(1));
            bool ok = std::find(row.accepted.begin(), row.accepted.end(), src) != row.accepted.end();
            if (!ok) {
                EXPECT_EQ(r.error, row.refusal);
                continue;
            }
            ASSERT_FALSE(r.raised) << r.error;
            switch (row.dst) {
            case DT_FLOAT4: EXPECT_EQ(contents<float>(h, out)[0], -1.5f); break;
            case DT_FLOAT8: EXPECT_EQ(contents<double>(h, out)[0], -1.5); break;
            case DT_INT8: EXPECT_EQ(contents<int64_t>(h, out)[0], -2); break;
            case DT_INT4: EXPECT_EQ(contents<int32_t>(h, out)[0], -2); break;
            case DT_INT2: EXPECT_EQ(contents<int16_t>(h, out)[0], -2); break;
            default: EXPECT_EQ(contents<int8_t>(h, out)[0], -2); break;
            }
        }
    }
}

TEST(ConvertOps, ScaledChecksAndTheTwoStageIntegerTwo)
{
    Host h;
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
    ASSERT_FALSE(scaled(h, i2, table<int32_t>(h, DT_INT4, {-8, 8, 100000}), h.integer(2)).raised);
    EXPECT_EQ(contents<int16_t>(h, i2), (std::vector<int16_t>{-2, 2, 25000}));
}

TEST(ConvertOps, SwapBytesInEveryWidth)
{
    Host h;
    Value o2 = h.rtable1(DT_INT2, 1);
    ASSERT_FALSE(h.call(orbSwapBytes, {o2, table<int16_t>(h, DT_INT2, {0x0102})}).raised);
    EXPECT_EQ(contents<int16_t>(h, o2)[0], 0x0201);
    Value o4 = h.rtable1(DT_INT4, 1);
    ASSERT_FALSE(h.call(orbSwapBytes, {o4, table<int32_t>(h, DT_INT4, {0x01020304})}).raised);
    EXPECT_EQ(contents<int32_t>(h, o4)[0], 0x04030201);
    Value o8 = h.rtable1(DT_INT8, 1);
    ASSERT_FALSE(h.call(orbSwapBytes, {o8, table<int64_t>(h, DT_INT8, {0x0102030405060708})}).raised);
    EXPECT_EQ(contents<int64_t>(h, o8)[0], 0x0807060504030201);
    // Bytes go through the 24-bit swap, one three-byte item per element.
    Value o1 = h.rtable1(DT_INT1, 3);
    ASSERT_FALSE(h.call(orbSwapBytes, {o1, table<int8_t>(h, DT_INT1, {1, 2, 3})}).raised);
    EXPECT_EQ(contents<int8_t>(h, o1), (std::vector<int8_t>{3, 2, 1}));

    EXPECT_EQ(h.call(orbSwapBytes, {o2}).error, "expecting one or two arguments, but received 1");
    EXPECT_EQ(h.call(orbSwapBytes, {h.rtable1(DT_FLOAT8, 1), float8(h, {1})}).error, "datatype not supported");
    Value i4 = h.rtable1(DT_INT4, 1);
    EXPECT_EQ(h.call(orbSwapBytes, {o2, i4}).error,
              "expecting an rtable with datatype = integer[2], but received " + h.print(i4));
    EXPECT_EQ(h.call(orbSwapBytes, {o2, h.rtable1(DT_INT2, 2)}).error,
              "rtables must have the same number of elements");
}

}  // namespace
