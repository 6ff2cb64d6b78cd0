// The host's value heap, its arithmetic on sums and products, printed forms
// and the protected call.
#include "host_impl.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace orbhost {

namespace {

thread_local Host *tlsCurrent = nullptr;

constexpr int64_t kImmediateMin = -(int64_t(1) << 62);
constexpr int64_t kImmediateMax = (int64_t(1) << 62) - 1;

// The shortest text that reads back exactly, never mistakable for an
// integer: large whole values go to exponent form rather than trail zeros
// that are not digits of the value.
std::string floatText(double d) {
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, d);
    std::string s(buf, r.ptr);
    if (s.find_first_of(".en") != std::string::npos) return s;
    if (std::fabs(d) < 1e16) return s + ".0";
    r = std::to_chars(buf, buf + sizeof buf, d, std::chars_format::scientific);
    return std::string(buf, r.ptr);
}

std::string float4Text(float f) {
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, f);
    std::string s(buf, r.ptr);
    if (s.find_first_of(".en") == std::string::npos) s += ".0";
    return s;
}

std::string complexText(double re, double im) {
    std::string i = floatText(im);
    return floatText(re) + (i[0] == '-' ? "" : "+") + i + "i";
}

// Arithmetic on numbers, for folding. Integers that overflow become floats.
Num numInt(int64_t i) {
    Num n;
    n.i = i;
    return n;
}

std::complex<double> asComplex(const Num &n) {
    return n.tag == Num::Int ? std::complex<double>(double(n.i), 0.0) : n.z;
}

Num numFloatOrComplex(const Num &a, const Num &b, std::complex<double> z) {
    Num r;
    r.tag = (a.tag == Num::Complex || b.tag == Num::Complex) ? Num::Complex : Num::Float;
    r.z = r.tag == Num::Float ? std::complex<double>(z.real(), 0.0) : z;
    return r;
}

Num add(const Num &a, const Num &b) {
    if (a.tag == Num::Int && b.tag == Num::Int) {
        int64_t s;
        if (!__builtin_add_overflow(a.i, b.i, &s)) return numInt(s);
        Num r;
        r.tag = Num::Float;
        r.z = double(a.i) + double(b.i);
        return r;
    }
    return numFloatOrComplex(a, b, asComplex(a) + asComplex(b));
}

Num mul(const Num &a, const Num &b) {
    if (a.tag == Num::Int && b.tag == Num::Int) {
        int64_t p;
        if (!__builtin_mul_overflow(a.i, b.i, &p)) return numInt(p);
        Num r;
        r.tag = Num::Float;
        r.z = double(a.i) * double(b.i);
        return r;
    }
    if (a.tag != Num::Complex && b.tag != Num::Complex)
        return numFloatOrComplex(a, b, asComplex(a).real() * asComplex(b).real());
    return numFloatOrComplex(a, b, asComplex(a) * asComplex(b));
}

Num power(const Num &base, int64_t e) {
    if (e == 0) return numInt(1);
    if (e < 0) {
        Num r;
        if (base.tag == Num::Complex) {
            r.tag = Num::Complex;
            r.z = std::pow(base.z, double(e));
        } else {
            r.tag = Num::Float;
            r.z = std::pow(asComplex(base).real(), double(e));
        }
        return r;
    }
    Num r = numInt(1), b = base;
    for (uint64_t k = uint64_t(e); k; k >>= 1) {
        if (k & 1) r = mul(r, b);
        if (k > 1) b = mul(b, b);
    }
    return r;
}

bool isIntZero(const Num &n) { return n.tag == Num::Int && n.i == 0; }
bool isIntOne(const Num &n) { return n.tag == Num::Int && n.i == 1; }

// An immediate integer's value; coefficients and exponents are immediates.
bool smallInt(Value v, int64_t &k) {
    if (!(v & 1)) return false;
    k = int64_t(v) >> 1;
    return true;
}

}  // namespace

size_t elementSize(int32_t datatype) {
    switch (datatype) {
    case 0: return 8;
    case 1: return 16;
    case 2: return 1;
    case 3: return 2;
    case 4: return 4;
    case 5: return 8;
    case 6: return 8;
    case 7: return 16;
    case 8: return 4;
    default: return 0;
    }
}

