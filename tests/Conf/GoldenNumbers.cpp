#include <tests/Conf/GoldenNumbers.h>

#include <Conf/Interfaces/BitrateCalculator.h>
#include <Conf/Interfaces/DisplayMatrix.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/Transform2D.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <sstream>

namespace Quenzo::Testing {

namespace {

using namespace Quenzo::Conf;

// SplitMix64: the same numbers everywhere, which the standard library's distributions do not promise.
class Draw {
public:
    std::uint64_t Bits() {
        state_ += 0x9E3779B97F4A7C15;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EB;
        return mixed ^ (mixed >> 31U);
    }

    std::uint32_t Below(std::uint32_t end) { return static_cast<std::uint32_t>(Bits() % end); }

    std::uint32_t Between(std::uint32_t first, std::uint32_t last) { return first + Below(last - first + 1); }

    // From -1 to 1, in steps of 2^-52.
    double Signed() { return static_cast<double>(static_cast<std::int64_t>(Bits()) >> 11U) * 0x1p-52; }

private:
    std::uint64_t state_ = 1;
};

constexpr int kBitrateCases = 5000;
constexpr int kMatrixCases = 2500;
constexpr int kBoxCases = 2500;
constexpr int kPlaneCases = 5000;
constexpr int kAngleCases = 2500;

std::string Exact(double number) {
    std::array<char, 32> text = {};
    std::snprintf(text.data(), text.size(), "%a", number);
    return text.data();
}

// Five numbers.
std::string BitrateCase(Draw& draw) {
    constexpr std::array<double, 12> rates = {0.5, 12, 23.976, 24, 25, 29.97, 30, 48, 50, 59.94, 60, 120};
    const auto& codecs = GetAllVideoCodecs();
    const std::string& codec = codecs[draw.Below(static_cast<std::uint32_t>(codecs.size()))];
    const std::uint32_t width = draw.Between(1, 8192);
    const std::uint32_t height = draw.Between(1, 8192);
    const double fps = rates[draw.Below(rates.size())];
    const int quality = static_cast<int>(draw.Between(1, 32));
    std::ostringstream line;
    line << "bitrate " << GetDefVideoBitrate(codec, width, height, fps) << ' '
         << GetDefaultVideoBitrate(codec, width, height, fps, quality) << ' '
         << GetMinVideoBitrate(codec, width, height, fps, quality) << ' '
         << GetMaxVideoBitrate(codec, width, height, fps, quality) << ' '
         << CorrectBitrateByFPS(width * 1.25, fps + draw.Signed());
    return line.str();
}

// Ten numbers: the entries and the angle that they say.
std::string MatrixCase(Draw& draw) {
    DisplayMatrix matrix = DisplayMatrix::FromRotation(720 * draw.Signed());
    // One draw in a statement: the order of a call's arguments is the compiler's.
    const int vertical = static_cast<int>(draw.Below(2));
    const int horizontal = static_cast<int>(draw.Below(2));
    ffmpeg::av_display_matrix_flip(matrix.m.data(), horizontal, vertical);
    matrix.CorrectTranslation({draw.Between(1, 4096), draw.Between(1, 4096)});
    std::ostringstream line;
    line << "matrix";
    for (const std::int32_t entry : matrix.m) {
        line << ' ' << entry;
    }
    line << ' ' << Exact(ffmpeg::av_display_rotation_get(matrix.m.data()));
    return line.str();
}

// Ten numbers: a box, and the sizes of a frame and of one with pixels of a shape.
std::string BoxCase(Draw& draw) {
    const double down = 1000 * draw.Signed();
    const double right = 1000 * draw.Signed();
    const double turn = 7 * draw.Signed();
    const double higher = 4 * draw.Signed();
    const double wider = 4 * draw.Signed();
    Transform2D transform;
    transform.Translate(right, down).Rotate(turn).Scale(wider, higher).Rotate(draw.Signed());
    const auto box = transform.GetBoundingBox({draw.Signed(), draw.Signed(), 1 + draw.Signed(), 1 + draw.Signed()});
    const bool even = draw.Below(2) == 1;
    const FrameSize size = {draw.Between(1, 8192), draw.Between(1, 8192)};
    const FrameSize frame = transform.GetBoundingBox(size, even);
    const FrameInfo info =
        transform.GetBoundingBox(FrameInfo{size.width, size.height, draw.Between(1, 64), draw.Between(1, 64)}, even);
    std::ostringstream line;
    line << "box " << Exact(box.left) << ' ' << Exact(box.top) << ' ' << Exact(box.width) << ' ' << Exact(box.height)
         << ' ' << frame.width << ' ' << frame.height << ' ' << info.width << ' ' << info.height << ' ' << info.aspectX
         << ' ' << info.aspectY;
    return line.str();
}

// Four numbers: the angles of two transforms that were turned, and of two with any entries.
std::string AngleCase(Draw& draw) {
    std::ostringstream line;
    line << "angle";
    for (int i = 0; i < 2; ++i) {
        Transform2D turned;
        turned.Rotate(7 * draw.Signed());
        Transform2D any = turned;
        any.m[0] = draw.Signed() * 0x1p20;
        any.m[1] = draw.Signed();
        line << ' ' << Exact(turned.GetRotation()) << ' ' << Exact(any.GetRotation());
    }
    return line.str();
}

// Five numbers: all planes together, one plane's size three ways, and a pixel of a colour.
std::string PlaneCase(Draw& draw) {
    const auto& format = PixFmtDescription::s_list[draw.Below(PixFmtDescription::s_list.size())];
    const auto width = static_cast<std::int32_t>(draw.Between(1, 16384));
    const auto height = static_cast<std::int32_t>(draw.Between(1, 16384));
    const std::uint32_t colour = static_cast<std::uint32_t>(draw.Bits());
    std::uint32_t pixel = 0;
    try {
        const PixColor bytes =
            format.MakeColor({static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8U),
                              static_cast<std::uint8_t>(colour >> 16U), static_cast<std::uint8_t>(colour >> 24U)});
        pixel = bytes[0] + 0x100U * bytes[1] + 0x10000U * bytes[2] + 0x1000000U * bytes[3];
    } catch (const std::invalid_argument&) {
        // A format of more than eight bits has no such pixel.
        pixel = colour;
    }
    std::ostringstream line;
    line << "planes " << format.GetAllPlanesFullSize(width, height) << ' ' << format.GetPlanWidth(width, 0) << ' '
         << format.GetPlanWidthSize(width, 0) << ' ' << format.GetPlanFullSize(width, height, 0) << ' ' << pixel;
    return line.str();
}

}  // namespace

std::vector<std::string> GoldenNumbers() {
    Draw draw;
    std::vector<std::string> lines;
    const auto add = [&](int count, std::string (*makeCase)(Draw&)) {
        for (int i = 0; i < count; ++i) {
            lines.push_back(makeCase(draw));
        }
    };
    add(kBitrateCases, BitrateCase);
    add(kMatrixCases, MatrixCase);
    add(kBoxCases, BoxCase);
    add(kPlaneCases, PlaneCase);
    add(kAngleCases, AngleCase);
    return lines;
}

}  // namespace Quenzo::Testing
