// Copy, move, set, zero and resampling on every compiled Highway target.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <string.h>

#include <algorithm>
#include <vector>

#include "ipps.h"
#include "kernels_sweep.h"

// Complex values compare by parts (found by the standard algorithms too).
static bool operator==(Ipp64fc a, Ipp64fc b) { return a.re == b.re && a.im == b.im; }

namespace {

template <typename T>
T Value(int i)
{
    if constexpr (sizeof(T) == sizeof(Ipp64fc)) return T{double(i), -0.5 * i};
    else return T(i * 3 + 1);
}

template <typename T>
std::vector<T> Ramp(size_t n)
{
    std::vector<T> v(n);
    for (size_t i = 0; i < n; ++i) v[i] = Value<T>(int(i) + 1);
    return v;
}

class KernelsCopy : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsCopy);

// A copy stops at its length; moves overlapping both ways give what the
// source held before.
template <typename T>
void CheckCopyMove(IppStatus (*copy)(const T *, T *, int), IppStatus (*move)(const T *, T *, int))
{
    const std::vector<T> src = Ramp<T>(300);
    std::vector<T> dst(300, Value<T>(-9));
    ASSERT_EQ(copy(src.data(), dst.data(), 299), ippStsNoErr);
    EXPECT_TRUE(std::equal(src.begin(), src.end() - 1, dst.begin()) && dst[299] == Value<T>(-9));
    for (int shift : {1, 5, -1, -5}) {
        std::vector<T> buf = src;
        const size_t from = shift < 0 ? -shift : 0, to = shift > 0 ? shift : 0;
        ASSERT_EQ(move(buf.data() + from, buf.data() + to, 290), ippStsNoErr);
        EXPECT_TRUE(std::equal(src.begin() + from, src.begin() + from + 290, buf.begin() + to)) << "shift " << shift;
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

// Set into the first output, zero over the guard fill of the second.
template <typename T>
void CheckSet(IppStatus (*set)(T, T *, int), IppStatus (*zero)(T *, int))
{
    const T val = Value<T>(5);
    sweep::Run<T>(sweep::MaxLen<T>(), ippStsNoErr,
                  [&](int len, T *a, T *b) {
                      const IppStatus st = set(val, a, len);
                      return st != ippStsNoErr ? st : zero(b, len);
                  },
                  [&](size_t, T a, T b) { return a == val && b == T{}; });
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
    const sweep::StreamAll streamed;
    for (int len = 1; len <= 129; ++len) {
        std::vector<double> raw(2 * len + 3, -9);
        ASSERT_EQ(ippsSet_64fc(Ipp64fc{1, 2}, reinterpret_cast<Ipp64fc *>(raw.data() + 1), len), ippStsNoErr);
        for (int i = 0; i < 2 * len; ++i) ASSERT_EQ(raw[1 + i], i % 2 ? 2 : 1) << len << " at " << i;
        ASSERT_TRUE(raw[0] == -9 && raw[2 * len + 1] == -9) << len;
    }
}

// Up by every factor and phase, cached and streamed, at two alignments;
// down-sampling in place undoes it.
template <typename T>
void CheckResample(IppStatus (*up)(const T *, int, T *, int *, int, int *),
                   IppStatus (*down)(const T *, int, T *, int *, int, int *))
{
    const std::vector<T> src = Ramp<T>(140);
    for (int streaming = 0; streaming < 2; ++streaming)
        for (int factor = 1; factor <= 4; ++factor)
            for (int phase = 0; phase < factor; ++phase)
                for (int len = 1; len <= 140; len += len < 20 ? 1 : 17)
                    for (int offset = 0; offset < 2; ++offset) {
                        SCOPED_TRACE(::testing::Message() << "factor " << factor << ", phase " << phase << ", len "
                                                          << len << ", offset " << offset << ", streamed " << streaming);
                        std::vector<T> out(factor * len + offset + 1, Value<T>(-9));
                        T *dst = out.data() + offset;
                        int dst_len = -1, p = phase;
                        {
                            const sweep::StreamAll scope(streaming);
                            ASSERT_EQ(up(src.data(), len, dst, &dst_len, factor, &p), ippStsNoErr);
                        }
                        ASSERT_TRUE(dst_len == factor * len && p == phase && dst[factor * len] == Value<T>(-9));
                        for (int i = 0; i < factor * len; ++i)
                            ASSERT_EQ(dst[i], i % factor == phase ? src[i / factor] : T{}) << i;
                        ASSERT_EQ(down(dst, factor * len, dst, &dst_len, factor, &p), ippStsNoErr);
                        ASSERT_TRUE(dst_len == len && p == phase && std::equal(src.begin(), src.begin() + len, dst));
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
    EXPECT_TRUE(n1 == 3 && phase == 0);
    ASSERT_EQ(ippsSampleDown_64f(src.data() + 10, 7, out + n1, &n2, 3, &phase), ippStsNoErr);
    EXPECT_TRUE(n2 == 3 && phase == 2);
    for (int j = 0; j < n1 + n2; ++j) EXPECT_EQ(out[j], src[1 + 3 * j]);
    // A block shorter than the phase produces nothing and moves the phase.
    phase = 3;
    ASSERT_EQ(ippsSampleDown_64f(src.data(), 2, out, &n1, 4, &phase), ippStsNoErr);
    EXPECT_TRUE(n1 == 0 && phase == 1);
}

TEST(KernelsCopyStatus, ErrorsInOrder)
{
    ORB_EXPECT_STATUSES(ippsCopy_16s, ippsCopy_64fc, ippsMove_32f, ippsMove_64s, ippsSet_8u, ippsSet_64fc, ippsSet_32s,
                        ippsZero_8u, ippsZero_32f, ippsZero_64fc);
    // Resampling: pointers, the length, the factor, then the phase.
    float f[4] = {};
    int n = 0, zero = 0, two = 2, minus = -1;
    EXPECT_EQ(ippsSampleUp_32f(nullptr, 4, f, &n, 0, &zero), ippStsNullPtrErr);
    EXPECT_EQ(ippsSampleUp_32f(f, 4, f, nullptr, 2, &zero), ippStsNullPtrErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 4, f, &n, 2, nullptr), ippStsNullPtrErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 0, f, &n, 0, &zero), ippStsSizeErr);
    EXPECT_EQ(ippsSampleUp_32f(f, 2, f, &n, 0, &zero), ippStsSampleFactorErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 4, f, &n, -1, &zero), ippStsSampleFactorErr);
    EXPECT_EQ(ippsSampleUp_32f(f, 2, f, &n, 2, &two), ippStsSamplePhaseErr);
    EXPECT_EQ(ippsSampleDown_32f(f, 4, f, &n, 2, &minus), ippStsSamplePhaseErr);
    // An output longer than an int can count is a size error.
    EXPECT_EQ(ippsSampleUp_32f(f, 1 << 20, f, &n, 1 << 12, &zero), ippStsSizeErr);
    EXPECT_EQ(n, 0);
}

}  // namespace
