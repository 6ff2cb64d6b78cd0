// The transforms' reference: FFTW executing a plan made once with
// FFTW_MEASURE on the benchmark's own arrays (what a caller who keeps its
// plans gets), before any of the backend's plans for that size exist.
#ifndef ORB_BENCH_TRANSFORM_REFS_H
#define ORB_BENCH_TRANSFORM_REFS_H

namespace refs {

// Each returns a plan to pass to the matching execute, or null.
void *nativeMeasuredDFT64c(int n, void *in, void *out);  // forward, interleaved doubles
void *nativeMeasuredDCT2(int n, double *in, double *out);  // REDFT10
void nativeExecuteDFT64c(void *plan, void *in, void *out);
void nativeExecuteR2R(void *plan, double *in, double *out);
void nativeDestroy(void *plan);

}  // namespace refs

#endif
