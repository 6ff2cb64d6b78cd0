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

/* Steps 1 and 2 of every export: the argument count, then initialisation. */
static inline int64_t orbBegin(HostCallbacks cb, ArgSeq args)
{
    int64_t n = HostNumArgs(cb, args);
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

/* Lengths go to the backend as the low 32 bits of the element count. */
static inline int orbLen32(int64_t count)
{
    return (int)(uint32_t)(uint64_t)count;
}

#endif
