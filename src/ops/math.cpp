/* Unary math and normalisation: one elementary function applied to every
 * element of argument 2, written into argument 1. */
#include "frame/frame.h"

typedef enum UnaryOp { OP_ABS, OP_SQR, OP_SQRT, OP_EXP, OP_LN, OP_ARCTAN } UnaryOp;

static IppStatus unary32f(UnaryOp op, const Ipp32f *src, Ipp32f *dst, int len)
{
    switch (op) {
    case OP_ABS: return ippsAbs_32f(src, dst, len);
    case OP_SQR: return ippsSqr_32f(src, dst, len);
    case OP_SQRT: return ippsSqrt_32f(src, dst, len);
    case OP_EXP: return ippsExp_32f(src, dst, len);
    case OP_LN: return ippsLn_32f(src, dst, len);
    case OP_ARCTAN: return ippsArctan_32f(src, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus unary64f(UnaryOp op, const Ipp64f *src, Ipp64f *dst, int len)
{
    switch (op) {
    case OP_ABS: return ippsAbs_64f(src, dst, len);
    case OP_SQR: return ippsSqr_64f(src, dst, len);
    case OP_SQRT: return ippsSqrt_64f(src, dst, len);
    case OP_EXP: return ippsExp_64f(src, dst, len);
    case OP_LN: return ippsLn_64f(src, dst, len);
    case OP_ARCTAN: return ippsArctan_64f(src, dst, len);
    }
    return ORB_NO_KERNEL;
}

/* Only the square and the square root have complex forms. */
static IppStatus unary64fc(UnaryOp op, const Ipp64fc *src, Ipp64fc *dst, int len)
{
    switch (op) {
    case OP_SQR: return ippsSqr_64fc(src, dst, len);
    case OP_SQRT: return ippsSqrt_64fc(src, dst, len);
    case OP_ABS: case OP_EXP: case OP_LN: case OP_ARCTAN: break;
    }
    return ORB_NO_KERNEL;
}

/* The family's datatypes. */
static int unarySupports(UnaryOp op, int64_t code)
{
    return code == DT_FLOAT4 || code == DT_FLOAT8 || (code == DT_COMPLEX8 && (op == OP_SQR || op == OP_SQRT));
}

/* The family's shared body. Argument 2 is read with the accessor of
 * argument 1's datatype, so a mismatch is reported in that accessor's words. */
static HostValue unaryExport(HostCallbacks cb, ArgSeq args, UnaryOp op)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *dst, *src;
    IppStatus status;

    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (!unarySupports(op, code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &len2);
    if (!orbCountsAgree(cb, len2 == len) || !orbAllFit(cb, &len, args, 1, 2, code))
        return args[1];
    if (code == DT_FLOAT4)
        status = unary32f(op, (const Ipp32f *)src, (Ipp32f *)dst, orbLen32(len));
    else if (code == DT_FLOAT8)
        status = unary64f(op, (const Ipp64f *)src, (Ipp64f *)dst, orbLen32(len));
    else if (code == DT_COMPLEX8)
        status = unary64fc(op, (const Ipp64fc *)src, (Ipp64fc *)dst, orbLen32(len));
    else
        status = ORB_NO_KERNEL;
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbAbs(HostCallbacks cb, ArgSeq args)
{
    return unaryExport(cb, args, OP_ABS);
}

ORB_API HostValue orbSqr(HostCallbacks cb, ArgSeq args)
{
    return unaryExport(cb, args, OP_SQR);
}

ORB_API HostValue orbSqrt(HostCallbacks cb, ArgSeq args)
{
    return unaryExport(cb, args, OP_SQRT);
}

ORB_API HostValue orbExp(HostCallbacks cb, ArgSeq args)
{
    return unaryExport(cb, args, OP_EXP);
}

ORB_API HostValue orbLn(HostCallbacks cb, ArgSeq args)
{
    return unaryExport(cb, args, OP_LN);
}

ORB_API HostValue orbArctan(HostCallbacks cb, ArgSeq args)
{
    return unaryExport(cb, args, OP_ARCTAN);
}

/* Initialises before counting, and asks for the count again when it reports
 * a wrong one. Both scalars are read before the lengths are compared. */
ORB_API HostValue orbNormalise(HostCallbacks cb, ArgSeq args)
{
    int64_t n, len, len2;
    Ipp64f *dst;
    const Ipp64f *src;
    Ipp64f sub, div;
    IppStatus status;

    orbCallStart();
    orbInit(cb);
    n = HostNumArgs(cb, args);
    if (n != 4) {
        orbArityError(cb, ARITY_FOUR, HostNumArgs(cb, args));
        return 0;
    }
    dst = GetFloat8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    src = GetFloat8Sample(cb, args[2]);
    len2 = HostRTableNumElements(cb, args[2]);
    sub = GetFloat8Value(cb, args[3]);
    div = GetFloat8Value(cb, args[4]);
    if (!orbCountsAgree(cb, len2 == len) || !orbAllFit(cb, &len, args, 1, 2, DT_FLOAT8))
        return args[1];
    status = ippsNormalize_64f(src, dst, orbLen32(len), sub, div);
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}
