// The stand-in host: a small value heap, rtables, printed forms, the callback
// table the library is handed, and a protected call that runs an export and
// catches what it raises.
//
// This header declares the host's side of the interface on its own, without
// the library's headers, so that a layout or calling-convention slip on either
// side shows up in tests instead of cancelling out.
#ifndef ORB_STANDIN_HOST_H
#define ORB_STANDIN_HOST_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orbhost {

// A value word: an immediate integer 2k+1 when bit 0 is set, else a pointer to
// an object whose word 0 is the header (length in bits 0-31, kind in 32-37).
using Value = uint64_t;

// Object kinds. The sum, product, list and rtable kinds are shared with the
// library; the others are this host's own choice.
enum Kind : uint32_t {
    kNegInt = 1,    // boxed integer < -2^62, word 1 holds it
    kPosInt = 2,    // boxed integer >= 2^62, word 1 holds it
    kFloat = 3,     // word 1 holds the double's bits
    kComplex = 4,   // words 1, 2 hold re, im as doubles
    kString = 5,    // words 1.. hold NUL-terminated text
    kName = 6,      // words 1.. hold NUL-terminated text
    kProduct = 14,  // header, factor, exponent, factor, exponent
    kSum = 16,      // header, term, coefficient, term, coefficient
    kExprSeq = 29,  // header, then the values; the empty one is the null value
    kList = 32,     // header, then the handle of the element sequence
    kRTable = 40,   // header, then a pointer to the host's rtable record
};

// The host's own copy of the settings record (104 bytes). The bytes the
// library does not use are filled with a pattern on every fill.
struct Settings {
    int32_t datatype;       // 0
    uint8_t pad0[12];       // 4
    int32_t uninterpreted;  // 16
    int32_t storage;        // 20: 4 = rectangular
    uint8_t pad1[40];       // 24
    int32_t numDims;        // 64
    uint8_t pad2[36];       // 68
};
static_assert(sizeof(Settings) == 104, "settings record is 104 bytes");

// The element cell, returned and taken by value in two integer registers.
struct Element {
    int64_t w0;
    int64_t w1;
};

// The byte the host writes into the settings padding.
constexpr uint8_t kSettingsPattern = 0xA5;

// Storage codes: 4 is rectangular; the host also makes a non-rectangular
// variant (contiguous all the same) so the library's storage check can be tested.
constexpr int32_t kRectangular = 4;
constexpr int32_t kNonRectangular = 1;

using ExportFn = Value (*)(void *const *callbacks, Value *args);

enum class ErrorMode {
    Jump,    // the error raise never returns: it jumps back to the protected call
    Return,  // the error raise records the message and returns to the library
};

struct CallResult {
    Value result = 0;                 // what the export returned (0 after a jump)
    bool raised = false;              // an error was raised
    std::string error;                // the first error, formatted
    std::vector<std::string> errors;  // every error raised (Return mode may raise several)
    std::string output;               // everything printed through the print callback
};

struct RTableInfo {
    int32_t datatype;
    int32_t storage;
    std::vector<std::pair<int64_t, int64_t>> bounds;  // (lower, upper) per dimension
    int64_t count;                                    // number of elements
    void *data;                                       // contiguous, last index fastest
};

class Host {
public:
    // Becomes the current host of this thread until destroyed (the callbacks
    // carry no context, so they find their host through a thread-local).
    Host();
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    // The callback table to hand to the library. Unused positions hold a
    // function that aborts with the position's number.
    void *const *callbacks() const;

