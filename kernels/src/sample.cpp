/* Resampling by an integer factor: ippsSampleUp and ippsSampleDown.
 *
 * Up: source sample i goes to pDst[factor * i + phase], every other output
 * is 0; *pDstLen = factor * srcLen and the phase is unchanged, since the
 * next block continues the same pattern.
 * Down: pDst[j] = pSrc[phase + factor * j] for every such index below
 * srcLen, *pDstLen = (srcLen + factor - 1 - phase) / factor, and *pPhase
 * becomes the index in the next block of its first sample.
 * Errors, in this order: null pointers, srcLen < 1, factor < 1
 * (ippStsSampleFactorErr), phase outside [0, factor)
 * (ippStsSamplePhaseErr); a factor * srcLen beyond int is a size error.
 *
 * Factor 2, the common case, is vectorised for 16- and 32-bit samples: a
 * sample and its zero form one lane of twice the width, which is the sample
 * zero-extended (phase 0) or shifted up (phase 1). Other factors and types
 * are plain loops: they are bound by the stores, which the compiler already
 * issues back to back, and down-sampling is a strided gather.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sample.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <limits.h>
#include <stdint.h>
#include <string.h>

#include "loops-inl.h"
#include "ipps.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/* A narrow sample to a wide lane holding it in the low (phase 0) or high
 * (phase 1) half; little-endian order puts the low half first. */
template <bool kHigh>
struct PairOp {
    template <class DD, class V>
    HWY_INLINE hn::Vec<DD> operator()(DD dd, V v) const
    {
        const auto w = hn::PromoteTo(dd, v);
        if constexpr (kHigh) return hn::ShiftLeft<sizeof(hn::TFromV<V>) * 8>(w);
        else return w;
    }
};

template <typename N, typename W>
HWY_INLINE void UpBy2(const void *src, void *dst, size_t len, int phase)
{
    using DW = hn::ScalableTag<W>;
    const hn::Rebind<N, DW> dn;
    const DW dw;
    const N *s = static_cast<const N *>(src);
    W *d = static_cast<W *>(dst);
    if (phase == 0) {
        PairOp<false> op;
        MapConvert(dn, dw, s, d, len, op);
    } else {
        PairOp<true> op;
        MapConvert(dn, dw, s, d, len, op);
    }
}

void Up2x16(const void *src, void *dst, size_t len, int phase) { UpBy2<uint16_t, uint32_t>(src, dst, len, phase); }
void Up2x32(const void *src, void *dst, size_t len, int phase) { UpBy2<uint32_t, uint64_t>(src, dst, len, phase); }

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {

HWY_EXPORT(Up2x16);
HWY_EXPORT(Up2x32);

template <typename T>
static IppStatus CheckSample(const T *src, int src_len, T *dst, int *dst_len, int factor, int *phase)
{
    if (src == nullptr || dst == nullptr || dst_len == nullptr || phase == nullptr) return ippStsNullPtrErr;
    if (src_len < 1) return ippStsSizeErr;
    if (factor < 1) return ippStsSampleFactorErr;
    if (*phase < 0 || *phase >= factor) return ippStsSamplePhaseErr;
    return ippStsNoErr;
}

template <typename T>
static IppStatus SampleUp(const T *src, int src_len, T *dst, int *dst_len, int factor, int *phase_io)
{
    IppStatus st = CheckSample(src, src_len, dst, dst_len, factor, phase_io);
    if (st != ippStsNoErr) return st;
    const long long out = (long long)factor * src_len;
    if (out > INT_MAX) return ippStsSizeErr;
    const int phase = *phase_io;
    const size_t n = size_t(src_len), f = size_t(factor);
    constexpr size_t kAlign = 2 * sizeof(T);  // the pair lane's own alignment
    if (f == 1) {
        memmove(dst, src, n * sizeof(T));
    } else if (f == 2 && sizeof(T) <= 4 && reinterpret_cast<uintptr_t>(dst) % kAlign == 0) {
        if constexpr (sizeof(T) == 2) HWY_DYNAMIC_DISPATCH(Up2x16)(src, dst, n, phase);
        else if constexpr (sizeof(T) == 4) HWY_DYNAMIC_DISPATCH(Up2x32)(src, dst, n, phase);
    } else {
        for (size_t i = 0; i < n; ++i) {
            T *block = dst + i * f;
            for (size_t k = 0; k < f; ++k) block[k] = T{};
            block[phase] = src[i];
        }
    }
    *dst_len = int(out);
    return ippStsNoErr;
}

/* Reads ahead of every write, so pDst may be pSrc. */
template <typename T>
static IppStatus SampleDown(const T *src, int src_len, T *dst, int *dst_len, int factor, int *phase_io)
{
    IppStatus st = CheckSample(src, src_len, dst, dst_len, factor, phase_io);
    if (st != ippStsNoErr) return st;
    const int phase = *phase_io;
    const int out = int(((long long)src_len + factor - 1 - phase) / factor);
    const size_t f = size_t(factor);
    const T *s = src + phase;
    for (size_t j = 0; j < size_t(out); ++j) dst[j] = s[j * f];
    *dst_len = out;
    *phase_io = int((long long)phase + (long long)out * factor - src_len);
    return ippStsNoErr;
}

}  // namespace orb_kernels

#define ORB_SAMPLE(name, T, fn)                                                        \
    IppStatus name(const T *pSrc, int srcLen, T *pDst, int *pDstLen, int factor, int *pPhase) \
    {                                                                                  \
        return orb_kernels::fn(pSrc, srcLen, pDst, pDstLen, factor, pPhase);           \
    }

extern "C" {
ORB_SAMPLE(ippsSampleUp_16s, Ipp16s, SampleUp)
ORB_SAMPLE(ippsSampleUp_32f, Ipp32f, SampleUp)
ORB_SAMPLE(ippsSampleUp_64f, Ipp64f, SampleUp)
ORB_SAMPLE(ippsSampleUp_64fc, Ipp64fc, SampleUp)
ORB_SAMPLE(ippsSampleDown_16s, Ipp16s, SampleDown)
ORB_SAMPLE(ippsSampleDown_32f, Ipp32f, SampleDown)
ORB_SAMPLE(ippsSampleDown_64f, Ipp64f, SampleDown)
ORB_SAMPLE(ippsSampleDown_64fc, Ipp64fc, SampleDown)
}

#undef ORB_SAMPLE
#endif  // HWY_ONCE
