#include <tests/Conf/JsonReader.h>

// The whole reader is compiled here, since no package has it as a library of its own.
#include <boost/json/src.hpp>

#include <algorithm>
#include <string_view>

namespace Quenzo::Conf::Testing {

namespace {

namespace json = boost::json;

bool HasText(const json::value& value, const std::string& text) {
    return value.is_string() && std::string_view(value.get_string()) == text;
}

bool ShowsRatio(const json::value& value, const Core::Property& tree) {
    const json::array* parts = value.if_array();
    return parts != nullptr && parts->size() == 2 && parts->at(0) == json::value(tree.GetRatio().numerator()) &&
           parts->at(1) == json::value(tree.GetRatio().denominator());
}

bool ShowsChild(const json::key_value_pair& member, const Core::Property& child) {
    return std::string_view(member.key()) == child.GetName() && ShowsTree(member.value(), child);
}

bool ShowsChildren(const json::value& value, const Core::Property& tree) {
    if (const json::object* object = value.if_object()) {
        return object->size() == tree.Count() && std::equal(object->begin(), object->end(), tree.begin(), &ShowsChild);
    }
    const json::array* list = value.if_array();
    return list != nullptr && list->size() == tree.Count() &&
           std::equal(list->begin(), list->end(), tree.begin(),
                      [](const json::value& element, const Core::Property& child) {
                          const json::object* object = element.if_object();
                          return object != nullptr && object->size() == 1 && ShowsChild(*object->begin(), child);
                      });
}

}  // namespace

json::value ReadJson(const std::string& text) {
    json::parse_options options;
    options.max_depth = 2000;
    options.allow_invalid_utf8 = true;
    return json::parse(text, {}, options);
}

bool ShowsTree(const json::value& value, const Core::Property& tree) {
    switch (tree.GetType()) {
        case PropertyTypes::None: return value.is_null();
        case PropertyTypes::Bool: return value.is_bool() && value.get_bool() == tree.GetBool();
        case PropertyTypes::Int64: return value == json::value(tree.GetInt64());
        case PropertyTypes::Ratio: return ShowsRatio(value, tree);
        case PropertyTypes::String: return HasText(value, tree.GetString());
        case PropertyTypes::Node: return ShowsChildren(value, tree);
    }
    return false;
}

}  // namespace Quenzo::Conf::Testing
