// Export-level sweeps, one table row per export with a valid call. Each row
// is called with each backend allocation failing in turn, with every argument
// replaced by wrong values, with wrong argument counts, and with every
// datatype its first argument does not take, in both error modes of the host.
// Every call must leave no backend allocation behind and every rtable's guard
// bytes as they were. A name in the export list that the shared library
// defines and that has no row fails the registry test.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <fstream>
#include <set>
#include <sstream>

#include "backend_hooks.h"
#include "frame/frame.h"
#include "support.h"

namespace {

using orbhost::CallResult;
using orbhost::ErrorMode;
using orbhost::ExportFn;
using orbhost::Host;
using orbtest::Value;

#define FN(f) reinterpret_cast<ExportFn>(f)

struct Row {
    const char *name;
    ExportFn fn;
    // Blank-separated: f8 f4 c8 i1 i2 i4 i8 make an rtable of that datatype
    // (five elements, or /N of them); a number with a point is a float, any
    // other number an integer; "text" (no blanks) a string.
    const char *args;
    // Accepted argument counts as digits; "*" for any count not negative.
    const char *counts;
    // The counts the arity message names: "expecting <these> argument(s),
    // but received n".
    const char *arity;
    // Datatype codes argument 1 takes. Led by '=' when a typed accessor reads
    // argument 1; otherwise any other code must raise "datatype not
    // supported". Empty when argument 1 is no rtable.
    const char *codes;
    // The count a valid call reports, for an export whose count test is
    // inverted; -1 for the real one.
    int64_t forcedCount = -1;
    // The error a valid call ends with, for an export whose initialiser test
    // is inverted (it raises whenever the initialiser succeeds); null for none.
    const char *validError = nullptr;
};

const Row kRows[] = {
    {"orbAbs", FN(orbAbs), "f8 f8", "2", "two", "68"},
    {"orbSqr", FN(orbSqr), "f8 f8", "2", "two", "678"},
    {"orbSqrt", FN(orbSqrt), "f8 f8", "2", "two", "678"},
    {"orbExp", FN(orbExp), "f8 f8", "2", "two", "68"},
    {"orbLn", FN(orbLn), "f8 f8", "2", "two", "68"},
    {"orbArctan", FN(orbArctan), "f8 f8", "2", "two", "68"},
    {"orbNormalise", FN(orbNormalise), "f8 f8 1.0 2.0", "4", "four", "=6"},
    {"orbAddConstant", FN(orbAddConstant), "f8 f8 2.0", "3", "three", "678"},
    {"orbSubConstant", FN(orbSubConstant), "f8 f8 2.0", "3", "three", "678"},
    {"orbSubConstantRev", FN(orbSubConstantRev), "f8 f8 2.0", "3", "three", "678"},
    {"orbMulConstant", FN(orbMulConstant), "f8 f8 2.0", "3", "three", "678"},
    {"orbDivConstant", FN(orbDivConstant), "f8 f8 2.0", "3", "three", "678"},
    {"orbDivConstantRev", FN(orbDivConstantRev), "f4 f4 2.0", "3", "three", "8"},
    {"orbAdd", FN(orbAdd), "f8 f8 f8", "3", "three", "678"},
    {"orbSub", FN(orbSub), "f8 f8 f8", "3", "three", "678"},
    {"orbMul", FN(orbMul), "f8 f8 f8", "3", "three", "678"},
    {"orbDiv", FN(orbDiv), "f8 f8 f8", "3", "three", "678"},
    {"orbAddProd", FN(orbAddProd), "f8 f8 f8", "3", "three", "678"},
    {"orbAndC", FN(orbAndC), "i4 i4 3", "3", "two or three", "234"},
    {"orbOrC", FN(orbOrC), "i4 i4 3", "3", "two or three", "234"},
    {"orbXorC", FN(orbXorC), "i4 i4 3", "3", "two or three", "234"},
    {"orbAnd", FN(orbAnd), "i4 i4 i4", "3", "two or three", "234"},
    {"orbOr", FN(orbOr), "i4 i4 i4", "3", "two or three", "234"},
    {"orbXor", FN(orbXor), "i4 i4 i4", "3", "two or three", "234"},
    {"orbNot", FN(orbNot), "i2 i2", "2", "one or two", "234"},
    {"orbLeftShift", FN(orbLeftShift), "i4 i4 1", "3", "two or three", "234"},
    {"orbRightShift", FN(orbRightShift), "i1 i1 1", "3", "two or three", "234"},
    {"orbConjugate", FN(orbConjugate), "c8 c8", "2", "one or two", "=7"},
    {"orbConjugateFlip", FN(orbConjugateFlip), "c8 c8", "2", "two", "=7"},
    {"orbReal", FN(orbReal), "f8 c8", "2", "two", "=6"},
    {"orbImag", FN(orbImag), "f8 c8", "2", "two", "=6"},
    {"orbMagnitude", FN(orbMagnitude), "f8 f8 f8", "23", "two or three", "68"},
    {"orbPhase", FN(orbPhase), "f4 f4 f4", "23", "two or three", "68"},
    {"orbPowerSpectrum", FN(orbPowerSpectrum), "f8 f8 f8", "23", "two or three", "68"},
    {"orbRealToComplex", FN(orbRealToComplex), "c8 f8 f8", "3", "three", "=7"},
    {"orbComplexToReal", FN(orbComplexToReal), "f8 f8 c8", "3", "three", "=6"},
    {"orbCartesianToPolar", FN(orbCartesianToPolar), "f8 f8 f8 f8", "34", "three or four", "=6"},
    {"orbPolarToCartesian", FN(orbPolarToCartesian), "c8 f8 f8", "34", "three or four", "=7"},
    {"orbConvert", FN(orbConvert), "f4 f8", "2", "two", "368"},
    {"orbConvertScaled", FN(orbConvertScaled), "f4 i4 0", "012", "three", "234568", 2},
    {"orbSwapBytes", FN(orbSwapBytes), "i1/7 i1/7", "2", "one or two", "2345"},
    {"orbThresholdLT", FN(orbThresholdLT), "f8 f8 2.0", "3", "two or three", "34678"},
    {"orbThresholdGT", FN(orbThresholdGT), "f8 f8 2.0", "3", "two or three", "34678"},
    {"orbThresholdLTAbs", FN(orbThresholdLTAbs), "f8 f8 2.0", "3", "two or three", "3468"},
    {"orbThresholdGTAbs", FN(orbThresholdGTAbs), "f8 f8 2.0", "3", "two or three", "3468"},
    {"orbThresholdLTVal", FN(orbThresholdLTVal), "f8 f8 2.0 0.0", "4", "three or four", "3678"},
    {"orbThresholdGTVal", FN(orbThresholdGTVal), "f8 f8 2.0 0.0", "4", "three or four", "3678"},
    {"orbThresholdLTGTVal", FN(orbThresholdLTGTVal), "f8 f8 1.0 0.0 3.0 9.0", "6", "five or six", "3468"},
    {"orbThresholdLTInv", FN(orbThresholdLTInv), "f8 f8 1.0", "3", "two or three", "678"},
    {"orbCopy", FN(orbCopy), "f8 f8", "2", "two", "345678"},
    {"orbMove", FN(orbMove), "f8 f8", "2", "two", "345678"},
    {"orbSet", FN(orbSet), "f8 2.0", "2", "two", "2345678"},
    {"orbZero", FN(orbZero), "f8", "1", "one", "2345678"},
    {"orbUpSample", FN(orbUpSample), "f8/10 f8 2", "34", "three or four", "3678"},
    {"orbDownSample", FN(orbDownSample), "f8/3 f8 2", "34", "three or four", "3678"},
    // Reductions, norms, dot products and counting.
    {"orbSum", FN(orbSum), "f8", "12", "one", "34678"},
    {"orbMax", FN(orbMax), "f8", "1", "one", "3468"},
    {"orbMin", FN(orbMin), "f8", "1", "one", "3468"},
    {"orbMaxAbs", FN(orbMaxAbs), "i4", "1", "one", "34"},
    {"orbMinAbs", FN(orbMinAbs), "i4", "1", "one", "34"},
    {"orbIndexMax", FN(orbIndexMax), "f8", "1", "one", "3468"},
    {"orbIndexMin", FN(orbIndexMin), "f8", "1", "one", "3468"},
    {"orbIndexMaxAbs", FN(orbIndexMaxAbs), "i2", "1", "one", "34"},
    {"orbIndexMinAbs", FN(orbIndexMinAbs), "i2", "1", "one", "34"},
    {"orbMinMax", FN(orbMinMax), "f8", "1", "one", "23468"},
    {"orbIndexMinMax", FN(orbIndexMinMax), "f4", "1", "one", "3468"},
    {"orbMean", FN(orbMean), "f8", "12", "one", "678"},
    {"orbStdDev", FN(orbStdDev), "f8", "12", "one", "68"},
    {"orbMeanStdDev", FN(orbMeanStdDev), "f4", "12", "one", "68"},
    {"orbInfNorm", FN(orbInfNorm), "f8", "1", "one", "3678"},
    {"orbL1Norm", FN(orbL1Norm), "c8", "1", "one", "3678"},
    {"orbL2Norm", FN(orbL2Norm), "i2", "1", "one", "3678"},
    {"orbInfNormDiff", FN(orbInfNormDiff), "f8 f8", "2", "two", "3678"},
    {"orbL1NormDiff", FN(orbL1NormDiff), "f4 f4", "2", "two", "3678"},
    {"orbL2NormDiff", FN(orbL2NormDiff), "c8 c8", "2", "two", "3678"},
    {"orbDotProduct", FN(orbDotProduct), "f8 c8", "2", "two", "3678"},
    {"orbMaxEvery", FN(orbMaxEvery), "f8 f8 f8", "3", "two or three", "2368"},
    {"orbMinEvery", FN(orbMinEvery), "i1 i1 i1", "3", "two or three", "2368"},
    {"orbZeroCrossing", FN(orbZeroCrossing), "f4", "12", "one", "38"},
    {"orbCountInRange", FN(orbCountInRange), "i4 1 4", "34", "three", "=4"},

    // Ordering and search.
    {"orbMaxOrder", FN(orbMaxOrder), "f8", "1", "one", "3468"},
    {"orbReverse", FN(orbReverse), "f8 f8", "2", "one or two", "23678"},
    {"orbSortAscending", FN(orbSortAscending), "f8", "1", "one", "23468"},
    {"orbSortDescending", FN(orbSortDescending), "i1", "1", "one", "23468"},
    {"orbFindNearestOne", FN(orbFindNearestOne), "i2 3", "2", "two", "=3"},
    {"orbFindNearest", FN(orbFindNearest), "i2 i4 i2 i2", "4", "four", "=3"},

    // Transforms.

    {"orbFwdDFT", FN(orbFwdDFT), "c8 c8 \"fwddivbyn\" \"becareful\"", "2345", "two", "=7"},
    {"orbInvDFT", FN(orbInvDFT), "c8 c8 \"sqrtlen\"", "234", "two", "=7"},
    {"orbFwdFFT", FN(orbFwdFFT), "c8/8 c8/8 \"invdivbyn\" \"none\"", "2345", "from two to four", "=7"},
    {"orbInvFFT", FN(orbInvFFT), "c8/8 c8/8", "234", "from two to four", "=7"},
    {"orbFwdDFTSplit", FN(orbFwdDFTSplit), "f8 f8 f8 f8 \"sqrtlen\" \"none\"", "4567", "from four to six", "68"},
    {"orbInvDFTSplit", FN(orbInvDFTSplit), "f4 f4 f4 f4", "456", "from four to six", "68"},
    {"orbFwdFFTSplit", FN(orbFwdFFTSplit), "f8/8 f8/8 f8/8 f8/8 \"invdivbyn\"", "456", "from four to six", "68"},
    {"orbInvFFTSplit", FN(orbInvFFTSplit), "f4/4 f4/4 f4/4 f4/4 \"none\" \"gofast\"", "4567", "from four to six", "68"},
    {"orbFwdDCT", FN(orbFwdDCT), "f8 f8 \"none\"", "3", "three", "68"},
    {"orbInvDCT", FN(orbInvDCT), "f4 f4 \"becareful\"", "3", "three", "68"},
    {"orbHilbert", FN(orbHilbert), "c8 f4 \"none\"", "234", "two or three", "=7", -1, "IPP Error: ippStsNoErr: No errors."},
    {"orbGoertz", FN(orbGoertz), "f8 0.25", "2", "two", "678"},
    {"orbFwdHaarWT", FN(orbFwdHaarWT), "f8/4 f8/4 f8/8", "34", "three", "368"},
    {"orbInvHaarWT", FN(orbInvHaarWT), "i2/8 i2/4 i2/4", "34", "three", "368"},

    // Convolution and correlation.

    {"orbConv", FN(orbConv), "f8/3 f8", "23", "two", "012345678"},
    {"orbCorr", FN(orbCorr), "f8/3 f8", "23", "two", "012345678"},
    {"orbConvolution", FN(orbConvolution), "f8 f8/3 f8/2 \"auto\"", "4", "four", "68"},
    {"orbBiasedConvolution", FN(orbBiasedConvolution), "f4 f4/3 f4/2 1", "4", "four", "=8"},
    {"orbAutoCorrelation", FN(orbAutoCorrelation), "i2 i2/4 0", "234", "two", "3678"},
    {"orbBiasedAutoCorrelation", FN(orbBiasedAutoCorrelation), "i2 i2/4 0", "234", "two", "3678"},
    {"orbUnbiasedAutoCorrelation", FN(orbUnbiasedAutoCorrelation), "i2 i2/4 0", "234", "two", "3678"},
    {"orbCrossCorrelation", FN(orbCrossCorrelation), "i2 i2/3 i2/4 -1 0", "456", "four", "3678"},

    // Filters.

    {"orbFIR", FN(orbFIR), "f8 f8 f8 f8 5", "5", "five", "=6"},
    {"orbFIRGenLowPass", FN(orbFIRGenLowPass), "f8 0.2 \"hamming\" \"true\"", "4", "four", "=6"},
    {"orbFIRGenHighPass", FN(orbFIRGenHighPass), "f8 0.2 \"Blackman\" \"false\"", "4", "four", "=6"},
    {"orbFIRGenBandPass", FN(orbFIRGenBandPass), "f8 0.1 0.3 \"hann\" \"true\"", "5", "five", "=6"},
    {"orbFIRGenBandStop", FN(orbFIRGenBandStop), "f8 0.1 0.3 \"bartlett\" \"false\"", "5", "five", "=6"},
    // The step is read from a seventh position that the count does not admit.
    {"orbFIRLMS", FN(orbFIRLMS), "f4 f4 f4 f4 f4/10 0 0.01", "6", "six", "=8", 6},
    {"orbIIR", FN(orbIIR), "f8 f8 2 f8/6 f8/2", "5", "five", "678"},
    {"orbIIRGenLowPass", FN(orbIIRGenLowPass), "f8/6 0.2 0.5 2 \"butterworth\"", "5", "five", "=6"},
    {"orbIIRGenHighPass", FN(orbIIRGenHighPass), "f8/7 0.2 0.5 2 \"Chebyshev1\"", "5", "five", "=6"},
    {"orbFilter", FN(orbFilter), "f8 f8 f8/2 f8/3", "4", "four", "=6"},
    {"orbMedianFilter", FN(orbMedianFilter), "f8 f8 3", "3", "two or three", "23468"},
    // Signal generation and windows.

    {"orbGenerateTone", FN(orbGenerateTone), "f8 1.0 0.1 0.5", "456", "four", "678"},
    {"orbGenerateTriangle", FN(orbGenerateTriangle), "f8 1.0 0.1 0.5 0.0", "5", "five", "678"},
    {"orbGenerateUniform", FN(orbGenerateUniform), "f8 -1.0 1.0 7", "4", "four", "368"},
    {"orbGenerateGaussian", FN(orbGenerateGaussian), "f8 0.0 1.0 7", "4", "four", "368"},
    {"orbGenerateJaehne", FN(orbGenerateJaehne), "f8 2.0", "2", "two", "3468"},
    {"orbGenerateSlope", FN(orbGenerateSlope), "f8 1.0 0.5", "3", "three", "3468"},
    {"orbBartlett", FN(orbBartlett), "f8 f8", "2", "one or two", "3678"},
    {"orbHamming", FN(orbHamming), "f8 f8", "2", "one or two", "3678"},
    {"orbHann", FN(orbHann), "f8 f8", "2", "one or two", "3678"},
    {"orbBlackmanStd", FN(orbBlackmanStd), "f8 f8", "2", "one or two", "3678"},
    {"orbBlackmanOpt", FN(orbBlackmanOpt), "f8 f8", "2", "one or two", "3678"},
    {"orbBlackman", FN(orbBlackman), "f8 f8 0.5", "3", "two or three", "3678"},
    {"orbKaiser", FN(orbKaiser), "f8 f8 0.5", "3", "two or three", "3678"},
    // Images: borders, wavelets, edges and lines.
    // These take matrices and images: the row's one-dimensional rtables at
    // the image positions (a bit mask) are handed over as matrices of about
    // square shape. None of them checks its count, so every count is one
    // they accept (':' to '=' stand for 10 to 13, after the digits).
#define ORB_IMAGE_ROW(f, positions)                                                                  \
    reinterpret_cast<ExportFn>(+[](HostCallbacks cb, ArgSeq args) -> HostValue {                     \
        HostValue local[24];                                                                         \
        int64_t n = HostNumArgs(cb, args), last = n + 4 < 23 ? n + 4 : 23;                           \
        for (int64_t i = 0; i <= last; ++i)                                                          \
            local[i] = args[i];                                                                      \
        for (int64_t i = 1; i <= n && i < 24; ++i) {                                                 \
            orbhost::Host *h = orbhost::current();                                                   \
            if (!((positions >> i) & 1) || !h->isRTable(local[i]))                                   \
                continue;                                                                            \
            orbhost::RTableInfo info = h->rtableInfo(local[i]);                                      \
            int64_t rows = 1;                                                                        \
            while ((rows + 1) * (rows + 1) <= info.count)                                            \
                ++rows;                                                                              \
            while (info.count % rows)                                                                \
                --rows;                                                                              \
            if (info.bounds.size() == 1 && info.count > 0)                                           \
                local[i] = h->rtable(info.datatype, {{1, rows}, {1, info.count / rows}}, info.data); \
        }                                                                                            \
        return f(cb, local);                                                                         \
    })
#define ORB_ANY_COUNT "0123456789:;<="
    {"orbFwdDWT", ORB_IMAGE_ROW(orbFwdDWT, 0x3e), "f4/16 f4/16 f4/16 f4/16 f4/64 f4/2 1 f4/2 1 1 0.0 f4/3",
     ORB_ANY_COUNT, "", "=8"},
    {"orbInvDWT", ORB_IMAGE_ROW(orbInvDWT, 0x3e), "f4/64 f4/16 f4/16 f4/16 f4/16 f4/2 0 f4/2 0 1 0.0 f4/3",
     ORB_ANY_COUNT, "", "=8"},
    {"orbCannyEdgeDetect", ORB_IMAGE_ROW(orbCannyEdgeDetect, 0x6), "i1/48 i1/48 1 10.0 40.0 2", ORB_ANY_COUNT, "",
     "=2"},
    {"orbHoughLineRegion", ORB_IMAGE_ROW(orbHoughLineRegion, 0x4),
     "f4/20 i1/48 1.0 0.1 2 -20.0 20.0 0.0 3.0 10 i4/1", ORB_ANY_COUNT, "", ""},
    {"orbProbabilisticHoughLine", ORB_IMAGE_ROW(orbProbabilisticHoughLine, 0x4), "i4/40 i1/48 1.0 0.1 2 2 1 10 i4/1",
     ORB_ANY_COUNT, "", ""},
#undef ORB_ANY_COUNT
#undef ORB_IMAGE_ROW

    {"orbGetIPPVersion", FN(orbGetIPPVersion), "", "*", "", ""},
    {"orbGetEnabledCPUFeatures", FN(orbGetEnabledCPUFeatures), "", "*", "", ""},
};

constexpr int64_t kLength = 5;

int codeOf(const std::string &t)
{
    static const char *const names[] = {"", "", "i1", "i2", "i4", "i8", "f8", "c8", "f4"};
    std::string head = t.substr(0, t.find('/'));
    for (int c = 2; c <= 8; ++c)
        if (head == names[c])
            return c;
    return -1;
}

// An rtable of code with elements 1, 2, 3, ... (complex ones with an
// imaginary part of a half).
Value filled(Host &h, int code, int64_t n, const std::vector<std::pair<int64_t, int64_t>> &bounds = {})
{
    std::vector<unsigned char> bytes(size_t(n) * 16);
    for (int64_t i = 0; i < n; ++i) {
        double v = double(i + 1);
        unsigned char *p = bytes.data();
        switch (code) {
        case DT_INT1: p[i] = (unsigned char)(i + 1); break;
        case DT_INT2: { int16_t x = int16_t(i + 1); std::memcpy(p + 2 * i, &x, 2); break; }
        case DT_INT4: { int32_t x = int32_t(i + 1); std::memcpy(p + 4 * i, &x, 4); break; }
        case DT_INT8: { int64_t x = i + 1; std::memcpy(p + 8 * i, &x, 8); break; }
        case DT_FLOAT8: std::memcpy(p + 8 * i, &v, 8); break;
        case DT_COMPLEX8: { double z[2] = {v, 0.5}; std::memcpy(p + 16 * i, z, 16); break; }
        case DT_FLOAT4: { float x = float(v); std::memcpy(p + 4 * i, &x, 4); break; }
        default: break;
        }
    }
    const void *data = code >= DT_INT1 ? bytes.data() : nullptr;
    if (!bounds.empty())
        return h.rtable(code, bounds, data);
    return h.rtable1(code, n, data);
}

std::vector<std::string> tokens(const char *spec)
{
    std::istringstream in(spec);
    std::vector<std::string> out;
    std::string t;
    while (in >> t)
        out.push_back(t);
    return out;
}

Value make(Host &h, const std::string &t)
{
    if (t.size() >= 2 && t.front() == '"' && t.back() == '"')
        return h.string(t.substr(1, t.size() - 2));
    int code = codeOf(t);
    if (code >= 0) {
        size_t slash = t.find('/');
        return filled(h, code, slash == std::string::npos ? kLength : std::stoll(t.substr(slash + 1)));
    }
    if (t.find('.') != std::string::npos)
        return h.float64(std::stod(t));
    return h.integer(std::stoll(t));
}

std::vector<Value> validArgs(Host &h, const Row &row)
{
    std::vector<Value> args;
    for (const std::string &t : tokens(row.args))
        args.push_back(make(h, t));
    return args;
}

// What one call left wrong, or "".
struct Outcome {
    CallResult result;
    std::string fault;
};

// The count a call reports: the row's forced one, or the real one.
constexpr int64_t kRealCount = INT64_MIN;
int64_t countOf(const Row &row) { return row.forcedCount >= 0 ? row.forcedCount : kRealCount; }

Outcome run(Host &h, const Row &row, const std::vector<Value> &args, int64_t count)
{
    int64_t before = orbBackendLiveAllocations();
    if (count != kRealCount)
        h.forceNumArgs(count);
    Outcome o{h.call(row.fn, args), ""};
    h.clearForcedNumArgs();
    orbBackendFailNthAllocation(0);
    if (orbBackendLiveAllocations() != before)
        o.fault = "left " + std::to_string(orbBackendLiveAllocations() - before) + " allocations";
    else if (!h.guardsIntact())
        o.fault = "wrote outside an rtable's storage";
    return o;
}

// The wrong values tried in place of one argument.
std::vector<Value> wrongValues(Host &h, const std::string &original)
{
    std::vector<Value> out;
    int code = codeOf(original);
    for (int c = 0; c <= 8; ++c)
        if (c != code)
            out.push_back(filled(h, c, kLength));
    if (code >= 0) {
        out.push_back(filled(h, code, 2));
        out.push_back(filled(h, code, 9));
        out.push_back(filled(h, code, 0));
        out.push_back(filled(h, code, 6, {{1, 2}, {1, 3}}));
        out.push_back(h.rtable(code, {{1, kLength}}, nullptr, orbhost::kNonRectangular));
    }
    for (Value v : {h.string("nearest"), h.name("x"), h.integer(-1), h.integer(int64_t(1) << 40),
                    h.float64(0.5), h.complex(1, 1), h.null(), h.list({h.integer(1)})})
        out.push_back(v);
    return out;
}

std::vector<std::string> sweep(const Row &row)
{
    std::vector<std::string> faults;
    auto note = [&](const std::string &what, const Outcome &o) {
        if (!o.fault.empty())
            faults.push_back(std::string(row.name) + " " + what + ": " + o.fault);
    };
    std::vector<std::string> spec = tokens(row.args);

    // The valid call, then with the k-th allocation failing: each failure
    // raises "out of memory", until a k at which the call succeeds.
    {
        Host h;
        Outcome o = run(h, row, validArgs(h, row), countOf(row));
        note("valid call", o);
        if (o.result.raised && !(row.validError && o.result.error == row.validError))
            faults.push_back(std::string(row.name) + " valid call raised: " + o.result.error);
    }
    for (int k = 1;; ++k) {
        Host h;
        std::vector<Value> args = validArgs(h, row);
        orbBackendFailNthAllocation(k);
        Outcome o = run(h, row, args, countOf(row));
        note("allocation " + std::to_string(k) + " failing", o);
        if (!o.result.raised || (row.validError && o.result.error == row.validError))
            break;
        if (o.result.error != "out of memory" || k == 64) {
            faults.push_back(std::string(row.name) + " allocation " + std::to_string(k) +
                             " failing raised: " + o.result.error);
            break;
        }
    }

    // Every argument replaced by each wrong value, in both error modes.
    for (ErrorMode mode : {ErrorMode::Jump, ErrorMode::Return})
        for (size_t i = 0; i < spec.size(); ++i) {
            Host h;
            h.setErrorMode(mode);
            std::vector<Value> args = validArgs(h, row);
            for (Value wrong : wrongValues(h, spec[i])) {
                std::vector<Value> call = args;
                call[i] = wrong;
                note("argument " + std::to_string(i + 1) + " " + h.print(wrong) +
                         (mode == ErrorMode::Return ? " (returning raise)" : ""),
                     run(h, row, call, countOf(row)));
            }
        }

    // Wrong argument counts raise before anything else happens.
    if (std::strcmp(row.counts, "*") == 0) {
        Host h;
        Outcome o = run(h, row, {}, -1);
        note("a negative count", o);
        if (o.result.error != "impossible number of arguments")
            faults.push_back(std::string(row.name) + " negative count raised: " + o.result.error);
    } else {
        for (int n = 0; n <= int(spec.size()) + 1; ++n) {
            if (std::strchr(row.counts, '0' + n))
                continue;
            Host h;
            std::vector<Value> args = validArgs(h, row);
            args.resize(size_t(n), h.integer(1));
            Outcome o = run(h, row, args, kRealCount);
            note(std::to_string(n) + " arguments", o);
            std::string want = std::string("expecting ") + row.arity +
                               (std::strcmp(row.arity, "one") ? " arguments" : " argument") +
                               ", but received " + std::to_string(n);
            if (o.result.error != want)
                faults.push_back(std::string(row.name) + " with " + std::to_string(n) +
                                 " arguments raised: " + o.result.error);
        }
    }

    // Argument 1 in every datatype, with every rtable of argument 1's
    // datatype changed alike, so only that choice differs: a datatype not in
    // the row raises, and one in it reaches a kernel of its own.
    if (*row.codes) {
        bool typed = row.codes[0] == '=';
        for (int c = 0; c <= 8; ++c) {
            bool takes = std::strchr(row.codes, '0' + c) != nullptr;
            Host h;
            std::vector<Value> args = validArgs(h, row);
            for (size_t i = 0; i < spec.size(); ++i)
                if (codeOf(spec[i]) == codeOf(spec[0]))
                    args[i] = filled(h, c, h.rtableInfo(args[i]).count);
            Outcome o = run(h, row, args, countOf(row));
            note("argument 1 of datatype " + std::to_string(c), o);
            const std::string &e = o.result.error;
            bool ok = takes ? e.find("datatype not supported") == std::string::npos &&
                                  e.find("ippStsDataTypeErr") == std::string::npos
                  : typed ? e.rfind("expecting an rtable with datatype", 0) == 0
                          : e == "datatype not supported";
            if (!ok)
                faults.push_back(std::string(row.name) + " argument 1 of datatype " + std::to_string(c) +
                                 " raised: '" + e + "'");
        }
    }
    return faults;
}

std::vector<std::string> missingRows(const std::set<std::string> &exported, const std::vector<Row> &rows)
{
    std::set<std::string> have;
    for (const Row &r : rows)
        have.insert(r.name);
    std::vector<std::string> missing;
    for (const std::string &name : exported)
        if (!have.count(name))
            missing.push_back(name);
    return missing;
}

// The names of kind "export" in the export list that the shared library
// defines.
std::set<std::string> exportedOperations()
{
    std::set<std::string> names, defined = orbtest::definedDynamicSymbols();
    for (const auto &[name, kind] : orbtest::exportList())
        if (kind == "export" && defined.count(name))
            names.insert(name);
    return names;
}

TEST(Sweep, EveryExportHasARow)
{
    std::set<std::string> exported = exportedOperations();
    ASSERT_FALSE(exported.empty()) << "no exports read from " ORB_SHARED_LIBRARY;
    std::vector<Row> rows(std::begin(kRows), std::end(kRows));
    for (const std::string &name : missingRows(exported, rows))
        ADD_FAILURE() << name << " is exported but has no sweep row";
    for (const Row &r : rows)
        EXPECT_TRUE(exported.count(r.name)) << r.name << " has a row but is not exported";
}

// Rows print by name in test listings.
void PrintTo(const Row &row, std::ostream *os) { *os << row.name; }

class SweepRows : public ::testing::TestWithParam<Row> {};

TEST_P(SweepRows, NoLeakNoStrayWriteOnAnyPath)
{
    for (const std::string &fault : sweep(GetParam()))
        ADD_FAILURE() << fault;
}

INSTANTIATE_TEST_SUITE_P(Exports, SweepRows, ::testing::ValuesIn(kRows),
                         [](const ::testing::TestParamInfo<Row> &info) { return std::string(info.param.name); });

// Exports written for the sweep itself: a correct one that holds scratch
// memory, one that holds a block across its checks (so a raise loses it),
// and one that reports a failed allocation in the wrong words.
HostValue holdsScratch(HostCallbacks cb, ArgSeq args, int leak, int wrongMessage)
{
    int64_t n = orbBegin(cb, args);
    OrbHeld held;
    Ipp64f *dst, *copy;
    const Ipp64f *src;
    int64_t len, len2;

    orbHeldInit(&held);
    if (leak)
        orbMalloc8u(&held, 64);
    if (n != 2) {
        orbArityError(cb, ARITY_TWO, n);
        return 0;
    }
    dst = GetFloat8Sample(cb, args[1]);
    len = HostRTableNumElements(cb, args[1]);
    src = GetFloat8Sample(cb, args[2]);
    len2 = HostRTableNumElements(cb, args[2]);
    if (!orbCountsAgree(cb, len2 == len) || !orbAllFit(cb, &len, args, 1, 2, DT_FLOAT8)) {
        orbRelease(&held);
        return args[1];
    }
    copy = orbMalloc64f(&held, orbLen32(len));
    if (wrongMessage && held.failed) {
        orbRelease(&held);
        HostError(cb, "no memory");
        return args[1];
    }
    if (!orbAllocated(cb, &held))
        return args[1];
    if (!orbOk(cb, &held, ippsCopy_64f(src, copy, orbLen32(len))) ||
        !orbOk(cb, &held, ippsAdd_64f(copy, src, dst, orbLen32(len))))
        return args[1];
    orbRelease(&held);
    return args[1];
}

HostValue goodScratch(HostCallbacks cb, ArgSeq args) { return holdsScratch(cb, args, 0, 0); }
HostValue leakyScratch(HostCallbacks cb, ArgSeq args) { return holdsScratch(cb, args, 1, 0); }
HostValue mislabelledScratch(HostCallbacks cb, ArgSeq args) { return holdsScratch(cb, args, 0, 1); }

bool anyContains(const std::vector<std::string> &faults, const std::string &text)
{
    for (const std::string &f : faults)
        if (f.find(text) != std::string::npos)
            return true;
    return false;
}

TEST(Sweep, CatchesLeaksWrongMessagesAndMissingRows)
{
    Row good{"good", FN(goodScratch), "f8 f8", "2", "two", "=6"};
    std::vector<std::string> faults = sweep(good);
    EXPECT_TRUE(faults.empty()) << faults[0];

    Row leaky{"leaky", FN(leakyScratch), "f8 f8", "2", "two", "=6"};
    EXPECT_TRUE(anyContains(sweep(leaky), "3 arguments: left 1 allocations"));

    Row mislabelled{"mislabelled", FN(mislabelledScratch), "f8 f8", "2", "two", "=6"};
    EXPECT_TRUE(anyContains(sweep(mislabelled), "allocation 1 failing raised: no memory"));

    std::vector<Row> rows{good};
    EXPECT_EQ(missingRows({"good", "unlisted"}, rows), std::vector<std::string>{"unlisted"});
}

// The scratch helpers on their own, through a host in both error modes.
TEST(Scratch, SizesAtMostZeroAllocateNothingAndFailuresFreeEverything)
{
    Host h;
    HostCallbacks cb = h.callbacks();
    int64_t before = orbBackendLiveAllocations();
    OrbHeld held;

    orbHeldInit(&held);
    orbBackendFailNthAllocation(1);
    EXPECT_EQ(orbMalloc8u(&held, 0), nullptr);
    EXPECT_EQ(orbMalloc32f(&held, -3), nullptr);
    EXPECT_FALSE(held.failed);  // the switch was not consumed
    EXPECT_EQ(orbMalloc32fc(&held, 4), nullptr);
    EXPECT_TRUE(held.failed);
    EXPECT_EQ(orbMalloc64f(&held, 4), nullptr);  // nothing more after a failure
    EXPECT_EQ(orbBackendLiveAllocations(), before);

    h.setErrorMode(ErrorMode::Return);
    CallResult r = h.protect([&] { return HostValue(orbAllocated(cb, &held)); });
    EXPECT_EQ(r.error, "out of memory");
    EXPECT_EQ(r.result, 0u);

    int step = 0;
    orbHeldInit(&held);
    EXPECT_NE(orbMalloc8u(&held, 10), nullptr);
    EXPECT_NE(orbMallocImage32f(&held, 3, 2, 3, &step), nullptr);
    EXPECT_GE(step, 36);
    EXPECT_EQ(orbBackendLiveAllocations(), before + 2);
    r = h.protect([&] { return HostValue(orbOk(cb, &held, ippStsSizeErr)); });
    EXPECT_EQ(orbBackendLiveAllocations(), before);
    EXPECT_EQ(r.error.rfind("IPP Error: ippStsSizeErr", 0), 0u) << r.error;

    // Initialisers fail on warnings too; computations pass them.
    orbHeldInit(&held);
    orbMalloc64f(&held, 2);
    EXPECT_EQ(h.protect([&] { return HostValue(orbOk(cb, &held, ippStsNoErr + 1)); }).raised, false);
    EXPECT_EQ(orbBackendLiveAllocations(), before + 1);
    EXPECT_TRUE(h.protect([&] { return HostValue(orbInitOk(cb, &held, ippStsNoErr + 1)); }).raised);
    EXPECT_EQ(orbBackendLiveAllocations(), before);

    // A record that is full counts as a failed allocation, not a lost block.
    orbHeldInit(&held);
    for (int i = 0; i < ORB_HELD_MAX; ++i)
        orbMalloc8u(&held, 1);
    EXPECT_EQ(orbMalloc8u(&held, 1), nullptr);
    EXPECT_TRUE(held.failed);
    orbRelease(&held);
    EXPECT_EQ(orbBackendLiveAllocations(), before);
}

}  // namespace

