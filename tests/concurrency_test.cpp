// Concurrent callers: several threads, each with a host of its own, call every
// export in a seeded random order for a bounded time, all reading the very
// same input storage. Every call must return, raise, print and write exactly
// what the same call did on the main thread beforehand (bit for bit, through
// the printed forms); the inputs must be unchanged, and no backend
// allocation may be left, after the threads join.
//
// ORB_THREADS (default 4) and ORB_CONCURRENCY_SECONDS (default 3) set the
// number of threads and how long they keep calling; every thread completes
// at least one pass over all the calls.
#include <dlfcn.h>
#include <fftw3.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <random>
#include <set>
#include <thread>

#include "backend_hooks.h"
#include "export_rows.h"
#include "fft_plan.h"

// FFTW's planner is not thread-safe, so the plan cache runs every planner
// call under its lock. Each planner entry point the backend uses is wrapped
// here to bump one plain counter on the way to FFTW's own: under
// ThreadSanitizer two planner calls that the lock does not order are
// reported as a race on it.
namespace {
int64_t plannerCalls;
int64_t measurements;  // replanning attempts: the only planning with a time limit

template <typename F>
F *fftwOwn(F *, const char *name, double limit = FFTW_NO_TIMELIMIT)
{
    ++plannerCalls;
    measurements += limit >= 0;
    void *f = dlsym(RTLD_NEXT, name);
    if (!f) {
        std::fprintf(stderr, "no %s after the test's wrapper\n", name);
        std::abort();
    }
    return reinterpret_cast<F *>(f);
}
}  // namespace

