// The arithmetic loops as scalar code, vectorisation off.
#include <cmath>

#include "arith_refs.h"

namespace refs {

void plainAdd64(const double *a, const double *b, double *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = a[i] + b[i];
}

void plainMulC32(const float *src, float val, float *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = src[i] * val;
}

void plainMagnitude64c(const double *src, double *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = std::sqrt(src[2 * i] * src[2 * i] + src[2 * i + 1] * src[2 * i + 1]);
}

void plainXor32(const uint32_t *a, const uint32_t *b, uint32_t *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = a[i] ^ b[i];
}

}  // namespace refs
