/* Declarations of the library's exports. Every operation takes the host's
 * callback table and argument sequence and returns a host value. */
#ifndef ORB_EXPORTS_H
#define ORB_EXPORTS_H

#include "orb/host.h"
#include "ipp.h"

#ifdef __cplusplus
#define ORB_API extern "C" __attribute__((visibility("default")))
#else
#define ORB_API extern __attribute__((visibility("default")))
#endif

/* Call frame, initialisation and error reporting. */
ORB_API IppStatus orbInit(HostCallbacks cb);
ORB_API void orbIppError(HostCallbacks cb, IppStatus status);
ORB_API HostValue orbGetIPPVersion(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbGetEnabledCPUFeatures(HostCallbacks cb, ArgSeq args);

/* Unary math and normalisation. */
ORB_API HostValue orbAbs(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSqr(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSqrt(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbExp(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbLn(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbArctan(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbNormalise(HostCallbacks cb, ArgSeq args);

/* Arithmetic with a constant and between rtables. */
ORB_API HostValue orbAddConstant(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSubConstant(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSubConstantRev(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMulConstant(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbDivConstant(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbDivConstantRev(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbAdd(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSub(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMul(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbDiv(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbAddProd(HostCallbacks cb, ArgSeq args);

/* Bitwise logic and shifts. */
ORB_API HostValue orbAndC(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbOrC(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbXorC(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbAnd(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbOr(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbXor(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbNot(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbLeftShift(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbRightShift(HostCallbacks cb, ArgSeq args);

/* Complex forms, and the storage converters other families use. */
ORB_API HostValue orbConjugate(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbConjugateFlip(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbReal(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbImag(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMagnitude(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbPhase(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbPowerSpectrum(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbRealToComplex(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbComplexToReal(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbCartesianToPolar(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbPolarToCartesian(HostCallbacks cb, ArgSeq args);
ORB_API Ipp32fc *Complex8ToComplex4(Ipp32fc *dst, const Ipp64fc *src, int64_t n);
ORB_API Ipp64fc *Complex4ToComplex8(Ipp64fc *dst, const Ipp32fc *src, int64_t n);

/* Datatype conversion and byte order. */
ORB_API HostValue orbConvert(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbConvertScaled(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSwapBytes(HostCallbacks cb, ArgSeq args);

/* Thresholds. */
ORB_API HostValue orbThresholdLT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbThresholdGT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbThresholdLTAbs(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbThresholdGTAbs(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbThresholdLTVal(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbThresholdGTVal(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbThresholdLTGTVal(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbThresholdLTInv(HostCallbacks cb, ArgSeq args);

/* Copy, fill and resampling. */
ORB_API HostValue orbCopy(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMove(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSet(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbZero(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbUpSample(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbDownSample(HostCallbacks cb, ArgSeq args);

/* Reductions, norms, dot products and counting. */

/* Ordering and search. */

/* Transforms. */

/* Convolution and correlation. */

/* Filters. */

/* Signal generation and windows. */

/* Images: borders, wavelets, edges and lines. */

/* The border copies under their own names, each with the backend's own
 * parameter list, and the one pointer type the wavelet workers call them
 * through: every parameter of all six, the three-value pointer after the two
 * border sizes and the single value last (see chooseBorderFunc). */
typedef IppStatus (*OrbBorderFunc)(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst, int dstStep,
                                   IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth,
                                   const Ipp32f *values, Ipp32f value);
ORB_API IppStatus orbReplicateBorder_C1(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                        int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth);
ORB_API IppStatus orbReplicateBorder_C3(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                        int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth);
ORB_API IppStatus orbMirrorBorder_C1(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                     int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth);
ORB_API IppStatus orbMirrorBorder_C3(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                     int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth);
ORB_API IppStatus orbCopyConstBorder_C1(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                        int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth,
                                        Ipp32f value);
ORB_API IppStatus orbCopyConstBorder_C3(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                        int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth,
                                        const Ipp32f value[3]);
ORB_API OrbBorderFunc chooseBorderFunc(int borderType, int numDims);
ORB_API HostValue orbFwdDWT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbInvDWT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbIppWTFwd_C1(HostCallbacks cb, ArgSeq args, OrbBorderFunc border);
ORB_API HostValue orbIppWTFwd_C3(HostCallbacks cb, ArgSeq args, OrbBorderFunc border);
ORB_API HostValue orbIppWTInv_C1(HostCallbacks cb, ArgSeq args, OrbBorderFunc border);
ORB_API HostValue orbIppWTInv_C3(HostCallbacks cb, ArgSeq args, OrbBorderFunc border);
ORB_API HostValue orbCannyEdgeDetect(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbHoughLineRegion(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbProbabilisticHoughLine(HostCallbacks cb, ArgSeq args);

#endif
