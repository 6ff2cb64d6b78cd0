// Convolution and correlation kernels against their defining sums in long
// double, for every algorithm and many length pairs, each run in a buffer of
// exactly the queried size followed by guard bytes.
#include "kernels_sweep.h"  // first: the kernels' target set

namespace {

using C = Ipp64fc;
using LC = std::complex<long double>;

class KernelsConv : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsConv);

LC L(float x) { return LC(x, 0); }
LC L(double x) { return LC(x, 0); }
LC L(C x) { return LC(x.re, x.im); }

template <typename T>
std::vector<T> Values(size_t n, uint64_t seed)
{
    std::mt19937_64 rng(seed);
    std::uniform_real_distribution<double> u(-1, 1);
    std::vector<T> v(n);
    for (T &x : v) {
        if constexpr (std::is_same_v<T, C>) x = {u(rng), u(rng)};
        else x = T(u(rng));
    }
    return v;
}

// The queried number of bytes, then guard bytes that must stay as they were.
struct Buffer {
    std::vector<Ipp8u> bytes;
    int size;
    explicit Buffer(int n) : bytes(size_t(n) + 256, 0xA5), size(n) {}
    Ipp8u *data() { return bytes.data(); }
    bool intact() const { return std::all_of(bytes.begin() + size, bytes.end(), [](Ipp8u b) { return b == 0xA5; }); }
};

// got within k eps of scale of want: the sum of |terms| for direct sums,
// plus |a| |b| (2-norms) for transforms, whose rounding spreads over all
// outputs.
template <typename T>
long double Norm(const std::vector<T> &v)
{
    long double s = 0;
    for (const T &x : v) s += std::norm(L(x));
    return sqrtl(s);
}

template <typename T>
bool Near(T got, LC want, long double scale, double k)
{
    const long double eps = sizeof(T) == 4 && !std::is_same_v<T, C> ? FLT_EPSILON : DBL_EPSILON;
    return std::abs(L(got) - want) <= k * eps * scale + 1e-300L;
}

// Every algorithm against sum a[i] b[n - i], lengths across the vector
// widths and the block sizes of the transforms.
template <typename T, typename F>
void CheckConvolve(F fn, IppDataType type)
{
    const std::pair<int, int> lens[] = {{1, 1}, {1, 9}, {3, 4}, {7, 70}, {33, 17}, {64, 65}, {5, 3000}, {300, 400},
                                        {3000, 40}};
    for (auto [la, lb] : lens)
        for (int alg : {ippAlgAuto, ippAlgDirect, ippAlgFFT}) {
            const auto a = Values<T>(size_t(la), la), b = Values<T>(size_t(lb), lb + 7);
            int size = -1;
            ASSERT_EQ(ippStsNoErr, ippsConvolveGetBufferSize(la, lb, type, alg, &size));
            Buffer buf(size);
            std::vector<T> dst(static_cast<size_t>(la + lb));
            dst.back() = T(42);
            ASSERT_EQ(ippStsNoErr, fn(a.data(), la, b.data(), lb, dst.data(), alg, buf.data()));
            EXPECT_TRUE(buf.intact()) << la << "x" << lb << " alg " << alg;
            EXPECT_EQ(dst.back(), T(42)) << "wrote past la + lb - 1";
            const long double spread = alg == ippAlgDirect ? 0 : Norm(a) * Norm(b);
            for (int n = 0; n < la + lb - 1; ++n) {
                LC want = 0;
                long double scale = spread;
                for (int i = std::max(0, n - lb + 1); i <= std::min(n, la - 1); ++i) {
                    want += L(a[size_t(i)]) * L(b[size_t(n - i)]);
                    scale += std::abs(L(a[size_t(i)]) * L(b[size_t(n - i)]));
                }
                ASSERT_TRUE(Near(dst[size_t(n)], want, scale, 8 * log2(la + lb + 1.0)))
                    << la << "x" << lb << " alg " << alg << " at " << n;
            }
        }
}

