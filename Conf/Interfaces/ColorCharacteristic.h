#pragma once

#include <foundation/Export.h>

#include <cstdint>

namespace Quenzo::Conf {

// The numbers of the three enumerations are the code points of ITU-T H.273, which video streams carry. A variable may
// hold any number; one that is not listed here is reserved, or was assigned later.

/// The chromaticities of the three primaries and of white ("ColourPrimaries").
enum class ColorPrimaries : std::int32_t {
    BT709 = 1,        ///< ITU-R BT.709; also those of IEC 61966-2-1 (sRGB) and IEC 61966-2-4 (xvYCC)
    UNSPECIFIED = 2,  ///< not known, or determined by the application
    BT470M = 4,       ///< ITU-R BT.470 System M (historical): NTSC of 1953
    BT470BG = 5,      ///< ITU-R BT.470 System B, G (historical); ITU-R BT.601 with 625 lines: PAL and SECAM
    SMPTE170M = 6,    ///< SMPTE ST 170; ITU-R BT.601 with 525 lines: NTSC
    SMPTE240M = 7,    ///< SMPTE ST 240 (historical); the same chromaticities as 6
    FILM = 8,         ///< generic film: colour filters under CIE illuminant C; no standard of its own
    BT2020 = 9,       ///< ITU-R BT.2020 and ITU-R BT.2100
    SMPTE428 = 10,    ///< SMPTE ST 428-1: CIE 1931 XYZ
    SMPTE431 = 11,    ///< SMPTE RP 431-2: DCI P3, with the white of cinema projectors
    SMPTE432 = 12,    ///< SMPTE EG 432-1: Display P3, with white D65
    JEDEC_P22 = 22,   ///< the phosphors known as JEDEC P22; H.273 lists the chromaticities without a standard
};

/// How light turns into signal and back ("TransferCharacteristics").
enum class TransferFunction : std::int32_t {
    BT709 = 1,          ///< ITU-R BT.709
    UNSPECIFIED = 2,    ///< not known, or determined by the application
    BT470M = 4,         ///< ITU-R BT.470 System M (historical): display gamma 2.2
    BT470BG = 5,        ///< ITU-R BT.470 System B, G (historical): display gamma 2.8
    SMPTE170M = 6,      ///< SMPTE ST 170; ITU-R BT.601: the same function as 1
    SMPTE240M = 7,      ///< SMPTE ST 240 (historical)
    LINEAR = 8,         ///< linear; no standard of its own
    LOG100 = 9,         ///< logarithmic over a range of 100:1; no standard of its own
    LOG316 = 10,        ///< logarithmic over a range of 100 times the square root of 10 to 1; no standard of its own
    IEC61966_2_4 = 11,  ///< IEC 61966-2-4: xvYCC
    BT1361 = 12,        ///< ITU-R BT.1361, extended colour gamut (historical)
    IEC61966_2_1 = 13,  ///< IEC 61966-2-1: sRGB and sYCC
    BT2020_10 = 14,     ///< ITU-R BT.2020 with 10 bits: the same function as 1
    BT2020_12 = 15,     ///< ITU-R BT.2020 with 12 bits: the same function as 1, with more digits
    SMPTE2084 = 16,     ///< SMPTE ST 2084; ITU-R BT.2100 PQ (perceptual quantisation)
    SMPTE428 = 17,      ///< SMPTE ST 428-1: cinema projection, gamma 2.6
    ARIB_STD_B67 = 18,  ///< ARIB STD-B67; ITU-R BT.2100 HLG (hybrid log-gamma)
};

/// How red, green and blue turn into luma and chroma ("MatrixCoefficients").
enum class YCbCrMatrix : std::int32_t {
    IDENTITY = 0,     ///< no matrix: green, blue and red (IEC 61966-2-1), or Y, Z and X (SMPTE ST 428-1)
    BT709 = 1,        ///< ITU-R BT.709; also IEC 61966-2-4 (xvYCC 709)
    UNSPECIFIED = 2,  ///< not known, or determined by the application
    FCC = 4,          ///< United States FCC, Title 47 CFR 73.682 (a) (20): NTSC of 1953
    BT470BG = 5,      ///< ITU-R BT.470 System B, G (historical); ITU-R BT.601 with 625 lines; sYCC, xvYCC 601
    SMPTE170M = 6,    ///< SMPTE ST 170; ITU-R BT.601 with 525 lines: the same matrix as 5
    SMPTE240M = 7,    ///< SMPTE ST 240 (historical)
    YCGCO = 8,        ///< YCgCo; no standard of its own
    BT2020_NCL = 9,   ///< ITU-R BT.2020 with non-constant luminance; ITU-R BT.2100 Y'CbCr
    BT2020_CL = 10,   ///< ITU-R BT.2020 with constant luminance
    SMPTE2085 = 11,   ///< SMPTE ST 2085: Y'D'zD'x
    CHROMATICITY_DERIVED_NCL = 12,  ///< derived from the primaries, with non-constant luminance
    CHROMATICITY_DERIVED_CL = 13,   ///< derived from the primaries, with constant luminance
    ICTCP = 14,                     ///< ITU-R BT.2100 ICtCp
    IPT_C2 = 15,                    ///< SMPTE ST 2128: IPT-PQ-C2
    YCGCO_RE = 16,                  ///< YCgCo-R, reversible, with an even number of bits added; no standard of its own
    YCGCO_RO = 17,                  ///< YCgCo-R, reversible, with an odd number of bits added; no standard of its own
};

/// The three colour characteristics of a video stream. None is specified by default.
struct ColorSpace {
    ColorPrimaries primaries = ColorPrimaries::UNSPECIFIED;
    TransferFunction transfer = TransferFunction::UNSPECIFIED;
    YCbCrMatrix matrix = YCbCrMatrix::UNSPECIFIED;

    bool operator==(const ColorSpace& other) const = default;
};

/// True for the primaries that a description keeps: 1, 5, 6, 9 and 12.
QUENZO_API bool IsValidColorPrimaries(ColorPrimaries primaries);

/// True for the transfer functions that a description keeps: 1, 4, 5, 6, 8, 13, 16 and 18.
QUENZO_API bool IsValidTransferFunction(TransferFunction transfer);

/// True for the matrices that a description keeps: 0, 1, 5, 6, 7 and 9.
QUENZO_API bool IsValidYCbCrMatrix(YCbCrMatrix matrix);

}  // namespace Quenzo::Conf
