// Covers what a property tree, its document and its dump do when memory runs out, at each of their allocations: the
// tree is as it was, nothing leaks, and the same call succeeds afterwards.

#include <foundation/Property.h>
#include <foundation/PropertySerializer.h>
#include <tests/faults/EveryAllocation.h>
#include <tests/foundation/PrintProperty.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>

namespace Quenzo::Testing {
namespace {

using Core::MemoryInput;
using Core::MemoryOutput;
using Core::Property;
using Core::PropertySerializer;
using Ratio = boost::rational<long long>;

// Longer than what a string object holds itself, so that every copy of it takes memory.
std::string Long(const std::string& text) { return text + std::string(40, '.'); }

// A tree of three levels with every kind of value, more children than two blocks hold, and a repeated name.
Property MakeTree() {
    Property tree(Long("tree"));
    tree.CreateChildT<bool>(Long("bool"), true);
    tree.CreateChildT<long long>(Long("integer"), 7);
    tree.CreateChildT<Ratio>(Long("ratio"), Ratio(30000, 1001));
    tree.CreateChildT<std::string>(Long("text"), Long("value"));
    tree.Add(Property());
    Property& node = tree.SetChild(Long("node"));
    node.SetChild(Long("inner")).CreateChildT<std::string>(Long("deep"), Long("value"));
    for (int i = 0; i < 30; ++i) {
        tree.CreateChildT<long long>(Long("repeated"), i);
    }
    return tree;
}

struct Trees {
    Property tree = MakeTree();
    Property other = Property(Long("other"), Long("a text of its own"));
};

template <typename Act>
void ExpectAllOrNothingOf(Act act) {
    ExpectAllOrNothing([] { return Trees(); }, act,
                       [](const Trees& trees) { return std::pair(trees.tree, trees.other); });
}

TEST(PropertyAllocationTest, Making_AndTakingApart) {
    ExpectAllOrNothing([] { return Property(); }, [](Property& tree) { tree = MakeTree(); },
                       [](const Property& tree) { return tree; });
}

TEST(PropertyAllocationTest, Copy) {
    ExpectAllOrNothing([] { return std::pair(MakeTree(), Property("copy")); },
                       [](auto& trees) { trees.second = Property(trees.first); },
                       [](const auto& trees) { return trees; });
}

TEST(PropertyAllocationTest, Assign_ATree) {
    ExpectAllOrNothingOf([](Trees& trees) { trees.other = trees.tree; });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree = trees.other; });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree = trees.tree[Long("node")]; });
}

TEST(PropertyAllocationTest, Assign_AText) {
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree = Long("a text instead of the children"); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.other = Long("a text that is longer than the one before"); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree[Long("integer")] = "a text given as a character pointer"; });
}

TEST(PropertyAllocationTest, SetChildT_ThatAppends) {
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChildT<bool>(Long("new"), false); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChildT<long long>(Long("new"), 5); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChildT<Ratio>(Long("new"), Ratio(1, 2)); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChildT<std::string>(Long("new"), Long("text")); });
}

TEST(PropertyAllocationTest, SetChildT_ThatReplaces) {
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChildT<long long>(Long("node"), 5); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChildT<std::string>(Long("node"), Long("text")); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChildT<std::string>(Long("text"), Long("longer text")); });
}

TEST(PropertyAllocationTest, CreateChildT_AtEveryFillOfTheBlocks) {
    for (int present = 0; present < 30; ++present) {
        const auto make = [present] {
            Property tree("tree");
            for (int i = 0; i < present; ++i) {
                tree.CreateChildT<long long>("child", i);
            }
            return tree;
        };
        ExpectAllOrNothing(
            make, [](Property& tree) { tree.CreateChildT<std::string>(Long("new"), Long("text")); },
            [](const Property& tree) { return tree; });
    }
}

TEST(PropertyAllocationTest, SetChild) {
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChild(Long("new")); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChild(Long("node")); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChild(Long("new"), trees.tree); });
    ExpectAllOrNothingOf([](Trees& trees) { trees.tree.SetChild(Long("node"), trees.other); });
}

