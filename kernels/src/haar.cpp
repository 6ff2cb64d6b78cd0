/* One level of the Haar wavelet (see ipps.h for the formulas). Pairs of
 * samples in, one low-pass and one high-pass value out, and back; an odd
 * last sample passes through the low-pass part. The integer forms compute
 * the exact sums and differences, then scale, round and saturate once. */
#include <cstdint>

#include "entry.h"
#include "ipps.h"

namespace orb_kernels {
namespace {

/* v * 2^-shift rounded to nearest, halves to even, saturated to 16 bits. */
Ipp16s Scaled(int32_t v, int64_t shift)
{
    int64_t q;
    if (shift > 0) {
        if (shift > 24) shift = 24;  // |v| < 2^18: the result is 0 from here on
        q = v >> shift;
        const int32_t rest = v - int32_t(q << shift), half = int32_t(1) << (shift - 1);
        if (rest > half || (rest == half && (q & 1))) ++q;
    } else {
        q = int64_t(v) * (int64_t(1) << (shift < -20 ? 20 : -shift));
    }
    return Ipp16s(q > INT16_MAX ? INT16_MAX : q < INT16_MIN ? INT16_MIN : q);
}

template <typename T>
void Forward(const T *x, int len, T *low, T *high)
{
    const int pairs = len / 2;
    for (int n = 0; n < pairs; ++n) {
        const T a = x[2 * n], b = x[2 * n + 1];
        low[n] = (a + b) / 2;
        high[n] = (b - a) / 2;
    }
    if (len % 2) low[pairs] = x[len - 1];
}

template <typename T>
void Inverse(const T *low, const T *high, T *x, int len)
{
    const int pairs = len / 2;
    for (int n = 0; n < pairs; ++n) {
        const T l = low[n], h = high[n];
        x[2 * n] = l - h;
        x[2 * n + 1] = l + h;
    }
    if (len % 2) x[len - 1] = low[pairs];
}

void Forward16s(const Ipp16s *x, int len, Ipp16s *low, Ipp16s *high, int sf)
{
    const int pairs = len / 2;
    for (int n = 0; n < pairs; ++n) {
        const int32_t a = x[2 * n], b = x[2 * n + 1];
        low[n] = Scaled(a + b, int64_t(sf) + 1);
        high[n] = Scaled(b - a, int64_t(sf) + 1);
    }
    if (len % 2) low[pairs] = Scaled(x[len - 1], sf);
}

void Inverse16s(const Ipp16s *low, const Ipp16s *high, Ipp16s *x, int len, int sf)
{
    const int pairs = len / 2;
    for (int n = 0; n < pairs; ++n) {
        const int32_t l = low[n], h = high[n];
        x[2 * n] = Scaled(l - h, sf);
        x[2 * n + 1] = Scaled(l + h, sf);
    }
    if (len % 2) x[len - 1] = Scaled(low[pairs], sf);
}

}  // namespace
}  // namespace orb_kernels

#define ORB_HAAR_FWD(name, T, call)                                                      \
    extern "C" IppStatus name                                                            \
    {                                                                                    \
        if (IppStatus st = orb_kernels::CheckArgs(len, pSrc, pDstLow, pDstHigh)) return st; \
        call;                                                                            \
        return ippStsNoErr;                                                              \
    }
#define ORB_HAAR_INV(name, T, call)                                                      \
    extern "C" IppStatus name                                                            \
    {                                                                                    \
        if (IppStatus st = orb_kernels::CheckArgs(len, pSrcLow, pSrcHigh, pDst)) return st; \
        call;                                                                            \
        return ippStsNoErr;                                                              \
    }
ORB_HAAR_FWD(ippsWTHaarFwd_32f(const Ipp32f *pSrc, int len, Ipp32f *pDstLow, Ipp32f *pDstHigh), Ipp32f,
             orb_kernels::Forward(pSrc, len, pDstLow, pDstHigh))
ORB_HAAR_FWD(ippsWTHaarFwd_64f(const Ipp64f *pSrc, int len, Ipp64f *pDstLow, Ipp64f *pDstHigh), Ipp64f,
             orb_kernels::Forward(pSrc, len, pDstLow, pDstHigh))
ORB_HAAR_FWD(ippsWTHaarFwd_16s_Sfs(const Ipp16s *pSrc, int len, Ipp16s *pDstLow, Ipp16s *pDstHigh, int scaleFactor),
             Ipp16s, orb_kernels::Forward16s(pSrc, len, pDstLow, pDstHigh, scaleFactor))
ORB_HAAR_INV(ippsWTHaarInv_32f(const Ipp32f *pSrcLow, const Ipp32f *pSrcHigh, Ipp32f *pDst, int len), Ipp32f,
             orb_kernels::Inverse(pSrcLow, pSrcHigh, pDst, len))
ORB_HAAR_INV(ippsWTHaarInv_64f(const Ipp64f *pSrcLow, const Ipp64f *pSrcHigh, Ipp64f *pDst, int len), Ipp64f,
             orb_kernels::Inverse(pSrcLow, pSrcHigh, pDst, len))
ORB_HAAR_INV(ippsWTHaarInv_16s_Sfs(const Ipp16s *pSrcLow, const Ipp16s *pSrcHigh, Ipp16s *pDst, int len,
                                   int scaleFactor),
             Ipp16s, orb_kernels::Inverse16s(pSrcLow, pSrcHigh, pDst, len, scaleFactor))
#undef ORB_HAAR_FWD
#undef ORB_HAAR_INV
