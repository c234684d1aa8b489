#pragma once

// Lets GoogleTest and RapidCheck show a property tree when an expectation fails.

#include <foundation/Property.h>

#include <ostream>

namespace Quenzo::Core {

/// Found by GoogleTest.
inline void PrintTo(const Property& property, std::ostream* os) {
    *os << '\n';
    PrintCorePropertyValue(property, 0, *os, true, true);
}

/// Found by RapidCheck.
inline void showValue(const Property& property, std::ostream& os) { PrintTo(property, &os); }

}  // namespace Quenzo::Core
