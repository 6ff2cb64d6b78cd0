// The stand-in host, driven the way the library drives it: through the raw
// callback table, with function-pointer types and record offsets declared
// here from the interface's description rather than taken from either side.
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

using NewObjectFn = V *(*)(int64_t, int64_t);
using ErrorFn = void (*)(const char *, ...);
using TestFn = int64_t (*)(V);
using NewListFn = V *(*)(int64_t);
using ListAssignFn = void (*)(V *, int64_t, V);
using ToC32Fn = C32 (*)(V);
using ToC64Fn = C64 (*)(V);
using ToF32Fn = float (*)(V);
using ToF64Fn = double (*)(V);
using ToI8Fn = int8_t (*)(V);
using ToI16Fn = int16_t (*)(V);
using ToI32Fn = int32_t (*)(V);
using ToI64Fn = int64_t (*)(V);
using ToStringFn = const char *(*)(V);
using NumArgsFn = int64_t (*)(V *);
using AssignFn = void (*)(V, const int64_t *, Cell);
using CreateFn = V (*)(void *, void *, const int64_t *);
using DataFn = void *(*)(V);
using DefaultsFn = void (*)(void *);
using SettingsFn = void (*)(void *, V);
using NumElementsFn = int64_t (*)(V);
using NumDimsFn = int32_t (*)(V);
using SelectFn = Cell (*)(V, const int64_t *);
using UpperBoundFn = int64_t (*)(V, int64_t);
using FinishFn = V (*)(V *);
using FromC64Fn = V (*)(double, double);
using NewSeqFn = V *(*)(int64_t);
using SeqOfFn = V (*)(int64_t, ...);
using FromIntFn = V (*)(int64_t);
using FromF64Fn = V (*)(double);
using NullFn = V (*)();
using FromStringFn = V (*)(const char *);
using PrintfFn = void (*)(const char *, ...);
using ToValueFn = V (*)(Cell, int32_t, V);

template <typename F>
F cb(void *const *table, int position) {
    return reinterpret_cast<F>(table[position]);
}

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

// ---------------------------------------------------------------------------

using HostValues = HostTest;

TEST_F(HostValues, IntegersAreImmediateUntilTheyNeedABox) {
    EXPECT_EQ(h.integer(0), 1u);
    EXPECT_EQ(h.integer(1), 3u);
    EXPECT_EQ(h.integer(-1), ~uint64_t(0));
    auto from = cb<FromIntFn>(t, 91);
    auto to = cb<ToI64Fn>(t, 45);
    const int64_t edge = int64_t(1) << 62;
    for (int64_t k : {edge - 1, -edge, edge, -edge - 1, std::numeric_limits<int64_t>::max(),
                      std::numeric_limits<int64_t>::min()}) {
        V v = from(k);
        EXPECT_EQ(to(v), k) << k;
        EXPECT_EQ(Host::isImmediate(v), k >= -edge && k < edge) << k;
        EXPECT_TRUE(cb<TestFn>(t, 18)(v)) << k;
        EXPECT_EQ(h.print(v), std::to_string(k));
    }
    EXPECT_EQ(Host::kindOf(from(-5)), 1u);
    EXPECT_EQ(Host::kindOf(from(std::numeric_limits<int64_t>::min())), 1u);
    EXPECT_EQ(Host::kindOf(from(std::numeric_limits<int64_t>::max())), 2u);
}

