// Covers PrintCorePropertyValue of foundation/Property.h: the text of every type, both flags, the indentation and the
// escapes.

#include <foundation/Property.h>
#include <tests/foundation/TreeGenerator.h>

#include <boost/rational.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <sstream>
#include <string>

namespace Quenzo::Core {
namespace {

using Ratio = boost::rational<long long>;

std::string Dump(const Property& property, int indent = 0, bool withTypes = true, bool withChildren = true) {
    std::ostringstream os;
    PrintCorePropertyValue(property, indent, os, withTypes, withChildren);
    return os.str();
}

Property Sample() {
    Property tree("video");
    tree.CreateChildT<std::string>("codec", "CODEC_ID_H264");
    tree.CreateChildT<Ratio>("fps", Ratio(30000, 1001));
    Property& metadata = tree.SetChild("metadata");
    metadata.CreateChildT<bool>("default", true);
    metadata.SetChild("nothing", Property());
    metadata.SetChild("empty");
    tree.CreateChildT<long long>("bitrate", -1);
    return tree;
}

TEST(PropertyDumpTest, Tree_WithTypesAndChildren) {
    EXPECT_EQ(Dump(Sample()),
              "video [node]\n"
              "  codec [string]: CODEC_ID_H264\n"
              "  fps [ratio]: 30000/1001\n"
              "  metadata [node]\n"
              "    default [bool]: true\n"
              "    nothing [none]\n"
              "    empty [node]\n"
              "  bitrate [int64]: -1\n");
}

TEST(PropertyDumpTest, Tree_WithoutTypes) {
    EXPECT_EQ(Dump(Sample(), 0, false),
              "video\n"
              "  codec: CODEC_ID_H264\n"
              "  fps: 30000/1001\n"
              "  metadata\n"
              "    default: true\n"
              "    nothing\n"
              "    empty\n"
              "  bitrate: -1\n");
}

TEST(PropertyDumpTest, Tree_WithoutChildren) {
    EXPECT_EQ(Dump(Sample(), 0, true, false), "video [node]\n");
    EXPECT_EQ(Dump(Sample(), 0, false, false), "video\n");
}

TEST(PropertyDumpTest, Leaf_OfEveryType) {
    EXPECT_EQ(Dump(Property()), " [none]\n");
    EXPECT_EQ(Dump(Property(), 0, false), "\n");
    EXPECT_EQ(Dump(Property("flag", true)), "flag [bool]: true\n");
    EXPECT_EQ(Dump(Property("flag", false)), "flag [bool]: false\n");
    EXPECT_EQ(Dump(Property("size", 5)), "size [int64]: 5\n");
    EXPECT_EQ(Dump(Property("size", std::numeric_limits<long long>::min())), "size [int64]: -9223372036854775808\n");
    EXPECT_EQ(Dump(Property("rate", Ratio(25))), "rate [ratio]: 25/1\n");
    EXPECT_EQ(Dump(Property("rate", Ratio(-1, 3))), "rate [ratio]: -1/3\n");
    EXPECT_EQ(Dump(Property("text", "a b")), "text [string]: a b\n");
    EXPECT_EQ(Dump(Property("text", "")), "text [string]: \n");
    EXPECT_EQ(Dump(Property("node")), "node [node]\n");
    EXPECT_EQ(Dump(Property("size", 5), 0, false, false), "size: 5\n");
}

TEST(PropertyDumpTest, Indent_IsTwoBlanksALevel) {
    EXPECT_EQ(Dump(Property("size", 5), 1), "  size [int64]: 5\n");
    EXPECT_EQ(Dump(Sample()["metadata"], 2, false),
              "    metadata\n"
              "      default: true\n"
              "      nothing\n"
              "      empty\n");
}

TEST(PropertyDumpTest, Indent_BelowZeroCountsAsZero) {
    EXPECT_EQ(Dump(Sample(), -1), Dump(Sample()));
    EXPECT_EQ(Dump(Property("size", 5), std::numeric_limits<int>::min()), "size [int64]: 5\n");
}

// The same bytes as a name and as a value.
void ExpectEscaped(const std::string& bytes, const std::string& escaped) {
    EXPECT_EQ(Dump(Property(bytes, bytes), 0, false), escaped + ": " + escaped + "\n");
    EXPECT_EQ(Dump(Property("x" + bytes + "y", 1), 0, false), "x" + escaped + "y: 1\n");
}

TEST(PropertyDumpTest, Escapes_OfQuotesAndBackslashes) {
    ExpectEscaped("\"", R"(\")");
    ExpectEscaped("\\", R"(\\)");
    ExpectEscaped("\\\"", R"(\\\")");
    ExpectEscaped("\\n", R"(\\n)");
}

TEST(PropertyDumpTest, Escapes_OfControlCharacters) {
    ExpectEscaped("\n", R"(\n)");
    ExpectEscaped("\r", R"(\r)");
    ExpectEscaped("\t", R"(\t)");
    ExpectEscaped("\b", R"(\010)");
    ExpectEscaped("\f", R"(\014)");
    ExpectEscaped("\x1B", R"(\033)");
    ExpectEscaped("\x1F", R"(\037)");
    ExpectEscaped("\x7F", R"(\177)");
    ExpectEscaped(std::string("\0", 1), R"(\000)");
    ExpectEscaped(std::string("\0001", 2), R"(\0001)");
}

TEST(PropertyDumpTest, Escapes_LeaveOtherTextAlone) {
    ExpectEscaped(" !#$%&'()*+,-./09:;<=>?@AZ[]^_`az{|}~", " !#$%&'()*+,-./09:;<=>?@AZ[]^_`az{|}~");
    ExpectEscaped("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xAC", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xAC");
    ExpectEscaped("\xEF\xBF\xBD", "\xEF\xBF\xBD");
    ExpectEscaped("\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF");
}

TEST(PropertyDumpTest, Escapes_OfTheTwoCodePointsThatAreNoCharacters) {
    ExpectEscaped("\xEF\xBF\xBE", R"(\357\277\276)");
    ExpectEscaped("\xEF\xBF\xBF", R"(\357\277\277)");
}

TEST(PropertyDumpTest, Escapes_OfAnAmpersandThatStartsAReference) {
    ExpectEscaped("&#65;", R"(\046#65;)");
    ExpectEscaped("&&#", R"(&\046#)");
    ExpectEscaped("&amp; & #", "&amp; & #");
}

TEST(PropertyDumpTest, Escapes_OfBytesThatAreNoUtf8) {
    ExpectEscaped("\xFF", R"(\377)");
    ExpectEscaped("\x80", R"(\200)");
    ExpectEscaped("\xC3", R"(\303)");
    ExpectEscaped("\xC3(", R"(\303()");
    ExpectEscaped("\xE2\x82", R"(\342\202)");
    ExpectEscaped("\xE2\x82\xC3\xA4", "\\342\\202\xC3\xA4");
    ExpectEscaped("\xC0\x80", R"(\300\200)");
    ExpectEscaped("\xED\xA0\x80", R"(\355\240\200)");
    ExpectEscaped("\xF4\x90\x80\x80", R"(\364\220\200\200)");
    ExpectEscaped("\xC3\"", R"(\303\")");
    ExpectEscaped("\xE2\x82\n", R"(\342\202\n)");
}

std::size_t Size(const Property& tree) {
    std::size_t size = 1;
    for (const Property& child : tree) {
        size += Size(child);
    }
    return size;
}

RC_GTEST_PROP(PropertyDumpTest, Dump_OfAnyTreeHasOneLineForEachProperty, (const Property& tree)) {
    const std::string dump = Dump(tree);
    RC_ASSERT(static_cast<std::size_t>(std::count(dump.begin(), dump.end(), '\n')) == Size(tree));
    RC_ASSERT(dump.back() == '\n');
}

RC_GTEST_PROP(PropertyDumpTest, Dump_OfAnyTreeCanStandInAQuotedText, (const Property& tree)) {
    const std::string dump = Dump(tree);
    for (std::size_t i = 0; i < dump.size(); ++i) {
        const auto byte = static_cast<unsigned char>(dump[i]);
        RC_ASSERT(byte >= 0x20 || byte == '\n');
        RC_ASSERT(byte != '"');
        if (byte == '\\') {
            ++i;
            RC_ASSERT(i < dump.size());
            RC_ASSERT(std::string("\\\"nrt01234567").find(dump[i]) != std::string::npos);
        }
    }
}

}  // namespace
}  // namespace Quenzo::Core
