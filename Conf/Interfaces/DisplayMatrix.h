#pragma once

#include <Conf/Interfaces/FrameInfo.h>
#include <Conf/Interfaces/Transform2D.h>
#include <foundation/Export.h>

#include <array>
#include <cstdint>
#include <optional>

namespace Quenzo::Conf {

/// How a stored image has to be turned and mirrored to be shown upright, with the values of the Exif orientation tag.
/// Rotations are clockwise as seen.
enum class ImageOrientation : std::int32_t {
    Normal = 1,                ///< shown as it is
    MirroredHorizontally = 2,  ///< left and right swapped
    Rotated180 = 3,            ///< turned upside down
    MirroredVertically = 4,    ///< top and bottom swapped
    Transposed = 5,            ///< mirrored about the diagonal through the top left corner
    Rotated90 = 6,             ///< turned by 90 degrees
    Transversed = 7,           ///< mirrored about the diagonal through the top right corner
    Rotated270 = 8,            ///< turned by 270 degrees
};

/// The matrix by which the frames of a video stream are to be shown, in the fixed-point form in which containers store
/// it. It acts on row vectors as Transform2D does. Numbers that do not fit an entry give the nearest that does, and NaN
/// gives 0.
struct QUENZO_API DisplayMatrix {
    /// What stands for 1 in m0, m1, m3, m4, m6 and m7, which have 16 fractional bits.
    static constexpr std::int32_t kLinearOne = 0x10000;

    /// What stands for 1 in m2, m5 and m8, which have 30 fractional bits.
    static constexpr std::int32_t kProjectiveOne = 0x40000000;

    /// The identity.
    static const DisplayMatrix s_default;

    /// m0 to m8, row by row.
    std::array<std::int32_t, 9> m = {kLinearOne, 0, 0, 0, kLinearOne, 0, 0, 0, kProjectiveOne};

    /// The identity.
    constexpr DisplayMatrix() = default;

    /// The matrix of an orientation; the identity for a value that is none of the eight.
    explicit DisplayMatrix(ImageOrientation orientation);

    /// The matrix with these entries, in ordinary units (1 is 1, a translation is in pixels), cut off toward zero after
    /// 16 bits. The projective column is that of the identity.
    DisplayMatrix(double m0, double m1, double m3, double m4, double m6, double m7);

    /// The matrix that turns by an angle in degrees, clockwise as seen, about the top left corner. Tilts of up to one
    /// degree, either way, give the identity on purpose; NaN does so too, and infinities give a matrix that is not
    /// valid.
    static DisplayMatrix FromRotation(double angleDegrees);

    bool operator==(const DisplayMatrix& other) const = default;

    /// True when m0, m1, m3 and m4 are those of the identity; a translation alone does not count.
    bool IsDefault() const;

    /// True when the matrix has an angle of rotation: neither column of its linear part is zero.
    bool IsValidMatrix() const;

    /// The same transform in ordinary units; exact.
    Transform2D GetTransform() const;

    /// The orientation that lies within a degree of the matrix, or none if it turns by another angle. A matrix that is
    /// not valid counts as turned by 0.
    std::optional<ImageOrientation> GetOrientation() const;

    /// The angle of rotation in whole degrees, from 0 to 359, clockwise as seen; 0 if the matrix is not valid.
    double GetRotation() const;

    /// Replaces the translation by the one that moves the image of a frame to where no part of it is left of or above
    /// the origin. How far that is, is measured under the translation that was there, so the second of two calls
    /// finds nothing left to move and sets the translation to 0.
    void CorrectTranslation(const FrameSize& size);
};

/// Brings an angle in degrees into one turn: to at least 0 and below 360, except that up to 0.9 degrees below a full
/// turn become small negative angles (359.5 gives -0.5). NaN, infinite and subnormal angles give 0.
QUENZO_API double NormalizeRotation(double degrees);

/// Operations on the nine entries of a display matrix as the ffmpeg libraries attach it to a stream, under the names
/// that they have there. Matrices must not be null except where it says so.
namespace ffmpeg {

/// The angle in degrees, from -180 to 180, by which a matrix turns, counter-clockwise as seen, or NaN when a column of
/// its linear part is zero.
QUENZO_API double av_display_rotation_get(const std::int32_t* m);

/// Sets all entries to those of a pure rotation by an angle in degrees, clockwise as seen: the opposite direction of
/// what av_display_rotation_get returns.
QUENZO_API void av_display_rotation_set(std::int32_t* m, double angle);

/// Mirrors the image of a matrix: with `hflip` left and right, with `vflip` top and bottom. An entry that has no
/// negative, -2^31, stays as it is.
QUENZO_API void av_display_matrix_flip(std::int32_t* m, int hflip, int vflip);

/// The angle in whole degrees, from 0 to 359, by which a matrix turns, clockwise as seen; 0 for null and for a matrix
/// without an angle.
QUENZO_API double get_rotation(const std::int32_t* m);

}  // namespace ffmpeg

}  // namespace Quenzo::Conf
