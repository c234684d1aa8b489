// Covers whole trees of foundation/Property.h: copies and moves, assignments from and into parts of the same tree,
// equality, and trees so deep that recursion would run out of stack.

#include <foundation/Property.h>
#include <tests/foundation/SmallStack.h>
#include <tests/foundation/TreeGenerator.h>

#include <boost/rational.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <limits>
#include <ostream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

namespace Quenzo::Core {
namespace {

using Ratio = boost::rational<long long>;

// A node with one child of every type, a node with children among them.
Property Sample() {
    Property tree("video");
    tree.CreateChildT<std::string>("codec", "CODEC_ID_H264");
    tree.CreateChildT<long long>("bitrate", 5000000);
    tree.CreateChildT<bool>("interlaced", false);
    tree.CreateChildT<Ratio>("fps", Ratio(30000, 1001));
    tree.SetChild("nothing", Property());
    Property& metadata = tree.SetChild("metadata");
    metadata.CreateChildT<std::string>("title", "a title longer than what a string object holds itself");
    metadata.SetChild("empty");
    return tree;
}

TEST(PropertyTreeTest, Copy_EqualsItsSource) {
    const Property source = Sample();
    const Property copy(source);
    EXPECT_EQ(copy, source);
    EXPECT_EQ(copy, Sample());
    Property assigned("other");
    Property& self = assigned = source;
    EXPECT_EQ(&self, &assigned);
    EXPECT_EQ(assigned, source);
}

TEST(PropertyTreeTest, Copy_IsIndependentBothWays) {
    Property source = Sample();
    Property copy(source);
    copy["metadata"]["title"] = "changed in the copy";
    copy.RemoveChild("codec");
    EXPECT_EQ(source, Sample());
    source["metadata"].SetChildT<bool>("new", true);
    source["fps"] = 25;
    EXPECT_FALSE(copy["metadata"].ChildExists("new"));
    EXPECT_EQ(copy["fps"].GetRatio(), Ratio(30000, 1001));
}

TEST(PropertyTreeTest, Copy_CanGrow) {
    Property copy(Sample());
    for (int i = 0; i < 100; ++i) {
        copy.CreateChildT<long long>("new", i);
        copy["metadata"].CreateChildT<long long>("new", i);
    }
    EXPECT_EQ(copy.Count(), 106U);
    EXPECT_EQ(copy["metadata"].Count(), 102U);
    EXPECT_EQ(copy[105].GetInt64(), 99);
}

// Texts are compared in words of several lengths: each byte of each length counts.
TEST(PropertyTreeTest, Texts_DifferInAnyOneCharacter) {
    for (std::size_t size = 0; size <= 80; ++size) {
        std::string text;
        for (std::size_t i = 0; i < size; ++i) {
            text += static_cast<char>('a' + i % 26);
        }
        Property tree("tree");
        tree.CreateChildT<std::string>(text, text);
        EXPECT_EQ(Property(text, text), Property(text, text)) << size;
        EXPECT_TRUE(tree.ChildExists(text)) << size;
        EXPECT_FALSE(tree.ChildExists(text + "a")) << size;
        for (std::size_t place = 0; place < size; ++place) {
            std::string other = text;
            other[place] = '!';
            EXPECT_NE(Property("name", text), Property("name", other)) << place << " of " << size;
            EXPECT_NE(Property(text, "value"), Property(other, "value")) << place << " of " << size;
            EXPECT_FALSE(tree.ChildExists(other)) << place << " of " << size;
            EXPECT_EQ(tree.FindChild(other), tree.end()) << place << " of " << size;
        }
    }
}

TEST(PropertyTreeTest, Assignment_ReplacesTheNameToo) {
    Property tree("tree");
    Property& child = tree.SetChild("child");
    tree.SetChildT<bool>("sibling", true);
    child = Sample();
    EXPECT_EQ(child.GetName(), "video");
    EXPECT_FALSE(tree.ChildExists("child"));
    EXPECT_EQ(tree["video"], Sample());
    EXPECT_EQ(tree[0], Sample());
    EXPECT_EQ(tree[1], Property("sibling", true));
}

TEST(PropertyTreeTest, Move_TakesTheTreeWithoutCopying) {
    Property source = Sample();
    const Property* const child = &source["metadata"];
    Property moved(std::move(source));
    EXPECT_EQ(moved, Sample());
    EXPECT_EQ(&moved["metadata"], child);
    Property assigned("other", 5);
    Property& self = assigned = std::move(moved);
    EXPECT_EQ(&self, &assigned);
    EXPECT_EQ(assigned, Sample());
    EXPECT_EQ(&assigned["metadata"], child);
}

TEST(PropertyTreeTest, MovedFrom_CanBeAssignedTo) {
    Property source = Sample();
    const Property moved(std::move(source));
    source = Property("again");  // NOLINT(bugprone-use-after-move)
    source.SetChildT<long long>("value", 1);
    EXPECT_EQ(source["value"].GetInt64(), 1);
    EXPECT_EQ(moved, Sample());
}

TEST(PropertyTreeTest, SelfAssignment_ChangesNothing) {
    Property tree = Sample();
    Property& same = tree;
    tree = same;
    EXPECT_EQ(tree, Sample());
    tree = std::move(same);
    EXPECT_EQ(tree, Sample());
    Property leaf("leaf", "text");
    Property& sameLeaf = leaf;
    leaf = std::move(sameLeaf);
    EXPECT_EQ(leaf, Property("leaf", "text"));
}

TEST(PropertyTreeTest, Aliasing_ATreeBecomesItsOwnChild) {
    Property copied = Sample();
    copied = copied["metadata"];
    EXPECT_EQ(copied, Sample()["metadata"]);
    Property byPosition = Sample();
    byPosition = byPosition[0];
    EXPECT_EQ(byPosition, Property("codec", "CODEC_ID_H264"));
    Property moved = Sample();
    moved = std::move(moved["metadata"]);
    EXPECT_EQ(moved, Sample()["metadata"]);
    Property movedLeaf = Sample();
    movedLeaf = std::move(movedLeaf[0]);
    EXPECT_EQ(movedLeaf, Property("codec", "CODEC_ID_H264"));
}

TEST(PropertyTreeTest, Aliasing_ATreeBecomesItsOwnGrandchild) {
    Property copied = Sample();
    copied = copied["metadata"]["title"];
    EXPECT_EQ(copied, Sample()["metadata"]["title"]);
    Property moved = Sample();
    moved = std::move(moved["metadata"]["title"]);
    EXPECT_EQ(moved, Sample()["metadata"]["title"]);
}

TEST(PropertyTreeTest, Aliasing_AChildBecomesACopyOfTheWholeTree) {
    Property tree = Sample();
    tree["metadata"] = tree;
    EXPECT_EQ(tree.Count(), 6U);
    EXPECT_EQ(tree[5], Sample());
    EXPECT_EQ(tree[0], Sample()[0]);
}

TEST(PropertyTreeTest, Aliasing_SetChildTakesTheTreeItself) {
    Property tree = Sample();
    tree.SetChild("self", tree);
    EXPECT_EQ(tree.Count(), 7U);
    Property expected = Sample();
    expected.SetChild("self", Sample());
    EXPECT_EQ(tree, expected);
    tree.SetChild("metadata", tree["metadata"]["title"]);
    EXPECT_EQ(tree["metadata"].GetString(), "a title longer than what a string object holds itself");
    tree.SetChild(tree["self"].GetName(), tree["self"]);
    EXPECT_EQ(tree[6].Count(), 6U);
    EXPECT_EQ(tree[6].GetName(), "self");
}

TEST(PropertyTreeTest, Aliasing_AddTakesOneOfItsOwnChildren) {
    Property tree = Sample();
    EXPECT_EQ(tree.Add(std::move(tree["metadata"])), Sample()["metadata"]);
    EXPECT_EQ(tree.Count(), 7U);
}

TEST(PropertyTreeTest, Aliasing_AValueComesFromItsOwnChild) {
    const std::string text = "a title longer than what a string object holds itself";
    Property byReference = Sample()["metadata"];
    byReference = byReference["title"].GetString();
    EXPECT_EQ(byReference, Property("metadata", text));
    Property byPointer = Sample()["metadata"];
    byPointer = byPointer["title"].GetString().c_str();
    EXPECT_EQ(byPointer, Property("metadata", text));
    Property fromItself("leaf", text);
    fromItself = fromItself.GetString();
    EXPECT_EQ(fromItself, Property("leaf", text));
    Property fromOwnName(text);
    fromOwnName = fromOwnName.GetName();
    EXPECT_EQ(fromOwnName, Property(text, text));
    Property ratio = Sample();
    ratio = ratio["fps"].GetRatio();
    EXPECT_EQ(ratio, Property("video", Ratio(30000, 1001)));
}

TEST(PropertyTreeTest, Aliasing_TheSettersTakeNamesAndValuesOfTheTree) {
    Property tree = Sample();
    tree.SetChildT<std::string>(tree[0].GetName(), tree["metadata"]["title"].GetString());
    EXPECT_EQ(tree[0], Property("codec", "a title longer than what a string object holds itself"));
    tree.SetChildT<std::string>("metadata", tree["metadata"]["title"].GetString());
    EXPECT_EQ(tree[5], Property("metadata", "a title longer than what a string object holds itself"));
    for (int i = 0; i < 100; ++i) {
        tree.CreateChildT<std::string>(tree[5].GetName(), tree[5].GetString());
    }
    EXPECT_EQ(tree.Count(), 106U);
    EXPECT_EQ(tree[105], tree[5]);
}

void ExpectDifferent(const Property& left, const Property& right) {
    EXPECT_FALSE(left == right);
    EXPECT_FALSE(right == left);
    EXPECT_TRUE(left != right);
    EXPECT_TRUE(right != left);
}

TEST(PropertyTreeTest, Equality_OfEqualTrees) {
    const Property tree = Sample();
    EXPECT_TRUE(tree == Sample());
    EXPECT_FALSE(tree != Sample());
    EXPECT_TRUE(tree == tree);
    EXPECT_TRUE(Property() == Property());
    EXPECT_TRUE(Property("") == Property(""));
}

TEST(PropertyTreeTest, Equality_SeesTheName) {
    ExpectDifferent(Property("a"), Property("b"));
    ExpectDifferent(Property("a", true), Property("A", true));
    ExpectDifferent(Property("a", 1), Property(std::string("a\0", 2), 1));
}

TEST(PropertyTreeTest, Equality_SeesTheType) {
    const std::vector<Property> all = {Property(),       Property("", false), Property("", 0), Property("", Ratio(0)),
                                       Property("", ""), Property("")};
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            ExpectDifferent(all[i], all[j]);
        }
    }
    ExpectDifferent(Property("a", 1), Property("a", true));
    ExpectDifferent(Property("a", 5), Property("a", "5"));
    ExpectDifferent(Property("a", 5), Property("a", Ratio(5)));
}

