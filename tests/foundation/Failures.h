#pragma once

// Looks at what a call raised.

#include <foundation/Exception.h>

#include <boost/core/demangle.hpp>
#include <boost/throw_exception.hpp>

#include <gtest/gtest.h>

#include <exception>
#include <optional>
#include <string>
#include <typeinfo>

namespace Quenzo::Testing {

/// Runs a call that must raise exactly an E, wrapped as boost::wrapexcept. Returns a copy of the failure, or records a
/// test failure and returns an empty E.
template <typename E, typename Call>
E Raised(Call call) {
    try {
        call();
        ADD_FAILURE() << "nothing was raised";
    } catch (const boost::wrapexcept<E>& failure) {
        return failure;
    } catch (const std::exception& other) {
        ADD_FAILURE() << "raised a " << boost::core::demangle(typeid(other).name()) << ": " << other.what();
    }
    return E();
}

/// The value of an error tag, or nothing when the failure does not carry it.
template <typename Tag, typename E>
std::optional<typename Tag::value_type> TagOf(const E& failure) {
    const auto* value = boost::get_error_info<Tag>(failure);
    return value != nullptr ? std::optional<typename Tag::value_type>(*value) : std::nullopt;
}

/// The signature of the function that a failure was raised in, or "" when it was not recorded.
template <typename E>
std::string FunctionOf(const E& failure) {
    const char* const* function = boost::get_error_info<boost::throw_function>(failure);
    return function != nullptr ? *function : "";
}

/// The tags of a failure of the property tree.
struct PropertyTags {
    std::string name;
    PropertyTypes type;
    std::string method;
    std::optional<std::string> description = std::nullopt;
};

/// The call must raise exactly an E with these tags, and with a call stack.
template <typename E, typename Call>
void ExpectPropertyFailure(Call call, const PropertyTags& expected) {
    SCOPED_TRACE(expected.method + " on " + expected.name);
    const E failure = Raised<E>(call);
    EXPECT_EQ(TagOf<Core::PropertyException::TagPropertyName>(failure), expected.name);
    EXPECT_EQ(TagOf<Core::PropertyException::TagPropertyType>(failure), expected.type);
    EXPECT_EQ(TagOf<Core::PropertyException::TagMethodName>(failure), expected.method);
    EXPECT_EQ(TagOf<Exception::TagDescription>(failure), expected.description);
    EXPECT_NE(TagOf<Exception::TagCallStack>(failure).value_or(""), "");
}

}  // namespace Quenzo::Testing
