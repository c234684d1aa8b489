#pragma once

#include <tools/Failure.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Quenzo::Tools {

/// A source file and the streams to take from it, in the order of the command line.
struct JobSource {
    std::string path;
    std::vector<std::uint32_t> streams;
};

struct NewJob {
    std::vector<JobSource> sources;
    std::string presetFile;
    std::string outputPath;
    bool losslessToDvd = false;
};

/// The `job` commands. Each prints its result, as text or as JSON, and returns how the program is to end; what goes
/// wrong on the way is a Failure.

/// Prints the document of a new job: for each source a node and a node per stream, then one for the output, and links
/// from source to stream to output. The link that leaves the nth stream of the job carries the preset's nth stream; a
/// stream beyond the preset's leads nowhere, and is named on standard error.
ExitStatus MakeJob(const NewJob& job);

/// Prints whether a job is valid, and else every rule that it breaks.
ExitStatus CheckJob(const std::string& file, bool asJson);

/// Prints the nodes and links of a job.
ExitStatus ShowJob(const std::string& file, bool asJson);

/// Draws a job into a file whose ending says how (.dot, .gv, .svg, .png), or prints the DOT text when there is no file
/// or it is "-".
ExitStatus DrawJob(const std::string& file, const std::string& picture, bool asJson);

/// Prints what two jobs do not have in common, a line for each node, link and value that was added (+), removed (-) or
/// changed (~). The answer is no when there is anything.
ExitStatus DiffJobs(const std::string& before, const std::string& after, bool asJson);

/// Prints a way from one node to another. The answer is no when there is none, or no such node.
ExitStatus FindJobPath(const std::string& file, const std::string& from, const std::string& to, bool asJson);

}  // namespace Quenzo::Tools
