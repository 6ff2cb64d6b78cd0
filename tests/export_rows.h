// The export rows: one valid call per export, written in a small argument
// language, with the counts and datatypes each export accepts. The export
// sweeps, the fuzzer's seeds and the concurrency test all start from them.
#ifndef ORB_TESTS_EXPORT_ROWS_H
#define ORB_TESTS_EXPORT_ROWS_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host.h"
#include "orb/exports.h"

namespace orbrows {

using orbhost::ExportFn;
using orbhost::Host;
using orbhost::Value;

struct Row {
    const char *name;
    ExportFn fn;
    // Blank-separated: f8 f4 c8 i1 i2 i4 i8 make an rtable of that datatype
    // (five elements, or /N of them); a number with a point is a float, any
    // other number an integer; "text" (no blanks) a string.
    const char *args;
    // Accepted argument counts as digits; "*" for any count not negative.
    const char *counts;
    // The counts the arity message names: "expecting <these> argument(s),
    // but received n".
    const char *arity;
    // Datatype codes argument 1 takes. Led by '=' when a typed accessor reads
    // argument 1; otherwise any other code must raise "datatype not
    // supported". Empty when argument 1 is no rtable.
    const char *codes;
    // The count a valid call reports, for an export whose count test is
    // inverted; -1 for the real one.
    int64_t forcedCount = -1;
    // The error a valid call ends with, for an export whose initialiser test
    // is inverted (it raises whenever the initialiser succeeds); null for none.
    const char *validError = nullptr;
    // Bit i set: a one-dimensional rtable at argument position i is handed
    // over as a matrix of about square shape (the image exports).
    uint32_t matrices = 0;
};

// Every export's row.
extern const Row kRows[];
extern const size_t kRowCount;

// Elements of an rtable a row token makes when it names no length.
constexpr int64_t kLength = 5;

// The datatype code a token such as "f8" or "i2/7" names, or -1.
int codeOf(const std::string &t);
// An rtable of code with elements 1, 2, 3, ... (complex ones with an
// imaginary part of a half); bounds 1..n unless given.
Value filled(Host &h, int code, int64_t n, const std::vector<std::pair<int64_t, int64_t>> &bounds = {});
// The blank-separated tokens of a row's argument text.
std::vector<std::string> tokens(const char *spec);
// The value one token stands for.
Value make(Host &h, const std::string &t);
// A row's valid arguments, made in h.
std::vector<Value> validArgs(Host &h, const Row &row);
// args with the rtables at the row's matrix positions made matrices.
std::vector<Value> shaped(Host &h, const Row &row, std::vector<Value> args);

}  // namespace orbrows

#endif
