#pragma once

#include <Conf/Interfaces/IPreset.h>
#include <foundation/Export.h>
#include <foundation/Property.h>
#include <foundation/RefCount.h>

namespace Quenzo::Conf {

/// A preset that is nothing but its tree. Its streams are the children of the KEY_STREAMS child, each named after its
/// type (one of the STREAM_TYPE_ constants); without that child it has none.
class QUENZO_API TreePreset : public RefCounted<IPreset> {
public:
    /// Raises PresetException when the tree is not a node.
    static SP<TreePreset> Create(Core::Property tree);

    std::size_t GetStreamCount() const override;
    void GetStreamIndices(const std::string& streamType, std::vector<std::uint32_t>& indices) const override;
    const Core::Property& GetProperty() const override;

private:
    explicit TreePreset(Core::Property tree);

    Core::Property tree_;
};

}  // namespace Quenzo::Conf
