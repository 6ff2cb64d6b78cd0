/* One level of the two-dimensional wavelet transform with a user filter
 * bank: ippiWTFwd/ippiWTInv with their size queries and initialisers, one
 * and three channels (interleaved; each channel on its own).
 *
 * Filters. A filter of len taps t[0..len-1] with anchor a (0 <= a < len)
 * works as a convolution whose tap a sits on the sample in question:
 *   forward  y[i] = sum_k t[k] x[2i + a - k]          (even phase kept)
 *   inverse  y[j] = sum_k t[k] u[j + a - k],  u[2i] = s[i], u[2i+1] = 0
 * so the forward reads len - 1 - a samples before and a after each kept
 * sample, and the inverse (len - 1 - a) / 2 subband samples before and
 * (a + 1) / 2 after: the borders the caller must supply.
 *
 * Subbands. approximation: low-pass along x and y; detail X (the
 * horizontal detail): low-pass along x, high-pass along y; detail Y:
 * high-pass along x, low-pass along y; detail XY: high-pass along both.
 * The inverse sums the four synthesis filterings.
 *
 * Work. Both directions go through the image in strips of at most kStrip
 * output columns. For each output row, the vertical filtering of the
 * strip's input rows gives one row per vertical filter; along x the forward
 * splits those rows into even and odd columns and the inverse makes its even
 * and odd outputs apart, so that every filtering is a sum of whole rows
 * times taps (one vector loop) over rows gathered by pointer. The work
 * buffer holds six strip rows and the gathered pointers, whatever the image
 * size.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "wavelet.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <stdint.h>
#include <string.h>

#include "ippi.h"

#ifndef ORB_KERNELS_WAVELET_SHARED
#define ORB_KERNELS_WAVELET_SHARED
namespace orb_kernels {

/* Output columns per strip. */
constexpr int kStrip = 256;
constexpr uint32_t kFwdMagic = 0x57544657u;  // "WTFW"
constexpr uint32_t kInvMagic = 0x57544956u;  // "WTIV"

/* The set-up structure: a header followed by the low then the high taps. */
struct WTSpec {
    uint32_t magic;
    int channels;
    int lenLow, anchorLow, lenHigh, anchorHigh;
    float taps[1];
};

inline int SpecBytes(int lenLow, int lenHigh) { return int(sizeof(WTSpec) + sizeof(float) * size_t(lenLow + lenHigh)); }

/* Floats of one strip row: enough for the forward (2 kStrip + len) and the
 * inverse (kStrip / 2 + len) input columns. */
inline int RowFloats(int lenLow, int lenHigh, int channels)
{
    const int len = lenLow > lenHigh ? lenLow : lenHigh;
    return (2 * kStrip + 2 * len + 8) * channels;
}

inline IppStatus CheckBank(int lenLow, int anchorLow, int lenHigh, int anchorHigh)
{
    if (lenLow < 2 || lenHigh < 2 || lenLow > (1 << 20) || lenHigh > (1 << 20)) return ippStsSizeErr;
    if (anchorLow < 0 || anchorLow >= lenLow || anchorHigh < 0 || anchorHigh >= lenHigh) return ippStsAnchorErr;
    return ippStsNoErr;
}

}  // namespace orb_kernels
#endif

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

/* acc[x] = sum_k t[k] rows[k][x] for x < n, over nk rows: every filtering
 * of both directions comes down to this, with the rows gathered first. */
