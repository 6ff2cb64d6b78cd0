/* IIR filtering of arbitrary order (ippsIIR_32f/_64f/_64fc with their size
 * queries and initialisers) and Butterworth / Chebyshev type I design
 * (ippsIIRGenLowpass_64f, ippsIIRGenHighpass_64f).
 *
 * Taps of order N: b0 .. bN, then a0 .. aN; the initialiser divides all of
 * them by a0 (a zero a0 is ippStsDivByZeroErr). The filter is
 *   y[n] = sum_k b_k x[n - k] - sum_{k >= 1} a_k y[n - k]
 * in the transposed direct form II: the N delay-line values are its state,
 *   y = b0 x + z0;  z_{k-1} = b_k x - a_k y + z_k;  z_{N-1} = b_N x - a_N y,
 * zeros when the initialiser is given no delay line. Single precision runs
 * in double and rounds each output once. Real filters of order up to 12
 * take the first N outputs that way, then work from the signal's own
 * history in blocks: the feed-forward sums vectorised across outputs, then
 * the feedback recursion, ordered so that each output waits on the one
 * before it through a single multiply-add (a fused one where the target
 * has it); the delay line is rebuilt from the last inputs and outputs at
 * the end. Complex filters and higher orders run the transposed form.
 *
 * Design: the analogue prototype's poles (Butterworth, or Chebyshev type I
 * with pass-band ripple rpl dB, whose cut-off is the ripple band's edge)
 * are pre-warped to tan(pi rFreq), mapped to high-pass by s -> 1/s when
 * asked, and taken to the z plane by the bilinear transform; the zeros are
 * all at z = -1 (low-pass) or z = 1 (high-pass). The gain makes the pass
 * band's edge of the response (DC or Nyquist) 1, or 1 / sqrt(1 + eps^2) for
 * an even-order Chebyshev filter, whose ripple starts at its trough there.
 * a0 is 1.
 */
#include "dispatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "iir.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <math.h>
#include <stdint.h>
#include <string.h>

#include <complex>
#include <type_traits>

#include "ipps.h"

HWY_BEFORE_NAMESPACE();
namespace orb_kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
namespace {

/* f[i] = sum_{k <= n} b[k] x[n + i - k] for i < count: the feed-forward
 * part over a staged block (n samples of history, then the block). */
void FeedForward(const double *x, const double *b, int n, double *f, size_t count)
{
    const hn::ScalableTag<double> d;
    const size_t N = hn::Lanes(d), h = size_t(n);
    size_t i = 0;
    for (; i + N <= count; i += N) {
        auto acc = hn::Mul(hn::Set(d, b[0]), hn::LoadU(d, x + h + i));
        for (size_t k = 1; k <= h; ++k) acc = hn::MulAdd(hn::Set(d, b[k]), hn::LoadU(d, x + h + i - k), acc);
        hn::StoreU(acc, d, f + i);
    }
    for (; i < count; ++i) {
        double acc = b[0] * x[h + i];
        for (size_t k = 1; k <= h; ++k) acc += b[k] * x[h + i - k];
        f[i] = acc;
    }
}

/* c - a y, in one rounding where the target has fused multiply-adds. */
HWY_INLINE double Fms(double a, double y, double c)
{
#if HWY_NATIVE_FMA
    return __builtin_fma(-a, y, c);
#else
    return c - a * y;
#endif
}

/* y[i] = f[i] - sum_{k >= 1} a[k] y[i - k], the earlier outputs in h (newest
 * first, updated). The newest output's term comes last, so each output
 * waits on the one before it through a single multiply-add. */
template <int kN>
void Recurse(const double *f, double *y, size_t count, const double *a, double *h)
{
    double r[kN];
    for (int k = 0; k < kN; ++k) r[k] = h[k];
    for (size_t i = 0; i < count; ++i) {
        double acc = f[i];
        for (int k = kN; k >= 2; --k) acc = Fms(a[k], r[k - 1], acc);
        const double out = Fms(a[1], r[0], acc);
        for (int k = kN - 1; k >= 1; --k) r[k] = r[k - 1];
        r[0] = out;
        y[i] = out;
    }
    for (int k = 0; k < kN; ++k) h[k] = r[k];
}

void Feedback(const double *f, double *y, size_t count, const double *a, double *h, int n)
{
    switch (n) {
    case 1: return Recurse<1>(f, y, count, a, h);
    case 2: return Recurse<2>(f, y, count, a, h);
    case 3: return Recurse<3>(f, y, count, a, h);
    case 4: return Recurse<4>(f, y, count, a, h);
    case 5: return Recurse<5>(f, y, count, a, h);
    case 6: return Recurse<6>(f, y, count, a, h);
    case 7: return Recurse<7>(f, y, count, a, h);
    case 8: return Recurse<8>(f, y, count, a, h);
    case 9: return Recurse<9>(f, y, count, a, h);
    case 10: return Recurse<10>(f, y, count, a, h);
    case 11: return Recurse<11>(f, y, count, a, h);
    default: return Recurse<12>(f, y, count, a, h);
    }
}

}  // namespace
}  // namespace orb_kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orb_kernels {
HWY_EXPORT(FeedForward);
HWY_EXPORT(Feedback);
void RunFeedForward(const double *x, const double *b, int n, double *f, size_t count)
{
    HWY_DYNAMIC_DISPATCH(FeedForward)(x, b, n, f, count);
}
void RunFeedback(const double *f, double *y, size_t count, const double *a, double *h, int n)
{
    HWY_DYNAMIC_DISPATCH(Feedback)(f, y, count, a, h, n);
}
}  // namespace orb_kernels

