#pragma once

// A JSON reader that shares nothing with the one inside the library: Boost.JSON.

#include <foundation/Property.h>

#include <boost/json/value.hpp>

#include <string>

namespace Quenzo::Conf::Testing {

/// Raises boost::system::system_error when the text is no JSON. Bytes that are no UTF-8 are allowed.
boost::json::value ReadJson(const std::string& text);

/// True when the value is the content of the tree: every child is found, in order and under its name.
bool ShowsTree(const boost::json::value& value, const Core::Property& tree);

}  // namespace Quenzo::Conf::Testing
