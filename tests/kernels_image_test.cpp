// Image kernels: border copies against index arithmetic, the wavelet
// transform's perfect reconstruction with periodic borders, Canny against
// OpenCV and on shapes with known edges, Hough on images with known lines.
#include "kernels_sweep.h"  // first: the kernels' target set

#include <opencv2/imgproc.hpp>

#include <functional>
#include <set>

#include "ippi.h"

namespace {

using Image = std::vector<float>;

// ---- Borders ----

enum class Kind { Repl, Mirror, Const };

// Reference index maps, written out case by case.
int Clamp(int i, int n) { return i < 0 ? 0 : i >= n ? n - 1 : i; }
int Reflect(int i, int n)
{
    if (n == 1) return 0;
    while (i < 0 || i >= n) i = i < 0 ? -i : 2 * (n - 1) - i;
    return i;
}

IppStatus CopyBorder(Kind kind, int C, const float *s, int ss, IppiSize sz, float *d, int ds, IppiSize dz, int top,
                     int left, const float *v)
{
    if (C == 1) {
        if (kind == Kind::Repl) return ippiCopyReplicateBorder_32f_C1R(s, ss, sz, d, ds, dz, top, left);
        if (kind == Kind::Mirror) return ippiCopyMirrorBorder_32f_C1R(s, ss, sz, d, ds, dz, top, left);
        return ippiCopyConstBorder_32f_C1R(s, ss, sz, d, ds, dz, top, left, v[0]);
    }
    if (kind == Kind::Repl) return ippiCopyReplicateBorder_32f_C3R(s, ss, sz, d, ds, dz, top, left);
    if (kind == Kind::Mirror) return ippiCopyMirrorBorder_32f_C3R(s, ss, sz, d, ds, dz, top, left);
    return ippiCopyConstBorder_32f_C3R(s, ss, sz, d, ds, dz, top, left, v);
}

TEST(KernelsImage, BorderCopiesMatchIndexArithmetic)
{
    const float values[3] = {-1.5f, 2.5f, 7.0f};
    struct Case {
        int sw, sh, dw, dh, top, left;
    };
    // Borders narrower and wider than the image, a one-pixel image, right
    // and bottom borders of what is left over.
    const Case cases[] = {{5, 4, 11, 9, 2, 3}, {3, 2, 12, 10, 5, 4}, {1, 1, 4, 3, 1, 2}, {4, 3, 4, 3, 0, 0}};
    for (Kind kind : {Kind::Repl, Kind::Mirror, Kind::Const})
        for (int C : {1, 3})
            for (const Case &c : cases) {
                const int ss = c.sw * C * 4 + 8, ds = c.dw * C * 4 + 4;  // steps with slack
                std::vector<float> src(size_t(ss / 4) * c.sh), dst(size_t(ds / 4) * c.dh, 99.0f);
                for (size_t i = 0; i < src.size(); ++i) src[i] = float(i) * 0.5f;
                ASSERT_EQ(CopyBorder(kind, C, src.data(), ss, {c.sw, c.sh}, dst.data(), ds, {c.dw, c.dh}, c.top,
                                     c.left, values),
                          ippStsNoErr);
                for (int y = 0; y < c.dh; ++y)
                    for (int x = 0; x < c.dw; ++x)
                        for (int k = 0; k < C; ++k) {
                            const int sy = y - c.top, sx = x - c.left;
                            float want;
                            if (kind == Kind::Const && (sy < 0 || sy >= c.sh || sx < 0 || sx >= c.sw))
                                want = values[k];
                            else {
                                const int ry = kind == Kind::Mirror ? Reflect(sy, c.sh) : Clamp(sy, c.sh);
                                const int rx = kind == Kind::Mirror ? Reflect(sx, c.sw) : Clamp(sx, c.sw);
                                want = src[size_t(ry) * (ss / 4) + rx * C + k];
                            }
                            ASSERT_EQ(dst[size_t(y) * (ds / 4) + x * C + k], want)
                                << int(kind) << " C" << C << " at " << y << "," << x << "," << k;
                        }
                // Step slack past each row is untouched.
                for (int y = 0; y < c.dh; ++y) ASSERT_EQ(dst[size_t(y) * (ds / 4) + c.dw * C], 99.0f);
            }
}

TEST(KernelsImage, BorderCopiesRefuseBordersPastTheDestinationAndShortSteps)
{
    float src[16] = {}, dst[64] = {};
    for (Kind kind : {Kind::Repl, Kind::Mirror, Kind::Const}) {
        EXPECT_EQ(CopyBorder(kind, 1, src, 16, {4, 4}, dst, 32, {8, 8}, -1, 1, src), ippStsSizeErr);
        EXPECT_EQ(CopyBorder(kind, 1, src, 16, {4, 4}, dst, 32, {8, 8}, 1, 5, src), ippStsSizeErr);
        EXPECT_EQ(CopyBorder(kind, 1, src, 12, {4, 4}, dst, 32, {8, 8}, 1, 1, src), ippStsStepErr);
    }
}

// ---- Wavelets ----

// A bank: forward low/high taps and anchors, inverse low/high and anchors.
struct Bank {
    const char *name;
    std::vector<float> fl, fh;
    int fal, fah;
    std::vector<float> il, ih;
    int ial, iah;
};

const float s2 = 0.70710678f;
const Bank kBanks[] = {
    {"haar", {s2, s2}, {s2, -s2}, 1, 1, {s2, s2}, {-s2, s2}, 0, 0},
    // LeGall 5/3: analysis (-1 2 6 2 -1)/8 and (-1 2 -1)/2, synthesis
    // (1 2 1)/2 and (-1 -2 6 -2 -1)/8, the short ones padded.
    {"5/3", {-0.125f, 0.25f, 0.75f, 0.25f, -0.125f}, {-0.5f, 1.0f, -0.5f}, 2, 2, {0.5f, 1.0f, 0.5f},
     {-0.125f, -0.25f, 0.75f, -0.25f, -0.125f}, 1, 1},
};

// A periodically extended copy of a w x h image of C channels with border
// b on every side; returns the origin's offset in floats.
std::vector<float> Wrapped(const float *src, int w, int h, int C, int b, int *stepBytes)
{
    const int bw = w + 2 * b, bh = h + 2 * b;
    std::vector<float> out(size_t(bw) * bh * C);
    for (int y = 0; y < bh; ++y)
        for (int x = 0; x < bw; ++x)
            for (int k = 0; k < C; ++k)
                out[(size_t(y) * bw + x) * C + k] = src[(size_t((y - b + 4 * h) % h) * w + (x - b + 4 * w) % w) * C + k];
    *stepBytes = bw * C * 4;
    return out;
}

void RoundTrip(const Bank &b, int w, int h, int C)
{
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> u(-4, 4);
    Image src(size_t(w) * h * C);
    for (float &v : src) v = u(rng);
    const int lenL = int(b.fl.size()), lenH = int(b.fh.size());
    int specSize = 0, bufSize = 0;
    ASSERT_EQ(ippiWTFwdGetSize_32f(C, lenL, b.fal, lenH, b.fah, &specSize, &bufSize), ippStsNoErr);
    std::vector<Ipp8u> spec(static_cast<size_t>(specSize)), buf(static_cast<size_t>(bufSize));
    ASSERT_EQ(C == 1 ? ippiWTFwdInit_32f_C1R((IppiWTFwdSpec_32f_C1R *)spec.data(), b.fl.data(), lenL, b.fal,
                                             b.fh.data(), lenH, b.fah)
                     : ippiWTFwdInit_32f_C3R((IppiWTFwdSpec_32f_C3R *)spec.data(), b.fl.data(), lenL, b.fal,
                                             b.fh.data(), lenH, b.fah),
              ippStsNoErr);
    const int B = 6, hw = w / 2, hh = h / 2;
    int step = 0;
    std::vector<float> big = Wrapped(src.data(), w, h, C, B, &step);
    std::vector<Image> band(4, Image(size_t(hw) * hh * C));
    const float *origin = big.data() + (size_t(B) * (w + 2 * B) + B) * C;
    const int bs = hw * C * 4;
    ASSERT_EQ(C == 1 ? ippiWTFwd_32f_C1R(origin, step, band[0].data(), bs, band[1].data(), bs, band[2].data(), bs,
                                         band[3].data(), bs, {hw, hh}, (IppiWTFwdSpec_32f_C1R *)spec.data(),
                                         buf.data())
                     : ippiWTFwd_32f_C3R(origin, step, band[0].data(), bs, band[1].data(), bs, band[2].data(), bs,
                                         band[3].data(), bs, {hw, hh}, (IppiWTFwdSpec_32f_C3R *)spec.data(),
                                         buf.data()),
              ippStsNoErr);

    ASSERT_EQ(ippiWTInvGetSize_32f(C, int(b.il.size()), b.ial, int(b.ih.size()), b.iah, &specSize, &bufSize),
              ippStsNoErr);
    spec.assign(size_t(specSize), 0);
    buf.assign(size_t(bufSize), 0);
    ASSERT_EQ(C == 1 ? ippiWTInvInit_32f_C1R((IppiWTInvSpec_32f_C1R *)spec.data(), b.il.data(), int(b.il.size()),
                                             b.ial, b.ih.data(), int(b.ih.size()), b.iah)
                     : ippiWTInvInit_32f_C3R((IppiWTInvSpec_32f_C3R *)spec.data(), b.il.data(), int(b.il.size()),
                                             b.ial, b.ih.data(), int(b.ih.size()), b.iah),
              ippStsNoErr);
    const int E = 3;
    std::vector<std::vector<float>> wrapped;
    const float *o[4];
    int steps[4];
    for (int k = 0; k < 4; ++k) {
        wrapped.push_back(Wrapped(band[size_t(k)].data(), hw, hh, C, E, &steps[k]));
        o[k] = wrapped.back().data() + (size_t(E) * (hw + 2 * E) + E) * C;
    }
    Image out(src.size(), -99.0f);
    ASSERT_EQ(C == 1 ? ippiWTInv_32f_C1R(o[0], steps[0], o[1], steps[1], o[2], steps[2], o[3], steps[3], {hw, hh},
                                         out.data(), w * 4, (IppiWTInvSpec_32f_C1R *)spec.data(), buf.data())
                     : ippiWTInv_32f_C3R(o[0], steps[0], o[1], steps[1], o[2], steps[2], o[3], steps[3], {hw, hh},
                                         out.data(), w * 12, (IppiWTInvSpec_32f_C3R *)spec.data(), buf.data()),
              ippStsNoErr);
    for (size_t i = 0; i < src.size(); ++i) ASSERT_NEAR(out[i], src[i], 2e-5f) << b.name << " C" << C << " at " << i;
}

class KernelsImage : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsImage);

