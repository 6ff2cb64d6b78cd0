/* Thresholds: a copy of argument 2 clamped or replaced against one or two
 * levels, written into argument 1. */
#include "frame/frame.h"

typedef enum ThreshOp { T_LT, T_GT, T_LTABS, T_GTABS, T_LTVAL, T_GTVAL } ThreshOp;

static IppStatus thresh32f(ThreshOp op, const Ipp32f *s, Ipp32f *d, int len, Ipp32f level, Ipp32f value)
{
    switch (op) {
    case T_LT: return ippsThreshold_LT_32f(s, d, len, level);
    case T_GT: return ippsThreshold_GT_32f(s, d, len, level);
    case T_LTABS: return ippsThreshold_LTAbs_32f(s, d, len, level);
    case T_GTABS: return ippsThreshold_GTAbs_32f(s, d, len, level);
    case T_LTVAL: return ippsThreshold_LTVal_32f(s, d, len, level, value);
    case T_GTVAL: return ippsThreshold_GTVal_32f(s, d, len, level, value);
    }
    return ORB_NO_KERNEL;
}

static IppStatus thresh64f(ThreshOp op, const Ipp64f *s, Ipp64f *d, int len, Ipp64f level, Ipp64f value)
{
    switch (op) {
    case T_LT: return ippsThreshold_LT_64f(s, d, len, level);
    case T_GT: return ippsThreshold_GT_64f(s, d, len, level);
    case T_LTABS: return ippsThreshold_LTAbs_64f(s, d, len, level);
    case T_GTABS: return ippsThreshold_GTAbs_64f(s, d, len, level);
    case T_LTVAL: return ippsThreshold_LTVal_64f(s, d, len, level, value);
    case T_GTVAL: return ippsThreshold_GTVal_64f(s, d, len, level, value);
    }
    return ORB_NO_KERNEL;
}

static IppStatus thresh64fc(ThreshOp op, const Ipp64fc *s, Ipp64fc *d, int len, Ipp64f level, Ipp64fc value)
{
    switch (op) {
    case T_LT: return ippsThreshold_LT_64fc(s, d, len, level);
    case T_GT: return ippsThreshold_GT_64fc(s, d, len, level);
    case T_LTVAL: return ippsThreshold_LTVal_64fc(s, d, len, level, value);
    case T_GTVAL: return ippsThreshold_GTVal_64fc(s, d, len, level, value);
    case T_LTABS: case T_GTABS: break;
    }
    return ORB_NO_KERNEL;
}

static IppStatus thresh16s(ThreshOp op, const Ipp16s *s, Ipp16s *d, int len, Ipp16s level, Ipp16s value)
{
    switch (op) {
    case T_LT: return ippsThreshold_LT_16s(s, d, len, level);
    case T_GT: return ippsThreshold_GT_16s(s, d, len, level);
    case T_LTABS: return ippsThreshold_LTAbs_16s(s, d, len, level);
    case T_GTABS: return ippsThreshold_GTAbs_16s(s, d, len, level);
    case T_LTVAL: return ippsThreshold_LTVal_16s(s, d, len, level, value);
    case T_GTVAL: return ippsThreshold_GTVal_16s(s, d, len, level, value);
    }
    return ORB_NO_KERNEL;
}

static IppStatus thresh32s(ThreshOp op, const Ipp32s *s, Ipp32s *d, int len, Ipp32s level)
{
    switch (op) {
    case T_LT: return ippsThreshold_LT_32s(s, d, len, level);
    case T_GT: return ippsThreshold_GT_32s(s, d, len, level);
    case T_LTABS: return ippsThreshold_LTAbs_32s(s, d, len, level);
    case T_GTABS: return ippsThreshold_GTAbs_32s(s, d, len, level);
    case T_LTVAL: case T_GTVAL: break;
    }
    return ORB_NO_KERNEL;
}

/* Which datatypes each form has: the family's one list. */
static int threshSupported(ThreshOp op, int64_t code)
{
    int val = op == T_LTVAL || op == T_GTVAL;

    switch (code) {
    case DT_FLOAT4:
    case DT_FLOAT8:
    case DT_INT2: return 1;
    case DT_COMPLEX8: return op == T_LT || op == T_GT || val;
    case DT_INT4: return !val;
    default: return 0;
    }
}

/* The count check, then whether the kernel may run (see orbFits). */
static int threshReady(HostCallbacks cb, ArgSeq args, int64_t code, int64_t *len, int64_t len2)
{
    return orbCountsAgree(cb, len2 == *len) && orbAllFit(cb, len, args, 1, 2, code);
}

/* The one-level and replacement-value forms read their scalars before the
 * counts are compared. */
