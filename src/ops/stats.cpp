/* Statistics: reductions of one rtable to host values (sums, extremes and
 * their 1-based positions, means, standard deviations), norms, dot products,
 * element-wise extremes of two rtables, zero crossings and counts in a range.
 * Nothing is written into an rtable except by orbMaxEvery and orbMinEvery. */
#include <string.h>
#include <strings.h>

#include "frame/frame.h"

#define MSG_SCALE_NEEDED "expecting an integer scale factor for integer rtables"
#define MSG_ZC_KIND "expecting one of \"zcr\", \"zcc\" and \"zcxor\", but received %1"

typedef enum RedOp {
    R_SUM, R_MAX, R_MIN, R_MAXABS, R_MINABS, R_IMAX, R_IMIN, R_IMAXABS, R_IMINABS,
    R_MINMAX, R_IMINMAX, R_MEAN, R_STDDEV, R_MEANSTDDEV
} RedOp;

/* The results of one reduction, before they become host values. */
typedef struct RedOut {
    double f[2];   /* float results: value(s), or the real and imaginary part */
    int64_t i[2];  /* integer results */
    int idx[2];    /* 0-based indices */
    int isComplex;
} RedOut;

static HostValue *newSeq(HostCallbacks cb, int count)
{
    return HostNewExprSeq(cb, count);
}

static HostValue seqValue(HostValue *seq)
{
    return (HostValue)(uintptr_t)seq;
}

/* How many values an export returns: more than one come as a sequence. */
static int redCount(RedOp op)
{
    switch (op) {
    case R_IMAX: case R_IMIN: case R_IMAXABS: case R_IMINABS: case R_MINMAX: case R_MEANSTDDEV: return 2;
    case R_IMINMAX: return 4;
    case R_SUM: case R_MAX: case R_MIN: case R_MAXABS: case R_MINABS: case R_MEAN: case R_STDDEV: break;
    }
    return 1;
}

static int redTakesHint(RedOp op)
{
    return op == R_MEAN || op == R_STDDEV || op == R_MEANSTDDEV;
}

static IppStatus red16s(RedOp op, const Ipp16s *s, int len, int sf, RedOut *o)
{
    Ipp16s a = 0, b = 0;
    Ipp32s sum = 0;
    IppStatus st = ORB_NO_KERNEL;

    switch (op) {
    case R_SUM: st = ippsSum_16s32s_Sfs(s, len, &sum, sf); o->i[0] = sum; return st;
    case R_MAX: st = ippsMax_16s(s, len, &a); break;
    case R_MIN: st = ippsMin_16s(s, len, &a); break;
    case R_MAXABS: st = ippsMaxAbs_16s(s, len, &a); break;
    case R_MINABS: st = ippsMinAbs_16s(s, len, &a); break;
    case R_IMAX: st = ippsMaxIndx_16s(s, len, &a, &o->idx[0]); break;
    case R_IMIN: st = ippsMinIndx_16s(s, len, &a, &o->idx[0]); break;
    case R_IMAXABS: st = ippsMaxAbsIndx_16s(s, len, &a, &o->idx[0]); break;
    case R_IMINABS: st = ippsMinAbsIndx_16s(s, len, &a, &o->idx[0]); break;
    case R_MINMAX: st = ippsMinMax_16s(s, len, &a, &b); break;
    case R_IMINMAX: st = ippsMinMaxIndx_16s(s, len, &a, &o->idx[0], &b, &o->idx[1]); break;
    case R_MEAN: case R_STDDEV: case R_MEANSTDDEV: break;
    }
    o->i[0] = a;
    o->i[1] = b;
    return st;
}

