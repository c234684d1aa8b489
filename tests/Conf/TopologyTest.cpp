// Covers the check of a graph's topology: the verdict, and the findings that explain it.

#include <tests/Conf/GraphSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace Quenzo::Conf {

// Found by GoogleTest.
void PrintTo(const TopologyFinding& finding, std::ostream* os) {
    *os << GetTopologyFaultCode(finding.fault);
    for (const std::vector<long long>& group : finding.groups) {
        *os << " [";
        for (const long long id : group) {
            *os << ' ' << id;
        }
        *os << " ]";
    }
}

namespace Testing {
namespace {

using Findings = std::vector<TopologyFinding>;
using Groups = std::vector<std::vector<long long>>;

TopologyFinding TooFew(Ids nodes) { return {TopologyFault::TooFewNodes, {std::move(nodes)}}; }
TopologyFinding Isolated(long long node) { return {TopologyFault::IsolatedNode, {{node}}}; }
TopologyFinding Cycle(Ids nodes) { return {TopologyFault::Cycle, {std::move(nodes)}}; }
TopologyFinding Disconnected(Groups pieces) { return {TopologyFault::Disconnected, std::move(pieces)}; }

void ExpectFindings(const Graph& graph, const Findings& expected) {
    EXPECT_EQ(graph->ExamineTopology(), expected);
    EXPECT_EQ(graph->TopologyIsValid(), expected.empty());
}

void ExpectFindings(std::size_t nodes, const std::vector<Pair>& links, const Findings& expected) {
    ExpectFindings(MakeGraph(nodes, links), expected);
}

TEST(TopologyTest, GetTopologyFaultCode_IsStable) {
    EXPECT_STREQ(GetTopologyFaultCode(TopologyFault::TooFewNodes), "too-few-nodes");
    EXPECT_STREQ(GetTopologyFaultCode(TopologyFault::IsolatedNode), "isolated-node");
    EXPECT_STREQ(GetTopologyFaultCode(TopologyFault::Cycle), "cycle");
    EXPECT_STREQ(GetTopologyFaultCode(TopologyFault::Disconnected), "disconnected");
    EXPECT_STREQ(GetTopologyFaultCode(TopologyFault{-1}), "");
    EXPECT_STREQ(GetTopologyFaultCode(TopologyFault{4}), "");
}

TEST(TopologyTest, AnEmptyGraph_HasTooFewNodes) { ExpectFindings(0, {}, {TooFew({})}); }

TEST(TopologyTest, OneNode_IsTooFewAndIsolated) { ExpectFindings(1, {}, {TooFew({1}), Isolated(1)}); }

TEST(TopologyTest, OneNodeWithASelfLink_IsTooFewAndACycle) { ExpectFindings(1, {{1, 1}}, {TooFew({1}), Cycle({1})}); }

TEST(TopologyTest, TwoNodesAndOneLink_AreValid) {
    ExpectFindings(2, {{1, 2}}, {});
    ExpectFindings(2, {{2, 1}}, {});
}

TEST(TopologyTest, TwoNodesWithoutALink_AreIsolatedAndApart) {
    ExpectFindings(2, {}, {Isolated(1), Isolated(2), Disconnected({{1}, {2}})});
}

TEST(TopologyTest, AThirdNodeWithoutALink_IsIsolated) {
    ExpectFindings(3, {{1, 2}}, {Isolated(3), Disconnected({{1, 2}, {3}})});
    ExpectFindings(3, {{1, 3}}, {Isolated(2), Disconnected({{1, 3}, {2}})});
    ExpectFindings(3, {{3, 2}}, {Isolated(1), Disconnected({{1}, {2, 3}})});
}

TEST(TopologyTest, ARing_IsACycle) { ExpectFindings(3, {{1, 2}, {2, 3}, {3, 1}}, {Cycle({1, 2, 3})}); }

TEST(TopologyTest, ARingBackwards_IsNamedInTheOrderOfItsLinks) {
    ExpectFindings(3, {{1, 3}, {3, 2}, {2, 1}}, {Cycle({1, 3, 2})});
}

TEST(TopologyTest, LinksThereAndBack_AreACycle) { ExpectFindings(2, {{1, 2}, {2, 1}}, {Cycle({1, 2})}); }

TEST(TopologyTest, ASelfLink_IsACycle) {
    ExpectFindings(2, {{1, 2}, {2, 2}}, {Cycle({2})});
    ExpectFindings(2, {{1, 1}, {1, 2}}, {Cycle({1})});
}

TEST(TopologyTest, ASelfLinkAlone_KeepsANodeFromBeingIsolatedButNotFromBeingApart) {
    ExpectFindings(3, {{1, 2}, {3, 3}}, {Cycle({3}), Disconnected({{1, 2}, {3}})});
}

TEST(TopologyTest, TwoPairs_AreApart) { ExpectFindings(4, {{1, 2}, {3, 4}}, {Disconnected({{1, 2}, {3, 4}})}); }

TEST(TopologyTest, PiecesThatInterleave_AreNamedByTheirFirstNodes) {
    ExpectFindings(6, {{5, 1}, {6, 2}, {3, 5}, {2, 4}}, {Disconnected({{1, 3, 5}, {2, 4, 6}})});
}

TEST(TopologyTest, ADiamond_IsValid) { ExpectFindings(4, {{1, 2}, {1, 3}, {2, 4}, {3, 4}}, {}); }

TEST(TopologyTest, PathsAgainstEachOther_AreOnePiece) { ExpectFindings(4, {{1, 2}, {3, 2}, {3, 4}}, {}); }

TEST(TopologyTest, ATailBeforeACycle_IsNoPartOfIt) {
    ExpectFindings(4, {{1, 2}, {2, 3}, {3, 2}, {3, 4}}, {Cycle({2, 3})});
}

// All three reach each other; the first link of 3 leads to 2, so 1 is on the way to the cycle that is named.
TEST(TopologyTest, TheWayToACycleThroughNodesOfAnother_IsNoPartOfIt) {
    ExpectFindings(3, {{1, 2}, {2, 3}, {3, 2}, {3, 1}}, {Cycle({2, 3})});
    ExpectFindings(4, {{1, 2}, {2, 3}, {3, 4}, {4, 3}, {4, 1}}, {Cycle({3, 4})});
}

TEST(TopologyTest, TwoCyclesInOnePiece_AreTwoFindings) {
    ExpectFindings(5, {{1, 2}, {2, 1}, {2, 3}, {3, 4}, {4, 5}, {5, 3}}, {Cycle({1, 2}), Cycle({3, 4, 5})});
}

TEST(TopologyTest, CyclesThatShareANode_AreOneFinding) {
    const Findings findings = MakeGraph(3, {{1, 2}, {2, 1}, {2, 3}, {3, 2}})->ExamineTopology();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0], Cycle({1, 2}));
}

