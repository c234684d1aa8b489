#include <Conf/Interfaces/ColorCharacteristic.h>

#include <array>
#include <cstddef>

namespace Quenzo::Conf {

namespace {

struct Row {
    std::int32_t number;
    bool isAccepted;
};

constexpr bool Accepted = true;
constexpr bool Refused = false;

constexpr auto kPrimaries = std::to_array<Row>({
#define QUENZO_PRIMARIES(number, name, accepted, meaning) {number, accepted},
#include <Conf/Interfaces/ColorCodes.def>
});

constexpr auto kTransferFunctions = std::to_array<Row>({
#define QUENZO_TRANSFER(number, name, accepted, meaning) {number, accepted},
#include <Conf/Interfaces/ColorCodes.def>
});

constexpr auto kMatrices = std::to_array<Row>({
#define QUENZO_MATRIX(number, name, accepted, meaning) {number, accepted},
#include <Conf/Interfaces/ColorCodes.def>
});

// The accepted code points, one bit each; the compiler refuses a number beyond its bits.
template <std::size_t N>
constexpr std::uint32_t AcceptedBits(const std::array<Row, N>& rows) {
    std::uint32_t bits = 0;
    for (const Row& row : rows) {
        bits |= (row.isAccepted ? 1U : 0U) << row.number;
    }
    return bits;
}

template <typename Code>
bool Contains(std::uint32_t bits, Code code) {
    const auto number = static_cast<std::uint32_t>(code);
    return number < 32 && (bits >> number & 1U) != 0;
}

}  // namespace

bool IsValidColorPrimaries(ColorPrimaries primaries) {
    static constexpr std::uint32_t accepted = AcceptedBits(kPrimaries);
    return Contains(accepted, primaries);
}

bool IsValidTransferFunction(TransferFunction transfer) {
    static constexpr std::uint32_t accepted = AcceptedBits(kTransferFunctions);
    return Contains(accepted, transfer);
}

bool IsValidYCbCrMatrix(YCbCrMatrix matrix) {
    static constexpr std::uint32_t accepted = AcceptedBits(kMatrices);
    return Contains(accepted, matrix);
}

}  // namespace Quenzo::Conf
