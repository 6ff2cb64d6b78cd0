/* Transforms: the discrete Fourier transform by any length (DFT) or by a
 * power of two (FFT), on interleaved complex[8] data or on real and
 * imaginary parts in separate float rtables; the discrete cosine transform,
 * the analytic signal, one DFT value by the Goertzel recurrence, and one
 * level of the Haar wavelet.
 *
 * The transforms that need a backend set-up structure size,
 * allocate, initialise and free their own on every call; nothing is kept
 * between calls at this level. Initialisers fail on any status other than
 * success, and the analytic signal keeps its inverted initialiser test: a
 * successful initialisation ends the call with the error text of status 0.
 */
#include <strings.h>

#include "frame/frame.h"

#define MSG_STRING "expecting a string, but received %1"
#define MSG_OPTION "unrecognised option name: %1"
#define MSG_AT_LEAST_TWO "rtables must have at least two elements"
#define MSG_POWER_OF_TWO "rtable sizes must be a positive power of two"
#define MSG_HAAR_LENGTHS "third rtable must have twice the number of elements as have the first two rtables"

/* Whether the kernel may run over all len elements of v as code: always,
 * unless a raise returned earlier in this call and v is not such an rtable
 * of at least len elements. */
static int fitsWhole(HostCallbacks cb, int64_t len, HostValue v, int64_t code)
{
    int64_t have = len;

    return orbFits(cb, &have, v, code) && have == len;
}

/* ---- Fourier transforms ---- */

/* The normalisation option at argument first and the hint after it, each
 * when given; says 0 after a raise. */
static int fourierOptions(HostCallbacks cb, ArgSeq args, int64_t n, int first, int *flag, IppHintAlgorithm *hint)
{
    static const char *const names[] = {"none", "sqrtlen", "fwddivbyn", "invdivbyn"};
    static const int flags[] = {IPP_FFT_NODIV_BY_ANY, IPP_FFT_DIV_BY_SQRTN, IPP_FFT_DIV_FWD_BY_N,
                                IPP_FFT_DIV_INV_BY_N};
    const char *text;
    int i;

    *flag = IPP_FFT_NODIV_BY_ANY;
    *hint = ippAlgHintNone;
    if (n >= first) {
        HostValue option = args[first];
        if (!HostIsName(cb, option) && !HostIsString(cb, option)) {
            HostError(cb, MSG_STRING, option);
            return 0;
        }
        text = HostToString(cb, option);
        for (i = 0; i < 4; ++i)
            if (strcasecmp(text, names[i]) == 0)
                break;
        if (i == 4) {
            HostError(cb, MSG_OPTION, option);
            return 0;
        }
        *flag = flags[i];
    }
    if (n >= first + 1)
        *hint = (IppHintAlgorithm)GetHint(cb, args[first + 1]);
    return 1;
}

/* The power k with 2^k equal to count, from the table 2^0 .. 2^31; -1 when
 * count is none of them (the backend then refuses the order). */
static int fftOrder(int64_t count)
{
    int k;

    for (k = 0; k < 32; ++k)
        if (((int64_t)1 << k) == count)
            return k;
    return -1;
}

typedef enum Precision { PREC_DOUBLE, PREC_SINGLE } Precision;

/* What a Fourier export computes: by length or by order, in which
 * direction, on which data. The structure pointer is typed by the backend
 * call that takes it. */
typedef struct Fourier {
    int fft;     /* by order */
    int forward; /* else inverse */
    int split;   /* parts in four rtables; else interleaved complex[8] */
    Precision precision;
} Fourier;

static IppStatus fourierSize(const Fourier *f, int size, int flag, IppHintAlgorithm hint, int *spec, int *init,
                             int *work)
{
    if (!f->split)
        return f->fft ? ippsFFTGetSize_C_64fc(size, flag, hint, spec, init, work)
                      : ippsDFTGetSize_C_64fc(size, flag, hint, spec, init, work);
    if (f->precision == PREC_DOUBLE)
        return f->fft ? ippsFFTGetSize_C_64f(size, flag, hint, spec, init, work)
                      : ippsDFTGetSize_C_64f(size, flag, hint, spec, init, work);
    return f->fft ? ippsFFTGetSize_C_32f(size, flag, hint, spec, init, work)
                  : ippsDFTGetSize_C_32f(size, flag, hint, spec, init, work);
}

