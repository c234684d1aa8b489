#include <tools/Dot.h>

#include <tools/Failure.h>
#include <tools/Files.h>

#include <foundation/Throw.h>

#include <fmt/format.h>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

namespace Quenzo::Tools {

namespace {

// A file without a name: nothing is left behind, however the program ends.
class Scratch {
public:
    Scratch() : file_(std::tmpfile(), &std::fclose) {
        if (file_ == nullptr) {
            QUENZO_THROW(
                Failure(ExitStatus::Unwritable, fmt::format("cannot make a temporary file: {}", SystemReason())));
        }
    }

    int Descriptor() const { return fileno(file_.get()); }

    void Put(const std::string& bytes) {
        if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size() || std::fflush(file_.get()) != 0) {
            QUENZO_THROW(
                Failure(ExitStatus::Unwritable, fmt::format("cannot write a temporary file: {}", SystemReason())));
        }
        std::rewind(file_.get());
    }

    std::string Get() {
        std::rewind(file_.get());
        return ReadRest(file_.get(), "a temporary file");
    }

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

[[noreturn]] void SayThatDotIsMissing() {
    QUENZO_THROW(Failure(ExitStatus::Unwritable,
                         "cannot draw: Graphviz's dot is not installed (on Debian: apt-get install graphviz); a .dot "
                         "file can be written without it"));
}

// What a program that could not be started exits with, where starting it was not refused at once.
constexpr int kNotStarted = 127;

// Runs dot and returns its exit status, or -1 when a signal ended it.
int RunDot(const std::string& format, const Scratch& input, const Scratch& output, const Scratch& messages) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input.Descriptor(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output.Descriptor(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, messages.Descriptor(), STDERR_FILENO);

    std::string program = "dot";
    std::string option = "-T" + format;
    char* const arguments[] = {program.data(), option.data(), nullptr};
    pid_t child = 0;
    const int error = posix_spawnp(&child, program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error == ENOENT) {
        SayThatDotIsMissing();
    }
    int status = 0;
    if (error != 0 || waitpid(child, &status, 0) != child) {
        QUENZO_THROW(
            Failure(ExitStatus::Unwritable,
                    fmt::format("cannot run dot: {}", std::generic_category().message(error != 0 ? error : errno))));
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == kNotStarted) {
        SayThatDotIsMissing();
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

std::string Draw(const std::string& dotText, const std::string& format) {
    Scratch input;
    Scratch output;
    Scratch messages;
    input.Put(dotText);
    if (RunDot(format, input, output, messages) != 0) {
        const std::string text = messages.Get();
        QUENZO_THROW(Failure(ExitStatus::Unwritable, fmt::format("dot failed: {}", text.substr(0, text.find('\n')))));
    }
    return output.Get();
}

}  // namespace Quenzo::Tools
