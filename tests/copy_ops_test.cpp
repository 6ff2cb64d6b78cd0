// Copy, fill and resampling exports.
#include <gtest/gtest.h>

#include "support.h"

using namespace orbtest;

namespace {

TEST(CopyOps, ShorterSourcesGoIntoTheBeginning)
{
    Host h;
    Value out = float8(h, {9, 9, 9, 9, 9});
    EXPECT_EQ(written<double>(h, orbCopy, {out, float8(h, {1, 2, 3})}), (D{1, 2, 3, 9, 9}));
    EXPECT_EQ(written<double>(h, orbMove, {out, float8(h, {4})}), (D{4, 2, 3, 9, 9}));
    EXPECT_EQ(written<double>(h, orbMove, {out, out}), (D{4, 2, 3, 9, 9}));  // onto itself: no change

    EXPECT_EQ(h.call(orbCopy, {float8(h, {1}), float8(h, {1, 2})}).error,
              "rtables must have the same number of elements");
    Value f4 = float4(h, {1});
    EXPECT_EQ(h.call(orbMove, {out, f4}).error, wrongType(h, "float[8]", f4));

    // Every element width is copied whole.
    for (int32_t code : {DT_INT2, DT_INT4, DT_INT8, DT_COMPLEX8, DT_FLOAT4}) {
        Value a = h.rtable1(code, 3), b = h.rtable1(code, 3);
        std::memset(h.rtableInfo(b).data, 0x5A, bytes(h, b).size());
        ASSERT_FALSE(h.call(orbCopy, {a, b}).raised) << code;
        EXPECT_EQ(bytes(h, a), bytes(h, b)) << code;
    }
}

TEST(CopyOps, SetAndZeroCoverEveryDatatype)
{
    Host h;
    Value i1 = h.rtable1(DT_INT1, 3), z = h.rtable1(DT_COMPLEX8, 2), i8 = h.rtable1(DT_INT8, 2);
    EXPECT_EQ(written<int8_t>(h, orbSet, {i1, h.integer(127)}), (std::vector<int8_t>{127, 127, 127}));
    EXPECT_EQ(h.call(orbSet, {i1, h.integer(200)}).error, "expecting a 16-bit integer, but received 200");
    EXPECT_EQ(written<Ipp64fc>(h, orbSet, {z, h.complex(1, -1)})[1].im, -1);
    EXPECT_EQ(written<int64_t>(h, orbSet, {i8, h.integer(INT64_MIN)})[1], INT64_MIN);

    for (int32_t code = DT_INT1; code <= DT_FLOAT4; ++code) {
        Value a = h.rtable1(code, 3);
        std::memset(h.rtableInfo(a).data, 0x5A, 3);
        ASSERT_FALSE(h.call(orbZero, {a}).raised) << code;
        EXPECT_EQ(bytes(h, a), std::string(bytes(h, a).size(), '\0')) << code;
    }
}

TEST(CopyOps, UpSampleSizesAndPhase)
{
    Host h;
    Value src = float8(h, {1, 2, 3, 4}), out = h.rtable1(DT_FLOAT8, 12);
    EXPECT_EQ(h.call(orbUpSample, {h.rtable1(DT_FLOAT8, 11), src, h.integer(3)}).error, "output sample too small");
    EXPECT_EQ(written<double>(h, orbUpSample, {out, src, h.integer(3), h.integer(1), h.name("ignored")}),
              (D{0, 1, 0, 0, 2, 0, 0, 3, 0, 0, 4, 0}));
    EXPECT_EQ(h.call(orbUpSample, {out, float4(h, {1}), h.integer(2)}).error, "rtables must have the same datatype");
    // A phase not below the factor is the backend's to refuse.
    CallResult r = h.call(orbUpSample, {out, src, h.integer(3), h.integer(3)});
    EXPECT_EQ(r.error.rfind("IPP Error: ", 0), 0u) << r.error;
}

TEST(CopyOps, DownSampleSizesAndTheZeroFactor)
{
    Host h;
    Value src = float8(h, {1, 2, 3, 4, 5}), out = h.rtable1(DT_FLOAT8, 2);
    EXPECT_EQ(written<double>(h, orbDownSample, {out, src, h.integer(2), h.integer(1)}), (D{2, 4}));
    EXPECT_EQ(h.call(orbDownSample, {h.rtable1(DT_FLOAT8, 2), src, h.integer(2)}).error, "output sample too small");
    EXPECT_FALSE(h.call(orbDownSample, {h.rtable1(DT_INT2, 3), h.rtable1(DT_INT2, 5), h.integer(2)}).raised);
    // A zero factor does not stop the process: the backend refuses it.
    std::string before = bytes(h, out);
    EXPECT_EQ(h.call(orbDownSample, {out, src, h.integer(0)}).error, ippError(ippStsSampleFactorErr));
    EXPECT_EQ(bytes(h, out), before);
}

}  // namespace
