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
ORB_API HostValue orbSum(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMax(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMin(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMaxAbs(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMinAbs(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbIndexMax(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbIndexMin(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbIndexMaxAbs(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbIndexMinAbs(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMinMax(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbIndexMinMax(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMean(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbStdDev(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMeanStdDev(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbInfNorm(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbL1Norm(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbL2Norm(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbInfNormDiff(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbL1NormDiff(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbL2NormDiff(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbDotProduct(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMaxEvery(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMinEvery(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbZeroCrossing(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbCountInRange(HostCallbacks cb, ArgSeq args);

/* Ordering and search. */
ORB_API HostValue orbMaxOrder(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbReverse(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSortAscending(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSortDescending(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFindNearestOne(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFindNearest(HostCallbacks cb, ArgSeq args);

/* Transforms. */

ORB_API HostValue orbFwdDFT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbInvDFT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFwdFFT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbInvFFT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFwdDFTSplit(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbInvDFTSplit(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFwdFFTSplit(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbInvFFTSplit(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFwdDCT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbInvDCT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbHilbert(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbGoertz(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFwdHaarWT(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbInvHaarWT(HostCallbacks cb, ArgSeq args);

/* Convolution and correlation. */

ORB_API HostValue orbConv(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbCorr(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbConvolution(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbBiasedConvolution(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbAutoCorrelation(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbBiasedAutoCorrelation(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbUnbiasedAutoCorrelation(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbCrossCorrelation(HostCallbacks cb, ArgSeq args);

/* Filters. */

ORB_API HostValue orbFIR(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFIRGenLowPass(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFIRGenHighPass(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFIRGenBandPass(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFIRGenBandStop(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFIRLMS(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbIIR(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbIIRGenLowPass(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbIIRGenHighPass(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbFilter(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbMedianFilter(HostCallbacks cb, ArgSeq args);

/* Signal generation and windows. */

ORB_API HostValue orbGenerateTone(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbGenerateTriangle(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbGenerateUniform(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbGenerateGaussian(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbGenerateJaehne(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbGenerateSlope(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbBartlett(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbHamming(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbHann(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbBlackmanStd(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbBlackmanOpt(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbBlackman(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbKaiser(HostCallbacks cb, ArgSeq args);

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
