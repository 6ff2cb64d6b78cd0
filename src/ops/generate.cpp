/* Generated signals written into argument 1: a tone and a triangle wave
 * computed here, uniform and Gaussian noise, a Jaehne signal and a ramp
 * from the backend. */
#include <math.h>

#include "frame/frame.h"

#define TWO_PI 6.283185307179586
#define ONE_PI 3.141592653589793
#define FREQ_BOUND 0.5

/* Hints at or below this would skip the tone; GetHint yields none. */
#define HINT_SKIP (-1000)

/* Output datatypes of the tone and triangle. */
static int realOrComplex(int64_t code)
{
    return code == DT_FLOAT4 || code == DT_FLOAT8 || code == DT_COMPLEX8;
}

/* Reads a real scalar with the accessor of the output's datatype, widened. */
static double readReal(HostCallbacks cb, HostValue v, int64_t code)
{
    if (code == DT_FLOAT4)
        return (double)GetFloat4Value(cb, v);
    return GetFloat8Value(cb, v);
}

/* Writes element i of a real or complex output. */
static void put(void *data, int64_t code, int64_t i, double re, double im)
{
    if (code == DT_FLOAT4) {
        ((Ipp32f *)data)[i] = (Ipp32f)re;
    } else if (code == DT_FLOAT8) {
        ((Ipp64f *)data)[i] = re;
    } else {
        ((Ipp64fc *)data)[i].re = re;
        ((Ipp64fc *)data)[i].im = im;
    }
}

/* Raises a parameter fault as its status; says whether there was one. */
static int fault(HostCallbacks cb, int bad, IppStatus status)
{
    if (bad)
        orbIppError(cb, status);
    return bad;
}

