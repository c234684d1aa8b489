#pragma once

#include <tools/Report.h>

#include <string>

namespace Quenzo::Tools {

/// The planes of a frame: their sizes in samples and in bytes.
Report MeasurePlanes(const std::string& pixelFormat, const std::string& size);

/// How a frame is shown that is turned by an angle or stored with an orientation: the matrix, the orientation, the
/// angle in both directions, and the size of the box around it. A mirrored frame is one that is mirrored left and right
/// first and then turned by the angle.
///
/// A whole number from 1 to 8 is a value of the Exif orientation tag, and so are the names of the orientations; all
/// other numbers are degrees clockwise, and with "ccw" behind them counter-clockwise. "deg" makes degrees of any
/// number.
Report Orient(const std::string& turn, const std::string& size);

}  // namespace Quenzo::Tools
