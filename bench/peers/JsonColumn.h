#pragma once

#include <boost/rational.hpp>

#include <nlohmann/json.hpp>

#include <string>
#include <type_traits>
#include <utility>

namespace Quenzo::Bench {

/// nlohmann::json (sorted members) or nlohmann::ordered_json. A rational is an array of two integers.
template <typename Json>
struct JsonColumn {
    using Tree = Json;

    static Tree Make(const std::string& /*name*/) { return Json::object(); }

    template <typename T>
    static void Set(Tree& node, const std::string& key, const T& value) {
        if constexpr (std::is_same_v<T, boost::rational<long long>>) {
            node[key] = Json::array({value.numerator(), value.denominator()});
        } else {
            node[key] = value;
        }
    }

    template <typename Fill>
    static void SetNode(Tree& node, const std::string& key, Fill fill) {
        Tree& child = node[key];
        child = Json::object();
        fill(child);
    }

    template <typename T>
    static decltype(auto) Get(const Tree& node, const std::string& key) {
        const Tree& child = node.at(key);
        if constexpr (std::is_same_v<T, std::string>) {
            return child.template get_ref<const std::string&>();
        } else if constexpr (std::is_same_v<T, boost::rational<long long>>) {
            return std::pair(child.at(0).template get<long long>(), child.at(1).template get<long long>());
        } else {
            return child.template get<T>();
        }
    }

    static const Tree& GetNode(const Tree& node, const std::string& key) { return node.at(key); }

    static Tree Copy(const Tree& tree) { return tree; }

    static bool Equal(const Tree& left, const Tree& right) { return left == right; }
};

}  // namespace Quenzo::Bench
