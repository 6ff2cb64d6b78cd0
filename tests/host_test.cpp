// The stand-in host, driven the way the library drives it: through the raw
// callback table, with function signatures and record offsets written here
// from the interface's description rather than taken from either side.
#include "host.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

using namespace orbhost;

namespace {

using V = uint64_t;
struct Cell {
    int64_t w0, w1;
};
struct C32 {
    float re, im;
};
struct C64 {
    double re, im;
};

// The callback at a position, as a function of signature Sig.
template <typename Sig>
Sig *cb(void *const *table, int position) { return reinterpret_cast<Sig *>(table[position]); }

using TestFn = int64_t(V);
using ErrorFn = void(const char *, ...);
using FinishFn = V(V *);
using FromIntFn = V(int64_t);
using PrintfFn = void(const char *, ...);

// Fields of the 104-byte settings record by byte offset.
int32_t field(const unsigned char *rec, int offset) {
    int32_t x;
    std::memcpy(&x, rec + offset, 4);
    return x;
}
void setField(unsigned char *rec, int offset, int32_t x) { std::memcpy(rec + offset, &x, 4); }

uint64_t header(V v) { return *reinterpret_cast<const uint64_t *>(v); }
uint32_t lengthOf(V v) { return uint32_t(header(v)); }
uint32_t kindIn(V v) { return uint32_t(header(v) >> 32) & 63u; }

class HostTest : public ::testing::Test {
protected:
    Host h;
    void *const *t = h.callbacks();
};

using HostValues = HostTest;

TEST_F(HostValues, IntegersAreImmediateUntilTheyNeedABox) {
    EXPECT_EQ(h.integer(0), 1u);
    EXPECT_EQ(h.integer(1), 3u);
    EXPECT_EQ(h.integer(-1), ~uint64_t(0));
    const int64_t edge = int64_t(1) << 62, lo = std::numeric_limits<int64_t>::min(), hi = -(lo + 1);
    for (int64_t k : {edge - 1, -edge, edge, -edge - 1, hi, lo})
        for (V v : {cb<FromIntFn>(t, 91)(k), cb<FromIntFn>(t, 92)(k)}) {
            EXPECT_EQ(cb<int64_t(V)>(t, 45)(v), k);
            EXPECT_EQ(cb<int64_t(V)>(t, 43)(v), k);
            EXPECT_EQ(Host::isImmediate(v), k >= -edge && k < edge) << k;
            EXPECT_TRUE(cb<TestFn>(t, 18)(v)) << k;
            EXPECT_EQ(h.print(v), std::to_string(k));
        }
    EXPECT_EQ((std::vector<uint32_t>{Host::kindOf(h.integer(-5)), Host::kindOf(h.integer(lo)), Host::kindOf(h.integer(hi))}),
              (std::vector<uint32_t>{1, 1, 2}));

    // Range tests at both ends; narrowing keeps the low bits.
    const struct { int position; int64_t lo, hi; } ranges[] = {
        {15, INT8_MIN, INT8_MAX}, {16, INT16_MIN, INT16_MAX}, {17, INT32_MIN, INT32_MAX}};
    for (auto r : ranges) {
        auto test = cb<TestFn>(t, r.position);
        EXPECT_TRUE(test(h.integer(r.lo)) && test(h.integer(r.hi))) << r.position;
        EXPECT_FALSE(test(h.integer(r.lo - 1)) || test(h.integer(r.hi + 1)) || test(h.float64(1.0))) << r.position;
    }
    EXPECT_EQ(cb<int8_t(V)>(t, 40)(h.integer(200)), int8_t(-56));
    EXPECT_EQ(cb<int16_t(V)>(t, 41)(h.integer(-32768)), int16_t(-32768));
    EXPECT_EQ(cb<int32_t(V)>(t, 42)(h.integer(int64_t(1) << 32 | 7)), 7);
    EXPECT_FLOAT_EQ(cb<float(V)>(t, 38)(h.float64(0.1)), 0.1f);
    EXPECT_EQ(cb<double(V)>(t, 39)(h.integer(-7)), -7.0);
    EXPECT_EQ(h.print(cb<V(double)>(t, 93)(-2.5)), "-2.5");
}

TEST_F(HostValues, KindTestsAndConversions) {
    V i = h.integer(2), f = h.float64(2.5), z = h.complex(1, 2), s = h.string("s"), n = h.name("x");
    V rt = h.rtable1(6, 2);
    auto test = [&](int position, V v) { return cb<TestFn>(t, position)(v); };
    EXPECT_TRUE(test(21, i) && test(21, f) && !test(21, z) && !test(21, s));              // numeric
    EXPECT_TRUE(test(13, i) && test(13, f) && test(13, z) && !test(13, n) && !test(13, rt));  // complex numeric
    EXPECT_TRUE(test(14, i) && !test(14, f));
    EXPECT_TRUE(test(20, s) && !test(20, n));
    EXPECT_TRUE(test(26, n) && !test(26, s));
    EXPECT_TRUE(test(25, rt) && !test(25, i) && !test(25, s));

    // Complex conversions return in their registers, from any number.
    auto c32 = cb<C32(V)>(t, 35);
    auto c64 = cb<C64(V)>(t, 36);
    C32 a = c32(h.complex(1.5, -2.25)), b = c32(h.integer(-3));
    EXPECT_TRUE(a.re == 1.5f && a.im == -2.25f && b.re == -3.0f && b.im == 0.0f);
    C64 c = c64(cb<V(double, double)>(t, 87)(0.1, -1e300)), d = c64(h.float64(4.5));
    EXPECT_TRUE(c.re == 0.1 && c.im == -1e300 && d.re == 4.5 && d.im == 0.0);

    // The library's fallbacks convert after a failed test: no crash, zeros.
    auto toString = cb<const char *(V)>(t, 47);
    EXPECT_EQ(cb<double(V)>(t, 39)(s), 0.0);
    EXPECT_EQ(cb<double(V)>(t, 39)(z), 0.0);
    EXPECT_EQ(cb<int64_t(V)>(t, 45)(f), 0);
    EXPECT_EQ(cb<int8_t(V)>(t, 40)(rt), 0);
    EXPECT_STREQ(toString(i), "");
    c = c64(n);
    EXPECT_TRUE(c.re == 0.0 && c.im == 0.0);
    // A word that is no object of this host (a raw element) is not dereferenced.
    V raw = 0x3ff0000000000000u;
    EXPECT_FALSE(test(21, raw) || test(25, raw) || test(20, raw));
    EXPECT_EQ(h.print(raw), "<0x3ff0000000000000>");

    // Strings are copied.
    char buf[] = "hello";
    V copied = cb<V(const char *)>(t, 99)(buf);
    buf[0] = 'j';
    EXPECT_STREQ(toString(copied), "hello");
    EXPECT_STREQ(toString(h.name("exactly8")), "exactly8");
    EXPECT_STREQ(toString(cb<V(const char *)>(t, 99)("")), "");
}

TEST_F(HostValues, ListsAndSequences) {
    V *l = cb<V *(int64_t)>(t, 30)(3);
    for (int64_t i = 1; i <= 3; ++i) cb<void(V *, int64_t, V)>(t, 31)(l, i, h.integer(10 * i));
    V list = cb<FinishFn>(t, 79)(l);
    EXPECT_EQ(kindIn(list), 32u);
    V seq = reinterpret_cast<V *>(list)[1];
    ASSERT_EQ(lengthOf(seq), 4u);
    EXPECT_EQ(reinterpret_cast<V *>(seq)[3], h.integer(30));
    EXPECT_EQ(h.print(list), "[10, 20, 30]");
    V empty = cb<FinishFn>(t, 79)(cb<V *(int64_t)>(t, 30)(0));
    EXPECT_EQ(lengthOf(reinterpret_cast<V *>(empty)[1]), 1u);
    EXPECT_EQ(h.print(empty), "[]");
    EXPECT_EQ(h.elements(h.list({h.name("a"), h.integer(1)})).size(), 2u);

    V *s = cb<V *(int64_t)>(t, 89)(2);
    EXPECT_EQ(header(V(s)), uint64_t(kExprSeq) << 32 | 3u);
    s[1] = h.integer(4), s[2] = h.name("y");
    EXPECT_EQ(h.print(V(s)), "4, y");
    auto seqOf = cb<V(int64_t, ...)>(t, 90);
    EXPECT_EQ(h.print(seqOf(int64_t(3), h.integer(1), h.float64(2), h.string("c"))), "1, 2.0, \"c\"");
    V x = h.name("x"), null = cb<V()>(t, 95)();
    EXPECT_EQ(seqOf(int64_t(1), x), x);
    EXPECT_EQ(seqOf(int64_t(0)), null);
    EXPECT_EQ(lengthOf(null), 1u);
    EXPECT_EQ(h.print(null), "NULL");
}

// Raw sums and products as the library builds them, then finished.
TEST_F(HostValues, FinishingFoldsNumbersAndDropsZeros) {
    auto raw = [&](int kind, V a, V ca, V b, V cb2) {
        V *o = cb<V *(int64_t, int64_t)>(t, 1)(5, kind);
        EXPECT_EQ(header(V(o)), (uint64_t(kind) << 32) | 5u);
        o[1] = a, o[2] = ca, o[3] = b, o[4] = cb2;
        return cb<FinishFn>(t, 79)(o);
    };
    const V one = 3, minusOne = ~V(0);
    V x = h.name("x"), y = h.name("y"), xy = raw(14, x, one, y, one);
    EXPECT_EQ(h.print(xy), "x*y");
    EXPECT_EQ(raw(16, h.integer(0), one, xy, one), xy);
    EXPECT_EQ(h.print(raw(16, x, one, y, minusOne)), "x - y");
    EXPECT_EQ(h.print(raw(14, h.integer(2), one, h.integer(-3), one)), "-6");
    EXPECT_EQ(h.print(raw(16, h.integer(2), one, h.float64(1.5), minusOne)), "0.5");
    EXPECT_EQ(h.print(raw(14, h.complex(0, 1), one, h.complex(0, 1), one)), "-1.0+0.0i");
    EXPECT_EQ(h.print(raw(14, h.integer(int64_t(1) << 62), one, h.integer(4), one)), "1.8446744073709552e+19");
    // Raw elements handed over as values stay opaque operands.
    EXPECT_EQ(h.print(raw(14, 0x3ff0000000000000u, one, 0x4000000000000000u, one)),
              "<0x3ff0000000000000>*<0x4000000000000000>");
    // A running sum stays flat: ((0 + x*y) + y*x) + 2*3.
    V acc = raw(16, h.integer(0), one, xy, one);
    acc = raw(16, acc, one, raw(14, y, one, x, one), one);
    acc = raw(16, acc, one, raw(14, h.integer(2), one, h.integer(3), one), one);
    EXPECT_EQ(h.print(acc), "x*y + y*x + 6");
    EXPECT_EQ(lengthOf(acc), 7u);
}

TEST_F(HostValues, PrintedForms) {
    for (double d : {0.1, 1.0 / 3, 1e300, 5e-324, 1e16, 123456789.0, -2.5e-10, 1e22}) {
        std::string s = h.print(h.float64(d));
        EXPECT_EQ(std::strtod(s.c_str(), nullptr), d) << s;
        EXPECT_NE(s.find_first_of(".e"), std::string::npos) << s;
    }
    EXPECT_NE(h.print(h.float64(NAN)).find("nan"), std::string::npos);
    double d[] = {1.0, 2.5, -3.0}, z[] = {1, -1};
    float f[] = {0.1f, -2.0f};
    int32_t ints[12];
    for (int i = 0; i < 12; ++i) ints[i] = i - 2;
    V pair[] = {h.integer(1), h.name("y")};
    EXPECT_EQ(h.print(h.float64(1.0)), "1.0");
    EXPECT_EQ(h.print(h.float64(-0.0)), "-0.0");
    EXPECT_EQ(h.print(h.float64(INFINITY)), "inf");
    EXPECT_EQ(h.print(h.float64(-INFINITY)), "-inf");
    EXPECT_EQ(h.print(h.complex(1, -2)), "1.0-2.0i");
    EXPECT_EQ(h.print(h.complex(0.5, 0)), "0.5+0.0i");
    EXPECT_EQ(h.print(h.string("a\"b")), "\"a\\\"b\"");
    EXPECT_EQ(h.print(h.list({h.integer(1), h.string("s"), h.list({})})), "[1, \"s\", []]");
    EXPECT_EQ(h.print(h.exprseq({h.integer(1), h.integer(2)})), "1, 2");
    EXPECT_EQ(h.print(h.sum(h.name("a"), 2, h.product(h.name("b"), 1, h.name("c"), -1), -1)), "2*a - b*c^(-1)");
    EXPECT_EQ(h.print(h.rtable1(6, 3, d)), "rtable(float[8], 1..3, [1.0, 2.5, -3.0])");
    EXPECT_EQ(h.print(h.rtable1(4, 12, ints)), "rtable(integer[4], 1..12, [-2, -1, 0, 1, 2, 3, 4, 5, 6, 7, ...])");
    EXPECT_EQ(h.print(h.rtable(2, {{1, 2}, {0, 2}}, "\x01\x02\x03\x04\x05\xff")),
              "rtable(integer[1], 1..2, 0..2, [1, 2, 3, 4, 5, -1])");
    EXPECT_EQ(h.print(h.rtable1(8, 2, f)), "rtable(float[4], 1..2, [0.1, -2.0])");
    EXPECT_EQ(h.print(h.rtable1(7, 1, z)), "rtable(complex[8], 1..1, [1.0-1.0i])");
    EXPECT_EQ(h.print(h.rtable1(0, 2)), "rtable(anything, 1..2, [0, 0])");
    EXPECT_EQ(h.print(h.rtable1(1, 1, pair)), "rtable(complex(anything), 1..1, [1+y*I])");
    EXPECT_EQ(h.print(h.rtable1(5, 0)), "rtable(integer[8], 1..0, [])");
    EXPECT_EQ(h.messageForm(h.string("bare")), "bare");
}

using HostRTable = HostTest;

TEST_F(HostRTable, CreateQuerySettingsAndBadAccess) {
    unsigned char rec[104], sent[104], back[104];
    cb<void(void *)>(t, 57)(rec);
    EXPECT_EQ(field(rec, 20), 4);
    setField(rec, 0, 6);
    setField(rec, 64, 2);
    int64_t bounds[] = {1, 3, -1, 2};
    V rt = cb<V(void *, void *, const int64_t *)>(t, 55)(rec, nullptr, bounds);
    EXPECT_TRUE(h.isRTable(rt));
    EXPECT_EQ(cb<int64_t(V)>(t, 63)(rt), 12);
    EXPECT_EQ(cb<int32_t(V)>(t, 64)(rt), 2);
    EXPECT_EQ(cb<int64_t(V, int64_t)>(t, 74)(rt, 1), 3);
    EXPECT_EQ(cb<int64_t(V, int64_t)>(t, 74)(rt, 2), 2);
    auto *data = static_cast<double *>(cb<void *(V)>(t, 56)(rt));
    ASSERT_NE(data, nullptr);
    for (int i = 0; i < 12; ++i) EXPECT_EQ(data[i], 0.0);

    // The host fills the padding with its pattern, and keeps what the
    // library sends in it.
    cb<void(void *, V)>(t, 58)(rec, h.rtable1(8, 4));
    EXPECT_TRUE(field(rec, 0) == 8 && field(rec, 20) == 4 && field(rec, 64) == 1);
    for (int i : {4, 15, 24, 63, 68, 103}) EXPECT_EQ(rec[i], kSettingsPattern) << i;
    for (int i = 4; i < 104; ++i)
        if ((i < 16 || i >= 24) && (i < 64 || i >= 68)) rec[i] = uint8_t(i * 7);
    setField(rec, 0, 5);
    setField(rec, 16, 77);
    setField(rec, 64, 1);
    std::memcpy(sent, rec, 104);
    int64_t bounds1[] = {1, 5};
    std::memset(back, 0, 104);
    cb<void(void *, V)>(t, 58)(back, cb<V(void *, void *, const int64_t *)>(t, 55)(rec, nullptr, bounds1));
    EXPECT_EQ(std::memcmp(sent, back, 104), 0);

    // Access out of range, or to what is no rtable, is raised.
    V grid = h.rtable(6, {{1, 2}, {1, 2}});
    int64_t bad[] = {1, 3};
    CallResult r = h.protect([&] { return cb<Cell(V, const int64_t *)>(t, 65)(grid, bad), V(0); });
    EXPECT_TRUE(r.raised);
    EXPECT_EQ(r.error, "host: rtable index 3 out of range");
    EXPECT_TRUE(h.protect([&] { return V(cb<int64_t(V, int64_t)>(t, 74)(grid, 3)); }).raised);
    r = h.protect([&] { return cb<void(void *, V)>(t, 58)(rec, h.integer(1)), V(0); });
    EXPECT_EQ(r.error, "host: expecting an rtable, but received 1");
}

// Assigns a distinct cell at every index, checks storage order (last index
// fastest) and that select and element-to-value give the cells back.
TEST_F(HostRTable, SelectAssignRoundTrips) {
    const struct {
        int32_t datatype;
        size_t size;
        std::vector<std::pair<int64_t, int64_t>> bounds;
    } cases[] = {{2, 1, {{1, 4}}},         {3, 2, {{0, 1}, {1, 3}}}, {4, 4, {{1, 2}, {1, 2}, {1, 2}}},
                 {5, 8, {{-2, 2}}},        {6, 8, {{1, 3}, {1, 2}}}, {7, 16, {{1, 3}}},
                 {8, 4, {{2, 3}, {5, 7}}}, {0, 8, {{1, 2}}},         {1, 16, {{1, 2}}}};
    for (const auto &c : cases) {
        V rt = h.rtable(c.datatype, c.bounds);
        RTableInfo info = h.rtableInfo(rt);
        std::vector<int64_t> idx;
        for (auto b : c.bounds) idx.push_back(b.first);
        for (int64_t n = 0; n < info.count; ++n) {
            Cell cell{0, 0};
            const double x[2] = {n + 0.5, -double(n)};
            const float x4 = n + 0.25f;
            std::string want;  // the printed value the cell stands for
            switch (c.datatype) {
            case 6: std::memcpy(&cell, x, 8), want = h.print(h.float64(x[0])); break;
            case 8: std::memcpy(&cell, &x4, 4), want = h.print(h.float64(x4)); break;
            case 7: std::memcpy(&cell, x, 16), want = h.print(h.complex(x[0], x[1])); break;
            case 0: cell.w0 = int64_t(h.integer(n)), want = std::to_string(n); break;
            case 1: cell = {int64_t(h.integer(n)), int64_t(h.name("i"))};
                    want = n ? "i*I + " + std::to_string(n) : "i*I"; break;
            default: cell.w0 = -n - 1, want = std::to_string(-n - 1);
            }
            cb<void(V, const int64_t *, Cell)>(t, 51)(rt, idx.data(), cell);
            const auto where = ::testing::Message() << c.datatype << " at " << n;
            EXPECT_EQ(std::memcmp(static_cast<char *>(info.data) + n * c.size, &cell, c.size), 0) << where;
            Cell back = cb<Cell(V, const int64_t *)>(t, 65)(rt, idx.data());
            EXPECT_EQ(std::memcmp(&back, &cell, c.size), 0) << where;
            EXPECT_EQ(h.print(cb<V(Cell, int32_t, V)>(t, 224)(back, c.datatype, rt)), want) << where;
            for (size_t d = idx.size(); d-- > 0;) {
                if (++idx[d] <= c.bounds[d].second) break;
                idx[d] = c.bounds[d].first;
            }
        }
    }
}

using HostErrors = HostTest;

// An export in the library's shape: sums its integer arguments, raising on
// anything else.
V sumExport(void *const *kv, V *args) {
    int64_t n = cb<int64_t(V *)>(kv, 48)(args);
    if (n < 1) {
        cb<ErrorFn>(kv, 5)("expecting arguments, but received %1", cb<FromIntFn>(kv, 91)(n));
        return 0;
    }
    int64_t total = 0;
    for (int64_t i = 1; i <= n; ++i) {
        if (!cb<TestFn>(kv, 14)(args[i]))
            cb<ErrorFn>(kv, 5)("argument %2 is %1, not an integer", args[i], cb<FromIntFn>(kv, 91)(i));
        total += cb<int64_t(V)>(kv, 45)(args[i]);
    }
    cb<PrintfFn>(kv, 118)("summed %d values: %s\n", int(n), "ok");
    return cb<FromIntFn>(kv, 91)(total);
}

TEST_F(HostErrors, JumpAndReturnModesAndForcedCounts) {
    CallResult ok = h.call(sumExport, {h.integer(2), h.integer(40)});
    EXPECT_FALSE(ok.raised);
    EXPECT_EQ(h.toInteger(ok.result), 42);
    EXPECT_EQ(ok.output, "summed 2 values: ok\n");

    h.resetCallbackCounts();
    CallResult bad = h.call(sumExport, {h.integer(1), h.string("two"), h.name("three")});
    EXPECT_TRUE(bad.raised && bad.result == 0u && bad.errors.size() == 1u && bad.output.empty());
    EXPECT_EQ(bad.error, "argument 2 is two, not an integer");
    EXPECT_TRUE(h.callbackCalls(5) == 1 && h.callbackCalls(118) == 0 && h.callbackTrace().back() == 5);
    // Nothing of the jumped call lingers.
    CallResult again = h.call(sumExport, {h.integer(5)});
    EXPECT_FALSE(again.raised);
    EXPECT_EQ(h.toInteger(again.result), 5);
    EXPECT_EQ(h.takeOutput(), "summed 2 values: ok\nsummed 1 values: ok\n");

    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.call(sumExport, {h.name("a"), h.integer(3), h.float64(1.5)});
    EXPECT_TRUE(r.raised);
    EXPECT_EQ(h.toInteger(r.result), 3);
    EXPECT_EQ(r.errors, (std::vector<std::string>{"argument 1 is a, not an integer", "argument 3 is 1.5, not an integer"}));
    EXPECT_EQ(r.error, r.errors[0]);
    EXPECT_EQ(r.output, "summed 3 values: ok\n");

    // A forced argument count, and the trace of callbacks it leads to.
    h.setErrorMode(ErrorMode::Jump);
    h.forceNumArgs(-3);
    h.resetCallbackCounts();
    EXPECT_EQ(h.call(sumExport, {h.integer(1)}).error, "expecting arguments, but received -3");
    EXPECT_EQ(h.callbackTrace(), (std::vector<int>{48, 91, 5}));
    h.clearForcedNumArgs();
    EXPECT_FALSE(h.call(sumExport, {h.integer(1)}).raised);
}

TEST_F(HostErrors, NestedProtectsAndHosts) {
    auto error = cb<ErrorFn>(t, 5);
    V payload = h.list({h.integer(1)});  // made here: a jump skips temporaries' destructors
    bool innerContinued = false, outerContinued = false;
    CallResult inner;
    CallResult outer = h.protect([&] {
        cb<PrintfFn>(t, 118)("a");
        inner = h.protect([&] {
            cb<PrintfFn>(t, 118)("b");
            error("inner");
            innerContinued = true;
            return V(1);
        });
        outerContinued = true;
        error("outer %1", payload);
        return V(3);
    });
    EXPECT_TRUE(!innerContinued && outerContinued);
    EXPECT_TRUE(inner.error == "inner" && inner.output == "b");
    EXPECT_EQ(outer.errors, std::vector<std::string>{"outer [1]"});
    EXPECT_EQ(outer.output, "ab");

    EXPECT_EQ(current(), &h);
    {
        Host other;
        EXPECT_EQ(current(), &other);
    }
    EXPECT_EQ(current(), &h);
}

using HostDeathTest = HostTest;

TEST_F(HostDeathTest, UnprotectedRaiseAndUnusedPositionsAbort) {
    EXPECT_DEATH(cb<ErrorFn>(t, 5)("lost %1", h.integer(9)), "lost 9");
    EXPECT_DEATH(cb<void()>(t, 2)(), "position 2 ");
    EXPECT_DEATH(cb<void()>(t, 223)(), "position 223 ");
}

}  // namespace
