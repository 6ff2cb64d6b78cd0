/* Argument accessors.
 *
 * Each one checks a host value, raises in its own words when the check fails,
 * and returns the plain value. A host whose error raise returns gets the
 * fallback each accessor documents, so the caller always has something
 * consistent to carry on with.
 */
#include <string.h>

#include "frame/frame.h"

#define MSG_NOT_RTABLE "expecting an rtable, but received %1"
#define MSG_DIMENSIONS "expecting a one-dimensional rtable, but received one with %1 dimensions"
#define MSG_RECTANGULAR "rtable must have rectangular storage"
#define MSG_FLOAT8 "expecting an rtable with datatype = float[8], but received %1"
#define MSG_FLOAT4 "expecting an rtable with datatype = float[4], but received %1"
#define MSG_COMPLEX8 "expecting an rtable with datatype = complex[8], but received %1"
#define MSG_INT1 "expecting an rtable with datatype = integer[1], but received %1"
#define MSG_INT2 "expecting an rtable with datatype = integer[2], but received %1"
#define MSG_INT4 "expecting an rtable with datatype = integer[4], but received %1"
#define MSG_INT8 "expecting an rtable with datatype = integer[8], but received %1"
#define MSG_NUMERIC "expecting a numeric value, but received %1"
#define MSG_COMPLEX "expecting a complex numeric value, but received %1"
/* The 8-bit accessors share the 16-bit text: there is no 8-bit one. */
#define MSG_16BIT "expecting a 16-bit integer, but received %1"
#define MSG_32BIT "expecting a 32-bit integer, but received %1"
#define MSG_64BIT "expecting a 64-bit integer, but received %1"
#define MSG_INTEGER "expecting an integer, but received %1"
#define MSG_SCALE "expecting an integer scale factor, but received %1"
#define MSG_NON_NEGATIVE "expecting a non-negative integer, but received %1"
#define MSG_HINT "expecting one of \"none\", \"gofast\" or \"becareful\", but received %1"
#define MSG_STRING "expecting a string, but received %1"
#define MSG_ROUNDING "unrecognised rounding mode %1"

/* The shape check shared by the three shape accessors. The image check
 * prints a numbered line before each of its errors. Every step runs even
 * after a raise that returns; the datatype field read is the result. */
static int64_t checkShape(HostCallbacks cb, HostValue v, int32_t dims, int numbered)
{
    RTableSettings s;

    memset(&s, 0, sizeof s);
    if (!HostIsRTable(cb, v)) {
        if (numbered)
            HostPrintf(cb, "1\n");
        HostError(cb, MSG_NOT_RTABLE, v);
    }
    HostRTableGetSettings(cb, &s, v);
    if (s.numDims != dims) {
        if (numbered)
            HostPrintf(cb, "2\n");
        HostError(cb, MSG_DIMENSIONS, HostFromInteger(cb, s.numDims));
    }
    if (s.storage != RTABLE_RECTANGULAR) {
        if (numbered)
            HostPrintf(cb, "3\n");
        HostError(cb, MSG_RECTANGULAR);
    }
    return (int64_t)s.datatype;
}

ORB_API int64_t CheckArray(HostCallbacks cb, HostValue v)
{
    return checkShape(cb, v, 1, 0);
}

ORB_API int64_t CheckMatrix(HostCallbacks cb, HostValue v)
{
    return checkShape(cb, v, 2, 0);
}

ORB_API int64_t CheckImage(HostCallbacks cb, HostValue v)
{
    return checkShape(cb, v, 3, 1);
}

/* A typed element accessor: shape, then datatype; the storage comes back
 * even after a mismatch that returned. */
static void *typedData(HostCallbacks cb, HostValue v, int32_t dims, int64_t code, const char *msg)
{
    if (checkShape(cb, v, dims, dims == 3) != code)
        HostError(cb, msg, v);
    return HostRTableData(cb, v);
}

ORB_API Ipp64f *GetFloat8Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp64f *)typedData(cb, v, 1, DT_FLOAT8, MSG_FLOAT8);
}

