/* Base types, enumerations and status codes of the numeric backend.
 *
 * Names, layouts and values follow the published C interface of the
 * primitives library this backend stands in for, so that either can be built
 * against the same calling code.
 */
#ifndef IPPTYPES_H
#define IPPTYPES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define IPPAPI(type, name, args) type name args;

typedef unsigned char Ipp8u;
typedef signed char Ipp8s;
typedef unsigned short Ipp16u;
typedef signed short Ipp16s;
typedef unsigned int Ipp32u;
typedef signed int Ipp32s;
typedef float Ipp32f;
typedef int64_t Ipp64s;
typedef uint64_t Ipp64u;
typedef double Ipp64f;

typedef struct { Ipp8u re, im; } Ipp8uc;
typedef struct { Ipp16s re, im; } Ipp16sc;
typedef struct { Ipp32s re, im; } Ipp32sc;
typedef struct { Ipp32f re, im; } Ipp32fc;
typedef struct { Ipp64s re, im; } Ipp64sc;
typedef struct { Ipp64f re, im; } Ipp64fc;

typedef struct { int width; int height; } IppiSize;
typedef struct { int x; int y; int width; int height; } IppiRect;
typedef struct { int x; int y; } IppiPoint;

/* An enumeration argument may hold any int its caller passes (a C caller
 * can); in C++ the enumerations take int as their fixed type, so such a value
 * is a value the entry point can refuse rather than undefined behaviour. */
#ifdef __cplusplus
#define IPP_ENUM enum : int
#else
#define IPP_ENUM enum
#endif

typedef IPP_ENUM { ippAlgHintNone = 0, ippAlgHintFast = 1, ippAlgHintAccurate = 2 } IppHintAlgorithm;

typedef IPP_ENUM {
    ippRndZero = 0,
    ippRndNear = 1,
    ippRndFinancial = 2,
    ippRndHintAccurate = 0x10
} IppRoundMode;

typedef struct {
    int major;
    int minor;
    int majorBuild;
    int build;
    char targetCpu[4];
    const char *Name;
    const char *Version;
    const char *BuildDate;
} IppLibraryVersion;

/* Element types, as size queries and some functions take them. */
typedef IPP_ENUM {
    ippUndef = -1,
    ipp1u = 0,
    ipp8u, ipp8uc, ipp8s, ipp8sc,
    ipp16u, ipp16uc, ipp16s, ipp16sc,
    ipp32u, ipp32uc, ipp32s, ipp32sc, ipp32f, ipp32fc,
    ipp64u, ipp64uc, ipp64s, ipp64sc, ipp64f, ipp64fc
} IppDataType;

/* Algorithm choice and result normalisation of convolution and correlation;
 * the two are or-ed into one argument. */
typedef int IppEnum;
typedef IPP_ENUM { ippAlgAuto = 0x00000000, ippAlgDirect = 0x00000001, ippAlgFFT = 0x00000002, ippAlgMask = 0x000000FF } IppAlgType;
typedef IPP_ENUM { ippsNormNone = 0x00000000, ippsNormB = 0x00000100, ippsNormU = 0x00000200, ippsNormMask = 0x0000FF00 } IppsNormOp;

/* Normalisation flags of the Fourier transforms. */
#define IPP_FFT_DIV_FWD_BY_N 1
#define IPP_FFT_DIV_INV_BY_N 2
#define IPP_FFT_DIV_BY_SQRTN 4
#define IPP_FFT_NODIV_BY_ANY 8

typedef IPP_ENUM { ippWinBartlett = 0, ippWinBlackman = 1, ippWinHamming = 2, ippWinHann = 3, ippWinRect = 4 } IppWinType;
typedef IPP_ENUM { ippButterworth = 0, ippChebyshev1 = 1 } IppsIIRFilterType;
typedef IPP_ENUM { ippFalse = 0, ippTrue = 1 } IppBool;
typedef IPP_ENUM { ippZCR = 0, ippZCXor = 1, ippZCC = 2 } IppsZCType;

