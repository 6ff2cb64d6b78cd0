/* Border copies of single-precision images, one and three channels:
 * ippiCopyReplicateBorder, ippiCopyMirrorBorder, ippiCopyConstBorder.
 *
 * The source ROI lands in the destination at (topBorderHeight,
 * leftBorderWidth); every other destination pixel (y, x) takes the source
 * pixel at (row(y - top), col(x - left)) where row and col map an index
 * outside [0, n) back into it:
 *   replicate  clamp to the nearest edge;
 *   mirror     reflect about the edge pixel, which is not repeated
 *              (-1 -> 1, n -> n - 2), periodically for borders wider than
 *              the image (a one-pixel-wide image replicates);
 *   const      the value (per channel for three channels).
 * The destination may be larger than source plus left/top border: the right
 * and bottom borders are whatever is left over.
 *
 * Checks, in order: null pointers (ippStsNullPtrErr); a size field below 1,
 * a negative border or a destination smaller than source plus border
 * (ippStsSizeErr); a row step shorter than a row (ippStsStepErr).
 */
#include <string.h>

#include <vector>

#include "ippi.h"

namespace {

enum class Kind { Replicate, Mirror, Const };

/* Maps an index outside [0, n) back into it. */
int MapIndex(long i, int n, Kind kind)
{
    if (i >= 0 && i < n) return int(i);
    if (kind == Kind::Replicate || n == 1) return i < 0 ? 0 : n - 1;
    const long period = 2L * (n - 1);
    long r = i % period;
    if (r < 0) r += period;
    return int(r < n ? r : period - r);
}

IppStatus CheckBorderArgs(const void *src, int srcStep, IppiSize srcSize, const void *dst, int dstStep,
                          IppiSize dstSize, int top, int left, int channels)
{
    if (src == nullptr || dst == nullptr) return ippStsNullPtrErr;
    if (srcSize.width < 1 || srcSize.height < 1 || dstSize.width < 1 || dstSize.height < 1 || top < 0 ||
        left < 0 || long(dstSize.width) < long(srcSize.width) + left ||
        long(dstSize.height) < long(srcSize.height) + top)
        return ippStsSizeErr;
    const long pixel = long(channels) * long(sizeof(Ipp32f));
    if (long(srcStep) < srcSize.width * pixel || long(dstStep) < dstSize.width * pixel) return ippStsStepErr;
    return ippStsNoErr;
}

/* One destination row from source row sr: the left border, the copy, the
 * right border. colMap holds the source column of every border column. */
void FillRow(const Ipp32f *sr, Ipp32f *dr, IppiSize srcSize, IppiSize dstSize, int left, int channels,
             const std::vector<int> &colMap, const Ipp32f *value, bool constant)
{
    const int c = channels;
    for (int x = 0; x < left; ++x)
        for (int k = 0; k < c; ++k) dr[x * c + k] = constant ? value[k] : sr[colMap[size_t(x)] * c + k];
    memcpy(dr + size_t(left) * c, sr, size_t(srcSize.width) * c * sizeof(Ipp32f));
    for (int x = left + srcSize.width; x < dstSize.width; ++x)
        for (int k = 0; k < c; ++k) dr[x * c + k] = constant ? value[k] : sr[colMap[size_t(x)] * c + k];
}

IppStatus CopyBorder(const Ipp32f *pSrc, int srcStep, IppiSize srcSize, Ipp32f *pDst, int dstStep, IppiSize dstSize,
                     int top, int left, int channels, Kind kind, const Ipp32f *value)
{
    if (kind == Kind::Const && value == nullptr) return ippStsNullPtrErr;
    IppStatus st = CheckBorderArgs(pSrc, srcStep, srcSize, pDst, dstStep, dstSize, top, left, channels);
    if (st != ippStsNoErr) return st;
    const bool constant = kind == Kind::Const;
    std::vector<int> colMap(size_t(dstSize.width), 0);
    for (int x = 0; x < dstSize.width; ++x) colMap[size_t(x)] = MapIndex(long(x) - left, srcSize.width, kind);
    const Ipp8u *src = reinterpret_cast<const Ipp8u *>(pSrc);
    Ipp8u *dst = reinterpret_cast<Ipp8u *>(pDst);
    const int c = channels;
    for (int y = 0; y < dstSize.height; ++y) {
        Ipp32f *dr = reinterpret_cast<Ipp32f *>(dst + size_t(y) * size_t(dstStep));
        const long sy = long(y) - top;
        if (constant && (sy < 0 || sy >= srcSize.height)) {
            for (int x = 0; x < dstSize.width; ++x)
                for (int k = 0; k < c; ++k) dr[x * c + k] = value[k];
            continue;
        }
        const int row = MapIndex(sy, srcSize.height, kind);
        const Ipp32f *sr = reinterpret_cast<const Ipp32f *>(src + size_t(row) * size_t(srcStep));
        FillRow(sr, dr, srcSize, dstSize, left, c, colMap, value, constant);
    }
    return ippStsNoErr;
}

}  // namespace

extern "C" {

IppStatus ippiCopyReplicateBorder_32f_C1R(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                          int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth)
{
    return CopyBorder(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth, 1,
                      Kind::Replicate, nullptr);
}

IppStatus ippiCopyReplicateBorder_32f_C3R(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                          int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth)
{
    return CopyBorder(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth, 3,
                      Kind::Replicate, nullptr);
}

IppStatus ippiCopyMirrorBorder_32f_C1R(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                       int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth)
{
    return CopyBorder(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth, 1,
                      Kind::Mirror, nullptr);
}

IppStatus ippiCopyMirrorBorder_32f_C3R(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                       int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth)
{
    return CopyBorder(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth, 3,
                      Kind::Mirror, nullptr);
}

IppStatus ippiCopyConstBorder_32f_C1R(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                      int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth,
                                      Ipp32f value)
{
    return CopyBorder(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth, 1,
                      Kind::Const, &value);
}

IppStatus ippiCopyConstBorder_32f_C3R(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                      int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth,
                                      const Ipp32f value[3])
{
    return CopyBorder(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth, 3,
                      Kind::Const, value);
}

}  // extern "C"
