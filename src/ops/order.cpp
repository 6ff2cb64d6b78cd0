/* Ordering and search: the binary order of a signal, reversal, in-place
 * sorts and nearest entries of an ascending table of unsigned 16-bit values. */
#include "frame/frame.h"

#define MSG_COUNTS_124 "first two and fourth rtables must have the same number of elements"
#define MSG_TABLE_SHORT "third argument must have at least as many elements as the remaining arguments"

ORB_API HostValue orbMaxOrder(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len;
    void *data;
    int order = 0;
    IppStatus status = ORB_NO_KERNEL;

    if (n != 1) {
        orbArityError(cb, ARITY_ONE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    if (code != DT_FLOAT4 && code != DT_FLOAT8 && code != DT_INT2 && code != DT_INT4) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return 0;
    }
    if (!orbFits(cb, &len, args[1], code))
        return 0;
    switch (orbDatatype(code)) {
    case DT_FLOAT4: status = ippsMaxOrder_32f((const Ipp32f *)data, orbLen32(len), &order); break;
    case DT_FLOAT8: status = ippsMaxOrder_64f((const Ipp64f *)data, orbLen32(len), &order); break;
    case DT_INT2: status = ippsMaxOrder_16s((const Ipp16s *)data, orbLen32(len), &order); break;
    case DT_INT4: status = ippsMaxOrder_32s((const Ipp32s *)data, orbLen32(len), &order); break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT8: case DT_COMPLEX8: break;
    }
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    return HostFromInteger(cb, order);
}

/* The source is read with the unsigned accessor of the destination's
 * datatype before the counts are compared. */
ORB_API HostValue orbReverse(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2 = 0;
    void *dst;
    const void *src = 0;
    IppStatus status = ORB_NO_KERNEL;

    if (n != 2) {
        orbArityError(cb, ARITY_ONE_OR_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    switch (orbDatatype(code)) {
    case DT_INT1: src = GetUInt1Sample(cb, args[2]); break;
    case DT_INT2: src = GetUInt2Sample(cb, args[2]); break;
    case DT_FLOAT8: src = GetFloat8Sample(cb, args[2]); break;
    case DT_COMPLEX8: src = GetComplex8Sample(cb, args[2]); break;
    case DT_FLOAT4: src = GetFloat4Sample(cb, args[2]); break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT4: case DT_INT8: default:
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    len2 = HostRTableNumElements(cb, args[2]);
    if (!orbCountsAgree(cb, len == len2) || !orbAllFit(cb, &len, args, 1, 2, code))
        return args[1];
    switch (orbDatatype(code)) {
    case DT_INT1: status = ippsFlip_8u((const Ipp8u *)src, (Ipp8u *)dst, orbLen32(len)); break;
    case DT_INT2: status = ippsFlip_16u((const Ipp16u *)src, (Ipp16u *)dst, orbLen32(len)); break;
    case DT_FLOAT8: status = ippsFlip_64f((const Ipp64f *)src, (Ipp64f *)dst, orbLen32(len)); break;
    case DT_COMPLEX8: status = ippsFlip_64fc((const Ipp64fc *)src, (Ipp64fc *)dst, orbLen32(len)); break;
    case DT_FLOAT4: status = ippsFlip_32f((const Ipp32f *)src, (Ipp32f *)dst, orbLen32(len)); break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT4: case DT_INT8: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

/* integer[1] sorts as unsigned bytes. */
static HostValue sortExport(HostCallbacks cb, ArgSeq args, int ascending)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len;
    void *data;
    int l;
    IppStatus status = ORB_NO_KERNEL;

    if (n != 1) {
        orbArityError(cb, ARITY_ONE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    if (code != DT_INT1 && code != DT_INT2 && code != DT_INT4 && code != DT_FLOAT8 && code != DT_FLOAT4) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (!orbFits(cb, &len, args[1], code))
        return args[1];
    l = orbLen32(len);
    switch (orbDatatype(code)) {
    case DT_INT1: status = ascending ? ippsSortAscend_8u_I((Ipp8u *)data, l) : ippsSortDescend_8u_I((Ipp8u *)data, l); break;
    case DT_INT2: status = ascending ? ippsSortAscend_16s_I((Ipp16s *)data, l) : ippsSortDescend_16s_I((Ipp16s *)data, l); break;
    case DT_INT4: status = ascending ? ippsSortAscend_32s_I((Ipp32s *)data, l) : ippsSortDescend_32s_I((Ipp32s *)data, l); break;
    case DT_FLOAT8: status = ascending ? ippsSortAscend_64f_I((Ipp64f *)data, l) : ippsSortDescend_64f_I((Ipp64f *)data, l); break;
    case DT_FLOAT4: status = ascending ? ippsSortAscend_32f_I((Ipp32f *)data, l) : ippsSortDescend_32f_I((Ipp32f *)data, l); break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT8: case DT_COMPLEX8: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbSortAscending(HostCallbacks cb, ArgSeq args) { return sortExport(cb, args, 1); }
ORB_API HostValue orbSortDescending(HostCallbacks cb, ArgSeq args) { return sortExport(cb, args, 0); }

/* The index comes back 0-based, as the backend reports it. */
ORB_API HostValue orbFindNearestOne(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    const Ipp16u *table;
    int64_t len;
    Ipp32u value;
    Ipp16u outValue = 0;
    int outIndex = 0;
    IppStatus status;

    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    table = GetUInt2Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    value = GetUInt2Value(cb, args[2]);
    if (!orbFits(cb, &len, args[1], DT_INT2))
        return 0;
    status = ippsFindNearestOne_16u((Ipp16u)value, &outValue, &outIndex, table, orbLen32(len));
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    return HostExprSeqOf(cb, 2, HostFromInteger(cb, outValue), HostFromInteger(cb, outIndex));
}

/* A table shorter than the values sought is refused. */
ORB_API HostValue orbFindNearest(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    Ipp16u *outValues;
    Ipp32s *outIndexes;
    const Ipp16u *table, *values;
    int64_t c1, c2, c3, c4;
    IppStatus status;

    if (n != 4) {
        orbArityError(cb, ARITY_FOUR, n);
        return 0;
    }
    outValues = GetUInt2Sample(cb, args[1]);
    c1 = HostRTableNumElements(cb, args[1]);
    outIndexes = GetInt4Sample(cb, args[2]);
    c2 = HostRTableNumElements(cb, args[2]);
    table = GetUInt2Sample(cb, args[3]);
    c3 = HostRTableNumElements(cb, args[3]);
    values = GetUInt2Sample(cb, args[4]);
    c4 = HostRTableNumElements(cb, args[4]);
    if (c1 != c2 || c2 != c4) {
        HostError(cb, MSG_COUNTS_124);
        return 0;
    }
    if (c4 > c3) {
        HostError(cb, MSG_TABLE_SHORT);
        return 0;
    }
    if (!orbFits(cb, &c4, args[1], DT_INT2) || !orbFits(cb, &c4, args[2], DT_INT4) ||
        !orbFits(cb, &c4, args[4], DT_INT2) || !orbFits(cb, &c3, args[3], DT_INT2))
        return 0;
    status = ippsFindNearest_16u(values, outValues, outIndexes, orbLen32(c4), table, orbLen32(c3));
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    return HostExprSeqOf(cb, 2, args[1], args[2]);
}
