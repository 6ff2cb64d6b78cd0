/* The plan cache described in fft_plan.h. */
#include "fft_plan.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <new>
#include <unordered_map>
#include <vector>

namespace orb_kernels {
namespace {

struct Key {
    int kind, precision, n;
    int align[4];  // fftw_alignment_of of each array, -1 when absent
    int inPlace;   // arrays[0] == arrays[1] (or the split outputs on their inputs)
    int pad;
    // Split plans: the distances from each real part to its imaginary part,
    // which FFTW's new-array execute requires to stay as planned.
    int64_t separation[2];
    bool operator==(const Key &o) const { return std::memcmp(this, &o, sizeof o) == 0; }
};

static_assert(sizeof(Key) % 8 == 0, "keys are hashed a word at a time");

struct KeyHash {
    size_t operator()(const Key &k) const
    {
        uint64_t h = 1469598103934665603ull;
        for (size_t i = 0; i < sizeof k; i += 8) {
            uint64_t w;
            std::memcpy(&w, reinterpret_cast<const unsigned char *>(&k) + i, 8);
            h = (h ^ w) * 1099511628211ull;
            h ^= h >> 29;
        }
        return size_t(h);
    }
};

struct Slot {
    void *plan = nullptr;
    PlanPrecision precision = PlanPrecision::kDouble;
    int users = 0;
    uint64_t lastUse = 0;
    double work = 0;        // estimated seconds of transforms run on the plan
    bool measured = false;  // replanned by measurement (or tried)
};

std::mutex planner;  // FFTW's planner and everything below
std::unordered_map<Key, Slot *, KeyHash> plans;
std::vector<Slot *> retired;  // replaced by a measured plan while still lent out
uint64_t tick = 0;

/* Popular plans are replanned by measurement (FFTW_MEASURE, with a few of
 * FFTW's own shortcuts that halve its planning time for little loss), which
 * finds plans up to three times as fast as the first ones for large sizes
 * but costs from milliseconds to seconds. FFTW's planner time limit does not
 * help by itself: a planning that runs out of time returns a plan no better
 * than the cheap one. So the cost is bounded before it is paid: a plan's
 * replanning is predicted to take 20 ms plus the time of kPlanningPerRun
 * transforms (measured on the development machine: about 3000 for complex
 * transforms, 1000 for cosine ones); it is tried once, when the transforms
 * run on the plan add up to a quarter of that, so planning never costs much
 * more than the work it speeds up; it is not tried when the prediction
 * exceeds kMeasureLimit seconds, the time limit of each attempt, so no call
 * waits for long; and all attempts together stop when kMeasureBudget
 * seconds have been spent in the process. An attempt that runs out of time
 * keeps the old plan. */
constexpr unsigned kMeasureFlags =
    FFTW_MEASURE | FFTW_NO_BUFFERING | FFTW_NO_FIXED_RADIX_LARGE_N | FFTW_NO_INDIRECT_OP;
double PlanningPerRun(PlanKind kind) { return kind == PlanKind::kDCT2 || kind == PlanKind::kDCT3 ? 1000 : 3000; }
constexpr double kMeasureLimit = 1.0;
constexpr double kMeasureBudget = 10.0;
double budgetLeft = kMeasureBudget;

/* A rough time for one transform: about 0.2 ns per point and stage. */
double EstimatedSeconds(int n) { return 0.2e-9 * n * std::log2(2.0 * n); }

void destroyPlan(void *plan, PlanPrecision precision)
{
    if (precision == PlanPrecision::kDouble)
        fftw_destroy_plan(static_cast<fftw_plan>(plan));
    else
        fftwf_destroy_plan(static_cast<fftwf_plan>(plan));
}

void destroy(Slot *s)
{
    destroyPlan(s->plan, s->precision);
    delete s;
}

// At exit (or when the library is unloaded) the idle plans are destroyed;
// one still lent to a thread that outlives the cache is left to the process.
struct Teardown {
    ~Teardown()
    {
        std::lock_guard<std::mutex> lock(planner);
        for (auto &entry : plans)
            if (entry.second->users == 0) destroy(entry.second);
        for (Slot *s : retired)
            if (s->users == 0) destroy(s);
        plans.clear();
        retired.clear();
    }
} teardown;  // constructed after the map and the list, so destroyed before them

// Destroys replaced plans that are no longer lent out, then evicts least
// recently used idle plans until the cache is within capacity.
void trim()
{
    retired.erase(std::remove_if(retired.begin(), retired.end(),
                                 [](Slot *s) {
                                     if (s->users) return false;
                                     destroy(s);
                                     return true;
                                 }),
                  retired.end());
    while (plans.size() > PlanCacheCapacity()) {
        auto victim = plans.end();
        for (auto it = plans.begin(); it != plans.end(); ++it)
            if (it->second->users == 0 && (victim == plans.end() || it->second->lastUse < victim->second->lastUse))
                victim = it;
        if (victim == plans.end()) return;  // all in use: shrink later
        destroy(victim->second);
        plans.erase(victim);
    }
}

// FFTW_ESTIMATE never touches the arrays, so the caller's own arrays serve
// for planning and the plan matches their alignment; FFTW_MEASURE writes
// them, so it is given scratch arrays aligned alike.
template <typename R, typename C, typename Plan>
Plan make(PlanKind kind, int n, const void *const (&a)[4], unsigned flags,
          Plan (*dft)(int, C *, C *, int, unsigned), Plan (*r2c)(int, R *, C *, unsigned),
          Plan (*c2r)(int, C *, R *, unsigned), Plan (*r2r)(int, R *, R *, int, unsigned),
          Plan (*split)(int, const void *, const void *, const void *, const void *))
{
    auto in = const_cast<void *>(a[0]);
    auto out = const_cast<void *>(a[1]);
    switch (kind) {
    case PlanKind::kC2CForward: return dft(n, static_cast<C *>(in), static_cast<C *>(out), FFTW_FORWARD, flags);
    case PlanKind::kC2CBackward: return dft(n, static_cast<C *>(in), static_cast<C *>(out), FFTW_BACKWARD, flags);
    case PlanKind::kR2C: return r2c(n, static_cast<R *>(in), static_cast<C *>(out), flags);
    case PlanKind::kC2R: return c2r(n, static_cast<C *>(in), static_cast<R *>(out), flags);
    case PlanKind::kSplitForward: return split(n, a[0], a[1], a[2], a[3]);
    case PlanKind::kDCT2: return r2r(n, static_cast<R *>(in), static_cast<R *>(out), FFTW_REDFT10, flags);
    case PlanKind::kDCT3: return r2r(n, static_cast<R *>(in), static_cast<R *>(out), FFTW_REDFT01, flags);
    }
    return nullptr;
}

fftw_plan split64(int n, const void *ri, const void *ii, const void *ro, const void *io)
{
    fftw_iodim dim = {n, 1, 1};
    return fftw_plan_guru_split_dft(1, &dim, 0, nullptr, (double *)ri, (double *)ii, (double *)ro, (double *)io,
                                    FFTW_ESTIMATE);
}

fftwf_plan split32(int n, const void *ri, const void *ii, const void *ro, const void *io)
{
    fftwf_iodim dim = {n, 1, 1};
    return fftwf_plan_guru_split_dft(1, &dim, 0, nullptr, (float *)ri, (float *)ii, (float *)ro, (float *)io,
                                     FFTW_ESTIMATE);
}

fftw_plan r2r64(int n, double *in, double *out, int kind, unsigned flags)
{
    return fftw_plan_r2r_1d(n, in, out, static_cast<fftw_r2r_kind>(kind), flags);
}

fftwf_plan r2r32(int n, float *in, float *out, int kind, unsigned flags)
{
    return fftwf_plan_r2r_1d(n, in, out, static_cast<fftwf_r2r_kind>(kind), flags);
}

int alignmentOf(PlanPrecision p, const void *a)
{
    if (!a) return -1;
    return p == PlanPrecision::kDouble ? fftw_alignment_of((double *)a) : fftwf_alignment_of((float *)a);
}

void *plan(PlanKind kind, PlanPrecision precision, int n, const void *const (&arrays)[4], unsigned flags)
{
    if (precision == PlanPrecision::kDouble)
        return make<double, fftw_complex, fftw_plan>(kind, n, arrays, flags, fftw_plan_dft_1d, fftw_plan_dft_r2c_1d,
                                                     fftw_plan_dft_c2r_1d, r2r64, split64);
    return make<float, fftwf_complex, fftwf_plan>(kind, n, arrays, flags, fftwf_plan_dft_1d, fftwf_plan_dft_r2c_1d,
                                                  fftwf_plan_dft_c2r_1d, r2r32, split32);
}

/* Bytes of each array of a plan: the input and the output. */
void arrayBytes(PlanKind kind, PlanPrecision precision, int n, size_t bytes[2])
{
    const size_t real = precision == PlanPrecision::kDouble ? sizeof(double) : sizeof(float);
    const size_t all = size_t(n) * real, halfComplex = (size_t(n) / 2 + 1) * 2 * real;
    switch (kind) {
    case PlanKind::kC2CForward: case PlanKind::kC2CBackward: bytes[0] = bytes[1] = 2 * all; return;
    case PlanKind::kR2C: bytes[0] = all, bytes[1] = halfComplex; return;
    case PlanKind::kC2R: bytes[0] = halfComplex, bytes[1] = all; return;
    case PlanKind::kDCT2: case PlanKind::kDCT3: bytes[0] = bytes[1] = all; return;
    case PlanKind::kSplitForward: bytes[0] = bytes[1] = 0; return;
    }
}

/* Replans a popular plan by measurement on scratch arrays of the same
 * alignment classes and in-placeness, within the time limits above, and
 * puts the new plan in the old one's place (the old one is destroyed once
 * no caller holds it). Returns the slot to lend out. Holds the lock. */
Slot *measure(const Key &key, Slot *old, PlanKind kind, PlanPrecision precision, int n, double predicted)
{
    old->measured = true;
    size_t bytes[2] = {0, 0};
    arrayBytes(kind, precision, n, bytes);
    if (!bytes[0] || predicted > kMeasureLimit || budgetLeft <= 0) return old;  // split plans stay as they are
    const size_t total = key.inPlace ? std::max(bytes[0], bytes[1]) : bytes[0] + bytes[1] + 64;
    unsigned char *base = static_cast<unsigned char *>(fftw_malloc(total + 64));
    if (!base) return old;
    const void *const scratch[4] = {base + key.align[0],
                                    key.inPlace ? base + key.align[0] : base + bytes[0] + 64 + key.align[1]};
    const double limit = std::min({kMeasureLimit, std::max(4 * predicted, PlanMeasureMinSeconds()), budgetLeft});
    const auto start = std::chrono::steady_clock::now();
    if (precision == PlanPrecision::kDouble)
        fftw_set_timelimit(limit);
    else
        fftwf_set_timelimit(limit);
    void *better = plan(kind, precision, n, scratch, kMeasureFlags);
    fftw_set_timelimit(FFTW_NO_TIMELIMIT);
    fftwf_set_timelimit(FFTW_NO_TIMELIMIT);
    const double spent = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    budgetLeft -= spent;
    if (better && spent >= 0.95 * limit) {  // out of time: no better than the old one
        destroyPlan(better, precision);
        better = nullptr;
    }
    fftw_free(base);
    if (!better) return old;
    Slot *s = new (std::nothrow) Slot;
    if (!s) {
        destroyPlan(better, precision);
        return old;
    }
    s->plan = better;
    s->precision = precision;
    s->measured = true;
    s->lastUse = old->lastUse;
    if (old->users) {
        try {
            retired.push_back(old);
        } catch (...) {
            destroy(s);
            return old;
        }
    } else {
        destroy(old);
    }
    plans[key] = s;  // the key is there: no allocation
    return s;
}

}  // namespace

size_t &PlanCacheCapacity()
{
    static size_t capacity = 64;
    return capacity;
}

double &PlanMeasureMinSeconds()
{
    static double seconds = 0.1;
    return seconds;
}

size_t PlanCacheSize()
{
    std::lock_guard<std::mutex> lock(planner);
    return plans.size();
}

Lease AcquirePlan(PlanKind kind, PlanPrecision precision, int n, const void *const (&arrays)[4])
{
    Key key;
    std::memset(&key, 0, sizeof key);
    key.kind = int(kind);
    key.precision = int(precision);
    key.n = n;
    for (int i = 0; i < 4; ++i) key.align[i] = alignmentOf(precision, arrays[i]);
    key.inPlace = kind == PlanKind::kSplitForward ? (arrays[0] == arrays[2]) : (arrays[0] == arrays[1]);
    if (kind == PlanKind::kSplitForward) {
        auto at = [&](int i) { return reinterpret_cast<intptr_t>(arrays[i]); };
        key.separation[0] = at(1) - at(0);
        key.separation[1] = at(3) - at(2);
    }

    std::lock_guard<std::mutex> lock(planner);
    auto it = plans.find(key);
    Slot *slot = it == plans.end() ? nullptr : it->second;
    if (!slot) {
        void *p = plan(kind, precision, n, arrays, FFTW_ESTIMATE);
        if (!p) return {nullptr, nullptr};
        slot = new (std::nothrow) Slot;
        bool kept = false;
        if (slot) {
            slot->plan = p;
            slot->precision = precision;
            try {
                plans.emplace(key, slot);
                kept = true;
            } catch (...) {
            }
        }
        if (!kept) {
            destroyPlan(p, precision);
            delete slot;
            return {nullptr, nullptr};
        }
    }
    slot->work += EstimatedSeconds(n);
    const double predicted = 0.02 + PlanningPerRun(kind) * EstimatedSeconds(n);
    if (!slot->measured && slot->work >= predicted / 4) slot = measure(key, slot, kind, precision, n, predicted);
    ++slot->users;
    slot->lastUse = ++tick;
    trim();
    return {slot->plan, slot};
}

void ReleasePlan(Lease lease)
{
    if (!lease.slot) return;
    std::lock_guard<std::mutex> lock(planner);
    --static_cast<Slot *>(lease.slot)->users;
    trim();
}

}  // namespace orb_kernels