TEST_F(HostValues, RangeTestsAndNarrowConversions) {
    struct {
        int position;
        int64_t lo, hi;
    } ranges[] = {{15, INT8_MIN, INT8_MAX}, {16, INT16_MIN, INT16_MAX}, {17, INT32_MIN, INT32_MAX}};
    for (auto r : ranges) {
        auto test = cb<TestFn>(t, r.position);
        EXPECT_TRUE(test(h.integer(r.lo)) && test(h.integer(r.hi))) << r.position;
        EXPECT_FALSE(test(h.integer(r.lo - 1)) || test(h.integer(r.hi + 1))) << r.position;
        EXPECT_FALSE(test(h.float64(1.0))) << r.position;
    }
    EXPECT_EQ(cb<ToI8Fn>(t, 40)(h.integer(200)), int8_t(-56));
    EXPECT_EQ(cb<ToI16Fn>(t, 41)(h.integer(-32768)), int16_t(-32768));
    EXPECT_EQ(cb<ToI32Fn>(t, 42)(h.integer(int64_t(1) << 32 | 7)), 7);
    EXPECT_EQ(cb<ToI64Fn>(t, 43)(h.integer(-(int64_t(1) << 40))), -(int64_t(1) << 40));
    EXPECT_FLOAT_EQ(cb<ToF32Fn>(t, 38)(h.float64(0.1)), 0.1f);
    EXPECT_EQ(cb<ToF64Fn>(t, 39)(h.integer(-7)), -7.0);
}

TEST_F(HostValues, KindTestsAndWrongKindConversions) {
    V i = h.integer(2), f = h.float64(2.5), z = h.complex(1, 2), s = h.string("s"), n = h.name("x");
    V rt = h.rtable1(6, 2);
    auto numeric = cb<TestFn>(t, 21), cnum = cb<TestFn>(t, 13);
    EXPECT_TRUE(numeric(i) && numeric(f) && !numeric(z) && !numeric(s));
    EXPECT_TRUE(cnum(i) && cnum(f) && cnum(z) && !cnum(n) && !cnum(rt));
    EXPECT_TRUE(cb<TestFn>(t, 14)(i) && !cb<TestFn>(t, 14)(f));
    EXPECT_TRUE(cb<TestFn>(t, 20)(s) && !cb<TestFn>(t, 20)(n));
    EXPECT_TRUE(cb<TestFn>(t, 26)(n) && !cb<TestFn>(t, 26)(s));
    EXPECT_TRUE(cb<TestFn>(t, 25)(rt) && !cb<TestFn>(t, 25)(i) && !cb<TestFn>(t, 25)(s));

    // The library's fallbacks convert after a failed test: no crash, zeros.
    EXPECT_EQ(cb<ToF64Fn>(t, 39)(s), 0.0);
    EXPECT_EQ(cb<ToF64Fn>(t, 39)(z), 0.0);
    EXPECT_EQ(cb<ToI64Fn>(t, 45)(f), 0);
    EXPECT_EQ(cb<ToI8Fn>(t, 40)(rt), 0);
    EXPECT_STREQ(cb<ToStringFn>(t, 47)(i), "");
    C64 c = cb<ToC64Fn>(t, 36)(n);
    EXPECT_EQ(c.re, 0.0);
    EXPECT_EQ(c.im, 0.0);
    // A word that is no object of this host (a raw element) is not dereferenced.
    V raw = 0x3ff0000000000000u;
    EXPECT_FALSE(numeric(raw) || cb<TestFn>(t, 25)(raw) || cb<TestFn>(t, 20)(raw));
    EXPECT_EQ(h.print(raw), "<0x3ff0000000000000>");
}

TEST_F(HostValues, ComplexConversionsUseTheirRegisters) {
    C32 a = cb<ToC32Fn>(t, 35)(h.complex(1.5, -2.25));
    EXPECT_EQ(a.re, 1.5f);
    EXPECT_EQ(a.im, -2.25f);
    C32 b = cb<ToC32Fn>(t, 35)(h.integer(-3));
    EXPECT_EQ(b.re, -3.0f);
    EXPECT_EQ(b.im, 0.0f);
    C64 c = cb<ToC64Fn>(t, 36)(cb<FromC64Fn>(t, 87)(0.1, -1e300));
    EXPECT_EQ(c.re, 0.1);
    EXPECT_EQ(c.im, -1e300);
    C64 d = cb<ToC64Fn>(t, 36)(h.float64(4.5));
    EXPECT_EQ(d.re, 4.5);
    EXPECT_EQ(d.im, 0.0);
}

