/* The plan cache described in fft_plan.h. */
#include "fft_plan.h"

#include <cstdint>
#include <cstring>
#include <mutex>
#include <new>
#include <unordered_map>

namespace orb_kernels {
namespace {

struct Key {
    int kind, precision, n;
    int align[4];  // fftw_alignment_of of each array, -1 when absent
    int inPlace;   // arrays[0] == arrays[1] (or the split outputs on their inputs)
    bool operator==(const Key &o) const { return std::memcmp(this, &o, sizeof o) == 0; }
};

struct KeyHash {
    size_t operator()(const Key &k) const
    {
        uint64_t h = 1469598103934665603ull;
        const unsigned char *p = reinterpret_cast<const unsigned char *>(&k);
        for (size_t i = 0; i < sizeof k; ++i) h = (h ^ p[i]) * 1099511628211ull;
        return size_t(h);
    }
};

struct Slot {
    void *plan = nullptr;
    PlanPrecision precision = PlanPrecision::kDouble;
    int users = 0;
    uint64_t lastUse = 0;
};

std::mutex planner;  // FFTW's planner and the map below
std::unordered_map<Key, Slot *, KeyHash> plans;
uint64_t tick = 0;

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

// Evicts least recently used idle plans until the cache is within capacity.
void trim()
{
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
// for planning and the plan matches their alignment.
template <typename R, typename C, typename Plan>
Plan make(PlanKind kind, int n, const void *const (&a)[4],
          Plan (*dft)(int, C *, C *, int, unsigned), Plan (*r2c)(int, R *, C *, unsigned),
          Plan (*c2r)(int, C *, R *, unsigned), Plan (*r2r)(int, R *, R *, int, unsigned),
          Plan (*split)(int, const void *, const void *, const void *, const void *))
{
    const unsigned flags = FFTW_ESTIMATE;
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

}  // namespace

size_t &PlanCacheCapacity()
{
    static size_t capacity = 64;
    return capacity;
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

    std::lock_guard<std::mutex> lock(planner);
    auto it = plans.find(key);
    Slot *slot = it == plans.end() ? nullptr : it->second;
    if (!slot) {
        void *plan = precision == PlanPrecision::kDouble
                         ? (void *)make<double, fftw_complex, fftw_plan>(kind, n, arrays, fftw_plan_dft_1d,
                                                                         fftw_plan_dft_r2c_1d, fftw_plan_dft_c2r_1d,
                                                                         r2r64, split64)
                         : (void *)make<float, fftwf_complex, fftwf_plan>(kind, n, arrays, fftwf_plan_dft_1d,
                                                                          fftwf_plan_dft_r2c_1d, fftwf_plan_dft_c2r_1d,
                                                                          r2r32, split32);
        if (!plan) return {nullptr, nullptr};
        slot = new (std::nothrow) Slot;
        bool kept = false;
        if (slot) {
            slot->plan = plan;
            slot->precision = precision;
            try {
                plans.emplace(key, slot);
                kept = true;
            } catch (...) {
            }
        }
        if (!kept) {
            destroyPlan(plan, precision);
            delete slot;
            return {nullptr, nullptr};
        }
    }
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
