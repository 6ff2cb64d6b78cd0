// Export-level sweeps, one table row per export with a valid call. Each row
// is called with each backend allocation failing in turn, with every argument
// replaced by wrong values, with wrong argument counts, and with every
// datatype its first argument does not take, in both error modes of the host.
// Every call must leave no backend allocation behind and every rtable's guard
// bytes as they were. A name in the export list that the shared library
// defines and that has no row fails the registry test.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <fstream>
#include <set>
#include <sstream>

#include "backend_hooks.h"
#include "export_rows.h"
#include "frame/frame.h"
#include "support.h"

namespace orbrows {
// Rows print by name in test listings.
void PrintTo(const Row &row, std::ostream *os) { *os << row.name; }
}  // namespace orbrows

namespace {

using orbhost::CallResult;
using orbhost::ErrorMode;
using orbhost::ExportFn;
using orbhost::Host;
using orbtest::Value;
using orbrows::codeOf;
using orbrows::filled;
using orbrows::kLength;
using orbrows::kRowCount;
using orbrows::kRows;
using orbrows::Row;
using orbrows::tokens;
using orbrows::validArgs;

#define FN(f) reinterpret_cast<ExportFn>(f)

// What one call left wrong, or "".
struct Outcome {
    CallResult result;
    std::string fault;
};

// The count a call reports: the row's forced one, or the real one.
constexpr int64_t kRealCount = INT64_MIN;
int64_t countOf(const Row &row) { return row.forcedCount >= 0 ? row.forcedCount : kRealCount; }

Outcome run(Host &h, const Row &row, const std::vector<Value> &args, int64_t count)
{
    int64_t before = orbBackendLiveAllocations();
    if (count != kRealCount)
        h.forceNumArgs(count);
    Outcome o{h.call(row.fn, orbrows::shaped(h, row, args)), ""};
    h.clearForcedNumArgs();
    orbBackendFailNthAllocation(0);
    if (orbBackendLiveAllocations() != before)
        o.fault = "left " + std::to_string(orbBackendLiveAllocations() - before) + " allocations";
    else if (!h.guardsIntact())
        o.fault = "wrote outside an rtable's storage";
    return o;
}

// The wrong values tried in place of one argument.
std::vector<Value> wrongValues(Host &h, const std::string &original)
{
    std::vector<Value> out;
    int code = codeOf(original);
    for (int c = 0; c <= 8; ++c)
        if (c != code)
            out.push_back(filled(h, c, kLength));
    if (code >= 0) {
        out.push_back(filled(h, code, 2));
        out.push_back(filled(h, code, 9));
        out.push_back(filled(h, code, 0));
        out.push_back(filled(h, code, 6, {{1, 2}, {1, 3}}));
        out.push_back(h.rtable(code, {{1, kLength}}, nullptr, orbhost::kNonRectangular));
    }
    for (Value v : {h.string("nearest"), h.name("x"), h.integer(-1), h.integer(int64_t(1) << 40),
                    h.float64(0.5), h.complex(1, 1), h.null(), h.list({h.integer(1)})})
        out.push_back(v);
    return out;
}

std::vector<std::string> sweep(const Row &row)
{
    std::vector<std::string> faults;
    auto note = [&](const std::string &what, const Outcome &o) {
        if (!o.fault.empty())
            faults.push_back(std::string(row.name) + " " + what + ": " + o.fault);
    };
    std::vector<std::string> spec = tokens(row.args);

    // The valid call, then with the k-th allocation failing: each failure
    // raises "out of memory", until a k at which the call succeeds.
    {
        Host h;
        Outcome o = run(h, row, validArgs(h, row), countOf(row));
        note("valid call", o);
        if (o.result.raised && !(row.validError && o.result.error == row.validError))
            faults.push_back(std::string(row.name) + " valid call raised: " + o.result.error);
    }
    for (int k = 1;; ++k) {
        Host h;
        std::vector<Value> args = validArgs(h, row);
        orbBackendFailNthAllocation(k);
        Outcome o = run(h, row, args, countOf(row));
        note("allocation " + std::to_string(k) + " failing", o);
        if (!o.result.raised || (row.validError && o.result.error == row.validError))
            break;
        if (o.result.error != "out of memory" || k == 64) {
            faults.push_back(std::string(row.name) + " allocation " + std::to_string(k) +
                             " failing raised: " + o.result.error);
            break;
        }
    }

    // Every argument replaced by each wrong value, in both error modes.
    for (ErrorMode mode : {ErrorMode::Jump, ErrorMode::Return})
        for (size_t i = 0; i < spec.size(); ++i) {
            Host h;
            h.setErrorMode(mode);
            std::vector<Value> args = validArgs(h, row);
            for (Value wrong : wrongValues(h, spec[i])) {
                std::vector<Value> call = args;
                call[i] = wrong;
                note("argument " + std::to_string(i + 1) + " " + h.print(wrong) +
                         (mode == ErrorMode::Return ? " (returning raise)" : ""),
                     run(h, row, call, countOf(row)));
            }
        }

    // Wrong argument counts raise before anything else happens.
    if (std::strcmp(row.counts, "*") == 0) {
        Host h;
        Outcome o = run(h, row, {}, -1);
        note("a negative count", o);
        if (o.result.error != "impossible number of arguments")
            faults.push_back(std::string(row.name) + " negative count raised: " + o.result.error);
    } else {
        for (int n = 0; n <= int(spec.size()) + 1; ++n) {
            if (std::strchr(row.counts, '0' + n))
                continue;
            Host h;
            std::vector<Value> args = validArgs(h, row);
            args.resize(size_t(n), h.integer(1));
            Outcome o = run(h, row, args, kRealCount);
            note(std::to_string(n) + " arguments", o);
            std::string want = std::string("expecting ") + row.arity +
                               (std::strcmp(row.arity, "one") ? " arguments" : " argument") +
                               ", but received " + std::to_string(n);
            if (o.result.error != want)
                faults.push_back(std::string(row.name) + " with " + std::to_string(n) +
                                 " arguments raised: " + o.result.error);
        }
    }

    // Argument 1 in every datatype, with every rtable of argument 1's
    // datatype changed alike, so only that choice differs: a datatype not in
    // the row raises, and one in it reaches a kernel of its own.
    if (*row.codes) {
        bool typed = row.codes[0] == '=';
        for (int c = 0; c <= 8; ++c) {
            bool takes = std::strchr(row.codes, '0' + c) != nullptr;
            Host h;
            std::vector<Value> args = validArgs(h, row);
            for (size_t i = 0; i < spec.size(); ++i)
                if (codeOf(spec[i]) == codeOf(spec[0]))
                    args[i] = filled(h, c, h.rtableInfo(args[i]).count);
            Outcome o = run(h, row, args, countOf(row));
            note("argument 1 of datatype " + std::to_string(c), o);
            const std::string &e = o.result.error;
            bool ok = takes ? e.find("datatype not supported") == std::string::npos &&
                                  e.find("ippStsDataTypeErr") == std::string::npos
                  : typed ? e.rfind("expecting an rtable with datatype", 0) == 0
                          : e == "datatype not supported";
            if (!ok)
                faults.push_back(std::string(row.name) + " argument 1 of datatype " + std::to_string(c) +
                                 " raised: '" + e + "'");
        }
    }
    return faults;
}

std::vector<std::string> missingRows(const std::set<std::string> &exported, const std::vector<Row> &rows)
{
    std::set<std::string> have;
    for (const Row &r : rows)
        have.insert(r.name);
    std::vector<std::string> missing;
    for (const std::string &name : exported)
        if (!have.count(name))
            missing.push_back(name);
    return missing;
}

// The names of kind "export" in the export list that the shared library
// defines.
std::set<std::string> exportedOperations()
{
    std::set<std::string> names, defined = orbtest::definedDynamicSymbols();
    for (const auto &[name, kind] : orbtest::exportList())
        if (kind == "export" && defined.count(name))
            names.insert(name);
    return names;
}

TEST(Sweep, EveryExportHasARow)
{
    std::set<std::string> exported = exportedOperations();
    ASSERT_FALSE(exported.empty()) << "no exports read from " ORB_SHARED_LIBRARY;
    std::vector<Row> rows(kRows, kRows + kRowCount);
    for (const std::string &name : missingRows(exported, rows))
        ADD_FAILURE() << name << " is exported but has no sweep row";
    for (const Row &r : rows)
        EXPECT_TRUE(exported.count(r.name)) << r.name << " has a row but is not exported";
}

class SweepRows : public ::testing::TestWithParam<Row> {};

TEST_P(SweepRows, NoLeakNoStrayWriteOnAnyPath)
{
    for (const std::string &fault : sweep(GetParam()))
        ADD_FAILURE() << fault;
}

INSTANTIATE_TEST_SUITE_P(Exports, SweepRows, ::testing::ValuesIn(kRows, kRows + kRowCount),
                         [](const ::testing::TestParamInfo<Row> &info) { return std::string(info.param.name); });

// Exports written for the sweep itself: a correct one that holds scratch
// memory, one that holds a block across its checks (so a raise loses it; the
// test frees the lost blocks once the sweep has seen them), and one that
// reports a failed allocation in the wrong words.
std::vector<Ipp8u *> lostBlocks;

HostValue holdsScratch(HostCallbacks cb, ArgSeq args, int leak, int wrongMessage)
{
    int64_t n = orbBegin(cb, args);
    OrbHeld held;
    Ipp64f *dst, *copy;
    const Ipp64f *src;
    int64_t len, len2;

    orbHeldInit(&held);
    Ipp8u *kept = leak ? ippsMalloc_8u(64) : nullptr;  // outside held: lost on every early exit
    if (kept)
        lostBlocks.push_back(kept);
    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    dst = GetFloat8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    src = GetFloat8Sample(cb, args[2]);
    len2 = HostRTableNumElements(cb, args[2]);
    if (!orbCountsAgree(cb, len2 == len) || !orbAllFit(cb, &len, args, 1, 2, DT_FLOAT8)) {
        orbRelease(&held);
        return args[1];
    }
    copy = orbMalloc64f(&held, orbLen32(len));
    if (wrongMessage && held.failed) {
        orbRelease(&held);
        HostError(cb, "no memory");
        return args[1];
    }
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbOk(cb, &held, ippsCopy_64f(src, copy, orbLen32(len))) ||
        !orbOk(cb, &held, ippsAdd_64f(copy, src, dst, orbLen32(len))))
        return args[1];
    orbRelease(&held);
    if (kept) {
        lostBlocks.pop_back();
        ippsFree(kept);
    }
    return args[1];
}

