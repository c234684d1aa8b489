#pragma once

#include <Conf/Interfaces/IPreset.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <foundation/Property.h>
#include <foundation/RefCount.h>

#include <string>

namespace Quenzo::Tools {

/// The job in a document, or on standard input when the name is "-". Fails with Unreadable, and says what is wrong with
/// the document and where.
SP<Conf::ITranscodingMetaGraph> LoadJob(const std::string& file);

/// Prints the document of a job, and on a terminal the end of the line.
void PrintJob(const Conf::ITranscodingMetaGraph& job);

/// The preset in a JSON file that holds its tree, which describes at least one stream. Fails with Unreadable, and says
/// what is missing or should be something else.
SP<const Conf::IPreset> LoadPreset(const std::string& file);

/// The tree of the node of the output file. A note says what `losslessToDvd` replaced.
Core::Property DescribeOutput(const SP<const Conf::IPreset>& preset, const std::string& path, bool losslessToDvd);

/// Notes that a stream of the job stays without a link to the output, because the preset has no stream for it.
void NoteThatItLeadsNowhere(const std::string& stream);

}  // namespace Quenzo::Tools