namespace {

// Where the literal steps would run past the host's storage, the library
// stays inside it and keeps every result that lies within it.
TEST(Bounds, ByteSwapReversesWholeThreeByteGroupsOnly)
{
    Host h;
    for (int64_t n : {7, 2}) {
        Value src = filled(h, DT_INT1, n), dst = h.rtable1(DT_INT1, n);
        ASSERT_FALSE(h.call(FN(orbSwapBytes), {dst, src}).raised);
        std::vector<int8_t> want = n == 7 ? std::vector<int8_t>{3, 2, 1, 6, 5, 4, 0} : std::vector<int8_t>{0, 0};
        EXPECT_EQ(orbtest::contents<int8_t>(h, dst), want);
    }
    EXPECT_TRUE(h.guardsIntact());
}

TEST(Bounds, AfterAReturningRaiseOnlyWhatEveryOperandHasIsComputed)
{
    Host h;
    h.setErrorMode(ErrorMode::Return);
    // The constant family carries on past a length mismatch: over the
    // shorter source's three elements only.
    Value dst = h.rtable1(DT_FLOAT8, 5);
    CallResult r = h.call(FN(orbAddConstant), {dst, filled(h, DT_FLOAT8, 3), h.float64(10.0)});
    EXPECT_EQ(r.errors, std::vector<std::string>{"rtables must have the same number of elements"});
    EXPECT_EQ(r.result, dst);
    EXPECT_EQ(orbtest::contents<double>(h, dst), (std::vector<double>{11, 12, 13, 0, 0}));
    // A source of another element size is not computed over at all.
    r = h.call(FN(orbAdd), {dst, filled(h, DT_FLOAT4, 5), filled(h, DT_FLOAT8, 5)});
    EXPECT_EQ(r.errors.size(), 1u);
    EXPECT_EQ(r.result, dst);
    EXPECT_EQ(orbtest::contents<double>(h, dst), (std::vector<double>{11, 12, 13, 0, 0}));
    // Same element size, so computed: the mismatch report stands all the same.
    Value bytes = h.rtable1(DT_INT4, 5);
    r = h.call(FN(orbAnd), {bytes, filled(h, DT_FLOAT4, 5), filled(h, DT_INT4, 5)});
    EXPECT_EQ(r.errors.size(), 1u);
    EXPECT_TRUE(h.guardsIntact());
}

}  // namespace
