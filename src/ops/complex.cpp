/* Complex forms: conjugates, real and imaginary parts, magnitude, phase,
 * power spectrum, packing and unpacking, Cartesian and polar forms; and the
 * storage converters between double and single precision complex data.
 *
 * Every rtable is read in argument order with the accessor of its datatype,
 * each followed by its element count; a count mismatch skips the
 * computation and leaves every rtable untouched.
 */
#include "frame/frame.h"

typedef enum ComplexOp { X_CONJ, X_CONJFLIP, X_REAL, X_IMAG } ComplexOp;

/* The four two-argument forms. The conjugate reports the one-or-two text
 * although it accepts exactly two. */
static HostValue complexUnaryExport(HostCallbacks cb, ArgSeq args, ComplexOp op)
{
    int64_t n = orbBegin(cb, args);
    int64_t len, len2;
    void *dst;
    const Ipp64fc *src;
    IppStatus status;

    if (n != 2) {
        orbArityError(cb, op == X_CONJ ? ARITY_ONE_OR_TWO : ARITY_TWO, n);
        return 0;
    }
    if (op == X_CONJ || op == X_CONJFLIP)
        dst = GetComplex8Sample(cb, args[1]);
    else
        dst = GetFloat8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    src = GetComplex8Sample(cb, args[2]);
    len2 = HostRTableNumElements(cb, args[2]);
    if (!orbCountsAgree(cb, len2 == len))
        return args[1];
    if (!orbFits(cb, &len, args[1], op == X_CONJ || op == X_CONJFLIP ? DT_COMPLEX8 : DT_FLOAT8) ||
        !orbFits(cb, &len, args[2], DT_COMPLEX8))
        return args[1];
    status = ORB_NO_KERNEL;
    switch (op) {
    case X_CONJ: status = ippsConj_64fc(src, (Ipp64fc *)dst, orbLen32(len)); break;
    case X_CONJFLIP: status = ippsConjFlip_64fc(src, (Ipp64fc *)dst, orbLen32(len)); break;
    case X_REAL: status = ippsReal_64fc(src, (Ipp64f *)dst, orbLen32(len)); break;
    case X_IMAG: status = ippsImag_64fc(src, (Ipp64f *)dst, orbLen32(len)); break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbConjugate(HostCallbacks cb, ArgSeq args)
{
    return complexUnaryExport(cb, args, X_CONJ);
}

ORB_API HostValue orbConjugateFlip(HostCallbacks cb, ArgSeq args)
{
    return complexUnaryExport(cb, args, X_CONJFLIP);
}

ORB_API HostValue orbReal(HostCallbacks cb, ArgSeq args)
{
    return complexUnaryExport(cb, args, X_REAL);
}

ORB_API HostValue orbImag(HostCallbacks cb, ArgSeq args)
{
    return complexUnaryExport(cb, args, X_IMAG);
}

typedef enum PolarOp { P_MAGNITUDE, P_PHASE, P_POWER } PolarOp;

static IppStatus polar64fc(PolarOp op, const Ipp64fc *src, Ipp64f *dst, int len)
{
    switch (op) {
    case P_MAGNITUDE: return ippsMagnitude_64fc(src, dst, len);
    case P_PHASE: return ippsPhase_64fc(src, dst, len);
    case P_POWER: return ippsPowerSpectr_64fc(src, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus polar32f(PolarOp op, const Ipp32f *re, const Ipp32f *im, Ipp32f *dst, int len)
{
    switch (op) {
    case P_MAGNITUDE: return ippsMagnitude_32f(re, im, dst, len);
    case P_PHASE: return ippsPhase_32f(re, im, dst, len);
    case P_POWER: return ippsPowerSpectr_32f(re, im, dst, len);
    }
    return ORB_NO_KERNEL;
}

static IppStatus polar64f(PolarOp op, const Ipp64f *re, const Ipp64f *im, Ipp64f *dst, int len)
{
    switch (op) {
    case P_MAGNITUDE: return ippsMagnitude_64f(re, im, dst, len);
    case P_PHASE: return ippsPhase_64f(re, im, dst, len);
    case P_POWER: return ippsPowerSpectr_64f(re, im, dst, len);
    }
    return ORB_NO_KERNEL;
}

/* Magnitude, phase and power spectrum: of a complex[8] rtable (two
 * arguments) or of separate real and imaginary parts (three arguments, in
 * either floating precision). */
static HostValue polarExport(HostCallbacks cb, ArgSeq args, PolarOp op)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, lenRe, lenIm;
    void *dst;
    IppStatus status;

    if (n == 2) {
        dst = GetFloat8Sample(cb, args[1]);
        len = HostRTableNumElements(cb, args[1]);
        const Ipp64fc *src = GetComplex8Sample(cb, args[2]);
        lenRe = HostRTableNumElements(cb, args[2]);
        if (!orbCountsAgree(cb, lenRe == len))
            return args[1];
        if (!orbFits(cb, &len, args[1], DT_FLOAT8) || !orbFits(cb, &len, args[2], DT_COMPLEX8))
            return args[1];
        status = polar64fc(op, src, (Ipp64f *)dst, orbLen32(len));
    } else if (n == 3) {
        code = orbTarget(cb, args[1], &len, &dst);
        if (code != DT_FLOAT4 && code != DT_FLOAT8) {
            HostError(cb, MSG_NOT_SUPPORTED);
            return args[1];
        }
        void *re = orbSampleOf(cb, args[2], code, &lenRe);
        void *im = orbSampleOf(cb, args[3], code, &lenIm);
        if (!orbCountsAgree(cb, lenRe == len && lenIm == len))
            return args[1];
        if (!orbAllFit(cb, &len, args, 1, 3, code))
            return args[1];
        if (code == DT_FLOAT4)
            status = polar32f(op, (const Ipp32f *)re, (const Ipp32f *)im, (Ipp32f *)dst, orbLen32(len));
        else if (code == DT_FLOAT8)
            status = polar64f(op, (const Ipp64f *)re, (const Ipp64f *)im, (Ipp64f *)dst, orbLen32(len));
        else
            status = ORB_NO_KERNEL;
    } else {
        orbArityError(cb, ARITY_TWO_OR_THREE, n);
        return 0;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbMagnitude(HostCallbacks cb, ArgSeq args)
{
    return polarExport(cb, args, P_MAGNITUDE);
}

ORB_API HostValue orbPhase(HostCallbacks cb, ArgSeq args)
{
    return polarExport(cb, args, P_PHASE);
}

ORB_API HostValue orbPowerSpectrum(HostCallbacks cb, ArgSeq args)
{
    return polarExport(cb, args, P_POWER);
}

ORB_API HostValue orbRealToComplex(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t len, lenRe, lenIm;
    Ipp64fc *dst;
    const Ipp64f *re, *im;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_THREE, n);
        return 0;
    }
    dst = GetComplex8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    re = GetFloat8Sample(cb, args[2]);
    lenRe = HostRTableNumElements(cb, args[2]);
    im = GetFloat8Sample(cb, args[3]);
    lenIm = HostRTableNumElements(cb, args[3]);
    if (!orbCountsAgree(cb, lenRe == len && lenIm == len))
        return args[1];
    if (!orbFits(cb, &len, args[1], DT_COMPLEX8) || !orbFits(cb, &len, args[2], DT_FLOAT8) ||
        !orbFits(cb, &len, args[3], DT_FLOAT8))
        return args[1];
    status = ippsRealToCplx_64f(re, im, dst, orbLen32(len));
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

/* Writes arguments 1 and 2 and returns both as a sequence. */
ORB_API HostValue orbComplexToReal(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t lenRe, lenIm, len;
    Ipp64f *re, *im;
    const Ipp64fc *src;
    IppStatus status;

    if (n != 3) {
        orbArityError(cb, ARITY_THREE, n);
        return 0;
    }
    re = GetFloat8Sample(cb, args[1]);
    lenRe = HostRTableNumElements(cb, args[1]);
    im = GetFloat8Sample(cb, args[2]);
    lenIm = HostRTableNumElements(cb, args[2]);
    src = GetComplex8Sample(cb, args[3]);
    len = HostRTableNumElements(cb, args[3]);
    if (!orbCountsAgree(cb, lenRe == len && lenIm == len))
        return args[1];
    if (!orbFits(cb, &len, args[1], DT_FLOAT8) || !orbFits(cb, &len, args[2], DT_FLOAT8) ||
        !orbFits(cb, &len, args[3], DT_COMPLEX8))
        return args[1];
    status = ippsCplxToReal_64fc(src, re, im, orbLen32(len));
    if (status < 0)
        orbIppError(cb, status);
    return HostExprSeqOf(cb, 2, args[1], args[2]);
}

/* Magnitude and phase into arguments 1 and 2, from a complex[8] rtable or
 * from real and imaginary parts; always returns both as a sequence. */
ORB_API HostValue orbCartesianToPolar(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t lenMag, lenPh, lenRe, lenIm;
    Ipp64f *mag, *ph;
    IppStatus status;

    if (n != 3 && n != 4) {
        orbArityError(cb, ARITY_THREE_OR_FOUR, n);
        return 0;
    }
    mag = GetFloat8Sample(cb, args[1]);
    lenMag = HostRTableNumElements(cb, args[1]);
    ph = GetFloat8Sample(cb, args[2]);
    lenPh = HostRTableNumElements(cb, args[2]);
    if (n == 3) {
        const Ipp64fc *src = GetComplex8Sample(cb, args[3]);
        lenRe = HostRTableNumElements(cb, args[3]);
        if (!orbCountsAgree(cb, lenMag == lenRe && lenPh == lenRe))
            return args[1];
        if (!orbFits(cb, &lenRe, args[1], DT_FLOAT8) || !orbFits(cb, &lenRe, args[2], DT_FLOAT8) ||
            !orbFits(cb, &lenRe, args[3], DT_COMPLEX8))
            return args[1];
        status = ippsCartToPolar_64fc(src, mag, ph, orbLen32(lenRe));
    } else {
        const Ipp64f *re = GetFloat8Sample(cb, args[3]);
        lenRe = HostRTableNumElements(cb, args[3]);
        const Ipp64f *im = GetFloat8Sample(cb, args[4]);
        lenIm = HostRTableNumElements(cb, args[4]);
        if (!orbCountsAgree(cb, lenRe == lenIm && lenRe == lenMag && lenRe == lenPh))
            return args[1];
        if (!orbAllFit(cb, &lenRe, args, 1, 4, DT_FLOAT8))
            return args[1];
        status = ippsCartToPolar_64f(re, im, mag, ph, orbLen32(lenRe));
    }
    if (status < 0)
        orbIppError(cb, status);
    return HostExprSeqOf(cb, 2, args[1], args[2]);
}

/* Three arguments write one complex[8] rtable and return it alone; four
 * write real and imaginary parts and return both as a sequence. */
ORB_API HostValue orbPolarToCartesian(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t len, len2, lenMag, lenPh;
    const Ipp64f *mag, *ph;
    IppStatus status;

    if (n == 3) {
        Ipp64fc *dst = GetComplex8Sample(cb, args[1]);
        len = HostRTableNumElements(cb, args[1]);
        mag = GetFloat8Sample(cb, args[2]);
        lenMag = HostRTableNumElements(cb, args[2]);
        ph = GetFloat8Sample(cb, args[3]);
        lenPh = HostRTableNumElements(cb, args[3]);
        if (!orbCountsAgree(cb, lenMag == len && lenPh == len))
            return args[1];
        if (!orbFits(cb, &len, args[1], DT_COMPLEX8) || !orbFits(cb, &len, args[2], DT_FLOAT8) ||
            !orbFits(cb, &len, args[3], DT_FLOAT8))
            return args[1];
        status = ippsPolarToCart_64fc(mag, ph, dst, orbLen32(len));
        if (status < 0)
            orbIppError(cb, status);
        return args[1];
    }
    if (n != 4) {
        orbArityError(cb, ARITY_THREE_OR_FOUR, n);
        return 0;
    }
    Ipp64f *re = GetFloat8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    Ipp64f *im = GetFloat8Sample(cb, args[2]);
    len2 = HostRTableNumElements(cb, args[2]);
    mag = GetFloat8Sample(cb, args[3]);
    lenMag = HostRTableNumElements(cb, args[3]);
    ph = GetFloat8Sample(cb, args[4]);
    lenPh = HostRTableNumElements(cb, args[4]);
    if (!orbCountsAgree(cb, len2 == len && lenMag == len && lenPh == len))
        return args[1];
    if (!orbAllFit(cb, &len, args, 1, 4, DT_FLOAT8))
        return args[1];
    status = ippsPolarToCart_64f(mag, ph, re, im, orbLen32(len));
    if (status < 0)
        orbIppError(cb, status);
    return HostExprSeqOf(cb, 2, args[1], args[2]);
}

/* Plain storage converters. Each part is rounded to single precision by the
 * processor's current rounding; nothing happens for null pointers or n < 1. */
ORB_API Ipp32fc *Complex8ToComplex4(Ipp32fc *dst, const Ipp64fc *src, int64_t n)
{
    int64_t i;

    if (!dst || !src || n < 1)
        return dst;
    for (i = 0; i < n; ++i) {
        dst[i].re = (Ipp32f)src[i].re;
        dst[i].im = (Ipp32f)src[i].im;
    }
    return dst;
}

ORB_API Ipp64fc *Complex4ToComplex8(Ipp64fc *dst, const Ipp32fc *src, int64_t n)
{
    int64_t i;

    if (!dst || !src || n < 1)
        return dst;
    for (i = 0; i < n; ++i) {
        dst[i].re = src[i].re;
        dst[i].im = src[i].im;
    }
    return dst;
}
