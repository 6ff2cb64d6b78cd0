/* Canny edges and Hough lines of 8-bit images held in integer[1] matrices.
 *
 * The three exports are thin: no count check, no initialisation, results in
 * caller-supplied rtables and a null handle returned. They stay inside the
 * host's storage all the same: arguments beyond the count received read as
 * the null value; an image whose storage is smaller than its bounds say, or
 * a Canny destination smaller than the source, raises MSG_TOO_SMALL; the
 * Hough exports write no more lines than argument 1 has room for (a
 * maximum above that is lowered to it), and an output with no room at all
 * is handed over as a null pointer, which the backend refuses.
 */

#include "frame/frame.h"

#define MSG_TOO_SMALL "rtable is too small for the image"


/* An 8-bit image: its storage, height and width. */
typedef struct Image {
    Ipp8u *data;
    IppiSize size;
} Image;

static Image readImage(HostCallbacks cb, HostValue v)
{
    Image im;

    im.data = GetUInt1Matrix(cb, v);
    im.size.height = (int)HostRTableUpperBound(cb, v, 1);
    im.size.width = (int)HostRTableUpperBound(cb, v, 2);
    return im;
}

/* Whether v holds size.height rows of size.width bytes. */
static int holds(HostCallbacks cb, HostValue v, IppiSize size)
{
    if (size.width <= 0 || size.height <= 0)
        return 1; /* nothing is touched; the backend refuses the size */
    return orbStorageBytes(cb, v) / size.width >= size.height;
}

/* Storage of an output for items of itemBytes each: the pointer and how
 * many fit, or null when none does. */
static void *outputFor(HostCallbacks cb, HostValue v, int64_t itemBytes, int64_t *room)
{
    void *data = HostRTableData(cb, v);

    *room = orbStorageBytes(cb, v) / itemBytes;
    return *room > 0 ? data : NULL;
}

ORB_API HostValue orbCannyEdgeDetect(HostCallbacks cb, ArgSeq args)
{
    int64_t n, filter, normArg;
    Ipp8u *dst;
    Image src;
    IppiDifferentialKernel kernel;
    IppiMaskSize mask;
    Ipp32f low, high;
    OrbHeld held;
    int bufSize = 0;
    Ipp8u *buffer;

    orbCallStart();
    n = HostNumArgs(cb, args);
    dst = GetUInt1Matrix(cb, orbArgAt(cb, args, n, 1));
    src = readImage(cb, orbArgAt(cb, args, n, 2));
    filter = GetInt(cb, orbArgAt(cb, args, n, 3));
    kernel = filter == 1 || filter == 2 ? ippFilterSobel : ippFilterScharr;
    mask = filter == 2 ? ippMskSize5x5 : ippMskSize3x3;
    low = GetFloat4Value(cb, orbArgAt(cb, args, n, 4));
    high = GetFloat4Value(cb, orbArgAt(cb, args, n, 5));
    normArg = GetInt(cb, orbArgAt(cb, args, n, 6));
    if (!holds(cb, orbArgAt(cb, args, n, 2), src.size) || !holds(cb, orbArgAt(cb, args, n, 1), src.size)) {
        HostError(cb, MSG_TOO_SMALL);
        return 0;
    }

    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippiCannyBorderGetSize(src.size, kernel, mask, ipp8u, &bufSize)))
        return 0;
    buffer = orbMalloc8u(&held, bufSize);
    if (!orbAllocated(cb, &held))
        return 0;
    if (!orbOk(cb, &held,
               ippiCannyBorder_8u_C1R(src.data, src.size.width, dst, src.size.width, src.size, kernel, mask,
                                      ippBorderRepl, 0, low, high, normArg == 1 ? ippNormL1 : ippNormL2, buffer)))
        return 0;
    orbRelease(&held);
    return 0;
}

