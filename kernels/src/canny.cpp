/* Canny edge detection of 8-bit images: ippiCannyBorderGetSize and
 * ippiCannyBorder_8u_C1R.
 *
 * 1. Derivatives over the border (replicated, or the constant value):
 *    dx = right minus left, dy = below minus above, with the separable
 *    kernels Sobel 3x3 (smoothing 1 2 1, difference -1 0 1), Sobel 5x5
 *    (1 4 6 4 1, -1 -2 0 2 1) or Scharr 3x3 (3 10 3, -1 0 1).
 * 2. Magnitude |dx| + |dy| (L1) or dx^2 + dy^2 (L2, compared with squared
 *    thresholds, which is comparing the root).
 * 3. Non-maximum suppression along the gradient, quantised to four
 *    directions at 22.5 and 67.5 degrees: a pixel is kept when its magnitude
 *    exceeds the low threshold, is greater than the neighbour before it and,
 *    across a horizontal or vertical gradient, not less than the one after
 *    it (greater than both along a diagonal), so a plateau two pixels wide
 *    keeps one of them.
 * 4. Hysteresis: kept pixels above the high threshold are edges, and so is
 *    every kept pixel 8-connected to an edge. Edges are 255, the rest 0.
 *
 * Checks: null pointers; roi below 1 (ippStsSizeErr); steps shorter than a
 * row (ippStsStepErr); a kernel other than Sobel or Scharr
 * (ippStsNotSupportedModeErr); a mask other than 3x3 or 5x5, or Scharr with
 * 5x5 (ippStsMaskSizeErr); a norm other than L1 or L2 (ippStsNotSupportedModeErr);
 * a border other than replicate or constant (ippStsBorderErr); a negative
 * low threshold or a low threshold above the high one (ippStsBadArgErr).
 * The size query takes only 8-bit data (ippStsDataTypeErr).
 *
 * Work goes a row at a time, so that what one row needs stays in cache:
 * the derivatives and magnitudes of row y + 1 are made while row y is
 * thinned (three rows of magnitudes, two of derivatives); only the state
 * map and the hysteresis stack cover the whole image.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "canny.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <limits.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include "ippi.h"

#ifndef ORB_KERNELS_CANNY_SHARED
#define ORB_KERNELS_CANNY_SHARED
namespace orb_kernels {

inline IppStatus PickKernel(IppiDifferentialKernel filterType, IppiMaskSize mask, int *radius)
{
    if (filterType != ippFilterSobel && filterType != ippFilterScharr) return ippStsNotSupportedModeErr;
    if (mask != ippMskSize3x3 && mask != ippMskSize5x5) return ippStsMaskSizeErr;
    if (filterType == ippFilterScharr && mask != ippMskSize3x3) return ippStsMaskSizeErr;
    *radius = mask == ippMskSize5x5 ? 2 : 1;
    return ippStsNoErr;
}

inline size_t CannyAlign(size_t n) { return (n + 63) & ~size_t(63); }

/* The work buffer: a constant border row, two rows of vertical sums, two
 * rows of derivatives (x and y), three framed rows of magnitudes, the
 * framed state map and the hysteresis stack. */
struct CannyLayout {
    size_t constRow, sums, deriv, mag, map, stack, total;
};

inline CannyLayout CannyLayoutFor(IppiSize roi, int radius)
{
    const size_t w = size_t(roi.width), h = size_t(roi.height), pw = w + 2 * size_t(radius), fw = w + 2;
    CannyLayout l;
    l.constRow = 0;
    l.sums = CannyAlign(w);
    l.deriv = l.sums + CannyAlign(2 * pw * sizeof(int32_t));
    l.mag = l.deriv + CannyAlign(4 * w * sizeof(int16_t));
    l.map = l.mag + CannyAlign(3 * fw * sizeof(int32_t));
    l.stack = l.map + CannyAlign(fw * (h + 2));
    l.total = l.stack + CannyAlign(w * h * sizeof(int32_t)) + 64;
    return l;
}

}  // namespace orb_kernels
#endif

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

/* Smoothing and difference taps of the three kernels. */
template <int R, bool kScharr>
struct Taps;
template <>
struct Taps<1, false> {
    static constexpr int s[3] = {1, 2, 1}, d[3] = {-1, 0, 1};
};
template <>
struct Taps<1, true> {
    static constexpr int s[3] = {3, 10, 3}, d[3] = {-1, 0, 1};
};
template <>
struct Taps<2, false> {
    static constexpr int s[5] = {1, 4, 6, 4, 1}, d[5] = {-1, -2, 0, 2, 1};
};

/* dx and dy of source row y: vertical sums over rows y - R .. y + R (the
 * border rows given by rowAt), the border columns by the border rule, then
 * the horizontal taps. */
