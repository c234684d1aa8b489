#include <tests/Conf/GraphSupport.h>

#include <foundation/DataStream.h>
#include <tests/Conf/DocumentSchema.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace Quenzo::Conf::Testing {

namespace {

std::string Dump(const Core::Property& tree) {
    std::ostringstream text;
    Core::PrintCorePropertyValue(tree, 0, text, true, true);
    return text.str();
}

}  // namespace

std::ostream& operator<<(std::ostream& os, const Link& link) {
    return os << "link " << link.id << ": " << link.from << " -> " << link.to << ", " << Dump(link.tree);
}

std::ostream& operator<<(std::ostream& os, const Node& node) {
    return os << "node " << node.id << ": " << Dump(node.tree);
}

Graph MakeGraph(std::size_t nodes, const std::vector<Pair>& links) {
    Graph graph = ITranscodingMetaGraph::Create();
    for (std::size_t i = 1; i <= nodes; ++i) {
        graph->AddNode(NodeTree(static_cast<long long>(i)));
    }
    for (const auto& [from, to] : links) {
        graph->AddLink(from, to, LinkTree(from, to));
    }
    return graph;
}

Core::Property NodeTree(long long id) { return Core::Property("node", id); }

Core::Property LinkTree(long long from, long long to) {
    return Core::Property("link", std::to_string(from) + ">" + std::to_string(to));
}

std::vector<Node> NodesOf(const Graph& graph) {
    std::vector<Node> nodes;
    graph->VisitNodes([&nodes](long long id, const Core::Property& tree) { nodes.push_back({id, tree}); });
    return nodes;
}

std::vector<Link> LinksOf(const Graph& graph) {
    std::vector<Link> links;
    graph->VisitLinks([&links](long long id, long long from, long long to, const Core::Property& tree) {
        links.push_back({id, from, to, tree});
    });
    return links;
}

std::vector<Pair> EndsOf(const Graph& graph) {
    std::vector<Pair> ends;
    for (const Link& link : LinksOf(graph)) {
        ends.emplace_back(link.from, link.to);
    }
    return ends;
}

Ids InputsOf(const Graph& graph, long long node) {
    Ids ids;
    graph->Inputs(node, ids);
    return ids;
}

Ids OutputsOf(const Graph& graph, long long node) {
    Ids ids;
    graph->Outputs(node, ids);
    return ids;
}

Ids InputsOf(const Graph& graph) {
    Ids ids;
    graph->Inputs(ids);
    return ids;
}

Ids OutputsOf(const Graph& graph) {
    Ids ids;
    graph->Outputs(ids);
    return ids;
}

void LoadText(const Graph& graph, std::string text) { graph->Load(Core::MemoryInput::Create(std::move(text))); }

Graph Loaded(std::string text) {
    Graph graph = ITranscodingMetaGraph::Create();
    LoadText(graph, std::move(text));
    return graph;
}

namespace {

// More than a hundred brackets stand open at once; those in texts count too.
bool IsDeep(const std::string& document) {
    int depth = 0;
    return std::any_of(document.begin(), document.end(), [&depth](char c) {
        depth += (c == '{' || c == '[') ? 1 : 0;
        depth -= (c == '}' || c == ']') ? 1 : 0;
        return depth > 100;
    });
}

}  // namespace

std::string Saved(const Graph& graph) {
    const SP<Core::MemoryOutput> output = Core::MemoryOutput::Create();
    graph->Save(output);
    // The validator takes seconds for the deepest trees.
    if (!IsDeep(output->GetBytes())) {
        EXPECT_EQ(SchemaFault(output->GetBytes()), "");
    }
    return output->GetBytes();
}

std::string Drawn(const Graph& graph) {
    const SP<Core::MemoryOutput> output = Core::MemoryOutput::Create();
    graph->SaveInToDot(output);
    return output->GetBytes();
}

void ExpectBadJson(const std::string& text, const std::string& message) {
    const Graph graph = ITranscodingMetaGraph::Create();
    ExpectTag<BadJson, ProfileException::TagJsonBadStructure>([&] { LoadText(graph, text); }, message);
    EXPECT_EQ(NodesOf(graph), std::vector<Node>()) << text.substr(0, 200);
}

void ExpectUsable(const Graph& graph) {
    const std::size_t nodesBefore = NodesOf(graph).size();
    const std::size_t linksBefore = LinksOf(graph).size();
    const long long node = graph->AddNode(Core::Property("after"));
    const long long other = graph->AddNode(Core::Property("after"));
    EXPECT_EQ(other, node + 1);
    graph->AddLink(node, other, Core::Property("after"));
    EXPECT_EQ(NodesOf(graph).size(), nodesBefore + 2);
    EXPECT_EQ(LinksOf(graph).size(), linksBefore + 1);
    const Graph copy = Loaded(Saved(graph));
    EXPECT_EQ(NodesOf(copy).size(), nodesBefore + 2);
    EXPECT_EQ(LinksOf(copy).size(), linksBefore + 1);
}

}  // namespace Quenzo::Conf::Testing