#define ORB_PLANNER(ret, name, params, args) \
    extern "C" ret name params { return fftwOwn(&name, #name) args; }
ORB_PLANNER(fftw_plan, fftw_plan_dft_1d, (int n, fftw_complex *i, fftw_complex *o, int s, unsigned f), (n, i, o, s, f))
ORB_PLANNER(fftwf_plan, fftwf_plan_dft_1d, (int n, fftwf_complex *i, fftwf_complex *o, int s, unsigned f),
            (n, i, o, s, f))
ORB_PLANNER(fftw_plan, fftw_plan_dft_r2c_1d, (int n, double *i, fftw_complex *o, unsigned f), (n, i, o, f))
ORB_PLANNER(fftwf_plan, fftwf_plan_dft_r2c_1d, (int n, float *i, fftwf_complex *o, unsigned f), (n, i, o, f))
ORB_PLANNER(fftw_plan, fftw_plan_dft_c2r_1d, (int n, fftw_complex *i, double *o, unsigned f), (n, i, o, f))
ORB_PLANNER(fftwf_plan, fftwf_plan_dft_c2r_1d, (int n, fftwf_complex *i, float *o, unsigned f), (n, i, o, f))
ORB_PLANNER(fftw_plan, fftw_plan_r2r_1d, (int n, double *i, double *o, fftw_r2r_kind k, unsigned f), (n, i, o, k, f))
ORB_PLANNER(fftwf_plan, fftwf_plan_r2r_1d, (int n, float *i, float *o, fftwf_r2r_kind k, unsigned f),
            (n, i, o, k, f))
ORB_PLANNER(fftw_plan, fftw_plan_guru_split_dft,
            (int r, const fftw_iodim *d, int hr, const fftw_iodim *hd, double *ri, double *ii, double *ro,
             double *io, unsigned f),
            (r, d, hr, hd, ri, ii, ro, io, f))
ORB_PLANNER(fftwf_plan, fftwf_plan_guru_split_dft,
            (int r, const fftwf_iodim *d, int hr, const fftwf_iodim *hd, float *ri, float *ii, float *ro,
             float *io, unsigned f),
            (r, d, hr, hd, ri, ii, ro, io, f))
ORB_PLANNER(void, fftw_destroy_plan, (fftw_plan p), (p))
ORB_PLANNER(void, fftwf_destroy_plan, (fftwf_plan p), (p))
extern "C" void fftw_set_timelimit(double t) { fftwOwn(&fftw_set_timelimit, "fftw_set_timelimit", t)(t); }
extern "C" void fftwf_set_timelimit(double t) { fftwOwn(&fftwf_set_timelimit, "fftwf_set_timelimit", t)(t); }
#undef ORB_PLANNER

namespace {

using orbhost::CallResult;
using orbhost::ExportFn;
using orbhost::Host;
using orbhost::RTableInfo;
using orbhost::Value;

#define FN(f) reinterpret_cast<ExportFn>(f)

// Calls whose kernels change path with size, in the rows' argument
// language: transforms at powers of two, primes and sizes between (several
// plans in the cache at once), convolutions and FIR filters long enough to
// go through transforms, sorts above the small-size paths.
const orbrows::Row kLarge[] = {
    {"orbFwdFFT", FN(orbFwdFFT), "c8/4096 c8/4096", "", "", ""},
    {"orbInvFFT", FN(orbInvFFT), "c8/1024 c8/1024 \"fwddivbyn\"", "", "", ""},
    {"orbFwdFFTSplit", FN(orbFwdFFTSplit), "f4/2048 f4/2048 f4/2048 f4/2048", "", "", ""},
    {"orbInvFFTSplit", FN(orbInvFFTSplit), "f8/256 f8/256 f8/256 f8/256", "", "", ""},
    {"orbFwdDFT", FN(orbFwdDFT), "c8/1009 c8/1009", "", "", ""},
    {"orbFwdDFT", FN(orbFwdDFT), "c8/4099 c8/4099", "", "", ""},
    {"orbInvDFT", FN(orbInvDFT), "c8/997 c8/997 \"sqrtlen\"", "", "", ""},
    {"orbFwdDFT", FN(orbFwdDFT), "c8/1000 c8/1000", "", "", ""},
    {"orbFwdDFTSplit", FN(orbFwdDFTSplit), "f8/127 f8/127 f8/127 f8/127", "", "", ""},
    {"orbInvDFTSplit", FN(orbInvDFTSplit), "f4/509 f4/509 f4/509 f4/509", "", "", ""},
    {"orbFwdDCT", FN(orbFwdDCT), "f8/1000 f8/1000 \"none\"", "", "", ""},
    {"orbInvDCT", FN(orbInvDCT), "f4/521 f4/521 \"none\"", "", "", ""},
    {"orbConvolution", FN(orbConvolution), "f8/2999 f8/2000 f8/1000 \"auto\"", "", "", ""},
    {"orbConvolution", FN(orbConvolution), "f4/400 f4/300 f4/101 \"fft\"", "", "", ""},
    {"orbAutoCorrelation", FN(orbAutoCorrelation), "f8/500 f8/3000 0", "", "", ""},
    {"orbCrossCorrelation", FN(orbCrossCorrelation), "f4/700 f4/2000 f4/1500 -300 0", "", "", ""},
    {"orbFIR", FN(orbFIR), "f8/4000 f8/4000 f8/128 f8/128 4000", "", "", ""},
    {"orbSortAscending", FN(orbSortAscending), "f8/3000", "", "", ""},
    {"orbSortDescending", FN(orbSortDescending), "i4/2000", "", "", ""},
    {"orbSortAscending", FN(orbSortAscending), "i1/1000", "", "", ""},
    {"orbSortDescending", FN(orbSortDescending), "f4/700", "", "", ""},
};

// A popular size: called this many times in a row, its plan's transforms
// add up to the time at which the cache replans it by measurement. The
// measured plan may round differently, so each of these calls must match
// the call made on the main thread before the threads start or after they
// join (by then on the measured plan), bit for bit; only the output's
// storage is compared, to keep the many calls cheap.
const orbrows::Row kPopular = {"orbFwdFFT", FN(orbFwdFFT), "c8/2048 c8/2048", "", "", ""};
constexpr int kPopularRepeat = 2000;

// Plans the cache keeps while the threads run: fewer than the calls above
// use, so plans are evicted and made again while others are lent out.
constexpr size_t kPlanCapacity = 6;

size_t elementBytes(int32_t datatype)
{
    static const size_t bytes[] = {8, 16, 1, 2, 4, 8, 8, 16, 4};
    return bytes[datatype];
}

double envOr(const char *name, double fallback)
{
    const char *v = std::getenv(name);
    return v && *v ? std::atof(v) : fallback;
}

// One argument of a call: an rtable read by every thread from the same
// storage, an rtable each call gets a fresh copy of (it is written, or
// returned), or a scalar token each host makes for itself.
struct Arg {
    enum Kind { Shared, Copied, Token } kind;
    std::string token;
    RTableInfo info{};  // the pristine storage, for Shared and Copied
};

// What a call must leave: the result's and every rtable argument's printed
// form, and the errors and printed text.
struct Outcome {
    std::vector<std::string> printed;
    std::vector<std::string> errors;
    std::string output;
    bool operator==(const Outcome &o) const = default;
};

struct Call {
    const orbrows::Row *row;
    std::vector<Arg> args;
    Outcome expected;
};

std::vector<Value> argsIn(Host &h, const Call &c)
{
    std::vector<Value> out;
    for (const Arg &a : c.args)
        out.push_back(a.kind == Arg::Token    ? orbrows::make(h, a.token)
                      : a.kind == Arg::Shared ? h.rtableOver(a.info.datatype, a.info.bounds, a.info.data)
                                              : h.rtable(a.info.datatype, a.info.bounds, a.info.data));
    return out;
}

// Argument 1's storage after the call, or the error it raised: the cheap
// check for the popular call.
std::string storageAfter(const Call &c)
{
    Host h;
    std::vector<Value> args = argsIn(h, c);
    CallResult r = h.call(c.row->fn, args);
    if (r.raised)
        return r.error;
    RTableInfo info = h.rtableInfo(args[0]);
    return std::string(static_cast<const char *>(info.data), size_t(info.count) * elementBytes(info.datatype));
}

Outcome run(Host &h, const orbrows::Row &row, const std::vector<Value> &args)
{
    if (row.forcedCount >= 0)
        h.forceNumArgs(row.forcedCount);
    CallResult r = h.call(row.fn, args);
    h.clearForcedNumArgs();
    Outcome o{{r.raised ? "" : h.printFull(r.result)}, r.errors, r.output};
    for (Value v : args)
        if (h.isRTable(v))
            o.printed.push_back(h.printFull(v));
    return o;
}

// The rtables of every call live in the source host, whose storage the
// threads share. Probe calls on copies find the ones the export writes or
// returns; those are copied for each call, the rest shared. An output may
// be written with the values it already held, so the second probe starts
// from every candidate's bytes inverted.
Call prepare(Host &source, const orbrows::Row &row, std::mt19937 *scramble)
{
    Call c{&row, {}, {}};
    for (const std::string &t : orbrows::tokens(row.args)) {
        if (orbrows::codeOf(t) < 0) {
            c.args.push_back({Arg::Token, t});
            continue;
        }
        RTableInfo info = source.rtableInfo(orbrows::make(source, t));
        if (scramble) {  // elements in a random order, for the sorts
            const size_t size = elementBytes(info.datatype);
            auto *p = static_cast<char *>(info.data);
            for (int64_t i = info.count - 1; i > 0; --i)
                std::swap_ranges(p + size_t(i) * size, p + size_t(i + 1) * size,
                                 p + size * std::uniform_int_distribution<size_t>(0, size_t(i))(*scramble));
        }
        c.args.push_back({Arg::Copied, t, info});
    }
    for (bool inverted : {false, true}) {
        Call copies = c;
        for (Arg &a : copies.args)
            if (a.kind == Arg::Shared)
                a.kind = Arg::Copied;
        Host h;
        std::vector<Value> args = argsIn(h, copies);
        std::vector<std::string> before;
        for (size_t i = 0; i < args.size(); ++i) {
            if (inverted && c.args[i].kind == Arg::Shared) {
                RTableInfo info = h.rtableInfo(args[i]);
                auto *p = static_cast<unsigned char *>(info.data);
                for (size_t b = 0; b < size_t(info.count) * elementBytes(info.datatype); ++b)
                    p[b] = static_cast<unsigned char>(~p[b]);
            }
            before.push_back(h.printFull(args[i]));
        }
        if (row.forcedCount >= 0)
            h.forceNumArgs(row.forcedCount);
        CallResult r = h.call(row.fn, args);
        h.clearForcedNumArgs();
        std::vector<Value> returned = r.raised ? std::vector<Value>{} : h.elements(r.result);
        for (size_t i = 0; i < c.args.size(); ++i)
            if (c.args[i].kind == Arg::Token)
                continue;
            else if (std::count(returned.begin(), returned.end(), args[i]) || h.printFull(args[i]) != before[i])
                c.args[i].kind = Arg::Copied;
            else if (!inverted)
                c.args[i].kind = Arg::Shared;
    }
    return c;
}

TEST(Concurrency, EveryExportFromSeveralThreadsMatchesItsSingleThreadedResult)
{
    const int threads = std::max(1, int(envOr("ORB_THREADS", 4)));
    const double seconds = envOr("ORB_CONCURRENCY_SECONDS", 3);
    const int64_t liveBefore = orbBackendLiveAllocations();

    Host source;
    std::vector<Call> calls;
    for (size_t i = 0; i < orbrows::kRowCount; ++i)
        calls.push_back(prepare(source, orbrows::kRows[i], nullptr));
    std::mt19937 scramble(7);
    for (const orbrows::Row &row : kLarge)
        calls.push_back(prepare(source, row, &scramble));
    const Call popular = prepare(source, kPopular, &scramble);

    // The reference pass, on this thread, with the inputs shared as the
    // threads will have them.
    size_t sharedArgs = 0;
    const std::string popularBefore = storageAfter(popular);
    for (Call &c : calls) {
        Host h;
        c.expected = run(h, *c.row, argsIn(h, c));
        for (const Arg &a : c.args)
            sharedArgs += a.kind == Arg::Shared;
    }
    for (size_t i = orbrows::kRowCount; i < calls.size(); ++i)
        EXPECT_TRUE(calls[i].expected.errors.empty())
            << calls[i].row->name << " " << calls[i].row->args << ": " << calls[i].expected.errors[0];
    // A pristine copy of the shared storage, to find any write to it.
    std::vector<std::string> sharedBytes;
    for (const Call &c : calls)
        for (const Arg &a : c.args)
            if (a.kind == Arg::Shared)
                sharedBytes.emplace_back(static_cast<const char *>(a.info.data),
                                         size_t(a.info.count) * elementBytes(a.info.datatype));

    const int64_t plannedBefore = plannerCalls, measuredBefore = measurements;
    const size_t capacity = orb_kernels::PlanCacheCapacity();
    orb_kernels::PlanCacheCapacity() = kPlanCapacity;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    std::vector<int64_t> made(static_cast<size_t>(threads), 0);
    std::vector<std::vector<std::string>> faults(static_cast<size_t>(threads));
    std::vector<std::set<std::string>> popularSeen(static_cast<size_t>(threads));
    std::vector<std::thread> pool;
    for (int t = 0; t < threads; ++t)
        pool.emplace_back([&, t] {
            std::mt19937 order(1000 + unsigned(t));
            std::vector<size_t> ix(calls.size());
            for (size_t i = 0; i < ix.size(); ++i)
                ix[i] = i;
            do {
                // A host for each pass, so the values made meanwhile go away.
                Host h;
                std::shuffle(ix.begin(), ix.end(), order);
                for (size_t i : ix) {
                    const Call &c = calls[i];
                    Outcome o = run(h, *c.row, argsIn(h, c));
                    if (!(o == c.expected) && faults[size_t(t)].size() < 10)
                        faults[size_t(t)].push_back(std::string(c.row->name) + " " + c.row->args + ": " +
                                                    (o.printed.empty() ? "" : o.printed[0].substr(0, 200)) +
                                                    (o.errors.empty() ? "" : " raised " + o.errors[0]));
                }
                if (!h.guardsIntact())
                    faults[size_t(t)].push_back("a call wrote outside an rtable's storage");
                int k = 0;
                for (; k < kPopularRepeat && popularSeen[size_t(t)].size() < 3; ++k)
                    popularSeen[size_t(t)].insert(storageAfter(popular));
                made[size_t(t)] += int64_t(calls.size()) + k;
            } while (std::chrono::steady_clock::now() < deadline);
        });
    for (std::thread &th : pool)
        th.join();
    orb_kernels::PlanCacheCapacity() = capacity;

    const std::string popularAfter = storageAfter(popular);
    int64_t total = 0;
    for (int t = 0; t < threads; ++t) {
        total += made[size_t(t)];
        for (const std::string &f : faults[size_t(t)])
            ADD_FAILURE() << "thread " << t << ": " << f;
        for (const std::string &seen : popularSeen[size_t(t)])
            EXPECT_TRUE(seen == popularBefore || seen == popularAfter)
                << "thread " << t << ": " << kPopular.args << " gave a result of neither plan";
    }
    size_t k = 0;
    for (const Call &c : calls)
        for (const Arg &a : c.args)
            if (a.kind == Arg::Shared) {
                EXPECT_EQ(0, std::memcmp(a.info.data, sharedBytes[k].data(), sharedBytes[k].size()))
                    << c.row->name << " wrote its input " << a.token;
                ++k;
            }
    EXPECT_EQ(liveBefore, orbBackendLiveAllocations());
    EXPECT_GT(plannerCalls, plannedBefore) << "no plan was made or destroyed while the threads ran";
    std::set<std::string> names;
    for (const Call &c : calls)
        names.insert(c.row->name);
    RecordProperty("calls", int(total));
    std::printf("%d threads, %lld calls over %zu exports (%zu calls each pass, %zu shared inputs), "
                "%lld planner calls, %lld replannings\n",
                threads, static_cast<long long>(total), names.size(), calls.size(), sharedArgs,
                static_cast<long long>(plannerCalls - plannedBefore),
                static_cast<long long>(measurements - measuredBefore));
}

}  // namespace
