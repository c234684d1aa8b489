#pragma once

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <foundation/DataStream.h>
#include <foundation/Property.h>

#include <boost/rational.hpp>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace Quenzo::Bench {

/// What a source's node may hold: six children of the usual kinds.
inline Core::Property NodeTree(long long number) {
    Core::Property tree("streamRaw");
    tree.SetChildT<long long>("id", number);
    tree.SetChildT<std::string>("codec_id", "CODEC_ID_H264");
    tree.SetChildT<long long>("width", 1920);
    tree.SetChildT<long long>("height", 1080);
    tree.SetChildT<boost::rational<long long>>("frameRateRatio", {30000, 1001});
    tree.SetChildT<bool>("lossless", false);
    return tree;
}

/// What a link may hold: two children.
inline Core::Property LinkTree(long long number) {
    Core::Property tree("link");
    tree.SetChildT<long long>("order", number);
    tree.SetChildT<std::string>("quality", "best");
    return tree;
}

/// A chain, with a link from each node to the next.
inline SP<Conf::ITranscodingMetaGraph> MakeChain(long long count) {
    const auto graph = Conf::ITranscodingMetaGraph::Create();
    for (long long i = 1; i <= count; ++i) {
        graph->AddNode(NodeTree(i));
        if (i > 1) {
            graph->AddLink(i - 1, i, LinkTree(i));
        }
    }
    return graph;
}

/// The numbers from 1 on in an order without order, the same each time.
inline std::vector<long long> Shuffled(long long count) {
    std::vector<long long> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 1LL);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937_64());
    return numbers;
}

/// A chain that leads through its nodes in an order that has nothing to do with the one in which they were made.
inline SP<Conf::ITranscodingMetaGraph> MakeShuffledChain(long long count) {
    const auto graph = Conf::ITranscodingMetaGraph::Create();
    const std::vector<long long> order = Shuffled(count);
    for (long long i = 1; i <= count; ++i) {
        graph->AddNode(NodeTree(i));
    }
    for (std::size_t i = 1; i < order.size(); ++i) {
        graph->AddLink(order[i - 1], order[i], LinkTree(order[i]));
    }
    return graph;
}

/// The job document of such a chain.
inline std::string MakeDocument(long long count) {
    const auto bytes = Core::MemoryOutput::Create();
    MakeChain(count)->Save(bytes);
    return bytes->GetBytes();
}

}  // namespace Quenzo::Bench