HWY_INLINE void VerticalSum(const float *const *rows, const float *t, int nk, float *HWY_RESTRICT acc, size_t n)
{
    const hn::ScalableTag<float> d;
    const size_t N = hn::Lanes(d);
    size_t x = 0;
    for (; x + 2 * N <= n; x += 2 * N) {
        auto s0 = hn::Mul(hn::Set(d, t[0]), hn::LoadU(d, rows[0] + x));
        auto s1 = hn::Mul(hn::Set(d, t[0]), hn::LoadU(d, rows[0] + x + N));
        for (int k = 1; k < nk; ++k) {
            const auto tk = hn::Set(d, t[k]);
            s0 = hn::MulAdd(tk, hn::LoadU(d, rows[k] + x), s0);
            s1 = hn::MulAdd(tk, hn::LoadU(d, rows[k] + x + N), s1);
        }
        hn::StoreU(s0, d, acc + x);
        hn::StoreU(s1, d, acc + x + N);
    }
    for (; x < n; ++x) {
        float s = t[0] * rows[0][x];
        for (int k = 1; k < nk; ++k) s += t[k] * rows[k][x];
        acc[x] = s;
    }
}

/* Splits a row of pixels into the pixels at even and at odd offsets d =
 * s - first from a reference column: pixel s goes to slot (d >> 1) + J of
 * even or odd, so offset 2j lands in even[j + J], 2j + 1 in odd[j + J]. */
HWY_INLINE void Deinterleave(const float *HWY_RESTRICT row, int pixels, int first, int J, int C,
                             float *HWY_RESTRICT even, float *HWY_RESTRICT odd)
{
    int s = 0;
    if (C == 1) {
        // Pairs (even, odd) from the first even offset on.
        if ((0 - first) & 1) {
            odd[((0 - first) >> 1) + J] = row[0];
            s = 1;
        }
        const hn::ScalableTag<float> d;
        const int N = int(hn::Lanes(d));
        for (; s + 2 * N <= pixels; s += 2 * N) {
            hn::Vec<decltype(d)> e, o;
            hn::LoadInterleaved2(d, row + s, e, o);
            const int j = ((s - first) >> 1) + J;
            hn::StoreU(e, d, even + j);
            hn::StoreU(o, d, odd + j);
        }
    }
    for (; s < pixels; ++s) {
        const int off = s - first;
        float *to = (off & 1 ? odd : even) + ptrdiff_t((off >> 1) + J) * C;
        for (int c = 0; c < C; ++c) to[c] = row[s * C + c];
    }
}

/* Interleaves two rows of n pixels, even[q] to pixel 2q and odd[q] to
 * pixel 2q + 1 of out. */
HWY_INLINE void Interleave(const float *HWY_RESTRICT even, const float *HWY_RESTRICT odd, int n, int C,
                           float *HWY_RESTRICT out)
{
    int q = 0;
    if (C == 1) {
        const hn::ScalableTag<float> d;
        const int N = int(hn::Lanes(d));
        for (; q + N <= n; q += N) hn::StoreInterleaved2(hn::LoadU(d, even + q), hn::LoadU(d, odd + q), d, out + 2 * q);
    }
    for (; q < n; ++q)
        for (int c = 0; c < C; ++c) {
            out[(2 * q) * C + c] = even[q * C + c];
            out[(2 * q + 1) * C + c] = odd[q * C + c];
        }
}

/* Scratch of one call: strip rows and the gathered row pointers and taps. */
struct Scratch {
    float *row[6];
    const float **rows;
    float *taps;
};

Scratch ScratchOf(float *buffer, int lenL, int lenH, int C)
{
    Scratch s;
    const int rf = RowFloats(lenL, lenH, C);
    for (int k = 0; k < 6; ++k) s.row[k] = buffer + ptrdiff_t(k) * rf;
    s.rows = reinterpret_cast<const float **>(buffer + 6 * ptrdiff_t(rf));
    s.taps = reinterpret_cast<float *>(s.rows + (lenL + lenH));
    return s;
}

/* Forward along x of one strip row split into even/odd columns (offsets
 * from input column 2 x0, slot J for offset 0): out[i] = sum_k t[k]
 * in[2i + a - k]. */
