#pragma once

#include <Conf/Interfaces/Exceptions.h>
#include <foundation/Throw.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

namespace Quenzo::Detail {

/// True when no two values are equal.
template <typename T, std::size_t N>
constexpr bool AllDifferent(const std::array<T, N>& values) {
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (std::find(values.begin(), value, *value) != value) {
            return false;
        }
    }
    return true;
}

/// The text that an enumerator is named after: an underscore in front stands there for the sake of a digit only.
constexpr std::string_view TextOfEnumerator(std::string_view enumerator) {
    return enumerator.substr(enumerator.front() == '_' ? 1 : 0);
}

/// A copy of all rows but the first.
template <typename Row, std::size_t N>
constexpr std::array<Row, N - 1> WithoutFirst(const std::array<Row, N>& rows) {
    return [&rows]<std::size_t... I>(std::index_sequence<I...>) { return std::array<Row, N - 1>{rows[I + 1]...}; }
    (std::make_index_sequence<N - 1>());
}

// On its own, so that the functions below stay small enough to be put in place.
[[noreturn]] inline void ThrowNoSuchRow(const char* message) {
    QUENZO_THROW(Conf::FormatException() << Exception::TagDescription(message));
}

/// The row at a place of a table. Raises FormatException with the message when the table has no such place.
template <typename Row, std::size_t N>
const Row& RowAt(const std::array<Row, N>& rows, std::size_t place, const char* message) {
    if (place >= N) {
        ThrowNoSuchRow(message);
    }
    return rows[place];
}

/// The first row for which the predicate holds. Raises FormatException with the message when there is none.
template <typename Row, std::size_t N, typename Predicate>
const Row& FindRow(const std::array<Row, N>& rows, Predicate holds, const char* message) {
    const auto place = std::distance(rows.begin(), std::find_if(rows.begin(), rows.end(), holds));
    return RowAt(rows, static_cast<std::size_t>(place), message);
}

}  // namespace Quenzo::Detail