// Sizes across the strip width (several strips and a partial last one).
TEST_P(KernelsImage, WaveletRoundTripIsExactWithPeriodicBorders)
{
    for (const Bank &b : kBanks)
        for (int C : {1, 3})
            for (auto [w, h] : {std::pair{8, 6}, std::pair{2, 2}, std::pair{1100, 10}})
                RoundTrip(b, w, h, C);
}

TEST_P(KernelsImage, WaveletSubbandsOfHaar)
{
    // A 2 x 2 block [a b; c d]: approximation (a+b+c+d)/2, detail X (rows
    // differenced) (c+d-a-b)/2, detail Y (columns) (b+d-a-c)/2, XY (a-b-c+d)/2.
    const Bank &b = kBanks[0];
    int specSize = 0, bufSize = 0;
    ASSERT_EQ(ippiWTFwdGetSize_32f(1, 2, 1, 2, 1, &specSize, &bufSize), ippStsNoErr);
    std::vector<Ipp8u> spec(static_cast<size_t>(specSize)), buf(static_cast<size_t>(bufSize));
    ASSERT_EQ(ippiWTFwdInit_32f_C1R((IppiWTFwdSpec_32f_C1R *)spec.data(), b.fl.data(), 2, 1, b.fh.data(), 2, 1),
              ippStsNoErr);
    const float src[2 * 3] = {1, 2, 0, 3, 5, 0};  // a b; c d, with a right border column
    float out[4];
    ASSERT_EQ(ippiWTFwd_32f_C1R(src, 12, out, 4, out + 1, 4, out + 2, 4, out + 3, 4, {1, 1},
                                (IppiWTFwdSpec_32f_C1R *)spec.data(), buf.data()),
              ippStsNoErr);
    EXPECT_NEAR(out[0], 11 / 2.0f, 1e-5f);
    EXPECT_NEAR(out[1], 5 / 2.0f, 1e-5f);
    EXPECT_NEAR(out[2], 3 / 2.0f, 1e-5f);
    EXPECT_NEAR(out[3], 1 / 2.0f, 1e-5f);
}

