#pragma once

#include <string>
#include <string_view>

namespace Quenzo::Tools {

/// What the help of a command ends with: its examples, and how the program ends. `command` is its words, such as "job
/// new", or nothing for the whole program.
std::string FooterOf(std::string_view command);

}  // namespace Quenzo::Tools
