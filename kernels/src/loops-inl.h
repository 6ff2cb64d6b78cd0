/* Per-target element loops of the kernels (see dispatch.h for the rules).
 *
 * Map applies a vector operation to an array, MapPairs to an array of
 * interleaved complex values. The operation is a callable object:
 *   Map:      hn::Vec<D> op(D d, hn::Vec<D> x)
 *   MapPairs: void op(D d, hn::Vec<D>& re, hn::Vec<D>& im)
 * and may keep state, such as masks of domain faults seen so far. Padding
 * lanes of a partial vector hold 1 (Map) or 1 + 0i (MapPairs), which no
 * operation treats as a fault.
 */
#if defined(ORB_KERNELS_LOOPS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORB_KERNELS_LOOPS_INL_H_
#undef ORB_KERNELS_LOOPS_INL_H_
#else
#define ORB_KERNELS_LOOPS_INL_H_
#endif

#include <stdint.h>

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include "dispatch.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/* Applies op to the first r < Lanes(d) elements through an aligned buffer. */
template <class D, class Op>
HWY_INLINE void MapPartial(D d, const hn::TFromD<D> *src, hn::TFromD<D> *dst, size_t r, Op &op)
{
    using T = hn::TFromD<D>;
    HWY_ALIGN T buf[hn::MaxLanes(D())];
    const size_t n = hn::Lanes(d);
    for (size_t k = 0; k < n; ++k) buf[k] = k < r ? src[k] : T(1);
    hn::Store(op(d, hn::Load(d, buf)), d, buf);
    for (size_t k = 0; k < r; ++k) dst[k] = buf[k];
}

template <class D, class Op>
HWY_INLINE void Map(D d, const hn::TFromD<D> *src, hn::TFromD<D> *dst, size_t count, Op &op)
{
    using T = hn::TFromD<D>;
    const size_t n = hn::Lanes(d);
    size_t i = 0;
    const uintptr_t addr = reinterpret_cast<uintptr_t>(dst);
    if (src != dst && count * sizeof(T) >= StreamThresholdBytes() && addr % sizeof(T) == 0) {
        // Bring dst to a vector boundary, then stream whole vectors.
        const size_t vbytes = n * sizeof(T);
        // Never past the end: an output shorter than the way to the boundary.
        const size_t head = HWY_MIN(((vbytes - addr % vbytes) % vbytes) / sizeof(T), count);
        if (head != 0) MapPartial(d, src, dst, head, op);
        for (i = head; i + n <= count; i += n) hn::Stream(op(d, hn::LoadU(d, src + i)), d, dst + i);
        hwy::FlushStream();
    } else {
        for (; i + 2 * n <= count; i += 2 * n) {
            const auto a = hn::LoadU(d, src + i);
            const auto b = hn::LoadU(d, src + i + n);
            hn::StoreU(op(d, a), d, dst + i);
            hn::StoreU(op(d, b), d, dst + i + n);
        }
        if (i + n <= count) {
            hn::StoreU(op(d, hn::LoadU(d, src + i)), d, dst + i);
            i += n;
        }
    }
    if (i < count) MapPartial(d, src + i, dst + i, count - i, op);
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
