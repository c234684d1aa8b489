// How many blocks of memory the copy and the building of a video description ask the global operator new for, and how
// many bytes a loaded job takes. A program of its own, because counting would be part of the times of the others; its
// own times mean nothing. GStreamer is not here: it does not ask operator new.

#include <bench/CountingNew.h>
#include <bench/Description.h>
#include <bench/JobDocument.h>
#include <bench/peers/FloorColumn.h>
#include <bench/peers/JsonColumn.h>
#include <bench/peers/PropertyColumn.h>
#include <bench/peers/PropertyTreeColumn.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <variant>

namespace Quenzo::Bench {

namespace {

void Report(benchmark::State& state, std::size_t before) {
    state.counters["allocations"] =
        static_cast<double>(AllocationCount() - before) / static_cast<double>(state.iterations());
}

void VerifyCounting() {
    const std::size_t before = AllocationCount();
    std::string text(100, ' ');
    benchmark::DoNotOptimize(text);
    Verify(AllocationCount() == before + 1, "a long string takes one block");
}

template <typename Column>
void CountCopy(benchmark::State& state) {
    VerifyCounting();
    const auto tree = Build<Column>();
    VerifyBuilt<Column>(Column::Copy(tree));
    const std::size_t before = AllocationCount();
    for (auto _ : state) {
        auto copy = Column::Copy(tree);
        benchmark::DoNotOptimize(copy);
    }
    Report(state, before);
}

template <typename Column>
void CountBuild(benchmark::State& state) {
    VerifyCounting();
    VerifyBuilt<Column>(Build<Column>());
    const std::size_t before = AllocationCount();
    for (auto _ : state) {
        auto tree = Build<Column>();
        benchmark::DoNotOptimize(tree);
    }
    Report(state, before);
}

// What names and values take when nothing holds them together: a string object and a variant each, and the characters
// of texts too long for the string object.
std::size_t BytesNeeded(const Core::Property& tree) {
    using Value = std::variant<std::monostate, bool, long long, boost::rational<long long>, std::string>;
    const std::string none;
    const auto characters = [&none](const std::string& text) {
        return text.capacity() > none.capacity() ? text.size() + 1 : 0;
    };
    std::size_t bytes = sizeof(std::string) + sizeof(Value) + characters(tree.GetName());
    bytes += tree.GetType() == PropertyTypes::String ? characters(tree.GetString()) : 0;
    for (const Core::Property& child : tree) {
        bytes += BytesNeeded(child);
    }
    return bytes;
}

constexpr long long kNodes = 10000;

// Per node, with the link that leads to it.
void DocumentMemory(benchmark::State& state) {
    const std::string document = MakeDocument(kNodes);
    std::size_t taken = 0;
    for (auto _ : state) {
        auto input = Core::MemoryInput::Create(document);
        const auto graph = Conf::ITranscodingMetaGraph::Create();
        const std::size_t before = AllocatedBytes();
        graph->Load(input);
        taken = AllocatedBytes() - before;
    }
    state.counters["bytes"] = static_cast<double>(taken) / kNodes;
}

// The trees of both, and five numbers: the ids of the node and of the link, of its ends, and the place of the node.
void DocumentMemory_Needed(benchmark::State& state) {
    std::size_t needed = 0;
    for (auto _ : state) {
        needed = BytesNeeded(NodeTree(1)) + BytesNeeded(LinkTree(1)) + 5 * sizeof(long long);
        benchmark::DoNotOptimize(needed);
    }
    state.counters["bytes"] = static_cast<double>(needed);
}

BENCHMARK(DocumentMemory)->Name("DocumentMemory/Quenzo");
BENCHMARK(DocumentMemory_Needed)->Name("DocumentMemory/Needed");

// The registering macro of the benchmark library wants names that are literals.
#define QUENZO_BENCH_COLUMN(Column, name)                                   \
    BENCHMARK(CountCopy<Column>)->Name("DescriptionCopyAllocations/" name); \
    BENCHMARK(CountBuild<Column>)->Name("DescriptionBuildAllocations/" name)

QUENZO_BENCH_COLUMN(PropertyColumn, "Quenzo");
QUENZO_BENCH_COLUMN(JsonColumn<nlohmann::ordered_json>, "ordered_json");
QUENZO_BENCH_COLUMN(JsonColumn<nlohmann::json>, "json");
QUENZO_BENCH_COLUMN(PropertyTreeColumn, "PropertyTree");
QUENZO_BENCH_COLUMN(FloorColumn, "Floor");

}  // namespace

}  // namespace Quenzo::Bench

BENCHMARK_MAIN();
