// Covers Conf/Interfaces/Transform2D.h with random chains of operations, against models in long double that are written
// in another way: as a product of three by three matrices, and as points that are moved step by step.

#include <Conf/Interfaces/Transform2D.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <ostream>
#include <tuple>
#include <utility>
#include <vector>

namespace Quenzo::Conf {
namespace {

using Rect = Proc::RectT<double, double>;
using Matrix = std::array<std::array<long double, 3>, 3>;

constexpr Matrix kIdentity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

// Relative to the largest number that a calculation went through.
constexpr long double kTolerance = 1e-12L;

enum class Kind { Translate, Scale, Rotate };

struct Step {
    Kind kind;
    double a;
    double b;
};

std::ostream& operator<<(std::ostream& out, const Step& step) {
    constexpr std::array<const char*, 3> names = {"Translate", "Scale", "Rotate"};
    return out << names.at(static_cast<std::size_t>(step.kind)) << '(' << step.a << ", " << step.b << ')';
}

// Translations up to 4096 pixels, scales from -4 to 4 and rotations over ten turns; zeros and ones among them.
Step MakeStep(const std::tuple<int, int, int>& numbers) {
    const auto [kind, a, b] = numbers;
    switch (kind) {
        case 0: return {Kind::Translate, a / 16.0, b / 16.0};
        case 1: return {Kind::Scale, a / 16384.0, b / 16384.0};
        default: return {Kind::Rotate, a / 1024.0, 0};
    }
}

rc::Gen<Step> GenStep() {
    const auto number = rc::gen::weightedOneOf<int>(
        {{8, rc::gen::inRange(-65536, 65537)}, {1, rc::gen::just(0)}, {1, rc::gen::just(16384)}});
    return rc::gen::map(rc::gen::tuple(rc::gen::inRange(0, 3), number, number), MakeStep);
}

rc::Gen<std::vector<Step>> GenChain() { return rc::gen::container<std::vector<Step>>(GenStep()); }

Transform2D Run(const std::vector<Step>& chain) {
    Transform2D transform;
    for (const Step& step : chain) {
        switch (step.kind) {
            case Kind::Translate: transform.Translate(step.a, step.b); break;
            case Kind::Scale: transform.Scale(step.a, step.b); break;
            case Kind::Rotate: transform.Rotate(step.a); break;
        }
    }
    return transform;
}

Matrix ToMatrix(const Step& step) {
    const auto a = static_cast<long double>(step.a);
    const auto b = static_cast<long double>(step.b);
    switch (step.kind) {
        case Kind::Translate: return {{{1, 0, 0}, {0, 1, 0}, {a, b, 1}}};
        case Kind::Scale: return {{{a, 0, 0}, {0, b, 0}, {0, 0, 1}}};
        case Kind::Rotate: break;
    }
    return {{{std::cos(a), std::sin(a), 0}, {-std::sin(a), std::cos(a), 0}, {0, 0, 1}}};
}

Matrix Multiply(const Matrix& left, const Matrix& right) {
    Matrix product = {};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            for (std::size_t i = 0; i < 3; ++i) {
                product[row][column] += left[row][i] * right[i][column];
            }
        }
    }
    return product;
}

Matrix WithoutSigns(Matrix matrix) {
    for (auto& row : matrix) {
        std::transform(row.begin(), row.end(), row.begin(), [](long double value) { return std::abs(value); });
    }
    return matrix;
}

struct Point {
    long double x;
    long double y;
};

// The largest distance from the origin at which a step leaves a point that was at most so far from it.
long double MoveDistance(const Step& step, long double distance) {
    const auto a = std::abs(static_cast<long double>(step.a));
    const auto b = std::abs(static_cast<long double>(step.b));
    switch (step.kind) {
        case Kind::Translate: return distance + a + b;
        case Kind::Scale: return distance * std::max(a, b);
        case Kind::Rotate: break;
    }
    return distance;
}

