#include <foundation/DataStream.h>

#include <foundation/Throw.h>

#include <fmt/compile.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace Quenzo::Core {

namespace {

StreamException Failure(const char* verb, const ioPath& path, const std::string& reason) {
    StreamException failure;
    failure << Exception::TagDescription(
        fmt::format(FMT_COMPILE("cannot {} \"{}\": {}"), verb, path.utf8string(), reason));
    return failure;
}

StreamException SystemFailure(const char* verb, const ioPath& path) {
    return Failure(verb, path, std::generic_category().message(errno));
}

FileHandle Open(const char* verb, const ioPath& path, int flags, const char* mode) {
    if (path.utf8string().find('\0') != std::string::npos) {
        QUENZO_THROW(Failure(verb, path, "its name holds a zero byte"));
    }
    const int descriptor = open(path.utf8string().c_str(), flags | O_CLOEXEC, 0666);
    FileHandle file(descriptor >= 0 ? fdopen(descriptor, mode) : nullptr, &std::fclose);
    if (file == nullptr) {
        const int reason = errno;
        if (descriptor >= 0) {
            close(descriptor);
        }
        errno = reason;
        QUENZO_THROW(SystemFailure(verb, path));
    }
    return file;
}

std::uint64_t RegularFileSize(std::FILE* file, const ioPath& path) {
    struct stat status = {};
    if (fstat(fileno(file), &status) != 0) {
        QUENZO_THROW(SystemFailure("read", path));
    }
    if (S_ISDIR(status.st_mode)) {
        QUENZO_THROW(Failure("read", path, "it is a directory"));
    }
    if (!S_ISREG(status.st_mode)) {
        QUENZO_THROW(Failure("read", path, "it is no regular file"));
    }
    return static_cast<std::uint64_t>(status.st_size);
}

}  // namespace

SP<MemoryInput> MemoryInput::Create(std::string bytes) { return SP<MemoryInput>(new MemoryInput(std::move(bytes))); }

MemoryInput::MemoryInput(std::string bytes) : bytes_(std::move(bytes)) {}

std::uint64_t MemoryInput::GetSize() { return bytes_.size(); }

std::size_t MemoryInput::Read(void* buffer, std::size_t size) {
    // A JSON reader asks for single bytes.
    if (size == 1 && position_ < bytes_.size()) {
        *static_cast<char*>(buffer) = bytes_[position_++];
        return 1;
    }
    const std::size_t taken = std::min(size, bytes_.size() - position_);
    std::copy_n(bytes_.data() + position_, taken, static_cast<char*>(buffer));
    position_ += taken;
    return taken;
}

SP<MemoryOutput> MemoryOutput::Create() { return SP<MemoryOutput>(new MemoryOutput()); }

void MemoryOutput::Write(const void* bytes, std::size_t size) { bytes_.append(static_cast<const char*>(bytes), size); }

SP<FileInput> FileInput::Create(const ioPath& path) { return SP<FileInput>(new FileInput(path)); }

FileInput::FileInput(const ioPath& path)
    : path_(path), file_(Open("read", path, O_RDONLY | O_NONBLOCK, "rb")), size_(RegularFileSize(file_.get(), path)) {}

std::uint64_t FileInput::GetSize() { return size_; }

std::size_t FileInput::Read(void* buffer, std::size_t size) {
    const std::size_t taken = size != 0 ? std::fread(buffer, 1, size, file_.get()) : 0;
    if (taken < size && std::ferror(file_.get()) != 0) {
        QUENZO_THROW(SystemFailure("read", path_));
    }
    return taken;
}

SP<FileOutput> FileOutput::Create(const ioPath& path) { return SP<FileOutput>(new FileOutput(path)); }

FileOutput::FileOutput(const ioPath& path)
    : path_(path), file_(Open("write", path, O_WRONLY | O_CREAT | O_TRUNC, "wb")) {}

void FileOutput::Write(const void* bytes, std::size_t size) {
    if (file_ == nullptr) {
        QUENZO_THROW(Failure("write", path_, "it is closed already"));
    }
    if (size != 0 && std::fwrite(bytes, 1, size, file_.get()) != size) {
        QUENZO_THROW(SystemFailure("write", path_));
    }
}

void FileOutput::Close() {
    if (file_ != nullptr && std::fclose(file_.release()) != 0) {
        QUENZO_THROW(SystemFailure("write", path_));
    }
}

}  // namespace Quenzo::Core
