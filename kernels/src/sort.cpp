/* Ordering and search: in-place sorts, reversal and nearest entries of an
 * ascending table.
 *
 * Sorts of 16-, 32- and 64-bit keys run Highway's vectorised quicksort;
 * bytes are counted (256 counters) and written back in order. Floating-point
 * NaNs are gathered at the end (ascending) or the start (descending) before
 * the numbers are sorted, so each direction is the exact reverse of the
 * other; -0 orders before +0.
 *
 * A nearest entry is found by binary search; of two entries equally near
 * the value, the lower one wins, and of equal entries the first index.
 */
#include <stddef.h>
#include <string.h>

#include <algorithm>
#include <cmath>
#include <type_traits>

#include <hwy/contrib/sort/vqsort.h>

#include "entry.h"
#include "ipps.h"

namespace orb_kernels {
namespace {

/* One sorter per thread: it holds the quicksort's scratch space. */
template <typename T>
void SortKeys(T *keys, size_t n, bool ascending)
{
    static thread_local hwy::Sorter sorter;
    if (ascending)
        sorter(keys, n, hwy::SortAscending());
    else
        sorter(keys, n, hwy::SortDescending());
}

template <typename T>
IppStatus CountingSort(T *keys, int len, bool ascending)
{
    const IppStatus st = CheckArgs(len, keys);
    if (st != ippStsNoErr) return st;
    size_t count[256] = {};
    for (int i = 0; i < len; ++i) ++count[keys[i]];
    T *p = keys;
    for (int k = 0; k < 256; ++k) {
        const int v = ascending ? k : 255 - k;
        memset(p, v, count[v]);
        p += count[v];
    }
    return ippStsNoErr;
}

/* Floating-point keys are sorted as unsigned integers of their width that
 * keep their order: the sign bit set on numbers from +0 up, every bit
 * flipped on those from -0 down. (The quicksort pads with the largest
 * finite value, which it then mistakes for an infinity among float keys.)
 * So -0 orders before +0. */
template <typename U>
constexpr U kSignBit = U(1) << (8 * sizeof(U) - 1);

template <typename T, typename U>
void ToOrdered(T *keys, size_t n)
{
    U *u = reinterpret_cast<U *>(keys);
    for (size_t i = 0; i < n; ++i) {
        U b;
        memcpy(&b, keys + i, sizeof b);
        u[i] = b ^ ((b & kSignBit<U>) ? U(~U(0)) : kSignBit<U>);
    }
}

template <typename T, typename U>
void FromOrdered(T *keys, size_t n)
{
    U *u = reinterpret_cast<U *>(keys);
    for (size_t i = 0; i < n; ++i) {
        const U b = u[i] ^ ((u[i] & kSignBit<U>) ? kSignBit<U> : U(~U(0)));
        memcpy(keys + i, &b, sizeof b);
    }
}

template <typename T>
IppStatus KeySort(T *keys, int len, bool ascending)
{
    const IppStatus st = CheckArgs(len, keys);
    if (st != ippStsNoErr) return st;
    T *first = keys, *last = keys + len;
    if constexpr (std::is_floating_point_v<T>) {
        using U = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
        const auto number = [](T x) { return !std::isnan(x); };
        if (ascending)
            last = std::partition(first, last, number);
        else
            first = std::partition(first, last, [&](T x) { return !number(x); });
        const size_t n = size_t(last - first);
        ToOrdered<T, U>(first, n);
        if (n > 1) SortKeys(reinterpret_cast<U *>(first), n, ascending);
        FromOrdered<T, U>(first, n);
    } else if (len > 1) {
        SortKeys(first, size_t(len), ascending);
    }
    return ippStsNoErr;
}

template <typename T>
IppStatus Flip(const T *src, T *dst, int len)
{
    const IppStatus st = CheckArgs(len, src, dst);
    if (st != ippStsNoErr) return st;
    if (src == dst)
        std::reverse(dst, dst + len);
    else
        std::reverse_copy(src, src + len, dst);
    return ippStsNoErr;
}

/* Index of the entry nearest v in the ascending table. */
inline int Nearest(Ipp16u v, const Ipp16u *table, int len)
{
    const Ipp16u *hi = std::lower_bound(table, table + len, v);
    if (hi == table) return 0;
    if (hi == table + len) return int(std::lower_bound(table, table + len, table[len - 1]) - table);
    const Ipp16u *lo = hi - 1;
    if (int(v) - int(*lo) <= int(*hi) - int(v)) return int(std::lower_bound(table, hi, *lo) - table);
    return int(hi - table);
}

}  // namespace
}  // namespace orb_kernels

