#include <Conf/Interfaces/Transform2D.h>

#include <foundation/Number.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace Quenzo::Conf {

namespace {

using Rect = Proc::RectT<double, double>;

// Only so is a division by zero defined: corners at infinity and pixels without a width lead to some.
static_assert(std::numeric_limits<double>::is_iec559);

// The range of the numbers it was shown. NaN is passed over: next to a corner at infinity stands one without a place.
class Extent {
public:
    void Include(double value) {
        if (std::isnan(low_) || value < low_) {
            low_ = value;
        }
        if (std::isnan(high_) || value > high_) {
            high_ = value;
        }
    }

    double Low() const { return low_; }
    double Length() const { return high_ - low_; }

private:
    double low_ = std::numeric_limits<double>::quiet_NaN();
    double high_ = std::numeric_limits<double>::quiet_NaN();
};

std::uint32_t ToPixels(double length, bool even) {
    if (!even) {
        return SaturatingRound<std::uint32_t>(length);
    }
    // Beyond this the doubling would wrap around, and the largest frames would come out empty.
    constexpr std::uint32_t largestHalf = std::numeric_limits<std::uint32_t>::max() / 2;
    return 2 * std::min(SaturatingRound<std::uint32_t>(length / 2), largestHalf);
}

// The length of a vector, infinite when it is too large. Not std::hypot, which machines round differently, but the
// square root of a sum that cannot overflow once both numbers have the same power of two taken off.
double GetLength(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) {
        return std::hypot(x, y);  // infinity or NaN on every machine
    }
    const int power = std::ilogb(std::max(std::abs(x), std::abs(y)));
    const double shortX = std::scalbn(x, -power);
    const double shortY = std::scalbn(y, -power);
    return std::scalbn(std::sqrt(shortX * shortX + shortY * shortY), power);
}

// The angle of a vector of length above 0, from -pi to pi.
double GetAngle(double x, double y) {
    const double angle = std::acos(x / GetLength(x, y));
    return y > 0 ? angle : -angle;
}

}  // namespace

Transform2D& Transform2D::Translate(double tx, double ty) {
    if (tx == 0 && ty == 0) {
        return *this;
    }
    for (std::size_t column = 0; column < 3; ++column) {
        m[6 + column] = std::fma(ty, m[3 + column], std::fma(tx, m[column], m[6 + column]));
    }
    return *this;
}

Transform2D& Transform2D::Scale(double sx, double sy) {
    if (sx == 1 && sy == 1) {
        return *this;
    }
    for (std::size_t column = 0; column < 3; ++column) {
        m[column] *= sx;
        m[3 + column] *= sy;
    }
    return *this;
}

Transform2D& Transform2D::Rotate(double radians) {
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    for (std::size_t column = 0; column < 3; ++column) {
        const double x = m[column];
        const double y = m[3 + column];
        m[column] = c * x + s * y;
        m[3 + column] = -s * x + c * y;
    }
    return *this;
}

double Transform2D::GetRotation() const {
    if (m[0] != 0 || m[1] != 0) {
        return GetAngle(m[0], m[1]);
    }
    if (m[3] != 0 || m[4] != 0) {
        return std::numbers::pi / 2 - GetAngle(-m[3], m[4]);
    }
    return std::numeric_limits<double>::quiet_NaN();
}

Rect Transform2D::GetBoundingBox(const Rect& rect) const {
    Extent horizontal;
    Extent vertical;
    const auto include = [&](double x, double y) {
        const double w = m[2] * x + m[5] * y + m[8];
        horizontal.Include((m[0] * x + m[3] * y + m[6]) / w);
        vertical.Include((m[1] * x + m[4] * y + m[7]) / w);
    };
    include(rect.left, rect.top);
    include(rect.left + rect.width, rect.top);
    include(rect.left + rect.width, rect.top + rect.height);
    include(rect.left, rect.top + rect.height);
    return {horizontal.Low(), vertical.Low(), horizontal.Length(), vertical.Length()};
}

FrameSize Transform2D::GetBoundingBox(const FrameSize& size, bool even) const {
    const Rect box = GetBoundingBox(Rect{0, 0, static_cast<double>(size.width), static_cast<double>(size.height)});
    return {ToPixels(box.width, even), ToPixels(box.height, even)};
}

FrameInfo Transform2D::GetBoundingBox(const FrameInfo& info, bool even) const {
    if (info.aspectX == 1 && info.aspectY == 1) {
        const FrameSize size = GetBoundingBox(FrameSize{info.width, info.height}, even);
        return {size.width, size.height, 1, 1};
    }
    const FrameSize pixel = GetBoundingBox(FrameSize{info.aspectX, info.aspectY}, false);
    const std::uint32_t displayWidth = info.width * info.aspectX;
    const std::uint32_t displayHeight = info.height * info.aspectY;
    const Rect display =
        GetBoundingBox(Rect{0, 0, static_cast<double>(displayWidth), static_cast<double>(displayHeight)});
    return {ToPixels(display.width / pixel.width, even), ToPixels(display.height / pixel.height, even), pixel.width,
            pixel.height};
}

}  // namespace Quenzo::Conf
