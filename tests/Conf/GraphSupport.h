#pragma once

// What the tests of the transcoding graph share: graphs made from short lists, their contents as plain values, and
// documents as texts.

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <tests/Conf/Failures.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {

using Graph = SP<ITranscodingMetaGraph>;
using Ids = std::vector<long long>;
using Pair = std::pair<long long, long long>;

/// A link as VisitLinks shows it.
struct Link {
    long long id;
    long long from;
    long long to;
    Core::Property tree;

    bool operator==(const Link& other) const = default;
};

/// A node as VisitNodes shows it.
struct Node {
    long long id;
    Core::Property tree;

    bool operator==(const Node& other) const = default;
};

std::ostream& operator<<(std::ostream& os, const Link& link);
std::ostream& operator<<(std::ostream& os, const Node& node);

/// A graph of so many nodes and of the links given. The tree of a node is an integer named "node", its id; the tree of
/// a link is a text named "link", such as "1>2".
Graph MakeGraph(std::size_t nodes, const std::vector<Pair>& links);

Core::Property NodeTree(long long id);
Core::Property LinkTree(long long from, long long to);

std::vector<Node> NodesOf(const Graph& graph);
std::vector<Link> LinksOf(const Graph& graph);

/// The ends of all links in their order.
std::vector<Pair> EndsOf(const Graph& graph);

Ids InputsOf(const Graph& graph, long long node);
Ids OutputsOf(const Graph& graph, long long node);
Ids InputsOf(const Graph& graph);
Ids OutputsOf(const Graph& graph);

void LoadText(const Graph& graph, std::string text);

/// A new graph with the content of a document.
Graph Loaded(std::string text);

/// The document of a graph, which must fit the schema of job documents.
std::string Saved(const Graph& graph);
std::string Drawn(const Graph& graph);

/// Loading the text raises BadJson with that message.
void ExpectBadJson(const std::string& text, const std::string& message);

/// The graph takes a node and a link and can be saved, whatever was done to it before.
void ExpectUsable(const Graph& graph);

constexpr const char* kRootMessage = "The root node must be an object.";
constexpr const char* kArraysMessage = "The root object must have two nested arrays named vertices and edges";
constexpr const char* kDepthMessage = "The document is nested deeper than 1000 levels.";

template <typename Action>
void ExpectNodeNotFound(const Action& action, long long id) {
    ExpectTag<NodeNotFound, ProfileException::TagRequestedNodeId>(action, id);
}

template <typename Action>
void ExpectLinkExists(const Action& action, long long from, long long to) {
    ExpectTag<LinkExists, ProfileException::TagRequestedLink>(action, {from, to});
}

template <typename Action>
void ExpectLinkNotFound(const Action& action, long long from, long long to) {
    ExpectTag<LinkNotFound, ProfileException::TagRequestedLink>(action, {from, to});
}

}  // namespace Quenzo::Conf::Testing
