/* Filters: FIR filtering, window-method FIR design and the LMS adaptive
 * filter; IIR filtering and Butterworth / Chebyshev design; the library's
 * own difference-equation filter; the sliding median. */
#include <string.h>
#include <strings.h>

#include "frame/frame.h"

#define MSG_FIR_DELAY "fourth argument must have %1 elements, but has %2"
#define MSG_FIRST_TWO "first two rtables must have the same number of elements"
#define MSG_WINDOW "invalid window type: %1"
#define MSG_TRUE_FALSE "expecting a true/false value, but received %1"
#define MSG_DELAY "delay line array must have %1 elements, but has %2"
#define MSG_FIRST_FOUR "first four rtables must have the same number of elements"
#define MSG_TAPS "taps array must have %1 elements, but has %2 elements"
#define MSG_STRING_ARG "expecting a string, but received %1"
#define MSG_FILTER_TYPE "unexpected filter type name %1"
#define MSG_FILTER_LENGTHS "first two arguments must have the same number of elements"
#define MSG_FILTER_EMPTY "third and fourth arguments must be non-empty rtables"

/* Raises a text with two counts. */
static void countsError(HostCallbacks cb, const char *text, int64_t a, int64_t b)
{
    HostError(cb, text, HostFromInteger(cb, a), HostFromInteger(cb, b));
}

/* Frees the held blocks and gives the fallback: for a kernel call that the
 * raise note forbids. */
static HostValue skip(OrbHeld *held, HostValue result)
{
    orbRelease(held);
    return result;
}

/* ---- FIR ---- */

/* The number of samples to filter is the caller's; it is trimmed to the
 * rtables' length so that the backend never runs past them. */
ORB_API HostValue orbFIR(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t lenOut, lenIn, lenTaps, lenDly, count, tapsCount;
    Ipp64f *out, *taps, *dly;
    const Ipp64f *in;
    int iters, specSize = 0, bufSize = 0;
    Ipp8u *spec, *buf;
    OrbHeld held;

    if (n != 5) {
        orbArityError(cb, ARITY_FIVE, n);
        return 0;
    }
    out = GetFloat8Sample(cb, args[1]);
    lenOut = HostRTableNumElements(cb, args[1]);
    in = GetFloat8Sample(cb, args[2]);
    lenIn = HostRTableNumElements(cb, args[2]);
    taps = GetFloat8Sample(cb, args[3]);
    lenTaps = HostRTableNumElements(cb, args[3]);
    dly = GetFloat8Sample(cb, args[4]);
    lenDly = HostRTableNumElements(cb, args[4]);
    iters = GetInt4Value(cb, args[5]);
    if (lenDly != lenTaps) {
        countsError(cb, MSG_FIR_DELAY, lenTaps, lenDly);
        return args[1];
    }
    if (lenIn != lenOut) {
        HostError(cb, MSG_FIRST_TWO);
        return args[1];
    }
    count = lenOut;
    tapsCount = lenTaps;
    if (!orbAllFit(cb, &count, args, 1, 2, DT_FLOAT8) || !orbAllFit(cb, &tapsCount, args, 3, 4, DT_FLOAT8))
        return args[1];
    if (iters > count)
        iters = (int)count;

    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippsFIRSRGetSize(orbLen32(tapsCount), ipp64f, &specSize, &bufSize)))
        return args[1];
    buf = orbMalloc8u(&held, bufSize);
    spec = orbMalloc8u(&held, specSize);
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbInitOk(cb, &held, ippsFIRSRInit_64f(taps, orbLen32(tapsCount), ippAlgAuto, (IppsFIRSpec_64f *)spec)))
        return args[1];
    if (!orbOk(cb, &held, ippsFIRSR_64f(in, out, iters, (IppsFIRSpec_64f *)spec, dly, NULL, buf)))
        return args[1];
    orbRelease(&held);
    return args[1];
}

typedef enum FirBand { FIR_LOW, FIR_HIGH, FIR_PASS, FIR_STOP } FirBand;

static IppStatus firGen(FirBand band, Ipp64f lo, Ipp64f hi, Ipp64f *taps, int len, IppWinType win, IppBool flag,
                        Ipp8u *buf)
{
    switch (band) {
    case FIR_LOW: return ippsFIRGenLowpass_64f(lo, taps, len, win, flag, buf);
    case FIR_HIGH: return ippsFIRGenHighpass_64f(lo, taps, len, win, flag, buf);
    case FIR_PASS: return ippsFIRGenBandpass_64f(lo, hi, taps, len, win, flag, buf);
    case FIR_STOP: return ippsFIRGenBandstop_64f(lo, hi, taps, len, win, flag, buf);
    }
    return ORB_NO_KERNEL;
}

