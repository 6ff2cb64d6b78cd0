/* The common shape of an export: texts, the start of every call, and the
 * helpers every family shares. */
#ifndef ORB_FRAME_FRAME_H
#define ORB_FRAME_FRAME_H

#include "frame/callbacks.h"
#include "orb/accessors.h"
#include "orb/exports.h"

/* Arity texts. They name the accepted counts loosely; each export keeps the
 * text it was given even where it accepts a different count. */
#define ARITY_ONE "expecting one argument, but received %1"
#define ARITY_TWO "expecting two arguments, but received %1"
#define ARITY_THREE "expecting three arguments, but received %1"
#define ARITY_FOUR "expecting four arguments, but received %1"
#define ARITY_FIVE "expecting five arguments, but received %1"
#define ARITY_SIX "expecting six arguments, but received %1"
#define ARITY_ONE_OR_TWO "expecting one or two arguments, but received %1"
#define ARITY_TWO_OR_THREE "expecting two or three arguments, but received %1"
#define ARITY_THREE_OR_FOUR "expecting three or four arguments, but received %1"
#define ARITY_FIVE_OR_SIX "expecting five or six arguments, but received %1"
#define ARITY_TWO_TO_FOUR "expecting from two to four arguments, but received %1"
#define ARITY_FOUR_TO_SIX "expecting from four to six arguments, but received %1"
#define ARITY_IMPOSSIBLE "impossible number of arguments"

/* Shared validation texts. */
#define MSG_SAME_DATATYPE "rtables must have the same datatype"
#define MSG_SAME_LENGTH "rtables must have the same number of elements"
#define MSG_NOT_SUPPORTED "datatype not supported"
#define MSG_COMBINATION "datatype combination not supported"
#define MSG_UNEXPECTED_DATATYPE "unexpected datatype (%1)"
#define MSG_OUT_OF_MEMORY "out of memory"

/* Raises that return.
 *
 * A real host never returns from its error raise. One that does makes each
 * raise's fallback carry on with a value that failed its check: a typed
 * accessor hands back storage of another datatype, the constant family goes
 * on past a length mismatch. Run as written, a kernel would then read or
 * write outside what the host gave. So the frame notes every raise of the
 * current call, and before a kernel runs the export asks orbFits about each
 * rtable it hands over: without a raise the answer is yes and costs nothing;
 * after one, the count is trimmed to what every operand really has, and the
 * kernel is skipped where an operand's elements differ in size from what it
 * reads. The export still returns the fallback value it always did.
 *
 * The note is cleared as an export starts (orbBegin, or orbCallStart in an
 * export that does not use it), so nothing carries over between calls. */
void orbCallStart(void);

/* Says whether a kernel may run over v as elements of datatype code, trimming
 * *count to v's element count after a raise (see above). */
int orbFits(HostCallbacks cb, int64_t *count, HostValue v, int64_t code);

/* orbFits for arguments first to last, all read as datatype code. */
int orbAllFit(HostCallbacks cb, int64_t *count, ArgSeq args, int first, int last, int64_t code);

/* Bytes of storage behind v: 0 for anything but a rectangular rtable of
 * numbers. For exports that read matrices and images by their own sizes. */
int64_t orbStorageBytes(HostCallbacks cb, HostValue v);

/* Argument i, or the null value beyond the count n received, for the exports
 * that do not check their count. */
static inline HostValue orbArgAt(HostCallbacks cb, ArgSeq args, int64_t n, int i)
{
    return i <= n ? args[i] : HostNullValue(cb);
}

/* Steps 1 and 2 of every export: the argument count, then initialisation. */
static inline int64_t orbBegin(HostCallbacks cb, ArgSeq args)
{
    int64_t n;

    orbCallStart();
    n = HostNumArgs(cb, args);
    orbInit(cb);
    return n;
}

/* Raises an arity text with the count received. */
static inline void orbArityError(HostCallbacks cb, const char *text, int64_t n)
{
    HostError(cb, text, HostFromInteger(cb, n));
}

/* Argument 1 of the element-wise families: the shape check, then its element
 * count and storage. Returns the datatype code. */
int64_t orbTarget(HostCallbacks cb, HostValue v, int64_t *count, void **data);