ORB_API Ipp32f *GetFloat4Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp32f *)typedData(cb, v, 1, DT_FLOAT4, MSG_FLOAT4);
}

ORB_API Ipp64fc *GetComplex8Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp64fc *)typedData(cb, v, 1, DT_COMPLEX8, MSG_COMPLEX8);
}

ORB_API Ipp8s *GetInt1Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp8s *)typedData(cb, v, 1, DT_INT1, MSG_INT1);
}

ORB_API Ipp8u *GetUInt1Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp8u *)typedData(cb, v, 1, DT_INT1, MSG_INT1);
}

ORB_API Ipp16s *GetInt2Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp16s *)typedData(cb, v, 1, DT_INT2, MSG_INT2);
}

ORB_API Ipp16u *GetUInt2Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp16u *)typedData(cb, v, 1, DT_INT2, MSG_INT2);
}

ORB_API Ipp32s *GetInt4Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp32s *)typedData(cb, v, 1, DT_INT4, MSG_INT4);
}

ORB_API Ipp32u *GetUInt4Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp32u *)typedData(cb, v, 1, DT_INT4, MSG_INT4);
}

ORB_API Ipp64s *GetInt8Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp64s *)typedData(cb, v, 1, DT_INT8, MSG_INT8);
}

ORB_API Ipp64u *GetUInt8Sample(HostCallbacks cb, HostValue v)
{
    return (Ipp64u *)typedData(cb, v, 1, DT_INT8, MSG_INT8);
}

ORB_API Ipp64f *GetFloat8Matrix(HostCallbacks cb, HostValue v)
{
    return (Ipp64f *)typedData(cb, v, 2, DT_FLOAT8, MSG_FLOAT8);
}

ORB_API Ipp32f *GetFloat4Matrix(HostCallbacks cb, HostValue v)
{
    return (Ipp32f *)typedData(cb, v, 2, DT_FLOAT4, MSG_FLOAT4);
}

ORB_API Ipp8u *GetUInt1Matrix(HostCallbacks cb, HostValue v)
{
    return (Ipp8u *)typedData(cb, v, 2, DT_INT1, MSG_INT1);
}

ORB_API Ipp32f *GetFloat4Image(HostCallbacks cb, HostValue v)
{
    return (Ipp32f *)typedData(cb, v, 3, DT_FLOAT4, MSG_FLOAT4);
}

/* Real and complex scalars convert even after a failed test. */
ORB_API Ipp64f GetFloat8Value(HostCallbacks cb, HostValue v)
{
    if (!HostIsNumeric(cb, v))
        HostError(cb, MSG_NUMERIC, v);
    return HostToFloat64(cb, v);
}

ORB_API Ipp32f GetFloat4Value(HostCallbacks cb, HostValue v)
{
    if (!HostIsNumeric(cb, v))
        HostError(cb, MSG_NUMERIC, v);
    return HostToFloat32(cb, v);
}

ORB_API Ipp64fc GetComplex8Value(HostCallbacks cb, HostValue v)
{
    HostComplex64 c;
    Ipp64fc r;

    if (!HostIsComplexNumeric(cb, v))
        HostError(cb, MSG_COMPLEX, v);
    c = HostToComplexFloat64(cb, v);
    r.re = c.re;
    r.im = c.im;
    return r;
}

ORB_API Ipp32fc GetComplex4Value(HostCallbacks cb, HostValue v)
{
    HostComplex32 c;
    Ipp32fc r;

    if (!HostIsComplexNumeric(cb, v))
        HostError(cb, MSG_COMPLEX, v);
    c = HostToComplexFloat32(cb, v);
    r.re = c.re;
    r.im = c.im;
    return r;
}

/* Signed integers convert even after a failed test. */
ORB_API Ipp8s GetInt1Value(HostCallbacks cb, HostValue v)
{
    if (!HostIsInteger8(cb, v))
        HostError(cb, MSG_16BIT, v);
    return HostToInteger8(cb, v);
}

ORB_API Ipp16s GetInt2Value(HostCallbacks cb, HostValue v)
{
    if (!HostIsInteger16(cb, v))
        HostError(cb, MSG_16BIT, v);
    return HostToInteger16(cb, v);
}