TEST_P(KernelsConv, ConvolveEveryAlgorithm)
{
    CheckConvolve<Ipp32f>(ippsConvolve_32f, ipp32f);
    CheckConvolve<Ipp64f>(ippsConvolve_64f, ipp64f);
}

// Cross-correlation at lags lowLag .. lowLag + dstLen - 1 as
// sum conj(a[i]) b[i + lag], divided as the normalisation says; the
// auto-correlation is the same with a = b and lag 0 first.
template <typename T>
void CheckCorr(bool autoCorr, int la, int lb, int dstLen, int lowLag, int alg, int norm, const std::vector<T> &out,
               const std::vector<T> &a, const std::vector<T> &b)
{
    const long double spread = alg == ippAlgDirect ? 0 : Norm(a) * Norm(b);
    for (int k = 0; k < dstLen; ++k) {
        const int lag = lowLag + k;
        LC want = 0;
        long double scale = spread;
        int terms = 0;
        for (int i = 0; i < la; ++i)
            if (i + lag >= 0 && i + lag < lb) {
                want += std::conj(L(a[size_t(i)])) * L(b[size_t(i + lag)]);
                scale += std::abs(L(a[size_t(i)]) * L(b[size_t(i + lag)]));
                ++terms;
            }
        const long double div = norm == ippsNormB ? std::max(la, lb) : norm == ippsNormU && terms ? terms : 1;
        ASSERT_TRUE(Near(out[size_t(k)], want / div, scale / div, 8 * log2(la + lb + 1.0)))
            << (autoCorr ? "auto " : "cross ") << la << "x" << lb << " lag " << lag << " alg " << alg << " norm "
            << norm;
    }
}

template <typename T, typename F>
void CheckAuto(F fn, IppDataType type)
{
    const std::pair<int, int> shapes[] = {{1, 1}, {5, 3}, {5, 9}, {40, 40}, {300, 17}, {700, 300}};
    for (auto [len, dstLen] : shapes)
        for (int alg : {ippAlgAuto, ippAlgDirect, ippAlgFFT})
            for (int norm : {ippsNormNone, ippsNormB, ippsNormU}) {
                const auto src = Values<T>(size_t(len), len);
                int size = -1;
                ASSERT_EQ(ippStsNoErr, ippsAutoCorrNormGetBufferSize(len, dstLen, type, alg | norm, &size));
                Buffer buf(size);
                std::vector<T> dst(static_cast<size_t>(dstLen));
                ASSERT_EQ(ippStsNoErr, fn(src.data(), len, dst.data(), dstLen, alg | norm, buf.data()));
                EXPECT_TRUE(buf.intact());
                CheckCorr(true, len, len, dstLen, 0, alg, norm, dst, src, src);
            }
}

template <typename T, typename F>
void CheckCross(F fn, IppDataType type)
{
    // (la, lb, dstLen, lowLag): lags before, across and past the overlap.
    const std::array<int, 4> shapes[] = {{3, 4, 6, -2}, {3, 4, 3, -9}, {4, 3, 12, -5}, {5, 7, 16, -5},
                                         {64, 20, 90, -70}, {20, 500, 40, 470}, {500, 700, 200, -100}};
    for (auto [la, lb, dstLen, lowLag] : shapes)
        for (int alg : {ippAlgAuto, ippAlgDirect, ippAlgFFT})
            for (int norm : {ippsNormNone, ippsNormB, ippsNormU}) {
                const auto a = Values<T>(size_t(la), la), b = Values<T>(size_t(lb), lb + 3);
                int size = -1;
                ASSERT_EQ(ippStsNoErr, ippsCrossCorrNormGetBufferSize(la, lb, dstLen, lowLag, type, alg | norm, &size));
                Buffer buf(size);
                std::vector<T> dst(static_cast<size_t>(dstLen));
                ASSERT_EQ(ippStsNoErr,
                          fn(a.data(), la, b.data(), lb, dst.data(), dstLen, lowLag, alg | norm, buf.data()));
                EXPECT_TRUE(buf.intact());
                CheckCorr(false, la, lb, dstLen, lowLag, alg, norm, dst, a, b);
            }
}

