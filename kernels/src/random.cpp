/* Pseudo-random generators: ippsRandUniformGetSize/Init and ippsRandUniform,
 * ippsRandGaussGetSize/Init and ippsRandGauss, in _16s, _32f and _64f.
 *
 * The source of bits is eight xoshiro256++ streams run side by side, their
 * 32 state words seeded from the seed by SplitMix64 (the seeding its
 * authors recommend). One step of all eight gives a block of eight 64-bit
 * words, in stream order whatever the vector width, so a seed gives the
 * same samples on every target. The state is kept in the caller's buffer
 * and carries on from call to call; samples of a block that a call does
 * not use are kept for the next one.
 *
 * Samples from words:
 *   uniform _64f   u = the top 52 bits as a fraction in [0, 1);
 *                  low + (high - low) u, capped at high.
 *   uniform _32f   each word gives two floats, from its low and high 32-bit
 *                  halves (in memory order), their top 23 bits as u; the
 *                  same formula in single precision.
 *   uniform _16s   the _64f value for the bounds, rounded to the nearest
 *                  integer (ties to even): values lie in [low, high].
 *   Gaussian       Box-Muller: two blocks a and b give sixteen samples, the
 *                  k-th of the first eight mean + dev r cos t and of the
 *                  second eight mean + dev r sin t, with r = sqrt(-2 ln u1),
 *                  u1 in (0, 1] from a[k] and t = 2 pi u2 from b[k]. _32f
 *                  rounds the double sample to float; _16s rounds it to the
 *                  nearest integer and saturates.
 * Errors: null pointers (ippStsNullPtrErr), len < 1 (ippStsSizeErr).
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "random.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <math.h>
#include <stdint.h>
#include <string.h>

#include "entry.h"
#include "ipps.h"
#include "math-inl.h"
#include "trig-inl.h"

#ifndef ORB_KERNELS_RANDOM_STATE_
#define ORB_KERNELS_RANDOM_STATE_
namespace orb_kernels {

constexpr int kStreams = 8;
/* Blocks made per pass over the streams: 4 KiB of words. */
constexpr size_t kChunkBlocks = 64;

/* The one state layout behind every Rand*State_* type. */
struct RandState {
    uint64_t s[4][kStreams];  // word w of stream j at s[w][j]
    double a, b, c;           // uniform: low, high - low, high; Gaussian: mean, dev
    unsigned char pend[16 * sizeof(double)];  // samples made, not yet handed out
    int npend, ppos;
};

}  // namespace orb_kernels
#endif

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

template <int k, class V>
HWY_INLINE V Rotl(V v)
{
    return hn::RotateRight<64 - k>(v);
}

/* nblocks blocks of the eight streams into raw, block-major. */
void Blocks(RandState *st, uint64_t *raw, size_t nblocks)
{
    const hn::ScalableTag<uint64_t> d;
    const size_t n = hn::Lanes(d);
    for (size_t g = 0; g < size_t(kStreams); g += n) {
        auto s0 = hn::LoadU(d, st->s[0] + g), s1 = hn::LoadU(d, st->s[1] + g);
        auto s2 = hn::LoadU(d, st->s[2] + g), s3 = hn::LoadU(d, st->s[3] + g);
        for (size_t b = 0; b < nblocks; ++b) {
            const auto r = hn::Add(Rotl<23>(hn::Add(s0, s3)), s0);
            hn::StoreU(r, d, raw + b * kStreams + g);
            const auto t = hn::ShiftLeft<17>(s1);
            s2 = hn::Xor(s2, s0);
            s3 = hn::Xor(s3, s1);
            s1 = hn::Xor(s1, s2);
            s0 = hn::Xor(s0, s3);
            s2 = hn::Xor(s2, t);
            s3 = Rotl<45>(s3);
        }
        hn::StoreU(s0, d, st->s[0] + g);
        hn::StoreU(s1, d, st->s[1] + g);
        hn::StoreU(s2, d, st->s[2] + g);
        hn::StoreU(s3, d, st->s[3] + g);
    }
}