template <int R, bool kScharr>
void DerivRow(const Ipp8u *const *rows, int w, bool replicate, int value, int32_t *HWY_RESTRICT sv,
              int32_t *HWY_RESTRICT dv, int16_t *HWY_RESTRICT gx, int16_t *HWY_RESTRICT gy)
{
    using T = Taps<R, kScharr>;
    int32_t *svc = sv + R, *dvc = dv + R;
    for (int x = 0; x < w; ++x) {
        int a = 0, b = 0;
        for (int t = 0; t < 2 * R + 1; ++t) {
            const int v = rows[t][x];
            a += T::s[t] * v;
            b += T::d[t] * v;
        }
        svc[x] = a;
        dvc[x] = b;
    }
    int ssum = 0, dsum = 0;
    for (int t = 0; t < 2 * R + 1; ++t) ssum += T::s[t] * value, dsum += T::d[t] * value;
    for (int k = 1; k <= R; ++k) {
        svc[-k] = replicate ? svc[0] : ssum;
        dvc[-k] = replicate ? dvc[0] : dsum;
        svc[w - 1 + k] = replicate ? svc[w - 1] : ssum;
        dvc[w - 1 + k] = replicate ? dvc[w - 1] : dsum;
    }
    for (int x = 0; x < w; ++x) {
        int a = 0, b = 0;
        for (int t = 0; t < 2 * R + 1; ++t) {
            a += T::d[t] * sv[x + t];
            b += T::s[t] * dv[x + t];
        }
        gx[x] = int16_t(a);
        gy[x] = int16_t(b);
    }
}

template <bool kL2>
void MagRow(const int16_t *HWY_RESTRICT gx, const int16_t *HWY_RESTRICT gy, int w, int32_t *HWY_RESTRICT m)
{
    for (int x = 0; x < w; ++x) {
        const int32_t a = gx[x], b = gy[x];
        m[x] = kL2 ? a * a + b * b : (a < 0 ? -a : a) + (b < 0 ? -b : b);
    }
}

IppStatus Canny(const Ipp8u *pSrc, int srcStep, Ipp8u *pDst, int dstStep, IppiSize roi, int radius, bool scharr,
                bool replicate, Ipp8u borderValue, double low, double high, bool l2, Ipp8u *pBuffer)
{
    const int w = roi.width, h = roi.height, fw = w + 2, pw = w + 2 * radius;
    const CannyLayout l = CannyLayoutFor(roi, radius);
    Ipp8u *constRow = pBuffer + l.constRow;
    int32_t *sv = reinterpret_cast<int32_t *>(pBuffer + l.sums), *dv = sv + pw;
    int16_t *deriv = reinterpret_cast<int16_t *>(pBuffer + l.deriv);
    int32_t *magRows = reinterpret_cast<int32_t *>(pBuffer + l.mag);
    Ipp8u *map = pBuffer + l.map;
    int32_t *stack = reinterpret_cast<int32_t *>(pBuffer + l.stack);
    memset(constRow, borderValue, size_t(w));
    memset(magRows, 0, 3 * size_t(fw) * sizeof(int32_t));
    memset(map, 0, size_t(fw) * (h + 2));

    // Derivatives and magnitudes of source row y into slot y % 2 and
    // magnitude slot (y + 1) % 3 (framed: entry 0 and w + 1 stay zero).
    auto prepare = [&](int y) {
        const Ipp8u *rows[5];
        for (int t = -radius; t <= radius; ++t) {
            const int r = y + t;
            rows[t + radius] = r >= 0 && r < h ? pSrc + size_t(r) * srcStep
                               : replicate    ? pSrc + size_t(r < 0 ? 0 : h - 1) * srcStep
                                              : constRow;
        }
        int16_t *gx = deriv + size_t(y % 2) * 2 * w, *gy = gx + w;
        if (radius == 2)
            DerivRow<2, false>(rows, w, replicate, borderValue, sv, dv, gx, gy);
        else if (scharr)
            DerivRow<1, true>(rows, w, replicate, borderValue, sv, dv, gx, gy);
        else
            DerivRow<1, false>(rows, w, replicate, borderValue, sv, dv, gx, gy);
        int32_t *m = magRows + size_t((y + 1) % 3) * fw + 1;
        if (l2)
            MagRow<true>(gx, gy, w, m);
        else
            MagRow<false>(gx, gy, w, m);
    };

    size_t top = 0;
    const int32_t tg22 = 13573;  // tan(22.5 degrees) in units of 2^-15
    // Magnitudes compared as integers: above low means above floor(low).
    const int64_t lowI = int64_t(low), highI = int64_t(high);
    prepare(0);
    for (int y = 0; y < h; ++y) {
        if (y + 1 < h)
            prepare(y + 1);
        else
            memset(magRows + size_t((y + 2) % 3) * fw, 0, size_t(fw) * sizeof(int32_t));
        const int16_t *gx = deriv + size_t(y % 2) * 2 * w, *gy = gx + w;
        const int32_t *m = magRows + size_t((y + 1) % 3) * fw + 1;
        // Row -1 is the slot zeroed at the start, row h the one zeroed above.
        const int32_t *above = magRows + size_t(y % 3) * fw + 1;
        const int32_t *below = magRows + size_t((y + 2) % 3) * fw + 1;
        Ipp8u *state = map + size_t(y + 1) * fw + 1;
        for (int x = 0; x < w; ++x) {
            const int32_t v = m[x];
            if (v <= lowI) continue;
            const int a = gx[x], b = gy[x];
            const int64_t ax = abs(a), ay = int64_t(abs(b)) << 15;
            const int64_t t22 = ax * tg22, t67 = t22 + (ax << 16);
            bool keep;
            if (ay < t22)
                keep = v > m[x - 1] && v >= m[x + 1];
            else if (ay > t67)
                keep = v > above[x] && v >= below[x];
            else {
                const int s = (a ^ b) < 0 ? -1 : 1;
                keep = v > above[x - s] && v > below[x + s];
            }
            if (!keep) continue;
            if (v > highI) {
                state[x] = 2;
                stack[top++] = int32_t((y + 1) * fw + x + 1);
            } else {
                state[x] = 1;
            }
        }
    }

    // Hysteresis: grow the edges through kept neighbours.
    const int offsets[8] = {-fw - 1, -fw, -fw + 1, -1, 1, fw - 1, fw, fw + 1};
    while (top > 0) {
        const int32_t at = stack[--top];
        for (int o : offsets)
            if (map[at + o] == 1) {
                map[at + o] = 2;
                stack[top++] = at + o;
            }
    }
    for (int y = 0; y < h; ++y) {
        const Ipp8u *st = map + size_t(y + 1) * fw + 1;
        Ipp8u *d = pDst + size_t(y) * dstStep;
        for (int x = 0; x < w; ++x) d[x] = Ipp8u(-(st[x] >> 1));
    }
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
HWY_EXPORT(Canny);
}  // namespace orb_kernels

