// The plan cache: plans are shared for equal keys, told apart by alignment,
// bounded while idle, replanned when popular, never destroyed while lent, and
// safe for two callers.
#include <gtest/gtest.h>

#include <cmath>
#include <thread>
#include <vector>

#include "fft_plan.h"

namespace {

using orb_kernels::AcquirePlan;
using orb_kernels::AsPlan64;
using orb_kernels::PlanKind;
using orb_kernels::PlanPrecision;
using orb_kernels::ReleasePlan;

TEST(PlanCache, SharesPlansByKeyAndAlignment)
{
    double *a = fftw_alloc_real(66), *b = fftw_alloc_real(66);
    auto l1 = AcquirePlan(PlanKind::kDCT2, PlanPrecision::kDouble, 16, a, b);
    auto l2 = AcquirePlan(PlanKind::kDCT2, PlanPrecision::kDouble, 16, a, b);
    auto l3 = AcquirePlan(PlanKind::kDCT2, PlanPrecision::kDouble, 16, a + 1, b);  // other alignment
    auto l4 = AcquirePlan(PlanKind::kDCT2, PlanPrecision::kDouble, 16, a, a);      // in place
    ASSERT_TRUE(l1.plan && l3.plan && l4.plan);
    EXPECT_EQ(l1.plan, l2.plan);
    EXPECT_NE(l1.plan, l3.plan);
    EXPECT_NE(l1.plan, l4.plan);
    for (auto l : {l1, l2, l3, l4}) ReleasePlan(l);
    fftw_free(a);
    fftw_free(b);
}

TEST(PlanCache, EvictsOnlyIdlePlans)
{
    size_t saved = orb_kernels::PlanCacheCapacity();
    orb_kernels::PlanCacheCapacity() = 2;
    std::vector<double> in(64, 1.0), out(64);
    auto held = AcquirePlan(PlanKind::kDCT2, PlanPrecision::kDouble, 5, in.data(), out.data());
    for (int n = 6; n < 12; ++n)
        ReleasePlan(AcquirePlan(PlanKind::kDCT2, PlanPrecision::kDouble, n, in.data(), out.data()));
    EXPECT_LE(orb_kernels::PlanCacheSize(), 2u);
    fftw_execute_r2r(AsPlan64(held), in.data(), out.data());  // still alive
    EXPECT_DOUBLE_EQ(out[0], 10.0);                            // REDFT10 of ones: 2n at k = 0
    ReleasePlan(held);
    orb_kernels::PlanCacheCapacity() = saved;
}

TEST(PlanCache, PopularPlansAreReplannedWhileLentOnesStay)
{
    const int n = 256;
    // The first measurement in a process takes 0.1 s or more on a busy
    // machine, several times that under a sanitizer's allocator.
    const double savedMin = orb_kernels::PlanMeasureMinSeconds();
    orb_kernels::PlanMeasureMinSeconds() = 1.0;
    fftw_complex *in = fftw_alloc_complex(n), *out = fftw_alloc_complex(n), *again = fftw_alloc_complex(n);
    for (int i = 0; i < n; ++i) in[i][0] = std::cos(i * 0.1), in[i][1] = std::sin(i * 0.3);
    auto held = AcquirePlan(PlanKind::kC2CForward, PlanPrecision::kDouble, n, in, out);
    // Enough use to qualify: a few thousand transforms of this size.
    void *latest = held.plan;
    for (int i = 0; i < 100000 && latest == held.plan; ++i) {
        auto l = AcquirePlan(PlanKind::kC2CForward, PlanPrecision::kDouble, n, in, out);
        latest = l.plan;
        ReleasePlan(l);
    }
    auto now = AcquirePlan(PlanKind::kC2CForward, PlanPrecision::kDouble, n, in, out);
    EXPECT_NE(now.plan, held.plan);
    fftw_execute_dft(AsPlan64(held), in, out);  // the replaced plan still runs
    fftw_execute_dft(AsPlan64(now), in, again);
    for (int i = 0; i < n; ++i) EXPECT_NEAR(out[i][0], again[i][0], 1e-9) << i;
    ReleasePlan(held);
    ReleasePlan(now);
    fftw_free(in);
    fftw_free(out);
    fftw_free(again);
    orb_kernels::PlanMeasureMinSeconds() = savedMin;
}

TEST(PlanCache, TwoCallersAtOnce)
{
    auto work = [](std::vector<double> *sums) {
        std::vector<double> in(256), out(256);
        for (int round = 0; round < 200; ++round) {
            int n = 8 + round % 40;
            for (int i = 0; i < n; ++i) in[i] = std::sin(i + round);
            auto l = AcquirePlan(PlanKind::kDCT2, PlanPrecision::kDouble, n, in.data(), out.data());
            fftw_execute_r2r(AsPlan64(l), in.data(), out.data());
            ReleasePlan(l);
            sums->push_back(out[0]);
        }
    };
    std::vector<double> s1, s2;
    std::thread t1(work, &s1), t2(work, &s2);
    t1.join();
    t2.join();
    EXPECT_EQ(s1, s2);
}

}  // namespace
