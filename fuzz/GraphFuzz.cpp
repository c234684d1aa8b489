// Edits from bytes, three for each, of a graph whose first nodes have ids in any order; compared with a model after
// every step.

#include <fuzz/Require.h>

#include <tests/Conf/GraphModels.h>
#include <tests/Conf/ModelledGraph.h>

#include <cstddef>
#include <cstdint>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Quenzo;
    using namespace Quenzo::Conf::Testing;
    // The models look at everything after each step.
    constexpr long long mostEdits = 60;
    constexpr std::size_t mostLoaded = 8;
    const auto id = [](std::uint8_t byte) { return byte % 16 - 1LL; };
    const auto* end = data + size;
    std::vector<long long> loaded;
    for (std::size_t count = data != end ? *data++ % mostLoaded : 0; count > 0 && data != end; --count) {
        loaded.push_back(id(*data++));
    }
    const auto graph = GraphWithIds(loaded);
    NaiveGraph naive(loaded);
    for (long long step = 0; end - data >= 3 && step < mostEdits; ++step, data += 3) {
        const Edit edit{EditKind{data[0] % 4}, id(data[1]), id(data[2]), 1000 + step};
        Fuzz::Require(Apply(graph, edit) == naive.Apply(edit), "an edit has the same outcome");
        Fuzz::Require(Show(graph) == naive.Show(), "the graph shows the same");
        Fuzz::Require(GetNode(graph, edit.from) == naive.GetNode(edit.from), "a node has the same tree");
        Fuzz::Require(GetLink(graph, edit.from, edit.to) == naive.GetLink(edit.from, edit.to),
                      "a link has the same tree");
        Fuzz::Require(graph->TopologyIsValid() == naive.TopologyIsValid(), "the same topology is valid");
        Fuzz::Require(graph->ExamineTopology().empty() == naive.TopologyIsValid(), "what is wrong is found");
    }
    Fuzz::Require(CompareWays(graph, naive).empty(), "the shortest ways are found");
    return 0;
}