static HostValue thresholdExport(HostCallbacks cb, ArgSeq args, ThreshOp op)
{
    int val = op == T_LTVAL || op == T_GTVAL;
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *dst, *src;
    IppStatus status;

    if (n != (val ? 4 : 3)) {
        orbArityError(cb, val ? ARITY_THREE_OR_FOUR : ARITY_TWO_OR_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (!threshSupported(op, code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &len2);
    if (code == DT_FLOAT4) {
        Ipp32f level = GetFloat4Value(cb, args[3]);
        Ipp32f value = val ? GetFloat4Value(cb, args[4]) : 0;
        if (!threshReady(cb, args, code, &len, len2))
            return args[1];
        status = thresh32f(op, (const Ipp32f *)src, (Ipp32f *)dst, orbLen32(len), level, value);
    } else if (code == DT_FLOAT8) {
        Ipp64f level = GetFloat8Value(cb, args[3]);
        Ipp64f value = val ? GetFloat8Value(cb, args[4]) : 0;
        if (!threshReady(cb, args, code, &len, len2))
            return args[1];
        status = thresh64f(op, (const Ipp64f *)src, (Ipp64f *)dst, orbLen32(len), level, value);
    } else if (code == DT_COMPLEX8) {
        Ipp64fc value = {0, 0};
        Ipp64f level = GetFloat8Value(cb, args[3]);
        if (val)
            value = GetComplex8Value(cb, args[4]);
        if (!threshReady(cb, args, code, &len, len2))
            return args[1];
        status = thresh64fc(op, (const Ipp64fc *)src, (Ipp64fc *)dst, orbLen32(len), level, value);
    } else if (code == DT_INT2) {
        Ipp16s level = GetInt2Value(cb, args[3]);
        Ipp16s value = val ? GetInt2Value(cb, args[4]) : 0;
        if (!threshReady(cb, args, code, &len, len2))
            return args[1];
        status = thresh16s(op, (const Ipp16s *)src, (Ipp16s *)dst, orbLen32(len), level, value);
    } else if (code == DT_INT4) {
        Ipp32s level = GetInt4Value(cb, args[3]);
        if (!threshReady(cb, args, code, &len, len2))
            return args[1];
        status = thresh32s(op, (const Ipp32s *)src, (Ipp32s *)dst, orbLen32(len), level);
    } else {
        status = ORB_NO_KERNEL;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbThresholdLT(HostCallbacks cb, ArgSeq args)
{
    return thresholdExport(cb, args, T_LT);
}

ORB_API HostValue orbThresholdGT(HostCallbacks cb, ArgSeq args)
{
    return thresholdExport(cb, args, T_GT);
}

ORB_API HostValue orbThresholdLTAbs(HostCallbacks cb, ArgSeq args)
{
    return thresholdExport(cb, args, T_LTABS);
}

ORB_API HostValue orbThresholdGTAbs(HostCallbacks cb, ArgSeq args)
{
    return thresholdExport(cb, args, T_GTABS);
}

ORB_API HostValue orbThresholdLTVal(HostCallbacks cb, ArgSeq args)
{
    return thresholdExport(cb, args, T_LTVAL);
}

ORB_API HostValue orbThresholdGTVal(HostCallbacks cb, ArgSeq args)
{
    return thresholdExport(cb, args, T_GTVAL);
}

/* Two-sided replacement: the counts are compared before the four scalars
 * (arguments 3 to 6: lower level, lower value, upper level, upper value) are
 * read, in argument order. */
ORB_API HostValue orbThresholdLTGTVal(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *dst, *src;
    int l;
    IppStatus status;

    if (n != 6) {
        orbArityError(cb, ARITY_FIVE_OR_SIX, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (code != DT_FLOAT4 && code != DT_FLOAT8 && code != DT_INT2 && code != DT_INT4) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &len2);
    if (!orbCountsAgree(cb, len2 == len) || !orbAllFit(cb, &len, args, 1, 2, code))
        return args[1];
    l = orbLen32(len);
    if (code == DT_FLOAT4) {
        Ipp32f v[4];
        for (int i = 0; i < 4; ++i)
            v[i] = GetFloat4Value(cb, args[3 + i]);
        status = ippsThreshold_LTValGTVal_32f((const Ipp32f *)src, (Ipp32f *)dst, l, v[0], v[1], v[2], v[3]);
    } else if (code == DT_FLOAT8) {
        Ipp64f v[4];
        for (int i = 0; i < 4; ++i)
            v[i] = GetFloat8Value(cb, args[3 + i]);
        status = ippsThreshold_LTValGTVal_64f((const Ipp64f *)src, (Ipp64f *)dst, l, v[0], v[1], v[2], v[3]);
    } else if (code == DT_INT2) {
        Ipp16s v[4];
        for (int i = 0; i < 4; ++i)
            v[i] = GetInt2Value(cb, args[3 + i]);
        status = ippsThreshold_LTValGTVal_16s((const Ipp16s *)src, (Ipp16s *)dst, l, v[0], v[1], v[2], v[3]);
    } else if (code == DT_INT4) {
        Ipp32s v[4];
        for (int i = 0; i < 4; ++i)
            v[i] = GetInt4Value(cb, args[3 + i]);
        status = ippsThreshold_LTValGTVal_32s((const Ipp32s *)src, (Ipp32s *)dst, l, v[0], v[1], v[2], v[3]);
    } else {
        status = ORB_NO_KERNEL;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

/* Inverse threshold: the counts come first, and the level is always read in
 * single precision, so for double data it is rounded to float and widened. */
ORB_API HostValue orbThresholdLTInv(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *dst, *src;
    Ipp32f level;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_TWO_OR_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (code != DT_FLOAT4 && code != DT_FLOAT8 && code != DT_COMPLEX8) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &len2);
    if (!orbCountsAgree(cb, len2 == len))
        return args[1];
    level = GetFloat4Value(cb, args[3]);
    if (!orbAllFit(cb, &len, args, 1, 2, code))
        return args[1];
    if (code == DT_FLOAT4)
        status = ippsThreshold_LTInv_32f((const Ipp32f *)src, (Ipp32f *)dst, orbLen32(len), level);
    else if (code == DT_FLOAT8)
        status = ippsThreshold_LTInv_64f((const Ipp64f *)src, (Ipp64f *)dst, orbLen32(len), level);
    else if (code == DT_COMPLEX8)
        status = ippsThreshold_LTInv_64fc((const Ipp64fc *)src, (Ipp64fc *)dst, orbLen32(len), level);
    else
        status = ORB_NO_KERNEL;
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}
