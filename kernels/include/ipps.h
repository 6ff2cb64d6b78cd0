/* Signal-processing functions of the numeric backend (one-dimensional).
 *
 * Names are ipps<Operation>[C][Rev]_<types>[_Sfs]:
 *   8u 16u 32u 64u   unsigned integers of that many bits (24u: three-byte
 *                    items)
 *   8s 16s 32s 64s   signed integers
 *   32f 64f          float, double
 *   32fc 64fc        complex float, complex double: interleaved re, im
 *   16s32f           two types: the source's, then the destination's
 *   C                one operand is a constant (val), not a vector
 *   Rev              the operands reversed: SubCRev is val - pSrc
 *   Sfs              the result is scaled by 2^-scaleFactor, then rounded
 *                    and saturated
 */
#ifndef IPPS_H
#define IPPS_H

#include "ipptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

IPPAPI(const IppLibraryVersion *, ippsGetLibVersion, (void))

/* Memory: 64-byte aligned; null for a length below 1 or when out of memory. */
IPPAPI(Ipp8u *, ippsMalloc_8u, (int len))
IPPAPI(Ipp32f *, ippsMalloc_32f, (int len))
IPPAPI(Ipp32fc *, ippsMalloc_32fc, (int len))
IPPAPI(Ipp64f *, ippsMalloc_64f, (int len))
IPPAPI(void, ippsFree, (void *ptr))

/* Unary math and normalisation. */
IPPAPI(IppStatus, ippsAbs_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsAbs_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsSqr_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsSqr_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsSqr_64fc, (const Ipp64fc *pSrc, Ipp64fc *pDst, int len))
IPPAPI(IppStatus, ippsSqrt_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsSqrt_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsSqrt_64fc, (const Ipp64fc *pSrc, Ipp64fc *pDst, int len))
IPPAPI(IppStatus, ippsExp_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsExp_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsLn_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsLn_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsArctan_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsArctan_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsNormalize_64f,
       (const Ipp64f *pSrc, Ipp64f *pDst, int len, Ipp64f vSub, Ipp64f vDiv))

/* Arithmetic with a constant: pDst = pSrc op val (SubCRev and DivCRev:
 * val op pSrc). */
#define ORB_DECLARE_C(name, T, V) IPPAPI(IppStatus, name, (const T *pSrc, V val, T *pDst, int len))
ORB_DECLARE_C(ippsAddC_32f, Ipp32f, Ipp32f)
ORB_DECLARE_C(ippsAddC_64f, Ipp64f, Ipp64f)
ORB_DECLARE_C(ippsAddC_64fc, Ipp64fc, Ipp64fc)
ORB_DECLARE_C(ippsSubC_32f, Ipp32f, Ipp32f)
ORB_DECLARE_C(ippsSubC_64f, Ipp64f, Ipp64f)
ORB_DECLARE_C(ippsSubC_64fc, Ipp64fc, Ipp64fc)
ORB_DECLARE_C(ippsSubCRev_32f, Ipp32f, Ipp32f)
ORB_DECLARE_C(ippsSubCRev_64f, Ipp64f, Ipp64f)
ORB_DECLARE_C(ippsSubCRev_64fc, Ipp64fc, Ipp64fc)
ORB_DECLARE_C(ippsMulC_32f, Ipp32f, Ipp32f)
ORB_DECLARE_C(ippsMulC_64f, Ipp64f, Ipp64f)
ORB_DECLARE_C(ippsMulC_64fc, Ipp64fc, Ipp64fc)
ORB_DECLARE_C(ippsDivC_32f, Ipp32f, Ipp32f)
ORB_DECLARE_C(ippsDivC_64f, Ipp64f, Ipp64f)
ORB_DECLARE_C(ippsDivC_64fc, Ipp64fc, Ipp64fc)
ORB_DECLARE_C(ippsDivCRev_32f, Ipp32f, Ipp32f)

/* Arithmetic between two vectors. Sub and Div take pSrc1 as the right-hand
 * operand: pDst = pSrc2 - pSrc1, pDst = pSrc2 / pSrc1. */
#define ORB_DECLARE_2(name, T) IPPAPI(IppStatus, name, (const T *pSrc1, const T *pSrc2, T *pDst, int len))
ORB_DECLARE_2(ippsAdd_32f, Ipp32f)
ORB_DECLARE_2(ippsAdd_64f, Ipp64f)
ORB_DECLARE_2(ippsAdd_64fc, Ipp64fc)
ORB_DECLARE_2(ippsSub_32f, Ipp32f)
ORB_DECLARE_2(ippsSub_64f, Ipp64f)
ORB_DECLARE_2(ippsSub_64fc, Ipp64fc)
ORB_DECLARE_2(ippsMul_32f, Ipp32f)
ORB_DECLARE_2(ippsMul_64f, Ipp64f)
ORB_DECLARE_2(ippsMul_64fc, Ipp64fc)
ORB_DECLARE_2(ippsDiv_32f, Ipp32f)
ORB_DECLARE_2(ippsDiv_64f, Ipp64f)
ORB_DECLARE_2(ippsDiv_64fc, Ipp64fc)
/* pSrcDst += pSrc1 * pSrc2 */
IPPAPI(IppStatus, ippsAddProduct_32f, (const Ipp32f *pSrc1, const Ipp32f *pSrc2, Ipp32f *pSrcDst, int len))
IPPAPI(IppStatus, ippsAddProduct_64f, (const Ipp64f *pSrc1, const Ipp64f *pSrc2, Ipp64f *pSrcDst, int len))
IPPAPI(IppStatus, ippsAddProduct_64fc, (const Ipp64fc *pSrc1, const Ipp64fc *pSrc2, Ipp64fc *pSrcDst, int len))

/* Bitwise logic and shifts. */
ORB_DECLARE_C(ippsAndC_8u, Ipp8u, Ipp8u)
ORB_DECLARE_C(ippsAndC_16u, Ipp16u, Ipp16u)
ORB_DECLARE_C(ippsAndC_32u, Ipp32u, Ipp32u)
ORB_DECLARE_C(ippsOrC_8u, Ipp8u, Ipp8u)
ORB_DECLARE_C(ippsOrC_16u, Ipp16u, Ipp16u)
ORB_DECLARE_C(ippsOrC_32u, Ipp32u, Ipp32u)
ORB_DECLARE_C(ippsXorC_8u, Ipp8u, Ipp8u)
ORB_DECLARE_C(ippsXorC_16u, Ipp16u, Ipp16u)
ORB_DECLARE_C(ippsXorC_32u, Ipp32u, Ipp32u)
ORB_DECLARE_2(ippsAnd_8u, Ipp8u)
ORB_DECLARE_2(ippsAnd_16u, Ipp16u)
ORB_DECLARE_2(ippsAnd_32u, Ipp32u)
ORB_DECLARE_2(ippsOr_8u, Ipp8u)
ORB_DECLARE_2(ippsOr_16u, Ipp16u)
ORB_DECLARE_2(ippsOr_32u, Ipp32u)
ORB_DECLARE_2(ippsXor_8u, Ipp8u)
ORB_DECLARE_2(ippsXor_16u, Ipp16u)
ORB_DECLARE_2(ippsXor_32u, Ipp32u)
IPPAPI(IppStatus, ippsNot_8u, (const Ipp8u *pSrc, Ipp8u *pDst, int len))
IPPAPI(IppStatus, ippsNot_16u, (const Ipp16u *pSrc, Ipp16u *pDst, int len))
IPPAPI(IppStatus, ippsNot_32u, (const Ipp32u *pSrc, Ipp32u *pDst, int len))
ORB_DECLARE_C(ippsLShiftC_8u, Ipp8u, int)
ORB_DECLARE_C(ippsLShiftC_16s, Ipp16s, int)
ORB_DECLARE_C(ippsLShiftC_32s, Ipp32s, int)
ORB_DECLARE_C(ippsRShiftC_8u, Ipp8u, int)
ORB_DECLARE_C(ippsRShiftC_16s, Ipp16s, int)
ORB_DECLARE_C(ippsRShiftC_32s, Ipp32s, int)
#undef ORB_DECLARE_C
#undef ORB_DECLARE_2

