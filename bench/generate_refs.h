// Plain loops the generator and window benchmarks compare the backend with,
// built twice: for the generic target without vectorisation (plain) and
// with -march=native (native). The noise loops draw from a std::mt19937
// kept in their own file, seeded once, through the standard distributions.
#ifndef ORB_BENCH_GENERATE_REFS_H
#define ORB_BENCH_GENERATE_REFS_H

namespace refs {

void plainUniform32(float *dst, int len, float lo, float hi);
void plainGauss64(double *dst, int len, double mean, double dev);
void plainHann64(const double *src, double *dst, int len);
void plainKaiser32(const float *src, float *dst, int len, float alpha);

void nativeUniform32(float *dst, int len, float lo, float hi);
void nativeGauss64(double *dst, int len, double mean, double dev);
void nativeHann64(const double *src, double *dst, int len);
void nativeKaiser32(const float *src, float *dst, int len, float alpha);

}  // namespace refs

#endif
