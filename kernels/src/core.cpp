// The backend's core: processor detection, choice of the SIMD code path,
// the feature mask and the version record.
// dispatch.h first: the targets named here are the ones the kernels compile.
#include "dispatch.h"

#include <cstdio>

#include "hwy/targets.h"

#include "cpu_features.h"
#include "ippcore.h"
#include "ipps.h"

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#define ORB_X86 1
#else
#define ORB_X86 0
#endif

namespace orb_kernels {

CpuidWords ReadCpuidWords()
{
    CpuidWords w;
#if ORB_X86
    unsigned a = 0, b = 0, c = 0, d = 0;
    const unsigned maxLeaf = __get_cpuid_max(0, nullptr);
    if (maxLeaf >= 1) {
        __cpuid(1, a, b, c, d);
        w.leaf1Ecx = c;
        w.leaf1Edx = d;
    }
    if (maxLeaf >= 7) {
        __cpuid_count(7, 0, a, b, c, d);
        w.leaf7Ebx = b;
        w.leaf7Ecx = c;
        w.leaf7Edx = d;
    }
    const unsigned maxExtLeaf = __get_cpuid_max(0x80000000u, nullptr);  // int in clang's cpuid.h
    if (maxExtLeaf >= 0x80000001u) {
        __cpuid(0x80000001u, a, b, c, d);
        w.ext1Ecx = c;
    }
    // XGETBV faults unless the OS has set OSXSAVE (leaf 1, ECX bit 27).
    if ((w.leaf1Ecx >> 27) & 1u) {
        uint32_t lo = 0, hi = 0;
        __asm__ volatile("xgetbv" : "=a"(lo), "=d"(hi) : "c"(0));
        w.xcr0 = (uint64_t{hi} << 32) | lo;
    }
#endif
    return w;
}

Ipp64u DecodeCpuFeatures(const CpuidWords &w)
{
    Ipp64u mask = 0;
    auto take = [&mask](uint32_t word, int bit, Ipp64u feature) {
        if ((word >> bit) & 1u)
            mask |= feature;
    };

    // Features that use only the general and XMM registers.
    take(w.leaf1Edx, 23, ippCPUID_MMX);
    take(w.leaf1Edx, 25, ippCPUID_SSE);
    take(w.leaf1Edx, 26, ippCPUID_SSE2);
    take(w.leaf1Ecx, 0, ippCPUID_SSE3);
    take(w.leaf1Ecx, 1, ippCPUID_CLMUL);
    take(w.leaf1Ecx, 9, ippCPUID_SSSE3);
    take(w.leaf1Ecx, 19, ippCPUID_SSE41);
    take(w.leaf1Ecx, 20, ippCPUID_SSE42);
    take(w.leaf1Ecx, 22, ippCPUID_MOVBE);
    take(w.leaf1Ecx, 25, ippCPUID_AES);
    take(w.leaf1Ecx, 30, ippCPUID_RDRAND);
    take(w.leaf7Ebx, 14, ippCPUID_MPX);
    take(w.leaf7Ebx, 18, ippCPUID_RDSEED);
    take(w.leaf7Ebx, 19, ippCPUID_ADCOX);
    take(w.leaf7Ebx, 29, ippCPUID_SHA);
    take(w.ext1Ecx, 8, ippCPUID_PREFETCHW);

    // VEX-encoded features need the OS to save the XMM and YMM state
    // (XCR0 bits 1 and 2).
    const bool osxsave = (w.leaf1Ecx >> 27) & 1u;
    const bool ymmState = osxsave && (w.xcr0 & 0x6u) == 0x6u;
    if (!ymmState)
        return mask;
    mask |= ippAVX_ENABLEDBYOS;
    take(w.leaf1Ecx, 28, ippCPUID_AVX);
    take(w.leaf1Ecx, 29, ippCPUID_F16C);
    take(w.leaf7Ebx, 5, ippCPUID_AVX2);

    // AVX-512 also needs the opmask, upper-ZMM and high-ZMM state
    // (XCR0 bits 5 to 7).
    if ((w.xcr0 & 0xE0u) != 0xE0u)
        return mask;
    mask |= ippAVX512_ENABLEDBYOS;
    take(w.leaf7Ebx, 16, ippCPUID_AVX512F);
    take(w.leaf7Ebx, 17, ippCPUID_AVX512DQ);
    take(w.leaf7Ebx, 21, ippCPUID_AVX512IFMA);
    take(w.leaf7Ebx, 26, ippCPUID_AVX512PF);
    take(w.leaf7Ebx, 27, ippCPUID_AVX512ER);
    take(w.leaf7Ebx, 28, ippCPUID_AVX512CD);
    take(w.leaf7Ebx, 30, ippCPUID_AVX512BW);
    take(w.leaf7Ebx, 31, ippCPUID_AVX512VL);
    take(w.leaf7Ecx, 1, ippCPUID_AVX512VBMI);
    take(w.leaf7Ecx, 8, ippCPUID_AVX512GFNI);
    take(w.leaf7Ecx, 9, ippCPUID_AVX512VAES);
    take(w.leaf7Ecx, 10, ippCPUID_AVX512VCLMUL);
    take(w.leaf7Ecx, 11, ippCPUID_AVX512VNNI);
    take(w.leaf7Ecx, 12, ippCPUID_AVX512BITALG);
    take(w.leaf7Ecx, 14, ippCPUID_AVX512VPOPCNTDQ);
    take(w.leaf7Edx, 2, ippCPUID_AVX512_4VNNIW);
    take(w.leaf7Edx, 3, ippCPUID_AVX512_4FMADDPS);
    return mask;
}

}  // namespace orb_kernels

