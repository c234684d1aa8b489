#pragma once

#include <foundation/Export.h>

#include <filesystem>
#include <string>

namespace Quenzo {

/// The path of a file. Made from UTF-8 text or from a file-system path; the text is kept as it is given.
class QUENZO_API ioPath {
public:
    ioPath() = default;
    /// Text is taken for UTF-8 and not checked; a null pointer is not allowed.
    ioPath(std::string utf8);
    ioPath(const char* utf8);
    ioPath(const std::filesystem::path& path);

    /// The path as UTF-8 text.
    const std::string& utf8string() const noexcept { return utf8_; }

    /// The path as the file system's functions take it.
    std::filesystem::path ToFilesystemPath() const;

    bool operator==(const ioPath& other) const = default;

private:
    std::string utf8_;
};

}  // namespace Quenzo
