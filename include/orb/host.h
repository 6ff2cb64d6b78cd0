/* Records and callbacks exchanged with the host.
 *
 * The host hands every export a table of function pointers; position N sits at
 * byte offset 8*N. The positions, the record layouts and the calling
 * conventions below are an ABI shared with the host: never renumber a position
 * or move a field. Only the positions named here are ever read.
 */
#ifndef ORB_HOST_H
#define ORB_HOST_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A host value: an immediate integer when bit 0 is set (word 2k+1 is k),
 * otherwise a pointer to an object whose first word is its header. */
typedef uint64_t HostValue;

/* Element 0 is the host's own header; arguments are elements 1..n. */
typedef HostValue *ArgSeq;

/* The callback table: read only, owned by the host. */
typedef void *const *HostCallbacks;

/* Object header: bits 0-31 length in words (header included), bits 32-37 kind. */
#define HOST_HEADER_LENGTH(h) ((uint32_t)((h) & 0xffffffffu))
#define HOST_HEADER_KIND(h) ((uint32_t)(((h) >> 32) & 0x3fu))

typedef enum HostValueKind {
    HOST_KIND_NEGINT = 1, /* also how an immediate negative integer classifies */
    HOST_KIND_POSINT = 2, /* also how an immediate non-negative integer classifies */
    HOST_KIND_PRODUCT = 14,
    HOST_KIND_SUM = 16,
    HOST_KIND_LIST = 32,
    HOST_KIND_RTABLE = 40
} HostValueKind;

/* Datatype codes of rtables, as the settings record holds them. */
typedef enum DatatypeCode {
    DT_ANYTHING = 0, /* host values */
    DT_PAIR = 1,     /* pairs of host values (re, im) */
    DT_INT1 = 2,
    DT_INT2 = 3,
    DT_INT4 = 4,
    DT_INT8 = 5,
    DT_FLOAT8 = 6,
    DT_COMPLEX8 = 7,
    DT_FLOAT4 = 8
} DatatypeCode;

#define RTABLE_RECTANGULAR 4

/* The 104-byte rtable settings record. The library reads and writes only the
 * four named fields; the padding belongs to the host and passes through. */
typedef struct RTableSettings {
    int32_t datatype;      /* byte 0: a DatatypeCode */
    uint8_t hostA[12];
    int32_t uninterpreted; /* byte 16: copied, never interpreted */
    int32_t storage;       /* byte 20: 4 = rectangular */
    uint8_t hostB[40];
    int32_t numDims;       /* byte 64 */
    uint8_t hostC[36];
} RTableSettings;

/* One rtable element, passed and returned by value in two integer registers. */
typedef struct RTableElement {
    int64_t w0;
    int64_t w1;
} RTableElement;

/* Complex results of the conversion callbacks: two doubles come back in
 * xmm0 and xmm1, two floats packed together in xmm0. */
typedef struct HostComplex64 {
    double re;
    double im;
} HostComplex64;
typedef struct HostComplex32 {
    float re;
    float im;
} HostComplex32;

typedef enum HostCallbackPosition {
    HOSTPOS_NEW_OBJECT = 1,
    HOSTPOS_ERROR = 5,
    HOSTPOS_IS_COMPLEX_NUMERIC = 13,
    HOSTPOS_IS_INTEGER = 14,
    HOSTPOS_IS_INTEGER8 = 15,
    HOSTPOS_IS_INTEGER16 = 16,
    HOSTPOS_IS_INTEGER32 = 17,
    HOSTPOS_IS_INTEGER64 = 18,
    HOSTPOS_IS_STRING = 20,
    HOSTPOS_IS_NUMERIC = 21,
    HOSTPOS_IS_RTABLE = 25,
    HOSTPOS_IS_NAME = 26,
    HOSTPOS_NEW_LIST = 30,
    HOSTPOS_LIST_ASSIGN = 31,
    HOSTPOS_TO_COMPLEX_FLOAT32 = 35,
    HOSTPOS_TO_COMPLEX_FLOAT64 = 36,
    HOSTPOS_TO_FLOAT32 = 38,
    HOSTPOS_TO_FLOAT64 = 39,
    HOSTPOS_TO_INTEGER8 = 40,
    HOSTPOS_TO_INTEGER16 = 41,
    HOSTPOS_TO_INTEGER32 = 42,
    HOSTPOS_TO_INTEGER64 = 43,
    HOSTPOS_TO_INTEGER = 45,
    HOSTPOS_TO_STRING = 47,
    HOSTPOS_NUM_ARGS = 48,
    HOSTPOS_RTABLE_ASSIGN = 51,
    HOSTPOS_RTABLE_CREATE = 55,
    HOSTPOS_RTABLE_DATA = 56,
    HOSTPOS_RTABLE_GET_DEFAULTS = 57,
    HOSTPOS_RTABLE_GET_SETTINGS = 58,
    HOSTPOS_RTABLE_NUM_ELEMENTS = 63,
    HOSTPOS_RTABLE_NUM_DIMENSIONS = 64,
    HOSTPOS_RTABLE_SELECT = 65,
    HOSTPOS_RTABLE_UPPER_BOUND = 74,
    HOSTPOS_FINISH_OBJECT = 79,
    HOSTPOS_FROM_COMPLEX_FLOAT64 = 87,
    HOSTPOS_NEW_EXPR_SEQ = 89,
    HOSTPOS_EXPR_SEQ_OF = 90,
    HOSTPOS_FROM_INTEGER = 91,
    HOSTPOS_FROM_INTEGER64 = 92,
    HOSTPOS_FROM_FLOAT64 = 93,
    HOSTPOS_NULL_VALUE = 95,
    HOSTPOS_FROM_STRING = 99,
    HOSTPOS_PRINTF = 118,
    HOSTPOS_RTABLE_ELEMENT_TO_VALUE = 224,
    HOSTPOS_COUNT = 225 /* a table must have at least this many slots */
} HostCallbackPosition;

