// Compares the graph with two models after every step of random editing sequences, failures and the links of removed
// nodes included, and then its answers about topology and ways with a search that tries everything.

#include <Conf/Interfaces/GraphAlgorithms.h>
#include <tests/Conf/GraphModels.h>
#include <tests/Conf/GraphSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <boost/exception/get_error_info.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

// More ids than the sequences usually bring about, so that unknown ones are among them.
rc::Gen<long long> AnyId() { return rc::gen::inRange(-1LL, 14LL); }

rc::Gen<Edit> AnyEdit() {
    const auto kind = rc::gen::weightedElement<EditKind>(
        {{3, EditKind::AddNode}, {2, EditKind::RemoveNode}, {8, EditKind::AddLink}, {2, EditKind::RemoveLink}});
    return rc::gen::apply(
        [](EditKind which, long long from, long long to) {
            return Edit{which, from, to, 0};
        },
        kind, AnyId(), AnyId());
}

// Each edit with a mark of its own.
rc::Gen<std::vector<Edit>> AnyEdits() {
    return rc::gen::map(rc::gen::container<std::vector<Edit>>(AnyEdit()), [](std::vector<Edit> edits) {
        long long mark = 1000;
        for (Edit& edit : edits) {
            edit.mark = mark++;
        }
        return edits;
    });
}

// Runs a call on the graph and puts its outcome into the models' words. `call` returns the text of a success.
template <typename Call>
Outcome OutcomeOf(const Call& call) {
    const auto withLink = [](const char* name, const ProfileException& failure) {
        const auto* link = boost::get_error_info<ProfileException::TagRequestedLink>(failure);
        return link == nullptr
                   ? std::string("no link given")
                   : std::string(name) + " " + std::to_string(link->first) + " " + std::to_string(link->second);
    };
    try {
        return call();
    } catch (const NodeNotFound& failure) {
        const auto* id = boost::get_error_info<ProfileException::TagRequestedNodeId>(failure);
        return id == nullptr ? "no id given" : "NodeNotFound " + std::to_string(*id);
    } catch (const LinkExists& failure) {
        return withLink("LinkExists", failure);
    } catch (const LinkNotFound& failure) {
        return withLink("LinkNotFound", failure);
    }
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

Snapshot Show(const Graph& graph) {
    Snapshot snapshot{{}, {}, InputsOf(graph), OutputsOf(graph), graph->GetNodesCount()};
    for (const Node& node : NodesOf(graph)) {
        snapshot.nodes.emplace_back(node.id, node.tree.GetInt64(), InputsOf(graph, node.id), OutputsOf(graph, node.id));
    }
    for (const Link& link : LinksOf(graph)) {
        snapshot.links.emplace_back(link.id, link.from, link.to, link.tree.GetInt64());
    }
    return snapshot;
}

// A graph with nodes of these ids, as only a document can bring them.
Graph GraphWithIds(const std::vector<long long>& ids) {
    std::string vertices;
    for (const long long id : ids) {
        const std::string text = std::to_string(id);
        vertices += (vertices.empty() ? "" : ",") + (R"({"id":)" + text) + R"(,"data":{"mark":)" + text + "}}";
    }
    return Loaded(R"({"vertices":[)" + vertices + R"(],"edges":[]})");
}

void CompareLinks(const Graph& graph, const NaiveGraph& model, long long from, long long to) {
    RC_ASSERT(OutcomeOf([&] { return std::to_string(graph->GetLink(from, to).GetInt64()); }) ==
              model.GetLink(from, to));
}

// A way is found exactly when there is one, it is one of the shortest, and it follows the links.
void CompareWays(const Graph& graph, const NaiveGraph& model) {
    const std::vector<std::vector<int>> distances = model.Distances();
    for (std::size_t from = 0; from < model.Count(); ++from) {
        for (std::size_t to = 0; to < model.Count(); ++to) {
            const int distance = distances[model.Position(model.IdAt(from))][model.Position(model.IdAt(to))];
            const Ids path = graph->FindPath(model.IdAt(from), model.IdAt(to));
            RC_ASSERT(static_cast<int>(path.size()) == distance + 1);
            RC_ASSERT(PathExistInGraph(graph, model.IdAt(from), model.IdAt(to)) == (distance >= 0));
            if (distance >= 0) {
                RC_ASSERT(path.front() == model.IdAt(from));
                RC_ASSERT(path.back() == model.IdAt(to));
            }
            for (std::size_t i = 1; i < path.size(); ++i) {
                const Ids outputs = OutputsOf(graph, path[i - 1]);
                RC_ASSERT(std::find(outputs.begin(), outputs.end(), path[i]) != outputs.end());
            }
        }
    }
}

void CompareAllTheWay(const std::vector<long long>& ids, const std::vector<Edit>& edits) {
    const Graph graph = GraphWithIds(ids);
    NaiveGraph naive(ids);
    StoreGraph store(ids);
    RC_ASSERT(Show(graph) == naive.Show());
    bool wasValid = false;
    for (const Edit& edit : edits) {
        const Outcome expected = naive.Apply(edit);
        RC_ASSERT(Apply(graph, edit) == expected);
        RC_ASSERT(store.Apply(edit) == expected);
        const Snapshot shown = Show(graph);
        RC_ASSERT(shown == naive.Show());
        RC_ASSERT(shown == store.Show());
        RC_ASSERT(graph->TopologyIsValid() == naive.TopologyIsValid());
        RC_ASSERT(graph->ExamineTopology().empty() == naive.TopologyIsValid());
        CompareLinks(graph, naive, edit.from, edit.to);
        wasValid = wasValid || naive.TopologyIsValid();
    }
    for (const long long from : {-1LL, 0LL, 1LL, 2LL, 3LL, 5LL, 8LL, 13LL}) {
        for (const long long to : {1LL, 2LL, 3LL, 4LL, 5LL, 6LL, 13LL}) {
            CompareLinks(graph, naive, from, to);
        }
    }
    CompareWays(graph, naive);
    RC_CLASSIFY(wasValid, "valid at least once");
}

RC_GTEST_PROP(GraphModelTest, Edits_OfANewGraphDoWhatBothModelsDo, ()) { CompareAllTheWay({}, *AnyEdits()); }

RC_GTEST_PROP(GraphModelTest, Edits_OfAGraphOfSixNodesDoWhatBothModelsDo, ()) {
    CompareAllTheWay({1, 2, 3, 4, 5, 6}, *AnyEdits());
}

RC_GTEST_PROP(GraphModelTest, Edits_WithLoadedIdsInAnyOrderDoWhatBothModelsDo, ()) {
    CompareAllTheWay(*rc::gen::container<std::vector<long long>>(AnyId()), *AnyEdits());
}

// Chosen so that the answers to all questions about topology occur often.
RC_GTEST_PROP(GraphModelTest, Topology_OfLinksThatMostlyRunForwardsIsJudgedAsByTheModel, ()) {
    const long long count = *rc::gen::inRange(2LL, 7LL);
    std::vector<long long> ids;
    std::vector<Edit> edits;
    for (long long id = 1; id <= count; ++id) {
        ids.push_back(id);
    }
    const auto chance = rc::gen::inRange(0, 100);
    for (const long long from : ids) {
        for (const long long to : ids) {
            if (*chance < (from < to ? 40 : 2)) {
                edits.push_back({EditKind::AddLink, from, to, 0});
            }
        }
    }
    CompareAllTheWay(ids, edits);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
