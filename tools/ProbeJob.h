#pragma once

#include <tools/Failure.h>

#include <string>

namespace Quenzo::Tools {

/// A job to make of a clip that was probed.
struct ProbeJob {
    std::string probeFile;
    std::string presetFile;
    std::string outputPath;
    bool losslessToDvd = false;
};

/// Prints the document of a job: a node for the clip, one for each of its video, audio and subtitle streams, and one
/// for the output. The link to a stream carries the stream's description. The nth stream of a kind is encoded as the
/// preset's nth of that kind; where the preset leaves the bit rate of video open, the link carries a proposed one. A
/// stream that the preset has no place for leads nowhere. What was probed and has no place in the job, and every such
/// stream, is named on standard error.
ExitStatus MakeJobFromProbe(const ProbeJob& job);

}  // namespace Quenzo::Tools
