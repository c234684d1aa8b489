// Covers what a graph does when memory runs out, at each allocation of each operation: an edit that fails leaves it as
// it was, a failed Load leaves a part of the document in it, queries and drawing change nothing, and nothing leaks.

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/GraphAlgorithms.h>
#include <Conf/Interfaces/TreePreset.h>
#include <tests/Conf/GraphSupport.h>
#include <tests/faults/EveryAllocation.h>
#include <tests/faults/JobDocuments.h>
#include <tests/foundation/PrintProperty.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Quenzo::Testing::ExpectAllOrNothing;
using Quenzo::Testing::FailEveryAllocation;
using Quenzo::Testing::JobDocument;

Property MakeTree() {
    Property tree("a tree with a name that takes memory");
    tree.CreateChildT<std::string>("a child with a name that takes memory", "and a value that takes memory too");
    return tree;
}

// The contents, what is found by each id, and the counter: what two equal graphs have in common.
struct Contents {
    std::vector<Node> nodes;
    std::vector<Property> found;
    std::vector<Link> links;
    long long lastNode = 0;

    bool operator==(const Contents& other) const = default;
};

std::ostream& operator<<(std::ostream& os, const Contents& contents) {
    return os << ::testing::PrintToString(contents.nodes) << ::testing::PrintToString(contents.links)
              << contents.lastNode;
}

Contents ContentsOf(const Graph& graph) {
    Contents contents = {NodesOf(graph), {}, LinksOf(graph), graph->GetNodesCount()};
    for (const Node& node : contents.nodes) {
        contents.found.push_back((*graph)[node.id]);
    }
    return contents;
}

Graph MakeJob() { return MakeGraph(5, {{1, 2}, {2, 3}, {2, 4}, {3, 5}, {4, 5}}); }

template <typename Act>
void ExpectAllOrNothingOf(Act act) {
    ExpectAllOrNothing(MakeJob, act, ContentsOf);
}

TEST(GraphAllocationTest, Create) {
    ExpectAllOrNothing([] { return Graph(); }, [](Graph& graph) { graph = ITranscodingMetaGraph::Create(); },
                       [](const Graph& graph) { return graph != nullptr; });
}

TEST(GraphAllocationTest, AddNode) {
    ExpectAllOrNothing(
        ITranscodingMetaGraph::Create, [](const Graph& graph) { graph->AddNode(MakeTree()); }, ContentsOf);
    ExpectAllOrNothingOf([](const Graph& graph) { graph->AddNode(MakeTree()); });
}

// Ids in any order, one of them twice: such a graph has an index.
Graph MakeIndexed() {
    return Loaded(
        R"({"vertices":[{"id":5,"data":{"a":1}},{"id":-3},{"id":5,"data":{"c":3}},{"id":9},{"id":0}],"edges":[]})");
}

TEST(GraphAllocationTest, AddNode_ToAGraphWithAnIndex) {
    ExpectAllOrNothing(
        MakeIndexed, [](const Graph& graph) { graph->AddNode(MakeTree()); },
        [](const Graph& graph) {
            EXPECT_THROW((*graph)[graph->GetNodesCount() + 1], NodeNotFound);
            return ContentsOf(graph);
        });
}

// A document without nodes has the counter begin again, so the next node has the id of one that is there.
TEST(GraphAllocationTest, AddNode_ThatTheIndexStartsWith) {
    const auto make = [] {
        Graph graph = MakeJob();
        LoadText(graph, R"({"vertices":[],"edges":[]})");
        return graph;
    };
    ExpectAllOrNothing(
        make, [](const Graph& graph) { graph->AddNode(MakeTree()); }, ContentsOf);
}

TEST(GraphAllocationTest, AddLink) {
    ExpectAllOrNothingOf([](const Graph& graph) { graph->AddLink(5, 1, MakeTree()); });
    ExpectAllOrNothingOf([](const Graph& graph) { graph->AddLink(3, 3, MakeTree()); });
}

TEST(GraphAllocationTest, AddLink_HandsOutTheNextIdAfterAFailure) {
    FailEveryAllocation(
        MakeJob, [](const Graph& graph) { graph->AddLink(5, 1, MakeTree()); },
        [](const Graph& graph, bool hasFailed) { EXPECT_EQ(graph->AddLink(1, 5, MakeTree()), hasFailed ? 6 : 7); });
}