ORB_API HostValue orbGenerateTone(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, i;
    void *data;
    double magn, freq, phase;
    Ipp32s hint = 0;

    if (n < 4) {
        orbArityError(cb, ARITY_FOUR, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    if (!realOrComplex(code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    magn = readReal(cb, args[2], code);
    freq = readReal(cb, args[3], code);
    phase = readReal(cb, args[4], code);
    if (n > 4)
        hint = GetHint(cb, args[5]);
    if (fault(cb, data == NULL, ippStsNullPtrErr) || fault(cb, len < 1, ippStsSizeErr) ||
        fault(cb, magn <= 0, ippStsToneMagnErr) || fault(cb, freq < 0 || freq >= FREQ_BOUND, ippStsToneFreqErr) ||
        fault(cb, phase < 0 || phase >= TWO_PI, ippStsTonePhaseErr))
        return args[1];
    if (hint <= HINT_SKIP || !orbFits(cb, &len, args[1], code))
        return args[1];
    for (i = 0; i < len; ++i) {
        double theta = ((double)i * TWO_PI) * freq + phase;
        put(data, code, i, cos(theta) * magn, code == DT_COMPLEX8 ? sin(theta) * magn : 0.0);
    }
    return args[1];
}

/* t reduced as "while above the period subtract it" would, each
 * subtraction rounded. Within one binade of t the rounded step settles at
 * once to a constant, so runs of equal steps are taken together. */
static double wrapDown(double x)
{
    while (x > TWO_PI) {
        double lo, x1, x2, step, k;
        int e;

        x1 = x - TWO_PI;
        if (!(x1 > TWO_PI)) {
            x = x1;
            break;
        }
        x2 = x1 - TWO_PI;
        frexp(x, &e);
        lo = ldexp(1.0, e - 1);
        step = x1 - x2;
        if (x2 >= lo && x - x1 == step && isfinite(x)) {
            k = floor((x2 - lo) / step);
            while (k > 0 && x2 - k * step < lo)
                k -= 1;
            x = x2 - k * step;
        } else {
            x = x2;
        }
    }
    while (x < 0)
        x += TWO_PI;
    return x;
}

ORB_API HostValue orbGenerateTriangle(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, i;
    void *data;
    double magn, freq, phase, asym, h, step;

    if (n != 5) {
        orbArityError(cb, ARITY_FIVE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    if (!realOrComplex(code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    magn = readReal(cb, args[2], code);
    freq = readReal(cb, args[3], code);
    phase = readReal(cb, args[4], code);
    asym = readReal(cb, args[5], code);
    if (fault(cb, data == NULL, ippStsNullPtrErr) || fault(cb, len < 1, ippStsSizeErr) ||
        fault(cb, magn <= 0, ippStsTrnglMagnErr) || fault(cb, freq < 0 || freq >= FREQ_BOUND, ippStsTrnglFreqErr) ||
        fault(cb, asym < -ONE_PI || asym >= ONE_PI, ippStsTrnglAsymErr) ||
        fault(cb, phase < 0 || phase >= TWO_PI, ippStsTrnglPhaseErr))
        return args[1];
    if (!orbFits(cb, &len, args[1], code))
        return args[1];
    h = asym + ONE_PI;
    step = freq * TWO_PI;
    for (i = 0; i < len; ++i) {
        double x = wrapDown((double)i * step + phase);
        double re, im = 0.0;

        if (x > h)
            re = (TWO_PI + (h - 2 * x)) / (h - TWO_PI);
        else
            re = (h - 2 * x) / h;
        if (code == DT_COMPLEX8) {
            double x2 = 2 * x;
            if (x2 <= TWO_PI - h)
                im = x2 / (TWO_PI - h);
            else if (x2 <= TWO_PI + h)
                im = (ONE_PI - x) * 2 / h;
            else
                im = -(x - TWO_PI) * 2 / (h - TWO_PI);
        }
        put(data, code, i, re * magn, im * magn);
    }
    return args[1];
}

/* Uniform and Gaussian noise: the state is sized, allocated, initialised
 * with the seed, used once and freed. */
typedef enum Noise { NOISE_UNIFORM, NOISE_GAUSS } Noise;

static HostValue noiseExport(HostCallbacks cb, ArgSeq args, Noise kind)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len;
    void *data;
    Ipp32u seed;
    OrbHeld held;
    int size = 0;
    Ipp8u *state;
    IppStatus status;
    int gauss = kind == NOISE_GAUSS;
    Ipp32f a32 = 0, b32 = 0;
    Ipp64f a64 = 0, b64 = 0;
    Ipp16s a16 = 0, b16 = 0;

    if (n != 4) {
        orbArityError(cb, ARITY_FOUR, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    orbHeldInit(&held);
    /* The two parameters by the output's accessor, the seed, the state's size. */
    if (code == DT_FLOAT4) {
        a32 = GetFloat4Value(cb, args[2]), b32 = GetFloat4Value(cb, args[3]);
        seed = GetUInt4Value(cb, args[4]);
        status = gauss ? ippsRandGaussGetSize_32f(&size) : ippsRandUniformGetSize_32f(&size);
    } else if (code == DT_FLOAT8) {
        a64 = GetFloat8Value(cb, args[2]), b64 = GetFloat8Value(cb, args[3]);
        seed = GetUInt4Value(cb, args[4]);
        /* The Gaussian state is sized by the single-precision query. */
        status = gauss ? ippsRandGaussGetSize_32f(&size) : ippsRandUniformGetSize_64f(&size);
    } else if (code == DT_INT2) {
        a16 = GetInt2Value(cb, args[2]), b16 = GetInt2Value(cb, args[3]);
        seed = GetUInt4Value(cb, args[4]);
        status = gauss ? ippsRandGaussGetSize_16s(&size) : ippsRandUniformGetSize_16s(&size);
    } else {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (!orbOk(cb, &held, status))
        return args[1];
    state = orbMalloc8u(&held, size);
    if (!orbAllocated(cb, &held))
        return args[1];
    if (code == DT_FLOAT4)
        status = gauss ? ippsRandGaussInit_32f((IppsRandGaussState_32f *)state, a32, b32, seed)
                       : ippsRandUniformInit_32f((IppsRandUniState_32f *)state, a32, b32, seed);
    else if (code == DT_FLOAT8)
        status = gauss ? ippsRandGaussInit_64f((IppsRandGaussState_64f *)state, a64, b64, seed)
                       : ippsRandUniformInit_64f((IppsRandUniState_64f *)state, a64, b64, seed);
    else
        status = gauss ? ippsRandGaussInit_16s((IppsRandGaussState_16s *)state, a16, b16, seed)
                       : ippsRandUniformInit_16s((IppsRandUniState_16s *)state, a16, b16, seed);
    if (!orbInitOk(cb, &held, status))
        return args[1];
    if (!orbFits(cb, &len, args[1], code)) {
        orbRelease(&held);
        return args[1];
    }
    if (code == DT_FLOAT4)
        status = gauss ? ippsRandGauss_32f((Ipp32f *)data, orbLen32(len), (IppsRandGaussState_32f *)state)
                       : ippsRandUniform_32f((Ipp32f *)data, orbLen32(len), (IppsRandUniState_32f *)state);
    else if (code == DT_FLOAT8)
        status = gauss ? ippsRandGauss_64f((Ipp64f *)data, orbLen32(len), (IppsRandGaussState_64f *)state)
                       : ippsRandUniform_64f((Ipp64f *)data, orbLen32(len), (IppsRandUniState_64f *)state);
    else
        status = gauss ? ippsRandGauss_16s((Ipp16s *)data, orbLen32(len), (IppsRandGaussState_16s *)state)
                       : ippsRandUniform_16s((Ipp16s *)data, orbLen32(len), (IppsRandUniState_16s *)state);
    if (!orbOk(cb, &held, status))
        return args[1];
    orbRelease(&held);
    return args[1];
}

ORB_API HostValue orbGenerateUniform(HostCallbacks cb, ArgSeq args)
{
    return noiseExport(cb, args, NOISE_UNIFORM);
}

ORB_API HostValue orbGenerateGaussian(HostCallbacks cb, ArgSeq args)
{
    return noiseExport(cb, args, NOISE_GAUSS);
}

ORB_API HostValue orbGenerateJaehne(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len;
    void *data;
    IppStatus status;

    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    switch (orbDatatype(code)) {
    case DT_FLOAT4: {
        Ipp32f m = GetFloat4Value(cb, args[2]);
        status = orbFits(cb, &len, args[1], code) ? ippsVectorJaehne_32f((Ipp32f *)data, orbLen32(len), m) : 0;
        break;
    }
    case DT_FLOAT8: {
        Ipp64f m = GetFloat8Value(cb, args[2]);
        status = orbFits(cb, &len, args[1], code) ? ippsVectorJaehne_64f((Ipp64f *)data, orbLen32(len), m) : 0;
        break;
    }
    case DT_INT2: {
        Ipp16s m = GetInt2Value(cb, args[2]);
        status = orbFits(cb, &len, args[1], code) ? ippsVectorJaehne_16s((Ipp16s *)data, orbLen32(len), m) : 0;
        break;
    }
    case DT_INT4: {
        Ipp32s m = GetInt4Value(cb, args[2]);
        status = orbFits(cb, &len, args[1], code) ? ippsVectorJaehne_32s((Ipp32s *)data, orbLen32(len), m) : 0;
        break;
    }
    case DT_ANYTHING:
    case DT_PAIR:
    case DT_INT1:
    case DT_INT8:
    case DT_COMPLEX8:
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

/* The integer[2] ramp takes single-precision parameters, the integer[4]
 * one double. */
ORB_API HostValue orbGenerateSlope(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len;
    void *data;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    switch (orbDatatype(code)) {
    case DT_FLOAT4:
    case DT_INT2: {
        Ipp32f offset = GetFloat4Value(cb, args[2]);
        Ipp32f slope = GetFloat4Value(cb, args[3]);
        if (!orbFits(cb, &len, args[1], code))
            return args[1];
        status = code == DT_FLOAT4 ? ippsVectorSlope_32f((Ipp32f *)data, orbLen32(len), offset, slope)
                                   : ippsVectorSlope_16s((Ipp16s *)data, orbLen32(len), offset, slope);
        break;
    }
    case DT_FLOAT8:
    case DT_INT4: {
        Ipp64f offset = GetFloat8Value(cb, args[2]);
        Ipp64f slope = GetFloat8Value(cb, args[3]);
        if (!orbFits(cb, &len, args[1], code))
            return args[1];
        status = code == DT_FLOAT8 ? ippsVectorSlope_64f((Ipp64f *)data, orbLen32(len), offset, slope)
                                   : ippsVectorSlope_32s((Ipp32s *)data, orbLen32(len), offset, slope);
        break;
    }
    case DT_ANYTHING:
    case DT_PAIR:
    case DT_INT1:
    case DT_INT8:
    case DT_COMPLEX8:
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}
