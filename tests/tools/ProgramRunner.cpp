#include <tests/tools/ProgramRunner.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace Quenzo::Tests {

namespace {

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

ProgramResult RunProgram(const std::vector<std::string>& arguments, const std::string& input,
                         const std::vector<std::string>& environment) {
    const TemporaryFolder folder;
    const std::string in = folder.Write("in", input);
    const std::string out = folder.Path("out");
    const std::string err = folder.Path("err");

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT, 0600);

    std::vector<std::string> words = {QUENZO_TEST_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    // The last value of a variable would not win everywhere: the additional ones stand first.
    std::vector<std::string> variables = environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        variables.emplace_back(*variable);
    }
    pid_t child = 0;
    const int error =
        posix_spawn(&child, QUENZO_TEST_PROGRAM, &actions, nullptr, Pointers(words).data(), Pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(error, 0);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out), ReadFile(err)};
}

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "quenzo-test-XXXXXX").string();
    path_ = mkdtemp(name.data());
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return Path(name);
}

std::string TemporaryFolder::Read(const std::string& name) const { return ReadFile(path_ / name); }

std::vector<std::string> TemporaryFolder::List() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ShippedPreset(const std::string& name) { return std::string(QUENZO_TEST_PRESETS "/") + name; }

}  // namespace Quenzo::Tests