const char *datatypeText(int32_t datatype) {
    static const char *const texts[] = {"anything",   "complex(anything)", "integer[1]",
                                        "integer[2]", "integer[4]",        "integer[8]",
                                        "float[8]",   "complex[8]",        "float[4]"};
    return datatype >= 0 && datatype <= 8 ? texts[datatype] : "unknown";
}

Host *current() { return tlsCurrent; }

// Under AddressSanitizer the guards are poisoned too, so that a read of
// them is reported where it happens.
#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#define ORB_GUARDS(rec, how)                                                                          \
    do {                                                                                              \
        how((rec)->block, kGuardBytes);                                                               \
        how(static_cast<char *>((rec)->data) + size_t((rec)->count) * (rec)->elemSize, kGuardBytes); \
    } while (0)
#define ORB_POISON(rec) ORB_GUARDS(rec, ASAN_POISON_MEMORY_REGION)
#define ORB_UNPOISON(rec) ORB_GUARDS(rec, ASAN_UNPOISON_MEMORY_REGION)
#else
#define ORB_POISON(rec) ((void)0)
#define ORB_UNPOISON(rec) ((void)0)
#endif

RTableRec::~RTableRec() {
    if (!block) return;
    ORB_UNPOISON(this);
    std::free(block);
}

bool RTableRec::guardsIntact() const {
    if (!block) return true;
    ORB_UNPOISON(this);
    struct Repoison {
        const RTableRec *r;
        ~Repoison() { ORB_POISON(r); }
    } repoison{this};
    const auto *before = static_cast<const uint8_t *>(block);
    const auto *after = static_cast<const uint8_t *>(data) + size_t(count) * elemSize;
    for (size_t i = 0; i < kGuardBytes; ++i)
        if (before[i] != kGuardPattern || after[i] != kGuardPattern) return false;
    return true;
}

// ---------------------------------------------------------------------------
// The heap.

uint64_t *Host::Impl::alloc(uint32_t length, uint32_t kind) {
    uint32_t n = length ? length : 1;
    auto p = std::make_unique<uint64_t[]>(n);
    uint64_t *raw = p.get();
    raw[0] = uint64_t(length) | (uint64_t(kind & 63u) << 32);
    words.emplace(raw, n);
    objects.push_back(std::move(p));
    return raw;
}

const uint64_t *Host::Impl::object(Value v) const {
    if (v & 1) return nullptr;
    auto *p = reinterpret_cast<const uint64_t *>(v);
    return words.count(p) ? p : nullptr;
}

uint32_t Host::Impl::classify(Value v) const {
    if (v & 1) return int64_t(v) < 0 ? kNegInt : kPosInt;
    const uint64_t *p = object(v);
    return p ? uint32_t((p[0] >> 32) & 63u) : 0;
}

uint32_t Host::Impl::length(Value v) const {
    const uint64_t *p = object(v);
    if (!p) return 0;
    uint32_t header = uint32_t(p[0]);
    uint32_t have = words.at(p);
    return header < have ? header : have;
}

RTableRec *Host::Impl::rtable(Value v) const {
    if (v & 1) return nullptr;
    auto it = rtableOf.find(reinterpret_cast<const uint64_t *>(v));
    return it == rtableOf.end() ? nullptr : it->second;
}

Value Host::Impl::makeText(const char *text, size_t n, uint32_t kind) {
    uint64_t *o = alloc(uint32_t(1 + (n + 8) / 8), kind);
    std::memcpy(o + 1, text, n);
    return reinterpret_cast<Value>(o);
}

Value Host::Impl::makeRTable(const Settings &s, const int64_t *bounds, const void *data) {
    auto rec = std::make_unique<RTableRec>();
    rec->settings = s;
    rec->elemSize = elementSize(s.datatype);
    rec->count = 1;
    for (int32_t d = 0; d < s.numDims; ++d) {
        rec->bounds.emplace_back(bounds[2 * d], bounds[2 * d + 1]);
        rec->count *= bounds[2 * d + 1] - bounds[2 * d] + 1;
    }
    size_t bytes = size_t(rec->count) * rec->elemSize;
    size_t total = (kGuardBytes + bytes + kGuardBytes + 63) / 64 * 64;
    rec->block = std::aligned_alloc(64, total);
    if (!rec->block) {
        std::fprintf(stderr, "host: out of memory for an rtable of %zu bytes\n", bytes);
        std::abort();
    }
    std::memset(rec->block, kGuardPattern, total);
    rec->data = static_cast<char *>(rec->block) + kGuardBytes;
    if (data) {
        std::memcpy(rec->data, data, bytes);
    } else if (s.datatype <= 1) {
        // Host values: the integer 0 rather than a zero word.
        auto *w = static_cast<Value *>(rec->data);
        for (size_t i = 0; i < bytes / 8; ++i) w[i] = 1;
    } else {
        std::memset(rec->data, 0, bytes);
    }
    ORB_POISON(rec.get());
    return adopt(std::move(rec));
}

