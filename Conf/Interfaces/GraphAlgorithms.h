#pragma once

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <foundation/Export.h>
#include <foundation/RefCount.h>

namespace Quenzo::Conf {

/// True when one node can be reached from another by following links forwards. Any id can be reached from itself, even
/// one that is not in the graph; an unknown `to` is never reached. Raises NodeNotFound when `from` is unknown and is
/// not `to`, and std::invalid_argument when there is no graph to search.
QUENZO_API bool PathExistInGraph(const SP<const ITranscodingMetaGraph>& graph, long long from, long long to);

}  // namespace Quenzo::Conf
