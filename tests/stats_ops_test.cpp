// Statistics exports: the values and sequences they build, their 1-based
// indices, the unsigned readings of integer[1] and integer[2], and the order
// of their checks.
#include <gtest/gtest.h>

#include "support.h"

using namespace orbtest;

namespace {

using I16 = std::vector<int16_t>;
using I32 = std::vector<int32_t>;
using I8 = std::vector<int8_t>;

// The printed result of a call that must not raise.
std::string shown(Host &h, ExportFn fn, const std::vector<Value> &args)
{
    CallResult r = h.call(fn, args);
    EXPECT_FALSE(r.raised) << r.error;
    return h.print(r.result);
}

TEST(StatsOps, ReductionsBuildTheirValuesAndSequences)
{
    Host h;
    Value x = float8(h, {3, 9, 9, 1});
    Value i2 = table<int16_t>(h, DT_INT2, {-7, 3, -7, 5});
    const struct { const char *name; ExportFn fn; Value arg; const char *want; } cases[] = {
        {"max", orbMax, x, "9.0"},
        {"min of integer[2]", orbMin, i2, "-7"},
        {"index of the first of equal maxima, 1-based", orbIndexMax, x, "2, 9.0"},
        {"index of the first of equal minima", orbIndexMin, i2, "1, -7"},
        {"largest magnitude", orbIndexMaxAbs, i2, "1, 7"},
        {"smallest magnitude", orbIndexMinAbs, i2, "2, 3"},
        {"min and max", orbMinMax, x, "1.0, 9.0"},
        {"indices and values", orbIndexMinMax, x, "4, 1.0, 2, 9.0"},
        {"mean", orbMean, x, "5.5"},
        {"mean of complex values", orbMean, complex8(h, {{1, 2}, {3, -4}}), "2.0-1.0i"},
        {"sum of complex values", orbSum, complex8(h, {{1, 2}, {3, -4}}), "4.0-2.0i"},
        {"standard deviation over n - 1", orbStdDev, float8(h, {2, 4, 4, 4, 5, 5, 7, 9}), "2.138089935299395"},
        {"both", orbMeanStdDev, float4(h, {1, 3}), "2.0, 1.4142135381698608"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(shown(h, c.fn, {c.arg}), c.want) << c.name;
}

TEST(StatsOps, IntegerOneIsReadAsUnsignedBytes)
{
    Host h;
    EXPECT_EQ(shown(h, orbMinMax, {table<int8_t>(h, DT_INT1, {-1, 5})}), "5, 255");
    Value out = h.rtable1(DT_INT2, 2);
    EXPECT_EQ(written<int16_t>(h, orbMaxEvery, {out, table<int16_t>(h, DT_INT2, {-1, 1}),
                                                 table<int16_t>(h, DT_INT2, {1, -3})}),
              (I16{-1, -3}));
    Value b = h.rtable1(DT_INT1, 2);
    EXPECT_EQ(written<int8_t>(h, orbMinEvery, {b, table<int8_t>(h, DT_INT1, {-1, 2}),
                                               table<int8_t>(h, DT_INT1, {3, -2})}),
              (I8{3, 2}));
}

TEST(StatsOps, ScaledIntegerSums)
{
    Host h;
    Value big = table<int32_t>(h, DT_INT4, {INT32_MAX, 1, 2});
    EXPECT_EQ(shown(h, orbSum, {big, h.integer(0)}), "2147483647");  // saturated, not wrapped
    EXPECT_EQ(shown(h, orbSum, {big, h.integer(1)}), "1073741825");  // (2^31 + 2) / 2
    EXPECT_EQ(shown(h, orbSum, {table<int16_t>(h, DT_INT2, {3, 2}), h.integer(1)}), "2");  // 2.5 to even
    EXPECT_EQ(shown(h, orbSum, {table<int16_t>(h, DT_INT2, {3, 4}), h.integer(-2)}), "28");
    EXPECT_EQ(h.call(orbSum, {table<int16_t>(h, DT_INT2, {1})}).error,
              "expecting an integer scale factor for integer rtables");
    EXPECT_EQ(h.call(orbSum, {table<int8_t>(h, DT_INT1, {1})}).error, "datatype not supported");
    EXPECT_EQ(h.call(orbSum, {h.rtable1(DT_INT8, 1)}).error, "datatype not supported");
}

TEST(StatsOps, HintsAndTheirOrder)
{
    Host h;
    // Read before the datatype, even where it goes unused.
    const std::string bad = h.call(orbMean, {float8(h, {1}), h.name("quick")}).error;
    EXPECT_NE(bad.find("quick"), std::string::npos) << bad;
    EXPECT_EQ(h.call(orbStdDev, {h.rtable1(DT_INT4, 2), h.name("quick")}).error, bad);
    EXPECT_EQ(h.call(orbMax, {float8(h, {1}), h.name("becareful")}).error,
              "expecting one argument, but received 2");
    // Single precision: an accurate sum of many small values keeps them.
    std::vector<float> v(1 << 20, 0.1f);
    v[0] = 1 << 24;
    EXPECT_EQ(shown(h, orbSum, {float4(h, v), h.name("becareful")}), "16882074.0");
    EXPECT_EQ(shown(h, orbSum, {float4(h, {1.5f, 2.25f}), h.string("none")}), "3.75");
}

TEST(StatsOps, EmptyAndShortRtablesGoToTheBackend)
{
    Host h;
    EXPECT_EQ(h.call(orbMax, {h.rtable1(DT_FLOAT8, 0)}).error, ippError(ippStsSizeErr));
    EXPECT_EQ(h.call(orbStdDev, {float8(h, {1})}).error, ippError(ippStsSizeErr));
    EXPECT_EQ(h.call(orbInfNorm, {h.rtable1(DT_FLOAT4, 0)}).error, ippError(ippStsSizeErr));
}

TEST(StatsOps, NormsAndDotProducts)
{
    Host h;
    Value z = complex8(h, {{3, 4}, {0, -1}});
    EXPECT_EQ(shown(h, orbInfNorm, {z}), "5.0");
    EXPECT_EQ(shown(h, orbL1Norm, {z}), "6.0");
    EXPECT_EQ(shown(h, orbL2Norm, {table<int16_t>(h, DT_INT2, {-3, 4})}), "5.0");
    EXPECT_EQ(shown(h, orbL1NormDiff, {float4(h, {1, 5}), float4(h, {3, 2})}), "5.0");
    EXPECT_EQ(shown(h, orbInfNormDiff, {float8(h, {1, 5}), float8(h, {3, 2})}), "3.0");

    Value r = float8(h, {1, 2}), c = complex8(h, {{1, 1}, {0, 2}});
    EXPECT_EQ(shown(h, orbDotProduct, {r, c}), "1.0+5.0i");
    EXPECT_EQ(shown(h, orbDotProduct, {c, r}), "1.0+5.0i");
    EXPECT_EQ(shown(h, orbDotProduct, {c, c}), "-4.0+2.0i");  // no conjugate
    Value big = table<int16_t>(h, DT_INT2, {30000, 30000});
    EXPECT_EQ(shown(h, orbDotProduct, {big, big}), "1800000000");
    Value w = table<int16_t>(h, DT_INT2, {-32768, -32768, -32768});
    EXPECT_EQ(shown(h, orbDotProduct, {w, w}), "3221225472");

    // Counts first, then the first datatype, then the pair.
    EXPECT_EQ(h.call(orbDotProduct, {float4(h, {1}), float8(h, {1, 2})}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbDotProduct, {float4(h, {1}), float8(h, {1})}).error, "datatype combination not supported");
    Value i4 = h.rtable1(DT_INT4, 1);
    EXPECT_EQ(h.call(orbDotProduct, {i4, i4}).error, "datatype not supported");
    // The second rtable goes through the first one's accessor before counts.
    Value s = table<int16_t>(h, DT_INT2, {1});
    EXPECT_EQ(h.call(orbL2NormDiff, {float8(h, {1, 2}), s}).error, wrongType(h, "float[8]", s));
}

TEST(StatsOps, ChecksOfTheElementWiseExtremes)
{
    Host h;
    Value d = h.rtable1(DT_FLOAT8, 2), a = float8(h, {1, 5});
    EXPECT_EQ(h.call(orbMaxEvery, {d, a}).error, "expecting two or three arguments, but received 2");
    EXPECT_EQ(h.call(orbMaxEvery, {d, a, float4(h, {1, 2})}).error, "rtables must have the same datatype");
    EXPECT_EQ(h.call(orbMaxEvery, {d, a, float8(h, {1})}).error, "rtables must have the same number of elements");
    EXPECT_EQ(written<double>(h, orbMinEvery, {d, a, float8(h, {3, 2})}), (D{1, 2}));
}

TEST(StatsOps, ZeroCrossingKindsAndCounts)
{
    Host h;
    Value x = float4(h, {1, -1, 0, 2, -0.0f});
    EXPECT_EQ(shown(h, orbZeroCrossing, {x}), "2.0");  // zero counts as positive
    EXPECT_EQ(shown(h, orbZeroCrossing, {x, h.name("ZCC")}), "2.5");
    EXPECT_EQ(shown(h, orbZeroCrossing, {x, h.string("zcXor")}), "3.0");  // -0 has its sign bit
    EXPECT_EQ(h.call(orbZeroCrossing, {x, h.integer(3)}).error,
              "expecting one of \"zcr\", \"zcc\" and \"zcxor\", but received 3");
    EXPECT_EQ(h.call(orbZeroCrossing, {x, h.name("zc")}).error,
              "expecting one of \"zcr\", \"zcc\" and \"zcxor\", but received zc");

    Value v = table<int32_t>(h, DT_INT4, {1, 2, 3, 4, 5});
    EXPECT_EQ(shown(h, orbCountInRange, {v, h.integer(1), h.integer(5)}), "3");  // both bounds excluded
    Value i8 = h.rtable1(DT_INT8, 2);
    EXPECT_EQ(h.call(orbCountInRange, {i8, h.integer(1), h.integer(5)}).error, wrongType(h, "integer[4]", i8));
    EXPECT_EQ(h.call(orbCountInRange, {v, h.integer(5), h.integer(1)}).error, ippError(ippStsRangeErr));
}

}  // namespace
