// The reduction loops, built for this processor (-march=native). Without
// reassociation the compiler keeps floating-point sums in order, one lane.
#include <cmath>

#include "stats_refs.h"

namespace refs {

double nativeSum64(const double *src, int len)
{
    double s = 0;
    for (int i = 0; i < len; ++i)
        s += src[i];
    return s;
}

void nativeMinMaxIndx32(const float *src, int len, float *min, int *minIndex, float *max, int *maxIndex)
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

void nativeMeanStdDev64(const double *src, int len, double *mean, double *dev)
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

double nativeDotProd64(const double *a, const double *b, int len)
{
    double s = 0;
    for (int i = 0; i < len; ++i)
        s += a[i] * b[i];
    return s;
}

}  // namespace refs
