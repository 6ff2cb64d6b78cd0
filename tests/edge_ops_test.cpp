// Edge and line exports: the filter and norm choices, the destination's row
// step, Hough results in caller storage and kept within it.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using namespace orbtest;

namespace {

using Bytes = std::vector<Ipp8u>;

Value Matrix(Host &h, int rows, int cols, const Bytes &data = {})
{
    return h.rtable(DT_INT1, {{1, rows}, {1, cols}}, data.empty() ? nullptr : data.data());
}

// A bright disc with a dim square: edges that differ between kernels and
// norms.
Bytes Scene(int w, int h)
{
    Bytes img(size_t(w) * h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const bool disc = std::hypot(x - 20.0, y - 14.0) < 9, square = x > 30 && x < 42 && y > 4 && y < 20;
            img[size_t(y) * w + x] = Ipp8u(disc ? 220 : square ? 90 : 30 + (x * 7 + y * 3) % 11);
        }
    return img;
}

Bytes Direct(const Bytes &src, int w, int h, IppiDifferentialKernel k, IppiMaskSize m, float low, float high,
             IppNormType norm)
{
    int size = 0;
    EXPECT_EQ(ippiCannyBorderGetSize({w, h}, k, m, ipp8u, &size), ippStsNoErr);
    Bytes buf(static_cast<size_t>(size)), dst(size_t(w) * h);
    EXPECT_EQ(ippiCannyBorder_8u_C1R(src.data(), w, dst.data(), w, {w, h}, k, m, ippBorderRepl, 0, low, high, norm,
                                     buf.data()),
              ippStsNoErr);
    return dst;
}

TEST(EdgeOps, CannyFilterAndNormChoices)
{
    const int w = 48, ht = 28;
    Bytes img = Scene(w, ht);
    const struct {
        int filter, norm;
        IppiDifferentialKernel k;
        IppiMaskSize m;
        IppNormType n;
    } cases[] = {
        {1, 1, ippFilterSobel, ippMskSize3x3, ippNormL1},   {1, 2, ippFilterSobel, ippMskSize3x3, ippNormL2},
        {2, 7, ippFilterSobel, ippMskSize5x5, ippNormL2},   {3, 1, ippFilterScharr, ippMskSize3x3, ippNormL1},
        {0, 0, ippFilterScharr, ippMskSize3x3, ippNormL2},  {-1, -1, ippFilterScharr, ippMskSize3x3, ippNormL2},
    };
    for (const auto &c : cases) {
        Host h;
        // The destination is written with the source's width as its step,
        // whatever its own shape.
        Value dst = Matrix(h, w, ht), src = Matrix(h, ht, w, img);
        const float low = c.filter == 2 ? 400 : 60, high = c.filter == 2 ? 1200 : 180;
        CallResult r = h.call(orbCannyEdgeDetect, {dst, src, h.integer(c.filter), h.float64(low), h.float64(high),
                                                   h.integer(c.norm)});
        ASSERT_FALSE(r.raised) << r.error;
        EXPECT_EQ(r.result, 0u);
        Bytes want = Direct(img, w, ht, c.k, c.m, low, high, c.n);
        EXPECT_EQ(contents<Ipp8u>(h, dst), want) << c.filter << " " << c.norm;
        EXPECT_GT(std::count(want.begin(), want.end(), 255), 40);
    }
}

TEST(EdgeOps, CannyMessages)
{
    Host h;
    h.setErrorMode(ErrorMode::Return);
    Bytes img = Scene(8, 6);
    CallResult r = h.call(orbCannyEdgeDetect, {Matrix(h, 5, 8), Matrix(h, 6, 8, img), h.integer(1), h.float64(1),
                                               h.float64(2), h.integer(1)});
    EXPECT_EQ(r.errors, std::vector<std::string>{"rtable is too small for the image"});
    r = h.call(orbCannyEdgeDetect, {Matrix(h, 6, 8), Matrix(h, 6, 8, img), h.integer(1), h.float64(5),
                                    h.float64(2), h.integer(1)});
    EXPECT_EQ(r.error, ippError(ippStsBadArgErr));
    EXPECT_EQ(r.result, 0u);
    EXPECT_TRUE(h.guardsIntact());
}

// Lines y = 12 (32 points), x = 30 (20 points), y = x (16 points).
Bytes Lines(int w, int ht)
{
    Bytes img(size_t(w) * ht, 0);
    for (int x = 4; x < 36; ++x) img[size_t(12) * w + x] = 1;
    for (int y = 2; y < 22; ++y) img[size_t(y) * w + 30] = 200;
    for (int t = 2; t < 18; ++t) img[size_t(t) * w + t] = 255;
    return img;
}

TEST(EdgeOps, HoughLinesGoToCallerStorageStrongestFirst)
{
    const int w = 40, ht = 24;
    Host h;
    Value lines = h.rtable1(DT_FLOAT4, 20), count = h.rtable1(DT_INT4, 1), src = Matrix(h, ht, w, Lines(w, ht));
    const double step = M_PI / 180;
    auto call = [&](Value out, double thetaMax, int maxLines) {
        return h.call(orbHoughLineRegion, {out, src, h.float64(1), h.float64(step), h.integer(14), h.float64(-50),
                                           h.float64(50), h.float64(0), h.float64(thetaMax), h.integer(maxLines),
                                           count});
    };
    // Theta up to a little past pi / 2: the horizontal and vertical lines
    // (the diagonal, at 3 pi / 4, is outside).
    CallResult r = call(lines, M_PI / 2 + 0.2, 10);
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(r.result, 0u);
    std::vector<float> got = contents<float>(h, lines);
    ASSERT_EQ(contents<int32_t>(h, count)[0], 2);
    const double want[2][2] = {{12, M_PI / 2}, {30, 0}};
    for (int i = 0; i < 2; ++i) {
        EXPECT_NEAR(got[size_t(2 * i)], want[i][0], 1.0) << i;
        EXPECT_NEAR(got[size_t(2 * i + 1)], want[i][1], step * 1.01) << i;
    }
    // Room for one point: one line written, whatever the maximum.
    Value one = h.rtable1(DT_FLOAT4, 3);
    r = call(one, M_PI / 2 + 0.2, 10);
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(contents<int32_t>(h, count)[0], 1);
    EXPECT_NEAR(contents<float>(h, one)[0], 12, 1.0);
    EXPECT_EQ(contents<float>(h, one)[2], 0.0f);
    // No room at all: the backend refuses the missing storage.
    r = call(h.rtable1(DT_FLOAT4, 1), M_PI / 2 + 0.2, 10);
    EXPECT_EQ(r.error, ippError(ippStsNullPtrErr));
    EXPECT_TRUE(h.guardsIntact());
}

TEST(EdgeOps, ProbabilisticHoughGivesSegmentEnds)
{
    const int w = 40, ht = 24;
    Host h;
    Value segs = h.rtable1(DT_INT4, 4 * 8), count = h.rtable1(DT_INT4, 1), src = Matrix(h, ht, w, Lines(w, ht));
    CallResult r = h.call(orbProbabilisticHoughLine, {segs, src, h.float64(1), h.float64(M_PI / 180), h.integer(10),
                                                      h.integer(12), h.integer(2), h.integer(8), count});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(r.result, 0u);
    ASSERT_EQ(contents<int32_t>(h, count)[0], 3);
    std::vector<int32_t> s = contents<int32_t>(h, segs);
    int matched = 0;
    const int want[3][4] = {{4, 12, 35, 12}, {30, 2, 30, 21}, {2, 2, 17, 17}};
    for (int i = 0; i < 3; ++i) {
        int a[4] = {s[size_t(4 * i)], s[size_t(4 * i + 1)], s[size_t(4 * i + 2)], s[size_t(4 * i + 3)]};
        if (a[0] + a[1] > a[2] + a[3]) std::swap(a[0], a[2]), std::swap(a[1], a[3]);
        for (const auto &q : want)
            matched += std::abs(a[0] - q[0]) <= 2 && std::abs(a[1] - q[1]) <= 2 && std::abs(a[2] - q[2]) <= 2 &&
                       std::abs(a[3] - q[3]) <= 2;
    }
    EXPECT_EQ(matched, 3);
    EXPECT_TRUE(h.guardsIntact());
}

}  // namespace
