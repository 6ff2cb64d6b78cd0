/* Full convolution with a chosen algorithm, biased convolution, and the
 * backend's normalised auto- and cross-correlations, written into argument
 * 1. Integer[2] data are correlated through single-precision working
 * copies and converted back with the caller's scale factor. */
#include <string.h>

#include "frame/frame.h"

#define MSG_ALG_NAME "algorithm argument needs to be a name"
#define MSG_ALG_UNKNOWN "unsupported algorithm %1"
#define MSG_OUTPUT_SHORT "output sample must have at least %1 elements, but has only %2 elements"
#define MSG_BIAS "fourth argument must be non-negative, but received %1"
#define MSG_SCALE "for datatype = integer[2] a scale factor is required"

/* The backend call of one datatype: the storage of argument 1 and the
 * sources, already checked. */
static IppStatus convolveBy(int64_t code, const void *a, int la, const void *b, int lb, void *dst, int alg,
                            Ipp8u *buffer)
{
    switch (orbDatatype(code)) {
    case DT_FLOAT4:
        return ippsConvolve_32f((const Ipp32f *)a, la, (const Ipp32f *)b, lb, (Ipp32f *)dst, alg, buffer);
    case DT_FLOAT8:
        return ippsConvolve_64f((const Ipp64f *)a, la, (const Ipp64f *)b, lb, (Ipp64f *)dst, alg, buffer);
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT2: case DT_INT4: case DT_INT8: case DT_COMPLEX8:
        break;
    }
    return ORB_NO_KERNEL;
}

ORB_API HostValue orbConvolution(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, m, la, lb;
    const char *text;
    int alg, size = 0;
    void *dst, *a, *b;
    IppDataType type;
    OrbHeld held;
    Ipp8u *buffer;

    if (n != 4) {
        orbArityError(cb, ARITY_FOUR, n);
        return 0;
    }
    if (!HostIsString(cb, args[4])) {
        HostError(cb, MSG_ALG_NAME);
        return args[1];
    }
    text = HostToString(cb, args[4]);
    if (strcmp(text, "auto") == 0) {
        alg = ippAlgAuto;
    } else if (strcmp(text, "fft") == 0) {
        alg = ippAlgFFT;
    } else if (strcmp(text, "direct") == 0) {
        alg = ippAlgDirect;
    } else {
        HostError(cb, MSG_ALG_UNKNOWN, args[4]);
        return args[1];
    }
    code = orbTarget(cb, args[1], &m, &dst);
    if (code == DT_FLOAT4) {
        type = ipp32f;
        a = GetFloat4Sample(cb, args[2]);
        la = HostRTableNumElements(cb, args[2]);
        b = GetFloat4Sample(cb, args[3]);
        lb = HostRTableNumElements(cb, args[3]);
    } else if (code == DT_FLOAT8) {
        type = ipp64f;
        a = GetFloat8Sample(cb, args[2]);
        la = HostRTableNumElements(cb, args[2]);
        b = GetFloat8Sample(cb, args[3]);
        lb = HostRTableNumElements(cb, args[3]);
    } else {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (m < la + lb - 1) {
        HostError(cb, MSG_OUTPUT_SHORT, HostFromInteger(cb, la + lb), HostFromInteger(cb, m));
        return args[1];
    }
    if (!orbFits(cb, &m, args[1], code) || !orbFits(cb, &la, args[2], code) || !orbFits(cb, &lb, args[3], code) ||
        m < la + lb - 1)
        return args[1];
    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippsConvolveGetBufferSize(orbLen32(la), orbLen32(lb), type, alg, &size)))
        return args[1];
    buffer = orbMalloc8u(&held, size);
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbOk(cb, &held, convolveBy(code, a, orbLen32(la), b, orbLen32(lb), dst, alg, buffer)))
        return args[1];
    orbRelease(&held);
    return args[1];
}

