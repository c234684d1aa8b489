#pragma once

#include <boost/pool/pool.hpp>

#include <cstddef>
#include <memory_resource>
#include <new>
#include <optional>

namespace Quenzo::Detail {

/// The memory of elements of one size, which lie close together in blocks that grow, up to 64 KB. That of removed ones
/// is used again, and all of it is given back when this is destroyed, which has to be after the elements.
///
/// The standard library's pools are no choice: those of libstdc++ end the program when memory runs out.
class NodeMemory final : public std::pmr::memory_resource {
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

    void* do_allocate(std::size_t bytes, std::size_t alignment) override {
        if (kSeparate) {
            return std::pmr::new_delete_resource()->allocate(bytes, alignment);
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

    void do_deallocate(void* node, std::size_t bytes, std::size_t alignment) override {
        if (kSeparate) {
            std::pmr::new_delete_resource()->deallocate(node, bytes, alignment);
        } else {
            pool_->free(node);
        }
    }

    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }

    std::optional<boost::pool<>> pool_;
};

}  // namespace Quenzo::Detail
