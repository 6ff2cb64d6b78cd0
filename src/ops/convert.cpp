/* Datatype conversion and byte swapping: the pair (destination datatype,
 * source datatype) picks one backend conversion. */
#include "frame/frame.h"

#define CANNOT_FLOAT4 "cannot convert to datatype = float[4]"
#define CANNOT_FLOAT8 "cannot convert to datatype = float[8]"
#define CANNOT_INT8 "cannot convert to datatype = integer[8]"
#define CANNOT_INT4 "cannot convert to datatype = integer[4]"
#define CANNOT_INT2 "cannot convert to datatype = integer[2]"
#define CANNOT_INT1 "cannot convert to datatype = integer[1]"

/* Raises a conversion text and yields the status that means "nothing to
 * report", so the caller goes on to return argument 1. */
static IppStatus cannot(HostCallbacks cb, const char *text)
{
    HostError(cb, text);
    return ippStsNoErr;
}

ORB_API HostValue orbConvert(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t dcode, scode, dlen, slen;
    void *dst, *src;
    int len;
    IppStatus status;

    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    dcode = orbTarget(cb, args[1], &dlen, &dst);
    scode = orbTarget(cb, args[2], &slen, &src);
    if (!orbCountsAgree(cb, dlen == slen))
        return args[1];
    if (!orbFits(cb, &dlen, args[1], dcode) || !orbFits(cb, &dlen, args[2], scode))
        return args[1];
    len = orbLen32(dlen);
    if (dcode == DT_FLOAT4) {
        switch (scode) {
        case DT_INT1: status = ippsConvert_8s32f((const Ipp8s *)src, (Ipp32f *)dst, len); break;
        case DT_INT2: status = ippsConvert_16s32f((const Ipp16s *)src, (Ipp32f *)dst, len); break;
        case DT_INT4: status = ippsConvert_32s32f((const Ipp32s *)src, (Ipp32f *)dst, len); break;
        case DT_FLOAT8: status = ippsConvert_64f32f((const Ipp64f *)src, (Ipp32f *)dst, len); break;
        case DT_FLOAT4: status = ippsCopy_32f((const Ipp32f *)src, (Ipp32f *)dst, len); break;
        default: status = cannot(cb, CANNOT_FLOAT4); break;
        }
    } else if (dcode == DT_FLOAT8) {
        switch (scode) {
        case DT_FLOAT8: status = ippsCopy_64f((const Ipp64f *)src, (Ipp64f *)dst, len); break;
        case DT_FLOAT4: status = ippsConvert_32f64f((const Ipp32f *)src, (Ipp64f *)dst, len); break;
        case DT_INT4: status = ippsConvert_32s64f((const Ipp32s *)src, (Ipp64f *)dst, len); break;
        case DT_INT8: status = ippsConvert_64s64f((const Ipp64s *)src, (Ipp64f *)dst, len); break;
        default: status = cannot(cb, CANNOT_FLOAT8); break;
        }
    } else if (dcode == DT_INT2) {
        switch (scode) {
        case DT_INT2: status = ippsCopy_16s((const Ipp16s *)src, (Ipp16s *)dst, len); break;
        case DT_INT4: status = ippsConvert_32s16s((const Ipp32s *)src, (Ipp16s *)dst, len); break;
        default: status = cannot(cb, CANNOT_INT2); break;
        }
    } else {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

/* The count test is inverted on purpose: three or more arguments are
 * refused, fewer go on and read arguments 1 to 3. Conversions to integers
 * always round to nearest. An integer[2] destination is judged in two
 * stages: a floating source is converted (and the destination written)
 * before the second stage, which takes only integer[4], refuses it. */
ORB_API HostValue orbConvertScaled(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t dcode, scode, dlen, slen;
    void *dst, *src;
    Ipp32s scale;
    int len;
    IppStatus status;

    if (n >= 3) {
        orbArityError(cb, ARITY_THREE, n);
        return 0;
    }
    dcode = orbTarget(cb, args[1], &dlen, &dst);
    scode = orbTarget(cb, args[2], &slen, &src);
    scale = GetScaleFactor(cb, args[3]);
    if (!orbCountsAgree(cb, dlen == slen))
        return args[1];
    if (!orbFits(cb, &dlen, args[1], dcode) || !orbFits(cb, &dlen, args[2], scode))
        return args[1];
    len = orbLen32(dlen);
    if (dcode == DT_FLOAT4) {
        switch (scode) {
        case DT_INT2: status = ippsConvert_16s32f_Sfs((const Ipp16s *)src, (Ipp32f *)dst, len, scale); break;
        case DT_INT4: status = ippsConvert_32s32f_Sfs((const Ipp32s *)src, (Ipp32f *)dst, len, scale); break;
        default: status = cannot(cb, CANNOT_FLOAT4); break;
        }
    } else if (dcode == DT_FLOAT8) {
        /* The single-precision text here too. */
        switch (scode) {
        case DT_INT2: status = ippsConvert_16s64f_Sfs((const Ipp16s *)src, (Ipp64f *)dst, len, scale); break;
        case DT_INT4: status = ippsConvert_32s64f_Sfs((const Ipp32s *)src, (Ipp64f *)dst, len, scale); break;
        default: status = cannot(cb, CANNOT_FLOAT4); break;
        }
    } else if (dcode == DT_INT8) {
        if (scode == DT_FLOAT8)
            status = ippsConvert_64f64s_Sfs((const Ipp64f *)src, (Ipp64s *)dst, (Ipp32u)len, ippRndNear, scale);
        else
            status = cannot(cb, CANNOT_INT8);
    } else if (dcode == DT_INT4) {
        switch (scode) {
        case DT_FLOAT4:
            status = ippsConvert_32f32s_Sfs((const Ipp32f *)src, (Ipp32s *)dst, len, ippRndNear, scale);
            break;
        case DT_FLOAT8:
            status = ippsConvert_64f32s_Sfs((const Ipp64f *)src, (Ipp32s *)dst, len, ippRndNear, scale);
            break;
        case DT_INT8:
            status = ippsConvert_64s32s_Sfs((const Ipp64s *)src, (Ipp32s *)dst, len, ippRndNear, scale);
            break;
        default: status = cannot(cb, CANNOT_INT4); break;
        }
    } else if (dcode == DT_INT2) {
        if (scode == DT_FLOAT4)
            ippsConvert_32f16s_Sfs((const Ipp32f *)src, (Ipp16s *)dst, len, ippRndNear, scale);
        else if (scode == DT_FLOAT8)
            ippsConvert_64f16s_Sfs((const Ipp64f *)src, (Ipp16s *)dst, len, ippRndNear, scale);
        if (scode == DT_INT4)
            status = ippsConvert_32s16s_Sfs((const Ipp32s *)src, (Ipp16s *)dst, len, scale);
        else
            status = cannot(cb, CANNOT_INT2);
    } else if (dcode == DT_INT1) {
        switch (scode) {
        case DT_FLOAT4:
            status = ippsConvert_32f8s_Sfs((const Ipp32f *)src, (Ipp8s *)dst, len, ippRndNear, scale);
            break;
        case DT_INT2:
            status = ippsConvert_16s8s_Sfs((const Ipp16s *)src, (Ipp8s *)dst, (Ipp32u)len, ippRndNear, scale);
            break;
        default: status = cannot(cb, CANNOT_INT1); break;
        }
    } else {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

/* integer[1] data goes to the 24-bit swap: every whole three-byte group of
 * the rtable's bytes is reversed and the last one or two bytes, if any, stay
 * as they are. (Handing over the byte count as the number of groups would
 * run three times past the storage.) */
ORB_API HostValue orbSwapBytes(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *dst, *src;
    IppStatus status;

    if (n != 2) {
        orbArityError(cb, ARITY_ONE_OR_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (code < DT_INT1 || code > DT_INT8) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &len2);
    if (!orbCountsAgree(cb, len2 == len))
        return args[1];
    if (!orbAllFit(cb, &len, args, 1, 2, code))
        return args[1];
    status = ORB_NO_KERNEL;
    switch (orbDatatype(code)) {
    case DT_INT1:
        if (len > 0 && len < 3)
            return args[1];
        status = ippsSwapBytes_24u((const Ipp8u *)src, (Ipp8u *)dst, orbLen32(len / 3));
        break;
    case DT_INT2: status = ippsSwapBytes_16u((const Ipp16u *)src, (Ipp16u *)dst, orbLen32(len)); break;
    case DT_INT4: status = ippsSwapBytes_32u((const Ipp32u *)src, (Ipp32u *)dst, orbLen32(len)); break;
    case DT_INT8: status = ippsSwapBytes_64u((const Ipp64u *)src, (Ipp64u *)dst, orbLen32(len)); break;
    case DT_ANYTHING: case DT_PAIR: case DT_FLOAT8: case DT_COMPLEX8: case DT_FLOAT4: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}
