// Replaces the program's operator new by one that counts. In a unit of its own, so that no compiler sees the memory of
// its operator new freed by std::free.

#include <bench/CountingNew.h>

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {

std::size_t allocations = 0;
std::size_t bytes = 0;

}  // namespace

std::size_t Quenzo::Bench::AllocationCount() { return allocations; }

std::size_t Quenzo::Bench::AllocatedBytes() { return bytes; }

void* operator new(std::size_t size) {
    ++allocations;
    void* memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    bytes += malloc_usable_size(memory);
    return memory;
}

void operator delete(void* memory) noexcept {
    bytes -= malloc_usable_size(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept { operator delete(memory); }
