// The backend's allocators: 64-byte aligned blocks for vectors and images,
// with a count of live blocks and a failure switch for tests.
#include <atomic>
#include <climits>
#include <cstdint>
#include <cstdlib>

#include "backend_hooks.h"
#include "ippi.h"
#include "ipps.h"

namespace {

constexpr uint64_t kAlignment = 64;

std::atomic<int64_t> liveBlocks{0};
// Allocator calls left until the one that is made to fail; 0 when disarmed.
std::atomic<int64_t> callsUntilFailure{0};

// Counts one allocator call against the failure switch; true for the call
// that must fail, which also disarms the switch.
bool FailThisCall()
{
    int64_t left = callsUntilFailure.load(std::memory_order_relaxed);
    while (left > 0) {
        if (callsUntilFailure.compare_exchange_weak(left, left - 1, std::memory_order_relaxed))
            return left == 1;
    }
    return false;
}

void *AlignedBlock(uint64_t bytes)
{
    if (bytes == 0)
        return nullptr;
    void *block = nullptr;
    if (posix_memalign(&block, kAlignment, static_cast<size_t>(bytes)) != 0)
        return nullptr;
    liveBlocks.fetch_add(1, std::memory_order_relaxed);
    return block;
}

void FreeBlock(void *block)
{
    if (block == nullptr)
        return;
    std::free(block);
    liveBlocks.fetch_sub(1, std::memory_order_relaxed);
}

template <typename T>
T *VectorBlock(int len)
{
    if (FailThisCall() || len < 1)
        return nullptr;
    return static_cast<T *>(AlignedBlock(uint64_t(len) * sizeof(T)));
}

// Rows are padded to a multiple of 64 bytes so that every row starts on a
// 64-byte boundary; the step must fit the int that reports it.
Ipp32f *ImageBlock(int widthPixels, int heightPixels, int channels, int *pStepBytes)
{
    if (FailThisCall() || widthPixels < 1 || heightPixels < 1 || pStepBytes == nullptr)
        return nullptr;
    const uint64_t rowBytes = uint64_t(widthPixels) * uint64_t(channels) * sizeof(Ipp32f);
    const uint64_t step = (rowBytes + kAlignment - 1) / kAlignment * kAlignment;
    if (step > uint64_t(INT_MAX))
        return nullptr;
    void *block = AlignedBlock(step * uint64_t(heightPixels));
    if (block != nullptr)
        *pStepBytes = int(step);
    return static_cast<Ipp32f *>(block);
}

}  // namespace

Ipp8u *ippsMalloc_8u(int len) { return VectorBlock<Ipp8u>(len); }
Ipp32f *ippsMalloc_32f(int len) { return VectorBlock<Ipp32f>(len); }
Ipp32fc *ippsMalloc_32fc(int len) { return VectorBlock<Ipp32fc>(len); }
Ipp64f *ippsMalloc_64f(int len) { return VectorBlock<Ipp64f>(len); }
void ippsFree(void *ptr) { FreeBlock(ptr); }

Ipp32f *ippiMalloc_32f_C1(int widthPixels, int heightPixels, int *pStepBytes)
{
    return ImageBlock(widthPixels, heightPixels, 1, pStepBytes);
}

Ipp32f *ippiMalloc_32f_C3(int widthPixels, int heightPixels, int *pStepBytes)
{
    return ImageBlock(widthPixels, heightPixels, 3, pStepBytes);
}

void ippiFree(void *ptr) { FreeBlock(ptr); }

int64_t orbBackendLiveAllocations(void) { return liveBlocks.load(std::memory_order_relaxed); }

void orbBackendFailNthAllocation(int64_t k)
{
    callsUntilFailure.store(k > 0 ? k : 0, std::memory_order_relaxed);
}
