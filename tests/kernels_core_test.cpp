// The backend's core: status texts, start-up, processor features, version
// record and the allocators with their test hooks.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "hwy/targets.h"

#include "backend_hooks.h"
#include "cpu_features.h"
#include "ipp.h"

namespace {

struct StatusEntry {
    const char *name;
    IppStatus value;
};

#define ORB_TEST_STATUS_ENTRY(name, value, text) {#name, value},
const StatusEntry kStatuses[] = {IPP_STATUS_LIST(ORB_TEST_STATUS_ENTRY)};
#undef ORB_TEST_STATUS_ENTRY

bool EndsWith(const std::string &s, const std::string &tail)
{
    return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

bool Aligned64(const void *p) { return reinterpret_cast<uintptr_t>(p) % 64 == 0; }

// Restores the failure switch even when an assertion returns early.
struct DisarmOnExit {
    ~DisarmOnExit() { orbBackendFailNthAllocation(0); }
};

TEST(KernelsCoreStatus, EveryStatusHasItsOwnNamedText)
{
    std::set<std::string> texts;
    std::set<IppStatus> values;
    for (const StatusEntry &s : kStatuses) {
        const char *text = ippGetStatusString(s.value);
        ASSERT_NE(text, nullptr) << s.name;
        const std::string prefix = std::string(s.name) + ": ";
        const std::string t = text;
        EXPECT_EQ(t.compare(0, prefix.size(), prefix), 0) << t;
        EXPECT_GT(t.size(), prefix.size()) << s.name << " has no description";
        EXPECT_TRUE(texts.insert(t).second) << "duplicate text " << t;
        EXPECT_TRUE(values.insert(s.value).second) << "duplicate value " << s.value;
        // The same pointer each time: callers may keep it.
        EXPECT_EQ(ippGetStatusString(s.value), text);
    }
    EXPECT_GT(texts.size(), 250u);
}

TEST(KernelsCoreStatus, SignMatchesKind)
{
    // A name ending in Err is an error (negative), ippStsNoErr aside; a
    // warning (positive) never ends in Err.
    for (const StatusEntry &s : kStatuses) {
        const bool errName = EndsWith(s.name, "Err") && s.value != ippStsNoErr;
        if (errName) {
            EXPECT_LT(s.value, 0) << s.name;
        }
        if (s.value > 0) {
            EXPECT_FALSE(errName) << s.name;
        }
    }
}

TEST(KernelsCoreStatus, PublishedValuesAndTexts)
{
    EXPECT_EQ(ippStsNoErr, 0);
    EXPECT_EQ(ippStsErr, -2);
    EXPECT_EQ(ippStsSizeErr, -6);
    EXPECT_EQ(ippStsNullPtrErr, -8);
    EXPECT_EQ(ippStsMemAllocErr, -9);
    EXPECT_EQ(ippStsFftOrderErr, -15);
    EXPECT_EQ(ippStsContextMatchErr, -17);
    EXPECT_EQ(ippStsHugeWinErr, -39);
    EXPECT_EQ(ippStsRegExpErr, -189);
    EXPECT_EQ(ippStsSizeMatchMatrixErr, -204);
    EXPECT_EQ(ippStsBorderErr, -225);
    EXPECT_EQ(ippStsDivByZero, 6);
    EXPECT_EQ(ippStsOverflow, 12);

    EXPECT_STREQ(ippGetStatusString(ippStsNoErr), "ippStsNoErr: No errors.");
    EXPECT_STREQ(ippGetStatusString(ippStsSizeErr), "ippStsSizeErr: Incorrect value for data size.");
    EXPECT_STREQ(ippGetStatusString(ippStsNullPtrErr), "ippStsNullPtrErr: Null pointer error.");
    EXPECT_STREQ(ippGetStatusString(ippStsDivByZero),
                 "ippStsDivByZero: Zero value(s) for the divisor in the function Div.");
}

TEST(KernelsCoreStatus, UnknownCodesGetTheUnknownStatusText)
{
    const char *unknown = ippGetStatusString(ippStsUnknownStatusCodeErr);
    ASSERT_NE(unknown, nullptr);
    EXPECT_STREQ(unknown, "ippStsUnknownStatusCodeErr: Unknown status code.");
    for (IppStatus s : {-1, -3, -68, 53, 12345, -123456, INT_MIN, INT_MAX})
        EXPECT_STREQ(ippGetStatusString(s), unknown) << s;
}

TEST(KernelsCoreInit, RepeatedCallsAgreeAndSelectATarget)
{
    EXPECT_EQ(ippInit(), ippStsNoErr);
    EXPECT_TRUE(hwy::GetChosenTarget().IsInitialized());
    const Ipp64u features = ippGetEnabledCpuFeatures();
    // A sanity check that later calls are only a lookup, not a timing test.
    int failures = 0;
    for (int i = 0; i < 1000000; ++i)
        failures += ippInit() != ippStsNoErr;
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(ippGetEnabledCpuFeatures(), features);
}

// Processor words with every feature the decoder knows about.
orb::kernels::CpuidWords AllFeatures(uint64_t xcr0)
{
    orb::kernels::CpuidWords w;
    w.leaf1Ecx = 0xFFFFFFFFu;
    w.leaf1Edx = 0xFFFFFFFFu;
    w.leaf7Ebx = 0xFFFFFFFFu;
    w.leaf7Ecx = 0xFFFFFFFFu;
    w.leaf7Edx = 0xFFFFFFFFu;
    w.ext1Ecx = 0xFFFFFFFFu;
    w.xcr0 = xcr0;
    return w;
}

constexpr Ipp64u kYmmFeatures = ippCPUID_AVX | ippCPUID_AVX2 | ippCPUID_F16C | ippAVX_ENABLEDBYOS;
constexpr Ipp64u kZmmFeatures =
    ippCPUID_AVX512F | ippCPUID_AVX512CD | ippCPUID_AVX512ER | ippCPUID_AVX512PF |
    ippCPUID_AVX512BW | ippCPUID_AVX512DQ | ippCPUID_AVX512VL | ippCPUID_AVX512VBMI |
    ippCPUID_AVX512_4FMADDPS | ippCPUID_AVX512_4VNNIW | ippCPUID_AVX512IFMA | ippAVX512_ENABLEDBYOS |
    ippCPUID_AVX512GFNI | ippCPUID_AVX512VAES | ippCPUID_AVX512VCLMUL | ippCPUID_AVX512VNNI |
    ippCPUID_AVX512BITALG | ippCPUID_AVX512VPOPCNTDQ;
constexpr Ipp64u kLegacyFeatures =
    ippCPUID_MMX | ippCPUID_SSE | ippCPUID_SSE2 | ippCPUID_SSE3 | ippCPUID_SSSE3 | ippCPUID_MOVBE |
    ippCPUID_SSE41 | ippCPUID_SSE42 | ippCPUID_AES | ippCPUID_CLMUL | ippCPUID_RDRAND |
    ippCPUID_ADCOX | ippCPUID_RDSEED | ippCPUID_PREFETCHW | ippCPUID_SHA | ippCPUID_MPX;

TEST(KernelsCoreFeatures, RegisterStateGatesVectorFeatures)
{
    using orb::kernels::DecodeCpuFeatures;
    // All state enabled: everything, and no request flags or reserved bits.
    EXPECT_EQ(DecodeCpuFeatures(AllFeatures(0xE7)), kLegacyFeatures | kYmmFeatures | kZmmFeatures);
    // No opmask/ZMM state: AVX-512 is off, AVX2 stays.
    EXPECT_EQ(DecodeCpuFeatures(AllFeatures(0x07)), kLegacyFeatures | kYmmFeatures);
    // Only part of the AVX-512 state: still off.
    EXPECT_EQ(DecodeCpuFeatures(AllFeatures(0x67)), kLegacyFeatures | kYmmFeatures);
    // No YMM state: nothing VEX-encoded, even with the ZMM bits set.
    EXPECT_EQ(DecodeCpuFeatures(AllFeatures(0xE3)), kLegacyFeatures);
    // OS has not set OSXSAVE: XCR0 is not to be trusted.
    orb::kernels::CpuidWords noOsxsave = AllFeatures(0xE7);
    noOsxsave.leaf1Ecx &= ~(1u << 27);
    EXPECT_EQ(DecodeCpuFeatures(noOsxsave), kLegacyFeatures);
    EXPECT_EQ(DecodeCpuFeatures(orb::kernels::CpuidWords{}), 0u);
}

TEST(KernelsCoreFeatures, MaskAgreesWithHighway)
{
    ippInit();
    const Ipp64u f = ippGetEnabledCpuFeatures();
    // Nothing but processor features: no request flags, reserved or
    // coprocessor bits.
    EXPECT_EQ(f & ~(kLegacyFeatures | kYmmFeatures | kZmmFeatures), 0u);
#if HWY_ARCH_X86_64
    const Ipp64u baseline = ippCPUID_MMX | ippCPUID_SSE | ippCPUID_SSE2;
    EXPECT_EQ(f & baseline, baseline);
    const int64_t supported = hwy::SupportedTargets();
    const bool avx2 = (f & (ippCPUID_AVX2 | ippAVX_ENABLEDBYOS)) == (ippCPUID_AVX2 | ippAVX_ENABLEDBYOS);
    EXPECT_EQ(avx2, (supported & HWY_AVX2) != 0);
    const Ipp64u avx3Set = ippCPUID_AVX512F | ippCPUID_AVX512VL | ippCPUID_AVX512DQ | ippCPUID_AVX512BW;
    EXPECT_EQ((f & avx3Set) == avx3Set, (supported & HWY_AVX3) != 0);
    if (supported & HWY_SSSE3) {
        EXPECT_TRUE(f & ippCPUID_SSSE3);
    }
    if (supported & HWY_SSE4) {
        EXPECT_EQ(f & (ippCPUID_SSE41 | ippCPUID_SSE42), ippCPUID_SSE41 | ippCPUID_SSE42);
    }
#endif
}

TEST(KernelsCoreVersion, FieldsDescribeThisBuild)
{
    const IppLibraryVersion *v = ippsGetLibVersion();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(ippsGetLibVersion(), v);
    ASSERT_NE(v->Name, nullptr);
    ASSERT_NE(v->Version, nullptr);
    ASSERT_NE(v->BuildDate, nullptr);
    EXPECT_GT(std::strlen(v->Name), 0u);
    EXPECT_GT(std::strlen(v->BuildDate), 0u);
    const std::string numbers = std::to_string(v->major) + "." + std::to_string(v->minor) + ".";
    EXPECT_EQ(std::string(v->Version).compare(0, numbers.size(), numbers), 0) << v->Version;
    EXPECT_LT(strnlen(v->targetCpu, sizeof v->targetCpu), sizeof v->targetCpu);
}

TEST(KernelsCoreMemory, VectorBlocksAreAlignedAndCounted)
{
    const int64_t before = orbBackendLiveAllocations();
    std::vector<void *> blocks;
    for (int len : {1, 3, 17, 64, 1000, 4097}) {
        Ipp8u *b8 = ippsMalloc_8u(len);
        Ipp32f *b32 = ippsMalloc_32f(len);
        Ipp32fc *b32c = ippsMalloc_32fc(len);
        Ipp64f *b64 = ippsMalloc_64f(len);
        for (void *p : {static_cast<void *>(b8), static_cast<void *>(b32), static_cast<void *>(b32c),
                        static_cast<void *>(b64)}) {
            ASSERT_NE(p, nullptr) << len;
            EXPECT_TRUE(Aligned64(p)) << len;
            blocks.push_back(p);
        }
        // The whole requested length is usable.
        std::memset(b8, 1, size_t(len));
        std::memset(b32c, 1, size_t(len) * sizeof(Ipp32fc));
        b64[len - 1] = 1.0;
    }
    EXPECT_EQ(orbBackendLiveAllocations(), before + int64_t(blocks.size()));
    for (void *p : blocks)
        ippsFree(p);
    EXPECT_EQ(orbBackendLiveAllocations(), before);
}

TEST(KernelsCoreMemory, InvalidSizesAndNullFreesAllocateNothing)
{
    const int64_t before = orbBackendLiveAllocations();
    for (int len : {0, -1, INT_MIN}) {
        EXPECT_EQ(ippsMalloc_8u(len), nullptr);
        EXPECT_EQ(ippsMalloc_32f(len), nullptr);
        EXPECT_EQ(ippsMalloc_32fc(len), nullptr);
        EXPECT_EQ(ippsMalloc_64f(len), nullptr);
    }
    int step = -7;
    EXPECT_EQ(ippiMalloc_32f_C1(0, 5, &step), nullptr);
    EXPECT_EQ(ippiMalloc_32f_C1(5, 0, &step), nullptr);
    EXPECT_EQ(ippiMalloc_32f_C3(-1, 5, &step), nullptr);
    EXPECT_EQ(ippiMalloc_32f_C1(5, 5, nullptr), nullptr);
    // A row too long for an int step is refused before anything is allocated.
    EXPECT_EQ(ippiMalloc_32f_C3(INT_MAX / 8, 1, &step), nullptr);
    EXPECT_EQ(step, -7);
    ippsFree(nullptr);
    ippiFree(nullptr);
    EXPECT_EQ(orbBackendLiveAllocations(), before);
}

TEST(KernelsCoreMemory, ImageRowsArePaddedToAlignedSteps)
{
    const int64_t before = orbBackendLiveAllocations();
    for (int channels : {1, 3}) {
        for (int width : {1, 2, 5, 15, 16, 17, 33, 100}) {
            const int height = 4;
            int step = 0;
            Ipp32f *img = channels == 1 ? ippiMalloc_32f_C1(width, height, &step)
                                        : ippiMalloc_32f_C3(width, height, &step);
            ASSERT_NE(img, nullptr);
            const int rowBytes = width * channels * int(sizeof(Ipp32f));
            EXPECT_EQ(step % 64, 0) << width << "x" << channels;
            EXPECT_GE(step, rowBytes);
            EXPECT_LT(step - rowBytes, 64);
            for (int y = 0; y < height; ++y) {
                Ipp8u *row = reinterpret_cast<Ipp8u *>(img) + y * step;
                EXPECT_TRUE(Aligned64(row));
                std::memset(row, 0, size_t(rowBytes));
            }
            EXPECT_EQ(orbBackendLiveAllocations(), before + 1);
            ippiFree(img);
        }
    }
    EXPECT_EQ(orbBackendLiveAllocations(), before);
}

TEST(KernelsCoreMemory, FailureInjectionHitsTheKthCallOnce)
{
    DisarmOnExit disarm;
    const int64_t before = orbBackendLiveAllocations();
    orbBackendFailNthAllocation(3);
    Ipp8u *first = ippsMalloc_8u(8);
    EXPECT_EQ(ippsMalloc_32f(0), nullptr);  // an invalid call still counts
    int step = 0;
    Ipp32f *third = ippiMalloc_32f_C1(4, 4, &step);
    Ipp64f *fourth = ippsMalloc_64f(8);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(third, nullptr);
    EXPECT_NE(fourth, nullptr);  // disarmed after firing
    EXPECT_EQ(orbBackendLiveAllocations(), before + 2);
    ippsFree(first);
    ippsFree(fourth);

    orbBackendFailNthAllocation(1);
    EXPECT_EQ(ippsMalloc_32fc(4), nullptr);

    // Zero disarms a pending failure.
    orbBackendFailNthAllocation(2);
    orbBackendFailNthAllocation(0);
    for (int i = 0; i < 3; ++i) {
        Ipp8u *p = ippsMalloc_8u(1);
        EXPECT_NE(p, nullptr);
        ippsFree(p);
    }
    EXPECT_EQ(orbBackendLiveAllocations(), before);
}

TEST(KernelsCoreMemory, CountStaysExactUnderConcurrency)
{
    const int64_t before = orbBackendLiveAllocations();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([] {
            for (int i = 0; i < 20000; ++i) {
                Ipp32f *p = ippsMalloc_32f(1 + i % 97);
                ippsFree(p);
            }
        });
    for (std::thread &t : threads)
        t.join();
    EXPECT_EQ(orbBackendLiveAllocations(), before);
}

}  // namespace
