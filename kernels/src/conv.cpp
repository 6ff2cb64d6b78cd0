/* Convolution, auto-correlation and cross-correlation.
 *
 * All of them are one computation: a window of outputs of a full linear
 * convolution y = u * v, y[n] = sum over j of u[j] * v[n - j]. Convolution
 * takes the whole of y; a correlation convolves the conjugated, reversed
 * first source with the second and keeps the window of its lags. Outputs
 * outside y's support are 0.
 *
 * Three ways to compute a window, picked by a cost estimate (ippAlgAuto) or
 * by the caller (direct, or the cheaper transform):
 * - direct: the shorter sequence slides over a zero-padded copy of the
 *   longer, vectorised across outputs;
 * - one transform: both sequences transformed at a size where the circular
 *   convolution equals the linear one inside the window, multiplied and
 *   transformed back;
 * - overlap-save (real data): the shorter sequence's spectrum once, then
 *   blocks of the longer one, each giving a run of outputs.
 * Every work array lives in the caller's buffer, 64-byte aligned; the size
 * queries and the functions compute the same plan from the same lengths.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "conv.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include "ipps.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
namespace {

/* out[k] = sum over j < m of h[j] * x[k + j], k < count. */
template <typename T>
HWY_INLINE void SlideDot(const T *h, size_t m, const T *x, T *out, size_t count)
{
    /* At most 256-bit vectors: the loads slide one element at a time, and a
     * wider unaligned load crosses a cache line at nearly every offset. */
    const hn::CappedTag<T, 32 / sizeof(T)> d;
    const size_t N = hn::Lanes(d);
    size_t k = 0;
    for (; k + 8 * N <= count; k += 8 * N) {
        auto s0 = hn::Zero(d), s1 = hn::Zero(d), s2 = hn::Zero(d), s3 = hn::Zero(d);
        auto s4 = hn::Zero(d), s5 = hn::Zero(d), s6 = hn::Zero(d), s7 = hn::Zero(d);
        const T *p = x + k;
        for (size_t j = 0; j < m; ++j, ++p) {
            const auto hj = hn::Set(d, h[j]);
            s0 = hn::MulAdd(hj, hn::LoadU(d, p), s0);
            s1 = hn::MulAdd(hj, hn::LoadU(d, p + N), s1);
            s2 = hn::MulAdd(hj, hn::LoadU(d, p + 2 * N), s2);
            s3 = hn::MulAdd(hj, hn::LoadU(d, p + 3 * N), s3);
            s4 = hn::MulAdd(hj, hn::LoadU(d, p + 4 * N), s4);
            s5 = hn::MulAdd(hj, hn::LoadU(d, p + 5 * N), s5);
            s6 = hn::MulAdd(hj, hn::LoadU(d, p + 6 * N), s6);
            s7 = hn::MulAdd(hj, hn::LoadU(d, p + 7 * N), s7);
        }
        hn::StoreU(s0, d, out + k);
        hn::StoreU(s1, d, out + k + N);
        hn::StoreU(s2, d, out + k + 2 * N);
        hn::StoreU(s3, d, out + k + 3 * N);
        hn::StoreU(s4, d, out + k + 4 * N);
        hn::StoreU(s5, d, out + k + 5 * N);
        hn::StoreU(s6, d, out + k + 6 * N);
        hn::StoreU(s7, d, out + k + 7 * N);
    }
    for (; k + N <= count; k += N) {
        auto s = hn::Zero(d);
        for (size_t j = 0; j < m; ++j) s = hn::MulAdd(hn::Set(d, h[j]), hn::LoadU(d, x + k + j), s);
        hn::StoreU(s, d, out + k);
    }
    /* Few outputs left: across the products instead. */
    for (; k < count; ++k) {
        auto s = hn::Zero(d);
        size_t j = 0;
        for (; j + N <= m; j += N) s = hn::MulAdd(hn::LoadU(d, h + j), hn::LoadU(d, x + k + j), s);
        T t = hn::GetLane(hn::SumOfLanes(d, s));
        for (; j < m; ++j) t += h[j] * x[k + j];
        out[k] = t;
    }
}

void SlideDot_32f(const float *h, size_t m, const float *x, float *out, size_t count)
{
    SlideDot(h, m, x, out, count);
}

void SlideDot_64f(const double *h, size_t m, const double *x, double *out, size_t count)
{
    SlideDot(h, m, x, out, count);
}

