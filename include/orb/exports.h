/* Declarations of the library's exports. Every operation takes the host's
 * callback table and argument sequence and returns a host value. */
#ifndef ORB_EXPORTS_H
#define ORB_EXPORTS_H

#include "orb/host.h"
#include "ipp.h"

#ifdef __cplusplus
#define ORB_API extern "C" __attribute__((visibility("default")))
#else
#define ORB_API extern __attribute__((visibility("default")))
#endif

/* Call frame, initialisation and error reporting. */
ORB_API IppStatus orbInit(HostCallbacks cb);
ORB_API void orbIppError(HostCallbacks cb, IppStatus status);
ORB_API HostValue orbGetIPPVersion(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbGetEnabledCPUFeatures(HostCallbacks cb, ArgSeq args);

/* Unary math and normalisation. */
ORB_API HostValue orbAbs(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSqr(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbSqrt(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbExp(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbLn(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbArctan(HostCallbacks cb, ArgSeq args);
ORB_API HostValue orbNormalise(HostCallbacks cb, ArgSeq args);

#endif
