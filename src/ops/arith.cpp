/* Element-wise arithmetic: an input rtable with a constant, and two input
 * rtables, written into argument 1. */
#include "frame/frame.h"

typedef enum ConstOp { C_ADD, C_SUB, C_SUBREV, C_MUL, C_DIV, C_DIVREV } ConstOp;
typedef enum ArrayOp { A_ADD, A_SUB, A_MUL, A_DIV, A_ADDPROD } ArrayOp;

static IppStatus const32f(ConstOp op, const Ipp32f *src, Ipp32f c, Ipp32f *dst, int len)
{
    switch (op) {
    case C_ADD: return ippsAddC_32f(src, c, dst, len);
    case C_SUB: return ippsSubC_32f(src, c, dst, len);
    case C_SUBREV: return ippsSubCRev_32f(src, c, dst, len);
    case C_MUL: return ippsMulC_32f(src, c, dst, len);
    case C_DIV: return ippsDivC_32f(src, c, dst, len);
    case C_DIVREV: return ippsDivCRev_32f(src, c, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus const64f(ConstOp op, const Ipp64f *src, Ipp64f c, Ipp64f *dst, int len)
{
    switch (op) {
    case C_ADD: return ippsAddC_64f(src, c, dst, len);
    case C_SUB: return ippsSubC_64f(src, c, dst, len);
    case C_SUBREV: return ippsSubCRev_64f(src, c, dst, len);
    case C_MUL: return ippsMulC_64f(src, c, dst, len);
    case C_DIV: return ippsDivC_64f(src, c, dst, len);
    case C_DIVREV: break;
    }
    return ORB_NO_KERNEL;
}

static IppStatus const64fc(ConstOp op, const Ipp64fc *src, Ipp64fc c, Ipp64fc *dst, int len)
{
    switch (op) {
    case C_ADD: return ippsAddC_64fc(src, c, dst, len);
    case C_SUB: return ippsSubC_64fc(src, c, dst, len);
    case C_SUBREV: return ippsSubCRev_64fc(src, c, dst, len);
    case C_MUL: return ippsMulC_64fc(src, c, dst, len);
    case C_DIV: return ippsDivC_64fc(src, c, dst, len);
    case C_DIVREV: break;
    }
    return ORB_NO_KERNEL;
}

/* The datatypes of the constant family: dividing into a constant exists in
 * single precision only. */
static int constSupports(ConstOp op, int64_t code)
{
    return code == DT_FLOAT4 || ((code == DT_FLOAT8 || code == DT_COMPLEX8) && op != C_DIVREV);
}

/* The constant family compares the two rtables itself, and carries on to
 * the dispatch after either mismatch when the raise returns (computing then
 * only over what both rtables really have). The constant is read only after
 * the rtable checks. */
static HostValue constExport(HostCallbacks cb, ArgSeq args, ConstOp op)
{
    int64_t n = orbBegin(cb, args);
    int64_t code1, code2, len1, len2;
    void *dst, *src;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_THREE, n);
        return 0;
    }
    code1 = orbTarget(cb, args[1], &len1, &dst);
    code2 = orbTarget(cb, args[2], &len2, &src);
    if (code1 != code2)
        HostError(cb, MSG_SAME_DATATYPE);
    if (len1 != len2)
        HostError(cb, MSG_SAME_LENGTH);
    if (!constSupports(op, code1)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (code1 == DT_FLOAT4) {
        Ipp32f c = GetFloat4Value(cb, args[3]);
        if (!orbAllFit(cb, &len1, args, 1, 2, code1))
            return args[1];
        status = const32f(op, (const Ipp32f *)src, c, (Ipp32f *)dst, orbLen32(len1));
    } else if (code1 == DT_FLOAT8) {
        Ipp64f c = GetFloat8Value(cb, args[3]);
        if (!orbAllFit(cb, &len1, args, 1, 2, code1))
            return args[1];
        status = const64f(op, (const Ipp64f *)src, c, (Ipp64f *)dst, orbLen32(len1));
    } else if (code1 == DT_COMPLEX8) {
        Ipp64fc c = GetComplex8Value(cb, args[3]);
        if (!orbAllFit(cb, &len1, args, 1, 2, code1))
            return args[1];
        status = const64fc(op, (const Ipp64fc *)src, c, (Ipp64fc *)dst, orbLen32(len1));
    } else {
        status = ORB_NO_KERNEL;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbAddConstant(HostCallbacks cb, ArgSeq args)
{
    return constExport(cb, args, C_ADD);
}

ORB_API HostValue orbSubConstant(HostCallbacks cb, ArgSeq args)
{
    return constExport(cb, args, C_SUB);
}

ORB_API HostValue orbSubConstantRev(HostCallbacks cb, ArgSeq args)
{
    return constExport(cb, args, C_SUBREV);
}

ORB_API HostValue orbMulConstant(HostCallbacks cb, ArgSeq args)
{
    return constExport(cb, args, C_MUL);
}

ORB_API HostValue orbDivConstant(HostCallbacks cb, ArgSeq args)
{
    return constExport(cb, args, C_DIV);
}

ORB_API HostValue orbDivConstantRev(HostCallbacks cb, ArgSeq args)
{
    return constExport(cb, args, C_DIVREV);
}

static IppStatus array32f(ArrayOp op, const Ipp32f *a, const Ipp32f *b, Ipp32f *dst, int len)
{
    switch (op) {
    case A_ADD: return ippsAdd_32f(a, b, dst, len);
    case A_SUB: return ippsSub_32f(a, b, dst, len);
    case A_MUL: return ippsMul_32f(a, b, dst, len);
    case A_DIV: return ippsDiv_32f(a, b, dst, len);
    case A_ADDPROD: return ippsAddProduct_32f(a, b, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus array64f(ArrayOp op, const Ipp64f *a, const Ipp64f *b, Ipp64f *dst, int len)
{
    switch (op) {
    case A_ADD: return ippsAdd_64f(a, b, dst, len);
    case A_SUB: return ippsSub_64f(a, b, dst, len);
    case A_MUL: return ippsMul_64f(a, b, dst, len);
    case A_DIV: return ippsDiv_64f(a, b, dst, len);
    case A_ADDPROD: return ippsAddProduct_64f(a, b, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus array64fc(ArrayOp op, const Ipp64fc *a, const Ipp64fc *b, Ipp64fc *dst, int len)
{
    switch (op) {
    case A_ADD: return ippsAdd_64fc(a, b, dst, len);
    case A_SUB: return ippsSub_64fc(a, b, dst, len);
    case A_MUL: return ippsMul_64fc(a, b, dst, len);
    case A_DIV: return ippsDiv_64fc(a, b, dst, len);
    case A_ADDPROD: return ippsAddProduct_64fc(a, b, dst, len);
    }
    return ORB_NO_KERNEL;
}

/* The array family reads both operands with the accessor of argument 1's
 * datatype. The backend takes the first source as the right-hand operand of
 * a subtraction or division, so orbSub gives b - a and orbDiv b / a. A failing
 * status is reported twice in a row; the first report does not return. */
static HostValue arrayExport(HostCallbacks cb, ArgSeq args, ArrayOp op)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, lenA, lenB;
    void *dst, *a, *b;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    /* The array family's datatypes. */
    if (code != DT_FLOAT4 && code != DT_FLOAT8 && code != DT_COMPLEX8) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    a = orbSampleOf(cb, args[2], code, &lenA);
    b = orbSampleOf(cb, args[3], code, &lenB);
    if (!orbCountsAgree(cb, lenA == len && lenB == len) || !orbAllFit(cb, &len, args, 1, 3, code))
        return args[1];
    if (code == DT_FLOAT4)
        status = array32f(op, (const Ipp32f *)a, (const Ipp32f *)b, (Ipp32f *)dst, orbLen32(len));
    else if (code == DT_FLOAT8)
        status = array64f(op, (const Ipp64f *)a, (const Ipp64f *)b, (Ipp64f *)dst, orbLen32(len));
    else if (code == DT_COMPLEX8)
        status = array64fc(op, (const Ipp64fc *)a, (const Ipp64fc *)b, (Ipp64fc *)dst, orbLen32(len));
    else
        status = ORB_NO_KERNEL;
    if (status < 0) {
        orbIppError(cb, status);
        orbIppError(cb, status);
    }
    return args[1];
}

ORB_API HostValue orbAdd(HostCallbacks cb, ArgSeq args)
{
    return arrayExport(cb, args, A_ADD);
}

ORB_API HostValue orbSub(HostCallbacks cb, ArgSeq args)
{
    return arrayExport(cb, args, A_SUB);
}

ORB_API HostValue orbMul(HostCallbacks cb, ArgSeq args)
{
    return arrayExport(cb, args, A_MUL);
}

ORB_API HostValue orbDiv(HostCallbacks cb, ArgSeq args)
{
    return arrayExport(cb, args, A_DIV);
}

ORB_API HostValue orbAddProd(HostCallbacks cb, ArgSeq args)
{
    return arrayExport(cb, args, A_ADDPROD);
}
