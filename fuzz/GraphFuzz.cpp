// Sequences of edits from bytes, three for each, compared with a model after every step.

#include <fuzz/Require.h>

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <tests/Conf/GraphModels.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace Quenzo;
using namespace Quenzo::Conf::Testing;
using Conf::ITranscodingMetaGraph;
using Conf::ProfileException;
using Core::Property;
using Graph = SP<ITranscodingMetaGraph>;
using Ids = std::vector<long long>;

Outcome WithLink(const char* name, const ProfileException& failure) {
    const auto* link = boost::get_error_info<ProfileException::TagRequestedLink>(failure);
    Fuzz::Require(link != nullptr, "a failure names its link");
    return std::string(name) + " " + std::to_string(link->first) + " " + std::to_string(link->second);
}

Outcome Apply(const Graph& graph, const Edit& edit) {
    const Property tree("mark", edit.mark);
    try {
        switch (edit.kind) {
            case EditKind::AddNode: graph->AddNode(tree); break;
            case EditKind::RemoveNode: graph->RemoveNode(edit.from); break;
            case EditKind::AddLink: graph->AddLink(edit.from, edit.to, tree); break;
            case EditKind::RemoveLink: graph->RemoveLink(edit.from, edit.to); break;
        }
    } catch (const Conf::NodeNotFound& failure) {
        const auto* id = boost::get_error_info<ProfileException::TagRequestedNodeId>(failure);
        Fuzz::Require(id != nullptr, "a failure names its node");
        return "NodeNotFound " + std::to_string(*id);
    } catch (const Conf::LinkExists& failure) {
        return WithLink("LinkExists", failure);
    } catch (const Conf::LinkNotFound& failure) {
        return WithLink("LinkNotFound", failure);
    }
    return {};
}

Snapshot Show(const Graph& graph) {
    Snapshot snapshot{{}, {}, {}, {}, graph->GetNodesCount()};
    graph->Inputs(snapshot.inputs);
    graph->Outputs(snapshot.outputs);
    graph->VisitNodes([&](auto id, const Property& tree) {
        Ids inputs;
        Ids outputs;
        graph->Inputs(id, inputs);
        graph->Outputs(id, outputs);
        snapshot.nodes.emplace_back(id, tree.GetInt64(), inputs, outputs);
    });
    graph->VisitLinks([&](auto id, auto from, auto to, const Property& tree) {
        snapshot.links.emplace_back(id, from, to, tree.GetInt64());
    });
    return snapshot;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The models look at everything after each step.
    constexpr std::size_t mostEdits = 60;
    const Graph graph = ITranscodingMetaGraph::Create();
    NaiveGraph naive({});
    long long mark = 0;
    for (std::size_t i = 0; i + 2 < size && i < 3 * mostEdits; i += 3) {
        const Edit edit{EditKind{data[i] % 4}, data[i + 1] % 16 - 1, data[i + 2] % 16 - 1, ++mark};
        Fuzz::Require(Apply(graph, edit) == naive.Apply(edit), "an edit has the same outcome");
        Fuzz::Require(Show(graph) == naive.Show(), "the graph shows the same");
        Fuzz::Require(graph->TopologyIsValid() == naive.TopologyIsValid(), "the same topology is valid");
    }
    return 0;
}
