#pragma once

// The store behind ITranscodingMetaGraph; not installed.

#include <Conf/Interfaces/ITranscodingMetaGraph.h>

#include <boost/container/small_vector.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <list>
#include <memory>
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
    template <typename Id>
    struct Meta {
        Id id;
        Core::Property data;
    };

    class DocumentReader;

    struct Vertex;

    struct Edge {
        Meta<LinkId> meta;
        Vertex* source;
        Vertex* target;
    };

    using EdgeList = std::list<Edge>;
    // Few nodes have more links in one direction than fit without a block of their own.
    using EdgeRefs = boost::container::small_vector<EdgeList::iterator, 2>;

    struct Vertex {
        Meta<NodeId> meta;
        std::size_t position;
        EdgeRefs out;
        EdgeRefs in;
    };

    // The id stands beside the pointer, so that a search by id walks one array.
    struct Slot {
        NodeId id;
        std::unique_ptr<Vertex> vertex;
    };

    // The positions that the outputs of each position lead to: those of position i from begin[i] up to begin[i + 1].
    struct FlatLinks {
        std::vector<std::size_t> begin;
        std::vector<std::size_t> targets;
    };

    // Answers many look-ups by id in a graph that is not changed meanwhile. While ids ascend with position the slots
    // are index enough; a loaded document may have them in any order, and then the first vertex of each id is noted.
    class Finder {
    public:
        explicit Finder(const GrahpImpl& graph);

        Vertex& operator()(NodeId node) const;

    private:
        const GrahpImpl& graph_;
        boost::unordered_flat_map<NodeId, Vertex*> first_;
    };

    Vertex* FindVertex(NodeId node) const noexcept;
    Vertex& VertexById(NodeId node) const;
    EdgeRefs::const_iterator FindEdge(const Vertex& source, const Vertex& target) const noexcept;
    EdgeRefs::const_iterator EdgeBetween(NodeId from, NodeId to) const;
    void RedirectEdges(const Vertex& removed, Vertex* successor);
    const Edge* FirstEdgeTouching(const Vertex& vertex) const noexcept;

    void AppendNode(NodeId id, Core::Property&& tree);
    LinkId AppendLink(Vertex& source, Vertex& target, Core::Property&& tree);

    static bool HasCycle(const FlatLinks& links);
    bool HangsTogether(const FlatLinks& links) const;
    std::vector<std::size_t> Pieces() const;
    std::vector<std::size_t> StrongComponents() const;
    std::vector<TopologyFinding> Cycles() const;

    std::vector<Slot> slots_;
    EdgeList edges_;
    NodeId lastNodeId_ = 0;
    LinkId lastLinkId_ = 0;

    // Each id is larger than the one before it. Only a loaded document can make this false.
    bool idsAscend_ = true;

    // Every edge stands in the out-list of its source and in the in-list of its target, once. Removing a node that
    // links still touch makes this false.
    bool listsAgree_ = true;
};

}  // namespace Quenzo::Conf
