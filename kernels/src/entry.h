/* The extern "C" entry points of the kernels (see dispatch.h).
 *
 * Every entry point checks its arguments the same way, pointers first: any
 * null pointer is ippStsNullPtrErr, then a length below 1 is ippStsSizeErr;
 * then checks of its own (a zero divisor, a negative level), each after the
 * other, and only then does the work.
 *
 * ORB_ENTRY(worker, params, check, args[, refuse]) defines the entry point
 * ipps<worker>(params), exported from the per-target function of the same
 * name: the worker is named by the entry point's suffix, Add_64fc for
 * ippsAdd_64fc. check is CheckArgs' argument list (len, pointers...);
 * refuse, if given, is an IppStatus expression looked at after the check
 * (ippStsNoErr to go on); args is the worker's argument list. The shapes
 * below it name the parameters as the declarations in ipps.h do.
 *
 * Used at namespace scope, after the per-target code (in HWY_ONCE).
 */
#ifndef ORB_KERNELS_ENTRY_H
#define ORB_KERNELS_ENTRY_H

#include <stddef.h>

#include "ipptypes.h"

namespace orb_kernels {

/* Lengths may be int or Ipp32u; for the latter only 0 is below 1. */
template <class L, class... P>
inline IppStatus CheckArgs(L len, const P *...p)
{
    if ((!p || ...)) return ippStsNullPtrErr;
    return len < 1 ? ippStsSizeErr : ippStsNoErr;
}

/* status when bad holds, else ippStsNoErr: the refuse part of an entry. */
inline IppStatus Refuse(bool bad, IppStatus status) { return bad ? status : ippStsNoErr; }

/* Rounding modes other than the three are refused; the accuracy hint bit
 * is accepted and ignored (every mode here is exact). */
inline int ModeOf(IppRoundMode mode) { return int(mode) & ~int(ippRndHintAccurate); }
inline IppStatus CheckMode(IppRoundMode mode)
{
    const int m = ModeOf(mode);
    return Refuse(m != ippRndZero && m != ippRndNear && m != ippRndFinancial, ippStsRoundModeNotSupportedErr);
}

/* Entry points of the C library's block functions: memcpy, memmove. */
template <typename T>
inline IppStatus CopyBlock(const T *src, T *dst, int len, void *(*fn)(void *, const void *, size_t))
{
    const IppStatus st = CheckArgs(len, src, dst);
    if (st == ippStsNoErr) fn(dst, src, size_t(len) * sizeof(T));
    return st;
}

}  // namespace orb_kernels

#define ORB_ENTRY(worker, params, check, args, ...)            \
    namespace orb_kernels {                                    \
    HWY_EXPORT(worker);                                        \
    }                                                          \
    extern "C" IppStatus ipps##worker params                   \
    {                                                          \
        IppStatus st = orb_kernels::CheckArgs check;           \
        __VA_OPT__(if (st == ippStsNoErr) st = (__VA_ARGS__);) \
        if (st != ippStsNoErr) return st;                      \
        return HWY_DYNAMIC_DISPATCH(orb_kernels::worker) args; \
    }

/* (pSrc, pDst, len): element by element, also between types. */
#define ORB_MAP(worker, S, D, ...)                                                                     \
    ORB_ENTRY(worker, (const S *pSrc, D *pDst, int len), (len, pSrc, pDst), (pSrc, pDst, size_t(len)), \
              __VA_ARGS__)

/* (pSrc, val, pDst, len): with a constant (or a shift count). */
#define ORB_WITH_C(worker, T, V, ...)                                              \
    ORB_ENTRY(worker, (const T *pSrc, V val, T *pDst, int len), (len, pSrc, pDst), \
              (pSrc, val, pDst, size_t(len)), __VA_ARGS__)

/* (pSrc1, pSrc2, pDst, len): two vectors, or the parts of complex values. */
#define ORB_PAIRWISE(worker, T)                                                                      \
    ORB_ENTRY(worker, (const T *pSrc1, const T *pSrc2, T *pDst, int len), (len, pSrc1, pSrc2, pDst), \
              (pSrc1, pSrc2, pDst, size_t(len)))

/* (val, pDst, len): a fill. */
#define ORB_SET(worker, T) ORB_ENTRY(worker, (T val, T *pDst, int len), (len, pDst), (val, pDst, size_t(len)))

/* (pSrc, pDst, len, scaleFactor) and (pSrc, pDst, len, rndMode, scaleFactor):
 * scaled conversions; the mode is checked after the arguments. */
#define ORB_SCALED(worker, S, D)                                                             \
    ORB_ENTRY(worker, (const S *pSrc, D *pDst, int len, int scaleFactor), (len, pSrc, pDst), \
              (pSrc, pDst, size_t(len), scaleFactor))
#define ORB_ROUNDED(worker, S, D, L)                                                                   \
    ORB_ENTRY(worker, (const S *pSrc, D *pDst, L len, IppRoundMode rndMode, int scaleFactor),          \
              (len, pSrc, pDst), (pSrc, pDst, size_t(len), orb_kernels::ModeOf(rndMode), scaleFactor), \
              orb_kernels::CheckMode(rndMode))

/* (pSrc, pDst, len, level[, value]) and the two-level band: thresholds,
 * refusing a negative level where negative says so. */
#define ORB_LEVEL(worker, T, L, negative)                                            \
    ORB_ENTRY(worker, (const T *pSrc, T *pDst, int len, L level), (len, pSrc, pDst), \
              (pSrc, pDst, size_t(len), level),                                      \
              orb_kernels::Refuse(negative && level < 0, ippStsThreshNegLevelErr))
#define ORB_LEVEL_VAL(worker, T, L, V, negative)                                              \
    ORB_ENTRY(worker, (const T *pSrc, T *pDst, int len, L level, V value), (len, pSrc, pDst), \
              (pSrc, pDst, size_t(len), level, value),                                        \
              orb_kernels::Refuse(negative && level < 0, ippStsThreshNegLevelErr))
#define ORB_LEVELS(worker, T)                                                                        \
    ORB_ENTRY(worker, (const T *pSrc, T *pDst, int len, T levelLT, T valueLT, T levelGT, T valueGT), \
              (len, pSrc, pDst), (pSrc, pDst, size_t(len), levelLT, valueLT, levelGT, valueGT),      \
              orb_kernels::Refuse(levelLT > levelGT, ippStsThresholdErr))

#endif
