#include <tests/faults/FailingMemory.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> liveBlocks = 0;

// Calls that still succeed; below 0 while memory does not run out.
std::atomic<long> callsLeft = -1;
std::atomic<bool> isLasting = false;
std::atomic<bool> hasStruck = false;

bool IsOut() noexcept {
    if (callsLeft < 0 || --callsLeft > 0) {
        return false;
    }
    hasStruck = true;
    callsLeft = isLasting ? 1 : -1;
    return true;
}

void* Allocate(std::size_t size, std::size_t alignment) noexcept {
    if (IsOut()) {
        return nullptr;
    }
    const std::size_t wanted = size != 0 ? size : 1;
    void* memory = nullptr;
    if (alignment <= alignof(std::max_align_t)) {
        memory = std::malloc(wanted);
    } else if (posix_memalign(&memory, alignment, wanted) != 0) {
        memory = nullptr;
    }
    liveBlocks += memory != nullptr ? 1 : 0;
    return memory;
}

void* AllocateOrThrow(std::size_t size, std::size_t alignment) {
    void* memory = Allocate(size, alignment);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void Free(void* memory) noexcept {
    liveBlocks -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

constexpr std::size_t kUsual = alignof(std::max_align_t);

std::size_t Bytes(std::align_val_t alignment) { return static_cast<std::size_t>(alignment); }

}  // namespace

namespace Quenzo::Testing {

long LiveBlocks() noexcept { return liveBlocks; }

FailingMemory::FailingMemory(long n, Shortage shortage) noexcept {
    hasStruck = false;
    isLasting = shortage == Shortage::Lasting;
    callsLeft = n;
}

FailingMemory::~FailingMemory() { callsLeft = -1; }

bool FailingMemory::HasStruck() const noexcept { return hasStruck; }

}  // namespace Quenzo::Testing

using Nothrow = std::nothrow_t;
using Align = std::align_val_t;

void* operator new(std::size_t size) { return AllocateOrThrow(size, kUsual); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size, kUsual); }
void* operator new(std::size_t size, Align alignment) { return AllocateOrThrow(size, Bytes(alignment)); }
void* operator new[](std::size_t size, Align alignment) { return AllocateOrThrow(size, Bytes(alignment)); }
void* operator new(std::size_t size, const Nothrow& /*unused*/) noexcept { return Allocate(size, kUsual); }
void* operator new[](std::size_t size, const Nothrow& /*unused*/) noexcept { return Allocate(size, kUsual); }
void* operator new(std::size_t size, Align alignment, const Nothrow& /*unused*/) noexcept {
    return Allocate(size, Bytes(alignment));
}
void* operator new[](std::size_t size, Align alignment, const Nothrow& /*unused*/) noexcept {
    return Allocate(size, Bytes(alignment));
}

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { Free(memory); }
void operator delete(void* memory, Align /*alignment*/) noexcept { Free(memory); }
void operator delete[](void* memory, Align /*alignment*/) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t /*size*/, Align /*alignment*/) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t /*size*/, Align /*alignment*/) noexcept { Free(memory); }
void operator delete(void* memory, const Nothrow& /*unused*/) noexcept { Free(memory); }
void operator delete[](void* memory, const Nothrow& /*unused*/) noexcept { Free(memory); }
void operator delete(void* memory, Align /*alignment*/, const Nothrow& /*unused*/) noexcept { Free(memory); }
void operator delete[](void* memory, Align /*alignment*/, const Nothrow& /*unused*/) noexcept { Free(memory); }
