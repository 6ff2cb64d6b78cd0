// Border selection and the wavelet exports: the selector's table and its
// fallback, calls through the one border-function type, round trips of one
// and three channels at even and odd sizes, the even-size copy, messages,
// and no allocation left behind on any failing path.
#include <gtest/gtest.h>

#include <random>

#include "backend_hooks.h"
#include "support.h"

using namespace orbtest;

namespace {

using F = std::vector<float>;

// Any border function as the shared type (through a neutral function type).
template <typename Fn>
OrbBorderFunc Border(Fn f)
{
    return reinterpret_cast<OrbBorderFunc>(reinterpret_cast<void (*)(void)>(f));
}

TEST(WaveletOps, SelectorTableFallsBackToThreeChannelConstant)
{
    const OrbBorderFunc c3 = Border(orbCopyConstBorder_C3);
    const struct {
        int type;
        OrbBorderFunc two, three;
    } rows[] = {
        {1, Border(orbReplicateBorder_C1), Border(orbReplicateBorder_C3)},
        {2, Border(orbMirrorBorder_C1), Border(orbMirrorBorder_C3)},
        {3, Border(orbCopyConstBorder_C1), c3},
        {0, c3, c3},
        {7, c3, c3},
        {-1, c3, c3},
    };
    for (const auto &r : rows) {
        EXPECT_EQ(chooseBorderFunc(r.type, 2), r.two) << r.type;
        EXPECT_EQ(chooseBorderFunc(r.type, 3), r.three) << r.type;
        for (int dims : {0, 1, 4})
            EXPECT_EQ(chooseBorderFunc(r.type, dims), c3) << r.type << " " << dims;
    }
}

// Every member called through the shared type gets its own arguments: the
// single value for the one-channel constant, the three values for the
// three-channel one.
TEST(WaveletOps, EachBorderFunctionWorksThroughTheSharedType)
{
    const float three[3] = {5, 6, 7};
    const float src[2 * 2 * 3] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    for (int type : {1, 2, 3})
        for (int C : {1, 3}) {
            float viaPointer[4 * 4 * 3], direct[4 * 4 * 3];
            const IppiSize s = {2, 2}, d = {4, 4};
            OrbBorderFunc f = chooseBorderFunc(type, C == 1 ? 2 : 3);
            ASSERT_EQ(f(src, 2 * C * 4, s, viaPointer, 4 * C * 4, d, 1, 1, three, -2.0f), ippStsNoErr);
            IppStatus st;
            if (type == 1)
                st = C == 1 ? ippiCopyReplicateBorder_32f_C1R(src, 8, s, direct, 16, d, 1, 1)
                            : ippiCopyReplicateBorder_32f_C3R(src, 24, s, direct, 48, d, 1, 1);
            else if (type == 2)
                st = C == 1 ? ippiCopyMirrorBorder_32f_C1R(src, 8, s, direct, 16, d, 1, 1)
                            : ippiCopyMirrorBorder_32f_C3R(src, 24, s, direct, 48, d, 1, 1);
            else
                st = C == 1 ? ippiCopyConstBorder_32f_C1R(src, 8, s, direct, 16, d, 1, 1, -2.0f)
                            : ippiCopyConstBorder_32f_C3R(src, 24, s, direct, 48, d, 1, 1, three);
            ASSERT_EQ(st, ippStsNoErr);
            EXPECT_EQ(0, memcmp(viaPointer, direct, sizeof(float) * 16 * C)) << type << " C" << C;
        }
}

// Images as the host holds them: h x w (x 3), row-major.
Value Image(Host &h, int rows, int cols, int C, const F &data = {})
{
    if (C == 1) return h.rtable(DT_FLOAT4, {{1, rows}, {1, cols}}, data.empty() ? nullptr : data.data());
    return h.rtable(DT_FLOAT4, {{1, rows}, {1, cols}, {1, 3}}, data.empty() ? nullptr : data.data());
}

F Random(size_t n, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> u(-10, 10);
    F v(n);
    for (float &x : v) x = u(rng);
    return v;
}

struct Bank {
    F fl, fh;
    int fal, fah;
    F il, ih;
    int ial, iah;
};

const float s2 = 0.70710678f;
const Bank kHaar = {{s2, s2}, {s2, -s2}, 1, 1, {s2, s2}, {-s2, s2}, 0, 0};
// LeGall 5/3 with every filter five taps long and equal anchors in each
// direction, so that the inverse's border offsets coincide.
const Bank kLeGall = {{-0.125f, 0.25f, 0.75f, 0.25f, -0.125f}, {-0.5f, 1, -0.5f, 0, 0}, 2, 2,
                      {0.5f, 1, 0.5f, 0, 0}, {-0.125f, -0.25f, 0.75f, -0.25f, -0.125f}, 1, 1};

// Forward then inverse through the exports; gives the reconstruction (of
// the even-size image) and the subbands.
F RoundTrip(Host &h, const Bank &b, const F &src, int rows, int cols, int C, int border, std::vector<F> *bands = nullptr)
{
    const int hr = (rows + 1) / 2, hc = (cols + 1) / 2;
    Value out[4];
    for (Value &v : out) v = Image(h, hr, hc, C);
    Value source = Image(h, rows, cols, C, src);
    CallResult r = h.call(orbFwdDWT, {out[0], out[1], out[2], out[3], source, float4(h, b.fl), h.integer(b.fal),
                                      float4(h, b.fh), h.integer(b.fah), h.integer(border), h.float64(0.5),
                                      float4(h, {1, 2, 3})});
    EXPECT_FALSE(r.raised) << r.error;
    EXPECT_EQ(r.result, 0u);
    if (bands)
        for (Value v : out) bands->push_back(contents<float>(h, v));
    Value back = Image(h, 2 * hr, 2 * hc, C);
    r = h.call(orbInvDWT, {back, out[0], out[1], out[2], out[3], float4(h, b.il), h.integer(b.ial), float4(h, b.ih),
                           h.integer(b.iah), h.integer(border), h.float64(0.5), float4(h, {1, 2, 3})});
    EXPECT_FALSE(r.raised) << r.error;
    EXPECT_EQ(r.result, 0u);
    EXPECT_TRUE(h.guardsIntact());
    return contents<float>(h, back);
}

TEST(WaveletOps, HaarReconstructsEvenAndOddSizesOfBothChannelCounts)
{
    for (int C : {1, 3})
        for (auto [rows, cols] : {std::pair{6, 8}, std::pair{5, 7}, std::pair{1, 1}})
            for (int border : {1, 2, 3}) {
                Host h;
                F src = Random(size_t(rows) * cols * C, 1);
                F back = RoundTrip(h, kHaar, src, rows, cols, C, border);
                const int bc = 2 * ((cols + 1) / 2);
                for (int y = 0; y < rows; ++y)
                    for (int x = 0; x < cols * C; ++x)
                        ASSERT_NEAR(back[size_t(y) * bc * C + x], src[size_t(y) * cols * C + x], 1e-4f)
                            << "C" << C << " " << rows << "x" << cols << " border " << border;
            }
}

// The transform's origins count rows in bordered-width elements; at widths
// whose bordered rows fill whole aligned steps the biorthogonal pair
// reconstructs the image away from its edges (where the border kind, not
// the filters, decides).
TEST(WaveletOps, BiorthogonalPairReconstructsTheInterior)
{
    for (int C : {1, 3})
        for (auto [rows, cols] : {std::pair{12, 28}, std::pair{11, 27}}) {
            Host h;
            F src = Random(size_t(rows) * cols * C, 2);
            F back = RoundTrip(h, kLeGall, src, rows, cols, C, 2);
            const int bc = 2 * ((cols + 1) / 2);
            for (int y = 3; y < rows - 3; ++y)
                for (int x = 3 * C; x < (cols - 3) * C; ++x)
                    ASSERT_NEAR(back[size_t(y) * bc * C + x], src[size_t(y) * cols * C + x], 1e-4f)
                        << "C" << C << " " << rows << "x" << cols << " at " << y << "," << x;
        }
}

// Where the aligned step and the bordered width differ, and where the
// inverse's low and high borders differ (so detail X and Y are read off
// their borders), the kept offsets give other numbers than a plain
// transform would, but every read stays in zeroed scratch: the same call
// gives the same result every time.
TEST(WaveletOps, KeptOffsetsReadOnlyInitialisedScratch)
{
    const Bank uneven = {kLeGall.fl, kLeGall.fh, 2, 2, {0.5f, 1, 0.5f}, kLeGall.ih, 1, 1};
    for (int C : {1, 3}) {
        std::vector<F> first;
        for (int run = 0; run < 2; ++run) {
            Host h;
            std::vector<F> bands;
            F back = RoundTrip(h, uneven, Random(size_t(6) * 10 * C, 5), 6, 10, C, 1, &bands);
            bands.push_back(back);
            if (run == 0)
                first = bands;
            else
                EXPECT_EQ(bands, first) << "C" << C;
        }
    }
}

// A 5 x 7 source is first made 6 x 8 by its border kind, then bordered: the
// same as transforming that 6 x 8 image directly.
TEST(WaveletOps, OddSourcesGetAnEvenSizeCopyFirst)
{
    for (int border : {1, 2}) {
        Host h;
        F src = Random(5 * 7, 3), even(6 * 8);
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 8; ++x) {
                const int sy = y < 5 ? y : border == 1 ? 4 : 3, sx = x < 7 ? x : border == 1 ? 6 : 5;
                even[size_t(y) * 8 + x] = src[size_t(sy) * 7 + sx];
            }
        std::vector<F> odd, direct;
        RoundTrip(h, kHaar, src, 5, 7, 1, border, &odd);
        RoundTrip(h, kHaar, even, 6, 8, 1, border, &direct);
        for (int k = 0; k < 4; ++k) EXPECT_EQ(odd[size_t(k)], direct[size_t(k)]) << "band " << k;
    }
}

