/* Per-target loops whose output element type differs from the input's (see
 * dispatch.h for the rules).
 *
 * MapConvert applies op to an array of TFromD<DS> and writes an array of
 * TFromD<DD>. The two tags have the same number of lanes: the wider type is
 * a full vector and the narrower one a Rebind of it. The operation is a
 * callable object: hn::Vec<DD> op(DD dd, hn::Vec<DS> v). Padding lanes of a
 * partial vector hold 0.
 *
 * Non-temporal stores need whole destination vectors of at least 16 bytes
 * (x86 rounds narrower streams up to 16 bytes); narrower outputs, such as
 * bytes from floats on 128-bit targets, always use ordinary stores.
 */
#if defined(ORB_KERNELS_CONVERT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORB_KERNELS_CONVERT_INL_H_
#undef ORB_KERNELS_CONVERT_INL_H_
#else
#define ORB_KERNELS_CONVERT_INL_H_
#endif

#include <stdint.h>
#include <string.h>

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include "dispatch.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/* Converts the first r < Lanes(ds) elements through aligned buffers. */
template <class DS, class DD, class Op>
HWY_INLINE void ConvertPartial(DS ds, DD dd, const hn::TFromD<DS> *src, hn::TFromD<DD> *dst, size_t r, Op &op)
{
    using TS = hn::TFromD<DS>;
    using TD = hn::TFromD<DD>;
    HWY_ALIGN TS sbuf[hn::MaxLanes(DS())] = {};
    HWY_ALIGN TD dbuf[hn::MaxLanes(DD())];
    // memcpy: callers may view arrays through a type of the same size and
    // weaker alignment (floats as integer bits, pairs as one wider integer).
    memcpy(sbuf, src, r * sizeof(TS));
    hn::Store(op(dd, hn::Load(ds, sbuf)), dd, dbuf);
    memcpy(dst, dbuf, r * sizeof(TD));
}

template <class DS, class DD, class Op>
HWY_INLINE void MapConvert(DS ds, DD dd, const hn::TFromD<DS> *src, hn::TFromD<DD> *dst, size_t count, Op &op)
{
    using TD = hn::TFromD<DD>;
    constexpr bool kCanStream = hn::MaxLanes(DD()) * sizeof(TD) >= 16;
    const size_t n = hn::Lanes(ds);
    size_t i = 0;
    const uintptr_t addr = reinterpret_cast<uintptr_t>(dst);
    const size_t vbytes = n * sizeof(TD);
    if (kCanStream && vbytes >= 16 && count * sizeof(TD) >= StreamThresholdBytes() && addr % sizeof(TD) == 0) {
        // Never past the end: an output shorter than the way to the boundary.
        const size_t head = HWY_MIN(((vbytes - addr % vbytes) % vbytes) / sizeof(TD), count);
        if (head != 0) ConvertPartial(ds, dd, src, dst, head, op);
        for (i = head; i + n <= count; i += n) hn::Stream(op(dd, hn::LoadU(ds, src + i)), dd, dst + i);
        hwy::FlushStream();
    } else {
        for (; i + 2 * n <= count; i += 2 * n) {
            const auto a = hn::LoadU(ds, src + i);
            const auto b = hn::LoadU(ds, src + i + n);
            hn::StoreU(op(dd, a), dd, dst + i);
            hn::StoreU(op(dd, b), dd, dst + i + n);
        }
        if (i + n <= count) {
            hn::StoreU(op(dd, hn::LoadU(ds, src + i)), dd, dst + i);
            i += n;
        }
    }
    if (i < count) ConvertPartial(ds, dd, src + i, dst + i, count - i, op);
}

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
