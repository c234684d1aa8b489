#pragma once

#include <tools/Report.h>

#include <string>

namespace Quenzo::Tools {

struct BitrateQuestion {
    std::string codec;
    std::string size;
    std::string framesPerSecond;
    std::string quality;  ///< empty for none
    bool isExplained = false;
};

/// The bit rates proposed for a video stream, and on demand how they come about, step by step.
Report ProposeBitrate(const BitrateQuestion& question);

}  // namespace Quenzo::Tools