/* The window type: a name or a string, one of four words in any case.
 * Sets *ok to 0 after a raise. */
static IppWinType windowType(HostCallbacks cb, HostValue v, int *ok)
{
    static const char *const words[] = {"bartlett", "blackman", "hamming", "hann"};
    static const IppWinType codes[] = {ippWinBartlett, ippWinBlackman, ippWinHamming, ippWinHann};
    const char *text;
    int i;

    *ok = 1;
    if (HostIsName(cb, v) || HostIsString(cb, v)) {
        text = HostToString(cb, v);
        for (i = 0; i < 4; ++i)
            if (strcasecmp(text, words[i]) == 0)
                return codes[i];
    }
    HostError(cb, MSG_WINDOW, v);
    *ok = 0;
    return ippWinBartlett;
}

/* The normalisation flag: a string, exactly "true" or "false". */
static IppBool trueFalse(HostCallbacks cb, HostValue v, int *ok)
{
    const char *text;

    *ok = 1;
    if (HostIsString(cb, v)) {
        text = HostToString(cb, v);
        if (strcmp(text, "true") == 0)
            return ippTrue;
        if (strcmp(text, "false") == 0)
            return ippFalse;
    }
    HostError(cb, MSG_TRUE_FALSE, v);
    *ok = 0;
    return ippFalse;
}

static HostValue firGenExport(HostCallbacks cb, ArgSeq args, FirBand band)
{
    int two = band == FIR_PASS || band == FIR_STOP;
    int64_t n = orbBegin(cb, args);
    int64_t len;
    Ipp64f *taps, lo, hi = 0;
    IppWinType win;
    IppBool flag;
    int ok, bufSize = 0;
    Ipp8u *buf;
    OrbHeld held;

    if (n != (two ? 5 : 4)) {
        orbArityError(cb, two ? ARITY_FIVE : ARITY_FOUR, n);
        return 0;
    }
    taps = GetFloat8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    lo = GetFloat8Value(cb, args[2]);
    if (two)
        hi = GetFloat8Value(cb, args[3]);
    win = windowType(cb, args[two ? 4 : 3], &ok);
    if (!ok)
        return args[1];
    flag = trueFalse(cb, args[two ? 5 : 4], &ok);
    if (!ok)
        return args[1];
    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippsFIRGenGetBufferSize(orbLen32(len), &bufSize)))
        return args[1];
    buf = orbMalloc8u(&held, bufSize);
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbFits(cb, &len, args[1], DT_FLOAT8))
        return skip(&held, args[1]);
    if (!orbOk(cb, &held, firGen(band, lo, hi, taps, orbLen32(len), win, flag, buf)))
        return args[1];
    orbRelease(&held);
    return args[1];
}

ORB_API HostValue orbFIRGenLowPass(HostCallbacks cb, ArgSeq args)
{
    return firGenExport(cb, args, FIR_LOW);
}

ORB_API HostValue orbFIRGenHighPass(HostCallbacks cb, ArgSeq args)
{
    return firGenExport(cb, args, FIR_HIGH);
}

ORB_API HostValue orbFIRGenBandPass(HostCallbacks cb, ArgSeq args)
{
    return firGenExport(cb, args, FIR_PASS);
}

ORB_API HostValue orbFIRGenBandStop(HostCallbacks cb, ArgSeq args)
{
    return firGenExport(cb, args, FIR_STOP);
}

/* Accepts six arguments and reads the step from a seventh position; the
 * adapted taps and delay line are not written back. */