TEST(PropertyTreeTest, Equality_SeesTheValue) {
    ExpectDifferent(Property("a", true), Property("a", false));
    ExpectDifferent(Property("a", 1), Property("a", -1));
    ExpectDifferent(Property("a", std::numeric_limits<long long>::max()),
                    Property("a", std::numeric_limits<long long>::max() - 1));
    ExpectDifferent(Property("a", Ratio(1, 2)), Property("a", Ratio(1, 3)));
    ExpectDifferent(Property("a", "text"), Property("a", "Text"));
    ExpectDifferent(Property("a", std::string("text\0", 5)), Property("a", "text"));
    EXPECT_EQ(Property("a", Ratio(1, 2)), Property("a", Ratio(2, 4)));
}

template <typename Change>
void ExpectToDifferAfter(Change change) {
    Property changed = Sample();
    change(changed);
    ExpectDifferent(changed, Sample());
}

TEST(PropertyTreeTest, Equality_SeesTheChildrenAtEveryLevel) {
    ExpectToDifferAfter([](Property& tree) { tree.RemoveChild("codec"); });
    ExpectToDifferAfter([](Property& tree) { tree.SetChild("new"); });
    ExpectToDifferAfter([](Property& tree) { tree.SetChild("nothing"); });
    ExpectToDifferAfter([](Property& tree) { tree["fps"] = Ratio(25); });
    ExpectToDifferAfter([](Property& tree) { tree["metadata"]["title"] = "x"; });
    ExpectToDifferAfter([](Property& tree) { tree["metadata"].RemoveChild("empty"); });
    ExpectToDifferAfter([](Property& tree) { tree["metadata"]["empty"].SetChild("new"); });
    ExpectToDifferAfter([](Property& tree) { tree["metadata"]["empty"] = Property("other"); });
}

