#include <foundation/JsonReading.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <string>

namespace Quenzo::Core {

// In the "C" locale, whatever the program's is, for that alone has the point of JSON. Not every C++ library can read a
// floating-point number from characters.
std::optional<double> NearestDouble(std::string_view number) {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    const double value = strtod_l(std::string(number).c_str(), nullptr, locale);
    return std::isinf(value) ? std::nullopt : std::optional(value);
}

}  // namespace Quenzo::Core
