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
 * output columns: for each output row, the vertical filtering of the strip's
 * input rows into one row per vertical filter (contiguous, vectorised), then
 * the horizontal filtering of those rows. The work buffer holds those rows
 * and does not depend on the image size.
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

/* The specification: a header followed by the low then the high taps. */
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

/* acc[x] = sum_k t[k] rows[k][x] for x < n, over nk rows. */
HWY_INLINE void VerticalSum(const float *const *rows, const float *t, int nk, float *acc, size_t n)
{
    const hn::ScalableTag<float> d;
    const size_t N = hn::Lanes(d);
    size_t x = 0;
    for (; x + N <= n; x += N) {
        auto s = hn::Mul(hn::Set(d, t[0]), hn::LoadU(d, rows[0] + x));
        for (int k = 1; k < nk; ++k) s = hn::MulAdd(hn::Set(d, t[k]), hn::LoadU(d, rows[k] + x), s);
        hn::StoreU(s, d, acc + x);
    }
    for (; x < n; ++x) {
        float s = t[0] * rows[0][x];
        for (int k = 1; k < nk; ++k) s += t[k] * rows[k][x];
        acc[x] = s;
    }
}

/* Forward along x: out[i*C + c] = sum_k t[k] in[(2i + a - k)*C + c] for
 * i < n, where in points at input column 0 of the strip. */
HWY_INLINE void FwdRow(const float *in, const float *t, int len, int a, int C, float *out, int n)
{
    for (int i = 0; i < n; ++i)
        for (int c = 0; c < C; ++c) {
            const float *p = in + (2 * i + a) * C + c;
            float s = 0.0f;
            for (int k = 0; k < len; ++k) s += t[k] * p[-k * C];
            out[i * C + c] = s;
        }
}

IppStatus WTFwd(const float *pSrc, int srcStep, float *const dst[4], const int dstStep[4], IppiSize roi,
                const WTSpec *spec, float *buffer)
{
    const int C = spec->channels;
    const int lenL = spec->lenLow, aL = spec->anchorLow, lenH = spec->lenHigh, aH = spec->anchorHigh;
    const float *tL = spec->taps, *tH = spec->taps + lenL;
    const int E = (lenL - 1 - aL) > (lenH - 1 - aH) ? (lenL - 1 - aL) : (lenH - 1 - aH);
    const int R = aL > aH ? aL : aH;
    const int rowFloats = RowFloats(lenL, lenH, C);
    float *rowL = buffer, *rowH = buffer + rowFloats;
    const float *rowsL[64], *rowsH[64];
    const bool small = lenL <= 64 && lenH <= 64;
    const uint8_t *src = reinterpret_cast<const uint8_t *>(pSrc);

    for (int x0 = 0; x0 < roi.width; x0 += kStrip) {
        const int n = roi.width - x0 < kStrip ? roi.width - x0 : kStrip;
        const int c0 = 2 * x0 - E;              // first input column of the strip
        const int w = 2 * n - 1 + E + R;        // input columns of the strip
        const size_t nf = size_t(w) * size_t(C);
        for (int i = 0; i < roi.height; ++i) {
            auto rowAt = [&](int r) {
                return reinterpret_cast<const float *>(src + ptrdiff_t(r) * srcStep) + ptrdiff_t(c0) * C;
            };
            if (small) {
                for (int k = 0; k < lenL; ++k) rowsL[k] = rowAt(2 * i + aL - k);
                for (int k = 0; k < lenH; ++k) rowsH[k] = rowAt(2 * i + aH - k);
                VerticalSum(rowsL, tL, lenL, rowL, nf);
                VerticalSum(rowsH, tH, lenH, rowH, nf);
            } else {
                for (size_t x = 0; x < nf; ++x) {
                    float sl = 0.0f, sh = 0.0f;
                    for (int k = 0; k < lenL; ++k) sl += tL[k] * rowAt(2 * i + aL - k)[x];
                    for (int k = 0; k < lenH; ++k) sh += tH[k] * rowAt(2 * i + aH - k)[x];
                    rowL[x] = sl;
                    rowH[x] = sh;
                }
            }
            // Input column 0 of the strip row sits at offset E (2 x0 - c0).
            const float *l0 = rowL + E * C, *h0 = rowH + E * C;
            auto out = [&](int b) {
                return reinterpret_cast<float *>(reinterpret_cast<uint8_t *>(dst[b]) + ptrdiff_t(i) * dstStep[b]) +
                       ptrdiff_t(x0) * C;
            };
            FwdRow(l0, tL, lenL, aL, C, out(0), n);  // approximation
            FwdRow(h0, tL, lenL, aL, C, out(1), n);  // detail X
            FwdRow(l0, tH, lenH, aH, C, out(2), n);  // detail Y
            FwdRow(h0, tH, lenH, aH, C, out(3), n);  // detail XY
        }
    }
    return ippStsNoErr;
}

/* Inverse along x, added into out: out[j*C + c] += sum over k with
 * j + a - k even of t[k] in[((j + a - k) / 2)*C + c], for j < n, where in
 * points at subband column 0 of the strip. */
