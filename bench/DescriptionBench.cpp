// A video description of 24 keys built, copied, compared, read by name and overwritten, in the library's tree, in its
// peers and in the least that could hold it. What is made is destroyed inside the time measured.

#include <bench/Description.h>
#include <bench/peers/FloorColumn.h>
#include <bench/peers/JsonColumn.h>
#include <bench/peers/PropertyColumn.h>
#include <bench/peers/PropertyTreeColumn.h>
#ifdef QUENZO_BENCH_GSTREAMER
#include <bench/peers/StructureColumn.h>
#endif

#include <benchmark/benchmark.h>

#include <string>
#include <type_traits>

namespace Quenzo::Bench {

namespace {

template <typename Column>
void BuildTree(benchmark::State& state) {
    VerifyBuilt<Column>(Build<Column>());
    for (auto _ : state) {
        auto tree = Build<Column>();
        benchmark::DoNotOptimize(tree);
    }
}

template <typename Column>
void CopyTree(benchmark::State& state) {
    const auto tree = Build<Column>();
    VerifyBuilt<Column>(Column::Copy(tree));
    for (auto _ : state) {
        auto copy = Column::Copy(tree);
        benchmark::DoNotOptimize(copy);
    }
}

template <typename Column>
void CompareTrees(benchmark::State& state) {
    auto tree = Build<Column>();
    auto other = Build<Column>();
    Overwrite<Column>(other);
    Verify(!Column::Equal(tree, other), "trees that differ");
    other = Build<Column>();
    Verify(Column::Equal(tree, other), "trees that are equal");
    for (auto _ : state) {
        bool equal = Column::Equal(tree, other);
        benchmark::DoNotOptimize(equal);
    }
}

template <typename Column>
void ReadTree(benchmark::State& state) {
    auto tree = Build<Column>();
    VerifyBuilt<Column>(tree);
    for (auto _ : state) {
        VisitLeaves([&tree](const std::string& key, const auto& expected) {
            const auto& value = Column::template Get<std::decay_t<decltype(expected)>>(tree, key);
            benchmark::DoNotOptimize(value);
        });
        const auto& metadata = Column::GetNode(tree, VideoKeys::TAG_STREAM_METADATA);
        benchmark::DoNotOptimize(&metadata);
    }
}

template <typename Column>
void OverwriteTree(benchmark::State& state) {
    auto tree = Build<Column>();
    Overwrite<Column>(tree);
    VisitChanges([&tree](const std::string& key, const auto& value) {
        Verify(Same(Column::template Get<std::decay_t<decltype(value)>>(tree, key), value), key.c_str());
    });
    for (auto _ : state) {
        Overwrite<Column>(tree);
        benchmark::ClobberMemory();
    }
}

// The registering macro of the benchmark library wants names that are literals.
#define QUENZO_BENCH_COLUMN(Column, name)                              \
    BENCHMARK(BuildTree<Column>)->Name("DescriptionBuild/" name);      \
    BENCHMARK(CopyTree<Column>)->Name("DescriptionCopy/" name);        \
    BENCHMARK(CompareTrees<Column>)->Name("DescriptionCompare/" name); \
    BENCHMARK(ReadTree<Column>)->Name("DescriptionRead/" name);        \
    BENCHMARK(OverwriteTree<Column>)->Name("DescriptionOverwrite/" name)

QUENZO_BENCH_COLUMN(PropertyColumn, "Quenzo");
QUENZO_BENCH_COLUMN(JsonColumn<nlohmann::ordered_json>, "ordered_json");
QUENZO_BENCH_COLUMN(JsonColumn<nlohmann::json>, "json");
QUENZO_BENCH_COLUMN(PropertyTreeColumn, "PropertyTree");
#ifdef QUENZO_BENCH_GSTREAMER
QUENZO_BENCH_COLUMN(StructureColumn, "GStreamer");
#endif
QUENZO_BENCH_COLUMN(FloorColumn, "Floor");
BENCHMARK(BuildTree<BlindFloorColumn>)->Name("DescriptionBuild/BlindFloor");

}  // namespace

}  // namespace Quenzo::Bench

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
#ifdef QUENZO_BENCH_GSTREAMER
    gst_init(nullptr, nullptr);
#endif
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