static IppStatus red32s(RedOp op, const Ipp32s *s, int len, int sf, RedOut *o)
{
    Ipp32s a = 0, b = 0;
    IppStatus st = ORB_NO_KERNEL;

    switch (op) {
    case R_SUM: st = ippsSum_32s_Sfs(s, len, &a, sf); break;
    case R_MAX: st = ippsMax_32s(s, len, &a); break;
    case R_MIN: st = ippsMin_32s(s, len, &a); break;
    case R_MAXABS: st = ippsMaxAbs_32s(s, len, &a); break;
    case R_MINABS: st = ippsMinAbs_32s(s, len, &a); break;
    case R_IMAX: st = ippsMaxIndx_32s(s, len, &a, &o->idx[0]); break;
    case R_IMIN: st = ippsMinIndx_32s(s, len, &a, &o->idx[0]); break;
    case R_IMAXABS: st = ippsMaxAbsIndx_32s(s, len, &a, &o->idx[0]); break;
    case R_IMINABS: st = ippsMinAbsIndx_32s(s, len, &a, &o->idx[0]); break;
    case R_MINMAX: st = ippsMinMax_32s(s, len, &a, &b); break;
    case R_IMINMAX: st = ippsMinMaxIndx_32s(s, len, &a, &o->idx[0], &b, &o->idx[1]); break;
    case R_MEAN: case R_STDDEV: case R_MEANSTDDEV: break;
    }
    o->i[0] = a;
    o->i[1] = b;
    return st;
}

static IppStatus red64f(RedOp op, const Ipp64f *s, int len, RedOut *o)
{
    Ipp64f a = 0, b = 0;
    IppStatus st = ORB_NO_KERNEL;

    switch (op) {
    case R_SUM: st = ippsSum_64f(s, len, &a); break;
    case R_MAX: st = ippsMax_64f(s, len, &a); break;
    case R_MIN: st = ippsMin_64f(s, len, &a); break;
    case R_IMAX: st = ippsMaxIndx_64f(s, len, &a, &o->idx[0]); break;
    case R_IMIN: st = ippsMinIndx_64f(s, len, &a, &o->idx[0]); break;
    case R_MINMAX: st = ippsMinMax_64f(s, len, &a, &b); break;
    case R_IMINMAX: st = ippsMinMaxIndx_64f(s, len, &a, &o->idx[0], &b, &o->idx[1]); break;
    case R_MEAN: st = ippsMean_64f(s, len, &a); break;
    case R_STDDEV: st = ippsStdDev_64f(s, len, &a); break;
    case R_MEANSTDDEV: st = ippsMeanStdDev_64f(s, len, &a, &b); break;
    case R_MAXABS: case R_MINABS: case R_IMAXABS: case R_IMINABS: break;
    }
    o->f[0] = a;
    o->f[1] = b;
    return st;
}

static IppStatus red32f(RedOp op, const Ipp32f *s, int len, IppHintAlgorithm hint, RedOut *o)
{
    Ipp32f a = 0, b = 0;
    IppStatus st = ORB_NO_KERNEL;

    switch (op) {
    case R_SUM: st = ippsSum_32f(s, len, &a, hint); break;
    case R_MAX: st = ippsMax_32f(s, len, &a); break;
    case R_MIN: st = ippsMin_32f(s, len, &a); break;
    case R_IMAX: st = ippsMaxIndx_32f(s, len, &a, &o->idx[0]); break;
    case R_IMIN: st = ippsMinIndx_32f(s, len, &a, &o->idx[0]); break;
    case R_MINMAX: st = ippsMinMax_32f(s, len, &a, &b); break;
    case R_IMINMAX: st = ippsMinMaxIndx_32f(s, len, &a, &o->idx[0], &b, &o->idx[1]); break;
    case R_MEAN: st = ippsMean_32f(s, len, &a, hint); break;
    case R_STDDEV: st = ippsStdDev_32f(s, len, &a, hint); break;
    case R_MEANSTDDEV: st = ippsMeanStdDev_32f(s, len, &a, &b, hint); break;
    case R_MAXABS: case R_MINABS: case R_IMAXABS: case R_IMINABS: break;
    }
    o->f[0] = a;
    o->f[1] = b;
    return st;
}

