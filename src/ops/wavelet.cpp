/* Border copies under their own names, the border selector, and the
 * one-level two-dimensional wavelet transform of float[4] images, one
 * channel (matrices) or three (height x width x 3).
 *
 * Staying inside memory. The transform's scratch images come with a row
 * step rounded up for alignment, while the origins handed to the transform
 * count rows in elements of the bordered width (kept as it is). When the two
 * differ, the transform's first rows start before the image; every bordered
 * image is therefore allocated with as many zeroed rows in front of it as
 * its top border, so those reads stay inside the block. Host images are
 * used only as far as their storage goes: sizes that would take the
 * transform past an image's storage raise MSG_SIZES before anything is
 * allocated. Arguments beyond the count received read as the null value.
 */
#include <string.h>

#include "frame/frame.h"

#define MSG_DIMENSION "dimension of rtable must be one or three"
#define MSG_SIZES "rtable sizes do not fit the transform"

/* ---- The border functions ---- */

ORB_API IppStatus orbReplicateBorder_C1(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                        int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth)
{
    return ippiCopyReplicateBorder_32f_C1R(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight,
                                           leftBorderWidth);
}

ORB_API IppStatus orbReplicateBorder_C3(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                        int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth)
{
    return ippiCopyReplicateBorder_32f_C3R(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight,
                                           leftBorderWidth);
}

ORB_API IppStatus orbMirrorBorder_C1(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                     int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth)
{
    return ippiCopyMirrorBorder_32f_C1R(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight,
                                        leftBorderWidth);
}

ORB_API IppStatus orbMirrorBorder_C3(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                     int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth)
{
    return ippiCopyMirrorBorder_32f_C3R(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight,
                                        leftBorderWidth);
}

ORB_API IppStatus orbCopyConstBorder_C1(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                        int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth,
                                        Ipp32f value)
{
    return ippiCopyConstBorder_32f_C1R(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight,
                                       leftBorderWidth, value);
}

ORB_API IppStatus orbCopyConstBorder_C3(const Ipp32f *pSrc, int srcStep, IppiSize srcRoiSize, Ipp32f *pDst,
                                        int dstStep, IppiSize dstRoiSize, int topBorderHeight, int leftBorderWidth,
                                        const Ipp32f value[3])
{
    return ippiCopyConstBorder_32f_C3R(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight,
                                       leftBorderWidth, value);
}

/* One pointer type for all six. Under the System V AMD64 convention each
 * member finds its own arguments where a call through OrbBorderFunc puts
 * them, and ignores the rest:
 * - the six leading arguments are pointers, ints and an IppiSize (two ints,
 *   8 bytes, passed as one INTEGER eightbyte), so they fill rdi, rsi, rdx,
 *   rcx, r8, r9 in the same order for every member;
 * - the two border sizes and the three-value pointer are the next INTEGER
 *   arguments and go on the stack in that order, each in its own 8-byte
 *   slot: the three-channel constant border finds its pointer in the third
 *   slot, exactly where a call through OrbBorderFunc leaves it;
 * - the single value is the only floating-point argument of any member and
 *   so always travels in xmm0, wherever it stands in the list;
 * - the caller pops the stack arguments, so a callee that takes fewer never
 *   unbalances it, and every member returns an int in eax.
 * The static assertions pin the sizes this relies on; the selector is kept
 * out of line so a call through the pointer is always a real indirect call. */
static_assert(sizeof(IppiSize) == 8 && sizeof(int) == 4 && sizeof(Ipp32f) == 4 && sizeof(void *) == 8,
              "the border functions share one calling sequence only with these sizes");

#define BORDER(f) ((OrbBorderFunc)(void (*)(void))(f))

ORB_API __attribute__((noinline)) OrbBorderFunc chooseBorderFunc(int borderType, int numDims)
{
    if (borderType == 1 && numDims == 2) return BORDER(orbReplicateBorder_C1);
    if (borderType == 1 && numDims == 3) return BORDER(orbReplicateBorder_C3);
    if (borderType == 2 && numDims == 2) return BORDER(orbMirrorBorder_C1);
    if (borderType == 2 && numDims == 3) return BORDER(orbMirrorBorder_C3);
    if (borderType == 3 && numDims == 2) return BORDER(orbCopyConstBorder_C1);
    /* Every other combination, two-dimensional images included. */
    return BORDER(orbCopyConstBorder_C3);
}