namespace {

constexpr size_t kAlign = 64;
constexpr size_t Up(size_t bytes) { return (bytes + kAlign - 1) / kAlign * kAlign; }
constexpr uint32_t kIirMagic = 0x49495253;  // "IIRS"
constexpr int kMaxOrder = 1 << 20;

template <typename T>
struct IirState {
    uint32_t magic;
    int order;
    T *b, *a, *z;  // N + 1, N + 1 (a[0] = 1) and N values
};

template <typename T>
size_t IirSize(int order)
{
    const size_t n = size_t(order);
    return kAlign + Up(sizeof(IirState<T>)) + 2 * Up((n + 1) * sizeof(T)) + Up(n * sizeof(T));
}

template <typename T>
IppStatus GetStateSize(int order, int *pSize)
{
    if (!pSize) return ippStsNullPtrErr;
    if (order < 1 || order > kMaxOrder) return ippStsIIROrderErr;
    *pSize = int(IirSize<T>(order));
    return ippStsNoErr;
}

inline bool IsZero(double v) { return v == 0; }
inline bool IsZero(const std::complex<double> &v) { return v == 0.0; }

/* S: the sample type, T: the arithmetic type (double for 32f and 64f). */
template <typename S, typename T, typename State>
IppStatus Init(State **ppState, const S *taps, int order, const S *dly, Ipp8u *buf)
{
    if (!ppState || !taps || !buf) return ippStsNullPtrErr;
    if (order < 1 || order > kMaxOrder) return ippStsIIROrderErr;
    const size_t n = size_t(order);
    const T a0 = T(taps[n + 1]);
    if (IsZero(a0)) return ippStsDivByZeroErr;
    const uintptr_t base = (reinterpret_cast<uintptr_t>(buf) + kAlign - 1) / kAlign * kAlign;
    IirState<T> *s = reinterpret_cast<IirState<T> *>(base);
    char *p = reinterpret_cast<char *>(base) + Up(sizeof(IirState<T>));
    s->order = order;
    s->b = reinterpret_cast<T *>(p);
    s->a = reinterpret_cast<T *>(p + Up((n + 1) * sizeof(T)));
    s->z = reinterpret_cast<T *>(p + 2 * Up((n + 1) * sizeof(T)));
    for (size_t k = 0; k <= n; ++k) {
        s->b[k] = T(taps[k]) / a0;
        s->a[k] = T(taps[n + 1 + k]) / a0;
    }
    s->a[0] = T(1);
    for (size_t k = 0; k < n; ++k) s->z[k] = dly ? T(dly[k]) : T(0);
    s->magic = kIirMagic;
    *ppState = reinterpret_cast<State *>(s);
    return ippStsNoErr;
}

/* The transposed direct form over len samples, order known at compile time
 * (kN > 0) or not (kN == 0). Reads each input before writing its output, so
 * dst may be src. */
template <int kN, typename S, typename T>
void Run(const S *src, S *dst, size_t len, IirState<T> *s)
{
    const int n = kN > 0 ? kN : s->order;
    if constexpr (kN > 0) {
        T b[kN + 1], a[kN + 1], z[kN];
        for (int k = 0; k <= kN; ++k) b[k] = s->b[k], a[k] = s->a[k];
        for (int k = 0; k < kN; ++k) z[k] = s->z[k];
        for (size_t i = 0; i < len; ++i) {
            const T x = T(src[i]);
            const T y = b[0] * x + z[0];
            for (int k = 1; k < kN; ++k) z[k - 1] = b[k] * x - a[k] * y + z[k];
            z[kN - 1] = b[kN] * x - a[kN] * y;
            dst[i] = S(y);
        }
        for (int k = 0; k < kN; ++k) s->z[k] = z[k];
    } else {
        const T *b = s->b, *a = s->a;
        T *z = s->z;
        for (size_t i = 0; i < len; ++i) {
            const T x = T(src[i]);
            const T y = b[0] * x + z[0];
            for (int k = 1; k < n; ++k) z[k - 1] = b[k] * x - a[k] * y + z[k];
            z[n - 1] = b[n] * x - a[n] * y;
            dst[i] = S(y);
        }
    }
}

/* Real samples of order up to 12 and more samples than the order: the
 * first `order` outputs by the transposed form from the delay line, the rest
 * from the signal's own history in blocks: the feed-forward sums
 * vectorised, then the feedback recursion; the final delay line is rebuilt
 * from the last inputs and outputs. */
constexpr int kBlockOrder = 12;
constexpr size_t kBlock = 1024;

template <typename S>
void Blocked(const S *src, S *dst, size_t len, IirState<double> *s)
{
    const int n = s->order;
    const size_t h = size_t(n);
    const double *b = s->b, *a = s->a;
    double x[kBlockOrder + kBlock], f[kBlock], y[kBlock], last[kBlockOrder];
    double *z = s->z;
    for (size_t i = 0; i < h; ++i) x[i] = double(src[i]);
    for (size_t i = 0; i < h; ++i) {
        const double v = x[i], out = b[0] * v + z[0];
        for (int k = 1; k < n; ++k) z[k - 1] = b[k] * v - a[k] * out + z[k];
        z[n - 1] = b[n] * v - a[n] * out;
        dst[i] = S(out);
        last[h - 1 - i] = out;
    }
    for (size_t at = h; at < len;) {
        const size_t c = len - at < kBlock ? len - at : kBlock;
        for (size_t i = 0; i < c; ++i) x[h + i] = double(src[at + i]);
        orb_kernels::RunFeedForward(x, b, n, f, c);
        orb_kernels::RunFeedback(f, y, c, a, last, n);
        for (size_t i = 0; i < c; ++i) dst[at + i] = S(y[i]);
        memmove(x, x + c, h * sizeof(double));
        at += c;
    }
    // z_j = sum_{k > j} b_k x[L + j - k] - a_k y[L + j - k]; x[h - m] is
    // the m-th last input, last[m - 1] the m-th last output.
    for (int j = 0; j < n; ++j) {
        double v = 0;
        for (int k = j + 1; k <= n; ++k) v += b[k] * x[h - size_t(k - j)] - a[k] * last[k - j - 1];
        z[j] = v;
    }
}

template <typename S, typename T, typename State>
IppStatus Filter(const S *src, S *dst, int len, State *pState)
{
    if (!src || !dst || !pState) return ippStsNullPtrErr;
    if (len < 1) return ippStsSizeErr;
    IirState<T> *s = reinterpret_cast<IirState<T> *>(pState);
    if (s->magic != kIirMagic) return ippStsContextMatchErr;
    const size_t n = size_t(len);
    if constexpr (std::is_same_v<T, double>) {
        if (s->order <= kBlockOrder && n > size_t(s->order)) {
            Blocked(src, dst, n, s);
            return ippStsNoErr;
        }
    }
    switch (s->order) {
    case 1: Run<1>(src, dst, n, s); break;
    case 2: Run<2>(src, dst, n, s); break;
    case 3: Run<3>(src, dst, n, s); break;
    case 4: Run<4>(src, dst, n, s); break;
    case 5: Run<5>(src, dst, n, s); break;
    case 6: Run<6>(src, dst, n, s); break;
    case 7: Run<7>(src, dst, n, s); break;
    case 8: Run<8>(src, dst, n, s); break;
    case 9: Run<9>(src, dst, n, s); break;
    case 10: Run<10>(src, dst, n, s); break;
    case 11: Run<11>(src, dst, n, s); break;
    case 12: Run<12>(src, dst, n, s); break;
    default: Run<0>(src, dst, n, s); break;
    }
    return ippStsNoErr;
}

/* ---- Design ---- */

constexpr int kMaxGenOrder = 12;
using Cx = std::complex<long double>;

/* Coefficients of prod (1 - r_k q) for q = z^-1, real parts (the roots come
 * in conjugate pairs or are real). */
void Expand(const Cx *roots, int n, Cx *work, double *out)
{
    work[0] = 1;
    for (int i = 1; i <= n; ++i) work[i] = 0;
    for (int k = 0; k < n; ++k)
        for (int i = k + 1; i >= 1; --i) work[i] -= roots[k] * work[i - 1];
    for (int i = 0; i <= n; ++i) out[i] = double(work[i].real());
}

IppStatus Design(bool high, double freq, double ripple, int order, double *taps, IppsIIRFilterType type,
                 Ipp8u *buffer)
{
    if (!taps || !buffer) return ippStsNullPtrErr;
    if (order < 1 || order > kMaxGenOrder) return ippStsIIRGenOrderErr;
    if (!(freq > 0 && freq < 0.5)) return ippStsFilterFrequencyErr;
    if (type != ippButterworth && type != ippChebyshev1) return ippStsFilterTypeErr;
    if (type == ippChebyshev1 && !(ripple > 0 && ripple <= 29)) return ippStsIIRPassbandRippleErr;
    const long double pi = 3.14159265358979323846264338327950288L;
    const int n = order;
    // Work arrays in the caller's buffer: poles, zeros, expansion.
    Cx *poles = reinterpret_cast<Cx *>((reinterpret_cast<uintptr_t>(buffer) + kAlign - 1) / kAlign * kAlign);
    Cx *zeros = poles + n;
    Cx *work = zeros + n;
    const long double wc = tanl(pi * freq);
    long double eps = 0, mu = 0;
    if (type == ippChebyshev1) {
        eps = sqrtl(powl(10.0L, ripple / 10.0L) - 1);
        mu = asinhl(1 / eps) / n;
    }
    for (int k = 0; k < n; ++k) {
        const long double theta = pi * (2 * k + 1) / (2 * n);
        Cx p = type == ippChebyshev1 ? Cx(-sinhl(mu) * sinl(theta), coshl(mu) * cosl(theta))
                                     : Cx(-sinl(theta), cosl(theta));
        p = high ? wc / p : wc * p;
        poles[k] = (1.0L + p) / (1.0L - p);
        zeros[k] = high ? 1.0L : -1.0L;
    }
    double *b = taps, *a = taps + n + 1;
    Expand(zeros, n, work, b);
    Expand(poles, n, work, a);
    // Gain at z = 1 (low-pass) or z = -1 (high-pass).
    const long double q = high ? -1 : 1;
    long double num = 0, den = 0, sign = 1;
    for (int i = 0; i <= n; ++i, sign *= q) {
        num += b[i] * sign;
        den += a[i] * sign;
    }
    long double target = 1;
    if (type == ippChebyshev1 && n % 2 == 0) target = 1 / sqrtl(1 + eps * eps);
    const long double g = target * fabsl(den / num);
    for (int i = 0; i <= n; ++i) b[i] = double(b[i] * g);
    return ippStsNoErr;
}

}  // namespace

