/* One DFT value by the Goertzel recurrence s[n] = x[n] + 2 cos(w) s[n-1]
 * - s[n-2], w = 2 pi rFreq, carried in double precision. After the last
 * sample, s[N-1] - exp(-iw) s[N-2] is the DFT value turned by
 * exp(iw(N-1)), which the result takes off again. */
#include <cmath>

#include "entry.h"
#include "ipps.h"

namespace orb_kernels {
namespace {

struct Resonator {
    double coeff, c, s;  // 2 cos w, cos w, sin w

    explicit Resonator(double f) : coeff(2 * std::cos(2 * M_PI * f)), c(std::cos(2 * M_PI * f)), s(std::sin(2 * M_PI * f)) {}

    /* The DFT value of one real sequence at this frequency, before the turn. */
    template <typename Get>
    void Run(int len, Get x, double *re, double *im) const
    {
        double s1 = 0, s2 = 0;
        for (int n = 0; n < len; ++n) {
            const double s0 = x(n) + coeff * s1 - s2;
            s2 = s1;
            s1 = s0;
        }
        *re = s1 - c * s2;
        *im = s * s2;
    }
};

/* exp(-iw(N-1)) applied to (re, im), with the angle reduced to one turn
 * before it is multiplied out. */
void Turn(double f, int len, double *re, double *im)
{
    double turns = std::fmod(f * double(len - 1), 1.0);
    const double a = -2 * M_PI * turns, c = std::cos(a), s = std::sin(a);
    const double r = *re * c - *im * s, i = *re * s + *im * c;
    *re = r;
    *im = i;
}

IppStatus Check(const void *pSrc, int len, const void *pVal, double rFreq)
{
    if (IppStatus st = CheckArgs(len, pSrc, pVal)) return st;
    return Refuse(!(rFreq >= 0 && rFreq < 1), ippStsRelFreqErr);
}

template <typename T>
void Real(const T *pSrc, int len, double f, double *re, double *im)
{
    Resonator(f).Run(len, [pSrc](int n) { return double(pSrc[n]); }, re, im);
    Turn(f, len, re, im);
}

}  // namespace
}  // namespace orb_kernels

extern "C" IppStatus ippsGoertz_32f(const Ipp32f *pSrc, int len, Ipp32fc *pVal, Ipp32f rFreq)
{
    if (IppStatus st = orb_kernels::Check(pSrc, len, pVal, rFreq)) return st;
    double re, im;
    orb_kernels::Real(pSrc, len, rFreq, &re, &im);
    pVal->re = float(re);
    pVal->im = float(im);
    return ippStsNoErr;
}

extern "C" IppStatus ippsGoertz_64f(const Ipp64f *pSrc, int len, Ipp64fc *pVal, Ipp64f rFreq)
{
    if (IppStatus st = orb_kernels::Check(pSrc, len, pVal, rFreq)) return st;
    orb_kernels::Real(pSrc, len, rFreq, &pVal->re, &pVal->im);
    return ippStsNoErr;
}

/* The real and imaginary parts are two real sequences: X = Xre + i Xim. */
extern "C" IppStatus ippsGoertz_64fc(const Ipp64fc *pSrc, int len, Ipp64fc *pVal, Ipp64f rFreq)
{
    if (IppStatus st = orb_kernels::Check(pSrc, len, pVal, rFreq)) return st;
    const orb_kernels::Resonator r(rFreq);
    double ar, ai, br, bi;
    r.Run(len, [pSrc](int n) { return pSrc[n].re; }, &ar, &ai);
    r.Run(len, [pSrc](int n) { return pSrc[n].im; }, &br, &bi);
    double re = ar - bi, im = ai + br;
    orb_kernels::Turn(rFreq, len, &re, &im);
    pVal->re = re;
    pVal->im = im;
    return ippStsNoErr;
}