namespace {

constexpr int kMajor = 0;
constexpr int kMinor = 1;
constexpr int kPatch = 0;

// The best of the given Highway targets that this build compiled; Highway
// gives better targets lower bits.
int64_t BestTarget(int64_t supported)
{
    const int64_t usable = supported & HWY_TARGETS;
    return usable != 0 ? (usable & -usable) : HWY_STATIC_TARGET;
}

// Short code of a target for the version record's four-byte field.
const char *TargetCode(int64_t target)
{
    switch (target) {
#if HWY_ARCH_X86
    case HWY_AVX3_DL: return "a3d";
    case HWY_AVX3: return "a3";
    case HWY_AVX2: return "a2";
    case HWY_SSE4: return "s4";
    case HWY_SSSE3: return "s3";
#endif
    case HWY_EMU128: return "e1";
    case HWY_SCALAR: return "sc";
    default: return "??";
    }
}

// Everything the core works out once per process. Built in place by the
// first caller (a function-local static, so thread-safe); later calls cost a
// guard check.
struct Backend {
    Ipp64u features = 0;
    int64_t target = 0;
    char version[48] = {};
    IppLibraryVersion record = {};

    Backend()
    {
        features = orb_kernels::DecodeCpuFeatures(orb_kernels::ReadCpuidWords());
        // Highway would pick the target lazily on the first dispatch; pick it
        // now so that every kernel starts on the same, best code path.
        const int64_t supported = hwy::SupportedTargets();
        hwy::GetChosenTarget().Update(supported);
        target = BestTarget(supported);

        std::snprintf(version, sizeof version, "%d.%d.%d (%s)", kMajor, kMinor, kPatch,
                      hwy::TargetName(target));
        record.major = kMajor;
        record.minor = kMinor;
        record.majorBuild = kPatch;
        record.build = 0;
        std::snprintf(record.targetCpu, sizeof record.targetCpu, "%s", TargetCode(target));
        record.Name = "orb kernels";
        record.Version = version;
        record.BuildDate = __DATE__;
    }
    Backend(const Backend &) = delete;
    Backend &operator=(const Backend &) = delete;
};

const Backend &TheBackend()
{
    static const Backend backend;
    return backend;
}

}  // namespace

IppStatus ippInit(void)
{
    // Every processor that runs this build has a code path of its own among
    // Highway's targets, so there is no warning to report.
    (void)TheBackend();
    return ippStsNoErr;
}

Ipp64u ippGetEnabledCpuFeatures(void)
{
    return TheBackend().features;
}

const IppLibraryVersion *ippsGetLibVersion(void)
{
    return &TheBackend().record;
}
