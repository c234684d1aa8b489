#include <Conf/Interfaces/GrahpImpl.h>

#include <Conf/Interfaces/Exceptions.h>
#include <foundation/Throw.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>

namespace Quenzo::Conf {

namespace {

constexpr long long kLastId = std::numeric_limits<long long>::max();

ProfileException IdsUsedUp(const char* kind) {
    ProfileException failure;
    failure << Exception::TagDescription(std::string("the ") + kind + " ids of the graph are used up");
    return failure;
}

template <typename Failure>
Failure LinkFailure(long long from, long long to) {
    Failure failure;
    failure << ProfileException::TagRequestedLink({from, to});
    return failure;
}

// Makes room for more elements, so that adding them cannot fail: no more than needed at first, and with room to spare
// where elements are added again and again.
template <typename Elements>
void ReserveMore(Elements& elements, std::size_t count) {
    if (const std::size_t needed = elements.size() + count; needed > elements.capacity()) {
        elements.reserve(std::max<std::size_t>(needed, 2 * elements.capacity()));
    }
}

}  // namespace

auto ITranscodingMetaGraph::GrahpImpl::FindVertex(NodeId node) const noexcept -> Vertex* {
    if (!idsAscend_) {
        const auto first = firstOfId_.find(node);
        return first != firstOfId_.end() ? first->second : nullptr;
    }
    if (slots_.empty() || node < slots_.front().id) {
        return nullptr;
    }
    // Ids ascend by at least one a position: until a node is removed this is the very place, and later the last
    // possible.
    const auto distance = static_cast<std::uint64_t>(node) - static_cast<std::uint64_t>(slots_.front().id);
    const std::size_t last = std::min<std::uint64_t>(distance, slots_.size() - 1);
    const auto hasId = [node](const Slot& slot) { return slot.id == node; };
    if (hasId(slots_[last])) {
        return vertices_[last];
    }
    const auto end = slots_.begin() + static_cast<std::ptrdiff_t>(last);
    const auto slot =
        std::lower_bound(slots_.begin(), end, node, [](const Slot& each, NodeId id) { return each.id < id; });
    return slot != end && hasId(*slot) ? vertices_[static_cast<std::size_t>(slot - slots_.begin())] : nullptr;
}

auto ITranscodingMetaGraph::GrahpImpl::VertexById(NodeId node) const -> Vertex& {
    Vertex* vertex = FindVertex(node);
    if (vertex == nullptr) {
        NodeNotFound failure;
        failure << ProfileException::TagRequestedNodeId(node);
        QUENZO_THROW(failure);
    }
    return *vertex;
}

// The vertex that a look-up finds by the id of this one.
auto ITranscodingMetaGraph::GrahpImpl::FirstOfSameId(const Vertex& vertex) const noexcept -> const Vertex& {
    return idsAscend_ ? vertex : *firstOfId_.find(IdOf(vertex))->second;
}

// The first edge to the target in the out-list of the source, or the list's end.
auto ITranscodingMetaGraph::GrahpImpl::FindExit(const Vertex& source, const Vertex& target) const noexcept
    -> Exits::const_iterator {
    if (const Entries& in = EntriesOf(target); listsAgree_ && in.size() < source.out.size()) {
        const auto hasSource = [&source](EdgeList::iterator edge) { return edge->source == &source; };
        if (std::none_of(in.begin(), in.end(), hasSource)) {
            return source.out.end();
        }
    }
    return std::find_if(source.out.begin(), source.out.end(),
                        [&target](const Exit& exit) { return exit.target == &target; });
}

auto ITranscodingMetaGraph::GrahpImpl::ExitBetween(NodeId from, NodeId to) const -> Exits::const_iterator {
    const Vertex& source = VertexById(from);
    const Vertex& target = VertexById(to);
    const auto exit = FindExit(source, target);
    if (exit == source.out.end()) {
        QUENZO_THROW(LinkFailure<LinkNotFound>(from, to));
    }
    return exit;
}

ITranscodingMetaGraph::GrahpImpl::~GrahpImpl() {
    for (Vertex* vertex : vertices_) {
        DeleteVertex(vertex);
    }
}

auto ITranscodingMetaGraph::GrahpImpl::NewVertex() -> Vertex* {
    return new (vertexMemory_.Allocate(sizeof(Vertex))) Vertex;
}

void ITranscodingMetaGraph::GrahpImpl::DeleteVertex(Vertex* vertex) noexcept {
    std::destroy_at(vertex);
    vertexMemory_.Free(vertex);
}

auto ITranscodingMetaGraph::GrahpImpl::AddNode(const Core::Property& tree) -> NodeId {
    if (lastNodeId_ == kLastId) {
        QUENZO_THROW(IdsUsedUp("node"));
    }
    AppendNode(lastNodeId_ + 1, Core::Property(tree));
    return ++lastNodeId_;
}

void ITranscodingMetaGraph::GrahpImpl::AppendNode(NodeId id, Core::Property&& tree) {
    ReserveMoreNodes(1);
    RecordList added(records_.get_allocator());
    added.emplace_back().tree = std::move(tree);
    const auto discard = [this](Vertex* unused) { DeleteVertex(unused); };
    std::unique_ptr<Vertex, decltype(discard)> vertex(NewVertex(), discard);
    vertex->position = slots_.size();
    if (idsAscend_ && !slots_.empty() && slots_.back().id >= id) {
        StartIndex();
    }
    if (!idsAscend_) {
        firstOfId_.try_emplace(id, vertex.get());
    }
    records_.splice(records_.end(), added);
    slots_.push_back({id, std::prev(records_.end())});
    vertices_.push_back(vertex.release());
}

void ITranscodingMetaGraph::GrahpImpl::ReserveMoreNodes(std::size_t count) {
    ReserveMore(slots_, count);
    ReserveMore(vertices_, count);
}

void ITranscodingMetaGraph::GrahpImpl::StartIndex() {
    std::map<NodeId, Vertex*> firstOfId;
    for (Vertex* vertex : vertices_) {
        firstOfId.emplace_hint(firstOfId.end(), IdOf(*vertex), vertex);
    }
    firstOfId_ = std::move(firstOfId);
    idsAscend_ = false;
}

// The node at the position, the first with its id, goes; the next with that id, if there is one, becomes the first.
void ITranscodingMetaGraph::GrahpImpl::RemoveFromIndex(std::size_t position) noexcept {
    const NodeId id = slots_[position].id;
    const auto next = std::find_if(slots_.begin() + static_cast<std::ptrdiff_t>(position) + 1, slots_.end(),
                                   [id](const Slot& slot) { return slot.id == id; });
    const auto first = firstOfId_.find(id);
    if (next != slots_.end()) {
        first->second = vertices_[static_cast<std::size_t>(next - slots_.begin())];
    } else {
        firstOfId_.erase(first);
    }
}

void ITranscodingMetaGraph::GrahpImpl::RemoveNode(NodeId node) {
    const Vertex& vertex = VertexById(node);
    const std::size_t position = vertex.position;
    const bool isLast = position + 1 == slots_.size();
    if (isLast) {
        if (const Edge* edge = FirstEdgeTouching(vertex); edge != nullptr) {
            QUENZO_THROW(LinkFailure<LinkExists>(IdOf(*edge->source), IdOf(*edge->target)));
        }
    } else {
        RedirectEdges(vertex, vertices_[position + 1]);
    }
    if (!idsAscend_) {
        RemoveFromIndex(position);
    }
    DeleteVertex(vertices_[position]);
    records_.erase(slots_[position].record);
    slots_.erase(slots_.begin() + static_cast<std::ptrdiff_t>(position));
    vertices_.erase(vertices_.begin() + static_cast<std::ptrdiff_t>(position));
    for (std::size_t i = position; i < vertices_.size(); ++i) {
        vertices_[i]->position = i;
    }
    if (slots_.empty()) {
        idsAscend_ = true;
        listsAgree_ = true;
    }
}

auto ITranscodingMetaGraph::GrahpImpl::FirstEdgeTouching(const Vertex& vertex) const noexcept -> const Edge* {
    if (listsAgree_ && vertex.out.empty() && EntriesOf(vertex).empty()) {
        return nullptr;
    }
    const auto edge = std::find_if(edges_.begin(), edges_.end(), [&vertex](const Edge& each) {
        return each.source == &vertex || each.target == &vertex;
    });
    return edge != edges_.end() ? &*edge : nullptr;
}

void ITranscodingMetaGraph::GrahpImpl::RedirectEdges(const Vertex& removed, Vertex* successor) {
    if (FirstEdgeTouching(removed) == nullptr) {
        return;
    }
    for (Edge& edge : edges_) {
        edge.source = edge.source == &removed ? successor : edge.source;
        edge.target = edge.target == &removed ? successor : edge.target;
    }
    for (Vertex* vertex : vertices_) {
        for (Exit& exit : vertex->out) {
            exit.target = exit.edge->target;
        }
    }
    listsAgree_ = false;
}

auto ITranscodingMetaGraph::GrahpImpl::AddLink(NodeId from, NodeId to, const Core::Property& tree) -> LinkId {
    Vertex& source = VertexById(from);
    Vertex& target = VertexById(to);
    return AppendLink(source, target, Core::Property(tree));
}

auto ITranscodingMetaGraph::GrahpImpl::AppendLink(Vertex& source, Vertex& target, Core::Property&& tree) -> LinkId {
    if (FindExit(source, target) != source.out.end()) {
        QUENZO_THROW(LinkFailure<LinkExists>(IdOf(source), IdOf(target)));
    }
    if (lastLinkId_ == kLastId) {
        QUENZO_THROW(IdsUsedUp("link"));
    }
    Entries& in = EntriesOf(target);
    ReserveMore(source.out, 1);
    ReserveMore(in, 1);
    edges_.push_back({lastLinkId_ + 1, std::move(tree), &source, &target});
    const auto edge = std::prev(edges_.end());
    source.out.push_back({edge, &target});
    in.push_back(edge);
    return ++lastLinkId_;
}

void ITranscodingMetaGraph::GrahpImpl::RemoveLink(NodeId from, NodeId to) {
    const auto exit = ExitBetween(from, to);
    const auto edge = exit->edge;
    // The target may hold entries of several edges from that source after nodes were removed; all of them go.
    Entries& in = EntriesOf(*edge->target);
    in.erase(
        std::remove_if(in.begin(), in.end(), [edge](EdgeList::iterator each) { return each->source == edge->source; }),
        in.end());
    edge->source->out.erase(exit);
    edges_.erase(edge);
}

const Core::Property& ITranscodingMetaGraph::GrahpImpl::GetNode(NodeId node) const {
    return slots_[VertexById(node).position].record->tree;
}

const Core::Property& ITranscodingMetaGraph::GrahpImpl::GetLink(NodeId from, NodeId to) const {
    return ExitBetween(from, to)->edge->tree;
}

void ITranscodingMetaGraph::GrahpImpl::Inputs(NodeId node, std::vector<NodeId>& sources) const {
    for (const auto& edge : EntriesOf(VertexById(node))) {
        sources.push_back(IdOf(*edge->source));
    }
}

void ITranscodingMetaGraph::GrahpImpl::Outputs(NodeId node, std::vector<NodeId>& targets) const {
    for (const Exit& exit : VertexById(node).out) {
        targets.push_back(IdOf(*exit.target));
    }
}

void ITranscodingMetaGraph::GrahpImpl::Inputs(std::vector<NodeId>& nodes) const {
    for (const Slot& slot : slots_) {
        if (slot.record->in.empty()) {
            nodes.push_back(slot.id);
        }
    }
}

void ITranscodingMetaGraph::GrahpImpl::Outputs(std::vector<NodeId>& nodes) const {
    for (const Vertex* vertex : vertices_) {
        if (vertex->out.empty()) {
            nodes.push_back(IdOf(*vertex));
        }
    }
}

void ITranscodingMetaGraph::GrahpImpl::VisitNodes(
    const std::function<void(NodeId, const Core::Property&)>& visit) const {
    for (const Slot& slot : slots_) {
        visit(slot.id, slot.record->tree);
    }
}

void ITranscodingMetaGraph::GrahpImpl::VisitLinks(
    const std::function<void(LinkId, NodeId, NodeId, const Core::Property&)>& visit) const {
    for (const Edge& edge : edges_) {
        visit(edge.id, IdOf(*edge.source), IdOf(*edge.target), edge.tree);
    }
}

}  // namespace Quenzo::Conf
