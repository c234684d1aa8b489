#pragma once

#include <string>
#include <vector>

namespace Quenzo::Testing {

/// A hundred and ten thousand results of the library's arithmetic, from arguments that are drawn in an order that never
/// changes: one case to a line, beginning with its kind. Floating-point numbers are written with all their bits.
std::vector<std::string> GoldenNumbers();

}  // namespace Quenzo::Testing
