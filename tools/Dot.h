#pragma once

#include <string>

namespace Quenzo::Tools {

/// Has Graphviz's dot draw a DOT text and returns the bytes of the picture. `format` is one of dot's own names, such as
/// "svg" or "png". Fails with Unwritable, and says how to get dot when it is missing.
std::string Draw(const std::string& dotText, const std::string& format);

}  // namespace Quenzo::Tools
