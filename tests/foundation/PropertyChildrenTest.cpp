// Covers the children of a property of foundation/Property.h: looking them up, adding, replacing and removing them,
// walking them, the failures of operator[], and references to siblings that stay valid.

#include <foundation/Property.h>
#include <tests/foundation/Failures.h>
#include <tests/foundation/TreeGenerator.h>

#include <boost/rational.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace Quenzo::Core {
namespace {

using Testing::ExpectPropertyFailure;
using Ratio = boost::rational<long long>;

// A node with integer children named after their positions.
Property Numbered(int count) {
    Property tree("tree");
    for (int i = 0; i < count; ++i) {
        tree.CreateChildT<long long>(std::to_string(i), i);
    }
    return tree;
}

std::vector<std::string> Names(const Property& tree) {
    std::vector<std::string> names;
    for (const Property& child : tree) {
        names.push_back(child.GetName());
    }
    return names;
}

std::vector<Property> OneLeafOfEachType() {
    return {Property(), Property("leaf", true), Property("leaf", 1), Property("leaf", Ratio(1, 2)),
            Property("leaf", "text")};
}

template <typename Change>
void ExpectNotApplicableToLeaves(const std::string& method, Change change) {
    for (Property& leaf : OneLeafOfEachType()) {
        const Property before(leaf);
        ExpectPropertyFailure<MethodIsNotApplicable>([&] { change(leaf); }, {leaf.GetName(), leaf.GetType(), method});
        EXPECT_EQ(leaf, before);
    }
}

TEST(PropertyChildrenTest, OperatorByName_ReadsAndWritesTheChild) {
    Property tree = Numbered(3);
    const Property& constant = tree;
    EXPECT_EQ(constant["1"], Property("1", 1));
    EXPECT_EQ(&constant["1"], &tree["1"]);
    tree["1"] = "changed";
    EXPECT_EQ(constant["1"], Property("1", "changed"));
    EXPECT_EQ(constant[std::string("2")].GetInt64(), 2);
}

TEST(PropertyChildrenTest, OperatorByName_FindsTheFirstOfSeveral) {
    Property tree("tree");
    tree.CreateChildT<long long>("twin", 1);
    tree.CreateChildT<long long>("twin", 2);
    EXPECT_EQ(tree["twin"].GetInt64(), 1);
    EXPECT_EQ(std::as_const(tree)["twin"].GetInt64(), 1);
}

TEST(PropertyChildrenTest, OperatorByName_DistinguishesAllBytes) {
    Property tree("tree");
    tree.CreateChildT<long long>(std::string("a\0b", 3), 1);
    tree.CreateChildT<long long>("", 2);
    tree.CreateChildT<long long>("\xFF", 3);
    EXPECT_EQ(tree[std::string("a\0b", 3)].GetInt64(), 1);
    EXPECT_EQ(tree[""].GetInt64(), 2);
    EXPECT_EQ(tree["\xFF"].GetInt64(), 3);
    EXPECT_FALSE(tree.ChildExists("a"));
    EXPECT_FALSE(tree.ChildExists("A"));
}

template <typename Tree>
void ExpectNoChild(Tree& tree, const std::string& name, const std::string& description) {
    const Property before(tree);
    ExpectPropertyFailure<PropertyException>([&] { tree[name]; }, {name, tree.GetType(), "operator[]", description});
    EXPECT_EQ(tree, before);
}

TEST(PropertyChildrenTest, OperatorByName_WithoutSuchAChildThrowsAndCreatesNothing) {
    Property tree = Numbered(2);
    Property leaf("leaf", 5);
    Property none;
    ExpectNoChild(tree, "width", "\"tree\" has no child \"width\"");
    ExpectNoChild(std::as_const(tree), "width", "\"tree\" has no child \"width\"");
    ExpectNoChild(tree, "", "\"tree\" has no child \"\"");
    ExpectNoChild(tree, "tree", "\"tree\" has no child \"tree\"");
    ExpectNoChild(leaf, "width", "\"leaf\" has no child \"width\"");
    ExpectNoChild(std::as_const(leaf), "width", "\"leaf\" has no child \"width\"");
    ExpectNoChild(none, "width", "\"\" has no child \"width\"");
}

TEST(PropertyChildrenTest, OperatorByPosition_CountsInChildOrder) {
    Property tree = Numbered(100);
    const Property& constant = tree;
    for (std::size_t i = 0; i < 100; ++i) {
        EXPECT_EQ(constant[i].GetInt64(), static_cast<long long>(i));
        EXPECT_EQ(&constant[i], &tree[i]);
    }
    tree[99] = "last";
    EXPECT_EQ(constant[99], Property("99", "last"));
}

TEST(PropertyChildrenTest, OperatorByPosition_TakesLiteralsOfEveryIntegerType) {
    Property tree = Numbered(2);
    EXPECT_EQ(tree[0].GetInt64(), 0);
    EXPECT_EQ(tree[0U].GetInt64(), 0);
    EXPECT_EQ(tree[1L].GetInt64(), 1);
    EXPECT_EQ(tree[1ULL].GetInt64(), 1);
    EXPECT_EQ(std::as_const(tree)[0].GetInt64(), 0);
}

template <typename Tree>
void ExpectNoPosition(Tree& tree, std::size_t position, const std::string& name, const std::string& description) {
    const Property before(tree);
    ExpectPropertyFailure<PropertyException>([&] { tree[position]; },
                                             {name, tree.GetType(), "operator[]", description});
    EXPECT_EQ(tree, before);
}

TEST(PropertyChildrenTest, OperatorByPosition_OutOfRangeThrows) {
    Property tree = Numbered(2);
    Property empty("empty");
    Property leaf("leaf", "text");
    ExpectNoPosition(tree, 2, "2", "\"tree\" has no child at position 2: it has 2");
    ExpectNoPosition(std::as_const(tree), 2, "2", "\"tree\" has no child at position 2: it has 2");
    ExpectNoPosition(tree, static_cast<std::size_t>(-1), "18446744073709551615",
                     "\"tree\" has no child at position 18446744073709551615: it has 2");
    ExpectNoPosition(empty, 0, "0", "\"empty\" has no child at position 0: it has 0");
    ExpectNoPosition(leaf, 0, "0", "\"leaf\" has no child at position 0: it has 0");
}

TEST(PropertyChildrenTest, ChildExists_SeesDirectChildrenOnly) {
    Property tree("tree");
    tree.SetChild("child").SetChild("grandchild");
    EXPECT_TRUE(tree.ChildExists("child"));
    EXPECT_FALSE(tree.ChildExists("grandchild"));
    EXPECT_FALSE(tree.ChildExists("tree"));
    EXPECT_FALSE(tree.ChildExists(""));
    EXPECT_FALSE(Property("leaf", "text").ChildExists("text"));
    EXPECT_FALSE(Property().ChildExists(""));
}

TEST(PropertyChildrenTest, FindChild_GivesThePositionOrTheEnd) {
    Property tree = Numbered(10);
    const Property& constant = tree;
    EXPECT_EQ(tree.FindChild("0"), tree.begin());
    EXPECT_EQ(&*tree.FindChild("7"), &tree[7]);
    EXPECT_EQ(tree.FindChild("7")->GetInt64(), 7);
    EXPECT_EQ(std::distance(constant.begin(), constant.FindChild("7")), 7);
    EXPECT_EQ(tree.FindChild("10"), tree.end());
    EXPECT_EQ(constant.FindChild("10"), constant.end());
    EXPECT_EQ(constant.FindChild("3"), tree.FindChild("3"));
    *tree.FindChild("7") = "changed";
    EXPECT_EQ(constant["7"].GetString(), "changed");
}

TEST(PropertyChildrenTest, FindChild_OnAPropertyWithoutChildrenGivesTheEnd) {
    for (Property& leaf : OneLeafOfEachType()) {
        EXPECT_EQ(leaf.FindChild("leaf"), leaf.end());
        EXPECT_EQ(std::as_const(leaf).FindChild(""), std::as_const(leaf).end());
    }
    Property node("node");
    EXPECT_EQ(node.FindChild("node"), node.end());
}

TEST(PropertyChildrenTest, FindChild_GivesTheFirstOfSeveral) {
    Property tree("tree");
    tree.CreateChildT<long long>("other", 0);
    tree.CreateChildT<long long>("twin", 1);
    tree.CreateChildT<long long>("twin", 2);
    EXPECT_EQ(std::distance(tree.begin(), tree.FindChild("twin")), 1);
}

TEST(PropertyChildrenTest, SetChildByName_AppendsAnEmptyNode) {
    Property tree = Numbered(1);
    Property& child = tree.SetChild("child");
    EXPECT_EQ(child, Property("child"));
    EXPECT_EQ(Names(tree), (std::vector<std::string>{"0", "child"}));
    EXPECT_EQ(&child, &tree[1]);
}

TEST(PropertyChildrenTest, SetChildByName_MakesAnExistingChildAnEmptyNodeInPlace) {
    Property tree = Numbered(3);
    tree.SetChild("1");
    EXPECT_EQ(Names(tree), (std::vector<std::string>{"0", "1", "2"}));
    EXPECT_EQ(tree["1"], Property("1"));
}

TEST(PropertyChildrenTest, SetChildWithATree_AppendsACopyUnderTheNameGiven) {
    Property tree = Numbered(1);
    Property value("its own name");
    value.CreateChildT<std::string>("key", "value");
    Property& child = tree.SetChild("metadata", value);
    EXPECT_EQ(&child, &tree["metadata"]);
    EXPECT_EQ(child.GetName(), "metadata");
    EXPECT_EQ(child["key"].GetString(), "value");
    EXPECT_FALSE(tree.ChildExists("its own name"));
    value["key"] = "later";
    EXPECT_EQ(child["key"].GetString(), "value");
}

TEST(PropertyChildrenTest, SetChildWithATree_ReplacesTheFirstOfThatNameInPlace) {
    Property tree("tree");
    tree.CreateChildT<long long>("first", 1);
    tree.CreateChildT<long long>("twin", 2);
    tree.CreateChildT<long long>("twin", 3);
    tree.SetChild("twin", Property("other", Ratio(1, 2)));
    EXPECT_EQ(Names(tree), (std::vector<std::string>{"first", "twin", "twin"}));
    EXPECT_EQ(tree[1], Property("twin", Ratio(1, 2)));
    EXPECT_EQ(tree[2], Property("twin", 3));
}

TEST(PropertyChildrenTest, SetChildWithATree_TakesLeavesAndNothing) {
    Property tree("tree");
    tree.SetChild("leaf", Property("", "text"));
    tree.SetChild("nothing", Property());
    EXPECT_EQ(tree["leaf"], Property("leaf", "text"));
    EXPECT_EQ(tree["nothing"].GetType(), PropertyTypes::None);
    EXPECT_EQ(tree["nothing"].GetName(), "nothing");
}

TEST(PropertyChildrenTest, SetChild_OnALeafThrowsAndChangesNothing) {
    ExpectNotApplicableToLeaves("SetChild", [](Property& leaf) { leaf.SetChild("child"); });
    ExpectNotApplicableToLeaves("SetChild", [](Property& leaf) { leaf.SetChild("child", Property("other")); });
}

TEST(PropertyChildrenTest, Add_AppendsEvenBesideAnotherOfThatName) {
    Property tree("tree");
    Property& first = tree.Add(Property("twin", 1));
    Property& second = tree.Add(Property("twin", 2));
    EXPECT_EQ(tree.Count(), 2U);
    EXPECT_EQ(&first, &tree[0]);
    EXPECT_EQ(&second, &tree[1]);
    EXPECT_EQ(second, Property("twin", 2));
}

TEST(PropertyChildrenTest, Add_TakesTheWholeTreeOver) {
    Property tree("tree");
    Property child = Numbered(10);
    const Property* const grandchild = &child[5];
    EXPECT_EQ(tree.Add(std::move(child)), Numbered(10));
    EXPECT_EQ(&tree["tree"][5], grandchild);
}

TEST(PropertyChildrenTest, Add_OnALeafThrowsAndLeavesTheArgument) {
    Property child = Numbered(3);
    ExpectNotApplicableToLeaves("Add", [&](Property& leaf) { leaf.Add(std::move(child)); });
    EXPECT_EQ(child, Numbered(3));
}

TEST(PropertyChildrenTest, RemoveChild_OfNothingDoesNothing) {
    Property tree = Numbered(3);
    tree.RemoveChild("3");
    tree.RemoveChild("");
    EXPECT_EQ(tree, Numbered(3));
    for (Property& leaf : OneLeafOfEachType()) {
        const Property before(leaf);
        leaf.RemoveChild("leaf");
        leaf.RemoveChild("");
        EXPECT_EQ(leaf, before);
    }
}

TEST(PropertyChildrenTest, RemoveChild_RemovesTheFirstOfThatName) {
    Property tree("tree");
    tree.CreateChildT<long long>("twin", 1);
    tree.CreateChildT<long long>("other", 2);
    tree.CreateChildT<long long>("twin", 3);
    tree.RemoveChild("twin");
    EXPECT_EQ(Names(tree), (std::vector<std::string>{"other", "twin"}));
    EXPECT_EQ(tree["twin"].GetInt64(), 3);
}

TEST(PropertyChildrenTest, RemoveChild_TakesANameThatItRemoves) {
    Property tree = Numbered(6);
    tree.RemoveChild(tree[4].GetName());
    EXPECT_EQ(Names(tree), (std::vector<std::string>{"0", "1", "2", "3", "5"}));
}

TEST(PropertyChildrenTest, RemoveChild_OfTheLastOneLeavesAnEmptyNode) {
    Property tree = Numbered(1);
    tree.RemoveChild("0");
    EXPECT_EQ(tree, Property("tree"));
    EXPECT_EQ(tree.begin(), tree.end());
    tree.CreateChildT<long long>("0", 0);
    EXPECT_EQ(tree, Numbered(1));
}

// Removes children in the order given from a node of `count`, and compares with the same done to a plain list.
void ExpectRemoval(int count, const std::vector<int>& order) {
    Property tree = Numbered(count);
    std::vector<std::string> names = Names(tree);
    for (const int number : order) {
        const std::string name = std::to_string(number);
        tree.RemoveChild(name);
        names.erase(std::find(names.begin(), names.end(), name));
        ASSERT_EQ(Names(tree), names) << "after removing " << name << " of " << count;
        ASSERT_EQ(tree.Count(), names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            ASSERT_EQ(tree[i].GetName(), names[i]);
        }
    }
    tree.CreateChildT<long long>("new", 1);
    names.emplace_back("new");
    EXPECT_EQ(Names(tree), names);
}

TEST(PropertyChildrenTest, RemoveChild_FromEveryPlaceAcrossBlocks) {
    constexpr int count = 40;
    for (int removed = 0; removed < count; ++removed) {
        ExpectRemoval(count, {removed});
    }
}

TEST(PropertyChildrenTest, RemoveChild_OfWholeRunsInTheMiddle) {
    for (int begin = 0; begin < 36; ++begin) {
        ExpectRemoval(40, {begin, begin + 1, begin + 2, begin + 3});
        ExpectRemoval(40, {begin + 3, begin + 2, begin + 1, begin});
    }
    for (int count = 1; count < 20; ++count) {
        std::vector<int> order;
        for (int i = 0; i < count; ++i) {
            order.push_back(i);
        }
        ExpectRemoval(count, order);
        std::reverse(order.begin(), order.end());
        ExpectRemoval(count, order);
    }
}

RC_GTEST_PROP(PropertyChildrenTest, AddAndRemoveChild_KeepTheOrderOfAPlainList, ()) {
    Property tree("tree");
    std::vector<std::string> names;
    int created = 0;
    for (const int step : *rc::gen::container<std::vector<int>>(200, rc::gen::inRange(0, 1000))) {
        if (step % 5 < 3 || names.empty()) {
            names.push_back(std::to_string(created++));
            tree.Add(Property(names.back()));
        } else {
            const auto victim = names.begin() + step % static_cast<int>(names.size());
            tree.RemoveChild(*victim);
            names.erase(victim);
        }
        RC_ASSERT(Names(tree) == names);
        RC_ASSERT(tree.Count() == names.size());
    }
    RC_ASSERT(Names(Property(tree)) == names);
}

TEST(PropertyChildrenTest, Iteration_VisitsTheChildrenInOrderAndLetsThemChange) {
    Property tree = Numbered(50);
    for (Property& child : tree) {
        child = child.GetInt64() * 2;
    }
    long long expected = 0;
    for (const Property& child : std::as_const(tree)) {
        EXPECT_EQ(child.GetInt64(), expected);
        expected += 2;
    }
    EXPECT_EQ(expected, 100);
    EXPECT_EQ(std::distance(tree.begin(), tree.end()), 50);
}

TEST(PropertyChildrenTest, Iteration_OnALeafVisitsNothing) {
    for (Property& leaf : OneLeafOfEachType()) {
        EXPECT_EQ(leaf.begin(), leaf.end());
        EXPECT_EQ(leaf.Count(), 0U);
    }
}

TEST(PropertyChildrenTest, Iterator_StepsBeforeAndAfter) {
    Property tree = Numbered(5);
    Property::iterator position = tree.begin();
    EXPECT_EQ((position++)->GetInt64(), 0);
    EXPECT_EQ((++position)->GetInt64(), 2);
    const Property::const_iterator constant = position;
    EXPECT_EQ(constant, position);
    EXPECT_NE(constant, std::as_const(tree).begin());
    EXPECT_EQ(Property::iterator(), tree.end());
}

TEST(PropertyChildrenTest, References_ToSiblingsStayValidWhileTenThousandAreAdded) {
    constexpr int count = 10000;
    Property tree("tree");
    std::vector<Property*> children;
    for (int i = 0; i < count; ++i) {
        children.push_back(&tree.CreateChildT<long long>(std::to_string(i), i));
    }
    std::size_t i = 0;
    for (Property& child : tree) {
        ASSERT_EQ(&child, children[i]);
        ASSERT_EQ(children[i]->GetInt64(), static_cast<long long>(i));
        ++i;
    }
    EXPECT_EQ(i, 10000U);
}

TEST(PropertyChildrenTest, Iterators_StayValidWhileChildrenAreAdded) {
    Property tree = Numbered(100);
    std::vector<Property::iterator> positions;
    for (Property::iterator position = tree.begin(); position != tree.end(); ++position) {
        positions.push_back(position);
    }
    for (int i = 100; i < 5000; ++i) {
        tree.CreateChildT<long long>(std::to_string(i), i);
    }
    for (std::size_t i = 0; i < positions.size(); ++i) {
        ASSERT_EQ(positions[i]->GetInt64(), static_cast<long long>(i));
        ASSERT_EQ(std::distance(positions[i], tree.end()), 5000 - static_cast<std::ptrdiff_t>(i));
    }
}

TEST(PropertyChildrenTest, References_StayValidThroughEveryWayOfAdding) {
    Property tree = Numbered(1);
    Property& first = tree[0];
    for (int i = 1; i < 1000; ++i) {
        tree.SetChild("a" + std::to_string(i));
        tree.SetChild("b" + std::to_string(i), first);
        tree.Add(Property("c", i));
        tree.SetChildT<bool>("d" + std::to_string(i), true);
        ASSERT_EQ(&tree[0], &first);
    }
    EXPECT_EQ(first, Property("0", 0));
    EXPECT_EQ(tree.Count(), 3997U);
}

TEST(PropertyChildrenTest, References_ToTheSiblingsBeforeARemovedChildStayValid) {
    Property tree = Numbered(100);
    std::vector<Property*> before;
    for (Property& child : tree) {
        before.push_back(&child);
    }
    tree.RemoveChild("60");
    for (std::size_t i = 0; i < 60; ++i) {
        ASSERT_EQ(&tree[i], before[i]);
    }
}

}  // namespace
}  // namespace Quenzo::Core
