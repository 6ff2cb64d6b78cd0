/* Image-processing functions of the numeric backend (two-dimensional). */
#ifndef IPPI_H
#define IPPI_H

#include "ipptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Image memory: each row starts 64-byte aligned; *pStepBytes receives the
 * distance between rows in bytes. */
IPPAPI(Ipp32f *, ippiMalloc_32f_C1, (int widthPixels, int heightPixels, int *pStepBytes))
IPPAPI(Ipp32f *, ippiMalloc_32f_C3, (int widthPixels, int heightPixels, int *pStepBytes))
IPPAPI(void, ippiFree, (void *ptr))

/* Border copies and the wavelet transform. */

/* Copies a srcRoiSize image into a dstRoiSize one at (topBorderHeight,
 * leftBorderWidth) and fills the rest: by replicating the edge pixels, by
 * mirroring about them (the edge pixel itself not repeated), or with a
 * constant. */
IPPAPI(IppStatus, ippiCopyReplicateBorder_32f_C1R, (const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth))
IPPAPI(IppStatus, ippiCopyReplicateBorder_32f_C3R, (const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth))
IPPAPI(IppStatus, ippiCopyMirrorBorder_32f_C1R, (const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth))
IPPAPI(IppStatus, ippiCopyMirrorBorder_32f_C3R, (const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth))
IPPAPI(IppStatus, ippiCopyConstBorder_32f_C1R, (const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth, Ipp32f value))
IPPAPI(IppStatus, ippiCopyConstBorder_32f_C3R, (const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth, const Ipp32f value[3]))

/* One level of the two-dimensional wavelet transform with a user filter
 * bank. The forward takes a source ROI that already carries its borders
 * (left and top lenX - 1 - anchorX, right and bottom anchorX for the larger
 * of the two filters) and writes four half-size subbands; the inverse takes
 * four bordered subbands (left and top (lenX - 1 - anchorX) / 2, right and
 * bottom (anchorX + 1) / 2) and writes an image of twice their size. */