Value Host::Impl::adopt(std::unique_ptr<RTableRec> rec) {
    uint64_t *o = alloc(2, kRTable);
    o[1] = reinterpret_cast<uint64_t>(rec.get());
    rtableOf.emplace(o, rec.get());
    rtables.push_back(std::move(rec));
    return reinterpret_cast<Value>(o);
}

bool Host::Impl::toNum(Value v, Num &n) const {
    switch (classify(v)) {
    case kNegInt:
    case kPosInt:
        n = numInt(self->toInteger(v));
        return true;
    case kFloat:
        n.tag = Num::Float;
        n.z = self->toFloat(v);
        return true;
    case kComplex: {
        const uint64_t *o = object(v);
        double re, im;
        std::memcpy(&re, o + 1, 8);
        std::memcpy(&im, o + 2, 8);
        n.tag = Num::Complex;
        n.z = {re, im};
        return true;
    }
    default: return false;
    }
}

Value Host::Impl::fromNum(const Num &n) {
    switch (n.tag) {
    case Num::Int: return self->integer(n.i);
    case Num::Float: return self->float64(n.z.real());
    default: return self->complex(n.z.real(), n.z.imag());
    }
}

// Sums and products are flattened one level (their parts are already
// normal), their numbers folded, zero terms and unit factors dropped, and a
// single remaining operand stands for itself. Like terms are not combined.
Value Host::Impl::finish(Value v) {
    uint32_t kind = classify(v);
    if (kind != kSum && kind != kProduct) return v;
    uint32_t len = length(v);
    if (len % 2 != 1) return v;
    const uint64_t *o = object(v);

    using Parts = std::vector<std::pair<Value, Value>>;
    Parts parts;
    for (uint32_t i = 1; i + 1 < len; i += 2) {
        Value x = o[i], c = o[i + 1];
        int64_t k;
        if (classify(x) == kind && smallInt(c, k)) {
            // A nested sum scales by the coefficient, a nested product's
            // exponents multiply.
            const uint64_t *in = object(x);
            uint32_t inLen = length(x);
            bool ok = inLen % 2 == 1;
            Parts inner;
            for (uint32_t j = 1; ok && j < inLen; j += 2) {
                int64_t kj, p;
                if (!smallInt(in[j + 1], kj) || __builtin_mul_overflow(k, kj, &p)) ok = false;
                else inner.emplace_back(in[j], self->integer(p));
            }
            if (ok) {
                parts.insert(parts.end(), inner.begin(), inner.end());
                continue;
            }
        }
        parts.emplace_back(x, c);
    }

    Parts kept;
    if (kind == kSum) {
        Num acc;
        bool haveAcc = false;
        for (auto &[t, c] : parts) {
            Num nt, nc;
            int64_t k;
            if (toNum(t, nt) && toNum(c, nc)) {
                acc = haveAcc ? add(acc, mul(nt, nc)) : mul(nt, nc);
                haveAcc = true;
            } else if (!(smallInt(c, k) && k == 0)) {
                kept.emplace_back(t, c);
            }
        }
        if (kept.empty()) return haveAcc ? fromNum(acc) : self->integer(0);
        if (haveAcc && !isIntZero(acc)) kept.emplace_back(fromNum(acc), self->integer(1));
        int64_t k;
        if (kept.size() == 1 && smallInt(kept[0].second, k) && k == 1) return kept[0].first;
    } else {
        Num acc = numInt(1);
        for (auto &[f, e] : parts) {
            Num nf;
            bool intExp = classify(e) == kNegInt || classify(e) == kPosInt;
            int64_t k = intExp ? self->toInteger(e) : 0;
            if (intExp && k == 0) continue;
            if (intExp && toNum(f, nf)) acc = mul(acc, power(nf, k));
            else kept.emplace_back(f, e);
        }
        if (kept.empty() || isIntZero(acc)) return fromNum(acc);
        if (!isIntOne(acc)) kept.insert(kept.begin(), {fromNum(acc), self->integer(1)});
        int64_t k;
        if (kept.size() == 1 && smallInt(kept[0].second, k) && k == 1) return kept[0].first;
    }
    uint64_t *n = alloc(uint32_t(1 + 2 * kept.size()), kind);
    for (size_t i = 0; i < kept.size(); ++i) {
        n[1 + 2 * i] = kept[i].first;
        n[2 + 2 * i] = kept[i].second;
    }
    return reinterpret_cast<Value>(n);
}

