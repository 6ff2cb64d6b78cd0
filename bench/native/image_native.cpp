// The wavelet reference loops built for the build machine.
#include "image_ref_loops.h"

namespace refs {

void nativeWTFwd(const float *src, int stride, float *const dst[4], int w, int h, WTBank b, float *work)
{
    RefFwd(src, stride, dst, w, h, b, work);
}

void nativeWTInv(const float *const src[4], int stride, float *dst, int w, int h, WTBank b, float *work)
{
    RefInv(src, stride, dst, w, h, b, work);
}

}  // namespace refs