TEST(KernelsImage, WaveletRefusesBadBanksAndContexts)
{
    int a = 0, b = 0;
    struct Case {
        int ch, lenL, aL, lenH, aH;
        IppStatus want;
    };
    const Case cases[] = {{2, 2, 0, 2, 0, ippStsNumChannelsErr}, {1, 1, 0, 2, 0, ippStsSizeErr},
                          {1, 2, 2, 2, 0, ippStsAnchorErr},      {3, 4, 0, 4, -1, ippStsAnchorErr},
                          {3, 4, 3, 6, 5, ippStsNoErr}};
    for (const Case &c : cases) {
        EXPECT_EQ(ippiWTFwdGetSize_32f(c.ch, c.lenL, c.aL, c.lenH, c.aH, &a, &b), c.want);
        EXPECT_EQ(ippiWTInvGetSize_32f(c.ch, c.lenL, c.aL, c.lenH, c.aH, &a, &b), c.want);
    }
    EXPECT_EQ(ippiWTFwdGetSize_32f(1, 2, 0, 2, 0, nullptr, &b), ippStsNullPtrErr);
    // A set-up structure of the other direction or channel count is refused.
    const float t[2] = {1, 1};
    ASSERT_EQ(ippiWTFwdGetSize_32f(1, 2, 1, 2, 1, &a, &b), ippStsNoErr);
    std::vector<Ipp8u> spec(static_cast<size_t>(a)), buf(static_cast<size_t>(b));
    ASSERT_EQ(ippiWTInvInit_32f_C1R((IppiWTInvSpec_32f_C1R *)spec.data(), t, 2, 1, t, 2, 1), ippStsNoErr);
    float img[16] = {}, o[4];
    EXPECT_EQ(ippiWTFwd_32f_C1R(img, 16, o, 4, o, 4, o, 4, o, 4, {1, 1}, (IppiWTFwdSpec_32f_C1R *)spec.data(),
                                buf.data()),
              ippStsContextMatchErr);
    ASSERT_EQ(ippiWTFwdInit_32f_C3R((IppiWTFwdSpec_32f_C3R *)spec.data(), t, 2, 1, t, 2, 1), ippStsNoErr);
    EXPECT_EQ(ippiWTFwd_32f_C1R(img, 16, o, 4, o, 4, o, 4, o, 4, {1, 1}, (IppiWTFwdSpec_32f_C1R *)spec.data(),
                                buf.data()),
              ippStsContextMatchErr);
}

