// Arithmetic kernels on every compiled Highway target: element-wise results
// against scalar arithmetic in the documented operand order, division by
// zero, complex products and quotients against long double, statuses.
#include "dispatch.h"  // first: the kernels' target set

#include <hwy/tests/hwy_gtest.h>

#include <float.h>
#include <math.h>

#include <cmath>
#include <functional>
#include <vector>

#include "ipps.h"
#include "kernels_sweep.h"

namespace {

using sweep::Is;
using sweep::Same;
using sweep::SameAs;
using sweep::Str;

class KernelsArith : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsArith);

template <typename T>
using ConstFn = IppStatus (*)(const T *, T, T *, int);
template <typename T>
using TwoFn = IppStatus (*)(const T *, const T *, T *, int);

// Real forms against the scalar operators; pSrc1 is the right-hand operand
// of Sub and Div. The divisors hold zeros, a[0] among them, so Div warns at
// every length. AddProduct may or may not fuse its multiply-add.
template <typename T>
void CheckReal(const ConstFn<T> (&consts)[5], const TwoFn<T> (&twos)[5])
{
    constexpr int n = sweep::MaxLen<T>();
    std::vector<T> a = sweep::Random<T>(sweep::Span(n), 1), b = sweep::Random<T>(sweep::Span(n), 2);
    const std::vector<T> acc = sweep::Random<T>(sweep::Span(n), 3);
    a[0] = 0;
    const T v = T(-2.75);
    T (*const const_refs[])(T, T) = {[](T x, T c) { return T(x + c); }, [](T x, T c) { return T(x - c); },
                                     [](T x, T c) { return T(c - x); }, [](T x, T c) { return T(x * c); },
                                     [](T x, T c) { return T(x / c); }};
    for (int f = 0; f < 5; ++f)
        sweep::Run<T>(n, ippStsNoErr, [&](int len, T *o, T *) { return consts[f](a.data(), v, o, len); },
                      [&](size_t i, T got, T) { return SameAs(got, const_refs[f](a[i], v)); });
    T (*const two_refs[])(T, T) = {[](T x, T y) { return T(x + y); }, [](T x, T y) { return T(y - x); },
                                   [](T x, T y) { return T(x * y); }, [](T x, T y) { return T(y / x); }};
    for (int f = 0; f < 4; ++f)
        sweep::Run<T>(n, f == 3 ? ippStsDivByZero : ippStsNoErr,
                      [&](int len, T *o, T *) { return twos[f](a.data(), b.data(), o, len); },
                      [&](size_t i, T got, T) { return SameAs(got, two_refs[f](a[i], b[i])); });
    sweep::Run<T>(
        n, ippStsNoErr,
        [&](int len, T *o, T *) {
            memcpy(o, acc.data(), len * sizeof(T));
            return twos[4](a.data(), b.data(), o, len);
        },
        [&](size_t i, T got, T) {
            const T fused = std::fma(a[i], b[i], acc[i]);
            return Is(Same(got, fused) || Same(got, T(T(a[i] * b[i]) + acc[i])), got, fused);
        });
}

TEST_P(KernelsArith, RealFormsMatchScalarArithmetic)
{
    CheckReal<float>({ippsAddC_32f, ippsSubC_32f, ippsSubCRev_32f, ippsMulC_32f, ippsDivC_32f},
                     {ippsAdd_32f, ippsSub_32f, ippsMul_32f, ippsDiv_32f, ippsAddProduct_32f});
    CheckReal<double>({ippsAddC_64f, ippsSubC_64f, ippsSubCRev_64f, ippsMulC_64f, ippsDivC_64f},
                      {ippsAdd_64f, ippsSub_64f, ippsMul_64f, ippsDiv_64f, ippsAddProduct_64f});
    constexpr int n = sweep::MaxLen<float>();
    std::vector<float> x = sweep::Random<float>(sweep::Span(n), 4);
    x[0] = -0.0f;
    sweep::Run<float>(
        n, ippStsDivByZero, [&](int len, float *o, float *) { return ippsDivCRev_32f(x.data(), 3.5f, o, len); },
        [&](size_t i, float got, float) { return SameAs(got, 3.5f / x[i]); });
}

TEST_P(KernelsArith, DivisionByZero)
{
    // Real divisors: a warning only when one is zero (the quotients are
    // checked at every length above).
    const double num[3] = {1, -1, NAN}, den[3] = {2, -0.0, 4};
    double q[3];
    EXPECT_EQ(ippsDiv_64f(den, num, q, 1), ippStsNoErr);
    EXPECT_EQ(ippsDiv_64f(den, num, q, 3), ippStsDivByZero);
    q[1] = 7;

    // A zero constant, of either sign in either part, is an error and
    // nothing is written.
    const Ipp64fc y[2] = {{1, -2}, {5, 5}};
    Ipp64fc z[2] = {{7, 7}, {7, 7}};
    float f = 1;
    EXPECT_EQ(ippsDivC_64f(num, -0.0, q, 3), ippStsDivByZeroErr);
    EXPECT_EQ(ippsDivC_32f(&f, 0.0f, &f, 1), ippStsDivByZeroErr);
    for (double re : {0.0, -0.0})
        for (double im : {0.0, -0.0}) EXPECT_EQ(ippsDivC_64fc(y, Ipp64fc{re, im}, z, 2), ippStsDivByZeroErr);
    EXPECT_TRUE(q[1] == 7 && f == 1 && z[1].re == 7 && z[1].im == 7);
    EXPECT_EQ(ippsDivC_64fc(y, Ipp64fc{0, 1e-300}, z, 2), ippStsNoErr);
}

