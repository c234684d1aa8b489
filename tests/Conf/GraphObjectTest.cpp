// Covers the graph as an object: counting its references, destroying it, and the slots of its virtual functions.

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <tests/foundation/VirtualSlots.h>

#include <gtest/gtest.h>

#include <optional>
#include <type_traits>

namespace Quenzo::Conf::Testing {
namespace {

using Quenzo::Testing::VirtualSlot;
using Graph = ITranscodingMetaGraph;

static_assert(std::is_base_of_v<IRefCountable, Graph>);
static_assert(std::has_virtual_destructor_v<Graph>);
static_assert(!std::is_copy_constructible_v<Graph> && !std::is_copy_assignable_v<Graph>);
static_assert(std::is_same_v<Graph::NodeId, long long> && std::is_same_v<Graph::LinkId, long long>);

class WatchedGraph : public Graph {
public:
    explicit WatchedGraph(int& destroyed) : destroyed_(destroyed) {}
    WatchedGraph(const WatchedGraph&) = delete;
    WatchedGraph& operator=(const WatchedGraph&) = delete;
    ~WatchedGraph() override { ++destroyed_; }

private:
    int& destroyed_;
};

TEST(GraphObjectTest, Create_HandsOutOneReference) {
    const SP<Graph> graph = Graph::Create();
    EXPECT_EQ(graph->GetRefCount(), 1);
    const SP<Graph> other = Graph::Create();
    EXPECT_NE(graph, other);
}

TEST(GraphObjectTest, Constructor_MakesAnEmptyGraphWithoutAReference) {
    Graph graph;
    EXPECT_EQ(graph.GetRefCount(), 0);
    EXPECT_EQ(graph.GetNodesCount(), 0);
    EXPECT_EQ(graph.AddNode(Core::Property("node")), 1);
}

TEST(GraphObjectTest, AddRefAndRelease_Count) {
    const SP<const Graph> graph = Graph::Create();
    graph->AddRef();
    EXPECT_EQ(graph->GetRefCount(), 2);
    graph->AddRef();
    EXPECT_EQ(graph->GetRefCount(), 3);
    EXPECT_EQ(graph->Release(), 2);
    EXPECT_EQ(graph->Release(), 1);
    EXPECT_EQ(graph->GetRefCount(), 1);
}

TEST(GraphObjectTest, Release_OfTheLastReferenceDestroysTheGraph) {
    int destroyed = 0;
    auto* graph = new WatchedGraph(destroyed);
    graph->AddRef();
    graph->AddRef();
    EXPECT_EQ(graph->Release(), 1);
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(graph->Release(), 0);
    EXPECT_EQ(destroyed, 1);
}

TEST(GraphObjectTest, SmartPointers_ShareTheGraph) {
    int destroyed = 0;
    {
        const SP<Graph> graph(new WatchedGraph(destroyed));
        SP<const Graph> second = graph;
        EXPECT_EQ(graph->GetRefCount(), 2);
        const SP<const IRefCountable> third = second;
        EXPECT_EQ(graph->GetRefCount(), 3);
        second.reset();
        EXPECT_EQ(graph->GetRefCount(), 2);
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
}

// The destructor takes the slots 0 and 1.
TEST(GraphObjectTest, VirtualFunctions_StandInTheirSlots) {
    EXPECT_EQ(VirtualSlot(&Graph::AddRef), 2U);
    EXPECT_EQ(VirtualSlot(&Graph::GetRefCount), 3U);
    EXPECT_EQ(VirtualSlot(&Graph::Release), 4U);
}

TEST(GraphObjectTest, Operations_AreNotVirtual) {
    using OneList = void (Graph::*)(std::vector<long long>&) const;
    using ListOfNode = void (Graph::*)(long long, std::vector<long long>&) const;
    EXPECT_EQ(VirtualSlot(&Graph::AddNode), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::RemoveNode), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::AddLink), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::RemoveLink), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::operator[]), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::GetLink), std::nullopt);
    EXPECT_EQ(VirtualSlot(static_cast<OneList>(&Graph::Inputs)), std::nullopt);
    EXPECT_EQ(VirtualSlot(static_cast<OneList>(&Graph::Outputs)), std::nullopt);
    EXPECT_EQ(VirtualSlot(static_cast<ListOfNode>(&Graph::Inputs)), std::nullopt);
    EXPECT_EQ(VirtualSlot(static_cast<ListOfNode>(&Graph::Outputs)), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::GetNodesCount), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::VisitNodes), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::VisitLinks), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::TopologyIsValid), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::ExamineTopology), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::FindPath), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::Load), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::Save), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Graph::SaveInToDot), std::nullopt);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