ORB_API HostValue orbFIRLMS(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t lenOut, lenIn, lenRef, lenTaps, lenDly, count, dlyCount;
    Ipp32f *out, *taps, *dly, mu;
    const Ipp32f *in, *ref;
    int index, stateSize = 0;
    Ipp8u *buf;
    IppsFIRLMSState_32f *state = NULL;
    OrbHeld held;

    if (n != 6) {
        orbArityError(cb, ARITY_SIX, n);
        return 0;
    }
    out = GetFloat4Sample(cb, args[1]);
    lenOut = HostRTableNumElements(cb, args[1]);
    in = GetFloat4Sample(cb, args[2]);
    lenIn = HostRTableNumElements(cb, args[2]);
    ref = GetFloat4Sample(cb, args[3]);
    lenRef = HostRTableNumElements(cb, args[3]);
    taps = GetFloat4Sample(cb, args[4]);
    lenTaps = HostRTableNumElements(cb, args[4]);
    dly = GetFloat4Sample(cb, args[5]);
    lenDly = HostRTableNumElements(cb, args[5]);
    index = GetInt4Value(cb, args[6]);
    mu = GetFloat4Value(cb, args[7]);
    if (lenDly != 2 * lenTaps) {
        countsError(cb, MSG_DELAY, 2 * lenTaps, lenDly);
        return args[1];
    }
    if (lenIn != lenOut || lenRef != lenOut || lenTaps != lenOut) {
        HostError(cb, MSG_FIRST_FOUR);
        return args[1];
    }
    count = lenOut;
    dlyCount = lenDly;
    if (!orbAllFit(cb, &count, args, 1, 4, DT_FLOAT4) || !orbFits(cb, &dlyCount, args[5], DT_FLOAT4) ||
        dlyCount < 2 * count)
        return args[1];

    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippsFIRLMSGetStateSize_32f(orbLen32(count), index, &stateSize)))
        return args[1];
    buf = orbMalloc8u(&held, stateSize);
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbInitOk(cb, &held, ippsFIRLMSInit_32f(&state, taps, orbLen32(count), dly, index, buf)))
        return args[1];
    if (!orbOk(cb, &held, ippsFIRLMS_32f(in, ref, out, orbLen32(count), mu, state)))
        return args[1];
    orbRelease(&held);
    return args[1];
}

/* ---- IIR ---- */

static IppStatus iirStateSize(int64_t code, int order, int *size)
{
    switch (orbDatatype(code)) {
    case DT_FLOAT4: return ippsIIRGetStateSize_32f(order, size);
    case DT_FLOAT8: return ippsIIRGetStateSize_64f(order, size);
    case DT_COMPLEX8: return ippsIIRGetStateSize_64fc(order, size);
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT2: case DT_INT4: case DT_INT8: break;
    }
    return ORB_NO_KERNEL;
}

/* Initialises the state in buf and filters len samples. *init says whether
 * the status is the initialiser's. */
static IppStatus iirRun(int64_t code, const void *src, void *dst, int len, const void *taps, int order,
                        const void *dly, Ipp8u *buf, int *init)
{
    IppStatus status;

    *init = 1;
    switch (orbDatatype(code)) {
    case DT_FLOAT4: {
        IppsIIRState_32f *s = NULL;
        status = ippsIIRInit_32f(&s, (const Ipp32f *)taps, order, (const Ipp32f *)dly, buf);
        if (status != ippStsNoErr)
            return status;
        *init = 0;
        return ippsIIR_32f((const Ipp32f *)src, (Ipp32f *)dst, len, s);
    }
    case DT_FLOAT8: {
        IppsIIRState_64f *s = NULL;
        status = ippsIIRInit_64f(&s, (const Ipp64f *)taps, order, (const Ipp64f *)dly, buf);
        if (status != ippStsNoErr)
            return status;
        *init = 0;
        return ippsIIR_64f((const Ipp64f *)src, (Ipp64f *)dst, len, s);
    }
    case DT_COMPLEX8: {
        IppsIIRState_64fc *s = NULL;
        status = ippsIIRInit_64fc(&s, (const Ipp64fc *)taps, order, (const Ipp64fc *)dly, buf);
        if (status != ippStsNoErr)
            return status;
        *init = 0;
        return ippsIIR_64fc((const Ipp64fc *)src, (Ipp64fc *)dst, len, s);
    }
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT2: case DT_INT4: case DT_INT8: break;
    }
    return ORB_NO_KERNEL;
}

