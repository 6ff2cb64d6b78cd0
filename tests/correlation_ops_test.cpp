// Convolution and correlation exports: the algorithm option before the
// rtables, the output-length message, biased convolution, the three
// auto-correlation normalisations, cross-correlation lags, the integer[2]
// paths' scaling and rounding, and out-of-memory on every allocation.
#include <gtest/gtest.h>

#include "backend_hooks.h"
#include "support.h"

using namespace orbtest;

namespace {

void expectNear(const D &got, const D &want)
{
    ASSERT_EQ(got.size(), want.size());
    for (size_t i = 0; i < got.size(); ++i) EXPECT_NEAR(got[i], want[i], 1e-9) << "at " << i;
}

TEST(CorrelationOps, ConvolutionByEachAlgorithm)
{
    Host h;
    Value a = float8(h, {1, 2, 3}), b = float8(h, {1, 2, 3, 4});
    for (const char *alg : {"auto", "fft", "direct"}) {
        Value dst = float8(h, {9, 9, 9, 9, 9, 9, 9, 9});  // longer than needed: the tail stays
        CallResult r = h.call(orbConvolution, {dst, a, b, h.string(alg)});
        ASSERT_FALSE(r.raised) << r.error;
        expectNear(contents<double>(h, dst), {1, 4, 10, 16, 17, 12, 9, 9});
        Value dst4 = h.rtable1(DT_FLOAT4, 6);
        ASSERT_FALSE(h.call(orbConvolution, {dst4, float4(h, {1, 2, 3}), float4(h, {1, 2, 3, 4}), h.string(alg)}).raised);
        const auto f = contents<float>(h, dst4);
        const D got(f.begin(), f.end()), want{1, 4, 10, 16, 17, 12};
        for (size_t i = 0; i < want.size(); ++i) EXPECT_NEAR(got[i], want[i], 1e-5) << alg << " at " << i;
    }
}

TEST(CorrelationOps, ConvolutionMessagesInOrder)
{
    Host h;
    Value a = float8(h, {1, 2, 3}), b = float8(h, {1, 2, 3, 4}), z = h.rtable1(DT_COMPLEX8, 6);
    struct {
        std::vector<Value> args;
        std::string error;
    } rows[] = {
        {{h.rtable1(DT_FLOAT8, 6), a, b}, "expecting four arguments, but received 3"},
        {{z, a, b, h.string("FFT")}, "unsupported algorithm FFT"},  // the option first, case matters
        {{z, a, b, h.integer(3)}, "algorithm argument needs to be a name"},
        {{z, a, b, h.name("auto")}, "algorithm argument needs to be a name"},  // strings only
        {{z, a, b, h.string("auto")}, "datatype not supported"},
        {{h.rtable1(DT_FLOAT8, 6), a, float4(h, {1}), h.string("auto")}, wrongType(h, "float[8]", float4(h, {1}))},
        // 6 elements suffice, the message asks for la + lb.
        {{h.rtable1(DT_FLOAT8, 5), a, b, h.string("direct")},
         "output sample must have at least 7 elements, but has only 5 elements"},
        {{h.rtable1(DT_FLOAT8, 6), a, b, h.string("direct")}, ""},
        {{h.rtable1(DT_FLOAT8, 6), float8(h, {}), b, h.string("auto")}, ippError(ippStsSizeErr)},
    };
    for (auto &row : rows) EXPECT_EQ(h.call(orbConvolution, row.args).error, row.error);
}

TEST(CorrelationOps, BiasedConvolution)
{
    Host h;
    Value a = float4(h, {1, 2, 3}), b = float4(h, {1, 2, 3, 4}), dst = float4(h, {7, 7, 7, 7, 7, 7, 7});
    ASSERT_FALSE(h.call(orbBiasedConvolution, {dst, a, b, h.integer(1)}).raised);
    EXPECT_EQ(contents<float>(h, dst), (std::vector<float>{4, 10, 16, 17, 12, 0, 0}));
    EXPECT_EQ(h.call(orbBiasedConvolution, {dst, a, b, h.integer(-1)}).error,
              "fourth argument must be non-negative, but received -1");
    Value f8 = h.rtable1(DT_FLOAT8, 4);
    EXPECT_EQ(h.call(orbBiasedConvolution, {f8, a, b, h.integer(0)}).error, wrongType(h, "float[4]", f8));
}

TEST(CorrelationOps, AutoCorrelationNormalisations)
{
    Host h;
    Value src = float8(h, {1, 2, 3, 4});
    struct {
        ExportFn fn;
        D want;
    } rows[] = {{orbAutoCorrelation, {30, 20, 11, 4, 0}},
                {orbBiasedAutoCorrelation, {7.5, 5, 2.75, 1, 0}},
                {orbUnbiasedAutoCorrelation, {7.5, 20.0 / 3, 5.5, 4, 0}}};
    for (auto &row : rows) {
        Value dst = h.rtable1(DT_FLOAT8, 5);
        ASSERT_FALSE(h.call(row.fn, {dst, src}).raised);
        expectNear(contents<double>(h, dst), row.want);
    }
    // Complex: lag n sums conj(x[i]) x[i + n].
    Value z = h.rtable1(DT_COMPLEX8, 2);
    ASSERT_FALSE(h.call(orbAutoCorrelation, {z, complex8(h, {{1, 1}, {2, 0}})}).raised);
    auto got = complexes(h, z);
    EXPECT_NEAR(std::abs(got[0] - std::complex<double>(6, 0)), 0, 1e-12);
    EXPECT_NEAR(std::abs(got[1] - std::complex<double>(2, -2)), 0, 1e-12);
    EXPECT_EQ(h.call(orbAutoCorrelation, {h.rtable1(DT_INT4, 2), src}).error, "datatype not supported");
    EXPECT_EQ(h.call(orbAutoCorrelation, {h.rtable1(DT_FLOAT8, 0), src}).error, ippError(ippStsSizeErr));
    EXPECT_EQ(h.call(orbBiasedConvolution, {float4(h, {0}), float4(h, {}), float4(h, {1}), h.integer(0)}).error,
              ippError(ippStsSizeErr));
}

TEST(CorrelationOps, IntegerPathsScaleAndRoundToNearestEven)
{
    Host h;
    using S = std::vector<int16_t>;
    auto i2 = [&](const S &v) { return table(h, DT_INT2, v); };
    struct {
        ExportFn fn;
        S src;
        int scale;
        S want;
    } rows[] = {
        {orbAutoCorrelation, {1, 2, 3, 4}, 0, {30, 20, 11, 4}},
        {orbAutoCorrelation, {1, 2, 3, 4}, 1, {15, 10, 6, 2}},    // 5.5 to 6
        {orbAutoCorrelation, {1, 2, 3, 4}, -1, {60, 40, 22, 8}},  // negative scales multiply
        {orbBiasedAutoCorrelation, {1, 2}, 0, {2, 1, 0, 0}},      // 2.5 to 2
        {orbUnbiasedAutoCorrelation, {1, 2, 3, 4}, 0, {8, 7, 6, 4}},
        {orbAutoCorrelation, {300, 300}, 0, {32767, 32767, 0, 0}},  // saturated
    };
    for (auto &row : rows) {
        Value dst = h.rtable1(DT_INT2, 4);
        CallResult r = h.call(row.fn, {dst, i2(row.src), h.integer(row.scale)});
        ASSERT_FALSE(r.raised) << r.error;
        EXPECT_EQ(contents<int16_t>(h, dst), row.want);
    }
    Value dst = h.rtable1(DT_INT2, 4);
    EXPECT_EQ(h.call(orbAutoCorrelation, {dst, i2({1})}).error, "for datatype = integer[2] a scale factor is required");
    EXPECT_EQ(h.call(orbCrossCorrelation, {dst, i2({1}), i2({1}), h.integer(0)}).error,
              "for datatype = integer[2] a scale factor is required");
    ASSERT_FALSE(h.call(orbCrossCorrelation, {dst, i2({1, 2, 3}), i2({1, 2, 3, 4}), h.integer(-1), h.integer(1)}).raised);
    EXPECT_EQ(contents<int16_t>(h, dst), (S{4, 7, 10, 6}));  // 8, 14, 20, 11 halved, 11 / 2 to 6
}

TEST(CorrelationOps, CrossCorrelationLags)
{
    Host h;
    Value a = float8(h, {1, 2, 3}), b = float8(h, {1, 2, 3, 4});
    struct {
        int lowLag;
        D want;
    } rows[] = {{-2, {3, 8, 14, 20, 11, 4}}, {-5, {0, 0, 0, 3, 8, 14}}, {2, {11, 4, 0, 0, 0, 0}}};
    for (auto &row : rows) {
        Value dst = h.rtable1(DT_FLOAT8, 6);
        ASSERT_FALSE(h.call(orbCrossCorrelation, {dst, a, b, h.integer(row.lowLag)}).raised);
        expectNear(contents<double>(h, dst), row.want);
    }
    // The lag is read as an integer before the datatype is judged.
    Value i4 = h.rtable1(DT_INT4, 6);
    EXPECT_EQ(h.call(orbCrossCorrelation, {i4, a, b, h.name("x")}).error, "expecting a 32-bit integer, but received x");
    EXPECT_EQ(h.call(orbCrossCorrelation, {i4, a, b, h.integer(0)}).error, "datatype not supported");
}

// Each allocation failing in turn raises "out of memory" and leaves nothing
// behind, until the call needs no more.
TEST(CorrelationOps, EveryAllocationFailureIsReported)
{
    Host h;
    Value f4 = h.rtable1(DT_FLOAT4, 7), z = h.rtable1(DT_COMPLEX8, 7), f8 = h.rtable1(DT_FLOAT8, 900);
    Value big = float8(h, D(600, 1.0));
    struct {
        ExportFn fn;
        std::vector<Value> args;
    } rows[] = {
        {orbConvolution, {f8, big, float8(h, D(300, 2.0)), h.string("fft")}},
        {orbConvolution, {f4, float4(h, {1, 2, 3}), float4(h, {1, 2, 3, 4, 5}), h.string("direct")}},
        {orbAutoCorrelation, {z, complex8(h, {{1, 2}, {3, 4}})}},
        {orbCrossCorrelation, {f8, big, big, h.integer(-300)}},
    };
    for (auto &row : rows) {
        int k = 1;
        for (;; ++k) {
            const int64_t before = orbBackendLiveAllocations();
            orbBackendFailNthAllocation(k);
            CallResult r = h.call(row.fn, row.args);
            orbBackendFailNthAllocation(0);
            EXPECT_EQ(orbBackendLiveAllocations(), before);
            if (!r.raised) break;
            ASSERT_EQ(r.error, "out of memory");
        }
        EXPECT_GT(k, 1);
    }
}

}  // namespace