ORB_API HostValue orbHoughLineRegion(HostCallbacks cb, ArgSeq args)
{
    int64_t n, room, countRoom;
    IppPointPolar *lines, delta, region[2];
    Image src;
    int threshold, maxLines, bufSize = 0;
    int *lineCount;
    OrbHeld held;
    Ipp8u *buffer;
    IppStatus status;

    orbCallStart();
    n = HostNumArgs(cb, args);
    lines = (IppPointPolar *)outputFor(cb, orbArgAt(cb, args, n, 1), (int64_t)sizeof(IppPointPolar), &room);
    src = readImage(cb, orbArgAt(cb, args, n, 2));
    threshold = (int)GetInt(cb, orbArgAt(cb, args, n, 5));
    maxLines = (int)GetInt(cb, orbArgAt(cb, args, n, 10));
    delta.rho = GetFloat4Value(cb, orbArgAt(cb, args, n, 3));
    delta.theta = GetFloat4Value(cb, orbArgAt(cb, args, n, 4));
    region[0].rho = GetFloat4Value(cb, orbArgAt(cb, args, n, 6));
    region[0].theta = GetFloat4Value(cb, orbArgAt(cb, args, n, 8));
    region[1].rho = GetFloat4Value(cb, orbArgAt(cb, args, n, 7));
    region[1].theta = GetFloat4Value(cb, orbArgAt(cb, args, n, 9));
    lineCount = (int *)outputFor(cb, orbArgAt(cb, args, n, 11), (int64_t)sizeof(int), &countRoom);
    if (!holds(cb, orbArgAt(cb, args, n, 2), src.size)) {
        HostError(cb, MSG_TOO_SMALL);
        return 0;
    }

    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippiHoughLineGetSize_8u_C1R(src.size, delta, maxLines, &bufSize)))
        return 0;
    /* Allocated whatever its size. */
    buffer = ippsMalloc_8u(bufSize);
    if (buffer == NULL) {
        HostError(cb, MSG_OUT_OF_MEMORY);
        return 0;
    }
    if (room < maxLines)
        maxLines = (int)room;
    status = ippiHoughLine_Region_8u32f_C1R(src.data, src.size.width, src.size, lines, region, maxLines, lineCount,
                                            delta, threshold, buffer);
    ippsFree(buffer);
    orbOk(cb, &held, status);
    return 0;
}

ORB_API HostValue orbProbabilisticHoughLine(HostCallbacks cb, ArgSeq args)
{
    int64_t n, room, countRoom;
    IppiPoint *segments;
    IppPointPolar delta;
    Image src;
    int threshold, lineLength, lineGap, maxLines, specSize = 0, bufSize = 0;
    int *lineCount;
    OrbHeld held;
    Ipp8u *buffer, *spec;
    IppStatus status;

    orbCallStart();
    n = HostNumArgs(cb, args);
    segments = (IppiPoint *)outputFor(cb, orbArgAt(cb, args, n, 1), 2 * (int64_t)sizeof(IppiPoint), &room);
    src = readImage(cb, orbArgAt(cb, args, n, 2));
    threshold = (int)GetInt(cb, orbArgAt(cb, args, n, 5));
    lineLength = (int)GetInt(cb, orbArgAt(cb, args, n, 6));
    lineGap = (int)GetInt(cb, orbArgAt(cb, args, n, 7));
    maxLines = (int)GetInt(cb, orbArgAt(cb, args, n, 8));
    (void)HostRTableNumElements(cb, orbArgAt(cb, args, n, 2));
    delta.rho = GetFloat4Value(cb, orbArgAt(cb, args, n, 3));
    delta.theta = GetFloat4Value(cb, orbArgAt(cb, args, n, 4));
    lineCount = (int *)outputFor(cb, orbArgAt(cb, args, n, 9), (int64_t)sizeof(int), &countRoom);
    if (!holds(cb, orbArgAt(cb, args, n, 2), src.size)) {
        HostError(cb, MSG_TOO_SMALL);
        return 0;
    }

    orbHeldInit(&held);
    if (!orbOk(cb, &held, ippiHoughProbLineGetSize_8u_C1R(src.size, delta, &specSize, &bufSize)))
        return 0;
    /* Both allocated whatever their sizes: the buffer first. */
    buffer = ippsMalloc_8u(bufSize);
    if (buffer == NULL) {
        HostError(cb, MSG_OUT_OF_MEMORY);
        return 0;
    }
    spec = ippsMalloc_8u(specSize);
    if (spec == NULL) {
        ippsFree(buffer);
        HostError(cb, MSG_OUT_OF_MEMORY);
        return 0;
    }
    status = ippiHoughProbLineInit_8u32f_C1R(src.size, delta, ippAlgHintNone, (IppiHoughProbSpec *)spec);
    if (status >= 0) {
        if (room < maxLines)
            maxLines = (int)room;
        status = ippiHoughProbLine_8u32f_C1R(src.data, src.size.width, src.size, threshold, lineLength, lineGap,
                                             segments, maxLines, lineCount, buffer, (const IppiHoughProbSpec *)spec);
    }
    ippsFree(spec);
    ippsFree(buffer);
    orbOk(cb, &held, status);
    return 0;
}
