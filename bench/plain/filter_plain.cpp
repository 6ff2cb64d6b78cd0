// The filter loops as scalar code, vectorisation off.
#include <algorithm>
#include <vector>

#include "filter_refs.h"

namespace refs {

void plainFir64(const double *x, double *y, int len, const double *h, int taps)
{
    for (int n = 0; n < len; ++n) {
        double s = 0;
        for (int k = 0; k < taps && k <= n; ++k)
            s += h[k] * x[n - k];
        y[n] = s;
    }
}

void plainIir64(const double *x, double *y, int len, const double *b, const double *a, double *z, int n)
{
    for (int i = 0; i < len; ++i) {
        const double v = x[i], out = b[0] * v + z[0];
        for (int k = 1; k < n; ++k)
            z[k - 1] = b[k] * v - a[k] * out + z[k];
        z[n - 1] = b[n] * v - a[n] * out;
        y[i] = out;
    }
}

void plainMedian32(const float *x, float *y, int len, int mask)
{
    std::vector<float> w(static_cast<size_t>(mask));
    for (int n = 0; n < len; ++n) {
        for (int k = 0; k < mask; ++k) {
            const int i = n - mask + 1 + k;
            w[static_cast<size_t>(k)] = x[i < 0 ? 0 : i];
        }
        std::nth_element(w.begin(), w.begin() + mask / 2, w.end());
        y[n] = w[static_cast<size_t>(mask / 2)];
    }
}

}  // namespace refs
