#pragma once

// What is made when it is first asked for and then stays until the library is unloaded.
//
// A local static object would go earlier: at the end of the program, before the program's own global objects do, and
// one of those that asks in its destructor would be given what is gone. So such an object is a reference to what is
// kept here.

#include <utility>

namespace Quenzo::Detail {

/// One kept object. All of them are a list.
struct Kept {
    Kept* next = nullptr;
    void (*destroy)(Kept* kept) noexcept = nullptr;
};

/// Puts an object into the list, whose end is the end of the library. From any thread.
void DestroyAtUnload(Kept& kept) noexcept;

/// Keeps a value and gives where it is. What was kept last goes first. Throws std::bad_alloc when there is no memory.
template <typename T>
const T& Keep(T value) {
    struct Holder : Kept {
        T value;
    };
    auto* const holder =
        new Holder{{nullptr, [](Kept* kept) noexcept { delete static_cast<Holder*>(kept); }}, std::move(value)};
    DestroyAtUnload(*holder);
    return holder->value;
}

}  // namespace Quenzo::Detail
