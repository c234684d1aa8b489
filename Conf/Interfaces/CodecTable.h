#pragma once

#include <Conf/Interfaces/FixedText.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Quenzo::Detail {

enum class CodecKind : std::uint8_t { Video, Audio, Subtitle, Other };

/// Whether a codec id stands in the catalogue of its kind.
enum class Catalogue : std::uint8_t { Listed, Unlisted };

/// What is known of one codec id. The display name is empty when it is derived from the id.
struct CodecRow {
    CodecId id;
    CodecKind kind;
    Catalogue catalogue;
    FixedText<18> displayName;
};

// The names that the rows use for themselves.
inline constexpr Catalogue Listed = Catalogue::Listed;
inline constexpr Catalogue Unlisted = Catalogue::Unlisted;
inline constexpr std::string_view Derived;

/// Every codec id that has a constant: video, audio, subtitles, others, each kind in the order of its catalogue.
inline constexpr auto kCodecs = std::to_array<CodecRow>({
#define QUENZO_CODEC(name, catalogue, display, meaning) {#name, CodecKind::Video, catalogue, display},
#include <Conf/Interfaces/Vocabulary/VideoCodecIds.def>
#define QUENZO_CODEC(name, catalogue, display, meaning) {#name, CodecKind::Audio, catalogue, display},
#define QUENZO_CODEC_AS(name, value, catalogue, display, meaning) {value, CodecKind::Audio, catalogue, display},
#include <Conf/Interfaces/Vocabulary/AudioCodecIds.def>
#define QUENZO_CODEC(name, catalogue, display, meaning) {#name, CodecKind::Subtitle, catalogue, display},
#include <Conf/Interfaces/Vocabulary/SubtitleCodecIds.def>
#define QUENZO_CODEC(name, catalogue, display, meaning) {#name, CodecKind::Other, catalogue, display},
#include <Conf/Interfaces/Vocabulary/CodecIds.def>
});

/// The row of a codec id, or null when no constant has that value.
const CodecRow* FindCodec(std::string_view id) noexcept;

}  // namespace Quenzo::Detail
