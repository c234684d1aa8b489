#include <tests/Conf/GraphModels.h>

#include <boost/range/iterator_range.hpp>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace Quenzo::Conf::Testing {

namespace {

Outcome UnknownNode(long long id) { return "NodeNotFound " + std::to_string(id); }

Outcome LinkOutcome(const char* failure, long long from, long long to) {
    return std::string(failure) + " " + std::to_string(from) + " " + std::to_string(to);
}

void PrintIds(std::ostream& os, const std::vector<long long>& ids) {
    os << '[';
    for (const long long id : ids) {
        os << ' ' << id;
    }
    os << " ]";
}

}  // namespace

std::ostream& operator<<(std::ostream& os, const Edit& edit) {
    switch (edit.kind) {
        case EditKind::AddNode: return os << "AddNode";
        case EditKind::RemoveNode: return os << "RemoveNode(" << edit.from << ')';
        case EditKind::AddLink: return os << "AddLink(" << edit.from << ", " << edit.to << ')';
        case EditKind::RemoveLink: return os << "RemoveLink(" << edit.from << ", " << edit.to << ')';
    }
    return os;
}

std::ostream& operator<<(std::ostream& os, const Snapshot& snapshot) {
    os << "\nnodes up to " << snapshot.lastNode << '\n';
    for (const auto& [id, mark, inputs, outputs] : snapshot.nodes) {
        os << "  " << id << " (" << mark << ") inputs ";
        PrintIds(os, inputs);
        os << " outputs ";
        PrintIds(os, outputs);
        os << '\n';
    }
    for (const auto& [id, from, to, mark] : snapshot.links) {
        os << "  link " << id << ": " << from << " -> " << to << " (" << mark << ")\n";
    }
    PrintIds(os << "  not entered ", snapshot.inputs);
    PrintIds(os << ", not left ", snapshot.outputs);
    return os << '\n';
}

NaiveGraph::NaiveGraph(const std::vector<long long>& ids) {
    for (const long long id : ids) {
        nodes_.push_back({id, id, {}, {}});
        lastNode_ = std::max(lastNode_, id);
    }
}

// The position of the first node of that id, or the number of nodes.
std::size_t NaiveGraph::Find(long long id) const {
    std::size_t position = 0;
    while (position < nodes_.size() && nodes_[position].id != id) {
        ++position;
    }
    return position;
}

const NaiveGraph::Entry* NaiveGraph::FindOut(std::size_t source, std::size_t target) const {
    for (const Entry& entry : nodes_[source].out) {
        if (entry.position == target) {
            return &entry;
        }
    }
    return nullptr;
}

Outcome NaiveGraph::Apply(const Edit& edit) {
    if (edit.kind == EditKind::AddNode) {
        nodes_.push_back({++lastNode_, edit.mark, {}, {}});
        return {};
    }
    if (Find(edit.from) == nodes_.size()) {
        return UnknownNode(edit.from);
    }
    if (edit.kind == EditKind::RemoveNode) {
        return RemoveNode(edit);
    }
    if (Find(edit.to) == nodes_.size()) {
        return UnknownNode(edit.to);
    }
    return edit.kind == EditKind::AddLink ? AddLink(edit) : RemoveLink(edit);
}

Outcome NaiveGraph::AddLink(const Edit& edit) {
    const std::size_t source = Find(edit.from);
    const std::size_t target = Find(edit.to);
    if (FindOut(source, target) != nullptr) {
        return LinkOutcome("LinkExists", edit.from, edit.to);
    }
    links_.push_back({++lastLink_, source, target, edit.mark});
    nodes_[source].out.push_back({target, lastLink_});
    nodes_[target].in.push_back({source, lastLink_});
    return {};
}

Outcome NaiveGraph::RemoveLink(const Edit& edit) {
    const std::size_t source = Find(edit.from);
    const std::size_t target = Find(edit.to);
    const Entry* found = FindOut(source, target);
    if (found == nullptr) {
        return LinkOutcome("LinkNotFound", edit.from, edit.to);
    }
    const long long link = found->link;
    std::erase_if(links_, [link](const Link& each) { return each.id == link; });
    std::erase_if(nodes_[source].out, [link](const Entry& each) { return each.link == link; });
    std::erase_if(nodes_[target].in, [source](const Entry& each) { return each.position == source; });
    return {};
}

