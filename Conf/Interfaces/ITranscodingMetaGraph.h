#pragma once

#include <Conf/Interfaces/IPreset.h>
#include <Conf/Interfaces/TopologyFinding.h>
#include <Conf/Interfaces/Vocabulary/GraphVocabulary.h>
#include <foundation/DataStream.h>
#include <foundation/Export.h>
#include <foundation/Path.h>
#include <foundation/Property.h>
#include <foundation/RefCount.h>

#include <functional>
#include <memory>
#include <vector>

namespace Quenzo::Conf {

/// A conversion job as a directed graph. Source files, raw streams, decoders and output files are nodes; a link says
/// that the data of one node flows into another. Each node and each link carries a property tree, to which the graph
/// itself gives no meaning: it keeps copies of the trees it is given, and every query returns a copy.
///
/// Nodes and links have ids, handed out from 1 and never reused while a graph lives, unless it loads a document: Load
/// starts the counters anew, so that ids may then repeat those handed out before. An id that several nodes have stands
/// for the first of them. The position of a node, which only the order of results and the DOT text show, is its place
/// among the nodes present.
///
/// A failed operation leaves the graph as it was, Load excepted, also when memory runs out or a stream or a visitor
/// throws; such an exception arrives as it was thrown. What a query was to append to may then hold a part of it.
/// Nothing is locked: one thread at a time per graph, though several may read one that nobody changes.
class QUENZO_API ITranscodingMetaGraph : public IRefCountable, public GraphVocabulary {
public:
    /// What stands for a node or a link: from 1 upwards for those that AddNode and AddLink make.
    using NodeId = long long;
    using LinkId = long long;

    /// An empty graph.
    static SP<ITranscodingMetaGraph> Create();

    ITranscodingMetaGraph();
    ITranscodingMetaGraph(const ITranscodingMetaGraph&) = delete;
    ITranscodingMetaGraph& operator=(const ITranscodingMetaGraph&) = delete;
    ~ITranscodingMetaGraph() override;

    void AddRef() const override;
    long GetRefCount() const override;
    long Release() const override;

    /// Appends a node with a copy of a tree and returns its id. Raises ProfileException when the ids are used up, that
    /// is when the last one was 2^63 - 1.
    NodeId AddNode(const Core::Property& tree);

    /// Removes a node and leaves the links alone: remove those first. A link that still touches the node becomes a link
    /// of the node that takes over its position, the next one; its entry among the outputs or inputs of the removed
    /// node is gone. When there is no next node, LinkExists with the link's ends is raised instead. Raises
    /// NodeNotFound.
    void RemoveNode(NodeId node);

    /// Links one node to another and returns the id of the link. A node may be linked to itself. Raises NodeNotFound
    /// (the source is looked up first), LinkExists when there is such a link, and ProfileException when the ids are
    /// used up.
    LinkId AddLink(NodeId from, NodeId to, const Core::Property& tree);

    /// Removes a link. Raises NodeNotFound or LinkNotFound.
    void RemoveLink(NodeId from, NodeId to);

    /// The tree of a node. Raises NodeNotFound.
    Core::Property operator[](NodeId node) const;

    /// The tree of a link. Raises NodeNotFound or LinkNotFound.
    Core::Property GetLink(NodeId from, NodeId to) const;

    /// Append the ids of the nodes that are linked to a node, or that it is linked to, in the order in which the links
    /// were made. Raise NodeNotFound.
    void Inputs(NodeId node, std::vector<NodeId>& sources) const;
    void Outputs(NodeId node, std::vector<NodeId>& targets) const;

    /// Append the ids of all nodes that no link enters, or that no link leaves, in the order of their positions.
    void Inputs(std::vector<NodeId>& nodes) const;
    void Outputs(std::vector<NodeId>& nodes) const;

    /// The largest node id handed out or loaded since the last Load began, or since the graph was made; 0 when there is
    /// none above. It does not shrink when nodes are removed, so it is not the number of nodes present.
    long long GetNodesCount() const;

    /// Call a function for every node present, in the order of positions, or for every link present, in the order in
    /// which they were made. The function must not change the graph.
    void VisitNodes(const std::function<void(NodeId node, const Core::Property& tree)>& visit) const;
    void VisitLinks(
        const std::function<void(LinkId link, NodeId from, NodeId to, const Core::Property& tree)>& visit) const;

    /// True when the graph can be a job: at least two nodes, none of them isolated, no cycle, and all in one piece.
    bool TopologyIsValid() const;

    /// Every rule that the topology breaks; empty exactly when TopologyIsValid() is true. For cycles there is one
    /// finding for each set of nodes that can all reach one another.
    std::vector<TopologyFinding> ExamineTopology() const;

    /// The ids along a shortest way from one node to another, following the links, both ends included; empty when there
    /// is no way. From any id to itself, even an unknown one, the way is that id alone. Raises NodeNotFound when `from`
    /// is unknown and is not `to`.
    std::vector<NodeId> FindPath(NodeId from, NodeId to) const;

    /// Adds the nodes and links of a job document to the graph. The nodes keep the ids of the document, the links get
    /// new ones, and both counters follow the ids loaded: use a new graph to get exactly the document's. Raises BadJson
    /// when the text is no job document, NodeNotFound, LinkExists, or PropertyException for a tree that cannot be read;
    /// the nodes and links before the one that failed are then in the graph. What the input throws comes through as it
    /// is, and the graph gets nothing. When memory runs out the graph gets the first nodes, or all nodes and the first
    /// links. The counters start anew in any case. Raises std::invalid_argument, and changes nothing, when the input is
    /// null.
    void Load(SP<Core::IDataInput> input);

    /// Writes the graph as a job document: compact JSON in UTF-8. Raises PropertyException, before anything is written,
    /// when a tree is too deep for a document. Neither flushes nor closes the output, which holds the first bytes of
    /// the document when it throws itself. Raises std::invalid_argument when the output is null.
    void Save(SP<Core::IDataOutput> output) const;

    /// Writes the graph as a Graphviz DOT text, in one call of the output: a node for every node, named after its
    /// position, with its id and the dump of its tree as the label; an arrow for every link, with the dump of its tree
    /// as the label unless the tree is an empty node named "data". Raises std::invalid_argument when the output is
    /// null.
    void SaveInToDot(SP<Core::IDataOutput> output) const;

    /// A tree that says which controller, by its index, an element follows: CONTROLLED_BY with one child of that name.
    static Core::Property GetControlledBy(unsigned int index);

    /// The tree of a source-file node.
    static Core::Property MakeInFileDescription(const ioPath& path);

    /// The tree of an output-file node: the preset's tree without its streams, with the path. `losslessToDvd` makes the
    /// container "dvd", whatever the preset says, and logs that. Raises std::invalid_argument when there is no preset.
    static Core::Property MakeOutFileDescription(const SP<const IPreset>& preset, const ioPath& path,
                                                 bool losslessToDvd);

    /// The tree of a raw-stream node; `id` is the stream's index in its file.
    static Core::Property MakeRawStreamDescription(unsigned int id);

    /// Notes in the tree of a master stream that a slave stream is merged into it: appends an element with the slave's
    /// index and a copy of the settings to the list under MERGE_WITH, which is made when it is not there. The index
    /// stands in the element under MERGE_WITH too.
    static void AddSlaveStreamIndex(Core::Property& master, const Core::Property& settings, unsigned int slaveIndex);

private:
    class QUENZO_LOCAL GrahpImpl;

    RefCountImpl counter_;
    std::unique_ptr<GrahpImpl> impl_;
};

}  // namespace Quenzo::Conf