static IppStatus red64fc(RedOp op, const Ipp64fc *s, int len, RedOut *o)
{
    Ipp64fc z = {0, 0};
    IppStatus st = ORB_NO_KERNEL;

    if (op == R_SUM)
        st = ippsSum_64fc(s, len, &z);
    else if (op == R_MEAN)
        st = ippsMean_64fc(s, len, &z);
    o->f[0] = z.re;
    o->f[1] = z.im;
    o->isComplex = 1;
    return st;
}

/* The datatypes of each reduction. */
static int redSupports(RedOp op, int64_t code)
{
    switch (orbDatatype(code)) {
    case DT_INT1: return op == R_MINMAX;
    case DT_INT2: case DT_INT4: return !redTakesHint(op);
    case DT_FLOAT8: case DT_FLOAT4:
        return op != R_MAXABS && op != R_MINABS && op != R_IMAXABS && op != R_IMINABS;
    case DT_COMPLEX8: return op == R_SUM || op == R_MEAN;
    case DT_ANYTHING: case DT_PAIR: case DT_INT8: break;
    }
    return 0;
}

/* The host values of a reduction: one, or the sequence filled in order. */
static HostValue redResult(HostCallbacks cb, RedOp op, int64_t code, const RedOut *o, HostValue *seq)
{
    int isFloat = code == DT_FLOAT8 || code == DT_FLOAT4;
    HostValue v[2];
    int k;

    for (k = 0; k < 2; ++k)
        v[k] = isFloat ? HostFromFloat64(cb, o->f[k]) : HostFromInteger(cb, o->i[k]);
    if (o->isComplex)
        return HostFromComplexFloat64(cb, o->f[0], o->f[1]);
    switch (op) {
    case R_IMAX: case R_IMIN: case R_IMAXABS: case R_IMINABS:
        seq[1] = HostFromInteger(cb, (int64_t)o->idx[0] + 1);
        seq[2] = v[0];
        return seqValue(seq);
    case R_MINMAX: case R_MEANSTDDEV:
        seq[1] = v[0];
        seq[2] = v[1];
        return seqValue(seq);
    case R_IMINMAX:
        seq[1] = HostFromInteger(cb, (int64_t)o->idx[0] + 1);
        seq[2] = v[0];
        seq[3] = HostFromInteger(cb, (int64_t)o->idx[1] + 1);
        seq[4] = v[1];
        return seqValue(seq);
    case R_SUM: case R_MAX: case R_MIN: case R_MAXABS: case R_MINABS: case R_MEAN: case R_STDDEV: break;
    }
    return v[0];
}

/* The one shape of the fourteen reductions: the count, the rtable, the hint
 * (before the datatype), the sequence (before the dispatch), then the
 * datatype with its scale factor or hint. */