/* Reads v with the sample accessor of datatype code (which checks that v has
 * that datatype) and gives its element count. Integer widths go through the
 * signed accessor; the unsigned one makes the same check. Only for codes 2 to
 * 8. */
void *orbSampleOf(HostCallbacks cb, HostValue v, int64_t code, int64_t *count);

/* Raises the element-count text unless the counts agree; says whether they
 * did, so the caller can skip the computation. */
static inline int orbCountsAgree(HostCallbacks cb, int agree)
{
    if (!agree)
        HostError(cb, MSG_SAME_LENGTH);
    return agree;
}

/* A datatype code as the enumeration, for switches that name every case; a
 * code outside it is treated like host values, which nothing here takes. */
static inline DatatypeCode orbDatatype(int64_t code)
{
    return code >= DT_ANYTHING && code <= DT_FLOAT4 ? (DatatypeCode)code : DT_ANYTHING;
}

/* What a per-type switch gives for an operation and a datatype that do not
 * meet. The family's list of datatypes keeps such a call from being made;
 * if the two ever disagree, the export reports this error instead of
 * returning with nothing written. */
#define ORB_NO_KERNEL ippStsDataTypeErr

/* Lengths go to the backend as the low 32 bits of the element count. */
static inline int orbLen32(int64_t count)
{
    return (int)(uint32_t)(uint64_t)count;
}

/* Scratch memory.
 *
 * An export that needs backend memory keeps every block in one OrbHeld and
 * reads as these steps, so that no path leaves a block behind:
 *
 *   OrbHeld held;
 *   int specSize = 0, workSize = 0;     // sizes start at 0
 *   Ipp8u *spec, *work;
 *
 *   orbHeldInit(&held);
 *   if (!orbOk(cb, &held, ippsFooGetSize(..., &specSize, &workSize)))
 *       return fallback;                // a failed query, raised
 *   spec = orbMalloc8u(&held, specSize); // null, not allocated, for sizes <= 0
 *   work = orbMalloc8u(&held, workSize);
 *   if (!orbAllocated(cb, &held))
 *       return fallback;                // all freed, then "out of memory"
 *   if (!orbInitOk(cb, &held, ippsFooInit(..., spec, work)))
 *       return fallback;                // all freed, then any non-zero status raised
 *   if (!orbOk(cb, &held, ippsFoo(..., spec, work)))
 *       return fallback;                // all freed, then the error raised
 *   orbRelease(&held);
 *   return result;
 *
 * After a failed allocation the later ones of the same call allocate nothing,
 * so the raise follows the first null as if it came straight after it. */
#define ORB_HELD_MAX 8

typedef enum OrbBlockKind { ORB_VECTOR, ORB_IMAGE } OrbBlockKind;

typedef struct OrbHeld {
    void *block[ORB_HELD_MAX];
    OrbBlockKind kind[ORB_HELD_MAX];
    int count;  /* blocks held */
    int failed; /* an allocation returned null */
} OrbHeld;

void orbHeldInit(OrbHeld *held);

/* Each returns a new block, held, or null: for a length of zero or less
 * (nothing allocated, not a failure) or when the allocator failed. */
Ipp8u *orbMalloc8u(OrbHeld *held, int len);
Ipp32f *orbMalloc32f(OrbHeld *held, int len);
Ipp32fc *orbMalloc32fc(OrbHeld *held, int len);
Ipp64f *orbMalloc64f(OrbHeld *held, int len);
/* One- and three-channel float images; *step receives the row step. */
Ipp32f *orbMallocImage32f(OrbHeld *held, int width, int height, int channels, int *step);

/* Frees every held block (the backend's free takes null too). */
void orbRelease(OrbHeld *held);

/* Frees one held block ahead of the others (a buffer needed only by an
 * initialiser, a copy needed only by a border step); null or a block not
 * held does nothing. */
void orbReleaseBlock(OrbHeld *held, void *block);

/* After a failed allocation: frees everything, raises "out of memory" and
 * says 0. Otherwise says 1. */
int orbAllocated(HostCallbacks cb, OrbHeld *held);

/* A negative status frees everything, goes to orbIppError and gives 0. */
int orbOk(HostCallbacks cb, OrbHeld *held, IppStatus status);

/* Initialisers fail on any status other than success, warnings included. */
int orbInitOk(HostCallbacks cb, OrbHeld *held, IppStatus status);

#endif
