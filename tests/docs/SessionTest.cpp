// The sessions of docs/guide: a shell answers every command of a page as the page says.

#include <tests/docs/Guide.h>
#include <tests/docs/Page.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace Quenzo::Docs {
namespace {

std::vector<std::string> PagesWithSessions() {
    std::vector<std::string> pages;
    for (const auto& file : std::filesystem::directory_iterator(InRepository("docs/guide"))) {
        if (!ReadCommands(file.path()).empty()) {
            pages.push_back(file.path().stem().string());
        }
    }
    std::sort(pages.begin(), pages.end());
    return pages;
}

std::string TestName(const testing::TestParamInfo<std::string>& page) {
    std::string name = page.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

// The commands as one script, so that $? works as at a terminal.
std::string MakeScript(const std::vector<Command>& commands) {
    std::string script = "exec 2>&1\nquenzo-conf() { " QUENZO_TEST_EMULATOR " '" QUENZO_TEST_PROGRAM "' \"$@\"; }\n";
    script += "end_of_part() { status=$?; printf '\\036'; return $status; }\n";
    for (const Command& command : commands) {
        script += command.line + "\nend_of_part\n";
    }
    return script;
}

class Session : public testing::TestWithParam<std::string> {};

TEST_P(Session, CommandsAnswerAsThePageSays) {
    const std::filesystem::path page = InRepository("docs/guide/" + GetParam() + ".md");
    const std::vector<Command> commands = ReadCommands(page);
    const GuideFolder folder;
    const auto result = Testing::RunProgram({"bash", "-c", MakeScript(commands)});
    const std::vector<std::string> outputs = SplitParts(result.output);
    ASSERT_EQ(outputs.size(), commands.size());
    for (std::size_t i = 0; i < commands.size(); ++i) {
        EXPECT_EQ(outputs[i], commands[i].output) << page << ':' << commands[i].at << ": " << commands[i].line;
    }
}

INSTANTIATE_TEST_SUITE_P(Pages, Session, testing::ValuesIn(PagesWithSessions()), TestName);

TEST(SessionPages, ThePageOfTheProgramHasSessions) {
    EXPECT_GE(ReadCommands(InRepository("docs/guide/the-program.md")).size(), 8u);
}

}  // namespace
}  // namespace Quenzo::Docs
