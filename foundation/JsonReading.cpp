#include <foundation/JsonReading.h>

#include <algorithm>
#include <charconv>
#include <system_error>

namespace Quenzo::Core {

namespace {

// True when a number that no double can hold is too large, rather than too small, for one.
bool IsTooLarge(std::string_view number) {
    const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), mark);
    const std::size_t firstDigit = number.find_first_of("123456789");
    std::string_view power = number.substr(std::min(mark + 1, number.size()));
    power.remove_prefix(power.starts_with('+') ? 1 : 0);
    long long exponent = 0;
    if (!power.empty() && !ToNumber(power, exponent)) {
        return power.front() != '-';
    }
    return exponent > static_cast<long long>(firstDigit) - static_cast<long long>(point);
}

}  // namespace

std::optional<double> NearestDouble(std::string_view number) {
    double value = 0;
    if (std::from_chars(number.data(), number.data() + number.size(), value).ec != std::errc::result_out_of_range) {
        return value;
    }
    return IsTooLarge(number) ? std::nullopt : std::optional(0.0);
}

}  // namespace Quenzo::Core
