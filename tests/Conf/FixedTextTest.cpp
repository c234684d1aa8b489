// Covers Conf/Interfaces/FixedText: what it holds, what it refuses, and how it compares.

#include <Conf/Interfaces/FixedText.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace Quenzo::Detail {
namespace {

TEST(FixedTextTest, HoldsTextsUpToItsLength) {
    static_assert(std::string_view(FixedText<4>("")).empty() && FixedText<4>().empty() && FixedText<4>("").empty());
    static_assert(std::string_view(FixedText<4>("mp4")) == "mp4" && !FixedText<4>("mp4").empty());
    static_assert(std::string_view(FixedText<4>("webm")) == "webm");
    using namespace std::string_view_literals;
    static_assert(std::string_view(FixedText<4>("a\0b\0"sv)) == "a\0b\0"sv);
    EXPECT_THROW(FixedText<4>(std::string("quick")), std::length_error);
    const std::string longest(255, 'x');
    EXPECT_EQ(std::string(FixedText<255>(longest)), longest);
    EXPECT_EQ(sizeof(FixedText<27>), 28U);
    static_assert(FixedText<4>("mp4") == FixedText<4>("mp4") && FixedText<4>("mp4") != FixedText<4>("mp3"));
    static_assert(FixedText<4>("mp4") == "mp4" && std::string_view("mp") != FixedText<4>("mp4"));
}

}  // namespace
}  // namespace Quenzo::Detail
