#include <tools/FrameCommands.h>

#include <tools/Arguments.h>
#include <tools/Failure.h>
#include <tools/Files.h>
#include <tools/Identifiers.h>
#include <tools/Vocabulary.h>

#include <Conf/Interfaces/DisplayMatrix.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <foundation/StringUtils.h>
#include <foundation/Throw.h>

#include <boost/algorithm/string/predicate.hpp>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cctype>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Quenzo::Tools {

namespace {

using Conf::DisplayMatrix;
using Conf::ImageOrientation;

struct NamedOrientation {
    const char* name;
    ImageOrientation orientation;
    const char* meaning;
};

// In the order of their numbers, which begin at 1.
constexpr NamedOrientation kOrientations[] = {
    {"Normal", ImageOrientation::Normal, "shown as it is"},
    {"MirroredHorizontally", ImageOrientation::MirroredHorizontally, "left and right swapped"},
    {"Rotated180", ImageOrientation::Rotated180, "turned upside down"},
    {"MirroredVertically", ImageOrientation::MirroredVertically, "top and bottom swapped"},
    {"Transposed", ImageOrientation::Transposed, "mirrored about the diagonal through the top left corner"},
    {"Rotated90", ImageOrientation::Rotated90, "turned clockwise by 90 degrees"},
    {"Transversed", ImageOrientation::Transversed, "mirrored about the diagonal through the top right corner"},
    {"Rotated270", ImageOrientation::Rotated270, "turned clockwise by 270 degrees"},
};

// In hundredths of a degree.
constexpr std::int64_t kWholeTurn = 36'000;

// A translation has 16 bits for its fraction and 15 for its whole pixels.
constexpr double kTooFar = 32768;

// The text without an ending in any case, or nothing when it ends otherwise.
std::optional<std::string> WithoutEnding(const std::string& text, std::string_view ending) {
    if (!boost::algorithm::iends_with(text, ending)) {
        return std::nullopt;
    }
    return text.substr(0, text.size() - ending.size());
}

DisplayMatrix ParseOrientation(const std::string& typed) {
    IdentifierKind kind{"orientation", "", "", {}, {}};
    for (const NamedOrientation& row : kOrientations) {
        kind.all.emplace_back(row.name);
    }
    const std::string name = FindExact(kind, typed);
    for (const NamedOrientation& row : kOrientations) {
        if (row.name == name) {
            return DisplayMatrix(row.orientation);
        }
    }
    return {};
}

DisplayMatrix ParseTurn(const std::string& typed) {
    if (const auto degrees = WithoutEnding(typed, "ccw")) {
        return DisplayMatrix::FromRotation(-ParseDegrees(*degrees));
    }
    for (const char* ending : {"deg", "cw"}) {
        if (const auto degrees = WithoutEnding(typed, ending)) {
            return DisplayMatrix::FromRotation(ParseDegrees(*degrees));
        }
    }
    std::int32_t number = 0;
    if (ToNumber(typed, number) && number >= 1 && number <= 8) {
        return DisplayMatrix(ImageOrientation{number});
    }
    if (!typed.empty() && std::isalpha(static_cast<unsigned char>(typed.front())) != 0) {
        return ParseOrientation(typed);
    }
    return DisplayMatrix::FromRotation(ParseDegrees(typed));
}

std::string DescribeOrientation(const std::optional<ImageOrientation>& orientation) {
    if (!orientation) {
        return "none of the eight";
    }
    const NamedOrientation& row = kOrientations[static_cast<std::int32_t>(*orientation) - 1];
    return fmt::format("{}, {}", row.name, row.meaning);
}

std::string ToText(const FrameSize& size) { return fmt::format("{}x{}", size.width, size.height); }

// A mirrored image is told from a turned one by the sign of the determinant.
bool IsMirrored(const DisplayMatrix& matrix) {
    const auto& m = matrix.m;
    return std::int64_t{m[0]} * m[4] - std::int64_t{m[1]} * m[3] < 0;
}

// The angle by which an image is turned after it was mirrored left and right, if it was: how people say it. In
// hundredths of a degree, because the matrix is not exact to a thousandth.
std::int64_t ClockwiseHundredths(DisplayMatrix matrix) {
    if (IsMirrored(matrix)) {
        matrix.m[0] = -matrix.m[0];
        matrix.m[1] = -matrix.m[1];
    }
    const double degrees = -Conf::ffmpeg::av_display_rotation_get(matrix.m.data());
    return (std::llround(degrees * 100) + kWholeTurn) % kWholeTurn;
}

double ToDegrees(std::int64_t hundredths) { return static_cast<double>(hundredths) / 100; }

// A translation that does not fit into the matrix ends up as the largest that does.
void NoteWhatDoesNotFit(const DisplayMatrix& matrix, const FrameSize& frame) {
    const auto box = matrix.GetTransform().GetBoundingBox(
        Proc::RectT<double, double>{0, 0, static_cast<double>(frame.width), static_cast<double>(frame.height)});
    const auto note = [](const char* direction, double needed) {
        if (needed >= kTooFar) {
            Note(fmt::format("the matrix cannot hold the translation {} by {:.10g}, which is {} or more", direction,
                             needed, kTooFar));
        }
    };
    note("to the right", -box.left);
    note("down", -box.top);
}

}  // namespace