TEST(PropertyTreeTest, Equality_SeesTheOrder) {
    Property forth("tree");
    forth.CreateChildT<long long>("a", 1);
    forth.CreateChildT<long long>("b", 2);
    Property back("tree");
    back.CreateChildT<long long>("b", 2);
    back.CreateChildT<long long>("a", 1);
    ExpectDifferent(forth, back);
}

TEST(PropertyTreeTest, Equality_SeesTheCountOfRepeatedNames) {
    Property once("tree");
    once.CreateChildT<long long>("a", 1);
    Property twice(once);
    twice.CreateChildT<long long>("a", 1);
    ExpectDifferent(once, twice);
}

TEST(PropertyTreeTest, Equality_DoesNotSeeHowATreeWasMade) {
    Property grown("tree");
    for (int i = 0; i < 30; ++i) {
        grown.CreateChildT<long long>(std::to_string(i), i);
    }
    for (int i = 5; i < 25; ++i) {
        grown.RemoveChild(std::to_string(i));
    }
    Property straight("tree");
    for (const int i : {0, 1, 2, 3, 4, 25, 26, 27, 28, 29}) {
        straight.CreateChildT<long long>(std::to_string(i), i);
    }
    EXPECT_EQ(grown, straight);
    EXPECT_EQ(Property(grown), grown);
}

