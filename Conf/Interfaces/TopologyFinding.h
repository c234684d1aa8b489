#pragma once

#include <foundation/Export.h>

#include <vector>

namespace Quenzo::Conf {

/// A rule that the topology of a job graph can break.
enum class TopologyFault {
    TooFewNodes,   ///< there are fewer than two nodes
    IsolatedNode,  ///< a node has no link
    Cycle,         ///< data would flow in a circle
    Disconnected,  ///< the graph falls into pieces that no link joins
};

/// One rule broken at one place.
struct TopologyFinding {
    TopologyFault fault;  ///< which rule

    /// The ids of the nodes concerned, in groups:
    ///   TooFewNodes   one group, the nodes that there are
    ///   IsolatedNode  one group of one node
    ///   Cycle         one group, the nodes in the order of the links; the last is linked to the first
    ///   Disconnected  a group for every piece, an isolated node being a piece too
    std::vector<std::vector<long long>> groups;

    bool operator==(const TopologyFinding& other) const = default;
};

/// The stable code of a fault: "too-few-nodes", "isolated-node", "cycle" or "disconnected". An empty text for a value
/// that is no fault.
QUENZO_API const char* GetTopologyFaultCode(TopologyFault fault);

}  // namespace Quenzo::Conf
