#pragma once

#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/connected_components.hpp>
#include <boost/graph/depth_first_search.hpp>

#include <nlohmann/json.hpp>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Quenzo::Bench {

/// A job's graph as Boost.Graph keeps it, with nlohmann's JSON for the trees.
class BoostGraph {
public:
    struct Node {
        long long id = 0;
        nlohmann::ordered_json data = {};
    };
    struct Link {
        long long id = 0;
        nlohmann::ordered_json data = {};
    };
    using Store = boost::adjacency_list<boost::vecS, boost::vecS, boost::bidirectionalS, Node, Link>;

    /// Takes the nodes and links out of a job document.
    static BoostGraph Load(const std::string& document) {
        auto parsed = nlohmann::ordered_json::parse(document);
        BoostGraph graph;
        std::unordered_map<long long, std::size_t> places;
        for (auto& element : parsed["vertices"]) {
            const auto id = element["id"].get<long long>();
            places.emplace(id, boost::add_vertex(Node{id, std::move(element["data"])}, graph.store));
        }
        for (auto& element : parsed["edges"]) {
            boost::add_edge(places.at(element["from"].get<long long>()), places.at(element["to"].get<long long>()),
                            Link{element["id"].get<long long>(), std::move(element["data"])}, graph.store);
        }
        return graph;
    }

    /// True when there is no cycle and all hangs together, each found by Boost's own search.
    bool TopologyIsValid() const {
        struct FindCycle : boost::default_dfs_visitor {
            bool* hasCycle;
            explicit FindCycle(bool* found) : hasCycle(found) {}
            void back_edge(const Store::edge_descriptor& /*edge*/, const Store& /*graph*/) { *hasCycle = true; }
        };
        bool hasCycle = false;
        std::vector<boost::default_color_type> colors(boost::num_vertices(store));
        boost::depth_first_search(
            store, FindCycle(&hasCycle),
            boost::make_iterator_property_map(colors.begin(), boost::get(boost::vertex_index, store)));
        // Components are defined for undirected graphs only.
        boost::adjacency_list<boost::vecS, boost::vecS, boost::undirectedS> undirected(boost::num_vertices(store));
        for (auto [edge, end] = boost::edges(store); edge != end; ++edge) {
            boost::add_edge(boost::source(*edge, store), boost::target(*edge, store), undirected);
        }
        std::vector<std::size_t> components(boost::num_vertices(undirected));
        return !hasCycle && boost::connected_components(undirected, components.data()) == 1;
    }

    /// Removes every second node, the links at it first.
    void RemoveEverySecondNode() {
        for (std::size_t place = 0; place < boost::num_vertices(store); ++place) {
            boost::clear_vertex(place, store);
            boost::remove_vertex(place, store);
        }
    }

    Store store;
};

}  // namespace Quenzo::Bench
