#pragma once

// Shared by the libraries' own sources; not installed.

#include <foundation/Export.h>

namespace Quenzo::Detail {

/// Raises std::invalid_argument, which names the argument.
[[noreturn]] QUENZO_API void ThrowNull(const char* argument);

/// The pointer that was given for an argument. Raises std::invalid_argument when it is null.
template <typename Pointer>
const Pointer& NotNull(const Pointer& pointer, const char* argument) {
    if (pointer == nullptr) {
        ThrowNull(argument);
    }
    return pointer;
}

}  // namespace Quenzo::Detail
