/* The per-target element loop of the kernels (see dispatch.h for the rules).
 *
 * Zip(d, count, op, out, in...) hands op one vector from each input and
 * stores what op returns through out, for count elements:
 *
 *   value = op(d, x...)
 *
 * Inputs and outputs are adaptors that say how an array is read or written
 * and what op sees of it. Each works on vectors of its own element type with
 * the lane count of d, so d is the tag of what op returns and a conversion
 * reads In<S> into a Rebind of d:
 *   In<T>        real array                         hn::Vec<Rebind<T, D>>
 *   InZero<T>    absent operand, read as zeros      hn::Vec<Rebind<T, D>>
 *   InPairs<T>   interleaved complex, split         Cx<hn::Vec<D>>
 *   Out<T>       real array                         hn::Vec<Rebind<T, D>>
 *   OutPairs<T>  interleaved complex                Cx<hn::Vec<D>>
 *   OutTwo<T>    two real arrays                    Two<hn::Vec<D>>
 * count is in elements of those arrays (a complex value counts once). Ops
 * may keep state (fault masks); padding lanes of a partial vector hold 1
 * (real) or 1 + 0i (complex), which no operation treats as a fault.
 * Outputs of StreamThresholdBytes() or more that overwrite no input are
 * streamed, with the inputs prefetched ahead of the loads.
 *
 * Adaptors with their own access pattern (a reversed read, say) need only
 * provide the same members: Base, Load, LoadTail and Prefetch for inputs;
 * Writes, Store, StoreTail, Head and kBytes for outputs.
 *
 * After Zip come the shapes most workers take: Map, Pairwise, WithConst and
 * MapPairs.
 */
#if defined(ORB_KERNELS_LOOPS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORB_KERNELS_LOOPS_INL_H_
#undef ORB_KERNELS_LOOPS_INL_H_
#else
#define ORB_KERNELS_LOOPS_INL_H_
#endif

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include "dispatch.h"
#include "ipptypes.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <typename T>
using Tag = hn::ScalableTag<T>;

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

/* Elements before p + k is aligned to a whole vector of `lanes` lanes of T,
 * each element occupying `bytes` (a multiple of sizeof(T)); kNoHead if no
 * k < lanes gets there, or if the vector is narrower than 16 bytes: x86
 * non-temporal stores write 16 bytes whatever the vector. */
template <typename T>
HWY_INLINE size_t HeadOf(size_t lanes, const void *p, size_t bytes)
{
    const uintptr_t a = reinterpret_cast<uintptr_t>(p);
    const size_t vbytes = lanes * sizeof(T);
    if (vbytes < 16) return kNoHead;
    for (size_t k = 0; k < lanes; ++k)
        if ((a + k * bytes) % vbytes == 0) return k;
    return kNoHead;
}

/* Partial vectors: the loads pick each element or the padding lane by lane
 * (which compilers turn into one masked load), the stores use memcpy. */
template <typename T>
struct In {
    const T *p;
    const void *Base() const { return p; }
    template <class D>
    HWY_INLINE hn::Vec<hn::Rebind<T, D>> Load(D, size_t i) const
    {
        return hn::LoadU(hn::Rebind<T, D>(), p + i);
    }
    template <class D>
    HWY_INLINE void Prefetch(D d, size_t i) const
    {
        PrefetchAt(p + i, kPrefetchBytes, hn::Lanes(d) * sizeof(T));
    }
    template <class D>
    HWY_INLINE hn::Vec<hn::Rebind<T, D>> LoadTail(D d, size_t i, size_t r) const
    {
        HWY_ALIGN T buf[hn::MaxLanes(hn::Rebind<T, D>())];
        for (size_t k = 0; k < hn::Lanes(d); ++k) buf[k] = k < r ? p[i + k] : T(1);
        return hn::Load(hn::Rebind<T, D>(), buf);
    }
};

template <typename T>
struct InZero {
    const void *Base() const { return nullptr; }
    template <class D>
    HWY_INLINE hn::Vec<hn::Rebind<T, D>> Load(D, size_t) const
    {
        return hn::Zero(hn::Rebind<T, D>());
    }
    template <class D>
    HWY_INLINE hn::Vec<hn::Rebind<T, D>> LoadTail(D d, size_t i, size_t) const
    {
        return Load(d, i);
    }
    template <class D>
    HWY_INLINE void Prefetch(D, size_t) const
    {
    }
};