HWY_INLINE void FwdRow(const float *even, const float *odd, int J, const float *t, int len, int a, int C,
                       float *out, int n, const float **rows, float *taps)
{
    for (int k = 0; k < len; ++k) {
        const int off = a - k;
        rows[k] = (off & 1 ? odd : even) + ptrdiff_t((off >> 1) + J) * C;
        taps[k] = t[k];
    }
    VerticalSum(rows, taps, len, out, size_t(n) * C);
}

IppStatus WTFwd(const float *pSrc, int srcStep, float *const dst[4], const int dstStep[4], IppiSize roi,
                const WTSpec *spec, float *buffer)
{
    const int C = spec->channels;
    const int lenL = spec->lenLow, aL = spec->anchorLow, lenH = spec->lenHigh, aH = spec->anchorHigh;
    const float *tL = spec->taps, *tH = spec->taps + lenL;
    const int E = (lenL - 1 - aL) > (lenH - 1 - aH) ? (lenL - 1 - aL) : (lenH - 1 - aH);
    const int R = aL > aH ? aL : aH;
    const int J = (E + 1) / 2 + 1;
    Scratch sc = ScratchOf(buffer, lenL, lenH, C);
    float *rowL = sc.row[0], *rowH = sc.row[1];
    float *evenL = sc.row[2], *oddL = sc.row[3], *evenH = sc.row[4], *oddH = sc.row[5];
    const uint8_t *src = reinterpret_cast<const uint8_t *>(pSrc);

    for (int x0 = 0; x0 < roi.width; x0 += kStrip) {
        const int n = roi.width - x0 < kStrip ? roi.width - x0 : kStrip;
        const int c0 = 2 * x0 - E;        // first input column of the strip
        const int w = 2 * n - 1 + E + R;  // input columns of the strip
        const size_t nf = size_t(w) * size_t(C);
        for (int i = 0; i < roi.height; ++i) {
            auto rowAt = [&](int r) {
                return reinterpret_cast<const float *>(src + ptrdiff_t(r) * srcStep) + ptrdiff_t(c0) * C;
            };
            for (int k = 0; k < lenL; ++k) sc.rows[k] = rowAt(2 * i + aL - k);
            VerticalSum(sc.rows, tL, lenL, rowL, nf);
            for (int k = 0; k < lenH; ++k) sc.rows[k] = rowAt(2 * i + aH - k);
            VerticalSum(sc.rows, tH, lenH, rowH, nf);
            // Strip column s is offset s - E from input column 2 x0.
            Deinterleave(rowL, w, E, J, C, evenL, oddL);
            Deinterleave(rowH, w, E, J, C, evenH, oddH);
            auto out = [&](int b) {
                return reinterpret_cast<float *>(reinterpret_cast<uint8_t *>(dst[b]) + ptrdiff_t(i) * dstStep[b]) +
                       ptrdiff_t(x0) * C;
            };
            FwdRow(evenL, oddL, J, tL, lenL, aL, C, out(0), n, sc.rows, sc.taps);  // approximation
            FwdRow(evenH, oddH, J, tL, lenL, aL, C, out(1), n, sc.rows, sc.taps);  // detail X
            FwdRow(evenL, oddL, J, tH, lenH, aH, C, out(2), n, sc.rows, sc.taps);  // detail Y
            FwdRow(evenH, oddH, J, tH, lenH, aH, C, out(3), n, sc.rows, sc.taps);  // detail XY
        }
    }
    return ippStsNoErr;
}

/* Gathers the rows (or row offsets) of one synthesis sum: the taps k of
 * the low and the high filter whose up-sampled index j + a - k is even,
 * each with the row (j + a - k) / 2 of its band. */
HWY_INLINE int Gather(const float *lowBase, ptrdiff_t lowStride, const float *highBase, ptrdiff_t highStride, int j,
                      const float *tL, int lenL, int aL, const float *tH, int lenH, int aH, const float **rows,
                      float *taps)
{
    int nk = 0;
    for (int k = (j + aL) & 1; k < lenL; k += 2) {
        rows[nk] = lowBase + ptrdiff_t((j + aL - k) >> 1) * lowStride;
        taps[nk++] = tL[k];
    }
    for (int k = (j + aH) & 1; k < lenH; k += 2) {
        rows[nk] = highBase + ptrdiff_t((j + aH - k) >> 1) * highStride;
        taps[nk++] = tH[k];
    }
    return nk;
}