/* Complex forms. */
IPPAPI(IppStatus, ippsConj_64fc, (const Ipp64fc *pSrc, Ipp64fc *pDst, int len))
IPPAPI(IppStatus, ippsConjFlip_64fc, (const Ipp64fc *pSrc, Ipp64fc *pDst, int len))
IPPAPI(IppStatus, ippsReal_64fc, (const Ipp64fc *pSrc, Ipp64f *pDstRe, int len))
IPPAPI(IppStatus, ippsImag_64fc, (const Ipp64fc *pSrc, Ipp64f *pDstIm, int len))
IPPAPI(IppStatus, ippsMagnitude_64fc, (const Ipp64fc *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsMagnitude_32f, (const Ipp32f *pSrcRe, const Ipp32f *pSrcIm, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsMagnitude_64f, (const Ipp64f *pSrcRe, const Ipp64f *pSrcIm, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsPhase_64fc, (const Ipp64fc *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsPhase_32f, (const Ipp32f *pSrcRe, const Ipp32f *pSrcIm, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsPhase_64f, (const Ipp64f *pSrcRe, const Ipp64f *pSrcIm, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsPowerSpectr_64fc, (const Ipp64fc *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsPowerSpectr_32f, (const Ipp32f *pSrcRe, const Ipp32f *pSrcIm, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsPowerSpectr_64f, (const Ipp64f *pSrcRe, const Ipp64f *pSrcIm, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsRealToCplx_64f, (const Ipp64f *pSrcRe, const Ipp64f *pSrcIm, Ipp64fc *pDst, int len))
IPPAPI(IppStatus, ippsCplxToReal_64fc, (const Ipp64fc *pSrc, Ipp64f *pDstRe, Ipp64f *pDstIm, int len))
IPPAPI(IppStatus, ippsCartToPolar_64fc, (const Ipp64fc *pSrc, Ipp64f *pDstMagn, Ipp64f *pDstPhase, int len))
IPPAPI(IppStatus, ippsCartToPolar_64f,
       (const Ipp64f *pSrcRe, const Ipp64f *pSrcIm, Ipp64f *pDstMagn, Ipp64f *pDstPhase, int len))
IPPAPI(IppStatus, ippsPolarToCart_64fc, (const Ipp64f *pSrcMagn, const Ipp64f *pSrcPhase, Ipp64fc *pDst, int len))
IPPAPI(IppStatus, ippsPolarToCart_64f,
       (const Ipp64f *pSrcMagn, const Ipp64f *pSrcPhase, Ipp64f *pDstRe, Ipp64f *pDstIm, int len))

/* Conversion between datatypes. Plain forms saturate integer results; the
 * scaled forms multiply by 2^-scaleFactor first, then round and saturate. */
#define ORB_DECLARE_CVT(name, S, D) IPPAPI(IppStatus, name, (const S *pSrc, D *pDst, int len))
ORB_DECLARE_CVT(ippsConvert_8s32f, Ipp8s, Ipp32f)
ORB_DECLARE_CVT(ippsConvert_16s32f, Ipp16s, Ipp32f)
ORB_DECLARE_CVT(ippsConvert_32s32f, Ipp32s, Ipp32f)
ORB_DECLARE_CVT(ippsConvert_64f32f, Ipp64f, Ipp32f)
ORB_DECLARE_CVT(ippsConvert_32f64f, Ipp32f, Ipp64f)
ORB_DECLARE_CVT(ippsConvert_32s64f, Ipp32s, Ipp64f)
IPPAPI(IppStatus, ippsConvert_64s64f, (const Ipp64s *pSrc, Ipp64f *pDst, Ipp32u len))
ORB_DECLARE_CVT(ippsConvert_32s16s, Ipp32s, Ipp16s)
#define ORB_DECLARE_SFS(name, S, D) IPPAPI(IppStatus, name, (const S *pSrc, D *pDst, int len, int scaleFactor))
ORB_DECLARE_SFS(ippsConvert_16s32f_Sfs, Ipp16s, Ipp32f)
ORB_DECLARE_SFS(ippsConvert_32s32f_Sfs, Ipp32s, Ipp32f)
ORB_DECLARE_SFS(ippsConvert_16s64f_Sfs, Ipp16s, Ipp64f)
ORB_DECLARE_SFS(ippsConvert_32s64f_Sfs, Ipp32s, Ipp64f)
ORB_DECLARE_SFS(ippsConvert_32s16s_Sfs, Ipp32s, Ipp16s)
#define ORB_DECLARE_RND(name, S, D, L) \
    IPPAPI(IppStatus, name, (const S *pSrc, D *pDst, L len, IppRoundMode rndMode, int scaleFactor))
ORB_DECLARE_RND(ippsConvert_64f64s_Sfs, Ipp64f, Ipp64s, Ipp32u)
ORB_DECLARE_RND(ippsConvert_32f32s_Sfs, Ipp32f, Ipp32s, int)
ORB_DECLARE_RND(ippsConvert_64f32s_Sfs, Ipp64f, Ipp32s, int)
ORB_DECLARE_RND(ippsConvert_64s32s_Sfs, Ipp64s, Ipp32s, int)
ORB_DECLARE_RND(ippsConvert_32f16s_Sfs, Ipp32f, Ipp16s, int)
ORB_DECLARE_RND(ippsConvert_64f16s_Sfs, Ipp64f, Ipp16s, int)
ORB_DECLARE_RND(ippsConvert_32f8s_Sfs, Ipp32f, Ipp8s, int)
ORB_DECLARE_RND(ippsConvert_16s8s_Sfs, Ipp16s, Ipp8s, Ipp32u)
/* Byte order reversal of each element; the 24-bit form works on three-byte
 * items, len of them. */
ORB_DECLARE_CVT(ippsSwapBytes_16u, Ipp16u, Ipp16u)
ORB_DECLARE_CVT(ippsSwapBytes_24u, Ipp8u, Ipp8u)
ORB_DECLARE_CVT(ippsSwapBytes_32u, Ipp32u, Ipp32u)
ORB_DECLARE_CVT(ippsSwapBytes_64u, Ipp64u, Ipp64u)

/* Copies (no overlap) and moves (overlap allowed). */
ORB_DECLARE_CVT(ippsCopy_16s, Ipp16s, Ipp16s)
ORB_DECLARE_CVT(ippsCopy_32s, Ipp32s, Ipp32s)
ORB_DECLARE_CVT(ippsCopy_64s, Ipp64s, Ipp64s)
ORB_DECLARE_CVT(ippsCopy_32f, Ipp32f, Ipp32f)
ORB_DECLARE_CVT(ippsCopy_64f, Ipp64f, Ipp64f)
ORB_DECLARE_CVT(ippsCopy_64fc, Ipp64fc, Ipp64fc)
ORB_DECLARE_CVT(ippsMove_16s, Ipp16s, Ipp16s)
ORB_DECLARE_CVT(ippsMove_32s, Ipp32s, Ipp32s)
ORB_DECLARE_CVT(ippsMove_64s, Ipp64s, Ipp64s)
ORB_DECLARE_CVT(ippsMove_32f, Ipp32f, Ipp32f)
ORB_DECLARE_CVT(ippsMove_64f, Ipp64f, Ipp64f)
ORB_DECLARE_CVT(ippsMove_64fc, Ipp64fc, Ipp64fc)
#undef ORB_DECLARE_CVT
#undef ORB_DECLARE_SFS
#undef ORB_DECLARE_RND

/* Fill and clear. */
IPPAPI(IppStatus, ippsSet_8u, (Ipp8u val, Ipp8u *pDst, int len))
IPPAPI(IppStatus, ippsSet_16s, (Ipp16s val, Ipp16s *pDst, int len))
IPPAPI(IppStatus, ippsSet_32s, (Ipp32s val, Ipp32s *pDst, int len))
IPPAPI(IppStatus, ippsSet_64s, (Ipp64s val, Ipp64s *pDst, int len))
IPPAPI(IppStatus, ippsSet_32f, (Ipp32f val, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsSet_64f, (Ipp64f val, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsSet_64fc, (Ipp64fc val, Ipp64fc *pDst, int len))
IPPAPI(IppStatus, ippsZero_8u, (Ipp8u *pDst, int len))
IPPAPI(IppStatus, ippsZero_16s, (Ipp16s *pDst, int len))
IPPAPI(IppStatus, ippsZero_32s, (Ipp32s *pDst, int len))
IPPAPI(IppStatus, ippsZero_64s, (Ipp64s *pDst, int len))
IPPAPI(IppStatus, ippsZero_32f, (Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsZero_64f, (Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsZero_64fc, (Ipp64fc *pDst, int len))

/* Resampling by an integer factor with a phase; the produced length and the
 * phase for a following call come back through the pointers. */
#define ORB_DECLARE_SAMPLE(name, T) \
    IPPAPI(IppStatus, name, (const T *pSrc, int srcLen, T *pDst, int *pDstLen, int factor, int *pPhase))
ORB_DECLARE_SAMPLE(ippsSampleUp_16s, Ipp16s)
ORB_DECLARE_SAMPLE(ippsSampleUp_32f, Ipp32f)
ORB_DECLARE_SAMPLE(ippsSampleUp_64f, Ipp64f)
ORB_DECLARE_SAMPLE(ippsSampleUp_64fc, Ipp64fc)
ORB_DECLARE_SAMPLE(ippsSampleDown_16s, Ipp16s)
ORB_DECLARE_SAMPLE(ippsSampleDown_32f, Ipp32f)
ORB_DECLARE_SAMPLE(ippsSampleDown_64f, Ipp64f)
ORB_DECLARE_SAMPLE(ippsSampleDown_64fc, Ipp64fc)
#undef ORB_DECLARE_SAMPLE

/* Thresholds. Complex forms compare the magnitude with a real level. */
#define ORB_DECLARE_T1(name, T, L) IPPAPI(IppStatus, name, (const T *pSrc, T *pDst, int len, L level))
ORB_DECLARE_T1(ippsThreshold_LT_16s, Ipp16s, Ipp16s)
ORB_DECLARE_T1(ippsThreshold_LT_32s, Ipp32s, Ipp32s)
ORB_DECLARE_T1(ippsThreshold_LT_32f, Ipp32f, Ipp32f)
ORB_DECLARE_T1(ippsThreshold_LT_64f, Ipp64f, Ipp64f)
ORB_DECLARE_T1(ippsThreshold_LT_64fc, Ipp64fc, Ipp64f)
ORB_DECLARE_T1(ippsThreshold_GT_16s, Ipp16s, Ipp16s)
ORB_DECLARE_T1(ippsThreshold_GT_32s, Ipp32s, Ipp32s)
ORB_DECLARE_T1(ippsThreshold_GT_32f, Ipp32f, Ipp32f)
ORB_DECLARE_T1(ippsThreshold_GT_64f, Ipp64f, Ipp64f)
ORB_DECLARE_T1(ippsThreshold_GT_64fc, Ipp64fc, Ipp64f)
ORB_DECLARE_T1(ippsThreshold_LTAbs_16s, Ipp16s, Ipp16s)
ORB_DECLARE_T1(ippsThreshold_LTAbs_32s, Ipp32s, Ipp32s)
ORB_DECLARE_T1(ippsThreshold_LTAbs_32f, Ipp32f, Ipp32f)
ORB_DECLARE_T1(ippsThreshold_LTAbs_64f, Ipp64f, Ipp64f)
ORB_DECLARE_T1(ippsThreshold_GTAbs_16s, Ipp16s, Ipp16s)
ORB_DECLARE_T1(ippsThreshold_GTAbs_32s, Ipp32s, Ipp32s)
ORB_DECLARE_T1(ippsThreshold_GTAbs_32f, Ipp32f, Ipp32f)
ORB_DECLARE_T1(ippsThreshold_GTAbs_64f, Ipp64f, Ipp64f)
ORB_DECLARE_T1(ippsThreshold_LTInv_32f, Ipp32f, Ipp32f)
ORB_DECLARE_T1(ippsThreshold_LTInv_64f, Ipp64f, Ipp64f)
ORB_DECLARE_T1(ippsThreshold_LTInv_64fc, Ipp64fc, Ipp64f)
#undef ORB_DECLARE_T1
#define ORB_DECLARE_TV(name, T, L, V) IPPAPI(IppStatus, name, (const T *pSrc, T *pDst, int len, L level, V value))
ORB_DECLARE_TV(ippsThreshold_LTVal_16s, Ipp16s, Ipp16s, Ipp16s)
ORB_DECLARE_TV(ippsThreshold_LTVal_32f, Ipp32f, Ipp32f, Ipp32f)
ORB_DECLARE_TV(ippsThreshold_LTVal_64f, Ipp64f, Ipp64f, Ipp64f)
ORB_DECLARE_TV(ippsThreshold_LTVal_64fc, Ipp64fc, Ipp64f, Ipp64fc)
ORB_DECLARE_TV(ippsThreshold_GTVal_16s, Ipp16s, Ipp16s, Ipp16s)
ORB_DECLARE_TV(ippsThreshold_GTVal_32f, Ipp32f, Ipp32f, Ipp32f)
ORB_DECLARE_TV(ippsThreshold_GTVal_64f, Ipp64f, Ipp64f, Ipp64f)
ORB_DECLARE_TV(ippsThreshold_GTVal_64fc, Ipp64fc, Ipp64f, Ipp64fc)
#undef ORB_DECLARE_TV
#define ORB_DECLARE_T2(name, T) \
    IPPAPI(IppStatus, name, (const T *pSrc, T *pDst, int len, T levelLT, T valueLT, T levelGT, T valueGT))
ORB_DECLARE_T2(ippsThreshold_LTValGTVal_16s, Ipp16s)
ORB_DECLARE_T2(ippsThreshold_LTValGTVal_32s, Ipp32s)
ORB_DECLARE_T2(ippsThreshold_LTValGTVal_32f, Ipp32f)
ORB_DECLARE_T2(ippsThreshold_LTValGTVal_64f, Ipp64f)
#undef ORB_DECLARE_T2

/* Reductions, norms, dot products and counting. */
/* Extremes: the first of equal extremes gives the index (0-based); NaN
 * elements are passed over, and only an all-NaN vector gives NaN (index 0).
 * The absolute extremes of integers saturate (|-32768| is 32767). */
IPPAPI(IppStatus, ippsMax_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMax))
IPPAPI(IppStatus, ippsMax_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMax))
IPPAPI(IppStatus, ippsMax_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMax))
IPPAPI(IppStatus, ippsMax_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMax))
IPPAPI(IppStatus, ippsMin_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMin))
IPPAPI(IppStatus, ippsMin_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMin))
IPPAPI(IppStatus, ippsMin_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMin))
IPPAPI(IppStatus, ippsMin_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMin))
IPPAPI(IppStatus, ippsMaxAbs_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMaxAbs))
IPPAPI(IppStatus, ippsMaxAbs_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMaxAbs))
IPPAPI(IppStatus, ippsMinAbs_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMinAbs))
IPPAPI(IppStatus, ippsMinAbs_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMinAbs))
/* pIndx may be null: only the value is then given. */
IPPAPI(IppStatus, ippsMaxIndx_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMax, int *pIndx))
IPPAPI(IppStatus, ippsMaxIndx_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMax, int *pIndx))
IPPAPI(IppStatus, ippsMaxIndx_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMax, int *pIndx))
IPPAPI(IppStatus, ippsMaxIndx_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMax, int *pIndx))
IPPAPI(IppStatus, ippsMinIndx_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMin, int *pIndx))
IPPAPI(IppStatus, ippsMinIndx_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMin, int *pIndx))
IPPAPI(IppStatus, ippsMinIndx_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMin, int *pIndx))
IPPAPI(IppStatus, ippsMinIndx_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMin, int *pIndx))
IPPAPI(IppStatus, ippsMaxAbsIndx_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMaxAbs, int *pIndx))
IPPAPI(IppStatus, ippsMaxAbsIndx_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMaxAbs, int *pIndx))
IPPAPI(IppStatus, ippsMinAbsIndx_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMinAbs, int *pIndx))
IPPAPI(IppStatus, ippsMinAbsIndx_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMinAbs, int *pIndx))
IPPAPI(IppStatus, ippsMinMax_8u, (const Ipp8u *pSrc, int len, Ipp8u *pMin, Ipp8u *pMax))
IPPAPI(IppStatus, ippsMinMax_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMin, Ipp16s *pMax))
IPPAPI(IppStatus, ippsMinMax_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMin, Ipp32s *pMax))
IPPAPI(IppStatus, ippsMinMax_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMin, Ipp32f *pMax))
IPPAPI(IppStatus, ippsMinMax_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMin, Ipp64f *pMax))
IPPAPI(IppStatus, ippsMinMaxIndx_16s, (const Ipp16s *pSrc, int len, Ipp16s *pMin, int *pMinIndx, Ipp16s *pMax, int *pMaxIndx))
IPPAPI(IppStatus, ippsMinMaxIndx_32s, (const Ipp32s *pSrc, int len, Ipp32s *pMin, int *pMinIndx, Ipp32s *pMax, int *pMaxIndx))
IPPAPI(IppStatus, ippsMinMaxIndx_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMin, int *pMinIndx, Ipp32f *pMax, int *pMaxIndx))
IPPAPI(IppStatus, ippsMinMaxIndx_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMin, int *pMinIndx, Ipp64f *pMax, int *pMaxIndx))
/* Sums and moments. The single-precision forms accumulate in double with
 * ippAlgHintAccurate and in single precision otherwise. Standard deviations
 * divide by len - 1 and need len >= 2. Scaled integer sums are exact before
 * the scaling (round half to even) and saturation to 32 bits. */
