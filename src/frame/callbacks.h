/* Typed calls through the host's callback table.
 *
 * Each wrapper reads one position of the table and calls it with the
 * signature the host gives that position. The variadic ones (error, print,
 * expression sequence) are macros so the arguments pass straight through.
 */
#ifndef ORB_FRAME_CALLBACKS_H
#define ORB_FRAME_CALLBACKS_H

#include "orb/host.h"

#define HOSTFN(cb, pos, type) ((type)(cb)[pos])

/* Notes a raise of the current call (see orbFits in frame.h). */
void orbNoteRaise(void);

/* Raises an error in the host; a real host never returns from it. */
#define HostError(cb, ...) (orbNoteRaise(), HOSTFN(cb, HOSTPOS_ERROR, HostErrorFn)(__VA_ARGS__))
#define HostPrintf(cb, ...) (HOSTFN(cb, HOSTPOS_PRINTF, HostPrintfFn)(__VA_ARGS__))
#define HostExprSeqOf(cb, ...) (HOSTFN(cb, HOSTPOS_EXPR_SEQ_OF, HostExprSeqOfFn)(__VA_ARGS__))

static inline HostValue *HostNewObject(HostCallbacks cb, int64_t length, int64_t kind)
{
    return HOSTFN(cb, HOSTPOS_NEW_OBJECT, HostNewObjectFn)(length, kind);
}
static inline int64_t HostIsComplexNumeric(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_COMPLEX_NUMERIC, HostTestFn)(v);
}
static inline int64_t HostIsInteger(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_INTEGER, HostTestFn)(v);
}
static inline int64_t HostIsInteger8(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_INTEGER8, HostTestFn)(v);
}
static inline int64_t HostIsInteger16(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_INTEGER16, HostTestFn)(v);
}
static inline int64_t HostIsInteger32(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_INTEGER32, HostTestFn)(v);
}
static inline int64_t HostIsInteger64(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_INTEGER64, HostTestFn)(v);
}
static inline int64_t HostIsString(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_STRING, HostTestFn)(v);
}
static inline int64_t HostIsNumeric(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_NUMERIC, HostTestFn)(v);
}
static inline int64_t HostIsRTable(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_RTABLE, HostTestFn)(v);
}
static inline int64_t HostIsName(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_IS_NAME, HostTestFn)(v);
}
static inline HostValue *HostNewList(HostCallbacks cb, int64_t count)
{
    return HOSTFN(cb, HOSTPOS_NEW_LIST, HostNewListFn)(count);
}
static inline void HostListAssign(HostCallbacks cb, HostValue *list, int64_t index, HostValue v)
{
    HOSTFN(cb, HOSTPOS_LIST_ASSIGN, HostListAssignFn)(list, index, v);
}
static inline HostComplex32 HostToComplexFloat32(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_COMPLEX_FLOAT32, HostToComplexFloat32Fn)(v);
}
static inline HostComplex64 HostToComplexFloat64(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_COMPLEX_FLOAT64, HostToComplexFloat64Fn)(v);
}
static inline float HostToFloat32(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_FLOAT32, HostToFloat32Fn)(v);
}
static inline double HostToFloat64(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_FLOAT64, HostToFloat64Fn)(v);
}
static inline int8_t HostToInteger8(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_INTEGER8, HostToInteger8Fn)(v);
}
static inline int16_t HostToInteger16(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_INTEGER16, HostToInteger16Fn)(v);
}
static inline int32_t HostToInteger32(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_INTEGER32, HostToInteger32Fn)(v);
}
static inline int64_t HostToInteger64(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_INTEGER64, HostToInteger64Fn)(v);
}
static inline int64_t HostToInteger(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_INTEGER, HostToInteger64Fn)(v);
}
static inline const char *HostToString(HostCallbacks cb, HostValue v)
{
    return HOSTFN(cb, HOSTPOS_TO_STRING, HostToStringFn)(v);
}
static inline int64_t HostNumArgs(HostCallbacks cb, ArgSeq args)
{
    return HOSTFN(cb, HOSTPOS_NUM_ARGS, HostNumArgsFn)(args);
}
static inline void HostRTableAssign(HostCallbacks cb, HostValue rt, const int64_t *index, RTableElement e)
{
    HOSTFN(cb, HOSTPOS_RTABLE_ASSIGN, HostRTableAssignFn)(rt, index, e);
}
static inline HostValue HostRTableCreate(HostCallbacks cb, RTableSettings *s, void *data, const int64_t *bounds)
{
    return HOSTFN(cb, HOSTPOS_RTABLE_CREATE, HostRTableCreateFn)(s, data, bounds);
}
static inline void *HostRTableData(HostCallbacks cb, HostValue rt)
{
    return HOSTFN(cb, HOSTPOS_RTABLE_DATA, HostRTableDataFn)(rt);
}
static inline void HostRTableGetDefaults(HostCallbacks cb, RTableSettings *s)
{
    HOSTFN(cb, HOSTPOS_RTABLE_GET_DEFAULTS, HostRTableGetDefaultsFn)(s);
}
static inline void HostRTableGetSettings(HostCallbacks cb, RTableSettings *s, HostValue rt)
{
    HOSTFN(cb, HOSTPOS_RTABLE_GET_SETTINGS, HostRTableGetSettingsFn)(s, rt);
}
static inline int64_t HostRTableNumElements(HostCallbacks cb, HostValue rt)
{
    return HOSTFN(cb, HOSTPOS_RTABLE_NUM_ELEMENTS, HostRTableNumElementsFn)(rt);
}
static inline int32_t HostRTableNumDimensions(HostCallbacks cb, HostValue rt)
{
    return HOSTFN(cb, HOSTPOS_RTABLE_NUM_DIMENSIONS, HostRTableNumDimensionsFn)(rt);
}
static inline RTableElement HostRTableSelect(HostCallbacks cb, HostValue rt, const int64_t *index)
{
    return HOSTFN(cb, HOSTPOS_RTABLE_SELECT, HostRTableSelectFn)(rt, index);
}
static inline int64_t HostRTableUpperBound(HostCallbacks cb, HostValue rt, int64_t dim)
{
    return HOSTFN(cb, HOSTPOS_RTABLE_UPPER_BOUND, HostRTableUpperBoundFn)(rt, dim);
}
static inline HostValue HostFinishObject(HostCallbacks cb, HostValue *obj)
{
    return HOSTFN(cb, HOSTPOS_FINISH_OBJECT, HostFinishObjectFn)(obj);
}
static inline HostValue HostFromComplexFloat64(HostCallbacks cb, double re, double im)
{
    return HOSTFN(cb, HOSTPOS_FROM_COMPLEX_FLOAT64, HostFromComplexFloat64Fn)(re, im);
}
static inline HostValue *HostNewExprSeq(HostCallbacks cb, int64_t count)
{
    return HOSTFN(cb, HOSTPOS_NEW_EXPR_SEQ, HostNewExprSeqFn)(count);
}
static inline HostValue HostFromInteger(HostCallbacks cb, int64_t v)
{
    return HOSTFN(cb, HOSTPOS_FROM_INTEGER, HostFromInteger64Fn)(v);
}
static inline HostValue HostFromInteger64(HostCallbacks cb, int64_t v)
{
    return HOSTFN(cb, HOSTPOS_FROM_INTEGER64, HostFromInteger64Fn)(v);
}
static inline HostValue HostFromFloat64(HostCallbacks cb, double v)
{
    return HOSTFN(cb, HOSTPOS_FROM_FLOAT64, HostFromFloat64Fn)(v);
}
static inline HostValue HostNullValue(HostCallbacks cb)
{
    return HOSTFN(cb, HOSTPOS_NULL_VALUE, HostNullValueFn)();
}
static inline HostValue HostFromString(HostCallbacks cb, const char *text)
{
    return HOSTFN(cb, HOSTPOS_FROM_STRING, HostFromStringFn)(text);
}
static inline HostValue HostRTableElementToValue(HostCallbacks cb, RTableElement e, int32_t datatype,
                                                 HostValue rt)
{
    return HOSTFN(cb, HOSTPOS_RTABLE_ELEMENT_TO_VALUE, HostRTableElementToValueFn)(e, datatype, rt);
}

#endif
