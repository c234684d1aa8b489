#include <Conf/Interfaces/FrameInfo.h>

#include <ostream>
#include <string>

namespace Quenzo::Conf {

namespace {

std::string ToText(std::uint32_t width, std::uint32_t height) {
    return std::to_string(width) + 'x' + std::to_string(height);
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const FrameSize& size) { return out << ToText(size.width, size.height); }

std::ostream& operator<<(std::ostream& out, const FrameInfo& info) {
    return out << ToText(info.width, info.height) + " ax=" + std::to_string(info.aspectX) +
                      " ay=" + std::to_string(info.aspectY);
}

}  // namespace Quenzo::Conf