template <typename T>
struct InPairs {
    const T *p;
    const void *Base() const { return p; }
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
    bool Writes(const void *q) const { return q == p; }
    template <class D>
    HWY_INLINE size_t Head(D d) const
    {
        return HeadOf<T>(hn::Lanes(d), p, sizeof(T));
    }
    template <class D, class V>
    HWY_INLINE void Store(D, size_t i, V v, bool stream) const
    {
        if (stream)
            hn::Stream(v, hn::Rebind<T, D>(), p + i);
        else
            hn::StoreU(v, hn::Rebind<T, D>(), p + i);
    }
    template <class D, class V>
    HWY_INLINE void StoreTail(D, size_t i, size_t r, V v) const
    {
        HWY_ALIGN T buf[hn::MaxLanes(hn::Rebind<T, D>())];
        hn::Store(v, hn::Rebind<T, D>(), buf);
        memcpy(p + i, buf, r * sizeof(T));
    }
};

template <typename T>
struct OutPairs {
    T *p;
    static constexpr size_t kBytes = 2 * sizeof(T);
    bool Writes(const void *q) const { return q == p; }
    template <class D>
    HWY_INLINE size_t Head(D d) const
    {
        return HeadOf<T>(hn::Lanes(d), p, 2 * sizeof(T));
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
        memcpy(p + 2 * i, buf, 2 * r * sizeof(T));
    }
};

template <typename T>
struct OutTwo {
    T *a, *b;
    static constexpr size_t kBytes = 2 * sizeof(T);
    bool Writes(const void *q) const { return q == a || q == b; }
    template <class D>
    HWY_INLINE size_t Head(D d) const
    {
        const size_t h = Out<T>{a}.Head(d);
        return h == Out<T>{b}.Head(d) ? h : kNoHead;
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
 * index is stored, so an output may be the same array as an input; it is
 * then never streamed. */
template <class D, class Op, class O, class... I>
HWY_INLINE void Zip(D d, size_t count, Op &op, const O &out, const I &...in)
{
    const size_t n = hn::Lanes(d);
    size_t i = 0;
    const size_t head = out.Head(d);
    const bool in_place = (false || ... || out.Writes(in.Base()));
    const bool stream = head != kNoHead && !in_place && count * O::kBytes >= StreamThresholdBytes();
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

/* Lanes in which an op saw a domain fault (a zero divisor, a negative
 * argument), for the warning status at the end. */
template <class D>
struct Faults {
    hn::Vec<D> seen;
    explicit Faults(D d) : seen(hn::Zero(d)) {}
    HWY_INLINE void Note(D d, hn::Mask<D> m) { seen = hn::Or(seen, hn::VecFromMask(d, m)); }
    HWY_INLINE bool Any(D d) const { return !hn::AllFalse(d, hn::MaskFromVec(seen)); }
};

/* ---- The common shapes, as worker bodies. ---- */

/* dst[i] = op(src[i]). */
template <typename T, class Op>
HWY_INLINE IppStatus Map(const T *src, T *dst, size_t count, Op &&op)
{
    Zip(Tag<T>(), count, op, Out<T>{dst}, In<T>{src});
    return ippStsNoErr;
}

/* dst[i] = op(a[i], b[i]). */
template <typename T, class Op>
HWY_INLINE IppStatus Pairwise(const T *a, const T *b, T *dst, size_t count, Op &&op)
{
    Zip(Tag<T>(), count, op, Out<T>{dst}, In<T>{a}, In<T>{b});
    return ippStsNoErr;
}

/* dst[i] = op(src[i]) with an op holding the constant as a vector c. */
template <template <class> class Op, typename T>
HWY_INLINE IppStatus WithConst(const T *src, T val, T *dst, size_t count)
{
    return Map(src, dst, count, Op<Tag<T>>{hn::Set(Tag<T>(), val)});
}

/* Complex values one by one: op(d, Cx) returns the Cx to store. */
template <class Op>
HWY_INLINE IppStatus MapPairs(const Ipp64fc *src, Ipp64fc *dst, size_t count, Op &&op)
{
    Zip(Tag<double>(), count, op, OutPairs<double>{Parts(dst)}, InPairs<double>{Parts(src)});
    return ippStsNoErr;
}

}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
