#pragma once

#include <foundation/Export.h>
#include <string>

namespace Quenzo::Conf {

/// Keys of a preset, its stream types and the prefixes of its tags (IPreset::KEY_*, STREAM_TYPE_*, *_TAG_PREFIX and
/// others). Documents and presets in storage hold the values, which are compared byte for byte: a value never changes.
struct QUENZO_API PresetVocabulary {
#define QUENZO_TEXT(name, value) static const std::string name;
#include <Conf/Interfaces/Vocabulary/Preset.def>
#undef QUENZO_TEXT
};

}  // namespace Quenzo::Conf