Outcome NaiveGraph::RemoveNode(const Edit& edit) {
    const std::size_t removed = Find(edit.from);
    if (removed + 1 == nodes_.size()) {
        for (const Link& link : links_) {
            if (link.source == removed || link.target == removed) {
                return LinkOutcome("LinkExists", nodes_[link.source].id, nodes_[link.target].id);
            }
        }
    }
    nodes_.erase(nodes_.begin() + static_cast<std::ptrdiff_t>(removed));
    const auto lower = [removed](std::size_t& position) { position -= position > removed ? 1 : 0; };
    for (Node& node : nodes_) {
        for (Entry& entry : node.out) {
            lower(entry.position);
        }
        for (Entry& entry : node.in) {
            lower(entry.position);
        }
    }
    for (Link& link : links_) {
        lower(link.source);
        lower(link.target);
    }
    return {};
}

std::vector<long long> NaiveGraph::IdsOf(const std::vector<Entry>& entries) const {
    std::vector<long long> ids;
    for (const Entry& entry : entries) {
        ids.push_back(nodes_[entry.position].id);
    }
    return ids;
}

Snapshot NaiveGraph::Show() const {
    Snapshot snapshot{{}, {}, {}, {}, lastNode_};
    for (const Node& node : nodes_) {
        const Node& first = nodes_[Find(node.id)];
        snapshot.nodes.emplace_back(node.id, node.mark, IdsOf(first.in), IdsOf(first.out));
        if (node.in.empty()) {
            snapshot.inputs.push_back(node.id);
        }
        if (node.out.empty()) {
            snapshot.outputs.push_back(node.id);
        }
    }
    for (const Link& link : links_) {
        snapshot.links.emplace_back(link.id, nodes_[link.source].id, nodes_[link.target].id, link.mark);
    }
    return snapshot;
}

Outcome NaiveGraph::GetNode(long long id) const {
    const std::size_t position = Find(id);
    return position == nodes_.size() ? UnknownNode(id) : std::to_string(nodes_[position].mark);
}

Outcome NaiveGraph::GetLink(long long from, long long to) const {
    for (const long long id : {from, to}) {
        if (Find(id) == nodes_.size()) {
            return UnknownNode(id);
        }
    }
    const Entry* found = FindOut(Find(from), Find(to));
    if (found == nullptr) {
        return LinkOutcome("LinkNotFound", from, to);
    }
    const auto link =
        std::find_if(links_.begin(), links_.end(), [found](const Link& each) { return each.id == found->link; });
    return std::to_string(link->mark);
}

// A depth-first search that colours nodes white (0), grey (1) and black (2).
bool NaiveGraph::HasBackEdge(std::size_t position, std::vector<int>& colours) const {
    colours[position] = 1;
    for (const Entry& entry : nodes_[position].out) {
        if (colours[entry.position] == 1 || (colours[entry.position] == 0 && HasBackEdge(entry.position, colours))) {
            return true;
        }
    }
    colours[position] = 2;
    return false;
}

// Pours the smaller label over every link until nothing changes.
bool NaiveGraph::IsOnePiece() const {
    std::vector<std::size_t> labels(nodes_.size());
    std::iota(labels.begin(), labels.end(), std::size_t{0});
    for (std::size_t round = 0; round < nodes_.size(); ++round) {
        for (const Link& link : links_) {
            labels[link.source] = labels[link.target] = std::min(labels[link.source], labels[link.target]);
        }
    }
    return std::all_of(labels.begin(), labels.end(), [](std::size_t label) { return label == 0; });
}

bool NaiveGraph::TopologyIsValid() const {
    if (nodes_.size() < 2) {
        return false;
    }
    for (const Node& node : nodes_) {
        if (node.in.empty() && node.out.empty()) {
            return false;
        }
    }
    std::vector<int> colours(nodes_.size(), 0);
    for (std::size_t position = 0; position < nodes_.size(); ++position) {
        if (colours[position] == 0 && HasBackEdge(position, colours)) {
            return false;
        }
    }
    return IsOnePiece();
}