static HostValue reduceExport(HostCallbacks cb, ArgSeq args, RedOp op)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len;
    void *data;
    IppHintAlgorithm hint = ippAlgHintNone;
    HostValue *seq = 0;
    RedOut out;
    int sf = 0;
    IppStatus status;

    memset(&out, 0, sizeof out);
    if ((op == R_SUM || redTakesHint(op)) ? n < 1 : n != 1) {
        orbArityError(cb, ARITY_ONE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    if (redTakesHint(op) && n >= 2)
        hint = (IppHintAlgorithm)GetHint(cb, args[2]);
    if (redCount(op) > 1)
        seq = newSeq(cb, redCount(op));
    if (!redSupports(op, code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return 0;
    }
    if (op == R_SUM) {
        if (code == DT_INT2 || code == DT_INT4) {
            if (n < 2) {
                HostError(cb, MSG_SCALE_NEEDED);
                return 0;
            }
            sf = GetScaleFactor(cb, args[2]);
        } else if (code == DT_FLOAT4 && n >= 2) {
            hint = (IppHintAlgorithm)GetHint(cb, args[2]);
        }
    }
    if (!orbFits(cb, &len, args[1], code))
        return 0;
    switch (orbDatatype(code)) {
    case DT_INT1: {
        Ipp8u lo = 0, hi = 0;
        status = ippsMinMax_8u((const Ipp8u *)data, orbLen32(len), &lo, &hi);
        out.i[0] = lo;
        out.i[1] = hi;
        break;
    }
    case DT_INT2: status = red16s(op, (const Ipp16s *)data, orbLen32(len), sf, &out); break;
    case DT_INT4: status = red32s(op, (const Ipp32s *)data, orbLen32(len), sf, &out); break;
    case DT_FLOAT8: status = red64f(op, (const Ipp64f *)data, orbLen32(len), &out); break;
    case DT_FLOAT4: status = red32f(op, (const Ipp32f *)data, orbLen32(len), hint, &out); break;
    case DT_COMPLEX8: status = red64fc(op, (const Ipp64fc *)data, orbLen32(len), &out); break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT8: default: status = ORB_NO_KERNEL; break;
    }
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    return redResult(cb, op, code, &out, seq);
}

ORB_API HostValue orbSum(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_SUM); }
ORB_API HostValue orbMax(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_MAX); }
ORB_API HostValue orbMin(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_MIN); }
ORB_API HostValue orbMaxAbs(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_MAXABS); }
ORB_API HostValue orbMinAbs(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_MINABS); }
ORB_API HostValue orbIndexMax(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_IMAX); }
ORB_API HostValue orbIndexMin(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_IMIN); }
ORB_API HostValue orbIndexMaxAbs(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_IMAXABS); }
ORB_API HostValue orbIndexMinAbs(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_IMINABS); }
ORB_API HostValue orbMinMax(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_MINMAX); }
ORB_API HostValue orbIndexMinMax(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_IMINMAX); }
ORB_API HostValue orbMean(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_MEAN); }
ORB_API HostValue orbStdDev(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_STDDEV); }
ORB_API HostValue orbMeanStdDev(HostCallbacks cb, ArgSeq args) { return reduceExport(cb, args, R_MEANSTDDEV); }

/* ---- Norms ---- */

typedef enum NormKind { N_INF, N_L1, N_L2 } NormKind;

static IppStatus norm1(NormKind k, int64_t code, const void *s, int len, double *r)
{
    Ipp32f f = 0;
    IppStatus st = ORB_NO_KERNEL;

    switch (orbDatatype(code)) {
    case DT_FLOAT4:
        st = k == N_INF ? ippsNorm_Inf_32f((const Ipp32f *)s, len, &f)
           : k == N_L1  ? ippsNorm_L1_32f((const Ipp32f *)s, len, &f)
                        : ippsNorm_L2_32f((const Ipp32f *)s, len, &f);
        *r = f;
        break;
    case DT_INT2:
        st = k == N_INF ? ippsNorm_Inf_16s32f((const Ipp16s *)s, len, &f)
           : k == N_L1  ? ippsNorm_L1_16s32f((const Ipp16s *)s, len, &f)
                        : ippsNorm_L2_16s32f((const Ipp16s *)s, len, &f);
        *r = f;
        break;
    case DT_FLOAT8:
        st = k == N_INF ? ippsNorm_Inf_64f((const Ipp64f *)s, len, r)
           : k == N_L1  ? ippsNorm_L1_64f((const Ipp64f *)s, len, r)
                        : ippsNorm_L2_64f((const Ipp64f *)s, len, r);
        break;
    case DT_COMPLEX8:
        st = k == N_INF ? ippsNorm_Inf_64fc64f((const Ipp64fc *)s, len, r)
           : k == N_L1  ? ippsNorm_L1_64fc64f((const Ipp64fc *)s, len, r)
                        : ippsNorm_L2_64fc64f((const Ipp64fc *)s, len, r);
        break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT4: case DT_INT8: break;
    }
    return st;
}