ORB_API HostValue orbIIR(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, lenIn, lenTaps, lenDly, tapsNeeded;
    void *dst, *src, *taps, *dly;
    int order, stateSize = 0, init;
    Ipp8u *buf;
    IppStatus status;
    OrbHeld held;

    if (n != 5) {
        orbArityError(cb, ARITY_FIVE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (code != DT_FLOAT4 && code != DT_FLOAT8 && code != DT_COMPLEX8) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &lenIn);
    order = GetInt4Value(cb, args[3]);
    taps = orbSampleOf(cb, args[4], code, &lenTaps);
    dly = orbSampleOf(cb, args[5], code, &lenDly);
    tapsNeeded = 2 * (int64_t)order + 2;
    if (lenIn != len) {
        HostError(cb, MSG_FIRST_TWO);
        return args[1];
    }
    if (lenDly != order) {
        countsError(cb, MSG_DELAY, order, lenDly);
        return args[1];
    }
    if (lenTaps != tapsNeeded) {
        countsError(cb, MSG_TAPS, tapsNeeded, lenTaps);
        return args[1];
    }
    if (!orbAllFit(cb, &len, args, 1, 2, code) || !orbFits(cb, &lenTaps, args[4], code) ||
        !orbFits(cb, &lenDly, args[5], code) || lenTaps != tapsNeeded || lenDly != order)
        return args[1];

    orbHeldInit(&held);
    if (!orbOk(cb, &held, iirStateSize(code, order, &stateSize)))
        return args[1];
    /* The double-precision branch asks for its block whatever the size. */
    if (code == DT_FLOAT8 && stateSize <= 0) {
        held.failed = 1;
        buf = NULL;
    } else {
        buf = orbMalloc8u(&held, stateSize);
    }
    if (!orbAllocated(cb, &held))
        return args[1];
    status = iirRun(code, src, dst, orbLen32(len), taps, order, dly, buf, &init);
    if (init ? !orbInitOk(cb, &held, status) : !orbOk(cb, &held, status))
        return args[1];
    orbRelease(&held);
    return args[1];
}

/* Low-pass and high-pass design differ only in the backend call. A taps
 * rtable longer than 2N + 2 keeps its further elements. */
static HostValue iirGenExport(HostCallbacks cb, ArgSeq args, int high)
{
    int64_t n = orbBegin(cb, args);
    int64_t len, needed;
    Ipp64f *taps, freq, ripple;
    int order, bufSize = 0;
    IppsIIRFilterType type;
    const char *text;
    Ipp8u *buf;
    HostValue kind;
    OrbHeld held;

    if (n != 5) {
        orbArityError(cb, ARITY_FIVE, n);
        return 0;
    }
    taps = GetFloat8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    freq = GetFloat8Value(cb, args[2]);
    ripple = GetFloat8Value(cb, args[3]);
    order = (int)GetUInt4Value(cb, args[4]);
    kind = args[5];
    if (!HostIsName(cb, kind) && !HostIsString(cb, kind)) {
        HostError(cb, MSG_STRING_ARG, kind);
        return args[1];
    }
    text = HostToString(cb, kind);
    if (strcasecmp(text, "Butterworth") == 0) {
        type = ippButterworth;
    } else if (strcasecmp(text, "Chebyshev1") == 0) {
        type = ippChebyshev1;
    } else {
        HostError(cb, MSG_FILTER_TYPE, kind);
        return args[1];
    }
    needed = 2 * (int64_t)order + 2;
    if (len < needed) {
        countsError(cb, MSG_TAPS, needed, len);
        return args[1];
    }
    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippsIIRGenGetBufferSize(order, &bufSize)))
        return args[1];
    buf = orbMalloc8u(&held, bufSize);
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbFits(cb, &len, args[1], DT_FLOAT8) || len < needed)
        return skip(&held, args[1]);
    if (!orbOk(cb, &held, high ? ippsIIRGenHighpass_64f(freq, ripple, order, taps, type, buf)
                               : ippsIIRGenLowpass_64f(freq, ripple, order, taps, type, buf)))
        return args[1];
    orbRelease(&held);
    return args[1];
}

ORB_API HostValue orbIIRGenLowPass(HostCallbacks cb, ArgSeq args)
{
    return iirGenExport(cb, args, 0);
}

ORB_API HostValue orbIIRGenHighPass(HostCallbacks cb, ArgSeq args)
{
    return iirGenExport(cb, args, 1);
}

/* y[i] = sum_k b[k] x[i-k] - sum_{k>=1} a[k] y[i-k]; a[0] is never read. The
 * feed-forward part is finished in scratch memory before y is written, so
 * x and y may be one rtable. */
