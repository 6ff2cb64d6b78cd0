// Plain loops the convolution benchmarks compare the backend with, built
// twice: for the generic target without vectorisation (plain) and with
// -march=native (native).
#ifndef ORB_BENCH_CONV_REFS_H
#define ORB_BENCH_CONV_REFS_H

namespace refs {

// out[i] = sum over j < na of a[j] * b[i + j], i < nb - na + 1, each sum
// from 0 in order of j: the sliding product-sum's rule.
void plainSlide64(const double *a, int na, const double *b, int nb, double *out);
void nativeSlide64(const double *a, int na, const double *b, int nb, double *out);

// dst[n] = sum over i < len - n of x[i] * x[i + n], n < lags.
void plainAutoCorr64(const double *x, int len, double *dst, int lags);
void nativeAutoCorr64(const double *x, int len, double *dst, int lags);

}  // namespace refs

#endif