/* ---- Helpers ---- */

/* Whether v's storage holds rows x cols pixels of channels floats. */
static int holds(HostCallbacks cb, HostValue v, int64_t rows, int64_t cols, int channels)
{
    if (rows <= 0 || cols <= 0)
        return 1; /* nothing is touched; the backend refuses the size */
    return orbStorageBytes(cb, v) / 4 / channels / cols >= rows;
}

/* A zeroed bordered scratch image of width x height with margin rows in
 * front of it (see the header comment); null after a failed allocation. */
static Ipp32f *borderedImage(OrbHeld *held, int width, int height, int margin, int channels, int *step)
{
    Ipp32f *block = orbMallocImage32f(held, width, height + margin, channels, step);

    if (block == NULL)
        return NULL;
    /* Zeroed whole: reads through the shifted origins may reach the margin
     * and the padding at the end of each row. */
    memset(block, 0, (size_t)(height + margin) * (size_t)*step);
    return (Ipp32f *)((Ipp8u *)block + (size_t)margin * (size_t)*step);
}

typedef struct Bank {
    const Ipp32f *low, *high;
    int lenLow, anchorLow, lenHigh, anchorHigh;
    Ipp32f value;     /* one-channel constant */
    Ipp32f values[3]; /* three-channel constant */
} Bank;

/* Positions 6, 7, 8, 9, 11 and 12, in that order. Tap counts stop where the
 * storage does, and the three values are copied from what the sample holds
 * (zeros after it), so no border copy reads past the host's storage. */
static void readBank(HostCallbacks cb, ArgSeq args, int64_t n, Bank *b)
{
    HostValue v;
    const Ipp32f *three;
    int64_t have, i;

    v = orbArgAt(cb, args, n, 6);
    b->low = GetFloat4Sample(cb, v);
    have = HostRTableNumElements(cb, v);
    b->lenLow = orbLen32(have < orbStorageBytes(cb, v) / 4 ? have : orbStorageBytes(cb, v) / 4);
    b->anchorLow = (int)GetInt(cb, orbArgAt(cb, args, n, 7));
    v = orbArgAt(cb, args, n, 8);
    b->high = GetFloat4Sample(cb, v);
    have = HostRTableNumElements(cb, v);
    b->lenHigh = orbLen32(have < orbStorageBytes(cb, v) / 4 ? have : orbStorageBytes(cb, v) / 4);
    b->anchorHigh = (int)GetInt(cb, orbArgAt(cb, args, n, 9));
    b->value = GetFloat4Value(cb, orbArgAt(cb, args, n, 11));
    v = orbArgAt(cb, args, n, 12);
    three = GetFloat4Sample(cb, v);
    have = orbStorageBytes(cb, v) / 4;
    for (i = 0; i < 3; ++i)
        b->values[i] = i < have && three != NULL ? three[i] : 0.0f;
}

/* Reads the five images of positions 1 to 5 with the accessor of the
 * channel count. */
static void readImages(HostCallbacks cb, ArgSeq args, int64_t n, int channels, Ipp32f *image[6])
{
    int i;

    for (i = 1; i <= 5; ++i)
        image[i] = channels == 3 ? GetFloat4Image(cb, orbArgAt(cb, args, n, i))
                                 : GetFloat4Matrix(cb, orbArgAt(cb, args, n, i));
}

static IppStatus callBorder(OrbBorderFunc border, const Ipp32f *src, int srcStep, int srcW, int srcH, Ipp32f *dst,
                            int dstStep, int dstW, int dstH, int top, int left, const Bank *b)
{
    IppiSize srcSize = {srcW, srcH}, dstSize = {dstW, dstH};

    return border(src, srcStep, srcSize, dst, dstStep, dstSize, top, left, b->values, b->value);
}

/* ---- Forward ---- */

