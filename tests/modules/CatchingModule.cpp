// A module that catches each class of failure. It is built with hidden visibility, like the libraries.

#include <tests/modules/FailureClasses.h>
#include <tests/modules/Modules.h>

#include <boost/throw_exception.hpp>

#include <array>
#include <string>
#include <utility>

namespace {

using namespace Quenzo;
using Testing::FailureClasses;
using Testing::kFailureClasses;

using Call = void (*)(int);

template <typename Caught>
bool IsCaughtAs(Call call, int number) {
    try {
        call(number);
    } catch (const Caught&) {
        return true;
    } catch (...) {
    }
    return false;
}

template <std::size_t I>
int CatchOne(Call call, int number) {
    using E = std::tuple_element_t<I, FailureClasses>;
    int caught = (IsCaughtAs<boost::wrapexcept<E>>(call, number) ? 1 : 0) + (IsCaughtAs<E>(call, number) ? 2 : 0) +
                 (IsCaughtAs<std::exception>(call, number) ? 16 : 0);
    try {
        call(number);
    } catch (const Exception& failure) {
        const std::string* const description = boost::get_error_info<Exception::TagDescription>(failure);
        const std::string* const callStack = boost::get_error_info<Exception::TagCallStack>(failure);
        caught += description != nullptr && *description == "the message" ? 4 : 0;
        caught += callStack != nullptr && callStack->starts_with("0# ") ? 8 : 0;
    }
    return caught;
}

template <std::size_t... I>
constexpr std::array<int (*)(Call, int), sizeof...(I)> AllOf(std::index_sequence<I...>) {
    return {CatchOne<I>...};
}

}  // namespace

int Catch(Call call, int number) {
    return AllOf(std::make_index_sequence<kFailureClasses>()).at(static_cast<std::size_t>(number))(call, number);
}
