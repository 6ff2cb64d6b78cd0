/* Highway conventions shared by the backend's vectorised kernel files.
 *
 * Every kernels/src/<domain>.cpp that uses Highway includes this header
 * first, before any hwy header, so that all of them compile the same set of
 * targets. The file is then re-included once per target by foreach_target.h:
 *
 *   #include "dispatch.h"
 *   #undef HWY_TARGET_INCLUDE
 *   #define HWY_TARGET_INCLUDE "<domain>.cpp"   // found via kernels/src
 *   #include <hwy/foreach_target.h>
 *   #include <hwy/highway.h>
 *   #include "entry.h"                          // ORB_ENTRY and its shapes
 *   #include "loops-inl.h"                      // Zip, Map, Pairwise, ...
 *
 *   HWY_BEFORE_NAMESPACE();
 *   namespace orb_kernels::HWY_NAMESPACE {
 *   namespace {  // file-local: same-named helpers of other files never meet
 *   // Per-target workers: functions on (pointers, size_t count) that assume
 *   // checked arguments and return an IppStatus (warnings included), named
 *   // by their entry point's suffix (Add_64fc for ippsAdd_64fc).
 *   }
 *   }
 *   HWY_AFTER_NAMESPACE();
 *
 *   #if HWY_ONCE
 *   ORB_MAP(Abs_32f, Ipp32f, Ipp32f)            // export, check, dispatch
 *   #endif
 *
 * Every element loop is Zip (loops-inl.h), with adaptors for the ways an
 * array is read or written; hand-written loops are for what has no vector
 * form (three-byte items, exactly scaled 64-bit integers, strided reads,
 * the in-place reversal).
 * Rules Zip follows, and hand-written loops should too:
 * - Highway 1.0.3 has no LoadN/StoreN and masked loads may fault on SSE4, so
 *   a partial last vector goes through an aligned stack buffer padded with a
 *   harmless value; every element is then computed by the same vector code,
 *   and nothing outside [dst, dst + count) is ever written.
 * - Source and destination may be the same array (the in-place use); no
 *   loop reads an element after it has written it.
 * - Outputs of at least StreamThresholdBytes() that do not overwrite a
 *   source are written with non-temporal stores: at that size the data
 *   cannot stay in cache anyway, and streaming saves the read-for-ownership
 *   of every destination line (in place, the lines are already loaded, and
 *   streaming only slows the stores down).
 *
 * Targets: SSSE3 is left out; SSE4 covers the same machines for all but very
 * old processors, which fall back to the scalar baseline. ippInit selects
 * the target at run time (hwy::GetChosenTarget().Update).
 */
#ifndef ORB_KERNELS_DISPATCH_H
#define ORB_KERNELS_DISPATCH_H

#ifndef HWY_DISABLED_TARGETS
#define HWY_DISABLED_TARGETS HWY_SSSE3
#endif

#include <stddef.h>

namespace orb_kernels {

/* Output size in bytes from which Zip writes a separate destination with
 * non-temporal stores. Measured on the development machine: above 16 MiB,
 * plain stores lose up to half the throughput of streaming ones; below it
 * both run alike, and plain stores leave the result in cache for whatever
 * reads it next. Tests lower it to reach the streaming path. */
inline size_t &StreamThresholdBytes()
{
    static size_t bytes = size_t(16) << 20;
    return bytes;
}

}  // namespace orb_kernels

#endif