Report MeasurePlanes(const std::string& pixelFormat, const std::string& size) {
    const PixFmtDescription& format = PixFmtDescription::Find(FindExact(PixelFormatIdentifiers(), pixelFormat));
    const FrameSize frame = ParseSize(size);
    const auto width = static_cast<std::int32_t>(frame.width);
    const auto height = static_cast<std::int32_t>(frame.height);
    Report report;
    report.Add("pixel format", format.name);
    report.Add("size", ToText(frame));
    report.Add("bytes", format.GetAllPlanesFullSize(width, height));
    Report::Table table{"planes", {"plane", "width", "height", "bytes in a row", "bytes"}, {}};
    for (std::uint8_t plane = 0; plane < format.planes; ++plane) {
        table.rows.push_back({std::int64_t{plane}, std::int64_t{format.GetPlanWidth(width, plane)},
                              std::int64_t{format.GetPlanHeight(height, plane)}, format.GetPlanWidthSize(width, plane),
                              format.GetPlanFullSize(width, height, plane)});
    }
    report.Add(table);
    return report;
}

Report Orient(const std::string& turn, const std::string& size) {
    const FrameSize frame = ParseSize(size);
    DisplayMatrix matrix = ParseTurn(turn);
    const auto orientation = matrix.GetOrientation();
    const std::int64_t clockwise = ClockwiseHundredths(matrix);
    NoteWhatDoesNotFit(matrix, frame);
    matrix.CorrectTranslation(frame);
    Report report;
    report.Add("orientation", DescribeOrientation(orientation));
    if (orientation) {
        report.Add("Exif number", static_cast<std::int64_t>(*orientation));
    }
    report.Add("mirrored", IsMirrored(matrix));
    report.Add("degrees clockwise", ToDegrees(clockwise));
    report.Add("degrees counter-clockwise", ToDegrees((kWholeTurn - clockwise) % kWholeTurn));
    report.Add("size", ToText(frame));
    report.Add("size when shown", ToText(matrix.GetTransform().GetBoundingBox(frame, false)));
    report.Add("size when shown, even", ToText(matrix.GetTransform().GetBoundingBox(frame, true)));
    report.Add("matrix", fmt::format("{}", fmt::join(matrix.m, " ")));
    Report::Table table{"entries", {"row", "x", "y", "projective"}, {}};
    const auto entries = matrix.GetTransform().m;
    for (std::size_t row = 0; row < 3; ++row) {
        table.rows.push_back(
            {static_cast<std::int64_t>(row), entries[3 * row], entries[3 * row + 1], entries[3 * row + 2]});
    }
    report.Add(table);
    return report;
}

}  // namespace Quenzo::Tools
