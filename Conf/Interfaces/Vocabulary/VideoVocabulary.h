#pragma once

#include <foundation/Export.h>
#include <string>

namespace Quenzo::Conf {

/// Keys of a video description with the words kept under them, video codec ids, and the highest bit rate
/// (IFormatCodecVideo::TAG_*, CODEC_ID_*, ENCODER_LOSSLESS, MAX_VIDEO_BITRATE). Documents and presets in storage hold
/// the values, which are compared byte for byte: a value never changes.
struct QUENZO_API VideoVocabulary {
#define QUENZO_TEXT(name, value) static const std::string name;
#include <Conf/Interfaces/Vocabulary/VideoCodecIds.def>
#define QUENZO_NUMBER(name, value, meaning) static constexpr long long name = value;
#include <Conf/Interfaces/Vocabulary/VideoKeys.def>
#undef QUENZO_TEXT
};

}  // namespace Quenzo::Conf
