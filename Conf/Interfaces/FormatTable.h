#pragma once

#include <Conf/Interfaces/FixedText.h>
#include <Conf/Interfaces/Vocabulary/Texts.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace Quenzo::Detail {

enum class FormatClass : std::uint8_t { Picture, Animation, Raw, Other };

/// What is known of one container. The display name is empty when it has none.
struct FormatRow {
    FormatId id;
    FormatClass kind;
    FixedText<11> displayName;
};

inline constexpr std::string_view Unnamed;

/// Every container that has a constant.
inline constexpr auto kFormats = std::to_array<FormatRow>({
#define QUENZO_FORMAT(name, value, kind, display, meaning) {value, FormatClass::kind, display},
#include <Conf/Interfaces/Vocabulary/FileFormats.def>
});

/// An extension that files of a container have, without a dot.
struct FormatExtension {
    FormatId format;
    FixedText<4> extension;
};

/// In the order of preference, see FormatExtensions.def.
inline constexpr auto kFormatExtensions = std::to_array<FormatExtension>({
#define QUENZO_EXTENSION(format, extension) {FileText::format, extension},
#include <Conf/Interfaces/FormatExtensions.def>
});

/// The row of a container, or null when no constant has that value.
const FormatRow* FindFormat(std::string_view id) noexcept;

}  // namespace Quenzo::Detail