// ---- Canny ----

using Bytes = std::vector<Ipp8u>;

Bytes Canny(const Bytes &src, int w, int h, IppiDifferentialKernel k, IppiMaskSize m, float low, float high,
            IppNormType norm)
{
    int size = 0;
    EXPECT_EQ(ippiCannyBorderGetSize({w, h}, k, m, ipp8u, &size), ippStsNoErr);
    Bytes buf(static_cast<size_t>(size)), dst(size_t(w) * h, 7);
    EXPECT_EQ(ippiCannyBorder_8u_C1R(src.data(), w, dst.data(), w, {w, h}, k, m, ippBorderRepl, 0, low, high, norm,
                                     buf.data()),
              ippStsNoErr);
    return dst;
}

// Smoothed noise with shapes: edges of every direction and strength.
Bytes Scene(int w, int h, unsigned seed)
{
    cv::Mat m(h, w, CV_8UC1);
    cv::RNG rng(seed);
    rng.fill(m, cv::RNG::UNIFORM, 0, 256);
    cv::GaussianBlur(m, m, cv::Size(7, 7), 2.0);
    cv::rectangle(m, {w / 5, h / 6}, {w / 2, h / 2}, cv::Scalar(230), cv::FILLED);
    cv::circle(m, {2 * w / 3, 2 * h / 3}, h / 5, cv::Scalar(20), cv::FILLED);
    cv::line(m, {0, h - 1}, {w - 1, 0}, cv::Scalar(250), 2);
    return Bytes(m.data, m.data + size_t(w) * h);
}

