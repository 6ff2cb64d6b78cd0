// The stand-in host, driven the way the library drives it: through the raw
// callback table, with function signatures and record offsets written here
// from the interface's description rather than taken from either side.
#include "host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

using namespace orbhost;

namespace {

using V = uint64_t;
struct Cell { int64_t w0, w1; };
struct C32 { float re, im; };
struct C64 { double re, im; };
using Fmt = void(const char *, ...);  // the error raise (5) and print (118)

// The callback at a position, as a function of signature Sig.
template <typename Sig>
Sig *cb(void *const *table, int position) { return reinterpret_cast<Sig *>(table[position]); }

// Fields of the 104-byte settings record by byte offset, and object headers.
int32_t field(const unsigned char *rec, int offset) { int32_t x; std::memcpy(&x, rec + offset, 4); return x; }
void setField(unsigned char *rec, int offset, int32_t x) { std::memcpy(rec + offset, &x, 4); }
uint64_t header(V v) { return *reinterpret_cast<const uint64_t *>(v); }
uint32_t lengthOf(V v) { return uint32_t(header(v)); }

class HostTest : public ::testing::Test {
protected:
    Host h;
    void *const *t = h.callbacks();
    int64_t test(int position, V v) { return cb<int64_t(V)>(t, position)(v); }
};

TEST_F(HostTest, IntegersKindTestsAndConversions) {
    EXPECT_EQ((std::vector<V>{h.integer(0), h.integer(1), h.integer(-1)}), (std::vector<V>{1, 3, ~V(0)}));
    const int64_t edge = int64_t(1) << 62, lo = std::numeric_limits<int64_t>::min(), hi = -(lo + 1);
    for (int64_t k : {edge - 1, -edge, edge, -edge - 1, hi, lo})
        for (V v : {cb<V(int64_t)>(t, 91)(k), cb<V(int64_t)>(t, 92)(k)}) {
            SCOPED_TRACE(k);
            EXPECT_TRUE(cb<int64_t(V)>(t, 45)(v) == k && cb<int64_t(V)>(t, 43)(v) == k);
            EXPECT_EQ(Host::isImmediate(v), k >= -edge && k < edge);
            EXPECT_EQ(h.print(v), std::to_string(k));
        }
    EXPECT_EQ((std::vector<uint32_t>{Host::kindOf(h.integer(-5)), Host::kindOf(h.integer(lo)),
                                     Host::kindOf(h.integer(hi))}), (std::vector<uint32_t>{1, 1, 2}));

    // The kind tests: one row per value, one column per position; a word that
    // is no object of this host (a raw element) is not dereferenced.
    const struct { const char *what; V v; const char *want; } kinds[] = {
        {"integer", h.integer(2), "1110100"},   {"boxed integer", h.integer(lo), "1110100"},
        {"float", h.float64(2.5), "1000100"},   {"complex", h.complex(1, 2), "1000000"},
        {"string", h.string("s"), "0001000"},   {"name", h.name("x"), "0000001"},
        {"rtable", h.rtable1(6, 2), "0000010"}, {"list", h.list({h.integer(1)}), "0000000"},
        {"raw element", 0x3ff0000000000000u, "0000000"},
    };
    for (const auto &k : kinds) {
        std::string got;
        for (int p : {13, 14, 18, 20, 21, 25, 26}) got += test(p, k.v) ? '1' : '0';
        EXPECT_EQ(got, k.want) << k.what << ", positions 13 14 18 20 21 25 26";
    }
    // Range tests hold at both ends and fail one beyond, and for a float.
    const std::tuple<int, int64_t, int64_t> ranges[] = {
        {15, INT8_MIN, INT8_MAX}, {16, INT16_MIN, INT16_MAX}, {17, INT32_MIN, INT32_MAX}};
    for (auto [p, min, max] : ranges) {
        EXPECT_TRUE(test(p, h.integer(min)) && test(p, h.integer(max))) << p;
        EXPECT_FALSE(test(p, h.integer(min - 1)) || test(p, h.integer(max + 1)) || test(p, h.float64(1))) << p;
    }

    // Conversions, each under its own return type (complex ones in their
    // registers): narrowing keeps the low bits, and what the library converts
    // after a failed test gives zero.
    const struct { int position; V v; double re, im = 0; } conversions[] = {
        {38, h.float64(0.1), 0.1f}, {39, h.integer(-7), -7}, {40, h.integer(200), -56}, {41, h.integer(-32768), -32768},
        {42, h.integer(int64_t(1) << 32 | 7), 7}, {35, h.complex(1.5, -2.25), 1.5, -2.25}, {35, h.integer(-3), -3},
        {36, cb<V(double, double)>(t, 87)(0.1, -1e300), 0.1, -1e300}, {36, h.float64(4.5), 4.5},
        {39, h.string("s"), 0}, {39, h.complex(1, 2), 0}, {40, h.rtable1(6, 2), 0}, {45, h.float64(2.5), 0},
        {36, h.name("n"), 0},
    };
    for (auto [p, v, re, im] : conversions) {
        C32 c = p == 35 ? cb<C32(V)>(t, p)(v) : C32{};
        C64 got = p == 35 ? C64{c.re, c.im} : p == 36 ? cb<C64(V)>(t, p)(v) : C64{};
        if (p >= 38) got.re = p == 38 ? cb<float(V)>(t, p)(v) : p == 39 ? cb<double(V)>(t, p)(v)
                            : p == 40 ? cb<int8_t(V)>(t, p)(v) : p == 41 ? cb<int16_t(V)>(t, p)(v)
                            : p == 42 ? cb<int32_t(V)>(t, p)(v) : double(cb<int64_t(V)>(t, p)(v));
        EXPECT_TRUE(got.re == re && got.im == im) << p << " on " << h.print(v) << ": " << got.re << ", " << got.im;
    }

    // Strings are copied; texts filling whole words stay terminated.
    auto toString = cb<const char *(V)>(t, 47);
    auto fromString = cb<V(const char *)>(t, 99);
    char buf[] = "hello";
    V copied = fromString(buf);
    buf[0] = 'j';
    EXPECT_EQ((std::vector<std::string>{toString(copied), toString(h.name("exactly8")), toString(fromString("")),
                                        toString(h.integer(2))}), (std::vector<std::string>{"hello", "exactly8", "", ""}));
}

// Lists, sequences and raw sums (16) and products (14) built through the
// callbacks, checked for layout, then every printed form in one table.
TEST_F(HostTest, BuiltObjectsAndPrintedForms) {
    auto finish = cb<V(V *)>(t, 79);
    V *l = cb<V *(int64_t)>(t, 30)(3);
    for (int64_t i = 1; i <= 3; ++i) cb<void(V *, int64_t, V)>(t, 31)(l, i, h.integer(10 * i));
    V list = finish(l), empty = finish(cb<V *(int64_t)>(t, 30)(0)), *seq = reinterpret_cast<V *>(l[1]);
    EXPECT_TRUE(header(list) == (uint64_t(32) << 32 | 2u) && lengthOf(V(seq)) == 4u && seq[3] == h.integer(30));
    V *s = cb<V *(int64_t)>(t, 89)(2);
    EXPECT_EQ(header(V(s)), uint64_t(kExprSeq) << 32 | 3u);
    s[1] = h.integer(4), s[2] = h.name("y");
    auto seqOf = cb<V(int64_t, ...)>(t, 90);
    V x = h.name("x"), y = h.name("y"), null = cb<V()>(t, 95)();
    EXPECT_TRUE(seqOf(int64_t(1), x) == x && seqOf(int64_t(0)) == null && lengthOf(null) == 1u);
    auto raw = [&](int kind, V a, V b, bool negate = false) {
        V *o = cb<V *(int64_t, int64_t)>(t, 1)(5, kind);
        EXPECT_EQ(header(V(o)), (uint64_t(kind) << 32) | 5u);
        o[1] = a, o[2] = 3, o[3] = b, o[4] = negate ? ~V(0) : 3;
        return finish(o);
    };
    V xy = raw(14, x, y);
    EXPECT_EQ(raw(16, h.integer(0), xy), xy);
    // A running sum stays flat: ((0 + x*y) + y*x) + 2*3.
    V acc = raw(16, raw(16, raw(16, h.integer(0), xy), raw(14, y, x)), raw(14, h.integer(2), h.integer(3)));
    EXPECT_EQ(lengthOf(acc), 7u);

    // Floats print in the shortest form that reads back, never like an integer.
    for (double d : {0.1, 1.0 / 3, 1e300, 5e-324, 1e16, 123456789.0, -2.5e-10, 1e22}) {
        std::string text = h.print(h.float64(d));
        EXPECT_TRUE(std::strtod(text.c_str(), nullptr) == d && text.find_first_of(".e") != std::string::npos) << text;
    }
    double d[] = {1.0, 2.5, -3.0}, z[] = {1, -1};
    float f[] = {0.1f, -2.0f};
    int32_t ints[13];
    for (int i = 0; i < 13; ++i) ints[i] = i - 2;
    V pair[] = {h.integer(1), y}, opaque = 0x3ff0000000000000u;
    const struct { V v; const char *text; } forms[] = {
        {h.float64(1.0), "1.0"}, {h.float64(-0.0), "-0.0"}, {h.float64(INFINITY), "inf"},
        {h.float64(-INFINITY), "-inf"}, {h.float64(NAN), "nan"}, {cb<V(double)>(t, 93)(-2.5), "-2.5"},
        {h.complex(1, -2), "1.0-2.0i"}, {h.complex(0.5, 0), "0.5+0.0i"}, {h.string("a\"b"), "\"a\\\"b\""},
        {opaque, "<0x3ff0000000000000>"}, {list, "[10, 20, 30]"}, {empty, "[]"},
        {h.list({h.integer(1), h.string("s"), h.list({})}), "[1, \"s\", []]"}, {V(s), "4, y"}, {null, "NULL"},
        {seqOf(int64_t(3), h.integer(1), h.float64(2), h.string("c")), "1, 2.0, \"c\""},
        {xy, "x*y"}, {raw(16, x, y, true), "x - y"}, {raw(14, h.integer(2), h.integer(-3)), "-6"},
        {raw(16, h.integer(2), h.float64(1.5), true), "0.5"}, {raw(14, h.complex(0, 1), h.complex(0, 1)), "-1.0+0.0i"},
        {raw(14, h.integer(int64_t(1) << 62), h.integer(4)), "1.8446744073709552e+19"},
        // Raw elements handed over as values stay opaque operands.
        {raw(14, opaque, 0x4000000000000000u), "<0x3ff0000000000000>*<0x4000000000000000>"}, {acc, "x*y + y*x + 6"},
        {h.sum(h.name("a"), 2, h.product(h.name("b"), 1, h.name("c"), -1), -1), "2*a - b*c^(-1)"},
        {h.rtable1(6, 3, d), "rtable(float[8], 1..3, [1.0, 2.5, -3.0])"},
        {h.rtable1(4, 12, ints), "rtable(integer[4], 1..12, [-2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9])"},
        {h.rtable1(4, 13, ints), "rtable(integer[4], 1..13, [-2, -1, 0, 1, 2, ... 3 more ..., 6, 7, 8, 9, 10])"},
        {h.rtable(2, {{1, 2}, {0, 2}}, "\x01\x02\x03\x04\x05\xff"), "rtable(integer[1], 1..2, 0..2, [1, 2, 3, 4, 5, -1])"},
        {h.rtable1(8, 2, f), "rtable(float[4], 1..2, [0.1, -2.0])"},
        {h.rtable1(7, 1, z), "rtable(complex[8], 1..1, [1.0-1.0i])"},
        {h.rtable1(0, 2), "rtable(anything, 1..2, [0, 0])"}, {h.rtable1(5, 0), "rtable(integer[8], 1..0, [])"},
        {h.rtable1(1, 1, pair), "rtable(complex(anything), 1..1, [1+y*I])"},
    };
    for (size_t i = 0; i < std::size(forms); ++i) EXPECT_EQ(h.print(forms[i].v), forms[i].text) << "row " << i;
    EXPECT_EQ(h.printFull(h.rtable1(4, 13, ints)), "rtable(integer[4], 1..13, [-2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10])");
}

TEST_F(HostTest, CreateQuerySettingsAndBadAccess) {
    auto create = cb<V(void *, void *, const int64_t *)>(t, 55);
    auto settings = cb<void(void *, V)>(t, 58);
    auto upper = cb<int64_t(V, int64_t)>(t, 74);
    unsigned char rec[104], sent[104], back[104] = {};
    int64_t bounds[] = {1, 3, -1, 2}, bounds1[] = {1, 5}, bad[] = {1, 3};
    cb<void(void *)>(t, 57)(rec);
    EXPECT_TRUE(field(rec, 20) == 4 && rec[4] == kSettingsPattern && rec[103] == kSettingsPattern);
    setField(rec, 0, 6), setField(rec, 64, 2);
    V rt = create(rec, nullptr, bounds);
    ASSERT_TRUE(h.isRTable(rt));
    EXPECT_EQ((std::vector<int64_t>{cb<int64_t(V)>(t, 63)(rt), cb<int32_t(V)>(t, 64)(rt), upper(rt, 1), upper(rt, 2)}),
              (std::vector<int64_t>{12, 2, 3, 2}));

    // The host fills the padding with its pattern, and keeps what the
    // library sends in it.
    settings(rec, h.rtable1(8, 4));
    EXPECT_TRUE(field(rec, 0) == 8 && field(rec, 20) == 4 && field(rec, 64) == 1);
    for (int i : {4, 15, 24, 63, 68, 103}) EXPECT_EQ(rec[i], kSettingsPattern) << i;
    for (int i = 4; i < 104; ++i)
        if ((i < 16 || i >= 24) && (i < 64 || i >= 68)) rec[i] = uint8_t(i * 7);
    setField(rec, 0, 5), setField(rec, 16, 77), setField(rec, 64, 1);
    std::memcpy(sent, rec, 104);
    settings(back, create(rec, nullptr, bounds1));
    EXPECT_EQ(std::memcmp(sent, back, 104), 0);

    // Access out of range, or to what is no rtable, is raised.
    V grid = h.rtable(6, {{1, 2}, {1, 2}});
    EXPECT_EQ(h.protect([&] { return cb<Cell(V, const int64_t *)>(t, 65)(grid, bad), V(0); }).error,
              "host: rtable index 3 out of range");
    EXPECT_EQ(h.protect([&] { return V(upper(grid, 3)); }).error, "host: rtable has no dimension 3");
    EXPECT_EQ(h.protect([&] { return settings(rec, h.integer(1)), V(0); }).error,
              "host: expecting an rtable, but received 1");
}

// Assigns a distinct cell at every index: storage order is last index
// fastest, and select gives each cell back by value in two registers.
TEST_F(HostTest, SelectAssignAndElementValues) {
    const struct { int32_t datatype; size_t size; std::vector<std::pair<int64_t, int64_t>> bounds; } cases[] = {
        {2, 1, {{1, 4}}}, {3, 2, {{0, 1}, {1, 3}}}, {4, 4, {{1, 2}, {1, 2}, {1, 2}}}, {5, 8, {{-2, 2}}},
        {6, 8, {{1, 3}, {1, 2}}}, {7, 16, {{1, 3}}}, {8, 4, {{2, 3}, {5, 7}}}, {0, 8, {{1, 2}}}, {1, 16, {{1, 2}}}};
    for (const auto &c : cases) {
        V rt = h.rtable(c.datatype, c.bounds);
        RTableInfo info = h.rtableInfo(rt);
        std::vector<int64_t> idx;
        for (auto b : c.bounds) idx.push_back(b.first);
        for (int64_t n = 0; n < info.count; ++n) {
            unsigned char bytes[16];
            Cell cell;
            for (int k = 0; k < 16; ++k) bytes[k] = uint8_t(n * 16 + k + 1);
            std::memcpy(&cell, bytes, 16);
            cb<void(V, const int64_t *, Cell)>(t, 51)(rt, idx.data(), cell);
            Cell back = cb<Cell(V, const int64_t *)>(t, 65)(rt, idx.data());
            SCOPED_TRACE(::testing::Message() << "datatype " << c.datatype << " at " << n);
            EXPECT_EQ(std::memcmp(static_cast<char *>(info.data) + n * c.size, bytes, c.size), 0);
            EXPECT_EQ(std::memcmp(&back, bytes, c.size), 0);
            for (size_t d = idx.size(); d-- > 0 && ++idx[d] > c.bounds[d].second;) idx[d] = c.bounds[d].first;
        }
    }
    EXPECT_TRUE(h.guardsIntact());

    // Cells as values, each datatype reading its own width only.
    auto bits = [](auto x) { int64_t w = 0; std::memcpy(&w, &x, sizeof x); return w; };
    auto w = [](V v) { return int64_t(v); };
    const struct { int32_t datatype; Cell cell; const char *text; } elements[] = {
        {2, {0x7f80, 0}, "-128"}, {3, {0x78000, 0}, "-32768"}, {4, {0x780000000, 0}, "-2147483648"},
        {5, {INT64_MIN, 0}, "-9223372036854775808"}, {6, {bits(0.5), 0}, "0.5"},
        {8, {bits(0.25f) | int64_t(0x7f) << 32, 0}, "0.25"}, {7, {bits(0.5), bits(-2.0)}, "0.5-2.0i"},
        {0, {w(h.integer(7)), 0}, "7"}, {1, {w(h.integer(7)), w(h.integer(0))}, "7"},
        {1, {w(h.integer(7)), w(h.name("i"))}, "i*I + 7"}, {1, {w(h.float64(1.5)), w(h.integer(-1))}, "1.5-1.0i"},
    };
    V any = h.rtable1(0, 1);
    for (const auto &e : elements)
        EXPECT_EQ(h.print(cb<V(Cell, int32_t, V)>(t, 224)(e.cell, e.datatype, any)), e.text) << e.datatype;
}

// An export in the library's shape: sums its integer arguments, raising on
// anything else.
V sumExport(void *const *kv, V *args) {
    int64_t n = cb<int64_t(V *)>(kv, 48)(args), total = 0;
    if (n < 1) return cb<Fmt>(kv, 5)("expecting arguments, but received %1", cb<V(int64_t)>(kv, 91)(n)), 0;
    for (int64_t i = 1; i <= n; ++i) {
        if (!cb<int64_t(V)>(kv, 14)(args[i]))
            cb<Fmt>(kv, 5)("argument %2 is %1, not an integer", args[i], cb<V(int64_t)>(kv, 91)(i));
        total += cb<int64_t(V)>(kv, 45)(args[i]);
    }
    cb<Fmt>(kv, 118)("summed %d values: %s\n", int(n), "ok");
    return cb<V(int64_t)>(kv, 91)(total);
}

// Calls in turn, each as "result | errors... | output" (the result "-" after
// a jump) with the callbacks it reached; a jumped call leaves nothing behind.
TEST_F(HostTest, JumpAndReturnModesAndForcedCounts) {
    const ErrorMode jump = ErrorMode::Jump;
    const int64_t real = -1;  // no forced count
    const struct { ErrorMode mode; int64_t count; std::vector<V> args; std::string outcome; std::vector<int> trace; }
        calls[] = {
            {jump, real, {h.integer(2), h.integer(40)}, "42 | summed 2 values: ok\n", {48, 14, 45, 14, 45, 118, 91}},
            {jump, real, {h.integer(1), h.string("two"), h.name("three")}, "- | argument 2 is two, not an integer | ",
             {48, 14, 45, 14, 91, 5}},
            {jump, real, {h.integer(5)}, "5 | summed 1 values: ok\n", {48, 14, 45, 118, 91}},
            {ErrorMode::Return, real, {h.name("a"), h.integer(3), h.float64(1.5)},
             "3 | argument 1 is a, not an integer | argument 3 is 1.5, not an integer | summed 3 values: ok\n",
             {48, 14, 91, 5, 45, 14, 45, 14, 91, 5, 45, 118, 91}},
            {jump, -3, {h.integer(1)}, "- | expecting arguments, but received -3 | ", {48, 91, 5}},
            {jump, real, {h.integer(1)}, "1 | summed 1 values: ok\n", {48, 14, 45, 118, 91}},
        };
    for (const auto &c : calls) {
        h.setErrorMode(c.mode);
        if (c.count != real) h.forceNumArgs(c.count);
        h.resetCallbackCounts();
        CallResult r = h.call(sumExport, c.args);
        h.clearForcedNumArgs();
        std::string got = r.result ? h.print(r.result) : "-";
        for (const std::string &e : r.errors) got += " | " + e;
        EXPECT_EQ(got + " | " + r.output, c.outcome);
        EXPECT_EQ(h.callbackTrace(), c.trace) << c.outcome;
        EXPECT_TRUE(r.raised == !r.errors.empty() && r.error == (r.raised ? r.errors[0] : "")) << c.outcome;
        for (int p : {5, 14, 45, 48, 91, 118})
            EXPECT_EQ(h.callbackCalls(p), std::count(c.trace.begin(), c.trace.end(), p)) << p << " in " << c.outcome;
    }
    EXPECT_EQ(h.takeOutput(), "summed 2 values: ok\nsummed 1 values: ok\nsummed 3 values: ok\nsummed 1 values: ok\n");
}

TEST_F(HostTest, NestedProtectsAndHosts) {
    auto error = cb<Fmt>(t, 5);
    V payload = h.list({h.integer(1)});  // made here: a jump skips temporaries' destructors
    bool innerContinued = false, outerContinued = false;
    CallResult inner, outer = h.protect([&] {
        cb<Fmt>(t, 118)("a");
        inner = h.protect([&] { return cb<Fmt>(t, 118)("b"), error("inner"), innerContinued = true, V(1); });
        outerContinued = true;
        error("outer %1", payload);
        return V(3);
    });
    EXPECT_TRUE(!innerContinued && outerContinued && inner.error == "inner" && inner.output == "b");
    EXPECT_EQ(outer.errors, std::vector<std::string>{"outer [1]"});
    EXPECT_EQ(outer.output, "ab");
    EXPECT_EQ(current(), &h);
    { Host other; EXPECT_EQ(current(), &other); }
    EXPECT_EQ(current(), &h);
}

using HostDeathTest = HostTest;

TEST_F(HostDeathTest, UnprotectedRaiseAndUnusedPositionsAbort) {
    EXPECT_DEATH(cb<Fmt>(t, 5)("lost %1", h.integer(9)), "lost 9");
    EXPECT_DEATH(cb<void()>(t, 2)(), "position 2 ");
    EXPECT_DEATH(cb<void()>(t, 223)(), "position 223 ");
}

}  // namespace
