#pragma once

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <foundation/Property.h>

#include <string>
#include <vector>

namespace Quenzo::Tools {

/// One thing that two jobs do not have in common.
struct Difference {
    enum class Change { Added, Removed, Changed };

    Change change;
    std::string where;   ///< "node 2", or "link 1 -> 2"
    std::string path;    ///< names from the root of the tree to the value, joined by "/"; empty for the whole
    std::string before;  ///< the value as JSON; empty when it was added
    std::string after;   ///< the value as JSON; empty when it was removed
};

/// What has to be done to turn one tree into the other: values and whole branches added, removed and changed. Children
/// are told apart by their names, and those of one name by their order.
void CompareTrees(const std::string& where, const Core::Property& before, const Core::Property& after,
                  std::vector<Difference>& differences);

/// The same for jobs. Nodes are told apart by their ids, links by the nodes they join.
std::vector<Difference> CompareJobs(const Conf::ITranscodingMetaGraph& before,
                                    const Conf::ITranscodingMetaGraph& after);

}  // namespace Quenzo::Tools