std::vector<std::vector<int>> NaiveGraph::Distances() const {
    const std::size_t count = nodes_.size();
    std::vector<std::vector<int>> distances(count, std::vector<int>(count, -1));
    for (std::size_t from = 0; from < count; ++from) {
        for (const Entry& entry : nodes_[from].out) {
            // A search by id goes on from the first node of that id.
            distances[from][Find(nodes_[entry.position].id)] = 1;
        }
        distances[from][from] = 0;
    }
    for (std::size_t by = 0; by < count; ++by) {
        for (std::size_t from = 0; from < count; ++from) {
            for (std::size_t to = 0; to < count; ++to) {
                if (distances[from][by] >= 0 && distances[by][to] >= 0) {
                    const int detour = distances[from][by] + distances[by][to];
                    int& best = distances[from][to];
                    best = best < 0 ? detour : std::min(best, detour);
                }
            }
        }
    }
    return distances;
}

StoreGraph::StoreGraph(const std::vector<long long>& ids) {
    for (const long long id : ids) {
        store_[add_vertex(store_)] = {id, id};
        lastNode_ = std::max(lastNode_, id);
    }
}

StoreGraph::Vertex StoreGraph::Find(long long id) const {
    const auto [begin, end] = vertices(store_);
    const auto found = std::find_if(begin, end, [&](Vertex vertex) { return store_[vertex].id == id; });
    return found != end ? *found : Store::null_vertex();
}

Outcome StoreGraph::Apply(const Edit& edit) {
    if (edit.kind == EditKind::AddNode) {
        store_[add_vertex(store_)] = {++lastNode_, edit.mark};
        return {};
    }
    if (Find(edit.from) == Store::null_vertex()) {
        return UnknownNode(edit.from);
    }
    if (edit.kind == EditKind::RemoveNode) {
        return RemoveNode(edit);
    }
    if (Find(edit.to) == Store::null_vertex()) {
        return UnknownNode(edit.to);
    }
    return edit.kind == EditKind::AddLink ? AddLink(edit) : RemoveLink(edit);
}

Outcome StoreGraph::AddLink(const Edit& edit) {
    if (boost::edge(Find(edit.from), Find(edit.to), store_).second) {
        return LinkOutcome("LinkExists", edit.from, edit.to);
    }
    add_edge(Find(edit.from), Find(edit.to), Meta{++lastLink_, edit.mark}, store_);
    return {};
}

Outcome StoreGraph::RemoveLink(const Edit& edit) {
    const Vertex source = Find(edit.from);
    const Vertex target = Find(edit.to);
    const auto [edge, isThere] = boost::edge(source, target, store_);
    if (!isThere) {
        return LinkOutcome("LinkNotFound", edit.from, edit.to);
    }
    remove_edge(edge, store_);
    // The store takes out the entry of this edge only; all others of the same source have to go with it.
    boost::detail::erase_from_incidence_list(in_edge_list(store_, target), source, boost::allow_parallel_edge_tag());
    return {};
}

Outcome StoreGraph::RemoveNode(const Edit& edit) {
    const Vertex removed = Find(edit.from);
    if (removed + 1 == num_vertices(store_)) {
        for (const auto& edge : boost::make_iterator_range(edges(store_))) {
            if (source(edge, store_) == removed || target(edge, store_) == removed) {
                return LinkOutcome("LinkExists", store_[source(edge, store_)].id, store_[target(edge, store_)].id);
            }
        }
    }
    remove_vertex(removed, store_);
    return {};
}

Snapshot StoreGraph::Show() const {
    Snapshot snapshot{{}, {}, {}, {}, lastNode_};
    for (const Vertex vertex : boost::make_iterator_range(vertices(store_))) {
        std::vector<long long> inputs;
        for (const auto& edge : boost::make_iterator_range(in_edges(Find(store_[vertex].id), store_))) {
            inputs.push_back(store_[source(edge, store_)].id);
        }
        std::vector<long long> outputs;
        for (const auto& edge : boost::make_iterator_range(out_edges(Find(store_[vertex].id), store_))) {
            outputs.push_back(store_[target(edge, store_)].id);
        }
        snapshot.nodes.emplace_back(store_[vertex].id, store_[vertex].mark, inputs, outputs);
        if (in_degree(vertex, store_) == 0) {
            snapshot.inputs.push_back(store_[vertex].id);
        }
        if (out_degree(vertex, store_) == 0) {
            snapshot.outputs.push_back(store_[vertex].id);
        }
    }
    for (const auto& edge : boost::make_iterator_range(edges(store_))) {
        snapshot.links.emplace_back(store_[edge].id, store_[source(edge, store_)].id, store_[target(edge, store_)].id,
                                    store_[edge].mark);
    }
    return snapshot;
}

}  // namespace Quenzo::Conf::Testing
