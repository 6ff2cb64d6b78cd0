/* Windows: argument 2 times a window, written into argument 1 of the same
 * datatype and length. */
#include "frame/frame.h"

typedef enum WinOp { W_BARTLETT, W_HAMMING, W_HANN, W_BLACKMAN_STD, W_BLACKMAN_OPT, W_BLACKMAN, W_KAISER } WinOp;

static IppStatus win32f(WinOp op, const Ipp32f *s, Ipp32f *d, int len, Ipp32f alpha)
{
    switch (op) {
    case W_BARTLETT: return ippsWinBartlett_32f(s, d, len);
    case W_HAMMING: return ippsWinHamming_32f(s, d, len);
    case W_HANN: return ippsWinHann_32f(s, d, len);
    case W_BLACKMAN_STD: return ippsWinBlackmanStd_32f(s, d, len);
    case W_BLACKMAN_OPT: return ippsWinBlackmanOpt_32f(s, d, len);
    case W_BLACKMAN: return ippsWinBlackman_32f(s, d, len, alpha);
    case W_KAISER: return ippsWinKaiser_32f(s, d, len, alpha);
    }
    return ORB_NO_KERNEL;
}

static IppStatus win16s(WinOp op, const Ipp16s *s, Ipp16s *d, int len, Ipp32f alpha)
{
    switch (op) {
    case W_BARTLETT: return ippsWinBartlett_16s(s, d, len);
    case W_HAMMING: return ippsWinHamming_16s(s, d, len);
    case W_HANN: return ippsWinHann_16s(s, d, len);
    case W_BLACKMAN_STD: return ippsWinBlackmanStd_16s(s, d, len);
    case W_BLACKMAN_OPT: return ippsWinBlackmanOpt_16s(s, d, len);
    case W_BLACKMAN: return ippsWinBlackman_16s(s, d, len, alpha);
    case W_KAISER: return ippsWinKaiser_16s(s, d, len, alpha);
    }
    return ORB_NO_KERNEL;
}

/* Kaiser's alpha goes to the backend in single precision for every
 * datatype: the double read is rounded here. */
static Ipp64f kaiserAlpha(Ipp64f alpha)
{
    return (Ipp64f)(Ipp32f)alpha;
}

static IppStatus win64f(WinOp op, const Ipp64f *s, Ipp64f *d, int len, Ipp64f alpha)
{
    switch (op) {
    case W_BARTLETT: return ippsWinBartlett_64f(s, d, len);
    case W_HAMMING: return ippsWinHamming_64f(s, d, len);
    case W_HANN: return ippsWinHann_64f(s, d, len);
    case W_BLACKMAN_STD: return ippsWinBlackmanStd_64f(s, d, len);
    case W_BLACKMAN_OPT: return ippsWinBlackmanOpt_64f(s, d, len);
    case W_BLACKMAN: return ippsWinBlackman_64f(s, d, len, alpha);
    case W_KAISER: return ippsWinKaiser_64f(s, d, len, kaiserAlpha(alpha));
    }
    return ORB_NO_KERNEL;
}

static IppStatus win64fc(WinOp op, const Ipp64fc *s, Ipp64fc *d, int len, Ipp64f alpha)
{
    switch (op) {
    case W_BARTLETT: return ippsWinBartlett_64fc(s, d, len);
    case W_HAMMING: return ippsWinHamming_64fc(s, d, len);
    case W_HANN: return ippsWinHann_64fc(s, d, len);
    case W_BLACKMAN_STD: return ippsWinBlackmanStd_64fc(s, d, len);
    case W_BLACKMAN_OPT: return ippsWinBlackmanOpt_64fc(s, d, len);
    case W_BLACKMAN: return ippsWinBlackman_64fc(s, d, len, alpha);
    case W_KAISER: return ippsWinKaiser_64fc(s, d, len, kaiserAlpha(alpha));
    }
    return ORB_NO_KERNEL;
}

/* The count check comes after the source is read and before alpha is. */
static HostValue windowExport(HostCallbacks cb, ArgSeq args, WinOp op)
{
    int withAlpha = op == W_BLACKMAN || op == W_KAISER;
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *dst, *src;
    IppStatus status;

    if (n != (withAlpha ? 3 : 2)) {
        orbArityError(cb, withAlpha ? ARITY_TWO_OR_THREE : ARITY_ONE_OR_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &dst);
    if (code != DT_FLOAT4 && code != DT_FLOAT8 && code != DT_COMPLEX8 && code != DT_INT2) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    src = orbSampleOf(cb, args[2], code, &len2);
    if (!orbCountsAgree(cb, len2 == len))
        return args[1];
    if (code == DT_FLOAT4 || code == DT_INT2) {
        Ipp32f alpha = withAlpha ? GetFloat4Value(cb, args[3]) : 0;
        if (!orbAllFit(cb, &len, args, 1, 2, code))
            return args[1];
        status = code == DT_FLOAT4 ? win32f(op, (const Ipp32f *)src, (Ipp32f *)dst, orbLen32(len), alpha)
                                   : win16s(op, (const Ipp16s *)src, (Ipp16s *)dst, orbLen32(len), alpha);
    } else {
        Ipp64f alpha = withAlpha ? GetFloat8Value(cb, args[3]) : 0;
        if (!orbAllFit(cb, &len, args, 1, 2, code))
            return args[1];
        status = code == DT_FLOAT8 ? win64f(op, (const Ipp64f *)src, (Ipp64f *)dst, orbLen32(len), alpha)
                                   : win64fc(op, (const Ipp64fc *)src, (Ipp64fc *)dst, orbLen32(len), alpha);
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbBartlett(HostCallbacks cb, ArgSeq args)
{
    return windowExport(cb, args, W_BARTLETT);
}

ORB_API HostValue orbHamming(HostCallbacks cb, ArgSeq args)
{
    return windowExport(cb, args, W_HAMMING);
}

ORB_API HostValue orbHann(HostCallbacks cb, ArgSeq args)
{
    return windowExport(cb, args, W_HANN);
}

ORB_API HostValue orbBlackmanStd(HostCallbacks cb, ArgSeq args)
{
    return windowExport(cb, args, W_BLACKMAN_STD);
}

ORB_API HostValue orbBlackmanOpt(HostCallbacks cb, ArgSeq args)
{
    return windowExport(cb, args, W_BLACKMAN_OPT);
}

ORB_API HostValue orbBlackman(HostCallbacks cb, ArgSeq args)
{
    return windowExport(cb, args, W_BLACKMAN);
}

ORB_API HostValue orbKaiser(HostCallbacks cb, ArgSeq args)
{
    return windowExport(cb, args, W_KAISER);
}