TEST_F(HostValues, StringsAreCopied) {
    char buf[] = "hello";
    V s = cb<FromStringFn>(t, 99)(buf);
    buf[0] = 'j';
    EXPECT_STREQ(cb<ToStringFn>(t, 47)(s), "hello");
    EXPECT_STREQ(cb<ToStringFn>(t, 47)(h.name("exactly8")), "exactly8");
    EXPECT_STREQ(cb<ToStringFn>(t, 47)(cb<FromStringFn>(t, 99)("")), "");
}

TEST_F(HostValues, ListLayout) {
    V *l = cb<NewListFn>(t, 30)(3);
    for (int64_t i = 1; i <= 3; ++i) cb<ListAssignFn>(t, 31)(l, i, h.integer(10 * i));
    V list = cb<FinishFn>(t, 79)(l);
    EXPECT_EQ(kindIn(list), 32u);
    V seq = reinterpret_cast<V *>(list)[1];
    ASSERT_EQ(lengthOf(seq), 4u);
    EXPECT_EQ(reinterpret_cast<V *>(seq)[3], h.integer(30));
    EXPECT_EQ(h.print(list), "[10, 20, 30]");

    V empty = cb<FinishFn>(t, 79)(cb<NewListFn>(t, 30)(0));
    EXPECT_EQ(lengthOf(reinterpret_cast<V *>(empty)[1]), 1u);
    EXPECT_EQ(h.print(empty), "[]");
    EXPECT_EQ(h.elements(h.list({h.name("a"), h.integer(1)})).size(), 2u);
}

TEST_F(HostValues, ExpressionSequences) {
    V *s = cb<NewSeqFn>(t, 89)(2);
    EXPECT_EQ(lengthOf(V(s)), 3u);
    EXPECT_EQ(kindIn(V(s)), uint32_t(kExprSeq));
    s[1] = h.integer(4), s[2] = h.name("y");
    EXPECT_EQ(h.print(V(s)), "4, y");

    V three = cb<SeqOfFn>(t, 90)(int64_t(3), h.integer(1), h.float64(2), h.string("c"));
    EXPECT_EQ(h.print(three), "1, 2.0, \"c\"");
    V x = h.name("x");
    EXPECT_EQ(cb<SeqOfFn>(t, 90)(int64_t(1), x), x);
    V null = cb<NullFn>(t, 95)();
    EXPECT_EQ(cb<SeqOfFn>(t, 90)(int64_t(0)), null);
    EXPECT_EQ(lengthOf(null), 1u);
    EXPECT_EQ(h.print(null), "NULL");
}

// Raw sums and products as the library builds them, then finished.
TEST_F(HostValues, FinishingFoldsNumbersAndDropsZeros) {
    auto raw = [&](int kind, V a, V ca, V b, V cb2) {
        V *o = cb<NewObjectFn>(t, 1)(5, kind);
        EXPECT_EQ(header(V(o)), (uint64_t(kind) << 32) | 5u);
        o[1] = a, o[2] = ca, o[3] = b, o[4] = cb2;
        return cb<FinishFn>(t, 79)(o);
    };
    const V one = 3, minusOne = ~V(0);
    V x = h.name("x"), y = h.name("y");
    V xy = raw(14, x, one, y, one);
    EXPECT_EQ(h.print(xy), "x*y");
    EXPECT_EQ(raw(16, h.integer(0), one, xy, one), xy);
    EXPECT_EQ(h.print(raw(16, x, one, y, minusOne)), "x - y");
    EXPECT_EQ(h.print(raw(14, h.integer(2), one, h.integer(-3), one)), "-6");
    EXPECT_EQ(h.print(raw(16, h.integer(2), one, h.float64(1.5), minusOne)), "0.5");
    EXPECT_EQ(h.print(raw(14, h.complex(0, 1), one, h.complex(0, 1), one)), "-1.0+0.0i");
    EXPECT_EQ(h.print(raw(14, h.integer(int64_t(1) << 62), one, h.integer(4), one)), "1.8446744073709552e+19");
    // A running sum stays flat: ((0 + x*y) + y*x) + 2*3.
    V acc = raw(16, h.integer(0), one, xy, one);
    acc = raw(16, acc, one, raw(14, y, one, x, one), one);
    acc = raw(16, acc, one, raw(14, h.integer(2), one, h.integer(3), one), one);
    EXPECT_EQ(h.print(acc), "x*y + y*x + 6");
    EXPECT_EQ(lengthOf(acc), 7u);
    // Raw elements handed over as values stay opaque operands.
    EXPECT_EQ(h.print(raw(14, 0x3ff0000000000000u, one, 0x4000000000000000u, one)),
              "<0x3ff0000000000000>*<0x4000000000000000>");
}

