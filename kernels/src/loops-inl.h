/* Per-target element loops of the kernels (see dispatch.h for the rules).
 *
 * Map applies a vector operation to an array, MapConvert one whose output
 * element type differs from its input's, MapPairs one to an array of
 * interleaved complex values. The operation is a callable object:
 *   Map:        hn::Vec<D> op(D d, hn::Vec<D> x)
 *   MapConvert: hn::Vec<DD> op(DD dd, hn::Vec<DS> x)
 *   MapPairs:   void op(D d, hn::Vec<D>& re, hn::Vec<D>& im)
 * and may keep state, such as masks of domain faults seen so far. Padding
 * lanes of a partial vector hold 1 (Map) or 1 + 0i (MapPairs), which no
 * operation treats as a fault, and 0 (MapConvert).
 */
#if defined(ORB_KERNELS_LOOPS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORB_KERNELS_LOOPS_INL_H_
#undef ORB_KERNELS_LOOPS_INL_H_
#else
#define ORB_KERNELS_LOOPS_INL_H_
#endif

#include <stdint.h>
#include <string.h>

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include "dispatch.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/* Applies op to the first r < Lanes(ds) elements through aligned buffers;
 * the source's padding lanes hold pad. memcpy, because callers may view
 * arrays through a type of the same size and weaker alignment (floats as
 * integer bits, pairs as one wider integer). */
template <class DS, class DD, class Op>
HWY_INLINE void MapPartial(DS ds, DD dd, const hn::TFromD<DS> *src, hn::TFromD<DD> *dst, size_t r, Op &op,
                           hn::TFromD<DS> pad)
{
    using TS = hn::TFromD<DS>;
    using TD = hn::TFromD<DD>;
    HWY_ALIGN TS sbuf[hn::MaxLanes(DS())];
    HWY_ALIGN TD dbuf[hn::MaxLanes(DD())];
    for (size_t k = 0; k < hn::Lanes(ds); ++k) sbuf[k] = pad;
    memcpy(sbuf, src, r * sizeof(TS));
    hn::Store(op(dd, hn::Load(ds, sbuf)), dd, dbuf);
    memcpy(dst, dbuf, r * sizeof(TD));
}

/* Applies op to an array of TFromD<DS>, writing an array of TFromD<DD>; the
 * two tags have the same number of lanes (the narrower type a Rebind of the
 * wider). Padding lanes of a partial vector hold pad. Non-temporal stores
 * need whole destination vectors of at least 16 bytes (x86 rounds narrower
 * streams up), and are not used in place, where they measured slower. */
template <class DS, class DD, class Op>
HWY_INLINE void MapConvert(DS ds, DD dd, const hn::TFromD<DS> *src, hn::TFromD<DD> *dst, size_t count, Op &op,
                           hn::TFromD<DS> pad = hn::TFromD<DS>(0))
{
    using TD = hn::TFromD<DD>;
    constexpr bool kCanStream = hn::MaxLanes(DD()) * sizeof(TD) >= 16;
    const size_t n = hn::Lanes(ds);
    size_t i = 0;
    const uintptr_t addr = reinterpret_cast<uintptr_t>(dst);
    const size_t vbytes = n * sizeof(TD);
    if (kCanStream && vbytes >= 16 && static_cast<const void *>(src) != static_cast<const void *>(dst) &&
        count * sizeof(TD) >= StreamThresholdBytes() && addr % sizeof(TD) == 0) {
        // Bring dst to a vector boundary (never past the end of a short
        // output), then stream whole vectors.
        const size_t head = HWY_MIN(((vbytes - addr % vbytes) % vbytes) / sizeof(TD), count);
        if (head != 0) MapPartial(ds, dd, src, dst, head, op, pad);
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
    if (i < count) MapPartial(ds, dd, src + i, dst + i, count - i, op, pad);
}

/* Same element type in and out; padding lanes hold 1, which no operation
 * treats as a domain fault. */
template <class D, class Op>
HWY_INLINE void Map(D d, const hn::TFromD<D> *src, hn::TFromD<D> *dst, size_t count, Op &op)
{
    MapConvert(d, d, src, dst, count, op, hn::TFromD<D>(1));
}

/* Complex arrays: count (re, im) pairs, handed to op deinterleaved. */
template <class D, class Op>
HWY_INLINE void MapPairs(D d, const hn::TFromD<D> *src, hn::TFromD<D> *dst, size_t count, Op &op)
{
    using T = hn::TFromD<D>;
    const size_t n = hn::Lanes(d);
    hn::Vec<D> re, im;
    size_t i = 0;
    for (; i + n <= count; i += n) {
        hn::LoadInterleaved2(d, src + 2 * i, re, im);
        op(d, re, im);
        hn::StoreInterleaved2(re, im, d, dst + 2 * i);
    }
    if (i == count) return;
    HWY_ALIGN T buf[2 * hn::MaxLanes(D())];
    const size_t r = count - i;
    for (size_t k = 0; k < n; ++k) {
        buf[2 * k] = k < r ? src[2 * (i + k)] : T(1);
        buf[2 * k + 1] = k < r ? src[2 * (i + k) + 1] : T(0);
    }
    hn::LoadInterleaved2(d, buf, re, im);
    op(d, re, im);
    hn::StoreInterleaved2(re, im, d, buf);
    for (size_t k = 0; k < 2 * r; ++k) dst[2 * i + k] = buf[k];
}

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
