// The backend's argument contract, one row per entry point: each pointer
// null in turn (also with every length 0), each length and image dimension
// at 0, -1 and INT_MIN, each with the status the entry point owes; other
// integer, enumerated and real arguments out of range with any status; size
// queries at the largest lengths. A refused call leaves its buffers, the
// bytes around them and the set-up structures it was given as they were, and
// no call writes past its buffers or leaves allocations behind. A registry
// test holds the rows to the headers' declarations.
#include <gtest/gtest.h>
#include <limits.h>
#include <math.h>
#include <string.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "backend_hooks.h"
#include "ippcore.h"
#include "ippi.h"
#include "ipps.h"

namespace {

// The names the three headers declare: they are read again with IPPAPI
// recording each name, so names made by the headers' own macros count too.
std::vector<std::string> &Declared()
{
    static std::vector<std::string> names;
    return names;
}
struct Declare {
    explicit Declare(const char *name) { Declared().push_back(name); }
};

}  // namespace

#undef IPPAPI
#define IPPAPI(type, name, args) static const Declare orb_declared_##name(#name);
#undef IPPCORE_H
#undef IPPS_H
#undef IPPI_H
#include "ippcore.h"
#include "ippi.h"
#include "ipps.h"
#undef IPPAPI

namespace {

constexpr long long kNull = LLONG_MIN, kAll = LLONG_MAX;
constexpr IppStatus kAnyStatus = INT_MIN;  // Expect: any status, refused or not
constexpr size_t kGuard = 64;
constexpr unsigned char kGuardByte = 0xCD;
long long calls = 0;

template <class E>
constexpr size_t ElemSize()
{
    if constexpr (requires { sizeof(E); }) return sizeof(E);
    else return 1;  // opaque structures are sized in bytes
}

// One parameter of a row: a value, a buffer (n elements of the parameter's
// type, from element off on), a length or image size swept below 1, or a
// structure made beforehand (bytes of it compared).
struct M {
    enum Kind { kVal, kBuf, kLen, kSize, kExt } kind = kVal;
    long long i = 0;
    long double d = 0;
    unsigned char raw[32] = {};
    bool has_raw = false;
    int n = 0, off = 0;
    IppiSize size{};
    void *ext = nullptr;
    size_t bytes = 0;
    std::function<void(void *, int)> fill;

    M() = default;
    template <class T>
        requires std::is_arithmetic_v<T> || std::is_enum_v<T>
    M(T v) : i((long long)v), d((long double)v) {}
};
M B(int n, int off = 0, std::function<void(void *, int)> fill = {})
{
    M m;
    m.kind = M::kBuf, m.n = n, m.off = off, m.fill = std::move(fill);
    return m;
}
M L(int valid)
{
    M m;
    m.kind = M::kLen, m.i = valid, m.d = valid;
    return m;
}
M Sz(int w, int h)
{
    M m;
    m.kind = M::kSize, m.size = {w, h};
    return m;
}
M X(void *p, size_t bytes)
{
    M m;
    m.kind = M::kExt, m.ext = p, m.bytes = bytes;
    return m;
}
template <class T>
M V(const T &v)  // a value of a structure type
{
    static_assert(sizeof(T) <= sizeof(M::raw));
    M m;
    memcpy(m.raw, &v, sizeof(T));
    m.has_raw = true;
    return m;
}

struct Slot {
    void *p = nullptr;
    long long i = 0;
    long double d = 0;
    IppiSize size{};
    const unsigned char *raw = nullptr;
};

template <class P>
P Make(const Slot &s)
{
    if constexpr (std::is_pointer_v<P>) return static_cast<P>(s.p);
    else if constexpr (std::is_same_v<P, IppiSize>) return s.size;
    else if constexpr (std::is_integral_v<P> || std::is_enum_v<P>) return P(s.i);
    else if constexpr (std::is_floating_point_v<P>) return P(s.d);
    else {
        P v;
        memcpy(&v, s.raw, sizeof(P));
        return v;
    }
}

// Elements from + 1, from + 2, ... of arithmetic and complex types; other
// types zero. Inputs count from 1, outputs from 97, so that a refused call
// that writes small results shows.
template <class E, int from = 0>
void DefaultFill(void *p, int n)
{
    if constexpr (std::is_arithmetic_v<E>)
        for (int k = 0; k < n; ++k) static_cast<E *>(p)[k] = E(from + k + 1);
    else if constexpr (std::is_same_v<E, Ipp32fc> || std::is_same_v<E, Ipp64fc>)
        for (int k = 0; k < n; ++k) static_cast<E *>(p)[k] = {decltype(E::re)(from + k + 1), -1};
    else memset(p, 0, n * ElemSize<E>());
}

struct Row {
    std::string name;
    std::vector<M> m;
    std::vector<size_t> elem;
    std::vector<bool> is_ptr, is_signed, is_int, is_float;
    std::vector<void (*)(void *, int)> fill;
    std::function<IppStatus(const std::vector<Slot> &)> call;
    std::map<std::pair<int, long long>, IppStatus> want;
    IppStatus base = ippStsNoErr;

    // Param k null (a pointer) or at v (a length, kAll: any) gives st.
    Row &On(int k, IppStatus st, long long v = kAll)
    {
        want[{k, is_ptr[k] && v == kAll ? kNull : v}] = st;
        return *this;
    }
    Row &Base(IppStatus st) { return base = st, *this; }
    IppStatus Want(int k, long long v, IppStatus dflt) const
    {
        for (long long key : {v, kAll})
            if (auto it = want.find({k, key}); it != want.end()) return it->second;
        return dflt;
    }
};

template <class... A, class... Ms>
Row MakeRow(const char *name, IppStatus (*fn)(A...), Ms... ms)
{
    static_assert(sizeof...(A) == sizeof...(Ms), "one marker per parameter");
    Row r;
    r.name = name;
    r.m = {M(ms)...};
    r.elem = {ElemSize<std::remove_cv_t<std::remove_pointer_t<A>>>()...};
    r.is_ptr = {std::is_pointer_v<A>...};
    r.is_signed = {std::is_signed_v<A>...};
    r.is_int = {std::is_integral_v<A> || std::is_enum_v<A>...};
    r.is_float = {std::is_floating_point_v<A>...};
    r.fill = {[] {
        using E = std::remove_pointer_t<A>;
        if constexpr (std::is_pointer_v<A>) return &DefaultFill<std::remove_cv_t<E>, std::is_const_v<E> ? 0 : 96>;
        else return (void (*)(void *, int))nullptr;
    }()...};
    r.call = [fn](const std::vector<Slot> &s) {
        return [&]<size_t... K>(std::index_sequence<K...>) {
            return fn(Make<std::tuple_element_t<K, std::tuple<A...>>>(s[K])...);
        }(std::index_sequence_for<A...>());
    };
    return r;
}
#define ROW(fn, ...) MakeRow(#fn, fn, __VA_ARGS__)

// Element-wise shapes: n-element buffers for the pointers, the length at
// param len_at, every other value 0 unless given in vals (param -> value).
template <class... A>
Row Auto(const char *name, IppStatus (*fn)(A...), int len_at, int n, std::map<int, M> vals = {})
{
    constexpr size_t kN = sizeof...(A);
    constexpr bool ptr[] = {std::is_pointer_v<A>...};
    return [&]<size_t... K>(std::index_sequence<K...>) {
        auto pick = [&](size_t k) {
            return ptr[k] ? B(n) : int(k) == len_at ? L(n) : vals.count(int(k)) ? vals[int(k)] : M(0);
        };
        return MakeRow(name, fn, pick(K)...);
    }(std::make_index_sequence<kN>());
}
// The length: the integer after the last pointer, as in (pSrc, pDst, len).
template <class... A>
constexpr int AfterLastPointer(IppStatus (*)(A...))
{
    constexpr bool ptr[] = {std::is_pointer_v<A>...};
    int k = sizeof...(A) - 1;
    while (!ptr[k]) --k;
    return k + 1;
}
// The length: the first integer after a pointer, as in (pSrc, len, pMax)
// and (pSrc1, pSrc2, len, pDp).
template <class... A>
constexpr int AfterFirstPointer(IppStatus (*)(A...))
{
    constexpr bool ptr[] = {std::is_pointer_v<A>...};
    int k = 0;
    while (!ptr[k]) ++k;
    while (ptr[k]) ++k;
    return k;
}
#define MAP(fn, ...) Auto(#fn, fn, AfterLastPointer(fn), 37 __VA_OPT__(, ) __VA_ARGS__)
#define RED(fn, ...) Auto(#fn, fn, AfterFirstPointer(fn), 37 __VA_OPT__(, ) __VA_ARGS__)

// Buffers of one row, each between guard bytes, 64-byte aligned.
struct Buffers {
    std::vector<std::vector<unsigned char>> raw;
    std::vector<unsigned char *> at;  // the buffer's first byte
    std::vector<size_t> len;

