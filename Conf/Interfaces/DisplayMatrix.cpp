#include <Conf/Interfaces/DisplayMatrix.h>

#include <foundation/Number.h>
#include <foundation/PolarAngle.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <type_traits>

namespace Quenzo::Conf {

namespace {

static_assert(sizeof(DisplayMatrix) == 9 * sizeof(std::int32_t));
static_assert(std::is_trivially_copyable_v<DisplayMatrix>);

constexpr double kLinearUnit = DisplayMatrix::kLinearOne;
constexpr double kProjectiveUnit = DisplayMatrix::kProjectiveOne;

std::int32_t ToLinear(double value) { return SaturatingTruncate<std::int32_t>(value * kLinearUnit); }

// Calculated without a sign, modulo 2^32, because negating the lowest number overflows.
std::int32_t Negate(std::int32_t value) { return static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(value)); }

// The length, in ordinary units, of a vector of two entries. The sum of their squares is at most 2^63, and unlike
// std::hypot the square root is rounded the same on every machine.
double GetLength(std::int32_t x, std::int32_t y) {
    const auto square = [](std::int64_t entry) { return static_cast<std::uint64_t>(entry * entry); };
    return std::sqrt(static_cast<double>(square(x) + square(y))) / kLinearUnit;
}

// m0, m1, m3 and m4 in ordinary units.
std::array<std::int32_t, 4> GetLinearPart(ImageOrientation orientation) {
    switch (orientation) {
        case ImageOrientation::Normal: break;
        case ImageOrientation::MirroredHorizontally: return {-1, 0, 0, 1};
        case ImageOrientation::Rotated180: return {-1, 0, 0, -1};
        case ImageOrientation::MirroredVertically: return {1, 0, 0, -1};
        case ImageOrientation::Transposed: return {0, 1, 1, 0};
        case ImageOrientation::Rotated90: return {0, 1, -1, 0};
        case ImageOrientation::Transversed: return {0, -1, -1, 0};
        case ImageOrientation::Rotated270: return {0, -1, 1, 0};
    }
    return {1, 0, 0, 1};
}

}  // namespace

constinit const DisplayMatrix DisplayMatrix::s_default;

DisplayMatrix::DisplayMatrix(ImageOrientation orientation) {
    const std::array<std::int32_t, 4> linear = GetLinearPart(orientation);
    m[0] = linear[0] * kLinearOne;
    m[1] = linear[1] * kLinearOne;
    m[3] = linear[2] * kLinearOne;
    m[4] = linear[3] * kLinearOne;
}

DisplayMatrix::DisplayMatrix(double m0, double m1, double m3, double m4, double m6, double m7)
    : m{ToLinear(m0), ToLinear(m1), 0, ToLinear(m3), ToLinear(m4), 0, ToLinear(m6), ToLinear(m7), kProjectiveOne} {}

DisplayMatrix DisplayMatrix::FromRotation(double angleDegrees) {
    DisplayMatrix matrix;
    if (std::abs(angleDegrees) > 1.0) {
        ffmpeg::av_display_rotation_set(matrix.m.data(), angleDegrees);
    }
    return matrix;
}

bool DisplayMatrix::IsDefault() const {
    return m[0] == s_default.m[0] && m[1] == s_default.m[1] && m[3] == s_default.m[3] && m[4] == s_default.m[4];
}

bool DisplayMatrix::IsValidMatrix() const { return std::isfinite(ffmpeg::av_display_rotation_get(m.data())); }

Transform2D DisplayMatrix::GetTransform() const {
    return {{m[0] / kLinearUnit, m[1] / kLinearUnit, m[2] / kProjectiveUnit,  //
             m[3] / kLinearUnit, m[4] / kLinearUnit, m[5] / kProjectiveUnit,  //
             m[6] / kLinearUnit, m[7] / kLinearUnit, m[8] / kProjectiveUnit}};
}

std::optional<ImageOrientation> DisplayMatrix::GetOrientation() const {
    const double rotation = GetRotation();
    const auto isNear = [rotation](double degrees) { return std::abs(rotation - degrees) < 1; };
    if (isNear(90)) {
        return m[3] < 0 ? ImageOrientation::Rotated90 : ImageOrientation::Transposed;
    }
    if (isNear(180)) {
        return m[4] < 0 ? ImageOrientation::Rotated180 : ImageOrientation::MirroredHorizontally;
    }
    if (isNear(270)) {
        return m[3] < 0 ? ImageOrientation::Transversed : ImageOrientation::Rotated270;
    }
    if (isNear(0)) {
        return m[4] < 0 ? ImageOrientation::MirroredVertically : ImageOrientation::Normal;
    }
    return std::nullopt;
}

double DisplayMatrix::GetRotation() const { return ffmpeg::get_rotation(m.data()); }

void DisplayMatrix::CorrectTranslation(const FrameSize& size) {
    const Proc::RectT<double, double> frame = {0, 0, static_cast<double>(size.width), static_cast<double>(size.height)};
    const Proc::RectT<double, double> box = GetTransform().GetBoundingBox(frame);
    m[6] = box.left < 0 ? ToLinear(-box.left) : 0;
    m[7] = box.top < 0 ? ToLinear(-box.top) : 0;
}

double NormalizeRotation(double degrees) {
    // Zero is not a normal number either; answering it here makes the negative zero positive.
    if (!std::isnormal(degrees)) {
        return 0;
    }
    return std::fma(-360.0, std::floor(degrees / 360 + 0.0025), degrees);
}

namespace ffmpeg {

double av_display_rotation_get(const std::int32_t* m) {
    const double s0 = GetLength(m[0], m[3]);
    const double s1 = GetLength(m[1], m[4]);
    if (s0 == 0 || s1 == 0) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return PolarAngle(m[1] / kLinearUnit / s1, m[0] / kLinearUnit / s0) * 180 / -std::numbers::pi;
}

void av_display_rotation_set(std::int32_t* m, double angle) {
    const double radians = angle * -std::numbers::pi / 180;
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    m[0] = ToLinear(c);
    m[1] = ToLinear(-s);
    m[2] = 0;
    m[3] = ToLinear(s);
    m[4] = ToLinear(c);
    m[5] = 0;
    m[6] = 0;
    m[7] = 0;
    m[8] = DisplayMatrix::kProjectiveOne;
}

void av_display_matrix_flip(std::int32_t* m, int hflip, int vflip) {
    for (std::size_t row = 0; row < 9; row += 3) {
        m[row] = hflip != 0 ? Negate(m[row]) : m[row];
        m[row + 1] = vflip != 0 ? Negate(m[row + 1]) : m[row + 1];
    }
}

double get_rotation(const std::int32_t* m) {
    return m == nullptr ? 0 : NormalizeRotation(-std::round(av_display_rotation_get(m)));
}

}  // namespace ffmpeg

}  // namespace Quenzo::Conf
