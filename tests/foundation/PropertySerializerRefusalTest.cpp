// Covers what foundation/PropertySerializer.h refuses, to the text of every message, and that a refusal changes
// neither the tree nor the output: values that no property holds, texts that are no JSON, nesting beyond the limit,
// failures of the device.

#include <foundation/Exception.h>
#include <foundation/PropertySerializer.h>
#include <tests/foundation/Failures.h>
#include <tests/foundation/JsonTexts.h>
#include <tests/foundation/PrintProperty.h>
#include <tests/foundation/SmallStack.h>

#include <boost/rational.hpp>
#include <boost/throw_exception.hpp>

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

namespace Quenzo::Core {
namespace {

using Testing::Loaded;
using Testing::Raised;
using Testing::ReadInto;
using Testing::TagOf;
using Testing::Written;
using Ratio = boost::rational<long long>;

Property Target() {
    Property tree("target");
    tree.CreateChildT<std::string>("key", "value");
    tree.SetChild("node").CreateChildT<long long>("size", 5);
    return tree;
}

// The call must raise a failure with these tags and leave the target that it is given as it was.
void ExpectRefused(const std::function<void(Property&)>& call, const std::string& method, const std::string& name,
                   const std::string& description) {
    SCOPED_TRACE(description);
    Property target = Target();
    const auto failure = Raised<PropertyException>([&] { call(target); });
    EXPECT_EQ(TagOf<Exception::TagDescription>(failure), description);
    EXPECT_EQ(TagOf<PropertyException::TagMethodName>(failure), method);
    EXPECT_EQ(TagOf<PropertyException::TagPropertyName>(failure), name);
    EXPECT_NE(TagOf<Exception::TagCallStack>(failure).value_or(""), "");
    EXPECT_EQ(target, Target());
}

// As a text and as a value in memory.
void ExpectContentRefused(const std::string& json, const std::string& name, const std::string& description) {
    ExpectRefused([&](Property& target) { ReadInto(target, json); }, "CoreLoad", name, description);
    rapidjson::Document document;
    document.Parse(json.c_str());
    ASSERT_FALSE(document.HasParseError());
    ExpectRefused([&](Property& target) { PropertySerializer::CoreLoad(target, document); }, "CoreLoad", name,
                  description);
}

void ExpectNumberRefused(const std::string& number, const std::string& shown) {
    ExpectContentRefused(number, "target", "\"target\" holds " + shown + ", which is no signed 64-bit integer");
    ExpectContentRefused(R"({"key":1,"size":)" + number + "}", "size",
                         "\"size\" holds " + shown + ", which is no signed 64-bit integer");
}

template <typename Call>
std::string TextOfRefusal(Call call) {
    try {
        call();
    } catch (const boost::wrapexcept<std::invalid_argument>& failure) {
        return failure.what();
    }
    return "nothing was raised";
}

TEST(PropertySerializerRefusalTest, NoStream_IsRefusedAndChangesNothing) {
    Property tree = Target();
    EXPECT_EQ(TextOfRefusal([&] { PropertySerializer::Read(tree, nullptr); }), "input is null");
    EXPECT_EQ(TextOfRefusal([&] { PropertySerializer::Write(tree, nullptr); }), "output is null");
    EXPECT_EQ(tree, Target());
}

TEST(PropertySerializerRefusalTest, Number_WithAFractionOrAnExponent) {
    ExpectNumberRefused("1.5", "1.5");
    ExpectNumberRefused("-0.25", "-0.25");
    ExpectNumberRefused("1.0", "1.0");
    ExpectNumberRefused("-0.0", "-0.0");
    ExpectNumberRefused("1e3", "1000.0");
    ExpectNumberRefused("1e300", "1e+300");
}

TEST(PropertySerializerRefusalTest, Number_BeyondSixtyFourBits) {
    ExpectNumberRefused("9223372036854775808", "9223372036854775808");
    ExpectNumberRefused("18446744073709551615", "18446744073709551615");
    ExpectNumberRefused("18446744073709551616", "1.8446744073709552e+19");
    ExpectNumberRefused("-9223372036854775809", "-9.223372036854776e+18");
}

void ExpectRatioRefused(const std::string& array, const std::string& shown) {
    ExpectContentRefused(array, "target",
                         "\"target\" holds " + shown + ", which is no rational of signed 64-bit integers");
    ExpectContentRefused("{\"rate\":" + array + "}", "rate",
                         "\"rate\" holds " + shown + ", which is no rational of signed 64-bit integers");
}

TEST(PropertySerializerRefusalTest, Ratio_WithAZeroDenominator) {
    ExpectRatioRefused("[1,0]", "[1,0]");
    ExpectRatioRefused("[0,0]", "[0,0]");
    ExpectRatioRefused("[-9223372036854775808,0]", "[-9223372036854775808,0]");
}

TEST(PropertySerializerRefusalTest, Ratio_ThatDoesNotFitInLowestTerms) {
    ExpectRatioRefused("[1,-9223372036854775808]", "[1,-9223372036854775808]");
    ExpectRatioRefused("[-3,-9223372036854775808]", "[-3,-9223372036854775808]");
    ExpectRatioRefused("[-9223372036854775808,-1]", "[-9223372036854775808,-1]");
    ExpectRatioRefused("[-9223372036854775808,-3]", "[-9223372036854775808,-3]");
}

TEST(PropertySerializerRefusalTest, Ratio_OfNumbersThatAreNoIntegers) {
    ExpectRatioRefused("[1.5,2]", "[1.5,2]");
    ExpectRatioRefused("[1,2.5]", "[1,2.5]");
    ExpectRatioRefused("[25.0,1]", "[25.0,1]");
    ExpectRatioRefused("[9223372036854775808,1]", "[9223372036854775808,1]");
    ExpectRatioRefused("[1,18446744073709551616]", "[1,1.8446744073709552e+19]");
}

void ExpectArrayRefused(const std::string& array) {
    const std::string reason =
        "holds an array that is neither a rational [numerator,denominator] nor a list of one-member objects";
    ExpectContentRefused(array, "target", "\"target\" " + reason);
    ExpectContentRefused(R"({"a":{"b":)" + array + "}}", "b", "\"b\" " + reason);
    ExpectContentRefused(R"([{"a":1},{"b":)" + array + "}]", "b", "\"b\" " + reason);
}

TEST(PropertySerializerRefusalTest, Array_OfAnotherShape) {
    ExpectArrayRefused("[]");
    ExpectArrayRefused("[1]");
    ExpectArrayRefused("[1,2,3]");
    ExpectArrayRefused(R"(["1","2"])");
    ExpectArrayRefused(R"([1,"2"])");
    ExpectArrayRefused("[true,false]");
    ExpectArrayRefused("[null,1]");
    ExpectArrayRefused("[null]");
    ExpectArrayRefused("[[1,2]]");
    ExpectArrayRefused("[[1,2],[3,4]]");
    ExpectArrayRefused("[{}]");
    ExpectArrayRefused(R"([{"a":1},{}])");
    ExpectArrayRefused(R"([{"a":1,"b":2}])");
    ExpectArrayRefused(R"([{"a":1},{"b":1,"c":2}])");
    ExpectArrayRefused(R"([{"a":1},2])");
    ExpectArrayRefused(R"([{"a":1},null])");
}

TEST(PropertySerializerRefusalTest, Content_IsNamedEvenWhenTheNameIsEmpty) {
    ExpectContentRefused(R"({"":1.5})", "", "\"\" holds 1.5, which is no signed 64-bit integer");
}

TEST(PropertySerializerRefusalTest, Content_ThatIsWrongTwiceIsRefusedForWhatComesFirst) {
    const std::string array =
        "holds an array that is neither a rational [numerator,denominator] nor a list of one-member objects";
    ExpectContentRefused(R"({"a":1.5,"b":[]})", "a", "\"a\" holds 1.5, which is no signed 64-bit integer");
    ExpectContentRefused(R"([{"a":1.5},2])", "a", "\"a\" holds 1.5, which is no signed 64-bit integer");
    ExpectContentRefused(R"([2,{"a":1.5}])", "target", "\"target\" " + array);
    ExpectContentRefused(R"([[1.5],{"a":1.5}])", "target", "\"target\" " + array);
}

void ExpectTextRefused(const std::string& json, const std::string& description) {
    ExpectRefused([&](Property& target) { ReadInto(target, json); }, "Read", "target", description);
}

TEST(PropertySerializerRefusalTest, Text_ThatEndsTooEarly) {
    ExpectTextRefused("", "no JSON at byte 0: The document is empty.");
    ExpectTextRefused("  ", "no JSON at byte 2: The document is empty.");
    ExpectTextRefused("{", "no JSON at byte 1: Missing a name for object member.");
    ExpectTextRefused(R"({"a")", "no JSON at byte 4: Missing a colon after a name of object member.");
    ExpectTextRefused(R"({"a":)", "no JSON at byte 5: Invalid value.");
    ExpectTextRefused(R"({"a":1)", "no JSON at byte 6: Missing a comma or '}' after an object member.");
    ExpectTextRefused("[1,2", "no JSON at byte 4: Missing a comma or ']' after an array element.");
    ExpectTextRefused("\"abc", "no JSON at byte 4: Missing a closing quotation mark in string.");
    ExpectTextRefused("tru", "no JSON at byte 3: Invalid value.");
    ExpectTextRefused("-", "no JSON at byte 1: Invalid value.");
}

TEST(PropertySerializerRefusalTest, Text_ThatIsNoJsonIsRefusedBeforeItsContent) {
    ExpectTextRefused(R"({"a":1.5)", "no JSON at byte 8: Missing a comma or '}' after an object member.");
    ExpectTextRefused(R"([[],[1])", "no JSON at byte 7: Missing a comma or ']' after an array element.");
}

TEST(PropertySerializerRefusalTest, Text_ThatIsNoStandardJson) {
    ExpectTextRefused("{} x", "no JSON at byte 4: The document root must not be followed by other values.");
    ExpectTextRefused("1 2", "no JSON at byte 3: The document root must not be followed by other values.");
    ExpectTextRefused("01", "no JSON at byte 2: The document root must not be followed by other values.");
    ExpectTextRefused("[1,]", "no JSON at byte 4: Invalid value.");
    ExpectTextRefused(R"({"a":1,})", "no JSON at byte 8: Missing a name for object member.");
    ExpectTextRefused("{a:1}", "no JSON at byte 2: Missing a name for object member.");
    ExpectTextRefused("'a'", "no JSON at byte 1: Invalid value.");
    ExpectTextRefused("+1", "no JSON at byte 1: Invalid value.");
    ExpectTextRefused(".5", "no JSON at byte 1: Invalid value.");
    ExpectTextRefused("NaN", "no JSON at byte 1: Invalid value.");
    ExpectTextRefused("Infinity", "no JSON at byte 1: Invalid value.");
    ExpectTextRefused("// a comment\n1", "no JSON at byte 1: Invalid value.");
    ExpectTextRefused("\xEF\xBB\xBF{}", "no JSON at byte 1: Invalid value.");
    ExpectTextRefused("1e400", "no JSON at byte 1: Number too big to be stored in double.");
    ExpectTextRefused("1.", "no JSON at byte 2: Miss fraction part in number.");
    ExpectTextRefused("1e", "no JSON at byte 2: Miss exponent in number.");
}

TEST(PropertySerializerRefusalTest, Text_WithStringsThatAreNoJson) {
    ExpectTextRefused("\"a\nb\"", "no JSON at byte 3: Invalid escape character in string.");
    ExpectTextRefused("\"a\x01\"", "no JSON at byte 3: Invalid escape character in string.");
    ExpectTextRefused(std::string("\"a\0b\"", 5), "no JSON at byte 3: Missing a closing quotation mark in string.");
    ExpectTextRefused(R"("\x")", "no JSON at byte 2: Invalid escape character in string.");
    ExpectTextRefused(R"("\u12")", "no JSON at byte 2: Incorrect hex digit after \\u escape in string.");
    ExpectTextRefused(R"("\ud800")", "no JSON at byte 2: The surrogate pair in string is invalid.");
    ExpectTextRefused(R"("\ud800\u0041")", "no JSON at byte 2: The surrogate pair in string is invalid.");
}

// States more bytes than it has, or fails in the middle.
class BrokenInput : public RefCounted<IDataInput> {
public:
    BrokenInput(std::string bytes, bool throws) : bytes_(std::move(bytes)), throws_(throws) {}