HostValue goodScratch(HostCallbacks cb, ArgSeq args) { return holdsScratch(cb, args, 0, 0); }
HostValue leakyScratch(HostCallbacks cb, ArgSeq args) { return holdsScratch(cb, args, 1, 0); }
HostValue mislabelledScratch(HostCallbacks cb, ArgSeq args) { return holdsScratch(cb, args, 0, 1); }

bool anyContains(const std::vector<std::string> &faults, const std::string &text)
{
    for (const std::string &f : faults)
        if (f.find(text) != std::string::npos)
            return true;
    return false;
}

TEST(Sweep, CatchesLeaksWrongMessagesAndMissingRows)
{
    Row good{"good", FN(goodScratch), "f8 f8", "2", "two", "=6"};
    std::vector<std::string> faults = sweep(good);
    EXPECT_TRUE(faults.empty()) << faults[0];

    Row leaky{"leaky", FN(leakyScratch), "f8 f8", "2", "two", "=6"};
    EXPECT_TRUE(anyContains(sweep(leaky), "3 arguments: left 1 allocations"));
    for (Ipp8u *block : lostBlocks)
        ippsFree(block);
    lostBlocks.clear();

    Row mislabelled{"mislabelled", FN(mislabelledScratch), "f8 f8", "2", "two", "=6"};
    EXPECT_TRUE(anyContains(sweep(mislabelled), "allocation 1 failing raised: no memory"));

    std::vector<Row> rows{good};
    EXPECT_EQ(missingRows({"good", "unlisted"}, rows), std::vector<std::string>{"unlisted"});
}

