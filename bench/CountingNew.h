#pragma once

#include <cstddef>

namespace Quenzo::Bench {

/// How many blocks of memory the program has asked the global operator new for.
std::size_t AllocationCount();

/// How many bytes the blocks have that the program holds now, as the heap rounds them up.
std::size_t AllocatedBytes();

}  // namespace Quenzo::Bench
