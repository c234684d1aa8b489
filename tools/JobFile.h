#pragma once

#include <Conf/Interfaces/IPreset.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <foundation/RefCount.h>

#include <string>

namespace Quenzo::Tools {

/// The job in a document, or on standard input when the name is "-". Fails with Unreadable, and says what is wrong with
/// the document and where.
SP<Conf::ITranscodingMetaGraph> LoadJob(const std::string& file);

/// Prints the document of a job, and on a terminal the end of the line.
void PrintJob(const Conf::ITranscodingMetaGraph& job);

/// The preset in a JSON file that holds its tree. Fails with Unreadable.
SP<const Conf::IPreset> LoadPreset(const std::string& file);

}  // namespace Quenzo::Tools