Point Move(const Step& step, const Point& p) {
    const auto a = static_cast<long double>(step.a);
    const auto b = static_cast<long double>(step.b);
    switch (step.kind) {
        case Kind::Translate: return {p.x + a, p.y + b};
        case Kind::Scale: return {p.x * a, p.y * b};
        case Kind::Rotate: break;
    }
    const long double distance = std::hypot(p.x, p.y);
    const long double angle = std::atan2(p.y, p.x) + a;
    return {distance * std::cos(angle), distance * std::sin(angle)};
}

Point Image(const Transform2D& transform, const Point& p) {
    std::array<long double, 9> m{};
    std::copy(transform.m.begin(), transform.m.end(), m.begin());
    const long double w = m[2] * p.x + m[5] * p.y + m[8];
    return {(m[0] * p.x + m[3] * p.y + m[6]) / w, (m[1] * p.x + m[4] * p.y + m[7]) / w};
}

void AssertNear(long double actual, long double expected, long double magnitude) {
    RC_ASSERT(std::abs(actual - expected) <= kTolerance * (magnitude + 1));
}

void AssertBox(const Transform2D& transform, const Rect& rect, long double magnitude) {
    const auto left = static_cast<long double>(rect.left);
    const auto top = static_cast<long double>(rect.top);
    const long double right = left + static_cast<long double>(rect.width);
    const long double bottom = top + static_cast<long double>(rect.height);
    std::vector<long double> xs;
    std::vector<long double> ys;
    for (const Point& corner : {Point{left, top}, Point{right, top}, Point{right, bottom}, Point{left, bottom}}) {
        const Point image = Image(transform, corner);
        xs.push_back(image.x);
        ys.push_back(image.y);
    }
    const auto [minX, maxX] = std::minmax_element(xs.begin(), xs.end());
    const auto [minY, maxY] = std::minmax_element(ys.begin(), ys.end());
    const Rect box = transform.GetBoundingBox(rect);
    AssertNear(box.left, *minX, magnitude);
    AssertNear(box.top, *minY, magnitude);
    AssertNear(box.width, *maxX - *minX, magnitude);
    AssertNear(box.height, *maxY - *minY, magnitude);
}

rc::Gen<double> GenCoordinate() {
    return rc::gen::map(rc::gen::inRange(-65536, 65537), [](int number) { return number / 16.0; });
}

RC_GTEST_PROP(Transform2DChain, Matrix_IsTheProductWithTheLastStepLeftmost, ()) {
    const auto chain = *GenChain();
    Matrix expected = kIdentity;
    Matrix magnitude = kIdentity;
    for (const Step& step : chain) {
        expected = Multiply(ToMatrix(step), expected);
        magnitude = Multiply(WithoutSigns(ToMatrix(step)), magnitude);
    }
    const Transform2D transform = Run(chain);
    for (std::size_t i = 0; i < 9; ++i) {
        AssertNear(transform.m[i], expected[i / 3][i % 3], magnitude[i / 3][i % 3]);
    }
}

RC_GTEST_PROP(Transform2DChain, Point_GoesThroughTheStepsFromTheLastToTheFirst, ()) {
    const auto chain = *GenChain();
    const Point start = {*GenCoordinate(), *GenCoordinate()};
    Point expected = start;
    long double distance = std::hypot(start.x, start.y);
    for (const Step& step : std::vector<Step>(chain.rbegin(), chain.rend())) {
        expected = Move(step, expected);
        distance = MoveDistance(step, distance);
    }
    const Point image = Image(Run(chain), start);
    AssertNear(image.x, expected.x, distance);
    AssertNear(image.y, expected.y, distance);
}

RC_GTEST_PROP(Transform2DChain, OnAProjectiveMatrix_MultipliesTheLastColumnToo, ()) {
    const auto step = *GenStep();
    Transform2D transform = {{2, 3, 5, 7, 11, 13, 17, 19, 23}};
    const Matrix expected = Multiply(ToMatrix(step), {{{2, 3, 5}, {7, 11, 13}, {17, 19, 23}}});
    switch (step.kind) {
        case Kind::Translate: transform.Translate(step.a, step.b); break;
        case Kind::Scale: transform.Scale(step.a, step.b); break;
        case Kind::Rotate: transform.Rotate(step.a); break;
    }
    for (std::size_t i = 0; i < 9; ++i) {
        AssertNear(transform.m[i], expected[i / 3][i % 3], 1e5L);
    }
}

