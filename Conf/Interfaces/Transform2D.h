#pragma once

#include <Conf/Interfaces/FrameInfo.h>
#include <Conf/Interfaces/Rect.h>
#include <foundation/Export.h>

#include <array>

namespace Quenzo::Conf {

/// A transform of the plane: translations, scalings and rotations one after the other, or any projective one. Points
/// are row vectors, multiplied from the left; x points right and y down:
///
///                 | m0 m1 m2 |
///     ( x  y  1 ) | m3 m4 m5 | = ( x'w  y'w  w )
///                 | m6 m7 m8 |
///
/// so rows 0 and 1 hold the images of the axes, row 2 that of the origin, and the last column is (0, 0, 1) unless the
/// transform is projective.
///
/// Nothing here throws. Entries that are not finite follow the rules of IEEE 754.
struct QUENZO_API Transform2D {
    /// m0 to m8, row by row; the identity by default.
    std::array<double, 9> m = {1, 0, 0, 0, 1, 0, 0, 0, 1};

    bool operator==(const Transform2D& other) const = default;

    // Each of these three makes the new operation act on a point first, before the transform that was there: it
    // multiplies the matrix from the left. They return *this.

    /// Moves by tx to the right and ty down. Moving by exactly 0 and 0 leaves every entry as it is.
    Transform2D& Translate(double tx, double ty);

    /// Multiplies x by sx and y by sy. Scaling by exactly 1 and 1 leaves every entry as it is.
    Transform2D& Scale(double sx, double sy);

    /// Turns the x axis towards the y axis, which is clockwise as seen. Any angle counts, in radians; 0 too is
    /// calculated.
    Transform2D& Rotate(double radians);

    /// The angle by which the image of the x axis is turned, from -pi to pi radians. If that image has no length, it
    /// is told from the image of the y axis, from -pi/2 to 3*pi/2; if that has none either, the angle is NaN. It is
    /// an arc cosine's, which has half of its digits near 0 and near a half turn.
    double GetRotation() const;

    /// The smallest rectangle around the images of a rectangle's corners. A coordinate that is no number (0 divided by
    /// 0) counts for none; where all four are none, the position and the size are NaN.
    Proc::RectT<double, double> GetBoundingBox(const Proc::RectT<double, double>& rect) const;

    /// The size of the smallest rectangle around the image of a frame, rounded to whole pixels (halves up) or, when
    /// `even` is set, to even ones. A size that does not fit 32 bits gives the largest that does, 4294967295 or
    /// 4294967294; NaN gives 0.
    FrameSize GetBoundingBox(const FrameSize& size, bool even) const;

    /// The same for a frame whose pixels have a shape. Square ones stay square. Otherwise the new shape is the size of
    /// the image of one pixel, rounded, and the frame's size is measured in such pixels. The products width * aspectX
    /// and height * aspectY wrap modulo 2^32. A side of the new shape may be rounded to 0: what is divided by it gives
    /// the largest size, or 0 if it is 0 itself.
    FrameInfo GetBoundingBox(const FrameInfo& info, bool even) const;
};

}  // namespace Quenzo::Conf