static HostValue forward(HostCallbacks cb, ArgSeq args, OrbBorderFunc border, int C)
{
    int64_t n = HostNumArgs(cb, args);
    Ipp32f *image[6];
    Bank b;
    OrbHeld held;
    int width, height, dstW, dstH, left, right, oddW, oddH, paddedW, paddedH, bigW, bigH;
    int evenStep = 0, bigStep = 0, specSize = 0, bufSize = 0, k;
    Ipp32f *even = NULL, *big, *origin;
    Ipp8u *spec, *buffer;
    const Ipp32f *from;
    int fromStep;
    IppiSize roi;
    IppStatus status;

    readImages(cb, args, n, C, image);
    height = (int)HostRTableUpperBound(cb, orbArgAt(cb, args, n, 5), 1);
    width = (int)HostRTableUpperBound(cb, orbArgAt(cb, args, n, 5), 2);
    dstH = (int)HostRTableUpperBound(cb, orbArgAt(cb, args, n, 1), 1);
    dstW = (int)HostRTableUpperBound(cb, orbArgAt(cb, args, n, 1), 2);
    readBank(cb, args, n, &b);

    left = b.lenLow - 1 - b.anchorLow;
    if (b.lenHigh - 1 - b.anchorHigh > left)
        left = b.lenHigh - 1 - b.anchorHigh;
    right = b.anchorLow > b.anchorHigh ? b.anchorLow : b.anchorHigh;
    oddW = width % 2;
    oddH = height % 2;
    paddedW = width + oddW;
    paddedH = height + oddH;
    bigW = paddedW + left + right;
    bigH = left + paddedH + right;

    /* The transform reads two source rows and columns per output one. */
    if (!holds(cb, orbArgAt(cb, args, n, 5), height, width, C) || 2L * dstW > paddedW || 2L * dstH > paddedH) {
        HostError(cb, MSG_SIZES);
        return 0;
    }
    for (k = 1; k <= 4; ++k)
        if (!holds(cb, orbArgAt(cb, args, n, k), dstH, dstW, C)) {
            HostError(cb, MSG_SIZES);
            return 0;
        }

    orbHeldInit(&held);
    from = image[5];
    fromStep = width * 4 * C;
    if (oddW || oddH) {
        even = orbMallocImage32f(&held, paddedW, paddedH, C, &evenStep);
        if (!orbAllocated(cb, &held))
            return 0;
        if (!orbInitOk(cb, &held, callBorder(border, image[5], width * 4 * C, width, height, even, evenStep,
                                             paddedW, paddedH, 0, 0, &b)))
            return 0;
        from = even;
        fromStep = evenStep;
    }
    big = borderedImage(&held, bigW, bigH, left > 0 ? left : 0, C, &bigStep);
    if (!orbAllocated(cb, &held))
        return 0;
    status = callBorder(border, from, fromStep, paddedW, paddedH, big, bigStep, bigW, bigH, left, left, &b);
    orbReleaseBlock(&held, even);  /* the even-size copy, if one was made */
    if (!orbOk(cb, &held, status))
        return 0;

    if (!orbOk(cb, &held, ippiWTFwdGetSize_32f(C, b.lenLow, b.anchorLow, b.lenHigh, b.anchorHigh, &specSize,
                                               &bufSize)))
        return 0;
    spec = orbMalloc8u(&held, specSize);
    if (!orbAllocated(cb, &held))
        return 0;
    status = C == 3 ? ippiWTFwdInit_32f_C3R((IppiWTFwdSpec_32f_C3R *)spec, b.low, b.lenLow, b.anchorLow, b.high,
                                            b.lenHigh, b.anchorHigh)
                    : ippiWTFwdInit_32f_C1R((IppiWTFwdSpec_32f_C1R *)spec, b.low, b.lenLow, b.anchorLow, b.high,
                                            b.lenHigh, b.anchorHigh);
    if (!orbInitOk(cb, &held, status))
        return 0;
    buffer = orbMalloc8u(&held, bufSize);
    if (!orbAllocated(cb, &held))
        return 0;

    /* Rows counted in elements of the bordered width, not in the step. */
    origin = big + (ptrdiff_t)C * ((ptrdiff_t)left * bigW + left);
    roi.width = dstW;
    roi.height = dstH;
    k = dstW * 4 * C;
    status = C == 3 ? ippiWTFwd_32f_C3R(origin, bigStep, image[1], k, image[2], k, image[3], k, image[4], k, roi,
                                        (const IppiWTFwdSpec_32f_C3R *)spec, buffer)
                    : ippiWTFwd_32f_C1R(origin, bigStep, image[1], k, image[2], k, image[3], k, image[4], k, roi,
                                        (const IppiWTFwdSpec_32f_C1R *)spec, buffer);
    if (!orbOk(cb, &held, status))
        return 0;
    orbRelease(&held);
    return 0;
}

