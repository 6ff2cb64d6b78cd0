// A program built against an installed orb: widens single-precision complex
// numbers through one of the library's plain-signature exports.
#include <orb/exports.h>

#include <cstdio>

int main()
{
    Ipp32fc in[2] = {{1.5f, -2.0f}, {0.25f, 4.0f}};
    Ipp64fc out[2];
    Complex4ToComplex8(out, in, 2);
    std::printf("%g %g %g %g\n", out[0].re, out[0].im, out[1].re, out[1].im);
    return out[1].im == 4.0 ? 0 : 1;
}
