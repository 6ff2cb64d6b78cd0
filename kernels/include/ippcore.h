/* Core services of the numeric backend: start-up, processor features,
 * status texts. */
#ifndef IPPCORE_H
#define IPPCORE_H

#include "ipptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Processor feature bits of the mask that ippGetEnabledCpuFeatures returns.
 * Bits that need extended register state (AVX, F16C, AVX2 and every AVX-512
 * bit) are set only when the operating system has enabled that state;
 * ippAVX_ENABLEDBYOS and ippAVX512_ENABLEDBYOS record that it has. */
#define ippCPUID_MMX             0x00000001ULL /* MMX */
#define ippCPUID_SSE             0x00000002ULL /* SSE */
#define ippCPUID_SSE2            0x00000004ULL /* SSE2 */
#define ippCPUID_SSE3            0x00000008ULL /* SSE3 */
#define ippCPUID_SSSE3           0x00000010ULL /* Supplemental SSE3 */
#define ippCPUID_MOVBE           0x00000020ULL /* MOVBE instruction */
#define ippCPUID_SSE41           0x00000040ULL /* SSE4.1 */
#define ippCPUID_SSE42           0x00000080ULL /* SSE4.2 */
#define ippCPUID_AVX             0x00000100ULL /* AVX */
#define ippAVX_ENABLEDBYOS       0x00000200ULL /* the OS saves the YMM state */
#define ippCPUID_AES             0x00000400ULL /* AES instructions */
#define ippCPUID_CLMUL           0x00000800ULL /* PCLMULQDQ instruction */
#define ippCPUID_ABR             0x00001000ULL /* reserved, never set */
#define ippCPUID_RDRAND          0x00002000ULL /* RDRAND instruction */
#define ippCPUID_F16C            0x00004000ULL /* half-float conversions */
#define ippCPUID_AVX2            0x00008000ULL /* AVX2 */
#define ippCPUID_ADCOX           0x00010000ULL /* ADCX/ADOX instructions */
#define ippCPUID_RDSEED          0x00020000ULL /* RDSEED instruction */
#define ippCPUID_PREFETCHW       0x00040000ULL /* PREFETCHW instruction */
#define ippCPUID_SHA             0x00080000ULL /* SHA extensions */
#define ippCPUID_AVX512F         0x00100000ULL /* AVX-512 foundation */
#define ippCPUID_AVX512CD        0x00200000ULL /* AVX-512 conflict detection */
#define ippCPUID_AVX512ER        0x00400000ULL /* AVX-512 exponential and reciprocal */
#define ippCPUID_AVX512PF        0x00800000ULL /* AVX-512 prefetch */
#define ippCPUID_AVX512BW        0x01000000ULL /* AVX-512 byte and word */
#define ippCPUID_AVX512DQ        0x02000000ULL /* AVX-512 doubleword and quadword */
#define ippCPUID_AVX512VL        0x04000000ULL /* AVX-512 vector length */
#define ippCPUID_AVX512VBMI      0x08000000ULL /* AVX-512 vector byte manipulation */
#define ippCPUID_MPX             0x10000000ULL /* memory protection extensions */
#define ippCPUID_AVX512_4FMADDPS 0x20000000ULL /* AVX-512 4-iteration FMA, single precision */
#define ippCPUID_AVX512_4VNNIW   0x40000000ULL /* AVX-512 4-iteration word dot products */
#define ippCPUID_KNC             0x80000000ULL /* many-core coprocessor, never set */
#define ippCPUID_AVX512IFMA      0x100000000ULL /* AVX-512 52-bit integer FMA */
#define ippAVX512_ENABLEDBYOS    0x200000000ULL /* the OS saves the opmask and ZMM state */
#define ippCPUID_AVX512GFNI      0x400000000ULL /* Galois field instructions */
#define ippCPUID_AVX512VAES      0x800000000ULL /* vector AES */
#define ippCPUID_AVX512VCLMUL    0x1000000000ULL /* vector carry-less multiplication */
#define ippCPUID_AVX512VNNI      0x2000000000ULL /* AVX-512 vector neural network instructions */
#define ippCPUID_AVX512BITALG    0x4000000000ULL /* AVX-512 bit algorithms */
#define ippCPUID_AVX512VPOPCNTDQ 0x8000000000ULL /* AVX-512 doubleword/quadword population count */
#define ippCPUID_GETINFO_A       0x616f666e69746567ULL /* request word, not a feature */
#define ippCPUID_NOCHECK         0x8000000000000000ULL /* request flag, not a feature */

/* Detects the processor once and selects the best code path. Thread-safe;
 * later calls only return the result of the first. */
IPPAPI(IppStatus, ippInit, (void))

/* A stable "name: description" text for every status; the text of
 * ippStsUnknownStatusCodeErr for codes the backend does not know. Never
 * null. */
IPPAPI(const char *, ippGetStatusString, (IppStatus status))

/* Feature bits (ippCPUID_...) of the running processor that the operating
 * system has enabled. */
IPPAPI(Ipp64u, ippGetEnabledCpuFeatures, (void))

#ifdef __cplusplus
}
#endif

#endif
