#include <foundation/Path.h>

#include <utility>

namespace Quenzo {

ioPath::ioPath(std::string utf8) : utf8_(std::move(utf8)) {}

ioPath::ioPath(std::string_view utf8) : utf8_(utf8) {}

ioPath::ioPath(const char* utf8) : utf8_(utf8) {}

}  // namespace Quenzo
