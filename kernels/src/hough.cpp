/* Hough transforms of the non-zero pixels of 8-bit images.
 *
 * ippiHoughLine_Region_8u32f_C1R: every non-zero pixel (x, y) votes, for each
 * theta = thetaMin + t delta.theta up to thetaMax, in the rho bin nearest to
 * x cos(theta) + y sin(theta), bins being rho = rhoMin + r delta.rho up to
 * rhoMax (both ends of both ranges included). A cell is a line when it has
 * at least threshold votes and is a local maximum among its eight
 * neighbours: more votes than the four before it (in theta-major order), at
 * least as many as the four after it. Lines come strongest first, ties in
 * order of theta and then rho; at most maxLineCount are written, the count
 * written goes to *pLineCount, and finding more than that is the warning
 * ippStsDstSizeLessExpected. The theta region may span at most pi (one turn
 * of lines); rho bins beyond the image's diagonal get no votes and are not
 * kept. The work buffer holds the accumulator of the widest such region.
 *
 * ippiHoughProbLine_8u32f_C1R: the progressive probabilistic transform. The
 * non-zero pixels are taken in a pseudo-random order (the same order for the
 * same image on every call); each votes in a full-plane accumulator (theta
 * over [0, pi) in round(pi / delta.theta) steps, rho over
 * +-(width + height) in round((2 (width + height) + 1) / delta.rho) bins).
 * When the pixel's best cell reaches threshold, the line through it is
 * followed both ways over non-zero pixels, bridging gaps of up to lineGap
 * pixels; the pixels passed are taken out of the image (and, for a segment
 * long enough, their votes out of the accumulator). A segment whose extent
 * along x or y is at least lineLength is written as its two end points. At
 * most maxLineCount segments are written; their count goes to *pLineCount.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "hough.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <limits.h>
#include <math.h>
#include <stdint.h>
#include <string.h>

#include <algorithm>

#include "ippi.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

/* The rho bins of pixel (x, y) for every theta of the probabilistic
 * transform: floor(x cos[t] + y sin[t] + 0.5) + centre, clamped to the
 * accumulator, from tables already divided by delta.rho. */
void ProbBins(int x, int y, const float *cosT, const float *sinT, int nT, int centre, int nR, int32_t *out)
{
    const hn::ScalableTag<float> d;
    const hn::RebindToSigned<decltype(d)> di;
    const int N = int(hn::Lanes(d));
    const auto vx = hn::Set(d, float(x)), vy = hn::Set(d, float(y)), half = hn::Set(d, 0.5f);
    const auto c = hn::Set(di, centre), lo = hn::Zero(di), hi = hn::Set(di, nR - 1);
    int t = 0;
    for (; t + N <= nT; t += N) {
        const auto v = hn::MulAdd(vx, hn::LoadU(d, cosT + t), hn::Mul(vy, hn::LoadU(d, sinT + t)));
        const auto r = hn::Add(hn::ConvertTo(di, hn::Floor(hn::Add(v, half))), c);
        hn::StoreU(hn::Min(hn::Max(r, lo), hi), di, out + t);
    }
    for (; t < nT; ++t) {
        const int r = int(floorf(fmaf(float(x), cosT[t], float(y) * sinT[t]) + 0.5f)) + centre;
        out[t] = r < 0 ? 0 : r >= nR ? nR - 1 : r;
    }
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
HWY_EXPORT(ProbBins);
void Bins(int x, int y, const float *cosT, const float *sinT, int nT, int centre, int nR, int32_t *out)
{
    HWY_DYNAMIC_DISPATCH(ProbBins)(x, y, cosT, sinT, nT, centre, nR, out);
}
}  // namespace orb_kernels

