// Covers foundation/Path.h: the text of a path from and to what it is made of.

#include <foundation/Path.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>

namespace Quenzo {
namespace {

static_assert(std::is_convertible_v<std::string, ioPath> && std::is_convertible_v<const char*, ioPath>);
static_assert(std::is_convertible_v<std::string_view, ioPath>);
static_assert(std::is_convertible_v<std::filesystem::path, ioPath>);
static_assert(!std::is_constructible_v<ioPath, int>);
static_assert(std::is_constructible_v<std::filesystem::path, ioPath>);
static_assert(!std::is_convertible_v<ioPath, std::filesystem::path> && !std::is_constructible_v<std::string, ioPath>);

void ExpectKept(const std::string& text) {
    EXPECT_EQ(ioPath(text).utf8string(), text);
    EXPECT_EQ(ioPath(std::string_view(text)).utf8string(), text);
    EXPECT_EQ(static_cast<std::filesystem::path>(ioPath(text)).native(), text);
    EXPECT_EQ(ioPath(std::filesystem::path(text)).utf8string(), text);
}

TEST(PathTest, DefaultConstructor_IsEmpty) {
    EXPECT_EQ(ioPath().utf8string(), "");
    EXPECT_EQ(static_cast<std::filesystem::path>(ioPath()), std::filesystem::path());
}

TEST(PathTest, Text_IsKeptAsItIsGiven) {
    ExpectKept("");
    ExpectKept("clip.mov");
    ExpectKept("/tmp/../tmp//clip.mov/");
    ExpectKept("C:\\clips\\a b.mov");
    ExpectKept("\xD1\x84\xD0\xB8\xD0\xBB\xD1\x8C\xD0\xBC/\xF0\x9F\x8E\xAC.mov");
}

TEST(PathTest, Text_ThatIsNoUtf8IsKeptToo) {
    ExpectKept("\xFF\xFE.mov");
    ExpectKept("\xC3");
    ExpectKept(std::string("a\0b", 3));
}

// Not made from text itself, so that it is a path only by inheritance.
struct DerivedPath : std::filesystem::path {
    explicit DerivedPath(const char* text) : std::filesystem::path(text) {}
};

TEST(PathTest, WhatIsDerivedFromAPath_MakesAPath) {
    const ioPath path = DerivedPath("a/clip.mov");
    EXPECT_EQ(path.utf8string(), "a/clip.mov");
}

TEST(PathTest, Literal_MakesAPath) {
    const ioPath path = "clip.mov";
    EXPECT_EQ(path.utf8string(), "clip.mov");
}

TEST(PathTest, Equality_ComparesTheText) {
    EXPECT_EQ(ioPath("a/b"), ioPath(std::string("a/b")));
    EXPECT_EQ(ioPath("a/b"), ioPath(std::filesystem::path("a") / "b"));
    EXPECT_NE(ioPath("a/b"), ioPath("a//b"));
    EXPECT_NE(ioPath("a"), ioPath("A"));
    EXPECT_EQ(ioPath(), ioPath(""));
}

}  // namespace
}  // namespace Quenzo
