// The graph: loading and saving documents beside RapidJSON alone through the same streams of one virtual call per byte,
// and beside Boost.Graph with nlohmann's JSON; the topology check, the path search and the removal of nodes. The
// argument is the number of nodes; times grow in proportion to it.

#include <bench/ForgetfulOutput.h>
#include <bench/JobDocument.h>
#include <bench/Verify.h>
#include <bench/peers/BoostGraph.h>

#include <Conf/Interfaces/GraphAlgorithms.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <foundation/DataStream.h>
#include <foundation/JsonStream.h>

#include <benchmark/benchmark.h>

#include <rapidjson/document.h>
#include <rapidjson/writer.h>

#include <cstddef>
#include <numeric>
#include <string>
#include <vector>

namespace {

using namespace Quenzo;
using Bench::MakeChain;
using Bench::MakeDocument;
using Bench::MakeShuffledChain;
using Conf::ITranscodingMetaGraph;
using Core::Property;

void Finish(benchmark::State& state, std::size_t bytes) {
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void LoadDocument(benchmark::State& state) {
    const std::string document = MakeDocument(state.range(0));
    for (auto _ : state) {
        const auto graph = ITranscodingMetaGraph::Create();
        graph->Load(Core::MemoryInput::Create(document));
        benchmark::DoNotOptimize(graph->GetNodesCount());
    }
    Finish(state, document.size());
}

void LoadDocument_RapidJsonAlone(benchmark::State& state) {
    const std::string document = MakeDocument(state.range(0));
    for (auto _ : state) {
        Core::JsonQuenzoStreamIn stream(Core::MemoryInput::Create(document));
        rapidjson::Document parsed;
        parsed.ParseStream(stream);
        benchmark::DoNotOptimize(parsed.HasParseError());
    }
    Finish(state, document.size());
}

// From a string, byte by byte without a call, which a stream does not allow.
void LoadDocument_BoostGraph(benchmark::State& state) {
    const std::string document = MakeDocument(state.range(0));
    for (auto _ : state) {
        const auto graph = Bench::BoostGraph::Load(document);
        benchmark::DoNotOptimize(boost::num_vertices(graph.store));
    }
    Finish(state, document.size());
}

void SaveDocument(benchmark::State& state) {
    const auto graph = MakeChain(state.range(0));
    const std::size_t size = MakeDocument(state.range(0)).size();
    for (auto _ : state) {
        graph->Save(Bench::MakeForgetfulOutput());
    }
    Finish(state, size);
}

void SaveDocument_RapidJsonAlone(benchmark::State& state) {
    const std::string document = MakeDocument(state.range(0));
    rapidjson::Document parsed;
    parsed.Parse(document.c_str());
    for (auto _ : state) {
        Core::JsonQuenzoStreamOut stream(Bench::MakeForgetfulOutput());
        rapidjson::Writer<Core::JsonQuenzoStreamOut> writer(stream);
        parsed.Accept(writer);
    }
    Finish(state, document.size());
}

void CheckTopology(benchmark::State& state, const auto& graph) {
    bool isValid = false;
    for (auto _ : state) {
        isValid = graph.TopologyIsValid();
        benchmark::DoNotOptimize(isValid);
    }
    Bench::Verify(isValid, "the topology of a chain");
    state.SetComplexityN(state.range(0));
}

void TopologyCheck(benchmark::State& state) { CheckTopology(state, *MakeChain(state.range(0))); }

void TopologyCheckShuffled(benchmark::State& state) { CheckTopology(state, *MakeShuffledChain(state.range(0))); }

Bench::BoostGraph BoostChain(const std::vector<long long>& order) {
    Bench::BoostGraph graph;
    for (std::size_t i = 0; i < order.size(); ++i) {
        boost::add_vertex(graph.store);
    }
    for (std::size_t i = 1; i < order.size(); ++i) {
        boost::add_edge(static_cast<std::size_t>(order[i - 1] - 1), static_cast<std::size_t>(order[i] - 1),
                        graph.store);
    }
    return graph;
}

void TopologyCheck_BoostGraph(benchmark::State& state) {
    std::vector<long long> order(static_cast<std::size_t>(state.range(0)));
    std::iota(order.begin(), order.end(), 1LL);
    CheckTopology(state, BoostChain(order));
}

void TopologyCheckShuffled_BoostGraph(benchmark::State& state) {
    CheckTopology(state, BoostChain(Bench::Shuffled(state.range(0))));
}

long long CountNodes(const ITranscodingMetaGraph& graph) {
    long long count = 0;
    graph.VisitNodes([&count](long long /*id*/, const Property& /*tree*/) { ++count; });
    return count;
}

// Each node of a chain that has an odd id, the links at it first.
void RemoveNodes(benchmark::State& state) {
    const std::string document = MakeDocument(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto graph = ITranscodingMetaGraph::Create();
        graph->Load(Core::MemoryInput::Create(document));
        state.ResumeTiming();
        for (long long id = 1; id <= state.range(0); id += 2) {
            if (id > 1) {
                graph->RemoveLink(id - 1, id);
            }
            if (id < state.range(0)) {
                graph->RemoveLink(id, id + 1);
            }
            graph->RemoveNode(id);
        }
        state.PauseTiming();
        Bench::Verify(CountNodes(*graph) == state.range(0) / 2, "what is left");
        graph.reset();
        state.ResumeTiming();
    }
}

void RemoveNodes_BoostGraph(benchmark::State& state) {
    const std::string document = MakeDocument(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto graph = Bench::BoostGraph::Load(document);
        state.ResumeTiming();
        graph.RemoveEverySecondNode();
        state.PauseTiming();
        Bench::Verify(boost::num_vertices(graph.store) == static_cast<std::size_t>(state.range(0) / 2), "what is left");
        graph = {};
        state.ResumeTiming();
    }
}

void PathSearch_Chain(benchmark::State& state) {
    const auto graph = MakeChain(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(Conf::PathExistInGraph(graph, 1, state.range(0)));
    }
    state.SetComplexityN(state.range(0));
}

// The argument is the number of diamonds. A target that no link enters makes the search see them all.
void PathSearch_ChainedDiamonds(benchmark::State& state) {
    const auto graph = ITranscodingMetaGraph::Create();
    long long top = graph->AddNode(Property("node"));
    for (int i = 0; i < state.range(0); ++i) {
        const auto left = graph->AddNode(Property("node"));
        const auto right = graph->AddNode(Property("node"));
        const auto bottom = graph->AddNode(Property("node"));
        for (const auto side : {left, right}) {
            graph->AddLink(top, side, Property("data"));
            graph->AddLink(side, bottom, Property("data"));
        }
        top = bottom;
    }
    const long long apart = graph->AddNode(Property("node"));
    bool exists = true;
    for (auto _ : state) {
        exists = Conf::PathExistInGraph(graph, 1, apart);
        benchmark::DoNotOptimize(exists);
    }
    Bench::Verify(!exists, "there is no way to a node that no link enters");
}

constexpr int kStep = 10;
constexpr int kSmall = 1000;
constexpr int kLarge = 100000;
constexpr int kRemoved = 10000;

BENCHMARK(LoadDocument)
    ->RangeMultiplier(kStep)
    ->Range(kSmall, 10 * kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(LoadDocument_RapidJsonAlone)
    ->RangeMultiplier(kStep)
    ->Range(kSmall, kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(SaveDocument)
    ->RangeMultiplier(kStep)
    ->Range(kSmall, 10 * kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(SaveDocument_RapidJsonAlone)
    ->RangeMultiplier(kStep)
    ->Range(kSmall, kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(LoadDocument_BoostGraph)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMillisecond);
BENCHMARK(RemoveNodes)->Arg(kRemoved)->Unit(benchmark::kMillisecond);
BENCHMARK(RemoveNodes_BoostGraph)->Arg(kRemoved)->Unit(benchmark::kMillisecond);
BENCHMARK(TopologyCheck_BoostGraph)->Arg(10 * kLarge)->Unit(benchmark::kMillisecond);
BENCHMARK(TopologyCheckShuffled)->Arg(10 * kLarge)->Unit(benchmark::kMillisecond);
BENCHMARK(TopologyCheckShuffled_BoostGraph)->Arg(10 * kLarge)->Unit(benchmark::kMillisecond);
BENCHMARK(TopologyCheck)
    ->RangeMultiplier(kStep)
    ->Range(kSmall, 10 * kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(PathSearch_Chain)
    ->RangeMultiplier(kStep)
    ->Range(kSmall, 10 * kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(PathSearch_ChainedDiamonds)->Arg(64);

}  // namespace