IPPAPI(IppStatus, ippiWTFwdGetSize_32f, (int numChannels, int lenLow, int anchorLow, int lenHigh, int anchorHigh, int *pSpecSize, int *pBufSize))
IPPAPI(IppStatus, ippiWTFwdInit_32f_C1R, (IppiWTFwdSpec_32f_C1R *pSpec, const Ipp32f *pTapsLow, int lenLow, int anchorLow, const Ipp32f *pTapsHigh, int lenHigh, int anchorHigh))
IPPAPI(IppStatus, ippiWTFwdInit_32f_C3R, (IppiWTFwdSpec_32f_C3R *pSpec, const Ipp32f *pTapsLow, int lenLow, int anchorLow, const Ipp32f *pTapsHigh, int lenHigh, int anchorHigh))
IPPAPI(IppStatus, ippiWTFwd_32f_C1R, (const Ipp32f *pSrc, int srcStep, Ipp32f *pApproxDst, int approxStep, Ipp32f *pDetailXDst, int detailXStep, Ipp32f *pDetailYDst, int detailYStep, Ipp32f *pDetailXYDst, int detailXYStep, IppiSize dstRoiSize, const IppiWTFwdSpec_32f_C1R *pSpec, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippiWTFwd_32f_C3R, (const Ipp32f *pSrc, int srcStep, Ipp32f *pApproxDst, int approxStep, Ipp32f *pDetailXDst, int detailXStep, Ipp32f *pDetailYDst, int detailYStep, Ipp32f *pDetailXYDst, int detailXYStep, IppiSize dstRoiSize, const IppiWTFwdSpec_32f_C3R *pSpec, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippiWTInvGetSize_32f, (int numChannels, int lenLow, int anchorLow, int lenHigh, int anchorHigh, int *pSpecSize, int *pBufSize))
IPPAPI(IppStatus, ippiWTInvInit_32f_C1R, (IppiWTInvSpec_32f_C1R *pSpec, const Ipp32f *pTapsLow, int lenLow, int anchorLow, const Ipp32f *pTapsHigh, int lenHigh, int anchorHigh))
IPPAPI(IppStatus, ippiWTInvInit_32f_C3R, (IppiWTInvSpec_32f_C3R *pSpec, const Ipp32f *pTapsLow, int lenLow, int anchorLow, const Ipp32f *pTapsHigh, int lenHigh, int anchorHigh))
IPPAPI(IppStatus, ippiWTInv_32f_C1R, (const Ipp32f *pApproxSrc, int approxStep, const Ipp32f *pDetailXSrc, int detailXStep, const Ipp32f *pDetailYSrc, int detailYStep, const Ipp32f *pDetailXYSrc, int detailXYStep, IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, const IppiWTInvSpec_32f_C1R *pSpec, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippiWTInv_32f_C3R, (const Ipp32f *pApproxSrc, int approxStep, const Ipp32f *pDetailXSrc, int detailXStep, const Ipp32f *pDetailYSrc, int detailYStep, const Ipp32f *pDetailXYSrc, int detailXYStep, IppiSize srcRoiSize, Ipp32f *pDst, int dstStep, const IppiWTInvSpec_32f_C3R *pSpec, Ipp8u *pBuffer))

/* Edges and lines. */

/* Canny edges of an 8-bit image: Sobel (3x3, 5x5) or Scharr (3x3)
 * derivatives over a replicated (or constant) border, L1 or L2 gradient
 * magnitude, non-maximum suppression along the gradient and hysteresis
 * between the two thresholds. Edge pixels are 255, the rest 0. */
IPPAPI(IppStatus, ippiCannyBorderGetSize, (IppiSize roiSize, IppiDifferentialKernel filterType, IppiMaskSize mask, IppDataType dataType, int *pBufferSize))
IPPAPI(IppStatus, ippiCannyBorder_8u_C1R, (const Ipp8u *pSrc, int srcStep, Ipp8u *pDst, int dstStep, IppiSize roiSize, IppiDifferentialKernel filterType, IppiMaskSize mask, IppiBorderType borderType, Ipp8u borderValue, Ipp32f lowThresh, Ipp32f highThresh, IppNormType norm, Ipp8u *pBuffer))

/* Hough lines of the non-zero pixels of an 8-bit image, rho = x cos(theta)
 * + y sin(theta): the accumulator cells of a (rho, theta) region that reach
 * the threshold and are local maxima, strongest first. */
IPPAPI(IppStatus, ippiHoughLineGetSize_8u_C1R, (IppiSize roiSize, IppPointPolar delta, int maxLineCount, int *pBufSize))
IPPAPI(IppStatus, ippiHoughLine_Region_8u32f_C1R, (const Ipp8u *pSrc, int srcStep, IppiSize roiSize, IppPointPolar *pLine, IppPointPolar dstRoi[2], int maxLineCount, int *pLineCount, IppPointPolar delta, int threshold, Ipp8u *pBuffer))

/* Probabilistic Hough: line segments (two end points each) of at least
 * lineLength pixels with gaps of at most lineGap. */
IPPAPI(IppStatus, ippiHoughProbLineGetSize_8u_C1R, (IppiSize roiSize, IppPointPolar delta, int *pSpecSize, int *pBufSize))
IPPAPI(IppStatus, ippiHoughProbLineInit_8u32f_C1R, (IppiSize roiSize, IppPointPolar delta, IppHintAlgorithm hint, IppiHoughProbSpec *pSpec))
IPPAPI(IppStatus, ippiHoughProbLine_8u32f_C1R, (const Ipp8u *pSrc, int srcStep, IppiSize roiSize, int threshold, int lineLength, int lineGap, IppiPoint *pLine, int maxLineCount, int *pLineCount, Ipp8u *pBuffer, const IppiHoughProbSpec *pSpec))

#ifdef __cplusplus
}
#endif

#endif
