// Threshold exports: dispatch per family, the order of the level and count
// checks, and the single-precision level of the inverse threshold.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using namespace orbtest;

namespace {

TEST(ThresholdOps, EachExportAppliesItsRule)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 4);
    Value x = float8(h, {-3, -1, 1, 3});
    auto run = [&](ExportFn fn, std::vector<Value> extra) {
        extra.insert(extra.begin(), {out, x});
        return written<double>(h, fn, extra);
    };
    EXPECT_EQ(run(orbThresholdLT, {h.integer(0)}), (D{0, 0, 1, 3}));
    EXPECT_EQ(run(orbThresholdGT, {h.integer(0)}), (D{-3, -1, 0, 0}));
    EXPECT_EQ(run(orbThresholdLTAbs, {h.integer(2)}), (D{-3, -2, 2, 3}));
    EXPECT_EQ(run(orbThresholdGTAbs, {h.integer(2)}), (D{-2, -1, 1, 2}));
    EXPECT_EQ(run(orbThresholdLTVal, {h.integer(0), h.integer(9)}), (D{9, 9, 1, 3}));
    EXPECT_EQ(run(orbThresholdGTVal, {h.integer(0), h.integer(9)}), (D{-3, -1, 9, 9}));
    EXPECT_EQ(run(orbThresholdLTGTVal, {h.integer(-2), h.integer(-7), h.integer(2), h.integer(7)}),
              (D{-7, -1, 1, 7}));
}

TEST(ThresholdOps, DatatypesOfEachFamily)
{
    Host h;
    Value i4 = h.rtable1(DT_INT4, 2), z = h.rtable1(DT_COMPLEX8, 2), i2 = h.rtable1(DT_INT2, 2);
    EXPECT_FALSE(h.call(orbThresholdLT, {i4, i4, h.integer(1)}).raised);
    EXPECT_FALSE(h.call(orbThresholdGTVal, {i2, i2, h.integer(1), h.integer(2)}).raised);
    // Integer levels go through the width's accessor.
    EXPECT_EQ(h.call(orbThresholdLT, {i2, i2, h.integer(40000)}).error,
              "expecting a 16-bit integer, but received 40000");

    // Complex data: the level is real, the replacement value complex.
    Value zin = complex8(h, {{0.3, 0.4}, {3, 4}});
    ASSERT_FALSE(h.call(orbThresholdGTVal, {z, zin, h.integer(1), h.complex(0, -1)}).raised);
    EXPECT_EQ(complexes(h, z), (std::vector<std::complex<double>>{{0.3, 0.4}, {0, -1}}));
}

TEST(ThresholdOps, LevelBeforeCountsExceptTwoSidedAndInverse)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 2);
    Value longer = float8(h, {1, 2, 3});
    const std::string level = "expecting a numeric value, but received L";
    const std::string counts = "rtables must have the same number of elements";
    EXPECT_EQ(h.call(orbThresholdLT, {out, longer, h.name("L")}).error, level);
    EXPECT_EQ(h.call(orbThresholdGTAbs, {out, longer, h.name("L")}).error, level);
    EXPECT_EQ(h.call(orbThresholdLTVal, {out, longer, h.integer(0), h.name("L")}).error, level);
    EXPECT_EQ(h.call(orbThresholdLTGTVal, {out, longer, h.name("L"), h.integer(0), h.integer(0), h.integer(0)}).error,
              counts);
    EXPECT_EQ(h.call(orbThresholdLTInv, {out, longer, h.name("L")}).error, counts);
    EXPECT_EQ(h.call(orbThresholdLT, {out, longer, h.integer(0)}).error, counts);

    Value f4 = float4(h, {1, 2});
    EXPECT_EQ(h.call(orbThresholdGT, {out, f4, h.integer(0)}).error, wrongType(h, "float[8]", f4));
}

TEST(ThresholdOps, InverseLevelIsSinglePrecision)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 3);
    // Elements below the level (in magnitude) become 1/level, others 1/x.
    const double level = (double)0.1f;  // 0.10000000149011612, not 0.1
    EXPECT_EQ(written<double>(h, orbThresholdLTInv, {out, float8(h, {0.05, 4, -0.01}), h.float64(0.1)}),
              (D{1 / level, 0.25, -1 / level}));
}

}  // namespace
