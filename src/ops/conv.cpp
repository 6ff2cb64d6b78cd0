/* The sliding product-sum over lists and rtables of any element kind.
 *
 * Element i of the result is the sum over j of A[j] * b[i + j - 1], where A
 * is the first sequence as given (orbConv) or reversed (orbCorr), for every
 * position where the first sequence lies wholly inside the second. General
 * host values give the host's own sum and product objects; rtables of one
 * hardware datatype are summed natively.
 *
 * The native loops run across output elements: each vector lane is one
 * output, and every lane adds its products in the order j = 1..na starting
 * from 0, with separate multiplies and adds, so the results are bit for bit
 * those of the sequential rule.
 */
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "ops/conv.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <stddef.h>
#include <stdint.h>

HWY_BEFORE_NAMESPACE();
namespace orb_slide::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/* A product passes through here before it is added: the compiler may not
 * fuse the multiply into the add (one rounding instead of two) when it
 * cannot see that the value is a product. */
template <typename T>
HWY_INLINE T Kept(T x)
{
    asm("" : "+x"(x));
    return x;
}

template <class V>
HWY_INLINE V KeptV(V v)
{
#if HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_EMU128
    asm("" : "+v"(v.raw));
#endif
    return v;
}

template <class D, class V>
HWY_INLINE V AddProduct(D, V s, V a, V b)
{
    return hn::Add(s, KeptV(hn::Mul(a, b)));
}

/* out[i] = sum over j of A[j] * b[i + j], A[j] = a[rev ? na - 1 - j : j]. */
template <typename T>
HWY_INLINE T SlideOne(const T *a, int64_t na, int rev, const T *b, int64_t i)
{
    T s = T(0);
    for (int64_t j = 0; j < na; ++j)
        s += Kept((rev ? a[na - 1 - j] : a[j]) * b[i + j]);
    return s;
}

template <typename T>
HWY_INLINE void SlideReal(const T *a, int64_t na, int rev, const T *b, T *out, int64_t m)
{
    const hn::ScalableTag<T> d;
    const int64_t N = int64_t(hn::Lanes(d));
    int64_t i = 0;
    /* Eight vectors of outputs at once: enough independent sums to keep
     * the adders busy while each waits on its own previous add. */
    for (; i + 8 * N <= m; i += 8 * N) {
        auto s0 = hn::Zero(d), s1 = hn::Zero(d), s2 = hn::Zero(d), s3 = hn::Zero(d);
        auto s4 = hn::Zero(d), s5 = hn::Zero(d), s6 = hn::Zero(d), s7 = hn::Zero(d);
        for (int64_t j = 0; j < na; ++j) {
            const auto aj = hn::Set(d, rev ? a[na - 1 - j] : a[j]);
            const T *p = b + i + j;
            s0 = AddProduct(d, s0, aj, hn::LoadU(d, p));
            s1 = AddProduct(d, s1, aj, hn::LoadU(d, p + N));
            s2 = AddProduct(d, s2, aj, hn::LoadU(d, p + 2 * N));
            s3 = AddProduct(d, s3, aj, hn::LoadU(d, p + 3 * N));
            s4 = AddProduct(d, s4, aj, hn::LoadU(d, p + 4 * N));
            s5 = AddProduct(d, s5, aj, hn::LoadU(d, p + 5 * N));
            s6 = AddProduct(d, s6, aj, hn::LoadU(d, p + 6 * N));
            s7 = AddProduct(d, s7, aj, hn::LoadU(d, p + 7 * N));
        }
        hn::StoreU(s0, d, out + i);
        hn::StoreU(s1, d, out + i + N);
        hn::StoreU(s2, d, out + i + 2 * N);
        hn::StoreU(s3, d, out + i + 3 * N);
        hn::StoreU(s4, d, out + i + 4 * N);
        hn::StoreU(s5, d, out + i + 5 * N);
        hn::StoreU(s6, d, out + i + 6 * N);
        hn::StoreU(s7, d, out + i + 7 * N);
    }
    for (; i + N <= m; i += N) {
        auto s = hn::Zero(d);
        for (int64_t j = 0; j < na; ++j)
            s = AddProduct(d, s, hn::Set(d, rev ? a[na - 1 - j] : a[j]), hn::LoadU(d, b + i + j));
        hn::StoreU(s, d, out + i);
    }
    for (; i < m; ++i)
        out[i] = SlideOne(a, na, rev, b, i);
}