TEST(TopologyTest, AllFaults_AreNamedInTheOrderOfTheRules) {
    ExpectFindings(6, {{2, 3}, {3, 2}, {6, 5}, {5, 6}},
                   {Isolated(1), Isolated(4), Cycle({2, 3}), Cycle({5, 6}), Disconnected({{1}, {2, 3}, {4}, {5, 6}})});
}

TEST(TopologyTest, AfterRemovals_IdsAreNamedAndNotPositions) {
    const Graph graph = MakeGraph(6, {{3, 4}, {6, 5}});
    graph->RemoveNode(1);
    ExpectFindings(graph, {Isolated(2), Disconnected({{2}, {3, 4}, {5, 6}})});
}

TEST(TopologyTest, AnEdit_ChangesTheVerdict) {
    const Graph graph = MakeGraph(3, {{1, 2}});
    EXPECT_FALSE(graph->TopologyIsValid());
    graph->AddLink(2, 3, LinkTree(2, 3));
    EXPECT_TRUE(graph->TopologyIsValid());
    graph->AddLink(3, 1, LinkTree(3, 1));
    EXPECT_FALSE(graph->TopologyIsValid());
    graph->RemoveLink(1, 2);
    EXPECT_TRUE(graph->TopologyIsValid());
}

// The lists of inputs and outputs decide about isolation and cycles, all links about the pieces.
TEST(TopologyTest, ALinkHandedOnToTheNextNode_StillJoinsThePieces) {
    // 1 -> 2 becomes 1 -> 3, which node 3 does not list among its inputs.
    const Graph handedInput = MakeGraph(3, {{1, 2}});
    handedInput->RemoveNode(2);
    ExpectFindings(handedInput, {Isolated(3)});
    // 2 -> 1 becomes 3 -> 1, which node 3 does not list among its outputs.
    const Graph handedOutput = MakeGraph(3, {{2, 1}});
    handedOutput->RemoveNode(2);
    ExpectFindings(handedOutput, {Isolated(3)});
}

