#include <Conf/Interfaces/TreePreset.h>

#include <Conf/Interfaces/Exceptions.h>
#include <foundation/Throw.h>

#include <utility>

namespace Quenzo::Conf {

SP<TreePreset> TreePreset::Create(Core::Property tree) {
    if (tree.GetType() != PropertyTypes::Node) {
        PresetException failure;
        failure << Exception::TagDescription("a preset is a tree with named children, and \"" + tree.GetName() +
                                             "\" is a single value");
        QUENZO_THROW(failure);
    }
    return SP<TreePreset>(new TreePreset(std::move(tree)));
}

TreePreset::TreePreset(Core::Property tree) : tree_(std::move(tree)) {}

std::size_t TreePreset::GetStreamCount() const {
    const auto streams = tree_.FindChild(KEY_STREAMS);
    return streams != tree_.end() ? streams->Count() : 0;
}

void TreePreset::GetStreamIndices(const std::string& streamType, std::vector<std::uint32_t>& indices) const {
    indices.clear();
    const auto streams = tree_.FindChild(KEY_STREAMS);
    if (streams == tree_.end()) {
        return;
    }
    std::uint32_t index = 0;
    for (const Core::Property& stream : *streams) {
        if (stream.GetName() == streamType) {
            indices.push_back(index);
        }
        ++index;
    }
}

const Core::Property& TreePreset::GetProperty() const { return tree_; }

}  // namespace Quenzo::Conf