void SlideF64(const double *a, int64_t na, int rev, const double *b, double *out, int64_t m)
{
    SlideReal(a, na, rev, b, out, m);
}

void SlideF32(const float *a, int64_t na, int rev, const float *b, float *out, int64_t m)
{
    SlideReal(a, na, rev, b, out, m);
}

/* Complex values as (re, im) pairs of doubles; the product is the ordinary
 * one: re = ar*br - ai*bi, im = ar*bi + ai*br. */
HWY_INLINE void SlideComplexOne(const double *a, int64_t na, int rev, const double *b, double *out, int64_t i)
{
    double re = 0.0, im = 0.0;
    for (int64_t j = 0; j < na; ++j) {
        const double *aj = a + 2 * (rev ? na - 1 - j : j);
        const double *bj = b + 2 * (i + j);
        re += Kept(aj[0] * bj[0]) - Kept(aj[1] * bj[1]);
        im += Kept(aj[0] * bj[1]) + Kept(aj[1] * bj[0]);
    }
    out[2 * i] = re;
    out[2 * i + 1] = im;
}

void SlideC64(const double *a, int64_t na, int rev, const double *b, double *out, int64_t m)
{
    int64_t i = 0;
#if HWY_TARGET != HWY_SCALAR
    /* A vector holds N/2 outputs, each as its (re, im) lanes. With b's
     * lanes (br, bi) and their swap (bi, br), ar*(br, bi) + (-ai, ai)*(bi, br)
     * is (ar*br - ai*bi, ar*bi + ai*br) exactly: adding a negated product is
     * the subtraction. */
    const hn::CappedTag<double, 4> d;
    const int64_t N = int64_t(hn::Lanes(d));
    const int64_t C = N / 2;
    for (; i + 4 * C <= m; i += 4 * C) {
        auto s0 = hn::Zero(d), s1 = hn::Zero(d), s2 = hn::Zero(d), s3 = hn::Zero(d);
        for (int64_t j = 0; j < na; ++j) {
            const double *aj = a + 2 * (rev ? na - 1 - j : j);
            const auto ar = hn::Set(d, aj[0]);
            const auto ai = hn::OddEven(hn::Set(d, aj[1]), hn::Set(d, -aj[1]));
            const double *p = b + 2 * (i + j);
            const auto b0 = hn::LoadU(d, p), b1 = hn::LoadU(d, p + N);
            const auto b2 = hn::LoadU(d, p + 2 * N), b3 = hn::LoadU(d, p + 3 * N);
            s0 = hn::Add(s0, hn::Add(KeptV(hn::Mul(ar, b0)), KeptV(hn::Mul(ai, hn::Reverse2(d, b0)))));
            s1 = hn::Add(s1, hn::Add(KeptV(hn::Mul(ar, b1)), KeptV(hn::Mul(ai, hn::Reverse2(d, b1)))));
            s2 = hn::Add(s2, hn::Add(KeptV(hn::Mul(ar, b2)), KeptV(hn::Mul(ai, hn::Reverse2(d, b2)))));
            s3 = hn::Add(s3, hn::Add(KeptV(hn::Mul(ar, b3)), KeptV(hn::Mul(ai, hn::Reverse2(d, b3)))));
        }
        double *o = out + 2 * i;
        hn::StoreU(s0, d, o);
        hn::StoreU(s1, d, o + N);
        hn::StoreU(s2, d, o + 2 * N);
        hn::StoreU(s3, d, o + 3 * N);
    }
#endif
    for (; i < m; ++i)
        SlideComplexOne(a, na, rev, b, out, i);
}

}  // namespace orb_slide::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "frame/frame.h"

namespace orb_slide {
HWY_EXPORT(SlideF64);
HWY_EXPORT(SlideF32);
HWY_EXPORT(SlideC64);
}  // namespace orb_slide

#define MSG_KINDS "arguments must be either lists or one-dimensional rtables"
#define MSG_LONGER "first argument must have no more elements than the second"
#define MSG_RTABLE_DIMS "rtable arguments must be one-dimensional"
#define MSG_DIMS "arguments must be one-dimensional"

/* Immediate integers as the host encodes them: 2k+1 stands for k. */
#define IMM_ZERO ((HostValue)1)
#define IMM_ONE ((HostValue)3)
#define IMM_MINUS_ONE (~(HostValue)0)

#define KIND_MASK 0x3f00000000ull

/* The kind of a host value by its bits: immediates by sign, objects by the
 * kind field of their header word. */
