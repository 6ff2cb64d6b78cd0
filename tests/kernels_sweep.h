// Shared checks for the backend's element-wise kernels: tables of entry
// points (ORB_ROWS) that run the whole battery on each, and the comparisons
// they use. Included first: dispatch.h sets the kernels' target set.
#ifndef ORB_TESTS_KERNELS_SWEEP_H
#define ORB_TESTS_KERNELS_SWEEP_H

#include "dispatch.h"

#include <hwy/tests/hwy_gtest.h>
#include <math.h>
#include <string.h>

#include <algorithm>
#include <array>
#include <complex>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <tuple>
#include <vector>

#include "ipps.h"

namespace sweep {

template <typename T>
using Lim = std::numeric_limits<T>;

// Lengths 1 .. 2N + 1 for N lanes of the widest (64-byte) vectors (complex
// values are split into doubles); four more from 4 (2N + 1), where the loops
// align their output first. Inputs need Span(max_len) elements.
template <typename T>
constexpr int MaxLen() { return int(2 * 64 / (std::is_same_v<T, Ipp64fc> ? 8 : sizeof(T)) + 1); }
constexpr size_t Span(int max_len) { return 4 * size_t(max_len) + 4; }

// Bitwise equality, except that any NaN equals any NaN.
template <typename T>
bool Same(T a, T b) { return (std::is_floating_point_v<T> && a != a && b != b) || memcmp(&a, &b, sizeof(T)) == 0; }
inline bool Same(Ipp64fc a, Ipp64fc b) { return Same(a.re, b.re) && Same(a.im, b.im); }

template <typename T>
std::string Str(T v) { return ::testing::PrintToString(+v); }
inline std::string Str(Ipp64fc v) { return ::testing::PrintToString(std::pair(v.re, v.im)); }

// Error of got in units in the last place of T at the exact value ref;
// NaN, infinities and zeros (with their signs) must match exactly.
template <typename T>
double Ulps(T got, long double ref)
{
    if (isnan(ref) || isinf(T(ref)) || isinf(got) || ref == 0) return Same(got, T(ref)) ? 0 : INFINITY;
    int e;
    frexpl(ref, &e);
    return double(fabsl(got - ref) / fmaxl(ldexpl(1, e - Lim<T>::digits), Lim<T>::denorm_min()));
}
inline double Ulps(Ipp64fc g, std::complex<long double> r) { return fmax(Ulps(g.re, r.real()), Ulps(g.im, r.imag())); }

// Integers over all bit patterns; floating point mostly in [-100, 100],
// one in 16 a zero, infinity or NaN; complex values from pairs of those.
template <typename T>
std::vector<T> Random(size_t n, uint64_t seed)
{
    std::mt19937_64 rng(seed);
    std::vector<T> v(n);
    const double specials[] = {0, -0.0, INFINITY, -INFINITY, NAN};
    if constexpr (std::is_same_v<T, Ipp64fc>) memcpy(v.data(), Random<double>(2 * n, seed).data(), n * sizeof(T));
    for (T &x : v) {
        const uint64_t r = rng();
        if constexpr (std::is_integral_v<T>) x = T(r);
        else if constexpr (std::is_floating_point_v<T>)
            x = T(r % 16 ? std::uniform_real_distribution<double>(-100, 100)(rng) : specials[(r >> 8) % 5]);
    }
    return v;
}

// Sends outputs down the non-temporal path for one scope: all from one
// widest vector on, the least the loops' alignment step is made for.
struct StreamAll {
    const size_t saved = orb_kernels::StreamThresholdBytes();
    explicit StreamAll(bool on = true) { if (on) orb_kernels::StreamThresholdBytes() = 0; }
    ~StreamAll() { orb_kernels::StreamThresholdBytes() = saved; }
};

// One value for each of a row's types: the one of the parameter's type.
template <class... T>
struct ByType {
    std::tuple<T...> v;
    explicit ByType(T... x) : v(x...) {}
    template <class U>
    operator U() const { return std::get<U>(v); }
};

// ORB_ROWS(fn...)[.With(values...)][.From(inputs)][.Accumulate()].Check(ref[, opt]) runs, for each fn (its
// const pointers are inputs, other pointers outputs, the integer after the last pointer the length):
// - one call over all inputs: ref gets the elements of the inputs and the values of With in fn's parameter
//   order and returns the wanted output (a pair for two), or gets the outputs too and says if they are right;
// - each pointer null in turn: ippStsNullPtrErr; lengths 0 and -1 (if signed): ippStsSizeErr;
// - every length, with the outputs 0, 1, 2 (complex: 1/2) and 3 elements past a 64-byte boundary, cached and
//   streamed, out of place and (opt.in_place) over the last input of the output's type if any: each element
//   bit for bit as in the call over all inputs, the status opt.status, the bytes around the outputs untouched.
// The k-th input of type T is gen(T(), k) (Random by default), repeated to the longest or Span. Accumulate:
// the output starts as one more input, which ref gets in the output's place. .Refused(status): fn with the
// values of With gives status after the checks of pointers and lengths, and writes nothing.
constexpr IppStatus kAnyWarning = 1 << 30;  // Opt::status: any status from ippStsNoErr up
struct Opt {
    IppStatus status = ippStsNoErr;
    double ulp = 0;                      // 0: bit for bit (any NaN as NaN); else within ulp of ref
    bool in_place = true, once = false;  // once: the call over all inputs only
};

template <class A>
using Elem = std::remove_cv_t<std::remove_pointer_t<A>>;
template <class R, class... X>
constexpr bool Invocable(std::tuple<X...> *) { return std::is_invocable_v<const R &, X...>; }

template <size_t N, class F>
void ForEach(F f)
{
    [&]<size_t... K>(std::index_sequence<K...>) { (f(std::integral_constant<size_t, K>()), ...); }
    (std::make_index_sequence<N>());
}

template <typename O, typename W>
bool Close(O got, W want, double ulp)
{
    if constexpr (!std::is_same_v<O, Ipp64fc>) return ulp ? Ulps(got, (long double)want) <= ulp : Same(got, O(want));
    else if constexpr (std::is_same_v<W, Ipp64fc>) return Same(got, want);
    else return Ulps(got, std::complex<long double>(want)) <= ulp;
}

template <bool kAcc, class V, class F>
struct Entry;
template <bool kAcc, class V, class... A>
struct Entry<kAcc, V, IppStatus (*)(A...)> {
    template <size_t K>
    using P = std::tuple_element_t<K, std::tuple<A...>>;
    using Ptrs = std::array<void *, sizeof...(A)>;
    static constexpr size_t kN = sizeof...(A);
    static constexpr bool kPtr[kN] = {std::is_pointer_v<A>...};
    static constexpr bool kOut[kN] = {(std::is_pointer_v<A> && !std::is_const_v<std::remove_pointer_t<A>>)...};
    static constexpr size_t Last(bool (*f)(size_t), size_t k = kN) { return k == 0 ? kN : f(--k) ? k : Last(f, k); }
    static constexpr size_t kO = [] { size_t k = 0; while (!kOut[k]) ++k; return k; }();  // the first output
    static constexpr bool kTwo = Last([](size_t k) { return kOut[k]; }) != kO;
    static constexpr size_t kLen = Last([](size_t k) { return kPtr[k]; }) + 1;
    using O = Elem<P<kO>>;
    static constexpr bool In(size_t k) { return kPtr[k] && (!kOut[k] || (kAcc && k == kO)); }
    static constexpr bool kOfO[kN] = {std::is_same_v<Elem<A>, O>...};
    static constexpr size_t kSame = kAcc ? kN : Last([](size_t k) { return In(k) && kOfO[k]; });
    static constexpr size_t kOdd = alignof(O) < sizeof(O) ? alignof(O) : 2 * sizeof(O);  // complex: half a value
    static constexpr int kMax = std::min({(std::is_pointer_v<A> ? MaxLen<Elem<A>>() : 1 << 20)...});
    static constexpr size_t Val(size_t k) { return k ? Val(k - 1) + (!kPtr[k - 1] && k - 1 != kLen) : 0; }

