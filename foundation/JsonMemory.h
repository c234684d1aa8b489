#pragma once

// Shared by the libraries' own sources; not installed.

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>

namespace Quenzo::Core {

/// Memory for RapidJSON, which takes it by malloc when it is left alone and writes through the null pointer when there
/// is none.
class JsonMemory {
public:
    static constexpr bool kNeedFree = true;

    void* Malloc(std::size_t size) { return size != 0 ? ::operator new(size) : nullptr; }

    void* Realloc(void* block, std::size_t oldSize, std::size_t newSize) {
        void* const resized = Malloc(newSize);
        if (const std::size_t kept = std::min(oldSize, newSize); kept != 0) {
            std::memcpy(resized, block, kept);
        }
        Free(block);
        return resized;
    }

    static void Free(void* block) noexcept { ::operator delete(block); }
};

}  // namespace Quenzo::Core
