/* Test hooks of the backend's allocators. They are linked into the static
 * library only for tests and benchmarks; the shared library never exports
 * them. */
#ifndef BACKEND_HOOKS_H
#define BACKEND_HOOKS_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Number of blocks handed out by the allocators and not yet freed. */
int64_t orbBackendLiveAllocations(void);

/* Makes the k-th allocation from now fail (k >= 1, counting every allocator
 * call); 0 disarms. */
void orbBackendFailNthAllocation(int64_t k);

#ifdef __cplusplus
}
#endif

#endif
