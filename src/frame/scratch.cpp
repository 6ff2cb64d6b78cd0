/* Scratch memory held by an export for the length of one call. */
#include <string.h>

#include "frame/frame.h"

void orbHeldInit(OrbHeld *held)
{
    memset(held, 0, sizeof *held);
}

/* Keeps a block that the allocator gave, or notes that it gave nothing. A
 * call that would hold more blocks than the record has room for counts as a
 * failed allocation rather than losing one. */
static void *keep(OrbHeld *held, void *block, OrbBlockKind kind)
{
    if (block == NULL) {
        held->failed = 1;
        return NULL;
    }
    if (held->count == ORB_HELD_MAX) {
        if (kind == ORB_IMAGE)
            ippiFree(block);
        else
            ippsFree(block);
        held->failed = 1;
        return NULL;
    }
    held->block[held->count] = block;
    held->kind[held->count] = kind;
    held->count++;
    return block;
}

/* Whether to ask the allocator at all: not for an empty request, and not
 * after a failure in this call. */
static int wanted(const OrbHeld *held, int len)
{
    return len > 0 && !held->failed;
}

Ipp8u *orbMalloc8u(OrbHeld *held, int len)
{
    return wanted(held, len) ? (Ipp8u *)keep(held, ippsMalloc_8u(len), ORB_VECTOR) : NULL;
}

Ipp32f *orbMalloc32f(OrbHeld *held, int len)
{
    return wanted(held, len) ? (Ipp32f *)keep(held, ippsMalloc_32f(len), ORB_VECTOR) : NULL;
}

Ipp32fc *orbMalloc32fc(OrbHeld *held, int len)
{
    return wanted(held, len) ? (Ipp32fc *)keep(held, ippsMalloc_32fc(len), ORB_VECTOR) : NULL;
}

Ipp64f *orbMalloc64f(OrbHeld *held, int len)
{
    return wanted(held, len) ? (Ipp64f *)keep(held, ippsMalloc_64f(len), ORB_VECTOR) : NULL;
}

Ipp32f *orbMallocImage32f(OrbHeld *held, int width, int height, int channels, int *step)
{
    Ipp32f *image;

    if (held->failed)
        return NULL;
    image = channels == 3 ? ippiMalloc_32f_C3(width, height, step) : ippiMalloc_32f_C1(width, height, step);
    return (Ipp32f *)keep(held, image, ORB_IMAGE);
}

void orbRelease(OrbHeld *held)
{
    while (held->count > 0) {
        held->count--;
        if (held->kind[held->count] == ORB_IMAGE)
            ippiFree(held->block[held->count]);
        else
            ippsFree(held->block[held->count]);
        held->block[held->count] = NULL;
    }
}

void orbReleaseBlock(OrbHeld *held, void *block)
{
    int i;

    if (block == NULL)
        return;
    for (i = 0; i < held->count; ++i)
        if (held->block[i] == block) {
            if (held->kind[i] == ORB_IMAGE)
                ippiFree(block);
            else
                ippsFree(block);
            held->count--;
            held->block[i] = held->block[held->count];
            held->kind[i] = held->kind[held->count];
            held->block[held->count] = NULL;
            return;
        }
}

int orbAllocated(HostCallbacks cb, OrbHeld *held)
{
    if (!held->failed)
        return 1;
    orbRelease(held);
    HostError(cb, MSG_OUT_OF_MEMORY);
    return 0;
}

int orbOk(HostCallbacks cb, OrbHeld *held, IppStatus status)
{
    if (status >= 0)
        return 1;
    orbRelease(held);
    orbIppError(cb, status);
    return 0;
}

int orbInitOk(HostCallbacks cb, OrbHeld *held, IppStatus status)
{
    if (status == ippStsNoErr)
        return 1;
    orbRelease(held);
    orbIppError(cb, status);
    return 0;
}
