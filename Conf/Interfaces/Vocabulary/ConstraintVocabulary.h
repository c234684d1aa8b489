#pragma once

#include <foundation/Export.h>
#include <string>

namespace Quenzo::Conf {

/// Ids of the descriptions of property constraints (IPropertyConstraint::DESCRIPTION_ID_*). Documents and presets in
/// storage hold the values, which are compared byte for byte: a value never changes.
struct QUENZO_API ConstraintVocabulary {
#define QUENZO_TEXT(name, value) static const std::string name;
#include <Conf/Interfaces/Vocabulary/Constraint.def>
#undef QUENZO_TEXT
};

}  // namespace Quenzo::Conf