static int64_t kindOf(HostValue v)
{
    if (v & 1)
        return (int64_t)v < 0 ? HOST_KIND_NEGINT : HOST_KIND_POSINT;
    if (v == 0)
        return 0;
    return (int64_t)((*(const uint64_t *)v & KIND_MASK) >> 32);
}

/* A list's elements: the sequence behind word 1, whose length counts its
 * header word. */
static const HostValue *listElements(HostValue list, int64_t *count)
{
    const HostValue *seq = (const HostValue *)((const HostValue *)list)[1];

    *count = (int64_t)(uint32_t)(seq[0] & 0xffffffffu) - 1;
    return seq + 1;
}

static HostValue newPair(HostCallbacks cb, int64_t kind, HostValue x, HostValue cx, HostValue y, HostValue cy)
{
    HostValue *o = HostNewObject(cb, 5, kind);

    o[1] = x;
    o[2] = cx;
    o[3] = y;
    o[4] = cy;
    return HostFinishObject(cb, o);
}

/* x^1 * y^1 */
static HostValue product(HostCallbacks cb, HostValue x, HostValue y)
{
    return newPair(cb, HOST_KIND_PRODUCT, x, IMM_ONE, y, IMM_ONE);
}

/* x + c*y, c an immediate coefficient */
static HostValue plus(HostCallbacks cb, HostValue x, HostValue y, HostValue c)
{
    return newPair(cb, HOST_KIND_SUM, x, IMM_ONE, y, c);
}

/* One operand of the general sums: a list's elements, or an rtable's read
 * one by one (converted to host values in the list paths, raw in the
 * rtable path of host values). */
typedef enum SeqForm { SEQ_LIST, SEQ_CONVERTED, SEQ_RAW } SeqForm;

typedef struct Seq {
    SeqForm form;
    HostValue v;
    const HostValue *elements; /* SEQ_LIST */
    int32_t datatype;          /* SEQ_CONVERTED */
    int64_t count;
} Seq;

/* Element k (from 0), fetched afresh on every use. */
static HostValue fetch(HostCallbacks cb, const Seq *s, int64_t k)
{
    int64_t index[1];
    RTableElement e;

    if (s->form == SEQ_LIST)
        return s->elements[k];
    index[0] = k + 1;
    e = HostRTableSelect(cb, s->v, index);
    if (s->form == SEQ_RAW)
        return (HostValue)e.w0;
    return HostRTableElementToValue(cb, e, s->datatype, s->v);
}

/* Result element i as the host's sum of products, built left to right
 * from the integer 0; the first factor is always the first sequence's. */
static HostValue symbolicSum(HostCallbacks cb, const Seq *a, const Seq *b, int64_t i, int rev)
{
    HostValue acc = IMM_ZERO;
    int64_t j;

    for (j = 0; j < a->count; ++j) {
        HostValue x = fetch(cb, a, rev ? a->count - 1 - j : j);
        HostValue y = fetch(cb, b, i + j);
        acc = plus(cb, acc, product(cb, x, y), IMM_ONE);
    }
    return acc;
}

/* The list result of the list paths. */
static HostValue symbolicList(HostCallbacks cb, HostValue *list, const Seq *a, const Seq *b, int rev)
{
    int64_t m = b->count - a->count + 1, i;

    for (i = 0; i < m; ++i)
        HostListAssign(cb, list, i + 1, symbolicSum(cb, a, b, i, rev));
    return HostFinishObject(cb, (HostValue *)list);
}

static void listSeq(Seq *s, HostValue v)
{
    s->form = SEQ_LIST;
    s->v = v;
    s->elements = listElements(v, &s->count);
    s->datatype = 0;
}

/* A list with an rtable, either way round: the result list is taken first,
 * then the rtable's shape is checked. */
static HostValue mixedSum(HostCallbacks cb, HostValue a, HostValue b, int rev, int rtableFirst)
{
    HostValue rt = rtableFirst ? a : b;
    Seq sl, sr;
    RTableSettings s;
    HostValue *list;

    listSeq(&sl, rtableFirst ? b : a);
    sr.form = SEQ_CONVERTED;
    sr.v = rt;
    sr.elements = NULL;
    sr.count = HostRTableNumElements(cb, rt);
    list = HostNewList(cb, rtableFirst ? sl.count - sr.count + 1 : sr.count - sl.count + 1);
    HostRTableGetSettings(cb, &s, rt);
    if (s.numDims != 1) {
        HostError(cb, MSG_RTABLE_DIMS);
        return 0;
    }
    sr.datatype = s.datatype;
    return rtableFirst ? symbolicList(cb, list, &sr, &sl, rev) : symbolicList(cb, list, &sl, &sr, rev);
}