Value Host::Impl::elementToValue(const void *cell, int32_t datatype) {
    const auto *b = static_cast<const unsigned char *>(cell);
    switch (datatype) {
    case 0: {
        Value v;
        std::memcpy(&v, b, 8);
        return v;
    }
    case 1: {
        Value re, im;
        std::memcpy(&re, b, 8);
        std::memcpy(&im, b + 8, 8);
        Num nr, ni;
        int64_t k;
        if (smallInt(im, k) && k == 0) return re;
        if (toNum(re, nr) && toNum(im, ni) && nr.tag != Num::Complex && ni.tag != Num::Complex)
            return self->complex(asComplex(nr).real(), asComplex(ni).real());
        return self->sum(re, 1, self->product(im, 1, self->name("I"), 1), 1);
    }
    case 2: return self->integer(int8_t(b[0]));
    case 3: {
        int16_t x;
        std::memcpy(&x, b, 2);
        return self->integer(x);
    }
    case 4: {
        int32_t x;
        std::memcpy(&x, b, 4);
        return self->integer(x);
    }
    case 5: {
        int64_t x;
        std::memcpy(&x, b, 8);
        return self->integer(x);
    }
    case 6: {
        double x;
        std::memcpy(&x, b, 8);
        return self->float64(x);
    }
    case 7: {
        double re, im;
        std::memcpy(&re, b, 8);
        std::memcpy(&im, b + 8, 8);
        return self->complex(re, im);
    }
    case 8: {
        float x;
        std::memcpy(&x, b, 4);
        return self->float64(x);
    }
    default: return nullValue;
    }
}

std::string Host::Impl::elementText(const void *cell, int32_t datatype) const {
    const auto *b = static_cast<const unsigned char *>(cell);
    switch (datatype) {
    case 0: {
        Value v;
        std::memcpy(&v, b, 8);
        return self->print(v);
    }
    case 1: {
        Value re, im;
        std::memcpy(&re, b, 8);
        std::memcpy(&im, b + 8, 8);
        std::string i = self->print(im);
        return self->print(re) + (i[0] == '-' ? "" : "+") + i + "*I";
    }
    case 2: return std::to_string(int8_t(b[0]));
    case 3: {
        int16_t x;
        std::memcpy(&x, b, 2);
        return std::to_string(x);
    }
    case 4: {
        int32_t x;
        std::memcpy(&x, b, 4);
        return std::to_string(x);
    }
    case 5: {
        int64_t x;
        std::memcpy(&x, b, 8);
        return std::to_string(x);
    }
    case 6: {
        double x;
        std::memcpy(&x, b, 8);
        return floatText(x);
    }
    case 7: {
        double re, im;
        std::memcpy(&re, b, 8);
        std::memcpy(&im, b + 8, 8);
        return complexText(re, im);
    }
    case 8: {
        float x;
        std::memcpy(&x, b, 4);
        return float4Text(x);
    }
    default: return "?";
    }
}

void Host::Impl::raise(const char *format, int nargs, Value a, Value b) {
    Frame *f = top;
    {
        // Everything with a destructor lives in this block, so nothing is
        // left alive on this frame when the jump leaves it.
        std::string msg;
        for (const char *p = format; *p; ++p) {
            if (p[0] == '%' && (p[1] == '1' || p[1] == '2') && p[1] - '0' <= nargs) {
                msg += self->messageForm(p[1] == '1' ? a : b);
                ++p;
            } else {
                msg += *p;
            }
        }
        if (!f) {
            std::fprintf(stderr, "error: %s\n", msg.c_str());
            if (mode() == ErrorMode::Jump) std::abort();
            return;
        }
        f->errors.push_back(std::move(msg));
    }
    if (mode() == ErrorMode::Return) return;
    std::longjmp(f->env, 1);
}

void Host::Impl::print(const std::string &text) {
    output += text;
    for (Frame *f = top; f; f = f->prev) f->output += text;
}

