// Covers what holds for every graph that is saved and loaded again, whatever its trees hold.

#include <tests/Conf/GraphSupport.h>
#include <tests/Conf/JsonReader.h>
#include <tests/foundation/TreeGenerator.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;

// Up to seven nodes, some of them removed again so that the ids have gaps, and links in any order.
Graph AnyGraph() {
    const Graph graph = ITranscodingMetaGraph::Create();
    const auto trees = *rc::gen::resize(7, rc::gen::container<std::vector<Property>>(Quenzo::Testing::AnyTree()));
    for (const Property& tree : trees) {
        graph->AddNode(tree);
    }
    const auto removed = *rc::gen::container<std::vector<bool>>(trees.size(), rc::gen::arbitrary<bool>());
    for (std::size_t i = 0; i < trees.size(); i += 2) {
        if (removed[i]) {
            graph->RemoveNode(static_cast<long long>(i) + 1);
        }
    }
    const std::vector<Node> nodes = NodesOf(graph);
    if (nodes.empty()) {
        return graph;
    }
    const auto place = rc::gen::inRange(std::size_t{0}, nodes.size());
    const auto pairs = *rc::gen::unique<std::vector<std::pair<std::size_t, std::size_t>>>(
        *rc::gen::inRange(std::size_t{0}, nodes.size() + 1), rc::gen::pair(place, place));
    for (const auto& [from, to] : pairs) {
        graph->AddLink(nodes[from].id, nodes[to].id, *Quenzo::Testing::AnyTree());
    }
    if (!pairs.empty() && *rc::gen::arbitrary<bool>()) {
        graph->RemoveLink(nodes[pairs.front().first].id, nodes[pairs.front().second].id);
    }
    return graph;
}

// An empty tree is not written, and what is not there is read as an empty node called "data".
Property AfterLoading(const Property& tree) {
    const bool isEmpty = tree.GetType() == PropertyTypes::None ||
                         (tree.GetType() == PropertyTypes::Node && tree.GetName().empty() && tree.Count() == 0);
    return isEmpty ? Property("data") : tree;
}

RC_GTEST_PROP(GraphDocumentLawTest, SaveAndLoad_GiveTheSameNodes, ()) {
    const Graph graph = AnyGraph();
    std::vector<Node> expected = NodesOf(graph);
    for (Node& node : expected) {
        node.tree = AfterLoading(node.tree);
    }
    const Graph loaded = Loaded(Saved(graph));
    RC_ASSERT(NodesOf(loaded) == expected);
    RC_ASSERT(loaded->GetNodesCount() == (expected.empty() ? 0 : expected.back().id));
    RC_ASSERT(InputsOf(loaded) == InputsOf(graph));
    RC_ASSERT(OutputsOf(loaded) == OutputsOf(graph));
}

RC_GTEST_PROP(GraphDocumentLawTest, SaveAndLoad_GiveTheSameLinksUnderNewIds, ()) {
    const Graph graph = AnyGraph();
    std::vector<Link> expected = LinksOf(graph);
    long long last = 0;
    for (Link& link : expected) {
        link.tree = AfterLoading(link.tree);
        last = link.id = std::max(last, link.id) + 1;
    }
    RC_ASSERT(LinksOf(Loaded(Saved(graph))) == expected);
}

RC_GTEST_PROP(GraphDocumentLawTest, SaveLoadSave_GivesTheSameBytesForNodesWithTrees, ()) {
    const Graph graph = AnyGraph();
    for (const auto& [from, to] : EndsOf(graph)) {
        graph->RemoveLink(from, to);
    }
    const Graph once = Loaded(Saved(graph));
    const std::string text = Saved(once);
    RC_ASSERT(Saved(Loaded(text)) == text);
    const std::vector<Node> nodes = NodesOf(graph);
    if (std::all_of(nodes.begin(), nodes.end(),
                    [](const Node& node) { return AfterLoading(node.tree) == node.tree; })) {
        RC_ASSERT(text == Saved(graph));
    }
}

// Checks an element of the document, of which the tree is known, and returns whether it has members of those names
// only.
void RequireElement(const boost::json::value& element, const Property& tree, std::size_t members) {
    const boost::json::object& object = element.as_object();
    if (AfterLoading(tree) != tree) {
        RC_ASSERT(object.size() == members);
        RC_ASSERT(!object.contains("data"));
        return;
    }
    RC_ASSERT(object.size() == members + 1);
    const boost::json::object& data = object.at("data").as_object();
    RC_ASSERT(data.size() == 1U);
    RC_ASSERT(std::string_view(data.begin()->key()) == tree.GetName());
    RC_ASSERT(ShowsTree(data.begin()->value(), tree));
}

RC_GTEST_PROP(GraphDocumentLawTest, Save_WritesWhatAnotherReaderFindsCompletely, ()) {
    const Graph graph = AnyGraph();
    const boost::json::value document = ReadJson(Saved(graph));
    RC_ASSERT(document.as_object().size() == 2U);
    const boost::json::array& vertices = document.at("vertices").as_array();
    const std::vector<Node> nodes = NodesOf(graph);
    RC_ASSERT(vertices.size() == nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        RC_ASSERT(vertices[i].at("id").as_int64() == nodes[i].id);
        RequireElement(vertices[i], nodes[i].tree, 1);
    }
    const boost::json::array& edges = document.at("edges").as_array();
    const std::vector<Link> links = LinksOf(graph);
    RC_ASSERT(edges.size() == links.size());
    for (std::size_t i = 0; i < links.size(); ++i) {
        RC_ASSERT(edges[i].at("id").as_int64() == links[i].id);
        RC_ASSERT(edges[i].at("from").as_int64() == links[i].from);
        RC_ASSERT(edges[i].at("to").as_int64() == links[i].to);
        RequireElement(edges[i], links[i].tree, 3);
    }
}

// The text has neither blanks nor line breaks between its tokens: without its strings nothing of the kind is left.
RC_GTEST_PROP(GraphDocumentLawTest, Save_WritesNoBlanksBetweenTokens, ()) {
    bool isInString = false;
    bool isEscaped = false;
    for (const char character : Saved(AnyGraph())) {
        if (!isInString) {
            RC_ASSERT(std::string("{}[]:,\"-0123456789truefalsenull").find(character) != std::string::npos);
        }
        isInString = isInString != (character == '"' && !isEscaped);
        isEscaped = isInString && character == '\\' && !isEscaped;
    }
    RC_ASSERT(!isInString);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
