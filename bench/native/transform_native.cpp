// FFTW with plans made once by measurement; see transform_refs.h. The
// accumulated wisdom is forgotten first, so each reference plan is measured
// afresh rather than taken from what the backend's planning left behind.
#include <fftw3.h>

#include "transform_refs.h"

namespace refs {

void *nativeMeasuredDFT64c(int n, void *in, void *out)
{
    fftw_forget_wisdom();
    return fftw_plan_dft_1d(n, static_cast<fftw_complex *>(in), static_cast<fftw_complex *>(out), FFTW_FORWARD,
                            FFTW_MEASURE);
}

void *nativeMeasuredDCT2(int n, double *in, double *out)
{
    fftw_forget_wisdom();
    return fftw_plan_r2r_1d(n, in, out, FFTW_REDFT10, FFTW_MEASURE);
}

void nativeExecuteDFT64c(void *plan, void *in, void *out)
{
    fftw_execute_dft(static_cast<fftw_plan>(plan), static_cast<fftw_complex *>(in), static_cast<fftw_complex *>(out));
}

void nativeExecuteR2R(void *plan, double *in, double *out) { fftw_execute_r2r(static_cast<fftw_plan>(plan), in, out); }

void nativeDestroy(void *plan) { fftw_destroy_plan(static_cast<fftw_plan>(plan)); }

}  // namespace refs