// ---------------------------------------------------------------------------

using HostPrint = HostTest;

TEST_F(HostPrint, FloatsReadBackExactly) {
    for (double d : {0.1, 1.0 / 3, 1e300, 5e-324, 1.0, 1e16, 123456789.0, -2.5e-10, 1e22}) {
        std::string s = h.print(h.float64(d));
        EXPECT_EQ(std::strtod(s.c_str(), nullptr), d) << s;
        EXPECT_NE(s.find_first_of(".e"), std::string::npos) << s;
    }
    EXPECT_EQ(h.print(h.float64(1.0)), "1.0");
    EXPECT_EQ(h.print(h.float64(-0.0)), "-0.0");
    EXPECT_EQ(h.print(h.float64(INFINITY)), "inf");
    EXPECT_EQ(h.print(h.float64(-INFINITY)), "-inf");
    EXPECT_NE(h.print(h.float64(NAN)).find("nan"), std::string::npos);
}

TEST_F(HostPrint, EveryKind) {
    EXPECT_EQ(h.print(h.integer(-42)), "-42");
    EXPECT_EQ(h.print(h.complex(1, -2)), "1.0-2.0i");
    EXPECT_EQ(h.print(h.complex(0.5, 0)), "0.5+0.0i");
    EXPECT_EQ(h.print(h.string("a\"b")), "\"a\\\"b\"");
    EXPECT_EQ(h.print(h.name("gofast")), "gofast");
    EXPECT_EQ(h.print(h.list({h.integer(1), h.string("s"), h.list({})})), "[1, \"s\", []]");
    EXPECT_EQ(h.print(h.exprseq({h.integer(1), h.integer(2)})), "1, 2");
    EXPECT_EQ(h.print(h.sum(h.name("a"), 2, h.product(h.name("b"), 1, h.name("c"), -1), -1)), "2*a - b*c^(-1)");
    EXPECT_EQ(h.messageForm(h.string("bare")), "bare");
    EXPECT_EQ(h.messageForm(h.name("n")), "n");
}

TEST_F(HostPrint, RTables) {
    double d[] = {1.0, 2.5, -3.0};
    EXPECT_EQ(h.print(h.rtable1(6, 3, d)), "rtable(float[8], 1..3, [1.0, 2.5, -3.0])");
    int32_t ints[12];
    for (int i = 0; i < 12; ++i) ints[i] = i - 2;
    EXPECT_EQ(h.print(h.rtable1(4, 12, ints)),
              "rtable(integer[4], 1..12, [-2, -1, 0, 1, 2, 3, 4, 5, 6, 7, ...])");
    EXPECT_EQ(h.print(h.rtable(2, {{1, 2}, {0, 2}}, "\x01\x02\x03\x04\x05\xff")),
              "rtable(integer[1], 1..2, 0..2, [1, 2, 3, 4, 5, -1])");
    float f[] = {0.1f, -2.0f};
    EXPECT_EQ(h.print(h.rtable1(8, 2, f)), "rtable(float[4], 1..2, [0.1, -2.0])");
    double z[] = {1, -1};
    EXPECT_EQ(h.print(h.rtable1(7, 1, z)), "rtable(complex[8], 1..1, [1.0-1.0i])");
    EXPECT_EQ(h.print(h.rtable1(0, 2)), "rtable(anything, 1..2, [0, 0])");
    V pair[] = {h.integer(1), h.name("y")};
    EXPECT_EQ(h.print(h.rtable1(1, 1, pair)), "rtable(complex(anything), 1..1, [1+y*I])");
    EXPECT_EQ(h.print(h.rtable1(5, 0)), "rtable(integer[8], 1..0, [])");
}

