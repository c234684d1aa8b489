#pragma once

#include <tools/Report.h>

#include <string>

namespace Quenzo::Tools {

/// Everything known of one identifier, which may be typed loosely. What nobody knows fails with No and the nearest
/// ones.
Report LookUpCodec(const std::string& typed);
Report LookUpFormat(const std::string& typed);
Report LookUpExtension(const std::string& typed);
Report LookUpUti(const std::string& typed);

}  // namespace Quenzo::Tools
