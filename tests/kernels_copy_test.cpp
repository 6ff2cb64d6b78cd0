// Copy, move, set, zero and resampling on every compiled Highway target.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <string.h>

#include <algorithm>
#include <vector>

#include "ipps.h"

// Complex values compare by parts (found by the standard algorithms too).
static bool operator==(Ipp64fc a, Ipp64fc b) { return a.re == b.re && a.im == b.im; }

namespace {

struct StreamAll {
    size_t saved = orb_kernels::StreamThresholdBytes();
    StreamAll() { orb_kernels::StreamThresholdBytes() = 64; }
    ~StreamAll() { orb_kernels::StreamThresholdBytes() = saved; }
};

template <typename T>
T Value(int i)
{
    if constexpr (sizeof(T) == sizeof(Ipp64fc)) return T{double(i), -0.5 * i};
    else return T(i * 3 + 1);
}

template <typename T>
std::vector<T> Ramp(size_t n, int from = 1)
{
    std::vector<T> v(n);
    for (size_t i = 0; i < n; ++i) v[i] = Value<T>(int(i) + from);
    return v;
}

class KernelsCopy : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsCopy);

template <typename T>
void CheckCopyMove(IppStatus (*copy)(const T *, T *, int), IppStatus (*move)(const T *, T *, int))
{
    const std::vector<T> src = Ramp<T>(300);
    for (int len : {1, 7, 300}) {
        std::vector<T> dst(len + 1, Value<T>(-9));
        ASSERT_EQ(copy(src.data(), dst.data(), len), ippStsNoErr);
        EXPECT_TRUE(std::equal(src.begin(), src.begin() + len, dst.begin()));
        EXPECT_EQ(dst[len], Value<T>(-9));
    }
    // Overlap both ways: the result is what the source held before.
    for (int shift : {1, 5, -1, -5}) {
        std::vector<T> buf = Ramp<T>(300);
        const std::vector<T> before = buf;
        T *from = buf.data() + (shift < 0 ? -shift : 0), *to = buf.data() + (shift > 0 ? shift : 0);
        ASSERT_EQ(move(from, to, 290), ippStsNoErr);
        const T *orig = before.data() + (shift < 0 ? -shift : 0);
        EXPECT_TRUE(std::equal(orig, orig + 290, to)) << "shift " << shift;
    }
}

TEST(KernelsCopyMove, CopyAndMoveInBothDirections)
{
    CheckCopyMove(ippsCopy_16s, ippsMove_16s);
    CheckCopyMove(ippsCopy_32s, ippsMove_32s);
    CheckCopyMove(ippsCopy_64s, ippsMove_64s);
    CheckCopyMove(ippsCopy_32f, ippsMove_32f);
    CheckCopyMove(ippsCopy_64f, ippsMove_64f);
    CheckCopyMove(ippsCopy_64fc, ippsMove_64fc);
}

// Every length up to 2 * 64 + 1 at several alignments, cached and
// streaming, with sentinels on both sides.
template <typename T>
void CheckSet(IppStatus (*set)(T, T *, int), IppStatus (*zero)(T *, int))
{
    const T val = Value<T>(5), guard = Value<T>(-9);
    for (int streaming = 0; streaming < 2; ++streaming) {
        StreamAll *lower = streaming ? new StreamAll : nullptr;
        for (int len = 1; len <= 129; ++len)
            for (int offset = 0; offset < 3; ++offset) {
                std::vector<T> buf(len + offset + 1, guard);
                T *dst = buf.data() + offset;
                ASSERT_EQ(set(val, dst, len), ippStsNoErr);
                for (int i = 0; i < len; ++i) ASSERT_EQ(dst[i], val) << len << " at " << i;
                ASSERT_EQ(dst[len], guard);
                if (offset) {
                    ASSERT_EQ(dst[-1], guard);
                }
                ASSERT_EQ(zero(dst, len), ippStsNoErr);
                for (int i = 0; i < len; ++i) ASSERT_EQ(dst[i], T{}) << len << " at " << i;
                ASSERT_EQ(dst[len], guard);
            }
        delete lower;
    }
}

TEST_P(KernelsCopy, SetAndZeroFillExactlyTheRange)
{
    CheckSet(ippsSet_8u, ippsZero_8u);
    CheckSet(ippsSet_16s, ippsZero_16s);
    CheckSet(ippsSet_32s, ippsZero_32s);
    CheckSet(ippsSet_64s, ippsZero_64s);
    CheckSet(ippsSet_32f, ippsZero_32f);
    CheckSet(ippsSet_64f, ippsZero_64f);
    CheckSet(ippsSet_64fc, ippsZero_64fc);

    // Complex values only 8-byte aligned: the pattern must not slip a lane.
    StreamAll lower;
    for (int len = 1; len <= 129; ++len) {
        std::vector<double> raw(2 * len + 3, -9);
        Ipp64fc *dst = reinterpret_cast<Ipp64fc *>(raw.data() + 1);
        ASSERT_EQ(ippsSet_64fc(Ipp64fc{1, 2}, dst, len), ippStsNoErr);
        for (int i = 0; i < 2 * len; ++i) ASSERT_EQ(raw[1 + i], i % 2 ? 2 : 1) << len << " at " << i;
        ASSERT_EQ(raw[0], -9);
        ASSERT_EQ(raw[2 * len + 1], -9);
    }
}

