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
 */
#include <limits.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include "ippi.h"

namespace {

struct Kernel {
    int radius;
    int smooth[5];
    int diff[5];
};

const Kernel kSobel3 = {1, {1, 2, 1}, {-1, 0, 1}};
const Kernel kSobel5 = {2, {1, 4, 6, 4, 1}, {-1, -2, 0, 2, 1}};
const Kernel kScharr3 = {1, {3, 10, 3}, {-1, 0, 1}};

IppStatus PickKernel(IppiDifferentialKernel filterType, IppiMaskSize mask, const Kernel **k)
{
    if (filterType != ippFilterSobel && filterType != ippFilterScharr) return ippStsNotSupportedModeErr;
    if (mask != ippMskSize3x3 && mask != ippMskSize5x5) return ippStsMaskSizeErr;
    if (filterType == ippFilterScharr && mask != ippMskSize3x3) return ippStsMaskSizeErr;
    *k = filterType == ippFilterScharr ? &kScharr3 : mask == ippMskSize5x5 ? &kSobel5 : &kSobel3;
    return ippStsNoErr;
}

/* The layout of the work buffer for a roi: the bordered source, the two
 * derivatives, the magnitudes with a one-pixel frame of zeros, the state
 * map with the same frame, the hysteresis stack and two rows of vertical
 * sums. */
struct Layout {
    size_t padded, dx, dy, mag, map, stack, sums, total;
};

size_t Align(size_t n) { return (n + 63) & ~size_t(63); }

Layout LayoutFor(IppiSize roi, int radius)
{
    const size_t w = size_t(roi.width), h = size_t(roi.height);
    const size_t pw = w + 2 * size_t(radius), ph = h + 2 * size_t(radius);
    const size_t fw = w + 2, fh = h + 2;
    Layout l;
    l.padded = 0;
    l.dx = l.padded + Align(pw * ph);
    l.dy = l.dx + Align(w * h * sizeof(int16_t));
    l.mag = l.dy + Align(w * h * sizeof(int16_t));
    l.map = l.mag + Align(fw * fh * sizeof(int32_t));
    l.stack = l.map + Align(fw * fh);
    l.sums = l.stack + Align(w * h * sizeof(int32_t));
    l.total = l.sums + Align(2 * pw * sizeof(int32_t)) + 64;
    return l;
}

/* The source with a border of radius pixels on every side. */
void Pad(const Ipp8u *src, int srcStep, IppiSize roi, int r, bool replicate, Ipp8u value, Ipp8u *p)
{
    const int w = roi.width, h = roi.height, pw = w + 2 * r;
    for (int y = -r; y < h + r; ++y) {
        Ipp8u *row = p + size_t(y + r) * pw;
        if (!replicate && (y < 0 || y >= h)) {
            memset(row, value, size_t(pw));
            continue;
        }
        const int sy = y < 0 ? 0 : y >= h ? h - 1 : y;
        const Ipp8u *s = src + size_t(sy) * srcStep;
        memcpy(row + r, s, size_t(w));
        for (int x = 0; x < r; ++x) {
            row[x] = replicate ? s[0] : value;
            row[r + w + x] = replicate ? s[w - 1] : value;
        }
    }
}

/* dx and dy of the padded image, one row at a time through two rows of
 * vertical sums (smoothing for dx, difference for dy). */
void Derivatives(const Ipp8u *p, IppiSize roi, const Kernel &k, int16_t *dx, int16_t *dy, int32_t *sv, int32_t *dv)
{
    const int w = roi.width, h = roi.height, r = k.radius, pw = w + 2 * r, taps = 2 * r + 1;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < pw; ++x) {
            int s = 0, d = 0;
            for (int t = 0; t < taps; ++t) {
                const int v = p[size_t(y + t) * pw + x];
                s += k.smooth[t] * v;
                d += k.diff[t] * v;
            }
            sv[x] = s;
            dv[x] = d;
        }
        int16_t *ox = dx + size_t(y) * w, *oy = dy + size_t(y) * w;
        for (int x = 0; x < w; ++x) {
            int gx = 0, gy = 0;
            for (int t = 0; t < taps; ++t) {
                gx += k.diff[t] * sv[x + t];
                gy += k.smooth[t] * dv[x + t];
            }
            ox[x] = int16_t(gx);
            oy[x] = int16_t(gy);
        }
    }
}

}  // namespace

