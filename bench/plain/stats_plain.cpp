// The reduction loops as scalar code, vectorisation off, and std::sort.
#include <algorithm>
#include <cmath>

#include "stats_refs.h"

namespace refs {

double plainSum64(const double *src, int len)
{
    double s = 0;
    for (int i = 0; i < len; ++i)
        s += src[i];
    return s;
}

void plainMinMaxIndx32(const float *src, int len, float *min, int *minIndex, float *max, int *maxIndex)
{
    int lo = 0, hi = 0;
    for (int i = 1; i < len; ++i) {
        if (src[i] < src[lo])
            lo = i;
        if (src[i] > src[hi])
            hi = i;
    }
    *min = src[lo], *minIndex = lo, *max = src[hi], *maxIndex = hi;
}

void plainMeanStdDev64(const double *src, int len, double *mean, double *dev)
{
    double s = 0, q = 0;
    for (int i = 0; i < len; ++i)
        s += src[i];
    const double m = s / len;
    for (int i = 0; i < len; ++i)
        q += (src[i] - m) * (src[i] - m);
    *mean = m;
    *dev = std::sqrt(q / (len - 1));
}

double plainDotProd64(const double *a, const double *b, int len)
{
    double s = 0;
    for (int i = 0; i < len; ++i)
        s += a[i] * b[i];
    return s;
}

void plainSort32f(float *keys, int len) { std::sort(keys, keys + len); }
void plainSort32s(int32_t *keys, int len) { std::sort(keys, keys + len); }
void plainSort64f(double *keys, int len) { std::sort(keys, keys + len); }
void plainSort16s(int16_t *keys, int len) { std::sort(keys, keys + len); }
void plainSort8u(uint8_t *keys, int len) { std::sort(keys, keys + len); }

}  // namespace refs
