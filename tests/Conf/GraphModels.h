#pragma once

// Two models of the transcoding graph to compare it with. NaiveGraph keeps what the graph is described by, positions in
// three kinds of lists, and answers by trying everything. StoreGraph is the adjacency list of the graph library.
// Both do the same edits and show what they hold in the same form.

#include <boost/graph/adjacency_list.hpp>

#include <cstddef>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

namespace Quenzo::Conf::Testing {

enum class EditKind { AddNode, RemoveNode, AddLink, RemoveLink };

/// One edit; `from` is the node of the first two kinds. `mark` tells the tree of what is added from all others.
struct Edit {
    EditKind kind;
    long long from;
    long long to;
    long long mark;
};

std::ostream& operator<<(std::ostream& os, const Edit& edit);

/// What came of an edit or a question: "" or a failure such as "LinkExists 1 2".
using Outcome = std::string;

/// Everything that can be asked of a graph without naming two nodes. A tree shows as its mark.
struct Snapshot {
    /// id, mark, inputs, outputs. The last two are those of the first node of that id.
    std::vector<std::tuple<long long, long long, std::vector<long long>, std::vector<long long>>> nodes;

    /// id, from, to, mark
    std::vector<std::tuple<long long, long long, long long, long long>> links;

    std::vector<long long> inputs;
    std::vector<long long> outputs;
    long long lastNode;

    bool operator==(const Snapshot& other) const = default;
};

std::ostream& operator<<(std::ostream& os, const Snapshot& snapshot);

class NaiveGraph {
public:
    /// Starts with nodes of these ids, each with its id as mark.
    explicit NaiveGraph(const std::vector<long long>& ids);

    Outcome Apply(const Edit& edit);
    Snapshot Show() const;

    /// The mark of the tree, or the failure.
    Outcome GetNode(long long id) const;
    Outcome GetLink(long long from, long long to) const;

    bool TopologyIsValid() const;

    /// The number of links on a shortest way between positions; -1 when there is none.
    std::vector<std::vector<int>> Distances() const;

    std::size_t Count() const { return nodes_.size(); }
    std::size_t Position(long long id) const { return Find(id); }
    long long IdAt(std::size_t position) const { return nodes_[position].id; }

private:
    struct Entry {
        std::size_t position;
        long long link;
    };

    struct Node {
        long long id;
        long long mark;
        std::vector<Entry> out;
        std::vector<Entry> in;
    };

    struct Link {
        long long id;
        std::size_t source;
        std::size_t target;
        long long mark;
    };

    Outcome AddLink(const Edit& edit);
    Outcome RemoveLink(const Edit& edit);
    Outcome RemoveNode(const Edit& edit);
    std::size_t Find(long long id) const;
    const Entry* FindOut(std::size_t source, std::size_t target) const;
    std::vector<long long> IdsOf(const std::vector<Entry>& entries) const;
    bool HasBackEdge(std::size_t position, std::vector<int>& colours) const;
    bool IsOnePiece() const;

    std::vector<Node> nodes_;
    std::vector<Link> links_;
    long long lastNode_ = 0;
    long long lastLink_ = 0;
};

class StoreGraph {
public:
    explicit StoreGraph(const std::vector<long long>& ids);

    Outcome Apply(const Edit& edit);
    Snapshot Show() const;

private:
    struct Meta {
        long long id;
        long long mark;
    };

    using Store = boost::adjacency_list<boost::vecS, boost::vecS, boost::bidirectionalS, Meta, Meta>;
    using Vertex = Store::vertex_descriptor;

    Outcome AddLink(const Edit& edit);
    Outcome RemoveLink(const Edit& edit);
    Outcome RemoveNode(const Edit& edit);
    Vertex Find(long long id) const;

    Store store_;
    long long lastNode_ = 0;
    long long lastLink_ = 0;
};

}  // namespace Quenzo::Conf::Testing