ORB_API HostValue orbBiasedConvolution(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t m, la, lb;
    Ipp32f *dst;
    const Ipp32f *a, *b;
    Ipp32s bias;
    IppStatus status;

    if (n != 4) {
        orbArityError(cb, ARITY_FOUR, n);
        return 0;
    }
    dst = GetFloat4Sample(cb, args[1]);
    m = HostRTableNumElements(cb, args[1]);
    a = GetFloat4Sample(cb, args[2]);
    la = HostRTableNumElements(cb, args[2]);
    b = GetFloat4Sample(cb, args[3]);
    lb = HostRTableNumElements(cb, args[3]);
    bias = GetInt4Value(cb, args[4]);
    if (bias < 0) {
        HostError(cb, MSG_BIAS, args[4]);
        return args[1];
    }
    if (!orbFits(cb, &m, args[1], DT_FLOAT4) || !orbFits(cb, &la, args[2], DT_FLOAT4) ||
        !orbFits(cb, &lb, args[3], DT_FLOAT4))
        return args[1];
    status = ippsConvBiased_32f(a, orbLen32(la), b, orbLen32(lb), dst, orbLen32(m), bias);
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

/* Correlation calls by datatype; the auto-correlation is the backend's own
 * function, the cross-correlation takes the lag range. */
static IppStatus autoBy(int64_t code, const void *src, int srcLen, void *dst, int dstLen, int flag, Ipp8u *buffer)
{
    switch (orbDatatype(code)) {
    case DT_FLOAT4:
        return ippsAutoCorrNorm_32f((const Ipp32f *)src, srcLen, (Ipp32f *)dst, dstLen, flag, buffer);
    case DT_FLOAT8:
        return ippsAutoCorrNorm_64f((const Ipp64f *)src, srcLen, (Ipp64f *)dst, dstLen, flag, buffer);
    case DT_COMPLEX8:
        return ippsAutoCorrNorm_64fc((const Ipp64fc *)src, srcLen, (Ipp64fc *)dst, dstLen, flag, buffer);
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT2: case DT_INT4: case DT_INT8:
        break;
    }
    return ORB_NO_KERNEL;
}

static IppStatus crossBy(int64_t code, const void *a, int la, const void *b, int lb, void *dst, int dstLen,
                         int lowLag, Ipp8u *buffer)
{
    switch (orbDatatype(code)) {
    case DT_FLOAT4:
        return ippsCrossCorrNorm_32f((const Ipp32f *)a, la, (const Ipp32f *)b, lb, (Ipp32f *)dst, dstLen, lowLag,
                                     ippsNormNone, buffer);
    case DT_FLOAT8:
        return ippsCrossCorrNorm_64f((const Ipp64f *)a, la, (const Ipp64f *)b, lb, (Ipp64f *)dst, dstLen, lowLag,
                                     ippsNormNone, buffer);
    case DT_COMPLEX8:
        return ippsCrossCorrNorm_64fc((const Ipp64fc *)a, la, (const Ipp64fc *)b, lb, (Ipp64fc *)dst, dstLen,
                                      lowLag, ippsNormNone, buffer);
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT2: case DT_INT4: case DT_INT8:
        break;
    }
    return ORB_NO_KERNEL;
}

static IppDataType ippTypeOf(int64_t code)
{
    return code == DT_FLOAT4 ? ipp32f : code == DT_FLOAT8 ? ipp64f : ipp64fc;
}

/* A single-precision working copy of an integer[2] source: allocated and
 * filled, or null after the raise. Any status other than success fails
 * when strict is set (the auto-correlation), else only a negative one. */
static Ipp32f *floatCopy(HostCallbacks cb, OrbHeld *held, const Ipp16s *src, int64_t len, int strict)
{
    Ipp32f *copy = orbMalloc32f(held, orbLen32(len));
    IppStatus status;

    if (!orbAllocated(cb, held))
        return NULL;
    status = ippsConvert_16s32f(src, copy, orbLen32(len));
    if (strict ? !orbInitOk(cb, held, status) : !orbOk(cb, held, status))
        return NULL;
    return copy;
}

/* The shared body of the three auto-correlations; flag is the
 * normalisation passed with the automatic algorithm. */
static HostValue autoExport(HostCallbacks cb, ArgSeq args, int flag)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, dstLen, srcLen;
    void *dst, *src;
    int size = 0;
    OrbHeld held;
    Ipp8u *buffer;
    Ipp32f *copy, *result;
    Ipp32s scale;

    if (n < 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &dstLen, &dst);
    orbHeldInit(&held);
    if (code == DT_FLOAT4 || code == DT_FLOAT8 || code == DT_COMPLEX8) {
        src = orbSampleOf(cb, args[2], code, &srcLen);
        if (!orbFits(cb, &dstLen, args[1], code) || !orbFits(cb, &srcLen, args[2], code))
            return args[1];
        if (!orbOk(cb, &held,
                   ippsAutoCorrNormGetBufferSize(orbLen32(srcLen), orbLen32(dstLen), ippTypeOf(code), flag, &size)))
            return args[1];
        buffer = orbMalloc8u(&held, size);
        if (!orbAllocated(cb, &held))
            return args[1];
        if (!orbOk(cb, &held, autoBy(code, src, orbLen32(srcLen), dst, orbLen32(dstLen), flag, buffer)))
            return args[1];
        orbRelease(&held);
        return args[1];
    }
    if (code != DT_INT2) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (n < 3) {
        HostError(cb, MSG_SCALE);
        return args[1];
    }
    scale = GetInt4Value(cb, args[3]);
    src = GetInt2Sample(cb, args[2]);
    srcLen = HostRTableNumElements(cb, args[2]);
    if (!orbFits(cb, &dstLen, args[1], DT_INT2) || !orbFits(cb, &srcLen, args[2], DT_INT2))
        return args[1];
    if (!orbOk(cb, &held, ippsAutoCorrNormGetBufferSize(orbLen32(srcLen), orbLen32(dstLen), ipp32f, flag, &size)))
        return args[1];
    copy = floatCopy(cb, &held, (const Ipp16s *)src, srcLen, 1);
    if (!copy)
        return args[1];
    result = orbMalloc32f(&held, orbLen32(dstLen));
    buffer = orbMalloc8u(&held, size);
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbInitOk(cb, &held,
                   ippsAutoCorrNorm_32f(copy, orbLen32(srcLen), result, orbLen32(dstLen), flag, buffer)))
        return args[1];
    if (!orbOk(cb, &held, ippsConvert_32f16s_Sfs(result, (Ipp16s *)dst, orbLen32(dstLen), ippRndNear, scale)))
        return args[1];
    orbRelease(&held);
    return args[1];
}

