// Sorting, reversal and table search kernels: sorts against std::sort for
// every key type and direction (NaN at the ends, bytes as unsigned), reversal
// in and out of place, nearest entries at the table's ends, between entries
// and on ties.
#include "kernels_sweep.h"  // first: the kernels' target set

namespace {

using sweep::Random;
using sweep::Same;

class KernelsSort : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsSort);

template <typename T>
void CheckSort(IppStatus (*up)(T *, int), IppStatus (*down)(T *, int))
{
    for (int n : {1, 2, 3, 31, 64, 257, 5000, 100003}) {
        std::vector<T> v = Random<T>(size_t(n), uint64_t(n) * 7 + sizeof(T));
        if (n > 64) v[5] = v[9] = v[n - 1];  // repeated keys
        std::vector<T> want = v;
        std::stable_partition(want.begin(), want.end(), [](T x) { return x == x; });  // NaN last
        const auto numbers = std::find_if(want.begin(), want.end(), [](T x) { return x != x; });
        std::sort(want.begin(), numbers);
        std::vector<T> got = v;
        ASSERT_EQ(up(got.data(), n), ippStsNoErr);
        for (int i = 0; i < n; ++i)  // -0 and +0 in either order
            ASSERT_TRUE(Same(got[i], want[i]) || got[i] == want[i]) << n << " at " << i << ": " << sweep::Str(got[i]) << " for " << sweep::Str(want[i]) << " " << sizeof(T);
        got = v;
        ASSERT_EQ(down(got.data(), n), ippStsNoErr);
        for (int i = 0; i < n; ++i)
            ASSERT_TRUE(Same(got[i], want[n - 1 - i]) || got[i] == want[n - 1 - i]) << n << " down at " << i;
    }
    T x{};
    EXPECT_EQ(up(&x, 0), ippStsSizeErr);
    EXPECT_EQ(down(nullptr, 4), ippStsNullPtrErr);
}

TEST_P(KernelsSort, EveryKeyTypeBothWays)
{
    CheckSort<Ipp8u>(ippsSortAscend_8u_I, ippsSortDescend_8u_I);
    CheckSort<Ipp16s>(ippsSortAscend_16s_I, ippsSortDescend_16s_I);
    CheckSort<Ipp32s>(ippsSortAscend_32s_I, ippsSortDescend_32s_I);
    CheckSort<Ipp32f>(ippsSortAscend_32f_I, ippsSortDescend_32f_I);
    CheckSort<Ipp64f>(ippsSortAscend_64f_I, ippsSortDescend_64f_I);
}

template <typename T>
void CheckFlip(IppStatus (*flip)(const T *, T *, int))
{
    for (int n : {1, 2, 5, 64, 1001}) {
        std::vector<T> v(n);
        for (int i = 0; i < n; ++i) memset(&v[i], i * 37 + 1, sizeof(T));
        std::vector<T> want(v.rbegin(), v.rend()), out(n);
        ASSERT_EQ(flip(v.data(), out.data(), n), ippStsNoErr);
        EXPECT_EQ(memcmp(out.data(), want.data(), n * sizeof(T)), 0) << n;
        ASSERT_EQ(flip(v.data(), v.data(), n), ippStsNoErr);
        EXPECT_EQ(memcmp(v.data(), want.data(), n * sizeof(T)), 0) << n << " in place";
    }
    EXPECT_EQ(flip(nullptr, nullptr, 0), ippStsNullPtrErr);
}

TEST(KernelsSortPlain, FlipInAndOutOfPlace)
{
    CheckFlip<Ipp8u>(ippsFlip_8u);
    CheckFlip<Ipp16u>(ippsFlip_16u);
    CheckFlip<Ipp32f>(ippsFlip_32f);
    CheckFlip<Ipp64f>(ippsFlip_64f);
    CheckFlip<Ipp64fc>(ippsFlip_64fc);
}

TEST(KernelsSortPlain, NearestEntries)
{
    const std::vector<Ipp16u> t = {10, 20, 20, 30, 65535};
    const struct { Ipp16u v; Ipp16u value; int index; } cases[] = {
        {0, 10, 0}, {10, 10, 0}, {14, 10, 0}, {15, 10, 0},  // a tie goes to the lower entry
        {16, 20, 1}, {20, 20, 1}, {25, 20, 1}, {26, 30, 3},  // equal entries: the first
        {32782, 30, 3}, {32783, 65535, 4}, {65535, 65535, 4},
    };
    std::vector<Ipp16u> vals, outv(std::size(cases));
    std::vector<int> outi(std::size(cases));
    for (const auto &c : cases) {
        Ipp16u v = 0;
        int k = -1;
        ASSERT_EQ(ippsFindNearestOne_16u(c.v, &v, &k, t.data(), int(t.size())), ippStsNoErr);
        EXPECT_TRUE(v == c.value && k == c.index) << c.v << ": " << v << " at " << k;
        vals.push_back(c.v);
    }
    ASSERT_EQ(ippsFindNearest_16u(vals.data(), outv.data(), outi.data(), int(vals.size()), t.data(), int(t.size())),
              ippStsNoErr);
    for (size_t i = 0; i < vals.size(); ++i)
        EXPECT_TRUE(outv[i] == cases[i].value && outi[i] == cases[i].index) << vals[i];
    // A one-entry table, and the table longer or shorter than the values.
    Ipp16u v = 0;
    int k = -1;
    ASSERT_EQ(ippsFindNearestOne_16u(7, &v, &k, t.data() + 4, 1), ippStsNoErr);
    EXPECT_TRUE(v == 65535 && k == 0);
    ASSERT_EQ(ippsFindNearest_16u(vals.data(), outv.data(), outi.data(), int(vals.size()), t.data(), 1), ippStsNoErr);
    EXPECT_TRUE(std::all_of(outi.begin(), outi.end(), [](int i) { return i == 0; }));
    EXPECT_EQ(ippsFindNearestOne_16u(7, &v, &k, t.data(), 0), ippStsSizeErr);
    EXPECT_EQ(ippsFindNearest_16u(vals.data(), outv.data(), outi.data(), 1, t.data(), 0), ippStsSizeErr);
    EXPECT_EQ(ippsFindNearest_16u(vals.data(), outv.data(), nullptr, 1, t.data(), 1), ippStsNullPtrErr);
}

}  // namespace