namespace {

constexpr double kPi = 3.14159265358979323846;

size_t Align(size_t n) { return (n + 63) & ~size_t(63); }

/* The nearest integer to v for |v| < 2^30, halves rounded up: truncation
 * of a value made positive, which compiles to one conversion (the library
 * calls for rounding do not). */
constexpr double kLift = double(1 << 30);
inline long Nearest(double v) { return long(v + (kLift + 0.5)) - long(kLift); }

bool BadDelta(IppPointPolar delta)
{
    return !(delta.rho > 0.0f) || !(delta.theta > 0.0f) || !std::isfinite(delta.rho) || !std::isfinite(delta.theta);
}

/* ---- Full Hough over a region ---- */

struct LineBounds {
    long thetas, rhos;
};

double Diagonal(IppiSize roi)
{
    return sqrt(double(roi.width - 1) * (roi.width - 1) + double(roi.height - 1) * (roi.height - 1));
}

/* The largest accumulator any region of at most pi can need. */
LineBounds BoundsFor(IppiSize roi, IppPointPolar delta)
{
    const double thetas = floor(kPi / delta.theta) + 2, rhos = 2 * ceil(Diagonal(roi) / delta.rho) + 4;
    if (thetas * rhos > double(1 << 28)) return {-1, -1};
    return {long(thetas), long(rhos)};
}

struct LineLayout {
    size_t acc, cells, cosines, sines, total;
};

LineLayout LineLayoutFor(LineBounds b)
{
    LineLayout l;
    const size_t cells = size_t(b.thetas + 2) * size_t(b.rhos + 2);
    l.acc = 0;
    l.cells = Align(cells * sizeof(int32_t));
    l.cosines = l.cells + Align(size_t(b.thetas) * size_t(b.rhos) * sizeof(int32_t));
    l.sines = l.cosines + Align(size_t(b.thetas) * sizeof(double));
    l.total = l.sines + Align(size_t(b.thetas) * sizeof(double)) + 64;
    return l;
}

/* ---- Probabilistic ---- */

constexpr uint32_t kProbMagic = 0x48505042u;  // "HPPB"

struct ProbSpec {
    uint32_t magic;
    int width, height;
    int thetas, rhos;
    float tab[1];  // cos(theta) / delta.rho for every theta, then sin(theta) / delta.rho
};

struct ProbShape {
    long thetas, rhos;
};

ProbShape ProbShapeFor(IppiSize roi, IppPointPolar delta)
{
    const double thetas = std::max(1.0, floor(kPi / delta.theta + 0.5));
    const double rhos = std::max(1.0, floor((2.0 * (double(roi.width) + roi.height) + 1) / delta.rho + 0.5));
    if (thetas * rhos > double(1 << 28) || thetas > double(1 << 24)) return {-1, -1};
    return {long(thetas), long(rhos)};
}

struct ProbLayout {
    size_t acc, mask, points, bins, total;
};

ProbLayout ProbLayoutFor(IppiSize roi, ProbShape s)
{
    ProbLayout l;
    const size_t pixels = size_t(roi.width) * size_t(roi.height);
    l.acc = 0;
    l.mask = Align(size_t(s.thetas) * size_t(s.rhos) * sizeof(int32_t));
    l.points = l.mask + Align(pixels);
    l.bins = l.points + Align(pixels * sizeof(IppiPoint));
    l.total = l.bins + Align(size_t(s.thetas) * sizeof(int32_t)) + 64;
    return l;
}

/* A small generator with a fixed seed, so that a call's result depends on
 * its image alone. */
struct Lcg {
    uint64_t state = 0x2545F4914F6CDD1Dull;
    uint32_t Next()
    {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        return uint32_t(state >> 33);
    }
};

}  // namespace

