#pragma once

#include <foundation/Exception.h>

#include <boost/assert/source_location.hpp>
#include <boost/current_function.hpp>
#include <boost/throw_exception.hpp>

#include <type_traits>

/// Throws the exception given, with the call stack attached and the file, line and signature of the calling function
/// recorded. What arrives at the catcher is a boost::wrapexcept of the exception's class. This is the only way that the
/// libraries throw; it is a macro because nothing else can see the caller's signature.
#define QUENZO_THROW(...) QUENZO_THROW_FROM(BOOST_CURRENT_FUNCTION, __VA_ARGS__)

/// The same with a function text of the caller's choice, which must outlive the exception, for texts that have to read
/// alike whatever compiler built them.
#define QUENZO_THROW_FROM(function, ...) \
    ::Quenzo::Detail::Throw((__VA_ARGS__), ::boost::source_location(__FILE__, __LINE__, (function)))

namespace Quenzo::Detail {

template <typename E>
[[noreturn]] void Throw(E exception, const boost::source_location& from) {
    if constexpr (std::is_base_of_v<boost::exception, E>) {
        exception << Exception::TagCallStack(GetCallStack());
        boost::throw_exception(exception, from);
    } else {
        // A standard exception class can carry error information only once it is wrapped.
        const Exception::TagCallStack callStack(GetCallStack());
        try {
            boost::throw_exception(exception, from);
        } catch (boost::exception& thrown) {
            thrown << callStack;
            throw;
        }
    }
}

}  // namespace Quenzo::Detail