IppStatus WTInv(const float *const src[4], const int srcStep[4], IppiSize roi, float *pDst, int dstStep,
                const WTSpec *spec, float *buffer)
{
    const int C = spec->channels;
    const int lenL = spec->lenLow, aL = spec->anchorLow, lenH = spec->lenHigh, aH = spec->anchorHigh;
    const float *tL = spec->taps, *tH = spec->taps + lenL;
    const int leftL = (lenL - 1 - aL) / 2, rightL = (aL + 1) / 2;
    const int leftH = (lenH - 1 - aH) / 2, rightH = (aH + 1) / 2;
    const int E = leftL > leftH ? leftL : leftH, R = rightL > rightH ? rightL : rightH;
    Scratch sc = ScratchOf(buffer, lenL, lenH, C);
    float *rowLx = sc.row[0], *rowHx = sc.row[1], *even = sc.row[2], *odd = sc.row[3];
    auto band = [&](int b, int c0) {
        return reinterpret_cast<const float *>(src[b]) + ptrdiff_t(c0) * C;
    };
    const ptrdiff_t stride[4] = {srcStep[0] / ptrdiff_t(sizeof(float)), srcStep[1] / ptrdiff_t(sizeof(float)),
                                 srcStep[2] / ptrdiff_t(sizeof(float)), srcStep[3] / ptrdiff_t(sizeof(float))};
    const bool whole = srcStep[0] % 4 == 0 && srcStep[1] % 4 == 0 && srcStep[2] % 4 == 0 && srcStep[3] % 4 == 0;
    const int half = kStrip / 2;

    for (int s0 = 0; s0 < roi.width; s0 += half) {
        const int m = roi.width - s0 < half ? roi.width - s0 : half;  // subband columns
        // The strip starts at subband column c0 = s0 - E: column s0 sits at E.
        const int c0 = s0 - E;
        const size_t nf = size_t(m + E + R) * size_t(C);
        for (int j = 0; j < 2 * roi.height; ++j) {
            int nk;
            if (whole) {
                // Low along x: approximation (low along y) and detail X (high
                // along y); high along x: detail Y and detail XY.
                nk = Gather(band(0, c0), stride[0], band(1, c0), stride[1], j, tL, lenL, aL, tH, lenH, aH, sc.rows,
                            sc.taps);
                VerticalSum(sc.rows, sc.taps, nk, rowLx, nf);
                nk = Gather(band(2, c0), stride[2], band(3, c0), stride[3], j, tL, lenL, aL, tH, lenH, aH, sc.rows,
                            sc.taps);
                VerticalSum(sc.rows, sc.taps, nk, rowHx, nf);
            } else {
                // Steps that are no whole number of floats: rows by bytes.
                for (int pass = 0; pass < 2; ++pass) {
                    const int lo = 2 * pass, hi = 2 * pass + 1;
                    nk = 0;
                    for (int k = (j + aL) & 1; k < lenL; k += 2) {
                        sc.rows[nk] = reinterpret_cast<const float *>(reinterpret_cast<const uint8_t *>(band(lo, c0)) +
                                                                      ptrdiff_t((j + aL - k) >> 1) * srcStep[lo]);
                        sc.taps[nk++] = tL[k];
                    }
                    for (int k = (j + aH) & 1; k < lenH; k += 2) {
                        sc.rows[nk] = reinterpret_cast<const float *>(reinterpret_cast<const uint8_t *>(band(hi, c0)) +
                                                                      ptrdiff_t((j + aH - k) >> 1) * srcStep[hi]);
                        sc.taps[nk++] = tH[k];
                    }
                    VerticalSum(sc.rows, sc.taps, nk, pass ? rowHx : rowLx, nf);
                }
            }
            // Along x: even outputs 2q take the taps with a - k even, odd
            // outputs 2q + 1 those with a - k odd, from subband column
            // q + (a - k + parity) / 2.
            for (int parity = 0; parity < 2; ++parity) {
                nk = 0;
                for (int k = (parity + aL) & 1; k < lenL; k += 2) {
                    sc.rows[nk] = rowLx + ptrdiff_t(((parity + aL - k) >> 1) + E) * C;
                    sc.taps[nk++] = tL[k];
                }
                for (int k = (parity + aH) & 1; k < lenH; k += 2) {
                    sc.rows[nk] = rowHx + ptrdiff_t(((parity + aH - k) >> 1) + E) * C;
                    sc.taps[nk++] = tH[k];
                }
                VerticalSum(sc.rows, sc.taps, nk, parity ? odd : even, size_t(m) * C);
            }
            float *out = reinterpret_cast<float *>(reinterpret_cast<uint8_t *>(pDst) + ptrdiff_t(j) * dstStep) +
                         ptrdiff_t(2 * s0) * C;
            Interleave(even, odd, m, C, out);
        }
    }
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
HWY_EXPORT(WTFwd);
HWY_EXPORT(WTInv);

namespace {

IppStatus GetSize(int numChannels, int lenLow, int anchorLow, int lenHigh, int anchorHigh, int *pSpecSize,
                  int *pBufSize, bool inverse)
{
    if (pSpecSize == nullptr || pBufSize == nullptr) return ippStsNullPtrErr;
    if (numChannels != 1 && numChannels != 3) return ippStsNumChannelsErr;
    const IppStatus st = CheckBank(lenLow, anchorLow, lenHigh, anchorHigh);
    if (st != ippStsNoErr) return st;
    *pSpecSize = SpecBytes(lenLow, lenHigh);
    // Six strip rows, then the gathered row pointers and taps.
    (void)inverse;
    const size_t rows = size_t(6) * size_t(RowFloats(lenLow, lenHigh, numChannels)) * sizeof(float);
    const size_t gather = size_t(lenLow + lenHigh) * (sizeof(float *) + sizeof(float));
    *pBufSize = int(rows + gather + 64);
    return ippStsNoErr;
}

IppStatus Init(void *pSpec, const Ipp32f *pTapsLow, int lenLow, int anchorLow, const Ipp32f *pTapsHigh, int lenHigh,
               int anchorHigh, int channels, uint32_t magic)
{
    if (pSpec == nullptr || pTapsLow == nullptr || pTapsHigh == nullptr) return ippStsNullPtrErr;
    const IppStatus st = CheckBank(lenLow, anchorLow, lenHigh, anchorHigh);
    if (st != ippStsNoErr) return st;
    WTSpec *spec = static_cast<WTSpec *>(pSpec);
    spec->magic = magic;
    spec->channels = channels;
    spec->lenLow = lenLow;
    spec->anchorLow = anchorLow;
    spec->lenHigh = lenHigh;
    spec->anchorHigh = anchorHigh;
    memcpy(spec->taps, pTapsLow, sizeof(float) * size_t(lenLow));
    memcpy(spec->taps + lenLow, pTapsHigh, sizeof(float) * size_t(lenHigh));
    return ippStsNoErr;
}

/* Steps are checked against the ROI widths: dstWidth for the forward
 * outputs and the inverse subbands, twice that for the other side. */
IppStatus CheckSteps(const int *steps, int count, int width, int C)
{
    for (int b = 0; b < count; ++b)
        if (long(steps[b]) < long(width) * C * long(sizeof(float))) return ippStsStepErr;
    return ippStsNoErr;
}

IppStatus Fwd(const Ipp32f *pSrc, int srcStep, Ipp32f *a, int as, Ipp32f *x, int xs, Ipp32f *y, int ys, Ipp32f *xy,
              int xys, IppiSize roi, const void *pSpec, Ipp8u *pBuffer, int channels)
{
    if (pSrc == nullptr || a == nullptr || x == nullptr || y == nullptr || xy == nullptr || pSpec == nullptr ||
        pBuffer == nullptr)
        return ippStsNullPtrErr;
    if (roi.width < 1 || roi.height < 1) return ippStsSizeErr;
    const WTSpec *spec = static_cast<const WTSpec *>(pSpec);
    if (spec->magic != kFwdMagic || spec->channels != channels) return ippStsContextMatchErr;
    const int steps[4] = {as, xs, ys, xys};
    IppStatus st = CheckSteps(steps, 4, roi.width, channels);
    if (st == ippStsNoErr && long(srcStep) < 2L * roi.width * channels * long(sizeof(float))) st = ippStsStepErr;
    if (st != ippStsNoErr) return st;
    float *const dst[4] = {a, x, y, xy};
    return HWY_DYNAMIC_DISPATCH(WTFwd)(pSrc, srcStep, dst, steps, roi, spec, reinterpret_cast<float *>(pBuffer));
}

IppStatus Inv(const Ipp32f *a, int as, const Ipp32f *x, int xs, const Ipp32f *y, int ys, const Ipp32f *xy, int xys,
              IppiSize roi, Ipp32f *pDst, int dstStep, const void *pSpec, Ipp8u *pBuffer, int channels)
{
    if (a == nullptr || x == nullptr || y == nullptr || xy == nullptr || pDst == nullptr || pSpec == nullptr ||
        pBuffer == nullptr)
        return ippStsNullPtrErr;
    if (roi.width < 1 || roi.height < 1) return ippStsSizeErr;
    const WTSpec *spec = static_cast<const WTSpec *>(pSpec);
    if (spec->magic != kInvMagic || spec->channels != channels) return ippStsContextMatchErr;
    const int steps[4] = {as, xs, ys, xys};
    IppStatus st = CheckSteps(steps, 4, roi.width, channels);
    if (st == ippStsNoErr && long(dstStep) < 2L * roi.width * channels * long(sizeof(float))) st = ippStsStepErr;
    if (st != ippStsNoErr) return st;
    const float *const src[4] = {a, x, y, xy};
    return HWY_DYNAMIC_DISPATCH(WTInv)(src, steps, roi, pDst, dstStep, spec, reinterpret_cast<float *>(pBuffer));
}

}  // namespace
}  // namespace orb_kernels

