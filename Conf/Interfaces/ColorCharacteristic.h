#pragma once

#include <foundation/Export.h>

#include <cstdint>

namespace Quenzo::Conf {

// The numbers of the three enumerations are the code points of ITU-T H.273, which video streams carry; ColorCodes.def
// tells what each means. A variable may hold any number; one that is not listed there is reserved, or was assigned
// later.

/// The chromaticities of the three primaries and of white ("ColourPrimaries").
enum class ColorPrimaries : std::int32_t {
#define QUENZO_PRIMARIES(number, name, accepted, meaning) name = (number),
#include <Conf/Interfaces/ColorCodes.def>
};

/// How light turns into signal and back ("TransferCharacteristics").
enum class TransferFunction : std::int32_t {
#define QUENZO_TRANSFER(number, name, accepted, meaning) name = (number),
#include <Conf/Interfaces/ColorCodes.def>
};

/// How red, green and blue turn into luma and chroma ("MatrixCoefficients").
enum class YCbCrMatrix : std::int32_t {
#define QUENZO_MATRIX(number, name, accepted, meaning) name = (number),
#include <Conf/Interfaces/ColorCodes.def>
};

/// The three colour characteristics of a video stream. None is specified by default.
struct ColorSpace {
    ColorPrimaries primaries = ColorPrimaries::UNSPECIFIED;     ///< what red, green, blue and white mean
    TransferFunction transfer = TransferFunction::UNSPECIFIED;  ///< how light turns into signal and back
    YCbCrMatrix matrix = YCbCrMatrix::UNSPECIFIED;              ///< how red, green and blue turn into luma and chroma

    bool operator==(const ColorSpace& other) const = default;
};

/// True for the primaries that a description keeps: 1, 5, 6, 9 and 12.
QUENZO_API bool IsValidColorPrimaries(ColorPrimaries primaries);

/// True for the transfer functions that a description keeps: 1, 4, 5, 6, 8, 13, 16 and 18.
QUENZO_API bool IsValidTransferFunction(TransferFunction transfer);

/// True for the matrices that a description keeps: 0, 1, 5, 6, 7 and 9.
QUENZO_API bool IsValidYCbCrMatrix(YCbCrMatrix matrix);

}  // namespace Quenzo::Conf