// The scratch helpers on their own, through a host in both error modes.
TEST(Scratch, SizesAtMostZeroAllocateNothingAndFailuresFreeEverything)
{
    Host h;
    HostCallbacks cb = h.callbacks();
    int64_t before = orbBackendLiveAllocations();
    OrbHeld held;

    orbHeldInit(&held);
    orbBackendFailNthAllocation(1);
    EXPECT_EQ(orbMalloc8u(&held, 0), nullptr);
    EXPECT_EQ(orbMalloc32f(&held, -3), nullptr);
    EXPECT_FALSE(held.failed);  // the switch was not consumed
    EXPECT_EQ(orbMalloc32fc(&held, 4), nullptr);
    EXPECT_TRUE(held.failed);
    EXPECT_EQ(orbMalloc64f(&held, 4), nullptr);  // nothing more after a failure
    EXPECT_EQ(orbBackendLiveAllocations(), before);

    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.protect([&] { return HostValue(orbAllocated(cb, &held)); });
    EXPECT_EQ(r.error, "out of memory");
    EXPECT_EQ(r.result, 0u);

    int step = 0;
    orbHeldInit(&held);
    EXPECT_NE(orbMalloc8u(&held, 10), nullptr);
    EXPECT_NE(orbMallocImage32f(&held, 3, 2, 3, &step), nullptr);
    EXPECT_GE(step, 36);
    EXPECT_EQ(orbBackendLiveAllocations(), before + 2);
    r = h.protect([&] { return HostValue(orbOk(cb, &held, ippStsSizeErr)); });
    EXPECT_EQ(orbBackendLiveAllocations(), before);
    EXPECT_EQ(r.error.rfind("IPP Error: ippStsSizeErr", 0), 0u) << r.error;

    // Initialisers fail on warnings too; computations pass them.
    orbHeldInit(&held);
    orbMalloc64f(&held, 2);
    EXPECT_EQ(h.protect([&] { return HostValue(orbOk(cb, &held, ippStsNoErr + 1)); }).raised, false);
    EXPECT_EQ(orbBackendLiveAllocations(), before + 1);
    EXPECT_TRUE(h.protect([&] { return HostValue(orbInitOk(cb, &held, ippStsNoErr + 1)); }).raised);
    EXPECT_EQ(orbBackendLiveAllocations(), before);

    // A record that is full counts as a failed allocation, not a lost block.
    orbHeldInit(&held);
    for (int i = 0; i < ORB_HELD_MAX; ++i)
        orbMalloc8u(&held, 1);
    EXPECT_EQ(orbMalloc8u(&held, 1), nullptr);
    EXPECT_TRUE(held.failed);
    orbRelease(&held);
    EXPECT_EQ(orbBackendLiveAllocations(), before);
}

}  // namespace

