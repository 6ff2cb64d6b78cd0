// Decoding fuzz inputs into calls, and encoding calls back into inputs.
#include "fuzz_call.h"

#include <chrono>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "backend_hooks.h"
#include "orb/accessors.h"
#include "orb/exports.h"
#include "preconditions.h"

namespace orbfuzz {
namespace {

using orbhost::ErrorMode;
using orbhost::Host;
using orbhost::Value;

using AccessorFn = void (*)(HostCallbacks, HostValue);

struct Target {
    const char *name;
    orbhost::ExportFn fn;  // an export, or null for an accessor
    AccessorFn accessor;
};

const Target kTargets[] = {
#define ORB_FUZZ_EXPORT(f) {#f, reinterpret_cast<orbhost::ExportFn>(f), nullptr},
#define ORB_FUZZ_ACCESSOR(f) {#f, nullptr, [](HostCallbacks cb, HostValue v) { (void)f(cb, v); }},
#include "fuzz_targets.inc"
#undef ORB_FUZZ_EXPORT
#undef ORB_FUZZ_ACCESSOR
};
constexpr size_t kTargetCount = sizeof(kTargets) / sizeof(kTargets[0]);

uint64_t callsMade = 0;
// ORB_FUZZ_TRACE set: every call's target and first error go to stderr.
const bool tracing = std::getenv("ORB_FUZZ_TRACE") != nullptr;

// What a value's kind byte selects (the byte is taken modulo kKinds; rtables
// take several values so that they are the commonest argument).
enum Kind : uint8_t {
    kSmallInt,     // i8
    kRawInt,       // i64
    kEdgeInt,      // u8 index into kEdgeInts (immediate and boxed limits)
    kEdgeFloat,    // u8 index into kEdgeFloats
    kRawFloat,     // f64
    kEdgeComplex,  // two u8 indices into kEdgeFloats
    kRawComplex,   // two f64
    kWord,         // u8 word, u8 mutation: a string near an option word
    kWordName,     // the same as a name
    kRawText,      // u8 length (bit 7: a name), then the bytes
    kList,         // u8 count (at most 3), then the values
    kSequence,     // the same, as an expression sequence
    kNull,
    kRepeat,       // u8: an earlier argument of the call again
    kRTable,       // rtable: see makeRTable
    kKinds = kRTable + 6,
};

constexpr int kMaxDepth = 2;
// Elements in one rtable at most, so that every call stays quick; rtables of
// host values are computed on through the host's arithmetic, so fewer.
constexpr int64_t kMaxElements = 1 << 14;
constexpr int64_t kMaxHostValues = 1 << 10;

const int64_t kEdgeInts[] = {
    0, 1, -1, 2, 3, 4, 7, 8, 16, 64, 255, 256, 32767, 32768, 65535, 65536,
    INT32_MAX, int64_t(INT32_MAX) + 1, INT32_MIN, int64_t(INT32_MIN) - 1, UINT32_MAX,
    (int64_t(1) << 62) - 1, int64_t(1) << 62, -(int64_t(1) << 62), -(int64_t(1) << 62) - 1,
    INT64_MAX, INT64_MIN, -2, -7, 100, 1000, 1 << 20,
};

const double kEdgeFloats[] = {
    0.0, -0.0, 1.0, -1.0, 0.5, 0.25, 0.1, 2.0, 3.0, 10.0, 1e-5, 100.0, -2.5, 0.499999,
    INFINITY, -INFINITY, NAN, 1e308, -1e-310, 3.4028235e38, 4e38, 1e-45, 65504.0, 2147483648.0,
    -2147483649.0, 9.3e18, 6.283185307179586, 1e-300,
};

// Option words the exports read, and some their callers might mistype.
const char *const kWords[] = {
    "none", "fwddivbyn", "invdivbyn", "sqrtlen", "becareful", "gofast", "auto", "direct", "fft",
    "hamming", "hann", "bartlett", "blackman", "Butterworth", "Chebyshev1", "true", "false", "nearest",
    "zero", "financial", "zcc", "zcr", "zcxor", "",
};

// Extents an rtable dimension takes: the byte itself below 200, else these.
const int64_t kBigExtents[] = {256, 257, 500, 512, 1000, 1023, 1024, 2048, 4096, 4099, 8192, 16384};

// Bytes in the order they come; zeros once they run out.
struct Reader {
    const uint8_t *p;
    size_t n;
    uint8_t u8()
    {
        if (n == 0)
            return 0;
        --n;
        return *p++;
    }
    uint64_t u64()
    {
        uint64_t v = 0;
        for (int i = 0; i < 8; ++i)
            v |= uint64_t(u8()) << (8 * i);
        return v;
    }
    double f64()
    {
        uint64_t bits = u64();
        double d;
        std::memcpy(&d, &bits, 8);
        return d;
    }
};

size_t elementSize(int code)
{
    static const size_t sizes[] = {0, 0, 1, 2, 4, 8, 8, 16, 4};
    return code >= 0 && code <= 8 ? sizes[code] : 0;
}

// A word changed as a caller might: unchanged, capitalised, in capitals, a
// letter dropped, changed or added.
std::string mutate(std::string w, uint8_t how, uint8_t where)
{
    size_t at = w.empty() ? 0 : where % w.size();
    switch (how % 8) {
    case 1: if (!w.empty()) w[0] = char(std::toupper(w[0])); break;
    case 2: for (char &c : w) c = char(std::toupper(c)); break;
    case 3: if (!w.empty()) w.erase(at, 1); break;
    case 4: if (!w.empty()) w[at] = char(w[at] + 1); break;
    case 5: w.insert(at, 1, 'e'); break;
    case 6: w += ' '; break;
    default: break;
    }
    return w;
}

// Element i of a fill of the given mode, as bytes of one element.
void fillElement(unsigned char *out, int code, int64_t i, int mode, uint64_t &state, const std::vector<uint8_t> &raw)
{
    const size_t size = elementSize(code);
    double d = 0;
    int64_t k = 0;
    switch (mode % 5) {
    case 0: break;
    case 1: d = double(i + 1); k = i + 1; break;
    case 2:
        d = kEdgeFloats[(i * 7) % (sizeof(kEdgeFloats) / sizeof(double))];
        k = kEdgeInts[(i * 5) % (sizeof(kEdgeInts) / sizeof(int64_t))];
        break;
    case 3:
        for (size_t b = 0; b < size; ++b)
            out[b] = raw.empty() ? 0 : raw[(size_t(i) * size + b) % raw.size()];
        return;
    default:
        for (size_t b = 0; b < size; ++b) {
            state ^= state << 13, state ^= state >> 7, state ^= state << 17;
            out[b] = uint8_t(state);
        }
        return;
    }
    switch (code) {
    case DT_INT1: out[0] = uint8_t(k); break;
    case DT_INT2: { int16_t v = int16_t(k); std::memcpy(out, &v, 2); break; }
    case DT_INT4: { int32_t v = int32_t(k); std::memcpy(out, &v, 4); break; }
    case DT_INT8: std::memcpy(out, &k, 8); break;
    case DT_FLOAT8: std::memcpy(out, &d, 8); break;
    case DT_COMPLEX8: { double z[2] = {d, mode % 5 == 2 ? -d : 0.5}; std::memcpy(out, z, 16); break; }
    case DT_FLOAT4: { float f = float(d); std::memcpy(out, &f, 4); break; }
    default: break;
    }
}

// rtable := datatype:u8 shape:u8 extent:u8 per dimension fill:u8 [raw]
//   shape: bits 0-1 dimensions - 1 (3 reads as 1), bits 2-3 the lower bound
//   (1, 1, 0 or -3), bit 7 a non-rectangular storage code
//   fill: 0 zeros, 1 the ramp 1, 2, 3, ..., 2 edge values, 3 raw bytes
//   (u16 length, then the bytes, repeated), 4 pseudo-random from a u8 seed
Value makeRTable(Host &h, Reader &r)
{
    int code = r.u8() % 9;
    uint8_t shape = r.u8();
    int dims = 1 + (shape & 3) % 3;
    static const int64_t lows[] = {1, 1, 0, -3};
    int64_t low = lows[(shape >> 2) & 3];
    int64_t extents[3], count = 1;
    for (int d = 0; d < dims; ++d) {
        uint8_t e = r.u8();
        extents[d] = e < 200 ? e : kBigExtents[(e - 200) % (sizeof(kBigExtents) / sizeof(int64_t))];
    }
    for (int d = 0; d < dims; ++d)
        count *= extents[d];
    while (count > (code <= 1 ? kMaxHostValues : kMaxElements)) {
        int widest = 0;
        for (int d = 1; d < dims; ++d)
            if (extents[d] > extents[widest])
                widest = d;
        count = count / extents[widest] * (extents[widest] / 2);
        extents[widest] /= 2;
    }
    std::vector<std::pair<int64_t, int64_t>> bounds;
    for (int d = 0; d < dims; ++d)
        bounds.push_back({low, low + extents[d] - 1});
    int mode = r.u8();
    std::vector<uint8_t> raw;
    uint64_t state = 0x9E3779B97F4A7C15ull;
    if (mode % 5 == 3) {
        size_t len = r.u8();
        len |= size_t(r.u8()) << 8;
        for (size_t i = 0; i < len && r.n > 0; ++i)
            raw.push_back(r.u8());
    } else if (mode % 5 == 4) {
        state += r.u8();
    }
    std::vector<unsigned char> data;
    const size_t size = elementSize(code);
    if (size > 0) {
        data.resize(size_t(count) * size);
        for (int64_t i = 0; i < count; ++i)
            fillElement(data.data() + size_t(i) * size, code, i, mode, state, raw);
    }
    return h.rtable(code, bounds, size > 0 ? data.data() : nullptr,
                    (shape & 0x80) ? orbhost::kNonRectangular : orbhost::kRectangular);
}

Value makeValue(Host &h, Reader &r, const std::vector<Value> &earlier, int depth)
{
    uint8_t kind = r.u8() % kKinds;
    switch (kind) {
    case kSmallInt: return h.integer(int8_t(r.u8()));
    case kRawInt: return h.integer(int64_t(r.u64()));
    case kEdgeInt: return h.integer(kEdgeInts[r.u8() % (sizeof(kEdgeInts) / sizeof(int64_t))]);
    case kEdgeFloat: return h.float64(kEdgeFloats[r.u8() % (sizeof(kEdgeFloats) / sizeof(double))]);
    case kRawFloat: return h.float64(r.f64());
    case kEdgeComplex: {
        double re = kEdgeFloats[r.u8() % (sizeof(kEdgeFloats) / sizeof(double))];
        return h.complex(re, kEdgeFloats[r.u8() % (sizeof(kEdgeFloats) / sizeof(double))]);
    }
    case kRawComplex: {
        double re = r.f64();
        return h.complex(re, r.f64());
    }
    case kWord:
    case kWordName: {
        std::string w = kWords[r.u8() % (sizeof(kWords) / sizeof(kWords[0]))];
        uint8_t how = r.u8();
        w = mutate(w, how, r.u8());
        return kind == kWord ? h.string(w) : h.name(w);
    }
    case kRawText: {
        uint8_t head = r.u8();
        std::string text;
        for (int i = 0; i < (head & 0x7f) && r.n > 0; ++i) {
            char c = char(r.u8());
            text += c ? c : ' ';
        }
        return (head & 0x80) ? h.name(text) : h.string(text);
    }
    case kList:
    case kSequence: {
        std::vector<Value> items;
        int n = r.u8() % 4;
        for (int i = 0; i < n; ++i)
            items.push_back(depth < kMaxDepth ? makeValue(h, r, earlier, depth + 1) : h.integer(i));
        return kind == kList ? h.list(items) : h.exprseq(items);
    }
    case kNull: return h.null();
    case kRepeat: {
        uint8_t i = r.u8();
        return earlier.empty() ? h.null() : earlier[i % earlier.size()];
    }
    default: return makeRTable(h, r);
    }
}

struct Call {
    const Target *target;
    std::vector<Value> args;
    bool returning;
    bool forced;
    int64_t count;  // when forced
};

Call decodeCall(Host &h, Reader &r)
{
    uint16_t pick = r.u8();
    pick |= uint16_t(r.u8() << 8);
    uint8_t flags = r.u8();
    Call c{&kTargets[pick % kTargetCount], {}, (flags & 0x10) != 0, false, 0};
    int countMode = flags >> 5;
    if (countMode == 5) {
        // Any count up to the spare null slots the host puts after the last
        // argument: a larger one would read past the host's sequence.
        c.forced = true;
        c.count = r.u8() % ((flags & 15) + 5);
    } else if (countMode == 6) {
        static const int64_t negative[] = {-1, -2, -64, INT32_MIN, INT64_MIN};
        c.forced = true;
        c.count = negative[r.u8() % 5];
    } else if (countMode == 7) {
        c.forced = true;
        c.count = 0;
    }
    int n = flags & 15;
    for (int i = 0; i < n; ++i)
        c.args.push_back(makeValue(h, r, c.args, 0));
    return c;
}

[[noreturn]] void fail(const Call &c, const char *what, long long detail)
{
    std::fprintf(stderr, "orbfuzz: %s (%lld) after a call of %s with %zu arguments\n", what, detail,
                 c.target->name, c.args.size());
    std::abort();
}

// Bytes that encode one value made in h (the inverse of makeValue, for the
// kinds the rows use).
void encodeValue(const Host &h, Value v, std::vector<uint8_t> &out)
{
    auto put64 = [&](uint64_t x) {
        for (int i = 0; i < 8; ++i)
            out.push_back(uint8_t(x >> (8 * i)));
    };
    uint32_t kind = Host::kindOf(v);
    if (h.isInteger(v)) {
        int64_t i = h.toInteger(v);
        if (i >= INT8_MIN && i <= INT8_MAX) {
            out.push_back(kSmallInt);
            out.push_back(uint8_t(int8_t(i)));
        } else {
            out.push_back(kRawInt);
            put64(uint64_t(i));
        }
    } else if (kind == orbhost::kFloat) {
        double d = h.toFloat(v);
        uint64_t bits;
        std::memcpy(&bits, &d, 8);
        out.push_back(kRawFloat);
        put64(bits);
    } else if (kind == orbhost::kString || kind == orbhost::kName) {
        std::string t = h.text(v).substr(0, 127);
        out.push_back(kRawText);
        out.push_back(uint8_t(t.size() | (kind == orbhost::kName ? 0x80 : 0)));
        out.insert(out.end(), t.begin(), t.end());
    } else if (h.isRTable(v)) {
        orbhost::RTableInfo info = h.rtableInfo(v);
        out.push_back(kRTable);
        out.push_back(uint8_t(info.datatype));
        int dims = int(info.bounds.size());
        out.push_back(uint8_t((dims - 1) | (info.storage == orbhost::kRectangular ? 0 : 0x80)));
        for (auto [lo, hi] : info.bounds) {
            int64_t e = hi - lo + 1;
            uint8_t b = e < 200 ? uint8_t(e) : 0;
            for (size_t k = 0; k < sizeof(kBigExtents) / sizeof(int64_t); ++k)
                if (kBigExtents[k] == e)
                    b = uint8_t(200 + k);
            out.push_back(b);
        }
        size_t bytes = size_t(info.count) * elementSize(info.datatype);
        if (bytes == 0 || bytes > 0xffff) {
            out.push_back(1);
        } else {
            out.push_back(3);
            out.push_back(uint8_t(bytes));
            out.push_back(uint8_t(bytes >> 8));
            const uint8_t *p = static_cast<const uint8_t *>(info.data);
            out.insert(out.end(), p, p + bytes);
        }
    } else {
        out.push_back(kNull);
    }
}

}  // namespace

uint64_t CallsMade() { return callsMade; }
size_t TargetCount() { return kTargetCount; }

void RunInput(const uint8_t *data, size_t size)
{
    Reader r{data, size};
    Host h;
    for (int k = 0; k < kMaxCalls && r.n > 0; ++k) {
        Call c = decodeCall(h, r);
        if (!Admissible(h, c.target->name, c.args))
            continue;
        if (tracing)
            for (size_t i = 0; i < c.args.size(); ++i)
                std::fprintf(stderr, "  %zu: %.300s\n", i + 1, h.print(c.args[i]).c_str());
        const int64_t before = orbBackendLiveAllocations();
        h.setErrorMode(c.returning ? ErrorMode::Return : ErrorMode::Jump);
        if (c.forced)
            h.forceNumArgs(c.count);
        orbhost::CallResult result;
        const auto start = std::chrono::steady_clock::now();
        if (c.target->fn) {
            result = h.call(c.target->fn, c.args);
        } else {
            HostCallbacks cb = h.callbacks();
            AccessorFn acc = c.target->accessor;
            Value v = c.args.empty() ? h.null() : c.args[0];
            result = h.protect([cb, acc, v] {
                acc(cb, v);
                return Value(0);
            });
        }
        h.clearForcedNumArgs();
        ++callsMade;
        if (tracing)
            std::fprintf(stderr, "%s/%zu%s: %s (%lld us)\n", c.target->name, c.args.size(),
                         c.returning ? " returning" : "", result.raised ? result.error.c_str() : "ok",
                         (long long)std::chrono::duration_cast<std::chrono::microseconds>(
                             std::chrono::steady_clock::now() - start).count());
        if (orbBackendLiveAllocations() != before)
            fail(c, "backend blocks left allocated", (long long)(orbBackendLiveAllocations() - before));
        if (!h.guardsIntact())
            fail(c, "bytes written outside an rtable's storage", 0);
        // The result must be a value the host can print.
        (void)h.print(result.result);
    }
}

std::vector<uint8_t> EncodeCall(const Host &h, const std::string &name, const std::vector<Value> &args,
                                bool returning, int64_t forcedCount)
{
    std::vector<uint8_t> out;
    for (size_t t = 0; t < kTargetCount; ++t) {
        if (name != kTargets[t].name)
            continue;
        out.push_back(uint8_t(t));
        out.push_back(uint8_t(t >> 8));
        out.push_back(uint8_t((args.size() & 15) | (returning ? 0x10 : 0) | (forcedCount >= 0 ? 0xa0 : 0)));
        if (forcedCount >= 0)
            out.push_back(uint8_t(forcedCount));
        for (size_t i = 0; i < args.size() && i < 15; ++i)
            encodeValue(h, args[i], out);
        break;
    }
    return out;
}

}  // namespace orbfuzz
