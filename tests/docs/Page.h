#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace Quenzo::Docs {

/// The character that an example program prints after each of its blocks, and a session after each of its commands.
constexpr char kEndOfPart = '\x1e';

/// A fenced block of a Markdown page.
struct Block {
    std::string language;            ///< what stands behind the opening fence
    std::size_t line;                ///< the number of the first line between the fences, from 1
    std::vector<std::string> lines;  ///< what stands between the fences

    /// The lines, each with its end.
    std::string Text() const;
};

/// The fenced blocks of a page, in their order. Raises std::runtime_error when the page cannot be read or ends inside a
/// block.
std::vector<Block> ReadBlocks(const std::filesystem::path& page);

/// A block of C++ and what it prints.
struct Example {
    Block code;
    std::string output;  ///< the text block behind it; empty when there is none
};

/// The examples of a page. Raises std::runtime_error also for a block that nobody would check: one in another language
/// than cpp, text and console, or a text block that follows no example.
std::vector<Example> ReadExamples(const std::filesystem::path& page);

/// A command typed at a shell and what is seen of it.
struct Command {
    std::string line;
    std::string output;  ///< standard output and error, as they come
    std::size_t at;      ///< the line of the page
};

/// The commands of all console blocks of a page: the lines behind "$ ", with the lines below them as their output.
/// Raises std::runtime_error when a block begins with output.
std::vector<Command> ReadCommands(const std::filesystem::path& page);

/// The parts of an output that end in kEndOfPart; what stands behind the last of them is a part too, unless it is
/// empty.
std::vector<std::string> SplitParts(const std::string& output);

}  // namespace Quenzo::Docs