/* [0, 1) from the top 52 bits of each word. */
template <class D, class VU>
HWY_INLINE hn::Vec<D> Unit(D d, VU x)
{
    const hn::RebindToUnsigned<D> du;
    const auto bits = hn::Or(hn::ShiftRight<12>(x), hn::Set(du, 0x3FF0000000000000ull));
    return hn::Sub(hn::BitCast(d, bits), hn::Set(d, 1.0));
}

/* count doubles (a multiple of the lanes) from as many words. */
void UniformF64(const uint64_t *raw, size_t count, double low, double range, double high, double *dst)
{
    const hn::ScalableTag<double> d;
    const hn::RebindToUnsigned<decltype(d)> du;
    const size_t n = hn::Lanes(d);
    const auto vl = hn::Set(d, low), vr = hn::Set(d, range), vh = hn::Set(d, high);
    for (size_t i = 0; i < count; i += n) {
        const auto u = Unit(d, hn::LoadU(du, raw + i));
        hn::StoreU(hn::Min(hn::MulAdd(vr, u, vl), vh), d, dst + i);
    }
}

/* count floats (a multiple of the lanes) from count / 2 words. */
void UniformF32(const uint64_t *raw, size_t count, float low, float range, float high, float *dst)
{
    const hn::ScalableTag<float> d;
    const hn::RebindToUnsigned<decltype(d)> du;
    const size_t n = hn::Lanes(d);
    const uint32_t *w = reinterpret_cast<const uint32_t *>(raw);
    const auto vl = hn::Set(d, low), vr = hn::Set(d, range), vh = hn::Set(d, high);
    const auto one = hn::Set(du, 0x3F800000u);
    for (size_t i = 0; i < count; i += n) {
        const auto bits = hn::Or(hn::ShiftRight<9>(hn::LoadU(du, w + i)), one);
        const auto u = hn::Sub(hn::BitCast(d, bits), hn::Set(d, 1.0f));
        hn::StoreU(hn::Min(hn::MulAdd(vr, u, vl), vh), d, dst + i);
    }
}

