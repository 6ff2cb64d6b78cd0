// The backend's core: status texts, start-up, processor features, version
// record and the allocators with their test hooks.
#include "kernels_sweep.h"  // first: the kernels' target set

#include <climits>
#include <thread>

#include "backend_hooks.h"
#include "cpu_features.h"
#include "ipp.h"

namespace {

TEST(KernelsCoreStatus, TextsValuesAndSigns)
{
    // Every listed status has its own text, "name: description"; a name
    // ending in Err is an error (negative), ippStsNoErr aside.
#define ORB_TEST_STATUS(name, value, text)                                                          \
    EXPECT_TRUE(std::string(ippGetStatusString(value)).starts_with(#name ": " text)) << #name;      \
    EXPECT_TRUE(!std::string(#name).ends_with("Err") || value < 0 || value == ippStsNoErr) << #name;
    IPP_STATUS_LIST(ORB_TEST_STATUS)
#undef ORB_TEST_STATUS
    // Published values that callers compare against.
    const std::pair<IppStatus, int> values[] = {
        {ippStsNoErr, 0}, {ippStsErr, -2}, {ippStsSizeErr, -6}, {ippStsNullPtrErr, -8}, {ippStsMemAllocErr, -9},
        {ippStsFftOrderErr, -15}, {ippStsContextMatchErr, -17}, {ippStsHugeWinErr, -39}, {ippStsRegExpErr, -189},
        {ippStsBorderErr, -225}, {ippStsSizeMatchMatrixErr, -204}, {ippStsDivByZero, 6}, {ippStsOverflow, 12}};
    for (auto [status, value] : values) EXPECT_EQ(status, value);
    EXPECT_STREQ(ippGetStatusString(ippStsNullPtrErr), "ippStsNullPtrErr: Null pointer error.");
    // Unknown codes share the text of the status that names them.
    const char *unknown = ippGetStatusString(ippStsUnknownStatusCodeErr);
    EXPECT_STREQ(unknown, "ippStsUnknownStatusCodeErr: Unknown status code.");
    for (IppStatus s : {-1, -3, -68, 53, 12345, -123456, INT_MIN, INT_MAX})
        EXPECT_STREQ(ippGetStatusString(s), unknown) << s;
}

constexpr Ipp64u kYmmFeatures = ippCPUID_AVX | ippCPUID_AVX2 | ippCPUID_F16C | ippAVX_ENABLEDBYOS;
constexpr Ipp64u kZmmFeatures =
    ippCPUID_AVX512F | ippCPUID_AVX512CD | ippCPUID_AVX512ER | ippCPUID_AVX512PF | ippCPUID_AVX512BW |
    ippCPUID_AVX512DQ | ippCPUID_AVX512VL | ippCPUID_AVX512VBMI | ippCPUID_AVX512_4FMADDPS | ippCPUID_AVX512_4VNNIW |
    ippCPUID_AVX512IFMA | ippAVX512_ENABLEDBYOS | ippCPUID_AVX512GFNI | ippCPUID_AVX512VAES | ippCPUID_AVX512VCLMUL |
    ippCPUID_AVX512VNNI | ippCPUID_AVX512BITALG | ippCPUID_AVX512VPOPCNTDQ;
constexpr Ipp64u kLegacyFeatures = ippCPUID_MMX | ippCPUID_SSE | ippCPUID_SSE2 | ippCPUID_SSE3 | ippCPUID_SSSE3 |
                                   ippCPUID_MOVBE | ippCPUID_SSE41 | ippCPUID_SSE42 | ippCPUID_AES | ippCPUID_CLMUL |
                                   ippCPUID_RDRAND | ippCPUID_ADCOX | ippCPUID_RDSEED | ippCPUID_PREFETCHW |
                                   ippCPUID_SHA | ippCPUID_MPX;

TEST(KernelsCoreFeatures, RegisterStateGatesVectorFeatures)
{
    // Every processor feature bit set, with the given XCR0.
    const auto all = [](uint64_t xcr0, uint32_t leaf1Ecx = ~0u) {
        return orb_kernels::DecodeCpuFeatures({leaf1Ecx, ~0u, ~0u, ~0u, ~0u, ~0u, xcr0});
    };
    // All state enabled: everything, and no request flags or reserved bits.
    EXPECT_EQ(all(0xE7), kLegacyFeatures | kYmmFeatures | kZmmFeatures);
    // No opmask/ZMM state, or only part of it: AVX-512 is off, AVX2 stays.
    EXPECT_EQ(all(0x07), kLegacyFeatures | kYmmFeatures);
    EXPECT_EQ(all(0x67), kLegacyFeatures | kYmmFeatures);
    // No YMM state: nothing VEX-encoded, even with the ZMM bits set.
    EXPECT_EQ(all(0xE3), kLegacyFeatures);
    // OS has not set OSXSAVE: XCR0 is not to be trusted.
    EXPECT_EQ(all(0xE7, ~(1u << 27)), kLegacyFeatures);
    EXPECT_EQ(orb_kernels::DecodeCpuFeatures({}), 0u);
}

TEST(KernelsCoreFeatures, InitSelectsATargetAndTheMaskAgreesWithHighway)
{
    EXPECT_EQ(ippInit(), ippStsNoErr);
    EXPECT_TRUE(hwy::GetChosenTarget().IsInitialized());
    const Ipp64u f = ippGetEnabledCpuFeatures();
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(ippInit(), ippStsNoErr);
    EXPECT_EQ(ippGetEnabledCpuFeatures(), f);
    // Nothing but processor features: no request flags, reserved or
    // coprocessor bits.
    EXPECT_EQ(f & ~(kLegacyFeatures | kYmmFeatures | kZmmFeatures), 0u);
#if HWY_ARCH_X86_64
    const auto has = [&](Ipp64u bits) { return (f & bits) == bits; };
    const auto target = [](int64_t t) { return (hwy::SupportedTargets() & t) != 0; };
    EXPECT_TRUE(has(ippCPUID_MMX | ippCPUID_SSE | ippCPUID_SSE2));
    EXPECT_EQ(has(ippCPUID_AVX2 | ippAVX_ENABLEDBYOS), target(HWY_AVX2));
    EXPECT_EQ(has(ippCPUID_AVX512F | ippCPUID_AVX512VL | ippCPUID_AVX512DQ | ippCPUID_AVX512BW), target(HWY_AVX3));
    EXPECT_TRUE(!target(HWY_SSE4) || has(ippCPUID_SSE41 | ippCPUID_SSE42));
#endif
    // The version record: the same one each time, complete, and its
    // version text starts with its numbers.
    const IppLibraryVersion *v = ippsGetLibVersion();
    ASSERT_TRUE(v && v == ippsGetLibVersion() && v->Name && v->Version && v->BuildDate);
    EXPECT_TRUE(*v->Name && *v->BuildDate);
    const std::string numbers = std::to_string(v->major) + "." + std::to_string(v->minor) + ".";
    EXPECT_TRUE(std::string(v->Version).starts_with(numbers)) << v->Version;
    EXPECT_LT(strnlen(v->targetCpu, sizeof v->targetCpu), sizeof v->targetCpu);
}

TEST(KernelsCoreMemory, BlocksAreAlignedPaddedCountedAndRefusedAndFailuresInjectedExactly)
{
    const auto Aligned64 = [](const void *p) { return reinterpret_cast<uintptr_t>(p) % 64 == 0; };
    const int64_t before = orbBackendLiveAllocations();
    for (int len : {1, 3, 17, 64, 1000, 4097}) {
        void *b[4] = {ippsMalloc_8u(len), ippsMalloc_32fc(len), ippsMalloc_64f(len), ippsMalloc_32f(len)};
        const size_t bytes[4] = {1, sizeof(Ipp32fc), sizeof(Ipp64f), sizeof(Ipp32f)};
        EXPECT_EQ(orbBackendLiveAllocations(), before + 4);
        for (int k = 0; k < 4; ++k) {
            ASSERT_TRUE(b[k] && Aligned64(b[k])) << len;
            memset(b[k], 1, size_t(len) * bytes[k]);  // the whole requested length is usable
            ippsFree(b[k]);
        }
    }
    // Image rows are padded to 64-byte steps.
    for (int channels : {1, 3})
        for (int width : {1, 2, 5, 15, 16, 17, 33, 100}) {
            int step = 0;
            Ipp32f *img = channels == 1 ? ippiMalloc_32f_C1(width, 4, &step) : ippiMalloc_32f_C3(width, 4, &step);
            ASSERT_TRUE(img && Aligned64(img));
            const int rowBytes = width * channels * int(sizeof(Ipp32f));
            EXPECT_TRUE(step % 64 == 0 && step >= rowBytes && step - rowBytes < 64) << width << "x" << channels;
            memset(img, 0, size_t(3 * step + rowBytes));  // four rows fit
            ippiFree(img);
        }
    // Invalid sizes and null frees allocate and free nothing; a row too long
    // for an int step is refused before anything is allocated.
    for (int len : {0, -1, INT_MIN})
        EXPECT_TRUE(!ippsMalloc_8u(len) && !ippsMalloc_32f(len) && !ippsMalloc_32fc(len) && !ippsMalloc_64f(len));
    int step = -7;
    EXPECT_TRUE(!ippiMalloc_32f_C1(0, 5, &step) && !ippiMalloc_32f_C1(5, 0, &step) && !ippiMalloc_32f_C3(-1, 5, &step));
    EXPECT_TRUE(!ippiMalloc_32f_C1(5, 5, nullptr) && !ippiMalloc_32f_C3(INT_MAX / 8, 1, &step) && step == -7);
    ippsFree(nullptr), ippiFree(nullptr);
    EXPECT_EQ(orbBackendLiveAllocations(), before);
    // Failure injection hits the k-th call once; counts stay exact.
    struct Disarm { ~Disarm() { orbBackendFailNthAllocation(0); } } disarm;
    orbBackendFailNthAllocation(3);
    Ipp8u *first = ippsMalloc_8u(8);
    EXPECT_EQ(ippsMalloc_32f(0), nullptr);  // an invalid call still counts
    EXPECT_EQ(ippiMalloc_32f_C1(4, 4, &step), nullptr);
    Ipp64f *fourth = ippsMalloc_64f(8);  // disarmed after firing
    EXPECT_TRUE(first && fourth);
    EXPECT_EQ(orbBackendLiveAllocations(), before + 2);
    ippsFree(first), ippsFree(fourth);
    // Zero disarms a pending failure.
    orbBackendFailNthAllocation(2);
    orbBackendFailNthAllocation(0);
    void *p[3] = {ippsMalloc_8u(1), ippsMalloc_8u(1), ippsMalloc_8u(1)};
    EXPECT_TRUE(p[0] && p[1] && p[2]);
    ippsFree(p[0]), ippsFree(p[1]), ippsFree(p[2]);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([] { for (int i = 0; i < 20000; ++i) ippsFree(ippsMalloc_32f(1 + i % 97)); });
    for (std::thread &t : threads) t.join();
    EXPECT_EQ(orbBackendLiveAllocations(), before);
}

}  // namespace
