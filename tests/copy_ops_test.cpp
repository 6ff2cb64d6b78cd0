// Copy, fill and resampling exports.
#include <gtest/gtest.h>

#include "support.h"

using orbhost::CallResult;
using orbhost::Host;
using orbhost::Value;
using orbtest::contents;
using orbtest::float4;
using orbtest::float8;

namespace {

using D = std::vector<double>;

TEST(CopyOps, ShorterSourcesGoIntoTheBeginning)
{
    Host h;
    Value out = float8(h, {9, 9, 9, 9, 9});
    ASSERT_FALSE(h.call(orbCopy, {out, float8(h, {1, 2, 3})}).raised);
    EXPECT_EQ(contents<double>(h, out), (D{1, 2, 3, 9, 9}));
    ASSERT_FALSE(h.call(orbMove, {out, float8(h, {4})}).raised);
    EXPECT_EQ(contents<double>(h, out), (D{4, 2, 3, 9, 9}));
    // In place: a move of an rtable onto itself leaves it as it was.
    ASSERT_FALSE(h.call(orbMove, {out, out}).raised);
    EXPECT_EQ(contents<double>(h, out), (D{4, 2, 3, 9, 9}));

    EXPECT_EQ(h.call(orbCopy, {float8(h, {1}), float8(h, {1, 2})}).error,
              "rtables must have the same number of elements");
    Value i1 = h.rtable1(DT_INT1, 2);
    EXPECT_EQ(h.call(orbCopy, {i1, i1}).error, "datatype not supported");
    Value f4 = float4(h, {1});
    EXPECT_EQ(h.call(orbMove, {out, f4}).error,
              "expecting an rtable with datatype = float[8], but received " + h.print(f4));
    EXPECT_EQ(h.call(orbCopy, {out}).error, "expecting two arguments, but received 1");

    for (int32_t code : {DT_INT2, DT_INT4, DT_INT8, DT_COMPLEX8, DT_FLOAT4}) {
        Value a = h.rtable1(code, 3), b = h.rtable1(code, 3);
        std::memset(h.rtableInfo(b).data, 0x5A, orbtest::bytes(h, b).size());
        ASSERT_FALSE(h.call(orbCopy, {a, b}).raised) << code;
        EXPECT_EQ(orbtest::bytes(h, a), orbtest::bytes(h, b)) << code;
    }
}

TEST(CopyOps, SetAndZeroCoverEveryIntegerWidth)
{
    Host h;
    Value i1 = h.rtable1(DT_INT1, 3);
    ASSERT_FALSE(h.call(orbSet, {i1, h.integer(127)}).raised);
    EXPECT_EQ(contents<int8_t>(h, i1), (std::vector<int8_t>{127, 127, 127}));
    EXPECT_EQ(h.call(orbSet, {i1, h.integer(200)}).error, "expecting a 16-bit integer, but received 200");
    Value z = h.rtable1(DT_COMPLEX8, 2);
    ASSERT_FALSE(h.call(orbSet, {z, h.complex(1, -1)}).raised);
    EXPECT_EQ(contents<Ipp64fc>(h, z)[1].im, -1);
    Value i8 = h.rtable1(DT_INT8, 2);
    ASSERT_FALSE(h.call(orbSet, {i8, h.integer(INT64_MIN)}).raised);
    EXPECT_EQ(contents<int64_t>(h, i8)[1], INT64_MIN);
    EXPECT_EQ(h.call(orbSet, {h.rtable1(DT_ANYTHING, 2), h.integer(1)}).error, "datatype not supported");

    for (int32_t code = DT_INT1; code <= DT_FLOAT4; ++code) {
        Value a = h.rtable1(code, 3);
        std::memset(h.rtableInfo(a).data, 0x5A, 3);
        ASSERT_FALSE(h.call(orbZero, {a}).raised) << code;
        std::string b = orbtest::bytes(h, a);
        EXPECT_EQ(b, std::string(b.size(), '\0')) << code;
    }
    EXPECT_EQ(h.call(orbZero, {i1, i1}).error, "expecting one argument, but received 2");
    EXPECT_EQ(h.call(orbZero, {h.rtable1(DT_PAIR, 1)}).error, "datatype not supported");
}

TEST(CopyOps, UpSampleSizesAndPhase)
{
    Host h;
    Value src = float8(h, {1, 2, 3, 4});
    EXPECT_EQ(h.call(orbUpSample, {h.rtable1(DT_FLOAT8, 11), src, h.integer(3)}).error, "output sample too small");
    Value out = h.rtable1(DT_FLOAT8, 12);
    ASSERT_FALSE(h.call(orbUpSample, {out, src, h.integer(3), h.integer(1), h.name("ignored")}).raised);
    EXPECT_EQ(contents<double>(h, out), (D{0, 1, 0, 0, 2, 0, 0, 3, 0, 0, 4, 0}));
    EXPECT_EQ(h.call(orbUpSample, {out, src}).error, "expecting three or four arguments, but received 2");
    EXPECT_EQ(h.call(orbUpSample, {out, float4(h, {1}), h.integer(2)}).error, "rtables must have the same datatype");
    Value b = h.rtable1(DT_INT1, 4);
    EXPECT_EQ(h.call(orbUpSample, {b, b, h.integer(1)}).error, "datatype not supported");
    // A phase not below the factor is the backend's to refuse.
    CallResult r = h.call(orbUpSample, {out, src, h.integer(3), h.integer(3)});
    EXPECT_EQ(r.error.rfind("IPP Error: ", 0), 0u) << r.error;
}

TEST(CopyOps, DownSampleSizesAndTheZeroFactor)
{
    Host h;
    Value src = float8(h, {1, 2, 3, 4, 5});
    Value out = h.rtable1(DT_FLOAT8, 2);
    ASSERT_FALSE(h.call(orbDownSample, {out, src, h.integer(2), h.integer(1)}).raised);
    EXPECT_EQ(contents<double>(h, out), (D{2, 4}));
    EXPECT_EQ(h.call(orbDownSample, {h.rtable1(DT_FLOAT8, 2), src, h.integer(2)}).error, "output sample too small");
    Value i2 = h.rtable1(DT_INT2, 3);
    ASSERT_FALSE(h.call(orbDownSample, {i2, h.rtable1(DT_INT2, 5), h.integer(2)}).raised);
    // A zero factor does not stop the process: the backend refuses it.
    std::string before = orbtest::bytes(h, out);
    CallResult r = h.call(orbDownSample, {out, src, h.integer(0)});
    EXPECT_EQ(r.error, std::string("IPP Error: ") + ippGetStatusString(ippStsSampleFactorErr));
    EXPECT_EQ(orbtest::bytes(h, out), before);
}

}  // namespace