    IppStatus (*fn)(A...);
    V vals;
    std::tuple<std::vector<Elem<A>>...> data;

    template <size_t K>
    P<K> Arg(const Ptrs &p, int len) const
    {
        if constexpr (kPtr[K]) return static_cast<P<K>>(p[K]);
        else if constexpr (K == kLen) return P<K>(len);
        else return P<K>(std::get<Val(K)>(vals));
    }
    IppStatus Call(const Ptrs &p, int len) const
    {
        return [&]<size_t... K>(std::index_sequence<K...>) { return fn(Arg<K>(p, len)...); }
        (std::make_index_sequence<kN>());
    }
    Ptrs Pointers(O *o0, O *o1)
    {
        Ptrs p{};
        ForEach<kN>([&](auto k) { p[k] = kOut[k] ? (k == kO ? o0 : o1) : (void *)std::get<k>(data).data(); });
        return p;
    }
    void CheckArguments(const Ptrs &p) const
    {
        for (size_t k = 0; k < kN; ++k) {
            Ptrs q = p;
            q[k] = nullptr;
            EXPECT_TRUE(!kPtr[k] || Call(q, 4) == ippStsNullPtrErr) << "argument " << k << " null";
        }
        EXPECT_EQ(Call(p, 0), ippStsSizeErr);
        EXPECT_EQ(Call(p, std::is_signed_v<P<kLen>> ? -1 : 0), ippStsSizeErr);
    }