/* Signatures of the callbacks, by position. */
typedef HostValue *(*HostNewObjectFn)(int64_t length, int64_t kind);
typedef void (*HostErrorFn)(const char *format, ...);
typedef int64_t (*HostTestFn)(HostValue v);
typedef HostValue *(*HostNewListFn)(int64_t count);
typedef void (*HostListAssignFn)(HostValue *list, int64_t index, HostValue v);
typedef HostComplex32 (*HostToComplexFloat32Fn)(HostValue v);
typedef HostComplex64 (*HostToComplexFloat64Fn)(HostValue v);
typedef float (*HostToFloat32Fn)(HostValue v);
typedef double (*HostToFloat64Fn)(HostValue v);
typedef int8_t (*HostToInteger8Fn)(HostValue v);
typedef int16_t (*HostToInteger16Fn)(HostValue v);
typedef int32_t (*HostToInteger32Fn)(HostValue v);
typedef int64_t (*HostToInteger64Fn)(HostValue v);
typedef const char *(*HostToStringFn)(HostValue v);
typedef int64_t (*HostNumArgsFn)(ArgSeq args);
typedef void (*HostRTableAssignFn)(HostValue rt, const int64_t *index, RTableElement e);
typedef HostValue (*HostRTableCreateFn)(RTableSettings *s, void *data, const int64_t *bounds);
typedef void *(*HostRTableDataFn)(HostValue rt);
typedef void (*HostRTableGetDefaultsFn)(RTableSettings *s);
typedef void (*HostRTableGetSettingsFn)(RTableSettings *s, HostValue rt);
typedef int64_t (*HostRTableNumElementsFn)(HostValue rt);
typedef int32_t (*HostRTableNumDimensionsFn)(HostValue rt);
typedef RTableElement (*HostRTableSelectFn)(HostValue rt, const int64_t *index);
typedef int64_t (*HostRTableUpperBoundFn)(HostValue rt, int64_t dim);
typedef HostValue (*HostFinishObjectFn)(HostValue *obj);
typedef HostValue (*HostFromComplexFloat64Fn)(double re, double im);
typedef HostValue *(*HostNewExprSeqFn)(int64_t count);
typedef HostValue (*HostExprSeqOfFn)(int64_t count, ...);
typedef HostValue (*HostFromInteger64Fn)(int64_t v);
typedef HostValue (*HostFromFloat64Fn)(double v);
typedef HostValue (*HostNullValueFn)(void);
typedef HostValue (*HostFromStringFn)(const char *text);
typedef void (*HostPrintfFn)(const char *format, ...);
typedef HostValue (*HostRTableElementToValueFn)(RTableElement e, int32_t datatype, HostValue rt);

#ifdef __cplusplus
}
static_assert(sizeof(RTableSettings) == 104, "the settings record is 104 bytes");
static_assert(offsetof(RTableSettings, datatype) == 0, "datatype at byte 0");
static_assert(offsetof(RTableSettings, uninterpreted) == 16, "uninterpreted code at byte 16");
static_assert(offsetof(RTableSettings, storage) == 20, "storage at byte 20");
static_assert(offsetof(RTableSettings, numDims) == 64, "dimensions at byte 64");
static_assert(sizeof(RTableElement) == 16, "the element cell is two words");
static_assert(sizeof(HostComplex32) == 8 && sizeof(HostComplex64) == 16, "complex records");
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
