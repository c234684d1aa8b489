// Covers foundation/PropertySerializer.h: the JSON of every type, and that what is loaded equals what was saved, for
// texts (Write, Read) and for JSON values (Save, CoreLoad).

#include <foundation/PropertySerializer.h>
#include <tests/foundation/JsonTexts.h>
#include <tests/foundation/TreeGenerator.h>

#include <boost/rational.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <rapidjson/document.h>

#include <limits>
#include <string>

namespace Quenzo::Core {
namespace {

using Testing::Loaded;
using Testing::Nothing;
using Testing::ReadInto;
using Testing::Written;
using Ratio = boost::rational<long long>;

constexpr long long kLowest = std::numeric_limits<long long>::min();
constexpr long long kLargest = std::numeric_limits<long long>::max();

rapidjson::SizeType Length(const std::string& text) { return static_cast<rapidjson::SizeType>(text.size()); }

// Both directions.
void ExpectJson(const Property& tree, const std::string& json) {
    EXPECT_EQ(Written(tree), json);
    EXPECT_EQ(Loaded(tree.GetName(), json), tree);
}

TEST(PropertySerializerTest, Json_OfNone) { ExpectJson(Nothing("a"), "null"); }

TEST(PropertySerializerTest, Json_OfBooleans) {
    ExpectJson(Property("a", true), "true");
    ExpectJson(Property("a", false), "false");
}

TEST(PropertySerializerTest, Json_OfIntegers) {
    ExpectJson(Property("a", 0), "0");
    ExpectJson(Property("a", -1), "-1");
    ExpectJson(Property("a", 2147483648LL), "2147483648");
    ExpectJson(Property("a", 4294967296LL), "4294967296");
    ExpectJson(Property("a", kLargest), "9223372036854775807");
    ExpectJson(Property("a", kLowest), "-9223372036854775808");
}

TEST(PropertySerializerTest, Json_OfRationals) {
    ExpectJson(Property("a", Ratio(30000, 1001)), "[30000,1001]");
    ExpectJson(Property("a", Ratio(25)), "[25,1]");
    ExpectJson(Property("a", Ratio(0)), "[0,1]");
    ExpectJson(Property("a", Ratio(-1, 2)), "[-1,2]");
    ExpectJson(Property("a", Ratio(kLargest, kLargest - 1)), "[9223372036854775807,9223372036854775806]");
    ExpectJson(Property("a", Ratio(kLowest, 3)), "[-9223372036854775808,3]");
    ExpectJson(Property("a", Ratio(kLowest, kLargest)), "[-9223372036854775808,9223372036854775807]");
}

TEST(PropertySerializerTest, Json_OfStrings) {
    ExpectJson(Property("a", ""), R"("")");
    ExpectJson(Property("a", "text"), R"("text")");
    ExpectJson(Property("a", "/"), R"("/")");
    ExpectJson(Property("a", "\"\\\b\f\n\r\t"), R"("\"\\\b\f\n\r\t")");
    ExpectJson(Property("a", "\x01\x1F\x7F"), "\"\\u0001\\u001F\x7F\"");
    ExpectJson(Property("a", "[30000,1001]"), R"("[30000,1001]")");
    ExpectJson(Property("a", "null"), R"("null")");
}

TEST(PropertySerializerTest, Json_KeepsZeroBytesAndBytesThatAreNoUtf8) {
    ExpectJson(Property("a", std::string("\0", 1)), R"("\u0000")");
    ExpectJson(Property("a", std::string("a\0b\0", 4)), R"("a\u0000b\u0000")");
    ExpectJson(Property("a", "\xC3\xA4\xF0\x9F\x8E\xAC"), "\"\xC3\xA4\xF0\x9F\x8E\xAC\"");
    ExpectJson(Property("a", "\xFF\xFE\x80"), "\"\xFF\xFE\x80\"");
    ExpectJson(Property("a", "\xC3"), "\"\xC3\"");
    ExpectJson(Property("a", "\xED\xA0\x80"), "\"\xED\xA0\x80\"");
    Property named("a");
    named.CreateChildT<long long>(std::string("\xFF\0\xC3", 3), 1);
    ExpectJson(named, "{\"\xFF\\u0000\xC3\":1}");
}

TEST(PropertySerializerTest, Json_OfNodes) {
    ExpectJson(Property("a"), "{}");
    Property node("a");
    node.CreateChildT<std::string>("text", "value");
    node.CreateChildT<long long>("size", 5);
    node.CreateChildT<bool>("flag", true);
    node.CreateChildT<Ratio>("rate", Ratio(25, 2));
    node.SetChild("nothing", Property());
    node.SetChild("empty");
    node.SetChild("node").CreateChildT<long long>("", 1);
    ExpectJson(node, R"({"text":"value","size":5,"flag":true,"rate":[25,2],"nothing":null,"empty":{},"node":{"":1}})");
}

TEST(PropertySerializerTest, Json_OfNodesWithRepeatedNames) {
    Property node("a");
    node.CreateChildT<long long>("twin", 1);
    node.CreateChildT<std::string>("other", "2");
    Property& twin = node.Add(Property("twin"));
    twin.CreateChildT<bool>("", true);
    twin.CreateChildT<bool>("", false);
    node.Add(Nothing("twin"));
    node.CreateChildT<Ratio>("twin", Ratio(1, 2));
    ExpectJson(node, R"([{"twin":1},{"other":"2"},{"twin":[{"":true},{"":false}]},{"twin":null},{"twin":[1,2]}])");
}

Property Numbered(int count) {
    Property node("a");
    for (int i = 0; i < count; ++i) {
        node.CreateChildT<long long>(std::to_string(i), i);
    }
    return node;
}

TEST(PropertySerializerTest, Json_SeesRepeatedNamesAmongFewAndMany) {
    for (int count = 1; count < 60; ++count) {
        Property node = Numbered(count);
        EXPECT_EQ(Written(node).front(), '{') << count;
        node.CreateChildT<bool>(std::to_string(count / 2), true);
        EXPECT_EQ(Written(node).front(), '[') << count;
        EXPECT_EQ(Loaded("a", Written(node)), node) << count;
    }
}

TEST(PropertySerializerTest, Json_OfTwentyThousandChildren) {
    Property distinct("a");
    Property same("a");
    for (int i = 0; i < 20000; ++i) {
        distinct.Add(Property(std::to_string(i), i));
        same.Add(Property("twin", i));
    }
    EXPECT_TRUE(Loaded("a", Written(distinct)) == distinct);
    EXPECT_TRUE(Loaded("a", Written(same)) == same);
}

TEST(PropertySerializerTest, Read_TakesWhatOthersWrite) {
    EXPECT_EQ(Loaded("a", " \t\r\n 5 \n"), Property("a", 5));
    EXPECT_EQ(Loaded("a", "-0"), Property("a", 0));
    EXPECT_EQ(Loaded("a", "[ 6 , -4 ]"), Property("a", Ratio(-3, 2)));
    EXPECT_EQ(Loaded("a", R"("\u00e4\/\ud83c\udfac")"), Property("a", "\xC3\xA4/\xF0\x9F\x8E\xAC"));
    Property twins("a");
    twins.CreateChildT<long long>("twin", 1);
    twins.CreateChildT<long long>("twin", 2);
    EXPECT_EQ(Loaded("a", R"({"twin":1,"twin":2})"), twins);
    EXPECT_EQ(Loaded("a", R"([{"twin":1},{"twin":2}])"), twins);
    Property single("a");
    single.CreateChildT<long long>("b", 1);
    EXPECT_EQ(Loaded("a", R"([{"b":1}])"), single);
}

TEST(PropertySerializerTest, Read_RationalsThatFitAfterReduction) {
    EXPECT_EQ(Loaded("a", "[-9223372036854775808,-9223372036854775808]"), Property("a", Ratio(1)));
    EXPECT_EQ(Loaded("a", "[0,-9223372036854775808]"), Property("a", Ratio(0)));
    EXPECT_EQ(Loaded("a", "[2,-9223372036854775808]"), Property("a", Ratio(-1, 4611686018427387904LL)));
    EXPECT_EQ(Loaded("a", "[-2,-9223372036854775808]"), Property("a", Ratio(1, 4611686018427387904LL)));
    EXPECT_EQ(Loaded("a", "[-9223372036854775808,3]"), Property("a", Ratio(kLowest, 3)));
    EXPECT_EQ(Loaded("a", "[-9223372036854775808,1]"), Property("a", Ratio(kLowest)));
    EXPECT_EQ(Loaded("a", "[-9223372036854775808,-2]"), Property("a", Ratio(4611686018427387904LL)));
    EXPECT_EQ(Loaded("a", "[-9223372036854775807,-1]"), Property("a", Ratio(kLargest)));
    EXPECT_EQ(Loaded("a", "[1,-9223372036854775807]"), Property("a", Ratio(-1, kLargest)));
    EXPECT_EQ(Loaded("a", "[-30000,-1001]"), Property("a", Ratio(30000, 1001)));
}

TEST(PropertySerializerTest, Read_ReplacesWhatWasThereAndKeepsTheName) {
    Property tree = Numbered(3);
    ReadInto(tree, R"({"new":true})");
    Property expected("a");
    expected.CreateChildT<bool>("new", true);
    EXPECT_EQ(tree, expected);
    ReadInto(tree, "5");
    EXPECT_EQ(tree, Property("a", 5));
}

TEST(PropertySerializerTest, Read_OfNullLeavesThePropertyAsItIs) {
    Property tree = Numbered(3);
    ReadInto(tree, "null");
    EXPECT_EQ(tree, Numbered(3));
    Property leaf("a", "text");
    ReadInto(leaf, " null ");
    EXPECT_EQ(leaf, Property("a", "text"));
}

TEST(PropertySerializerTest, Read_OfNullInsideMakesAChildOfTypeNone) {
    const Property tree = Loaded("a", R"({"b":null})");
    EXPECT_EQ(tree["b"].GetType(), PropertyTypes::None);
    EXPECT_EQ(tree["b"].GetName(), "b");
}

TEST(PropertySerializerTest, Save_FillsTheValueHandedOver) {
    rapidjson::Document document;
    rapidjson::Value out(rapidjson::kObjectType);
    Property node("a");
    node.CreateChildT<long long>("size", 5);
    node.CreateChildT<Ratio>("rate", Ratio(25, 2));
    PropertySerializer::Save(node, out, document.GetAllocator());
    ASSERT_TRUE(out.IsObject());
    ASSERT_EQ(out.MemberCount(), 2U);
    EXPECT_EQ(out["size"].GetInt64(), 5);
    EXPECT_EQ(out["rate"][0].GetInt64(), 25);
    EXPECT_EQ(out["rate"][1].GetInt64(), 2);
    PropertySerializer::Save(Property("a", "text"), out, document.GetAllocator());
    ASSERT_TRUE(out.IsString());
    EXPECT_STREQ(out.GetString(), "text");
    PropertySerializer::Save(Property("a", true), out, document.GetAllocator());
    EXPECT_TRUE(out.IsTrue());
    PropertySerializer::Save(Property(), out, document.GetAllocator());
    EXPECT_TRUE(out.IsNull());
}

TEST(PropertySerializerTest, Save_KeepsNothingOfTheTree) {
    rapidjson::Document document;
    rapidjson::Value out(rapidjson::kObjectType);
    {
        Property node("a");
        node.CreateChildT<std::string>("a name longer than what an object holds itself", std::string(100, 'x'));
        PropertySerializer::Save(node, out, document.GetAllocator());
    }
    EXPECT_EQ(out["a name longer than what an object holds itself"].GetString(), std::string(100, 'x'));
}

TEST(PropertySerializerTest, CoreLoad_LeavesTheJsonValueAlone) {
    rapidjson::Document document;
    document.Parse(R"({"a":[1,2],"b":["x"]})");
    Property tree("tree");
    PropertySerializer::CoreLoad(tree, document["a"]);
    EXPECT_EQ(tree, Property("tree", Ratio(1, 2)));
    EXPECT_EQ(document["a"].Size(), 2U);
}

TEST(PropertySerializerTest, CoreLoad_OfNullLeavesThePropertyAsItIs) {
    rapidjson::Value null;
    Property tree = Numbered(2);
    PropertySerializer::CoreLoad(tree, null);
    EXPECT_EQ(tree, Numbered(2));
}

// Saves a tree and loads it again.
Property SavedAndLoaded(const Property& tree) {
    rapidjson::Document document;
    rapidjson::Value value(rapidjson::kObjectType);
    PropertySerializer::Save(tree, value, document.GetAllocator());
    Property loaded = Nothing(tree.GetName());
    PropertySerializer::CoreLoad(loaded, value);
    return loaded;
}

RC_GTEST_PROP(PropertySerializerTest, SaveAndCoreLoad_GiveTheTreeBack, (const Property& tree)) {
    RC_ASSERT(SavedAndLoaded(tree) == tree);
}

RC_GTEST_PROP(PropertySerializerTest, WriteAndRead_GiveTheTreeBack, (const Property& tree)) {
    RC_ASSERT(Loaded(tree.GetName(), Written(tree)) == tree);
}

RC_GTEST_PROP(PropertySerializerTest, WriteAndReadAndWrite_GiveTheSameText, (const Property& tree)) {
    const std::string text = Written(tree);
    RC_ASSERT(Written(Loaded("another name", text)) == text);
}

RC_GTEST_PROP(PropertySerializerTest, AWrapperNamedAfterTheTree_GivesTheTreeBack, (const Property& tree)) {
    rapidjson::Document document;
    rapidjson::Value value(rapidjson::kObjectType);
    PropertySerializer::Save(tree, value, document.GetAllocator());
    rapidjson::Value wrapper(rapidjson::kObjectType);
    rapidjson::Value name(tree.GetName().data(), Length(tree.GetName()), document.GetAllocator());
    wrapper.AddMember(name, value, document.GetAllocator());
    Property loaded;
    PropertySerializer::CoreLoad(loaded, wrapper);
    RC_ASSERT(loaded.Count() == 1U);
    RC_ASSERT(loaded[0] == tree);
}

}  // namespace
}  // namespace Quenzo::Core