// A complex zero divisor, whatever the signs of its zeros and whatever the
// dividend (zero, infinite and NaN ones too), gives NaN + NaN i and the
// warning; the other quotients are unaffected. At every length, so the
// zeros reach the partial vectors too.
TEST_P(KernelsArith, ComplexZeroDivisorGivesNaN)
{
    constexpr int n = sweep::MaxLen<double>();
    const Ipp64fc dividends[] = {{1, 2}, {0, 0}, {-3, -0.0}, {INFINITY, 1}, {NAN, 0}};
    std::vector<Ipp64fc> x, y;  // divisors, dividends
    while (x.size() < sweep::Span(n))
        for (double re : {0.0, -0.0})
            for (double im : {0.0, -0.0})
                for (Ipp64fc d : dividends) {
                    x.insert(x.end(), {{re, im}, {2, -0.0}});
                    y.insert(y.end(), {d, {1, 4}});
                }
    sweep::Run<Ipp64fc>(n, ippStsDivByZero,
                        [&](int len, Ipp64fc *o, Ipp64fc *) { return ippsDiv_64fc(x.data(), y.data(), o, len); },
                        [&](size_t i, Ipp64fc got, Ipp64fc) {
                            const bool zero = x[i].re == 0 && x[i].im == 0;
                            return Is(zero ? isnan(got.re) && isnan(got.im) : Same(got, Ipp64fc{0.5, 2}), got,
                                      zero ? Ipp64fc{NAN, NAN} : Ipp64fc{0.5, 2});
                        });
}

// |got - want| within k eps of scale, part by part (with an absolute floor);
// results past the double range must be infinite, NaN must be NaN.
bool Near(Ipp64fc got, long double wre, long double wim, long double scale, double k, long double floor)
{
    auto part = [&](double g, long double w) {
        if (isnan(w)) return bool(isnan(g));
        if (fabsl(w) > DBL_MAX) return g == double(w);
        return fabsl(g - w) <= k * DBL_EPSILON * scale + floor;
    };
    return part(got.re, wre) && part(got.im, wim);
}

TEST_P(KernelsArith, ComplexProductsAndQuotientsAgainstLongDouble)
{
    // Every pair of parts from huge, tiny, zero, infinite and NaN values (huge
    // a little below the top: Smith's method overflows within a factor of two
    // of it), then random values.
    const double v[] = {0, -0.0, 1, -3.5, 1e300, -1e-300, 1e-310, 2e-308, INFINITY, NAN};
    std::vector<Ipp64fc> c = sweep::RandomComplex(64, 5);
    for (double re : v)
        for (double im : v) c.push_back({re, im});
    const int n = int(c.size());
    std::vector<Ipp64fc> x(n * n), y(n * n), p(n * n), q(n * n), k(n);
    for (int i = 0; i < n * n; ++i) x[i] = c[i / n], y[i] = c[i % n];
    ippsMul_64fc(x.data(), y.data(), p.data(), n * n);
    ippsDiv_64fc(y.data(), x.data(), q.data(), n * n);  // x / y
    for (int i = 0; i < n * n; ++i) {
        const long double a = x[i].re, b = x[i].im, cr = y[i].re, d = y[i].im;
        if (isinf(a) || isinf(b) || isinf(cr) || isinf(d)) continue;  // not recovered by the plain formulas
        const auto where = ::testing::Message() << Str(x[i]) << " and " << Str(y[i]);
        // Products: plain formula, so only where no term overflows.
        const long double terms = fabsl(a * cr) + fabsl(b * d) + fabsl(a * d) + fabsl(b * cr);
        if (terms <= DBL_MAX) {
            ASSERT_TRUE(Near(p[i], a * cr - b * d, a * d + b * cr, terms, 2, 4 * DBL_TRUE_MIN)) << where;
        }
        // Quotients: a few eps of the quotient's size, whatever the size of
        // the parts, but for what a subnormal intermediate loses.
        const long double m = cr * cr + d * d, re = (a * cr + b * d) / m, im = (b * cr - a * d) / m;
        const long double floor = 2 * DBL_TRUE_MIN / fmaxl(fabsl(cr), fabsl(d)) + 4 * DBL_TRUE_MIN;
        if (m != 0) {
            ASSERT_TRUE(Near(q[i], re, im, sqrtl(re * re + im * im), 4, floor)) << where << ": " << Str(q[i]);
        }
    }
    // With a constant, the same roundings as the two-vector forms.
    for (int j = 0; j < n; ++j) {
        ippsMulC_64fc(c.data(), c[j], k.data(), n);
        for (int i = 0; i < n; ++i) ASSERT_TRUE(SameAs(k[i], p[i * n + j])) << "MulC by " << Str(c[j]);
        if (ippsDivC_64fc(c.data(), c[j], k.data(), n) == ippStsDivByZeroErr) continue;
        for (int i = 0; i < n; ++i) ASSERT_TRUE(SameAs(k[i], q[i * n + j])) << "DivC by " << Str(c[j]);
    }
}