HWY_INLINE void InvRowAdd(const float *in, const float *t, int len, int a, int C, float *out, int n)
{
    for (int j = 0; j < n; ++j) {
        const int first = (j + a) & 1;  // the k of the first even up-sampled index
        for (int c = 0; c < C; ++c) {
            float s = 0.0f;
            for (int k = first; k < len; k += 2) s += t[k] * in[((j + a - k) >> 1) * C + c];
            out[j * C + c] += s;
        }
    }
}

/* Vertical synthesis of one output row j from two subbands (one filtered
 * with the low taps, one with the high taps) into acc, over nf floats. */
HWY_INLINE void InvVertical(const uint8_t *lowBand, int lowStep, const uint8_t *highBand, int highStep, int j,
                            int c0, int C, const float *tL, int lenL, int aL, const float *tH, int lenH, int aH,
                            float *acc, size_t nf, const float **rows, float *taps)
{
    int nk = 0;
    for (int k = (j + aL) & 1; k < lenL; k += 2) {
        rows[nk] = reinterpret_cast<const float *>(lowBand + ptrdiff_t((j + aL - k) >> 1) * lowStep) +
                   ptrdiff_t(c0) * C;
        taps[nk++] = tL[k];
    }
    for (int k = (j + aH) & 1; k < lenH; k += 2) {
        rows[nk] = reinterpret_cast<const float *>(highBand + ptrdiff_t((j + aH - k) >> 1) * highStep) +
                   ptrdiff_t(c0) * C;
        taps[nk++] = tH[k];
    }
    VerticalSum(rows, taps, nk, acc, nf);
}

IppStatus WTInv(const float *const src[4], const int srcStep[4], IppiSize roi, float *pDst, int dstStep,
                const WTSpec *spec, float *buffer)
{
    const int C = spec->channels;
    const int lenL = spec->lenLow, aL = spec->anchorLow, lenH = spec->lenHigh, aH = spec->anchorHigh;
    const float *tL = spec->taps, *tH = spec->taps + lenL;
    const int rowFloats = RowFloats(lenL, lenH, C);
    // Row buffers, then the gathered row pointers and taps of one vertical sum.
    float *rowLx = buffer, *rowHx = buffer + rowFloats;
    const float **rows = reinterpret_cast<const float **>(buffer + 2 * rowFloats);
    float *taps = reinterpret_cast<float *>(rows + (lenL + lenH));
    const int leftL = (lenL - 1 - aL) / 2, rightL = (aL + 1) / 2;
    const int leftH = (lenH - 1 - aH) / 2, rightH = (aH + 1) / 2;
    const int E = leftL > leftH ? leftL : leftH, R = rightL > rightH ? rightL : rightH;
    const uint8_t *A = reinterpret_cast<const uint8_t *>(src[0]), *X = reinterpret_cast<const uint8_t *>(src[1]);
    const uint8_t *Y = reinterpret_cast<const uint8_t *>(src[2]), *XY = reinterpret_cast<const uint8_t *>(src[3]);
    const int outH = 2 * roi.height;
    const int half = kStrip / 2;

    for (int s0 = 0; s0 < roi.width; s0 += half) {
        const int m = roi.width - s0 < half ? roi.width - s0 : half;  // subband columns
        const int n = 2 * m;                                        // output columns
        // Subband columns of the strip: the low-x rows need [s0 - leftL,
        // s0 + m + rightL), the high-x rows [s0 - leftH, s0 + m + rightH).
        const int c0 = s0 - E;
        const size_t nf = size_t(m + E + R) * size_t(C);
        for (int j = 0; j < outH; ++j) {
            // Low along x: approximation (low along y) and detail X (high along y).
            InvVertical(A, srcStep[0], X, srcStep[1], j, c0, C, tL, lenL, aL, tH, lenH, aH, rowLx, nf, rows, taps);
            // High along x: detail Y (low along y) and detail XY (high along y).
            InvVertical(Y, srcStep[2], XY, srcStep[3], j, c0, C, tL, lenL, aL, tH, lenH, aH, rowHx, nf, rows, taps);
            float *out = reinterpret_cast<float *>(reinterpret_cast<uint8_t *>(pDst) + ptrdiff_t(j) * dstStep) +
                         ptrdiff_t(2 * s0) * C;
            for (int x = 0; x < n * C; ++x) out[x] = 0.0f;
            // The strip row starts at subband column c0 = s0 - E: column s0 sits at E.
            InvRowAdd(rowLx + E * C, tL, lenL, aL, C, out, n);
            InvRowAdd(rowHx + E * C, tH, lenH, aH, C, out, n);
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
    // Two strip rows; the inverse also gathers row pointers and taps.
    const size_t rows = size_t(2) * size_t(RowFloats(lenLow, lenHigh, numChannels)) * sizeof(float);
    const size_t gather = inverse ? size_t(lenLow + lenHigh) * (sizeof(float *) + sizeof(float)) : 0;
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