// ---------------------------------------------------------------------------
// The public side.

Host::Host() : impl_(std::make_unique<Impl>()), previous_(tlsCurrent) {
    impl_->self = this;
    impl_->nullValue = reinterpret_cast<Value>(impl_->alloc(1, kExprSeq));
    tlsCurrent = this;
}

Host::~Host() { tlsCurrent = previous_; }

void *const *Host::callbacks() const { return callbackTable(); }

Value Host::integer(int64_t v) {
    if (v >= kImmediateMin && v <= kImmediateMax) return (uint64_t(v) << 1) | 1u;
    uint64_t *o = impl_->alloc(2, v < 0 ? kNegInt : kPosInt);
    o[1] = uint64_t(v);
    return reinterpret_cast<Value>(o);
}

Value Host::float64(double v) {
    uint64_t *o = impl_->alloc(2, kFloat);
    std::memcpy(o + 1, &v, 8);
    return reinterpret_cast<Value>(o);
}

Value Host::complex(double re, double im) {
    uint64_t *o = impl_->alloc(3, kComplex);
    std::memcpy(o + 1, &re, 8);
    std::memcpy(o + 2, &im, 8);
    return reinterpret_cast<Value>(o);
}

Value Host::string(const std::string &text) { return impl_->makeText(text.c_str(), text.size(), kString); }
Value Host::name(const std::string &text) { return impl_->makeText(text.c_str(), text.size(), kName); }

Value Host::exprseq(const std::vector<Value> &items) {
    uint64_t *o = impl_->alloc(uint32_t(items.size() + 1), kExprSeq);
    std::copy(items.begin(), items.end(), o + 1);
    return reinterpret_cast<Value>(o);
}

Value Host::list(const std::vector<Value> &items) {
    uint64_t *o = impl_->alloc(2, kList);
    o[1] = exprseq(items);
    return reinterpret_cast<Value>(o);
}

Value Host::null() { return impl_->nullValue; }

Value Host::sum(Value t1, int64_t c1, Value t2, int64_t c2) {
    uint64_t *o = impl_->alloc(5, kSum);
    o[1] = t1, o[2] = integer(c1), o[3] = t2, o[4] = integer(c2);
    return impl_->finish(reinterpret_cast<Value>(o));
}

Value Host::product(Value f1, int64_t e1, Value f2, int64_t e2) {
    uint64_t *o = impl_->alloc(5, kProduct);
    o[1] = f1, o[2] = integer(e1), o[3] = f2, o[4] = integer(e2);
    return impl_->finish(reinterpret_cast<Value>(o));
}

Value Host::rtable(int32_t datatype, const std::vector<std::pair<int64_t, int64_t>> &bounds,
                   const void *data, int32_t storage) {
    if (!elementSize(datatype)) throw std::invalid_argument("rtable: unknown datatype");
    if (bounds.empty()) throw std::invalid_argument("rtable: no dimensions");
    std::vector<int64_t> flat;
    for (auto &[lo, hi] : bounds) {
        if (hi < lo - 1) throw std::invalid_argument("rtable: upper bound below lower bound - 1");
        flat.push_back(lo), flat.push_back(hi);
    }
    Settings s;
    std::memset(&s, kSettingsPattern, sizeof s);
    s.datatype = datatype;
    s.uninterpreted = 0;
    s.storage = storage;
    s.numDims = int32_t(bounds.size());
    return impl_->makeRTable(s, flat.data(), data);
}

Value Host::rtable1(int32_t datatype, int64_t n, const void *data) {
    return rtable(datatype, {{1, n}}, data);
}

Value Host::rtableOver(int32_t datatype, const std::vector<std::pair<int64_t, int64_t>> &bounds, void *data) {
    if (!elementSize(datatype)) throw std::invalid_argument("rtableOver: unknown datatype");
    if (bounds.empty() || !data) throw std::invalid_argument("rtableOver: no dimensions or no storage");
    auto rec = std::make_unique<RTableRec>();
    std::memset(&rec->settings, kSettingsPattern, sizeof rec->settings);
    rec->settings.datatype = datatype;
    rec->settings.uninterpreted = 0;
    rec->settings.storage = kRectangular;
    rec->settings.numDims = int32_t(bounds.size());
    rec->elemSize = elementSize(datatype);
    rec->count = 1;
    for (auto &[lo, hi] : bounds) {
        if (hi < lo - 1) throw std::invalid_argument("rtableOver: upper bound below lower bound - 1");
        rec->bounds.emplace_back(lo, hi);
        rec->count *= hi - lo + 1;
    }
    rec->data = data;
    return impl_->adopt(std::move(rec));
}

