// Scalar loops, vectorisation off.
#include <cmath>

#include "refs.h"

namespace refs {

void plainAbs64(const double *src, double *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = std::fabs(src[i]);
}

void plainExp64(const double *src, double *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = std::exp(src[i]);
}

void plainExp32(const float *src, float *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = std::exp(src[i]);
}

}  // namespace refs
