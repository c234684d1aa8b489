#pragma once

#include <optional>
#include <string_view>

namespace Quenzo::Detail {

/// The id that a JSON number stands for, to its last digit however it is written: 70e-1 is 7, and a fraction counts as
/// 0. Nothing for a whole number that does not fit in 64 bits. A floating-point number would not have enough digits.
std::optional<long long> ReadWrittenId(std::string_view number);

}  // namespace Quenzo::Detail
