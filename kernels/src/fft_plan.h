/* The backend's FFTW plans, kept between calls.
 *
 * Planning costs more than executing for all but large transforms, and the
 * transform entry points are called with a fresh set-up structure
 * each time, so the plans live here instead: one cache for the whole
 * backend, keyed by what a plan computes, its size and precision, and the
 * alignment class of every array it runs on (FFTW's new-array execute
 * functions need arrays aligned like the planned ones). Like the CPU
 * dispatcher's choice, this is process-wide state of the backend.
 *
 * Plans are first made with FFTW_ESTIMATE (cheap, on the caller's arrays).
 * A plan whose transforms have added up to a noticeable time is replanned
 * once with FFTW_MEASURE on scratch arrays of the same alignment, under
 * FFTW's planner time limit and a budget for the whole process (see
 * fft_plan.cpp), so that popular large sizes get the faster plans and no
 * call waits long for them.
 *
 * FFTW's planner is not thread-safe; its execute functions are. So planning
 * and the cache's bookkeeping hold one mutex (the only lock in the library);
 * executing does not. A plan is lent out with a count of its users and is
 * destroyed only when evicted or replaced with no user left, so the cache
 * stays bounded without ever pulling a plan from under a caller.
 *
 * Split plans (kSplitForward) are also keyed by the distances between each
 * real part and its imaginary part, which FFTW requires to stay as planned;
 * callers whose part arrays lie anywhere do better with an interleaved plan
 * on a work array.
 *
 *   Lease l = AcquirePlan(PlanKind::kR2C, PlanPrecision::kDouble, n, {in, out});
 *   if (!l.plan) return ippStsMemAllocErr;
 *   fftw_execute_dft_r2c(AsPlan64(l), in, out);
 *   ReleasePlan(l);
 */
#ifndef ORB_KERNELS_FFT_PLAN_H
#define ORB_KERNELS_FFT_PLAN_H

#include <fftw3.h>

#include <cstddef>

namespace orb_kernels {

/* What a plan computes; all one-dimensional, unnormalised (FFTW's
 * conventions: forward exp(-2 pi i jk/n), backward exp(+2 pi i jk/n)). */
enum class PlanKind : int {
    kC2CForward,      // interleaved complex, arrays {in, out}
    kC2CBackward,     // interleaved complex, arrays {in, out}
    kR2C,             // n reals to n/2+1 complex, arrays {in, out}
    kC2R,             // n/2+1 complex to n reals (overwrites its input), {in, out}
    kSplitForward,    // split complex, arrays {inRe, inIm, outRe, outIm}; the
                      // backward transform is this one with re and im swapped
    kDCT2,            // REDFT10, arrays {in, out}
    kDCT3,            // REDFT01, arrays {in, out}
};

enum class PlanPrecision : int { kDouble, kSingle };

/* A plan on loan: plan is null when planning failed (no memory). */
struct Lease {
    void *plan;
    void *slot;
};

/* Lends a plan for arrays aligned like those in arrays (two or four of
 * them, see PlanKind; contents are never read or written). */
Lease AcquirePlan(PlanKind kind, PlanPrecision precision, int n, const void *const (&arrays)[4]);
inline Lease AcquirePlan(PlanKind kind, PlanPrecision precision, int n, const void *in, const void *out)
{
    const void *const arrays[4] = {in, out, nullptr, nullptr};
    return AcquirePlan(kind, precision, n, arrays);
}
/* Gives a plan back; a lease whose plan is null gives back nothing. */
void ReleasePlan(Lease lease);

inline fftw_plan AsPlan64(Lease l) { return static_cast<fftw_plan>(l.plan); }
inline fftwf_plan AsPlan32(Lease l) { return static_cast<fftwf_plan>(l.plan); }

/* Plans the cache holds at most while none is in use (tests lower it). */
std::size_t &PlanCacheCapacity();
/* Plans held now (tests). */
std::size_t PlanCacheSize();
/* The shortest time limit, in seconds, of one replanning by measurement
 * (0.1; the limit is at most 1 s whatever this says). Tests raise it so that
 * a busy machine or a sanitizer's slow allocator does not run out of it. */
double &PlanMeasureMinSeconds();

}  // namespace orb_kernels

#endif
