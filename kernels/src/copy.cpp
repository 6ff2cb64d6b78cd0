/* Copy (no overlap), move (overlap in either direction), set and zero.
 *
 * Copy, move and zero are the C library's memcpy, memmove and memset: they
 * run at the memory's speed and switch to non-temporal stores for very large
 * blocks themselves. Set fills with vector stores, streaming outputs of at
 * least StreamThresholdBytes(); a complex value is a two-lane pattern.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "copy.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <hwy/cache_control.h>
#include <string.h>

#include "ipps.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/* Writes count elements repeating pattern[0, period). Vector stores start
 * at multiples of the period, so each begins the pattern afresh. */
template <typename T>
HWY_INLINE void Fill(const T *pattern, size_t period, T *dst, size_t count)
{
    const hn::ScalableTag<T> d;
    const size_t n = hn::Lanes(d);
    size_t i = 0;
    if (n % period != 0) {  // the one-lane target
        for (; i < count; ++i) dst[i] = pattern[i % period];
        return;
    }
    HWY_ALIGN T lanes[hn::MaxLanes(d)];
    for (size_t k = 0; k < n; ++k) lanes[k] = pattern[k % period];
    const auto v = hn::Load(d, lanes);
    const uintptr_t addr = reinterpret_cast<uintptr_t>(dst);
    const size_t vbytes = n * sizeof(T);
    const size_t head = ((vbytes - addr % vbytes) % vbytes) / sizeof(T);
    if (count * sizeof(T) >= StreamThresholdBytes() && addr % sizeof(T) == 0 && head % period == 0 &&
        head + n <= count) {
        for (; i < head; ++i) dst[i] = pattern[i % period];
        for (; i + n <= count; i += n) hn::Stream(v, d, dst + i);
        hwy::FlushStream();
    } else {
        for (; i + 2 * n <= count; i += 2 * n) {
            hn::StoreU(v, d, dst + i);
            hn::StoreU(v, d, dst + i + n);
        }
        if (i + n <= count) {
            hn::StoreU(v, d, dst + i);
            i += n;
        }
    }
    for (; i < count; ++i) dst[i] = pattern[i % period];
}

template <typename T>
HWY_INLINE IppStatus SetT(T val, T *dst, size_t len)
{
    Fill(&val, 1, dst, len);
    return ippStsNoErr;
}

IppStatus Set16s(Ipp16s val, Ipp16s *dst, size_t len) { return SetT(val, dst, len); }
IppStatus Set32s(Ipp32s val, Ipp32s *dst, size_t len) { return SetT(val, dst, len); }
IppStatus Set64s(Ipp64s val, Ipp64s *dst, size_t len) { return SetT(val, dst, len); }
IppStatus Set32f(Ipp32f val, Ipp32f *dst, size_t len) { return SetT(val, dst, len); }
IppStatus Set64f(Ipp64f val, Ipp64f *dst, size_t len) { return SetT(val, dst, len); }
IppStatus Set64fc(Ipp64fc val, Ipp64fc *dst, size_t len)
{
    const double pattern[2] = {val.re, val.im};
    Fill(pattern, 2, &dst->re, 2 * len);
    return ippStsNoErr;
}

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {

HWY_EXPORT(Set16s);
HWY_EXPORT(Set32s);
HWY_EXPORT(Set64s);
HWY_EXPORT(Set32f);
HWY_EXPORT(Set64f);
HWY_EXPORT(Set64fc);

}  // namespace orb_kernels

#define ORB_COPY(name, T, fn)                                   \
    IppStatus name(const T *pSrc, T *pDst, int len)             \
    {                                                           \
        if (pSrc == nullptr || pDst == nullptr) return ippStsNullPtrErr; \
        if (len < 1) return ippStsSizeErr;                      \
        fn(pDst, pSrc, size_t(len) * sizeof(T));                \
        return ippStsNoErr;                                     \
    }

#define ORB_SET(name, T, worker)                                               \
    IppStatus name(T val, T *pDst, int len)                                    \
    {                                                                          \
        if (pDst == nullptr) return ippStsNullPtrErr;                          \
        if (len < 1) return ippStsSizeErr;                                     \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker)(val, pDst, size_t(len)); \
    }

/* All-zero bytes are +0 for the floating types too. */
#define ORB_ZERO(name, T)                                   \
    IppStatus name(T *pDst, int len)                        \
    {                                                       \
        if (pDst == nullptr) return ippStsNullPtrErr;       \
        if (len < 1) return ippStsSizeErr;                  \
        memset(pDst, 0, size_t(len) * sizeof(T));           \
        return ippStsNoErr;                                 \
    }

extern "C" {
ORB_COPY(ippsCopy_16s, Ipp16s, memcpy)
ORB_COPY(ippsCopy_32s, Ipp32s, memcpy)
ORB_COPY(ippsCopy_64s, Ipp64s, memcpy)
ORB_COPY(ippsCopy_32f, Ipp32f, memcpy)
ORB_COPY(ippsCopy_64f, Ipp64f, memcpy)
ORB_COPY(ippsCopy_64fc, Ipp64fc, memcpy)
ORB_COPY(ippsMove_16s, Ipp16s, memmove)
ORB_COPY(ippsMove_32s, Ipp32s, memmove)
ORB_COPY(ippsMove_64s, Ipp64s, memmove)
ORB_COPY(ippsMove_32f, Ipp32f, memmove)
ORB_COPY(ippsMove_64f, Ipp64f, memmove)
ORB_COPY(ippsMove_64fc, Ipp64fc, memmove)

IppStatus ippsSet_8u(Ipp8u val, Ipp8u *pDst, int len)
{
    if (pDst == nullptr) return ippStsNullPtrErr;
    if (len < 1) return ippStsSizeErr;
    memset(pDst, val, size_t(len));
    return ippStsNoErr;
}
ORB_SET(ippsSet_16s, Ipp16s, Set16s)
ORB_SET(ippsSet_32s, Ipp32s, Set32s)
ORB_SET(ippsSet_64s, Ipp64s, Set64s)
ORB_SET(ippsSet_32f, Ipp32f, Set32f)
ORB_SET(ippsSet_64f, Ipp64f, Set64f)
ORB_SET(ippsSet_64fc, Ipp64fc, Set64fc)

ORB_ZERO(ippsZero_8u, Ipp8u)
ORB_ZERO(ippsZero_16s, Ipp16s)
ORB_ZERO(ippsZero_32s, Ipp32s)
ORB_ZERO(ippsZero_64s, Ipp64s)
ORB_ZERO(ippsZero_32f, Ipp32f)
ORB_ZERO(ippsZero_64f, Ipp64f)
ORB_ZERO(ippsZero_64fc, Ipp64fc)
}

#undef ORB_COPY
#undef ORB_SET
#undef ORB_ZERO
#endif  // HWY_ONCE