// ---------------------------------------------------------------------------

using HostRTable = HostTest;

TEST_F(HostRTable, CreateWithNullDataAndQueryShape) {
    unsigned char rec[104];
    cb<DefaultsFn>(t, 57)(rec);
    EXPECT_EQ(field(rec, 20), 4);
    setField(rec, 0, 6);
    setField(rec, 64, 2);
    int64_t bounds[] = {1, 3, -1, 2};
    V rt = cb<CreateFn>(t, 55)(rec, nullptr, bounds);
    EXPECT_TRUE(h.isRTable(rt));
    EXPECT_EQ(cb<NumElementsFn>(t, 63)(rt), 12);
    EXPECT_EQ(cb<NumDimsFn>(t, 64)(rt), 2);
    EXPECT_EQ(cb<UpperBoundFn>(t, 74)(rt, 1), 3);
    EXPECT_EQ(cb<UpperBoundFn>(t, 74)(rt, 2), 2);
    auto *data = static_cast<double *>(cb<DataFn>(t, 56)(rt));
    ASSERT_NE(data, nullptr);
    for (int i = 0; i < 12; ++i) EXPECT_EQ(data[i], 0.0);
}

TEST_F(HostRTable, SettingsPaddingPassesThrough) {
    unsigned char rec[104];
    cb<SettingsFn>(t, 58)(rec, h.rtable1(8, 4));
    EXPECT_EQ(field(rec, 0), 8);
    EXPECT_EQ(field(rec, 20), 4);
    EXPECT_EQ(field(rec, 64), 1);
    for (int i : {4, 15, 24, 63, 68, 103}) EXPECT_EQ(rec[i], kSettingsPattern) << i;

    cb<DefaultsFn>(t, 57)(rec);
    for (int i = 0; i < 104; ++i)
        if ((i < 16 || i >= 24) && (i < 64 || i >= 68) && i >= 4) rec[i] = uint8_t(i * 7);
    setField(rec, 0, 5);
    setField(rec, 16, 77);
    setField(rec, 64, 1);
    unsigned char sent[104];
    std::memcpy(sent, rec, 104);
    int64_t bounds[] = {1, 5};
    V rt = cb<CreateFn>(t, 55)(rec, nullptr, bounds);
    unsigned char back[104];
    std::memset(back, 0, 104);
    cb<SettingsFn>(t, 58)(back, rt);
    EXPECT_EQ(std::memcmp(sent, back, 104), 0);
}

