// The conversion benchmarks' plain loops, built for this processor.
#include <cmath>

#include "convert_refs.h"

namespace refs {

void nativeCvt32f16s(const float *src, int16_t *dst, int len, float scale)
{
    for (int i = 0; i < len; ++i) {
        float v = std::nearbyint(src[i] * scale);
        v = v < -32768.0f ? -32768.0f : v > 32767.0f ? 32767.0f : v;
        dst[i] = int16_t(v);
    }
}

void nativeThresholdLT32f(const float *src, float *dst, int len, float level)
{
    for (int i = 0; i < len; ++i)
        dst[i] = src[i] < level ? level : src[i];
}

void nativeCopy64f(const double *src, double *dst, int len)
{
    for (int i = 0; i < len; ++i)
        dst[i] = src[i];
}

void nativeSampleUp32f(const float *src, float *dst, int len)
{
    for (int i = 0; i < len; ++i) {
        dst[2 * i] = src[i];
        dst[2 * i + 1] = 0;
    }
}

}  // namespace refs
