#include <tests/RunProgram.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

namespace Quenzo::Testing {

namespace {

// A file without a name that all three streams of the program can be bound to: unlike pipes they need no one who reads
// while the program writes.
class ScratchFile {
public:
    ScratchFile() : file_(std::tmpfile(), &std::fclose) {
        if (file_ == nullptr) {
            throw std::system_error(errno, std::generic_category(), "tmpfile");
        }
    }

    void Write(const std::string& text) {
        std::fwrite(text.data(), 1, text.size(), file_.get());
        std::rewind(file_.get());
    }

    std::string Read() {
        std::rewind(file_.get());
        std::string text;
        std::array<char, 4096> block = {};
        while (const std::size_t size = std::fread(block.data(), 1, block.size(), file_.get())) {
            text.append(block.data(), size);
        }
        return text;
    }

    int Descriptor() const { return fileno(file_.get()); }

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// The variables of this process, those that are given instead of theirs.
std::vector<std::string> Environment(const std::vector<std::string>& given) {
    std::vector<std::string> variables = given;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        const std::string name = text.substr(0, text.find('=') + 1);
        const bool isGiven = std::any_of(given.begin(), given.end(),
                                         [&name](const std::string& other) { return other.starts_with(name); });
        if (!isGiven) {
            variables.push_back(text);
        }
    }
    return variables;
}

}  // namespace

ProgramResult RunProgram(const std::vector<std::string>& command, const std::string& input,
                         const std::vector<std::string>& environment) {
    std::array<ScratchFile, 3> streams;
    streams[0].Write(input);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int stream = 0; stream < 3; ++stream) {
        posix_spawn_file_actions_adddup2(&actions, streams.at(static_cast<std::size_t>(stream)).Descriptor(), stream);
    }
    std::vector<std::string> words = command;
    std::vector<std::string> variables = Environment(environment);
    pid_t process = 0;
    const int error = posix_spawnp(&process, words.front().c_str(), &actions, nullptr, Pointers(words).data(),
                                   Pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), command[0]);
    }
    int status = 0;
    while (waitpid(process, &status, 0) == -1) {
        if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "waitpid");
        }
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, streams[1].Read(), streams[2].Read()};
}

}  // namespace Quenzo::Testing