TEST(PropertyAllocationTest, Add_ThatFailsLeavesItsArgumentAlone) {
    const auto make = [] {
        Trees trees;
        trees.tree = Property("a tree whose first block is not there yet");
        return trees;
    };
    ExpectAllOrNothing(
        make, [](Trees& trees) { trees.tree.Add(std::move(trees.other)); },
        // What was moved from holds something, but nobody says what.
        [](const Trees& trees) {
            return trees.tree.Count() == 0 ? std::pair(trees.tree, trees.other) : std::pair(trees.tree, Property());
        });
}

TEST(PropertyAllocationTest, RemovingMovingComparingAndFinding_TakeNoMemory) {
    Trees trees;
    const Property copy = trees.tree;
    const std::string removed = Long("node");
    const FailingMemory fault(1, Shortage::Lasting);
    EXPECT_TRUE(trees.tree == copy);
    EXPECT_TRUE(trees.tree.ChildExists(removed));
    trees.tree.RemoveChild(removed);
    EXPECT_FALSE(trees.tree.ChildExists(removed));
    trees.other = std::move(trees.tree);
    EXPECT_EQ(trees.other.Count(), copy.Count() - 1);
    EXPECT_FALSE(fault.HasStruck());
}

TEST(PropertyAllocationTest, Comparing_OfManyNodesMayTakeMemory) {
    Property tree("tree");
    for (int i = 0; i < 40; ++i) {
        tree.SetChild("node" + std::to_string(i)).SetChildT<long long>("child", i);
    }
    const Property copy = tree;
    {
        const FailingMemory fault(1, Shortage::Lasting);
        EXPECT_THROW(static_cast<void>(tree == copy), std::bad_alloc);
    }
    EXPECT_TRUE(tree == copy);
}

TEST(PropertyAllocationTest, Write_AndSave) {
    const auto make = [] { return std::tuple(MakeTree(), MemoryOutput::Create(), std::string()); };
    ExpectAllOrNothing(
        make,
        [](auto& objects) {
            auto& [tree, output, text] = objects;
            output = MemoryOutput::Create();
            PropertySerializer::Write(tree, output);
            text = output->GetBytes();
        },
        [](const auto& objects) { return std::pair(std::get<0>(objects), std::get<2>(objects)); });
}

TEST(PropertyAllocationTest, Read_IntoATree) {
    const SP<MemoryOutput> document = MemoryOutput::Create();
    PropertySerializer::Write(MakeTree(), document);
    ExpectAllOrNothing(
        [] { return Property("loaded", Long("a text that stays")); },
        [&](Property& tree) { PropertySerializer::Read(tree, MemoryInput::Create(document->GetBytes())); },
        [](const Property& tree) { return tree; });
}

TEST(PropertyAllocationTest, Read_OfDeepAndLongTexts) {
    constexpr std::size_t levels = 60;
    std::string nested;
    for (std::size_t level = 0; level < levels; ++level) {
        nested += R"({"a name of more than thirty characters":)";
    }
    nested += '"' + std::string(100000, 'x') + '"' + std::string(levels, '}');
    ExpectAllOrNothing([] { return Property("loaded"); },
                       [&](Property& tree) { PropertySerializer::Read(tree, MemoryInput::Create(nested)); },
                       [](const Property& tree) { return tree; });
}

TEST(PropertyAllocationTest, Dump_IntoAStreamThatReportsFailures) {
    const auto make = [] {
        std::ostringstream stream;
        stream.exceptions(std::ios::badbit);
        return std::pair(MakeTree(), std::move(stream));
    };
    const Property tree = MakeTree();
    auto whole = make();
    PrintCorePropertyValue(whole.first, 2, whole.second, true, true);
    const long failures = FailEveryAllocation(
        make, [](auto& objects) { PrintCorePropertyValue(objects.first, 2, objects.second, true, true); },
        [&](auto& objects, bool hasFailed) {
            EXPECT_EQ(objects.first, tree);
            EXPECT_TRUE(hasFailed || objects.second.str() == whole.second.str());
        });
    EXPECT_GT(failures, 20);
}

}  // namespace
}  // namespace Quenzo::Testing
