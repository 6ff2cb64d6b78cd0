/* Initialisation, error reporting and the two informational exports. */
#include <stdio.h>

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
