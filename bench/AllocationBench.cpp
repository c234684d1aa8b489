// How many blocks of memory the copy and the building of a video description ask the global operator new for. A program
// of its own, because counting would be part of the times of the others; its own times mean nothing. GStreamer is not
// here: it does not ask operator new.

#include <bench/CountingNew.h>
#include <bench/Description.h>
#include <bench/peers/FloorColumn.h>
#include <bench/peers/JsonColumn.h>
#include <bench/peers/PropertyColumn.h>
#include <bench/peers/PropertyTreeColumn.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>

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
