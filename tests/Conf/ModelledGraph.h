#pragma once

// The transcoding graph in the words of its models: what it does and shows takes the form in which GraphModels.h says
// what it should. Does without GoogleTest, so that fuzz targets take it too.

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <tests/Conf/GraphModels.h>

#include <vector>

namespace Quenzo::Conf::Testing {

/// A graph with nodes of these ids, each with its id as mark. Only a document can bring them in any order.
SP<ITranscodingMetaGraph> GraphWithIds(const std::vector<long long>& ids);

Outcome Apply(const SP<ITranscodingMetaGraph>& graph, const Edit& edit);

/// The mark of the tree, or the failure.
Outcome GetNode(const SP<ITranscodingMetaGraph>& graph, long long node);
Outcome GetLink(const SP<ITranscodingMetaGraph>& graph, long long from, long long to);

Snapshot Show(const SP<ITranscodingMetaGraph>& graph);

/// Asks for a way between any two nodes. It should be found exactly when there is one, be one of the shortest, and
/// follow the links. Returns "", or what is wrong with the first that is not so.
Outcome CompareWays(const SP<ITranscodingMetaGraph>& graph, const NaiveGraph& model);

}  // namespace Quenzo::Conf::Testing
