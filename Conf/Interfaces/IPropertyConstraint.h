#pragma once

#include <Conf/Interfaces/Vocabulary/ConstraintVocabulary.h>
#include <foundation/Export.h>
#include <foundation/RefCount.h>

namespace Quenzo::Conf {

/// A rule that the value of a property must keep, such as "a frame dimension is even". This library owns the ids that
/// describe the rules; the rules themselves belong to its clients.
class QUENZO_API IPropertyConstraint : public IRefCountable, public ConstraintVocabulary {};

}  // namespace Quenzo::Conf
