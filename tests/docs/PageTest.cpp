// The reader of guide pages, on pages made for it: what it takes for an example and a session, and what it refuses.

#include <tests/docs/Page.h>
#include <tests/tools/ProgramRunner.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace Quenzo::Docs {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<Example> Examples(const std::string& markdown) {
    const Tests::TemporaryFolder folder;
    return ReadExamples(folder.Write("page.md", markdown));
}

std::vector<Command> Commands(const std::string& markdown) {
    const Tests::TemporaryFolder folder;
    return ReadCommands(folder.Write("page.md", markdown));
}

template <typename Read>
std::string Refusal(Read read, const std::string& markdown) {
    try {
        read(markdown);
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "not refused";
}

TEST(ReadExamples, ABlockWithoutTextPrintsNothing) {
    const auto examples = Examples("# Title\n\n```cpp\nint a = 1;\n\nint b = 2;\n```\nWords.\n");
    ASSERT_THAT(examples, SizeIs(1));
    EXPECT_THAT(examples[0].code.lines, ElementsAre("int a = 1;", "", "int b = 2;"));
    EXPECT_EQ(examples[0].code.line, 4u);
    EXPECT_EQ(examples[0].output, "");
}

TEST(ReadExamples, TheTextBehindABlockIsItsOutput) {
    const auto examples = Examples("```cpp\nA();\n```\nprints\n```text\na\n\nb\n```\n```cpp\nB();\n```\n");
    ASSERT_THAT(examples, SizeIs(2));
    EXPECT_EQ(examples[0].output, "a\n\nb\n");
    EXPECT_EQ(examples[1].output, "");
}

TEST(ReadExamples, SessionsAreNoExamples) { EXPECT_THAT(Examples("```console\n$ ls\n```\n"), IsEmpty()); }

TEST(ReadExamples, WhatNobodyWouldCheckIsRefused) {
    EXPECT_THAT(Refusal(Examples, "```python\n```\n"), HasSubstr("page.md:2: nobody checks a block of \"python\""));
    EXPECT_THAT(Refusal(Examples, "```\n```\n"), HasSubstr("page.md:2: nobody checks a block of \"\""));
    EXPECT_THAT(Refusal(Examples, "\n```text\na\n```\n"), HasSubstr("page.md:3: the text is the output of no example"));
    EXPECT_THAT(Refusal(Examples, "```cpp\n```\n```text\n```\n```text\n```\n"),
                HasSubstr("page.md:6: the text is the output of no example"));
}

TEST(ReadBlocks, ABlockWithoutEndIsRefused) {
    EXPECT_THAT(Refusal(Examples, "words\n```cpp\nint a;\n"), HasSubstr("page.md:3: the block has no end"));
}

TEST(ReadBlocks, APageThatIsNotThereIsRefused) {
    EXPECT_THAT(Refusal([](const std::string& path) { ReadBlocks(path); }, "/nonexistent.md"),
                HasSubstr("/nonexistent.md:0: cannot be read"));
}

TEST(ReadCommands, TheLinesBelowACommandAreItsOutput) {
    const auto commands = Commands("```console\n$ first a b\n$ second\none\n\n two\n```\n```console\n$ third\n```\n");
    ASSERT_THAT(commands, SizeIs(3));
    EXPECT_EQ(commands[0].line, "first a b");
    EXPECT_EQ(commands[0].output, "");
    EXPECT_EQ(commands[0].at, 2u);
    EXPECT_EQ(commands[1].line, "second");
    EXPECT_EQ(commands[1].output, "one\n\n two\n");
    EXPECT_EQ(commands[2].at, 9u);
}

TEST(ReadCommands, OutputOfNoCommandIsRefused) {
    EXPECT_THAT(Refusal(Commands, "```console\n$ a\n```\n```console\nb\n```\n"),
                HasSubstr("page.md:5: a session begins with a command"));
}

TEST(SplitParts, EveryPartEndsInItsCharacter) {
    EXPECT_THAT(SplitParts(""), IsEmpty());
    EXPECT_THAT(SplitParts("a\n\x1e"), ElementsAre("a\n"));
    EXPECT_THAT(SplitParts("\x1e\x1e"), ElementsAre("", ""));
    EXPECT_THAT(SplitParts("a\x1e"
                           "b"),
                ElementsAre("a", "b"));
}

}  // namespace
}  // namespace Quenzo::Docs
