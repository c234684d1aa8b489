// Replaces the program's operator new by one that counts. In a unit of its own, so that no compiler sees the memory of
// its operator new freed by std::free.

#include <bench/CountingNew.h>

#include <cstdlib>
#include <new>

namespace {

std::size_t allocations = 0;

}  // namespace

std::size_t Quenzo::Bench::AllocationCount() { return allocations; }

void* operator new(std::size_t size) {
    ++allocations;
    void* memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
