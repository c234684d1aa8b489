// A module that raises each class of failure. It is built with hidden visibility, like the libraries.

#include <tests/modules/FailureClasses.h>
#include <tests/modules/Modules.h>

#include <foundation/Throw.h>

#include <array>
#include <utility>

namespace {

using namespace Quenzo;
using Testing::FailureClasses;
using Testing::kFailureClasses;

template <std::size_t I>
void RaiseOne() {
    std::tuple_element_t<I, FailureClasses> failure;
    failure << Exception::TagDescription("the message");
    QUENZO_THROW(failure);
}

template <std::size_t... I>
constexpr std::array<void (*)(), sizeof...(I)> AllOf(std::index_sequence<I...>) {
    return {RaiseOne<I>...};
}

}  // namespace

void Raise(int number) { AllOf(std::make_index_sequence<kFailureClasses>()).at(static_cast<std::size_t>(number))(); }

int CountFailures() { return static_cast<int>(kFailureClasses); }