/* Initialises the structure in memory; *spec is what the transform takes:
 * the memory itself for the DFT, the pointer the initialiser gives for the
 * FFT. */
static IppStatus fourierInit(const Fourier *f, void **spec, int size, int flag, IppHintAlgorithm hint, Ipp8u *memory,
                             Ipp8u *init)
{
    *spec = memory;
    if (!f->fft) {
        if (!f->split)
            return ippsDFTInit_C_64fc(size, flag, hint, (IppsDFTSpec_C_64fc *)memory, init);
        if (f->precision == PREC_DOUBLE)
            return ippsDFTInit_C_64f(size, flag, hint, (IppsDFTSpec_C_64f *)memory, init);
        return ippsDFTInit_C_32f(size, flag, hint, (IppsDFTSpec_C_32f *)memory, init);
    }
    if (!f->split)
        return ippsFFTInit_C_64fc((IppsFFTSpec_C_64fc **)spec, size, flag, hint, memory, init);
    if (f->precision == PREC_DOUBLE)
        return ippsFFTInit_C_64f((IppsFFTSpec_C_64f **)spec, size, flag, hint, memory, init);
    return ippsFFTInit_C_32f((IppsFFTSpec_C_32f **)spec, size, flag, hint, memory, init);
}

static IppStatus fourierInterleaved(const Fourier *f, const Ipp64fc *src, Ipp64fc *dst, const void *spec,
                                    Ipp8u *work)
{
    if (f->fft)
        return f->forward ? ippsFFTFwd_CToC_64fc(src, dst, (const IppsFFTSpec_C_64fc *)spec, work)
                          : ippsFFTInv_CToC_64fc(src, dst, (const IppsFFTSpec_C_64fc *)spec, work);
    return f->forward ? ippsDFTFwd_CToC_64fc(src, dst, (const IppsDFTSpec_C_64fc *)spec, work)
                      : ippsDFTInv_CToC_64fc(src, dst, (const IppsDFTSpec_C_64fc *)spec, work);
}

/* Split data: sources re, im, then destinations re, im. */
static IppStatus fourierSplit(const Fourier *f, void *const *p, const void *spec, Ipp8u *work)
{
    if (f->precision == PREC_DOUBLE) {
        const Ipp64f *sr = (const Ipp64f *)p[0], *si = (const Ipp64f *)p[1];
        Ipp64f *dr = (Ipp64f *)p[2], *di = (Ipp64f *)p[3];
        if (f->fft)
            return f->forward ? ippsFFTFwd_CToC_64f(sr, si, dr, di, (const IppsFFTSpec_C_64f *)spec, work)
                              : ippsFFTInv_CToC_64f(sr, si, dr, di, (const IppsFFTSpec_C_64f *)spec, work);
        return f->forward ? ippsDFTFwd_CToC_64f(sr, si, dr, di, (const IppsDFTSpec_C_64f *)spec, work)
                          : ippsDFTInv_CToC_64f(sr, si, dr, di, (const IppsDFTSpec_C_64f *)spec, work);
    } else {
        const Ipp32f *sr = (const Ipp32f *)p[0], *si = (const Ipp32f *)p[1];
        Ipp32f *dr = (Ipp32f *)p[2], *di = (Ipp32f *)p[3];
        if (f->fft)
            return f->forward ? ippsFFTFwd_CToC_32f(sr, si, dr, di, (const IppsFFTSpec_C_32f *)spec, work)
                              : ippsFFTInv_CToC_32f(sr, si, dr, di, (const IppsFFTSpec_C_32f *)spec, work);
        return f->forward ? ippsDFTFwd_CToC_32f(sr, si, dr, di, (const IppsDFTSpec_C_32f *)spec, work)
                          : ippsDFTInv_CToC_32f(sr, si, dr, di, (const IppsDFTSpec_C_32f *)spec, work);
    }
}

/* Size query, structure, initialisation and transform, everything released
 * before any raise and before returning. size is the order for the FFT and
 * the 32-bit length for the DFT; arrays are the interleaved source and
 * destination, or the four split arrays. Says whether it ran. */