// Assigns a distinct cell at every index, checks storage order (last index
// fastest) and that select and element-to-value give the cells back.
TEST_F(HostRTable, SelectAssignRoundTrips) {
    struct Case {
        int32_t datatype;
        std::vector<std::pair<int64_t, int64_t>> bounds;
    } cases[] = {{2, {{1, 4}}},         {3, {{0, 1}, {1, 3}}}, {4, {{1, 2}, {1, 2}, {1, 2}}},
                 {5, {{-2, 2}}},        {6, {{1, 3}, {1, 2}}}, {7, {{1, 3}}},
                 {8, {{2, 3}, {5, 7}}}, {0, {{1, 2}}},         {1, {{1, 2}}}};
    auto assign = cb<AssignFn>(t, 51);
    auto select = cb<SelectFn>(t, 65);
    auto toValue = cb<ToValueFn>(t, 224);
    for (const Case &c : cases) {
        V rt = h.rtable(c.datatype, c.bounds);
        RTableInfo info = h.rtableInfo(rt);
        size_t dims = c.bounds.size();
        std::vector<int64_t> idx(dims);
        for (size_t d = 0; d < dims; ++d) idx[d] = c.bounds[d].first;
        for (int64_t n = 0; n < info.count; ++n) {
            Cell cell{0, 0};
            switch (c.datatype) {
            case 2: case 3: case 4: case 5: cell.w0 = -n - 1; break;
            case 6: { double x = n + 0.5; std::memcpy(&cell, &x, 8); break; }
            case 8: { float x = n + 0.25f; std::memcpy(&cell, &x, 4); break; }
            case 7: { double x[2] = {double(n), -double(n)}; std::memcpy(&cell, x, 16); break; }
            case 0: cell.w0 = int64_t(h.integer(n)); break;
            case 1: cell.w0 = int64_t(h.integer(n)), cell.w1 = int64_t(h.name("i")); break;
            }
            assign(rt, idx.data(), cell);
            // Storage position n is this element.
            size_t size = c.datatype == 2 ? 1 : c.datatype == 3 ? 2 : c.datatype == 4 || c.datatype == 8 ? 4
                        : c.datatype == 7 || c.datatype == 1 ? 16 : 8;
            EXPECT_EQ(std::memcmp(static_cast<char *>(info.data) + n * size, &cell, size), 0)
                << c.datatype << " at " << n;
            Cell back = select(rt, idx.data());
            EXPECT_EQ(std::memcmp(&back, &cell, size), 0) << c.datatype << " at " << n;
            std::string expected = c.datatype >= 2 && c.datatype <= 5 ? std::to_string(-n - 1)
                                 : c.datatype == 6                   ? h.print(h.float64(n + 0.5))
                                 : c.datatype == 8                   ? h.print(h.float64(n + 0.25))
                                 : c.datatype == 7                   ? h.print(h.complex(n, -double(n)))
                                 : c.datatype == 0                   ? std::to_string(n)
                                 : n                                 ? "i*I + " + std::to_string(n)
                                                                     : "i*I";
            EXPECT_EQ(h.print(toValue(back, c.datatype, rt)), expected) << c.datatype << " at " << n;
            for (size_t d = dims; d-- > 0;) {
                if (++idx[d] <= c.bounds[d].second) break;
                idx[d] = c.bounds[d].first;
            }
        }
    }
}

TEST_F(HostRTable, OutOfRangeAccessIsRaised) {
    V rt = h.rtable(6, {{1, 2}, {1, 2}});
    int64_t bad[] = {1, 3};
    CallResult r = h.protect([&] {
        cb<SelectFn>(t, 65)(rt, bad);
        return V(0);
    });
    EXPECT_TRUE(r.raised);
    EXPECT_EQ(r.error, "host: rtable index 3 out of range");
    r = h.protect([&] { return V(cb<UpperBoundFn>(t, 74)(rt, 3)); });
    EXPECT_TRUE(r.raised);
    unsigned char rec[104];
    r = h.protect([&] {
        cb<SettingsFn>(t, 58)(rec, h.integer(1));
        return V(0);
    });
    EXPECT_EQ(r.error, "host: expecting an rtable, but received 1");
}

// ---------------------------------------------------------------------------

using HostErrors = HostTest;

// An export in the library's shape: sums its integer arguments, raising on
// anything else.
V sumExport(void *const *kv, V *args) {
    int64_t n = cb<NumArgsFn>(kv, 48)(args);
    if (n < 1) {
        cb<ErrorFn>(kv, 5)("expecting arguments, but received %1", cb<FromIntFn>(kv, 91)(n));
        return 0;
    }
    int64_t total = 0;
    for (int64_t i = 1; i <= n; ++i) {
        if (!cb<TestFn>(kv, 14)(args[i]))
            cb<ErrorFn>(kv, 5)("argument %2 is %1, not an integer", args[i], cb<FromIntFn>(kv, 91)(i));
        total += cb<ToI64Fn>(kv, 45)(args[i]);
    }
    cb<PrintfFn>(kv, 118)("summed %d values: %s\n", int(n), "ok");
    return cb<FromIntFn>(kv, 91)(total);
}