RC_GTEST_PROP(Transform2DChain, RotateThereAndBack_ChangesNothing, ()) {
    const auto chain = *GenChain();
    const double angle = *GenCoordinate();
    const Transform2D before = Run(chain);
    const Transform2D after = Transform2D(before).Rotate(angle).Rotate(-angle);
    for (std::size_t i = 0; i < 9; ++i) {
        const std::size_t column = i % 3;
        AssertNear(after.m[i], before.m[i], std::abs(before.m[column]) + std::abs(before.m[3 + column]));
    }
}

RC_GTEST_PROP(Transform2DChain, Rotation_IsTheSumOfTheAngles, ()) {
    const auto angles = *rc::gen::container<std::vector<double>>(GenCoordinate());
    Transform2D transform;
    long double sum = 0;
    for (const double angle : angles) {
        transform.Rotate(angle);
        sum += static_cast<long double>(angle);
    }
    const long double turns =
        (sum - static_cast<long double>(transform.GetRotation())) / (2 * std::numbers::pi_v<long double>);
    // An arc cosine loses half of its digits where it is flat.
    RC_ASSERT(std::abs(turns - std::round(turns)) < 1e-7L);
}

RC_GTEST_PROP(Transform2DBox, OfARandomChain_IsThatOfTheCorners, ()) {
    const Transform2D transform = Run(*GenChain());
    const Rect rect = {*GenCoordinate(), *GenCoordinate(), *GenCoordinate(), *GenCoordinate()};
    long double magnitude = 1;
    for (const double entry : transform.m) {
        magnitude += std::abs(static_cast<long double>(entry)) * 16384;
    }
    AssertBox(transform, rect, magnitude);
}

RC_GTEST_PROP(Transform2DBox, OfAProjectiveTransform_IsThatOfTheCorners, ()) {
    // The divisor stays between 1 and 5, or the images would lie anywhere.
    const double px = *rc::gen::inRange(0, 1001) / 4096000.0;
    const double py = *rc::gen::inRange(0, 1001) / 4096000.0;
    const Transform2D transform = {{*GenCoordinate(), *GenCoordinate(), px, *GenCoordinate(), *GenCoordinate(), py,
                                    *GenCoordinate(), *GenCoordinate(), 1}};
    const Rect rect = {*rc::gen::inRange(0, 4096) * 1.0, *rc::gen::inRange(0, 4096) * 1.0,
                       *rc::gen::inRange(0, 4096) * 1.0, *rc::gen::inRange(0, 4096) * 1.0};
    AssertBox(transform, rect, 4096.0L * 16384);
}

RC_GTEST_PROP(Transform2DBox, OfTheIdentity_IsTheFrame, (std::uint32_t width, std::uint32_t height)) {
    RC_ASSERT(Transform2D().GetBoundingBox(FrameSize{width, height}, false) == (FrameSize{width, height}));
}

RC_GTEST_PROP(Transform2DBox, EvenSize_IsEvenAndWithinAPixelOfTheWholeOne, ()) {
    const Transform2D transform = Run(*GenChain());
    const FrameSize size = {*rc::gen::arbitrary<std::uint32_t>(), *rc::gen::arbitrary<std::uint32_t>()};
    const FrameSize whole = transform.GetBoundingBox(size, false);
    const FrameSize even = transform.GetBoundingBox(size, true);
    for (const auto& [w, e] : {std::pair{whole.width, even.width}, std::pair{whole.height, even.height}}) {
        RC_ASSERT(e % 2 == 0U);
        RC_ASSERT(std::max(w, e) - std::min(w, e) <= 1U);
    }
}

}  // namespace
}  // namespace Quenzo::Conf
