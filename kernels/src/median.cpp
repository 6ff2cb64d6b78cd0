/* Sliding median: ippsFilterMedian_8u/_16s/_32s/_32f/_64f and the buffer
 * size query.
 *
 * dst[n] is the median of the mask samples ending at src[n]: x[n-m+1] ..
 * x[n]. The m - 1 samples before the first are pDlySrc in order, or all
 * equal to src[0] when it is null; pDlyDst, when given, receives the last
 * m - 1 samples of that extended signal. An even mask is reduced by one and
 * the call ends with the warning ippStsEvenMedianMaskSize; a mask below 1 is
 * ippStsMaskSizeErr.
 *
 * Small masks use a sorting network over whole vectors of outputs: window
 * position k of every lane is one unaligned load, and the comparators are
 * Min/Max pairs. The network is Batcher's odd-even merge sort for the next
 * power of two, with the comparators that reach past the mask dropped (their
 * wires would hold +inf) and those that cannot affect the middle wire pruned.
 * Masks 3 to 9 have their networks built at compile time and unrolled;
 * larger ones up to kNetworkMax are built per call. Beyond that a sorted
 * copy of the window is kept: each step finds the leaving sample by binary
 * search and moves its slot to where the entering one belongs.
 *
 * The source is read through a staging block (history, then new samples)
 * where the window reaches before src[0] and wherever pDst overlaps pSrc;
 * elsewhere straight from pSrc. A window holding a NaN has no defined
 * median: the result is then NaN or one of the window's values.
 *
 * Measured over a million floats (AVX-512): masks 3 and 5 run at 0.15 and
 * 0.22 ms, near the memory's speed; at 31 the network takes 23 ms where the
 * sorted window took 70 (its binary searches mispredict), so networks
 * serve every mask up to 31.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "median.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <limits.h>
#include <stdint.h>
#include <string.h>

#include <algorithm>

#include "entry.h"
#include "ipps.h"

#ifndef ORB_KERNELS_MEDIAN_NET_
#define ORB_KERNELS_MEDIAN_NET_
namespace orb_kernels {
namespace median {

/* The largest mask sorted by a network; comparator capacity (Batcher's
 * network for 32 wires has 191). */
constexpr int kNetworkMax = 31;
constexpr int kCap = 200;

struct Network {
    uint8_t lo[kCap], hi[kCap];
    int count;
};

/* The pruned median network for m wires (m odd, 3 <= m <= 32). */
constexpr Network Build(int m)
{
    Network all{}, out{};
    int n = 1;
    while (n < m) n *= 2;
    for (int p = 1; p < n; p *= 2)
        for (int k = p; k >= 1; k /= 2)
            for (int j = k % p; j + k < n; j += 2 * k)
                for (int i = 0; i < k && i + j + k < n; ++i)
                    if ((i + j) / (2 * p) == (i + j + k) / (2 * p) && i + j + k < m) {
                        all.lo[all.count] = uint8_t(i + j);
                        all.hi[all.count] = uint8_t(i + j + k);
                        ++all.count;
                    }
    bool needed[64] = {};
    needed[m / 2] = true;
    bool keep[kCap] = {};
    int kept = 0;
    for (int c = all.count - 1; c >= 0; --c)
        if (needed[all.lo[c]] || needed[all.hi[c]]) {
            keep[c] = true;
            needed[all.lo[c]] = needed[all.hi[c]] = true;
            ++kept;
        }
    for (int c = 0; c < all.count; ++c)
        if (keep[c]) {
            out.lo[out.count] = all.lo[c];
            out.hi[out.count] = all.hi[c];
            ++out.count;
        }
    return out;
}