ORB_API HostValue orbAutoCorrelation(HostCallbacks cb, ArgSeq args)
{
    return autoExport(cb, args, ippsNormNone);
}

ORB_API HostValue orbBiasedAutoCorrelation(HostCallbacks cb, ArgSeq args)
{
    return autoExport(cb, args, ippsNormB);
}

ORB_API HostValue orbUnbiasedAutoCorrelation(HostCallbacks cb, ArgSeq args)
{
    return autoExport(cb, args, ippsNormU);
}

ORB_API HostValue orbCrossCorrelation(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, dstLen, la, lb;
    void *dst, *a, *b;
    Ipp32s lowLag, scale;
    int size = 0;
    OrbHeld held;
    Ipp8u *buffer;
    Ipp32f *ca, *cb32, *result;

    if (n < 4) {
        orbArityError(cb, ARITY_FOUR, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &dstLen, &dst);
    lowLag = GetInt4Value(cb, args[4]);
    orbHeldInit(&held);
    if (code == DT_FLOAT4 || code == DT_FLOAT8 || code == DT_COMPLEX8) {
        a = orbSampleOf(cb, args[2], code, &la);
        b = orbSampleOf(cb, args[3], code, &lb);
        if (!orbFits(cb, &dstLen, args[1], code) || !orbFits(cb, &la, args[2], code) ||
            !orbFits(cb, &lb, args[3], code))
            return args[1];
        if (!orbOk(cb, &held,
                   ippsCrossCorrNormGetBufferSize(orbLen32(la), orbLen32(lb), orbLen32(dstLen), lowLag,
                                                  ippTypeOf(code), ippsNormNone, &size)))
            return args[1];
        buffer = orbMalloc8u(&held, size);
        if (!orbAllocated(cb, &held))
            return args[1];
        if (!orbOk(cb, &held,
                   crossBy(code, a, orbLen32(la), b, orbLen32(lb), dst, orbLen32(dstLen), lowLag, buffer)))
            return args[1];
        orbRelease(&held);
        return args[1];
    }
    if (code != DT_INT2) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (n < 5) {
        HostError(cb, MSG_SCALE);
        return args[1];
    }
    scale = GetInt4Value(cb, args[5]);
    a = GetInt2Sample(cb, args[2]);
    la = HostRTableNumElements(cb, args[2]);
    b = GetInt2Sample(cb, args[3]);
    lb = HostRTableNumElements(cb, args[3]);
    if (!orbFits(cb, &dstLen, args[1], DT_INT2) || !orbFits(cb, &la, args[2], DT_INT2) ||
        !orbFits(cb, &lb, args[3], DT_INT2))
        return args[1];
    if (!orbOk(cb, &held,
               ippsCrossCorrNormGetBufferSize(orbLen32(la), orbLen32(lb), orbLen32(dstLen), lowLag, ipp32f,
                                              ippsNormNone, &size)))
        return args[1];
    ca = floatCopy(cb, &held, (const Ipp16s *)a, la, 0);
    if (!ca)
        return args[1];
    cb32 = floatCopy(cb, &held, (const Ipp16s *)b, lb, 0);
    if (!cb32)
        return args[1];
    result = orbMalloc32f(&held, orbLen32(dstLen));
    buffer = orbMalloc8u(&held, size);
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbOk(cb, &held,
               ippsCrossCorrNorm_32f(ca, orbLen32(la), cb32, orbLen32(lb), result, orbLen32(dstLen), lowLag,
                                     ippsNormNone, buffer)))
        return args[1];
    if (!orbOk(cb, &held, ippsConvert_32f16s_Sfs(result, (Ipp16s *)dst, orbLen32(dstLen), ippRndNear, scale)))
        return args[1];
    orbRelease(&held);
    return args[1];
}
