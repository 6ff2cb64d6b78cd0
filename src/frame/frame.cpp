/* Initialisation, error reporting and the two informational exports. */
#include <stdio.h>
#include <string.h>

#include "frame/frame.h"

/* A failing start-up is retried once and the second status is the one
 * reported. */
ORB_API IppStatus orbInit(HostCallbacks cb)
{
    IppStatus status = ippInit();

    if (status >= 0)
        return status;
    status = ippInit();
    orbIppError(cb, status);
    return status;
}

/* Raises "IPP Error: %1" with the backend's text for any status, zero and
 * warnings included. */
ORB_API void orbIppError(HostCallbacks cb, IppStatus status)
{
    HostValue text = HostFromString(cb, ippGetStatusString(status));

    HostError(cb, "IPP Error: %1", text);
}

/* Both informational exports accept any count that is not negative and
 * never read their arguments. */
ORB_API HostValue orbGetIPPVersion(HostCallbacks cb, ArgSeq args)
{
    char buffer[1024];
    const IppLibraryVersion *version;

    if (HostNumArgs(cb, args) < 0) {
        HostError(cb, ARITY_IMPOSSIBLE);
        return 0;
    }
    orbInit(cb);
    version = ippsGetLibVersion();
    snprintf(buffer, sizeof buffer, "%s, %s, %s", version->Name, version->Version, version->BuildDate);
    return HostFromString(cb, buffer);
}

ORB_API HostValue orbGetEnabledCPUFeatures(HostCallbacks cb, ArgSeq args)
{
    if (HostNumArgs(cb, args) < 0) {
        HostError(cb, ARITY_IMPOSSIBLE);
        return 0;
    }
    orbInit(cb);
    return HostFromInteger64(cb, (int64_t)ippGetEnabledCpuFeatures());
}

/* The raise note of the call running on this thread; cleared as each export
 * starts, so it never outlives a call. */
static thread_local int raisedInCall;

void orbNoteRaise(void)
{
    raisedInCall = 1;
}

void orbCallStart(void)
{
    raisedInCall = 0;
}

/* Bytes per element of a datatype code; 0 for host values, which no kernel
 * may touch. */
static int64_t elementBytes(int64_t code)
{
    switch (code) {
    case DT_INT1: return 1;
    case DT_INT2: return 2;
    case DT_INT4: case DT_FLOAT4: return 4;
    case DT_INT8: case DT_FLOAT8: return 8;
    case DT_COMPLEX8: return 16;
    default: return 0;
    }
}

int orbFits(HostCallbacks cb, int64_t *count, HostValue v, int64_t code)
{
    RTableSettings s;
    int64_t have;

    if (!raisedInCall)
        return 1;
    if (!HostIsRTable(cb, v))
        return 0;
    memset(&s, 0, sizeof s);
    HostRTableGetSettings(cb, &s, v);
    if (s.storage != RTABLE_RECTANGULAR || elementBytes(s.datatype) == 0 ||
        elementBytes(s.datatype) != elementBytes(code))
        return 0;
    have = HostRTableNumElements(cb, v);
    if (have < *count)
        *count = have;
    return *count > 0;
}

int64_t orbStorageBytes(HostCallbacks cb, HostValue v)
{
    RTableSettings s;

    if (!HostIsRTable(cb, v))
        return 0;
    memset(&s, 0, sizeof s);
    HostRTableGetSettings(cb, &s, v);
    if (s.storage != RTABLE_RECTANGULAR)
        return 0;
    return elementBytes(s.datatype) * HostRTableNumElements(cb, v);
}

int orbAllFit(HostCallbacks cb, int64_t *count, ArgSeq args, int first, int last, int64_t code)
{
    int i;

    for (i = first; i <= last; ++i)
        if (!orbFits(cb, count, args[i], code))
            return 0;
    return 1;
}

int64_t orbTarget(HostCallbacks cb, HostValue v, int64_t *count, void **data)
{
    int64_t code = CheckArray(cb, v);

    *count = HostRTableNumElements(cb, v);
    *data = HostRTableData(cb, v);
    return code;
}

void *orbSampleOf(HostCallbacks cb, HostValue v, int64_t code, int64_t *count)
{
    void *data;

    switch (code) {
    case DT_INT1: data = GetInt1Sample(cb, v); break;
    case DT_INT2: data = GetInt2Sample(cb, v); break;
    case DT_INT4: data = GetInt4Sample(cb, v); break;
    case DT_INT8: data = GetInt8Sample(cb, v); break;
    case DT_FLOAT8: data = GetFloat8Sample(cb, v); break;
    case DT_COMPLEX8: data = GetComplex8Sample(cb, v); break;
    default: data = GetFloat4Sample(cb, v); break;
    }
    *count = HostRTableNumElements(cb, v);
    return data;
}
