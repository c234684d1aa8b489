// Every line of what quenzo-conf says of the colour of video: number, name, whether it is stored, and meaning.

#include <tests/tools/ProgramRunner.h>

#include <gtest/gtest.h>

namespace Quenzo::Tests {
namespace {

constexpr const char* kColours = R"(primaries:
number  name         accepted  meaning
     1  BT709        yes       ITU-R BT.709; also those of IEC 61966-2-1 (sRGB) and IEC 61966-2-4 (xvYCC).
     2  UNSPECIFIED  no        Not known, or determined by the application.
     4  BT470M       no        ITU-R BT.470 System M (historical): NTSC of 1953.
     5  BT470BG      yes       ITU-R BT.470 System B, G (historical); ITU-R BT.601 with 625 lines: PAL and SECAM.
     6  SMPTE170M    yes       SMPTE ST 170; ITU-R BT.601 with 525 lines: NTSC.
     7  SMPTE240M    no        SMPTE ST 240 (historical); the same chromaticities as 6.
     8  FILM         no        Generic film: colour filters under CIE illuminant C; no standard of its own.
     9  BT2020       yes       ITU-R BT.2020 and ITU-R BT.2100.
    10  SMPTE428     no        SMPTE ST 428-1: CIE 1931 XYZ.
    11  SMPTE431     no        SMPTE RP 431-2: DCI P3, with the white of cinema projectors.
    12  SMPTE432     yes       SMPTE EG 432-1: Display P3, with white D65.
    22  JEDEC_P22    no        The phosphors known as JEDEC P22; H.273 lists the chromaticities without a standard.

transfer functions:
number  name          accepted  meaning
     1  BT709         yes       ITU-R BT.709.
     2  UNSPECIFIED   no        Not known, or determined by the application.
     4  BT470M        yes       ITU-R BT.470 System M (historical): display gamma 2.2.
     5  BT470BG       yes       ITU-R BT.470 System B, G (historical): display gamma 2.8.
     6  SMPTE170M     yes       SMPTE ST 170; ITU-R BT.601: the same function as 1.
     7  SMPTE240M     no        SMPTE ST 240 (historical).
     8  LINEAR        yes       Linear; no standard of its own.
     9  LOG100        no        Logarithmic over a range of 100:1; no standard of its own.
    10  LOG316        no        Logarithmic over a range of 100 times the square root of 10 to 1; no standard of its own.
    11  IEC61966_2_4  no        IEC 61966-2-4: xvYCC.
    12  BT1361        no        ITU-R BT.1361, extended colour gamut (historical).
    13  IEC61966_2_1  yes       IEC 61966-2-1: sRGB and sYCC.
    14  BT2020_10     no        ITU-R BT.2020 with 10 bits: the same function as 1.
    15  BT2020_12     no        ITU-R BT.2020 with 12 bits: the same function as 1, with more digits.
    16  SMPTE2084     yes       SMPTE ST 2084; ITU-R BT.2100 PQ (perceptual quantisation).
    17  SMPTE428      no        SMPTE ST 428-1: cinema projection, gamma 2.6.
    18  ARIB_STD_B67  yes       ARIB STD-B67; ITU-R BT.2100 HLG (hybrid log-gamma).

matrices:
number  name                      accepted  meaning
     0  IDENTITY                  yes       No matrix: green, blue and red (IEC 61966-2-1), or Y, Z and X (SMPTE ST 428-1).
     1  BT709                     yes       ITU-R BT.709; also IEC 61966-2-4 (xvYCC 709).
     2  UNSPECIFIED               no        Not known, or determined by the application.
     4  FCC                       no        United States FCC, Title 47 CFR 73.682 (a) (20): NTSC of 1953.
     5  BT470BG                   yes       ITU-R BT.470 System B, G (historical); ITU-R BT.601 with 625 lines; sYCC, xvYCC 601.
     6  SMPTE170M                 yes       SMPTE ST 170; ITU-R BT.601 with 525 lines: the same matrix as 5.
     7  SMPTE240M                 yes       SMPTE ST 240 (historical).
     8  YCGCO                     no        YCgCo; no standard of its own.
     9  BT2020_NCL                yes       ITU-R BT.2020 with non-constant luminance; ITU-R BT.2100 Y'CbCr.
    10  BT2020_CL                 no        ITU-R BT.2020 with constant luminance.
    11  SMPTE2085                 no        SMPTE ST 2085: Y'D'zD'x.
    12  CHROMATICITY_DERIVED_NCL  no        Derived from the primaries, with non-constant luminance.
    13  CHROMATICITY_DERIVED_CL   no        Derived from the primaries, with constant luminance.
    14  ICTCP                     no        ITU-R BT.2100 ICtCp.
    15  IPT_C2                    no        SMPTE ST 2128: IPT-PQ-C2.
    16  YCGCO_RE                  no        YCgCo-R, reversible, with an even number of bits added; no standard of its own.
    17  YCGCO_RO                  no        YCgCo-R, reversible, with an odd number of bits added; no standard of its own.
)";

TEST(Colours, AreListedWithTheirMeanings) {
    const auto result = RunProgram({"colours"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(result.output, kColours);
}

}  // namespace
}  // namespace Quenzo::Tests
