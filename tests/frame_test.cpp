// The call frame: initialisation, error reporting and the informational exports.
#include <gtest/gtest.h>

#include "support.h"

using namespace orbtest;

namespace {

TEST(Frame, IppErrorRaisesForAnyStatusAndInitSucceeds)
{
    Host h;
    // Zero and warnings are raised too; each status with its own text.
    for (IppStatus s : {ippStsSizeErr, ippStsNoErr, ippStsDivByZero, -123456}) {
        CallResult r = h.protect([&]() -> Value { orbIppError(h.callbacks(), s); return 1; });
        EXPECT_TRUE(r.raised);
        EXPECT_EQ(r.error, ippError(s));
        EXPECT_EQ(r.result, 0u);  // nothing after the raise ran
    }
    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.protect([&]() -> Value { orbIppError(h.callbacks(), ippStsSizeErr); return 7; });
    EXPECT_EQ(r.result, 7u);
    EXPECT_EQ(r.errors.size(), 1u);
    for (int i = 0; i < 2; ++i)
        EXPECT_GE(orbInit(h.callbacks()), 0);
}

TEST(Frame, InformationalExportsIgnoreTheirArguments)
{
    Host h;
    const IppLibraryVersion *v = ippsGetLibVersion();
    for (size_t n : {0, 1, 3}) {
        std::vector<Value> args(n, h.name("ignored"));
        CallResult r = h.call(orbGetIPPVersion, args);
        ASSERT_FALSE(r.raised) << r.error;
        // Name, version and build date: three non-empty fields.
        std::string text = h.text(r.result);
        size_t a = text.find(", "), b = text.find(", ", a + 2);
        ASSERT_TRUE(a != std::string::npos && b != std::string::npos) << text;
        EXPECT_TRUE(a > 0 && b > a + 2 && b + 2 < text.size() && text.find(", ", b + 2) == std::string::npos) << text;
        EXPECT_EQ(text.find(std::to_string(v->major) + "." + std::to_string(v->minor) + ".", a), a + 2) << text;

        r = h.call(orbGetEnabledCPUFeatures, args);
        ASSERT_FALSE(r.raised) << r.error;
        EXPECT_EQ((Ipp64u)h.toInteger(r.result), ippGetEnabledCpuFeatures());
    }
    h.forceNumArgs(-1);
    h.setErrorMode(ErrorMode::Return);
    EXPECT_EQ(h.call(orbGetIPPVersion, {}).result, 0u);
}

}  // namespace