TEST_F(HostErrors, JumpLeavesAtTheRaise) {
    CallResult ok = h.call(sumExport, {h.integer(2), h.integer(40)});
    EXPECT_FALSE(ok.raised);
    EXPECT_EQ(h.toInteger(ok.result), 42);
    EXPECT_EQ(ok.output, "summed 2 values: ok\n");

    h.resetCallbackCounts();
    CallResult bad = h.call(sumExport, {h.integer(1), h.string("two"), h.name("three")});
    EXPECT_TRUE(bad.raised);
    EXPECT_EQ(bad.result, 0u);
    EXPECT_EQ(bad.error, "argument 2 is two, not an integer");
    EXPECT_EQ(bad.errors.size(), 1u);
    EXPECT_EQ(bad.output, "");
    EXPECT_EQ(h.callbackCalls(5), 1);
    EXPECT_EQ(h.callbackCalls(118), 0);
    EXPECT_EQ(h.callbackTrace().back(), 5);

    // Nothing of the jumped call lingers.
    CallResult again = h.call(sumExport, {h.integer(5)});
    EXPECT_FALSE(again.raised);
    EXPECT_EQ(h.toInteger(again.result), 5);
    EXPECT_EQ(h.takeOutput(), "summed 2 values: ok\nsummed 1 values: ok\n");
}

TEST_F(HostErrors, ReturnModeRecordsEveryError) {
    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.call(sumExport, {h.name("a"), h.integer(3), h.float64(1.5)});
    EXPECT_TRUE(r.raised);
    EXPECT_EQ(h.toInteger(r.result), 3);
    ASSERT_EQ(r.errors.size(), 2u);
    EXPECT_EQ(r.error, "argument 1 is a, not an integer");
    EXPECT_EQ(r.errors[1], "argument 3 is 1.5, not an integer");
    EXPECT_EQ(r.output, "summed 3 values: ok\n");
}

TEST_F(HostErrors, ForcedCountsAndTrace) {
    h.forceNumArgs(-3);
    h.resetCallbackCounts();
    CallResult r = h.call(sumExport, {h.integer(1)});
    EXPECT_EQ(r.error, "expecting arguments, but received -3");
    EXPECT_EQ(h.callbackTrace(), (std::vector<int>{48, 91, 5}));
    h.clearForcedNumArgs();
    EXPECT_FALSE(h.call(sumExport, {h.integer(1)}).raised);
}

TEST_F(HostErrors, NestedProtects) {
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
    EXPECT_FALSE(innerContinued);
    EXPECT_TRUE(outerContinued);
    EXPECT_EQ(inner.error, "inner");
    EXPECT_EQ(inner.output, "b");
    EXPECT_EQ(outer.errors, std::vector<std::string>{"outer [1]"});
    EXPECT_EQ(outer.output, "ab");
}

TEST_F(HostErrors, CurrentHostNests) {
    EXPECT_EQ(current(), &h);
    {
        Host inner;
        EXPECT_EQ(current(), &inner);
    }
    EXPECT_EQ(current(), &h);
}

using HostDeathTest = HostTest;

TEST_F(HostDeathTest, UnprotectedRaiseAndUnusedPositionsAbort) {
    EXPECT_DEATH(cb<ErrorFn>(t, 5)("lost %1", h.integer(9)), "lost 9");
    EXPECT_DEATH(reinterpret_cast<void (*)()>(t[2])(), "position 2 ");
    EXPECT_DEATH(reinterpret_cast<void (*)()>(t[223])(), "position 223 ");
}

}  // namespace
