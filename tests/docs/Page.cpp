#include <tests/docs/Page.h>

#include <foundation/StringUtils.h>

#include <fstream>
#include <stdexcept>
#include <utility>

namespace Quenzo::Docs {

namespace {

[[noreturn]] void Refuse(const std::filesystem::path& page, std::size_t line, const std::string& reason) {
    throw std::runtime_error(page.string() + ":" + std::to_string(line) + ": " + reason);
}

}  // namespace

std::string Block::Text() const {
    std::string text;
    for (const std::string& text_line : lines) {
        text += text_line + '\n';
    }
    return text;
}

std::vector<Block> ReadBlocks(const std::filesystem::path& page) {
    constexpr std::string_view fence = "```";
    std::ifstream file(page);
    if (!file) {
        Refuse(page, 0, "cannot be read");
    }
    std::vector<Block> blocks;
    bool isInside = false;
    std::size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.starts_with(fence)) {
            if (!isInside) {
                blocks.push_back({line.substr(fence.size()), number + 1, {}});
            }
            isInside = !isInside;
        } else if (isInside) {
            blocks.back().lines.push_back(std::move(line));
        }
    }
    if (isInside) {
        Refuse(page, blocks.back().line, "the block has no end");
    }
    return blocks;
}

std::vector<Example> ReadExamples(const std::filesystem::path& page) {
    std::vector<Example> examples;
    bool isOutputNext = false;
    for (Block& block : ReadBlocks(page)) {
        if (block.language == "text") {
            if (!isOutputNext) {
                Refuse(page, block.line, "the text is the output of no example");
            }
            examples.back().output = block.Text();
        } else if (block.language != "cpp" && block.language != "console") {
            Refuse(page, block.line, "nobody checks a block of \"" + block.language + "\"");
        }
        isOutputNext = block.language == "cpp";
        if (isOutputNext) {
            examples.push_back({std::move(block), {}});
        }
    }
    return examples;
}

std::vector<Command> ReadCommands(const std::filesystem::path& page) {
    std::vector<Command> commands;
    for (const Block& block : ReadBlocks(page)) {
        if (block.language != "console") {
            continue;
        }
        bool isFirst = true;
        std::size_t number = block.line;
        for (const std::string& line : block.lines) {
            if (line.starts_with("$ ")) {
                commands.push_back({line.substr(2), {}, number});
            } else if (isFirst) {
                Refuse(page, number, "a session begins with a command");
            } else {
                commands.back().output += line + '\n';
            }
            isFirst = false;
            ++number;
        }
    }
    return commands;
}

std::vector<std::string> SplitParts(const std::string& output) {
    std::vector<std::string> parts;
    SplitString(parts, output, kEndOfPart);
    return parts;
}

}  // namespace Quenzo::Docs
