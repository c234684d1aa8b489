#pragma once

#include <foundation/Export.h>
#include <string>

namespace Quenzo::Conf {

/// Keys of every stream description, codec ids of no single kind of stream, and the bounds of stream id and quality
/// (IFormatCodec::TAG_*, CODEC_ID_*, DEFAULT_STREAM_ID, MIN_QUALITY, MAX_QUALITY). Documents and presets in storage
/// hold the values, which are compared byte for byte: a value never changes.
struct QUENZO_API CodecVocabulary {
#define QUENZO_TEXT(name, value) static const std::string name;
#include <Conf/Interfaces/Vocabulary/CodecIds.def>
#define QUENZO_NUMBER(name, value, meaning) static constexpr long long name = value;
#include <Conf/Interfaces/Vocabulary/CodecKeys.def>
#undef QUENZO_TEXT
};

}  // namespace Quenzo::Conf
