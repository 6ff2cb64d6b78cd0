// Plain loops the arithmetic benchmarks compare the backend with, built
// twice: for the generic target without vectorisation (plain) and with
// -march=native (native).
#ifndef ORB_BENCH_ARITH_REFS_H
#define ORB_BENCH_ARITH_REFS_H

#include <cstdint>

namespace refs {

void plainAdd64(const double *a, const double *b, double *dst, int len);
void plainMulC32(const float *src, float val, float *dst, int len);
void plainMagnitude64c(const double *src, double *dst, int len);  // interleaved (re, im)
void plainXor32(const uint32_t *a, const uint32_t *b, uint32_t *dst, int len);

void nativeAdd64(const double *a, const double *b, double *dst, int len);
void nativeMulC32(const float *src, float val, float *dst, int len);
void nativeMagnitude64c(const double *src, double *dst, int len);
void nativeXor32(const uint32_t *a, const uint32_t *b, uint32_t *dst, int len);

}  // namespace refs

#endif
