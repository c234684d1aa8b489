#pragma once

// Shared by the libraries' own sources; not installed.

#include <foundation/Throw.h>

#include <stdexcept>
#include <string>

namespace Quenzo::Detail {

/// The pointer that was given for an argument. Raises std::invalid_argument, which names the argument, when it is null.
template <typename Pointer>
const Pointer& NotNull(const Pointer& pointer, const char* argument) {
    if (pointer == nullptr) {
        QUENZO_THROW(std::invalid_argument(argument + std::string(" is null")));
    }
    return pointer;
}

}  // namespace Quenzo::Detail