static HostValue ListByRTableSum(HostCallbacks cb, HostValue a, HostValue b, int rev)
{
    return mixedSum(cb, a, b, rev, 0);
}

static HostValue RTableByListSum(HostCallbacks cb, HostValue a, HostValue b, int rev)
{
    return mixedSum(cb, a, b, rev, 1);
}

/* Integers of each width sum with wrap-around: arithmetic modulo 2^64 on
 * the sign-extended elements, cut to the width at the end, wraps exactly as
 * arithmetic in the width would at every step. */
static int64_t narrow(uint64_t x, DatatypeCode code)
{
    switch (code) {
    case DT_INT1: return (int8_t)(uint8_t)x;
    case DT_INT2: return (int16_t)(uint16_t)x;
    case DT_INT4: return (int32_t)(uint32_t)x;
    case DT_INT8: case DT_ANYTHING: case DT_PAIR: case DT_FLOAT8: case DT_COMPLEX8: case DT_FLOAT4: break;
    }
    return (int64_t)x;
}

static void integerSums(HostCallbacks cb, HostValue a, HostValue b, HostValue r, int64_t na, int64_t m, int rev,
                        DatatypeCode code)
{
    int64_t i, j, ia[1], ib[1], ir[1];

    for (i = 0; i < m; ++i) {
        uint64_t acc = 0;
        RTableElement e;
        for (j = 0; j < na; ++j) {
            ia[0] = (rev ? na - 1 - j : j) + 1;
            ib[0] = i + j + 1;
            uint64_t x = (uint64_t)narrow((uint64_t)HostRTableSelect(cb, a, ia).w0, code);
            uint64_t y = (uint64_t)narrow((uint64_t)HostRTableSelect(cb, b, ib).w0, code);
            acc += x * y;
        }
        e.w0 = narrow(acc, code);
        e.w1 = 0;
        ir[0] = i + 1;
        HostRTableAssign(cb, r, ir, e);
    }
}

/* Host values: the raw words of each element are the factors. */
static void generalSums(HostCallbacks cb, HostValue a, HostValue b, HostValue r, int64_t na, int64_t nb, int rev)
{
    Seq sa = {SEQ_RAW, a, NULL, 0, na}, sb = {SEQ_RAW, b, NULL, 0, nb};
    int64_t i, ir[1];
    RTableElement e;

    for (i = 0; i < nb - na + 1; ++i) {
        e.w0 = (int64_t)symbolicSum(cb, &sa, &sb, i, rev);
        e.w1 = 0;
        ir[0] = i + 1;
        HostRTableAssign(cb, r, ir, e);
    }
}

/* Pairs of host values: four products and two sums per term,
 * re = ar*br + (-1)*(ai*bi), im = ar*bi + ai*br, each part summed from 0. */
static void pairSums(HostCallbacks cb, HostValue a, HostValue b, HostValue r, int64_t na, int64_t m, int rev)
{
    int64_t i, j, ia[1], ib[1], ir[1];

    for (i = 0; i < m; ++i) {
        HostValue re = IMM_ZERO, im = IMM_ZERO;
        RTableElement e;
        for (j = 0; j < na; ++j) {
            ia[0] = (rev ? na - 1 - j : j) + 1;
            ib[0] = i + j + 1;
            RTableElement x = HostRTableSelect(cb, a, ia);
            RTableElement y = HostRTableSelect(cb, b, ib);
            HostValue tre = plus(cb, product(cb, (HostValue)x.w0, (HostValue)y.w0),
                                 product(cb, (HostValue)x.w1, (HostValue)y.w1), IMM_MINUS_ONE);
            HostValue tim = plus(cb, product(cb, (HostValue)x.w0, (HostValue)y.w1),
                                 product(cb, (HostValue)x.w1, (HostValue)y.w0), IMM_ONE);
            re = plus(cb, re, tre, IMM_ONE);
            im = plus(cb, im, tim, IMM_ONE);
        }
        e.w0 = (int64_t)re;
        e.w1 = (int64_t)im;
        ir[0] = i + 1;
        HostRTableAssign(cb, r, ir, e);
    }
}

