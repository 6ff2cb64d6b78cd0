// Plain loops and std::sort the reduction and sorting benchmarks compare the
// backend with, built twice: for the generic target without vectorisation
// (plain) and with -march=native (native).
#ifndef ORB_BENCH_STATS_REFS_H
#define ORB_BENCH_STATS_REFS_H

#include <cstdint>

namespace refs {

double plainSum64(const double *src, int len);
void plainMinMaxIndx32(const float *src, int len, float *min, int *minIndex, float *max, int *maxIndex);
void plainMeanStdDev64(const double *src, int len, double *mean, double *dev);
double plainDotProd64(const double *a, const double *b, int len);
void plainSort32f(float *keys, int len);
void plainSort32s(int32_t *keys, int len);
void plainSort64f(double *keys, int len);
void plainSort16s(int16_t *keys, int len);
void plainSort8u(uint8_t *keys, int len);

double nativeSum64(const double *src, int len);
void nativeMinMaxIndx32(const float *src, int len, float *min, int *minIndex, float *max, int *maxIndex);
void nativeMeanStdDev64(const double *src, int len, double *mean, double *dev);
double nativeDotProd64(const double *a, const double *b, int len);

}  // namespace refs

#endif
