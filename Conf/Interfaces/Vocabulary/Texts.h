#pragma once

#include <string_view>

/// The texts of the vocabulary as the compiler can read them, for tables and look-ups that are made by it. The
/// constants themselves are strings, which only exist once the library is loaded.
namespace Quenzo::Detail {

#define QUENZO_TEXT(name, value) static constexpr std::string_view name = value;

struct CodecText {
#include <Conf/Interfaces/Vocabulary/CodecIds.def>
};

struct VideoText {
#include <Conf/Interfaces/Vocabulary/VideoCodecIds.def>
};

struct AudioText {
#include <Conf/Interfaces/Vocabulary/AudioCodecIds.def>
#include <Conf/Interfaces/Vocabulary/AudioKeys.def>
};

struct FileText {
#include <Conf/Interfaces/Vocabulary/FileFormats.def>
#include <Conf/Interfaces/Vocabulary/FileWords.def>
};

struct ImplText {
#include <Conf/Interfaces/Vocabulary/ImplNames.def>
};

struct PresetText {
#include <Conf/Interfaces/Vocabulary/Preset.def>
};

#undef QUENZO_TEXT

}  // namespace Quenzo::Detail
