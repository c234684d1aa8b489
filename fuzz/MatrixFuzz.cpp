// A display matrix as a description stores it: any text is read without harm, and any matrix has a box and an answer.
// The last bytes count once more as numbers, for matrices made from them.

#include <fuzz/Require.h>

#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/Transform2D.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

using namespace Quenzo;
using Conf::DisplayMatrix;
using Conf::ImageOrientation;
using Conf::Transform2D;

// What any nine entries have to answer.
void Examine(DisplayMatrix matrix) {
    const double rotation = matrix.GetRotation();
    Fuzz::Require(rotation >= 0 && rotation < 360, "an angle lies in one turn");
    Fuzz::Require(rotation == Conf::ffmpeg::get_rotation(matrix.m.data()), "a matrix turns as its entries do");
    Fuzz::Require(matrix.IsValidMatrix() == !std::isnan(Conf::ffmpeg::av_display_rotation_get(matrix.m.data())),
                  "a matrix is valid when it has an angle");
    const auto orientation = matrix.GetOrientation();
    Fuzz::Require(!orientation || (static_cast<int>(*orientation) >= 1 && static_cast<int>(*orientation) <= 8),
                  "an orientation is one of eight");

    const Transform2D transform = matrix.GetTransform();
    const DisplayMatrix again(transform.m[0], transform.m[1], transform.m[3], transform.m[4], transform.m[6],
                              transform.m[7]);
    for (const std::size_t entry : {0U, 1U, 3U, 4U, 6U, 7U}) {
        Fuzz::Require(again.m[entry] == matrix.m[entry], "entries in ordinary units are exact");
    }

    for (const auto& [hflip, vflip] : {std::array{0, 0}, {1, 0}, {0, 1}, {1, 1}}) {
        DisplayMatrix flipped = matrix;
        Conf::ffmpeg::av_display_matrix_flip(flipped.m.data(), hflip, vflip);
        Conf::ffmpeg::av_display_matrix_flip(flipped.m.data(), hflip, vflip);
        Fuzz::Require(flipped == matrix, "mirrored twice is as before");
    }

    for (const FrameSize frame : {FrameSize{1, 1}, FrameSize{1921, 1079}, FrameSize{4294967295U, 4294967295U}}) {
        matrix.CorrectTranslation(frame);
        Fuzz::Require(matrix.m[6] >= 0 && matrix.m[7] >= 0, "a frame is moved right and down only");
        matrix.GetTransform().GetBoundingBox(frame, true);
        matrix.GetTransform().GetBoundingBox(Conf::FrameInfo{frame.width, frame.height, 64, 45}, false);
        matrix.GetTransform().GetBoundingBox(Conf::FrameInfo{frame.width, frame.height, 1, 1}, true);
    }
}

void ExamineText(const std::string& text) {
    const auto video = Conf::IFormatCodecVideo::Create();
    Core::Property tree = video->GetProperty();
    tree.SetChildT<std::string>("DISPLAYMATRIX", text);
    video->SetProperty(tree);
    const DisplayMatrix matrix = video->GetDisplayMatrix();
    video->SetDisplayMatrix(matrix);
    Fuzz::Require(matrix.IsDefault() || video->GetDisplayMatrix() == matrix, "a stored matrix is read again");
    Examine(matrix);
}

// By how much two angles in degrees differ, turns aside.
double Apart(double one, double other) { return std::abs(std::remainder(one - other, 360)); }

void ExamineAngle(double degrees) {
    const DisplayMatrix matrix = DisplayMatrix::FromRotation(degrees);
    Examine(matrix);
    // Cut off after 16 bits the sine and the cosine still tell the degree; beyond a million turns the angle does not.
    if (std::abs(degrees) < 1e6) {
        Fuzz::Require(matrix.IsValidMatrix(), "an angle makes a valid matrix");
        Fuzz::Require(Apart(matrix.GetRotation(), degrees) <= 1, "an angle is told again");
        Fuzz::Require(Apart(Conf::NormalizeRotation(degrees), degrees) < 1e-6, "a normal angle is the same angle");
    }
    const double normal = Conf::NormalizeRotation(degrees);
    Fuzz::Require(std::abs(degrees) > 1e6 || (normal >= -0.9 && normal < 359.1), "a normal angle lies in one turn");
}

void ExamineTransform(double one, double other) {
    Transform2D transform;
    transform.Translate(one, other).Rotate(other).Scale(one, other).Rotate(one);
    const double rotation = transform.GetRotation();
    Fuzz::Require(std::isnan(rotation) || (rotation >= -3.15 && rotation <= 4.72), "an axis is turned by an angle");
    transform.GetBoundingBox(Proc::RectT<double, double>{one, other, other, one});
    for (const bool even : {false, true}) {
        const FrameSize box = transform.GetBoundingBox(FrameSize{1920, 1080}, even);
        Fuzz::Require(!even || (box.width % 2 == 0 && box.height % 2 == 0), "an even box is even");
        transform.GetBoundingBox(Conf::FrameInfo{720, 576, 64, 45}, even);
    }
    Examine(DisplayMatrix(one, other, -other, one, one * other, one - other));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ExamineText({data, data + size});
    std::array<double, 2> numbers = {};
    const std::size_t taken = std::min(size, sizeof numbers);
    std::memcpy(numbers.data(), data + size - taken, taken);
    for (const double number : numbers) {
        // As they are, numbers from bytes are mostly far too small or large to be angles.
        ExamineAngle(number);
        ExamineAngle(std::fmod(number, 1440.0));
    }
    ExamineTransform(numbers[0], numbers[1]);
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const DisplayMatrix matrix(ImageOrientation{orientation});
        Fuzz::Require(matrix.GetOrientation() == ImageOrientation{orientation}, "an orientation is told again");
    }
    return 0;
}
