#include <Conf/Interfaces/WrittenId.h>

#include <foundation/StringUtils.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>

namespace Quenzo::Detail {

namespace {

// A JSON number without its sign: digits, no zeros at either end, times a power of ten.
struct Decimal {
    std::string digits;
    long long exponent = 0;
};

// Beyond what the length of any text could make up for, and far from where a sum would overflow.
constexpr long long kHugeExponent = 1'000'000'000'000'000'000;

long long ReadExponent(std::string_view text) {
    text.remove_prefix(text.front() == '+' ? 1 : 0);
    long long exponent = text.front() == '-' ? -kHugeExponent : kHugeExponent;
    ToNumber(text, exponent);
    return std::clamp(exponent, -kHugeExponent, kHugeExponent);
}

Decimal ReadDecimal(std::string_view number) {
    const std::size_t mantissaEnd = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, mantissaEnd);
    Decimal decimal;
    if (mantissaEnd != number.size()) {
        decimal.exponent = ReadExponent(number.substr(mantissaEnd + 1));
    }
    if (const std::size_t point = mantissa.find('.'); point != std::string_view::npos) {
        decimal.exponent -= static_cast<long long>(mantissa.size() - point - 1);
    }
    std::string& digits = decimal.digits;
    for (const char c : mantissa) {
        if ((c > '0' && c <= '9') || (c == '0' && !digits.empty())) {
            digits += c;
        }
    }
    while (!digits.empty() && digits.back() == '0') {
        digits.pop_back();
        ++decimal.exponent;
    }
    return decimal;
}

}  // namespace

std::optional<long long> ReadWrittenId(std::string_view number) {
    const Decimal decimal = ReadDecimal(number);
    if (decimal.digits.empty() || decimal.exponent < 0) {
        return 0;
    }
    constexpr std::size_t mostDigits = std::numeric_limits<long long>::digits10 + 1;
    const auto zeros = static_cast<std::size_t>(decimal.exponent);
    if (decimal.digits.size() + zeros > mostDigits) {
        return std::nullopt;
    }
    const std::string sign = number.front() == '-' ? "-" : "";
    long long id = 0;
    return ToNumber(sign + decimal.digits + std::string(zeros, '0'), id) ? std::optional(id) : std::nullopt;
}

}  // namespace Quenzo::Detail
