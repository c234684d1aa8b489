#pragma once

#include <foundation/Export.h>
#include <string>

namespace Quenzo::Conf {

/// Keys of an audio description with the words kept under them, and audio codec ids (IFormatCodecAudio::TAG_*,
/// CODEC_ID_*, ENCODER_LOSSLESS, FILTER_FAMILY_FFMPEG). Documents and presets in storage hold the values, which are
/// compared byte for byte: a value never changes.
struct QUENZO_API AudioVocabulary {
#define QUENZO_TEXT(name, value) static const std::string name;
#include <Conf/Interfaces/Vocabulary/AudioCodecIds.def>
#include <Conf/Interfaces/Vocabulary/AudioKeys.def>
#undef QUENZO_TEXT
};

}  // namespace Quenzo::Conf
