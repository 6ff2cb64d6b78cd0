/* Per-target element loops over several arrays (see dispatch.h for the rules).
 *
 * Zip(d, count, op, out, in...) hands op one vector from each input and
 * stores what op returns through out, for count elements:
 *
 *   value = op(d, x...)
 *
 * Inputs and outputs are adaptors that say how an array is read or written
 * and what op sees of it:
 *   In<T>        real array                         hn::Vec<D>
 *   InZero<T>    absent operand, read as zeros      hn::Vec<D>
 *   InPairs<T>   interleaved complex, split         Cx<hn::Vec<D>>
 *   Out<T>       real array                         hn::Vec<D>
 *   OutPairs<T>  interleaved complex                Cx<hn::Vec<D>>
 *   OutTwo<T>    two real arrays                    Two<hn::Vec<D>>
 * count is in elements of those arrays (a complex value counts once). Ops
 * may keep state (fault masks); padding lanes of a partial vector hold 1
 * (real) or 1 + 0i (complex), which no operation treats as a fault.
 * Outputs of StreamThresholdBytes() or more are streamed, with the inputs
 * prefetched ahead of the loads.
 *
 * Adaptors with their own access pattern (a reversed read, say) need only
 * provide the same members: Load, LoadTail and Prefetch for inputs; Store,
 * StoreTail, Head and kBytes for outputs.
 */
#if defined(ORB_KERNELS_BINARY_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORB_KERNELS_BINARY_INL_H_
#undef ORB_KERNELS_BINARY_INL_H_
#else
#define ORB_KERNELS_BINARY_INL_H_
#endif

#include <stddef.h>
#include <stdint.h>

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include "dispatch.h"
#include "ipptypes.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <class V>
struct Cx {
    V re, im;
};

template <class V>
struct Two {
    V a, b;
};

/* The doubles of an interleaved complex array. */
HWY_INLINE const double *Parts(const Ipp64fc *p) { return reinterpret_cast<const double *>(p); }
HWY_INLINE double *Parts(Ipp64fc *p) { return reinterpret_cast<double *>(p); }

/* How far ahead of the loads the streaming loop prefetches its inputs: at
 * the sizes that stream, the hardware prefetchers alone leave loads
 * waiting on memory when each vector takes real work (a square root). */
constexpr ptrdiff_t kPrefetchBytes = 2048;

/* Prefetches the cache lines of `bytes` bytes from `offset` bytes past p
 * (in address arithmetic: the lines may lie outside the array, which a
 * prefetch does not mind). */
HWY_INLINE void PrefetchAt(const void *p, ptrdiff_t offset, size_t bytes)
{
    const uintptr_t a = reinterpret_cast<uintptr_t>(p) + uintptr_t(offset);
    for (size_t b = 0; b < bytes; b += 64) hwy::Prefetch(reinterpret_cast<const char *>(a + b));
}

/* Head() of an output that can never reach vector alignment. */
constexpr size_t kNoHead = ~size_t(0);

/* Elements before p + k is aligned to a whole vector of D, where each
 * element occupies `bytes` (a multiple of the lane size); kNoHead if no
 * k < Lanes(d) gets there. */
template <class D>
HWY_INLINE size_t HeadOf(D d, const void *p, size_t bytes)
{
    const uintptr_t a = reinterpret_cast<uintptr_t>(p);
    const size_t vbytes = hn::Lanes(d) * sizeof(hn::TFromD<D>);
    for (size_t k = 0; k < hn::Lanes(d); ++k)
        if ((a + k * bytes) % vbytes == 0) return k;
    return kNoHead;
}

template <typename T>
struct In {
    const T *p;
    template <class D>
    HWY_INLINE hn::Vec<D> Load(D d, size_t i) const
    {
        return hn::LoadU(d, p + i);
    }
    template <class D>
    HWY_INLINE void Prefetch(D d, size_t i) const
    {
        PrefetchAt(p + i, kPrefetchBytes, hn::Lanes(d) * sizeof(T));
    }
    template <class D>
    HWY_INLINE hn::Vec<D> LoadTail(D d, size_t i, size_t r) const
    {
        HWY_ALIGN T buf[hn::MaxLanes(D())];
        for (size_t k = 0; k < hn::Lanes(d); ++k) buf[k] = k < r ? p[i + k] : T(1);
        return hn::Load(d, buf);
    }
};

template <typename T>
struct InZero {
    template <class D>
    HWY_INLINE hn::Vec<D> Load(D d, size_t) const
    {
        return hn::Zero(d);
    }
    template <class D>
    HWY_INLINE hn::Vec<D> LoadTail(D d, size_t, size_t) const
    {
        return hn::Zero(d);
    }
    template <class D>
    HWY_INLINE void Prefetch(D, size_t) const
    {
    }
};

template <typename T>
struct InPairs {
    const T *p;
    template <class D>
    HWY_INLINE Cx<hn::Vec<D>> Load(D d, size_t i) const
    {
        Cx<hn::Vec<D>> c;
        hn::LoadInterleaved2(d, p + 2 * i, c.re, c.im);
        return c;
    }
    template <class D>
    HWY_INLINE void Prefetch(D d, size_t i) const
    {
        PrefetchAt(p + 2 * i, kPrefetchBytes, 2 * hn::Lanes(d) * sizeof(T));
    }
    template <class D>
    HWY_INLINE Cx<hn::Vec<D>> LoadTail(D d, size_t i, size_t r) const
    {
        HWY_ALIGN T buf[2 * hn::MaxLanes(D())];
        for (size_t k = 0; k < hn::Lanes(d); ++k) {
            buf[2 * k] = k < r ? p[2 * (i + k)] : T(1);
            buf[2 * k + 1] = k < r ? p[2 * (i + k) + 1] : T(0);
        }
        Cx<hn::Vec<D>> c;
        hn::LoadInterleaved2(d, buf, c.re, c.im);
        return c;
    }
};