using namespace orb_kernels;

extern "C" {

IppStatus ippiWTFwdGetSize_32f(int numChannels, int lenLow, int anchorLow, int lenHigh, int anchorHigh,
                               int *pSpecSize, int *pBufSize)
{
    return GetSize(numChannels, lenLow, anchorLow, lenHigh, anchorHigh, pSpecSize, pBufSize, false);
}

IppStatus ippiWTInvGetSize_32f(int numChannels, int lenLow, int anchorLow, int lenHigh, int anchorHigh,
                               int *pSpecSize, int *pBufSize)
{
    return GetSize(numChannels, lenLow, anchorLow, lenHigh, anchorHigh, pSpecSize, pBufSize, true);
}

IppStatus ippiWTFwdInit_32f_C1R(IppiWTFwdSpec_32f_C1R *pSpec, const Ipp32f *pTapsLow, int lenLow, int anchorLow,
                                const Ipp32f *pTapsHigh, int lenHigh, int anchorHigh)
{
    return Init(pSpec, pTapsLow, lenLow, anchorLow, pTapsHigh, lenHigh, anchorHigh, 1, kFwdMagic);
}

IppStatus ippiWTFwdInit_32f_C3R(IppiWTFwdSpec_32f_C3R *pSpec, const Ipp32f *pTapsLow, int lenLow, int anchorLow,
                                const Ipp32f *pTapsHigh, int lenHigh, int anchorHigh)
{
    return Init(pSpec, pTapsLow, lenLow, anchorLow, pTapsHigh, lenHigh, anchorHigh, 3, kFwdMagic);
}

IppStatus ippiWTInvInit_32f_C1R(IppiWTInvSpec_32f_C1R *pSpec, const Ipp32f *pTapsLow, int lenLow, int anchorLow,
                                const Ipp32f *pTapsHigh, int lenHigh, int anchorHigh)
{
    return Init(pSpec, pTapsLow, lenLow, anchorLow, pTapsHigh, lenHigh, anchorHigh, 1, kInvMagic);
}

IppStatus ippiWTInvInit_32f_C3R(IppiWTInvSpec_32f_C3R *pSpec, const Ipp32f *pTapsLow, int lenLow, int anchorLow,
                                const Ipp32f *pTapsHigh, int lenHigh, int anchorHigh)
{
    return Init(pSpec, pTapsLow, lenLow, anchorLow, pTapsHigh, lenHigh, anchorHigh, 3, kInvMagic);
}

IppStatus ippiWTFwd_32f_C1R(const Ipp32f *pSrc, int srcStep, Ipp32f *pApproxDst, int approxStep, Ipp32f *pDetailXDst,
                            int detailXStep, Ipp32f *pDetailYDst, int detailYStep, Ipp32f *pDetailXYDst,
                            int detailXYStep, IppiSize dstRoiSize, const IppiWTFwdSpec_32f_C1R *pSpec, Ipp8u *pBuffer)
{
    return Fwd(pSrc, srcStep, pApproxDst, approxStep, pDetailXDst, detailXStep, pDetailYDst, detailYStep,
               pDetailXYDst, detailXYStep, dstRoiSize, pSpec, pBuffer, 1);
}

IppStatus ippiWTFwd_32f_C3R(const Ipp32f *pSrc, int srcStep, Ipp32f *pApproxDst, int approxStep, Ipp32f *pDetailXDst,
                            int detailXStep, Ipp32f *pDetailYDst, int detailYStep, Ipp32f *pDetailXYDst,
                            int detailXYStep, IppiSize dstRoiSize, const IppiWTFwdSpec_32f_C3R *pSpec, Ipp8u *pBuffer)
{
    return Fwd(pSrc, srcStep, pApproxDst, approxStep, pDetailXDst, detailXStep, pDetailYDst, detailYStep,
               pDetailXYDst, detailXYStep, dstRoiSize, pSpec, pBuffer, 3);
}

IppStatus ippiWTInv_32f_C1R(const Ipp32f *pApproxSrc, int approxStep, const Ipp32f *pDetailXSrc, int detailXStep,
                            const Ipp32f *pDetailYSrc, int detailYStep, const Ipp32f *pDetailXYSrc, int detailXYStep,
                            IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, const IppiWTInvSpec_32f_C1R *pSpec,
                            Ipp8u *pBuffer)
{
    return Inv(pApproxSrc, approxStep, pDetailXSrc, detailXStep, pDetailYSrc, detailYStep, pDetailXYSrc, detailXYStep,
               srcRoiSize, pDst, dstStep, pSpec, pBuffer, 1);
}

IppStatus ippiWTInv_32f_C3R(const Ipp32f *pApproxSrc, int approxStep, const Ipp32f *pDetailXSrc, int detailXStep,
                            const Ipp32f *pDetailYSrc, int detailYStep, const Ipp32f *pDetailXYSrc, int detailXYStep,
                            IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, const IppiWTInvSpec_32f_C3R *pSpec,
                            Ipp8u *pBuffer)
{
    return Inv(pApproxSrc, approxStep, pDetailXSrc, detailXStep, pDetailYSrc, detailYStep, pDetailXYSrc, detailXYStep,
               srcRoiSize, pDst, dstStep, pSpec, pBuffer, 3);
}

}  // extern "C"
#endif
