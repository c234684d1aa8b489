#pragma once

#include <boost/property_tree/ptree.hpp>
#include <boost/rational.hpp>

#include <string>

namespace Quenzo::Bench {

/// Boost.PropertyTree. It keeps every value as text: numbers are written and read with streams.
struct PropertyTreeColumn {
    using Tree = boost::property_tree::ptree;

    static Tree Make(const std::string& /*name*/) { return {}; }

    template <typename T>
    static void Set(Tree& node, const std::string& key, const T& value) {
        node.put(key, value);
    }

    template <typename Fill>
    static void SetNode(Tree& node, const std::string& key, Fill fill) {
        fill(node.put_child(key, Tree()));
    }

    template <typename T>
    static T Get(const Tree& node, const std::string& key) {
        return node.get<T>(key);
    }

    static const Tree& GetNode(const Tree& node, const std::string& key) { return node.get_child(key); }

    static Tree Copy(const Tree& tree) { return tree; }

    static bool Equal(const Tree& left, const Tree& right) { return left == right; }
};

}  // namespace Quenzo::Bench
