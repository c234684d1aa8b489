// The manual page and the completions know every command and every option that the program takes; every help has
// examples.

#include <tests/tools/ProgramRunner.h>

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <sstream>

namespace Quenzo::Tests {
namespace {

// A text file of the program's folder, without the backslashes that a manual page puts before its hyphens.
std::string ReadText(const std::string& name) {
    std::string text = ReadFile(std::filesystem::path(QUENZO_TEST_TOOLS) / name);
    std::erase(text, '\\');
    return text;
}

std::istringstream HelpOf(std::vector<std::string> command) {
    command.emplace_back("--help");
    return std::istringstream(RunProgram(command).output);
}

// The first words of the lines of a section of --help, such as the commands under "Subcommands:".
std::vector<std::string> FirstWords(const std::vector<std::string>& command, const std::string& section) {
    std::istringstream help = HelpOf(command);
    std::vector<std::string> words;
    bool isInside = false;
    for (std::string line; std::getline(help, line);) {
        if (!line.starts_with(' ')) {
            isInside = line == section + ":";
        } else if (isInside && line[2] != ' ') {
            std::istringstream text(line);
            std::string word;
            text >> word;
            words.push_back(word);
        }
    }
    return words;
}

bool HasWord(const std::string& text, const std::string& word) {
    const auto isPart = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-'; };
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || !isPart(text[at - 1])) && (end == text.size() || !isPart(text[end]))) {
            return true;
        }
    }
    return false;
}

void ExpectDocumented(const std::vector<std::string>& command) {
    for (const char* file : {"manual/quenzo-conf.1", "completion/quenzo-conf", "completion/_quenzo-conf"}) {
        const std::string text = ReadText(file);
        for (const std::string& names : FirstWords(command, "Options")) {
            std::istringstream list(names);
            for (std::string name; std::getline(list, name, ',');) {
                // Completing -h would only be in the way.
                const bool isCompleted = name != "-h" || std::string(file).starts_with("manual");
                EXPECT_TRUE(!isCompleted || HasWord(text, name)) << file << " does not know " << name;
            }
        }
        for (const std::string& name : FirstWords(command, "Subcommands")) {
            EXPECT_TRUE(HasWord(text, name)) << file << " does not know " << name;
        }
    }
}

TEST(Manual, KnowsEveryCommandAndOption) {
    const auto commands = FirstWords({}, "Subcommands");
    EXPECT_EQ(commands.size(), 16U);
    ExpectDocumented({});
    for (const std::string& command : commands) {
        ExpectDocumented({command});
    }
    const auto jobCommands = FirstWords({"job"}, "Subcommands");
    EXPECT_EQ(jobCommands.size(), 6U);
    for (const std::string& command : jobCommands) {
        ExpectDocumented({"job", command});
    }
}

// The lines of a command's help from "Examples:" to the next empty line.
std::vector<std::string> ExamplesOf(const std::vector<std::string>& command) {
    std::istringstream help = HelpOf(command);
    std::vector<std::string> lines;
    bool isInside = false;
    for (std::string line; std::getline(help, line);) {
        if (isInside && !line.empty()) {
            lines.push_back(line);
        }
        isInside = line == "Examples:" || (isInside && !line.empty());
    }
    return lines;
}

void ExpectExamplesAndStatuses(const std::vector<std::string>& command) {
    std::string words = "quenzo-conf";
    for (const std::string& word : command) {
        words += ' ' + word;
    }
    const std::vector<std::string> examples = ExamplesOf(command);
    EXPECT_FALSE(examples.empty()) << words;
    for (const std::string& example : examples) {
        EXPECT_NE(example.find(words), std::string::npos) << example;
    }
    std::vector<std::string> arguments = command;
    arguments.emplace_back("--help");
    EXPECT_TRUE(RunProgram(arguments).output.ends_with(
        "\n\nExit status: 0 done, 1 the answer is no, 2 wrong usage, 3 an input could not be read,\n"
        "4 an output could not be written.\n"))
        << words;
}

TEST(Help, EveryCommandHasExamplesOfItsOwnAndTheExitStatuses) {
    ExpectExamplesAndStatuses({});
    for (const std::string& command : FirstWords({}, "Subcommands")) {
        ExpectExamplesAndStatuses({command});
    }
    for (const std::string& command : FirstWords({"job"}, "Subcommands")) {
        ExpectExamplesAndStatuses({"job", command});
    }
}

TEST(Manual, SeesWhatIsMissing) {
    EXPECT_TRUE(HasWord("a --json b", "--json"));
    EXPECT_FALSE(HasWord("a --jsonx b", "--json"));
    EXPECT_FALSE(HasWord("pixel-formats", "formats"));
    EXPECT_FALSE(FirstWords({"bitrate"}, "Options").empty());
}

}  // namespace
}  // namespace Quenzo::Tests
