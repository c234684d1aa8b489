// Covers the base of all descriptions: its tree and "metadata", comparing, printing, and the slots of its virtual
// functions.

#include <Conf/Interfaces/IFormat.h>
#include <tests/Conf/DescriptionSupport.h>
#include <tests/Conf/Failures.h>
#include <tests/foundation/TreeGenerator.h>
#include <tests/foundation/VirtualSlots.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <boost/rational.hpp>

#include <optional>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <type_traits>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Quenzo::Testing::VirtualSlot;

static_assert(std::is_abstract_v<IFormat>);
static_assert(std::is_base_of_v<IRefCountable, IFormat>);
static_assert(std::has_virtual_destructor_v<IFormat>);

// Nothing but the base, with the counting that each branch adds.
class PlainFormat : public IFormat {
public:
    static SP<PlainFormat> Create(const std::string& name) { return SP<PlainFormat>(new PlainFormat(name)); }

    void AddRef() const override { counter_.AddRefImpl(); }
    long GetRefCount() const override { return counter_.GetRefCountImpl(); }
    long Release() const override {
        const long remaining = counter_.ReleaseImpl();
        if (remaining == 0) {
            delete this;
        }
        return remaining;
    }

    using IFormat::Tree;

protected:
    using IFormat::IFormat;

private:
    RefCountImpl counter_;
};

TEST(FormatTest, Constructor_NamesTheTreeAndAddsMetadata) {
    EXPECT_EQ(PlainFormat::Create("kind")->GetProperty(), Tree("kind", {Property("metadata")}));
    EXPECT_EQ(PlainFormat::Create("")->GetProperty(), Tree("", {Property("metadata")}));
    EXPECT_EQ(PlainFormat::Create("kind")->GetMetadata(), Property("metadata"));
}

TEST(FormatTest, SetProperty_ReplacesTheWholeTree) {
    const SP<PlainFormat> format = PlainFormat::Create("kind");
    const Property tree =
        Tree("other", {Property("a", 1), Tree("metadata", {Property("b", true)}), Property("c", "x")});
    format->SetProperty(tree);
    EXPECT_EQ(format->GetProperty(), tree);
    EXPECT_EQ(format->GetMetadata(), Tree("metadata", {Property("b", true)}));
}

TEST(FormatTest, SetProperty_AddsMetadataAtTheEndWhenThereIsNone) {
    const SP<PlainFormat> format = PlainFormat::Create("kind");
    format->SetMetadata(Property("metadata", "old"));
    format->SetProperty(Tree("other", {Property("a", 1)}));
    EXPECT_EQ(format->GetProperty(), Tree("other", {Property("a", 1), Property("metadata")}));
    format->SetProperty(Property(""));
    EXPECT_EQ(format->GetProperty(), Tree("", {Property("metadata")}));
}

TEST(FormatTest, SetProperty_KeepsMetadataOfAnyKind) {
    const SP<PlainFormat> format = PlainFormat::Create("kind");
    format->SetProperty(Tree("other", {Property("metadata", 5)}));
    EXPECT_EQ(format->GetProperty(), Tree("other", {Property("metadata", 5)}));
}

TEST(FormatTest, SetProperty_KeepsACopy) {
    const SP<PlainFormat> format = PlainFormat::Create("kind");
    Property tree = Tree("other", {Property("a", 1)});
    format->SetProperty(tree);
    tree.SetChildT<long long>("a", 2);
    EXPECT_EQ(format->GetProperty()["a"].GetInt64(), 1);
}

TEST(FormatTest, SetProperty_TakesATreeOutOfTheDescriptionItself) {
    const SP<PlainFormat> format = PlainFormat::Create("kind");
    format->SetMetadata(Tree("m", {Property("a", 1)}));
    format->SetProperty(format->GetProperty());
    EXPECT_EQ(format->GetProperty(), Tree("kind", {Tree("metadata", {Property("a", 1)})}));
    format->SetProperty(format->GetMetadata());
    EXPECT_EQ(format->GetProperty(), Tree("metadata", {Property("a", 1), Property("metadata")}));
}

TEST(FormatTest, SetProperty_OfALeafThrowsAndChangesNothing) {
    const std::vector<Property> leaves = {Property(), Property("leaf", 1), Property("leaf", true),
                                          Property("leaf", "text"), Property("leaf", boost::rational<long long>(1, 2))};
    for (const Property& leaf : leaves) {
        const SP<PlainFormat> format = PlainFormat::Create("kind");
        format->SetMetadata(Property("kept", 7));
        Quenzo::Testing::ExpectPropertyFailure<Core::MethodIsNotApplicable>(
            [&] { format->SetProperty(leaf); }, {leaf.GetName(), leaf.GetType(), "SetChild"});
        EXPECT_EQ(format->GetProperty(), Tree("kind", {Property("metadata", 7)}));
    }
}

TEST(FormatTest, SetMetadata_StoresACopyUnderItsOwnName) {
    const SP<PlainFormat> format = PlainFormat::Create("kind");
    Property metadata = Tree("anything", {Property("title", "x")});
    format->SetMetadata(metadata);
    metadata.SetChildT<std::string>("title", "y");
    EXPECT_EQ(format->GetMetadata(), Tree("metadata", {Property("title", "x")}));
    EXPECT_EQ(metadata.GetName(), "anything");
}