    // ref on element i: what it gets, then its verdict on the outputs g0, g1.
    template <class Ref>
    ::testing::AssertionResult Verdict(const Ref &ref, double ulp, size_t i, O g0, O g1) const
    {
        const auto x = [&]<size_t... K>(std::index_sequence<K...>) {
            return std::tuple_cat([&] {
                if constexpr (In(K)) return std::tuple(std::get<K>(data)[i]);
                else if constexpr (!kPtr[K] && K != kLen) return std::tuple(Arg<K>({}, 0));
                else return std::tuple();
            }()...);
        }(std::make_index_sequence<kN>());
        const auto got = [&] { if constexpr (kTwo) return std::tuple(g0, g1); else return std::tuple(g0); }();
        std::string want = " from";
        if constexpr (Invocable<Ref>((decltype(std::tuple_cat(x, got)) *)nullptr)) {
            if (std::apply(ref, std::tuple_cat(x, got))) return ::testing::AssertionSuccess();
        } else if constexpr (kTwo) {
            const auto w = std::apply(ref, x);
            if (Close(g0, w.first, ulp) && Close(g1, w.second, ulp)) return ::testing::AssertionSuccess();
            want = ", want " + Str(w.first) + ", " + Str(w.second) + want;
        } else {
            const auto w = std::apply(ref, x);
            if (Close(g0, w, ulp)) return ::testing::AssertionSuccess();
            want = ", want " + Str(w) + want;
        }
        auto r = ::testing::AssertionFailure() << "got " << Str(g0) << (kTwo ? ", " + Str(g1) : "") << want;
        std::apply([&](auto... v) { ((r << " " << Str(v)), ...); }, x);
        return r;
    }

    // One call at len, the outputs offset bytes past a 64-byte boundary,
    // against all, the outputs of the call over all inputs.
    ::testing::AssertionResult At(Opt opt, std::vector<O> *all, int len, size_t offset, bool stream, bool same)
    {
        std::vector<unsigned char> raw[2];
        O *out[2];
        for (int k = 0; k < 2; ++k) {
            raw[k].assign(offset + len * sizeof(O) + 128, 0xA5);
            const size_t skew = (64 - reinterpret_cast<uintptr_t>(raw[k].data()) % 64) % 64;
            out[k] = reinterpret_cast<O *>(raw[k].data() + skew + offset);
        }
        Ptrs q = Pointers(out[0], out[1]);
        if constexpr (kAcc) memcpy(out[0], std::get<kO>(data).data(), len * sizeof(O));
        if (same) q[kSame % kN] = memcpy(out[0], q[kSame % kN], len * sizeof(O));
        const IppStatus st = [&] { const StreamAll scope(stream); return Call(q, len); }();
        if (st != opt.status && !(opt.status == kAnyWarning && st >= 0))
            return ::testing::AssertionFailure() << "status " << st;
        for (int i = 0; i < len; ++i)
            if (!Same(out[0][i], all[0][i]) || (kTwo && !Same(out[1][i], all[1][i])))
                return ::testing::AssertionFailure() << Str(out[0][i]) << " for " << Str(all[0][i]) << " at " << i;
        for (int k = 0; k < 2; ++k) {
            auto *b = reinterpret_cast<unsigned char *>(out[k]), *e = b + len * sizeof(O);
            const ptrdiff_t kept = std::count(raw[k].data(), b, 0xA5) + std::count(e, &raw[k].back() + 1, 0xA5);
            if (kept + (e - b) != ptrdiff_t(raw[k].size())) return ::testing::AssertionFailure() << "overrun " << k;
        }
        return ::testing::AssertionSuccess();
    }

