// Image kernels on 1024 x 1024 images: the wavelet transform against a
// straightforward separable loop (built plain and native), Canny and both
// Hough transforms against OpenCV on one thread, with the same thresholds,
// aperture, norm and resolutions.
#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cmath>
#include <vector>

#include "common.h"
#include "image_refs.h"
#include "ipp.h"

namespace {

constexpr int kSide = 1024;

// ---- Wavelet: LeGall 5/3, forward analysis and inverse synthesis ----

const float kFwdLow[5] = {-0.125f, 0.25f, 0.75f, 0.25f, -0.125f}, kFwdHigh[3] = {-0.5f, 1.0f, -0.5f};
const float kInvLow[3] = {0.5f, 1.0f, 0.5f}, kInvHigh[5] = {-0.125f, -0.25f, 0.75f, -0.25f, -0.125f};
constexpr int kB = 4;  // border on every side, enough for both directions

struct Planes {
    int stride;
    std::vector<float> src;             // bordered source
    std::vector<std::vector<float>> bands;  // four bordered half-size planes
    std::vector<float> out;
    const float *origin() const { return src.data() + size_t(kB) * stride + kB; }
    const float *band(int k) const { return bands[size_t(k)].data() + size_t(kB) * (kSide / 2 + 2 * kB) + kB; }
};

Planes MakePlanes()
{
    Planes p;
    p.stride = kSide + 2 * kB;
    p.src = bench::inputs<float>(size_t(p.stride) * (kSide + 2 * kB), -1, 1, 3);
    for (int k = 0; k < 4; ++k)
        p.bands.push_back(bench::inputs<float>(size_t(kSide / 2 + 2 * kB) * (kSide / 2 + 2 * kB), -1, 1, 4 + k));
    p.out.resize(size_t(kSide) * kSide);
    return p;
}

void accountPixels(benchmark::State &state)
{
    state.SetItemsProcessed(state.iterations() * int64_t(kSide) * kSide);
}

void WTFwdBackend(benchmark::State &state)
{
    ippInit();
    Planes p = MakePlanes();
    int specSize = 0, bufSize = 0;
    ippiWTFwdGetSize_32f(1, 5, 2, 3, 2, &specSize, &bufSize);
    std::vector<Ipp8u> spec(static_cast<size_t>(specSize)), buf(static_cast<size_t>(bufSize));
    ippiWTFwdInit_32f_C1R((IppiWTFwdSpec_32f_C1R *)spec.data(), kFwdLow, 5, 2, kFwdHigh, 3, 2);
    const int h = kSide / 2, s = h * 4;
    float *d = p.out.data();
    for (auto _ : state) {
        ippiWTFwd_32f_C1R(p.origin(), p.stride * 4, d, s, d + h * h, s, d + 2 * h * h, s, d + 3 * h * h, s, {h, h},
                          (IppiWTFwdSpec_32f_C1R *)spec.data(), buf.data());
        benchmark::ClobberMemory();
    }
    accountPixels(state);
}

template <class F>
void WTFwdRef(benchmark::State &state, F f)
{
    Planes p = MakePlanes();
    const int h = kSide / 2;
    std::vector<float> work(size_t(2) * (kSide + 16) * h * 2);
    float *d = p.out.data();
    float *const dst[4] = {d, d + h * h, d + 2 * h * h, d + 3 * h * h};
    const refs::WTBank b = {kFwdLow, kFwdHigh, 5, 2, 3, 2};
    for (auto _ : state) {
        f(p.origin(), p.stride, dst, h, h, b, work.data());
        benchmark::ClobberMemory();
    }
    accountPixels(state);
}

void WTInvBackend(benchmark::State &state)
{
    ippInit();
    Planes p = MakePlanes();
    int specSize = 0, bufSize = 0;
    ippiWTInvGetSize_32f(1, 3, 1, 5, 1, &specSize, &bufSize);
    std::vector<Ipp8u> spec(static_cast<size_t>(specSize)), buf(static_cast<size_t>(bufSize));
    ippiWTInvInit_32f_C1R((IppiWTInvSpec_32f_C1R *)spec.data(), kInvLow, 3, 1, kInvHigh, 5, 1);
    const int h = kSide / 2, bs = (h + 2 * kB) * 4;
    for (auto _ : state) {
        ippiWTInv_32f_C1R(p.band(0), bs, p.band(1), bs, p.band(2), bs, p.band(3), bs, {h, h}, p.out.data(), kSide * 4,
                          (IppiWTInvSpec_32f_C1R *)spec.data(), buf.data());
        benchmark::ClobberMemory();
    }
    accountPixels(state);
}

template <class F>
void WTInvRef(benchmark::State &state, F f)
{
    Planes p = MakePlanes();
    const int h = kSide / 2;
    std::vector<float> work(size_t(2) * kSide * (h + 4) + 64);
    const float *const src[4] = {p.band(0), p.band(1), p.band(2), p.band(3)};
    const refs::WTBank b = {kInvLow, kInvHigh, 3, 1, 5, 1};
    for (auto _ : state) {
        f(src, h + 2 * kB, p.out.data(), h, h, b, work.data());
        benchmark::ClobberMemory();
    }
    accountPixels(state);
}

void WTFwdPlain(benchmark::State &s) { WTFwdRef(s, refs::plainWTFwd); }
void WTFwdNative(benchmark::State &s) { WTFwdRef(s, refs::nativeWTFwd); }
void WTInvPlain(benchmark::State &s) { WTInvRef(s, refs::plainWTInv); }
void WTInvNative(benchmark::State &s) { WTInvRef(s, refs::nativeWTInv); }

// ---- Canny and Hough on a synthetic scene ----

// Smoothed noise with filled shapes and straight lines: edges of every
// direction, and lines for the Hough transforms to find.
const cv::Mat &Scene()
{
    static cv::Mat m = [] {
        cv::Mat s(kSide, kSide, CV_8UC1);
        cv::RNG rng(5);
        rng.fill(s, cv::RNG::UNIFORM, 0, 256);
        cv::GaussianBlur(s, s, cv::Size(9, 9), 3.0);
        for (int i = 0; i < 12; ++i) {
            cv::rectangle(s, {rng.uniform(0, kSide), rng.uniform(0, kSide)}, {rng.uniform(0, kSide), rng.uniform(0, kSide)},
                          cv::Scalar(rng.uniform(0, 256)), cv::FILLED);
            cv::circle(s, {rng.uniform(0, kSide), rng.uniform(0, kSide)}, rng.uniform(20, 200),
                       cv::Scalar(rng.uniform(0, 256)), cv::FILLED);
            cv::line(s, {rng.uniform(0, kSide), rng.uniform(0, kSide)}, {rng.uniform(0, kSide), rng.uniform(0, kSide)},
                     cv::Scalar(255), 1);
        }
        return s;
    }();
    return m;
}

const cv::Mat &Edges()
{
    static cv::Mat e = [] {
        cv::setNumThreads(1);
        cv::Mat out;
        cv::Canny(Scene(), out, 60, 180, 3, true);
        return out;
    }();
    return e;
}

struct CannyCase {
    int aperture;
    bool l2;
    float low, high;
};
const CannyCase kCanny[] = {{3, true, 60, 180}, {3, false, 60, 180}, {5, true, 600, 1800}};

void CannyBackend(benchmark::State &state)
{
    ippInit();
    const CannyCase &c = kCanny[state.range(0)];
    const cv::Mat &src = Scene();
    const IppiMaskSize m = c.aperture == 5 ? ippMskSize5x5 : ippMskSize3x3;
    int size = 0;
    ippiCannyBorderGetSize({kSide, kSide}, ippFilterSobel, m, ipp8u, &size);
    std::vector<Ipp8u> buf(static_cast<size_t>(size)), dst(size_t(kSide) * kSide);
    for (auto _ : state) {
        ippiCannyBorder_8u_C1R(src.data, kSide, dst.data(), kSide, {kSide, kSide}, ippFilterSobel, m, ippBorderRepl, 0,
                               c.low, c.high, c.l2 ? ippNormL2 : ippNormL1, buf.data());
        benchmark::ClobberMemory();
    }
    accountPixels(state);
}

void CannyOpenCV(benchmark::State &state)
{
    cv::setNumThreads(1);
    const CannyCase &c = kCanny[state.range(0)];
    cv::Mat dst;
    for (auto _ : state) {
        cv::Canny(Scene(), dst, c.low, c.high, c.aperture, c.l2);
        benchmark::ClobberMemory();
    }
    accountPixels(state);
}

const IppPointPolar kDelta = {1.0f, float(CV_PI / 180)};
constexpr int kHoughThreshold = 150, kMaxLines = 4096;

void HoughBackend(benchmark::State &state)
{
    ippInit();
    const cv::Mat &e = Edges();
    int size = 0, count = 0;
    ippiHoughLineGetSize_8u_C1R({kSide, kSide}, kDelta, kMaxLines, &size);
    std::vector<Ipp8u> buf(static_cast<size_t>(size));
    std::vector<IppPointPolar> lines(kMaxLines);
    const float diag = float(std::sqrt(2.0) * kSide);
    IppPointPolar region[2] = {{-diag, 0.0f}, {diag, float(CV_PI) - kDelta.theta}};
    for (auto _ : state) {
        ippiHoughLine_Region_8u32f_C1R(e.data, kSide, {kSide, kSide}, lines.data(), region, kMaxLines, &count, kDelta,
                                       kHoughThreshold, buf.data());
        benchmark::ClobberMemory();
    }
    state.counters["lines"] = count;
    accountPixels(state);
}

void HoughOpenCV(benchmark::State &state)
{
    cv::setNumThreads(1);
    std::vector<cv::Vec2f> lines;
    for (auto _ : state) {
        cv::HoughLines(Edges(), lines, kDelta.rho, kDelta.theta, kHoughThreshold);
        benchmark::ClobberMemory();
    }
    state.counters["lines"] = double(lines.size());
    accountPixels(state);
}

constexpr int kProbThreshold = 50, kLength = 40, kGap = 5;

void ProbHoughBackend(benchmark::State &state)
{
    ippInit();
    const cv::Mat &e = Edges();
    int specSize = 0, bufSize = 0, count = 0;
    ippiHoughProbLineGetSize_8u_C1R({kSide, kSide}, kDelta, &specSize, &bufSize);
    std::vector<Ipp8u> spec(static_cast<size_t>(specSize)), buf(static_cast<size_t>(bufSize));
    ippiHoughProbLineInit_8u32f_C1R({kSide, kSide}, kDelta, ippAlgHintNone, (IppiHoughProbSpec *)spec.data());
    std::vector<IppiPoint> lines(2 * kMaxLines);
    for (auto _ : state) {
        ippiHoughProbLine_8u32f_C1R(e.data, kSide, {kSide, kSide}, kProbThreshold, kLength, kGap, lines.data(),
                                    kMaxLines, &count, buf.data(), (IppiHoughProbSpec *)spec.data());
        benchmark::ClobberMemory();
    }
    state.counters["lines"] = count;
    accountPixels(state);
}

void ProbHoughOpenCV(benchmark::State &state)
{
    cv::setNumThreads(1);
    std::vector<cv::Vec4i> lines;
    for (auto _ : state) {
        cv::HoughLinesP(Edges(), lines, kDelta.rho, kDelta.theta, kProbThreshold, kLength, kGap);
        benchmark::ClobberMemory();
    }
    state.counters["lines"] = double(lines.size());
    accountPixels(state);
}

BENCHMARK(WTFwdBackend)->Arg(kSide);
BENCHMARK(WTFwdPlain)->Arg(kSide);
BENCHMARK(WTFwdNative)->Arg(kSide);
BENCHMARK(WTInvBackend)->Arg(kSide);
BENCHMARK(WTInvPlain)->Arg(kSide);
BENCHMARK(WTInvNative)->Arg(kSide);
BENCHMARK(CannyBackend)->DenseRange(0, 2);
BENCHMARK(CannyOpenCV)->DenseRange(0, 2);
BENCHMARK(HoughBackend)->Arg(kSide);
BENCHMARK(HoughOpenCV)->Arg(kSide);
BENCHMARK(ProbHoughBackend)->Arg(kSide);
BENCHMARK(ProbHoughOpenCV)->Arg(kSide);

}  // namespace

BENCHMARK_MAIN();
