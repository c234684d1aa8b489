#include <foundation/Format.h>

namespace Quenzo::Detail {

std::string FormatArguments(fmt::string_view format, fmt::format_args arguments) {
    return fmt::vformat(format, arguments);
}

}  // namespace Quenzo::Detail