using namespace orb_kernels;

extern "C" {

IppStatus ippiCannyBorderGetSize(IppiSize roiSize, IppiDifferentialKernel filterType, IppiMaskSize mask,
                                 IppDataType dataType, int *pBufferSize)
{
    if (pBufferSize == nullptr) return ippStsNullPtrErr;
    if (roiSize.width < 1 || roiSize.height < 1) return ippStsSizeErr;
    int radius = 0;
    IppStatus st = PickKernel(filterType, mask, &radius);
    if (st != ippStsNoErr) return st;
    if (dataType != ipp8u) return ippStsDataTypeErr;
    const size_t total = CannyLayoutFor(roiSize, radius).total;
    if (total > size_t(INT_MAX)) return ippStsNoMemErr;
    *pBufferSize = int(total);
    return ippStsNoErr;
}

IppStatus ippiCannyBorder_8u_C1R(const Ipp8u *pSrc, int srcStep, Ipp8u *pDst, int dstStep, IppiSize roiSize,
                                 IppiDifferentialKernel filterType, IppiMaskSize mask, IppiBorderType borderType,
                                 Ipp8u borderValue, Ipp32f lowThresh, Ipp32f highThresh, IppNormType norm,
                                 Ipp8u *pBuffer)
{
    if (pSrc == nullptr || pDst == nullptr || pBuffer == nullptr) return ippStsNullPtrErr;
    if (roiSize.width < 1 || roiSize.height < 1) return ippStsSizeErr;
    if (srcStep < roiSize.width || dstStep < roiSize.width) return ippStsStepErr;
    int radius = 0;
    IppStatus st = PickKernel(filterType, mask, &radius);
    if (st != ippStsNoErr) return st;
    if (norm != ippNormL1 && norm != ippNormL2) return ippStsNotSupportedModeErr;
    if (borderType != ippBorderRepl && borderType != ippBorderConst) return ippStsBorderErr;
    if (!(lowThresh >= 0.0f) || !(lowThresh <= highThresh)) return ippStsBadArgErr;
    const bool l2 = norm == ippNormL2;
    // Squared for L2; capped where no magnitude can reach.
    double low = l2 ? double(lowThresh) * lowThresh : lowThresh, high = l2 ? double(highThresh) * highThresh : highThresh;
    if (low > 4e9) low = 4e9;
    if (high > 4e9) high = 4e9;
    return HWY_DYNAMIC_DISPATCH(Canny)(pSrc, srcStep, pDst, dstStep, roiSize, radius, filterType == ippFilterScharr,
                                       borderType == ippBorderRepl, borderValue, low, high, l2, pBuffer);
}

}  // extern "C"
#endif