static HostValue RTableByRTableSum(HostCallbacks cb, HostValue a, HostValue b, int rev)
{
    int64_t na = HostRTableNumElements(cb, a), nb = HostRTableNumElements(cb, b), m = nb - na + 1;
    RTableSettings sa, sb, s;
    int64_t bounds[2];
    int32_t code;
    HostValue r;

    HostRTableGetSettings(cb, &sa, a);
    HostRTableGetSettings(cb, &sb, b);
    if (sa.numDims != 1 || sb.numDims != 1) {
        HostError(cb, MSG_DIMS);
        return 0;
    }
    code = sa.datatype == sb.datatype ? sa.datatype : DT_ANYTHING;
    HostRTableGetDefaults(cb, &s);
    s.datatype = code;
    s.numDims = 1;
    s.uninterpreted = sa.uninterpreted != 0 && sb.uninterpreted != 0 ? sa.uninterpreted : 0;
    bounds[0] = 1;
    bounds[1] = m;
    r = HostRTableCreate(cb, &s, NULL, bounds);
    if (code < DT_ANYTHING || code > DT_FLOAT4) {
        HostError(cb, MSG_UNEXPECTED_DATATYPE, HostFromInteger(cb, code));
        return r;
    }
    switch (orbDatatype(code)) {
    case DT_FLOAT8:
        HWY_DYNAMIC_DISPATCH(orb_slide::SlideF64)((const double *)HostRTableData(cb, a), na, rev,
                                                  (const double *)HostRTableData(cb, b),
                                                  (double *)HostRTableData(cb, r), m);
        break;
    case DT_FLOAT4:
        HWY_DYNAMIC_DISPATCH(orb_slide::SlideF32)((const float *)HostRTableData(cb, a), na, rev,
                                                  (const float *)HostRTableData(cb, b),
                                                  (float *)HostRTableData(cb, r), m);
        break;
    case DT_COMPLEX8:
        HWY_DYNAMIC_DISPATCH(orb_slide::SlideC64)((const double *)HostRTableData(cb, a), na, rev,
                                                  (const double *)HostRTableData(cb, b),
                                                  (double *)HostRTableData(cb, r), m);
        break;
    case DT_INT1: case DT_INT2: case DT_INT4: case DT_INT8:
        integerSums(cb, a, b, r, na, m, rev, orbDatatype(code));
        break;
    case DT_ANYTHING:
        generalSums(cb, a, b, r, na, nb, rev);
        break;
    case DT_PAIR:
        pairSums(cb, a, b, r, na, m, rev);
        break;
    }
    return r;
}

/* The shared body of orbConv (rev = 0) and orbCorr (rev = 1). No backend
 * work, so no initialisation. */
static HostValue slideExport(HostCallbacks cb, ArgSeq args, int rev)
{
    int64_t n, ka, kb, na, nb;
    HostValue a, b;
    Seq sa, sb;
    HostValue *list;

    orbCallStart();
    n = HostNumArgs(cb, args);
    if (n < 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    a = args[1];
    b = args[2];
    ka = kindOf(a);
    kb = kindOf(b);
    if ((ka != HOST_KIND_LIST && ka != HOST_KIND_RTABLE) || (kb != HOST_KIND_LIST && kb != HOST_KIND_RTABLE)) {
        HostError(cb, MSG_KINDS);
        return 0;
    }
    if (ka == HOST_KIND_LIST)
        listElements(a, &na);
    else
        na = HostRTableNumElements(cb, a);
    if (kb == HOST_KIND_LIST)
        listElements(b, &nb);
    else
        nb = HostRTableNumElements(cb, b);
    if (na > nb) {
        HostError(cb, MSG_LONGER);
        return 0;
    }
    if (ka == HOST_KIND_RTABLE && kb == HOST_KIND_RTABLE)
        return RTableByRTableSum(cb, a, b, rev);
    if (ka == HOST_KIND_RTABLE)
        return RTableByListSum(cb, a, b, rev);
    if (kb == HOST_KIND_RTABLE)
        return ListByRTableSum(cb, a, b, rev);
    listSeq(&sa, a);
    listSeq(&sb, b);
    list = HostNewList(cb, nb - na + 1);
    return symbolicList(cb, list, &sa, &sb, rev);
}

ORB_API HostValue orbConv(HostCallbacks cb, ArgSeq args)
{
    return slideExport(cb, args, 0);
}

ORB_API HostValue orbCorr(HostCallbacks cb, ArgSeq args)
{
    return slideExport(cb, args, 1);
}

#endif  // HWY_ONCE