    template <class Gen, class Ref>
    void Check(const Gen &gen, const Ref &ref, Opt opt)
    {
        size_t total = Span(kMax);
        int next = 0;
        ForEach<kN>([&](auto k) {
            if constexpr (In(k)) total = std::max(total, (std::get<k>(data) = gen(Elem<P<k>>(), next++)).size());
        });
        ForEach<kN>([&](auto k) {
            auto &v = std::get<k>(data);
            for (size_t i = 0; In(k) && v.size() < total; ++i) v.push_back(v[i]);
        });
        std::vector<O> all[2] = {kAcc ? std::get<kO>(data) : std::vector<O>(total), std::vector<O>(total)};
        const Ptrs p = Pointers(all[0].data(), all[1].data());
        const IppStatus st = Call(p, int(total));
        ASSERT_TRUE(st == opt.status || (opt.status == kAnyWarning && st >= 0)) << "status " << st;
        for (size_t i = 0; i < total; ++i)
            ASSERT_TRUE(Verdict(ref, opt.ulp, i, all[0][i], all[1][i])) << i << " of " << total;
        if (opt.once) return;
        CheckArguments(p);
        for (int same = 0; same < 1 + (opt.in_place && kSame < kN); ++same)
            for (int stream = 0; stream < 2; ++stream)
                for (size_t offset : {size_t(0), sizeof(O), kOdd, 3 * sizeof(O)})
                    for (int len = 1; len < 4 * kMax + 4; len += len == kMax ? 3 * kMax : 1)
                        ASSERT_TRUE(At(opt, all, len, offset, stream, same)) << "len " << len << ", offset "
                            << offset << (stream ? ", streamed" : "") << (same ? ", in place" : "");
    }
    void Refused(IppStatus want) const
    {
        std::vector<unsigned char> buf[kN];
        Ptrs p{};
        for (size_t k = 0; k < kN; ++k) p[k] = kPtr[k] ? buf[k].assign(256, 0xA5), buf[k].data() : nullptr;
        CheckArguments(p);
        EXPECT_EQ(Call(p, 4), want);
        for (size_t k = 0; k < kN; ++k)
            EXPECT_EQ(std::count(buf[k].begin(), buf[k].end(), 0xA5), ptrdiff_t(buf[k].size())) << "argument " << k;
    }
};

inline const auto kRandomInputs = [](auto t, int k) { return Random<decltype(t)>(Span(MaxLen<char>()), k + 1); };
template <bool kAcc, class Gen, class Vals, class... F>
struct Table {
    const char *names;
    std::tuple<F...> fns;
    Gen gen;
    Vals vals;
    template <class... V>
    Table<kAcc, Gen, std::tuple<V...>, F...> With(V... v) const { return {names, fns, gen, {v...}}; }
    template <class G>
    Table<kAcc, G, Vals, F...> From(G g) const { return {names, fns, std::move(g), vals}; }
    template <typename T, class... More>  // the k-th input from the k-th vector
    auto From(std::vector<T> v, More... more) const
    {
        auto vs = std::make_shared<std::vector<std::vector<T>>>();
        for (std::vector<T> *x : {&v, &more...}) vs->push_back(std::move(*x));
        return From([vs](T, int k) { return (*vs)[k]; });
    }
    Table<true, Gen, Vals, F...> Accumulate() const { return {names, fns, gen, vals}; }
    template <class Op>
    void Each(Op op) const
    {
        std::istringstream list(names);
        const auto one = [&](auto f) {
            std::string name;
            std::getline(list >> std::ws, name, ',');
            SCOPED_TRACE(name);
            op(Entry<kAcc, Vals, decltype(f)>{f, vals, {}});
        };
        std::apply([&](auto... f) { (one(f), ...); }, fns);
    }
    template <class Ref>
    void Check(const Ref &ref, Opt opt = {}) const { Each([&](auto e) { e.Check(gen, ref, opt); }); }
    void Refused(IppStatus st) const { Each([&](auto e) { e.Refused(st); }); }
};
template <class... F>
Table<false, decltype(kRandomInputs), std::tuple<>, F...> Rows(const char *names, F... f)
{
    return {names, {f...}, kRandomInputs, {}};
}
#define ORB_ROWS(...) sweep::Rows(#__VA_ARGS__, __VA_ARGS__)

}  // namespace sweep

#endif
