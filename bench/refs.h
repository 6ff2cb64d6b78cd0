// Reference loops the benchmarks compare the backend with: the same plain
// loop built twice, once for the generic target without vectorisation and
// once with -march=native.
#ifndef ORB_BENCH_REFS_H
#define ORB_BENCH_REFS_H

namespace refs {

void plainAbs64(const double *src, double *dst, int len);
void plainExp64(const double *src, double *dst, int len);
void plainExp32(const float *src, float *dst, int len);

void nativeAbs64(const double *src, double *dst, int len);
void nativeExp64(const double *src, double *dst, int len);
void nativeExp32(const float *src, float *dst, int len);

}  // namespace refs

#endif