template <typename T>
struct Out {
    T *p;
    static constexpr size_t kBytes = sizeof(T);
    template <class D>
    HWY_INLINE size_t Head(D d) const
    {
        return HeadOf(d, p, sizeof(T));
    }
    template <class D>
    HWY_INLINE void Store(D d, size_t i, hn::Vec<D> v, bool stream) const
    {
        if (stream)
            hn::Stream(v, d, p + i);
        else
            hn::StoreU(v, d, p + i);
    }
    template <class D>
    HWY_INLINE void StoreTail(D d, size_t i, size_t r, hn::Vec<D> v) const
    {
        HWY_ALIGN T buf[hn::MaxLanes(D())];
        hn::Store(v, d, buf);
        for (size_t k = 0; k < r; ++k) p[i + k] = buf[k];
    }
};

template <typename T>
struct OutPairs {
    T *p;
    static constexpr size_t kBytes = 2 * sizeof(T);
    template <class D>
    HWY_INLINE size_t Head(D d) const
    {
        return HeadOf(d, p, 2 * sizeof(T));
    }
    template <class D>
    HWY_INLINE void Store(D d, size_t i, Cx<hn::Vec<D>> v, bool stream) const
    {
        if (!stream) {
            hn::StoreInterleaved2(v.re, v.im, d, p + 2 * i);
            return;
        }
        // Interleave in L1, then stream the two aligned vectors.
        HWY_ALIGN T buf[2 * hn::MaxLanes(D())];
        const size_t n = hn::Lanes(d);
        hn::StoreInterleaved2(v.re, v.im, d, buf);
        hn::Stream(hn::Load(d, buf), d, p + 2 * i);
        hn::Stream(hn::Load(d, buf + n), d, p + 2 * i + n);
    }
    template <class D>
    HWY_INLINE void StoreTail(D d, size_t i, size_t r, Cx<hn::Vec<D>> v) const
    {
        HWY_ALIGN T buf[2 * hn::MaxLanes(D())];
        hn::StoreInterleaved2(v.re, v.im, d, buf);
        for (size_t k = 0; k < 2 * r; ++k) p[2 * i + k] = buf[k];
    }
};

template <typename T>
struct OutTwo {
    T *a, *b;
    static constexpr size_t kBytes = 2 * sizeof(T);
    template <class D>
    HWY_INLINE size_t Head(D d) const
    {
        const size_t h = HeadOf(d, a, sizeof(T));
        return h == HeadOf(d, b, sizeof(T)) ? h : kNoHead;
    }
    template <class D>
    HWY_INLINE void Store(D d, size_t i, Two<hn::Vec<D>> v, bool stream) const
    {
        Out<T>{a}.Store(d, i, v.a, stream);
        Out<T>{b}.Store(d, i, v.b, stream);
    }
    template <class D>
    HWY_INLINE void StoreTail(D d, size_t i, size_t r, Two<hn::Vec<D>> v) const
    {
        Out<T>{a}.StoreTail(d, i, r, v.a);
        Out<T>{b}.StoreTail(d, i, r, v.b);
    }
};

/* Every input element is loaded before the output element with the same
 * index is stored, so an output may be the same array as an input. */
template <class D, class Op, class O, class... I>
HWY_INLINE void Zip(D d, size_t count, Op &op, const O &out, const I &...in)
{
    const size_t n = hn::Lanes(d);
    size_t i = 0;
    const size_t head = out.Head(d);
    const bool stream = count * O::kBytes >= StreamThresholdBytes() && head != kNoHead;
    // Streaming needs the destination at a vector boundary; longer outputs
    // go there too, as stores that straddle cache lines cost more than the
    // one partial vector.
    if (head != kNoHead && head != 0 && (stream || count >= 8 * n)) {
        i = HWY_MIN(head, count);
        out.StoreTail(d, 0, i, op(d, in.LoadTail(d, 0, i)...));
    }
    if (stream) {
        for (; i + n <= count; i += n) {
            (in.Prefetch(d, i), ...);
            out.Store(d, i, op(d, in.Load(d, i)...), true);
        }
        hwy::FlushStream();
    } else {
        for (; i + 2 * n <= count; i += 2 * n) {
            const auto v0 = op(d, in.Load(d, i)...);
            const auto v1 = op(d, in.Load(d, i + n)...);
            out.Store(d, i, v0, false);
            out.Store(d, i + n, v1, false);
        }
        if (i + n <= count) {
            out.Store(d, i, op(d, in.Load(d, i)...), false);
            i += n;
        }
    }
    if (i < count) out.StoreTail(d, i, count - i, op(d, in.LoadTail(d, i, count - i)...));
}

/* True when any lane of a fault mask kept as a vector is set. */
template <class D>
HWY_INLINE bool AnySet(D d, hn::Vec<D> flags)
{
    return !hn::AllFalse(d, hn::MaskFromVec(flags));
}

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
