/* Argument accessors: each takes the callback table and one host value,
 * checks it, raises the error in its own words when the check fails, and
 * returns the plain value. All are exported under these names. */
#ifndef ORB_ACCESSORS_H
#define ORB_ACCESSORS_H

#include "orb/exports.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Shape checks: the rtable's datatype code (sign-extended). */
ORB_API int64_t CheckArray(HostCallbacks cb, HostValue v);
ORB_API int64_t CheckMatrix(HostCallbacks cb, HostValue v);
ORB_API int64_t CheckImage(HostCallbacks cb, HostValue v);

/* Typed element storage. */
ORB_API Ipp64f *GetFloat8Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp32f *GetFloat4Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp64fc *GetComplex8Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp8s *GetInt1Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp8u *GetUInt1Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp16s *GetInt2Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp16u *GetUInt2Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp32s *GetInt4Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp32u *GetUInt4Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp64s *GetInt8Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp64u *GetUInt8Sample(HostCallbacks cb, HostValue v);
ORB_API Ipp64f *GetFloat8Matrix(HostCallbacks cb, HostValue v);
ORB_API Ipp32f *GetFloat4Matrix(HostCallbacks cb, HostValue v);
ORB_API Ipp8u *GetUInt1Matrix(HostCallbacks cb, HostValue v);
ORB_API Ipp32f *GetFloat4Image(HostCallbacks cb, HostValue v);

/* Scalars. */
ORB_API Ipp64f GetFloat8Value(HostCallbacks cb, HostValue v);
ORB_API Ipp32f GetFloat4Value(HostCallbacks cb, HostValue v);
ORB_API Ipp64fc GetComplex8Value(HostCallbacks cb, HostValue v);
ORB_API Ipp32fc GetComplex4Value(HostCallbacks cb, HostValue v);
ORB_API Ipp8s GetInt1Value(HostCallbacks cb, HostValue v);
ORB_API Ipp32u GetUInt1Value(HostCallbacks cb, HostValue v);
ORB_API Ipp16s GetInt2Value(HostCallbacks cb, HostValue v);
ORB_API Ipp32u GetUInt2Value(HostCallbacks cb, HostValue v);
ORB_API Ipp32s GetInt4Value(HostCallbacks cb, HostValue v);
ORB_API Ipp32u GetUInt4Value(HostCallbacks cb, HostValue v);
ORB_API Ipp64s GetInt8Value(HostCallbacks cb, HostValue v);
ORB_API Ipp64u GetUInt8Value(HostCallbacks cb, HostValue v);
ORB_API int64_t GetInt(HostCallbacks cb, HostValue v);
ORB_API Ipp32s GetScaleFactor(HostCallbacks cb, HostValue v);

/* Options. */
ORB_API Ipp32s GetHint(HostCallbacks cb, HostValue v);
ORB_API Ipp32s GetRoundingMode(HostCallbacks cb, HostValue v);

#ifdef __cplusplus
}
#endif

#endif
