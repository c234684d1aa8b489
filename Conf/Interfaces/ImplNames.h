#pragma once

#include <foundation/Export.h>
#include <string>

/// Names of the processing back ends that a graph node or a codec may be bound to. Documents and presets in storage
/// hold the values, which are compared byte for byte: a value never changes.
namespace Quenzo::Proc::ImplNames {

#define QUENZO_TEXT(name, value) extern QUENZO_API const std::string name;
#include <Conf/Interfaces/Vocabulary/ImplNames.def>
#undef QUENZO_TEXT

}  // namespace Quenzo::Proc::ImplNames
