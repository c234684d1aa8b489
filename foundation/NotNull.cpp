#include <foundation/NotNull.h>

#include <foundation/Throw.h>

#include <stdexcept>
#include <string>

namespace Quenzo::Detail {

void ThrowNull(const char* argument) { QUENZO_THROW(std::invalid_argument(std::string(argument) + " is null")); }

}  // namespace Quenzo::Detail
