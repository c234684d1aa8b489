// Covers the bounding boxes of Conf/Interfaces/Transform2D.h, for rectangles, frames and frames whose pixels have a
// shape, up to sizes that do not fit their integers.

#include <Conf/Interfaces/Transform2D.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace Quenzo::Conf {
namespace {

using Rect = Proc::RectT<double, double>;

constexpr double kPi = std::numbers::pi;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::uint32_t kLargest = 4294967295;
constexpr std::uint32_t kLargestEven = 4294967294;

constexpr Transform2D kZero = {{0, 0, 0, 0, 0, 0, 0, 0, 0}};

Transform2D Turned(double degrees) { return Transform2D().Rotate(degrees * kPi / 180); }

Transform2D Scaled(double sx, double sy) { return Transform2D().Scale(sx, sy); }

void ExpectNear(const Rect& box, const Rect& expected) {
    EXPECT_NEAR(box.left, expected.left, 1e-12);
    EXPECT_NEAR(box.top, expected.top, 1e-12);
    EXPECT_NEAR(box.width, expected.width, 1e-12);
    EXPECT_NEAR(box.height, expected.height, 1e-12);
}

void ExpectSize(const Transform2D& transform, const FrameSize& size, const FrameSize& whole, const FrameSize& even) {
    EXPECT_EQ(transform.GetBoundingBox(size, false), whole);
    EXPECT_EQ(transform.GetBoundingBox(size, true), even);
}

void ExpectInfo(const Transform2D& transform, const FrameInfo& info, const FrameInfo& whole, const FrameInfo& even) {
    EXPECT_EQ(transform.GetBoundingBox(info, false), whole);
    EXPECT_EQ(transform.GetBoundingBox(info, true), even);
}

TEST(BoundingBoxOfRect, Identity_IsTheRectangle) {
    const Rect rect = {-3.5, 2.25, 10, 20.125};
    EXPECT_EQ(Transform2D().GetBoundingBox(rect), rect);
}

TEST(BoundingBoxOfRect, NegativeSize_IsTurnedRound) {
    EXPECT_EQ(Transform2D().GetBoundingBox(Rect{10, 20, -4, -6}), (Rect{6, 14, 4, 6}));
}

TEST(BoundingBoxOfRect, TranslationAndScale_AreExact) {
    EXPECT_EQ(Transform2D().Translate(5, -7).GetBoundingBox(Rect{1, 2, 3, 4}), (Rect{6, -5, 3, 4}));
    EXPECT_EQ(Scaled(2, 0.5).GetBoundingBox(Rect{1, 2, 3, 4}), (Rect{2, 1, 6, 2}));
    EXPECT_EQ(Scaled(-1, -1).GetBoundingBox(Rect{1, 2, 3, 4}), (Rect{-4, -6, 3, 4}));
    EXPECT_EQ(Transform2D().Translate(5, -7).Scale(-2, 3).GetBoundingBox(Rect{1, 2, 3, 4}), (Rect{-3, -1, 6, 12}));
}

TEST(BoundingBoxOfRect, QuarterTurns_MoveTheRectangleAboutTheOrigin) {
    ExpectNear(Turned(90).GetBoundingBox(Rect{1, 2, 3, 4}), {-6, 1, 4, 3});
    ExpectNear(Turned(180).GetBoundingBox(Rect{1, 2, 3, 4}), {-4, -6, 3, 4});
    ExpectNear(Turned(270).GetBoundingBox(Rect{1, 2, 3, 4}), {2, -4, 4, 3});
}

TEST(BoundingBoxOfRect, AnEighthOfATurn_StandsOnACorner) {
    ExpectNear(Turned(45).GetBoundingBox(Rect{0, 0, 2, 2}),
               {-std::numbers::sqrt2, 0, 2 * std::numbers::sqrt2, 2 * std::numbers::sqrt2});
}

TEST(BoundingBoxOfRect, EachCorner_CanBeTheOuterOne) {
    // Four shears; each pushes another corner of the unit square to the right and down.
    EXPECT_EQ((Transform2D{{-1, -1, 0, -1, -1, 0, 9, 9, 1}}.GetBoundingBox(Rect{0, 0, 1, 1})), (Rect{7, 7, 2, 2}));
    EXPECT_EQ((Transform2D{{1, 1, 0, -1, -1, 0, 9, 9, 1}}.GetBoundingBox(Rect{0, 0, 1, 1})), (Rect{8, 8, 2, 2}));
    EXPECT_EQ((Transform2D{{1, 1, 0, 1, 1, 0, 9, 9, 1}}.GetBoundingBox(Rect{0, 0, 1, 1})), (Rect{9, 9, 2, 2}));
    EXPECT_EQ((Transform2D{{-1, -1, 0, 1, 1, 0, 9, 9, 1}}.GetBoundingBox(Rect{0, 0, 1, 1})), (Rect{8, 8, 2, 2}));
}

TEST(BoundingBoxOfRect, Projective_DividesEachCornerByItsOwnW) {
    // w is 1 on the left and 2 on the right: (0,0) (2,0) (2,2) (0,4) are the corners' images.
    const Transform2D byX = {{4, 0, 0.25, 0, 1, 0, 0, 0, 1}};
    EXPECT_EQ(byX.GetBoundingBox(Rect{0, 0, 4, 4}), (Rect{0, 0, 8, 4}));
    // w is 1 at the top and 2 at the bottom.
    const Transform2D byY = {{1, 0, 0, 0, 4, 0.25, 0, 0, 1}};
    EXPECT_EQ(byY.GetBoundingBox(Rect{0, 0, 4, 4}), (Rect{0, 0, 4, 8}));
    const Transform2D halved = {{1, 0, 0, 0, 1, 0, 2, 4, 2}};
    EXPECT_EQ(halved.GetBoundingBox(Rect{0, 0, 4, 6}), (Rect{1, 2, 2, 3}));
}

TEST(BoundingBoxOfRect, TranslatedOrScaledByNothing_StaysProjective) {
    const Transform2D projective = {{4, 0, 0.25, 0, 1, 0, 0, 0, 1}};
    EXPECT_EQ(Transform2D(projective).Translate(0, 0).Scale(1, 1), projective);
}

TEST(BoundingBoxOfRect, CornerAtInfinity_LeavesOutTheCoordinateThatIsNoNumber) {
    // w is 0 along the right edge: there x is 100/0, and y is 0/0 above and 100/0 below.
    const Transform2D horizon = {{1, 0, -0.0078125, 0, 1, 0, 0, 0, 1}};
    EXPECT_EQ(horizon.GetBoundingBox(Rect{0, 0, 128, 100}), (Rect{0, 0, kInfinity, kInfinity}));
    // The same with the corner without a place first of all.
    const Transform2D reversed = {{1, 0, 1, 0, 1, 0, 0, 0, 0}};
    EXPECT_EQ(reversed.GetBoundingBox(Rect{0, 0, 4, 4}), (Rect{1, 0, 0, kInfinity}));
}

TEST(BoundingBoxOfRect, NoCornerWithAPlace_IsNaN) {
    const Rect box = kZero.GetBoundingBox(Rect{0, 0, 100, 100});
    EXPECT_TRUE(std::isnan(box.left));
    EXPECT_TRUE(std::isnan(box.top));
    EXPECT_TRUE(std::isnan(box.width));
    EXPECT_TRUE(std::isnan(box.height));
}

TEST(BoundingBoxOfRect, Products_AreNotFused) {
    // Fused, the sums would keep the last bit of the squares, 2^-60.
    const double a = 1 + 0x1p-30;
    EXPECT_EQ((Transform2D{{a, a, 0, 0, 0, 0, -1, -1, 1}}.GetBoundingBox(Rect{a, a, 0, 0})),
              (Rect{0x1p-29, 0x1p-29, 0, 0}));
    EXPECT_EQ((Transform2D{{0, 0, 0, a, a, 0, -1, -1, 1}}.GetBoundingBox(Rect{a, a, 0, 0})),
              (Rect{0x1p-29, 0x1p-29, 0, 0}));
    EXPECT_EQ((Transform2D{{0, 0, a, 0, 0, 0, 1, 1, -1}}.GetBoundingBox(Rect{a, a, 0, 0})),
              (Rect{0x1p29, 0x1p29, 0, 0}));
    EXPECT_EQ((Transform2D{{0, 0, 0, 0, 0, a, 1, 1, -1}}.GetBoundingBox(Rect{a, a, 0, 0})),
              (Rect{0x1p29, 0x1p29, 0, 0}));
}

TEST(BoundingBoxOfRect, Sums_GoFromLeftToRight) {
    // 2^53 + 1 is 2^53 again. Added from the right the first sums would be 1; with the last two changed round, the
    // second would be 0.
    const double big = 0x1p53;
    EXPECT_EQ((Transform2D{{big, big, 0, 1, 1, 0, -big, -big, 1}}.GetBoundingBox(Rect{1, 1, 0, 0})),
              (Rect{0, 0, 0, 0}));
    EXPECT_EQ((Transform2D{{big, big, 0, -big, -big, 0, 1, 1, 1}}.GetBoundingBox(Rect{1, 1, 0, 0})),
              (Rect{1, 1, 0, 0}));
}

TEST(BoundingBoxOfFrameSize, Identity_KeepsTheSize) {
    ExpectSize({}, {1920, 1080}, {1920, 1080}, {1920, 1080});
    ExpectSize({}, {0, 0}, {0, 0}, {0, 0});
    ExpectSize({}, {1, 3}, {1, 3}, {2, 4});
    ExpectSize({}, {1919, 1081}, {1919, 1081}, {1920, 1082});
}

TEST(BoundingBoxOfFrameSize, Turned_HasTheSizeOfTheBox) {
    ExpectSize(Turned(90), {1920, 1080}, {1080, 1920}, {1080, 1920});
    ExpectSize(Turned(180), {1920, 1080}, {1920, 1080}, {1920, 1080});
    ExpectSize(Turned(-90), {1920, 1080}, {1080, 1920}, {1080, 1920});
    ExpectSize(Turned(45), {100, 100}, {141, 141}, {142, 142});
    // The sides are 800 cos 30 + 600 sin 30 = 992.82 and 800 sin 30 + 600 cos 30 = 919.62.
    ExpectSize(Turned(30), {800, 600}, {993, 920}, {992, 920});
}

TEST(BoundingBoxOfFrameSize, Translation_DoesNotCount) {
    ExpectSize(Transform2D().Translate(-500, 1e6), {640, 480}, {640, 480}, {640, 480});
}

TEST(BoundingBoxOfFrameSize, Halves_AreRoundedUp) {
    ExpectSize(Scaled(0.5, 0.25), {5, 10}, {3, 3}, {2, 2});
    ExpectSize(Scaled(0.5, 0.5), {1, 4}, {1, 2}, {0, 2});
    ExpectSize(Scaled(0.25, 0.25), {1, 4}, {0, 1}, {0, 2});
    ExpectSize(Scaled(1.25, 1.25), {2, 4}, {3, 5}, {2, 6});
}

TEST(BoundingBoxOfFrameSize, LargestFrames_FitOrSaturate) {
    ExpectSize({}, {kLargest, kLargest}, {kLargest, kLargest}, {kLargestEven, kLargestEven});
    ExpectSize({}, {kLargestEven, kLargest - 2}, {kLargestEven, kLargest - 2}, {kLargestEven, kLargestEven});
    ExpectSize(Scaled(2, 3), {kLargest, 2147483648}, {kLargest, kLargest}, {kLargestEven, kLargestEven});
    ExpectSize(Scaled(kInfinity, 1), {4, 0}, {0, 0}, {0, 0});
    ExpectSize({{1e300, 0, 0, 0, 1, 0, 0, 0, 1}}, {4, 5}, {kLargest, 5}, {kLargestEven, 6});
}

TEST(BoundingBoxOfFrameSize, InfiniteSide_IsTheLargestSize) {
    ExpectSize({{1, 0, -0.0078125, 0, 1, 0, 0, 0, 1}}, {128, 100}, {kLargest, kLargest}, {kLargestEven, kLargestEven});
}

TEST(BoundingBoxOfFrameSize, SideThatIsNoNumber_IsZero) { ExpectSize(kZero, {1920, 1080}, {0, 0}, {0, 0}); }

TEST(BoundingBoxOfFrameInfo, SquarePixels_StaySquare) {
    ExpectInfo({}, {1920, 1080, 1, 1}, {1920, 1080, 1, 1}, {1920, 1080, 1, 1});
    ExpectInfo(Turned(90), {1920, 1080, 1, 1}, {1080, 1920, 1, 1}, {1080, 1920, 1, 1});
    ExpectInfo(Turned(45), {100, 100, 1, 1}, {141, 141, 1, 1}, {142, 142, 1, 1});
    ExpectInfo(Scaled(3, 0.5), {100, 101, 1, 1}, {300, 51, 1, 1}, {300, 50, 1, 1});
    ExpectInfo(kZero, {100, 100, 1, 1}, {0, 0, 1, 1}, {0, 0, 1, 1});
}

TEST(BoundingBoxOfFrameInfo, OneSideOfThePixelOne_IsNotSquare) {
    ExpectInfo(Scaled(3, 1), {10, 10, 1, 2}, {10, 10, 3, 2}, {10, 10, 3, 2});
    ExpectInfo(Scaled(3, 1), {10, 10, 2, 1}, {10, 10, 6, 1}, {10, 10, 6, 1});
}

TEST(BoundingBoxOfFrameInfo, EqualSidesOtherThanOne_AreNotReduced) {
    ExpectInfo({}, {640, 480, 7, 7}, {640, 480, 7, 7}, {640, 480, 7, 7});
    ExpectInfo(Scaled(2, 2), {640, 480, 7, 7}, {640, 480, 14, 14}, {640, 480, 14, 14});
}

TEST(BoundingBoxOfFrameInfo, QuarterTurn_TurnsThePixels) {
    ExpectInfo({}, {720, 576, 64, 45}, {720, 576, 64, 45}, {720, 576, 64, 45});
    ExpectInfo(Turned(90), {720, 576, 64, 45}, {576, 720, 45, 64}, {576, 720, 45, 64});
    ExpectInfo(Turned(180), {721, 577, 64, 45}, {721, 577, 64, 45}, {722, 578, 64, 45});
}

TEST(BoundingBoxOfFrameInfo, EighthOfATurn_MeasuresTheDisplayedFrameInTheNewPixels) {
    // A pixel's box is (64 + 45) / sqrt 2 = 77.07 on each side; the frame's (46080 + 25920) / sqrt 2 = 50911.69, which
    // is 661.19 times 77.
    ExpectInfo(Turned(45), {720, 576, 64, 45}, {661, 661, 77, 77}, {662, 662, 77, 77});
}

TEST(BoundingBoxOfFrameInfo, Translation_DoesNotCount) {
    ExpectInfo(Transform2D().Translate(-500, 1e6), {720, 576, 64, 45}, {720, 576, 64, 45}, {720, 576, 64, 45});
}

TEST(BoundingBoxOfFrameInfo, Products_WrapModulo32Bits) {
    // 2147483649 * 2 is 2, and 1431655767 * 3 is 5, modulo 2^32.
    ExpectInfo({}, {2147483649, 1431655767, 2, 3}, {1, 2, 2, 3}, {2, 2, 2, 3});
    ExpectInfo({}, {65536, 65537, 65536, 65536}, {0, 1, 65536, 65536}, {0, 2, 65536, 65536});
    // (2^32 - 1)^2 is 1.
    ExpectInfo({}, {kLargest, kLargest, kLargest, kLargest}, {0, 0, kLargest, kLargest}, {0, 0, kLargest, kLargest});
    ExpectInfo({}, {kLargest, 1, 2, 1}, {2147483647, 1, 2, 1}, {2147483648, 2, 2, 1});
}

TEST(BoundingBoxOfFrameInfo, PixelRoundedAway_GivesTheLargestSize) {
    ExpectInfo(Scaled(0.125, 1), {100, 50, 3, 2}, {kLargest, 50, 0, 2}, {kLargestEven, 50, 0, 2});
    ExpectInfo(Scaled(1, 0.125), {100, 50, 3, 2}, {100, kLargest, 3, 0}, {100, kLargestEven, 3, 0});
    ExpectInfo(Scaled(0.125, 0.125), {100, 50, 3, 2}, {kLargest, kLargest, 0, 0}, {kLargestEven, kLargestEven, 0, 0});
}

TEST(BoundingBoxOfFrameInfo, NothingDividedByNothing_IsZero) {
    ExpectInfo({}, {1920, 1080, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0});
    ExpectInfo({}, {1920, 1080, 0, 1}, {0, 1080, 0, 1}, {0, 1080, 0, 1});
    ExpectInfo({}, {1920, 1080, 1, 0}, {1920, 0, 1, 0}, {1920, 0, 1, 0});
    ExpectInfo(kZero, {1920, 1080, 4, 3}, {0, 0, 0, 0}, {0, 0, 0, 0});
}

TEST(BoundingBoxOfFrameInfo, PixelThatDoesNotFit_SaturatesToo) {
    // The pixel is 2^33 wide, which saturates; the frame's 2^43 are 2048.0000005 times that.
    ExpectInfo(Scaled(0x1p32, 1), {1024, 10, 2, 1}, {2048, 10, kLargest, 1}, {2048, 10, kLargest, 1});
}

}  // namespace
}  // namespace Quenzo::Conf
