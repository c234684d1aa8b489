// How large is a frame, plane by plane, and after rotation?
//
//     frame-size FORMAT WIDTH HEIGHT DEGREES        such as: frame-size YUV420P 1920 1080 90

#include <Conf/Interfaces/DisplayMatrix.h>
#include <Conf/Interfaces/FrameInfo.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <foundation/StringUtils.h>

#include <cstdint>
#include <exception>
#include <iostream>
#include <string>

using namespace Quenzo;
using namespace Quenzo::Conf;

namespace {

void PrintPlanes(const PixFmtDescription& format, std::int32_t width, std::int32_t height) {
    for (std::uint8_t plane = 0; plane < format.planes; ++plane) {
        std::cout << "plane " << int{plane} << ": " << format.GetPlanWidth(width, plane) << 'x'
                  << format.GetPlanHeight(height, plane) << ", " << format.GetPlanWidthSize(width, plane)
                  << " bytes a row, " << format.GetPlanFullSize(width, height, plane) << " bytes\n";
    }
    std::cout << "together: " << format.GetAllPlanesFullSize(width, height) << " bytes\n";
}

void PrintTurned(const FrameSize& size, int degrees) {
    DisplayMatrix matrix = DisplayMatrix::FromRotation(degrees);
    matrix.CorrectTranslation(size);
    const bool even = true;
    std::cout << "turned by " << matrix.GetRotation()
              << " degrees: " << matrix.GetTransform().GetBoundingBox(size, even) << " (rounded to even sizes)\n";
}

}  // namespace

int main(int argc, char** argv) try {
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::int16_t degrees = 0;
    if (argc != 5 || !ToNumber(argv[2], width) || !ToNumber(argv[3], height) || !ToNumber(argv[4], degrees)) {
        std::cerr << "usage: frame-size FORMAT WIDTH HEIGHT DEGREES, such as: frame-size YUV420P 1920 1080 90\n"
                     "WIDTH and HEIGHT are whole numbers from 0 to 65535, DEGREES is one from -32768 to 32767\n";
        return 2;
    }
    PrintPlanes(PixFmtDescription::Find(std::string(argv[1])), width, height);
    PrintTurned({width, height}, degrees);
    return 0;
} catch (const std::exception& failure) {
    std::cerr << "frame-size: " << failure.what() << '\n';
    return 3;
}