using C64 = std::complex<double>;

extern "C" {
IppStatus ippsIIRGetStateSize_32f(int order, int *pBufferSize) { return GetStateSize<double>(order, pBufferSize); }
IppStatus ippsIIRGetStateSize_64f(int order, int *pBufferSize) { return GetStateSize<double>(order, pBufferSize); }
IppStatus ippsIIRGetStateSize_64fc(int order, int *pBufferSize) { return GetStateSize<C64>(order, pBufferSize); }

IppStatus ippsIIRInit_32f(IppsIIRState_32f **ppState, const Ipp32f *pTaps, int order, const Ipp32f *pDlyLine,
                          Ipp8u *pBuf)
{
    return Init<Ipp32f, double>(ppState, pTaps, order, pDlyLine, pBuf);
}
IppStatus ippsIIRInit_64f(IppsIIRState_64f **ppState, const Ipp64f *pTaps, int order, const Ipp64f *pDlyLine,
                          Ipp8u *pBuf)
{
    return Init<Ipp64f, double>(ppState, pTaps, order, pDlyLine, pBuf);
}
IppStatus ippsIIRInit_64fc(IppsIIRState_64fc **ppState, const Ipp64fc *pTaps, int order, const Ipp64fc *pDlyLine,
                           Ipp8u *pBuf)
{
    return Init<C64, C64>(ppState, reinterpret_cast<const C64 *>(pTaps), order,
                          reinterpret_cast<const C64 *>(pDlyLine), pBuf);
}

IppStatus ippsIIR_32f(const Ipp32f *pSrc, Ipp32f *pDst, int len, IppsIIRState_32f *pState)
{
    return Filter<Ipp32f, double>(pSrc, pDst, len, pState);
}
IppStatus ippsIIR_64f(const Ipp64f *pSrc, Ipp64f *pDst, int len, IppsIIRState_64f *pState)
{
    return Filter<Ipp64f, double>(pSrc, pDst, len, pState);
}
IppStatus ippsIIR_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len, IppsIIRState_64fc *pState)
{
    return Filter<C64, C64>(reinterpret_cast<const C64 *>(pSrc), reinterpret_cast<C64 *>(pDst), len, pState);
}

IppStatus ippsIIRGenGetBufferSize(int order, int *pBufferSize)
{
    if (!pBufferSize) return ippStsNullPtrErr;
    if (order < 1 || order > kMaxGenOrder) return ippStsIIRGenOrderErr;
    *pBufferSize = int(kAlign + (3 * size_t(order) + 1) * sizeof(Cx));
    return ippStsNoErr;
}
IppStatus ippsIIRGenLowpass_64f(Ipp64f rFreq, Ipp64f rpl, int order, Ipp64f *pTaps, IppsIIRFilterType filterType,
                                Ipp8u *pBuffer)
{
    return Design(false, rFreq, rpl, order, pTaps, filterType, pBuffer);
}
IppStatus ippsIIRGenHighpass_64f(Ipp64f rFreq, Ipp64f rpl, int order, Ipp64f *pTaps, IppsIIRFilterType filterType,
                                 Ipp8u *pBuffer)
{
    return Design(true, rFreq, rpl, order, pTaps, filterType, pBuffer);
}
}
#endif  // HWY_ONCE
