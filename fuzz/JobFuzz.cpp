// The job document: load, ask everything, save, load again and compare, edit.

#include <fuzz/Require.h>

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace Quenzo;
using Conf::ITranscodingMetaGraph;
using Core::Property;
using Fuzz::Require;
using Graph = SP<ITranscodingMetaGraph>;
using Ids = std::vector<ITranscodingMetaGraph::NodeId>;

Graph Load(const std::string& document) {
    Graph graph = ITranscodingMetaGraph::Create();
    graph->Load(Core::MemoryInput::Create(document));
    return graph;
}

std::string Save(const Graph& graph) {
    const auto output = Core::MemoryOutput::Create();
    graph->Save(output);
    return output->GetBytes();
}

Ids NodesOf(const Graph& graph) {
    Ids ids;
    graph->VisitNodes([&ids](auto node, const Property& /*tree*/) { ids.push_back(node); });
    return ids;
}

void Ask(const Graph& graph) {
    const Ids nodes = NodesOf(graph);
    graph->VisitLinks([&](auto, auto from, auto to, const Property& tree) {
        Require(graph->GetLink(from, to) == tree, "a link is found by its ends");
    });
    Ids ids;
    for (const auto node : nodes) {
        const Property tree = (*graph)[node];
        Require(tree == tree, "a tree equals itself");
        graph->Inputs(node, ids);
        graph->Outputs(node, ids);
    }
    Ids roots;
    graph->Inputs(roots);
    graph->Outputs(ids);
    Require(graph->TopologyIsValid() == graph->ExamineTopology().empty(), "a job is valid when nothing is found");
    if (!nodes.empty()) {
        graph->FindPath(nodes.front(), nodes.back());
    }
    const auto drawing = Core::MemoryOutput::Create();
    graph->SaveInToDot(drawing);
}

// A tree that holds nothing is not saved, and comes back as what stands for a tree that is not there.
Property AsLoaded(const Property& tree) {
    const bool holdsNothing = tree.GetType() == PropertyTypes::None ||
                              (tree.GetType() == PropertyTypes::Node && tree.GetName().empty() && tree.Count() == 0);
    return holdsNothing ? Property("data") : tree;
}

void Compare(const Graph& graph, const Graph& copy) {
    std::vector<Property> trees;
    const auto collect = [&trees](const Property& tree) { trees.push_back(AsLoaded(tree)); };
    graph->VisitNodes([&](auto, const Property& tree) { collect(tree); });
    graph->VisitLinks([&](auto, auto, auto, const Property& tree) { collect(tree); });
    std::size_t at = 0;
    const auto same = [&](const Property& tree) { Require(at < trees.size() && trees[at++] == tree, "the same tree"); };
    copy->VisitNodes([&](auto, const Property& tree) { same(tree); });
    copy->VisitLinks([&](auto, auto, auto, const Property& tree) { same(tree); });
    Require(at == trees.size(), "as many nodes and links");
    Require(NodesOf(graph) == NodesOf(copy), "the same ids");
}

// Changes what can be changed, and sees that what is left can be saved.
void Edit(const Graph& graph) {
    const Ids nodes = NodesOf(graph);
    try {
        const auto node = graph->AddNode(Property("added"));
        if (!nodes.empty()) {
            graph->AddLink(nodes.front(), node, Property("added"));
            graph->RemoveLink(nodes.front(), node);
            graph->RemoveNode(nodes[nodes.size() / 2]);
        }
    } catch (const Conf::ProfileException&) {
        // The last id there is, or the last node of an id that links still name.
    }
    const std::string saved = Save(graph);
    try {
        Load(saved);
    } catch (const Conf::ProfileException&) {
        // Where two nodes had one id and one of them is gone, its links may be the other's now, twice.
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Graph graph;
    try {
        graph = Load({data, data + size});
    } catch (const Exception&) {
        return 0;
    }
    Ask(graph);
    const std::string saved = Save(graph);
    const Graph copy = Load(saved);
    Compare(graph, copy);
    Edit(graph);
    return 0;
}