/* 16 samples per pair of blocks; nblocks is even. */
void GaussF64(const uint64_t *raw, size_t nblocks, double mean, double dev, double *dst)
{
    const hn::ScalableTag<double> d;
    const hn::RebindToUnsigned<decltype(d)> du;
    const size_t n = hn::Lanes(d);
    const auto vm = hn::Set(d, mean), vd = hn::Set(d, dev);
    const auto two = hn::Set(d, 2.0), twopi = hn::Set(d, 6.283185307179586);
    for (size_t b = 0; b < nblocks; b += 2) {
        const uint64_t *pa = raw + b * kStreams, *pb = pa + kStreams;
        double *out = dst + b * kStreams;
        for (size_t k = 0; k < size_t(kStreams); k += n) {
            // 2 - [1, 2): (0, 1], never zero, so the logarithm is finite.
            const auto u1 = hn::Sub(two, hn::Add(Unit(d, hn::LoadU(du, pa + k)), hn::Set(d, 1.0)));
            const auto t = hn::Mul(twopi, Unit(d, hn::LoadU(du, pb + k)));
            const auto r = hn::Mul(vd, hn::Sqrt(hn::Mul(hn::Set(d, -2.0), LnKernel(d, u1))));
            hn::Vec<decltype(d)> s, c;
            SinCos(d, t, s, c);
            hn::StoreU(hn::MulAdd(r, c, vm), d, out + k);
            hn::StoreU(hn::MulAdd(r, s, vm), d, out + kStreams + k);
        }
    }
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
HWY_EXPORT(Blocks);
HWY_EXPORT(UniformF64);
HWY_EXPORT(UniformF32);
HWY_EXPORT(GaussF64);

namespace {

enum Kind { kUni16s, kUni32f, kUni64f, kGauss16s, kGauss32f, kGauss64f };

/* Samples one unit of generation yields: a block, or two for the pairs of
 * Box-Muller and the two floats of each word. */
size_t UnitOf(Kind k) { return k == kUni16s || k == kUni64f ? 8 : 16; }
size_t BlocksPerUnit(Kind k) { return k == kUni16s || k == kUni64f || k == kUni32f ? 1 : 2; }

uint64_t SplitMix(uint64_t &x)
{
    uint64_t z = (x += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

IppStatus Init(void *state, unsigned int seed, double a, double b, double c)
{
    if (state == nullptr) return ippStsNullPtrErr;
    RandState *st = static_cast<RandState *>(state);
    memset(st, 0, sizeof *st);
    uint64_t x = seed;
    for (int j = 0; j < kStreams; ++j)
        for (int w = 0; w < 4; ++w) st->s[w][j] = SplitMix(x);
    st->a = a;
    st->b = b;
    st->c = c;
    return ippStsNoErr;
}

int16_t Sat16(double v)
{
    const double r = nearbyint(v);
    return int16_t(r < -32768.0 ? -32768.0 : r > 32767.0 ? 32767.0 : r);
}

/* units whole units of samples of kind k into dst (typed as the kind). */
void MakeUnits(RandState *st, Kind k, void *dst, size_t units)
{
    HWY_ALIGN uint64_t raw[kChunkBlocks * kStreams];
    HWY_ALIGN double tmp[kChunkBlocks * kStreams];
    const size_t per = kChunkBlocks / 2;  // units per chunk (even block count)
    const size_t bpu = BlocksPerUnit(k), spu = UnitOf(k);
    size_t done = 0;
    while (done < units) {
        const size_t u = units - done < per ? units - done : per;
        const size_t nb = u * bpu, ns = u * spu;
        HWY_DYNAMIC_DISPATCH(Blocks)(st, raw, nb);
        switch (k) {
        case kUni64f:
            HWY_DYNAMIC_DISPATCH(UniformF64)(raw, ns, st->a, st->b, st->c, static_cast<double *>(dst) + done * spu);
            break;
        case kUni32f:
            HWY_DYNAMIC_DISPATCH(UniformF32)(raw, ns, float(st->a), float(st->b), float(st->c),
                                             static_cast<float *>(dst) + done * spu);
            break;
        case kUni16s: {
            HWY_DYNAMIC_DISPATCH(UniformF64)(raw, ns, st->a, st->b, st->c, tmp);
            int16_t *o = static_cast<int16_t *>(dst) + done * spu;
            for (size_t i = 0; i < ns; ++i) o[i] = Sat16(tmp[i]);
            break;
        }
        case kGauss64f:
            HWY_DYNAMIC_DISPATCH(GaussF64)(raw, nb, st->a, st->b, static_cast<double *>(dst) + done * spu);
            break;
        case kGauss32f: {
            HWY_DYNAMIC_DISPATCH(GaussF64)(raw, nb, st->a, st->b, tmp);
            float *o = static_cast<float *>(dst) + done * spu;
            for (size_t i = 0; i < ns; ++i) o[i] = float(tmp[i]);
            break;
        }
        case kGauss16s: {
            HWY_DYNAMIC_DISPATCH(GaussF64)(raw, nb, st->a, st->b, tmp);
            int16_t *o = static_cast<int16_t *>(dst) + done * spu;
            for (size_t i = 0; i < ns; ++i) o[i] = Sat16(tmp[i]);
            break;
        }
        }
        done += u;
    }
}

template <typename T>
IppStatus Generate(T *dst, int len, void *state, Kind k)
{
    const IppStatus st0 = CheckArgs(len, dst, static_cast<const void *>(state));
    if (st0 != ippStsNoErr) return st0;
    RandState *st = static_cast<RandState *>(state);
    size_t left = size_t(len);
    // First what the last call left over.
    const size_t take = left < size_t(st->npend) ? left : size_t(st->npend);
    memcpy(dst, st->pend + size_t(st->ppos) * sizeof(T), take * sizeof(T));
    st->npend -= int(take);
    st->ppos += int(take);
    dst += take;
    left -= take;
    const size_t spu = UnitOf(k);
    const size_t whole = left / spu;
    if (whole) MakeUnits(st, k, dst, whole);
    dst += whole * spu;
    left -= whole * spu;
    if (left) {
        // One more unit: what is asked for now, the rest kept.
        MakeUnits(st, k, st->pend, 1);
        memcpy(dst, st->pend, left * sizeof(T));
        st->ppos = int(left);
        st->npend = int(spu - left);
    }
    return ippStsNoErr;
}

IppStatus Size(int *p)
{
    if (p == nullptr) return ippStsNullPtrErr;
    *p = int(sizeof(RandState));
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels

using orb_kernels::Generate;

extern "C" {
IppStatus ippsRandUniformGetSize_16s(int *p) { return orb_kernels::Size(p); }
IppStatus ippsRandUniformGetSize_32f(int *p) { return orb_kernels::Size(p); }
IppStatus ippsRandUniformGetSize_64f(int *p) { return orb_kernels::Size(p); }
IppStatus ippsRandGaussGetSize_16s(int *p) { return orb_kernels::Size(p); }
IppStatus ippsRandGaussGetSize_32f(int *p) { return orb_kernels::Size(p); }
IppStatus ippsRandGaussGetSize_64f(int *p) { return orb_kernels::Size(p); }

IppStatus ippsRandUniformInit_16s(IppsRandUniState_16s *s, Ipp16s low, Ipp16s high, unsigned int seed)
{
    return orb_kernels::Init(s, seed, low, double(high) - double(low), high);
}
IppStatus ippsRandUniformInit_32f(IppsRandUniState_32f *s, Ipp32f low, Ipp32f high, unsigned int seed)
{
    return orb_kernels::Init(s, seed, low, double(high - low), high);
}
IppStatus ippsRandUniformInit_64f(IppsRandUniState_64f *s, Ipp64f low, Ipp64f high, unsigned int seed)
{
    return orb_kernels::Init(s, seed, low, high - low, high);
}
IppStatus ippsRandGaussInit_16s(IppsRandGaussState_16s *s, Ipp16s mean, Ipp16s stdDev, unsigned int seed)
{
    return orb_kernels::Init(s, seed, mean, stdDev, 0);
}
IppStatus ippsRandGaussInit_32f(IppsRandGaussState_32f *s, Ipp32f mean, Ipp32f stdDev, unsigned int seed)
{
    return orb_kernels::Init(s, seed, mean, stdDev, 0);
}
IppStatus ippsRandGaussInit_64f(IppsRandGaussState_64f *s, Ipp64f mean, Ipp64f stdDev, unsigned int seed)
{
    return orb_kernels::Init(s, seed, mean, stdDev, 0);
}

IppStatus ippsRandUniform_16s(Ipp16s *pDst, int len, IppsRandUniState_16s *s)
{
    return Generate(pDst, len, s, orb_kernels::kUni16s);
}
IppStatus ippsRandUniform_32f(Ipp32f *pDst, int len, IppsRandUniState_32f *s)
{
    return Generate(pDst, len, s, orb_kernels::kUni32f);
}
IppStatus ippsRandUniform_64f(Ipp64f *pDst, int len, IppsRandUniState_64f *s)
{
    return Generate(pDst, len, s, orb_kernels::kUni64f);
}
IppStatus ippsRandGauss_16s(Ipp16s *pDst, int len, IppsRandGaussState_16s *s)
{
    return Generate(pDst, len, s, orb_kernels::kGauss16s);
}
IppStatus ippsRandGauss_32f(Ipp32f *pDst, int len, IppsRandGaussState_32f *s)
{
    return Generate(pDst, len, s, orb_kernels::kGauss32f);
}
IppStatus ippsRandGauss_64f(Ipp64f *pDst, int len, IppsRandGaussState_64f *s)
{
    return Generate(pDst, len, s, orb_kernels::kGauss64f);
}
}
#endif