uint32_t Host::kindOf(Value v) {
    if (v & 1) return int64_t(v) < 0 ? kNegInt : kPosInt;
    Host *h = current();
    if (h) return h->impl_->classify(v);
    return v ? uint32_t((reinterpret_cast<const uint64_t *>(v)[0] >> 32) & 63u) : 0;
}

bool Host::isInteger(Value v) const {
    uint32_t k = impl_->classify(v);
    return k == kNegInt || k == kPosInt;
}

int64_t Host::toInteger(Value v) const {
    if (v & 1) return int64_t(v) >> 1;
    if (!isInteger(v)) return 0;
    return int64_t(impl_->object(v)[1]);
}

double Host::toFloat(Value v) const {
    switch (impl_->classify(v)) {
    case kNegInt:
    case kPosInt: return double(toInteger(v));
    case kFloat: {
        double d;
        std::memcpy(&d, impl_->object(v) + 1, 8);
        return d;
    }
    default: return 0.0;
    }
}

std::string Host::text(Value v) const {
    uint32_t k = impl_->classify(v);
    if (k != kString && k != kName) return "";
    const char *p = reinterpret_cast<const char *>(impl_->object(v) + 1);
    return std::string(p, strnlen(p, size_t(impl_->length(v) - 1) * 8));
}

std::vector<Value> Host::elements(Value v) const {
    uint32_t k = impl_->classify(v);
    if (k == kList) {
        Value seq = impl_->object(v)[1];
        if (impl_->classify(seq) != kExprSeq) return {};
        v = seq;
        k = kExprSeq;
    }
    if (k != kExprSeq) return {v};
    const uint64_t *o = impl_->object(v);
    return std::vector<Value>(o + 1, o + impl_->length(v));
}

bool Host::isRTable(Value v) const { return impl_->rtable(v) != nullptr; }

RTableInfo Host::rtableInfo(Value v) const {
    RTableRec *r = impl_->rtable(v);
    if (!r) throw std::invalid_argument("rtableInfo: not an rtable");
    return {r->settings.datatype, r->settings.storage, r->bounds, r->count, r->data};
}

std::string Host::printFull(Value v) const {
    impl_->printAll = true;
    std::string s;
    try {
        s = print(v);
    } catch (...) {
        impl_->printAll = false;
        throw;
    }
    impl_->printAll = false;
    return s;
}

Value Host::element(Value v, int64_t k) {
    RTableRec *r = impl_->rtable(v);
    if (!r || k < 0 || k >= r->count) throw std::out_of_range("element: no such element");
    return impl_->elementToValue(static_cast<const unsigned char *>(r->data) + k * r->elemSize, r->settings.datatype);
}