TEST(KernelsImage, CannyAgreesWithOpenCV)
{
    struct Case {
        int aperture;
        bool l2;
        float low, high;
    };
    const Case cases[] = {{3, false, 40, 120}, {3, true, 30, 90}, {5, true, 300, 900}, {5, false, 500, 1500}};
    const int w = 160, h = 120;
    for (unsigned seed : {1u, 2u})
        for (const Case &c : cases) {
            Bytes src = Scene(w, h, seed);
            Bytes ours = Canny(src, w, h, ippFilterSobel, c.aperture == 5 ? ippMskSize5x5 : ippMskSize3x3, c.low,
                               c.high, c.l2 ? ippNormL2 : ippNormL1);
            cv::Mat theirs;
            cv::Canny(cv::Mat(h, w, CV_8UC1, src.data()), theirs, c.low, c.high, c.aperture, c.l2);
            size_t same = 0, edges = 0;
            for (size_t i = 0; i < ours.size(); ++i) {
                same += ours[i] == theirs.data[i];
                edges += ours[i] != 0;
            }
            EXPECT_GT(edges, 100u);
            EXPECT_GE(double(same) / double(ours.size()), 0.98)
                << "aperture " << c.aperture << " L2 " << c.l2 << " seed " << seed;
        }
}

// Connected groups of edge pixels (8-connectivity).
int Components(const Bytes &e, int w, int h)
{
    std::vector<int> seen(e.size(), 0);
    int groups = 0;
    for (size_t i = 0; i < e.size(); ++i) {
        if (!e[i] || seen[i]) continue;
        ++groups;
        std::vector<size_t> stack{i};
        seen[i] = 1;
        while (!stack.empty()) {
            const size_t at = stack.back();
            stack.pop_back();
            const int x = int(at % w), y = int(at / w);
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx) {
                    const int nx = x + dx, ny = y + dy;
                    if (nx < 0 || ny < 0 || nx >= w || ny >= h) continue;
                    const size_t n = size_t(ny) * w + nx;
                    if (e[n] && !seen[n]) seen[n] = 1, stack.push_back(n);
                }
        }
    }
    return groups;
}

TEST(KernelsImage, CannyFindsTheOutlinesOfShapes)
{
    const int w = 64, h = 48;
    // A square and a disc: one closed outline each, every edge pixel within
    // a pixel of the true boundary, and the boundary covered.
    struct Shape {
        const char *name;
        std::function<bool(double, double)> inside;
        std::function<double(double, double)> distance;  // to the boundary
    };
    const Shape shapes[] = {
        {"square", [](double x, double y) { return x >= 16 && x < 40 && y >= 12 && y < 36; },
         [](double x, double y) {
             const double dx = std::max(15.5 - x, x - 39.5), dy = std::max(11.5 - y, y - 35.5);
             return dx < 0 && dy < 0 ? -std::max(dx, dy) : hypot(std::max(dx, 0.0), std::max(dy, 0.0));
         }},
        {"disc", [](double x, double y) { return (x - 30) * (x - 30) + (y - 24) * (y - 24) <= 14 * 14; },
         [](double x, double y) { return fabs(hypot(x - 30, y - 24) - 14); }},
    };
    for (const Shape &s : shapes)
        for (IppiDifferentialKernel k : {ippFilterSobel, ippFilterScharr}) {
            Bytes src(size_t(w) * h);
            for (int y = 0; y < h; ++y)
                for (int x = 0; x < w; ++x) src[size_t(y) * w + x] = s.inside(x, y) ? 200 : 50;
            Bytes e = Canny(src, w, h, k, ippMskSize3x3, 100, 300, ippNormL2);
            EXPECT_EQ(Components(e, w, h), 1) << s.name;
            size_t count = 0;
            for (int y = 0; y < h; ++y)
                for (int x = 0; x < w; ++x)
                    if (e[size_t(y) * w + x]) {
                        ++count;
                        EXPECT_LE(s.distance(x, y), 1.5) << s.name << " at " << x << "," << y;
                    }
            EXPECT_GT(count, s.name[0] == 's' ? 90u : 80u) << s.name;
        }
    // A noisy vertical step: one edge pixel per row, at the step.
    std::mt19937 rng(3);
    std::uniform_int_distribution<int> noise(-6, 6);
    Bytes src(size_t(w) * h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) src[size_t(y) * w + x] = Ipp8u((x < 30 ? 60 : 180) + noise(rng));
    Bytes e = Canny(src, w, h, ippFilterSobel, ippMskSize5x5, 800, 2000, ippNormL1);
    for (int y = 0; y < h; ++y) {
        int n = 0;
        for (int x = 0; x < w; ++x)
            if (e[size_t(y) * w + x]) {
                ++n;
                EXPECT_TRUE(x == 29 || x == 30) << "row " << y << " col " << x;
            }
        EXPECT_EQ(n, 1) << "row " << y;
    }
}

