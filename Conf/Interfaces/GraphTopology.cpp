#include <Conf/Interfaces/GrahpImpl.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace Quenzo::Conf {

namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

// Sets of positions that share none; each position is in a set of its own at first.
class DisjointSets {
public:
    explicit DisjointSets(std::size_t count) : back_(count, 0), count_(count) {}

    std::size_t Count() const noexcept { return count_; }

    // The first position of the set that a position is in. Halves the way there for the next search.
    std::size_t First(std::size_t position) {
        while (back_[position] != 0) {
            back_[position] += back_[position - back_[position]];
            position -= back_[position];
        }
        return position;
    }

    void Join(std::size_t one, std::size_t other) {
        const auto [first, second] = std::minmax({First(one), First(other)});
        back_[second] = second - first;
        count_ -= first != second ? 1 : 0;
    }

private:
    // How far before each position another one of its set lies; 0 for the first of a set.
    std::vector<std::size_t> back_;
    std::size_t count_;
};

// Joins the positions that edges lead between.
template <class Edges>
void JoinByEdges(DisjointSets& sets, const Edges& edges) {
    for (const auto& edge : edges) {
        sets.Join(edge.source->position, edge.target->position);
    }
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
    if (slots_.size() < 2) {
        return false;
    }
    DisjointSets pieces(slots_.size());
    bool leadsForwards = true;
    for (const Slot& slot : slots_) {
        const Vertex& vertex = *slot.vertex;
        FetchAhead(vertex.position);
        if (vertex.out.empty() && slot.record->in.empty()) {
            return false;
        }
        for (const Exit& exit : vertex.out) {
            leadsForwards = leadsForwards && vertex.position < exit.target->position;
            if (listsAgree_) {
                pieces.Join(vertex.position, exit.target->position);
            }
        }
    }
    if (!listsAgree_) {
        // A link whose node was removed counts for the node that took over, which does not list it.
        JoinByEdges(pieces, edges_);
    }
    return pieces.Count() == 1 && (leadsForwards || !HasCycle());
}

// Takes away nodes that nothing enters any more; what cannot be taken away is on a cycle or behind one.
bool ITranscodingMetaGraph::GrahpImpl::HasCycle() const {
    // The graph is walked once, for what is asked about it again and again: the targets of all links, by source.
    const std::size_t count = slots_.size();
    std::vector<std::size_t> begin;
    std::vector<std::size_t> targets;
    std::vector<std::size_t> incoming(count, 0);
    begin.reserve(count + 1);
    targets.reserve(edges_.size());
    for (const Slot& slot : slots_) {
        FetchAhead(begin.size());
        begin.push_back(targets.size());
        for (const Exit& exit : slot.vertex->out) {
            targets.push_back(exit.target->position);
            ++incoming[exit.target->position];
        }
    }
    begin.push_back(targets.size());

    std::vector<std::size_t> free;
    free.reserve(count);
    for (std::size_t position = 0; position < count; ++position) {
        if (incoming[position] == 0) {
            free.push_back(position);
        }
    }
    for (std::size_t i = 0; i < free.size(); ++i) {
        for (std::size_t link = begin[free[i]]; link < begin[free[i] + 1]; ++link) {
            if (--incoming[targets[link]] == 0) {
                free.push_back(targets[link]);
            }
        }
    }
    return free.size() != count;
}

// For each position the number of its connected piece, counted from 0 in the order of their first nodes.
std::vector<std::size_t> ITranscodingMetaGraph::GrahpImpl::Pieces() const {
    DisjointSets sets(slots_.size());
    JoinByEdges(sets, edges_);
    std::vector<std::size_t> pieces(slots_.size());
    std::size_t count = 0;
    for (std::size_t position = 0; position < slots_.size(); ++position) {
        const std::size_t first = sets.First(position);
        pieces[position] = first == position ? count++ : pieces[first];
    }
    return pieces;
}

// For each position the number of its strong component: the set of nodes that it can reach and that can reach it.
// Tarjan's algorithm, with the call stack as a vector. Boost's own would bring load-time code into this unit.
std::vector<std::size_t> ITranscodingMetaGraph::GrahpImpl::StrongComponents() const {
    std::vector<std::size_t> components(slots_.size(), kNone);
    std::vector<std::size_t> order(slots_.size(), kNone);
    std::vector<std::size_t> lowest(slots_.size(), kNone);
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
    for (const Slot& slot : slots_) {
        if (order[slot.vertex->position] != kNone) {
            continue;
        }
        enter(slot.vertex->position);
        while (!calls.empty()) {
            auto& [position, next] = calls.back();
            const Exits& out = slots_[position].vertex->out;
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
    std::vector<bool> isSetDone(slots_.size(), false);
    std::vector<std::size_t> step(slots_.size(), kNone);
    for (const Slot& slot : slots_) {
        const std::size_t set = sets[slot.vertex->position];
        if (isSetDone[set] || nextInSet(*slot.vertex) == nullptr) {
            continue;
        }
        isSetDone[set] = true;
        std::vector<NodeId> walk;
        const Vertex* vertex = slot.vertex;
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
    if (slots_.size() < 2) {
        TopologyFinding& tooFew = findings.emplace_back(TopologyFinding{TopologyFault::TooFewNodes, {{}}});
        for (const Slot& slot : slots_) {
            tooFew.groups.front().push_back(slot.id);
        }
    }
    for (const Slot& slot : slots_) {
        if (slot.vertex->out.empty() && slot.record->in.empty()) {
            findings.push_back({TopologyFault::IsolatedNode, {{slot.id}}});
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
    const Finder find(*this);
    const std::size_t start = find(from).position;
    const Vertex* const target = FindVertex(to);
    if (target == nullptr) {
        return {};
    }
    // Each position reached remembers where it was reached from; a search by id always goes on from the first vertex
    // with that id.
    std::vector<std::size_t> before(slots_.size(), kNone);
    before[start] = start;
    std::vector<std::size_t> queue;
    queue.reserve(slots_.size());
    queue.push_back(start);
    for (std::size_t i = 0; i < queue.size() && before[target->position] == kNone; ++i) {
        FetchAhead(queue[i]);
        for (const Exit& exit : slots_[queue[i]].vertex->out) {
            const std::size_t reached = find.First(*exit.target).position;
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