ORB_API Ipp32s GetInt4Value(HostCallbacks cb, HostValue v)
{
    if (!HostIsInteger32(cb, v))
        HostError(cb, MSG_32BIT, v);
    return HostToInteger32(cb, v);
}

ORB_API Ipp64s GetInt8Value(HostCallbacks cb, HostValue v)
{
    if (!HostIsInteger64(cb, v))
        HostError(cb, MSG_64BIT, v);
    return HostToInteger64(cb, v);
}

/* Unsigned integers: 0 after a failed test; the value sign-extended from its
 * width must not be negative, so only the lower half of each unsigned range
 * can be passed. After a failed sign check the value comes back as it is. */
static Ipp32u nonNegative32(HostCallbacks cb, HostValue v, int32_t x)
{
    if (x < 0)
        HostError(cb, MSG_NON_NEGATIVE, v);
    return (Ipp32u)x;
}

ORB_API Ipp32u GetUInt1Value(HostCallbacks cb, HostValue v)
{
    if (!HostIsInteger8(cb, v)) {
        HostError(cb, MSG_16BIT, v);
        return 0;
    }
    return nonNegative32(cb, v, (int32_t)HostToInteger8(cb, v));
}

ORB_API Ipp32u GetUInt2Value(HostCallbacks cb, HostValue v)
{
    if (!HostIsInteger16(cb, v)) {
        HostError(cb, MSG_16BIT, v);
        return 0;
    }
    return nonNegative32(cb, v, (int32_t)HostToInteger16(cb, v));
}

ORB_API Ipp32u GetUInt4Value(HostCallbacks cb, HostValue v)
{
    if (!HostIsInteger32(cb, v)) {
        HostError(cb, MSG_32BIT, v);
        return 0;
    }
    return nonNegative32(cb, v, HostToInteger32(cb, v));
}

ORB_API Ipp64u GetUInt8Value(HostCallbacks cb, HostValue v)
{
    int64_t x;

    if (!HostIsInteger64(cb, v)) {
        HostError(cb, MSG_64BIT, v);
        return 0;
    }
    x = HostToInteger64(cb, v);
    if (x < 0)
        HostError(cb, MSG_NON_NEGATIVE, v);
    return (Ipp64u)x;
}

ORB_API int64_t GetInt(HostCallbacks cb, HostValue v)
{
    if (!HostIsInteger(cb, v)) {
        HostError(cb, MSG_INTEGER, v);
        return 0;
    }
    return HostToInteger(cb, v);
}

ORB_API Ipp32s GetScaleFactor(HostCallbacks cb, HostValue v)
{
    if (!HostIsInteger32(cb, v)) {
        HostError(cb, MSG_SCALE, v);
        return 0;
    }
    return HostToInteger32(cb, v);
}

/* Option words compare exactly. "gofast" deliberately maps to the same value
 * as "none": no word selects the fast hint. */
ORB_API Ipp32s GetHint(HostCallbacks cb, HostValue v)
{
    const char *text;

    if (!HostIsName(cb, v) && !HostIsString(cb, v)) {
        HostError(cb, MSG_HINT, v);
        return 0;
    }
    text = HostToString(cb, v);
    if (strcmp(text, "gofast") == 0)
        return ippAlgHintNone;
    if (strcmp(text, "becareful") == 0)
        return ippAlgHintAccurate;
    if (strcmp(text, "none") == 0)
        return ippAlgHintNone;
    HostError(cb, MSG_HINT, v);
    return 0;
}

ORB_API Ipp32s GetRoundingMode(HostCallbacks cb, HostValue v)
{
    const char *text;

    if (!HostIsName(cb, v) && !HostIsString(cb, v)) {
        HostError(cb, MSG_STRING, v);
        return ippRndNear;
    }
    text = HostToString(cb, v);
    if (strcmp(text, "nearest") == 0)
        return ippRndNear;
    if (strcmp(text, "zero") == 0)
        return ippRndZero;
    if (strcmp(text, "financial") == 0)
        return ippRndFinancial;
    HostError(cb, MSG_ROUNDING, v);
    return ippRndNear;
}
