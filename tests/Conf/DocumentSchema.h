#pragma once

#include <string>

namespace Quenzo::Conf::Testing {

/// What is wrong with a document by docs/job-document.schema.json, as RapidJSON's validator sees it; empty when it
/// fits.
std::string SchemaFault(const std::string& document);

}  // namespace Quenzo::Conf::Testing