using orb_kernels::CountingSort;
using orb_kernels::Flip;
using orb_kernels::KeySort;

extern "C" {
IppStatus ippsSortAscend_8u_I(Ipp8u *pSrcDst, int len) { return CountingSort(pSrcDst, len, true); }
IppStatus ippsSortDescend_8u_I(Ipp8u *pSrcDst, int len) { return CountingSort(pSrcDst, len, false); }
IppStatus ippsSortAscend_16s_I(Ipp16s *pSrcDst, int len) { return KeySort(pSrcDst, len, true); }
IppStatus ippsSortDescend_16s_I(Ipp16s *pSrcDst, int len) { return KeySort(pSrcDst, len, false); }
IppStatus ippsSortAscend_32s_I(Ipp32s *pSrcDst, int len) { return KeySort(pSrcDst, len, true); }
IppStatus ippsSortDescend_32s_I(Ipp32s *pSrcDst, int len) { return KeySort(pSrcDst, len, false); }
IppStatus ippsSortAscend_32f_I(Ipp32f *pSrcDst, int len) { return KeySort(pSrcDst, len, true); }
IppStatus ippsSortDescend_32f_I(Ipp32f *pSrcDst, int len) { return KeySort(pSrcDst, len, false); }
IppStatus ippsSortAscend_64f_I(Ipp64f *pSrcDst, int len) { return KeySort(pSrcDst, len, true); }
IppStatus ippsSortDescend_64f_I(Ipp64f *pSrcDst, int len) { return KeySort(pSrcDst, len, false); }

IppStatus ippsFlip_8u(const Ipp8u *pSrc, Ipp8u *pDst, int len) { return Flip(pSrc, pDst, len); }
IppStatus ippsFlip_16u(const Ipp16u *pSrc, Ipp16u *pDst, int len) { return Flip(pSrc, pDst, len); }
IppStatus ippsFlip_32f(const Ipp32f *pSrc, Ipp32f *pDst, int len) { return Flip(pSrc, pDst, len); }
IppStatus ippsFlip_64f(const Ipp64f *pSrc, Ipp64f *pDst, int len) { return Flip(pSrc, pDst, len); }
IppStatus ippsFlip_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len) { return Flip(pSrc, pDst, len); }

IppStatus ippsFindNearestOne_16u(Ipp16u inpVal, Ipp16u *pOutVal, int *pOutIndex, const Ipp16u *pTable, int tblLen)
{
    const IppStatus st = orb_kernels::CheckArgs(tblLen, pOutVal, pOutIndex, pTable);
    if (st != ippStsNoErr) return st;
    const int k = orb_kernels::Nearest(inpVal, pTable, tblLen);
    *pOutVal = pTable[k];
    *pOutIndex = k;
    return ippStsNoErr;
}

IppStatus ippsFindNearest_16u(const Ipp16u *pVals, Ipp16u *pOutVals, int *pOutIndexes, int len,
                              const Ipp16u *pTable, int tblLen)
{
    IppStatus st = orb_kernels::CheckArgs(len, pVals, pOutVals, pOutIndexes, pTable);
    if (st == ippStsNoErr && tblLen < 1) st = ippStsSizeErr;
    if (st != ippStsNoErr) return st;
    for (int i = 0; i < len; ++i) {
        const int k = orb_kernels::Nearest(pVals[i], pTable, tblLen);
        pOutIndexes[i] = k;
        pOutVals[i] = pTable[k];
    }
    return ippStsNoErr;
}
}