IPPAPI(IppStatus, ippsSum_16s32s_Sfs, (const Ipp16s *pSrc, int len, Ipp32s *pSum, int scaleFactor))
IPPAPI(IppStatus, ippsSum_32s_Sfs, (const Ipp32s *pSrc, int len, Ipp32s *pSum, int scaleFactor))
IPPAPI(IppStatus, ippsSum_32f, (const Ipp32f *pSrc, int len, Ipp32f *pSum, IppHintAlgorithm hint))
IPPAPI(IppStatus, ippsSum_64f, (const Ipp64f *pSrc, int len, Ipp64f *pSum))
IPPAPI(IppStatus, ippsSum_64fc, (const Ipp64fc *pSrc, int len, Ipp64fc *pSum))
IPPAPI(IppStatus, ippsMean_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMean, IppHintAlgorithm hint))
IPPAPI(IppStatus, ippsMean_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMean))
IPPAPI(IppStatus, ippsMean_64fc, (const Ipp64fc *pSrc, int len, Ipp64fc *pMean))
IPPAPI(IppStatus, ippsStdDev_32f, (const Ipp32f *pSrc, int len, Ipp32f *pStdDev, IppHintAlgorithm hint))
IPPAPI(IppStatus, ippsStdDev_64f, (const Ipp64f *pSrc, int len, Ipp64f *pStdDev))
IPPAPI(IppStatus, ippsMeanStdDev_32f, (const Ipp32f *pSrc, int len, Ipp32f *pMean, Ipp32f *pStdDev, IppHintAlgorithm hint))
IPPAPI(IppStatus, ippsMeanStdDev_64f, (const Ipp64f *pSrc, int len, Ipp64f *pMean, Ipp64f *pStdDev))
/* Norms: Inf the largest |x|, L1 the sum of |x|, L2 the root of the sum of
 * |x|^2; of pSrc1 - pSrc2 for NormDiff. A NaN element gives NaN. */
