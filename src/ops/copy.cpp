/* Copy, move, fill, clear and resampling into a caller-supplied rtable. */
#include "frame/frame.h"

#define MSG_TOO_SMALL "output sample too small"

/* Copy and move share one body: a source no longer than the destination
 * goes into the destination's beginning; the rest keeps its values. */
static HostValue copyExport(HostCallbacks cb, ArgSeq args, int move)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, dlen, slen;
    void *dst;
    void *src;
    int len;
    IppStatus status;

    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &dlen, &dst);
    if (code < DT_INT2 || code > DT_FLOAT4) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &slen);
    if (!orbCountsAgree(cb, slen <= dlen))
        return args[1];
    if (!orbAllFit(cb, &slen, args, 1, 2, code))
        return args[1];
    len = orbLen32(slen);
    status = ORB_NO_KERNEL;
    switch (orbDatatype(code)) {
    case DT_INT2:
        status = move ? ippsMove_16s((const Ipp16s *)src, (Ipp16s *)dst, len)
                      : ippsCopy_16s((const Ipp16s *)src, (Ipp16s *)dst, len);
        break;
    case DT_INT4:
        status = move ? ippsMove_32s((const Ipp32s *)src, (Ipp32s *)dst, len)
                      : ippsCopy_32s((const Ipp32s *)src, (Ipp32s *)dst, len);
        break;
    case DT_INT8:
        status = move ? ippsMove_64s((const Ipp64s *)src, (Ipp64s *)dst, len)
                      : ippsCopy_64s((const Ipp64s *)src, (Ipp64s *)dst, len);
        break;
    case DT_FLOAT8:
        status = move ? ippsMove_64f((const Ipp64f *)src, (Ipp64f *)dst, len)
                      : ippsCopy_64f((const Ipp64f *)src, (Ipp64f *)dst, len);
        break;
    case DT_COMPLEX8:
        status = move ? ippsMove_64fc((const Ipp64fc *)src, (Ipp64fc *)dst, len)
                      : ippsCopy_64fc((const Ipp64fc *)src, (Ipp64fc *)dst, len);
        break;
    case DT_FLOAT4:
        status = move ? ippsMove_32f((const Ipp32f *)src, (Ipp32f *)dst, len)
                      : ippsCopy_32f((const Ipp32f *)src, (Ipp32f *)dst, len);
        break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbCopy(HostCallbacks cb, ArgSeq args)
{
    return copyExport(cb, args, 0);
}

ORB_API HostValue orbMove(HostCallbacks cb, ArgSeq args)
{
    return copyExport(cb, args, 1);
}

/* Fills the whole rtable with argument 2; byte rtables take an unsigned
 * 8-bit value. */
ORB_API HostValue orbSet(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, count;
    void *dst;
    int len;
    IppStatus status;

    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &count, &dst);
    if (!orbFits(cb, &count, args[1], code))
        return args[1];
    len = orbLen32(count);
    switch (orbDatatype(code)) {
    case DT_INT1: status = ippsSet_8u((Ipp8u)GetUInt1Value(cb, args[2]), (Ipp8u *)dst, len); break;
    case DT_INT2: status = ippsSet_16s(GetInt2Value(cb, args[2]), (Ipp16s *)dst, len); break;
    case DT_INT4: status = ippsSet_32s(GetInt4Value(cb, args[2]), (Ipp32s *)dst, len); break;
    case DT_INT8: status = ippsSet_64s(GetInt8Value(cb, args[2]), (Ipp64s *)dst, len); break;
    case DT_FLOAT8: status = ippsSet_64f(GetFloat8Value(cb, args[2]), (Ipp64f *)dst, len); break;
    case DT_COMPLEX8: status = ippsSet_64fc(GetComplex8Value(cb, args[2]), (Ipp64fc *)dst, len); break;
    case DT_FLOAT4: status = ippsSet_32f(GetFloat4Value(cb, args[2]), (Ipp32f *)dst, len); break;
    case DT_ANYTHING: case DT_PAIR:
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbZero(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, count;
    void *dst;
    int len;
    IppStatus status;

    if (n != 1) {
        orbArityError(cb, ARITY_ONE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &count, &dst);
    if (!orbFits(cb, &count, args[1], code))
        return args[1];
    len = orbLen32(count);
    switch (orbDatatype(code)) {
    case DT_INT1: status = ippsZero_8u((Ipp8u *)dst, len); break;
    case DT_INT2: status = ippsZero_16s((Ipp16s *)dst, len); break;
    case DT_INT4: status = ippsZero_32s((Ipp32s *)dst, len); break;
    case DT_INT8: status = ippsZero_64s((Ipp64s *)dst, len); break;
    case DT_FLOAT8: status = ippsZero_64f((Ipp64f *)dst, len); break;
    case DT_COMPLEX8: status = ippsZero_64fc((Ipp64fc *)dst, len); break;
    case DT_FLOAT4: status = ippsZero_32f((Ipp32f *)dst, len); break;
    case DT_ANYTHING: case DT_PAIR:
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

/* Resampling by an integer factor with an optional phase (argument 4;
 * further arguments are ignored). The backend reports the produced length
 * and the next phase; both are dropped. */
static HostValue sampleExport(HostCallbacks cb, ArgSeq args, int up)
{
    int64_t n = orbBegin(cb, args);
    int64_t dcode, scode, dlen, slen, need;
    void *dst, *src;
    Ipp32s factor, phase = 0;
    int outLen = 0, srcLen;
    IppStatus status;

    if (n < 3) {
        orbArityError(cb, ARITY_THREE_OR_FOUR, n);
        return 0;
    }
    dcode = orbTarget(cb, args[1], &dlen, &dst);
    scode = orbTarget(cb, args[2], &slen, &src);
    factor = GetInt4Value(cb, args[3]);
    if (n > 3)
        phase = GetInt4Value(cb, args[4]);
    if (dcode != scode) {
        HostError(cb, MSG_SAME_DATATYPE);
        return args[1];
    }
    if (up) {
        need = (int64_t)factor * slen;
    } else {
        /* The size rule divides by the factor; a zero factor skips the rule
         * and is refused by the backend instead of stopping the process. */
        need = factor != 0 ? (slen + factor - 1 - phase) / factor : 0;
    }
    if (dlen < need) {
        HostError(cb, MSG_TOO_SMALL);
        return args[1];
    }
    if (!orbFits(cb, &slen, args[2], scode) || !orbFits(cb, &dlen, args[1], dcode))
        return args[1];
    srcLen = orbLen32(slen);
    switch (orbDatatype(dcode)) {
    case DT_FLOAT4:
        status = up ? ippsSampleUp_32f((const Ipp32f *)src, srcLen, (Ipp32f *)dst, &outLen, factor, &phase)
                    : ippsSampleDown_32f((const Ipp32f *)src, srcLen, (Ipp32f *)dst, &outLen, factor, &phase);
        break;
    case DT_FLOAT8:
        status = up ? ippsSampleUp_64f((const Ipp64f *)src, srcLen, (Ipp64f *)dst, &outLen, factor, &phase)
                    : ippsSampleDown_64f((const Ipp64f *)src, srcLen, (Ipp64f *)dst, &outLen, factor, &phase);
        break;
    case DT_COMPLEX8:
        status = up ? ippsSampleUp_64fc((const Ipp64fc *)src, srcLen, (Ipp64fc *)dst, &outLen, factor, &phase)
                    : ippsSampleDown_64fc((const Ipp64fc *)src, srcLen, (Ipp64fc *)dst, &outLen, factor, &phase);
        break;
    case DT_INT2:
        status = up ? ippsSampleUp_16s((const Ipp16s *)src, srcLen, (Ipp16s *)dst, &outLen, factor, &phase)
                    : ippsSampleDown_16s((const Ipp16s *)src, srcLen, (Ipp16s *)dst, &outLen, factor, &phase);
        break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT4: case DT_INT8:
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbUpSample(HostCallbacks cb, ArgSeq args)
{
    return sampleExport(cb, args, 1);
}

ORB_API HostValue orbDownSample(HostCallbacks cb, ArgSeq args)
{
    return sampleExport(cb, args, 0);
}
