#pragma once

// Checks of what a call raised, beyond tests/foundation/Failures.h.

#include <foundation/Exception.h>
#include <tests/foundation/Failures.h>

#include <boost/throw_exception.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace Quenzo::Conf::Testing {

using Quenzo::Testing::Raised;
using Quenzo::Testing::TagOf;

/// The call must raise exactly a `Failure` whose whole report is the value of one tag.
template <typename Failure, typename Tag, typename Call>
void ExpectTag(const Call& call, const typename Tag::value_type& expected) {
    const auto failure = Raised<Failure>(call);
    EXPECT_EQ(TagOf<Tag>(failure), expected);
    EXPECT_EQ(TagOf<Exception::TagDescription>(failure), std::nullopt);
    EXPECT_NE(TagOf<Exception::TagCallStack>(failure).value_or(""), "");
}

/// The call must raise exactly a `Failure`, one of the standard library's included, that shows this text.
template <typename Failure, typename Call>
void ExpectText(const Call& call, const std::string& expected) {
    try {
        call();
    } catch (const boost::wrapexcept<Failure>& failure) {
        EXPECT_EQ(failure.what(), expected);
        EXPECT_NE(TagOf<Exception::TagCallStack>(failure).value_or(""), "");
        return;
    }
    ADD_FAILURE() << "nothing was raised";
}

}  // namespace Quenzo::Conf::Testing
