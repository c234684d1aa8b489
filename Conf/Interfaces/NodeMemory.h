#pragma once

#include <boost/pool/pool.hpp>

#include <cstddef>
#include <new>
#include <optional>

namespace Quenzo::Detail {

/// The memory of elements of one size, which lie close together in blocks that grow, up to 64 KB. That of removed ones
/// is used again, and all of it is given back when this is destroyed, which has to be after the elements.
///
/// The standard library's pools are no choice: those of libstdc++ end the program when memory runs out.
class NodeMemory {
    // AddressSanitizer sees a node used after its removal only if it has a block of its own.
#ifdef QUENZO_SEPARATE_NODES
    static constexpr bool kSeparate = true;
#else
    static constexpr bool kSeparate = false;
#endif

    // A small graph takes little, and in a large one the trees that are made at the same time stand further apart than
    // this.
    static constexpr std::size_t kFirstNodes = 16;
    static constexpr std::size_t kLargestBlock = 65536;

public:
    /// Raises std::bad_alloc. The size is the same each time.
    void* Allocate(std::size_t bytes) {
        if (kSeparate) {
            return ::operator new(bytes);
        }
        if (!pool_) {
            pool_.emplace(bytes, kFirstNodes, kLargestBlock / bytes);
        }
        void* const node = pool_->malloc();
        if (node == nullptr) {
            throw std::bad_alloc();
        }
        return node;
    }

    void Free(void* node) noexcept {
        if (kSeparate) {
            ::operator delete(node);
        } else {
            pool_->free(node);
        }
    }

private:
    std::optional<boost::pool<>> pool_;
};

/// Has a container of nodes, one element in each, take them from such a memory.
template <typename T>
class NodeAllocator {
public:
    using value_type = T;

    explicit NodeAllocator(NodeMemory& memory) noexcept : memory_(&memory) {}

    template <typename Other>
    NodeAllocator(const NodeAllocator<Other>& other) noexcept : memory_(other.memory_) {}

    T* allocate(std::size_t count) { return static_cast<T*>(memory_->Allocate(count * sizeof(T))); }
    void deallocate(T* node, std::size_t /*count*/) noexcept { memory_->Free(node); }

    bool operator==(const NodeAllocator& other) const noexcept = default;

private:
    template <typename Other>
    friend class NodeAllocator;

    NodeMemory* memory_;
};

}  // namespace Quenzo::Detail