    explicit Buffers(const Row &r) : raw(r.m.size()), at(r.m.size()), len(r.m.size())
    {
        for (size_t k = 0; k < r.m.size(); ++k) {
            if (r.m[k].kind != M::kBuf) continue;
            len[k] = r.m[k].n * r.elem[k];
            raw[k].resize(len[k] + 2 * kGuard + 64);
            at[k] = raw[k].data() + kGuard + (64 - reinterpret_cast<uintptr_t>(raw[k].data()) % 64) % 64;
        }
    }
    void Reset(const Row &r)
    {
        for (size_t k = 0; k < r.m.size(); ++k) {
            if (r.m[k].kind != M::kBuf) continue;
            memset(raw[k].data(), kGuardByte, raw[k].size());
            if (r.m[k].fill) r.m[k].fill(at[k], r.m[k].n);
            else r.fill[k](at[k], r.m[k].n);
        }
    }
};

std::vector<Slot> Slots(const Row &r, const Buffers &b)
{
    std::vector<Slot> s(r.m.size());
    for (size_t k = 0; k < r.m.size(); ++k) {
        const M &m = r.m[k];
        s[k].i = m.i, s[k].d = m.d, s[k].size = m.size, s[k].raw = m.raw;
        if (m.kind == M::kBuf) s[k].p = b.at[k] + m.off * r.elem[k];
        if (m.kind == M::kExt) s[k].p = m.ext;
    }
    return s;
}

// One call with s; what it returned and did against want.
// Sizes: on success, every int the call wrote must be a size (not below 0).
::testing::AssertionResult Expect(const Row &r, Buffers &b, const std::vector<Slot> &s, IppStatus want,
                                  bool sizes = false)
{
    b.Reset(r);
    const std::vector<std::vector<unsigned char>> before = b.raw;
    std::vector<std::vector<unsigned char>> ext(r.m.size());
    for (size_t k = 0; k < r.m.size(); ++k)
        if (r.m[k].kind == M::kExt)
            ext[k].assign((unsigned char *)r.m[k].ext, (unsigned char *)r.m[k].ext + r.m[k].bytes);
    const int64_t live = orbBackendLiveAllocations();
    const IppStatus st = r.call(s);
    ++calls;
    if (st != want && want != kAnyStatus) return ::testing::AssertionFailure() << "status " << st << ", want " << want;
    const bool refused = st < 0;
    if (orbBackendLiveAllocations() != live) return ::testing::AssertionFailure() << "allocations left live";
    for (size_t k = 0; k < r.m.size(); ++k) {
        if (r.m[k].kind == M::kBuf) {
            unsigned char *lo = b.at[k], *hi = lo + b.len[k], *end = b.raw[k].data() + b.raw[k].size();
            if (std::find_if(b.raw[k].data(), lo, [](unsigned char c) { return c != kGuardByte; }) != lo ||
                std::find_if(hi, end, [](unsigned char c) { return c != kGuardByte; }) != end)
                return ::testing::AssertionFailure() << "wrote outside argument " << k;
            if (refused && b.raw[k] != before[k])
                return ::testing::AssertionFailure() << "refused, wrote argument " << k;
        }
        if (r.m[k].kind == M::kExt && refused && memcmp(ext[k].data(), r.m[k].ext, r.m[k].bytes))
            return ::testing::AssertionFailure() << "refused, changed argument " << k;
        int size = 0;
        if (sizes && !refused && r.m[k].kind == M::kBuf && r.elem[k] == sizeof(int) &&
            (memcpy(&size, b.at[k], sizeof(int)), size < 0))
            return ::testing::AssertionFailure() << "size " << size << " in argument " << k;
    }
    return ::testing::AssertionSuccess();
}

void Sweep(const Row &r)
{
    SCOPED_TRACE(r.name);
    Buffers b(r);
    const std::vector<Slot> valid = Slots(r, b);
    EXPECT_TRUE(Expect(r, b, valid, r.base)) << "valid call";
    for (size_t k = 0; k < r.m.size(); ++k) {
        std::vector<Slot> s = valid;
        if (r.is_ptr[k]) {
            s[k].p = nullptr;
            const IppStatus want = r.Want(int(k), kNull, ippStsNullPtrErr);
            EXPECT_TRUE(Expect(r, b, s, want)) << "argument " << k << " null";
            // Pointers are looked at before lengths.
            std::vector<Slot> z = s;
            for (size_t j = 0; j < r.m.size(); ++j) {
                if (r.m[j].kind == M::kLen) z[j].i = z[j].d = 0;
                if (r.m[j].kind == M::kSize) z[j].size = {0, 0};
            }
            if (want == ippStsNullPtrErr) {
                EXPECT_TRUE(Expect(r, b, z, want)) << "argument " << k << " null, lengths 0";
            }
        }
        for (long long v : {0LL, -1LL, (long long)INT_MIN}) {
            if (r.m[k].kind == M::kLen && (r.is_signed[k] || v == 0)) {
                s[k].i = v, s[k].d = v;
                EXPECT_TRUE(Expect(r, b, s, r.Want(int(k), v, ippStsSizeErr))) << "argument " << k << " = " << v;
            }
            if (r.m[k].kind == M::kSize)
                for (int *dim : {&s[k].size.width, &s[k].size.height}) {
                    const int keep = *dim;
                    *dim = int(v);
                    EXPECT_TRUE(Expect(r, b, s, r.Want(int(k), v, ippStsSizeErr)))
                        << "argument " << k << (dim == &s[k].size.width ? " width " : " height ") << v;
                    *dim = keep;
                }
            // Other integers and enumerations: whatever the status, nothing
            // written outside the buffers, and nothing at all when refused.
            if (r.m[k].kind == M::kVal && r.is_int[k]) {
                s[k].i = v;
                EXPECT_TRUE(Expect(r, b, s, kAnyStatus)) << "argument " << k << " = " << v;
                s[k].i = valid[k].i;
            }
        }
        // Real arguments out of every range: the same, and a size query
        // still gives sizes.
        const bool query = r.name.find("Get") != std::string::npos && r.name.find("Size") != std::string::npos;
        if (r.m[k].kind == M::kVal && r.is_float[k]) {
            for (long double v : {(long double)NAN, (long double)INFINITY, -(long double)INFINITY, -1.0L, 0.0L,
                                  1e30L}) {
                s[k].d = v;
                EXPECT_TRUE(Expect(r, b, s, kAnyStatus, query)) << "argument " << k << " = " << double(v);
            }
            s[k].d = valid[k].d;
        }
        // Size queries at the largest lengths: a size or a refusal, never a
        // size that wrapped around.
        if (!query) continue;
        if (r.m[k].kind == M::kLen) {
            s[k].i = INT_MAX;
            EXPECT_TRUE(Expect(r, b, s, kAnyStatus, true)) << "argument " << k << " = INT_MAX";
        }
        if (r.m[k].kind == M::kSize)
            for (IppiSize big : {IppiSize{INT_MAX, 1}, IppiSize{1, INT_MAX}, IppiSize{INT_MAX, INT_MAX}}) {
                s[k].size = big;
                EXPECT_TRUE(Expect(r, b, s, kAnyStatus, true))
                    << "argument " << k << " " << big.width << "x" << big.height;
            }
    }
}

}  // namespace

