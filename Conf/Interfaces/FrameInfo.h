#pragma once

#include <foundation/Export.h>

#include <cstdint>
#include <iosfwd>

namespace Quenzo {

/// The size of a video frame, in pixels.
struct FrameSize {
    std::uint32_t width = 0;   ///< pixels in a row
    std::uint32_t height = 0;  ///< rows

    bool operator==(const FrameSize& other) const = default;
};

}  // namespace Quenzo

namespace Quenzo::Conf {

/// The size of a video frame, in pixels, and the shape of one of its pixels.
struct FrameInfo {
    std::uint32_t width = 0;    ///< pixels in a row
    std::uint32_t height = 0;   ///< rows
    std::uint32_t aspectX = 1;  ///< the width of a pixel in proportion to aspectY; 1:1 is square
    std::uint32_t aspectY = 1;  ///< the height of a pixel in proportion to aspectX

    bool operator==(const FrameInfo& other) const = default;
};

/// Prints a size as 1920x1080. The numbers are decimal and plain, whatever the stream's base and locale; a field width
/// is that of the whole text.
QUENZO_API std::ostream& operator<<(std::ostream& out, const FrameSize& size);

/// Prints a frame as 720x576 ax=64 ay=45, in the same manner.
QUENZO_API std::ostream& operator<<(std::ostream& out, const FrameInfo& info);

}  // namespace Quenzo::Conf

namespace Quenzo {

// FrameSize lives here, so this is where argument-dependent look-up searches for its operator.
using Conf::operator<<;

}  // namespace Quenzo
