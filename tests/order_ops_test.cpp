// Ordering and search exports: sorts (integer[1] as unsigned bytes), the
// reversal's datatypes, the binary order, and table search with its 0-based
// single index and its limits.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using namespace orbtest;

namespace {

using I8 = std::vector<int8_t>;
using I16 = std::vector<int16_t>;
using I32 = std::vector<int32_t>;

TEST(OrderOps, SortsInPlaceBothWays)
{
    Host h;
    Value b = table<int8_t>(h, DT_INT1, {-1, 1, 0});
    EXPECT_EQ(written<int8_t>(h, orbSortAscending, {b}), (I8{0, 1, -1}));
    EXPECT_EQ(written<int8_t>(h, orbSortDescending, {b}), (I8{-1, 1, 0}));
    Value s = table<int16_t>(h, DT_INT2, {5, -3, 0});
    EXPECT_EQ(written<int16_t>(h, orbSortAscending, {s}), (I16{-3, 0, 5}));
    Value w = table<int32_t>(h, DT_INT4, {5, -3, 0});
    EXPECT_EQ(written<int32_t>(h, orbSortDescending, {w}), (I32{5, 0, -3}));
    std::vector<double> got = written<double>(h, orbSortAscending, {float8(h, {2, NAN, -INFINITY, 1})});
    EXPECT_EQ(D(got.begin(), got.begin() + 3), (D{-INFINITY, 1, 2}));
    EXPECT_TRUE(std::isnan(got[3]));
    EXPECT_EQ(written<float>(h, orbSortDescending, {float4(h, {1, 3, 2})}), (std::vector<float>{3, 2, 1}));
    EXPECT_EQ(h.call(orbSortAscending, {h.rtable1(DT_INT8, 2)}).error, "datatype not supported");
    EXPECT_EQ(h.call(orbSortAscending, {h.rtable1(DT_FLOAT8, 0)}).error, ippError(ippStsSizeErr));
}

TEST(OrderOps, ReverseReadsTheSourceUnsigned)
{
    Host h;
    Value d = h.rtable1(DT_INT2, 3);
    EXPECT_EQ(written<int16_t>(h, orbReverse, {d, table<int16_t>(h, DT_INT2, {-1, 2, 3})}), (I16{3, 2, -1}));
    Value z = complex8(h, {{1, 2}, {3, 4}});
    ASSERT_FALSE(h.call(orbReverse, {z, z}).raised);  // in place
    EXPECT_EQ(complexes(h, z), (Z{{3, 4}, {1, 2}}));
    Value i4 = h.rtable1(DT_INT4, 2);
    EXPECT_EQ(h.call(orbReverse, {i4, i4}).error, "datatype not supported");
    // The source's negative elements are no fault of the unsigned accessor.
    Value b = h.rtable1(DT_INT1, 2);
    EXPECT_EQ(written<int8_t>(h, orbReverse, {b, table<int8_t>(h, DT_INT1, {-5, 7})}), (I8{7, -5}));
    EXPECT_EQ(h.call(orbReverse, {b, table<int8_t>(h, DT_INT1, {1})}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbReverse, {b}).error, "expecting one or two arguments, but received 1");
}

TEST(OrderOps, MaxOrder)
{
    Host h;
    const struct { Value x; int64_t want; } cases[] = {
        {table<int16_t>(h, DT_INT2, {3, -32768}), 16},
        {table<int32_t>(h, DT_INT4, {0, 0}), 0},
        {float8(h, {0.3, -5}), 3},
        {float4(h, {0.25f}), -1},
    };
    for (const auto &c : cases) {
        CallResult r = h.call(orbMaxOrder, {c.x});
        ASSERT_FALSE(r.raised) << r.error;
        EXPECT_EQ(h.toInteger(r.result), c.want) << h.print(c.x);
    }
    EXPECT_EQ(h.call(orbMaxOrder, {h.rtable1(DT_FLOAT8, 0)}).error, ippError(ippStsSizeErr));
    EXPECT_EQ(h.call(orbMaxOrder, {h.rtable1(DT_INT1, 1)}).error, "datatype not supported");
}

TEST(OrderOps, FindNearest)
{
    Host h;
    Value t = table<int16_t>(h, DT_INT2, {10, 20, 30});
    const struct { int64_t value; const char *want; } one[] = {
        {24, "20, 1"}, {25, "20, 1"}, {26, "30, 2"}, {0, "10, 0"}, {32767, "30, 2"},
    };
    for (const auto &c : one) {
        CallResult r = h.call(orbFindNearestOne, {t, h.integer(c.value)});
        ASSERT_FALSE(r.raised) << r.error;
        EXPECT_EQ(h.print(r.result), c.want) << c.value;
    }
    // A table entry above 32767 is read unsigned.
    CallResult r = h.call(orbFindNearestOne, {table<int16_t>(h, DT_INT2, {-2}), h.integer(5)});
    EXPECT_EQ(h.print(r.result), "65534, 0");

    Value vals = h.rtable1(DT_INT2, 3), idx = h.rtable1(DT_INT4, 3);
    Value sought = table<int16_t>(h, DT_INT2, {31, 14, 16});
    r = h.call(orbFindNearest, {vals, idx, t, sought});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(contents<int16_t>(h, vals), (I16{30, 10, 20}));
    EXPECT_EQ(contents<int32_t>(h, idx), (I32{2, 0, 1}));

    Value five = table<int16_t>(h, DT_INT2, {1, 2, 3, 4, 5});
    Value v5 = h.rtable1(DT_INT2, 5), i5 = h.rtable1(DT_INT4, 5);
    Value t4 = table<int16_t>(h, DT_INT2, {1, 2, 3, 4});
    EXPECT_EQ(h.call(orbFindNearest, {v5, i5, t4, five}).error,
              "third argument must have at least as many elements as the remaining arguments");
    EXPECT_EQ(h.call(orbFindNearest, {v5, idx, t, five}).error,
              "first two and fourth rtables must have the same number of elements");
}

}  // namespace
