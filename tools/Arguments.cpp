#include <tools/Arguments.h>

#include <tools/Failure.h>

#include <Conf/Interfaces/IFormatCodec.h>
#include <foundation/StringUtils.h>
#include <foundation/Throw.h>

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace Quenzo::Tools {

namespace {

constexpr long long kMostFramesPerSecond = 1'000'000;
constexpr double kMostDegrees = 1'000'000;

[[noreturn]] void Refuse(const std::string& typed, const char* expected) {
    QUENZO_THROW(Failure(ExitStatus::WrongUsage, fmt::format("{} is not {}", Quoted(typed), expected)));
}

bool ParseSide(std::string_view text, std::uint32_t& side) {
    std::int32_t number = 0;
    if (!ToNumber(text, number) || number < 1) {
        return false;
    }
    side = static_cast<std::uint32_t>(number);
    return true;
}

// A decimal fraction of up to nine digits, exactly.
bool ParseDecimal(std::string_view text, boost::rational<long long>& number) {
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    const std::string_view fraction = point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
    std::uint32_t before = 0;
    std::uint32_t after = 0;
    if (!ToNumber(whole, before) || before > kMostFramesPerSecond || fraction.size() > 9 ||
        (point != std::string_view::npos && !ToNumber(fraction, after))) {
        return false;
    }
    long long scale = 1;
    for (std::size_t i = 0; i < fraction.size(); ++i) {
        scale *= 10;
    }
    number.assign(before * scale + after, scale);
    return true;
}

bool ParseQuotient(std::string_view text, boost::rational<long long>& number) {
    const std::size_t slash = text.find('/');
    std::uint32_t numerator = 0;
    std::uint32_t denominator = 0;
    if (slash == std::string_view::npos || !ToNumber(text.substr(0, slash), numerator) ||
        !ToNumber(text.substr(slash + 1), denominator) || denominator == 0) {
        return false;
    }
    number.assign(numerator, denominator);
    return true;
}

}  // namespace

FrameSize ParseSize(const std::string& typed) {
    const std::size_t cross = typed.find_first_of("xX");
    FrameSize size;
    if (cross == std::string::npos || !ParseSide(std::string_view(typed).substr(0, cross), size.width) ||
        !ParseSide(std::string_view(typed).substr(cross + 1), size.height)) {
        Refuse(typed, "a size such as 1920x1080, each side from 1 to 2147483647");
    }
    return size;
}

boost::rational<long long> ParseFrameRate(const std::string& typed) {
    boost::rational<long long> rate;
    if ((!ParseQuotient(typed, rate) && !ParseDecimal(typed, rate)) || rate > kMostFramesPerSecond) {
        Refuse(typed, "a frame rate such as 25, 30000/1001 or 29.97, of at most 1000000");
    }
    return rate;
}

int ParseQuality(const std::string& typed) {
    int quality = 0;
    if (!ToNumber(typed, quality) || quality < Conf::IFormatCodec::MIN_QUALITY ||
        quality > Conf::IFormatCodec::MAX_QUALITY) {
        Refuse(typed, "a quality, which is a whole number from 1, the best, to 32");
    }
    return quality;
}

double ParseDegrees(const std::string& typed) {
    double degrees = 0;
    const char* const end = typed.data() + typed.size();
    const auto [stop, error] = std::from_chars(typed.data(), end, degrees, std::chars_format::fixed);
    if (error != std::errc() || stop != end || !(std::abs(degrees) <= kMostDegrees)) {
        Refuse(typed,
               "an angle in degrees such as 90, -90 or 22.5, without an exponent and of at most 1000000 either way");
    }
    return degrees;
}

}  // namespace Quenzo::Tools