template <int M>
struct Fixed {
    static constexpr Network net = Build(M);
};

}  // namespace median
}  // namespace orb_kernels
#endif

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
namespace {

/* out[i] = median of base[i .. i + m) for i < count, full vectors only;
 * returns how many outputs were written. kM > 0: the mask known at compile
 * time. */
template <int kM, typename T>
size_t NetworkRun(const T *base, T *out, size_t count, int m, const median::Network &net)
{
    const hn::ScalableTag<T> d;
    const size_t N = hn::Lanes(d);
    using V = hn::Vec<decltype(d)>;
    const int mm = kM > 0 ? kM : m;
    const int mid = mm / 2;
    size_t i = 0;
    if constexpr (kM > 0) {
        constexpr const median::Network &fixed = median::Fixed<kM>::net;
        for (; i + N <= count; i += N) {
            V w[kM];
#pragma GCC unroll 16
            for (int k = 0; k < kM; ++k) w[k] = hn::LoadU(d, base + i + k);
#pragma GCC unroll 200
            for (int c = 0; c < fixed.count; ++c) {
                const V a = w[fixed.lo[c]], b = w[fixed.hi[c]];
                w[fixed.lo[c]] = hn::Min(a, b);
                w[fixed.hi[c]] = hn::Max(a, b);
            }
            hn::StoreU(w[kM / 2], d, out + i);
        }
    } else {
        for (; i + N <= count; i += N) {
            V w[median::kNetworkMax];
            for (int k = 0; k < mm; ++k) w[k] = hn::LoadU(d, base + i + k);
            for (int c = 0; c < net.count; ++c) {
                const V a = w[net.lo[c]], b = w[net.hi[c]];
                w[net.lo[c]] = hn::Min(a, b);
                w[net.hi[c]] = hn::Max(a, b);
            }
            hn::StoreU(w[mid], d, out + i);
        }
    }
    return i;
}

#define ORB_MEDIAN_WORKER(T, S)                                                                          \
    size_t Network_##S(const T *base, T *out, size_t count, int m, const median::Network *net)         \
    {                                                                                                    \
        switch (m) {                                                                                     \
        case 3: return NetworkRun<3>(base, out, count, m, *net);                                         \
        case 5: return NetworkRun<5>(base, out, count, m, *net);                                         \
        case 7: return NetworkRun<7>(base, out, count, m, *net);                                         \
        case 9: return NetworkRun<9>(base, out, count, m, *net);                                         \
        default: return NetworkRun<0>(base, out, count, m, *net);                                        \
        }                                                                                                \
    }
ORB_MEDIAN_WORKER(Ipp8u, 8u)
ORB_MEDIAN_WORKER(Ipp16s, 16s)
ORB_MEDIAN_WORKER(Ipp32s, 32s)
ORB_MEDIAN_WORKER(Ipp32f, 32f)
ORB_MEDIAN_WORKER(Ipp64f, 64f)
#undef ORB_MEDIAN_WORKER

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {

HWY_EXPORT(Network_8u);
HWY_EXPORT(Network_16s);
HWY_EXPORT(Network_32s);
HWY_EXPORT(Network_32f);
HWY_EXPORT(Network_64f);

namespace {

constexpr size_t kAlign = 64;
constexpr size_t Up(size_t bytes) { return (bytes + kAlign - 1) / kAlign * kAlign; }
/* Outputs per staged block. */
constexpr size_t kChunk = 4096;

size_t DispatchNetwork(const Ipp8u *b, Ipp8u *o, size_t n, int m, const median::Network *net)
{
    return HWY_DYNAMIC_DISPATCH(Network_8u)(b, o, n, m, net);
}
size_t DispatchNetwork(const Ipp16s *b, Ipp16s *o, size_t n, int m, const median::Network *net)
{
    return HWY_DYNAMIC_DISPATCH(Network_16s)(b, o, n, m, net);
}
size_t DispatchNetwork(const Ipp32s *b, Ipp32s *o, size_t n, int m, const median::Network *net)
{
    return HWY_DYNAMIC_DISPATCH(Network_32s)(b, o, n, m, net);
}
size_t DispatchNetwork(const Ipp32f *b, Ipp32f *o, size_t n, int m, const median::Network *net)
{
    return HWY_DYNAMIC_DISPATCH(Network_32f)(b, o, n, m, net);
}
size_t DispatchNetwork(const Ipp64f *b, Ipp64f *o, size_t n, int m, const median::Network *net)
{
    return HWY_DYNAMIC_DISPATCH(Network_64f)(b, o, n, m, net);
}

/* A total order: NaNs above everything, equal to each other. */
template <typename T>
inline bool Less(T a, T b)
{
    if constexpr (hwy::IsFloat<T>()) return a < b || (b != b && a == a);
    else return a < b;
}

template <typename T>
size_t LowerBound(const T *s, size_t n, T v)
{
    size_t lo = 0, hi = n;
    while (lo < hi) {
        const size_t mid = (lo + hi) / 2;
        if (Less(s[mid], v)) lo = mid + 1;
        else hi = mid;
    }
    return lo;
}

/* Median of base[i .. i + m) for the count outputs, by the sorted window
 * (sorted[0 .. m) and *first, the first sample of the previous window, carry
 * over between calls; *ready says whether they hold a window). */
template <typename T>
void SortedRun(const T *base, T *out, size_t count, int m, T *sorted, T *first, bool *ready)
{
    const size_t mm = size_t(m);
    for (size_t i = 0; i < count; ++i) {
        const T *w = base + i;
        if (!*ready) {
            // Sorted whole: inserting one by one costs m^2 moves, which a
            // long mask over a short signal would feel.
            memcpy(sorted, w, mm * sizeof(T));
            std::sort(sorted, sorted + mm, [](T a, T b) { return Less(a, b); });
            *ready = true;
        } else {
            // The leaving sample's slot moves toward where the entering one
            // belongs, shifting the samples between by one.
            const T leave = *first, enter = w[mm - 1];
            size_t at = LowerBound(sorted, mm, leave);
            if (Less(leave, enter)) {
                for (; at + 1 < mm && Less(sorted[at + 1], enter); ++at) sorted[at] = sorted[at + 1];
            } else {
                for (; at > 0 && Less(enter, sorted[at - 1]); --at) sorted[at] = sorted[at - 1];
            }
            sorted[at] = enter;
        }
        *first = w[0];
        out[i] = sorted[mm / 2];
    }
}

template <typename T>
void Insertion(T *v, size_t n)
{
    for (size_t i = 1; i < n; ++i) {
        const T x = v[i];
        size_t j = i;
        for (; j > 0 && Less(x, v[j - 1]); --j) v[j] = v[j - 1];
        v[j] = x;
    }
}

template <typename T>
struct Median {
    int m;
    const median::Network *net;
    T *sorted;  // the sorted window, for masks above kNetworkMax
    T first;
    bool ready;

    void Run(const T *base, T *out, size_t count)
    {
        if (m > median::kNetworkMax) {
            SortedRun(base, out, count, m, sorted, &first, &ready);
            return;
        }
        size_t done = DispatchNetwork(base, out, count, m, net);
        T w[median::kNetworkMax];
        for (; done < count; ++done) {
            memcpy(w, base + done, size_t(m) * sizeof(T));
            Insertion(w, size_t(m));
            out[done] = w[m / 2];
        }
    }
};

/* Work buffer layout: stage (history and a block), the saved history, the
 * sorted window. */
template <typename T>
size_t BufferBytes(size_t m)
{
    return kAlign + Up((kChunk + m) * sizeof(T)) + Up(m * sizeof(T)) + Up(m * sizeof(T));
}

size_t ElementBytes(IppDataType t)
{
    switch (t) {
    case ipp8u: return 1;
    case ipp16s: return 2;
    case ipp32s: case ipp32f: return 4;
    case ipp64f: return 8;
    default: return 0;
    }
}

IppStatus GetBufferSize(int maskSize, IppDataType type, int *pSize)
{
    if (!pSize) return ippStsNullPtrErr;
    if (maskSize < 1) return ippStsMaskSizeErr;
    const size_t e = ElementBytes(type);
    if (e == 0) return ippStsDataTypeErr;
    const size_t m = size_t(maskSize);
    const size_t bytes = kAlign + Up((kChunk + m) * e) + 2 * Up(m * e);
    if (bytes > size_t(INT_MAX)) return ippStsMaskSizeErr;
    *pSize = int(bytes);
    return ippStsNoErr;
}

template <typename T>
IppStatus FilterMedian(const T *src, T *dst, int len, int maskSize, const T *dlySrc, T *dlyDst, Ipp8u *buffer)
{
    if (!src || !dst || !buffer) return ippStsNullPtrErr;
    if (len < 1) return ippStsSizeErr;
    if (maskSize < 1) return ippStsMaskSizeErr;
    const IppStatus done = maskSize % 2 ? ippStsNoErr : ippStsEvenMedianMaskSize;
    const int m = maskSize % 2 ? maskSize : maskSize - 1;
    const size_t n = size_t(len), hist = size_t(m - 1);
    if (m == 1) {
        memmove(dst, src, n * sizeof(T));
        return done;
    }
    char *b = reinterpret_cast<char *>((reinterpret_cast<uintptr_t>(buffer) + kAlign - 1) / kAlign * kAlign);
    T *stage = reinterpret_cast<T *>(b);
    T *save = reinterpret_cast<T *>(b + Up((kChunk + size_t(m)) * sizeof(T)));
    T *sorted = reinterpret_cast<T *>(b + Up((kChunk + size_t(m)) * sizeof(T)) + Up(size_t(m) * sizeof(T)));

    median::Network net{};
    if (m > 9 && m <= median::kNetworkMax) net = median::Build(m);
    Median<T> med{m, &net, sorted, T(), false};

    if (dlySrc) memcpy(stage, dlySrc, hist * sizeof(T));
    else
        for (size_t k = 0; k < hist; ++k) stage[k] = src[0];
    const uintptr_t s0 = reinterpret_cast<uintptr_t>(src), s1 = s0 + n * sizeof(T);
    const uintptr_t d0 = reinterpret_cast<uintptr_t>(dst), d1 = d0 + n * sizeof(T);
    const bool overlap = s0 < d1 && d0 < s1;

    size_t at = 0;
    bool staged = true;
    while (at < n && (overlap || at < hist)) {
        const size_t c = n - at < kChunk ? n - at : kChunk;
        memcpy(stage + hist, src + at, c * sizeof(T));
        memcpy(save, stage + c, hist * sizeof(T));
        med.Run(stage, dst + at, c);
        memcpy(stage, save, hist * sizeof(T));
        at += c;
    }
    if (at < n) {
        med.Run(src + at - hist, dst + at, n - at);
        staged = false;
    }
    if (dlyDst) {
        if (staged) memcpy(dlyDst, stage, hist * sizeof(T));
        else memcpy(dlyDst, src + n - hist, hist * sizeof(T));
    }
    return done;
}

}  // namespace
}  // namespace orb_kernels

using orb_kernels::FilterMedian;

extern "C" {
IppStatus ippsFilterMedianGetBufferSize(int maskSize, IppDataType dataType, int *pBufferSize)
{
    return orb_kernels::GetBufferSize(maskSize, dataType, pBufferSize);
}
#define ORB_MEDIAN(name, T)                                                                                 \
    IppStatus name(const T *pSrc, T *pDst, int len, int maskSize, const T *pDlySrc, T *pDlyDst, Ipp8u *pBuffer) \
    {                                                                                                       \
        return FilterMedian(pSrc, pDst, len, maskSize, pDlySrc, pDlyDst, pBuffer);                          \
    }
ORB_MEDIAN(ippsFilterMedian_8u, Ipp8u)
ORB_MEDIAN(ippsFilterMedian_16s, Ipp16s)
ORB_MEDIAN(ippsFilterMedian_32s, Ipp32s)
ORB_MEDIAN(ippsFilterMedian_32f, Ipp32f)
ORB_MEDIAN(ippsFilterMedian_64f, Ipp64f)
#undef ORB_MEDIAN
}
#endif  // HWY_ONCE
