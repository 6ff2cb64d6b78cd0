// Reference loops for the image benchmarks: a straightforward separable
// one-level wavelet transform (rows, then columns, one output at a time),
// built once without vectorisation and once for the build machine.
#ifndef ORB_BENCH_IMAGE_REFS_H
#define ORB_BENCH_IMAGE_REFS_H

namespace refs {

// Same arguments and conventions as the backend's transform, one channel:
// the source is bordered, dst[4] are approximation, X, Y, XY; taps with
// anchors as there. work holds 2 * (2 * width + lenLow + lenHigh) * height floats.
struct WTBank {
    const float *low, *high;
    int lenLow, anchorLow, lenHigh, anchorHigh;
};

void plainWTFwd(const float *src, int srcStride, float *const dst[4], int width, int height, WTBank b, float *work);
void nativeWTFwd(const float *src, int srcStride, float *const dst[4], int width, int height, WTBank b, float *work);
// Inverse: four bordered subbands of width x height (same stride), dst of
// 2 width x 2 height.
void plainWTInv(const float *const src[4], int srcStride, float *dst, int width, int height, WTBank b, float *work);
void nativeWTInv(const float *const src[4], int srcStride, float *dst, int width, int height, WTBank b, float *work);

}  // namespace refs

#endif
