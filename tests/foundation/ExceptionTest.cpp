// Covers foundation/Exception.h and foundation/Throw.h: the class tree, what(), the error tags, and what is attached to
// and recorded with everything that is thrown.

#include <foundation/Exception.h>
#include <foundation/Throw.h>
#include <tests/foundation/Failures.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>

namespace Quenzo {
namespace {

using ::testing::HasSubstr;
using Testing::Raised;
using ::testing::StartsWith;
using Testing::TagOf;

template <typename Derived, typename Base>
constexpr bool kIsA = std::is_base_of_v<Base, Derived>&& std::is_convertible_v<Derived*, Base*>;

static_assert(kIsA<Exception, std::exception> && kIsA<Exception, boost::exception>);
static_assert(kIsA<Core::CoreException, Exception>);
static_assert(kIsA<Core::PropertyException, Core::CoreException>);
static_assert(kIsA<Core::MethodIsNotApplicable, Core::PropertyException>);
static_assert(kIsA<Core::StreamException, Core::CoreException>);
static_assert(!std::is_base_of_v<Core::PropertyException, Core::StreamException>);

// A pointer to a virtual base cannot be turned back by a static_cast.
template <typename Base, typename Derived>
constexpr bool kIsVirtualBase = kIsA<Derived, Base> && !requires(Base * base) {
    static_cast<Derived*>(base);
};

static_assert(kIsVirtualBase<std::exception, Exception> && kIsVirtualBase<boost::exception, Exception>);
static_assert(kIsVirtualBase<Exception, Core::CoreException>);
static_assert(kIsVirtualBase<Core::CoreException, Core::PropertyException>);
static_assert(kIsVirtualBase<Core::CoreException, Core::StreamException>);
static_assert(!kIsVirtualBase<Core::PropertyException, Core::MethodIsNotApplicable>);

static_assert(std::is_same_v<Exception::TagDescription::value_type, std::string>);
static_assert(std::is_same_v<Exception::TagCallStack::value_type, std::string>);
static_assert(std::is_same_v<Core::PropertyException::TagPropertyName::value_type, std::string>);
static_assert(std::is_same_v<Core::PropertyException::TagPropertyType::value_type, PropertyTypes>);
static_assert(std::is_same_v<Core::PropertyException::TagMethodName::value_type, std::string>);

template <typename E>
std::string WhatOf(const E& failure) {
    const std::exception& standard = failure;
    return standard.what();
}

template <typename E>
std::string WhatWithDescription(const std::string& description) {
    E failure;
    failure << Exception::TagDescription(description);
    return WhatOf(failure);
}

TEST(ExceptionTest, What_WithoutADescriptionIsTheNameOfTheClass) {
    EXPECT_EQ(WhatOf(Exception()), "Quenzo::Exception");
    EXPECT_EQ(WhatOf(Core::CoreException()), "Quenzo::Core::CoreException");
    EXPECT_EQ(WhatOf(Core::PropertyException()), "Quenzo::Core::PropertyException");
    EXPECT_EQ(WhatOf(Core::MethodIsNotApplicable()), "Quenzo::Core::MethodIsNotApplicable");
    EXPECT_EQ(WhatOf(Core::StreamException()), "Quenzo::Core::StreamException");
}

TEST(ExceptionTest, What_WithADescriptionIsTheDescription) {
    EXPECT_EQ(WhatWithDescription<Exception>("the message"), "the message");
    EXPECT_EQ(WhatWithDescription<Core::CoreException>("the message"), "the message");
    EXPECT_EQ(WhatWithDescription<Core::PropertyException>("the message"), "the message");
    EXPECT_EQ(WhatWithDescription<Core::MethodIsNotApplicable>("the message"), "the message");
    EXPECT_EQ(WhatWithDescription<Core::StreamException>(""), "");
}

TEST(ExceptionTest, What_StaysValidInACopy) {
    Core::CoreException copy;
    {
        Core::CoreException failure;
        failure << Exception::TagDescription("a message longer than what a string object holds itself");
        copy = failure;
    }
    EXPECT_STREQ(copy.what(), "a message longer than what a string object holds itself");
}

TEST(ExceptionTest, Tags_AreAbsentUntilTheyAreAttached) {
    Core::PropertyException failure;
    EXPECT_EQ(TagOf<Exception::TagDescription>(failure), std::nullopt);
    EXPECT_EQ(TagOf<Exception::TagCallStack>(failure), std::nullopt);
    EXPECT_EQ(TagOf<Core::PropertyException::TagPropertyName>(failure), std::nullopt);
    failure << Core::PropertyException::TagPropertyName("name")
            << Core::PropertyException::TagPropertyType(PropertyTypes::Ratio);
    EXPECT_EQ(TagOf<Core::PropertyException::TagPropertyName>(failure), "name");
    EXPECT_EQ(TagOf<Core::PropertyException::TagPropertyType>(failure), PropertyTypes::Ratio);
    EXPECT_EQ(TagOf<Core::PropertyException::TagMethodName>(failure), std::nullopt);
}

template <typename E>
[[noreturn]] void ThrowDescribed() {
    E failure;
    failure << Exception::TagDescription("the message");
    QUENZO_THROW(failure);
}

template <typename Base, typename E>
std::string CaughtAs() {
    try {
        ThrowDescribed<E>();
    } catch (const Base& failure) {
        return TagOf<Exception::TagDescription>(failure).value_or("no description");
    }
}

TEST(ExceptionTest, Throw_IsCaughtAsEveryBase) {
    EXPECT_EQ((CaughtAs<Core::MethodIsNotApplicable, Core::MethodIsNotApplicable>()), "the message");
    EXPECT_EQ((CaughtAs<Core::PropertyException, Core::MethodIsNotApplicable>()), "the message");
    EXPECT_EQ((CaughtAs<Core::CoreException, Core::MethodIsNotApplicable>()), "the message");
    EXPECT_EQ((CaughtAs<Exception, Core::MethodIsNotApplicable>()), "the message");
    EXPECT_EQ((CaughtAs<std::exception, Core::MethodIsNotApplicable>()), "the message");
    EXPECT_EQ((CaughtAs<boost::exception, Core::MethodIsNotApplicable>()), "the message");
    EXPECT_EQ((CaughtAs<Core::CoreException, Core::StreamException>()), "the message");
    EXPECT_EQ((CaughtAs<boost::exception, Exception>()), "the message");
}

TEST(ExceptionTest, Throw_WrapsEveryClass) {
    EXPECT_THROW(ThrowDescribed<Exception>(), boost::wrapexcept<Exception>);
    EXPECT_THROW(ThrowDescribed<Core::CoreException>(), boost::wrapexcept<Core::CoreException>);
    EXPECT_THROW(ThrowDescribed<Core::PropertyException>(), boost::wrapexcept<Core::PropertyException>);
    EXPECT_THROW(ThrowDescribed<Core::MethodIsNotApplicable>(), boost::wrapexcept<Core::MethodIsNotApplicable>);
    EXPECT_THROW(ThrowDescribed<Core::StreamException>(), boost::wrapexcept<Core::StreamException>);
}

TEST(ExceptionTest, Throw_LeavesTheExceptionGivenAlone) {
    Exception failure;
    Raised<Exception>([&] { QUENZO_THROW(failure); });
    EXPECT_EQ(TagOf<Exception::TagCallStack>(failure), std::nullopt);
}

template <typename First, typename Second>
struct Pair : Exception {};

TEST(ExceptionTest, Throw_TakesAnExpressionWithCommas) {
    using IntLong = Pair<int, long>;
    EXPECT_THROW(QUENZO_THROW(Pair<int, long>()), boost::wrapexcept<IntLong>);
}

// The place of a throw: what it recorded of itself, and the line that it stands in.
struct Place {
    std::string file;
    int line = 0;
    std::string function;
};

Place PlaceOf(const boost::exception& failure) {
    const char* const* file = boost::get_error_info<boost::throw_file>(failure);
    const int* line = boost::get_error_info<boost::throw_line>(failure);
    const char* const* function = boost::get_error_info<boost::throw_function>(failure);
    EXPECT_NE(file, nullptr);
    EXPECT_NE(line, nullptr);
    EXPECT_NE(function, nullptr);
    return {file != nullptr ? *file : "", line != nullptr ? *line : 0, function != nullptr ? *function : ""};
}

constexpr int kThrowingLine = __LINE__ + 1;
[[noreturn]] void ThrowFromHere(int /*unused*/) { QUENZO_THROW(Core::CoreException()); }

TEST(ExceptionTest, Throw_RecordsFileLineAndFunctionOfTheCaller) {
    const Place place = PlaceOf(Raised<Core::CoreException>([] { ThrowFromHere(1); }));
    EXPECT_EQ(place.file, "tests/foundation/ExceptionTest.cpp");
    EXPECT_EQ(place.line, kThrowingLine);
    EXPECT_THAT(place.function, HasSubstr("ThrowFromHere(int)"));
}

TEST(ExceptionTest, ThrowFrom_RecordsTheTextGiven) {
    const Place place =
        PlaceOf(Raised<Exception>([] { QUENZO_THROW_FROM("int Namespace::Function(int)", Exception()); }));
    EXPECT_EQ(place.function, "int Namespace::Function(int)");
    EXPECT_EQ(place.file, "tests/foundation/ExceptionTest.cpp");
}

constexpr int kStandardLine = __LINE__ + 1;
[[noreturn]] void ThrowLogicError() { QUENZO_THROW(std::logic_error("the text")); }

TEST(ExceptionTest, Throw_OfAStandardExceptionCarriesTheSameInformation) {
    try {
        ThrowLogicError();
    } catch (const boost::wrapexcept<std::logic_error>& failure) {
        EXPECT_STREQ(failure.what(), "the text");
        EXPECT_THAT(TagOf<Exception::TagCallStack>(failure).value_or(""), StartsWith("0# "));
        EXPECT_EQ(TagOf<Exception::TagDescription>(failure), std::nullopt);
        const Place place = PlaceOf(failure);
        EXPECT_EQ(place.file, "tests/foundation/ExceptionTest.cpp");
        EXPECT_EQ(place.line, kStandardLine);
        EXPECT_THAT(place.function, HasSubstr("ThrowLogicError()"));
    }
}

TEST(ExceptionTest, Throw_OfAStandardExceptionIsCaughtAsItself) {
    EXPECT_THROW(ThrowLogicError(), std::logic_error);
    EXPECT_THROW(ThrowLogicError(), boost::exception);
    EXPECT_THROW(QUENZO_THROW(std::out_of_range("text")), std::out_of_range);
    EXPECT_THROW(QUENZO_THROW(std::out_of_range("text")), std::logic_error);
}

TEST(ExceptionTest, Throw_AttachesTheCallStack) {
    const auto failure = Raised<Exception>([] { QUENZO_THROW(Exception()); });
    EXPECT_THAT(TagOf<Exception::TagCallStack>(failure).value_or(""), StartsWith("0# "));
}

// Every line is its own number, a "#", and a text; there is one at least.
void ExpectCallStack(const std::string& text) {
    ASSERT_NE(text, "");
    EXPECT_EQ(text.back(), '\n');
    std::istringstream lines(text);
    std::string line;
    for (int number = 0; std::getline(lines, line); ++number) {
        const std::string start = std::to_string(number) + "# ";
        EXPECT_THAT(line, StartsWith(start));
        EXPECT_GT(line.size(), start.size());
    }
}

TEST(ExceptionTest, GetCallStack_HasOneNumberedLineForEachFrame) {
    ExpectCallStack(GetCallStack());
    ExpectCallStack(TagOf<Exception::TagCallStack>(Raised<Exception>([] { QUENZO_THROW(Exception()); })).value_or(""));
}

// Not inlined and no tail call, so that every level is a frame.
[[gnu::noinline]] std::string CallStackBelow(int levels) {
    std::string text = levels == 0 ? GetCallStack() : CallStackBelow(levels - 1);
    asm volatile("" ::: "memory");
    return text;
}

// Counted on a thread of its own, where few frames stand above.
std::ptrdiff_t FramesBelow(int levels) {
    std::ptrdiff_t frames = 0;
    std::thread([&] {
        const std::string text = CallStackBelow(levels);
        frames = std::count(text.begin(), text.end(), '\n');
    }).join();
    return frames;
}

TEST(ExceptionTest, GetCallStack_HasAFrameForEveryCallUpToALimit) {
    EXPECT_EQ(FramesBelow(3), FramesBelow(0) + 3);
    EXPECT_EQ(FramesBelow(1000), 24);
}

}  // namespace
}  // namespace Quenzo