/* ---- Inverse ---- */

static HostValue inverse(HostCallbacks cb, ArgSeq args, OrbBorderFunc border, int C)
{
    int64_t n = HostNumArgs(cb, args);
    Ipp32f *image[6], *band[4], *origin[4];
    Bank b;
    OrbHeld held;
    int width, height, dstW, leftLow, rightLow, leftHigh, rightHigh, wL, wH, hL, hH, margin, k;
    int step[4] = {0, 0, 0, 0}, specSize = 0, bufSize = 0;
    int bw[4], bh[4], top[4], lft[4];
    Ipp8u *spec, *buffer;
    IppiSize roi;
    IppStatus status;

    readImages(cb, args, n, C, image);
    height = (int)HostRTableUpperBound(cb, orbArgAt(cb, args, n, 2), 1);
    width = (int)HostRTableUpperBound(cb, orbArgAt(cb, args, n, 2), 2);
    dstW = (int)HostRTableUpperBound(cb, orbArgAt(cb, args, n, 1), 2);
    readBank(cb, args, n, &b);

    leftLow = (b.lenLow - 1 - b.anchorLow) / 2;
    rightLow = (b.anchorLow + 1) / 2;
    leftHigh = (b.lenHigh - 1 - b.anchorHigh) / 2;
    rightHigh = (b.anchorHigh + 1) / 2;
    wL = width + leftLow + rightLow;
    wH = width + leftHigh + rightHigh;
    hL = height + leftLow + rightLow;
    hH = height + leftHigh + rightHigh;

    /* The output takes twice the subbands' size, in rows of dstW pixels. */
    for (k = 2; k <= 5; ++k)
        if (!holds(cb, orbArgAt(cb, args, n, k), height, width, C)) {
            HostError(cb, MSG_SIZES);
            return 0;
        }
    if (width > 0 && height > 0 && (2L * width > dstW || !holds(cb, orbArgAt(cb, args, n, 1), 2L * height, dstW, C))) {
        HostError(cb, MSG_SIZES);
        return 0;
    }

    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippiWTInvGetSize_32f(C, b.lenLow, b.anchorLow, b.lenHigh, b.anchorHigh, &specSize,
                                               &bufSize)))
        return 0;
    spec = orbMalloc8u(&held, specSize);
    if (!orbAllocated(cb, &held))
        return 0;
    status = C == 3 ? ippiWTInvInit_32f_C3R((IppiWTInvSpec_32f_C3R *)spec, b.low, b.lenLow, b.anchorLow, b.high,
                                            b.lenHigh, b.anchorHigh)
                    : ippiWTInvInit_32f_C1R((IppiWTInvSpec_32f_C1R *)spec, b.low, b.lenLow, b.anchorLow, b.high,
                                            b.lenHigh, b.anchorHigh);
    if (!orbInitOk(cb, &held, status))
        return 0;

    /* Approximation, X, Y, XY: sizes and (top, left) borders. */
    bw[0] = wL; bh[0] = hL; top[0] = leftLow; lft[0] = leftLow;
    bw[1] = wL; bh[1] = hH; top[1] = leftLow; lft[1] = leftHigh;
    bw[2] = wH; bh[2] = hL; top[2] = leftHigh; lft[2] = leftLow;
    bw[3] = wH; bh[3] = hH; top[3] = leftHigh; lft[3] = leftHigh;
    margin = leftLow > leftHigh ? leftLow : leftHigh;
    if (margin < 0)
        margin = 0;
    for (k = 0; k < 4; ++k)
        band[k] = borderedImage(&held, bw[k], bh[k], margin, C, &step[k]);
    if (!orbAllocated(cb, &held))
        return 0;
    for (k = 0; k < 4; ++k)
        if (!orbInitOk(cb, &held, callBorder(border, image[k + 2], width * 4 * C, width, height, band[k], step[k],
                                             bw[k], bh[k], top[k], lft[k], &b)))
            return 0;
    buffer = orbMalloc8u(&held, bufSize);
    if (!orbAllocated(cb, &held))
        return 0;

    /* Rows counted in elements of each bordered width; X and Y take their
     * row and column offsets the other way round from their borders. */
    origin[0] = band[0] + (ptrdiff_t)C * ((ptrdiff_t)leftLow * wL + leftLow);
    origin[1] = band[1] + (ptrdiff_t)C * ((ptrdiff_t)leftHigh * wL + leftLow);
    origin[2] = band[2] + (ptrdiff_t)C * ((ptrdiff_t)leftLow * wH + leftHigh);
    origin[3] = band[3] + (ptrdiff_t)C * ((ptrdiff_t)leftHigh * wH + leftHigh);
    roi.width = width;
    roi.height = height;
    status = C == 3 ? ippiWTInv_32f_C3R(origin[0], step[0], origin[1], step[1], origin[2], step[2], origin[3],
                                        step[3], roi, image[1], dstW * 4 * C, (const IppiWTInvSpec_32f_C3R *)spec,
                                        buffer)
                    : ippiWTInv_32f_C1R(origin[0], step[0], origin[1], step[1], origin[2], step[2], origin[3],
                                        step[3], roi, image[1], dstW * 4 * C, (const IppiWTInvSpec_32f_C1R *)spec,
                                        buffer);
    if (!orbOk(cb, &held, status))
        return 0;
    orbRelease(&held);
    return 0;
}

