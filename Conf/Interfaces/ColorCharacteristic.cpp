#include <Conf/Interfaces/ColorCharacteristic.h>

#include <initializer_list>

namespace Quenzo::Conf {

namespace {

// A set of code points below 32: one bit each, so it is there before any code runs and a look-up is a shift.
template <typename Code>
class CodeSet {
public:
    constexpr CodeSet(std::initializer_list<Code> codes) {
        for (const Code code : codes) {
            bits_ |= 1U << static_cast<std::uint32_t>(code);
        }
    }

    constexpr bool Contains(Code code) const {
        const auto number = static_cast<std::uint32_t>(code);
        return number < 32 && (bits_ >> number & 1U) != 0;
    }

private:
    std::uint32_t bits_ = 0;
};

constexpr CodeSet<ColorPrimaries> kValidPrimaries = {
    ColorPrimaries::BT709,  ColorPrimaries::BT470BG,  ColorPrimaries::SMPTE170M,
    ColorPrimaries::BT2020, ColorPrimaries::SMPTE432,
};

constexpr CodeSet<TransferFunction> kValidTransferFunctions = {
    TransferFunction::BT709,     TransferFunction::BT470M,       TransferFunction::BT470BG,
    TransferFunction::SMPTE170M, TransferFunction::LINEAR,       TransferFunction::IEC61966_2_1,
    TransferFunction::SMPTE2084, TransferFunction::ARIB_STD_B67,
};

constexpr CodeSet<YCbCrMatrix> kValidMatrices = {
    YCbCrMatrix::IDENTITY,  YCbCrMatrix::BT709,     YCbCrMatrix::BT470BG,
    YCbCrMatrix::SMPTE170M, YCbCrMatrix::SMPTE240M, YCbCrMatrix::BT2020_NCL,
};

}  // namespace

bool IsValidColorPrimaries(ColorPrimaries primaries) { return kValidPrimaries.Contains(primaries); }

bool IsValidTransferFunction(TransferFunction transfer) { return kValidTransferFunctions.Contains(transfer); }

bool IsValidYCbCrMatrix(YCbCrMatrix matrix) { return kValidMatrices.Contains(matrix); }

}  // namespace Quenzo::Conf