    std::uint64_t GetSize() override { return 1000; }

    std::size_t Read(void* buffer, std::size_t /*unused*/) override {
        if (position_ == bytes_.size()) {
            if (throws_) {
                throw std::runtime_error("the device failed");
            }
            return 0;
        }
        *static_cast<char*>(buffer) = bytes_[position_++];
        return 1;
    }

private:
    std::string bytes_;
    bool throws_;
    std::size_t position_ = 0;
};

TEST(PropertySerializerRefusalTest, Input_ThatBreaksOffIsTruncatedJson) {
    ExpectRefused(
        [](Property& target) {
            PropertySerializer::Read(target, SP<IDataInput>(new BrokenInput(R"({"a":[1,2)", false)));
        },
        "Read", "target", "no JSON at byte 9: Missing a comma or ']' after an array element.");
}

TEST(PropertySerializerRefusalTest, Input_ThatFailsLeavesTheTarget) {
    Property target = Target();
    const SP<IDataInput> input(new BrokenInput(R"({"a":[1,2)", true));
    EXPECT_THROW(PropertySerializer::Read(target, input), std::runtime_error);
    EXPECT_EQ(target, Target());
    EXPECT_EQ(input->GetRefCount(), 1);
}

class FullOutput : public RefCounted<IDataOutput> {
public:
    void Write(const void* /*unused*/, std::size_t /*unused*/) override {
        throw std::runtime_error("the disk is full");
    }
};

TEST(PropertySerializerRefusalTest, Output_ThatFailsIsReported) {
    const SP<IDataOutput> output(new FullOutput());
    EXPECT_THROW(PropertySerializer::Write(Target(), output), std::runtime_error);
    EXPECT_EQ(output->GetRefCount(), 1);
}

std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

// Objects in one another, the innermost around a value.
std::string Objects(int levels, const std::string& value) {
    return Repeated(R"({"a":)", levels) + value + Repeated("}", levels);
}

// Nodes in one another, the innermost with a child.
Property Nodes(int levels, Property child) {
    Property tree("root");
    Property* innermost = &tree;
    for (int i = 1; i < levels; ++i) {
        innermost = &innermost->SetChild("a");
    }
    innermost->Add(std::move(child));
    return tree;
}

// The innermost node has two children of one name, which takes two levels of JSON.
Property NodesWithTwins(int levels) {
    Property tree = Nodes(levels, Property("twin", 1));
    Property* innermost = &tree;
    while (innermost->GetName() != "twin" && (*innermost)[0].GetName() != "twin") {
        innermost = &(*innermost)[0];
    }
    innermost->Add(Property("twin", 2));
    return tree;
}

void ExpectWritable(const Property& tree) { EXPECT_TRUE(Loaded("root", Written(tree)) == tree); }

void ExpectUnwritable(const Property& tree, const std::string& name) {
    const std::string description = "\"" + name + "\" cannot be saved: it is nested deeper than 1000 levels";
    const SP<MemoryOutput> output = MemoryOutput::Create();
    ExpectRefused([&](Property& /*unused*/) { PropertySerializer::Write(tree, output); }, "Save", name, description);
    EXPECT_EQ(output->GetBytes(), "");
    rapidjson::Document document;
    rapidjson::Value value("unchanged");
    ExpectRefused([&](Property& /*unused*/) { PropertySerializer::Save(tree, value, document.GetAllocator()); }, "Save",
                  name, description);
    EXPECT_TRUE(value == "unchanged");
}

TEST(PropertySerializerDepthTest, Write_AtTheLimit) {
    EXPECT_EQ(PropertySerializer::MAX_DEPTH, 1000);
    ExpectWritable(Nodes(1000, Property("leaf", 1)));
    ExpectWritable(Nodes(999, Property("leaf", Ratio(1, 2))));
    ExpectWritable(Nodes(999, Property("empty")));
    ExpectWritable(NodesWithTwins(999));
}

TEST(PropertySerializerDepthTest, Write_BeyondTheLimitIsRefused) {
    ExpectUnwritable(Nodes(1001, Property("leaf", 1)), "a");
    ExpectUnwritable(Nodes(1000, Property("leaf", Ratio(1, 2))), "leaf");
    ExpectUnwritable(Nodes(1000, Property("empty")), "empty");
    ExpectUnwritable(Nodes(100000, Property("leaf", 1)), "a");
}

TEST(PropertySerializerDepthTest, Write_OfRepeatedNamesBeyondTheLimitIsRefused) {
    ExpectUnwritable(NodesWithTwins(1000), "a");
}

TEST(PropertySerializerDepthTest, Write_OfListsInListsCountsTwoLevelsEach) {
    const auto lists = [](int levels) {
        Property tree("root");
        Property* innermost = &tree;
        for (int i = 0; i < levels; ++i) {
            innermost->Add(Property("twin", i));
            innermost = &innermost->Add(Property("twin"));
        }
        return tree;
    };
    ExpectWritable(lists(499));
    ExpectUnwritable(lists(500), "twin");
}

TEST(PropertySerializerDepthTest, Read_AtTheLimit) {
    EXPECT_TRUE(Loaded("root", Objects(1000, "1")) == Nodes(1000, Property("a", 1)));
    EXPECT_TRUE(Loaded("root", Objects(999, "[1,2]")) == Nodes(999, Property("a", Ratio(1, 2))));
    EXPECT_TRUE(Loaded("root", Objects(999, "{}")) == Nodes(999, Property("a")));
    EXPECT_TRUE(Loaded("root", Objects(998, R"([{"twin":1},{"twin":2}])")) == NodesWithTwins(999));
}

TEST(PropertySerializerDepthTest, Read_BeyondTheLimitIsRefused) {
    ExpectTextRefused(Objects(1001, "1"), "no JSON at byte 5001: nested deeper than 1000 levels");
    ExpectTextRefused(Objects(1000, "[1,2]"), "no JSON at byte 5001: nested deeper than 1000 levels");
    ExpectTextRefused(Objects(1000, "{}"), "no JSON at byte 5001: nested deeper than 1000 levels");
    ExpectTextRefused(Objects(999, R"([{"twin":1},{"twin":2}])"),
                      "no JSON at byte 4997: nested deeper than 1000 levels");
    ExpectTextRefused(Repeated("[", 1001) + Repeated("]", 1001),
                      "no JSON at byte 1001: nested deeper than 1000 levels");
}

TEST(PropertySerializerDepthTest, Read_OfEndlessNestingStopsAtTheLimit) {
    Testing::RunOnSmallStack(std::size_t{256} * 1024, [] {
        ExpectTextRefused(Repeated("[", 3000000), "no JSON at byte 1001: nested deeper than 1000 levels");
        ExpectTextRefused(Repeated(R"({"a":)", 1000000), "no JSON at byte 5001: nested deeper than 1000 levels");
        ExpectTextRefused(Repeated(R"([{"a":)", 1000000), "no JSON at byte 3001: nested deeper than 1000 levels");
    });
}

// The same as Objects, built without a parser.
rapidjson::Value Value(int levels, rapidjson::Value value, rapidjson::Document::AllocatorType& allocator) {
    for (int i = 0; i < levels; ++i) {
        rapidjson::Value outer(rapidjson::kObjectType);
        outer.AddMember("a", value, allocator);
        value = outer;
    }
    return value;
}

rapidjson::Value Twins(rapidjson::Document::AllocatorType& allocator) {
    rapidjson::Value list(rapidjson::kArrayType);
    for (const int number : {1, 2}) {
        rapidjson::Value element(rapidjson::kObjectType);
        element.AddMember("twin", number, allocator);
        list.PushBack(element, allocator);
    }
    return list;
}

TEST(PropertySerializerDepthTest, CoreLoad_AtTheLimit) {
    rapidjson::Document document;
    auto& allocator = document.GetAllocator();
    Property tree("root");
    rapidjson::Value deep = Value(1000, rapidjson::Value(1), allocator);
    PropertySerializer::CoreLoad(tree, deep);
    EXPECT_TRUE(tree == Nodes(1000, Property("a", 1)));
    rapidjson::Value twins = Value(998, Twins(allocator), allocator);
    PropertySerializer::CoreLoad(tree, twins);
    EXPECT_TRUE(tree == NodesWithTwins(999));
}

void ExpectValueRefused(rapidjson::Value value) {
    ExpectRefused([&](Property& target) { PropertySerializer::CoreLoad(target, value); }, "CoreLoad", "a",
                  "\"a\" is nested deeper than 1000 levels");
}

TEST(PropertySerializerDepthTest, CoreLoad_BeyondTheLimitIsRefused) {
    rapidjson::Document document;
    auto& allocator = document.GetAllocator();
    ExpectValueRefused(Value(1001, rapidjson::Value(1), allocator));
    ExpectValueRefused(Value(1000, rapidjson::Value(rapidjson::kObjectType), allocator));
    ExpectValueRefused(Value(1000, rapidjson::Value(rapidjson::kArrayType), allocator));
    ExpectValueRefused(Value(100000, rapidjson::Value(1), allocator));
}

TEST(PropertySerializerDepthTest, CoreLoad_OfRepeatedNamesBeyondTheLimitIsRefused) {
    rapidjson::Document document;
    ExpectValueRefused(Value(999, Twins(document.GetAllocator()), document.GetAllocator()));
}

}  // namespace
}  // namespace Quenzo::Core
