/* The set-up structures of the transforms (DFT, FFT, DCT, Hilbert).
 *
 * The caller sizes, allocates, initialises and frees a structure around
 * every transform, so the structure holds only what one call needs: what it
 * is for, the length and the two scale factors. The FFTW plans live in the
 * plan cache (fft_plan.h) and are borrowed for the length of one transform
 * call, so freeing the caller's memory leaves nothing behind.
 */
#ifndef ORB_KERNELS_TRANSFORM_SPEC_H
#define ORB_KERNELS_TRANSFORM_SPEC_H

#include <cstddef>
#include <cstdint>

#include "ipptypes.h"

namespace orb_kernels {

/* What a structure was initialised for; a transform refuses a structure of
 * another kind (ippStsContextMatchErr). */
enum class SpecKind : uint32_t {
    kDFT64fc = 0x4f524201,
    kDFT64f,
    kDFT32f,
    kFFT64fc,
    kFFT64f,
    kFFT32f,
    kDCTFwd32f,
    kDCTInv32f,
    kDCTFwd64f,
    kDCTInv64f,
    kHilbert,
};

struct TransformSpec {
    SpecKind kind;
    int n;
    double fwdScale, invScale;  // 1 when that direction is not normalised
};

/* The caller's memory may start anywhere; the record sits at the next
 * multiple of its alignment, which the reported size leaves room for. */
constexpr int kSpecBytes = int(sizeof(TransformSpec) + alignof(TransformSpec) - 1);

inline TransformSpec *SpecAt(const void *memory)
{
    const uintptr_t a = alignof(TransformSpec);
    return reinterpret_cast<TransformSpec *>((reinterpret_cast<uintptr_t>(memory) + a - 1) & ~(a - 1));
}

/* A structure of the given kind, or null (a null pointer, or one that was
 * never initialised for this kind). */
inline const TransformSpec *SpecOf(const void *memory, SpecKind kind)
{
    if (!memory) return nullptr;
    const TransformSpec *s = SpecAt(memory);
    return s->kind == kind ? s : nullptr;
}

}  // namespace orb_kernels

#endif