/* Image-side options: differential kernels, mask sizes, norms, borders. */
typedef IPP_ENUM {
    ippFilterSobelVert = 0, ippFilterSobelHoriz = 1, ippFilterSobel = 2,
    ippFilterScharrVert = 3, ippFilterScharrHoriz = 4, ippFilterScharr = 5,
    ippFilterCentralDiffVert = 6, ippFilterCentralDiffHoriz = 7, ippFilterCentralDiff = 8
} IppiDifferentialKernel;
typedef IPP_ENUM {
    ippMskSize1x3 = 13, ippMskSize1x5 = 15, ippMskSize3x1 = 31, ippMskSize3x3 = 33,
    ippMskSize5x1 = 51, ippMskSize5x5 = 55
} IppiMaskSize;
typedef IPP_ENUM { ippNormInf = 0x00000001, ippNormL1 = 0x00000002, ippNormL2 = 0x00000004 } IppNormType;
typedef IPP_ENUM {
    ippBorderConst = 0, ippBorderRepl = 1, ippBorderWrap = 2, ippBorderMirror = 3, ippBorderMirrorR = 4,
    ippBorderDefault = 5, ippBorderInMem = 6, ippBorderInMemTop = 0x0010, ippBorderInMemBottom = 0x0020,
    ippBorderInMemLeft = 0x0040, ippBorderInMemRight = 0x0080
} IppiBorderType;

/* A line in polar form (Hough transforms). */
typedef struct { Ipp32f rho; Ipp32f theta; } IppPointPolar;

/* Opaque set-up and state structures; the functions that use them
 * size them with their own queries and initialise them in caller memory. */
typedef struct IppsFFTSpec_C_32fc IppsFFTSpec_C_32fc;
typedef struct IppsFFTSpec_C_64fc IppsFFTSpec_C_64fc;
typedef struct IppsFFTSpec_R_32f IppsFFTSpec_R_32f;
typedef struct IppsFFTSpec_R_64f IppsFFTSpec_R_64f;
typedef struct IppsFFTSpec_C_64f IppsFFTSpec_C_64f;
typedef struct IppsFFTSpec_C_32f IppsFFTSpec_C_32f;
typedef struct IppsDFTSpec_C_32fc IppsDFTSpec_C_32fc;
typedef struct IppsDFTSpec_C_64fc IppsDFTSpec_C_64fc;
typedef struct IppsDFTSpec_R_32f IppsDFTSpec_R_32f;
typedef struct IppsDFTSpec_R_64f IppsDFTSpec_R_64f;
typedef struct IppsDFTSpec_C_64f IppsDFTSpec_C_64f;
typedef struct IppsDFTSpec_C_32f IppsDFTSpec_C_32f;
typedef struct IppsDCTFwdSpec_32f IppsDCTFwdSpec_32f;
typedef struct IppsDCTInvSpec_32f IppsDCTInvSpec_32f;
typedef struct IppsDCTFwdSpec_64f IppsDCTFwdSpec_64f;
typedef struct IppsDCTInvSpec_64f IppsDCTInvSpec_64f;
typedef struct IppsHilbertSpec IppsHilbertSpec;
typedef struct IppsFIRSpec_32f IppsFIRSpec_32f;
typedef struct IppsFIRSpec_64f IppsFIRSpec_64f;
typedef struct IppsFIRLMSState_32f IppsFIRLMSState_32f;
typedef struct IppsFIRLMSState_64f IppsFIRLMSState_64f;
typedef struct IppsIIRState_32f IppsIIRState_32f;
typedef struct IppsIIRState_64f IppsIIRState_64f;
typedef struct IppsIIRState_64fc IppsIIRState_64fc;
typedef struct IppsRandUniState_16s IppsRandUniState_16s;
typedef struct IppsRandUniState_32f IppsRandUniState_32f;
typedef struct IppsRandUniState_64f IppsRandUniState_64f;
typedef struct IppsRandGaussState_16s IppsRandGaussState_16s;
typedef struct IppsRandGaussState_32f IppsRandGaussState_32f;
typedef struct IppsRandGaussState_64f IppsRandGaussState_64f;
typedef struct IppiWTFwdSpec_32f_C1R IppiWTFwdSpec_32f_C1R;
typedef struct IppiWTInvSpec_32f_C1R IppiWTInvSpec_32f_C1R;
typedef struct IppiWTFwdSpec_32f_C3R IppiWTFwdSpec_32f_C3R;
typedef struct IppiWTInvSpec_32f_C3R IppiWTInvSpec_32f_C3R;
typedef struct IppiHoughProbSpec IppiHoughProbSpec;

/* Status codes: negative values are errors, zero is success, positive values
 * are warnings.
 *
 * IPP_STATUS_LIST is the one list of every status: X(name, value, text) with
 * the published name, its numeric value and the description that
 * ippGetStatusString reports. The status constants below and the texts are
 * both generated from it, so the two cannot drift apart. Ordered by value,
 * lowest first. */
typedef int IppStatus;

