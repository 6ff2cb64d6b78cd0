/* Bitwise logic and shifts on integer[1], integer[2] and integer[4] rtables.
 * Logic treats elements as unsigned; shifts treat bytes as unsigned and the
 * wider elements as signed, so a right shift of those keeps the sign. */
#include "frame/frame.h"

typedef enum LogicOp { L_AND, L_OR, L_XOR } LogicOp;

static IppStatus logicC8u(LogicOp op, const Ipp8u *src, Ipp8u c, Ipp8u *dst, int len)
{
    switch (op) {
    case L_AND: return ippsAndC_8u(src, c, dst, len);
    case L_OR: return ippsOrC_8u(src, c, dst, len);
    case L_XOR: return ippsXorC_8u(src, c, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus logicC16u(LogicOp op, const Ipp16u *src, Ipp16u c, Ipp16u *dst, int len)
{
    switch (op) {
    case L_AND: return ippsAndC_16u(src, c, dst, len);
    case L_OR: return ippsOrC_16u(src, c, dst, len);
    case L_XOR: return ippsXorC_16u(src, c, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus logicC32u(LogicOp op, const Ipp32u *src, Ipp32u c, Ipp32u *dst, int len)
{
    switch (op) {
    case L_AND: return ippsAndC_32u(src, c, dst, len);
    case L_OR: return ippsOrC_32u(src, c, dst, len);
    case L_XOR: return ippsXorC_32u(src, c, dst, len);
    }
    return ORB_NO_KERNEL;
}

/* The family's datatypes: every export here takes exactly these. */
static int isLogicWidth(int64_t code)
{
    return code == DT_INT1 || code == DT_INT2 || code == DT_INT4;
}

/* The constant goes through the unsigned scalar accessors, so it must fit
 * the element width as a non-negative signed value; it is then truncated to
 * the element width. It is read before the counts are compared. */
static HostValue logicConstExport(HostCallbacks cb, ArgSeq args, LogicOp op)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *dst, *src;
    Ipp32u c;
    int l;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_TWO_OR_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (!isLogicWidth(code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &len2);
    if (code == DT_INT1)
        c = GetUInt1Value(cb, args[3]);
    else if (code == DT_INT2)
        c = GetUInt2Value(cb, args[3]);
    else
        c = GetUInt4Value(cb, args[3]);
    if (!orbCountsAgree(cb, len2 == len))
        return args[1];
    if (!orbAllFit(cb, &len, args, 1, 2, code))
        return args[1];
    l = orbLen32(len);
    status = ORB_NO_KERNEL;
    switch (orbDatatype(code)) {
    case DT_INT1: status = logicC8u(op, (const Ipp8u *)src, (Ipp8u)c, (Ipp8u *)dst, l); break;
    case DT_INT2: status = logicC16u(op, (const Ipp16u *)src, (Ipp16u)c, (Ipp16u *)dst, l); break;
    case DT_INT4: status = logicC32u(op, (const Ipp32u *)src, c, (Ipp32u *)dst, l); break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT8: case DT_FLOAT8: case DT_COMPLEX8: case DT_FLOAT4: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbAndC(HostCallbacks cb, ArgSeq args)
{
    return logicConstExport(cb, args, L_AND);
}

ORB_API HostValue orbOrC(HostCallbacks cb, ArgSeq args)
{
    return logicConstExport(cb, args, L_OR);
}

ORB_API HostValue orbXorC(HostCallbacks cb, ArgSeq args)
{
    return logicConstExport(cb, args, L_XOR);
}

static IppStatus logic8u(LogicOp op, const Ipp8u *a, const Ipp8u *b, Ipp8u *dst, int len)
{
    switch (op) {
    case L_AND: return ippsAnd_8u(a, b, dst, len);
    case L_OR: return ippsOr_8u(a, b, dst, len);
    case L_XOR: return ippsXor_8u(a, b, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus logic16u(LogicOp op, const Ipp16u *a, const Ipp16u *b, Ipp16u *dst, int len)
{
    switch (op) {
    case L_AND: return ippsAnd_16u(a, b, dst, len);
    case L_OR: return ippsOr_16u(a, b, dst, len);
    case L_XOR: return ippsXor_16u(a, b, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus logic32u(LogicOp op, const Ipp32u *a, const Ipp32u *b, Ipp32u *dst, int len)
{
    switch (op) {
    case L_AND: return ippsAnd_32u(a, b, dst, len);
    case L_OR: return ippsOr_32u(a, b, dst, len);
    case L_XOR: return ippsXor_32u(a, b, dst, len);
    }
    return ORB_NO_KERNEL;
}

static HostValue logicArrayExport(HostCallbacks cb, ArgSeq args, LogicOp op)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, lenA, lenB;
    void *dst, *a, *b;
    int l;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_TWO_OR_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (!isLogicWidth(code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    a = orbSampleOf(cb, args[2], code, &lenA);
    b = orbSampleOf(cb, args[3], code, &lenB);
    if (!orbCountsAgree(cb, lenA == len && lenB == len))
        return args[1];
    if (!orbAllFit(cb, &len, args, 1, 3, code))
        return args[1];
    l = orbLen32(len);
    status = ORB_NO_KERNEL;
    switch (orbDatatype(code)) {
    case DT_INT1: status = logic8u(op, (const Ipp8u *)a, (const Ipp8u *)b, (Ipp8u *)dst, l); break;
    case DT_INT2: status = logic16u(op, (const Ipp16u *)a, (const Ipp16u *)b, (Ipp16u *)dst, l); break;
    case DT_INT4: status = logic32u(op, (const Ipp32u *)a, (const Ipp32u *)b, (Ipp32u *)dst, l); break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT8: case DT_FLOAT8: case DT_COMPLEX8: case DT_FLOAT4: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbAnd(HostCallbacks cb, ArgSeq args)
{
    return logicArrayExport(cb, args, L_AND);
}

ORB_API HostValue orbOr(HostCallbacks cb, ArgSeq args)
{
    return logicArrayExport(cb, args, L_OR);
}

ORB_API HostValue orbXor(HostCallbacks cb, ArgSeq args)
{
    return logicArrayExport(cb, args, L_XOR);
}

ORB_API HostValue orbNot(HostCallbacks cb, ArgSeq args)
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
    if (!isLogicWidth(code)) {
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
    case DT_INT1: status = ippsNot_8u((const Ipp8u *)src, (Ipp8u *)dst, orbLen32(len)); break;
    case DT_INT2: status = ippsNot_16u((const Ipp16u *)src, (Ipp16u *)dst, orbLen32(len)); break;
    case DT_INT4: status = ippsNot_32u((const Ipp32u *)src, (Ipp32u *)dst, orbLen32(len)); break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT8: case DT_FLOAT8: case DT_COMPLEX8: case DT_FLOAT4: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

/* Shifts read the count before the dispatch, so a bad count is reported even
 * for a datatype that is not supported. Bytes shift as unsigned, the wider
 * elements as signed. The count goes to the backend as it is; the backend's
 * status decides about counts beyond the element width. */
static HostValue shiftExport(HostCallbacks cb, ArgSeq args, int left)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *dst, *src;
    Ipp32s s;
    int l;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_TWO_OR_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    s = GetInt4Value(cb, args[3]);
    if (!isLogicWidth(code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &len2);
    if (!orbCountsAgree(cb, len2 == len))
        return args[1];
    if (!orbAllFit(cb, &len, args, 1, 2, code))
        return args[1];
    l = orbLen32(len);
    status = ORB_NO_KERNEL;
    switch (orbDatatype(code)) {
    case DT_INT1:
        status = left ? ippsLShiftC_8u((const Ipp8u *)src, s, (Ipp8u *)dst, l)
                      : ippsRShiftC_8u((const Ipp8u *)src, s, (Ipp8u *)dst, l);
        break;
    case DT_INT2:
        status = left ? ippsLShiftC_16s((const Ipp16s *)src, s, (Ipp16s *)dst, l)
                      : ippsRShiftC_16s((const Ipp16s *)src, s, (Ipp16s *)dst, l);
        break;
    case DT_INT4:
        status = left ? ippsLShiftC_32s((const Ipp32s *)src, s, (Ipp32s *)dst, l)
                      : ippsRShiftC_32s((const Ipp32s *)src, s, (Ipp32s *)dst, l);
        break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT8: case DT_FLOAT8: case DT_COMPLEX8: case DT_FLOAT4: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbLeftShift(HostCallbacks cb, ArgSeq args)
{
    return shiftExport(cb, args, 1);
}

ORB_API HostValue orbRightShift(HostCallbacks cb, ArgSeq args)
{
    return shiftExport(cb, args, 0);
}
