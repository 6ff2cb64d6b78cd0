// Complex-form exports: the forms each accepts, what each returns, and the
// storage converters.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

using namespace orbtest;

namespace {

TEST(ComplexOps, ConjugatesAndParts)
{
    Host h;
    Value z = complex8(h, {{1, 2}, {-3, -4}});
    Value out = h.rtable1(DT_COMPLEX8, 2), re = h.rtable1(DT_FLOAT8, 2);
    written<Ipp64fc>(h, orbConjugate, {out, z});
    EXPECT_EQ(complexes(h, out), (Z{{1, -2}, {-3, 4}}));
    written<Ipp64fc>(h, orbConjugateFlip, {out, z});  // and in reverse order
    EXPECT_EQ(complexes(h, out), (Z{{-3, 4}, {1, -2}}));
    EXPECT_EQ(written<double>(h, orbReal, {re, z}), (D{1, -3}));
    EXPECT_EQ(written<double>(h, orbImag, {re, z}), (D{2, -4}));

}

TEST(ComplexOps, MagnitudePhaseAndPowerInEveryForm)
{
    Host h;
    Value m8 = h.rtable1(DT_FLOAT8, 2), m4 = h.rtable1(DT_FLOAT4, 2);
    EXPECT_EQ(written<double>(h, orbMagnitude, {m8, complex8(h, {{3, 4}, {0, -2}})}), (D{5, 2}));
    EXPECT_EQ(written<double>(h, orbPowerSpectrum, {m8, float8(h, {3, 0}), float8(h, {4, -2})}), (D{25, 4}));
    EXPECT_FLOAT_EQ(written<float>(h, orbPhase, {m4, float4(h, {3, 0}), float4(h, {4, -2})})[0],
                    std::atan2(4.0f, 3.0f));  // atan2(im, re)

    Value re8 = float8(h, {1, 2});
    EXPECT_EQ(h.call(orbMagnitude, {m4, re8, re8}).error, wrongType(h, "float[4]", re8));
    EXPECT_EQ(h.call(orbPhase, {m8, float8(h, {1}), re8}).error, "rtables must have the same number of elements");
    Value e8 = h.rtable1(DT_FLOAT8, 0), ez = h.rtable1(DT_COMPLEX8, 0);
    EXPECT_EQ(h.call(orbMagnitude, {e8, ez}).error, ippError(ippStsSizeErr));
}

TEST(ComplexOps, PackingAndPolarFormsReturnWhatTheyWrite)
{
    Host h;
    Value z = h.rtable1(DT_COMPLEX8, 2), re = h.rtable1(DT_FLOAT8, 2), im = h.rtable1(DT_FLOAT8, 2);
    EXPECT_EQ(written<Ipp64fc>(h, orbRealToComplex, {z, float8(h, {1, 2}), float8(h, {3, 4})}).size(), 2u);
    CallResult r = h.call(orbComplexToReal, {re, im, z});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(h.elements(r.result), (std::vector<Value>{re, im}));
    EXPECT_EQ(contents<double>(h, re), (D{1, 2}));
    EXPECT_EQ(contents<double>(h, im), (D{3, 4}));

    // Magnitude first, phase second, from either form.
    Value mag = h.rtable1(DT_FLOAT8, 2), ph = h.rtable1(DT_FLOAT8, 2);
    r = h.call(orbCartesianToPolar, {mag, ph, complex8(h, {{0, 2}, {-1, 0}})});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(h.elements(r.result), (std::vector<Value>{mag, ph}));
    EXPECT_EQ(contents<double>(h, mag), (D{2, 1}));
    EXPECT_DOUBLE_EQ(contents<double>(h, ph)[1], M_PI);
    ASSERT_FALSE(h.call(orbCartesianToPolar, {mag, ph, float8(h, {3, 0}), float8(h, {4, 1})}).raised);
    EXPECT_EQ(contents<double>(h, mag), (D{5, 1}));

    // Three arguments give the complex rtable alone; four give both parts.
    std::vector<Ipp64fc> c = written<Ipp64fc>(h, orbPolarToCartesian, {z, float8(h, {2, 1}), float8(h, {0, M_PI})});
    EXPECT_EQ(c[0].re, 2);
    EXPECT_DOUBLE_EQ(c[1].re, -1);
    r = h.call(orbPolarToCartesian, {re, im, float8(h, {2, 2}), float8(h, {M_PI_2, 0})});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(h.elements(r.result), (std::vector<Value>{re, im}));
    EXPECT_NEAR(contents<double>(h, re)[0], 0, 1e-15);
    EXPECT_EQ(contents<double>(h, im)[0], 2);

    std::string before = bytes(h, re);
    EXPECT_EQ(h.call(orbComplexToReal, {re, h.rtable1(DT_FLOAT8, 3), z}).error,
              "rtables must have the same number of elements");
    EXPECT_EQ(bytes(h, re), before);
}

TEST(ComplexOps, StorageConvertersRoundAndWiden)
{
    Ipp64fc wide[2] = {{0.1, -1e40}, {3.5, 1e-50}};
    Ipp32fc narrow[2] = {};
    EXPECT_EQ(Complex8ToComplex4(narrow, wide, 2), narrow);
    EXPECT_TRUE(narrow[0].re == 0.1f && narrow[0].im == -HUGE_VALF && narrow[1].re == 3.5f);
    Ipp64fc back[2] = {};
    EXPECT_EQ(Complex4ToComplex8(back, narrow, 2), back);
    EXPECT_TRUE(back[0].re == (double)0.1f && back[1].re == 3.5);
    // Null pointers and non-positive counts do nothing.
    EXPECT_EQ(Complex4ToComplex8(back, nullptr, 2), back);
    EXPECT_EQ(Complex8ToComplex4(nullptr, wide, 2), nullptr);
    back[0].re = 9;
    Complex4ToComplex8(back, narrow, 0);
    EXPECT_EQ(back[0].re, 9);
}

}  // namespace
