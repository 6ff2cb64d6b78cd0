/* Test signals: ippsVectorJaehne and ippsVectorSlope.
 *
 *   Jaehne   pDst[n] = magn sin(pi/2 n^2 / len), 0 <= n < len. The angle is
 *            reduced exactly first (n^2 mod 4 len, in integers), so long
 *            vectors keep full accuracy. Errors after the common ones: a
 *            negative magn (ippStsJaehneErr).
 *   Slope    pDst[n] = offset + slope n, in double.
 * Integer forms round the double result to the nearest integer (ties to
 * even) and saturate to the type's range; _32f rounds it to float once.
 */
#include <math.h>
#include <stdint.h>

#include <type_traits>

#include "entry.h"
#include "ipps.h"

namespace orb_kernels {
namespace {

template <typename T>
T Store(double v)
{
    if constexpr (std::is_floating_point_v<T>) {
        return T(v);
    } else {
        constexpr double lo = -double(uint64_t(1) << (8 * sizeof(T) - 1));
        constexpr double hi = -lo - 1.0;
        const double r = nearbyint(v);
        if (r != r) return T(0);
        return T(r < lo ? lo : r > hi ? hi : r);
    }
}

template <typename T>
IppStatus Jaehne(T *dst, int len, T magn)
{
    IppStatus st = CheckArgs(len, dst);
    if (st == ippStsNoErr) st = Refuse(magn < 0, ippStsJaehneErr);
    if (st != ippStsNoErr) return st;
    const uint64_t period = 4 * uint64_t(len);
    const double scale = 1.5707963267948966 / double(len);
    for (int n = 0; n < len; ++n) {
        const uint64_t r = (uint64_t(n) * uint64_t(n)) % period;
        dst[n] = Store<T>(double(magn) * sin(scale * double(r)));
    }
    return ippStsNoErr;
}

template <typename T>
IppStatus Slope(T *dst, int len, double offset, double slope)
{
    const IppStatus st = CheckArgs(len, dst);
    if (st != ippStsNoErr) return st;
    for (int n = 0; n < len; ++n) dst[n] = Store<T>(offset + slope * double(n));
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels

using orb_kernels::Jaehne;
using orb_kernels::Slope;

extern "C" {
IppStatus ippsVectorJaehne_16s(Ipp16s *pDst, int len, Ipp16s magn) { return Jaehne(pDst, len, magn); }
IppStatus ippsVectorJaehne_32s(Ipp32s *pDst, int len, Ipp32s magn) { return Jaehne(pDst, len, magn); }
IppStatus ippsVectorJaehne_32f(Ipp32f *pDst, int len, Ipp32f magn) { return Jaehne(pDst, len, magn); }
IppStatus ippsVectorJaehne_64f(Ipp64f *pDst, int len, Ipp64f magn) { return Jaehne(pDst, len, magn); }
IppStatus ippsVectorSlope_16s(Ipp16s *pDst, int len, Ipp32f offset, Ipp32f slope)
{
    return Slope(pDst, len, offset, slope);
}
IppStatus ippsVectorSlope_32s(Ipp32s *pDst, int len, Ipp64f offset, Ipp64f slope)
{
    return Slope(pDst, len, offset, slope);
}
IppStatus ippsVectorSlope_32f(Ipp32f *pDst, int len, Ipp32f offset, Ipp32f slope)
{
    return Slope(pDst, len, offset, slope);
}
IppStatus ippsVectorSlope_64f(Ipp64f *pDst, int len, Ipp64f offset, Ipp64f slope)
{
    return Slope(pDst, len, offset, slope);
}
}