TEST(TopologyTest, PiecesThatOnlyALinkHandedOnJoins_AreOne) {
    // 3 -> 2 becomes 4 -> 2, which node 4 does not list among its outputs.
    const Graph onwards = MakeGraph(5, {{1, 2}, {3, 2}, {4, 5}});
    onwards->RemoveNode(3);
    ExpectFindings(onwards, {});
    // The same where links lead back: 3 -> 1 becomes 4 -> 1.
    const Graph backwards = MakeGraph(5, {{2, 1}, {3, 1}, {5, 4}});
    backwards->RemoveNode(3);
    ExpectFindings(backwards, {});
}

TEST(TopologyTest, ALinkHandedOnToItsOwnSource_IsACycleWhenItIsAnOutput) {
    // 3 -> 2 becomes 3 -> 3 and stands among the outputs of node 3; 2 -> 3 only among its inputs.
    const Graph output = MakeGraph(3, {{3, 2}, {1, 3}});
    output->RemoveNode(2);
    ExpectFindings(output, {Cycle({3})});
    const Graph input = MakeGraph(3, {{2, 3}, {1, 3}});
    input->RemoveNode(2);
    ExpectFindings(input, {});
}

TEST(TopologyTest, TwoLinksOfOnePair_AreNoCycle) {
    const Graph graph = MakeGraph(3, {{1, 2}, {1, 3}});
    graph->RemoveNode(2);
    ExpectFindings(graph, {});
}

TEST(TopologyTest, ALongChain_NeedsNoDeepStack) {
    constexpr long long count = 100000;
    const Graph graph = MakeGraph(count, {});
    for (long long id = 1; id < count; ++id) {
        graph->AddLink(id, id + 1, Core::Property());
    }
    ExpectFindings(graph, {});
    graph->AddLink(count, 1, Core::Property());
    const Findings findings = graph->ExamineTopology();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].groups[0].size(), static_cast<std::size_t>(count));
    EXPECT_FALSE(graph->TopologyIsValid());
}

using Reach = std::map<long long, std::set<long long>>;

// For each node the nodes that one or more links lead to.
Reach Closure(const Graph& graph) {
    Reach reach;
    for (const Node& node : NodesOf(graph)) {
        const Ids outputs = OutputsOf(graph, node.id);
        reach[node.id] = std::set<long long>(outputs.begin(), outputs.end());
    }
    for (std::size_t round = 0; round < reach.size(); ++round) {
        for (auto& [node, reached] : reach) {
            const std::set<long long> known = reached;
            for (const long long next : known) {
                reached.insert(reach[next].begin(), reach[next].end());
            }
        }
    }
    return reach;
}

