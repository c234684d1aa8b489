#pragma once

#include <cstddef>

namespace Quenzo::Bench {

/// How many blocks of memory the program has asked the global operator new for.
std::size_t AllocationCount();

}  // namespace Quenzo::Bench