static int fourierRun(HostCallbacks cb, const Fourier *f, int size, int flag, IppHintAlgorithm hint,
                      void *const *arrays)
{
    OrbHeld held;
    int specSize = 0, initSize = 0, workSize = 0;
    Ipp8u *memory, *init, *work;
    void *spec = NULL;
    IppStatus status;

    orbHeldInit(&held);
    if (!orbOk(cb, &held, fourierSize(f, size, flag, hint, &specSize, &initSize, &workSize)))
        return 0;
    memory = orbMalloc8u(&held, specSize);
    init = orbMalloc8u(&held, initSize);
    if (!orbAllocated(cb, &held))
        return 0;
    status = fourierInit(f, &spec, size, flag, hint, memory, init);
    orbReleaseBlock(&held, init);
    if (!orbInitOk(cb, &held, status))
        return 0;
    work = orbMalloc8u(&held, workSize);
    if (!orbAllocated(cb, &held))
        return 0;
    status = f->split ? fourierSplit(f, arrays, spec, work)
                      : fourierInterleaved(f, (const Ipp64fc *)arrays[0], (Ipp64fc *)arrays[1], spec, work);
    orbRelease(&held);
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    return 1;
}

/* orbFwdDFT, orbInvDFT, orbFwdFFT, orbInvFFT: argument 1 the output,
 * argument 2 the input, both complex[8]; the option and hint optional. */
static HostValue fourierExport(HostCallbacks cb, ArgSeq args, int fft, int forward)
{
    int64_t n = orbBegin(cb, args);
    int64_t len, len2;
    void *arrays[2];
    int flag;
    IppHintAlgorithm hint;
    Fourier f;

    if (n < 2) {
        orbArityError(cb, fft ? ARITY_TWO_TO_FOUR : ARITY_TWO, n);
        return 0;
    }
    arrays[1] = GetComplex8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    arrays[0] = GetComplex8Sample(cb, args[2]);
    len2 = HostRTableNumElements(cb, args[2]);
    if (!fourierOptions(cb, args, n, 3, &flag, &hint))
        return args[1];
    if (!orbCountsAgree(cb, len2 == len))
        return args[1];
    if (len < 2) {
        HostError(cb, MSG_AT_LEAST_TWO);
        return args[1];
    }
    if (fft && (len & (len - 1)) != 0) {
        HostError(cb, MSG_POWER_OF_TWO);
        return args[1];
    }
    if (!fitsWhole(cb, len, args[1], DT_COMPLEX8) || !fitsWhole(cb, len, args[2], DT_COMPLEX8))
        return args[1];
    f.fft = fft;
    f.forward = forward;
    f.split = 0;
    f.precision = PREC_DOUBLE;
    fourierRun(cb, &f, fft ? fftOrder(len) : orbLen32(len), flag, hint, arrays);
    return args[1];
}

ORB_API HostValue orbFwdDFT(HostCallbacks cb, ArgSeq args)
{
    return fourierExport(cb, args, 0, 1);
}

ORB_API HostValue orbInvDFT(HostCallbacks cb, ArgSeq args)
{
    return fourierExport(cb, args, 0, 0);
}

ORB_API HostValue orbFwdFFT(HostCallbacks cb, ArgSeq args)
{
    return fourierExport(cb, args, 1, 1);
}

ORB_API HostValue orbInvFFT(HostCallbacks cb, ArgSeq args)
{
    return fourierExport(cb, args, 1, 0);
}

/* The split forms: output real and imaginary parts, input real and
 * imaginary parts, all float[8] or all float[4]; the option and hint
 * optional. The FFT takes a single element (order 0) here, unlike the
 * interleaved form. Returns the two outputs as a sequence. */
