// Argument accessors: messages, order of checks, and the fallbacks a host
// whose error raise returns gets.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

#include "support.h"

using namespace orbtest;

namespace {

using Accessor = int64_t (*)(HostCallbacks, Value);
template <auto F>
int64_t as64(HostCallbacks cb, Value v) { return (int64_t)F(cb, v); }

CallResult run(Host &h, Accessor f, Value v)
{
    return h.protect([&]() -> Value { return (Value)f(h.callbacks(), v); });
}

TEST(AccessorShape, MessagesOrderAndTheImageCheckNumbers)
{
    Host h;
    Value m = h.rtable(DT_FLOAT8, {{1, 2}, {1, 3}}), v = h.rtable1(DT_FLOAT8, 3);
    Value bad1d = h.rtable(DT_FLOAT8, {{1, 2}}, nullptr, orbhost::kNonRectangular);
    Value bad2d = h.rtable(DT_FLOAT8, {{1, 2}, {1, 2}}, nullptr, orbhost::kNonRectangular);
    Value bad3d = h.rtable(DT_FLOAT4, {{1, 2}, {1, 2}, {1, 3}}, nullptr, orbhost::kNonRectangular);
    const std::string two = "expecting a one-dimensional rtable, but received one with 2 dimensions";
    const std::string rect = "rtable must have rectangular storage";
    // The image check prints a numbered line before each of its errors; every
    // shape uses the one-dimensional text; storage comes after dimensions.
    const struct {
        Accessor check;
        Value v;
        std::string error, output;
    } cases[] = {
        {CheckArray, h.integer(5), "expecting an rtable, but received 5", ""},
        {CheckImage, h.name("x"), "expecting an rtable, but received x", "1\n"},
        {CheckArray, m, two, ""},
        {CheckMatrix, v, "expecting a one-dimensional rtable, but received one with 1 dimensions", ""},
        {CheckImage, m, two, "2\n"},
        {CheckArray, bad2d, two, ""},
        {CheckArray, bad1d, rect, ""},
        {CheckImage, bad3d, rect, "3\n"},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        CallResult r = run(h, cases[i].check, cases[i].v);
        EXPECT_EQ(r.error, cases[i].error) << "case " << i;
        EXPECT_EQ(r.output, cases[i].output) << "case " << i;
    }
    for (int32_t code = 0; code <= 8; ++code)
        EXPECT_EQ(run(h, CheckArray, h.rtable1(code, 2)).result, (Value)code);
    // With a raise that returns, every step runs and the datatype comes back.
    h.setErrorMode(ErrorMode::Return);
    CallResult r = run(h, CheckImage, h.rtable(DT_COMPLEX8, {{1, 2}, {1, 2}}, nullptr, orbhost::kNonRectangular));
    EXPECT_EQ(r.errors, (std::vector<std::string>{two, rect}));
    EXPECT_EQ(r.output, "2\n3\n");
    EXPECT_EQ(r.result, (Value)DT_COMPLEX8);
}

TEST(AccessorTyped, EveryTypedAccessorChecksItsShapeAndCode)
{
    const struct {
        const char *name;
        std::function<void *(HostCallbacks, Value)> get;
        int dims;
        int32_t code;
        const char *wanted;  // datatype text in the message
    } cases[] = {
#define TYPED(f, dims, code, text) {#f, [](HostCallbacks c, Value v) { return (void *)f(c, v); }, dims, code, text}
        TYPED(GetFloat8Sample, 1, DT_FLOAT8, "float[8]"),     TYPED(GetFloat4Sample, 1, DT_FLOAT4, "float[4]"),
        TYPED(GetComplex8Sample, 1, DT_COMPLEX8, "complex[8]"), TYPED(GetInt1Sample, 1, DT_INT1, "integer[1]"),
        TYPED(GetUInt1Sample, 1, DT_INT1, "integer[1]"),      TYPED(GetInt2Sample, 1, DT_INT2, "integer[2]"),
        TYPED(GetUInt2Sample, 1, DT_INT2, "integer[2]"),      TYPED(GetInt4Sample, 1, DT_INT4, "integer[4]"),
        TYPED(GetUInt4Sample, 1, DT_INT4, "integer[4]"),      TYPED(GetInt8Sample, 1, DT_INT8, "integer[8]"),
        TYPED(GetUInt8Sample, 1, DT_INT8, "integer[8]"),      TYPED(GetFloat8Matrix, 2, DT_FLOAT8, "float[8]"),
        TYPED(GetFloat4Matrix, 2, DT_FLOAT4, "float[4]"),     TYPED(GetUInt1Matrix, 2, DT_INT1, "integer[1]"),
        TYPED(GetFloat4Image, 3, DT_FLOAT4, "float[4]"),
#undef TYPED
    };
    for (const auto &tc : cases) {
        SCOPED_TRACE(tc.name);
        Host h;
        std::vector<std::pair<int64_t, int64_t>> bounds(tc.dims, {1, 2});
        Value good = h.rtable(tc.code, bounds);
        Value bad = h.rtable(tc.code == DT_FLOAT8 ? DT_FLOAT4 : DT_FLOAT8, bounds);
        auto get = [&](Value v) {
            return h.protect([&]() -> Value { return (Value)(uintptr_t)tc.get(h.callbacks(), v); });
        };

        CallResult r = get(good);
        EXPECT_FALSE(r.raised);
        EXPECT_EQ((void *)(uintptr_t)r.result, h.rtableInfo(good).data);
        r = get(bad);
        EXPECT_EQ(r.error, wrongType(h, tc.wanted, bad));
        EXPECT_EQ(r.output, "");  // the image check prints only before its own errors
        // A returning raise still yields the storage.
        h.setErrorMode(ErrorMode::Return);
        r = get(bad);
        EXPECT_EQ(r.errors.size(), 1u);
        EXPECT_EQ((void *)(uintptr_t)r.result, h.rtableInfo(bad).data);
    }
}

// Each integer and option accessor on one value: its error ("" for none),
// and what it returns, after the raise where the raise returns.
TEST(AccessorScalar, IntegerAndOptionRangesTextsAndFallbacks)
{
    Host h;
    const std::string hint = "expecting one of \"none\", \"gofast\" or \"becareful\", but received ";
    const struct {
        const char *name;
        Accessor get;
        Value v;
        std::string error;
        int64_t result;
    } cases[] = {
        // The 8-bit accessors deliberately share the 16-bit text. Signed ones
        // convert anyway (the low byte of 200 is -56); unsigned ones give 0
        // after a failed range test, the value as it is after a failed sign check.
        {"Int1 200", as64<GetInt1Value>, h.integer(200), "expecting a 16-bit integer, but received 200", -56},
        {"Int1 -128", as64<GetInt1Value>, h.integer(-128), "", -128},
        {"UInt1 200", as64<GetUInt1Value>, h.integer(200), "expecting a 16-bit integer, but received 200", 0},
        {"UInt1 -1", as64<GetUInt1Value>, h.integer(-1), "expecting a non-negative integer, but received -1", 0xFFFFFFFF},
        {"UInt1 127", as64<GetUInt1Value>, h.integer(127), "", 127},
        {"Int2 -32768", as64<GetInt2Value>, h.integer(-32768), "", -32768},
        {"UInt2 32768", as64<GetUInt2Value>, h.integer(32768), "expecting a 16-bit integer, but received 32768", 0},
        {"UInt2 32767", as64<GetUInt2Value>, h.integer(32767), "", 32767},
        {"UInt2 -2", as64<GetUInt2Value>, h.integer(-2), "expecting a non-negative integer, but received -2", 0xFFFFFFFE},
        {"Int4 2^31", as64<GetInt4Value>, h.integer(INT64_C(2147483648)), "expecting a 32-bit integer, but received 2147483648", INT32_MIN},
        {"UInt4 -1", as64<GetUInt4Value>, h.integer(-1), "expecting a non-negative integer, but received -1", 0xFFFFFFFF},
        {"UInt4 2^31-1", as64<GetUInt4Value>, h.integer(INT32_MAX), "", INT32_MAX},
        {"Int8 min", as64<GetInt8Value>, h.integer(INT64_MIN), "", INT64_MIN},
        {"Int8 1.5", as64<GetInt8Value>, h.float64(1.5), "expecting a 64-bit integer, but received 1.5", 0},
        {"UInt8 -1", as64<GetUInt8Value>, h.integer(-1), "expecting a non-negative integer, but received -1", -1},
        {"UInt8 max", as64<GetUInt8Value>, h.integer(INT64_MAX), "", INT64_MAX},
        {"Int \"7\"", GetInt, h.string("7"), "expecting an integer, but received 7", 0},
        {"Int 2.0", GetInt, h.float64(2.0), "expecting an integer, but received " + h.print(h.float64(2.0)), 0},
        {"Int -2^62-5", GetInt, h.integer(-(INT64_C(1) << 62) - 5), "", -(INT64_C(1) << 62) - 5},
        {"Scale s", as64<GetScaleFactor>, h.name("s"), "expecting an integer scale factor, but received s", 0},
        {"Scale -3", as64<GetScaleFactor>, h.integer(-3), "", -3},
        // Option words compare exactly; "gofast" deliberately gives the "none" value.
        {"Hint gofast", as64<GetHint>, h.name("gofast"), "", 0},
        {"Hint becareful", as64<GetHint>, h.string("becareful"), "", 2},
        {"Hint none", as64<GetHint>, h.name("none"), "", 0},
        {"Hint GoFast", as64<GetHint>, h.string("GoFast"), hint + "GoFast", 0},
        {"Hint 2", as64<GetHint>, h.integer(2), hint + "2", 0},
        {"Rounding nearest", as64<GetRoundingMode>, h.name("nearest"), "", 1},
        {"Rounding zero", as64<GetRoundingMode>, h.string("zero"), "", 0},
        {"Rounding financial", as64<GetRoundingMode>, h.name("financial"), "", 2},
        {"Rounding Nearest", as64<GetRoundingMode>, h.string("Nearest"), "unrecognised rounding mode Nearest", 1},
        {"Rounding 1.0", as64<GetRoundingMode>, h.float64(1.0), "expecting a string, but received " + h.print(h.float64(1.0)), 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        h.setErrorMode(ErrorMode::Jump);
        CallResult r = run(h, c.get, c.v);
        EXPECT_EQ(r.error, c.error);
        if (!r.raised) {
            EXPECT_EQ((int64_t)r.result, c.result);
        }
        h.setErrorMode(ErrorMode::Return);
        r = run(h, c.get, c.v);
        EXPECT_EQ(r.errors.size(), c.error.empty() ? 0u : 1u);
        EXPECT_EQ((int64_t)r.result, c.result);
    }
}

TEST(AccessorScalar, RealAndComplexValuesCrossTheRegistersIntact)
{
    Host h;
    HostCallbacks cb = h.callbacks();
    EXPECT_EQ(GetFloat8Value(cb, h.float64(-2.75)), -2.75);
    EXPECT_EQ(GetFloat8Value(cb, h.integer(3)), 3.0);
    EXPECT_EQ(GetFloat4Value(cb, h.float64(0.1)), 0.1f);
    Ipp64fc z = GetComplex8Value(cb, h.complex(1.25, -7.5)), x = GetComplex8Value(cb, h.float64(4.0));
    EXPECT_TRUE(z.re == 1.25 && z.im == -7.5 && x.re == 4.0 && x.im == 0.0);
    Ipp32fc w = GetComplex4Value(cb, h.complex(-3.5, 0.25));
    EXPECT_TRUE(w.re == -3.5f && w.im == 0.25f);

    EXPECT_EQ(h.protect([&]() -> Value { GetFloat8Value(cb, h.complex(1, 1)); return 0; }).error,
              "expecting a numeric value, but received " + h.print(h.complex(1, 1)));
    EXPECT_EQ(h.protect([&]() -> Value { GetComplex4Value(cb, h.string("z")); return 0; }).error,
              "expecting a complex numeric value, but received z");
}

}  // namespace
