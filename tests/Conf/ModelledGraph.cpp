#include <tests/Conf/ModelledGraph.h>

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/GraphAlgorithms.h>
#include <foundation/DataStream.h>

#include <boost/exception/get_error_info.hpp>

#include <algorithm>
#include <string>

namespace Quenzo::Conf::Testing {

namespace {

using Graph = SP<ITranscodingMetaGraph>;
using Ids = std::vector<long long>;

Outcome WithLink(const char* name, const ProfileException& failure) {
    const auto* link = boost::get_error_info<ProfileException::TagRequestedLink>(failure);
    return link == nullptr ? std::string("no link given")
                           : std::string(name) + " " + std::to_string(link->first) + " " + std::to_string(link->second);
}

// Runs a call on the graph and puts its outcome into the models' words. `call` returns the text of a success.
template <typename Call>
Outcome OutcomeOf(const Call& call) {
    try {
        return call();
    } catch (const NodeNotFound& failure) {
        const auto* id = boost::get_error_info<ProfileException::TagRequestedNodeId>(failure);
        return id == nullptr ? "no id given" : "NodeNotFound " + std::to_string(*id);
    } catch (const LinkExists& failure) {
        return WithLink("LinkExists", failure);
    } catch (const LinkNotFound& failure) {
        return WithLink("LinkNotFound", failure);
    }
}

bool FollowsLinks(const Graph& graph, const Ids& path) {
    for (std::size_t i = 1; i < path.size(); ++i) {
        Ids outputs;
        graph->Outputs(path[i - 1], outputs);
        if (std::find(outputs.begin(), outputs.end(), path[i]) == outputs.end()) {
            return false;
        }
    }
    return true;
}

}  // namespace

Graph GraphWithIds(const Ids& ids) {
    std::string vertices;
    for (const long long id : ids) {
        const std::string text = std::to_string(id);
        vertices += (vertices.empty() ? "" : ",") + (R"({"id":)" + text) + R"(,"data":{"mark":)" + text + "}}";
    }
    Graph graph = ITranscodingMetaGraph::Create();
    graph->Load(Core::MemoryInput::Create(R"({"vertices":[)" + vertices + R"(],"edges":[]})"));
    return graph;
}

Outcome Apply(const Graph& graph, const Edit& edit) {
    const Core::Property tree("mark", edit.mark);
    return OutcomeOf([&]() -> Outcome {
        switch (edit.kind) {
            case EditKind::AddNode: graph->AddNode(tree); break;
            case EditKind::RemoveNode: graph->RemoveNode(edit.from); break;
            case EditKind::AddLink: graph->AddLink(edit.from, edit.to, tree); break;
            case EditKind::RemoveLink: graph->RemoveLink(edit.from, edit.to); break;
        }
        return {};
    });
}

Outcome GetNode(const Graph& graph, long long node) {
    return OutcomeOf([&] { return std::to_string((*graph)[node].GetInt64()); });
}

Outcome GetLink(const Graph& graph, long long from, long long to) {
    return OutcomeOf([&] { return std::to_string(graph->GetLink(from, to).GetInt64()); });
}

Snapshot Show(const Graph& graph) {
    Snapshot snapshot{{}, {}, {}, {}, graph->GetNodesCount()};
    graph->Inputs(snapshot.inputs);
    graph->Outputs(snapshot.outputs);
    graph->VisitNodes([&](auto id, const Core::Property& tree) {
        Ids inputs;
        Ids outputs;
        graph->Inputs(id, inputs);
        graph->Outputs(id, outputs);
        snapshot.nodes.emplace_back(id, tree.GetInt64(), inputs, outputs);
    });
    graph->VisitLinks([&](auto id, auto from, auto to, const Core::Property& tree) {
        snapshot.links.emplace_back(id, from, to, tree.GetInt64());
    });
    return snapshot;
}

Outcome CompareWays(const Graph& graph, const NaiveGraph& model) {
    const std::vector<std::vector<int>> distances = model.Distances();
    for (std::size_t i = 0; i < model.Count(); ++i) {
        for (std::size_t j = 0; j < model.Count(); ++j) {
            const long long from = model.IdAt(i);
            const long long to = model.IdAt(j);
            const int distance = distances[model.Position(from)][model.Position(to)];
            const Ids path = graph->FindPath(from, to);
            const bool isRight = static_cast<int>(path.size()) == distance + 1 &&
                                 (path.empty() || (path.front() == from && path.back() == to)) &&
                                 FollowsLinks(graph, path) && PathExistInGraph(graph, from, to) == !path.empty();
            if (!isRight) {
                return "the way from " + std::to_string(from) + " to " + std::to_string(to) + " has " +
                       std::to_string(path.size()) + " nodes, at a distance of " + std::to_string(distance);
            }
        }
    }
    return {};
}

}  // namespace Quenzo::Conf::Testing
