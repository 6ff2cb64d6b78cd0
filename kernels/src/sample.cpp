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

#include "entry.h"
#include "ipps.h"
#include "loops-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

/* A narrow sample to a wide lane holding it in the low (phase 0) or high
 * (phase 1) half; little-endian order puts the low half first. */
template <bool kHigh>
struct PairOp {
    template <class DW, class V>
    HWY_INLINE hn::Vec<DW> operator()(DW dw, V v) const
    {
        const auto w = hn::PromoteTo(dw, hn::BitCast(hn::RebindToUnsigned<hn::DFromV<V>>(), v));
        if constexpr (kHigh) return hn::ShiftLeft<sizeof(hn::TFromV<V>) * 8>(w);
        else return w;
    }
};

/* dst holds len pairs of T, written as lanes of W (aligned to W). */
template <typename T, typename W>
HWY_INLINE void UpBy2(const T *src, void *dst, size_t len, int phase)
{
    const Out<W> out{static_cast<W *>(dst)};
    if (phase == 0) {
        PairOp<false> op;
        Zip(Tag<W>(), len, op, out, In<T>{src});
    } else {
        PairOp<true> op;
        Zip(Tag<W>(), len, op, out, In<T>{src});
    }
}

void Up2x16(const Ipp16s *src, void *dst, size_t len, int phase) { UpBy2<Ipp16s, uint32_t>(src, dst, len, phase); }
void Up2x32(const Ipp32f *src, void *dst, size_t len, int phase) { UpBy2<Ipp32f, uint64_t>(src, dst, len, phase); }

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {

HWY_EXPORT(Up2x16);
HWY_EXPORT(Up2x32);

namespace {

/* The arguments, then the factor and the phase. */
template <typename T>
IppStatus CheckSample(const T *src, int src_len, T *dst, int *dst_len, int factor, int *phase)
{
    const IppStatus st = CheckArgs(src_len, src, dst, dst_len, phase);
    if (st != ippStsNoErr) return st;
    if (factor < 1) return ippStsSampleFactorErr;
    return Refuse(*phase < 0 || *phase >= factor, ippStsSamplePhaseErr);
}

template <typename T>
IppStatus SampleUp(const T *src, int src_len, T *dst, int *dst_len, int factor, int *phase_io)
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
IppStatus SampleDown(const T *src, int src_len, T *dst, int *dst_len, int factor, int *phase_io)
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

}  // namespace
}  // namespace orb_kernels

using orb_kernels::SampleDown;
using orb_kernels::SampleUp;

extern "C" {
#define ORB_SAMPLE_PARAMS(T) const T *pSrc, int srcLen, T *pDst, int *pDstLen, int factor, int *pPhase
#define ORB_SAMPLE_ARGS pSrc, srcLen, pDst, pDstLen, factor, pPhase
IppStatus ippsSampleUp_16s(ORB_SAMPLE_PARAMS(Ipp16s)) { return SampleUp(ORB_SAMPLE_ARGS); }
IppStatus ippsSampleUp_32f(ORB_SAMPLE_PARAMS(Ipp32f)) { return SampleUp(ORB_SAMPLE_ARGS); }
IppStatus ippsSampleUp_64f(ORB_SAMPLE_PARAMS(Ipp64f)) { return SampleUp(ORB_SAMPLE_ARGS); }
IppStatus ippsSampleUp_64fc(ORB_SAMPLE_PARAMS(Ipp64fc)) { return SampleUp(ORB_SAMPLE_ARGS); }
IppStatus ippsSampleDown_16s(ORB_SAMPLE_PARAMS(Ipp16s)) { return SampleDown(ORB_SAMPLE_ARGS); }
IppStatus ippsSampleDown_32f(ORB_SAMPLE_PARAMS(Ipp32f)) { return SampleDown(ORB_SAMPLE_ARGS); }
IppStatus ippsSampleDown_64f(ORB_SAMPLE_PARAMS(Ipp64f)) { return SampleDown(ORB_SAMPLE_ARGS); }
IppStatus ippsSampleDown_64fc(ORB_SAMPLE_PARAMS(Ipp64fc)) { return SampleDown(ORB_SAMPLE_ARGS); }
#undef ORB_SAMPLE_PARAMS
#undef ORB_SAMPLE_ARGS
}
#endif  // HWY_ONCE
