#include <tools/Failure.h>

#include <fmt/format.h>

#include <cerrno>
#include <system_error>

namespace Quenzo::Tools {

Failure::Failure(ExitStatus status, const std::string& text) : std::runtime_error(text), status_(status) {}

std::string Quoted(const std::string& name) {
    constexpr unsigned char del = 0x7F;
    std::string quoted = "\"";
    for (const char character : name) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < ' ' || byte == del) {
            quoted += fmt::format("\\{:03o}", byte);
        } else {
            quoted += character;
        }
    }
    return quoted + '"';
}

std::string SystemReason() { return std::generic_category().message(errno); }

}  // namespace Quenzo::Tools