namespace {

// Memory for set-up structures, kept for the whole run, 64-byte aligned.
Ipp8u *Keep(size_t bytes)
{
    static std::vector<std::vector<Ipp8u>> kept;
    Ipp8u *p = kept.emplace_back(bytes + 64).data();
    return p + (64 - reinterpret_cast<uintptr_t>(p) % 64) % 64;
}
struct Made {
    void *p;
    int bytes, buf;  // the structure's size and its work buffer's
};

constexpr int kFlag = IPP_FFT_DIV_INV_BY_N;
template <class S, class Size, class Init>
Made Dft(Size size, Init init, int len)
{
    int spec = 0, init_buf = 0, buf = 0;
    EXPECT_EQ(size(len, kFlag, ippAlgHintNone, &spec, &init_buf, &buf), ippStsNoErr);
    S *s = reinterpret_cast<S *>(Keep(spec));
    EXPECT_EQ(init(len, kFlag, ippAlgHintNone, s, Keep(init_buf)), ippStsNoErr);
    return {s, spec, buf};
}
template <class S, class Size, class Init>
Made Fft(Size size, Init init, int order)
{
    int spec = 0, init_buf = 0, buf = 0;
    EXPECT_EQ(size(order, kFlag, ippAlgHintNone, &spec, &init_buf, &buf), ippStsNoErr);
    S *s = nullptr;
    EXPECT_EQ(init(&s, order, kFlag, ippAlgHintNone, Keep(spec), Keep(init_buf)), ippStsNoErr);
    return {s, spec, buf};
}
template <class S, class Size, class Init>
Made Dct(Size size, Init init, int len)
{
    int spec = 0, init_buf = 0, buf = 0;
    EXPECT_EQ(size(len, ippAlgHintNone, &spec, &init_buf, &buf), ippStsNoErr);
    S *s = nullptr;
    EXPECT_EQ(init(&s, len, ippAlgHintNone, Keep(spec), Keep(init_buf)), ippStsNoErr);
    return {s, spec, buf};
}

constexpr double kPi = 3.14159265358979323846;
const Ipp64fc kOne = {1, 0};

std::vector<Row> SignalRows()
{
    std::vector<Row> r = {
        MAP(ippsAbs_32f), MAP(ippsAbs_64f), MAP(ippsSqr_32f), MAP(ippsSqr_64f), MAP(ippsSqr_64fc),
        MAP(ippsSqrt_32f), MAP(ippsSqrt_64f), MAP(ippsSqrt_64fc), MAP(ippsExp_32f), MAP(ippsExp_64f),
        MAP(ippsLn_32f), MAP(ippsLn_64f), MAP(ippsArctan_32f), MAP(ippsArctan_64f),
        MAP(ippsNormalize_64f, {{4, 1.0}}),
        MAP(ippsAddC_32f, {{1, 1}}), MAP(ippsAddC_64f, {{1, 1}}), MAP(ippsAddC_64fc, {{1, V(kOne)}}),
        MAP(ippsSubC_32f, {{1, 1}}), MAP(ippsSubC_64f, {{1, 1}}), MAP(ippsSubC_64fc, {{1, V(kOne)}}),
        MAP(ippsSubCRev_32f, {{1, 1}}), MAP(ippsSubCRev_64f, {{1, 1}}), MAP(ippsSubCRev_64fc, {{1, V(kOne)}}),
        MAP(ippsMulC_32f, {{1, 1}}), MAP(ippsMulC_64f, {{1, 1}}), MAP(ippsMulC_64fc, {{1, V(kOne)}}),
        MAP(ippsDivC_32f, {{1, 1}}), MAP(ippsDivC_64f, {{1, 1}}), MAP(ippsDivC_64fc, {{1, V(kOne)}}),
        MAP(ippsDivCRev_32f, {{1, 1}}),
        MAP(ippsAdd_32f), MAP(ippsAdd_64f), MAP(ippsAdd_64fc), MAP(ippsSub_32f), MAP(ippsSub_64f),
        MAP(ippsSub_64fc), MAP(ippsMul_32f), MAP(ippsMul_64f), MAP(ippsMul_64fc), MAP(ippsDiv_32f),
        MAP(ippsDiv_64f), MAP(ippsDiv_64fc), MAP(ippsAddProduct_32f), MAP(ippsAddProduct_64f),
        MAP(ippsAddProduct_64fc),
        MAP(ippsAndC_8u), MAP(ippsAndC_16u), MAP(ippsAndC_32u), MAP(ippsOrC_8u), MAP(ippsOrC_16u),
        MAP(ippsOrC_32u), MAP(ippsXorC_8u), MAP(ippsXorC_16u), MAP(ippsXorC_32u), MAP(ippsAnd_8u),
        MAP(ippsAnd_16u), MAP(ippsAnd_32u), MAP(ippsOr_8u), MAP(ippsOr_16u), MAP(ippsOr_32u), MAP(ippsXor_8u),
        MAP(ippsXor_16u), MAP(ippsXor_32u), MAP(ippsNot_8u), MAP(ippsNot_16u), MAP(ippsNot_32u),
        MAP(ippsLShiftC_8u), MAP(ippsLShiftC_16s), MAP(ippsLShiftC_32s), MAP(ippsRShiftC_8u),
        MAP(ippsRShiftC_16s), MAP(ippsRShiftC_32s),
        MAP(ippsConj_64fc), MAP(ippsConjFlip_64fc), MAP(ippsReal_64fc), MAP(ippsImag_64fc),
        MAP(ippsMagnitude_64fc), MAP(ippsMagnitude_32f), MAP(ippsMagnitude_64f), MAP(ippsPhase_64fc),
        MAP(ippsPhase_32f), MAP(ippsPhase_64f), MAP(ippsPowerSpectr_64fc), MAP(ippsPowerSpectr_32f),
        MAP(ippsPowerSpectr_64f), MAP(ippsRealToCplx_64f).On(0, ippStsNoErr).On(1, ippStsNoErr),  // either part
        MAP(ippsCplxToReal_64fc), MAP(ippsCartToPolar_64fc),
        MAP(ippsCartToPolar_64f), MAP(ippsPolarToCart_64fc), MAP(ippsPolarToCart_64f),
        MAP(ippsConvert_8s32f), MAP(ippsConvert_16s32f), MAP(ippsConvert_32s32f), MAP(ippsConvert_64f32f),
        MAP(ippsConvert_32f64f), MAP(ippsConvert_32s64f), MAP(ippsConvert_64s64f), MAP(ippsConvert_32s16s),
        MAP(ippsConvert_16s32f_Sfs), MAP(ippsConvert_32s32f_Sfs), MAP(ippsConvert_16s64f_Sfs),
        MAP(ippsConvert_32s64f_Sfs), MAP(ippsConvert_32s16s_Sfs), MAP(ippsConvert_64f64s_Sfs),
        MAP(ippsConvert_32f32s_Sfs), MAP(ippsConvert_64f32s_Sfs), MAP(ippsConvert_64s32s_Sfs),
        MAP(ippsConvert_32f16s_Sfs), MAP(ippsConvert_64f16s_Sfs), MAP(ippsConvert_32f8s_Sfs),
        MAP(ippsConvert_16s8s_Sfs),
        MAP(ippsSwapBytes_16u), ROW(ippsSwapBytes_24u, B(3 * 37), B(3 * 37), L(37)), MAP(ippsSwapBytes_32u),
        MAP(ippsSwapBytes_64u),
        MAP(ippsCopy_16s), MAP(ippsCopy_32s), MAP(ippsCopy_64s), MAP(ippsCopy_32f), MAP(ippsCopy_64f),
        MAP(ippsCopy_64fc), MAP(ippsMove_16s), MAP(ippsMove_32s), MAP(ippsMove_64s), MAP(ippsMove_32f),
        MAP(ippsMove_64f), MAP(ippsMove_64fc),
        MAP(ippsSet_8u), MAP(ippsSet_16s), MAP(ippsSet_32s), MAP(ippsSet_64s), MAP(ippsSet_32f), MAP(ippsSet_64f),
        MAP(ippsSet_64fc), MAP(ippsZero_8u), MAP(ippsZero_16s), MAP(ippsZero_32s), MAP(ippsZero_64s),
        MAP(ippsZero_32f), MAP(ippsZero_64f), MAP(ippsZero_64fc),
        MAP(ippsThreshold_LT_16s), MAP(ippsThreshold_LT_32s), MAP(ippsThreshold_LT_32f),
        MAP(ippsThreshold_LT_64f), MAP(ippsThreshold_LT_64fc), MAP(ippsThreshold_GT_16s),
        MAP(ippsThreshold_GT_32s), MAP(ippsThreshold_GT_32f), MAP(ippsThreshold_GT_64f),
        MAP(ippsThreshold_GT_64fc), MAP(ippsThreshold_LTAbs_16s), MAP(ippsThreshold_LTAbs_32s),
        MAP(ippsThreshold_LTAbs_32f), MAP(ippsThreshold_LTAbs_64f), MAP(ippsThreshold_GTAbs_16s),
        MAP(ippsThreshold_GTAbs_32s), MAP(ippsThreshold_GTAbs_32f), MAP(ippsThreshold_GTAbs_64f),
        MAP(ippsThreshold_LTInv_32f, {{3, 1}}), MAP(ippsThreshold_LTInv_64f, {{3, 1}}),
        MAP(ippsThreshold_LTInv_64fc, {{3, 1}}), MAP(ippsThreshold_LTVal_16s), MAP(ippsThreshold_LTVal_32f),
        MAP(ippsThreshold_LTVal_64f), MAP(ippsThreshold_LTVal_64fc), MAP(ippsThreshold_GTVal_16s),
        MAP(ippsThreshold_GTVal_32f), MAP(ippsThreshold_GTVal_64f), MAP(ippsThreshold_GTVal_64fc),
        MAP(ippsThreshold_LTValGTVal_16s), MAP(ippsThreshold_LTValGTVal_32s), MAP(ippsThreshold_LTValGTVal_32f),
        MAP(ippsThreshold_LTValGTVal_64f),
        RED(ippsMax_16s), RED(ippsMax_32s), RED(ippsMax_32f), RED(ippsMax_64f), RED(ippsMin_16s), RED(ippsMin_32s),
        RED(ippsMin_32f), RED(ippsMin_64f), RED(ippsMaxAbs_16s), RED(ippsMaxAbs_32s), RED(ippsMinAbs_16s),
        RED(ippsMinAbs_32s), RED(ippsMinMax_8u), RED(ippsMinMax_16s), RED(ippsMinMax_32s), RED(ippsMinMax_32f),
        RED(ippsMinMax_64f), RED(ippsMinMaxIndx_16s), RED(ippsMinMaxIndx_32s), RED(ippsMinMaxIndx_32f),
        RED(ippsMinMaxIndx_64f),
        RED(ippsSum_16s32s_Sfs), RED(ippsSum_32s_Sfs), RED(ippsSum_32f), RED(ippsSum_64f), RED(ippsSum_64fc),
        RED(ippsMean_32f), RED(ippsMean_64f), RED(ippsMean_64fc), RED(ippsStdDev_32f), RED(ippsStdDev_64f),
        RED(ippsMeanStdDev_32f), RED(ippsMeanStdDev_64f),
        RED(ippsDotProd_32f64f), RED(ippsDotProd_64f), RED(ippsDotProd_64fc), RED(ippsDotProd_64f64fc),
        RED(ippsDotProd_16s64s),
        MAP(ippsMaxEvery_8u), MAP(ippsMaxEvery_16u), MAP(ippsMaxEvery_32f), MAP(ippsMaxEvery_64f),
        MAP(ippsMinEvery_8u), MAP(ippsMinEvery_16u), MAP(ippsMinEvery_32f), MAP(ippsMinEvery_64f),
        RED(ippsZeroCrossing_16s32f), RED(ippsZeroCrossing_32f), RED(ippsCountInRange_32s),
        RED(ippsMaxOrder_16s), RED(ippsMaxOrder_32s), RED(ippsMaxOrder_32f), RED(ippsMaxOrder_64f),
        MAP(ippsFlip_8u), MAP(ippsFlip_16u), MAP(ippsFlip_32f), MAP(ippsFlip_64f), MAP(ippsFlip_64fc),
        MAP(ippsSortAscend_8u_I), MAP(ippsSortAscend_16s_I), MAP(ippsSortAscend_32s_I), MAP(ippsSortAscend_32f_I),
        MAP(ippsSortAscend_64f_I), MAP(ippsSortDescend_8u_I), MAP(ippsSortDescend_16s_I),
        MAP(ippsSortDescend_32s_I), MAP(ippsSortDescend_32f_I), MAP(ippsSortDescend_64f_I),
        MAP(ippsFindNearestOne_16u), ROW(ippsFindNearest_16u, B(37), B(37), B(37), L(37), B(37), L(37)),
        RED(ippsGoertz_32f), RED(ippsGoertz_64f), RED(ippsGoertz_64fc),
        RED(ippsWTHaarFwd_32f), RED(ippsWTHaarFwd_64f), RED(ippsWTHaarFwd_16s_Sfs), MAP(ippsWTHaarInv_32f),
        MAP(ippsWTHaarInv_64f), MAP(ippsWTHaarInv_16s_Sfs),
        RED(ippsVectorJaehne_16s, {{2, 1}}), RED(ippsVectorJaehne_32s, {{2, 1}}), RED(ippsVectorJaehne_32f, {{2, 1}}),
        RED(ippsVectorJaehne_64f, {{2, 1}}), RED(ippsVectorSlope_16s), RED(ippsVectorSlope_32s),
        RED(ippsVectorSlope_32f), RED(ippsVectorSlope_64f),
    };
#define ORB_WIN(name, ...)                                                           \
    r.insert(r.end(), {MAP(ipps##name##_16s __VA_OPT__(, ) __VA_ARGS__),             \
                       MAP(ipps##name##_32f __VA_OPT__(, ) __VA_ARGS__),             \
                       MAP(ipps##name##_64f __VA_OPT__(, ) __VA_ARGS__),             \
                       MAP(ipps##name##_64fc __VA_OPT__(, ) __VA_ARGS__)})
    ORB_WIN(WinBartlett);
    ORB_WIN(WinHamming);
    ORB_WIN(WinHann);
    ORB_WIN(WinBlackmanStd);
    ORB_WIN(WinBlackmanOpt);
    ORB_WIN(WinBlackman, {{3, 0.1}});
    ORB_WIN(WinKaiser, {{3, 1}});
#undef ORB_WIN
    // The index of the plain extremes is optional, of the absolute ones not.
    for (Row x : {RED(ippsMaxIndx_16s), RED(ippsMaxIndx_32s), RED(ippsMaxIndx_32f), RED(ippsMaxIndx_64f),
                  RED(ippsMinIndx_16s), RED(ippsMinIndx_32s), RED(ippsMinIndx_32f), RED(ippsMinIndx_64f)})
        r.push_back(x.On(3, ippStsNoErr));
    for (Row x : {RED(ippsMaxAbsIndx_16s), RED(ippsMaxAbsIndx_32s), RED(ippsMinAbsIndx_16s), RED(ippsMinAbsIndx_32s),
                  RED(ippsNorm_Inf_32f), RED(ippsNorm_Inf_64f), RED(ippsNorm_Inf_16s32f), RED(ippsNorm_Inf_64fc64f),
                  RED(ippsNormDiff_Inf_32f), RED(ippsNormDiff_Inf_64f), RED(ippsNormDiff_Inf_16s32f),
                  RED(ippsNormDiff_Inf_64fc64f), RED(ippsNorm_L1_32f), RED(ippsNorm_L1_64f), RED(ippsNorm_L1_16s32f),
                  RED(ippsNorm_L1_64fc64f), RED(ippsNormDiff_L1_32f), RED(ippsNormDiff_L1_64f),
                  RED(ippsNormDiff_L1_16s32f), RED(ippsNormDiff_L1_64fc64f), RED(ippsNorm_L2_32f), RED(ippsNorm_L2_64f),
                  RED(ippsNorm_L2_16s32f), RED(ippsNorm_L2_64fc64f), RED(ippsNormDiff_L2_32f), RED(ippsNormDiff_L2_64f),
                  RED(ippsNormDiff_L2_16s32f), RED(ippsNormDiff_L2_64fc64f)})
        r.push_back(x);
    // Resampling by 2 from phase 1, 16 samples in.
#define ORB_SAMPLE(fn) ROW(fn, B(16), L(16), B(32), B(1), 2, B(1, 0, [](void *p, int) { *static_cast<int *>(p) = 1; }))
    r.insert(r.end(), {ORB_SAMPLE(ippsSampleUp_16s), ORB_SAMPLE(ippsSampleUp_32f), ORB_SAMPLE(ippsSampleUp_64f),
                       ORB_SAMPLE(ippsSampleUp_64fc), ORB_SAMPLE(ippsSampleDown_16s), ORB_SAMPLE(ippsSampleDown_32f),
                       ORB_SAMPLE(ippsSampleDown_64f), ORB_SAMPLE(ippsSampleDown_64fc)});
#undef ORB_SAMPLE
    return r;
}

}  // namespace

TEST(Contract, SignalEntryPoints)
{
    for (const Row &r : SignalRows()) Sweep(r);
    Ipp64fc out[1] = {{5, 5}};
    EXPECT_EQ(ippsRealToCplx_64f(nullptr, nullptr, out, 1), ippStsNullPtrErr) << "one part is needed";
    EXPECT_EQ(out[0].re, 5);
}

namespace {

// Transforms: the interleaved forms and the set-up's memory need no work
// buffer (null passes); the split forms take their own without one.
std::vector<Row> TransformRows()
{
    const int kLen = 8, kOrder = 3;
    const IppHintAlgorithm h = ippAlgHintNone;
    std::vector<Row> r;
#define ORB_DFT(T, E, S)                                                                                     \
    {                                                                                                        \
        const Made m = Dft<S>(ippsDFTGetSize_C_##T, ippsDFTInit_C_##T, kLen);                               \
        r.push_back(ROW(ippsDFTGetSize_C_##T, L(kLen), kFlag, h, B(1), B(1), B(1)));                        \
        r.push_back(ROW(ippsDFTInit_C_##T, L(kLen), kFlag, h, B(m.bytes), B(1)).On(4, ippStsNoErr));        \
        ORB_RUN_##E(DFT, T, m);                                                                              \
    }                                                                                                        \
    {                                                                                                        \
        const Made m = Fft<S##_FFT>(ippsFFTGetSize_C_##T, ippsFFTInit_C_##T, kOrder);                       \
        r.push_back(ROW(ippsFFTGetSize_C_##T, L(kOrder), kFlag, h, B(1), B(1), B(1))                        \
                        .On(0, ippStsNoErr, 0).On(0, ippStsFftOrderErr, -1).On(0, ippStsFftOrderErr, INT_MIN)); \
        r.push_back(ROW(ippsFFTInit_C_##T, B(1), L(kOrder), kFlag, h, B(m.bytes), B(1))                     \
                        .On(5, ippStsNoErr).On(1, ippStsNoErr, 0).On(1, ippStsFftOrderErr, -1)              \
                        .On(1, ippStsFftOrderErr, INT_MIN));                                                \
        ORB_RUN_##E(FFT, T, m);                                                                              \
    }
#define ORB_RUN_C(K, T, m)                                                                                   \
    r.push_back(ROW(ipps##K##Fwd_CToC_##T, B(kLen), B(kLen), X(m.p, m.bytes), B(1)).On(3, ippStsNoErr));   \
    r.push_back(ROW(ipps##K##Inv_CToC_##T, B(kLen), B(kLen), X(m.p, m.bytes), B(1)).On(3, ippStsNoErr))
#define ORB_RUN_S(K, T, m)                                                                                   \
    r.push_back(ROW(ipps##K##Fwd_CToC_##T, B(kLen), B(kLen), B(kLen), B(kLen), X(m.p, m.bytes),             \
                    B(std::max(m.buf, 1))).On(5, ippStsNoErr));                                              \
    r.push_back(ROW(ipps##K##Inv_CToC_##T, B(kLen), B(kLen), B(kLen), B(kLen), X(m.p, m.bytes),             \
                    B(std::max(m.buf, 1))).On(5, ippStsNoErr))
#define IppsDFTSpec_C_64fc_FFT IppsFFTSpec_C_64fc
#define IppsDFTSpec_C_64f_FFT IppsFFTSpec_C_64f
#define IppsDFTSpec_C_32f_FFT IppsFFTSpec_C_32f
    ORB_DFT(64fc, C, IppsDFTSpec_C_64fc)
    ORB_DFT(64f, S, IppsDFTSpec_C_64f)
    ORB_DFT(32f, S, IppsDFTSpec_C_32f)
#undef ORB_DFT
#undef ORB_RUN_C
#undef ORB_RUN_S
#define ORB_DCT(T, Dir)                                                                                     \
    {                                                                                                       \
        const Made m = Dct<IppsDCT##Dir##Spec_##T>(ippsDCT##Dir##GetSize_##T, ippsDCT##Dir##Init_##T, kLen); \
        r.push_back(ROW(ippsDCT##Dir##GetSize_##T, L(kLen), h, B(1), B(1), B(1)));                          \
        r.push_back(ROW(ippsDCT##Dir##Init_##T, B(1), L(kLen), h, B(m.bytes), B(1)).On(4, ippStsNoErr));    \
        r.push_back(ROW(ippsDCT##Dir##_##T, B(kLen), B(kLen), X(m.p, m.bytes), B(1)).On(3, ippStsNoErr));   \
    }
    ORB_DCT(32f, Fwd)
    ORB_DCT(32f, Inv)
    ORB_DCT(64f, Fwd)
    ORB_DCT(64f, Inv)
#undef ORB_DCT
    {
        int spec = 0, buf = 0;
        EXPECT_EQ(ippsHilbertGetSize_32f32fc(kLen, h, &spec, &buf), ippStsNoErr);
        auto *s = reinterpret_cast<IppsHilbertSpec *>(Keep(spec));
        EXPECT_EQ(ippsHilbertInit_32f32fc(kLen, h, s, Keep(buf)), ippStsNoErr);
        r.push_back(ROW(ippsHilbertGetSize_32f32fc, L(kLen), h, B(1), B(1)));
        r.push_back(ROW(ippsHilbertInit_32f32fc, L(kLen), h, B(spec), B(1)).On(3, ippStsNoErr));
        r.push_back(ROW(ippsHilbert_32f32fc, B(kLen), B(kLen), X(s, spec), B(1)).On(3, ippStsNoErr));
    }
    return r;
}

// Convolution and correlation: buffers as their size queries say.
std::vector<Row> ConvolutionRows()
{
    const int n1 = 20, n2 = 7, nd = 9, lag = -3;
    std::vector<Row> r;
    int conv = 0, autoc = 0, cross = 0;
    EXPECT_EQ(ippsConvolveGetBufferSize(n1, n2, ipp64f, ippAlgAuto, &conv), ippStsNoErr);
    const int a = int(ippAlgAuto) | int(ippsNormB), c = int(ippAlgAuto) | int(ippsNormU);
    EXPECT_EQ(ippsAutoCorrNormGetBufferSize(n1, nd, ipp64fc, a, &autoc), ippStsNoErr);
    EXPECT_EQ(ippsCrossCorrNormGetBufferSize(n1, n2, nd, lag, ipp64fc, c, &cross), ippStsNoErr);
    r.push_back(ROW(ippsConvolveGetBufferSize, L(n1), L(n2), ipp64f, ippAlgAuto, B(1)));
    r.push_back(ROW(ippsConvolve_32f, B(n1), L(n1), B(n2), L(n2), B(n1 + n2 - 1), ippAlgAuto, B(conv)));
    r.push_back(ROW(ippsConvolve_64f, B(n1), L(n1), B(n2), L(n2), B(n1 + n2 - 1), ippAlgAuto, B(conv)));
    r.push_back(ROW(ippsConvBiased_32f, B(n1), L(n1), B(n2), L(n2), B(nd), L(nd), 2)
                    .On(5, ippStsNoErr));  // no elements asked for
    r.push_back(ROW(ippsAutoCorrNormGetBufferSize, L(n1), L(nd), ipp64fc, a, B(1)));
    r.push_back(ROW(ippsAutoCorrNorm_32f, B(n1), L(n1), B(nd), L(nd), a, B(autoc)));
    r.push_back(ROW(ippsAutoCorrNorm_64f, B(n1), L(n1), B(nd), L(nd), a, B(autoc)));
    r.push_back(ROW(ippsAutoCorrNorm_64fc, B(n1), L(n1), B(nd), L(nd), a, B(autoc)));
    r.push_back(ROW(ippsCrossCorrNormGetBufferSize, L(n1), L(n2), L(nd), lag, ipp64fc, c, B(1)));
    r.push_back(ROW(ippsCrossCorrNorm_32f, B(n1), L(n1), B(n2), L(n2), B(nd), L(nd), lag, c, B(cross)));
    r.push_back(ROW(ippsCrossCorrNorm_64f, B(n1), L(n1), B(n2), L(n2), B(nd), L(nd), lag, c, B(cross)));
    r.push_back(ROW(ippsCrossCorrNorm_64fc, B(n1), L(n1), B(n2), L(n2), B(nd), L(nd), lag, c, B(cross)));
    return r;
}

// Filters with set-up and state; delay lines may be null.
std::vector<Row> FilterRows()
{
    std::vector<Row> r;
    const int taps = 5, n = 24;
    {
        int spec = 0, buf = 0;
        EXPECT_EQ(ippsFIRSRGetSize(taps, ipp64f, &spec, &buf), ippStsNoErr);
        auto *s = reinterpret_cast<IppsFIRSpec_64f *>(Keep(spec));
        const Ipp64f t[taps] = {1, 2, 3, 2, 1};
        EXPECT_EQ(ippsFIRSRInit_64f(t, taps, ippAlgDirect, s), ippStsNoErr);
        r.push_back(ROW(ippsFIRSRGetSize, L(taps), ipp64f, B(1), B(1)));
        r.push_back(ROW(ippsFIRSRInit_64f, B(taps), L(taps), ippAlgDirect, B(spec)));
        r.push_back(ROW(ippsFIRSR_64f, B(n), B(n), L(n), X(s, spec), B(taps - 1), B(taps - 1), B(buf))
                        .On(4, ippStsNoErr).On(5, ippStsNoErr));
    }
    {
        int buf = 0;
        EXPECT_EQ(ippsFIRGenGetBufferSize(n, &buf), ippStsNoErr);
        r.push_back(ROW(ippsFIRGenGetBufferSize, L(n), B(1)).On(0, ippStsIIRGenOrderErr));
        r.push_back(ROW(ippsFIRGenLowpass_64f, 0.2, B(n), L(n), ippWinHamming, ippTrue, B(buf)));
        r.push_back(ROW(ippsFIRGenHighpass_64f, 0.2, B(n + 1), L(n + 1), ippWinHamming, ippTrue, B(buf)));
        r.push_back(ROW(ippsFIRGenBandpass_64f, 0.1, 0.3, B(n), L(n), ippWinHann, ippTrue, B(buf)));
        r.push_back(ROW(ippsFIRGenBandstop_64f, 0.1, 0.3, B(n + 1), L(n + 1), ippWinHann, ippTrue, B(buf)));
    }
    {
        int bytes = 0;
        EXPECT_EQ(ippsFIRLMSGetStateSize_32f(taps, 0, &bytes), ippStsNoErr);
        IppsFIRLMSState_32f *s = nullptr;
        const Ipp32f t[taps] = {};
        EXPECT_EQ(ippsFIRLMSInit_32f(&s, t, taps, nullptr, 0, Keep(bytes)), ippStsNoErr);
        r.push_back(ROW(ippsFIRLMSGetStateSize_32f, L(taps), 0, B(1)).On(0, ippStsFIRLenErr));
        r.push_back(ROW(ippsFIRLMSInit_32f, B(1), B(taps), L(taps), B(2 * taps), 0, B(bytes))
                        .On(2, ippStsFIRLenErr).On(3, ippStsNoErr));
        r.push_back(ROW(ippsFIRLMS_32f, B(n), B(n), B(n), L(n), 0.01f, X(s, bytes)));
    }
    const int order = 2;
#define ORB_IIR(T)                                                                                        \
    {                                                                                                     \
        int bytes = 0;                                                                                    \
        EXPECT_EQ(ippsIIRGetStateSize_##T(order, &bytes), ippStsNoErr);                                   \
        IppsIIRState_##T *s = nullptr;                                                                    \
        std::vector<Ipp##T> t(2 * order + 2);                                                             \
        DefaultFill<Ipp##T>(t.data(), int(t.size()));                                                     \
        EXPECT_EQ(ippsIIRInit_##T(&s, t.data(), order, nullptr, Keep(bytes)), ippStsNoErr);               \
        r.push_back(ROW(ippsIIRGetStateSize_##T, L(order), B(1)).On(0, ippStsIIROrderErr));              \
        r.push_back(ROW(ippsIIRInit_##T, B(1), B(2 * order + 2), L(order), B(order), B(bytes))           \
                        .On(2, ippStsIIROrderErr).On(3, ippStsNoErr));                                    \
        r.push_back(ROW(ippsIIR_##T, B(n), B(n), L(n), X(s, bytes)));                                     \
    }
    ORB_IIR(32f)
    ORB_IIR(64f)
    ORB_IIR(64fc)
#undef ORB_IIR
    {
        int buf = 0;
        EXPECT_EQ(ippsIIRGenGetBufferSize(order, &buf), ippStsNoErr);
        r.push_back(ROW(ippsIIRGenGetBufferSize, L(order), B(1)).On(0, ippStsIIRGenOrderErr));
        r.push_back(ROW(ippsIIRGenLowpass_64f, 0.2, 0.5, L(order), B(2 * order + 2), ippButterworth, B(buf))
                        .On(2, ippStsIIRGenOrderErr));
        r.push_back(ROW(ippsIIRGenHighpass_64f, 0.2, 0.5, L(order), B(2 * order + 2), ippChebyshev1, B(buf))
                        .On(2, ippStsIIRGenOrderErr));
    }
    {
        const int mask = 3;
        int buf = 0;
        EXPECT_EQ(ippsFilterMedianGetBufferSize(mask, ipp64f, &buf), ippStsNoErr);
        r.push_back(ROW(ippsFilterMedianGetBufferSize, L(mask), ipp64f, B(1)).On(0, ippStsMaskSizeErr));
#define ORB_MEDIAN(fn)                                                          \
    ROW(fn, B(n), B(n), L(n), L(mask), B(mask - 1), B(mask - 1), B(buf)) \
        .On(3, ippStsMaskSizeErr).On(4, ippStsNoErr).On(5, ippStsNoErr)
        r.insert(r.end(), {ORB_MEDIAN(ippsFilterMedian_8u), ORB_MEDIAN(ippsFilterMedian_16s),
                           ORB_MEDIAN(ippsFilterMedian_32s), ORB_MEDIAN(ippsFilterMedian_32f),
                           ORB_MEDIAN(ippsFilterMedian_64f)});
#undef ORB_MEDIAN
    }
    // Random generators: the state from its size query and initialiser.
#define ORB_RAND(Kind, St, T, a, b)                                                                    \
    {                                                                                              \
        int bytes = 0;                                                                             \
        EXPECT_EQ(ipps##Kind##GetSize_##T(&bytes), ippStsNoErr);                                    \
        auto *s = reinterpret_cast<Ipps##St##State_##T *>(Keep(bytes));                           \
        EXPECT_EQ(ipps##Kind##Init_##T(s, a, b, 7), ippStsNoErr);                                   \
        r.push_back(ROW(ipps##Kind##GetSize_##T, B(1)));                                             \
        r.push_back(ROW(ipps##Kind##Init_##T, B(bytes), a, b, 7));                                  \
        r.push_back(ROW(ipps##Kind##_##T, B(n), L(n), X(s, bytes)));                                 \
    }
    ORB_RAND(RandUniform, RandUni, 16s, -5, 5)
    ORB_RAND(RandUniform, RandUni, 32f, -1, 1)
    ORB_RAND(RandUniform, RandUni, 64f, -1, 1)
    ORB_RAND(RandGauss, RandGauss, 16s, 0, 3)
    ORB_RAND(RandGauss, RandGauss, 32f, 0, 1)
    ORB_RAND(RandGauss, RandGauss, 64f, 0, 1)
#undef ORB_RAND
    return r;
}

// Images: a 6x6 ROI with its border or an 8x8 one, steps in bytes.
std::vector<Row> ImageRows()
{
    std::vector<Row> r;
    for (int ch : {1, 3}) {
        const int w = 4 * ch, dw = 6 * ch;
        auto border = [&](auto fn, const char *name, auto... value) {
            return MakeRow(name, fn, B(16 * ch), w * 4, Sz(4, 4), B(36 * ch), dw * 4, Sz(6, 6), 1, 1, value...);
        };
        if (ch == 1) {
            r.push_back(border(ippiCopyReplicateBorder_32f_C1R, "ippiCopyReplicateBorder_32f_C1R"));
            r.push_back(border(ippiCopyMirrorBorder_32f_C1R, "ippiCopyMirrorBorder_32f_C1R"));
            r.push_back(border(ippiCopyConstBorder_32f_C1R, "ippiCopyConstBorder_32f_C1R", 2.0));
        } else {
            r.push_back(border(ippiCopyReplicateBorder_32f_C3R, "ippiCopyReplicateBorder_32f_C3R"));
            r.push_back(border(ippiCopyMirrorBorder_32f_C3R, "ippiCopyMirrorBorder_32f_C3R"));
            r.push_back(border(ippiCopyConstBorder_32f_C3R, "ippiCopyConstBorder_32f_C3R", B(3)));
        }
    }
    // Two-tap filters: the forward's source has a one-pixel border at the
    // left and top; the inverse's subbands none.
    const int lo = 2, hi = 2;
#define ORB_WT(C, ch)                                                                                           \
    {                                                                                                           \
        int fspec = 0, fbuf = 0, ispec = 0, ibuf = 0;                                                           \
        EXPECT_EQ(ippiWTFwdGetSize_32f(ch, lo, 0, hi, 0, &fspec, &fbuf), ippStsNoErr);                          \
        EXPECT_EQ(ippiWTInvGetSize_32f(ch, lo, 0, hi, 0, &ispec, &ibuf), ippStsNoErr);                          \
        auto *f = reinterpret_cast<IppiWTFwdSpec_32f_##C *>(Keep(fspec));                                       \
        auto *i = reinterpret_cast<IppiWTInvSpec_32f_##C *>(Keep(ispec));                                       \
        const Ipp32f tl[2] = {0.5f, 0.5f}, th[2] = {-0.5f, 0.5f};                                               \
        EXPECT_EQ(ippiWTFwdInit_32f_##C(f, tl, lo, 0, th, hi, 0), ippStsNoErr);                                 \
        EXPECT_EQ(ippiWTInvInit_32f_##C(i, tl, lo, 0, th, hi, 0), ippStsNoErr);                                 \
        if (ch == 1) {                                                                                          \
            r.push_back(ROW(ippiWTFwdGetSize_32f, 1, L(lo), 0, L(hi), 0, B(1), B(1)));                          \
            r.push_back(ROW(ippiWTInvGetSize_32f, 1, L(lo), 0, L(hi), 0, B(1), B(1)));                          \
        }                                                                                                       \
        r.push_back(ROW(ippiWTFwdInit_32f_##C, B(fspec), B(lo), L(lo), 0, B(hi), L(hi), 0));                    \
        r.push_back(ROW(ippiWTInvInit_32f_##C, B(ispec), B(lo), L(lo), 0, B(hi), L(hi), 0));                    \
        const int q = 16 * ch, s = 4 * 4 * ch;                                                                  \
        r.push_back(ROW(ippiWTFwd_32f_##C, B(81 * ch, 10 * ch), 9 * 4 * ch, B(q), s, B(q), s, B(q), s, B(q), s, \
                        Sz(4, 4), X(f, fspec), B(std::max(fbuf, 1))));                                          \
        r.push_back(ROW(ippiWTInv_32f_##C, B(q), s, B(q), s, B(q), s, B(q), s, Sz(4, 4), B(64 * ch), 2 * s,     \
                        X(i, ispec), B(std::max(ibuf, 1))));                                                    \
    }
    ORB_WT(C1R, 1)
    ORB_WT(C3R, 3)
#undef ORB_WT
    const IppiSize roi = {8, 8};
    {
        int buf = 0;
        EXPECT_EQ(ippiCannyBorderGetSize(roi, ippFilterSobel, ippMskSize3x3, ipp8u, &buf), ippStsNoErr);
        r.push_back(ROW(ippiCannyBorderGetSize, Sz(8, 8), ippFilterSobel, ippMskSize3x3, ipp8u, B(1)));
        r.push_back(ROW(ippiCannyBorder_8u_C1R, B(64), 8, B(64), 8, Sz(8, 8), ippFilterSobel, ippMskSize3x3,
                        ippBorderRepl, 0, 10.0, 30.0, ippNormL2, B(buf)));
    }
    const IppPointPolar delta = {1, float(kPi / 180)};
    {
        int buf = 0;
        EXPECT_EQ(ippiHoughLineGetSize_8u_C1R(roi, delta, 4, &buf), ippStsNoErr);
        auto region = [](void *p, int) {
            auto *d = static_cast<IppPointPolar *>(p);
            d[0] = IppPointPolar{-12, 0}, d[1] = IppPointPolar{12, float(kPi)};
        };
        r.push_back(ROW(ippiHoughLineGetSize_8u_C1R, Sz(8, 8), V(delta), L(4), B(1)));
        r.push_back(ROW(ippiHoughLine_Region_8u32f_C1R, B(64), 8, Sz(8, 8), B(4), B(2, 0, region), L(4), B(1),
                        V(delta), 2, B(buf)).Base(ippStsDstSizeLessExpected));  // more lines than asked for
    }
    {
        int spec = 0, buf = 0;
        EXPECT_EQ(ippiHoughProbLineGetSize_8u_C1R(roi, delta, &spec, &buf), ippStsNoErr);
        auto *s = reinterpret_cast<IppiHoughProbSpec *>(Keep(spec));
        EXPECT_EQ(ippiHoughProbLineInit_8u32f_C1R(roi, delta, ippAlgHintNone, s), ippStsNoErr);
        r.push_back(ROW(ippiHoughProbLineGetSize_8u_C1R, Sz(8, 8), V(delta), B(1), B(1)));
        r.push_back(ROW(ippiHoughProbLineInit_8u32f_C1R, Sz(8, 8), V(delta), ippAlgHintNone, B(spec)));
        r.push_back(ROW(ippiHoughProbLine_8u32f_C1R, B(64), 8, Sz(8, 8), 2, 2, 1, B(8), L(4), B(1), B(buf),
                        X(s, spec)));
    }
    return r;
}

}  // namespace

TEST(Contract, TransformEntryPoints)
{
    for (const Row &r : TransformRows()) Sweep(r);
}
TEST(Contract, ConvolutionEntryPoints)
{
    for (const Row &r : ConvolutionRows()) Sweep(r);
}
TEST(Contract, FilterEntryPoints)
{
    for (const Row &r : FilterRows()) Sweep(r);
}
TEST(Contract, ImageEntryPoints)
{
    for (const Row &r : ImageRows()) Sweep(r);
}

namespace {

// Values -5 .. 5 in an order of their own for each buffer, so that mixing
// up two arrays shows.
template <class T>
std::function<void(void *, int)> Mixed(int seed)
{
    return [seed](void *p, int n) {
        for (int k = 0; k < n; ++k) {
            const int v = (k * 7 + seed * 5) % 11 - 5, w = (k * 3 + seed) % 7 - 3;
            if constexpr (std::is_same_v<T, Ipp64fc>) static_cast<T *>(p)[k] = {double(v), double(w)};
            else static_cast<T *>(p)[k] = T(v);
        }
    };
}

// The entry points that may write over their source: each pair (source,
// destination) aliased gives the destination's bytes of the call apart.
struct InPlaceRow {
    Row row;
    std::vector<std::pair<int, int>> pairs;
};

void CheckInPlace(const InPlaceRow &x)
{
    const Row &r = x.row;
    SCOPED_TRACE(r.name);
    Buffers b(r);
    b.Reset(r);
    std::vector<Slot> s = Slots(r, b);
    const IppStatus apart = r.call(s);
    const std::vector<std::vector<unsigned char>> want = b.raw;
    b.Reset(r);
    for (auto [src, dst] : x.pairs) {
        memcpy(b.at[dst], b.at[src], b.len[src]);
        s[src].p = s[dst].p;
    }
    EXPECT_EQ(r.call(s), apart);
    calls += 2;
    for (auto [src, dst] : x.pairs) EXPECT_TRUE(b.raw[dst] == want[dst]) << "argument " << dst;
}

std::vector<InPlaceRow> InPlaceRows()
{
    std::vector<InPlaceRow> v;
    const int n = 8;
#define ORB_FT(K, F, T, E, S, N)                                                                                     \
    {                                                                                                             \
        const Made m = K<S>(ipps##F##GetSize_C_##T, ipps##F##Init_C_##T, N);                                     \
        if constexpr (std::is_same_v<E, Ipp64fc>) {                                                               \
            v.push_back({ROW(ipps##F##Fwd_CToC_##T, B(n, 0, Mixed<E>(0)), B(n), X(m.p, m.bytes), B(1)), {{0, 1}}}); \
            v.push_back({ROW(ipps##F##Inv_CToC_##T, B(n, 0, Mixed<E>(0)), B(n), X(m.p, m.bytes), B(1)), {{0, 1}}}); \
        } else {                                                                                                  \
            v.push_back({ROW(ipps##F##Fwd_CToC_##T, B(n, 0, Mixed<E>(0)), B(n, 0, Mixed<E>(1)), B(n), B(n),       \
                             X(m.p, m.bytes), B(std::max(m.buf, 1))), {{0, 2}, {1, 3}}});                         \
            v.push_back({ROW(ipps##F##Inv_CToC_##T, B(n, 0, Mixed<E>(0)), B(n, 0, Mixed<E>(1)), B(n), B(n),       \
                             X(m.p, m.bytes), B(std::max(m.buf, 1))), {{0, 2}, {1, 3}}});                         \
        }                                                                                                         \
    }
    ORB_FT(Dft, DFT, 64fc, Ipp64fc, IppsDFTSpec_C_64fc, n)
    ORB_FT(Dft, DFT, 64f, Ipp64f, IppsDFTSpec_C_64f, n)
    ORB_FT(Dft, DFT, 32f, Ipp32f, IppsDFTSpec_C_32f, n)
    ORB_FT(Fft, FFT, 64fc, Ipp64fc, IppsFFTSpec_C_64fc, 3)
    ORB_FT(Fft, FFT, 64f, Ipp64f, IppsFFTSpec_C_64f, 3)
    ORB_FT(Fft, FFT, 32f, Ipp32f, IppsFFTSpec_C_32f, 3)
#undef ORB_FT
    for (int len : {1, 2, 37}) {
        v.push_back({ROW(ippsFlip_8u, B(len, 0, Mixed<Ipp8u>(0)), B(len), L(len)), {{0, 1}}});
        v.push_back({ROW(ippsFlip_16u, B(len, 0, Mixed<Ipp16u>(0)), B(len), L(len)), {{0, 1}}});
        v.push_back({ROW(ippsFlip_32f, B(len, 0, Mixed<Ipp32f>(0)), B(len), L(len)), {{0, 1}}});
        v.push_back({ROW(ippsFlip_64f, B(len, 0, Mixed<Ipp64f>(0)), B(len), L(len)), {{0, 1}}});
        v.push_back({ROW(ippsFlip_64fc, B(len, 0, Mixed<Ipp64fc>(0)), B(len), L(len)), {{0, 1}}});
    }
    return v;
}

// Entry points without pointer or length arguments, and the allocators,
// checked on their own below.
const char *const kOwnChecks[] = {
    "ippsGetLibVersion", "ippInit", "ippGetStatusString", "ippGetEnabledCpuFeatures", "ippsMalloc_8u",
    "ippsMalloc_32f", "ippsMalloc_32fc", "ippsMalloc_64f", "ippsFree", "ippiMalloc_32f_C1", "ippiMalloc_32f_C3",
    "ippiFree",
};

}  // namespace

// The Hough step sizes size the accumulator: a step of zero, below zero,
// not a number or too fine for the accumulator's count is refused, or else
// gives sizes; a refusal writes none.
TEST(Contract, HoughStepsSizeOrRefuse)
{
    const float nan = NAN, fine = 1e-30f;
    for (IppPointPolar d : {IppPointPolar{0, 0.1f}, IppPointPolar{1, 0}, IppPointPolar{-1, 0.1f},
                            IppPointPolar{1, -0.1f}, IppPointPolar{nan, 0.1f}, IppPointPolar{1, nan},
                            IppPointPolar{fine, 0.1f}, IppPointPolar{1, fine}, IppPointPolar{INFINITY, INFINITY}}) {
        for (IppiSize roi : {IppiSize{8, 8}, IppiSize{INT_MAX, INT_MAX}}) {
            SCOPED_TRACE(::testing::Message() << d.rho << ", " << d.theta << " on " << roi.width);
            int buf = -7, spec = -7;
            IppStatus st = ippiHoughLineGetSize_8u_C1R(roi, d, 4, &buf);
            EXPECT_TRUE(st >= 0 ? buf >= 0 : buf == -7) << st << " " << buf;
            buf = -7;
            st = ippiHoughProbLineGetSize_8u_C1R(roi, d, &spec, &buf);
            EXPECT_TRUE(st >= 0 ? buf >= 0 && spec >= 0 : buf == -7 && spec == -7) << st << " " << spec << " " << buf;
        }
    }
}

TEST(Contract, InPlaceAsApart)
{
    for (const InPlaceRow &x : InPlaceRows()) CheckInPlace(x);
}

// Moves over overlapping ranges, both ways, as memmove.
TEST(Contract, MovesOverlapAsMemmove)
{
    const auto check = [](auto fn, auto t) {
        using T = decltype(t);
        for (int shift : {-5, -1, 1, 5})
            for (int len : {1, 7, 40}) {
                std::vector<T> v(64), want;
                Mixed<T>(shift + 7)(v.data(), 64);
                want = v;
                T *src = v.data() + 10, *dst = src + shift;
                memmove(want.data() + 10 + shift, want.data() + 10, len * sizeof(T));
                EXPECT_EQ(fn(src, dst, len), ippStsNoErr);
                EXPECT_EQ(memcmp(v.data(), want.data(), v.size() * sizeof(T)), 0) << shift << " " << len;
            }
    };
    check(ippsMove_16s, Ipp16s());
    check(ippsMove_32s, Ipp32s());
    check(ippsMove_64s, Ipp64s());
    check(ippsMove_32f, Ipp32f());
    check(ippsMove_64f, Ipp64f());
    check(ippsMove_64fc, Ipp64fc());
}

TEST(Contract, AllocatorsRefuseSizesBelowOne)
{
    const int64_t live = orbBackendLiveAllocations();
    for (int bad : {0, -1, INT_MIN}) {
        EXPECT_EQ(ippsMalloc_8u(bad), nullptr) << bad;
        EXPECT_EQ(ippsMalloc_32f(bad), nullptr) << bad;
        EXPECT_EQ(ippsMalloc_32fc(bad), nullptr) << bad;
        EXPECT_EQ(ippsMalloc_64f(bad), nullptr) << bad;
        for (auto fn : {ippiMalloc_32f_C1, ippiMalloc_32f_C3}) {
            int step = -7;
            EXPECT_EQ(fn(bad, 4, &step), nullptr) << bad;
            EXPECT_EQ(fn(4, bad, &step), nullptr) << bad;
        }
    }
    int step = 0;
    // Sizes whose byte counts overflow int or size_t arithmetic.
    EXPECT_EQ(ippiMalloc_32f_C3(INT_MAX, INT_MAX, &step), nullptr);
    EXPECT_EQ(ippiMalloc_32f_C1(INT_MAX, 2, &step), nullptr);
    Ipp32f *img = ippiMalloc_32f_C3(5, 3, &step);
    ASSERT_NE(img, nullptr);
    EXPECT_GE(step, 5 * 3 * 4);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(img) % 64, 0u);
    ippiFree(img);
    Ipp64f *v = ippsMalloc_64f(1);
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(v) % 64, 0u);
    ippsFree(v);
    ippsFree(nullptr);
    ippiFree(nullptr);
    EXPECT_EQ(orbBackendLiveAllocations(), live);
}

TEST(Contract, CoreEntryPointsTakeAnything)
{
    EXPECT_EQ(ippInit(), ippStsNoErr);
    EXPECT_EQ(ippInit(), ippStsNoErr);
    ASSERT_NE(ippsGetLibVersion(), nullptr);
    EXPECT_NE(ippsGetLibVersion()->Version, nullptr);
    EXPECT_EQ(ippGetEnabledCpuFeatures(), ippGetEnabledCpuFeatures());
    for (int code : {INT_MIN, -100000, -1, 0, 1, 100000, INT_MAX}) EXPECT_NE(ippGetStatusString(code), nullptr) << code;
}

TEST(Contract, EveryDeclarationHasARow)
{
    std::vector<std::string> rows(std::begin(kOwnChecks), std::end(kOwnChecks));
    for (auto table : {SignalRows, TransformRows, ConvolutionRows, FilterRows, ImageRows})
        for (const Row &r : table()) rows.push_back(r.name);
    const std::set<std::string> declared(Declared().begin(), Declared().end()), have(rows.begin(), rows.end());
    EXPECT_EQ(declared.size(), Declared().size()) << "a name declared twice";
    EXPECT_EQ(have.size(), rows.size()) << "a name with two rows";
    for (const std::string &d : declared) EXPECT_TRUE(have.count(d)) << d << " has no contract row";
    for (const std::string &h : have) EXPECT_TRUE(declared.count(h)) << h << " is declared nowhere";
    EXPECT_GT(declared.size(), 200u);
    ::testing::Test::RecordProperty("declarations", int(declared.size()));
    ::testing::Test::RecordProperty("checked_calls", int(calls));
}
