#pragma once

#include <foundation/Export.h>
#include <string>

namespace Quenzo::Conf {

/// Keys of a file description, container ids, display names of file groups, separators of additional parameters, and
/// discs (IFormatFile::TAG_*, FORMAT_*, GROUP_*, POSTFIX_*, DVD_*, DISK_*). Documents and presets in storage hold the
/// values, which are compared byte for byte: a value never changes.
struct QUENZO_API FileVocabulary {
#define QUENZO_TEXT(name, value) static const std::string name;
#include <Conf/Interfaces/Vocabulary/FileFormats.def>
#include <Conf/Interfaces/Vocabulary/FileKeys.def>
#define QUENZO_NUMBER(name, value, meaning) static constexpr long long name = value;
#include <Conf/Interfaces/Vocabulary/FileWords.def>
#undef QUENZO_TEXT
};

}  // namespace Quenzo::Conf
