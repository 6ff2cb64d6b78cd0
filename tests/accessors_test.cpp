// Argument accessors: messages, order of checks, and the fallbacks a host
// whose error raise returns gets.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

#include "support.h"

using orbhost::CallResult;
using orbhost::ErrorMode;
using orbhost::Host;
using orbhost::Value;

namespace {

// Runs one accessor on one value under the host's protection.
template <typename F>
CallResult run(Host &h, F f)
{
    return h.protect([&]() -> Value { return (Value)f(h.callbacks()); });
}

TEST(AccessorShape, RejectsWhatIsNotAnRTable)
{
    Host h;
    CallResult r = run(h, [&](HostCallbacks cb) { return CheckArray(cb, h.integer(5)); });
    EXPECT_EQ(r.error, "expecting an rtable, but received 5");
    EXPECT_EQ(r.output, "");

    r = run(h, [&](HostCallbacks cb) { return CheckImage(cb, h.name("x")); });
    EXPECT_EQ(r.error, "expecting an rtable, but received x");
    EXPECT_EQ(r.output, "1\n");
}

TEST(AccessorShape, DimensionsUseTheOneDimensionalTextEverywhere)
{
    Host h;
    Value m = h.rtable(DT_FLOAT8, {{1, 2}, {1, 3}});
    Value v = h.rtable1(DT_FLOAT8, 3);
    EXPECT_EQ(run(h, [&](HostCallbacks cb) { return CheckArray(cb, m); }).error,
              "expecting a one-dimensional rtable, but received one with 2 dimensions");
    EXPECT_EQ(run(h, [&](HostCallbacks cb) { return CheckMatrix(cb, v); }).error,
              "expecting a one-dimensional rtable, but received one with 1 dimensions");
    CallResult r = run(h, [&](HostCallbacks cb) { return CheckImage(cb, m); });
    EXPECT_EQ(r.error, "expecting a one-dimensional rtable, but received one with 2 dimensions");
    EXPECT_EQ(r.output, "2\n");
}

TEST(AccessorShape, StorageIsCheckedAfterDimensions)
{
    Host h;
    Value bad2d = h.rtable(DT_FLOAT8, {{1, 2}, {1, 2}}, nullptr, orbhost::kNonRectangular);
    Value bad1d = h.rtable(DT_FLOAT8, {{1, 2}}, nullptr, orbhost::kNonRectangular);
    Value bad3d = h.rtable(DT_FLOAT4, {{1, 2}, {1, 2}, {1, 3}}, nullptr, orbhost::kNonRectangular);
    EXPECT_EQ(run(h, [&](HostCallbacks cb) { return CheckArray(cb, bad2d); }).error,
              "expecting a one-dimensional rtable, but received one with 2 dimensions");
    EXPECT_EQ(run(h, [&](HostCallbacks cb) { return CheckArray(cb, bad1d); }).error,
              "rtable must have rectangular storage");
    CallResult r = run(h, [&](HostCallbacks cb) { return CheckImage(cb, bad3d); });
    EXPECT_EQ(r.error, "rtable must have rectangular storage");
    EXPECT_EQ(r.output, "3\n");
}

TEST(AccessorShape, ReturnsTheDatatypeAndCarriesOnWhenTheRaiseReturns)
{
    Host h;
    for (int32_t code = 0; code <= 8; ++code) {
        Value v = h.rtable1(code, 2);
        CallResult r = run(h, [&](HostCallbacks cb) { return CheckArray(cb, v); });
        EXPECT_FALSE(r.raised);
        EXPECT_EQ(r.result, (Value)code);
    }
    h.setErrorMode(ErrorMode::Return);
    Value bad = h.rtable(DT_COMPLEX8, {{1, 2}, {1, 2}}, nullptr, orbhost::kNonRectangular);
    CallResult r = run(h, [&](HostCallbacks cb) { return CheckImage(cb, bad); });
    ASSERT_EQ(r.errors.size(), 2u);
    EXPECT_EQ(r.errors[1], "rtable must have rectangular storage");
    EXPECT_EQ(r.output, "2\n3\n");
    EXPECT_EQ(r.result, (Value)DT_COMPLEX8);
}

struct TypedCase {
    const char *name;
    std::function<void *(HostCallbacks, Value)> get;
    int dims;
    int32_t code;
    const char *wanted;  // datatype text in the message
};

TEST(AccessorTyped, EveryTypedAccessorChecksItsShapeAndCode)
{
    const std::vector<TypedCase> cases = {
        {"GetFloat8Sample", [](HostCallbacks c, Value v) { return (void *)GetFloat8Sample(c, v); }, 1, DT_FLOAT8, "float[8]"},
        {"GetFloat4Sample", [](HostCallbacks c, Value v) { return (void *)GetFloat4Sample(c, v); }, 1, DT_FLOAT4, "float[4]"},
        {"GetComplex8Sample", [](HostCallbacks c, Value v) { return (void *)GetComplex8Sample(c, v); }, 1, DT_COMPLEX8, "complex[8]"},
        {"GetInt1Sample", [](HostCallbacks c, Value v) { return (void *)GetInt1Sample(c, v); }, 1, DT_INT1, "integer[1]"},
        {"GetUInt1Sample", [](HostCallbacks c, Value v) { return (void *)GetUInt1Sample(c, v); }, 1, DT_INT1, "integer[1]"},
        {"GetInt2Sample", [](HostCallbacks c, Value v) { return (void *)GetInt2Sample(c, v); }, 1, DT_INT2, "integer[2]"},
        {"GetUInt2Sample", [](HostCallbacks c, Value v) { return (void *)GetUInt2Sample(c, v); }, 1, DT_INT2, "integer[2]"},
        {"GetInt4Sample", [](HostCallbacks c, Value v) { return (void *)GetInt4Sample(c, v); }, 1, DT_INT4, "integer[4]"},
        {"GetUInt4Sample", [](HostCallbacks c, Value v) { return (void *)GetUInt4Sample(c, v); }, 1, DT_INT4, "integer[4]"},
        {"GetInt8Sample", [](HostCallbacks c, Value v) { return (void *)GetInt8Sample(c, v); }, 1, DT_INT8, "integer[8]"},
        {"GetUInt8Sample", [](HostCallbacks c, Value v) { return (void *)GetUInt8Sample(c, v); }, 1, DT_INT8, "integer[8]"},
        {"GetFloat8Matrix", [](HostCallbacks c, Value v) { return (void *)GetFloat8Matrix(c, v); }, 2, DT_FLOAT8, "float[8]"},
        {"GetFloat4Matrix", [](HostCallbacks c, Value v) { return (void *)GetFloat4Matrix(c, v); }, 2, DT_FLOAT4, "float[4]"},
        {"GetUInt1Matrix", [](HostCallbacks c, Value v) { return (void *)GetUInt1Matrix(c, v); }, 2, DT_INT1, "integer[1]"},
        {"GetFloat4Image", [](HostCallbacks c, Value v) { return (void *)GetFloat4Image(c, v); }, 3, DT_FLOAT4, "float[4]"},
    };
    for (const TypedCase &tc : cases) {
        SCOPED_TRACE(tc.name);
        Host h;
        std::vector<std::pair<int64_t, int64_t>> bounds(tc.dims, {1, 2});
        Value good = h.rtable(tc.code, bounds);
        int32_t other = tc.code == DT_FLOAT8 ? DT_FLOAT4 : DT_FLOAT8;
        Value bad = h.rtable(other, bounds);

        CallResult r = h.protect([&]() -> Value { return (Value)(uintptr_t)tc.get(h.callbacks(), good); });
        EXPECT_FALSE(r.raised);
        EXPECT_EQ((void *)(uintptr_t)r.result, h.rtableInfo(good).data);

        r = h.protect([&]() -> Value { return (Value)(uintptr_t)tc.get(h.callbacks(), bad); });
        EXPECT_EQ(r.error, std::string("expecting an rtable with datatype = ") + tc.wanted +
                               ", but received " + h.print(bad));
        EXPECT_EQ(r.output, "");  // the image check prints only before its own errors

        // A returning raise still yields the storage.
        h.setErrorMode(ErrorMode::Return);
        r = h.protect([&]() -> Value { return (Value)(uintptr_t)tc.get(h.callbacks(), bad); });
        EXPECT_EQ(r.errors.size(), 1u);
        EXPECT_EQ((void *)(uintptr_t)r.result, h.rtableInfo(bad).data);
    }
}

TEST(AccessorScalar, IntegerRangesAndTexts)
{
    Host h;
    auto err = [&](std::function<int64_t(HostCallbacks)> f) {
        return h.protect([&]() -> Value { return (Value)f(h.callbacks()); }).error;
    };
    auto val = [&](std::function<int64_t(HostCallbacks)> f) {
        CallResult r = h.protect([&]() -> Value { return (Value)f(h.callbacks()); });
        EXPECT_FALSE(r.raised) << r.error;
        return (int64_t)r.result;
    };
    Value i200 = h.integer(200), im1 = h.integer(-1), i127 = h.integer(127);
    // The 8-bit accessors deliberately share the 16-bit text.
    EXPECT_EQ(err([&](HostCallbacks c) { return GetUInt1Value(c, i200); }), "expecting a 16-bit integer, but received 200");
    EXPECT_EQ(err([&](HostCallbacks c) { return GetInt1Value(c, i200); }), "expecting a 16-bit integer, but received 200");
    EXPECT_EQ(err([&](HostCallbacks c) { return GetUInt1Value(c, im1); }), "expecting a non-negative integer, but received -1");
    EXPECT_EQ(val([&](HostCallbacks c) { return GetUInt1Value(c, i127); }), 127);
    EXPECT_EQ(val([&](HostCallbacks c) { return GetInt1Value(c, h.integer(-128)); }), -128);
    EXPECT_EQ(err([&](HostCallbacks c) { return GetUInt2Value(c, h.integer(32768)); }), "expecting a 16-bit integer, but received 32768");
    EXPECT_EQ(val([&](HostCallbacks c) { return GetUInt2Value(c, h.integer(32767)); }), 32767);
    EXPECT_EQ(val([&](HostCallbacks c) { return GetInt2Value(c, h.integer(-32768)); }), -32768);
    EXPECT_EQ(err([&](HostCallbacks c) { return GetInt4Value(c, h.integer(INT64_C(2147483648))); }), "expecting a 32-bit integer, but received 2147483648");
    EXPECT_EQ(err([&](HostCallbacks c) { return GetUInt4Value(c, im1); }), "expecting a non-negative integer, but received -1");
    EXPECT_EQ(val([&](HostCallbacks c) { return GetUInt4Value(c, h.integer(2147483647)); }), 2147483647);
    EXPECT_EQ(val([&](HostCallbacks c) { return GetInt8Value(c, h.integer(INT64_MIN)); }), INT64_MIN);
    EXPECT_EQ(err([&](HostCallbacks c) { return GetInt8Value(c, h.float64(1.5)); }), "expecting a 64-bit integer, but received 1.5");
    EXPECT_EQ(err([&](HostCallbacks c) { return GetUInt8Value(c, im1); }), "expecting a non-negative integer, but received -1");
    EXPECT_EQ(val([&](HostCallbacks c) { return (int64_t)GetUInt8Value(c, h.integer(INT64_MAX)); }), INT64_MAX);
    EXPECT_EQ(err([&](HostCallbacks c) { return GetInt(c, h.string("7")); }), "expecting an integer, but received 7");
    EXPECT_EQ(val([&](HostCallbacks c) { return GetInt(c, h.integer(-(INT64_C(1) << 62) - 5)); }), -(INT64_C(1) << 62) - 5);
    EXPECT_EQ(err([&](HostCallbacks c) { return GetScaleFactor(c, h.name("s")); }), "expecting an integer scale factor, but received s");
    EXPECT_EQ(val([&](HostCallbacks c) { return GetScaleFactor(c, h.integer(-3)); }), -3);
}

TEST(AccessorScalar, FallbacksWhenTheRaiseReturns)
{
    Host h;
    h.setErrorMode(ErrorMode::Return);
    auto run1 = [&](std::function<int64_t(HostCallbacks)> f) {
        return h.protect([&]() -> Value { return (Value)f(h.callbacks()); });
    };
    // Signed: converted anyway (the low byte of 200 is -56).
    CallResult r = run1([&](HostCallbacks c) { return GetInt1Value(c, h.integer(200)); });
    EXPECT_EQ(r.errors.size(), 1u);
    EXPECT_EQ((int64_t)r.result, -56);
    // Unsigned: 0 after a failed test, the value as it is after a failed sign check.
    EXPECT_EQ(run1([&](HostCallbacks c) { return GetUInt1Value(c, h.integer(200)); }).result, 0u);
    EXPECT_EQ(run1([&](HostCallbacks c) { return GetUInt1Value(c, h.integer(-1)); }).result, 0xFFFFFFFFu);
    EXPECT_EQ(run1([&](HostCallbacks c) { return GetUInt2Value(c, h.integer(-2)); }).result, 0xFFFFFFFEu);
    EXPECT_EQ(run1([&](HostCallbacks c) { return (int64_t)GetUInt8Value(c, h.integer(-1)); }).result, ~UINT64_C(0));
    EXPECT_EQ(run1([&](HostCallbacks c) { return GetInt(c, h.float64(2.0)); }).result, 0u);
    EXPECT_EQ(run1([&](HostCallbacks c) { return GetScaleFactor(c, h.float64(2.0)); }).result, 0u);
    EXPECT_EQ(run1([&](HostCallbacks c) { return GetHint(c, h.integer(1)); }).result, 0u);
    EXPECT_EQ(run1([&](HostCallbacks c) { return GetHint(c, h.name("fast")); }).result, 0u);
    EXPECT_EQ(run1([&](HostCallbacks c) { return GetRoundingMode(c, h.integer(1)); }).result, 1u);
    EXPECT_EQ(run1([&](HostCallbacks c) { return GetRoundingMode(c, h.name("up")); }).result, 1u);
}

TEST(AccessorScalar, RealAndComplexValuesCrossTheRegistersIntact)
{
    Host h;
    HostCallbacks cb = h.callbacks();
    EXPECT_EQ(GetFloat8Value(cb, h.float64(-2.75)), -2.75);
    EXPECT_EQ(GetFloat8Value(cb, h.integer(3)), 3.0);
    EXPECT_EQ(GetFloat4Value(cb, h.float64(0.1)), 0.1f);
    Ipp64fc z = GetComplex8Value(cb, h.complex(1.25, -7.5));
    EXPECT_EQ(z.re, 1.25);
    EXPECT_EQ(z.im, -7.5);
    Ipp32fc w = GetComplex4Value(cb, h.complex(-3.5, 0.25));
    EXPECT_EQ(w.re, -3.5f);
    EXPECT_EQ(w.im, 0.25f);
    Ipp64fc x = GetComplex8Value(cb, h.float64(4.0));
    EXPECT_EQ(x.re, 4.0);
    EXPECT_EQ(x.im, 0.0);

    EXPECT_EQ(h.protect([&]() -> Value { GetFloat8Value(cb, h.complex(1, 1)); return 0; }).error,
              "expecting a numeric value, but received " + h.print(h.complex(1, 1)));
    EXPECT_EQ(h.protect([&]() -> Value { GetComplex4Value(cb, h.string("z")); return 0; }).error,
              "expecting a complex numeric value, but received z");
}

TEST(AccessorOption, WordsCompareExactly)
{
    Host h;
    HostCallbacks cb = h.callbacks();
    EXPECT_EQ(GetHint(cb, h.name("gofast")), 0);  // deliberately not the fast hint
    EXPECT_EQ(GetHint(cb, h.string("becareful")), 2);
    EXPECT_EQ(GetHint(cb, h.name("none")), 0);
    const std::string hint = "expecting one of \"none\", \"gofast\" or \"becareful\", but received ";
    EXPECT_EQ(h.protect([&]() -> Value { return (Value)GetHint(cb, h.string("GoFast")); }).error, hint + "GoFast");
    EXPECT_EQ(h.protect([&]() -> Value { return (Value)GetHint(cb, h.integer(2)); }).error, hint + "2");

    EXPECT_EQ(GetRoundingMode(cb, h.name("nearest")), 1);
    EXPECT_EQ(GetRoundingMode(cb, h.string("zero")), 0);
    EXPECT_EQ(GetRoundingMode(cb, h.name("financial")), 2);
    EXPECT_EQ(h.protect([&]() -> Value { return (Value)GetRoundingMode(cb, h.string("Nearest")); }).error,
              "unrecognised rounding mode Nearest");
    EXPECT_EQ(h.protect([&]() -> Value { return (Value)GetRoundingMode(cb, h.float64(1.0)); }).error,
              "expecting a string, but received " + h.print(h.float64(1.0)));
}

}  // namespace
