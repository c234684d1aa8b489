#pragma once

#include <foundation/Property.h>

#include <string>
#include <type_traits>

namespace Quenzo::Bench {

/// The library's own tree. All columns have these functions: Make an empty tree, Set a value or overwrite it, SetNode a
/// nested tree that `fill` fills, Get a value, GetNode the nested tree, Copy, and Equal.
struct PropertyColumn {
    using Tree = Core::Property;

    static Tree Make(const std::string& name) { return Tree(name); }

    template <typename T>
    static void Set(Tree& node, const std::string& key, const T& value) {
        node.SetChildT<T>(key, value);
    }

    template <typename Fill>
    static void SetNode(Tree& node, const std::string& key, Fill fill) {
        fill(node.SetChild(key));
    }

    template <typename T>
    static decltype(auto) Get(const Tree& node, const std::string& key) {
        const Tree& child = node[key];
        if constexpr (std::is_same_v<T, std::string>) {
            return child.GetString();
        } else if constexpr (std::is_same_v<T, long long>) {
            return child.GetInt64();
        } else if constexpr (std::is_same_v<T, bool>) {
            return child.GetBool();
        } else {
            return child.GetRatio();
        }
    }

    static const Tree& GetNode(const Tree& node, const std::string& key) { return node[key]; }

    static Tree Copy(const Tree& tree) { return tree; }

    static bool Equal(const Tree& left, const Tree& right) { return left == right; }
};

}  // namespace Quenzo::Bench