std::string Host::print(Value v) const {
    const Impl &I = *impl_;
    uint32_t kind = I.classify(v);
    const uint64_t *o = I.object(v);
    auto isSum = [&](Value x) { return I.classify(x) == kSum; };
    switch (kind) {
    case 0: {
        char buf[32];
        std::snprintf(buf, sizeof buf, "<0x%llx>", static_cast<unsigned long long>(v));
        return buf;
    }
    case kNegInt:
    case kPosInt: return std::to_string(toInteger(v));
    case kFloat: return floatText(toFloat(v));
    case kComplex: {
        double re, im;
        std::memcpy(&re, o + 1, 8);
        std::memcpy(&im, o + 2, 8);
        return complexText(re, im);
    }
    case kString: {
        std::string s = "\"";
        for (char c : text(v)) {
            if (c == '"' || c == '\\') s += '\\';
            s += c;
        }
        return s + "\"";
    }
    case kName: return text(v);
    case kExprSeq:
    case kList: {
        std::string s;
        for (Value x : elements(v)) s += (s.empty() ? "" : ", ") + print(x);
        if (kind == kList) return "[" + s + "]";
        return I.length(v) <= 1 ? "NULL" : s;
    }
    case kSum: {
        std::string s;
        for (uint32_t i = 1; i + 1 < I.length(v); i += 2) {
            Value t = o[i], c = o[i + 1];
            std::string term = print(t);
            int64_t k = 0;
            bool ck = smallInt(c, k);
            if (!(ck && k == 1)) {
                if (isSum(t) || term[0] == '-') term = '(' + term + ')';
                term.insert(0, ck && k == -1 ? std::string("-") : print(c) + "*");
            }
            if (i == 1) s = term;
            else if (term[0] == '-') s += " - " + term.substr(1);
            else s += " + " + term;
        }
        return s;
    }
    case kProduct: {
        std::string s;
        for (uint32_t i = 1; i + 1 < I.length(v); i += 2) {
            Value f = o[i], e = o[i + 1];
            std::string base = print(f);
            int64_t k = 0;
            bool ek = smallInt(e, k);
            if (i == 1 && ek && k == 1 && base == "-1" && I.length(v) > 3) {
                s = "-";
                continue;
            }
            uint32_t fk = I.classify(f);
            if (fk == kSum || fk == kProduct || fk == kComplex || base[0] == '-') base = "(" + base + ")";
            if (!(ek && k == 1)) {
                std::string ex = print(e);
                base += "^" + (ex[0] == '-' || I.classify(e) > kPosInt ? "(" + ex + ")" : ex);
            }
            s += (s.empty() || s == "-" ? "" : "*") + base;
        }
        return s;
    }
    case kRTable: {
        RTableRec *r = I.rtable(v);
        if (!r) return "<rtable?>";
        std::string s = std::string("rtable(") + datatypeText(r->settings.datatype);
        for (auto &[lo, hi] : r->bounds) s += ", " + std::to_string(lo) + ".." + std::to_string(hi);
        s += ", [";
        const auto *b = static_cast<const unsigned char *>(r->data);
        // Long rtables show their first and last five elements and how many
        // lie between.
        const bool abridge = !I.printAll && r->count > 12;
        for (int64_t i = 0; i < r->count; ++i) {
            if (abridge && i == 5) {
                s += ", ... " + std::to_string(r->count - 10) + " more ...";
                i = r->count - 6;
                continue;
            }
            s += (i ? ", " : "") + I.elementText(b + i * r->elemSize, r->settings.datatype);
        }
        return s + "])";
    }
    default: return "<object of kind " + std::to_string(kind) + ">";
    }
}

std::string Host::messageForm(Value v) const {
    return impl_->classify(v) == kString ? text(v) : print(v);
}

CallResult Host::protect(const std::function<Value()> &body) {
    Impl &I = *impl_;
    auto frame = std::make_unique<Frame>();
    Frame *f = frame.get();
    f->prev = I.top;
    I.top = f;
    try {
        if (setjmp(f->env) == 0) {
            f->result = body();
            f->returned = true;
        }
    } catch (...) {
        I.top = f->prev;
        throw;
    }
    I.top = f->prev;
    CallResult r;
    r.result = f->returned ? f->result : 0;
    r.raised = !f->errors.empty();
    if (r.raised) r.error = f->errors.front();
    r.errors = std::move(f->errors);
    r.output = std::move(f->output);
    return r;
}

CallResult Host::call(ExportFn fn, const std::vector<Value> &args) {
    // A few spare slots holding the null value follow the last argument, so
    // an export that reads beyond its count finds a value this host knows.
    std::vector<Value> padded(args);
    padded.insert(padded.end(), kSpareArgs, null());
    Value *seq = reinterpret_cast<Value *>(exprseq(padded));
    seq[0] = (seq[0] & ~uint64_t(0xffffffffu)) | uint64_t(args.size() + 1);
    void *const *table = callbacks();
    return protect([fn, table, seq] { return fn(table, seq); });
}

void Host::forceNumArgs(int64_t n) {
    impl_->forced = true;
    impl_->forcedCount = n;
}

void Host::clearForcedNumArgs() { impl_->forced = false; }

int64_t Host::callbackCalls(int position) const {
    return position >= 0 && position < kTableSize ? impl_->counts[position] : 0;
}

const std::vector<int> &Host::callbackTrace() const { return impl_->trace; }

void Host::resetCallbackCounts() {
    impl_->counts.fill(0);
    impl_->trace.clear();
}

bool Host::guardsIntact() const {
    for (const auto &r : impl_->rtables)
        if (!r->guardsIntact()) return false;
    return true;
}

std::string Host::takeOutput() {
    std::string s = std::move(impl_->output);
    impl_->output.clear();
    return s;
}

}  // namespace orbhost
