// Covers foundation/StringUtils.h: ToNumber for integers of several widths, and SplitString.

#include <foundation/StringUtils.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <deque>
#include <limits>
#include <list>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace Quenzo {
namespace {

template <typename T>
void ExpectNumber(std::string_view text, T expected) {
    T out = 99;
    EXPECT_TRUE(ToNumber(text, out)) << text;
    EXPECT_EQ(out, expected) << text;
}

template <typename T>
void ExpectNoNumber(std::string_view text) {
    T out = 99;
    EXPECT_FALSE(ToNumber(text, out)) << text;
    EXPECT_EQ(out, T{99}) << text;
}

TEST(ToNumberTest, WholeNumbers_AreRead) {
    ExpectNumber<int>("0", 0);
    ExpectNumber<int>("-0", 0);
    ExpectNumber<int>("007", 7);
    ExpectNumber<int>("-007", -7);
    ExpectNumber<int>("1", 1);
    ExpectNumber<int>("-1", -1);
    ExpectNumber<int>("1234567890", 1234567890);
    ExpectNumber<int>("010", 10);
}

TEST(ToNumberTest, EndsOfTheRange_AreRead) {
    ExpectNumber<int>("2147483647", 2147483647);
    ExpectNumber<int>("-2147483648", std::numeric_limits<int>::min());
    ExpectNumber<long long>("9223372036854775807", 9223372036854775807LL);
    ExpectNumber<long long>("-9223372036854775808", std::numeric_limits<long long>::min());
    ExpectNumber<unsigned>("4294967295", 4294967295U);
    ExpectNumber<std::uint64_t>("18446744073709551615", 18446744073709551615ULL);
    ExpectNumber<std::int8_t>("-128", -128);
}

TEST(ToNumberTest, NumbersBeyondTheRange_AreRefused) {
    ExpectNoNumber<int>("2147483648");
    ExpectNoNumber<int>("-2147483649");
    ExpectNoNumber<int>("99999999999999999999999999999999999999");
    ExpectNoNumber<long long>("9223372036854775808");
    ExpectNoNumber<long long>("-9223372036854775809");
    ExpectNoNumber<unsigned>("4294967296");
    ExpectNoNumber<std::uint64_t>("18446744073709551616");
    ExpectNoNumber<std::int8_t>("128");
}

TEST(ToNumberTest, LeadingZeros_AreAnyNumber) {
    const std::string zeros(1000, '0');
    ExpectNumber<int>(zeros + "7", 7);
    ExpectNumber<int>("-" + zeros + "2147483648", std::numeric_limits<int>::min());
    ExpectNumber<int>(zeros, 0);
    ExpectNoNumber<int>(zeros + "2147483648");
}

TEST(ToNumberTest, Nothing_IsRefused) {
    ExpectNoNumber<int>("");
    ExpectNoNumber<int>(std::string_view());
    ExpectNoNumber<int>("-");
}

TEST(ToNumberTest, OtherTexts_AreRefused) {
    ExpectNoNumber<int>("+1");
    ExpectNoNumber<int>("+0");
    ExpectNoNumber<int>(" 1");
    ExpectNoNumber<int>("1 ");
    ExpectNoNumber<int>("\t1");
    ExpectNoNumber<int>("1\n");
    ExpectNoNumber<int>("- 1");
    ExpectNoNumber<int>("--1");
    ExpectNoNumber<int>("-+1");
    ExpectNoNumber<int>("1-");
    ExpectNoNumber<int>("1.5");
    ExpectNoNumber<int>("1.");
    ExpectNoNumber<int>("1e3");
    ExpectNoNumber<int>("0x10");
    ExpectNoNumber<int>("1,000");
    ExpectNoNumber<int>("1'000");
    ExpectNoNumber<int>("a");
    ExpectNoNumber<int>("1a");
    ExpectNoNumber<int>(std::string_view("1\0", 2));
    ExpectNoNumber<int>(std::string_view("\0001", 2));
    ExpectNoNumber<int>("\xD9\xA1");
}

TEST(ToNumberTest, Unsigned_TakesNoMinusSign) {
    ExpectNumber<unsigned>("0", 0U);
    ExpectNoNumber<unsigned>("-0");
    ExpectNoNumber<unsigned>("-1");
}

TEST(ToNumberTest, APartOfALongerText_EndsWhereItEnds) {
    const std::string text = "1234";
    ExpectNumber<int>(std::string_view(text).substr(1, 2), 23);
}

RC_GTEST_PROP(ToNumberTest, EveryInteger_IsReadBackFromItsText, (long long number)) {
    long long out = number + 1;
    RC_ASSERT(ToNumber(std::to_string(number), out));
    RC_ASSERT(out == number);
}

using Pieces = std::vector<std::string>;

Pieces Split(const std::string& text, char separator) {
    Pieces pieces;
    SplitString(pieces, text, separator);
    return pieces;
}

TEST(SplitStringTest, EmptyText_HasNoPieces) { EXPECT_EQ(Split("", ':'), Pieces()); }

TEST(SplitStringTest, TextWithoutASeparator_IsOnePiece) {
    EXPECT_EQ(Split("a", ':'), (Pieces{"a"}));
    EXPECT_EQ(Split("1;2", ':'), (Pieces{"1;2"}));
    EXPECT_EQ(Split(" ", ':'), (Pieces{" "}));
}

TEST(SplitStringTest, Pieces_StandBetweenTheSeparators) {
    EXPECT_EQ(Split("1:2:3", ':'), (Pieces{"1", "2", "3"}));
    EXPECT_EQ(Split("1: 2 :3", ':'), (Pieces{"1", " 2 ", "3"}));
    EXPECT_EQ(Split("mov,mp4,m4a", ','), (Pieces{"mov", "mp4", "m4a"}));
}

TEST(SplitStringTest, EmptyPieceBetweenSeparators_IsKept) {
    EXPECT_EQ(Split("1::2", ':'), (Pieces{"1", "", "2"}));
    EXPECT_EQ(Split(":1", ':'), (Pieces{"", "1"}));
    EXPECT_EQ(Split("::1", ':'), (Pieces{"", "", "1"}));
}

TEST(SplitStringTest, TrailingSeparator_YieldsNoEmptyPiece) {
    EXPECT_EQ(Split("1:2:", ':'), (Pieces{"1", "2"}));
    EXPECT_EQ(Split("1::", ':'), (Pieces{"1", ""}));
    EXPECT_EQ(Split(":", ':'), (Pieces{""}));
    EXPECT_EQ(Split("::", ':'), (Pieces{"", ""}));
}

TEST(SplitStringTest, Separator_MayBeAnyByte) {
    EXPECT_EQ(Split(std::string("a\0b", 3), '\0'), (Pieces{"a", "b"}));
    EXPECT_EQ(Split(std::string("a\0b:c", 5), ':'), (Pieces{std::string("a\0b", 3), "c"}));
    EXPECT_EQ(Split("a\nb\n", '\n'), (Pieces{"a", "b"}));
    EXPECT_EQ(Split("a\xFF"
                    "b",
                    '\xFF'),
              (Pieces{"a", "b"}));
}

TEST(SplitStringTest, Container_KeepsWhatItHeldAndIsOfAnyKind) {
    Pieces pieces = {"before"};
    SplitString(pieces, "1:2", ':');
    SplitString(pieces, "", ':');
    EXPECT_EQ(pieces, (Pieces{"before", "1", "2"}));
    std::list<std::string> list;
    SplitString(list, "1:2", ':');
    EXPECT_EQ(list, (std::list<std::string>{"1", "2"}));
    std::deque<std::string> deque;
    SplitString(deque, "1:2", ':');
    EXPECT_EQ(deque, (std::deque<std::string>{"1", "2"}));
}

RC_GTEST_PROP(SplitStringTest, Pieces_AreTheLinesOfAStream, ()) {
    const std::string text = *rc::gen::container<std::string>(rc::gen::element('a', 'b', ':', '\0', '\n'));
    Pieces lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line, ':');) {
        lines.push_back(line);
    }
    RC_ASSERT(Split(text, ':') == lines);
}

}  // namespace
}  // namespace Quenzo