TEST(FormatTest, SetMetadata_ReplacesInPlaceAndTakesLeaves) {
    const SP<PlainFormat> format = PlainFormat::Create("kind");
    format->SetProperty(Tree("kind", {Property("a"), Property("metadata"), Property("b")}));
    format->SetMetadata(Property("", "text"));
    EXPECT_EQ(format->GetProperty(), Tree("kind", {Property("a"), Property("metadata", "text"), Property("b")}));
}

TEST(FormatTest, SetMetadata_AddsItWhenSomeoneHasRemovedIt) {
    const SP<PlainFormat> format = PlainFormat::Create("kind");
    format->Tree().RemoveChild("metadata");
    ExpectMissing([&] { format->GetMetadata(); }, "kind", "metadata");
    format->SetMetadata(Property("m", 1));
    EXPECT_EQ(format->GetMetadata(), Property("metadata", 1));
}

TEST(FormatTest, Compare_LooksAtTheTreesOnly) {
    const SP<PlainFormat> one = PlainFormat::Create("kind");
    const SP<PlainFormat> two = PlainFormat::Create("kind");
    EXPECT_TRUE(one->Compare(one));
    EXPECT_TRUE(one->Compare(two));
    two->SetMetadata(Property("metadata", 1));
    EXPECT_FALSE(one->Compare(two));
    EXPECT_FALSE(two->Compare(one));
    EXPECT_FALSE(one->Compare(PlainFormat::Create("other")));
    EXPECT_EQ(one->GetRefCount(), 1);
}

TEST(FormatTest, Compare_ReadsTheOtherSideThroughItsVirtualFunction) {
    class Disguised : public PlainFormat {
    public:
        Disguised() : PlainFormat("kind"), shown_(Conf::Testing::Tree("shown", {Property("metadata")})) {}
        const Property& GetProperty() const override { return shown_; }

    private:
        Property shown_;
    };
    const SP<const IFormat> disguised(new Disguised());
    EXPECT_TRUE(PlainFormat::Create("shown")->Compare(disguised));
    EXPECT_FALSE(PlainFormat::Create("kind")->Compare(disguised));
    // Its own side is the tree itself.
    EXPECT_TRUE(disguised->Compare(PlainFormat::Create("kind")));
}

TEST(FormatTest, Compare_WithNothingThrows) {
    ExpectText<std::invalid_argument>([] { PlainFormat::Create("kind")->Compare(nullptr); },
                                      "the description to compare with is NULL");
}

RC_GTEST_PROP(FormatTest, Compare_AgreesWithTheEqualityOfTrees, ()) {
    const auto make = [](const Property& tree) {
        const SP<PlainFormat> format = PlainFormat::Create("kind");
        format->SetProperty(tree);
        return format;
    };
    const Property left = *Quenzo::Testing::AnyNode(3);
    const Property right = *rc::gen::oneOf(rc::gen::just(left), Quenzo::Testing::AnyNode(3));
    const SP<PlainFormat> one = make(left);
    const SP<PlainFormat> two = make(right);
    RC_ASSERT(one->Compare(two) == (one->GetProperty() == two->GetProperty()));
    RC_ASSERT(one->Compare(make(left)));
}

TEST(FormatTest, PrintContent_WritesAHeadingAndTheDump) {
    const SP<PlainFormat> format = PlainFormat::Create("kind");
    format->SetProperty(Tree(
        "kind", {Tree("metadata", {Property("title", "\"x\"")}), Property("rate", boost::rational<long long>(25, 1)),
                 Property("lossless", false), Property("bitrate", -5)}));
    std::ostringstream text;
    format->PrintContent(text);
    EXPECT_EQ(text.str(),
              "======External props:=====\n"
              "kind [node]\n"
              "  metadata [node]\n"
              "    title [string]: \\\"x\\\"\n"
              "  rate [ratio]: 25/1\n"
              "  lossless [bool]: false\n"
              "  bitrate [int64]: -5\n");
}

TEST(FormatTest, PrintContent_FlushesAfterTheHeading) {
    class Buffer : public std::stringbuf {
    public:
        std::string atFirstFlush;

    protected:
        int sync() override {
            atFirstFlush = atFirstFlush.empty() ? str() : atFirstFlush;
            return 0;
        }
    };
    Buffer buffer;
    std::ostream stream(&buffer);
    PlainFormat::Create("kind")->PrintContent(stream);
    EXPECT_EQ(buffer.atFirstFlush, "======External props:=====\n");
}

// The destructor takes the slots 0 and 1.
TEST(FormatTest, VirtualFunctions_StandInTheirSlots) {
    EXPECT_EQ(VirtualSlot(&IFormat::AddRef), 2U);
    EXPECT_EQ(VirtualSlot(&IFormat::GetRefCount), 3U);
    EXPECT_EQ(VirtualSlot(&IFormat::Release), 4U);
    EXPECT_EQ(VirtualSlot(&IFormat::GetProperty), 5U);
    EXPECT_EQ(VirtualSlot(&IFormat::SetProperty), 6U);
}

TEST(FormatTest, OtherFunctions_AreNotVirtual) {
    EXPECT_EQ(VirtualSlot(&IFormat::GetMetadata), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormat::SetMetadata), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormat::Compare), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormat::PrintContent), std::nullopt);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