// Every length, cached and streamed: sums and differences against the
// parts, products, quotients and accumulations against one call over the
// whole array (and that against long double), the quotient in place too.
TEST_P(KernelsArith, ComplexFormsOverAllLengths)
{
    using C = Ipp64fc;
    constexpr int n = sweep::MaxLen<double>();  // split into vectors of doubles
    const int span = int(sweep::Span(n));
    const std::vector<C> a = sweep::RandomComplex(span, 6), b = sweep::RandomComplex(span, 7),
                         acc = sweep::RandomComplex(span, 8);
    const C v = {1.5, -0.25};
    std::vector<C> p(span), q(span), s = acc, in_place = b;
    ippsMul_64fc(a.data(), b.data(), p.data(), span);
    ippsDiv_64fc(a.data(), b.data(), q.data(), span);
    ippsDiv_64fc(a.data(), in_place.data(), in_place.data(), span);
    ippsAddProduct_64fc(a.data(), b.data(), s.data(), span);
    const struct {
        std::function<IppStatus(int, C *)> call;
        std::function<C(size_t)> want;
    } cases[] = {
        {[&](int k, C *o) { return ippsAddC_64fc(a.data(), v, o, k); },
         [&](size_t i) { return C{a[i].re + v.re, a[i].im + v.im}; }},
        {[&](int k, C *o) { return ippsSubC_64fc(a.data(), v, o, k); },
         [&](size_t i) { return C{a[i].re - v.re, a[i].im - v.im}; }},
        {[&](int k, C *o) { return ippsSubCRev_64fc(a.data(), v, o, k); },
         [&](size_t i) { return C{v.re - a[i].re, v.im - a[i].im}; }},
        {[&](int k, C *o) { return ippsAdd_64fc(a.data(), b.data(), o, k); },
         [&](size_t i) { return C{a[i].re + b[i].re, a[i].im + b[i].im}; }},
        {[&](int k, C *o) { return ippsSub_64fc(a.data(), b.data(), o, k); },
         [&](size_t i) { return C{b[i].re - a[i].re, b[i].im - a[i].im}; }},
        {[&](int k, C *o) { return ippsMul_64fc(a.data(), b.data(), o, k); }, [&](size_t i) { return p[i]; }},
        {[&](int k, C *o) { return ippsDiv_64fc(a.data(), b.data(), o, k); }, [&](size_t i) { return q[i]; }},
        {[&](int k, C *o) {
             memcpy(o, acc.data(), k * sizeof(C));
             return ippsAddProduct_64fc(a.data(), b.data(), o, k);
         },
         [&](size_t i) { return s[i]; }},
    };
    for (const auto &t : cases)
        sweep::Run<C>(n, ippStsNoErr, [&](int k, C *o, C *) { return t.call(k, o); },
                      [&](size_t i, C z, C) { return SameAs(z, t.want(i)); });
    for (int i = 0; i < span; ++i) {
        ASSERT_TRUE(SameAs(in_place[i], q[i])) << "in place at " << i;
        const long double re = (long double)acc[i].re + (long double)a[i].re * b[i].re - (long double)a[i].im * b[i].im;
        const long double im = (long double)acc[i].im + (long double)a[i].re * b[i].im + (long double)a[i].im * b[i].re;
        ASSERT_TRUE(Near(s[i], re, im, fabsl(re) + fabsl(im) + 1e4, 4, 0)) << "AddProduct at " << i;
    }
}

TEST(KernelsArithStatus, NullPointersThenLengths)
{
    ORB_EXPECT_STATUSES(ippsAddC_32f, ippsAddC_64f, ippsAddC_64fc, ippsSubC_32f, ippsSubC_64f, ippsSubC_64fc,
                        ippsSubCRev_32f, ippsSubCRev_64f, ippsSubCRev_64fc, ippsMulC_32f, ippsMulC_64f, ippsMulC_64fc,
                        ippsDivC_32f, ippsDivC_64f, ippsDivC_64fc, ippsDivCRev_32f, ippsAdd_32f, ippsAdd_64f,
                        ippsAdd_64fc, ippsSub_32f, ippsSub_64f, ippsSub_64fc, ippsMul_32f, ippsMul_64f, ippsMul_64fc,
                        ippsDiv_32f, ippsDiv_64f, ippsDiv_64fc, ippsAddProduct_32f, ippsAddProduct_64f,
                        ippsAddProduct_64fc);
    // The zero constant is looked at after the pointers and the length.
    double d[1] = {1};
    EXPECT_EQ(ippsDivC_64f(nullptr, 0, d, 1), ippStsNullPtrErr);
    EXPECT_EQ(ippsDivC_64f(d, 0, d, 0), ippStsSizeErr);
}

}  // namespace