static IppStatus norm2(NormKind k, int64_t code, const void *a, const void *b, int len, double *r)
{
    Ipp32f f = 0;
    IppStatus st = ORB_NO_KERNEL;

    switch (orbDatatype(code)) {
    case DT_FLOAT4:
        st = k == N_INF ? ippsNormDiff_Inf_32f((const Ipp32f *)a, (const Ipp32f *)b, len, &f)
           : k == N_L1  ? ippsNormDiff_L1_32f((const Ipp32f *)a, (const Ipp32f *)b, len, &f)
                        : ippsNormDiff_L2_32f((const Ipp32f *)a, (const Ipp32f *)b, len, &f);
        *r = f;
        break;
    case DT_INT2:
        st = k == N_INF ? ippsNormDiff_Inf_16s32f((const Ipp16s *)a, (const Ipp16s *)b, len, &f)
           : k == N_L1  ? ippsNormDiff_L1_16s32f((const Ipp16s *)a, (const Ipp16s *)b, len, &f)
                        : ippsNormDiff_L2_16s32f((const Ipp16s *)a, (const Ipp16s *)b, len, &f);
        *r = f;
        break;
    case DT_FLOAT8:
        st = k == N_INF ? ippsNormDiff_Inf_64f((const Ipp64f *)a, (const Ipp64f *)b, len, r)
           : k == N_L1  ? ippsNormDiff_L1_64f((const Ipp64f *)a, (const Ipp64f *)b, len, r)
                        : ippsNormDiff_L2_64f((const Ipp64f *)a, (const Ipp64f *)b, len, r);
        break;
    case DT_COMPLEX8:
        st = k == N_INF ? ippsNormDiff_Inf_64fc64f((const Ipp64fc *)a, (const Ipp64fc *)b, len, r)
           : k == N_L1  ? ippsNormDiff_L1_64fc64f((const Ipp64fc *)a, (const Ipp64fc *)b, len, r)
                        : ippsNormDiff_L2_64fc64f((const Ipp64fc *)a, (const Ipp64fc *)b, len, r);
        break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT4: case DT_INT8: break;
    }
    return st;
}

static int normSupports(int64_t code)
{
    return code == DT_FLOAT4 || code == DT_FLOAT8 || code == DT_COMPLEX8 || code == DT_INT2;
}

static HostValue normExport(HostCallbacks cb, ArgSeq args, NormKind k)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len;
    void *data;
    double r = 0;
    IppStatus status;

    if (n != 1) {
        orbArityError(cb, ARITY_ONE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    if (!normSupports(code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return 0;
    }
    if (!orbFits(cb, &len, args[1], code))
        return 0;
    status = norm1(k, code, data, orbLen32(len), &r);
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    return HostFromFloat64(cb, r);
}

/* The second rtable is read by the accessor of the first one's datatype
 * before the counts are compared. */
static HostValue normDiffExport(HostCallbacks cb, ArgSeq args, NormKind k)
{
    int64_t n = orbBegin(cb, args);
    int64_t code, len, len2;
    void *a, *b;
    double r = 0;
    IppStatus status;

    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &a);
    if (!normSupports(code)) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return 0;
    }
    b = orbSampleOf(cb, args[2], code, &len2);
    if (!orbCountsAgree(cb, len == len2) || !orbAllFit(cb, &len, args, 1, 2, code))
        return 0;
    status = norm2(k, code, a, b, orbLen32(len), &r);
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    return HostFromFloat64(cb, r);
}

ORB_API HostValue orbInfNorm(HostCallbacks cb, ArgSeq args) { return normExport(cb, args, N_INF); }
ORB_API HostValue orbL1Norm(HostCallbacks cb, ArgSeq args) { return normExport(cb, args, N_L1); }
ORB_API HostValue orbL2Norm(HostCallbacks cb, ArgSeq args) { return normExport(cb, args, N_L2); }
ORB_API HostValue orbInfNormDiff(HostCallbacks cb, ArgSeq args) { return normDiffExport(cb, args, N_INF); }
ORB_API HostValue orbL1NormDiff(HostCallbacks cb, ArgSeq args) { return normDiffExport(cb, args, N_L1); }
ORB_API HostValue orbL2NormDiff(HostCallbacks cb, ArgSeq args) { return normDiffExport(cb, args, N_L2); }

/* ---- Dot product ---- */

/* Counts first, then the pair of datatypes; a complex first operand with a
 * real second one passes the real one first. */
