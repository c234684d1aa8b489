#include <tests/tools/ProgramRunner.h>

#include <foundation/StringUtils.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace Quenzo::Tests {

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

ProgramResult RunProgram(const std::vector<std::string>& arguments, const std::string& input,
                         const std::vector<std::string>& environment) {
    std::vector<std::string> command;
    SplitString(command, QUENZO_TEST_EMULATOR, ' ');
    command.emplace_back(QUENZO_TEST_PROGRAM);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Testing::RunProgram(command, input, environment);
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