TEST(GraphAllocationTest, Removals_TakeNoMemory) {
    const Graph graph = MakeJob();
    {
        const Quenzo::Testing::FailingMemory fault(1, Quenzo::Testing::Shortage::Lasting);
        graph->RemoveLink(4, 5);
        graph->RemoveNode(1);
        EXPECT_FALSE(fault.HasStruck());
    }
    EXPECT_EQ(NodesOf(graph).size(), 4U);
    EXPECT_EQ(LinksOf(graph).size(), 4U);

    const Graph indexed = MakeIndexed();
    {
        const Quenzo::Testing::FailingMemory fault(1, Quenzo::Testing::Shortage::Lasting);
        indexed->RemoveNode(5);
        indexed->RemoveNode(9);
        EXPECT_FALSE(fault.HasStruck());
    }
    EXPECT_EQ((*indexed)[5], Property("c", 3));
    EXPECT_THROW((*indexed)[9], NodeNotFound);
    EXPECT_EQ(NodesOf(indexed).size(), 3U);
}

// A query appends to what it is given; that may hold a part when memory runs out.
TEST(GraphAllocationTest, Queries_LeaveTheGraphAlone) {
    const Contents before = ContentsOf(MakeJob());
    const auto look = [&before](const Graph& graph, bool /*hasFailed*/) { EXPECT_EQ(ContentsOf(graph), before); };
    const auto query = [](const Graph& graph) {
        Ids ids;
        graph->Inputs(5, ids);
        graph->Outputs(2, ids);
        graph->Inputs(ids);
        graph->Outputs(ids);
        static_cast<void>((*graph)[1]);
        static_cast<void>(graph->GetLink(1, 2));
    };
    EXPECT_GT(FailEveryAllocation(MakeJob, query, look), 0);
    const auto visit = [](const Graph& graph) {
        std::vector<Property> trees;
        graph->VisitNodes([&trees](long long, const Property& tree) { trees.push_back(tree); });
        graph->VisitLinks([&trees](long long, long long, long long, const Property& tree) { trees.push_back(tree); });
    };
    EXPECT_GT(FailEveryAllocation(MakeJob, visit, look), 0);
}

// A valid job whose links all lead to nodes made before, which takes the longer check.
Graph MakeBackwardJob() { return MakeGraph(5, {{5, 4}, {4, 3}, {4, 2}, {3, 1}, {2, 1}}); }

// Two cycles, an isolated node and a piece of its own.
Graph MakeBrokenJob() { return MakeGraph(9, {{1, 2}, {2, 3}, {3, 1}, {4, 5}, {5, 4}, {7, 8}, {8, 9}, {3, 4}}); }

TEST(GraphAllocationTest, Topology_IsExaminedInFullOrNotAtAll) {
    struct Examined {
        Graph graph = MakeBrokenJob();
        std::vector<TopologyFinding> findings;
        bool isValid = false;
    };
    const auto examine = [](Examined& examined) {
        auto findings = examined.graph->ExamineTopology();
        const bool isValid = MakeJob()->TopologyIsValid() && MakeBackwardJob()->TopologyIsValid();
        examined.isValid = isValid;
        examined.findings = std::move(findings);
    };
    Examined whole;
    examine(whole);
    EXPECT_EQ(whole.findings.size(), 4U);
    EXPECT_TRUE(whole.isValid);
    const auto state = [&whole](const Examined& examined) {
        return std::pair(examined.findings == whole.findings, ContentsOf(examined.graph));
    };
    ExpectAllOrNothing([] { return Examined(); }, examine, state);
}

TEST(GraphAllocationTest, FindPath) {
    const auto make = [] { return std::pair(Loaded(JobDocument("ids-in-any-order.json")), Ids()); };
    const auto search = [](auto& job) {
        Ids all;
        job.first->VisitNodes([&all](long long id, const Property&) { all.push_back(id); });
        Ids path = job.first->FindPath(all.front(), all.back());
        path.push_back(PathExistInGraph(job.first, all.back(), all.front()) ? 1 : 0);
        job.second = std::move(path);
    };
    ExpectAllOrNothing(make, search, [](const auto& job) { return job.second; });
}

TEST(GraphAllocationTest, Save_WritesTheWholeDocumentOrThrows) {
    for (const char* name : Quenzo::Testing::kJobDocuments) {
        SCOPED_TRACE(name);
        const Graph graph = Loaded(JobDocument(name));
        const Contents before = ContentsOf(graph);
        const auto save = [&graph](std::string& bytes) {
            const auto output = Core::MemoryOutput::Create();
            graph->Save(output);
            bytes = output->GetBytes();
        };
        ExpectAllOrNothing([] { return std::string(); }, save, [](const std::string& bytes) { return bytes; });
        EXPECT_EQ(ContentsOf(graph), before);
    }
}