    // Making values. Every rtable's storage has guard bytes on either side
    // (see guardsIntact).
    Value integer(int64_t v);
    Value float64(double v);
    Value complex(double re, double im);
    Value string(const std::string &text);
    Value name(const std::string &text);
    Value list(const std::vector<Value> &items);
    Value exprseq(const std::vector<Value> &items);
    Value null();
    // Sums and products are finished as the finish callback does: nested
    // ones flattened, numbers folded, zero terms and unit factors dropped, a
    // lone operand standing for itself (so the result may be any kind).
    Value sum(Value t1, int64_t c1, Value t2, int64_t c2);
    Value product(Value f1, int64_t e1, Value f2, int64_t e2);
    // An rtable with the given bounds; data (if given) is copied, else zeros
    // (the integer 0 for datatypes 0 and 1). The creation callback likewise
    // copies data it is given into storage of its own.
    Value rtable(int32_t datatype, const std::vector<std::pair<int64_t, int64_t>> &bounds,
                 const void *data = nullptr, int32_t storage = kRectangular);
    // One-dimensional with bounds 1..n.
    Value rtable1(int32_t datatype, int64_t n, const void *data = nullptr);
    // An rtable over storage the caller owns and keeps alive as long as the
    // value is used (contiguous, last index fastest, rectangular), without
    // guard bytes: several hosts, one per thread, can then read the very
    // same storage.
    Value rtableOver(int32_t datatype, const std::vector<std::pair<int64_t, int64_t>> &bounds, void *data);

    // Reading values.
    // The object kind; immediates classify as 1 or 2, and a word that is no
    // object of the current host (a raw element handed over as a value) as 0.
    static uint32_t kindOf(Value v);
    static bool isImmediate(Value v) { return (v & 1u) != 0; }
    bool isInteger(Value v) const;
    int64_t toInteger(Value v) const;
    double toFloat(Value v) const;  // integers and floats
    std::string text(Value v) const;  // strings and names
    // A list's or sequence's elements; any other value is a sequence of one.
    std::vector<Value> elements(Value listOrSeq) const;
    bool isRTable(Value v) const;
    RTableInfo rtableInfo(Value v) const;

    // The host's printed form: integers in decimal, floats in the shortest
    // form that reads back exactly (always with a point or exponent),
    // complex numbers as a+bi, strings in double quotes, names bare, lists in
    // brackets, sequences joined by ", ", the null value as NULL, rtables as
    // rtable(datatype, bounds, [elements]) with long ones abridged; a word
    // that is no value of this host prints as <0x...>.
    std::string print(Value v) const;
    // The same with every element of an rtable shown (print abridges long
    // ones to their first and last five and a count of what is left out).
    std::string printFull(Value v) const;
    // Element k (0-based, last index fastest) of an rtable as a host value.
    Value element(Value rtable, int64_t k);
    // How a value stands in an error message in place of %1 or %2: the
    // printed form, except that a string stands as its bare text.
    std::string messageForm(Value v) const;

    // Running library code. Both leave the host as they found it apart from
    // the values made meanwhile. A raise in Jump mode longjmps back here, so
    // a body must hold no object with a destructor (nor a temporary such as
    // a braced vector) across a call that may raise. Errors raised in a
    // nested protect belong to it alone; printed text reaches every
    // enclosing call's output. call() puts a few null values after the last
    // argument, so an export that reads past its count finds a host value.
    CallResult call(ExportFn fn, const std::vector<Value> &args);
    CallResult protect(const std::function<Value()> &body);

    void setErrorMode(ErrorMode m) { mode_ = m; }
    ErrorMode errorMode() const { return mode_; }

    // Test hooks: make the argument count callback answer n regardless of the
    // sequence (cleared by clearForcedNumArgs), and count callback calls by
    // position since the last reset.
    void forceNumArgs(int64_t n);
    void clearForcedNumArgs();
    int64_t callbackCalls(int position) const;
    const std::vector<int> &callbackTrace() const;  // the first 4096 calls since the reset
    void resetCallbackCounts();

    // Whether the guard bytes around every rtable made so far are unchanged:
    // false once anything read-modify-wrote or wrote outside an rtable's
    // storage.
    bool guardsIntact() const;

    // Text printed through the print callback since the last take.
    std::string takeOutput();

    struct Impl;

private:
    std::unique_ptr<Impl> impl_;
    ErrorMode mode_ = ErrorMode::Jump;
    Host *previous_;
};

// The host current on this thread, or null.
Host *current();

// Datatype texts used in printed forms: "integer[1]", "float[8]", ...
const char *datatypeText(int32_t datatype);

}  // namespace orbhost

#endif
