// The host's private state, shared by the value code and the callbacks.
#ifndef ORB_STANDIN_HOST_IMPL_H
#define ORB_STANDIN_HOST_IMPL_H

#include "host.h"

#include <array>
#include <complex>
#include <csetjmp>
#include <unordered_map>

namespace orbhost {

// Slots in the callback table; the library reads positions up to 224.
constexpr int kTableSize = 256;

// Callback positions the trace keeps after a reset (see callbackTrace).
constexpr size_t kTraceLimit = 4096;

// Null-valued slots after the last argument of a call (see Host::call).
constexpr size_t kSpareArgs = 4;

// The table handed to the library (the same for every host: the callbacks
// find their host through current()).
void *const *callbackTable();

// Guard bytes on either side of every rtable's storage: a library that reads
// or writes past its rtables shows up as a changed guard.
constexpr size_t kGuardBytes = 64;
constexpr uint8_t kGuardPattern = 0xCD;

// An rtable's host-side record. Storage is one aligned block, last index
// fastest, whatever the storage code says, with guards before and after.
struct RTableRec {
    Settings settings;  // as given on creation, padding included
    std::vector<std::pair<int64_t, int64_t>> bounds;
    int64_t count = 0;
    size_t elemSize = 0;
    void *data = nullptr;   // block + kGuardBytes
    void *block = nullptr;  // what was allocated; null over the caller's storage (no guards)
    bool guardsIntact() const;
    ~RTableRec();
};

// A protected call in progress. Lives on the heap so that nothing the jump
// lands on is an automatic variable changed after setjmp.
struct Frame {
    std::jmp_buf env;
    Frame *prev = nullptr;
    std::vector<std::string> errors;
    std::string output;
    bool returned = false;  // the body came back normally
    Value result = 0;
};

// A number the host can compute with when it folds sums and products.
struct Num {
    enum Tag { Int, Float, Complex } tag = Int;
    int64_t i = 0;
    std::complex<double> z;  // Float uses z.real() only
};

struct Host::Impl {
    Host *self = nullptr;

    std::vector<std::unique_ptr<uint64_t[]>> objects;
    std::unordered_map<const uint64_t *, uint32_t> words;  // allocated size of each object
    std::vector<std::unique_ptr<RTableRec>> rtables;
    std::unordered_map<const uint64_t *, RTableRec *> rtableOf;
    Value nullValue = 0;

    Frame *top = nullptr;
    std::string output;

    bool forced = false;
    int64_t forcedCount = 0;
    std::array<int64_t, kTableSize> counts{};
    std::vector<int> trace;

    static Impl &of(Host &h) { return *h.impl_; }
    ErrorMode mode() const { return self->mode_; }

    // A new object of the given size with its header set and the rest zero.
    uint64_t *alloc(uint32_t length, uint32_t kind);
    // The kind of a value, or 0 for a word that is neither an immediate
    // integer nor an object of this host.
    uint32_t classify(Value v) const;
    const uint64_t *object(Value v) const;  // null unless one of ours
    uint32_t length(Value v) const;          // header length, capped by the allocation
    RTableRec *rtable(Value v) const;

    Value makeText(const char *text, size_t n, uint32_t kind);
    Value makeRTable(const Settings &s, const int64_t *bounds, const void *data);
    Value adopt(std::unique_ptr<RTableRec> rec);  // makes the rtable object for a record
    Value finish(Value v);  // normalises sums and products

    bool toNum(Value v, Num &n) const;
    Value fromNum(const Num &n);

    Value elementToValue(const void *cell, int32_t datatype);
    std::string elementText(const void *cell, int32_t datatype) const;
    // print shows every element of an rtable while set (printFull).
    bool printAll = false;

    // Records a formatted error; in Jump mode leaves through the innermost
    // protected call and never returns.
    void raise(const char *format, int nargs, Value a, Value b);
    void print(const std::string &text);
};

size_t elementSize(int32_t datatype);  // 0 for an unknown code

}  // namespace orbhost

#endif