TEST(WaveletOps, Messages)
{
    Host h;
    h.setErrorMode(ErrorMode::Return);
    auto fwd = [&](Value a, Value src, int border, int anchor, Value taps) {
        return h.call(orbFwdDWT, {a, Image(h, 2, 2, 1), Image(h, 2, 2, 1), Image(h, 2, 2, 1), src, taps,
                                  h.integer(anchor), float4(h, {1, -1}), h.integer(1), h.integer(border),
                                  h.float64(0), float4(h, {0, 0, 0})});
    };
    const std::string sizes = "rtable sizes do not fit the transform";
    const struct {
        const char *what;
        CallResult r;
        std::string want;
    } cases[] = {
        {"four dimensions",
         fwd(Image(h, 2, 2, 1), h.rtable(DT_FLOAT4, {{1, 4}, {1, 4}, {1, 1}, {1, 1}}), 1, 1, float4(h, {1, 1})),
         "dimension of rtable must be one or three"},
        {"output above half", fwd(Image(h, 3, 2, 1), Image(h, 4, 4, 1), 1, 1, float4(h, {1, 1})), sizes},
        {"three-channel constant on a matrix", fwd(Image(h, 2, 2, 1), Image(h, 4, 4, 1), 7, 1, float4(h, {1, 1})),
         ippError(ippStsStepErr)},
        {"anchor outside the taps", fwd(Image(h, 2, 2, 1), Image(h, 4, 4, 1), 1, 3, float4(h, {1, 1})),
         ippError(ippStsAnchorErr)},
        {"one tap", fwd(Image(h, 2, 2, 1), Image(h, 4, 4, 1), 1, 0, float4(h, {1})), ippError(ippStsSizeErr)},
        {"source of the wrong datatype", fwd(Image(h, 2, 2, 1), h.rtable(DT_FLOAT8, {{1, 4}, {1, 4}}), 1, 1,
                                             float4(h, {1, 1})),
         "expecting an rtable with datatype = float[4], but received"},
        {"inverse output too small",
         h.call(orbInvDWT, {Image(h, 3, 4, 1), Image(h, 2, 2, 1), Image(h, 2, 2, 1), Image(h, 2, 2, 1),
                            Image(h, 2, 2, 1), float4(h, {1, 1}), h.integer(0), float4(h, {1, -1}), h.integer(0),
                            h.integer(1), h.float64(0), float4(h, {0, 0, 0})}),
         sizes},
        // Positions beyond the count read as the null value.
        {"too few arguments", h.call(orbFwdDWT, {Image(h, 2, 2, 1)}), "host: expecting an rtable, but received NULL"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(c.r.error.substr(0, c.want.size()), c.want) << c.what;
        EXPECT_EQ(c.r.result, 0u) << c.what;
    }
    EXPECT_TRUE(h.guardsIntact());
}

// Three channels at an odd size hold the most blocks: each allocation
// failing in turn raises "out of memory" and leaves nothing behind.
TEST(WaveletOps, EveryFailedAllocationIsReportedAndFreed)
{
    for (bool forward : {true, false}) {
        int k = 1;
        for (;; ++k) {
            Host h;
            const int64_t before = orbBackendLiveAllocations();
            Value a = Image(h, 3, 4, 3), x = Image(h, 3, 4, 3), y = Image(h, 3, 4, 3), xy = Image(h, 3, 4, 3);
            Value big = Image(h, 5, 7, 3, Random(5 * 7 * 3, 4));
            orbBackendFailNthAllocation(k);
            CallResult r =
                forward ? h.call(orbFwdDWT, {a, x, y, xy, big, float4(h, kLeGall.fl), h.integer(2),
                                             float4(h, kLeGall.fh), h.integer(2), h.integer(1), h.float64(0),
                                             float4(h, {0, 0, 0})})
                        : h.call(orbInvDWT, {Image(h, 6, 8, 3), a, x, y, xy, float4(h, kLeGall.il), h.integer(1),
                                             float4(h, kLeGall.ih), h.integer(1), h.integer(2), h.float64(0),
                                             float4(h, {0, 0, 0})});
            orbBackendFailNthAllocation(0);
            EXPECT_EQ(orbBackendLiveAllocations(), before);
            if (!r.raised) break;
            ASSERT_EQ(r.error, "out of memory") << k;
        }
        EXPECT_EQ(k, forward ? 5 : 7);  // even copy, bordered, spec, buffer / spec, four bands, buffer
    }
}

}  // namespace
