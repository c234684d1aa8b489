#pragma once

#include <foundation/Export.h>
#include <string>

namespace Quenzo::Conf {

/// Keys and names of the trees a transcoding graph carries (ITranscodingMetaGraph::KEY_*, MERGE_*, CONTROLLED_BY).
/// Documents and presets in storage hold the values, which are compared byte for byte: a value never changes.
struct QUENZO_API GraphVocabulary {
#define QUENZO_TEXT(name, value) static const std::string name;
#include <Conf/Interfaces/Vocabulary/Graph.def>
#undef QUENZO_TEXT
};

}  // namespace Quenzo::Conf