/* ---- Exports ---- */

/* The workers may be called by the host directly, so each starts a call. */
ORB_API HostValue orbIppWTFwd_C1(HostCallbacks cb, ArgSeq args, OrbBorderFunc border)
{
    orbCallStart();
    return forward(cb, args, border, 1);
}

ORB_API HostValue orbIppWTFwd_C3(HostCallbacks cb, ArgSeq args, OrbBorderFunc border)
{
    orbCallStart();
    return forward(cb, args, border, 3);
}

ORB_API HostValue orbIppWTInv_C1(HostCallbacks cb, ArgSeq args, OrbBorderFunc border)
{
    orbCallStart();
    return inverse(cb, args, border, 1);
}

ORB_API HostValue orbIppWTInv_C3(HostCallbacks cb, ArgSeq args, OrbBorderFunc border)
{
    orbCallStart();
    return inverse(cb, args, border, 3);
}

/* The dispatching exports: the image's dimensions pick the worker, the
 * border type and those dimensions the border function. */
static HostValue dispatch(HostCallbacks cb, ArgSeq args, int imageArg, int isForward)
{
    int64_t n, borderType;
    int numDims;
    OrbBorderFunc border;

    orbCallStart();
    n = HostNumArgs(cb, args);
    numDims = HostRTableNumDimensions(cb, orbArgAt(cb, args, n, imageArg));
    borderType = GetInt(cb, orbArgAt(cb, args, n, 10));
    border = chooseBorderFunc((int)borderType, numDims);
    if (numDims == 2)
        return isForward ? orbIppWTFwd_C1(cb, args, border) : orbIppWTInv_C1(cb, args, border);
    if (numDims == 3)
        return isForward ? orbIppWTFwd_C3(cb, args, border) : orbIppWTInv_C3(cb, args, border);
    HostError(cb, MSG_DIMENSION);
    return 0;
}

ORB_API HostValue orbFwdDWT(HostCallbacks cb, ArgSeq args)
{
    return dispatch(cb, args, 5, 1);
}

ORB_API HostValue orbInvDWT(HostCallbacks cb, ArgSeq args)
{
    return dispatch(cb, args, 2, 0);
}
