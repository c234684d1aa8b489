// Covers that a JSON reader of another make finds in the texts of foundation/PropertySerializer.h what was written:
// every child, in order, with its name and value. That reader keeps one member of each name, as most do.

#include <foundation/PropertySerializer.h>
#include <tests/foundation/JsonTexts.h>
#include <tests/foundation/TreeGenerator.h>

#include <boost/json/src.hpp>
#include <boost/rational.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <string_view>

namespace Quenzo::Core {
namespace {

namespace json = boost::json;

json::value Parsed(const std::string& text) {
    json::parse_options options;
    options.max_depth = 1000;
    options.allow_invalid_utf8 = true;
    return json::parse(text, {}, options);
}

bool IsWritten(const Property& property, const json::value& value);

bool AreMembers(const Property& node, const json::object& object) {
    auto child = node.begin();
    for (const json::key_value_pair& member : object) {
        if (child == node.end() || std::string_view(member.key()) != child->GetName() ||
            !IsWritten(*child, member.value())) {
            return false;
        }
        ++child;
    }
    return child == node.end();
}

bool AreElements(const Property& node, const json::array& array) {
    auto child = node.begin();
    for (const json::value& element : array) {
        if (child == node.end() || !element.is_object() || element.as_object().size() != 1) {
            return false;
        }
        const json::key_value_pair& member = *element.as_object().begin();
        if (std::string_view(member.key()) != child->GetName() || !IsWritten(*child, member.value())) {
            return false;
        }
        ++child;
    }
    return child == node.end();
}

bool IsRatio(const boost::rational<long long>& ratio, const json::value& value) {
    return value.is_array() && value.as_array().size() == 2 && value.at(0) == ratio.numerator() &&
           value.at(1) == ratio.denominator();
}

bool IsWritten(const Property& property, const json::value& value) {
    switch (property.GetType()) {
        case PropertyTypes::None: return value.is_null();
        case PropertyTypes::Bool: return value.is_bool() && value.as_bool() == property.GetBool();
        case PropertyTypes::Int64: return value.is_int64() && value.as_int64() == property.GetInt64();
        case PropertyTypes::Ratio: return IsRatio(property.GetRatio(), value);
        case PropertyTypes::String:
            return value.is_string() && std::string_view(value.as_string()) == property.GetString();
        case PropertyTypes::Node: break;
    }
    return value.is_array() ? AreElements(property, value.as_array())
                            : value.is_object() && AreMembers(property, value.as_object());
}

TEST(PropertySerializerReaderTest, Comparison_SeesALostChild) {
    Property twins("node");
    twins.CreateChildT<long long>("twin", 1);
    twins.CreateChildT<long long>("twin", 2);
    EXPECT_TRUE(IsWritten(twins, Parsed(R"([{"twin":1},{"twin":2}])")));
    EXPECT_FALSE(IsWritten(twins, Parsed(R"({"twin":1,"twin":2})")));
    EXPECT_FALSE(IsWritten(twins, Parsed(R"([{"twin":1}])")));
    EXPECT_FALSE(IsWritten(twins, Parsed(R"([{"twin":2},{"twin":1}])")));
}

TEST(PropertySerializerReaderTest, Write_OfTheDeepestTreeIsRead) {
    Property tree("root");
    Property* innermost = &tree;
    for (int i = 1; i < PropertySerializer::MAX_DEPTH; ++i) {
        innermost = &innermost->SetChild("level");
    }
    innermost->CreateChildT<long long>("leaf", 1);
    EXPECT_TRUE(IsWritten(tree, Parsed(Testing::Written(tree))));
}

RC_GTEST_PROP(PropertySerializerReaderTest, Write_OfAnyTreeIsReadWithoutLosingAChild, (const Property& tree)) {
    RC_ASSERT(IsWritten(tree, Parsed(Testing::Written(tree))));
}

}  // namespace
}  // namespace Quenzo::Core
