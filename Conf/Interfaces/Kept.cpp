#include <Conf/Interfaces/Kept.h>

#include <atomic>

namespace Quenzo::Detail {

namespace {

constinit std::atomic<Kept*> last = nullptr;

// Runs when the library is unloaded and, at the end of a program, after the destructors of all global objects: linked
// statically these have no priority, and what has the first one that is not reserved runs last.
[[gnu::destructor(101)]] void DestroyAll() noexcept {
    Kept* kept = last.exchange(nullptr, std::memory_order_acquire);
    while (kept != nullptr) {
        Kept* const next = kept->next;
        kept->destroy(kept);
        kept = next;
    }
}

}  // namespace

void DestroyAtUnload(Kept& kept) noexcept {
    kept.next = last.load(std::memory_order_relaxed);
    while (!last.compare_exchange_weak(kept.next, &kept, std::memory_order_release, std::memory_order_relaxed)) {
    }
}

}  // namespace Quenzo::Detail
