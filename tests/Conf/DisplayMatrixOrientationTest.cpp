// Covers the orientations of Conf/Interfaces/DisplayMatrix.h: the eight matrices and how each is recognised, mirrored
// and moved back into view.

#include <Conf/Interfaces/DisplayMatrix.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <type_traits>

namespace Quenzo::Conf {
namespace {

using Entries = std::array<std::int32_t, 9>;
using Rect = Proc::RectT<double, double>;

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

static_assert(std::is_same_v<std::underlying_type_t<ImageOrientation>, std::int32_t>);

// How far the image is moved back: not at all, by the frame's width or by its height.
enum class By { None, Width, Height };

struct Row {
    int orientation;
    std::array<int, 4> linear;  // m0, m1, m3 and m4 in units of 1
    double rotation;
    int mirroredHorizontally;  // the orientation after a flip
    int mirroredVertically;
    int mirroredTwice;
    By right;
    By down;
};

constexpr std::array<Row, 8> kRows = {{
    {1, {1, 0, 0, 1}, 0, 2, 4, 3, By::None, By::None},
    {2, {-1, 0, 0, 1}, 180, 1, 3, 4, By::Width, By::None},
    {3, {-1, 0, 0, -1}, 180, 4, 2, 1, By::Width, By::Height},
    {4, {1, 0, 0, -1}, 0, 3, 1, 2, By::None, By::Height},
    {5, {0, 1, 1, 0}, 90, 6, 8, 7, By::None, By::None},
    {6, {0, 1, -1, 0}, 90, 5, 7, 8, By::Height, By::None},
    {7, {0, -1, -1, 0}, 270, 8, 6, 5, By::Height, By::Width},
    {8, {0, -1, 1, 0}, 270, 7, 5, 6, By::None, By::Width},
}};

DisplayMatrix Make(int orientation) { return DisplayMatrix(static_cast<ImageOrientation>(orientation)); }

DisplayMatrix Make(const Entries& entries) {
    DisplayMatrix matrix;
    matrix.m = entries;
    return matrix;
}

// The number of the orientation, or 0 if there is none.
int Orientation(const DisplayMatrix& matrix) {
    const std::optional<ImageOrientation> orientation = matrix.GetOrientation();
    return orientation ? static_cast<int>(*orientation) : 0;
}

std::int64_t Pixels(By by, const FrameSize& size) {
    switch (by) {
        case By::None: return 0;
        case By::Width: return size.width;
        case By::Height: return size.height;
    }
    return -1;
}

TEST(ImageOrientation, Enumerators_HaveTheNumbersOfExif) {
    EXPECT_EQ(static_cast<int>(ImageOrientation::Normal), 1);
    EXPECT_EQ(static_cast<int>(ImageOrientation::MirroredHorizontally), 2);
    EXPECT_EQ(static_cast<int>(ImageOrientation::Rotated180), 3);
    EXPECT_EQ(static_cast<int>(ImageOrientation::MirroredVertically), 4);
    EXPECT_EQ(static_cast<int>(ImageOrientation::Transposed), 5);
    EXPECT_EQ(static_cast<int>(ImageOrientation::Rotated90), 6);
    EXPECT_EQ(static_cast<int>(ImageOrientation::Transversed), 7);
    EXPECT_EQ(static_cast<int>(ImageOrientation::Rotated270), 8);
}

TEST(DisplayMatrixOrientation, Constructor_SetsTheLinearPart) {
    for (const Row& row : kRows) {
        const auto& [m0, m1, m3, m4] = row.linear;
        EXPECT_EQ(Make(row.orientation).m,
                  (Entries{m0 * 65536, m1 * 65536, 0, m3 * 65536, m4 * 65536, 0, 0, 0, 1073741824}))
            << row.orientation;
    }
}

TEST(DisplayMatrixOrientation, Constructor_WithAnotherValueGivesTheIdentity) {
    for (const int value : {0, 9, -1, 16, 262, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(Make(value), DisplayMatrix::s_default) << value;
    }
}

TEST(DisplayMatrixOrientation, RoundTrip_GivesTheSameOrientation) {
    for (const Row& row : kRows) {
        EXPECT_EQ(Orientation(Make(row.orientation)), row.orientation);
        EXPECT_EQ(Make(row.orientation).GetRotation(), row.rotation) << row.orientation;
        EXPECT_TRUE(Make(row.orientation).IsValidMatrix()) << row.orientation;
        EXPECT_EQ(Make(row.orientation).IsDefault(), row.orientation == 1) << row.orientation;
    }
}

TEST(DisplayMatrixOrientation, Flip_GivesTheMirroredOrientation) {
    for (const Row& row : kRows) {
        const auto flipped = [&row](int hflip, int vflip) {
            DisplayMatrix matrix = Make(row.orientation);
            ffmpeg::av_display_matrix_flip(matrix.m.data(), hflip, vflip);
            return Orientation(matrix);
        };
        EXPECT_EQ(flipped(0, 0), row.orientation);
        EXPECT_EQ(flipped(1, 0), row.mirroredHorizontally) << row.orientation;
        EXPECT_EQ(flipped(0, 1), row.mirroredVertically) << row.orientation;
        EXPECT_EQ(flipped(1, 1), row.mirroredTwice) << row.orientation;
    }
}

void ExpectCorrected(const Row& row, const FrameSize& size) {
    DisplayMatrix matrix = Make(row.orientation);
    matrix.CorrectTranslation(size);
    EXPECT_EQ(matrix.m[6], Pixels(row.right, size) * 65536) << row.orientation;
    EXPECT_EQ(matrix.m[7], Pixels(row.down, size) * 65536) << row.orientation;
    EXPECT_EQ(Orientation(matrix), row.orientation);

    const auto width = static_cast<double>(size.width);
    const auto height = static_cast<double>(size.height);
    const Rect view = row.orientation >= 5 ? Rect{0, 0, height, width} : Rect{0, 0, width, height};
    EXPECT_EQ(matrix.GetTransform().GetBoundingBox(Rect{0, 0, width, height}), view) << row.orientation;
}

TEST(DisplayMatrixOrientation, CorrectTranslation_MovesTheImageIntoView) {
    for (const FrameSize& size : {FrameSize{1920, 1080}, FrameSize{1919, 1079}, FrameSize{1, 1}, FrameSize{0, 0},
                                  FrameSize{7, 32767}, FrameSize{32767, 2}}) {
        for (const Row& row : kRows) {
            ExpectCorrected(row, size);
        }
    }
}

TEST(DisplayMatrixOrientation, FlipAfterTheCorrection_IsCorrectedAgain) {
    for (const Row& row : kRows) {
        DisplayMatrix matrix = Make(row.orientation);
        matrix.CorrectTranslation({641, 479});
        ffmpeg::av_display_matrix_flip(matrix.m.data(), 1, 1);
        matrix.CorrectTranslation({641, 479});
        const bool turned = row.orientation >= 5;
        EXPECT_EQ(matrix.m[6], (turned ? 479 : 641) * 65536) << row.orientation;
        EXPECT_EQ(matrix.m[7], (turned ? 641 : 479) * 65536) << row.orientation;
        EXPECT_EQ(Orientation(matrix), row.mirroredTwice);
    }
}

TEST(DisplayMatrixOrientation, CorrectTranslation_GivesTheLiteralEntries) {
    DisplayMatrix matrix = Make(3);
    matrix.CorrectTranslation({1920, 1080});
    EXPECT_EQ(matrix.m, (Entries{-65536, 0, 0, 0, -65536, 0, 125829120, 70778880, 1073741824}));
    matrix = Make(6);
    matrix.CorrectTranslation({1920, 1080});
    EXPECT_EQ(matrix.m, (Entries{0, 65536, 0, -65536, 0, 0, 70778880, 0, 1073741824}));
}

TEST(GetOrientation, Scale_DoesNotCount) {
    for (const Row& row : kRows) {
        const auto& [m0, m1, m3, m4] = row.linear;
        EXPECT_EQ(Orientation(Make({m0 * 3, m1 * 7, 0, m3 * 5, m4 * 2, 0, 0, 0, 0})), row.orientation);
        EXPECT_EQ(Orientation(Make({m0 * 2000000000, m1 * 1, 0, m3 * 1, m4 * 2000000000, 0, 0, 0, 0})),
                  row.orientation);
    }
}

TEST(GetOrientation, TranslationAndProjection_DoNotCount) {
    for (const Row& row : kRows) {
        DisplayMatrix matrix = Make(row.orientation);
        matrix.m[2] = 12345;
        matrix.m[5] = -67890;
        matrix.m[6] = kLowest;
        matrix.m[7] = 77777;
        matrix.m[8] = 0;
        EXPECT_EQ(Orientation(matrix), row.orientation);
    }
}

int OrientationOf(std::int32_t m0, std::int32_t m1, std::int32_t m3, std::int32_t m4) {
    return Orientation(Make({m0, m1, 0, m3, m4, 0, 0, 0, 0}));
}

TEST(GetOrientation, MatrixWithoutAnAngle_CountsAsTurnedByNothing) {
    EXPECT_EQ(OrientationOf(0, 65536, 0, 65536), 1);
    EXPECT_EQ(OrientationOf(0, 65536, 0, -1), 4);
    EXPECT_EQ(OrientationOf(0, -65536, 0, 0), 1);
    EXPECT_EQ(OrientationOf(0, 0, 0, 0), 1);
    EXPECT_EQ(OrientationOf(0, 0, 0, -65536), 4);
    EXPECT_EQ(OrientationOf(-65536, 0, -65536, 0), 1);
}

TEST(GetOrientation, OtherAngles_HaveNone) {
    for (const double angle : {45.0, -45.0, 1.25, -1.25, 89.0, 181.0, 271.0, 359.0}) {
        EXPECT_EQ(DisplayMatrix::FromRotation(angle).GetOrientation(), std::nullopt) << angle;
    }
}

TEST(GetOrientation, SignOfTheOtherEntry_DecidesAboutMirroring) {
    EXPECT_EQ(OrientationOf(65536, 0, 65536, 1), 1);
    EXPECT_EQ(OrientationOf(65536, 0, 65536, -1), 4);
    EXPECT_EQ(OrientationOf(-65536, 0, 0, 1), 2);
    EXPECT_EQ(OrientationOf(-65536, 0, 0, -1), 3);
    EXPECT_EQ(OrientationOf(0, 65536, 1, 0), 5);
    EXPECT_EQ(OrientationOf(0, 65536, -1, 0), 6);
    EXPECT_EQ(OrientationOf(0, -65536, -1, 0), 7);
    EXPECT_EQ(OrientationOf(0, -65536, 1, 0), 8);
}

}  // namespace
}  // namespace Quenzo::Conf
