#include <Conf/Interfaces/IPreset.h>

#include <Conf/Interfaces/Vocabulary/Texts.h>
#include <foundation/Throw.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

namespace Quenzo::Conf {

namespace {

struct StreamType {
    std::string_view text;
    MediaType type;
};

constexpr auto mapStringToMediaType = std::to_array<StreamType>({
    {Detail::PresetText::STREAM_TYPE_AUDIO, MediaType::Audio},
    {Detail::PresetText::STREAM_TYPE_VIDEO, MediaType::Video},
    {Detail::PresetText::STREAM_TYPE_SUBTITLES_VIDEO, MediaType::SubtitlesVideo},
    {Detail::PresetText::STREAM_TYPE_SUBTITLES_TEXT, MediaType::SubtitlesText},
});

template <typename Predicate>
const StreamType& FindStreamType(Predicate holds, const char* message) {
    const auto* const found = std::find_if(mapStringToMediaType.begin(), mapStringToMediaType.end(), holds);
    if (found == mapStringToMediaType.end()) {
        QUENZO_THROW(std::logic_error(message));
    }
    return *found;
}

}  // namespace

MediaType IPreset::MediaTypeFromPresetStreamType(const std::string& streamType) {
    return FindStreamType([&streamType](const StreamType& row) { return row.text == streamType; },
                          "Unknown preset stream type")
        .type;
}

std::string IPreset::PresetStreamTypeFormMediaType(MediaType type) {
    return std::string(
        FindStreamType([type](const StreamType& row) { return row.type == type; }, "Unknown media type").text);
}

}  // namespace Quenzo::Conf
