// Compares the graph with two models after every step of random editing sequences, failures and the links of removed
// nodes included, and then its answers about topology and ways with a search that tries everything.

#include <tests/Conf/GraphModels.h>
#include <tests/Conf/ModelledGraph.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

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

void CompareAllTheWay(const std::vector<long long>& ids, const std::vector<Edit>& edits) {
    const SP<ITranscodingMetaGraph> graph = GraphWithIds(ids);
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
        RC_ASSERT(GetNode(graph, edit.from) == naive.GetNode(edit.from));
        RC_ASSERT(GetLink(graph, edit.from, edit.to) == naive.GetLink(edit.from, edit.to));
        wasValid = wasValid || naive.TopologyIsValid();
    }
    for (const long long from : {-1LL, 0LL, 1LL, 2LL, 3LL, 5LL, 8LL, 13LL}) {
        for (const long long to : {1LL, 2LL, 3LL, 4LL, 5LL, 6LL, 13LL}) {
            RC_ASSERT(GetLink(graph, from, to) == naive.GetLink(from, to));
        }
    }
    RC_ASSERT(CompareWays(graph, naive) == Outcome());
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
