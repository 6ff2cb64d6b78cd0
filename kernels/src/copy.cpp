/* Copy (no overlap), move (overlap in either direction), set and zero.
 *
 * Copy, move and zero are the C library's memcpy, memmove and memset: they
 * run at the memory's speed and switch to non-temporal stores for very large
 * blocks themselves. Set stores one vector of the value over and over with
 * Zip, which streams outputs of at least StreamThresholdBytes(); complex
 * values are stored as pairs, so the parts never slip a lane.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "copy.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <string.h>

#include "entry.h"
#include "ipps.h"
#include "loops-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {

/* A Zip op without inputs: the same value every time. */
template <class V>
struct FillOp {
    V v;
    template <class D>
    HWY_INLINE V operator()(D) const { return v; }
};

template <typename T>
HWY_INLINE IppStatus Fill(T val, T *dst, size_t len)
{
    const Tag<T> d;
    FillOp<hn::Vec<Tag<T>>> op{hn::Set(d, val)};
    Zip(d, len, op, Out<T>{dst});
    return ippStsNoErr;
}

IppStatus Set_16s(Ipp16s val, Ipp16s *dst, size_t len) { return Fill(val, dst, len); }
IppStatus Set_32s(Ipp32s val, Ipp32s *dst, size_t len) { return Fill(val, dst, len); }
IppStatus Set_64s(Ipp64s val, Ipp64s *dst, size_t len) { return Fill(val, dst, len); }
IppStatus Set_32f(Ipp32f val, Ipp32f *dst, size_t len) { return Fill(val, dst, len); }
IppStatus Set_64f(Ipp64f val, Ipp64f *dst, size_t len) { return Fill(val, dst, len); }
IppStatus Set_64fc(Ipp64fc val, Ipp64fc *dst, size_t len)
{
    const Tag<double> d;
    FillOp<Cx<hn::Vec<Tag<double>>>> op{{hn::Set(d, val.re), hn::Set(d, val.im)}};
    Zip(d, len, op, OutPairs<double>{Parts(dst)});
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
namespace {

/* All-zero bytes are +0 for the floating types too. */
template <typename T>
IppStatus Clear(T *dst, int len)
{
    const IppStatus st = CheckArgs(len, dst);
    if (st == ippStsNoErr) memset(dst, 0, size_t(len) * sizeof(T));
    return st;
}

}  // namespace
}  // namespace orb_kernels

using orb_kernels::Clear;
using orb_kernels::CopyBlock;

extern "C" {
IppStatus ippsCopy_16s(const Ipp16s *pSrc, Ipp16s *pDst, int len) { return CopyBlock(pSrc, pDst, len, memcpy); }
IppStatus ippsCopy_32s(const Ipp32s *pSrc, Ipp32s *pDst, int len) { return CopyBlock(pSrc, pDst, len, memcpy); }
IppStatus ippsCopy_64s(const Ipp64s *pSrc, Ipp64s *pDst, int len) { return CopyBlock(pSrc, pDst, len, memcpy); }
IppStatus ippsCopy_32f(const Ipp32f *pSrc, Ipp32f *pDst, int len) { return CopyBlock(pSrc, pDst, len, memcpy); }
IppStatus ippsCopy_64f(const Ipp64f *pSrc, Ipp64f *pDst, int len) { return CopyBlock(pSrc, pDst, len, memcpy); }
IppStatus ippsCopy_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len) { return CopyBlock(pSrc, pDst, len, memcpy); }
IppStatus ippsMove_16s(const Ipp16s *pSrc, Ipp16s *pDst, int len) { return CopyBlock(pSrc, pDst, len, memmove); }
IppStatus ippsMove_32s(const Ipp32s *pSrc, Ipp32s *pDst, int len) { return CopyBlock(pSrc, pDst, len, memmove); }
IppStatus ippsMove_64s(const Ipp64s *pSrc, Ipp64s *pDst, int len) { return CopyBlock(pSrc, pDst, len, memmove); }
IppStatus ippsMove_32f(const Ipp32f *pSrc, Ipp32f *pDst, int len) { return CopyBlock(pSrc, pDst, len, memmove); }
IppStatus ippsMove_64f(const Ipp64f *pSrc, Ipp64f *pDst, int len) { return CopyBlock(pSrc, pDst, len, memmove); }
IppStatus ippsMove_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len) { return CopyBlock(pSrc, pDst, len, memmove); }

IppStatus ippsSet_8u(Ipp8u val, Ipp8u *pDst, int len)
{
    const IppStatus st = orb_kernels::CheckArgs(len, pDst);
    if (st == ippStsNoErr) memset(pDst, val, size_t(len));
    return st;
}

IppStatus ippsZero_8u(Ipp8u *pDst, int len) { return Clear(pDst, len); }
IppStatus ippsZero_16s(Ipp16s *pDst, int len) { return Clear(pDst, len); }
IppStatus ippsZero_32s(Ipp32s *pDst, int len) { return Clear(pDst, len); }
IppStatus ippsZero_64s(Ipp64s *pDst, int len) { return Clear(pDst, len); }
IppStatus ippsZero_32f(Ipp32f *pDst, int len) { return Clear(pDst, len); }
IppStatus ippsZero_64f(Ipp64f *pDst, int len) { return Clear(pDst, len); }
IppStatus ippsZero_64fc(Ipp64fc *pDst, int len) { return Clear(pDst, len); }
}

ORB_SET(Set_16s, Ipp16s)
ORB_SET(Set_32s, Ipp32s)
ORB_SET(Set_64s, Ipp64s)
ORB_SET(Set_32f, Ipp32f)
ORB_SET(Set_64f, Ipp64f)
ORB_SET(Set_64fc, Ipp64fc)
#endif  // HWY_ONCE
