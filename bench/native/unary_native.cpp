// The same loops, built for this processor (-march=native).
#include <cmath>

#include "refs.h"

namespace refs {

void nativeAbs64(const double *src, double *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = std::fabs(src[i]);
}

void nativeExp64(const double *src, double *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = std::exp(src[i]);
}

void nativeExp32(const float *src, float *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = std::exp(src[i]);
}

}  // namespace refs