/* The complex form on split parts. */
void SlideDot_64fc(const double *hr, const double *hi, size_t m, const double *xr, const double *xi, double *outr,
                   double *outi, size_t count)
{
    const hn::CappedTag<double, 4> d;
    const size_t N = hn::Lanes(d);
    size_t k = 0;
    for (; k + 2 * N <= count; k += 2 * N) {
        auto r0 = hn::Zero(d), i0 = hn::Zero(d), r1 = hn::Zero(d), i1 = hn::Zero(d);
        for (size_t j = 0; j < m; ++j) {
            const auto a = hn::Set(d, hr[j]), b = hn::Set(d, hi[j]);
            const auto x0 = hn::LoadU(d, xr + k + j), y0 = hn::LoadU(d, xi + k + j);
            const auto x1 = hn::LoadU(d, xr + k + j + N), y1 = hn::LoadU(d, xi + k + j + N);
            r0 = hn::NegMulAdd(b, y0, hn::MulAdd(a, x0, r0));
            i0 = hn::MulAdd(b, x0, hn::MulAdd(a, y0, i0));
            r1 = hn::NegMulAdd(b, y1, hn::MulAdd(a, x1, r1));
            i1 = hn::MulAdd(b, x1, hn::MulAdd(a, y1, i1));
        }
        hn::StoreU(r0, d, outr + k);
        hn::StoreU(i0, d, outi + k);
        hn::StoreU(r1, d, outr + k + N);
        hn::StoreU(i1, d, outi + k + N);
    }
    for (; k < count; ++k) {
        double r = 0, i = 0;
        for (size_t j = 0; j < m; ++j) {
            r += hr[j] * xr[k + j] - hi[j] * xi[k + j];
            i += hr[j] * xi[k + j] + hi[j] * xr[k + j];
        }
        outr[k] = r;
        outi[k] = i;
    }
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include <math.h>

#include <algorithm>
#include <climits>
#include <type_traits>

#include "entry.h"
#include "fft_plan.h"

namespace orb_kernels {

HWY_EXPORT(SlideDot_32f);
HWY_EXPORT(SlideDot_64f);
HWY_EXPORT(SlideDot_64fc);

namespace {

constexpr size_t kAlign = 64;

size_t Up64(size_t bytes) { return (bytes + kAlign - 1) / kAlign * kAlign; }

template <typename T>
T *Aligned(Ipp8u *p)
{
    return reinterpret_cast<T *>((reinterpret_cast<uintptr_t>(p) + kAlign - 1) / kAlign * kAlign);
}

/* The smallest 2^a 3^b 5^c at least n (n >= 1), or -1 past 2^30. */
int64_t FastSize(int64_t n)
{
    int64_t best = -1;
    const int64_t limit = int64_t(1) << 30;
    for (int64_t p5 = 1; p5 <= limit; p5 *= 5)
        for (int64_t p35 = p5; p35 <= limit; p35 *= 3) {
            int64_t s = p35;
            while (s < n) s *= 2;
            if (s <= limit && (best < 0 || s < best)) best = s;
        }
    return best;
}

enum class Method { kNone, kDirect, kSingle, kOverlapSave };

enum class Elem { k32f, k64f, k64fc };

size_t ElemBytes(Elem e) { return e == Elem::k32f ? 4 : e == Elem::k64f ? 8 : 16; }

/* A window of y = u * v: outputs s .. s + count - 1, clipped to y's support
 * [0, lu + lv - 1): first is the offset of the clipped window in the
 * caller's output, [s0, s0 + n) the clipped window. */
struct Window {
    int64_t lu, lv, s0, n, first;
};

Window Clip(int64_t lu, int64_t lv, int64_t s, int64_t count)
{
    const int64_t len = lu + lv - 1;
    const int64_t lo = std::max<int64_t>(s, 0), hi = std::min<int64_t>(s + count, len);
    Window w{lu, lv, lo, hi > lo ? hi - lo : 0, lo - s};
    if (w.n == 0) w.first = 0;
    return w;
}

struct Plan {
    Method method;
    int64_t size;   // transform size
    int64_t bytes;  // work buffer, alignment slack included
};

/* Relative costs, measured on the development machine (AVX-512 core,
 * 256-bit loops): a product-sum of the direct loop, and a transform as
 * c * n * log2(n) plus a pass over its spectrum. */
double MacCost(Elem e) { return e == Elem::k32f ? 0.1 : e == Elem::k64f ? 0.2 : 0.6; }
double FftCost(Elem e, int64_t n)
{
    const double c = e == Elem::k32f ? 0.33 : e == Elem::k64f ? 0.45 : 0.9;
    return c * double(n) * log2(double(n)) + double(n);
}

Plan DirectPlan(const Window &w, Elem e)
{
    const int64_t m = std::min(w.lu, w.lv);
    const size_t es = e == Elem::k64fc ? 8 : ElemBytes(e);  // complex ones split into parts
    const int64_t parts = e == Elem::k64fc ? 2 : 1;
    int64_t bytes = int64_t(kAlign) + parts * int64_t(Up64(size_t(m) * es) + Up64(size_t(w.n + m - 1) * es));
    if (e == Elem::k64fc) bytes += 2 * int64_t(Up64(size_t(w.n) * es));
    return {Method::kDirect, 0, bytes};
}

int64_t SpectrumBytes(Elem e, int64_t n)
{
    /* real: n reals and two half spectra; complex: two full spectra */
    const size_t es = ElemBytes(e);
    if (e == Elem::k64fc) return int64_t(kAlign + 2 * Up64(size_t(n) * es));
    return int64_t(kAlign + Up64(size_t(n) * es) + 2 * Up64(size_t(n / 2 + 1) * 2 * es));
}

Plan SinglePlan(const Window &w, Elem e, double *cost)
{
    const int64_t need = std::max({w.lu, w.lv, w.s0 + w.n, w.lu + w.lv - 1 - w.s0});
    const int64_t n = FastSize(need);
    if (n < 0) {
        *cost = INFINITY;
        return {Method::kSingle, 0, INT64_MAX};
    }
    *cost = 3 * FftCost(e, n);
    return {Method::kSingle, n, SpectrumBytes(e, n)};
}

/* Block sizes from twice the shorter length up: the cheapest per output. */
Plan OverlapSavePlan(const Window &w, Elem e, double *cost)
{
    const int64_t m = std::min(w.lu, w.lv);
    Plan best{Method::kOverlapSave, 0, INT64_MAX};
    *cost = INFINITY;
    if (e == Elem::k64fc) return best;
    for (int64_t p = 16; p <= (int64_t(1) << 24); p *= 2) {
        for (int64_t nb : {p, p / 4 * 3, p / 8 * 5}) {
            if (nb < 2 * m) continue;
            const int64_t step = nb - m + 1;
            const int64_t blocks = (w.n + step - 1) / step;
            const double c = double(2 * blocks + 1) * FftCost(e, nb);
            if (c < *cost) {
                *cost = c;
                best = {Method::kOverlapSave, nb, SpectrumBytes(e, nb)};
            }
        }
        if (p - m + 1 > 4 * w.n) break;
    }
    return best;
}

/* The plan for a window and an algorithm (the IppAlgType bits). */
Plan Choose(const Window &w, Elem e, int alg)
{
    if (w.n == 0) return {Method::kNone, 0, int64_t(kAlign)};
    const Plan direct = DirectPlan(w, e);
    if (alg == ippAlgDirect) return direct;
    double cs, co;
    const Plan single = SinglePlan(w, e, &cs);
    const Plan ols = OverlapSavePlan(w, e, &co);
    const Plan fft = co < cs ? ols : single;
    if (alg == ippAlgFFT) return fft;
    const double cd = double(w.n) * double(std::min(w.lu, w.lv)) * MacCost(e);
    return cd <= std::min(cs, co) ? direct : fft;
}

IppStatus BufferSize(const Plan &p, int *size)
{
    if (p.bytes > INT_MAX) return ippStsSizeErr;
    *size = int(p.bytes);
    return ippStsNoErr;
}

IppStatus CheckAlg(IppEnum algType, bool norm)
{
    const int alg = algType & ippAlgMask;
    const int nrm = algType & ippsNormMask;
    if (alg != ippAlgAuto && alg != ippAlgDirect && alg != ippAlgFFT) return ippStsAlgTypeErr;
    if (norm && nrm != ippsNormNone && nrm != ippsNormB && nrm != ippsNormU) return ippStsAlgTypeErr;
    return ippStsNoErr;
}

Elem ElemOf(IppDataType t, bool complexOk, bool *ok)
{
    *ok = t == ipp32f || t == ipp64f || (complexOk && t == ipp64fc);
    return t == ipp32f ? Elem::k32f : t == ipp64f ? Elem::k64f : Elem::k64fc;
}

/* ---- Transforms through the plan cache. ---- */

template <typename T>
struct Fft;

template <>
struct Fft<double> {
    using C = fftw_complex;
    static constexpr PlanPrecision kPrec = PlanPrecision::kDouble;
    static void R2C(Lease l, double *in, C *out) { fftw_execute_dft_r2c(AsPlan64(l), in, out); }
    static void C2R(Lease l, C *in, double *out) { fftw_execute_dft_c2r(AsPlan64(l), in, out); }
    static void C2C(Lease l, C *in, C *out) { fftw_execute_dft(AsPlan64(l), in, out); }
};

template <>
struct Fft<float> {
    using C = fftwf_complex;
    static constexpr PlanPrecision kPrec = PlanPrecision::kSingle;
    static void R2C(Lease l, float *in, C *out) { fftwf_execute_dft_r2c(AsPlan32(l), in, out); }
    static void C2R(Lease l, C *in, float *out) { fftwf_execute_dft_c2r(AsPlan32(l), in, out); }
};

/* x *= y over n complex values, then scaled. */
template <typename T>
void MulSpectra(T (*x)[2], const T (*y)[2], int64_t n, T scale)
{
    for (int64_t i = 0; i < n; ++i) {
        const T re = x[i][0] * y[i][0] - x[i][1] * y[i][1];
        const T im = x[i][0] * y[i][1] + x[i][1] * y[i][0];
        x[i][0] = re * scale;
        x[i][1] = im * scale;
    }
}

/* dst[t] = src[from + t] for t < n, zero where from + t is outside [0, len). */
template <typename T>
void PaddedCopy(const T *src, int64_t len, int64_t from, T *dst, int64_t n)
{
    const int64_t lo = std::clamp<int64_t>(-from, 0, n);
    const int64_t hi = std::clamp<int64_t>(len - from, lo, n);
    if (lo > 0) memset(dst, 0, size_t(lo) * sizeof(T));
    if (hi > lo) memcpy(dst + lo, src + from + lo, size_t(hi - lo) * sizeof(T));
    if (n > hi) memset(dst + hi, 0, size_t(n - hi) * sizeof(T));
}

template <typename T>
void Direct(const T *h, int64_t m, const T *x, int64_t lx, const Window &w, T *out, Ipp8u *buf)
{
    T *hr = Aligned<T>(buf);
    T *xp = hr + Up64(size_t(m) * sizeof(T)) / sizeof(T);
    for (int64_t j = 0; j < m; ++j) hr[j] = h[m - 1 - j];
    PaddedCopy(x, lx, w.s0 - (m - 1), xp, w.n + m - 1);
    if constexpr (sizeof(T) == 4)
        HWY_DYNAMIC_DISPATCH(SlideDot_32f)(hr, size_t(m), xp, out, size_t(w.n));
    else
        HWY_DYNAMIC_DISPATCH(SlideDot_64f)(hr, size_t(m), xp, out, size_t(w.n));
}

template <typename T>
IppStatus Single(const T *u, const T *v, const Window &w, int64_t n, T *out, Ipp8u *buf)
{
    using F = Fft<T>;
    using C = typename F::C;
    T *r = Aligned<T>(buf);
    C *su = reinterpret_cast<C *>(r + Up64(size_t(n) * sizeof(T)) / sizeof(T));
    C *sv = su + Up64(size_t(n / 2 + 1) * sizeof(C)) / sizeof(C);
    const Lease fwd = AcquirePlan(PlanKind::kR2C, F::kPrec, int(n), r, su);
    const Lease inv = AcquirePlan(PlanKind::kC2R, F::kPrec, int(n), su, r);
    if (!fwd.plan || !inv.plan) {
        ReleasePlan(fwd);  // a failed lease gives back nothing
        ReleasePlan(inv);
        return ippStsMemAllocErr;
    }
    PaddedCopy(u, w.lu, 0, r, n);
    F::R2C(fwd, r, su);
    PaddedCopy(v, w.lv, 0, r, n);
    F::R2C(fwd, r, sv);
    MulSpectra<T>(su, sv, n / 2 + 1, T(1) / T(n));
    F::C2R(inv, su, r);
    memcpy(out, r + w.s0, size_t(w.n) * sizeof(T));
    ReleasePlan(fwd);
    ReleasePlan(inv);
    return ippStsNoErr;
}

template <typename T>
IppStatus OverlapSave(const T *h, int64_t m, const T *x, int64_t lx, const Window &w, int64_t n, T *out, Ipp8u *buf)
{
    using F = Fft<T>;
    using C = typename F::C;
    T *r = Aligned<T>(buf);
    C *sx = reinterpret_cast<C *>(r + Up64(size_t(n) * sizeof(T)) / sizeof(T));
    C *sh = sx + Up64(size_t(n / 2 + 1) * sizeof(C)) / sizeof(C);
    const Lease fwd = AcquirePlan(PlanKind::kR2C, F::kPrec, int(n), r, sx);
    const Lease inv = AcquirePlan(PlanKind::kC2R, F::kPrec, int(n), sx, r);
    if (!fwd.plan || !inv.plan) {
        ReleasePlan(fwd);  // a failed lease gives back nothing
        ReleasePlan(inv);
        return ippStsMemAllocErr;
    }
    PaddedCopy(h, m, 0, r, n);
    F::R2C(fwd, r, sh);
    const T scale = T(1) / T(n);
    for (int64_t i = 0; i < n / 2 + 1; ++i) sh[i][0] *= scale, sh[i][1] *= scale;
    const int64_t step = n - m + 1;
    for (int64_t k = 0; k < w.n; k += step) {
        PaddedCopy(x, lx, w.s0 + k - (m - 1), r, n);
        F::R2C(fwd, r, sx);
        MulSpectra<T>(sx, sh, n / 2 + 1, T(1));
        F::C2R(inv, sx, r);
        memcpy(out + k, r + (m - 1), size_t(std::min(step, w.n - k)) * sizeof(T));
    }
    ReleasePlan(fwd);
    ReleasePlan(inv);
    return ippStsNoErr;
}

/* Outputs s .. s + count - 1 of u * v into out. */
template <typename T>
IppStatus RealWindow(const T *u, int64_t lu, const T *v, int64_t lv, int64_t s, int64_t count, T *out, int alg,
                     Ipp8u *buf)
{
    const Window w = Clip(lu, lv, s, count);
    const Plan p = Choose(w, sizeof(T) == 4 ? Elem::k32f : Elem::k64f, alg);
    if (p.bytes == INT64_MAX) return ippStsSizeErr;  // no transform size fits
    memset(out, 0, size_t(w.first) * sizeof(T));
    memset(out + w.first + w.n, 0, size_t(count - w.first - w.n) * sizeof(T));
    const bool uShort = lu <= lv;
    const T *h = uShort ? u : v, *x = uShort ? v : u;
    const int64_t m = uShort ? lu : lv, lx = uShort ? lv : lu;
    switch (p.method) {
    case Method::kNone: return ippStsNoErr;
    case Method::kDirect: Direct(h, m, x, lx, w, out + w.first, buf); return ippStsNoErr;
    case Method::kSingle: return Single(u, v, w, p.size, out + w.first, buf);
    case Method::kOverlapSave: return OverlapSave(h, m, x, lx, w, p.size, out + w.first, buf);
    }
    return ippStsNoErr;
}

IppStatus ComplexWindow(const Ipp64fc *u, int64_t lu, const Ipp64fc *v, int64_t lv, int64_t s, int64_t count,
                        Ipp64fc *out, int alg, Ipp8u *buf)
{
    const Window w = Clip(lu, lv, s, count);
    const Plan p = Choose(w, Elem::k64fc, alg);
    if (p.bytes == INT64_MAX) return ippStsSizeErr;
    memset(out, 0, size_t(w.first) * sizeof(Ipp64fc));
    memset(out + w.first + w.n, 0, size_t(count - w.first - w.n) * sizeof(Ipp64fc));
    Ipp64fc *o = out + w.first;
    if (p.method == Method::kNone) return ippStsNoErr;
    if (p.method == Method::kDirect) {
        const bool uShort = lu <= lv;
        const Ipp64fc *h = uShort ? u : v, *x = uShort ? v : u;
        const int64_t m = uShort ? lu : lv, lx = uShort ? lv : lu;
        const int64_t nx = w.n + m - 1;
        double *hr = Aligned<double>(buf);
        double *hi = hr + Up64(size_t(m) * 8) / 8;
        double *xr = hi + Up64(size_t(m) * 8) / 8;
        double *xi = xr + Up64(size_t(nx) * 8) / 8;
        double *orr = xi + Up64(size_t(nx) * 8) / 8;
        double *oi = orr + Up64(size_t(w.n) * 8) / 8;
        for (int64_t j = 0; j < m; ++j) hr[j] = h[m - 1 - j].re, hi[j] = h[m - 1 - j].im;
        for (int64_t t = 0; t < nx; ++t) {
            const int64_t at = w.s0 - (m - 1) + t;
            const bool in = at >= 0 && at < lx;
            xr[t] = in ? x[at].re : 0.0;
            xi[t] = in ? x[at].im : 0.0;
        }
        HWY_DYNAMIC_DISPATCH(SlideDot_64fc)(hr, hi, size_t(m), xr, xi, orr, oi, size_t(w.n));
        for (int64_t k = 0; k < w.n; ++k) o[k].re = orr[k], o[k].im = oi[k];
        return ippStsNoErr;
    }
    const int64_t n = p.size;
    fftw_complex *su = Aligned<fftw_complex>(buf);
    fftw_complex *sv = su + Up64(size_t(n) * sizeof(fftw_complex)) / sizeof(fftw_complex);
    const Lease fwd = AcquirePlan(PlanKind::kC2CForward, PlanPrecision::kDouble, int(n), su, su);
    const Lease inv = AcquirePlan(PlanKind::kC2CBackward, PlanPrecision::kDouble, int(n), su, su);
    if (!fwd.plan || !inv.plan) {
        ReleasePlan(fwd);  // a failed lease gives back nothing
        ReleasePlan(inv);
        return ippStsMemAllocErr;
    }
    PaddedCopy(reinterpret_cast<const fftw_complex *>(u), lu, 0, su, n);
    PaddedCopy(reinterpret_cast<const fftw_complex *>(v), lv, 0, sv, n);
    fftw_execute_dft(AsPlan64(fwd), su, su);
    fftw_execute_dft(AsPlan64(fwd), sv, sv);
    MulSpectra<double>(su, sv, n, 1.0 / double(n));
    fftw_execute_dft(AsPlan64(inv), su, su);
    memcpy(o, su + w.s0, size_t(w.n) * sizeof(Ipp64fc));
    ReleasePlan(fwd);
    ReleasePlan(inv);
    return ippStsNoErr;
}

/* ---- Convolution. ---- */

template <typename T>
IppStatus Convolve(const T *a, int la, const T *b, int lb, T *dst, IppEnum algType, Ipp8u *buf)
{
    IppStatus st = CheckArgs(std::min(la, lb), a, b, dst, buf);
    if (st == ippStsNoErr) st = CheckAlg(algType, false);
    if (st != ippStsNoErr) return st;
    return RealWindow(a, la, b, lb, 0, int64_t(la) + lb - 1, dst, algType & ippAlgMask, buf);
}

/* ---- Correlation: the conjugated, reversed first source convolved with
 * the second; lag k is output k + len1 - 1. ---- */

template <typename T>
int64_t ReversedBytes(int64_t len)
{
    return int64_t(Up64(size_t(len) * sizeof(T)));
}

/* An auto-correlation by one transform: lags 0 .. w.n - 1 are the inverse
 * transform of |X|^2, at a size (the plan's) where no other lag wraps onto
 * them. */
template <typename T>
IppStatus AutoSingle(const T *x, int64_t len, const Window &w, int64_t n, T *out, Ipp8u *buf)
{
    using F = Fft<T>;
    using C = typename F::C;
    T *r = Aligned<T>(buf);
    C *sx = reinterpret_cast<C *>(r + Up64(size_t(n) * sizeof(T)) / sizeof(T));
    const Lease fwd = AcquirePlan(PlanKind::kR2C, F::kPrec, int(n), r, sx);
    const Lease inv = AcquirePlan(PlanKind::kC2R, F::kPrec, int(n), sx, r);
    if (!fwd.plan || !inv.plan) {
        ReleasePlan(fwd);  // a failed lease gives back nothing
        ReleasePlan(inv);
        return ippStsMemAllocErr;
    }
    PaddedCopy(x, len, 0, r, n);
    F::R2C(fwd, r, sx);
    const T scale = T(1) / T(n);
    for (int64_t i = 0; i < n / 2 + 1; ++i) {
        sx[i][0] = (sx[i][0] * sx[i][0] + sx[i][1] * sx[i][1]) * scale;
        sx[i][1] = 0;
    }
    F::C2R(inv, sx, r);
    memcpy(out, r + (w.s0 - (len - 1)), size_t(w.n) * sizeof(T));
    ReleasePlan(fwd);
    ReleasePlan(inv);
    return ippStsNoErr;
}

template <typename T>
void Normalise(T *dst, int64_t count, int64_t l1, int64_t l2, int64_t lowLag, int norm)
{
    if (norm == ippsNormNone) return;
    for (int64_t k = 0; k < count; ++k) {
        const int64_t lag = lowLag + k;
        double div;
        if (norm == ippsNormB) {
            div = double(std::max(l1, l2));
        } else {
            const int64_t terms = std::min(l1, l2 - lag) - std::max<int64_t>(0, -lag);
            if (terms <= 0) continue;  // no products: the value is already 0
            div = double(terms);
        }
        if constexpr (std::is_same_v<T, Ipp64fc>) {
            dst[k].re /= div;
            dst[k].im /= div;
        } else {
            dst[k] = T(double(dst[k]) / div);
        }
    }
}

template <typename T>
IppStatus CrossCorr(const T *p1, int l1, const T *p2, int l2, T *dst, int dstLen, int lowLag, IppEnum algType,
                    Ipp8u *buf)
{
    IppStatus st = CheckArgs(std::min({l1, l2, dstLen}), p1, p2, dst, buf);
    if (st == ippStsNoErr) st = CheckAlg(algType, true);
    if (st != ippStsNoErr) return st;
    T *rev = Aligned<T>(buf);
    Ipp8u *rest = reinterpret_cast<Ipp8u *>(rev) + ReversedBytes<T>(l1);
    if constexpr (!std::is_same_v<T, Ipp64fc>) {
        if (p1 == p2 && l1 == l2 && lowLag == 0) {
            const Window w = Clip(l1, l2, int64_t(l1) - 1, dstLen);
            const Plan p = Choose(w, sizeof(T) == 4 ? Elem::k32f : Elem::k64f, algType & ippAlgMask);
            if (p.method == Method::kSingle) {
                st = AutoSingle(p1, l1, w, p.size, dst, rest);
                memset(dst + w.n, 0, size_t(dstLen - w.n) * sizeof(T));
                if (st == ippStsNoErr) Normalise(dst, dstLen, l1, l2, lowLag, algType & ippsNormMask);
                return st;
            }
        }
    }
    for (int i = 0; i < l1; ++i) {
        rev[i] = p1[l1 - 1 - i];
        if constexpr (std::is_same_v<T, Ipp64fc>) rev[i].im = -rev[i].im;
    }
    const int64_t s = int64_t(lowLag) + l1 - 1;
    if constexpr (std::is_same_v<T, Ipp64fc>)
        st = ComplexWindow(rev, l1, p2, l2, s, dstLen, dst, algType & ippAlgMask, rest);
    else
        st = RealWindow(rev, l1, p2, l2, s, dstLen, dst, algType & ippAlgMask, rest);
    if (st == ippStsNoErr) Normalise(dst, dstLen, l1, l2, lowLag, algType & ippsNormMask);
    return st;
}

IppStatus CrossCorrSize(int l1, int l2, int dstLen, int lowLag, IppDataType type, IppEnum algType, int *size,
                        bool complexOk)
{
    if (size == nullptr) return ippStsNullPtrErr;
    if (l1 < 1 || l2 < 1 || dstLen < 1) return ippStsSizeErr;
    IppStatus st = CheckAlg(algType, true);
    if (st != ippStsNoErr) return st;
    bool ok;
    const Elem e = ElemOf(type, complexOk, &ok);
    if (!ok) return ippStsDataTypeErr;
    const Window w = Clip(l1, l2, int64_t(lowLag) + l1 - 1, dstLen);
    Plan p = Choose(w, e, algType & ippAlgMask);
    p.bytes += int64_t(kAlign + Up64(size_t(l1) * ElemBytes(e)));
    return BufferSize(p, size);
}

/* Convolution's lags in ConvBiased: direct sums, in double. */
IppStatus ConvBiased(const Ipp32f *a, int la, const Ipp32f *b, int lb, Ipp32f *dst, int dstLen, int bias)
{
    IppStatus st = CheckArgs(std::min(la, lb), a, b, dst);
    if (st != ippStsNoErr) return st;
    const int64_t len = int64_t(la) + lb - 1;
    for (int64_t k = 0; k < dstLen; ++k) {
        const int64_t n = int64_t(bias) + k;
        double s = 0;
        if (n >= 0 && n < len) {
            const int64_t lo = std::max<int64_t>(0, n - (lb - 1)), hi = std::min<int64_t>(la - 1, n);
            for (int64_t i = lo; i <= hi; ++i) s += double(a[i]) * double(b[n - i]);
        }
        dst[k] = Ipp32f(s);
    }
    return ippStsNoErr;
}

}  // namespace
}  // namespace orb_kernels

using namespace orb_kernels;

extern "C" {

IppStatus ippsConvolveGetBufferSize(int src1Len, int src2Len, IppDataType dataType, IppEnum algType,
                                    int *pBufferSize)
{
    if (pBufferSize == nullptr) return ippStsNullPtrErr;
    if (src1Len < 1 || src2Len < 1) return ippStsSizeErr;
    IppStatus st = CheckAlg(algType, false);
    if (st != ippStsNoErr) return st;
    bool ok;
    const Elem e = ElemOf(dataType, false, &ok);
    if (!ok) return ippStsDataTypeErr;
    const Window w = Clip(src1Len, src2Len, 0, int64_t(src1Len) + src2Len - 1);
    return BufferSize(Choose(w, e, algType & ippAlgMask), pBufferSize);
}

IppStatus ippsConvolve_32f(const Ipp32f *pSrc1, int src1Len, const Ipp32f *pSrc2, int src2Len, Ipp32f *pDst,
                           IppEnum algType, Ipp8u *pBuffer)
{
    return Convolve(pSrc1, src1Len, pSrc2, src2Len, pDst, algType, pBuffer);
}

IppStatus ippsConvolve_64f(const Ipp64f *pSrc1, int src1Len, const Ipp64f *pSrc2, int src2Len, Ipp64f *pDst,
                           IppEnum algType, Ipp8u *pBuffer)
{
    return Convolve(pSrc1, src1Len, pSrc2, src2Len, pDst, algType, pBuffer);
}

IppStatus ippsConvBiased_32f(const Ipp32f *pSrc1, int src1Len, const Ipp32f *pSrc2, int src2Len, Ipp32f *pDst,
                             int dstLen, int bias)
{
    return ConvBiased(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, bias);
}

IppStatus ippsAutoCorrNormGetBufferSize(int srcLen, int dstLen, IppDataType dataType, IppEnum algType,
                                        int *pBufferSize)
{
    return CrossCorrSize(srcLen, srcLen, dstLen, 0, dataType, algType, pBufferSize, true);
}

IppStatus ippsAutoCorrNorm_32f(const Ipp32f *pSrc, int srcLen, Ipp32f *pDst, int dstLen, IppEnum algType,
                               Ipp8u *pBuffer)
{
    return CrossCorr(pSrc, srcLen, pSrc, srcLen, pDst, dstLen, 0, algType, pBuffer);
}

IppStatus ippsAutoCorrNorm_64f(const Ipp64f *pSrc, int srcLen, Ipp64f *pDst, int dstLen, IppEnum algType,
                               Ipp8u *pBuffer)
{
    return CrossCorr(pSrc, srcLen, pSrc, srcLen, pDst, dstLen, 0, algType, pBuffer);
}

IppStatus ippsAutoCorrNorm_64fc(const Ipp64fc *pSrc, int srcLen, Ipp64fc *pDst, int dstLen, IppEnum algType,
                                Ipp8u *pBuffer)
{
    return CrossCorr(pSrc, srcLen, pSrc, srcLen, pDst, dstLen, 0, algType, pBuffer);
}

IppStatus ippsCrossCorrNormGetBufferSize(int src1Len, int src2Len, int dstLen, int lowLag, IppDataType dataType,
                                         IppEnum algType, int *pBufferSize)
{
    return CrossCorrSize(src1Len, src2Len, dstLen, lowLag, dataType, algType, pBufferSize, true);
}

IppStatus ippsCrossCorrNorm_32f(const Ipp32f *pSrc1, int src1Len, const Ipp32f *pSrc2, int src2Len, Ipp32f *pDst,
                                int dstLen, int lowLag, IppEnum algType, Ipp8u *pBuffer)
{
    return CrossCorr(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag, algType, pBuffer);
}

IppStatus ippsCrossCorrNorm_64f(const Ipp64f *pSrc1, int src1Len, const Ipp64f *pSrc2, int src2Len, Ipp64f *pDst,
                                int dstLen, int lowLag, IppEnum algType, Ipp8u *pBuffer)
{
    return CrossCorr(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag, algType, pBuffer);
}

IppStatus ippsCrossCorrNorm_64fc(const Ipp64fc *pSrc1, int src1Len, const Ipp64fc *pSrc2, int src2Len,
                                 Ipp64fc *pDst, int dstLen, int lowLag, IppEnum algType, Ipp8u *pBuffer)
{
    return CrossCorr(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag, algType, pBuffer);
}

}  // extern "C"

#endif  // HWY_ONCE
