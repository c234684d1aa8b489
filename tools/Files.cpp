#include <tools/Files.h>

#include <tools/Failure.h>

#include <foundation/Throw.h>

#include <fmt/format.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

namespace Quenzo::Tools {

namespace {

using FileHandle = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

Failure CannotRead(const std::string& name) {
    return {ExitStatus::Unreadable, fmt::format("cannot read {}: {}", Quoted(name), SystemReason())};
}

Failure CannotWrite(const std::string& name) {
    return {ExitStatus::Unwritable, fmt::format("cannot write {}: {}", Quoted(name), SystemReason())};
}

void WriteAll(FileHandle file, const std::string& name, const std::string& bytes) {
    if (file == nullptr || std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size() ||
        std::fclose(file.release()) != 0) {
        QUENZO_THROW(CannotWrite(name));
    }
}

// A file of its own beside the target, gone again unless it is put in the target's place.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& target) : target_(target), path_(target + ".XXXXXX") {
        descriptor_ = mkstemp(path_.data());
        if (descriptor_ < 0) {
            QUENZO_THROW(CannotWrite(target));
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!path_.empty()) {
            unlink(path_.c_str());
        }
    }

    void Write(const std::string& bytes) {
        // mkstemp keeps the file to its owner; a new file gets the usual permissions.
        const mode_t mask = umask(0);
        umask(mask);
        fchmod(descriptor_, 0666 & ~mask);
        WriteAll(FileHandle(fdopen(descriptor_, "wb"), &std::fclose), target_, bytes);
    }

    void TakePlace() {
        if (std::rename(path_.c_str(), target_.c_str()) != 0) {
            QUENZO_THROW(CannotWrite(target_));
        }
        path_.clear();
    }

private:
    std::string target_;
    std::string path_;
    int descriptor_ = -1;
};

}  // namespace

std::string ReadRest(std::FILE* file, const std::string& name) {
    std::string bytes;
    char block[65536];
    while (const std::size_t count = std::fread(block, 1, sizeof(block), file)) {
        bytes.append(block, count);
    }
    if (std::ferror(file) != 0) {
        QUENZO_THROW(CannotRead(name));
    }
    return bytes;
}

std::string ReadWhole(const std::string& name) {
    if (name == "-") {
        return ReadRest(stdin, "standard input");
    }
    const FileHandle file(std::fopen(name.c_str(), "rbe"), &std::fclose);
    if (file == nullptr) {
        QUENZO_THROW(CannotRead(name));
    }
    return ReadRest(file.get(), name);
}

void WriteWhole(const std::string& name, const std::string& bytes) {
    std::error_code ignored;
    const auto status = std::filesystem::status(name, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        WriteAll(FileHandle(std::fopen(name.c_str(), "wbe"), &std::fclose), name, bytes);
        return;
    }
    // Through a symbolic link to the file that it names: the link stays.
    const std::filesystem::path target = std::filesystem::weakly_canonical(name, ignored);
    TemporaryFile file(target.empty() ? name : target.string());
    file.Write(bytes);
    file.TakePlace();
}

void OccupyClosedStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) == -1 && errno == EBADF) {
            // The lowest number that is free is this one.
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

void Print(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
        QUENZO_THROW(
            Failure(ExitStatus::Unwritable, fmt::format("cannot write to standard output: {}", SystemReason())));
    }
}

void Note(const std::string& text) { std::fprintf(stderr, "quenzo-conf: note: %s\n", text.c_str()); }

}  // namespace Quenzo::Tools