TEST_P(KernelsConv, CorrelationsEveryNormalisation)
{
    CheckAuto<Ipp32f>(ippsAutoCorrNorm_32f, ipp32f);
    CheckAuto<Ipp64f>(ippsAutoCorrNorm_64f, ipp64f);
    CheckAuto<C>(ippsAutoCorrNorm_64fc, ipp64fc);
    CheckCross<Ipp32f>(ippsCrossCorrNorm_32f, ipp32f);
    CheckCross<Ipp64f>(ippsCrossCorrNorm_64f, ipp64f);
    CheckCross<C>(ippsCrossCorrNorm_64fc, ipp64fc);
}

TEST(KernelsConvBiased, ElementsFromTheBiasOnZeroPastTheEnd)
{
    const Ipp32f a[] = {1.5f, -2, 3.5f, 2, 0}, b[] = {0, 0.25f, 2.5f, -1};
    const double full[] = {0, 0.375, 3.25, -5.625, 11.25, 1.5, -2, 0, 0};  // la + lb - 1 = 8, then 0
    for (int bias : {0, 1, 6}) {
        Ipp32f dst[10];
        ASSERT_EQ(ippStsNoErr, ippsConvBiased_32f(a, 5, b, 4, dst, 10, bias));
        for (int k = 0; k < 10; ++k)
            EXPECT_FLOAT_EQ(dst[k], bias + k < 9 ? float(full[bias + k]) : 0.0f) << bias << " " << k;
    }
}

TEST(KernelsConvStatus, ChecksInDocumentedOrder)
{
    const Ipp64f x[4] = {1, 2, 3, 4};
    Ipp64f y[8];
    Ipp8u buf[4096];
    int size;
    struct {
        IppStatus got, want;
    } rows[] = {
        {ippsConvolveGetBufferSize(4, 4, ipp64f, ippAlgAuto, nullptr), ippStsNullPtrErr},
        {ippsConvolveGetBufferSize(0, 4, ipp64f, ippAlgAuto, &size), ippStsSizeErr},
        {ippsConvolveGetBufferSize(4, 4, ipp64f, 3, &size), ippStsAlgTypeErr},
        {ippsConvolveGetBufferSize(4, 4, ipp64fc, ippAlgAuto, &size), ippStsDataTypeErr},
        {ippsConvolve_64f(x, 4, nullptr, 4, y, ippAlgAuto, buf), ippStsNullPtrErr},
        {ippsConvolve_64f(x, 4, x, 4, y, ippAlgAuto, nullptr), ippStsNullPtrErr},
        {ippsConvolve_64f(x, 4, x, -1, y, ippAlgAuto, buf), ippStsSizeErr},
        {ippsConvolve_64f(x, 4, x, 4, y, 7, buf), ippStsAlgTypeErr},
        {ippsConvBiased_32f(nullptr, 1, nullptr, 1, nullptr, 1, 0), ippStsNullPtrErr},
        {ippsAutoCorrNormGetBufferSize(4, 0, ipp64f, ippAlgAuto, &size), ippStsSizeErr},
        {ippsAutoCorrNormGetBufferSize(4, 4, ipp64f, 0x300, &size), ippStsAlgTypeErr},
        {ippsAutoCorrNormGetBufferSize(4, 4, ipp16s, ippAlgAuto, &size), ippStsDataTypeErr},
        {ippsAutoCorrNorm_64f(x, 4, y, 0, ippAlgAuto, buf), ippStsSizeErr},
        {ippsCrossCorrNormGetBufferSize(4, 4, 4, -3, ipp64f, int(ippAlgFFT) | int(ippsNormU), nullptr), ippStsNullPtrErr},
        {ippsCrossCorrNorm_64f(x, 4, x, 4, y, 4, 0, 0x400, buf), ippStsAlgTypeErr},
    };
    for (size_t i = 0; i < sizeof rows / sizeof rows[0]; ++i) EXPECT_EQ(rows[i].want, rows[i].got) << "row " << i;
}

}  // namespace
