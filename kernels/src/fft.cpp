/* Complex Fourier transforms (DFT by length, FFT by order) on interleaved
 * and split data, and the analytic signal (Hilbert), all on FFTW plans
 * borrowed from the plan cache for the length of one call.
 *
 * FFTW computes unnormalised transforms with the same sign conventions
 * (forward exp(-2 pi i nk/N), backward exp(+2 pi i nk/N)); the flag's scale
 * is applied afterwards in one pass over the output.
 */
#include <fftw3.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "fft_plan.h"
#include "ipps.h"
#include "transform_spec.h"

namespace orb_kernels {
namespace {

constexpr int kMaxOrder = 30;  // 2^order must be an int length

bool ValidFlag(int flag)
{
    return flag == IPP_FFT_DIV_FWD_BY_N || flag == IPP_FFT_DIV_INV_BY_N || flag == IPP_FFT_DIV_BY_SQRTN ||
           flag == IPP_FFT_NODIV_BY_ANY;
}

IppStatus SizeQuery(int length, int flag, int *pSpecSize, int *pSpecBufferSize, int *pBufferSize, IppStatus badLength,
                    int (*bufferBytes)(int))
{
    if (!pSpecSize || !pSpecBufferSize || !pBufferSize) return ippStsNullPtrErr;
    if (length < 1) return badLength;
    if (!ValidFlag(flag)) return ippStsFftFlagErr;
    *pSpecSize = kSpecBytes;
    *pSpecBufferSize = 0;
    *pBufferSize = bufferBytes ? bufferBytes(length) : 0;
    return ippStsNoErr;
}

int LengthOfOrder(int order) { return order < 0 || order > kMaxOrder ? 0 : 1 << order; }

IppStatus Initialise(SpecKind kind, int length, int flag, void *memory, IppStatus badLength)
{
    if (!memory) return ippStsNullPtrErr;
    if (length < 1) return badLength;
    if (!ValidFlag(flag)) return ippStsFftFlagErr;
    TransformSpec *s = SpecAt(memory);
    const double byN = 1.0 / length, bySqrtN = 1.0 / std::sqrt(double(length));
    s->kind = kind;
    s->n = length;
    s->fwdScale = flag == IPP_FFT_DIV_FWD_BY_N ? byN : flag == IPP_FFT_DIV_BY_SQRTN ? bySqrtN : 1.0;
    s->invScale = flag == IPP_FFT_DIV_INV_BY_N ? byN : flag == IPP_FFT_DIV_BY_SQRTN ? bySqrtN : 1.0;
    return ippStsNoErr;
}

/* The structure for a transform: null pointers first, then its kind. */
IppStatus Lookup(const void *spec, SpecKind kind, const TransformSpec **out)
{
    if (!spec) return ippStsNullPtrErr;
    *out = SpecOf(spec, kind);
    return *out ? ippStsNoErr : ippStsContextMatchErr;
}

template <typename T>
void Scale(T *p, size_t count, double s)
{
    if (s == 1.0) return;
    const T f = T(s);
    for (size_t i = 0; i < count; ++i) p[i] *= f;
}

template <typename T>
constexpr PlanPrecision PrecisionOf() { return sizeof(T) == 8 ? PlanPrecision::kDouble : PlanPrecision::kSingle; }

/* Interleaved complex, double precision, in either direction. */
IppStatus Interleaved(const Ipp64fc *pSrc, Ipp64fc *pDst, const void *spec, SpecKind kind, bool forward)
{
    const TransformSpec *s = nullptr;
    if (!pSrc || !pDst) return ippStsNullPtrErr;
    if (IppStatus st = Lookup(spec, kind, &s)) return st;
    const Lease l = AcquirePlan(forward ? PlanKind::kC2CForward : PlanKind::kC2CBackward, PlanPrecision::kDouble,
                                s->n, pSrc, pDst);
    if (!l.plan) return ippStsMemAllocErr;
    fftw_execute_dft(AsPlan64(l), reinterpret_cast<fftw_complex *>(const_cast<Ipp64fc *>(pSrc)),
                     reinterpret_cast<fftw_complex *>(pDst));
    ReleasePlan(l);
    Scale(&pDst->re, 2 * size_t(s->n), forward ? s->fwdScale : s->invScale);
    return ippStsNoErr;
}

template <typename T>
void ExecuteInPlace(Lease l, T *w)
{
    if constexpr (sizeof(T) == 8)
        fftw_execute_dft(AsPlan64(l), reinterpret_cast<fftw_complex *>(w), reinterpret_cast<fftw_complex *>(w));
    else
        fftwf_execute_dft(AsPlan32(l), reinterpret_cast<fftwf_complex *>(w), reinterpret_cast<fftwf_complex *>(w));
}

/* The work buffer of a split transform: n interleaved complex values from
 * the next 64-byte boundary. 0 when that would not fit an int; the transform
 * then takes the memory itself. */
template <typename T>
int SplitBufferBytes(int n)
{
    const long long bytes = 2LL * n * sizeof(T) + 64;
    return bytes > 0x7fffffffLL ? 0 : int(bytes);
}

/* Split complex in either direction, through the work buffer: the parts
 * interleaved into it, transformed there in place, and spread out again
 * with the scale. FFTW's own split plans would tie a plan to the distance
 * between the real and imaginary arrays, which differs from call to call;
 * and since the inputs are read in full before any output is written, the
 * parts may share storage in any way. */
template <typename T>
IppStatus Split(const T *pSrcRe, const T *pSrcIm, T *pDstRe, T *pDstIm, const void *spec, SpecKind kind,
                bool forward, Ipp8u *pBuffer)
{
    const TransformSpec *s = nullptr;
    if (!pSrcRe || !pSrcIm || !pDstRe || !pDstIm) return ippStsNullPtrErr;
    if (IppStatus st = Lookup(spec, kind, &s)) return st;
    const size_t n = size_t(s->n);
    std::unique_ptr<Ipp8u[]> own;
    if (!pBuffer) {
        own.reset(new (std::nothrow) Ipp8u[2 * n * sizeof(T) + 64]);
        if (!own) return ippStsMemAllocErr;
        pBuffer = own.get();
    }
    T *w = reinterpret_cast<T *>((reinterpret_cast<uintptr_t>(pBuffer) + 63) & ~uintptr_t(63));
    const Lease l = AcquirePlan(forward ? PlanKind::kC2CForward : PlanKind::kC2CBackward, PrecisionOf<T>(), s->n, w, w);
    if (!l.plan) return ippStsMemAllocErr;
    for (size_t k = 0; k < n; ++k) {
        w[2 * k] = pSrcRe[k];
        w[2 * k + 1] = pSrcIm[k];
    }
    ExecuteInPlace<T>(l, w);
    ReleasePlan(l);
    const T scale = T(forward ? s->fwdScale : s->invScale);
    for (size_t k = 0; k < n; ++k) {
        pDstRe[k] = w[2 * k] * scale;
        pDstIm[k] = w[2 * k + 1] * scale;
    }
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels

using orb_kernels::SpecKind;

/* ---- Size queries and initialisers ---- */

#define ORB_FT_SIZE(name, Length, badLength, buffer)                                                            \
    extern "C" IppStatus name(int length, int flag, IppHintAlgorithm, int *pSpecSize, int *pSpecBufferSize,     \
                              int *pBufferSize)                                                                 \
    {                                                                                                           \
        return orb_kernels::SizeQuery(Length, flag, pSpecSize, pSpecBufferSize, pBufferSize, badLength, buffer); \
    }
ORB_FT_SIZE(ippsDFTGetSize_C_64fc, length, ippStsSizeErr, nullptr)
ORB_FT_SIZE(ippsDFTGetSize_C_64f, length, ippStsSizeErr, orb_kernels::SplitBufferBytes<Ipp64f>)
ORB_FT_SIZE(ippsDFTGetSize_C_32f, length, ippStsSizeErr, orb_kernels::SplitBufferBytes<Ipp32f>)
ORB_FT_SIZE(ippsFFTGetSize_C_64fc, orb_kernels::LengthOfOrder(length), ippStsFftOrderErr, nullptr)
ORB_FT_SIZE(ippsFFTGetSize_C_64f, orb_kernels::LengthOfOrder(length), ippStsFftOrderErr,
            orb_kernels::SplitBufferBytes<Ipp64f>)
ORB_FT_SIZE(ippsFFTGetSize_C_32f, orb_kernels::LengthOfOrder(length), ippStsFftOrderErr,
            orb_kernels::SplitBufferBytes<Ipp32f>)
#undef ORB_FT_SIZE

#define ORB_DFT_INIT(name, S, kind)                                                                      \
    extern "C" IppStatus name(int length, int flag, IppHintAlgorithm, S *pDFTSpec, Ipp8u *)               \
    {                                                                                                    \
        return orb_kernels::Initialise(SpecKind::kind, length, flag, pDFTSpec, ippStsSizeErr);           \
    }
ORB_DFT_INIT(ippsDFTInit_C_64fc, IppsDFTSpec_C_64fc, kDFT64fc)
ORB_DFT_INIT(ippsDFTInit_C_64f, IppsDFTSpec_C_64f, kDFT64f)
ORB_DFT_INIT(ippsDFTInit_C_32f, IppsDFTSpec_C_32f, kDFT32f)
#undef ORB_DFT_INIT

#define ORB_FFT_INIT(name, S, kind)                                                                           \
    extern "C" IppStatus name(S **ppFFTSpec, int order, int flag, IppHintAlgorithm, Ipp8u *pSpec, Ipp8u *)     \
    {                                                                                                         \
        if (!ppFFTSpec) return ippStsNullPtrErr;                                                              \
        const IppStatus st = orb_kernels::Initialise(SpecKind::kind, orb_kernels::LengthOfOrder(order), flag, \
                                                     pSpec, ippStsFftOrderErr);                               \
        if (st == ippStsNoErr) *ppFFTSpec = reinterpret_cast<S *>(orb_kernels::SpecAt(pSpec));                \
        return st;                                                                                            \
    }
ORB_FFT_INIT(ippsFFTInit_C_64fc, IppsFFTSpec_C_64fc, kFFT64fc)
ORB_FFT_INIT(ippsFFTInit_C_64f, IppsFFTSpec_C_64f, kFFT64f)
ORB_FFT_INIT(ippsFFTInit_C_32f, IppsFFTSpec_C_32f, kFFT32f)
#undef ORB_FFT_INIT

/* ---- Transforms ---- */

#define ORB_FT_C(name, S, kind, forward)                                                           \
    extern "C" IppStatus name(const Ipp64fc *pSrc, Ipp64fc *pDst, const S *pSpec, Ipp8u *)          \
    {                                                                                              \
        return orb_kernels::Interleaved(pSrc, pDst, pSpec, SpecKind::kind, forward);               \
    }
ORB_FT_C(ippsDFTFwd_CToC_64fc, IppsDFTSpec_C_64fc, kDFT64fc, true)
ORB_FT_C(ippsDFTInv_CToC_64fc, IppsDFTSpec_C_64fc, kDFT64fc, false)
ORB_FT_C(ippsFFTFwd_CToC_64fc, IppsFFTSpec_C_64fc, kFFT64fc, true)
ORB_FT_C(ippsFFTInv_CToC_64fc, IppsFFTSpec_C_64fc, kFFT64fc, false)
#undef ORB_FT_C

#define ORB_FT_SPLIT(name, T, S, kind, forward)                                                                \
    extern "C" IppStatus name(const T *pSrcRe, const T *pSrcIm, T *pDstRe, T *pDstIm, const S *pSpec,        \
                              Ipp8u *pBuffer)                                                                  \
    {                                                                                                          \
        return orb_kernels::Split<T>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, SpecKind::kind, forward, pBuffer); \
    }
ORB_FT_SPLIT(ippsDFTFwd_CToC_64f, Ipp64f, IppsDFTSpec_C_64f, kDFT64f, true)
ORB_FT_SPLIT(ippsDFTInv_CToC_64f, Ipp64f, IppsDFTSpec_C_64f, kDFT64f, false)
ORB_FT_SPLIT(ippsDFTFwd_CToC_32f, Ipp32f, IppsDFTSpec_C_32f, kDFT32f, true)
ORB_FT_SPLIT(ippsDFTInv_CToC_32f, Ipp32f, IppsDFTSpec_C_32f, kDFT32f, false)
ORB_FT_SPLIT(ippsFFTFwd_CToC_64f, Ipp64f, IppsFFTSpec_C_64f, kFFT64f, true)
ORB_FT_SPLIT(ippsFFTInv_CToC_64f, Ipp64f, IppsFFTSpec_C_64f, kFFT64f, false)
ORB_FT_SPLIT(ippsFFTFwd_CToC_32f, Ipp32f, IppsFFTSpec_C_32f, kFFT32f, true)
ORB_FT_SPLIT(ippsFFTInv_CToC_32f, Ipp32f, IppsFFTSpec_C_32f, kFFT32f, false)
#undef ORB_FT_SPLIT

/* ---- Analytic signal ----
 *
 * The spectrum of the real signal (bins 0 .. N/2, written straight into the
 * output), its positive frequencies doubled, its negative ones cleared (bin
 * 0 and, for even N, bin N/2 kept as they are), then transformed back in
 * place and divided by N. */

extern "C" IppStatus ippsHilbertGetSize_32f32fc(int length, IppHintAlgorithm, int *pSpecSize, int *pBufferSize)
{
    if (!pSpecSize || !pBufferSize) return ippStsNullPtrErr;
    if (length < 1) return ippStsSizeErr;
    *pSpecSize = orb_kernels::kSpecBytes;
    *pBufferSize = 0;
    return ippStsNoErr;
}

extern "C" IppStatus ippsHilbertInit_32f32fc(int length, IppHintAlgorithm, IppsHilbertSpec *pSpec, Ipp8u *)
{
    return orb_kernels::Initialise(SpecKind::kHilbert, length, IPP_FFT_NODIV_BY_ANY, pSpec, ippStsSizeErr);
}

extern "C" IppStatus ippsHilbert_32f32fc(const Ipp32f *pSrc, Ipp32fc *pDst, IppsHilbertSpec *pSpec, Ipp8u *)
{
    using namespace orb_kernels;
    const TransformSpec *s = nullptr;
    if (!pSrc || !pDst) return ippStsNullPtrErr;
    if (IppStatus st = Lookup(pSpec, SpecKind::kHilbert, &s)) return st;
    const int n = s->n;
    const Lease forward = AcquirePlan(PlanKind::kR2C, PlanPrecision::kSingle, n, pSrc, pDst);
    if (!forward.plan) return ippStsMemAllocErr;
    fftwf_execute_dft_r2c(AsPlan32(forward), const_cast<float *>(pSrc), reinterpret_cast<fftwf_complex *>(pDst));
    ReleasePlan(forward);
    const float one = 1.0f / float(n), two = 2.0f / float(n);
    const int half = n / 2;  // bins 1 .. (n - 1) / 2 are the positive frequencies
    pDst[0].re *= one;
    pDst[0].im *= one;
    for (int k = 1; k <= (n - 1) / 2; ++k) {
        pDst[k].re *= two;
        pDst[k].im *= two;
    }
    if (n % 2 == 0) {
        pDst[half].re *= one;
        pDst[half].im *= one;
    }
    if (half + 1 < n) std::memset(static_cast<void *>(pDst + half + 1), 0, size_t(n - half - 1) * sizeof(Ipp32fc));
    const Lease back = AcquirePlan(PlanKind::kC2CBackward, PlanPrecision::kSingle, n, pDst, pDst);
    if (!back.plan) return ippStsMemAllocErr;
    fftwf_execute_dft(AsPlan32(back), reinterpret_cast<fftwf_complex *>(pDst), reinterpret_cast<fftwf_complex *>(pDst));
    ReleasePlan(back);
    return ippStsNoErr;
}
