#include <Conf/Interfaces/GrahpImpl.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace Quenzo::Conf {

namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

// Sets of positions that share none; each position is in a set of its own at first.
class DisjointSets {
public:
    explicit DisjointSets(std::size_t count) : parents_(count), count_(count) {
        std::iota(parents_.begin(), parents_.end(), std::size_t{0});
    }

    std::size_t Count() const noexcept { return count_; }

    // The position that stands for the set that a position is in. Halves the way there for the next search.
    std::size_t Root(std::size_t position) noexcept {
        while (parents_[position] != position) {
            parents_[position] = parents_[parents_[position]];
            position = parents_[position];
        }
        return position;
    }

    // Joins the sets of both ends of a link. Halving alone keeps the ways short, so the larger set is not looked for;
    // and in the order in which data flows most targets are in no other set yet.
    void Join(std::size_t source, std::size_t target) noexcept {
        const std::size_t root = Root(source);
        const std::size_t joined = Root(target);
        parents_[joined] = root;
        count_ -= joined != root ? 1 : 0;
    }

private:
    std::vector<std::size_t> parents_;
    std::size_t count_;
};

// The pieces that edges make of a graph. A link whose node was removed counts for the node that took over, which does
// not list it.
template <class Edges>
DisjointSets JoinedByEdges(std::size_t nodes, const Edges& edges) {
    DisjointSets pieces(nodes);
    for (const auto& edge : edges) {
        pieces.Join(edge.source->position, edge.target->position);
    }
    return pieces;
}

}  // namespace

const char* GetTopologyFaultCode(TopologyFault fault) {
    switch (fault) {
        case TopologyFault::TooFewNodes: return "too-few-nodes";
        case TopologyFault::IsolatedNode: return "isolated-node";
        case TopologyFault::Cycle: return "cycle";
        case TopologyFault::Disconnected: return "disconnected";
    }
    return "";
}

// Jobs are mostly made in the order in which their data flows. Where all links lead to later positions no cycle is
// possible, and one walk is the whole check.
bool ITranscodingMetaGraph::GrahpImpl::TopologyIsValid() const {
    if (vertices_.size() < 2) {
        return false;
    }
    DisjointSets pieces(vertices_.size());
    for (std::size_t position = 0; position < vertices_.size(); ++position) {
        FetchAhead(position);
        if (IsIsolated(position)) {
            return false;
        }
        for (const Exit& exit : vertices_[position]->out) {
            if (exit.target->position <= position) {
                return UnorderedTopologyIsValid();
            }
            pieces.Join(position, exit.target->position);
        }
    }
    return IsOnePiece(pieces.Count());
}

// Whether the graph hangs together; its number of pieces is known when its vertices list all links.
bool ITranscodingMetaGraph::GrahpImpl::IsOnePiece(std::size_t piecesOfListedLinks) const {
    return (listsAgree_ ? piecesOfListedLinks : JoinedByEdges(vertices_.size(), edges_).Count()) == 1;
}

// The whole check for links that lead anywhere. Nodes that nothing enters any more are taken away; what cannot be taken
// away is on a cycle or behind one.
bool ITranscodingMetaGraph::GrahpImpl::UnorderedTopologyIsValid() const {
    // The graph is walked once. What a step from node to node needs then lies in one place: where links lead all over a
    // large graph, each look elsewhere is a wait for memory.
    struct Node {
        std::size_t incoming = 0;
        boost::container::small_vector<std::size_t, 1> targets;
    };
    std::vector<Node> nodes(vertices_.size());
    for (std::size_t position = 0; position < vertices_.size(); ++position) {
        FetchAhead(position);
        if (IsIsolated(position)) {
            return false;
        }
        for (const Exit& exit : vertices_[position]->out) {
            nodes[position].targets.push_back(exit.target->position);
            ++nodes[exit.target->position].incoming;
        }
    }

    std::vector<std::size_t> free;
    free.reserve(vertices_.size());
    for (std::size_t position = 0; position < vertices_.size(); ++position) {
        if (nodes[position].incoming == 0) {
            free.push_back(position);
        }
    }
    DisjointSets pieces(vertices_.size());
    for (std::size_t i = 0; i < free.size(); ++i) {
        for (const std::size_t target : nodes[free[i]].targets) {
            pieces.Join(free[i], target);
            if (--nodes[target].incoming == 0) {
                free.push_back(target);
            }
        }
    }
    return free.size() == vertices_.size() && IsOnePiece(pieces.Count());
}

// For each position the number of its connected piece, counted from 0 in the order of their first nodes.
std::vector<std::size_t> ITranscodingMetaGraph::GrahpImpl::Pieces() const {
    DisjointSets sets = JoinedByEdges(vertices_.size(), edges_);
    std::vector<std::size_t> numbers(vertices_.size(), kNone);
    std::vector<std::size_t> pieces(vertices_.size());
    std::size_t count = 0;
    for (std::size_t position = 0; position < vertices_.size(); ++position) {
        std::size_t& number = numbers[sets.Root(position)];
        number = number == kNone ? count++ : number;
        pieces[position] = number;
    }
    return pieces;
}

