// The sliding sums, built for this processor (-march=native).
#include "conv_refs.h"

namespace refs {

void nativeSlide64(const double *a, int na, const double *b, int nb, double *out)
{
    for (int i = 0; i + na <= nb; ++i) {
        double s = 0;
        for (int j = 0; j < na; ++j)
            s += a[j] * b[i + j];
        out[i] = s;
    }
}

void nativeAutoCorr64(const double *x, int len, double *dst, int lags)
{
    for (int n = 0; n < lags; ++n) {
        double s = 0;
        for (int i = 0; i + n < len; ++i)
            s += x[i] * x[i + n];
        dst[n] = s;
    }
}

}  // namespace refs
