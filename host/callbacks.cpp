// The callback table the library is handed. Each entry is a plain function
// with C linkage and the machine-level signature of its position; it finds
// its host through the thread's current host and counts itself.
//
// A raise may leave any of these functions through a jump, so none of them
// holds an object with a destructor at a point where it raises.
#include "host_impl.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace orbhost {
namespace {

using Impl = Host::Impl;

Impl &enter(int position) {
    Host *h = current();
    if (!h) {
        std::fprintf(stderr, "host callback %d called with no current host\n", position);
        std::abort();
    }
    Impl &I = Impl::of(*h);
    I.counts[position]++;
    if (I.trace.size() < kTraceLimit)  // bounded, so long loops don't grow it
        I.trace.push_back(position);
    return I;
}

struct Complex32 {
    float re, im;
};
struct Complex64 {
    double re, im;
};

bool isInt(Impl &I, Value v) {
    uint32_t k = I.classify(v);
    return k == kNegInt || k == kPosInt;
}

int64_t intOf(Impl &I, Value v) { return isInt(I, v) ? I.self->toInteger(v) : 0; }

bool inRange(Impl &I, Value v, int64_t lo, int64_t hi) {
    if (!isInt(I, v)) return false;
    int64_t k = I.self->toInteger(v);
    return k >= lo && k <= hi;
}

// The rtable behind a value, raising when there is none.
RTableRec *rtableArg(Impl &I, Value rt) {
    RTableRec *r = I.rtable(rt);
    if (!r) I.raise("host: expecting an rtable, but received %1", 1, rt, 0);
    return r;
}

// Byte offset of an element, or -1 (after a raise) for an index outside
// the bounds.
int64_t offsetOf(Impl &I, const RTableRec *r, const int64_t *index) {
    if (!index) {
        I.raise("host: missing rtable index", 0, 0, 0);
        return -1;
    }
    int64_t at = 0;
    for (size_t d = 0; d < r->bounds.size(); ++d) {
        int64_t lo = r->bounds[d].first, hi = r->bounds[d].second;
        if (index[d] < lo || index[d] > hi) {
            I.raise("host: rtable index %1 out of range", 1, I.self->integer(index[d]), 0);
            return -1;
        }
        at = at * (hi - lo + 1) + (index[d] - lo);
    }
    return at * int64_t(r->elemSize);
}

void fillDefaults(Settings *s) {
    std::memset(s, kSettingsPattern, sizeof *s);
    s->datatype = 0;
    s->uninterpreted = 0;
    s->storage = kRectangular;
    s->numDims = 1;
}

// Why a creation request is unusable, or null.
const char *badShape(const Settings *s, const int64_t *bounds) {
    if (!elementSize(s->datatype)) return "host: cannot create an rtable of that datatype";
    if (s->numDims < 1 || s->numDims > 32) return "host: cannot create an rtable with that many dimensions";
    if (!bounds) return "host: missing rtable bounds";
    int64_t count = 1;
    for (int32_t d = 0; d < s->numDims; ++d) {
        int64_t lo = bounds[2 * d], hi = bounds[2 * d + 1], n;
        if (__builtin_sub_overflow(hi, lo, &n) || n < -1 || n == INT64_MAX) return "host: invalid rtable bounds";
        if (__builtin_mul_overflow(count, n + 1, &count) || count > (int64_t(1) << 36))
            return "host: rtable too large";
    }
    return nullptr;
}

extern "C" {

static Value *cbNewObject(int64_t length, int64_t kind) {
    Impl &I = enter(1);
    if (length < 1 || length > INT32_MAX || kind < 0 || kind > 63) {
        I.raise("host: cannot make an object of that length or kind", 0, 0, 0);
        length = 1;
    }
    return reinterpret_cast<Value *>(I.alloc(uint32_t(length), uint32_t(kind)));
}

static void cbError(const char *format, ...) {
    Impl &I = enter(5);
    if (!format) format = "";
    int n = std::strstr(format, "%2") ? 2 : std::strstr(format, "%1") ? 1 : 0;
    Value a = 0, b = 0;
    va_list ap;
    va_start(ap, format);
    if (n >= 1) a = va_arg(ap, Value);
    if (n >= 2) b = va_arg(ap, Value);
    va_end(ap);
    I.raise(format, n, a, b);
}

static int64_t cbIsComplexNumeric(Value v) {
    uint32_t k = enter(13).classify(v);
    return k == kNegInt || k == kPosInt || k == kFloat || k == kComplex;
}
static int64_t cbIsInteger(Value v) { return isInt(enter(14), v); }
static int64_t cbIsInteger8(Value v) { return inRange(enter(15), v, INT8_MIN, INT8_MAX); }
static int64_t cbIsInteger16(Value v) { return inRange(enter(16), v, INT16_MIN, INT16_MAX); }
static int64_t cbIsInteger32(Value v) { return inRange(enter(17), v, INT32_MIN, INT32_MAX); }
static int64_t cbIsInteger64(Value v) { return isInt(enter(18), v); }
static int64_t cbIsString(Value v) { return enter(20).classify(v) == kString; }
static int64_t cbIsNumeric(Value v) {
    uint32_t k = enter(21).classify(v);
    return k == kNegInt || k == kPosInt || k == kFloat;
}
static int64_t cbIsRTable(Value v) { return enter(25).rtable(v) != nullptr; }
static int64_t cbIsName(Value v) { return enter(26).classify(v) == kName; }

static Value *cbNewList(int64_t count) {
    Impl &I = enter(30);
    if (count < 0 || count >= INT32_MAX) {
        I.raise("host: cannot make a list of %1 elements", 1, I.self->integer(count), 0);
        count = 0;
    }
    uint64_t *list = I.alloc(2, kList);
    list[1] = reinterpret_cast<Value>(I.alloc(uint32_t(count + 1), kExprSeq));
    return reinterpret_cast<Value *>(list);
}

static void cbListAssign(Value *list, int64_t index, Value v) {
    Impl &I = enter(31);
    Value l = reinterpret_cast<Value>(list);
    if (I.classify(l) != kList || I.classify(list[1]) != kExprSeq) {
        I.raise("host: expecting a list, but received %1", 1, l, 0);
        return;
    }
    Value *seq = reinterpret_cast<Value *>(list[1]);
    if (index < 1 || index >= int64_t(I.length(list[1]))) {
        I.raise("host: list index %1 out of range", 1, I.self->integer(index), 0);
        return;
    }
    seq[index] = v;
}

static Complex32 cbToComplexFloat32(Value v) {
    Impl &I = enter(35);
    Num n;
    if (!I.toNum(v, n)) return {0.0f, 0.0f};
    if (n.tag == Num::Int) return {float(n.i), 0.0f};
    return {float(n.z.real()), float(n.z.imag())};
}

static Complex64 cbToComplexFloat64(Value v) {
    Impl &I = enter(36);
    Num n;
    if (!I.toNum(v, n)) return {0.0, 0.0};
    if (n.tag == Num::Int) return {double(n.i), 0.0};
    return {n.z.real(), n.z.imag()};
}

static float cbToFloat32(Value v) { return float(enter(38).self->toFloat(v)); }
static double cbToFloat64(Value v) { return enter(39).self->toFloat(v); }
static int8_t cbToInteger8(Value v) {
    Impl &I = enter(40);
    return int8_t(intOf(I, v));
}
static int16_t cbToInteger16(Value v) {
    Impl &I = enter(41);
    return int16_t(intOf(I, v));
}
static int32_t cbToInteger32(Value v) {
    Impl &I = enter(42);
    return int32_t(intOf(I, v));
}
static int64_t cbToInteger64(Value v) {
    Impl &I = enter(43);
    return intOf(I, v);
}
static int64_t cbToInteger(Value v) {
    Impl &I = enter(45);
    return intOf(I, v);
}

static const char *cbToString(Value v) {
    Impl &I = enter(47);
    uint32_t k = I.classify(v);
    if (k != kString && k != kName) return "";
    return reinterpret_cast<const char *>(I.object(v) + 1);
}

static int64_t cbNumArgs(Value *args) {
    Impl &I = enter(48);
    if (I.forced) return I.forcedCount;
    if (!args) return 0;
    return int64_t(args[0] & 0xffffffffu) - 1;
}

static void cbRTableAssign(Value rt, const int64_t *index, Element e) {
    Impl &I = enter(51);
    RTableRec *r = rtableArg(I, rt);
    if (!r) return;
    int64_t at = offsetOf(I, r, index);
    if (at < 0) return;
    std::memcpy(static_cast<char *>(r->data) + at, &e, r->elemSize);
}

static Value cbRTableCreate(Settings *s, void *data, const int64_t *bounds) {
    Impl &I = enter(55);
    const char *why = s ? badShape(s, bounds) : "host: missing rtable settings";
    if (why) {
        I.raise(why, 0, 0, 0);
        return I.nullValue;
    }
    return I.makeRTable(*s, bounds, data);
}

static void *cbRTableData(Value rt) {
    Impl &I = enter(56);
    RTableRec *r = rtableArg(I, rt);
    return r ? r->data : nullptr;
}

static void cbRTableGetDefaults(Settings *s) {
    enter(57);
    fillDefaults(s);
}

static void cbRTableGetSettings(Settings *s, Value rt) {
    Impl &I = enter(58);
    RTableRec *r = I.rtable(rt);
    if (r) {
        *s = r->settings;
        return;
    }
    fillDefaults(s);
    I.raise("host: expecting an rtable, but received %1", 1, rt, 0);
}

static int64_t cbRTableNumElements(Value rt) {
    Impl &I = enter(63);
    RTableRec *r = rtableArg(I, rt);
    return r ? r->count : 0;
}

static int32_t cbRTableNumDimensions(Value rt) {
    Impl &I = enter(64);
    RTableRec *r = rtableArg(I, rt);
    return r ? int32_t(r->bounds.size()) : 0;
}

static Element cbRTableSelect(Value rt, const int64_t *index) {
    Impl &I = enter(65);
    Element e{0, 0};
    RTableRec *r = rtableArg(I, rt);
    if (!r) return e;
    int64_t at = offsetOf(I, r, index);
    if (at >= 0) std::memcpy(&e, static_cast<const char *>(r->data) + at, r->elemSize);
    return e;
}

static int64_t cbRTableUpperBound(Value rt, int64_t dim) {
    Impl &I = enter(74);
    RTableRec *r = rtableArg(I, rt);
    if (!r) return 0;
    if (dim < 1 || dim > int64_t(r->bounds.size())) {
        I.raise("host: rtable has no dimension %1", 1, I.self->integer(dim), 0);
        return 0;
    }
    return r->bounds[size_t(dim - 1)].second;
}

static Value cbFinishObject(Value *obj) { return enter(79).finish(reinterpret_cast<Value>(obj)); }

static Value cbFromComplexFloat64(double re, double im) { return enter(87).self->complex(re, im); }

static Value *cbNewExprSeq(int64_t count) {
    Impl &I = enter(89);
    if (count < 0 || count >= INT32_MAX) {
        I.raise("host: cannot make a sequence of %1 values", 1, I.self->integer(count), 0);
        count = 0;
    }
    return reinterpret_cast<Value *>(I.alloc(uint32_t(count + 1), kExprSeq));
}

// A sequence of one value is that value; of none, the null value.
static Value cbExprSeqOf(int64_t count, ...) {
    Impl &I = enter(90);
    if (count < 0 || count >= INT32_MAX) {
        I.raise("host: cannot make a sequence of %1 values", 1, I.self->integer(count), 0);
        return I.nullValue;
    }
    if (count == 0) return I.nullValue;
    uint64_t *seq = I.alloc(uint32_t(count + 1), kExprSeq);
    va_list ap;
    va_start(ap, count);
    for (int64_t i = 1; i <= count; ++i) seq[i] = va_arg(ap, Value);
    va_end(ap);
    return count == 1 ? seq[1] : reinterpret_cast<Value>(seq);
}

static Value cbFromInteger(int64_t v) { return enter(91).self->integer(v); }
static Value cbFromInteger64(int64_t v) { return enter(92).self->integer(v); }
static Value cbFromFloat64(double v) { return enter(93).self->float64(v); }
static Value cbNullValue() { return enter(95).nullValue; }

static Value cbFromString(const char *text) {
    Impl &I = enter(99);
    if (!text) text = "";
    return I.makeText(text, std::strlen(text), kString);
}

static void cbPrintf(const char *format, ...) {
    Impl &I = enter(118);
    if (!format) return;
    va_list ap, again;
    va_start(ap, format);
    va_copy(again, ap);
    int n = std::vsnprintf(nullptr, 0, format, ap);
    va_end(ap);
    if (n > 0) {
        std::string text(size_t(n), '\0');
        std::vsnprintf(text.data(), size_t(n) + 1, format, again);
        I.print(text);
    }
    va_end(again);
}

static Value cbRTableElementToValue(Element e, int32_t datatype, Value rt) {
    Impl &I = enter(224);
    if (!elementSize(datatype)) {
        I.raise("host: unexpected datatype (%1)", 1, I.self->integer(datatype), 0);
        return I.nullValue;
    }
    return I.elementToValue(&e, datatype);
}

}  // extern "C"

// Positions the library never uses: calling one is a fault worth a loud stop.
template <int N>
void unused() {
    std::fprintf(stderr, "host callback position %d is not provided\n", N);
    std::abort();
}

template <size_t... N>
void fillUnused(void **table, std::index_sequence<N...>) {
    ((table[N] = reinterpret_cast<void *>(&unused<int(N)>)), ...);
}

template <typename F>
void *entry(F *f) {
    return reinterpret_cast<void *>(f);
}

struct Table {
    void *slots[kTableSize];
    Table() {
        fillUnused(slots, std::make_index_sequence<kTableSize>());
        slots[1] = entry(cbNewObject);
        slots[5] = entry(cbError);
        slots[13] = entry(cbIsComplexNumeric);
        slots[14] = entry(cbIsInteger);
        slots[15] = entry(cbIsInteger8);
        slots[16] = entry(cbIsInteger16);
        slots[17] = entry(cbIsInteger32);
        slots[18] = entry(cbIsInteger64);
        slots[20] = entry(cbIsString);
        slots[21] = entry(cbIsNumeric);
        slots[25] = entry(cbIsRTable);
        slots[26] = entry(cbIsName);
        slots[30] = entry(cbNewList);
        slots[31] = entry(cbListAssign);
        slots[35] = entry(cbToComplexFloat32);
        slots[36] = entry(cbToComplexFloat64);
        slots[38] = entry(cbToFloat32);
        slots[39] = entry(cbToFloat64);
        slots[40] = entry(cbToInteger8);
        slots[41] = entry(cbToInteger16);
        slots[42] = entry(cbToInteger32);
        slots[43] = entry(cbToInteger64);
        slots[45] = entry(cbToInteger);
        slots[47] = entry(cbToString);
        slots[48] = entry(cbNumArgs);
        slots[51] = entry(cbRTableAssign);
        slots[55] = entry(cbRTableCreate);
        slots[56] = entry(cbRTableData);
        slots[57] = entry(cbRTableGetDefaults);
        slots[58] = entry(cbRTableGetSettings);
        slots[63] = entry(cbRTableNumElements);
        slots[64] = entry(cbRTableNumDimensions);
        slots[65] = entry(cbRTableSelect);
        slots[74] = entry(cbRTableUpperBound);
        slots[79] = entry(cbFinishObject);
        slots[87] = entry(cbFromComplexFloat64);
        slots[89] = entry(cbNewExprSeq);
        slots[90] = entry(cbExprSeqOf);
        slots[91] = entry(cbFromInteger);
        slots[92] = entry(cbFromInteger64);
        slots[93] = entry(cbFromFloat64);
        slots[95] = entry(cbNullValue);
        slots[99] = entry(cbFromString);
        slots[118] = entry(cbPrintf);
        slots[224] = entry(cbRTableElementToValue);
    }
};

}  // namespace

void *const *callbackTable() {
    static const Table table;
    return table.slots;
}

}  // namespace orbhost
