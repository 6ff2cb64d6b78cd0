/* Orthonormal discrete cosine transforms on FFTW's REDFT10 (forward) and
 * REDFT01 (inverse) plans from the plan cache.
 *
 * REDFT10 gives Y[k] = 2 sum x[n] cos(pi (2n + 1) k / 2N), so the forward
 * result is Y[k] * c(k) / 2. REDFT01 gives X[n] = Y[0] + 2 sum_{k>0} Y[k]
 * cos(pi (2n + 1) k / 2N), so the inverse weights its input by c(0) and
 * c(k) / 2 first (into the destination) and transforms that in place.
 */
#include <fftw3.h>

#include <cmath>

#include "fft_plan.h"
#include "ipps.h"
#include "transform_spec.h"

namespace orb_kernels {
namespace {

IppStatus DCTSize(int len, int *pSpecSize, int *pSpecBufferSize, int *pBufferSize)
{
    if (!pSpecSize || !pSpecBufferSize || !pBufferSize) return ippStsNullPtrErr;
    if (len < 1) return ippStsSizeErr;
    *pSpecSize = kSpecBytes;
    *pSpecBufferSize = 0;
    *pBufferSize = 0;
    return ippStsNoErr;
}

template <typename S>
IppStatus DCTInit(SpecKind kind, S **ppDCTSpec, int len, Ipp8u *pSpec)
{
    if (!ppDCTSpec || !pSpec) return ippStsNullPtrErr;
    if (len < 1) return ippStsSizeErr;
    TransformSpec *s = SpecAt(pSpec);
    s->kind = kind;
    s->n = len;
    s->fwdScale = std::sqrt(1.0 / len);  // c(0)
    s->invScale = std::sqrt(2.0 / len);  // c(k), k > 0
    *ppDCTSpec = reinterpret_cast<S *>(s);
    return ippStsNoErr;
}

template <typename T>
void ExecuteR2R(Lease l, T *in, T *out)
{
    if constexpr (sizeof(T) == 8)
        fftw_execute_r2r(AsPlan64(l), in, out);
    else
        fftwf_execute_r2r(AsPlan32(l), in, out);
}

template <typename T>
IppStatus DCT(const T *pSrc, T *pDst, const void *spec, SpecKind kind, bool forward)
{
    if (!pSrc || !pDst || !spec) return ippStsNullPtrErr;
    const TransformSpec *s = SpecOf(spec, kind);
    if (!s) return ippStsContextMatchErr;
    const int n = s->n;
    const PlanPrecision precision = sizeof(T) == 8 ? PlanPrecision::kDouble : PlanPrecision::kSingle;
    const T first = T(s->fwdScale), others = T(s->invScale);
    if (forward) {
        const Lease l = AcquirePlan(PlanKind::kDCT2, precision, n, pSrc, pDst);
        if (!l.plan) return ippStsMemAllocErr;
        ExecuteR2R<T>(l, const_cast<T *>(pSrc), pDst);
        ReleasePlan(l);
        const T half = others / 2;
        pDst[0] *= first / 2;
        for (int k = 1; k < n; ++k) pDst[k] *= half;
        return ippStsNoErr;
    }
    const Lease l = AcquirePlan(PlanKind::kDCT3, precision, n, pDst, pDst);
    if (!l.plan) return ippStsMemAllocErr;
    const T half = others / 2;
    pDst[0] = pSrc[0] * first;
    for (int k = 1; k < n; ++k) pDst[k] = pSrc[k] * half;
    ExecuteR2R<T>(l, pDst, pDst);
    ReleasePlan(l);
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels

#define ORB_DCT(T, S, Dir, kind, forward)                                                                       \
    extern "C" IppStatus ippsDCT##Dir##GetSize_##T(int len, IppHintAlgorithm, int *pSpecSize,                  \
                                                   int *pSpecBufferSize, int *pBufferSize)                     \
    {                                                                                                          \
        return orb_kernels::DCTSize(len, pSpecSize, pSpecBufferSize, pBufferSize);                            \
    }                                                                                                          \
    extern "C" IppStatus ippsDCT##Dir##Init_##T(S **ppDCTSpec, int len, IppHintAlgorithm, Ipp8u *pSpec, Ipp8u *) \
    {                                                                                                          \
        return orb_kernels::DCTInit(orb_kernels::SpecKind::kind, ppDCTSpec, len, pSpec);                      \
    }                                                                                                          \
    extern "C" IppStatus ippsDCT##Dir##_##T(const Ipp##T *pSrc, Ipp##T *pDst, const S *pDCTSpec, Ipp8u *)      \
    {                                                                                                          \
        return orb_kernels::DCT(pSrc, pDst, pDCTSpec, orb_kernels::SpecKind::kind, forward);                  \
    }
ORB_DCT(32f, IppsDCTFwdSpec_32f, Fwd, kDCTFwd32f, true)
ORB_DCT(32f, IppsDCTInvSpec_32f, Inv, kDCTInv32f, false)
ORB_DCT(64f, IppsDCTFwdSpec_64f, Fwd, kDCTFwd64f, true)
ORB_DCT(64f, IppsDCTInvSpec_64f, Inv, kDCTInv64f, false)
#undef ORB_DCT
