#pragma once

#include <cstdint>

namespace Quenzo {

/// What a property holds. The numbers are fixed: clients compare them and error reports carry them.
enum class PropertyTypes : std::int32_t {
    None = 0,    ///< nothing
    Bool = 1,    ///< true or false
    Int64 = 2,   ///< a signed 64-bit integer
    Ratio = 3,   ///< a rational number of two signed 64-bit integers
    String = 4,  ///< text, or any bytes
    Node = 6,    ///< named children in order
};

}  // namespace Quenzo
