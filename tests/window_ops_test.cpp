// Window exports: each reaches its backend window in every datatype, with
// alpha in the precision each passes, and reports its faults in order.
// (Arity and datatype messages: the sweep.)
#include <gtest/gtest.h>

#include "support.h"

using namespace orbtest;

namespace {

typedef IppStatus (*Win64)(const Ipp64f *, Ipp64f *, int);

TEST(WindowOps, EachExportAppliesItsWindow)
{
    Host h;
    const D x = {3, -1, 4, 1, -5, 9, 2};
    const struct {
        ExportFn fn;
        Win64 win;
    } plain[] = {{orbBartlett, ippsWinBartlett_64f},       {orbHamming, ippsWinHamming_64f},
                 {orbHann, ippsWinHann_64f},               {orbBlackmanStd, ippsWinBlackmanStd_64f},
                 {orbBlackmanOpt, ippsWinBlackmanOpt_64f}};
    for (const auto &p : plain) {
        D want(x.size());
        ASSERT_EQ(p.win(x.data(), want.data(), 7), ippStsNoErr);
        EXPECT_EQ(written<double>(h, p.fn, {h.rtable1(DT_FLOAT8, 7), float8(h, x)}), want);
    }
    // Single precision and integers go to their own forms (complex data: the
    // backend tests).
    std::vector<float> xf(x.begin(), x.end()), wf(7);
    ASSERT_EQ(ippsWinHann_32f(xf.data(), wf.data(), 7), ippStsNoErr);
    EXPECT_EQ(written<float>(h, orbHann, {h.rtable1(DT_FLOAT4, 7), float4(h, xf)}), wf);
    const std::vector<Ipp16s> xs = {1000, 1000, 1000, 1000, 1000};
    EXPECT_EQ(written<Ipp16s>(h, orbHann, {h.rtable1(DT_INT2, 5), table(h, DT_INT2, xs)}),
              (std::vector<Ipp16s>{0, 500, 1000, 500, 0}));
}

TEST(WindowOps, AlphaPrecisionPerExportAndDatatype)
{
    Host h;
    const D x = {1, 1, 1, 1, 1};
    D kaiser(5), blackman(5);
    // Kaiser: the double alpha is rounded to single precision first.
    ASSERT_EQ(ippsWinKaiser_64f(x.data(), kaiser.data(), 5, double(0.7f)), ippStsNoErr);
    EXPECT_EQ(written<double>(h, orbKaiser, {h.rtable1(DT_FLOAT8, 5), float8(h, x), h.float64(0.7)}), kaiser);
    // Blackman: the double alpha as it is.
    ASSERT_EQ(ippsWinBlackman_64f(x.data(), blackman.data(), 5, 0.7), ippStsNoErr);
    EXPECT_EQ(written<double>(h, orbBlackman, {h.rtable1(DT_FLOAT8, 5), float8(h, x), h.float64(0.7)}), blackman);
    ASSERT_EQ(ippsWinBlackman_64f(x.data(), kaiser.data(), 5, double(0.7f)), ippStsNoErr);
    EXPECT_NE(blackman, kaiser);
}

TEST(WindowOps, FaultsInOrder)
{
    Host h;
    Value out = h.rtable1(DT_FLOAT8, 4), in = h.rtable1(DT_FLOAT8, 4), f4 = h.rtable1(DT_FLOAT4, 4);
    Value longer = h.rtable1(DT_FLOAT8, 5);
    EXPECT_EQ(h.call(orbHamming, {out, f4}).error, wrongType(h, "float[8]", f4));
    // The counts are compared before alpha is read.
    EXPECT_EQ(h.call(orbKaiser, {out, longer, h.name("a")}).error, "rtables must have the same number of elements");
    EXPECT_EQ(h.call(orbKaiser, {out, in, h.name("a")}).error, "expecting a numeric value, but received a");
    // Lengths the backend refuses.
    Value two = h.rtable1(DT_FLOAT8, 2);
    EXPECT_EQ(h.call(orbHann, {two, two}).error, ippError(ippStsSizeErr));
    EXPECT_EQ(h.call(orbBlackmanOpt, {h.rtable1(DT_FLOAT8, 3), h.rtable1(DT_FLOAT8, 3)}).error, ippError(ippStsSizeErr));
    EXPECT_FALSE(h.call(orbKaiser, {h.rtable1(DT_FLOAT8, 1), h.rtable1(DT_FLOAT8, 1), h.float64(2)}).raised);
}

}  // namespace
