// Covers the typed child setters of foundation/Property.h, SetChildT and CreateChildT, for their four value types: what
// they return and change, and every part of the failure that they raise on a leaf.

#include <foundation/Property.h>
#include <tests/foundation/Failures.h>
#include <tests/foundation/TreeGenerator.h>

#include <boost/rational.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

namespace Quenzo::Core {
namespace {

using Testing::ExpectPropertyFailure;
using Testing::FunctionOf;
using Testing::Raised;
using Ratio = boost::rational<long long>;

// Three children around one named "key" of a given value.
template <typename T>
Property Around(const T& value) {
    Property tree("tree");
    tree.Add(Property("before", "1"));
    tree.Add(Property("key", value));
    tree.Add(Property("after", 3));
    return tree;
}

template <typename T>
void ExpectSetChildTToAppend(const T& value) {
    Property tree("tree");
    tree.Add(Property("before", "1"));
    Property& child = tree.SetChildT<T>("key", value);
    EXPECT_EQ(tree.Count(), 2U);
    EXPECT_EQ(&child, &tree[1]);
    EXPECT_EQ(child, Property("key", value));
}

TEST(PropertySetterTest, SetChildT_OfANewNameAppends) {
    ExpectSetChildTToAppend<long long>(-5);
    ExpectSetChildTToAppend<std::string>("text");
    ExpectSetChildTToAppend<bool>(true);
    ExpectSetChildTToAppend<Ratio>(Ratio(30000, 1001));
}

// Every value in the place of every other.
template <typename T>
void ExpectSetChildTToReplaceInPlace(const T& value) {
    Property node = Around(true);
    node["key"] = Property("key");
    node["key"].SetChild("child");
    for (Property tree : {Around(7), Around("old"), Around(false), Around(Ratio(1, 3)), node}) {
        const Property* const place = &tree["key"];
        Property& child = tree.SetChildT<T>("key", value);
        EXPECT_EQ(&child, place);
        EXPECT_EQ(tree, Around(value));
    }
}

TEST(PropertySetterTest, SetChildT_OfAnExistingNameKeepsThePlaceAndTakesTheType) {
    ExpectSetChildTToReplaceInPlace<long long>(5);
    ExpectSetChildTToReplaceInPlace<std::string>("new");
    ExpectSetChildTToReplaceInPlace<bool>(true);
    ExpectSetChildTToReplaceInPlace<Ratio>(Ratio(1, 2));
}

TEST(PropertySetterTest, SetChildT_TurnsAStringIntoAnInteger) {
    Property tree = Around("5");
    tree.SetChildT<long long>("key", 5);
    EXPECT_EQ(tree["key"].GetType(), PropertyTypes::Int64);
    EXPECT_EQ(tree["key"].GetInt64(), 5);
    EXPECT_EQ(tree.Count(), 3U);
}

TEST(PropertySetterTest, SetChildT_SetsTheFirstOfSeveral) {
    Property tree("tree");
    tree.CreateChildT<long long>("twin", 1);
    tree.CreateChildT<long long>("twin", 2);
    tree.SetChildT<long long>("twin", 3);
    EXPECT_EQ(tree.Count(), 2U);
    EXPECT_EQ(tree[0], Property("twin", 3));
    EXPECT_EQ(tree[1], Property("twin", 2));
}

TEST(PropertySetterTest, SetChildT_NeverMakesASecondChildOfAName) {
    Property tree("tree");
    for (int i = 0; i < 10; ++i) {
        tree.SetChildT<long long>("key", i);
        tree.SetChildT<bool>("flag", true);
        tree.SetChildT<std::string>("", "nameless");
    }
    EXPECT_EQ(tree.Count(), 3U);
    EXPECT_EQ(tree["key"].GetInt64(), 9);
}

TEST(PropertySetterTest, SetChildT_WithALiteralIsAString) {
    Property tree("tree");
    EXPECT_EQ(tree.SetChildT<std::string>("key", "value"), Property("key", "value"));
    EXPECT_EQ(tree.CreateChildT<std::string>("key", "value"), Property("key", "value"));
    EXPECT_EQ(tree["key"].GetType(), PropertyTypes::String);
}

TEST(PropertySetterTest, SetChildT_DeducesTheTypeOfItsArgument) {
    Property tree("tree");
    EXPECT_EQ(tree.SetChildT("integer", 1LL), Property("integer", 1));
    EXPECT_EQ(tree.SetChildT("text", std::string("1")), Property("text", "1"));
    EXPECT_EQ(tree.SetChildT("flag", true), Property("flag", true));
    EXPECT_EQ(tree.SetChildT("ratio", Ratio(1, 2)), Property("ratio", Ratio(1, 2)));
    EXPECT_EQ(tree.CreateChildT("ratio", Ratio(1, 3)), Property("ratio", Ratio(1, 3)));
}

TEST(PropertySetterTest, SetChildT_WidensThirtyTwoBitsBySign) {
    Property tree("tree");
    EXPECT_EQ(tree.SetChildT<long long>("key", std::numeric_limits<int>::min()).GetInt64(), -2147483648LL);
    EXPECT_EQ(tree.SetChildT<long long>("key", std::numeric_limits<unsigned>::max()).GetInt64(), 4294967295LL);
    EXPECT_EQ(tree.SetChildT<long long>("key", std::numeric_limits<long long>::min()).GetInt64(),
              std::numeric_limits<long long>::min());
}

template <typename T>
void ExpectCreateChildTToAppend(const T& first, const T& second) {
    Property tree = Around("old");
    Property& one = tree.CreateChildT<T>("key", first);
    Property& two = tree.CreateChildT<T>("key", second);
    EXPECT_EQ(tree.Count(), 5U);
    EXPECT_EQ(&one, &tree[3]);
    EXPECT_EQ(&two, &tree[4]);
    EXPECT_EQ(one, Property("key", first));
    EXPECT_EQ(two, Property("key", second));
    EXPECT_EQ(tree["key"], Property("key", "old"));
}

TEST(PropertySetterTest, CreateChildT_AppendsBesideOthersOfThatName) {
    ExpectCreateChildTToAppend<long long>(1, 2);
    ExpectCreateChildTToAppend<std::string>("one", "two");
    ExpectCreateChildTToAppend<bool>(true, false);
    ExpectCreateChildTToAppend<Ratio>(Ratio(1, 2), Ratio(1, 3));
}

TEST(PropertySetterTest, Setters_TakeAnyName) {
    Property tree("tree");
    tree.SetChildT<bool>("", true);
    tree.SetChildT<bool>(std::string("\0", 1), false);
    tree.CreateChildT<bool>("\xFF", true);
    EXPECT_EQ(tree.Count(), 3U);
    EXPECT_EQ(tree[1].GetName(), std::string("\0", 1));
    EXPECT_FALSE(tree[std::string("\0", 1)].GetBool());
}

std::vector<Property> Leaves() {
    return {Property("text", "value"), Property("text", ""),        Property("size", 5),
            Property("flag", true),    Property("rate", Ratio(25)), Property()};
}

template <typename T>
void ExpectSettersToFailOnLeaves(const T& value) {
    for (Property& leaf : Leaves()) {
        const Property before(leaf);
        ExpectPropertyFailure<MethodIsNotApplicable>([&] { leaf.SetChildT<T>("child", value); },
                                                     {leaf.GetName(), leaf.GetType(), "SetChildT"});
        EXPECT_EQ(leaf, before);
        ExpectPropertyFailure<MethodIsNotApplicable>([&] { leaf.CreateChildT<T>("child", value); },
                                                     {leaf.GetName(), leaf.GetType(), "CreateChildT"});
        EXPECT_EQ(leaf, before);
    }
}

TEST(PropertySetterTest, SettersOnALeaf_ThrowAndChangeNothing) {
    ExpectSettersToFailOnLeaves<long long>(1);
    ExpectSettersToFailOnLeaves<std::string>("value");
    ExpectSettersToFailOnLeaves<bool>(false);
    ExpectSettersToFailOnLeaves<Ratio>(Ratio(1, 2));
}

TEST(PropertySetterTest, SettersOnALeaf_FailInsideAGreaterTreeWithoutChangingIt) {
    Property tree = Around("old");
    Raised<MethodIsNotApplicable>([&] { tree["key"].SetChildT<bool>("child", true); });
    Raised<MethodIsNotApplicable>([&] { tree["after"].CreateChildT<bool>("child", true); });
    EXPECT_EQ(tree, Around("old"));
}

TEST(PropertySetterTest, SettersOnALeaf_SayWhatTheyAre) {
    Property leaf("leaf", 1);
    const auto failure = Raised<MethodIsNotApplicable>([&] { leaf.SetChildT<bool>("child", true); });
    EXPECT_STREQ(failure.what(), "Quenzo::Core::MethodIsNotApplicable");
}

template <typename T>
std::string SetFunction() {
    return FunctionOf(Raised<MethodIsNotApplicable>([] { Property("leaf", 1).SetChildT<T>("child", T()); }));
}

template <typename T>
std::string CreateFunction() {
    return FunctionOf(Raised<MethodIsNotApplicable>([] { Property("leaf", 1).CreateChildT<T>("child", T()); }));
}

TEST(PropertySetterTest, SetChildT_RecordsItsSignature) {
    EXPECT_EQ(SetFunction<long long>(),
              "Property &Quenzo::Core::Property::SetChildT(const std::string &, const T &) [T = long long]");
    EXPECT_EQ(SetFunction<std::string>(),
              "Property &Quenzo::Core::Property::SetChildT(const std::string &, const T &) [T = std::string]");
    EXPECT_EQ(SetFunction<bool>(),
              "Property &Quenzo::Core::Property::SetChildT(const std::string &, const T &) [T = bool]");
    EXPECT_EQ(
        SetFunction<Ratio>(),
        "Property &Quenzo::Core::Property::SetChildT(const std::string &, const T &) [T = boost::rational<long long>]");
}

TEST(PropertySetterTest, CreateChildT_RecordsItsSignature) {
    EXPECT_EQ(CreateFunction<long long>(),
              "Property &Quenzo::Core::Property::CreateChildT(const std::string &, const T &) [T = long long]");
    EXPECT_EQ(CreateFunction<std::string>(),
              "Property &Quenzo::Core::Property::CreateChildT(const std::string &, const T &) [T = std::string]");
    EXPECT_EQ(CreateFunction<bool>(),
              "Property &Quenzo::Core::Property::CreateChildT(const std::string &, const T &) [T = bool]");
    EXPECT_EQ(CreateFunction<Ratio>(),
              "Property &Quenzo::Core::Property::CreateChildT(const std::string &, const T &) "
              "[T = boost::rational<long long>]");
}

TEST(PropertySetterTest, SettersOnALeaf_RecordTheFileRelativeToTheRoot) {
    Property leaf("leaf", 1);
    const auto failure = Raised<MethodIsNotApplicable>([&] { leaf.SetChildT<bool>("child", true); });
    const char* const* file = boost::get_error_info<boost::throw_file>(failure);
    const int* line = boost::get_error_info<boost::throw_line>(failure);
    ASSERT_NE(file, nullptr);
    ASSERT_NE(line, nullptr);
    EXPECT_STREQ(*file, "foundation/Property.cpp");
    EXPECT_GT(*line, 0);
}

RC_GTEST_PROP(PropertySetterTest, SetChildT_OnAnyNodeIsReadBackAndTouchesNothingElse, (bool value)) {
    Property tree = *Testing::AnyNode(2);
    const std::string name = *Testing::AnyText();
    const bool isNew = !tree.ChildExists(name);
    const Property before(tree);
    tree.SetChildT<bool>(name, value);
    RC_ASSERT(tree[name] == Property(name, value));
    RC_ASSERT(tree.Count() == before.Count() + (isNew ? 1U : 0U));
    const auto place = static_cast<std::size_t>(std::distance(tree.begin(), tree.FindChild(name)));
    RC_ASSERT(!isNew || place + 1 == tree.Count());
    for (std::size_t i = 0; i < before.Count(); ++i) {
        RC_ASSERT(i == place || tree[i] == before[i]);
    }
}

}  // namespace
}  // namespace Quenzo::Core