ORB_API HostValue orbDotProduct(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    int64_t c1, c2, len, len2;
    void *a, *b;
    Ipp64f r = 0;
    Ipp64fc z = {0, 0};
    Ipp64s w = 0;
    IppStatus status = ORB_NO_KERNEL;
    int ok;

    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    c1 = orbTarget(cb, args[1], &len, &a);
    c2 = orbTarget(cb, args[2], &len2, &b);
    if (!orbCountsAgree(cb, len == len2))
        return 0;
    switch (orbDatatype(c1)) {
    case DT_FLOAT4: ok = c2 == DT_FLOAT4; break;
    case DT_FLOAT8: case DT_COMPLEX8: ok = c2 == DT_FLOAT8 || c2 == DT_COMPLEX8; break;
    case DT_INT2: ok = c2 == DT_INT2; break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT4: case DT_INT8: default:
        HostError(cb, MSG_NOT_SUPPORTED);
        return 0;
    }
    if (!ok) {
        HostError(cb, MSG_COMBINATION);
        return 0;
    }
    if (!orbFits(cb, &len, args[1], c1) || !orbFits(cb, &len, args[2], c2))
        return 0;
    switch (orbDatatype(c1)) {
    case DT_FLOAT4: status = ippsDotProd_32f64f((const Ipp32f *)a, (const Ipp32f *)b, orbLen32(len), &r); break;
    case DT_INT2: status = ippsDotProd_16s64s((const Ipp16s *)a, (const Ipp16s *)b, orbLen32(len), &w); break;
    case DT_FLOAT8:
        if (c2 == DT_FLOAT8)
            status = ippsDotProd_64f((const Ipp64f *)a, (const Ipp64f *)b, orbLen32(len), &r);
        else
            status = ippsDotProd_64f64fc((const Ipp64f *)a, (const Ipp64fc *)b, orbLen32(len), &z);
        break;
    case DT_COMPLEX8:
        if (c2 == DT_COMPLEX8)
            status = ippsDotProd_64fc((const Ipp64fc *)a, (const Ipp64fc *)b, orbLen32(len), &z);
        else
            status = ippsDotProd_64f64fc((const Ipp64f *)b, (const Ipp64fc *)a, orbLen32(len), &z);
        break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT1: case DT_INT4: case DT_INT8: break;
    }
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    if (c1 == DT_INT2)
        return HostFromInteger64(cb, w);
    if (c1 == DT_COMPLEX8 || c2 == DT_COMPLEX8)
        return HostFromComplexFloat64(cb, z.re, z.im);
    return HostFromFloat64(cb, r);
}

/* ---- Element-wise extremes: the integer forms compare unsigned ---- */

static HostValue everyExport(HostCallbacks cb, ArgSeq args, int isMax)
{
    int64_t n = orbBegin(cb, args);
    int64_t c1, c2, c3, len, len2, len3;
    void *d, *a, *b;
    Ipp32u count;
    IppStatus status = ORB_NO_KERNEL;

    if (n != 3) {
        orbArityError(cb, ARITY_TWO_OR_THREE, n);
        return 0;
    }
    c1 = orbTarget(cb, args[1], &len, &d);
    c2 = orbTarget(cb, args[2], &len2, &a);
    c3 = orbTarget(cb, args[3], &len3, &b);
    if (!orbCountsAgree(cb, len2 == len && len3 == len))
        return args[1];
    if (c2 != c1 || c3 != c1) {
        HostError(cb, MSG_SAME_DATATYPE);
        return args[1];
    }
    if (c1 != DT_FLOAT4 && c1 != DT_FLOAT8 && c1 != DT_INT1 && c1 != DT_INT2) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return args[1];
    }
    if (!orbAllFit(cb, &len, args, 1, 3, c1))
        return args[1];
    count = (Ipp32u)(uint64_t)len;
    switch (orbDatatype(c1)) {
    case DT_FLOAT4:
        status = isMax ? ippsMaxEvery_32f((const Ipp32f *)a, (const Ipp32f *)b, (Ipp32f *)d, count)
                       : ippsMinEvery_32f((const Ipp32f *)a, (const Ipp32f *)b, (Ipp32f *)d, count);
        break;
    case DT_FLOAT8:
        status = isMax ? ippsMaxEvery_64f((const Ipp64f *)a, (const Ipp64f *)b, (Ipp64f *)d, count)
                       : ippsMinEvery_64f((const Ipp64f *)a, (const Ipp64f *)b, (Ipp64f *)d, count);
        break;
    case DT_INT1:
        status = isMax ? ippsMaxEvery_8u((const Ipp8u *)a, (const Ipp8u *)b, (Ipp8u *)d, count)
                       : ippsMinEvery_8u((const Ipp8u *)a, (const Ipp8u *)b, (Ipp8u *)d, count);
        break;
    case DT_INT2:
        status = isMax ? ippsMaxEvery_16u((const Ipp16u *)a, (const Ipp16u *)b, (Ipp16u *)d, count)
                       : ippsMinEvery_16u((const Ipp16u *)a, (const Ipp16u *)b, (Ipp16u *)d, count);
        break;
    case DT_ANYTHING: case DT_PAIR: case DT_INT4: case DT_INT8: case DT_COMPLEX8: break;
    }
    if (status < 0)
        orbIppError(cb, status);
    return args[1];
}