RC_GTEST_PROP(PropertyTreeTest, Copy_OfAnyTreeEqualsItsSourceUntilEitherChanges, (const Property& tree)) {
    Property copy(tree);
    RC_ASSERT(copy == tree);
    RC_ASSERT_FALSE(copy != tree);
    Property assigned;
    assigned = tree;
    RC_ASSERT(assigned == tree);
    if (copy.GetType() == PropertyTypes::Node) {
        copy.SetChild("one more");
        RC_ASSERT(copy != tree);
        RC_ASSERT(copy.Count() == tree.Count() + 1);
    } else {
        copy = Property(copy.GetName() + "x");
        RC_ASSERT(copy != tree);
    }
    RC_ASSERT(assigned == tree);
}

RC_GTEST_PROP(PropertyTreeTest, Move_OfAnyTreeEqualsWhatItWas, (const Property& tree)) {
    Property source(tree);
    Property moved(std::move(source));
    RC_ASSERT(moved == tree);
    source = std::move(moved);
    RC_ASSERT(source == tree);
}

constexpr int kManyLevels = 1000000;
constexpr std::size_t kSmallStack = std::size_t{256} * 1024;

Property Deep(int levels) {
    Property tree("root");
    Property* innermost = &tree;
    for (int i = 1; i < levels; ++i) {
        innermost = &innermost->SetChild("level");
    }
    innermost->CreateChildT<std::string>("leaf", "at the bottom");
    return tree;
}

int Levels(const Property& tree) {
    int levels = 1;
    for (const Property* node = &tree; node->Count() != 0; node = &(*node)[0]) {
        ++levels;
    }
    return levels;
}

TEST(PropertyTreeTest, AMillionLevels_AreCopiedComparedAndDestroyedOnASmallStack) {
    Testing::RunOnSmallStack(kSmallStack, [] {
        const Property tree = Deep(kManyLevels);
        EXPECT_EQ(Levels(tree), kManyLevels + 1);
        Property copy(tree);
        EXPECT_EQ(Levels(copy), kManyLevels + 1);
        EXPECT_TRUE(copy == tree);
        Property* innermost = &copy;
        while (innermost->Count() != 0) {
            innermost = &(*innermost)[0];
        }
        *innermost = "changed";
        EXPECT_TRUE(copy != tree);
        copy = tree;
        EXPECT_TRUE(copy == tree);
    });
}

TEST(PropertyTreeTest, AMillionLevels_AreMovedReplacedAndRemovedOnASmallStack) {
    Testing::RunOnSmallStack(kSmallStack, [] {
        Property tree("tree");
        tree.Add(Deep(kManyLevels));
        Property moved(std::move(tree["root"]));
        moved = std::move(moved[0][0]);
        EXPECT_EQ(Levels(moved), kManyLevels - 1);
        tree[0] = std::move(moved);
        tree["level"] = 5;
        EXPECT_EQ(tree["level"].GetInt64(), 5);
        tree["level"] = Deep(kManyLevels);
        tree.RemoveChild("root");
        EXPECT_EQ(tree, Property("tree"));
    });
}

// Counts what is written and keeps none of it.
class CountingBuffer : public std::streambuf {
public:
    std::streamsize Count() const { return count_; }

protected:
    int_type overflow(int_type character) override {
        ++count_;
        return traits_type::not_eof(character);
    }
    std::streamsize xsputn(const char* /*unused*/, std::streamsize size) override {
        count_ += size;
        return size;
    }

private:
    std::streamsize count_ = 0;
};

TEST(PropertyTreeTest, TenThousandLevels_ArePrintedOnASmallStack) {
    Testing::RunOnSmallStack(kSmallStack, [] {
        CountingBuffer buffer;
        std::ostream os(&buffer);
        PrintCorePropertyValue(Deep(10000), 0, os, false, true);
        // "root", 9999 times "level" behind 2 to 19998 blanks, and the leaf behind 20000; each with its end of line.
        EXPECT_EQ(buffer.Count(), 5 + 9999 * 6 + 9999 * 10000 + 20000 + 20);
    });
}

}  // namespace
}  // namespace Quenzo::Core