template <typename T>
using Sample = IppStatus (*)(const T *, int, T *, int *, int, int *);

template <typename T>
void CheckResample(Sample<T> up, Sample<T> down)
{
    const std::vector<T> src = Ramp<T>(140);
    for (int streaming = 0; streaming < 2; ++streaming) {
        StreamAll *lower = streaming ? new StreamAll : nullptr;
        for (int factor = 1; factor <= 4; ++factor)
            for (int phase = 0; phase < factor; ++phase)
                for (int len = 1; len <= 140; len += len < 20 ? 1 : 17)
                    for (int offset = 0; offset < 2; ++offset) {
                        std::vector<T> out(factor * len + offset + 1, Value<T>(-9));
                        T *dst = out.data() + offset;
                        int dst_len = -1, p = phase;
                        ASSERT_EQ(up(src.data(), len, dst, &dst_len, factor, &p), ippStsNoErr);
                        ASSERT_EQ(dst_len, factor * len);
                        ASSERT_EQ(p, phase);
                        for (int i = 0; i < factor * len; ++i)
                            ASSERT_EQ(dst[i], i % factor == phase ? src[i / factor] : T{})
                                << "up " << factor << " phase " << phase << " len " << len << " at " << i;
                        ASSERT_EQ(dst[factor * len], Value<T>(-9));

                        // Down-sampling undoes it, in place.
                        p = phase;
                        ASSERT_EQ(down(dst, factor * len, dst, &dst_len, factor, &p), ippStsNoErr);
                        ASSERT_EQ(dst_len, len);
                        ASSERT_EQ(p, phase);
                        ASSERT_TRUE(std::equal(src.begin(), src.begin() + len, dst));
                    }
        delete lower;
    }
}

TEST_P(KernelsCopy, SampleUpAndDownAtEveryPhase)
{
    CheckResample(ippsSampleUp_16s, ippsSampleDown_16s);
    CheckResample(ippsSampleUp_32f, ippsSampleDown_32f);
    CheckResample(ippsSampleUp_64f, ippsSampleDown_64f);
    CheckResample(ippsSampleUp_64fc, ippsSampleDown_64fc);
}

TEST(KernelsCopySample, SampleDownCarriesThePhaseAcrossBlocks)
{
    // Blocks of 10 and 7 by 3 from phase 1 pick what one pass over 17 picks.
    const std::vector<double> src = Ramp<double>(17);
    double out[17];
    int n1 = 0, n2 = 0, phase = 1;
    ASSERT_EQ(ippsSampleDown_64f(src.data(), 10, out, &n1, 3, &phase), ippStsNoErr);
    EXPECT_EQ(n1, 3);
    EXPECT_EQ(phase, 0);
    ASSERT_EQ(ippsSampleDown_64f(src.data() + 10, 7, out + n1, &n2, 3, &phase), ippStsNoErr);
    EXPECT_EQ(n2, 3);
    EXPECT_EQ(phase, 2);
    for (int j = 0; j < n1 + n2; ++j) EXPECT_EQ(out[j], src[1 + 3 * j]);
    // A block shorter than the phase produces nothing and moves the phase.
    phase = 3;
    ASSERT_EQ(ippsSampleDown_64f(src.data(), 2, out, &n1, 4, &phase), ippStsNoErr);
    EXPECT_EQ(n1, 0);
    EXPECT_EQ(phase, 1);
}

TEST(KernelsCopyStatus, ErrorsInOrder)
{
    float f[4] = {};
    int n = 0, phase = 0;
    EXPECT_EQ(ippsSampleUp_32f(nullptr, 4, f, &n, 0, &phase), ippStsNullPtrErr);
    EXPECT_EQ(ippsSampleUp_32f(f, 4, f, nullptr, 2, &phase), ippStsNullPtrErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 4, f, &n, 2, nullptr), ippStsNullPtrErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 0, f, &n, 0, &phase), ippStsSizeErr);
    EXPECT_EQ(ippsSampleUp_32f(f, 2, f, &n, 0, &phase), ippStsSampleFactorErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 4, f, &n, -1, &phase), ippStsSampleFactorErr);
    phase = 2;
    EXPECT_EQ(ippsSampleUp_32f(f, 2, f, &n, 2, &phase), ippStsSamplePhaseErr);
    phase = -1;
    EXPECT_EQ(ippsSampleDown_32f(f, 4, f, &n, 2, &phase), ippStsSamplePhaseErr);
    phase = 0;
    EXPECT_EQ(ippsSampleUp_32f(f, 1 << 20, f, &n, 1 << 12, &phase), ippStsSizeErr);
    EXPECT_EQ(n, 0);

    EXPECT_EQ(ippsCopy_64f(nullptr, nullptr, 0), ippStsNullPtrErr);
    EXPECT_EQ(ippsMove_32f(f, f, 0), ippStsSizeErr);
    EXPECT_EQ(ippsSet_64fc(Ipp64fc{}, nullptr, 1), ippStsNullPtrErr);
    EXPECT_EQ(ippsSet_8u(0, reinterpret_cast<Ipp8u *>(f), -2), ippStsSizeErr);
    EXPECT_EQ(ippsZero_32f(nullptr, -1), ippStsNullPtrErr);
    EXPECT_EQ(ippsZero_32f(f, 0), ippStsSizeErr);
}

}  // namespace
