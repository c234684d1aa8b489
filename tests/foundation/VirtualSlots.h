#pragma once

// Reads the layout that the Itanium C++ ABI gives to virtual functions, to hold the order of an interface's slots.

#include <array>
#include <bit>
#include <cstddef>
#include <optional>
#include <type_traits>

namespace Quenzo::Testing {

/// The number of the slot that a pointer to a virtual member function stands for, counted from 0; nothing when the
/// function is not virtual. The destructor of a class takes two slots where it is declared: the first destroys, the
/// second also frees.
template <typename Function>
std::optional<std::size_t> VirtualSlot(Function function) {
    static_assert(std::is_member_function_pointer_v<Function>);
    const auto [target, adjustment] = std::bit_cast<std::array<std::size_t, 2>>(function);
#if defined(__aarch64__)
    // Code addresses may be odd here, so the mark of a virtual function is in the other word.
    const bool isVirtual = (adjustment & 1U) != 0;
    const std::size_t offset = target;
#elif defined(__x86_64__)
    const bool isVirtual = (target & 1U) != 0;
    const std::size_t offset = target - 1;
    static_cast<void>(adjustment);
#else
#error "the layout of a pointer to a member function is not known for this machine"
#endif
    return isVirtual ? std::optional<std::size_t>(offset / sizeof(void*)) : std::nullopt;
}

/// Calls a slot of an object's first table as a function without arguments and results.
inline void CallVirtualSlot(void* object, std::size_t slot) {
    using Target = void (*)(void*);
    const Target* const table = *static_cast<const Target* const*>(object);
    table[slot](object);
}

}  // namespace Quenzo::Testing