#define ORB_DECLARE_NORM(kind)                                                                               \
    IPPAPI(IppStatus, ippsNorm_##kind##_32f, (const Ipp32f *pSrc, int len, Ipp32f *pNorm))                   \
    IPPAPI(IppStatus, ippsNorm_##kind##_64f, (const Ipp64f *pSrc, int len, Ipp64f *pNorm))                   \
    IPPAPI(IppStatus, ippsNorm_##kind##_16s32f, (const Ipp16s *pSrc, int len, Ipp32f *pNorm))                \
    IPPAPI(IppStatus, ippsNorm_##kind##_64fc64f, (const Ipp64fc *pSrc, int len, Ipp64f *pNorm))              \
    IPPAPI(IppStatus, ippsNormDiff_##kind##_32f, (const Ipp32f *pSrc1, const Ipp32f *pSrc2, int len, Ipp32f *pNorm)) \
    IPPAPI(IppStatus, ippsNormDiff_##kind##_64f, (const Ipp64f *pSrc1, const Ipp64f *pSrc2, int len, Ipp64f *pNorm)) \
    IPPAPI(IppStatus, ippsNormDiff_##kind##_16s32f, (const Ipp16s *pSrc1, const Ipp16s *pSrc2, int len, Ipp32f *pNorm)) \
    IPPAPI(IppStatus, ippsNormDiff_##kind##_64fc64f, (const Ipp64fc *pSrc1, const Ipp64fc *pSrc2, int len, Ipp64f *pNorm))
ORB_DECLARE_NORM(Inf)
ORB_DECLARE_NORM(L1)
ORB_DECLARE_NORM(L2)
#undef ORB_DECLARE_NORM
/* Dot products, without conjugation. */
IPPAPI(IppStatus, ippsDotProd_32f64f, (const Ipp32f *pSrc1, const Ipp32f *pSrc2, int len, Ipp64f *pDp))
IPPAPI(IppStatus, ippsDotProd_64f, (const Ipp64f *pSrc1, const Ipp64f *pSrc2, int len, Ipp64f *pDp))
IPPAPI(IppStatus, ippsDotProd_64fc, (const Ipp64fc *pSrc1, const Ipp64fc *pSrc2, int len, Ipp64fc *pDp))
IPPAPI(IppStatus, ippsDotProd_64f64fc, (const Ipp64f *pSrc1, const Ipp64fc *pSrc2, int len, Ipp64fc *pDp))
IPPAPI(IppStatus, ippsDotProd_16s64s, (const Ipp16s *pSrc1, const Ipp16s *pSrc2, int len, Ipp64s *pDp))
/* Element-wise extremes of two vectors; a NaN in either gives NaN. */
IPPAPI(IppStatus, ippsMaxEvery_8u, (const Ipp8u *pSrc1, const Ipp8u *pSrc2, Ipp8u *pDst, Ipp32u len))
IPPAPI(IppStatus, ippsMaxEvery_16u, (const Ipp16u *pSrc1, const Ipp16u *pSrc2, Ipp16u *pDst, Ipp32u len))
IPPAPI(IppStatus, ippsMaxEvery_32f, (const Ipp32f *pSrc1, const Ipp32f *pSrc2, Ipp32f *pDst, Ipp32u len))
IPPAPI(IppStatus, ippsMaxEvery_64f, (const Ipp64f *pSrc1, const Ipp64f *pSrc2, Ipp64f *pDst, Ipp32u len))
IPPAPI(IppStatus, ippsMinEvery_8u, (const Ipp8u *pSrc1, const Ipp8u *pSrc2, Ipp8u *pDst, Ipp32u len))
IPPAPI(IppStatus, ippsMinEvery_16u, (const Ipp16u *pSrc1, const Ipp16u *pSrc2, Ipp16u *pDst, Ipp32u len))
IPPAPI(IppStatus, ippsMinEvery_32f, (const Ipp32f *pSrc1, const Ipp32f *pSrc2, Ipp32f *pDst, Ipp32u len))
IPPAPI(IppStatus, ippsMinEvery_64f, (const Ipp64f *pSrc1, const Ipp64f *pSrc2, Ipp64f *pDst, Ipp32u len))
/* Zero-crossing measures over neighbours x[n-1], x[n] (see stats.cpp). */
IPPAPI(IppStatus, ippsZeroCrossing_16s32f, (const Ipp16s *pSrc, Ipp32u len, Ipp32f *pValZCR, IppsZCType zcType))
IPPAPI(IppStatus, ippsZeroCrossing_32f, (const Ipp32f *pSrc, Ipp32u len, Ipp32f *pValZCR, IppsZCType zcType))
/* Elements with lowerBound < x < upperBound. */
IPPAPI(IppStatus, ippsCountInRange_32s, (const Ipp32s *pSrc, int len, int *pCounts, Ipp32s lowerBound, Ipp32s upperBound))

/* Ordering and search. */
/* The binary order of the largest magnitude: the e of m 2^e, 1/2 <= m < 1
 * (0 when all are zero); NaN elements are passed over with ippStsNanArg. */
IPPAPI(IppStatus, ippsMaxOrder_16s, (const Ipp16s *pSrc, int len, int *pOrder))
IPPAPI(IppStatus, ippsMaxOrder_32s, (const Ipp32s *pSrc, int len, int *pOrder))
IPPAPI(IppStatus, ippsMaxOrder_32f, (const Ipp32f *pSrc, int len, int *pOrder))
IPPAPI(IppStatus, ippsMaxOrder_64f, (const Ipp64f *pSrc, int len, int *pOrder))
/* pDst[n] = pSrc[len - 1 - n]; pSrc may be pDst. */
IPPAPI(IppStatus, ippsFlip_8u, (const Ipp8u *pSrc, Ipp8u *pDst, int len))
IPPAPI(IppStatus, ippsFlip_16u, (const Ipp16u *pSrc, Ipp16u *pDst, int len))
IPPAPI(IppStatus, ippsFlip_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsFlip_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsFlip_64fc, (const Ipp64fc *pSrc, Ipp64fc *pDst, int len))
/* In-place sorts; NaN sorts after every number ascending and before every
 * number descending, -0 before +0. */
IPPAPI(IppStatus, ippsSortAscend_8u_I, (Ipp8u *pSrcDst, int len))
IPPAPI(IppStatus, ippsSortAscend_16s_I, (Ipp16s *pSrcDst, int len))
IPPAPI(IppStatus, ippsSortAscend_32s_I, (Ipp32s *pSrcDst, int len))
IPPAPI(IppStatus, ippsSortAscend_32f_I, (Ipp32f *pSrcDst, int len))
IPPAPI(IppStatus, ippsSortAscend_64f_I, (Ipp64f *pSrcDst, int len))
IPPAPI(IppStatus, ippsSortDescend_8u_I, (Ipp8u *pSrcDst, int len))
IPPAPI(IppStatus, ippsSortDescend_16s_I, (Ipp16s *pSrcDst, int len))
IPPAPI(IppStatus, ippsSortDescend_32s_I, (Ipp32s *pSrcDst, int len))
IPPAPI(IppStatus, ippsSortDescend_32f_I, (Ipp32f *pSrcDst, int len))
IPPAPI(IppStatus, ippsSortDescend_64f_I, (Ipp64f *pSrcDst, int len))
/* Nearest entries of an ascending table; of two entries equally near, the
 * lower (the first index of its value). */
IPPAPI(IppStatus, ippsFindNearestOne_16u, (Ipp16u inpVal, Ipp16u *pOutVal, int *pOutIndex, const Ipp16u *pTable, int tblLen))
IPPAPI(IppStatus, ippsFindNearest_16u, (const Ipp16u *pVals, Ipp16u *pOutVals, int *pOutIndexes, int len, const Ipp16u *pTable, int tblLen))

/* Transforms. */

/* Fourier transforms by length (DFT) or by order, 2^order points (FFT), on
 * interleaved complex data (64fc) or on parts held in two real arrays (32f,
 * 64f). flag is one of the IPP_FFT_* normalisations: the forward transform
 * is y[k] = s * sum x[n] exp(-2 pi i nk/N), the inverse the same with
 * exp(+2 pi i nk/N); s is 1, 1/N or 1/sqrt(N) as the flag says for that
 * direction. hint is accepted and ignored. The initialisation buffers and
 * the interleaved forms' work buffers have size 0 (null is passed); a null
 * work buffer of a split form makes it take the memory itself. Source and
 * destination may be the same arrays. */
#define ORB_DECLARE_FT_SIZE(name, N) \
    IPPAPI(IppStatus, name, (int N, int flag, IppHintAlgorithm hint, int *pSpecSize, int *pSpecBufferSize, int *pBufferSize))
ORB_DECLARE_FT_SIZE(ippsDFTGetSize_C_64fc, length)
ORB_DECLARE_FT_SIZE(ippsDFTGetSize_C_64f, length)
ORB_DECLARE_FT_SIZE(ippsDFTGetSize_C_32f, length)
ORB_DECLARE_FT_SIZE(ippsFFTGetSize_C_64fc, order)
ORB_DECLARE_FT_SIZE(ippsFFTGetSize_C_64f, order)
ORB_DECLARE_FT_SIZE(ippsFFTGetSize_C_32f, order)
#undef ORB_DECLARE_FT_SIZE
#define ORB_DECLARE_DFT_INIT(name, S) \
    IPPAPI(IppStatus, name, (int length, int flag, IppHintAlgorithm hint, S *pDFTSpec, Ipp8u *pMemInit))
ORB_DECLARE_DFT_INIT(ippsDFTInit_C_64fc, IppsDFTSpec_C_64fc)
ORB_DECLARE_DFT_INIT(ippsDFTInit_C_64f, IppsDFTSpec_C_64f)
ORB_DECLARE_DFT_INIT(ippsDFTInit_C_32f, IppsDFTSpec_C_32f)
#undef ORB_DECLARE_DFT_INIT
#define ORB_DECLARE_FFT_INIT(name, S) \
    IPPAPI(IppStatus, name, (S **ppFFTSpec, int order, int flag, IppHintAlgorithm hint, Ipp8u *pSpec, Ipp8u *pSpecBuffer))
ORB_DECLARE_FFT_INIT(ippsFFTInit_C_64fc, IppsFFTSpec_C_64fc)
ORB_DECLARE_FFT_INIT(ippsFFTInit_C_64f, IppsFFTSpec_C_64f)
ORB_DECLARE_FFT_INIT(ippsFFTInit_C_32f, IppsFFTSpec_C_32f)
#undef ORB_DECLARE_FFT_INIT
#define ORB_DECLARE_FT_C(name, S) \
    IPPAPI(IppStatus, name, (const Ipp64fc *pSrc, Ipp64fc *pDst, const S *pSpec, Ipp8u *pBuffer))
ORB_DECLARE_FT_C(ippsDFTFwd_CToC_64fc, IppsDFTSpec_C_64fc)
ORB_DECLARE_FT_C(ippsDFTInv_CToC_64fc, IppsDFTSpec_C_64fc)
ORB_DECLARE_FT_C(ippsFFTFwd_CToC_64fc, IppsFFTSpec_C_64fc)
ORB_DECLARE_FT_C(ippsFFTInv_CToC_64fc, IppsFFTSpec_C_64fc)
#undef ORB_DECLARE_FT_C
#define ORB_DECLARE_FT_SPLIT(name, T, S)                                                                    \
    IPPAPI(IppStatus, name,                                                                                 \
           (const T *pSrcRe, const T *pSrcIm, T *pDstRe, T *pDstIm, const S *pSpec, Ipp8u *pBuffer))
ORB_DECLARE_FT_SPLIT(ippsDFTFwd_CToC_64f, Ipp64f, IppsDFTSpec_C_64f)
ORB_DECLARE_FT_SPLIT(ippsDFTInv_CToC_64f, Ipp64f, IppsDFTSpec_C_64f)
ORB_DECLARE_FT_SPLIT(ippsDFTFwd_CToC_32f, Ipp32f, IppsDFTSpec_C_32f)
ORB_DECLARE_FT_SPLIT(ippsDFTInv_CToC_32f, Ipp32f, IppsDFTSpec_C_32f)
ORB_DECLARE_FT_SPLIT(ippsFFTFwd_CToC_64f, Ipp64f, IppsFFTSpec_C_64f)
ORB_DECLARE_FT_SPLIT(ippsFFTInv_CToC_64f, Ipp64f, IppsFFTSpec_C_64f)
ORB_DECLARE_FT_SPLIT(ippsFFTFwd_CToC_32f, Ipp32f, IppsFFTSpec_C_32f)
ORB_DECLARE_FT_SPLIT(ippsFFTInv_CToC_32f, Ipp32f, IppsFFTSpec_C_32f)
#undef ORB_DECLARE_FT_SPLIT

/* Orthonormal discrete cosine transforms of len points: forward
 * y[k] = c(k) sum x[n] cos(pi (2n + 1) k / 2len), inverse
 * x[n] = sum c(k) y[k] cos(pi (2n + 1) k / 2len), with c(0) = sqrt(1/len)
 * and c(k) = sqrt(2/len) otherwise. */
#define ORB_DECLARE_DCT(T, S, Dir)                                                                            \
    IPPAPI(IppStatus, ippsDCT##Dir##GetSize_##T,                                                             \
           (int len, IppHintAlgorithm hint, int *pSpecSize, int *pSpecBufferSize, int *pBufferSize))        \
    IPPAPI(IppStatus, ippsDCT##Dir##Init_##T,                                                                \
           (S **ppDCTSpec, int len, IppHintAlgorithm hint, Ipp8u *pSpec, Ipp8u *pSpecBuffer))                \
    IPPAPI(IppStatus, ippsDCT##Dir##_##T, (const Ipp##T *pSrc, Ipp##T *pDst, const S *pDCTSpec, Ipp8u *pBuffer))
ORB_DECLARE_DCT(32f, IppsDCTFwdSpec_32f, Fwd)
ORB_DECLARE_DCT(32f, IppsDCTInvSpec_32f, Inv)
ORB_DECLARE_DCT(64f, IppsDCTFwdSpec_64f, Fwd)
ORB_DECLARE_DCT(64f, IppsDCTInvSpec_64f, Inv)
#undef ORB_DECLARE_DCT

/* The analytic signal of a real one: its real part is the signal, its
 * imaginary part the signal's Hilbert transform. */
IPPAPI(IppStatus, ippsHilbertGetSize_32f32fc, (int length, IppHintAlgorithm hint, int *pSpecSize, int *pBufferSize))
IPPAPI(IppStatus, ippsHilbertInit_32f32fc, (int length, IppHintAlgorithm hint, IppsHilbertSpec *pSpec, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsHilbert_32f32fc, (const Ipp32f *pSrc, Ipp32fc *pDst, IppsHilbertSpec *pSpec, Ipp8u *pBuffer))

/* One DFT value at relative frequency rFreq in [0, 1):
 * *pVal = sum pSrc[n] exp(-2 pi i rFreq n). */
IPPAPI(IppStatus, ippsGoertz_32f, (const Ipp32f *pSrc, int len, Ipp32fc *pVal, Ipp32f rFreq))
IPPAPI(IppStatus, ippsGoertz_64f, (const Ipp64f *pSrc, int len, Ipp64fc *pVal, Ipp64f rFreq))
IPPAPI(IppStatus, ippsGoertz_64fc, (const Ipp64fc *pSrc, int len, Ipp64fc *pVal, Ipp64f rFreq))

/* One level of the Haar wavelet: low[n] = (x[2n] + x[2n+1]) / 2,
 * high[n] = (x[2n+1] - x[2n]) / 2; the inverse gives x[2n] = low[n] - high[n],
 * x[2n+1] = low[n] + high[n]. For an odd len the last sample goes to the
 * low-pass part alone. The integer forms scale by 2^-scaleFactor, round to
 * nearest (halves to even) and saturate. */
IPPAPI(IppStatus, ippsWTHaarFwd_32f, (const Ipp32f *pSrc, int len, Ipp32f *pDstLow, Ipp32f *pDstHigh))
IPPAPI(IppStatus, ippsWTHaarFwd_64f, (const Ipp64f *pSrc, int len, Ipp64f *pDstLow, Ipp64f *pDstHigh))
IPPAPI(IppStatus, ippsWTHaarFwd_16s_Sfs,
       (const Ipp16s *pSrc, int len, Ipp16s *pDstLow, Ipp16s *pDstHigh, int scaleFactor))
IPPAPI(IppStatus, ippsWTHaarInv_32f, (const Ipp32f *pSrcLow, const Ipp32f *pSrcHigh, Ipp32f *pDst, int len))
IPPAPI(IppStatus, ippsWTHaarInv_64f, (const Ipp64f *pSrcLow, const Ipp64f *pSrcHigh, Ipp64f *pDst, int len))
IPPAPI(IppStatus, ippsWTHaarInv_16s_Sfs,
       (const Ipp16s *pSrcLow, const Ipp16s *pSrcHigh, Ipp16s *pDst, int len, int scaleFactor))

/* Convolution and correlation. */

/* Full linear convolution: pDst[n] = sum over i of pSrc1[i] * pSrc2[n - i],
 * n = 0 .. src1Len + src2Len - 2. algType picks direct summation, a
 * transform, or (ippAlgAuto) whichever is faster at these lengths; pBuffer
 * holds ippsConvolveGetBufferSize bytes for the same lengths, type and
 * algorithm. */
IPPAPI(IppStatus, ippsConvolveGetBufferSize,
       (int src1Len, int src2Len, IppDataType dataType, IppEnum algType, int *pBufferSize))
IPPAPI(IppStatus, ippsConvolve_32f, (const Ipp32f *pSrc1, int src1Len, const Ipp32f *pSrc2, int src2Len,
                                     Ipp32f *pDst, IppEnum algType, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsConvolve_64f, (const Ipp64f *pSrc1, int src1Len, const Ipp64f *pSrc2, int src2Len,
                                     Ipp64f *pDst, IppEnum algType, Ipp8u *pBuffer))
/* dstLen elements of the full convolution from element bias on; elements
 * past its end are 0. */
IPPAPI(IppStatus, ippsConvBiased_32f, (const Ipp32f *pSrc1, int src1Len, const Ipp32f *pSrc2, int src2Len,
                                       Ipp32f *pDst, int dstLen, int bias))
/* Auto-correlation at lags 0 .. dstLen - 1:
 * pDst[n] = sum over i of conj(pSrc[i]) * pSrc[i + n] (0 past the source's
 * end), divided by srcLen (ippsNormB) or by the number of products srcLen - n
 * (ippsNormU); algType or-s an IppAlgType with an IppsNormOp. */
IPPAPI(IppStatus, ippsAutoCorrNormGetBufferSize,
       (int srcLen, int dstLen, IppDataType dataType, IppEnum algType, int *pBufferSize))
IPPAPI(IppStatus, ippsAutoCorrNorm_32f,
       (const Ipp32f *pSrc, int srcLen, Ipp32f *pDst, int dstLen, IppEnum algType, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsAutoCorrNorm_64f,
       (const Ipp64f *pSrc, int srcLen, Ipp64f *pDst, int dstLen, IppEnum algType, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsAutoCorrNorm_64fc,
       (const Ipp64fc *pSrc, int srcLen, Ipp64fc *pDst, int dstLen, IppEnum algType, Ipp8u *pBuffer))
/* Cross-correlation at lags lowLag .. lowLag + dstLen - 1:
 * pDst[k] = sum over i of conj(pSrc1[i]) * pSrc2[i + lowLag + k] (terms
 * outside either source are 0), divided by max(src1Len, src2Len)
 * (ippsNormB) or by the number of products at that lag (ippsNormU). */
IPPAPI(IppStatus, ippsCrossCorrNormGetBufferSize,
       (int src1Len, int src2Len, int dstLen, int lowLag, IppDataType dataType, IppEnum algType,
        int *pBufferSize))
IPPAPI(IppStatus, ippsCrossCorrNorm_32f, (const Ipp32f *pSrc1, int src1Len, const Ipp32f *pSrc2, int src2Len,
                                          Ipp32f *pDst, int dstLen, int lowLag, IppEnum algType, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsCrossCorrNorm_64f, (const Ipp64f *pSrc1, int src1Len, const Ipp64f *pSrc2, int src2Len,
                                          Ipp64f *pDst, int dstLen, int lowLag, IppEnum algType, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsCrossCorrNorm_64fc, (const Ipp64fc *pSrc1, int src1Len, const Ipp64fc *pSrc2, int src2Len,
                                           Ipp64fc *pDst, int dstLen, int lowLag, IppEnum algType,
                                           Ipp8u *pBuffer))

/* Filters. */

/* Single-rate FIR: pDst[n] = sum over k < tapsLen of pTaps[k] * x[n - k],
 * where x[-j] (1 <= j < tapsLen) is pDlySrc[tapsLen - 1 - j] (zeros when
 * pDlySrc is null); pDlyDst, when given, receives the last tapsLen - 1
 * source samples. Sizes in bytes. */
IPPAPI(IppStatus, ippsFIRSRGetSize, (int tapsLen, IppDataType tapsType, int *pSpecSize, int *pBufSize))
IPPAPI(IppStatus, ippsFIRSRInit_64f, (const Ipp64f *pTaps, int tapsLen, IppAlgType algType, IppsFIRSpec_64f *pSpec))
IPPAPI(IppStatus, ippsFIRSR_64f,
       (const Ipp64f *pSrc, Ipp64f *pDst, int numIters, IppsFIRSpec_64f *pSpec, const Ipp64f *pDlySrc,
        Ipp64f *pDlyDst, Ipp8u *pBuf))

/* Window-method FIR design; frequencies are fractions of the sampling rate
 * in (0, 0.5). */
IPPAPI(IppStatus, ippsFIRGenGetBufferSize, (int tapsLen, int *pBufferSize))
IPPAPI(IppStatus, ippsFIRGenLowpass_64f,
       (Ipp64f rFreq, Ipp64f *pTaps, int tapsLen, IppWinType winType, IppBool doNormal, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsFIRGenHighpass_64f,
       (Ipp64f rFreq, Ipp64f *pTaps, int tapsLen, IppWinType winType, IppBool doNormal, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsFIRGenBandpass_64f,
       (Ipp64f rLowFreq, Ipp64f rHighFreq, Ipp64f *pTaps, int tapsLen, IppWinType winType, IppBool doNormal,
        Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsFIRGenBandstop_64f,
       (Ipp64f rLowFreq, Ipp64f rHighFreq, Ipp64f *pTaps, int tapsLen, IppWinType winType, IppBool doNormal,
        Ipp8u *pBuffer))

/* Adaptive least-mean-squares FIR; the delay line holds 2 * tapsLen values. */
IPPAPI(IppStatus, ippsFIRLMSGetStateSize_32f, (int tapsLen, int dlyIndex, int *pBufferSize))
IPPAPI(IppStatus, ippsFIRLMSInit_32f,
       (IppsFIRLMSState_32f * *ppState, const Ipp32f *pTaps, int tapsLen, const Ipp32f *pDlyLine, int dlyIndex,
        Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsFIRLMS_32f,
       (const Ipp32f *pSrc, const Ipp32f *pRef, Ipp32f *pDst, int len, float mu, IppsFIRLMSState_32f *pState))

/* Arbitrary-order IIR: taps b0..bN then a0..aN (all divided by a0), a delay
 * line of N values (the transposed direct form's state). */
IPPAPI(IppStatus, ippsIIRGetStateSize_32f, (int order, int *pBufferSize))
IPPAPI(IppStatus, ippsIIRGetStateSize_64f, (int order, int *pBufferSize))
IPPAPI(IppStatus, ippsIIRGetStateSize_64fc, (int order, int *pBufferSize))
IPPAPI(IppStatus, ippsIIRInit_32f,
       (IppsIIRState_32f * *ppState, const Ipp32f *pTaps, int order, const Ipp32f *pDlyLine, Ipp8u *pBuf))
IPPAPI(IppStatus, ippsIIRInit_64f,
       (IppsIIRState_64f * *ppState, const Ipp64f *pTaps, int order, const Ipp64f *pDlyLine, Ipp8u *pBuf))
IPPAPI(IppStatus, ippsIIRInit_64fc,
       (IppsIIRState_64fc * *ppState, const Ipp64fc *pTaps, int order, const Ipp64fc *pDlyLine, Ipp8u *pBuf))
IPPAPI(IppStatus, ippsIIR_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len, IppsIIRState_32f *pState))
IPPAPI(IppStatus, ippsIIR_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len, IppsIIRState_64f *pState))
IPPAPI(IppStatus, ippsIIR_64fc, (const Ipp64fc *pSrc, Ipp64fc *pDst, int len, IppsIIRState_64fc *pState))

/* Butterworth and Chebyshev type I design by the bilinear transform; order
 * 1 to 12, 2 * order + 2 taps written. */
IPPAPI(IppStatus, ippsIIRGenGetBufferSize, (int order, int *pBufferSize))
IPPAPI(IppStatus, ippsIIRGenLowpass_64f,
       (Ipp64f rFreq, Ipp64f rpl, int order, Ipp64f *pTaps, IppsIIRFilterType filterType, Ipp8u *pBuffer))
IPPAPI(IppStatus, ippsIIRGenHighpass_64f,
       (Ipp64f rFreq, Ipp64f rpl, int order, Ipp64f *pTaps, IppsIIRFilterType filterType, Ipp8u *pBuffer))

/* Sliding median over the maskSize samples ending at each one (an even mask
 * is reduced by one, with a warning); the samples before the first are
 * pDlySrc's maskSize - 1 values, or copies of pSrc[0] when it is null. */
IPPAPI(IppStatus, ippsFilterMedianGetBufferSize, (int maskSize, IppDataType dataType, int *pBufferSize))
#define ORB_DECLARE_MEDIAN(name, T)                                                                   \
    IPPAPI(IppStatus, name,                                                                            \
           (const T *pSrc, T *pDst, int len, int maskSize, const T *pDlySrc, T *pDlyDst, Ipp8u *pBuffer))
ORB_DECLARE_MEDIAN(ippsFilterMedian_8u, Ipp8u)
ORB_DECLARE_MEDIAN(ippsFilterMedian_16s, Ipp16s)
ORB_DECLARE_MEDIAN(ippsFilterMedian_32s, Ipp32s)
ORB_DECLARE_MEDIAN(ippsFilterMedian_32f, Ipp32f)
ORB_DECLARE_MEDIAN(ippsFilterMedian_64f, Ipp64f)
#undef ORB_DECLARE_MEDIAN

/* Signal generation and windows. */

IPPAPI(IppStatus, ippsRandUniformGetSize_16s, (int *pRandUniStateSize))
IPPAPI(IppStatus, ippsRandUniformGetSize_32f, (int *pRandUniStateSize))
IPPAPI(IppStatus, ippsRandUniformGetSize_64f, (int *pRandUniStateSize))
IPPAPI(IppStatus, ippsRandUniformInit_16s, (IppsRandUniState_16s * pRandUniState, Ipp16s low, Ipp16s high, unsigned int seed))
IPPAPI(IppStatus, ippsRandUniformInit_32f, (IppsRandUniState_32f * pRandUniState, Ipp32f low, Ipp32f high, unsigned int seed))
IPPAPI(IppStatus, ippsRandUniformInit_64f, (IppsRandUniState_64f * pRandUniState, Ipp64f low, Ipp64f high, unsigned int seed))
IPPAPI(IppStatus, ippsRandUniform_16s, (Ipp16s * pDst, int len, IppsRandUniState_16s *pRandUniState))
IPPAPI(IppStatus, ippsRandUniform_32f, (Ipp32f * pDst, int len, IppsRandUniState_32f *pRandUniState))
IPPAPI(IppStatus, ippsRandUniform_64f, (Ipp64f * pDst, int len, IppsRandUniState_64f *pRandUniState))
IPPAPI(IppStatus, ippsRandGaussGetSize_16s, (int *pRandGaussStateSize))
IPPAPI(IppStatus, ippsRandGaussGetSize_32f, (int *pRandGaussStateSize))
IPPAPI(IppStatus, ippsRandGaussGetSize_64f, (int *pRandGaussStateSize))
IPPAPI(IppStatus, ippsRandGaussInit_16s, (IppsRandGaussState_16s * pRandGaussState, Ipp16s mean, Ipp16s stdDev, unsigned int seed))
IPPAPI(IppStatus, ippsRandGaussInit_32f, (IppsRandGaussState_32f * pRandGaussState, Ipp32f mean, Ipp32f stdDev, unsigned int seed))
IPPAPI(IppStatus, ippsRandGaussInit_64f, (IppsRandGaussState_64f * pRandGaussState, Ipp64f mean, Ipp64f stdDev, unsigned int seed))
IPPAPI(IppStatus, ippsRandGauss_16s, (Ipp16s * pDst, int len, IppsRandGaussState_16s *pRandGaussState))
IPPAPI(IppStatus, ippsRandGauss_32f, (Ipp32f * pDst, int len, IppsRandGaussState_32f *pRandGaussState))
IPPAPI(IppStatus, ippsRandGauss_64f, (Ipp64f * pDst, int len, IppsRandGaussState_64f *pRandGaussState))
IPPAPI(IppStatus, ippsVectorJaehne_16s, (Ipp16s * pDst, int len, Ipp16s magn))
IPPAPI(IppStatus, ippsVectorJaehne_32s, (Ipp32s * pDst, int len, Ipp32s magn))
IPPAPI(IppStatus, ippsVectorJaehne_32f, (Ipp32f * pDst, int len, Ipp32f magn))
IPPAPI(IppStatus, ippsVectorJaehne_64f, (Ipp64f * pDst, int len, Ipp64f magn))
IPPAPI(IppStatus, ippsVectorSlope_16s, (Ipp16s * pDst, int len, Ipp32f offset, Ipp32f slope))
IPPAPI(IppStatus, ippsVectorSlope_32s, (Ipp32s * pDst, int len, Ipp64f offset, Ipp64f slope))
IPPAPI(IppStatus, ippsVectorSlope_32f, (Ipp32f * pDst, int len, Ipp32f offset, Ipp32f slope))
IPPAPI(IppStatus, ippsVectorSlope_64f, (Ipp64f * pDst, int len, Ipp64f offset, Ipp64f slope))
#define ORB_DECLARE_WIN(name)                                                        \
    IPPAPI(IppStatus, ipps##name##_16s, (const Ipp16s *pSrc, Ipp16s *pDst, int len)) \
    IPPAPI(IppStatus, ipps##name##_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len)) \
    IPPAPI(IppStatus, ipps##name##_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len)) \
    IPPAPI(IppStatus, ipps##name##_64fc, (const Ipp64fc *pSrc, Ipp64fc *pDst, int len))
ORB_DECLARE_WIN(WinBartlett)
ORB_DECLARE_WIN(WinHamming)
ORB_DECLARE_WIN(WinHann)
ORB_DECLARE_WIN(WinBlackmanStd)
ORB_DECLARE_WIN(WinBlackmanOpt)
#undef ORB_DECLARE_WIN
#define ORB_DECLARE_WIN_A(name)                                                                        \
    IPPAPI(IppStatus, ipps##name##_16s, (const Ipp16s *pSrc, Ipp16s *pDst, int len, Ipp32f alpha))     \
    IPPAPI(IppStatus, ipps##name##_32f, (const Ipp32f *pSrc, Ipp32f *pDst, int len, Ipp32f alpha))     \
    IPPAPI(IppStatus, ipps##name##_64f, (const Ipp64f *pSrc, Ipp64f *pDst, int len, Ipp64f alpha))     \
    IPPAPI(IppStatus, ipps##name##_64fc, (const Ipp64fc *pSrc, Ipp64fc *pDst, int len, Ipp64f alpha))
ORB_DECLARE_WIN_A(WinBlackman)
ORB_DECLARE_WIN_A(WinKaiser)
#undef ORB_DECLARE_WIN_A

#ifdef __cplusplus
}
#endif

#endif