TEST(KernelsImage, CannyRefusesWhatItDoesNotDo)
{
    int size = 0;
    EXPECT_EQ(ippiCannyBorderGetSize({8, 8}, ippFilterScharr, ippMskSize5x5, ipp8u, &size), ippStsMaskSizeErr);
    EXPECT_EQ(ippiCannyBorderGetSize({8, 8}, ippFilterSobel, ippMskSize3x3, ipp16s, &size), ippStsDataTypeErr);
    ASSERT_EQ(ippiCannyBorderGetSize({8, 8}, ippFilterSobel, ippMskSize3x3, ipp8u, &size), ippStsNoErr);
    Bytes buf(static_cast<size_t>(size)), img(64);
    const struct {
        IppNormType norm;
        IppiBorderType border;
        float low, high;
        IppStatus want;
    } cases[] = {{ippNormInf, ippBorderRepl, 1, 2, ippStsNotSupportedModeErr},
                 {ippNormL2, ippBorderMirror, 1, 2, ippStsBorderErr},
                 {ippNormL2, ippBorderRepl, 3, 2, ippStsBadArgErr}};
    for (const auto &c : cases)
        EXPECT_EQ(ippiCannyBorder_8u_C1R(img.data(), 8, img.data(), 8, {8, 8}, ippFilterSobel, ippMskSize3x3, c.border,
                                         0, c.low, c.high, c.norm, buf.data()),
                  c.want);
}

// ---- Hough ----

Bytes Lines(int w, int h)
{
    Bytes img(size_t(w) * h, 0);
    for (int x = 5; x < 75; ++x) img[size_t(20) * w + x] = 255;          // y = 20
    for (int y = 3; y < 57; ++y) img[size_t(y) * w + 50] = 255;          // x = 50
    for (int t = 0; t < 40; ++t) img[size_t(10 + t) * w + 10 + t] = 1;   // y = x
    return img;
}