ORB_API HostValue orbFilter(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t ny, nx, na, nb, len, i, j, k, kmax;
    Ipp64f *y, *scratch, acc;
    const Ipp64f *x, *a, *b;
    OrbHeld held;

    if (n != 4) {
        orbArityError(cb, ARITY_FOUR, n);
        return 0;
    }
    y = GetFloat8Sample(cb, args[1]);
    ny = HostRTableNumElements(cb, args[1]);
    x = GetFloat8Sample(cb, args[2]);
    nx = HostRTableNumElements(cb, args[2]);
    a = GetFloat8Sample(cb, args[3]);
    na = HostRTableNumElements(cb, args[3]);
    b = GetFloat8Sample(cb, args[4]);
    nb = HostRTableNumElements(cb, args[4]);
    if (nx != ny) {
        HostError(cb, MSG_FILTER_LENGTHS);
        return args[1];
    }
    if (nb < 1 || na < 1) {
        HostError(cb, MSG_FILTER_EMPTY);
        return args[1];
    }
    orbHeldInit(&held);
    scratch = orbMalloc64f(&held, orbLen32(ny));
    if (!orbAllocated(cb, &held))
        return args[1];
    len = ny;
    if (!orbAllFit(cb, &len, args, 1, 2, DT_FLOAT8) || !orbFits(cb, &na, args[3], DT_FLOAT8) ||
        !orbFits(cb, &nb, args[4], DT_FLOAT8))
        return skip(&held, args[1]);
    if (!orbOk(cb, &held, ippsMulC_64f(x, b[0], scratch, orbLen32(len))))
        return args[1];
    kmax = nb < len ? nb : len;
    for (k = 1; k < kmax; ++k)
        for (j = 0; j < len - k; ++j)
            scratch[j + k] += b[k] * x[j];
    for (i = 0; i < len; ++i) {
        acc = scratch[i];
        kmax = i < na - 1 ? i : na - 1;
        for (k = 1; k <= kmax; ++k)
            acc -= a[k] * y[i - k];
        y[i] = acc;
    }
    orbRelease(&held);
    return args[1];
}

/* ---- Median ---- */

static IppStatus medianRun(int64_t code, const void *src, void *dst, int len, int mask, Ipp8u *buf)
{
    switch (orbDatatype(code)) {
    /* Signed bytes go to the unsigned filter: negative values order above
     * positive ones. */
    case DT_INT1: return ippsFilterMedian_8u((const Ipp8u *)src, (Ipp8u *)dst, len, mask, NULL, NULL, buf);
    case DT_INT2: return ippsFilterMedian_16s((const Ipp16s *)src, (Ipp16s *)dst, len, mask, NULL, NULL, buf);
    case DT_INT4: return ippsFilterMedian_32s((const Ipp32s *)src, (Ipp32s *)dst, len, mask, NULL, NULL, buf);
    case DT_FLOAT8: return ippsFilterMedian_64f((const Ipp64f *)src, (Ipp64f *)dst, len, mask, NULL, NULL, buf);
    case DT_FLOAT4: return ippsFilterMedian_32f((const Ipp32f *)src, (Ipp32f *)dst, len, mask, NULL, NULL, buf);
    case DT_ANYTHING: case DT_PAIR: case DT_INT8: case DT_COMPLEX8: break;
    }
    return ORB_NO_KERNEL;
}

static IppDataType medianType(int64_t code)
{
    switch (orbDatatype(code)) {
    case DT_INT1: return ipp8u;
    case DT_INT2: return ipp16s;
    case DT_INT4: return ipp32s;
    case DT_FLOAT8: return ipp64f;
    case DT_FLOAT4: return ipp32f;
    case DT_ANYTHING: case DT_PAIR: case DT_INT8: case DT_COMPLEX8: break;
    }
    return ippUndef;
}

ORB_API HostValue orbMedianFilter(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, lenSrc;
    void *dst, *src;
    int mask, bufSize = 0;
    Ipp8u *buf;
    OrbHeld held;

    if (n != 3) {
        orbArityError(cb, ARITY_TWO_OR_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (medianType(code) == ippUndef) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &lenSrc);
    mask = GetInt4Value(cb, args[3]);
    if (!orbCountsAgree(cb, lenSrc == len))
        return args[1];
    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippsFilterMedianGetBufferSize(mask, medianType(code), &bufSize)))
        return args[1];
    buf = orbMalloc8u(&held, bufSize);
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbAllFit(cb, &len, args, 1, 2, code))
        return skip(&held, args[1]);
    if (!orbOk(cb, &held, medianRun(code, src, dst, orbLen32(len), mask, buf)))
        return args[1];
    orbRelease(&held);
    return args[1];
}
