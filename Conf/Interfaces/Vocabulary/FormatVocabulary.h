#pragma once

#include <foundation/Export.h>
#include <string>

namespace Quenzo::Conf {

/// Keys of every description (IFormat::TAG_*). Documents and presets in storage hold the values, which are compared
/// byte for byte: a value never changes.
struct QUENZO_API FormatVocabulary {
#define QUENZO_TEXT(name, value) static const std::string name;
#include <Conf/Interfaces/Vocabulary/FormatKeys.def>
#undef QUENZO_TEXT
};

}  // namespace Quenzo::Conf