extern "C" {

IppStatus ippiHoughLineGetSize_8u_C1R(IppiSize roiSize, IppPointPolar delta, int maxLineCount, int *pBufSize)
{
    if (pBufSize == nullptr) return ippStsNullPtrErr;
    if (roiSize.width < 1 || roiSize.height < 1 || maxLineCount < 1) return ippStsSizeErr;
    if (BadDelta(delta)) return ippStsOutOfRangeErr;
    const LineBounds b = BoundsFor(roiSize, delta);
    if (b.thetas < 0) return ippStsNoMemErr;
    const size_t total = LineLayoutFor(b).total;
    if (total > size_t(INT_MAX)) return ippStsNoMemErr;
    *pBufSize = int(total);
    return ippStsNoErr;
}

IppStatus ippiHoughLine_Region_8u32f_C1R(const Ipp8u *pSrc, int srcStep, IppiSize roiSize, IppPointPolar *pLine,
                                         IppPointPolar dstRoi[2], int maxLineCount, int *pLineCount,
                                         IppPointPolar delta, int threshold, Ipp8u *pBuffer)
{
    if (pSrc == nullptr || pLine == nullptr || dstRoi == nullptr || pLineCount == nullptr || pBuffer == nullptr)
        return ippStsNullPtrErr;
    if (roiSize.width < 1 || roiSize.height < 1 || maxLineCount < 1) return ippStsSizeErr;
    if (srcStep < roiSize.width) return ippStsStepErr;
    if (BadDelta(delta)) return ippStsOutOfRangeErr;
    const double rMin = dstRoi[0].rho, rMax = dstRoi[1].rho, tMin = dstRoi[0].theta, tMax = dstRoi[1].theta;
    if (!(rMin <= rMax) || !(tMin <= tMax) || !(tMax - tMin <= kPi + 1e-6) || !std::isfinite(rMin) ||
        !std::isfinite(rMax))
        return ippStsOutOfRangeErr;
    const LineBounds b = BoundsFor(roiSize, delta);
    if (b.thetas < 0) return ippStsNoMemErr;

    const double dr = delta.rho, dt = delta.theta, diag = Diagonal(roiSize);
    const long nT = std::min(b.thetas, long(floor((tMax - tMin) / dt + 1e-9)) + 1);
    // Rho bins r with |rMin + r dr| within the diagonal plus a bin.
    const double lo = std::max(0.0, ceil((-diag - dr - rMin) / dr));
    const double hi = std::min(floor((rMax - rMin) / dr + 1e-9), floor((diag + dr - rMin) / dr));
    *pLineCount = 0;
    if (hi < lo) return ippStsNoErr;
    // A region that starts 2^53 bins or more below the image cannot place
    // its bins (nor convert their numbers) exactly.
    if (!(lo < 0x1p53)) return ippStsOutOfRangeErr;
    const long r0 = long(lo), nR = std::min(long(hi) - r0 + 1, b.rhos);

    const LineLayout l = LineLayoutFor(b);
    const long stride = nR + 2;
    int32_t *acc = reinterpret_cast<int32_t *>(pBuffer + l.acc);
    int32_t *cells = reinterpret_cast<int32_t *>(pBuffer + l.cells);
    double *cosines = reinterpret_cast<double *>(pBuffer + l.cosines);
    double *sines = reinterpret_cast<double *>(pBuffer + l.sines);
    memset(acc, 0, size_t(nT + 2) * size_t(stride) * sizeof(int32_t));
    for (long t = 0; t < nT; ++t) {
        cosines[t] = cos(tMin + double(t) * dt) / dr;
        sines[t] = sin(tMin + double(t) * dt) / dr;
    }
    // Votes; row t + 1 and column r + 1 of the framed accumulator.
    const double base = -rMin / dr - double(r0);
    for (int y = 0; y < roiSize.height; ++y) {
        const Ipp8u *row = pSrc + size_t(y) * srcStep;
        for (int x = 0; x < roiSize.width; ++x) {
            if (row[x] == 0) continue;
            for (long t = 0; t < nT; ++t) {
                const long r = Nearest(x * cosines[t] + y * sines[t] + base);
                if (r >= 0 && r < nR) ++acc[(t + 1) * stride + r + 1];
            }
        }
    }
    // Local maxima at or above the threshold.
    long found = 0;
    for (long t = 0; t < nT; ++t)
        for (long r = 0; r < nR; ++r) {
            const long at = (t + 1) * stride + r + 1;
            const int32_t v = acc[at];
            if (v < threshold || v < 1) continue;
            if (v > acc[at - 1] && v > acc[at - stride - 1] && v > acc[at - stride] && v > acc[at - stride + 1] &&
                v >= acc[at + 1] && v >= acc[at + stride - 1] && v >= acc[at + stride] && v >= acc[at + stride + 1])
                cells[found++] = int32_t(at);
        }
    std::stable_sort(cells, cells + found, [&](int32_t a, int32_t b2) { return acc[a] > acc[b2]; });
    const long n = std::min(found, long(maxLineCount));
    for (long i = 0; i < n; ++i) {
        const long t = cells[i] / stride - 1, r = cells[i] % stride - 1;
        pLine[i].rho = float(rMin + double(r + r0) * dr);
        pLine[i].theta = float(tMin + double(t) * dt);
    }
    *pLineCount = int(n);
    return found > maxLineCount ? ippStsDstSizeLessExpected : ippStsNoErr;
}

IppStatus ippiHoughProbLineGetSize_8u_C1R(IppiSize roiSize, IppPointPolar delta, int *pSpecSize, int *pBufSize)
{
    if (pSpecSize == nullptr || pBufSize == nullptr) return ippStsNullPtrErr;
    if (roiSize.width < 1 || roiSize.height < 1) return ippStsSizeErr;
    if (BadDelta(delta)) return ippStsOutOfRangeErr;
    const ProbShape s = ProbShapeFor(roiSize, delta);
    if (s.thetas < 0) return ippStsNoMemErr;
    const size_t spec = sizeof(ProbSpec) + 2 * size_t(s.thetas) * sizeof(float);
    const size_t total = ProbLayoutFor(roiSize, s).total;
    if (total > size_t(INT_MAX) || spec > size_t(INT_MAX)) return ippStsNoMemErr;
    *pSpecSize = int(spec);
    *pBufSize = int(total);
    return ippStsNoErr;
}

IppStatus ippiHoughProbLineInit_8u32f_C1R(IppiSize roiSize, IppPointPolar delta, IppHintAlgorithm hint,
                                          IppiHoughProbSpec *pSpec)
{
    (void)hint;
    if (pSpec == nullptr) return ippStsNullPtrErr;
    if (roiSize.width < 1 || roiSize.height < 1) return ippStsSizeErr;
    if (BadDelta(delta)) return ippStsOutOfRangeErr;
    const ProbShape s = ProbShapeFor(roiSize, delta);
    if (s.thetas < 0) return ippStsNoMemErr;
    ProbSpec *spec = reinterpret_cast<ProbSpec *>(pSpec);
    spec->magic = kProbMagic;
    spec->width = roiSize.width;
    spec->height = roiSize.height;
    spec->thetas = int(s.thetas);
    spec->rhos = int(s.rhos);
    for (long t = 0; t < s.thetas; ++t) {
        spec->tab[t] = float(cos(double(t) * delta.theta) / delta.rho);
        spec->tab[s.thetas + t] = float(sin(double(t) * delta.theta) / delta.rho);
    }
    return ippStsNoErr;
}

IppStatus ippiHoughProbLine_8u32f_C1R(const Ipp8u *pSrc, int srcStep, IppiSize roiSize, int threshold, int lineLength,
                                      int lineGap, IppiPoint *pLine, int maxLineCount, int *pLineCount,
                                      Ipp8u *pBuffer, const IppiHoughProbSpec *pSpec)
{
    if (pSrc == nullptr || pLine == nullptr || pLineCount == nullptr || pBuffer == nullptr || pSpec == nullptr)
        return ippStsNullPtrErr;
    if (roiSize.width < 1 || roiSize.height < 1 || maxLineCount < 1) return ippStsSizeErr;
    if (srcStep < roiSize.width) return ippStsStepErr;
    if (threshold < 1 || lineLength < 0 || lineGap < 0) return ippStsBadArgErr;
    const ProbSpec *spec = reinterpret_cast<const ProbSpec *>(pSpec);
    if (spec->magic != kProbMagic) return ippStsContextMatchErr;
    if (roiSize.width != spec->width || roiSize.height != spec->height) return ippStsSizeErr;

    const int w = roiSize.width, h = roiSize.height, nT = spec->thetas, nR = spec->rhos;
    const ProbLayout l = ProbLayoutFor(roiSize, {nT, nR});
    int32_t *acc = reinterpret_cast<int32_t *>(pBuffer + l.acc);
    Ipp8u *mask = pBuffer + l.mask;
    IppiPoint *points = reinterpret_cast<IppiPoint *>(pBuffer + l.points);
    const int centre = (nR - 1) / 2;
    memset(acc, 0, size_t(nT) * size_t(nR) * sizeof(int32_t));

    long count = 0;
    for (int y = 0; y < h; ++y) {
        const Ipp8u *row = pSrc + size_t(y) * srcStep;
        for (int x = 0; x < w; ++x) {
            mask[size_t(y) * w + x] = row[x] != 0;
            if (row[x] != 0) points[count++] = IppiPoint{x, y};
        }
    }
    const float *cosT = spec->tab, *sinT = spec->tab + nT;
    int32_t *bins = reinterpret_cast<int32_t *>(pBuffer + l.bins);
    const auto binsOf = orb_kernels::Bins;

    Lcg rng;
    int lines = 0;
    const int shift = 16;
    for (; count > 0 && lines < maxLineCount; --count) {
        const long pick = long(rng.Next() % uint32_t(count));
        const IppiPoint p = points[pick];
        points[pick] = points[count - 1];
        if (!mask[size_t(p.y) * w + p.x]) continue;

        int best = threshold - 1, bestT = -1;
        binsOf(p.x, p.y, cosT, sinT, nT, centre, nR, bins);
        int32_t *row = acc;
        for (int t = 0; t < nT; ++t, row += nR) {
            const int v = ++row[bins[t]];
            bestT = v > best ? t : bestT;
            best = v > best ? v : best;
        }
        if (bestT < 0) continue;

        // Walk along the line (direction (-sin, cos)) in fixed point, one
        // pixel at a time along the faster-changing coordinate.
        const float a = -sinT[bestT], b = cosT[bestT];
        long x0 = p.x, y0 = p.y, dx0, dy0;
        const bool alongX = fabsf(a) > fabsf(b);
        if (alongX) {
            dx0 = a > 0 ? 1 : -1;
            dy0 = lround(b * (1 << shift) / fabsf(a));
            y0 = (y0 << shift) + (1 << (shift - 1));
        } else {
            dy0 = b > 0 ? 1 : -1;
            dx0 = lround(a * (1 << shift) / fabsf(b));
            x0 = (x0 << shift) + (1 << (shift - 1));
        }
        IppiPoint ends[2] = {p, p};
        for (int k = 0; k < 2; ++k) {
            long x = x0, y = y0, dx = k ? -dx0 : dx0, dy = k ? -dy0 : dy0;
            for (int gap = 0;; x += dx, y += dy) {
                const long px = alongX ? x : x >> shift, py = alongX ? y >> shift : y;
                if (px < 0 || px >= w || py < 0 || py >= h) break;
                if (mask[size_t(py) * w + px]) {
                    gap = 0;
                    ends[k] = IppiPoint{int(px), int(py)};
                } else if (++gap > lineGap) {
                    break;
                }
            }
        }
        const bool good = abs(ends[1].x - ends[0].x) >= lineLength || abs(ends[1].y - ends[0].y) >= lineLength;
        for (int k = 0; k < 2; ++k) {
            long x = x0, y = y0, dx = k ? -dx0 : dx0, dy = k ? -dy0 : dy0;
            for (;; x += dx, y += dy) {
                const long px = alongX ? x : x >> shift, py = alongX ? y >> shift : y;
                if (px < 0 || px >= w || py < 0 || py >= h) break;
                Ipp8u &m = mask[size_t(py) * w + px];
                if (m) {
                    if (good) {
                        binsOf(int(px), int(py), cosT, sinT, nT, centre, nR, bins);
                        int32_t *row = acc;
                        for (int t = 0; t < nT; ++t, row += nR) row[bins[t]] -= row[bins[t]] > 0;
                    }
                    m = 0;
                }
                if (px == ends[k].x && py == ends[k].y) break;
            }
        }
        if (good) {
            pLine[2 * lines] = ends[0];
            pLine[2 * lines + 1] = ends[1];
            ++lines;
        }
    }
    *pLineCount = lines;
    return ippStsNoErr;
}

}  // extern "C"
#endif
