#pragma once

// Shared by the libraries' own sources; not installed.

#include <foundation/Export.h>

#include <fmt/format.h>

#include <string>

namespace Quenzo::Detail {

/// What Format calls, in one place: {fmt} is compiled into the libraries, for it would take longer to load as a library
/// of its own than either of them, and once is enough.
QUENZO_API std::string FormatArguments(fmt::string_view format, fmt::format_args arguments);

/// fmt::format.
template <typename... Arguments>
std::string Format(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
    return FormatArguments(format, fmt::make_format_args(arguments...));
}

}  // namespace Quenzo::Detail