TEST(GraphAllocationTest, SaveInToDot_WritesTheWholeTextOrNothing) {
    const Graph graph = Loaded(JobDocument("every-kind-of-value.json"));
    const std::string whole = Drawn(graph);
    const long failures = FailEveryAllocation(
        Core::MemoryOutput::Create, [&graph](const auto& output) { graph->SaveInToDot(output); },
        [&whole](const auto& output, bool hasFailed) { EXPECT_EQ(output->GetBytes(), hasFailed ? "" : whole); });
    EXPECT_GT(failures, 10);
    EXPECT_EQ(Drawn(graph), whole);
}

// The first nodes and links of the whole: all nodes when there is a link.
void ExpectBeginning(const Contents& part, const Contents& whole) {
    ASSERT_LE(part.nodes.size(), whole.nodes.size());
    ASSERT_LE(part.links.size(), whole.links.size());
    EXPECT_TRUE(std::equal(part.nodes.begin(), part.nodes.end(), whole.nodes.begin()));
    EXPECT_TRUE(std::equal(part.links.begin(), part.links.end(), whole.links.begin()));
    EXPECT_TRUE(part.links.empty() || part.nodes.size() == whole.nodes.size());
}

// Makes what the validator of documents keeps.
void WarmUp() { static_cast<void>(Saved(MakeJob())); }

TEST(GraphAllocationTest, Load_KeepsWhatCameBeforeTheFailure) {
    WarmUp();
    for (const char* name : Quenzo::Testing::kJobDocuments) {
        SCOPED_TRACE(name);
        const std::string document = JobDocument(name);
        const Contents whole = ContentsOf(Loaded(document));
        const long failures = FailEveryAllocation(
            ITranscodingMetaGraph::Create, [&document](const Graph& graph) { LoadText(graph, document); },
            [&whole](const Graph& graph, bool hasFailed) {
                const Contents part = ContentsOf(graph);
                ExpectBeginning(part, whole);
                EXPECT_EQ(part == whole, !hasFailed);
                ExpectUsable(graph);
            });
        EXPECT_GT(failures, 30);
    }
}

TEST(GraphAllocationTest, Load_IntoAGraphThatHasNodesKeepsThem) {
    WarmUp();
    const std::string document = JobDocument("two-sources.json");
    const auto make = [] { return MakeGraph(3, {}); };
    const Contents before = ContentsOf(make());
    FailEveryAllocation(
        make, [&document](const Graph& graph) { LoadText(graph, document); },
        [&before](const Graph& graph, bool hasFailed) {
            const Contents contents = ContentsOf(graph);
            ExpectBeginning(before, contents);
            EXPECT_GE(contents.nodes.size(), before.nodes.size() + (hasFailed ? 0 : 1));
            ExpectUsable(graph);
        });
}

TEST(GraphAllocationTest, Builders) {
    Property tree("preset");
    tree.SetChildT<std::string>("a key that takes memory", "a value that takes memory as well");
    tree.SetChild(IPreset::KEY_STREAMS);
    const auto preset = TreePreset::Create(tree);
    const std::string path = "a/path/that/is/too/long/for/a/string/object.mp4";
    const auto build = [&](std::vector<Property>& built) {
        std::vector<Property> made;
        made.push_back(ITranscodingMetaGraph::MakeInFileDescription(path));
        made.push_back(ITranscodingMetaGraph::MakeOutFileDescription(preset, path, false));
        made.push_back(ITranscodingMetaGraph::MakeRawStreamDescription(3));
        made.push_back(ITranscodingMetaGraph::GetControlledBy(3));
        made.push_back(TreePreset::Create(made.front())->GetProperty());
        built = std::move(made);
    };
    ExpectAllOrNothing([] { return std::vector<Property>(); }, build,
                       [](const std::vector<Property>& built) { return built; });
}

TEST(GraphAllocationTest, MakeOutFileDescription_ThatLogs) {
    const auto preset = TreePreset::Create(MakeTree());
    const auto build = [&preset](Property& built) {
        built = ITranscodingMetaGraph::MakeOutFileDescription(preset, "target.vob", true);
    };
    ExpectAllOrNothing([] { return Property(); }, build, [](const Property& built) { return built; });
}

TEST(GraphAllocationTest, AddSlaveStreamIndex) {
    const auto add = [](Property& master) { ITranscodingMetaGraph::AddSlaveStreamIndex(master, MakeTree(), 4); };
    const auto state = [](const Property& master) { return master; };
    ExpectAllOrNothing(MakeTree, add, state);
    const auto withOne = [] {
        Property master = MakeTree();
        ITranscodingMetaGraph::AddSlaveStreamIndex(master, MakeTree(), 3);
        return master;
    };
    ExpectAllOrNothing(withOne, add, state);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
