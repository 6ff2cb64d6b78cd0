// The call frame: initialisation, error reporting, the informational exports,
// and a raise that jumps out of library code.
#include <gtest/gtest.h>

#include "support.h"

using orbhost::CallResult;
using orbhost::ErrorMode;
using orbhost::Host;
using orbhost::Value;

namespace {

TEST(Frame, IppErrorRaisesTheBackendTextForAnyStatus)
{
    Host h;
    for (IppStatus s : {ippStsSizeErr, ippStsNullPtrErr, ippStsNoErr, ippStsDivByZero, -123456}) {
        CallResult r = h.protect([&]() -> Value { orbIppError(h.callbacks(), s); return 1; });
        EXPECT_TRUE(r.raised);
        EXPECT_EQ(r.error, std::string("IPP Error: ") + ippGetStatusString(s));
        EXPECT_EQ(r.result, 0u);  // nothing after the raise ran
    }
    // A returning raise comes back to the caller.
    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.protect([&]() -> Value { orbIppError(h.callbacks(), ippStsSizeErr); return 7; });
    EXPECT_EQ(r.result, 7u);
    EXPECT_EQ(r.errors.size(), 1u);
}

TEST(Frame, InitSucceedsEveryTime)
{
    Host h;
    for (int i = 0; i < 3; ++i)
        EXPECT_GE(orbInit(h.callbacks()), 0);
}

TEST(Frame, VersionJoinsTheThreeTexts)
{
    Host h;
    const IppLibraryVersion *v = ippsGetLibVersion();
    std::string want = std::string(v->Name) + ", " + v->Version + ", " + v->BuildDate;
    for (size_t n : {0, 1, 3}) {
        std::vector<Value> args(n, h.name("ignored"));
        CallResult r = h.call(orbGetIPPVersion, args);
        ASSERT_FALSE(r.raised) << r.error;
        EXPECT_EQ(h.text(r.result), want);
    }
}

TEST(Frame, FeaturesAreTheBackendMaskWhateverTheArguments)
{
    Host h;
    CallResult r = h.call(orbGetEnabledCPUFeatures, {h.string("x"), h.integer(2)});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ((Ipp64u)h.toInteger(r.result), ippGetEnabledCpuFeatures());
}

TEST(Frame, NegativeCountsAreImpossible)
{
    Host h;
    h.forceNumArgs(-1);
    EXPECT_EQ(h.call(orbGetIPPVersion, {}).error, "impossible number of arguments");
    EXPECT_EQ(h.call(orbGetEnabledCPUFeatures, {}).error, "impossible number of arguments");
    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.call(orbGetIPPVersion, {});
    EXPECT_EQ(r.result, 0u);
}

TEST(Frame, RaiseFromAPlainHelperJumpsBackToTheHost)
{
    Host h;
    int reached = 0;
    CallResult r = h.protect([&]() -> Value {
        GetInt(h.callbacks(), h.float64(0.5));
        reached = 1;
        return 1;
    });
    EXPECT_TRUE(r.raised);
    EXPECT_EQ(reached, 0);
    EXPECT_EQ(r.error, "expecting an integer, but received 0.5");
    // The host is usable after the jump, and a later call is unaffected.
    CallResult ok = h.protect([&]() -> Value { return (Value)GetInt(h.callbacks(), h.integer(9)); });
    EXPECT_FALSE(ok.raised);
    EXPECT_EQ(ok.result, 9u);
}

}  // namespace