TEST(KernelsImage, HoughFindsKnownLinesStrongestFirst)
{
    const int w = 80, h = 60;
    Bytes img = Lines(w, h);
    const IppPointPolar delta = {1.0f, float(M_PI / 180)};
    int size = 0, count = -1;
    ASSERT_EQ(ippiHoughLineGetSize_8u_C1R({w, h}, delta, 10, &size), ippStsNoErr);
    Bytes buf(static_cast<size_t>(size));
    IppPointPolar lines[10];
    // Theta up to a step below pi: (50, 0) is also (-50, pi).
    IppPointPolar region[2] = {{-100.0f, 0.0f}, {100.0f, float(M_PI) - delta.theta}};
    ASSERT_EQ(ippiHoughLine_Region_8u32f_C1R(img.data(), w, {w, h}, lines, region, 10, &count, delta, 35, buf.data()),
              ippStsNoErr);
    ASSERT_EQ(count, 3);
    // rho = x cos(theta) + y sin(theta): y = 20 is (20, pi/2), x = 50 is
    // (50, 0), y = x is (0, 3 pi/4); by votes 70, 54, 40.
    const float want[3][2] = {{20, float(M_PI / 2)}, {50, 0}, {0, float(3 * M_PI / 4)}};
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(lines[i].rho, want[i][0], 1.0f) << i;
        EXPECT_NEAR(lines[i].theta, want[i][1], delta.theta * 1.01f) << i;
    }
    // A region around one line finds only it; a full list warns.
    IppPointPolar near[2] = {{40.0f, 0.0f}, {60.0f, 0.2f}};
    ASSERT_EQ(ippiHoughLine_Region_8u32f_C1R(img.data(), w, {w, h}, lines, near, 10, &count, delta, 35, buf.data()),
              ippStsNoErr);
    ASSERT_EQ(count, 1);
    EXPECT_NEAR(lines[0].rho, 50, 1.0f);
    EXPECT_EQ(ippiHoughLine_Region_8u32f_C1R(img.data(), w, {w, h}, lines, region, 2, &count, delta, 35, buf.data()),
              ippStsDstSizeLessExpected);
    EXPECT_EQ(count, 2);
    IppPointPolar wide[2] = {{-100.0f, 0.0f}, {100.0f, 4.0f}};
    EXPECT_EQ(ippiHoughLine_Region_8u32f_C1R(img.data(), w, {w, h}, lines, wide, 2, &count, delta, 35, buf.data()),
              ippStsOutOfRangeErr);
    EXPECT_EQ(ippiHoughLineGetSize_8u_C1R({w, h}, {0.0f, 0.1f}, 10, &size), ippStsOutOfRangeErr);
    EXPECT_EQ(ippiHoughLineGetSize_8u_C1R({w, h}, delta, 0, &size), ippStsSizeErr);
}

TEST(KernelsImage, ProbabilisticHoughFindsSegmentsWithTheirEnds)
{
    const int w = 80, h = 60;
    Bytes img = Lines(w, h);
    const IppPointPolar delta = {1.0f, float(M_PI / 180)};
    int specSize = 0, bufSize = 0, count = -1;
    ASSERT_EQ(ippiHoughProbLineGetSize_8u_C1R({w, h}, delta, &specSize, &bufSize), ippStsNoErr);
    Bytes spec(static_cast<size_t>(specSize)), buf(static_cast<size_t>(bufSize));
    ASSERT_EQ(ippiHoughProbLineInit_8u32f_C1R({w, h}, delta, ippAlgHintNone, (IppiHoughProbSpec *)spec.data()),
              ippStsNoErr);
    IppiPoint seg[20];
    ASSERT_EQ(ippiHoughProbLine_8u32f_C1R(img.data(), w, {w, h}, 20, 30, 3, seg, 10, &count, buf.data(),
                                          (IppiHoughProbSpec *)spec.data()),
              ippStsNoErr);
    // The three segments, each once, end points within two pixels (the
    // crossings may end a walk a pixel early).
    const int want[3][4] = {{5, 20, 74, 20}, {50, 3, 50, 56}, {10, 10, 49, 49}};
    ASSERT_EQ(count, 3);
    std::set<int> matched;
    for (int i = 0; i < count; ++i) {
        IppiPoint a = seg[2 * i], b = seg[2 * i + 1];
        if (a.x + a.y > b.x + b.y) std::swap(a, b);
        for (int k = 0; k < 3; ++k)
            if (abs(a.x - want[k][0]) <= 2 && abs(a.y - want[k][1]) <= 2 && abs(b.x - want[k][2]) <= 2 &&
                abs(b.y - want[k][3]) <= 2)
                matched.insert(k);
    }
    EXPECT_EQ(matched.size(), 3u);
    // The same image gives the same segments; a short maximum stops early.
    IppiPoint again[20];
    ASSERT_EQ(ippiHoughProbLine_8u32f_C1R(img.data(), w, {w, h}, 20, 30, 3, again, 1, &count, buf.data(),
                                          (IppiHoughProbSpec *)spec.data()),
              ippStsNoErr);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(memcmp(again, seg, 2 * sizeof(IppiPoint)), 0);
    EXPECT_EQ(ippiHoughProbLine_8u32f_C1R(img.data(), w + 1, {w + 1, h}, 20, 30, 3, again, 1, &count, buf.data(),
                                          (IppiHoughProbSpec *)spec.data()),
              ippStsSizeErr);
}

}  // namespace
