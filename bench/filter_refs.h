// Plain loops the filter benchmarks compare the backend with, built twice:
// for the generic target without vectorisation (plain) and with
// -march=native (native).
#ifndef ORB_BENCH_FILTER_REFS_H
#define ORB_BENCH_FILTER_REFS_H

namespace refs {

// y[n] = sum_k h[k] x[n - k], zeros before x[0].
void plainFir64(const double *x, double *y, int len, const double *h, int taps);
// The transposed direct form of order n: b and a of n + 1 values, a[0] = 1;
// z holds n values of state.
void plainIir64(const double *x, double *y, int len, const double *b, const double *a, double *z, int n);
// The median of the mask samples ending at each (x[0] repeated before it),
// by partial sorting of a copy of each window.
void plainMedian32(const float *x, float *y, int len, int mask);

void nativeFir64(const double *x, double *y, int len, const double *h, int taps);
void nativeIir64(const double *x, double *y, int len, const double *b, const double *a, double *z, int n);
void nativeMedian32(const float *x, float *y, int len, int mask);

}  // namespace refs

#endif
