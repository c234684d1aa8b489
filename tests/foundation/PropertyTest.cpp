// Covers a single property of foundation/Property.h: its constructors, its value and type, the getters, the numbers of
// PropertyTypes, and the calls that must not compile.

#include <foundation/Property.h>
#include <tests/foundation/Failures.h>
#include <tests/foundation/PrintProperty.h>

#include <boost/rational.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace Quenzo::Core {
namespace {

using Testing::ExpectPropertyFailure;
using Ratio = boost::rational<long long>;

static_assert(sizeof(PropertyTypes) == 4);
static_assert(static_cast<int>(PropertyTypes::None) == 0);
static_assert(static_cast<int>(PropertyTypes::Bool) == 1);
static_assert(static_cast<int>(PropertyTypes::Int64) == 2);
static_assert(static_cast<int>(PropertyTypes::Ratio) == 3);
static_assert(static_cast<int>(PropertyTypes::String) == 4);
static_assert(static_cast<int>(PropertyTypes::Node) == 6);

enum Unscoped { One = 1 };
enum class Scoped { One = 1 };

template <typename Value>
constexpr bool kMakesALeaf = std::is_constructible_v<Property, const char*, Value>;

static_assert(kMakesALeaf<std::string> && kMakesALeaf<const char*> && kMakesALeaf<bool> && kMakesALeaf<Ratio>);
static_assert(kMakesALeaf<long long> && kMakesALeaf<int> && kMakesALeaf<std::uint64_t> && kMakesALeaf<char>);
static_assert(!kMakesALeaf<std::nullptr_t>);
static_assert(!kMakesALeaf<void*> && !kMakesALeaf<const int*>, "a pointer is no boolean");
static_assert(!kMakesALeaf<double> && !kMakesALeaf<float>, "a fraction would be cut off");
static_assert(!kMakesALeaf<Unscoped> && !kMakesALeaf<Scoped>);
static_assert(!kMakesALeaf<boost::rational<int>>);
static_assert(!kMakesALeaf<std::vector<bool>::reference>);
static_assert(!kMakesALeaf<Property>);

template <typename Value>
constexpr bool kCanBeAssigned = std::is_assignable_v<Property&, Value>;

static_assert(kCanBeAssigned<std::string> && kCanBeAssigned<const char*> && kCanBeAssigned<bool>);
static_assert(kCanBeAssigned<long long> && kCanBeAssigned<short> && kCanBeAssigned<std::uint32_t>);
static_assert(kCanBeAssigned<Ratio> && kCanBeAssigned<Property> && kCanBeAssigned<const Property&>);
static_assert(!kCanBeAssigned<std::nullptr_t>);
static_assert(!kCanBeAssigned<void*> && !kCanBeAssigned<double> && !kCanBeAssigned<float>);
static_assert(!kCanBeAssigned<Unscoped> && !kCanBeAssigned<Scoped>);
static_assert(!kCanBeAssigned<boost::rational<int>>);
static_assert(!std::is_assignable_v<const Property&, bool>);

static_assert(!std::is_convertible_v<std::string, Property>, "a name is no tree");
static_assert(!std::is_convertible_v<const char*, Property>, "a name is no tree");
static_assert(!std::is_constructible_v<Property, int> && !std::is_constructible_v<Property, bool>);

template <typename Argument>
concept DeducedBySetChildT = requires(Property& property, const Argument& argument) {
    property.SetChildT("name", argument);
};
template <typename T>
concept InstantiatesSetChildT = requires(Property& property, const T& value) {
    property.SetChildT<T>("name", value);
};
template <typename T>
concept InstantiatesCreateChildT = requires(Property& property, const T& value) {
    property.CreateChildT<T>("name", value);
};

static_assert(DeducedBySetChildT<long long> && DeducedBySetChildT<std::string> && DeducedBySetChildT<bool> &&
              DeducedBySetChildT<Ratio>);
static_assert(!DeducedBySetChildT<int> && !DeducedBySetChildT<char[6]> && !DeducedBySetChildT<double>);
static_assert(InstantiatesSetChildT<long long> && InstantiatesCreateChildT<Ratio>);
static_assert(!InstantiatesSetChildT<int> && !InstantiatesCreateChildT<int>);
static_assert(!InstantiatesSetChildT<double> && !InstantiatesCreateChildT<double>);
static_assert(!InstantiatesSetChildT<std::string_view> && !InstantiatesCreateChildT<Property>);

static_assert(std::is_nothrow_move_constructible_v<Property> && std::is_nothrow_move_assignable_v<Property>);
static_assert(std::forward_iterator<Property::iterator> && std::forward_iterator<Property::const_iterator>);
static_assert(std::ranges::forward_range<Property> && std::ranges::forward_range<const Property>);
static_assert(std::is_convertible_v<Property::iterator, Property::const_iterator>);
static_assert(!std::is_convertible_v<Property::const_iterator, Property::iterator>);
static_assert(std::is_same_v<decltype(*std::declval<const Property&>().begin()), const Property&>);
static_assert(std::is_same_v<decltype(std::declval<const Property&>().GetString()), const std::string&>);

void ExpectBool(const Property& property, bool value) {
    EXPECT_EQ(property.GetType(), PropertyTypes::Bool);
    EXPECT_EQ(property.GetBool(), value);
    EXPECT_EQ(property.Count(), 0U);
}

void ExpectInt64(const Property& property, long long value) {
    EXPECT_EQ(property.GetType(), PropertyTypes::Int64);
    EXPECT_EQ(property.GetInt64(), value);
    EXPECT_EQ(property.Count(), 0U);
}

void ExpectRatio(const Property& property, long long numerator, long long denominator) {
    EXPECT_EQ(property.GetType(), PropertyTypes::Ratio);
    EXPECT_EQ(property.GetRatio().numerator(), numerator);
    EXPECT_EQ(property.GetRatio().denominator(), denominator);
    EXPECT_EQ(property.Count(), 0U);
}

void ExpectString(const Property& property, const std::string& value) {
    EXPECT_EQ(property.GetType(), PropertyTypes::String);
    EXPECT_EQ(property.GetString(), value);
    EXPECT_EQ(property.Count(), 0U);
}

// The value through both the constructor and the assignment, which leaves the name and drops the children.
template <typename Value>
Property Assigned(const Value& value) {
    Property property("name");
    property.SetChildT<bool>("child", true);
    Property& self = property = value;
    EXPECT_EQ(&self, &property);
    EXPECT_EQ(property.GetName(), "name");
    EXPECT_EQ(property, Property("name", value));
    return property;
}

template <typename Integer>
void ExpectInteger(Integer value, long long expected) {
    ExpectInt64(Property("name", value), expected);
    ExpectInt64(Assigned(value), expected);
}

TEST(PropertyTest, DefaultConstructor_MakesNothingWithoutAName) {
    const Property property;
    EXPECT_EQ(property.GetName(), "");
    EXPECT_EQ(property.GetType(), PropertyTypes::None);
    EXPECT_EQ(property.Count(), 0U);
    EXPECT_EQ(property.begin(), property.end());
}

TEST(PropertyTest, Constructor_FromANameAloneMakesAnEmptyNode) {
    const Property property("root");
    EXPECT_EQ(property.GetName(), "root");
    EXPECT_EQ(property.GetType(), PropertyTypes::Node);
    EXPECT_EQ(property.Count(), 0U);
    EXPECT_EQ(property.begin(), property.end());
}

TEST(PropertyTest, Constructor_KeepsNamesOfAnyBytes) {
    EXPECT_EQ(Property("").GetName(), "");
    EXPECT_EQ(Property(std::string("a\0b\xFF", 4)).GetName(), std::string("a\0b\xFF", 4));
    EXPECT_EQ(Property(std::string("a\0b", 3), true).GetName(), std::string("a\0b", 3));
}

TEST(PropertyTest, StringValue_FromTextOfEveryKind) {
    const std::string constant = "constant";
    const char* const pointer = "pointer";
    char array[] = "array";
    ExpectString(Property("name", constant), "constant");
    ExpectString(Property("name", std::string("temporary")), "temporary");
    ExpectString(Property("name", pointer), "pointer");
    ExpectString(Property("name", static_cast<char*>(array)), "array");
    ExpectString(Assigned(constant), "constant");
    ExpectString(Assigned(pointer), "pointer");
    ExpectString(Assigned(std::string()), "");
    ExpectString(Assigned(std::string("a\0b\xFF", 4)), std::string("a\0b\xFF", 4));
}

TEST(PropertyTest, StringValue_FromALiteralIsNeverABoolean) {
    ExpectString(Property("name", "value"), "value");
    ExpectString(Property("name", ""), "");
    Property property("name", false);
    property = "value";
    ExpectString(property, "value");
    property = "";
    ExpectString(property, "");
    property = 1;
    property = {std::string("braced")};
    ExpectString(property, "braced");
}

TEST(PropertyTest, StringValue_IsTakenFromATemporary) {
    std::string value(1000, 'x');
    const char* const bytes = value.data();
    Property property("name");
    property = std::move(value);
    EXPECT_EQ(property.GetString().data(), bytes);
    EXPECT_EQ(property.GetString(), std::string(1000, 'x'));
}

TEST(PropertyTest, BoolValue_HoldsBoth) {
    ExpectBool(Property("name", true), true);
    ExpectBool(Property("name", false), false);
    ExpectBool(Assigned(true), true);
    ExpectBool(Assigned(false), false);
}

TEST(PropertyTest, IntegerValue_FromEveryIntegerTypeIsSixtyFourBitsWide) {
    ExpectInteger<signed char>(-128, -128);
    ExpectInteger<unsigned char>(255, 255);
    ExpectInteger<char>('a', 97);
    ExpectInteger<short>(-32768, -32768);
    ExpectInteger<unsigned short>(65535, 65535);
    ExpectInteger<int>(0, 0);
    ExpectInteger<int>(std::numeric_limits<int>::min(), -2147483648LL);
    ExpectInteger<unsigned>(std::numeric_limits<unsigned>::max(), 4294967295LL);
    ExpectInteger<long>(std::numeric_limits<long>::min(), std::numeric_limits<long long>::min());
    ExpectInteger<unsigned long>(4294967296UL, 4294967296LL);
    ExpectInteger<long long>(std::numeric_limits<long long>::min(), std::numeric_limits<long long>::min());
    ExpectInteger<long long>(std::numeric_limits<long long>::max(), 9223372036854775807LL);
    ExpectInteger<unsigned long long>(9223372036854775807ULL, 9223372036854775807LL);
    ExpectInteger<std::size_t>(7, 7);
    ExpectInteger<char8_t>(u8'a', 97);
    ExpectInteger<wchar_t>(L'a', 97);
}

TEST(PropertyTest, IntegerValue_BeyondTheSignedRangeWrapsAround) {
    ExpectInteger<unsigned long long>(9223372036854775808ULL, std::numeric_limits<long long>::min());
    ExpectInteger<unsigned long long>(18446744073709551615ULL, -1);
}

TEST(PropertyTest, RatioValue_IsInLowestTerms) {
    ExpectRatio(Property("name", Ratio(30000, 1001)), 30000, 1001);
    ExpectRatio(Property("name", Ratio(6, -4)), -3, 2);
    ExpectRatio(Assigned(Ratio(0, 5)), 0, 1);
    ExpectRatio(Assigned(Ratio(9223372036854775807LL, 2)), 9223372036854775807LL, 2);
    ExpectRatio(Assigned(Ratio(std::numeric_limits<long long>::min(), 3)), std::numeric_limits<long long>::min(), 3);
}

TEST(PropertyTest, Assignment_TakesEachTypeInTurn) {
    Property property("name");
    property = "text";
    ExpectString(property, "text");
    property = std::string("longer than any text that fits into a string object");
    ExpectString(property, "longer than any text that fits into a string object");
    property = true;
    ExpectBool(property, true);
    property = Ratio(1, 3);
    ExpectRatio(property, 1, 3);
    property = 5;
    ExpectInt64(property, 5);
    property = Property("other");
    EXPECT_EQ(property, Property("other"));
}

TEST(PropertyTest, Assignment_OfAValueKeepsThePlaceAmongTheSiblings) {
    Property tree("tree");
    tree.CreateChildT<long long>("first", 1);
    tree.SetChild("second").CreateChildT<bool>("below", true);
    tree.CreateChildT<long long>("third", 3);
    tree["second"] = "value";
    ASSERT_EQ(tree.Count(), 3U);
    EXPECT_EQ(tree[1], Property("second", "value"));
    EXPECT_EQ(tree[2], Property("third", 3));
}

struct Sample {
    Property property;
    std::string name;
    PropertyTypes type;
};

std::vector<Sample> OneOfEachType() {
    return {{Property(), "", PropertyTypes::None},
            {Property("flag", true), "flag", PropertyTypes::Bool},
            {Property("size", 5), "size", PropertyTypes::Int64},
            {Property("rate", Ratio(25, 1)), "rate", PropertyTypes::Ratio},
            {Property("text", "5"), "text", PropertyTypes::String},
            {Property("node"), "node", PropertyTypes::Node}};
}

template <typename Getter>
void ExpectToApplyOnlyTo(PropertyTypes type, const std::string& method, Getter get) {
    for (const Sample& sample : OneOfEachType()) {
        if (sample.type == type) {
            EXPECT_NO_THROW(get(sample.property));
            continue;
        }
        ExpectPropertyFailure<PropertyException>(
            [&] { get(sample.property); },
            {sample.name, sample.type, method,
             method + " does not apply to \"" + sample.name + "\", which holds another type"});
    }
}

TEST(PropertyTest, GetBool_OnAnotherTypeThrows) {
    ExpectToApplyOnlyTo(PropertyTypes::Bool, "GetBool", [](const Property& property) { return property.GetBool(); });
}

TEST(PropertyTest, GetInt64_OnAnotherTypeThrows) {
    ExpectToApplyOnlyTo(PropertyTypes::Int64, "GetInt64", [](const Property& property) { return property.GetInt64(); });
}

TEST(PropertyTest, GetString_OnAnotherTypeThrows) {
    ExpectToApplyOnlyTo(PropertyTypes::String, "GetString",
                        [](const Property& property) { return property.GetString(); });
}

TEST(PropertyTest, GetRatio_OnAnotherTypeThrows) {
    ExpectToApplyOnlyTo(PropertyTypes::Ratio, "GetRatio", [](const Property& property) { return property.GetRatio(); });
}

TEST(PropertyTest, Getter_FailureNamesWhatIsHeldAfterAnAssignment) {
    Property property("name", true);
    property = "now a text";
    ExpectPropertyFailure<PropertyException>(
        [&] { property.GetBool(); },
        {"name", PropertyTypes::String, "GetBool", "GetBool does not apply to \"name\", which holds another type"});
    EXPECT_EQ(property, Property("name", "now a text"));
}

TEST(PropertyTest, Getter_FailureReadsItsDescription) {
    const auto failure = Testing::Raised<PropertyException>([] { Property("node").GetInt64(); });
    EXPECT_STREQ(failure.what(), "GetInt64 does not apply to \"node\", which holds another type");
}

}  // namespace
}  // namespace Quenzo::Core