// The first node of each set of nodes that can all reach one another, of all sets that have a cycle.
std::vector<Ids> SetsWithCycles(const Reach& reach) {
    std::vector<Ids> sets;
    std::set<long long> done;
    for (const auto& [node, reached] : reach) {
        if (reached.count(node) == 0 || done.count(node) != 0) {
            continue;
        }
        Ids set;
        for (const long long other : reached) {
            if (reach.at(other).count(node) != 0) {
                set.push_back(other);
                done.insert(other);
            }
        }
        sets.push_back(set);
    }
    return sets;
}

Graph AnyGraph() {
    const long long count = *rc::gen::inRange(0LL, 12LL);
    const Graph graph = MakeGraph(static_cast<std::size_t>(count), {});
    const auto id = rc::gen::inRange(1LL, std::max(count, 1LL) + 1);
    for (const auto& [from, to] : *rc::gen::container<std::set<Pair>>(rc::gen::pair(id, id))) {
        if (count > 0) {
            graph->AddLink(from, to, Core::Property());
        }
    }
    return graph;
}

RC_GTEST_PROP(TopologyTest, Findings_NameOneWalkableCycleOfEachSet, ()) {
    const Graph graph = AnyGraph();
    const std::vector<Ids> sets = SetsWithCycles(Closure(graph));
    std::size_t cycles = 0;
    for (const TopologyFinding& finding : graph->ExamineTopology()) {
        if (finding.fault != TopologyFault::Cycle) {
            continue;
        }
        RC_ASSERT(cycles < sets.size());
        const Ids& set = sets[cycles++];
        RC_ASSERT(finding.groups.size() == 1U);
        const Ids& cycle = finding.groups[0];
        RC_ASSERT(std::set<long long>(cycle.begin(), cycle.end()).size() == cycle.size());
        for (std::size_t i = 0; i < cycle.size(); ++i) {
            const Ids outputs = OutputsOf(graph, cycle[i]);
            const long long next = cycle[(i + 1) % cycle.size()];
            RC_ASSERT(std::find(outputs.begin(), outputs.end(), next) != outputs.end());
            RC_ASSERT(std::find(set.begin(), set.end(), cycle[i]) != set.end());
        }
    }
    RC_ASSERT(cycles == sets.size());
}

RC_GTEST_PROP(TopologyTest, Findings_NameEveryPieceInFull, ()) {
    const Graph graph = AnyGraph();
    std::map<long long, long long> first;
    for (const Node& node : NodesOf(graph)) {
        first[node.id] = node.id;
    }
    for (std::size_t round = 0; round < first.size(); ++round) {
        for (const auto& [from, to] : EndsOf(graph)) {
            first[from] = first[to] = std::min(first[from], first[to]);
        }
    }
    std::map<long long, Ids> pieces;
    for (const auto& [node, piece] : first) {
        pieces[piece].push_back(node);
    }
    Findings expected;
    if (pieces.size() > 1) {
        Groups groups;
        for (const auto& [piece, nodes] : pieces) {
            groups.push_back(nodes);
        }
        expected.push_back(Disconnected(groups));
    }
    Findings found = graph->ExamineTopology();
    std::erase_if(found, [](const TopologyFinding& each) { return each.fault != TopologyFault::Disconnected; });
    RC_ASSERT(found == expected);
}

RC_GTEST_PROP(TopologyTest, Verdict_IsTrueExactlyWithoutFindings, ()) {
    const Graph graph = AnyGraph();
    RC_ASSERT(graph->TopologyIsValid() == graph->ExamineTopology().empty());
    while (NodesOf(graph).size() > 1) {
        const std::vector<Node> nodes = NodesOf(graph);
        // Not the last one: its links would have to go first.
        graph->RemoveNode(nodes[*rc::gen::inRange(std::size_t{0}, nodes.size() - 1)].id);
        RC_ASSERT(graph->TopologyIsValid() == graph->ExamineTopology().empty());
    }
}

}  // namespace
}  // namespace Testing
}  // namespace Quenzo::Conf
