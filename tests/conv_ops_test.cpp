// The sliding product-sum exports: the index rule and the reversal, every
// datatype path of two rtables (the native ones bit for bit against the
// sequential rule), symbolic results in the host's printed forms, lists with
// rtables, the copied settings code, and the messages in their order.
#include <gtest/gtest.h>

#include <hwy/targets.h>

#include <random>

#include "support.h"

using namespace orbtest;

namespace {

std::vector<double> elems(Host &h, Value rt) { return contents<double>(h, rt); }

TEST(ConvOps, IndexRuleAndReversal)
{
    Host h;
    Value a = float8(h, {1, 2, 3});
    struct {
        D b, conv, corr;
    } rows[] = {{{1, 1, 1, 1}, {6, 6}, {6, 6}}, {{1, 2, 3, 4}, {14, 20}, {10, 16}}, {{4, 5, 6}, {32}, {28}}};
    for (const auto &row : rows) {
        Value b = float8(h, row.b);
        CallResult c = h.call(orbConv, {a, b, h.integer(7)});  // extra arguments are ignored
        CallResult r = h.call(orbCorr, {a, b});
        ASSERT_FALSE(c.raised || r.raised) << c.error << r.error;
        EXPECT_EQ(h.rtableInfo(c.result).datatype, DT_FLOAT8);
        EXPECT_EQ(h.rtableInfo(c.result).bounds[0], std::make_pair(int64_t(1), int64_t(row.conv.size())));
        EXPECT_EQ(elems(h, c.result), row.conv);
        EXPECT_EQ(elems(h, r.result), row.corr);
    }
}

// The sequential rule: each output from 0, products added for j = 1..na.
template <typename T>
std::vector<T> sequential(const std::vector<T> &a, const std::vector<T> &b, bool rev)
{
    std::vector<T> out(b.size() - a.size() + 1);
    for (size_t i = 0; i < out.size(); ++i) {
        T s{};
        for (size_t j = 0; j < a.size(); ++j) {
            const T &x = a[rev ? a.size() - 1 - j : j], &y = b[i + j];
            if constexpr (std::is_same_v<T, Ipp64fc>) {
                s.re += x.re * y.re - x.im * y.im;
                s.im += x.re * y.im + x.im * y.re;
            } else {
                s += x * y;
            }
        }
        out[i] = s;
    }
    return out;
}

// Magnitudes over forty binades, so that any other order of additions
// shows in the last bits.
template <typename T>
std::vector<T> spread(size_t n, std::mt19937_64 &rng)
{
    std::uniform_real_distribution<double> u(-1, 1);
    std::uniform_int_distribution<int> e(-20, 20);
    std::vector<T> v(n);
    for (T &x : v) {
        if constexpr (std::is_same_v<T, Ipp64fc>) x = {std::ldexp(u(rng), e(rng)), std::ldexp(u(rng), e(rng))};
        else x = T(std::ldexp(u(rng), e(rng)));
    }
    return v;
}

template <typename T>
void nativeMatchesSequential(int32_t code)
{
    Host h;
    std::mt19937_64 rng(code);
    for (size_t na : {0, 1, 2, 3, 7, 8, 17})
        for (size_t extra : {0, 1, 5, 15, 16, 17, 31, 63, 64, 65, 200}) {
            auto a = spread<T>(na, rng), b = spread<T>(na + extra, rng);
            for (bool rev : {false, true}) {
                CallResult r = h.call(rev ? orbCorr : orbConv, {table(h, code, a), table(h, code, b)});
                ASSERT_FALSE(r.raised) << r.error;
                ASSERT_EQ(h.rtableInfo(r.result).datatype, code);
                auto want = sequential(a, b, rev);
                auto got = contents<T>(h, r.result);
                ASSERT_EQ(got.size(), want.size());
                EXPECT_EQ(0, std::memcmp(got.data(), want.data(), want.size() * sizeof(T)))
                    << "code " << code << " na " << na << " nb " << na + extra << " rev " << rev;
            }
        }
}

// On every instruction set the machine has: the ones with fused
// multiply-add must not fuse.
TEST(ConvOps, NativeLoopsMatchTheSequentialRuleBitForBit)
{
    for (int64_t target : hwy::SupportedAndGeneratedTargets()) {
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        SCOPED_TRACE(hwy::TargetName(target));
        nativeMatchesSequential<double>(DT_FLOAT8);
        nativeMatchesSequential<float>(DT_FLOAT4);
        nativeMatchesSequential<Ipp64fc>(DT_COMPLEX8);
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

template <typename I>
void wrapsInItsWidth(int32_t code)
{
    Host h;
    std::mt19937_64 rng(code);
    std::vector<I> a(4), b(9);
    for (I &x : a) x = I(rng());
    for (I &x : b) x = I(rng());
    for (bool rev : {false, true}) {
        CallResult r = h.call(rev ? orbCorr : orbConv, {table(h, code, a), table(h, code, b)});
        ASSERT_FALSE(r.raised) << r.error;
        ASSERT_EQ(h.rtableInfo(r.result).datatype, code);
        std::vector<I> want(6);
        for (size_t i = 0; i < want.size(); ++i) {
            using U = std::make_unsigned_t<I>;
            U s = 0;
            for (size_t j = 0; j < a.size(); ++j)  // in 64 bits: narrow unsigned products promote to int
                s = U(s + U(uint64_t(U(a[rev ? 3 - j : j])) * U(b[i + j])));
            want[i] = I(s);
        }
        EXPECT_EQ(contents<I>(h, r.result), want) << "code " << code << " rev " << rev;
    }
}

TEST(ConvOps, IntegersWrapAroundInEachWidth)
{
    Host h;
    CallResult r = h.call(orbConv, {table<int8_t>(h, DT_INT1, {100, 100}), table<int8_t>(h, DT_INT1, {1, 2, 3})});
    EXPECT_EQ(contents<int8_t>(h, r.result), (std::vector<int8_t>{44, -12}));
    wrapsInItsWidth<int8_t>(DT_INT1);
    wrapsInItsWidth<int16_t>(DT_INT2);
    wrapsInItsWidth<int32_t>(DT_INT4);
    wrapsInItsWidth<int64_t>(DT_INT8);
}

TEST(ConvOps, SymbolicSumsOfProducts)
{
    Host h;
    Value x = h.name("x"), y = h.name("y"), p = h.name("p"), q = h.name("q"), r = h.name("r"), s = h.name("s");
    Value xy = h.list({x, y}), pqr = h.list({p, q, r});
    struct {
        ExportFn fn;
        std::vector<Value> args;
        const char *printed;
    } rows[] = {
        {orbConv, {xy, pqr}, "[x*p + y*q, x*q + y*r]"},
        {orbCorr, {xy, pqr}, "[y*p + x*q, y*q + x*r]"},
        {orbConv, {h.list({}), h.list({p, q})}, "[0, 0, 0]"},
        // Lists with rtables give lists, the elements converted.
        {orbConv, {xy, table<int32_t>(h, DT_INT4, {2, 3, 5})}, "[2*x + 3*y, 3*x + 5*y]"},
        {orbCorr, {table<int32_t>(h, DT_INT4, {2, 3}), pqr}, "[3*p + 2*q, 3*q + 2*r]"},
        // Rtables of host values give an rtable of the host's sums.
        {orbConv, {table(h, DT_ANYTHING, std::vector<Value>{x, y}), table(h, DT_ANYTHING, std::vector<Value>{p, q, r})},
         "rtable(anything, 1..2, [x*p + y*q, x*q + y*r])"},
        // Pairs: re = x p - y q, im = x q + y p.
        {orbConv, {h.rtable1(DT_PAIR, 1, std::vector<Value>{x, y}.data()),
                   h.rtable1(DT_PAIR, 2, std::vector<Value>{p, q, r, s}.data())},
         "rtable(complex(anything), 1..2, [x*p - y*q+x*q + y*p*I, x*r - y*s+x*s + y*r*I])"},
    };
    for (const auto &row : rows) {
        CallResult res = h.call(row.fn, row.args);
        ASSERT_FALSE(res.raised) << res.error;
        EXPECT_EQ(h.print(res.result), row.printed);
    }
}

TEST(ConvOps, MixedDatatypesUseTheRawElements)
{
    Host h;
    CallResult r = h.call(orbConv, {float8(h, {1.5}), table<int32_t>(h, DT_INT4, {2, 4})});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(h.rtableInfo(r.result).datatype, DT_ANYTHING);
    EXPECT_EQ(h.print(r.result), "rtable(anything, 1..2, [<0x3ff8000000000000>*<0x2>, <0x3ff8000000000000>*<0x4>])");
}

// The settings code at byte 16 comes from the first rtable when both have
// one, else it is 0.
TEST(ConvOps, CopiesTheSettingsCode)
{
    Host h;
    auto create = reinterpret_cast<Value (*)(orbhost::Settings *, void *, const int64_t *)>(h.callbacks()[55]);
    auto settings = reinterpret_cast<void (*)(orbhost::Settings *, Value)>(h.callbacks()[58]);
    auto withCode = [&](int32_t code, int64_t n) {
        orbhost::Settings s;
        std::memset(&s, 0, sizeof s);
        s.datatype = DT_FLOAT8, s.uninterpreted = code, s.storage = orbhost::kRectangular, s.numDims = 1;
        int64_t bounds[2] = {1, n};
        return create(&s, nullptr, bounds);
    };
    for (auto [ca, cb, want] : {std::array<int32_t, 3>{7, 9, 7}, {7, 0, 0}, {0, 9, 0}}) {
        CallResult r = h.call(orbConv, {withCode(ca, 2), withCode(cb, 3)});
        orbhost::Settings s;
        settings(&s, r.result);
        EXPECT_EQ(s.uninterpreted, want) << ca << " " << cb;
    }
}

TEST(ConvOps, MessagesInOrder)
{
    Host h;
    Value a3 = float8(h, {1, 2, 3}), a4 = float8(h, {1, 2, 3, 4}), flat6 = h.rtable(DT_FLOAT8, {{1, 2}, {1, 3}});
    Value l1 = h.list({h.name("x")});
    struct {
        std::vector<Value> args;
        const char *error;
    } rows[] = {
        {{}, "expecting two arguments, but received 0"},
        {{a3}, "expecting two arguments, but received 1"},
        {{h.integer(3), a3}, "arguments must be either lists or one-dimensional rtables"},
        {{a3, h.name("s")}, "arguments must be either lists or one-dimensional rtables"},
        {{a4, a3}, "first argument must have no more elements than the second"},
        {{h.list({h.name("x"), h.name("y")}), float8(h, {1})}, "first argument must have no more elements than the second"},
        {{flat6, a4}, "first argument must have no more elements than the second"},  // the count comes first
        {{a3, flat6}, "arguments must be one-dimensional"},
        {{l1, flat6}, "rtable arguments must be one-dimensional"},
        {{a3, h.list({h.name("x"), h.name("y"), h.name("z")})}, ""},
    };
    for (const auto &row : rows)
        for (ExportFn fn : {orbConv, orbCorr})
            EXPECT_EQ(h.call(fn, row.args).error, row.error);
    // The list result is taken before the rtable's shape is judged.
    h.resetCallbackCounts();
    h.call(orbConv, {l1, flat6});
    EXPECT_EQ(h.callbackCalls(30), 1);
}

}  // namespace