static HostValue fourierSplitExport(HostCallbacks cb, ArgSeq args, int fft, int forward)
{
    int64_t n = orbBegin(cb, args);
    int64_t code[4], len[4];
    void *data[4], *arrays[4];
    int flag, i;
    IppHintAlgorithm hint;
    Fourier f;

    if (n < 4) {
        orbArityError(cb, ARITY_FOUR_TO_SIX, n);
        return 0;
    }
    for (i = 0; i < 4; ++i)
        code[i] = orbTarget(cb, args[i + 1], &len[i], &data[i]);
    if (!fourierOptions(cb, args, n, 5, &flag, &hint))
        return args[1];
    if (code[1] != code[0] || code[2] != code[0] || code[3] != code[0]) {
        HostError(cb, MSG_SAME_DATATYPE);
        return args[1];
    }
    if (!orbCountsAgree(cb, len[1] == len[0] && len[2] == len[0] && len[3] == len[0]))
        return args[1];
    if (fft && (len[0] < 1 || (len[0] & (len[0] - 1)) != 0)) {
        HostError(cb, MSG_POWER_OF_TWO);
        return args[1];
    }
    switch (orbDatatype(code[0])) {
    case DT_FLOAT8: f.precision = PREC_DOUBLE; break;
    case DT_FLOAT4: f.precision = PREC_SINGLE; break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT2: case DT_INT4: case DT_INT8: case DT_COMPLEX8:
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (!orbAllFit(cb, &len[0], args, 1, 4, code[0]) || len[0] != len[1])
        return args[1];
    arrays[0] = data[2];
    arrays[1] = data[3];
    arrays[2] = data[0];
    arrays[3] = data[1];
    f.fft = fft;
    f.forward = forward;
    f.split = 1;
    if (!fourierRun(cb, &f, fft ? fftOrder(len[0]) : orbLen32(len[0]), flag, hint, arrays))
        return args[1];
    return HostExprSeqOf(cb, 2, args[1], args[2]);
}

ORB_API HostValue orbFwdDFTSplit(HostCallbacks cb, ArgSeq args)
{
    return fourierSplitExport(cb, args, 0, 1);
}

ORB_API HostValue orbInvDFTSplit(HostCallbacks cb, ArgSeq args)
{
    return fourierSplitExport(cb, args, 0, 0);
}

ORB_API HostValue orbFwdFFTSplit(HostCallbacks cb, ArgSeq args)
{
    return fourierSplitExport(cb, args, 1, 1);
}

ORB_API HostValue orbInvFFTSplit(HostCallbacks cb, ArgSeq args)
{
    return fourierSplitExport(cb, args, 1, 0);
}

/* ---- Discrete cosine transform ---- */

static IppStatus dctSize(Precision p, int forward, int len, IppHintAlgorithm hint, int *spec, int *init, int *work)
{
    if (p == PREC_DOUBLE)
        return forward ? ippsDCTFwdGetSize_64f(len, hint, spec, init, work)
                       : ippsDCTInvGetSize_64f(len, hint, spec, init, work);
    return forward ? ippsDCTFwdGetSize_32f(len, hint, spec, init, work)
                   : ippsDCTInvGetSize_32f(len, hint, spec, init, work);
}

static IppStatus dctInit(Precision p, int forward, void **spec, int len, IppHintAlgorithm hint, Ipp8u *memory,
                         Ipp8u *init)
{
    if (p == PREC_DOUBLE)
        return forward ? ippsDCTFwdInit_64f((IppsDCTFwdSpec_64f **)spec, len, hint, memory, init)
                       : ippsDCTInvInit_64f((IppsDCTInvSpec_64f **)spec, len, hint, memory, init);
    return forward ? ippsDCTFwdInit_32f((IppsDCTFwdSpec_32f **)spec, len, hint, memory, init)
                   : ippsDCTInvInit_32f((IppsDCTInvSpec_32f **)spec, len, hint, memory, init);
}

static IppStatus dctRun(Precision p, int forward, const void *src, void *dst, const void *spec, Ipp8u *work)
{
    if (p == PREC_DOUBLE)
        return forward ? ippsDCTFwd_64f((const Ipp64f *)src, (Ipp64f *)dst, (const IppsDCTFwdSpec_64f *)spec, work)
                       : ippsDCTInv_64f((const Ipp64f *)src, (Ipp64f *)dst, (const IppsDCTInvSpec_64f *)spec, work);
    return forward ? ippsDCTFwd_32f((const Ipp32f *)src, (Ipp32f *)dst, (const IppsDCTFwdSpec_32f *)spec, work)
                   : ippsDCTInv_32f((const Ipp32f *)src, (Ipp32f *)dst, (const IppsDCTInvSpec_32f *)spec, work);
}

/* orbFwdDCT, orbInvDCT: destination, source of the same datatype, and a
 * hint that cannot be left out; the hint is read before the datatype is
 * looked at. */
static HostValue dctExport(HostCallbacks cb, ArgSeq args, int forward)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *dst;
    const void *src;
    IppHintAlgorithm hint;
    Precision p;
    OrbHeld held;
    int specSize = 0, initSize = 0, workSize = 0;
    Ipp8u *memory, *init, *work;
    void *spec = NULL;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    hint = (IppHintAlgorithm)GetHint(cb, args[3]);
    switch (orbDatatype(code)) {
    case DT_FLOAT4: p = PREC_SINGLE; src = GetFloat4Sample(cb, args[2]); break;
    case DT_FLOAT8: p = PREC_DOUBLE; src = GetFloat8Sample(cb, args[2]); break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT2: case DT_INT4: case DT_INT8: case DT_COMPLEX8:
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    len2 = HostRTableNumElements(cb, args[2]);
    if (!orbCountsAgree(cb, len2 == len))
        return args[1];
    if (!fitsWhole(cb, len, args[1], code) || !fitsWhole(cb, len, args[2], code))
        return args[1];

    orbHeldInit(&held);
    if (!orbOk(cb, &held, dctSize(p, forward, orbLen32(len), hint, &specSize, &initSize, &workSize)))
        return args[1];
    memory = orbMalloc8u(&held, specSize);
    init = orbMalloc8u(&held, initSize);
    if (!orbAllocated(cb, &held))
        return args[1];
    status = dctInit(p, forward, &spec, orbLen32(len), hint, memory, init);
    orbReleaseBlock(&held, init);
    if (!orbInitOk(cb, &held, status))
        return args[1];
    work = orbMalloc8u(&held, workSize);
    if (!orbAllocated(cb, &held))
        return args[1];
    status = dctRun(p, forward, src, dst, spec, work);
    orbRelease(&held);
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbFwdDCT(HostCallbacks cb, ArgSeq args)
{
    return dctExport(cb, args, 1);
}

ORB_API HostValue orbInvDCT(HostCallbacks cb, ArgSeq args)
{
    return dctExport(cb, args, 0);
}

/* ---- Analytic signal ----
 *
 * The temporary single-precision result is held with the rest, so it is
 * released on every path, errors included. */
ORB_API HostValue orbHilbert(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t len, len2;
    Ipp64fc *dst;
    const Ipp32f *src;
    IppHintAlgorithm hint = ippAlgHintNone;
    OrbHeld held;
    int specSize = 0, bufferSize = 0;
    Ipp32fc *tmp;
    Ipp8u *spec, *buffer;
    IppStatus status;

    if (n < 2) {
        orbArityError(cb, ARITY_TWO_OR_THREE, n);
        return 0;
    }
    dst = GetComplex8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    src = GetFloat4Sample(cb, args[2]);
    len2 = HostRTableNumElements(cb, args[2]);
    if (n >= 3)
        hint = (IppHintAlgorithm)GetHint(cb, args[3]);
    if (!orbCountsAgree(cb, len2 == len))
        return args[1];
    if (!fitsWhole(cb, len, args[1], DT_COMPLEX8) || !fitsWhole(cb, len, args[2], DT_FLOAT4))
        return args[1];

    orbHeldInit(&held);
    tmp = orbMalloc32fc(&held, orbLen32(len));
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbOk(cb, &held, ippsHilbertGetSize_32f32fc(orbLen32(len), hint, &specSize, &bufferSize)))
        return args[1];
    spec = orbMalloc8u(&held, specSize);
    buffer = orbMalloc8u(&held, bufferSize);
    if (!orbAllocated(cb, &held))
        return args[1];
    status = ippsHilbertInit_32f32fc(orbLen32(len), hint, (IppsHilbertSpec *)spec, buffer);
    if (status == ippStsNoErr) {
        orbRelease(&held);
        orbIppError(cb, status);
        return args[1];
    }
    status = ippsHilbert_32f32fc(src, tmp, (IppsHilbertSpec *)spec, buffer);
    orbReleaseBlock(&held, spec);
    orbReleaseBlock(&held, buffer);
    if (!orbOk(cb, &held, status))
        return args[1];
    Complex4ToComplex8(dst, tmp, len);
    orbRelease(&held);
    return args[1];
}

/* ---- One DFT value ---- */

ORB_API HostValue orbGoertz(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len;
    void *data;
    IppStatus status = ORB_NO_KERNEL;
    Ipp64fc value = {0, 0};

    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    switch (orbDatatype(code)) {
    case DT_FLOAT4: {
        Ipp32f freq = GetFloat4Value(cb, args[2]);
        Ipp32fc single = {0, 0};
        if (!fitsWhole(cb, len, args[1], code))
            return HostNullValue(cb);
        status = ippsGoertz_32f((const Ipp32f *)data, orbLen32(len), &single, freq);
        value.re = single.re;
        value.im = single.im;
        break;
    }
    case DT_FLOAT8: {
        Ipp64f freq = GetFloat8Value(cb, args[2]);
        if (!fitsWhole(cb, len, args[1], code))
            return HostNullValue(cb);
        status = ippsGoertz_64f((const Ipp64f *)data, orbLen32(len), &value, freq);
        break;
    }
    case DT_COMPLEX8: {
        Ipp64f freq = GetFloat8Value(cb, args[2]);
        if (!fitsWhole(cb, len, args[1], code))
            return HostNullValue(cb);
        status = ippsGoertz_64fc((const Ipp64fc *)data, orbLen32(len), &value, freq);
        break;
    }
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT2: case DT_INT4: case DT_INT8:
        HostError(cb, MSG_NOT_SUPPORTED);
        return HostNullValue(cb);
    }
    if (status < 0)
        orbIppError(cb, status);
    return HostFromComplexFloat64(cb, value.re, value.im);
}

/* ---- Haar wavelet ---- */

/* The two Haar exports: orbFwdHaarWT takes the low-pass and high-pass
 * outputs, then the signal; orbInvHaarWT the signal output first, then the
 * low-pass and high-pass inputs. The signal decides the datatype. The length
 * message names the third rtable in both directions, although for the
 * inverse it is the first that must be twice as long; the wording is kept. */
static HostValue haarExport(HostCallbacks cb, ArgSeq args, int inverse)
{
    int64_t n = orbBegin(cb, args);
    const int at = inverse ? 1 : 3, atLow = inverse ? 2 : 1, atHigh = inverse ? 3 : 2;
    int64_t code, len;
    void *signal, *low, *high;
    int64_t lowLen, highLen;
    IppStatus status = ORB_NO_KERNEL;

    if (n < 3) {
        orbArityError(cb, ARITY_THREE, n);
        return 0;
    }
    code = orbTarget(cb, args[at], &len, &signal);
    switch (orbDatatype(code)) {
    case DT_FLOAT4: case DT_FLOAT8: case DT_INT2:
        low = orbSampleOf(cb, args[atLow], code, &lowLen);
        high = orbSampleOf(cb, args[atHigh], code, &highLen);
        break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT4: case DT_INT8: case DT_COMPLEX8:
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (2 * lowLen != len || 2 * highLen != len) {
        HostError(cb, MSG_HAAR_LENGTHS);
        return args[1];
    }
    if (!fitsWhole(cb, len, args[at], code) || !fitsWhole(cb, lowLen, args[atLow], code) ||
        !fitsWhole(cb, highLen, args[atHigh], code))
        return args[1];
    switch (orbDatatype(code)) {
    case DT_FLOAT4:
        status = inverse ? ippsWTHaarInv_32f((const Ipp32f *)low, (const Ipp32f *)high, (Ipp32f *)signal, orbLen32(len))
                         : ippsWTHaarFwd_32f((const Ipp32f *)signal, orbLen32(len), (Ipp32f *)low, (Ipp32f *)high);
        break;
    case DT_FLOAT8:
        status = inverse ? ippsWTHaarInv_64f((const Ipp64f *)low, (const Ipp64f *)high, (Ipp64f *)signal, orbLen32(len))
                         : ippsWTHaarFwd_64f((const Ipp64f *)signal, orbLen32(len), (Ipp64f *)low, (Ipp64f *)high);
        break;
    case DT_INT2:
        status = inverse
                     ? ippsWTHaarInv_16s_Sfs((const Ipp16s *)low, (const Ipp16s *)high, (Ipp16s *)signal, orbLen32(len), 0)
                     : ippsWTHaarFwd_16s_Sfs((const Ipp16s *)signal, orbLen32(len), (Ipp16s *)low, (Ipp16s *)high, 0);
        break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT4: case DT_INT8: case DT_COMPLEX8: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbFwdHaarWT(HostCallbacks cb, ArgSeq args) { return haarExport(cb, args, 0); }

ORB_API HostValue orbInvHaarWT(HostCallbacks cb, ArgSeq args) { return haarExport(cb, args, 1); }
