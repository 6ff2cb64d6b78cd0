// Processor feature detection for the backend's core: the raw CPUID words and
// their translation into the ippCPUID_ feature mask. Internal to the backend;
// split out so that the translation can be checked with made-up words.
#ifndef ORB_KERNELS_CPU_FEATURES_H
#define ORB_KERNELS_CPU_FEATURES_H

#include <cstdint>

#include "ipptypes.h"

namespace orb_kernels {

// The CPUID and XGETBV words that the feature mask is made of; zero where the
// processor does not have the leaf.
struct CpuidWords {
    uint32_t leaf1Ecx = 0, leaf1Edx = 0;                  // leaf 1
    uint32_t leaf7Ebx = 0, leaf7Ecx = 0, leaf7Edx = 0;    // leaf 7, subleaf 0
    uint32_t ext1Ecx = 0;                                 // leaf 0x80000001
    uint64_t xcr0 = 0;  // XCR0, read only when the OS has set OSXSAVE
};

// Reads the words of the running processor (all zero off x86).
CpuidWords ReadCpuidWords();

// The ippCPUID_ mask for those words. Features that need register state the
// operating system has not enabled in XCR0 are left out.
Ipp64u DecodeCpuFeatures(const CpuidWords &words);

}  // namespace orb_kernels

#endif