// For each position the number of its strong component: the set of nodes that it can reach and that can reach it.
// Tarjan's algorithm, with the call stack as a vector. Boost's own would bring load-time code into this unit.
std::vector<std::size_t> ITranscodingMetaGraph::GrahpImpl::StrongComponents() const {
    std::vector<std::size_t> components(vertices_.size(), kNone);
    std::vector<std::size_t> order(vertices_.size(), kNone);
    std::vector<std::size_t> lowest(vertices_.size(), kNone);
    std::vector<std::size_t> open;
    std::vector<std::pair<std::size_t, std::size_t>> calls;
    std::size_t visited = 0;
    std::size_t count = 0;
    const auto enter = [&](std::size_t position) {
        order[position] = lowest[position] = visited++;
        open.push_back(position);
        calls.emplace_back(position, 0);
    };
    const auto leave = [&](std::size_t position) {
        calls.pop_back();
        if (lowest[position] == order[position]) {
            for (; components[position] == kNone; open.pop_back()) {
                components[open.back()] = count;
            }
            ++count;
        }
        if (!calls.empty()) {
            lowest[calls.back().first] = std::min(lowest[calls.back().first], lowest[position]);
        }
    };
    for (std::size_t root = 0; root < vertices_.size(); ++root) {
        if (order[root] != kNone) {
            continue;
        }
        enter(root);
        while (!calls.empty()) {
            auto& [position, next] = calls.back();
            const Exits& out = vertices_[position]->out;
            if (next == out.size()) {
                leave(position);
                continue;
            }
            const std::size_t target = out[next++].target->position;
            if (order[target] == kNone) {
                enter(target);
            } else if (components[target] == kNone) {
                lowest[position] = std::min(lowest[position], order[target]);
            }
        }
    }
    return components;
}

// One cycle out of each strong component that has one.
std::vector<TopologyFinding> ITranscodingMetaGraph::GrahpImpl::Cycles() const {
    const std::vector<std::size_t> sets = StrongComponents();
    const auto nextInSet = [&sets](const Vertex& vertex) -> const Vertex* {
        const auto exit = std::find_if(vertex.out.begin(), vertex.out.end(), [&](const Exit& each) {
            return sets[each.target->position] == sets[vertex.position];
        });
        return exit != vertex.out.end() ? exit->target : nullptr;
    };

    std::vector<TopologyFinding> findings;
    std::vector<bool> isSetDone(vertices_.size(), false);
    std::vector<std::size_t> step(vertices_.size(), kNone);
    for (const Vertex* first : vertices_) {
        const std::size_t set = sets[first->position];
        if (isSetDone[set] || nextInSet(*first) == nullptr) {
            continue;
        }
        isSetDone[set] = true;
        std::vector<NodeId> walk;
        const Vertex* vertex = first;
        for (; step[vertex->position] == kNone; vertex = nextInSet(*vertex)) {
            step[vertex->position] = walk.size();
            walk.push_back(IdOf(*vertex));
        }
        walk.erase(walk.begin(), walk.begin() + static_cast<std::ptrdiff_t>(step[vertex->position]));
        findings.push_back({TopologyFault::Cycle, {std::move(walk)}});
    }
    return findings;
}

std::vector<TopologyFinding> ITranscodingMetaGraph::GrahpImpl::ExamineTopology() const {
    std::vector<TopologyFinding> findings;
    if (vertices_.size() < 2) {
        TopologyFinding& tooFew = findings.emplace_back(TopologyFinding{TopologyFault::TooFewNodes, {{}}});
        for (const Slot& slot : slots_) {
            tooFew.groups.front().push_back(slot.id);
        }
    }
    for (std::size_t position = 0; position < vertices_.size(); ++position) {
        if (IsIsolated(position)) {
            findings.push_back({TopologyFault::IsolatedNode, {{slots_[position].id}}});
        }
    }
    for (TopologyFinding& cycle : Cycles()) {
        findings.push_back(std::move(cycle));
    }
    std::vector<std::vector<NodeId>> groups;
    const std::vector<std::size_t> pieces = Pieces();
    for (std::size_t position = 0; position < pieces.size(); ++position) {
        if (pieces[position] == groups.size()) {
            groups.emplace_back();
        }
        groups[pieces[position]].push_back(slots_[position].id);
    }
    if (groups.size() > 1) {
        findings.push_back({TopologyFault::Disconnected, std::move(groups)});
    }
    return findings;
}

auto ITranscodingMetaGraph::GrahpImpl::FindPath(NodeId from, NodeId to) const -> std::vector<NodeId> {
    if (from == to) {
        return {to};
    }
    const std::size_t start = VertexById(from).position;
    const Vertex* const target = FindVertex(to);
    if (target == nullptr) {
        return {};
    }
    // Each position reached remembers where it was reached from; a search by id always goes on from the first vertex
    // with that id.
    std::vector<std::size_t> before(vertices_.size(), kNone);
    before[start] = start;
    std::vector<std::size_t> queue;
    queue.reserve(vertices_.size());
    queue.push_back(start);
    for (std::size_t i = 0; i < queue.size() && before[target->position] == kNone; ++i) {
        FetchAhead(queue[i]);
        for (const Exit& exit : vertices_[queue[i]]->out) {
            const std::size_t reached = FirstOfSameId(*exit.target).position;
            if (before[reached] == kNone) {
                before[reached] = queue[i];
                queue.push_back(reached);
            }
        }
    }
    std::vector<NodeId> path;
    if (before[target->position] != kNone) {
        for (std::size_t position = target->position; position != start; position = before[position]) {
            path.push_back(slots_[position].id);
        }
        path.push_back(from);
        std::reverse(path.begin(), path.end());
    }
    return path;
}

}  // namespace Quenzo::Conf