namespace {

// Where the literal steps would run past the host's storage, the library
// stays inside it and keeps every result that lies within it.
TEST(Bounds, ByteSwapReversesWholeThreeByteGroupsOnly)
{
    Host h;
    for (int64_t n : {7, 2}) {
        Value src = filled(h, DT_INT1, n), dst = h.rtable1(DT_INT1, n);
        ASSERT_FALSE(h.call(FN(orbSwapBytes), {dst, src}).raised);
        std::vector<int8_t> want = n == 7 ? std::vector<int8_t>{3, 2, 1, 6, 5, 4, 0} : std::vector<int8_t>{0, 0};
        EXPECT_EQ(orbtest::contents<int8_t>(h, dst), want);
    }
    EXPECT_TRUE(h.guardsIntact());
}

TEST(Bounds, AfterAReturningRaiseOnlyWhatEveryOperandHasIsComputed)
{
    Host h;
    h.setErrorMode(ErrorMode::Return);
    // The constant family carries on past a length mismatch: over the
    // shorter source's three elements only.
    Value dst = h.rtable1(DT_FLOAT8, 5);
    CallResult r = h.call(FN(orbAddConstant), {dst, filled(h, DT_FLOAT8, 3), h.float64(10.0)});
    EXPECT_EQ(r.errors, std::vector<std::string>{"rtables must have the same number of elements"});
    EXPECT_EQ(r.result, dst);
    EXPECT_EQ(orbtest::contents<double>(h, dst), (std::vector<double>{11, 12, 13, 0, 0}));
    // A source of another element size is not computed over at all.
    r = h.call(FN(orbAdd), {dst, filled(h, DT_FLOAT4, 5), filled(h, DT_FLOAT8, 5)});
    EXPECT_EQ(r.errors.size(), 1u);
    EXPECT_EQ(r.result, dst);
    EXPECT_EQ(orbtest::contents<double>(h, dst), (std::vector<double>{11, 12, 13, 0, 0}));
    // Same element size, so computed: the mismatch report stands all the same.
    Value bytes = h.rtable1(DT_INT4, 5);
    r = h.call(FN(orbAnd), {bytes, filled(h, DT_FLOAT4, 5), filled(h, DT_INT4, 5)});
    EXPECT_EQ(r.errors.size(), 1u);
    EXPECT_TRUE(h.guardsIntact());
}

}  // namespace
