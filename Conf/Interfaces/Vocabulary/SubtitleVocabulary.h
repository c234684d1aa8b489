#pragma once

#include <foundation/Export.h>
#include <string>

namespace Quenzo::Conf {

/// Keys of a subtitle description, subtitle codec ids and the words of text encodings (IFormatCodecSubtitle::TAG_*,
/// CODEC_ID_*, SUBTITLE_ENCODING_*, NATIVE_CHARSET_ENCODING). Documents and presets in storage hold the values, which
/// are compared byte for byte: a value never changes.
struct QUENZO_API SubtitleVocabulary {
#define QUENZO_TEXT(name, value) static const std::string name;
#include <Conf/Interfaces/Vocabulary/SubtitleCodecIds.def>
#include <Conf/Interfaces/Vocabulary/SubtitleKeys.def>
#undef QUENZO_TEXT
};

}  // namespace Quenzo::Conf
