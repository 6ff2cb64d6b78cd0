// Plain loops for the conversion, threshold, copy and resampling benchmarks,
// built with -march=native.
#ifndef ORB_BENCH_CONVERT_REFS_H
#define ORB_BENCH_CONVERT_REFS_H

#include <stdint.h>

namespace refs {

// Round to nearest even after scaling, saturated to 16 bits.
void nativeCvt32f16s(const float *src, int16_t *dst, int len, float scale);
void nativeThresholdLT32f(const float *src, float *dst, int len, float level);
void nativeCopy64f(const double *src, double *dst, int len);
// Factor 2, phase 0.
void nativeSampleUp32f(const float *src, float *dst, int len);

}  // namespace refs

#endif
