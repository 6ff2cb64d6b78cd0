// Arithmetic, bitwise and shift kernels against the scalar operators in the
// documented operand order; division by zero, complex products and quotients
// against long double, shift counts at and past the element width.
#include "kernels_sweep.h"  // first: the kernels' target set

using C = Ipp64fc;
// Componentwise: exact references for the complex sums and differences.
static C operator+(C a, C b) { return {a.re + b.re, a.im + b.im}; }
static C operator-(C a, C b) { return {a.re - b.re, a.im - b.im}; }

namespace {

using sweep::Same;

class KernelsArith : public hwy::TestWithParamTarget {};
HWY_TARGET_INSTANTIATE_TEST_SUITE_P(KernelsArith);

// |got - want| within k eps of scale, part by part (with an absolute floor);
// results past the double range must be infinite, NaN must be NaN.
bool Near(C got, long double wre, long double wim, long double scale, double k, long double floor)
{
    const auto part = [&](double g, long double w) {
        return isnan(w) || fabsl(w) > DBL_MAX ? Same(g, double(w)) : fabsl(g - w) <= k * DBL_EPSILON * scale + floor;
    };
    return part(got.re, wre) && part(got.im, wim);
}

// x y by the plain formula where no term overflows (infinite parts are not
// recovered by it).
bool Product(C x, C y, C got)
{
    const long double a = x.re, b = x.im, c = y.re, d = y.im;
    const long double terms = fabsl(a * c) + fabsl(b * d) + fabsl(a * d) + fabsl(b * c);
    return !isfinite(terms) || terms > DBL_MAX || Near(got, a * c - b * d, a * d + b * c, terms, 2, 4 * DBL_TRUE_MIN);
}

// x / y within a few eps of the quotient's size, whatever the size of the
// parts, but for what a subnormal intermediate loses; NaN + NaN i for a zero
// y of any signs, whatever x.
bool Quotient(C y, C x, C got)
{
    if (y.re == 0 && y.im == 0) return isnan(got.re) && isnan(got.im);
    const long double a = x.re, b = x.im, c = y.re, d = y.im, m = c * c + d * d;
    const long double re = (a * c + b * d) / m, im = (b * c - a * d) / m;
    const long double floor = 2 * DBL_TRUE_MIN / fmaxl(fabsl(c), fabsl(d)) + 4 * DBL_TRUE_MIN;
    return isinf(a) || isinf(b) || isinf(c) || isinf(d) || Near(got, re, im, sqrtl(re * re + im * im), 4, floor);
}

// x c and x / c by the two-vector forms, whose roundings the constant forms share.
C Mul1(C x, C c) { return ippsMul_64fc(&x, &c, &x, 1), x; }
C Div1(C x, C c) { return ippsDiv_64fc(&c, &x, &x, 1), x; }

// Shifts one bit at a time, so that counts past the width shift every bit
// out; right shifts of signed T bring in the sign bit, of unsigned T zeros.
template <typename T>
T Shifted(T x, int bits, bool left)
{
    for (int k = 0; k < bits && k <= 64; ++k) x = left ? T(std::make_unsigned_t<T>(x) << 1) : T(x >> 1);
    return x;
}

TEST_P(KernelsArith, ElementWiseOperatorsInTheDocumentedOperandOrder)
{
    // pSrc1 is the right-hand operand of Sub and Div. The first input holds
    // +0 and -0 first, so that a divisor there warns at every length.
    const sweep::Opt warns{.status = ippStsDivByZero};
    const auto zeros_first = [](auto t, int k) {
        std::vector<decltype(t)> v = sweep::Random<decltype(t)>(200, k + 1);
        return k ? v : (v[0] = 0, v[1] = -0.0, v);
    };
    const sweep::ByType c(-2.75f, -2.75, C{1.5, -0.25});
    ORB_ROWS(ippsAddC_32f, ippsAddC_64f, ippsAddC_64fc).With(c).Check([](auto x, auto c) { return x + c; });
    ORB_ROWS(ippsSubC_32f, ippsSubC_64f, ippsSubC_64fc).With(c).Check([](auto x, auto c) { return x - c; });
    ORB_ROWS(ippsSubCRev_32f, ippsSubCRev_64f, ippsSubCRev_64fc).With(c).Check([](auto x, auto c) { return c - x; });
    ORB_ROWS(ippsMulC_32f, ippsMulC_64f).With(c).Check([](auto x, auto c) { return x * c; });
    ORB_ROWS(ippsDivC_32f, ippsDivC_64f).With(c).Check([](auto x, auto c) { return x / c; });
    ORB_ROWS(ippsMulC_64fc).With(c).Check(Mul1);
    ORB_ROWS(ippsDivC_64fc).With(c).Check(Div1);
    ORB_ROWS(ippsDivCRev_32f).With(3.5f).From(zeros_first).Check([](float x, float c) { return c / x; }, warns);
    ORB_ROWS(ippsAdd_32f, ippsAdd_64f, ippsAdd_64fc).Check([](auto x, auto y) { return x + y; });
    ORB_ROWS(ippsSub_32f, ippsSub_64f, ippsSub_64fc).Check([](auto x, auto y) { return y - x; });
    ORB_ROWS(ippsMul_32f, ippsMul_64f).Check([](auto x, auto y) { return x * y; });
    ORB_ROWS(ippsDiv_32f, ippsDiv_64f).From(zeros_first).Check([](auto x, auto y) { return y / x; }, warns);
    ORB_ROWS(ippsMul_64fc).Check(Product);
    ORB_ROWS(ippsDiv_64fc).Check(Quotient);
    // AddProduct may or may not fuse its multiply-add.
    ORB_ROWS(ippsAddProduct_32f, ippsAddProduct_64f).Accumulate().Check([](auto x, auto y, auto acc, auto got) {
        return Same(got, std::fma(x, y, acc)) || Same(got, decltype(x)(x * y) + acc);
    });
    ORB_ROWS(ippsAddProduct_64fc).Accumulate().Check([](C x, C y, C acc, C got) {
        const long double re = (long double)acc.re + (long double)x.re * y.re - (long double)x.im * y.im;
        const long double im = (long double)acc.im + (long double)x.re * y.im + (long double)x.im * y.re;
        return Near(got, re, im, fmaxl(fabsl(re), 0) + fmaxl(fabsl(im), 0) + 1e4, 4, 0);  // a NaN part adds nothing
    });
    const unsigned mask = 0x5A3C96E1u;  // cut to each width
    ORB_ROWS(ippsAndC_8u, ippsAndC_16u, ippsAndC_32u).With(mask).Check([](auto x, auto y) { return x & y; });
    ORB_ROWS(ippsOrC_8u, ippsOrC_16u, ippsOrC_32u).With(mask).Check([](auto x, auto y) { return x | y; });
    ORB_ROWS(ippsXorC_8u, ippsXorC_16u, ippsXorC_32u).With(mask).Check([](auto x, auto y) { return x ^ y; });
    ORB_ROWS(ippsAnd_8u, ippsAnd_16u, ippsAnd_32u).Check([](auto x, auto y) { return x & y; });
    ORB_ROWS(ippsOr_8u, ippsOr_16u, ippsOr_32u).Check([](auto x, auto y) { return x | y; });
    ORB_ROWS(ippsXor_8u, ippsXor_16u, ippsXor_32u).Check([](auto x, auto y) { return x ^ y; });
    ORB_ROWS(ippsNot_8u, ippsNot_16u, ippsNot_32u).Check([](auto x) { return ~x; });
    const auto left = [](auto x, int bits) { return Shifted(x, bits, true); };
    const auto right = [](auto x, int bits) { return Shifted(x, bits, false); };
    for (int bits : {0, 1, 5, 7, 8, 9, 15, 16, 17, 31, 32, 33, 1000}) {  // around every width
        SCOPED_TRACE(::testing::Message() << "shift by " << bits);
        ORB_ROWS(ippsLShiftC_8u, ippsLShiftC_16s, ippsLShiftC_32s).With(bits).Check(left);
        ORB_ROWS(ippsRShiftC_8u, ippsRShiftC_16s, ippsRShiftC_32s).With(bits).Check(right);
    }
    ORB_ROWS(ippsLShiftC_8u, ippsLShiftC_16s, ippsLShiftC_32s, ippsRShiftC_8u, ippsRShiftC_16s, ippsRShiftC_32s)
        .With(-1).Refused(ippStsShiftErr);
}

TEST_P(KernelsArith, DivisionByZeroAndComplexProductsAndQuotientsOfSpecialValues)
{
    // Every pair of parts from huge, tiny, zero, infinite and NaN values (huge
    // a little below the top: Smith's method overflows within a factor of two
    // of it), then random values; every pair of those, zero divisors first so
    // that Div warns at every length.
    const double v[] = {0, -0.0, 1, -3.5, 1e300, -1e-300, 1e-310, 2e-308, INFINITY, NAN};
    std::vector<C> c;
    for (double re : v)
        for (double im : v) c.push_back({re, im});
    for (C z : sweep::Random<C>(64, 5)) c.push_back(z);
    const size_t n = c.size();
    std::vector<C> x(n * n), y(n * n);
    for (size_t i = 0; i < n * n; ++i) x[i] = c[i % n], y[i] = c[(i / n + i) % n];
    ORB_ROWS(ippsMul_64fc).From(x, y).Check(Product);
    ORB_ROWS(ippsDiv_64fc).From(x, y).Check(Quotient, {.status = ippStsDivByZero});
    // With each as the constant, the roundings of the two-vector forms.
    for (C k : c) {
        ORB_ROWS(ippsMulC_64fc).With(k).From(c).Check(Mul1, {.once = true});
        if (k.re != 0 || k.im != 0) ORB_ROWS(ippsDivC_64fc).With(k).From(c).Check(Div1, {.once = true});
    }
    // Real divisors: a warning only when one is zero.
    const double num[3] = {1, -1, NAN}, den[3] = {2, -0.0, 4};
    double q[3];
    EXPECT_EQ(ippsDiv_64f(den, num, q, 1), ippStsNoErr);
    EXPECT_EQ(ippsDiv_64f(den, num, q, 3), ippStsDivByZero);
    // A zero constant, of either sign in either part, is an error.
    for (double zero : {0.0, -0.0}) ORB_ROWS(ippsDivC_32f, ippsDivC_64f).With(zero).Refused(ippStsDivByZeroErr);
    for (C zero : {C{0, 0}, C{-0.0, 0}, C{0, -0.0}, C{-0.0, -0.0}})
        ORB_ROWS(ippsDivC_64fc).With(zero).Refused(ippStsDivByZeroErr);
    ORB_ROWS(ippsDivC_64fc).With(C{0, 1e-300}).Check(Div1);
}

}  // namespace
