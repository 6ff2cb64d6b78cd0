// The wavelet reference loops themselves, included by the plain and the
// native build (file-local in each, so the two builds never merge).
#ifndef ORB_BENCH_IMAGE_REF_LOOPS_H
#define ORB_BENCH_IMAGE_REF_LOOPS_H

#include <stddef.h>

#include "image_refs.h"

namespace {

// Rows first: each source row (with its borders) into a low and a high
// half-width row, for every row the columns need; then columns.
void RefFwd(const float *src, int stride, float *const dst[4], int w, int h, refs::WTBank b, float *work)
{
    const int eL = b.lenLow - 1 - b.anchorLow, eH = b.lenHigh - 1 - b.anchorHigh;
    const int top = eL > eH ? eL : eH, bottom = b.anchorLow > b.anchorHigh ? b.anchorLow : b.anchorHigh;
    const int rows = 2 * h + top + bottom;
    float *lo = work, *hi = work + size_t(rows) * w;
    for (int r = 0; r < rows; ++r) {
        const float *s = src + (long(r) - top) * stride;
        for (int i = 0; i < w; ++i) {
            float a = 0, d = 0;
            for (int k = 0; k < b.lenLow; ++k) a += b.low[k] * s[2 * i + b.anchorLow - k];
            for (int k = 0; k < b.lenHigh; ++k) d += b.high[k] * s[2 * i + b.anchorHigh - k];
            lo[size_t(r) * w + i] = a;
            hi[size_t(r) * w + i] = d;
        }
    }
    for (int j = 0; j < h; ++j)
        for (int i = 0; i < w; ++i) {
            float v[4] = {0, 0, 0, 0};
            for (int k = 0; k < b.lenLow; ++k) {
                const size_t at = size_t(2 * j + b.anchorLow - k + top) * w + i;
                v[0] += b.low[k] * lo[at];
                v[2] += b.low[k] * hi[at];
            }
            for (int k = 0; k < b.lenHigh; ++k) {
                const size_t at = size_t(2 * j + b.anchorHigh - k + top) * w + i;
                v[1] += b.high[k] * lo[at];
                v[3] += b.high[k] * hi[at];
            }
            for (int q = 0; q < 4; ++q) dst[q][size_t(j) * w + i] = v[q];
        }
}

// Columns first: each subband column up-sampled and filtered into rows of
// the full height, then the rows.
void RefInv(const float *const src[4], int stride, float *dst, int w, int h, refs::WTBank b, float *work)
{
    const int W = w + 4;  // subband columns with two on each side
    float *lx = work, *hx = work + size_t(2 * h) * W;
    for (int j = 0; j < 2 * h; ++j)
        for (int c = -2; c < w + 2; ++c) {
            float a = 0, d = 0;
            for (int k = 0; k < b.lenLow; ++k) {
                const int m = j + b.anchorLow - k;
                if (m & 1) continue;
                a += b.low[k] * src[0][long(m >> 1) * stride + c];
                d += b.low[k] * src[2][long(m >> 1) * stride + c];
            }
            for (int k = 0; k < b.lenHigh; ++k) {
                const int m = j + b.anchorHigh - k;
                if (m & 1) continue;
                a += b.high[k] * src[1][long(m >> 1) * stride + c];
                d += b.high[k] * src[3][long(m >> 1) * stride + c];
            }
            lx[size_t(j) * W + c + 2] = a;
            hx[size_t(j) * W + c + 2] = d;
        }
    for (int j = 0; j < 2 * h; ++j)
        for (int x = 0; x < 2 * w; ++x) {
            float s = 0;
            for (int k = 0; k < b.lenLow; ++k) {
                const int m = x + b.anchorLow - k;
                if (!(m & 1)) s += b.low[k] * lx[size_t(j) * W + (m >> 1) + 2];
            }
            for (int k = 0; k < b.lenHigh; ++k) {
                const int m = x + b.anchorHigh - k;
                if (!(m & 1)) s += b.high[k] * hx[size_t(j) * W + (m >> 1) + 2];
            }
            dst[size_t(j) * 2 * w + x] = s;
        }
}

}  // namespace

#endif
