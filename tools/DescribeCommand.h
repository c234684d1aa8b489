#pragma once

#include <tools/Failure.h>

#include <string>

namespace Quenzo::Tools {

/// Prints the descriptions of a media file and of its streams, made from what ffprobe prints as JSON, and what was said
/// that has no place in them.
ExitStatus DescribeProbe(const std::string& file, bool asJson);

}  // namespace Quenzo::Tools
