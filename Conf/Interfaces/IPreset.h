#pragma once

#include <Conf/Interfaces/MediaType.h>
#include <Conf/Interfaces/Vocabulary/PresetVocabulary.h>
#include <foundation/Export.h>
#include <foundation/Property.h>
#include <foundation/RefCount.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Quenzo::Conf {

/// An export preset: which container to write and how to encode each of its streams. Presets are kept outside this
/// library; implement this interface to hand one in.
class QUENZO_API IPreset : public IRefCountable, public PresetVocabulary {
public:
    /// The kind of stream that a stream type (one of the STREAM_TYPE_ constants) stands for. Raises std::logic_error
    /// for any other text.
    static MediaType MediaTypeFromPresetStreamType(const std::string& streamType);

    /// The stream type of a kind of stream. Raises std::logic_error for MediaType::None and for values that are no
    /// kind.
    static std::string PresetStreamTypeFormMediaType(MediaType type);

    /// The number of streams that the preset describes.
    virtual std::size_t GetStreamCount() const = 0;

    /// Replaces what `indices` holds by the positions, counted from 0, of the streams of one type (one of the
    /// STREAM_TYPE_ constants). It is left empty when there are none; no text is refused.
    virtual void GetStreamIndices(const std::string& streamType, std::vector<std::uint32_t>& indices) const = 0;

    /// The whole preset as a tree; its streams stand under KEY_STREAMS. Valid as long as the preset lives unchanged.
    virtual const Core::Property& GetProperty() const = 0;
};

}  // namespace Quenzo::Conf