extern "C" {

IppStatus ippiCannyBorderGetSize(IppiSize roiSize, IppiDifferentialKernel filterType, IppiMaskSize mask,
                                 IppDataType dataType, int *pBufferSize)
{
    if (pBufferSize == nullptr) return ippStsNullPtrErr;
    if (roiSize.width < 1 || roiSize.height < 1) return ippStsSizeErr;
    const Kernel *k = nullptr;
    IppStatus st = PickKernel(filterType, mask, &k);
    if (st != ippStsNoErr) return st;
    if (dataType != ipp8u) return ippStsDataTypeErr;
    const size_t total = LayoutFor(roiSize, k->radius).total;
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
    const Kernel *k = nullptr;
    IppStatus st = PickKernel(filterType, mask, &k);
    if (st != ippStsNoErr) return st;
    if (norm != ippNormL1 && norm != ippNormL2) return ippStsNotSupportedModeErr;
    if (borderType != ippBorderRepl && borderType != ippBorderConst) return ippStsBorderErr;
    if (!(lowThresh >= 0.0f) || !(lowThresh <= highThresh)) return ippStsBadArgErr;

    const int w = roiSize.width, h = roiSize.height, fw = w + 2;
    const Layout l = LayoutFor(roiSize, k->radius);
    Ipp8u *padded = pBuffer + l.padded;
    int16_t *dx = reinterpret_cast<int16_t *>(pBuffer + l.dx), *dy = reinterpret_cast<int16_t *>(pBuffer + l.dy);
    int32_t *mag = reinterpret_cast<int32_t *>(pBuffer + l.mag);
    Ipp8u *map = pBuffer + l.map;
    int32_t *stack = reinterpret_cast<int32_t *>(pBuffer + l.stack);

    Pad(pSrc, srcStep, roiSize, k->radius, borderType == ippBorderRepl, borderValue, padded);
    int32_t *sv = reinterpret_cast<int32_t *>(pBuffer + l.sums), *dv = sv + (w + 2 * k->radius);
    Derivatives(padded, roiSize, *k, dx, dy, sv, dv);

    // Magnitudes inside a frame of zeros.
    const bool l2 = norm == ippNormL2;
    memset(mag, 0, size_t(fw) * (h + 2) * sizeof(int32_t));
    for (int y = 0; y < h; ++y) {
        const int16_t *gx = dx + size_t(y) * w, *gy = dy + size_t(y) * w;
        int32_t *m = mag + size_t(y + 1) * fw + 1;
        for (int x = 0; x < w; ++x) {
            const int a = gx[x], b = gy[x];
            m[x] = l2 ? a * a + b * b : abs(a) + abs(b);
        }
    }
    const double low = l2 ? double(lowThresh) * lowThresh : lowThresh;
    const double high = l2 ? double(highThresh) * highThresh : highThresh;

    // Non-maximum suppression: 0 suppressed, 1 kept, 2 edge.
    memset(map, 0, size_t(fw) * (h + 2));
    size_t top = 0;
    const int32_t tg22 = 13573;  // tan(22.5 degrees) in units of 2^-15
    for (int y = 0; y < h; ++y) {
        const int16_t *gx = dx + size_t(y) * w, *gy = dy + size_t(y) * w;
        const int32_t *m = mag + size_t(y + 1) * fw + 1;
        const int32_t *above = m - fw, *below = m + fw;
        Ipp8u *state = map + size_t(y + 1) * fw + 1;
        for (int x = 0; x < w; ++x) {
            const int32_t v = m[x];
            if (!(double(v) > low)) continue;
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
            if (double(v) > high) {
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
        const Ipp8u *state = map + size_t(y + 1) * fw + 1;
        Ipp8u *d = pDst + size_t(y) * dstStep;
        for (int x = 0; x < w; ++x) d[x] = state[x] == 2 ? 255 : 0;
    }
    return ippStsNoErr;
}

}  // extern "C"
