#pragma once

#include <foundation/Export.h>
#include <foundation/Path.h>
#include <foundation/RefCount.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace Quenzo::Core {

/// A source of bytes of known length, read from front to back.
class QUENZO_API IDataInput : public IRefCountable {
public:
    /// The total number of bytes, those already read included.
    virtual std::uint64_t GetSize() = 0;

    /// Reads the next bytes, at most `size` of them. Returns how many were read; 0 means the end. Throws when the
    /// device fails.
    virtual std::size_t Read(void* buffer, std::size_t size) = 0;
};

/// A sink of bytes.
class QUENZO_API IDataOutput : public IRefCountable {
public:
    /// Writes all of the bytes, or throws.
    virtual void Write(const void* bytes, std::size_t size) = 0;
};

/// Reads bytes kept in memory.
class QUENZO_API MemoryInput : public RefCounted<IDataInput> {
public:
    /// Takes over the bytes.
    static SP<MemoryInput> Create(std::string bytes);

    std::uint64_t GetSize() override;
    std::size_t Read(void* buffer, std::size_t size) override;

private:
    explicit MemoryInput(std::string bytes);

    std::string bytes_;
    std::size_t position_ = 0;
};

/// Collects bytes in memory.
class QUENZO_API MemoryOutput : public RefCounted<IDataOutput> {
public:
    /// Without bytes yet.
    static SP<MemoryOutput> Create();

    void Write(const void* bytes, std::size_t size) override;

    /// All that was written so far.
    const std::string& GetBytes() const noexcept { return bytes_; }

private:
    MemoryOutput() = default;

    std::string bytes_;
};

/// The C library's file handle, closed with its last owner.
using FileHandle = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Reads a regular file through a buffer. Raises StreamException when the file cannot be opened, is a directory or
/// another thing without a size, or fails while it is read.
class QUENZO_API FileInput : public RefCounted<IDataInput> {
public:
    /// Opens the file and finds out its size.
    static SP<FileInput> Create(const ioPath& path);

    std::uint64_t GetSize() override;
    std::size_t Read(void* buffer, std::size_t size) override;

private:
    explicit FileInput(const ioPath& path);

    ioPath path_;
    FileHandle file_;
    std::uint64_t size_;
};

/// Writes a file through a buffer, replacing what it held. Raises StreamException when the file cannot be opened or
/// written.
class QUENZO_API FileOutput : public RefCounted<IDataOutput> {
public:
    /// Opens the file and empties it.
    static SP<FileOutput> Create(const ioPath& path);

    void Write(const void* bytes, std::size_t size) override;

    /// Hands all bytes over to the system and closes the file; nothing can be written afterwards. Without this call the
    /// last reference closes the file too, but cannot report that the last bytes did not fit on the disk.
    void Close();

private:
    explicit FileOutput(const ioPath& path);

    ioPath path_;
    FileHandle file_;
};

}  // namespace Quenzo::Core
