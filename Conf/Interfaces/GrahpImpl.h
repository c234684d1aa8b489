#pragma once

// The store behind ITranscodingMetaGraph; not installed.

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <Conf/Interfaces/NodeMemory.h>

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <functional>
#include <list>
#include <map>
#include <vector>

namespace Quenzo::Conf {

class ITranscodingMetaGraph::GrahpImpl {
public:
    static constexpr const char* VERTICES = "vertices";
    static constexpr const char* EDGES = "edges";
    static constexpr const char* ID = "id";
    static constexpr const char* DATA = "data";
    static constexpr const char* FROM = "from";
    static constexpr const char* TO = "to";

    GrahpImpl() = default;
    GrahpImpl(const GrahpImpl&) = delete;
    GrahpImpl& operator=(const GrahpImpl&) = delete;
    ~GrahpImpl();

    NodeId AddNode(const Core::Property& tree);
    void RemoveNode(NodeId node);
    LinkId AddLink(NodeId from, NodeId to, const Core::Property& tree);
    void RemoveLink(NodeId from, NodeId to);

    const Core::Property& GetNode(NodeId node) const;
    const Core::Property& GetLink(NodeId from, NodeId to) const;
    void Inputs(NodeId node, std::vector<NodeId>& sources) const;
    void Outputs(NodeId node, std::vector<NodeId>& targets) const;
    void Inputs(std::vector<NodeId>& nodes) const;
    void Outputs(std::vector<NodeId>& nodes) const;
    long long GetNodesCount() const noexcept { return lastNodeId_; }
    void VisitNodes(const std::function<void(NodeId, const Core::Property&)>& visit) const;
    void VisitLinks(const std::function<void(LinkId, NodeId, NodeId, const Core::Property&)>& visit) const;

    bool TopologyIsValid() const;
    std::vector<TopologyFinding> ExamineTopology() const;
    std::vector<NodeId> FindPath(NodeId from, NodeId to) const;

    void Load(const SP<Core::IDataInput>& input);
    void Save(const SP<Core::IDataOutput>& output) const;
    void SaveInToDot(const SP<Core::IDataOutput>& output) const;

private:
    class DocumentReader;

    struct Vertex;

    struct Edge {
        LinkId id;
        Core::Property tree;
        Vertex* source;
        Vertex* target;
    };

    using EdgeList = std::list<Edge, Detail::NodeAllocator<Edge>>;

    // An edge that leaves a vertex. Its target stands here again, so that a walk along the links only sees vertices.
    struct Exit {
        EdgeList::iterator edge;
        Vertex* target;
    };

    // Most nodes have one link in each direction at most; more take a block of their own.
    using Exits = boost::container::small_vector<Exit, 1>;
    using Entries = boost::container::small_vector<EdgeList::iterator, 1>;

    // All that a walk along the links needs: 48 bytes.
    struct Vertex {
        std::size_t position = 0;
        Exits out;
    };

    // The rest of a node.
    struct Record {
        Core::Property tree;
        Entries in;
    };

    using RecordList = std::list<Record, Detail::NodeAllocator<Record>>;

    // What stands at a position beside the vertex.
    struct Slot {
        NodeId id;
        RecordList::iterator record;
    };

    NodeId IdOf(const Vertex& vertex) const noexcept { return slots_[vertex.position].id; }
    Entries& EntriesOf(const Vertex& vertex) const noexcept { return slots_[vertex.position].record->in; }
    Vertex* FindVertex(NodeId node) const noexcept;
    Vertex& VertexById(NodeId node) const;
    bool IsIsolated(std::size_t position) const noexcept {
        return vertices_[position]->out.empty() && slots_[position].record->in.empty();
    }
    const Vertex& FirstOfSameId(const Vertex& vertex) const noexcept;
    Exits::const_iterator FindExit(const Vertex& source, const Vertex& target) const noexcept;
    Exits::const_iterator ExitBetween(NodeId from, NodeId to) const;
    void RedirectEdges(const Vertex& removed, Vertex* successor);
    const Edge* FirstEdgeTouching(const Vertex& vertex) const noexcept;

    // Has the processor fetch what a walk will need soon that is now at a position: nodes, and where the first links
    // that leave them lead. A large graph lies scattered in memory, and a node mostly is linked to those made soon
    // after it, so that even a walk along the links comes there. Put in place always: a call that does nothing else the
    // compiler takes for one without effect.
    [[gnu::always_inline]] void FetchAhead(std::size_t position) const noexcept {
        constexpr std::size_t step = 8;
        if (position + 2 * step >= vertices_.size()) {
            return;
        }
        __builtin_prefetch(vertices_[position + 2 * step]);
        if (const Exits& out = vertices_[position + step]->out; !out.empty()) {
            __builtin_prefetch(out.front().target);
        }
    }

    Vertex* NewVertex();
    void DeleteVertex(Vertex* vertex) noexcept;
    void ReserveMoreNodes(std::size_t count);
    void StartIndex();
    void RemoveFromIndex(std::size_t position) noexcept;
    void AppendNode(NodeId id, Core::Property&& tree);
    LinkId AppendLink(Vertex& source, Vertex& target, Core::Property&& tree);
    void LoadLinks(DocumentReader& document);

    bool UnorderedTopologyIsValid() const;
    bool IsOnePiece(std::size_t piecesOfListedLinks) const;
    std::vector<std::size_t> Pieces() const;
    std::vector<std::size_t> StrongComponents() const;
    std::vector<TopologyFinding> Cycles() const;

    // Each kind of element has memory of its own. Where vertices lie close together a walk through a large graph is
    // several times as fast.
    Detail::NodeMemory vertexMemory_;
    Detail::NodeMemory recordMemory_;
    Detail::NodeMemory edgeMemory_;
    RecordList records_{Detail::NodeAllocator<Record>(recordMemory_)};  // in the order of the slots
    std::vector<Slot> slots_;
    std::vector<Vertex*> vertices_;  // the vertex of each position, owned; apart, for a walk reads nothing else
    EdgeList edges_{Detail::NodeAllocator<Edge>(edgeMemory_)};
    NodeId lastNodeId_ = 0;
    LinkId lastLinkId_ = 0;

    // Each id is larger than the one before it, so that the slots are index enough. Loading can make this false, or the
    // first node that is added to a graph into which an empty document was loaded; from then on the first vertex of
    // each id stands in the index. A document chooses its ids, so this is no hash table, which some would turn into a
    // list.
    bool idsAscend_ = true;
    std::map<NodeId, Vertex*> firstOfId_;

    // Every edge stands in the out-list of its source and in the in-list of its target, once. Removing a node that
    // links still touch makes this false.
    bool listsAgree_ = true;
};

}  // namespace Quenzo::Conf
