#pragma once

#include <boost/rational.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace Quenzo::Bench {

/// What the work costs at least: names and values side by side, found by looking at one after the other, with room for
/// a description from the start. No errors are told, and no reference stays valid.
struct FloorColumn {
    struct Entry;
    using Tree = std::vector<Entry>;

    struct Entry {
        std::string name;
        std::variant<bool, long long, boost::rational<long long>, std::string, Tree> value;

        bool operator==(const Entry& other) const = default;
    };

    static Tree Make(const std::string& /*name*/) {
        Tree tree;
        tree.reserve(24);
        return tree;
    }

    template <typename T>
    static void Set(Tree& node, const std::string& key, const T& value) {
        const auto entry = Find(node, key);
        if (entry != node.end()) {
            entry->value = value;
        } else {
            node.push_back({key, value});
        }
    }

    template <typename Fill>
    static void SetNode(Tree& node, const std::string& key, Fill fill) {
        Tree child;
        child.reserve(6);
        fill(child);
        const auto entry = Find(node, key);
        if (entry != node.end()) {
            entry->value = std::move(child);
        } else {
            node.push_back({key, std::move(child)});
        }
    }

    template <typename T>
    static const T& Get(const Tree& node, const std::string& key) {
        return std::get<T>(Find(node, key)->value);
    }

    static const Tree& GetNode(const Tree& node, const std::string& key) { return Get<Tree>(node, key); }

    static Tree Copy(const Tree& tree) { return tree; }

    static bool Equal(const Tree& left, const Tree& right) { return left == right; }

private:
    static Tree::iterator Find(Tree& node, const std::string& key) {
        return std::find_if(node.begin(), node.end(), [&key](const Entry& entry) { return entry.name == key; });
    }

    static Tree::const_iterator Find(const Tree& node, const std::string& key) {
        return std::find_if(node.begin(), node.end(), [&key](const Entry& entry) { return entry.name == key; });
    }
};

/// The same without a look at what is there: a name that is set twice would stand there twice.
struct BlindFloorColumn : FloorColumn {
    template <typename T>
    static void Set(Tree& node, const std::string& key, const T& value) {
        node.push_back({key, value});
    }

    template <typename Fill>
    static void SetNode(Tree& node, const std::string& key, Fill fill) {
        Tree child;
        child.reserve(6);
        fill(child);
        node.push_back({key, std::move(child)});
    }
};

}  // namespace Quenzo::Bench