ORB_API HostValue orbMaxEvery(HostCallbacks cb, ArgSeq args) { return everyExport(cb, args, 1); }
ORB_API HostValue orbMinEvery(HostCallbacks cb, ArgSeq args) { return everyExport(cb, args, 0); }

/* ---- Zero crossings and counts ---- */

ORB_API HostValue orbZeroCrossing(HostCallbacks cb, ArgSeq args)
{
    static const char *const kNames[] = {"zcr", "zcxor", "zcc"};
    static const IppsZCType kTypes[] = {ippZCR, ippZCXor, ippZCC};
    int64_t n = orbBegin(cb, args);
    int64_t code, len;
    void *data;
    IppsZCType kind = ippZCR;
    Ipp32f r = 0;
    IppStatus status = ORB_NO_KERNEL;

    if (n < 1) {
        orbArityError(cb, ARITY_ONE, n);
        return 0;
    }
    code = orbTarget(cb, args[1], &len, &data);
    if (n >= 2) {
        int k = 3;
        if (HostIsName(cb, args[2]) || HostIsString(cb, args[2])) {
            const char *text = HostToString(cb, args[2]);
            for (k = 0; k < 3 && strcasecmp(text, kNames[k]) != 0; ++k)
                ;
        }
        if (k == 3) {
            HostError(cb, MSG_ZC_KIND, args[2]);
            return 0;
        }
        kind = kTypes[k];
    }
    if (code != DT_FLOAT4 && code != DT_INT2) {
        HostError(cb, MSG_NOT_SUPPORTED);
        return 0;
    }
    if (!orbFits(cb, &len, args[1], code))
        return 0;
    if (code == DT_FLOAT4)
        status = ippsZeroCrossing_32f((const Ipp32f *)data, (Ipp32u)(uint64_t)len, &r, kind);
    else
        status = ippsZeroCrossing_16s32f((const Ipp16s *)data, (Ipp32u)(uint64_t)len, &r, kind);
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    return HostFromFloat64(cb, r);
}

ORB_API HostValue orbCountInRange(HostCallbacks cb, ArgSeq args)
{
    int64_t n = orbBegin(cb, args);
    const Ipp32s *data;
    int64_t len;
    Ipp32s lo, hi;
    int count = 0;
    IppStatus status;

    if (n < 3) {
        orbArityError(cb, ARITY_THREE, n);
        return 0;
    }
    data = GetInt4Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    lo = GetInt4Value(cb, args[2]);
    hi = GetInt4Value(cb, args[3]);
    if (!orbFits(cb, &len, args[1], DT_INT4))
        return 0;
    status = ippsCountInRange_32s(data, orbLen32(len), &count, lo, hi);
    if (status < 0) {
        orbIppError(cb, status);
        return 0;
    }
    return HostFromInteger(cb, count);
}
