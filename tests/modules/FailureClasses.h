#pragma once

// The failures that the libraries have classes for, in a fixed order.

#include <Conf/Interfaces/Exceptions.h>
#include <foundation/Exception.h>

#include <cstddef>
#include <tuple>

namespace Quenzo::Testing {

/// Every class of both libraries.
using FailureClasses =
    std::tuple<Exception, Core::CoreException, Core::PropertyException, Core::MethodIsNotApplicable,
               Core::StreamException, Conf::ConfException, Conf::FormatException, Conf::ProfileException,
               Conf::LinkExists, Conf::LinkNotFound, Conf::BadJson, Conf::NodeNotFound, Conf::PresetException,
               Conf::ConstraintException, Conf::ConstraintIsNotApplicableForTypeException,
               Conf::CheckedPropertyHasDifferentTypeException, Conf::HelperException>;

constexpr std::size_t kFailureClasses = std::tuple_size_v<FailureClasses>;

}  // namespace Quenzo::Testing
