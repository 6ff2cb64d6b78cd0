// Shared checks for the backend's element-wise kernels: length sweeps with
// guard zones, value comparisons and the argument statuses.
#ifndef ORB_TESTS_KERNELS_SWEEP_H
#define ORB_TESTS_KERNELS_SWEEP_H

#include <gtest/gtest.h>

#include <math.h>
#include <string.h>

#include <algorithm>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "dispatch.h"
#include "ipptypes.h"

namespace sweep {

// Lengths 1 .. 2N + 1 for N lanes of the widest (64-byte) vectors; Run adds
// four from 4 (2N + 1), where the loops align their output first. Inputs
// need Span(max_len) elements.
template <typename T>
constexpr int MaxLen() { return int(2 * 64 / sizeof(T) + 1); }
constexpr size_t Span(int max_len) { return 4 * size_t(max_len) + 4; }

// Bitwise equality, except that any NaN equals any NaN.
template <typename T>
bool Same(T a, T b) { return (std::is_floating_point_v<T> && a != a && b != b) || memcmp(&a, &b, sizeof(T)) == 0; }
inline bool Same(Ipp64fc a, Ipp64fc b) { return Same(a.re, b.re) && Same(a.im, b.im); }

template <typename T>
std::string Str(T v)
{
    std::ostringstream os;
    os.precision(17);
    if constexpr (std::is_same_v<T, Ipp64fc>)
        os << "(" << v.re << ", " << v.im << ")";
    else
        os << +v;
    return os.str();
}
template <typename T>
::testing::AssertionResult Is(bool ok, T got, T want)
{
    if (ok) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "got " << Str(got) << ", want " << Str(want);
}
template <typename T>
::testing::AssertionResult SameAs(T got, T want) { return Is(Same(got, want), got, want); }

// Error of got in units in the last place of T at the exact value ref;
// NaN, infinities and zeros (with their signs) must match exactly.
template <typename T>
double Ulps(T got, long double ref)
{
    if (isnan(ref) || isinf(T(ref)) || isinf(got) || ref == 0) return Same(got, T(ref)) ? 0 : INFINITY;
    int e;
    frexpl(ref, &e);
    using L = std::numeric_limits<T>;
    return double(fabsl(got - ref) / fmaxl(ldexpl(1, e - L::digits), L::denorm_min()));
}

// Integers over all bit patterns; floating point mostly in [-100, 100],
// one in 16 a zero, infinity or NaN.
template <typename T>
std::vector<T> Random(size_t n, uint64_t seed)
{
    std::mt19937_64 rng(seed);
    std::vector<T> v(n);
    const double specials[] = {0, -0.0, INFINITY, -INFINITY, NAN};
    for (T &x : v) {
        const uint64_t r = rng();
        if constexpr (std::is_integral_v<T>)
            x = T(r);
        else
            x = T(r % 16 ? std::uniform_real_distribution<double>(-100, 100)(rng) : specials[(r >> 8) % 5]);
    }
    return v;
}
inline std::vector<Ipp64fc> RandomComplex(size_t n, uint64_t seed)
{
    std::vector<Ipp64fc> v(n);
    memcpy(v.data(), Random<double>(2 * n, seed).data(), n * sizeof(Ipp64fc));
    return v;
}

// Sends outputs down the non-temporal path for one scope: all from one
// widest vector on, the least the loops' alignment step is made for.
struct StreamAll {
    const size_t saved = orb_kernels::StreamThresholdBytes();
    explicit StreamAll(bool on = true) { if (on) orb_kernels::StreamThresholdBytes() = 0; }
    ~StreamAll() { orb_kernels::StreamThresholdBytes() = saved; }
};

// Runs call(len, out0, out1) -> IppStatus at every length, with the outputs
// 0, 1 and 3 elements past a 64-byte boundary, cached and under StreamAll;
// checks the status, check(i, out0[i], out1[i]) for every element and that
// the bytes around both outputs are untouched. Single-output calls ignore
// out1. Stops at the first failure.
template <typename O, class Call, class Check>
void Run(int max_len, IppStatus want, Call call, Check check)
{
    constexpr size_t kGuard = 64;
    constexpr unsigned char kFill = 0xA5;
    std::vector<int> lengths = {4 * max_len, 4 * max_len + 1, 4 * max_len + 2, 4 * max_len + 3};
    for (int len = 1; len <= max_len; ++len) lengths.push_back(len);
    for (int stream = 0; stream < 2; ++stream)
        for (size_t offset : {0, 1, 3})
            for (int len : lengths) {
                std::vector<unsigned char> raw[2];
                O *out[2];
                for (int k = 0; k < 2; ++k) {
                    raw[k].assign((offset + len) * sizeof(O) + kGuard + 64, kFill);
                    const size_t skew = (64 - reinterpret_cast<uintptr_t>(raw[k].data()) % 64) % 64;
                    out[k] = reinterpret_cast<O *>(raw[k].data() + skew + offset * sizeof(O));
                }
                const IppStatus st = [&] { const StreamAll scope(stream); return call(len, out[0], out[1]); }();
                const auto where = ::testing::Message() << "len " << len << ", offset " << offset
                                                        << (stream ? ", streamed" : "");
                ASSERT_EQ(st, want) << where;
                for (int i = 0; i < len; ++i)
                    ASSERT_TRUE(check(size_t(i), out[0][i], out[1][i])) << i << " of " << where;
                for (O *o : out) {
                    const unsigned char *p = reinterpret_cast<unsigned char *>(o), *end = p + len * sizeof(O);
                    ASSERT_EQ(std::count(p - offset * sizeof(O), p, kFill) + std::count(end, end + kGuard, kFill),
                              ptrdiff_t(offset * sizeof(O) + kGuard)) << "bytes around the output, " << where;
                }
            }
}

// An element-wise map fn(src, dst, len) against ref(src[i]): once over all
// of in, then (with lengths) by Run over in repeated to the span it needs,
// also in place when in_place. Warnings count as success here.
template <typename S, typename D = S, class Fn, class Ref>
void Map(const std::vector<S> &values, Fn fn, Ref ref, bool lengths = true, bool in_place = false)
{
    constexpr int n = MaxLen<std::conditional_t<(sizeof(S) < sizeof(D)), S, D>>();
    std::vector<S> in = values;
    while (in.size() < Span(n)) in.insert(in.end(), values.begin(), values.end());
    auto ok = [](IppStatus st) { return st > 0 ? ippStsNoErr : st; };
    auto check = [&](size_t i, D got, D) {
        ::testing::AssertionResult r = SameAs(got, D(ref(in[i])));
        return r ? r : r << " from " << Str(in[i]);
    };
    std::vector<D> out(in.size());
    ASSERT_EQ(ok(fn(in.data(), out.data(), int(in.size()))), ippStsNoErr);
    for (size_t i = 0; i < in.size(); ++i) ASSERT_TRUE(check(i, out[i], out[i])) << i << " of " << in.size();
    for (bool same : {false, true}) {
        if (!lengths || (same && !in_place)) break;
        SCOPED_TRACE(same ? "in place" : "out of place");
        Run<D>(n, ippStsNoErr, [&](int len, D *o, D *) {
            if constexpr (std::is_same_v<S, D>)
                if (same) return memcpy(o, in.data(), len * sizeof(S)), ok(fn(o, o, len));
            return ok(fn(in.data(), o, len));
        }, check);
    }
}

// Argument statuses of fn(pointers and values..., len): each pointer null
// in turn gives ippStsNullPtrErr, whatever the length; then lengths 0 and
// -1 give ippStsSizeErr; valid arguments (values 1) give no error.
template <class... A>
void ExpectStatuses(const char *name, IppStatus (*fn)(A...))
{
    constexpr size_t kArgs = sizeof...(A);
    auto call = [&](size_t null_at, int len) {
        alignas(64) unsigned char buf[kArgs][256] = {};
        return [&]<size_t... I>(std::index_sequence<I...>) {
            auto arg = [&]<class P, size_t K>() -> P {
                if constexpr (std::is_pointer_v<P>)
                    return K == null_at ? nullptr : reinterpret_cast<P>(buf[K]);
                else if constexpr (K == kArgs - 1)
                    return len;
                else if constexpr (std::is_same_v<P, Ipp64fc>)
                    return {1, 0};
                else
                    return P(1);
            };
            return fn(arg.template operator()<A, I>()...);
        }(std::index_sequence_for<A...>());
    };
    constexpr bool kPointer[] = {std::is_pointer_v<A>...};
    for (size_t k = 0; k < kArgs; ++k) {
        if (!kPointer[k]) continue;
        EXPECT_EQ(call(k, 4), ippStsNullPtrErr) << name << ", argument " << k;
        EXPECT_EQ(call(k, 0), ippStsNullPtrErr) << name << ", argument " << k;
    }
    EXPECT_EQ(call(kArgs, 0), ippStsSizeErr) << name;
    EXPECT_EQ(call(kArgs, -1), ippStsSizeErr) << name;
    EXPECT_GE(call(kArgs, 4), ippStsNoErr) << name;
}

// ExpectStatuses for each function named.
#define ORB_EXPECT_STATUSES(...) sweep::ExpectStatusesOf(#__VA_ARGS__, __VA_ARGS__)
template <class... Fn>
void ExpectStatusesOf(const char *names, Fn... fn)
{
    std::istringstream list(names);
    std::string name;
    auto next = [&] { return std::getline(list >> std::ws, name, ','), name.c_str(); };
    (ExpectStatuses(next(), fn), ...);
}

}  // namespace sweep

#endif
