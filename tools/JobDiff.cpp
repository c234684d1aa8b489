#include <tools/JobDiff.h>

#include <foundation/DataStream.h>
#include <foundation/PropertySerializer.h>

#include <fmt/format.h>

#include <map>
#include <utility>

namespace Quenzo::Tools {

namespace {

using Change = Difference::Change;
using Conf::ITranscodingMetaGraph;
using Core::Property;
using NodeId = ITranscodingMetaGraph::NodeId;

std::string ToJson(const Property& tree) {
    const auto output = Core::MemoryOutput::Create();
    Core::PropertySerializer::Write(tree, output);
    return output->GetBytes();
}

// A child's name, and how many of that name stand before it.
using ChildKey = std::pair<std::string, std::size_t>;
using Children = std::vector<std::pair<ChildKey, const Property*>>;

Children ChildrenOf(const Property& tree) {
    Children children;
    std::map<std::string, std::size_t> counts;
    for (const Property& child : tree) {
        children.emplace_back(ChildKey(child.GetName(), counts[child.GetName()]++), &child);
    }
    return children;
}

std::string Joined(const std::string& path, const std::string& name) { return path.empty() ? name : path + '/' + name; }

class TreeComparison {
public:
    TreeComparison(const std::string& where, std::vector<Difference>& differences)
        : where_(where), differences_(differences) {}

    void Compare(const std::string& path, const Property& before, const Property& after) {
        if (before == after) {
            return;
        }
        const bool areNodes = before.GetType() == PropertyTypes::Node && after.GetType() == PropertyTypes::Node;
        if (!areNodes) {
            differences_.push_back({Change::Changed, where_, path, ToJson(before), ToJson(after)});
            return;
        }
        const std::size_t found = differences_.size();
        CompareChildren(path, ChildrenOf(before), ChildrenOf(after));
        if (differences_.size() == found) {
            // The same children in another order, which counts.
            differences_.push_back({Change::Changed, where_, path, ToJson(before), ToJson(after)});
        }
    }

private:
    void CompareChildren(const std::string& path, const Children& before, const Children& after) {
        const std::map<ChildKey, const Property*> old(before.begin(), before.end());
        const std::map<ChildKey, const Property*> present(after.begin(), after.end());
        for (const auto& [key, child] : before) {
            const auto other = present.find(key);
            if (other == present.end()) {
                differences_.push_back({Change::Removed, where_, Joined(path, key.first), ToJson(*child), {}});
            } else {
                Compare(Joined(path, key.first), *child, *other->second);
            }
        }
        for (const auto& [key, child] : after) {
            if (old.find(key) == old.end()) {
                differences_.push_back({Change::Added, where_, Joined(path, key.first), {}, ToJson(*child)});
            }
        }
    }

    const std::string& where_;
    std::vector<Difference>& differences_;
};

// What a job consists of, by names that two jobs can share.
using Parts = std::vector<std::pair<std::string, Property>>;

Parts PartsOf(const ITranscodingMetaGraph& job) {
    Parts parts;
    std::map<std::string, int> counts;
    const auto add = [&](std::string name, const Property& tree) {
        // A loaded document may have two nodes of one id.
        const int count = ++counts[name];
        parts.emplace_back(count == 1 ? std::move(name) : fmt::format("{} (no. {})", name, count), tree);
    };
    job.VisitNodes([&](NodeId node, const Property& tree) { add(fmt::format("node {}", node), tree); });
    job.VisitLinks([&](ITranscodingMetaGraph::LinkId /*link*/, NodeId from, NodeId to, const Property& tree) {
        add(fmt::format("link {} -> {}", from, to), tree);
    });
    return parts;
}

std::string Described(const Property& tree) { return fmt::format("{} {}", tree.GetName(), ToJson(tree)); }

}  // namespace

void CompareTrees(const std::string& where, const Property& before, const Property& after,
                  std::vector<Difference>& differences) {
    if (before.GetName() != after.GetName()) {
        differences.push_back({Change::Changed, where, {}, Described(before), Described(after)});
        return;
    }
    TreeComparison(where, differences).Compare(before.GetName(), before, after);
}

std::vector<Difference> CompareJobs(const ITranscodingMetaGraph& before, const ITranscodingMetaGraph& after) {
    const Parts oldParts = PartsOf(before);
    const Parts newParts = PartsOf(after);
    const std::map<std::string, Property> old(oldParts.begin(), oldParts.end());
    const std::map<std::string, Property> present(newParts.begin(), newParts.end());
    std::vector<Difference> differences;
    for (const auto& [name, tree] : oldParts) {
        const auto other = present.find(name);
        if (other == present.end()) {
            differences.push_back({Change::Removed, name, {}, Described(tree), {}});
        } else {
            CompareTrees(name, tree, other->second, differences);
        }
    }
    for (const auto& [name, tree] : newParts) {
        if (old.find(name) == old.end()) {
            differences.push_back({Change::Added, name, {}, {}, Described(tree)});
        }
    }
    return differences;
}

}  // namespace Quenzo::Tools
