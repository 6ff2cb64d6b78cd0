// The export rows and the argument language they are written in.
#include "export_rows.h"

#include <cstring>
#include <sstream>

#include "orb/accessors.h"

namespace orbrows {

#define FN(f) reinterpret_cast<ExportFn>(f)

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
    // These take matrices and images (the rtables at the positions of the
    // last field become matrices). None of them checks its count, so every
    // count is one they accept (':' to '=' stand for 10 to 13, after the
    // digits).
#define ORB_ANY_COUNT "0123456789:;<="
    {"orbFwdDWT", FN(orbFwdDWT), "f4/16 f4/16 f4/16 f4/16 f4/64 f4/2 1 f4/2 1 1 0.0 f4/3",
     ORB_ANY_COUNT, "", "=8", -1, nullptr, 0x3e},
    {"orbInvDWT", FN(orbInvDWT), "f4/64 f4/16 f4/16 f4/16 f4/16 f4/2 0 f4/2 0 1 0.0 f4/3",
     ORB_ANY_COUNT, "", "=8", -1, nullptr, 0x3e},
    {"orbCannyEdgeDetect", FN(orbCannyEdgeDetect), "i1/48 i1/48 1 10.0 40.0 2", ORB_ANY_COUNT, "",
     "=2", -1, nullptr, 0x6},
    {"orbHoughLineRegion", FN(orbHoughLineRegion),
     "f4/20 i1/48 1.0 0.1 2 -20.0 20.0 0.0 3.0 10 i4/1", ORB_ANY_COUNT, "", "", -1, nullptr, 0x4},
    {"orbProbabilisticHoughLine", FN(orbProbabilisticHoughLine), "i4/40 i1/48 1.0 0.1 2 2 1 10 i4/1",
     ORB_ANY_COUNT, "", "", -1, nullptr, 0x4},
#undef ORB_ANY_COUNT

    {"orbGetIPPVersion", FN(orbGetIPPVersion), "", "*", "", ""},
    {"orbGetEnabledCPUFeatures", FN(orbGetEnabledCPUFeatures), "", "*", "", ""},
};


const size_t kRowCount = sizeof(kRows) / sizeof(kRows[0]);

int codeOf(const std::string &t)
{
    static const char *const names[] = {"", "", "i1", "i2", "i4", "i8", "f8", "c8", "f4"};
    std::string head = t.substr(0, t.find('/'));
    for (int c = 2; c <= 8; ++c)
        if (head == names[c])
            return c;
    return -1;
}

Value filled(Host &h, int code, int64_t n, const std::vector<std::pair<int64_t, int64_t>> &bounds)
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
    return shaped(h, row, args);
}

std::vector<Value> shaped(Host &h, const Row &row, std::vector<Value> args)
{
    for (size_t i = 0; i < args.size() && i + 1 < 32; ++i) {
        if (!((row.matrices >> (i + 1)) & 1) || !h.isRTable(args[i]))
            continue;
        orbhost::RTableInfo info = h.rtableInfo(args[i]);
        int64_t rows = 1;
        while ((rows + 1) * (rows + 1) <= info.count)
            ++rows;
        while (info.count % rows)
            --rows;
        if (info.bounds.size() == 1 && info.count > 0)
            args[i] = h.rtable(info.datatype, {{1, rows}, {1, info.count / rows}}, info.data);
    }
    return args;
}

}  // namespace orbrows