#define IPP_STATUS_LIST(X) \
    /* errors */ \
    X(ippStsNotSupportedModeErr, -9999, "The requested mode is currently not supported.") \
    X(ippStsCpuNotSupportedErr, -9998, "The target CPU is not supported.") \
    X(ippStsInplaceModeNotSupportedErr, -9997, "The in-place operation is currently not supported.") \
    X(ippStsIIRIIRLengthErr, -234, "Vector length for IIRIIR function is less than 3*(IIR order).") \
    X(ippStsWarpTransformTypeErr, -233, "The warp transform type is illegal.") \
    X(ippStsExceededSizeErr, -232, "Requested size exceeded the maximum supported ROI size.") \
    X(ippStsWarpDirectionErr, -231, "The warp transform direction is illegal.") \
    X(ippStsFilterTypeErr, -230, "The filter type is incorrect or not supported.") \
    X(ippStsNormErr, -229, "The norm is incorrect or not supported.") \
    X(ippStsAlgTypeErr, -228, "Algorithm type is not supported.") \
    X(ippStsMisalignedOffsetErr, -227, "The offset is not aligned with an element.") \
    X(ippStsQuadraticNonResidueErr, -226, "SQRT operation on quadratic non-residue value.") \
    X(ippStsBorderErr, -225, "Illegal value for border type.") \
    X(ippStsDitherTypeErr, -224, "Dithering type is not supported.") \
    X(ippStsH264BufferFullErr, -223, "Buffer for the output bitstream is full.") \
    X(ippStsWrongAffinitySettingErr, -222, "An affinity setting does not correspond to the affinity setting that was set before.") \
    X(ippStsLoadDynErr, -221, "Error when loading the dynamic library.") \
    X(ippStsPointAtInfinity, -220, "Point at infinity is detected.") \
    X(ippStsI18nUnsupportedErr, -219, "Internationalization (i18n) is not supported.") \
    X(ippStsI18nMsgCatalogOpenErr, -218, "Message catalog cannot be opened.") \
    X(ippStsI18nMsgCatalogCloseErr, -217, "Message catalog cannot be closed.") \
    X(ippStsUnknownStatusCodeErr, -216, "Unknown status code.") \
    X(ippStsOFBSizeErr, -215, "Incorrect value for crypto OFB block size.") \
    X(ippStsLzoBrokenStreamErr, -214, "LZO safe decompression function cannot decode LZO stream.") \
    X(ippStsRoundModeNotSupportedErr, -213, "Rounding mode is not supported.") \
    X(ippStsDecimateFractionErr, -212, "Unsupported fraction in decimate.") \
    X(ippStsWeightErr, -211, "Incorrect value for weight.") \
    X(ippStsQualityIndexErr, -210, "Quality Index cannot be calculated for an image filled with a constant.") \
    X(ippStsIIRPassbandRippleErr, -209, "Ripple in passband for Chebyshev1 design is less than zero, equal to zero, or greater than 29.") \
    X(ippStsFilterFrequencyErr, -208, "Cutoff frequency of filter is less than zero, equal to zero, or greater than 0.5.") \
    X(ippStsFIRGenOrderErr, -207, "Order of the FIR filter for design is less than 1.") \
    X(ippStsIIRGenOrderErr, -206, "Order of the IIR filter for design is less than 1, or greater than 12.") \
    X(ippStsConvergeErr, -205, "The algorithm does not converge.") \
    X(ippStsSizeMatchMatrixErr, -204, "The sizes of the source matrices are unsuitable.") \
    X(ippStsCountMatrixErr, -203, "Count value is less than, or equal to zero.") \
    X(ippStsRoiShiftMatrixErr, -202, "RoiShift value is negative or not divisible by the size of the data type.") \
    X(ippStsResizeNoOperationErr, -201, "One of the output image dimensions is less than 1 pixel.") \
    X(ippStsSrcDataErr, -200, "The source buffer contains unsupported data.") \
    X(ippStsMaxLenHuffCodeErr, -199, "Huff: Max length of Huffman code is more than the expected one.") \
    X(ippStsCodeLenTableErr, -198, "Huff: Invalid codeLenTable.") \
    X(ippStsFreqTableErr, -197, "Huff: Invalid freqTable.") \
    X(ippStsIncompleteContextErr, -196, "Crypto: set up of context is not complete.") \
    X(ippStsSingularErr, -195, "Matrix is singular.") \
    X(ippStsSparseErr, -194, "Positions of taps are not in ascending order, or are negative, or repetitive.") \
    X(ippStsBitOffsetErr, -193, "Incorrect bit offset value.") \
    X(ippStsQPErr, -192, "Incorrect quantization parameter value.") \
    X(ippStsVLCErr, -191, "Illegal VLC or FLC is detected during stream decoding.") \
    X(ippStsRegExpOptionsErr, -190, "RegExp: Options for the pattern are incorrect.") \
    X(ippStsRegExpErr, -189, "RegExp: The structure pRegExpState contains wrong data.") \
    X(ippStsRegExpMatchLimitErr, -188, "RegExp: The match limit has been exhausted.") \
    X(ippStsRegExpQuantifierErr, -187, "RegExp: Incorrect quantifier.") \
    X(ippStsRegExpGroupingErr, -186, "RegExp: Incorrect grouping.") \
    X(ippStsRegExpBackRefErr, -185, "RegExp: Incorrect back reference.") \
    X(ippStsRegExpChClassErr, -184, "RegExp: Incorrect character class.") \
    X(ippStsRegExpMetaChErr, -183, "RegExp: Incorrect metacharacter.") \
    X(ippStsStrideMatrixErr, -182, "Stride value is not positive or not divisible by the size of the data type.") \
    X(ippStsCTRSizeErr, -181, "Incorrect value for crypto CTR block size.") \
    X(ippStsJPEG2KCodeBlockIsNotAttached, -180, "Codeblock parameters are not attached to the state structure.") \
    X(ippStsNotPosDefErr, -179, "Matrix is not positive definite.") \
    X(ippStsEphemeralKeyErr, -178, "ECC: Invalid ephemeral key.") \
    X(ippStsMessageErr, -177, "ECC: Invalid message digest.") \
    X(ippStsShareKeyErr, -176, "ECC: Invalid share key.") \
    X(ippStsIvalidPublicKey, -175, "ECC: Invalid public key.") \
    X(ippStsIvalidPrivateKey, -174, "ECC: Invalid private key.") \
    X(ippStsOutOfECErr, -173, "ECC: Point out of EC.") \
    X(ippStsECCInvalidFlagErr, -172, "ECC: Invalid flag.") \
    X(ippStsMP3FrameHeaderErr, -171, "Error in fields of the IppMP3FrameHeader structure.") \
    X(ippStsMP3SideInfoErr, -170, "Error in fields of the IppMP3SideInfo structure.") \
    X(ippStsBlockStepErr, -169, "Step for Block is less than 8.") \
    X(ippStsMBStepErr, -168, "Step for MB is less than 16.") \
    X(ippStsAacPrgNumErr, -167, "AAC: Invalid number of elements for one program.") \
    X(ippStsAacSectCbErr, -166, "AAC: Invalid section codebook.") \
    X(ippStsAacSfValErr, -164, "AAC: Invalid scalefactor value.") \
    X(ippStsAacCoefValErr, -163, "AAC: Invalid quantized coefficient value.") \
    X(ippStsAacMaxSfbErr, -162, "AAC: Invalid coefficient index.") \
    X(ippStsAacPredSfbErr, -161, "AAC: Invalid predicted coefficient index.") \
    X(ippStsAacPlsDataErr, -160, "AAC: Invalid pulse data attributes.") \
    X(ippStsAacGainCtrErr, -159, "AAC: Gain control is not supported.") \
    X(ippStsAacSectErr, -158, "AAC: Invalid number of sections.") \
    X(ippStsAacTnsNumFiltErr, -157, "AAC: Invalid number of TNS filters.") \
    X(ippStsAacTnsLenErr, -156, "AAC: Invalid length of TNS region.") \
    X(ippStsAacTnsOrderErr, -155, "AAC: Invalid order of TNS filter.") \
    X(ippStsAacTnsCoefResErr, -154, "AAC: Invalid bit-resolution for TNS filter coefficients.") \
    X(ippStsAacTnsCoefErr, -153, "AAC: Invalid coefficients of TNS filter.") \
    X(ippStsAacTnsDirectErr, -152, "AAC: Invalid direction TNS filter.") \
    X(ippStsAacTnsProfileErr, -151, "AAC: Invalid TNS profile.") \
    X(ippStsAacErr, -150, "AAC: Internal error.") \
    X(ippStsAacBitOffsetErr, -149, "AAC: Invalid current bit offset in bitstream.") \
    X(ippStsAacAdtsSyncWordErr, -148, "AAC: Invalid ADTS syncword.") \
    X(ippStsAacSmplRateIdxErr, -147, "AAC: Invalid sample rate index.") \
    X(ippStsAacWinLenErr, -146, "AAC: Invalid window length (not short or long).") \
    X(ippStsAacWinGrpErr, -145, "AAC: Invalid number of groups for current window length.") \
    X(ippStsAacWinSeqErr, -144, "AAC: Invalid window sequence range.") \
    X(ippStsAacComWinErr, -143, "AAC: Invalid common window flag.") \
    X(ippStsAacStereoMaskErr, -142, "AAC: Invalid stereo mask.") \
    X(ippStsAacChanErr, -141, "AAC: Invalid channel number.") \
    X(ippStsAacMonoStereoErr, -140, "AAC: Invalid mono-stereo flag.") \
    X(ippStsAacStereoLayerErr, -139, "AAC: Invalid this Stereo Layer flag.") \
    X(ippStsAacMonoLayerErr, -138, "AAC: Invalid this Mono Layer flag.") \
    X(ippStsAacScalableErr, -137, "AAC: Invalid scalable object flag.") \
    X(ippStsAacObjTypeErr, -136, "AAC: Invalid audio object type.") \
    X(ippStsAacWinShapeErr, -135, "AAC: Invalid window shape.") \
    X(ippStsAacPcmModeErr, -134, "AAC: Invalid PCM output interleaving indicator.") \
    X(ippStsVLCUsrTblHeaderErr, -133, "VLC: Invalid header inside table.") \
    X(ippStsVLCUsrTblUnsupportedFmtErr, -132, "VLC: Table format is not supported.") \
    X(ippStsVLCUsrTblEscAlgTypeErr, -131, "VLC: Esc-algorithm is not supported.") \
    X(ippStsVLCUsrTblEscCodeLengthErr, -130, "VLC: Incorrect Esc-code length inside table header.") \
    X(ippStsVLCUsrTblCodeLengthErr, -129, "VLC: Unsupported code length inside table.") \
    X(ippStsVLCInternalTblErr, -128, "VLC: Invalid internal table.") \
    X(ippStsVLCInputDataErr, -127, "VLC: Invalid input data.") \
    X(ippStsVLCAACEscCodeLengthErr, -126, "VLC: Invalid AAC-Esc code length.") \
    X(ippStsNoiseRangeErr, -125, "Noise value for Wiener Filter is out of range.") \
    X(ippStsUnderRunErr, -124, "Error in data under run.") \
    X(ippStsPaddingErr, -123, "Detected padding error indicates the possible data corruption.") \
    X(ippStsCFBSizeErr, -122, "Incorrect value for crypto CFB block size.") \
    X(ippStsPaddingSchemeErr, -121, "Invalid padding scheme.") \
    X(ippStsInvalidCryptoKeyErr, -120, "A compromised key causes suspension of the requested cryptographic operation.") \
    X(ippStsLengthErr, -119, "Incorrect value for string length.") \
    X(ippStsBadModulusErr, -118, "Bad modulus caused a failure in module inversion.") \
    X(ippStsLPCCalcErr, -117, "Cannot evaluate linear prediction.") \
    X(ippStsRCCalcErr, -116, "Cannot compute reflection coefficients.") \
    X(ippStsIncorrectLSPErr, -115, "Incorrect values for Linear Spectral Pair.") \
    X(ippStsNoRootFoundErr, -114, "No roots are found for equation.") \
    X(ippStsJPEG2KBadPassNumber, -113, "Pass number exceeds the limits of [0,nOfPasses-1].") \
    X(ippStsJPEG2KDamagedCodeBlock, -112, "Codeblock for decoding contains damaged data.") \
    X(ippStsH263CBPYCodeErr, -111, "Illegal Huffman code is detected through CBPY stream processing.") \
    X(ippStsH263MCBPCInterCodeErr, -110, "Illegal Huffman code is detected through MCBPC Inter stream processing.") \
    X(ippStsH263MCBPCIntraCodeErr, -109, "Illegal Huffman code is detected through MCBPC Intra stream processing.") \
    X(ippStsNotEvenStepErr, -108, "Step value is not pixel multiple.") \
    X(ippStsHistoNofLevelsErr, -107, "Number of levels for histogram is less than 2.") \
    X(ippStsLUTNofLevelsErr, -106, "Number of levels for LUT is less than 2.") \
    X(ippStsMP4BitOffsetErr, -105, "Incorrect bit offset value.") \
    X(ippStsMP4QPErr, -104, "Incorrect quantization parameter value.") \
    X(ippStsMP4BlockIdxErr, -103, "Incorrect block index.") \
    X(ippStsMP4BlockTypeErr, -102, "Incorrect block type.") \
    X(ippStsMP4MVCodeErr, -101, "Illegal Huffman code is detected during MV stream processing.") \
    X(ippStsMP4VLCCodeErr, -100, "Illegal Huffman code is detected during VLC stream processing.") \
    X(ippStsMP4DCCodeErr, -99, "Illegal code is detected during DC stream processing.") \
    X(ippStsMP4FcodeErr, -98, "Incorrect fcode value.") \
    X(ippStsMP4AlignErr, -97, "Incorrect buffer alignment.") \
    X(ippStsMP4TempDiffErr, -96, "Incorrect temporal difference.") \
    X(ippStsMP4BlockSizeErr, -95, "Incorrect size of a block or macroblock.") \
    X(ippStsMP4ZeroBABErr, -94, "All BAB values are equal to zero.") \
    X(ippStsMP4PredDirErr, -93, "Incorrect prediction direction.") \
    X(ippStsMP4BitsPerPixelErr, -92, "Incorrect number of bits per pixel.") \
    X(ippStsMP4VideoCompModeErr, -91, "Incorrect video component mode.") \
    X(ippStsMP4LinearModeErr, -90, "Incorrect DC linear mode.") \
    X(ippStsH263PredModeErr, -83, "Incorrect value for Prediction Mode.") \
    X(ippStsH263BlockStepErr, -82, "The step value is less than 8.") \
    X(ippStsH263MBStepErr, -81, "The step value is less than 16.") \
    X(ippStsH263FrameWidthErr, -80, "The frame width is less than 8.") \
    X(ippStsH263FrameHeightErr, -79, "The frame height is less than, or equal to zero.") \
    X(ippStsH263ExpandPelsErr, -78, "The expand pixels number is less than 8.") \
    X(ippStsH263PlaneStepErr, -77, "Step value is less than the plane width.") \
    X(ippStsH263QuantErr, -76, "Incorrect quantizer value for H.263.") \
    X(ippStsH263MVCodeErr, -75, "Illegal Huffman code is detected during MV stream processing.") \
    X(ippStsH263VLCCodeErr, -74, "Illegal Huffman code is detected during VLC stream processing.") \
    X(ippStsH263DCCodeErr, -73, "Illegal code is detected during DC stream processing.") \
    X(ippStsH263ZigzagLenErr, -72, "Zigzag compact length is more than 64.") \
    X(ippStsFBankFreqErr, -71, "Incorrect value for the filter bank frequency parameter.") \
    X(ippStsFBankFlagErr, -70, "Incorrect value for the filter bank parameter.") \
    X(ippStsFBankErr, -69, "Filter bank is not correctly initialized.") \
    X(ippStsNegOccErr, -67, "Occupation count is negative.") \
    X(ippStsCdbkFlagErr, -66, "Incorrect value for the codebook flag parameter.") \
    X(ippStsSVDCnvgErr, -65, "SVD algorithm does not converge.") \
    X(ippStsJPEGHuffTableErr, -64, "JPEG Huffman table is destroyed.") \
    X(ippStsJPEGDCTRangeErr, -63, "JPEG DCT coefficient is out of range.") \
    X(ippStsJPEGOutOfBufErr, -62, "Attempt to access out of the buffer limits.") \
    X(ippStsDrawTextErr, -61, "System error in the draw text operation.") \
    X(ippStsChannelOrderErr, -60, "Incorrect order of the destination channels.") \
    X(ippStsZeroMaskValuesErr, -59, "All values of the mask are equal to zero.") \
    X(ippStsQuadErr, -58, "The quadrangle is nonconvex or degenerates into triangle, line, or point.") \
    X(ippStsRectErr, -57, "Size of the rectangle region is less than, or equal to 1.") \
    X(ippStsCoeffErr, -56, "Incorrect values for transformation coefficients.") \
    X(ippStsNoiseValErr, -55, "Incorrect value for noise amplitude for dithering.") \
    X(ippStsDitherLevelsErr, -54, "Number of dithering levels is out of range.") \
    X(ippStsNumChannelsErr, -53, "Number of channels is incorrect, or not supported.") \
    X(ippStsCOIErr, -52, "COI is out of range.") \
    X(ippStsDivisorErr, -51, "Divisor is equal to zero, function is aborted.") \
    X(ippStsAlphaTypeErr, -50, "Illegal type of image compositing operation.") \
    X(ippStsGammaRangeErr, -49, "Gamma range bounds is less than, or equal to zero.") \
    X(ippStsGrayCoefSumErr, -48, "Sum of the conversion coefficients must be less than, or equal to 1.") \
    X(ippStsChannelErr, -47, "Illegal channel number.") \
    X(ippStsToneMagnErr, -46, "Tone magnitude is less than, or equal to zero.") \
    X(ippStsToneFreqErr, -45, "Tone frequency is negative, or greater than, or equal to 0.5.") \
    X(ippStsTonePhaseErr, -44, "Tone phase is negative, or greater than, or equal to 2*PI.") \
    X(ippStsTrnglMagnErr, -43, "Triangle magnitude is less than, or equal to zero.") \
    X(ippStsTrnglFreqErr, -42, "Triangle frequency is negative, or greater than, or equal to 0.5.") \
    X(ippStsTrnglPhaseErr, -41, "Triangle phase is negative, or greater than, or equal to 2*PI.") \
    X(ippStsTrnglAsymErr, -40, "Triangle asymmetry is less than -PI, or greater than, or equal to PI.") \
    X(ippStsHugeWinErr, -39, "Kaiser window is too big.") \
    X(ippStsJaehneErr, -38, "Magnitude value is negative.") \
    X(ippStsStrideErr, -37, "Stride value is less than the length of the row.") \
    X(ippStsEpsValErr, -36, "Negative epsilon value.") \
    X(ippStsWtOffsetErr, -35, "Invalid offset value for wavelet filter.") \
    X(ippStsAnchorErr, -34, "Anchor point is outside the mask.") \
    X(ippStsMaskSizeErr, -33, "Invalid mask size.") \
    X(ippStsShiftErr, -32, "Shift value is less than zero.") \
    X(ippStsSampleFactorErr, -31, "Sampling factor is less than, or equal to zero.") \
    X(ippStsSamplePhaseErr, -30, "Phase value is out of range: 0 <= phase < factor.") \
    X(ippStsFIRMRFactorErr, -29, "MR FIR sampling factor is less than, or equal to zero.") \
    X(ippStsFIRMRPhaseErr, -28, "MR FIR sampling phase is negative, or greater than, or equal to the sampling factor.") \
    X(ippStsRelFreqErr, -27, "Relative frequency value is out of range.") \
    X(ippStsFIRLenErr, -26, "Length of a FIR filter is less than, or equal to zero.") \
    X(ippStsIIROrderErr, -25, "Order of the IIR filter is not valid.") \
    X(ippStsDlyLineIndexErr, -24, "Invalid value for the delay line sample index.") \
    X(ippStsResizeFactorErr, -23, "Resize factor(s) is less than, or equal to zero.") \
    X(ippStsInterpolationErr, -22, "Invalid interpolation mode.") \
    X(ippStsMirrorFlipErr, -21, "Invalid flip mode.") \
    X(ippStsMoment00ZeroErr, -20, "Moment value M(0,0) is too small to continue calculations.") \
    X(ippStsThreshNegLevelErr, -19, "Negative value of the level in the threshold operation.") \
    X(ippStsThresholdErr, -18, "Invalid threshold bounds.") \
    X(ippStsContextMatchErr, -17, "Context parameter does not match the operation.") \
    X(ippStsFftFlagErr, -16, "Invalid value for the FFT flag parameter.") \
    X(ippStsFftOrderErr, -15, "Invalid value for the FFT order parameter.") \
    X(ippStsStepErr, -14, "Step value is not valid.") \
    X(ippStsScaleRangeErr, -13, "Scale bounds are out of range.") \
    X(ippStsDataTypeErr, -12, "Data type is incorrect or not supported.") \
    X(ippStsOutOfRangeErr, -11, "Argument is out of range, or point is outside the image.") \
    X(ippStsDivByZeroErr, -10, "An attempt to divide by zero.") \
    X(ippStsMemAllocErr, -9, "Memory allocated for the operation is not enough.") \
    X(ippStsNullPtrErr, -8, "Null pointer error.") \
    X(ippStsRangeErr, -7, "Incorrect values for bounds: the lower bound is greater than the upper bound.") \
    X(ippStsSizeErr, -6, "Incorrect value for data size.") \
    X(ippStsBadArgErr, -5, "Incorrect arg/param of the function.") \
    X(ippStsNoMemErr, -4, "Not enough memory for the operation.") \
    X(ippStsErr, -2, "Unknown/unspecified error.") \
    /* success */ \
    X(ippStsNoErr, 0, "No errors.") \
    /* warnings */ \
    X(ippStsNoOperation, 1, "No operation has been executed.") \
    X(ippStsMisalignedBuf, 2, "Misaligned pointer in operation in which it must be aligned.") \
    X(ippStsSqrtNegArg, 3, "Negative value(s) for the argument in the function Sqrt.") \
    X(ippStsInvZero, 4, "INF result. Zero value was met by InvThresh with zero level.") \
    X(ippStsEvenMedianMaskSize, 5, "Even size of the Median Filter mask was replaced with the odd one.") \
    X(ippStsDivByZero, 6, "Zero value(s) for the divisor in the function Div.") \
    X(ippStsLnZeroArg, 7, "Zero value(s) for the argument in the function Ln.") \
    X(ippStsLnNegArg, 8, "Negative value(s) for the argument in the function Ln.") \
    X(ippStsNanArg, 9, "Argument value is not a number.") \
    X(ippStsJPEGMarker, 10, "JPEG marker in the bitstream.") \
    X(ippStsResFloor, 11, "All result values are floored.") \
    X(ippStsOverflow, 12, "Overflow in the operation.") \
    X(ippStsLSFLow, 13, "Quantized LP synthesis filter stability check is applied at the low boundary of [0,pi].") \
    X(ippStsLSFHigh, 14, "Quantized LP synthesis filter stability check is applied at the high boundary of [0,pi].") \
    X(ippStsLSFLowAndHigh, 15, "Quantized LP synthesis filter stability check is applied at both boundaries of [0,pi].") \
    X(ippStsZeroOcc, 16, "Zero occupation count.") \
    X(ippStsUnderflow, 17, "Underflow in the operation.") \
    X(ippStsSingularity, 18, "Singularity in the operation.") \
    X(ippStsDomain, 19, "Argument is out of the function domain.") \
    X(ippStsNonIntelCpu, 20, "The target CPU is not of the vendor the library was tuned for.") \
    X(ippStsCpuMismatch, 21, "Cannot set the library for the given CPU.") \
    X(ippStsNoIppFunctionFound, 22, "Application does not contain calls to the library's functions.") \
    X(ippStsDllNotFoundBestUsed, 23, "Dispatcher cannot find the newest version of the dynamic library.") \
    X(ippStsNoOperationInDll, 24, "The function does nothing in the dynamic version of the library.") \
    X(ippStsInsufficientEntropy, 25, "Generation of the prime/key failed due to insufficient entropy in the random seed and stimulus bit string.") \
    X(ippStsOvermuchStrings, 26, "Number of destination strings is more than expected.") \
    X(ippStsOverlongString, 27, "Length of one of the destination strings is more than expected.") \
    X(ippStsAffineQuadChanged, 28, "4th vertex of destination quad is not equal to the customer's one.") \
    X(ippStsWrongIntersectROI, 29, "ROI has no intersection with the source or destination ROI. No operation.") \
    X(ippStsWrongIntersectQuad, 30, "Quadrangle has no intersection with the source or destination ROI. No operation.") \
    X(ippStsSmallerCodebook, 31, "Size of created codebook is less than the cdbkSize argument.") \
    X(ippStsSrcSizeLessExpected, 32, "DC: Size of the source buffer is less than the expected one.") \
    X(ippStsDstSizeLessExpected, 33, "DC: Size of the destination buffer is less than the expected one.") \
    X(ippStsStreamEnd, 34, "DC: The end of stream processed.") \
    X(ippStsDoubleSize, 35, "Width or height of image is odd.") \
    X(ippStsNotSupportedCpu, 36, "The CPU is not supported.") \
    X(ippStsUnknownCacheSize, 37, "The CPU is supported, but the size of the cache is unknown.") \
    X(ippStsSymKernelExpected, 38, "The Kernel is not symmetric.") \
    X(ippStsEvenMedianWeight, 39, "Even weight of the Weighted Median Filter is replaced with the odd one.") \
    X(ippStsWrongIntersectVOI, 40, "VOI has no intersection with the source or destination volume. No operation.") \
    X(ippStsI18nMsgCatalogInvalid, 41, "Message catalog is invalid.") \
    X(ippStsI18nGetMessageFail, 42, "Failed to fetch a localized message.") \
    X(ippStsWaterfall, 43, "Cannot load required library, waterfall is used.") \
    X(ippStsPrevLibraryUsed, 44, "Cannot load required library, previous dynamic library is used.") \
    X(ippStsLLADisabled, 45, "OpenMP Low Level Affinity is disabled.") \
    X(ippStsNoAntialiasing, 46, "The mode does not support antialiasing.") \
    X(ippStsRepetitiveSrcData, 47, "DC: The source data is too repetitive.") \
    X(ippStsSizeWrn, 48, "The return value does not match the expected size.") \
    X(ippStsFeatureNotSupported, 49, "The feature is not supported.") \
    X(ippStsUnknownFeature, 50, "Unknown feature.") \
    X(ippStsFeaturesCombination, 51, "Wrong combination of features.") \
    X(ippStsAccurateModeNotSupported, 52, "Accurate mode is not supported.")

/* The status names are constants of type int in C (enumerators) and in C++
 * (constexpr IppStatus), so that they mix freely with other IppStatus values. */
#ifdef __cplusplus
#define IPP_STATUS_CONSTANT(name, value, text) constexpr IppStatus name = value;
IPP_STATUS_LIST(IPP_STATUS_CONSTANT)
#undef IPP_STATUS_CONSTANT
#else
#define IPP_STATUS_ENUMERATOR(name, value, text) name = value,
enum { IPP_STATUS_LIST(IPP_STATUS_ENUMERATOR) };
#undef IPP_STATUS_ENUMERATOR
#endif

#ifdef __cplusplus
}
#endif

#endif
